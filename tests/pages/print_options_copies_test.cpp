// The copies box of the print options page: typed, stepped, left, and left with the page.
#include "pages/options_stage.h"

namespace ostrel {
namespace {

using test::OptionsStage;

constexpr std::int32_t kEdit = 1019;
constexpr std::int32_t kSpin = 1020;
constexpr std::int32_t kElsewhere = 1422;

OptionsStage::Prepare WithCopies(std::int16_t copies) {
  return [copies](UIContext& context) { context.publicPointer->dmCopies = copies; };
}

// ---- While the user types -----------------------------------------------------------------------

TEST(OptionsCopies, TypingAloneChangesNothingYet) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(3)));
  stage.SetFavorite(u"mine");
  EXPECT_TRUE(stage.user().Type(kEdit, u"25"));
  EXPECT_EQ(stage.user().Text(kEdit), u"25");
  EXPECT_EQ(stage.shared().dmCopies, 3);
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_EQ(stage.favorite(), u"mine");
}

TEST(OptionsCopies, FourthDigitIsRefused) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Type(kEdit, u"1234"));
  EXPECT_EQ(stage.user().Text(kEdit), u"123");
}

TEST(OptionsCopies, PastedLettersAreRefused) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Type(kEdit, u"12"));
  EXPECT_TRUE(stage.user().Paste(kEdit, u"1x"));
  EXPECT_EQ(stage.user().Text(kEdit), u"12");
}

TEST(OptionsCopies, ChangeOfAnotherControlIsNotLookedAt) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.windows().Find(stage.Item(kEdit))->text = u"12x";
  stage.Command(1008, kEnChange);
  stage.Command(1008, kEnKillFocus);
  EXPECT_EQ(stage.user().Text(kEdit), u"12x");
  stage.Command(kEdit, kEnChange);
  EXPECT_NE(stage.user().Text(kEdit), u"12x");
}

// ---- The box is left ----------------------------------------------------------------------------

struct EnteredCase {
  const char* name;
  std::u16string_view typed;
  std::int16_t stored;
  std::u16string_view shown;
};
void PrintTo(const EnteredCase& row, std::ostream* out) {
  *out << row.name;
}
const EnteredCase kEnteredCases[] = {
    {"Two", u"2", 2, u"2"},
    {"Most", u"999", 999, u"999"},
    {"LeadingZero", u"007", 7, u"7"},
    {"Blanks", u" 8 ", 8, u"8"},
    {"Zero", u"0", 1, u"1"},
    {"Zeros", u"000", 1, u"1"},
    {"Empty", u"", 1, u"1"},
    {"OnlyBlanks", u"  ", 1, u"1"},
    {"BlankInside", u"1 2", 1, u"1"},
    {"Letters", u"abc", 1, u"1"},
    {"Minus", u"-", 1, u"1"},
    {"Negative", u"-5", 1, u"1"},
    {"Thousand", u"1000", 999, u"999"},
    {"Sign", u"+5", 1, u"1"},
    {"Fraction", u"1.5", 1, u"1"},
};

class OptionsCopiesEntered : public testing::TestWithParam<EnteredCase> {};

INSTANTIATE_TEST_SUITE_P(Texts, OptionsCopiesEntered, testing::ValuesIn(kEnteredCases),
                         test::CaseName());

// The text stands in the box as it is when the focus goes, whatever was refused while typing.
TEST_P(OptionsCopiesEntered, BecomeTheRecordsAndAreShownInPlainDecimal) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(44)));
  stage.SetFavorite(u"mine");
  stage.windows().Find(stage.Item(kEdit))->text = GetParam().typed;
  const std::vector<OptionsStage::Sent>& sent = stage.Watch(stage.Item(kSpin));
  stage.Command(kEdit, kEnKillFocus);
  EXPECT_EQ(stage.user().Text(kEdit), GetParam().shown);
  EXPECT_EQ(stage.shared().dmCopies, GetParam().stored);
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
  EXPECT_EQ(stage.changes.size(), 2U);
  EXPECT_EQ(sent, (std::vector<OptionsStage::Sent>{{kUdmSetPos, 0, GetParam().stored}}));
}

TEST_P(OptionsCopiesEntered, AreNotTakenTwice) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(GetParam().stored)));
  stage.SetFavorite(u"mine");
  stage.windows().Find(stage.Item(kEdit))->text = GetParam().typed;
  const std::vector<OptionsStage::Sent>& sent = stage.Watch(stage.Item(kSpin));
  stage.Command(kEdit, kEnKillFocus);
  EXPECT_EQ(stage.user().Text(kEdit), GetParam().shown);
  EXPECT_EQ(stage.favorite(), u"mine");
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_TRUE(sent.empty());
}

// The spin is set and the word stored before the sheet is told for the first time; the name goes
// between that and the second time, and collation is enabled even under a booklet.
TEST(OptionsCopies, AreToldBeforeAndAfterTheNameGoes) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 3;
    context.privatePointer->BookletPrint = 1;
  }));
  stage.SetFavorite(u"mine");
  ASSERT_FALSE(stage.user().Enabled(1008));
  std::vector<bool> enabled;
  stage.onChange = [&] { enabled.push_back(stage.user().Enabled(1008)); };
  EXPECT_TRUE(stage.user().Type(kEdit, u"5"));
  EXPECT_TRUE(stage.user().MoveFocus(kElsewhere));
  ASSERT_EQ(stage.changes.size(), 2U);
  EXPECT_EQ(stage.changes[0].publicDevmode.dmCopies, 5);
  EXPECT_EQ(std::u16string(stage.changes[0].privateDevmode.FavoriteName), u"mine");
  EXPECT_EQ(std::u16string(stage.changes[1].privateDevmode.FavoriteName), OptionsStage::Text(5005));
  EXPECT_EQ(enabled, (std::vector<bool>{false, true}));
  EXPECT_TRUE(stage.user().Enabled(1008));
  EXPECT_TRUE(stage.user().Shown(1449));
  EXPECT_TRUE(stage.user().Checked(1008));
  stage.ShowAgain();
  EXPECT_FALSE(stage.user().Enabled(1008));
}

// ---- The arrows ---------------------------------------------------------------------------------

TEST(OptionsCopiesStep, UpperArrowCountsUpAndTellsOnce) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(3)));
  stage.SetFavorite(u"mine");
  EXPECT_TRUE(stage.user().SpinUp(kSpin));
  EXPECT_EQ(stage.user().Text(kEdit), u"4");
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.changes[0].publicDevmode.dmCopies, 4);
  EXPECT_EQ(std::u16string(stage.changes[0].privateDevmode.FavoriteName), OptionsStage::Text(5005));
}

TEST(OptionsCopiesStep, LowerArrowCountsDown) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(3)));
  EXPECT_TRUE(stage.user().SpinDown(kSpin));
  EXPECT_EQ(stage.user().Text(kEdit), u"2");
  EXPECT_EQ(stage.shared().dmCopies, 2);
}

struct EndCase {
  const char* name;
  std::int16_t copies;
  bool up;
};

class OptionsCopiesEnd : public testing::TestWithParam<EndCase> {};

INSTANTIATE_TEST_SUITE_P(Ends, OptionsCopiesEnd,
                         testing::Values(EndCase{"Least", 1, false}, EndCase{"Most", 999, true}),
                         test::CaseName());

TEST_P(OptionsCopiesEnd, StepBeyondItDoesNothing) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(GetParam().copies)));
  stage.SetFavorite(u"mine");
  const std::u16string before = stage.user().Text(kEdit);
  EXPECT_TRUE(GetParam().up ? stage.user().SpinUp(kSpin) : stage.user().SpinDown(kSpin));
  EXPECT_EQ(stage.user().Text(kEdit), before);
  EXPECT_EQ(stage.shared().dmCopies, GetParam().copies);
  EXPECT_EQ(stage.favorite(), u"mine");
  EXPECT_TRUE(stage.changes.empty());
}

TEST(OptionsCopiesStep, StartsFromZeroInABoxWithoutANumber) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(7)));
  EXPECT_TRUE(stage.user().Type(kEdit, u""));
  EXPECT_TRUE(stage.user().SpinUp(kSpin));
  EXPECT_EQ(stage.user().Text(kEdit), u"1");
  EXPECT_EQ(stage.shared().dmCopies, 1);
}

struct DeltaCase {
  const char* name;
  std::int32_t delta;
  std::int16_t copies;
};

class OptionsCopiesDelta : public testing::TestWithParam<DeltaCase> {};

INSTANTIATE_TEST_SUITE_P(Signs, OptionsCopiesDelta,
                         testing::Values(DeltaCase{"Minus", -1, 11},
                                         DeltaCase{"MinusMany", -20, 11}, DeltaCase{"Plus", 1, 9},
                                         DeltaCase{"PlusMany", 20, 9}, DeltaCase{"Zero", 0, 9}),
                         test::CaseName());

// The sign alone decides: a held arrow doesn't run.
TEST_P(OptionsCopiesDelta, StepsByOneUpForANegativeDelta) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(10)));
  NotifyUpDown note = {};
  note.hdr = {stage.Item(kSpin), static_cast<std::uintptr_t>(kSpin), kUdnDeltaPos};
  note.iDelta = GetParam().delta;
  EXPECT_EQ(stage.Send(kWmNotify, kSpin, reinterpret_cast<std::intptr_t>(&note)), 0);
  EXPECT_EQ(stage.shared().dmCopies, GetParam().copies);
}

TEST(OptionsCopiesStep, DeltaOfAnotherControlIsNotTaken) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(10)));
  NotifyUpDown note = {};
  note.hdr = {stage.Item(kEdit), 1021, kUdnDeltaPos};
  note.iDelta = -1;
  stage.Send(kWmNotify, 1021, reinterpret_cast<std::intptr_t>(&note));
  EXPECT_EQ(stage.shared().dmCopies, 10);
  EXPECT_TRUE(stage.changes.empty());
}

TEST(OptionsCopiesStep, SpinNeverAccelerates) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const auto& rows = stage.windows().Find(stage.Item(kSpin))->spin.accelerations;
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].nSec, 200U);
  EXPECT_EQ(rows[0].nInc, 1U);
}

// ---- The page is left ---------------------------------------------------------------------------

struct LeaveCase {
  const char* name;
  std::u16string_view text;
  std::intptr_t answer;  // of the procedure
  std::int16_t stored;   // 44 before
  std::u16string_view shown;
  std::size_t changes;
};
void PrintTo(const LeaveCase& row, std::ostream* out) {
  *out << row.name;
}
const LeaveCase kLeaveCases[] = {
    {"Same", u"44", 0, 44, u"44", 0},
    {"Other", u"45", 0, 45, u"45", 1},
    {"Least", u"1", 0, 1, u"1", 1},
    {"Most", u"999", 0, 999, u"999", 1},
    {"LeadingZeros", u"007", 0, 7, u"7", 1},
    {"Zero", u"0", -1, 44, u"44", 0},
    {"Thousand", u"1000", -1, 44, u"44", 0},
    {"Negative", u"-5", -1, 44, u"44", 0},
    {"Letters", u"abc", -1, 44, u"44", 0},
    {"Blank", u" ", -1, 44, u"44", 0},
    {"Minus", u"-", -1, 44, u"44", 0},
    {"NumberAndLetters", u"12abc", 0, 12, u"12", 1},  // by the plain conversion
    {"BeyondThirtyTwoBits", u"4294967297", -1, 44, u"44", 0},
    {"BeyondSixtyFourBits", u"99999999999999999999", -1, 44, u"44", 0},
    {"BelowThirtyTwoBits", u"-4294967295", -1, 44, u"44", 0},
};

class OptionsCopiesLeave : public testing::TestWithParam<LeaveCase> {};

INSTANTIATE_TEST_SUITE_P(Texts, OptionsCopiesLeave, testing::ValuesIn(kLeaveCases),
                         test::CaseName());

// The answer is the procedure's; the dialog's result stays 0, so the page may be left all the same.
TEST_P(OptionsCopiesLeave, TakesTheNumberOrPutsTheStoredOneBack) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(44)));
  stage.SetFavorite(u"mine");
  stage.windows().Find(stage.Item(kEdit))->text = GetParam().text;
  stage.windows().SetWindowLongPtrW(stage.page(), kDwlpMessageResult, 0);
  EXPECT_EQ(stage.NotifyProcedure(kPsnKillActive), GetParam().answer);
  EXPECT_EQ(stage.windows().GetWindowLongPtrW(stage.page(), kDwlpMessageResult), 0);
  EXPECT_EQ(stage.shared().dmCopies, GetParam().stored);
  EXPECT_EQ(stage.user().Text(kEdit), GetParam().shown);
  ASSERT_EQ(stage.changes.size(), GetParam().changes);
  EXPECT_EQ(stage.favorite(), GetParam().changes == 0 ? u"mine" : OptionsStage::Text(5005));
  for (const DriverDevmode& told : stage.changes) {
    EXPECT_EQ(std::u16string(told.privateDevmode.FavoriteName), OptionsStage::Text(5005));
    EXPECT_EQ(told.publicDevmode.dmCopies, GetParam().stored);
  }
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_EQ(stage.Notify(kPsnKillActive), 0);
}

TEST(OptionsCopiesLeaveEmpty, KeepsThePageWithABoxAndTheStoredNumber) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(44)));
  stage.windows().Find(stage.Item(kEdit))->text = u"";
  EXPECT_EQ(stage.NotifyProcedure(kPsnKillActive), -1);
  EXPECT_EQ(stage.windows().GetWindowLongPtrW(stage.page(), kDwlpMessageResult), -1);
  EXPECT_EQ(stage.user().Text(kEdit), u"44");
  EXPECT_EQ(stage.shared().dmCopies, 44);
  EXPECT_TRUE(stage.changes.empty());
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].owner, stage.page());
  EXPECT_EQ(stage.boxes()[0].text, OptionsStage::Text(2001));
  EXPECT_EQ(stage.boxes()[0].caption, OptionsStage::Text(2000));
  EXPECT_EQ(stage.boxes()[0].style, 48U);
}

TEST(OptionsCopiesLeaveEmpty, BoxReadsFromRightToLeftWhereTheLanguageDoes) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.world().process.RightToLeftLanguage = true;
  stage.windows().Find(stage.Item(kEdit))->text = u"";
  stage.Notify(kPsnKillActive);
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].style, 48U | 0x180000U);
}

// The keyboard's OK leaves the focus in the box, so the box is empty when the page is left.
TEST(OptionsCopiesLeaveEmpty, HoldsOkAndApply) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(44)));
  EXPECT_TRUE(stage.user().Click(1422));
  EXPECT_TRUE(stage.user().Type(kEdit, u""));
  EXPECT_FALSE(stage.sheet->PressApply());
  EXPECT_TRUE(stage.sheet->isOpen());
  EXPECT_EQ(stage.user().Text(kEdit), u"44");
  EXPECT_TRUE(stage.user().Type(kEdit, u""));
  EXPECT_FALSE(stage.sheet->PressOk());
  EXPECT_TRUE(stage.sheet->isOpen());
  EXPECT_EQ(stage.boxes().size(), 2U);
  EXPECT_TRUE(stage.sheet->PressOk());
  EXPECT_EQ(stage.scene.out.publicDevmode.dmCopies, 44);
}

struct LeftCase {
  const char* name;
  std::u16string_view text;
};

class OptionsCopiesOutside : public testing::TestWithParam<LeftCase> {};

INSTANTIATE_TEST_SUITE_P(Numbers, OptionsCopiesOutside,
                         testing::Values(LeftCase{"Zero", u"0"}, LeftCase{"Thousand", u"1000"}),
                         test::CaseName());

TEST_P(OptionsCopiesOutside, DoesNotHoldTheSheet) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(44)));
  EXPECT_TRUE(stage.user().MoveFocus(kEdit));
  stage.windows().Find(stage.Item(kEdit))->text = GetParam().text;
  EXPECT_TRUE(stage.sheet->PressOk());
  EXPECT_EQ(stage.scene.out.publicDevmode.dmCopies, 44);
  EXPECT_TRUE(stage.boxes().empty());
}

TEST(OptionsCopies, TypedAndAcceptedAtOnceReachTheCaller) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(44)));
  EXPECT_TRUE(stage.user().Type(kEdit, u"45"));
  EXPECT_TRUE(stage.sheet->PressOk());
  EXPECT_EQ(stage.scene.out.publicDevmode.dmCopies, 45);
}

TEST(OptionsCopies, LongTextIsReadUpToItsRoomWhenThePageIsLeft) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(WithCopies(44)));
  stage.windows().Find(stage.Item(kEdit))->text = std::u16string(300, u'1');
  EXPECT_EQ(stage.NotifyProcedure(kPsnKillActive), -1);
  EXPECT_EQ(stage.user().Text(kEdit), u"44");
}

}  // namespace
}  // namespace ostrel
