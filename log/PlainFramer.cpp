#include "log/PlainFramer.h"

namespace vesk {

namespace {

constexpr std::uint32_t kFirstBytes = 8;  // id and counter
constexpr std::uint32_t kFrameBytes = 4;

}  // namespace

PlainFramer::PlainFramer(const HeaderInfo& info, std::uint32_t extraBefore, bool computesFrames,
                         std::int64_t start, std::int64_t end)
    : m_IsTQCNT(info.m_IsTQCNT),
      m_ComputesFrames(computesFrames),
      m_Wrap(info.m_Wrap),
      m_FirstFrame(info.m_FirstFrameNo),
      m_BaseCount(info.m_FrameBaseCount),
      m_CountsPerFrame(info.m_TimeStampRatio) {
    m_FrameOffset = info.m_HasFrameNo ? kFirstBytes + extraBefore : 0;
    m_RecordBytes = kFirstBytes + (info.m_HasFrameNo ? kFrameBytes : 0) + info.m_ExtraSize;
    m_Left = end < start ? 0 : static_cast<std::uint64_t>(end - start) / m_RecordBytes + 1;
}

std::array<ByteRange, 2> PlainFramer::ExtraOf(const HeaderInfo& info, std::uint32_t extraBefore) {
    const std::uint32_t behind = kFirstBytes + extraBefore + (info.m_HasFrameNo ? kFrameBytes : 0);
    const ByteRange before{kFirstBytes, extraBefore};
    const ByteRange after{behind, info.m_ExtraSize - extraBefore};
    return extraBefore == 0 ? std::array{after, before} : std::array{before, after};
}

std::span<const std::uint8_t> PlainFramer::NextRecords(ByteSource& source) {
    const auto records = source.TakeRecords(m_RecordBytes, m_Left);
    m_Left -= records.size() / m_RecordBytes;
    return records;
}

std::int32_t PlainFramer::ComputeFrame(const RawRecord& record, bool beforeTime) {
    if (beforeTime) m_Frame = m_FirstFrame;
    const std::uint32_t counts = record.m_Count >= m_BaseCount
                                     ? record.m_Count - m_BaseCount
                                     : record.m_Wrap - m_BaseCount + record.m_Count;
    const std::uint32_t frames = m_CountsPerFrame == 0 ? 0 : counts / m_CountsPerFrame;
    m_Frame += frames;
    m_BaseCount += frames * m_CountsPerFrame;
    if (record.m_Wrap != 0) m_BaseCount %= record.m_Wrap;
    return static_cast<std::int32_t>(m_Frame);
}

}  // namespace vesk
