#pragma once

#include <memory>

#include "host/CMcuChildFrame.h"
#include "host/ReloadableView.h"
#include "host/VESKUIDoc.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CMultiDocTemplate.h"
#include "platform/CView.h"
#include "tests/host/HostTest.h"

// A view that counts what its frame asks of it.
class CountingView : public CView, public vesk::ReloadableView {
public:
    void ReloadLog() override { ++m_Reloads; }
    void OnDraw(CDC*) override {}
    int m_Reloads = 0;
};

class MainWindow : public CMDIFrameWnd {
public:
    void OnUpdateFrameTitle(bool addToTitle) override { m_TitleUpdates.push_back(addToTitle); }
    std::vector<bool> m_TitleUpdates;
};

// A main window in which frames of the library can be opened.
class HostFramesTest : public HostTest {
protected:
    CMcuChildFrame* Open(std::int32_t viewKind) {
        CFrameWnd* const made = m_Template.CreateNewFrame(nullptr, nullptr);
        m_Template.InitialUpdateFrame(made, nullptr);
        auto* const frame = dynamic_cast<CMcuChildFrame*>(made);
        frame->m_ViewKind = viewKind;
        return frame;
    }

    static CountingView& ViewOf(CMcuChildFrame& frame) {
        return dynamic_cast<CountingView&>(*frame.GetActiveView());
    }

    static void UseTab(WindowMap tab) {
        const std::vector<WindowMap> tabs = {std::move(tab)};
        vesk_dll_shared_data.SetAdvWindowMap(tabs);
    }
    static std::map<std::int32_t, WindowInfo>& Windows() {
        return vesk_dll_shared_data.m_WindowMaps.at(0).m_Windows;
    }

    static CRect PlaceOf(const WindowInfo& window) { return window.m_Placement.rcNormalPosition; }

    MainWindow m_Main;
    CMultiDocTemplate m_Template{0, vesk::RuntimeClass<VESKUIDoc>("VESKUIDoc"),
                                 vesk::RuntimeClass<CMcuChildFrame>("CMcuChildFrame"),
                                 vesk::RuntimeClass<CountingView>("CountingView")};
};
