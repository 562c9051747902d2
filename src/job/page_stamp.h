// The stamp on a printed page: a watermark record drawn onto a job's device context, as filled
// paths or as a bitmap. The render driver gets shapes, never texts.
#pragma once

#include "core/settings_record.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// Draws the record's stamp. `pageRect` is the page in device pixels. `pageState` is what the render
// driver tells of the page: with 1, a text that had to be shortened is moved by one character.
// `scale` multiplies the height of the letters; 0 leaves it. `pageSize` has no influence.
//
// All that is set in the context is put back, with one exception: after a bitmap file that can't be
// opened the mapping stays.
void DrawPrintStamp(DeviceContext hdc, const Rect& pageRect, const WatermarkData& record,
                    std::int32_t pageState, double scale, Size pageSize);

// Draws the record's bitmap file. Result: 0 when it can't be loaded, 1 otherwise.
int DrawPrintBitmap(DeviceContext hdc, const Rect& pageRect, const WatermarkData& record);

// Styles of a watermark's font.
enum WatermarkFontFlag : std::uint32_t {
  kFontBold = 0x1,
  kFontItalic = 0x2,
  kFontUnderline = 0x4,
  kFontStrikeOut = 0x8,
};

// A font for a watermark, in the page's and in the preview's stamp. `height` is in tenths of a
// point; `escapement` in tenths of a degree, against the clock. Freed with DeleteObject; null when
// the system makes none.
GdiObject MakeWatermarkFont(DeviceContext hdc, const char16_t* face, std::int32_t height,
                            std::uint32_t flags, std::int32_t escapement);

}  // namespace ostrel
