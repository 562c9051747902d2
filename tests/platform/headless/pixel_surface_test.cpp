// Pictures of resources in all their depths, and which pixel a stretched copy takes.
#include "platform/headless/pixel_surface.h"

#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace ostrel::headless {
namespace {

using testing::ElementsAre;

std::vector<std::byte> Bytes(std::initializer_list<int> values) {
  std::vector<std::byte> bytes;
  for (const int value : values) {
    bytes.push_back(static_cast<std::byte>(value));
  }
  return bytes;
}

// A row whose pixels are numbered from 1 on.
Surface NumberedRow(std::int32_t width) {
  Surface row(width, 1);
  for (std::int32_t x = 0; x < width; ++x) {
    row.SetColor(x, 0, static_cast<std::uint32_t>(x + 1));
  }
  return row;
}

std::vector<std::uint32_t> ColorsOf(const Surface& surface, std::int32_t y = 0) {
  std::vector<std::uint32_t> colors;
  for (std::int32_t x = 0; x < surface.width(); ++x) {
    colors.push_back(surface.ColorAt(x, y));
  }
  return colors;
}

std::vector<std::uint32_t> Stretched(Extent from, std::int32_t available, Extent to,
                                     std::int32_t width, Sampling sampling = Sampling::kOneOf) {
  const Surface source = NumberedRow(available);
  Surface target(width, 1);
  CopyPixels(target, RowsOf(source), {to, {0, 1}, from, {0, 1}, sampling});
  return ColorsOf(target);
}

// ---- Pictures of resources ----------------------------------------------------------------------

TEST(SurfaceOfAResource, HasItsColorsWhateverItsDepth) {
  const std::vector<std::uint32_t> two = {0x102030, 0xFFEEDD};
  struct Case {
    const char* name;
    BitmapResource bitmap;
  };
  // Each is two pixels wide and two high, the colours of the lower row changing places.
  const std::vector<Case> cases = {
      {"1 bit",
       {.width = 2,
        .height = 2,
        .bitsPerPixel = 1,
        .colors = two,
        .pixels = Bytes({0x80, 0, 0, 0, 0x40, 0, 0, 0})}},
      {"4 bits",
       {.width = 2,
        .height = 2,
        .bitsPerPixel = 4,
        .colors = two,
        .pixels = Bytes({0x10, 0, 0, 0, 0x01, 0, 0, 0})}},
      {"8 bits",
       {.width = 2,
        .height = 2,
        .bitsPerPixel = 8,
        .colors = two,
        .pixels = Bytes({1, 0, 0, 0, 0, 1, 0, 0})}},
      {"24 bits",
       {.width = 2,
        .height = 2,
        .bitsPerPixel = 24,
        .pixels = Bytes({0xDD, 0xEE, 0xFF, 0x30, 0x20, 0x10, 0, 0,  //
                         0x30, 0x20, 0x10, 0xDD, 0xEE, 0xFF, 0, 0})}},
      {"32 bits",
       {.width = 2,
        .height = 2,
        .bitsPerPixel = 32,
        .pixels = Bytes({0xDD, 0xEE, 0xFF, 0, 0x30, 0x20, 0x10, 0,  //
                         0x30, 0x20, 0x10, 0, 0xDD, 0xEE, 0xFF, 0})}},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const Surface surface(row.bitmap);
    EXPECT_THAT(ColorsOf(surface, 0), ElementsAre(0x302010U, 0xDDEEFFU));
    EXPECT_THAT(ColorsOf(surface, 1), ElementsAre(0xDDEEFFU, 0x302010U));
  }
}

TEST(SurfaceOfAResource, IsBlackWhereRowsOrColorsAreMissing) {
  const Surface noRows(BitmapResource{.width = 2, .height = 1, .bitsPerPixel = 24});
  EXPECT_THAT(ColorsOf(noRows), ElementsAre(0U, 0U));
  const Surface noColors(BitmapResource{
      .width = 2, .height = 1, .bitsPerPixel = 8, .colors = {}, .pixels = Bytes({1, 200, 0, 0})});
  EXPECT_THAT(ColorsOf(noColors), ElementsAre(0U, 0U));
}

// ---- Stretching ---------------------------------------------------------------------------------

// As the platform does it when it is to leave pixels out: the last of a row's pixels that come
// together, the middle one of those that spread.
TEST(StretchedCopy, TakesThePixelsThatThePlatformTakes) {
  EXPECT_THAT(Stretched({0, 8}, 8, {0, 8}, 8), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
  EXPECT_THAT(Stretched({0, 8}, 8, {0, 4}, 4), ElementsAre(2, 4, 6, 8));
  EXPECT_THAT(Stretched({0, 8}, 8, {0, 3}, 3), ElementsAre(3, 5, 8));
  EXPECT_THAT(Stretched({0, 8}, 8, {0, 5}, 5), ElementsAre(2, 3, 5, 6, 8));
  EXPECT_THAT(Stretched({0, 8}, 8, {0, 7}, 7), ElementsAre(1, 2, 3, 5, 6, 7, 8));
  EXPECT_THAT(Stretched({0, 3}, 3, {0, 7}, 7), ElementsAre(1, 1, 2, 2, 2, 3, 3));
  EXPECT_THAT(Stretched({0, 8}, 8, {0, 11}, 11), ElementsAre(1, 2, 2, 3, 4, 4, 5, 6, 7, 7, 8));
  EXPECT_THAT(Stretched({0, 10}, 10, {0, 15}, 15),
              ElementsAre(1, 1, 2, 3, 3, 4, 5, 5, 6, 7, 7, 8, 9, 9, 10));
}

// Which pixels come together, counted from 1, along a row or, upright, along a column: each has a
// bit of its own that only it lacks.
std::vector<std::vector<int>> Together(std::int32_t available, Extent to, std::int32_t size,
                                       bool upright, Sampling sampling = Sampling::kCombine) {
  constexpr std::uint32_t kAllBits = 0xFFFFFF;
  Surface source(upright ? 1 : available, upright ? available : 1);
  for (std::int32_t i = 0; i < available; ++i) {
    source.SetColor(upright ? 0 : i, upright ? i : 0, kAllBits & ~(1U << i));
  }
  Surface target(upright ? 1 : size, upright ? size : 1, kAllBits);
  const Extent all = {0, available};
  const Extent one = {0, 1};
  CopyPixels(target, RowsOf(source),
             upright ? CopyJob{one, to, one, all, sampling} : CopyJob{to, one, all, one, sampling});
  std::vector<std::vector<int>> together;
  for (std::int32_t i = 0; i < size; ++i) {
    const std::uint32_t color = target.ColorAt(upright ? 0 : i, upright ? i : 0);
    std::vector<int> pixels;
    for (int bit = 0; bit < available; ++bit) {
      if ((color >> bit & 1) == 0) {
        pixels.push_back(bit + 1);
      }
    }
    together.push_back(pixels);
  }
  return together;
}

// As the platform does it in a new context: a bit stays that all of the pixels have.
TEST(StretchedCopy, CombinesThePixelsThatComeTogether) {
  using Groups = std::vector<std::vector<int>>;
  for (const bool upright : {false, true}) {
    EXPECT_EQ(Together(8, {0, 4}, 4, upright), (Groups{{1, 2}, {3, 4}, {5, 6}, {7, 8}}));
    EXPECT_EQ(Together(8, {0, 3}, 3, upright), (Groups{{1, 2, 3}, {4, 5}, {6, 7, 8}}));
    EXPECT_EQ(Together(8, {0, 5}, 5, upright), (Groups{{1, 2}, {3}, {4, 5}, {6}, {7, 8}}));
    EXPECT_EQ(Together(8, {0, 7}, 7, upright), (Groups{{1}, {2}, {3}, {4, 5}, {6}, {7}, {8}}));
    EXPECT_EQ(Together(3, {0, 2}, 2, upright), (Groups{{1, 2}, {3}}));
    EXPECT_EQ(Together(3, {0, 1}, 1, upright), (Groups{{1, 2, 3}}));
    EXPECT_EQ(Together(8, {2, -3}, 3, upright), (Groups{{6, 7, 8}, {4, 5}, {1, 2, 3}}));
    EXPECT_EQ(Together(8, {-1, 4}, 4, upright), (Groups{{3, 4}, {5, 6}, {7, 8}, {}}));
    EXPECT_EQ(Together(3, {0, 3}, 3, upright), (Groups{{1}, {2}, {3}}));
    EXPECT_EQ(Together(3, {0, 6}, 6, upright), (Groups{{1}, {1}, {2}, {2}, {3}, {3}}));
  }
}

TEST(StretchedCopy, CombinesRowsAndColumnsAtOnce) {
  Surface source(4, 2, 0xFFFFFF);
  source.SetColor(1, 0, 0xFF00FF);
  source.SetColor(0, 1, 0x00FFFF);
  source.SetColor(3, 1, 0xFFFF00);
  Surface target(2, 1);
  CopyPixels(target, RowsOf(source), {{0, 2}, {0, 1}, {0, 4}, {0, 2}});
  EXPECT_THAT(ColorsOf(target), ElementsAre(0x0000FFU, 0xFFFF00U));
}

TEST(StretchedCopy, OfOnePixelOfEach_TakesTheLastOfARowsAndTheFirstOfAColumns) {
  using Groups = std::vector<std::vector<int>>;
  EXPECT_EQ(Together(8, {0, 3}, 3, false, Sampling::kOneOf), (Groups{{3}, {5}, {8}}));
  EXPECT_EQ(Together(8, {0, 3}, 3, true, Sampling::kOneOf), (Groups{{1}, {4}, {6}}));
  EXPECT_EQ(Together(3, {0, 2}, 2, false, Sampling::kOneOf), (Groups{{2}, {3}}));
  EXPECT_EQ(Together(3, {0, 2}, 2, true, Sampling::kOneOf), (Groups{{1}, {3}}));
}

// A line of one pixel in a picture of half its size, wherever it runs.
TEST(StretchedCopy, OfHalfTheSize_LosesNoDarkLine) {
  constexpr std::int32_t kSide = 21;
  constexpr std::uint32_t kLine = 0x102030;
  for (std::int32_t at = 0; at < kSide; ++at) {
    for (const bool upright : {false, true}) {
      Surface source(kSide, kSide, 0xFFFFFF);
      FillPixels(source, upright ? Extent{at, 1} : Extent{0, kSide},
                 upright ? Extent{0, kSide} : Extent{at, 1}, kLine);
      Surface target(kSide / 2, kSide / 2);
      CopyPixels(target, RowsOf(source), {{0, kSide / 2}, {0, kSide / 2}, {0, kSide}, {0, kSide}});
      std::int32_t lines = 0;
      for (std::int32_t i = 0; i < kSide / 2; ++i) {
        lines += target.ColorAt(upright ? i : 3, upright ? 3 : i) == kLine ? 1 : 0;
      }
      EXPECT_EQ(lines, 1) << at;
    }
  }
}

TEST(StretchedCopy, OfTheOtherSamplingTakesThePixelOfThePlace) {
  EXPECT_THAT(Stretched({0, 8}, 8, {0, 4}, 4, Sampling::kFloor), ElementsAre(1, 3, 5, 7));
  EXPECT_THAT(Stretched({0, 3}, 3, {0, 7}, 7, Sampling::kFloor), ElementsAre(1, 1, 1, 2, 2, 3, 3));
}

TEST(StretchedCopy, TurnsWhenOneOfTheTwoGoesBackwards) {
  EXPECT_THAT(Stretched({0, 4}, 4, {3, -4}, 4), ElementsAre(4, 3, 2, 1));
  EXPECT_THAT(Stretched({3, -4}, 4, {0, 4}, 4), ElementsAre(4, 3, 2, 1));
  EXPECT_THAT(Stretched({3, -4}, 4, {3, -4}, 4), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(Stretched({0, 8}, 8, {2, -3}, 3), ElementsAre(8, 5, 3));
  EXPECT_THAT(Stretched({0, 4}, 4, {4, -4}, 5), ElementsAre(0, 4, 3, 2, 1));  // its start counts
}

TEST(StretchedCopy, LeavesOutWhatLiesBeyondEitherPicture) {
  EXPECT_THAT(Stretched({0, 4}, 4, {-2, 4}, 4), ElementsAre(3, 4, 0, 0));
  EXPECT_THAT(Stretched({0, 4}, 4, {-2, 8}, 4), ElementsAre(2, 2, 3, 3));
  EXPECT_THAT(Stretched({2, 4}, 4, {0, 4}, 4), ElementsAre(3, 4, 0, 0));
  EXPECT_THAT(Stretched({-2, 4}, 4, {0, 4}, 4), ElementsAre(0, 0, 1, 2));
  EXPECT_THAT(Stretched({0, 4}, 4, {9, 4}, 4), ElementsAre(0, 0, 0, 0));
  EXPECT_THAT(Stretched({0, 4}, 4, {0, 0}, 4), ElementsAre(0, 0, 0, 0));
  EXPECT_THAT(Stretched({0, 0}, 4, {0, 4}, 4), ElementsAre(0, 0, 0, 0));
}

TEST(StretchedCopy, RepeatsWholeRowsToo) {
  Surface source(2, 2);
  source.SetColor(0, 0, 1);
  source.SetColor(1, 0, 2);
  source.SetColor(0, 1, 3);
  source.SetColor(1, 1, 4);
  Surface target(4, 4);
  CopyPixels(target, RowsOf(source), {{0, 4}, {0, 4}, {0, 2}, {0, 2}});
  EXPECT_THAT(ColorsOf(target, 0), ElementsAre(1, 1, 2, 2));
  EXPECT_THAT(ColorsOf(target, 1), ElementsAre(1, 1, 2, 2));
  EXPECT_THAT(ColorsOf(target, 2), ElementsAre(3, 3, 4, 4));
  EXPECT_THAT(ColorsOf(target, 3), ElementsAre(3, 3, 4, 4));
}

// ---- Shapes -------------------------------------------------------------------------------------

TEST(FilledPixels, LieWithinThePicture) {
  Surface surface(3, 2);
  FillPixels(surface, {1, 9}, {-4, 5}, 0x112233);
  EXPECT_THAT(ColorsOf(surface, 0), ElementsAre(0U, 0x112233U, 0x112233U));
  EXPECT_THAT(ColorsOf(surface, 1), ElementsAre(0U, 0U, 0U));
  FillPixels(surface, {5, 2}, {0, 2}, 0x445566);
  FillPixels(surface, {0, 0}, {0, 2}, 0x445566);
  EXPECT_THAT(ColorsOf(surface, 1), ElementsAre(0U, 0U, 0U));
}

TEST(FramedPixels, AreAsDeepAsThePenIsWide) {
  Surface surface(5, 5);
  FramePixels(surface, {0, 5}, {0, 5}, 7, 2);
  EXPECT_THAT(ColorsOf(surface, 1), ElementsAre(7, 7, 7, 7, 7));
  EXPECT_THAT(ColorsOf(surface, 2), ElementsAre(7, 7, 0, 7, 7));
  EXPECT_THAT(ColorsOf(surface, 3), ElementsAre(7, 7, 7, 7, 7));
}

}  // namespace
}  // namespace ostrel::headless
