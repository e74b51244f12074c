#pragma once

#include <deque>

#include "platform/CListBox.h"
#include "timeline/FilterFile.h"

// A list of entries with a check box and a coloured square each, drawn by itself. A press on the
// box checks or unchecks the entry, as Space does the selected one; a press on the square lets the
// user choose another colour.
class CChkListBox : public CListBox {
public:
    // Puts an entry behind the others. The list keeps the record; it is the entry's item data.
    void AddEntry(const CString& text, const vesk::FilterRecord&);
    void Clear();
    // Null for an index that does not exist.
    vesk::FilterRecord* RecordAt(int index);
    void Toggle(int index);

    void DrawItem(DRAWITEMSTRUCT*) override;
    void OnLButtonDown(unsigned flags, CPoint) override;
    void OnKeyDown(unsigned key, unsigned repeat, unsigned flags) override;

    bool m_ShowColor = false;  // a press on the square opens the colour dialog
    bool m_ShowCheck = true;

private:
    void DrawText(const DRAWITEMSTRUCT&, int left, int right);
    CRect SquareIn(const CRect& entry) const;
    void ChooseColor(int index);
    void Redraw(int index);

    std::deque<vesk::FilterRecord> m_Records;
};
