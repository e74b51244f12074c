#pragma once

#include "platform/CDialog.h"

// Asks for a log without a header and for the file whose header describes it. OK is accepted once
// both files exist.
class CMcuNoHeaderDlg : public CDialog {
public:
    explicit CMcuNoHeaderDlg(CWnd* parent = nullptr);

    void OnOK() override;
    void OnButtonRawFile();
    void OnButtonHeaderFile();
    const vesk::MessageMap* GetMessageMap() const override;

    CString m_RawFile;     // path of the file with the records
    CString m_HeaderFile;  // path of the file with the header

protected:
    void DoDataExchange(CDataExchange*) override;

private:
    void ChooseFile(CString& path);
};
