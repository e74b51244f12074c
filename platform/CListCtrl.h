#pragma once

#include <cstdint>
#include <vector>

#include "platform/CWnd.h"

// Rows of texts in columns with a header; several rows can be selected. Indexes that do not exist
// change nothing.
class CListCtrl : public CWnd {
public:
    // Inserts before the column or row that has the index, or at the end; where it went.
    int InsertColumn(int index, const CString& heading, int width = -1);  // pixels; -1: as needed
    int InsertItem(int index, const CString& text);
    bool DeleteColumn(int column);
    bool SetItemText(int row, int column, const CString& text);
    CString GetItemText(int row, int column) const;
    int GetItemCount() const { return static_cast<int>(m_Rows.size()); }
    bool DeleteItem(int row);
    bool DeleteAllItems();
    bool SetItemData(int row, std::intptr_t data);
    std::intptr_t GetItemData(int row) const;  // 0 for a row that does not exist
    bool IsSelected(int row) const;
    void SetSelected(int row, bool on);

    const std::vector<CString>& Columns() const { return m_Columns; }
    int GetColumnWidth(int column) const;  // as given; -1: as needed

    // The user's selection of exactly these rows. Nothing if disabled or hidden.
    void Select(const std::vector<int>& rows);

    // The delete key goes to the parent as LVN_DELETEKEY.
    void OnKeyDown(unsigned key, unsigned repeat, unsigned flags) override;

private:
    struct Row {
        std::vector<CString> m_Texts;  // one per column; those left out are empty
        std::intptr_t m_Data = 0;
        bool m_Selected = false;
    };
    bool IsRow(int row) const { return row >= 0 && row < GetItemCount(); }
    bool IsColumn(int column) const;
    const Row& At(int row) const { return m_Rows[static_cast<std::size_t>(row)]; }
    Row& At(int row) { return m_Rows[static_cast<std::size_t>(row)]; }

    std::vector<CString> m_Columns;
    std::vector<int> m_Widths;
    std::vector<Row> m_Rows;
};
