#include "platform/CWnd.h"

#include <algorithm>
#include <utility>

#include "platform/UserInterface.h"

namespace {

CWnd* focused = nullptr;

unsigned SizeType(unsigned showCmd) {
    if (showCmd == SW_SHOWMINIMIZED) return SIZE_MINIMIZED;
    return showCmd == SW_SHOWMAXIMIZED ? SIZE_MAXIMIZED : SIZE_RESTORED;
}

bool IsShowState(unsigned command) {
    return command == SW_SHOWNORMAL || command == SW_SHOWMINIMIZED || command == SW_SHOWMAXIMIZED;
}

}  // namespace

CWnd::~CWnd() {
    m_Peer.reset();
    DropFocus();
    for (CWnd* child : m_Children) child->m_Parent = nullptr;
    LeaveParent();
}

void CWnd::SetWindowText(const CString& text) {
    if (text == m_WindowText) return;
    m_WindowText = text;
    Notify(vesk::Aspect::Text);
}

bool CWnd::EnableWindow(bool enable) {
    const bool wasDisabled = !m_Enabled;
    if (std::exchange(m_Enabled, enable) != enable) Notify(vesk::Aspect::Enabled);
    return wasDisabled;
}

bool CWnd::ShowWindow(int command) {
    const bool wasVisible = m_Visible;
    const unsigned wanted = static_cast<unsigned>(command);
    const bool newState = IsShowState(wanted) && wanted != m_ShowCmd;
    m_Visible = command != SW_HIDE;
    if (newState) Place(wanted == SW_SHOWNORMAL ? m_NormalRect : m_Rect, wanted);
    if (newState || m_Visible != wasVisible) Notify(vesk::Aspect::Visible);
    return wasVisible;
}

void CWnd::SetFocus() {
    TakeFocus();
    Notify(vesk::Aspect::Focus);
}

void CWnd::PeerFocused() {
    TakeFocus();
}

void CWnd::TakeFocus() {
    CWnd* const previous = std::exchange(focused, this);
    if (previous != this) OnSetFocus(previous);
}

void CWnd::DropFocus() {
    if (focused == this) focused = nullptr;
}

CWnd* CWnd::GetFocus() {
    return focused;
}

void CWnd::MoveWindow(int x, int y, int width, int height) {
    const CRect rect{x, y, x + std::max(width, 0), y + std::max(height, 0)};
    if (rect == m_Rect) return;
    Place(rect, m_ShowCmd);
    Notify(vesk::Aspect::Position);
}

void CWnd::PeerMoved(const CRect& rect, unsigned showCmd) {
    Place(rect, showCmd);
}

// A new size, or becoming minimised, maximised or normal, is told to OnSize.
void CWnd::Place(const CRect& rect, unsigned showCmd) {
    const bool resized = rect.Width() != m_Rect.Width() || rect.Height() != m_Rect.Height();
    const bool changed = resized || showCmd != m_ShowCmd;
    m_Rect = rect;
    m_ShowCmd = showCmd;
    if (showCmd == SW_SHOWNORMAL) m_NormalRect = rect;
    if (resized) Invalidate();
    if (changed) OnSize(SizeType(showCmd), rect.Width(), rect.Height());
}

void CWnd::GetWindowRect(CRect* rect) const {
    *rect = m_Rect;
}

void CWnd::GetClientRect(CRect* rect) const {
    *rect = {0, 0, m_Rect.Width(), m_Rect.Height()};
}

bool CWnd::GetWindowPlacement(WINDOWPLACEMENT* placement) const {
    if (!placement) return false;
    *placement = {};
    placement->showCmd = m_ShowCmd;
    placement->rcNormalPosition = m_NormalRect;
    return true;
}

bool CWnd::SetWindowPlacement(const WINDOWPLACEMENT* placement) {
    if (!placement) return false;
    const bool isState = IsShowState(placement->showCmd);
    const unsigned showCmd = isState ? placement->showCmd : unsigned{SW_SHOWNORMAL};
    const bool moved = placement->rcNormalPosition != m_NormalRect;
    const bool visible = placement->showCmd != SW_HIDE;
    const bool shown = visible != m_Visible || showCmd != m_ShowCmd;
    m_NormalRect = placement->rcNormalPosition;
    m_Visible = visible;
    Place(showCmd == SW_SHOWNORMAL ? m_NormalRect : m_Rect, showCmd);
    if (moved) Notify(vesk::Aspect::Position);
    if (shown) Notify(vesk::Aspect::Visible);
    return true;
}

void CWnd::BringWindowToTop() {
    if (m_Parent) {
        std::vector<CWnd*>& siblings = m_Parent->m_Children;
        const auto self = std::find(siblings.begin(), siblings.end(), this);
        std::rotate(self, self + 1, siblings.end());
    }
    Notify(vesk::Aspect::Top);
}

void CWnd::ClientToScreen(CPoint* point) const {
    const CWnd* window = this;
    while (window && !window->m_Peer) {
        point->x += window->m_Rect.left;
        point->y += window->m_Rect.top;
        window = window->m_Parent;
    }
    if (!window) return;
    const CPoint origin = window->m_Peer->ScreenOrigin();
    point->x += origin.x;
    point->y += origin.y;
}

void CWnd::InvalidateRect(const CRect* rect, bool /*erase*/) {
    CRect part;
    GetClientRect(&part);
    if (rect) part.IntersectRect(part, *rect);
    if (part.IsRectEmpty()) return;
    m_Invalid.UnionRect(m_Invalid, part);
    if (m_Peer) m_Peer->Invalidated(part);
}

CRect CWnd::TakeInvalidRect() {
    CRect client;
    GetClientRect(&client);
    CRect invalid = std::exchange(m_Invalid, CRect{});
    invalid.IntersectRect(invalid, client);  // the window may have become smaller since
    return invalid;
}

int CWnd::MessageBox(const CString& text, const CString& caption, unsigned type) const {
    return vesk::CurrentUserInterface().ShowMessage({text, caption, type});
}

void CWnd::Attach(CWnd* parent, int id) {
    LeaveParent();
    m_Parent = parent;
    m_ControlId = id;
    if (parent) parent->m_Children.push_back(this);
}

void CWnd::LeaveParent() {
    if (m_Parent) std::erase(m_Parent->m_Children, this);
    m_Parent = nullptr;
}

void CWnd::SetPeer(std::unique_ptr<vesk::WindowPeer> peer) {
    m_Peer = std::move(peer);
}

void CWnd::DestroyWindow() {
    OnDestroy();
    while (!m_Children.empty()) m_Children.back()->DestroyWindow();
    m_Peer.reset();
    m_Visible = false;
    DropFocus();
    LeaveParent();
}

void CWnd::OnNotify(int id, int code) {
    OnCmdMsg(static_cast<unsigned>(id), code, nullptr);
}

void CWnd::Notify(vesk::Aspect aspect) const {
    if (m_Peer) m_Peer->Changed(aspect);
}

void CWnd::NotifyParent(int code) {
    if (m_Parent) m_Parent->OnNotify(m_ControlId, code);
}
