#include "platform/CellPicture.h"

#include <algorithm>

namespace vesk {

namespace {

constexpr std::size_t kLine = 64;  // bytes of a line of the cache

// An odd number of lines, so that the cells of a row do not compete for the same places of the
// cache.
std::size_t StrideFor(int rows) {
    return ((static_cast<std::size_t>(rows) + kLine - 1) / kLine | 1) * kLine;
}

}  // namespace

CellPicture::CellPicture(int columns, int rows)
    : m_Rows(rows),
      m_Stride(StrideFor(rows)),
      m_Cells(static_cast<std::size_t>(columns) * m_Stride),
      m_Changes(static_cast<std::size_t>(rows) + 1) {}

void CellPicture::Fill(int left, int top, int right, int bottom, std::uint8_t cell) {
    if (left >= right || top >= bottom) return;
    for (int x = left; x < right; ++x) std::fill_n(&m_Cells[Place(x, top)], bottom - top, cell);
    const std::uint64_t upToLast = ~std::uint64_t{0} >> (kMostColumns - right);
    const std::uint64_t columns = upToLast & ~std::uint64_t{0} << left;
    m_Changes[static_cast<std::size_t>(top)] |= columns;
    m_Changes[static_cast<std::size_t>(bottom)] |= columns;
    m_Used = std::max(m_Used, right);
}

void CellPicture::Clear() {
    std::fill_n(m_Cells.begin(), static_cast<std::size_t>(m_Used) * m_Stride, std::uint8_t{0});
    std::fill(m_Changes.begin(), m_Changes.end(), 0);
    m_Used = 0;
}

}  // namespace vesk
