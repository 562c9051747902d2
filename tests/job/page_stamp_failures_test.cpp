// Stamps in a world that fails, records of any bytes, and files that are no bitmaps: the job goes
// on, nothing is left behind, and the context is the application's again.
#include "job/stamp_stage.h"
#include "support/byte_record.h"
#include "support/case_name.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrel::test {
namespace {

using headless::DrawingCall;

// ---- One call after the other fails -------------------------------------------------------------

struct WalkRow {
  const char* name;
  void (*prepare)(StampScene& scene);
  std::size_t leastCalls;
};
const WalkRow kWalks[] = {
    {"Text", [](StampScene& scene) { scene.record.PageWMItalic = 1; }, 25},
    {"Stamps",
     [](StampScene& scene) {
       WatermarkData& record = scene.record;
       record.WMStampOn = record.WMStampDate = record.WMStampTime = record.WMStampPage = 1;
       record.WMStampComputer = record.WMStampUser = 1;
     },
     30},
    {"TransparentBox",
     [](StampScene& scene) {
       scene.record.PageWMTransparent = 1;
       scene.record.PageWMBorder = 2;
       scene.record.PageWMAngle = 30;
     },
     40},
    {"RepeatedRing",
     [](StampScene& scene) {
       scene.record.PageWMRepeat = 1;
       scene.record.PageWMBorder = 1;
       scene.record.PageWMSize = 300;
     },
     50},
    {"ShortenedText",
     [](StampScene& scene) {
       scene.record.PageWMRepeat = 1;
       scene.record.PageWMSize = 600;
       SetText(scene.record.PageWMText, u"ABCDEFGHIJKLMNOP");
       scene.pageState = 1;
     },
     30},
    {"OwnColour", [](StampScene& scene) { scene.record.WMGrayLevel = -1; }, 25},
    {"Bitmap",
     [](StampScene& scene) {
       scene.record.PageWMFlag = 2;
       scene.PutBitmap(40, 30);
     },
     12},
    {"RepeatedBitmap",
     [](StampScene& scene) {
       scene.record.PageWMFlag = 2;
       scene.record.PageWMRepeat = 1;
       scene.PutBitmap(400, 300);
     },
     20},
};

// The states that a failing call may leave changed are the one that it should have put back and,
// without the bitmap's file, the mapping.
std::size_t Differences(const headless::DrawingState& left, const headless::DrawingState& right) {
  std::size_t count = 0;
  const auto differ = [&count](const auto& a, const auto& b) { count += a == b ? 0U : 1U; };
  differ(left.mapping, right.mapping);
  differ(left.font, right.font);
  differ(left.brush, right.brush);
  differ(left.textColor, right.textColor);
  differ(left.backgroundColor, right.backgroundColor);
  differ(left.backgroundMode, right.backgroundMode);
  differ(left.rasterMode, right.rasterMode);
  differ(left.polyFillMode, right.polyFillMode);
  differ(left.stretchMode, right.stretchMode);
  differ(left.textAlign, right.textAlign);
  return count;
}

class StampFailureWalk : public testing::TestWithParam<WalkRow> {};

TEST_P(StampFailureWalk, AnyCallThatFails_LeavesNothingBehindAndTheStatesAsTheyWere) {
  std::size_t n = 1;
  std::size_t drawn = 0;
  for (bool fired = true; fired && !HasFailure(); ++n) {
    ASSERT_LT(n, 3000U);
    StampScene scene;
    GetParam().prepare(scene);
    World().graphics.SetWindowOrgEx(scene.hdc, 11, 12, nullptr);
    World().graphics.SetTextColor(scene.hdc, 0x123456);
    World().graphics.SetPolyFillMode(scene.hdc, kFillWinding);
    const headless::DrawingState before = scene.State();
    headless::FaultPlan& faults = scene.world.platform.faults;
    faults.StartTrace();
    faults.FailCall(n);
    scene.Stamp();
    fired = faults.fired();
    faults.Clear();
    SCOPED_TRACE(fired ? faults.trace().at(n - 1) : std::string("nothing fails"));
    EXPECT_EQ(scene.LiveObjects(), 0U);
    const std::size_t left = Differences(scene.State(), before);
    EXPECT_LE(left, fired ? 1U : 0U);
    drawn += scene.Count(DrawingCall::kFillPath) + scene.Count(DrawingCall::kStretchDIBits) > 0;
    // Letters are never drawn as letters.
    bool inPath = false;
    for (const headless::DrawingOperation& operation : scene.device.operations) {
      inPath = operation.call == DrawingCall::kBeginPath ||
               (inPath && operation.call != DrawingCall::kEndPath);
      EXPECT_TRUE(inPath || operation.call != DrawingCall::kExtTextOutW);
    }
  }
  EXPECT_GT(n, GetParam().leastCalls);
  EXPECT_GT(drawn, n / 3);
}

INSTANTIATE_TEST_SUITE_P(Stories, StampFailureWalk, testing::ValuesIn(kWalks), CaseName());

TEST(StampFailures, WithoutAFontOrABrush_NoTextIsDrawn) {
  for (const char* operation : {"CreateFontIndirectW", "CreateSolidBrush"}) {
    StampScene scene;
    scene.record.PageWMBorder = 1;
    scene.world.platform.faults.FailOperation(operation);
    scene.Stamp();
    EXPECT_EQ(scene.Count(DrawingCall::kFillPath), 0U) << operation;
    EXPECT_EQ(scene.Count(DrawingCall::kExtTextOutW), 0U) << operation;
  }
}

TEST(StampFailures, WithoutBrushesOfAnyColour_OnlyShadesAreDrawn) {
  for (const std::int16_t level : std::initializer_list<std::int16_t>{-1, 1}) {
    StampScene scene;
    scene.record.WMGrayLevel = level;
    scene.world.platform.faults.FailOperation("CreateBrushIndirect");
    scene.Stamp();
    EXPECT_EQ(scene.Count(DrawingCall::kExtTextOutW), level < 0 ? 0U : 1U) << level;
  }
}

TEST(StampFailures, EscapesThatAllFail_StopNothing) {
  StampScene scene;
  scene.record.PageWMRepeat = 1;
  scene.record.PageWMBorder = 2;
  std::istringstream lines(scene.Lines());
  std::string drawing;
  for (std::string line; std::getline(lines, line);) {
    drawing += line.starts_with("ExtEscape") ? "" : line + '\n';
  }
  scene.world.platform.faults.FailOperation("ExtEscape");
  EXPECT_EQ(scene.Lines(), drawing);
}

TEST(StampFailures, NoContext_IsNoCrash) {
  StampScene scene;
  DrawPrintStamp(nullptr, scene.page, scene.record, 0, 1.0, {});
  scene.record.PageWMFlag = 2;
  scene.PutBitmap(4, 4);
  DrawPrintStamp(nullptr, scene.page, scene.record, 0, 1.0, {});
  EXPECT_TRUE(scene.device.operations.empty());
  EXPECT_EQ(scene.LiveObjects(), 0U);
}

// ---- Bitmap files -------------------------------------------------------------------------------

class BitmapFiles : public testing::Test {
 protected:
  BitmapFiles() { scene_.record.PageWMFlag = 2; }

  int Draw() {
    scene_.device.operations.clear();
    const int result = DrawPrintBitmap(scene_.hdc, scene_.page, scene_.record);
    EXPECT_EQ(scene_.LiveObjects(), 0U);
    return result;
  }
  std::size_t Pictures() const { return scene_.Count(DrawingCall::kStretchDIBits); }

  StampScene scene_;
};

TEST_F(BitmapFiles, AGoodOne_IsDrawnWithItsPixels) {
  scene_.PutBitmap(3, 2);
  EXPECT_EQ(Draw(), 1);
  ASSERT_EQ(Pictures(), 1U);
  for (const headless::DrawingOperation& operation : scene_.device.operations) {
    if (operation.call == DrawingCall::kStretchDIBits) {
      EXPECT_EQ(operation.picture, (Size{3, 2}));
      ASSERT_EQ(operation.bytes.size(), 24U);
      const std::vector<std::byte> file = BitmapFile(3, 2);
      // Three pixels a row; what fills a row up says nothing.
      for (const std::size_t row : {0U, 12U}) {
        for (std::size_t i = row; i < row + 9; ++i) {
          EXPECT_EQ(operation.bytes[i], file[54 + i]) << i;
        }
      }
      EXPECT_EQ(operation.state.stretchMode, kStretchDeleteScans);
    }
  }
}

TEST_F(BitmapFiles, AreLoadedAsBitmapsLikeTheScreensAndReadInRowsOf24Bits) {
  const headless::HeadlessGraphics& graphics = scene_.world.platform.graphics;
  for (const Size size : {Size{3, 2}, Size{4, 5}, Size{5, 1}}) {
    scene_.PutBitmap(size.width, size.height);
    EXPECT_EQ(Draw(), 1);
    EXPECT_EQ(graphics.lastLoadFlags, 0x50U);
    ASSERT_TRUE(graphics.lastForm);
    EXPECT_EQ(graphics.lastForm->biSize, 44U);
    EXPECT_EQ(graphics.lastForm->biPlanes, 1);
    EXPECT_EQ(graphics.lastForm->biBitCount, 24);
    EXPECT_EQ(graphics.lastForm->biCompression, 0U);
    const std::uint32_t rowBytes = size.width == 5 ? 16 : 12;
    EXPECT_EQ(graphics.lastForm->biSizeImage, rowBytes * static_cast<std::uint32_t>(size.height));
  }
}

TEST_F(BitmapFiles, OfWhichThereAreNone_GiveZero) {
  SetText(scene_.record.PageWMFileName, u"");
  EXPECT_EQ(Draw(), 0);
  SetText(scene_.record.PageWMFileName, u"C:\\nowhere.bmp");
  EXPECT_EQ(Draw(), 0);
  std::ranges::fill(scene_.record.PageWMFileName, u'x');
  EXPECT_EQ(Draw(), 0);
  for (std::vector<std::byte> file :
       {std::vector<std::byte>{}, std::vector<std::byte>(2, std::byte{'B'}),
        std::vector<std::byte>(4000, std::byte{0x42})}) {
    scene_.PutFile(std::move(file));
    EXPECT_EQ(Draw(), 0);
    EXPECT_EQ(Pictures(), 0U);
  }
}

// The platform fills up rows that a file lacks.
TEST_F(BitmapFiles, CutAnywhere_DrawNothingOrAllTheirRows) {
  constexpr std::size_t kHeaders = 14 + 40;
  const std::vector<std::byte> whole = BitmapFile(5, 4);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    scene_.PutFile({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
    const int result = Draw();
    EXPECT_EQ(result, length < kHeaders ? 0 : 1) << length;
    EXPECT_EQ(Pictures(), static_cast<std::size_t>(result)) << length;
  }
}

TEST_F(BitmapFiles, TheScale_IsLookedAtBeforeTheFile) {
  scene_.record.PageWMScale = 1;
  SetText(scene_.record.PageWMFileName, u"C:\\nowhere.bmp");
  EXPECT_EQ(Draw(), 1);
  scene_.record.PageWMScale = -32768;
  EXPECT_EQ(Draw(), 1);
  scene_.record.PageWMScale = 2;
  EXPECT_EQ(Draw(), 0);
}

TEST_F(BitmapFiles, WhosePixelsCannotBeRead_AreDoneWithoutAMark) {
  scene_.PutBitmap(5, 4);
  for (const char* operation : {"HeapAlloc", "GetDIBits", "GetBitmapSize", "GetDC"}) {
    scene_.world.platform.faults.FailOperation(operation);
    EXPECT_EQ(Draw(), 1) << operation;
    EXPECT_EQ(Pictures(), 0U) << operation;
    scene_.world.platform.faults.Clear();
  }
  scene_.world.platform.graphics.mostRowsRead = 3;
  EXPECT_EQ(Draw(), 1);
  EXPECT_EQ(Pictures(), 0U);
}

TEST_F(BitmapFiles, TheStretchMode_IsPutBack) {
  World().graphics.SetStretchBltMode(scene_.hdc, 2);
  scene_.PutBitmap(5, 4);
  Draw();
  EXPECT_EQ(scene_.State().stretchMode, 2);
}

// ---- Records and pages of any kind --------------------------------------------------------------

constexpr std::int16_t kWords[] = {0, 1, 2, 3, 9, 10, 25, 36, 72, 100, 32767, -1, -90, -32768};
constexpr Rect kPages[] = {{0, 0, 0, 0},
                           {0, 0, 1, 1},
                           {0, 0, 4960, 7015},
                           {4960, 7015, 0, 0},
                           {0, 0, 2147483647, 2147483647},
                           {-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647},
                           {0, 0, -2147483647 - 1, -2147483647 - 1},
                           {5, 5, 4, 4}};

TEST(HostileStamps, RecordsOfRandomBytes_EndWithTheStatesAsTheyWere) {
  StampScene scene;
  scene.device.records = false;
  scene.PutBitmap(8, 8);
  World().graphics.SetWindowOrgEx(scene.hdc, 11, 12, nullptr);
  World().graphics.SetViewportOrgEx(scene.hdc, 13, 14, nullptr);
  World().graphics.SetTextColor(scene.hdc, 0x123456);
  World().graphics.SetPolyFillMode(scene.hdc, kFillWinding);
  World().graphics.SetStretchBltMode(scene.hdc, 2);
  constexpr std::uint32_t kRounds = 400;
  for (std::uint32_t seed = 0; seed < kRounds; ++seed) {
    SetBytes(scene.record, RandomBytes(sizeof(scene.record), seed));
    const auto word = [seed](std::uint32_t i) { return kWords[(seed / 3 + i * 5) % 14]; };
    scene.record.PageWMFlag = static_cast<std::int16_t>(seed % 3);
    scene.record.PageWMBorder = static_cast<std::int16_t>(seed % 4);
    scene.record.PageWMRepeat = static_cast<std::int16_t>(seed % 2);
    if (seed % 5 != 0) {
      scene.record.PageWMSize = word(0);
      scene.record.PageWMAngle = word(1);
      scene.record.PageWMScale = word(2);
      scene.record.PageWMPosition = word(3);
    }
    if (seed % 7 == 0) {
      SetText(scene.record.PageWMFileName, kBitmapPath);
    }
    scene.page = kPages[seed % std::size(kPages)];
    scene.pageState = static_cast<std::int32_t>(seed % 2);
    scene.scale = seed % 11 == 0 ? 1e18 : 1.0;
    const headless::DrawingState before = scene.State();
    scene.Stamp();
    headless::DrawingState after = scene.State();
    const bool isImage = scene.record.PageWMFlag == 2 && scene.record.PageWMScale >= 2;
    if (isImage && FieldText(scene.record.PageWMFileName) != kBitmapPath) {
      after.mapping = before.mapping;  // of a file that can't be opened it stays
    }
    ASSERT_EQ(after, before) << seed;
    ASSERT_EQ(scene.LiveObjects(), 0U) << seed;
  }
}

TEST(HostileStamps, MeasuresBeyondAllReason_EndToo) {
  StampScene scene;
  scene.device.records = false;
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  for (const Size size : {Size{0, 0}, Size{1, 1}, Size{0, 5}, Size{5, 0}, Size{kMost, kMost},
                          Size{kLeast, kLeast}, Size{kMost, 1}, Size{1, kLeast}, Size{-5, 7}}) {
    scene.world.platform.graphics.measureText =
        [size](const LogFont& /*font*/, std::u16string_view /*text*/) { return size; };
    for (const Rect& page : kPages) {
      scene.page = page;
      for (int choice = 0; choice < 48; ++choice) {
        scene.record.PageWMBorder = static_cast<std::int16_t>(choice % 3);
        scene.record.PageWMRepeat = static_cast<std::int16_t>(choice / 3 % 2);
        scene.record.PageWMItalic = static_cast<std::int16_t>(choice / 6 % 2);
        scene.record.PageWMAngle = kWords[static_cast<std::size_t>(choice) % 14];
        scene.record.PageWMSize = kWords[static_cast<std::size_t>(choice * 3) % 14];
        scene.record.PageWMPosition = static_cast<std::int16_t>(choice % 11);
        scene.Stamp();
        ASSERT_EQ(scene.LiveObjects(), 0U);
      }
    }
  }
}

}  // namespace
}  // namespace ostrel::test
