#pragma once

#include <cstdint>
#include <vector>

#include "platform/CellPicture.h"
#include "platform/Color.h"
#include "platform/Geometry.h"

class CDC;

namespace vesk {

// Holds tall, narrow areas of neighbouring columns back and paints them row by row: written one
// after the other, each of them would walk down all of the picture's memory. Areas are painted in
// the order they are told, and Flush ends that; nothing else may be drawn in between. Borrows the
// context.
class StrokeTile {
public:
    static constexpr int kMostColors = 255;

    // Only rows [top, bottom) are painted.
    StrokeTile(CDC*, std::int64_t top, std::int64_t bottom);

    // A colour gets the number that areas name it by; at most kMostColors of them.
    void AddColor(COLORREF color) { m_Palette.push_back(color); }
    void Fill(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom,
              std::size_t color);
    void Flush();

private:
    static constexpr int kWidth = CellPicture::kMostColumns;

    CDC* m_DC;
    CRect m_Rows;  // that are painted
    std::int64_t m_Left = 0;
    CellPicture m_Cells;  // number of the colour and 1
    std::vector<COLORREF> m_Palette;
};

}  // namespace vesk
