#pragma once

#include <algorithm>
#include <cstdint>

namespace vesk {

// Index of the last element whose key lies strictly before time, 0 if even the first one's does
// not, in a sequence that ascends in key. False if it is empty, or if time is past the last key
// and not below end. Only the first element is thus found at its own time.
template <class Sequence, class Key>
bool FindBefore(const Sequence& sequence, Key key, std::uint64_t time, std::uint64_t end,
                int& index) {
    index = 0;
    if (sequence.empty()) return false;
    const auto at = std::partition_point(sequence.begin(), sequence.end(),
                                         [&](const auto& element) { return key(element) < time; });
    if (at != sequence.begin()) index = static_cast<int>(at - sequence.begin()) - 1;
    return at != sequence.end() || time < end;
}

}  // namespace vesk
