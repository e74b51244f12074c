#pragma once

#include <array>
#include <cstddef>

#include "platform/Color.h"

namespace vesk {

// Colours that names are given in turn. Entry 48 of the first is black, which counts as not chosen.
extern const std::array<COLORREF, 178> kNamePalette;
// Colours of the extra values.
extern const std::array<COLORREF, 12> kExtraPalette;

// Hands out a palette's colours in order, and begins anew at its end.
template <std::size_t Size>
class PaletteWalk {
public:
    explicit PaletteWalk(const std::array<COLORREF, Size>& palette, std::size_t first = 0)
        : m_Palette(palette), m_Next(first) {}

    COLORREF Next() {
        const COLORREF color = m_Palette[m_Next];
        m_Next = (m_Next + 1) % Size;
        return color;
    }

private:
    const std::array<COLORREF, Size>& m_Palette;
    std::size_t m_Next;
};

}  // namespace vesk
