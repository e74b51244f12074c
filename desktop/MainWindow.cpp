#include "desktop/MainWindow.h"

#include <QAbstractEventDispatcher>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include "desktop/CommandWidgets.h"
#include "desktop/DesktopHost.h"
#include "desktop/Information.h"
#include "desktop/MarkerDock.h"
#include "desktop/QtText.h"
#include "desktop/QtUserInterface.h"
#include "desktop/SearchDock.h"
#include "desktop/StateFile.h"
#include "desktop/UserState.h"
#include "desktop/ViewPicture.h"
#include "desktop/ViewerKeys.h"
#include "log/McuJobList.h"
#include "log/TimeText.h"
#include "platform/CFileDialog.h"
#include "platform/CMDIChildWnd.h"
#include "platform/Text.h"
#include "platform/UserInterface.h"
#include "timeline/CMcuView.h"

namespace vesk {

namespace {

constexpr unsigned kLibraryMenu = 128;
constexpr unsigned kTimelineMenu = 203;
constexpr unsigned kAccelerators = 128;
constexpr unsigned kToolBar = 132;
constexpr const char* kPictureFilter =
    "PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg|PDF page (*.pdf)|*.pdf||";
constexpr QSize kFirstSize{1100, 720};
constexpr int kFollowInterval = 250;  // ms; the wheel, say, changes what a button can do

QStringList LocalFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) files.append(url.toLocalFile());
    return files;
}

// A text of any length that never widens the window.
QLabel* MakeStatusLabel() {
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setMinimumWidth(1);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

}  // namespace

MainWindow::MainWindow(QtUserInterface& user, DesktopHost& host, UserState& state, StateFile& file)
    : m_User(user),
      m_Host(host),
      m_State(state),
      m_StateFile(file),
      m_Frame(*this),
      m_Session(host, state, Listener()),
      m_Area(new QMdiArea) {
    setAcceptDrops(true);
    setCentralWidget(m_Area);
    m_Area->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    m_Area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_Area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    user.SetMainWindow(*this, *m_Area);
    m_Frame.SetWindowText("veskview");
    m_Frame.SetPeer(user.MakePeer(m_Frame));
    m_Frame.LoadAccelTable(kAccelerators);
    MakeMenus();
    MakeStatusBar();
    WatchAccelerators(*this, m_Frame);
    connect(m_Area, &QMdiArea::subWindowActivated, this, [this] { FrameActivated(); });
    resize(kFirstSize);
    restoreGeometry(QByteArray::fromStdString(m_State.m_MainWindow));
    m_HasLayout = restoreState(QByteArray::fromStdString(m_State.m_Layout));
    m_Host.SetTabs(m_State.m_Tabs);
    ShowChanges();
}

MainWindow::~MainWindow() {
    // Area and docks tell of what goes with them; nobody is there to hear.
    disconnect(m_Area, nullptr, this, nullptr);
    m_SearchDock->disconnect(this);
    m_MarkerDock->disconnect(this);
    m_Host.CloseFrames();
}

void MainWindow::Note(const QString& text) {
    if (!text.isEmpty()) m_User.ShowStatus(FromQt(text));
}

LogSession::Listener MainWindow::Listener() {
    return {[this] { return BeginRead(); }, [this] { m_Progress.reset(); },
            [this] {
                ShowChanges();
                SaveState();
            },
            [this](const std::string& text) { Note(ToQt(text)); }};
}

ReadProgress MainWindow::BeginRead() {
    m_SearchDock->Forget();
    m_Progress = m_User.BeginProgress("Reading the log");
    return
        [this](std::int64_t done, std::int64_t total) { return m_Progress->Advance(done, total); };
}

// --- Menus and bars ----------------------------------------------------------------------------

void MainWindow::MakeMenus() {
    MakeFileMenu();
    m_LibraryMenu.LoadMenu(kLibraryMenu);
    m_TimelineMenu.LoadMenu(kTimelineMenu);
    AddMenus(*menuBar(), m_LibraryMenu, m_Frame);
    // The timeline's menu and that of the windows stand before the last one, "About".
    QAction* const last = menuBar()->actions().last();
    const QList<QAction*> before = menuBar()->actions();
    AddMenus(*menuBar(), m_TimelineMenu, m_Frame);
    m_TimelineAction = menuBar()->actions().at(before.size());
    menuBar()->removeAction(last);
    QMenu* const windows = menuBar()->addMenu("&Window");
    MakeDocks(*windows);
    MakeWindowMenu(*windows);
    menuBar()->addAction(last);
    const ToolBarTemplate* const bar = FindToolBar(kToolBar);
    if (!bar) return;
    m_ToolBar = AddToolBar(*this, *bar, m_Frame);
}

void MainWindow::MakeFileMenu() {
    QMenu* const menu = menuBar()->addMenu("&File");
    // The accelerator table has the key.
    menu->addAction("&Open...\tCtrl+O", this, [this] { m_Session.AskForLog(); });
    menu->addAction("Open with another &header...", this,
                    [this] { m_Session.AskForLogWithHeader(); });
    menu->addAction("&Target description...", this, [this] { m_Session.AskForTarget(); });
    m_RecentMenu = menu->addMenu("&Recent files");
    connect(menu, &QMenu::aboutToShow, this, [this] { ListRecentFiles(); });
    menu->addSeparator();
    m_PictureAction = menu->addAction("&Save picture...", this, [this] { SavePictureAs(); });
    m_PrintAction = menu->addAction("&Print...", this, [this] { Print(); });
    m_PrintAction->setShortcut(QKeySequence(kPrintKey.m_Key));
    menu->addSeparator();
    // Every frame's own menu has that key.
    m_CloseAction = menu->addAction(QString("&Close\t") + kCloseKey.m_Key, this,
                                    [this] { CloseActiveFrame(); });
    menu->addAction("E&xit", this, [this] { close(); })->setShortcut(QKeySequence(kExitKey.m_Key));
}

// They stand where the user has put them, at first out of sight.
void MainWindow::MakeDocks(QMenu& menu) {
    m_SearchDock = new SearchDock(m_Host, this);
    m_MarkerDock = new MarkerDock(m_Host, this);
    for (QDockWidget* const dock :
         {static_cast<QDockWidget*>(m_SearchDock), static_cast<QDockWidget*>(m_MarkerDock)}) {
        addDockWidget(Qt::BottomDockWidgetArea, dock);
        dock->hide();
        menu.addAction(dock->toggleViewAction());
        connect(dock, &QDockWidget::visibilityChanged, this, [this] {
            FollowView();
            QTimer::singleShot(0, this, [this] { ShareRoom(); });
        });
    }
    m_SearchDock->toggleViewAction()->setShortcut(QKeySequence(kSearchKey.m_Key));
    m_MarkerDock->toggleViewAction()->setShortcut(QKeySequence(kMarkersKey.m_Key));
    menu.addSeparator();
    auto* const timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this] { FollowView(); });
    timer->start(kFollowInterval);
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { FollowView(); });
}

// When the lists first stand side by side, each gets the room that its columns want.
void MainWindow::ShareRoom() {
    if (m_HasLayout || !m_SearchDock->isVisible() || !m_MarkerDock->isVisible()) return;
    m_HasLayout = true;
    resizeDocks({m_SearchDock, m_MarkerDock},
                {m_SearchDock->sizeHint().width(), m_MarkerDock->sizeHint().width()},
                Qt::Horizontal);
}

void MainWindow::MakeWindowMenu(QMenu& menu) {
    menu.addAction("&Cascade", m_Area, &QMdiArea::cascadeSubWindows);
    menu.addAction("&Tile", m_Area, &QMdiArea::tileSubWindows);
    menu.addSeparator();
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] { ListWindows(menu); });
}

void MainWindow::ListWindows(QMenu& menu) {
    constexpr qsizetype kFixed = 6;
    for (QAction* const old : menu.actions().mid(kFixed)) delete old;
    for (QMdiSubWindow* const window : m_Area->subWindowList()) {
        QAction* const action =
            menu.addAction(window->windowTitle().replace('&', "&&"), this,
                           [this, window] { m_Area->setActiveSubWindow(window); });
        action->setCheckable(true);
        action->setChecked(window == m_Area->activeSubWindow());
    }
}

void MainWindow::ListRecentFiles() {
    m_RecentMenu->clear();
    for (const LogFiles& files : m_State.m_Recent.All()) {
        QString text = ToQt(files.m_Log);
        if (!files.m_Header.empty()) text += " (header of " + ToQt(files.m_Header) + ')';
        m_RecentMenu->addAction(text.replace('&', "&&"), this,
                                [this, files] { m_Session.OpenRecent(files); });
    }
    m_RecentMenu->setEnabled(!m_RecentMenu->isEmpty());
}

void MainWindow::MakeStatusBar() {
    m_LogLabel = MakeStatusLabel();
    statusBar()->setContentsMargins(6, 0, 6, 0);
    statusBar()->addWidget(m_LogLabel, 1);
    for (QLabel** const label : {&m_TargetLabel, &m_SpanLabel, &m_JobsLabel}) {
        *label = new QLabel;
        (*label)->setTextFormat(Qt::PlainText);
        (*label)->setContentsMargins(8, 0, 8, 0);
        statusBar()->addPermanentWidget(*label);
    }
}

// --- What changed ------------------------------------------------------------------------------

void MainWindow::ShowChanges() {
    ShowStatus();
    m_CloseAction->setEnabled(m_Frame.MDIGetActive() != nullptr);
    for (QAction* const action : {m_PictureAction, m_PrintAction})
        action->setEnabled(m_Host.ShowsTimeline());
    m_TimelineAction->setVisible(m_Host.ShowsTimeline());
    FollowView();
}

// What belongs to the view but is no part of it. During a read there is none to follow.
void MainWindow::FollowView() {
    if (m_Progress) return;
    if (m_ToolBar) UpdateToolBar(*m_ToolBar, m_Frame);
    m_SearchDock->Follow();
    m_MarkerDock->Follow();
}

void MainWindow::ShowStatus() {
    const McuJobList& log = m_Host.List();
    const QString path = m_Session.IsOpen() ? ToQt(m_Session.Files().m_Log) : "No log is open.";
    m_LogLabel->setText(path);
    m_LogLabel->setToolTip(path.toHtmlEscaped());
    for (QLabel* const label : {m_TargetLabel, m_SpanLabel, m_JobsLabel})
        label->setVisible(m_Session.IsOpen());
    const QString target = QFileInfo(ToQt(m_Host.TargetPath())).fileName();
    m_TargetLabel->setText(target.isEmpty() ? "No target description" : target);
    m_SpanLabel->setText(ToQt(GroupedNumber(log.m_EndTime)) + " QBit, " +
                         ToQt(MillisecondsText(log.m_EndTime)) + " ms");
    m_JobsLabel->setText(ToQt(GroupedNumber(log.size())) + (log.size() == 1 ? " job" : " jobs"));
}

void MainWindow::OnCommandDone() {
    ShowChanges();
}

// Also called when the last frame has gone, and then with it the log.
void MainWindow::FrameActivated() {
    if (m_Session.IsOpen() && !m_Frame.MDIGetActive()) m_Session.FrameClosed();
    ShowChanges();
}

void MainWindow::CloseActiveFrame() {
    if (m_Frame.MDIGetActive()) m_Frame.MDIGetActive()->OnClose();
    FrameActivated();
}

void MainWindow::SaveState() {
    m_State.m_Tabs = m_Host.Tabs();
    m_State.m_MainWindow = saveGeometry().toStdString();
    m_State.m_Layout = saveState().toStdString();
    Note(m_StateFile.Save(m_State));
}

// --- Pictures ----------------------------------------------------------------------------------

void MainWindow::SavePictureAs() {
    CMcuView* const view = m_Host.Timeline();
    if (!view) return;
    const std::string proposed =
        QFileInfo(ToQt(m_Session.Files().m_Log)).completeBaseName().append(".png").toStdString();
    CFileDialog dialog(false, "png", proposed.c_str(), OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                       kPictureFilter, &m_Frame);
    if (dialog.DoModal() != IDOK) return;
    std::string error;
    if (SavePicture(*view, dialog.GetPathName().Str(), devicePixelRatioF(), error)) {
        Note("Saved " + ToQt(dialog.GetPathName()));
    } else {
        AfxMessageBox(error.c_str(), MB_ICONEXCLAMATION);
    }
}

void MainWindow::Print() {
    CMcuView* const view = m_Host.Timeline();
    if (!view) return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(QFileInfo(ToQt(m_Session.Files().m_Log)).fileName());
    QPrintDialog dialog(&printer, this);
    if (m_User.RunModal(dialog) && !PrintPicture(*view, printer))
        AfxMessageBox("The page cannot be printed.", MB_ICONEXCLAMATION);
}

// --- Events ------------------------------------------------------------------------------------

void MainWindow::closeEvent(QCloseEvent* event) {
    SaveState();
    m_Host.CloseFrames();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

// Opened once the drop is over: whoever dragged must not wait for our dialogs.
void MainWindow::dropEvent(QDropEvent* event) {
    const QStringList files = LocalFiles(*event->mimeData());
    if (files.isEmpty()) return;
    event->acceptProposedAction();
    QTimer::singleShot(0, this, [this, files] {
        if (files.size() > 1)
            Note(QString("Of %1 files the first one is opened.").arg(files.size()));
        m_Session.Open({QFile::encodeName(files.first()).toStdString(), {}});
    });
}

}  // namespace vesk
