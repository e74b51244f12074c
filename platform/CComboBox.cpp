#include "platform/CComboBox.h"

#include <algorithm>

#include "platform/TextOrder.h"

int CComboBox::AddString(const CString& text) {
    const auto after = [](const CString& a, const Item& b) {
        return vesk::CompareFolded(a.Str(), b.m_Text.Str()) < 0;
    };
    auto at = m_Items.end();
    if (m_Sorted) at = std::upper_bound(m_Items.begin(), m_Items.end(), text, after);
    const int index = static_cast<int>(at - m_Items.begin());
    m_Items.insert(at, {text});
    if (m_Selected >= index) ++m_Selected;
    Notify(vesk::Aspect::Content);
    return index;
}

void CComboBox::ResetContent() {
    m_Selected = CB_ERR;
    if (m_Items.empty()) return;
    m_Items.clear();
    Notify(vesk::Aspect::Content);
}

void CComboBox::GetLBText(int index, CString& text) const {
    text = IsIndex(index) ? At(index).m_Text : CString();
}

int CComboBox::SetCurSel(int index) {
    const int wanted = IsIndex(index) ? index : CB_ERR;
    if (wanted != m_Selected) {
        m_Selected = wanted;
        Notify(vesk::Aspect::Selection);
    }
    return wanted;
}

int CComboBox::SetItemData(int index, std::intptr_t data) {
    if (!IsIndex(index)) return CB_ERR;
    m_Items[static_cast<std::size_t>(index)].m_Data = data;
    return 0;
}

std::intptr_t CComboBox::GetItemData(int index) const {
    return IsIndex(index) ? At(index).m_Data : CB_ERR;
}

int CComboBox::FindStringExact(const CString& text) const {
    const auto found = std::find_if(m_Items.begin(), m_Items.end(), [&](const Item& item) {
        return vesk::CompareFolded(item.m_Text.Str(), text.Str()) == 0;
    });
    return found == m_Items.end() ? CB_ERR : static_cast<int>(found - m_Items.begin());
}

void CComboBox::Choose(int index) {
    if (!IsUsable() || !IsIndex(index)) return;
    SetCurSel(index);
    NotifyParent(CBN_SELCHANGE);
}
