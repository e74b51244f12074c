#pragma once

#include <cstdint>

#include "log/McuJobList.h"
#include "tests/support/Dice.h"

class CMcuView;

namespace vesk {

// Empties the list and fills it with a log made of chance: jobs, function segments and calls,
// source marks, hardware events and extra values. Most logs are as a reader leaves them. Some hold
// what a reader would not write: records that overlap, ends before starts, an end of the log
// before its last record. Names repeat, one may be empty, colours of some collide. The same seed
// gives the same log on every machine.
void FillRandomList(McuJobList& list, std::uint64_t seed, int jobs);

// Shows a random span of the shared list at a random zoom: from a record over many columns to many
// records in one. The view must have its size.
void LookSomewhere(CMcuView& view, Dice& dice);

}  // namespace vesk
