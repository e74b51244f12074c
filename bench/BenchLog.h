#pragma once

#include <string>

#include "database/TargetDatabase.h"
#include "log/McuJobList.h"
#include "simulator/SimulatorOptions.h"

namespace vesk {

// A simulated log in a temporary file, with its target description beside it; both go with the
// object.
class BenchLog {
public:
    BenchLog(const std::string& name, const SimulatorOptions&);
    ~BenchLog();
    BenchLog(const BenchLog&) = delete;
    BenchLog& operator=(const BenchLog&) = delete;

    const std::string& Path() const { return m_Path; }
    TargetDatabase& Database() { return m_Database; }

    // Reads the log; ends the program if it can't be read.
    void ReadInto(McuJobList& list);

private:
    std::string m_Path;
    TargetDatabase m_Database;
};

// Processor time of this process in seconds.
double ProcessorTime();

// What another program took until it ended.
struct ProgramCost {
    double m_Seconds = 0;    // processor time
    long m_PeakKB = 0;       // resident memory
};
ProgramCost RunProgram(const std::string& path, const std::string& argument1,
                       const std::string& argument2);

}  // namespace vesk
