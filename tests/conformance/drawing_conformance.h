// What every platform's drawing beyond pixels must do alike: modes, mapping, paths, objects, fonts,
// pictures in files and words to a driver. The third suite beside platform_conformance.h; all of it
// is done on contexts in memory.
//
// A side writes a host and instantiates the suite with it:
//
//   struct Host {
//     Platform& platform();
//     std::u16string newFile();     // path of a file that doesn't exist and may be made
//     std::u16string knownFont();   // a face that the computer has, without regard to case
//   };
//   INSTANTIATE_TYPED_TEST_SUITE_P(Name, DrawingConformance, Host);
#pragma once

#include "platform/platform.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

// The fonts that an enumeration told of, and how many of them it may tell of.
struct ToldFonts {
  std::vector<LogFont> fonts = {};
  std::size_t most = 1000;
  bool areOutlines = true;
};

inline constexpr std::uint32_t kBrushHollow = 1;  // BS_HOLLOW

inline int TellFont(const LogFont* font, const void* /*metrics*/, std::uint32_t fontType,
                    std::intptr_t callersWord) {
  constexpr std::uint32_t kTrueType = 4;                   // TRUETYPE_FONTTYPE
  auto* told = reinterpret_cast<ToldFonts*>(callersWord);  // NOLINT(performance-no-int-to-ptr)
  told->fonts.push_back(*font);
  told->areOutlines = told->areOutlines && fontType == kTrueType;
  return told->fonts.size() < told->most ? 7 : 0;
}

// A file with a picture whose rows repeat one pixel of `bits`, 0x80 in each of its bytes.
struct PictureFile {
  std::uint16_t bits = 24;
  std::int32_t width = 3;
  std::int32_t height = 2;
  std::uint32_t colors = 0;  // that follow the header

  std::size_t RowBytes() const { return (static_cast<std::size_t>(width) * bits + 31) / 32 * 4; }
  std::string Bytes() const {
    std::string bytes = "BM";
    const auto put = [&](auto number) {
      std::array<char, sizeof(number)> raw = {};
      std::memcpy(raw.data(), &number, sizeof(number));
      bytes.append(raw.data(), raw.size());
    };
    const std::size_t rows = RowBytes() * static_cast<std::size_t>(height < 0 ? -height : height);
    const std::uint32_t start = 14 + sizeof(BitmapInfoHeader) + 4 * colors;
    put(static_cast<std::uint32_t>(start + rows));
    put(std::uint32_t{0});
    put(start);
    BitmapInfoHeader header = {};
    header.biSize = sizeof(header);
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = bits;
    header.biClrUsed = colors;
    put(header);
    for (std::uint32_t i = 0; i < colors; ++i) {
      put(std::uint32_t{0x00203040} + i);
    }
    return bytes.append(rows, '\x80');
  }
};

template <typename Host>
class DrawingConformance : public testing::Test {
 protected:
  DrawingConformance() : screen_(graphics().GetDC(nullptr)) {
    memory_ = graphics().CreateCompatibleDC(screen_);
    EXPECT_NE(memory_, nullptr);
  }
  ~DrawingConformance() override {
    EXPECT_TRUE(graphics().DeleteDC(memory_));
    EXPECT_EQ(graphics().ReleaseDC(nullptr, screen_), 1);
  }

  Platform& platform() { return host_.platform(); }
  Graphics& graphics() { return platform().graphics; }
  std::uint32_t lastError() { return platform().debug.GetLastError(); }

  // The header of 44 bytes that a caller with room for one colour uses.
  static BitmapInfo Info(std::int32_t width, std::int32_t height) {
    BitmapInfo info = {};
    info.header.biSize = sizeof(info);
    info.header.biWidth = width;
    info.header.biHeight = height;
    info.header.biPlanes = 1;
    info.header.biBitCount = 24;
    return info;
  }
  // The pixels of a bitmap that no context holds, 0x00RRGGBB, the last row first.
  std::vector<std::uint32_t> PixelsOf(GdiObject bitmap, Size size) {
    const std::size_t stride = (static_cast<std::size_t>(size.width) * 3 + 3) / 4 * 4;
    std::vector<std::uint8_t> bytes(stride * static_cast<std::size_t>(size.height));
    BitmapInfo info = Info(size.width, size.height);
    EXPECT_EQ(graphics().GetDIBits(screen_, bitmap, 0, static_cast<std::uint32_t>(size.height),
                                   bytes.data(), &info.header),
              size.height);
    std::vector<std::uint32_t> pixels;
    for (std::size_t y = 0; y < static_cast<std::size_t>(size.height); ++y) {
      for (std::size_t x = 0; x < static_cast<std::size_t>(size.width); ++x) {
        const std::uint8_t* pixel = bytes.data() + y * stride + 3 * x;
        pixels.push_back(std::uint32_t{pixel[2]} << 16 | std::uint32_t{pixel[1]} << 8 | pixel[0]);
      }
    }
    return pixels;
  }
  // Gives the context a bitmap of 4 by 2 for a scope, and tells its pixels in the end.
  template <typename Draw>
  std::vector<std::uint32_t> Drawn(Draw draw) {
    const GdiObject bitmap = graphics().CreateCompatibleBitmap(screen_, 4, 2);
    const GdiObject before = graphics().SelectObject(memory_, bitmap);
    EXPECT_NE(before, nullptr);
    draw();
    EXPECT_EQ(graphics().SelectObject(memory_, before), bitmap);
    const std::vector<std::uint32_t> pixels = PixelsOf(bitmap, {4, 2});
    EXPECT_TRUE(graphics().DeleteObject(bitmap));
    return pixels;
  }
  // The bitmap that LoadImageW makes of a file with these bytes.
  GdiObject Loaded(std::string_view bytes) {
    const std::u16string path = host_.newFile();
    const FileHandle file =
        platform().files.CreateFileW(path.c_str(), Files::Access::kCreateAlwaysForWriting);
    std::uint32_t written = 0;
    EXPECT_TRUE(bytes.empty() ||
                platform().files.WriteFile(file, bytes.data(),
                                           static_cast<std::uint32_t>(bytes.size()), &written));
    EXPECT_TRUE(platform().files.CloseHandle(file));
    const GdiObject bitmap = graphics().LoadImageW(path.c_str(), kLoadFlags);
    EXPECT_TRUE(platform().files.DeleteFileW(path.c_str()));  // which nothing holds any more
    return bitmap;
  }
  LogFont FontNamed(std::u16string_view face) {
    LogFont font = {};
    font.lfHeight = -20;
    font.lfCharSet = kDefaultCharSet;
    face.copy(font.lfFaceName, kFaceNameUnits - 1);
    return font;
  }
  ToldFonts Tell(const LogFont& wanted, std::size_t most, int* answer) {
    ToldFonts told = {.most = most};
    *answer = graphics().EnumFontFamiliesExW(memory_, wanted, &TellFont,
                                             reinterpret_cast<std::intptr_t>(&told));
    return told;
  }

  static constexpr std::uint32_t kLoadFlags = kLoadFromFile | kLoadInDefaultSize;
  Host host_;
  DeviceContext screen_ = nullptr;
  DeviceContext memory_ = nullptr;
};

TYPED_TEST_SUITE_P(DrawingConformance);

// ---- Modes and colours --------------------------------------------------------------------------

TYPED_TEST_P(DrawingConformance, AModeTellsTheOneBeforeAndRefusesWhatItDoesNotKnow) {
  struct Mode {
    const char* name;
    int (Graphics::*set)(DeviceContext, std::int32_t);
    std::int32_t first;  // of a new context
    std::int32_t other;
    std::vector<std::int32_t> refused;
  };
  const Mode modes[] = {
      {"SetBkMode", &Graphics::SetBkMode, 2, kBackgroundTransparent, {0, 3, -1}},
      {"SetROP2", &Graphics::SetROP2, 13, 16, {0, 17, 240, -1}},
      {"SetPolyFillMode", &Graphics::SetPolyFillMode, kFillAlternate, kFillWinding, {0, 3, -1}},
      {"SetStretchBltMode", &Graphics::SetStretchBltMode, 1, 4, {0, 5, -1}},
  };
  Graphics& graphics = this->graphics();
  for (const Mode& mode : modes) {
    SCOPED_TRACE(mode.name);
    EXPECT_EQ((graphics.*mode.set)(this->memory_, mode.other), mode.first);
    for (const std::int32_t value : mode.refused) {
      EXPECT_EQ((graphics.*mode.set)(this->memory_, value), 0) << value;
    }
    EXPECT_EQ((graphics.*mode.set)(this->memory_, mode.first), mode.other);
    EXPECT_EQ((graphics.*mode.set)(nullptr, mode.first), 0);
  }
}

TYPED_TEST_P(DrawingConformance, AlignmentAndColoursTellTheOnesBefore) {
  Graphics& graphics = this->graphics();
  EXPECT_EQ(graphics.SetTextAlign(this->memory_, 24), 0U);
  EXPECT_EQ(graphics.SetTextAlign(this->memory_, 0), 24U);
  EXPECT_EQ(graphics.SetTextColor(this->memory_, 0x123456), 0U);
  EXPECT_EQ(graphics.SetTextColor(this->memory_, 0), 0x123456U);
  EXPECT_EQ(graphics.SetBkColor(this->memory_, 0x123456), 0xFFFFFFU);
  EXPECT_EQ(graphics.SetBkColor(this->memory_, 0xFFFFFF), 0x123456U);
  EXPECT_EQ(graphics.SetTextAlign(nullptr, 0), kInvalidTextAlign);
  EXPECT_EQ(graphics.SetTextColor(nullptr, 0), kInvalidColor);
  EXPECT_EQ(graphics.SetBkColor(nullptr, 0), kInvalidColor);
}

// ---- Mapping ------------------------------------------------------------------------------------

TYPED_TEST_P(DrawingConformance, AContextThatCountsInPixelsKeepsItsExtents) {
  Graphics& graphics = this->graphics();
  for (const auto set : {&Graphics::SetWindowExtEx, &Graphics::SetViewportExtEx}) {
    Size before = {-7, -7};
    EXPECT_TRUE((graphics.*set)(this->memory_, 4960, -7016, &before));
    EXPECT_EQ(before, (Size{1, 1}));
    before = {-7, -7};
    EXPECT_TRUE((graphics.*set)(this->memory_, 1, 1, &before));
    EXPECT_EQ(before, (Size{1, 1}));
    EXPECT_TRUE((graphics.*set)(this->memory_, 0, 0, nullptr));
    EXPECT_FALSE((graphics.*set)(nullptr, 1, 1, &before));
  }
}

TYPED_TEST_P(DrawingConformance, OriginsAreToldAndMovePoints) {
  Graphics& graphics = this->graphics();
  Point before = {-7, -7};
  EXPECT_TRUE(graphics.SetWindowOrgEx(this->memory_, 10, 20, &before));
  EXPECT_EQ(before, (Point{0, 0}));
  EXPECT_TRUE(graphics.SetViewportOrgEx(this->memory_, 100, 300, &before));
  EXPECT_EQ(before, (Point{0, 0}));
  Point points[] = {{0, 0}, {1000, -5}};
  EXPECT_TRUE(graphics.DPtoLP(this->memory_, points, 2));
  EXPECT_EQ(points[0], (Point{-90, -280}));
  EXPECT_EQ(points[1], (Point{910, -285}));
  EXPECT_TRUE(graphics.DPtoLP(this->memory_, points, 0));
  EXPECT_FALSE(graphics.DPtoLP(nullptr, points, 1));
  EXPECT_EQ(points[0], (Point{-90, -280}));
  EXPECT_TRUE(graphics.SetWindowOrgEx(this->memory_, 0, 0, nullptr));
  EXPECT_TRUE(graphics.SetViewportOrgEx(this->memory_, 0, 0, &before));
  EXPECT_EQ(before, (Point{100, 300}));
  EXPECT_FALSE(graphics.SetWindowOrgEx(nullptr, 0, 0, nullptr));
  EXPECT_FALSE(graphics.SetViewportOrgEx(nullptr, 0, 0, nullptr));
}

// ---- Paths --------------------------------------------------------------------------------------

TYPED_TEST_P(DrawingConformance, APathIsBegunEndedAndFilledInThisOrder) {
  Graphics& graphics = this->graphics();
  EXPECT_FALSE(graphics.EndPath(this->memory_));
  EXPECT_EQ(this->lastError(), kErrorCanNotComplete);
  EXPECT_FALSE(graphics.FillPath(this->memory_));
  EXPECT_EQ(this->lastError(), kErrorCanNotComplete);
  EXPECT_TRUE(graphics.BeginPath(this->memory_));
  EXPECT_TRUE(graphics.BeginPath(this->memory_));  // anew
  EXPECT_FALSE(graphics.FillPath(this->memory_));
  EXPECT_EQ(this->lastError(), kErrorCanNotComplete);
  EXPECT_TRUE(graphics.EndPath(this->memory_));
  EXPECT_FALSE(graphics.EndPath(this->memory_));
  EXPECT_TRUE(graphics.FillPath(this->memory_));
  EXPECT_FALSE(graphics.FillPath(this->memory_));  // it is gone
  EXPECT_FALSE(graphics.BeginPath(nullptr));
  EXPECT_FALSE(graphics.EndPath(nullptr));
  EXPECT_FALSE(graphics.FillPath(nullptr));
}

TYPED_TEST_P(DrawingConformance, AShapeInsideAPathLeavesNoPixels) {
  Graphics& graphics = this->graphics();
  const std::vector<std::uint32_t> pixels = this->Drawn([&] {
    EXPECT_TRUE(graphics.BeginPath(this->memory_));
    EXPECT_TRUE(graphics.Rectangle(this->memory_, {0, 0, 4, 2}));
    EXPECT_TRUE(graphics.Ellipse(this->memory_, {0, 0, 4, 2}));
    const Point corners[] = {{0, 0}, {4, 0}, {4, 2}};
    EXPECT_TRUE(graphics.Polygon(this->memory_, corners, 3));
    EXPECT_TRUE(graphics.EndPath(this->memory_));
  });
  EXPECT_EQ(pixels, std::vector<std::uint32_t>(8));
}

TYPED_TEST_P(DrawingConformance, TextGoesIntoAPathInAFontOfItsOwn) {
  Graphics& graphics = this->graphics();
  const GdiObject font = graphics.CreateFontIndirectW(this->FontNamed(this->host_.knownFont()));
  const GdiObject before = graphics.SelectObject(this->memory_, font);
  EXPECT_NE(before, nullptr);
  const std::vector<std::uint32_t> pixels = this->Drawn([&] {
    EXPECT_TRUE(graphics.BeginPath(this->memory_));
    EXPECT_TRUE(graphics.ExtTextOutW(this->memory_, 0, 0, kTextOpaque, nullptr, u"Draft", 5));
    EXPECT_TRUE(graphics.ExtTextOutW(this->memory_, 0, 0, kTextOpaque, nullptr, u"", 0));
    EXPECT_TRUE(graphics.ExtTextOutW(this->memory_, 0, 0, kTextOpaque, nullptr, nullptr, 0));
    const Rect place = {0, 0, 4, 2};
    EXPECT_TRUE(graphics.ExtTextOutW(this->memory_, 0, 0, kTextOpaque | kTextRightToLeft, &place,
                                     u"Draft", 5));
    EXPECT_TRUE(graphics.EndPath(this->memory_));
  });
  EXPECT_EQ(pixels, std::vector<std::uint32_t>(8));
  EXPECT_TRUE(graphics.FillPath(this->memory_));
  EXPECT_FALSE(graphics.ExtTextOutW(nullptr, 0, 0, 0, nullptr, u"Draft", 5));
  EXPECT_EQ(graphics.SelectObject(this->memory_, before), font);
  EXPECT_TRUE(graphics.DeleteObject(font));
}

TYPED_TEST_P(DrawingConformance, APolygonHasTwoCornersAtLeast) {
  Graphics& graphics = this->graphics();
  const Point corners[] = {{0, 0}, {3, 0}, {3, 1}};
  EXPECT_FALSE(graphics.Polygon(this->memory_, corners, -1));
  EXPECT_FALSE(graphics.Polygon(this->memory_, corners, 1));
  EXPECT_TRUE(graphics.Polygon(this->memory_, corners, 2));
  EXPECT_FALSE(graphics.Polygon(nullptr, corners, 3));
  EXPECT_FALSE(graphics.Ellipse(nullptr, {0, 0, 1, 1}));
  EXPECT_TRUE(graphics.Ellipse(this->memory_, {1, 1, 0, 0}));  // in any order
}

// ---- Objects ------------------------------------------------------------------------------------

TYPED_TEST_P(DrawingConformance, BrushesAndFontsAreSelectedAndDeletedOnce) {
  Graphics& graphics = this->graphics();
  const GdiObject objects[] = {graphics.CreateSolidBrush(0x0000B4),
                               graphics.CreateBrushIndirect({kBrushSolid, 5, 0}),
                               graphics.CreateFontIndirectW(this->FontNamed(u"Nowhere Sans")),
                               graphics.CreateBrushIndirect({kBrushHollow, 0, 0})};
  for (const GdiObject object : objects) {
    ASSERT_NE(object, nullptr);
    const GdiObject before = graphics.SelectObject(this->memory_, object);
    EXPECT_NE(before, nullptr);
    EXPECT_EQ(graphics.SelectObject(this->memory_, before), object);
    EXPECT_EQ(graphics.SelectObject(nullptr, object), nullptr);
    EXPECT_TRUE(graphics.DeleteObject(object));
  }
  // The hollow brush may be the system's own, which stays.
  for (const GdiObject object : {objects[0], objects[1], objects[2]}) {
    EXPECT_FALSE(graphics.DeleteObject(object));
    EXPECT_EQ(graphics.SelectObject(this->memory_, object), nullptr);
  }
  EXPECT_EQ(graphics.CreateBrushIndirect({99, 0, 0}), nullptr);
  EXPECT_FALSE(graphics.DeleteObject(nullptr));
}

TYPED_TEST_P(DrawingConformance, ABrushFillsWithItsColourAndAHollowOneWithNothing) {
  Graphics& graphics = this->graphics();
  const GdiObject solid = graphics.CreateSolidBrush(0x00CC9966);  // blue first
  const GdiObject indirect = graphics.CreateBrushIndirect({kBrushSolid, 0x00030201, 9});
  const GdiObject hollow = graphics.CreateBrushIndirect({kBrushHollow, 0xFFFFFF, 0});
  const std::vector<std::uint32_t> pixels = this->Drawn([&] {
    EXPECT_TRUE(graphics.FillRect(this->memory_, {0, 0, 2, 1}, solid));
    EXPECT_TRUE(graphics.FillRect(this->memory_, {2, 0, 3, 1}, indirect));
    EXPECT_TRUE(graphics.FillRect(this->memory_, {1, 0, 4, 2}, hollow));
  });
  EXPECT_EQ(pixels, (std::vector<std::uint32_t>{0, 0, 0, 0, 0x6699CC, 0x6699CC, 0x010203, 0}));
  for (const GdiObject brush : {solid, indirect, hollow}) {
    EXPECT_TRUE(graphics.DeleteObject(brush));
  }
}

TYPED_TEST_P(DrawingConformance, ATextIsAsLongAsItsCharactersAndNeverWithoutHeight) {
  Graphics& graphics = this->graphics();
  const GdiObject font = graphics.CreateFontIndirectW(this->FontNamed(this->host_.knownFont()));
  const GdiObject before = graphics.SelectObject(this->memory_, font);
  Size one = {};
  Size five = {};
  Size none = {-7, -7};
  EXPECT_TRUE(graphics.GetTextExtentPointW(this->memory_, u"mmmmm", 1, &one));
  EXPECT_TRUE(graphics.GetTextExtentPointW(this->memory_, u"mmmmm", 5, &five));
  EXPECT_TRUE(graphics.GetTextExtentPointW(this->memory_, u"", 0, &none));
  EXPECT_GT(one.width, 0);
  EXPECT_EQ(five.width, 5 * one.width);
  EXPECT_EQ(none.width, 0);
  EXPECT_GE(one.height, 20);
  EXPECT_EQ(five.height, one.height);
  EXPECT_FALSE(graphics.GetTextExtentPointW(nullptr, u"m", 1, &one));
  EXPECT_FALSE(graphics.GetTextExtentPointW(this->memory_, u"m", -1, &one));
  EXPECT_EQ(graphics.SelectObject(this->memory_, before), font);
  EXPECT_TRUE(graphics.DeleteObject(font));
}

// ---- The computer's fonts -----------------------------------------------------------------------

TYPED_TEST_P(DrawingConformance, AnUnknownFaceIsNotTold) {
  int answer = 0;
  EXPECT_TRUE(this->Tell(this->FontNamed(u"Nowhere Sans"), 1000, &answer).fonts.empty());
  EXPECT_EQ(answer, 1);
}

TYPED_TEST_P(DrawingConformance, AKnownFaceIsToldInEachOfItsCharacterSets) {
  int answer = 0;
  const std::u16string face = this->host_.knownFont();
  const ToldFonts told = this->Tell(this->FontNamed(face), 1000, &answer);
  EXPECT_EQ(answer, 7);  // what the callback said last
  EXPECT_GT(told.fonts.size(), 1U);
  EXPECT_TRUE(told.areOutlines);
  for (const LogFont& font : told.fonts) {
    EXPECT_EQ(std::u16string(font.lfFaceName).size(), face.size());
  }
  LogFont western = this->FontNamed(face);
  western.lfCharSet = 0;
  for (const LogFont& font : this->Tell(western, 1000, &answer).fonts) {
    EXPECT_EQ(font.lfCharSet, 0);
  }
}

TYPED_TEST_P(DrawingConformance, ACallbackEndsTheTellingOfFonts) {
  int answer = 7;
  EXPECT_EQ(this->Tell(this->FontNamed(this->host_.knownFont()), 1, &answer).fonts.size(), 1U);
  EXPECT_EQ(answer, 0);
}

TYPED_TEST_P(DrawingConformance, NoFaceStandsForAllOfThem) {
  int answer = 0;
  EXPECT_GT(this->Tell(this->FontNamed(u""), 1000, &answer).fonts.size(), 1U);
  EXPECT_EQ(answer, 7);
}

// ---- Pictures -----------------------------------------------------------------------------------

TYPED_TEST_P(DrawingConformance, RowsOfMemoryKeepTheCommonBits) {
  Graphics& graphics = this->graphics();
  const GdiObject brush = graphics.CreateSolidBrush(0x000FF0F0);
  const std::array<std::uint8_t, 8> row = {0xFF, 0xFF, 0xFF, 0x81, 0x42, 0x3C, 0, 0};
  const BitmapInfo info = this->Info(2, 1);
  const std::vector<std::uint32_t> pixels = this->Drawn([&] {
    EXPECT_TRUE(graphics.FillRect(this->memory_, {0, 0, 4, 2}, brush));
    EXPECT_NE(graphics.StretchDIBits(this->memory_, {1, 0, 3, 1}, {0, 0, 2, 1}, row.data(),
                                     info.header, kRasterAnd),
              0);
    EXPECT_NE(graphics.StretchDIBits(this->memory_, {3, 0, 4, 1}, {0, 0, 1, 1}, row.data(),
                                     info.header, kRasterCopy),
              0);
  });
  EXPECT_TRUE(graphics.DeleteObject(brush));
  // 0xF0F00F, and what it has in common with white and with 0x3C4281.
  EXPECT_EQ(pixels, (std::vector<std::uint32_t>{0xF0F00F, 0xF0F00F, 0xF0F00F, 0xF0F00F, 0xF0F00F,
                                                0xF0F00F, 0x304001, 0xFFFFFF}));
}

TYPED_TEST_P(DrawingConformance, ThePictureOfAFileIsLoadedWhateverItsDepth) {
  struct Depth {
    PictureFile file;
    std::uint32_t first;  // pixel, 0x00RRGGBB
  };
  const Depth depths[] = {
      {{.bits = 1, .colors = 2}, 0x203041},
      {{.bits = 4, .colors = 16}, 0x203048},
      {{.bits = 8, .colors = 200}, 0x2030C0},
      {{.bits = 24}, 0x808080},
      {{.bits = 32}, 0x808080},
  };
  Graphics& graphics = this->graphics();
  for (const Depth& depth : depths) {
    SCOPED_TRACE(depth.file.bits);
    const GdiObject bitmap = this->Loaded(depth.file.Bytes());
    ASSERT_NE(bitmap, nullptr);
    Size size = {};
    EXPECT_TRUE(graphics.GetBitmapSize(bitmap, &size));
    EXPECT_EQ(size, (Size{depth.file.width, depth.file.height}));
    EXPECT_EQ(this->PixelsOf(bitmap, size).front(), depth.first);
    EXPECT_TRUE(graphics.DeleteObject(bitmap));
  }
}

TYPED_TEST_P(DrawingConformance, TheFirstRowOfAFileIsTheLastOfThePicture) {
  std::string file = PictureFile{.bits = 24, .width = 1}.Bytes();
  file[54] = '\x11';  // blue of the first row
  const GdiObject bitmap = this->Loaded(file);
  ASSERT_NE(bitmap, nullptr);
  EXPECT_EQ(this->PixelsOf(bitmap, {1, 2}), (std::vector<std::uint32_t>{0x808011, 0x808080}));
  EXPECT_TRUE(this->graphics().DeleteObject(bitmap));
}

// Which pixels it has is up to the platform.
TYPED_TEST_P(DrawingConformance, AFileWhoseHeightIsBelowZeroHasAPicture) {
  const GdiObject bitmap = this->Loaded(PictureFile{.width = 5, .height = -3}.Bytes());
  Size size = {};
  EXPECT_TRUE(this->graphics().GetBitmapSize(bitmap, &size));
  EXPECT_EQ(size, (Size{5, 3}));
  EXPECT_TRUE(this->graphics().DeleteObject(bitmap));
}

TYPED_TEST_P(DrawingConformance, RowsThatAFileLacksAreBlack) {
  const std::string whole = PictureFile{.bits = 24, .width = 2, .height = 3}.Bytes();
  const std::uint32_t grey = 0x808080;
  for (const std::size_t rows : {std::size_t{0}, std::size_t{1}, std::size_t{2}}) {
    SCOPED_TRACE(rows);
    const GdiObject bitmap = this->Loaded(whole.substr(0, 54 + 8 * rows));
    ASSERT_NE(bitmap, nullptr);
    std::vector<std::uint32_t> pixels(6);
    std::fill_n(pixels.begin(), 2 * rows, grey);
    EXPECT_EQ(this->PixelsOf(bitmap, {2, 3}), pixels);
    EXPECT_TRUE(this->graphics().DeleteObject(bitmap));
  }
}

TYPED_TEST_P(DrawingConformance, AFileWithoutAPictureIsNotLoaded) {
  Graphics& graphics = this->graphics();
  EXPECT_EQ(graphics.LoadImageW(u"C:\\nowhere\\picture.bmp", this->kLoadFlags), nullptr);
  EXPECT_EQ(this->Loaded(""), nullptr);
  EXPECT_EQ(this->Loaded("BM"), nullptr);
  EXPECT_EQ(this->Loaded(std::string(200, 'x')), nullptr);
  std::string noMark = PictureFile{}.Bytes();
  noMark[0] = 'X';
  EXPECT_EQ(this->Loaded(noMark), nullptr);
  std::string noHeader = PictureFile{}.Bytes();
  noHeader[14] = 0;  // its size
  EXPECT_EQ(this->Loaded(noHeader), nullptr);
  // Wider and higher than any picture, and than any memory.
  EXPECT_EQ(this->Loaded(PictureFile{.width = 65536, .height = 1}.Bytes().substr(0, 60)), nullptr);
  std::string huge = PictureFile{}.Bytes();
  huge.replace(20, 2, "\xFF\x7F").replace(24, 2, "\xFF\x7F");
  EXPECT_EQ(this->Loaded(huge), nullptr);
}

// ---- Words to a driver --------------------------------------------------------------------------

TYPED_TEST_P(DrawingConformance, AnUnknownWordToTheDriverIsNotAnswered) {
  std::array<char, 4> output = {'x', 'x', 'x', 'x'};
  EXPECT_EQ(this->graphics().ExtEscape(this->memory_, 20483, 0, nullptr, 0, nullptr), 0);
  EXPECT_EQ(this->graphics().ExtEscape(this->memory_, 20489, 0, nullptr, 4, output.data()), 0);
  EXPECT_EQ(output[0], 'x');
}

REGISTER_TYPED_TEST_SUITE_P(
    DrawingConformance, AModeTellsTheOneBeforeAndRefusesWhatItDoesNotKnow,
    AlignmentAndColoursTellTheOnesBefore, AContextThatCountsInPixelsKeepsItsExtents,
    OriginsAreToldAndMovePoints, APathIsBegunEndedAndFilledInThisOrder,
    AShapeInsideAPathLeavesNoPixels, TextGoesIntoAPathInAFontOfItsOwn, APolygonHasTwoCornersAtLeast,
    BrushesAndFontsAreSelectedAndDeletedOnce, ABrushFillsWithItsColourAndAHollowOneWithNothing,
    ATextIsAsLongAsItsCharactersAndNeverWithoutHeight, AnUnknownFaceIsNotTold,
    AKnownFaceIsToldInEachOfItsCharacterSets, ACallbackEndsTheTellingOfFonts,
    NoFaceStandsForAllOfThem, RowsOfMemoryKeepTheCommonBits,
    ThePictureOfAFileIsLoadedWhateverItsDepth, TheFirstRowOfAFileIsTheLastOfThePicture,
    AFileWhoseHeightIsBelowZeroHasAPicture, RowsThatAFileLacksAreBlack,
    AFileWithoutAPictureIsNotLoaded, AnUnknownWordToTheDriverIsNotAnswered);

}  // namespace ostrel
