#pragma once

#include <memory>

#include "platform/WindowPeer.h"

class CToolTipCtrl;

namespace vesk {

// The real window of a tool tip: a text without a frame that stands where it is told to, for as
// long as it is told to, and takes neither focus nor clicks.
std::unique_ptr<WindowPeer> MakeToolTipLabel(CToolTipCtrl&);

}  // namespace vesk
