// What lies under a pixel: borders by hand, and random logs against the walks that define it.
#include <algorithm>
#include <optional>

#include "tests/timeline/PointTest.h"
#include "tests/timeline/RandomList.h"

namespace {

using vesk::Dice;

// --- The walks -----------------------------------------------------------------------------------

class Walk {
public:
    Walk(const CMcuView& view, int left) : m_View(view), m_Left(left) {}

    static std::uint64_t End(const std::vector<McuJob>& records, int i) {
        const auto at = static_cast<std::size_t>(i);
        if (records[at].m_EndTime > records[at].m_StartTime) return records[at].m_EndTime;
        return at + 1 < records.size() ? records[at + 1].m_StartTime
                                       : vesk_dll_shared_data.m_pJobList->m_EndTime;
    }

    // Index of the bar, or -1.
    int Bar(const std::vector<McuJob>& records, int first, int last, int px) const {
        for (int i = first; i < last; ++i) {
            const std::uint64_t start = records[static_cast<std::size_t>(i)].m_StartTime;
            const std::uint64_t s = std::max(start, m_View.m_TimeOffset);
            const std::uint64_t e = End(records, i);
            if (e < m_View.m_TimeOffset) continue;
            const std::int64_t x1 = X(s);
            if (!Fits(x1)) return -1;
            const std::int64_t rest = std::int64_t{m_View.m_CanvasWidth} - x1 + m_Left;
            std::int64_t w = e < s ? 0 : Pixels(e - s);
            if (!Fits(w)) w = rest;
            w = std::min(w, rest);
            if (x1 < px && px < x1 + w) return i;
        }
        return -1;
    }

    int Mark(const std::vector<McuJob>& marks, int px) const {
        for (int i = m_View.m_MarkFirst; i < m_View.m_MarkLast; ++i) {
            const std::uint64_t time = marks[static_cast<std::size_t>(i)].m_StartTime;
            if (time < m_View.m_TimeOffset) continue;
            if (!Fits(X(time))) return -1;
            if (X(time) - 2 < px && px < X(time) + 2) return i;
        }
        return -1;
    }

    // "name start" of each call, in order.
    std::string Calls(const McuJobList& list, int px) const {
        std::string found;
        std::size_t n = 0;
        for (const auto& [name, calls] : list.m_CustomJobsCS) {
            for (int i = m_View.m_CustomCSFirst[n]; i < m_View.m_CustomCSLast[n]; ++i) {
                const std::uint64_t start = calls[static_cast<std::size_t>(i)].m_StartTime;
                const std::uint64_t e = End(calls, i);
                if (e < m_View.m_TimeOffset) continue;
                const std::int64_t x1 = X(std::max(start, m_View.m_TimeOffset));
                if (!Fits(x1) || x1 > px || !Fits(X(e))) break;
                if (X(e) >= px) found += name + ' ' + std::to_string(start) + '\n';
            }
            ++n;
        }
        return found;
    }

private:
    static bool Fits(std::int64_t x) { return x >= 0 && x <= 0x7FFFFFFF; }
    static std::int64_t Truncated(double x) {
        return x < 0x1p63 ? static_cast<std::int64_t>(x) : INT64_MAX;
    }
    std::int64_t Pixels(std::uint64_t qbits) const {
        return Truncated(static_cast<double>(qbits) * static_cast<double>(m_View.m_PixelsPerQbit));
    }
    std::int64_t X(std::uint64_t time) const {
        const std::uint64_t span = time > m_View.m_TimeOffset ? time - m_View.m_TimeOffset : 0;
        return Truncated(m_Left +
                         static_cast<double>(span) * static_cast<double>(m_View.m_PixelsPerQbit));
    }

    const CMcuView& m_View;
    int m_Left;
};

// The same form as Walk::Calls, out of a tip's text.
std::string CallsOf(const std::string& text) {
    std::string found;
    for (std::size_t at = 0; (at = text.find("Func  = ", at)) != std::string::npos;) {
        at += 8;
        found += text.substr(at, text.find('\r', at) - at) + ' ';
        at = text.find("Start = ", at) + 8;
        found += text.substr(at, text.find(' ', at) - at) + '\n';
    }
    return found;
}

class HitTest : public PointTest {
protected:
    // All four tests at one column.
    void ExpectWalk(int px, int left) {
        const McuJobList& list = Log();
        CMcuView& view = View();
        const Walk walk(view, left);
        const CPoint at{px, 100};
        McuJob job, segment, mark;
        int index = -1, lines = 0;
        std::uint64_t end = 0;
        CString text;
        view.HitTest(at, 10, left, 100, job, index);
        EXPECT_EQ(index, walk.Bar(list, view.m_JobFirst, view.m_JobLast, px));
        if (index >= 0) {
            EXPECT_EQ(job, list[static_cast<std::size_t>(index)]);
        }
        const int bar = walk.Bar(list.m_CustomJobs, view.m_CustomFirst, view.m_CustomLast, px);
        ASSERT_EQ(view.HitTest_CustomJob(at, 10, left, 100, segment, end), bar >= 0);
        if (bar >= 0) {
            EXPECT_EQ(segment, list.m_CustomJobs[static_cast<std::size_t>(bar)]);
            EXPECT_EQ(end, Walk::End(list.m_CustomJobs, bar));
        }
        const std::string calls = walk.Calls(list, px);
        EXPECT_EQ(view.HitTest_CustomJobCS(at, 10, left, 100, text, lines), !calls.empty());
        EXPECT_EQ(CallsOf(text.Str()), calls);
        EXPECT_EQ(lines, 8 * std::count(calls.begin(), calls.end(), '\n'));
        const int hitMark = walk.Mark(list.m_SourceMarks, px);
        ASSERT_EQ(view.HitTest_SourceMark(at, 10, left, 100, mark), hitMark >= 0);
        for (const bool isHit : {index >= 0, bar >= 0, lines > 0, hitMark >= 0}) m_Hits += isHit;
        if (hitMark >= 0) {
            EXPECT_EQ(mark, list.m_SourceMarks[static_cast<std::size_t>(hitMark)]);
        }
    }

    int m_Hits = 0;
};

TEST_F(HitTest, IsThatOfAWalkOverAllVisibleRecords) {
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        // Some logs are so long that the walk is left for an index.
        vesk::FillRandomList(Log(), seed, seed % 3 == 0 ? 40 : 5000);
        Dice dice(seed);
        if (dice.OnceIn(10)) std::swap(Log().at(10), Log().at(30));
        if (dice.OnceIn(10) && Log().m_SourceMarks.size() > 9)
            std::swap(Log().m_SourceMarks[3], Log().m_SourceMarks[7]);
        Open(dice.Between(120, 1500), 617);
        for (int look = 0; look < 12; ++look) {
            vesk::LookSomewhere(View(), dice);
            const int left = dice.OnceIn(5) ? dice.Between(0, 200) : View().m_CanvasLeft;
            for (int i = 0; i < 15; ++i) {
                const int px = dice.Between(left - 3, View().CanvasRight() + 3);
                SCOPED_TRACE(testing::Message()
                             << "seed " << seed << ", look " << look << ", x " << px);
                ExpectWalk(px, left);
                if (HasFailure()) return;
            }
        }
    }
    EXPECT_GT(m_Hits, 5000);
}

// A record that is so long that its end has no pixel hides the calls behind it, and one that
// starts out of reach ends the search.
TEST_F(HitTest, IsThatOfAWalkWhereTimesLeaveThePixels) {
    constexpr std::uint64_t kFar = 0x200000000;
    for (int i = 0; i < 3000; ++i) {
        const auto time = static_cast<std::uint64_t>(i);
        Log().Insert("job", time, i == 700 ? kFar : time + 1);
        Log().InsertCustomJobCS(Record("fn", time, i == 700 ? kFar : time + 2));
    }
    Log().m_EndTime = kFar + 1000;
    Open();
    View().m_PixelsPerQbit = 0.25f;
    View().m_VisibleQbits = 4000;
    View().Cal_HScrollPos();
    for (const int px : {81, 255, 256, 257, 500, 829, 830, 1079}) {
        SCOPED_TRACE(px);
        ExpectWalk(px, 80);
    }
}

// --- Borders -------------------------------------------------------------------------------------

TEST_F(HitTest, TheEdgesOfABarDoNotCount) {
    Log().Insert("first", 10, 20);  // x 100 to 120
    Log().Insert("point", 20, 20);  // runs to the next one
    Log().Insert("open", 30, 0);    // x 140, to the next one's start
    Log().Insert("last", 50, 0);    // x 180, to the log's end at 700, right of the canvas
    Log().m_EndTime = 700;
    Open();
    const struct {
        int x;
        const char* name;
    } cases[] = {{100, ""},      {101, "first"}, {119, "first"}, {120, ""},     {121, "point"},
                 {139, "point"}, {140, ""},      {141, "open"},  {180, ""},     {181, "last"},
                 {1079, "last"}, {1080, ""},     {79, ""},       {INT_MIN, ""}, {INT_MAX, ""}};
    for (const auto& c : cases) {
        McuJob job;
        int index = -1;
        EXPECT_EQ(View().HitTest({c.x, 100}, 10, 80, 100, job, index), *c.name != 0) << c.x;
        EXPECT_EQ(job.m_Name, c.name) << c.x;
    }
}

TEST_F(HitTest, TheEdgesOfABandCount) {
    Log().Insert("job", 0, 100);
    Log().InsertCustomJob(Record("fn", 0, 100), 100);
    Log().InsertCustomJobCS(Record("fn", 0, 100));
    Log().InsertSourceMark(Record("mk", 10, 10));
    Open();
    for (const auto& [y, isHit] : std::initializer_list<std::pair<int, bool>>{
             {89, false}, {90, true}, {100, true}, {101, false}}) {
        McuJob job;
        int index = 0, lines = 7;
        std::uint64_t end = 0;
        CString text = "former";
        EXPECT_EQ(View().HitTest({101, y}, 10, 80, 100, job, index), isHit) << y;
        EXPECT_EQ(View().HitTest_CustomJob({101, y}, 10, 80, 100, job, end), isHit) << y;
        EXPECT_EQ(View().HitTest_SourceMark({101, y}, 10, 80, 100, job), isHit) << y;
        EXPECT_EQ(View().HitTest_CustomJobCS({101, y}, 10, 80, 100, text, lines), isHit) << y;
        EXPECT_EQ(lines, isHit ? 8 : 0) << y;
        EXPECT_EQ(text.IsEmpty(), !isHit) << y;
    }
}

TEST_F(HitTest, AMarkIsThreePixelsWideAndACallHasItsEdges) {
    Log().InsertSourceMark(Record("a", 10, 10));  // x 100
    Log().InsertSourceMark(Record("b", 11, 11));
    Log().InsertCustomJobCS(Record("dot", 60, 60));  // x 200, up to the log's end at 60
    Log().InsertCustomJobCS(Record("fn", 10, 20));   // x 100 to 120
    Log().Insert("job", 0, 60);
    Open();
    const struct {
        int x;
        const char* mark;
        int lines;
    } cases[] = {{98, "", 0},   {99, "a", 0}, {101, "a", 8}, {102, "b", 8},
                 {103, "b", 8}, {104, "", 8}, {120, "", 8},  {121, "", 0},
                 {199, "", 0},  {200, "", 8}, {201, "", 0}};
    for (const auto& c : cases) {
        McuJob mark;
        CString text;
        int lines = 0;
        View().HitTest_SourceMark({c.x, 100}, 10, 80, 100, mark);
        View().HitTest_CustomJobCS({c.x, 100}, 10, 80, 100, text, lines);
        EXPECT_EQ(mark.m_Name, c.mark) << c.x;
        EXPECT_EQ(lines, c.lines) << c.x;
    }
}

}  // namespace
