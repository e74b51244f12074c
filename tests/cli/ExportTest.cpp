#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/SmallLog.h"
#include "tests/cli/VeskFolder.h"

namespace {

using testing::HasSubstr;

class Export : public testing::Test {
protected:
    Export() { m_Folder.WriteLog("small", SmallLog()); }

    VeskFolder m_Folder;
};

// --- Text files ----------------------------------------------------------------------------------

TEST_F(Export, WritesTheTextsOfTheViewer) {
    const struct {
        const char* what;
        const char* text;
    } cases[] = {{"text",
                  "JobName: MAIN\n    FrameNo: 7,  TQCNT: 100,  Start: 1,  End: 51\n"
                  "JobName: IRQ0x03\n    FrameNo: 7,  TQCNT: 150,  Start: 51,  End: 64\n"
                  "JobName: MAIN\n    FrameNo: 7,  TQCNT: 163,  Start: 64,  End: 5104\n"
                  "JobName: IDLE\n    FrameNo: 8,  TQCNT: 203,  Start: 5104,  End: 5161\n"
                  "JobName: a\xE9\"\n\n    FrameNo: 8,  TQCNT: 260,  Start: 5161,  End: 5261\n"
                  "\nFunctionName: fun\n    Start: 11,  End: 71, duration: 60\n"},
                 {"extra",
                  "TaskName, StartTime, EndTime, EMI, EMI\n"
                  "MAIN, 1, 11, 5, 50\nMAIN, 11, 51, 5, 50\nIRQ0x03, 51, 64, 6, 4000000000\n"
                  "MAIN, 64, 71, 6, 4000000000\nMAIN, 71, 81, 6, 4000000000\n"
                  "MAIN, 81, 91, 6, 4000000000\nMAIN, 91, 96, 6, 4000000000\n"
                  "MAIN, 96, 5104, 6, 4000000000\nIDLE, 5104, 5161, 6, 4000000000\n"
                  "a\xE9\"\n, 5161, 5261, 6, 4000000000\n"},
                 {"calls", "Func\tStart\tEnd\tDuration\nfun\t11\t71\t60\n"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const std::string what = c.what;
        const ProgramRun run = m_Folder.Vesk("export " + what + " small.bin");
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.out, c.text);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(m_Folder.Vesk("export " + what + " small.bin -o " + what).code, 0);
        EXPECT_EQ(m_Folder.Content(what), c.text);
    }
}

TEST_F(Export, ReplacesAFileOnlyIfForced) {
    m_Folder.Write("out.txt", "old");
    const std::string line = "export calls small.bin -o out.txt";
    EXPECT_EQ(m_Folder.Vesk(line).code, 5);
    EXPECT_EQ(m_Folder.Content("out.txt"), "old");
    EXPECT_EQ(m_Folder.Vesk(line + " --force").code, 0);
    EXPECT_THAT(m_Folder.Content("out.txt"), HasSubstr("Func\tStart"));
}

TEST_F(Export, EndsWithTheCodeOfTheReadAndLeavesNoHalfFile) {
    m_Folder.Write("refused.bin", "VESK_BIN");
    const struct {
        const char* line;
        int code;
    } cases[] = {{"export text refused.bin -o out", 3},
                 {"export tables small.bin -o out", 2},
                 {"export small.bin -o out", 2},
                 {"export text small.bin -o /dev/full", 5},
                 {"export text small.bin -o none/out", 5}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        EXPECT_EQ(m_Folder.Vesk(c.line).code, c.code);
        EXPECT_FALSE(m_Folder.Has("out"));
    }
}

// --- Markers -------------------------------------------------------------------------------------

TEST_F(Export, MarkersAreMadeFromOptionsAndListed) {
    const ProgramRun made = m_Folder.Vesk("markers --set 3=13 --set 0=1ms --set=-1=7 -o m.slam");
    EXPECT_EQ(made.code, 0);
    EXPECT_EQ(made.err, "");
    EXPECT_EQ(m_Folder.Content("m.slam").size(), 40U);
    EXPECT_EQ(m_Folder.Vesk("markers m.slam").out,
              "marker          time  time/ms\n"
              "    -1             7         0.006\n"
              "     0          1083         1.000\n"
              "     3            13         0.012\n");
    EXPECT_EQ(m_Folder.Vesk("markers m.slam --format jsonl").out,
              "{\"marker\":-1,\"time\":7}\n{\"marker\":0,\"time\":1083}\n"
              "{\"marker\":3,\"time\":13}\n");
    EXPECT_EQ(m_Folder.Vesk("markers m.slam --format csv").out,
              "marker,time\n-1,7\n0,1083\n3,13\n");
}

TEST_F(Export, MarkersGoThroughCsvAndPipesUnchanged) {
    m_Folder.Vesk("markers --set 3=13 --set 0=18446744073709551 -o m.slam");
    const std::string bytes = m_Folder.Content("m.slam");
    EXPECT_EQ(m_Folder
                  .Shell("$vesk markers m.slam --format csv | $vesk markers --csv - "
                         "--format slam | $vesk markers - --format slam")
                  .out,
              bytes);
}

TEST_F(Export, MarkersOfAFileGiveWayToThoseOfOptions) {
    m_Folder.Write("more.csv", "1,2us\r\n\r\n2,0.5s\r\n");
    m_Folder.Vesk("markers --set 0=5 --set 1=5 --set 2=5 -o m.slam");
    const ProgramRun run = m_Folder.Vesk("markers m.slam --csv more.csv --set 2=9 --format csv");
    EXPECT_EQ(run.out, "marker,time\n0,5\n1,2\n2,9\n");
    EXPECT_EQ(m_Folder.Vesk("markers m.slam --set 0=6 -o m.slam").code, 5);
    EXPECT_EQ(m_Folder.Vesk("markers m.slam --set 0=6 -o m.slam --force").code, 0);
    EXPECT_THAT(m_Folder.Vesk("markers m.slam --format csv").out, HasSubstr("\n0,6\n1,5\n"));
}

TEST_F(Export, MarkersThatMakeNoSenseAreRefusedOrTakenAsFarAsTheyGo) {
    m_Folder.Shell("printf '\\2\\0\\0\\0\\7\\0\\0\\0\\5\\0\\0\\0\\0\\0\\0\\0x' > cut.slam");
    m_Folder.Write("none.slam", std::string(4, '\0'));
    m_Folder.Write("bad.csv", "marker,time\n1,5\n2;6\n");
    const struct {
        const char* arguments;
        int code;
        const char* err;
    } cases[] = {
        {"markers cut.slam", 4,
         "vesk: cut.slam is no whole marker file; 1 markers were taken from it\n"},
        {"markers none.slam", 1, ""},
        {"markers absent.slam", 3, "vesk: cannot read absent.slam: No such file or directory\n"},
        {"markers .", 3, "vesk: cannot read .: Is a directory\n"},
        {"markers --csv .", 3, "vesk: cannot read .: Is a directory\n"},
        {"markers --csv bad.csv -o x.slam", 3, "vesk: bad.csv, line 3: cannot use \"2;6\"\n"},
        {"markers", 2, "vesk: FILE, --csv or --set is required\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const ProgramRun run = m_Folder.Vesk(c.arguments);
        EXPECT_EQ(run.code, c.code);
        EXPECT_EQ(run.err, c.err);
    }
    for (const char* const set : {"1", "=5", "1=", "1=x", "9999999999=1", "1=5 6"})
        EXPECT_EQ(m_Folder.Vesk("markers --set '" + std::string(set) + "'").code, 2) << set;
    EXPECT_FALSE(m_Folder.Has("x.slam"));
}

}  // namespace
