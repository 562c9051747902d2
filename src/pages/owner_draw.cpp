#include "pages/owner_draw.h"

#include "core/graphics_objects.h"
#include "core/process_state.h"

#include <algorithm>

namespace ostrel {

void DrawCentredBitmap(const DrawItem& item, ModuleHandle module, std::uint32_t bitmapId,
                       std::uint32_t transparentColor) {
  Graphics& graphics = World().graphics;
  const OwnedObject bitmap(graphics.LoadBitmapW(module, bitmapId));
  Size size = {};
  if (!bitmap || !graphics.GetBitmapSize(bitmap.get(), &size)) {
    return;
  }
  const MemoryContext picture(item.hDC);
  const Selection selection(picture, bitmap.get());
  if (!selection) {
    return;
  }
  const std::int32_t left = item.rcItem.left + (item.rcItem.Width() - size.width) / 2;
  const std::int32_t top = item.rcItem.top + (item.rcItem.Height() - size.height) / 2;
  const std::uint32_t layout = graphics.GetLayout(item.hDC);
  // The item fills its control, whose middle is the same place from either side.
  const bool mirrored = (layout & ~kLayoutBitmapsUpright) == kLayoutRightToLeft;
  if (mirrored) {
    graphics.SetLayout(item.hDC, 0);
    graphics.SetLayout(picture.get(), 0);
  }
  graphics.TransparentBlt(item.hDC, {left, top, left + size.width, top + size.height},
                          picture.get(), {0, 0}, transparentColor);
  if (mirrored) {
    graphics.SetLayout(item.hDC, layout);
  }
}

std::uint32_t DrawnRowHeight() {
  constexpr std::int32_t kLeastHeight = 16;
  constexpr std::int32_t kLinesPerInch = 6;
  Graphics& graphics = World().graphics;
  const DeviceContext screen = graphics.GetDC(nullptr);
  const int dotsPerInch = graphics.GetDeviceCaps(screen, kDeviceCapLogPixelsY);
  graphics.ReleaseDC(nullptr, screen);
  return static_cast<std::uint32_t>(std::max(kLeastHeight, dotsPerInch / kLinesPerInch));
}

}  // namespace ostrel
