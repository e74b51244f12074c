#include "platform/CToolTipCtrl.h"

#include "platform/UserInterface.h"

bool CToolTipCtrl::Create(CWnd* owner, unsigned /*style*/) {
    m_Owner = owner;
    SetPeer(vesk::CurrentUserInterface().MakePeer(*this));
    return true;
}

bool CToolTipCtrl::AddTool(const TOOLINFO& info) {
    if (m_Tool || !info.uId) return false;
    m_Tool = info.uId;
    return true;
}

void CToolTipCtrl::UpdateTipText(const CString& text, CWnd* tool) {
    if (tool && tool == m_Tool) SetWindowText(text);
}

void CToolTipCtrl::TrackPosition(CPoint screen) {
    if (screen == m_Position) return;
    m_Position = screen;
    Notify(vesk::Aspect::Position);
}

void CToolTipCtrl::TrackActivate(bool show) {
    ShowWindow(show ? SW_SHOW : SW_HIDE);
}
