// What the render driver is told before each shape of a stamp.
#pragma once

#include "core/process_state.h"
#include "job/render_driver_escapes.h"

namespace ostrel {

// Tells that what is drawn next belongs to a tile; to none in particular for null.
inline void TellTile(DeviceContext hdc, const TileRegion* tile) {
  const std::int32_t bytes = tile == nullptr ? 0 : sizeof(*tile);
  World().graphics.ExtEscape(hdc, kEscapeTile, bytes, tile, 0, nullptr);
}

}  // namespace ostrel
