#pragma once

#include <cstdint>

#include "platform/CDialog.h"
#include "platform/CEdit.h"

// Asks for a name to search for, and where.
class CMcuFindDlg : public CDialog {
public:
    explicit CMcuFindDlg(CWnd* parent = nullptr);

    bool OnInitDialog() override;

    CEdit m_Edit;
    std::int32_t m_Target = 0;     // 0 tasks and interrupts, 1 functions, 2 source marks
    std::int32_t m_Direction = 1;  // 0 up, to earlier times; 1 down
    CString m_Text;                // the name; empty: whatever comes next

protected:
    void DoDataExchange(CDataExchange*) override;
};
