#pragma once

#include <string>

namespace vesk {

// All keys of the viewer, and what the mouse does, as Markdown: from the tables by which the
// program itself goes. docs/keys.md is this text.
std::string KeySheet();

}  // namespace vesk
