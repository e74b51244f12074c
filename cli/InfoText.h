#pragma once

#include "cli/InfoDocument.h"

namespace vesk {

// The same as lines for a person; times in ms and us, the busiest tasks first.
void WriteInfoText(OutputBuffer&, const LogInfo&);

}  // namespace vesk
