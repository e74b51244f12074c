#include "platform/CListCtrl.h"

#include <algorithm>
#include <utility>

#include "platform/Keys.h"

namespace {

// The place of an index in a list of so many entries; the end for one that does not exist.
std::size_t PlaceOf(int index, std::size_t count) {
    return index < 0 ? count : std::min(static_cast<std::size_t>(index), count);
}

}  // namespace

bool CListCtrl::IsColumn(int column) const {
    return column >= 0 && static_cast<std::size_t>(column) < m_Columns.size();
}

int CListCtrl::InsertColumn(int index, const CString& heading, int width) {
    const std::size_t place = PlaceOf(index, m_Columns.size());
    const auto offset = static_cast<std::ptrdiff_t>(place);
    m_Columns.insert(m_Columns.begin() + offset, heading);
    m_Widths.insert(m_Widths.begin() + offset, width);
    for (Row& row : m_Rows) {
        if (place < row.m_Texts.size()) row.m_Texts.insert(row.m_Texts.begin() + offset, CString());
    }
    Notify(vesk::Aspect::Content);
    return static_cast<int>(place);
}

bool CListCtrl::DeleteColumn(int column) {
    if (!IsColumn(column)) return false;
    m_Columns.erase(m_Columns.begin() + column);
    m_Widths.erase(m_Widths.begin() + column);
    for (Row& row : m_Rows) {
        if (static_cast<std::size_t>(column) < row.m_Texts.size())
            row.m_Texts.erase(row.m_Texts.begin() + column);
    }
    Notify(vesk::Aspect::Content);
    return true;
}

int CListCtrl::InsertItem(int index, const CString& text) {
    const std::size_t place = PlaceOf(index, m_Rows.size());
    m_Rows.insert(m_Rows.begin() + static_cast<std::ptrdiff_t>(place), Row{{text}});
    Notify(vesk::Aspect::Content);
    return static_cast<int>(place);
}

bool CListCtrl::SetItemText(int row, int column, const CString& text) {
    if (!IsRow(row) || !IsColumn(column)) return false;
    const auto place = static_cast<std::size_t>(column);
    std::vector<CString>& texts = At(row).m_Texts;
    if (texts.size() <= place) texts.resize(place + 1);
    if (texts[place] == text) return true;
    texts[place] = text;
    Notify(vesk::Aspect::Content);
    return true;
}

CString CListCtrl::GetItemText(int row, int column) const {
    if (!IsRow(row) || column < 0) return {};
    const std::vector<CString>& texts = At(row).m_Texts;
    const auto place = static_cast<std::size_t>(column);
    return place < texts.size() ? texts[place] : CString();
}

bool CListCtrl::DeleteItem(int row) {
    if (!IsRow(row)) return false;
    m_Rows.erase(m_Rows.begin() + row);
    Notify(vesk::Aspect::Content);
    return true;
}

bool CListCtrl::DeleteAllItems() {
    if (m_Rows.empty()) return true;
    m_Rows.clear();
    Notify(vesk::Aspect::Content);
    return true;
}

bool CListCtrl::SetItemData(int row, std::intptr_t data) {
    if (!IsRow(row)) return false;
    At(row).m_Data = data;
    return true;
}

std::intptr_t CListCtrl::GetItemData(int row) const {
    return IsRow(row) ? At(row).m_Data : 0;
}

bool CListCtrl::IsSelected(int row) const {
    return IsRow(row) && At(row).m_Selected;
}

void CListCtrl::SetSelected(int row, bool on) {
    if (!IsRow(row) || std::exchange(At(row).m_Selected, on) == on) return;
    Notify(vesk::Aspect::Selection);
}

int CListCtrl::GetColumnWidth(int column) const {
    return IsColumn(column) ? m_Widths[static_cast<std::size_t>(column)] : -1;
}

void CListCtrl::Select(const std::vector<int>& rows) {
    if (!IsUsable()) return;
    for (Row& row : m_Rows) row.m_Selected = false;
    for (const int row : rows) {
        if (IsRow(row)) At(row).m_Selected = true;
    }
    Notify(vesk::Aspect::Selection);
}

void CListCtrl::OnKeyDown(unsigned key, unsigned /*repeat*/, unsigned /*flags*/) {
    if (key == VK_DELETE && IsUsable()) NotifyParent(LVN_DELETEKEY);
}
