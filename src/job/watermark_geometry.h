// The geometry of stamps: which shape a watermark record draws, and where on the page. Plain
// functions over numbers: no device context, no platform, any record.
//
// Lengths are device pixels, with y growing downwards. Where a number is cut, its fraction is
// dropped towards zero; whole numbers divide as whole numbers. Both decide on single pixels, so the
// order of the operations is part of the result. A record may hold any bytes: what would be larger
// than any page is held at kFarthest.
#pragma once

#include "core/settings_record.h"
#include "job/render_driver_escapes.h"
#include "platform/window_types.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace ostrel {

// No coordinate and no length is larger, so that the difference of two still is a number.
inline constexpr std::int64_t kFarthest = 0x3FFFFFFF;

// The whole part of a number, held within kFarthest; 0 for what is no number.
std::int64_t Cut(double number);
// 0.5 more, and the cut: the nearest whole number of one that isn't negative. Below zero the cut
// goes the other way, so that -2.0 gives -1.
inline std::int64_t CutRounded(double number) {
  return Cut(number + 0.5);
}
// What the platform takes as a coordinate or a length.
std::int32_t Coordinate(std::int64_t number);
// The same of a rectangle; its size stays what it is where its place is beyond any page.
Rect PlatformRect(std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height);

// A place. In 64 bits, so that sums of coordinates never overflow.
struct PagePoint {
  std::int64_t x;
  std::int64_t y;
  bool operator==(const PagePoint&) const = default;
};

// ---- The text -----------------------------------------------------------------------------------

// The height of the letters, in tenths of a point, of a font of so many points. A scale of 0.0
// leaves it.
std::int32_t StampHeight(std::int16_t sizePoints, double scale);

// A direction of writing. A text is turned when it runs downwards, or backwards.
struct StampAngle {
  std::int32_t tenths = 0;  // of a degree, against the clock, 0..3599
  double sine = 0;          // without its sign
  double cosine = 1;        // the same

  bool IsTurned() const { return tenths > 900; }
};
StampAngle AngleOf(std::int16_t degrees);

// ---- The shape ----------------------------------------------------------------------------------

enum class StampFrame { kNone, kRing, kBox };
StampFrame FrameOf(const WatermarkData& record);

// How wide the line of a frame is, in the font's size.
std::int64_t LineWidth(std::int16_t sizePoints);
// The distance from the page's edges, and between the tiles of a repeated stamp with a frame.
std::int64_t MarginOf(std::int64_t lineWidth, const StampAngle& angle);

// What an upright or a rotated rectangle is wide and high on the page.
struct StampExtent {
  std::int64_t width;
  std::int64_t height;
  bool operator==(const StampExtent&) const = default;
};
StampExtent Rotated(const StampExtent& extent, const StampAngle& angle);

// What a slanted text needs beyond its measure. A text of ten page widths and more gets less.
StampExtent ItalicAllowance(const StampExtent& text, std::int64_t pageWidth);

// The diameter of a ring round a text of this size. `units` counts the characters of the record's
// own text.
std::int64_t RingDiameter(const StampExtent& text, std::size_t units);

struct StampShape {
  StampFrame frame;
  StampExtent text;       // unrotated, the italic allowance included
  StampExtent allowance;  // of that the italic one; with a box also the room in it
  StampExtent box;        // unrotated, round the text; means nothing with a ring
  StampExtent rotated;    // the text on the page
  StampExtent cell;       // what all of it takes on the page
  std::int64_t lineWidth;
  std::int64_t margin;
};
// `measured` is the text's size as the platform tells it.
StampShape ShapeOf(const WatermarkData& record, const StampAngle& angle, Size measured,
                   std::int64_t pageWidth);

// ---- Places -------------------------------------------------------------------------------------

// A stamp that would stand on a page more often than this stands there once: no text that can be
// read is that small.
inline constexpr std::int64_t kMostTiles = 100'000;

// How often a stamp stands beside itself and below itself.
struct TileCount {
  std::int64_t columns = 1;
  std::int64_t rows = 1;
};
// These columns and rows, or one of each when they are more tiles than a page takes.
TileCount CappedTiles(std::int64_t columns, std::int64_t rows);

// The anchor is the upper left corner of the stamp's cell; of a turned text the upper right one.
struct StampPlaces {
  PagePoint anchor;
  TileCount tiles;
};
StampPlaces PlacesOf(const WatermarkData& record, const StampAngle& angle, const StampShape& shape,
                     const StampExtent& page);

// The share of the allowance by which a text in a ring is raised: all of it on paper.
inline constexpr double kFullRise = 1.0;

// Where the text begins: its upper left corner along its own direction.
PagePoint TextOrigin(const StampAngle& angle, const StampShape& shape, PagePoint anchor,
                     double ringRise = kFullRise);

// What position 10 adds to the text's origin. The frame and the anchor stay.
PagePoint CustomOffset(const WatermarkData& record, const StampShape& shape,
                       const StampExtent& page);

// What the render driver is told of a tile before its text, and before its frame.
TileRegion TextTile(const StampShape& shape, std::int64_t column, std::int64_t row);
TileRegion FrameTile(const StampShape& shape, std::int64_t column, std::int64_t row);

// ---- Frames -------------------------------------------------------------------------------------

using Quadrilateral = std::array<PagePoint, 4>;

// The two ellipses between which the ring lies.
struct StampRing {
  Rect outer;
  Rect inner;
};
StampRing RingAt(const StampAngle& angle, const StampShape& shape, PagePoint anchor);

// The corners of the rotated box: of the text's first line the beginning, its end, and the two
// below them, going round.
Quadrilateral BoxCorners(const StampAngle& angle, const StampShape& shape, PagePoint anchor);

// Puts corners in the order in which OffsetPolygon takes them: the two on the left by rising y,
// then the two on the right by falling y.
void OrderCorners(Quadrilateral& corners);

// Makes a rectangle, with y growing upwards, larger by a distance on all sides, and another one
// smaller. Its corners go round, and the second one doesn't lie above the first.
void OffsetPolygon(Quadrilateral& corners, std::int64_t distance, Quadrilateral& inner);

// The two polygons between which the box's line lies, on a page with this bottom.
struct StampBox {
  std::array<Point, 4> outer;
  std::array<Point, 4> inner;
};
StampBox BoxAt(const StampAngle& angle, const StampShape& shape, PagePoint anchor,
               std::int32_t pageBottom);

}  // namespace ostrel
