#include "timeline/FunctionStrip.h"

#include <algorithm>

#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/FunctionMarks.h"
#include "timeline/SavedDrawing.h"
#include "timeline/TextFit.h"

namespace vesk {

namespace {

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr std::string_view kDots = "...";  // of a text that was cut
constexpr int kRoomForOne = 5;
constexpr int kRoomForBoth = 10;

COLORREF Darker(COLORREF color) {
    return RGB(GetRValue(color) >> 1, GetGValue(color) >> 1, GetBValue(color) >> 1);
}

}  // namespace

FunctionStrip::FunctionStrip(CDC* dc, const TimeScale& scale, int right, int height, int y)
    : m_DC(dc), m_Scale(scale), m_Right(right), m_Height(height), m_Y(y) {}

const FunctionStrip::Look& FunctionStrip::LookOf(int function, const std::string& name) {
    const auto at = static_cast<std::size_t>(function);
    if (at >= m_Looks.size()) m_Looks.resize(at + 1);
    Look& look = m_Looks[at];
    if (look.m_IsKnown) return look;
    look = {true, FunctionColor(name), m_DC->GetTextExtent(name).cx,
            name.empty() ? INT32_MIN : INT32_MAX};
    if (name.size() > 1)
        look.m_LeastWidth = m_DC->GetTextExtent(name.substr(0, 1).append(kDots)).cx;
    return look;
}

int FunctionStrip::WidthOf(const FunctionBlock& block, int x) const {
    const std::int64_t length =
        block.m_End > block.m_Start ? m_Scale.Length(block.m_End - block.m_Start) : 0;
    return static_cast<int>(std::min<std::int64_t>(length, m_Right - x));
}

bool FunctionStrip::HasOnlyDots(const FunctionBlock& block) {
    const std::int64_t x = m_Scale.PixelAt(block.m_Start);
    if (x > INT32_MAX) return false;
    return LookOf(block.m_Function, *block.m_Name).HasOnlyDots(WidthOf(block, static_cast<int>(x)));
}

bool FunctionStrip::Draw(const FunctionBlock& block) {
    const std::int64_t wideX = m_Scale.PixelAt(block.m_Start);
    if (wideX < 0 || wideX > INT32_MAX) return false;
    const auto x = static_cast<int>(wideX);
    const int width = WidthOf(block, x);
    const Look& look = LookOf(block.m_Function, *block.m_Name);
    m_DC->FillSolidRect(x + 1, m_Y - m_Height, width, m_Height, look.m_Color);
    m_DC->SetBkColor(kWhite);
    DrawMarks(block, look.m_Color, x, width);
    DrawText(look, *block.m_Name, x, width);
    return true;
}

void FunctionStrip::DrawMarks(const FunctionBlock& block, COLORREF color, int x, int width) {
    const int room = block.m_BeginMark && block.m_EndMark ? kRoomForBoth : kRoomForOne;
    if ((!block.m_BeginMark && !block.m_EndMark) || width < room) return;
    const SavedDrawing saved(m_DC);
    CPen pen(PS_SOLID, 1, Darker(color));
    CBrush brush(Darker(color));
    m_DC->SelectObject(&pen);
    m_DC->SelectObject(&brush);
    const auto draw = [&](int at, auto mark) {
        mark(m_DC, at, m_Y - m_Height * 3 / 4);
        m_DC->MoveTo(at, m_Y);
        m_DC->LineTo(at, m_Y - m_Height);
    };
    if (block.m_BeginMark) draw(x, DrawBeginMark);
    if (block.m_EndMark) draw(x + width, DrawEndMark);
}

void FunctionStrip::DrawText(const Look& look, const std::string& name, int x, int width) {
    const int y = m_Y - m_Height / 2 - 10;
    m_DC->SetTextColor(TextColorOn(look.m_Color));
    if (width > look.m_TextWidth) {
        m_DC->TextOut(x + (width - look.m_TextWidth) / 2, y, name);
    } else if (look.HasOnlyDots(width)) {
        m_DC->TextOut(x, y, kDots);
    } else {
        m_DC->TextOut(x, y, FitText(*m_DC, name, width));
    }
}

void FunctionStrip::DrawDots(int function, const std::string& name, int x) {
    DrawText(LookOf(function, name), name, x, 0);
}

}  // namespace vesk
