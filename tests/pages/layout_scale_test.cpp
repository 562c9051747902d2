// The scale of the layout page: typed, stepped, locked, and when the page is left.
#include "pages/layout_stage.h"

namespace ostrel {
namespace {

using test::LayoutStage;

std::u16string Wide(std::string_view text) {
  return {text.begin(), text.end()};
}

// ---- Typing -------------------------------------------------------------------------------------

struct TypedCase {
  const char* name;
  const char16_t* typed;  // pasted, as one change
  const char16_t* shown;  // at once
  std::int32_t stored;
  const char16_t* left;  // shown when the box is left
  std::int32_t storedThen;
};
void PrintTo(const TypedCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr TypedCase kTypedCases[] = {
    // Name,          Typed,     Shown,   Stored, Left,    Stored then
    {"Middle",        u"150",    u"150",  150,    u"150",  150},
    {"Least",         u"25",     u"25",   25,     u"25",   25},
    {"Most",          u"400",    u"400",  400,    u"400",  400},
    {"BelowStands",   u"24",     u"24",   25,     u"25",   25},
    {"OneDigit",      u"5",      u"5",    25,     u"25",   25},
    {"ZerosInFront",  u"024",    u"25",   25,     u"25",   25},
    {"Above",         u"401",    u"400",  400,    u"400",  400},
    {"FarAbove",      u"999",    u"400",  400,    u"400",  400},
    {"Zero",          u"0",      u"0",    25,     u"25",   25},
    {"TooLong",       u"1234",   u"120",  120,    u"120",  120},
    {"Letters",       u"ab",     u"120",  120,    u"120",  120},
    {"InnerBlank",    u"1 2",    u"120",  120,    u"120",  120},
    {"OuterBlanks",   u" 90",    u" 90",  90,     u"90",   90},
    {"Empty",         u"",       u"",     120,    u"120",  120},
    {"Blank",         u" ",      u" ",    120,    u"120",  120},
    {"Minus",         u"-",      u"-",    25,     u"25",   25},
};
// clang-format on

class LayoutTyped : public testing::TestWithParam<TypedCase> {};

INSTANTIATE_TEST_SUITE_P(Texts, LayoutTyped, testing::ValuesIn(kTypedCases), test::CaseName());

TEST_P(LayoutTyped, IsCheckedStoredAndCleanedUp) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->ScaleRadio = 120; }));
  stage.Watch();
  stage.onChange = [&] { EXPECT_GE(stage.Redrawn(1067), 1U); };
  EXPECT_TRUE(stage.user().Paste(1025, GetParam().typed));
  EXPECT_EQ(stage.user().Text(1025), GetParam().shown);
  EXPECT_EQ(stage.own().ScaleRadio, GetParam().stored);
  const bool changed = GetParam().stored != 120;
  EXPECT_EQ(stage.changes.size(), changed ? 1U : 0U);
  EXPECT_EQ(stage.Redrawn(1067), changed ? 1U : 0U);
  EXPECT_EQ(stage.IsUntitled(), changed);
  if (changed) {
    EXPECT_EQ(stage.OwnAt(0).ScaleRadio, GetParam().stored);
    EXPECT_EQ(stage.FavoriteAt(0), u"mine");  // the name goes last
  }
  EXPECT_TRUE(stage.user().MoveFocus(1048));
  EXPECT_EQ(stage.user().Text(1025), GetParam().left);
  EXPECT_EQ(stage.own().ScaleRadio, GetParam().storedThen);
}

TEST(LayoutTyping, EachDigitIsTakenOnItsWay) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.Watch();
  EXPECT_TRUE(stage.user().Type(1025, u"150"));
  std::vector<std::int32_t> scales;
  for (const DriverDevmode& change : stage.changes) {
    scales.push_back(change.privateDevmode.ScaleRadio);
  }
  EXPECT_EQ(scales, std::vector<std::int32_t>({25, 150}));  // 1 and 15 count as 25
}

// ---- Leaving the box ----------------------------------------------------------------------------

TEST(LayoutScaleBox, LeftWithAnotherNumberStoresIt) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Type(1025, u"150"));
  stage.own().ScaleRadio = 130;  // changed behind the box
  stage.Watch();
  EXPECT_TRUE(stage.user().MoveFocus(1048));
  EXPECT_EQ(stage.own().ScaleRadio, 150);
  EXPECT_EQ(stage.user().Position(1107), 100);  // as far as the spin's own range goes
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.OwnAt(0).ScaleRadio, 150);
  EXPECT_EQ(stage.FavoriteAt(0), u"mine");
  EXPECT_TRUE(stage.IsUntitled());
  EXPECT_EQ(stage.Redrawn(1067), 1U);
}

TEST(LayoutScaleBox, LocksTheBookletOnlyWhenItIsLeft) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Type(1025, u"150"));
  EXPECT_TRUE(stage.user().Enabled(1486));
  EXPECT_TRUE(stage.user().MoveFocus(1048));
  EXPECT_FALSE(stage.user().Enabled(1486));
  EXPECT_TRUE(stage.user().Shown(1453));
  EXPECT_TRUE(stage.user().Type(1025, u"100"));
  EXPECT_FALSE(stage.user().Enabled(1486));
  EXPECT_TRUE(stage.user().MoveFocus(1048));
  EXPECT_TRUE(stage.user().Enabled(1486));
  EXPECT_FALSE(stage.user().Shown(1453));
}

TEST(LayoutScaleBox, UnreadableScaleCountsAsFull) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->ScaleRadio = 150;
    test::ForgetKey(context, "ScaleRadio");
  }));
  EXPECT_EQ(stage.user().Text(1025), u"100");
}

// ---- The spin -----------------------------------------------------------------------------------

TEST(LayoutSpin, StepsByOneAndStoresEachStep) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.Watch();
  EXPECT_TRUE(stage.user().SpinUp(1107));
  EXPECT_EQ(stage.user().Text(1025), u"101");
  EXPECT_EQ(stage.own().ScaleRadio, 101);
  EXPECT_FALSE(stage.changes.empty());
  EXPECT_EQ(stage.changes.back().privateDevmode.ScaleRadio, 101);
  EXPECT_EQ(stage.Redrawn(1067), 1U);
  EXPECT_TRUE(stage.IsUntitled());
  EXPECT_TRUE(stage.user().Enabled(1486));  // until the box is left
  EXPECT_TRUE(stage.user().SpinDown(1107));
  EXPECT_TRUE(stage.user().SpinDown(1107));
  EXPECT_EQ(stage.own().ScaleRadio, 99);
}

TEST(LayoutSpin, StopsAtBothEnds) {
  for (const std::int32_t end : {25, 400}) {
    LayoutStage stage;
    ASSERT_TRUE(
        stage.Open([end](UIContext& context) { context.privatePointer->ScaleRadio = end; }));
    stage.Watch();
    EXPECT_TRUE(end == 25 ? stage.user().SpinDown(1107) : stage.user().SpinUp(1107));
    EXPECT_EQ(stage.own().ScaleRadio, end);
    EXPECT_TRUE(stage.changes.empty());
  }
}

TEST(LayoutSpin, OtherSpinsAreNotHeard) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  NotifyUpDown step = {{nullptr, 1020, kUdnDeltaPos}, 0, -1};
  stage.Send(kWmNotify, 1020, reinterpret_cast<std::intptr_t>(&step));
  EXPECT_EQ(stage.own().ScaleRadio, 100);
  step.hdr.idFrom = 1107;
  stage.Send(kWmNotify, 1107, reinterpret_cast<std::intptr_t>(&step));
  EXPECT_EQ(stage.own().ScaleRadio, 101);
}

TEST(LayoutSpin, StoresAndTellsItsStepBesideTheBoxsOwnChange) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.Watch();
  // What the box has stored is lost again: the step's own storing stays.
  stage.onChange = [&] {
    if (stage.changes.size() == 1) {
      stage.own().ScaleRadio = 77;
    }
  };
  EXPECT_TRUE(stage.user().SpinUp(1107));
  ASSERT_EQ(stage.changes.size(), 2U);
  EXPECT_EQ(stage.OwnAt(1).ScaleRadio, 101);
  EXPECT_EQ(stage.own().ScaleRadio, 101);
}

TEST(LayoutSpin, OfALockedBoxStepsNothing) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->MultipleUp = 4;
    context.privatePointer->ScaleRadio = 150;
  }));
  stage.Watch();
  NotifyUpDown step = {{nullptr, 1107, kUdnDeltaPos}, 0, -1};
  stage.Send(kWmNotify, 1107, reinterpret_cast<std::intptr_t>(&step));
  EXPECT_EQ(stage.own().ScaleRadio, 150);
  EXPECT_EQ(stage.user().Text(1025), u"100");
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_FALSE(stage.IsUntitled());
}

// ---- The lock -----------------------------------------------------------------------------------

TEST(LayoutScaleLock, ShowsFullScaleKeepsTheRecordAndGivesItBack) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Type(1025, u"150"));
  for (const std::int32_t radio : {1390, 1389, 1392}) {
    EXPECT_TRUE(stage.user().Click(radio));
    EXPECT_EQ(stage.user().Text(1025), u"100");
    EXPECT_TRUE(stage.IsScaleLive(false));
    EXPECT_EQ(stage.own().ScaleRadio, 150);
    EXPECT_FALSE(stage.user().Type(1025, u"90"));
    stage.Command(1025, kEnChange);
    stage.Command(1025, kEnKillFocus);
    EXPECT_EQ(stage.own().ScaleRadio, 150);
    EXPECT_EQ(stage.user().Text(1025), u"100");
    EXPECT_TRUE(stage.user().Click(1387));
    EXPECT_EQ(stage.user().Text(1025), u"150");
    EXPECT_TRUE(stage.IsScaleLive(true));
  }
}

// ---- Leaving the page ---------------------------------------------------------------------------

struct LeaveCase {
  const char* name;
  const char16_t* text;
  std::int16_t pages;
  std::int32_t scaleFlag;
  std::int32_t stored;  // where the record held 120
  bool stays;
};
void PrintTo(const LeaveCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr LeaveCase kLeaveCases[] = {
    // Name,            Text,    Pages, Flag, Stored, Stays
    {"Other",           u"150",   1, 2, 150, false},
    {"Same",            u"120",   1, 2, 120, false},
    {"Least",           u"25",    1, 2, 25,  false},
    {"Most",            u"400",   1, 2, 400, false},
    {"BelowLeast",      u"24",    1, 2, 120, true},
    {"AboveMost",       u"401",   1, 2, 120, true},
    {"Empty",           u"",      1, 2, 120, true},
    {"Negative",        u"-150",  1, 2, 120, true},
    {"TextBehind",      u"150%",  1, 2, 150, false},  // read the plain way
    {"TextAlone",       u"abc",   1, 2, 120, true},
    {"TooLargeToRead",  u"99999999999", 1, 2, 120, true},
    {"NoPages",         u"150",   0, 2, 150, false},
    {"OtherFlag",       u"24",    1, 1, 120, false},
    {"NoFlag",          u"24",    1, 0, 120, false},
    {"TwoPages",        u"24",    2, 2, 120, false},
    {"TwentyThree",     u"24",   23, 2, 120, false},
};
// clang-format on

class LayoutLeave : public testing::TestWithParam<LeaveCase> {};

INSTANTIATE_TEST_SUITE_P(Texts, LayoutLeave, testing::ValuesIn(kLeaveCases), test::CaseName());

TEST_P(LayoutLeave, KeepsThePageOnlyForANumberThatIsNone) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->ScaleRadio = 120;
    context.privatePointer->ScaleFlag = GetParam().scaleFlag;
    context.privatePointer->MultipleUp = GetParam().pages;
  }));
  stage.Watch();
  // As a text that came to the box without its check.
  stage.windows().Find(stage.Item(1025))->text = GetParam().text;
  EXPECT_EQ(stage.Notify(kPsnKillActive), GetParam().stays ? 1 : 0);
  EXPECT_EQ(stage.own().ScaleRadio, GetParam().stored);
  EXPECT_EQ(stage.changes.size(), GetParam().stored == 120 ? 0U : 1U);
  EXPECT_FALSE(stage.IsUntitled());
  if (GetParam().stored != 120) {
    EXPECT_EQ(stage.user().Text(1025), Wide(std::to_string(GetParam().stored)));
  }
  EXPECT_EQ(stage.NotifyProcedure(kPsnKillActive), GetParam().stays ? 1 : 0);
}

TEST(LayoutLeaving, OfABookletsLockedBoxStoresNothing) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 3;
    context.privatePointer->BookletPrint = 1;
    context.privatePointer->ScaleRadio = 150;
    context.privatePointer->ScaleFlag = 2;
  }));
  ASSERT_EQ(stage.user().Text(1025), u"100");
  EXPECT_EQ(stage.Notify(kPsnKillActive), 0);
  EXPECT_EQ(stage.own().ScaleRadio, 150);
}

}  // namespace
}  // namespace ostrel
