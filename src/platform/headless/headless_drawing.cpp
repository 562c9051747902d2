// Shapes, texts, paths, mapping and the objects that they are drawn with: what a printer's context
// writes down.
#include "platform/headless/context_places.h"
#include "platform/headless/headless_graphics.h"
#include "platform/headless/headless_platform.h"
#include "platform/headless/names.h"
#include "platform/headless/stock_objects.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace ostrel::headless {
namespace {

constexpr std::uintptr_t kHandleStep = 0x10;
constexpr std::int64_t kNothing = -1;  // the colour of a hollow brush, of an empty pen

std::vector<std::int64_t> NumbersOf(const LogFont& font) {
  return {kSelectedFont,      font.lfHeight,  font.lfWidth,       font.lfEscapement,
          font.lfOrientation, font.lfWeight,  font.lfItalic,      font.lfUnderline,
          font.lfStrikeOut,   font.lfCharSet, font.lfOutPrecision};
}

}  // namespace

// ---- What is written down -----------------------------------------------------------------------

void HeadlessGraphics::Record(Context& context, DrawingOperation operation) {
  if (context.printer == nullptr || !context.printer->records) {
    return;
  }
  operation.state = context.state;
  if (const LogFont* font = FontOf(context.font); font != nullptr) {
    operation.state.font = *font;
  }
  operation.state.brush = BrushColorOf(context.brush);
  operation.state.pen = PenOf(context.pen);
  context.printer->operations.push_back(std::move(operation));
}

void HeadlessGraphics::RecordSelection(Context& context, GdiObject object) {
  DrawingOperation operation = {.call = DrawingCall::kSelectObject};
  if (object == context.font) {
    const LogFont* font = FontOf(object);
    operation.numbers = NumbersOf(font == nullptr ? LogFont{} : *font);
    operation.text = font == nullptr ? u"" : font->lfFaceName;
  } else if (object == context.brush) {
    const std::optional<std::uint32_t> color = BrushColorOf(object);
    operation.numbers = {kSelectedBrush, color ? std::int64_t{*color} : kNothing};
  } else if (const auto pen = PenOf(object); pen) {
    operation.numbers = {kSelectedPen, pen->color, pen->width};
  } else {
    operation.numbers = {kSelectedPen, kNothing, 0};
  }
  Record(context, std::move(operation));
}

void HeadlessGraphics::RecordPicture(Context& context, const Rect& place, const Rect& from,
                                     const void* pixels, const BitmapInfoHeader& form,
                                     std::uint32_t rasterOperation) {
  if (!context.printer->records) {
    return;
  }
  const std::size_t size =
      RowBytes(form.biWidth) * static_cast<std::size_t>(std::abs(form.biHeight));
  const auto* first = static_cast<const std::byte*>(pixels);
  Record(context, {.call = DrawingCall::kStretchDIBits,
                   .numbers = {place.left, place.top, place.Width(), place.Height(), from.left,
                               from.top, from.Width(), from.Height(), rasterOperation},
                   .bytes = {first, first + size},
                   .picture = {form.biWidth, form.biHeight}});
}

// ---- Objects ------------------------------------------------------------------------------------

template <typename Object>
GdiObject HeadlessGraphics::AddObject(std::map<GdiObject, Object>& objects, Object object) {
  const auto handle = HandleOf<GdiObject>(nextHandle_);
  nextHandle_ += kHandleStep;
  objects.emplace(handle, std::move(object));
  return handle;
}

GdiObject HeadlessGraphics::CreatePen(std::int32_t style, std::int32_t width, std::uint32_t color) {
  if (faults_.ShouldFail("CreatePen") || style != kPenSolid) {
    Fail(kErrorInvalidParameter);
    return nullptr;
  }
  return AddObject(pens_, Pen{color, std::max(width, 1)});
}

GdiObject HeadlessGraphics::CreateSolidBrush(std::uint32_t color) {
  if (faults_.ShouldFail("CreateSolidBrush")) {
    return nullptr;
  }
  return AddObject(brushes_, std::optional(color));
}

GdiObject HeadlessGraphics::CreateBrushIndirect(const LogBrush& brush) {
  constexpr std::uint32_t kHollow = 1;  // BS_NULL
  if (faults_.ShouldFail("CreateBrushIndirect") || brush.lbStyle > kHollow) {
    Fail(kErrorInvalidParameter);
    return nullptr;
  }
  return AddObject(brushes_,
                   brush.lbStyle == kHollow ? std::nullopt : std::optional(brush.lbColor));
}

GdiObject HeadlessGraphics::CreateFontIndirectW(const LogFont& font) {
  if (faults_.ShouldFail("CreateFontIndirectW")) {
    return nullptr;
  }
  return AddObject(fonts_, font);
}

std::optional<std::uint32_t> HeadlessGraphics::BrushColorOf(GdiObject brush) const {
  const auto found = brushes_.find(brush);
  return found == brushes_.end() ? BrushColor(brush) : found->second;
}

const LogFont* HeadlessGraphics::FontOf(GdiObject font) const {
  const auto found = fonts_.find(font);
  return found == fonts_.end() ? nullptr : &found->second;
}

int HeadlessGraphics::EnumFontFamiliesExW(DeviceContext context, const LogFont& wanted,
                                          FontCallback callback, std::intptr_t callersWord) {
  constexpr std::uint32_t kTrueTypeFont = 4;  // TRUETYPE_FONTTYPE
  constexpr int kGoesOn = 1;
  if (faults_.ShouldFail("EnumFontFamiliesExW") || Find(context) == nullptr) {
    return 0;
  }
  const std::u16string wantedFace = LowerCase(wanted.lfFaceName);
  int answer = kGoesOn;
  for (const auto& [face, charSets] : fonts) {
    if (!wantedFace.empty() && LowerCase(face) != wantedFace) {
      continue;
    }
    for (const std::uint8_t charSet : charSets) {
      if (answer == 0 || (wanted.lfCharSet != kDefaultCharSet && wanted.lfCharSet != charSet)) {
        continue;
      }
      LogFont font = {};
      face.copy(font.lfFaceName, kFaceNameUnits - 1);
      font.lfCharSet = charSet;
      answer = callback(&font, nullptr, kTrueTypeFont, callersWord);
    }
  }
  return answer;
}

GdiObject HeadlessGraphics::LoadImageW(const char16_t* path, std::uint32_t flags) {
  lastLoadFlags = flags;
  const HeadlessFiles::Content* content = path == nullptr ? nullptr : files_.Get(path);
  if (faults_.ShouldFail("LoadImageW") || content == nullptr || (flags & kLoadFromFile) == 0) {
    Fail(kErrorFileNotFound);
    return nullptr;
  }
  try {
    const BitmapResource bitmap = ReadBitmapFile(*content);
    return AddBitmap({.size = {bitmap.width, bitmap.height}, .pixels = Surface(bitmap)});
  } catch (const std::runtime_error&) {
    Fail(kErrorInvalidParameter);
    return nullptr;
  }
}

// ---- Printers -----------------------------------------------------------------------------------

DeviceContext HeadlessGraphics::OpenPrinter(PrinterDevice& device) {
  return Add({.printer = &device});
}

void HeadlessGraphics::MoveDeviceOrigin(DeviceContext context, Point origin) {
  if (Context* found = Find(context); found != nullptr) {
    found->state.mapping.deviceOrigin = origin;
  }
}

int HeadlessGraphics::ExtEscape(DeviceContext context, std::int32_t code, std::int32_t inputBytes,
                                const void* input, std::int32_t outputBytes, void* output) {
  constexpr int kFailed = -1;
  Context* found = Take("ExtEscape", context);
  if (found == nullptr || inputBytes < 0 || outputBytes < 0) {
    return kFailed;
  }
  const auto* given = static_cast<const std::byte*>(input);
  const std::span<const std::byte> in(given, given == nullptr ? 0 : std::size_t(inputBytes));
  auto* wanted = static_cast<std::byte*>(output);
  const std::span<std::byte> out(wanted, wanted == nullptr ? 0 : std::size_t(outputBytes));
  Record(*found, {.call = DrawingCall::kExtEscape,
                  .numbers = {code, outputBytes},
                  .bytes = {in.begin(), in.end()}});
  return found->printer == nullptr || !found->printer->onEscape
             ? 0
             : found->printer->onEscape(code, in, out);
}

// ---- Mapping and modes --------------------------------------------------------------------------

bool HeadlessGraphics::SetPoint(const char* name, DeviceContext context, DrawingCall call,
                                Point DrawingMapping::*member, Point value, Point* before) {
  Context* found = Take(name, context);
  if (found == nullptr) {
    return false;
  }
  const Point old = std::exchange(found->state.mapping.*member, value);
  if (before != nullptr) {
    *before = old;
  }
  Record(*found, {.call = call, .numbers = {value.x, value.y}});
  return true;
}

bool HeadlessGraphics::SetWindowOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                                      Point* before) {
  return SetPoint("SetWindowOrgEx", context, DrawingCall::kSetWindowOrgEx,
                  &DrawingMapping::windowOrigin, {x, y}, before);
}

bool HeadlessGraphics::SetViewportOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                                        Point* before) {
  return SetPoint("SetViewportOrgEx", context, DrawingCall::kSetViewportOrgEx,
                  &DrawingMapping::viewportOrigin, {x, y}, before);
}

bool HeadlessGraphics::SetExtent(const char* name, DeviceContext context, DrawingCall call,
                                 Size DrawingMapping::*member, Size value, Size* before) {
  Context* found = Take(name, context);
  if (found == nullptr) {
    return false;
  }
  if (before != nullptr) {
    *before = found->state.mapping.*member;
  }
  Record(*found, {.call = call, .numbers = {value.width, value.height}});
  return true;
}

bool HeadlessGraphics::SetWindowExtEx(DeviceContext context, std::int32_t width,
                                      std::int32_t height, Size* before) {
  return SetExtent("SetWindowExtEx", context, DrawingCall::kSetWindowExtEx,
                   &DrawingMapping::windowExtent, {width, height}, before);
}

bool HeadlessGraphics::SetViewportExtEx(DeviceContext context, std::int32_t width,
                                        std::int32_t height, Size* before) {
  return SetExtent("SetViewportExtEx", context, DrawingCall::kSetViewportExtEx,
                   &DrawingMapping::viewportExtent, {width, height}, before);
}

bool HeadlessGraphics::DPtoLP(DeviceContext context, Point* points, int count) {
  Context* found = Take("DPtoLP", context);
  if (found == nullptr) {
    return false;
  }
  for (Point& point : std::span(points, static_cast<std::size_t>(std::max(count, 0)))) {
    point = found->state.mapping.ToCaller(point);
  }
  return true;
}

template <typename Value>
Value HeadlessGraphics::SetWord(const char* name, DeviceContext context, DrawingCall call,
                                Value DrawingState::*member, Value value, bool isValid,
                                Value onFailure) {
  Context* found = Take(name, context);
  if (found == nullptr) {
    return onFailure;
  }
  const Value before = found->state.*member;
  if (isValid) {
    found->state.*member = value;
  }
  Record(*found, {.call = call, .numbers = {value}});
  return isValid ? before : onFailure;
}

int HeadlessGraphics::SetBkMode(DeviceContext context, std::int32_t mode) {
  constexpr std::int32_t kOpaque = 2;
  const bool isValid = mode == kBackgroundTransparent || mode == kOpaque;
  return SetWord("SetBkMode", context, DrawingCall::kSetBkMode, &DrawingState::backgroundMode, mode,
                 isValid, 0);
}

int HeadlessGraphics::SetROP2(DeviceContext context, std::int32_t operation) {
  constexpr std::int32_t kLast = 16;  // R2_WHITE
  return SetWord("SetROP2", context, DrawingCall::kSetROP2, &DrawingState::rasterMode, operation,
                 takesAnyRasterMode || (operation >= 1 && operation <= kLast), 0);
}

int HeadlessGraphics::SetPolyFillMode(DeviceContext context, std::int32_t mode) {
  const bool isValid = mode == kFillAlternate || mode == kFillWinding;
  return SetWord("SetPolyFillMode", context, DrawingCall::kSetPolyFillMode,
                 &DrawingState::polyFillMode, mode, isValid, 0);
}

std::uint32_t HeadlessGraphics::SetTextAlign(DeviceContext context, std::uint32_t align) {
  return SetWord("SetTextAlign", context, DrawingCall::kSetTextAlign, &DrawingState::textAlign,
                 align, true, kInvalidTextAlign);
}

std::uint32_t HeadlessGraphics::SetTextColor(DeviceContext context, std::uint32_t color) {
  return SetWord("SetTextColor", context, DrawingCall::kSetTextColor, &DrawingState::textColor,
                 color, true, kInvalidColor);
}

std::uint32_t HeadlessGraphics::SetBkColor(DeviceContext context, std::uint32_t color) {
  return SetWord("SetBkColor", context, DrawingCall::kSetBkColor, &DrawingState::backgroundColor,
                 color, true, kInvalidColor);
}

// ---- Shapes and texts ---------------------------------------------------------------------------

bool HeadlessGraphics::FillRect(DeviceContext target, const Rect& place, GdiObject brush) {
  Context* onto = Take("FillRect", target);
  if (onto == nullptr || (!IsStockBrush(StockIndex(brush)) && !brushes_.contains(brush))) {
    return Fail(kErrorInvalidHandle);
  }
  const std::optional<std::uint32_t> color = BrushColorOf(brush);
  Record(*onto, {.call = DrawingCall::kFillRect,
                 .numbers = {place.left, place.top, place.right, place.bottom,
                             color ? std::int64_t{*color} : kNothing}});
  if (color && onto->pixels != nullptr) {
    FillPixels(*onto->pixels, OnSurface(Across(place), onto->pixels->width(), onto->layout, false),
               Down(place), *color);
  }
  return true;
}

bool HeadlessGraphics::Rectangle(DeviceContext target, const Rect& place) {
  Context* onto = Take("Rectangle", target);
  if (onto == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  Record(*onto, {.call = DrawingCall::kRectangle,
                 .numbers = {place.left, place.top, place.right, place.bottom}});
  if (onto->pixels == nullptr || onto->path == PathState::kBegun) {
    return true;
  }
  // In whichever order the corners are given.
  const Rect ordered = {std::min(place.left, place.right), std::min(place.top, place.bottom),
                        std::max(place.left, place.right), std::max(place.top, place.bottom)};
  const Extent across = OnSurface(Across(ordered), onto->pixels->width(), onto->layout, false);
  if (const auto color = BrushColorOf(onto->brush); color) {
    FillPixels(*onto->pixels, across, Down(ordered), *color);
  }
  if (const auto pen = PenOf(onto->pen); pen) {
    FramePixels(*onto->pixels, across, Down(ordered), pen->color, pen->width);
  }
  return true;
}

bool HeadlessGraphics::Shape(const char* name, DeviceContext context, DrawingOperation operation) {
  Context* found = Take(name, context);
  if (found == nullptr) {
    return false;
  }
  Record(*found, std::move(operation));
  return true;
}

bool HeadlessGraphics::Ellipse(DeviceContext target, const Rect& place) {
  return Shape("Ellipse", target,
               {.call = DrawingCall::kEllipse,
                .numbers = {place.left, place.top, place.right, place.bottom}});
}

bool HeadlessGraphics::Polygon(DeviceContext target, const Point* corners, int count) {
  constexpr int kFewest = 2;
  if (corners == nullptr || count < kFewest) {
    return Fail(kErrorInvalidParameter);
  }
  return Shape("Polygon", target,
               {.call = DrawingCall::kPolygon, .points = {corners, corners + count}});
}

// ---- Paths and texts ----------------------------------------------------------------------------

bool HeadlessGraphics::BeginPath(DeviceContext context) {
  Context* found = Take("BeginPath", context);
  if (found == nullptr) {
    return false;
  }
  found->path = PathState::kBegun;
  Record(*found, {.call = DrawingCall::kBeginPath});
  return true;
}

bool HeadlessGraphics::EndPath(DeviceContext context) {
  Context* found = Take("EndPath", context);
  if (found == nullptr || found->path != PathState::kBegun) {
    return Fail(kErrorCanNotComplete);
  }
  found->path = PathState::kEnded;
  Record(*found, {.call = DrawingCall::kEndPath});
  return true;
}

bool HeadlessGraphics::FillPath(DeviceContext context) {
  Context* found = Take("FillPath", context);
  if (found == nullptr || found->path != PathState::kEnded) {
    return Fail(kErrorCanNotComplete);
  }
  found->path = PathState::kNone;
  Record(*found, {.call = DrawingCall::kFillPath});
  return true;
}

bool HeadlessGraphics::ExtTextOutW(DeviceContext context, std::int32_t x, std::int32_t y,
                                   std::uint32_t options, const Rect* place, const char16_t* text,
                                   int units) {
  if (units < 0 || (text == nullptr && units > 0)) {
    return Fail(kErrorInvalidParameter);
  }
  return Shape("ExtTextOutW", context,
               {.call = DrawingCall::kExtTextOutW,
                .numbers = {x, y, options},
                .text = std::u16string(std::u16string_view(text, static_cast<std::size_t>(units))),
                .place = place == nullptr ? std::nullopt : std::optional(*place)});
}

bool HeadlessGraphics::GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                                           Size* size) {
  constexpr std::int32_t kLineHeight = 12;
  Context* found = Take("GetTextExtentPointW", context);
  if (found == nullptr || text == nullptr || units < 0) {
    return Fail(kErrorInvalidHandle);
  }
  const LogFont* font = FontOf(found->font);
  if (font != nullptr && measureText) {
    *size = measureText(*font, {text, static_cast<std::size_t>(units)});
    return true;
  }
  const std::int32_t height = font == nullptr ? kLineHeight : std::abs(font->lfHeight);
  *size = {static_cast<std::int32_t>(std::int64_t{units} * height / 2), height};
  return true;
}

}  // namespace ostrel::headless
