#pragma once

#include <cstdint>

// A colour as 0x00BBGGRR.
using COLORREF = std::uint32_t;

constexpr COLORREF RGB(int red, int green, int blue) {
    return static_cast<COLORREF>((red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16);
}
constexpr int GetRValue(COLORREF color) {
    return static_cast<int>(color & 0xFF);
}
constexpr int GetGValue(COLORREF color) {
    return static_cast<int>(color >> 8 & 0xFF);
}
constexpr int GetBValue(COLORREF color) {
    return static_cast<int>(color >> 16 & 0xFF);
}
