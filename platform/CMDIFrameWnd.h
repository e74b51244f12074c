#pragma once

#include <memory>
#include <vector>

#include "platform/CFrameWnd.h"
#include "platform/Resources.h"

class CMDIChildWnd;

// The application's main window, around any number of child frames, of which one is active. Owns
// the child frames.
class CMDIFrameWnd : public CFrameWnd {
public:
    CMDIFrameWnd();
    ~CMDIFrameWnd() override;

    CMDIChildWnd* MDIGetActive() const { return m_Active; }  // null without one
    // Tells the former one and the new one, and brings the new one to the top with the focus.
    void MDIActivate(CMDIChildWnd*);
    const std::vector<std::unique_ptr<CMDIChildWnd>>& MDIChildren() const { return m_Frames; }

    // Keys that are commands by the accelerator table of the active child, or, without one, of
    // the main frame. True: the key is one that somebody handles, and its command has run if it
    // is enabled.
    bool PreTranslateKey(unsigned key, unsigned modifiers);
    // The command that such a key is, or 0; runs nothing.
    unsigned CommandOfKey(unsigned key, unsigned modifiers);
    void LoadAccelTable(unsigned id) { m_AcceleratorId = id; }

    // Commands go to the active child, then to this frame.
    bool OnCmdMsg(unsigned id, int code, CCmdUI*) override;
    // Runs a command if its update handlers leave it enabled.
    bool OnCommand(unsigned id) override;
    // The frame's own title, with the active child's before it if told to add that.
    void OnUpdateFrameTitle(bool addToTitle) override;

private:
    friend class CMDIChildWnd;
    friend class CMultiDocTemplate;
    void Add(std::unique_ptr<CMDIChildWnd>);
    std::unique_ptr<CMDIChildWnd> Release(CMDIChildWnd&);
    void ActivateNext(CMDIChildWnd& former);
    void MoveToEnd(const CMDIChildWnd&);
    const vesk::AcceleratorTable* CurrentAccelerators() const;
    CRect NextChildRect();

    std::vector<std::unique_ptr<CMDIChildWnd>> m_Frames;  // in the order of their activation
    CMDIChildWnd* m_Active = nullptr;
    int m_Cascaded = 0;
    CString m_PlainTitle;  // without a child's
    CString m_ShownTitle;
    unsigned m_AcceleratorId = 0;
};

// The main window of the process, the latest if there are several; null without one.
CMDIFrameWnd* AfxGetMainWnd();
