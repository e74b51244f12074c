#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/UserInterface.h"

class CMDIFrameWnd;
class QDialog;
class QMdiArea;

namespace vesk {

class QtGlyphs;

// Answers the library's questions with real windows: dialogs, boxes, menus; gives frames, scroll
// bars and tool tips their real windows; and tells sizes, colours and the font of the desktop.
class QtUserInterface : public UserInterface {
public:
    QtUserInterface();
    ~QtUserInterface() override;

    // Where child frames go and what dialogs stand over; borrowed. Either may go first.
    void SetMainWindow(QWidget& window, QMdiArea& area);

    int ShowMessage(const Message&) override;
    std::unique_ptr<ProgressDisplay> BeginProgress(const CString& what) override;
    // In the main window's status bar, for some seconds; an empty text takes back what stands
    // there.
    void ShowStatus(const CString&) override;
    void RunDialog(CDialog&) override;
    int RunFileDialog(CFileDialog&) override;
    int RunColorDialog(CColorDialog&) override;
    unsigned RunMenu(CMenu&, CPoint screen, CWnd& owner) override;
    // For a main frame: its title becomes the main window's, and it is told the area's size. For a
    // child frame: a window in the area. For a tool tip: its label. For a scroll bar: one in its
    // view's window, if that has one. Null for all others, and for frames without a main window.
    std::unique_ptr<WindowPeer> MakePeer(CWnd&) override;
    int SystemMetric(int index) override;
    COLORREF SystemColor(int index) override;
    const GlyphSource& Glyphs() override;

    // Has the user answer a dialog of the toolkit's; whether it was accepted.
    bool RunModal(QDialog&);

    // Called with every modal window (dialog, box, file dialog) once it is shown and active; a
    // test then works in it with real mouse and key events. Modal windows under test that nobody
    // closes would hang: with a probe, a window still open after the probe returns is closed.
    using Probe = std::function<void(QWidget& modalWindow)>;
    void SetProbe(Probe probe) { m_Probe = std::move(probe); }

    int m_ProgressDelay;  // ms from the begin of long work to its progress dialog

private:
    QWidget* DialogParent() const;
    void PrepareModal(QWidget& window) const;

    QPointer<QWidget> m_MainWindow;
    QPointer<QWidget> m_Area;
    std::unique_ptr<QtGlyphs> m_Glyphs;
    Probe m_Probe;
};

}  // namespace vesk
