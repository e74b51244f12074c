#include "platform/CMenu.h"

#include "platform/CWnd.h"
#include "platform/UserInterface.h"

namespace vesk {
namespace {

using Rows = std::span<const MenuItemTemplate>;

MenuItem MakeItem(const MenuItemTemplate& row) {
    MenuItem item;
    item.m_Id = row.m_Id;
    item.m_State.m_Text = row.m_Text;
    item.m_Separator = row.m_Id == 0 && item.m_State.m_Text.IsEmpty();
    return item;
}

// Takes the rows from `at` on that stand at the first one's level or deeper.
void TakeItems(Rows rows, std::size_t& at, std::vector<MenuItem>& items) {
    const int level = at < rows.size() ? rows[at].m_Level : 0;
    while (at < rows.size() && rows[at].m_Level >= level) {
        items.push_back(MakeItem(rows[at++]));
        if (at == rows.size() || rows[at].m_Level <= level) continue;
        items.back().m_Popup = std::make_unique<CMenu>();
        TakeItems(rows, at, items.back().m_Popup->Items());
    }
}

}  // namespace
}  // namespace vesk

bool CMenu::LoadMenu(unsigned id) {
    const vesk::MenuTemplate* table = vesk::FindMenu(id);
    if (!table) return false;
    m_Items.clear();
    std::size_t at = 0;
    vesk::TakeItems(table->m_Items, at, m_Items);
    return true;
}

CMenu* CMenu::GetSubMenu(int position) const {
    if (position < 0 || position >= GetMenuItemCount()) return nullptr;
    return m_Items[static_cast<std::size_t>(position)].m_Popup.get();
}

unsigned CMenu::GetMenuItemID(int position) const {
    if (position < 0 || position >= GetMenuItemCount()) return 0;
    return m_Items[static_cast<std::size_t>(position)].m_Id;
}

bool CMenu::TrackPopupMenu(unsigned /*flags*/, int x, int y, CWnd* owner) {
    if (!owner) return false;
    const unsigned command = vesk::CurrentUserInterface().RunMenu(*this, {x, y}, *owner);
    if (command == 0) return false;
    owner->OnCommand(command);
    return true;
}

void CMenu::UpdateItems(CCmdTarget& target) {
    for (vesk::MenuItem& item : m_Items) {
        if (item.m_Id != 0 && !item.m_Popup) CCmdUI(item.m_Id, item.m_State).DoUpdate(target);
    }
}

vesk::MenuItem* CMenu::Find(unsigned id) {
    for (vesk::MenuItem& item : m_Items) {
        if (item.m_Popup) {
            if (vesk::MenuItem* found = item.m_Popup->Find(id)) return found;
        } else if (item.m_Id == id && id != 0) {
            return &item;
        }
    }
    return nullptr;
}
