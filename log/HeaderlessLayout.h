#pragma once

#include <string>

#include "log/RecordDecoder.h"

class McuJobList;

namespace vesk {

// Lays out the records of a log without a header by the database's structure "SA_LoggingNode_T",
// and takes the clock from the database where the target logs microseconds. False: a text was
// appended to error.
bool LayOutHeaderless(McuJobList& list, DecoderSetup& setup, std::string& error);

}  // namespace vesk
