#include "platform/headless/headless_graphics.h"

#include "platform/headless/headless_platform.h"
#include "platform/headless/names.h"

#include <algorithm>

namespace ostrel::headless {
namespace {

constexpr std::uint32_t kLayoutError = 0xFFFFFFFF;  // GDI_ERROR
constexpr std::uintptr_t kHandleStep = 0x10;

// What a new context in memory holds: a bitmap of one pixel that belongs to nobody.
GdiObject StockBitmap() {
  return HandleOf<GdiObject>(0x600000);
}

}  // namespace

GdiObject DialogFont() {
  return HandleOf<GdiObject>(0x500010);
}

bool HeadlessGraphics::Fail(std::uint32_t code) {
  debug_.SetLastError(code);
  return false;
}

HeadlessGraphics::Context* HeadlessGraphics::Find(DeviceContext context) {
  const auto found = contexts_.find(context);
  return found == contexts_.end() ? nullptr : &found->second;
}

const HeadlessGraphics::Bitmap* HeadlessGraphics::BitmapOf(GdiObject bitmap) const {
  const auto found = bitmaps_.find(bitmap);
  return found == bitmaps_.end() ? nullptr : &found->second;
}

bool HeadlessGraphics::IsSelected(GdiObject object) const {
  return std::ranges::any_of(
      contexts_, [object](const auto& context) { return context.second.selected == object; });
}

GdiObject HeadlessGraphics::LoadBitmapW(ModuleHandle module, std::uint32_t id) {
  const Resources* resources = modules_.ResourcesOf(module);
  if (faults_.ShouldFail("LoadBitmapW") || resources == nullptr ||
      !resources->bitmaps.contains(id)) {
    Fail(kErrorResourceNameNotFound);
    return nullptr;
  }
  const BitmapResource& bitmap = resources->bitmaps.at(id);
  const auto handle = HandleOf<GdiObject>(nextHandle_);
  nextHandle_ += kHandleStep;
  bitmaps_[handle] = {module, id, {bitmap.width, bitmap.height}};
  return handle;
}

bool HeadlessGraphics::DeleteObject(GdiObject object) {
  return (!IsSelected(object) && bitmaps_.erase(object) != 0) || Fail(kErrorInvalidHandle);
}

bool HeadlessGraphics::GetBitmapSize(GdiObject bitmap, Size* size) {
  const Bitmap* found = BitmapOf(bitmap);
  if (faults_.ShouldFail("GetBitmapSize") || found == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  *size = found->size;
  return true;
}

DeviceContext HeadlessGraphics::BeginPaint(WindowHandle window) {
  const auto handle = HandleOf<DeviceContext>(nextHandle_);
  nextHandle_ += kHandleStep;
  const bool mirrored = window != nullptr && windows_ != nullptr && windows_->IsMirrored(window);
  contexts_[handle] = {.window = window, .layout = mirrored ? kLayoutRightToLeft : 0};
  return handle;
}

DeviceContext HeadlessGraphics::GetDC(WindowHandle window) {
  const bool known = window == nullptr || (windows_ != nullptr && windows_->IsWindow(window));
  if (faults_.ShouldFail("GetDC") || !known) {
    Fail(kErrorInvalidHandle);
    return nullptr;
  }
  return BeginPaint(window);
}

int HeadlessGraphics::ReleaseDC(WindowHandle window, DeviceContext context) {
  const Context* found = Find(context);
  if (found == nullptr || found->selected != nullptr || found->window != window) {
    return 0;
  }
  contexts_.erase(context);
  return 1;
}

int HeadlessGraphics::GetDeviceCaps(DeviceContext context, std::int32_t index) {
  if (faults_.ShouldFail("GetDeviceCaps") || Find(context) == nullptr) {
    return 0;
  }
  return index == kDeviceCapLogPixelsY ? logPixelsY : 0;
}

DeviceContext HeadlessGraphics::CreateCompatibleDC(DeviceContext context) {
  const Context* model = Find(context);
  if (faults_.ShouldFail("CreateCompatibleDC") || (context != nullptr && model == nullptr)) {
    Fail(kErrorInvalidHandle);
    return nullptr;
  }
  const std::uint32_t layout = model == nullptr ? 0 : model->layout;
  const auto handle = HandleOf<DeviceContext>(nextHandle_);
  nextHandle_ += kHandleStep;
  contexts_[handle] = {.selected = StockBitmap(), .layout = layout};
  return handle;
}

bool HeadlessGraphics::DeleteDC(DeviceContext context) {
  const Context* found = Find(context);
  if (found == nullptr || found->selected == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  contexts_.erase(context);
  return true;
}

GdiObject HeadlessGraphics::SelectObject(DeviceContext context, GdiObject object) {
  Context* found = Find(context);
  const bool isStock = object == StockBitmap();
  if (faults_.ShouldFail("SelectObject") || found == nullptr || found->selected == nullptr ||
      (!isStock && BitmapOf(object) == nullptr) ||
      (!isStock && found->selected != object && IsSelected(object))) {
    Fail(kErrorInvalidHandle);
    return nullptr;
  }
  return std::exchange(found->selected, object);
}

std::uint32_t HeadlessGraphics::GetLayout(DeviceContext context) {
  const Context* found = Find(context);
  if (faults_.ShouldFail("GetLayout") || found == nullptr) {
    return kLayoutError;
  }
  return found->layout;
}

std::uint32_t HeadlessGraphics::SetLayout(DeviceContext context, std::uint32_t layout) {
  Context* found = Find(context);
  if (faults_.ShouldFail("SetLayout") || found == nullptr) {
    return kLayoutError;
  }
  return std::exchange(found->layout, layout);
}

bool HeadlessGraphics::TransparentBlt(DeviceContext target, const Rect& place, DeviceContext source,
                                      Point from, std::uint32_t transparentColor) {
  const Context* onto = Find(target);
  const Context* with = Find(source);
  if (faults_.ShouldFail("TransparentBlt") || onto == nullptr || with == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  const Bitmap* bitmap = BitmapOf(with->selected);
  const Size size = bitmap == nullptr ? Size{1, 1} : bitmap->size;
  if (place.Width() <= 0 || place.Height() <= 0 || from.x < 0 || from.y < 0 ||
      from.x + place.Width() > size.width || from.y + place.Height() > size.height) {
    return Fail(kErrorInvalidParameter);
  }
  copies.push_back({onto->window, bitmap == nullptr ? 0 : bitmap->id, place, from, transparentColor,
                    onto->layout});
  return true;
}

GdiObject HeadlessGraphics::CreateCompatibleBitmap(DeviceContext /*context*/,
                                                   std::int32_t /*width*/,
                                                   std::int32_t /*height*/) {
  return nullptr;
}

GdiObject HeadlessGraphics::CreatePen(std::int32_t /*style*/, std::int32_t /*width*/,
                                      std::uint32_t /*color*/) {
  return nullptr;
}

GdiObject HeadlessGraphics::GetStockObject(std::int32_t /*index*/) {
  return nullptr;
}

int HeadlessGraphics::GetDIBits(DeviceContext /*context*/, GdiObject /*bitmap*/,
                                std::uint32_t /*firstRow*/, std::uint32_t /*rows*/,
                                void* /*pixels*/, BitmapInfoHeader* /*form*/) {
  return 0;
}

int HeadlessGraphics::StretchDIBits(DeviceContext /*target*/, const Rect& /*place*/,
                                    const Rect& /*from*/, const void* /*pixels*/,
                                    const BitmapInfoHeader& /*form*/) {
  return 0;
}

bool HeadlessGraphics::BitBlt(DeviceContext /*target*/, const Rect& /*place*/,
                              DeviceContext /*source*/, Point /*from*/) {
  return false;
}

bool HeadlessGraphics::StretchBlt(DeviceContext /*target*/, const Rect& /*place*/,
                                  DeviceContext /*source*/, const Rect& /*from*/) {
  return false;
}

int HeadlessGraphics::SetStretchBltMode(DeviceContext /*context*/, std::int32_t /*mode*/) {
  return 0;
}

bool HeadlessGraphics::FillRect(DeviceContext /*target*/, const Rect& /*place*/,
                                GdiObject /*brush*/) {
  return false;
}

bool HeadlessGraphics::Rectangle(DeviceContext /*target*/, const Rect& /*place*/) {
  return false;
}

bool HeadlessGraphics::GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                                           Size* size) {
  constexpr std::int32_t kLineHeight = 12;
  if (faults_.ShouldFail("GetTextExtentPointW") || Find(context) == nullptr || text == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  *size = {units * kLineHeight / 2, kLineHeight};
  return true;
}

}  // namespace ostrel::headless
