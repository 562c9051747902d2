#include "job/page_stamp.h"

#include "core/process_state.h"
#include "core/text.h"
#include "job/context_states.h"
#include "job/stamp_text.h"
#include "job/tile_escape.h"
#include "job/watermark_geometry.h"

#include <iterator>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::int16_t kImageType = 2;
constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kBlack = 0;

// clang-format off
constexpr std::uint32_t kShades[] = {
    // WMGrayLevel 0, 1, 2, 3, 4, 5, 6
    0xF0F0F0, 0xD2D2D2, 0xB4B4B4, 0x969696, 0x787878, 0x5A5A5A, 0x3C3C3C,
};
// clang-format on
constexpr std::uint32_t kShadeBeyond = 0xB4B4B4;

// What one stamp takes from the context, in the reverse of the order in which it gives it back.
struct BorrowedContext {
  explicit BorrowedContext(DeviceContext context)
      : hdc(context), brush(context), font(context), states(context) {}

  DeviceContext hdc;
  LentObject brush;
  LentObject font;
  ContextStates states;
};

// What is drawn for each tile of a text: always the same, in the same place.
struct TextStamp {
  DeviceContext hdc;
  const Rect& page;
  std::u16string_view text;
  PagePoint origin;
  StampFrame frame;
  StampRing ring;  // of a ring
  StampBox box;    // of a box
  int passes;
};

StampExtent ExtentOf(const Rect& page) {
  return {std::int64_t{page.right} - page.left, std::int64_t{page.bottom} - page.top};
}

// ---- Text and font ------------------------------------------------------------------------------

bool SelectFont(BorrowedContext& context, const WatermarkData& record, double scale,
                const StampAngle& angle) {
  char16_t face[kFaceNameUnits] = {};
  CopyText(face, FieldText(record.PageWMTypeface));
  const std::uint32_t flags =
      (record.PageWMBold != 0 ? kFontBold : 0U) | (record.PageWMItalic != 0 ? kFontItalic : 0U);
  return context.font.Select(MakeWatermarkFont(
      context.hdc, face, StampHeight(record.PageWMSize, scale), flags, angle.tenths));
}

Size Measured(DeviceContext hdc, const StampText& text) {
  Size size = {};
  const auto view = text.view();
  if (!World().graphics.GetTextExtentPointW(hdc, view.data(), static_cast<int>(view.size()),
                                            &size)) {
    return {};
  }
  return size;
}

// Render drivers don't take tiles that are larger. Result: whether the text was too large, also one
// that stays so because there is nothing left to drop.
bool CutToTile(DeviceContext hdc, StampText& text, Size& measured) {
  constexpr std::int32_t kLongest = 24000;
  const auto isTooLarge = [&measured] {
    return measured.width > kLongest || measured.height > kLongest;
  };
  const bool isCut = isTooLarge();
  while (isTooLarge() && text.Shorten()) {
    measured = Measured(hdc, text);
  }
  return isCut;
}

GdiObject MakeShadeBrush(const WatermarkData& record) {
  Graphics& graphics = World().graphics;
  const std::int16_t level = record.WMGrayLevel;
  if (level < 0) {
    return graphics.CreateBrushIndirect(
        {.lbStyle = kBrushSolid, .lbColor = record.PageWMColor, .lbHatch = 0});
  }
  const auto index = static_cast<std::size_t>(level);
  return graphics.CreateSolidBrush(index < std::size(kShades) ? kShades[index] : kShadeBeyond);
}

// ---- Shapes -------------------------------------------------------------------------------------

// Fills what `draw` draws. Nothing is drawn where no path can be begun: a text would show as text.
template <typename Draw>
void FillPathOf(DeviceContext hdc, std::int32_t fillMode, const Draw& draw) {
  Graphics& graphics = World().graphics;
  if (!graphics.BeginPath(hdc)) {
    return;
  }
  draw();
  if (!graphics.EndPath(hdc)) {
    return;
  }
  const int before = graphics.SetPolyFillMode(hdc, fillMode);
  graphics.FillPath(hdc);
  if (before != 0) {
    graphics.SetPolyFillMode(hdc, before);
  }
}

void DrawLetters(const TextStamp& stamp) {
  const bool isRightToLeft = Process().RightToLeftLanguage;
  World().graphics.ExtTextOutW(stamp.hdc, Coordinate(stamp.origin.x), Coordinate(stamp.origin.y),
                               isRightToLeft ? kTextOpaque | kTextRightToLeft : kTextOpaque,
                               isRightToLeft ? &stamp.page : nullptr, stamp.text.data(),
                               static_cast<int>(stamp.text.size()));
}

void DrawFrame(const TextStamp& stamp) {
  Graphics& graphics = World().graphics;
  if (stamp.frame == StampFrame::kRing) {
    graphics.Ellipse(stamp.hdc, stamp.ring.outer);
    graphics.Ellipse(stamp.hdc, stamp.ring.inner);
    return;
  }
  graphics.Polygon(stamp.hdc, stamp.box.outer.data(), static_cast<int>(stamp.box.outer.size()));
  graphics.Polygon(stamp.hdc, stamp.box.inner.data(), static_cast<int>(stamp.box.inner.size()));
}

// ---- Tiles --------------------------------------------------------------------------------------

// The second pass of a transparent stamp is black, and so is all that follows it.
class Blackening {
 public:
  explicit Blackening(LentObject& brush) : brush_(brush) {}

  void BeginPass(int pass) {
    if (pass > 0 && !isBlack_) {
      isBlack_ = brush_.Select(World().graphics.CreateSolidBrush(kBlack));
    }
  }

 private:
  LentObject& brush_;
  bool isBlack_ = false;
};

// Tiles are told of a repeated stamp alone; else the render driver hears that something follows.
void DrawTile(const TextStamp& stamp, const TileRegion* textTile, const TileRegion* frameTile,
              Blackening& blackening) {
  TellTile(stamp.hdc, textTile);
  for (int pass = 0; pass < stamp.passes; ++pass) {
    blackening.BeginPass(pass);
    FillPathOf(stamp.hdc, kFillWinding, [&stamp] { DrawLetters(stamp); });
  }
  TellTile(stamp.hdc, frameTile);
  for (int pass = 0; stamp.frame != StampFrame::kNone && pass < stamp.passes; ++pass) {
    FillPathOf(stamp.hdc, kFillAlternate, [&stamp] { DrawFrame(stamp); });
  }
}

void DrawTiles(const TextStamp& stamp, const StampShape& shape, TileCount tiles,
               LentObject& brush) {
  Blackening blackening(brush);
  for (std::int64_t column = 0; column < tiles.columns; ++column) {
    for (std::int64_t row = 0; row < tiles.rows; ++row) {
      const TileRegion textTile = TextTile(shape, column, row);
      const TileRegion frameTile = FrameTile(shape, column, row);
      DrawTile(stamp, &textTile, stamp.frame == StampFrame::kNone ? nullptr : &frameTile,
               blackening);
    }
  }
}

// What every tile of the text is, around an anchor.
TextStamp StampAt(const BorrowedContext& context, const Rect& page, const WatermarkData& record,
                  const StampAngle& angle, const StampShape& shape, PagePoint anchor) {
  const PagePoint origin = TextOrigin(angle, shape, anchor);
  const PagePoint offset = CustomOffset(record, shape, ExtentOf(page));
  TextStamp stamp = {.hdc = context.hdc,
                     .page = page,
                     .text = {},
                     .origin = {origin.x + offset.x, origin.y + offset.y},
                     .frame = shape.frame,
                     .ring = {},
                     .box = {},
                     .passes = record.PageWMTransparent != 0 ? 2 : 1};
  if (shape.frame == StampFrame::kRing) {
    stamp.ring = RingAt(angle, shape, anchor);
  } else if (shape.frame == StampFrame::kBox) {
    stamp.box = BoxAt(angle, shape, anchor, page.bottom);
  }
  return stamp;
}

void DrawTextStamp(BorrowedContext& context, const Rect& page, const WatermarkData& record,
                   std::int32_t pageState, double scale) {
  // Outside the platform's raster operations: the mode stays what it is.
  constexpr std::int32_t kNoRasterOperation = 240;
  constexpr std::int32_t kMovesText = 1;
  const DeviceContext hdc = context.hdc;
  context.states.SetBkMode(kBackgroundTransparent);
  context.states.SetROP2(kNoRasterOperation);
  context.states.SetTextAlign(0);
  StampText text =
      TextOfStamp(hdc, record, {.text = FieldText(record.WMStampFormat), .replacesPlace = false});
  const StampAngle angle = AngleOf(record.PageWMAngle);
  if (!SelectFont(context, record, scale, angle)) {
    return;
  }
  context.states.SetBkColor(kWhite);
  context.states.SetTextColor(record.PageWMColor);
  Size measured = Measured(hdc, text);
  const bool isCut = record.PageWMRepeat != 0 && CutToTile(hdc, text, measured);
  if (isCut && pageState == kMovesText) {
    text.MoveLeft();
  }

  const StampExtent extent = ExtentOf(page);
  const StampShape shape = ShapeOf(record, angle, measured, extent.width);
  const StampPlaces places = PlacesOf(record, angle, shape, extent);
  TextStamp stamp = StampAt(context, page, record, angle, shape, places.anchor);
  stamp.text = text.view();
  if (isCut) {
    stamp.origin = {0, 0};
  }
  if (!context.brush.Select(MakeShadeBrush(record))) {
    return;
  }
  if (record.PageWMRepeat != 0) {
    DrawTiles(stamp, shape, places.tiles, context.brush);
  } else {
    Blackening blackening(context.brush);
    DrawTile(stamp, nullptr, nullptr, blackening);
  }
}

}  // namespace

void DrawPrintStamp(DeviceContext hdc, const Rect& pageRect, const WatermarkData& record,
                    std::int32_t pageState, double scale, Size /*pageSize*/) {
  BorrowedContext context(hdc);
  context.states.SetMapping(pageRect);
  if (record.PageWMFlag != kImageType) {
    DrawTextStamp(context, pageRect, record, pageState, scale);
  } else if (DrawPrintBitmap(hdc, pageRect, record) == 0) {
    // Nothing of the page's stamp takes place, the end of it included.
    context.states.LeaveMapping();
  }
}

}  // namespace ostrel
