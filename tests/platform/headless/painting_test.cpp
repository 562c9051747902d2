// What drawing leaves in windows and bitmaps of the in-memory platform: pixel by pixel.
#include "platform/headless/test_dialogs.h"
#include "support/bitmap_rows.h"
#include "support/surface_picture.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

using test::Form;
using testing::ElementsAre;

constexpr std::int32_t kDrawn = 52;
constexpr std::uint32_t kWhite = 0x00FFFFFF;
constexpr std::int32_t kWhitePen = 6;
constexpr std::int32_t kNullPen = 8;
constexpr std::int32_t kSystemFont = 13;

// Rows of a picture as digits, for colours below 10, and "#" for white.
std::vector<std::string> Art(const Surface& surface) {
  std::vector<std::string> rows;
  for (std::int32_t y = 0; y < surface.height(); ++y) {
    std::string row;
    for (std::int32_t x = 0; x < surface.width(); ++x) {
      const std::uint32_t color = surface.ColorAt(x, y);
      row += color < 10 ? static_cast<char>('0' + color) : (color == kWhite ? '#' : '?');
    }
    rows.push_back(row);
  }
  return rows;
}

class Painting : public testing::Test {
 protected:
  Painting() {
    platform_.modules.InstallResources(kTestLibraryPath, TestDialogs());
    module_ = platform_.modules.LoadLibraryW(kTestLibraryPath);
    screen_ = graphics_.GetDC(nullptr);
    source_ = Memory(6, 3);
    Number(source_, 6, 3);
  }

  // A context in memory with a new bitmap in it.
  DeviceContext Memory(std::int32_t width, std::int32_t height) {
    const DeviceContext context = graphics_.CreateCompatibleDC(screen_);
    graphics_.SelectObject(context, graphics_.CreateCompatibleBitmap(screen_, width, height));
    return context;
  }
  // Numbers the columns from 1 on in the first row, from 2 in the second, and so on.
  void Number(DeviceContext context, std::int32_t width, std::int32_t height) {
    const std::vector<std::uint8_t> rows = test::NumberedRows(width, height);
    EXPECT_EQ(graphics_.StretchDIBits(context, {0, 0, width, height}, {0, 0, width, height},
                                      rows.data(), Form(width, height), kRasterCopy),
              height);
  }
  // What a context in memory holds. Its bitmap comes out of it for a moment.
  std::vector<std::string> Shown(DeviceContext context) {
    const DeviceContext fresh = graphics_.CreateCompatibleDC(nullptr);
    const GdiObject first =
        graphics_.SelectObject(fresh, graphics_.CreateCompatibleBitmap(screen_, 1, 1));
    const GdiObject bitmap = graphics_.SelectObject(context, first);
    std::vector<std::string> rows = Art(graphics_.BitmapOf(bitmap)->pixels);
    graphics_.SelectObject(context, bitmap);
    graphics_.DeleteDC(fresh);
    return rows;
  }

  HeadlessPlatform platform_;
  HeadlessGraphics& graphics_ = platform_.graphics;
  ModuleHandle module_ = nullptr;
  DeviceContext screen_ = nullptr;
  DeviceContext source_ = nullptr;
};

// ---- Rows of memory -----------------------------------------------------------------------------

TEST_F(Painting, RowsOfMemoryComeLastRowFirst) {
  EXPECT_THAT(Shown(source_), ElementsAre("123456", "234567", "345678"));
}

TEST_F(Painting, RowsOfMemoryAreCountedFromTheFirstOfThem) {
  const std::array<std::uint8_t, 12> rows = {0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0};
  const DeviceContext target = Memory(1, 3);
  EXPECT_EQ(graphics_.StretchDIBits(target, {0, 0, 1, 1}, {0, 0, 1, 1}, rows.data(), Form(1, 3),
                                    kRasterCopy),
            3);
  EXPECT_THAT(Shown(target), ElementsAre("1", "0", "0"));
  EXPECT_EQ(graphics_.StretchDIBits(target, {0, 0, 1, 2}, {0, 1, 1, 3}, rows.data(), Form(1, 3),
                                    kRasterCopy),
            3);
  EXPECT_THAT(Shown(target), ElementsAre("3", "2", "0"));
  EXPECT_EQ(graphics_.StretchDIBits(target, {0, 0, 1, 3}, {0, 0, 1, 3}, rows.data(), Form(1, -3),
                                    kRasterCopy),
            3);
  EXPECT_THAT(Shown(target), ElementsAre("1", "2", "3"));
  EXPECT_EQ(graphics_.StretchDIBits(target, {0, 2, 1, -1}, {0, 0, 1, 3}, rows.data(), Form(1, 3),
                                    kRasterCopy),
            3);
  EXPECT_THAT(Shown(target), ElementsAre("1", "2", "3"));  // turned
}

TEST_F(Painting, RowsOfMemoryInAnotherFormAreRefused) {
  const std::array<std::uint8_t, 64> rows = {};
  std::vector<BitmapInfoHeader> forms(7, Form(2, 2));
  forms[0].biSize = 12;
  forms[1].biWidth = 0;
  forms[2].biHeight = 0;
  forms[3].biPlanes = 2;
  forms[4].biBitCount = 8;
  forms[5].biCompression = 1;
  forms[6].biWidth = -2;
  for (const BitmapInfoHeader& form : forms) {
    EXPECT_EQ(graphics_.StretchDIBits(source_, {0, 0, 2, 2}, {0, 0, 2, 2}, rows.data(), form,
                                      kRasterCopy),
              0);
  }
  EXPECT_EQ(graphics_.StretchDIBits(source_, {0, 0, 2, 2}, {0, 0, 2, 2}, nullptr, Form(2, 2),
                                    kRasterCopy),
            0);
  EXPECT_THAT(Shown(source_), ElementsAre("123456", "234567", "345678"));
}

TEST_F(Painting, BitmapsPixelsAreReadWithTheirPadding) {
  const DeviceContext memory = Memory(3, 2);
  Number(memory, 3, 2);
  const GdiObject bitmap =
      graphics_.SelectObject(memory, graphics_.CreateCompatibleBitmap(screen_, 1, 1));
  BitmapInfoHeader form = Form(3, 2);
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 0, 2, nullptr, &form), 1);
  EXPECT_EQ(form.biSizeImage, 24U);
  std::array<std::uint8_t, 28> rows;
  rows.fill(0xC5);
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 0, 2, rows.data(), &form), 2);
  EXPECT_THAT(rows, ElementsAre(0, 0, 2, 0, 0, 3, 0, 0, 4, 0, 0, 0,  //
                                0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0, 0, 0xC5, 0xC5, 0xC5, 0xC5));
  rows.fill(0xC5);
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 1, 9, rows.data(), &form), 1);
  EXPECT_EQ(rows[2], 1);
  EXPECT_EQ(rows[12], 0xC5);
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 2, 1, rows.data(), &form), 0);
  form.biHeight = -2;
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 0, 2, rows.data(), &form), 2);
  EXPECT_EQ(rows[2], 1);
  EXPECT_EQ(rows[14], 2);
}

TEST_F(Painting, BitmapTellsItsFormToAnEmptyHeader) {
  const GdiObject bitmap = graphics_.CreateCompatibleBitmap(screen_, 3, 2);
  BitmapInfoHeader form = {};
  form.biSize = sizeof(form);
  EXPECT_NE(graphics_.GetDIBits(screen_, bitmap, 0, 0, nullptr, &form), 0);
  EXPECT_EQ(form.biWidth, 3);
  EXPECT_EQ(form.biHeight, 2);
  EXPECT_EQ(form.biPlanes, 1);
  EXPECT_EQ(form.biBitCount, 32);
  EXPECT_EQ(form.biSizeImage, 24U);
}

TEST_F(Painting, PixelsOfASelectedBitmapOrInAnotherSizeAreNotRead) {
  std::array<std::uint8_t, 64> rows = {};
  BitmapInfoHeader form = Form(3, 2);
  const GdiObject bitmap = graphics_.CreateCompatibleBitmap(screen_, 3, 2);
  const DeviceContext memory = graphics_.CreateCompatibleDC(screen_);
  const GdiObject before = graphics_.SelectObject(memory, bitmap);
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 0, 2, rows.data(), &form), 0);
  graphics_.SelectObject(memory, before);
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 0, 2, rows.data(), &form), 2);
  EXPECT_EQ(graphics_.GetDIBits(nullptr, bitmap, 0, 2, rows.data(), &form), 0);
  EXPECT_EQ(graphics_.GetDIBits(screen_, nullptr, 0, 2, rows.data(), &form), 0);
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 0, 2, rows.data(), nullptr), 0);
  for (const BitmapInfoHeader& other : {Form(4, 2), Form(3, 3), Form(3, -1)}) {
    form = other;
    EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 0, 2, rows.data(), &form), 0);
  }
}

// ---- Copies -------------------------------------------------------------------------------------

TEST_F(Painting, CopyTakesARectangleFromAPlace) {
  const DeviceContext target = Memory(6, 3);
  EXPECT_TRUE(graphics_.BitBlt(target, {1, 1, 4, 3}, source_, {2, 0}));
  EXPECT_THAT(Shown(target), ElementsAre("000000", "034500", "045600"));
}

TEST_F(Painting, CopyOntoItselfTakesThePictureAsItWas) {
  EXPECT_TRUE(graphics_.BitBlt(source_, {1, 0, 6, 3}, source_, {0, 0}));
  EXPECT_THAT(Shown(source_), ElementsAre("112345", "223456", "334567"));
}

TEST_F(Painting, StretchedCopyTurnsByExtentsBelowZero) {
  const DeviceContext target = Memory(6, 3);
  EXPECT_TRUE(graphics_.StretchBlt(target, {5, 2, -1, -1}, source_, {0, 0, 6, 3}));
  EXPECT_THAT(Shown(target), ElementsAre("876543", "765432", "654321"));
  EXPECT_TRUE(graphics_.StretchBlt(target, {0, 0, 6, 3}, source_, {5, 0, -1, 3}));
  EXPECT_THAT(Shown(target), ElementsAre("654321", "765432", "876543"));
}

TEST_F(Painting, ShrunkCopyGoesByTheModeOfTheTarget) {
  const DeviceContext target = Memory(3, 3);
  // Two digits come together; the bits of both stay: 1 and 2, 3 and 4, 5 and 6, and so on.
  EXPECT_TRUE(graphics_.StretchBlt(target, {0, 0, 3, 3}, source_, {0, 0, 6, 3}));
  EXPECT_THAT(Shown(target), ElementsAre("004", "246", "040"));
  EXPECT_EQ(graphics_.SetStretchBltMode(target, kStretchDeleteScans), 1);
  EXPECT_TRUE(graphics_.StretchBlt(target, {0, 0, 3, 3}, source_, {0, 0, 6, 3}));
  EXPECT_THAT(Shown(target), ElementsAre("246", "357", "468"));
  EXPECT_EQ(graphics_.SetStretchBltMode(target, kStretchHalftone), kStretchDeleteScans);
  EXPECT_TRUE(graphics_.StretchBlt(target, {0, 0, 3, 3}, source_, {0, 0, 6, 3}));
  EXPECT_THAT(Shown(target), ElementsAre("135", "246", "357"));
  EXPECT_EQ(graphics_.SetStretchBltMode(target, 0), 0);
  EXPECT_EQ(graphics_.SetStretchBltMode(target, 5), 0);
  EXPECT_EQ(graphics_.SetStretchBltMode(target, kStretchHalftone), kStretchHalftone);
}

TEST_F(Painting, TransparentCopyLeavesAColorOut) {
  const DeviceContext target = Memory(6, 3);
  graphics_.FillRect(target, {0, 0, 6, 3}, graphics_.GetStockObject(kWhiteBrush));
  EXPECT_TRUE(graphics_.TransparentBlt(target, {0, 0, 5, 2}, source_, {0, 0}, 3));
  EXPECT_THAT(Shown(target), ElementsAre("12#45#", "2#456#", "######"));
}

TEST_F(Painting, ScreenTakesWhatIsDrawnAndGivesNothingBack) {
  EXPECT_TRUE(graphics_.BitBlt(screen_, {0, 0, 2, 2}, source_, {0, 0}));
  EXPECT_TRUE(graphics_.StretchBlt(screen_, {0, 0, 2, 2}, source_, {0, 0, 1, 1}));
  EXPECT_TRUE(graphics_.FillRect(screen_, {0, 0, 2, 2}, graphics_.GetStockObject(kWhiteBrush)));
  EXPECT_TRUE(graphics_.Rectangle(screen_, {0, 0, 2, 2}));
  EXPECT_FALSE(graphics_.BitBlt(source_, {0, 0, 2, 2}, screen_, {0, 0}));
  EXPECT_FALSE(graphics_.TransparentBlt(source_, {0, 0, 2, 2}, screen_, {0, 0}, 0));
}

// ---- Mirrored contexts --------------------------------------------------------------------------

// Three pixels from place 2 of the source to place 1 of a target of eight.
TEST_F(Painting, MirroredContextsCountFromTheRightAndTurnPictures) {
  struct Case {
    std::uint32_t target;
    std::uint32_t source;
    std::string row;
  };
  constexpr std::uint32_t kMirrored = kLayoutRightToLeft;
  constexpr std::uint32_t kUpright = kLayoutRightToLeft | kLayoutBitmapsUpright;
  const std::vector<Case> cases = {
      {0, 0, "03450000"},                      // as it is
      {0, kMirrored, "04320000"},              // turned by the source
      {0, kUpright, "02340000"},               //
      {kMirrored, 0, "00005430"},              // turned by the target
      {kMirrored, kMirrored, "00002340"},      // by both, thus not at all
      {kMirrored, kUpright, "00004320"},       //
      {kUpright, 0, "00003450"},               // in its place, but not turned
      {kUpright, kMirrored, "00004320"},       //
      {kUpright, kUpright, "00002340"},        //
      {kLayoutBitmapsUpright, 0, "03450000"},  // means nothing alone
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(std::to_string(row.target) + " from " + std::to_string(row.source));
    graphics_.SetLayout(source_, row.source);
    for (int way = 0; way < 3; ++way) {
      const DeviceContext target = Memory(8, 1);
      graphics_.SetLayout(target, row.target);
      if (way == 0) {
        graphics_.BitBlt(target, {1, 0, 4, 1}, source_, {2, 0});
      } else if (way == 1) {
        graphics_.StretchBlt(target, {1, 0, 4, 1}, source_, {2, 0, 5, 1});
      } else {
        graphics_.TransparentBlt(target, {1, 0, 4, 1}, source_, {2, 0}, kWhite);
      }
      EXPECT_THAT(Shown(target), ElementsAre(row.row)) << way;
    }
  }
}

TEST_F(Painting, RowsOfMemoryAreTurnedByAMirroredContextEvenWhereBitmapsStayUpright) {
  const std::array<std::uint8_t, 12> row = {0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0, 0};
  for (const std::uint32_t layout : {1U, 9U}) {
    const DeviceContext target = Memory(5, 1);
    graphics_.SetLayout(target, layout);
    EXPECT_EQ(graphics_.StretchDIBits(target, {1, 0, 4, 1}, {0, 0, 3, 1}, row.data(), Form(3, 1),
                                      kRasterCopy),
              1);
    EXPECT_THAT(Shown(target), ElementsAre("03210"));
  }
}

TEST_F(Painting, ShapesStandOnTheOtherSideOfAMirroredContext) {
  const DeviceContext target = Memory(6, 1);
  graphics_.SetLayout(target, kLayoutRightToLeft);
  EXPECT_TRUE(graphics_.FillRect(target, {1, 0, 3, 1}, graphics_.GetStockObject(kWhiteBrush)));
  EXPECT_THAT(Shown(target), ElementsAre("000##0"));
}

// ---- Shapes -------------------------------------------------------------------------------------

TEST_F(Painting, BrushesFillARectangleWithoutItsRightAndBottom) {
  constexpr std::uint32_t kColors[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0x000000};
  for (std::int32_t index = 0; index < 5; ++index) {
    const WindowHandle window = platform_.windows.CreatePlayedWindow({0, 0, 4, 3}, {});
    const DeviceContext target = graphics_.GetDC(window);
    EXPECT_TRUE(graphics_.FillRect(target, {1, 1, 3, 2}, graphics_.GetStockObject(index)));
    const Surface& shown = *graphics_.SurfaceOf(window);
    EXPECT_EQ(shown.ColorAt(1, 1), kColors[index]);
    EXPECT_EQ(shown.ColorAt(2, 1), kColors[index]);
    EXPECT_EQ(shown.ColorAt(3, 1), 0xF0F0F0U);
    EXPECT_EQ(shown.ColorAt(1, 2), 0xF0F0F0U);
    EXPECT_TRUE(graphics_.FillRect(target, {0, 0, 4, 3}, graphics_.GetStockObject(kNullBrush)));
    EXPECT_EQ(shown.ColorAt(0, 0), 0xF0F0F0U);
  }
  const DeviceContext target = Memory(4, 3);
  EXPECT_FALSE(graphics_.FillRect(target, {0, 0, 4, 3}, nullptr));
  EXPECT_FALSE(graphics_.FillRect(target, {0, 0, 4, 3}, graphics_.GetStockObject(kWhitePen)));
}

TEST_F(Painting, RectangleHasAFrameAndIsFilled) {
  const DeviceContext target = Memory(6, 4);
  const GdiObject pen = graphics_.CreatePen(kPenSolid, 1, 7);
  const GdiObject before = graphics_.SelectObject(target, pen);
  EXPECT_TRUE(graphics_.Rectangle(target, {1, 0, 5, 4}));
  EXPECT_THAT(Shown(target), ElementsAre("077770", "07##70", "07##70", "077770"));
  graphics_.SelectObject(target, graphics_.GetStockObject(kNullBrush));
  EXPECT_TRUE(graphics_.Rectangle(target, {6, 4, 0, 0}));  // its corners in another order
  EXPECT_THAT(Shown(target), ElementsAre("777777", "77##77", "77##77", "777777"));
  graphics_.SelectObject(target, before);
  graphics_.SelectObject(target, graphics_.GetStockObject(kWhitePen));
  EXPECT_TRUE(graphics_.Rectangle(target, {0, 0, 2, 2}));
  EXPECT_THAT(Shown(target), ElementsAre("##7777", "####77", "77##77", "777777"));
  graphics_.SelectObject(target, graphics_.GetStockObject(kNullPen));
  EXPECT_TRUE(graphics_.Rectangle(target, {0, 0, 6, 4}));
  EXPECT_THAT(Shown(target), ElementsAre("##7777", "####77", "77##77", "777777"));
}

// ---- Objects ------------------------------------------------------------------------------------

TEST_F(Painting, PensAndBrushesAreSelectedByKindAndPensDeletedOnce) {
  const GdiObject pen = graphics_.CreatePen(kPenSolid, 0, 7);
  EXPECT_EQ(graphics_.livePens(), 1U);
  const GdiObject brush = graphics_.GetStockObject(kNullBrush);
  const GdiObject penBefore = graphics_.SelectObject(screen_, pen);
  const GdiObject brushBefore = graphics_.SelectObject(screen_, brush);
  EXPECT_EQ(brushBefore, graphics_.GetStockObject(kWhiteBrush));
  EXPECT_FALSE(graphics_.DeleteObject(pen));
  EXPECT_EQ(graphics_.SelectObject(screen_, penBefore), pen);
  EXPECT_EQ(graphics_.SelectObject(screen_, brushBefore), brush);
  EXPECT_EQ(graphics_.SelectObject(screen_, DialogFont()), graphics_.GetStockObject(kSystemFont));
  EXPECT_TRUE(graphics_.DeleteObject(pen));
  EXPECT_FALSE(graphics_.DeleteObject(pen));
  EXPECT_EQ(graphics_.SelectObject(screen_, pen), nullptr);
  EXPECT_EQ(graphics_.livePens(), 0U);
  EXPECT_EQ(graphics_.CreatePen(1, 1, 7), nullptr);
}

TEST_F(Painting, SystemsOwnObjectsAreNeverDeleted) {
  const GdiObject brush = graphics_.GetStockObject(kWhiteBrush);
  EXPECT_TRUE(graphics_.DeleteObject(brush));
  EXPECT_TRUE(graphics_.DeleteObject(brush));
  EXPECT_EQ(graphics_.GetStockObject(kWhiteBrush), brush);
  EXPECT_EQ(graphics_.GetStockObject(-1), nullptr);
  EXPECT_EQ(graphics_.GetStockObject(9), nullptr);
  EXPECT_EQ(graphics_.GetStockObject(99), nullptr);
}

TEST_F(Painting, BitmapLikeAFreshMemoryContextHasTwoColors) {
  const DeviceContext fresh = graphics_.CreateCompatibleDC(screen_);
  const GdiObject bitmap = graphics_.CreateCompatibleBitmap(fresh, 6, 3);
  graphics_.SelectObject(fresh, bitmap);
  EXPECT_TRUE(graphics_.BitBlt(fresh, {0, 0, 6, 3}, source_, {0, 0}));
  graphics_.FillRect(source_, {0, 0, 2, 1}, graphics_.GetStockObject(kWhiteBrush));
  EXPECT_THAT(Shown(fresh), ElementsAre("000000", "000000", "000000"));
  EXPECT_TRUE(graphics_.BitBlt(fresh, {0, 0, 6, 3}, source_, {0, 0}));
  EXPECT_THAT(Shown(fresh), ElementsAre("##0000", "000000", "000000"));
}

TEST_F(Painting, BitmapOfNoSizeHasOnePixel) {
  for (const Size asked : {Size{0, 5}, Size{5, 0}, Size{0, 0}}) {
    Size size = {};
    const GdiObject bitmap = graphics_.CreateCompatibleBitmap(screen_, asked.width, asked.height);
    EXPECT_TRUE(graphics_.GetBitmapSize(bitmap, &size));
    EXPECT_EQ(size.width, 1);
    EXPECT_EQ(size.height, 1);
  }
  EXPECT_EQ(graphics_.CreateCompatibleBitmap(screen_, -1, 5), nullptr);
  EXPECT_EQ(graphics_.CreateCompatibleBitmap(screen_, 5, 0x8000), nullptr);
  EXPECT_EQ(graphics_.CreateCompatibleBitmap(nullptr, 5, 5), nullptr);
}

TEST_F(Painting, LibrarysBitmapHasItsPixels) {
  auto resources = std::make_shared<Resources>(*TestDialogs());
  resources->bitmaps[90] = {.width = 1,
                            .height = 1,
                            .bitsPerPixel = 24,
                            .colors = {},
                            .pixels = {std::byte{0x33}, std::byte{0x22}, std::byte{0x11}}};
  platform_.modules.InstallResources(u"C:\\test\\pictures.dll", resources);
  const ModuleHandle module = platform_.modules.LoadLibraryW(u"C:\\test\\pictures.dll");
  const GdiObject bitmap = graphics_.LoadBitmapW(module, 90);
  EXPECT_EQ(graphics_.BitmapOf(bitmap)->pixels.ColorAt(0, 0), 0x332211U);
}

// ---- Windows ------------------------------------------------------------------------------------

TEST_F(Painting, WindowKeepsItsPixelsAndIsClearedBeforeItIsDrawnAnew) {
  MessageLog log;
  const WindowHandle dialog = platform_.windows.CreateDialogWindow(
      module_, kMirroredDialog, nullptr, &MessageLog::Procedure, 0, false);
  const WindowHandle control = platform_.windows.ControlOf(dialog, kDrawn);
  EXPECT_EQ(graphics_.SurfaceOf(control), nullptr);
  int draws = 0;
  log.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t, std::intptr_t lParam) {
    if (message == kWmDrawItem) {
      const auto& order = *reinterpret_cast<const DrawItem*>(lParam);
      const Rect place = draws++ == 0 ? Rect{0, 0, 1, 1} : Rect{1, 0, 2, 1};
      graphics_.FillRect(order.hDC, place, graphics_.GetStockObject(kWhiteBrush));
    }
    return 1;
  };
  User user(platform_, dialog);
  EXPECT_TRUE(user.Draw(kDrawn).has_value());
  const Surface* shown = graphics_.SurfaceOf(control);
  ASSERT_NE(shown, nullptr);
  const Rect place = platform_.windows.Find(control)->screenPlace;
  EXPECT_EQ(shown->width(), place.Width());
  EXPECT_EQ(shown->height(), place.Height());
  const std::int32_t right = shown->width() - 1;
  EXPECT_EQ(shown->ColorAt(right, 0), kWhite);  // the control is mirrored
  EXPECT_EQ(shown->ColorAt(right - 1, 0), 0xF0F0F0U);
  EXPECT_TRUE(user.Draw(kDrawn).has_value());
  EXPECT_EQ(shown->ColorAt(right, 0), 0xF0F0F0U);
  EXPECT_EQ(shown->ColorAt(right - 1, 0), kWhite);
}

TEST_F(Painting, SurfaceIsWrittenAsAPicture) {
  Surface surface(2, 1);
  surface.SetColor(0, 0, 0x112233);
  const std::string file = test::PictureFile(surface);
  ASSERT_EQ(file.size(), 62U);
  EXPECT_EQ(file.substr(0, 2), "BM");
  EXPECT_EQ(file[2], 62);
  EXPECT_EQ(file[10], 54);
  EXPECT_EQ(file[18], 2);
  EXPECT_EQ(file[22], 1);
  EXPECT_EQ(file[28], 24);
  EXPECT_EQ(file.substr(54), std::string("\x11\x22\x33\0\0\0\0\0", 8));
  const auto path = std::filesystem::temp_directory_path() / "ostrel surface picture.bmp";
  EXPECT_TRUE(test::SavePicture(surface, path.string()));
  std::ifstream saved(path, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(saved), {}), file);
  std::filesystem::remove(path);
  EXPECT_FALSE(test::SavePicture(surface, "/no such folder/picture.bmp"));
}

// ---- Failures -----------------------------------------------------------------------------------

TEST_F(Painting, EveryOperationFailsByItsName) {
  const GdiObject bitmap = graphics_.CreateCompatibleBitmap(screen_, 2, 2);
  const GdiObject brush = graphics_.GetStockObject(kWhiteBrush);
  std::array<std::uint8_t, 16> rows = {};
  for (const char* operation :
       {"CreateCompatibleBitmap", "CreatePen", "GetStockObject", "GetDIBits", "StretchDIBits",
        "BitBlt", "StretchBlt", "SetStretchBltMode", "FillRect", "Rectangle"}) {
    platform_.faults.FailOperation(operation);
  }
  BitmapInfoHeader form = Form(2, 2);
  EXPECT_EQ(graphics_.CreateCompatibleBitmap(screen_, 2, 2), nullptr);
  EXPECT_EQ(graphics_.CreatePen(kPenSolid, 1, 0), nullptr);
  EXPECT_EQ(graphics_.GetStockObject(kWhiteBrush), nullptr);
  EXPECT_EQ(graphics_.GetDIBits(screen_, bitmap, 0, 2, rows.data(), &form), 0);
  EXPECT_EQ(
      graphics_.StretchDIBits(source_, {0, 0, 2, 2}, {0, 0, 2, 2}, rows.data(), form, kRasterCopy),
      0);
  EXPECT_FALSE(graphics_.BitBlt(source_, {0, 0, 2, 2}, source_, {3, 1}));
  EXPECT_FALSE(graphics_.StretchBlt(source_, {0, 0, 2, 2}, source_, {3, 1, 5, 3}));
  EXPECT_EQ(graphics_.SetStretchBltMode(source_, kStretchHalftone), 0);
  EXPECT_FALSE(graphics_.FillRect(source_, {0, 0, 2, 2}, brush));
  EXPECT_FALSE(graphics_.Rectangle(source_, {0, 0, 2, 2}));
  platform_.faults.Clear();
  EXPECT_THAT(Shown(source_), ElementsAre("123456", "234567", "345678"));
  EXPECT_EQ(graphics_.livePens(), 0U);
}

TEST_F(Painting, NothingIsDrawnOnOrFromWhatIsNoContext) {
  const std::array<std::uint8_t, 16> rows = {};
  EXPECT_FALSE(graphics_.BitBlt(nullptr, {0, 0, 1, 1}, source_, {0, 0}));
  EXPECT_FALSE(graphics_.BitBlt(source_, {0, 0, 1, 1}, nullptr, {0, 0}));
  EXPECT_FALSE(graphics_.StretchBlt(nullptr, {0, 0, 1, 1}, source_, {0, 0, 1, 1}));
  EXPECT_FALSE(graphics_.StretchBlt(source_, {0, 0, 1, 1}, nullptr, {0, 0, 1, 1}));
  EXPECT_EQ(graphics_.StretchDIBits(nullptr, {0, 0, 1, 1}, {0, 0, 1, 1}, rows.data(), Form(1, 1),
                                    kRasterCopy),
            0);
  EXPECT_FALSE(graphics_.FillRect(nullptr, {0, 0, 1, 1}, graphics_.GetStockObject(kWhiteBrush)));
  EXPECT_FALSE(graphics_.Rectangle(nullptr, {0, 0, 1, 1}));
  EXPECT_EQ(graphics_.SetStretchBltMode(nullptr, kStretchHalftone), 0);
}

}  // namespace
}  // namespace ostrel::headless
