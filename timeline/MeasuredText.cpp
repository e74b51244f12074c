#include "timeline/MeasuredText.h"

#include <algorithm>
#include <utility>

#include "platform/CDC.h"

namespace vesk {

namespace {

constexpr std::string_view kDots = "...";

}  // namespace

// The width of a text is the sum of its characters'.
MeasuredText::MeasuredText(const CDC& dc, std::string text)
    : m_Text(std::move(text)), m_Widths{0}, m_DotsWidth(dc.GetTextExtent(kDots).cx) {
    m_Widths.reserve(m_Text.size() + 1);
    for (const char& character : m_Text)
        m_Widths.push_back(m_Widths.back() + dc.GetTextExtent({&character, 1}).cx);
}

const std::string& MeasuredText::Fit(int width) {
    if (m_Text.empty() || Width() <= width) return m_Text;
    const auto tooLong = std::upper_bound(
        m_Widths.begin() + 1, m_Widths.end() - 1, width,
        [this](int most, int part) { return part > std::int64_t{most} - m_DotsWidth; });
    const auto kept = static_cast<std::size_t>(tooLong - m_Widths.begin()) - 1;
    return m_Fitted.assign(m_Text, 0, kept).append(kDots);
}

MeasuredText& MeasuredNames::Of(const CDC& dc, const std::string& name) {
    if (m_Font != &dc.Glyphs()) m_Names.clear();
    m_Font = &dc.Glyphs();
    const auto known = m_Names.find(name);
    if (known != m_Names.end()) return known->second;
    return m_Names.try_emplace(name, dc, name).first->second;
}

}  // namespace vesk
