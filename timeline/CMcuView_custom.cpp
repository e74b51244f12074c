// Functions by their segments: the strip of all of them, and one lane each.
#include <algorithm>

#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/CMcuView.h"
#include "timeline/CustomIndex.h"
#include "timeline/FunctionMarks.h"
#include "timeline/FunctionStrip.h"
#include "timeline/SavedDrawing.h"
#include "timeline/SegmentWave.h"
#include "timeline/TimelineIndex.h"

using vesk::RecordColumn;
using vesk::SegmentIndex;
using vesk::TimeScale;

namespace {

const McuJob& SegmentAt(const SegmentIndex& index, int segment) {
    return index.Strip().Records()[static_cast<std::size_t>(segment)];
}

// Draws the segments of a view on the strip of all functions.
class SegmentPainter {
public:
    SegmentPainter(const SegmentIndex& index, vesk::FunctionStrip& blocks, std::uint64_t offset,
                   std::uint64_t viewEnd, std::uint64_t logEnd)
        : m_Index(index),
          m_Blocks(blocks),
          m_Offset(offset),
          m_ViewEnd(viewEnd),
          m_LogEnd(logEnd) {}

    // False beyond what can be seen.
    bool Draw(int index) {
        return vesk::EffectiveEnd(m_Index.Strip().Records(), index, m_LogEnd) < m_Offset ||
               m_Blocks.Draw(BlockOf(index));
    }

    // Of segments without a pixel of their own only the last text can show; the dots of all cover
    // each other.
    void DrawSimple(const RecordColumn& column) {
        const int last = column.m_Last - 1;
        const vesk::FunctionBlock block = BlockOf(last);
        const bool isDrawn = block.m_End >= m_Offset;
        if (!isDrawn || !m_Blocks.HasOnlyDots(block)) DrawDots(column.m_First, last, column.m_X);
        if (isDrawn) m_Blocks.Draw(block);
    }

private:
    vesk::FunctionBlock BlockOf(int index) const {
        const McuJob& segment = SegmentAt(m_Index, index);
        const std::uint64_t end = vesk::EffectiveEnd(m_Index.Strip().Records(), index, m_LogEnd);
        const std::uint64_t start = std::max(segment.m_StartTime, m_Offset);
        const bool begins = (segment.m_Flags & kBeganAtEntry) != 0 && segment.m_StartTime == start;
        const bool ends =
            (segment.m_Flags & kEndedAtExit) != 0 && segment.m_EndTime == end && end <= m_ViewEnd;
        return {m_Index.Strip().Names().At(index), &segment.m_Name, start, end, begins, ends};
    }

    // Those of the last one that has any.
    void DrawDots(int first, int last, int x) {
        while (last > first && !HasDots(last - 1)) --last;
        if (last > first)
            m_Blocks.DrawDots(m_Index.Strip().Names().At(last - 1),
                              SegmentAt(m_Index, last - 1).m_Name, x);
    }
    bool HasDots(int index) {
        return m_Blocks.HasDots(m_Index.Strip().Names().At(index),
                                SegmentAt(m_Index, index).m_Name);
    }

    const SegmentIndex& m_Index;
    vesk::FunctionStrip& m_Blocks;
    const std::uint64_t m_Offset;
    const std::uint64_t m_ViewEnd;
    const std::uint64_t m_LogEnd;
};

// Walks the segments of a view for the lane of one function.
class LaneWalk {
public:
    LaneWalk(SegmentIndex& index, vesk::SegmentWave& wave, int function, std::uint64_t offset,
             std::uint64_t logEnd)
        : m_Index(index), m_Wave(wave), m_Function(function), m_Offset(offset), m_LogEnd(logEnd) {
        if (function < 0) return;
        m_Effects = &index.EffectsFor(function);
        m_Bit = SegmentIndex::BitOf(function);
    }

    // False beyond what can be seen.
    bool Take(int index) {
        const bool isOwn = m_Index.Strip().Names().At(index) == m_Function;
        const McuJob& segment = SegmentAt(m_Index, index);
        const std::uint64_t end = vesk::EffectiveEnd(m_Index.Strip().Records(), index, m_LogEnd);
        if (end < m_Offset) {
            if (isOwn) m_Wave.OwnBefore(segment);
            return true;
        }
        if (isOwn) return m_Wave.Own(segment, end);
        m_Wave.Other(end);
        return true;
    }
    bool Take(int first, int last) {
        while (first < last && Take(first)) ++first;
        return first == last;
    }

    bool TakeColumn(std::size_t at, int left) {
        const RecordColumn& column = m_Index.Strip().Columns()[at];
        if (column.m_Last - column.m_First == 1) return TakeLast(at);
        // At the left edge an entry draws no edge, and an exit does.
        const bool isSimple =
            column.m_IsSimple && column.m_X > left && m_Wave.CanGoOnTo(column.m_X);
        if (!isSimple) return Take(column.m_First, column.m_Last);
        if (m_Effects && ((*m_Effects)[at].m_Present & m_Bit) != 0) {
            const vesk::LaneEffects& effects = (*m_Effects)[at];
            m_Wave.Column(column.m_X, (effects.m_Edges & m_Bit) != 0,
                          (effects.m_High & m_Bit) != 0);
        } else {
            m_Wave.Skip(column.m_X);
        }
        return TakeLast(at);
    }

private:
    bool TakeLast(std::size_t at) {
        const SegmentIndex::ColumnEnd& end = m_Index.Ends()[at];
        if (end.m_Function == m_Function || !end.m_EndsInOrder)
            return Take(m_Index.Strip().Columns()[at].m_Last - 1);
        m_Wave.OtherTo(end.m_X);
        return true;
    }

    const SegmentIndex& m_Index;
    vesk::SegmentWave& m_Wave;
    const int m_Function;
    const std::uint64_t m_Offset;
    const std::uint64_t m_LogEnd;
    const std::vector<vesk::LaneEffects>* m_Effects = nullptr;  // none for an unknown function
    std::uint64_t m_Bit = 0;
};

}  // namespace

void CMcuView::DrawCustomJobList(CDC* dc, int height, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    SegmentIndex& index = Index().Custom().Segments();
    index.Show(scale, m_CustomFirst, m_CustomLast);
    vesk::FunctionStrip blocks(dc, scale, CanvasRight(), height, y);
    SegmentPainter painter(index, blocks, m_TimeOffset, m_TimeOffset + m_VisibleQbits,
                           Jobs().m_EndTime);
    for (int i = m_CustomFirst; i < m_CustomFirst + index.Strip().Leading(); ++i)
        if (!painter.Draw(i)) return;
    for (const RecordColumn& column : index.Strip().Columns()) {
        if (column.m_IsSimple) {
            painter.DrawSimple(column);
        } else {
            for (int i = column.m_First; i < column.m_Last; ++i) painter.Draw(i);
        }
    }
}

void CMcuView::DrawCustomJob(CDC* dc, std::string name, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    const COLORREF color = vesk::FunctionColor(name);
    CPen pen(PS_SOLID, 1, color);
    CBrush brush(color);
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    SegmentIndex& index = Index().Custom().Segments();
    index.Show(scale, m_CustomFirst, m_CustomLast);
    const int function = index.Strip().Names().Find(name);
    const bool isHigh = function >= 0 && index.IsHighBefore(m_CustomFirst, function);
    vesk::SegmentWave wave(dc, scale, left, CanvasRight(), y, color, isHigh);
    LaneWalk walk(index, wave, function, m_TimeOffset, Jobs().m_EndTime);
    const int leading = m_CustomFirst + index.Strip().Leading();
    bool isVisible = walk.Take(m_CustomFirst, leading);
    for (std::size_t i = 0; isVisible && i < index.Strip().Columns().size(); ++i)
        isVisible = walk.TakeColumn(i, left);
    wave.Finish();
    vesk::DrawFunctionLabel(dc, name, left, y);
}
