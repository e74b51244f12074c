#pragma once

#include <array>
#include <cstdint>

// What the connected target can do: 40 bytes of the host, of which single ones are flags.
// A flag counts as set only if its byte is exactly 1.
class TargetCapability {
public:
    static constexpr std::size_t kSize = 40;

    bool LogsMicroseconds() const { return m_Bytes[10] == 1; }
    bool CanStartLogging() const { return m_Bytes[13] == 1; }
    bool HasTaskNumbers() const { return m_Bytes[17] == 1; }
    bool CanStopLogging() const { return m_Bytes[18] == 1; }
    bool AnswersHeaderQuery() const { return m_Bytes[32] == 1; }
    bool OffersSourceChoice() const { return m_Bytes[35] == 1; }

    std::array<std::uint8_t, kSize> m_Bytes{};
};
static_assert(sizeof(TargetCapability) == TargetCapability::kSize);
