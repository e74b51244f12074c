#pragma once

class CCmdTarget;
class CMDIFrameWnd;
class CMenu;
class QMainWindow;
class QMenu;
class QMenuBar;
class QToolBar;
class QWidget;

namespace vesk {

struct ToolBarTemplate;

// Menus, tool bars and keys made from the command tables. They decide nothing: text, enabled and
// checked state come from the update handlers that `frame` routes to, chosen commands go to its
// OnCommand. The widgets borrow frame and menu.

// One top-level menu for each pop-up of `menu`, brought up to date whenever one opens. The items
// of `menu` itself that open nothing are left out.
void AddMenus(QMenuBar& bar, CMenu& menu, CMDIFrameWnd& frame);

// Fills a menu from a command menu, sub-menus included.
void FillMenu(QMenu& target, CMenu& menu, CMDIFrameWnd& frame);

// A tool bar with an icon and a tip for each command. Caller keeps it up to date by UpdateToolBar
// whenever it likes: after each command and on idle.
QToolBar* AddToolBar(QMainWindow&, const ToolBarTemplate&, CMDIFrameWnd& frame);
void UpdateToolBar(QToolBar&, CMDIFrameWnd& frame);

// Watches the keys of a main window: accelerators become commands of `frame` before anything else
// sees them, unless a dialog or pop-up is open. Owned by the window.
void WatchAccelerators(QWidget& mainWindow, CMDIFrameWnd& frame);

}  // namespace vesk
