#include <gtest/gtest.h>

#include "tests/cli/SmallLog.h"
#include "tests/cli/VeskFolder.h"

namespace {

class Input : public testing::Test {
protected:
    Input() {
        m_Folder.WriteLog("small", SmallLog());
        m_Dump = m_Folder.Vesk("dump small.bin").out;
    }

    VeskFolder m_Folder;
    std::string m_Dump;
};

TEST_F(Input, IsReadPackedOrPlainFromFilesAndPipes) {
    m_Folder.Pack("small.bin", "small.bin.gz", "gzip");
    m_Folder.Pack("small.bin", "small.bin.zst", "zstd");
    m_Folder.Pack("small.bin", "small.bin.xz", "xz");
    for (const char* const line : {
             "$vesk dump small.bin.gz",
             "$vesk dump small.bin.zst",
             "$vesk dump small.bin.xz",
             "$vesk dump - --target small.target.json < small.bin",
             "cat small.bin | $vesk dump - --target small.target.json",
             "cat small.bin.xz | $vesk dump - --target small.target.json",
             "cat small.bin.gz | $vesk dump /dev/stdin --target small.target.json",
         }) {
        SCOPED_TRACE(line);
        const ProgramRun run = m_Folder.Shell(line);
        EXPECT_EQ(run.out, m_Dump);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.code, 0);
    }
}

TEST_F(Input, TakesTheHeaderFromAnotherFile) {
    const std::string log = m_Folder.Content("small.bin");
    m_Folder.Write("header.bin", log.substr(0, 72));
    m_Folder.Write("records.raw", log.substr(72));
    m_Folder.Pack("header.bin", "header.bin.gz", "gzip");
    for (const char* const header : {"header.bin", "header.bin.gz", "small.bin"})
        EXPECT_EQ(m_Folder.Vesk(std::string("dump records.raw --header ") + header).out, m_Dump);
}

TEST_F(Input, ThatCannotBeReadIsRefusedWithOneSentence) {
    m_Folder.Write("empty.bin", "");
    m_Folder.Write("empty.bin.gz", "");
    m_Folder.Pack("small.bin", "small.bin.gz", "gzip");
    m_Folder.Write("cut.gz", m_Folder.Content("small.bin.gz").substr(0, 60));
    m_Folder.Write("plain.xz", m_Folder.Content("small.bin"));
    m_Folder.Write("old.bin", "EMI_CONFIG");
    m_Folder.Write("torn.bin", "VESK_BIN\x10");
    const struct {
        const char* line;
        const char* err;
    } cases[] = {
        {"$vesk jobs empty.bin", "vesk: empty.bin is too short for a log\n"},
        {"$vesk jobs empty.bin.gz", "vesk: empty.bin.gz is too short for a log\n"},
        {"$vesk units empty.bin --unit 4", "vesk: empty.bin is too short for a log\n"},
        {"$vesk jobs - < /dev/null", "vesk: standard input is too short for a log\n"},
        {"$vesk jobs - <&-", "vesk: cannot read standard input: Bad file descriptor\n"},
        {"$vesk jobs .", "vesk: . is a directory\n"},
        {"$vesk jobs none.bin",
         "vesk: Could not open the file\nvesk: none.bin: No such file or directory\n"},
        {"$vesk jobs cut.gz", "vesk: cannot read cut.gz: truncated gzip input\n"},
        {"$vesk jobs plain.xz", "vesk: plain.xz is not packed the way its name says\n"},
        {"$vesk jobs old.bin",
         "vesk: Please use Trawler V3.0933.01 for this bin file with special format.\n"},
        {"$vesk jobs torn.bin", "vesk: Failed to parse VESK header.\n"},
        {"$vesk jobs small.bin --target none.json",
         "vesk: cannot use the target description: none.json: the file cannot be opened\n"},
        {"$vesk jobs small.bin --unit 1 --pick 7",
         "vesk: There is no unit 7: the log has 1 units of 1 KB\n"},
        {"$vesk jobs small.bin --unit 1 --pick-frames 9:9",
         "vesk: No unit holds a frame from 9 to 9\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        const ProgramRun run = m_Folder.Shell(c.line);
        EXPECT_EQ(run.code, 3);
        EXPECT_EQ(run.err, c.err);
        EXPECT_EQ(run.out, "");
    }
}

TEST_F(Input, UnpacksNoMoreThanTheLimit) {
    const ProgramRun run =
        m_Folder.Shell("head -c 1048577 /dev/zero | $vesk jobs - --unpack-limit 1");
    EXPECT_EQ(run.code, 3);
    EXPECT_EQ(
        run.err,
        "vesk: cannot read standard input: more than 1 MB come out; --unpack-limit raises that\n");
    EXPECT_EQ(m_Folder.Shell("head -c 1048576 /dev/zero | $vesk jobs - --unpack-limit 1").code, 1);
}

TEST_F(Input, SaysSoIfATargetDescriptionIsMissing) {
    m_Folder.WriteLog("us", LogBuilder().WithHeader(3).Uscnt(0x8000000, 1, 1).Task("MAIN", 100));
    m_Folder.Shell("mv us.bin other.bin");
    EXPECT_EQ(
        m_Folder.Vesk("jobs other.bin").err,
        "vesk: Failed to get \"Trawler_VESK_Clock\" structure from database.Failed to parse VESK "
        "header.\nvesk: no target description was found; --target or --elf names one\n");
    EXPECT_EQ(m_Folder.Vesk("jobs other.bin --target us.target.json").code, 0);
}

// The program waits for more of the log when the interrupt comes.
TEST_F(Input, AnInterruptEndsAReadThatWaits) {
    const ProgramRun run = m_Folder.Shell(
        "mkfifo log; $vesk jobs log -o out.csv & exec 3> log; head -c 1000000 /dev/zero >&3; "
        "kill -INT $!; sleep 0.2; exec 3>&-; wait $!");
    EXPECT_EQ(run.code, 130);
    EXPECT_EQ(run.err, "vesk: interrupted\n");
    EXPECT_FALSE(m_Folder.Has("out.csv"));
}

TEST_F(Input, ProgressIsShownOnATerminalOnly) {
    const std::string read = "(sleep 0.4; cat small.bin) | $vesk jobs - -o /dev/null";
    EXPECT_EQ(m_Folder.Shell(read).err, "");
    const ProgramRun run = m_Folder.Shell("script -qec '" + read + "' /dev/null");
    EXPECT_NE(run.out.find("unpacking"), std::string::npos) << run.out;
    EXPECT_EQ(m_Folder.Shell("script -qec '" + read + " --quiet' /dev/null").out, "");
}

}  // namespace
