#include "timeline/TextExport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "tests/support/Dice.h"
#include "tests/timeline/PlainText.h"
#include "tests/timeline/RandomList.h"

namespace vesk {
namespace {

// What an export writes to a file.
std::string Written(TextExport& write, const McuJobList& list) {
    std::FILE* const file = std::tmpfile();
    OutputBuffer out(fileno(file));
    EXPECT_TRUE(write(list, out, {}) && out.Flush());
    std::fseek(file, 0, SEEK_END);
    std::string text(static_cast<std::size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    EXPECT_EQ(std::fread(text.data(), 1, text.size(), file), text.size());
    std::fclose(file);
    return text;
}

McuJob Segment(const char* name, std::uint64_t start, std::uint64_t end, int flags) {
    McuJob segment(name, start, end);
    segment.m_Flags = static_cast<std::uint8_t>(flags);
    return segment;
}

McuJobList ListOfSegments(std::initializer_list<McuJob> segments) {
    McuJobList list;
    list.m_CustomJobs = segments;
    list.m_EndTime = 1000;
    return list;
}

TEST(TextExport, OfAnEmptyLogHasItsFixedLines) {
    const McuJobList list;
    EXPECT_EQ(Written(WriteJobText, list), "\n");
    EXPECT_EQ(Written(WriteExtraInfoText, list), "TaskName, StartTime, EndTime\n");
    EXPECT_EQ(Written(WriteCallText, list), "Func\tStart\tEnd\tDuration\n");
}

TEST(TextExport, OfJobsTellsWhereEachEnds) {
    McuJobList list;
    McuJob job("MAIN", 5, 20);
    job.m_TimeStamp = -3;
    job.m_TimeCount = 4000000000;
    list.Insert(job);
    list.Insert("IRQ3", 30, 30);  // runs until the next one
    list.Insert("a\xE9", 44, 0);  // runs until the log ends
    list.m_EndTime = 0xFFFFFFFFFFFFFFFF;
    const std::string rest =
        "Start: 5,  End: 20\n"
        "JobName: IRQ3\n    FrameNo: 0,  %sCNT: 0,  Start: 30,  End: 44\n"
        "JobName: a\xE9\n    FrameNo: 0,  %sCNT: 0,  Start: 44,  End: -1\n\n";
    for (const std::string clock : {"TQ", "US"}) {
        list.m_IsTQCNT = clock == "TQ";
        std::string expected = "JobName: MAIN\n    FrameNo: -3,  %sCNT: 4000000000,  " + rest;
        for (std::size_t at; (at = expected.find("%s")) != std::string::npos;)
            expected.replace(at, 2, clock);
        EXPECT_EQ(Written(WriteJobText, list), expected);
    }
}

TEST(TextExport, PutsCallsTogetherInOrderOfEntry) {
    const struct {
        const char* what;
        McuJobList list;
        const char* text;
    } cases[] = {
        {"inner behind outer",
         ListOfSegments(
             {Segment("out", 10, 20, 1), Segment("in", 20, 30, 7), Segment("out", 30, 40, 6)}),
         "FunctionName: out\n    Start: 10,  End: 40, duration: 30\n"
         "FunctionName: in\n    Start: 20,  End: 30, duration: 10\n"},
        {"re-entry by any case of the name",
         ListOfSegments({Segment("fun", 10, 20, 1), Segment("FUN", 20, 30, 3),
                         Segment("Fun", 30, 40, 6), Segment("fun", 50, 60, 7)}),
         "FunctionName: fun\n    Start: 10,  End: 40, duration: 30\n"
         "FunctionName: fun\n    Start: 50,  End: 60, duration: 10\n"},
        {"end without entry", ListOfSegments({Segment("lost", 10, 20, 6), Segment("f", 20, 30, 7)}),
         "FunctionName: f\n    Start: 20,  End: 30, duration: 10\n"},
        {"no recorded ends", ListOfSegments({Segment("a", 10, 0, 5), Segment("b", 25, 0, 5)}),
         "FunctionName: a\n    Start: 10,  End: 25, duration: 15\n"
         "FunctionName: b\n    Start: 25,  End: 1000, duration: 975\n"},
        {"never ended, and closed behind it",
         ListOfSegments(
             {Segment("a", 10, 0, 1), Segment("b", 2000, 2010, 7), Segment("c", 2020, 2030, 1)}),
         "FunctionName: a\n    Start: 10,  End: 1000, duration: 990\n"
         "FunctionName: b\n    Start: 2000,  End: 2010, duration: 10\n"
         "FunctionName: c\n    Start: 2020,  End: 1000, duration: -1020\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Written(WriteJobText, c.list), std::string("\n") + c.text);
    }
}

TEST(TextExport, OfSamplesLeavesOutThoseWithoutANameButNotTheirTime) {
    McuJobList list;
    list.m_ExtraNames = {"EMI", "a, b"};
    list.m_ExtraInfos = {{5, {1, -1}, "MAIN"}, {9, {2, 3}, ""}, {12, {7, 0}, "IDLE"}};
    list.m_EndTime = 20;
    EXPECT_EQ(Written(WriteExtraInfoText, list),
              "TaskName, StartTime, EndTime, EMI, a, b\n"
              "MAIN, 5, 9, 1, 4294967295\n"
              "IDLE, 12, 20, 7, 0\n");
}

TEST(TextExport, OfCallsGoesLaneByLane) {
    McuJobList list;
    list.m_CustomJobsCS["b"] = {{"b", 5, 9}, {"b", 20, 0}};
    list.m_CustomJobsCS["a"] = {{"a", 0, 0}, {"a", 7, 7}};
    EXPECT_EQ(Written(WriteCallText, list),
              "Func\tStart\tEnd\tDuration\n"
              "a\t0\t0\t0\na\t7\t7\t0\nb\t5\t9\t4\nb\t20\t0\t0\n");
}

// Names in other cases, names that a short string does not hold, samples without a name.
void Vary(McuJobList& list, Dice& dice) {
    list.m_IsTQCNT = dice.Chance(50);
    for (McuJob& segment : list.m_CustomJobs) {
        if (dice.OnceIn(4) && !segment.m_Name.empty())
            segment.m_Name[segment.m_Name.size() / 2] ^= 0x20;
        if (dice.OnceIn(20)) segment.m_Name += " of a name that takes memory of its own";
    }
    for (ExtraInfoRecord& sample : list.m_ExtraInfos)
        if (dice.OnceIn(5)) sample.m_Name.clear();
}

TEST(TextExport, IsWhatItsRulesSayForAnyLog) {
    for (std::uint64_t seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        McuJobList list;
        FillRandomList(list, seed, dice.Between(0, 200));
        Vary(list, dice);
        ASSERT_EQ(Written(WriteJobText, list), PlainJobText(list));
        ASSERT_EQ(Written(WriteExtraInfoText, list), PlainExtraInfoText(list));
        ASSERT_EQ(Written(WriteCallText, list), PlainCallText(list));
    }
}

// --- Progress and errors -------------------------------------------------------------------------

// Enough records for several looks at the progress in each of the exports.
McuJobList LongList() {
    constexpr std::size_t kRecords = 50000;
    McuJobList list;
    list.resize(kRecords);
    list.m_CustomJobs.assign(kRecords, Segment("f", 1, 2, 7));
    list.m_CustomJobsCS["f"].resize(kRecords);
    list.m_ExtraInfos.assign(kRecords, {1, {}, "n"});
    return list;
}

TEST(TextExport, TellsHowFarItIsAndEndsWhenAsked) {
    const McuJobList list = LongList();
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> nowhere(std::fopen("/dev/null", "w"),
                                                                  std::fclose);
    OutputBuffer out(fileno(nowhere.get()));
    const struct {
        TextExport* write;
        std::int64_t total;
    } cases[] = {{WriteJobText, 100000}, {WriteExtraInfoText, 50000}, {WriteCallText, 50000}};
    for (const auto& c : cases) {
        for (const int stopAt : {1, 2, 3}) {
            int times = 0;
            std::int64_t last = -1;
            EXPECT_FALSE(c.write(list, out, [&](std::int64_t done, std::int64_t total) {
                EXPECT_GT(done, last);
                EXPECT_EQ(total, c.total);
                last = done;
                return ++times < stopAt;
            }));
            EXPECT_EQ(times, stopAt);
        }
    }
}

TEST(TextExport, EndsAtAWriteThatFails) {
    const McuJobList list = LongList();
    for (TextExport* const write : {WriteJobText, WriteExtraInfoText, WriteCallText}) {
        std::FILE* const full = std::fopen("/dev/full", "w");
        OutputBuffer out(fileno(full));
        EXPECT_FALSE(write(list, out, {}));
        EXPECT_STREQ(std::strerror(out.Error()), "No space left on device");
        std::fclose(full);
    }
}

}  // namespace
}  // namespace vesk
