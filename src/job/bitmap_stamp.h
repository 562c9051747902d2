// A watermark's bitmap: read from its file, and drawn onto a page.
#pragma once

#include "core/settings_record.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// Draws the record's bitmap file: once, or over the whole page. Of a repeated one each tile is
// drawn in the page's corner; the render driver is told before where it goes.
//
// Result: 0 when the file can't be loaded, 1 otherwise, also when nothing is drawn: a scale below
// 2 percent, a position that paper doesn't know, pixels that can't be read.
int DrawPrintBitmap(DeviceContext hdc, const Rect& pageRect, const WatermarkData& record);

}  // namespace ostrel
