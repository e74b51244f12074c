#include "log/SwitchTracker.h"

namespace vesk {

SwitchTracker::SwitchTracker(std::vector<McuJob>* jobs, JobNames& names)
    : m_Jobs(jobs),
      m_Nobody(names.Intern("")),
      m_Lost(names.Intern("%Lost")),
      m_Below(8, m_Nobody),
      m_State{m_Nobody, m_Nobody} {}

void SwitchTracker::Lose() {
    m_State.m_Depth = 0;
    m_Below[0] = Below(m_State.m_LastTask);
    m_LostPending = true;
}

void SwitchTracker::Switch(const IdMeaning& meaning, const RawRecord& record, std::uint64_t now) {
    JobName* const outgoing = m_LostPending ? m_Lost : m_State.m_Running;
    m_LostPending = false;
    if (m_State.m_JobStart != 0 && outgoing != m_Nobody) Store(m_State, outgoing, now);
    JobName* next = m_State.m_LastTask;
    if (meaning.m_Kind == RecordKind::kResume) {
        m_State.m_Depth = 0;
        m_Below[0] = Below(next);
    } else {
        next = Next(m_State, meaning);
    }
    Begin(m_State, next, record, now);
}

void SwitchTracker::CloseLast(std::uint64_t end) {
    if (m_State.m_Running != m_Nobody) Store(m_State, m_State.m_Running, end);
}

}  // namespace vesk
