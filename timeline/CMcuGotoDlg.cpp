#include "timeline/CMcuGotoDlg.h"

#include "platform/CDataExchange.h"

namespace {

constexpr unsigned kTemplate = 201;
constexpr int kValue = 1168;
constexpr int kQbit = 1017;

}  // namespace

CMcuGotoDlg::CMcuGotoDlg(CWnd* parent) : CDialog(kTemplate, parent) {}

void CMcuGotoDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, kValue, m_Edit);
    DDX_Text(exchange, kValue, m_Value);
    DDX_Radio(exchange, kQbit, m_Kind);
}

bool CMcuGotoDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    m_Edit.SetSel(0, -1);
    m_Edit.SetFocus();
    return false;
}
