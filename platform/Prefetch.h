#pragma once

namespace vesk {

// Asks for the memory at an address ahead of its use: walks that look at few, distant places wait
// for all of them at once instead of for one after the other. Any address will do.
inline void Prefetch(const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

}  // namespace vesk
