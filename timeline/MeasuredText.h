#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class CDC;

namespace vesk {

class GlyphSource;

// A text with its width, and those of its beginnings, in one font. Pixels.
class MeasuredText {
public:
    MeasuredText(const CDC&, std::string text);

    const std::string& Text() const { return m_Text; }
    int Width() const { return m_Widths.back(); }
    // The same as FitText, without measuring. Valid up to the next call.
    const std::string& Fit(int width);

private:
    std::string m_Text;
    std::vector<int> m_Widths;  // of the first 0, 1, ... characters
    int m_DotsWidth;
    std::string m_Fitted;
};

// The names of a log, each measured when it is first asked for, and again only when the font is
// another one.
class MeasuredNames {
public:
    // Stays where it is until the font changes.
    MeasuredText& Of(const CDC&, const std::string& name);

private:
    const GlyphSource* m_Font = nullptr;
    std::unordered_map<std::string, MeasuredText> m_Names;
};

}  // namespace vesk
