// The layout page's picture as it comes to the control: every step over a painting platform, pixel
// by pixel.
#include "pages/painted_image.h"
#include "pages/preview.h"
#include "support/test_world.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::Canvas;
using test::Image;

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kBlack = 0;
constexpr std::uint32_t kUntouched = 0x336699;  // what the control shows before

// ---- What is expected, step by step -------------------------------------------------------------

Image Mirrored(const Image& image) {
  Image out = image;
  for (std::int32_t y = 0; y < image.height; ++y) {
    for (std::int32_t x = 0; x < image.width; ++x) {
      out.At(x, y) = image.At(image.width - 1 - x, y);
    }
  }
  return out;
}

Image Turned(const Image& image) {
  Image out = image;
  std::ranges::reverse(out.pixels);
  return out;
}

// The memory's first row is the lowest one, and its first byte the blue one.
Image Levelled(const Image& image, int level) {
  constexpr int kAmounts[] = {30, 15, 0, -25, -50};
  const int stride = (image.width * 3 + 3) / 4 * 4;
  Image out = image;
  for (std::int32_t y = 0; y < image.height; ++y) {
    const std::int32_t row = image.height - 1 - y;
    for (std::int32_t x = 0; x < image.width; ++x) {
      const std::uint32_t pixel = image.At(x, y);
      int bytes[3];
      for (int byte = 0; byte < 3; ++byte) {
        bytes[byte] = static_cast<int>((pixel >> (8 * byte)) & 0xFF);
      }
      const int brightness = (30 * bytes[0] + 59 * bytes[1] + 11 * bytes[2] + 50) / 100;
      if (row < 3 || row >= image.height - 2 || x * 3 < 7 || x * 3 + 2 > stride - 7 ||
          brightness >= 255) {
        continue;
      }
      std::uint32_t changed = 0;
      for (int byte = 0; byte < 3; ++byte) {
        const int value = std::clamp(bytes[byte] + kAmounts[level], 0, 255);
        changed |= static_cast<std::uint32_t>(value) << (8 * byte);
      }
      out.At(x, y) = changed;
    }
  }
  return out;
}

Image WithWhiteEdges(const Image& image) {
  Image out = image;
  for (std::int32_t y = 0; y < image.height; ++y) {
    const std::int32_t row = image.height - 1 - y;
    for (std::int32_t x = 0; x < image.width; ++x) {
      if (row <= 2 || row >= image.height - 2 || x == 0 || x == image.width - 1) {
        out.At(x, y) = kWhite;
      }
    }
  }
  return out;
}

// A picture in the corner of a white area; for a scale that every pixel fits, with the frame.
Image InArea(const Image& image, std::int32_t width, std::int32_t height, std::int32_t times = 1) {
  Image out = Image::Of(width, height, kWhite);
  for (std::int32_t y = 0; y < height; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      if (image.Holds(x / times, y / times)) {
        out.At(x, y) = image.At(x / times, y / times);
      }
    }
  }
  return out;
}
Image WithFrame(Image image) {
  for (std::int32_t y = 0; y < image.height; ++y) {
    for (std::int32_t x = 0; x < image.width; ++x) {
      if (x == 0 || y == 0 || x == image.width - 1 || y == image.height - 1) {
        image.At(x, y) = kBlack;
      }
    }
  }
  return image;
}

// ---- The stage ----------------------------------------------------------------------------------

constexpr PreviewLook kAsItIs = {.level = 2, .rotate = false, .scale = 100, .booklet = false};

class PreviewDrawing : public testing::Test {
 protected:
  // Draws a picture into the whole of a control. Result: what the control's memory then holds.
  Image Draw(const Image& picture, Size control, const PreviewLook& look) {
    return DrawAt(picture, control, {0, 0, control.width, control.height}, look);
  }
  Image DrawAt(const Image& picture, Size control, const Rect& rectangle, const PreviewLook& look) {
    Canvas source(picture);
    Canvas target(Image::Of(control.width, control.height, kUntouched));
    if (mirrored_) {
      World().graphics.SetLayout(target.context(), kLayoutRightToLeft);
    }
    DrawLayoutPreview(target.context(), source.Release(), rectangle, look);
    return target.Read();
  }
  // A bitmap of a module's, which a test gives back.
  GdiObject Load(const headless::BitmapResource& bitmap) {
    headless::Resources resources;
    resources.bitmaps[888] = bitmap;
    const std::u16string path = u"C:\\bitmaps" + std::u16string(++libraries_, u'x') + u".dll";
    world_.platform.modules.InstallResources(
        path, std::make_shared<const headless::Resources>(resources));
    return World().graphics.LoadBitmapW(world_.platform.modules.LoadLibraryW(path.c_str()), 888);
  }
  // As in a language that is read from the right.
  void ReadFromTheRight() {
    mirrored_ = true;
    world_.process.RightToLeftLanguage = true;
  }

  test::TestWorld world_;
  bool mirrored_ = false;
  std::size_t libraries_ = 0;
};

// ---- At full size -------------------------------------------------------------------------------

TEST_F(PreviewDrawing, AtFullSize_ThePictureIsAsItWasWithoutAFrame) {
  const Image picture = Image::Distinct(20, 14);
  EXPECT_EQ(Draw(picture, {20, 14}, kAsItIs), picture);
}

TEST_F(PreviewDrawing, ALargerControl_IsWhiteBesideThePicture) {
  const Image picture = Image::Distinct(9, 7);
  EXPECT_EQ(Draw(picture, {15, 12}, kAsItIs), InArea(picture, 15, 12));
}

TEST_F(PreviewDrawing, ASmallerControl_CutsThePicture) {
  const Image picture = Image::Distinct(20, 14);
  EXPECT_EQ(Draw(picture, {8, 5}, kAsItIs), InArea(picture, 8, 5));
}

TEST_F(PreviewDrawing, ARectangleWithinTheControl_IsAllThatChanges) {
  const Image picture = Image::Distinct(6, 6);
  const Image drawn = DrawAt(picture, {20, 15}, {4, 3, 14, 11}, kAsItIs);
  const Image inside = InArea(picture, 10, 8);
  for (std::int32_t y = 0; y < 15; ++y) {
    for (std::int32_t x = 0; x < 20; ++x) {
      const bool touched = inside.Holds(x - 4, y - 3);
      ASSERT_EQ(drawn.At(x, y), touched ? inside.At(x - 4, y - 3) : kUntouched) << x << ", " << y;
    }
  }
}

TEST_F(PreviewDrawing, AnEmptyOrATurnedRectangle_DrawsNothing) {
  for (const Rect& rectangle : {Rect{0, 0, 0, 0}, Rect{3, 3, 3, 9}, Rect{3, 3, 9, 3},
                                Rect{9, 3, 3, 9}, Rect{3, 9, 9, 3}, Rect{9, 9, 3, 3}}) {
    EXPECT_EQ(DrawAt(Image::Distinct(6, 6), {12, 12}, rectangle, kAsItIs),
              Image::Of(12, 12, kUntouched));
  }
}

// ---- Level, rotation and reading from the right -------------------------------------------------

struct LookCase {
  std::int16_t level;
  bool rotate, booklet, fromTheRight;
};
void PrintTo(const LookCase& row, std::ostream* out) {
  *out << "level " << row.level << (row.rotate ? ", turned" : "")
       << (row.booklet ? ", booklet" : "") << (row.fromTheRight ? ", from the right" : "");
}
std::vector<LookCase> LookCases() {
  std::vector<LookCase> cases;
  for (const std::int16_t level : std::initializer_list<std::int16_t>{0, 1, 2, 3, 4}) {
    for (const bool rotate : {false, true}) {
      for (const bool booklet : {false, true}) {
        for (const bool fromTheRight : {false, true}) {
          cases.push_back({level, rotate, booklet, fromTheRight});
        }
      }
    }
  }
  return cases;
}

class PreviewLooks : public PreviewDrawing, public testing::WithParamInterface<LookCase> {
 protected:
  // The picture's pixels before they are scaled, as they lie in memory. In a language read from the
  // right they are mirrored there, and the control shows them mirrored once more.
  Image Prepared(const Image& picture) const {
    const LookCase& row = GetParam();
    Image rows = Levelled(row.fromTheRight ? Mirrored(picture) : picture, row.level);
    return row.rotate && !row.booklet ? Turned(rows) : rows;
  }
  Image Shown(const Image& area) const { return GetParam().fromTheRight ? Mirrored(area) : area; }
  PreviewLook Look(std::int32_t scale) {
    const LookCase& row = GetParam();
    if (row.fromTheRight) {
      ReadFromTheRight();
    }
    return {.level = row.level, .rotate = row.rotate, .scale = scale, .booklet = row.booklet};
  }
};

INSTANTIATE_TEST_SUITE_P(All, PreviewLooks, testing::ValuesIn(LookCases()));

TEST_P(PreviewLooks, AtFullSize_AreShownOneAfterTheOther) {
  for (const Size size : {Size{16, 12}, Size{17, 11}, Size{18, 13}, Size{19, 9}}) {
    const Image picture = Image::Distinct(size.width, size.height);
    EXPECT_EQ(Draw(picture, {22, 14}, Look(100)), Shown(InArea(Prepared(picture), 22, 14)));
  }
}

TEST_P(PreviewLooks, Enlarged_BeginWithWhiteEdgesInTheCorner) {
  const Image picture = Image::Distinct(16, 12);
  for (const std::int32_t times : {2, 3, 4}) {
    const Image edged = WithWhiteEdges(Prepared(picture));
    EXPECT_EQ(Draw(picture, {70, 50}, Look(100 * times)),
              Shown(WithFrame(InArea(edged, 70, 50, times))))
        << times;
    // Larger than the control: cut.
    EXPECT_EQ(Draw(picture, {21, 17}, Look(100 * times)),
              Shown(WithFrame(InArea(edged, 21, 17, times))))
        << times;
  }
}

// The turn in memory is the platform's own: a stretch of the same size from the last to the first.
TEST_F(PreviewDrawing, ATurnedPicture_IsWhatTheStretchFromLastToFirstGives) {
  for (const Size size : {Size{16, 12}, Size{17, 11}, Size{111, 111}, Size{1, 5}, Size{5, 1}}) {
    const Image picture = Image::Distinct(size.width, size.height);
    Canvas upright(picture);
    Canvas turned(Image::Of(size.width, size.height, kUntouched));
    ASSERT_TRUE(World().graphics.StretchBlt(turned.context(),
                                            {size.width - 1, size.height - 1, -1, -1},
                                            upright.context(), {0, 0, size.width, size.height}));
    EXPECT_EQ(Draw(picture, size, {.level = 2, .rotate = true, .scale = 100, .booklet = false}),
              turned.Read());
  }
}

// A picture in a language that is read from the right reads as any other, and its scaled form lies
// in the corner where reading begins.
TEST_F(PreviewDrawing, FromTheRight_ThePictureStandsUpright) {
  const Image picture = Image::Distinct(12, 10);
  const Image upright = Draw(picture, {12, 10}, kAsItIs);
  ReadFromTheRight();
  EXPECT_EQ(Draw(picture, {12, 10}, kAsItIs), upright);
  const Image wide = Draw(picture, {20, 10}, kAsItIs);
  for (std::int32_t y = 0; y < 10; ++y) {
    for (std::int32_t x = 0; x < 20; ++x) {
      ASSERT_EQ(wide.At(x, y), x < 8 ? kWhite : picture.At(x - 8, y));
    }
  }
}

// Systems differ in the layout of a new context in memory; the control shows the same with both.
TEST_F(PreviewDrawing, FromTheRight_TheLayoutOfMemoryDoesNotMatter) {
  ReadFromTheRight();
  const Image picture = Image::Distinct(16, 12);
  for (const std::int32_t scale : {100, 50, 70, 150, 300}) {
    const PreviewLook look = {.level = 3, .rotate = true, .scale = scale, .booklet = false};
    bool& memoryTakesLayout = world_.platform.graphics.memoryTakesLayout;
    memoryTakesLayout = true;
    const Image drawn = Draw(picture, {22, 14}, look);
    memoryTakesLayout = false;
    EXPECT_EQ(Draw(picture, {22, 14}, look), drawn) << scale;
  }
}

// ---- Made smaller -------------------------------------------------------------------------------

TEST_F(PreviewDrawing, AQuarter_LeavesTheFrameAtFullSizeAndThePictureInItsCorner) {
  // One colour but for the edges, which are whitened: in a quarter of the size a band of a pixel
  // may be a mixture.
  const Image drawn = Draw(Image::Of(40, 40, 0x404040), {40, 40},
                           {.level = 2, .rotate = false, .scale = 25, .booklet = false});
  for (std::int32_t y = 0; y < 40; ++y) {
    for (std::int32_t x = 0; x < 40; ++x) {
      const bool frame = x == 0 || y == 0 || x == 39 || y == 39;
      const bool picture = x >= 1 && x <= 8 && y >= 1 && y <= 8;
      const bool band = x <= 9 && y <= 9 && !picture;
      if (frame) {
        ASSERT_EQ(drawn.At(x, y), kBlack);
      } else if (picture) {
        ASSERT_EQ(drawn.At(x, y), 0x404040U) << x << ", " << y;
      } else if (!band) {
        ASSERT_EQ(drawn.At(x, y), kWhite) << x << ", " << y;
      }
    }
  }
}

// The edges apart, which are whitened.
TEST_F(PreviewDrawing, HalfTheSize_ShowsEveryDarkLineOfAPixel) {
  constexpr std::int32_t kSide = 21;
  constexpr std::uint32_t kLine = 0x405060;
  constexpr PreviewLook kHalf = {.level = 2, .rotate = false, .scale = 50, .booklet = false};
  for (std::int32_t at = 3; at < kSide - 3; ++at) {
    Image across = Image::Of(kSide, kSide, kWhite);
    Image down = across;
    for (std::int32_t i = 0; i < kSide; ++i) {
      across.At(i, at) = kLine;
      down.At(at, i) = kLine;
    }
    const Image shownAcross = Draw(across, {30, 30}, kHalf);
    const Image shownDown = Draw(down, {30, 30}, kHalf);
    std::int32_t rows = 0;
    std::int32_t columns = 0;
    for (std::int32_t i = 0; i < 30; ++i) {
      rows += shownAcross.At(5, i) == kLine ? 1 : 0;
      columns += shownDown.At(i, 5) == kLine ? 1 : 0;
    }
    EXPECT_EQ(rows, 1) << at;
    EXPECT_EQ(columns, 1) << at;
  }
}

TEST_F(PreviewDrawing, ScalesThatLeaveNothing_LeaveTheFrame) {
  const Image empty = WithFrame(Image::Of(12, 9, kWhite));
  for (const std::int32_t scale : {0, -1, -100, 1, 9, -2147483647 - 1}) {
    EXPECT_EQ(Draw(Image::Distinct(10, 10), {12, 9},
                   {.level = 2, .rotate = false, .scale = scale, .booklet = false}),
              empty)
        << scale;
  }
}

TEST_F(PreviewDrawing, ScalesBeyondAllReason_AreDrawnWithinTheControl) {
  for (const std::int32_t scale : {1000, 70000, 2147483647}) {
    const Image drawn = Draw(Image::Of(8, 8, 0x404040), {12, 9},
                             {.level = 2, .rotate = false, .scale = scale, .booklet = false});
    EXPECT_EQ(drawn, WithFrame(Image::Of(12, 9, kWhite))) << scale;  // its white edge
  }
}

// ---- Bitmaps of other depths --------------------------------------------------------------------

constexpr std::int32_t kDepthSide = 12;

// Two colours in a chequered square, which the palette or the pixels name.
constexpr std::uint32_t kDepthColors[] = {0x405060, 0x8090A0};
std::size_t DepthColorAt(std::int32_t x, std::int32_t y) {
  return static_cast<std::size_t>((x / 2 + y) % 2);
}

headless::BitmapResource BitmapOfDepth(std::uint16_t bits) {
  headless::BitmapResource bitmap = {
      .width = kDepthSide, .height = kDepthSide, .bitsPerPixel = bits};
  if (bits <= 8) {
    bitmap.colors.assign(std::begin(kDepthColors), std::end(kDepthColors));
  }
  const std::size_t stride = (std::size_t{kDepthSide} * bits + 31) / 32 * 4;
  bitmap.pixels.resize(stride * kDepthSide);
  for (std::int32_t y = 0; y < kDepthSide; ++y) {
    for (std::int32_t x = 0; x < kDepthSide; ++x) {
      const std::size_t color = DepthColorAt(x, y);
      const std::size_t bit = static_cast<std::size_t>(x) * bits;
      std::byte* place =
          &bitmap.pixels[stride * static_cast<std::size_t>(kDepthSide - 1 - y) + bit / 8];
      if (bits <= 8) {
        *place |= static_cast<std::byte>(color << (8 - bits - bit % 8));
      } else {
        for (int byte = 0; byte < 3; ++byte) {
          place[byte] = static_cast<std::byte>(kDepthColors[color] >> (8 * byte));
        }
      }
    }
  }
  return bitmap;
}

// Read as 24 bits a pixel, all of them are one picture.
TEST_F(PreviewDrawing, BitmapsOfEveryDepth_AreDarkenedAndTurnedAlike) {
  Image picture = Image::Of(kDepthSide, kDepthSide, kWhite);
  for (std::int32_t y = 0; y < kDepthSide; ++y) {
    for (std::int32_t x = 0; x < kDepthSide; ++x) {
      picture.At(x, y) = kDepthColors[DepthColorAt(x, y)];
    }
  }
  const Image expected = Turned(Levelled(picture, 4));
  ASSERT_NE(expected, Turned(picture));
  for (const std::uint16_t bits : std::initializer_list<std::uint16_t>{1, 4, 8, 24, 32}) {
    const GdiObject bitmap = Load(BitmapOfDepth(bits));
    ASSERT_NE(bitmap, nullptr);
    Canvas target(Image::Of(kDepthSide, kDepthSide, kUntouched));
    DrawLayoutPreview(target.context(), bitmap, {0, 0, kDepthSide, kDepthSide},
                      {.level = 4, .rotate = true, .scale = 100, .booklet = false});
    EXPECT_EQ(target.Read(), expected) << bits;
    World().graphics.DeleteObject(bitmap);
  }
}

// ---- Pictures smaller than their edges ----------------------------------------------------------

TEST_F(PreviewDrawing, TinyPictures_AreDrawnWithEveryLook) {
  for (const Size size : {Size{1, 1}, Size{2, 2}, Size{3, 3}, Size{1, 9}, Size{9, 1}, Size{4, 5}}) {
    const Image picture = Image::Distinct(size.width, size.height);
    for (const std::int16_t level : std::initializer_list<std::int16_t>{0, 2, 4}) {
      for (const bool rotate : {false, true}) {
        const Image full = rotate ? Turned(picture) : picture;
        EXPECT_EQ(Draw(picture, {12, 12},
                       {.level = level, .rotate = rotate, .scale = 100, .booklet = false}),
                  InArea(full, 12, 12))
            << size.width << " x " << size.height;
        for (const std::int32_t scale : {25, 50, 150, 400}) {
          const Image drawn =
              Draw(picture, {12, 12},
                   {.level = level, .rotate = rotate, .scale = scale, .booklet = false});
          EXPECT_EQ(drawn, WithFrame(Image::Of(12, 12, kWhite)));
        }
      }
    }
  }
}

// ---- When the world fails -----------------------------------------------------------------------

// What was in the control, or all of the picture; a frame may be missing.
TEST_F(PreviewDrawing, AnyCallThatFails_DrawsNothingOrThePictureAndLeavesNothingBehind) {
  const Image picture = Image::Distinct(12, 10);
  const Image untouched = Image::Of(30, 24, kUntouched);
  const Image unframed = InArea(WithWhiteEdges(Turned(Levelled(picture, 4))), 30, 24, 2);
  const PreviewLook look = {.level = 4, .rotate = true, .scale = 200, .booklet = false};
  headless::FaultPlan& faults = world_.platform.faults;
  std::size_t n = 1;
  std::size_t blank = 0;
  for (bool fired = true; fired; ++n) {
    ASSERT_LT(n, 200U);
    Canvas source(picture);
    Canvas target(untouched);
    const GdiObject bitmap = source.Release();
    faults.StartTrace();
    faults.FailCall(n);
    DrawLayoutPreview(target.context(), bitmap, {0, 0, 30, 24}, look);
    fired = faults.fired();
    faults.Clear();
    const Image drawn = target.Read();
    blank += drawn == untouched ? 1U : 0U;
    EXPECT_TRUE(drawn == untouched || drawn == unframed || drawn == WithFrame(unframed))
        << "with call " << n << " failing: " << faults.trace().at(n - 1);
    if (!fired) {
      EXPECT_EQ(drawn, WithFrame(unframed));
    }
  }
  EXPECT_GT(n, 12U);
  EXPECT_GT(blank, 8U);
}

TEST_F(PreviewDrawing, WithoutMemory_NothingIsDrawn) {
  world_.platform.faults.FailOperation("HeapAlloc");
  EXPECT_EQ(Draw(Image::Distinct(8, 8), {8, 8}, kAsItIs), Image::Of(8, 8, kUntouched));
}

TEST_F(PreviewDrawing, ABitmapThatCannotBeRead_DrawsNothing) {
  Canvas source(Image::Distinct(8, 8));
  Canvas target(Image::Of(8, 8, kUntouched));
  const GdiObject bitmap = source.Release();
  for (const char* operation : {"GetBitmapSize", "GetDIBits"}) {
    world_.platform.faults.FailOperation(operation);
    DrawLayoutPreview(target.context(), bitmap, {0, 0, 8, 8}, kAsItIs);
    world_.platform.faults.Clear();
    EXPECT_EQ(target.Read(), Image::Of(8, 8, kUntouched)) << operation;
  }
}

TEST_F(PreviewDrawing, ABitmapOfWhichRowsAreMissing_DrawsNothing) {
  Canvas source(Image::Distinct(8, 8));
  Canvas target(Image::Of(8, 8, kUntouched));
  world_.platform.graphics.mostRowsRead = 7;
  DrawLayoutPreview(target.context(), source.Release(), {0, 0, 8, 8}, kAsItIs);
  world_.platform.graphics.mostRowsRead = 8;
  EXPECT_EQ(target.Read(), Image::Of(8, 8, kUntouched));
}

TEST_F(PreviewDrawing, ABitmapWithoutASize_DrawsNothing) {
  for (const Size size : {Size{0, 5}, Size{5, 0}, Size{-4, 4}, Size{4, -4}}) {
    const GdiObject bitmap = Load({.width = size.width, .height = size.height, .bitsPerPixel = 24});
    ASSERT_NE(bitmap, nullptr);
    Canvas target(Image::Of(8, 8, kUntouched));
    DrawLayoutPreview(target.context(), bitmap, {0, 0, 8, 8}, kAsItIs);
    EXPECT_EQ(target.Read(), Image::Of(8, 8, kUntouched)) << size.width << " x " << size.height;
    World().graphics.DeleteObject(bitmap);
  }
}

}  // namespace
}  // namespace ostrel
