#pragma once

#include <cstdint>

#include "platform/CDialog.h"
#include "platform/CEdit.h"

// Asks for a time or a frame number to go to.
class CMcuGotoDlg : public CDialog {
public:
    explicit CMcuGotoDlg(CWnd* parent = nullptr);

    bool OnInitDialog() override;

    CEdit m_Edit;
    std::uint64_t m_Value = 0;
    std::int32_t m_Kind = 0;  // 0 a time in QBit, 1 a frame number

protected:
    void DoDataExchange(CDataExchange*) override;
};
