#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/ProgramOptions.h"
#include "tests/desktop/DeskFolder.h"

namespace vesk {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// The program as its own process, away from the user's display and memory.
ShellRun Veskview(const std::string& arguments, const std::string& environment = "") {
    const DeskFolder folder;
    return Shell("exec env -i PATH=\"$PATH\" XDG_STATE_HOME=" + (folder / "state") + " " +
                 environment + " timeout 20 '" + VESKVIEW_PROGRAM + "' " + arguments);
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
              VESKVIEW_PROGRAM + "' --whole " + Sample("esp32_ticks.bin") +
              " & pid=$!; for i in $(seq 100); do grep -qs esp32 " +
              (folder / "state/vesk/veskview.json") +
              " && echo opened && break; sleep 0.1; done; kill $pid; wait $pid 2>/dev/null");
    EXPECT_THAT(run.m_Text, HasSubstr("opened\n"));
}

}  // namespace
}  // namespace vesk
