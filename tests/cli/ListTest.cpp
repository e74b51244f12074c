#include <gtest/gtest.h>

#include "tests/cli/SmallLog.h"
#include "tests/cli/VeskFolder.h"

namespace {

class List : public testing::Test {
protected:
    List() { m_Folder.WriteLog("small", SmallLog()); }

    VeskFolder m_Folder;
};

// What a command writes, character by character.
TEST_F(List, IsWrittenInEachFormat) {
    const struct {
        const char* arguments;
        const char* out;
    } cases[] = {
        {"jobs small.bin",
         "   index         start           end      start/ms   length/us     frame       count  "
         "name\n"
         "       0             1            51         0.001        46.2         7         100  "
         "MAIN\n"
         "       1            51            64         0.047        12.0         7         150  "
         "IRQ0x03\n"
         "       2            64          5104         0.059      4652.3         7         163  "
         "MAIN\n"
         "       3          5104          5161         4.711        52.6         8         203  "
         "IDLE\n"
         "       4          5161          5261         4.764        92.3         8         260  "
         "a\u00E9\"\\x0a\n"},
        {"jobs small.bin --format csv",
         "index,start,end,frame,count,name\n"
         "0,1,51,7,100,MAIN\n"
         "1,51,64,7,150,IRQ0x03\n"
         "2,64,5104,7,163,MAIN\n"
         "3,5104,5161,8,203,IDLE\n"
         "4,5161,5261,8,260,\"a\u00E9\"\"\n\"\n"},
        {"jobs small.bin --format json --from 5104",
         "[\n"
         "{\"index\":3,\"start\":5104,\"end\":5161,\"frame\":8,\"count\":203,\"name\":\"IDLE\"},\n"
         "{\"index\":4,\"start\":5161,\"end\":5261,\"frame\":8,\"count\":260,"
         "\"name\":\"a\u00E9\\\"\\u000a\"}\n"
         "]\n"},
        {"segments small.bin --format csv",
         "start,end,frame,count,flags,name\n11,71,7,110,7,fun\n"},
        {"calls small.bin --format csv", "start,end,frame,count,flags,name\n11,71,0,0,5,fun\n"},
        {"marks small.bin --format csv", "time,frame,count,name\n81,7,180,\"m,k\"\n"},
        {"hw small.bin --format csv", "start,end,frame,count,name\n91,96,7,190,dma\n"},
        {"hw small.bin",
         "       start           end      start/ms   length/us     frame       count  name\n"
         "          91            96         0.084         4.6         7         190  dma\n"},
        {"samples small.bin --format jsonl --from 11 --to 52",
         "{\"time\":11,\"EMI\":5,\"EMI#2\":50,\"name\":\"MAIN\"}\n"
         "{\"time\":51,\"EMI\":6,\"EMI#2\":4000000000,\"name\":\"IRQ0x03\"}\n"},
        {"units small.bin --unit 1 --format csv",
         "unit,begin,end,firstFrame,lastFrame\n0,72,272,7,8\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const ProgramRun run = m_Folder.Vesk(c.arguments);
        EXPECT_EQ(run.out, c.out);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.code, 0);
    }
}

TEST_F(List, ShowsWhatTheFilterLetsThrough) {
    const struct {
        const char* what;
        const char* arguments;
        const char* names;  // of the rows, in order
    } cases[] = {
        {"an exact name", "jobs --name MAIN", "MAIN MAIN "},
        {"not a part of one", "jobs --name MAI", ""},
        {"several names", "jobs --name IDLE --name MAIN", "MAIN MAIN IDLE "},
        {"any text", "jobs --name '*I*'", "MAIN IRQ0x03 MAIN IDLE "},
        {"a star takes as much as it must", "jobs --name '*0*3'", "IRQ0x03 "},
        {"any character, one", "jobs --name '?D?E'", "IDLE "},
        {"a character above 0x7F", "jobs --name '*\u00E9*'", "a\u00E9\\\"\\u000a "},
        {"an end is not part of a job", "jobs --from 51 --to 52", "IRQ0x03 "},
        {"the first QBit of a job is", "jobs --from 51 --to 65", "IRQ0x03 MAIN "},
        {"times with units", "jobs --from 4.71ms --to 0.00472s", "MAIN IDLE "},
        {"microseconds", "jobs --to 47us --from 12us", "MAIN "},
        {"a mark at the start of the time", "marks --from 81", "m,k "},
        {"a mark at its end", "marks --to 81", ""},
        {"a sample until the next one", "samples --from 52 --to 60", "IRQ0x03 "},
        {"a list without rows", "losses", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ProgramRun run = m_Folder.Shell("$vesk " + std::string(c.arguments) +
                                              " small.bin --format jsonl | sed 's/.*\"name\":\"//; "
                                              "s/\"}$//' | tr '\\n' ' '");
        EXPECT_EQ(run.out, c.names);
        EXPECT_EQ(m_Folder.Vesk(std::string(c.arguments) + " small.bin").code, *c.names ? 0 : 1);
    }
}

TEST_F(List, AnOpenRecordRunsUntilTheNextOneOfItsKindOrTheEnd) {
    const std::string heading = "start,end,frame,count,flags,name\n";
    m_Folder.WriteLog("open", LogBuilder().Task("MAIN", 100).Enter("one", 110).Enter("one", 120));
    EXPECT_EQ(m_Folder.Vesk("calls open.bin --format csv --from 20").out,
              heading + "11,0,0,0,1,one\n21,0,0,0,1,one\n");
    EXPECT_EQ(m_Folder.Vesk("calls open.bin --format csv --from 21").out,
              heading + "21,0,0,0,1,one\n");
    EXPECT_EQ(m_Folder.Vesk("calls open.bin --from 101").code, 1);
}

TEST_F(List, LossesNameTheGapAndTheJobThatRan) {
    m_Folder.WriteLog("lossy", LogBuilder()
                                   .Packets()
                                   .Uscnt(0x8000000, 1000000, 1000000)
                                   .Task("MAIN", 100)
                                   .Task("IDLE", 120)
                                   .Loss(48)
                                   .Loss(16)
                                   .Task("MAIN", 150)
                                   .Loss(32));
    EXPECT_EQ(m_Folder.Vesk("losses lossy.bin --format csv").out,
              "start,end,lost,job,name\n21,51,64,1,IDLE\n151,151,32,2,MAIN\n");
}

// Records of 12 bytes; a unit of 1 KB has 85 of them, and the first of the next unit is read too.
TEST_F(List, UnitsAreReadOneByOneOrByFrames) {
    LogBuilder log;
    log.WithHeader(3);
    for (int frame = 0; frame < 200; ++frame) log.Frame(frame).Task("TASK", 10);
    m_Folder.WriteLog("long", log);
    EXPECT_EQ(m_Folder.Vesk("units long.bin --unit 1 --format csv").out,
              "unit,begin,end,firstFrame,lastFrame\n"
              "0,1036,2056,0,84\n1,2056,3076,85,169\n2,3076,3436,170,199\n");
    const struct {
        const char* range;
        const char* rows;  // number, first and last frame
    } cases[] = {
        {"--pick 0", "86 0 85\n"},
        {"--pick 2", "30 170 199\n"},
        {"--pick-frames 90:90", "86 85 170\n"},
        {"--pick-frames 80:90", "171 0 170\n"},
        {"--pick-frames=-9:0", "86 0 85\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.range);
        const std::string line =
            std::string("$vesk jobs long.bin --unit 1 --format csv ") + c.range;
        EXPECT_EQ(m_Folder
                      .Shell(line + R"( | awk -F, 'NR == 2 { first = $4 }
                                             END { print NR - 1, first, $4 }')")
                      .out,
                  c.rows);
    }
}

TEST_F(List, InfoTellsWhatIsInALog) {
    const ProgramRun run = m_Folder.Shell("$vesk info small.bin | grep -v ^memory");
    EXPECT_EQ(run.out,
              "log         small.bin\n"
              "target      small.target.json\n"
              "form        with header, version 1\n"
              "clock       TQCNT, 16-bit counts with a frame length\n"
              "records     10 records of 20 bytes, from byte 72 to 272\n"
              "duration    5261 QBit (4.856 ms)\n"
              "idle        57 QBit (0.053 ms)\n"
              "jobs        5 jobs, 4 names\n"
              "functions   1 segment, 1 call, 1 name\n"
              "marks       1 mark, 1 name\n"
              "hardware    1 event, 1 name\n"
              "extra       10 samples\n"
              "            EMI from 5 to 6\n"
              "            EMI from 50 to 4000000000\n"
              "\n"
              "   share       time/ms       jobs  task or interrupt\n"
              " 96.75 %         4.698          2  MAIN\n"
              "  1.90 %         0.092          1  a\u00E9\"\\x0a\n"
              "  1.08 %         0.053          1  IDLE\n"
              "  0.25 %         0.012          1  IRQ0x03\n");
    EXPECT_EQ(run.err, "");
}

}  // namespace
