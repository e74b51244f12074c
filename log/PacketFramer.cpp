#include "log/PacketFramer.h"

#include "log/LittleEndian.h"
#include "platform/Text.h"

namespace vesk {

namespace {

constexpr std::size_t kHeaderBytes = 7;  // packet id, sequence number, one unused byte, length
constexpr std::uint8_t kDataPacket = 0xC8;
constexpr std::uint8_t kLossPacket = 0xC5;

}  // namespace

PacketFramer::Event PacketFramer::Next(ByteSource& source) {
    // The range is looked at between records only: a record may end behind it.
    if (!m_InRecord) {
        if (source.Position() > m_End) return Event::kEnd;
        Restart();
    }
    m_InRecord = true;
    while (m_Piece < m_Info.m_PacketsPerJob) {
        const std::uint8_t* header = source.Take(kHeaderBytes);
        if (!header) return Event::kEnd;
        const std::uint8_t packet = header[0];
        const auto sequence = static_cast<std::int8_t>(header[1]);
        const std::uint32_t length = Word32At(header + 3);
        if (packet == kLossPacket) {
            ++m_LossPackets;
            m_LostSize = length;
            Restart();
            return Event::kLoss;
        }
        if (packet != kDataPacket) return Fail("Incorrect Kaldo VESK file. Incorrect packet id.");
        if (m_Bytes.size() + std::uint64_t{length} > m_Info.m_JobSize)
            return Fail("Incorrect Kaldo VESK file. Incorrect packet length.");
        const std::uint8_t* payload = source.Take(length);
        if (!payload) return Event::kEnd;
        if (sequence == 0 && m_Info.m_PacketsPerJob == 1 && length == m_Info.m_JobSize) {
            m_InRecord = false;
            Frame(payload);
            return Event::kRecord;
        }
        if (sequence != m_Piece) {
            ++m_DroppedPackets;
            Restart();
            continue;
        }
        m_Bytes.insert(m_Bytes.end(), payload, payload + length);
        ++m_Piece;
    }
    return Complete();
}

PacketFramer::Event PacketFramer::Complete() {
    m_InRecord = false;
    if (m_Bytes.size() != m_Info.m_JobSize)
        return Fail(FormatText("Incorrect VESK data. Header job size: %d, record size: %d",
                               static_cast<int>(m_Info.m_JobSize),
                               static_cast<int>(m_Bytes.size())));
    Frame(m_Bytes.data());
    return Event::kRecord;
}

void PacketFramer::Frame(const std::uint8_t* bytes) {
    m_Record.m_Bytes = bytes;
    m_Record.m_Id = Word32At(bytes + m_Info.m_ContextIdOffset);
    m_Record.m_Count = Word32At(bytes + m_Info.m_KaldoCountOffset);
    m_Record.m_Wrap = m_Info.m_Wrap;
    m_Record.m_Frame = m_Info.m_HasKaldoFrameNo
                           ? static_cast<std::int32_t>(Word32At(bytes + m_Info.m_KaldoFrameOffset))
                           : 0;
}

PacketFramer::Event PacketFramer::Fail(std::string error) {
    m_Error = std::move(error);
    return Event::kError;
}

void PacketFramer::Restart() {
    m_Piece = 0;
    m_Bytes.clear();
}

}  // namespace vesk
