#include "timeline/DigitPyramid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/Dice.h"

namespace vesk {

TEST(DigitsOf, CountsDigitsWithoutTheSign) {
    EXPECT_EQ(DigitsOf(0), 1);
    EXPECT_EQ(DigitsOf(9), 1);
    EXPECT_EQ(DigitsOf(10), 2);
    EXPECT_EQ(DigitsOf(-10), 2);
    EXPECT_EQ(DigitsOf(4294967295), 10);
    EXPECT_EQ(DigitsOf(-2147483648LL), 10);
}

TEST(DigitPyramid, FindsWhatAWalkFinds) {
    for (const int size : {0, 1, 15, 16, 17, 256, 257, 5000}) {
        Dice dice(static_cast<std::uint64_t>(size));
        std::vector<std::uint8_t> digits(static_cast<std::size_t>(size));
        for (auto& d : digits)
            d = dice.OnceIn(60)   ? static_cast<std::uint8_t>(dice.Between(1, 5))
                : dice.Chance(50) ? DigitPyramid::kNoNumber
                                  : 6;
        int reads = 0;
        DigitPyramid pyramid([&](int i) {
            ++reads;
            return digits[static_cast<std::size_t>(i)];
        });
        for (auto at = digits.begin(); at < digits.end();) {
            const auto end = at + std::min<std::ptrdiff_t>(DigitPyramid::kGroup, digits.end() - at);
            pyramid.Add(*std::min_element(at, end));
            at = end;
        }
        pyramid.Finish(size);
        for (int i = 0; i < 300; ++i) {
            const int first = dice.Between(0, size);
            const int last = dice.Between(first, size);
            const int most = dice.Between(0, 7);
            int walked = first;
            while (walked < last && digits[static_cast<std::size_t>(walked)] > most) ++walked;
            EXPECT_EQ(pyramid.FirstAtMost(first, last, most), walked) << size;
            EXPECT_EQ(pyramid.HasAtMost(first, last, most), walked < last) << size;
        }
        // Nothing is read where nothing is short enough.
        reads = 0;
        EXPECT_EQ(pyramid.FirstAtMost(0, size, 0), size);
        EXPECT_EQ(reads, 0);
    }
}

}  // namespace vesk
