// What becomes of a job whose render driver fails escapes, or answers them in part: nothing is made
// of an escape's result, only of what stands in the words that it was given to fill.
#include "job/job_stage.h"
#include "job/page_stamp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrel {
namespace {

using test::JobStage;
using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

using Codes = std::set<std::int32_t>;
using Lines = std::vector<std::string>;

// What an escape that fails may answer: it isn't known, or it couldn't be done.
constexpr int kFailures[] = {0, -1};

Lines OperationsOfAPage(const JobStage& stage) {
  EXPECT_FALSE(stage.Escapes().empty());
  return stage.Operations();
}

// ---- Commands -----------------------------------------------------------------------------------

TEST(FailedCommands, LeaveTheStampAndItsEndsAsTheyAre) {
  JobStage whole;
  whole.watermark = test::RepeatedText();
  EXPECT_EQ(whole.EndPage(), 1);
  const Lines operations = OperationsOfAPage(whole);
  EXPECT_THAT(whole.Escapes(), Contains(20483));
  for (const Codes& codes :
       {Codes{20482}, Codes{20483}, Codes{20484}, Codes{20482, 20483, 20484}}) {
    for (const int failure : kFailures) {
      JobStage stage;
      stage.watermark = test::RepeatedText();
      for (const std::int32_t code : codes) {
        stage.escapeResult[code] = failure;
      }
      EXPECT_EQ(stage.EndPage(), 1);
      EXPECT_EQ(OperationsOfAPage(stage), operations) << *codes.begin();
      EXPECT_EQ(stage.Escapes().back(), 20484) << *codes.begin();
    }
  }
}

TEST(FailedCommands, AtThePagesStartAreHandled) {
  for (const int failure : kFailures) {
    JobStage stage;
    stage.escapeResult[20486] = failure;
    EXPECT_EQ(stage.Raise(6), 1) << failure;
    EXPECT_THAT(stage.Escapes(), ElementsAre(20486)) << failure;
  }
}

TEST(FailedCommands, WithTheComputersNameKeepNothingFromTheMonitor) {
  for (const int failure : kFailures) {
    JobStage stage;
    stage.OpenMonitor();
    stage.escapeResult[20498] = failure;
    EXPECT_EQ(stage.StartDoc(), 1) << failure;
    EXPECT_THAT(stage.Escapes(), ElementsAre(20498)) << failure;
    EXPECT_THAT(stage.monitorMessages, SizeIs(2)) << failure;
  }
}

// ---- Questions ----------------------------------------------------------------------------------

TEST(FailedQuestions, ThatFilledTheRecordStampThePage) {
  for (const int failure : kFailures) {
    JobStage stage;
    stage.watermark.PageWMIndex = 1;
    stage.escapeResult[20481] = failure;
    EXPECT_EQ(stage.EndPage(), 1) << failure;
    EXPECT_THAT(stage.Escapes(), Contains(20482)) << failure;
  }
}

TEST(FailedQuestions, ThatFilledTheForbiddingWordForbidTheStamp) {
  for (const int failure : kFailures) {
    JobStage stage;
    stage.watermark.PageWMIndex = 1;
    stage.forbidden = 1;
    stage.escapeResult[20485] = failure;
    EXPECT_EQ(stage.EndPage(), 1) << failure;
    EXPECT_THAT(stage.Escapes(), ElementsAre(20481, 20492, 20485)) << failure;
  }
}

// The page's state matters to a text that is too long for its tile.
Lines StampOfLongText(std::int32_t pageState, int result) {
  JobStage stage;
  stage.MakeLettersWide();
  stage.watermark = test::RepeatedText();
  stage.pageState = pageState;
  stage.escapeResult[20492] = result;
  EXPECT_EQ(stage.EndPage(), 1);
  return stage.Stamp();
}

TEST(FailedQuestions, ThatFilledThePagesStateMoveTheText) {
  const Lines moved = StampOfLongText(1, 1);
  ASSERT_NE(moved, StampOfLongText(0, 1));
  for (const int failure : kFailures) {
    EXPECT_EQ(StampOfLongText(1, failure), moved) << failure;
  }
}

// ---- Short answers ------------------------------------------------------------------------------

// Two bytes are the index; all that the stamp is made of besides is zero.
TEST(ShortAnswers, ToTheRecordStampWhatTheyHold) {
  JobStage stage;
  stage.watermark = test::RepeatedText();
  stage.answerBytes[20481] = 2;
  EXPECT_EQ(stage.EndPage(), 1);
  const Lines stamp = stage.Stamp();

  WatermarkData indexAlone = {};
  indexAlone.PageWMIndex = 1;
  stage.device.operations.clear();
  DrawPrintStamp(stage.hdc, {0, 0, 4960, 7015}, indexAlone, 0, 1.0, {4960, 7015});
  EXPECT_EQ(stamp, stage.Operations());

  stage.answerBytes.clear();
  stage.device.operations.clear();
  EXPECT_EQ(stage.EndPage(), 1);
  EXPECT_NE(stamp, stage.Stamp());
}

TEST(ShortAnswers, OfHalfTheIndexAreAnIndex) {
  JobStage stage;
  stage.watermark.PageWMIndex = 0x0100;
  stage.answerBytes[20481] = 1;
  EXPECT_EQ(stage.EndPage(), 1);
  EXPECT_THAT(stage.Escapes(), ElementsAre(20481, 20492, 20485));
  stage.device.operations.clear();
  stage.watermark.PageWMIndex = 1;
  EXPECT_EQ(stage.EndPage(), 1);
  EXPECT_THAT(stage.Escapes(), Contains(20482));
}

TEST(ShortAnswers, OfOneByteForbidTheStamp) {
  JobStage stage;
  stage.watermark.PageWMIndex = 1;
  stage.forbidden = 1;
  stage.answerBytes[20485] = 1;
  EXPECT_EQ(stage.EndPage(), 1);
  EXPECT_THAT(stage.Escapes(), ElementsAre(20481, 20492, 20485));
}

}  // namespace
}  // namespace ostrel
