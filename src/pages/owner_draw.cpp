#include "pages/owner_draw.h"

#include "core/process_state.h"

#include <algorithm>

namespace ostrel {
namespace {

// A bitmap of a module, selected into a context of its own; both go with the scope.
class LoadedPicture {
 public:
  LoadedPicture(DeviceContext target, ModuleHandle module, std::uint32_t bitmapId)
      : bitmap_(World().graphics.LoadBitmapW(module, bitmapId)) {
    Graphics& graphics = World().graphics;
    if (bitmap_ == nullptr || !graphics.GetBitmapSize(bitmap_, &size_)) {
      return;
    }
    context_ = graphics.CreateCompatibleDC(target);
    before_ = context_ == nullptr ? nullptr : graphics.SelectObject(context_, bitmap_);
  }
  ~LoadedPicture() {
    Graphics& graphics = World().graphics;
    if (before_ != nullptr) {
      graphics.SelectObject(context_, before_);
    }
    if (context_ != nullptr) {
      graphics.DeleteDC(context_);
    }
    if (bitmap_ != nullptr) {
      graphics.DeleteObject(bitmap_);
    }
  }
  LoadedPicture(const LoadedPicture&) = delete;
  LoadedPicture& operator=(const LoadedPicture&) = delete;

  bool ready() const { return before_ != nullptr; }
  DeviceContext context() const { return context_; }
  Size size() const { return size_; }

 private:
  GdiObject bitmap_;
  Size size_ = {};
  DeviceContext context_ = nullptr;
  GdiObject before_ = nullptr;
};

}  // namespace

void DrawCentredBitmap(const DrawItem& item, ModuleHandle module, std::uint32_t bitmapId,
                       std::uint32_t transparentColor) {
  const LoadedPicture picture(item.hDC, module, bitmapId);
  if (!picture.ready()) {
    return;
  }
  Graphics& graphics = World().graphics;
  const Size size = picture.size();
  const std::int32_t left = item.rcItem.left + (item.rcItem.Width() - size.width) / 2;
  const std::int32_t top = item.rcItem.top + (item.rcItem.Height() - size.height) / 2;
  const std::uint32_t layout = graphics.GetLayout(item.hDC);
  // The item fills its control, whose middle is the same place from either side.
  const bool mirrored = (layout & ~kLayoutBitmapsUpright) == kLayoutRightToLeft;
  if (mirrored) {
    graphics.SetLayout(item.hDC, 0);
    graphics.SetLayout(picture.context(), 0);
  }
  graphics.TransparentBlt(item.hDC, {left, top, left + size.width, top + size.height},
                          picture.context(), {0, 0}, transparentColor);
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
