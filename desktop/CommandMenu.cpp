#include "desktop/CommandMenu.h"

#include <QActionGroup>
#include <QMenu>
#include <utility>
#include <vector>

#include "desktop/QtText.h"
#include "platform/CMenu.h"

namespace vesk {

namespace {

using ShownItems = std::vector<std::pair<std::size_t, QAction*>>;  // position in the menu, action

void ShowState(QAction& action, const CommandState& state) {
    action.setText(ToQt(state.m_Text));
    action.setEnabled(state.m_Enabled);
    // A choice of its own for each gives the round mark; the commands keep it to one.
    if (state.m_Radio && !action.actionGroup()) (new QActionGroup(&action))->addAction(&action);
    action.setCheckable(state.m_Checked);
    action.setChecked(state.m_Checked);
}

void Refresh(CMenu& menu, const ShownItems& shown, const CommandMenuUser& user) {
    user.m_Update(menu);
    for (const auto& [position, action] : shown) {
        if (position < menu.Items().size()) ShowState(*action, menu.Items()[position].m_State);
    }
}

}  // namespace

void FillCommandMenu(QMenu& target, CMenu& menu, const CommandMenuUser& user) {
    ShownItems shown;
    for (std::size_t i = 0; i < menu.Items().size(); ++i) {
        const MenuItem& item = menu.Items()[i];
        if (item.m_Separator) {
            target.addSeparator();
        } else if (item.m_Popup) {
            FillCommandMenu(*target.addMenu(ToQt(item.m_State.m_Text)), *item.m_Popup, user);
        } else {
            QAction* action = target.addAction(ToQt(item.m_State.m_Text));
            action->setData(item.m_Id);
            QObject::connect(action, &QAction::triggered, &target,
                             [user, id = item.m_Id] { user.m_Chosen(id); });
            shown.emplace_back(i, action);
        }
    }
    QObject::connect(&target, &QMenu::aboutToShow, &target,
                     [&menu, shown, user] { Refresh(menu, shown, user); });
}

}  // namespace vesk
