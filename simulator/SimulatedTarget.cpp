#include "simulator/SimulatedTarget.h"

#include <algorithm>
#include <bit>

#include "simulator/TargetNames.h"

namespace vesk {

namespace {

constexpr std::uint32_t kTick = 0;
constexpr std::uint32_t kIdle = 0;
constexpr std::uint32_t kTickLatency = 10;  // counts; the tick handler runs longer
constexpr std::uint32_t kBusyGap = 40;      // longest time between two steps
constexpr std::uint32_t kIdleGap = 1200;
constexpr std::uint64_t kRecordsBeforeLosses = 100;

}  // namespace

SimulatedTarget::SimulatedTarget(const SimulatorOptions& options, AfterInterrupts after,
                                 std::uint32_t countsPerFrame, TargetClock& clock,
                                 TargetRecorder& recorder)
    : m_Options(options),
      m_After(after),
      m_CountsPerFrame(countsPerFrame),
      m_Clock(clock),
      m_Recorder(recorder),
      m_Random(options.m_Seed),
      m_NextTick((clock.m_Counts / countsPerFrame + 1) * countsPerFrame),
      m_EventIsOn(kSimulatedEvents.size()) {}

// The last record is always an interrupt: what ends behind it is the same for every reader.
void SimulatedTarget::Run() {
    if (m_Options.m_Records > 1) m_Recorder.Task(m_Task);
    while (m_Recorder.Written() + 1 < m_Options.m_Records) Step();
    ++m_Clock.m_Counts;
    m_Recorder.Interrupt(OtherIrq());
}

void SimulatedTarget::Step() {
    LetTimePass();
    if (m_Options.m_Losses && m_Recorder.Written() > kRecordsBeforeLosses && m_Random.OneIn(3000))
        m_Recorder.LoseRecords(10 + m_Random.Below(400));
    if (m_Clock.m_Counts >= m_NextTick)
        EnterInterrupt(kTick);
    else if (m_Depth > 0)
        InterruptStep();
    else
        TaskStep();
}

// The tick comes with a small delay, and nothing else is recorded between the two.
void SimulatedTarget::LetTimePass() {
    const bool isIdle = m_Depth == 0 && m_Task == kIdle && !m_MustDispatch;
    const std::uint64_t least = IsInTick() ? kTickLatency : 1;
    const std::uint64_t time =
        m_Clock.m_Counts + least + m_Random.Below(isIdle ? kIdleGap : kBusyGap);
    m_Clock.m_Counts = std::min(time, m_NextTick + m_Random.Below(kTickLatency));
}

void SimulatedTarget::TaskStep() {
    if (m_MustDispatch) return Dispatch();
    const std::uint32_t dice = m_Random.Below(100);
    if (m_Task == kIdle || dice < 8)
        EnterInterrupt(OtherIrq());
    else if (dice < 22)
        Block();
    else
        Act();
}

void SimulatedTarget::Dispatch() {
    m_MustDispatch = false;
    const std::uint32_t next = HighestReadyTask();
    if (next != m_Task) {
        m_Task = next;
        m_Recorder.Task(m_Task);
    } else if (m_After == AfterInterrupts::kResumeRecord) {
        m_Recorder.Resume(m_Task);
    } else if (m_After == AfterInterrupts::kTaskRecord) {
        m_Recorder.Task(m_Task);
    }
}

// A task that hands its work on to another one may wake it first.
void SimulatedTarget::Block() {
    m_Ready &= ~(std::uint64_t{1} << m_Task);
    if (m_Random.OneIn(4)) WakeATask();
    m_Ready |= 1;
    const std::uint32_t next = HighestReadyTask();
    if (next == m_Task) return;
    m_Task = next;
    m_Recorder.Task(m_Task);
}

void SimulatedTarget::EnterInterrupt(std::uint32_t irq) {
    m_Recorder.Interrupt(irq);
    m_Interrupts[m_Depth++] = {irq, 1 + m_Random.Below(6)};
    if (irq != kTick) return;
    ++m_Clock.m_FrameNo;
    m_NextTick += m_CountsPerFrame;
}

// One place in the nest is kept for the tick, which interrupts every other handler and is
// interrupted by none.
void SimulatedTarget::InterruptStep() {
    Interrupt& running = m_Interrupts[m_Depth - 1];
    if (running.m_Steps == 0) return LeaveInterrupt();
    --running.m_Steps;
    if (!IsInTick() && m_Depth + 1 < kMaxInterrupts && m_Random.OneIn(10))
        EnterInterrupt(OtherIrq());
    else
        Act();
}

void SimulatedTarget::LeaveInterrupt() {
    if (OwnsInnermostCall()) {
        m_CallOwners.pop_back();
        return m_Recorder.Leave();
    }
    if (m_Random.OneIn(2)) WakeATask();
    --m_Depth;
    if (m_Depth > 0)
        return m_Recorder.ReturnTo(m_Recorder.JobOfIrq(m_Interrupts[m_Depth - 1].m_Irq));
    m_MustDispatch = true;
    m_Recorder.ReturnTo(m_After == AfterInterrupts::kTaskIsKnown ? TargetRecorder::JobOfTask(m_Task)
                                                                 : TargetRecorder::kNobody);
}

void SimulatedTarget::Act() {
    const std::uint32_t dice = m_Random.Below(8);
    if (dice < 6) {
        if (m_Options.m_Functions) CallOrLeave();
    } else if (dice == 6) {
        if (m_Options.m_Marks) m_Recorder.Mark(m_Random.Below(kSimulatedMarks.size()));
    } else if (m_Options.m_Hardware) {
        ToggleEvent();
    }
}

// A reader matches exits with one stack of functions for the whole processor. So a function leaves
// only when all that were entered behind it have left, by whichever task.
void SimulatedTarget::CallOrLeave() {
    const bool mayEnter = m_CallOwners.size() < kMaxCalls;
    if (OwnsInnermostCall() && (!mayEnter || m_Random.OneIn(2))) {
        m_CallOwners.pop_back();
        m_Recorder.Leave();
    } else if (mayEnter) {
        m_CallOwners.push_back(Context());
        m_Recorder.Enter(m_Random.Below(kSimulatedFunctions.size()));
    }
}

// Now and then an event's end goes missing, and it starts anew.
void SimulatedTarget::ToggleEvent() {
    const std::uint32_t event = m_Random.Below(kSimulatedEvents.size());
    if (m_EventIsOn[event] && !m_Random.OneIn(16)) {
        m_EventIsOn[event] = false;
        m_Recorder.EventOff(event);
    } else {
        m_EventIsOn[event] = true;
        m_Recorder.EventOn(event);
    }
}

std::uint32_t SimulatedTarget::OtherIrq() {
    return 1 + m_Random.Below(kSimulatedIrqs.size() - 1);
}

std::uint32_t SimulatedTarget::HighestReadyTask() const {
    return static_cast<std::uint32_t>(std::bit_width(m_Ready) - 1);
}

bool SimulatedTarget::IsInTick() const {
    return m_Depth > 0 && m_Interrupts[m_Depth - 1].m_Irq == kTick;
}

bool SimulatedTarget::OwnsInnermostCall() const {
    return !m_CallOwners.empty() && m_CallOwners.back() == Context();
}

// Tasks by their number, behind them the places in the nest of interrupts.
std::uint32_t SimulatedTarget::Context() const {
    return m_Depth > 0 ? SimulatorOptions::kMaxTasks + m_Depth : m_Task;
}

}  // namespace vesk
