#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/SmallLog.h"
#include "tests/cli/VeskFolder.h"

namespace {

using testing::ElementsAre;

class Output : public testing::Test {
protected:
    Output() { m_Folder.WriteLog("small", SmallLog()); }

    VeskFolder m_Folder;
};

TEST_F(Output, ToAFileIsWhatStandardOutputGets) {
    EXPECT_EQ(m_Folder.Vesk("dump small.bin -o new.json").code, 0);
    EXPECT_EQ(m_Folder.Content("new.json"), m_Folder.Vesk("dump small.bin -o -").out);
    EXPECT_THAT(m_Folder.Names(), ElementsAre("new.json", "small.bin", "small.target.json"));
}

TEST_F(Output, ReplacesAFileOnlyIfForced) {
    m_Folder.Write("old.csv", "old");
    const std::string line = "jobs small.bin --format csv --name IDLE -o old.csv";
    const ProgramRun refused = m_Folder.Vesk(line);
    EXPECT_EQ(refused.code, 5);
    EXPECT_EQ(refused.err, "vesk: old.csv exists; --force replaces it\n");
    EXPECT_EQ(m_Folder.Content("old.csv"), "old");
    EXPECT_EQ(m_Folder.Vesk(line + " --force").code, 0);
    EXPECT_EQ(m_Folder.Content("old.csv"),
              "index,start,end,frame,count,name\n3,5104,5161,8,203,IDLE\n");
}

TEST_F(Output, ReplacesTheTargetOfALinkAndKeepsItsRights) {
    m_Folder.Shell("echo old > real; chmod 640 real; ln -s real link");
    EXPECT_EQ(m_Folder.Vesk("dump small.bin -o link --force").code, 0);
    EXPECT_EQ(m_Folder.Shell("readlink link; stat -c %a real").out, "real\n640\n");
    EXPECT_NE(m_Folder.Content("real"), "old\n");
}

TEST_F(Output, ThatCannotBeWrittenEndsTheRunAndLeavesNothing) {
    const struct {
        const char* line;
        const char* err;
    } cases[] = {
        {"$vesk dump small.bin -o .", "vesk: cannot write .: Is a directory\n"},
        {"$vesk dump small.bin -o none/x",
         "vesk: cannot write none/x: No such file or directory\n"},
        {"$vesk dump small.bin -o /dev/full",
         "vesk: cannot write /dev/full: No space left on device\n"},
        {"$vesk dump small.bin > /dev/full",
         "vesk: cannot write standard output: No space left on device\n"},
        {"$vesk dump small.bin >&-", "vesk: cannot write standard output: Bad file descriptor\n"},
        {"(ulimit -f 1; trap '' XFSZ; $vesk simulate -o x.bin --records 100000)",
         "vesk: cannot write x.bin: File too large\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        const ProgramRun run = m_Folder.Shell(c.line);
        EXPECT_EQ(run.code, 5);
        EXPECT_EQ(run.err, c.err);
        EXPECT_THAT(m_Folder.Names(), ElementsAre("small.bin", "small.target.json"));
    }
}

TEST_F(Output, IntoAPipeThatNobodyReadsEndsSilently) {
    m_Folder.Vesk("simulate -o long.bin --records 100000");
    const ProgramRun run =
        m_Folder.Shell("($vesk jobs long.bin; echo $? > code) | head -n 1 > first; cat code first");
    EXPECT_EQ(run.out.substr(0, 2), "5\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(Output, OfARefusedLogIsNoFile) {
    m_Folder.Write("bad.bin", "VESK_BIN");
    EXPECT_EQ(m_Folder.Vesk("jobs bad.bin -o out.csv").code, 3);
    EXPECT_FALSE(m_Folder.Has("out.csv"));
    EXPECT_EQ(m_Folder.Vesk("dump bad.bin -o out.json").code, 3);
    EXPECT_TRUE(m_Folder.Has("out.json"));
}

}  // namespace
