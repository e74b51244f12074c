#pragma once

#include <ostream>

#include "database/TargetDatabase.h"
#include "simulator/ByteSink.h"
#include "simulator/LogFormat.h"
#include "simulator/SimulatedTruth.h"
#include "simulator/SimulatorOptions.h"

namespace vesk {

// A small simulated target and its log. The options alone decide every byte of it.
// Options with a Problem() must not be simulated.
class Simulator {
public:
    explicit Simulator(const SimulatorOptions&);

    // Runs the target and writes its log. False if it could not be written.
    bool WriteLog(const ByteSink&);

    // What is in the log that was written last.
    const SimulatedTruth& Truth() const { return m_Truth; }

    // The target that the log is of, for reading it, and as a description in JSON.
    TargetDatabase Database() const;
    void WriteTargetDescription(std::ostream&) const;

    const LogFormat& Format() const { return m_Format; }

private:
    SimulatorOptions m_Options;
    LogFormat m_Format;
    SimulatedTruth m_Truth;
};

}  // namespace vesk
