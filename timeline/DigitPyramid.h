#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace vesk {

// Decimal digits of a number, without its sign.
std::uint8_t DigitsOf(std::int64_t number);

// Finds numbers with few digits in a long row of numbers: labels are thinned by their width, so a
// pixel column with thousands of jobs asks for the first number that is short enough. Keeps the
// least count of digits of 16 numbers, of 16 such groups, and so on: 1 byte for 15 numbers. A group
// is worked out when it is first looked at, so that opening a log does not wait for it.
class DigitPyramid {
public:
    static constexpr std::uint8_t kNoNumber = 255;  // for places of the row that never count

    // The least digits of places [first, last), which is not empty; 1 or more.
    using LeastDigits = std::function<std::uint8_t(int first, int last)>;

    // What the function reads must not change.
    DigitPyramid(int size, LeastDigits leastDigits);

    // The first place in [first, last) whose number has at most so many digits, below kNoNumber;
    // last if there is none.
    int FirstAtMost(int first, int last, int digits);

private:
    using Level = std::vector<std::uint8_t>;  // 0: not worked out yet

    std::uint8_t Least(std::size_t level, int group);

    int m_Size;
    LeastDigits m_LeastDigits;
    std::vector<Level> m_Levels;
};

}  // namespace vesk
