#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>

#include "desktop/StateFile.h"
#include "desktop/StateJson.h"
#include "desktop/UserState.h"
#include "tests/desktop/DeskFolder.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

UserState FullState() {
    UserState state;
    state.m_Recent.Add({"/logs/old.bin", {}});
    state.m_Recent.Add({"/logs/n\xc3\xa4w.bin", "/logs/header.bin"});
    state.m_Targets.Choose("/logs/old.bin", "/targets/a.json");
    state.m_Targets.Choose("/logs/plain.bin", "");
    WindowInfo info;
    info.m_Placement.showCmd = SW_SHOWMAXIMIZED;
    info.m_Placement.rcNormalPosition = {-10, 20, 300, 400};
    state.m_Tabs = {{{{9, info}}, "Default"}, {{}, "Second"}};
    state.m_MainWindow = std::string("\0\xff geometry", 11);
    return state;
}

QString Path(const std::string& path) {
    return QString::fromStdString(path);
}

TEST(State, ComesBackAsItWasSaved) {
    const DeskFolder folder;
    StateFile file(Path(folder / "deep/down/state.json"));
    EXPECT_EQ(file.Save(FullState()), "");
    UserState read;
    EXPECT_EQ(file.Load(read), "");

    const UserState state = FullState();
    EXPECT_EQ(read.m_Recent.All(), state.m_Recent.All());
    EXPECT_EQ(read.m_Targets.All(), state.m_Targets.All());
    EXPECT_EQ(read.m_Targets.m_Default, "/targets/a.json");
    EXPECT_EQ(read.m_MainWindow, state.m_MainWindow);
    ASSERT_EQ(read.m_Tabs.size(), 2U);
    EXPECT_EQ(read.m_Tabs[1].m_Name, "Second");
    ASSERT_TRUE(read.m_Tabs[0].m_Windows.contains(9));
    EXPECT_EQ(read.m_Tabs[0].m_Windows.at(9).m_Placement,
              state.m_Tabs[0].m_Windows.at(9).m_Placement);
}

TEST(State, AFileThatIsNotThereIsNoTrouble) {
    const DeskFolder folder;
    UserState state;
    EXPECT_EQ(StateFile(Path(folder / "none.json")).Load(state), "");
}

TEST(State, AForeignFileIsLeftOutAndKept) {
    const DeskFolder folder;
    const struct {
        const char* m_What;
        std::string m_Content;
    } cases[] = {
        {"empty", ""},
        {"no JSON", "recent = /logs/old.bin"},
        {"another program's", R"({"program": "other", "format": 1})"},
        {"of a later format", R"({"program": "veskview", "format": 2})"},
        {"nested without end", std::string(100000, '[')},
        {"too large", std::string(5 << 20, ' ')},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_What);
        const std::string path = folder.Write("state.json", c.m_Content);
        StateFile file(Path(path));
        UserState state = FullState();
        EXPECT_NE(file.Load(state), "");
        EXPECT_EQ(state.m_Recent.All().size(), 2U);
        EXPECT_EQ(file.Save(state), "");
        QFile kept(Path(path + ".old"));
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll().toStdString(), c.m_Content);
    }
}

TEST(State, EntriesThatMakeNoSenseAreLeftOut) {
    UserState state;
    ASSERT_TRUE(StateFromJson(R"({"program": "veskview", "format": 1,
        "recent": [7, {"log": 3}, {"log": "/a.bin"}, null],
        "targets": [{"log": "/a.bin"}, {"log": "/b.bin", "target": "/t.json"}, []],
        "lastTarget": {}, "mainWindow": 5,
        "tabs": [{"name": "Default", "windows": [
            {"key": 9, "show": 1, "rect": [0, 0, 10]},
            {"key": 10, "show": 9, "rect": [0, 0, 10, 10]},
            {"key": 11, "show": 1, "rect": [0, 0, 0, 10]},
            {"key": 12, "show": 1, "rect": [0, 0, 2000000000, 10]},
            {"key": 13, "show": 1, "rect": ["a", 0, 10, 10]},
            {"key": 14, "show": 1, "rect": [0, 0, 10, 10]}]}]})",
                              state));
    EXPECT_THAT(state.m_Recent.All(), ElementsAre(LogFiles{"/a.bin", {}}));
    EXPECT_THAT(state.m_Targets.All(), ElementsAre(Pair("/b.bin", "/t.json")));
    EXPECT_EQ(state.m_Targets.m_Default, "");
    ASSERT_EQ(state.m_Tabs.size(), 1U);
    EXPECT_EQ(state.m_Tabs[0].m_Windows.size(), 1U);
    EXPECT_TRUE(state.m_Tabs[0].m_Windows.contains(14));
}

TEST(State, TakesNoMoreThanTheViewerWrites) {
    QByteArray recent, targets, windows;
    for (int i = 0; i < 5000; ++i) {
        const QByteArray number = QByteArray::number(i);
        recent += (i ? "," : "") + QByteArray(R"({"log": "/)") + number + R"("})";
        targets += (i ? "," : "") + QByteArray(R"({"target": "/t", "log": "/)") + number + R"("})";
        windows += (i ? "," : "") + QByteArray(R"({"rect": [0, 0, 9, 9], "key": )") + number + '}';
    }
    UserState state;
    ASSERT_TRUE(StateFromJson(R"({"program": "veskview", "format": 1, "recent": [)" + recent +
                                  R"(], "targets": [)" + targets + R"(], "tabs": [{"windows": [)" +
                                  windows + "]}]}",
                              state));
    EXPECT_EQ(state.m_Recent.All().size(), RecentFiles::kMost);
    EXPECT_EQ(state.m_Recent.All().front().m_Log, "/0");
    EXPECT_EQ(state.m_Targets.All().size(), TargetChoices::kMost);
    EXPECT_LE(state.m_Tabs.at(0).m_Windows.size(), 64U);
}

TEST(State, APathThatIsNoTextIsNotWrittenWrongly) {
    UserState state, read;
    state.m_Recent.Add({"/logs/\xff\xfe.bin", {}});
    ASSERT_TRUE(StateFromJson(StateToJson(state), read));
    EXPECT_THAT(read.m_Recent.All(), IsEmpty());
}

TEST(State, AFailedWriteIsReportedAndHarmsNothing) {
    const DeskFolder folder;
    folder.Write("file", "");
    EXPECT_NE(StateFile(Path(folder / "file/state.json")).Save({}), "");
}

TEST(State, LiesInTheFolderForProgramsState) {
    const QByteArray before = qgetenv("XDG_STATE_HOME");
    qputenv("XDG_STATE_HOME", "/state");
    EXPECT_EQ(StateFile::DefaultPath(), "/state/vesk/veskview.json");
    qputenv("XDG_STATE_HOME", "relative");  // means nothing
    EXPECT_TRUE(StateFile::DefaultPath().endsWith("/.local/state/vesk/veskview.json"));
    qputenv("XDG_STATE_HOME", before);
}

}  // namespace
}  // namespace vesk
