#include "pages/preview.h"

#include "core/graphics_objects.h"
#include "core/heap_block.h"
#include "pages/page_record.h"
#include "pages/preview_pixels.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace ostrel {
namespace {

// ---- The choice of picture ----------------------------------------------------------------------

constexpr std::size_t kOrderColumns = 4;

// clang-format off
struct OrderRow {
  std::int16_t orientation;
  std::int16_t border;
  std::int16_t multipleUp;
  std::uint16_t pictures[kOrderColumns];  // 0 where the order has none
};
constexpr OrderRow kOrders[] = {
    // Orientation, Border, Mode, Columns 0, 1, 2, 3
    {1, 0,  2, { 847,  839,    0,    0}},
    {1, 0,  4, { 835,  857,  851,  876}},
    {1, 0,  8, { 831,  800,  813,  812}},
    {1, 0, 16, { 860,  874,  846,  879}},
    {1, 0, 22, {1060, 1060, 1060, 1060}},
    {2, 0,  2, { 809,  875,    0,    0}},
    {2, 0,  4, { 830,  807,  850,  877}},
    {2, 0,  8, { 798,  842,  815,  790}},
    {2, 0, 16, { 777,  773,  775,  771}},
    {2, 0, 22, {1058, 1058, 1058, 1058}},
    {1, 1,  2, { 871,  862,    0,    0}},
    {1, 1,  4, { 829,  801,  853,  864}},
    {1, 1,  8, { 794,  786,  795,  803}},
    {1, 1, 16, { 826,  849,  866,  878}},
    {1, 1, 22, {1060, 1060, 1060, 1060}},
    {2, 1,  2, { 883,  868,    0,    0}},
    {2, 1,  4, { 832,  820,  814,  843}},
    {2, 1,  8, { 869,  838,  791,  818}},
    {2, 1, 16, { 778,  774,  776,  772}},
    {2, 1, 22, {1058, 1058, 1058, 1058}},
};

struct BindingRow {
  std::int16_t orientation;
  std::uint16_t pictures[2];
};
constexpr BindingRow kBindings[] = {
    // Orientation, Binding 0, 1
    {1, {1070, 1076}},
    {2, {1069,  719}},
};
// clang-format on

// A picture that knows no more than the orientation; 0 for one that is neither.
struct PlainPicture {
  std::uint32_t portrait;
  std::uint32_t landscape;

  std::uint32_t Of(std::int16_t orientation) const {
    return orientation == kPortrait ? portrait : orientation == kLandscape ? landscape : 0;
  }
};
constexpr PlainPicture kPoster = {.portrait = 1074, .landscape = 1073};
constexpr PlainPicture kPage = {.portrait = 888, .landscape = 886};

// The settings that choose the picture, as they stand for this paint.
struct Snapshot {
  explicit Snapshot(UIContext& context)
      : orientation(RepairedField(context, kDmOrientation)),
        booklet(IsBooklet(context)),
        binding(Setting(context, "BookletBinding", 0)),
        rotated(Setting(context, "Rotate180", 0) != 0),
        poster(Setting(context, "PosterPrint", 0) != 0),
        multipleUp(Setting(context, "MultipleUp", 1)),
        order(Setting(context, "PageOrder", 0)),
        border(Setting(context, "PageBorder", 0)) {}

  std::int16_t orientation;
  bool booklet;
  std::int16_t binding;
  bool rotated;
  bool poster;
  std::int16_t multipleUp;
  std::int16_t order;
  std::int16_t border;
};

// A sheet that is turned has its binding at the other edge.
std::uint32_t BookletPicture(const Snapshot& settings) {
  const std::int32_t binding = settings.rotated ? 1 - settings.binding : settings.binding;
  for (const BindingRow& row : kBindings) {
    if (row.orientation == settings.orientation && (binding == 0 || binding == 1)) {
      return row.pictures[binding];
    }
  }
  return 0;
}

const OrderRow* FindOrders(const Snapshot& settings) {
  const auto* found = std::ranges::find_if(kOrders, [&settings](const OrderRow& row) {
    return row.orientation == settings.orientation && row.border == settings.border &&
           row.multipleUp == settings.multipleUp;
  });
  return found == std::end(kOrders) ? nullptr : found;
}

bool HasOrders(std::int16_t multipleUp) {
  return std::ranges::find(kOrders, multipleUp, &OrderRow::multipleUp) != std::end(kOrders);
}

// The four orders of 4, 8 and 16 pages are counted from 2.
std::int32_t OrderColumn(const Snapshot& settings) {
  const bool countsFromTwo = settings.multipleUp != 2 && settings.multipleUp != kMultipleUpPoster;
  return countsFromTwo && settings.order > 0 ? settings.order - 2 : settings.order;
}

std::uint32_t OrderPicture(const Snapshot& settings) {
  const OrderRow* row = FindOrders(settings);
  const std::int32_t column = OrderColumn(settings);
  const bool known = column >= 0 && column < static_cast<std::int32_t>(kOrderColumns);
  return row != nullptr && known ? row->pictures[column] : 0;
}

// ---- Pixels -------------------------------------------------------------------------------------

// A bitmap's pixels in memory.
class Picture {
 public:
  // Room for a bitmap's pixels; false without memory, or for a bitmap without a size.
  explicit Picture(GdiObject bitmap) {
    Size size = {};
    if (!World().graphics.GetBitmapSize(bitmap, &size) || size.width < 1 || size.height < 1) {
      return;
    }
    const std::size_t bytes = RowStride(size.width) * static_cast<std::size_t>(size.height);
    if (bytes > std::numeric_limits<std::uint32_t>::max()) {
      return;
    }
    block_ = HeapBlock<std::uint8_t>(bytes);
    rows_ = {block_.get(), size.width, size.height};
    form_ = {.biSize = sizeof(form_),
             .biWidth = size.width,
             .biHeight = size.height,
             .biPlanes = 1,
             .biBitCount = 24,
             .biCompression = 0,
             .biSizeImage = static_cast<std::uint32_t>(bytes),
             .biXPelsPerMeter = 0,
             .biYPelsPerMeter = 0,
             .biClrUsed = 0,
             .biClrImportant = 0};
  }

  explicit operator bool() const { return static_cast<bool>(block_); }
  const PixelRows& rows() const { return rows_; }
  Rect bounds() const { return {0, 0, rows_.width, rows_.height}; }

  // Takes the pixels of a bitmap of this size. The context is one that isn't mirrored.
  bool Read(const MemoryContext& context, GdiObject bitmap) {
    BitmapInfoHeader form = form_;
    return World().graphics.GetDIBits(context.get(), bitmap, 0,
                                      static_cast<std::uint32_t>(rows_.height), block_.get(),
                                      &form) == rows_.height;
  }
  bool Draw(const MemoryContext& target, const Rect& place) const {
    return World().graphics.StretchDIBits(target.get(), place, bounds(), block_.get(), form_,
                                          kRasterCopy) != 0;
  }

 private:
  HeapBlock<std::uint8_t> block_;
  PixelRows rows_ = {};
  BitmapInfoHeader form_ = {};
};

// A bitmap's pixels with all of the look but the scale.
bool TakePicture(GdiObject bitmap, const PreviewLook& look, Picture& picture) {
  const MemoryContext upright(nullptr);
  if (!picture || !upright || !picture.Read(upright, bitmap)) {
    return false;
  }
  if (Process().RightToLeftLanguage) {
    MirrorRows(picture.rows());
  }
  ShowLevel(picture.rows(), look.level);
  // In memory, rather than drawn, copied by a stretch from the last pixel to the first and read
  // back: a copy of the same size takes each pixel as it is, so that both ways end with the same
  // pixels, and this one needs no bitmap.
  if (look.rotate && !look.booklet) {
    TurnRows(picture.rows());
  }
  return true;
}

// ---- Painting -----------------------------------------------------------------------------------

// No control is as large as this, and no length of the platform is larger.
constexpr std::int64_t kLongestSide = 32767;

std::int32_t Scaled(std::int32_t length, std::int32_t scale) {
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(std::int64_t{length} * scale / kFullScale, 0, kLongestSide));
}

void DrawFrame(const MemoryContext& area, const Rect& place) {
  constexpr std::uint32_t kBlack = 0;
  Graphics& graphics = World().graphics;
  const OwnedObject pen(graphics.CreatePen(kPenSolid, 1, kBlack));
  const Selection line(area, pen.get());
  const Selection inside(area, graphics.GetStockObject(kNullBrush));
  if (line && inside) {
    graphics.Rectangle(area.get(), place);
  }
}

// A new context keeps the bits that pixels which fall together have in common: in a smaller picture
// no dark stroke is lost, in a larger one all stay crisp. Blended pixels would turn thin lines
// pale, and take several times as long.
bool DrawScaled(const MemoryContext& area, const Picture& picture, std::int32_t scale) {
  const Rect place = {0, 0, Scaled(picture.rows().width, scale),
                      Scaled(picture.rows().height, scale)};
  if (scale == kFullScale) {
    return picture.Draw(area, place);
  }
  WhitenEdges(picture.rows());
  return place.right == 0 || place.bottom == 0 || picture.Draw(area, place);
}

}  // namespace

std::uint32_t LayoutPictureId(UIContext& context) {
  const Snapshot settings(context);
  if (settings.booklet) {
    return BookletPicture(settings);
  }
  if (settings.poster) {
    return kPoster.Of(settings.orientation);
  }
  if (HasOrders(settings.multipleUp)) {
    return OrderPicture(settings);
  }
  return kPage.Of(settings.orientation);
}

PreviewLook PreviewLookOf(const UIContext& context) {
  const bool savesToner = Setting(context, "TonerSavingMode", 0) != 0;
  return {.level = savesToner ? kLevelVeryLight : Setting(context, "Thickness", kLevelNormal),
          .rotate = Setting(context, "Rotate180", 0) != 0,
          .scale = ScalePercent(context),
          .booklet = IsBooklet(context)};
}

void DrawLayoutPreview(DeviceContext control, GdiObject bitmap, const Rect& rectangle,
                       const PreviewLook& look) {
  if (rectangle.Width() <= 0 || rectangle.Height() <= 0) {
    return;
  }
  Picture picture(bitmap);
  if (!TakePicture(bitmap, look, picture)) {
    return;
  }
  Graphics& graphics = World().graphics;
  const Rect place = {0, 0, rectangle.Width(), rectangle.Height()};
  const OwnedObject pixels(graphics.CreateCompatibleBitmap(control, place.right, place.bottom));
  const MemoryContext area(control);
  const Selection selection(area, pixels.get());
  if (!selection || !graphics.FillRect(area.get(), place, graphics.GetStockObject(kWhiteBrush)) ||
      !DrawScaled(area, picture, look.scale)) {
    return;
  }
  if (look.scale != kFullScale) {
    DrawFrame(area, place);
  }
  graphics.BitBlt(control, rectangle, area.get(), {0, 0});
}

void DrawLayoutPicture(UIContext& context, const DrawItem& item) {
  const std::uint32_t id = LayoutPictureId(context);
  if (id == 0) {
    return;
  }
  const OwnedObject bitmap(World().graphics.LoadBitmapW(context.bitmapModule, id));
  if (bitmap) {
    DrawLayoutPreview(item.hDC, bitmap.get(), item.rcItem, PreviewLookOf(context));
  }
}

}  // namespace ostrel
