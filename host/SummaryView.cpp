#include "host/SummaryView.h"

#include <algorithm>

#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "platform/CBitmap.h"
#include "platform/CBrush.h"
#include "platform/CClientDC.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/Keys.h"
#include "platform/SystemMetrics.h"

namespace vesk {

namespace {

constexpr int kScrollBarId = 1;

// The page has a ground and inks of its own, so that it reads the same on any theme.
constexpr COLORREF kGround = RGB(255, 255, 255);
constexpr COLORREF kTitleInk = RGB(0, 63, 125);
constexpr COLORREF kRuleInk = RGB(196, 208, 220);
constexpr COLORREF kInk = RGB(24, 24, 24);
constexpr COLORREF kQuietInk = RGB(96, 96, 96);
constexpr COLORREF kSquareEdge = RGB(150, 150, 150);
constexpr int kSquare = 11;

TextMeasure MeasureIn(const CDC& dc) {
    return [&dc](std::string_view text) { return dc.GetTextExtent(text).cx; };
}

void DrawSquare(CDC& dc, int x, int y, COLORREF color) {
    CPen edge(PS_SOLID, 1, kSquareEdge);
    CBrush fill(color);
    CPen* const formerPen = dc.SelectObject(&edge);
    CBrush* const formerBrush = dc.SelectObject(&fill);
    dc.Rectangle(x, y, x + kSquare, y + kSquare);
    dc.SelectObject(formerPen);
    dc.SelectObject(formerBrush);
}

std::string TitleOf(const SummaryGroup& group, bool isLog) {
    return isLog ? group.m_Title
                 : group.m_Title + " (" + GroupedNumber(group.m_Entries.size()) + ")";
}

}  // namespace

int SummaryView::OnCreate() {
    const unsigned style = SBS_VERT | WS_CHILD | WS_VISIBLE;
    return m_ScrollBar.Create(style, {}, this, kScrollBarId) ? 0 : -1;
}

void SummaryView::OnSize(unsigned, int, int) {
    Arrange();
}

void SummaryView::ReloadLog() {
    const McuJobList* const jobs = vesk_dll_shared_data.m_pJobList;
    m_Groups = jobs ? Summarize(*jobs) : std::vector<SummaryGroup>();
    Arrange();
    ScrollTo(0);
}

// --- Place ---------------------------------------------------------------------------------------

// The bar's room is left free even while the bar is hidden, so that showing it moves nothing.
void SummaryView::Arrange() {
    CRect client;
    GetClientRect(&client);
    CClientDC dc(this);
    const int width = client.Width() - GetSystemMetrics(SM_CXVSCROLL);
    m_Layout = LayOutSummary(m_Groups, width, dc.GetTextExtent("X").cy, MeasureIn(dc));
    PlaceScrollBar(client);
    Invalidate();
}

void SummaryView::PlaceScrollBar(const CRect& client) {
    const int width = GetSystemMetrics(SM_CXVSCROLL);
    m_ScrollBar.MoveWindow(std::max(0, client.right - width), 0, width, client.Height());
    SCROLLINFO info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nMax = m_Layout.m_Height - 1;
    info.nPage = static_cast<unsigned>(client.Height());
    m_ScrollBar.SetScrollInfo(&info);
    const bool fits = m_Layout.m_Height <= client.Height();
    if (fits) m_ScrollBar.SetScrollPos(0);
    m_ScrollBar.ShowWindow(fits ? SW_HIDE : SW_SHOW);
}

// --- Scrolling -----------------------------------------------------------------------------------

void SummaryView::OnVScroll(unsigned code, unsigned, CScrollBar*) {
    if (code != SB_THUMBTRACK && code != SB_THUMBPOSITION) return Scroll(code);
    SCROLLINFO info;
    m_ScrollBar.GetScrollInfo(&info, SIF_TRACKPOS);
    ScrollTo(info.nTrackPos);
}

void SummaryView::OnKeyDown(unsigned key, unsigned, unsigned) {
    constexpr struct {
        unsigned m_Key, m_Code;
    } kKeys[] = {{VK_UP, SB_LINEUP},     {VK_DOWN, SB_LINEDOWN}, {VK_PRIOR, SB_PAGEUP},
                 {VK_NEXT, SB_PAGEDOWN}, {VK_HOME, SB_TOP},      {VK_END, SB_BOTTOM}};
    for (const auto& known : kKeys)
        if (known.m_Key == key) Scroll(known.m_Code);
}

// A page keeps one row of the last in sight.
void SummaryView::Scroll(unsigned code) {
    if (m_Layout.m_Blocks.empty()) return;
    CRect client;
    GetClientRect(&client);
    const int line = m_Layout.m_Blocks.front().m_RowHeight;
    const int page = std::max(line, client.Height() - line);
    const int position = m_ScrollBar.GetScrollPos();
    switch (code) {
        case SB_LINEUP:
            return ScrollTo(position - line);
        case SB_LINEDOWN:
            return ScrollTo(position + line);
        case SB_PAGEUP:
            return ScrollTo(position - page);
        case SB_PAGEDOWN:
            return ScrollTo(position + page);
        case SB_TOP:
            return ScrollTo(0);
        case SB_BOTTOM:
            return ScrollTo(m_ScrollBar.GetScrollLimit());
        default:
            return;
    }
}

void SummaryView::ScrollTo(int position) {
    const int former = m_ScrollBar.SetScrollPos(std::max(position, 0));
    if (m_ScrollBar.GetScrollPos() != former) Invalidate();
}

// --- Painting ------------------------------------------------------------------------------------

// The page is put together beside the screen, so that it doesn't flicker.
void SummaryView::OnDraw(CDC* dc) {
    CRect clip;
    dc->GetClipBox(&clip);
    CBitmap picture;
    CDC memory;
    if (!memory.CreateCompatibleDC(dc) ||
        !picture.CreateCompatibleBitmap(dc, clip.Width(), clip.Height()))
        return DrawPage(*dc, clip);
    CBitmap* const former = memory.SelectObject(&picture);
    memory.SetWindowOrg(clip.left, clip.top);
    DrawPage(memory, clip);
    dc->BitBlt(clip.left, clip.top, clip.Width(), clip.Height(), &memory, clip.left, clip.top);
    memory.SelectObject(former);
}

void SummaryView::DrawPage(CDC& dc, const CRect& clip) const {
    dc.SetBkMode(TRANSPARENT);
    dc.FillSolidRect(clip, kGround);
    const int scrolled = m_ScrollBar.GetScrollPos();
    for (std::size_t i = 0; i < m_Groups.size(); ++i)
        DrawGroup(dc, clip, m_Groups[i], m_Layout.m_Blocks[i].MovedUp(scrolled));
}

void SummaryView::DrawGroup(CDC& dc, const CRect& visible, const SummaryGroup& group,
                            const SummaryBlock& block) const {
    if (block.m_TitleTop >= visible.bottom || block.Bottom() <= visible.top) return;
    dc.SetTextColor(kTitleInk);
    const std::string title = TitleOf(group, &group == &m_Groups.front());
    dc.TextOut(block.m_Left, block.m_TitleTop, CutToWidth(title, m_Layout.m_Width, MeasureIn(dc)));
    dc.FillSolidRect(block.m_Left, block.m_RowsTop - 5, m_Layout.m_Width, 1, kRuleInk);
    const int count = static_cast<int>(group.m_Entries.size());
    const int last = block.LastRow(visible.bottom);
    for (int row = block.FirstRow(visible.top); row < last; ++row)
        for (int entry = row; entry < count; entry += block.m_Rows)
            DrawEntry(dc, group, block, entry);
}

// Numbers of names stand flush right; the facts about the log are a text each.
void SummaryView::DrawEntry(CDC& dc, const SummaryGroup& group, const SummaryBlock& block,
                            int entry) const {
    const SummaryEntry& what = group.m_Entries[static_cast<std::size_t>(entry)];
    const CRect cell = block.Cell(entry);
    const bool isFact = &group == &m_Groups.front();
    const TextMeasure measure = MeasureIn(dc);
    const int textTop = cell.top + (cell.Height() - dc.GetTextExtent("X").cy) / 2;
    if (block.m_SquareWidth > 0)
        DrawSquare(dc, cell.left, cell.top + (cell.Height() - kSquare) / 2,
                   ColorOf(group.m_Colors, what));
    dc.SetTextColor(isFact ? kQuietInk : kInk);
    dc.TextOut(cell.left + block.m_SquareWidth, textTop,
               CutToWidth(what.m_Name, block.m_NameWidth, measure));
    const std::string value = CutToWidth(what.m_Value, block.m_ValueWidth, measure);
    dc.SetTextColor(isFact ? kInk : kQuietInk);
    dc.TextOut(isFact ? cell.right - block.m_ValueWidth : cell.right - measure(value), textTop,
               value);
}

COLORREF SummaryView::ColorOf(SummaryColors colors, const SummaryEntry& entry) const {
    const auto* const document = dynamic_cast<const VESKUIDoc*>(GetDocument());
    if (!document) return 0;
    switch (colors) {
        case SummaryColors::kJobs:
            return document->m_JobColor.Lookup(entry.m_ColorKey);
        case SummaryColors::kFunctions:
            return document->m_CustomColor.Lookup(entry.m_ColorKey);
        case SummaryColors::kExtraValues:
            return document->m_ExtraColor.Lookup(entry.m_ColorKey);
        case SummaryColors::kNone:
            break;
    }
    return 0;
}

}  // namespace vesk
