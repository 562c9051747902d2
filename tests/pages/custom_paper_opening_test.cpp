// The dialog of the user's own papers as it opens: its texts, its lists, the size and the name that
// it starts with, and stores that somebody else has written.
#include "pages/custom_paper_stage.h"

#include <limits>

namespace ostrel {
namespace {

// ---- Texts --------------------------------------------------------------------------------------

struct CaptionCase {
  std::int32_t control;
  std::uint32_t millimeterText;
  std::uint32_t inchText;
};
constexpr CaptionCase kCaptions[] = {
    {1110, 4039, 4039}, {1111, 4038, 4038}, {1421, 5023, 5023}, {1417, 5024, 5024},
    {1064, 1011, 1011}, {1112, 1041, 1041}, {1, 175, 175},      {2, 176, 176},
    {1267, 4036, 4036}, {1109, 4037, 4037}, {1165, 1194, 1194}, {1420, 1194, 1194},
    {1274, 191, 192},   {1275, 191, 192},   {1268, 1189, 1190}, {1271, 1191, 1192},
};

class CustomPaperTexts : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Languages, CustomPaperTexts, testing::ValuesIn(test::Languages()),
                         [](const auto& row) { return row.param; });

TEST_P(CustomPaperTexts, AreTheLanguagesOwnInBothUnits) {
  const headless::StringTable& texts = test::Strings(GetParam());
  CustomPaperStage stage;
  stage.UseLanguage(GetParam(), false);
  for (auto& control : stage.language.dialogs.at(657).controls) {
    control.title = u"from the template";
  }
  stage.language.dialogs.at(657).title = u"from the template";
  EXPECT_FALSE(stage.Show([&] {
    EXPECT_EQ(stage.windows().TextOf(*stage.windows().Find(stage.dialog())), texts.at(294));
    for (const CaptionCase& row : kCaptions) {
      EXPECT_EQ(stage.Text(row.control), texts.at(row.millimeterText)) << row.control;
    }
    EXPECT_TRUE(stage.user().Click(kInches));
    for (const CaptionCase& row : kCaptions) {
      EXPECT_EQ(stage.Text(row.control), texts.at(row.inchText)) << row.control;
    }
  }));
  EXPECT_EQ(stage.timesShown, 1);
}

TEST(CustomPaperOpening, TextsThatTheLanguageLacksStayTheTemplates) {
  CustomPaperStage stage;
  const std::u16string title = CustomPaperStage::English(294);
  const std::u16string save = CustomPaperStage::English(5023);
  stage.language.strings.clear();
  stage.Show([&] {
    EXPECT_EQ(stage.windows().TextOf(*stage.windows().Find(stage.dialog())), title);
    EXPECT_EQ(stage.Text(kSave), save);
    EXPECT_EQ(stage.Text(kNameBox), u"Untitled");
  });
}

TEST(CustomPaperOpening, BoxesTakeSixCharactersAndNamesSixteen) {
  CustomPaperStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"0000123"));
    EXPECT_EQ(stage.Text(kWidth), u"000012");
    EXPECT_TRUE(stage.user().Type(kLength, u"0000123"));
    EXPECT_EQ(stage.Text(kLength), u"000012");
    EXPECT_TRUE(stage.user().Type(kNameBox, u"12345678901234567"));
    EXPECT_EQ(stage.Text(kNameBox), u"1234567890123456");
  });
}

TEST(CustomPaperOpening, HeldSpinsNeverAccelerate) {
  CustomPaperStage stage;
  stage.Show([&] {
    for (const std::int32_t spin : {kWidthSpin, kLengthSpin}) {
      const auto& rows = stage.windows().Find(stage.user().Control(spin))->spin.accelerations;
      ASSERT_EQ(rows.size(), 1U);
      EXPECT_EQ(rows[0].nSec, 200U);
      EXPECT_EQ(rows[0].nInc, 1U);
    }
  });
}

// ---- The list -----------------------------------------------------------------------------------

TEST(CustomPaperOpening, ListsTheStoredNamesInTheirOrder) {
  CustomPaperStage stage;
  stage.Put({Card(u"Zebra", 290), Photo(u"Ant", 288), Card(u"ant", 289)});
  stage.Show([&] {
    EXPECT_EQ(stage.user().ItemTexts(kNameBox),
              (std::vector<std::u16string>{u"Zebra", u"Ant", u"ant"}));
  });
}

struct WidthCase {
  const char* name;
  std::vector<std::size_t> lengths;  // of the names, each character six pixels wide
  std::intptr_t width;
};

class CustomPaperListWidth : public testing::TestWithParam<WidthCase> {};

INSTANTIATE_TEST_SUITE_P(Names, CustomPaperListWidth,
                         testing::Values(WidthCase{"None", {}, 180},
                                         WidthCase{"Short", {3, 24}, 180},
                                         WidthCase{"JustNarrowEnough", {35}, 180},
                                         WidthCase{"JustTooWide", {36}, 186},
                                         WidthCase{"TheWidestInTheMiddle", {36, 60, 40}, 330}),
                         test::CaseName());

TEST_P(CustomPaperListWidth, IsTheWidestNamesLessThirty) {
  CustomPaperStage stage;
  test::SettingsTree tree;
  for (const std::size_t length : GetParam().lengths) {
    tree.papers.push_back(test::Record(std::string(length, 'n'), "x"));
  }
  test::PutSettings(stage.world, tree.Bytes());
  stage.Show([&] {
    headless::Window* list = stage.windows().Find(stage.user().Control(kNameBox));
    EXPECT_EQ(list->list.droppedWidth, GetParam().width);
  });
  EXPECT_EQ(stage.timesShown, 1);
}

TEST(CustomPaperOpening, MakesTheSettingsFileWhereThereIsNone) {
  CustomPaperStage stage;
  stage.Show([&] { EXPECT_TRUE(stage.user().ItemTexts(kNameBox).empty()); });
  EXPECT_SETTINGS(stage.world, test::SettingsTree{}.Bytes());
}

// ---- The unit -----------------------------------------------------------------------------------

struct UnitCase {
  const char* name;
  std::int16_t paper;
  bool letterCountry;
  std::uint32_t recordUnit;  // of paper 288
  std::int32_t radio;
};

class CustomPaperUnit : public testing::TestWithParam<UnitCase> {};

INSTANTIATE_TEST_SUITE_P(
    Papers, CustomPaperUnit,
    testing::Values(UnitCase{"A4Country", 9, false, 2, kMillimeters},
                    UnitCase{"LetterCountry", 9, true, 1, kInches},
                    UnitCase{"OwnInMillimeters", 288, true, 1, kMillimeters},
                    UnitCase{"OwnInInches", 288, false, 2, kInches},
                    UnitCase{"OwnInNoUnit", 288, false, 0, kInches},
                    UnitCase{"OwnInAnUnknownUnit", 288, false, 77, kInches},
                    UnitCase{"BelowTheOwnOnes", 287, false, 2, kMillimeters},
                    UnitCase{"AnIdBelowZero", -1, true, 1, kInches},
                    UnitCase{"OwnButGoneInAnA4Country", 289, false, 2, kMillimeters},
                    UnitCase{"OwnButGoneInALetterCountry", 289, true, 1, kInches}),
    test::CaseName());

TEST_P(CustomPaperUnit, IsThePapersOwnOrTheCountrys) {
  const UnitCase& row = GetParam();
  CustomPaperStage stage;
  PaperFacts paper = Card(u"Mine");
  paper.unit = row.recordUnit;
  stage.Put({paper});
  if (row.letterCountry) {
    stage.UseLetterCountry();
  }
  stage.SetWords({row.paper, 1, 2});
  stage.Show([&] {
    EXPECT_EQ(stage.user().Checked(kMillimeters), row.radio == kMillimeters);
    EXPECT_EQ(stage.user().Checked(kInches), row.radio == kInches);
  });
  EXPECT_EQ(stage.timesShown, 1);
  EXPECT_EQ(stage.Words(), (PaperWords{row.paper, 1, 2}));
}

// A stored record whose id is no user's: nothing of it counts, its unit neither.
TEST(CustomPaperOpening, ARecordWithAnIdBelowTheOwnOnesIsNotThePaperInForce) {
  for (const std::int16_t id : std::initializer_list<std::int16_t>{287, 9}) {
    CustomPaperStage stage;
    stage.Put({Photo(u"Low", static_cast<std::uint32_t>(id)), Card(u"Card", 288)});
    stage.SetWords({id, 1, 2});
    stage.Show([&] {
      EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
      EXPECT_EQ(stage.user().Selected(kNameBox), -1);
    });
    EXPECT_EQ(stage.timesShown, 1);
    EXPECT_EQ(stage.Words(), (PaperWords{id, 1, 2}));
  }
}

// ---- What is shown ------------------------------------------------------------------------------

TEST(CustomPaperOpening, ShowsThePaperInForceByItsId) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card", 289), Photo(u"Photo", 288)});
  stage.SetWords({288, 7, 8});
  stage.Show([&] {
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Photo", u"4.00", u"6.00", kInches, false, true}));
    EXPECT_EQ(stage.user().Selected(kNameBox), 1);
  });
}

TEST(CustomPaperOpening, ShowsTheFirstStoredPaperForAnotherOneAndSelectsNoRow) {
  CustomPaperStage stage;
  stage.Put({Photo(u"Photo", 289), Card(u"Card", 288)});
  stage.Show([&] {
    // In the unit of the country.
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Photo", u"101.6", u"152.4", kMillimeters, false, true}));
    EXPECT_EQ(stage.user().Selected(kNameBox), -1);
  });
  EXPECT_EQ(stage.Words(), test::kA4Words);
}

TEST(CustomPaperOpening, WithoutStoredPapersShowsANewOneOfA4sSize) {
  CustomPaperStage stage;
  stage.Show([&] {
    EXPECT_EQ(stage.Seen(),
              (PaperSeen{u"Untitled", u"210.0", u"297.0", kMillimeters, false, false}));
    const auto& paper = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper)->paper;
    EXPECT_EQ(paper.PaperId, 288U);
    EXPECT_EQ(paper.Unit, 1U);
    EXPECT_EQ(paper.Width, 4961);
    EXPECT_EQ(paper.Length, 7016);
    EXPECT_EQ(std::u16string(paper.Name), u"Untitled");
  });
}

TEST(CustomPaperOpening, ANewPaperInALetterCountryIsShownInInches) {
  CustomPaperStage stage;
  stage.UseLetterCountry();
  stage.Show([&] {
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Untitled", u"8.27", u"11.69", kInches, false, false}));
    const auto& paper = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper)->paper;
    EXPECT_EQ(paper.Unit, 2U);
  });
}

TEST(CustomPaperOpening, ANewPaperHasTheLanguagesOwnName) {
  CustomPaperStage stage;
  stage.UseLanguage("de", true);
  stage.Show([&] {
    EXPECT_EQ(stage.Seen(),
              (PaperSeen{u"Unbenannt", u"210,0", u"297,0", kMillimeters, false, false}));
  });
}

TEST(CustomPaperOpening, OfAnUntitledStoredPaperCanBeDeleted) {
  CustomPaperStage stage;
  stage.Put({Card(u"Untitled")});
  stage.Show([&] {
    EXPECT_EQ(stage.Seen(),
              (PaperSeen{u"Untitled", u"100.0", u"150.0", kMillimeters, false, true}));
  });
}

// ---- Sizes at the limits ------------------------------------------------------------------------

struct ShownCase {
  const char* name;
  std::uint32_t unit;
  std::uint16_t width;
  std::uint16_t length;
  const char16_t* shownWidth;
  const char16_t* shownLength;
};

class CustomPaperShown : public testing::TestWithParam<ShownCase> {};

INSTANTIATE_TEST_SUITE_P(
    Sizes, CustomPaperShown,
    testing::Values(ShownCase{"LeastMillimeters", 1, 1772, 3496, u"75.0", u"148.0"},
                    ShownCase{"MostMillimeters", 1, 5102, 8409, u"216.0", u"356.0"},
                    ShownCase{"BelowMillimeters", 1, 1769, 3494, u"75.0", u"148.0"},
                    ShownCase{"AboveMillimeters", 1, 5105, 8412, u"216.0", u"356.0"},
                    ShownCase{"LeastInches", 2, 1770, 3498, u"2.95", u"5.83"},
                    ShownCase{"MostInches", 2, 5100, 8400, u"8.50", u"14.00"},
                    ShownCase{"BelowInches", 2, 1763, 3491, u"2.95", u"5.83"},
                    ShownCase{"AboveInches", 2, 5107, 8409, u"8.50", u"14.00"},
                    ShownCase{"NothingInMillimeters", 1, 0, 0, u"75.0", u"148.0"},
                    ShownCase{"NothingInInches", 2, 0, 0, u"2.95", u"5.83"},
                    ShownCase{"EverythingInMillimeters", 1, 65535, 65535, u"216.0", u"356.0"},
                    ShownCase{"EverythingInInches", 2, 65535, 65535, u"8.50", u"14.00"},
                    ShownCase{"HalfAStepGoesUp", 2, 3003, 4203, u"5.01", u"7.01"},
                    ShownCase{"LessGoesDown", 2, 3002, 4202, u"5.00", u"7.00"}),
    test::CaseName());

TEST_P(CustomPaperShown, LieWithinTheLimits) {
  const ShownCase& row = GetParam();
  for (const bool comma : {false, true}) {
    CustomPaperStage stage;
    stage.UseLanguage("enus", comma);
    stage.Put(
        {PaperFacts{.name = u"Mine", .unit = row.unit, .width = row.width, .length = row.length}});
    stage.SetWords({288, 1, 2});
    stage.Show([&] {
      std::u16string width = row.shownWidth;
      std::u16string length = row.shownLength;
      if (comma) {
        std::ranges::replace(width, u'.', u',');
        std::ranges::replace(length, u'.', u',');
      }
      EXPECT_EQ(stage.Text(kWidth), width);
      EXPECT_EQ(stage.Text(kLength), length);
      EXPECT_EQ(stage.Text(kNameBox), u"Mine");  // shown by code: no change by the user
    });
    EXPECT_EQ(stage.timesShown, 1);
    EXPECT_EQ(stage.Words(), (PaperWords{288, 1, 2}));
  }
}

// ---- Stores that somebody else has written ------------------------------------------------------

TEST(CustomPaperStoreOfOthers, ARecordOfTheWrongLengthIsListedAndPassedOver) {
  for (const std::size_t length : {0U, 1U, 71U, 73U, 200U}) {
    CustomPaperStage stage;
    test::PutSettings(
        stage.world, test::SettingsTree{.papers = {test::Record("Broken", std::string(length, 'x')),
                                                   test::StoredPaper(Card(u"Card"))}}
                         .Bytes());
    stage.Show([&] {
      EXPECT_EQ(stage.user().ItemTexts(kNameBox),
                (std::vector<std::u16string>{u"Broken", u"Card"}));
      EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
    });
    EXPECT_EQ(stage.timesShown, 1);
  }
}

TEST(CustomPaperStoreOfOthers, WithoutAReadableRecordANewPaperIsShown) {
  CustomPaperStage stage;
  test::PutSettings(stage.world,
                    test::SettingsTree{.papers = {test::Record("Broken", "x")}}.Bytes());
  stage.Show([&] {
    EXPECT_EQ(stage.Seen(),
              (PaperSeen{u"Untitled", u"210.0", u"297.0", kMillimeters, false, false}));
  });
}

TEST(CustomPaperStoreOfOthers, TheFirstOfTwoWithTheSameIdIsShown) {
  CustomPaperStage stage;
  stage.Put({Card(u"First", 300), Photo(u"Second", 300)});
  stage.SetWords({300, 1, 2});
  stage.Show([&] {
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"First", u"100.0", u"150.0", kMillimeters, false, true}));
    EXPECT_EQ(stage.user().Selected(kNameBox), 0);
  });
}

TEST(CustomPaperStoreOfOthers, TheNameIsThatUnderWhichARecordIsStored) {
  CustomPaperStage stage;
  test::PutSettings(
      stage.world,
      test::SettingsTree{.papers = {test::Record("Outside", test::PaperBytes(Card(u"Inside")))}}
          .Bytes());
  stage.SetWords({288, 1, 2});
  stage.Show([&] { EXPECT_EQ(stage.Text(kNameBox), u"Outside"); });
  stage.SetWords(test::kA4Words);
  stage.Show([&] { EXPECT_EQ(stage.Text(kNameBox), u"Outside"); });
}

TEST(CustomPaperStoreOfOthers, ANameWithoutATerminatorEndsWithItsField) {
  CustomPaperStage stage;
  test::PutSettings(
      stage.world,
      test::SettingsTree{.papers = {test::Record(
                             "Long", test::PaperBytes(Card(std::u16string(26, u'n'), 0x1FFFF)))}}
          .Bytes());
  stage.SetWords({-1, 1, 2});  // its id has these low words, and isn't this paper's
  stage.Show([&] {
    EXPECT_EQ(stage.user().ItemTexts(kNameBox), (std::vector<std::u16string>{u"Long"}));
    EXPECT_EQ(stage.Text(kNameBox), u"Untitled");
    EXPECT_EQ(stage.user().Selected(kNameBox), -1);
  });
}

TEST(CustomPaperStoreOfOthers, NamesUpToTheStoresLimitAreShownWhole) {
  for (const std::size_t length : {24U, 25U, 31U}) {
    CustomPaperStage stage;
    const std::u16string name(length, u'n');
    test::PutSettings(stage.world,
                      test::SettingsTree{.papers = {test::Record(std::string(length, 'n'),
                                                                 test::PaperBytes(Card(name)))}}
                          .Bytes());
    stage.Show([&] {
      EXPECT_EQ(stage.Seen(), (PaperSeen{name, u"100.0", u"150.0", kMillimeters, false, true}));
    });
    EXPECT_EQ(stage.timesShown, 1);
  }
}

TEST(CustomPaperStoreOfOthers, NumbersThatAreNoneShowTheWholePixels) {
  CustomPaperStage stage;
  PaperFacts paper = Card(u"Odd");
  paper.exactWidth = std::numeric_limits<float>::quiet_NaN();
  paper.exactLength = -std::numeric_limits<float>::infinity();
  stage.Put({paper});
  stage.Show([&] {
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Odd", u"100.0", u"150.0", kMillimeters, false, true}));
  });
}

TEST(CustomPaperStoreOfOthers, MoreRecordsThanRoomAreListedAsFarAsItGoes) {
  CustomPaperStage stage;
  stage.Put(Papers(40));
  stage.Show([&] { EXPECT_EQ(stage.user().ItemTexts(kNameBox).size(), 32U); });
  EXPECT_EQ(stage.timesShown, 1);
}

// ---- No store -----------------------------------------------------------------------------------

struct NoStoreCase {
  const char* name;
  bool rightToLeft;
  std::uint32_t style;
};

class CustomPaperWithoutStore : public testing::TestWithParam<NoStoreCase> {};

INSTANTIATE_TEST_SUITE_P(Languages, CustomPaperWithoutStore,
                         testing::Values(NoStoreCase{"LeftToRight", false, 0x30},
                                         NoStoreCase{"RightToLeft", true, 0x180030}),
                         test::CaseName());

TEST_P(CustomPaperWithoutStore, TellsSoAndStaysEmpty) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card")});
  const std::string before = test::Settings(stage.world);
  stage.world.process.RightToLeftLanguage = GetParam().rightToLeft;
  stage.world.platform.faults.FailOperation("CreateFileW");
  const auto play = [&] {
    ASSERT_EQ(stage.boxes().size(), 1U);
    EXPECT_EQ(stage.boxes()[0].text, u"Initialize paper error.");
    EXPECT_EQ(stage.boxes()[0].caption, u"Paper");
    EXPECT_EQ(stage.boxes()[0].style, GetParam().style);
    EXPECT_EQ(stage.boxes()[0].owner, stage.dialog());
    EXPECT_EQ(stage.Text(kSave), CustomPaperStage::English(5023));  // captions are there
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"", u"", u"", 0, true, true}));
    // Nothing happens in it.
    for (const std::int32_t id : {kSave, kDelete, kDefaults, kInches}) {
      stage.Command(id);
    }
    EXPECT_TRUE(stage.user().Type(kWidth, u"x1"));
    EXPECT_TRUE(stage.user().SpinUp(kWidthSpin));
    EXPECT_TRUE(stage.user().Type(kNameBox, u"A.b"));
    stage.Command(kNameBox, kCbnSelChange);
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"A.b", u"x1", u"", 0, true, true}));
    EXPECT_EQ(stage.boxes().size(), 1U);
    EXPECT_TRUE(stage.IsOpen());
  };
  EXPECT_TRUE(stage.Show([&] {
    play();
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  stage.windows().boxes.clear();
  EXPECT_FALSE(stage.Show([&] {
    play();
    EXPECT_TRUE(stage.user().Click(kIdCancel));
  }));
  EXPECT_EQ(stage.timesShown, 2);
  stage.world.platform.faults.Clear();
  EXPECT_EQ(stage.Words(), test::kA4Words);
  EXPECT_EQ(test::Settings(stage.world), before);
}

TEST(CustomPaperOpening, WithoutAStoreForgetsWhatAnEarlierDialogSaved) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card")});
  stage.SetWords({288, 7, 8});
  stage.Show([&] { EXPECT_TRUE(stage.user().Click(kDelete)); });
  stage.SetWords({5, 1, 2});
  stage.world.platform.faults.FailOperation("CreateFileW");
  EXPECT_FALSE(stage.Show([&] { EXPECT_TRUE(stage.user().Click(kIdCancel)); }));
  EXPECT_EQ(stage.Words(), (PaperWords{5, 1, 2}));
}

// ---- Help, and dialogs that can't be made -------------------------------------------------------

TEST(CustomPaperHelp, OpensItsTopic) {
  CustomPaperStage stage;
  stage.Show([&] { EXPECT_TRUE(stage.user().Click(test::kHelp)); });
  ASSERT_EQ(stage.world.platform.shell.help.size(), 1U);
  EXPECT_EQ(stage.world.platform.shell.help[0].command, 15U);
  EXPECT_EQ(stage.world.platform.shell.help[0].data, 5100U);
}

TEST(CustomPaperHelp, OpensWithoutAStoreToo) {
  CustomPaperStage stage;
  stage.world.platform.faults.FailOperation("CreateFileW");
  stage.Show([&] { EXPECT_TRUE(stage.user().Click(test::kHelp)); });
  EXPECT_EQ(stage.world.platform.shell.help.size(), 1U);
}

TEST(CustomPaperDialog, WithoutATemplateIsNotAccepted) {
  CustomPaperStage stage;
  stage.language.dialogs.erase(657);
  EXPECT_FALSE(stage.Show());
  EXPECT_EQ(stage.timesShown, 0);
  EXPECT_EQ(stage.Words(), test::kA4Words);
}

TEST(CustomPaperDialog, DestroyedWithoutAnAnswerTakesNothingMore) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card"), Photo(u"Photo", 289)});
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    const auto& state = *GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper);
    EXPECT_TRUE(state.open);
    stage.windows().Deliver(stage.dialog(), kWmDestroy, 0, 0);
    EXPECT_FALSE(state.open);
    // Its controls are no longer there for it.
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.user().ItemTexts(kNameBox).size(), 2U);
    EXPECT_EQ(stage.Words(), test::CardWords(288));
  });
  EXPECT_EQ(stage.timesShown, 1);
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Photo(u"Photo", 289)}));
}

TEST(CustomPaperDialog, WithoutMemoryForItsStateCanBeLeftBothWays) {
  CustomPaperStage stage;
  stage.world.platform.faults.FailOperation("HeapAlloc");
  EXPECT_TRUE(stage.Show([&] {
    stage.Command(kSave);
    stage.Command(kNameBox, kCbnEditChange);
    EXPECT_TRUE(stage.user().SpinUp(kWidthSpin));
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  EXPECT_FALSE(stage.Show([&] { EXPECT_TRUE(stage.user().Click(kIdCancel)); }));
  EXPECT_EQ(stage.timesShown, 2);
  EXPECT_EQ(stage.Words(), test::kA4Words);
}

}  // namespace
}  // namespace ostrel
