#pragma once

#include <cmath>
#include <cstdint>

#include "log/HeaderInfo.h"
#include "log/RawRecord.h"

namespace vesk {

// A floating-point quotient cut to whole numbers; of one above 32 bits the low 32 bits.
inline std::uint32_t LowWordOf(double quotient) {
    constexpr double kTwoTo63 = 9223372036854775808.0;
    constexpr double kTwoTo32 = 4294967296.0;
    if (std::abs(quotient) >= kTwoTo63) quotient = std::fmod(std::trunc(quotient), kTwoTo32);
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(quotient));
}

// Continues wrapping counters and frame numbers to one 64-bit time in QBit.
class LogClock {
public:
    // hasFrames is false where records have neither a frame number nor a computed one; then only
    // the counter moves the time. tickWrapBit tells that bit 15 of a frame length means something
    // while the tick interrupt runs.
    LogClock(const HeaderInfo& info, bool hasFrames, bool tickWrapBit)
        : m_FrameBased(info.m_FrameBased != 0 && hasFrames),
          m_InQBit(info.m_IsTQCNT),
          m_TickWrapBit(tickWrapBit ? 0x8000U : 0U),
          m_Ratio(info.m_Ratio) {}

    std::uint64_t Now() const { return m_Now; }

    // Moves the time by hand: a gap at the start of a log gets a length.
    void Advance(std::uint64_t qbits) { m_Now += qbits; }

    // Moves the time to a record.
    void AdvanceTo(const RawRecord& record, bool tickRuns) {
        std::uint32_t delta = CountsSinceLast(record, tickRuns);
        if (!m_InQBit) delta = LowWordOf(delta / static_cast<double>(m_Ratio));
        m_Now += delta;
    }

    // The record becomes the one that the next is measured from.
    void Accept(const RawRecord& record) {
        m_LastCount = record.m_Count;
        m_LastFrame = record.m_Frame;
    }

    // The first record is measured from one count before itself.
    void StartAt(const RawRecord& record, bool takeFrame) {
        m_LastCount = record.m_Count == 0 ? 0 : record.m_Count - 1;
        if (takeFrame) m_LastFrame = record.m_Frame;
    }

    std::int32_t LastFrame() const { return m_LastFrame; }

private:
    std::uint32_t CountsSinceLast(const RawRecord& record, bool tickRuns) const {
        const bool wrapped = record.m_Count < m_LastCount;
        std::uint32_t wrap = record.m_Wrap;
        std::uint32_t frames = wrapped ? 1 : 0;
        if (m_FrameBased && record.m_Frame > m_LastFrame) {
            frames = static_cast<std::uint32_t>(record.m_Frame) -
                     static_cast<std::uint32_t>(m_LastFrame);
            if (tickRuns) {
                // The tick moves the frame number some time after the counter has wrapped.
                if (wrap & m_TickWrapBit) --frames;
                wrap &= ~m_TickWrapBit;
                if (!wrapped) --frames;
            }
        }
        return frames * wrap - m_LastCount + record.m_Count;
    }

    bool m_FrameBased;
    bool m_InQBit;
    std::uint32_t m_TickWrapBit;
    float m_Ratio;
    std::uint64_t m_Now = 0;
    std::uint32_t m_LastCount = 0;
    std::int32_t m_LastFrame = -1;
};

}  // namespace vesk
