#pragma once

#include <string>
#include <vector>

#include "desktop/RecentFiles.h"
#include "desktop/TargetChoices.h"
#include "host/WindowMap.h"

namespace vesk {

// What the viewer keeps from one run to the next.
struct UserState {
    RecentFiles m_Recent;
    TargetChoices m_Targets;
    std::vector<WindowMap> m_Tabs;  // placements of the log's windows
    std::string m_MainWindow;       // geometry of the main window, in the toolkit's own form
};

}  // namespace vesk
