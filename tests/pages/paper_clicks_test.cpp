// The paper page's source list, its feed, its Defaults button and the way to the custom papers.
#include "pages/paper_stage.h"

namespace ostrel {
namespace {

// ---- The source ---------------------------------------------------------------------------------

TEST(SourceChoice, IsTaken) {
  for (const std::int16_t bin : Words{7, 4, 257, 258, 259}) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.source = bin == 7 ? std::int16_t{4} : std::int16_t{7}}));
    stage.PickSource(bin);
    EXPECT_EQ(stage.shared().dmDefaultSource, bin);
    EXPECT_EQ(stage.own().SourceTray, bin);
    EXPECT_TRUE(stage.IsUntitled());
    EXPECT_TRUE(stage.boxes().empty());
    EXPECT_EQ(stage.TakeChanges(), 1U);
  }
}

TEST(SourceChoice, SameBinIsNoChange) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.source = 258}));
  stage.PickSource(258);
  EXPECT_EQ(stage.TakeChanges(), 0U);
  EXPECT_EQ(stage.favorite(), u"Mine");
}

// It is compared with SourceTray, which may name none.
TEST(SourceChoice, AutomaticSourceIsAChangeWhereNoneIsNamed) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.source = 7}));
  stage.own().SourceTray = 0;
  stage.PickSource(7);
  EXPECT_EQ(stage.own().SourceTray, 7);
  EXPECT_EQ(stage.TakeChanges(), 1U);
}

struct RefusalCase {
  const char* name;
  std::int16_t paper;
  std::uint32_t media;
  std::int16_t before;
  std::int16_t bin;
  std::uint32_t text;  // of the box; 0 for a bin that is taken
};
void PrintTo(const RefusalCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr RefusalCase kRefusalCases[] = {
    {"SmallPaperTray2",      252, 1,   257, 258, 180},
    {"SmallPaperAutomatic",  246, 264, 4,   7,   180},
    {"SmallPaperTray1",      241, 1,   4,   257, 0},
    {"EnvelopeTray1",        37,  1,   4,   257, 180},
    {"LetterheadManual",     9,   261, 257, 4,   5033},
    {"LetterheadAutomatic",  9,   261, 258, 7,   5033},
    {"LetterheadTray3",      9,   261, 258, 259, 0},
    {"TransparencyTray2",    9,   2,   257, 258, 5033},
    {"EnvelopeMediaTray1",   9,   258, 4,   257, 5033},
    {"LabelsManual",         9,   263, 257, 4,   0},
    {"BothRefuse",           252, 261, 257, 7,   180},
    {"UnlistedMedia",        9,   100, 4,   257, 5033},
};
// clang-format on

class SourceRefusal : public testing::TestWithParam<RefusalCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, SourceRefusal, testing::ValuesIn(kRefusalCases), test::CaseName());

TEST_P(SourceRefusal, NamesThePaperOrElseTheMedia) {
  const RefusalCase& row = GetParam();
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  // What the page itself would have repaired on its way here.
  PaperStage::With({.paper = row.paper, .media = row.media, .source = row.before})(stage.context());
  stage.PickSource(row.bin);
  EXPECT_TRUE(stage.IsUntitled());
  EXPECT_EQ(stage.TakeChanges(), 1U);  // in either case
  const std::int16_t after = row.text == 0 ? row.bin : row.before;
  EXPECT_EQ(stage.shared().dmDefaultSource, after);
  EXPECT_EQ(stage.own().SourceTray, after);
  EXPECT_EQ(stage.Shown(1393), after);
  if (row.text == 0) {
    EXPECT_TRUE(stage.boxes().empty());
  } else {
    stage.ExpectOneBox(PaperStage::Text(row.text));
  }
}

// The list showed dmDefaultSource; SourceTray, which names none here, isn't what it goes back to.
TEST(SourceChoice, RefusalShowsTheSourceThatWasShown) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 252, .source = 257, .tray = 0}));
  ASSERT_EQ(stage.Shown(1393), 257);
  stage.PickSource(258);
  stage.ExpectOneBox(PaperStage::Text(180));
  EXPECT_EQ(stage.Source(), (SourceSeen{2, true, false, true, 257, 0}));
}

TEST(SourceChoice, RefusedSourceIsShownUntilTheBoxIsClosed) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 252, .source = 257}));
  const std::vector<int>& shown = stage.WatchBoxes(1393);
  stage.onChange = [&] { EXPECT_EQ(stage.Shown(1393), 257); };  // the sheet is told last
  stage.PickSource(258);
  EXPECT_EQ(shown, std::vector<int>({258}));
  EXPECT_EQ(stage.TakeChanges(), 1U);
}

TEST(SourceChoice, TellsTheSheetLast) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  stage.PickSource(258);
  EXPECT_EQ(stage.WrittenBehindTheChange(), "");
}

// A place that the list hasn't, none among them, stands for the automatic source.
TEST(SourceChoice, NoSelectionIsTheAutomaticSource) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.source = 258}));
  stage.windows().SendMessageW(stage.Item(1393), kCbSetCurSel, ~std::uintptr_t{0}, 0);
  stage.Command(1393, kCbnSelChange);
  EXPECT_EQ(stage.shared().dmDefaultSource, 7);
  EXPECT_EQ(stage.own().SourceTray, 7);
  EXPECT_EQ(stage.TakeChanges(), 1U);
}

TEST(SourceChoice, CustomPaperTakesAny) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own")});
  ASSERT_TRUE(stage.OpenWith({.paper = 288}));
  for (const std::int16_t bin : Words{4, 257, 258, 259, 7}) {
    stage.PickSource(bin);
    EXPECT_EQ(stage.own().SourceTray, bin);
  }
  EXPECT_TRUE(stage.boxes().empty());
}

TEST(SourceChoice, GoesOnWithoutTheUntitledName) {
  PaperStage stage;
  stage.language.strings.erase(5005);
  ASSERT_TRUE(stage.OpenWith({}));
  stage.PickSource(258);
  EXPECT_EQ(stage.own().SourceTray, 258);
  EXPECT_EQ(stage.favorite(), u"Mine");
  EXPECT_EQ(stage.TakeChanges(), 1U);
}

// ---- The feed -----------------------------------------------------------------------------------

TEST(FeedChoice, FollowsTheRadioThatIsNotInForce) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 11}));
  EXPECT_TRUE(stage.user().Click(1240));  // in force
  EXPECT_EQ(stage.TakeChanges(), 0U);
  EXPECT_EQ(stage.favorite(), u"Mine");
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_EQ(stage.own().FeedOrient, 2);
  EXPECT_TRUE(stage.user().Checked(1125));
  EXPECT_FALSE(stage.user().Checked(1240));
  EXPECT_TRUE(stage.IsUntitled());
  EXPECT_EQ(stage.TakeChanges(), 1U);
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_EQ(stage.TakeChanges(), 0U);
  EXPECT_TRUE(stage.user().Click(1240));
  EXPECT_EQ(stage.own().FeedOrient, 1);
  EXPECT_TRUE(stage.user().Checked(1240));
  EXPECT_FALSE(stage.user().Checked(1125));
  EXPECT_EQ(stage.TakeChanges(), 1U);
}

TEST(FeedChoice, TellsTheSheetLast) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 11}));
  stage.onChange = [&] { EXPECT_TRUE(stage.user().Checked(1125)); };
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_EQ(stage.WrittenBehindTheChange(), "");
}

TEST(FeedChoice, IsOutOfReachForAnyOtherPaper) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9}));
  EXPECT_FALSE(stage.user().Click(1125));
  EXPECT_EQ(stage.own().FeedOrient, 1);
}

TEST(FeedChoice, GoesOnWithoutTheUntitledName) {
  PaperStage stage;
  stage.language.strings.erase(5005);
  ASSERT_TRUE(stage.OpenWith({.paper = 11}));
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_EQ(stage.own().FeedOrient, 2);
  EXPECT_EQ(stage.favorite(), u"Mine");
}

// ---- Defaults -----------------------------------------------------------------------------------

struct DefaultsCase {
  const char* name;
  PaperRecord record;
  std::int16_t tray;
  bool changes;
};
void PrintTo(const DefaultsCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const DefaultsCase kDefaultsCases[] = {
    {"Nothing",   {},                            0,   false},
    {"Tray",      {.source = 258},               258, true},
    {"Automatic", {},                            7,   true},
    {"Media",     {.media = 264},                0,   true},
    {"Feed",      {.feed = 2},                   0,   true},
    {"Paper",     {.paper = 5},                  0,   true},
    {"All",       {.paper = 11, .media = 258, .source = 4, .feed = 2}, 4, true},
};
// clang-format on

class PaperDefaults : public testing::TestWithParam<DefaultsCase> {};
INSTANTIATE_TEST_SUITE_P(Triggers, PaperDefaults, testing::ValuesIn(kDefaultsCases),
                         test::CaseName());

TEST_P(PaperDefaults, ResetWhenAnyOfTheFourDiffers) {
  for (const bool letter : {false, true}) {
    PaperStage stage;
    stage.world().platform.locale.country = letter ? u"1" : u"49";
    PaperRecord record = GetParam().record;
    record.paper = record.paper == 9 && letter ? std::int16_t{1} : record.paper;
    ASSERT_TRUE(stage.OpenWith(record));
    stage.own().SourceTray = GetParam().tray;
    stage.own().FeedOrient = record.feed;
    EXPECT_TRUE(stage.user().MoveFocus(1404));
    const DriverDevmode before = stage.context().devmode;
    EXPECT_TRUE(stage.user().MoveFocus(1407));
    stage.Command(1064);
    EXPECT_EQ(stage.user().Focus(), 1064);
    EXPECT_EQ(stage.favorite(), u"Mine");
    EXPECT_TRUE(stage.boxes().empty());
    if (!GetParam().changes) {
      EXPECT_EQ(test::Difference(test::BytesOf(stage.context().devmode), test::BytesOf(before)),
                "");
      EXPECT_EQ(stage.TakeChanges(), 0U);
      EXPECT_FALSE(AskPages(&PageLinks::mediaChanged));
      continue;
    }
    EXPECT_EQ(stage.shared().dmPaperSize, letter ? 1 : 9);
    EXPECT_EQ(stage.user().Selected(1404), letter ? 0 : 1);
    EXPECT_EQ(stage.shared().dmMediaType, 1U);
    EXPECT_EQ(stage.user().Selected(1009), 0);
    EXPECT_EQ(stage.Source(), (SourceSeen{0, true, false, true, 7, 7}));
    EXPECT_FALSE(stage.user().Shown(1446));
    EXPECT_EQ(stage.own().FeedOrient, 1);
    EXPECT_TRUE(stage.user().Checked(1240));
    EXPECT_FALSE(stage.user().Enabled(1240));
    EXPECT_TRUE(stage.user().Shown(1449));
    EXPECT_TRUE(AskPages(&PageLinks::mediaChanged));
    // The four words are reset first; the sheet is told with each list.
    ASSERT_EQ(stage.changes.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(stage.changes[i].publicDevmode.dmMediaType, 1U);
      EXPECT_EQ(stage.changes[i].publicDevmode.dmPaperSize, letter ? 1 : 9);
      EXPECT_EQ(stage.changes[i].privateDevmode.SourceTray, i < 2 ? 0 : 7);
      EXPECT_EQ(stage.changes[i].privateDevmode.FeedOrient, 1);
    }
    EXPECT_EQ(stage.changes[1].publicDevmode.dmDefaultSource, record.source);
    EXPECT_EQ(stage.changes[2].publicDevmode.dmDefaultSource, 7);
  }
}

// The media's icon goes although two-sided printing still locks the list.
TEST(PaperDefaultsOnTwoSides, HideTheMediaIconAndKeepTheLock) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 5, .duplex = 2}));
  ASSERT_TRUE(stage.user().Shown(1446));
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_FALSE(stage.user().Shown(1446));
  EXPECT_FALSE(stage.user().Enabled(1009));
  EXPECT_EQ(stage.shared().dmDuplex, 2);
}

// The first click names the automatic source, so the second has something to reset again.
TEST(PaperDefaultsTwice, AreAChangeEachTime) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 5}));
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_EQ(stage.TakeChanges(), 3U);
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_EQ(stage.TakeChanges(), 3U);
}

// A record with a word for the page size would get the paper there too.
TEST(PaperDefaults, WriteThePageSizeWhereTheTableHasIt) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 5}));
  UIParamSlot& slot = stage.context().uiParams.at(77);
  slot = {.Key = "PageSize", .Width = 2, .Offset = offsetof(PrivateDevmode, Reserved12)};
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_EQ(stage.own().Reserved12[0], 9);
  EXPECT_EQ(stage.changes.at(0).privateDevmode.Reserved12[0], 0);  // with the second list
  EXPECT_EQ(stage.changes.at(1).privateDevmode.Reserved12[0], 9);
}

// ---- The custom papers --------------------------------------------------------------------------

// What was stored meanwhile is in the list, however the dialog is left. The sheet is told last.
TEST(CustomButton, FillsTheListAnewAndTellsTheSheetOnce) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 5}));
  stage.Store({PaperStage::Custom(288, u"Own")});
  stage.shared().dmPaperSize = 288;
  std::vector<int> shown;
  stage.onChange = [&] { shown.push_back(stage.Shown(1404)); };
  EXPECT_TRUE(stage.user().Click(1407));
  EXPECT_EQ(stage.user().ItemTexts(1404).size(), 29U);
  EXPECT_EQ(shown, std::vector<int>({288}));
  EXPECT_EQ(stage.WrittenBehindTheChange(), "");
}

struct LeaveCase {
  const char* name;
  std::int32_t button;
  int paper;  // in force then
};
void PrintTo(const LeaveCase& row, std::ostream* out) {
  *out << row.name;
}

class CustomDialogLeft : public testing::TestWithParam<LeaveCase> {};
INSTANTIATE_TEST_SUITE_P(Buttons, CustomDialogLeft,
                         testing::Values(LeaveCase{"Ok", kIdOk, 288},
                                         LeaveCase{"Cancel", kIdCancel, 5}),
                         test::CaseName());

TEST_P(CustomDialogLeft, ListsWhatWasSavedAndShowsThePaperInForce) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 5}));
  int openings = 0;
  stage.windows().onDialog = [&](WindowHandle dialog) {
    ++openings;
    headless::User user(stage.world().platform, dialog);
    EXPECT_TRUE(user.Type(1358, u"100"));
    EXPECT_TRUE(user.Type(1442, u"150"));
    EXPECT_TRUE(user.Type(1009, u"Card"));
    EXPECT_TRUE(user.Click(1421));
    EXPECT_TRUE(user.Click(GetParam().button));
  };
  std::vector<int> shown;
  stage.onChange = [&] { shown.push_back(stage.Shown(1404)); };
  EXPECT_TRUE(stage.user().Click(1407));
  EXPECT_EQ(openings, 1);
  const std::vector<std::uintptr_t> papers = stage.user().ItemData(1404);
  ASSERT_EQ(papers.size(), 29U);
  EXPECT_EQ(papers.back(), 288U);
  EXPECT_EQ(stage.shared().dmPaperSize, GetParam().paper);
  EXPECT_EQ(shown, std::vector<int>({GetParam().paper}));
  EXPECT_EQ(stage.WrittenBehindTheChange(), "");
  EXPECT_EQ(stage.favorite(), u"Mine");
}

}  // namespace
}  // namespace ostrel
