#pragma once

#include <functional>

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace vesk {

// Adds the hidden commands that tell shells and manuals about the program: "completion" with the
// name of a shell, and "man". One that is chosen becomes the action. Borrows all of it.
void OfferSelfDescription(CLI::App& program, OutputOptions& output,
                          std::function<ExitCode(Terminal&)>& chosen);

}  // namespace vesk
