#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace vesk {

// Numbers as they lie in a log: little-endian, at any alignment.

inline std::uint32_t Word32At(const void* bytes) {
    if constexpr (std::endian::native == std::endian::little) {
        std::uint32_t value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    } else {
        const auto* b = static_cast<const std::uint8_t*>(bytes);
        return b[0] | b[1] << 8 | b[2] << 16 | std::uint32_t{b[3]} << 24;
    }
}

inline std::uint16_t Word16At(const void* bytes) {
    const auto* b = static_cast<const std::uint8_t*>(bytes);
    return static_cast<std::uint16_t>(b[0] | b[1] << 8);
}

inline std::int64_t Signed64At(const void* bytes) {
    const auto* b = static_cast<const std::uint8_t*>(bytes);
    return static_cast<std::int64_t>(Word32At(b) | std::uint64_t{Word32At(b + 4)} << 32);
}

}  // namespace vesk
