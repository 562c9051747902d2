// A printed page as a picture for people: the operations on a printer's context as SVG. Shapes are
// drawn as they were asked for; a text is drawn in its font's name and size, and what reader shows
// it decides on the letters.
#pragma once

#include "platform/headless/drawing_record.h"

#include <span>
#include <string>

namespace ostrel::headless {

// The SVG document, in UTF-8. Its units are the device's pixels, and it measures what the page
// measures on paper. Operations that draw nothing leave nothing.
std::string SvgPage(const PrinterDevice& device, std::span<const DrawingOperation> operations);

}  // namespace ostrel::headless
