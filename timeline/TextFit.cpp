#include "timeline/TextFit.h"

#include "platform/CDC.h"

namespace vesk {

namespace {

constexpr std::string_view kDots = "...";
constexpr int kLightFrom = 129;  // of each colour

}  // namespace

// No text is narrower than its beginning, so the longest one that fits is found by halving.
std::string FitText(const CDC& dc, std::string_view text, int width) {
    if (text.empty() || dc.GetTextExtent(text).cx <= width) return std::string(text);
    std::string part;
    const auto fits = [&](std::size_t length) {
        part.assign(text.substr(0, length)).append(kDots);
        return dc.GetTextExtent(part).cx <= width;
    };
    std::size_t kept = 0;
    std::size_t tooLong = text.size();
    while (tooLong - kept > 1) {
        const std::size_t middle = kept + (tooLong - kept) / 2;
        (fits(middle) ? kept : tooLong) = middle;
    }
    return part.assign(text.substr(0, kept)).append(kDots);
}

COLORREF TextColorOn(COLORREF block) {
    const bool isLight = GetRValue(block) >= kLightFrom && GetGValue(block) >= kLightFrom &&
                         GetBValue(block) >= kLightFrom;
    return isLight ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

}  // namespace vesk
