#pragma once

#include <QIcon>

namespace vesk {

// The program's icon, the same as share/veskview.svg, drawn here so that no picture has to be
// found at run time.
QIcon AppIcon();

}  // namespace vesk
