#include "timeline/CMcuFindDlg.h"

#include "platform/CDataExchange.h"

namespace {

constexpr unsigned kTemplate = 235;
constexpr int kTask = 1017;
constexpr int kUp = 1019;
constexpr int kName = 1340;

}  // namespace

CMcuFindDlg::CMcuFindDlg(CWnd* parent) : CDialog(kTemplate, parent) {}

void CMcuFindDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, kName, m_Edit);
    DDX_Radio(exchange, kTask, m_Target);
    DDX_Radio(exchange, kUp, m_Direction);
    DDX_Text(exchange, kName, m_Text);
}

bool CMcuFindDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    m_Edit.SetSel(0, -1);
    m_Edit.SetFocus();
    return false;
}
