// What tips say, where they open, and when they close.
#include "tests/timeline/PointTest.h"
#include "timeline/TipText.h"

namespace {

class TipTest : public PointTest {
protected:
    // One record of each kind; at x 100 to 300 there is a job, at 400 to 500 another.
    CMcuView& OpenRecords() {
        Log().Insert(Record("MAIN", 10, 110, 7, 4000000000));
        Log().Insert(Record("IDLE", 160, 210, 8, 5));
        Log().InsertCustomJob(Record("seg", 10, 110, 3, 9), 110);
        Log().InsertCustomJob(Record("opn", 160, 0, 4, 10), 210);
        Log().InsertCustomJobCS(Record("abc", 10, 60, 5, 11));
        Log().InsertCustomJobCS(Record("xyz", 40, 0, 6, 12));
        Log().InsertSourceMark(Record("mk", 60, 60, 2, 13));
        return Open();
    }
};

constexpr const char* kMain =
    "Job  = MAIN\r\nStart = 10 QBits\r\nEnd  = 110 QBits\r\nDur  = 100 QBits\r\n"
    "TimeStamp = 7\r\nTQCNT = 4000000000";

TEST_F(TipTest, EachKindOfRecordHasItsText) {
    OpenRecords();
    Click(200, kJobs);
    EXPECT_EQ(Tip(), kMain);
    EXPECT_EQ(View().m_ToolTipJob, Log()[0]);
    Click(200, kMarks);
    EXPECT_EQ(Tip(), "Mark  = mk\r\nTime = 60 QBits\r\nTimeStamp = 2\r\nTQCNT = 13");
    View().m_ContextSwitch = false;
    Click(200, kCustom);
    EXPECT_EQ(Tip(),
              "Func  = seg\r\nStart = 10 QBits\r\nEnd  = 110 QBits\r\nDur  = 100 QBits\r\n"
              "TimeStamp = 3\r\nTQCNT = 9");
    Log().m_IsTQCNT = false;
    Click(450, kCustom);
    EXPECT_EQ(Tip(),
              "Func  = opn\r\nStart = 160 QBits\r\nEnd  = 0(210) QBits\r\nDur  = 50 QBits\r\n"
              "TimeStamp = 4\r\nUSCNT = 10");
    EXPECT_EQ(View().m_ToolTipJob, Log().m_CustomJobs[1]);
}

TEST_F(TipTest, AllCallsUnderThePointerStandInOneText) {
    OpenRecords();
    Click(480, kJobs);
    Click(180, kCustom);
    EXPECT_EQ(Tip(),
              "Func  = abc\r\nStart = 10 QBits\r\nEnd  = 60 QBits\r\nDur  = 50 QBits\r\n"
              "TimeStamp = 5\r\nTQCNT = 11\r\n\r\n"
              "Func  = xyz\r\nStart = 40 QBits\r\nEnd  = 0(210) QBits\r\nDur  = 170 QBits\r\n"
              "TimeStamp = 6\r\nTQCNT = 12");
    EXPECT_EQ(View().m_ToolTipText.Str(), Tip());
    EXPECT_EQ(View().m_ToolTipJob.m_Name, "IDLE") << "stays that of the tip before";
}

TEST_F(TipTest, TimesAreSignedAndOnlyAnEndOf0IsOpen) {
    std::string text;
    vesk::AppendCustomTip(text, Record("f", 50, 20, -1), 90, true);
    EXPECT_EQ(text,
              "Func  = f\r\nStart = 50 QBits\r\nEnd  = 20 QBits\r\nDur  = -30 QBits\r\n"
              "TimeStamp = -1\r\nTQCNT = 0");
    EXPECT_EQ(vesk::SourceMarkTipText(Record("m", ~0ull, 0), false),
              "Mark  = m\r\nTime = -1 QBits\r\nTimeStamp = 0\r\nUSCNT = 0");
}

TEST_F(TipTest, ALossNamesTheJobBeforeAndSamplesTheirValues) {
    for (const char* name : {"%Lost", "%Lost", "%Lost", "%Loss"}) {
        const std::uint64_t start = Log().m_EndTime;
        Log().Insert(name, start, start + 50);
    }
    Log().m_PDIInfos = {{"MAIN", 1, 0}, {"", 1, 1}, {"MAIN", 1, 3}};
    Log().m_ExtraInfoNum = 2;
    Log().m_ExtraMax = Log().m_ExtraMin = {0, 0};
    // Of two at one time the first one counts.
    Log().m_ExtraInfos = {{99, {9, 9}, ""}, {100, {1, -1}, ""}, {100, {3, 3}, ""}};
    Open();
    const struct {
        int x;
        const char* rest;
    } cases[] = {{100, "TQCNT = 0\r\nLast job   = MAIN"},
                 {200, "TQCNT = 0\r\nLast job   = N/A"},
                 {300, "TQCNT = 0\r\nInfo[0] = 1\r\nInfo[1] = 4294967295"},
                 {400, "TQCNT = 0"}};
    for (const auto& c : cases) {
        Click(c.x, kJobs);
        EXPECT_EQ(Tip().substr(Tip().find("TQCNT")), c.rest) << c.x;
    }
}

// --- Bands ---------------------------------------------------------------------------------------

TEST_F(TipTest, AClickCountsWithinTheBandsAndTheirEdges) {
    OpenRecords();
    const struct {
        int y;
        const char* head;
    } cases[] = {{249, ""},
                 {250, "Job  = MAIN"},
                 {375, "Job  = MAIN"},
                 {376, ""},
                 {201, ""},
                 {200, "Func  = abc"},
                 {117, "Func  = abc"},
                 {106, "Mark  = mk"},
                 {116, "Mark  = mk"},
                 {105, ""}};
    for (const auto& c : cases) {
        View().HideToolTip();
        Click(200, c.y);
        EXPECT_EQ(TipHead(), c.head) << c.y;
    }
}

// At y 119, with the canvas down to 510. On other canvases the calls may end a pixel lower.
TEST_F(TipTest, WhereTwoBandsTouchBothCountAndTheMarkGoesFirst) {
    OpenRecords();
    View().MoveWindow(0, 0, kWidth, kHeight + 10);
    Click(180, 119);
    EXPECT_EQ(TipHead(), "Func  = abc");
    Click(200, 119);
    EXPECT_EQ(TipHead(), "Mark  = mk");
}

TEST_F(TipTest, ABandAnswersThoughItIsNotDrawn) {
    OpenRecords();
    View().m_ShowCustomLogging = false;
    Click(180, kCustom);
    EXPECT_EQ(TipHead(), "Func  = abc");
    Move(185, kCustom);
    EXPECT_EQ(TipHead(), "Func  = abc");
}

TEST_F(TipTest, TheOtherOutlookOpensAndClosesNone) {
    OpenRecords();
    Click(200, kJobs);
    View().SetOutlook(OUTLOOK_RELATIVE);
    Move(350, kJobs);
    Click(450, kJobs);
    EXPECT_EQ(TipHead(), "Job  = MAIN");
    EXPECT_EQ(View().m_CursorTime, 185u);
}

// --- Closing -------------------------------------------------------------------------------------

TEST_F(TipTest, MovesCloseATipThatNoLongerFits) {
    const struct {
        const char* what;
        bool contextSwitch;
        CPoint click, move;
        bool stays;
    } cases[] = {
        {"another pixel of the job", true, {200, kJobs}, {299, 250}, true},
        {"the edge of the job", true, {200, kJobs}, {300, kJobs}, false},
        {"another job", true, {200, kJobs}, {450, kJobs}, false},
        {"nothing", true, {200, kJobs}, {200, 230}, false},
        {"calls leave whatever stands", true, {200, kJobs}, {180, kCustom}, true},
        {"away from the calls", true, {180, kCustom}, {90, kCustom}, false},
        {"from calls to a job", true, {180, kCustom}, {200, kJobs}, false},
        {"the same segment", false, {200, kCustom}, {150, kCustom}, true},
        {"another segment", false, {200, kCustom}, {450, kCustom}, false},
        {"from a job to a segment", false, {200, kJobs}, {200, kCustom}, false},
        {"the same mark", true, {200, kMarks}, {201, kMarks}, true},
        {"beside the mark", true, {200, kMarks}, {202, kMarks}, false},
        {"from a job to a mark", true, {200, kJobs}, {200, kMarks}, false},
    };
    OpenRecords();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        View().HideToolTip();
        View().m_ContextSwitch = c.contextSwitch;
        Click(c.click.x, c.click.y);
        EXPECT_NE(Tip(), "");
        Move(c.move.x, c.move.y);
        EXPECT_EQ(Tip() != "", c.stays);
    }
}

TEST_F(TipTest, AClickThatHitsNothingLeavesTheTipToTheNextMove) {
    OpenRecords();
    Click(200, kJobs);
    Click(350, kJobs);
    EXPECT_EQ(Tip(), kMain);
    Move(350, kJobs);
    EXPECT_EQ(Tip(), "");
    EXPECT_EQ(View().m_ToolTipJob, McuJob());
}

TEST_F(TipTest, ATipClosesWhileTheCursorIsDraggedAway) {
    OpenRecords();
    Press(200, kJobs);
    Move(250, kJobs);
    EXPECT_EQ(Tip(), kMain);
    Move(320, kJobs);
    EXPECT_EQ(Tip(), "");
    EXPECT_EQ(View().m_CursorTime, 120u);
}

// --- Place ---------------------------------------------------------------------------------------

// A character is 7 pixels wide, a line 13 high; the screen has 1920 x 1080.
TEST_F(TipTest, ATipKeepsFreeOfTheScreensRightEdge) {
    OpenRecords();
    const int width = 7 * static_cast<int>(std::string(kMain).size());
    const struct {
        const char* what;
        CPoint window;  // its place on the screen
        CPoint tip;     // within the window
    } cases[] = {
        {"beside the click", {0, 0}, {205, 300}},
        {"the last place that fits", {1695 - width, 0}, {205, 300}},
        {"left by the text's width", {1696 - width, 0}, {205 - width, 300}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        View().MoveWindow(c.window.x, c.window.y, kWidth, kHeight);
        Click(200, kJobs);
        EXPECT_EQ(View().m_ToolTip->Position(),
                  (CPoint{c.window.x + c.tip.x, c.window.y + c.tip.y}));
        EXPECT_EQ(View().m_ToolTip->Anchor(), (CPoint{c.window.x + 200, c.window.y + kJobs}));
    }
}

// Calls lie at 583 to 1000. A tip of one call takes 108 of the 1040 pixels that tips may use.
TEST_F(TipTest, ALowTipMovesUpButNotAboveTheWindow) {
    for (int i = 0; i < 40; ++i) Log().InsertCustomJobCS(Record("fn", 10, 100));
    Log().InsertCustomJobCS(Record("z", 200, 220));
    Log().Insert("IDLE", 0, 300);
    Open(kWidth, 2617);
    const struct {
        const char* what;
        int windowTop;
        CPoint click;
        int tipTop;  // within the window
    } cases[] = {
        {"the lowest place that fits", 0, {490, 932}, 932},
        {"below it", 0, {490, 933}, 932},
        {"above it in the window, below it on the screen", 100, {490, 900}, 900},
        {"taller than the screen", 0, {200, 600}, 0},
    };
    for (const auto& c : cases) {
        View().MoveWindow(0, c.windowTop, kWidth, 2617);
        Click(c.click.x, c.click.y);
        EXPECT_EQ(View().m_ToolTip->Position().y, c.windowTop + c.tipTop) << c.what;
    }
}

TEST_F(TipTest, TheTipBelongsToTheView) {
    CMcuView& view = OpenRecords();
    EXPECT_EQ(view.m_ToolInfo.uId, &view);
    EXPECT_EQ(view.m_ToolInfo.hwnd, nullptr);
    EXPECT_EQ(view.m_ToolInfo.cbSize, sizeof(TOOLINFO));
    EXPECT_EQ(view.m_ToolTip->MaxTipWidth(), 32767);
    const CToolTipCtrl* const tip = view.m_ToolTip.get();
    EXPECT_TRUE(view.InitToolTip());
    EXPECT_EQ(view.m_ToolTip.get(), tip);
}

TEST_F(TipTest, WithoutATipTheRestOfTheMouseWorks) {
    OpenRecords();
    View().m_ToolTip.reset();
    for (const int y : {kJobs, kCustom, kMarks}) Click(200, y);
    EXPECT_EQ(View().m_ToolTipShown, 0);
    EXPECT_EQ(View().m_CursorTime, 60u);
}

}  // namespace
