#include "log/HashSeed.h"

#include <random>

std::uint64_t vesk::HashMultiplier() {
    static const std::uint64_t multiplier = [] {
        std::random_device device;
        return (std::uint64_t{device()} << 32 | device()) | 1;
    }();
    return multiplier;
}
