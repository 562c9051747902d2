// The geometry of bitmap stamps: how large a bitmap is on a page, which part of it the page shows,
// and where. Plain functions over numbers, for any record, page and bitmap; cuts and whole-number
// divisions are those of the texts' geometry.
#pragma once

#include "core/settings_record.h"
#include "job/watermark_geometry.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// Scales a bitmap of 96 dots an inch to a page, measured by the long side of A4, and centres it.
// Comes with the page in `place` and the bitmap in `from`; goes with what it covers of the page and
// with what of it falls on the page. A bitmap that comes out without a width or a height leaves a
// place of zeros.
void FitBitmapRect(Rect& place, Rect& from, const WatermarkData& record);

// What is drawn, and where; the rows of `from` are counted as they lie in the bitmap's memory.
struct BitmapDrawing {
  Rect place;
  Rect from;
};

// Whether a record's position is one of the nine that paper knows.
bool HasBitmapPlace(std::int16_t position);
// The drawing at one of the nine positions; nothing at all at others.
BitmapDrawing BitmapDrawingAt(std::int16_t position, const Rect& page, Size bitmap,
                              const WatermarkData& record);

// A bitmap's size in a repeated stamp, in fractions of pixels. It follows the size of the font,
// where a single bitmap follows its scale: pages in use depend on it.
struct BitmapTiles {
  float width;
  float height;
  TileCount count;

  bool IsSingle() const { return count.columns == 1 && count.rows == 1; }
};
BitmapTiles BitmapTilesOf(const Rect& page, Size bitmap, const WatermarkData& record);

}  // namespace ostrel
