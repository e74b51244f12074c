#include "platform/CEdit.h"

#include <algorithm>

void CEdit::SetSel(int from, int to) {
    const int length = GetWindowText().GetLength();
    m_SelFrom = std::clamp(from, 0, length);
    m_SelTo = to < 0 ? length : std::clamp(to, m_SelFrom, length);
    Notify(vesk::Aspect::TextSelection);
}

void CEdit::GetSel(int& from, int& to) const {
    const int length = GetWindowText().GetLength();
    from = std::min(m_SelFrom, length);
    to = std::min(m_SelTo, length);
}

void CEdit::Type(const CString& text) {
    if (!IsUsable() || m_ReadOnly) return;
    std::string typed = text.Str();
    if (m_DigitsOnly) std::erase_if(typed, [](char c) { return c < '0' || c > '9'; });
    if (GetWindowText() == typed) return;
    m_SelFrom = m_SelTo = static_cast<int>(typed.size());
    SetWindowText(typed);
    NotifyParent(EN_CHANGE);
}
