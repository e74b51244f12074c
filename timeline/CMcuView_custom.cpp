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

using vesk::JobStripIndex;
using vesk::RecordColumn;
using vesk::SegmentIndex;
using vesk::TimeScale;

namespace {

const McuJob& SegmentAt(const JobStripIndex& strip, int index) {
    return strip.Records()[static_cast<std::size_t>(index)];
}

// Draws the segments of a view on the strip of all functions.
class SegmentPainter {
public:
    SegmentPainter(const JobStripIndex& strip, vesk::FunctionStrip& blocks, std::uint64_t offset,
                   std::uint64_t viewEnd, std::uint64_t logEnd)
        : m_Strip(strip),
          m_Blocks(blocks),
          m_Offset(offset),
          m_ViewEnd(viewEnd),
          m_LogEnd(logEnd) {}

    // False beyond what can be seen.
    bool Draw(int index) {
        const McuJob& segment = SegmentAt(m_Strip, index);
        const std::uint64_t end = vesk::EffectiveEnd(m_Strip.Records(), index, m_LogEnd);
        if (end < m_Offset) return true;
        const std::uint64_t start = std::max(segment.m_StartTime, m_Offset);
        const bool begins = (segment.m_Flags & kBeganAtEntry) != 0 && segment.m_StartTime == start;
        const bool ends =
            (segment.m_Flags & kEndedAtExit) != 0 && segment.m_EndTime == end && end <= m_ViewEnd;
        return m_Blocks.Draw(
            {m_Strip.Names().At(index), &segment.m_Name, start, end, begins, ends});
    }

    // Of segments without a pixel of their own only the last text can show; the dots of all cover
    // each other.
    void DrawSimple(const RecordColumn& column) {
        int shown = column.m_Last - 2;
        while (shown >= column.m_First && !HasDots(shown)) --shown;
        if (shown >= column.m_First) {
            m_Blocks.DrawDots(m_Strip.Names().At(shown), SegmentAt(m_Strip, shown).m_Name,
                              column.m_X);
        }
        Draw(column.m_Last - 1);
    }

private:
    bool HasDots(int index) {
        return m_Blocks.HasDots(m_Strip.Names().At(index), SegmentAt(m_Strip, index).m_Name);
    }

    const JobStripIndex& m_Strip;
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
        : m_Index(index),
          m_Strip(index.Strip()),
          m_Wave(wave),
          m_Function(function),
          m_Offset(offset),
          m_LogEnd(logEnd) {}

    // False beyond what can be seen.
    bool Take(int index) {
        const bool isOwn = m_Strip.Names().At(index) == m_Function;
        const McuJob& segment = SegmentAt(m_Strip, index);
        const std::uint64_t end = vesk::EffectiveEnd(m_Strip.Records(), index, m_LogEnd);
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
        const RecordColumn& column = m_Strip.Columns()[at];
        // At the left edge an entry draws no edge, and an exit does.
        const bool isSimple = column.m_IsSimple && column.m_X > left &&
                              column.m_Last - column.m_First > 1 && m_Wave.CanGoOnTo(column.m_X);
        if (!isSimple) return Take(column.m_First, column.m_Last);
        const SegmentIndex::Effect effect =
            m_Function < 0 ? SegmentIndex::Effect{} : m_Index.EffectOf(at, m_Function);
        if (effect.m_IsPresent) {
            m_Wave.Column(column.m_X, effect.m_HasEdges, effect.m_IsHigh);
        } else {
            m_Wave.Skip(column.m_X);
        }
        return Take(column.m_Last - 1);
    }

private:
    SegmentIndex& m_Index;
    const JobStripIndex& m_Strip;
    vesk::SegmentWave& m_Wave;
    const int m_Function;
    const std::uint64_t m_Offset;
    const std::uint64_t m_LogEnd;
};

}  // namespace

void CMcuView::DrawCustomJobList(CDC* dc, int height, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    SegmentIndex& index = Index().Custom().Segments();
    index.Show(scale, m_CustomFirst, m_CustomLast);
    vesk::FunctionStrip blocks(dc, scale, CanvasRight(), height, y);
    SegmentPainter painter(index.Strip(), blocks, m_TimeOffset, m_TimeOffset + m_VisibleQbits,
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
    CPen pen(PS_SOLID, 1, vesk::FunctionColor(name));
    CBrush brush(vesk::FunctionColor(name));
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    SegmentIndex& index = Index().Custom().Segments();
    index.Show(scale, m_CustomFirst, m_CustomLast);
    const int function = index.Strip().Names().Find(name);
    const bool isHigh = function >= 0 && index.IsHighBefore(m_CustomFirst, function);
    vesk::SegmentWave wave(dc, scale, left, CanvasRight(), y, isHigh);
    LaneWalk walk(index, wave, function, m_TimeOffset, Jobs().m_EndTime);
    const int leading = m_CustomFirst + index.Strip().Leading();
    bool isVisible = walk.Take(m_CustomFirst, leading);
    for (std::size_t i = 0; isVisible && i < index.Strip().Columns().size(); ++i)
        isVisible = walk.TakeColumn(i, left);
    wave.Finish();
    vesk::DrawFunctionLabel(dc, name, left, y);
}
