#pragma once

#include <string>

#include "database/TargetDatabase.h"
#include "log/McuJobList.h"
#include "simulator/SimulatorOptions.h"

namespace vesk {

// The logs that figures are given for.
SimulatorOptions OnlySwitches();                 // 10 million plain records, nothing else
SimulatorOptions MicrosecondsWithExtraValues();  // switches in USCNT form with 4 extra values
SimulatorOptions Packets();                      // all kinds of records, with losses
SimulatorOptions Functions();                    // switches and many functions

// A simulated log in a temporary file, with its target description beside it; both go with the
// object.
class BenchLog {
public:
    BenchLog(const std::string& name, const SimulatorOptions&);
    ~BenchLog();
    BenchLog(const BenchLog&) = delete;
    BenchLog& operator=(const BenchLog&) = delete;

    const std::string& Path() const { return m_Path; }
    std::uint64_t Jobs() const { return m_Jobs; }

    // Reads the log; ends the program if it can't be read.
    void ReadInto(McuJobList& list);

private:
    std::string m_Path;
    TargetDatabase m_Database;
    std::uint64_t m_Jobs = 0;
};

// Processor time of this process in seconds.
double ProcessorTime();

// What another program took until it ended.
struct ProgramCost {
    double m_Seconds = 0;  // processor time
    long m_PeakKB = 0;     // resident memory
};
ProgramCost RunProgram(const std::string& path, const std::string& argument1,
                       const std::string& argument2);

}  // namespace vesk
