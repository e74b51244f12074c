#include <gtest/gtest.h>

#include "tests/cli/SmallLog.h"
#include "tests/cli/VeskFolder.h"

namespace {

TEST(CommandLine, ThatMakesNoSenseIsRefusedBeforeAnythingIsRead) {
    const VeskFolder folder;
    const char* const cases[] = {
        "",
        "frobnicate",
        "jobs",
        "jobs a.bin b.bin",
        "jobs a.bin --format xml",
        "info a.bin --format csv",
        "jobs a.bin --from 1.5",
        "jobs a.bin --from -1",
        "jobs a.bin --from 5min",
        "jobs a.bin --to 1e3ms",
        "jobs a.bin --to 99999999999999999999",
        "jobs a.bin --to 99999999999999s",
        "jobs a.bin --pick 1",
        "jobs a.bin --unit 0 --pick 1",
        "jobs a.bin --unit 4 --pick -1",
        "jobs a.bin --unit 4 --pick 1 --pick-frames 1:2",
        "jobs a.bin --unit 4 --pick-frames 12",
        "jobs a.bin --unit 4 --pick-frames 2:1",
        "units a.bin",
        "dump a.bin --name MAIN",
        "jobs a.bin --target t --elf e",
        "jobs a.bin --capability 0011",
        "jobs a.bin --feature-level high",
        "jobs - --header -",
        "simulate",
        "simulate -o a.bin --form v4",
        "simulate -o a.bin --records 0",
        "simulate -o a.bin --losses",
    };
    for (const char* const arguments : cases) {
        SCOPED_TRACE(arguments);
        const ProgramRun run = folder.Vesk(arguments);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err, "");
        EXPECT_TRUE(folder.Names().empty());
    }
}

TEST(CommandLine, HelpAndVersionGoToStandardOutput) {
    const VeskFolder folder;
    for (const char* const arguments : {"--help", "jobs --help", "--version"}) {
        SCOPED_TRACE(arguments);
        const ProgramRun run = folder.Vesk(arguments);
        EXPECT_EQ(run.code, 0);
        EXPECT_NE(run.out, "");
        EXPECT_EQ(run.err, "");
    }
}

TEST(CommandLine, CapabilityOfTheCommandLineReplacesTheDescription) {
    const VeskFolder folder;
    folder.WriteLog("us", LogBuilder().Uscnt(0x8000000, 1000000, 1000000).Task("MAIN", 100));
    EXPECT_NE(folder.Vesk("info us.bin").out.find("USCNT"), std::string::npos);
    const std::string none(80, '0');
    EXPECT_NE(folder.Vesk("info us.bin --capability " + none).out.find("TQCNT"), std::string::npos);
}

TEST(Simulate, WritesTheSameLogForTheSameOptions) {
    const VeskFolder folder;
    ASSERT_EQ(folder.Vesk("simulate -o a.bin --form packets --losses --seed 5").code, 0);
    ASSERT_EQ(folder.Vesk("simulate -o b.bin --form packets --losses --seed 5").code, 0);
    ASSERT_EQ(folder.Vesk("simulate -o c.bin --form packets --losses --seed 6").code, 0);
    EXPECT_EQ(folder.Content("a.bin"), folder.Content("b.bin"));
    EXPECT_EQ(folder.Content("a.target.json"), folder.Content("b.target.json"));
    EXPECT_NE(folder.Content("a.bin"), folder.Content("c.bin"));
    EXPECT_EQ(folder.Vesk("losses a.bin").code, 0);
}

TEST(Simulate, ReplacesNeitherLogNorDescriptionUnlessForced) {
    const VeskFolder folder;
    folder.Write("a.target.json", "mine");
    EXPECT_EQ(folder.Vesk("simulate -o a.bin").code, 5);
    EXPECT_FALSE(folder.Has("a.bin"));
    EXPECT_EQ(folder.Content("a.target.json"), "mine");
    EXPECT_EQ(folder.Vesk("simulate -o a.bin --force").code, 0);
    EXPECT_NE(folder.Content("a.target.json"), "mine");
}

TEST(Simulate, WritesEveryFormSoThatItIsRead) {
    const VeskFolder folder;
    for (const std::string form : {"v1", "v2", "v3", "headerless", "packets"}) {
        SCOPED_TRACE(form);
        ASSERT_EQ(folder.Vesk("simulate --force -o a.bin --records 500 --form " + form).code, 0);
        const ProgramRun run = folder.Vesk("info a.bin --format json");
        EXPECT_NE(run.out.find("\"records\":500,"), std::string::npos) << run.out;
        EXPECT_EQ(run.code, 0);
    }
}

}  // namespace
