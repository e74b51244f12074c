#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/DynamicLibrary.h"
#include "tests/support/LogBuilder.h"

// The libraries that these logs name lie in the folder "External" beside the test program:
// EXAMPLE is plugins/example.c, all others are faulty_plugin.c, TEXTFILE is no library at all.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vesk::HeaderItem;

constexpr std::uint32_t kPluginItem = 0x10006;
constexpr std::uint32_t kLastPluginItem = 0x1000F;
const std::string kPeriodOf1000{"\xE8\x03\0\0", 4};

// Two jobs of 100 QBit each, and a counter behind the plug-in's 8 bytes.
LogBuilder LogNaming(const std::string& baseName, std::optional<std::string> initData = {},
                     std::uint32_t type = kPluginItem) {
    return LogBuilder()
        .WithHeader(1)
        .Extra(HeaderItem::Plugin(type, 8, baseName, std::move(initData)))
        .Extra(HeaderItem::UnnamedCounters(1))
        .Values({30, 10, 7})
        .Task("MAIN", 100)
        .Values({0, 20, 8})
        .Task("IDLE", 200);
}

LogBuilder InPackets(LogBuilder log) {
    return log.WithHeader(3).Packets().Uscnt(1U << 30, 1000, 1000);
}

std::vector<std::string> NamesOf(const McuJobList& jobs) {
    std::vector<std::string> names;
    for (const CString& name : jobs.m_ExtraNames) names.push_back(name.Str());
    return names;
}

std::vector<std::vector<int>> ValuesOf(const McuJobList& jobs) {
    std::vector<std::vector<int>> values;
    for (const ExtraInfoRecord& sample : jobs.m_ExtraInfos) values.push_back(sample.m_Values);
    return values;
}

bool IsLoaded(const char* baseName) {
    const CString path = McuJobList().GetParsingDllPath(baseName);
    void* library = dlopen(path, RTLD_LAZY | RTLD_NOLOAD);
    if (library) dlclose(library);
    return library != nullptr;
}

// A read that went well and came to an end, whatever the plug-in did.
void ExpectBothJobs(const ReadResult& read) {
    EXPECT_TRUE(read.ok) << read.error;
    EXPECT_EQ(read.error, "");
    ASSERT_EQ(read.jobs.size(), 2u);
    EXPECT_EQ(read.jobs[0].m_EndTime, 101u);
    EXPECT_EQ(read.jobs[1].m_EndTime, 201u);
    EXPECT_THAT(read.jobs.m_ParsingInfos, IsEmpty());
}

// Hits are 30 of 40, then 0 of 20. Misses are 10 and 20 in 100 QBit each.
TEST(Plugin, TheExampleYieldsItsValues) {
    const struct {
        const char* what;
        LogBuilder log;
        int misses[2];
    } cases[] = {
        {"plain, misses per 1083 QBit", LogNaming("EXAMPLE"), {108, 216}},
        {"plain, a period from the header", LogNaming("EXAMPLE", kPeriodOf1000), {100, 200}},
        {"packets", InPackets(LogNaming("EXAMPLE")), {108, 216}},
        {"packets, a period from the header",
         InPackets(LogNaming("EXAMPLE", kPeriodOf1000)),
         {100, 200}},
        {"the last type of an item", LogNaming("EXAMPLE", {}, kLastPluginItem), {108, 216}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = Read(c.log);
        ExpectBothJobs(read);
        EXPECT_THAT(read.messages, IsEmpty());
        EXPECT_THAT(NamesOf(read.jobs), ElementsAre("Hits %", "Misses", "ExtraInfo[0]"));
        EXPECT_THAT(ValuesOf(read.jobs),
                    ElementsAre(ElementsAre(75, c.misses[0], 7), ElementsAre(0, c.misses[1], 8)));
        EXPECT_THAT(read.jobs.m_ExtraMin, ElementsAre(0, 0, 7));
        EXPECT_THAT(read.jobs.m_ExtraMax, ElementsAre(100, c.misses[1], 8));
        EXPECT_FALSE(IsLoaded("EXAMPLE"));
    }
}

TEST(Plugin, AFaultyOneYieldsNothingAndTheReadGoesOn) {
    const char* const noFunctions = "Failed to init DLL functions.";
    const struct {
        const char* what;
        LogBuilder log;
        const char* message;  // null: none
    } cases[] = {
        {"no file", LogNaming("ABSENT"), "DLL doesn't exist. (ABSENT)"},
        {"8 characters without an end", LogNaming("NOSUCH_8"), "DLL doesn't exist. (NOSUCH_8)"},
        {"no name", LogNaming(""), "DLL doesn't exist. ()"},
        {"a file outside the folder", LogNaming("../OUT"), "DLL doesn't exist. (../OUT)"},
        {"no file, and a host that shows no boxes", LogNaming("ABSENT").FeatureLevel(0), nullptr},
        {"no library", LogNaming("TEXTFILE"), "Failed to load DLL."},
        {"no Init_Config", LogNaming("NOINIT"), noFunctions},
        {"no Init_Config, in packets", InPackets(LogNaming("NOINIT")), noFunctions},
        {"no Get_InfoNum", LogNaming("NOINFO"), noFunctions},
        {"no Parsing_Info", LogNaming("NOPARSE"), "Failed to init DLL functions (Parsing_Info)."},
        {"no functions for packets", InPackets(LogNaming("NOKALDO")),
         "Failed to init DLL functions (Parsing_Info_KALDO, Parsing_Header_KALDO)."},
        {"Init_Config answers false", LogNaming("REFUSES", kPeriodOf1000), nullptr},
        {"Init_Config of the example refuses a length", LogNaming("EXAMPLE", "123"), nullptr},
        {"no table", LogNaming("NOTABLE"), nullptr},
        {"a count beyond sense", LogNaming("ABSURD"), nullptr},
        {"a count without entries", LogNaming("NOENTRY"), nullptr},
        {"a host that does not know the type", LogNaming("SOUND", {}, 0x10007).FeatureLevel(3),
         nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = Read(c.log);
        ExpectBothJobs(read);
        if (c.message)
            EXPECT_THAT(read.messages, ElementsAre(c.message));
        else
            EXPECT_THAT(read.messages, IsEmpty());
        EXPECT_THAT(NamesOf(read.jobs), ElementsAre("ExtraInfo[0]"));
        EXPECT_THAT(ValuesOf(read.jobs), ElementsAre(ElementsAre(7), ElementsAre(8)));
    }
}

// Each of these lacks only what its log does not need. In packets the plug-in answers whether
// the interval is the log's last one, which no record ends.
TEST(Plugin, NeedsNoMoreThanItsLogCallsFor) {
    const struct {
        const char* what;
        LogBuilder log;
        int first, last;
    } cases[] = {
        {"plain", LogNaming("NOKALDO"), 30, 0},
        {"packets", InPackets(LogNaming("NOPARSE")), 0, 1},
        {"no init data: Init_Config is not called", LogNaming("REFUSES"), 30, 0},
        {"no values for a record: they stay 0", LogNaming("NOVALUES"), 0, 0},
        {"another type for a simpler host", LogNaming("SOUND").FeatureLevel(3), 30, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReadResult read = Read(c.log);
        ExpectBothJobs(read);
        EXPECT_THAT(read.messages, IsEmpty());
        EXPECT_THAT(NamesOf(read.jobs), ElementsAre("Word", "ExtraInfo[0]"));
        EXPECT_THAT(ValuesOf(read.jobs),
                    ElementsAre(ElementsAre(c.first, 7), ElementsAre(c.last, 8)));
    }
}

TEST(Plugin, SeveralItemsStandSideBySide) {
    const LogBuilder log = LogNaming("EXAMPLE")
                               .Extra(HeaderItem::Plugin(0x10007, 4, "TEXTFILE"))
                               .Extra(HeaderItem::Plugin(0x10008, 8, "EXAMPLE"))
                               .Extra(HeaderItem::Plugin(0x10009, 4, "SOUND"))
                               .Values({1, 1, 9, 1234, 3, 1, 55})
                               .Task("LAST", 300);
    const ReadResult read = Read(log);
    EXPECT_TRUE(read.ok) << read.error;
    EXPECT_THAT(read.messages, ElementsAre("Failed to load DLL."));
    EXPECT_THAT(NamesOf(read.jobs),
                ElementsAre("Hits %", "Misses", "ExtraInfo[0]", "Hits %", "Misses", "Word"));
    ASSERT_EQ(read.jobs.m_ExtraInfos.size(), 3u);
    EXPECT_THAT(read.jobs.m_ExtraInfos[2].m_Values, ElementsAre(50, 10, 9, 75, 10, 55));
}

TEST(Plugin, IsReleasedWhenTheHeaderOrTheRecordsFail) {
    ExtraParsingInfo loaded;
    ASSERT_TRUE(McuJobList().InitParsingDllFunc(loaded, "EXAMPLE"));
    EXPECT_TRUE(IsLoaded("EXAMPLE"));
    vesk::FreeDynamicLibrary(loaded.m_Module);

    std::string refused = LogNaming("EXAMPLE", kPeriodOf1000).Bytes();
    refused.resize(refused.size() - 2 * 24 - 1);  // cuts into the init block
    const vesk::TargetDatabase none;
    const ReadResult header = Read(refused, none, {});
    EXPECT_FALSE(header.ok);
    EXPECT_EQ(header.error, "Failed to parse VESK header.");
    EXPECT_FALSE(IsLoaded("EXAMPLE"));

    const LogBuilder falling = LogNaming("EXAMPLE").Frame(5).Task("A", 300).Frame(4).Task("B", 400);
    const ReadResult records = Read(falling);
    EXPECT_FALSE(records.ok);
    EXPECT_THAT(records.error, testing::StartsWith("Failed to parse the raw data"));
    EXPECT_FALSE(IsLoaded("EXAMPLE"));
}

}  // namespace
