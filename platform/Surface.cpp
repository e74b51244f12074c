#include "platform/Surface.h"

#include <algorithm>

namespace vesk {

void Surface::FillCells(const CRect& box, std::span<const std::uint8_t> cells,
                        std::span<const COLORREF> palette) {
    auto from = cells.begin();
    for (int x = box.left; x < box.right; ++x) {
        const auto end = from + box.Height();
        for (auto top = from; top != end;) {
            const std::uint8_t cell = *top;
            const auto bottom = std::find_if(top, end, [cell](auto c) { return c != cell; });
            const int y = box.top + static_cast<int>(top - from);
            if (cell != 0)
                FillRect({x, y, x + 1, y + static_cast<int>(bottom - top)}, palette[cell - 1u]);
            top = bottom;
        }
        from = end;
    }
}

}  // namespace vesk
