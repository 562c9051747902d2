// The layout page's picture in its owner-drawn control: the record's bitmap with the record's look,
// whatever depth the bitmap has, and nothing when there is none.
#include "core/parameter_table.h"
#include "pages/page_scene.h"
#include "pages/painted_image.h"
#include "pages/preview.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <map>
#include <memory>

namespace ostrel {
namespace {

using test::Canvas;
using test::Image;

constexpr std::uint32_t kOnePage = 888;
constexpr std::uint32_t kUntouched = 0x336699;

class LayoutItem : public testing::Test {
 protected:
  LayoutItem() { BuildUIParamTable(&scene_.context); }

  // Puts bitmaps of these ids alone into the bitmap library.
  void Install(const std::map<std::uint32_t, headless::BitmapResource>& bitmaps) {
    headless::Resources library;
    library.bitmaps = bitmaps;
    for (const auto& [id, bitmap] : bitmaps) {
      library.entries.insert({headless::kResourceBitmap, id});
    }
    scene_.world.platform.modules.InstallResources(
        test::kBitmapLibraryPath, std::make_shared<const headless::Resources>(library));
    scene_.context.bitmapModule =
        scene_.world.platform.modules.LoadLibraryW(test::kBitmapLibraryPath);
  }
  // Draws the item into a control of this size.
  Image Draw(std::int32_t width, std::int32_t height) {
    Canvas control(Image::Of(width, height, kUntouched));
    DrawItem item = {};
    item.CtlID = 1067;
    item.hDC = control.context();
    item.rcItem = {0, 0, width, height};
    DrawLayoutPicture(scene_.context, item);
    return control.Read();
  }
  PrivateDevmode& own() { return scene_.own(); }

  test::PageScene scene_;
};

// A bitmap of 32 bits a pixel, the lowest row first.
headless::BitmapResource Bitmap(const Image& image) {
  headless::BitmapResource bitmap;
  bitmap.width = image.width;
  bitmap.height = image.height;
  bitmap.bitsPerPixel = 32;
  for (std::int32_t y = image.height - 1; y >= 0; --y) {
    for (std::int32_t x = 0; x < image.width; ++x) {
      for (int byte = 0; byte < 4; ++byte) {
        bitmap.pixels.push_back(static_cast<std::byte>(image.At(x, y) >> (8 * byte)));
      }
    }
  }
  return bitmap;
}

TEST_F(LayoutItem, ARecordsPicture_IsDrawnWithItsLook) {
  const Image page = Image::Distinct(10, 8);
  const Image sheet = Image::Distinct(8, 8);
  Install({{kOnePage, Bitmap(page)}, {835, Bitmap(sheet)}});
  EXPECT_EQ(Draw(10, 8), page);
  own().MultipleUp = 4;
  EXPECT_EQ(Draw(8, 8), sheet);
  own().Rotate180 = 1;
  Image turned = sheet;
  std::ranges::reverse(turned.pixels);
  EXPECT_EQ(Draw(8, 8), turned);
}

TEST_F(LayoutItem, ABookletsPicture_IsNotTurned) {
  const Image booklet = Image::Distinct(8, 8);
  Install({{1076, Bitmap(booklet)}});
  own().BookletPrint = 1;
  own().Rotate180 = 1;  // which has the binding at the other edge
  EXPECT_EQ(Draw(8, 8), booklet);
}

TEST_F(LayoutItem, SavingToner_DrawsAsTheLightestLevel) {
  Install({{kOnePage, Bitmap(Image::Of(16, 12, 0x404040))}});
  own().Thickness = 0;
  const Image lightest = Draw(16, 12);
  EXPECT_EQ(lightest.At(8, 6), 0x5E5E5EU);
  own().Thickness = 2;
  EXPECT_EQ(Draw(16, 12).At(8, 6), 0x404040U);
  own().TonerSavingMode = 1;
  EXPECT_EQ(Draw(16, 12), lightest);
}

TEST_F(LayoutItem, AScale_DrawsAFrame) {
  Install({{kOnePage, Bitmap(Image::Of(12, 12, 0xFFFFFF))}});
  own().ScaleRadio = 101;
  const Image drawn = Draw(12, 12);
  EXPECT_EQ(drawn.At(0, 5), 0U);
  EXPECT_EQ(drawn.At(5, 5), 0xFFFFFFU);
}

TEST_F(LayoutItem, AnOrderWithoutAPicture_DrawsNothing) {
  Install({{kOnePage, Bitmap(Image::Of(8, 8, 0))}, {0, Bitmap(Image::Of(8, 8, 0))}});
  own().MultipleUp = 2;
  for (const std::int16_t order : std::initializer_list<std::int16_t>{2, 3, 4, -1}) {
    own().PageOrder = order;
    EXPECT_EQ(Draw(8, 8), Image::Of(8, 8, kUntouched)) << order;
  }
}

TEST_F(LayoutItem, ABitmapThatTheLibraryLacks_DrawsNothing) {
  Install({{886, Bitmap(Image::Of(8, 8, 0))}});
  EXPECT_EQ(Draw(8, 8), Image::Of(8, 8, kUntouched));
}

TEST_F(LayoutItem, WithoutALibrary_DrawsNothing) {
  scene_.context.bitmapModule = nullptr;
  EXPECT_EQ(Draw(8, 8), Image::Of(8, 8, kUntouched));
}

// Each picture that a record can ask for is there, and is as large as the others.
TEST_F(LayoutItem, TheShippedLibrary_HasEveryPicture) {
  scene_.context.bitmapModule =
      scene_.world.platform.modules.LoadLibraryW(test::kBitmapLibraryPath);
  constexpr std::int32_t kSide = 111;
  const auto expectPicture = [this] {
    const Image drawn = Draw(kSide, kSide);
    EXPECT_EQ(std::ranges::count(drawn.pixels, kUntouched), 0)
        << "picture " << LayoutPictureId(scene_.context);
    EXPECT_GT(std::ranges::count_if(drawn.pixels, [](std::uint32_t p) { return p != 0xFFFFFF; }),
              100)
        << "picture " << LayoutPictureId(scene_.context);
  };
  for (const std::int16_t orientation : std::initializer_list<std::int16_t>{1, 2}) {
    scene_.shared().dmOrientation = orientation;
    for (const std::int16_t border : std::initializer_list<std::int16_t>{0, 1}) {
      own().PageBorder = border;
      for (const std::int16_t pages : std::initializer_list<std::int16_t>{1, 2, 4, 8, 16, 22}) {
        own().MultipleUp = pages;
        const std::int16_t first = pages == 2 || pages == 22 ? 0 : 2;
        for (std::int16_t order = first; order < first + (pages == 2 ? 2 : 4); ++order) {
          own().PageOrder = order;
          expectPicture();
        }
      }
    }
    own().PosterPrint = 1;
    expectPicture();
    own().PosterPrint = 0;
    own().BookletPrint = 1;
    for (const std::int16_t binding : std::initializer_list<std::int16_t>{0, 1}) {
      own().BookletBinding = binding;
      expectPicture();
    }
    own().BookletPrint = 0;
  }
}

}  // namespace
}  // namespace ostrel
