#include "job/bitmap_stamp.h"

#include "core/graphics_objects.h"
#include "core/heap_block.h"
#include "core/text.h"
#include "job/bitmap_geometry.h"
#include "job/context_states.h"
#include "job/tile_escape.h"
#include "job/watermark_geometry.h"

#include <limits>

namespace ostrel {
namespace {

GdiObject LoadBitmapFile(const WatermarkData& record) {
  char16_t path[kMaxPathUnits + 1] = {};
  CopyText(path, FieldText(record.PageWMFileName));
  return World().graphics.LoadImageW(path, kLoadFromFile | kLoadInDefaultSize);
}

// A bitmap's pixels in memory, 24 bits each.
class BitmapPixels {
 public:
  // False when there is no memory for them, or when they can't be read.
  explicit BitmapPixels(GdiObject bitmap) {
    if (!World().graphics.GetBitmapSize(bitmap, &size_) || size_.width < 1 || size_.height < 1) {
      return;
    }
    const std::uint64_t rowBytes = (std::uint64_t(size_.width) * 3 + 3) / 4 * 4;
    const std::uint64_t bytes = rowBytes * std::uint64_t(size_.height);
    if (bytes > std::numeric_limits<std::uint32_t>::max()) {
      return;
    }
    // The size tells of the whole structure, an entry of a colour table that nobody reads included.
    form_.header.biSize = sizeof(form_);
    form_.header.biWidth = size_.width;
    form_.header.biHeight = size_.height;
    form_.header.biPlanes = 1;
    form_.header.biBitCount = 24;
    form_.header.biSizeImage = static_cast<std::uint32_t>(bytes);
    bytes_ = HeapBlock<std::uint8_t>(bytes);
    if (bytes_ && !Read(bitmap)) {
      bytes_.reset();
    }
  }

  explicit operator bool() const { return static_cast<bool>(bytes_); }
  Size size() const { return size_; }

  void Draw(DeviceContext hdc, const BitmapDrawing& drawing, std::uint32_t rasterOperation) const {
    World().graphics.StretchDIBits(hdc, drawing.place, drawing.from, bytes_.get(), form_.header,
                                   rasterOperation);
  }

 private:
  bool Read(GdiObject bitmap) {
    const ScreenContext screen;
    BitmapInfo form = form_;
    return screen && World().graphics.GetDIBits(screen.get(), bitmap, 0,
                                                static_cast<std::uint32_t>(size_.height),
                                                bytes_.get(), &form.header) == size_.height;
  }

  Size size_ = {};
  BitmapInfo form_ = {};
  HeapBlock<std::uint8_t> bytes_;
};

void DrawTiles(DeviceContext hdc, const Rect& page, const BitmapPixels& pixels,
               const BitmapTiles& tiles, std::uint32_t rasterOperation) {
  const BitmapDrawing drawing = {
      PlatformRect(page.left, page.top, Cut(tiles.width), Cut(tiles.height)),
      {0, 0, pixels.size().width, pixels.size().height}};
  TileRegion tile = {};
  for (std::int64_t column = 0; column < tiles.count.columns; ++column) {
    for (std::int64_t row = 0; row < tiles.count.rows; ++row) {
      tile.Column = Coordinate(column);
      tile.Row = Coordinate(row);
      tile.ImageOffsetX = Coordinate(Cut(static_cast<double>(column) * double{tiles.width}));
      tile.ImageOffsetY = Coordinate(Cut(static_cast<double>(row) * double{tiles.height}));
      TellTile(hdc, &tile);
      pixels.Draw(hdc, drawing, rasterOperation);
    }
  }
}

void DrawBitmap(DeviceContext hdc, const Rect& page, const BitmapPixels& pixels,
                const WatermarkData& record) {
  constexpr std::int16_t kOnlyTilePosition = 1;
  const std::uint32_t rasterOperation = record.PageWMTransparent > 0 ? kRasterAnd : kRasterCopy;
  std::int16_t position = record.PageWMPosition;
  if (record.PageWMRepeat != 0) {
    const BitmapTiles tiles = BitmapTilesOf(page, pixels.size(), record);
    if (!tiles.IsSingle()) {
      DrawTiles(hdc, page, pixels, tiles, rasterOperation);
      return;
    }
    const TileRegion onlyTile = {};
    TellTile(hdc, &onlyTile);
    position = kOnlyTilePosition;
  }
  if (HasBitmapPlace(position)) {
    pixels.Draw(hdc, BitmapDrawingAt(position, page, pixels.size(), record), rasterOperation);
  }
}

}  // namespace

int DrawPrintBitmap(DeviceContext hdc, const Rect& pageRect, const WatermarkData& record) {
  constexpr std::int16_t kLeastScale = 2;
  constexpr int kNotLoaded = 0;
  constexpr int kDone = 1;
  if (record.PageWMScale < kLeastScale) {
    return kDone;
  }
  const OwnedObject bitmap(LoadBitmapFile(record));
  if (!bitmap) {
    return kNotLoaded;
  }
  ContextStates states(hdc);
  states.SetStretchBltMode(kStretchDeleteScans);
  if (const BitmapPixels pixels(bitmap.get()); pixels) {
    DrawBitmap(hdc, pageRect, pixels, record);
  }
  return kDone;
}

}  // namespace ostrel
