#pragma once

#include <cstdint>
#include <vector>

#include "timeline/TimeScale.h"

namespace vesk {

// Which ticks an axis of regular steps has. Steps are QBit; positions are pixels.

// Distance of the small ticks: the least power of two that is at least 2 pixels wide.
std::uint64_t MinorTickStep(float pixelsPerQbit);

// Distance of the labelled ticks: the least multiple of `unit` that is not below `least` and leaves
// 10 pixels between labels of that width. Found by division: far zoomed out, trying one step after
// the other takes millions of turns.
std::uint64_t MajorTickStep(float pixelsPerQbit, int labelWidth, std::uint64_t least,
                            std::uint64_t unit);

struct MinorTicks {
    int m_LineEnd;          // how far the base line goes, from the left edge
    std::vector<int> m_At;  // pixel columns, left to right
};

// Small ticks up to a last time and an x that ends the axis; the last one may stand behind both.
// The first multiple of the step right of the edge carries no tick. The step in pixels is held in
// single precision.
MinorTicks FindMinorTicks(const TimeScale&, std::uint64_t step, std::uint64_t lastTime, int right);

struct MajorTick {
    std::uint64_t m_Time;
    double m_X;  // not truncated: half of the label's width goes off first
};

// Labelled ticks at multiples of the step, the left edge included, up to a last time and an x.
std::vector<MajorTick> FindMajorTicks(const TimeScale&, std::uint64_t step, std::uint64_t lastTime,
                                      int right);

// A base of the time axis as it is written in its caption: base / 10^e for the greatest e that
// leaves no fraction, and that e.
struct Mantissa {
    float m_Value;
    std::int64_t m_Exponent;
};
Mantissa SplitBase(std::int32_t base);

// Milliseconds of a time, in double.
double Milliseconds(std::uint64_t qbits);

}  // namespace vesk
