#pragma once

#include <array>
#include <bit>
#include <cstdint>

namespace vesk {

// A stream of random numbers that is the same on every machine for one seed (xoshiro256**, its
// state filled by splitmix64).
class Random {
public:
    explicit Random(std::uint64_t seed) {
        for (std::uint64_t& word : m_State) {
            seed += 0x9E3779B97F4A7C15;
            std::uint64_t mixed = (seed ^ seed >> 30) * 0xBF58476D1CE4E5B9;
            mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
            word = mixed ^ mixed >> 31;
        }
    }

    std::uint64_t Next() {
        const std::uint64_t result = std::rotl(m_State[1] * 5, 7) * 9;
        const std::uint64_t shifted = m_State[1] << 17;
        m_State[2] ^= m_State[0];
        m_State[3] ^= m_State[1];
        m_State[1] ^= m_State[2];
        m_State[0] ^= m_State[3];
        m_State[2] ^= shifted;
        m_State[3] = std::rotl(m_State[3], 45);
        return result;
    }

    // From 0 to limit - 1; limit above 0.
    std::uint32_t Below(std::uint32_t limit) {
        return static_cast<std::uint32_t>((Next() >> 32) * limit >> 32);
    }

    bool OneIn(std::uint32_t number) { return Below(number) == 0; }

private:
    std::array<std::uint64_t, 4> m_State{};
};

}  // namespace vesk
