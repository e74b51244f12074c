#include "host/SummaryView.h"
#include "platform/CDC.h"
#include "platform/Keys.h"
#include "platform/RecordingSurface.h"
#include "platform/SystemMetrics.h"
#include "tests/host/HostFrames.h"

namespace vesk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

// Seven pixels a character.
int Measure(std::string_view text) {
    return 7 * static_cast<int>(text.size());
}

TEST(SummaryText, GroupsDigitsByThree) {
    const struct {
        std::uint64_t number;
        const char* text;
    } cases[] = {{0, "0"},
                 {999, "999"},
                 {1000, "1,000"},
                 {123456, "123,456"},
                 {18446744073709551615U, "18,446,744,073,709,551,615"}};
    for (const auto& c : cases) EXPECT_EQ(GroupedNumber(c.number), c.text);
}

TEST(SummaryText, IsCutToItsWidth) {
    const struct {
        const char* what;
        std::string text;
        int width;
        std::string cut;
    } cases[] = {
        {"fits exactly", "MAIN", 28, "MAIN"},
        {"one pixel short", "MAINS", 34, "M..."},
        {"room for the dots", "MAIN", 21, "..."},
        {"no room for the dots", "MAIN", 20, ""},
        {"nothing to show", "", 0, ""},
        {"no room at all", "MAIN", -5, ""},
        {"far too long", std::string(100000, 'x'), 70, "xxxxxxx..."},
    };
    for (const auto& c : cases) EXPECT_EQ(CutToWidth(c.text, c.width, Measure), c.cut) << c.what;
}

// --- Layout --------------------------------------------------------------------------------------

std::vector<SummaryGroup> ThreeGroups() {
    std::vector<SummaryGroup> groups(3);
    groups[0].m_Entries.assign(9, {"Hardware events", "1,234,567 QBit", 0});
    groups[1].m_Colors = SummaryColors::kJobs;
    groups[1].m_Entries.assign(100, {"MAIN", "12", 0});
    groups[2].m_Entries.assign(7, {std::string(1000, 'n'), std::string(1000, 'v'), 0});
    return groups;
}

bool Overlap(const CRect& a, const CRect& b) {
    return CRect().IntersectRect(a, b);
}

TEST(SummaryLayout, KeepsCellsApartAndWithinThePage) {
    const auto groups = ThreeGroups();
    for (const int width : {0, 40, 100, 333, 640, 1920, 10000}) {
        SCOPED_TRACE(width);
        const SummaryLayout layout = LayOutSummary(groups, width, 13, Measure);
        ASSERT_EQ(layout.m_Blocks.size(), groups.size());
        int bottom = 0;
        for (std::size_t g = 0; g < groups.size(); ++g) {
            const SummaryBlock& block = layout.m_Blocks[g];
            EXPECT_GE(block.m_TitleTop, bottom);
            EXPECT_GT(block.m_RowsTop, block.m_TitleTop + 13);
            bottom = block.Bottom();
            std::vector<CRect> cells;
            for (int i = 0; i < static_cast<int>(groups[g].m_Entries.size()); ++i) {
                const CRect cell = block.Cell(i);
                EXPECT_LE(cell.bottom, bottom);
                EXPECT_GE(block.m_NameWidth, 0);
                EXPECT_GE(block.m_ValueWidth, 0);
                EXPECT_TRUE(width < 100 || cell.right <= width);
                for (const CRect& other : cells) ASSERT_FALSE(Overlap(cell, other));
                cells.push_back(cell);
            }
        }
        EXPECT_GT(layout.m_Height, bottom);
    }
}

TEST(SummaryLayout, UsesTheRoomOfAWideWindow) {
    const auto groups = ThreeGroups();
    const auto columns = [&](int width) {
        return LayOutSummary(groups, width, 13, Measure).m_Blocks[1].m_Columns;
    };
    EXPECT_EQ(columns(100), 1);
    EXPECT_GT(columns(400), 2);
    EXPECT_GT(columns(1600), 4 * columns(400) - 4);
    const auto narrow = LayOutSummary(groups, 400, 13, Measure);
    EXPECT_GT(narrow.m_Height, LayOutSummary(groups, 1600, 13, Measure).m_Height);
}

TEST(SummaryLayout, FindsTheRowsThatAStretchTouches) {
    SummaryBlock block;
    block.m_RowsTop = 100;
    block.m_RowHeight = 10;
    block.m_Rows = 5;
    const struct {
        int top, bottom, first, last;
    } cases[] = {{0, 100, 0, 0},   {0, 101, 0, 1},   {100, 110, 0, 1}, {109, 111, 0, 2},
                 {110, 120, 1, 2}, {149, 500, 4, 5}, {150, 500, 5, 5}, {900, 901, 5, 5}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.top);
        EXPECT_EQ(block.FirstRow(c.top), c.first);
        EXPECT_EQ(block.LastRow(c.bottom), c.last);
        EXPECT_EQ(block.MovedUp(70).FirstRow(c.top - 70), c.first);
        EXPECT_EQ(block.MovedUp(170).LastRow(c.bottom - 170), c.last);
    }
}

// --- View ----------------------------------------------------------------------------------------

// A summary of the shared list in a frame of the main window.
class Summary : public HostTest {
protected:
    SummaryView& OpenSummary(int width, int height) {
        m_Document = dynamic_cast<VESKUIDoc*>(m_Template.OpenNewDocument());
        CMDIChildWnd* const frame = m_Main.MDIGetActive();
        frame->MoveWindow(0, 0, width, height);
        return m_View = dynamic_cast<SummaryView*>(frame->GetActiveView()), *m_View;
    }

    RecordingSurface Record() const {
        CRect client;
        m_View->GetClientRect(&client);
        m_View->Invalidate();
        RecordingSurface surface({client.Width(), client.Height()});
        CDC dc(&surface);
        m_View->Paint(dc);
        return surface;
    }

    int Press(unsigned key) {
        m_View->OnKeyDown(key, 1, 0);
        return m_View->m_ScrollBar.GetScrollPos();
    }
    int Act(unsigned code, int track = 0) {
        m_View->m_ScrollBar.Act(code, track);
        return m_View->m_ScrollBar.GetScrollPos();
    }

    void ManyTasks(int count) {
        for (int i = 0; i < count; ++i) Task("T" + std::to_string(100000 + i));
    }

    CMDIFrameWnd m_Main;
    CMultiDocTemplate m_Template{0, RuntimeClass<VESKUIDoc>("VESKUIDoc"),
                                 RuntimeClass<CMcuChildFrame>("CMcuChildFrame"),
                                 RuntimeClass<SummaryView>("SummaryView")};
    VESKUIDoc* m_Document = nullptr;
    SummaryView* m_View = nullptr;
};

TEST_F(Summary, TellsWhatIsInASampleLog) {
    ReadSample("pacman_packets");
    OpenSummary(1200, 4000);
    const std::vector<std::string> texts = Record().Texts();
    for (const char* text : {"pacman_packets.bin", "packets behind a header, version 3",
                             "USCNT, 32 bits", "Losses", "Tasks and interrupts (27)"})
        EXPECT_THAT(texts, Contains(text));
    for (const auto& [name, count] : Jobs().m_JobNames) {
        EXPECT_THAT(texts, Contains(name));
        EXPECT_THAT(texts, Contains(GroupedNumber(static_cast<std::uint64_t>(count))));
    }
    for (const auto& [name, total] : Jobs().m_CustomNames) EXPECT_THAT(texts, Contains(name));
    for (const CString& name : Jobs().m_ExtraNames) EXPECT_THAT(texts, Contains(name.Str()));
    for (const auto& [name, count] : Jobs().m_SourceMarkNames) EXPECT_THAT(texts, Contains(name));
    for (const auto& [name, events] : Jobs().m_HWJobs) EXPECT_THAT(texts, Contains(name));
}

TEST_F(Summary, ShowsTimesInQBitAndMilliseconds) {
    Jobs().m_FileName = "/some/folder/small.bin";
    Jobs().m_EndTime = 1300;
    Jobs().m_IdleTotal = 325;
    Function("func");
    Jobs().m_CustomNames["func"] = 13;
    OpenSummary(900, 600);
    const std::vector<std::string> texts = Record().Texts();
    for (const char* text : {"small.bin", "1,300 QBit (1.200 ms)", "25.0 %", "none", "0.012 ms"})
        EXPECT_THAT(texts, Contains(text));
    EXPECT_THAT(texts, Not(Contains("Source marks (0)")));
}

TEST_F(Summary, ShowsNamesInTheColoursOfTheDocument) {
    Task("AAAA");
    OpenSummary(900, 600);
    m_Document->m_JobColor.Update(ColorKey("AAAA"), 0x00ABCDEF);
    const std::vector<std::string> lines = Record().Lines();
    EXPECT_THAT(lines, Contains(testing::HasSubstr("ABCDEF")));
    EXPECT_THAT(lines, Not(Contains(testing::HasSubstr("241CED"))));
}

TEST_F(Summary, IsEmptyWithoutAList) {
    vesk_dll_shared_data.m_pJobList = nullptr;
    OpenSummary(900, 600);
    EXPECT_THAT(Record().Texts(), IsEmpty());
    EXPECT_EQ(Press(VK_END), 0);
}

TEST_F(Summary, TakesOverAnotherLogWhenItIsReloaded) {
    ManyTasks(1000);
    SummaryView& view = OpenSummary(400, 300);
    EXPECT_GT(Press(VK_END), 0);
    Jobs().m_JobNames = {{"LATER", 1}};
    view.ReloadLog();
    EXPECT_EQ(view.m_ScrollBar.GetScrollPos(), 0);
    EXPECT_THAT(Record().Texts(), Contains("LATER"));
}

TEST_F(Summary, ScrollsByKeys) {
    ManyTasks(1000);
    SummaryView& view = OpenSummary(400, 300);
    const int line = view.Layout().m_Blocks.front().m_RowHeight;
    const int end = view.Layout().m_Height - 300;
    EXPECT_EQ(Press(VK_UP), 0);
    EXPECT_EQ(Press(VK_DOWN), line);
    EXPECT_EQ(Press(VK_NEXT), 300);
    EXPECT_EQ(Press(VK_PRIOR), line);
    EXPECT_EQ(Press(VK_UP), 0);
    EXPECT_EQ(Press(VK_END), end);
    EXPECT_EQ(Press(VK_NEXT), end);
    EXPECT_EQ(Press(VK_F3), end);
    EXPECT_EQ(Press(VK_HOME), 0);
}

TEST_F(Summary, ScrollsByItsBar) {
    ManyTasks(1000);
    SummaryView& view = OpenSummary(400, 300);
    const int line = view.Layout().m_Blocks.front().m_RowHeight;
    EXPECT_EQ(Act(SB_LINEDOWN), line);
    EXPECT_EQ(Act(SB_PAGEDOWN), 300);
    EXPECT_EQ(Act(SB_THUMBTRACK, 77), 77);
    view.TakeInvalidRect();
    EXPECT_EQ(Act(SB_ENDSCROLL), 77);
    EXPECT_TRUE(view.TakeInvalidRect().IsRectEmpty()) << "nothing moved";
    EXPECT_EQ(Act(SB_TOP), 0);
    EXPECT_FALSE(view.TakeInvalidRect().IsRectEmpty());
    EXPECT_EQ(Act(SB_BOTTOM), view.Layout().m_Height - 300);
}

TEST_F(Summary, HasItsBarAtTheRightEdgeAndOnlyWhereItIsNeeded) {
    ManyTasks(100);
    SummaryView& view = OpenSummary(400, 200);
    CRect bar;
    view.m_ScrollBar.GetWindowRect(&bar);
    EXPECT_EQ(bar, (CRect{400 - GetSystemMetrics(SM_CXVSCROLL), 0, 400, 200}));
    EXPECT_TRUE(view.m_ScrollBar.IsWindowVisible());
    EXPECT_GT(Press(VK_END), 0);
    m_Main.MDIGetActive()->MoveWindow(0, 0, 1000, 3000);
    EXPECT_FALSE(view.m_ScrollBar.IsWindowVisible());
    EXPECT_EQ(view.m_ScrollBar.GetScrollPos(), 0);
    m_Main.MDIGetActive()->MoveWindow(0, 0, 0, 0);
}

TEST_F(Summary, ShowsOtherNamesFurtherDown) {
    ManyTasks(1000);
    OpenSummary(200, 300);
    const std::vector<std::string> top = Record().Texts();
    EXPECT_THAT(top, Contains("T100000"));
    EXPECT_THAT(top, Not(Contains("T100999")));
    Press(VK_END);
    const std::vector<std::string> end = Record().Texts();
    EXPECT_THAT(end, Contains("T100999"));
    EXPECT_THAT(end, Not(Contains("T100000")));
}

TEST_F(Summary, PaintsOnlyWhatIsInSight) {
    ManyTasks(50000);
    OpenSummary(400, 300);
    Press(VK_NEXT);
    EXPECT_LT(Record().Lines().size(), 500U);
}

// What is painted in pieces is what is painted at once.
TEST_F(Summary, PaintsAStripAsItPaintsTheWhole) {
    ReadSample("esp32_ticks");
    OpenSummary(500, 400);
    const std::vector<std::string> whole = Record().Lines();
    const CRect strip{0, 100, 500, 140};
    m_View->TakeInvalidRect();
    m_View->InvalidateRect(&strip);
    RecordingSurface surface({500, 400});
    CDC dc(&surface);
    m_View->Paint(dc);
    std::vector<std::string> lines = surface.Lines();
    EXPECT_GT(lines.size(), 3U);
    EXPECT_LT(lines.size(), whole.size());
    for (const std::string& line : lines) {
        if (line.starts_with("fill 0,")) continue;  // the ground, of the strip alone
        EXPECT_THAT(whole, Contains(line));
    }
}

}  // namespace
}  // namespace vesk
