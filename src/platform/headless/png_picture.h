// Pixels as the bytes of a PNG file, which every viewer knows.
#pragma once

#include "platform/headless/pixel_surface.h"

#include <string>
#include <vector>

namespace ostrel::headless {

// 24 bits a pixel, without compression: a picture for the eye needn't be small.
std::vector<std::uint8_t> WritePng(const Surface& surface);

// As text of RFC 4648, section 4.
std::string Base64(const std::vector<std::uint8_t>& bytes);

}  // namespace ostrel::headless
