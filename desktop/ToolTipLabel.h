#pragma once

#include <memory>

#include "platform/WindowPeer.h"

class CToolTipCtrl;

namespace vesk {

// The real window of a tool tip: a text that stands where it is told to, for as long as it is told
// to, and takes neither focus nor clicks. It never leaves the screen of its owner, lets lines go
// that the screen has no room for, and hides while another window than the user's has the focus.
std::unique_ptr<WindowPeer> MakeToolTipLabel(CToolTipCtrl&);

}  // namespace vesk
