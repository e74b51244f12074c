#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vesk {

// A picture of tall, narrow strokes: columns of cells, empty or of some number. It knows what can
// change from one row to the next, so that whoever paints it need not look at each cell.
class CellPicture {
public:
    static constexpr int kMostColumns = 64;

    // All cells are empty. There may be kMostColumns columns and any number of rows, 0 as well.
    CellPicture(int columns, int rows);

    int Rows() const { return m_Rows; }
    // Columns from the left up to the last one that has been filled.
    int Used() const { return m_Used; }

    // Fills a box that lies within the picture, over what is there. cell is above 0.
    void Fill(int left, int top, int right, int bottom, std::uint8_t cell);
    // Empties all cells.
    void Clear();

    // 0 for an empty cell.
    std::uint8_t At(int column, int row) const { return m_Cells[Place(column, row)]; }
    // A bit per column, the left one lowest: 0 where the cell is as the one above it. Row Rows() is
    // allowed, too.
    std::uint64_t ChangesAt(int row) const { return m_Changes[static_cast<std::size_t>(row)]; }

private:
    std::size_t Place(int column, int row) const {
        return static_cast<std::size_t>(column) * m_Stride + static_cast<std::size_t>(row);
    }

    int m_Rows;
    int m_Used = 0;
    std::size_t m_Stride;  // cells from one column to the next
    std::vector<std::uint8_t> m_Cells;
    std::vector<std::uint64_t> m_Changes;  // of all rows and the one behind them
};

}  // namespace vesk
