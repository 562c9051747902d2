#include "platform/headless/headless_graphics.h"

#include "platform/headless/context_places.h"
#include "platform/headless/headless_platform.h"
#include "platform/headless/names.h"
#include "platform/headless/stock_objects.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace ostrel::headless {
namespace {

constexpr std::uint32_t kLayoutError = 0xFFFFFFFF;  // GDI_ERROR
constexpr std::uintptr_t kHandleStep = 0x10;
constexpr std::uint32_t kFaceColor = 0x00F0F0F0;

// What a new context in memory holds: a bitmap of one pixel that belongs to nobody.
GdiObject StockBitmap() {
  return HandleOf<GdiObject>(0x600000);
}

}  // namespace

GdiObject DialogFont() {
  return HandleOf<GdiObject>(0x501000);
}

bool HeadlessGraphics::Fail(std::uint32_t code) {
  debug_.SetLastError(code);
  return false;
}

HeadlessGraphics::Context* HeadlessGraphics::Find(DeviceContext context) {
  const auto found = contexts_.find(context);
  return found == contexts_.end() ? nullptr : &found->second;
}

HeadlessGraphics::Context* HeadlessGraphics::Take(const char* operation, DeviceContext context) {
  Context* found = Find(context);
  if (faults_.ShouldFail(operation) || found == nullptr) {
    Fail(kErrorInvalidHandle);
    return nullptr;
  }
  return found;
}

// ---- Objects ------------------------------------------------------------------------------------

const HeadlessGraphics::Bitmap* HeadlessGraphics::BitmapOf(GdiObject bitmap) const {
  const auto found = bitmaps_.find(bitmap);
  return found == bitmaps_.end() ? nullptr : &found->second;
}

std::optional<HeadlessGraphics::Pen> HeadlessGraphics::PenOf(GdiObject pen) const {
  if (const auto found = pens_.find(pen); found != pens_.end()) {
    return found->second;
  }
  switch (StockIndex(pen)) {
    case kWhitePen:
      return Pen{0xFFFFFF, 1};
    case kBlackPen:
      return Pen{0, 1};
    default:
      return std::nullopt;
  }
}

bool HeadlessGraphics::IsSelected(GdiObject object) const {
  return std::ranges::any_of(contexts_, [object](const auto& entry) {
    const Context& context = entry.second;
    return context.bitmap == object || context.pen == object || context.brush == object ||
           context.font == object;
  });
}

GdiObject HeadlessGraphics::AddBitmap(Bitmap bitmap) {
  const auto handle = HandleOf<GdiObject>(nextHandle_);
  nextHandle_ += kHandleStep;
  bitmaps_[handle] = std::move(bitmap);
  return handle;
}

GdiObject HeadlessGraphics::LoadBitmapW(ModuleHandle module, std::uint32_t id) {
  const Resources* resources = modules_.ResourcesOf(module);
  if (faults_.ShouldFail("LoadBitmapW") || resources == nullptr ||
      !resources->bitmaps.contains(id)) {
    Fail(kErrorResourceNameNotFound);
    return nullptr;
  }
  const BitmapResource& bitmap = resources->bitmaps.at(id);
  return AddBitmap({.module = module,
                    .id = id,
                    .size = {bitmap.width, bitmap.height},
                    .pixels = Surface(bitmap)});
}

GdiObject HeadlessGraphics::CreateCompatibleBitmap(DeviceContext context, std::int32_t width,
                                                   std::int32_t height) {
  constexpr std::int32_t kMostPixels = 0x7FFF;  // a side
  const Context* model = Take("CreateCompatibleBitmap", context);
  if (model == nullptr || width < 0 || height < 0 || width > kMostPixels || height > kMostPixels) {
    Fail(model == nullptr ? kErrorInvalidHandle : kErrorInvalidParameter);
    return nullptr;
  }
  const bool isEmpty = width == 0 || height == 0;
  const Size size = isEmpty ? Size{1, 1} : Size{width, height};
  return AddBitmap({.size = size,
                    .isTwoColored = isEmpty || model->isTwoColored,
                    .pixels = Surface(size.width, size.height)});
}

GdiObject HeadlessGraphics::GetStockObject(std::int32_t index) {
  const bool known =
      IsStockBrush(index) || (index >= kWhitePen && index <= kNullPen) || IsStockFont(index);
  return faults_.ShouldFail("GetStockObject") || !known ? nullptr : StockObject(index);
}

bool HeadlessGraphics::DeleteObject(GdiObject object) {
  if (StockIndex(object) >= 0) {
    return true;
  }
  const auto isErased = [object](auto&... objects) { return (objects.erase(object) + ...) != 0; };
  return (!IsSelected(object) && isErased(bitmaps_, pens_, brushes_, fonts_)) ||
         Fail(kErrorInvalidHandle);
}

bool HeadlessGraphics::GetBitmapSize(GdiObject bitmap, Size* size) {
  const Bitmap* found = BitmapOf(bitmap);
  if (faults_.ShouldFail("GetBitmapSize") || found == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  *size = found->size;
  return true;
}

// ---- Contexts -----------------------------------------------------------------------------------

DeviceContext HeadlessGraphics::Add(Context context) {
  context.pen = StockObject(kBlackPen);
  context.brush = StockObject(kWhiteBrush);
  context.font = StockObject(kSystemFont);
  const auto handle = HandleOf<DeviceContext>(nextHandle_);
  nextHandle_ += kHandleStep;
  contexts_[handle] = context;
  return handle;
}

const Surface* HeadlessGraphics::SurfaceOf(WindowHandle window) const {
  const auto found = windowPixels_.find(window);
  return found == windowPixels_.end() ? nullptr : &found->second;
}

DeviceContext HeadlessGraphics::OpenWindow(WindowHandle window) {
  const Window* found = windows_ == nullptr ? nullptr : windows_->Find(window);
  if (found == nullptr) {
    return Add({});  // the screen
  }
  const Rect& place = found->screenPlace;
  auto [pixels, isNew] =
      windowPixels_.try_emplace(window, place.Width(), place.Height(), kFaceColor);
  return Add({.window = window,
              .pixels = &pixels->second,
              .layout = found->IsMirrored() ? kLayoutRightToLeft : 0});
}

DeviceContext HeadlessGraphics::BeginPaint(WindowHandle window) {
  const DeviceContext context = OpenWindow(window);
  if (Surface* pixels = Find(context)->pixels; pixels != nullptr) {
    FillPixels(*pixels, {0, pixels->width()}, {0, pixels->height()}, kFaceColor);
  }
  return context;
}

DeviceContext HeadlessGraphics::GetDC(WindowHandle window) {
  const bool known = window == nullptr || (windows_ != nullptr && windows_->IsWindow(window));
  if (faults_.ShouldFail("GetDC") || !known) {
    Fail(kErrorInvalidHandle);
    return nullptr;
  }
  return OpenWindow(window);
}

int HeadlessGraphics::ReleaseDC(WindowHandle window, DeviceContext context) {
  const Context* found = Find(context);
  if (found == nullptr || found->isInMemory || found->window != window) {
    return 0;
  }
  contexts_.erase(context);
  return 1;
}

int HeadlessGraphics::GetDeviceCaps(DeviceContext context, std::int32_t index) {
  if (faults_.ShouldFail("GetDeviceCaps") || Find(context) == nullptr) {
    return 0;
  }
  const PrinterDevice* printer = Find(context)->printer;
  switch (index) {
    case kDeviceCapLogPixelsX:
    case kDeviceCapLogPixelsY:
      return printer == nullptr ? logPixelsY : printer->dotsPerInch;
    case kDeviceCapHorzRes:
      return printer == nullptr ? 0 : printer->page.width;
    case kDeviceCapVertRes:
      return printer == nullptr ? 0 : printer->page.height;
    default:
      return 0;
  }
}

DeviceContext HeadlessGraphics::CreateCompatibleDC(DeviceContext context) {
  const Context* model = Find(context);
  if (faults_.ShouldFail("CreateCompatibleDC") || (context != nullptr && model == nullptr)) {
    Fail(kErrorInvalidHandle);
    return nullptr;
  }
  return Add({.isInMemory = true,
              .pixels = &firstBitmap_,
              .bitmap = StockBitmap(),
              .isTwoColored = true,
              .layout = model == nullptr || !memoryTakesLayout ? 0 : model->layout});
}

bool HeadlessGraphics::DeleteDC(DeviceContext context) {
  const Context* found = Find(context);
  if (found == nullptr || (!found->isInMemory && found->printer == nullptr)) {
    return Fail(kErrorInvalidHandle);
  }
  contexts_.erase(context);
  return true;
}

// Where a context keeps what an object is; null for an object that it can't have.
GdiObject* HeadlessGraphics::PlaceFor(Context& context, GdiObject object) {
  const std::int32_t index = StockIndex(object);
  if (IsStockBrush(index) || brushes_.contains(object)) {
    return &context.brush;
  }
  if (IsStockFont(index) || object == DialogFont() || fonts_.contains(object)) {
    return &context.font;
  }
  if (index == kNullPen || PenOf(object)) {
    return &context.pen;
  }
  const bool isFree = object == StockBitmap() || context.bitmap == object ||
                      (BitmapOf(object) != nullptr && !IsSelected(object));
  return context.isInMemory && isFree ? &context.bitmap : nullptr;
}

GdiObject HeadlessGraphics::SelectObject(DeviceContext context, GdiObject object) {
  Context* found = Take("SelectObject", context);
  GdiObject* place = found == nullptr ? nullptr : PlaceFor(*found, object);
  if (place == nullptr) {
    Fail(kErrorInvalidHandle);
    return nullptr;
  }
  if (place == &found->bitmap) {
    const auto bitmap = bitmaps_.find(object);
    const bool isFirst = bitmap == bitmaps_.end();
    found->pixels = isFirst ? &firstBitmap_ : &bitmap->second.pixels;
    found->isTwoColored = isFirst || bitmap->second.isTwoColored;
  }
  const GdiObject before = std::exchange(*place, object);
  RecordSelection(*found, object);
  return before;
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

int HeadlessGraphics::SetStretchBltMode(DeviceContext context, std::int32_t mode) {
  Context* found = Take("SetStretchBltMode", context);
  if (found == nullptr || mode < 1 || mode > kStretchHalftone) {
    return 0;
  }
  const std::int32_t before = std::exchange(found->state.stretchMode, mode);
  Record(*found, {.call = DrawingCall::kSetStretchBltMode, .numbers = {mode}});
  return before;
}

// ---- Copies -------------------------------------------------------------------------------------

namespace {

Sampling SamplingOf(std::int32_t stretchMode) {
  switch (stretchMode) {
    case kStretchDeleteScans:
      return Sampling::kOneOf;
    case kStretchHalftone:
      return Sampling::kFloor;
    default:
      return Sampling::kCombine;
  }
}

}  // namespace

bool HeadlessGraphics::DrawCopy(Context& target, const Rect& place, Context& source,
                                const Rect& from, std::optional<std::uint32_t> leftOut) {
  if (source.pixels == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  if (target.pixels == nullptr) {
    return true;
  }
  const CopyJob job = {
      .toX = OnSurface(Across(place), target.pixels->width(), target.layout, true),
      .toY = Down(place),
      .fromX = OnSurface(Across(from), source.pixels->width(), source.layout, true),
      .fromY = Down(from),
      .sampling = SamplingOf(target.state.stretchMode),
      .leftOut = leftOut};
  if (target.pixels == source.pixels) {
    const Surface before = *source.pixels;
    CopyPixels(*target.pixels, RowsOf(before), job);
  } else {
    CopyPixels(*target.pixels, RowsOf(*source.pixels), job);
  }
  if (target.isTwoColored) {
    MakeBlackAndWhite(*target.pixels);
  }
  return true;
}

bool HeadlessGraphics::BitBlt(DeviceContext target, const Rect& place, DeviceContext source,
                              Point from) {
  const Rect taken = {from.x, from.y, from.x + place.Width(), from.y + place.Height()};
  Context* onto = Take("BitBlt", target);
  Context* with = Find(source);
  if (onto == nullptr || with == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  return DrawCopy(*onto, place, *with, taken, std::nullopt);
}

bool HeadlessGraphics::StretchBlt(DeviceContext target, const Rect& place, DeviceContext source,
                                  const Rect& from) {
  Context* onto = Take("StretchBlt", target);
  Context* with = Find(source);
  if (onto == nullptr || with == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  return DrawCopy(*onto, place, *with, from, std::nullopt);
}

bool HeadlessGraphics::TransparentBlt(DeviceContext target, const Rect& place, DeviceContext source,
                                      Point from, std::uint32_t transparentColor) {
  Context* onto = Take("TransparentBlt", target);
  Context* with = Find(source);
  if (onto == nullptr || with == nullptr || with->pixels == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  const Rect taken = {from.x, from.y, from.x + place.Width(), from.y + place.Height()};
  if (place.Width() <= 0 || place.Height() <= 0 || from.x < 0 || from.y < 0 ||
      taken.right > with->pixels->width() || taken.bottom > with->pixels->height()) {
    return Fail(kErrorInvalidParameter);
  }
  const Bitmap* bitmap = BitmapOf(with->bitmap);
  copies.push_back({onto->window, bitmap == nullptr ? 0 : bitmap->id, place, from, transparentColor,
                    onto->layout});
  return DrawCopy(*onto, place, *with, taken, transparentColor);
}

int HeadlessGraphics::GetDIBits(DeviceContext context, GdiObject bitmap, std::uint32_t firstRow,
                                std::uint32_t rows, void* pixels, BitmapInfoHeader* form) {
  const Bitmap* found = BitmapOf(bitmap);
  if (Take("GetDIBits", context) == nullptr || found == nullptr || IsSelected(bitmap) ||
      form == nullptr) {
    return Fail(kErrorInvalidParameter);
  }
  lastForm = *form;
  if (form->biBitCount == 0 && pixels == nullptr) {
    DescribeScreenForm(found->pixels, form);
    return 1;
  }
  if (!IsKnownForm(*form) || form->biWidth != found->size.width ||
      std::abs(form->biHeight) != found->size.height) {
    return Fail(kErrorInvalidParameter);
  }
  form->biSizeImage = static_cast<std::uint32_t>(RowBytes(form->biWidth)) *
                      static_cast<std::uint32_t>(std::abs(form->biHeight));
  return pixels == nullptr
             ? 1
             : ReadRows(found->pixels, firstRow, std::min(rows, mostRowsRead), *form, pixels);
}

int HeadlessGraphics::StretchDIBits(DeviceContext target, const Rect& place, const Rect& from,
                                    const void* pixels, const BitmapInfoHeader& form,
                                    std::uint32_t rasterOperation) {
  Context* onto = Take("StretchDIBits", target);
  const bool isKnownOperation = rasterOperation == kRasterCopy || rasterOperation == kRasterAnd;
  if (onto == nullptr || pixels == nullptr || !IsKnownForm(form) || !isKnownOperation) {
    return Fail(kErrorInvalidParameter);
  }
  const PixelRows rows = RowsOf(pixels, form);
  if (onto->printer != nullptr) {
    RecordPicture(*onto, place, from, pixels, form, rasterOperation);
  }
  if (onto->pixels == nullptr) {
    return rows.height;
  }
  const bool lastRowFirst = form.biHeight > 0;
  const Surface before = rasterOperation == kRasterAnd ? *onto->pixels : Surface();
  CopyPixels(*onto->pixels, rows,
             {.toX = OnSurface(Across(place), onto->pixels->width(), onto->layout, false),
              .toY = Down(place),
              .fromX = Across(from),
              .fromY = lastRowFirst ? FromOtherEdge(Down(from), rows.height).Turned() : Down(from),
              .sampling = SamplingOf(onto->state.stretchMode)});
  if (rasterOperation == kRasterAnd) {
    KeepCommonBits(*onto->pixels, before);
  }
  if (onto->isTwoColored) {
    MakeBlackAndWhite(*onto->pixels);
  }
  return rows.height;
}

}  // namespace ostrel::headless
