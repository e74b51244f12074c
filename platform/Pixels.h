#pragma once

#include <cstdint>

#include "platform/Color.h"

namespace vesk {

// A colour as the pixel 0xFFRRGGBB, and back.
constexpr std::uint32_t PixelOf(COLORREF color) {
    return 0xFF000000 | (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}
constexpr COLORREF ColorOf(std::uint32_t pixel) {
    return PixelOf(pixel) & 0xFFFFFF;
}

// `share` 255ths of one pixel over the rest of another, rounded to the nearest. Works on two
// channels at a time: each product fits the 16 bits that lie free for it.
constexpr std::uint32_t Mix(std::uint32_t ground, std::uint32_t over, std::uint32_t share) {
    constexpr std::uint32_t kChannels = 0x00FF00FF;
    const auto mix = [share](std::uint32_t a, std::uint32_t b) {
        const std::uint32_t sum = b * share + a * (255 - share) + 0x00800080;
        return (sum + (sum >> 8 & kChannels)) >> 8 & kChannels;
    };
    return mix(ground & kChannels, over & kChannels) |
           mix(ground >> 8 & kChannels, over >> 8 & kChannels) << 8;
}

}  // namespace vesk
