#include "simulator/LogWriter.h"

#include <gtest/gtest.h>

#include "simulator/RecordIds.h"

using vesk::HeaderItem;
using vesk::LogFormat;
using vesk::LogWriter;
using vesk::RecordStamp;
using vesk::SinkTo;

namespace {

std::string Hex(const std::string& bytes) {
    std::string text;
    for (const char c : bytes) {
        constexpr char digits[] = "0123456789abcdef";
        text += digits[static_cast<unsigned char>(c) >> 4];
        text += digits[c & 15];
    }
    return text;
}

LogFormat WithHeader(std::int32_t version) {
    LogFormat format;
    format.SetHeader(version);
    return format;
}

}  // namespace

TEST(LogWriter, LaysARecordOutAsTheFormatSays) {
    LogFormat headerless;
    headerless.m_ValuesBeforeFrameNo = 1;
    headerless.m_ValuesBehindFrameNo = 1;
    LogFormat microseconds = WithHeader(2);
    microseconds.m_IsTqcnt = false;
    LogFormat computed = WithHeader(2);
    computed.m_HasFrameNo = false;
    LogFormat odd = WithHeader(2);
    odd.m_Items = {HeaderItem::Plugin(0x10006, 6, "LIB")};
    LogFormat packets = WithHeader(3);
    packets.m_IsPackets = true;
    packets.m_Items = {HeaderItem::UnnamedCounters(1)};
    const struct {
        const char* what;
        LogFormat format;
        const char* record;
    } cases[] = {
        {"values on both sides of the frame number", headerless,
         "4d41494e"
         "6400"
         "8813"
         "0a000000"
         "07000000"
         "0b000000"},
        {"32-bit counts, no extra values", microseconds,
         "4d41494e"
         "64000000"
         "07000000"},
        {"no frame number", computed,
         "4d41494e"
         "6400"
         "8813"},
        {"extra data that are no whole words", odd,
         "4d41494e"
         "6400"
         "8813"
         "07000000"
         "0a0000000b00"},
        {"a packet", packets,
         "c8"
         "00"
         "00"
         "14000000"
         "07000000"
         "4d41494e"
         "00000000"
         "64000000"
         "0a000000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::string bytes;
        LogWriter writer(c.format, SinkTo(bytes));
        const std::uint32_t values[] = {10, 11};
        writer.Record(vesk::record::Task("MAIN"), RecordStamp{100, 5000, 7}, values);
        EXPECT_TRUE(writer.Flush());
        EXPECT_EQ(Hex(bytes), c.record);
    }
}

TEST(LogWriter, FillsTheHeaderUpToWhereRecordsBegin) {
    const struct {
        std::int32_t version;
        std::size_t begin;
    } cases[] = {{1, 32}, {2, 512}, {3, 1036}, {0, 36}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.version);
        std::string bytes;
        LogWriter writer(WithHeader(c.version), SinkTo(bytes));
        EXPECT_TRUE(writer.Header());
        writer.Flush();
        EXPECT_EQ(bytes.size(), c.begin);
    }
}

TEST(LogWriter, RefusesAHeaderThatDoesNotFit) {
    LogFormat format = WithHeader(2);
    format.m_Items = {HeaderItem::Counters(std::vector<std::string>(70, "COUNTER"))};
    std::string bytes;
    EXPECT_FALSE(LogWriter(format, SinkTo(bytes)).Header());
}

TEST(LogWriter, RemembersThatTheSinkFailed) {
    int calls = 0;
    LogWriter writer(LogFormat(), [&](const char*, std::size_t) { return ++calls > 1; });
    writer.Raw("lost");
    EXPECT_FALSE(writer.Flush());
    writer.Raw("kept");
    EXPECT_FALSE(writer.Flush());
}
