#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "host/SummaryContent.h"
#include "platform/Geometry.h"

namespace vesk {

// Where the texts of one group stand: a title, a rule below it, and cells that run down the first
// column, then down the next. Pixels from the summary's top left, whatever part of it is shown.
struct SummaryBlock {
    int Bottom() const { return m_RowsTop + m_Rows * m_RowHeight; }
    // The cell of an entry, without the gap to the next column.
    CRect Cell(int entry) const;
    // Entries of a row lie m_Rows apart; rows [first, last) are those that touch a stretch of y.
    int FirstRow(int top) const;
    int LastRow(int bottom) const;
    SummaryBlock MovedUp(int pixels) const;

    int m_TitleTop = 0;
    int m_RowsTop = 0;
    int m_RowHeight = 1;
    int m_Rows = 0;
    int m_Columns = 0;
    int m_Left = 0;
    int m_SquareWidth = 0;  // room for the colour ahead of the name
    int m_NameWidth = 0;
    int m_ValueWidth = 0;
};

struct SummaryLayout {
    std::vector<SummaryBlock> m_Blocks;  // one per group
    int m_Width = 0;                     // of titles and rules
    int m_Height = 0;
};

// Width of a text in pixels.
using TextMeasure = std::function<int(std::string_view)>;

// Places groups below each other, each in as many columns as the width has room for. Texts that
// are too long for their cell are left to be cut.
SummaryLayout LayOutSummary(const std::vector<SummaryGroup>&, int width, int textHeight,
                            const TextMeasure&);

// The text itself, or as much of its beginning as fits a width together with "..."; nothing if
// not even that fits.
std::string CutToWidth(std::string_view text, int width, const TextMeasure&);

}  // namespace vesk
