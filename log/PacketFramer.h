#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "log/ByteSource.h"
#include "log/HeaderInfo.h"
#include "log/RawRecord.h"

namespace vesk {

// Frames records that travel in packets: data packets carry the pieces of a record, loss packets
// say how much the target dropped (docs/log-format.md).
class PacketFramer {
public:
    PacketFramer(const HeaderInfo& info, std::int64_t end) : m_Info(info), m_End(end) {}

    enum class Event { kRecord, kLoss, kEnd, kError };

    // What comes next: a record, a loss, the end of the range or stream, or an error.
    Event Next(ByteSource& source);

    const RawRecord& Record() const { return m_Record; }   // after kRecord, until the next call
    std::uint32_t LostSize() const { return m_LostSize; }  // after kLoss
    const std::string& Error() const { return m_Error; }   // after kError

    std::uint64_t LossPackets() const { return m_LossPackets; }
    std::uint64_t DroppedPackets() const { return m_DroppedPackets; }

private:
    Event Fail(std::string error);
    Event Complete();
    void Frame(const std::uint8_t* bytes);
    void Restart();

    const HeaderInfo& m_Info;
    std::int64_t m_End;
    std::vector<std::uint8_t> m_Bytes;  // of the record in assembly
    std::int32_t m_Piece = 0;           // pieces in it
    bool m_InRecord = false;            // its first packet header was looked for
    RawRecord m_Record{};
    std::uint32_t m_LostSize = 0;
    std::string m_Error;
    std::uint64_t m_LossPackets = 0;
    std::uint64_t m_DroppedPackets = 0;
};

}  // namespace vesk
