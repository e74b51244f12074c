// The choice of what the timeline shows, as a person makes it.

#include <filesystem>
#include <optional>

#include "platform/CDC.h"
#include "platform/Keys.h"
#include "platform/RecordingSurface.h"
#include "platform/SystemMetrics.h"
#include "platform/Text.h"
#include "tests/support/Dice.h"
#include "tests/support/TemporaryFile.h"
#include "tests/timeline/RandomList.h"
#include "tests/timeline/ViewTest.h"
#include "timeline/CMcuFilterDlg.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using vesk::ColorKey;
using vesk::DialogUser;
using vesk::FilterFile;
using vesk::FilterRecord;
using Texts = std::vector<std::string>;
using Flags = std::vector<bool>;

constexpr unsigned kFilter = 40139;
constexpr int kTasks = 1026, kFunctions = 1027, kExtras = 1028, kLabels = 1029, kHardware = 1030;
constexpr int kLists[] = {kTasks, kFunctions, kExtras, kLabels};
constexpr int kImport = 1977, kExport = 1978;
constexpr int kWidthOfLists = 200;
constexpr COLORREF kRed = 0x0000FF, kGreen = 0x00FF00;

CChkListBox& ListOf(const DialogUser& user, int id) {
    return dynamic_cast<CChkListBox&>(*user.Dialog().GetDlgItem(id));
}
FilterRecord& Record(const DialogUser& user, int id, int index) {
    return *ListOf(user, id).RecordAt(index);
}

// What the user sees of a list: an "x" for each entry that is checked, a "." for each other.
std::string Checks(const DialogUser& user, int id) {
    std::string checks;
    for (int i = 0; i < ListOf(user, id).GetCount(); ++i)
        checks += Record(user, id, i).m_Checked != 0 ? 'x' : '.';
    return checks;
}
std::vector<COLORREF> Colors(const DialogUser& user, int id) {
    std::vector<COLORREF> colors;
    for (int i = 0; i < ListOf(user, id).GetCount(); ++i)
        colors.push_back(Record(user, id, i).m_Color);
    return colors;
}
using Choice = std::vector<std::pair<std::string, std::vector<COLORREF>>>;
Choice ChoiceOf(const DialogUser& user) {
    Choice choice;
    for (const int id : kLists) choice.push_back({Checks(user, id), Colors(user, id)});
    return choice;
}

// Presses where the check box or the colour of an entry in sight stands.
void PressEntry(DialogUser& user, int id, int index, int x) {
    const CChkListBox& list = ListOf(user, id);
    const int middle = (index - list.GetTopIndex()) * list.GetItemHeight() + 7;
    user.PressAt(id, {x, middle});
}
void PressCheck(DialogUser& user, int id, int index) {
    PressEntry(user, id, index, 8);
}
void PressColor(DialogUser& user, int id, int index) {
    PressEntry(user, id, index, kWidthOfLists - 8);
}

class FilterTest : public ViewTest {
protected:
    FilterTest() {
        AfxInitExtensionModule(m_Module, &vesk::VeskResources());
        m_Tables.emplace(m_Module);
    }
    ~FilterTest() override {
        std::filesystem::remove(m_Path);
        m_Tables.reset();
        AfxTermExtensionModule(m_Module);
    }

    // A log with names of every kind, and a view of it with a bar to scroll by.
    void OpenSmallLog() {
        LogOf(1000);
        Names({"MAIN", "APP", "IRQ0x10", "irq2"});
        for (const char* name : {"fun", "gun"}) {
            Log().m_CustomNames[name] = 1;
            Log().m_CustomShown.push_back(true);
        }
        for (const char* name : {"in", "out"}) {
            Log().m_SourceMarkNames[name] = 1;
            Log().m_SourceMarkShown.push_back(true);
        }
        Log().m_ExtraInfoNum = 2;
        Log().m_ExtraNames = {"EMI", "IPC"};
        Log().m_ExtraMin = Log().m_ExtraMax = {0, 0};
        Log().m_HWJobs["dma"];
        m_Document.emplace();
        Open(kWidth, 250);
    }

    using Script = std::function<void(DialogUser&)>;
    void Filter(const Script& script) {
        m_User.OnDialog([&](DialogUser& user) {
            for (const int id : kLists) {
                ListOf(user, id).MoveWindow(0, 0, kWidthOfLists, 160);
                ListOf(user, id).SetItemHeight(16);
            }
            script(user);
        });
        EXPECT_TRUE(Press(kFilter));
        EXPECT_THAT(m_User.m_Faults, IsEmpty());
    }
    void FilterAndAccept(const Script& script) {
        Filter([&](DialogUser& user) {
            script(user);
            user.Press(IDOK);
        });
    }
    void Import(DialogUser& user, const std::string& path) {
        m_User.OnFileDialog(path);
        user.Press(kImport);
    }
    void ImportBytes(DialogUser& user, const FilterFile& file) {
        const TemporaryFile on(file.Bytes());
        Import(user, on.Path());
    }

    std::optional<VESKUIDoc> m_Document;
    const TemporaryFile m_Place{""};
    const std::string m_Path = m_Place.Path() + ".txt";  // to be written

private:
    AFX_EXTENSION_MODULE m_Module;
    std::optional<CDynLinkLibrary> m_Tables;
};

TEST_F(FilterTest, ListsWhatTheLogHolds) {
    OpenSmallLog();
    Filter([&](DialogUser& user) {
        EXPECT_EQ(user.Dialog().GetWindowText(), "Filter");
        EXPECT_THAT(user.Lines(kTasks), ElementsAre("irq2", "IRQ0x10", "APP", "IDLE", "MAIN"));
        EXPECT_THAT(user.Lines(kFunctions), ElementsAre("fun", "gun"));
        EXPECT_THAT(user.Lines(kExtras), ElementsAre("EMI", "IPC"));
        EXPECT_THAT(user.Lines(kLabels), ElementsAre("in", "out"));
        EXPECT_THAT(user.Lines(kHardware), ElementsAre("dma"));
        EXPECT_EQ(Checks(user, kTasks) + Checks(user, kExtras), "xxxxxxx") << "all is on at first";
        EXPECT_EQ(Record(user, kTasks, 4).m_Key, ColorKey("MAIN"));
        EXPECT_EQ(Record(user, kTasks, 4).m_Color, m_Document->m_JobColor.Lookup(ColorKey("MAIN")));
        EXPECT_EQ(Record(user, kFunctions, 1).m_Color,
                  m_Document->m_CustomColor.Lookup(ColorKey("gun")));
        EXPECT_EQ(Record(user, kExtras, 1),
                  (FilterRecord{1, 1, m_Document->m_ExtraColor.Lookup(1)}));
        EXPECT_EQ(Record(user, kLabels, 1), (FilterRecord{1, 1, 0xFFFFFF}));
        user.Press(IDCANCEL);
    });
}

TEST_F(FilterTest, HidesWhatIsUnchecked) {
    OpenSmallLog();
    View().SetOutlook(OUTLOOK_RELATIVE);
    const int lanes = View().m_VScrollMax;
    ScrollLanes(SB_TOP);
    Painted();
    FilterAndAccept([](DialogUser& user) {
        PressCheck(user, kTasks, 0);
        PressCheck(user, kTasks, 3);
        PressCheck(user, kFunctions, 1);
        PressCheck(user, kExtras, 0);
        PressCheck(user, kLabels, 0);
        EXPECT_EQ(Checks(user, kTasks), ".xx.x");
    });
    EXPECT_THAT(View().m_RelativeList, ElementsAre("MAIN", "APP", "IRQ0x10"));
    EXPECT_EQ(Log().m_CustomShown, Flags({true, false}));
    EXPECT_EQ(View().m_ExtraShown, Flags({false, true}));
    EXPECT_EQ(Log().m_SourceMarkShown, Flags({false, true}));
    EXPECT_EQ(View().m_VScrollMax, lanes - 4);
    EXPECT_EQ(View().m_LaneOffset, 0) << "the lanes begin at the bottom again";
    EXPECT_EQ(View().m_VScrollBar.GetScrollPos(), View().m_VScrollMax);
    EXPECT_FALSE(Painted().IsRectEmpty());
    ExpectConsistent(View());
    Filter([](DialogUser& user) {
        EXPECT_EQ(Checks(user, kTasks), ".xx.x");
        EXPECT_EQ(Checks(user, kFunctions) + Checks(user, kExtras) + Checks(user, kLabels),
                  "x..x.x");
        user.Press(IDCANCEL);
    });
}

Texts LanesOf(CMcuView& view) {
    vesk::RecordingSurface surface({1110, 617});
    CDC dc(&surface);
    view.DrawJobList(&dc, view.m_CanvasLeft, view.m_CanvasBottom);
    return surface.Texts();
}

TEST_F(FilterTest, WithoutTasksTheLanesBeginWithTheFunctions) {
    OpenSmallLog();
    Log().m_CustomJobsCS["fun"];
    Log().m_CustomJobsCS["gun"];
    Open();
    EXPECT_EQ(LanesOf(View()).front(), "MAIN");
    FilterAndAccept([](DialogUser& user) { user.Press(4); });
    EXPECT_THAT(View().m_RelativeList, IsEmpty());
    EXPECT_THAT(LanesOf(View()), ElementsAre("fun", "gun", "in", "out", "dma"));
    FilterAndAccept([](DialogUser& user) {
        PressCheck(user, kFunctions, 0);
        PressCheck(user, kLabels, 1);
    });
    EXPECT_THAT(LanesOf(View()), ElementsAre("gun", "in", "dma"));
}

TEST_F(FilterTest, AllOnAndAllOffChangeTheChecksOfTheirList) {
    OpenSmallLog();
    Filter([](DialogUser& user) {
        const Choice before = ChoiceOf(user);
        for (int i = 0; i < 4; ++i) {
            const std::string all = Checks(user, kLists[i]);
            user.Press(4 + 2 * i);
            EXPECT_EQ(Checks(user, kLists[i]), std::string(all.size(), '.'));
            EXPECT_EQ(Colors(user, kLists[i]), before[static_cast<std::size_t>(i)].second);
            user.Press(3 + 2 * i);
            EXPECT_EQ(ChoiceOf(user), before);
        }
        user.Press("Cancel");
    });
}

TEST_F(FilterTest, CancelLosesNothing) {
    OpenSmallLog();
    const Texts lanes = View().m_RelativeList;
    const auto colors = m_Document->m_JobColor.m_Colors;
    Painted();
    Filter([&](DialogUser& user) {
        FilterFile file;
        file.m_Sections[FilterFile::kFunctions] = {{ColorKey("fun"), 0, kRed}};
        ImportBytes(user, file);
        user.Press(4);
        m_User.OnColorDialog(kRed);
        PressColor(user, kTasks, 0);
        user.Key(VK_ESCAPE);
    });
    EXPECT_EQ(View().m_RelativeList, lanes);
    EXPECT_EQ(Log().m_CustomShown, Flags({true, true}));
    EXPECT_EQ(m_Document->m_JobColor.m_Colors, colors);
    EXPECT_TRUE(Painted().IsRectEmpty());
}

TEST_F(FilterTest, ColorsAreChosenInTheirSquares) {
    OpenSmallLog();
    FilterAndAccept([&](DialogUser& user) {
        const COLORREF before = Record(user, kExtras, 1).m_Color;
        PressColor(user, kExtras, 1);  // cancelled
        EXPECT_EQ(m_User.m_Faults.size(), 1U);
        m_User.m_Faults.clear();
        EXPECT_EQ(Record(user, kExtras, 1).m_Color, before);
        for (const int id : {kTasks, kFunctions, kExtras}) {
            m_User.OnColorDialog(kRed);
            PressColor(user, id, 1);
            EXPECT_EQ(Record(user, id, 1).m_Color, kRed);
            EXPECT_EQ(user.Selected(id), 1);
        }
        PressColor(user, kLabels, 1);  // asks nothing
        EXPECT_EQ(Record(user, kLabels, 1).m_Color, 0xFFFFFFU);
    });
    EXPECT_EQ(m_Document->m_JobColor.Lookup(ColorKey("IRQ0x10")), kRed);
    EXPECT_EQ(m_Document->m_CustomColor.Lookup(ColorKey("gun")), kRed);
    EXPECT_EQ(m_Document->m_ExtraColor.Lookup(1), kRed);
}

// Entries are 16 high, so the square reaches from 185 to 197.
TEST_F(FilterTest, BoxAndSquareHaveTheirEdges) {
    OpenSmallLog();
    const struct {
        CPoint point;
        const char* checks;
        int dialogs;
    } cases[] = {
        {{2, 20}, "xxxxx", 0},   {{3, 20}, "x.xxx", 0},   {{17, 31}, "x.xxx", 0},
        {{18, 20}, "xxxxx", 0},  {{8, 32}, "xx.xx", 0},   {{8, 79}, "xxxx.", 0},
        {{8, 80}, "xxxxx", 0},   {{8, -1}, "xxxxx", 0},   {{184, 20}, "xxxxx", 0},
        {{185, 20}, "xxxxx", 1}, {{197, 20}, "xxxxx", 1}, {{198, 20}, "xxxxx", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.point.x << ',' << c.point.y);
        Filter([&](DialogUser& user) {
            user.PressAt(kTasks, c.point);
            EXPECT_EQ(Checks(user, kTasks), c.checks);
            EXPECT_EQ(m_User.m_Faults.size(), static_cast<std::size_t>(c.dialogs));
            m_User.m_Faults.clear();
            user.Press(IDCANCEL);
        });
    }
}

TEST_F(FilterTest, PressesReachTheEntriesOfAScrolledListAndRedrawThem) {
    OpenSmallLog();
    Filter([](DialogUser& user) {
        CChkListBox& list = ListOf(user, kTasks);
        list.SetTopIndex(2);
        list.TakeInvalidRect();
        PressCheck(user, kTasks, 3);
        EXPECT_EQ(Checks(user, kTasks), "xxx.x");
        EXPECT_EQ(list.TakeInvalidRect(), CRect(0, 16, kWidthOfLists, 32));
        user.Press(IDCANCEL);
    });
}

TEST_F(FilterTest, SpaceTogglesTheSelectedEntry) {
    OpenSmallLog();
    Filter([](DialogUser& user) {
        ListOf(user, kTasks).SetFocus();
        user.Key(VK_SPACE);
        EXPECT_EQ(Checks(user, kTasks), "xxxxx") << "none is selected";
        user.Select(kTasks, 2);
        user.Key(VK_SPACE);
        EXPECT_EQ(Checks(user, kTasks), "xx.xx");
        user.Key(VK_SPACE);
        EXPECT_EQ(Checks(user, kTasks), "xxxxx");
        user.Press(IDCANCEL);
    });
}

// Of entries that share a key the first one of the list decides, in a log and in a file.
TEST_F(FilterTest, NamesThatEndAlikeShareAColor) {
    LogOf(1000);
    Names({"A_TASK", "B_TASK"});
    m_Document.emplace();
    Open();
    FilterAndAccept([&](DialogUser& user) {
        m_User.OnColorDialog(kRed);
        PressColor(user, kTasks, 0);
        m_User.OnColorDialog(kGreen);
        PressColor(user, kTasks, 1);
    });
    EXPECT_EQ(m_Document->m_JobColor.Lookup(ColorKey("TASK")), kRed);
    Filter([&](DialogUser& user) {
        FilterFile file;
        file.m_Sections[FilterFile::kTasks] = {{ColorKey("TASK"), 1, kRed},
                                               {ColorKey("TASK"), 0, kGreen}};
        ImportBytes(user, file);
        EXPECT_EQ(Checks(user, kTasks), "..x");
        EXPECT_THAT(Colors(user, kTasks), ElementsAre(kGreen, kGreen, 0xB4B4B4U));
        user.Press(IDCANCEL);
    });
}

// --- The file ------------------------------------------------------------------------------------

TEST_F(FilterTest, ExportWritesWhatTheListsShow) {
    OpenSmallLog();
    Filter([&](DialogUser& user) {
        PressCheck(user, kExtras, 0);
        m_User.OnColorDialog(kRed);
        PressColor(user, kExtras, 1);
        m_User.OnFileDialog(m_Path);
        user.Press("Export");
        user.Press(IDCANCEL);
    });
    FilterFile file;
    std::string error;
    ASSERT_TRUE(file.Read(m_Path, error)) << error;
    const COLORREF emi = m_Document->m_ExtraColor.Lookup(0);
    EXPECT_THAT(file.m_Sections[FilterFile::kExtraValues],
                ElementsAre(FilterRecord{1, 1, kRed}, FilterRecord{0, 0, emi}));
    EXPECT_EQ(file.m_Sections[FilterFile::kTasks].front().m_Key, ColorKey("MAIN"));
    EXPECT_THAT(file.m_Sections[FilterFile::kLabels],
                ElementsAre(FilterRecord{1, 1, 0xFFFFFF}, FilterRecord{0, 1, 0xFFFFFF}));
    EXPECT_THAT(m_User.m_FileFilters, ElementsAre("Text file (*.txt)|*.txt|All files (*.*)|*.*||"));
}

TEST_F(FilterTest, AnEmptyLogHasAFileOfEmptySections) {
    Open();
    Filter([&](DialogUser& user) {
        m_User.OnFileDialog(m_Path);
        user.Press(kExport);
        user.Press(IDOK);
    });
    EXPECT_EQ(std::filesystem::file_size(m_Path), 14U + 4 * 4);
}

TEST_F(FilterTest, ImportBringsBackWhatWasExported) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        vesk::FillRandomList(Log(), seed, 200);
        m_Document.reset();
        m_Document.emplace();
        Open();
        vesk::Dice dice(seed);
        Choice exported, imported;
        FilterAndAccept([&](DialogUser& user) {
            for (const int id : kLists)
                for (int i = 0; i < ListOf(user, id).GetCount(); ++i)
                    if (dice.OnceIn(2)) ListOf(user, id).Toggle(i);
            m_User.OnFileDialog(m_Path);
            user.Press(kExport);
            exported = ChoiceOf(user);
            for (const int button : {3, 6, 7, 10}) user.Press(button);
            if (dice.OnceIn(2)) Import(user, m_Path);
        });
        Filter([&](DialogUser& user) {
            Import(user, m_Path);
            imported = ChoiceOf(user);
            user.Press(IDCANCEL);
        });
        EXPECT_EQ(imported, exported);
    }
}

TEST_F(FilterTest, ImportFitsWhereKeysAgree) {
    OpenSmallLog();
    FilterAndAccept([&](DialogUser& user) {
        FilterFile file;
        file.m_Sections[FilterFile::kTasks] = {{ColorKey("UNKNOWN"), 0, kRed},
                                               {ColorKey("APP"), 0, kRed}};
        file.m_Sections[FilterFile::kFunctions] = {{ColorKey("gun"), 2, kGreen}};
        file.m_Sections[FilterFile::kExtraValues] = {{5, 0, kRed}, {-1, 0, kRed}};
        file.m_Sections[FilterFile::kLabels] = {{1, 0, 0xFFFFFF}};
        ListOf(user, kTasks).TakeInvalidRect();
        ImportBytes(user, file);
        EXPECT_FALSE(ListOf(user, kTasks).TakeInvalidRect().IsRectEmpty());
        EXPECT_EQ(Checks(user, kTasks), "xx.xx");
        EXPECT_EQ(Checks(user, kFunctions), "xx");
        EXPECT_EQ(Checks(user, kExtras), "xx");
        EXPECT_EQ(Checks(user, kLabels), "x.");
    });
    EXPECT_THAT(View().m_RelativeList, Not(Contains("APP")));
    EXPECT_EQ(m_Document->m_JobColor.Lookup(ColorKey("APP")), kRed);
    EXPECT_FALSE(m_Document->m_JobColor.m_Colors.contains(ColorKey("UNKNOWN")));
    EXPECT_EQ(Log().m_CustomShown, Flags({true, false})) << "of functions, only 1 is on";
    EXPECT_EQ(m_Document->m_CustomColor.Lookup(ColorKey("gun")), kGreen);
}

TEST_F(FilterTest, RefusedFilesAreToldAndChangeNothing) {
    OpenSmallLog();
    const TemporaryFile foreign("VESKFilm"), later(std::string("VESKFilter\2\0\0\0", 14));
    Filter([&](DialogUser& user) {
        user.Press(4);
        const Choice before = ChoiceOf(user);
        for (const std::string& path : {std::string("/no/such/file"), foreign.Path(), later.Path()})
            Import(user, path);
        EXPECT_EQ(ChoiceOf(user), before);
        m_User.OnFileDialog("");
        user.Press(kImport);
        m_User.OnFileDialog("");
        user.Press(kExport);
        m_User.OnFileDialog("/no/such/file.txt");
        user.Press(kExport);
        EXPECT_FALSE(user.Dialog().HasEnded());
        user.Press(IDCANCEL);
    });
    EXPECT_THAT(m_User.m_Messages,
                ElementsAre("Can't open file.", "Incorrect VESK filter file.",
                            "Please use the latest Trawler to import this file.",
                            "Can't create file : /no/such/file.txt. Error code: 2"));
}

// --- Without a document, and drawing -------------------------------------------------------------

TEST_F(FilterTest, WithoutADocumentThereAreNoColors) {
    OpenSmallLog();
    m_Document.reset();
    FilterAndAccept([](DialogUser& user) {
        EXPECT_EQ(CWnd::GetFocus(), nullptr);
        EXPECT_THAT(Colors(user, kExtras), ElementsAre(0xFFFFFFU, 0xFFFFFFU));
        PressCheck(user, kExtras, 1);
    });
    EXPECT_EQ(View().m_ExtraShown, Flags({true, false}));
}

Texts Drawn(CChkListBox& list, int index, unsigned state) {
    vesk::RecordingSurface surface({100, 100});
    CDC dc(&surface);
    DRAWITEMSTRUCT item;
    item.itemID = index;
    item.itemState = state;
    item.hDC = &dc;
    item.rcItem = {0, 16, 120, 32};
    list.DrawItem(&item);
    return surface.Lines();
}

TEST_F(FilterTest, AnEntryIsBoxTextAndSquare) {
    CChkListBox list;
    list.AddEntry("MAIN", {1, 1, kRed});
    list.AddEntry("", {2, 0, 0xFFFFFF});
    list.AddEntry("A name that does not fit", {3, 0, kRed});
    const auto hex = [](int color) { return vesk::FormatText("%06X", GetSysColor(color)); };
    const std::string window = hex(COLOR_WINDOW), text = hex(COLOR_WINDOWTEXT);
    const std::string chosen = hex(COLOR_HIGHLIGHT), chosenText = hex(COLOR_HIGHLIGHTTEXT);
    const std::string box = "rect 4,18 12x12 solid 1 ";
    EXPECT_THAT(Drawn(list, 0, 0),
                ElementsAre("fill 0,16 120x16 " + window, box + text + " on " + window,
                            "line 6,24 > 8,26 solid 2 " + text, "line 8,26 > 14,20 solid 2 " + text,
                            "text 19,17 \"MAIN\" " + text,
                            "rect 105,18 12x12 solid 1 " + text + " on 0000FF"));
    EXPECT_THAT(Drawn(list, 0, ODS_SELECTED),
                testing::AllOf(Contains("fill 0,16 120x16 " + chosen),
                               Contains("text 19,17 \"MAIN\" " + chosenText)));
    EXPECT_THAT(Drawn(list, 0, ODS_SELECTED | ODS_DISABLED),
                testing::AllOf(Contains("fill 0,16 120x16 " + window),
                               Contains("text 19,17 \"MAIN\" " + hex(COLOR_GRAYTEXT))));
    EXPECT_THAT(Drawn(list, 2, 0), Contains(testing::HasSubstr("...\"")));
    EXPECT_THAT(Drawn(list, 3, 0), IsEmpty());
    list.m_ShowCheck = false;
    EXPECT_THAT(Drawn(list, 1, 0), ElementsAre("fill 0,16 120x16 " + window,
                                               "text 3,17 \"Item 1 is null !\" " + text));
}

}  // namespace
