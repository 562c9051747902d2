// The paper page shows a record: what it starts with, what it repairs on the way, and what it
// locks.
#include "core/paper_tables.h"
#include "pages/paper_stage.h"

namespace ostrel {
namespace {

// ---- The page's start ---------------------------------------------------------------------------

TEST(PaperStart, ShowsTheRecord) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 11, .media = 264, .source = 258, .feed = 2}));
  EXPECT_EQ(stage.context().activePage, 2U);
  EXPECT_EQ(stage.Shown(1404), 11);
  EXPECT_EQ(stage.Shown(1009), 264);
  EXPECT_EQ(stage.Source(), (SourceSeen{3, true, false, true, 258, 258}));
  EXPECT_TRUE(stage.user().Checked(1125));
  EXPECT_FALSE(stage.user().Checked(1240));
  EXPECT_TRUE(stage.user().Enabled(1240));
  EXPECT_TRUE(stage.user().Enabled(1125));
  for (const std::int32_t icon : {1446, 1449, 1450}) {
    EXPECT_FALSE(stage.user().Shown(icon)) << icon;
  }
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_EQ(stage.favorite(), u"Mine");
}

TEST(PaperStart, GivesTheCaptions) {
  constexpr std::pair<std::int32_t, std::uint32_t> kCaptions[] = {
      {1401, 4013}, {1400, 1001}, {1028, 1008}, {1407, 406},  {1402, 4016},
      {1403, 4012}, {1030, 1003}, {1240, 4014}, {1125, 4015}, {1064, 1011}};
  PaperStage stage;
  for (const auto& [control, text] : kCaptions) {
    stage.language.strings[text] = u"changed " + PaperStage::Text(text);
  }
  ASSERT_TRUE(stage.Open());
  for (const auto& [control, text] : kCaptions) {
    EXPECT_EQ(stage.user().Text(control), u"changed " + PaperStage::Text(text)) << control;
  }
}

// Without the store nothing is shown and nothing is taken; the sheet goes on.
TEST(PaperStart, WithoutTheStoreTellsAndStops) {
  PaperStage stage;
  std::uint32_t activeInBox = kPaperPage;
  stage.windows().onBox = [&](const auto& /*box*/) { activeInBox = stage.context().activePage; };
  ASSERT_TRUE(stage.Open([](UIContext& made) {
    PaperStage::With({.paper = 37, .media = 258, .source = 258})(made);
    test::currentStage->world().platform.faults.FailOperation("CreateFileW");
  }));
  stage.world().platform.faults.Clear();
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_NE(activeInBox, std::uint32_t{kPaperPage});  // the start ends before the page counts
  EXPECT_EQ(stage.boxes()[0].text, u"Initialize paper error.");
  EXPECT_EQ(stage.boxes()[0].caption, u"Paper");
  EXPECT_EQ(stage.boxes()[0].style, 48U);
  EXPECT_EQ(stage.boxes()[0].owner, stage.page());
  EXPECT_EQ(stage.user().Text(1401), PaperStage::Text(4013));
  EXPECT_TRUE(stage.user().ItemTexts(1404).empty());
  const DriverDevmode before = stage.context().devmode;
  for (const std::int32_t id : {1240, 1125, 1064, 1407}) {
    stage.Command(id);
  }
  for (const std::int32_t id : {1404, 1009, 1393}) {
    stage.Command(id, kCbnSelChange);
  }
  stage.ShowAgain();
  EXPECT_EQ(stage.context().activePage, 2U);
  RefreshPaperPage(stage.context());
  EXPECT_EQ(test::Difference(test::BytesOf(stage.context().devmode), test::BytesOf(before)), "");
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_TRUE(stage.sheet->PressOk());
}

TEST(PaperStart, BoxWithoutTheStoreReadsFromTheRightWhereTheLanguageDoes) {
  PaperStage stage;
  stage.world().process.RightToLeftLanguage = true;
  ASSERT_TRUE(stage.Open([](UIContext&) {
    test::currentStage->world().platform.faults.FailOperation("CreateFileW");
  }));
  stage.world().platform.faults.Clear();
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].style, 48U | 0x180000U);
}

// ---- A paper that can't be printed two-sided ----------------------------------------------------

class PaperOnTwoSides : public testing::TestWithParam<test::ListedPaper> {};
INSTANTIATE_TEST_SUITE_P(Papers, PaperOnTwoSides, testing::ValuesIn(test::kListedPapers),
                         test::ListedPaperName());

TEST_P(PaperOnTwoSides, GivesWayUnlessItsRowAllowsIt) {
  const std::int16_t paper = GetParam().id;
  for (std::int16_t duplex = 1; duplex <= 5; ++duplex) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.paper = paper, .duplex = duplex}));
    const bool refused = duplex != 1 && !GetParam().twoSided;
    EXPECT_EQ(stage.shared().dmPaperSize, refused ? 9 : paper) << duplex;
    EXPECT_EQ(stage.Shown(1404), refused ? 9 : paper) << duplex;
    EXPECT_EQ(stage.boxes().size(), refused ? 1U : 0U) << duplex;
    EXPECT_EQ(stage.shared().dmDuplex, duplex);
  }
}

TEST(PaperOnTwoSides, RefusalIsTold) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 13, .duplex = 2}));
  stage.ExpectOneBox(PaperStage::Text(5041));
  EXPECT_EQ(stage.favorite(), u"Mine");
  EXPECT_TRUE(stage.changes.empty());
}

// The list shows the paper that takes the place before the box comes up.
TEST(PaperOnTwoSides, ReplacementIsShownBehindTheBox) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 5}));
  const std::vector<int>& shown = stage.WatchBoxes(1404);
  stage.shared().dmPaperSize = 13;
  stage.shared().dmDuplex = 2;
  stage.ShowAgain();
  EXPECT_EQ(shown, std::vector<int>({9}));
}

TEST(PaperOnTwoSides, LastPaperComesBack) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9}));
  stage.PickPaper(5);
  ASSERT_EQ(Process().LastPaperId, 5);
  stage.shared().dmPaperSize = 37;
  stage.shared().dmDuplex = 3;
  stage.ShowAgain();
  stage.ExpectOneBox(PaperStage::Text(5041));
  EXPECT_EQ(stage.shared().dmPaperSize, 5);
  EXPECT_EQ(stage.Shown(1404), 5);
}

// The one before may be refused as well; it isn't asked.
TEST(PaperOnTwoSides, LastPaperIsNotAskedInTurn) {
  PaperStage stage;
  stage.world().process.LastPaperId = 20;
  ASSERT_TRUE(stage.OpenWith({.paper = 13, .duplex = 2}));
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.shared().dmPaperSize, 20);
  EXPECT_EQ(stage.Shown(1404), 20);
}

TEST(PaperOnTwoSides, LastPaperThatIsGoneGivesWayToTheLocales) {
  PaperStage stage;
  stage.world().process.LastPaperId = 290;
  ASSERT_TRUE(stage.OpenWith({.paper = 13, .duplex = 2}));
  EXPECT_EQ(stage.shared().dmPaperSize, 9);
  EXPECT_EQ(stage.Shown(1404), 9);
}

TEST(PaperOnTwoSides, NegativeLastPaperIsNone) {
  PaperStage stage;
  stage.world().process.LastPaperId = -5;
  ASSERT_TRUE(stage.OpenWith({.paper = 13, .duplex = 2}));
  EXPECT_EQ(stage.shared().dmPaperSize, 9);
}

TEST(PaperOnTwoSides, LocaleOfLetterGetsLetter) {
  PaperStage stage;
  stage.world().platform.locale.country = u"1";
  ASSERT_TRUE(stage.OpenWith({.paper = 13, .duplex = 2}));
  EXPECT_EQ(stage.shared().dmPaperSize, 1);
  EXPECT_EQ(stage.Shown(1404), 1);
}

TEST(PaperOnTwoSides, CustomPaperGivesWay) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own"), PaperStage::Custom(309, u"Beyond")});
  ASSERT_TRUE(stage.OpenWith({.paper = 288, .duplex = 2}));
  stage.ExpectOneBox(PaperStage::Text(5041));
  EXPECT_EQ(stage.shared().dmPaperSize, 9);
  // Beyond the rules' own range nobody refuses it.
  stage.shared().dmPaperSize = 309;
  stage.ShowAgain();
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.Shown(1404), 309);
}

// ---- A paper that isn't in the list -------------------------------------------------------------

TEST(PaperNotListed, BecomesTheLocales) {
  for (const std::int16_t paper : Words{0, -1, 2, 240, 287, 288, 319, 320, 32767}) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.paper = paper}));
    EXPECT_EQ(stage.shared().dmPaperSize, 9) << paper;
    EXPECT_EQ(stage.Shown(1404), 9) << paper;
    EXPECT_TRUE(stage.boxes().empty()) << paper;
  }
}

TEST(PaperNotListed, BecomesLetterWhereThatIsTheLocales) {
  PaperStage stage;
  stage.world().platform.locale.country = u"1";
  ASSERT_TRUE(stage.OpenWith({.paper = 300}));
  EXPECT_EQ(stage.shared().dmPaperSize, 1);
  EXPECT_EQ(stage.Shown(1404), 1);
}

TEST(PaperNotListed, RecordThatIsGoneFromTheStoreIsOne) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own")});
  ASSERT_TRUE(stage.OpenWith({.paper = 288}));
  ASSERT_EQ(stage.shared().dmPaperSize, 288);
  EXPECT_TRUE(CustomPaperStore().Delete(u"Own"));
  stage.Command(1407);  // the list is filled anew behind the dialog
  EXPECT_EQ(stage.shared().dmPaperSize, 9);
}

// A list that couldn't be filled at all doesn't take the paper away.
TEST(PaperNotListed, EmptyListTakesNothingAway) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 5}));
  stage.windows().SendMessageW(stage.Item(1404), kCbResetContent, 0, 0);
  stage.ShowAgain();
  EXPECT_EQ(stage.shared().dmPaperSize, 5);
}

// ---- The source ---------------------------------------------------------------------------------

struct SourceCase {
  const char* name;
  const char16_t* model;
  int missingTrays;
  PaperRecord record;
  SourceSeen seen;
};
void PrintTo(const SourceCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const SourceCase kSourceCases[] = {
    // The paper's rule: refused, a choice, or one source only.
    {"AnyPaperAutomatic",  kTrays, 0, {.paper = 9,   .source = 7},   {0, true, false, true, 7, 7}},
    {"AnyPaperManual",     kTrays, 0, {.paper = 9,   .source = 4},   {1, true, false, true, 4, 4}},
    {"AnyPaperTray3",      kTrays, 0, {.paper = 9,   .source = 259}, {4, true, false, true, 259, 259}},
    {"AnyPaper260",        kTrays, 0, {.paper = 9,   .source = 260}, {2, true, false, true, 260, 260}},
    {"UnknownBin",         kTrays, 0, {.paper = 9,   .source = 15},  {1, false, true, false, 4, 4}},
    {"EnvelopeAutomatic",  kTrays, 0, {.paper = 37,  .source = 7},   {1, false, true, false, 4, 4}},
    {"EnvelopeManual",     kTrays, 0, {.paper = 27,  .source = 4},   {1, false, true, false, 4, 4}},
    {"EnvelopeTray1",      kTrays, 0, {.paper = 28,  .source = 257}, {1, false, true, false, 4, 4}},
    {"EnvelopeTray3",      kTrays, 0, {.paper = 20,  .source = 259}, {1, false, true, false, 4, 4}},
    {"EnvelopeFixedTray",  kFixed, 0, {.paper = 20,  .source = 7},   {1, false, true, false, 4, 4}},
    {"SmallPaperAutomatic",kTrays, 0, {.paper = 252, .source = 7},   {1, false, true, false, 4, 4}},
    {"SmallPaperManual",   kTrays, 0, {.paper = 246, .source = 4},   {1, true, false, true, 4, 4}},
    {"SmallPaperTray1",    kTrays, 0, {.paper = 241, .source = 257}, {2, true, false, true, 257, 257}},
    {"SmallPaperTray2",    kTrays, 0, {.paper = 241, .source = 258}, {1, false, true, false, 4, 4}},
    // A place behind the end of the list: nothing is selected, so the automatic source.
    {"TrayThatIsMissing",  kTrays, 1, {.paper = 9,   .source = 259}, {0, true, false, true, 7, 7}},
    {"TraysThatAreMissing",kTrays, 2, {.paper = 9,   .source = 258}, {0, true, false, true, 7, 7}},
    {"TrayThatThereIs",    kTrays, 1, {.paper = 9,   .source = 258}, {3, true, false, true, 258, 258}},
    {"FixedTrayHasNoTray2",kFixed, 0, {.paper = 9,   .source = 258}, {0, true, false, true, 7, 7}},
    // The media's rule overrides.
    {"ThinAny",            kTrays, 0, {.paper = 9,   .media = 264, .source = 258}, {3, true, false, true, 258, 258}},
    {"ThinEnvelope",       kTrays, 0, {.paper = 37,  .media = 264, .source = 7},   {1, false, true, false, 4, 4}},
    {"ThickAny",           kTrays, 0, {.paper = 9,   .media = 257, .source = 257}, {2, true, false, true, 257, 257}},
    {"ThickEnvelope",      kTrays, 0, {.paper = 37,  .media = 257, .source = 257}, {1, false, true, false, 4, 4}},
    {"ThickFixed",         kFixed, 0, {.paper = 9,   .media = 257, .source = 257}, {1, true, false, true, 4, 4}},
    {"ThickFixedEnvelope", kFixed, 0, {.paper = 37,  .media = 257, .source = 7},   {1, true, false, true, 4, 4}},
    {"LetterheadAutomatic",kTrays, 0, {.paper = 9,   .media = 261, .source = 7},   {2, true, false, true, 257, 257}},
    {"LetterheadManual",   kTrays, 1, {.paper = 9,   .media = 261, .source = 4},   {2, true, false, true, 257, 257}},
    {"LetterheadShort",    kTrays, 2, {.paper = 9,   .media = 261, .source = 7},   {2, false, true, false, 257, 257}},
    {"LetterheadTray2",    kTrays, 0, {.paper = 9,   .media = 261, .source = 258}, {3, true, false, true, 258, 258}},
    {"LetterheadShortTray1",kTrays,2, {.paper = 9,   .media = 261, .source = 257}, {2, false, true, false, 257, 257}},
    {"LetterheadEnvelope", kTrays, 0, {.paper = 37,  .media = 261, .source = 258}, {2, true, false, true, 257, 257}},
    {"LetterheadFixed",    kFixed, 0, {.paper = 9,   .media = 261, .source = 7},   {2, false, true, false, 257, 257}},
    {"Transparency",       kTrays, 0, {.paper = 9,   .media = 2,   .source = 7},   {2, false, true, false, 257, 257}},
    {"TransparencyFixed",  kFixed, 0, {.paper = 9,   .media = 2,   .source = 7},   {1, false, true, false, 4, 4}},
    {"EnvelopeMedia",      kTrays, 0, {.paper = 9,   .media = 258, .source = 258}, {1, false, true, false, 4, 4}},
    {"CardMedia",          kFixed, 0, {.paper = 9,   .media = 259, .source = 257}, {1, false, true, false, 4, 4}},
    {"LabelMedia",         kTrays, 0, {.paper = 252, .media = 263, .source = 257}, {1, false, true, false, 4, 4}},
    {"ExtraThickMedia",    kTrays, 0, {.paper = 9,   .media = 265, .source = 7},   {1, false, true, false, 4, 4}},
    {"UnlistedMedia",      kTrays, 0, {.paper = 9,   .media = 100, .source = 7},   {1, false, true, false, 4, 4}},
};
// clang-format on

class RefreshedSource : public testing::TestWithParam<SourceCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, RefreshedSource, testing::ValuesIn(kSourceCases), test::CaseName());

TEST_P(RefreshedSource, IsWhatPaperAndMediaLeave) {
  PaperStage stage(GetParam().model, GetParam().missingTrays);
  ASSERT_TRUE(stage.OpenWith(GetParam().record));
  EXPECT_EQ(stage.Source(), GetParam().seen);
  EXPECT_TRUE(stage.boxes().empty());
}

// What the page locked before stays in no memory.
TEST_P(RefreshedSource, IsTheSameWhateverStoodThereBefore) {
  for (const std::int16_t before : Words{9, 37}) {
    PaperStage stage(GetParam().model, GetParam().missingTrays);
    ASSERT_TRUE(stage.OpenWith({.paper = before}));
    PaperStage::With(GetParam().record)(stage.context());
    stage.ShowAgain();
    EXPECT_EQ(stage.Source(), GetParam().seen);
  }
}

// It is dmDefaultSource that is shown and asked for; SourceTray may name another source, or none,
// and stays so.
TEST(RefreshedSourceOfTwoWords, IsThePublicOne) {
  for (const std::uint32_t media : {1U, 264U, 257U, 261U}) {
    PaperStage stage(kTrays);
    ASSERT_TRUE(stage.OpenWith({.media = media, .source = 258, .tray = 0}));
    EXPECT_EQ(stage.Source(), (SourceSeen{3, true, false, true, 258, 0})) << media;
  }
  PaperStage stage(kTrays);
  ASSERT_TRUE(stage.OpenWith({.source = 7, .tray = 258}));
  EXPECT_EQ(stage.Source(), (SourceSeen{0, true, false, true, 7, 258}));
  // Nor does a paper ask for the other word.
  PaperStage::With({.paper = 252, .source = 257, .tray = 258})(stage.context());
  stage.ShowAgain();
  EXPECT_EQ(stage.Source(), (SourceSeen{2, true, false, true, 257, 258}));
  PaperStage::With({.paper = 252, .source = 258, .tray = 257})(stage.context());
  stage.ShowAgain();
  EXPECT_EQ(stage.Source(), (SourceSeen{1, false, true, false, 4, 4}));
}

// Some window systems keep what was selected when a place behind the end is asked for.
TEST(RefreshedSourceBehindTheEnd, IsAskedForAsNone) {
  PaperStage stage(kTrays, 2);
  ASSERT_TRUE(stage.OpenWith({}));
  const auto& sent = stage.Watch(stage.Item(1393));
  stage.shared().dmDefaultSource = 259;
  stage.ShowAgain();
  std::vector<std::intptr_t> selected;
  for (const PaperStage::Sent& each : sent) {
    if (each.message == kCbSetCurSel) {
      selected.push_back(static_cast<std::intptr_t>(each.wParam));
    }
  }
  EXPECT_EQ(selected, (std::vector<std::intptr_t>{-1, -1, 0}));  // paper, media, and then none
}

TEST(RefreshedSourceOfCustomPaper, IsFree) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own"), PaperStage::Custom(308, u"Last"),
               PaperStage::Custom(309, u"Beyond")});
  ASSERT_TRUE(stage.OpenWith({.paper = 288, .source = 258}));
  EXPECT_EQ(stage.Source(), (SourceSeen{3, true, false, true, 258, 258}));
  // A source without a column is no conflict either; it shows as the automatic one.
  PaperStage::With({.paper = 308, .source = 15})(stage.context());
  stage.ShowAgain();
  EXPECT_EQ(stage.Source(), (SourceSeen{0, true, false, true, 15, 15}));
  // Beyond the rules' own range it is fed by hand.
  PaperStage::With({.paper = 309, .source = 258})(stage.context());
  stage.ShowAgain();
  EXPECT_EQ(stage.Source(), (SourceSeen{1, false, true, false, 4, 4}));
}

// All 28 papers: which of them leave a choice with tray 1, and which are fed by hand.
class PaperFeeds : public testing::TestWithParam<test::ListedPaper> {};
INSTANTIATE_TEST_SUITE_P(Papers, PaperFeeds, testing::ValuesIn(test::kListedPapers),
                         test::ListedPaperName());

TEST_P(PaperFeeds, FollowItsRow) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = GetParam().id, .source = 257}));
  const bool forced = GetParam().feeds == test::Feeds::kManualOnly;
  EXPECT_EQ(stage.Source(), forced ? (SourceSeen{1, false, true, false, 4, 4})
                                   : (SourceSeen{2, true, false, true, 257, 257}));
  PaperStage::With({.paper = GetParam().id, .source = 258})(stage.context());
  stage.ShowAgain();
  EXPECT_EQ(stage.user().Enabled(1393), GetParam().feeds == test::Feeds::kAny);
}

// ---- The media type -----------------------------------------------------------------------------

TEST(RefreshedMedia, IsLockedUnlessTwoSidedPrintingIsOff) {
  struct Row {
    bool duplexOff;
    std::int16_t duplex;
    bool live;
  };
  for (const Row& row :
       {Row{true, 1, true}, Row{false, 1, false}, Row{true, 2, false}, Row{true, 3, false},
        Row{false, 2, false}, Row{true, 4, false}, Row{true, 0, false}}) {
    PaperStage stage;
    ASSERT_TRUE(stage.Open([&row](UIContext& made) {
      PaperStage::With({.duplex = row.duplex})(made);
      TellPages(&PageLinks::duplexOff, row.duplexOff);
    }));
    EXPECT_EQ(stage.user().Enabled(1009), row.live) << row.duplexOff << row.duplex;
    EXPECT_EQ(stage.user().Shown(1446), !row.live) << row.duplexOff << row.duplex;
  }
}

TEST(RefreshedMedia, IsUnlockedAgain) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.duplex = 2}));
  EXPECT_FALSE(stage.user().Enabled(1009));
  stage.shared().dmDuplex = 1;
  stage.ShowAgain();
  EXPECT_TRUE(stage.user().Enabled(1009));
  EXPECT_FALSE(stage.user().Shown(1446));
}

TEST(RefreshedMedia, WithoutARowClearsTheSelection) {
  PaperStage stage(kFixed);
  for (const std::uint32_t media : {3U, 261U, 265U}) {
    ASSERT_TRUE(stage.OpenWith({.media = media}));
    EXPECT_EQ(stage.user().Selected(1009), -1) << media;
    EXPECT_EQ(stage.shared().dmMediaType, media);
    EXPECT_TRUE(stage.sheet->PressCancel());
  }
}

TEST(RefreshedMedia, OutOfRangeBecomesPlain) {
  for (const std::uint32_t media : {0U, 267U, 0x10001U, 0xFFFFFFFFU}) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.media = media}));
    EXPECT_EQ(stage.shared().dmMediaType, 1U);
    EXPECT_EQ(stage.Shown(1009), 1);
  }
}

// ---- The feed -----------------------------------------------------------------------------------

class FeedOf : public testing::TestWithParam<test::ListedPaper> {};
INSTANTIATE_TEST_SUITE_P(Papers, FeedOf, testing::ValuesIn(test::kListedPapers),
                         test::ListedPaperName());

// A5 alone may choose.
TEST_P(FeedOf, IsFreeForA5Alone) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = GetParam().id, .feed = 2}));
  const bool free = GetParam().id == 11;
  EXPECT_EQ(stage.own().FeedOrient, free ? 2 : 1);
  EXPECT_EQ(stage.user().Checked(1240), !free);
  EXPECT_EQ(stage.user().Checked(1125), free);
  EXPECT_EQ(stage.user().Enabled(1240), free);
  EXPECT_EQ(stage.user().Enabled(1125), free);
  EXPECT_EQ(stage.user().Shown(1449), !free);
}

TEST(FeedOfA5, AnythingButTheShortEdgeIsTheLongOne) {
  for (const std::int16_t feed : Words{0, 2, 3, -1, 32767}) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.paper = 11, .feed = feed}));
    EXPECT_EQ(stage.own().FeedOrient, 2) << feed;
    EXPECT_TRUE(stage.user().Checked(1125)) << feed;
    EXPECT_FALSE(stage.user().Checked(1240)) << feed;
  }
}

TEST(FeedOfA5, ShortEdgeStays) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 11, .feed = 1}));
  EXPECT_EQ(stage.own().FeedOrient, 1);
  EXPECT_TRUE(stage.user().Checked(1240));
  EXPECT_FALSE(stage.user().Checked(1125));
}

// ---- Activation ---------------------------------------------------------------------------------

TEST(PaperActivation, ShowsTheRecordWhenAnotherPageWasThere) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9}));
  stage.shared().dmPaperSize = 5;
  stage.Notify(kPsnSetActive);  // this page was the last one
  EXPECT_EQ(stage.Shown(1404), 9);
  stage.ShowAgain();
  EXPECT_EQ(stage.Shown(1404), 5);
  EXPECT_EQ(stage.context().activePage, 2U);
}

TEST(PaperActivation, RefreshFromOutsideShowsTheRecord) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9}));
  stage.shared().dmPaperSize = 14;
  RefreshPaperPage(stage.context());
  EXPECT_EQ(stage.Shown(1404), 14);
}

}  // namespace
}  // namespace ostrel
