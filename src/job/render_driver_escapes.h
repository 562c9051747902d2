// The private escapes between this library and the render driver behind a job's device context: all
// that the two say to each other while a document prints. Codes, directions and payloads are a
// protocol: the render driver is built apart from this library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ostrel {

enum RenderDriverEscape : std::int32_t {
  kEscapeReadWatermark =
      20481,                   // out: the page's WatermarkData, 1348 bytes, zeroed before the call
  kEscapeStampBegins = 20482,  // what follows on this page is its stamp
  kEscapeTile = 20483,         // in: nothing, or the TileRegion that the next drawing belongs to
  kEscapeStampEnds = 20484,
  kEscapeStampForbidden = 20485,  // out: 4 bytes; nonzero forbids the stamp on this page
  kEscapePageStarts = 20486,
  kEscapePageNumber = 20489,    // out: 4 bytes; the number that a stamp prints
  kEscapePageState = 20492,     // out: 4 bytes; 1 moves a shortened text, see the page's stamp
  kEscapeComputerName = 20498,  // in: 200 bytes, UTF-16, the rest zero
};

inline constexpr std::size_t kComputerNameBytes = 200;

// Where on the page a tile of a repeated stamp goes. The drawing itself stands in the same place
// for each tile: it is the render driver that moves it.
struct TileRegion {
  std::int32_t Width;         // offset 0; of a cell, pixels; 0 for a bitmap's tile
  std::int32_t Height;        // 4; of a cell, pixels; 0 for a bitmap's tile
  std::int32_t Column;        // 8; from 0
  std::int32_t Row;           // 12; from 0
  std::int32_t ImageOffsetX;  // 16; of a bitmap's tile, pixels; else 0
  std::int32_t ImageOffsetY;  // 20
  std::int32_t TextOffsetX;   // 24; what margins and frames add, pixels; 0 for a bitmap's tile
  std::int32_t TextOffsetY;   // 28
  std::int32_t Margin;        // 32; of a frame's drawing, pixels; means nothing for others
};
static_assert(sizeof(TileRegion) == 36);
static_assert(offsetof(TileRegion, Column) == 8);
static_assert(offsetof(TileRegion, ImageOffsetX) == 16);
static_assert(offsetof(TileRegion, TextOffsetX) == 24);
static_assert(offsetof(TileRegion, Margin) == 32);

}  // namespace ostrel
