#include "log/CMcuNoHeaderDlg.h"

#include <filesystem>

#include "platform/CDataExchange.h"
#include "platform/CFileDialog.h"
#include "platform/UserInterface.h"

namespace {

constexpr unsigned kTemplate = 312;
constexpr int kRawFile = 1000;
constexpr int kRawFileButton = 1002;
constexpr int kHeaderFileButton = 1003;
constexpr int kHeaderFile = 1819;

// Something that can be read as a file: anything there but a folder.
bool FileExists(const CString& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path.Str(), error);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

}  // namespace

CMcuNoHeaderDlg::CMcuNoHeaderDlg(CWnd* parent) : CDialog(kTemplate, parent) {}

const vesk::MessageMap* CMcuNoHeaderDlg::GetMessageMap() const {
    static const vesk::MessageEntry entries[] = {
        vesk::Notification<&CMcuNoHeaderDlg::OnButtonRawFile>(kRawFileButton, BN_CLICKED),
        vesk::Notification<&CMcuNoHeaderDlg::OnButtonHeaderFile>(kHeaderFileButton, BN_CLICKED),
    };
    static const vesk::MessageMap map{CDialog::GetMessageMap(), entries};
    return &map;
}

void CMcuNoHeaderDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, kRawFile, m_RawFile);
    DDX_Text(exchange, kHeaderFile, m_HeaderFile);
}

void CMcuNoHeaderDlg::OnButtonRawFile() {
    ChooseFile(m_RawFile);
}

void CMcuNoHeaderDlg::OnButtonHeaderFile() {
    ChooseFile(m_HeaderFile);
}

void CMcuNoHeaderDlg::ChooseFile(CString& path) {
    CFileDialog dialog(true, "bin", nullptr, OFN_HIDEREADONLY,
                       "Bin file (*.bin)|*.bin|All files (*.*)|*.*||", this);
    if (dialog.DoModal() != IDOK) return;
    // What is typed in the other edit stays: it is taken before both are shown anew.
    if (!UpdateData(true)) return;
    path = dialog.GetPathName();
    UpdateData(false);
}

void CMcuNoHeaderDlg::OnOK() {
    if (!UpdateData(true)) return;
    if (FileExists(m_RawFile) && FileExists(m_HeaderFile))
        CDialog::OnOK();
    else
        MessageBox("File does not exist.", "Error", MB_ICONSTOP);
}
