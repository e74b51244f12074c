// Pictures of cells. Their columns lie one after the other, and are painted row by row: a step down
// in a wide picture costs as much as many steps to the right. A row is kept from one to the next,
// and only what changes in it is looked up.
#include <algorithm>
#include <array>
#include <bit>

#include "platform/CellPicture.h"
#include "platform/Pixels.h"
#include "platform/RasterSurface.h"

namespace vesk {

namespace {

using Pixel = std::uint32_t;

// A row of cells as device pixels.
class CellRow {
public:
    // Borrows the picture, and the memory for the pixels.
    CellRow(const CellPicture& cells, std::span<const COLORREF> palette, std::int64_t unit,
            std::vector<Pixel>& pixels)
        : m_Cells(cells), m_Unit(unit), m_Pixels(pixels) {
        for (std::size_t i = 0; i < std::min(palette.size(), m_Colors.size() - 1); ++i)
            m_Colors[i + 1] = PixelOf(palette[i]);
        m_Pixels.resize(static_cast<std::size_t>(cells.Used() * unit));
    }

    // Takes some columns over from a row.
    void Change(int row, std::uint64_t columns) {
        for (; columns != 0; columns &= columns - 1) {
            const int column = std::countr_zero(columns);
            const std::uint8_t cell = m_Cells.At(column, row);
            Pixel* const to = m_Pixels.data() + column * m_Unit;
            if (m_Unit == 1) {
                *to = m_Colors[cell];
            } else {
                std::fill_n(to, m_Unit, m_Colors[cell]);
            }
            const std::uint64_t bit = std::uint64_t{1} << column;
            m_Gaps = cell == 0 ? m_Gaps | bit : m_Gaps & ~bit;
        }
    }

    // Pixels [first, last) of the row, but for those of empty cells.
    void Paint(std::int64_t first, std::int64_t last, Pixel* to) const {
        const Pixel* const from = m_Pixels.data() + first;
        if (m_Gaps == 0) {
            std::copy_n(from, last - first, to);
            return;
        }
        for (std::int64_t i = 0; i < last - first; ++i)
            if (from[i] != kEmpty) to[i] = from[i];
    }

private:
    static constexpr Pixel kEmpty = 0;

    const CellPicture& m_Cells;
    std::int64_t m_Unit;  // device pixels of a cell's side
    std::vector<Pixel>& m_Pixels;
    std::array<Pixel, 256> m_Colors{};  // of cells
    std::uint64_t m_Gaps = 0;           // columns whose cell is empty
};

}  // namespace

void RasterSurface::FillCells(CPoint at, const CellPicture& cells,
                              std::span<const COLORREF> palette) {
    const auto unit = static_cast<std::int64_t>(m_Scale);
    if (static_cast<double>(unit) != m_Scale) {
        Surface::FillCells(at, cells, palette);
        return;
    }
    const DeviceRect box = Box({at.x, at.y, at.x + cells.Used(), at.y + cells.Rows()});
    const DeviceRect cut = Cut(box);
    if (cut.Empty()) return;
    CellRow pixels(cells, palette, unit, m_CellRow);
    std::uint64_t changes = ~std::uint64_t{0} >> (CellPicture::kMostColumns - cells.Used());
    std::uint32_t* to = m_Pixels.data() + cut.top * m_Stride + cut.left;
    for (std::int64_t y = cut.top; y < cut.bottom;) {
        const auto row = static_cast<int>((y - box.top) / unit);
        pixels.Change(row, changes);
        changes = cells.ChangesAt(row + 1);
        const std::int64_t end = std::min(cut.bottom, box.top + (row + 1) * unit);
        for (; y < end; ++y, to += m_Stride)
            pixels.Paint(cut.left - box.left, cut.right - box.left, to);
    }
}

}  // namespace vesk
