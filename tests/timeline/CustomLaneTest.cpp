#include "tests/support/Dice.h"
#include "tests/timeline/CustomTest.h"

using testing::ElementsAre;

namespace {

class CustomLaneTest : public CustomTest {};

// Every lane of a random log, from many points of view.
template <class Compare>
void LookAround(CMcuView& view, std::uint64_t seed, Compare compare) {
    vesk::Dice dice(seed);
    for (int look = 0; look < 12; ++look) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", look " << look);
        vesk::LookSomewhere(view, dice);
        compare();
        if (testing::Test::HasFailure()) return;
    }
}

}  // namespace

TEST_F(CustomLaneTest, SegmentsLookAsIfDrawnOneByOne) {
    for (std::uint64_t seed = 1; seed <= 49 && !HasFailure(); ++seed) {
        Fill(seed, 40 << seed % 7);
        LookAround(Open(), seed, [&] {
            const auto drawAll = [&](auto draw) {
                return [&, draw](CDC* dc) {
                    int y = 40;
                    for (const auto& [name, total] : Jobs().m_CustomNames) draw(dc, name, y += 20);
                };
            };
            EXPECT_EQ(Differences(drawAll([&](CDC* dc, const std::string& name, int y) {
                                      View().DrawCustomJob(dc, name, 80, y);
                                  }),
                                  drawAll([&](CDC* dc, const std::string& name, int y) {
                                      vesk::PlainCustomJob(View(), dc, name, 80, y);
                                  })),
                      0);
        });
    }
}

TEST_F(CustomLaneTest, CallsLookAsIfDrawnOneByOne) {
    for (std::uint64_t seed = 1; seed <= 49 && !HasFailure(); ++seed) {
        Fill(seed, 40 << seed % 7);
        LookAround(Open(), seed, [&] {
            const auto drawAll = [&](auto draw) {
                return [&, draw](CDC* dc) {
                    std::size_t k = 0;
                    for (const auto& [name, calls] : Jobs().m_CustomJobsCS) {
                        draw(dc, name, 60 + 20 * static_cast<int>(k), View().m_CustomCSFirst[k],
                             View().m_CustomCSLast[k]);
                        ++k;
                    }
                };
            };
            EXPECT_EQ(
                Differences(
                    drawAll([&](CDC* dc, const std::string& name, int y, int first, int last) {
                        View().DrawCustomJobCS(dc, name, 80, y, first, last);
                    }),
                    drawAll([&](CDC* dc, const std::string& name, int y, int first, int last) {
                        vesk::PlainCustomJobCS(View(), dc, name, 80, y, first, last);
                    })),
                0);
        });
    }
}

// The canvas begins at 80 and ends at 480, one pixel a QBit.
TEST_F(CustomLaneTest, AFunctionStaysHighWhileItCalls) {
    Task("T", 0, 400);
    Segment("A", 100, 0, 1);
    Segment("B", 150, 170, 7);
    Segment("A", 170, 200, 6);
    Open();
    EXPECT_THAT(
        Lane("A"),
        ElementsAre("line 80,95 > 180,95 solid 1 804020", "line 180,85 > 180,95 solid 1 804020",
                    "line 180,85 > 230,85 solid 1 804020",
                    "polygon 185,90 > 180,95 > 180,85 solid 1 804020 on 804020",
                    "line 230,85 > 250,85 solid 1 804020", "line 250,85 > 280,85 solid 1 804020",
                    "line 280,85 > 280,95 solid 1 804020",
                    "polygon 275,90 > 280,95 > 280,85 solid 1 804020 on 804020",
                    "line 280,95 > 480,95 solid 1 804020", "text 36,85 \"A\" 000000"));
}

TEST_F(CustomLaneTest, AFunctionEnteredBeforeTheViewBeginsHigh) {
    Task("T", 0, 1000);
    Segment("A", 10, 0, 1);
    Segment("B", 20, 30, 7);
    Segment("B", 30, 600, 7);
    Open();
    LookFrom(500);
    EXPECT_THAT(Lane("A"),
                ElementsAre("line 80,85 > 480,85 solid 1 804020", "text 36,85 \"A\" 000000"));
}

TEST_F(CustomLaneTest, ACallThatOverlapsShowsBothMarks) {
    Task("T", 0, 400);
    Call("A", 20, 60);
    Call("A", 50, 90);
    Open();
    EXPECT_THAT(
        LaneCS("A"),
        ElementsAre("line 80,95 > 100,95 solid 1 804020", "line 100,85 > 100,95 solid 1 804020",
                    "line 100,85 > 140,85 solid 1 804020", "line 140,85 > 140,95 solid 1 804020",
                    "polygon 105,90 > 100,95 > 100,85 solid 1 804020 on 804020",
                    "polygon 135,90 > 140,95 > 140,85 solid 1 804020 on 804020",
                    "line 130,85 > 130,95 solid 1 804020", "line 130,85 > 170,85 solid 1 804020",
                    "line 170,85 > 170,95 solid 1 804020",
                    "polygon 135,90 > 130,95 > 130,85 solid 1 804020 on 804020",
                    "polygon 165,90 > 170,95 > 170,85 solid 1 804020 on 804020",
                    "line 170,95 > 480,95 solid 1 804020", "text 36,85 \"A\" 000000"));
}

TEST_F(CustomLaneTest, ALaneWithoutCallsHasNoLine) {
    Task("T", 0, 400);
    Call("A", 20, 60);
    Open();
    EXPECT_TRUE(Lines([&](CDC* dc) { DrawCS(dc, "B", 0); }).empty());
}

// It lasts from before the view until behind it; the call that begins in between is a later one.
TEST_F(CustomLaneTest, ACallAroundTheViewCountsHoweverFarBackItBegan) {
    Task("T", 0, 2000);
    Call("A", 10, 900);
    for (std::uint64_t start = 20; start < 400; start += 10) Call("A", start, start + 5);
    Open();
    LookFrom(500);
    // The last call before the view has ended; the one around the view has not.
    EXPECT_THAT(LaneCS("A"),
                ElementsAre("line 80,85 > 480,85 solid 1 804020",
                            "polygon 475,90 > 480,95 > 480,85 solid 1 804020 on 804020",
                            "line 80,85 > 80,85 solid 1 804020",
                            "line 80,85 > 80,95 solid 1 804020", "text 36,85 \"A\" 000000"));
}
