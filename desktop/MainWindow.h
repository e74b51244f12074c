#pragma once

#include <QMainWindow>
#include <memory>

#include "desktop/HostFrame.h"
#include "desktop/LogSession.h"
#include "platform/CMenu.h"
#include "platform/ProgressDisplay.h"

class QLabel;
class QMdiArea;

namespace vesk {

class DesktopHost;
class MarkerDock;
class QtUserInterface;
class SearchDock;
class StateFile;
struct UserState;

// The viewer's main window: menus, tool bar and status bar around the frames of the open log.
// Borrows what it is given, and keeps the state up to date and saved.
class MainWindow : public QMainWindow, private HostCommands {
public:
    MainWindow(QtUserInterface&, DesktopHost&, UserState&, StateFile&);
    ~MainWindow() override;

    LogSession& Session() { return m_Session; }

    // A hint in the status bar that goes by itself.
    void Note(const QString& text);

protected:
    void closeEvent(QCloseEvent*) override;
    void dragEnterEvent(QDragEnterEvent*) override;
    void dropEvent(QDropEvent*) override;

private:
    void OnOpenLog() override { m_Session.AskForLog(); }
    void OnOpenLogWithHeader() override { m_Session.AskForLogWithHeader(); }
    void OnShowInformation() override { m_Session.ShowInformation(); }
    void OnCommandDone() override;

    LogSession::Listener Listener();
    ReadProgress BeginRead();
    void MakeMenus();
    void MakeFileMenu();
    void MakeWindowMenu(QMenu&);
    void MakeDocks(QMenu&);
    void ShareRoom();
    void MakeStatusBar();
    void ListRecentFiles();
    void ListWindows(QMenu&);
    void ShowChanges();
    void FollowView();
    void ShowStatus();
    void FrameActivated();
    void CloseActiveFrame();
    void SaveState();
    void SavePictureAs();
    void Print();

    QtUserInterface& m_User;
    DesktopHost& m_Host;
    UserState& m_State;
    StateFile& m_StateFile;
    HostFrame m_Frame;
    LogSession m_Session;
    std::unique_ptr<ProgressDisplay> m_Progress;
    CMenu m_LibraryMenu;   // 128
    CMenu m_TimelineMenu;  // 203
    QMdiArea* m_Area;
    SearchDock* m_SearchDock = nullptr;
    MarkerDock* m_MarkerDock = nullptr;
    bool m_HasLayout = false;  // the docks stand as the user wants them
    QToolBar* m_ToolBar = nullptr;
    QMenu* m_RecentMenu = nullptr;
    QAction* m_TimelineAction = nullptr;
    QAction* m_CloseAction = nullptr;
    QAction* m_PictureAction = nullptr;
    QAction* m_PrintAction = nullptr;
    QLabel* m_LogLabel = nullptr;
    QLabel* m_TargetLabel = nullptr;
    QLabel* m_SpanLabel = nullptr;
    QLabel* m_JobsLabel = nullptr;
};

}  // namespace vesk
