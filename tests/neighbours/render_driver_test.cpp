#include "render_driver/render_driver.h"

#include "core/factory_watermarks.h"
#include "core/text.h"
#include "support/byte_record.h"

#include <array>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace ostrel::neighbours {
namespace {

using testing::ElementsAre;

class RenderDriverTest : public testing::Test {
 protected:
  RenderDriverTest() : driver_(job_, [this](Point origin) { origins_.push_back(origin); }) {}

  int Command(std::int32_t code) { return driver_.Escape(code, {}, {}); }
  // What a question is answered with; -99 for no answer.
  std::int32_t Ask(std::int32_t code) {
    std::int32_t answer = 77;
    const auto out = std::as_writable_bytes(std::span(&answer, 1));
    return driver_.Escape(code, {}, out) == 1 ? answer : -99;
  }
  // A cell of 300 by 200 pixels.
  void Cell(std::int32_t column, std::int32_t row, Point textOffset = {0, 0},
            std::int32_t margin = 0) {
    Tell({300, 200, column, row, 0, 0, textOffset.x, textOffset.y, margin});
  }
  void Tell(const TileRegion& region) {
    EXPECT_EQ(driver_.Escape(kEscapeTile, std::as_bytes(std::span(&region, 1)), {}), 1);
  }
  void StartPages(int count) {
    for (int i = 0; i < count; ++i) {
      Command(kEscapePageStarts);
    }
  }

  PrivateDevmode job_ = {};
  std::vector<Point> origins_;
  RenderDriver driver_;
};

TEST_F(RenderDriverTest, WatermarkIsTheJobsOwn) {
  job_.WatermarkData = kFactoryWatermarkRecords[kNoWatermark];
  job_.WatermarkData.PageWMIndex = 7;
  WatermarkData answer = {};
  EXPECT_EQ(driver_.Escape(kEscapeReadWatermark, {}, std::as_writable_bytes(std::span(&answer, 1))),
            1);
  EXPECT_EQ(std::memcmp(&answer, &job_.WatermarkData, sizeof(answer)), 0);
}

TEST_F(RenderDriverTest, AnswersOfAnotherSizeAreRefused) {
  std::array<std::byte, 1347> tooShort = {};
  EXPECT_EQ(driver_.Escape(kEscapeReadWatermark, {}, tooShort), 0);
  std::array<std::byte, 2> word = {};
  EXPECT_EQ(driver_.Escape(kEscapePageNumber, {}, word), 0);
  EXPECT_EQ(driver_.Escape(kEscapeTile, word, {}), 0);
  EXPECT_EQ(driver_.Escape(kEscapeComputerName, word, {}), 0);
  EXPECT_THAT(origins_, testing::IsEmpty());
}

TEST_F(RenderDriverTest, CodesOfNobodyAreUnknown) {
  for (const std::int32_t code : {0, 20480, 20487, 20488, 20490, 20499}) {
    EXPECT_EQ(Command(code), 0) << code;
  }
}

TEST_F(RenderDriverTest, PagesAreCountedByTheirStarts) {
  EXPECT_EQ(Ask(kEscapePageNumber), 0);
  StartPages(3);
  EXPECT_EQ(Ask(kEscapePageNumber), 3);
}

TEST_F(RenderDriverTest, StampOfTheFirstPageAloneIsForbiddenFromTheSecondOn) {
  job_.FirstPageOnly = 1;
  StartPages(1);
  EXPECT_EQ(Ask(kEscapeStampForbidden), 0);
  StartPages(1);
  EXPECT_EQ(Ask(kEscapeStampForbidden), 1);
}

TEST_F(RenderDriverTest, StampOfEveryPageIsNeverForbidden) {
  StartPages(4);
  EXPECT_EQ(Ask(kEscapeStampForbidden), 0);
}

TEST_F(RenderDriverTest, PageStateIsWhatItWasSetTo) {
  EXPECT_EQ(Ask(kEscapePageState), 0);
  driver_.pageState = 1;
  EXPECT_EQ(Ask(kEscapePageState), 1);
}

TEST_F(RenderDriverTest, ComputerNameEndsAtItsTerminator) {
  std::array<char16_t, kComputerNameBytes / 2> name = {};
  CopyText(name, u"DESK-7");
  EXPECT_EQ(driver_.Escape(kEscapeComputerName, std::as_bytes(std::span(name)), {}), 1);
  EXPECT_EQ(driver_.computerName(), u"DESK-7");
}

TEST_F(RenderDriverTest, StampsAreCountedWhileTheyAreDrawn) {
  EXPECT_EQ(Command(kEscapeStampBegins), 1);
  EXPECT_TRUE(driver_.isStamping());
  EXPECT_EQ(Command(kEscapeStampEnds), 1);
  EXPECT_FALSE(driver_.isStamping());
  EXPECT_EQ(driver_.stamps(), 1);
  EXPECT_THAT(origins_, ElementsAre(Point{0, 0}, Point{0, 0}));
}

TEST_F(RenderDriverTest, TextAndFrameOfACellBeginAtTheSamePlace) {
  // Margin 25, third column, second row: the text's words hold the margin three and two times, the
  // frame's two times and once, and once more apart. The text's own margin means nothing.
  Cell(2, 1, {75, 50}, 99);
  Cell(2, 1, {50, 25}, 25);
  EXPECT_THAT(origins_, ElementsAre(Point{675, 250}, Point{675, 250}));
  EXPECT_EQ(driver_.tiles(), 2);
}

TEST_F(RenderDriverTest, TextsWithoutFramesStandAtTheirCells) {
  Cell(0, 1);
  driver_.Escape(kEscapeTile, {}, {});
  Cell(1, 0);
  EXPECT_THAT(origins_, ElementsAre(Point{0, 200}, Point{0, 0}, Point{300, 0}));
}

TEST_F(RenderDriverTest, PictureStandsAtItsOffsets) {
  Tell({0, 0, 1, 2, 120, 340, 0, 0, 0});
  EXPECT_THAT(origins_, ElementsAre(Point{120, 340}));
}

TEST_F(RenderDriverTest, TextOfTheNextStampIsNoFrameOfTheLast) {
  Command(kEscapeStampBegins);
  Cell(0, 0, {0, 0}, 99);
  Command(kEscapeStampEnds);
  Command(kEscapeStampBegins);
  Cell(0, 0, {0, 0}, 99);
  EXPECT_EQ(origins_.back(), (Point{0, 0}));
}

}  // namespace
}  // namespace ostrel::neighbours
