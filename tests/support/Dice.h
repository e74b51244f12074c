#pragma once

#include <cstdint>
#include <initializer_list>

namespace vesk {

// Chance from a seed: the same throws on every machine, unlike the standard distributions.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_State(seed) {}

    std::uint64_t Next() {
        std::uint64_t z = m_State += 0x9E3779B97F4A7C15ULL;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    std::uint32_t Below(std::uint32_t limit) {
        return static_cast<std::uint32_t>((Next() >> 32) * limit >> 32);
    }
    int Between(int first, int last) {
        return first + static_cast<int>(Below(static_cast<std::uint32_t>(last - first + 1)));
    }
    bool Chance(int percent) { return Below(100) < static_cast<std::uint32_t>(percent); }
    bool OnceIn(std::uint32_t times) { return Below(times) == 0; }

    template <class T>
    T Of(std::initializer_list<T> choices) {
        return choices.begin()[Below(static_cast<std::uint32_t>(choices.size()))];
    }

private:
    std::uint64_t m_State;
};

}  // namespace vesk
