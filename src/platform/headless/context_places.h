// Places of a context on the surface behind it.
#pragma once

#include "platform/headless/pixel_surface.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel::headless {

inline Extent Across(const Rect& rect) {
  return {rect.left, rect.Width()};
}
inline Extent Down(const Rect& rect) {
  return {rect.top, rect.Height()};
}

// The same pixels, counted from the other edge of a picture of this width.
inline Extent FromOtherEdge(Extent extent, std::int32_t width) {
  return {width - 1 - extent.start, -extent.length};
}

// Counts an extent of a context from its left edge. Upright bitmaps keep their way then.
inline Extent OnSurface(Extent extent, std::int32_t width, std::uint32_t layout,
                        bool mayStayUpright) {
  if ((layout & kLayoutRightToLeft) == 0) {
    return extent;
  }
  const Extent mirrored = FromOtherEdge(extent, width);
  const bool staysUpright = mayStayUpright && (layout & kLayoutBitmapsUpright) != 0;
  return staysUpright ? mirrored.Turned() : mirrored;
}

}  // namespace ostrel::headless
