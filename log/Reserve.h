#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/LargeMemory.h"
#include "platform/UserInterface.h"

namespace vesk {

// Reserves room for count elements, in large pages where the system has them. Without the memory
// the read goes on; it may still fit.
template <class T>
void Reserve(std::vector<T>& elements, std::uint64_t count) {
    constexpr std::size_t kWorthLargePages = std::size_t{1} << 22;
    try {
        if (count <= elements.capacity()) return;
        elements.reserve(count);
        const std::size_t bytes = elements.capacity() * sizeof(T);
        if (bytes >= kWorthLargePages) PreferLargePages(elements.data(), bytes);
    } catch (const std::bad_alloc&) {
        OutputDebugStringA("out of memory");
    } catch (const std::length_error&) {
        OutputDebugStringA("out of memory");
    }
}

// The same with a count that is looked up by name; nothing for a name without a count.
template <class T>
void Reserve(std::vector<T>& elements, const std::map<std::string, std::uint64_t>& counts,
             const std::string& name) {
    if (const auto found = counts.find(name); found != counts.end())
        Reserve(elements, found->second);
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
