// Markers by key and command, and spans between them.

#include "platform/Keys.h"
#include "tests/timeline/DialogViewTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vesk::DialogUser;

constexpr unsigned kSetMarker = 40142, kExpand = 40143;
constexpr int kStart = 1015, kEnd = 1016, kIncludeIdle = 1169;

class MarkerTest : public DialogViewTest {
protected:
    MarkerTest() {
        LogOf(10000);
        Open();
    }

    McuMarkerMap& Markers() { return m_Document.m_Markers; }
    std::int32_t& Selected() { return View().m_DragMarkerIndex; }
    void SetMarkerAt(std::uint64_t time) {
        View().m_CursorTime = time;
        EXPECT_TRUE(Press(kSetMarker));
    }
    void Expand(const char* start, const char* end) {
        m_User.OnDialog([=](DialogUser& user) {
            user.Choose(kStart, start);
            user.Choose(kEnd, end);
            user.Press("OK");
        });
        EXPECT_TRUE(Press(kExpand));
    }

    VESKUIDoc m_Document;
};

TEST_F(MarkerTest, ACommandSetsTheLowestFreeMarkerAtTheCursor) {
    for (const int time : {10, 20, 30, 20}) SetMarkerAt(static_cast<std::uint64_t>(time));
    EXPECT_THAT(Markers(), ElementsAre(Pair(0, 10), Pair(1, 20), Pair(2, 30)));
    EXPECT_FALSE(Painted().IsRectEmpty());
    Selected() = 1;
    Key(VK_DELETE);
    EXPECT_EQ(Selected(), -1);
    Key(VK_DELETE);
    SetMarkerAt(40);
    EXPECT_THAT(Markers(), ElementsAre(Pair(0, 10), Pair(1, 40), Pair(2, 30)));
}

TEST_F(MarkerTest, AFullTableTakesNoMoreAndSaysSo) {
    for (std::uint64_t i = 0; i < 50; ++i) SetMarkerAt(i);
    EXPECT_THAT(m_User.m_StatusTexts, IsEmpty());
    SetMarkerAt(7);
    EXPECT_THAT(m_User.m_StatusTexts, IsEmpty()) << "there is one already";
    SetMarkerAt(50);
    EXPECT_THAT(m_User.m_StatusTexts, ElementsAre("All markers are in use."));
    EXPECT_EQ(Markers().size(), 50u);
}

TEST_F(MarkerTest, KeysLeadFromMarkerToMarkerAndAround) {
    const struct {
        const char* what;
        std::vector<std::uint64_t> times;
        int selected;
        int next, previous;  // -1: the key does nothing
    } cases[] = {
        {"by time, not by number", {300, 100, 200}, 1, 2, 0},
        {"from the last to the first", {300, 100, 200}, 0, 1, 2},
        {"none selected: earliest and latest", {300, 100, 200}, -1, 1, 0},
        {"alone and selected", {300}, 0, -1, -1},
        {"alone and not selected", {300}, -1, 0, 0},
        {"none at all", {}, -1, -1, -1},
        {"two at one time", {100, 100}, 0, 1, -1},
        {"a third one before them", {100, 100, 50}, 0, 1, 2},
        {"a whole log ahead is not next", {0, 10000}, 0, -1, 1},
        {"at the end of the log, none selected", {10000}, -1, -1, 0},
        {"at its begin, none selected", {0}, -1, 0, -1},
    };
    for (const auto& c : cases) {
        for (const bool back : {false, true}) {
            SCOPED_TRACE(std::string(c.what) + (back ? ", back" : ""));
            View().Reload();
            for (std::size_t i = 0; i < c.times.size(); ++i)
                Markers()[static_cast<int>(i)] = c.times[i];
            Selected() = c.selected;
            View().m_CursorTime = 77;
            m_User.m_StatusTexts.clear();
            Key(VK_F2, back ? MK_SHIFT : 0);
            const int reached = back ? c.previous : c.next;
            EXPECT_EQ(Selected(), reached < 0 ? c.selected : reached);
            EXPECT_EQ(View().m_CursorTime,
                      reached < 0 ? 77 : c.times[static_cast<std::size_t>(reached)]);
            EXPECT_EQ(m_User.m_StatusTexts.size(), reached < 0 ? 1u : 0u);
            ExpectConsistent(View());
        }
    }
}

// --- Expand --------------------------------------------------------------------------------------

TEST_F(MarkerTest, ExpandFillsTheCanvasWithTheSpanInEitherOrder) {
    SetMarkerAt(2000);
    SetMarkerAt(4500);
    const struct {
        const char *start, *end;
        std::uint64_t offset, visible;
    } cases[] = {
        {"Marker 0", "Marker 1", 2000, 2500}, {"Marker 1", "Marker 0", 2000, 2500},
        {"Start", "Marker 0", 0, 2000},       {"Marker 1", "End", 4500, 5500},
        {"Start", "End", 0, 10000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.start << " to " << c.end);
        View().ShowWholeLog();
        Key('W');
        Expand(c.start, c.end);
        EXPECT_EQ(View().m_TimeOffset, c.offset);
        EXPECT_NEAR(static_cast<double>(View().m_VisibleQbits), static_cast<double>(c.visible), 1);
        EXPECT_EQ(View().m_CursorTime, 4500u);
        ExpectConsistent(View());
    }
}

TEST_F(MarkerTest, ExpandIsNotBoundByTheLimitsOfTheZoomCommands) {
    SetMarkerAt(2000);
    SetMarkerAt(2001);
    Expand("Marker 0", "Marker 1");
    EXPECT_EQ(View().m_ZoomRatio, 500.0f);
    EXPECT_FALSE(Look(2020).m_Enabled);
    Key(VK_LEFT, MK_ALT);
    EXPECT_EQ(View().m_ZoomRatio, 1.0f) << "the way back";
}

TEST_F(MarkerTest, ExpandOfNoTimeOrWithoutAnAnswerChangesNothing) {
    SetMarkerAt(2000);
    GoTo(3000);
    Expand("Marker 0", "Marker 0");
    EXPECT_EQ(View().m_TimeOffset, 3000u);
    EXPECT_EQ(View().m_ZoomRatio, 1.0f);
    m_User.OnDialog([](DialogUser& user) {
        user.Choose(kStart, "Start");
        user.Press(kIncludeIdle);
        user.Press("Cancel");
    });
    Press(kExpand);
    EXPECT_EQ(View().m_TimeOffset, 3000u);
    EXPECT_EQ(View().m_DurationFrom, 0);
    EXPECT_EQ(Log().m_StatIncludeIdle, 1);
}

TEST_F(MarkerTest, TheRangeDialogOffersAllMarkersAndRemembersTheChoice) {
    for (const int time : {30, 20, 10}) SetMarkerAt(static_cast<std::uint64_t>(time));
    m_User.OnDialog([](DialogUser& user) {
        EXPECT_EQ(user.Dialog().GetWindowText(), "Specify Time Range");
        EXPECT_THAT(user.Lines(kStart), ElementsAre("Start", "Marker 0", "Marker 1", "Marker 2"));
        EXPECT_THAT(user.Lines(kEnd), ElementsAre("End", "Marker 0", "Marker 1", "Marker 2"));
        EXPECT_EQ(user.Selected(kStart), 0);
        EXPECT_EQ(user.Selected(kEnd), 0);
        EXPECT_TRUE(user.IsChecked(kIncludeIdle));
        user.Press(kIncludeIdle);
        user.Choose(kStart, "Marker 1");
        user.Choose(kEnd, "Marker 2");
        user.Key(VK_RETURN);
    });
    Press(kExpand);
    EXPECT_EQ(View().m_DurationFrom, 1);
    EXPECT_EQ(View().m_DurationTo, 2);
    EXPECT_EQ(Log().m_StatIncludeIdle, 0);
    Markers().RemoveMarker(1);
    m_User.OnDialog([](DialogUser& user) {
        EXPECT_EQ(user.Selected(kStart), 0) << "marker 1 is gone";
        EXPECT_EQ(user.Selected(kEnd), 2) << "marker 2 stands behind marker 0 now";
        EXPECT_FALSE(user.IsChecked(kIncludeIdle));
        user.Press("Cancel");
    });
    Press(kExpand);
}

TEST(MarkersWithoutADocument, AreNone) {
    CMcuView view;
    vesk::CommandState state;
    CCmdUI(kSetMarker, state).DoUpdate(view);
    EXPECT_FALSE(state.m_Enabled);
    view.OnEditSetMarker();
    view.OnKeyDown(VK_F2, 1, 0);
    view.OnKeyDown(VK_DELETE, 1, 0);
    EXPECT_EQ(view.m_DragMarkerIndex, -1);
}

}  // namespace
