#pragma once

#include <cstdint>
#include <map>

#include "platform/CString.h"
#include "platform/CWnd.h"

// Where one window of a tab stands. Records of the host, which keeps them between runs.
struct WindowInfo {
    WINDOWPLACEMENT m_Placement;
    std::int32_t m_Type = 1;           // the host's number
    std::int32_t m_Size = 200;         // the host's number
    std::int32_t m_ShowCmd = SW_SHOW;  // SW_SHOW while the window exists, SW_HIDE after it closed
    std::int32_t m_Reserved1 = 0;
    std::int32_t m_Reserved2 = 0;
};

// The windows of one tab by window key (host/FrameKinds.h), and the tab's name.
struct WindowMap {
    std::map<std::int32_t, WindowInfo> m_Windows;
    CString m_Name;
};
