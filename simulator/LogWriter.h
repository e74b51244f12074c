#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "simulator/ByteSink.h"
#include "simulator/LogFormat.h"

namespace vesk {

// When a record was written, as the target's counters say it.
struct RecordStamp {
    std::uint32_t m_Count = 0;           // the low 16 bits of it in TQCNT form
    std::uint16_t m_FrameLength = 5000;  // counts per frame; TQCNT form only
    std::int32_t m_FrameNo = 0;          // not written where frame numbers are computed
};

// Writes a log of any form, record by record, through a buffer. It does not look at what it is
// given: counts and frame numbers stand in the file as the caller says.
class LogWriter {
public:
    LogWriter(LogFormat, ByteSink);

    // Everything ahead of the first record; nothing for a headerless log. False if the header does
    // not fit in the room that its version leaves, or could not be written.
    bool Header();

    // One record by its opening word (RecordIds.h). Extra data are filled up with zeros, or cut, to
    // the bytes that the format asks for.
    void Record(std::uint32_t id, const RecordStamp&, std::span<const std::uint32_t> extra = {});

    // In packet logs: the target dropped so many bytes here.
    void Loss(std::uint32_t lostBytes);

    // Bytes as they are, between records.
    void Raw(std::string_view bytes);

    // Hands on what is still buffered. False if any byte since the start could not be written.
    bool Flush();

    std::uint64_t BytesWritten() const { return m_Flushed + m_Used; }

private:
    void Put32(std::uint32_t);
    void Put16(std::uint16_t);
    void PutByte(std::uint32_t);
    void PutPacketHeader(std::uint32_t packetId, std::uint32_t length);
    void PutPlain(std::uint32_t id, const RecordStamp&, std::span<const std::uint32_t> extra);
    void PutExtra(std::span<const std::uint32_t> words, std::uint32_t bytes);
    void PutItems();
    void PutInitBlock();
    bool FillUpTo(std::uint64_t offset);
    void MakeRoom(std::size_t bytes);

    LogFormat m_Format;
    ByteSink m_Sink;
    std::vector<char> m_Buffer;
    std::size_t m_Used = 0;
    std::uint64_t m_Flushed = 0;
    std::uint32_t m_ExtraBytes;
    std::uint32_t m_RecordBytes;
    bool m_Failed = false;
};

}  // namespace vesk
