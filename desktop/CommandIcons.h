#pragma once

#include <QIcon>

namespace vesk {

// The picture of a command, drawn for the size and scale it is shown at, in the colour of the
// theme's texts. A command without a picture of its own gets a plain square.
QIcon CommandIcon(unsigned command);

}  // namespace vesk
