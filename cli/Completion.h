#pragma once

#include <string>

#include "cli/CommandShape.h"

namespace vesk {

// Scripts by which a shell completes the program's commands, options and values.
std::string BashCompletion(const CommandShape& program);
std::string ZshCompletion(const CommandShape& program);

}  // namespace vesk
