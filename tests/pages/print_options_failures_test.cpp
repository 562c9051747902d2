// The print options page when the world fails: no memory for its state, any call of the platform
// refused, records full of nonsense, and a dialog that was there before.
#include "config/setting_stores.h"
#include "core/devmode_lifecycle.h"
#include "pages/options_stage.h"
#include "support/byte_record.h"

#include <cstring>

namespace ostrel {
namespace {

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

// A whole record: nothing in it that a repair would change. The custom papers are cleared in a live
// record, while a repair would give them back.
std::string Unrepaired(const DriverDevmode& record) {
  PrivateDevmode live = record.privateDevmode;
  DriverDevmode defaults;
  InitDriverDevmode(&defaults, test::kDriverName, nullptr);
  std::memcpy(live.CustomPaperSize, defaults.privateDevmode.CustomPaperSize,
              sizeof(live.CustomPaperSize));
  PrivateDevmode repaired = live;
  ValidatePrivateDevmode(&repaired);
  return test::Difference(test::BytesOf(live), test::BytesOf(repaired));
}

std::string UnrepairedFields(const DriverDevmode& record) {
  auto context = std::make_unique<UIContext>();
  context->devmode = record;
  context->publicPointer = &context->devmode.publicDevmode;
  context->privatePointer = &context->devmode.privateDevmode;
  for (const std::uint32_t flag :
       {std::uint32_t{kDmOrientation}, std::uint32_t{kDmPaperSize}, std::uint32_t{kDmPaperLength},
        std::uint32_t{kDmPaperWidth}, std::uint32_t{kDmCopies}, std::uint32_t{kDmDefaultSource},
        std::uint32_t{kDmPrintQuality}, std::uint32_t{kDmColor}, std::uint32_t{kDmDuplex},
        std::uint32_t{kDmYResolution}, std::uint32_t{kDmCollate}, std::uint32_t{kDmMediaType}}) {
    std::int16_t value = 0;
    GetDevmodeField(context.get(), flag, &value);
  }
  return test::Difference(test::BytesOf(record), test::BytesOf(context->devmode));
}

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

// Deeds one after the other, in the order of their braces; whether a hand gets through doesn't
// matter here.
struct Do {
  template <typename... Deeds>
  explicit Do(const Deeds&... /*deeds*/) {}
};

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

class OptionsFailures : public testing::TestWithParam<Story> {
 protected:
  // Plays the story with the n-th call failing. Result: whether there was such a call.
  bool Play(std::size_t n) {
    OptionsStage stage;
    if (GetParam().stored) {
      const auto context = std::make_unique<UIContext>();
      InitDriverDevmode(&context->devmode, test::kDriverName, nullptr);
      context->publicPointer = &context->devmode.publicDevmode;
      context->privatePointer = &context->devmode.privateDevmode;
      const FavoriteStore store;
      EXPECT_TRUE(store.Init() && store.Save(OptionsStage::Text(202).c_str(), *context));
    }
    const DriverDevmode in = stage.scene.in;
    const auto poison = test::BytesOf(stage.scene.out);
    headless::FaultPlan& faults = stage.world().platform.faults;
    faults.StartTrace();
    faults.FailCall(n);
    const bool open = stage.Open(GetParam().prepare);
    bool ok = false;
    if (stage.sheet->isOpen() && stage.page() != nullptr) {
      GetParam().use(stage);
    }
    if (stage.sheet->isOpen()) {
      ok = stage.sheet->PressOk() || stage.sheet->PressOk();  // a box may hold it once
    }
    opened_ += open ? 1U : 0U;
    accepted_ += ok ? 1U : 0U;
    const bool fired = faults.fired();
    faults.Clear();
    stage.sheet.reset();
    EXPECT_EQ(test::Difference(test::BytesOf(stage.scene.in), test::BytesOf(in)), "");
    if (ok) {
      EXPECT_EQ(Unrepaired(stage.scene.out), "");
      EXPECT_EQ(UnrepairedFields(stage.scene.out), "");
    } else {
      EXPECT_EQ(test::Difference(test::BytesOf(stage.scene.out), poison), "");
    }
    EXPECT_EQ(stage.windows().liveWindows(), 0U);
    EXPECT_EQ(stage.graphics().liveBitmaps(), 0U);
    EXPECT_EQ(stage.graphics().liveContexts(), 0U);
    EXPECT_EQ(stage.world().platform.files.openFiles(), 0U);
    EXPECT_EQ(stage.world().platform.registry.openKeys(), 0U);
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << "with call " << n << " failing: " << faults.trace().at(n - 1);
    }
    return fired;
  }

  std::size_t opened_ = 0;
  std::size_t accepted_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Stories, OptionsFailures, testing::ValuesIn(kStories), test::CaseName());

// Blocks that are still live are found when the stage's world ends.
TEST_P(OptionsFailures, LeaveAWholeRecordOrAnUntouchedOneAndNothingBehind) {
  constexpr std::size_t kMostCalls = 6000;
  std::size_t n = 1;
  while (n < kMostCalls && Play(n) && !HasFailure()) {
    ++n;
  }
  EXPECT_LT(n, kMostCalls);
  EXPECT_GT(n, GetParam().leastCalls);
  EXPECT_GT(opened_, n / 2);
  EXPECT_GT(accepted_, n / 2);
  EXPECT_LT(opened_, n);  // some failures keep the sheet from opening
  RecordProperty("calls", static_cast<int>(n));
  RecordProperty("opened", static_cast<int>(opened_));
  RecordProperty("accepted", static_cast<int>(accepted_));
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
    DriverDevmode& in = stage.scene.in;
    const DriverDevmode whole = in;
    test::SetBytes(in, test::RandomBytes(sizeof(in), seed));
    WriteHeader(&in.publicDevmode, ReadHeader(&whole.publicDevmode));
    in.publicDevmode.dmFields = kDriverDevmodeFields;
    in.privateDevmode.Signature = kPrivateSignature;
    std::ranges::copy(whole.publicDevmode.dmDeviceName, in.publicDevmode.dmDeviceName);
    ASSERT_TRUE(stage.Open()) << seed;
    EXPECT_EQ(stage.own().FavoriteIndex, in.privateDevmode.FavoriteIndex) << seed;  // it was merged
    EXPECT_TRUE(stage.sheet->PressOk()) << seed;
    EXPECT_EQ(Unrepaired(stage.scene.out), "") << seed;
    EXPECT_EQ(UnrepairedFields(stage.scene.out), "") << seed;
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
    ASSERT_TRUE(stage.Open([seed](UIContext& context) {
      const DriverDevmode before = context.devmode;
      test::SetBytes(context.devmode, test::RandomBytes(sizeof(before), seed));
      WriteHeader(context.publicPointer, ReadHeader(&before.publicDevmode));
    })) << seed;
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
