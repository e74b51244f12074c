#include "desktop/CommandWidgets.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "desktop/AcceleratorWatcher.h"
#include "desktop/CommandIcons.h"
#include "desktop/CommandMenu.h"
#include "desktop/QtText.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CMenu.h"

namespace vesk {

namespace {

QAction* AddButton(QToolBar& bar, unsigned command, CMDIFrameWnd& frame) {
    const char* text = FindString(command);
    const CString commandString(text ? text : "");
    QAction* action = bar.addAction(CommandIcon(command), ToQt(commandString).section('\n', 0, 0));
    action->setToolTip(TipOf(commandString));
    action->setData(command);
    QObject::connect(action, &QAction::triggered, &bar, [&bar, &frame, command] {
        frame.OnCommand(command);
        UpdateToolBar(bar, frame);
    });
    return action;
}

}  // namespace

void AddMenus(QMenuBar& bar, CMenu& menu, CMDIFrameWnd& frame) {
    for (MenuItem& item : menu.Items()) {
        if (item.m_Popup) FillMenu(*bar.addMenu(ToQt(item.m_State.m_Text)), *item.m_Popup, frame);
    }
}

void FillMenu(QMenu& target, CMenu& menu, CMDIFrameWnd& frame) {
    FillCommandMenu(target, menu,
                    {[&frame](CMenu& popup) { popup.UpdateItems(frame); },
                     [&frame](unsigned command) { frame.OnCommand(command); }});
}

QToolBar* AddToolBar(QMainWindow& window, const ToolBarTemplate& from, CMDIFrameWnd& frame) {
    auto* bar = window.addToolBar(QString());
    bar->setObjectName(QString("toolbar%1").arg(from.m_Id));
    bar->setIconSize({from.m_ButtonWidth, from.m_ButtonHeight});
    for (const unsigned command : from.m_Commands) {
        if (command == 0) {
            bar->addSeparator();
        } else {
            AddButton(*bar, command, frame);
        }
    }
    UpdateToolBar(*bar, frame);
    return bar;
}

void UpdateToolBar(QToolBar& bar, CMDIFrameWnd& frame) {
    for (QAction* action : bar.actions()) {
        const unsigned command = action->data().toUInt();
        if (command == 0) continue;
        CommandState state;
        CCmdUI(command, state).DoUpdate(frame);
        action->setEnabled(state.m_Enabled);
        action->setCheckable(state.m_Checked);
        action->setChecked(state.m_Checked);
    }
}

void WatchAccelerators(QWidget& mainWindow, CMDIFrameWnd& frame) {
    new AcceleratorWatcher(mainWindow, frame);
}

}  // namespace vesk
