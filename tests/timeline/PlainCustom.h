#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "log/McuJob.h"

class CDC;
class CMcuView;
class McuJobList;

namespace vesk {

// Functions drawn the plain way: every record in order, one after the other. Slow, and short enough
// to be checked by reading; what the view draws must not differ from it in a single pixel.
void PlainCustomJobList(CMcuView&, CDC*, int height, int left, int y);
void PlainCustomJobListCS(CMcuView&, CDC*, int height, int left, int y);
void PlainCustomJob(CMcuView&, CDC*, const std::string& name, int left, int y);
void PlainCustomJobCS(CMcuView&, CDC*, const std::string& name, int left, int y, int first,
                      int last);

// Slices by start time.
using PlainSlices = std::map<std::uint64_t, McuJob>;

// Merges the slices of one call into those of the calls before it, comparing each with each. Slices
// that lie outside of [begin, end] are not compared.
void PlainMerge(PlainSlices& merged, PlainSlices call, std::uint64_t begin, std::uint64_t end);

}  // namespace vesk
