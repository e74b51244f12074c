#pragma once

#include <memory>
#include <string>

#include "platform/CString.h"
#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/ProgressDisplay.h"

class CColorDialog;
class CDialog;
class CFileDialog;
class CMenu;
class CWnd;

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr unsigned MB_OK = 0x00;
constexpr unsigned MB_ICONSTOP = 0x10;
constexpr unsigned MB_ICONEXCLAMATION = 0x30;
constexpr unsigned MB_ICONINFORMATION = 0x40;

// Shows a text to the user and waits for the answer, by way of the current vesk::UserInterface.
int AfxMessageBox(const char* text, unsigned type = MB_OK);
int AfxMessageBox(const CString& text, unsigned type = MB_OK);

// Text for a developer who traces the program; the default drops it.
void OutputDebugStringA(const char* text);

namespace vesk {

class GlyphSource;
class WindowPeer;

// A text that is shown to the user and acknowledged.
struct Message {
    CString m_Text;
    CString m_Caption;  // empty: the application's name
    unsigned m_Type = MB_OK;
};

// What needs a person or a screen: one interface, answered by a window, a terminal or a test.
// The defaults are those of a process without either: every message is acknowledged, every
// question is cancelled.
class UserInterface {
public:
    virtual ~UserInterface() = default;

    virtual int ShowMessage(const Message&) { return IDOK; }
    virtual void DebugText(const std::string&) {}

    // Something worth knowing that needs no answer, such as a search without a find: the status
    // line of a desktop.
    virtual void ShowStatus(const CString&) {}

    // Follows long work, named by a text such as "Reading the log", until the display goes. Null:
    // nobody follows.
    virtual std::unique_ptr<ProgressDisplay> BeginProgress(const CString& what);

    // Lets the user work in a dialog whose controls stand, until the dialog has ended.
    virtual void RunDialog(CDialog&);
    virtual int RunFileDialog(CFileDialog&) { return IDCANCEL; }
    virtual int RunColorDialog(CColorDialog&) { return IDCANCEL; }
    // Shows a menu at a point of the screen; the command chosen, or 0. Pop-ups bring their items
    // up to date by owner before they open.
    virtual unsigned RunMenu(CMenu&, CPoint, CWnd& /*owner*/) { return 0; }

    // The real window of a window that was just made, or null: frames, views' tool tips.
    virtual std::unique_ptr<WindowPeer> MakePeer(CWnd&);

    virtual int SystemMetric(int index);
    virtual COLORREF SystemColor(int index);
    // The font of everything that is drawn; lives as long as the user interface.
    virtual const GlyphSource& Glyphs();
};

// The one in place: that of the innermost ScopedUserInterface, or the defaults.
UserInterface& CurrentUserInterface();

// Puts another user interface in place until it goes out of scope; borrowed, not owned.
class ScopedUserInterface {
public:
    explicit ScopedUserInterface(UserInterface&);
    ~ScopedUserInterface();
    ScopedUserInterface(const ScopedUserInterface&) = delete;
    ScopedUserInterface& operator=(const ScopedUserInterface&) = delete;

private:
    UserInterface* m_Previous;
};

}  // namespace vesk
