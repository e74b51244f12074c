#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "log/ByteSource.h"
#include "log/ExtraSampler.h"
#include "log/HeaderInfo.h"
#include "log/LittleEndian.h"
#include "log/RawRecord.h"

namespace vesk {

// Frames records of one fixed size that follow each other without a gap: id, count with frame
// length or 32-bit count, then the extra values and the frame number in the order of the log
// (docs/log-format.md).
class PlainFramer {
public:
    // extraBefore: extra bytes that stand before the frame number, headerless logs only.
    // end: a record that begins exactly there is still read.
    PlainFramer(const HeaderInfo& info, std::uint32_t extraBefore, bool computesFrames,
                std::int64_t start, std::int64_t end);

    std::size_t RecordBytes() const { return m_RecordBytes; }

    // Where the extra data lie in a record of such a log.
    static std::array<ByteRange, 2> ExtraOf(const HeaderInfo& info, std::uint32_t extraBefore);

    // Further records would still lie within the range.
    bool WantsMore() const { return m_Left > 0; }

    // Whole records at hand; empty at the end of the range or of the stream.
    std::span<const std::uint8_t> NextRecords(ByteSource& source);

    // The record at bytes. beforeTime: time has not begun to move, and a computed frame number
    // starts over.
    RawRecord Frame(const std::uint8_t* bytes, bool beforeTime) {
        RawRecord record = FrameSimply(bytes);
        if (m_ComputesFrames) record.m_Frame = ComputeFrame(record, beforeTime);
        return record;
    }

    // The same where no frame number is computed.
    RawRecord FrameSimply(const std::uint8_t* bytes) const {
        RawRecord record;
        record.m_Bytes = bytes;
        record.m_Id = Word32At(bytes);
        const std::uint32_t word = Word32At(bytes + 4);
        record.m_Count = m_IsTQCNT ? word & 0xFFFF : word;
        record.m_Wrap = m_IsTQCNT ? word >> 16 : m_Wrap;
        const bool hasFrame = m_FrameOffset != 0;
        record.m_Frame = hasFrame ? static_cast<std::int32_t>(Word32At(bytes + m_FrameOffset)) : 0;
        return record;
    }
    bool ComputesFrames() const { return m_ComputesFrames; }

private:
    std::int32_t ComputeFrame(const RawRecord&, bool beforeTime);

    bool m_IsTQCNT;
    bool m_ComputesFrames;
    std::uint32_t m_Wrap;
    std::uint32_t m_FrameOffset = 0;  // 0: the records have no frame number
    std::size_t m_RecordBytes;
    std::uint64_t m_Left;  // records that still begin within the range

    std::uint32_t m_FirstFrame;
    std::uint32_t m_Frame = 0;
    std::uint32_t m_BaseCount;
    std::uint32_t m_CountsPerFrame;
};

}  // namespace vesk
