// The print options page as it starts and as it is shown again: captions, what a record is brought
// to first, what a model has, and what each control then shows.
#include "pages/options_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::OptionsStage;

// ---- Captions -----------------------------------------------------------------------------------

struct CaptionCase {
  std::int32_t control;
  std::uint32_t text;
};
// clang-format off
constexpr CaptionCase kCaptions[] = {
    {1018, 1006}, {1008, 1010}, {1242, 3112}, {1243, 3113}, {1395, 4002}, {1396, 4003},
    {1397, 4004}, {1394, 4005}, {1240, 4006}, {1125, 4007}, {1241, 4008}, {1064, 1011},
    {1414,  129}, {1422, 5080}, {1489,  211}, {1483,  205}, {1497, 1497}, {1496, 1498},
};
// clang-format on

struct ControlName {
  template <typename Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    return "Control" + std::to_string(row.param.control);
  }
};

class OptionsCaption : public testing::TestWithParam<CaptionCase> {};

INSTANTIATE_TEST_SUITE_P(Each, OptionsCaption, testing::ValuesIn(kCaptions), ControlName());

TEST_P(OptionsCaption, ComesFromTheLanguageLibrary) {
  OptionsStage stage;
  for (auto& control : stage.dialog().controls) {
    control.title = u"#";
  }
  stage.language.strings[GetParam().text] = u"mark " + OptionsStage::Text(GetParam().text);
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.user().Text(GetParam().control), u"mark " + OptionsStage::Text(GetParam().text));
}

TEST_P(OptionsCaption, StaysWhenTheTextIsMissing) {
  OptionsStage stage;
  for (auto& control : stage.dialog().controls) {
    control.title = u"#";
  }
  stage.language.strings.erase(GetParam().text);
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.user().Text(GetParam().control), u"#");
}

TEST_P(OptionsCaption, IsPassedOverForAControlThatTheTemplateLacks) {
  OptionsStage stage;
  stage.RemoveControl(GetParam().control);
  ASSERT_TRUE(stage.Open());
  for (const CaptionCase& other : kCaptions) {
    if (other.control != GetParam().control) {
      EXPECT_EQ(stage.user().Text(other.control), OptionsStage::Text(other.text));
    }
  }
}

TEST(OptionsPage, HasTheCopiesLabelAsItsOwnText) {
  OptionsStage stage;
  stage.dialog().title = u"#";
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.windows().Find(stage.page())->text, OptionsStage::Text(1006));
}

TEST(OptionsPage, KeepsItsOwnTextWhenTheLabelIsMissing) {
  OptionsStage stage;
  stage.dialog().title = u"#";
  stage.language.strings.erase(1006);
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.windows().Find(stage.page())->text, u"#");
}

TEST(OptionsPage, OpensWithoutAnyText) {
  OptionsStage stage;
  stage.language.strings.clear();
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(
      stage.user().ItemTexts(1393),
      (std::vector<std::u16string>{u"id:201 missing!", u"id:203 missing!", u"id:204 missing!"}));
}

class OptionsLackingControl : public testing::TestWithParam<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(Each, OptionsLackingControl,
                         testing::Values(1008, 1018, 1019, 1020, 1064, 1125, 1176, 1240, 1241, 1242,
                                         1243, 1393, 1394, 1422, 1447, 1448, 1449, 1450, 1453, 1483,
                                         1496, 1497),
                         testing::PrintToStringParamName());

// No control's absence is an error: the page opens, takes every message, and is applied.
TEST_P(OptionsLackingControl, OpensTakesEveryMessageAndIsApplied) {
  OptionsStage stage;
  stage.RemoveControl(GetParam());
  ASSERT_TRUE(stage.Open());
  for (const std::int32_t id : {1125, 1241, 1240, 1394, 1394, 1008, 1422, 1496, 1243, 1242, 1064}) {
    stage.Command(id);
  }
  stage.Command(1393, kCbnSelChange);
  stage.Command(1019, kEnChange);
  stage.Command(1019, kEnKillFocus);
  stage.Send(kWmMouseMove);
  EXPECT_EQ(stage.shared().dmDuplex, 1);
  EXPECT_EQ(stage.sheet->PressOk(), GetParam() != 1019);  // which then reads as empty
}

// ---- What a record is brought to first ----------------------------------------------------------

struct NormaliseCase {
  const char* name;
  std::int16_t duplex, booklet, reverse, media, poster, multipleUp, paper;
  // Afterwards.
  std::int16_t toDuplex, toBooklet, toReverse, toMedia, toPoster, toMultipleUp;
};
void PrintTo(const NormaliseCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const NormaliseCase kNormaliseCases[] = {
    // name                              dup bk rev med po  up  pap    dup bk rev med po up
    {"OneSidedKeepsAllButTheBooklet",      1, 1, 1, 257, 1, 22,   9,     1, 0, 1, 257, 1, 22},
    {"OneSidedWithoutBooklet",             1, 0, 1, 257, 1, 22,   9,     1, 0, 1, 257, 1, 22},
    {"LongEdgeDropsBookletReverseAndPoster", 2, 1, 1, 257, 1, 22, 9,     2, 0, 0,   1, 0,  1},
    {"LongEdgeKeepsPagesWithoutPoster",    2, 0, 0,   1, 0, 22,   9,     2, 0, 0,   1, 0, 22},
    {"LongEdgeKeepsFourPages",             2, 0, 0,   1, 0,  4,   9,     2, 0, 0,   1, 0,  4},
    {"LongEdgePosterDropsAnyPages",        2, 0, 0,   1, 1,  4,   9,     2, 0, 0,   1, 0,  1},
    {"ShortEdgeKeepsTheBooklet",           3, 1, 1, 258, 1, 22,   9,     3, 1, 0,   1, 0,  1},
    {"ShortEdgeWithoutBooklet",            3, 0, 1, 258, 0,  1,   9,     3, 0, 0,   1, 0,  1},
    {"DuplexAboveThreeReadsAsOneSided",    4, 1, 1, 257, 1, 22,   9,     1, 0, 1, 257, 1, 22},
    {"DuplexFiveReadsAsOneSided",          5, 1, 1, 257, 1, 22,   9,     1, 0, 1, 257, 1, 22},
    {"DuplexZeroReadsAsOneSided",          0, 1, 1, 257, 1, 22,   9,     1, 0, 1, 257, 1, 22},
    {"NegativeDuplexReadsAsOneSided",     -2, 1, 1, 257, 1, 22,   9,     1, 0, 1, 257, 1, 22},
    {"OtherPaperEndsTheShortEdge",         3, 1, 1, 257, 1, 22,  13,     1, 0, 0,   1, 0,  1},
    {"OtherPaperEndsTheLongEdge",          2, 0, 1, 257, 0,  1,  11,     1, 0, 0,   1, 0,  1},
    {"OtherPaperKeepsOneSided",            1, 1, 1, 257, 1, 22,  13,     1, 0, 1, 257, 1, 22},
    {"CustomPaperEndsTheShortEdge",        3, 1, 0,   1, 0,  1, 288,     1, 0, 0,   1, 0,  1},
    {"Paper245KeepsTheBooklet",            3, 1, 0,   1, 0,  1, 245,     3, 1, 0,   1, 0,  1},
};
// clang-format on

class OptionsNormalise : public testing::TestWithParam<NormaliseCase> {};

INSTANTIATE_TEST_SUITE_P(Records, OptionsNormalise, testing::ValuesIn(kNormaliseCases),
                         test::CaseName());

TEST_P(OptionsNormalise, BringsSettingsTogetherBeforeAnythingIsShown) {
  const NormaliseCase& row = GetParam();
  OptionsStage stage;
  ASSERT_TRUE(stage.OpenStartOnly([&row](UIContext& context) {
    PublicDevmode& shared = *context.publicPointer;
    PrivateDevmode& own = *context.privatePointer;
    shared.dmDuplex = row.duplex;
    shared.dmMediaType = static_cast<std::uint32_t>(row.media);
    shared.dmPaperSize = row.paper;
    own.BookletPrint = row.booklet;
    own.ReversePrint = row.reverse;
    own.PosterPrint = row.poster;
    own.MultipleUp = row.multipleUp;
  }));
  EXPECT_EQ(stage.shared().dmDuplex, row.toDuplex);
  EXPECT_EQ(stage.own().BookletPrint, row.toBooklet);
  EXPECT_EQ(stage.own().ReversePrint, row.toReverse);
  EXPECT_EQ(static_cast<int>(stage.shared().dmMediaType), row.toMedia);
  EXPECT_EQ(stage.own().PosterPrint, row.toPoster);
  EXPECT_EQ(stage.own().MultipleUp, row.toMultipleUp);
  EXPECT_EQ(static_cast<int>(stage.shared().dmPaperSize), row.paper);
  // What is shown is what the record was brought to.
  EXPECT_EQ(stage.user().Checked(1394), row.toReverse == 1);
  EXPECT_EQ(stage.user().Checked(1240), row.toDuplex == 1);
  EXPECT_EQ(stage.user().Checked(1125), row.toDuplex == 2);
  EXPECT_EQ(stage.user().Checked(1241), row.toDuplex == 3);
}

class OptionsNormalisePaper : public testing::TestWithParam<test::PaperCase> {};

INSTANTIATE_TEST_SUITE_P(Papers, OptionsNormalisePaper, testing::ValuesIn(test::kPaperCases),
                         test::PaperCaseName());

// The list isn't that of the two-sided table: 245 is in it.
TEST_P(OptionsNormalisePaper, KeepsShortEdgeAndBookletForSixPapers) {
  constexpr std::int16_t kKept[] = {9, 1, 5, 14, 243, 245};
  const std::int16_t paper = GetParam().paper;
  const bool kept = std::ranges::count(kKept, paper) != 0;
  OptionsStage stage;
  ASSERT_TRUE(stage.OpenStartOnly([paper](UIContext& context) {
    context.publicPointer->dmDuplex = 3;
    context.publicPointer->dmPaperSize = paper;
    context.privatePointer->BookletPrint = 1;
  }));
  EXPECT_EQ(stage.shared().dmDuplex, kept ? 3 : 1);
  EXPECT_EQ(stage.own().BookletPrint, kept ? 1 : 0);
}

TEST(OptionsPage, DoesNotNormaliseWhenItIsShownAgain) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmDuplex = 3;
  stage.own().ReversePrint = 1;
  stage.own().PosterPrint = 1;
  stage.shared().dmMediaType = 257;
  stage.ShowAgain();
  EXPECT_EQ(stage.own().ReversePrint, 1);
  EXPECT_EQ(stage.own().PosterPrint, 1);
  EXPECT_EQ(stage.shared().dmMediaType, 257U);
  EXPECT_EQ(stage.shared().dmDuplex, 3);
}

// ---- What a model has ---------------------------------------------------------------------------

struct ModelCase {
  const char* name;
  const char16_t* model;
  bool hasMode;
  bool hasFlag;
};
const ModelCase kModelCases[] = {
    {"Alder", u"Alder 1 Series", false, false},      {"Birch", u"Birch 1 Series", false, false},
    {"Cedar", u"Cedar 1 Series", false, false},      {"Dogwood", u"Dogwood 1 Series", false, false},
    {"Elm", u"Elm 1 Series", false, false},          {"Fir", u"Fir 1 Series", false, false},
    {"Ginkgo", u"Ginkgo 1 Series", false, false},    {"Hazel", u"Hazel 1 Series", true, true},
    {"Ironwood", u"Ironwood 1 Series", true, false}, {"Juniper", u"Juniper 1 Series", true, false},
    {"Kauri", u"Kauri 1 Series", true, false},       {"None", u"", false, false},
};

class OptionsModel : public testing::TestWithParam<ModelCase> {};

INSTANTIATE_TEST_SUITE_P(Families, OptionsModel, testing::ValuesIn(kModelCases), test::CaseName());

TEST_P(OptionsModel, ShowsTheJobOptionsThatItHas) {
  OptionsStage stage;
  stage.SelectModel(GetParam().model);
  ASSERT_TRUE(stage.Open());
  const headless::User user = stage.user();
  EXPECT_EQ(user.Shown(1393), GetParam().hasMode);
  EXPECT_EQ(user.Shown(1483), GetParam().hasMode);
  EXPECT_EQ(user.Shown(1496), GetParam().hasFlag);
  EXPECT_EQ(user.Shown(1497), GetParam().hasFlag);
  EXPECT_EQ(user.Image(1450), GetParam().hasMode ? 1077U : 0U);
  const auto* state = GetPageState<PrintOptionsPageState>(PageSlot::kPrintOptions);
  ASSERT_NE(state, nullptr);
  EXPECT_EQ(state->tooltip != nullptr, GetParam().hasMode);
  EXPECT_FALSE(user.Shown(1414));
  EXPECT_EQ(user.ItemTexts(1393),
            (std::vector<std::u16string>{OptionsStage::Text(201), OptionsStage::Text(203),
                                         OptionsStage::Text(204)}));
  EXPECT_EQ(user.ItemData(1393), (std::vector<std::uintptr_t>{0, 1, 2}));
}

// Its icon is shown all the same, without a picture and without a tooltip: nobody sees it.
TEST(OptionsPage, OfAModelWithoutTheJobModeShowsAnEmptyIconUnderAWatermark) {
  OptionsStage stage;
  stage.SelectModel(u"Alder 1 Series");
  ASSERT_TRUE(stage.Open());
  EXPECT_FALSE(stage.user().Shown(1450));
  stage.own().WatermarkData.PageWMFlag = 1;
  stage.ShowAgain();
  EXPECT_TRUE(stage.user().Shown(1450));
  EXPECT_EQ(stage.user().Image(1450), 0U);
  EXPECT_EQ(stage.user().HoverTip(1450), u"");
}

TEST(OptionsPage, ShowsTheSharedIconOnEveryIconControl) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::int32_t icon : {1447, 1448, 1449, 1450}) {
    EXPECT_EQ(stage.user().Image(icon), 1077U) << icon;
  }
  EXPECT_EQ(stage.windows().loadedImages(), 1U);
}

TEST(OptionsPage, IsAttachedToItsControlsByItsState) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  auto& state = *GetPageState<PrintOptionsPageState>(PageSlot::kPrintOptions);
  const std::pair<const DlgControl*, std::int32_t> kAttached[] = {
      {&state.copiesSpin, 1020},   {&state.copiesEdit, 1019},  {&state.jobModeCombo, 1393},
      {&state.jobFlagCheck, 1496}, {&state.duplexGroup, 1240}, {&state.duplexOff, 1240},
      {&state.duplexLong, 1125},   {&state.duplexShort, 1241}, {&state.resolutionGroup, 1242},
      {&state.res1200, 1243},      {&state.res600, 1242},      {&state.collateCheck, 1008},
      {&state.reverseCheck, 1394}, {&state.finessCheck, 1422},
  };
  for (const auto& [control, id] : kAttached) {
    EXPECT_EQ(control->id(), id);
    EXPECT_EQ(control->window(), stage.Item(id)) << id;
    EXPECT_EQ(control->dialog(), stage.page()) << id;
  }
  EXPECT_EQ(state.spare.id(), -1);
  EXPECT_EQ(state.spare.window(), nullptr);
  EXPECT_EQ(state.dialog, stage.page());
  EXPECT_EQ(state.editing, 0U);
  EXPECT_FLOAT_EQ(state.copiesEdit.range.minimum, 0.9999F);
  EXPECT_FLOAT_EQ(state.copiesEdit.range.maximum, 999.0001F);
  EXPECT_EQ(state.copiesEdit.range.precision, 0);
  EXPECT_EQ(state.copiesEdit.range.maximumTextLength, 3);
  EXPECT_EQ(state.copiesEdit.range.allowsSign, 0);
}

TEST(OptionsPage, ForgetsOnceADialogThatTheMediaChanged) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext&) { TellPages(&PageLinks::mediaChanged, true); }));
  EXPECT_FALSE(AskPages(&PageLinks::mediaChanged));
  TellPages(&PageLinks::mediaChanged, true);
  stage.ShowAgain();
  EXPECT_TRUE(AskPages(&PageLinks::mediaChanged));
}

TEST(OptionsPage, TakesTheCursorFromItsClass) {
  constexpr std::intptr_t kCursor = 0x77;
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const std::u16string dialogClass = stage.windows().Find(stage.page())->className;
  stage.windows().SetClassLongPtrW(stage.page(), kGclCursor, kCursor);
  stage.ShowAgain();
  EXPECT_EQ(stage.windows().ClassLong(dialogClass, kGclCursor), kCursor);
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.windows().ClassLong(dialogClass, kGclCursor), 0);
}

TEST(OptionsPage, TellsTheSheetNothingWhileItStarts) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(std::ranges::count(stage.sheet->log, "changed 111"), 0);
  EXPECT_FALSE(stage.sheet->CanApply());
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(202));
}

// ---- What each control shows --------------------------------------------------------------------

struct RefreshCase {
  const char* name;
  std::function<void(PublicDevmode&, PrivateDevmode&)> set;
  std::function<void(OptionsStage&)> expect;
};
void PrintTo(const RefreshCase& row, std::ostream* out) {
  *out << row.name;
}

void SetWatermark(PrivateDevmode& own, std::int16_t kind) {
  own.WatermarkData.PageWMFlag = kind;
}

void ExpectJobMode(OptionsStage& stage, bool allowed) {
  EXPECT_EQ(stage.user().Enabled(1393), allowed);
  EXPECT_EQ(stage.user().Shown(1450), !allowed);
}
void ExpectDuplex(OptionsStage& stage, std::int32_t radio) {
  for (const std::int32_t id : {1240, 1125, 1241}) {
    EXPECT_EQ(stage.user().Checked(id), id == radio) << id;
  }
  EXPECT_EQ(AskPages(&PageLinks::duplexOff), radio == 1240);
}
void ExpectReverseLock(OptionsStage& stage, bool locked) {
  EXPECT_EQ(stage.user().Enabled(1394), !locked);
  EXPECT_EQ(stage.user().Shown(1448), locked);
}

// clang-format off
const RefreshCase kRefreshCases[] = {
    {"CopiesOfOne", [](auto& shared, auto&) { shared.dmCopies = 1; },
     [](auto& stage) { EXPECT_EQ(stage.user().Text(1019), u"1"); }},
    {"CopiesOf999", [](auto& shared, auto&) { shared.dmCopies = 999; },
     [](auto& stage) { EXPECT_EQ(stage.user().Text(1019), u"999"); }},
    {"CopiesBelowOneBecomeOne", [](auto& shared, auto&) { shared.dmCopies = 0; },
     [](auto& stage) {
       EXPECT_EQ(stage.user().Text(1019), u"1");
       EXPECT_EQ(stage.shared().dmCopies, 1);
     }},
    {"NegativeCopiesBecomeOne", [](auto& shared, auto&) { shared.dmCopies = -32768; },
     [](auto& stage) {
       EXPECT_EQ(stage.user().Text(1019), u"1");
       EXPECT_EQ(stage.shared().dmCopies, 1);
     }},
    {"PrintModeZeroIs600", [](auto&, auto& own) { own.PrintMode = 0; },
     [](auto& stage) {
       EXPECT_TRUE(stage.user().Checked(1242));
       EXPECT_FALSE(stage.user().Checked(1243));
     }},
    {"PrintModeOneIs1200WhateverTheQualitySays",
     [](auto& shared, auto& own) { own.PrintMode = 1; shared.dmPrintQuality = 600; },
     [](auto& stage) {
       EXPECT_FALSE(stage.user().Checked(1242));
       EXPECT_TRUE(stage.user().Checked(1243));
       EXPECT_EQ(stage.shared().dmPrintQuality, 600);
     }},
    {"PrintModeTwoIs600", [](auto&, auto& own) { own.PrintMode = 2; },
     [](auto& stage) {
       EXPECT_TRUE(stage.user().Checked(1242));
       EXPECT_FALSE(stage.user().Checked(1243));
       EXPECT_EQ(stage.own().PrintMode, 2);
     }},
    {"JobFlagOn", [](auto&, auto& own) { own.JobFlag = 1; },
     [](auto& stage) { EXPECT_TRUE(stage.user().Checked(1496)); }},
    {"JobFlagOff", [](auto&, auto& own) { own.JobFlag = 0; },
     [](auto& stage) { EXPECT_FALSE(stage.user().Checked(1496)); }},
    {"BookletChecksAndLocksCollation",
     [](auto& shared, auto& own) { own.BookletPrint = 1; shared.dmCollate = 0; },
     [](auto& stage) {
       EXPECT_TRUE(stage.user().Checked(1008));
       EXPECT_FALSE(stage.user().Enabled(1008));
       EXPECT_TRUE(stage.user().Shown(1449));
       EXPECT_EQ(stage.shared().dmCollate, 0);
     }},
    {"CollationOn", [](auto& shared, auto&) { shared.dmCollate = 1; },
     [](auto& stage) {
       EXPECT_TRUE(stage.user().Checked(1008));
       EXPECT_TRUE(stage.user().Enabled(1008));
       EXPECT_FALSE(stage.user().Shown(1449));
     }},
    {"CollationOff", [](auto& shared, auto&) { shared.dmCollate = 0; },
     [](auto& stage) {
       EXPECT_FALSE(stage.user().Checked(1008));
       EXPECT_TRUE(stage.user().Enabled(1008));
       EXPECT_FALSE(stage.user().Shown(1449));
     }},
    {"CollationOfTwoIsOff", [](auto& shared, auto&) { shared.dmCollate = 2; },
     [](auto& stage) { EXPECT_FALSE(stage.user().Checked(1008)); }},
    {"ReverseOn", [](auto&, auto& own) { own.ReversePrint = 1; },
     [](auto& stage) { EXPECT_TRUE(stage.user().Checked(1394)); }},
    {"ReverseOff", [](auto&, auto& own) { own.ReversePrint = 0; },
     [](auto& stage) { EXPECT_FALSE(stage.user().Checked(1394)); }},
    {"FinenessOn", [](auto&, auto& own) { own.FinessMode = 1; },
     [](auto& stage) { EXPECT_TRUE(stage.user().Checked(1422)); }},
    {"FinenessOff", [](auto&, auto& own) { own.FinessMode = 0; },
     [](auto& stage) { EXPECT_FALSE(stage.user().Checked(1422)); }},
    {"JobModeZero", [](auto&, auto& own) { own.JobMode = 0; },
     [](auto& stage) { EXPECT_EQ(stage.user().Selected(1393), 0); }},
    {"JobModeOne", [](auto&, auto& own) { own.JobMode = 1; },
     [](auto& stage) { EXPECT_EQ(stage.user().Selected(1393), 1); }},
    {"JobModeTwo", [](auto&, auto& own) { own.JobMode = 2; },
     [](auto& stage) { EXPECT_EQ(stage.user().Selected(1393), 2); }},
    {"JobModeWithoutARow", [](auto&, auto& own) { own.JobMode = 3; },
     [](auto& stage) {
       EXPECT_EQ(stage.user().Selected(1393), -1);
       EXPECT_EQ(stage.own().JobMode, 3);
     }},
    {"NothingLocksTheJobMode", [](auto&, auto&) {},
     [](auto& stage) { ExpectJobMode(stage, true); }},
    {"NegativeWatermarkLeavesTheJobModeFree", [](auto&, auto& own) { SetWatermark(own, -1); },
     [](auto& stage) { ExpectJobMode(stage, true); }},
    {"TextWatermarkLocksTheJobMode", [](auto&, auto& own) { SetWatermark(own, 1); },
     [](auto& stage) { ExpectJobMode(stage, false); }},
    {"ImageWatermarkLocksTheJobMode", [](auto&, auto& own) { SetWatermark(own, 2); },
     [](auto& stage) { ExpectJobMode(stage, false); }},
    {"PosterPagesLockTheJobMode", [](auto&, auto& own) { own.MultipleUp = 22; },
     [](auto& stage) { ExpectJobMode(stage, false); }},
    {"PosterFlagAloneLeavesTheJobModeFree", [](auto&, auto& own) { own.PosterPrint = 1; },
     [](auto& stage) { ExpectJobMode(stage, true); }},
    {"OtherPagesLeaveTheJobModeFree", [](auto&, auto& own) { own.MultipleUp = 21; },
     [](auto& stage) { ExpectJobMode(stage, true); }},
    {"BookletLocksTheJobMode", [](auto&, auto& own) { own.BookletPrint = 1; },
     [](auto& stage) { ExpectJobMode(stage, false); }},
    {"DuplexZero", [](auto& shared, auto&) { shared.dmDuplex = 0; },
     [](auto& stage) { ExpectDuplex(stage, 1240); ExpectReverseLock(stage, false); }},
    {"DuplexOne", [](auto& shared, auto&) { shared.dmDuplex = 1; },
     [](auto& stage) { ExpectDuplex(stage, 1240); ExpectReverseLock(stage, false); }},
    {"DuplexTwo", [](auto& shared, auto&) { shared.dmDuplex = 2; },
     [](auto& stage) { ExpectDuplex(stage, 1125); ExpectReverseLock(stage, true); }},
    {"DuplexThree", [](auto& shared, auto&) { shared.dmDuplex = 3; },
     [](auto& stage) { ExpectDuplex(stage, 1241); ExpectReverseLock(stage, true); }},
    {"DuplexFourIsShortEdge", [](auto& shared, auto&) { shared.dmDuplex = 4; },
     [](auto& stage) {
       ExpectDuplex(stage, 1241);
       ExpectReverseLock(stage, true);
       EXPECT_EQ(stage.shared().dmDuplex, 4);
     }},
    {"DuplexFiveIsLongEdge", [](auto& shared, auto&) { shared.dmDuplex = 5; },
     [](auto& stage) {
       ExpectDuplex(stage, 1125);
       ExpectReverseLock(stage, true);
       EXPECT_EQ(stage.shared().dmDuplex, 5);
     }},
    {"DuplexSixShowsOneSidedAndStillLocksReverse", [](auto& shared, auto&) { shared.dmDuplex = 6; },
     [](auto& stage) { ExpectDuplex(stage, 1240); ExpectReverseLock(stage, true); }},
    {"NegativeDuplex", [](auto& shared, auto&) { shared.dmDuplex = -1; },
     [](auto& stage) { ExpectDuplex(stage, 1240); ExpectReverseLock(stage, false); }},
    {"TrayFollowsTheSource",
     [](auto& shared, auto& own) { shared.dmDefaultSource = 257; own.SourceTray = 7; },
     [](auto& stage) { EXPECT_EQ(stage.own().SourceTray, 257); }},
};
// clang-format on

class OptionsRefresh : public testing::TestWithParam<RefreshCase> {};

INSTANTIATE_TEST_SUITE_P(Records, OptionsRefresh, testing::ValuesIn(kRefreshCases),
                         test::CaseName());

// A record in which every control and every word is in the other state first.
void SetOpposite(OptionsStage& stage) {
  PublicDevmode& shared = stage.shared();
  PrivateDevmode& own = stage.own();
  shared.dmCopies = 77;
  shared.dmDuplex = shared.dmDuplex == 1 ? std::int16_t{2} : std::int16_t{1};
  own.PrintMode = own.PrintMode == 1 ? 0 : 1;
  own.JobFlag = own.JobFlag == 1 ? 0 : 1;
  shared.dmCollate = shared.dmCollate == 1 ? 0 : 1;
  own.ReversePrint = own.ReversePrint == 1 ? 0 : 1;
  own.FinessMode = own.FinessMode == 1 ? 0 : 1;
  own.JobMode = own.JobMode == 1 ? 2 : 1;
  own.MultipleUp = own.MultipleUp == 22 ? 1 : 22;
  own.BookletPrint = own.BookletPrint == 1 ? 0 : 1;
}

TEST_P(OptionsRefresh, ShowsTheRecordAgain) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(u"mine");
  GetParam().set(stage.shared(), stage.own());
  const DriverDevmode wanted = stage.context().devmode;
  SetOpposite(stage);
  stage.ShowAgain();
  stage.context().devmode = wanted;
  stage.ShowAgain();
  GetParam().expect(stage);
  EXPECT_EQ(stage.context().activePage, 1U);
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_EQ(stage.favorite(), u"mine");
}

TEST(OptionsPage, StaysAsItIsWhenItIsTheOneThatShowedTheRecordLast) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmCopies = 5;
  stage.own().FinessMode = 1;
  stage.Notify(kPsnSetActive);
  EXPECT_EQ(stage.user().Text(1019), u"1");
  EXPECT_FALSE(stage.user().Checked(1422));
  stage.context().activePage = kFavoritesPage;
  stage.Notify(kPsnSetActive);
  EXPECT_EQ(stage.user().Text(1019), u"5");
  EXPECT_TRUE(stage.user().Checked(1422));
  EXPECT_EQ(stage.context().activePage, 1U);
}

TEST(OptionsPage, IsShownByItsFirstActivationWithTheNumberOne) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { EXPECT_EQ(context.activePage, 0U); }));
  EXPECT_EQ(stage.context().activePage, 1U);
}

TEST(OptionsPage, RefreshFromOutsideNeedsThePage) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmCopies = 5;
  stage.world().platform.system.threadId += 1;  // another thread has no such page
  RefreshPrintOptionsPage(stage.context());
  EXPECT_EQ(stage.user().Text(1019), u"1");
  stage.world().platform.system.threadId -= 1;
  RefreshPrintOptionsPage(stage.context());
  EXPECT_EQ(stage.user().Text(1019), u"5");
  EXPECT_TRUE(stage.changes.empty());
}

// ---- The factory favourite ----------------------------------------------------------------------

TEST(OptionsFactoryFavorite, UnlocksWhatTheRecordLeavesFree) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  TellPages(&PageLinks::jobModeAllowed, false);
  stage.SetFavorite(OptionsStage::Text(4011));
  stage.ShowAgain();
  EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));
  for (const std::int32_t icon : {1447, 1448, 1449, 1450}) {
    EXPECT_FALSE(stage.user().Shown(icon)) << icon;
  }
  for (const std::int32_t id : {1240, 1125, 1241, 1393}) {
    EXPECT_TRUE(stage.user().Enabled(id)) << id;
  }
}

TEST(OptionsFactoryFavorite, AnyOtherNameLeavesTheJobModesPermission) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  for (const bool before : {false, true}) {
    TellPages(&PageLinks::jobModeAllowed, before);
    stage.SetFavorite(OptionsStage::Text(5005));
    stage.ShowAgain();
    EXPECT_EQ(AskPages(&PageLinks::jobModeAllowed), before);
  }
}

TEST(OptionsFactoryFavorite, IsKnownByString4011AndNotByThatOfTheButton) {
  OptionsStage stage;
  stage.language.strings[4011] = u"Factory";
  ASSERT_TRUE(stage.Open());
  TellPages(&PageLinks::jobModeAllowed, false);
  stage.SetFavorite(OptionsStage::Text(202));
  stage.ShowAgain();
  EXPECT_FALSE(AskPages(&PageLinks::jobModeAllowed));
  stage.SetFavorite(u"Factory");
  stage.ShowAgain();
  EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));
}

// The later steps lock again what the favourite has unlocked.
// What a refresh does to one control's state, in order: "+" enables or shows, "-" the opposite.
std::string StateChangesOf(OptionsStage& stage, std::int32_t id) {
  std::string changes;
  for (const auto& change : stage.windows().stateChanges) {
    if (change.window == stage.Item(id)) {
      changes += change.on ? "+" : "-";
    }
  }
  return changes;
}

// First all is unlocked, then the later steps lock again.
TEST(OptionsFactoryFavorite, UnlocksAllBeforeTheLaterStepsLockAgain) {
  for (const bool isFactory : {false, true}) {
    OptionsStage stage;
    ASSERT_TRUE(stage.Open());
    stage.SetFavorite(isFactory ? OptionsStage::Text(4011) : u"mine");
    stage.own().WatermarkData.PageWMFlag = 1;
    stage.own().BookletPrint = 1;
    stage.shared().dmDuplex = 3;
    stage.windows().stateChanges.clear();
    stage.ShowAgain();
    const std::string first = isFactory ? "-" : "";
    for (const std::int32_t icon : {1447, 1448, 1449, 1450}) {
      EXPECT_EQ(StateChangesOf(stage, icon), first + "+") << icon;
    }
    for (const std::int32_t control : {1240, 1125, 1241, 1393}) {
      EXPECT_EQ(StateChangesOf(stage, control), (isFactory ? "+-" : "-")) << control;
    }
  }
}

TEST(OptionsFactoryFavorite, IconOfTheJobModeIsHiddenAndShownAgainUnderAWatermark) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(OptionsStage::Text(4011));
  stage.own().WatermarkData.PageWMFlag = 1;
  stage.windows().stateChanges.clear();
  stage.ShowAgain();
  EXPECT_EQ(StateChangesOf(stage, 1450), "-+");
  EXPECT_EQ(StateChangesOf(stage, 1393), "+-");
  ExpectJobMode(stage, false);
  EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));  // which that lock doesn't take back
}

TEST(OptionsFactoryFavorite, LaterStepsLockTheRestAgain) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(OptionsStage::Text(4011));
  stage.own().BookletPrint = 1;
  stage.shared().dmDuplex = 3;
  stage.ShowAgain();
  for (const std::int32_t icon : {1447, 1448, 1449, 1450}) {
    EXPECT_TRUE(stage.user().Shown(icon)) << icon;
  }
  for (const std::int32_t id : {1240, 1125, 1241, 1393, 1394, 1008}) {
    EXPECT_FALSE(stage.user().Enabled(id)) << id;
  }
}

// Another stop of the Tab key in a group would be clicked by the focus alone.
TEST(OptionsTabStops, LieAtTheSelectedRadioButtons) {
  for (const std::int16_t duplex : {std::int16_t{1}, std::int16_t{2}, std::int16_t{3}}) {
    OptionsStage stage;
    ASSERT_TRUE(stage.Open([duplex](UIContext& context) {
      context.publicPointer->dmDuplex = duplex;
      context.privatePointer->PrintMode = duplex == 2 ? 1 : 0;
    }));
    const auto isStop = [&stage](std::int32_t id) {
      return (stage.windows().Find(stage.Item(id))->style & headless::kStyleTabStop) != 0;
    };
    EXPECT_EQ(isStop(1240), duplex == 1);
    EXPECT_EQ(isStop(1125), duplex == 2);
    EXPECT_EQ(isStop(1241), duplex == 3);
    EXPECT_EQ(isStop(1242), duplex != 2);
    EXPECT_EQ(isStop(1243), duplex == 2);
    const DriverDevmode before = stage.context().devmode;
    for (const std::int32_t id : {1019, 1008, 1240, 1125, 1241, 1242, 1243, 1422, 1393, 1064}) {
      if (isStop(id)) {
        EXPECT_TRUE(stage.user().MoveFocus(id) || !stage.user().Enabled(id)) << id;
      }
    }
    EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0) << duplex;
  }
}

TEST(OptionsFactoryFavorite, WithoutItsStringNoNameIsTheFactorys) {
  OptionsStage stage;
  stage.language.strings.erase(4011);
  ASSERT_TRUE(stage.Open());
  for (const char16_t* name : {u"", u"id:4011 missing!", u"Default"}) {
    TellPages(&PageLinks::jobModeAllowed, false);
    stage.SetFavorite(name);
    stage.ShowAgain();
    EXPECT_FALSE(AskPages(&PageLinks::jobModeAllowed));
  }
}

}  // namespace
}  // namespace ostrel
