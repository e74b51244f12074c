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
    // Geometry of the main window, and what is docked where in it, in the toolkit's own form.
    std::string m_MainWindow;
    std::string m_Layout;
};

}  // namespace vesk
