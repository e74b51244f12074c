// The part of a file that a read covers: the units of each form, the choice among them, records
// whose header lies in another file, and the empty prefix of a packet log.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/log/LogBytes.h"
#include "tests/support/LogBuilder.h"
#include "tests/support/TemporaryFile.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Lines = std::vector<std::string>;

// "START-END, frames FIRST to LAST", and the count that belongs to the first if it is not 0.
std::string Told(const OfferedUnit& unit) {
    const SplitInterval& interval = unit.m_Interval;
    std::string text =
        std::to_string(interval.m_StartPos) + "-" + std::to_string(interval.m_EndPos) +
        ", frames " + std::to_string(unit.m_FirstFrame) + " to " + std::to_string(unit.m_LastFrame);
    EXPECT_EQ(interval.m_FirstFrameNo, static_cast<std::uint32_t>(unit.m_FirstFrame));
    if (interval.m_BaseCount != 0) text += ", count " + std::to_string(interval.m_BaseCount);
    return text;
}

Lines ToldUnits(const UnitLister& lister) {
    Lines lines;
    for (const OfferedUnit& unit : lister.m_Units) lines.push_back(Told(unit));
    if (!lister.m_Error.empty()) lines.push_back(lister.m_Error);
    return lines;
}

ReadResult ReadChosen(const LogBuilder& log, RangeChooser& chooser) {
    return Read(log, [&](McuJobList& jobs) { jobs.SetRangeChooser(&chooser); });
}

Lines UnitsOf(const LogBuilder& log, std::int32_t unitKB) {
    UnitLister lister(unitKB);
    const ReadResult read = ReadChosen(log, lister);
    EXPECT_TRUE(lister.m_Asked);
    EXPECT_FALSE(read.ok);
    EXPECT_EQ(read.error, "");
    EXPECT_THAT(read.jobs, IsEmpty());
    return ToldUnits(lister);
}

// Task records, one per frame from 0 on, with counts 10 apart from 60 on.
LogBuilder WithRecords(LogBuilder log, int records) {
    for (int i = 0; i < records; ++i)
        log.Frame(i).Task(i % 2 ? "A" : "B", static_cast<std::uint32_t>(60 + 10 * i));
    return log;
}

LogBuilder InPackets() {
    return LogBuilder().Packets().Uscnt(1U << 30, 1000, 1000);
}

// 1 KB is 85 records of 12 bytes, 128 of 8, 44 packets of 23 and one more.
TEST(Units, HoldWholeRecordsOfEachForm) {
    const LogBuilder computed = LogBuilder().WithHeader(3).ComputedFrames(100, 50, 10);
    const struct {
        const char* what;
        LogBuilder log;
        std::int32_t unitKB;
        Lines units;
    } cases[] = {
        {"frame numbers",
         WithRecords(LogBuilder(), 200),
         1,
         {"0-1020, frames 0 to 84", "1020-2040, frames 85 to 169", "2040-2400, frames 170 to 199"}},
        {"no rest",
         WithRecords(LogBuilder(), 170),
         1,
         {"0-1020, frames 0 to 84", "1020-2040, frames 85 to 169"}},
        {"one record too many",
         WithRecords(LogBuilder(), 86),
         1,
         {"0-1020, frames 0 to 84", "1020-1032, frames 85 to 85"}},
        {"part of a record at the end",
         WithRecords(LogBuilder(), 90).CutLastBytes(5),
         1,
         {"0-1020, frames 0 to 84", "1020-1075, frames 85 to 88"}},
        {"a unit above the file",
         WithRecords(LogBuilder(), 90),
         2000000000,
         {"0-1080, frames 0 to 89"}},
        {"at least two records",
         WithRecords(LogBuilder().Extra(100, 150), 5),
         1,
         {"0-2024, frames 0 to 1", "2024-4048, frames 2 to 3", "4048-5060, frames 4 to 4"}},
        {"behind a header",
         WithRecords(LogBuilder().WithHeader(1), 100),
         1,
         {"32-1052, frames 0 to 84", "1052-1232, frames 85 to 99"}},
        {"computed frame numbers",
         WithRecords(computed, 200),
         1,
         {"1036-2060, frames 101 to 228, count 60", "2060-2636, frames 229 to 300, count 1340"}},
        {"no frame numbers: records count",
         WithRecords(LogBuilder().WithoutFrameNo(), 200),
         1,
         {"0-1024, frames 1 to 128", "1024-1600, frames 129 to 200"}},
        {"packets",
         WithRecords(InPackets(), 100),
         1,
         {"1036-2071, frames 0 to 44", "2071-3106, frames 45 to 89", "3106-3336, frames 90 to 99"}},
        {"losses take their room",
         WithRecords(InPackets().Loss(9).Loss(9).Loss(9).Loss(9), 46),
         1,
         {"1036-2076, frames 0 to 43", "2076-2122, frames 44 to 45"}},
        {"damage ends the units",
         WithRecords(InPackets(), 50).Packet(1, 0, ""),
         1,
         {"1036-2071, frames 0 to 44", "Incorrect Kaldo VESK file. Incorrect packet id."}},
        {"nothing to cut", LogBuilder().WithHeader(1), 1, {}},
        {"no unit size", WithRecords(LogBuilder(), 9), 0, {"Invalid unit size"}},
        {"a negative one", WithRecords(LogBuilder(), 9), -1, {"Invalid unit size"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(UnitsOf(c.log, c.unitKB), c.units);
    }
}

// Time counts from the first record that is read, so a unit's jobs begin at 1 again.
TEST(Units, AreReadWithTheFirstRecordOfTheNext) {
    const LogBuilder log = WithRecords(LogBuilder(), 200);
    const struct {
        std::int64_t number, start, end;
        std::uint64_t records;
        std::int32_t firstFrame, lastFrame;
    } cases[] = {
        {0, 0, 1020, 86, 0, 85}, {1, 1020, 2040, 86, 85, 170}, {2, 2040, 2400, 30, 170, 199}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.number);
        UnitChooser chooser(1, c.number);
        const ReadResult read = ReadChosen(log, chooser);
        EXPECT_TRUE(read.ok) << read.error << chooser.m_Error;
        EXPECT_EQ(read.jobs.Report().m_Records, c.records);
        EXPECT_EQ(read.jobs.Report().m_RangeStart, c.start);
        EXPECT_EQ(read.jobs.Report().m_RangeEnd, c.end);
        ASSERT_THAT(read.jobs, SizeIs(c.records));
        EXPECT_EQ(read.jobs.front().m_TimeStamp, c.firstFrame);
        EXPECT_EQ(read.jobs.front().m_StartTime, 1u);
        EXPECT_EQ(read.jobs.back().m_TimeStamp, c.lastFrame);
    }
}

TEST(Units, GoOnWithComputedFrameNumbersAsInTheWholeLog) {
    const LogBuilder log = WithRecords(LogBuilder().WithHeader(3).ComputedFrames(100, 50, 10), 200);
    const ReadResult whole = Read(log);
    UnitChooser second(1, 1);
    const ReadResult read = ReadChosen(log, second);
    ASSERT_TRUE(whole.ok && read.ok) << whole.error << read.error;
    ASSERT_EQ(read.jobs.size(), 72u);
    for (std::size_t i = 0; i < read.jobs.size(); ++i) {
        EXPECT_EQ(read.jobs[i].m_TimeStamp, whole.jobs[128 + i].m_TimeStamp);
        EXPECT_EQ(read.jobs[i].m_TimeCount, whole.jobs[128 + i].m_TimeCount);
    }
}

TEST(Units, ThatAreNotThereAreNotRead) {
    const LogBuilder log = WithRecords(LogBuilder(), 200);
    const struct {
        std::int32_t unitKB;
        std::int64_t number;
        std::string error;
    } cases[] = {
        {1, 3, "There is no unit 3: the log has 3 units of 1 KB"},
        {1, -1, "There is no unit -1: the log has 3 units of 1 KB"},
        {0, 0, "Invalid unit size"},
    };
    for (const auto& c : cases) {
        UnitChooser chooser(c.unitKB, c.number);
        const ReadResult read = ReadChosen(log, chooser);
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.error, "");
        EXPECT_EQ(chooser.m_Error, c.error);
        EXPECT_EQ(read.jobs.Report().m_Outcome, ReadOutcome::kCancelled);
    }
}

TEST(Frames, AreReadWithTheUnitsThatHoldThem) {
    const LogBuilder log = WithRecords(LogBuilder(), 200);
    const struct {
        std::int64_t first, last, start, end;
    } cases[] = {{0, 84, 0, 1020},     {84, 85, 0, 2040},       {100, 100, 1020, 2040},
                 {-50, 1000, 0, 2400}, {199, 5000, 2040, 2400}, {170, 170, 2040, 2400}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.first);
        FrameChooser chooser(1, c.first, c.last);
        const ReadResult read = ReadChosen(log, chooser);
        EXPECT_TRUE(read.ok) << chooser.m_Error;
        EXPECT_EQ(read.jobs.Report().m_RangeStart, c.start);
        EXPECT_EQ(read.jobs.Report().m_RangeEnd, c.end);
    }
    FrameChooser none(1, 200, 300), backwards(1, 20, 10), invalid(0, 1, 2);
    EXPECT_FALSE(ReadChosen(log, none).ok);
    EXPECT_EQ(none.m_Error, "No unit holds a frame from 200 to 300");
    EXPECT_FALSE(ReadChosen(log, invalid).ok);
    EXPECT_EQ(invalid.m_Error, "Invalid unit size");
}

// Answers with what it was given, and keeps what it was asked.
class FixedChoice : public RangeChooser {
public:
    RangeChoice Choose(const RangeRequest& request) override {
        m_Asked = std::to_string(request.m_SizeKB) + " KB, " + std::to_string(request.m_FileStart) +
                  "-" + std::to_string(request.m_FileEnd) + ", \"" + request.m_UnitText + "\" " +
                  std::to_string(request.m_SplitMode);
        return m_Choice;
    }

    RangeChoice m_Choice;
    std::string m_Asked;
};

TEST(Choice, IsAskedWithTheSizeInStartedKilobytes) {
    const struct {
        std::size_t bytes;
        std::string asked;
    } cases[] = {
        {1024, "1 KB, 0-1024, \"\" 0"}, {1025, "2 KB, 0-1025, \"\" 0"}, {8, "1 KB, 0-8, \"\" 0"}};
    for (const auto& c : cases) {
        FixedChoice chooser;
        Read(std::string(c.bytes, 'x'), {}, {},
             [&](McuJobList& jobs) { jobs.SetRangeChooser(&chooser); });
        EXPECT_EQ(chooser.m_Asked, c.asked);
    }
}

TEST(Choice, OfAUnitIsRememberedForTheNextRead) {
    const LogBuilder log = WithRecords(LogBuilder(), 200);
    UnitChooser unit(1, 1);
    FixedChoice cancel;
    cancel.m_Choice.m_Accepted = false;
    cancel.m_Choice.m_UnitText = "never seen";
    const ReadResult read = Read(log, [&](McuJobList& jobs) {
        const TemporaryFile file(log.Bytes());
        std::string error;
        jobs.SetRangeChooser(&unit);
        EXPECT_TRUE(jobs.ReadFile(file.Path(), error)) << error;
        jobs.SetRangeChooser(&cancel);
    });
    EXPECT_FALSE(read.ok);
    EXPECT_EQ(cancel.m_Asked, "3 KB, 0-2400, \"1\" 1");
    EXPECT_EQ(read.jobs.m_SplitUnit, "1");
    EXPECT_EQ(read.jobs.m_SplitChoice, 1);
    EXPECT_THAT(read.jobs, IsEmpty());
}

TEST(Choice, MayTakeAllOrNothing) {
    const LogBuilder log = WithRecords(LogBuilder(), 200);
    FixedChoice choice;
    EXPECT_THAT(ReadChosen(log, choice).jobs, SizeIs(200));

    choice.m_Choice.m_HasInterval = true;
    choice.m_Choice.m_Interval = {1200, 1200, 0, 0};
    EXPECT_THAT(ReadChosen(log, choice).jobs, SizeIs(1));

    choice.m_Choice.m_Interval = {1200, 1199, 0, 0};
    const ReadResult backwards = ReadChosen(log, choice);
    EXPECT_FALSE(backwards.ok);
    EXPECT_EQ(backwards.error, "Failed to find correct range of parsing unit");
}

TEST(FrameOrigin, IsCarriedBackOverTheRecordsAheadOfTheLength) {
    const auto log = [](std::uint32_t first, std::uint32_t base, std::int64_t length,
                        std::initializer_list<std::uint32_t> counts) {
        LogBuilder builder =
            LogBuilder().WithHeader(2).ComputedFrames(first, base, 10).Whcp(length);
        for (const std::uint32_t count : counts) builder.Task("A", count);
        return builder;
    };
    const struct {
        const char* what;
        LogBuilder log;
        std::uint32_t firstFrame, baseCount;
        std::vector<std::int32_t> frames;
    } cases[] = {
        {"three records, two frames each",
         log(100, 1000, 536, {940, 960, 980, 1000}),
         94,
         940,
         {94, 96, 98, 100}},
        {"part of a frame counts whole", log(100, 1000, 520, {995, 1000}), 99, 990, {99, 100}},
        {"back over a wrap", log(100, 10, 528, {4990, 5, 10}), 98, 4990, {98, 99, 100}},
        {"part of a record is none", log(100, 1000, 535, {980, 990, 1000}), 98, 980, {98, 99, 100}},
        {"a length of 512", log(100, 1000, 512, {1000, 1010}), 100, 1000, {100, 101}},
        {"a negative length", log(100, 1000, -1, {1000, 1010}), 100, 1000, {100, 101}},
        {"a length beyond the file", log(100, 1000, 1 << 20, {1000, 1010}), 100, 1000, {100, 101}},
        {"a length beyond all files",
         log(100, 1000, INT64_MAX, {1000, 1010}),
         100,
         1000,
         {100, 101}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = Read(c.log);
        EXPECT_TRUE(read.ok) << read.error;
        EXPECT_EQ(read.jobs.Report().m_Info.m_FirstFrameNo, c.firstFrame);
        EXPECT_EQ(read.jobs.Report().m_Info.m_FrameBaseCount, c.baseCount);
        std::vector<std::int32_t> frames;
        for (const McuJob& job : read.jobs) frames.push_back(job.m_TimeStamp);
        EXPECT_EQ(frames, c.frames);
    }
}

// Header and records from two files, read with no target but a clock of 1.
class ForeignHeader : public testing::Test {
protected:
    void SetUp() override {
        m_Target = LogBuilder().Uscnt(1000, 1, 1).Database();
        TargetDatabase::Select(&m_Target);
        ASSERT_TRUE(
            m_List.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum));
        m_List.Insert("left from before", 1, 2);
    }
    void TearDown() override { TargetDatabase::Select(nullptr); }

    bool Read(const std::string& headerPath, const std::string& recordsPath) {
        m_Error.clear();
        return m_List.ReadFileWithAnotherHeader(headerPath, recordsPath, m_Error);
    }

    void ExpectRefused(const std::string& headerPath, const std::string& recordsPath,
                       const std::string& text) {
        EXPECT_FALSE(Read(headerPath, recordsPath));
        EXPECT_EQ(m_Error, text);
        EXPECT_THAT(m_List, IsEmpty());
        EXPECT_THAT(m_List.m_ParsingInfos, IsEmpty());
        EXPECT_THAT(m_List.m_ExtraInfos, IsEmpty());
    }

    TargetDatabase m_Target;
    McuJobList m_List;
    std::string m_Error;
    TemporaryFile m_Header{RawHeader{}.Bytes()};
    TemporaryFile m_Records{LogBuilder().Task("A", 100).Task("B", 200).Bytes()};
};

TEST_F(ForeignHeader, DescribesRecordsFromByte0On) {
    const TemporaryFile versioned(RawHeader{.m_Identifier = "VESKBINV" + Words({3})}.Bytes());
    for (const std::string& header : {m_Header.Path(), versioned.Path()}) {
        EXPECT_TRUE(Read(header, m_Records.Path())) << m_Error;
        EXPECT_EQ(m_Error, "");
        EXPECT_THAT(vesk::Told(m_List), ElementsAre("A 1-101", "B 101-201"));
        EXPECT_EQ(m_List.m_FileName.Str(), m_Records.Path());
    }
}

TEST_F(ForeignHeader, IsRefusedWithATextThatSaysWhy) {
    const std::string none = "/no/such/file";
    const TemporaryFile empty(""), shortOne("VESK_BI"), other("VESKBIN2" + RawHeader{}.Bytes());
    const TemporaryFile tooNew("VESKBINV" + Words({4}));
    const TemporaryFile refused(RawHeader{.m_TooMuch = 1}.Bytes());
    const std::string wrong = "Failed to read correct identifier in the header file: ";
    ExpectRefused(none, m_Records.Path(), "Could not open the file: " + none);
    ExpectRefused(empty.Path(), m_Records.Path(), "Failed to read header identifier");
    ExpectRefused(shortOne.Path(), m_Records.Path(), "Failed to read header identifier");
    ExpectRefused(other.Path(), m_Records.Path(), wrong + other.Path());
    ExpectRefused(m_Records.Path(), m_Records.Path(), wrong + m_Records.Path());
    ExpectRefused(tooNew.Path(), m_Records.Path(),
                  "The VESK version is not supported. Please use the latest Trawler.");
    ExpectRefused(refused.Path(), m_Records.Path(), "Failed to parse VESK header.");
    ExpectRefused(m_Header.Path(), none, "Could not open the file: " + none);
}

TEST_F(ForeignHeader, LeavesNothingOfRecordsThatFail) {
    const TemporaryFile falling(
        LogBuilder().Frame(5).Task("A", 100).Frame(4).Task("B", 200).Bytes());
    EXPECT_FALSE(Read(m_Header.Path(), falling.Path()));
    EXPECT_THAT(m_Error, testing::StartsWith("Failed to parse the raw data"));
    EXPECT_THAT(m_Error, testing::EndsWith("Failed to parse raw data file:" + falling.Path()));
    EXPECT_THAT(m_List, IsEmpty());
    EXPECT_THAT(m_List.m_ExtraInfos, IsEmpty());
}

TEST_F(ForeignHeader, OffersUnitsAndMayBeCancelled) {
    const TemporaryFile records(WithRecords(LogBuilder(), 100).Bytes());
    UnitLister lister(1);
    m_List.SetRangeChooser(&lister);
    ExpectRefused(m_Header.Path(), records.Path(), "");
    EXPECT_THAT(ToldUnits(lister),
                ElementsAre("0-1020, frames 0 to 84", "1020-1200, frames 85 to 99"));
    EXPECT_EQ(m_List.Report().m_Outcome, ReadOutcome::kCancelled);
}

TEST(PrefixHeader, Is1036BytesThatNoReadTakesAsTheyStand) {
    McuJobList list;
    list.WriteKaldoPrefixHeader(nullptr);
    std::string bytes(2000, 'x');
    const StreamOwner stream(fmemopen(bytes.data(), bytes.size(), "wb"));
    list.WriteKaldoPrefixHeader(stream.get());
    std::fflush(stream.get());
    EXPECT_EQ(std::ftell(stream.get()), McuJobList::GetKaldoPrefixHeaderSize());
    bytes.resize(1036);
    EXPECT_EQ(bytes, "VESKBINV" + Words({3}) + std::string(1024, '\0'));
    EXPECT_EQ(::Read(bytes, {}, {}).error, "Failed to parse VESK header.");
}

}  // namespace
}  // namespace vesk
