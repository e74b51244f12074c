#pragma once

#include <QMdiSubWindow>
#include <memory>

#include "platform/WindowPeer.h"

class CMDIChildWnd;
class QMdiArea;

namespace vesk {

class ViewWidget;

// The real window of a child frame, around the widget of its view. Title, place, state and
// activation go both ways. A frame's rectangle has its top left at the window's, and the size of
// what is inside the window's borders. The frame owns its peer, the area this window. The window
// goes with its frame; a frame that loses its window goes on without one.
class FrameWindow : public QMdiSubWindow {
public:
    // The window in the area, not yet shown, and the frame's peer.
    static std::unique_ptr<WindowPeer> Make(QMdiArea& area, CMDIChildWnd& frame);

    CMDIChildWnd* Frame() const { return m_Frame; }  // null once the frame has gone

protected:
    void closeEvent(QCloseEvent*) override;
    void moveEvent(QMoveEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void changeEvent(QEvent*) override;

private:
    class Peer;
    explicit FrameWindow(CMDIChildWnd& frame);
    void Activated(const QMdiSubWindow*);
    void ShowPlacement();
    void TellPlacement();
    void MoveContents(const CRect&);
    unsigned ShowCommand() const;
    void FrameGone();

    CMDIChildWnd* m_Frame;
    bool m_ShowsFrame = false;  // what comes from the frame is not told to it again
    bool m_IsClosing = false;
};

}  // namespace vesk
