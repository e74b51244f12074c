#include "platform/CToolTipCtrl.h"

#include "platform/UserInterface.h"

bool CToolTipCtrl::Create(CWnd* owner) {
    m_Owner = owner;
    SetPeer(vesk::CurrentUserInterface().MakePeer(*this));
    return true;
}

void CToolTipCtrl::TrackPosition(CPoint screen) {
    if (screen == m_Position) return;
    m_Position = screen;
    Notify(vesk::Aspect::Position);
}

void CToolTipCtrl::TrackActivate(bool show) {
    ShowWindow(show ? SW_SHOW : SW_HIDE);
}
