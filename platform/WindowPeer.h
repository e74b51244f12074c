#pragma once

#include <cstdint>

#include "platform/Geometry.h"

namespace vesk {

// What of a window's state changed. A peer reads the new state from the window itself.
enum class Aspect : std::uint8_t {
    Text,
    Enabled,
    Visible,    // and, for a frame, minimised, maximised or normal
    Position,   // within the parent
    Content,    // items of a list, rows of a list control
    Selection,  // of a list; check of a button
    Scroll,     // range, page or position of a scroll bar; a list's first line in sight
    Focus,      // the window asks for it
    TextSelection,
    Top,  // the window is to come before its siblings
};

// The real window behind a platform window, made by the desktop. Without one a window is headless
// and nothing else changes. Owned by its window, which is half gone already when the peer goes.
class WindowPeer {
public:
    virtual ~WindowPeer() = default;
    virtual void Changed(Aspect) = 0;
    // Part of the client area is to be painted anew, soon.
    virtual void Invalidated(const CRect&) {}
    // Where the client area's top left lies on the screen.
    virtual CPoint ScreenOrigin() const { return {}; }
};

}  // namespace vesk
