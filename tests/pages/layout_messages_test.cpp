// The layout page's messages that are no control's: help, apply and reset, drawing, tooltips, and
// messages that mean nothing here.
#include "pages/layout_stage.h"
#include "support/byte_record.h"

#include <cstring>

namespace ostrel {
namespace {

using test::JoinedReasons;
using test::LayoutStage;

// ---- Help ---------------------------------------------------------------------------------------

TEST(LayoutHelp, OpensAtTheControlsTopicOrNotAtAll) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.ExpectHelpTopics({{1484, 1172}, {1485, 1172}, {1486, 1172}, {1393, 1172}, {1046, 1172},
                          {1025, 1172}, {1411, 1165}, {1045, 1736}, {1415, 1702}, {1394, 1456},
                          {1437, 1456}, {1064, 2004}, {1387, 0},    {1048, 0},    {1065, 0},
                          {1044, 0},    {1067, 0},    {1107, 0},    {0, 0},       {-1, 0}});
}

TEST(LayoutHelp, OfTheSheetIsThePagesOwn) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.NotifyProcedure(kPsnHelp), 1);
  const auto& help = stage.world().platform.shell.help;
  ASSERT_EQ(help.size(), 1U);
  EXPECT_EQ(help[0].data, 506U);
  EXPECT_TRUE(stage.changes.empty());
}

// ---- Apply and reset ----------------------------------------------------------------------------

TEST(LayoutApply, HandsTheRecordOutAndResetForgetsIt) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1389));
  EXPECT_TRUE(stage.sheet->PressApply());
  EXPECT_EQ(stage.scene.out.privateDevmode.MultipleUp, 2);
  EXPECT_EQ(stage.context().applied, 1U);
  EXPECT_EQ(stage.NotifyProcedure(kPsnReset), 1);
  EXPECT_EQ(stage.context().applied, 0U);
}

TEST(LayoutCancel, LeavesTheCallersRecordUntouched) {
  LayoutStage stage;
  const auto before = test::BytesOf(stage.scene.out);
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1485));
  EXPECT_TRUE(stage.sheet->PressCancel());
  EXPECT_EQ(test::Difference(test::BytesOf(stage.scene.out), before), "");
}

// ---- Drawing ------------------------------------------------------------------------------------

TEST(LayoutDrawing, SheetPictureStandsInTheMiddle) {
  LayoutStage stage;
  for (auto& control : stage.dialog().controls) {
    if (control.id == 1388) {  // as large as its picture otherwise
      control.place.width = static_cast<std::int16_t>(control.place.width + 20);
      control.place.height = static_cast<std::int16_t>(control.place.height + 10);
    }
  }
  ASSERT_TRUE(stage.Open());
  const auto drawn = stage.user().Draw(1388);
  ASSERT_TRUE(drawn.has_value());
  ASSERT_EQ(drawn->size(), 1U);
  EXPECT_EQ(drawn->front().bitmap, 901U);
  EXPECT_EQ(drawn->front().transparentColor, 15660020U);
  const headless::BitmapResource& picture =
      stage.world().platform.modules.ResourcesOf(stage.context().bitmapModule)->bitmaps.at(901);
  const Rect& control = stage.windows().Find(stage.Item(1388))->screenPlace;
  const Rect& place = drawn->front().place;
  EXPECT_EQ(place.left, (control.Width() - picture.width) / 2);
  EXPECT_EQ(place.top, (control.Height() - picture.height) / 2);
  EXPECT_EQ(place.Width(), picture.width);
  EXPECT_EQ(place.Height(), picture.height);
}

TEST(LayoutDrawing, PreviewShowsThePictureOfTheRecordsMode) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  const auto drawn = [&](std::int16_t pages) {
    stage.own().MultipleUp = pages;
    EXPECT_TRUE(stage.user().Draw(1067).has_value());
    return *stage.graphics().SurfaceOf(stage.Item(1067));
  };
  const headless::Surface onePage = drawn(1);
  const headless::Surface poster = drawn(22);
  EXPECT_NE(onePage, poster);
  EXPECT_EQ(drawn(1), onePage);
  // Both are drawn: a cleared control has one colour.
  for (const headless::Surface* shown : {&onePage, &poster}) {
    EXPECT_NE(*shown, headless::Surface(shown->width(), shown->height(), shown->ColorAt(0, 0)));
  }
}

struct DrawCase {
  std::int16_t pages;
  bool booklet;
  std::int32_t radio;  // 0 when none is set
  bool checked;
};

class LayoutDraw : public testing::TestWithParam<DrawCase> {};

INSTANTIATE_TEST_SUITE_P(
    Records, LayoutDraw,
    testing::Values(DrawCase{1, false, 1387, true}, DrawCase{1, true, 1387, false},
                    DrawCase{2, false, 1389, true}, DrawCase{2, true, 1389, true},
                    DrawCase{4, false, 1390, true}, DrawCase{8, false, 1391, true},
                    DrawCase{16, true, 1392, true}, DrawCase{22, false, 0, false},
                    DrawCase{23, false, 0, false}, DrawCase{0, false, 0, false}),
    [](const auto& row) {
      return "Pages" + std::to_string(row.param.pages) + (row.param.booklet ? "Booklet" : "");
    });

// Painting alone makes the Apply button live, whichever item it was.
TEST_P(LayoutDraw, SetsTheRadioAgainAndTellsAChange) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::uint32_t item : {1067U, 1388U, 1044U, 7U}) {
    stage.own().MultipleUp = GetParam().pages;
    stage.own().BookletPrint = GetParam().booklet ? 1 : 0;
    for (const std::int32_t radio : test::kPageRadioIds) {
      stage.windows().CheckDlgButton(stage.page(), radio, GetParam().checked ? 0 : 1);
    }
    stage.Watch();
    DrawItem question = {};
    question.CtlID = item;
    question.hDC = stage.graphics().GetDC(stage.Item(1067));
    question.rcItem = {0, 0, 100, 100};
    const std::intptr_t answer =
        stage.CallProcedure(kWmDrawItem, item, reinterpret_cast<std::intptr_t>(&question));
    stage.graphics().ReleaseDC(stage.Item(1067), question.hDC);
    EXPECT_EQ(answer, item == 1067 || item == 1388 ? 1 : 0);
    EXPECT_EQ(stage.changes.size(), 1U);
    EXPECT_FALSE(stage.IsUntitled());
    for (const std::int32_t radio : test::kPageRadioIds) {
      EXPECT_EQ(stage.user().Checked(radio), (radio == GetParam().radio) == GetParam().checked)
          << radio;
    }
  }
}

TEST(LayoutDrawing, MakesTheApplyButtonLive) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_FALSE(stage.sheet->CanApply());
  EXPECT_TRUE(stage.user().Draw(1067).has_value());
  EXPECT_TRUE(stage.sheet->CanApply());
}

TEST(LayoutMeasuring, GivesTwoListsRowsOfTheScreensHeight) {
  for (const std::int32_t dotsPerInch : {72, 96, 97, 144, 288}) {
    for (const std::uint32_t list : {1044U, 1046U, 1393U}) {
      LayoutStage stage;
      ASSERT_TRUE(stage.Open());
      stage.graphics().logPixelsY = dotsPerInch;
      MeasureItem question = {};
      question.CtlID = list;
      question.itemHeight = 5;
      const std::intptr_t answer =
          stage.CallProcedure(kWmMeasureItem, list, reinterpret_cast<std::intptr_t>(&question));
      EXPECT_EQ(answer, list == 1393 ? 0 : 1);
      EXPECT_EQ(question.itemHeight,
                list == 1393 ? 5U : static_cast<std::uint32_t>(std::max(16, dotsPerInch / 6)));
    }
  }
}

// Lists are measured while the dialog is being made.
TEST(LayoutMeasuring, NeedsNoContext) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.windows().SetWindowLongPtrW(stage.page(), kGwlpUserData, 0);
  MeasureItem question = {};
  question.CtlID = 1046;
  EXPECT_EQ(stage.CallProcedure(kWmMeasureItem, 1046, reinterpret_cast<std::intptr_t>(&question)),
            1);
  EXPECT_EQ(question.itemHeight, 16U);
  stage.windows().SetWindowLongPtrW(stage.page(), kGwlpUserData,
                                    reinterpret_cast<std::intptr_t>(&stage.context()));
}

// ---- Tooltips -----------------------------------------------------------------------------------

TEST(LayoutTips, ScaleTellsPagesThenBooklet) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::int16_t pages : std::initializer_list<std::int16_t>{-1, 0, 1, 2, 16, 22, 23}) {
    for (const bool poster : {false, true}) {
      for (const bool booklet : {false, true}) {
        stage.own().MultipleUp = pages;
        stage.own().PosterPrint = poster ? 1 : 0;
        stage.own().BookletPrint = booklet ? 1 : 0;
        std::vector<std::uint32_t> reasons;
        if (pages > 1 || poster) {
          reasons.push_back(5043);
        }
        if (booklet) {
          reasons.push_back(5089);
        }
        EXPECT_EQ(stage.AskTip(1452), JoinedReasons(reasons)) << pages << poster << booklet;
        EXPECT_EQ(stage.AskTip(1454), booklet ? JoinedReasons({5046}) : u"");
      }
    }
  }
}

class LayoutBookletTip : public testing::TestWithParam<unsigned> {};

INSTANTIATE_TEST_SUITE_P(Sums, LayoutBookletTip, testing::Range(0U, 64U),
                         testing::PrintToStringParamName());

TEST_P(LayoutBookletTip, TellsEveryReasonInItsOrder) {
  const auto has = [](unsigned bit) { return (GetParam() & bit) != 0; };
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmDuplex = has(1) ? 2 : 3;
  stage.shared().dmMediaType = has(2) ? 264 : 1;
  stage.shared().dmPaperSize = has(4) ? 13 : 9;
  stage.own().ReversePrint = has(8) ? 1 : 0;
  stage.own().ScaleRadio = has(16) ? 99 : 100;
  stage.own().MultipleUp = has(32) ? 2 : 1;
  std::vector<std::uint32_t> reasons;
  constexpr std::uint32_t kTexts[] = {5085, 6009, 6540, 6007, 6011, 6010};
  for (unsigned place = 0; place < 6; ++place) {
    if (has(1U << place)) {
      reasons.push_back(kTexts[place]);
    }
  }
  EXPECT_EQ(stage.AskTip(1453), JoinedReasons(reasons));
}

TEST(LayoutTips, BookletReasonsAtTheirEdges) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  const DriverDevmode clean = stage.context().devmode;
  const auto tip = [&](auto set) {
    stage.context().devmode = clean;
    set();
    return stage.AskTip(1453);
  };
  const std::map<std::int16_t, bool> sides = {{1, false}, {2, true}, {3, false},
                                              {4, false}, {5, true}, {6, false}};
  for (const auto& [duplex, told] : sides) {
    EXPECT_EQ(tip([&, duplex = duplex] { stage.shared().dmDuplex = duplex; }),
              told ? JoinedReasons({5085}) : u"");
  }
  EXPECT_EQ(tip([&] { stage.own().MultipleUp = 22; }), JoinedReasons({6010}));
  EXPECT_EQ(tip([&] { stage.own().MultipleUp = 0; }), u"");
  EXPECT_EQ(tip([&] { stage.shared().dmPaperSize = 300; }), JoinedReasons({6540}));
  EXPECT_EQ(tip([&] { stage.shared().dmPaperSize = 320; }), u"");
  // A media type without a row is a conflict without a reason.
  EXPECT_EQ(tip([&] { stage.shared().dmMediaType = 266; }), u"");
}

TEST(LayoutTips, ComeUpOverTheirIconsAndNowhereElse) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->MultipleUp = 4; }));
  EXPECT_EQ(stage.user().HoverTip(1452), JoinedReasons({5043}));
  EXPECT_EQ(stage.user().HoverTip(1453), JoinedReasons({6010}));
  EXPECT_EQ(stage.user().HoverTip(1454), u"");  // hidden
  EXPECT_EQ(stage.AskTip(1064), u"");
}

TEST(LayoutTips, MouseRefreshesTheToolsOfAllThree) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  std::size_t place = 0;
  for (const std::int32_t icon : {1452, 1454, 1453}) {
    const WindowHandle tooltip = stage.state().tooltips[place++];
    ASSERT_EQ(stage.windows().Find(tooltip)->tooltip.tools.size(), 1U);
    EXPECT_EQ(stage.windows().Find(tooltip)->tooltip.tools[0].id,
              reinterpret_cast<std::uintptr_t>(stage.Item(icon)));
    const auto& sent = stage.PageStage::Watch(tooltip);
    stage.Send(kWmMouseMove);
    std::vector<std::uint32_t> messages;
    std::ranges::transform(sent, std::back_inserter(messages), &LayoutStage::Sent::message);
    EXPECT_EQ(messages, std::vector<std::uint32_t>({kTtmActivate, kTtmSetToolInfo, kTtmActivate}))
        << icon;
  }
}

// Models without booklets have no tooltip for the booklet's icon.
TEST(LayoutTips, MouseRefreshesTheToolsOfTwoWhereNoBookletIsOffered) {
  LayoutStage stage;
  stage.SelectModel(u"Alder 1 Series");
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.state().tooltips[2], nullptr);
  std::vector<const std::vector<LayoutStage::Sent>*> sent;
  for (const std::size_t place : {std::size_t{0}, std::size_t{1}}) {
    sent.push_back(&stage.PageStage::Watch(stage.state().tooltips[place]));
  }
  stage.Send(kWmMouseMove);
  for (const auto* messages : sent) {
    EXPECT_EQ(std::ranges::count(*messages, kTtmSetToolInfo, &LayoutStage::Sent::message), 1);
  }
  EXPECT_TRUE(stage.changes.empty());
}

// ---- Messages that mean nothing here ------------------------------------------------------------

TEST(LayoutMessages, AreTakenWithoutTheirStructures) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  const DriverDevmode before = stage.context().devmode;
  for (const std::uint32_t message : {kWmNotify, kWmDrawItem, kWmMeasureItem, kWmHelp}) {
    EXPECT_EQ(stage.CallProcedure(message, 0, 0), 0) << message;
  }
  NotifyHeader unknown = {nullptr, 0, 0xFFFFFFFE};
  EXPECT_EQ(stage.CallProcedure(kWmNotify, 0, reinterpret_cast<std::intptr_t>(&unknown)), 0);
  EXPECT_EQ(stage.CallProcedure(kWmUser + 256, 3, 0), 0);
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
}

TEST(LayoutMessages, WithoutAContextDoNothing) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.windows().SetWindowLongPtrW(stage.page(), kGwlpUserData, 0);
  for (const std::uint32_t message : {kWmMouseMove, kWmShowWindow}) {
    EXPECT_EQ(stage.CallProcedure(message, 1, 0), 0) << message;
  }
  stage.Command(1390);
  EXPECT_EQ(stage.own().MultipleUp, 1);
  stage.windows().SetWindowLongPtrW(stage.page(), kGwlpUserData,
                                    reinterpret_cast<std::intptr_t>(&stage.context()));
}

}  // namespace
}  // namespace ostrel
