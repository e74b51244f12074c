#pragma once

#include <QScrollBar>
#include <memory>

#include "platform/WindowPeer.h"

class CScrollBar;

namespace vesk {

// The real scroll bar of one in a view. It never moves by itself: what the user does is told to
// the view's scroll bar, and the thumb stands where that ends up.
class ScrollBarWidget : public QScrollBar {
public:
    // The widget belongs to `parent`, the peer to `bar`; either may go first.
    static std::unique_ptr<WindowPeer> Make(QWidget& parent, CScrollBar& bar);

protected:
    void wheelEvent(QWheelEvent*) override;

private:
    class Peer;
    ScrollBarWidget(QWidget& parent, CScrollBar& bar);
    void Act(unsigned code);
    void OnAction(int action);
    void ShowPlace();
    void ShowPosition();

    CScrollBar* m_Bar;
    int m_WheelRest = 0;  // of a notch, from wheels that turn in smaller steps
};

}  // namespace vesk
