#pragma once

#include <cstdint>
#include <vector>

#include "platform/CWnd.h"

class CDC;

constexpr int LB_ERR = -1;
constexpr unsigned ODS_SELECTED = 0x1;
constexpr unsigned ODS_DISABLED = 0x4;

// What an owner-drawn list box is asked to draw: one entry in its rectangle.
struct DRAWITEMSTRUCT {
    int itemID = 0;
    unsigned itemState = 0;  // ODS_...
    CDC* hDC = nullptr;
    CRect rcItem;
    std::intptr_t itemData = 0;
};

// A list of lines of which one, or several, can be selected.
class CListBox : public CWnd {
public:
    int AddString(const CString&);  // the new entry's index
    void ResetContent();
    int GetCount() const { return static_cast<int>(m_Items.size()); }
    void GetText(int index, CString& text) const;  // empty for an index that does not exist
    // The next entry behind one that begins with a text, without regard to the case of a to z;
    // from the last entry the search goes on at the first. -1 for from the start; LB_ERR for none.
    int FindString(int after, const CString& beginning) const;
    int GetCurSel() const;     // the selected entry, the first of several; LB_ERR for none
    int SetCurSel(int index);  // -1 for none; LB_ERR for that, and for a list for several
    bool GetSel(int index) const;
    int SetSel(int index, bool on = true);  // in a list for several; -1 means all entries
    int SetItemData(int index, std::intptr_t data);
    std::intptr_t GetItemData(int index) const;
    int GetTopIndex() const { return m_TopIndex; }
    void SetTopIndex(int index);
    int GetItemHeight() const { return m_ItemHeight; }  // pixels, the same for all entries
    void SetItemHeight(int height);
    bool GetItemRect(int index, CRect* rect) const;

    // Draws one entry of an owner-drawn list.
    virtual void DrawItem(DRAWITEMSTRUCT*) {}

    // The user's choice of one entry, or, to add, its coming to or leaving a multiple selection;
    // the parent gets LBN_SELCHANGE. Nothing if disabled or hidden.
    void Select(int index, bool add = false);

    // A press selects the entry under it, as an addition with the control key held.
    void OnLButtonDown(unsigned flags, CPoint) override;

    bool m_MultiSelect = false;
    bool m_OwnerDrawn = false;
    bool m_Sorted = false;

private:
    struct Item {
        CString m_Text;
        std::intptr_t m_Data = 0;
        bool m_Selected = false;
    };
    bool IsIndex(int index) const { return index >= 0 && index < GetCount(); }
    const Item& At(int index) const { return m_Items[static_cast<std::size_t>(index)]; }
    bool Mark(int index, bool on);  // whether that changed something
    int SelectOnly(int index);

    std::vector<Item> m_Items;
    int m_TopIndex = 0;
    int m_ItemHeight = 16;
};
