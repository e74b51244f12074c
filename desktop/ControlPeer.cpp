#include "desktop/ControlPeer.h"

#include <QEvent>
#include <QTimer>

#include "desktop/InputTranslation.h"

namespace vesk {

ControlPeer::ControlPeer(CWnd& window, QWidget& widget, Acted acted)
    : m_Window(window), m_Widget(widget), m_Acted(std::move(acted)) {
    widget.installEventFilter(this);
}

void ControlPeer::Changed(Aspect aspect) {
    switch (aspect) {
        case Aspect::Text:
            return SyncText();
        case Aspect::Enabled:
            return m_Widget.setEnabled(m_Window.IsWindowEnabled());
        case Aspect::Visible:
            return m_Widget.setVisible(m_Window.IsWindowVisible());
        case Aspect::Content:
            m_ContentIsStale = true;
            return Postpone();
        case Aspect::Selection:
        case Aspect::Scroll:
            m_SelectionIsStale = true;
            return Postpone();
        case Aspect::Focus:
            return m_Widget.setFocus();
        case Aspect::TextSelection:
            return SyncTextSelection();
        case Aspect::Position:
        case Aspect::Top:
            return;  // the dialog's layout decides these
    }
}

CPoint ControlPeer::ScreenOrigin() const {
    return PixelOf(m_Widget.mapToGlobal(QPointF(0, 0)));
}

void ControlPeer::Sync() {
    m_ContentIsStale = m_SelectionIsStale = true;
    SyncText();
    m_Widget.setEnabled(m_Window.IsWindowEnabled());
    m_Widget.setVisible(m_Window.IsWindowVisible());
    Flush();
    SyncTextSelection();
}

void ControlPeer::Flush() {
    if (m_ContentIsStale) SyncContent();
    if (m_ContentIsStale || m_SelectionIsStale) SyncSelection();
    m_ContentIsStale = m_SelectionIsStale = false;
}

bool ControlPeer::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && watched == &m_Widget) {
        m_Window.PeerFocused();
    }
    return QObject::eventFilter(watched, event);
}

void ControlPeer::Act(const std::function<void()>& action) {
    action();
    m_SelectionIsStale = true;
    SyncText();
    m_Acted();
}

void ControlPeer::Postpone() {
    if (m_FlushIsDue) return;
    m_FlushIsDue = true;
    QTimer::singleShot(0, this, [this] {
        m_FlushIsDue = false;
        Flush();
    });
}

}  // namespace vesk
