// The paper page when the world fails: no memory for its state, any call of the platform refused,
// records full of nonsense, and a dialog that was there before.
#include "pages/failure_walk.h"
#include "pages/paper_stage.h"

namespace ostrel {
namespace {

using test::Do;

// ---- The page's state ---------------------------------------------------------------------------

TEST(PaperState, IsMadeWithThePageAndGoesWithTheSheet) {
  PaperStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_NE(PageStatePlace(PageSlot::kPaper), nullptr);
  EXPECT_EQ(stage.world().pageStates->rows[0x1234 % 512][1], PageStatePlace(PageSlot::kPaper));
  EXPECT_TRUE(stage.sheet->PressCancel());
  EXPECT_EQ(PageStatePlace(PageSlot::kPaper), nullptr);
  RefreshPaperPage(stage.context());  // there is no page to refresh
  EXPECT_EQ(PageStatePlace(PageSlot::kPaper), nullptr);
}

TEST(PaperState, IsRefilledWhenThePageOpensAgainOnTheSameThread) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 11}));
  PaperPageState& state = stage.state();
  SheetPage copy = stage.sheet->page(0).copy;
  stage.windows().Destroy(stage.page());
  EXPECT_EQ(state.dialog, nullptr);
  EXPECT_EQ(state.tooltips[0], nullptr);
  RefreshPaperPage(stage.context());  // the state is there, and no page
  const WindowHandle again = stage.windows().CreateDialogWindow(
      copy.hInstance, test::kPaperDialog, stage.sheet->window(), copy.pfnDlgProc,
      reinterpret_cast<std::intptr_t>(&copy), true);
  ASSERT_NE(again, nullptr);
  EXPECT_EQ(state.dialog, again);
  EXPECT_EQ(state.sourceCombo.window(), stage.windows().ControlOf(again, 1393));
  headless::User user(stage.world().platform, again);
  stage.ExpectChangesFrom(again);
  // Groups have each child once: a second attachment adds none.
  stage.windows().Deliver(again, kWmCommand, MakeWords(1125, kBnClicked), 0);
  EXPECT_TRUE(user.Checked(1125));
  EXPECT_FALSE(user.Checked(1240));
  stage.windows().Destroy(again);
}

TEST(PaperState, WithoutMemoryForItThePageShowsAndKeepsTheRecord) {
  PaperStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& made) {
    PaperStage::With({.paper = 37, .media = 261})(made);
    test::currentStage->world().platform.faults.FailOperation("HeapAlloc");
  }));
  EXPECT_EQ(PageStatePlace(PageSlot::kPaper), nullptr);
  const DriverDevmode before = stage.context().devmode;
  for (const std::int32_t id : {1240, 1125, 1064, 1407}) {
    stage.Command(id);
  }
  for (const std::int32_t id : {1404, 1009, 1393}) {
    stage.Command(id, kCbnSelChange);
  }
  stage.Send(kWmMouseMove);
  stage.ShowAgain();
  RefreshPaperPage(stage.context());
  EXPECT_EQ(test::Difference(test::BytesOf(stage.context().devmode), test::BytesOf(before)), "");
  stage.world().platform.faults.Clear();
  EXPECT_TRUE(stage.sheet->PressOk());
}

// A dialog without one of the page's controls, as another template might be.
TEST(PaperControls, AnyOfThemMayBeMissing) {
  for (const std::int32_t missing : {1404, 1009, 1393, 1240, 1125, 1407, 1064, 1446, 1450, 1449}) {
    PaperStage stage;
    stage.RemoveControl(missing);
    ASSERT_TRUE(stage.OpenWith({.paper = 5})) << missing;
    EXPECT_EQ(stage.shared().dmPaperSize, 5) << missing;
    Do{stage.user().Choose(1404, 1), stage.user().Choose(1009, 2), stage.user().Choose(1393, 1)};
    Do{stage.user().Click(1125), stage.user().Click(1407), stage.user().Click(1064)};
    EXPECT_TRUE(stage.sheet->PressOk()) << missing;
  }
}

// ---- Any call of the platform fails -------------------------------------------------------------

struct Story {
  const char* name;
  const char16_t* model;
  PaperRecord record;
  void (*use)(PaperStage& stage);
  std::size_t leastCalls;
};
void PrintTo(const Story& row, std::ostream* out) {
  *out << row.name;
}

void UseEverything(PaperStage& stage) {
  headless::User user = stage.user();
  Do{user.Choose(1404, 8), user.Click(1125), user.Choose(1009, 1), user.Choose(1393, 2)};
  Do{user.Choose(1404, 28), user.Choose(1393, 3), user.Choose(1009, 2), user.HoverTip(1450)};
  Do{user.Draw(1318), user.Draw(1387), user.PressHelp(1404), user.Click(1407), user.Click(1064)};
  Do{user.Choose(1009, 2), stage.sheet->PressApply()};
}

void BeRefused(PaperStage& stage) {
  headless::User user = stage.user();
  Do{user.Choose(1009, 8), user.Choose(1009, 5), user.HoverTip(1450), user.HoverTip(1449)};
  stage.shared().dmDuplex = 2;
  stage.ShowAgain();
  stage.Command(1009, kCbnSelChange);
  Do{user.Choose(1404, 4), user.HoverTip(1446)};
  stage.shared().dmDuplex = 1;
  PaperStage::With({.paper = 252, .media = 1, .source = 257})(stage.context());
  stage.ShowAgain();
  Do{user.Choose(1393, 0), stage.sheet->PressHelp()};
}

const Story kStories[] = {
    {"Everything", u"Dogwood 1 Series", {}, UseEverything, 700},
    {"Refusals", u"Hazel 1 Series", {.paper = 37, .media = 258, .source = 4}, BeRefused, 500},
};

class PaperFailures : public testing::TestWithParam<Story> {};

INSTANTIATE_TEST_SUITE_P(Stories, PaperFailures, testing::ValuesIn(kStories), test::CaseName());

TEST_P(PaperFailures, LeaveAWholeRecordOrAnUntouchedOneAndNothingBehind) {
  test::FailureWalk walk;
  const auto play = [&walk](std::size_t n) {
    PaperStage stage(GetParam().model);
    stage.Store({PaperStage::Custom(288, u"Own")});
    return walk.Play(
        stage, PaperStage::With(GetParam().record), [&stage] { GetParam().use(stage); }, n);
  };
  walk.Walk(play, GetParam().leastCalls);
}

// ---- Records full of nonsense -------------------------------------------------------------------

class PaperHostileCaller : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Tens, PaperHostileCaller, testing::Range(0, 20),
                         testing::PrintToStringParamName());

// The caller's record is repaired when it is merged, and the page keeps it so.
TEST_P(PaperHostileCaller, GetsAWholeRecordBack) {
  for (int offset = 0; offset < 10; ++offset) {
    const auto seed = static_cast<std::uint32_t>(GetParam() * 10 + offset + 1);
    PaperStage stage;
    test::MakeHostileCaller(stage.scene.in, seed);
    ASSERT_TRUE(stage.Open()) << seed;
    EXPECT_TRUE(stage.sheet->PressOk()) << seed;
    EXPECT_EQ(test::Unrepaired(stage.scene.out), "") << seed;
    EXPECT_EQ(test::UnrepairedFields(stage.scene.out), "") << seed;
  }
}

class PaperHostileRecord : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Tens, PaperHostileRecord, testing::Range(0, 20),
                         testing::PrintToStringParamName());

// What another page might leave in the record isn't repaired here, and does no harm.
TEST_P(PaperHostileRecord, ShowsAndTakesWhateverAUserDoes) {
  for (int offset = 0; offset < 10; ++offset) {
    const auto seed = static_cast<std::uint32_t>(GetParam() * 10 + offset + 1);
    PaperStage stage;
    stage.Store({PaperStage::Custom(288, u"Own")});
    ASSERT_TRUE(stage.Open([seed](UIContext& made) { test::MakeHostileRecord(made, seed); }));
    EXPECT_EQ(stage.Shown(1404), stage.shared().dmPaperSize) << seed;
    EXPECT_GE(stage.user().Selected(1393), 0) << seed;
    for (std::int16_t row = 0; row < 29; ++row) {
      SelectComboValue(stage.page(), 1404,
                       row < 28 ? test::kListedPapers[row].id : std::int16_t{288});
      stage.Command(1404, kCbnSelChange);
      stage.PickMedia(test::kListedMediaIds[row % 9]);
      stage.Command(1393, kCbnSelChange);
      stage.Command(row % 2 == 0 ? 1125 : 1240);
    }
    for (const std::int32_t icon : {1446, 1449, 1450}) {
      EXPECT_LT(stage.AskTip(icon).size(), kTooltipReasonUnits) << seed;
    }
    stage.Command(1064);
    EXPECT_EQ(stage.shared().dmPaperSize, 9) << seed;
    EXPECT_TRUE(stage.sheet->PressOk()) << seed;
  }
}

}  // namespace
}  // namespace ostrel
