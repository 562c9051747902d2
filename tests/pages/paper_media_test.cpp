// Another media type is chosen: what is refused, and what becomes of two-sided printing and of the
// source.
#include "pages/paper_stage.h"

namespace ostrel {
namespace {

// ---- Two-sided printing -------------------------------------------------------------------------

class MediaChoice : public testing::TestWithParam<std::int16_t> {};
INSTANTIATE_TEST_SUITE_P(Media, MediaChoice, testing::ValuesIn(test::kListedMediaIds),
                         testing::PrintToStringParamName());

std::u16string MediaText(std::int16_t media) {
  constexpr std::pair<std::int16_t, std::uint32_t> kNames[] = {
      {1, 127},  {257, 388},  {258, 139},  {259, 4075}, {263, 334},
      {2, 4076}, {264, 5099}, {265, 6541}, {261, 6542}};
  for (const auto& [id, name] : kNames) {
    if (id == media) {
      return PaperStage::Text(name);
    }
  }
  return {};
}

// All but plain and thin paper are refused, and the record keeps what it had.
TEST_P(MediaChoice, IsRefusedOnTwoSidesUnlessItIsPlainOrThin) {
  const std::int16_t media = GetParam();
  const std::int16_t before = media == 1 ? 264 : 1;
  for (const std::int16_t duplex : Words{2, 3}) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith(
        {.media = static_cast<std::uint32_t>(before), .source = 258, .duplex = duplex}));
    TellPages(&PageLinks::mediaChanged, true);
    const SourceSeen source = stage.Source();
    stage.PickMedia(media);
    EXPECT_TRUE(stage.IsUntitled());
    if (media == 1 || media == 264) {
      EXPECT_EQ(stage.shared().dmMediaType, static_cast<std::uint32_t>(media));
      EXPECT_EQ(stage.shared().dmDuplex, media == 1 ? duplex : 1);
      EXPECT_TRUE(stage.boxes().empty());
      EXPECT_EQ(stage.TakeChanges(), 2U);
      continue;
    }
    stage.ExpectOneBox(MediaText(media) + PaperStage::Text(5001) + PaperStage::Text(5003) +
                       PaperStage::Text(5002));
    EXPECT_EQ(stage.shared().dmMediaType, 1U);
    EXPECT_EQ(stage.shared().dmDuplex, duplex);
    EXPECT_EQ(stage.Shown(1009), 1);
    EXPECT_FALSE(stage.user().Enabled(1009));
    EXPECT_TRUE(stage.user().Shown(1446));
    EXPECT_EQ(stage.Source(), source);
    EXPECT_TRUE(AskPages(&PageLinks::mediaChanged));
    EXPECT_EQ(stage.TakeChanges(), 1U);  // of the name, before anything is asked
  }
}

// The refusal locks the list even where it was live.
TEST(MediaChoice, RefusalLocksTheList) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  stage.shared().dmDuplex = 2;  // another page did
  ASSERT_TRUE(stage.user().Choose(1009, 1));
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_FALSE(stage.user().Enabled(1009));
  EXPECT_TRUE(stage.user().Shown(1446));
  EXPECT_EQ(stage.shared().dmMediaType, 1U);
}

TEST(MediaChoice, RefusedMediaIsShownInALiveListUntilTheBoxIsClosed) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  stage.shared().dmDuplex = 2;  // another page did
  bool live = false;
  stage.windows().onBox = [&](const auto& /*box*/) {
    EXPECT_EQ(stage.Shown(1009), 257);
    live = stage.user().Enabled(1009);
  };
  stage.PickMedia(257);
  EXPECT_TRUE(live);
  EXPECT_EQ(stage.Shown(1009), 1);
}

// Other values of two-sided printing refuse nothing and become one-sided.
TEST(MediaChoice, OtherDuplexBecomesOneSided) {
  for (const std::int16_t duplex : Words{0, 1, 4, 5}) {
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.duplex = duplex}));
    TellPages(&PageLinks::mediaChanged, true);
    stage.PickMedia(258);
    EXPECT_EQ(stage.shared().dmMediaType, 258U) << duplex;
    EXPECT_EQ(stage.shared().dmDuplex, 1) << duplex;
    EXPECT_FALSE(AskPages(&PageLinks::mediaChanged)) << duplex;
    EXPECT_TRUE(stage.boxes().empty()) << duplex;
  }
}

TEST(MediaChoice, PlainTellsWhetherThePaperAllowsTwoSides) {
  for (const auto& [paper, before, after] :
       {std::tuple{std::int16_t{9}, false, true}, std::tuple{std::int16_t{13}, false, false},
        std::tuple{std::int16_t{13}, true, true}}) {  // what was told before stands
    PaperStage stage;
    ASSERT_TRUE(stage.OpenWith({.paper = paper, .media = 258}));
    TellPages(&PageLinks::mediaChanged, before);
    stage.PickMedia(1);
    EXPECT_EQ(AskPages(&PageLinks::mediaChanged), after) << paper;
  }
}

TEST(MediaChoice, SameMediaIsNoChange) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.media = 258}));
  stage.PickMedia(258);
  EXPECT_EQ(stage.TakeChanges(), 0U);
  EXPECT_EQ(stage.favorite(), u"Mine");
}

TEST(MediaChoice, NoSelectionIsNoChange) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.media = 3}));
  stage.Command(1009, kCbnSelChange);
  EXPECT_EQ(stage.TakeChanges(), 0U);
  EXPECT_EQ(stage.shared().dmMediaType, 3U);
}

TEST(MediaChoice, WithoutTheUntitledNameDoesNothingMore) {
  PaperStage stage;
  stage.language.strings.erase(5005);
  ASSERT_TRUE(stage.OpenWith({.duplex = 2}));
  const DriverDevmode before = stage.context().devmode;
  stage.PickMedia(258);
  EXPECT_EQ(test::Difference(test::BytesOf(stage.context().devmode), test::BytesOf(before)), "");
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_EQ(stage.TakeChanges(), 0U);
}

// The sheet is told before the rules are asked, and once more when the record has changed.
TEST(MediaChoice, TellsTheSheetTwice) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  stage.PickMedia(258);
  ASSERT_EQ(stage.changes.size(), 2U);
  EXPECT_EQ(stage.changes[0].publicDevmode.dmMediaType, 1U);
  EXPECT_EQ(std::u16string(stage.changes[0].privateDevmode.FavoriteName), PaperStage::Text(5005));
  EXPECT_EQ(stage.changes[1].publicDevmode.dmMediaType, 258U);
}

// ---- Envelopes ----------------------------------------------------------------------------------

class MediaOnPaper : public testing::TestWithParam<test::ListedPaper> {};
INSTANTIATE_TEST_SUITE_P(Papers, MediaOnPaper, testing::ValuesIn(test::kListedPapers),
                         test::ListedPaperName());

TEST_P(MediaOnPaper, LetterheadAndTransparenciesAreNoEnvelopes) {
  const std::int16_t paper = GetParam().id;
  const bool envelope = std::ranges::find(test::kEnvelopes, paper) != std::end(test::kEnvelopes);
  for (const std::int16_t media : Words{261, 2}) {
    PaperStage stage(kTrays);
    ASSERT_TRUE(stage.OpenWith({.paper = paper, .media = 258}));
    const SourceSeen source = stage.Source();
    TellPages(&PageLinks::mediaChanged, true);
    stage.PickMedia(media);
    EXPECT_EQ(stage.shared().dmMediaType, static_cast<std::uint32_t>(envelope ? 258 : media));
    EXPECT_EQ(stage.Shown(1009), envelope ? 258 : media);
    EXPECT_FALSE(AskPages(&PageLinks::mediaChanged));
    EXPECT_TRUE(stage.IsUntitled());
    if (envelope) {
      stage.ExpectOneBox(PaperStage::Text(6543));
      EXPECT_EQ(stage.Source(), source);
      EXPECT_EQ(stage.TakeChanges(), 1U);
    } else {
      EXPECT_TRUE(stage.boxes().empty());
      EXPECT_EQ(stage.TakeChanges(), 2U);
    }
  }
}

TEST(MediaOnEnvelope, RefusedMediaIsShownUntilTheBoxIsClosed) {
  PaperStage stage(kTrays);
  ASSERT_TRUE(stage.OpenWith({.paper = 37, .media = 258}));
  const std::vector<int>& shown = stage.WatchBoxes(1009);
  stage.PickMedia(261);
  EXPECT_EQ(shown, std::vector<int>({261}));
  EXPECT_EQ(stage.Shown(1009), 258);
}

// The envelope is asked behind what the media makes of two-sided printing, which stays.
TEST(MediaOnEnvelope, RefusalKeepsPrintingOneSided) {
  for (const std::int16_t media : Words{261, 2}) {
    PaperStage stage(kTrays);
    ASSERT_TRUE(stage.OpenWith({.paper = 37, .media = 258, .duplex = 0}));
    ASSERT_EQ(stage.shared().dmDuplex, 0);
    TellPages(&PageLinks::mediaChanged, true);
    stage.PickMedia(media);
    EXPECT_EQ(stage.boxes().size(), 1U);
    EXPECT_EQ(stage.shared().dmMediaType, 258U);
    EXPECT_EQ(stage.shared().dmDuplex, 1);
    EXPECT_FALSE(AskPages(&PageLinks::mediaChanged));
  }
}

TEST(MediaOnEnvelope, FamiliesWithOneTrayRefuseNothing) {
  for (const std::int16_t paper : test::kEnvelopes) {
    PaperStage stage(kFixed);
    ASSERT_TRUE(stage.OpenWith({.paper = paper}));
    stage.PickMedia(2);
    EXPECT_TRUE(stage.boxes().empty());
    EXPECT_EQ(stage.shared().dmMediaType, 2U);
  }
}

TEST(MediaOnEnvelope, OtherMediaAreTaken) {
  for (const std::int16_t media : Words{257, 258, 259, 263, 264, 265}) {
    PaperStage stage(kTrays);
    ASSERT_TRUE(stage.OpenWith({.paper = 37}));
    stage.PickMedia(media);
    EXPECT_TRUE(stage.boxes().empty());
    EXPECT_EQ(stage.shared().dmMediaType, static_cast<std::uint32_t>(media));
  }
}

// ---- The source ---------------------------------------------------------------------------------

struct ChangeCase {
  const char* name;
  const char16_t* model;
  int missingTrays;
  PaperRecord from;
  std::int16_t media;
  SourceSeen seen;
};
void PrintTo(const ChangeCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const ChangeCase kChangeCases[] = {
    // Plain and thin paper leave a choice where the paper does.
    {"PlainOnAny",           kTrays, 0, {.media = 258},                              1,   {1, true, false, true, 4, 4}},
    {"PlainFromTransparency",kTrays, 0, {.media = 2},                                1,   {2, true, false, true, 257, 257}},
    {"PlainOnEnvelope",      kTrays, 0, {.paper = 37, .media = 258},                 1,   {1, false, true, false, 4, 4}},
    {"PlainOnSmall",         kTrays, 0, {.paper = 252, .media = 258},                1,   {1, true, false, true, 4, 4}},
    {"ThinOnAny",            kFixed, 0, {.media = 258},                              264, {1, true, false, true, 4, 4}},
    {"ThinKeepsTheTray",     kTrays, 0, {.media = 1, .source = 259},                 264, {4, true, false, true, 259, 259}},
    {"ThinOnEnvelope",       kFixed, 0, {.paper = 37, .media = 1},                   264, {1, false, true, false, 4, 4}},
    // On an envelope letterhead from tray 1 leaves the list as it was.
    {"PlainOnEnvelopeFromLetterhead", kTrays, 0, {.paper = 37, .media = 261},        1,   {2, true, false, true, 257, 257}},
    {"ThickKeepsTheTray",    kTrays, 0, {.media = 1, .source = 258},                 257, {3, true, false, true, 258, 258}},
    {"ThickOnAny",           kTrays, 0, {.media = 258},                              257, {1, true, false, true, 4, 4}},
    {"ThickOnEnvelope",      kTrays, 0, {.paper = 37, .media = 258},                 257, {1, false, true, false, 4, 4}},
    {"ThickFixed",           kFixed, 0, {.media = 1, .source = 257},                 257, {1, false, true, false, 4, 4}},
    {"ThickFixedOnEnvelope", kFixed, 0, {.paper = 37, .media = 1},                   257, {1, false, true, false, 4, 4}},
    {"Transparency",         kTrays, 0, {.media = 1},                                2,   {2, false, true, false, 257, 257}},
    {"TransparencyTray3",    kTrays, 0, {.media = 1, .source = 259},                 2,   {2, false, true, false, 257, 257}},
    {"TransparencyFixed",    kFixed, 0, {.media = 1},                                2,   {1, false, true, false, 4, 4}},
    {"Letterhead",           kTrays, 0, {.media = 1, .source = 7},                   261, {2, true, false, true, 257, 257}},
    {"LetterheadManual",     kTrays, 1, {.media = 1, .source = 4},                   261, {2, true, false, true, 257, 257}},
    {"LetterheadShortList",  kTrays, 2, {.media = 1, .source = 7},                   261, {2, false, true, false, 257, 257}},
    {"LetterheadShortTray1", kTrays, 2, {.media = 1, .source = 257},                 261, {2, false, true, false, 257, 257}},
    {"LetterheadTray2",      kTrays, 0, {.media = 1, .source = 258},                 261, {3, true, false, true, 258, 258}},
    {"LetterheadUnlocks",    kTrays, 0, {.media = 258},                              261, {2, true, false, true, 257, 257}},
    {"EnvelopeMedia",        kTrays, 0, {.media = 1, .source = 258},                 258, {1, false, true, false, 4, 4}},
    {"CardMedia",            kFixed, 0, {.media = 1, .source = 257},                 259, {1, false, true, false, 4, 4}},
    {"LabelMedia",           kTrays, 0, {.media = 2},                                263, {1, false, true, false, 4, 4}},
    {"ExtraThickMedia",      kTrays, 0, {.media = 261},                              265, {1, false, true, false, 4, 4}},
};
// clang-format on

class MediaChangesSource : public testing::TestWithParam<ChangeCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, MediaChangesSource, testing::ValuesIn(kChangeCases),
                         test::CaseName());

TEST_P(MediaChangesSource, ByItsRow) {
  const ChangeCase& row = GetParam();
  PaperStage stage(row.model, row.missingTrays);
  ASSERT_TRUE(stage.OpenWith(row.from));
  stage.PickMedia(row.media);
  EXPECT_EQ(stage.Source(), row.seen);
  EXPECT_EQ(stage.shared().dmMediaType, static_cast<std::uint32_t>(row.media));
  EXPECT_TRUE(stage.boxes().empty());
}

// Thick paper of families with one fixed tray is locked when it or its paper is chosen, and live
// when the page is shown the next time.
TEST(ThickChoice, OnAFixedTrayIsLockedUntilThePageIsShownAgain) {
  PaperStage stage(kFixed);
  ASSERT_TRUE(stage.OpenWith({.source = 257}));
  const SourceSeen locked = {1, false, true, false, 4, 4};
  const SourceSeen live = {1, true, false, true, 4, 4};
  stage.PickMedia(257);
  EXPECT_EQ(stage.Source(), locked);
  stage.ShowAgain();
  EXPECT_EQ(stage.Source(), live);
  stage.PickPaper(5);
  EXPECT_EQ(stage.Source(), locked);
  stage.ShowAgain();
  EXPECT_EQ(stage.Source(), live);
}

// It is SourceTray that letterhead asks, where none may be named yet.
TEST(LetterheadChoice, MovesToTray1WithoutASourceToo) {
  for (const std::int16_t tray : Words{4, 7, 0}) {
    PaperStage stage(kTrays);
    ASSERT_TRUE(stage.OpenWith({.source = 258}));
    stage.own().SourceTray = tray;
    stage.PickMedia(261);
    EXPECT_EQ(stage.Source(), (SourceSeen{2, true, false, true, 257, 257})) << tray;
  }
  for (const std::int16_t tray : Words{257, 259, 15}) {
    PaperStage stage(kTrays);
    ASSERT_TRUE(stage.OpenWith({.source = 258}));
    stage.own().SourceTray = tray;
    stage.PickMedia(261);
    EXPECT_EQ(stage.Source(), (SourceSeen{3, true, false, true, 258, 258})) << tray;
  }
}

// A paper that refuses the source leaves the lock as it was. Of the papers that letterhead is made
// of, one gets there whose source another page has changed.
TEST(LetterheadChoice, OnAPaperThatRefusesTheSourceLeavesTheLock) {
  for (const std::uint32_t before : {1U, 258U}) {
    PaperStage stage(kTrays);
    ASSERT_TRUE(stage.OpenWith({.paper = 252, .media = before, .source = 257}));
    const SourceSeen was = stage.Source();
    stage.shared().dmDefaultSource = 259;
    stage.own().SourceTray = 7;
    stage.PickMedia(261);
    EXPECT_EQ(stage.Source(), (SourceSeen{2, was.live, was.icon, was.allowed, 257, 257})) << before;
  }
}

}  // namespace
}  // namespace ostrel
