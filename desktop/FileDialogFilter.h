#pragma once

#include <QStringList>

#include "platform/CString.h"

namespace vesk {

// The toolkit's name filters for pairs of name and pattern: "Text file (*.txt)|*.txt|All files
// (*.*)|*.*||" gives "Text file (*.txt)" and "All files (*)". A half pair at the end is left out.
QStringList NameFilters(const CString& filter);

}  // namespace vesk
