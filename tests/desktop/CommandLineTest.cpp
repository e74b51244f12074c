#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <fstream>
#include <set>

#include "desktop/ProgramOptions.h"
#include "tests/desktop/DeskFolder.h"

namespace vesk {
namespace {

// As a shell takes it, whatever the folder of the sources is called.
std::string QuotedSample(const std::string& name) {
    return '\'' + Sample(name) + '\'';
}

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// The program as its own process, away from the user's display and memory.
ShellRun Veskview(const std::string& arguments, const std::string& environment = "") {
    const DeskFolder folder;
    return Shell("exec env -i PATH=\"$PATH\" XDG_STATE_HOME=" + (folder / "state") + " " +
                 environment + " timeout 20 '" + VESKVIEW_PROGRAM + "' " + arguments);
}

std::string FileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(CommandLine, HelpAndVersionNeedNoDisplay) {
    for (const char* const option : {"--help", "-h"}) {
        const ShellRun run = Veskview(option);
        EXPECT_EQ(run.m_Status, 0);
        EXPECT_THAT(run.m_Text, StartsWith("Usage: veskview [OPTIONS] [LOG]\n"));
    }
    const ShellRun run = Veskview("--version");
    EXPECT_EQ(run.m_Status, 0);
    EXPECT_EQ(run.m_Text, "veskview " VESK_VERSION "\n");
}

// Made anew by: veskview --keys > docs/keys.md
TEST(CommandLine, TheSheetOfKeysIsUpToDate) {
    const ShellRun run = Veskview("--keys");
    EXPECT_EQ(run.m_Status, 0);
    EXPECT_EQ(run.m_Text, FileText(VESK_SOURCE_DIR "/docs/keys.md"));
    EXPECT_THAT(run.m_Text, HasSubstr("\n| Ctrl+Num + | Zoom in |\n"));
    EXPECT_THAT(run.m_Text, HasSubstr("\n| Alt+Left | Back to the span shown before |\n"));
    EXPECT_THAT(run.m_Text, Not(HasSubstr("|  |")));  // every key has a meaning
}

TEST(CommandLine, TheManualTellsEveryOptionOfTheHelp) {
    const DeskFolder folder;
    const std::string page = folder.Write("veskview.1", Veskview("--man").m_Text);
    const ShellRun shown = Shell("! command -v groff >/dev/null || groff -man -ww -Tascii " + page);
    EXPECT_EQ(shown.m_Status, 0);
    EXPECT_THAT(shown.m_Text, Not(HasSubstr("warning")));
    const std::string manual = FileText(page), help = Veskview("--help").m_Text;
    int options = 0;
    for (std::size_t at = 0; (at = help.find("\n  --", at)) != std::string::npos; ++at) {
        const std::string name = help.substr(at + 5, help.find_first_of(" \n", at + 5) - at - 5);
        EXPECT_THAT(manual, HasSubstr("\\fB\\-\\-" + name + "\\fR")) << name;
        ++options;
    }
    EXPECT_EQ(options, 13);
}

TEST(CommandLine, ArgumentsThatMeanNothingAreRefused) {
    const struct {
        const char* m_Arguments;
        const char* m_Text;
    } cases[] = {
        {"--wrong", "veskview: unknown option: --wrong\n"},
        {"-x a.bin", "veskview: unknown option: -x\n"},
        {"a.bin b.bin", "veskview: one log at a time: b.bin\n"},
        {"a.bin --target", "veskview: --target needs a value\n"},
        {"--target= a.bin", "veskview: --target needs a value\n"},
        {"''", "veskview: the name of the log is empty\n"},
        {"--render a.gif a.bin",
         "veskview: --render needs a name that ends in .png, .svg or .pdf\n"},
        {"--render a.png", "veskview: --render needs a log\n"},
        {"--scale 2 a.bin", "veskview: --scale goes with --render\n"},
        {"--render a.png a.bin --size 100x900", "veskview: --size needs WIDTHxHEIGHT"},
        {"--render a.png a.bin --size=900x600x2", "veskview: --size needs WIDTHxHEIGHT"},
        {"--render a.png a.bin --scale 1.5e", "veskview: --scale needs a number from 0.5 to 8\n"},
        {"--render a.png a.bin --scale nan", "veskview: --scale needs a number from 0.5 to 8\n"},
        {"--render a.png a.bin --outlook Pure", "veskview: --outlook needs \"pure\""},
        {"--render a.png a.bin --unit ms", "veskview: --unit needs \"qbit\""},
        {"--render a.png a.bin --range 9:9", "veskview: --range needs FROM:TO in QBit\n"},
        {"--render a.png a.bin --range -1:9", "veskview: --range needs FROM:TO in QBit\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_Arguments);
        const ShellRun run = Veskview(c.m_Arguments);
        EXPECT_EQ(run.m_Status, 2);
        EXPECT_THAT(run.m_Text, StartsWith(c.m_Text));
        EXPECT_THAT(run.m_Text, HasSubstr("Usage: veskview"));
    }
}

TEST(CommandLine, OptionsComeInAnyOrder) {
    const char* const arguments[] = {"veskview", "--whole", "-platform", "offscreen",
                                     "--target", "t.json",  "--",        "-log.bin"};
    ProgramOptions options;
    std::string error;
    ASSERT_TRUE(ParseProgramOptions(8, arguments, options, error)) << error;
    EXPECT_TRUE(options.m_Whole);
    EXPECT_EQ(options.m_Target, "t.json");
    EXPECT_EQ(options.m_Log, "-log.bin");
}

TEST(CommandLine, TellsHowAPictureIsToBe) {
    const char* const arguments[] = {"veskview",
                                     "--render=a.svg",
                                     "x.bin",
                                     "--size",
                                     "900x600",
                                     "--scale",
                                     "1.5",
                                     "--unit",
                                     "qbit",
                                     "--force",
                                     "--outlook",
                                     "relative",
                                     "--range=5:18446744073709551615"};
    ProgramOptions options;
    std::string error;
    ASSERT_TRUE(ParseProgramOptions(13, arguments, options, error)) << error;
    EXPECT_EQ(options.m_Render.m_Path, "a.svg");
    EXPECT_EQ(options.m_Render.m_Size, (CSize{900, 600}));
    EXPECT_EQ(options.m_Render.m_Scale, 1.5);
    EXPECT_EQ(options.m_Render.m_Unit, TIMEUNIT_CLOCK);
    EXPECT_EQ(options.m_Render.m_Outlook, OUTLOOK_RELATIVE);
    EXPECT_EQ(options.m_Render.m_Range, (std::pair<std::uint64_t, std::uint64_t>(5, UINT64_MAX)));
    EXPECT_TRUE(options.m_Render.m_Force);
}

TEST(CommandLine, APictureNeedsNoDisplayAndReplacesNothingUnasked) {
    const DeskFolder folder;
    const std::string png = folder / "a.png";
    const std::string render = "--render " + png + ' ' + QuotedSample("pacman_packets.bin");
    const ShellRun first = Veskview(render + " --size 640x480 --scale 1.5", "DISPLAY=:4711");
    EXPECT_EQ(first.m_Status, 0);
    EXPECT_EQ(first.m_Text, "");
    EXPECT_EQ(QImage(QString::fromStdString(png)).size(), QSize(960, 720));

    const std::string before = FileText(png);
    const ShellRun second = Veskview(render);
    EXPECT_EQ(second.m_Status, 1);
    EXPECT_EQ(second.m_Text, "veskview: " + png + " is there already; --force replaces it\n");
    EXPECT_EQ(FileText(png), before);
    EXPECT_EQ(Veskview(render + " --force").m_Status, 0);
    EXPECT_EQ(QImage(QString::fromStdString(png)).size(), QSize(1280, 720));
}

TEST(CommandLine, EveryOptionChangesThePicture) {
    const DeskFolder folder;
    std::set<std::string> pictures;
    for (const char* const options :
         {"", "--outlook relative", "--unit qbit", "--unit time", "--range 100000:200000"}) {
        const std::string path = folder / ("p" + std::to_string(pictures.size()) + ".svg");
        const ShellRun run = Veskview("--render " + path + ' ' + options + " -- " +
                                      QuotedSample("pacman_packets.bin"));
        EXPECT_EQ(run.m_Status, 0) << run.m_Text;
        pictures.insert(FileText(path));
    }
    EXPECT_EQ(pictures.size(), 5U);
}

TEST(CommandLine, ARangeIsShownFromEdgeToEdge) {
    const DeskFolder folder;
    const std::string path = folder / "a.svg";
    const ShellRun run = Veskview("--unit qbit --range 2000:4000 --render " + path + ' ' +
                                  QuotedSample("pacman_packets.bin"));
    ASSERT_EQ(run.m_Status, 0) << run.m_Text;
    const std::string text = FileText(path);
    // Labels stand at multiples of 75 here.
    for (const char* const label : {">2025<", ">3000<", ">3975<"})
        EXPECT_EQ(text.find(label) != std::string::npos, true) << label;
    for (const char* const label : {">1950<", ">4050<"})
        EXPECT_EQ(text.find(label) != std::string::npos, false) << label;
}

TEST(CommandLine, AFailedPictureLeavesNone) {
    const DeskFolder folder;
    const std::string path = folder / "a.png";
    const struct {
        std::string m_Arguments;
        std::string m_Text;
    } cases[] = {
        {path + " /no/log.bin", "veskview: /no/log.bin: No such file or directory\n"},
        {path + ' ' + folder.Write("bad.bin", "VESKBINVxxxxxxxxxxxxxxxxxxx"), "veskview: "},
        {path + " --range 483264:483300 " + QuotedSample("pacman_packets.bin"),
         "veskview: the range lies behind the log, which has 483264 QBit\n"},
        {folder / "no/a.svg" + ' ' + QuotedSample("pacman_packets.bin"), "veskview: cannot write "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_Arguments);
        const ShellRun run = Veskview("--render " + c.m_Arguments);
        EXPECT_EQ(run.m_Status, 1);
        EXPECT_THAT(run.m_Text, StartsWith(c.m_Text));
        EXPECT_EQ(FileText(path), "");
    }
}

TEST(CommandLine, ALogIsReadWithoutADescriptionWhereNobodyCanBeAsked) {
    const DeskFolder folder;
    const std::string path = folder / "a.svg";
    const std::string log = folder.CopySample("wget_headerless.bin", "raw.bin");
    const ShellRun run = Veskview("--render " + path + ' ' + log);
    EXPECT_EQ(run.m_Status, 0);
    EXPECT_THAT(run.m_Text, StartsWith("veskview: " + log + " has no header of its own. "));
    EXPECT_NE(FileText(path), "");
}

TEST(CommandLine, AMissingDisplayIsToldClearly) {
    for (const char* const environment :
         {"", "DISPLAY=:4711", "WAYLAND_DISPLAY=none", "QT_QPA_PLATFORM=xcb"}) {
        SCOPED_TRACE(environment);
        const ShellRun run = Veskview("a.bin", environment);
        EXPECT_EQ(run.m_Status, 1);
        EXPECT_THAT(run.m_Text, StartsWith("veskview: no display can be opened.\n"));
    }
}

TEST(CommandLine, TheLogOfTheArgumentsIsOpened) {
    const DeskFolder folder;
    // Ended from outside once it has written down what it opened.
    const ShellRun run =
        Shell("XDG_STATE_HOME=" + (folder / "state") + " QT_QPA_PLATFORM=offscreen '" +
              VESKVIEW_PROGRAM + "' --whole " + QuotedSample("esp32_ticks.bin") +
              " & pid=$!; for i in $(seq 100); do grep -qs esp32 " +
              (folder / "state/vesk/veskview.json") +
              " && echo opened && break; sleep 0.1; done; kill $pid; wait $pid 2>/dev/null");
    EXPECT_THAT(run.m_Text, HasSubstr("opened\n"));
}

}  // namespace
}  // namespace vesk
