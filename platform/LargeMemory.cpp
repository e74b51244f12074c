#include "platform/LargeMemory.h"

#include <sys/mman.h>

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace vesk {

#ifdef MADV_POPULATE_WRITE

namespace {

constexpr std::uintptr_t kLargePage = std::uintptr_t{1} << 21;

// A large page that comes no faster than the small pages that it stands for is not worth having:
// on a virtual machine whose host takes free memory back, one can cost many times as much.
constexpr std::chrono::microseconds kSmallPagesCost{1000};

bool Advise(std::uintptr_t first, std::uintptr_t last, int advice) {
    return madvise(reinterpret_cast<void*>(first), last - first, advice) == 0;
}

}  // namespace

void PreferLargePages(void* block, std::size_t bytes) {
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(block);
    // Whole large pages only: the ends may share their small pages with other blocks.
    const std::uintptr_t first = (begin + kLargePage - 1) & ~(kLargePage - 1);
    const std::uintptr_t last = (begin + bytes) & ~(kLargePage - 1);
    if (last <= first || !Advise(first, last, MADV_HUGEPAGE)) return;
    constexpr std::uintptr_t kTrials = 4;
    const std::uintptr_t trialEnd = std::min(last, first + kTrials * kLargePage);
    const auto start = std::chrono::steady_clock::now();
    Advise(first, trialEnd, MADV_POPULATE_WRITE);
    const auto cost = std::chrono::steady_clock::now() - start;
    if (cost > kSmallPagesCost * ((trialEnd - first) / kLargePage))
        Advise(trialEnd, last, MADV_NOHUGEPAGE);
}

#else

void PreferLargePages(void*, std::size_t) {}

#endif

}  // namespace vesk
