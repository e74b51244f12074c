#pragma once

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"
#include "simulator/SimulatorOptions.h"

namespace vesk {

// What the simulated target does, as options of a command.
void OfferSimulatorOptions(CLI::App&, SimulatorOptions&);

// vesk simulate: a log of a simulated target, and its target description beside it.
ExitCode RunSimulate(const SimulatorOptions&, const OutputOptions&);

}  // namespace vesk
