// The layout page when the world fails: no memory for its state, keys that can't be read, any call
// of the platform refused, and records full of nonsense.
#include "pages/failure_walk.h"
#include "pages/layout_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::Do;
using test::LayoutStage;

constexpr std::int32_t kButtons[] = {1484, 1387, 1389, 1390, 1391, 1392,
                                     1485, 1486, 1415, 1065, 1064};
constexpr std::int32_t kLists[] = {1046, 1393, 1048, 1045, 1394};

// Every message of the page, whatever its controls allow.
void SendEverything(LayoutStage& stage) {
  for (const std::int32_t id : kButtons) {
    stage.Command(id);
  }
  for (const std::int32_t id : kLists) {
    stage.Command(id, kCbnSelChange);
  }
  stage.Command(1025, kEnChange);
  stage.Command(1025, kEnKillFocus);
  stage.Send(kWmMouseMove);
  stage.Send(kWmShowWindow, 1);
  stage.ShowAgain();
  stage.Notify(kPsnKillActive);
}

TEST(LayoutWithoutMemory, ShowsAndKeepsTheRecord) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open(
      [](UIContext&) { test::currentStage->world().platform.faults.FailOperation("HeapAlloc"); }));
  EXPECT_EQ(PageStatePlace(PageSlot::kLayout), nullptr);
  const DriverDevmode before = stage.context().devmode;
  SendEverything(stage);
  RefreshLayoutPage(stage.context());
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  stage.world().platform.faults.Clear();
  EXPECT_TRUE(stage.sheet->PressOk());
  EXPECT_EQ(stage.scene.out.privateDevmode.MultipleUp, 1);
}

// ---- Keys that can't be read --------------------------------------------------------------------

struct KeyCase {
  const char* name;
  const char* key;
  void (*set)(PrivateDevmode& own);  // what would show if the key could be read
};
void PrintTo(const KeyCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const KeyCase kKeyCases[] = {
    {"Pages",     "MultipleUp",      [](PrivateDevmode& own) { own.MultipleUp = 22; }},
    {"Booklet",   "BookletPrint",    [](PrivateDevmode& own) { own.BookletPrint = 1; }},
    {"Poster",    "PosterPrint",     [](PrivateDevmode& own) { own.PosterPrint = 1; }},
    {"Negative",  "Negative",        [](PrivateDevmode& own) { own.Negative = 1; }},
    {"Rotation",  "Rotate180",       [](PrivateDevmode& own) { own.Rotate180 = 1; }},
    {"Toner",     "TonerSavingMode", [](PrivateDevmode& own) { own.TonerSavingMode = 1; }},
};
// clang-format on

class LayoutUnreadableKey : public testing::TestWithParam<KeyCase> {};

INSTANTIATE_TEST_SUITE_P(Keys, LayoutUnreadableKey, testing::ValuesIn(kKeyCases), test::CaseName());

TEST_P(LayoutUnreadableKey, CountsAsItsDefault) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    test::ForgetKey(context, GetParam().key);
    GetParam().set(*context.privatePointer);
  }));
  const headless::User alone = stage.StartAlone();
  EXPECT_TRUE(alone.Checked(1484));
  EXPECT_TRUE(alone.Enabled(1025));
  stage.windows().Show(alone.dialog(), true);
  EXPECT_TRUE(alone.Checked(1484));
  EXPECT_TRUE(alone.Checked(1387));
  EXPECT_TRUE(alone.Enabled(1025));
  EXPECT_FALSE(alone.Checked(1415));
  EXPECT_TRUE(alone.Enabled(1394));
  EXPECT_EQ(stage.AskTip(1452), u"");
  EXPECT_EQ(stage.AskTip(1454), u"");
}

TEST(LayoutUnreadablePages, CountAsOne) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    test::ForgetKey(context, "MultipleUp");
    context.privatePointer->MultipleUp = 4;
  }));
  EXPECT_EQ(stage.CheckedPages(), std::vector<std::int32_t>({1387}));
  EXPECT_TRUE(stage.IsScaleLive(true));
  EXPECT_TRUE(stage.IsOrderLive(false));
}

// ---- Any call of the platform fails -------------------------------------------------------------

void UseEverything(LayoutStage& stage) {
  headless::User user = stage.user();
  Do{user.Click(1389), user.Choose(1046, 1), user.Choose(1393, 1), user.Choose(1048, 1)};
  Do{user.Click(1390), user.Choose(1046, 2), user.HoverTip(1452), user.Click(1387)};
  Do{user.Type(1025, u"150"), user.MoveFocus(1048), user.SpinUp(1107), user.Paste(1025, u"x")};
  Do{user.Choose(1045, 1), user.Choose(1045, 0), user.Choose(1394, 3), user.Click(1415)};
  Do{user.Draw(1388), user.PressHelp(1064), user.Click(1064), user.Click(1485)};
  Do{user.Click(1484), user.Click(1486), user.Click(1065), user.HoverTip(1454)};
}

void BeRefused(LayoutStage& stage) {
  headless::User user = stage.user();
  for (const std::int16_t watermark : std::initializer_list<std::int16_t>{0, 1}) {
    for (const std::int16_t duplex : std::initializer_list<std::int16_t>{3, 1}) {
      stage.shared().dmDuplex = duplex;
      stage.own().WatermarkData.PageWMFlag = watermark;
      Do{user.Click(1485), user.Click(1484)};
    }
  }
  stage.shared().dmDuplex = 2;
  stage.Command(1486);
  stage.Command(1484);
  stage.own().ScaleFlag = 2;
  Do{user.Type(1025, u""), stage.sheet->PressApply(), user.Type(1025, u"99")};
}

struct Story {
  const char* name;
  void (*use)(LayoutStage& stage);
  std::size_t leastCalls;
};
void PrintTo(const Story& row, std::ostream* out) {
  *out << row.name;
}
constexpr Story kStories[] = {
    {"Everything", UseEverything, 900},
    {"Refusals", BeRefused, 900},
};

class LayoutFailures : public testing::TestWithParam<Story> {};

INSTANTIATE_TEST_SUITE_P(Stories, LayoutFailures, testing::ValuesIn(kStories), test::CaseName());

TEST_P(LayoutFailures, LeaveAWholeRecordOrAnUntouchedOneAndNothingBehind) {
  test::FailureWalk walk;
  const auto play = [&walk](std::size_t n) {
    LayoutStage stage;
    return walk.Play(
        stage, {}, [&stage] { GetParam().use(stage); }, n);
  };
  walk.Walk(play, GetParam().leastCalls);
}

// ---- Records full of nonsense -------------------------------------------------------------------

class LayoutHostileRecord : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Tens, LayoutHostileRecord, testing::Range(0, 20),
                         testing::PrintToStringParamName());

TEST_P(LayoutHostileRecord, IsShownUnchangedAndTakesWhateverAUserDoes) {
  for (int offset = 0; offset < 10; ++offset) {
    const auto seed = static_cast<std::uint32_t>(GetParam() * 10 + offset + 1);
    PrivateDevmode before = {};
    LayoutStage stage;
    ASSERT_TRUE(stage.Open([&](UIContext& context) {
      test::MakeHostileRecord(context, seed);
      before = *context.privatePointer;
    })) << seed;
    EXPECT_EQ(test::Difference(test::BytesOf(stage.own()), test::BytesOf(before)), "") << seed;
    EXPECT_TRUE(stage.changes.empty());
    SendEverything(stage);
    for (const std::int32_t icon : {1452, 1453, 1454}) {
      EXPECT_LT(stage.AskTip(icon).size(), kTooltipReasonUnits) << seed;
    }
    static_cast<void>(stage.user().Draw(1388));
    EXPECT_TRUE(stage.sheet->PressOk() || stage.sheet->PressOk()) << seed;
  }
}

// The caller's record is repaired when it is merged, and the page keeps it so.
TEST_P(LayoutHostileRecord, OfTheCallerComesBackWhole) {
  for (int offset = 0; offset < 10; ++offset) {
    const auto seed = static_cast<std::uint32_t>(GetParam() * 10 + offset + 1);
    LayoutStage stage;
    test::MakeHostileCaller(stage.scene.in, seed);
    ASSERT_TRUE(stage.Open()) << seed;
    for (const std::int32_t id : {1484, 1390, 1387, 1485, 1484, 1486, 1415, 1484}) {
      stage.Command(id);
    }
    EXPECT_TRUE(stage.sheet->PressOk()) << seed;
    EXPECT_EQ(test::Unrepaired(stage.scene.out), "") << seed;
  }
}

}  // namespace
}  // namespace ostrel
