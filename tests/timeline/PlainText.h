#pragma once

#include <string>

#include "log/McuJobList.h"

namespace vesk {

// The text exports as their rules say them: record by record, every pending call looked at.
std::string PlainJobText(const McuJobList&);
std::string PlainExtraInfoText(const McuJobList&);
std::string PlainCallText(const McuJobList&);

}  // namespace vesk
