#pragma once

#include <cstdint>
#include <vector>

#include "timeline/JobStripIndex.h"

namespace vesk {

// What a stretch of segments does to the lanes of 64 functions, one bit each.
struct LaneEffects {
    std::uint64_t m_Present = 0;  // has a segment in it
    std::uint64_t m_Edges = 0;    // has one that begins at an entry or ends at an exit
    std::uint64_t m_High = 0;     // and is still running behind the last one

    // Adds what follows.
    void Append(const LaneEffects& next) {
        m_High = (m_High & ~next.m_Present) | next.m_High;
        m_Present |= next.m_Present;
        m_Edges |= next.m_Edges;
    }
};

// What painting wants to know of the function segments of a log. Borrows the records. About 2.1
// bytes a segment, built on first use, and 1.6 for every 64 functions whose lanes are shown.
class SegmentIndex {
public:
    SegmentIndex(const std::vector<McuJob>& segments, std::uint64_t logEnd);

    // Turns to segments [first, last) as one span shows them.
    void Show(const TimeScale&, int first, int last);
    const JobStripIndex& Strip() const { return m_Strip; }

    // Whether the function runs behind the last of its segments before `first`.
    bool IsHighBefore(int first, int function);

    // The last segment of a column: its function, and the pixel of its end, cut to 31 bits.
    struct ColumnEnd {
        int m_Function;
        int m_X;
        bool m_EndsInOrder;  // not before it starts
    };
    const std::vector<ColumnEnd>& Ends() const { return m_Ends; }
    // What the segments of each column do to the lanes of a function and its neighbours, the last
    // one left out.
    const std::vector<LaneEffects>& EffectsFor(int function);
    static std::uint64_t BitOf(int function) { return std::uint64_t{1} << function % kLanes; }

private:
    static constexpr int kLanes = 64;   // of a page
    static constexpr int kBlock = 16;   // segments
    static constexpr int kFanOut = 16;  // blocks of a level in one of the next

    // Lanes [64 p, 64 p + 64).
    struct Page {
        std::vector<std::vector<LaneEffects>> m_Levels;
        std::vector<LaneEffects> m_Columns;  // of the columns shown
        std::uint64_t m_Span = 0;            // the one that the columns are of
    };

    Page& PageOf(int function);
    void Build(Page&, int page) const;
    LaneEffects OfSegments(int page, int first, int last) const;
    LaneEffects OfBlocks(const Page&, std::size_t level, int first, int last) const;
    LaneEffects Of(const Page&, int page, int first, int last) const;

    void FindEnds();

    JobStripIndex m_Strip;
    const std::uint64_t m_LogEnd;
    std::vector<std::uint8_t> m_Flags;  // of the segments
    TimeScale m_Scale;
    int m_First = 0;
    int m_Last = 0;
    std::vector<ColumnEnd> m_Ends;
    std::uint64_t m_Span = 0;  // counts the spans shown
    std::vector<Page> m_Pages;
};

}  // namespace vesk
