#include <gtest/gtest.h>

#include "tests/cli/SmallLog.h"
#include "tests/cli/VeskFolder.h"

namespace {

class Find : public testing::Test {
protected:
    // Jobs as in SmallLog; three calls of two functions, one of them within another.
    Find() {
        m_Folder.WriteLog("small", SmallLog());
        LogBuilder log;
        log.WithHeader(1)
            .ReturnsToTask()
            .Task("MAIN", 100)
            .Enter("win", 110)
            .Enter("fin", 120)
            .Leave("fin", 130);
        log.Leave("win", 140)
            .Enter("fin", 150)
            .Mark("Her", 160)
            .Task("IDLE", 165)
            .Task("MAIN", 170);
        m_Folder.WriteLog("calls", log);
    }

    VeskFolder m_Folder;
};

TEST_F(Find, ListsAllRecordsOfAName) {
    const std::string heading = "start,end,duration,frame,name\n";
    const struct {
        const char* arguments;
        std::string rows;
    } cases[] = {
        {"small.bin --task MAIN", "1,51,50,7,MAIN\n64,5104,5040,7,MAIN\n"},
        {"small.bin --task main --from 51", "64,5104,5040,7,MAIN\n"},
        {"small.bin --task irq0X03", "51,64,13,7,IRQ0x03\n"},
        {"small.bin --function FUN", "11,71,60,0,fun\n"},
        {"small.bin --label m,K", "81,81,0,7,\"m,k\"\n"},
        {"small.bin --task 'a\u00E9\"\n'", "5161,5261,100,8,\"a\u00E9\"\"\n\"\n"},
        {"small.bin --regex --task '^I'", "51,64,13,7,IRQ0x03\n5104,5161,57,8,IDLE\n"},
        {"small.bin --regex --task 'a[^x]*n' --to 64", "1,51,50,7,MAIN\n"},
        {"small.bin --regex --task '' --from 5104 --to 5105", "5104,5161,57,8,IDLE\n"},
        {"calls.bin --regex --function in$", "11,41,30,0,win\n21,31,10,0,fin\n51,0,120,0,fin\n"},
        {"calls.bin --function FIN", "21,31,10,0,fin\n51,0,120,0,fin\n"},
        {"calls.bin --label her --from 61", "61,61,0,0,Her\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const ProgramRun run = m_Folder.Vesk("find --format csv " + std::string(c.arguments));
        EXPECT_EQ(run.out, heading + c.rows);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.code, 0);
    }
}

TEST_F(Find, TextHasMillisecondsBesideTheTimes) {
    EXPECT_EQ(
        m_Folder.Vesk("find small.bin --task idle").out,
        "       start           end      start/ms   length/us      duration     frame  name\n"
        "        5104          5161         4.711        52.6            57         8  IDLE\n");
}

TEST_F(Find, TellsByItsExitCodeWhetherThereIsAFind) {
    const struct {
        const char* what;
        const char* arguments;
        int code;
    } cases[] = {
        {"no such name", "small.bin --task MAI", 1},
        {"no such name of that kind", "small.bin --label MAIN", 1},
        {"none at that time", "small.bin --task MAIN --from 6000", 1},
        {"an empty name", "small.bin --task ''", 1},
        {"nothing to find", "small.bin", 2},
        {"two kinds at once", "small.bin --task a --label b", 2},
        {"no regular expression", "small.bin --task 'a(' --regex", 2},
        {"no such log", "none.bin --task a", 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ProgramRun run = m_Folder.Vesk("find --format csv " + std::string(c.arguments));
        EXPECT_EQ(run.code, c.code);
        EXPECT_EQ(run.err.empty(), c.code == 1) << run.err;
    }
}

TEST_F(Find, ALongNameFromAFileDoesNoHarmToARegularExpression) {
    m_Folder.WriteLog("long",
                      LogBuilder().Task(std::string(200000, 'x') + "y", 100).Task("b", 110));
    EXPECT_EQ(m_Folder.Vesk("find long.bin --regex --task '(x|y)*y' --format csv").code, 1);
    EXPECT_EQ(m_Folder.Vesk("find long.bin --regex --task '^(x|y)*' --format csv").code, 0);
}

}  // namespace
