#pragma once

#include "platform/Resources.h"

namespace vesk {

// All tables of the library, to be joined to the resource chain.
const ResourceTables& VeskResources();

}  // namespace vesk
