#pragma once

#include <memory>

#include "platform/WindowPeer.h"

class CMDIFrameWnd;
class QMdiArea;
class QWidget;

namespace vesk {

// Shows a main frame's title on the main window, and tells the frame the size of the area that
// its children stand in. Borrows the window and the area, which may go first.
std::unique_ptr<WindowPeer> MakeMainFramePeer(CMDIFrameWnd&, QWidget& mainWindow, QMdiArea& area);

}  // namespace vesk
