#include "desktop/SurfacePicture.h"

#include "platform/RasterSurface.h"

namespace vesk {

QImage PictureOf(const RasterSurface& surface) {
    const int width = surface.DeviceWidth();
    // The format without alpha is painted fastest.
    QImage picture(reinterpret_cast<const uchar*>(surface.Pixels()), width, surface.DeviceHeight(),
                   surface.Stride() * 4, QImage::Format_RGB32);
    picture.setDevicePixelRatio(surface.Scale());
    return picture;
}

}  // namespace vesk
