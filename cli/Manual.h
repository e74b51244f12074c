#pragma once

#include <string>

#include "cli/CommandShape.h"

namespace vesk {

// The program's manual page.
std::string Manual(const CommandShape& program);

}  // namespace vesk
