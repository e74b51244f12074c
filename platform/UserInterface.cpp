#include "platform/UserInterface.h"

#include "platform/CDialog.h"
#include "platform/GlyphSource.h"
#include "platform/SystemMetrics.h"
#include "platform/WindowPeer.h"

namespace vesk {
namespace {

// What holds as long as nothing else is put in place.
UserInterface nobody;
UserInterface* current = &nobody;

}  // namespace

UserInterface& CurrentUserInterface() {
    return *current;
}

std::unique_ptr<ProgressDisplay> UserInterface::BeginProgress(const CString&) {
    return nullptr;
}

void UserInterface::RunDialog(CDialog& dialog) {
    dialog.Close();
}

std::unique_ptr<WindowPeer> UserInterface::MakePeer(CWnd&) {
    return nullptr;
}

int UserInterface::SystemMetric(int index) {
    switch (index) {
        case SM_CXSCREEN:
            return 1920;
        case SM_CYSCREEN:
            return 1080;
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
        case SM_CYVSCROLL:
        case SM_CXHSCROLL:
            return 17;
        default:
            return 0;
    }
}

COLORREF UserInterface::SystemColor(int index) {
    switch (index) {
        case COLOR_WINDOW:
            return RGB(255, 255, 255);
        case COLOR_HIGHLIGHT:
            return RGB(0, 120, 215);
        case COLOR_HIGHLIGHTTEXT:
            return RGB(255, 255, 255);
        case COLOR_BTNFACE:
            return RGB(240, 240, 240);
        case COLOR_GRAYTEXT:
            return RGB(109, 109, 109);
        default:
            return RGB(0, 0, 0);
    }
}

const GlyphSource& UserInterface::Glyphs() {
    static const FixedGlyphs glyphs;
    return glyphs;
}

ScopedUserInterface::ScopedUserInterface(UserInterface& other) : m_Previous(current) {
    current = &other;
}

ScopedUserInterface::~ScopedUserInterface() {
    current = m_Previous;
}

}  // namespace vesk

int AfxMessageBox(const char* text, unsigned type) {
    return vesk::CurrentUserInterface().ShowMessage({text, {}, type});
}

int AfxMessageBox(const CString& text, unsigned type) {
    return vesk::CurrentUserInterface().ShowMessage({text, {}, type});
}

void OutputDebugStringA(const char* text) {
    vesk::CurrentUserInterface().DebugText(text ? text : "");
}
