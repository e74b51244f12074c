#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/CCmdTarget.h"
#include "platform/CString.h"
#include "platform/Geometry.h"
#include "platform/WindowPeer.h"

class CMenu;
class CScrollBar;

constexpr unsigned WS_CHILD = 0x40000000;
constexpr unsigned WS_VISIBLE = 0x10000000;

constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOWMINIMIZED = 2;
constexpr int SW_SHOWMAXIMIZED = 3;
constexpr int SW_SHOW = 5;

constexpr unsigned SIZE_RESTORED = 0;
constexpr unsigned SIZE_MINIMIZED = 1;
constexpr unsigned SIZE_MAXIMIZED = 2;

// Flags of mouse messages and keys: what is held down.
constexpr unsigned MK_LBUTTON = 0x01;
constexpr unsigned MK_RBUTTON = 0x02;
constexpr unsigned MK_SHIFT = 0x04;
constexpr unsigned MK_CONTROL = 0x08;
constexpr unsigned MK_MBUTTON = 0x10;
constexpr unsigned MK_ALT = 0x20;

namespace vesk {

// How the pointer looks over a part of a window.
enum class PointerShape : std::uint8_t {
    Arrow,
    Hand,            // takes hold of something
    SizeHorizontal,  // moves an edge left and right
};

}  // namespace vesk

// Where a window stands when it is normal, and how it is shown now.
struct WINDOWPLACEMENT {
    unsigned length = sizeof(WINDOWPLACEMENT);
    unsigned flags = 0;
    unsigned showCmd = SW_SHOWNORMAL;  // normal, minimised or maximised
    CPoint ptMinPosition;
    CPoint ptMaxPosition;
    CRect rcNormalPosition;  // within the parent's client area
    friend bool operator==(const WINDOWPLACEMENT&, const WINDOWPLACEMENT&) = default;
};

// A window: a rectangle with a text and a state, with children, which gets the user's input
// through its handlers. The whole state is kept here; a peer shows it, if there is one.
// Coordinates are pixels of the client area unless said otherwise. Children are borrowed, and
// leave their parent when they are destroyed.
class CWnd : public CCmdTarget {
public:
    CWnd() = default;
    ~CWnd() override;

    // --- State ---------------------------------------------------------------------------------

    void SetWindowText(const CString&);
    CString GetWindowText() const { return m_WindowText; }
    bool EnableWindow(bool enable = true);  // returns whether it was disabled before
    bool IsWindowEnabled() const { return m_Enabled; }
    bool ShowWindow(int command);  // SW_...; returns whether it was visible before
    bool IsWindowVisible() const { return m_Visible; }
    int GetDlgCtrlID() const { return m_ControlId; }
    CWnd* GetParent() const { return m_Parent; }
    const std::vector<CWnd*>& Children() const { return m_Children; }

    // The keyboard focus; one window of the process has it, or none.
    void SetFocus();
    void DropFocus();  // if this window has it
    static CWnd* GetFocus();

    // --- Place ---------------------------------------------------------------------------------

    // Moves and sizes the window within its parent; a changed size is told to OnSize.
    void MoveWindow(int x, int y, int width, int height);
    void GetWindowRect(CRect*) const;  // within the parent
    void GetClientRect(CRect*) const;  // left and top are 0
    bool GetWindowPlacement(WINDOWPLACEMENT*) const;
    bool SetWindowPlacement(const WINDOWPLACEMENT*);
    virtual void BringWindowToTop();
    void ClientToScreen(CPoint*) const;

    // --- Painting ------------------------------------------------------------------------------

    // Marks a part of the client area, null for all of it, to be painted anew.
    void InvalidateRect(const CRect*, bool erase = true);
    void Invalidate(bool erase = true) { InvalidateRect(nullptr, erase); }
    // The rectangle around all invalid parts, which counts as painted from here on.
    CRect TakeInvalidRect();

    // --- Services ------------------------------------------------------------------------------

    int MessageBox(const CString& text, const CString& caption, unsigned type) const;

    // Enters a child into a parent with an id, last of its children; leaves it if that is null.
    void Attach(CWnd* parent, int id);
    void SetPeer(std::unique_ptr<vesk::WindowPeer>);
    vesk::WindowPeer* Peer() const { return m_Peer.get(); }

    // Ends the window and its children. Windows that own themselves are deleted by it. An override
    // calls this one.
    virtual void DestroyWindow();

    // --- For the peer: what the user did to the real window, which it shows already --------------

    // The window has another place within its parent, or is minimised, maximised or normal now.
    void PeerMoved(const CRect&, unsigned showCmd);
    void PeerShown(bool visible) { m_Visible = visible; }
    void PeerFocused();

    // --- Handlers, called by whoever brings the user's input -----------------------------------

    virtual int OnCreate() { return 0; }  // -1: the window cannot be made
    virtual void OnDestroy() {}
    virtual void OnSize(unsigned /*type*/, int /*cx*/, int /*cy*/) {}
    virtual void OnHScroll(unsigned /*code*/, unsigned /*pos*/, CScrollBar*) {}
    virtual void OnVScroll(unsigned /*code*/, unsigned /*pos*/, CScrollBar*) {}
    virtual void OnLButtonDown(unsigned /*flags*/, CPoint) {}
    virtual void OnLButtonUp(unsigned /*flags*/, CPoint) {}
    virtual void OnRButtonDown(unsigned /*flags*/, CPoint) {}
    virtual void OnMButtonDown(unsigned /*flags*/, CPoint) {}
    virtual void OnMButtonUp(unsigned /*flags*/, CPoint) {}
    virtual void OnMouseMove(unsigned /*flags*/, CPoint) {}
    // Turned away from the user counts up, 120 to a notch.
    virtual void OnMouseWheel(unsigned /*flags*/, int /*delta*/, CPoint) {}
    virtual void OnContextMenu(CWnd*, CPoint /*screen*/) {}
    virtual void OnKeyDown(unsigned /*key*/, unsigned /*repeat*/, unsigned /*flags*/) {}
    virtual void OnSetFocus(CWnd* /*previous*/) {}
    virtual void OnClose() { DestroyWindow(); }
    virtual void OnInitMenuPopup(CMenu*, unsigned /*index*/, bool /*system*/) {}

    virtual vesk::PointerShape PointerAt(CPoint) const { return vesk::PointerShape::Arrow; }

    // A child's notification: a control's id and what happened to it.
    virtual void OnNotify(int id, int code);

    // Asked when a command was chosen; false if nobody handles it.
    virtual bool OnCommand(unsigned id) { return OnCmdMsg(id, CN_COMMAND, nullptr); }

protected:
    virtual bool PreCreateWindow() { return true; }
    // Tells the peer, if there is one.
    void Notify(vesk::Aspect) const;
    void NotifyParent(int code);
    // Whether the user can work with it.
    bool IsUsable() const { return m_Enabled && m_Visible; }

private:
    void Place(const CRect&, unsigned showCmd);
    void TakeFocus();
    void LeaveParent();

    CString m_WindowText;
    bool m_Enabled = true;
    bool m_Visible = false;
    unsigned m_ShowCmd = SW_SHOWNORMAL;
    int m_ControlId = 0;
    CRect m_Rect;        // within the parent, as it is now
    CRect m_NormalRect;  // the same while neither minimised nor maximised
    CRect m_Invalid;
    CWnd* m_Parent = nullptr;
    std::vector<CWnd*> m_Children;
    std::unique_ptr<vesk::WindowPeer> m_Peer;
};
