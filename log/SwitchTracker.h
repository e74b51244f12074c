#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "log/IdTable.h"
#include "log/JobNames.h"
#include "log/LogClock.h"
#include "log/RawRecord.h"

namespace vesk {

// Follows which task or interrupt holds the processor. Each task or interrupt record ends the job
// in progress, which is stored in the job vector, and begins the next. A job without a name is
// never stored, and neither is one that began at time 0.
class SwitchTracker {
public:
    // Jobs go to the vector; with null they are only counted. Both arguments are borrowed.
    SwitchTracker(std::vector<McuJob>* jobs, JobNames& names);

    // After the last interrupt returns, the last task runs again; else nobody knows who runs.
    void ReturnToLastTask() { m_ReturnsToTask = true; }

    // The job name that a return to the lowest level leads to, once this task has run.
    JobName* Below(JobName* task) const { return m_ReturnsToTask ? task : m_Nobody; }

    // Data are missing: the interrupts in progress are unknown, and the running job turns into
    // "%Lost" at the next switch.
    void Lose();
    bool LostPending() const { return m_LostPending; }

    // A gap before any job begins here, so that it can be shown.
    void BeginGapAt(std::uint64_t now) { m_State.m_JobStart = now; }

    // The job in progress and what leads to the next one. A value, so that the loop over a block
    // of records can keep it in registers.
    struct State {
        JobName* m_Running;
        JobName* m_LastTask;
        std::uint64_t m_JobStart = 0;
        std::int32_t m_JobFrame = -1;
        std::uint32_t m_JobCount = 0;
        std::ptrdiff_t m_Depth = 0;  // interrupts in progress
        std::uint64_t m_Jobs = 0;    // jobs stored or counted
    };

    // A task, interrupt, return or resume record.
    void Switch(const IdMeaning&, const RawRecord&, std::uint64_t now);

    // The same on a copy of the state, for a record that is no resume and follows no loss.
    void SwitchPlainly(State&, const IdMeaning&, const RawRecord&, std::uint64_t now);
    const State& Current() const { return m_State; }
    void Restore(const State& state) { m_State = state; }

    // The first record of a log: the frame that the job in progress shows until a switch comes.
    void StartAt(const RawRecord& record) { m_State.m_JobFrame = record.m_Frame; }

    // Stores the last job of a log, which no record ends.
    void CloseLast(std::uint64_t end);

    JobName* Running() const { return m_State.m_Running; }
    std::uint64_t JobStart() const { return m_State.m_JobStart; }
    bool HasJobs() const { return m_State.m_Jobs > 0; }
    std::int32_t Jobs() const { return static_cast<std::int32_t>(m_State.m_Jobs); }

private:
    JobName* Next(State&, const IdMeaning&);
    void Store(State&, JobName* name, std::uint64_t end);
    void Begin(State&, JobName* next, const RawRecord&, std::uint64_t now);

    std::vector<McuJob>* m_Jobs;
    JobName* m_Nobody;
    JobName* m_Lost;
    bool m_ReturnsToTask = false;
    bool m_LostPending = false;

    // The names that a return leads to: below all interrupts at 0, then one for each interrupt in
    // progress. One stack for both, so that no branch has to tell them apart.
    std::vector<JobName*> m_Below;
    State m_State;
};

// The same as a conditional expression, but never a branch.
inline JobName* Choose(bool condition, JobName* ifTrue, JobName* ifFalse) {
    const std::uintptr_t mask = -static_cast<std::uintptr_t>(condition);
    return reinterpret_cast<JobName*>((reinterpret_cast<std::uintptr_t>(ifTrue) & mask) |
                                      (reinterpret_cast<std::uintptr_t>(ifFalse) & ~mask));
}

// No branch on the kind: kinds follow each other at random, and a wrong guess costs more than all
// of this.
inline JobName* SwitchTracker::Next(State& state, const IdMeaning& meaning) {
    std::ptrdiff_t depth = (meaning.m_KeepsDepth ? state.m_Depth : 0) + meaning.m_Step;
    depth += depth < 0 ? 1 : 0;
    state.m_Depth = depth;
    if (static_cast<std::size_t>(depth) == m_Below.size()) [[unlikely]]
        m_Below.push_back(m_Nobody);
    JobName*& below = m_Below[static_cast<std::size_t>(depth)];
    JobName* const returned = below;
    auto* const own = static_cast<JobName*>(meaning.m_Name);
    const bool isReturn = meaning.m_Step < 0;
    below = Choose(isReturn, returned, static_cast<JobName*>(meaning.m_Below));
    state.m_LastTask = Choose(meaning.m_KeepsDepth, state.m_LastTask, own);
    return Choose(isReturn, returned, own);
}

inline void SwitchTracker::Store(State& state, JobName* name, std::uint64_t end) {
    if (m_Jobs) {
        // First what can fail for lack of memory.
        McuJob& job = name->m_Name.AppendTo(*m_Jobs, state.m_JobStart, end);
        job.m_TimeStamp = state.m_JobFrame;
        job.m_TimeCount = state.m_JobCount;
        ++name->m_Jobs;
        name->m_Total += end - state.m_JobStart;
    }
    ++state.m_Jobs;
}

inline void SwitchTracker::Begin(State& state, JobName* next, const RawRecord& record,
                                 std::uint64_t now) {
    state.m_Running = next;
    state.m_JobStart = now;
    state.m_JobCount = record.m_Count;
    state.m_JobFrame = record.m_Frame;
}

inline void SwitchTracker::SwitchPlainly(State& state, const IdMeaning& meaning,
                                         const RawRecord& record, std::uint64_t now) {
    if (state.m_JobStart != 0 && state.m_Running != m_Nobody) Store(state, state.m_Running, now);
    Begin(state, Next(state, meaning), record, now);
}

}  // namespace vesk
