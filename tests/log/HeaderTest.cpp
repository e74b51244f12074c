// What a file's head yields: which logs are refused and with which text, and what the list and the
// decoder learn from those that are not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/log/LogBytes.h"
#include "tests/support/LogBuilder.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kRefusal = "Failed to parse VESK header.";
const std::string kNoClock = "Failed to get \"Trawler_VESK_Clock\" structure from database.";
const std::string kNoClockValue = "Failed to get wrap or rate value from database.";
const std::string kNoKaldoFields =
    "Failed to Kaldo information from header. (context id, frame no and time stamp)";
const std::string kTooNew = "The VESK version is not supported. Please use the latest Trawler.";
const std::string kSpecial = "Please use Trawler V3.0933.01 for this bin file with special format.";
const std::string kUnmatched = "Get some unmatched init data!";

constexpr std::uint32_t kKaldo = 0x10000000;

using Values = std::vector<std::pair<std::string, std::int32_t>>;

TargetDatabase ClockOf(const Values& values) {
    TargetDatabase database;
    for (const auto& [name, value] : values)
        database.m_Enums["Trawler_VESK_Clock"].Add(name, value);
    return database;
}

TargetDatabase WholeClock(std::int32_t originRate = 1, std::int32_t rate = 2) {
    return ClockOf({{"VESK_Clock_Wrap", 1000},
                    {"VESK_Clock_Origin_Rate", originRate},
                    {"VESK_Clock_Rate", rate},
                    {"VESK_TimeStamp_Ratio", 10}});
}

std::string KaldoFields(std::initializer_list<std::uint32_t> types) {
    std::string items;
    for (const std::uint32_t type : types) items += Item(type, 4);
    return items;
}

RawHeader KaldoHeader(const std::string& items, std::uint32_t jobSize) {
    return {"VESKBINV" + Words({3}), kKaldo, jobSize, items};
}

void ExpectRefused(const ReadResult& read, const std::string& text) {
    EXPECT_FALSE(read.ok);
    EXPECT_EQ(read.error, text);
    EXPECT_THAT(read.jobs, IsEmpty());
    EXPECT_THAT(read.jobs.m_ParsingInfos, IsEmpty());
    EXPECT_EQ(read.jobs.Report().m_Outcome, ReadOutcome::kRefused);
}

TEST(Header, IsRefusedWithATextThatSaysWhy) {
    constexpr std::uint32_t kTooManyBytes = (1 << 20) + 1;
    const std::string names = Init(0x103, "12345678");
    const struct {
        const char* what;
        std::string bytes;
        std::string text;
    } cases[] = {
        {"an empty file", "", ""},
        {"7 bytes", "VESK_BI", ""},
        {"an identifier alone", "VESK_BIN", kRefusal},
        {"a version that is cut off", "VESKBINV\3\0", kRefusal},
        {"a version from the future", "VESKBINV" + Words({4}), kTooNew},
        {"a file of another kind", "EMI_CONFIG", kSpecial},
        {"one that begins like it", "EMI_CONFab", kSpecial},
        {"a prefix without a header", "VESKBINV" + Words({3}) + std::string(1024, '\0'), kRefusal},
        {"a sum that is one above", RawHeader{.m_TooMuch = 1}.Bytes(), kRefusal},
        {"a sum that is one below", RawHeader{.m_TooMuch = ~0U}.Bytes(), kRefusal},
        {"no counters", RawHeader{.m_Format = 0}.Bytes(), kRefusal},
        {"unknown counters", RawHeader{.m_Format = 3}.Bytes(), kRefusal},
        {"unknown counters, with all bits", RawHeader{.m_Format = 0xF}.Bytes(), kRefusal},
        {"an unknown return", RawHeader{.m_Format = 0x31}.Bytes(), kRefusal},
        {"job size 16 in version 1", RawHeader{.m_JobSize = 16}.Bytes(), kRefusal},
        {"job size 16 that an item would explain",
         RawHeader{.m_JobSize = 16, .m_Items = Item(0x103, 4)}.Bytes(), kRefusal},
        {"job size 0 in version 1", RawHeader{.m_JobSize = 0}.Bytes(), kRefusal},
        {"half an item", RawHeader{.m_Items = std::string(8, '\0')}.Bytes(), kRefusal},
        {"items that are not there", RawHeader{.m_ItemBytes = 0xFFFFFFF0}.Bytes(), kRefusal},
        {"an item beyond all sense", RawHeader{.m_Items = Item(0x103, kTooManyBytes)}.Bytes(),
         kRefusal},
        {"init data that are not there", RawHeader{.m_Init = Words({0x103, 1})}.Bytes(), kRefusal},
        {"init data beyond all sense", RawHeader{.m_Init = Words({0x103, 0xFFFFFFFF})}.Bytes(),
         kRefusal},
        {"init data that overrun their block",
         RawHeader{.m_Items = Item(0x103, 4), .m_Init = names, .m_InitBytes = 15}.Bytes(),
         kRefusal},
        {"a clock, but no database", RawHeader{.m_Format = 2}.Bytes(), kNoClock + kRefusal},
        {"computed frames, but no database",
         RawHeader{.m_Format = 0x101, .m_Origin = Words({1, 2})}.Bytes(), kNoClock + kRefusal},
        {"packets, but no database", KaldoHeader("", 12).Bytes(), kNoClock + kRefusal},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ExpectRefused(Read(c.bytes, {}, {}), c.text);
    }
}

TEST(Header, IsRefusedWhereverTheFileEnds) {
    const std::string whole = RawHeader{.m_Format = 0x101,
                                        .m_Items = Item(0x103, 8) + Item(0x105, 0),
                                        .m_Init = Init(0x103, "1234567812345678"),
                                        .m_Origin = Words({1, 2})}
                                  .Bytes();
    for (std::size_t length = 8; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        ExpectRefused(Read(whole.substr(0, length), WholeClock(), {}), kRefusal);
    }
    EXPECT_TRUE(Read(whole, WholeClock(), {}).ok);
}

TEST(Header, NeedsAllOfItsClock) {
    const std::string clock = RawHeader{.m_Format = 2}.Bytes();
    const std::string frames = RawHeader{.m_Format = 0x101, .m_Origin = Words({1, 2})}.Bytes();
    const Values noWrap{{"VESK_Clock_Origin_Rate", 1}, {"VESK_Clock_Rate", 1}};
    const Values noOrigin{{"VESK_Clock_Wrap", 1}, {"VESK_Clock_Rate", 1}};
    const Values noRate{{"VESK_Clock_Wrap", 1}, {"VESK_Clock_Origin_Rate", 1}};
    const struct {
        const char* what;
        std::string bytes;
        TargetDatabase database;
    } cases[] = {
        {"no wrap", clock, ClockOf(noWrap)},
        {"no origin rate", clock, ClockOf(noOrigin)},
        {"no rate", clock, ClockOf(noRate)},
        {"no counts per frame", frames, ClockOf(noRate)},
        {"a ratio without an end", clock, WholeClock(0, 1)},
        {"a ratio that is no number", clock, WholeClock(0, 0)},
        {"a ratio of 0", clock, WholeClock(1, 0)},
        {"a negative ratio", clock, WholeClock(-1, 1)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ExpectRefused(Read(c.bytes, c.database, {}), kNoClockValue + kRefusal);
    }
}

TEST(Header, OfPacketsMustSayWhereTheFieldsLie) {
    constexpr std::uint32_t kFrame = 0x10000001, kId = 0x10000003, kCount = 0x1000000D;
    const auto outside = [](const char* numbers) {
        return "Failed to get Kaldo offset info. \n" + std::string(numbers) + kRefusal;
    };
    const struct {
        const char* what;
        RawHeader header;
        std::string text;
    } cases[] = {
        {"no fields", KaldoHeader("", 12), kNoKaldoFields + kRefusal},
        {"no context id", KaldoHeader(KaldoFields({kFrame, kCount}), 12),
         kNoKaldoFields + kRefusal},
        {"no microseconds", KaldoHeader(KaldoFields({kFrame, kId}), 12), kNoKaldoFields + kRefusal},
        {"a record too small for the last", KaldoHeader(KaldoFields({kFrame, kId, kCount}), 11),
         outside("context id offset: 4, timestamp offset: 0, micro second offset: 8, "
                 "job size: 11.")},
        {"an empty record", KaldoHeader(KaldoFields({kId, kCount}), 0),
         outside("context id offset: 0, timestamp offset: 0, micro second offset: 4, "
                 "job size: 0.")},
        {"a field behind a large one",
         KaldoHeader(Item(0x10000002, 70) + KaldoFields({kId, kCount}), 77),
         outside("context id offset: 70, timestamp offset: 0, micro second offset: 74, "
                 "job size: 77.")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ExpectRefused(Read(c.header.Bytes(), WholeClock(), {}), c.text);
    }
    const ReadResult read =
        Read(KaldoHeader(KaldoFields({kFrame, kId, kCount}), 12).Bytes() + std::string(1000, '\0'),
             WholeClock(), {});
    const HeaderInfo& info = read.jobs.Report().m_Info;
    EXPECT_TRUE(read.jobs.m_IsKaldo && info.m_IsKaldo && info.m_HasKaldoFrameNo);
    EXPECT_THAT(
        (std::vector{info.m_KaldoFrameOffset, info.m_ContextIdOffset, info.m_KaldoCountOffset}),
        ElementsAre(0, 4, 8));
}

TEST(Header, FormatWordTellsTheForm) {
    const struct {
        std::uint32_t format;
        bool isTQCNT, hasFrame, returnsToTask;
    } cases[] = {
        {0x001, true, true, false},   {0x011, true, true, false}, {0x021, true, true, true},
        {0x002, false, true, false},  {0x022, false, true, true}, {0x101, true, false, false},
        {0x102, false, false, false}, {0x201, true, true, false}, {0xEFFFF001, true, true, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.format);
        RawHeader header{.m_Format = c.format};
        if (!c.hasFrame) header.m_Origin = Words({7, 8});
        const ReadResult read = Read(header.Bytes(), WholeClock(), {});
        EXPECT_TRUE(read.ok) << read.error;
        const HeaderInfo& info = read.jobs.Report().m_Info;
        EXPECT_EQ(info.m_IsTQCNT, c.isTQCNT);
        EXPECT_EQ(read.jobs.m_IsTQCNT, c.isTQCNT);
        EXPECT_EQ(info.m_FrameBased, c.isTQCNT ? 1 : 0);
        EXPECT_EQ(info.m_HasFrameNo, c.hasFrame);
        EXPECT_EQ(info.m_ReturnToTask, c.returnsToTask);
        EXPECT_EQ(info.m_Wrap, c.isTQCNT ? 0u : 1000u);
        EXPECT_EQ(info.m_Ratio, c.isTQCNT ? 1.0F : 2.0F);
        EXPECT_EQ(info.m_FirstFrameNo, c.hasFrame ? 0u : 7u);
        EXPECT_EQ(info.m_FrameBaseCount, c.hasFrame ? 0u : 8u);
        EXPECT_EQ(info.m_TimeStampRatio, c.hasFrame ? 1u : 10u);
        EXPECT_FALSE(read.jobs.m_IsKaldo);
    }
}

TEST(Header, RecordsBeginWhereTheVersionSays) {
    const LogBuilder jobs = LogBuilder().Task("A", 100).Task("B", 200);
    const struct {
        const char* what;
        LogBuilder log;
        std::int64_t start;
    } cases[] = {
        {"VESK_BIN", LogBuilder(jobs).WithHeader(1), 32},
        {"VESKBIN2", LogBuilder(jobs).WithHeader(2), 512},
        {"VESKBIN2 with a length", LogBuilder(jobs).WithHeader(2).Whcp(512), 512},
        {"version 3", LogBuilder(jobs).WithHeader(3), 1036},
        {"version 2", LogBuilder(jobs).WithIdentifier("VESKBINV", 2), 512},
        {"version 1", LogBuilder(jobs).WithIdentifier("VESKBINV", 1), 36},
        {"version 0", LogBuilder(jobs).WithHeader(0), 36},
        {"version -5", LogBuilder(jobs).WithHeader(-5), 36},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = Read(c.log);
        EXPECT_TRUE(read.ok) << read.error;
        EXPECT_EQ(read.jobs.Report().m_RangeStart, c.start);
        EXPECT_THAT(Told(read.jobs), ElementsAre("A 1-101", "B 101-201"));
    }
}

TEST(Header, ItemsAndInitDataNameTheValues) {
    const std::string two = "first" + std::string(3, '\0') + "second  ";
    const struct {
        const char* what;
        std::string items, init;
        std::vector<std::string> names;
        std::vector<int> max;
        std::uint32_t extraBytes;
        std::string text;
    } cases[] = {
        {"no items", "", "", {}, {}, 0, ""},
        {"counters without names",
         Item(0x103, 8),
         "",
         {"ExtraInfo[0]", "ExtraInfo[1]"},
         {0, 0},
         8,
         ""},
        {"counters with names",
         Item(0x103, 8),
         Init(0x103, two),
         {"first", "second  "},
         {0, 0},
         8,
         ""},
        {"too few names",
         Item(0x103, 8),
         Init(0x103, "only one"),
         {"ExtraInfo[0]", "ExtraInfo[1]"},
         {0, 0},
         8,
         kUnmatched},
        {"names of another length",
         Item(0x103, 4),
         Init(0x103, "twelve bytes"),
         {"ExtraInfo[0]"},
         {0},
         4,
         ""},
        {"names once only",
         Item(0x103, 4) + Item(0x103, 4),
         Init(0x103, "12345678"),
         {"12345678", "ExtraInfo[1]"},
         {0, 0},
         8,
         ""},
        {"the first names stay",
         Item(0x103, 4),
         Init(0x103, "first   ") + Init(0x103, "second  "),
         {"first   "},
         {0},
         4,
         ""},
        {"names fit the second item",
         Item(0x103, 4) + Item(0x103, 8),
         Init(0x103, two),
         {"ExtraInfo[0]", "first", "second  "},
         {0, 0, 0},
         12,
         ""},
        {"names of nothing", Item(0x103, 4), Init(0x999, "12345678"), {"ExtraInfo[0]"}, {0}, 4, ""},
        {"ratios", Item(0x104, 12), "", {"TwoRatios[0]", "TwoRatios[1]"}, {100, 100}, 12, ""},
        {"ratios of a size of their own",
         Item(0x104, 4),
         "",
         {"TwoRatios[0]", "TwoRatios[1]"},
         {100, 100},
         12,
         ""},
        {"each kind has its own numbers",
         Item(0x104, 12) + Item(0x103, 4) + Item(0x104, 12),
         Init(0x104, two),
         {"first", "second  ", "ExtraInfo[0]", "TwoRatios[2]", "TwoRatios[3]"},
         {100, 100, 0, 100, 100},
         28,
         ""},
        {"an unknown item takes its room",
         Item(0x777, 4) + Item(0x103, 4),
         Init(0x777, "12345678"),
         {"ExtraInfo[0]"},
         {0},
         8,
         ""},
        {"an item outside of the record",
         Item(0x104, 20) + Item(0x103, 4),
         "",
         {"TwoRatios[0]", "TwoRatios[1]"},
         {100, 100},
         16,
         ""},
        {"overheads take no room", Item(0x105, 0) + Item(0x106, 0), "", {}, {}, 0, ""},
        {"half a value", Item(0x103, 6), "", {"ExtraInfo[0]"}, {0}, 6, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read =
            Read(RawHeader{.m_Items = c.items, .m_Init = c.init}.Bytes(), {}, {});
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.error, c.text);
        EXPECT_EQ(Told(read.jobs.m_ExtraNames), c.names);
        EXPECT_EQ(read.jobs.m_ExtraInfoNum, static_cast<int>(c.names.size()));
        EXPECT_EQ(read.jobs.Report().m_Info.m_ExtraSize, c.extraBytes);
        EXPECT_EQ(read.jobs.Report().m_Info.m_JobSize, 12 + c.extraBytes);
        // The sample that ends an empty log has values of 0, which lowers the minima.
        EXPECT_EQ(read.jobs.m_ExtraMax, c.max);
        EXPECT_EQ(read.jobs.m_ExtraMin, std::vector<int>(c.names.size(), 0));
    }
}

TEST(Header, MinimaStartAboveAllValues) {
    const std::string bytes = RawHeader{.m_Items = Item(0x104, 12) + Item(0x103, 4)}.Bytes();
    std::string header = bytes;
    McuJobList list;
    HeaderInfo info;
    std::string error;
    const StreamOwner stream = StreamOver(header);
    ASSERT_EQ(std::fseek(stream.get(), 8, SEEK_SET), 0);
    ASSERT_TRUE(list.ReadHeader(stream.get(), info, 1, error));
    EXPECT_EQ(TellPosition(stream.get()), static_cast<std::int64_t>(bytes.size()));
    EXPECT_THAT(list.m_ExtraMin, ElementsAre(0, 0, 99999999));
    EXPECT_THAT(list.m_ExtraMax, ElementsAre(100, 100, 0));
    ASSERT_EQ(list.m_ParsingInfos.size(), 2u);
    EXPECT_EQ(list.m_ParsingInfos[1].m_Offset, 12u);
    EXPECT_EQ(list.m_ParsingInfos[1].m_InfoNum, 1u);
}

TEST(Header, OverheadsAreFourSignedBytesInTheClocksCounts) {
    const struct {
        std::uint32_t value;
        std::int32_t counts, halved;
    } cases[] = {
        {0, 0, 0},
        {0x00002710, 10000, 5000},
        {0x000000F0, -16, -8},
        {0x00008000, -32768, -16384},
        {0x0000FFFF, -257, -128},
        {0x7F000000, 2130706432, 1065353216},
        {0x80000000, INT32_MIN, -1073741824},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        RawHeader header{.m_Items = Item(0x105, 0, Words({c.value})) + Item(0x106, 0, "\1")};
        const ReadResult counted = Read(header.Bytes(), {}, {});
        EXPECT_EQ(counted.jobs.m_TaskOverhead, c.counts);
        EXPECT_EQ(counted.jobs.m_FunctionOverhead, 1);
        header.m_Format = 2;
        const ReadResult halved = Read(header.Bytes(), WholeClock(1, 2), {});
        EXPECT_EQ(halved.jobs.m_TaskOverhead, c.halved);
        EXPECT_EQ(halved.jobs.m_FunctionOverhead, 0);
    }
}

TEST(Headerless, IsLaidOutByTheTargetsStructure) {
    using Field = DataField;
    const Field id{"contextID", 0, 4}, count{"TQCNT", 4, 2}, wrap{"TQWrap", 6, 2};
    const auto format = [](std::int32_t size, std::vector<Field> fields) {
        TargetDatabase database;
        database.m_Formats["SA_LoggingNode_T"] = {size, std::move(fields)};
        return database;
    };
    const Field frameAt8{"frameNo", 8, 4}, frameAt16{"frameNo", 16, 4}, value{"value", 8, 4};
    const Field behind{"value", 12, 4};
    const struct {
        const char* what;
        TargetDatabase database;
        bool hasFrame;
        std::int32_t values;
        std::uint32_t recordBytes, frameOffset;
    } cases[] = {
        {"no structure", {}, true, 0, 12, 8},
        {"no extra field", format(8, {id, count, wrap}), false, 0, 8, 8},
        {"frame number alone", format(12, {id, count, wrap, frameAt8}), true, 0, 12, 8},
        {"values behind it", format(20, {id, count, wrap, frameAt8, behind}), true, 2, 20, 8},
        {"values on both sides", format(24, {id, count, wrap, value, frameAt16}), true, 3, 24, 16},
        {"no frame number", format(18, {id, count, wrap, value}), false, 2, 16, 8},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = Read(std::string(100, 'x'), c.database, {});
        EXPECT_TRUE(read.ok) << read.error;
        const HeaderInfo& info = read.jobs.Report().m_Info;
        EXPECT_EQ(info.m_HasFrameNo, c.hasFrame);
        EXPECT_EQ(read.jobs.m_ExtraInfoNum, c.values);
        EXPECT_EQ(read.jobs.m_ExtraNames.size(), static_cast<std::size_t>(c.values));
        EXPECT_EQ(info.m_JobSize, c.recordBytes);
        EXPECT_EQ(info.m_FrameNoOffset, c.frameOffset);
    }
}

TEST(Headerless, IsRefusedWithATextThatSaysWhy) {
    HostValues microseconds;
    microseconds.m_Capability.m_Bytes[10] = 1;
    TargetDatabase noCount = WholeClock();
    noCount.m_Formats["SA_LoggingNode_T"] = {12, {{"contextID", 0, 4}, {"TQCNT", 4, 4}}};
    TargetDatabase noClock;
    noClock.m_Formats["SA_LoggingNode_T"] = {8, {{"contextID", 0, 4}, {"USCNT", 4, 4}}};
    TargetDatabase noRate = ClockOf({{"VESK_Clock_Wrap", 1}, {"VESK_Clock_Origin_Rate", 1}});
    noRate.m_Formats = noClock.m_Formats;
    TargetDatabase negative = LogBuilder().Database();
    negative.m_Formats["SA_LoggingNode_T"].Size = 4;
    const struct {
        const char* what;
        TargetDatabase database;
        HostValues host;
        std::string text;
    } cases[] = {
        {"no count", noCount, microseconds, "Failed to get \"USCNT\" field from database."},
        {"no clock", noClock, microseconds, kNoClock},
        {"no rate", noRate, microseconds, kNoClockValue},
        {"a structure that ends before its fields",
         negative,
         {},
         "\"SA_LoggingNode_T\" gives a negative number of extra values."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ExpectRefused(Read(std::string(100, 'x'), c.database, c.host), c.text);
    }
}

TEST(ReadFile, LeavesTheListAloneWhereNothingCanBeOpened) {
    McuJobList list;
    list.Insert("A", 1, 2);
    std::string error = "before. ";
    EXPECT_FALSE(list.ReadFile("/no/such/file", error));
    EXPECT_EQ(error, "before. ");  // no database yet: not even opened
    ASSERT_TRUE(list.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum));
    EXPECT_FALSE(list.ReadFile("/no/such/file", error));
    EXPECT_EQ(error, "before. Could not open the file");
    EXPECT_THAT(Told(list), ElementsAre("A 1-2"));
}

TEST(ReadFile, TakesAnythingElseForAHeaderlessLog) {
    const ReadResult read = Read(std::string(1000, '\x90'), {}, {});
    EXPECT_TRUE(read.ok);
    EXPECT_THAT(read.jobs, IsEmpty());
    EXPECT_EQ(read.jobs.Report().m_IgnoredRecords, 83u);
    EXPECT_EQ(read.jobs.Report().m_CutOffBytes, 4u);
}

}  // namespace
}  // namespace vesk
