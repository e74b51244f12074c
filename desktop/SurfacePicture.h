#pragma once

#include <QImage>

namespace vesk {

class RasterSurface;

// The surface's pixels as the toolkit paints them, one to one at the surface's scale. Borrows the
// pixels.
QImage PictureOf(const RasterSurface&);

}  // namespace vesk
