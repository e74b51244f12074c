#include "desktop/MainFramePeer.h"

#include <QEvent>
#include <QMdiArea>
#include <QPointer>

#include "desktop/InputTranslation.h"
#include "desktop/QtText.h"
#include "platform/CMDIFrameWnd.h"

namespace vesk {

namespace {

class MainFramePeer : public QObject, public WindowPeer {
public:
    MainFramePeer(CMDIFrameWnd& frame, QWidget& window, QMdiArea& area)
        : m_Frame(frame), m_Window(&window), m_Viewport(area.viewport()) {
        m_Viewport->installEventFilter(this);
        Changed(Aspect::Text);
        TellSize();
    }

    void Changed(Aspect aspect) override {
        if (m_Window && aspect == Aspect::Text)
            m_Window->setWindowTitle(ToQt(m_Frame.GetWindowText()));
    }
    CPoint ScreenOrigin() const override {
        return m_Viewport ? PixelOf(m_Viewport->mapToGlobal(QPointF(0, 0))) : CPoint();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize && watched == m_Viewport) TellSize();
        return QObject::eventFilter(watched, event);
    }

private:
    void TellSize() { m_Frame.PeerMoved(FromQt(m_Viewport->rect()), SW_SHOWNORMAL); }

    CMDIFrameWnd& m_Frame;
    QPointer<QWidget> m_Window;
    QPointer<QWidget> m_Viewport;
};

}  // namespace

std::unique_ptr<WindowPeer> MakeMainFramePeer(CMDIFrameWnd& frame, QWidget& mainWindow,
                                              QMdiArea& area) {
    return std::make_unique<MainFramePeer>(frame, mainWindow, area);
}

}  // namespace vesk
