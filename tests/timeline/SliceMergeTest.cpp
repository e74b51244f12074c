#include "timeline/SliceMerge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/Dice.h"
#include "tests/timeline/PlainCustom.h"

using vesk::MergeCall;
using vesk::Slice;
using vesk::SliceMap;

namespace {

constexpr int kOld = 0;
constexpr int kNew = 1;

// As "old 10-20 flags 1, new 20-30 flags 4".
std::string Text(const SliceMap& slices) {
    std::string text;
    for (const auto& [start, slice] : slices) {
        text += (text.empty() ? "" : ", ") +
                std::string(slice.m_Function == kOld ? "old " : "new ") +
                std::to_string(slice.m_Start) + "-" + std::to_string(slice.m_End) + " flags " +
                std::to_string(slice.m_Flags);
    }
    return text;
}

SliceMap Slices(std::initializer_list<Slice> slices) {
    SliceMap map;
    for (const Slice& slice : slices) map.emplace(slice.m_Start, slice);
    return map;
}

}  // namespace

TEST(SliceMerge, GivesEveryMomentToOneSlice) {
    const struct {
        const char* what;
        Slice old;
        Slice fresh;
        const char* merged;
    } cases[] = {
        {"old holds new",
         {10, 50, kOld, 5},
         {20, 30, kNew, 5},
         "old 10-20 flags 1, new 20-30 flags 5, old 30-50 flags 4"},
        {"new holds old",
         {20, 30, kOld, 5},
         {10, 50, kNew, 5},
         "new 10-20 flags 1, old 20-30 flags 5, new 30-50 flags 4"},
        {"old reaches into new",
         {10, 30, kOld, 5},
         {20, 50, kNew, 5},
         "old 10-20 flags 5, new 20-50 flags 5"},
        {"old ends with new",
         {10, 50, kOld, 5},
         {20, 50, kNew, 5},
         "old 10-20 flags 5, new 20-50 flags 5"},
        {"new reaches into old",
         {20, 50, kOld, 5},
         {10, 30, kNew, 5},
         "new 10-30 flags 5, old 30-50 flags 5"},
        {"same start, old longer",
         {10, 50, kOld, 5},
         {10, 30, kNew, 5},
         "new 10-30 flags 5, old 30-50 flags 5"},
        {"same start, old shorter",
         {10, 30, kOld, 5},
         {10, 50, kNew, 5},
         "old 10-30 flags 5, new 30-50 flags 5"},
        {"same end, old shorter",
         {30, 50, kOld, 5},
         {10, 50, kNew, 5},
         "new 10-30 flags 5, old 30-50 flags 5"},
        {"equal, old has flags", {10, 50, kOld, 4}, {10, 50, kNew, 1}, "old 10-50 flags 4"},
        {"equal, new has flags", {10, 50, kOld, 0}, {10, 50, kNew, 1}, "new 10-50 flags 1"},
        {"equal without flags", {10, 50, kOld, 0}, {10, 50, kNew, 0}, "old 10-50 flags 0"},
        {"one behind the other",
         {10, 20, kOld, 5},
         {20, 50, kNew, 5},
         "old 10-20 flags 5, new 20-50 flags 5"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        SliceMap merged = Slices({c.old});
        SliceMap call = Slices({c.fresh});
        MergeCall(merged, call, {});
        EXPECT_EQ(Text(merged), c.merged);
        EXPECT_TRUE(call.empty());
    }
}

TEST(SliceMerge, ASliceThatHoldsSeveralIsCutByEach) {
    SliceMap merged = Slices({{20, 30, kOld, 5}, {40, 50, kOld, 5}});
    SliceMap call = Slices({{10, 60, kNew, 5}});
    MergeCall(merged, call, {});
    EXPECT_EQ(Text(merged),
              "new 10-20 flags 1, old 20-30 flags 5, new 30-40 flags 0, old 40-50 flags 5, "
              "new 50-60 flags 4");
}

TEST(SliceMerge, OutsideOfTheWindowSlicesEnterAsTheyAre) {
    SliceMap merged = Slices({{10, 60, kOld, 5}});
    SliceMap call = Slices({{10, 15, kNew, 5}, {20, 25, kNew, 5}, {50, 55, kNew, 5}});
    MergeCall(merged, call, {30, 40, false});
    EXPECT_EQ(Text(merged), "old 10-60 flags 5, new 20-25 flags 5, new 50-55 flags 5");
}

namespace {

// Merges random calls both ways. Orderly ones have one slice in each of some spans that do not
// overlap, as jobs give them; the others anything, ends before starts included.
void ExpectAsEachWithEach(std::uint64_t seed, bool isOrderly) {
    vesk::Dice dice(seed);
    const std::uint64_t begin = dice.Below(200);
    const std::uint64_t end = begin + dice.Below(200);
    const std::uint32_t span = 20 + dice.Below(60);
    SliceMap merged;
    vesk::PlainSlices plain;
    for (int call = 0; call < 30; ++call) {
        SliceMap slices;
        vesk::PlainSlices plainSlices;
        for (std::uint64_t job = 0; job < 300; job += span) {
            if (dice.Chance(50)) continue;
            const std::uint64_t from = job + dice.Below(span);
            const std::uint64_t rest = job + span - from;
            const std::uint64_t to = isOrderly
                                         ? from + 1 + dice.Below(static_cast<std::uint32_t>(rest))
                                         : dice.Below(300);
            const auto flags = static_cast<std::uint8_t>(dice.Of({0, 1, 4, 5}));
            slices[from] = {from, std::min(to, isOrderly ? job + span : to), call, flags};
            McuJob piece(std::to_string(call), from, slices[from].m_End);
            piece.m_Flags = flags;
            plainSlices[from] = piece;
        }
        // Few start left of the window, so that those are found however many there are.
        MergeCall(merged, slices, {begin, end, !isOrderly});
        vesk::PlainMerge(plain, plainSlices, begin, end);
        ASSERT_EQ(merged.size(), plain.size()) << "seed " << seed << ", call " << call;
        auto at = plain.begin();
        for (const auto& [start, slice] : merged) {
            const McuJob& expected = (at++)->second;
            const Slice same{expected.m_StartTime, expected.m_EndTime, std::stoi(expected.m_Name),
                             expected.m_Flags};
            ASSERT_EQ(slice, same) << "seed " << seed << ", call " << call << ", at " << start;
        }
    }
}

}  // namespace

TEST(SliceMerge, IsTheSameAsComparingEachWithEach) {
    for (std::uint64_t seed = 1; seed <= 300 && !testing::Test::HasFailure(); ++seed)
        ExpectAsEachWithEach(seed, seed % 2 == 0);
}

// Small numbers, so that slices often touch or are equal.
TEST(SliceMerge, SlicesWithALengthLeaveTheSameInAFlatList) {
    for (std::uint64_t seed = 1; seed <= 5000; ++seed) {
        vesk::Dice dice(seed);
        SliceMap merged;
        std::vector<Slice> flat;
        for (int call = 0; call < 8; ++call) {
            const std::uint64_t from = dice.Chance(30) ? 0 : dice.Below(20);
            const std::uint64_t to = dice.Chance(30) ? 21 : from + 1 + dice.Below(12);
            const Slice slice{from, to, call, static_cast<std::uint8_t>(dice.Of({0, 0, 1, 4, 5}))};
            SliceMap one = Slices({slice});
            MergeCall(merged, one, {});
            vesk::MergeSlice(flat, slice);
        }
        std::vector<Slice> expected;
        for (const auto& [start, slice] : merged) expected.push_back(slice);
        ASSERT_EQ(flat, expected) << "seed " << seed;
    }
}
