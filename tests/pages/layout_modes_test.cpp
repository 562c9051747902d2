// The three modes of the layout page: what a click on each does to the record, to the controls and
// to the other pages, and what is refused.
#include "pages/layout_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::LayoutStage;
using Ids = std::vector<std::int32_t>;

// ---- Several pages ------------------------------------------------------------------------------

struct PagesCase {
  const char* name;
  std::int32_t control;
  std::int16_t pages;
};
void PrintTo(const PagesCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr PagesCase kPagesCases[] = {
    {"Mode", 1484, 1}, {"One", 1387, 1}, {"Two", 1389, 2}, {"Four", 1390, 4}, {"Eight", 1391, 8},
    {"Sixteen", 1392, 16},
};
// clang-format on

class LayoutPages : public testing::TestWithParam<std::tuple<PagesCase, int>> {};

INSTANTIATE_TEST_SUITE_P(FromEach, LayoutPages,
                         testing::Combine(testing::ValuesIn(kPagesCases),
                                          testing::Values(1, 2, 4, 8, 16, 22, 23)),
                         [](const auto& row) {
                           return std::string(std::get<0>(row.param).name) + "After" +
                                  std::to_string(std::get<1>(row.param));
                         });

TEST_P(LayoutPages, ClickStoresThePagesAndResetsTheirOrder) {
  const auto& [click, before] = GetParam();
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([before = before](UIContext& context) {
    PrivateDevmode& own = *context.privatePointer;
    own.MultipleUp = static_cast<std::int16_t>(before);
    own.PosterPrint = before == 22 ? 1 : 0;
    own.PageOrder = before == 2 ? 1 : 3;
    own.PageBorder = 1;
    own.ScaleRadio = 150;
  }));
  TellPages(&PageLinks::jobModeAllowed, false);
  stage.Watch();
  const bool changed = click.pages != before;
  stage.onChange = [&] {  // all is asked to be drawn again before the sheet is told
    EXPECT_EQ(stage.Redrawn(1046), changed ? 1U : 0U);
    EXPECT_EQ(stage.Redrawn(1067), 1U);
  };
  stage.Command(click.control);
  EXPECT_EQ(stage.own().MultipleUp, click.pages);
  EXPECT_EQ(stage.own().PosterPrint, 0);
  EXPECT_EQ(stage.own().BookletPrint, 0);
  EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));
  const bool severalOrders = click.pages == 4 || click.pages == 8 || click.pages == 16;
  if (changed) {
    EXPECT_EQ(stage.own().PageOrder, severalOrders ? 2 : 0);
    EXPECT_EQ(stage.own().PageBorder, click.pages == 1 ? 0 : 1);
    EXPECT_EQ(stage.user().Selected(1046), 0);
    EXPECT_EQ(stage.user().ItemData(1046).size(), click.pages == 2 ? 2U : 4U);
  } else {
    EXPECT_EQ(stage.own().PageOrder, before == 2 ? 1 : 3);
    EXPECT_EQ(stage.own().PageBorder, 1);
  }
  EXPECT_EQ(stage.IsUntitled(), changed);
  EXPECT_EQ(stage.Redrawn(1046), changed ? 1U : 0U);
  EXPECT_EQ(stage.Redrawn(1067), 1U);
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.OwnAt(0).MultipleUp, click.pages);
  EXPECT_EQ(stage.OwnAt(0).PageOrder, stage.own().PageOrder);
  EXPECT_EQ(stage.FavoriteAt(0), changed ? LayoutStage::Text(5005) : u"mine");

  EXPECT_TRUE(stage.ArePageRadiosEnabled(true));
  EXPECT_TRUE(stage.user().Enabled(1485));
  EXPECT_EQ(stage.CheckedModes(), Ids({1484}));
  EXPECT_TRUE(stage.IsOrderLive(click.pages > 1));
  EXPECT_TRUE(stage.IsScaleLive(click.pages == 1));
  EXPECT_EQ(stage.own().ScaleRadio, 150);
  EXPECT_FALSE(stage.user().Enabled(1044));
  EXPECT_TRUE(stage.user().Enabled(1043));
  EXPECT_FALSE(stage.user().Shown(1454));
  EXPECT_TRUE(stage.boxes().empty());
}

TEST_P(LayoutPages, ClickOfAHandChecksThatRadioAlone) {
  const auto& [click, before] = GetParam();
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([before = before](UIContext& context) {
    context.privatePointer->MultipleUp = static_cast<std::int16_t>(before);
  }));
  if (before == 22 && click.control != 1484) {
    EXPECT_FALSE(stage.user().Click(click.control));  // the mode comes first
    EXPECT_TRUE(stage.user().Click(1484));
  }
  EXPECT_TRUE(stage.user().Click(click.control));
  EXPECT_EQ(stage.CheckedPages(), Ids({click.control == 1484 ? 1387 : click.control}));
  EXPECT_EQ(stage.own().MultipleUp, click.pages);
}

TEST(LayoutPagesMode, ClickChecksTheFirstRadioAndClearsTheOthers) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->MultipleUp = 8; }));
  ASSERT_EQ(stage.CheckedPages(), Ids({1391}));
  stage.Command(1484);
  EXPECT_EQ(stage.CheckedPages(), Ids({1387}));
}

TEST(LayoutPagesMode, EndsABookletAndLeavesTheSidesAsTheyAre) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 3;
    context.privatePointer->BookletPrint = 1;
  }));
  TellPages(&PageLinks::jobModeAllowed, false);
  stage.Watch();
  EXPECT_TRUE(stage.user().Click(1484));
  EXPECT_EQ(stage.own().BookletPrint, 0);
  EXPECT_EQ(stage.shared().dmDuplex, 3);
  EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));
  EXPECT_FALSE(stage.IsUntitled());  // the number of pages is what it was
  EXPECT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.CheckedPages(), Ids({1387}));
  EXPECT_EQ(stage.CheckedModes(), Ids({1484}));
  EXPECT_FALSE(stage.user().Shown(1454));
  EXPECT_TRUE(stage.IsScaleLive(true));
  EXPECT_FALSE(stage.user().Enabled(1065));
  EXPECT_TRUE(stage.user().Enabled(1486));
}

TEST(LayoutPagesMode, StopsWhenThePagesCannotBeRead) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    test::ForgetKey(context, "MultipleUp");
    context.privatePointer->BookletPrint = 1;
    context.privatePointer->PageOrder = 1;
  }));
  TellPages(&PageLinks::jobModeAllowed, false);
  stage.Watch();
  stage.Command(1390);
  EXPECT_TRUE(stage.ArePageRadiosEnabled(true));
  EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));
  EXPECT_EQ(stage.own().BookletPrint, 1);
  EXPECT_EQ(stage.own().PageOrder, 1);
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_EQ(stage.Redrawn(1067), 0U);
  EXPECT_FALSE(stage.IsUntitled());
}

TEST(LayoutPagesMode, BookletIsLockedFromTwoPagesOnAndFreeAtOne) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1389));
  EXPECT_TRUE(stage.AreEnabled({1486, 1463}, false));
  EXPECT_TRUE(stage.user().Shown(1453));
  EXPECT_TRUE(stage.user().Click(1387));
  EXPECT_TRUE(stage.AreEnabled({1486, 1463}, true));
  EXPECT_FALSE(stage.user().Shown(1453));
}

// ---- A poster -----------------------------------------------------------------------------------

struct PosterCase {
  const char* name;
  std::int16_t duplex;
  bool booklet;
  std::int16_t watermark;
  std::uint32_t box;  // its text; 0 when the poster is accepted
};
void PrintTo(const PosterCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr PosterCase kPosterCases[] = {
    // Name,                        Duplex, Booklet, Watermark, Box
    {"OneSided",                       1, false, 0, 0},
    {"OneSidedWatermark",              1, false, 1, 2068},
    {"OneSidedWatermarkImage",         1, false, 2, 2068},
    {"OneSidedWatermarkNegative",      1, false, -1, 0},
    {"LongEdge",                       2, false, 0, 5032},
    {"LongEdgeWatermark",              2, false, 1, 5047},
    {"ShortEdge",                      3, false, 0, 5032},
    {"ShortEdgeWatermark",             3, false, 2, 5047},
    {"ShortEdgeOfOldRecords",          4, false, 0, 5032},
    {"ShortEdgeOfOldRecordsWatermark", 4, false, 1, 5047},
    {"LongEdgeOfOldRecords",           5, false, 0, 5032},
    {"LongEdgeOfOldRecordsWatermark",  5, false, 1, 5047},
    {"DuplexSix",                      6, false, 0, 0},
    {"DuplexSixWatermark",             6, false, 1, 2068},
    {"DuplexZero",                     0, false, 0, 0},
    {"BookletShortEdge",               3, true,  0, 0},
    {"BookletLongEdge",                2, true,  0, 0},
    {"BookletOneSided",                1, true,  0, 0},
    {"BookletWatermark",               3, true,  1, 2068},
};
// clang-format on

class LayoutPoster : public testing::TestWithParam<PosterCase> {
 protected:
  static void Prepare(UIContext& context) {
    PrivateDevmode& own = *context.privatePointer;
    context.publicPointer->dmDuplex = GetParam().duplex;
    own.BookletPrint = GetParam().booklet ? 1 : 0;
    own.WatermarkData.PageWMFlag = GetParam().watermark;
    own.PageOrder = 1;
    own.PageBorder = 1;
    own.JobMode = 2;
  }
  static void TellAll() {
    TellPages(&PageLinks::duplexAllowed, true);
    TellPages(&PageLinks::jobModeAllowed, true);
    TellPages(&PageLinks::duplexOff, false);
  }
};

INSTANTIATE_TEST_SUITE_P(Rows, LayoutPoster, testing::ValuesIn(kPosterCases), test::CaseName());

TEST_P(LayoutPoster, IsAcceptedOrRefusedByTheFirstRowThatMatches) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open(Prepare));
  TellAll();
  stage.Watch();
  std::int16_t pagesAtBox = 0;
  stage.windows().onBox = [&](const auto&) {
    pagesAtBox = stage.own().MultipleUp;
    EXPECT_TRUE(stage.changes.empty());
    EXPECT_EQ(stage.CheckedPages(), Ids());
  };
  stage.own().MultipleUp = 4;  // as after a click that the page didn't hear of
  stage.onChange = [&] {
    EXPECT_EQ(stage.Redrawn(1046), GetParam().box == 0 ? 1U : 0U);
    EXPECT_EQ(stage.Redrawn(1067), 1U);
  };
  stage.Command(1485);
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(std::memcmp(&stage.changes[0], &stage.context().devmode, sizeof(DriverDevmode)), 0);
  if (GetParam().box == 0) {
    EXPECT_TRUE(stage.boxes().empty());
    EXPECT_EQ(stage.own().MultipleUp, 22);
    EXPECT_EQ(stage.own().PosterPrint, 1);
    EXPECT_EQ(stage.own().BookletPrint, 0);
    EXPECT_EQ(stage.own().PageBorder, 0);
    EXPECT_EQ(stage.own().PageOrder, 0);
    EXPECT_EQ(stage.own().JobMode, 0);
    EXPECT_EQ(stage.shared().dmDuplex, GetParam().booklet ? 1 : GetParam().duplex);
    EXPECT_FALSE(AskPages(&PageLinks::duplexAllowed));
    EXPECT_FALSE(AskPages(&PageLinks::jobModeAllowed));
    EXPECT_EQ(AskPages(&PageLinks::duplexOff), GetParam().booklet);
    EXPECT_TRUE(stage.IsUntitled());
    EXPECT_EQ(stage.Redrawn(1046), 1U);
    EXPECT_EQ(stage.Redrawn(1067), 1U);
    EXPECT_EQ(stage.CheckedModes(), Ids({1485}));
    EXPECT_EQ(stage.CheckedPages(), Ids());
    EXPECT_TRUE(stage.ArePageRadiosEnabled(false));
    EXPECT_TRUE(stage.user().Enabled(1044));
    EXPECT_TRUE(stage.user().Enabled(1043));
    EXPECT_TRUE(stage.IsOrderLive(false));
    EXPECT_TRUE(stage.IsScaleLive(false));
    EXPECT_EQ(stage.user().Selected(1046), 0);
    EXPECT_EQ(stage.user().ItemData(1046).size(), 4U);
    EXPECT_TRUE(stage.AreEnabled({1486, 1463, 1065}, false));
    EXPECT_TRUE(stage.user().Shown(1453));
    EXPECT_FALSE(stage.user().Shown(1454));
    return;
  }
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, LayoutStage::Text(GetParam().box));
  EXPECT_EQ(stage.boxes()[0].caption, LayoutStage::Text(5004));
  EXPECT_EQ(stage.boxes()[0].owner, stage.page());
  EXPECT_EQ(pagesAtBox, 4);  // the box comes before the record falls back
  EXPECT_EQ(stage.own().MultipleUp, 1);
  EXPECT_EQ(stage.own().PosterPrint, 0);
  EXPECT_EQ(stage.own().BookletPrint, GetParam().booklet ? 1 : 0);
  EXPECT_EQ(stage.own().PageBorder, 1);
  EXPECT_EQ(stage.own().PageOrder, 1);
  EXPECT_EQ(stage.own().JobMode, 2);
  EXPECT_EQ(stage.shared().dmDuplex, GetParam().duplex);
  EXPECT_TRUE(AskPages(&PageLinks::duplexAllowed));
  EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));
  EXPECT_FALSE(stage.IsUntitled());
  EXPECT_EQ(stage.Redrawn(1046), 0U);
  EXPECT_EQ(stage.Redrawn(1067), 1U);
  EXPECT_EQ(stage.CheckedModes(), GetParam().booklet ? Ids({1486}) : Ids({1484}));
  EXPECT_EQ(stage.CheckedPages(), GetParam().booklet ? Ids() : Ids({1387}));
  EXPECT_FALSE(stage.user().Enabled(1044));
}

TEST_P(LayoutPoster, RefusalComesOnceWhereverTheFocusGoes) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open(Prepare));
  if (GetParam().box == 0) {
    return;
  }
  EXPECT_FALSE(stage.user().MoveFocus(1485));  // it doesn't stay there
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_NE(stage.user().Focus(), 1485);
  // The sheet loses the focus to another program and gets it back.
  const std::int32_t focus = stage.user().Focus();
  stage.windows().MoveFocus(nullptr);
  stage.windows().MoveFocus(stage.Item(focus));
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.own().MultipleUp, 1);
  EXPECT_EQ(stage.own().BookletPrint, GetParam().booklet ? 1 : 0);
}

TEST(LayoutPosterClick, RefusedOverABookletThatHasConflictsLeavesTheBookletInTheRecord) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 2;
    context.privatePointer->BookletPrint = 1;
    context.privatePointer->WatermarkData.PageWMFlag = 1;
  }));
  ASSERT_EQ(stage.CheckedModes(), Ids());
  EXPECT_TRUE(stage.user().Click(1485));
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.own().BookletPrint, 1);
  EXPECT_EQ(stage.user().Focus(), 1048);  // no mode is checked
}

TEST(LayoutPosterClick, StopsWhenThePagesCannotBeRead) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { test::ForgetKey(context, "MultipleUp"); }));
  const DriverDevmode before = stage.context().devmode;
  stage.Command(1485);
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
}

TEST(LayoutPosterClick, UnreadableWatermarkIsNone) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->WatermarkData.PageWMFlag = 1;
    test::ForgetKey(context, "WatermarkData");
  }));
  stage.Command(1485);
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_EQ(stage.own().MultipleUp, 22);
}

TEST(LayoutPosterClick, AfterABookletOfShortEdgeTurnsBothOff) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1486));
  EXPECT_EQ(stage.shared().dmDuplex, 3);
  EXPECT_FALSE(stage.user().Click(1485));  // disabled by that click, and not by the lock
  stage.windows().EnableWindow(stage.Item(1485), true);
  EXPECT_TRUE(stage.user().Click(1485));
  EXPECT_EQ(stage.shared().dmDuplex, 1);
  EXPECT_EQ(stage.own().BookletPrint, 0);
  EXPECT_EQ(stage.own().MultipleUp, 22);
}

// ---- A booklet ----------------------------------------------------------------------------------

class LayoutBooklet : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Sides, LayoutBooklet, testing::Values(1, 3),
                         testing::PrintToStringParamName());

TEST_P(LayoutBooklet, ClickTurnsItOnWithAllThatBelongsToIt) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = static_cast<std::int16_t>(GetParam());
    context.publicPointer->dmCollate = 0;
    context.privatePointer->JobMode = 2;
  }));
  TellPages(&PageLinks::jobModeAllowed, true);
  TellPages(&PageLinks::duplexOff, true);
  stage.Watch();
  stage.onChange = [&] { EXPECT_EQ(stage.Redrawn(1067), 1U); };
  EXPECT_TRUE(stage.user().Click(1486));
  EXPECT_EQ(stage.own().BookletPrint, 1);
  EXPECT_EQ(stage.shared().dmDuplex, 3);
  EXPECT_EQ(stage.shared().dmCollate, 1);
  EXPECT_EQ(stage.own().ScaleRadio, 100);
  EXPECT_EQ(stage.own().JobMode, 0);
  EXPECT_EQ(stage.own().MultipleUp, 1);
  EXPECT_FALSE(AskPages(&PageLinks::jobModeAllowed));
  EXPECT_FALSE(AskPages(&PageLinks::duplexOff));
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_FALSE(stage.IsUntitled());  // a booklet keeps the favourite's name
  EXPECT_EQ(stage.Redrawn(1067), 1U);
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(std::memcmp(&stage.changes[0], &stage.context().devmode, sizeof(DriverDevmode)), 0);
  EXPECT_EQ(stage.CheckedModes(), Ids({1486}));
  EXPECT_EQ(stage.CheckedPages(), Ids());
  EXPECT_TRUE(stage.ArePageRadiosEnabled(false));
  EXPECT_FALSE(stage.user().Enabled(1485));
  EXPECT_TRUE(stage.user().Enabled(1065));
  EXPECT_TRUE(stage.user().Shown(1454));
  EXPECT_EQ(stage.state().posterFree, 0);
  EXPECT_TRUE(stage.AreEnabled({1044, 1043}, false));
  EXPECT_TRUE(stage.IsOrderLive(false));
  EXPECT_TRUE(stage.IsScaleLive(false));
}

struct RefusedBooklet {
  const char* name;
  void (*set)(UIContext& context);
  std::vector<std::uint32_t> texts;
};
void PrintTo(const RefusedBooklet& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const RefusedBooklet kRefusedBooklets[] = {
    {"Reverse",  [](UIContext& c) { c.privatePointer->ReversePrint = 1; c.publicPointer->dmDuplex = 3; }, {6007}},
    {"Paper",    [](UIContext& c) { c.publicPointer->dmPaperSize = 300; c.publicPointer->dmDuplex = 3; }, {6540}},
    {"Media",    [](UIContext& c) { c.publicPointer->dmMediaType = 257; c.publicPointer->dmDuplex = 3; }, {6009}},
    {"Pages",    [](UIContext& c) { c.privatePointer->MultipleUp = 4; c.publicPointer->dmDuplex = 3; },   {6010}},
    {"LongEdge", [](UIContext& c) { c.publicPointer->dmDuplex = 2; }, {}},
    {"Five",     [](UIContext& c) { c.publicPointer->dmDuplex = 5; }, {}},
    {"All",      [](UIContext& c) { c.privatePointer->ReversePrint = 1; c.publicPointer->dmPaperSize = 300;
                                    c.publicPointer->dmMediaType = 257; c.privatePointer->MultipleUp = 22;
                                    c.publicPointer->dmDuplex = 2; }, {6007, 6540, 6009, 6010}},
};
// clang-format on

class LayoutRefusedBooklet : public testing::TestWithParam<RefusedBooklet> {};

INSTANTIATE_TEST_SUITE_P(Conflicts, LayoutRefusedBooklet, testing::ValuesIn(kRefusedBooklets),
                         test::CaseName());

// Only a click that the page's lock came too late for gets here.
TEST_P(LayoutRefusedBooklet, TellsTheConflictsAndLooksAsIfItWereOff) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  GetParam().set(stage.context());
  stage.own().ScaleRadio = 150;  // which the click itself sets back
  const std::int16_t duplex = stage.shared().dmDuplex;
  stage.Watch();
  stage.Command(1486);
  ASSERT_EQ(stage.boxes().size(), 1U);
  std::u16string text;
  for (const std::uint32_t id : GetParam().texts) {
    text += LayoutStage::Text(id) + u"\r\n";
  }
  EXPECT_EQ(stage.boxes()[0].text, text);
  EXPECT_EQ(stage.boxes()[0].caption, LayoutStage::Text(5004));
  EXPECT_EQ(stage.own().BookletPrint, 1);
  EXPECT_EQ(stage.own().ScaleRadio, 100);
  EXPECT_EQ(stage.shared().dmCollate, 1);
  EXPECT_EQ(stage.shared().dmDuplex, duplex);
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_EQ(stage.Redrawn(1067), 0U);
  EXPECT_FALSE(stage.IsUntitled());
  const std::int16_t pages = stage.own().MultipleUp;
  EXPECT_EQ(stage.CheckedModes(), Ids({pages == 22 ? 1485 : 1484}));
  EXPECT_EQ(stage.user().Enabled(1044), pages == 22);
  EXPECT_TRUE(stage.user().Enabled(1043));
  EXPECT_TRUE(stage.IsOrderLive(pages == 4));
  EXPECT_TRUE(stage.IsScaleLive(pages == 1));
  EXPECT_TRUE(stage.ArePageRadiosEnabled(false));
  EXPECT_FALSE(stage.user().Enabled(1485));
  EXPECT_FALSE(stage.user().Enabled(1065));
  EXPECT_FALSE(stage.user().Shown(1454));
  // The next mode click ends it.
  stage.Command(1484);
  EXPECT_EQ(stage.own().BookletPrint, 0);
}

TEST(LayoutBookletClick, RefusalComesOnceWhereverTheFocusGoes) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmDuplex = 2;
  EXPECT_FALSE(stage.user().MoveFocus(1486));
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.user().Focus(), 1484);
}

TEST(LayoutBookletClick, OnOneSidedPrintingConflictsDoNotRefuse) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().ReversePrint = 1;
  stage.Command(1486);
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_EQ(stage.shared().dmDuplex, 3);
  EXPECT_EQ(stage.own().BookletPrint, 1);
}

TEST(LayoutBookletClick, RefusedOneShowsTheScaleThatItSetBack) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmDuplex = 2;
  stage.own().ScaleRadio = 150;
  stage.ShowAgain();
  ASSERT_EQ(stage.user().Text(1025), u"150");
  stage.Watch();
  stage.Command(1486);
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_TRUE(stage.IsScaleLive(true));
  EXPECT_EQ(stage.user().Text(1025), u"100");
  stage.Command(1025, kEnKillFocus);
  EXPECT_EQ(stage.own().ScaleRadio, 100);
  EXPECT_TRUE(stage.changes.empty());
}

TEST(LayoutBookletClick, RefusedOneKeepsALockedBoxAtFullScale) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 2;
    context.privatePointer->MultipleUp = 4;
  }));
  stage.windows().onBox = [&](const auto&) { stage.own().ScaleRadio = 150; };
  stage.Command(1486);
  EXPECT_TRUE(stage.IsScaleLive(false));
}

TEST(LayoutBookletClick, ScaleBoxWithTheFocusDoesNotWriteItsNumberBack) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Type(1025, u"150"));
  ASSERT_EQ(stage.user().Focus(), 1025);
  stage.Command(1486);
  EXPECT_EQ(stage.own().ScaleRadio, 100);
  EXPECT_EQ(stage.user().Text(1025), u"100");
}

}  // namespace
}  // namespace ostrel
