#include "platform/CView.h"

#include "platform/CDC.h"
#include "platform/CDocument.h"
#include "platform/SystemMetrics.h"

CView::~CView() {
    if (m_Document) m_Document->RemoveView(this);
}

bool CView::OnCmdMsg(unsigned id, int code, CCmdUI* ui) {
    if (CWnd::OnCmdMsg(id, code, ui)) return true;
    return m_Document && m_Document->OnCmdMsg(id, code, ui);
}

void CView::Paint(CDC& dc) {
    const CRect invalid = TakeInvalidRect();
    if (invalid.IsRectEmpty()) return;
    dc.SetClipBox(invalid);
    if (!OnEraseBkgnd(&dc)) dc.FillSolidRect(invalid, GetSysColor(COLOR_WINDOW));
    OnDraw(&dc);
}
