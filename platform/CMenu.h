#pragma once

#include <memory>
#include <vector>

#include "platform/CCmdUI.h"
#include "platform/CObject.h"
#include "platform/Geometry.h"
#include "platform/Resources.h"

class CCmdTarget;
class CMenu;
class CWnd;

constexpr unsigned TPM_LEFTALIGN = 0;

namespace vesk {

struct MenuItem {
    unsigned m_Id = 0;
    CommandState m_State;
    bool m_Separator = false;
    std::unique_ptr<CMenu> m_Popup;
};

}  // namespace vesk

// A menu: items with their state, some of which open further menus.
class CMenu : public CObject {
public:
    // Makes the menu from the table of that id. False if there is none.
    bool LoadMenu(unsigned id);

    CMenu* GetSubMenu(int position) const;  // null if that item opens none; owned by the menu
    int GetMenuItemCount() const { return static_cast<int>(m_Items.size()); }
    unsigned GetMenuItemID(int position) const;  // 0 for separators and pop-ups

    // Shows the menu at a point of the screen. The owner's update handlers run first for each
    // pop-up that opens; the command chosen goes to the owner. True if one was chosen.
    bool TrackPopupMenu(unsigned flags, int x, int y, CWnd* owner);

    // Runs the update handlers of target for the items of this menu, not of its pop-ups.
    void UpdateItems(CCmdTarget& target);

    std::vector<vesk::MenuItem>& Items() { return m_Items; }
    const std::vector<vesk::MenuItem>& Items() const { return m_Items; }
    // The item of a command, wherever it stands below this menu, or null.
    vesk::MenuItem* Find(unsigned id);

private:
    std::vector<vesk::MenuItem> m_Items;
};
