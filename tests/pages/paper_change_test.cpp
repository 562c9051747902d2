// Another paper is chosen: what is refused, what becomes of two-sided printing, media and source,
// and what the record takes.
#include "pages/paper_stage.h"

namespace ostrel {
namespace {

// ---- Any paper, one-sided and two-sided ---------------------------------------------------------

class PaperChoice : public testing::TestWithParam<test::ListedPaper> {};
INSTANTIATE_TEST_SUITE_P(Papers, PaperChoice, testing::ValuesIn(test::kListedPapers),
                         test::ListedPaperName());

TEST_P(PaperChoice, IsTakenWhilePrintingIsOneSided) {
  const std::int16_t paper = GetParam().id;
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = paper == 5 ? std::int16_t{1} : std::int16_t{5}}));
  stage.shared().dmPaperWidth = 1234;
  stage.shared().dmPaperLength = 2345;
  TellPages(&PageLinks::mediaChanged, !GetParam().twoSided);
  stage.PickPaper(paper);
  EXPECT_EQ(stage.shared().dmPaperSize, paper);
  EXPECT_EQ(stage.Shown(1404), paper);
  EXPECT_EQ(stage.shared().dmPaperWidth, 1234);  // of custom papers only
  EXPECT_EQ(stage.shared().dmPaperLength, 2345);
  EXPECT_EQ(stage.shared().dmFields, kDriverDevmodeFields);
  EXPECT_EQ(stage.shared().dmDuplex, 1);
  EXPECT_EQ(AskPages(&PageLinks::mediaChanged), GetParam().twoSided);
  EXPECT_EQ(Process().LastPaperId, paper);
  EXPECT_TRUE(stage.IsUntitled());
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_EQ(stage.TakeChanges(), 1U);
  // The automatic source is what most papers can't be fed from.
  const bool any = GetParam().feeds == test::Feeds::kAny;
  const bool choice = GetParam().feeds != test::Feeds::kManualOnly;
  EXPECT_EQ(stage.Source(), any      ? (SourceSeen{0, true, false, true, 7, 7})
                            : choice ? (SourceSeen{1, true, false, true, 4, 4})
                                     : (SourceSeen{1, false, true, false, 4, 4}));
  EXPECT_EQ(stage.user().Enabled(1240), paper == 11);
  EXPECT_EQ(stage.user().Shown(1449), paper != 11);
}

TEST_P(PaperChoice, IsRefusedOnTwoSidesUnlessItsRowAllowsIt) {
  const std::int16_t paper = GetParam().id;
  const std::int16_t before = paper == 5 ? 1 : 5;
  for (const std::int16_t duplex : Words{2, 3, 4, 5}) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.paper = before, .duplex = duplex}));
    stage.PickPaper(paper);
    EXPECT_TRUE(stage.IsUntitled());  // before anything is asked
    EXPECT_EQ(stage.shared().dmDuplex, duplex);
    if (GetParam().twoSided) {
      EXPECT_EQ(stage.shared().dmPaperSize, paper);
      EXPECT_TRUE(AskPages(&PageLinks::mediaChanged));
      EXPECT_TRUE(stage.boxes().empty());
      EXPECT_EQ(stage.TakeChanges(), 1U);
      continue;
    }
    stage.ExpectOneBox(PaperStage::Text(5041));
    EXPECT_EQ(stage.shared().dmPaperSize, before);
    EXPECT_EQ(stage.Shown(1404), before);
    EXPECT_EQ(stage.Source(), (SourceSeen{0, true, false, true, 7, 7}));
    EXPECT_EQ(Process().LastPaperId, 0);
    EXPECT_EQ(stage.TakeChanges(), 0U);
  }
}

TEST(PaperChoice, RefusedPaperIsShownUntilTheBoxIsClosed) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9, .duplex = 2}));
  const std::vector<int>& shown = stage.WatchBoxes(1404);
  stage.PickPaper(13);
  EXPECT_EQ(shown, std::vector<int>({13}));
  EXPECT_EQ(stage.Shown(1404), 9);
}

// The sheet hears of it when all is done: the record is whole by then, and the feed is shown.
TEST(PaperChoice, TellsTheSheetLast) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own")});
  ASSERT_TRUE(stage.OpenWith({.paper = 11, .media = 2, .source = 257, .feed = 2}));
  std::vector<bool> feedLive;
  stage.onChange = [&] { feedLive.push_back(stage.user().Enabled(1240)); };
  for (const std::int16_t paper : Words{37, 288, 11}) {
    stage.PickPaper(paper);
    EXPECT_EQ(stage.WrittenBehindTheChange(), "") << paper;
    EXPECT_EQ(stage.TakeChanges(), 1U) << paper;
  }
  EXPECT_EQ(feedLive, std::vector<bool>({false, false, true}));
}

TEST(PaperChoice, RefusalLeavesTheRecordButForTheName) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9, .source = 258, .duplex = 2}));
  DriverDevmode before = stage.context().devmode;
  stage.PickPaper(37);
  EXPECT_TRUE(stage.IsUntitled());
  std::ranges::copy(stage.own().FavoriteName, before.privateDevmode.FavoriteName);
  EXPECT_EQ(test::Difference(test::BytesOf(stage.context().devmode), test::BytesOf(before)), "");
}

// A strange value of two-sided printing becomes one-sided with a paper that allows nothing else.
TEST(PaperChoice, OneSidedPaperClearsAStrangeDuplex) {
  for (const std::int16_t duplex : Words{0, -1}) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.paper = 9, .duplex = duplex}));
    stage.PickPaper(5);
    EXPECT_EQ(stage.shared().dmDuplex, duplex);
    stage.PickPaper(13);
    EXPECT_EQ(stage.shared().dmDuplex, 1);
  }
}

TEST(PaperChoice, SamePaperIsNoChange) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9}));
  stage.PickPaper(9);
  EXPECT_EQ(stage.TakeChanges(), 0U);
  EXPECT_EQ(stage.favorite(), u"Mine");
  EXPECT_EQ(Process().LastPaperId, 0);
}

TEST(PaperChoice, NoSelectionIsNoChange) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9}));
  stage.windows().SendMessageW(stage.Item(1404), kCbSetCurSel, ~std::uintptr_t{0}, 0);
  stage.Command(1404, kCbnSelChange);
  EXPECT_EQ(stage.TakeChanges(), 0U);
  EXPECT_EQ(stage.shared().dmPaperSize, 9);
}

// Nothing more happens where the language has no name for changed settings.
TEST(PaperChoice, WithoutTheUntitledNameDoesNothingMore) {
  PaperStage stage;
  stage.language.strings.erase(5005);
  ASSERT_TRUE(stage.OpenWith({.paper = 9}));
  const DriverDevmode before = stage.context().devmode;
  stage.PickPaper(37);
  EXPECT_EQ(test::Difference(test::BytesOf(stage.context().devmode), test::BytesOf(before)), "");
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_EQ(stage.TakeChanges(), 0U);
}

// ---- Custom papers ------------------------------------------------------------------------------

TEST(CustomPaperChoice, TakesTheStoredSize) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own", 2481, 3510),
               PaperStage::Custom(290, u"Inch", 5100, 6600, 2)});
  ASSERT_TRUE(stage.OpenWith({.paper = 9, .source = 258}));
  stage.PickPaper(288);
  EXPECT_EQ(stage.shared().dmPaperSize, 288);
  EXPECT_EQ(stage.shared().dmPaperWidth, 1050);   // 105.029 mm
  EXPECT_EQ(stage.shared().dmPaperLength, 1486);  // 148.59 mm
  EXPECT_EQ(stage.shared().dmFields, kDriverDevmodeFields | 0x1000CU);
  EXPECT_EQ(stage.Source(), (SourceSeen{3, true, false, true, 258, 258}));
  EXPECT_EQ(Process().LastPaperId, 288);
  EXPECT_FALSE(AskPages(&PageLinks::mediaChanged));
  EXPECT_EQ(stage.TakeChanges(), 1U);
  stage.PickPaper(290);
  EXPECT_EQ(stage.shared().dmPaperWidth, 2159);
  EXPECT_EQ(stage.shared().dmPaperLength, 2794);
  // Back to a table's paper: size and announcement stay. The driver's own records announce a width
  // and a length always, and the paper's id is what counts then.
  stage.PickPaper(9);
  EXPECT_EQ(stage.shared().dmPaperWidth, 2159);
  EXPECT_EQ(stage.shared().dmFields, kDriverDevmodeFields | 0x1000CU);
}

TEST(CustomPaperChoice, RoundsHalvesUp) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own", 1772, 1771)});  // 75.015 and 74.972 mm
  ASSERT_TRUE(stage.OpenWith({}));
  stage.PickPaper(288);
  EXPECT_EQ(stage.shared().dmPaperWidth, 750);
  EXPECT_EQ(stage.shared().dmPaperLength, 750);
}

TEST(CustomPaperChoice, AbsurdSizesFitTheirWords) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own", 65535, 0)});
  ASSERT_TRUE(stage.OpenWith({}));
  stage.PickPaper(288);
  EXPECT_EQ(stage.shared().dmPaperWidth, 27743);
  EXPECT_EQ(stage.shared().dmPaperLength, 0);
}

TEST(CustomPaperChoice, IsRefusedOnTwoSides) {
  for (const std::int16_t duplex : Words{2, 3, 4, 5}) {
    PaperStage stage;
    stage.Store({PaperStage::Custom(288, u"Own"), PaperStage::Custom(308, u"Last")});
    ASSERT_TRUE(stage.OpenWith({.duplex = duplex}));
    stage.PickPaper(308);
    stage.ExpectOneBox(PaperStage::Text(5041));
    EXPECT_EQ(stage.Shown(1404), 9);
  }
}

// Beyond the rules' own range nothing is refused, and nothing but manual feed is left.
TEST(CustomPaperChoice, BeyondTheRulesRangeIsFedByHand) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(309, u"Beyond")});
  ASSERT_TRUE(stage.OpenWith({.duplex = 2}));
  stage.PickPaper(309);
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_EQ(stage.shared().dmDuplex, 2);
  EXPECT_TRUE(AskPages(&PageLinks::mediaChanged));
  EXPECT_EQ(stage.Source(), (SourceSeen{1, false, true, false, 4, 4}));
}

TEST(CustomPaperChoice, RecordThatIsGoneKeepsTheSizeBefore) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Own")});
  ASSERT_TRUE(stage.OpenWith({}));
  EXPECT_TRUE(CustomPaperStore().Delete(u"Own"));
  stage.shared().dmPaperWidth = 1234;
  stage.shared().dmPaperLength = 2345;
  stage.PickPaper(288);
  EXPECT_EQ(stage.shared().dmPaperSize, 288);
  EXPECT_EQ(stage.shared().dmPaperWidth, 1234);
  EXPECT_EQ(stage.shared().dmPaperLength, 2345);
  EXPECT_EQ(stage.shared().dmFields, kDriverDevmodeFields);
  EXPECT_EQ(stage.TakeChanges(), 1U);
}

TEST(CustomPaperChoice, FirstOfTwoWithOneIdCounts) {
  PaperStage stage;
  stage.Store(
      {PaperStage::Custom(288, u"One", 3000, 4000), PaperStage::Custom(288, u"Two", 5000, 6000)});
  ASSERT_TRUE(stage.OpenWith({}));
  ASSERT_TRUE(stage.user().Choose(1404, 29));
  EXPECT_EQ(stage.shared().dmPaperSize, 288);
  EXPECT_EQ(stage.shared().dmPaperWidth, 1270);
}

// ---- Media and source ---------------------------------------------------------------------------

struct ChangeCase {
  const char* name;
  const char16_t* model;
  int missingTrays;
  std::int16_t from;  // the paper before
  std::uint32_t media;
  std::int16_t source;
  std::int16_t paper;
  std::uint32_t mediaAfter;
  SourceSeen seen;
};
void PrintTo(const ChangeCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const ChangeCase kChangeCases[] = {
    // The source that the new paper refuses goes to manual feed.
    {"PlainToEnvelope",         kTrays, 0, 9,  1,   258, 37,  1,   {1, false, true, false, 4, 4}},
    {"PlainToSmall",            kTrays, 0, 9,  1,   258, 252, 1,   {1, true, false, true, 4, 4}},
    {"PlainToSmallTray1",       kTrays, 0, 9,  1,   257, 252, 1,   {2, true, false, true, 257, 257}},
    {"PlainManualToEnvelope",   kTrays, 0, 9,  1,   4,   37,  1,   {1, false, true, false, 4, 4}},
    {"PlainBackFromEnvelope",   kTrays, 0, 37, 1,   4,   9,   1,   {1, true, false, true, 4, 4}},
    {"ThinToEnvelope",          kTrays, 0, 9,  264, 7,   37,  264, {1, false, true, false, 4, 4}},
    {"ThinBackFromEnvelope",    kFixed, 0, 37, 264, 4,   9,   264, {1, true, false, true, 4, 4}},
    {"ThinTray3",               kTrays, 0, 9,  264, 259, 5,   264, {4, true, false, true, 259, 259}},
    // Thick paper: families with one fixed tray feed it by hand.
    {"ThickToOther",            kTrays, 0, 9,  257, 258, 5,   257, {3, true, false, true, 258, 258}},
    {"ThickToEnvelope",         kTrays, 0, 9,  257, 258, 37,  257, {1, false, true, false, 4, 4}},
    {"ThickFixedToOther",       kFixed, 0, 9,  257, 7,   5,   257, {1, false, true, false, 4, 4}},
    {"ThickFixedToEnvelope",    kFixed, 0, 9,  257, 7,   37,  257, {1, false, true, false, 4, 4}},
    {"ThickFixedBack",          kFixed, 0, 37, 257, 4,   9,   257, {1, false, true, false, 4, 4}},
    // Transparencies and letterhead give up where the new paper refuses their source.
    {"TransparencyToOther",     kTrays, 0, 9,  2,   7,   5,   2,   {2, false, true, false, 257, 257}},
    {"TransparencyToSmall",     kTrays, 0, 9,  2,   7,   252, 2,   {2, false, true, false, 257, 257}},
    {"TransparencyToEnvelope",  kTrays, 0, 9,  2,   7,   37,  1,   {1, false, true, false, 4, 4}},
    {"TransparencyFixed",       kFixed, 0, 9,  2,   7,   5,   2,   {1, false, true, false, 4, 4}},
    {"TransparencyFixedToEnvelope", kFixed, 0, 9, 2, 7,  37,  2,   {1, false, true, false, 4, 4}},
    {"LetterheadToOther",       kTrays, 0, 9,  261, 258, 5,   261, {2, true, true, true, 257, 257}},
    {"LetterheadShortToOther",  kTrays, 2, 9,  261, 7,   5,   261, {2, true, true, true, 257, 257}},
    {"LetterheadToSmall",       kTrays, 0, 9,  261, 257, 252, 261, {2, true, true, true, 257, 257}},
    {"LetterheadToSmallTray2",  kTrays, 0, 9,  261, 258, 252, 1,   {1, true, false, true, 4, 4}},
    {"LetterheadToEnvelope",    kTrays, 0, 9,  261, 258, 37,  1,   {1, false, true, false, 4, 4}},
    // All others are fed by hand.
    {"EnvelopeMedia",           kTrays, 0, 9,  258, 7,   5,   258, {1, false, true, false, 4, 4}},
    {"EnvelopeMediaToEnvelope", kTrays, 0, 9,  258, 7,   37,  258, {1, false, true, false, 4, 4}},
    {"CardMedia",               kFixed, 0, 9,  259, 7,   5,   259, {1, false, true, false, 4, 4}},
    {"LabelMedia",              kTrays, 0, 9,  263, 7,   252, 263, {1, false, true, false, 4, 4}},
    {"ExtraThickMedia",         kTrays, 0, 9,  265, 7,   5,   265, {1, false, true, false, 4, 4}},
    {"UnlistedMedia",           kTrays, 0, 9,  100, 7,   5,   100, {1, false, true, false, 4, 4}},
};
// clang-format on

class PaperChangesSource : public testing::TestWithParam<ChangeCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, PaperChangesSource, testing::ValuesIn(kChangeCases),
                         test::CaseName());

TEST_P(PaperChangesSource, ByThePapersRowAndThenTheMedias) {
  const ChangeCase& row = GetParam();
  PaperStage stage(row.model, row.missingTrays);
  ASSERT_TRUE(stage.OpenWith({.paper = row.from, .media = row.media, .source = row.source}));
  stage.PickPaper(row.paper);
  EXPECT_EQ(stage.Source(), row.seen);
  EXPECT_EQ(stage.shared().dmMediaType, row.mediaAfter);
  if (row.media != 100) {
    EXPECT_EQ(stage.Shown(1009), static_cast<int>(row.mediaAfter));
  }
  EXPECT_TRUE(stage.boxes().empty());
}

// What the list shows goes into both words of the record.
TEST(PaperChangesSource, NamesTheShownOneInBothWords) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9, .source = 258, .tray = 0}));
  stage.PickPaper(5);
  EXPECT_EQ(stage.Source(), (SourceSeen{3, true, false, true, 258, 258}));
}

// Paper by paper with a hand on the lists: each step stands on the one before.
TEST(PaperChangesSourceByHand, EnvelopeAndBack) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9, .source = 258}));
  ASSERT_TRUE(stage.user().Choose(1404, 4));  // an envelope
  EXPECT_FALSE(stage.user().Enabled(1393));
  EXPECT_FALSE(stage.user().Choose(1393, 0));
  ASSERT_TRUE(stage.user().Choose(1404, 1));
  EXPECT_TRUE(stage.user().Enabled(1393));
  EXPECT_EQ(stage.shared().dmDefaultSource, 4);  // manual feed stays
  ASSERT_TRUE(stage.user().Choose(1393, 3));
  EXPECT_EQ(stage.shared().dmDefaultSource, 258);
}

// ---- The feed -----------------------------------------------------------------------------------

TEST(PaperChangesFeed, A5FreesItAndAnotherPaperTakesItBack) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 9}));
  stage.PickPaper(11);
  EXPECT_TRUE(stage.user().Enabled(1125));
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_EQ(stage.own().FeedOrient, 2);
  stage.PickPaper(13);
  EXPECT_EQ(stage.own().FeedOrient, 1);
  EXPECT_TRUE(stage.user().Checked(1240));
  EXPECT_FALSE(stage.user().Enabled(1125));
  EXPECT_TRUE(stage.user().Shown(1449));
}

}  // namespace
}  // namespace ostrel
