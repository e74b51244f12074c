#pragma once

#include "platform/Resources.h"

namespace vesk {

// Joins the library's tables to the application's resource chain: to be called once, before
// anything of the library is shown. False: the tables could not be initialised. Attaching again
// does nothing.
bool AttachLibrary(const ResourceTables&);

// Takes the tables out of the chain again.
void DetachLibrary();

}  // namespace vesk
