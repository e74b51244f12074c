#include "desktop/AcceleratorWatcher.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "desktop/InputTranslation.h"
#include "platform/CMDIFrameWnd.h"

namespace vesk {

AcceleratorWatcher::AcceleratorWatcher(QWidget& mainWindow, CMDIFrameWnd& frame)
    : QObject(&mainWindow), m_MainWindow(mainWindow), m_Frame(frame) {
    QCoreApplication::instance()->installEventFilter(this);
}

// Before a key arrives, its receiver is asked whether it overrides a shortcut: said for an
// accelerator, no shortcut of the toolkit's takes the key, and it arrives.
bool AcceleratorWatcher::eventFilter(QObject* receiver, QEvent* event) {
    const bool asks = event->type() == QEvent::ShortcutOverride;
    if ((!asks && event->type() != QEvent::KeyPress) || !IsForMainWindow(receiver)) return false;
    const auto& keyEvent = *static_cast<QKeyEvent*>(event);
    const unsigned key = VirtualKey(keyEvent);
    const unsigned modifiers = AcceleratorModifiers(keyEvent.modifiers());
    if (key == 0 || m_Frame.CommandOfKey(key, modifiers) == 0) return false;
    if (asks) {
        event->accept();
        return true;
    }
    return m_Frame.PreTranslateKey(key, modifiers);
}

bool AcceleratorWatcher::IsForMainWindow(QObject* receiver) const {
    return receiver->isWidgetType() && static_cast<QWidget*>(receiver)->window() == &m_MainWindow &&
           !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
}

}  // namespace vesk
