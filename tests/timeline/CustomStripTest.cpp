#include "tests/support/Dice.h"
#include "tests/timeline/CustomTest.h"

using testing::ElementsAre;
using vesk::Dice;

namespace {

class CustomStripTest : public CustomTest {
protected:
    // Jobs as a reader leaves them: one after the other.
    static void PutJobsInOrder() {
        for (int i = 0; i < Jobs().GetSize(); ++i) {
            McuJob& job = Jobs()[static_cast<std::size_t>(i)];
            if (i + 1 < Jobs().GetSize())
                job.m_EndTime =
                    std::min(job.m_EndTime, Jobs()[static_cast<std::size_t>(i) + 1].m_StartTime);
            else
                job.m_EndTime = std::max(job.m_EndTime, job.m_StartTime);
        }
    }

    // Tasks that call functions within functions and are preempted by each other.
    static void FillWithStacks(std::uint64_t seed, int jobs) {
        Dice dice(seed);
        McuJobList& list = Jobs();
        list.Clear();
        const char* tasks[] = {"T0", "T1", "T2"};
        const char* functions[] = {"alpha", "beta", "gamma", "delta", ""};
        std::vector<McuJob> open[3];
        std::uint64_t time = dice.Below(50);
        const std::uint32_t longest = dice.Of({4u, 30u, 500u});
        for (int i = 0; i < jobs; ++i) {
            const std::uint32_t task = dice.Below(3);
            const std::uint64_t start = time;
            for (int step = dice.Between(0, 5); step > 0; --step) {
                time += dice.Below(longest);
                if (dice.Chance(55)) {
                    open[task].emplace_back(functions[dice.Below(5)], time, 0);
                } else if (!open[task].empty()) {
                    McuJob call = open[task].back();
                    open[task].pop_back();
                    call.m_EndTime = dice.Chance(3) ? 0 : time;
                    call.m_Flags = 5;
                    list.InsertCustomJobCS(call);
                }
            }
            time += dice.Below(longest);
            list.Insert(tasks[task], start, time);
            if (dice.Chance(20)) time += dice.Below(longest);
        }
        for (auto& [name, calls] : list.m_CustomJobsCS)
            std::stable_sort(calls.begin(), calls.end(), [](const McuJob& a, const McuJob& b) {
                return a.m_StartTime < b.m_StartTime;
            });
        global_vesk_doc_ptr->InitVESKColor();
    }

    void ExpectStripAsPlain() {
        EXPECT_EQ(Differences(
                      [&](CDC* dc) { View().DrawCustomJobList(dc, kHeight, 80, kStrip); },
                      [&](CDC* dc) { vesk::PlainCustomJobList(View(), dc, kHeight, 80, kStrip); }),
                  0);
    }
    void ExpectStripCSAsPlain() {
        EXPECT_EQ(Differences([&](CDC* dc) { View().DrawCustomJobListCS(dc, kHeight, 80, kStrip); },
                              [&](CDC* dc) {
                                  vesk::PlainCustomJobListCS(View(), dc, kHeight, 80, kStrip);
                              }),
                  0);
    }

    // From many points of view.
    template <class Expect>
    void LookAround(std::uint64_t seed, int looks, Expect expect) {
        Open();
        Dice dice(seed);
        for (int look = 0; look < looks; ++look) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", look " << look);
            vesk::LookSomewhere(View(), dice);
            expect();
        }
    }
};

}  // namespace

TEST_F(CustomStripTest, SegmentsLookAsIfDrawnOneByOne) {
    for (std::uint64_t seed = 1; seed <= 42 && !HasFailure(); ++seed) {
        Fill(seed, 40 << seed % 7);
        LookAround(seed, 8, [&] { ExpectStripAsPlain(); });
    }
}

TEST_F(CustomStripTest, CallsThatOverlapAnyhowLookAsIfMergedForEachView) {
    for (std::uint64_t seed = 1; seed <= 24 && !HasFailure(); ++seed) {
        Fill(seed, 20 << seed % 5);
        LookAround(seed, 6, [&] { ExpectStripCSAsPlain(); });
    }
}

TEST_F(CustomStripTest, CallsWithinJobsLookAsIfMergedForEachView) {
    for (std::uint64_t seed = 1; seed <= 30 && !HasFailure(); ++seed) {
        Fill(seed, 40 << seed % 5);
        PutJobsInOrder();
        LookAround(seed, 10, [&] { ExpectStripCSAsPlain(); });
    }
}

TEST_F(CustomStripTest, NestedCallsLookAsIfMergedForEachView) {
    for (std::uint64_t seed = 1; seed <= 40 && !HasFailure(); ++seed) {
        FillWithStacks(seed, 50 << seed % 5);
        LookAround(seed, 10, [&] { ExpectStripCSAsPlain(); });
    }
}

// A calls B; the canvas begins at 80, one pixel a QBit.
TEST_F(CustomStripTest, ACallWithinACallCutsIt) {
    Task("T", 0, 200);
    Call("A", 10, 110);
    Call("B", 50, 80);
    Open();
    EXPECT_THAT(StripCS(),
                ElementsAre("fill 91,140 40x60 804020",
                            "polygon 95,155 > 90,160 > 90,150 solid 1 402010 on 402010",
                            "line 90,200 > 90,140 solid 1 402010", "text 106,160 \"A\" FFFFFF",
                            "fill 131,140 30x60 804020",
                            "polygon 135,155 > 130,160 > 130,150 solid 1 402010 on 402010",
                            "line 130,200 > 130,140 solid 1 402010",
                            "polygon 155,155 > 160,160 > 160,150 solid 1 402010 on 402010",
                            "line 160,200 > 160,140 solid 1 402010", "text 141,160 \"B\" FFFFFF",
                            "fill 161,140 30x60 804020",
                            "polygon 185,155 > 190,160 > 190,150 solid 1 402010 on 402010",
                            "line 190,200 > 190,140 solid 1 402010", "text 171,160 \"A\" FFFFFF"));
}

// Its task is preempted twice: entry and exit stand at the outer ends only.
TEST_F(CustomStripTest, ACallShowsWhereItsTaskRuns) {
    for (const std::uint64_t start : {0, 40, 80}) {
        Task("T", start, start + 20);
        Task("IRQ1", start + 20, start + 40);
    }
    Call("A", 10, 95);
    Open();
    EXPECT_THAT(StripCS(),
                ElementsAre("fill 91,140 10x60 804020",
                            "polygon 95,155 > 90,160 > 90,150 solid 1 402010 on 402010",
                            "line 90,200 > 90,140 solid 1 402010", "text 91,160 \"A\" FFFFFF",
                            "fill 121,140 20x60 804020", "text 126,160 \"A\" FFFFFF",
                            "fill 161,140 15x60 804020",
                            "polygon 170,155 > 175,160 > 175,150 solid 1 402010 on 402010",
                            "line 175,200 > 175,140 solid 1 402010", "text 164,160 \"A\" FFFFFF"));
}

TEST_F(CustomStripTest, MarksNeedRoom) {
    const struct {
        const char* what;
        int flags;
        std::uint64_t width;
        int marks;
    } cases[] = {
        {"both", 3, 10, 2},          {"both, no room", 3, 9, 0}, {"entry", 1, 5, 1},
        {"entry, no room", 1, 4, 0}, {"exit", 2, 5, 1},          {"exit, no room", 2, 4, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Jobs().Clear();
        Task("T", 0, 100);
        Segment("A", 10, 10 + c.width, c.flags);
        Open();
        int marks = 0;
        for (const std::string& line : Strip()) marks += line.rfind("polygon", 0) == 0;
        EXPECT_EQ(marks, c.marks);
    }
}
