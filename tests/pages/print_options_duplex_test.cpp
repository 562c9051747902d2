// Two-sided printing on the print options page: what locks it, what refuses it, and in which order.
#include "pages/options_stage.h"

#include <cstring>
#include <tuple>

namespace ostrel {
namespace {

using test::OptionsStage;
using test::PaperCase;

constexpr std::int32_t kGroup[] = {1240, 1125, 1241};

// The group's three radios, its icon, and what is told to the other pages.
void ExpectGroup(OptionsStage& stage, bool allowed) {
  for (const std::int32_t id : kGroup) {
    EXPECT_EQ(stage.user().Enabled(id), allowed) << id;
  }
  EXPECT_EQ(stage.user().Shown(1447), !allowed);
  EXPECT_EQ(AskPages(&PageLinks::duplexAllowed), allowed);
}

void ExpectSelected(OptionsStage& stage, std::int32_t radio) {
  for (const std::int32_t id : kGroup) {
    EXPECT_EQ(stage.user().Checked(id), id == radio) << id;
  }
}

// ---- The rule -----------------------------------------------------------------------------------

class DuplexRuleOfPaper : public testing::TestWithParam<PaperCase> {};

INSTANTIATE_TEST_SUITE_P(Papers, DuplexRuleOfPaper, testing::ValuesIn(test::kPaperCases),
                         test::PaperCaseName());

// A paper without a row that isn't one of the user's own is in no conflict.
TEST_P(DuplexRuleOfPaper, GroupIsLiveForPapersThatCanBePrintedTwoSided) {
  const std::int16_t paper = GetParam().paper;
  const bool allowed = GetParam().twoSided && !test::IsRuleCustomPaper(paper);
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmPaperSize = paper;
  stage.ShowAgain();
  ExpectGroup(stage, allowed);
}

struct MediaCase {
  std::int16_t media;
  bool locks;
};
constexpr MediaCase kMediaCases[] = {
    {1, false},   {257, true},  {258, true},  {2, true},    {259, true}, {263, true},
    {264, true},  {265, true},  {261, true},  {0, false},   {3, false},  {256, false},
    {260, false}, {262, false}, {266, false}, {267, false}, {-1, false},
};

class DuplexRuleOfMedia : public testing::TestWithParam<MediaCase> {};

INSTANTIATE_TEST_SUITE_P(Types, DuplexRuleOfMedia, testing::ValuesIn(kMediaCases),
                         [](const auto& row) {
                           const int media = row.param.media;
                           return media < 0 ? "Minus" + std::to_string(-media)
                                            : "Media" + std::to_string(media);
                         });

TEST_P(DuplexRuleOfMedia, GroupIsLiveForMediaWithoutARefusal) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmMediaType = static_cast<std::uint32_t>(GetParam().media);
  stage.ShowAgain();
  ExpectGroup(stage, !GetParam().locks);
}

// All sums of the five reasons.
class DuplexRuleOfReasons : public testing::TestWithParam<unsigned> {};

INSTANTIATE_TEST_SUITE_P(Sums, DuplexRuleOfReasons, testing::Range(0U, 32U),
                         testing::PrintToStringParamName());

TEST_P(DuplexRuleOfReasons, AnyOfThemLocksTheGroup) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmMediaType = (GetParam() & 1) != 0 ? 257 : 1;
  stage.shared().dmPaperSize = (GetParam() & 2) != 0 ? 13 : 9;
  stage.own().PosterPrint = (GetParam() & 4) != 0 ? 1 : 0;
  stage.own().BookletPrint = (GetParam() & 8) != 0 ? 1 : 0;
  stage.own().ReversePrint = (GetParam() & 16) != 0 ? 1 : 0;
  stage.ShowAgain();
  ExpectGroup(stage, GetParam() == 0);
}

TEST(DuplexRule, PosterPagesWithoutThePosterLockNothing) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().MultipleUp = 22;
  stage.ShowAgain();
  ExpectGroup(stage, true);
}

TEST(DuplexRule, AnySettingOtherThanZeroCounts) {
  for (std::int16_t PrivateDevmode::*word :
       {&PrivateDevmode::PosterPrint, &PrivateDevmode::BookletPrint,
        &PrivateDevmode::ReversePrint}) {
    OptionsStage stage;
    ASSERT_TRUE(stage.Open());
    stage.own().*word = -3;
    stage.ShowAgain();
    ExpectGroup(stage, false);
  }
}

// ---- Clicks on one side -------------------------------------------------------------------------

TEST(DuplexClick, OneSideFreesReverseOrder) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.publicPointer->dmDuplex = 2; }));
  stage.SetFavorite(u"mine");
  ASSERT_FALSE(stage.user().Enabled(1394));
  ASSERT_EQ(stage.DuplexPicture(), 902U);
  int told = 0;
  stage.onChange = [&] {
    ++told;
    // Told before the pages, the lock and the picture follow.
    EXPECT_TRUE(stage.user().Checked(1240));
    EXPECT_FALSE(AskPages(&PageLinks::duplexOff));
    EXPECT_FALSE(stage.user().Enabled(1394));
    EXPECT_TRUE(stage.user().Shown(1448));
    EXPECT_EQ(stage.DuplexPicture(), 902U);
  };
  EXPECT_TRUE(stage.user().Click(1240));
  EXPECT_EQ(told, 1);
  EXPECT_EQ(stage.changes.at(0).publicDevmode.dmDuplex, 1);
  EXPECT_EQ(std::u16string(stage.changes.at(0).privateDevmode.FavoriteName),
            OptionsStage::Text(5005));
  ExpectSelected(stage, 1240);
  EXPECT_EQ(stage.shared().dmDuplex, 1);
  EXPECT_TRUE(AskPages(&PageLinks::duplexOff));
  EXPECT_TRUE(stage.user().Enabled(1394));
  EXPECT_FALSE(stage.user().Shown(1448));
  EXPECT_EQ(stage.DuplexPicture(), 631U);
  EXPECT_TRUE(stage.boxes().empty());
}

struct UnchangedCase {
  std::int32_t control;
  std::int16_t duplex;
};

class DuplexClickUnchanged : public testing::TestWithParam<UnchangedCase> {};

INSTANTIATE_TEST_SUITE_P(Each, DuplexClickUnchanged,
                         testing::Values(UnchangedCase{1240, 1}, UnchangedCase{1125, 2},
                                         UnchangedCase{1241, 3}),
                         [](const auto& row) { return std::to_string(row.param.control); });

// Not even the paper is asked, nor the media reset.
TEST_P(DuplexClickUnchanged, DoesNothingWhenTheRecordHasItAlready) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmDuplex = GetParam().duplex;
  stage.shared().dmPaperSize = 13;
  stage.shared().dmMediaType = 257;
  stage.own().MultipleUp = 22;
  stage.SetFavorite(u"mine");
  const DriverDevmode before = stage.context().devmode;
  stage.Command(GetParam().control);
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_TRUE(stage.boxes().empty());
}

// ---- Clicks on two sides ------------------------------------------------------------------------

struct EdgeCase {
  std::int32_t control;
  std::int16_t target;
  std::uint32_t picture;
};
constexpr EdgeCase kLong = {1125, 2, 902};
constexpr EdgeCase kShort = {1241, 3, 905};

class DuplexClickOfPaper : public testing::TestWithParam<std::tuple<PaperCase, bool>> {};

INSTANTIATE_TEST_SUITE_P(Papers, DuplexClickOfPaper,
                         testing::Combine(testing::ValuesIn(test::kPaperCases), testing::Bool()),
                         [](const auto& row) {
                           const int paper = std::get<0>(row.param).paper;
                           return (paper < 0 ? "Minus" + std::to_string(-paper)
                                             : std::to_string(paper)) +
                                  (std::get<1>(row.param) ? "LongEdge" : "ShortEdge");
                         });

// A paper without a row passes, those of the user's own included.
TEST_P(DuplexClickOfPaper, IsRefusedByThePapersRowAlone) {
  const auto& [row, isLong] = GetParam();
  const EdgeCase edge = isLong ? kLong : kShort;
  const bool refused = row.hasRow && !row.twoSided;
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmPaperSize = row.paper;
  stage.shared().dmMediaType = 257;
  stage.SetFavorite(u"mine");
  TellPages(&PageLinks::duplexOff, true);
  stage.Command(edge.control);
  EXPECT_EQ(stage.shared().dmDuplex, refused ? 1 : edge.target);
  EXPECT_EQ(stage.shared().dmMediaType, refused ? 257U : 1U);
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
  EXPECT_EQ(AskPages(&PageLinks::duplexOff), refused);
  ExpectSelected(stage, refused ? 1240 : edge.control);
  EXPECT_EQ(stage.user().Enabled(1394), refused);
  EXPECT_EQ(stage.user().Shown(1448), !refused);
  ASSERT_EQ(stage.boxes().size(), refused ? 1U : 0U);
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.changes[0].publicDevmode.dmDuplex, refused ? 1 : edge.target);
  EXPECT_EQ(std::u16string(stage.changes[0].privateDevmode.FavoriteName), OptionsStage::Text(5005));
  if (refused) {
    const auto& box = stage.boxes()[0];
    EXPECT_EQ(box.owner, stage.page());
    EXPECT_EQ(box.text, OptionsStage::Text(5041));
    EXPECT_EQ(box.caption, OptionsStage::Text(5004));
    EXPECT_EQ(box.style, 48U);
  } else {
    EXPECT_EQ(stage.DuplexPicture(), edge.picture);
  }
}

class DuplexClickTwoSided : public testing::TestWithParam<EdgeCase> {};

INSTANTIATE_TEST_SUITE_P(Edges, DuplexClickTwoSided, testing::Values(kLong, kShort),
                         [](const auto& row) { return std::to_string(row.param.control); });

// The sheet is told last, once, and all else is done by then.
TEST_P(DuplexClickTwoSided, LocksReverseOrderAndResetsTheMedia) {
  const EdgeCase edge = GetParam();
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(u"mine");
  stage.shared().dmMediaType = 266;  // no row, so no lock
  stage.onChange = [&] {
    EXPECT_EQ(stage.shared().dmMediaType, 1U);
    EXPECT_EQ(stage.shared().dmDuplex, edge.target);
    EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
    EXPECT_FALSE(AskPages(&PageLinks::duplexOff));
    EXPECT_FALSE(stage.user().Enabled(1394));
    EXPECT_TRUE(stage.user().Shown(1448));
    ExpectSelected(stage, edge.control);
    EXPECT_EQ(stage.DuplexPicture(), edge.picture);
  };
  EXPECT_TRUE(stage.user().Click(edge.control));
  EXPECT_EQ(stage.changes.size(), 1U);
  ExpectGroup(stage, true);
  EXPECT_EQ(stage.own().Duplex, 1);  // the private word is the apply's
}

TEST_P(DuplexClickTwoSided, TurnsFromTheOtherEdge) {
  const EdgeCase edge = GetParam();
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(
      [edge](UIContext& context) { context.publicPointer->dmDuplex = edge.target == 2 ? 3 : 2; }));
  EXPECT_TRUE(stage.user().Click(edge.control));
  EXPECT_EQ(stage.shared().dmDuplex, edge.target);
  ExpectSelected(stage, edge.control);
  EXPECT_EQ(stage.changes.size(), 1U);
}

// The media has been reset by then, and stays so.
TEST_P(DuplexClickTwoSided, IsRefusedByPosterPagesAfterTheMediaWasReset) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().MultipleUp = 22;
  stage.shared().dmMediaType = 266;
  stage.SetFavorite(u"mine");
  stage.ShowAgain();
  TellPages(&PageLinks::duplexOff, true);
  std::size_t opened = 0;
  stage.windows().onBox = [&](const auto& /*box*/) {
    ++opened;
    EXPECT_EQ(stage.shared().dmMediaType, 1U);
    EXPECT_EQ(stage.shared().dmDuplex, 1);
    EXPECT_FALSE(AskPages(&PageLinks::duplexOff));
    EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
    EXPECT_TRUE(stage.changes.empty());
  };
  EXPECT_TRUE(stage.user().Click(GetParam().control));
  EXPECT_EQ(opened, 1U);
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.changes[0].publicDevmode.dmMediaType, 1U);
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, OptionsStage::Text(5032));
  EXPECT_EQ(stage.boxes()[0].caption, OptionsStage::Text(5004));
  EXPECT_EQ(stage.boxes()[0].style, 48U);
  EXPECT_EQ(stage.shared().dmDuplex, 1);
  EXPECT_EQ(stage.shared().dmMediaType, 1U);
  EXPECT_EQ(stage.own().MultipleUp, 22);
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
  ExpectSelected(stage, 1240);
  EXPECT_TRUE(stage.user().Enabled(1394));
  EXPECT_FALSE(stage.user().Shown(1448));
  // What the paper page was told before the poster's refusal isn't taken back.
  EXPECT_FALSE(AskPages(&PageLinks::duplexOff));
}

// The box gives the focus back to the radio button, which isn't checked: that is a click, too.
TEST_P(DuplexClickTwoSided, RefusalIsToldOnceAndTheFocusGoesToOneSided) {
  for (const bool byPaper : {false, true}) {
    OptionsStage stage;
    ASSERT_TRUE(stage.Open());
    (byPaper ? stage.shared().dmPaperSize : stage.own().MultipleUp) = byPaper ? 13 : 22;
    EXPECT_TRUE(stage.user().Click(GetParam().control));
    EXPECT_EQ(stage.boxes().size(), 1U) << byPaper;
    EXPECT_EQ(stage.user().Focus(), 1240) << byPaper;
    stage.windows().MoveFocus(nullptr);
    stage.windows().MoveFocus(stage.Item(1240));
    EXPECT_EQ(stage.boxes().size(), 1U) << byPaper;
    EXPECT_EQ(stage.changes.size(), 1U) << byPaper;
    // A second try is a second refusal.
    EXPECT_TRUE(stage.user().Click(GetParam().control));
    EXPECT_EQ(stage.boxes().size(), 2U) << byPaper;
  }
}

TEST_P(DuplexClickTwoSided, PaperIsRefusedBeforeThePosterPages) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().MultipleUp = 22;
  stage.shared().dmPaperSize = 13;
  stage.shared().dmMediaType = 266;
  stage.Command(GetParam().control);
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, OptionsStage::Text(5041));
  EXPECT_EQ(stage.shared().dmMediaType, 266U);
}

// Refused from two sides, the record goes back to one side while reverse order stays locked: the
// next reload frees it.
TEST_P(DuplexClickTwoSided, RefusalFromTheOtherEdgeLeavesTheLockOfReverseOrder) {
  const EdgeCase edge = GetParam();
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(
      [edge](UIContext& context) { context.publicPointer->dmDuplex = edge.target == 2 ? 3 : 2; }));
  stage.shared().dmPaperSize = 13;
  const std::uint32_t picture = stage.DuplexPicture();
  TellPages(&PageLinks::duplexOff, false);
  stage.Command(edge.control);
  EXPECT_EQ(stage.shared().dmDuplex, 1);
  ExpectSelected(stage, 1240);
  EXPECT_FALSE(stage.user().Enabled(1394));
  EXPECT_TRUE(stage.user().Shown(1448));
  EXPECT_EQ(stage.DuplexPicture(), picture);
  EXPECT_FALSE(AskPages(&PageLinks::duplexOff));
  stage.ShowAgain();
  EXPECT_TRUE(stage.user().Enabled(1394));
}

TEST_P(DuplexClickTwoSided, RefusalReadsFromRightToLeftWhereTheLanguageDoes) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.world().process.RightToLeftLanguage = true;
  stage.shared().dmPaperSize = 13;
  stage.Command(GetParam().control);
  stage.shared().dmPaperSize = 9;
  stage.own().MultipleUp = 22;
  stage.Command(GetParam().control);
  ASSERT_EQ(stage.boxes().size(), 2U);
  EXPECT_EQ(stage.boxes()[0].style, 48U | 0x180000U);
  EXPECT_EQ(stage.boxes()[1].style, 48U | 0x180000U);
}

TEST_P(DuplexClickTwoSided, DuplexOfAnotherPagesKindIsNoTarget) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::int16_t before : {std::int16_t{4}, std::int16_t{5}, std::int16_t{0}}) {
    stage.shared().dmDuplex = before;
    stage.Command(GetParam().control);
    EXPECT_EQ(stage.shared().dmDuplex, GetParam().target);
  }
  EXPECT_EQ(stage.changes.size(), 3U);
}

// ---- Papers where the lock and the click part ---------------------------------------------------

TEST(DuplexEdgeCase, Paper245KeepsAShortEdgeRecordAndRefusesTheClick) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 3;
    context.publicPointer->dmPaperSize = 245;
  }));
  EXPECT_EQ(stage.shared().dmDuplex, 3);
  ExpectSelected(stage, 1241);
  ExpectGroup(stage, false);
  stage.shared().dmDuplex = 1;
  stage.Command(1241);
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, OptionsStage::Text(5041));
  EXPECT_EQ(stage.shared().dmDuplex, 1);
}

TEST(DuplexEdgeCase, CustomPaperIsTakenWhileTheGroupIsLiveAndLockedByTheNextReload) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  ExpectGroup(stage, true);
  stage.shared().dmPaperSize = 288;
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_EQ(stage.shared().dmDuplex, 2);
  ExpectGroup(stage, true);
  stage.ShowAgain();
  ExpectGroup(stage, false);
  EXPECT_EQ(stage.shared().dmDuplex, 2);
  ExpectSelected(stage, 1125);
}

TEST(DuplexEdgeCase, LockedRadiosCannotBeClicked) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.publicPointer->dmPaperSize = 13; }));
  for (const std::int32_t id : kGroup) {
    EXPECT_FALSE(stage.user().Click(id)) << id;
  }
  EXPECT_TRUE(stage.changes.empty());
}

}  // namespace
}  // namespace ostrel
