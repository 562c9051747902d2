// How bitmaps come to stand on pages: the model's table, and numbers worked out by hand.
#include "job/bitmap_geometry.h"

#include "core/factory_watermarks.h"
#include "job/watermark_geometry.h"

#include <gtest/gtest.h>
#include <span>

namespace ostrel::test {
namespace {

constexpr Rect kA4 = {0, 0, 4960, 7015};

WatermarkData Scaled(std::int16_t percent, std::int16_t size = 72) {
  WatermarkData record = kFactoryWatermarkRecords[kNoWatermark];
  record.PageWMScale = percent;
  record.PageWMSize = size;
  return record;
}

struct FitRow {
  std::int32_t page[4];
  std::int32_t bitmap[2];
  std::int16_t scale;
  std::int32_t place[4];
  std::int32_t from[4];
};
constexpr FitRow kFits[] = {
#include "job/expected/bitmap_fits.inc"
};

constexpr Rect RectOf(const std::int32_t (&numbers)[4]) {
  return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

TEST(BitmapGeometry, BitmapsOnPages_FitAsTheModelSays) {
  for (const FitRow& row : kFits) {
    Rect place = RectOf(row.page);
    Rect from = {0, 0, row.bitmap[0], row.bitmap[1]};
    FitBitmapRect(place, from, Scaled(row.scale));
    EXPECT_EQ(place, RectOf(row.place)) << row.bitmap[0] << " at " << row.scale;
    EXPECT_EQ(from, RectOf(row.from)) << row.bitmap[0] << " at " << row.scale;
  }
}

// Both count one more: 100 pixels of 96 an inch on the side of 7016 that stands for 297 mm are
// 100 * 7016 * 254 / 96 / 2970 = 625.02 pixels.
TEST(BitmapGeometry, ASmallBitmap_IsCentredWhole) {
  Rect place = kA4;
  Rect from = {0, 0, 99, 99};
  FitBitmapRect(place, from, Scaled(100));
  // 2480 - 313 and 3507 - 313; and 625.02 more, rounded.
  EXPECT_EQ(place, (Rect{2167, 3194, 2792, 3819}));
  EXPECT_EQ(from, (Rect{0, 0, 99, 99}));
}

// 1000 by 100 are 6250.2 by 625.02 pixels: 645 too far to the left, and as many to the right. A
// pixel there is 999 / 6250.2 + 0.005 of the bitmap's: 0.16483.
TEST(BitmapGeometry, ATooWideBitmap_LosesBothEnds) {
  Rect place = kA4;
  Rect from = {0, 0, 999, 99};
  FitBitmapRect(place, from, Scaled(100));
  EXPECT_EQ(place, (Rect{0, 3194, 4960, 3819}));
  EXPECT_EQ(from.left, 106);         // 645 * 0.16483 = 106.3
  EXPECT_EQ(from.right, 999 - 105);  // -645.2 * 0.16483 + 0.5 = -105.8
  EXPECT_EQ(from.top, 0);
  EXPECT_EQ(from.bottom, 99);
}

TEST(BitmapGeometry, NoWidthOrHeight_LeavesAPlaceOfZeros) {
  for (const Rect& bitmap : {Rect{0, 0, -1, 99}, Rect{0, 0, 99, -1}}) {
    Rect place = kA4;
    Rect from = bitmap;
    FitBitmapRect(place, from, Scaled(100));
    EXPECT_EQ(place, (Rect{0, 0, 0, 0}));
    EXPECT_EQ(from, bitmap);
  }
  Rect place = {10, 10, 9, 9};  // a longer side of 0
  Rect from = {0, 0, 5, 5};
  FitBitmapRect(place, from, Scaled(100));
  EXPECT_EQ(place, (Rect{0, 0, 0, 0}));
}

// Both ends of the bitmap are counted from where it begins, here at 7, 9 of something larger: what
// the rows of the positions below lose, further on.
TEST(BitmapGeometry, APartOfABitmap_LosesItsOwnEnds) {
  Rect place = {0, 0, 1000, 700};
  Rect from = {7, 9, 327, 49};
  FitBitmapRect(place, from, Scaled(400));
  EXPECT_EQ(place, (Rect{0, 277, 1000, 423}));
  EXPECT_EQ(from, (Rect{27, 9, 307, 49}));  // 20.5 + 7, 327 - 20
  place = {0, 0, 1000, 700};
  from = {7, 9, 47, 329};
  FitBitmapRect(place, from, Scaled(400));
  EXPECT_EQ(place, (Rect{427, 0, 573, 700}));
  EXPECT_EQ(from, (Rect{7, 72, 47, 267}));  // 63.2 + 9, 329 - 62
}

// 100 * 1001 * 254 / 96 / 2970 = 89.17 pixels on a page that lies left of and above the origin. Its
// middle is -500, -350, and a half more is cut to -499, -349.
TEST(BitmapGeometry, APageBelowZero_CutsItsMiddleUpwards) {
  Rect place = {-1000, -700, 0, 0};
  Rect from = {0, 0, 99, 99};
  FitBitmapRect(place, from, Scaled(100));
  // -499 - 45, -349 - 45; and 89.17 + 0.5 more, which is cut upwards too: -454.3, -304.3.
  EXPECT_EQ(place, (Rect{-544, -394, -454, -304}));
  EXPECT_EQ(from, (Rect{0, 0, 99, 99}));
}

struct PositionRow {
  std::int16_t position;
  Rect place;
  Rect from;
};
// A page of 1000 by 700 at 100, 50 with a bitmap of 320 by 40 pixels at 400 percent. With D and S
// as FitBitmapRect leaves them:
//   W' = 321 * 1001 * 254 / 96 / 2970 * 4 = 1144.999; H' = 41 * ... = 146.25
//   left = 600 - 572 = 28, top = 400 - 73 = 327; kx + 0.005 = 320 / 1144.999 + 0.005 = 0.28448
//   Sl = 72 * 0.28448 = 20.5: 20; beyond the right -72.999 * 0.28448 + 0.5 = -20.3: Sr = 300
//   D = 100, 327, 1100, 473 (327 + 146.25 + 0.5)
// clang-format off
constexpr PositionRow kWideAtPositions[] = {
    // Position, Place, Part
    {1, {100,  50, 1100, 196}, {0,  0, 280, 40}},
    {2, {100,  50, 1100, 196}, {20, 0, 300, 40}},
    {3, {100,  50, 1100, 196}, {40, 0, 320, 40}},  // 320 - 300 + 20, and 2 * 300 - 320 wide
    {4, {100, 327, 1100, 473}, {0,  0, 280, 40}},
    {5, {100, 327, 1100, 473}, {20, 0, 300, 40}},
    {6, {100, 327, 1100, 473}, {40, 0, 320, 40}},
    {7, {100, 604, 1100, 750}, {0,  0, 280, 40}},
    {8, {100, 604, 1100, 750}, {20, 0, 300, 40}},
    {9, {100, 604, 1100, 750}, {40, 0, 320, 40}},
};
// The same page with a bitmap of 40 by 320 pixels:
//   left = 600 - 73 = 527, top = 400 - 572 = -172
//   St = 222 * 0.28448 = 63.2: 63; beyond the bottom -222.999 * 0.28448 + 0.5 = -62.9: Sb = 258
//   D = 527, 50, 673 (527 + 146.25 + 0.5), 750
constexpr PositionRow kTallAtPositions[] = {
    // Position, Place, Part
    {1, {100, 50,  246, 750}, {0, 125, 40, 321}},  // 320 - 258 + 63, and 2 * 258 - 320 high
    {2, {527, 50,  673, 750}, {0, 125, 40, 321}},
    {3, {954, 50, 1100, 750}, {0, 125, 40, 321}},
    {4, {100, 50,  246, 750}, {0,  63, 40, 258}},
    {5, {527, 50,  673, 750}, {0,  63, 40, 258}},
    {6, {954, 50, 1100, 750}, {0,  63, 40, 258}},
    {7, {100, 50,  246, 750}, {0,   0, 40, 195}},
    {8, {527, 50,  673, 750}, {0,   0, 40, 195}},
    {9, {954, 50, 1100, 750}, {0,   0, 40, 195}},
};
// clang-format on

void ExpectPositions(std::span<const PositionRow> rows, Size bitmap) {
  for (const PositionRow& row : rows) {
    const BitmapDrawing drawing =
        BitmapDrawingAt(row.position, {100, 50, 1100, 750}, bitmap, Scaled(400));
    EXPECT_EQ(drawing.place, row.place) << row.position;
    EXPECT_EQ(drawing.from, row.from) << row.position;
    EXPECT_TRUE(HasBitmapPlace(row.position));
  }
}

TEST(BitmapGeometry, NinePositions_PlaceAWideBitmap) {
  ExpectPositions(kWideAtPositions, {320, 40});
}

TEST(BitmapGeometry, NinePositions_PlaceATallBitmap) {
  ExpectPositions(kTallAtPositions, {40, 320});
}

TEST(BitmapGeometry, OtherPositions_HaveNoPlace) {
  for (const std::int16_t position : std::initializer_list<std::int16_t>{-1, 0, 10, 11, 32767}) {
    EXPECT_FALSE(HasBitmapPlace(position)) << position;
  }
}

// (399 + 1) * 7016 * 254 * 72 / 28512000 = 1800.06 wide.
TEST(BitmapGeometry, Tiles_GoByTheFontsSize) {
  const BitmapTiles tiles = BitmapTilesOf(kA4, {399, 199}, Scaled(7));
  EXPECT_NEAR(tiles.width, 1800.06, 0.01);
  EXPECT_NEAR(tiles.height, 900.03, 0.01);
  EXPECT_EQ(tiles.count.columns, 3);  // 4961 / 1800.06 + 1 = 3.76
  EXPECT_EQ(tiles.count.rows, 8);     // 7016 / 900.03 + 1 = 8.8
  EXPECT_FALSE(tiles.IsSingle());
}

TEST(BitmapGeometry, TilesWithoutSizeOrTooManyOfThem_AreOne) {
  for (const std::int16_t size : std::initializer_list<std::int16_t>{0, -1, -32768}) {
    EXPECT_TRUE(BitmapTilesOf(kA4, {399, 199}, Scaled(100, size)).IsSingle()) << size;
  }
  // Tiles of 1 point of a single pixel: 0.125 by 0.125.
  EXPECT_TRUE(BitmapTilesOf(kA4, {1, 1}, Scaled(100, 1)).IsSingle());
  // Of one pixel by 100000, 0.125 by 6250.2: 39689 columns and 2 rows, not too many.
  EXPECT_EQ(BitmapTilesOf(kA4, {1, 100000}, Scaled(100, 1)).count.rows, 2);
}

// 8 * 14256 * 254 * 1000 / 28512000 = 1016, and 4064 are just four times that: the page's one pixel
// more makes the fifth. The same the other way round.
TEST(BitmapGeometry, TilesOfAPage_CountOnePixelMoreOfIt) {
  const BitmapTiles portrait = BitmapTilesOf({10, 20, 4073, 14275}, {7, 1}, Scaled(100, 1000));
  EXPECT_EQ(portrait.width, 1016);
  EXPECT_EQ(portrait.count.columns, 5);
  EXPECT_EQ(portrait.count.rows, 57);  // 14256 / 254 + 1 = 57.1
  const BitmapTiles landscape = BitmapTilesOf({10, 20, 14265, 4083}, {1, 7}, Scaled(100, 1000));
  EXPECT_EQ(landscape.height, 1016);
  EXPECT_EQ(landscape.count.rows, 5);
  EXPECT_EQ(landscape.count.columns, 57);
}

}  // namespace
}  // namespace ostrel::test
