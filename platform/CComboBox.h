#pragma once

#include <cstdint>
#include <vector>

#include "platform/CWnd.h"

constexpr int CB_ERR = -1;

// A drop-down list of which one entry is chosen.
class CComboBox : public CWnd {
public:
    int AddString(const CString&);  // the new entry's index
    void ResetContent();
    int GetCount() const { return static_cast<int>(m_Items.size()); }
    void GetLBText(int index, CString& text) const;  // empty for an index that does not exist
    int GetCurSel() const { return m_Selected; }     // CB_ERR for none
    int SetCurSel(int index);                        // the index, or CB_ERR for none
    int SetItemData(int index, std::intptr_t data);
    std::intptr_t GetItemData(int index) const;  // CB_ERR for an index that does not exist
    int FindStringExact(const CString&) const;   // without regard to case; CB_ERR for none

    // The user's choice; the parent gets CBN_SELCHANGE. Nothing if disabled or hidden.
    void Choose(int index);

    bool m_Sorted = false;

private:
    struct Item {
        CString m_Text;
        std::intptr_t m_Data = 0;
    };
    bool IsIndex(int index) const { return index >= 0 && index < GetCount(); }
    const Item& At(int index) const { return m_Items[static_cast<std::size_t>(index)]; }

    std::vector<Item> m_Items;
    int m_Selected = CB_ERR;
};
