// The tooltips of the print options page: which reasons an icon tells, and where its tool is.
#include "pages/options_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::OptionsStage;

std::u16string Joined(const std::vector<std::uint32_t>& ids) {
  std::u16string text;
  for (const std::uint32_t id : ids) {
    text += (text.empty() ? u"" : OptionsStage::Text(408)) + OptionsStage::Text(id);
  }
  return text;
}

// ---- Two-sided printing: all sums of its five reasons -------------------------------------------

class DuplexTip : public testing::TestWithParam<unsigned> {};

INSTANTIATE_TEST_SUITE_P(Sums, DuplexTip, testing::Range(0U, 32U),
                         testing::PrintToStringParamName());

TEST_P(DuplexTip, TellsEveryReasonInItsOrder) {
  const auto has = [](unsigned bit) { return (GetParam() & bit) != 0; };
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmMediaType = has(1) ? 257 : 1;
  stage.shared().dmPaperSize = has(2) ? 13 : 9;
  stage.own().MultipleUp = has(4) ? 22 : 1;
  stage.own().BookletPrint = has(8) ? 1 : 0;
  stage.own().ReversePrint = has(16) ? 1 : 0;
  std::vector<std::uint32_t> reasons;
  constexpr std::uint32_t kTexts[] = {5031, 5035, 5049, 6012, 5040};
  for (unsigned place = 0; place < 5; ++place) {
    if (has(1U << place)) {
      reasons.push_back(kTexts[place]);
    }
  }
  EXPECT_EQ(stage.AskTip(1447), Joined(reasons));
}

TEST(DuplexTipText, ComesUpOverTheIconThatIsShown) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmPaperSize = 13;
    context.privatePointer->ReversePrint = 1;
  }));
  EXPECT_EQ(stage.user().HoverTip(1447), Joined({5035, 5040}));
  EXPECT_EQ(stage.user().HoverTip(1448), u"");  // hidden
}

TEST(DuplexTipText, PosterFlagWithoutItsPagesIsNoReason) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().PosterPrint = 1;
  EXPECT_EQ(stage.AskTip(1447), u"");
}

TEST(DuplexTipText, CustomPaperIsAReason) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmPaperSize = 288;
  EXPECT_EQ(stage.AskTip(1447), Joined({5035}));
}

TEST(DuplexTipText, SeparatorIsTheLanguages) {
  OptionsStage stage;
  stage.language.strings[408] = u" + ";
  ASSERT_TRUE(stage.Open());
  stage.own().BookletPrint = 1;
  stage.own().ReversePrint = 1;
  EXPECT_EQ(stage.AskTip(1447), OptionsStage::Text(6012) + u" + " + OptionsStage::Text(5040));
}

TEST(DuplexTipText, MissingTextsAreTold) {
  OptionsStage stage;
  for (const std::uint32_t id : {408U, 6012U, 5040U}) {
    stage.language.strings.erase(id);
  }
  ASSERT_TRUE(stage.Open());
  stage.own().BookletPrint = 1;
  stage.own().ReversePrint = 1;
  EXPECT_EQ(stage.AskTip(1447), u"id:6012 missing!id:408 missing!id:5040 missing!");
}

TEST(DuplexTipText, LongTextsEndBeforeTheBuffer) {
  OptionsStage stage;
  for (const std::uint32_t id : {5031U, 5035U, 5049U, 6012U, 5040U, 408U}) {
    stage.language.strings[id] = std::u16string(2000, u'x');
  }
  ASSERT_TRUE(stage.Open());
  stage.shared().dmMediaType = 257;
  stage.shared().dmPaperSize = 13;
  stage.own().MultipleUp = 22;
  stage.own().BookletPrint = 1;
  stage.own().ReversePrint = 1;
  const std::u16string text = stage.AskTip(1447);
  EXPECT_LT(text.size(), kTooltipReasonUnits);
  EXPECT_EQ(text, std::u16string(text.size(), u'x'));
}

// ---- The other icons ----------------------------------------------------------------------------

struct ReverseTipCase {
  const char* name;
  std::int16_t duplex;
  std::int16_t booklet;
  std::uint32_t text;  // 0 for none
};

class ReverseTip : public testing::TestWithParam<ReverseTipCase> {};

INSTANTIATE_TEST_SUITE_P(
    Records, ReverseTip,
    testing::Values(ReverseTipCase{"OneSided", 1, 0, 0}, ReverseTipCase{"OneSidedBooklet", 1, 1, 0},
                    ReverseTipCase{"LongEdge", 2, 0, 5039}, ReverseTipCase{"ShortEdge", 3, 0, 5039},
                    ReverseTipCase{"Booklet", 3, 1, 197}, ReverseTipCase{"LongBooklet", 2, 1, 197},
                    ReverseTipCase{"Four", 4, 0, 5039}, ReverseTipCase{"Zero", 0, 0, 5039}),
    test::CaseName());

TEST_P(ReverseTip, TellsWhatExcludesReverseOrder) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmDuplex = GetParam().duplex;
  stage.own().BookletPrint = GetParam().booklet;
  const std::u16string expected = GetParam().text == 0 ? u"" : OptionsStage::Text(GetParam().text);
  EXPECT_EQ(stage.AskTip(1448), expected);
  EXPECT_EQ(stage.shared().dmDuplex, GetParam().duplex);
}

TEST(CollateTip, IsOneTextWhateverTheRecord) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::int16_t booklet : {std::int16_t{0}, std::int16_t{1}}) {
    stage.own().BookletPrint = booklet;
    EXPECT_EQ(stage.AskTip(1449), OptionsStage::Text(6423));
  }
}

class JobModeTip : public testing::TestWithParam<unsigned> {};

INSTANTIATE_TEST_SUITE_P(Sums, JobModeTip, testing::Range(0U, 8U),
                         testing::PrintToStringParamName());

TEST_P(JobModeTip, IsTheLastReasonThatApplies) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().MultipleUp = (GetParam() & 1) != 0 ? 22 : 1;
  stage.own().BookletPrint = (GetParam() & 2) != 0 ? 1 : 0;
  stage.own().WatermarkData.PageWMFlag = (GetParam() & 4) != 0 ? 1 : 0;
  const std::u16string expected = (GetParam() & 4) != 0   ? OptionsStage::Text(207)
                                  : (GetParam() & 3) != 0 ? OptionsStage::Text(206)
                                                          : u"";
  EXPECT_EQ(stage.AskTip(1450), expected);
}

TEST(JobModeTipText, ImageWatermarkIsAReasonAndANegativeTypeIsNone) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().WatermarkData.PageWMFlag = 2;
  EXPECT_EQ(stage.AskTip(1450), OptionsStage::Text(207));
  stage.own().WatermarkData.PageWMFlag = -1;
  EXPECT_EQ(stage.AskTip(1450), u"");
}

TEST(OptionsTip, AnyOtherToolGetsTheEmptyText) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().BookletPrint = 1;
  for (const std::int32_t id : {1008, 1064, 1393, 1453, 9999}) {
    EXPECT_EQ(stage.AskTip(id), u"") << id;
  }
}

// A tip that was long leaves nothing behind in one that is short.
TEST(OptionsTip, StartsAnewEachTime) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().BookletPrint = 1;
  stage.own().ReversePrint = 1;
  EXPECT_EQ(stage.AskTip(1447), Joined({6012, 5040}));
  EXPECT_EQ(stage.AskTip(1449), Joined({6423}));
  stage.own().BookletPrint = 0;
  stage.own().ReversePrint = 0;
  EXPECT_EQ(stage.AskTip(1447), u"");
}

// ---- The tools ----------------------------------------------------------------------------------

std::vector<WindowHandle> Tooltips(OptionsStage& stage) {
  std::vector<WindowHandle> found;
  for (const WindowHandle child : stage.windows().Find(stage.page())->children) {
    if (stage.windows().Find(child)->kind == headless::WindowKind::kTooltip) {
      found.push_back(child);
    }
  }
  return found;
}

TEST(OptionsTools, EachIconHasATooltipThatAsksThePage) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const std::vector<WindowHandle> tooltips = Tooltips(stage);
  ASSERT_EQ(tooltips.size(), 4U);
  constexpr std::int32_t kIcons[] = {1447, 1448, 1449, 1450};
  for (std::size_t i = 0; i < tooltips.size(); ++i) {
    const headless::Window& window = *stage.windows().Find(tooltips[i]);
    EXPECT_EQ(window.style, 0x80000003U);
    EXPECT_EQ(window.extendedStyle, 0x8U);
    EXPECT_EQ(window.tooltip.maxWidth, 300);
    EXPECT_EQ(window.tooltip.backgroundColor, 14219007U);
    ASSERT_EQ(window.tooltip.tools.size(), 1U);
    const headless::Tool& tool = window.tooltip.tools[0];
    EXPECT_EQ(tool.flags, 17U);
    EXPECT_EQ(tool.window, stage.page());
    EXPECT_EQ(tool.id, reinterpret_cast<std::uintptr_t>(stage.Item(kIcons[i])));
    EXPECT_TRUE(tool.asksForText);
  }
}

// Where a control stands in the page's coordinates.
Rect PlaceInPage(OptionsStage& stage, std::int32_t id) {
  Rect place = stage.windows().Find(stage.Item(id))->screenPlace;
  const Rect page = stage.windows().Find(stage.page())->screenPlace;
  return {place.left - page.left, place.top - page.top, place.right - page.left,
          place.bottom - page.top};
}

// The fourth icon is left out: its tool keeps the place that it was made with.
TEST(OptionsTools, MouseMovementRefreshesThreeOfThem) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const std::vector<WindowHandle> tooltips = Tooltips(stage);
  ASSERT_EQ(tooltips.size(), 4U);
  constexpr std::int32_t kIcons[] = {1447, 1448, 1449, 1450};
  std::vector<Rect> made;
  std::vector<const std::vector<OptionsStage::Sent>*> sent;
  for (std::size_t i = 0; i < tooltips.size(); ++i) {
    made.push_back(PlaceInPage(stage, kIcons[i]));
    headless::Window& icon = *stage.windows().Find(stage.Item(kIcons[i]));
    icon.screenPlace.left += 7;
    icon.screenPlace.right += 7;
    sent.push_back(&stage.Watch(tooltips[i]));
  }
  stage.user().MoveMouse({1, 1});
  for (std::size_t i = 0; i < tooltips.size(); ++i) {
    const bool refreshed = i < 3;
    const Rect expected = refreshed ? PlaceInPage(stage, kIcons[i]) : made[i];
    EXPECT_EQ(stage.windows().Find(tooltips[i])->tooltip.tools[0].rect, expected) << i;
    ASSERT_EQ(sent[i]->size(), refreshed ? 3U : 0U) << i;
    if (refreshed) {
      EXPECT_EQ(sent[i]->at(0), (OptionsStage::Sent{kTtmActivate, 0, 0})) << i;
      EXPECT_EQ(sent[i]->at(1).message, kTtmSetToolInfo) << i;
      EXPECT_EQ(sent[i]->at(2), (OptionsStage::Sent{kTtmActivate, 1, 0})) << i;
    }
  }
}

TEST(OptionsTools, DisabledIconIsNotRefreshed) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const std::vector<WindowHandle> tooltips = Tooltips(stage);
  const Rect before = stage.windows().Find(tooltips.at(0))->tooltip.tools[0].rect;
  headless::Window& icon = *stage.windows().Find(stage.Item(1447));
  icon.style |= headless::kStyleDisabled;
  icon.screenPlace.left += 7;
  stage.user().MoveMouse({1, 1});
  EXPECT_EQ(stage.windows().Find(tooltips[0])->tooltip.tools[0].rect, before);
}

TEST(OptionsTools, ModelWithoutTheJobModeHasThree) {
  OptionsStage stage;
  stage.SelectModel(u"Alder 1 Series");
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(Tooltips(stage).size(), 3U);
  stage.user().MoveMouse({1, 1});
}

}  // namespace
}  // namespace ostrel
