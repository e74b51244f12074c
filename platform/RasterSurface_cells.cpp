// Pictures of cells. They come column by column and are painted row by row: a step down in a wide
// picture costs as much as many steps to the right. Squares of 8 x 8 cells are turned for that, a
// word for each of their columns into a word for each of their rows.
#include <algorithm>
#include <array>
#include <bit>

#include "platform/Pixels.h"
#include "platform/RasterSurface.h"

namespace vesk {

namespace {

constexpr std::int64_t kSide = 8;  // of a square

using Word = std::uint64_t;  // eight cells, the first one lowest
using Square = std::array<Word, kSide>;

Word LoadWord(const std::uint8_t* cells) {
    return Word{cells[0]} | Word{cells[1]} << 8 | Word{cells[2]} << 16 | Word{cells[3]} << 24 |
           Word{cells[4]} << 32 | Word{cells[5]} << 40 | Word{cells[6]} << 48 |
           Word{cells[7]} << 56;
}

// Swaps the high half of each group of cells with the low half of the group `distance` words on.
template <std::size_t kDistance, Word kLowHalves>
void SwapHalves(Square& square) {
    constexpr int kShift = 8 * kDistance;
    for (std::size_t i = 0; i < square.size(); ++i) {
        if ((i & kDistance) != 0) continue;
        const Word swapped = (square[i] >> kShift ^ square[i + kDistance]) & kLowHalves;
        square[i] ^= swapped << kShift;
        square[i + kDistance] ^= swapped;
    }
}

// Whether each word is eight cells of one kind.
bool IsStriped(const Square& square) {
    Word differences = 0;
    for (const Word word : square) differences |= word ^ std::rotl(word, 8);
    return differences == 0;
}

void Turn(Square& square) {
    if (IsStriped(square)) {
        Word row = 0;
        for (std::size_t i = 0; i < square.size(); ++i) row |= (square[i] & 0xFF) << 8 * i;
        square.fill(row);
        return;
    }
    SwapHalves<4, 0x00000000FFFFFFFF>(square);
    SwapHalves<2, 0x0000FFFF0000FFFF>(square);
    SwapHalves<1, 0x00FF00FF00FF00FF>(square);
}

bool HasEmptyCell(Word cells) {
    return ((cells - 0x0101010101010101) & ~cells & 0x8080808080808080) != 0;
}

std::size_t CellAt(Word cells, std::int64_t i) {
    return static_cast<std::size_t>(cells >> 8 * i & 0xFF);
}

}  // namespace

// Cells of a box, and where they go.
struct RasterSurface::CellPicture {
    const std::uint8_t* m_Cells;
    std::int64_t m_Width;  // cells
    std::int64_t m_Height;
    DeviceRect m_Box;
    DeviceRect m_Cut;
    std::int64_t m_Unit;  // device pixels of a cell's side
    std::array<std::uint32_t, 256> m_Pixels{};

    // Turned: a word per row. Cells outside count as empty.
    Square SquareAt(std::int64_t x, std::int64_t y) const {
        Square square{};
        const std::int64_t columns = std::min(kSide, m_Width - x);
        const std::int64_t rows = std::min(kSide, m_Height - y);
        for (std::int64_t i = 0; i < columns; ++i) {
            const std::uint8_t* const column = m_Cells + (x + i) * m_Height + y;
            Word& word = square[static_cast<std::size_t>(i)];
            if (rows == kSide) {
                word = LoadWord(column);
            } else {
                for (std::int64_t j = 0; j < rows; ++j) word |= Word{column[j]} << 8 * j;
            }
        }
        Turn(square);
        return square;
    }

    // Whether all of a square shows.
    bool IsWhole(std::int64_t x, std::int64_t y) const {
        const std::int64_t left = m_Box.left + x * m_Unit;
        const std::int64_t top = m_Box.top + y * m_Unit;
        const std::int64_t side = kSide * m_Unit;
        return left >= m_Cut.left && left + side <= m_Cut.right && top >= m_Cut.top &&
               top + side <= m_Cut.bottom;
    }
};

void RasterSurface::FillCells(const CRect& rect, std::span<const std::uint8_t> cells,
                              std::span<const COLORREF> palette) {
    const auto unit = static_cast<std::int64_t>(m_Scale);
    if (static_cast<double>(unit) != m_Scale) {
        Surface::FillCells(rect, cells, palette);
        return;
    }
    const DeviceRect box = Box(rect);
    CellPicture picture{cells.data(), rect.Width(), rect.Height(), box, Cut(box), unit};
    for (std::size_t i = 0; i < std::min(palette.size(), picture.m_Pixels.size() - 1); ++i)
        picture.m_Pixels[i + 1] = PixelOf(palette[i]);
    const DeviceRect& cut = picture.m_Cut;
    const std::int64_t left = (cut.left - box.left) / unit;
    const std::int64_t right = (cut.right - box.left + unit - 1) / unit;
    const std::int64_t bottom = (cut.bottom - box.top + unit - 1) / unit;
    for (std::int64_t y = (cut.top - box.top) / unit; y < bottom; y += kSide) {
        for (std::int64_t x = left; x < right; x += kSide) {
            const Square square = picture.SquareAt(x, y);
            if (picture.IsWhole(x, y)) {
                PaintWhole(picture, x, y, square);
            } else {
                for (std::int64_t i = 0; i < kSide; ++i)
                    PaintCells(picture, x, y + i, square[static_cast<std::size_t>(i)]);
            }
        }
    }
}

// Eight cells side by side, as far as they show.
void RasterSurface::PaintCells(const CellPicture& picture, std::int64_t cellX, std::int64_t cellY,
                               std::uint64_t cells) {
    if (cells == 0) return;
    const std::int64_t unit = picture.m_Unit;
    const std::int64_t top = picture.m_Box.top + cellY * unit;
    for (std::int64_t i = 0; i < kSide; ++i) {
        const std::int64_t left = picture.m_Box.left + (cellX + i) * unit;
        const std::size_t cell = CellAt(cells, i);
        if (cell != 0) Fill({left, top, left + unit, top + unit}, picture.m_Pixels[cell]);
    }
}

// A square all of which shows.
void RasterSurface::PaintWhole(const CellPicture& picture, std::int64_t cellX, std::int64_t cellY,
                               const std::array<std::uint64_t, 8>& square) {
    const std::array<std::uint32_t, 256>& pixels = picture.m_Pixels;
    const std::int64_t unit = picture.m_Unit;
    const std::int64_t left = picture.m_Box.left + cellX * unit;
    const std::int64_t top = picture.m_Box.top + cellY * unit;
    std::uint32_t* row = m_Pixels.data() + top * m_Stride + left;
    std::array<std::uint32_t, kSide> colors{};  // of the row above, as neighbours are mostly alike
    Word colored = 0;
    for (const Word cells : square) {
        if (unit == 1 && !HasEmptyCell(cells)) {
            if (cells != colored) {
                for (std::int64_t i = 0; i < kSide; ++i)
                    colors[static_cast<std::size_t>(i)] = pixels[CellAt(cells, i)];
                colored = cells;
            }
            std::copy_n(colors.begin(), kSide, row);
            row += m_Stride;
            continue;
        }
        for (std::int64_t y = 0; y < unit; ++y, row += m_Stride) {
            if (cells == 0) continue;
            for (std::int64_t i = 0; i < kSide; ++i)
                if (const std::size_t cell = CellAt(cells, i); cell != 0)
                    std::fill_n(row + i * unit, unit, pixels[cell]);
        }
    }
}

}  // namespace vesk
