// The stamp on a printed page: a watermark record drawn onto a job's device context, as filled
// paths or as a bitmap. The render driver gets shapes, never texts.
#pragma once

#include "core/settings_record.h"
#include "job/bitmap_stamp.h"
#include "job/watermark_font.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// Draws the record's stamp: its bitmap file, or for any other type its text. `pageRect` is the page
// in device pixels. `pageState` is what the render driver tells of the page: with 1, a text that
// had to be shortened is moved by one character. `scale` multiplies the height of the letters; 0.0
// leaves it. `pageSize` has no influence.
//
// The record may hold any bytes. A text whose font or brush can't be made isn't drawn. All that is
// set in the context is put back, with one exception: after a bitmap file that can't be opened the
// mapping stays.
void DrawPrintStamp(DeviceContext hdc, const Rect& pageRect, const WatermarkData& record,
                    std::int32_t pageState, double scale, Size pageSize);

}  // namespace ostrel
