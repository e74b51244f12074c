#pragma once

#include "platform/CFrameWnd.h"

class CMDIFrameWnd;

// A frame within the main window, which owns it.
class CMDIChildWnd : public CFrameWnd {
public:
    CMDIFrameWnd* GetMDIFrame() const { return m_MDIFrame; }
    void MDIActivate();
    void BringWindowToTop() override;  // which also activates it

    // The frame became active, or another did.
    virtual void OnMDIActivate(bool /*activate*/, CWnd* /*activated*/, CWnd* /*deactivated*/) {}
    // Ends the frame, its view, and the document if that was its last view. Deletes the frame;
    // the frame that was active before it becomes so again.
    void DestroyWindow() override;

    unsigned m_ResourceId = 0;  // menu and accelerators while the frame is active

private:
    friend class CMDIFrameWnd;
    CMDIFrameWnd* m_MDIFrame = nullptr;
};
