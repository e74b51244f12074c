#pragma once

#include <cstddef>
#include <cstdint>

namespace vesk {

// Has the system provide the memory of a large block shortly before it is written. The first
// touch of a page costs more than filling it; many pages at a time cost less, and large pages
// least, where the system has them and they come cheap. The contents are not affected.
class MemoryAhead {
public:
    // Nothing to provide.
    MemoryAhead() = default;

    // The block is borrowed, and will be written from its start to its end. For one that has been
    // written before there is nothing to gain.
    MemoryAhead(void* block, std::size_t bytes);

    // The next write ends before `end`, an address within the block.
    void Provide(const void* end) {
        if (reinterpret_cast<std::uintptr_t>(end) > m_Ready) Extend(end);
    }

private:
    void Extend(const void* end);

    std::uintptr_t m_Ready = UINTPTR_MAX;  // provided up to here
    std::uintptr_t m_End = 0;
    bool m_InLargePages = false;
};

}  // namespace vesk
