// The text of a stamp: what is added to the record's own, in which order, and what is cut.
#include "job/stamp_text.h"

#include "job/stamp_stage.h"
#include "support/call_recorder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace ostrel::test {
namespace {

class StampTextItems : public testing::Test {
 protected:
  StampTextItems() {
    scene_.record.WMStampOn = 1;
    SetText(scene_.record.PageWMText, u"");
  }
  std::u16string Text() {
    const PageNumberForm form = {FieldText(scene_.record.WMStampFormat), false};
    return std::u16string(TextOfStamp(scene_.hdc, scene_.record, form).view());
  }
  void AddAll() {
    WatermarkData& record = scene_.record;
    record.WMStampDate = record.WMStampTime = record.WMStampPage = 1;
    record.WMStampComputer = record.WMStampUser = 1;
  }

  StampScene scene_;
};

TEST_F(StampTextItems, All_StandInTheirOrderWithABlankBetween) {
  AddAll();
  SetText(scene_.record.PageWMText, u"Copy");
  SetText(scene_.record.WMStampFormat, u"p. ");
  EXPECT_EQ(Text(), u"Copy 03/09/2026 14:05:07 p. 7 DESK-7 ada");
}

TEST_F(StampTextItems, WithoutTextBefore_TheFirstHasNoBlank) {
  AddAll();
  EXPECT_EQ(Text(), u"03/09/2026 14:05:07 7 DESK-7 ada");
}

TEST_F(StampTextItems, EachAlone_IsAddedByItsOwnWord) {
  WatermarkData& record = scene_.record;
  struct Row {
    std::int16_t WatermarkData::*word;
    const char16_t* text;
  };
  for (const Row& row :
       {Row{&WatermarkData::WMStampDate, u"03/09/2026"},
        Row{&WatermarkData::WMStampTime, u"14:05:07"}, Row{&WatermarkData::WMStampPage, u"7"},
        Row{&WatermarkData::WMStampComputer, u"DESK-7"},
        Row{&WatermarkData::WMStampUser, u"ada"}}) {
    for (const std::int16_t value : std::initializer_list<std::int16_t>{1, -1, 256}) {
      record.*row.word = value;
      EXPECT_EQ(Text(), row.text);
    }
    record.*row.word = 0;
  }
  EXPECT_EQ(Text(), u"");
}

TEST_F(StampTextItems, TurnedOff_NoneIsAdded) {
  AddAll();
  scene_.record.WMStampOn = 0;
  SetText(scene_.record.PageWMText, u"Copy");
  EXPECT_EQ(Text(), u"Copy");
}

TEST_F(StampTextItems, TheDate_IsInTheUsersForm) {
  scene_.record.WMStampDate = 1;
  scene_.world.platform.locale.dateFormat = u"dd.MM.yyyy";
  EXPECT_EQ(Text(), u"09.03.2026");
}

TEST_F(StampTextItems, DateAndTime_AreAskedForInTheUsersLocale) {
  scene_.record.WMStampDate = scene_.record.WMStampTime = 1;
  CallRecorder recorder(scene_.world);
  EXPECT_EQ(Text(), u"03/09/2026 14:05:07");
  EXPECT_EQ(recorder.calls, (Calls{"GetDateFormatW locale 1024, flags 0, no format",
                                   "GetTimeFormatW locale 1024, flags 8, HH:mm:ss"}));
}

TEST_F(StampTextItems, LongNames_FitIntoTheirBuffers) {
  std::u16string& computer = scene_.world.platform.system.computerName;
  scene_.record.WMStampComputer = 1;
  for (const std::size_t units : {200U, 255U}) {
    computer = std::u16string(units, u'c');
    EXPECT_EQ(Text(), computer);
  }
  computer = std::u16string(256, u'c');
  EXPECT_EQ(Text(), u"");
  scene_.record.WMStampComputer = 0;
  scene_.record.WMStampUser = 1;
  for (const std::size_t units : {900U, 999U, 1000U}) {
    scene_.SetUser(std::u16string(units, u'u').c_str());
    EXPECT_EQ(Text(), units < 1000 ? std::u16string(20, u'u') : u"");
  }
}

TEST_F(StampTextItems, TheUsersName_IsCutToTwentyCharacters) {
  scene_.record.WMStampUser = 1;
  scene_.SetUser(u"abcdefghijklmnopqrstuvwxyz0123");
  EXPECT_EQ(Text(), u"abcdefghijklmnopqrst");
  scene_.SetUser(u"abcdefghijklmnopqrst");
  EXPECT_EQ(Text(), u"abcdefghijklmnopqrst");
}

TEST_F(StampTextItems, ThePageNumber_FollowsItsTextWhateverThatIs) {
  scene_.record.WMStampPage = 1;
  SetText(scene_.record.WMStampFormat, u"%s%d%n");
  scene_.pageNumber = -2147483647 - 1;
  EXPECT_EQ(Text(), u"%s%d%n-2147483648");
}

TEST_F(StampTextItems, ThePageNumberInItsPlace_IsForOthersWhoAskForIt) {
  scene_.record.WMStampPage = 1;
  const StampText text = TextOfStamp(scene_.hdc, scene_.record, {u"Page %d of many", true});
  EXPECT_EQ(text.view(), u"Page 7 of many");
}

TEST_F(StampTextItems, APageNumberThatIsNotTold_IsZero) {
  scene_.record.WMStampPage = 1;
  scene_.device.onEscape = nullptr;
  EXPECT_EQ(Text(), u"0");
  scene_.world.platform.faults.FailOperation("ExtEscape");
  EXPECT_EQ(Text(), u"0");
}

TEST_F(StampTextItems, AFormatWithoutEnd_IsCutAtTheBuffersEnd) {
  scene_.record.WMStampPage = 1;
  std::ranges::fill(scene_.record.WMStampFormat, u'x');
  EXPECT_EQ(Text(), std::u16string(255, u'x'));
  SetText(scene_.record.WMStampFormat, std::u16string(254, u'x'));
  scene_.pageNumber = 42;
  EXPECT_EQ(Text(), std::u16string(254, u'x') + u"4");
}

TEST_F(StampTextItems, TextsWithoutEnd_StayWithinTheirField) {
  std::ranges::fill(scene_.record.PageWMText, u'y');
  EXPECT_EQ(Text(), std::u16string(65, u'y'));
}

TEST_F(StampTextItems, TogetherTooLong_AreCutAt255) {
  AddAll();
  std::ranges::fill(scene_.record.PageWMText, u'y');
  std::ranges::fill(scene_.record.WMStampFormat, u'x');
  const std::u16string text = Text();
  EXPECT_EQ(text.size(), 255U);
  EXPECT_EQ(text.substr(0, 87), std::u16string(65, u'y') + u" 03/09/2026 14:05:07 x");
  EXPECT_EQ(text.back(), u'x');
}

// What can't be had leaves no blank behind.
TEST_F(StampTextItems, ItemsThatCannotBeHad_AreLeftOut) {
  struct Row {
    const char* operation;
    const char16_t* text;
  };
  AddAll();
  SetText(scene_.record.PageWMText, u"Copy");
  for (const Row& row : {Row{"GetDateFormatW", u"Copy 14:05:07 7 DESK-7 ada"},
                         Row{"GetTimeFormatW", u"Copy 03/09/2026 7 DESK-7 ada"},
                         Row{"GetComputerNameW", u"Copy 03/09/2026 14:05:07 7 ada"},
                         Row{"GetUserNameW", u"Copy 03/09/2026 14:05:07 7 DESK-7"}}) {
    scene_.world.platform.faults.FailOperation(row.operation);
    EXPECT_EQ(Text(), row.text) << row.operation;
    scene_.world.platform.faults.Clear();
  }
}

// ---- Shortening and moving ----------------------------------------------------------------------

StampText Of(std::u16string_view text) {
  StampText made;
  made.AddItem(text);
  return made;
}

TEST(StampTextMoves, Shorten_TakesBothEndsUntilThereAreNotTwo) {
  StampText text = Of(u"abcde");
  EXPECT_TRUE(text.Shorten());
  EXPECT_EQ(text.view(), u"bcd");
  EXPECT_TRUE(text.Shorten());
  EXPECT_EQ(text.view(), u"c");
  EXPECT_FALSE(text.Shorten());
  EXPECT_EQ(text.view(), u"c");
  text = Of(u"ab");
  EXPECT_TRUE(text.Shorten());
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_FALSE(text.Shorten());
}

TEST(StampTextMoves, MoveLeft_LosesTheFirstAndDoublesTheLast) {
  StampText text = Of(u"abcd");
  text.MoveLeft();
  EXPECT_EQ(text.view(), u"bcdd");
  text = Of(u"a");
  text.MoveLeft();
  EXPECT_EQ(text.view(), u"a");
  text = Of(u"");
  text.MoveLeft();
  EXPECT_EQ(text.view(), u"");
}

}  // namespace
}  // namespace ostrel::test
