#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/CToolTipCtrl.h"
#include "platform/CWnd.h"
#include "platform/UserInterface.h"
#include "tests/platform/RecordingPeer.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vesk::Aspect;

// Writes down the sizes it is told.
class SizedWindow : public CWnd {
public:
    void OnSize(unsigned type, int cx, int cy) override { m_Sizes.push_back({type, cx, cy}); }
    void OnSetFocus(CWnd* previous) override { m_Previous.push_back(previous); }
    void OnDestroy() override { m_HadParent = GetParent() != nullptr; }

    struct Size {
        unsigned type;
        int cx, cy;
        friend bool operator==(const Size&, const Size&) = default;
    };
    std::vector<Size> m_Sizes;
    std::vector<CWnd*> m_Previous;
    bool m_HadParent = false;
};

class Windows : public testing::Test {
protected:
    // Gives a window a peer from here on.
    static RecordingPeer& Watch(CWnd& window) {
        auto peer = std::make_unique<RecordingPeer>();
        RecordingPeer& watched = *peer;
        window.SetPeer(std::move(peer));
        return watched;
    }
    static CRect RectOf(const CWnd& window) {
        CRect rect;
        window.GetWindowRect(&rect);
        return rect;
    }
    static WINDOWPLACEMENT PlacementOf(const CWnd& window) {
        WINDOWPLACEMENT placement;
        EXPECT_TRUE(window.GetWindowPlacement(&placement));
        return placement;
    }
    static SizedWindow& Sized(SizedWindow& window) {
        window.MoveWindow(10, 20, 300, 200);
        window.TakeInvalidRect();
        window.m_Sizes.clear();
        return window;
    }

    SizedWindow m_Window;
};

TEST_F(Windows, TellThePeerEachChangeOnce) {
    const RecordingPeer& peer = Watch(m_Window);
    for (int time = 0; time < 2; ++time) {
        m_Window.SetWindowText("text");
        m_Window.EnableWindow(false);
        m_Window.ShowWindow(SW_SHOW);
        m_Window.MoveWindow(1, 2, 3, 4);
    }
    EXPECT_THAT(peer.m_Changes,
                ElementsAre(Aspect::Text, Aspect::Enabled, Aspect::Visible, Aspect::Position));
}

TEST_F(Windows, SayWhatTheyWereBefore) {
    EXPECT_FALSE(m_Window.EnableWindow(false));
    EXPECT_TRUE(m_Window.EnableWindow(true));
    EXPECT_FALSE(m_Window.ShowWindow(SW_SHOW));
    EXPECT_TRUE(m_Window.ShowWindow(SW_HIDE));
}

TEST_F(Windows, AreToldTheirSizeOnlyIfItChanges) {
    m_Window.MoveWindow(0, 0, 100, 50);
    m_Window.MoveWindow(30, 40, 100, 50);
    m_Window.MoveWindow(30, 40, 100, -5);
    EXPECT_THAT(m_Window.m_Sizes, ElementsAre(SizedWindow::Size{SIZE_RESTORED, 100, 50},
                                              SizedWindow::Size{SIZE_RESTORED, 100, 0}));
    EXPECT_EQ(RectOf(m_Window), (CRect{30, 40, 130, 40}));
}

TEST_F(Windows, AreRestoredToTheirNormalPlace) {
    Sized(m_Window);
    m_Window.ShowWindow(SW_SHOWMAXIMIZED);
    m_Window.MoveWindow(0, 0, 800, 600);
    EXPECT_EQ(PlacementOf(m_Window).showCmd, unsigned{SW_SHOWMAXIMIZED});
    EXPECT_EQ(PlacementOf(m_Window).rcNormalPosition, (CRect{10, 20, 310, 220}));
    m_Window.ShowWindow(SW_SHOWNORMAL);
    EXPECT_EQ(RectOf(m_Window), (CRect{10, 20, 310, 220}));
    EXPECT_THAT(m_Window.m_Sizes, ElementsAre(SizedWindow::Size{SIZE_MAXIMIZED, 300, 200},
                                              SizedWindow::Size{SIZE_MAXIMIZED, 800, 600},
                                              SizedWindow::Size{SIZE_RESTORED, 300, 200}));
}

TEST_F(Windows, TakeAPlacementOver) {
    Sized(m_Window);
    const RecordingPeer& peer = Watch(m_Window);
    WINDOWPLACEMENT wanted;
    wanted.rcNormalPosition = {5, 6, 105, 206};
    for (const int showCmd : {SW_SHOWMINIMIZED, SW_SHOWMAXIMIZED, SW_SHOWNORMAL}) {
        wanted.showCmd = static_cast<unsigned>(showCmd);
        EXPECT_TRUE(m_Window.SetWindowPlacement(&wanted));
        EXPECT_EQ(PlacementOf(m_Window), wanted);
    }
    EXPECT_EQ(RectOf(m_Window), wanted.rcNormalPosition);
    EXPECT_TRUE(m_Window.IsWindowVisible());
    EXPECT_THAT(peer.m_Changes,
                ElementsAre(Aspect::Position, Aspect::Visible, Aspect::Visible, Aspect::Visible));
    EXPECT_FALSE(m_Window.SetWindowPlacement(nullptr));
}

TEST_F(Windows, HearFromThePeerWithoutAnEcho) {
    Sized(m_Window);
    const RecordingPeer& peer = Watch(m_Window);
    m_Window.PeerMoved({0, 0, 640, 480}, SW_SHOWMAXIMIZED);
    m_Window.PeerFocused();
    EXPECT_EQ(RectOf(m_Window), (CRect{0, 0, 640, 480}));
    EXPECT_EQ(PlacementOf(m_Window).rcNormalPosition, (CRect{10, 20, 310, 220}));
    EXPECT_THAT(m_Window.m_Sizes, ElementsAre(SizedWindow::Size{SIZE_MAXIMIZED, 640, 480}));
    EXPECT_EQ(CWnd::GetFocus(), &m_Window);
    EXPECT_THAT(peer.m_Changes, IsEmpty());
}

TEST_F(Windows, MergeInvalidPartsWithinTheClientArea) {
    const RecordingPeer& peer = Watch(Sized(m_Window));
    const CRect parts[] = {{10, 10, 20, 20}, {290, 190, 999, 999}, {-50, 0, -10, 10}};
    for (const CRect& part : parts) m_Window.InvalidateRect(&part);
    EXPECT_THAT(peer.m_Invalid, ElementsAre(CRect{10, 10, 20, 20}, CRect{290, 190, 300, 200}));
    EXPECT_EQ(m_Window.TakeInvalidRect(), (CRect{10, 10, 300, 200}));
    EXPECT_TRUE(m_Window.TakeInvalidRect().IsRectEmpty());

    m_Window.Invalidate();
    m_Window.MoveWindow(10, 20, 100, 100);
    EXPECT_EQ(m_Window.TakeInvalidRect(), (CRect{0, 0, 100, 100}));
}

TEST_F(Windows, HaveTheFocusOneAtATime) {
    {
        SizedWindow other;
        other.SetFocus();
        m_Window.SetFocus();
        m_Window.SetFocus();
        EXPECT_THAT(m_Window.m_Previous, ElementsAre(&other));
        other.SetFocus();
        EXPECT_EQ(CWnd::GetFocus(), &other);
    }
    EXPECT_EQ(CWnd::GetFocus(), nullptr) << "the window with the focus is gone";
}

TEST_F(Windows, LeaveTheirParentAndLetTheirChildrenGo) {
    CWnd orphan;
    {
        CWnd parent;
        orphan.Attach(&parent, 1);
        {
            CWnd shortLived;
            shortLived.Attach(&parent, 2);
            EXPECT_THAT(parent.Children(), ElementsAre(&orphan, &shortLived));
            orphan.BringWindowToTop();
            EXPECT_THAT(parent.Children(), ElementsAre(&shortLived, &orphan));
        }
        EXPECT_THAT(parent.Children(), ElementsAre(&orphan));
    }
    EXPECT_EQ(orphan.GetParent(), nullptr);
}

TEST_F(Windows, AreDestroyedWithTheirChildren) {
    CWnd root;
    SizedWindow child;
    m_Window.Attach(&root, 1);
    child.Attach(&m_Window, 2);
    Watch(child);
    m_Window.DestroyWindow();
    EXPECT_TRUE(m_Window.m_HadParent && child.m_HadParent) << "handlers still see the parent";
    EXPECT_EQ(child.GetParent(), nullptr);
    EXPECT_EQ(child.Peer(), nullptr);
    EXPECT_THAT(root.Children(), IsEmpty());
}

TEST_F(Windows, StandOnTheScreenWithinTheirParents) {
    CWnd parent;
    parent.MoveWindow(100, 100, 500, 500);
    Sized(m_Window);
    m_Window.Attach(&parent, 1);
    CPoint point{1, 2};
    m_Window.ClientToScreen(&point);
    EXPECT_EQ(point, (CPoint{111, 122}));

    Watch(parent);
    point = {1, 2};
    m_Window.ClientToScreen(&point);
    EXPECT_EQ(point, (CPoint{1011, 522})) << "from the real window on, it knows";
}

TEST_F(Windows, ToolTipsGetARealWindowAndFollowTheirOwner) {
    struct PeerMaker : vesk::UserInterface {
        std::unique_ptr<vesk::WindowPeer> MakePeer(CWnd& window) override {
            m_For = &window;
            return std::make_unique<RecordingPeer>();
        }
        CWnd* m_For = nullptr;
    } maker;
    const vesk::ScopedUserInterface inPlace(maker);
    CToolTipCtrl tip;
    EXPECT_TRUE(tip.Create(&m_Window));
    EXPECT_EQ(maker.m_For, &tip);
    EXPECT_EQ(tip.Owner(), &m_Window);
    TOOLINFO tool;
    tool.uId = &m_Window;
    EXPECT_TRUE(tip.AddTool(tool));
    EXPECT_FALSE(tip.AddTool(tool)) << "one at a time";
    tip.UpdateTipText("tip", &m_Window);
    tip.UpdateTipText("of another window", &tip);
    EXPECT_EQ(tip.GetWindowText(), "tip");
    for (int time = 0; time < 2; ++time) {
        tip.TrackPosition({3, 4});
        tip.TrackActivate(true);
    }
    EXPECT_EQ(tip.Position(), (CPoint{3, 4}));
    EXPECT_THAT(dynamic_cast<RecordingPeer*>(tip.Peer())->m_Changes,
                ElementsAre(Aspect::Text, Aspect::Position, Aspect::Visible));
}

}  // namespace
