#pragma once

#include <QObject>

class CMDIFrameWnd;
class QKeyEvent;
class QWidget;

namespace vesk {

// Sees every key pressed in a main window first, and runs those that are accelerators. The
// toolkit's own shortcuts know neither the tables nor the numeric pad's keys. Owned by the window.
class AcceleratorWatcher : public QObject {
public:
    AcceleratorWatcher(QWidget& mainWindow, CMDIFrameWnd& frame);
    bool eventFilter(QObject*, QEvent*) override;

private:
    bool IsForMainWindow(QObject* receiver) const;

    QWidget& m_MainWindow;
    CMDIFrameWnd& m_Frame;
};

}  // namespace vesk
