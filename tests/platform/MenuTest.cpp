#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/CMenu.h"
#include "platform/CWnd.h"
#include "platform/HeadlessUserInterface.h"
#include "platform/Keys.h"

namespace {

using testing::ElementsAre;

constexpr vesk::MenuItemTemplate kItems[] = {
    {0, 0, "&File"}, {1, 10, "&Open"}, {1, 0, ""},       {1, 0, "&Recent"}, {2, 11, "First"},
    {2, 0, "Older"}, {3, 12, "Last"},  {1, 13, "E&xit"}, {0, 14, "Help"},
};
constexpr vesk::MenuTemplate kMenus[] = {{1, kItems}};
const vesk::ResourceTables kTables{.m_Menus = kMenus};

std::vector<std::string> Print(const CMenu& menu, const std::string& indent = "") {
    std::vector<std::string> lines;
    for (const vesk::MenuItem& item : menu.Items()) {
        lines.push_back(indent + (item.m_Separator ? "---" : item.m_State.m_Text.Str()) +
                        (item.m_Id ? " " + std::to_string(item.m_Id) : ""));
        if (!item.m_Popup) continue;
        const auto below = Print(*item.m_Popup, indent + "  ");
        lines.insert(lines.end(), below.begin(), below.end());
    }
    return lines;
}

// Handles 10, and 12 while it is ready.
class Owner : public CWnd {
public:
    void OnOpen() { ++m_Opened; }
    void OnLast() { ++m_Lasts; }
    void OnUpdateLast(CCmdUI* ui) { ui->Enable(m_Ready); }
    const vesk::MessageMap* GetMessageMap() const override;

    int m_Opened = 0;
    int m_Lasts = 0;
    bool m_Ready = false;
};

constexpr vesk::MessageEntry kEntries[] = {
    vesk::Command<&Owner::OnOpen>(10),
    vesk::Command<&Owner::OnLast, &Owner::OnUpdateLast>(12),
};
const vesk::MessageMap* Owner::GetMessageMap() const {
    static const vesk::MessageMap map{nullptr, kEntries};
    return &map;
}

class Menu : public testing::Test {
protected:
    Menu() { m_Menu.LoadMenu(1); }

    AFX_EXTENSION_MODULE m_Module{true, &kTables};
    CDynLinkLibrary m_Library{m_Module};
    CMenu m_Menu;
    Owner m_Owner;
};

TEST_F(Menu, IsBuiltFromItsTable) {
    EXPECT_THAT(Print(m_Menu),
                ElementsAre("&File", "  &Open 10", "  ---", "  &Recent", "    First 11",
                            "    Older", "      Last 12", "  E&xit 13", "Help 14"));
    EXPECT_TRUE(m_Menu.LoadMenu(1)) << "again";
    EXPECT_EQ(m_Menu.GetMenuItemCount(), 2);
    EXPECT_FALSE(m_Menu.LoadMenu(2)) << "no such table";
}

TEST_F(Menu, GivesItsItemsByPosition) {
    const CMenu* file = m_Menu.GetSubMenu(0);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->GetMenuItemCount(), 4);
    EXPECT_EQ(file->GetMenuItemID(0), 10u);
    EXPECT_EQ(file->GetMenuItemID(1), 0u) << "separator";
    EXPECT_EQ(file->GetMenuItemID(2), 0u) << "pop-up";
    EXPECT_FALSE(m_Menu.GetSubMenu(1)) << "opens nothing";
    for (int position : {-1, 2}) {
        EXPECT_FALSE(m_Menu.GetSubMenu(position));
        EXPECT_EQ(m_Menu.GetMenuItemID(position), 0u);
    }
}

TEST_F(Menu, FindsACommandAtAnyDepth) {
    for (unsigned id : {10u, 12u, 14u}) {
        const vesk::MenuItem* item = m_Menu.Find(id);
        ASSERT_TRUE(item) << id;
        EXPECT_EQ(item->m_Id, id);
    }
    EXPECT_FALSE(m_Menu.Find(99));
    EXPECT_FALSE(m_Menu.Find(0)) << "a separator is no command";
}

TEST_F(Menu, UpdatesItsOwnItemsOnly) {
    CMenu& file = *m_Menu.GetSubMenu(0);
    file.UpdateItems(m_Owner);
    EXPECT_TRUE(m_Menu.Find(10)->m_State.m_Enabled);
    EXPECT_FALSE(m_Menu.Find(13)->m_State.m_Enabled) << "nobody handles it";
    EXPECT_TRUE(m_Menu.Find(12)->m_State.m_Enabled) << "stands in a pop-up below";
    EXPECT_TRUE(file.Items()[2].m_State.m_Enabled) << "a pop-up is no command";
}

TEST_F(Menu, SendsTheCommandChosenToItsOwner) {
    vesk::HeadlessUserInterface user;
    const vesk::ScopedUserInterface scope(user);
    user.OnMenu(10);
    EXPECT_TRUE(m_Menu.TrackPopupMenu(TPM_LEFTALIGN, 5, 6, &m_Owner));
    EXPECT_EQ(m_Owner.m_Opened, 1);
    user.OnMenu(0);
    EXPECT_FALSE(m_Menu.TrackPopupMenu(TPM_LEFTALIGN, 5, 6, &m_Owner)) << "closed again";
    EXPECT_EQ(m_Owner.m_Opened, 1);
}

TEST(AcceleratorTable, NeedsTheKeyWithExactlyItsModifiers) {
    constexpr vesk::AcceleratorEntry entries[] = {
        {vesk::kNoModifier, VK_F3, 1}, {vesk::kShift, VK_F3, 2}, {vesk::kControl, 'G', 3}};
    const vesk::AcceleratorTable table{1, entries};
    const struct {
        unsigned key, modifiers, command;
    } cases[] = {
        {VK_F3, vesk::kNoModifier, 1},
        {VK_F3, vesk::kShift, 2},
        {VK_F3, vesk::kControl, 0},
        {'G', vesk::kControl, 3},
        {'G', vesk::kControl | vesk::kShift, 0},
        {'G', vesk::kNoModifier, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vesk::FindCommand(table, c.key, c.modifiers), c.command)
            << "key " << c.key << " modifiers " << c.modifiers;
    }
}

}  // namespace
