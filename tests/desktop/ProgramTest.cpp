// The viewer in its real windows, worked with mouse and keys.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QToolBar>
#include <filesystem>

#include "desktop/ProgressDialog.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "simulator/RecordIds.h"
#include "tests/desktop/DeskFolder.h"
#include "tests/desktop/Viewer.h"
#include "tests/log/LogBytes.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kUnit = 1824, kUnitSize = 1821, kSplit = 1418, kUnits = 1825;
constexpr int kRawFile = 1000, kHeaderFile = 1819;

class ProgramTest : public testing::Test {
protected:
    ProgramTest() { Start(); }
    ~ProgramTest() override { Stop(); }

    void Start() { m_Viewer = std::make_unique<Viewer>(m_Folder / "state.json"); }
    void Stop() {
        EXPECT_THAT(m_Viewer->Unexpected(), IsEmpty());
        m_Viewer.reset();
    }

    bool OpenWhole(const std::string& path) {
        return m_Viewer->Session().Open({path, {}}, PartToRead::kWhole);
    }
    void ChooseFile(const std::string& path) {
        m_Viewer->Expect([path](QWidget& window) {
            auto* const name = window.findChild<QLineEdit*>("fileNameEdit");
            QTest::keyClicks(name, QString::fromStdString(path));
            QTest::keyClick(name, Qt::Key_Return);
        });
    }
    void AnswerSplit(int button) {
        m_Viewer->ExpectDialog([button](DialogWindow& dialog) { Click(dialog, button); });
    }
    static std::size_t Jobs() { return vesk_dll_shared_data.m_pJobList->size(); }

    DeskFolder m_Folder;
    std::unique_ptr<Viewer> m_Viewer;
};

// 7 MB, enough for several calls of the progress.
std::string LongLog() {
    std::string bytes;
    for (std::uint32_t i = 0; i < 600000; ++i)
        bytes += Words({i % 2 ? record::Mark("m") : record::Task("T"), 5000U << 16 | i % 5000, 0});
    return LogBuilder().WithHeader(3).Raw(bytes).Bytes();
}

TEST_F(ProgramTest, OpensALogThroughTheMenuAndTheSplitDialog) {
    ChooseFile(Sample("pacman_packets.bin"));
    m_Viewer->ExpectDialog([](DialogWindow& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Split  Vesk File");
        EXPECT_FALSE(dialog.WidgetOf(kSplit)->isEnabled());
        Click(dialog, kUnit);
        EXPECT_TRUE(dialog.WidgetOf(kSplit)->isEnabled());
        Type(dialog, kUnitSize, "400");
        Click(dialog, kSplit);
        auto& units = dynamic_cast<QListView&>(*dialog.WidgetOf(kUnits));
        ASSERT_EQ(units.model()->rowCount(), 3);
        QTest::mouseClick(units.viewport(), Qt::LeftButton, {},
                          units.visualRect(units.model()->index(1, 0)).center());
        QTest::keyClick(&units, Qt::Key_Return);
    });
    m_Viewer->ClickMenu({"File", "Open..."});

    ASSERT_EQ(m_Viewer->Frames(), 1);
    EXPECT_EQ(m_Viewer->Frame()->windowTitle(), "pacman_packets.bin");
    EXPECT_GT(Jobs(), 0U);
    EXPECT_LT(Jobs(), 1158U);
}

TEST_F(ProgramTest, OpensALogWithAnotherHeaderByKeys) {
    const LogBuilder log = LogBuilder().Task("MAIN", 100).Irq(3, 140).WithHeader(3);
    const std::string header = m_Folder.Write("header.bin", log.Bytes());
    const std::string raw = m_Folder.Write("raw.bin", log.Bytes().substr(1036));
    m_Viewer->ExpectDialog([&](DialogWindow& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Display Vesk With Another Header File");
        QTest::keyClicks(dialog.focusWidget(), QString::fromStdString(raw));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(dialog.focusWidget(), QString::fromStdString(header));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    m_Viewer->ExpectDialog(
        [](DialogWindow& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); });
    m_Viewer->ClickMenu({"Vesk", "Display Vesk With Another Header File..."});

    ASSERT_EQ(m_Viewer->Frames(), 1);
    EXPECT_EQ(m_Viewer->Frame()->windowTitle(), "raw.bin");
    EXPECT_EQ(m_Viewer->Session().Files(), (LogFiles{raw, header}));
}

TEST_F(ProgramTest, TellsWhatIsOpenInTheStatusBar) {
    EXPECT_EQ(m_Viewer->StatusText(), "|No log is open.");
    ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
    const std::string text = m_Viewer->StatusText().toStdString();
    EXPECT_THAT(text, HasSubstr(Sample("esp32_ticks.bin")));
    EXPECT_THAT(text, HasSubstr("622 jobs"));
    EXPECT_THAT(text, HasSubstr(" ms"));
    EXPECT_THAT(text, HasSubstr("esp32_ticks.target.json"));
}

TEST_F(ProgramTest, ALongReadCanBeCancelledInItsProgressDialog) {
    const std::string log = m_Folder.Write("long.bin", LongLog());
    m_Viewer->User().m_ProgressDelay = 0;
    bool shown = false;
    QTimer::singleShot(0, [&] {
        const QWidget* const dialog = QApplication::activeModalWidget();
        shown = dynamic_cast<const ProgressDialog*>(dialog) != nullptr;
        if (shown) QTest::mouseClick(dialog->findChild<QPushButton*>(), Qt::LeftButton);
    });
    EXPECT_FALSE(OpenWhole(log));
    EXPECT_TRUE(shown);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(m_Viewer->Frames(), 0);

    m_Viewer->User().m_ProgressDelay = 60000;
    EXPECT_TRUE(OpenWhole(log));
}

TEST_F(ProgramTest, ADroppedFileIsOpenedOfSeveralTheFirst) {
    m_Viewer->ExpectDialog([](DialogWindow& dialog) { Click(dialog, IDOK); });
    m_Viewer->Drop({Sample("esp32_ticks.bin"), Sample("pacman_packets.bin")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_Viewer->Frames() == 1; }));
    EXPECT_EQ(m_Viewer->Frame()->windowTitle(), "esp32_ticks.bin");
    EXPECT_THAT(m_Viewer->StatusText().toStdString(), HasSubstr("Of 2 files"));
}

TEST_F(ProgramTest, RecentFilesAreOfferedAndThoseThatAreGoneAreDropped) {
    emit m_Viewer->MenuEntry({"File"})->menu()->aboutToShow();
    EXPECT_FALSE(m_Viewer->MenuEntry({"File", "Recent files"})->isEnabled());
    const std::string log = m_Folder.CopySample("esp32_ticks.bin", "copy.bin");
    ASSERT_TRUE(OpenWhole(log));
    ASSERT_TRUE(OpenWhole(Sample("pacman_packets.bin")));
    AnswerSplit(IDOK);
    m_Viewer->ClickMenu({"File", "Recent files", QString::fromStdString(log)});
    EXPECT_EQ(m_Viewer->Frame()->windowTitle().toStdString(), "copy.bin");

    std::filesystem::remove(log);
    std::string message;
    m_Viewer->ExpectMessage(message);
    m_Viewer->ClickMenu({"File", "Recent files", QString::fromStdString(log)});
    EXPECT_THAT(message, HasSubstr("no longer there"));
    EXPECT_THAT(m_Viewer->State().m_Recent.All(),
                ElementsAre(LogFiles{Sample("pacman_packets.bin"), {}}));
}

TEST_F(ProgramTest, AnErrorStandsInABoxAndTheProgramGoesOn) {
    const std::string bad =
        m_Folder.Write("bad.bin", LogBuilder().WithIdentifier("VESKBINV", 9).Bytes());
    std::string message;
    m_Viewer->ExpectMessage(message);
    EXPECT_FALSE(OpenWhole(bad));
    EXPECT_THAT(message, HasSubstr("not supported"));
    EXPECT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
}

TEST_F(ProgramTest, CommandsWithoutAViewAreDisabledAndNotMissing) {
    ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
    const struct {
        std::vector<QString> m_Entry;
        bool m_Enabled;
    } cases[] = {
        {{"Vesk", "Config Vesk..."}, false},
        {{"Vesk", "Display Vesk..."}, true},
        {{"Vesk", "Vesk Statistics..."}, false},
        {{"Vesk", "Concurrent Options", "IPC Usage Ratio..."}, false},
        {{"Mcu", "Go To ..."}, true},
        {{"About", "Infomation"}, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_Entry.back().toStdString());
        QAction* const entry = m_Viewer->MenuEntry(c.m_Entry);
        for (std::size_t depth = 1; depth < c.m_Entry.size(); ++depth)
            emit m_Viewer->MenuEntry({c.m_Entry.begin(), c.m_Entry.begin() + depth})
                ->menu()
                ->aboutToShow();
        EXPECT_EQ(entry->isEnabled(), c.m_Enabled);
    }
    const QList<QAction*> buttons = m_Viewer->Window().findChild<QToolBar*>()->actions();
    ASSERT_EQ(buttons.size(), 13);
    EXPECT_TRUE(buttons[0]->isEnabled());
    EXPECT_FALSE(buttons[1]->isEnabled());
}

TEST_F(ProgramTest, TheTimelinesMenuIsThereWhileItsFrameIs) {
    const auto shown = [&] { return m_Viewer->MenuEntry({"Mcu"})->isVisible(); };
    EXPECT_FALSE(shown());
    ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
    EXPECT_TRUE(shown());
    m_Viewer->Frame()->showNormal();
    m_Viewer->ClickMenu({"File", "Close"});
    EXPECT_EQ(m_Viewer->Frames(), 0);
    EXPECT_FALSE(shown());
    EXPECT_FALSE(m_Viewer->Session().IsOpen());
    EXPECT_EQ(m_Viewer->StatusText(), "|No log is open.");
}

TEST_F(ProgramTest, TheCloseKeyClosesTheFrameHoweverItIsShown) {
    for (const bool maximized : {true, false}) {
        SCOPED_TRACE(maximized);
        ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
        if (!maximized) m_Viewer->Frame()->showNormal();
        m_Viewer->PressKey(Qt::Key_W, Qt::ControlModifier);
        EXPECT_EQ(m_Viewer->Frames(), 0);
        EXPECT_FALSE(m_Viewer->Session().IsOpen());
    }
}

TEST_F(ProgramTest, ClosingTheFrameByItsBoxClosesTheLog) {
    ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
    m_Viewer->Frame()->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_Viewer->Session().IsOpen(); }));
    EXPECT_EQ(vesk_dll_shared_data.m_pMcuFrame, nullptr);
}

TEST_F(ProgramTest, TheOpenKeyAsksForALog) {
    ChooseFile(Sample("esp32_ticks.bin"));
    AnswerSplit(IDOK);
    m_Viewer->PressKey(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(Jobs(), 622U);
}

TEST_F(ProgramTest, TheInformationIsInTheMenu) {
    std::string text;
    m_Viewer->ExpectMessage(text);
    m_Viewer->ClickMenu({"About", "Infomation"});
    EXPECT_THAT(text, HasSubstr("veskview " VESK_VERSION));
    EXPECT_THAT(text, HasSubstr("No log is open."));
}

TEST_F(ProgramTest, AChosenTargetDescriptionIsUsedAgainInTheNextRun) {
    const std::string log = m_Folder.CopySample("esp32_ticks.bin", "log.bin");
    const std::string target = m_Folder.CopySample("esp32_ticks.target.json", "names.json");
    ASSERT_TRUE(OpenWhole(log));
    EXPECT_FALSE(vesk_dll_shared_data.m_pJobList->m_JobNames.contains("IRQ_CTIRQ1"));
    ChooseFile(target);
    AnswerSplit(IDOK);
    m_Viewer->ClickMenu({"File", "Target description..."});
    EXPECT_TRUE(vesk_dll_shared_data.m_pJobList->m_JobNames.contains("IRQ_CTIRQ1"));

    Stop();
    Start();
    ASSERT_TRUE(OpenWhole(log));
    EXPECT_TRUE(vesk_dll_shared_data.m_pJobList->m_JobNames.contains("IRQ_CTIRQ1"));
    EXPECT_THAT(m_Viewer->State().m_Recent.All(), ElementsAre(LogFiles{log, {}}));
}

TEST_F(ProgramTest, PlacementsAreKeptFromRunToRun) {
    ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
    EXPECT_TRUE(m_Viewer->Frame()->isMaximized());  // as long as nobody has placed it
    m_Viewer->Frame()->showNormal();
    m_Viewer->Frame()->setGeometry(40, 30, 420, 310);
    m_Viewer->Window().resize(700, 500);

    Stop();
    Start();
    EXPECT_EQ(m_Viewer->State().m_Tabs.at(0).m_Name, "Default");
    ASSERT_TRUE(OpenWhole(Sample("esp32_ticks.bin")));
    EXPECT_FALSE(m_Viewer->Frame()->isMaximized());
    EXPECT_EQ(m_Viewer->Frame()->geometry(), QRect(40, 30, 420, 310));
    m_Viewer->Frame()->showMaximized();

    Stop();
    Start();
    ASSERT_TRUE(OpenWhole(Sample("pacman_packets.bin")));
    EXPECT_TRUE(m_Viewer->Frame()->isMaximized());
    m_Viewer->Frame()->showNormal();
    EXPECT_EQ(m_Viewer->Frame()->geometry(), QRect(40, 30, 420, 310));
}

}  // namespace
}  // namespace vesk
