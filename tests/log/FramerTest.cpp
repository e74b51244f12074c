#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "log/PacketFramer.h"
#include "log/PlainFramer.h"
#include "tests/log/LogBytes.h"

namespace vesk {
namespace {

using testing::ElementsAre;

constexpr std::int64_t kNoEnd = std::numeric_limits<std::int64_t>::max();

TEST(PlainFramer, FindsTheFieldsOfEachForm) {
    std::string bytes = Words({0x11111111, 0x13880064, 33, 44, 55});
    const struct {
        const char* what;
        bool isTQCNT, hasFrame;
        std::uint32_t extraBefore, extraSize;
        std::size_t recordBytes;
        std::uint32_t count, wrap;
        std::int32_t frame;
    } cases[] = {
        {"16-bit count", true, true, 0, 0, 12, 100, 5000, 33},
        {"16-bit count without frame number", true, false, 0, 4, 12, 100, 5000, 0},
        {"32-bit count", false, true, 0, 8, 20, 0x13880064, 1000, 33},
        {"values ahead of the frame number", true, true, 8, 8, 20, 100, 5000, 55},
        {"values on both sides of it", true, true, 4, 8, 20, 100, 5000, 44},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        HeaderInfo info;
        info.m_IsTQCNT = c.isTQCNT;
        info.m_HasFrameNo = c.hasFrame;
        info.m_Wrap = 1000;
        info.m_ExtraSize = c.extraSize;
        PlainFramer framer(info, c.extraBefore, false, 0, 1000);
        EXPECT_EQ(framer.RecordBytes(), c.recordBytes);
        const auto* start = reinterpret_cast<const std::uint8_t*>(bytes.data());
        const RawRecord record = framer.Frame(start, false);
        EXPECT_EQ(record.m_Id, 0x11111111u);
        EXPECT_EQ(record.m_Count, c.count);
        EXPECT_EQ(record.m_Wrap, c.wrap);
        EXPECT_EQ(record.m_Frame, c.frame);
        EXPECT_EQ(record.m_Bytes, start);
    }
}

// Records of 12 bytes from position 40 on, ten of them and a rest.
TEST(PlainFramer, ReadsTheRecordThatBeginsAtTheEndOfTheRange) {
    const struct {
        std::int64_t end;
        std::size_t records;
        bool wantsMore;
    } cases[] = {{40, 1, false},   {51, 1, false},  {52, 2, false}, {148, 10, false},
                 {159, 10, false}, {160, 10, true}, {39, 0, false}, {kNoEnd, 10, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.end);
        std::string bytes(125, 'x');
        const StreamOwner stream = StreamOver(bytes);
        ByteSource source(stream.get(), 40);
        PlainFramer framer({}, 0, false, 40, c.end);
        std::size_t read = 0;
        for (auto some = framer.NextRecords(source); !some.empty();
             some = framer.NextRecords(source))
            read += some.size() / 12;
        EXPECT_EQ(read, c.records);
        EXPECT_EQ(framer.WantsMore(), c.wantsMore);
    }
}

TEST(PlainFramer, ComputesFrameNumbersFromCounts) {
    HeaderInfo info;
    info.m_IsTQCNT = true;
    info.m_HasFrameNo = false;
    info.m_FirstFrameNo = 100;
    info.m_FrameBaseCount = 50;
    info.m_TimeStampRatio = 10;
    const struct {
        const char* what;
        std::uint32_t count, wrap;
        bool beforeTime;
        std::int32_t frame;
    } steps[] = {
        {"25 counts behind the base: two frames", 75, 1000, true, 102},
        {"starts over, but the base has moved on", 79, 1000, true, 100},
        {"20 counts behind it", 90, 1000, false, 102},
        {"wrapped: 920 counts", 10, 1000, false, 194},
        {"without a frame length the base does not wrap", 9, 0, false, 429496923},
    };
    PlainFramer framer(info, 0, true, 0, kNoEnd);
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        const std::string bytes = Words({1, s.count | s.wrap << 16});
        const auto* at = reinterpret_cast<const std::uint8_t*>(bytes.data());
        EXPECT_EQ(framer.Frame(at, s.beforeTime).m_Frame, s.frame);
    }
    info.m_TimeStampRatio = 0;
    PlainFramer without(info, 0, true, 0, kNoEnd);
    const std::string bytes = Words({1, 75});
    EXPECT_EQ(without.Frame(reinterpret_cast<const std::uint8_t*>(bytes.data()), true).m_Frame,
              100);
}

std::string Packet(char id, char sequence, const std::string& payload) {
    return std::string{id, sequence, '?'} + Words({static_cast<std::uint32_t>(payload.size())}) +
           payload;
}

std::string Data(char sequence, const std::string& payload) {
    return Packet('\xC8', sequence, payload);
}

std::string Loss(std::uint32_t bytes) {
    return std::string("\xC5\0?", 3) + Words({bytes});
}

// Id, count and frame number of each record; 12 bytes unless told otherwise.
class PacketEvents {
public:
    PacketEvents() {
        m_Info.m_JobSize = 12;
        m_Info.m_KaldoCountOffset = 4;
        m_Info.m_KaldoFrameOffset = 8;
        m_Info.m_HasKaldoFrameNo = true;
    }

    std::vector<std::string> Of(std::string bytes) const {
        const StreamOwner stream = StreamOver(bytes);
        ByteSource source(stream.get(), 0);
        PacketFramer framer(m_Info, m_End);
        std::vector<std::string> events;
        for (;;) {
            using Event = PacketFramer::Event;
            const Event event = framer.Next(source);
            const RawRecord& record = framer.Record();
            if (event == Event::kRecord)
                events.push_back("record " + std::to_string(record.m_Id) + " " +
                                 std::to_string(record.m_Count) + " " +
                                 std::to_string(record.m_Frame));
            if (event == Event::kLoss)
                events.push_back("loss " + std::to_string(framer.LostSize()));
            if (event == Event::kError) events.push_back(framer.Error());
            if (event == Event::kEnd) events.push_back("end");
            if (event == Event::kError || event == Event::kEnd) break;
        }
        if (framer.DroppedPackets() > 0)
            events.push_back(std::to_string(framer.DroppedPackets()) + " dropped");
        return events;
    }

    HeaderInfo m_Info;
    std::int64_t m_End = kNoEnd;
};

const char* const kWrongId = "Incorrect Kaldo VESK file. Incorrect packet id.";
const char* const kWrongLength = "Incorrect Kaldo VESK file. Incorrect packet length.";

TEST(PacketFramer, AssemblesRecordsAndNamesDamage) {
    const std::string first = Words({1, 100, 7});
    const std::string second = Words({2, 200, 8});
    const std::string tooLong = std::string("\xC8\0?", 3);
    const struct {
        const char* what;
        std::string bytes;
        std::vector<std::string> events;
    } cases[] = {
        {"nothing", "", {"end"}},
        {"two records",
         Data(0, first) + Data(0, second),
         {"record 1 100 7", "record 2 200 8", "end"}},
        {"losses have no payload",
         Loss(9) + Data(0, first) + Loss(0xFFFFFFFF),
         {"loss 9", "record 1 100 7", "loss 4294967295", "end"}},
        {"a wrong sequence number",
         Data(1, first) + Data(-1, first) + Data(0, second),
         {"record 2 200 8", "end", "2 dropped"}},
        {"a wrong packet",
         Data(0, first) + Packet('\xC7', 0, second),
         {"record 1 100 7", kWrongId}},
        {"a payload too long", Data(0, first + "x"), {kWrongLength}},
        {"a payload beyond all sense", tooLong + Words({0xFFFFFFFF}), {kWrongLength}},
        {"a wrong length comes before a wrong sequence", Data(5, first + "x"), {kWrongLength}},
        {"a record too short",
         Data(0, first.substr(4)),
         {"Incorrect VESK data. Header job size: 12, record size: 8"}},
        {"an empty record",
         Data(0, ""),
         {"Incorrect VESK data. Header job size: 12, record size: 0"}},
        {"an end in a packet's header",
         Data(0, first) + Data(0, "").substr(0, 6),
         {"record 1 100 7", "end"}},
        {"an end behind it", Data(0, first).substr(0, 7), {"end"}},
        {"an end in the payload", Data(0, first).substr(0, 18), {"end"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(PacketEvents().Of(c.bytes), c.events);
    }
}

TEST(PacketFramer, LooksAtTheEndOfTheRangeBetweenRecordsOnly) {
    const std::string record = Data(0, Words({1, 100, 7}));  // 19 bytes
    PacketEvents framed;
    framed.m_End = 19;
    EXPECT_THAT(framed.Of(record + record + record),
                ElementsAre("record 1 100 7", "record 1 100 7", "end"));
    EXPECT_THAT(framed.Of(record + Loss(5) + Loss(6) + record),
                ElementsAre("record 1 100 7", "loss 5", "loss 6", "record 1 100 7", "end"));
    framed.m_End = 18;
    EXPECT_THAT(framed.Of(record + record), ElementsAre("record 1 100 7", "end"));
}

TEST(PacketFramer, PutsPiecesTogether) {
    const std::string head = Words({1, 100});
    const std::string tail = Words({7});
    PacketEvents framed;
    framed.m_Info.m_PacketsPerJob = 2;
    EXPECT_THAT(framed.Of(Data(0, head) + Data(1, tail)), ElementsAre("record 1 100 7", "end"));
    EXPECT_THAT(framed.Of(Data(0, head) + Data(0, tail) + Data(0, head) + Data(1, tail)),
                ElementsAre("record 1 100 7", "end", "1 dropped"));
    EXPECT_THAT(framed.Of(Data(0, head) + Loss(3) + Data(0, head) + Data(1, tail)),
                ElementsAre("loss 3", "record 1 100 7", "end"));
    EXPECT_THAT(framed.Of(Data(0, head) + Data(1, head)), ElementsAre(kWrongLength));
}

TEST(PacketFramer, ALogWithoutFrameNumbersHasFrame0) {
    PacketEvents framed;
    framed.m_Info.m_HasKaldoFrameNo = false;
    EXPECT_THAT(framed.Of(Data(0, Words({1, 100, 7}))), ElementsAre("record 1 100 0", "end"));
}

}  // namespace
}  // namespace vesk
