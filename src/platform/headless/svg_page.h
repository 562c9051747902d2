// A printer's page as a person may look at it: what was written down on its context, drawn as one
// SVG picture in the page's own pixels.
//
// Texts stay texts, in the face, size, weight, slant and angle of their font, with their colour or,
// out of a path, with that of the brush. A path's shapes are one outline under the path's rule of
// filling. Pictures lie within the file. The page is white, and nothing reaches beyond it. What a
// picture for the eye can't tell is left out: raster modes, and the ground behind a text's cells.
#pragma once

#include "platform/headless/drawing_record.h"

#include <functional>
#include <string>
#include <string_view>

namespace ostrel::headless {

// The size of a text in a font, as the page was laid out by it: texts are drawn as wide then.
// Without it they are as wide as the viewer's own font makes them.
using TextMeasure = std::function<Size(const LogFont& font, std::u16string_view text)>;

// The document, in UTF-8, of the operations that the device keeps. It measures what the page
// measures on paper. Operations that make no sense together (a path filled that was never ended)
// leave nothing.
std::string DrawSvg(const PrinterDevice& device, const TextMeasure& measure = {});

}  // namespace ostrel::headless
