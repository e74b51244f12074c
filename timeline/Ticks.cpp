#include "timeline/Ticks.h"

#include <algorithm>
#include <cmath>

namespace vesk {

namespace {

constexpr double kLeastMinorPixels = 2.0;
constexpr int kGapBetweenLabels = 10;
constexpr double kMostQbits = 0x1p62;
constexpr std::uint64_t kMostMinorStep = std::uint64_t{1} << 62;

double Pixels(std::uint64_t qbits, float pixelsPerQbit) {
    return static_cast<double>(qbits) * pixelsPerQbit;
}

// The least span that is at least so many pixels wide. The quotient is off by rounding only.
std::uint64_t LeastSpan(double pixels, float pixelsPerQbit) {
    const double quotient = std::min(std::ceil(pixels / pixelsPerQbit), kMostQbits);
    auto span = static_cast<std::uint64_t>(quotient);
    while (span > 0 && Pixels(span - 1, pixelsPerQbit) >= pixels) --span;
    while (quotient < kMostQbits && Pixels(span, pixelsPerQbit) < pixels) ++span;
    return span;
}

double Place(const TimeScale& scale, std::uint64_t time) {
    return scale.m_Left + Pixels(time - scale.m_Offset, scale.m_PixelsPerQbit);
}

}  // namespace

std::uint64_t MinorTickStep(float pixelsPerQbit) {
    std::uint64_t step = 1;
    while (step < kMostMinorStep && Pixels(step, pixelsPerQbit) < kLeastMinorPixels) step *= 2;
    return step;
}

std::uint64_t MajorTickStep(float pixelsPerQbit, int labelWidth, std::uint64_t least,
                            std::uint64_t unit) {
    const double needed = static_cast<double>(labelWidth) + kGapBetweenLabels;
    const std::uint64_t span = std::max(least, LeastSpan(needed, pixelsPerQbit));
    return (span + unit - 1) / unit * unit;
}

MinorTicks FindMinorTicks(const TimeScale& scale, std::uint64_t step, std::uint64_t lastTime,
                          int right) {
    const auto stepPixels = static_cast<float>(Pixels(step, scale.m_PixelsPerQbit));
    std::uint64_t time = scale.m_Offset - scale.m_Offset % step + step;
    double x = Place(scale, time);
    MinorTicks ticks{static_cast<int>(x), {}};
    while (time <= lastTime) {
        x += stepPixels;
        ticks.m_At.push_back(static_cast<int>(x));
        if (x >= right) break;
        time += step;
    }
    if (!ticks.m_At.empty()) ticks.m_LineEnd = ticks.m_At.back();
    return ticks;
}

std::vector<MajorTick> FindMajorTicks(const TimeScale& scale, std::uint64_t step,
                                      std::uint64_t lastTime, int right) {
    const double stepPixels = Pixels(step, scale.m_PixelsPerQbit);
    const std::uint64_t rest = scale.m_Offset % step;
    std::uint64_t time = rest == 0 ? scale.m_Offset : scale.m_Offset - rest + step;
    double x = Place(scale, time);
    std::vector<MajorTick> ticks;
    while (time <= lastTime) {
        ticks.push_back({time, x});
        x += stepPixels;
        if (x >= right) break;
        time += step;
    }
    return ticks;
}

Mantissa SplitBase(std::int32_t base) {
    Mantissa split{static_cast<float>(base), 0};
    while (split.m_Value != 0) {
        const double tenth = static_cast<double>(split.m_Value) / 10;
        if (tenth != static_cast<double>(static_cast<std::int64_t>(split.m_Value) / 10)) break;
        split.m_Value = static_cast<float>(tenth);
        ++split.m_Exponent;
    }
    return split;
}

double Milliseconds(std::uint64_t qbits) {
    return static_cast<double>(qbits) * 120 / 130000;
}

}  // namespace vesk
