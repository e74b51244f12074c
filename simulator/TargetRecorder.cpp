#include "simulator/TargetRecorder.h"

#include <algorithm>

#include "simulator/RecordIds.h"
#include "simulator/TargetNames.h"

namespace vesk {

namespace {

constexpr std::uint32_t kFrameLength = 5000;
constexpr std::uint64_t kEndOfLastJob = 100;  // QBit that a reader gives a job without an end

template <class Names>
SimulatedTruth::Totals ByName(const std::vector<SimulatedTotal>& totals, const Names& names) {
    SimulatedTruth::Totals byName;
    for (std::size_t i = 0; i < totals.size(); ++i)
        if (totals[i].m_Count > 0) byName[names(i)] = totals[i];
    return byName;
}

}  // namespace

TargetRecorder::TargetRecorder(const LogFormat& format, LogWriter& writer, const TargetClock& clock,
                               SimulatedCounters counters, std::uint32_t tasks)
    : m_Writer(writer),
      m_Clock(clock),
      m_Counters(std::move(counters)),
      m_Tasks(tasks),
      m_IsTqcnt(format.m_IsTqcnt),
      m_Wrap(m_IsTqcnt ? kFrameLength : format.m_Wrap),
      // A reader keeps the ratio of the two rates in single precision.
      m_CountsPerQbit(static_cast<float>(format.m_Rate) / static_cast<float>(format.m_OriginRate)),
      m_RecordBytes(format.RecordBytes()),
      m_Jobs(tasks + kSimulatedIrqs.size() + 1),
      m_Functions(kSimulatedFunctions.size()),
      m_Events(kSimulatedEvents.size()),
      m_Marks(kSimulatedMarks.size()),
      m_EventStarts(kSimulatedEvents.size()) {
    for (std::uint32_t task = 0; task < tasks; ++task)
        m_TaskIds.push_back(record::Task(SimulatedTaskName(task)));
}

void TargetRecorder::Task(std::uint32_t task) {
    Switch(m_TaskIds[task], JobOfTask(task), true);
}

void TargetRecorder::Interrupt(std::uint32_t irq) {
    Switch(record::Irq(kSimulatedIrqs[irq].m_Code), JobOfIrq(irq));
}

void TargetRecorder::ReturnTo(int job) {
    Switch(record::kReturn, job);
}

void TargetRecorder::Resume(std::uint32_t task) {
    Switch(record::kResume, JobOfTask(task));
}

void TargetRecorder::Switch(std::uint32_t id, int job, bool isTask) {
    const bool endsLoss = m_IsLosing && isTask && m_Lost >= m_ToLose;
    if (endsLoss) EndLoss();
    if (!Write(id)) return;
    if (endsLoss) {
        CloseJob(static_cast<int>(m_Jobs.size()) - 1, m_LogTime);
        for (const Call& call : m_OpenAtLoss)
            m_Functions[call.m_Function].m_Qbits += m_LogTime - call.m_Start;
        m_OpenAtLoss.clear();
    } else {
        CloseJob(m_Job, m_LogTime);
    }
    m_Job = job;
    m_JobStart = m_LogTime;
}

void TargetRecorder::CloseJob(int job, std::uint64_t end) {
    if (job == kNobody || m_JobStart == 0) return;
    SimulatedTotal& total = m_Jobs[static_cast<std::size_t>(job)];
    ++total.m_Count;
    total.m_Qbits += end - m_JobStart;
    m_Truth.m_EndTime = end;
}

void TargetRecorder::Enter(std::uint32_t function) {
    const bool isKnown = Write(record::Enter(kSimulatedFunctions[function]));
    m_Calls.push_back({function, m_LogTime, isKnown});
    if (isKnown) ++m_Functions[function].m_Count;
}

void TargetRecorder::Leave() {
    const Call call = m_Calls.back();
    m_Calls.pop_back();
    if (Write(record::Leave(kSimulatedFunctions[call.m_Function])) && call.m_IsKnown)
        m_Functions[call.m_Function].m_Qbits += m_LogTime - call.m_Start;
}

void TargetRecorder::Mark(std::uint32_t mark) {
    if (Write(record::Mark(kSimulatedMarks[mark]))) ++m_Marks[mark];
}

void TargetRecorder::EventOn(std::uint32_t event) {
    if (!Write(record::HwOn(kSimulatedEvents[event]))) return;
    ++m_Events[event].m_Count;
    // An event that starts anew has ended 1 QBit before.
    if (m_EventStarts[event] != 0) m_Events[event].m_Qbits += m_LogTime - 1 - m_EventStarts[event];
    m_EventStarts[event] = m_LogTime;
}

void TargetRecorder::EventOff(std::uint32_t event) {
    if (!Write(record::HwOff(kSimulatedEvents[event])) || m_EventStarts[event] == 0) return;
    m_Events[event].m_Qbits += m_LogTime - m_EventStarts[event];
    m_EventStarts[event] = 0;
}

void TargetRecorder::LoseRecords(std::uint32_t atLeast) {
    if (m_IsLosing) return;
    m_IsLosing = true;
    m_ToLose = atLeast;
    m_Lost = 0;
    for (Call& call : m_Calls) {
        if (call.m_IsKnown) m_OpenAtLoss.push_back(call);
        call.m_IsKnown = false;
    }
}

// The larger losses come in two packets.
void TargetRecorder::EndLoss() {
    m_IsLosing = false;
    const std::uint32_t bytes = m_Lost * m_RecordBytes;
    const std::uint32_t first = m_Lost > 200 ? bytes / 3 : bytes;
    for (const std::uint32_t part : {first, bytes - first}) {
        if (part == 0) continue;
        m_Writer.Loss(part);
        ++m_Truth.m_LossPackets;
    }
    ++m_Truth.m_Losses;
    m_Truth.m_LostBytes += bytes;
}

bool TargetRecorder::Write(std::uint32_t id) {
    if (m_IsLosing) {
        ++m_Lost;
        return false;
    }
    // The clock of a log starts at 1 with its first record.
    const std::uint64_t delta = m_Written == 0 ? 1 : m_Clock.m_Counts - m_LastCounts;
    m_LogTime += m_IsTqcnt
                     ? delta
                     : static_cast<std::uint64_t>(static_cast<double>(delta) / m_CountsPerQbit);
    m_LastCounts = m_Clock.m_Counts;
    const RecordStamp stamp{static_cast<std::uint32_t>(m_Clock.m_Counts % m_Wrap), kFrameLength,
                            m_Clock.m_FrameNo};
    m_Writer.Record(id, stamp, m_Counters.Next(static_cast<std::uint32_t>(delta)));
    ++m_Written;
    return true;
}

SimulatedTruth TargetRecorder::Finish() {
    CloseJob(m_Job, m_JobStart + kEndOfLastJob);
    m_Truth.m_Jobs = ByName(m_Jobs, [this](std::size_t job) { return JobName(job); });
    m_Truth.m_Functions = ByName(m_Functions, [](std::size_t i) { return kSimulatedFunctions[i]; });
    m_Truth.m_Hardware = ByName(m_Events, [](std::size_t i) { return kSimulatedEvents[i]; });
    for (std::size_t i = 0; i < m_Marks.size(); ++i)
        if (m_Marks[i] > 0) m_Truth.m_Marks[kSimulatedMarks[i]] = m_Marks[i];
    m_Truth.m_Records = m_Written;
    m_Truth.m_ValueSums = m_Counters.Sums();
    return m_Truth;
}

std::string TargetRecorder::JobName(std::size_t job) const {
    if (job < m_Tasks) return SimulatedTaskName(job);
    const std::size_t irq = job - m_Tasks;
    return irq < kSimulatedIrqs.size() ? kSimulatedIrqs[irq].m_ShownName : "%Lost";
}

}  // namespace vesk
