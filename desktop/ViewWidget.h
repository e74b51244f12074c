#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "platform/WindowPeer.h"

class CScrollBar;
class CView;

namespace vesk {

class RasterSurface;

// The real window of a view: paints what is invalid through the view into a raster that is kept
// between paints, and brings mouse, keys and focus to it. Scroll bars of the view stand in it where
// the view has put them. The view owns its peer, the window around it this widget; either may go
// first.
class ViewWidget : public QWidget {
public:
    ViewWidget(QWidget& parent, CView& view);
    ~ViewWidget() override;

    CView* View() const { return m_View; }  // null once the view has gone

    // The real scroll bar for one of the view's.
    std::unique_ptr<WindowPeer> MakeScrollBar(CScrollBar&);

    // The widget that shows a window, or null if none does.
    static ViewWidget* Of(const WindowPeer*);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void contextMenuEvent(QContextMenuEvent*) override;
    bool event(QEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void focusInEvent(QFocusEvent*) override;

private:
    class Peer;
    void OpenContextMenu(const QPointF& global);
    void ShowPointer(const QMouseEvent&);

    CView* m_View;
    std::unique_ptr<RasterSurface> m_Surface;
    bool m_IsPainting = false;
};

}  // namespace vesk
