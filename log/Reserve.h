#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/MemoryAhead.h"
#include "platform/UserInterface.h"

namespace vesk {

// Reserves room for count elements. Without the memory the read goes on; it may still fit.
// Returns what provides the memory ahead of the elements, if it is new.
template <class T>
MemoryAhead Reserve(std::vector<T>& elements, std::uint64_t count) {
    try {
        if (count <= elements.capacity()) return {};
        elements.reserve(count);
        return {elements.data(), elements.capacity() * sizeof(T)};
    } catch (const std::bad_alloc&) {
        OutputDebugStringA("out of memory");
    } catch (const std::length_error&) {
        OutputDebugStringA("out of memory");
    }
    return {};
}

// The same with a count that is looked up by name; nothing for a name without a count.
template <class T>
MemoryAhead Reserve(std::vector<T>& elements, const std::map<std::string, std::uint64_t>& counts,
                    const std::string& name) {
    const auto found = counts.find(name);
    return found == counts.end() ? MemoryAhead() : Reserve(elements, found->second);
}

// Has the memory of the next elements provided.
template <class T>
void ProvideFor(std::vector<T>& elements, MemoryAhead& memory, std::size_t count) {
    const std::size_t needed = std::min(elements.size() + count, elements.capacity());
    memory.Provide(elements.data() + needed);
}

// Lowers the capacity to the size. Costs a copy, but only where a count was off.
template <class T>
void Trim(std::vector<T>& elements) {
    if (elements.capacity() != elements.size()) elements.shrink_to_fit();
}

// Stable sort for elements that are nearly in order, in place: calls are stored when they end, so
// each lies only as far from its place as calls nest. Gives up moving one by one when they do not.
template <class T, class Less>
void SortNearlySorted(std::vector<T>& elements, Less less) {
    std::size_t moves = 0;
    const std::size_t limit = 8 * elements.size();
    for (std::size_t i = 1; i < elements.size(); ++i) {
        if (!less(elements[i], elements[i - 1])) continue;
        T element = std::move(elements[i]);
        std::size_t at = i;
        for (; at > 0 && less(element, elements[at - 1]); --at, ++moves)
            elements[at] = std::move(elements[at - 1]);
        elements[at] = std::move(element);
        if (moves > limit) {
            std::stable_sort(elements.begin(), elements.end(), less);
            return;
        }
    }
}

}  // namespace vesk
