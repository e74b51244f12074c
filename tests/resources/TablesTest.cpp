#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "resources/VeskResources.h"

namespace vesk {
namespace {

using testing::ElementsAre;

template <class Table>
const Table& ById(std::span<const Table> tables, unsigned id) {
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [id](const Table& table) { return table.m_Id == id; });
    EXPECT_NE(found, tables.end()) << "no table " << id;
    return found == tables.end() ? tables.front() : *found;
}

const MenuTemplate& Menu(unsigned id) {
    return ById(VeskResources().m_Menus, id);
}

// Text of each command of a menu.
std::map<unsigned, std::string> Commands(unsigned menu) {
    std::map<unsigned, std::string> texts;
    for (const MenuItemTemplate& item : Menu(menu).m_Items) {
        if (item.m_Id) texts[item.m_Id] = item.m_Text;
    }
    return texts;
}

std::set<std::tuple<unsigned, unsigned, unsigned>> Keys(unsigned table) {
    std::set<std::tuple<unsigned, unsigned, unsigned>> keys;
    for (const AcceleratorEntry& entry : ById(VeskResources().m_Accelerators, table).m_Entries) {
        keys.insert({entry.m_Modifiers, entry.m_Key, entry.m_Command});
    }
    return keys;
}

TEST(MenuTables, HaveTheTextsThatUsersKnow) {
    const std::map<unsigned, std::string> vesk{
        {32776, "Config Vesk..."},
        {32777, "Display Vesk..."},
        {32778, "Display Vesk With Another Header File..."},
        {40141, "Vesk Statistics..."},
        {40184, "Usage History..."},
        {40194, "Usage Distribution..."},
        {40197, "Vesk Extra Information..."},
        {40424, "Average EMI Usage Ratio..."},
        {40425, "Task/Function EMI Usage Ratio..."},
        {40452, "IPC Usage Ratio..."},
        {57664, "Infomation"},
    };
    const std::map<unsigned, std::string> timeline{
        {32798, "Save Extra Info to Text..."},
        {40020, "Save to &Text ..."},
        {40102, "&Go To ...\tCtrl+G"},
        {40131, "&Pure Logging"},
        {40132, "&Relative Execution Sequence"},
        {40135, "&Qbit"},
        {40136, "&Execution Time"},
        {40137, "&Up"},
        {40138, "&Down"},
        {40139, "&Filter ..."},
        {40140, "&TQCNT"},
        {40186, "Disable TimeStamp Info"},
        {40196, "Disable Custom Logging"},
        {40202, "Export Markers..."},
        {40203, "Import Markers..."},
        {40214, "Disable Dotted Line"},
        {40307, "Save CustomLogging to Text..."},
        {40308, "Add Context Switch Factor"},
        {57636, "Find ...\tCtrl+F"},
    };
    EXPECT_EQ(Commands(128), vesk);
    EXPECT_EQ(Commands(203), timeline);
    EXPECT_THAT(Commands(299), ElementsAre(testing::Pair(40332, "Sync to The Longest Record")));
    EXPECT_THAT(Commands(357), ElementsAre(testing::Pair(40427, "Save to &Text...")));
}

TEST(MenuTables, OfferFewerCommandsInTheShorterForm) {
    const auto all = Commands(128);
    const auto some = Commands(358);
    EXPECT_TRUE(std::includes(all.begin(), all.end(), some.begin(), some.end()));
    for (unsigned missing : {40197u, 40424u, 40425u, 40452u}) EXPECT_FALSE(some.count(missing));
    EXPECT_EQ(some.size() + 4, all.size());
}

// Every item stands in a pop-up: menu bars and context menus show pop-ups only.
TEST(MenuTables, AreWellFormed) {
    for (const MenuTemplate& menu : VeskResources().m_Menus) {
        std::set<unsigned> seen;
        int level = -1;
        for (std::size_t i = 0; i < menu.m_Items.size(); ++i) {
            const MenuItemTemplate& item = menu.m_Items[i];
            SCOPED_TRACE(testing::Message() << "menu " << menu.m_Id << ": " << item.m_Text);
            EXPECT_GE(item.m_Level, 0);
            EXPECT_LE(item.m_Level, level + 1);
            level = item.m_Level;
            const bool opens =
                i + 1 < menu.m_Items.size() && menu.m_Items[i + 1].m_Level > item.m_Level;
            EXPECT_TRUE(opens || level > 0);
            EXPECT_EQ(opens, item.m_Id == 0 && *item.m_Text);
            EXPECT_TRUE(item.m_Id == 0 || *item.m_Text) << item.m_Id << " without text";
            EXPECT_TRUE(item.m_Id == 0 || seen.insert(item.m_Id).second) << "twice";
        }
    }
}

TEST(Accelerators, AreTheSameInBothTablesAndUseAKeyOnce) {
    EXPECT_EQ(Keys(128), Keys(358));
    std::set<std::pair<unsigned, unsigned>> keys;
    for (const auto& [modifiers, key, command] : Keys(128)) {
        EXPECT_TRUE(keys.insert({modifiers, key}).second) << command;
    }
}

// Menus name the key behind a tab; whoever presses it gets that command.
TEST(Accelerators, AreTheOnesThatMenusName) {
    int named = 0;
    for (const MenuTemplate& menu : VeskResources().m_Menus) {
        for (const MenuItemTemplate& item : menu.m_Items) {
            const std::string text = item.m_Text;
            const std::size_t key = text.find("\tCtrl+");
            if (key == std::string::npos) continue;
            ++named;
            const auto letter = static_cast<unsigned>(text.back());
            EXPECT_TRUE(Keys(128).count({kControl, letter, item.m_Id})) << text;
        }
    }
    EXPECT_EQ(named, 2);
}

TEST(ToolBars, HoldTheirCommandsInOrder) {
    const ToolBarTemplate& whole = ById(VeskResources().m_ToolBars, 132);
    const ToolBarTemplate& shorter = ById(VeskResources().m_ToolBars, 133);
    EXPECT_EQ(whole.m_ButtonWidth, 19);
    EXPECT_EQ(whole.m_ButtonHeight, 19);
    EXPECT_THAT(whole.m_Commands, ElementsAre(40008, 32774, 0, 2020, 32771, 40143, 40142, 40141,
                                              40184, 40194, 40197, 40424, 40425));
    ASSERT_EQ(shorter.m_Commands.size(), 10u);
    EXPECT_EQ(shorter.m_Commands.back(), 40194u);
    EXPECT_TRUE(
        std::equal(shorter.m_Commands.begin(), shorter.m_Commands.end(), whole.m_Commands.begin()));
}

TEST(ToolBars, HaveATextForEveryButton) {
    std::set<unsigned> texts;
    for (const auto& [id, text] : Commands(128)) texts.insert(id);
    for (const StringEntry& entry : VeskResources().m_Strings) texts.insert(entry.m_Id);
    for (unsigned id : ById(VeskResources().m_ToolBars, 132).m_Commands) {
        EXPECT_TRUE(id == 0 || texts.count(id)) << id;
    }
}

TEST(Strings, HaveTheirTips) {
    std::map<unsigned, std::string> strings;
    for (const StringEntry& entry : VeskResources().m_Strings) {
        EXPECT_TRUE(strings.emplace(entry.m_Id, entry.m_Text).second) << entry.m_Id << " twice";
    }
    const std::map<unsigned, std::string> expected{
        {2020, "Zoom in\nZoom in"},
        {32771, "Zoom out\nZoom out"},
        {32774, "Enable, Disable VESK\nConfig Vesk"},
        {40008, "Load Files\nLoad Vesk file (*.bin)"},
        {40142, "Set marker\nSet marker"},
        {40143, "Expand\nExpand specified time duration to full screen"},
    };
    for (const auto& [id, text] : expected) EXPECT_EQ(strings[id], text);
}

}  // namespace
}  // namespace vesk
