#include "platform/MemoryAhead.h"

#include <sys/mman.h>

#include <algorithm>
#include <chrono>

namespace vesk {

#ifdef MADV_POPULATE_WRITE

namespace {

constexpr std::uintptr_t kPage = 4096;
constexpr std::uintptr_t kLargePage = std::uintptr_t{1} << 21;
// So much at a time stays in the cache until it is written.
constexpr std::uintptr_t kSmallStep = std::uintptr_t{1} << 19;
constexpr std::size_t kWorthIt = std::size_t{1} << 22;

// A large page that comes no faster than the small pages that it stands for is not worth having:
// on a virtual machine whose host takes free memory back, one can cost many times as much.
constexpr std::chrono::microseconds kSmallPagesCost{1000};

std::uintptr_t RoundUp(std::uintptr_t address, std::uintptr_t unit) {
    return (address + unit - 1) & ~(unit - 1);
}

bool Advise(std::uintptr_t first, std::uintptr_t last, int advice) {
    return madvise(reinterpret_cast<void*>(first), last - first, advice) == 0;
}

}  // namespace

MemoryAhead::MemoryAhead(void* block, std::size_t bytes) {
    if (bytes < kWorthIt) return;
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(block);
    m_Ready = RoundUp(begin, kPage);
    m_End = (begin + bytes) & ~(kPage - 1);
    m_InLargePages = Advise(m_Ready, m_End, MADV_HUGEPAGE);
}

void MemoryAhead::Extend(const void* end) {
    const std::uintptr_t wanted = std::min(reinterpret_cast<std::uintptr_t>(end), m_End);
    while (m_Ready < wanted) {
        const std::uintptr_t next = std::min(
            m_InLargePages ? RoundUp(m_Ready + 1, kLargePage) : m_Ready + kSmallStep, m_End);
        const auto start = std::chrono::steady_clock::now();
        if (!Advise(m_Ready, next, MADV_POPULATE_WRITE)) m_End = 0;
        const auto cost = std::chrono::steady_clock::now() - start;
        m_Ready = next;
        if (m_InLargePages && cost > kSmallPagesCost && m_Ready < m_End) {
            m_InLargePages = false;
            Advise(m_Ready, m_End, MADV_NOHUGEPAGE);
        }
        if (m_End == 0) break;
    }
    if (m_Ready >= m_End) m_Ready = UINTPTR_MAX;
}

#else

MemoryAhead::MemoryAhead(void*, std::size_t) {}
void MemoryAhead::Extend(const void*) {}

#endif

}  // namespace vesk
