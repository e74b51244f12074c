#pragma once

#include <cstdint>

namespace vesk {

// An odd multiplier for hash tables whose keys come from a file. It differs from one run of the
// program to the next, so that no file can be made whose keys all fall into one slot.
std::uint64_t HashMultiplier();

}  // namespace vesk
