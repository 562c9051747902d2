// Pictures of the in-memory drawing for people to look at.
#pragma once

#include "platform/headless/pixel_surface.h"

#include <string>

namespace ostrel::test {

// The bytes of a picture file (.bmp, 24 bits a pixel) that shows the surface.
std::string PictureFile(const headless::Surface& surface);

// Writes that file. Result: false when it can't be written.
bool SavePicture(const headless::Surface& surface, const std::string& path);

}  // namespace ostrel::test
