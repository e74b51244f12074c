#include "platform/CFrameWnd.h"

#include "platform/CDocument.h"
#include "platform/CView.h"

CFrameWnd::CFrameWnd() = default;
CFrameWnd::~CFrameWnd() = default;

CDocument* CFrameWnd::GetActiveDocument() const {
    return m_View ? m_View->GetDocument() : nullptr;
}

void CFrameWnd::OnUpdateFrameTitle(bool addToTitle) {
    const CDocument* document = GetActiveDocument();
    if (addToTitle && document) SetWindowText(document->GetTitle());
}

void CFrameWnd::OnSize(unsigned type, int cx, int cy) {
    CWnd::OnSize(type, cx, cy);
    if (m_View && type != SIZE_MINIMIZED) m_View->MoveWindow(0, 0, cx, cy);
}

void CFrameWnd::OnSetFocus(CWnd* previous) {
    CWnd::OnSetFocus(previous);
    if (m_View) m_View->SetFocus();
}

bool CFrameWnd::OnCmdMsg(unsigned id, int code, CCmdUI* ui) {
    if (m_View && m_View->OnCmdMsg(id, code, ui)) return true;
    return CWnd::OnCmdMsg(id, code, ui);
}

void CFrameWnd::SetView(std::unique_ptr<CView> view) {
    m_View = std::move(view);
    if (!m_View) return;
    m_View->Attach(this, 0);
    m_View->ShowWindow(SW_SHOW);
    CRect client;
    GetClientRect(&client);
    m_View->MoveWindow(0, 0, client.Width(), client.Height());
}
