// The lists beside the timeline, in the real window: search results and markers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QScrollBar>

#include "desktop/MarkerDock.h"
#include "desktop/RowList.h"
#include "desktop/SearchDock.h"
#include "host/CMcuChildFrame.h"
#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "tests/desktop/DeskFolder.h"
#include "tests/desktop/Viewer.h"
#include "timeline/CMcuView.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Texts(const RowList& rows, int row, int columns) {
    std::vector<std::string> texts;
    for (int i = 0; i < columns; ++i) texts.push_back(rows.TextOf(row, i).toStdString());
    return texts;
}

void ClickRow(const RowList& rows, int row) {
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, rows.RowRect(row).center());
}

class DocksTest : public testing::Test {
protected:
    DocksTest() { Start(); }
    ~DocksTest() override { Stop(); }

    void Start() {
        m_Viewer = std::make_unique<Viewer>(m_Folder / "state.json");
        m_Viewer->Window().resize(900, 700);
    }
    void Stop() {
        EXPECT_THAT(m_Viewer->Unexpected(), IsEmpty());
        m_Viewer.reset();
    }
    bool Open(const char* sample) {
        return m_Viewer->Session().Open({Sample(sample), {}}, PartToRead::kWhole);
    }
    template <class Dock>
    Dock& DockOf(const char* name) const {
        return dynamic_cast<Dock&>(*m_Viewer->Window().findChild<QDockWidget*>(name));
    }
    SearchDock& Search() const { return DockOf<SearchDock>("searchResults"); }
    MarkerDock& Markers() const { return DockOf<MarkerDock>("markers"); }
    void Show(const char* name) { m_Viewer->ClickMenu({"Window", name}); }

    static CMcuView& View() {
        return dynamic_cast<CMcuView&>(*vesk_dll_shared_data.m_pMcuFrame->GetActiveView());
    }
    static McuMarkerMap& Table() { return global_vesk_doc_ptr->m_Markers; }
    void Find(const char* text, int kind, bool contextSwitch = true) {
        View().m_FindText = text;
        View().m_FindKind = kind;
        View().m_ContextSwitch = contextSwitch;
    }
    bool HasRows(int count) const {
        return QTest::qWaitFor([&] { return Search().Rows().Count() == count; });
    }
    bool HasMarkers(int count) const {
        return QTest::qWaitFor([&] { return Markers().Rows().Count() == count; });
    }

    DeskFolder m_Folder;
    std::unique_ptr<Viewer> m_Viewer;
};

TEST_F(DocksTest, SearchResultsAreThoseOfTheViewsSearch) {
    ASSERT_TRUE(Open("pacman_packets.bin"));
    Find("pacm", 0);
    Show("Search results");
    ASSERT_TRUE(Search().isVisible());
    const McuJobList& log = *vesk_dll_shared_data.m_pJobList;
    const struct {
        const char* m_Text;
        int m_Kind;
        bool m_ContextSwitch;
        int m_Count;
    } cases[] = {
        {"pacm", 0, true, 180},
        {"PACM", 0, true, 180},
        {"pac", 0, true, 0},
        {"", 0, true, static_cast<int>(log.size())},
        {"", 1, false, static_cast<int>(log.m_CustomJobs.size())},
        {"wa4", 1, true, static_cast<int>(log.m_CustomJobsCS.at("wa4").size())},
        {"WA4", 1, true, 0},
        {"", 2, true, static_cast<int>(log.m_SourceMarks.size())},
    };
    for (const auto& c : cases) {
        Find(c.m_Text, c.m_Kind, c.m_ContextSwitch);
        EXPECT_TRUE(HasRows(c.m_Count))
            << c.m_Text << c.m_Kind << ": " << Search().Rows().Count() << " of " << c.m_Count;
    }
}

TEST_F(DocksTest, AResultTellsItsTimesAndAClickGoesThere) {
    ASSERT_TRUE(Open("esp32_ticks.bin"));
    Find("all0", 0);
    Show("Search results");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Search().Rows().Count() == 11; }));
    RowList& rows = Search().Rows();
    EXPECT_THAT(Texts(rows, 0, 5), ElementsAre("all0", "610", "1,339", "101", "729"));
    EXPECT_EQ(Search().windowTitle(), "Search results: 11 tasks (all0)");
    EXPECT_NO_THROW(m_Viewer->MenuEntry({"Window", "Search results"}));

    ClickRow(rows, 2);
    const std::uint64_t third = View().m_CursorTime;
    EXPECT_EQ(rows.TextOf(2, 1).remove(','), QString::number(third));
    EXPECT_TRUE(View().IsInView(third));
    QTest::keyClick(&rows, Qt::Key_End);
    EXPECT_EQ(View().m_CursorTime, third);
    QTest::keyClick(&rows, Qt::Key_Return);
    EXPECT_EQ(QString::number(View().m_CursorTime), rows.TextOf(rows.Count() - 1, 1).remove(','));
    EXPECT_TRUE(View().IsInView(View().m_CursorTime));
}

TEST_F(DocksTest, TheResultNearestTheCursorIsTheCurrentOne) {
    ASSERT_TRUE(Open("esp32_ticks.bin"));
    Find("all0", 0);
    View().m_CursorTime = 0;
    Show("Search results");
    RowList& rows = Search().Rows();
    ASSERT_TRUE(QTest::qWaitFor([&] { return rows.Current() == 0; }));
    const auto start = [&](int row) { return rows.TextOf(row, 1).remove(',').toULongLong(); };
    const std::uint64_t middle = start(5) + (start(6) - start(5)) / 2;
    View().m_CursorTime = middle + 1;
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows.Current() == 6; }));
    View().m_CursorTime = middle - 1;
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows.Current() == 5; }));
    View().m_CursorTime = ~std::uint64_t{0};
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows.Current() == rows.Count() - 1; }));
    EXPECT_TRUE(rows.viewport()->rect().contains(rows.RowRect(rows.Current())));
}

TEST_F(DocksTest, ResultsGoWithTheirLog) {
    Show("Search results");
    Show("Markers");
    EXPECT_EQ(Search().Rows().Count(), 0);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(Open("esp32_ticks.bin"));
        EXPECT_TRUE(HasRows(622));
        Find("", 1);  // on its way when the next log is opened
        ASSERT_TRUE(Open("pacman_packets.bin"));
        EXPECT_TRUE(HasRows(1158));
    }
    Table().AddMarker(7);
    EXPECT_TRUE(HasMarkers(1));
    m_Viewer->Session().Close();
    EXPECT_TRUE(HasRows(0));
    EXPECT_EQ(Search().windowTitle(), "Search results");
    EXPECT_TRUE(HasMarkers(0));
    QTest::keyClick(&Search().Rows(), Qt::Key_Return);
    QTest::keyClick(&Markers().Rows(), Qt::Key_Delete);
}

TEST_F(DocksTest, MarkersStandInTheOrderOfTheirTimesInTheUnitOfTheAxis) {
    ASSERT_TRUE(Open("esp32_ticks.bin"));
    Table() = {};
    Table().insert({{0, 13000}, {4, 650}, {7, 1300}});
    Show("Markers");
    ASSERT_TRUE(HasMarkers(3));
    const RowList& rows = Markers().Rows();
    EXPECT_THAT(Texts(rows, 0, 4),
                ElementsAre("4", "frame 101, 568", "650", ""));  // of "all0" from 610 on
    View().SetTimeunit(TIMEUNIT_TIME);
    ASSERT_TRUE(QTest::qWaitFor([&] { return rows.TextOf(2, 1) == "12.000 ms"; }));
    EXPECT_THAT(Texts(rows, 1, 4), ElementsAre("7", "1.200 ms", "1,300", "650"));
    View().SetTimeunit(TIMEUNIT_CLOCK);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows.TextOf(2, 1) == "13,000 QBit"; }));
}

TEST_F(DocksTest, AClickOnAMarkerSelectsItAndDeleteRemovesIt) {
    ASSERT_TRUE(Open("pacman_packets.bin"));
    Table() = {};
    for (const std::uint64_t time : {400000, 100, 200000}) Table().AddMarker(time);
    Show("Markers");
    ASSERT_TRUE(HasMarkers(3));
    RowList& rows = Markers().Rows();
    ClickRow(rows, 2);
    EXPECT_EQ(View().m_DragMarkerIndex, 0);
    EXPECT_EQ(View().m_CursorTime, 400000U);
    EXPECT_TRUE(View().IsInView(400000));
    QTest::keyClick(&rows, Qt::Key_Delete);
    EXPECT_EQ(View().m_DragMarkerIndex, -1);
    EXPECT_FALSE(Table().contains(0));
    EXPECT_EQ(rows.Count(), 2);
    EXPECT_EQ(rows.Current(), 1);

    Table().SetMarkerTime(2, 50);  // dragged in the view
    View().m_DragMarkerIndex = 2;
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows.TextOf(0, 2) == "50" && rows.Current() == 0; }));
}

TEST_F(DocksTest, StandWhereTheyStoodInTheLastRun) {
    EXPECT_FALSE(Search().isVisible());
    EXPECT_FALSE(Markers().isVisible());
    Show("Markers");
    m_Viewer->Window().addDockWidget(Qt::RightDockWidgetArea, &Markers());
    m_Viewer->Window().resizeDocks({&Markers()}, {333}, Qt::Horizontal);
    Stop();
    Start();
    EXPECT_FALSE(Search().isVisible());
    EXPECT_TRUE(Markers().isVisible());
    EXPECT_EQ(m_Viewer->Window().dockWidgetArea(&Markers()), Qt::RightDockWidgetArea);
    EXPECT_EQ(Markers().width(), 333);
    m_Viewer->PressKey(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(Markers().isVisible());
}

TEST(RowListTest, AsksForNoMoreTextsThanItShows) {
    RowList rows({{"Name", "", false}, {"Number", "0000000000"}});
    rows.resize(300, 200);
    int asked = 0;
    rows.SetRows(2'000'000'000, [&](int row, int) {
        ++asked;
        return QString::number(row);
    });
    rows.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&rows));
    rows.SetCurrent(1'999'999'999);
    rows.grab();
    EXPECT_TRUE(rows.viewport()->rect().contains(rows.RowRect(1'999'999'999)));
    EXPECT_GT(asked, 0);
    EXPECT_LT(asked, 200);
    QTest::keyClick(&rows, Qt::Key_PageDown);
    EXPECT_EQ(rows.Current(), 1'999'999'999);
    QTest::keyClick(&rows, Qt::Key_Home);
    EXPECT_EQ(rows.Current(), 0);
    QTest::keyClick(&rows, Qt::Key_Up);
    EXPECT_EQ(rows.Current(), 0);
}

TEST(RowListTest, ChoosesWhatIsClickedAndNothingBelowTheLastRow) {
    RowList rows({{"Name", "", false}});
    rows.resize(300, 200);
    std::vector<int> chosen;
    rows.m_OnChosen = [&](int row) { chosen.push_back(row); };
    rows.SetRows(3, [](int row, int) { return QString::number(row); });
    rows.show();
    ClickRow(rows, 1);
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, rows.RowRect(3).center());
    QTest::mouseClick(rows.viewport(), Qt::RightButton, {}, rows.RowRect(2).center());
    EXPECT_THAT(chosen, ElementsAre(1));
}

}  // namespace
}  // namespace vesk
