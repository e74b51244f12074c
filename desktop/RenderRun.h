#pragma once

namespace vesk {

struct ProgramOptions;

// Reads the log and writes the picture that the options ask for, without a window; what there is
// to say goes to standard error. True if the picture stands. Needs a running QGuiApplication, for
// the font.
bool RenderPicture(const ProgramOptions&);

}  // namespace vesk
