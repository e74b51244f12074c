#include "desktop/FrameWindow.h"

#include <gmock/gmock.h>

#include <QPointer>

#include "tests/desktop/FramesTest.h"

namespace vesk {
namespace {

using FrameWindowTest = FramesTest;

WINDOWPLACEMENT PlacementOf(const CMDIChildWnd& frame) {
    WINDOWPLACEMENT placement;
    frame.GetWindowPlacement(&placement);
    return placement;
}

TEST_F(FrameWindowTest, TitlesAreShown) {
    CMDIChildWnd& frame = Open("modem.bin");
    EXPECT_EQ(WindowOf(frame).windowTitle(), "modem.bin");
    m_Main.SetWindowText("veskview");
    EXPECT_EQ(m_Window.windowTitle(), "veskview");
}

TEST_F(FrameWindowTest, TheMainFrameKnowsTheSizeOfTheArea) {
    CRect client;
    m_Main.GetClientRect(&client);
    EXPECT_EQ(client.Width(), m_Area->viewport()->width());
    m_Window.resize(600, 500);
    Settle();
    m_Main.GetClientRect(&client);
    EXPECT_EQ(client.Height(), m_Area->viewport()->height());
}

TEST_F(FrameWindowTest, APlacementComesBackAsItWasGiven) {
    CMDIChildWnd& frame = Open();
    for (const unsigned showCmd : {SW_SHOWNORMAL, SW_SHOWMAXIMIZED, SW_SHOWMINIMIZED}) {
        SCOPED_TRACE(showCmd);
        WINDOWPLACEMENT given;
        given.showCmd = showCmd;
        given.rcNormalPosition = {23, 31, 23 + 301 + static_cast<int>(showCmd), 31 + 199};
        frame.SetWindowPlacement(&given);
        Settle();
        EXPECT_EQ(PlacementOf(frame), given);
        EXPECT_EQ(WindowOf(frame).isMaximized(), showCmd == SW_SHOWMAXIMIZED);
        EXPECT_EQ(WindowOf(frame).isMinimized(), showCmd == SW_SHOWMINIMIZED);
    }
    frame.ShowWindow(SW_SHOWNORMAL);
    Settle();
    EXPECT_EQ(WindowOf(frame).pos(), QPoint(23, 31));
    EXPECT_EQ(WidgetOf(frame).size(), QSize(303, 199)) << "the size is that of the contents";
}

TEST_F(FrameWindowTest, TheUsersMovesAndStatesAreTold) {
    CMDIChildWnd& frame = Open();
    QMdiSubWindow& window = WindowOf(frame);
    window.setGeometry(12, 34, 320, 240);
    Settle();
    const CRect normal = PlacementOf(frame).rcNormalPosition;
    EXPECT_EQ(normal.TopLeft(), (CPoint{12, 34}));
    EXPECT_EQ(QSize(normal.Width(), normal.Height()), WidgetOf(frame).size());

    window.showMaximized();
    Settle();
    EXPECT_EQ(PlacementOf(frame).showCmd, unsigned{SW_SHOWMAXIMIZED});
    EXPECT_EQ(PlacementOf(frame).rcNormalPosition, normal) << "kept for coming back";
    EXPECT_EQ(ViewOf(frame).m_Size, (CSize{WidgetOf(frame).width(), WidgetOf(frame).height()}));
    EXPECT_GT(ViewOf(frame).m_Size.cx, normal.Width());

    m_Window.resize(650, 550);
    Settle();
    EXPECT_EQ(PlacementOf(frame).rcNormalPosition, normal);
    window.showNormal();
    Settle();
    EXPECT_EQ(PlacementOf(frame).showCmd, unsigned{SW_SHOWNORMAL});
    EXPECT_EQ(PlacementOf(frame).rcNormalPosition, normal);
}

TEST_F(FrameWindowTest, ActivationGoesBothWays) {
    CMDIChildWnd& first = Open("first");
    CMDIChildWnd& second = Open("second");
    EXPECT_EQ(m_Area->activeSubWindow(), &WindowOf(second));
    first.MDIActivate();
    Settle();
    EXPECT_EQ(m_Area->activeSubWindow(), &WindowOf(first));
    QTest::mouseClick(&WindowOf(second), Qt::LeftButton, {}, QPoint(60, 8));
    Settle();
    EXPECT_EQ(m_Main.MDIGetActive(), &second);
    EXPECT_EQ(m_Main.GetWindowText(), "second - Main");
}

TEST_F(FrameWindowTest, ActivatingDoesNotMaximize) {
    CMDIChildWnd& first = Open("first");
    CMDIChildWnd& second = Open("second");
    second.ShowWindow(SW_SHOWMAXIMIZED);
    Settle();
    first.MDIActivate();
    Settle();
    EXPECT_FALSE(WindowOf(first).isMaximized());
    EXPECT_EQ(PlacementOf(first).showCmd, unsigned{SW_SHOWNORMAL});
}

TEST_F(FrameWindowTest, TheUsersClosingDeletesTheFrameAndLeavesTheNextActive) {
    CMDIChildWnd& first = Open("first");
    CMDIChildWnd& second = Open("second");
    const QPointer<QWidget> window = &WindowOf(second);
    window->close();
    EXPECT_EQ(m_Main.MDIChildren().size(), 1U);
    EXPECT_EQ(m_Main.MDIGetActive(), &first);
    EXPECT_EQ(m_Area->subWindowList().size(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Settle();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(m_Area->activeSubWindow(), &WindowOf(first));
}

TEST_F(FrameWindowTest, AFrameThatTheProgramClosesTakesItsWindowAlong) {
    CMDIChildWnd& frame = Open();
    frame.OnClose();
    EXPECT_TRUE(m_Area->subWindowList().isEmpty());
    EXPECT_EQ(m_Main.GetWindowText(), "Main");
}

TEST_F(FrameWindowTest, AFrameCanCloseWithinItsOwnInput) {
    CMDIChildWnd& frame = Open();
    ViewOf(frame).m_OnContextMenu = [&frame](CPoint) { frame.OnClose(); };
    QTest::mouseClick(&WidgetOf(frame), Qt::RightButton, {}, {30, 30});
    Settle();
    EXPECT_TRUE(m_Main.MDIChildren().empty());
    EXPECT_TRUE(m_Area->subWindowList().isEmpty());
}

TEST_F(FrameWindowTest, AFrameThatRefusesToCloseStays) {
    class Stubborn : public CMDIChildWnd {
        void OnClose() override {}
    };
    CMultiDocTemplate stubborn(0, RuntimeClass<CDocument>("CDocument"),
                               RuntimeClass<Stubborn>("Stubborn"),
                               RuntimeClass<ListeningView>("ListeningView"));
    CDocument* document = stubborn.OpenNewDocument();
    ASSERT_NE(document, nullptr);
    Settle();
    EXPECT_FALSE(m_Area->subWindowList().front()->close());
    EXPECT_EQ(m_Main.MDIChildren().size(), 1U);
    EXPECT_TRUE(m_Area->subWindowList().front()->isVisible());
}

TEST_F(FrameWindowTest, AFrameOutlivesTheAreaItStoodIn) {
    CMDIChildWnd& frame = Open();
    delete m_Window.takeCentralWidget();
    frame.SetWindowText("alone");
    frame.MoveWindow(1, 2, 30, 40);
    ViewOf(frame).Invalidate();
    frame.OnClose();
    EXPECT_TRUE(m_Main.MDIChildren().empty());
}

}  // namespace
}  // namespace vesk
