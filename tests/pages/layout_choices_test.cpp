// What a user chooses from the lists of the layout page, types into its scale box and presses, and
// in which order each choice takes effect.
#include "pages/layout_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::LayoutStage;

// ---- Lists that store what differs --------------------------------------------------------------

struct ChoiceCase {
  const char* name;
  std::int16_t pages;
  std::int32_t control;
  std::int16_t PrivateDevmode::*word;
  std::int16_t before;
  std::int32_t row;
  std::int16_t stored;
};
void PrintTo(const ChoiceCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr ChoiceCase kChoiceCases[] = {
    // Name,                 Pages, Control, Word,                        Before, Row, Stored
    {"OrderOfTwoByPlace",      2, 1046, &PrivateDevmode::PageOrder,  0, 1, 1},
    {"OrderOfTwoBack",         2, 1046, &PrivateDevmode::PageOrder,  1, 0, 0},
    {"OrderOfFourByValue",     4, 1046, &PrivateDevmode::PageOrder,  2, 1, 3},
    {"OrderOfEightByValue",    8, 1046, &PrivateDevmode::PageOrder,  2, 3, 5},
    {"OrderOfSixteenByValue", 16, 1046, &PrivateDevmode::PageOrder,  5, 0, 2},
    {"OrderOfNineByValue",     9, 1046, &PrivateDevmode::PageOrder,  0, 2, 4},
    {"OrderUnknownBefore",     4, 1046, &PrivateDevmode::PageOrder,  7, 0, 2},
    {"BorderOn",               4, 1393, &PrivateDevmode::PageBorder, 0, 1, 1},
    {"BorderOff",              4, 1393, &PrivateDevmode::PageBorder, 1, 0, 0},
};
// clang-format on

class LayoutChoice : public testing::TestWithParam<ChoiceCase> {};

INSTANTIATE_TEST_SUITE_P(Rows, LayoutChoice, testing::ValuesIn(kChoiceCases), test::CaseName());

TEST_P(LayoutChoice, IsStoredNamedDrawnAndTold) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->MultipleUp = GetParam().pages;
    context.privatePointer->*GetParam().word = GetParam().before;
  }));
  stage.Watch();
  stage.onChange = [&] { EXPECT_EQ(stage.Redrawn(1067), 1U); };  // which comes before
  EXPECT_TRUE(stage.user().Choose(GetParam().control, GetParam().row));
  EXPECT_EQ(stage.own().*GetParam().word, GetParam().stored);
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.OwnAt(0).*GetParam().word, GetParam().stored);
  EXPECT_EQ(stage.FavoriteAt(0), LayoutStage::Text(5005));
  EXPECT_EQ(stage.Redrawn(1067), 1U);
}

TEST_P(LayoutChoice, OfTheSameValueChangesNothing) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->MultipleUp = GetParam().pages;
    context.privatePointer->*GetParam().word = GetParam().stored;
  }));
  stage.Watch();
  EXPECT_TRUE(stage.user().Choose(GetParam().control, GetParam().row));
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_FALSE(stage.IsUntitled());
  EXPECT_EQ(stage.Redrawn(1067), 0U);
}

TEST(LayoutChoices, WithoutARowAreNone) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->MultipleUp = 4; }));
  const DriverDevmode before = stage.context().devmode;
  for (const std::int32_t list : {1046, 1393, 1048, 1045, 1394}) {
    stage.windows().SendMessageW(stage.Item(list), kCbSetCurSel, static_cast<std::uintptr_t>(-1),
                                 0);
    stage.Command(list, kCbnSelChange);
  }
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
}

TEST(LayoutChoices, OfAListThatTheTemplateLacksAreNone) {
  for (const std::int32_t list : {1046, 1393, 1048, 1045, 1394}) {
    LayoutStage stage;
    stage.RemoveControl(list);
    ASSERT_TRUE(stage.Open([](UIContext& context) {
      context.privatePointer->MultipleUp = 4;
      context.publicPointer->dmOrientation = 2;
      context.privatePointer->PageBorder = 1;
    }));
    const DriverDevmode before = stage.context().devmode;
    stage.Command(list, kCbnSelChange);
    EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0) << list;
  }
}

// ---- The orientation ----------------------------------------------------------------------------

TEST(LayoutOrientation, IsToldBeforeTheNameGoes) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::int32_t row : {1, 0}) {
    stage.Watch();
    EXPECT_TRUE(stage.user().Choose(1048, row));
    EXPECT_EQ(stage.shared().dmOrientation, row + 1);
    ASSERT_EQ(stage.changes.size(), 1U);
    EXPECT_EQ(stage.changes[0].publicDevmode.dmOrientation, row + 1);
    EXPECT_EQ(stage.FavoriteAt(0), u"mine");
    EXPECT_TRUE(stage.IsUntitled());
    for (const std::int32_t control : {1044, 1046, 1067}) {
      EXPECT_EQ(stage.Redrawn(control), 1U) << control;
    }
  }
  stage.Watch();
  EXPECT_TRUE(stage.user().Choose(1048, 0));
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_FALSE(stage.IsUntitled());
}

TEST(LayoutOrientation, RefillsTheOrdersOfTwoPages) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->MultipleUp = 2;
    context.privatePointer->PageOrder = 1;
  }));
  stage.Watch();
  EXPECT_TRUE(stage.user().Choose(1048, 1));
  EXPECT_EQ(stage.user().ItemTexts(1046),
            std::vector<std::u16string>({LayoutStage::Text(410), LayoutStage::Text(412)}));
  EXPECT_EQ(stage.user().Selected(1046), 0);
  EXPECT_EQ(stage.own().PageOrder, 0);
  EXPECT_EQ(stage.OwnAt(0).PageOrder, 1);  // which falls back behind the telling
  EXPECT_EQ(stage.Redrawn(1067), 2U);
}

TEST(LayoutOrientation, LeavesOtherOrdersAsTheyAre) {
  for (const std::int16_t pages : std::initializer_list<std::int16_t>{1, 4, 16}) {
    LayoutStage stage;
    ASSERT_TRUE(stage.Open([pages](UIContext& context) {
      context.privatePointer->MultipleUp = pages;
      context.privatePointer->PageOrder = 4;
    }));
    stage.Watch();
    EXPECT_TRUE(stage.user().Choose(1048, 1));
    EXPECT_EQ(stage.own().PageOrder, 4);
    EXPECT_EQ(stage.Redrawn(1067), 1U);
    EXPECT_EQ(stage.user().ItemData(1046).size(), 4U);
  }
}

// ---- Toner saving and thickness -----------------------------------------------------------------

struct TonerCase {
  const char* name;
  const char16_t* model;
  std::int32_t row;
  std::int16_t thickness;  // in the record, where it was 3
  std::int32_t thicknessRow;
  bool thicknessLive;
};
void PrintTo(const TonerCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr TonerCase kTonerCases[] = {
    // Name,       Model,               Row, Thickness, Its row, Live
    {"AllOff",  u"Hazel 2 Series", 0, 2, 2, true},
    {"AllOn",   u"Hazel 2 Series", 1, 0, 0, false},
    {"AllAuto", u"Hazel 2 Series", 2, 3, 3, false},
    {"FewOff",  u"Cedar 1 Series", 0, 2, 1, true},
    {"FewOn",   u"Cedar 1 Series", 1, 1, 0, false},
};
// clang-format on

class LayoutToner : public testing::TestWithParam<TonerCase> {};

INSTANTIATE_TEST_SUITE_P(Rows, LayoutToner, testing::ValuesIn(kTonerCases), test::CaseName());

TEST_P(LayoutToner, SetsTheThicknessThatGoesWithIt) {
  for (const bool hasName : {true, false}) {
    LayoutStage stage;
    if (!hasName) {
      stage.language.strings.erase(5005);
    }
    stage.SelectModel(GetParam().model);
    ASSERT_TRUE(stage.Open([](UIContext& context) {
      context.privatePointer->TonerSavingMode = GetParam().row == 0 ? 1 : 0;
      context.privatePointer->Thickness = 3;
    }));
    stage.Watch();
    stage.onChange = [&] { EXPECT_EQ(stage.Redrawn(1067), 1U); };
    EXPECT_TRUE(stage.user().Choose(1045, GetParam().row));
    EXPECT_EQ(stage.own().TonerSavingMode, GetParam().row);
    EXPECT_EQ(stage.own().Thickness, GetParam().thickness);
    EXPECT_EQ(stage.user().Selected(1394), GetParam().thicknessRow);
    EXPECT_EQ(stage.user().Enabled(1394), GetParam().thicknessLive);
    ASSERT_EQ(stage.changes.size(), 1U);
    EXPECT_EQ(stage.OwnAt(0).Thickness, GetParam().thickness);
    EXPECT_EQ(stage.FavoriteAt(0), u"mine");
    // A language without the text leaves the name.
    EXPECT_EQ(stage.favorite(), hasName ? LayoutStage::Text(5005) : u"mine");
  }
}

TEST(LayoutTonerChoice, OfTheSameRowCountsToo) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->Thickness = 4; }));
  stage.Watch();
  EXPECT_TRUE(stage.user().Choose(1045, 0));
  EXPECT_EQ(stage.own().Thickness, 2);
  EXPECT_EQ(stage.changes.size(), 1U);
  EXPECT_TRUE(stage.IsUntitled());
}

TEST(LayoutThickness, IsTheRowsPlaceOrOneMore) {
  for (const bool all : {true, false}) {
    LayoutStage stage;
    stage.SelectModel(all ? u"Kauri 1 Series" : u"Elm 1 Series");
    ASSERT_TRUE(stage.Open());
    const std::int32_t rows = all ? 5 : 3;
    for (std::int32_t row = 0; row < rows; ++row) {
      stage.Watch();
      EXPECT_TRUE(stage.user().Choose(1394, row));
      EXPECT_EQ(stage.own().Thickness, all ? row : row + 1);
      ASSERT_EQ(stage.changes.size(), 1U);
      EXPECT_EQ(stage.FavoriteAt(0), u"mine");
      EXPECT_TRUE(stage.IsUntitled());
      EXPECT_EQ(stage.Redrawn(1067), 1U);
    }
  }
}

// The names of the long limit and of the short one.
TEST(LayoutNames, AreCutAtTwentyFourWhereTheRuleSaysSo) {
  const std::u16string name(100, u'n');
  LayoutStage stage;
  stage.language.strings[5005] = name;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1389));
  EXPECT_EQ(stage.favorite(), name.substr(0, 24));
  EXPECT_TRUE(stage.user().Choose(1394, 0));
  EXPECT_EQ(stage.favorite(), name);
  EXPECT_TRUE(stage.user().Choose(1393, 1));  // in any case, even where it's untitled already
  EXPECT_EQ(stage.favorite(), name.substr(0, 24));
}

TEST(LayoutNames, MissingTextIsUntitledInEnglish) {
  LayoutStage stage;
  stage.language.strings.erase(5005);
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1389));
  EXPECT_EQ(stage.favorite(), u"Untitled");
}

// ---- Rotation -----------------------------------------------------------------------------------

TEST(LayoutRotation, TurnsTheWordAtEachClick) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::int16_t turned : std::initializer_list<std::int16_t>{1, 0}) {
    stage.Watch();
    EXPECT_TRUE(stage.user().Click(1415));
    EXPECT_EQ(stage.own().Rotate180, turned);
    EXPECT_EQ(stage.user().Checked(1415), turned == 1);
    ASSERT_EQ(stage.changes.size(), 1U);
    EXPECT_EQ(stage.OwnAt(0).Rotate180, turned);
    EXPECT_EQ(stage.FavoriteAt(0), u"mine");
    EXPECT_TRUE(stage.IsUntitled());
    EXPECT_EQ(stage.Redrawn(1067), 1U);
  }
}

// ---- Defaults -----------------------------------------------------------------------------------

struct DefaultCase {
  const char* name;
  std::int16_t PrivateDevmode::*word;
  std::int16_t value;
};
void PrintTo(const DefaultCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr DefaultCase kDefaults[] = {
    {"BookletPrint",                    &PrivateDevmode::BookletPrint,                    0},
    {"BookletBinding",                  &PrivateDevmode::BookletBinding,                  0},
    {"BookletCoverType",                &PrivateDevmode::BookletCoverType,                1},
    {"BookletCoverSource",              &PrivateDevmode::BookletCoverSource,              0},
    {"BookletPrintCover",               &PrivateDevmode::BookletPrintCover,               0},
    {"BookletPrintOnCoverOutside",      &PrivateDevmode::BookletPrintOnCoverOutside,      0},
    {"BookletPrintOnCoverInside",       &PrivateDevmode::BookletPrintOnCoverInside,       0},
    {"BoookletPrintOnBackCoverOutside", &PrivateDevmode::BoookletPrintOnBackCoverOutside, 0},
    {"BoookletPrintOnBackCoverInside",  &PrivateDevmode::BoookletPrintOnBackCoverInside,  0},
    {"MultipleUp",                      &PrivateDevmode::MultipleUp,                      1},
    {"PageBorder",                      &PrivateDevmode::PageBorder,                      0},
    {"PageOrder",                       &PrivateDevmode::PageOrder,                       0},
    {"PosterPrint",                     &PrivateDevmode::PosterPrint,                     0},
    {"PosterType",                      &PrivateDevmode::PosterType,                      0},
    {"CropMarks",                       &PrivateDevmode::CropMarks,                       0},
    {"TonerSavingMode",                 &PrivateDevmode::TonerSavingMode,                 0},
    {"Thickness",                       &PrivateDevmode::Thickness,                       2},
    {"Rotate180",                       &PrivateDevmode::Rotate180,                       0},
};
// clang-format on

class LayoutDefault : public testing::TestWithParam<DefaultCase> {
 protected:
  // A record of defaults, as the button leaves it.
  static void Clean(UIContext& context) {
    for (const DefaultCase& row : kDefaults) {
      context.privatePointer->*row.word = row.value;
    }
    context.privatePointer->ScaleRadio = 100;
    context.publicPointer->dmOrientation = 1;
    context.publicPointer->dmDuplex = 3;
  }
};

INSTANTIATE_TEST_SUITE_P(Words, LayoutDefault, testing::ValuesIn(kDefaults), test::CaseName());

TEST_P(LayoutDefault, ComesBackAndRefreshesThePage) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open(Clean));
  stage.own().*GetParam().word = static_cast<std::int16_t>(GetParam().value + 1);
  stage.windows().stateChanges.clear();
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_EQ(stage.own().*GetParam().word, GetParam().value);
  EXPECT_FALSE(stage.windows().stateChanges.empty());
  EXPECT_EQ(stage.shared().dmDuplex, 3);
}

// The two that are no words of the private part.
TEST(LayoutDefaultsButton, AlsoRefreshesForTheScaleOrTheOrientationAlone) {
  void (*const kChanges[])(LayoutStage&) = {
      [](LayoutStage& stage) { stage.own().ScaleRadio = 99; },
      [](LayoutStage& stage) { stage.shared().dmOrientation = 2; }};
  for (const auto change : kChanges) {
    LayoutStage stage;
    ASSERT_TRUE(stage.Open());
    EXPECT_TRUE(stage.user().Click(1064));
    change(stage);
    stage.windows().stateChanges.clear();
    EXPECT_TRUE(stage.user().Click(1064));
    EXPECT_FALSE(stage.windows().stateChanges.empty());
    EXPECT_EQ(stage.own().ScaleRadio, 100);
    EXPECT_EQ(stage.shared().dmOrientation, 1);
  }
}

TEST(LayoutDefaultsButton, WithoutAChangeDoesNotRefresh) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->BookletCoverSource = 0;
    context.privatePointer->BookletCoverType = 1;
    context.publicPointer->dmOrientation = 1;
  }));
  EXPECT_TRUE(stage.user().Click(1064));
  stage.Watch();
  stage.windows().stateChanges.clear();
  stage.windows().SendMessageW(stage.Item(1391), kBmSetCheck, 1, 0);
  stage.onChange = [&] { EXPECT_EQ(stage.Redrawn(1067), 1U); };
  stage.Command(1064);
  EXPECT_TRUE(stage.windows().stateChanges.empty());
  EXPECT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.CheckedPages(), std::vector<std::int32_t>({1387}));
  EXPECT_FALSE(stage.IsUntitled());  // the defaults keep the favourite's name
  EXPECT_EQ(stage.user().Focus(), 1064);
}

TEST(LayoutDefaultsButton, BringsEveryOptionBackAtOnce) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    PrivateDevmode& own = *context.privatePointer;
    own.MultipleUp = 2;
    own.PageOrder = 1;
    own.PageBorder = 1;
    own.ScaleRadio = 150;
    own.TonerSavingMode = 1;
    own.Thickness = 0;
    own.Rotate180 = 1;
    context.publicPointer->dmOrientation = 2;
    context.publicPointer->dmDuplex = 3;
  }));
  stage.Watch();
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_EQ(stage.own().ScaleRadio, 100);
  EXPECT_EQ(stage.shared().dmOrientation, 1);
  EXPECT_EQ(stage.shared().dmDuplex, 3);
  EXPECT_EQ(stage.CheckedPages(), std::vector<std::int32_t>({1387}));
  EXPECT_TRUE(stage.IsScaleLive(true));
  EXPECT_EQ(stage.user().Text(1025), u"100");
  EXPECT_EQ(stage.user().Selected(1048), 0);
  EXPECT_EQ(stage.user().Selected(1394), 2);
  EXPECT_FALSE(stage.user().Checked(1415));
  EXPECT_TRUE(stage.user().Enabled(1486));
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(std::memcmp(&stage.changes[0], &stage.context().devmode, sizeof(DriverDevmode)), 0);
  EXPECT_EQ(stage.favorite(), u"mine");
}

// ---- The booklet's settings ---------------------------------------------------------------------

struct SettingsCase {
  const char* name;
  std::int32_t button;  // by which the dialog is left
  std::size_t changes;
};
void PrintTo(const SettingsCase& row, std::ostream* out) {
  *out << row.name;
}

class LayoutBookletSettings : public testing::TestWithParam<SettingsCase> {};

INSTANTIATE_TEST_SUITE_P(Ends, LayoutBookletSettings,
                         testing::Values(SettingsCase{"Ok", kIdOk, 2},
                                         SettingsCase{"Cancel", kIdCancel, 1}),
                         test::CaseName());

// By OK the settings are no favourite's, and the sheet is told twice.
TEST_P(LayoutBookletSettings, LeaveThePictureToBeDrawnAgain) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 3;
    context.privatePointer->BookletPrint = 1;
  }));
  stage.Watch();
  int openings = 0;
  stage.windows().onDialog = [&](WindowHandle dialog) {
    ++openings;
    headless::User user(stage.world().platform, dialog);
    EXPECT_FALSE(stage.user().Click(1065));  // the page behind is locked
    EXPECT_TRUE(user.Choose(1479, 1));
    EXPECT_TRUE(user.Click(GetParam().button));
  };
  std::vector<std::size_t> drawn;
  stage.onChange = [&] { drawn.push_back(stage.Redrawn(1067)); };
  EXPECT_TRUE(stage.user().Click(1065));
  EXPECT_EQ(openings, 1);
  const bool ok = GetParam().button == kIdOk;
  EXPECT_EQ(stage.own().BookletBinding, ok ? 1 : 0);
  EXPECT_EQ(drawn, ok ? std::vector<std::size_t>({0, 1}) : std::vector<std::size_t>({1}));
  EXPECT_EQ(stage.changes.size(), GetParam().changes);
  EXPECT_EQ(stage.IsUntitled(), ok);
  if (ok) {
    EXPECT_EQ(stage.FavoriteAt(0), LayoutStage::Text(5005));
  }
}

// ---- Commands that mean nothing here ------------------------------------------------------------

TEST(LayoutCommands, OtherCodesOfTheControlsDoNothing) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  const DriverDevmode before = stage.context().devmode;
  for (const std::int32_t id : {1484, 1485, 1486, 1387, 1392, 1415, 1064, 1065}) {
    stage.Command(id, 6);  // BN_SETFOCUS
  }
  for (const std::int32_t id : {1046, 1393, 1048, 1045, 1394}) {
    stage.windows().SendMessageW(stage.Item(id), kCbSetCurSel, 1, 0);
    stage.Command(id, 3);  // CBN_SETFOCUS
  }
  for (const std::int32_t id : {1408, 1067, 1452, 2, 0}) {
    stage.Command(id);
  }
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
}

}  // namespace
}  // namespace ostrel
