#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/support/TemporaryFile.h"
#include "tests/timeline/ViewTest.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;
using namespace std::string_literals;

// What a user does with the exports of a view.
class ExportTest : public ViewTest {
protected:
    static constexpr unsigned kText = 40020, kExtraInfo = 32798, kCustomLogging = 40307;
    static constexpr unsigned kExportMarkers = 40202, kImportMarkers = 40203;

    ExportTest() {
        LogOf(5000);
        Log().m_FileName = "/logs/run.1.bin";
        m_Document = std::make_unique<VESKUIDoc>();
        Open();
    }
    ~ExportTest() override {
        EXPECT_THAT(m_User.m_Faults, IsEmpty());
        std::filesystem::remove(TextPath());
    }
    std::string TextPath() const { return m_File.Path() + ".txt"; }

    void Choose(unsigned command, const std::string& path) {
        m_User.OnFileDialog(path);
        EXPECT_TRUE(Press(command));
    }
    McuMarkerMap& Markers() { return m_Document->m_Markers; }

    static std::string Content(const std::string& path) {
        std::ostringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        return content.str();
    }

    const TemporaryFile m_File{"old"};
    std::unique_ptr<VESKUIDoc> m_Document;
};

TEST_F(ExportTest, EachTextCommandWritesItsFile) {
    const struct {
        unsigned command;
        const char* begin;
    } cases[] = {{kText, "JobName: IDLE\n"},
                 {kExtraInfo, "TaskName, StartTime, EndTime"},
                 {kCustomLogging, "Func\tStart\tEnd\tDuration\n"}};
    for (const auto& c : cases) {
        Choose(c.command, m_File.Path());
        EXPECT_THAT(Content(TextPath()), StartsWith(c.begin));
        EXPECT_EQ(m_User.m_FileFilters.back(), "Text file (*.txt)|*.txt|All files (*.*)|*.*||");
        EXPECT_EQ(m_User.m_FileNames.back(), "");
        EXPECT_EQ(m_User.m_StatusTexts.back(), ("Saved " + TextPath()).c_str());
    }
    EXPECT_THAT(m_User.m_Messages, IsEmpty());
}

TEST_F(ExportTest, WithoutAFileNothingHappens) {
    for (const unsigned command : {kText, kExtraInfo, kCustomLogging, kExportMarkers})
        Choose(command, "");
    EXPECT_THAT(m_User.m_Messages, IsEmpty());
    EXPECT_THAT(m_User.m_StatusTexts, IsEmpty());
}

TEST_F(ExportTest, ATextThatCannotBeCreatedIsToldInABox) {
    Choose(kText, "/none/of/this.txt");
    EXPECT_THAT(m_User.m_Messages,
                ElementsAre("Can't create file : /none/of/this.txt. Error code: 2"));
}

TEST_F(ExportTest, ACancelledTextLeavesTheOldFileAndNoOther) {
    m_User.OnProgress(1);
    Choose(kText, TextPath());
    EXPECT_FALSE(std::filesystem::exists(TextPath()));
    std::ofstream(TextPath()) << "old";
    m_User.OnProgress(1);
    Choose(kText, TextPath());
    EXPECT_EQ(Content(TextPath()), "old");
    EXPECT_THAT(m_User.m_Progresses, ElementsAre("Writing the text", "Writing the text"));
    EXPECT_THAT(m_User.m_StatusTexts.back().Str(), StartsWith("Cancelled"));
}

TEST_F(ExportTest, AWriteThatFailsShowsInTheStatusLine) {
    std::filesystem::create_symlink("/dev/full", TextPath());
    Choose(kText, TextPath());
    EXPECT_THAT(m_User.m_Messages, IsEmpty());
    EXPECT_THAT(m_User.m_StatusTexts.back().Str(), HasSubstr("No space left on device"));
}

TEST_F(ExportTest, MarkersComeBackFromTheirFile) {
    Markers()[0] = 700;
    Markers()[49] = 90000;  // behind the log's end
    View().m_DragMarkerIndex = 49;
    const McuMarkerMap before = Markers();
    Choose(kExportMarkers, TextPath());
    EXPECT_EQ(Content(TextPath()).size(), 28U);
    EXPECT_EQ(m_User.m_FileNames.back(), "/logs/run.1.slam");
    Markers().clear();
    Markers()[5] = 5;
    Painted();
    Choose(kImportMarkers, TextPath());
    EXPECT_EQ(Markers(), before);
    EXPECT_EQ(View().m_DragMarkerIndex, 49);
    EXPECT_FALSE(Painted().IsRectEmpty());
    for (const std::string& filter : m_User.m_FileFilters)
        EXPECT_EQ(filter, "Slam file (*.slam)|*.slam|");
}

TEST_F(ExportTest, ACancelledImportOnlyPaints) {
    Markers()[5] = 5;
    Choose(kImportMarkers, "");
    EXPECT_FALSE(Painted().IsRectEmpty());
    EXPECT_THAT(Markers(), ElementsAre(Pair(5, 5)));
    EXPECT_THAT(m_User.m_StatusTexts, IsEmpty());
}

TEST_F(ExportTest, TroubleWithMarkerFilesShowsInTheStatusLineAlone) {
    Markers()[5] = 5;
    Choose(kExportMarkers, "/none/m.slam");
    Choose(kImportMarkers, "/none/m.slam");
    EXPECT_THAT(Markers(), ElementsAre(Pair(5, 5)));
    std::ofstream(TextPath()) << "\2\0\0\0\7\0\0\0\t\0\0\0\0\0\0\0and"s;
    Choose(kImportMarkers, TextPath());
    EXPECT_THAT(Markers(), ElementsAre(Pair(7, 9)));
    EXPECT_THAT(m_User.m_Messages, IsEmpty());
    EXPECT_THAT(
        m_User.m_StatusTexts,
        ElementsAre(
            "cannot write /none/m.slam: No such file or directory",
            "cannot read /none/m.slam: No such file or directory",
            (TextPath() + " is no whole marker file; 1 markers were taken from it").c_str()));
}

TEST_F(ExportTest, AnImportMayFillTheTableBeyondItsCapacity) {
    for (int key = -3; key < 60; ++key) Markers()[key] = 10 + static_cast<std::uint64_t>(key + 3);
    Choose(kExportMarkers, TextPath());
    Markers().clear();
    Choose(kImportMarkers, TextPath());
    EXPECT_EQ(Markers().size(), 63U);
    EXPECT_FALSE(Markers().AddMarker(1));
}

}  // namespace
