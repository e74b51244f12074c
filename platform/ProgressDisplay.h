#pragma once

#include <cstdint>
#include <functional>

namespace vesk {

// Called now and then by long work with the parts done and the parts there are; false asks the
// work to stop. An empty one lets it run.
using ProgressCallback = std::function<bool(std::int64_t done, std::int64_t total)>;

// Shows how far a piece of work has come, and goes with the object.
class ProgressDisplay {
public:
    virtual ~ProgressDisplay() = default;

    // A ProgressCallback: false once the user has cancelled.
    virtual bool Advance(std::int64_t done, std::int64_t total) = 0;
};

}  // namespace vesk
