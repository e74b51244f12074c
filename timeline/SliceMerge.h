#pragma once

#include <cstdint>
#include <map>
#include <memory_resource>
#include <vector>

namespace vesk {

// A piece of a function's call, during which the task that made the call held the processor.
struct Slice {
    std::uint64_t m_Start = 0;
    std::uint64_t m_End = 0;
    int m_Function = 0;
    std::uint8_t m_Flags = 0;  // kBeganAtEntry on the first of a call, kClosedLastCall on the last
    friend bool operator==(const Slice&, const Slice&) = default;
};

// Slices by start time. A slice whose key is taken does not enter.
using SliceMap = std::pmr::map<std::uint64_t, Slice>;

// The span of time, both ends included, whose slices are compared; what lies outside enters as it
// is.
struct SliceWindow {
    std::uint64_t m_Begin = 0;
    std::uint64_t m_End = UINT64_MAX;
    // Slices that overlap each other may start anywhere. Otherwise only before the window or behind
    // it, and the few that can meet a slice are found without a look at all of them.
    bool m_IsTangled = false;
};

// Merges the slices of one call into those of the calls before, so that every moment belongs to one
// slice: one that lies within another stays whole and cuts the longer one around it, and of two
// that overlap in part the new one keeps what they share. Both pieces of a slice that is cut in two
// keep the flag of their own end only. The call's slices are used up.
void MergeCall(SliceMap& merged, SliceMap& call, const SliceWindow&);

// The same for a call with a single slice, within the window, where all slices have a length;
// merged ones ascend and do not overlap. For few slices, which are faster moved than looked up.
void MergeSlice(std::vector<Slice>& merged, Slice slice);

}  // namespace vesk
