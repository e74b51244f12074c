#include "host/SummaryLayout.h"

#include <algorithm>

namespace vesk {

namespace {

constexpr int kMargin = 16;
constexpr int kRowGap = 5;      // between texts of two rows
constexpr int kTitleGap = 9;    // below a title, with the rule in it
constexpr int kBlockGap = 20;   // between groups
constexpr int kColumnGap = 36;  // between columns of cells
constexpr int kValueGap = 14;   // between name and value
constexpr int kSquareWidth = 18;
constexpr int kWidestName = 300;
constexpr int kWidestValue = 300;
// No cell is as wide as this many characters, so what stands behind them need not be measured.
constexpr std::size_t kMeasuredLength = 512;

int CellWidth(const SummaryBlock& block) {
    return block.m_SquareWidth + block.m_NameWidth + kValueGap + block.m_ValueWidth;
}

void MeasureTexts(SummaryBlock& block, const SummaryGroup& group, const TextMeasure& measure) {
    const auto width = [&](std::string_view text) {
        return measure(text.substr(0, kMeasuredLength));
    };
    for (const SummaryEntry& entry : group.m_Entries) {
        block.m_NameWidth = std::max(block.m_NameWidth, width(entry.m_Name));
        block.m_ValueWidth = std::max(block.m_ValueWidth, width(entry.m_Value));
    }
    block.m_NameWidth = std::min(block.m_NameWidth, kWidestName);
    block.m_ValueWidth = std::min(block.m_ValueWidth, kWidestValue);
}

// In a narrow window the value keeps up to half of the room, the name gets what is left.
void ShrinkTo(SummaryBlock& block, int width) {
    if (CellWidth(block) <= width) return;
    const int room = std::max(0, width - block.m_SquareWidth - kValueGap);
    block.m_ValueWidth = std::min(block.m_ValueWidth, std::max(room / 2, room - block.m_NameWidth));
    block.m_NameWidth = room - block.m_ValueWidth;
}

void ArrangeCells(SummaryBlock& block, int count, int width) {
    const int pitch = CellWidth(block) + kColumnGap;
    const int room = std::clamp((width + kColumnGap) / pitch, 1, count);
    block.m_Rows = (count + room - 1) / room;
    block.m_Columns = (count + block.m_Rows - 1) / block.m_Rows;
}

}  // namespace

CRect SummaryBlock::Cell(int entry) const {
    const int left = m_Left + entry / m_Rows * (CellWidth(*this) + kColumnGap);
    const int top = m_RowsTop + entry % m_Rows * m_RowHeight;
    return {left, top, left + CellWidth(*this), top + m_RowHeight};
}

int SummaryBlock::FirstRow(int top) const {
    return std::clamp((top - m_RowsTop) / m_RowHeight, 0, m_Rows);
}

int SummaryBlock::LastRow(int bottom) const {
    if (bottom <= m_RowsTop) return 0;
    return std::min((bottom - m_RowsTop - 1) / m_RowHeight + 1, m_Rows);
}

SummaryBlock SummaryBlock::MovedUp(int pixels) const {
    SummaryBlock moved = *this;
    moved.m_TitleTop -= pixels;
    moved.m_RowsTop -= pixels;
    return moved;
}

SummaryLayout LayOutSummary(const std::vector<SummaryGroup>& groups, int width, int textHeight,
                            const TextMeasure& measure) {
    SummaryLayout layout;
    layout.m_Width = std::max(0, width - 2 * kMargin);
    int y = kMargin;
    for (const SummaryGroup& group : groups) {
        SummaryBlock& block = layout.m_Blocks.emplace_back();
        block.m_TitleTop = y;
        block.m_RowsTop = y + textHeight + kTitleGap;
        block.m_RowHeight = textHeight + kRowGap;
        block.m_Left = kMargin;
        block.m_SquareWidth = group.m_Colors == SummaryColors::kNone ? 0 : kSquareWidth;
        MeasureTexts(block, group, measure);
        ShrinkTo(block, layout.m_Width);
        ArrangeCells(block, static_cast<int>(group.m_Entries.size()), layout.m_Width);
        y = block.Bottom() + kBlockGap;
    }
    layout.m_Height = y - kBlockGap + kMargin;
    return layout;
}

std::string CutToWidth(std::string_view text, int width, const TextMeasure& measure) {
    const bool isWhole = text.size() <= kMeasuredLength;
    text = text.substr(0, kMeasuredLength);
    if (isWhole && measure(text) <= width) return std::string(text);
    const int room = width - measure("...");
    if (room < 0) return {};
    std::size_t fitting = 0;
    for (std::size_t tooLong = text.size() + 1; tooLong - fitting > 1;) {
        const std::size_t middle = (fitting + tooLong) / 2;
        (measure(text.substr(0, middle)) <= room ? fitting : tooLong) = middle;
    }
    return std::string(text.substr(0, fitting)) + "...";
}

}  // namespace vesk
