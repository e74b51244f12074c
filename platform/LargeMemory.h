#pragma once

#include <cstddef>

namespace vesk {

// Asks the system to back a large block, of which every byte will be used, by large pages where
// it has them and they come cheap. The first touch of a
// small page costs more than filling it; the block's contents and life time are not affected.
void PreferLargePages(void* block, std::size_t bytes);

}  // namespace vesk
