#pragma once

#include <string>
#include <string_view>

#include "platform/Color.h"

class CDC;

namespace vesk {

// The text as it fits into a width in pixels: kept if it does, or if it is empty; otherwise its
// longest beginning that fits together with "...", and that behind it. At least "...".
std::string FitText(const CDC&, std::string_view text, int width);

// Black on a light block, white on any other.
COLORREF TextColorOn(COLORREF block);

}  // namespace vesk
