#include "simulator/LogWriter.h"

#include <algorithm>
#include <cstring>

namespace vesk {

namespace {

constexpr std::size_t kBufferBytes = 1 << 20;
constexpr std::uint32_t kDataPacket = 0xC8;
constexpr std::uint32_t kLossPacket = 0xC5;

// Fields of a record that travels in packets, in their order.
constexpr std::uint32_t kFrameNoField = 0x10000001;
constexpr std::uint32_t kContextIdField = 0x10000003;
constexpr std::uint32_t kCountField = 0x1000000D;
constexpr std::uint32_t kOtherField = 0x10000002;

std::vector<HeaderItem> ItemsInFile(const LogFormat& format) {
    std::vector<HeaderItem> items;
    if (format.m_IsPackets) {
        if (format.m_HasFrameNo) items.push_back({kFrameNoField, 4, {}});
        for (const std::uint32_t field : {kContextIdField, kOtherField, kCountField})
            items.push_back({field, 4, {}});
    }
    items.insert(items.end(), format.m_Items.begin(), format.m_Items.end());
    return items;
}

std::uint32_t InitBytes(const LogFormat& format) {
    std::size_t bytes = 0;
    for (const HeaderItem& item : format.m_Items)
        if (item.m_InitData) bytes += 8 + item.m_InitData->size();
    return static_cast<std::uint32_t>(bytes);
}

std::uint32_t FormatWord(const LogFormat& format) {
    const std::uint32_t clock = format.m_IsTqcnt ? 1 : 2;
    const std::uint32_t computed = format.m_HasFrameNo ? 0 : 0x100;
    const std::uint32_t form = format.m_IsPackets ? 0x10000000 : clock | computed;
    return form | static_cast<std::uint32_t>(format.m_ReturnMode) << 4;
}

// Of a plain record, without its extra data; version 1 knows one size only.
std::uint32_t JobSize(const LogFormat& format) {
    if (format.m_IsPackets) return format.RecordBytes();
    return format.HeaderVersion() == 1 ? 12 : format.RecordBytes() - format.ExtraBytes();
}

}  // namespace

LogWriter::LogWriter(LogFormat format, ByteSink sink)
    : m_Format(std::move(format)),
      m_Sink(std::move(sink)),
      m_Buffer(kBufferBytes),
      m_ExtraBytes(m_Format.ExtraBytes()),
      m_RecordBytes(m_Format.RecordBytes()) {}

bool LogWriter::Header() {
    if (!m_Format.HasHeader()) return true;
    const bool computed = !m_Format.m_HasFrameNo && !m_Format.m_IsPackets;
    const auto itemBytes = static_cast<std::uint32_t>(16 * ItemsInFile(m_Format).size());
    const std::uint32_t fixedBytes = computed ? 16 : 8;
    Raw(m_Format.m_Identifier);
    if (m_Format.WritesVersion()) Put32(static_cast<std::uint32_t>(m_Format.m_Version));
    for (const std::uint32_t word : {16 + fixedBytes + itemBytes + InitBytes(m_Format), fixedBytes,
                                     itemBytes, InitBytes(m_Format), FormatWord(m_Format)})
        Put32(word);
    if (computed) {
        Put32(m_Format.m_FirstFrameNo);
        Put32(m_Format.m_FrameBaseCount);
    }
    Put32(JobSize(m_Format));
    PutItems();
    PutInitBlock();
    if (m_Format.m_WhcpLength) {
        Raw("WHCP");
        Put32(static_cast<std::uint32_t>(*m_Format.m_WhcpLength));
        Put32(static_cast<std::uint32_t>(*m_Format.m_WhcpLength >> 32));
    }
    const std::int32_t version = m_Format.HeaderVersion();
    return FillUpTo(version == 2 ? 512 : version == 3 ? 1036 : BytesWritten()) && !m_Failed;
}

void LogWriter::PutItems() {
    for (const HeaderItem& item : ItemsInFile(m_Format)) {
        Put32(item.m_Type);
        Put32(item.m_Size);
        std::string value = item.m_Value;
        value.resize(8, '\0');
        Raw(value);
    }
}

void LogWriter::PutInitBlock() {
    for (const HeaderItem& item : m_Format.m_Items) {
        if (!item.m_InitData) continue;
        Put32(item.m_Type);
        Put32(static_cast<std::uint32_t>(item.m_InitData->size()));
        Raw(*item.m_InitData);
    }
}

bool LogWriter::FillUpTo(std::uint64_t offset) {
    if (BytesWritten() > offset) return false;
    Raw(std::string(offset - BytesWritten(), '\0'));
    return true;
}

void LogWriter::Record(std::uint32_t id, const RecordStamp& stamp,
                       std::span<const std::uint32_t> extra) {
    if (m_Format.m_IsPackets) {
        PutPacketHeader(kDataPacket, m_RecordBytes);
        if (m_Format.m_HasFrameNo) Put32(static_cast<std::uint32_t>(stamp.m_FrameNo));
        Put32(id);
        Put32(0);
        Put32(stamp.m_Count);
        PutExtra(extra, m_ExtraBytes);
    } else {
        PutPlain(id, stamp, extra);
    }
}

void LogWriter::PutPlain(std::uint32_t id, const RecordStamp& stamp,
                         std::span<const std::uint32_t> extra) {
    Put32(id);
    if (m_Format.m_IsTqcnt) {
        Put16(static_cast<std::uint16_t>(stamp.m_Count));
        Put16(stamp.m_FrameLength);
    } else {
        Put32(stamp.m_Count);
    }
    const std::uint32_t before = m_Format.HasHeader() ? 0 : m_Format.m_ValuesBeforeFrameNo;
    if (before > 0) PutExtra(extra, 4 * before);
    if (m_Format.m_HasFrameNo) Put32(static_cast<std::uint32_t>(stamp.m_FrameNo));
    PutExtra(extra.subspan(std::min<std::size_t>(before, extra.size())), m_ExtraBytes - 4 * before);
}

void LogWriter::PutExtra(std::span<const std::uint32_t> words, std::uint32_t bytes) {
    for (; bytes >= 4; bytes -= 4) {
        Put32(words.empty() ? 0 : words.front());
        if (!words.empty()) words = words.subspan(1);
    }
    for (std::uint32_t i = 0; i < bytes; ++i) PutByte(words.empty() ? 0 : words.front() >> 8 * i);
}

void LogWriter::Loss(std::uint32_t lostBytes) {
    PutPacketHeader(kLossPacket, lostBytes);
}

// Sequence number 0: each record is one packet. The byte behind it means nothing.
void LogWriter::PutPacketHeader(std::uint32_t packetId, std::uint32_t length) {
    PutByte(packetId);
    PutByte(0);
    PutByte(0);
    Put32(length);
}

void LogWriter::Put32(std::uint32_t value) {
    const char bytes[] = {static_cast<char>(value), static_cast<char>(value >> 8),
                          static_cast<char>(value >> 16), static_cast<char>(value >> 24)};
    Raw({bytes, sizeof bytes});
}

void LogWriter::Put16(std::uint16_t value) {
    const char bytes[] = {static_cast<char>(value), static_cast<char>(value >> 8)};
    Raw({bytes, sizeof bytes});
}

void LogWriter::PutByte(std::uint32_t value) {
    const char byte = static_cast<char>(value);
    Raw({&byte, 1});
}

void LogWriter::Raw(std::string_view bytes) {
    if (m_Buffer.size() - m_Used < bytes.size()) MakeRoom(bytes.size());
    std::memcpy(m_Buffer.data() + m_Used, bytes.data(), bytes.size());
    m_Used += bytes.size();
}

void LogWriter::MakeRoom(std::size_t bytes) {
    Flush();
    if (m_Buffer.size() < bytes) m_Buffer.resize(bytes);
}

bool LogWriter::Flush() {
    if (m_Used > 0 && !m_Sink(m_Buffer.data(), m_Used)) m_Failed = true;
    m_Flushed += m_Used;
    m_Used = 0;
    return !m_Failed;
}

}  // namespace vesk
