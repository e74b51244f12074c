// Going and finding, as a person does it: by keys, commands and dialogs.

#include "platform/Keys.h"
#include "tests/timeline/DialogViewTest.h"
#include "tests/timeline/PlainFind.h"
#include "tests/timeline/RandomList.h"
#include "timeline/SearchResults.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vesk::DialogUser;
using vesk::kControl;
using vesk::kNoModifier;
using vesk::kShift;

constexpr int kGotoEdit = 1168, kQbit = 1017, kFrame = 1018;
constexpr int kFindEdit = 1340, kTask = 1017, kFunction = 1018, kLabel = 1210;
constexpr int kUp = 1019, kDown = 1020;
constexpr const char* kAtBegin = "Search continued at the begin of the log.";
constexpr const char* kAtEnd = "Search continued at the end of the log.";

class FindTest : public DialogViewTest {
protected:
    static void Job(const char* name, std::uint64_t start, std::uint64_t end, int frame = 0) {
        McuJob job(name, start, end);
        job.m_TimeStamp = frame;
        Log().Insert(job);
    }
    // Presses a key that stands for a command.
    void Shortcut(unsigned key, unsigned modifiers) {
        ASSERT_TRUE(Press(vesk::FindCommand(*vesk::FindAccelerators(128), key, modifiers)));
    }
    void Find(int target, const char* name, int direction) {
        m_User.OnDialog([=](DialogUser& user) {
            user.Press(target);
            user.Type(kFindEdit, name);
            user.Press(direction);
            user.Key(VK_RETURN);
        });
        Shortcut('F', kControl);
    }
    void GoToInDialog(int kind, const char* number) {
        m_User.OnDialog([=](DialogUser& user) {
            user.Press(kind);
            user.Type(kGotoEdit, number);
            user.Key(VK_RETURN);
        });
        Shortcut('G', kControl);
    }
    std::string Status() const {
        return m_User.m_StatusTexts.empty() ? "" : m_User.m_StatusTexts.back().Str();
    }
    std::uint64_t& Cursor() { return View().m_CursorTime; }
};

// --- Going ---------------------------------------------------------------------------------------

TEST_F(FindTest, GoingMovesTheViewOnlyIfTheGoalIsOutOfSight) {
    LogOf(10000);
    const struct {
        const char* what;
        std::uint64_t goal, cursor, offset;
    } cases[] = {
        {"the left edge is in sight", 2000, 2000, 2000},
        {"and so is the right one", 2500, 2500, 2000},
        {"just behind: to the middle", 2501, 2501, 2251},
        {"just before", 1999, 1999, 1749},
        {"half a view from the begin", 250, 250, 0},
        {"a little more", 251, 251, 1},
        {"near the end the view ends there", 9990, 9990, 9500},
        {"beyond the end: to the end", 20000, 10000, 9500},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Open();
        GoTo(2000);
        Painted();
        View().GoTo(c.goal);
        EXPECT_EQ(Cursor(), c.cursor);
        EXPECT_EQ(View().m_TimeOffset, c.offset);
        EXPECT_FALSE(Painted().IsRectEmpty());
        ExpectConsistent(View());
        Key(VK_LEFT, MK_ALT);
        EXPECT_EQ(View().m_TimeOffset, 2000u) << "the way back";
    }
}

TEST_F(FindTest, TheGoToDialogRemembersWhatWasAccepted) {
    LogOf(10000);
    Open();
    m_User.OnDialog([&](DialogUser& user) {
        auto& edit = dynamic_cast<CEdit&>(*user.Dialog().GetDlgItem(kGotoEdit));
        int from = -1, to = -1;
        edit.GetSel(from, to);
        EXPECT_EQ(CWnd::GetFocus(), &edit);
        EXPECT_EQ(std::pair(from, to), std::pair(0, 1)) << "all of the 0";
        EXPECT_TRUE(user.IsChecked(kQbit));
        user.Type(kGotoEdit, "7o0o0");
        EXPECT_EQ(user.Text(kGotoEdit), "700") << "digits only";
        user.Press("OK");
    });
    Shortcut('G', kControl);
    EXPECT_EQ(Cursor(), 700u);
    m_User.OnDialog([&](DialogUser& user) {
        EXPECT_EQ(user.Text(kGotoEdit), "700");
        user.Type(kGotoEdit, "1");
        user.Press(kFrame);
        user.Press("Cancel");
    });
    Shortcut('G', kControl);
    EXPECT_EQ(Cursor(), 700u);
    m_User.OnDialog([&](DialogUser& user) {
        EXPECT_EQ(user.Text(kGotoEdit), "700");
        EXPECT_TRUE(user.IsChecked(kQbit));
        user.Key(VK_ESCAPE);
    });
    Shortcut('G', kControl);
    EXPECT_THAT(m_User.m_DialogTitles, testing::Each("Go To ..."));
}

TEST_F(FindTest, AFrameNumberLeadsToTheFirstJobOfItsRunOrToTheLastOneBelow) {
    const int frames[] = {3, 3, 5, 5, 4, 7, 7, 9};
    for (int i = 0; i < 8; ++i) {
        const auto start = static_cast<std::uint64_t>(1000 * i);
        Job("MAIN", start, start + 1000, frames[i]);
    }
    const struct {
        std::uint64_t from;  // left edge of the view
        const char* frame;
        int job;
        bool isThere;
    } cases[] = {
        {1, "5", 2, true},          {1, "4", 1, false},    {1, "7", 5, true},
        {1, "6", 4, false},         {1, "9", 7, true},     {1, "12", 7, false},
        {1, "3", 0, true},          {7001, "7", 5, true},  {7001, "5", 5, false},
        {7001, "4", 2, false},      {7001, "0", 0, false}, {2001, "5", 2, true},
        {1, "4294967301", 2, true},  // its low 32 bits are 5
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.frame << " from " << c.from);
        Open();
        GoTo(c.from);
        m_User.m_StatusTexts.clear();
        GoToInDialog(kFrame, c.frame);
        EXPECT_EQ(Cursor(), static_cast<std::uint64_t>(1000 * c.job));
        EXPECT_EQ(m_User.m_StatusTexts.empty(), c.isThere);
    }
}

TEST_F(FindTest, ALogWithoutRecordsHasNothingToGoTo) {
    Open();
    for (const int target : {kTask, kFunction, kLabel}) Find(target, "", kDown);
    GoToInDialog(kFrame, "3");
    GoToInDialog(kQbit, "3");
    Key(VK_F2);
    EXPECT_EQ(Cursor(), 0u);
}

// --- Finding -------------------------------------------------------------------------------------

class FindNameTest : public FindTest {
protected:
    FindNameTest() {
        Job("A", 0, 100), Job("B", 100, 200), Job("A", 200, 300), Job("C", 300, 400);
        Job("B", 400, 500);
        for (const auto& [name, start] : std::initializer_list<std::pair<const char*, int>>{
                 {"f", 10}, {"g", 50}, {"f", 60}, {"g", 110}, {"f", 210}}) {
            const auto time = static_cast<std::uint64_t>(start);
            Log().InsertCustomJob({name, time, time + 5}, time);
            Log().InsertCustomJobCS({name, time, time + 5});
        }
        Log().InsertSourceMark({"here", 50, 50});
        Open();
    }
};

TEST_F(FindNameTest, ASearchStartsAtTheCursorAndWraps) {
    const struct {
        std::uint64_t cursor;
        int target;
        const char* name;
        int direction;
        std::uint64_t result;
        std::string status = "";
    } cases[] = {
        {0, kTask, "B", kDown, 100},
        {100, kTask, "b", kDown, 400},
        {400, kTask, "B", kDown, 100, kAtBegin},
        {250, kTask, "A", kUp, 200},
        {200, kTask, "a", kUp, 0},
        {0, kTask, "A", kUp, 200, kAtEnd},
        {300, kTask, "C", kUp, 300, kAtEnd},
        {150, kTask, "D", kDown, 150, "\"D\" was not found."},
        {150, kTask, "AB", kDown, 150, "\"AB\" was not found."},
        {150, kTask, "", kDown, 200},
        {150, kTask, "", kUp, 100},
        {450, kTask, "", kDown, 0, kAtBegin},
        {500, kTask, "B", kDown, 500, "\"B\" was not found."},
        {500, kTask, "", kUp, 500, "Nothing more was found."},
        {10, kFunction, "f", kDown, 60},
        {210, kFunction, "f", kDown, 10, kAtBegin},
        {10, kFunction, "f", kUp, 210, kAtEnd},
        {10, kFunction, "F", kDown, 10, "\"F\" was not found."},
        {55, kFunction, "", kDown, 60},
        {60, kFunction, "", kUp, 50},
        {210, kFunction, "", kDown, 210, "Nothing more was found."},
        {500, kFunction, "", kUp, 500, "Nothing more was found."},
        {0, kLabel, "HERE", kDown, 50},
        {60, kLabel, "here", kUp, 50},
        {20, kLabel, "here", kUp, 50, kAtEnd},
        {20, kLabel, "MAIN", kDown, 20, "\"MAIN\" was not found."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name << " from " << c.cursor);
        Cursor() = c.cursor;
        Find(c.target, c.name, c.direction);
        EXPECT_EQ(Cursor(), c.result);
        EXPECT_EQ(Status(), c.status);
    }
}

TEST_F(FindNameTest, WithoutContextSwitchesTheSegmentsAreSearched) {
    Press(40308);
    Cursor() = 20;
    Find(kFunction, "F", kDown);
    EXPECT_EQ(Cursor(), 60u) << "case does not count here";
    Cursor() = 5;
    Find(kFunction, "f", kUp);
    EXPECT_EQ(Cursor(), 210u);
}

TEST_F(FindNameTest, ASingleTaskAheadOfTheCursorIsNotReachedUpwards) {
    Log().Clear();
    Job("X", 50, 500);
    View().Reload();
    Cursor() = 20;
    Find(kTask, "X", kUp);
    EXPECT_EQ(Cursor(), 20u);
    Find(kTask, "X", kDown);
    EXPECT_EQ(Cursor(), 50u);
}

TEST_F(FindNameTest, F3RepeatsTheSearchInItsOwnDirection) {
    Cursor() = 0;
    Shortcut(VK_F3, kNoModifier);
    EXPECT_EQ(Cursor(), 100u) << "nothing was searched yet: whatever job comes next";
    Find(kTask, "a", kUp);
    EXPECT_EQ(Cursor(), 0u);
    Shortcut(VK_F3, kNoModifier);
    EXPECT_EQ(Cursor(), 200u);
    Shortcut(VK_F3, kShift);
    EXPECT_EQ(Cursor(), 0u);
    Shortcut(VK_F3, kShift);
    EXPECT_EQ(Cursor(), 200u);
    EXPECT_EQ(Status(), kAtEnd);
}

TEST_F(FindNameTest, TheFindDialogRemembersWhatWasAcceptedThroughANewLog) {
    Find(kLabel, "here", kUp);
    m_User.OnDialog([](DialogUser& user) {
        user.Press(kTask);
        user.Press(kDown);
        user.Type(kFindEdit, "B");
        user.Press("Cancel");
    });
    Shortcut('F', kControl);
    View().Reload();
    m_User.OnDialog([](DialogUser& user) {
        auto& edit = dynamic_cast<CEdit&>(*user.Dialog().GetDlgItem(kFindEdit));
        int from = -1, to = -1;
        edit.GetSel(from, to);
        EXPECT_EQ(CWnd::GetFocus(), &edit);
        EXPECT_EQ(std::pair(from, to), std::pair(0, 4));
        EXPECT_EQ(user.Text(kFindEdit), "here");
        EXPECT_TRUE(user.IsChecked(kLabel));
        EXPECT_TRUE(user.IsChecked(kUp));
        user.Press("Cancel");
    });
    Shortcut('F', kControl);
    EXPECT_THAT(m_User.m_DialogTitles, testing::Each("Find ..."));
}

// --- As a walk finds it --------------------------------------------------------------------------

// Some names in another case, and a few records out of order.
void Disturb(std::vector<McuJob>& records, vesk::Dice& dice) {
    for (McuJob& record : records)
        if (!record.m_Name.empty() && dice.OnceIn(5)) record.m_Name[0] ^= 0x20;
    if (records.size() < 2 || !dice.OnceIn(3)) return;
    for (int i = 0; i < 3; ++i) {
        const auto at = dice.Below(static_cast<std::uint32_t>(records.size()) - 1);
        std::swap(records[at].m_StartTime, records[at + 1].m_StartTime);
    }
}

std::string SomeName(const std::vector<McuJob>& records, vesk::Dice& dice) {
    if (records.empty() || dice.OnceIn(6)) return dice.OnceIn(2) ? "" : "nothing";
    std::string name = records[dice.Below(static_cast<std::uint32_t>(records.size()))].m_Name;
    if (!name.empty() && dice.OnceIn(3)) name.back() ^= dice.OnceIn(2) ? 0x20 : 0;
    return name;
}

class FindWalk : public FindTest {
protected:
    void OpenRandom(std::uint64_t seed, vesk::Dice& dice) {
        vesk::FillRandomList(Log(), seed, seed % 20 == 0 ? 9000 : dice.Of({1, 40, 400, 1500}));
        for (auto& [name, lane] : Log().m_CustomJobsCS)
            if (dice.OnceIn(9)) Disturb(lane, dice);
        Disturb(Log(), dice);
        Disturb(Log().m_CustomJobs, dice);
        Disturb(Log().m_SourceMarks, dice);
        Open();
    }
    void ExpectAt(const plain::Time& goal, std::uint64_t before) {
        EXPECT_EQ(Cursor(), goal ? std::min(*goal, Log().m_EndTime) : before);
    }
    // Compares one search of any kind.
    void Compare(vesk::Dice& dice) {
        vesk::LookSomewhere(View(), dice);
        if (dice.OnceIn(3) && !Log().empty())
            Cursor() = Log()[dice.Below(static_cast<std::uint32_t>(Log().size()))].m_StartTime;
        const bool up = dice.OnceIn(2);
        const std::uint64_t before = Cursor();
        const auto compare = [&](const auto& records, auto find, bool wrapsToStart) {
            const std::string name = SomeName(records, dice);
            (View().*find)(name, up);
            SCOPED_TRACE(testing::Message() << "\"" << name << "\" " << up << " from " << before);
            ExpectAt(plain::Name(Log(), records, name, before, up, wrapsToStart), before);
        };
        switch (dice.Below(5)) {
            case 0:
                return compare(Log(), &CMcuView::GoTo_Task, false);
            case 1:
                return compare(Log().m_CustomJobs, &CMcuView::GoTo_Function, false);
            case 2:
                return compare(Log().m_SourceMarks, &CMcuView::GoTo_SourceMark, true);
            case 3: {
                const std::string name = SomeName(Log().m_CustomJobs, dice);
                View().GoTo_FunctionCS(name, up);
                return ExpectAt(plain::Call(Log(), name, before, up), before);
            }
            default: {
                const int frame = Log().front().m_TimeStamp + dice.Between(-20, 200);
                const plain::Time goal = plain::Frame(Log(), View().m_JobFirst, frame);
                View().GoTo_FrameNo(frame);
                return ExpectAt(goal, before);
            }
        }
    }
};

TEST_F(FindWalk, EverySearchEndsWhereAWalkOverAllRecordsWould) {
    for (std::uint64_t seed = 1; seed <= 120; ++seed) {
        vesk::Dice dice(seed);
        OpenRandom(seed, dice);
        for (int step = 0; step < 40; ++step) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
            Compare(dice);
            if (HasFailure()) return;
        }
    }
}

TEST_F(FindWalk, SearchResultsAreAllFittingRecordsInTimeOrder) {
    using vesk::SearchTarget;
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        vesk::Dice dice(seed);
        OpenRandom(seed, dice);
        std::vector<McuJob> calls;
        for (const auto& [name, lane] : Log().m_CustomJobsCS)
            for (const McuJob& call : lane) calls.emplace_back(name, call.m_StartTime, 0);
        const std::pair<SearchTarget, std::vector<McuJob>> kinds[] = {
            {SearchTarget::kJobs, Log()},
            {SearchTarget::kSegments, Log().m_CustomJobs},
            {SearchTarget::kCalls, calls},
            {SearchTarget::kMarks, Log().m_SourceMarks}};
        for (const auto& [target, records] : kinds) {
            const std::string name = SomeName(records, dice);
            std::map<std::string, int> asked;
            const vesk::SearchResults hits(Log(), target, [&](const std::string& other) {
                ++asked[other];
                return other == name;
            });
            std::vector<std::uint64_t> starts, found;
            for (const McuJob& record : records)
                if (record.m_Name == name) starts.push_back(record.m_StartTime);
            std::stable_sort(starts.begin(), starts.end());
            for (int i = 0; i < hits.Count(); ++i) found.push_back(hits.At(i).m_StartTime);
            EXPECT_EQ(found, starts) << "seed " << seed;
            EXPECT_THAT(asked, testing::Each(testing::Pair(testing::_, 1)));
            const std::uint64_t time = dice.Next() % (Log().m_EndTime + 2);
            EXPECT_EQ(hits.FirstFrom(time),
                      std::lower_bound(starts.begin(), starts.end(), time) - starts.begin());
        }
    }
}

}  // namespace
