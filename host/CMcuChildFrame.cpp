#include "host/CMcuChildFrame.h"

#include "host/FrameKinds.h"
#include "host/ReloadableView.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CView.h"

void CMcuChildFrame::OnClose() {
    const vesk::FrameKind& kind = vesk::FrameKindOf(m_ViewKind);
    vesk_dll_shared_data.*kind.m_Members.m_Frame = nullptr;
    vesk_dll_shared_data.SaveWindowPlacement(kind.m_WindowKey, this);
    CMDIChildWnd::OnClose();
}

void CMcuChildFrame::OnUpdateFrameTitle(bool addToTitle) {
    if (CMDIFrameWnd* const main = GetMDIFrame()) main->OnUpdateFrameTitle(addToTitle);
}

// The statistics repaint by themselves. Numbers 7 and 8 are of their sort, though no kind of today
// has them; every other number is the timeline's.
void CMcuChildFrame::Reload() {
    CView* const view = GetActiveView();
    if (!view) return;
    if (auto* const reloadable = dynamic_cast<vesk::ReloadableView*>(view)) reloadable->ReloadLog();
    const bool isStatistic = m_ViewKind >= 1 && m_ViewKind <= 9;
    if (!isStatistic) view->InvalidateRect(nullptr, true);
}
