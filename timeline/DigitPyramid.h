#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace vesk {

// Decimal digits of a number, without its sign.
std::uint8_t DigitsOf(std::int64_t number);

// Finds numbers with few digits in a long row of numbers: labels are thinned by their width, so a
// pixel column with thousands of jobs asks for the first number that is short enough. Keeps the
// least count of digits of 16 numbers, of 16 such groups, and so on: 1 byte for 15 numbers.
class DigitPyramid {
public:
    static constexpr std::uint8_t kNoNumber = 255;  // for places of the row that never count
    static constexpr int kGroup = 16;

    // The digits of the number at a place; 1 or more.
    using DigitsAt = std::function<std::uint8_t(int place)>;

    explicit DigitPyramid(DigitsAt digitsAt) : m_DigitsAt(std::move(digitsAt)), m_Levels(1) {}
    void Reserve(std::size_t places) { m_Levels[0].reserve((places + kGroup - 1) / kGroup); }
    // Takes the least digits of the next kGroup places, of fewer only at the row's end.
    void Add(std::uint8_t leastDigits) { m_Levels[0].push_back(leastDigits); }
    // After the last Add, before anything is asked for.
    void Finish(int places);

    // The first place in [first, last) whose number has at most so many digits, below kNoNumber;
    // last if there is none.
    int FirstAtMost(int first, int last, int digits) const;
    // Whether there is one. Need not look at the numbers themselves where a group lies between.
    bool HasAtMost(int first, int last, int digits) const;

private:
    DigitsAt m_DigitsAt;
    int m_Places = 0;
    std::vector<std::vector<std::uint8_t>> m_Levels;
};

}  // namespace vesk
