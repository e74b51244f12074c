#pragma once

#include <span>

#include "platform/CObject.h"

class CCmdTarget;
class CCmdUI;

// Notification codes that a handler can be entered for. Menus, accelerators, tool bars and
// pressed buttons all send 0.
constexpr int CN_COMMAND = 0;
constexpr int BN_CLICKED = 0;
constexpr int LBN_SELCHANGE = 1;
constexpr int LBN_DBLCLK = 2;
constexpr int CBN_SELCHANGE = 1;
constexpr int EN_CHANGE = 0x300;
constexpr int LVN_DELETEKEY = 0x400;

namespace vesk {

// One line of a message map: which command, or which notification of which control, runs which
// handler, and how the command's appearance is brought up to date.
struct MessageEntry {
    unsigned m_Id;
    int m_Code;
    void (*m_Run)(CCmdTarget&);
    void (*m_Update)(CCmdTarget&, CCmdUI&);  // null: the command is enabled
};

// A class's message map, and that of its base class.
struct MessageMap {
    const MessageMap* m_Base = nullptr;
    std::span<const MessageEntry> m_Entries;
};

template <class>
struct HandlerClass;
template <class C>
struct HandlerClass<void (C::*)()> {
    using type = C;
};
template <class C>
struct HandlerClass<void (C::*)(CCmdUI*)> {
    using type = C;
};

template <auto Handler>
void RunHandler(CCmdTarget& target) {
    using C = typename HandlerClass<decltype(Handler)>::type;
    (static_cast<C&>(target).*Handler)();
}
template <auto Handler>
void RunUpdate(CCmdTarget& target, CCmdUI& ui) {
    using C = typename HandlerClass<decltype(Handler)>::type;
    (static_cast<C&>(target).*Handler)(&ui);
}

// Entries of a message map:
//     Command<&CMcuView::OnEditZoomIn, &CMcuView::OnUpdateEditZoomIn>(2020)
//     Notification<&CMcuSplitFileDlg::OnButtonSplit>(1418, BN_CLICKED)
template <auto Handler>
constexpr MessageEntry Command(unsigned id) {
    return {id, CN_COMMAND, &RunHandler<Handler>, nullptr};
}
template <auto Handler, auto Update>
constexpr MessageEntry Command(unsigned id) {
    return {id, CN_COMMAND, &RunHandler<Handler>, &RunUpdate<Update>};
}
template <auto Handler>
constexpr MessageEntry Notification(unsigned id, int code) {
    return {id, code, &RunHandler<Handler>, nullptr};
}

}  // namespace vesk

// What commands and notifications can be sent to.
class CCmdTarget : public CObject {
public:
    // The class's table of handlers; a class without one has none.
    virtual const vesk::MessageMap* GetMessageMap() const { return nullptr; }

    // Runs the handler of a command or notification, or, with ui, updates its appearance instead:
    // by the update handler, or to enabled if there is only a handler. False: no entry here.
    virtual bool OnCmdMsg(unsigned id, int code, CCmdUI* ui);
};
