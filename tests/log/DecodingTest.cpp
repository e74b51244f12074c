// Logs in, jobs out: each figure is worked out by hand from the counters of the records. In most
// logs the first record has count 100 and thus time 1, and time follows the count from there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/log/LogBytes.h"
#include "tests/support/LogBuilder.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::Pair;

LogBuilder WithHeader() {
    return LogBuilder().WithHeader(1);
}

// One count is one QBit.
LogBuilder InPackets() {
    return LogBuilder().Packets().Uscnt(1U << 30, 1000, 1000);
}

ReadResult ReadWhole(const LogBuilder& log) {
    ReadResult read = Read(log);
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.error, "");
    return read;
}

using Lines = std::vector<std::string>;

TEST(Jobs, EndWhereTheNextOneBegins) {
    const struct {
        const char* what;
        LogBuilder log;
        Lines jobs;
    } cases[] = {
        {"tasks and an interrupt",
         LogBuilder().Task("MAIN", 100).Irq(3, 140).Task("IDLE", 150),
         {"MAIN 1-41", "IRQ0x03 41-51", "IDLE 51-151"}},
        {"no records", WithHeader(), {}},
        {"less than a record", LogBuilder().Task("MAIN", 100).CutLastBytes(1), {}},
        {"counts of 0 do not move time",
         LogBuilder().Task("A", 0).Task("B", 0).Task("C", 50).Task("D", 100),
         {"C 1-51", "D 51-151"}},
        {"a last job that began at 0 is stored", LogBuilder().Task("A", 0), {"A 0-100"}},
        {"records without a meaning do not move time",
         WithHeader().Task("A", 100).Id(0x90, 150).Id(0xFFFFFFFF, 9).Task("B", 200),
         {"A 1-101", "B 101-201"}},
        {"nobody runs behind an interrupt",
         WithHeader().Task("A", 100).Irq(1, 200).Return(250).Task("B", 300),
         {"A 1-101", "IRQ0x01 101-151", "B 201-301"}},
        {"the last task runs behind an interrupt",
         WithHeader().ReturnsToTask().Task("A", 100).Irq(1, 200).Return(250).Task("B", 300),
         {"A 1-101", "IRQ0x01 101-151", "A 151-201", "B 201-301"}},
        {"a headerless log knows no last task",
         LogBuilder().Capability(17).Task("A", 100).Irq(1, 200).Return(250).Task("B", 300),
         {"A 1-101", "IRQ0x01 101-151", "B 201-301"}},
        {"interrupts nest",
         WithHeader().Task("A", 100).Irq(1, 200).Irq(2, 300).Return(350).Return(400).Task("B", 500),
         {"A 1-101", "IRQ0x01 101-201", "IRQ0x02 201-251", "IRQ0x01 251-301", "B 401-501"}},
        {"a return from nothing",
         WithHeader().Task("A", 100).Return(200).Return(250).Irq(1, 300),
         {"A 1-101", "IRQ0x01 201-301"}},
        {"a task ends all interrupts",
         WithHeader().Irq(1, 100).Irq(2, 200).Task("A", 300).Return(400).Task("B", 500),
         {"IRQ0x01 1-101", "IRQ0x02 101-201", "A 201-301", "B 401-501"}},
        {"resume goes on with the last task and ends all interrupts",
         WithHeader().Task("A", 100).Irq(1, 200).Irq(2, 300).Resume(400).Return(500).Irq(3, 600),
         {"A 1-101", "IRQ0x01 101-201", "IRQ0x02 201-301", "A 301-401", "IRQ0x03 501-601"}},
        {"resume before any task", WithHeader().Resume(100).Task("A", 200), {"A 101-201"}},
        {"a headerless log has no resume",
         LogBuilder().Task("A", 100).Resume(200).Task("B", 300),
         {"A 1-201", "B 201-301"}},
        {"a task without a name",
         WithHeader().Task("A", 100).Task("", 200).Task("B", 300),
         {"A 1-101", "B 201-301"}},
        {"resume after a task without a name",
         WithHeader().Task("A", 100).Task("", 200).Irq(1, 300).Resume(400).Task("B", 500),
         {"A 1-101", "IRQ0x01 201-301", "B 401-501"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = ReadWhole(c.log);
        EXPECT_EQ(Told(read.jobs), c.jobs);
        EXPECT_EQ(read.jobs.m_EndTime, read.jobs.empty() ? 0 : read.jobs.back().m_EndTime);
    }
}

TEST(Jobs, CarryFrameAndCountOfTheRecordThatStartedThem) {
    const ReadResult read = ReadWhole(WithHeader().Frame(7).Task("A", 100).Frame(8).Task("B", 90));
    ASSERT_EQ(read.jobs.size(), 2u);
    EXPECT_EQ(Told(read.jobs[0]), "A 1-4991");  // one frame of 5000, 10 counts less
    EXPECT_EQ(read.jobs[0].m_TimeStamp, 7);
    EXPECT_EQ(read.jobs[0].m_TimeCount, 100u);
    EXPECT_EQ(read.jobs[1].m_TimeStamp, 8);
    EXPECT_EQ(read.jobs[1].m_TimeCount, 90u);
    EXPECT_EQ(read.jobs[1].m_Flags, 0);
}

TEST(Time, FollowsTheFormOfTheLog) {
    const struct {
        const char* what;
        LogBuilder log;
        Lines jobs;
    } cases[] = {
        {"two frames later",
         WithHeader().Frame(5).Task("A", 4000).Frame(7).Task("B", 100).Task("C", 200),
         {"A 1-6101", "B 6101-6201", "C 6201-6301"}},
        {"the tick counts a frame less",
         WithHeader().Frame(10).Task("A", 4000).Irq(0, 4100).Frame(12).Task("B", 4200),
         {"A 1-101", "IRQ0x00 101-5201", "B 5201-5301"}},
        {"another interrupt does not",
         WithHeader().Frame(10).Task("A", 4000).Irq(1, 4100).Frame(12).Task("B", 4200),
         {"A 1-101", "IRQ0x01 101-10201", "B 10201-10301"}},
        {"the tick's code may come from the database",
         WithHeader()
             .Enumerator("Irq_Code_Def_Enum", "Enum_IRQ_CTIRQ1_CODE", 1)
             .Frame(10)
             .Task("A", 4000)
             .Irq(1, 4100)
             .Frame(12)
             .Task("B", 4200),
         {"A 1-101", "IRQ0x01 101-5201", "B 5201-5301"}},
        {"a marked frame length in the tick",
         WithHeader().Frame(10).Task("A", 4000).Irq(0, 4100).Frame(12).FrameLength(0x9388).Task(
             "B", 100),
         {"A 1-101", "IRQ0x00 101-1101", "B 1101-1201"}},
        {"the same, headerless: 2 * 0x9388 - 4000",
         LogBuilder().Frame(10).Task("A", 4000).Irq(0, 4100).Frame(12).FrameLength(0x9388).Task(
             "B", 100),
         {"A 1-101", "IRQ0x00 101-71637", "B 71637-71737"}},
        {"headerless, a frame number that falls",
         LogBuilder().Frame(5).Task("A", 100).Frame(3).Task("B", 200).Task("C", 50),
         {"A 1-101", "B 101-4951", "C 4951-5051"}},
        {"headerless, no frame numbers",
         LogBuilder().WithoutFrameNo().Task("A", 4000).Task("B", 100),
         {"A 1-1101", "B 1101-1201"}},
        {"a tick without a name: nobody is the tick",
         WithHeader()
             .TickIrq(500)
             .Frame(10)
             .Task("A", 100)
             .Return(200)
             .Frame(12)
             .Task("B", 300)
             .Frame(14)
             .Task("C", 400),
         {"A 1-101", "B 5201-15301", "C 15301-15401"}},
        {"microseconds",
         WithHeader().Uscnt(1000, 1, 1).Task("A", 900).Task("B", 100),
         {"A 1-201", "B 201-301"}},
        {"microseconds at half the rate: a first job at 0 is dropped",
         WithHeader().Uscnt(1000, 1, 2).Task("A", 900).Task("B", 100).Task("C", 501).Task("D", 504),
         {"B 100-300", "C 300-301", "D 301-401"}},
        {"microseconds, headerless",
         LogBuilder().Uscnt(1000, 1, 2).Task("A", 899).Task("B", 101).Task("C", 501),
         {"B 101-301", "C 301-401"}},
        {"frames do not count in microseconds",
         WithHeader().Uscnt(1000, 1, 1).Frame(5).Task("A", 100).Frame(9).Task("B", 200),
         {"A 1-101", "B 101-201"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Told(ReadWhole(c.log).jobs), c.jobs);
    }
}

TEST(Time, ComputedFrameNumbersStandInForThoseOfTheRecords) {
    const LogBuilder log = LogBuilder().WithHeader(3);
    // 25 counts: 2 frames; then 20 counts behind 70: 2 more.
    ReadResult read =
        ReadWhole(LogBuilder(log).ComputedFrames(100, 50, 10).Task("A", 75).Task("B", 90));
    ASSERT_EQ(Told(read.jobs), (Lines{"A 1-10016", "B 10016-10116"}));
    EXPECT_EQ(read.jobs[0].m_TimeStamp, 102);
    EXPECT_EQ(read.jobs[1].m_TimeStamp, 104);
    // Counts of 0 do not move time, and each record up to the first other one starts over.
    read = ReadWhole(LogBuilder(log)
                         .ComputedFrames(100, 0, 10)
                         .Task("A", 0)
                         .Task("B", 0)
                         .Task("C", 10)
                         .Task("D", 20));
    ASSERT_EQ(Told(read.jobs), (Lines{"C 1-5011", "D 5011-5111"}));
    EXPECT_EQ(read.jobs[0].m_TimeStamp, 101);
}

TEST(Time, AFrameNumberThatFallsEndsALogWithHeader) {
    const ReadResult read =
        Read(WithHeader().Frame(16).Task("A", 100).Frame(17).Task("B", 90).Frame(10).Task("C", 95));
    EXPECT_FALSE(read.ok);
    EXPECT_EQ(read.error,
              "Failed to parse the raw data to get correct time information.              "
              "                 \nCurrrent file position: 56, job's size: 12, "
              "last_timestamp: 0x11, timestamp: 0xA");
    EXPECT_EQ(Told(read.jobs), (Lines{"A 1-4991", "B 4991-5091"}));
    EXPECT_EQ(read.jobs.Report().m_Outcome, ReadOutcome::kPartial);
    EXPECT_EQ(read.jobs.Report().m_Records, 2u);
}

TEST(Names, OfInterruptsAndTasks) {
    const auto named = [](LogBuilder log) {
        const char* const irqs = "Irq_Code_Def_Enum";
        return log.Enumerator(irqs, "Enum_TIMER_CODE", 1)
            .Enumerator(irqs, "PLAIN", 2)
            .Enumerator(irqs, "Enum_PAST_CODE", 130)
            .Enumerator(irqs, "Enum_IRQ_Code_End", 200)
            .Enumerator("module_type", "MOD_FIVE", 5)
            .Enumerator("module_type", "MOD_TOO", 5)
            .Enumerator("module_type", "MOD_NAME", 0x4E49414D);
    };
    const auto names = [](const McuJobList& jobs) {
        Lines lines;
        for (const McuJob& job : jobs) lines.push_back(job.m_Name);
        return lines;
    };
    const LogBuilder irqs = WithHeader()
                                .Irq(1, 100)
                                .Irq(2, 101)
                                .Irq(10, 102)
                                .Irq(130, 103)
                                .Irq(255, 104)
                                .Irq(256, 105)
                                .Irq(0xFFFF, 106);
    EXPECT_THAT(names(ReadWhole(irqs).jobs), ElementsAre("IRQ0x01", "IRQ0x02", "IRQ0x0a", "IRQ0x82",
                                                         "IRQ0xff", "IRQ0x100", "IRQ0xffff"));
    EXPECT_THAT(
        names(ReadWhole(named(irqs)).jobs),
        ElementsAre("TIMER", "PLAIN", "IRQ0x0a", "IRQ0x82", "IRQ0xff", "IRQ0x100", "IRQ0xffff"));

    const auto tasks = [&](LogBuilder log) {
        return named(log).TaskNumber(5, 100).Irq(9, 101).Return(102).TaskNumber(6, 103).Task("MAIN",
                                                                                             104);
    };
    EXPECT_THAT(names(ReadWhole(tasks(WithHeader().Capability(17))).jobs),
                ElementsAre("MOD_FIVE", "IRQ0x09", "MOD_FIVE", "\6", "MOD_NAME"));
    EXPECT_THAT(names(ReadWhole(tasks(WithHeader().Capability(17, 2))).jobs),
                ElementsAre("\5", "IRQ0x09", "\6", "MAIN"));
    EXPECT_THAT(names(ReadWhole(tasks(LogBuilder().Capability(17))).jobs),
                ElementsAre("\5", "IRQ0x09", "\6", "MAIN"));
}

TEST(Names, TheTickIsAskedForOnlyWhereTheTargetCountsFrames) {
    McuJobList list;
    TargetDatabase database;
    database.m_Enums["Irq_Code_Def_Enum"].Add("Enum_IRQ_CTIRQ1_CODE", 7);
    TargetDatabase::Select(&database);
    ASSERT_TRUE(list.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum));
    std::map<int, std::string> names;
    std::string tick = "as before";
    LiveHostValues host = CurrentHostValues();
    host = HostValues{};
    host.m_Capability.m_Bytes[10] = 1;
    host.m_TickIRQ = 128;
    list.GetIRQName(names, tick);
    EXPECT_EQ(names.size(), 128u);
    EXPECT_EQ(tick, "as before");
    host.m_Capability.m_Bytes[10] = 0;
    list.GetIRQName(names, tick);
    EXPECT_EQ(host.m_TickIRQ, 7);
    EXPECT_EQ(tick, "IRQ0x07");
    host = HostValues{};
    TargetDatabase::Select(nullptr);
}

TEST(Loss, TurnsTheRunningJobIntoALostOne) {
    const struct {
        const char* what;
        LogBuilder log;
        Lines jobs;
        PDIInfo loss;
    } cases[] = {
        {"before any job",
         InPackets().Loss(7).Task("A", 100).Task("B", 200),
         {"%Lost 1-101", "A 101-201", "B 201-301"},
         {"", 7, 0}},
        {"in the first job",
         InPackets().Task("A", 100).Loss(7).Task("B", 200),
         {"%Lost 101-201", "B 201-301"},
         {"A", 7, 0}},
        {"later",
         InPackets().Task("A", 100).Task("B", 200).Loss(9).Task("C", 300),
         {"A 1-101", "%Lost 101-201", "C 201-301"},
         {"B", 9, 1}},
        {"two in a row add up",
         InPackets().Task("A", 100).Task("B", 200).Loss(9).Mark("m", 250).Loss(8).Task("C", 300),
         {"A 1-101", "%Lost 101-201", "C 201-301"},
         {"B", 17, 1}},
        {"interrupts in progress are forgotten",
         InPackets().Task("A", 100).Irq(1, 200).Irq(2, 300).Loss(9).Return(400).Task("B", 500),
         {"A 1-101", "IRQ0x01 101-201", "%Lost 201-301", "B 401-501"},
         {"IRQ0x02", 9, 2}},
        {"at the end the running job stays",
         InPackets().Task("A", 100).Task("B", 200).Loss(9),
         {"A 1-101", "B 101-201"},
         {"B", 9, 1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = ReadWhole(c.log);
        EXPECT_EQ(Told(read.jobs), c.jobs);
        ASSERT_EQ(read.jobs.m_PDIInfos.size(), 1u);
        EXPECT_EQ(read.jobs.m_PDIInfos[0].m_Name, c.loss.m_Name);
        EXPECT_EQ(read.jobs.m_PDIInfos[0].m_LostSize, c.loss.m_LostSize);
        EXPECT_EQ(read.jobs.GetPDIInfoIndex(c.loss.m_JobIndex), 0);
    }
}

TEST(Loss, DamagedPacketsEndTheLogWithAText) {
    const ReadResult read = Read(InPackets()
                                     .Task("A", 100)
                                     .Packet(0xC8, 1, std::string(16, 'x'))
                                     .Task("B", 200)
                                     .Packet(0x00, 0, "")
                                     .Task("C", 300));
    EXPECT_FALSE(read.ok);
    EXPECT_EQ(read.error, "Incorrect Kaldo VESK file. Incorrect packet id.");
    EXPECT_EQ(Told(read.jobs), (Lines{"A 1-101", "B 101-201"}));
    EXPECT_EQ(read.jobs.Report().m_DroppedPackets, 1u);
}

// All in a task M that runs from time 1; a count of 200 is time 101 and so on.
TEST(Functions, MakeSegmentsAndCalls) {
    const LogBuilder main = WithHeader().Task("M", 100);
    const LogBuilder packets = InPackets().Task("M", 100);
    const struct {
        const char* what;
        LogBuilder log;
        Lines segments, calls;
    } cases[] = {
        {"one call",
         LogBuilder(main).Enter("A", 200).Leave("A", 300),
         {"A 101-201 /7"},
         {"A 101-201 /5"}},
        {"a nested call",
         LogBuilder(main).Enter("A", 200).Enter("B", 300).Leave("B", 400).Leave("A", 500),
         {"A 101-0 /1", "B 201-301 /7", "A 301-401 /6"},
         {"A 101-401 /5", "B 201-301 /5"}},
        {"a function that calls itself",
         LogBuilder(main).Enter("A", 200).Enter("A", 300).Leave("A", 400).Leave("A", 500),
         {"A 101-0 /1", "A 201-301 /3", "A 301-401 /6"},
         {"A 101-401 /5", "A 201-301 /5"}},
        {"calls that never end",
         LogBuilder(main).Enter("A", 200).Enter("B", 300),
         {"A 101-0 /1", "B 201-0 /1"},
         {"A 101-0 /1", "B 201-0 /1"}},
        {"an exit of nothing", LogBuilder(main).Leave("B", 300), {}, {}},
        {"an exit of another function: the next record counts from the one before it",
         LogBuilder(main).Enter("B", 200).Enter("A", 300).Leave("B", 400).Leave("A", 500),
         {"B 101-0 /1", "A 201-501 /7", "B 501-0"},
         {"A 201-501 /5", "B 101-301 /5"}},
        {"an exit of a function that never began",
         LogBuilder(main).Enter("A", 200).Leave("X", 300).Leave("A", 400),
         {"A 101-401 /7"},
         {"A 101-401 /5"}},
        {"an exit in another task",
         LogBuilder(main).Enter("A", 200).Task("U", 300).Leave("A", 400),
         {"A 101-301 /7"},
         {"A 101-0 /1"}},
        {"an exit when its task runs again",
         LogBuilder(main).Enter("A", 200).Task("U", 300).Task("M", 400).Leave("A", 500),
         {"A 101-401 /7"},
         {"A 101-401 /5"}},
        {"names of three characters",
         LogBuilder(main).Enter("LONG", 200).Leave("LONX", 300),
         {"LON 101-201 /7"},
         {"LON 101-201 /5"}},
        {"a loss ends the call at the next switch",
         LogBuilder(packets).Task("N", 150).Enter("A", 200).Loss(9).Task("O", 300).Leave("A", 400),
         {"A 101-301 /3"},
         {"A 101-201 /1"}},
        {"the gap of a loss before the first job counts for the call",
         LogBuilder(packets).Enter("A", 200).Loss(9).Task("N", 300),
         {"A 101-0 /1"},
         {"A 101-301 /1"}},
        {"behind a loss an exit closes the call, not the segment",
         LogBuilder(packets).Enter("A", 200).Loss(9).Leave("B", 300).Leave("A", 400),
         {"A 101-0 /1"},
         {"A 101-301 /5"}},
        {"behind a loss a function is entered anew",
         LogBuilder(packets).Enter("A", 200).Loss(9).Enter("A", 300).Leave("A", 400),
         {"A 101-0 /1", "A 201-301 /7"},
         {"A 101-0 /1", "A 201-301 /5"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = ReadWhole(c.log);
        EXPECT_EQ(Told(read.jobs.m_CustomJobs), c.segments);
        EXPECT_EQ(Told(read.jobs.m_CustomJobsCS), c.calls);
        EXPECT_EQ(read.jobs.m_CustomShown, std::vector<bool>(read.jobs.m_CustomNames.size(), true));
    }
}

TEST(Functions, SegmentsCarryTheirRecordsStampAndAddUpPerName) {
    const ReadResult read = ReadWhole(
        WithHeader().Frame(3).Task("M", 100).Enter("A", 200).Enter("B", 300).Leave("B", 400).Leave(
            "A", 500));
    EXPECT_THAT(read.jobs.m_CustomNames, ElementsAre(Pair("A", 200), Pair("B", 100)));
    ASSERT_EQ(read.jobs.m_CustomJobs.size(), 3u);
    EXPECT_EQ(read.jobs.m_CustomJobs[1].m_TimeStamp, 3);
    EXPECT_EQ(read.jobs.m_CustomJobs[1].m_TimeCount, 300u);
    EXPECT_EQ(read.jobs.m_CustomJobsCS.at("A")[0].m_TimeCount, 0u);
}

TEST(Events, AreStoredWithWhatIsKnownOfThem) {
    const ReadResult read = ReadWhole(WithHeader()
                                          .Task("M", 100)
                                          .HwOff("N", 150)
                                          .HwOn("X", 200)
                                          .HwOn("X", 300)
                                          .HwOff("X", 400)
                                          .HwOff("X", 450)
                                          .HwOn("Y", 500)
                                          .Mark("m", 600)
                                          .Mark("", 700));
    EXPECT_THAT(Told(read.jobs.m_HWJobs), ElementsAre("X 101-200", "X 201-301", "Y 401-0"));
    EXPECT_THAT(Told(read.jobs.m_SourceMarks), ElementsAre("m 501-501", " 601-601"));
    EXPECT_THAT(Told(read.jobs), ElementsAre("M 1-101"));
}

TEST(EndOfLog, TheLastJobEndsWithTheLastSegmentBehindItsStart) {
    const struct {
        const char* what;
        LogBuilder log;
        Lines jobs;
    } cases[] = {
        {"nothing behind it", WithHeader().Task("M", 100), {"M 1-101"}},
        {"a closed segment",
         WithHeader().Task("M", 100).Enter("A", 200).Leave("A", 280),
         {"M 1-181"}},
        {"an open segment: its start", WithHeader().Task("M", 100).Enter("A", 240), {"M 1-141"}},
        {"a segment before it",
         WithHeader().Task("M", 100).Enter("A", 200).Leave("A", 280).Task("N", 400),
         {"M 1-301", "N 301-401"}},
        {"nobody runs", WithHeader().Task("M", 100).Return(200), {"M 1-101"}},
        {"half a record more",
         WithHeader().Task("M", 100).Task("N", 200).CutLastBytes(1),
         {"M 1-101"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Told(ReadWhole(c.log).jobs), c.jobs);
    }
}

TEST(Samples, AreChargedToTheJobThatRanInTheirInterval) {
    const auto records = [](LogBuilder log) {
        return log.Values({5})
            .Task("A", 100)
            .Values({6})
            .Irq(1, 200)
            .Values({7})
            .Mark("m", 250)
            .Values({8})
            .Task("B", 300);
    };
    const Lines expected{"1 A: 5", "101 IRQ0x01: 6", "151 IRQ0x01: 7", "201 B: 8"};
    const HeaderItem counter = HeaderItem::UnnamedCounters(1);
    EXPECT_EQ(Told(ReadWhole(records(WithHeader().Extra(counter))).jobs.m_ExtraInfos), expected);
    EXPECT_EQ(Told(ReadWhole(records(LogBuilder().Extra(1, 0))).jobs.m_ExtraInfos), expected);
    const ReadResult read = ReadWhole(records(InPackets().Extra(counter)));
    EXPECT_EQ(Told(read.jobs.m_ExtraInfos), expected);
    EXPECT_THAT(read.jobs.m_ExtraMax, ElementsAre(8));
    EXPECT_THAT(read.jobs.m_ExtraMin, ElementsAre(5));
}

TEST(Samples, KeepTheirValuesInTheOrderOfTheRecord) {
    const ReadResult headerless =
        ReadWhole(LogBuilder().Extra(1, 2).Values({1, 2, 3}).Task("A", 100));
    EXPECT_THAT(Told(headerless.jobs.m_ExtraInfos), ElementsAre("1 A: 1 2 3"));
    const ReadResult withHeader = ReadWhole(WithHeader()
                                                .Extra(HeaderItem{0x777, 4, {}})
                                                .Extra(HeaderItem::UnnamedCounters(2))
                                                .Values({9, 1, 2})
                                                .Task("A", 100));
    EXPECT_THAT(Told(withHeader.jobs.m_ExtraInfos), ElementsAre("1 A: 1 2"));
}

TEST(Samples, RatiosAreWholePercentages) {
    const struct {
        std::vector<std::uint32_t> words;
        Lines sample;
        std::vector<int> max;
    } cases[] = {
        {{200, 50, 100}, {"1 A: 25 50"}, {100, 100}},
        {{0, 50, 100}, {"1 A: 0 0"}, {100, 100}},
        {{3, 2, 3}, {"1 A: 66 100"}, {100, 100}},
        {{1, 3, 1}, {"1 A: 300 100"}, {300, 100}},
        {{1, 0x80000000, 0x40000001}, {"1 A: 0 100"}, {100, 100}},  // 32 bits
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.sample[0]);
        const ReadResult read = ReadWhole(
            WithHeader().Extra(HeaderItem::TwoRatios("a", "b")).Values(c.words).Task("A", 100));
        EXPECT_EQ(Told(read.jobs.m_ExtraInfos), c.sample);
        EXPECT_EQ(read.jobs.m_ExtraMax, c.max);
        EXPECT_THAT(read.jobs.m_ExtraMin, ElementsAre(0, 0));
    }
}

TEST(Samples, TheirRangeIsUnsigned) {
    const LogBuilder log = WithHeader().Extra(HeaderItem::UnnamedCounters(2));
    ReadResult read = ReadWhole(
        LogBuilder(log).Values({7, 0x80000000}).Task("A", 100).Values({9, ~0U}).Task("B", 200));
    EXPECT_THAT(read.jobs.m_ExtraMax, ElementsAre(9, -1));
    EXPECT_THAT(read.jobs.m_ExtraMin, ElementsAre(7, 99999999));
    read = ReadWhole(LogBuilder(log).Values({0, 0}).Task("A", 100).Task("B", 200));
    EXPECT_THAT(read.jobs.m_ExtraMax, ElementsAre(0, 0));
    EXPECT_THAT(read.jobs.m_ExtraMin, ElementsAre(0, 0));
}

TEST(Samples, EachLogEndsWithOne) {
    EXPECT_THAT(Told(ReadWhole(LogBuilder().Raw("8 bytes.")).jobs.m_ExtraInfos),
                ElementsAre("0 :"));
    EXPECT_THAT(Told(ReadWhole(WithHeader()).jobs.m_ExtraInfos), ElementsAre("0 :"));
    EXPECT_THAT(Told(ReadWhole(WithHeader().Task("A", 100).Task("B", 300)).jobs.m_ExtraInfos),
                ElementsAre("201 B:"));
    EXPECT_THAT(
        Told(ReadWhole(WithHeader().Extra(HeaderItem::UnnamedCounters(2))).jobs.m_ExtraInfos),
        ElementsAre("0 : 0 0"));
}

// The record that is no end of a segment ends no sample either.
TEST(Samples, AnExitOutOfOrderEndsNone) {
    const ReadResult read = ReadWhole(WithHeader()
                                          .Extra(HeaderItem::UnnamedCounters(1))
                                          .Values({1})
                                          .Task("M", 100)
                                          .Values({2})
                                          .Enter("A", 200)
                                          .Values({3})
                                          .Leave("X", 300)
                                          .Values({4})
                                          .Leave("A", 400));
    EXPECT_THAT(Told(read.jobs.m_ExtraInfos), ElementsAre("1 M: 1", "101 M: 2", "401 M: 4"));
    EXPECT_EQ(read.jobs.Report().m_UnmatchedExits, 1u);
}

}  // namespace
}  // namespace vesk
