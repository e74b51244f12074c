#include "platform/CListBox.h"

#include <algorithm>

#include "platform/TextOrder.h"

int CListBox::AddString(const CString& text) {
    const auto after = [](const CString& a, const Item& b) {
        return vesk::CompareFolded(a.Str(), b.m_Text.Str()) < 0;
    };
    auto at = m_Items.end();
    if (m_Sorted) at = std::upper_bound(m_Items.begin(), m_Items.end(), text, after);
    const int index = static_cast<int>(at - m_Items.begin());
    m_Items.insert(at, {text});
    Notify(vesk::Aspect::Content);
    return index;
}

void CListBox::ResetContent() {
    m_TopIndex = 0;
    if (m_Items.empty()) return;
    m_Items.clear();
    Notify(vesk::Aspect::Content);
}

void CListBox::GetText(int index, CString& text) const {
    text = IsIndex(index) ? At(index).m_Text : CString();
}

int CListBox::FindString(int after, const CString& beginning) const {
    const int count = GetCount();
    const std::string& wanted = beginning.Str();
    for (int step = 0; step < count; ++step) {
        const int index = (std::clamp(after, -1, count - 1) + 1 + step) % count;
        const std::string start = At(index).m_Text.Str().substr(0, wanted.size());
        if (vesk::CompareFolded(start, wanted) == 0) return index;
    }
    return LB_ERR;
}

int CListBox::GetCurSel() const {
    const auto selected = [](const Item& item) { return item.m_Selected; };
    const auto found = std::find_if(m_Items.begin(), m_Items.end(), selected);
    return found == m_Items.end() ? LB_ERR : static_cast<int>(found - m_Items.begin());
}

int CListBox::SetCurSel(int index) {
    if (m_MultiSelect) return LB_ERR;
    return SelectOnly(index);
}

int CListBox::SelectOnly(int index) {
    bool changed = false;
    for (int i = 0; i < GetCount(); ++i) changed |= Mark(i, i == index);
    if (changed) Notify(vesk::Aspect::Selection);
    return IsIndex(index) ? index : LB_ERR;
}

bool CListBox::GetSel(int index) const {
    return IsIndex(index) && At(index).m_Selected;
}

int CListBox::SetSel(int index, bool on) {
    if (!m_MultiSelect || (index != -1 && !IsIndex(index))) return LB_ERR;
    bool changed = false;
    if (index == -1) {
        for (int i = 0; i < GetCount(); ++i) changed |= Mark(i, on);
    } else {
        changed = Mark(index, on);
    }
    if (changed) Notify(vesk::Aspect::Selection);
    return 0;
}

bool CListBox::Mark(int index, bool on) {
    Item& item = m_Items[static_cast<std::size_t>(index)];
    return std::exchange(item.m_Selected, on) != on;
}

int CListBox::SetItemData(int index, std::intptr_t data) {
    if (!IsIndex(index)) return LB_ERR;
    m_Items[static_cast<std::size_t>(index)].m_Data = data;
    return 0;
}

std::intptr_t CListBox::GetItemData(int index) const {
    return IsIndex(index) ? At(index).m_Data : LB_ERR;
}

void CListBox::SetTopIndex(int index) {
    const int top = std::clamp(index, 0, std::max(GetCount() - 1, 0));
    if (top == m_TopIndex) return;
    m_TopIndex = top;
    Notify(vesk::Aspect::Scroll);
}

void CListBox::SetItemHeight(int height) {
    if (height <= 0 || height == m_ItemHeight) return;
    m_ItemHeight = height;
    Notify(vesk::Aspect::Content);
}

bool CListBox::GetItemRect(int index, CRect* rect) const {
    if (!rect || !IsIndex(index)) return false;
    CRect client;
    GetClientRect(&client);
    *rect = {0, 0, client.Width(), m_ItemHeight};
    rect->OffsetRect(0, (index - m_TopIndex) * m_ItemHeight);
    return true;
}

void CListBox::Select(int index, bool add) {
    if (!IsUsable() || !IsIndex(index)) return;
    if (m_MultiSelect && add) {
        SetSel(index, !GetSel(index));
    } else {
        SelectOnly(index);
    }
    NotifyParent(LBN_SELCHANGE);
}

void CListBox::OnLButtonDown(unsigned flags, CPoint point) {
    if (point.y < 0) return;
    Select(m_TopIndex + point.y / m_ItemHeight, (flags & MK_CONTROL) != 0);
}
