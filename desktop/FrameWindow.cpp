#include "desktop/FrameWindow.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QPointer>
#include <QScopedValueRollback>

#include "desktop/InputTranslation.h"
#include "desktop/QtText.h"
#include "desktop/ViewWidget.h"
#include "platform/CMDIChildWnd.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CView.h"

namespace vesk {

class FrameWindow::Peer : public WindowPeer {
public:
    explicit Peer(FrameWindow& window) : m_Window(&window) {}
    ~Peer() override {
        if (m_Window) m_Window->FrameGone();
    }

    void Changed(Aspect aspect) override {
        if (!m_Window) return;
        const CMDIChildWnd& frame = *m_Window->m_Frame;
        switch (aspect) {
            case Aspect::Text:
                return m_Window->setWindowTitle(ToQt(frame.GetWindowText()));
            case Aspect::Enabled:
                return m_Window->setEnabled(frame.IsWindowEnabled());
            case Aspect::Visible:
            case Aspect::Position:
                return m_Window->ShowPlacement();
            case Aspect::Top:
                if (m_Window->mdiArea()) m_Window->mdiArea()->setActiveSubWindow(m_Window);
                return;
            default:
                return;
        }
    }
    CPoint ScreenOrigin() const override {
        if (!m_Window) return {};
        return PixelOf(m_Window->mapToGlobal(QPointF(m_Window->contentsRect().topLeft())));
    }

private:
    QPointer<FrameWindow> m_Window;
};

std::unique_ptr<WindowPeer> FrameWindow::Make(QMdiArea& area, CMDIChildWnd& frame) {
    auto* window = new FrameWindow(frame);
    area.addSubWindow(window);
    connect(&area, &QMdiArea::subWindowActivated, window,
            [window](const QMdiSubWindow* active) { window->Activated(active); });
    window->ShowPlacement();
    return std::make_unique<Peer>(*window);
}

FrameWindow::FrameWindow(CMDIChildWnd& frame) : m_Frame(&frame) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(ToQt(frame.GetWindowText()));
    if (CView* view = frame.GetActiveView()) setWidget(new ViewWidget(*this, *view));
}

void FrameWindow::Activated(const QMdiSubWindow* active) {
    if (active != this || !m_Frame) return;
    const CMDIFrameWnd* main = m_Frame->GetMDIFrame();
    if (main && main->MDIGetActive() != m_Frame) m_Frame->MDIActivate();
}

void FrameWindow::ShowPlacement() {
    if (m_IsClosing) return;
    {
        const QScopedValueRollback showing(m_ShowsFrame, true);
        WINDOWPLACEMENT placement;
        m_Frame->GetWindowPlacement(&placement);
        // The window can take its normal place only while it is normal.
        if (placement.showCmd == SW_SHOWNORMAL || ShowCommand() != placement.showCmd) {
            if (ShowCommand() != SW_SHOWNORMAL) showNormal();
            MoveContents(placement.rcNormalPosition);
        }
        if (!m_Frame->IsWindowVisible()) {
            hide();
        } else if (placement.showCmd == SW_SHOWMAXIMIZED) {
            showMaximized();
        } else if (placement.showCmd == SW_SHOWMINIMIZED) {
            showMinimized();
        } else {
            show();
        }
    }
    if (isVisible()) TellPlacement();
}

void FrameWindow::MoveContents(const CRect& rect) {
    const QMargins borders = contentsMargins();
    setGeometry(rect.left, rect.top, rect.Width() + borders.left() + borders.right(),
                rect.Height() + borders.top() + borders.bottom());
}

void FrameWindow::TellPlacement() {
    if (m_ShowsFrame || m_IsClosing || !m_Frame) return;
    m_Frame->PeerMoved(FromQt(QRect(pos(), contentsRect().size())), ShowCommand());
}

unsigned FrameWindow::ShowCommand() const {
    if (isMaximized()) return SW_SHOWMAXIMIZED;
    return isMinimized() ? SW_SHOWMINIMIZED : SW_SHOWNORMAL;
}

// The frame is deleted by its closing, unless it refuses.
void FrameWindow::closeEvent(QCloseEvent* event) {
    if (m_Frame) {
        const QScopedValueRollback closing(m_IsClosing, true);
        m_Frame->OnClose();
        if (m_Frame) return event->ignore();
    }
    QMdiSubWindow::closeEvent(event);
}

void FrameWindow::FrameGone() {
    m_Frame = nullptr;
    if (!m_IsClosing) close();
}

void FrameWindow::moveEvent(QMoveEvent* event) {
    QMdiSubWindow::moveEvent(event);
    TellPlacement();
}

void FrameWindow::resizeEvent(QResizeEvent* event) {
    QMdiSubWindow::resizeEvent(event);
    TellPlacement();
}

void FrameWindow::changeEvent(QEvent* event) {
    QMdiSubWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) TellPlacement();
}

}  // namespace vesk
