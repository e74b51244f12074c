#include <algorithm>
#include <cmath>

#include "platform/SystemMetrics.h"
#include "tests/timeline/ViewTest.h"

namespace {

std::uint64_t StartOf(const McuJob& job) {
    return job.m_StartTime;
}
std::uint64_t StartOf(const ExtraInfoRecord& record) {
    return record.m_Time;
}

// Whether a record starts right of the canvas, by the formula as it is written down.
bool IsRightOfCanvas(const CMcuView& view, std::uint64_t start) {
    const std::uint64_t visibleStart = std::max(start, view.m_TimeOffset);
    const double pixels = static_cast<double>(visibleStart - view.m_TimeOffset) *
                          static_cast<double>(view.m_PixelsPerQbit);
    return std::trunc(80.0 + pixels) >= 80.0 + view.m_CanvasWidth;
}

// Sequences that no reader leaves, because they don't ascend, are passed over.
template <class Sequence>
void ExpectRange(const CMcuView& view, const Sequence& records, int first, int last) {
    const auto startsBefore = [](const auto& a, const auto& b) { return StartOf(a) < StartOf(b); };
    if (!std::is_sorted(records.begin(), records.end(), startsBefore)) return;
    int expected = 0;
    const int size = static_cast<int>(records.size());
    while (expected + 1 < size &&
           StartOf(records[static_cast<std::size_t>(expected) + 1]) < view.m_TimeOffset)
        ++expected;
    EXPECT_EQ(first, expected);
    while (expected < size &&
           !IsRightOfCanvas(view, StartOf(records[static_cast<std::size_t>(expected)])))
        ++expected;
    EXPECT_EQ(last, expected);
}

void ExpectLaneRanges(const CMcuView& view, const std::map<std::string, std::vector<McuJob>>& lanes,
                      const std::vector<std::int32_t>& firsts,
                      const std::vector<std::int32_t>& lasts) {
    ASSERT_EQ(firsts.size(), lanes.size());
    ASSERT_EQ(lasts.size(), lanes.size());
    std::size_t lane = 0;
    for (const auto& [name, jobs] : lanes) {
        SCOPED_TRACE(name);
        ExpectRange(view, jobs, firsts[lane], lasts[lane]);
        ++lane;
    }
}

void ExpectCanvas(const CMcuView& view) {
    CRect client;
    view.GetClientRect(&client);
    EXPECT_EQ(view.m_CanvasLeft, 80);
    EXPECT_EQ(view.m_CanvasWidth, client.Width() - 110);
    EXPECT_EQ(view.m_CanvasBottom, std::max(client.Height() - 117, 100));
    EXPECT_EQ(view.m_CanvasHeight, view.m_CanvasBottom - 30);
}

void ExpectScale(const CMcuView& view) {
    EXPECT_EQ(view.m_PixelsPerQbit, view.m_BaseScale * view.m_ZoomRatio);
    const float visible = static_cast<float>(view.m_CanvasWidth) / view.m_PixelsPerQbit;
    EXPECT_EQ(view.m_VisibleQbits,
              visible > 0 ? static_cast<std::uint64_t>(std::floor(visible)) : 0);
}

void ExpectTimePosition(const CMcuView& view, std::uint64_t end) {
    EXPECT_EQ(view.m_HScrollMin, 0);
    EXPECT_EQ(view.m_HScrollBar.GetScrollPos(), view.m_HScrollPos);
    EXPECT_EQ(view.m_HScrollBar.GetScrollLimit(), view.m_HScrollMax);
    if (view.m_VisibleQbits >= end) {
        EXPECT_EQ(view.m_TimeOffset, 0u);
        EXPECT_EQ(view.m_HScrollMax, 0);
        EXPECT_EQ(view.m_HScrollPos, 0);
        return;
    }
    EXPECT_LE(view.m_TimeOffset, end - view.m_VisibleQbits);
    // Either may come from the other by truncation.
    const double position = static_cast<double>(view.m_TimeOffset) * view.m_HScrollMax /
                            static_cast<double>(end - view.m_VisibleQbits);
    EXPECT_NEAR(view.m_HScrollPos, position, 1.001);
}

void ExpectLanePosition(const CMcuView& view) {
    EXPECT_EQ(view.m_VScrollMin, 0);
    EXPECT_EQ(view.m_LaneOffset, view.m_VScrollMin + view.m_VScrollMax - view.m_VScrollPos);
    EXPECT_GE(view.m_LaneOffset, 0);
    EXPECT_LE(view.m_LaneOffset, view.m_VScrollMax);
    EXPECT_EQ(view.m_VScrollBar.GetScrollPos(), view.m_VScrollPos);
    EXPECT_EQ(view.m_VScrollBar.GetScrollLimit(), view.m_VScrollMax);
}

}  // namespace

void ExpectRangesOfScan(const CMcuView& view) {
    const McuJobList& log = CMcuView::Jobs();
    ExpectRange(view, log, view.m_JobFirst, view.m_JobLast);
    ExpectRange(view, log.m_CustomJobs, view.m_CustomFirst, view.m_CustomLast);
    ExpectRange(view, log.m_SourceMarks, view.m_MarkFirst, view.m_MarkLast);
    ExpectRange(view, log.m_ExtraInfos, view.m_ExtraFirst, view.m_ExtraLast);
    ExpectLaneRanges(view, log.m_CustomJobsCS, view.m_CustomCSFirst, view.m_CustomCSLast);
    ExpectLaneRanges(view, log.m_HWJobs, view.m_HWFirst, view.m_HWLast);
}

void ExpectConsistent(const CMcuView& view) {
    ExpectCanvas(view);
    ExpectScale(view);
    ExpectTimePosition(view, CMcuView::Jobs().m_EndTime);
    ExpectLanePosition(view);
    ExpectRangesOfScan(view);
}
