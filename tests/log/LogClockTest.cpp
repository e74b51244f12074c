#include "log/LogClock.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

RawRecord At(std::int32_t frame, std::uint32_t count, std::uint32_t wrap = 5000) {
    return {0, count, wrap, frame, nullptr};
}

constexpr std::uint32_t kMarked5000 = 0x9388;  // 5000 with bit 15

TEST(LogClock, MovesByCountsAndFrames) {
    HeaderInfo inFrames;
    inFrames.m_FrameBased = 1;
    inFrames.m_IsTQCNT = true;
    HeaderInfo counting = inFrames;
    counting.m_FrameBased = 0;
    const LogClock clock(inFrames, true, true), headerless(inFrames, true, false);
    const LogClock noFrames(inFrames, false, true), noFrameRule(counting, true, true);
    const struct {
        const char* what;
        LogClock clock;
        std::uint32_t lastCount;
        RawRecord record;  // behind frame 10
        bool tickRuns;
        std::uint64_t moved;
    } cases[] = {
        {"counts go on", clock, 100, At(10, 150), false, 50},
        {"no count has passed", clock, 100, At(10, 100), false, 0},
        {"the counter has wrapped", clock, 4000, At(10, 100), false, 1100},
        {"two frames", clock, 4000, At(12, 100), false, 6100},
        {"two frames and some counts", clock, 100, At(12, 4000), false, 13900},
        {"the frame number falls", clock, 4000, At(9, 100), false, 1100},
        {"in the tick, behind the wrap", clock, 4000, At(12, 100), true, 6100},
        {"in the tick, before the wrap", clock, 100, At(12, 4000), true, 8900},
        {"in the tick, no new frame", clock, 4000, At(10, 100), true, 1100},
        {"in the tick, marked", clock, 4000, At(12, 100, kMarked5000), true, 1100},
        {"marked, before the wrap", clock, 100, At(12, 4000, kMarked5000), true, 3900},
        {"more frames off than on", clock, 100, At(11, 4000, kMarked5000), true, 4294966196},
        {"marked, elsewhere", clock, 100, At(11, 200, kMarked5000), false, 37868},
        {"marked, headerless", headerless, 4000, At(12, 100, kMarked5000), true, 71636},
        {"no frame rule", noFrameRule, 4000, At(12, 100), false, 1100},
        {"no frame numbers", noFrames, 100, At(12, 4000), true, 3900},
        {"no wrap", noFrames, 100, At(10, 40, 0), false, 4294967236},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        LogClock moving = c.clock;
        moving.Accept(At(10, c.lastCount));
        moving.AdvanceTo(c.record, c.tickRuns);
        EXPECT_EQ(moving.Now(), c.moved);
    }
}

TEST(LogClock, DividesMicrosecondsByTheRatio) {
    constexpr float kTiny = 1.0F / (1 << 30);
    const struct {
        float ratio;
        std::uint32_t count;  // behind 900, wrap 1000
        std::uint64_t moved;
    } cases[] = {
        {1.0F, 100, 200},
        {2.0F, 100, 100},
        {3.0F, 100, 66},                      // the rest is dropped
        {1000000.0F / 1083333.0F, 100, 216},  // 200 * 1.083333 = 216.67
        {kTiny, 101, 1073741824},             // 201 * 2^30: the low 32 bits
        {kTiny, 100, 0},
    };
    for (const auto& c : cases) {
        HeaderInfo info;
        info.m_Ratio = c.ratio;
        LogClock clock(info, true, true);
        clock.Accept(At(0, 900));
        clock.AdvanceTo(At(7, c.count, 1000), false);
        EXPECT_EQ(clock.Now(), c.moved) << c.ratio << ", " << c.count;
    }
}

TEST(LogClock, KeepsTheLowWordOfAnyQuotient) {
    const struct {
        double quotient;
        std::uint32_t word;
    } cases[] = {{0.99, 0},
                 {4294967295.9, 4294967295},
                 {4294967298.5, 2},
                 {-1.5, 4294967295},
                 {9223372036854777856.0, 2048},  // 2^63 + 2048
                 {1e300, 0},
                 {-1e300, 0}};
    for (const auto& c : cases) EXPECT_EQ(LowWordOf(c.quotient), c.word) << c.quotient;
}

TEST(LogClock, TheFirstRecordIsOneCountBehindTheStart) {
    for (const std::uint32_t count : {0u, 1u, 100u, 0xFFFFFFFFu}) {
        HeaderInfo info;
        info.m_FrameBased = 1;
        info.m_IsTQCNT = true;
        LogClock clock(info, true, true);
        clock.StartAt(At(5, count), true);
        EXPECT_EQ(clock.LastFrame(), 5);
        clock.AdvanceTo(At(5, count), false);
        EXPECT_EQ(clock.Now(), count == 0 ? 0u : 1u);
    }
}

}  // namespace
}  // namespace vesk
