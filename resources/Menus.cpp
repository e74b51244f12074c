#include "resources/Tables.h"

namespace vesk {
namespace {

constexpr MenuItemTemplate kSeparator{1, 0, ""};

// What the host shows in its menu bar.
constexpr MenuItemTemplate kVesk[] = {
    {0, 0, "Vesk"},
    {1, 32776, "Config Vesk..."},
    {1, 32777, "Display Vesk..."},
    {1, 32778, "Display Vesk With Another Header File..."},
    kSeparator,
    {1, 40141, "Vesk Statistics..."},
    {1, 40184, "Usage History..."},
    {1, 40194, "Usage Distribution..."},
    {1, 40197, "Vesk Extra Information..."},
    {1, 0, "Concurrent Options"},
    {2, 40424, "Average EMI Usage Ratio..."},
    {2, 40425, "Task/Function EMI Usage Ratio..."},
    {2, 40452, "IPC Usage Ratio..."},
    {0, 0, "About"},
    {1, 57664, "Infomation"},
};

constexpr MenuItemTemplate kShortVesk[] = {
    {0, 0, "Vesk"},
    {1, 32776, "Config Vesk..."},
    {1, 32777, "Display Vesk..."},
    {1, 32778, "Display Vesk With Another Header File..."},
    kSeparator,
    {1, 40141, "Vesk Statistics..."},
    {1, 40184, "Usage History..."},
    {1, 40194, "Usage Distribution..."},
    {0, 0, "About"},
    {1, 57664, "Infomation"},
};

// Of the timeline: in the menu bar, and at the cursor.
constexpr MenuItemTemplate kTimeline[] = {
    {0, 0, "&Mcu"},
    {1, 0, "&Outlook"},
    {2, 40131, "&Pure Logging"},
    {2, 40132, "&Relative Execution Sequence"},
    {2, 40308, "Add Context Switch Factor"},
    {1, 0, "&Time Unit"},
    {2, 40135, "&Qbit"},
    {2, 40136, "&Execution Time"},
    {2, 40140, "&TQCNT"},
    {1, 0, "&Base Time"},
    {2, 40137, "&Up"},
    {2, 40138, "&Down"},
    kSeparator,
    {1, 40186, "Disable TimeStamp Info"},
    {1, 40214, "Disable Dotted Line"},
    {1, 40196, "Disable Custom Logging"},
    {1, 40139, "&Filter ..."},
    kSeparator,
    {1, 40102, "&Go To ...\tCtrl+G"},
    {1, 57636, "Find ...\tCtrl+F"},
    kSeparator,
    {1, 40020, "Save to &Text ..."},
    {1, 32798, "Save Extra Info to Text..."},
    {1, 40307, "Save CustomLogging to Text..."},
    kSeparator,
    {1, 40202, "Export Markers..."},
    {1, 40203, "Import Markers..."},
};

constexpr MenuItemTemplate kLongestRecord[] = {
    {0, 0, "Mcu_Table"},
    {1, 40332, "Sync to The Longest Record"},
};

constexpr MenuItemTemplate kStatisticsTable[] = {
    {0, 0, "Mcu Table"},
    {1, 40427, "Save to &Text..."},
};

constexpr MenuTemplate kMenus[] = {
    {128, kVesk},      {203, kTimeline}, {299, kLongestRecord}, {357, kStatisticsTable},
    {358, kShortVesk},
};

}  // namespace

std::span<const MenuTemplate> Menus() {
    return kMenus;
}

}  // namespace vesk
