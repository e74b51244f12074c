#include "timeline/SegmentIndex.h"

#include <algorithm>

namespace vesk {

SegmentIndex::SegmentIndex(const std::vector<McuJob>& segments, std::uint64_t logEnd)
    : m_Strip(segments), m_LogEnd(logEnd) {
    m_Flags.reserve(segments.size());
    for (const McuJob& segment : segments) m_Flags.push_back(segment.m_Flags);
}

void SegmentIndex::Show(const TimeScale& scale, int first, int last) {
    if (m_Scale == scale && m_First == first && m_Last == last) return;
    m_Scale = scale;
    m_First = first;
    m_Last = last;
    ++m_Span;
    m_Strip.Show(scale, first, last);
    FindEnds();
}

void SegmentIndex::FindEnds() {
    const std::vector<McuJob>& records = m_Strip.Records();
    m_Ends.clear();
    for (const RecordColumn& column : m_Strip.Columns()) {
        const int last = column.m_Last - 1;
        const std::uint64_t end = EffectiveEnd(records, last, m_LogEnd);
        const bool isInOrder = end >= records[static_cast<std::size_t>(last)].m_StartTime;
        const std::int64_t x = std::min<std::int64_t>(m_Scale.PixelAt(end), INT32_MAX);
        m_Ends.push_back({m_Strip.Names().At(last), static_cast<int>(x), isInOrder});
    }
}

SegmentIndex::Page& SegmentIndex::PageOf(int function) {
    const int number = function / kLanes;
    const auto at = static_cast<std::size_t>(number);
    if (at >= m_Pages.size()) m_Pages.resize(at + 1);
    Page& page = m_Pages[at];
    if (page.m_Levels.empty()) Build(page, number);
    return page;
}

void SegmentIndex::Build(Page& page, int number) const {
    const int segments = static_cast<int>(m_Flags.size());
    page.m_Levels.emplace_back();
    for (int i = 0; i + kBlock <= segments; i += kBlock)
        page.m_Levels[0].push_back(OfSegments(number, i, i + kBlock));
    while (page.m_Levels.back().size() > kFanOut) {
        const std::vector<LaneEffects>& lower = page.m_Levels.back();
        std::vector<LaneEffects> level(lower.size() / kFanOut);
        for (std::size_t i = 0; i < level.size() * kFanOut; ++i)
            level[i / kFanOut].Append(lower[i]);
        page.m_Levels.push_back(std::move(level));
    }
}

LaneEffects SegmentIndex::OfSegments(int page, int first, int last) const {
    LaneEffects effects;
    for (int i = first; i < last; ++i) {
        const int lane = m_Strip.Names().At(i) - page * kLanes;
        if (lane < 0 || lane >= kLanes) continue;
        const std::uint64_t bit = std::uint64_t{1} << lane;
        const std::uint8_t flags = m_Flags[static_cast<std::size_t>(i)];
        const bool hasEdges = (flags & (kBeganAtEntry | kEndedAtExit)) != 0;
        const bool isHigh = (flags & kClosedLastCall) == 0;
        effects.Append({bit, hasEdges ? bit : 0, isHigh ? bit : 0});
    }
    return effects;
}

// Blocks [first, last) of a level; whole groups are taken from the level above.
LaneEffects SegmentIndex::OfBlocks(const Page& page, std::size_t level, int first, int last) const {
    LaneEffects effects;
    const auto add = [&](int from, int to) {
        for (int i = from; i < to; ++i)
            effects.Append(page.m_Levels[level][static_cast<std::size_t>(i)]);
    };
    const int firstGroup = (first + kFanOut - 1) / kFanOut;
    const int lastGroup = last / kFanOut;
    if (level + 1 >= page.m_Levels.size() || firstGroup >= lastGroup) {
        add(first, last);
        return effects;
    }
    add(first, firstGroup * kFanOut);
    effects.Append(OfBlocks(page, level + 1, firstGroup, lastGroup));
    add(lastGroup * kFanOut, last);
    return effects;
}

LaneEffects SegmentIndex::Of(const Page& page, int number, int first, int last) const {
    const int firstBlock = (first + kBlock - 1) / kBlock;
    const int lastBlock = last / kBlock;
    if (firstBlock >= lastBlock) return OfSegments(number, first, last);
    LaneEffects effects = OfSegments(number, first, firstBlock * kBlock);
    effects.Append(OfBlocks(page, 0, firstBlock, lastBlock));
    effects.Append(OfSegments(number, lastBlock * kBlock, last));
    return effects;
}

bool SegmentIndex::IsHighBefore(int first, int function) {
    const LaneEffects effects = Of(PageOf(function), function / kLanes, 0, first);
    return (effects.m_High & BitOf(function)) != 0;
}

const std::vector<LaneEffects>& SegmentIndex::EffectsFor(int function) {
    Page& page = PageOf(function);
    if (page.m_Span != m_Span) {
        page.m_Span = m_Span;
        page.m_Columns.clear();
        for (const RecordColumn& shown : m_Strip.Columns())
            page.m_Columns.push_back(Of(page, function / kLanes, shown.m_First, shown.m_Last - 1));
    }
    return page.m_Columns;
}

}  // namespace vesk
