#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <string>
#include <vector>

#include "platform/CDC.h"
#include "platform/CDocument.h"
#include "platform/CMDIChildWnd.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CMultiDocTemplate.h"
#include "platform/CScrollBar.h"
#include "platform/CView.h"
#include "tests/desktop/DesktopTest.h"

namespace vesk {

// Writes down what it is told.
class ListeningView : public CView {
public:
    void OnDraw(CDC* dc) override {
        CRect clip;
        dc->GetClipBox(&clip);
        m_Painted.push_back(clip);
        if (m_Draw) m_Draw(*dc);
    }
    void OnSize(unsigned, int cx, int cy) override { m_Size = {cx, cy}; }
    void OnLButtonDown(unsigned flags, CPoint p) override { Hear("down", flags, p); }
    void OnLButtonUp(unsigned flags, CPoint p) override { Hear("up", flags, p); }
    void OnRButtonDown(unsigned flags, CPoint p) override { Hear("right", flags, p); }
    void OnMButtonDown(unsigned flags, CPoint p) override { Hear("middle", flags, p); }
    void OnMButtonUp(unsigned flags, CPoint p) override { Hear("middle up", flags, p); }
    void OnMouseMove(unsigned flags, CPoint p) override { Hear("move", flags, p); }
    void OnMouseWheel(unsigned flags, int delta, CPoint p) override {
        Hear(("wheel " + std::to_string(delta)).c_str(), flags, p);
    }
    void OnKeyDown(unsigned key, unsigned repeat, unsigned flags) override {
        Hear("key", key, {static_cast<int>(repeat), static_cast<int>(flags)});
    }
    void OnContextMenu(CWnd*, CPoint screen) override {
        CPoint origin;
        ClientToScreen(&origin);
        Hear("menu", 0, {screen.x - origin.x, screen.y - origin.y});
        if (m_OnContextMenu) m_OnContextMenu(screen);
    }
    void OnHScroll(unsigned code, unsigned position, CScrollBar* bar) override {
        Hear("scroll", code, {static_cast<int>(position), 0});
        if (m_OnScroll) m_OnScroll(code, static_cast<int>(position), *bar);
    }
    void OnVScroll(unsigned code, unsigned position, CScrollBar* bar) override {
        OnHScroll(code, position, bar);
    }
    bool OnCmdMsg(unsigned id, int code, CCmdUI* ui) override {
        return (m_OnCommand && m_OnCommand(id, ui)) || CView::OnCmdMsg(id, code, ui);
    }

    std::vector<std::string> TakeHeard() { return std::exchange(m_Heard, {}); }

    std::function<void(CDC&)> m_Draw;
    std::function<void(CPoint)> m_OnContextMenu;
    std::function<void(unsigned, int, CScrollBar&)> m_OnScroll;
    std::function<bool(unsigned, CCmdUI*)> m_OnCommand;
    std::vector<CRect> m_Painted;
    CSize m_Size;

private:
    void Hear(const char* what, unsigned number, CPoint p) {
        m_Heard.push_back(std::string(what) + ' ' + std::to_string(number) + " at " +
                          std::to_string(p.x) + ',' + std::to_string(p.y));
    }
    std::vector<std::string> m_Heard;
};

// A main window with an area for frames of listening views.
class FramesTest : public DesktopTest {
protected:
    explicit FramesTest(const ResourceTables& tables = {}) : DesktopTest(tables) {
        m_Area = new QMdiArea(&m_Window);
        m_Window.setCentralWidget(m_Area);
        m_Window.resize(700, 600);
        m_User.SetMainWindow(m_Window, *m_Area);
        m_Main.SetWindowText("Main");
        m_Main.SetPeer(m_User.MakePeer(m_Main));
        m_Window.show();
        m_Window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_Window));
    }

    CMDIChildWnd& Open(const char* title = "frame") {
        CFrameWnd* frame = m_Template.CreateNewFrame(new CDocument, nullptr);
        frame->GetActiveDocument()->m_AutoDelete = true;
        m_Template.InitialUpdateFrame(frame, frame->GetActiveDocument());
        frame->SetWindowText(title);
        Settle();
        return dynamic_cast<CMDIChildWnd&>(*frame);
    }
    static ListeningView& ViewOf(const CMDIChildWnd& frame) {
        return dynamic_cast<ListeningView&>(*frame.GetActiveView());
    }
    // The window of the frame with this title.
    QMdiSubWindow& WindowOf(const CMDIChildWnd& frame) const {
        for (QMdiSubWindow* window : m_Area->subWindowList()) {
            if (window->windowTitle().toStdString() == frame.GetWindowText().Str()) return *window;
        }
        throw std::logic_error("the frame has no window");
    }
    QWidget& WidgetOf(const CMDIChildWnd& frame) const { return *WindowOf(frame).widget(); }

    QMainWindow m_Window;
    QMdiArea* m_Area;
    CMDIFrameWnd m_Main;
    CMultiDocTemplate m_Template{0, RuntimeClass<CDocument>("CDocument"),
                                 RuntimeClass<CMDIChildWnd>("CMDIChildWnd"),
                                 RuntimeClass<ListeningView>("ListeningView")};
};

}  // namespace vesk
