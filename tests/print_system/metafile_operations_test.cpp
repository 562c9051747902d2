// The reader of metafiles: what is drawn into a metafile of the real drawing and onto a page in
// memory gives the same lines.
#include "metafile_operations.h"

#include "platform/win32/native_types.h"
#include "platform/win32/win32_platform.h"
#include "print_system_fixture.h"
#include "support/fixed_metrics.h"

#include <array>
#include <functional>
#include <stdexcept>

namespace ostrel::print_system {
namespace {

using headless::DrawingCall;
using headless::DrawingOperation;

using Draw = std::function<void(Graphics&, DeviceContext)>;
using Lines = std::vector<std::string>;

Size HalfAsWideAsHigh(const LogFont& font, std::u16string_view text) {
  const std::int32_t height = font.lfHeight < 0 ? -font.lfHeight : font.lfHeight;
  return {static_cast<std::int32_t>(text.size()) * height / 2, height};
}

int AnswerThree(std::int32_t /*code*/, std::span<const std::byte> /*input*/,
                std::span<std::byte> /*output*/) {
  return 3;
}

std::vector<DrawingOperation> DrawnByTheSystem(const Draw& draw) {
  Metafile metafile(kTestPrinter);
  EXPECT_NE(metafile.native(), nullptr);
  test::FixedMetrics graphics(win32::SystemPlatform().graphics, HalfAsWideAsHigh);
  graphics.onRecord = [&](DeviceContext, const DrawingOperation& escape) {
    CommentEscape(metafile.native(), escape);
  };
  graphics.onEscape = AnswerThree;
  draw(graphics, metafile.context());
  return metafile.Operations();
}

std::vector<DrawingOperation> DrawnOnAPage(const Draw& draw) {
  const auto drawMeasured = [&](Platform& platform, DeviceContext page) {
    test::FixedMetrics graphics(platform.graphics, HalfAsWideAsHigh);
    draw(graphics, page);
  };
  return RecordedByMetafiles(
      DrawnInMemory({.page = {4960, 7016}, .onEscape = AnswerThree}, drawMeasured));
}

LogFont FontNamed(std::u16string_view face) {
  LogFont font = {};
  font.lfHeight = -546;
  font.lfEscapement = 450;
  font.lfOrientation = 450;
  font.lfWeight = 700;
  font.lfItalic = 1;
  font.lfCharSet = 204;
  font.lfOutPrecision = kOutTrueTypeOnly;
  face.copy(font.lfFaceName, kFaceNameUnits - 1);
  return font;
}

struct Case {
  const char* name;
  Draw draw;
  Lines lines;
};

void DrawStates(Graphics& graphics, DeviceContext page) {
  graphics.SetWindowOrgEx(page, 0, 0, nullptr);
  graphics.SetViewportOrgEx(page, 5, -6, nullptr);
  graphics.SetWindowExtEx(page, 4960, -7015, nullptr);
  graphics.SetViewportExtEx(page, 4960, -7015, nullptr);
  graphics.SetBkMode(page, 1);
  graphics.SetROP2(page, 9);
  graphics.SetTextAlign(page, 24);
  graphics.SetTextColor(page, 0x123456);
  graphics.SetBkColor(page, 0xFFFFFF);
  graphics.SetPolyFillMode(page, 2);
  graphics.SetStretchBltMode(page, 3);
}

void DrawObjects(Graphics& graphics, DeviceContext page) {
  const GdiObject objects[] = {
      graphics.CreateSolidBrush(0xB4B4B4), graphics.CreateBrushIndirect({1, 7, 0}),
      graphics.CreatePen(kPenSolid, 3, 0xFF), graphics.CreateFontIndirectW(FontNamed(u"Tahoma"))};
  for (const GdiObject object : objects) {
    const GdiObject before = graphics.SelectObject(page, object);
    graphics.SelectObject(page, before);
  }
  for (const GdiObject object : objects) {
    graphics.DeleteObject(object);
  }
}

void DrawPath(Graphics& graphics, DeviceContext page) {
  const GdiObject font = graphics.CreateFontIndirectW(FontNamed(u"Tahoma"));
  const GdiObject before = graphics.SelectObject(page, font);
  const Rect place = {0, 0, 4960, 7016};
  graphics.BeginPath(page);
  graphics.ExtTextOutW(page, 100, 200, kTextOpaque, nullptr, u"Draft \u0416", 7);
  graphics.ExtTextOutW(page, 100, 200, kTextOpaque | kTextRightToLeft, &place, u"Draft", 5);
  graphics.EndPath(page);
  graphics.FillPath(page);
  graphics.SelectObject(page, before);
  graphics.DeleteObject(font);
}

void DrawShapes(Graphics& graphics, DeviceContext page) {
  const std::array<Point, 4> small = {{{0, 0}, {100, 5}, {100, 50}, {-3, 50}}};
  const std::array<Point, 3> large = {{{0, 0}, {100000, 5}, {100, -70000}}};
  graphics.Ellipse(page, {10, 20, 110, 220});
  graphics.Ellipse(page, {110, 220, 10, 20});
  graphics.Ellipse(page, {10, 20, 10, 220});
  graphics.Rectangle(page, {1, 2, 30, 40});
  graphics.Polygon(page, small.data(), 4);
  graphics.Polygon(page, large.data(), 3);
}

void DrawPicture(Graphics& graphics, DeviceContext page) {
  const std::array<std::uint8_t, 16> rows = {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0};
  BitmapInfo info = {};
  info.header.biSize = sizeof(info);
  info.header.biWidth = 2;
  info.header.biHeight = 2;
  info.header.biPlanes = 1;
  info.header.biBitCount = 24;
  graphics.StretchDIBits(page, {10, 20, 210, 320}, {0, 0, 2, 2}, rows.data(), info.header,
                         kRasterCopy);
  graphics.StretchDIBits(page, {10, 20, 210, 320}, {1, 0, 2, 1}, rows.data(), info.header,
                         kRasterAnd);
}

void DrawEscapes(Graphics& graphics, DeviceContext page) {
  const std::array<std::uint8_t, 3> input = {1, 0xAB, 0};
  std::array<std::uint8_t, 4> output = {};
  EXPECT_EQ(graphics.ExtEscape(page, 20483, 3, input.data(), 0, nullptr), 3);
  EXPECT_EQ(graphics.ExtEscape(page, 20489, 0, nullptr, 4, output.data()), 3);
}

const std::vector<Case>& Cases() {
  static const std::vector<Case> cases = {
      {"States",
       DrawStates,
       {"SetWindowOrgEx(0, 0)", "SetViewportOrgEx(5, -6)", "SetWindowExtEx(4960, -7015)",
        "SetViewportExtEx(4960, -7015)", "SetBkMode(1)", "SetROP2(9)", "SetTextAlign(24)",
        "SetTextColor(1193046)", "SetBkColor(16777215)", "SetPolyFillMode(2)",
        "SetStretchBltMode(3)"}},
      {"Objects",
       DrawObjects,
       {"SelectObject(brush 11842740)", "SelectObject(brush 16777215)", "SelectObject(brush -1)",
        "SelectObject(brush 16777215)", "SelectObject(pen 255, 3)", "SelectObject(pen 0, 1)",
        "SelectObject(font -546, 0, 450, 450, 700, 1, 0, 0, 204, 7 \"Tahoma\")",
        "SelectObject(font 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 \"\")"}},
      {"Path",
       DrawPath,
       {"SelectObject(font -546, 0, 450, 450, 700, 1, 0, 0, 204, 7 \"Tahoma\")", "BeginPath()",
        "ExtTextOutW(100, 200, 2, \"Draft \\u0416\")",
        "ExtTextOutW(100, 200, 130, in 0, 0, 4960, 7016, \"Draft\")", "EndPath()", "FillPath()",
        "SelectObject(font 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 \"\")"}},
      {"Shapes",
       DrawShapes,
       {"Ellipse(10, 20, 110, 220)", "Ellipse(10, 20, 110, 220)", "Rectangle(1, 2, 30, 40)",
        "Polygon(0, 0; 100, 5; 100, 50; -3, 50)", "Polygon(0, 0; 100000, 5; 100, -70000)"}},
      {"Picture",
       DrawPicture,
       {"StretchDIBits(10, 20, 200, 300, 0, 0, 2, 2, 13369376)",
        "StretchDIBits(10, 20, 200, 300, 1, 0, 1, 1, 8913094)"}},
      {"Escapes", DrawEscapes, {"ExtEscape(20483, 0, 01ab00)", "ExtEscape(20489, 4)"}},
  };
  return cases;
}

TEST(MetafileOperations, MetafileAndMemoryTellTheSameLines) {
  for (const Case& row : Cases()) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(LinesOf(DrawnByTheSystem(row.draw)), row.lines);
    EXPECT_EQ(LinesOf(DrawnOnAPage(row.draw)), row.lines);
  }
}

TEST(MetafileOperations, APicturesRowsAreTheSame) {
  const std::vector<DrawingOperation> system = DrawnByTheSystem(DrawPicture);
  const std::vector<DrawingOperation> memory = DrawnOnAPage(DrawPicture);
  ASSERT_EQ(system.size(), memory.size());
  for (std::size_t i = 0; i < system.size(); ++i) {
    EXPECT_EQ(system[i].picture, memory[i].picture);
    EXPECT_EQ(system[i].bytes, memory[i].bytes);
  }
}

TEST(MetafileOperations, AModeThatIsRefusedIsInNeither) {
  const Draw draw = [](Graphics& graphics, DeviceContext page) {
    graphics.SetROP2(page, 240);
    graphics.SetROP2(page, 13);
    graphics.SetBkMode(page, 0);
    graphics.SetPolyFillMode(page, -1);
  };
  EXPECT_EQ(LinesOf(DrawnByTheSystem(draw)), (Lines{"SetROP2(13)"}));
  EXPECT_EQ(LinesOf(DrawnOnAPage(draw)), (Lines{"SetROP2(13)"}));
}

TEST(MetafileOperations, ARectangleIsFilledWithTheBrushThatIsSelectedForIt) {
  const Draw draw = [](Graphics& graphics, DeviceContext page) {
    const GdiObject brush = graphics.CreateSolidBrush(0x0000FF);
    graphics.FillRect(page, {1, 2, 31, 42}, brush);
    graphics.DeleteObject(brush);
  };
  const Lines lines = {"SelectObject(brush 255)", "FillRect(1, 2, 31, 42, 255)",
                       "SelectObject(brush 16777215)"};
  EXPECT_EQ(LinesOf(DrawnByTheSystem(draw)), lines);
  EXPECT_EQ(LinesOf(DrawnOnAPage(draw)), lines);
}

TEST(MetafileOperations, ARecordThatIsNoOperationIsAFailure) {
  Metafile metafile(kTestPrinter);
  EXPECT_TRUE(LineTo(metafile.native(), 10, 10));
  EXPECT_THROW(metafile.Operations(), std::runtime_error);
  EXPECT_THROW(OperationsOf(nullptr), std::runtime_error);
}

TEST(MetafileOperations, OtherCommentsArePassedOver) {
  Metafile metafile(kTestPrinter);
  const std::array<BYTE, 40> comment = {'E', 's', 'c'};
  EXPECT_TRUE(GdiComment(metafile.native(), 3, comment.data()));
  EXPECT_TRUE(GdiComment(metafile.native(), 40, comment.data()));
  EXPECT_TRUE(metafile.Operations().empty());
}

// ---- The same measures for both -----------------------------------------------------------------

TEST(FixedMetrics, TextsMeasureWhatATestSaysOnBothPlatforms) {
  const Draw draw = [](Graphics& graphics, DeviceContext page) {
    const GdiObject font = graphics.CreateFontIndirectW(FontNamed(u"Tahoma"));
    const GdiObject brush = graphics.CreateSolidBrush(0);
    Size size = {-7, -7};
    EXPECT_TRUE(graphics.GetTextExtentPointW(page, u"abc", 3, &size));
    EXPECT_EQ(size, (Size{0, 0}));  // in a font that wasn't made
    const GdiObject before = graphics.SelectObject(page, font);
    const GdiObject brushBefore = graphics.SelectObject(page, brush);
    EXPECT_TRUE(graphics.GetTextExtentPointW(page, u"abc", 3, &size));
    EXPECT_EQ(size, (Size{819, 546}));
    EXPECT_FALSE(graphics.GetTextExtentPointW(page, u"abc", -1, &size));
    EXPECT_FALSE(graphics.GetTextExtentPointW(page, nullptr, 0, &size));
    graphics.SelectObject(page, brushBefore);
    graphics.SelectObject(page, before);
    EXPECT_TRUE(graphics.GetTextExtentPointW(page, u"abc", 3, &size));
    EXPECT_EQ(size, (Size{0, 0}));
    EXPECT_TRUE(graphics.DeleteObject(font));
    EXPECT_TRUE(graphics.DeleteObject(brush));
  };
  DrawnByTheSystem(draw);
  DrawnOnAPage(draw);
}

}  // namespace
}  // namespace ostrel::print_system
