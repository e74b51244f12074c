#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "log/McuJobList.h"

// Searches as walks from record to record. What comes back is where the cursor is sent, or nothing.
namespace plain {

using Time = std::optional<std::uint64_t>;

Time Frame(const McuJobList&, int firstVisible, std::int32_t frame);
Time Name(const McuJobList&, const std::vector<McuJob>&, const std::string& name,
          std::uint64_t cursor, bool up, bool wrapsToStart);
Time Call(const McuJobList&, const std::string& function, std::uint64_t cursor, bool up);

}  // namespace plain
