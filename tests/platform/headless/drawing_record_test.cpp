// What a printer's context writes down: each operation, what is in force with it, and what is not
// written down at all.
#include "platform/headless/printer_stage.h"

#include <array>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>

namespace ostrel::headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DrawingRecord : public PrinterStage {
 protected:
  // A way of calling an operation, which tells whether it succeeded, and the line of it.
  struct Call {
    const char* name;
    std::function<bool()> call;
    const char* line;
  };
  // clang-format off
  const std::vector<Call> calls_ = {
    {"SetWindowOrgEx",    [this] { return graphics_.SetWindowOrgEx(page_, 1, -2, nullptr); },       "SetWindowOrgEx(1, -2)"},
    {"SetViewportOrgEx",  [this] { return graphics_.SetViewportOrgEx(page_, 3, -4, nullptr); },     "SetViewportOrgEx(3, -4)"},
    {"SetWindowExtEx",    [this] { return graphics_.SetWindowExtEx(page_, 5, -6, nullptr); },       "SetWindowExtEx(5, -6)"},
    {"SetViewportExtEx",  [this] { return graphics_.SetViewportExtEx(page_, 7, -8, nullptr); },     "SetViewportExtEx(7, -8)"},
    {"SetBkMode",         [this] { return graphics_.SetBkMode(page_, 1) == 2; },                    "SetBkMode(1)"},
    {"SetROP2",           [this] { return graphics_.SetROP2(page_, 9) == 13; },                     "SetROP2(9)"},
    {"SetPolyFillMode",   [this] { return graphics_.SetPolyFillMode(page_, 2) == 1; },              "SetPolyFillMode(2)"},
    {"SetStretchBltMode", [this] { return graphics_.SetStretchBltMode(page_, 3) == 1; },            "SetStretchBltMode(3)"},
    {"SetTextAlign",      [this] { return graphics_.SetTextAlign(page_, 24) == 0; },                "SetTextAlign(24)"},
    {"SetTextColor",      [this] { return graphics_.SetTextColor(page_, 0x0000FF) == 0; },          "SetTextColor(255)"},
    {"SetBkColor",        [this] { return graphics_.SetBkColor(page_, 0x00FF00) == 0xFFFFFF; },     "SetBkColor(65280)"},
    {"BeginPath",         [this] { return graphics_.BeginPath(page_); },                            "BeginPath()"},
    {"EndPath",           [this] { return graphics_.EndPath(page_); },                              "EndPath()"},
    {"FillPath",          [this] { return graphics_.FillPath(page_); },                             "FillPath()"},
    {"ExtTextOutW",       [this] { return graphics_.ExtTextOutW(page_, 1, 2, 2, nullptr, u"a\"\u0105b", 3); }, "ExtTextOutW(1, 2, 2, \"a\"\\u0105\")"},
    {"Ellipse",           [this] { return graphics_.Ellipse(page_, {10, 20, 110, 120}); },          "Ellipse(10, 20, 110, 120)"},
    {"Polygon",           [this] { return graphics_.Polygon(page_, kCorners.data(), 3); },          "Polygon(0, 1; 20, -3; 40, 5)"},
    {"Rectangle",         [this] { return graphics_.Rectangle(page_, {4, 3, 2, 1}); },              "Rectangle(4, 3, 2, 1)"},
    {"FillRect",          [this] { return graphics_.FillRect(page_, {1, 2, 3, 4}, graphics_.GetStockObject(kWhiteBrush)); }, "FillRect(1, 2, 3, 4, 16777215)"},
    {"StretchDIBits",     [this] { return graphics_.StretchDIBits(page_, {1, 2, 31, 42}, {0, 1, 2, 3}, kRows.data(), InfoOf(2, 3).header, kRasterAnd) == 3; },
                                                                                                    "StretchDIBits(1, 2, 30, 40, 0, 1, 2, 2, 8913094)"},
    {"SelectObject",      [this] { return graphics_.SelectObject(page_, graphics_.GetStockObject(kNullBrush)) != nullptr; }, "SelectObject(brush -1)"},
  };
  // clang-format on

  static constexpr std::array<Point, 3> kCorners = {{{0, 1}, {20, -3}, {40, 5}}};
  static constexpr std::array<std::uint8_t, 24> kRows = {1, 2, 3, 4, 5, 6};
};

TEST_F(DrawingRecord, EachOperationIsOneLineWithItsArguments) {
  for (const Call& call : calls_) {
    SCOPED_TRACE(call.name);
    EXPECT_TRUE(call.call());
    EXPECT_THAT(TakeLines(), ElementsAre(call.line));
  }
}

TEST_F(DrawingRecord, AnOperationThatFailsIsNotWrittenDownAndChangesNothing) {
  for (const Call& call : calls_) {
    SCOPED_TRACE(call.name);
    platform_.faults.FailOperation(call.name, 1);
    EXPECT_FALSE(call.call());
    EXPECT_THAT(TakeLines(), IsEmpty());
    EXPECT_TRUE(call.call());  // from the same values, and in the same state of a path
    TakeLines();
  }
}

TEST_F(DrawingRecord, ATextWithAPlaceTellsIt) {
  const Rect place = {0, -1, 4960, 7016};
  EXPECT_TRUE(graphics_.ExtTextOutW(page_, 5, 6, 130, &place, u"\u05d0", 1));
  EXPECT_TRUE(graphics_.ExtTextOutW(page_, 0, 0, 2, nullptr, nullptr, 0));
  EXPECT_THAT(TakeLines(), ElementsAre("ExtTextOutW(5, 6, 130, in 0, -1, 4960, 7016, \"\\u05D0\")",
                                       "ExtTextOutW(0, 0, 2, \"\")"));
}

TEST_F(DrawingRecord, ASelectedObjectIsToldByWhatItIs) {
  LogFont log = FontOf(u"Arial", -545);
  log.lfEscapement = 450;
  log.lfOrientation = 451;
  log.lfWeight = 700;
  log.lfItalic = 1;
  log.lfUnderline = 2;
  log.lfStrikeOut = 3;
  log.lfCharSet = 204;
  log.lfOutPrecision = 7;
  log.lfWidth = 8;
  const GdiObject font = graphics_.CreateFontIndirectW(log);
  const GdiObject brush = graphics_.CreateSolidBrush(0xB4B4B4);
  const GdiObject hollow = graphics_.CreateBrushIndirect({1, 5, 0});
  const GdiObject pen = graphics_.CreatePen(kPenSolid, 3, 0xFF);
  for (const GdiObject object : {font, brush, hollow, pen}) {
    EXPECT_NE(graphics_.SelectObject(page_, object), nullptr);
  }
  EXPECT_EQ(graphics_.SelectObject(page_, graphics_.GetStockObject(8)), pen);    // NULL_PEN
  EXPECT_EQ(graphics_.SelectObject(page_, graphics_.GetStockObject(13)), font);  // SYSTEM_FONT
  EXPECT_EQ(graphics_.SelectObject(page_, nullptr), nullptr);
  EXPECT_THAT(TakeLines(),
              ElementsAre("SelectObject(font -545, 8, 450, 451, 700, 1, 2, 3, 204, 7 \"Arial\")",
                          "SelectObject(brush 11842740)", "SelectObject(brush -1)",
                          "SelectObject(pen 255, 3)", "SelectObject(pen -1, 0)",
                          "SelectObject(font 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 \"\")"));
}

TEST_F(DrawingRecord, AModeThatIsRefusedIsWrittenDownAndNotInForce) {
  EXPECT_EQ(graphics_.SetROP2(page_, 240), 0);
  ASSERT_EQ(device_.operations.size(), 1U);
  EXPECT_EQ(device_.operations[0].state.rasterMode, 13);
  EXPECT_THAT(TakeLines(), ElementsAre("SetROP2(240)"));
}

TEST_F(DrawingRecord, EveryOperationKeepsWhatWasInForce) {
  const GdiObject font = graphics_.CreateFontIndirectW(FontOf(u"Arial", -40));
  const GdiObject brush = graphics_.CreateSolidBrush(0x0A0B0C);
  const GdiObject pen = graphics_.CreatePen(kPenSolid, 5, 0x010203);
  EXPECT_TRUE(graphics_.BeginPath(page_));
  graphics_.SelectObject(page_, font);
  graphics_.SelectObject(page_, brush);
  graphics_.SelectObject(page_, pen);
  graphics_.SetWindowOrgEx(page_, 1, 2, nullptr);
  graphics_.SetViewportOrgEx(page_, 3, 4, nullptr);
  graphics_.MoveDeviceOrigin(page_, {5, 6});
  graphics_.SetBkMode(page_, 1);
  graphics_.SetROP2(page_, 9);
  graphics_.SetPolyFillMode(page_, 2);
  graphics_.SetStretchBltMode(page_, 3);
  graphics_.SetTextAlign(page_, 24);
  graphics_.SetTextColor(page_, 7);
  graphics_.SetBkColor(page_, 8);

  DrawingState expected;
  EXPECT_EQ(device_.operations.front().state, expected);
  expected.font = FontOf(u"Arial", -40);
  EXPECT_EQ(device_.operations[1].state, expected);  // its own change included
  expected.brush = 0x0A0B0C;
  expected.pen = DrawingPen{0x010203, 5};
  expected.mapping = {.windowOrigin = {1, 2}, .viewportOrigin = {3, 4}, .deviceOrigin = {5, 6}};
  expected.backgroundMode = 1;
  expected.rasterMode = 9;
  expected.polyFillMode = 2;
  expected.stretchMode = 3;
  expected.textAlign = 24;
  expected.textColor = 7;
  expected.backgroundColor = 8;
  EXPECT_EQ(device_.operations.back().state, expected);
}

TEST_F(DrawingRecord, WhatWasWrittenDownOutlivesObjectsAndContext) {
  const GdiObject brush = graphics_.CreateSolidBrush(0x0A0B0C);
  const GdiObject before = graphics_.SelectObject(page_, brush);
  graphics_.Ellipse(page_, {0, 0, 1, 1});
  graphics_.SelectObject(page_, before);
  EXPECT_TRUE(graphics_.DeleteObject(brush));
  EXPECT_TRUE(graphics_.DeleteDC(page_));
  EXPECT_EQ(device_.operations[1].state.brush, 0x0A0B0CU);
  EXPECT_EQ(device_.operations[2].state.brush, 0xFFFFFFU);
}

TEST_F(DrawingRecord, ObjectsAreCountedUntilTheyAreGivenBack) {
  const GdiObject brush = graphics_.CreateSolidBrush(1);
  const GdiObject hollow = graphics_.CreateBrushIndirect({1, 0, 0});
  const GdiObject font = graphics_.CreateFontIndirectW(FontOf(u"Arial", 20));
  EXPECT_EQ(graphics_.liveBrushes(), 2U);
  EXPECT_EQ(graphics_.liveFonts(), 1U);
  EXPECT_EQ(graphics_.liveContexts(), 1U);
  const GdiObject brushBefore = graphics_.SelectObject(page_, brush);
  const GdiObject fontBefore = graphics_.SelectObject(page_, font);
  for (const GdiObject held : {brush, font}) {
    EXPECT_FALSE(graphics_.DeleteObject(held));  // the page holds it
  }
  EXPECT_EQ(graphics_.SelectObject(page_, brushBefore), brush);
  EXPECT_EQ(graphics_.SelectObject(page_, fontBefore), font);
  for (const GdiObject object : {brush, hollow, font}) {
    EXPECT_TRUE(graphics_.DeleteObject(object));
    EXPECT_FALSE(graphics_.DeleteObject(object));
    EXPECT_EQ(graphics_.SelectObject(page_, object), nullptr);
  }
  EXPECT_EQ(graphics_.liveBrushes(), 0U);
  EXPECT_EQ(graphics_.liveFonts(), 0U);
  EXPECT_TRUE(graphics_.DeleteDC(page_));
  EXPECT_FALSE(graphics_.DeleteDC(page_));
  EXPECT_EQ(graphics_.liveContexts(), 0U);
}

TEST_F(DrawingRecord, ObjectsThatCannotBeMadeAreNull) {
  for (const char* name : {"CreateSolidBrush", "CreateBrushIndirect", "CreateFontIndirectW"}) {
    platform_.faults.FailOperation(name, 1);
  }
  EXPECT_EQ(graphics_.CreateSolidBrush(1), nullptr);
  EXPECT_EQ(graphics_.CreateBrushIndirect({kBrushSolid, 1, 0}), nullptr);
  EXPECT_EQ(graphics_.CreateFontIndirectW(FontOf(u"Arial", 20)), nullptr);
  EXPECT_EQ(graphics_.liveBrushes(), 0U);
  EXPECT_EQ(graphics_.liveFonts(), 0U);
}

// ---- The device ---------------------------------------------------------------------------------

TEST_F(DrawingRecord, APrinterTellsItsPageAndItsDots) {
  device_.dotsPerInch = 1200;
  EXPECT_EQ(graphics_.GetDeviceCaps(page_, kDeviceCapHorzRes), 4960);
  EXPECT_EQ(graphics_.GetDeviceCaps(page_, kDeviceCapVertRes), 7016);
  EXPECT_EQ(graphics_.GetDeviceCaps(page_, kDeviceCapLogPixelsX), 1200);
  EXPECT_EQ(graphics_.GetDeviceCaps(page_, kDeviceCapLogPixelsY), 1200);
  EXPECT_EQ(graphics_.GetDeviceCaps(page_, 9999), 0);
  platform_.faults.FailOperation("GetDeviceCaps", 1);
  EXPECT_EQ(graphics_.GetDeviceCaps(page_, kDeviceCapHorzRes), 0);
}

TEST_F(DrawingRecord, APrinterThatDoesNotRecordStillGoesByWhatWasSet) {
  device_.records = false;
  for (const Call& call : calls_) {
    EXPECT_TRUE(call.call()) << call.name;
  }
  EXPECT_EQ(graphics_.ExtEscape(page_, 7, 0, nullptr, 0, nullptr), 0);
  EXPECT_THAT(TakeLines(), IsEmpty());
  EXPECT_EQ(graphics_.SetPolyFillMode(page_, 1), 2);
}

TEST_F(DrawingRecord, OtherContextsWriteNothingDown) {
  const DeviceContext screen = graphics_.GetDC(nullptr);
  const DeviceContext memory = graphics_.CreateCompatibleDC(page_);
  for (const DeviceContext context : {screen, memory}) {
    EXPECT_TRUE(graphics_.Ellipse(context, {0, 0, 1, 1}));
    EXPECT_EQ(graphics_.ExtEscape(context, 20482, 0, nullptr, 0, nullptr), 0);
  }
  EXPECT_THAT(TakeLines(), IsEmpty());
}

TEST_F(DrawingRecord, AnEscapeGoesToTheDriverAndItsAnswerBack) {
  EXPECT_EQ(graphics_.ExtEscape(page_, 20482, 0, nullptr, 0, nullptr), 0);  // no driver listens
  std::vector<std::byte> heard;
  device_.onEscape = [&heard](std::int32_t code, std::span<const std::byte> input,
                              std::span<std::byte> output) {
    heard.assign(input.begin(), input.end());
    if (!output.empty()) {
      output.front() = std::byte{42};
    }
    return code == 20489 ? 3 : 0;
  };
  const std::array<std::uint8_t, 3> input = {0x0A, 0xB0, 0x00};
  std::array<std::uint8_t, 4> output = {};
  EXPECT_EQ(graphics_.ExtEscape(page_, 20489, 3, input.data(), 4, output.data()), 3);
  EXPECT_EQ(heard.size(), 3U);
  EXPECT_EQ(output[0], 42);
  EXPECT_EQ(graphics_.ExtEscape(page_, 20490, 3, nullptr, 4, nullptr), 0);
  EXPECT_TRUE(heard.empty());
  EXPECT_THAT(TakeLines(), ElementsAre("ExtEscape(20482, 0)", "ExtEscape(20489, 4, 0ab000)",
                                       "ExtEscape(20490, 4)"));
}

TEST_F(DrawingRecord, AnEscapeThatFailsIsBelow0AndUnheard) {
  bool isHeard = false;
  device_.onEscape = [&isHeard](auto...) {
    isHeard = true;
    return 1;
  };
  platform_.faults.FailOperation("ExtEscape", 1);
  EXPECT_EQ(graphics_.ExtEscape(page_, 20489, 0, nullptr, 0, nullptr), -1);
  EXPECT_EQ(graphics_.ExtEscape(page_, 20489, -1, nullptr, 0, nullptr), -1);
  EXPECT_EQ(graphics_.ExtEscape(page_, 20489, 0, nullptr, -1, nullptr), -1);
  EXPECT_EQ(graphics_.ExtEscape(nullptr, 20489, 0, nullptr, 0, nullptr), -1);
  EXPECT_FALSE(isHeard);
  EXPECT_THAT(TakeLines(), IsEmpty());
}

TEST_F(DrawingRecord, APictureIsKeptWithItsRows) {
  ASSERT_NE(graphics_.StretchDIBits(page_, {0, 0, 1, 1}, {0, 0, 2, 3}, kRows.data(),
                                    InfoOf(2, -3).header, kRasterCopy),
            0);
  const DrawingOperation& picture = device_.operations.front();
  EXPECT_EQ(picture.picture, (Size{2, -3}));
  ASSERT_EQ(picture.bytes.size(), kRows.size());
  EXPECT_EQ(std::memcmp(picture.bytes.data(), kRows.data(), kRows.size()), 0);
  device_.operations.clear();
  BitmapInfo other = InfoOf(2, 3);
  other.header.biBitCount = 32;
  constexpr std::uint32_t kInvert = 0x00550009;  // DSTINVERT
  EXPECT_EQ(graphics_.StretchDIBits(page_, {0, 0, 1, 1}, {0, 0, 2, 3}, kRows.data(), other.header,
                                    kRasterCopy),
            0);
  EXPECT_EQ(graphics_.StretchDIBits(page_, {0, 0, 1, 1}, {0, 0, 2, 3}, kRows.data(),
                                    InfoOf(2, 3).header, kInvert),
            0);
  EXPECT_THAT(TakeLines(), IsEmpty());
}

TEST_F(DrawingRecord, AShapeThatIsNoneIsNotWrittenDown) {
  EXPECT_FALSE(graphics_.Polygon(page_, nullptr, 3));
  EXPECT_FALSE(graphics_.Polygon(page_, kCorners.data(), 1));
  EXPECT_FALSE(graphics_.ExtTextOutW(page_, 0, 0, 0, nullptr, nullptr, 1));
  EXPECT_FALSE(graphics_.ExtTextOutW(page_, 0, 0, 0, nullptr, u"a", -1));
  EXPECT_FALSE(graphics_.EndPath(page_));
  EXPECT_FALSE(graphics_.FillPath(page_));
  EXPECT_FALSE(graphics_.FillRect(page_, {0, 0, 1, 1}, nullptr));
  EXPECT_THAT(TakeLines(), IsEmpty());
}

TEST_F(DrawingRecord, ATextIsMeasuredByItsFont) {
  Size size = {};
  EXPECT_TRUE(graphics_.GetTextExtentPointW(page_, u"abcd", 4, &size));
  EXPECT_EQ(size, (Size{24, 12}));
  const GdiObject font = graphics_.CreateFontIndirectW(FontOf(u"Arial", -100));
  graphics_.SelectObject(page_, font);
  EXPECT_TRUE(graphics_.GetTextExtentPointW(page_, u"abcd", 3, &size));
  EXPECT_EQ(size, (Size{150, 100}));
  graphics_.measureText = [](const LogFont& asked, std::u16string_view text) {
    return Size{asked.lfHeight, static_cast<std::int32_t>(text.size())};
  };
  EXPECT_TRUE(graphics_.GetTextExtentPointW(page_, u"abcd", 2, &size));
  EXPECT_EQ(size, (Size{-100, 2}));
  platform_.faults.FailOperation("GetTextExtentPointW", 1);
  EXPECT_FALSE(graphics_.GetTextExtentPointW(page_, u"abcd", 2, &size));
}

// ---- Mapping ------------------------------------------------------------------------------------

TEST_F(DrawingRecord, PointsOfTheDeviceBecomeCallersOnesByTheOriginsAlone) {
  graphics_.SetWindowOrgEx(page_, 10, 20, nullptr);
  graphics_.SetViewportOrgEx(page_, 100, 300, nullptr);
  graphics_.MoveDeviceOrigin(page_, {5000, 6000});
  std::array<Point, 2> points = {{{0, 0}, {7, 7}}};
  EXPECT_TRUE(graphics_.DPtoLP(page_, points.data(), 1));
  EXPECT_EQ(points[0], (Point{-90, -280}));
  EXPECT_EQ(points[1], (Point{7, 7}));
  platform_.faults.FailOperation("DPtoLP", 1);
  EXPECT_FALSE(graphics_.DPtoLP(page_, points.data(), 1));
  EXPECT_TRUE(graphics_.DPtoLP(page_, points.data(), -1));
  EXPECT_EQ(points[0], (Point{-90, -280}));
}

TEST(DrawingMapping, TheDevicesOriginMovesWhatIsDrawn) {
  const DrawingMapping mapping = {
      .windowOrigin = {10, 20}, .viewportOrigin = {100, 300}, .deviceOrigin = {5000, 6000}};
  EXPECT_EQ(mapping.ToDevice({11, 22}), (Point{5101, 6302}));
  EXPECT_EQ(mapping.ToCaller({101, 302}), (Point{11, 22}));
}

TEST(DrawingMapping, ExtentsScaleAndRoundHalvesAwayFromZero) {
  const DrawingMapping mapping = {.windowExtent = {2, -4}, .viewportExtent = {3, 6}};
  EXPECT_EQ(mapping.ToDevice({1, 1}), (Point{2, -2}));    // 1.5 and -1.5
  EXPECT_EQ(mapping.ToDevice({-1, 2}), (Point{-2, -3}));  // -1.5 and -3
  EXPECT_EQ(mapping.ToCaller({3, 6}), (Point{2, -4}));
  const DrawingMapping none = {.windowExtent = {0, 0}, .viewportExtent = {0, 0}};
  EXPECT_EQ(none.ToDevice({7, 8}), (Point{7, 8}));
  EXPECT_EQ(none.ToCaller({7, 8}), (Point{7, 8}));
}

// ---- Fonts and pictures -------------------------------------------------------------------------

TEST_F(DrawingRecord, FontsAreToldAsTheComputerHasThem) {
  graphics_.fonts = {{u"Alpha", {0, 161}}, {u"Beta", {204}}};
  std::vector<std::string> told;
  const auto tell = [](const LogFont* font, const void*, std::uint32_t, std::intptr_t word) {
    auto* lines = reinterpret_cast<std::vector<std::string>*>(word);
    const std::u16string face = font->lfFaceName;
    lines->push_back(std::string(face.begin(), face.end()) + ' ' + std::to_string(font->lfCharSet));
    return font->lfCharSet == 161 ? 0 : 5;
  };
  const auto ask = [&](std::u16string_view face, std::uint8_t charSet) {
    LogFont wanted = FontOf(face, 0);
    wanted.lfCharSet = charSet;
    told.clear();
    return graphics_.EnumFontFamiliesExW(page_, wanted, tell,
                                         reinterpret_cast<std::intptr_t>(&told));
  };
  EXPECT_EQ(ask(u"BETA", kDefaultCharSet), 5);
  EXPECT_THAT(told, ElementsAre("Beta 204"));
  EXPECT_EQ(ask(u"", kDefaultCharSet), 0);  // the second ends it
  EXPECT_THAT(told, ElementsAre("Alpha 0", "Alpha 161"));
  EXPECT_EQ(ask(u"Alpha", 161), 0);
  EXPECT_THAT(told, ElementsAre("Alpha 161"));
  EXPECT_EQ(ask(u"Gamma", kDefaultCharSet), 1);
  EXPECT_THAT(told, IsEmpty());
  platform_.faults.FailOperation("EnumFontFamiliesExW", 1);
  EXPECT_EQ(ask(u"Alpha", 0), 0);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(DrawingRecord, AFileIsLoadedOnlyAsAFile) {
  std::vector<std::byte> file(54 + 8);
  const std::array<std::uint16_t, 15> header = {
      0x4D42, 62, 0, 0, 0, 54, 0, 40, 0, 2, 0, static_cast<std::uint16_t>(-1), 0xFFFF, 1, 24};
  std::memcpy(file.data(), header.data(), sizeof(header));
  file[54] = std::byte{0x11};
  platform_.files.Put(u"C:\\a.bmp", file);
  constexpr std::uint32_t kFlags = kLoadFromFile | kLoadInDefaultSize;
  const GdiObject bitmap = graphics_.LoadImageW(u"C:\\A.bmp", kFlags);
  ASSERT_NE(bitmap, nullptr);
  EXPECT_EQ(graphics_.BitmapOf(bitmap)->size, (Size{2, 1}));
  EXPECT_EQ(graphics_.BitmapOf(bitmap)->pixels.ColorAt(0, 0), 0x00110000U);
  EXPECT_EQ(graphics_.LoadImageW(u"C:\\a.bmp", kLoadInDefaultSize), nullptr);
  EXPECT_EQ(graphics_.LoadImageW(nullptr, kFlags), nullptr);
  platform_.faults.FailOperation("LoadImageW", 1);
  EXPECT_EQ(graphics_.LoadImageW(u"C:\\a.bmp", kFlags), nullptr);
  EXPECT_EQ(graphics_.liveBitmaps(), 1U);
}

TEST_F(DrawingRecord, AFilesFirstRowComesFirstWhereItsHeightIsBelow0) {
  std::vector<std::byte> file(54 + 8);
  const std::array<std::uint16_t, 15> header = {
      0x4D42, 62, 0, 0, 0, 54, 0, 40, 0, 1, 0, static_cast<std::uint16_t>(-2), 0xFFFF, 1, 24};
  std::memcpy(file.data(), header.data(), sizeof(header));
  file[54] = std::byte{0x11};
  file[58] = std::byte{0x22};
  for (const std::size_t bytes : {std::size_t{62}, std::size_t{58}}) {
    platform_.files.Put(u"C:\\a.bmp", {file.begin(), file.begin() + static_cast<int>(bytes)});
    const GdiObject bitmap = graphics_.LoadImageW(u"C:\\a.bmp", kLoadFromFile);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(graphics_.BitmapOf(bitmap)->pixels.ColorAt(0, 0), 0x00110000U);
    EXPECT_EQ(graphics_.BitmapOf(bitmap)->pixels.ColorAt(0, 1), bytes == 62 ? 0x00220000U : 0U);
  }
}

}  // namespace
}  // namespace ostrel::headless
