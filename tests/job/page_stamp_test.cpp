// What each record draws on a page, operation by operation, against the model in expected/.
#include "job/page_stamp.h"

#include "job/stamp_stage.h"
#include "support/case_name.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {
namespace {

using headless::DrawingCall;
using headless::DrawingOperation;

struct SequenceRow {
  const char* name;
  void (*prepare)(StampScene& scene);
  const char* lines;
};
const SequenceRow kSequences[] = {
#include "job/expected/stamp_sequences.inc"
};

class PageStampSequence : public testing::TestWithParam<SequenceRow> {};

TEST_P(PageStampSequence, DrawsWhatTheModelSays) {
  StampScene scene;
  GetParam().prepare(scene);
  EXPECT_EQ(scene.Lines(), GetParam().lines);
  EXPECT_EQ(scene.LiveObjects(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Records, PageStampSequence, testing::ValuesIn(kSequences), CaseName());

// ---- What a single look tells better ------------------------------------------------------------

class PageStamp : public testing::Test {
 protected:
  // The operations of one kind.
  std::vector<DrawingOperation> Of(DrawingCall call) const {
    std::vector<DrawingOperation> found;
    std::ranges::copy_if(
        scene_.device.operations, std::back_inserter(found),
        [call](const DrawingOperation& operation) { return operation.call == call; });
    return found;
  }
  std::u16string DrawnText() const {
    const auto texts = Of(DrawingCall::kExtTextOutW);
    return texts.empty() ? u"nothing" : texts.front().text;
  }

  // The words of the escapes that have some.
  std::vector<TileRegion> Tiles() const {
    std::vector<TileRegion> tiles;
    for (const DrawingOperation& operation : Of(DrawingCall::kExtEscape)) {
      TileRegion tile = {};
      if (operation.bytes.size() == sizeof(tile)) {
        std::memcpy(&tile, operation.bytes.data(), sizeof(tile));
        tiles.push_back(tile);
      }
    }
    return tiles;
  }

  StampScene scene_;
};

// 72 points are 655 tenths of a point of letters; at 600 dots an inch 5458 and a third.
TEST_F(PageStamp, Size72_IsWrittenIn546Pixels) {
  scene_.Stamp();
  const auto text = Of(DrawingCall::kExtTextOutW);
  ASSERT_EQ(text.size(), 1U);
  EXPECT_EQ(text[0].state.font.lfHeight, -546);
}

TEST_F(PageStamp, TextIsOnlyDrawnWithinAPath) {
  scene_.record.PageWMTransparent = 1;
  scene_.record.PageWMBorder = 1;
  scene_.Stamp();
  bool inPath = false;
  std::size_t shapes = 0;
  for (const DrawingOperation& operation : scene_.device.operations) {
    if (operation.call == DrawingCall::kBeginPath) {
      inPath = true;
    } else if (operation.call == DrawingCall::kEndPath) {
      inPath = false;
    } else if (operation.call == DrawingCall::kExtTextOutW ||
               operation.call == DrawingCall::kEllipse) {
      ++shapes;
      EXPECT_TRUE(inPath);
    }
  }
  EXPECT_EQ(shapes, 6U);
}

TEST_F(PageStamp, Fills_WindTextsAndLeaveRingsHollow) {
  scene_.record.PageWMBorder = 1;
  scene_.Stamp();
  const auto fills = Of(DrawingCall::kFillPath);
  ASSERT_EQ(fills.size(), 2U);
  EXPECT_EQ(fills[0].state.polyFillMode, kFillWinding);
  EXPECT_EQ(fills[1].state.polyFillMode, kFillAlternate);
  EXPECT_EQ(fills[0].state.brush, 0xD2D2D2U);
}

TEST_F(PageStamp, FillModeOfTheCaller_IsPutBackAfterEachFill) {
  World().graphics.SetPolyFillMode(scene_.hdc, kFillWinding);
  scene_.record.PageWMBorder = 2;
  scene_.record.PageWMTransparent = 1;
  scene_.Stamp();
  EXPECT_EQ(scene_.State().polyFillMode, kFillWinding);
}

TEST_F(PageStamp, TransparentTiles_StayBlackFromTheFirstSecondPassOn) {
  scene_.record.PageWMTransparent = 1;
  scene_.record.PageWMRepeat = 1;
  scene_.record.PageWMBorder = 1;
  scene_.record.PageWMSize = 200;
  scene_.Stamp();
  const auto fills = Of(DrawingCall::kFillPath);
  ASSERT_GT(fills.size(), 8U);
  EXPECT_EQ(fills[0].state.brush, 0xD2D2D2U);
  for (std::size_t i = 1; i < fills.size(); ++i) {
    EXPECT_EQ(fills[i].state.brush, 0U) << i;
  }
}

class PageStampStates : public PageStamp, public testing::WithParamInterface<bool> {};

// All that can be put back, in a context whose every state is another one than usual. With a device
// that takes the number of no raster operation, and with one that doesn't.
TEST_P(PageStampStates, OfTheCaller_AreAllPutBack) {
  const bool takesAnyRasterMode = GetParam();
  Graphics& graphics = World().graphics;
  LogFont wanted = {};
  wanted.lfHeight = -33;
  const GdiObject font = graphics.CreateFontIndirectW(wanted);
  const GdiObject brush = graphics.CreateSolidBrush(0x445566);
  graphics.SelectObject(scene_.hdc, font);
  graphics.SelectObject(scene_.hdc, brush);
  graphics.SetWindowOrgEx(scene_.hdc, 11, 12, nullptr);
  graphics.SetViewportOrgEx(scene_.hdc, 13, 14, nullptr);
  graphics.SetROP2(scene_.hdc, 7);
  graphics.SetTextAlign(scene_.hdc, 24);
  graphics.SetTextColor(scene_.hdc, 0x123456);
  graphics.SetBkColor(scene_.hdc, 0x654321);
  graphics.SetStretchBltMode(scene_.hdc, 4);
  scene_.PutBitmap(40, 30);
  scene_.world.platform.graphics.takesAnyRasterMode = takesAnyRasterMode;
  const headless::DrawingState before = scene_.State();
  for (const std::int16_t type : std::initializer_list<std::int16_t>{0, 1, 2}) {
    for (const std::int16_t border : std::initializer_list<std::int16_t>{0, 1, 2}) {
      scene_.record.PageWMFlag = type;
      scene_.record.PageWMBorder = border;
      scene_.device.operations.clear();
      scene_.Stamp();
      EXPECT_EQ(scene_.State(), before) << type << ", " << border;
      const auto texts = Of(DrawingCall::kExtTextOutW);
      EXPECT_EQ(texts.size(), type == 2 ? 0U : 1U);
      for (const DrawingOperation& text : texts) {
        EXPECT_EQ(text.state.rasterMode, takesAnyRasterMode ? 240 : 7);
      }
    }
  }
  graphics.DeleteDC(scene_.hdc);
  EXPECT_TRUE(graphics.DeleteObject(font));
  EXPECT_TRUE(graphics.DeleteObject(brush));
}

INSTANTIATE_TEST_SUITE_P(RasterModes, PageStampStates, testing::Bool());

TEST_F(PageStamp, ABitmapFileThatCannotBeOpened_LeavesTheMappingAndNoMark) {
  scene_.record.PageWMFlag = 2;
  scene_.record.PageWMRepeat = 1;
  SetText(scene_.record.PageWMFileName, u"C:\\nowhere.bmp");
  World().graphics.SetWindowOrgEx(scene_.hdc, 11, 12, nullptr);
  World().graphics.SetViewportOrgEx(scene_.hdc, 13, 14, nullptr);
  scene_.device.operations.clear();
  scene_.Stamp();
  EXPECT_EQ(scene_.device.operations.size(), 4U);
  EXPECT_EQ(scene_.State().mapping.windowOrigin, (Point{0, 0}));
  EXPECT_EQ(scene_.State().mapping.viewportOrigin, (Point{0, 0}));
}

TEST_F(PageStamp, ABitmapBelowTwoPercent_DrawsNothingAndPutsTheMappingBack) {
  scene_.record.PageWMFlag = 2;
  scene_.record.PageWMScale = 1;
  World().graphics.SetWindowOrgEx(scene_.hdc, 11, 12, nullptr);
  World().graphics.SetViewportOrgEx(scene_.hdc, 13, 14, nullptr);
  const headless::DrawingMapping before = scene_.State().mapping;
  scene_.Stamp();
  EXPECT_EQ(scene_.State().mapping, before);
  EXPECT_EQ(scene_.Count(DrawingCall::kStretchDIBits), 0U);
}

TEST_F(PageStamp, PageSize_HasNoInfluence) {
  const std::string lines = scene_.Lines();
  EXPECT_FALSE(lines.empty());
  for (const Size size : {Size{1, -7}, Size{0, 0}, Size{10000, 20000}}) {
    scene_.pageSize = size;
    EXPECT_EQ(scene_.Lines(), lines);
  }
}

// ---- Texts that are too long for a tile ---------------------------------------------------------

struct LongTextRow {
  const char* name;
  std::int32_t width;  // of a character
  std::int32_t height;
  std::int32_t state;
  const char16_t* text;
  const char16_t* drawn;
  bool isCut;
};
// clang-format off
const LongTextRow kLongTexts[] = {
    // Name, Character's width, height, State, Text, Drawn, Cut
    {"AtTheLimit",                6000,   100, 1, u"ABCD",    u"ABCD",  false},
    {"OneAbove",                  24001,  100, 0, u"ABC",     u"B",     true},
    {"OneCharacterAbove",         24001,  100, 0, u"A",       u"A",     true},
    {"OneCharacterAboveMoved",    24001,  100, 1, u"A",       u"A",     true},
    {"OneCharacterTooHigh",       10,   24001, 0, u"A",       u"A",     true},
    {"OneCharacterAtTheLimit",    24000,  100, 1, u"A",       u"A",     false},
    {"NothingTooHigh",            10,   24001, 0, u"",        u"",      true},
    {"ShortenedTwice",            8000,   100, 0, u"ABCDEFG", u"CDE",   true},
    {"ShortenedAndMoved",         8000,   100, 1, u"ABCDEFG", u"DEE",   true},
    {"ShortenedInAnotherState",   8000,   100, 2, u"ABCDEFG", u"CDE",   true},
    {"EvenToNothing",             13000,  100, 1, u"AB",      u"",      true},
    {"OneLeftIsMovedOntoItself",  13000,  100, 1, u"ABC",     u"B",     true},
    {"TooHighAtAnyLength",        10,   24001, 1, u"ABCDE",   u"C",     true},
    {"HighAtTheLimit",            10,   24000, 1, u"ABCDE",   u"ABCDE", false},
};
// clang-format on

class LongText : public testing::TestWithParam<LongTextRow> {};

TEST_P(LongText, Repeated_IsShortenedAtBothEnds) {
  const LongTextRow& row = GetParam();
  StampScene scene;
  scene.world.platform.graphics.measureText = [&row](const LogFont& /*font*/,
                                                     std::u16string_view text) {
    return Size{row.width * static_cast<std::int32_t>(text.size()), row.height};
  };
  SetText(scene.record.PageWMText, row.text);
  scene.record.PageWMRepeat = 1;
  scene.pageState = row.state;
  scene.Stamp();
  std::size_t texts = 0;
  for (const DrawingOperation& operation : scene.device.operations) {
    if (operation.call == DrawingCall::kExtTextOutW) {
      ++texts;
      EXPECT_EQ(operation.text, row.drawn);
      EXPECT_EQ(operation.numbers[0] == 0 && operation.numbers[1] == 0, row.isCut);
    }
  }
  EXPECT_GT(texts, 0U);
}

INSTANTIATE_TEST_SUITE_P(Texts, LongText, testing::ValuesIn(kLongTexts), CaseName());

// ---- The words of a tile ------------------------------------------------------------------------

// Letters of different widths: 24300 in all, 300 without both ends, 400 after the move, which
// nobody measures.
TEST_F(PageStamp, TilesOfAMovedText_AreAsWideAsBeforeTheMove) {
  scene_.world.platform.graphics.measureText = [](const LogFont& /*font*/,
                                                  std::u16string_view text) {
    Size size = {0, 100};
    for (const char16_t letter : text) {
      size.width += letter == u'a' ? 100 : letter == u'b' ? 200 : 12000;
    }
    return size;
  };
  SetText(scene_.record.PageWMText, u"WabW");
  scene_.record.PageWMRepeat = 1;
  for (const std::int32_t state : {0, 1}) {
    scene_.device.operations.clear();
    scene_.pageState = state;
    scene_.Stamp();
    EXPECT_EQ(DrawnText(), state == 1 ? u"bb" : u"ab");
    // Each tile tells of its text, then of a frame that it hasn't.
    EXPECT_EQ(Tiles().size(), (1U + 4960 / 300) * (1U + 7015 / 100));
    for (const TileRegion& tile : Tiles()) {
      EXPECT_EQ(tile.Width, 300);
      EXPECT_EQ(tile.Height, 100);
    }
  }
}

TEST_F(PageStamp, TilesOfARing_CountColumnsOutsideAndRowsInside) {
  scene_.record.PageWMRepeat = 1;
  scene_.record.PageWMBorder = 1;
  scene_.record.PageWMSize = 250;
  scene_.Stamp();
  const std::vector<TileRegion> tiles = Tiles();
  ASSERT_EQ(tiles.size(), Of(DrawingCall::kExtEscape).size());
  ASSERT_GE(tiles.size(), 4U);
  for (std::size_t i = 0; i < tiles.size(); i += 2) {
    const TileRegion& text = tiles[i];
    const TileRegion& frame = tiles[i + 1];
    EXPECT_EQ(text.Width, text.Height);
    EXPECT_EQ(text.Row, static_cast<std::int32_t>(i / 2) % (1 + 7015 / text.Height));
    EXPECT_EQ(text.Column, static_cast<std::int32_t>(i / 2) / (1 + 7015 / text.Height));
    // 25 times 250 / 36, which is 6; the text lies level.
    EXPECT_EQ(frame.Margin, 150);
    EXPECT_EQ(text.TextOffsetX, (text.Column + 1) * 150);
    EXPECT_EQ(text.TextOffsetY, (text.Row + 1) * 150);
    EXPECT_EQ(frame.TextOffsetX, frame.Column * 150);
    EXPECT_EQ(frame.TextOffsetY, frame.Row * 150);
    EXPECT_EQ(text.ImageOffsetX, 0);
    EXPECT_EQ(frame.ImageOffsetY, 0);
  }
}

}  // namespace
}  // namespace ostrel::test
