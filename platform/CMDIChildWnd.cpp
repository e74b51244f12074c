#include "platform/CMDIChildWnd.h"

#include "platform/CMDIFrameWnd.h"

void CMDIChildWnd::MDIActivate() {
    if (m_MDIFrame) m_MDIFrame->MDIActivate(this);
}

void CMDIChildWnd::BringWindowToTop() {
    if (m_MDIFrame) {
        m_MDIFrame->MDIActivate(this);
    } else {
        CFrameWnd::BringWindowToTop();
    }
}

void CMDIChildWnd::DestroyWindow() {
    std::unique_ptr<CMDIChildWnd> self;
    if (m_MDIFrame) self = m_MDIFrame->Release(*this);
    CFrameWnd::DestroyWindow();
}
