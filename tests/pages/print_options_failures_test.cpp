// The print options page when the world fails: no memory for its state, any call of the platform
// refused, records full of nonsense, and a dialog that was there before.
#include "config/setting_stores.h"
#include "pages/failure_walk.h"
#include "pages/options_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::Do;
using test::OptionsStage;

// ---- The page's state ---------------------------------------------------------------------------

TEST(OptionsState, IsMadeWithThePageAndGoesWithTheSheet) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const PageState* state = PageStatePlace(PageSlot::kPrintOptions);
  ASSERT_NE(state, nullptr);
  EXPECT_EQ(stage.world().pageStates->rows[0x1234 % 512][0], state);
  EXPECT_TRUE(stage.sheet->PressCancel());
  EXPECT_EQ(PageStatePlace(PageSlot::kPrintOptions), nullptr);
}

TEST(OptionsState, IsRefilledWhenThePageOpensAgainOnTheSameThread) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  auto* state = GetPageState<PrintOptionsPageState>(PageSlot::kPrintOptions);
  // The dialog goes and the state stays, as when only the dialog is made anew.
  const WindowHandle before = stage.page();
  const auto* resources =
      stage.world().platform.modules.ResourcesOf(stage.context().languageModule);
  ASSERT_NE(resources, nullptr);
  stage.windows().Destroy(before);
  EXPECT_EQ(stage.graphics().liveBitmaps(), 0U);
  EXPECT_EQ(state->dialog, nullptr);
  state->editing = 1;
  RefreshPrintOptionsPage(stage.context());  // there is no page to refresh
  SheetPage copy = stage.sheet->page(0).copy;
  const WindowHandle again = stage.windows().CreateDialogWindow(
      copy.hInstance, test::kOptionsDialog, stage.sheet->window(), copy.pfnDlgProc,
      reinterpret_cast<std::intptr_t>(&copy), true);
  ASSERT_NE(again, nullptr);
  ASSERT_NE(again, before);
  ASSERT_EQ(PageStatePlace(PageSlot::kPrintOptions), state);
  EXPECT_EQ(state->dialog, again);
  EXPECT_EQ(state->editing, 0U);
  EXPECT_EQ(state->copiesEdit.window(), stage.windows().ControlOf(again, 1019));
  EXPECT_EQ(state->finessCheck.dialog(), again);
  headless::User user(stage.world().platform, again);
  stage.windows().Show(again, true);
  stage.windows().Show(stage.sheet->window(), true);
  stage.shared().dmCopies = 12;
  RefreshPrintOptionsPage(stage.context());
  EXPECT_EQ(user.Text(1019), u"12");
  // Groups have each child once: a second attachment adds none.
  stage.ExpectChangesFrom(again);
  stage.windows().Deliver(again, kWmCommand, MakeWords(1241, kBnClicked), 0);
  EXPECT_TRUE(user.Checked(1241));
  EXPECT_FALSE(user.Checked(1240));
  stage.windows().Destroy(again);
}

TEST(OptionsState, SheetsOneAfterTheOtherAreAlike) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1241));
  EXPECT_TRUE(stage.sheet->PressOk());
  stage.scene.in = stage.scene.out;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Checked(1241));
  EXPECT_TRUE(stage.user().Click(1240));
  EXPECT_TRUE(stage.sheet->PressOk());
  EXPECT_EQ(stage.scene.out.publicDevmode.dmDuplex, 1);
}

TEST(OptionsState, WithoutMemoryForItThePageShowsAndKeepsTheRecord) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(
      [](UIContext&) { test::currentStage->world().platform.faults.FailOperation("HeapAlloc"); }));
  EXPECT_EQ(PageStatePlace(PageSlot::kPrintOptions), nullptr);
  const DriverDevmode before = stage.context().devmode;
  for (const std::int32_t id : {1008, 1496, 1422, 1394, 1242, 1243, 1240, 1125, 1241, 1064}) {
    stage.Command(id);
  }
  stage.Command(1019, kEnChange);
  stage.Command(1019, kEnKillFocus);
  stage.Command(1393, kCbnSelChange);
  stage.Send(kWmMouseMove);
  stage.Notify(kPsnSetActive);
  stage.Send(0x500, 3);
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  RefreshPrintOptionsPage(stage.context());
  stage.world().platform.faults.Clear();
  EXPECT_TRUE(stage.sheet->PressCancel());
}

TEST(OptionsState, WithoutMemoryForItTheSheetCanStillBeAccepted) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open(
      [](UIContext&) { test::currentStage->world().platform.faults.FailOperation("HeapAlloc"); }));
  EXPECT_TRUE(stage.sheet->PressOk());
  EXPECT_EQ(stage.scene.out.publicDevmode.dmCopies, 1);
}

// ---- Keys that can't be read --------------------------------------------------------------------

void ForgetKey(UIContext& context, std::string_view key) {
  for (UIParamSlot& slot : context.uiParams) {
    if (slot.Key == key) {
      slot.Key[0] = '#';
    }
  }
}

struct KeyCase {
  const char* name;
  const char* key;
  std::function<void(PrivateDevmode&)> set;  // what would show if the key could be read
};
void PrintTo(const KeyCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const KeyCase kKeyCases[] = {
    {"Poster", "PosterPrint", [](PrivateDevmode& own) { own.PosterPrint = 1; }},
    {"Booklet", "BookletPrint", [](PrivateDevmode& own) { own.BookletPrint = 1; }},
    {"Reverse", "ReversePrint", [](PrivateDevmode& own) { own.ReversePrint = 1; }},
    {"Mode", "PrintMode", [](PrivateDevmode& own) { own.PrintMode = 1; }},
    {"Watermark", "WatermarkData", [](PrivateDevmode& own) { own.WatermarkData.PageWMFlag = 1; }},
};
// clang-format on

class OptionsUnreadableKey : public testing::TestWithParam<KeyCase> {};

INSTANTIATE_TEST_SUITE_P(Keys, OptionsUnreadableKey, testing::ValuesIn(kKeyCases),
                         test::CaseName());

TEST_P(OptionsUnreadableKey, CountsAsOff) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    ForgetKey(context, GetParam().key);
    GetParam().set(*context.privatePointer);
  }));
  EXPECT_TRUE(stage.user().Enabled(1240));
  EXPECT_FALSE(stage.user().Shown(1447));
  EXPECT_TRUE(stage.user().Enabled(1008));
  EXPECT_FALSE(stage.user().Checked(1394));
  EXPECT_TRUE(stage.user().Checked(1242));
  EXPECT_TRUE(stage.user().Enabled(1393));
  EXPECT_EQ(stage.AskTip(1447), u"");
  EXPECT_EQ(stage.AskTip(1450), u"");
}

TEST(OptionsUnreadable, ReadableAllOfThemShow) {
  for (const KeyCase& row : kKeyCases) {
    OptionsStage stage;
    ASSERT_TRUE(stage.Open([&row](UIContext& context) {
      context.publicPointer->dmDuplex = row.key == std::string_view("BookletPrint") ? 3 : 1;
      row.set(*context.privatePointer);
    }));
    const bool shows =
        !stage.user().Enabled(1240) || stage.user().Checked(1243) || !stage.user().Enabled(1393);
    EXPECT_TRUE(shows) << row.name;
  }
}

// ---- Any call of the platform fails -------------------------------------------------------------

// What a user does on a page: some of it is refused where a call has failed, and nothing of it may
// do harm.
struct Story {
  const char* name;
  void (*prepare)(UIContext& context);
  void (*use)(OptionsStage& stage);
  bool stored;  // whether the user has kept the factory favourite
  std::size_t leastCalls;
};
void PrintTo(const Story& row, std::ostream* out) {
  *out << row.name;
}

void UseEverything(OptionsStage& stage) {
  headless::User user = stage.user();
  Do{user.Click(1125), user.Click(1240), user.Type(1019, u"12"), user.MoveFocus(1422)};
  Do{user.Click(1422), user.Click(1243), user.SpinUp(1020), user.Click(1008)};
  Do{user.Choose(1393, 1), user.Click(1394)};
  Do{user.HoverTip(1447), user.Click(1394)};
  Do{user.Click(1241), user.Draw(1176), user.PressHelp(1064), user.Click(1064)};
  stage.Send(kWmUser + 256, 3);
}

void BeRefused(OptionsStage& stage) {
  headless::User user = stage.user();
  Do{user.HoverTip(1447), user.HoverTip(1448), user.HoverTip(1449), user.HoverTip(1450)};
  Do{user.Click(1064), user.Choose(1393, 2), user.Paste(1019, u"1x"), user.Paste(1019, u"1234")};
  stage.own().BookletPrint = 0;
  stage.shared().dmDuplex = 1;
  stage.shared().dmPaperSize = 9;
  stage.own().MultipleUp = 22;
  stage.ShowAgain();
  Do{user.Click(1125)};
  stage.own().MultipleUp = 1;
  stage.own().PosterPrint = 0;
  stage.shared().dmPaperSize = 13;
  stage.Command(1241);
  stage.shared().dmPaperSize = 9;
  for (const std::uintptr_t code : {4U, 6U}) {
    stage.Send(kWmUser + 256, code);
  }
  stage.ShowAgain();
  Do{user.Type(1019, u""), stage.sheet->PressApply(), stage.sheet->PressHelp()};
}

const Story kStories[] = {
    {"Everything", [](UIContext&) {}, UseEverything, false, 700},
    {"EverythingWithAStoredFavourite", [](UIContext&) {}, UseEverything, true, 700},
    {"Refusals",
     [](UIContext& context) {
       context.publicPointer->dmDuplex = 3;
       context.publicPointer->dmPaperSize = 9;
       context.privatePointer->BookletPrint = 1;
     },
     BeRefused, false, 600},
};

class OptionsFailures : public testing::TestWithParam<Story> {};

INSTANTIATE_TEST_SUITE_P(Stories, OptionsFailures, testing::ValuesIn(kStories), test::CaseName());

TEST_P(OptionsFailures, LeaveAWholeRecordOrAnUntouchedOneAndNothingBehind) {
  test::FailureWalk walk;
  const auto play = [&walk](std::size_t n) {
    OptionsStage stage;
    if (GetParam().stored) {
      const auto context = std::make_unique<UIContext>();
      InitDriverDevmode(&context->devmode, test::kDriverName, nullptr);
      context->publicPointer = &context->devmode.publicDevmode;
      context->privatePointer = &context->devmode.privateDevmode;
      const FavoriteStore store;
      EXPECT_TRUE(store.Init() && store.Save(OptionsStage::Text(202).c_str(), *context));
    }
    return walk.Play(
        stage, GetParam().prepare, [&stage] { GetParam().use(stage); }, n);
  };
  walk.Walk(play, GetParam().leastCalls);
}

// ---- Records full of nonsense -------------------------------------------------------------------

class OptionsHostileCaller : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Tens, OptionsHostileCaller, testing::Range(0, 30),
                         testing::PrintToStringParamName());

// The caller's record is repaired when it is merged, and the page keeps it so.
TEST_P(OptionsHostileCaller, GetsAWholeRecordBack) {
  for (int offset = 0; offset < 10; ++offset) {
    const auto seed = static_cast<std::uint32_t>(GetParam() * 10 + offset + 1);
    OptionsStage stage;
    test::MakeHostileCaller(stage.scene.in, seed);
    ASSERT_TRUE(stage.Open()) << seed;
    EXPECT_EQ(stage.own().FavoriteIndex, stage.scene.in.privateDevmode.FavoriteIndex)
        << seed;  // it was merged
    EXPECT_TRUE(stage.sheet->PressOk()) << seed;
    EXPECT_EQ(test::Unrepaired(stage.scene.out), "") << seed;
    EXPECT_EQ(test::UnrepairedFields(stage.scene.out), "") << seed;
  }
}

class OptionsHostileRecord : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Tens, OptionsHostileRecord, testing::Range(0, 20),
                         testing::PrintToStringParamName());

// What another page might leave in the record isn't repaired here, and does no harm.
TEST_P(OptionsHostileRecord, ShowsAndTakesWhateverAUserDoes) {
  for (int offset = 0; offset < 10; ++offset) {
    const auto seed = static_cast<std::uint32_t>(GetParam() * 10 + offset + 1);
    OptionsStage stage;
    ASSERT_TRUE(stage.Open([seed](UIContext& context) { test::MakeHostileRecord(context, seed); }))
        << seed;
    EXPECT_GE(stage.shared().dmCopies, 1) << seed;
    EXPECT_TRUE(stage.shared().dmDuplex >= 1 && stage.shared().dmDuplex <= 3) << seed;
    EXPECT_EQ(stage.own().SourceTray, stage.shared().dmDefaultSource) << seed;
    for (const std::int32_t id :
         {1008, 1496, 1422, 1394, 1394, 1242, 1243, 1240, 1125, 1241, 1064}) {
      stage.Command(id);
    }
    for (const std::int32_t icon : {1447, 1448, 1449, 1450}) {
      EXPECT_LT(stage.AskTip(icon).size(), kTooltipReasonUnits) << seed;
    }
    for (std::uintptr_t code = 0; code < 8; ++code) {
      stage.Send(0x500, code);
    }
    static_cast<void>(stage.user().Draw(1176));
    static_cast<void>(stage.user().Choose(1393, 2));
    stage.Command(1019, kEnKillFocus);
    stage.Notify(kPsnKillActive);
    EXPECT_TRUE(stage.sheet->PressOk()) << seed;
    EXPECT_EQ(stage.graphics().liveBitmaps(), 0U);
  }
}

}  // namespace
}  // namespace ostrel
