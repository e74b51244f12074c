// What a pixel of the strips means. Each test is defined by a walk over the visible records, in
// order; where many are visible and their starts ascend, only those are looked at that can lie
// under the pixel.
#include <algorithm>
#include <limits>

#include "log/McuJobList.h"
#include "timeline/CMcuView.h"
#include "timeline/RecordHits.h"
#include "timeline/RecordOrder.h"
#include "timeline/TimelineIndex.h"
#include "timeline/TipText.h"

namespace {

constexpr int kFew = 1024;  // records that are walked over sooner than an index is built
constexpr int kMarkReach = 2;
constexpr int kLinesOfCall = 8;
constexpr std::string_view kBlankLine = "\r\n\r\n";

bool IsInBand(CPoint point, int h, int y0) {
    return point.y >= y0 - h && point.y <= y0;
}

bool Fits(std::int64_t x) {
    return x >= 0 && x <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace

// A stretch of records of one container.
struct CMcuView::Stretch {
    const std::vector<McuJob>& m_Records;
    int m_First;
    int m_Last;
    const vesk::RecordHits* m_Hits;  // null: all records are to be looked at

    // Turns to the records that start at or left of one column and end at or right of another, in
    // order, and possibly to others, for as long as visit gives true.
    template <class Visit>
    void VisitBetween(const vesk::TimeScale& scale, std::int64_t startX, std::int64_t endX,
                      Visit visit) const {
        if (!m_Hits) {
            for (int i = m_First; i < m_Last && visit(i);) ++i;
            return;
        }
        const auto isReached = [&](std::uint64_t end) {
            return end >= scale.m_Offset && scale.PixelAt(end) >= endX;
        };
        const int last = m_Hits->FirstStart(
            m_First, m_Last, [&](std::uint64_t start) { return scale.PixelAt(start) <= startX; });
        int i = m_Hits->FirstEnd(m_First, last, isReached);
        while (i < last && visit(i)) i = m_Hits->FirstEnd(i + 1, last, isReached);
    }
};

CMcuView::Stretch CMcuView::StretchOf(const std::vector<McuJob>& records, int first, int last) {
    last = std::min(last, static_cast<int>(records.size()));
    first = std::min(first, last);
    const vesk::RecordHits* const hits = last - first > kFew ? &Index().Hits(records) : nullptr;
    return {records, first, last, hits && hits->IsAscending() ? hits : nullptr};
}

// --- Jobs and segments ---------------------------------------------------------------------------

// The bar under a column, its edges left out; -1 for none. A bar that ends left of the column, both
// taken as times, cannot be wider than up to it.
int CMcuView::BarAt(const Stretch& stretch, int left, int x) const {
    const vesk::TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    int found = -1;
    stretch.VisitBetween(scale, std::int64_t{x} - 1, x, [&](int i) {
        const McuJob& job = stretch.m_Records[static_cast<std::size_t>(i)];
        const std::uint64_t start = std::max(job.m_StartTime, m_TimeOffset);
        const std::uint64_t end = vesk::EffectiveEnd(stretch.m_Records, i, Jobs().m_EndTime);
        if (end < m_TimeOffset) return true;
        const std::int64_t barX = scale.PixelAt(start);
        if (!Fits(barX)) return false;
        const std::int64_t rest = std::int64_t{m_CanvasWidth} - barX + left;
        const std::int64_t length = end > start ? scale.Length(end - start) : 0;
        if (barX < x && x < barX + std::min(Fits(length) ? length : rest, rest)) found = i;
        return found < 0;
    });
    return found;
}

bool CMcuView::HitTest(CPoint point, int h, int left, int y0, McuJob& hit, int& index) {
    if (!IsInBand(point, h, y0)) return false;
    const int found = BarAt(StretchOf(Jobs(), m_JobFirst, m_JobLast), left, point.x);
    if (!Jobs().GetJob(found, hit)) return false;
    index = found;
    return true;
}

bool CMcuView::HitTest_CustomJob(CPoint point, int h, int left, int y0, McuJob& hit,
                                 std::uint64_t& end) {
    if (!IsInBand(point, h, y0)) return false;
    const auto& segments = Jobs().m_CustomJobs;
    const int found = BarAt(StretchOf(segments, m_CustomFirst, m_CustomLast), left, point.x);
    if (found < 0) return false;
    hit = segments[static_cast<std::size_t>(found)];
    end = vesk::EffectiveEnd(segments, found, Jobs().m_EndTime);
    return true;
}

// --- Calls ---------------------------------------------------------------------------------------

// Calls whose span includes the column, lane by lane, for as long as visit gives true.
void CMcuView::VisitCallsAt(int left, int x, const CallVisitor& visit) {
    const vesk::TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    std::size_t lane = 0;
    bool goesOn = true;
    for (const auto& [name, calls] : Jobs().m_CustomJobsCS) {
        if (lane >= m_CustomCSFirst.size() || !goesOn) return;
        const Stretch stretch = StretchOf(calls, m_CustomCSFirst[lane], m_CustomCSLast[lane]);
        stretch.VisitBetween(scale, x, x, [&, &jobs = calls](int i) {
            const McuJob& call = jobs[static_cast<std::size_t>(i)];
            const std::uint64_t end = vesk::EffectiveEnd(jobs, i, Jobs().m_EndTime);
            if (end < m_TimeOffset) return true;
            const std::int64_t startX = scale.PixelAt(call.m_StartTime);
            if (!Fits(startX) || startX > x) return false;
            const std::int64_t endX = scale.PixelAt(end);
            if (!Fits(endX)) return false;
            if (endX >= x) goesOn = visit(call, end);
            return goesOn;
        });
        ++lane;
    }
}

bool CMcuView::HitTest_CustomJobCS(CPoint point, int h, int left, int y0, CString& text,
                                   int& lines) {
    text.Empty();
    lines = 0;
    if (!IsInBand(point, h, y0)) return false;
    std::string calls;
    VisitCallsAt(left, point.x, [&](const McuJob& call, std::uint64_t end) {
        vesk::AppendCustomTip(calls, call, end, Jobs().m_IsTQCNT);
        calls += kBlankLine;
        lines += kLinesOfCall;
        return true;
    });
    if (lines == 0) return false;
    calls.resize(calls.size() - kBlankLine.size());
    text = std::move(calls);
    return true;
}

bool CMcuView::HasCallAt(CPoint point, int h, int left, int y0) {
    bool has = false;
    if (IsInBand(point, h, y0))
        VisitCallsAt(left, point.x, [&](const McuJob&, std::uint64_t) { return !(has = true); });
    return has;
}

// --- Source marks --------------------------------------------------------------------------------

bool CMcuView::HitTest_SourceMark(CPoint point, int h, int left, int y0, McuJob& hit) {
    if (!IsInBand(point, h, y0)) return false;
    const vesk::TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    Stretch stretch = StretchOf(Jobs().m_SourceMarks, m_MarkFirst, m_MarkLast);
    const std::int64_t x = point.x;
    if (stretch.m_Hits) {
        // The first mark right of the left end of its reach is the only one that can be hit first.
        const int first =
            stretch.m_Hits->FirstStart(stretch.m_First, stretch.m_Last, [&](std::uint64_t time) {
                return time < m_TimeOffset || scale.PixelAt(time) <= x - kMarkReach;
            });
        stretch.m_Last = std::min(first + 1, stretch.m_Last);
        stretch.m_First = first;
    }
    for (int i = stretch.m_First; i < stretch.m_Last; ++i) {
        const McuJob& mark = stretch.m_Records[static_cast<std::size_t>(i)];
        if (mark.m_StartTime < m_TimeOffset) continue;
        const std::int64_t markX = scale.PixelAt(mark.m_StartTime);
        if (!Fits(markX)) return false;
        if (markX - kMarkReach < x && x < markX + kMarkReach) {
            hit = mark;
            return true;
        }
    }
    return false;
}
