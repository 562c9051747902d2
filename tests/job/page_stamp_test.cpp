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

// All that can be put back, in a context whose every state is another one than usual.
TEST_F(PageStamp, StatesOfTheCaller_AreAllPutBack) {
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
  const headless::DrawingState before = scene_.State();
  for (const std::int16_t type : std::initializer_list<std::int16_t>{0, 1, 2}) {
    for (const std::int16_t border : std::initializer_list<std::int16_t>{0, 1, 2}) {
      scene_.record.PageWMFlag = type;
      scene_.record.PageWMBorder = border;
      scene_.Stamp();
      EXPECT_EQ(scene_.State(), before) << type << ", " << border;
    }
  }
  graphics.DeleteDC(scene_.hdc);
  EXPECT_TRUE(graphics.DeleteObject(font));
  EXPECT_TRUE(graphics.DeleteObject(brush));
}

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
  scene_.device.operations.clear();
  DrawPrintStamp(scene_.hdc, scene_.page, scene_.record, 0, 1.0, {1, -7});
  EXPECT_EQ(scene_.device.operations.size(),
            static_cast<std::size_t>(std::ranges::count(lines, '\n')));
}

// ---- Texts that are too long for a tile ---------------------------------------------------------

struct LongTextRow {
  const char* name;
  std::int32_t width;  // of a character
  std::int32_t height;
  std::int32_t state;
  const char16_t* text;
  const char16_t* drawn;
};
// clang-format off
const LongTextRow kLongTexts[] = {
    // Name, Character's width, height, State, Text, Drawn
    {"AtTheLimit",                6000,   100, 1, u"ABCD",  u"ABCD"},
    {"OneAbove",                  24001,  100, 0, u"ABC",   u"B"},
    {"OneAboveStopsAtOne",        24001,  100, 0, u"A",     u"A"},
    {"ShortenedTwice",            8000,   100, 0, u"ABCDEFG", u"CDE"},
    {"ShortenedAndMoved",         8000,   100, 1, u"ABCDEFG", u"DEE"},
    {"ShortenedInAnotherState",   8000,   100, 2, u"ABCDEFG", u"CDE"},
    {"EvenToNothing",             13000,  100, 1, u"AB",    u""},
    {"OneLeftIsMovedOntoItself",  13000,  100, 1, u"ABC",   u"B"},
    {"TooHighAtAnyLength",        10,   24001, 1, u"ABCDE", u"C"},
    {"HighAtTheLimit",            10,   24000, 1, u"ABCDE", u"ABCDE"},
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
      const bool isShortened = std::u16string_view(row.text).size() > operation.text.size();
      EXPECT_EQ(operation.numbers[0] == 0 && operation.numbers[1] == 0, isShortened);
    }
  }
  EXPECT_GT(texts, 0U);
}

INSTANTIATE_TEST_SUITE_P(Texts, LongText, testing::ValuesIn(kLongTexts), CaseName());

// ---- The words of a tile ------------------------------------------------------------------------

TEST_F(PageStamp, TilesOfARing_CountColumnsOutsideAndRowsInside) {
  scene_.record.PageWMRepeat = 1;
  scene_.record.PageWMBorder = 1;
  scene_.record.PageWMSize = 250;
  scene_.Stamp();
  std::vector<TileRegion> tiles;
  for (const DrawingOperation& operation : Of(DrawingCall::kExtEscape)) {
    ASSERT_EQ(operation.bytes.size(), sizeof(TileRegion));
    TileRegion tile = {};
    std::memcpy(&tile, operation.bytes.data(), sizeof(tile));
    tiles.push_back(tile);
  }
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
