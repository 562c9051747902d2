// Saving a paper of the user's own: what stands in the file then, byte for byte, which names are
// taken, and what a full store refuses.
#include "pages/custom_paper_stage.h"

#include <limits>

namespace ostrel {
namespace {

constexpr int kNo = 7;  // IDNO

PaperFacts Named(PaperFacts facts, std::u16string_view name, std::uint32_t id) {
  facts.name = name;
  facts.id = id;
  return facts;
}

// 210 by 297 mm, as a new paper is made.
PaperFacts NewPaper(std::u16string_view name, std::uint32_t id = 288) {
  return {std::u16string(name), id, 1, 4961, 7016, 4960.6298828125F, 7015.748046875F};
}

// ---- Saving -------------------------------------------------------------------------------------

TEST(SavedPaper, StandsInTheFileByteForByte) {
  CustomPaperStage stage;
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"100"));
    EXPECT_TRUE(stage.user().Type(kLength, u"150"));
    stage.SaveAs(u"Card");
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
    EXPECT_EQ(stage.user().Selected(kNameBox), 0);
    EXPECT_EQ(stage.Words(), test::CardWords(288));
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  EXPECT_EQ(stage.Words(), test::CardWords(288));
  EXPECT_TRUE(stage.boxes().empty());
  const std::string value =
      std::string(
          "\x3A\x09\xD7\x0D"
          "C\0a\0r\0d\0",
          12) +
      std::string(44, '\0') +
      std::string("\x20\x01\0\0\x01\0\0\0\x47\xA3\x13\x45\xEA\x74\x5D\x45", 16);
  ASSERT_EQ(value.size(), 72U);
  EXPECT_SETTINGS(stage.world, test::SettingsTree{.papers = {test::Record("Card", value)}}.Bytes());
}

// The button is disabled then, and would keep the focus.
TEST(SavedPaper, LeavesTheFocusToTheName) {
  CustomPaperStage stage;
  stage.Show([&] {
    stage.SaveAs(u"Card");
    EXPECT_FALSE(stage.user().Enabled(kSave));
    EXPECT_EQ(stage.user().Focus(), kNameBox);
    EXPECT_TRUE(stage.IsOpen());
  });
}

TEST(SavedPaper, ThatIsRefusedLeavesTheFocusWhereItIs) {
  CustomPaperStage stage;
  stage.Put(Papers(16));
  stage.Show([&] {
    stage.SaveAs(u"New");
    EXPECT_TRUE(stage.user().Enabled(kSave));
    EXPECT_EQ(stage.user().Focus(), kSave);
  });
}

TEST(SavedPaper, InInchesKeepsItsUnit) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card")});
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kInches));
    EXPECT_TRUE(stage.user().Type(kWidth, u"4"));
    EXPECT_TRUE(stage.user().Type(kLength, u"6.00"));
    stage.SaveAs(u"Photo");
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Photo", u"4.00", u"6.00", kInches, false, true}));
    EXPECT_EQ(stage.user().Selected(kNameBox), 1);
    EXPECT_EQ(stage.Words(), test::PhotoWords(289));
  });
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Photo(u"Photo", 289)}));
}

TEST(SavedPaper, WithACommaIsTheSame) {
  CustomPaperStage stage;
  stage.UseLanguage("de", true);
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kInches));
    EXPECT_TRUE(stage.user().Type(kWidth, u"4,00"));
    EXPECT_TRUE(stage.user().Type(kLength, u"6,00"));
    stage.SaveAs(u"Photo");
  });
  EXPECT_SETTINGS(stage.world, StoreOf({Photo(u"Photo")}));
}

TEST(SavedPaper, UnchangedKeepsItsPixelsUnderAnotherName) {
  CustomPaperStage stage;
  PaperFacts odd = {u"Odd", 288, 1, 2363, 3544, 2362.75F, 3543.5F};
  stage.Put({odd});
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    EXPECT_EQ(stage.Text(kWidth), u"100.0");
    stage.SaveAs(u"Copy");
  });
  EXPECT_SETTINGS(stage.world, StoreOf({odd, Named(odd, u"Copy", 289)}));
}

TEST(SavedPaper, UnchangedGetsTheExactNumbersThatItLacked) {
  CustomPaperStage stage;
  PaperFacts odd = Card(u"Odd");
  odd.exactWidth = std::numeric_limits<float>::quiet_NaN();
  odd.exactLength = 0;
  stage.Put({odd});
  stage.SetWords(test::CardWords(288));
  stage.Show([&] { stage.SaveAs(u"Sound"); });
  EXPECT_SETTINGS(stage.world,
                  StoreOf({odd, PaperFacts{u"Sound", 289, 1, 2362, 3543, 2362.0F, 3543.0F}}));
}

TEST(SavedPaper, TakesWhatTheBoxesShowOfASizeOutsideTheLimits) {
  CustomPaperStage stage;
  stage.Put({PaperFacts{.name = u"Odd", .unit = 1, .width = 65535, .length = 0}});
  stage.SetWords({288, 1, 2});
  stage.Show([&] { stage.SaveAs(u"Sane"); });
  EXPECT_SETTINGS(
      stage.world,
      StoreOf({PaperFacts{.name = u"Odd", .unit = 1, .width = 65535, .length = 0},
               PaperFacts{u"Sane", 289, 1, 5102, 3496, 5102.3623046875F, 3496.06298828125F}}));
}

TEST(SavedPaper, JustOutsideTheLimitsIsBroughtToThem) {
  CustomPaperStage stage;
  // 74.97 by 356.02 mm, which show as 75.0 by 356.0.
  stage.Put({PaperFacts{.name = u"Odd", .unit = 1, .width = 1771, .length = 8410}});
  stage.SetWords({288, 1, 2});
  stage.Show([&] {
    EXPECT_EQ(stage.Text(kWidth), u"75.0");
    EXPECT_EQ(stage.Text(kLength), u"356.0");
    stage.SaveAs(u"Sane");
  });
  const PaperFacts sane = {u"Sane", 289, 1, 1772, 8409, 1771.653564453125F, 8409.44921875F};
  EXPECT_SETTINGS(
      stage.world,
      StoreOf({PaperFacts{.name = u"Odd", .unit = 1, .width = 1771, .length = 8410}, sane}));
}

TEST(SavedPaper, AboveFourteenInchesIsSavedAsItIsShown) {
  CustomPaperStage stage;
  const PaperFacts tall = {u"Tall", 288, 1, 5102, 8409, 5102.3623046875F, 8409.44921875F};
  stage.Put({tall});
  stage.SetWords({288, 1, 2});
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kInches));
    EXPECT_EQ(stage.Text(kLength), u"14.00");
    stage.SaveAs(u"Inches");
  });
  EXPECT_SETTINGS(stage.world,
                  StoreOf({tall, PaperFacts{u"Inches", 289, 2, 5100, 8400, 5100.0F, 8400.0F}}));
}

TEST(SavedPaper, TakesTheLeastForABoxThatIsStillTooLow) {
  CustomPaperStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kNameBox, u"Small"));
    // Code changes the boxes: nobody has left them.
    stage.SetText(kWidth, u"2");
    stage.SetText(kLength, u"");
    EXPECT_FALSE(stage.user().Enabled(kSave));
    stage.SetText(kNameBox, u"Small");
    stage.Command(kSave);
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Small", u"75.0", u"148.0", kMillimeters, false, true}));
  });
  EXPECT_SETTINGS(
      stage.world,
      StoreOf({PaperFacts{u"Small", 288, 1, 1772, 3496, 1771.653564453125F, 3496.06298828125F}}));
}

TEST(SavedPaper, WithABoxThatCantStandIsRefused) {
  for (const char16_t* text : {u"120.55", u".5"}) {
    CustomPaperStage stage;
    stage.Show([&] {
      EXPECT_TRUE(stage.user().Type(kNameBox, u"Card"));
      stage.SetText(kWidth, text);
      EXPECT_TRUE(stage.user().Enabled(kSave));
      stage.Command(kSave);
      EXPECT_EQ(stage.user().Focus(), kWidth);
      EXPECT_EQ(stage.Text(kNameBox), u"Card");
    });
    EXPECT_EQ(stage.timesShown, 1);
    EXPECT_SETTINGS(stage.world, StoreOf({}));
  }
}

// ---- Names that are saved -----------------------------------------------------------------------

TEST(SavedName, LosesItsOuterBlanks) {
  CustomPaperStage stage;
  stage.Show([&] {
    stage.SaveAs(u"  My card ");
    EXPECT_EQ(stage.Text(kNameBox), u"My card");
  });
  EXPECT_SETTINGS(stage.world, StoreOf({NewPaper(u"My card")}));
}

TEST(SavedName, OfTwentyFourCharactersIsTakenAndALongerOneSilentlyNot) {
  for (const std::size_t length : {24U, 25U, 200U}) {
    CustomPaperStage stage;
    const std::u16string name(length, u'n');
    stage.Show([&] {
      stage.SetText(kNameBox, u"  " + name + u" ");
      stage.Command(kNameBox, kCbnEditChange);
      EXPECT_TRUE(stage.user().Click(kSave));
      EXPECT_TRUE(stage.user().Enabled(kSave) == (length > 24));
    });
    EXPECT_EQ(stage.timesShown, 1);
    EXPECT_TRUE(stage.boxes().empty());
    EXPECT_SETTINGS(stage.world, length == 24 ? StoreOf({NewPaper(name)}) : StoreOf({}));
  }
}

TEST(SavedName, ThatIsEmptyTakesTheFocus) {
  for (const char16_t* name : {u"", u"   "}) {
    CustomPaperStage stage;
    stage.Show([&] {
      EXPECT_TRUE(stage.user().MoveFocus(kWidth));
      stage.SetText(kNameBox, name);
      stage.Command(kSave);
      EXPECT_EQ(stage.user().Focus(), kNameBox);
    });
    EXPECT_SETTINGS(stage.world, StoreOf({}));
  }
}

// What code puts into the box meets the rules of a typed name.
TEST(SavedName, ThatMayNotBeSavedIsRefused) {
  for (const char16_t* name : {u"Untitled", u"A4", u" A4 ", u"A.4", u"..."}) {
    CustomPaperStage stage;
    stage.Show([&] {
      EXPECT_TRUE(stage.user().Type(kNameBox, u"Card"));
      stage.SetText(kNameBox, name);
      EXPECT_TRUE(stage.user().Click(kSave));
      EXPECT_FALSE(stage.user().Enabled(kSave));
    });
    EXPECT_SETTINGS(stage.world, StoreOf({}));
  }
}

TEST(SavedName, WithRefusedCharactersIsSavedWithoutThem) {
  CustomPaperStage stage;
  stage.Show([&] {
    stage.SetText(kNameBox, u"My.card*");
    stage.Command(kSave);
    EXPECT_EQ(stage.Text(kNameBox), u"Mycard");
  });
  EXPECT_SETTINGS(stage.world, StoreOf({NewPaper(u"Mycard")}));
}

TEST(SavedName, DiffersByCase) {
  CustomPaperStage stage;
  stage.Put({Card(u"card")});
  stage.Show([&] {
    stage.SaveAs(u"Card");
    EXPECT_EQ(stage.user().Selected(kNameBox), 1);
  });
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"card"), Card(u"Card", 289)}));
}

// ---- Names that are there already ---------------------------------------------------------------

struct QuestionCase {
  const char* name;
  int answer;
  bool rightToLeft;
  bool saved;
};

class ReplacedPaper : public testing::TestWithParam<QuestionCase> {};

INSTANTIATE_TEST_SUITE_P(Answers, ReplacedPaper,
                         testing::Values(QuestionCase{"Yes", kIdYes, false, true},
                                         QuestionCase{"YesFromRightToLeft", kIdYes, true, true},
                                         QuestionCase{"No", kNo, false, false},
                                         QuestionCase{"Closed", kIdCancel, false, false},
                                         QuestionCase{"NotShown", 0, false, false}),
                         test::CaseName());

TEST_P(ReplacedPaper, NeedsAYesAndKeepsItsId) {
  const QuestionCase& row = GetParam();
  CustomPaperStage stage;
  stage.Put({Photo(u"Photo", 300), Card(u"Card", 288)});
  stage.SetWords(test::CardWords(288));
  stage.world.process.RightToLeftLanguage = row.rightToLeft;
  stage.windows().answers = {row.answer};
  stage.Show([&] {
    stage.SaveAs(u"Photo");
    ASSERT_EQ(stage.boxes().size(), 1U);
    EXPECT_EQ(stage.boxes()[0].text, CustomPaperStage::English(5010));
    EXPECT_EQ(stage.boxes()[0].caption, CustomPaperStage::English(2000));
    EXPECT_EQ(stage.boxes()[0].style, row.rightToLeft ? 0x180034U : 0x34U);
    EXPECT_EQ(stage.boxes()[0].owner, stage.dialog());
    EXPECT_EQ(stage.Seen(),
              (PaperSeen{u"Photo", u"100.0", u"150.0", kMillimeters, !row.saved, row.saved}));
    EXPECT_EQ(stage.Words(), test::CardWords(row.saved ? 300 : 288));
    if (row.saved) {  // it went to the end of the list
      EXPECT_EQ(stage.user().ItemTexts(kNameBox), (std::vector<std::u16string>{u"Card", u"Photo"}));
      EXPECT_EQ(stage.user().Selected(kNameBox), 1);
    }
  });
  EXPECT_SETTINGS(stage.world, row.saved ? StoreOf({Card(u"Card", 288), Card(u"Photo", 300)})
                                         : StoreOf({Photo(u"Photo", 300), Card(u"Card", 288)}));
}

TEST(ReplacedRecord, ThatCouldntBeReadTakesAFreeId) {
  CustomPaperStage stage;
  test::PutSettings(stage.world, test::SettingsTree{.papers = {test::StoredPaper(Card(u"Card")),
                                                               test::Record("Broken", "x")}}
                                     .Bytes());
  stage.SetWords(test::CardWords(288));
  stage.windows().answers = {kIdYes};
  stage.Show([&] { stage.SaveAs(u"Broken"); });
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Card(u"Broken", 289)}));
}

TEST(ReplacedRecord, WithAnIdThatIsNoUsersTakesAFreeId) {
  for (const std::uint32_t id : {287U, 32768U, 0x10120U}) {
    CustomPaperStage stage;
    stage.Put({Card(u"Card"), Photo(u"Absurd", id)});
    stage.SetWords(test::CardWords(288));
    stage.windows().answers = {kIdYes};
    stage.Show([&] { stage.SaveAs(u"Absurd"); });
    EXPECT_EQ(stage.boxes().size(), 1U);
    EXPECT_EQ(stage.Words(), test::CardWords(288));  // cancelled
    EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Card(u"Absurd", 289)}));
  }
}

// ---- Ids and a full store -----------------------------------------------------------------------

TEST(SavedPaper, TakesTheLowestFreeId) {
  CustomPaperStage stage;
  stage.Put({Card(u"A", 288), Card(u"C", 290), Card(u"D", 291)});
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    stage.SaveAs(u"B");
    EXPECT_EQ(stage.Words(), test::CardWords(289));
    stage.SaveAs(u"E");
    EXPECT_EQ(stage.Words(), test::CardWords(292));
  });
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"A", 288), Card(u"C", 290), Card(u"D", 291),
                                        Card(u"B", 289), Card(u"E", 292)}));
}

TEST(SavedPaper, TheSixteenthIsTheLast) {
  CustomPaperStage stage;
  std::vector<PaperFacts> papers = Papers(15);
  stage.Put(papers);
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    stage.SaveAs(u"Last");
    EXPECT_TRUE(stage.boxes().empty());
    EXPECT_EQ(stage.Words(), test::CardWords(303));
    stage.SaveAs(u"One more");
    ASSERT_EQ(stage.boxes().size(), 1U);
  });
  papers.push_back(Card(u"Last", 303));
  EXPECT_SETTINGS(stage.world, StoreOf(papers));
}

struct FullCase {
  const char* name;
  std::size_t count;
  const char16_t* saved;
  bool rightToLeft;
};

class FullStore : public testing::TestWithParam<FullCase> {};

INSTANTIATE_TEST_SUITE_P(Names, FullStore,
                         testing::Values(FullCase{"ANewName", 16, u"New", false},
                                         FullCase{"AStoredName", 16, u"Paper 3", false},
                                         FullCase{"FromRightToLeft", 16, u"New", true},
                                         FullCase{"MoreThanThereMayBe", 17, u"Paper 3", false}),
                         test::CaseName());

TEST_P(FullStore, RefusesEveryName) {
  const FullCase& row = GetParam();
  CustomPaperStage stage;
  stage.Put(Papers(row.count));
  stage.SetWords(test::CardWords(288));
  stage.world.process.RightToLeftLanguage = row.rightToLeft;
  stage.windows().answers = {kIdYes};
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"120"));
    stage.SaveAs(row.saved);
    ASSERT_EQ(stage.boxes().size(), 1U);
    EXPECT_EQ(stage.boxes()[0].text, CustomPaperStage::English(5008));
    EXPECT_EQ(stage.boxes()[0].caption, CustomPaperStage::English(2000));
    EXPECT_EQ(stage.boxes()[0].style, row.rightToLeft ? 0x180030U : 0x30U);
    EXPECT_EQ(stage.Words(), test::CardWords(288));
    EXPECT_TRUE(stage.user().Enabled(kSave));
  });
  EXPECT_SETTINGS(stage.world, StoreOf(Papers(row.count)));
}

}  // namespace
}  // namespace ostrel
