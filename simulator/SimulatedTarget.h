#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "simulator/Random.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/TargetClock.h"
#include "simulator/TargetRecorder.h"

namespace vesk {

// How a target's log tells that a task goes on behind its interrupts.
enum class AfterInterrupts {
    kTaskIsKnown,   // the reader takes the last task to run again
    kResumeRecord,  // a record says that the last task goes on
    kTaskRecord,    // the task's own record comes once more
};

// The simulated target at work: tasks with fixed priorities that interrupts wake and that block
// again, interrupts that nest, a tick interrupt at which the frame number grows, and on all of
// these functions, marks and hardware events. What happens is a matter of chance, by one stream
// of random numbers; each step of it brings one record at most.
class SimulatedTarget {
public:
    // Clock and recorder are borrowed. countsPerFrame: from tick to tick.
    SimulatedTarget(const SimulatorOptions&, AfterInterrupts, std::uint32_t countsPerFrame,
                    TargetClock&, TargetRecorder&);

    // Works until the options' number of records is written.
    void Run();

private:
    static constexpr std::uint32_t kMaxInterrupts = 4;  // nested
    static constexpr std::size_t kMaxCalls = 12;

    struct Interrupt {
        std::uint32_t m_Irq;
        std::uint32_t m_Steps;  // until it returns
    };

    void Step();
    void LetTimePass();
    void TaskStep();
    void InterruptStep();
    void Dispatch();
    void Block();
    void EnterInterrupt(std::uint32_t irq);
    void LeaveInterrupt();
    void Act();
    void CallOrLeave();
    void ToggleEvent();
    bool IsInTick() const;
    bool OwnsInnermostCall() const;
    std::uint32_t Context() const;
    std::uint32_t OtherIrq();
    std::uint32_t HighestReadyTask() const;
    void WakeATask() { m_Ready |= std::uint64_t{1} << m_Random.Below(m_Options.m_Tasks); }

    SimulatorOptions m_Options;
    AfterInterrupts m_After;
    std::uint32_t m_CountsPerFrame;
    TargetClock& m_Clock;
    TargetRecorder& m_Recorder;
    Random m_Random;

    std::uint64_t m_NextTick;
    std::uint64_t m_Ready = 1;  // a bit per task; the idle task never blocks
    std::uint32_t m_Task = 0;
    bool m_MustDispatch = false;  // the scheduler has to look who runs on
    std::array<Interrupt, kMaxInterrupts> m_Interrupts{};
    std::uint32_t m_Depth = 0;
    std::vector<std::uint32_t> m_CallOwners;  // the context of each open call, outermost first
    std::vector<bool> m_EventIsOn;
};

}  // namespace vesk
