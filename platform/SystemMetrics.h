#pragma once

#include "platform/Color.h"

constexpr int SM_CXSCREEN = 0;
constexpr int SM_CYSCREEN = 1;
constexpr int SM_CXVSCROLL = 2;   // width of a vertical scroll bar
constexpr int SM_CYHSCROLL = 3;   // height of a horizontal one
constexpr int SM_CYVSCROLL = 20;  // height of a vertical bar's arrow
constexpr int SM_CXHSCROLL = 21;  // width of a horizontal bar's arrow

constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_BTNFACE = 15;
constexpr int COLOR_GRAYTEXT = 17;

// Sizes in pixels and colours of the current user interface.
int GetSystemMetrics(int index);
COLORREF GetSysColor(int index);
