#pragma once

#include <string>

#include "platform/Geometry.h"

class CView;
class QPrinter;

namespace vesk {

// A view's picture outside of its window: the whole view as it stands, less the room of its scroll
// bars.

// Size of the picture in logical pixels; nothing if the view has no room for one.
CSize PictureSize(const CView&);

// Writes the picture to a file of the kind that its name's end tells: .png at a scale, .svg or
// .pdf. A file that is there is replaced once the new one is complete. False: error says why, and
// that file is as it was.
bool SavePicture(CView&, const std::string& path, double scale, std::string& error);

// Whether a file's name ends like that of a picture that can be written.
bool IsPictureName(const std::string& path);

// Prints the picture on one page, as large as it fits. False if the printer does not begin.
bool PrintPicture(CView&, QPrinter&);

}  // namespace vesk
