#include "platform/Surface.h"

#include "platform/CellPicture.h"

namespace vesk {

void Surface::FillCells(CPoint at, const CellPicture& cells, std::span<const COLORREF> palette) {
    for (int x = 0; x < cells.Used(); ++x) {
        for (int top = 0, bottom = 0; top < cells.Rows(); top = bottom) {
            const std::uint8_t cell = cells.At(x, top);
            do ++bottom;
            while (bottom < cells.Rows() && cells.At(x, bottom) == cell);
            if (cell != 0)
                FillRect({at.x + x, at.y + top, at.x + x + 1, at.y + bottom}, palette[cell - 1u]);
        }
    }
}

}  // namespace vesk
