#pragma once

#include <string>

namespace vesk {

class RasterSurface;

// Writes a surface's device pixels to a PNG file, beside its target first. False with a reason in
// `error` if the picture is empty or cannot be written; an older file then stays as it is.
bool WritePng(const RasterSurface&, const std::string& path, std::string& error);

}  // namespace vesk
