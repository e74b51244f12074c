#include "log/RecordKind.h"

namespace vesk {

namespace {

constexpr std::uint8_t kInterruptPattern = 0xAA;
constexpr std::uint8_t kResumePattern = 0xBB;
constexpr std::uint8_t kFirstNoTask = 0x80;

}  // namespace

RecordId::RecordId(std::uint32_t word)
    : m_Bytes{static_cast<std::uint8_t>(word), static_cast<std::uint8_t>(word >> 8),
              static_cast<std::uint8_t>(word >> 16), static_cast<std::uint8_t>(word >> 24)} {}

// The order of the tests matters: some ids fit more than one of them.
RecordKind RecordId::Kind(bool isHeaderless) const {
    const auto [b0, b1, b2, b3] = m_Bytes;
    switch (b0) {
        case 0xE0:
            return RecordKind::kFunctionEntry;
        case 0xE1:
            return RecordKind::kFunctionExit;
        case 0xE2:
            return RecordKind::kSourceMark;
        case 0xE3:
            return RecordKind::kHardwareStart;
        case 0xE4:
            return RecordKind::kHardwareEnd;
        default:
            break;
    }
    if (b0 == kResumePattern && b1 == kResumePattern && b2 == kResumePattern)
        return b3 == kResumePattern && !isHeaderless ? RecordKind::kResume : RecordKind::kIgnored;
    if (b2 == kInterruptPattern && b3 == kInterruptPattern)
        return b0 == kInterruptPattern ? RecordKind::kReturn : RecordKind::kIrq;
    if (b0 >= kFirstNoTask) return RecordKind::kIgnored;
    return b3 == kInterruptPattern ? RecordKind::kIrq : RecordKind::kTask;
}

std::string RecordId::TextFrom(std::size_t first) const {
    std::string text;
    for (std::size_t i = first; i < m_Bytes.size() && m_Bytes[i] != 0; ++i)
        text += static_cast<char>(m_Bytes[i]);
    return text;
}

}  // namespace vesk
