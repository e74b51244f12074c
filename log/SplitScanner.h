#pragma once

#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "log/HeaderInfo.h"
#include "log/RangeChooser.h"

namespace vesk {

// Cuts a range of a log into units of a size, each of which can be read by itself. A damaged
// packet, or more units than wanted at most, ends the cutting: the units so far stand, and error
// holds a text that says why. The stream is left anywhere.
std::vector<OfferedUnit> ScanUnits(const RangeRequest& request, std::int64_t unitKB,
                                   std::string& error,
                                   std::size_t mostUnits = std::numeric_limits<std::size_t>::max());

// Carries first frame number and count of a log without frame numbers back over the records that
// lie between the stream's position and whcpLength.
void CarryBackFrameOrigin(std::FILE* stream, HeaderInfo& info, std::int64_t whcpLength);

}  // namespace vesk
