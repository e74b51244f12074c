#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/LogWriter.h"
#include "simulator/SimulatedCounters.h"
#include "simulator/SimulatedTruth.h"
#include "simulator/TargetClock.h"

namespace vesk {

// The log of the simulated target: takes what happens there, in order, writes a record of it, and
// keeps account of what a reader will make of the records. Tasks, interrupts, functions, marks and
// events are given by their number in TargetNames.h, and happen when the clock says.
class TargetRecorder {
public:
    static constexpr int kNobody = -1;

    // Clock and writer are borrowed.
    TargetRecorder(const LogFormat&, LogWriter&, const TargetClock&, SimulatedCounters,
                   std::uint32_t tasks);

    // The processor changes hands.
    void Task(std::uint32_t task);
    void Interrupt(std::uint32_t irq);
    void ReturnTo(int job);  // what a reader takes to run then
    void Resume(std::uint32_t task);
    static int JobOfTask(std::uint32_t task) { return static_cast<int>(task); }
    int JobOfIrq(std::uint32_t irq) const { return static_cast<int>(m_Tasks + irq); }

    // Calls nest across tasks and interrupts: the function that left is the last one entered.
    void Enter(std::uint32_t function);
    void Leave();
    void Mark(std::uint32_t mark);
    void EventOn(std::uint32_t event);
    void EventOff(std::uint32_t event);

    // Drops all records from here to the next task record, but so many at least. A task switch
    // must have been recorded before.
    void LoseRecords(std::uint32_t atLeast);

    std::uint64_t Written() const { return m_Written; }  // records

    // Once, behind the last record: the account.
    SimulatedTruth Finish();

private:
    struct Call {
        std::uint32_t m_Function;
        std::uint64_t m_Start;  // log time
        bool m_IsKnown;         // to a reader: its entry is in the log, and no loss behind it
    };

    bool Write(std::uint32_t id);
    void EndLoss();
    void Switch(std::uint32_t id, int job, bool isTask = false);
    void CloseJob(int job, std::uint64_t end);
    std::string JobName(std::size_t job) const;

    LogWriter& m_Writer;
    const TargetClock& m_Clock;
    SimulatedCounters m_Counters;
    std::uint32_t m_Tasks;
    bool m_IsTqcnt;
    std::uint32_t m_Wrap;  // counts
    double m_CountsPerQbit;
    std::uint32_t m_RecordBytes;

    std::uint64_t m_Written = 0;
    std::uint64_t m_LastCounts = 0;
    std::uint64_t m_LogTime = 0;
    int m_Job = kNobody;  // runs now, and since when
    std::uint64_t m_JobStart = 0;
    std::vector<std::uint32_t> m_TaskIds;
    std::vector<SimulatedTotal> m_Jobs;  // tasks, interrupts, lost
    std::vector<SimulatedTotal> m_Functions;
    std::vector<SimulatedTotal> m_Events;
    std::vector<std::uint64_t> m_Marks;
    std::vector<std::uint64_t> m_EventStarts;  // 0: not running
    std::vector<Call> m_Calls;
    bool m_IsLosing = false;
    std::uint32_t m_ToLose = 0;
    std::uint32_t m_Lost = 0;        // records, of this loss
    std::vector<Call> m_OpenAtLoss;  // a reader closes them behind it
    SimulatedTruth m_Truth;
};

}  // namespace vesk
