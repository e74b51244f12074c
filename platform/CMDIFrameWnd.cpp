#include "platform/CMDIFrameWnd.h"

#include <algorithm>

#include "platform/CMDIChildWnd.h"
#include "platform/CMenu.h"
#include "platform/Keys.h"

namespace {

CMDIFrameWnd* mainWindow = nullptr;

constexpr CRect kUnknownArea{0, 0, 1024, 768};  // as long as the main frame has no size
constexpr int kCascadeSteps = 8;

}  // namespace

CMDIFrameWnd* AfxGetMainWnd() {
    return mainWindow;
}

CMDIFrameWnd::CMDIFrameWnd() {
    mainWindow = this;
}

CMDIFrameWnd::~CMDIFrameWnd() {
    // Nobody is activated in the place of a frame that goes with all the others.
    m_Active = nullptr;
    while (!m_Frames.empty()) {
        const std::unique_ptr<CMDIChildWnd> frame = std::move(m_Frames.back());
        m_Frames.pop_back();
        frame->m_MDIFrame = nullptr;
        frame->DestroyWindow();
    }
    if (mainWindow == this) mainWindow = nullptr;
}

void CMDIFrameWnd::MDIActivate(CMDIChildWnd* frame) {
    if (!frame || frame->m_MDIFrame != this) return;
    CMDIChildWnd* const former = m_Active;
    if (former != frame) {
        m_Active = frame;
        MoveToEnd(*frame);
        if (former) former->OnMDIActivate(false, frame, former);
        frame->OnMDIActivate(true, frame, former);
    }
    frame->CWnd::BringWindowToTop();
    frame->SetFocus();
    OnUpdateFrameTitle(true);
}

bool CMDIFrameWnd::PreTranslateKey(unsigned key, unsigned modifiers) {
    const unsigned command = CommandOfKey(key, modifiers);
    if (command == 0) return false;
    OnCommand(command);
    return true;
}

unsigned CMDIFrameWnd::CommandOfKey(unsigned key, unsigned modifiers) {
    const vesk::AcceleratorTable* table = CurrentAccelerators();
    const unsigned command = table ? vesk::FindCommand(*table, key, modifiers) : 0;
    vesk::CommandState state;
    CCmdUI ui(command, state);
    return command != 0 && OnCmdMsg(command, CN_COMMAND, &ui) ? command : 0;
}

bool CMDIFrameWnd::OnCmdMsg(unsigned id, int code, CCmdUI* ui) {
    if (m_Active && m_Active->OnCmdMsg(id, code, ui)) return true;
    return CFrameWnd::OnCmdMsg(id, code, ui);
}

bool CMDIFrameWnd::OnCommand(unsigned id) {
    vesk::CommandState state;
    CCmdUI(id, state).DoUpdate(*this);
    return state.m_Enabled && OnCmdMsg(id, CN_COMMAND, nullptr);
}

void CMDIFrameWnd::OnUpdateFrameTitle(bool addToTitle) {
    // A text that is not the one shown last was set by the application.
    if (GetWindowText() != m_ShownTitle) m_PlainTitle = GetWindowText();
    const CString child = m_Active ? m_Active->GetWindowText() : CString();
    m_ShownTitle = addToTitle && !child.IsEmpty() ? child + " - " + m_PlainTitle : m_PlainTitle;
    SetWindowText(m_ShownTitle);
}

void CMDIFrameWnd::Add(std::unique_ptr<CMDIChildWnd> frame) {
    frame->m_MDIFrame = this;
    frame->Attach(this, 0);
    m_Frames.insert(m_Frames.begin(), std::move(frame));
}

std::unique_ptr<CMDIChildWnd> CMDIFrameWnd::Release(CMDIChildWnd& frame) {
    MoveToEnd(frame);
    std::unique_ptr<CMDIChildWnd> released = std::move(m_Frames.back());
    m_Frames.pop_back();
    if (m_Active == &frame) ActivateNext(frame);
    released->m_MDIFrame = nullptr;
    return released;
}

void CMDIFrameWnd::ActivateNext(CMDIChildWnd& former) {
    const auto next = std::find_if(m_Frames.rbegin(), m_Frames.rend(),
                                   [](const auto& frame) { return frame->IsWindowVisible(); });
    CMDIChildWnd* const frame = next == m_Frames.rend() ? nullptr : next->get();
    m_Active = nullptr;
    former.OnMDIActivate(false, frame, &former);
    if (frame) {
        MDIActivate(frame);
    } else {
        OnUpdateFrameTitle(true);
    }
}

void CMDIFrameWnd::MoveToEnd(const CMDIChildWnd& frame) {
    const auto found = std::find_if(m_Frames.begin(), m_Frames.end(),
                                    [&](const auto& other) { return other.get() == &frame; });
    std::rotate(found, found + 1, m_Frames.end());
}

const vesk::AcceleratorTable* CMDIFrameWnd::CurrentAccelerators() const {
    const auto* table = m_Active ? vesk::FindAccelerators(m_Active->m_ResourceId) : nullptr;
    return table ? table : vesk::FindAccelerators(m_AcceleratorId);
}

CRect CMDIFrameWnd::NextChildRect() {
    CRect area;
    GetClientRect(&area);
    if (area.IsRectEmpty()) area = kUnknownArea;
    const int width = area.Width() * 3 / 4;
    const int height = area.Height() * 3 / 4;
    const int step = m_Cascaded++ % kCascadeSteps;
    CRect rect{0, 0, width, height};
    rect.OffsetRect((area.Width() - width) * step / kCascadeSteps,
                    (area.Height() - height) * step / kCascadeSteps);
    return rect;
}
