#include "timeline/CChkListBox.h"

#include <algorithm>

#include "platform/CBrush.h"
#include "platform/CColorDialog.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/Keys.h"
#include "platform/SystemMetrics.h"
#include "platform/UserInterface.h"
#include "timeline/SavedDrawing.h"
#include "timeline/TextFit.h"

namespace {

constexpr COLORREF kNoColor = 0xFFFFFF;
constexpr int kCheckLeft = 4;
constexpr int kMargin = 3;  // beside text and square
constexpr int kInset = 2;   // above and below box and square

}  // namespace

void CChkListBox::AddEntry(const CString& text, const vesk::FilterRecord& record) {
    vesk::FilterRecord& kept = m_Records.emplace_back(record);
    SetItemData(AddString(text), reinterpret_cast<std::intptr_t>(&kept));
}

void CChkListBox::Clear() {
    ResetContent();
    m_Records.clear();
}

vesk::FilterRecord* CChkListBox::RecordAt(int index) {
    if (index < 0 || index >= GetCount()) return nullptr;
    return reinterpret_cast<vesk::FilterRecord*>(GetItemData(index));
}

void CChkListBox::Redraw(int index) {
    CRect entry;
    if (GetItemRect(index, &entry)) InvalidateRect(&entry);
}

// --- What the user does --------------------------------------------------------------------------

void CChkListBox::Toggle(int index) {
    vesk::FilterRecord* const record = RecordAt(index);
    if (!record || !m_ShowCheck || !IsUsable()) return;
    record->m_Checked = record->m_Checked == 0 ? 1 : 0;
    Redraw(index);
}

void CChkListBox::OnLButtonDown(unsigned flags, CPoint point) {
    if (point.y < 0 || !IsUsable()) return;
    const int index = point.y / GetItemHeight() + GetTopIndex();
    CRect entry;
    if (!GetItemRect(index, &entry)) return;
    if (point.x >= kMargin && point.x <= GetItemHeight() + 1) Toggle(index);
    CListBox::OnLButtonDown(flags, point);
    const CRect square = SquareIn(entry);
    if (m_ShowColor && point.x >= square.left && point.x <= square.right) ChooseColor(index);
}

void CChkListBox::ChooseColor(int index) {
    vesk::FilterRecord* const record = RecordAt(index);
    CColorDialog dialog(record->m_Color, this);
    if (dialog.DoModal() != IDOK) return;
    record->m_Color = dialog.GetColor();
    Redraw(index);
}

void CChkListBox::OnKeyDown(unsigned key, unsigned repeat, unsigned flags) {
    if (key == VK_SPACE) Toggle(GetCurSel());
    CListBox::OnKeyDown(key, repeat, flags);
}

// --- Drawing -------------------------------------------------------------------------------------

CRect CChkListBox::SquareIn(const CRect& entry) const {
    const int side = entry.Height() - 2 * kInset;
    const int right = entry.right - kMargin;
    return {right - side, entry.top + kInset, right, entry.bottom - kInset};
}

void CChkListBox::DrawItem(DRAWITEMSTRUCT* item) {
    const vesk::FilterRecord* const record = RecordAt(item->itemID);
    if (!record) return;
    CDC& dc = *item->hDC;
    const vesk::SavedDrawing saved(&dc);
    const CRect& entry = item->rcItem;
    const bool disabled = (item->itemState & ODS_DISABLED) != 0;
    const bool selected = (item->itemState & ODS_SELECTED) != 0;
    dc.FillSolidRect(entry, GetSysColor(selected && !disabled ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    dc.SetTextColor(GetSysColor(disabled   ? COLOR_GRAYTEXT
                                : selected ? COLOR_HIGHLIGHTTEXT
                                           : COLOR_WINDOWTEXT));
    int left = entry.left + kMargin;
    if (m_ShowCheck) {
        left += entry.Height();
        dc.DrawFrameControl({entry.left + kCheckLeft, entry.top + kInset,
                             entry.left + entry.Height(), entry.bottom - kInset},
                            DFC_BUTTON,
                            DFCS_BUTTONCHECK | DFCS_FLAT |
                                (record->m_Checked != 0 ? DFCS_CHECKED : 0) |
                                (disabled ? DFCS_INACTIVE : 0));
    }
    const bool hasColor = record->m_Color != kNoColor;
    const CRect square = SquareIn(entry);
    DrawText(*item, left, (hasColor ? square.left : entry.right) - kMargin);
    if (!hasColor) return;
    CPen pen(PS_SOLID, 1, dc.GetTextColor());
    CBrush brush(record->m_Color);
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    dc.Rectangle(square.left, square.top, square.right, square.bottom);
}

// A long name would run into the square, and glyphs of a scaled display may be wider than measured.
void CChkListBox::DrawText(const DRAWITEMSTRUCT& item, int left, int right) {
    CDC& dc = *item.hDC;
    CString text;
    GetText(item.itemID, text);
    if (text.IsEmpty()) text.Format("Item %d is null !", item.itemID);
    const int above = (item.rcItem.Height() - dc.GetTextExtent(text.Str()).cy) / 2;
    CRect clip, part;
    dc.GetClipBox(&clip);
    part.IntersectRect(clip, {left, item.rcItem.top, right, item.rcItem.bottom});
    dc.SetClipBox(part);
    const int mode = dc.SetBkMode(TRANSPARENT);
    dc.TextOut(left, item.rcItem.top + above, vesk::FitText(dc, text.Str(), right - left));
    dc.SetBkMode(mode);
    dc.SetClipBox(clip);
}
