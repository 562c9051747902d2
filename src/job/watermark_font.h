// The font that watermarks are written in.
#pragma once

#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// Styles of a watermark's font.
enum WatermarkFontFlag : std::uint32_t {
  kFontBold = 0x1,
  kFontItalic = 0x2,
  kFontUnderline = 0x4,
  kFontStrikeOut = 0x8,
};

// A font for a watermark, on paper and in the preview. `height` is in tenths of a point;
// `escapement` in tenths of a degree, against the clock. The character set is the first that the
// system reports for the face, and the default one for a face that it doesn't know. Freed with
// DeleteObject; null when the system makes none.
GdiObject MakeWatermarkFont(DeviceContext hdc, const char16_t* face, std::int32_t height,
                            std::uint32_t flags, std::int32_t escapement);

}  // namespace ostrel
