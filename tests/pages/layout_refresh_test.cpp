// The layout page as it shows a record: on each showing and activation, every step of the refresh.
#include "pages/layout_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::LayoutStage;

// ---- The mode, and all that follows from it -----------------------------------------------------

class LayoutMode : public testing::TestWithParam<std::tuple<int, bool>> {};

INSTANTIATE_TEST_SUITE_P(Records, LayoutMode,
                         testing::Combine(testing::Values(-1, 0, 1, 2, 3, 4, 8, 9, 16, 17, 20, 21,
                                                          22, 23, 32767),
                                          testing::Bool()),
                         [](const auto& row) {
                           const int pages = std::get<0>(row.param);
                           return (pages < 0 ? "Minus" + std::to_string(-pages)
                                             : "Pages" + std::to_string(pages)) +
                                  (std::get<1>(row.param) ? "Booklet" : "");
                         });

TEST_P(LayoutMode, DecidesRadiosListsLocksAndIcons) {
  const auto [pages, booklet] = GetParam();
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([&](UIContext& context) {
    context.privatePointer->MultipleUp = static_cast<std::int16_t>(std::get<0>(GetParam()));
    context.privatePointer->BookletPrint = std::get<1>(GetParam()) ? 1 : 0;
    context.privatePointer->PageBorder = 1;
    context.privatePointer->ScaleRadio = 100;
  }));
  const auto* code = std::ranges::find(test::kPageCodes, pages);
  const bool hasRadio = code != std::end(test::kPageCodes);
  const bool several = pages >= 2 && pages <= 20;
  const bool poster = pages == 22;
  const bool conflict = pages != 1;
  using Ids = std::vector<std::int32_t>;

  if (hasRadio && !booklet) {
    EXPECT_EQ(stage.CheckedPages(), Ids({test::kPageRadioIds[code - test::kPageCodes]}));
  } else {
    EXPECT_EQ(stage.CheckedPages(), Ids());
  }
  if (booklet) {  // a booklet's radio button that is locked is unchecked too
    EXPECT_EQ(stage.CheckedModes(), conflict ? Ids() : Ids({1486}));
  } else {
    EXPECT_EQ(stage.CheckedModes(), Ids({poster ? 1485 : 1484}));
  }
  EXPECT_TRUE(stage.ArePageRadiosEnabled(!booklet && !poster));
  EXPECT_TRUE(stage.AreEnabled({1486, 1463}, !conflict));
  EXPECT_EQ(stage.user().Shown(1453), conflict);
  EXPECT_EQ(stage.user().Enabled(1065), booklet);
  EXPECT_EQ(stage.user().Shown(1454), booklet);
  EXPECT_EQ(stage.state().posterFree, booklet ? 0 : 1);
  EXPECT_TRUE(stage.user().Enabled(1485));
  EXPECT_EQ(stage.user().Enabled(1044), poster && !booklet);
  EXPECT_EQ(stage.user().Selected(1044), 0);
  EXPECT_EQ(stage.user().Enabled(1043), !booklet);
  EXPECT_TRUE(stage.IsOrderLive(several && !booklet));
  EXPECT_EQ(stage.user().Selected(1393), several && !booklet ? 1 : 0);
  EXPECT_EQ(stage.own().PageBorder, 1);  // shown as none, and kept
  EXPECT_TRUE(stage.IsScaleLive(!several && !booklet && !poster));
  EXPECT_TRUE(stage.changes.empty());
}

// ---- What a mode before has left behind ---------------------------------------------------------

struct LeftCase {
  const char* name;
  void (*set)(UIContext& context);
};
void PrintTo(const LeftCase& row, std::ostream* out) {
  *out << row.name;
}
void SetBooklet(UIContext& context) {
  context.publicPointer->dmDuplex = 3;
  context.privatePointer->BookletPrint = 1;
}
void SetPoster(UIContext& context) {
  context.privatePointer->MultipleUp = 22;
  context.privatePointer->PosterPrint = 1;
}
// clang-format off
const LeftCase kLeftCases[] = {
    {"Booklet",         SetBooklet},
    {"Poster",          SetPoster},
    // The start locks the radio buttons for it, and the refresh looks at the number of pages.
    {"PosterOfOnePage", [](UIContext& c) { c.privatePointer->PosterPrint = 1; }},
};
// clang-format on

class LayoutLeft : public testing::TestWithParam<LeftCase> {};

INSTANTIATE_TEST_SUITE_P(Modes, LayoutLeft, testing::ValuesIn(kLeftCases), test::CaseName());

TEST_P(LayoutLeft, ByDefaultsHasItsRadioButtonsFreeAgain) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open(GetParam().set));
  stage.windows().EnableWindow(stage.Item(1485), false);  // as a click on the booklet leaves it
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_TRUE(stage.ArePageRadiosEnabled(true));
  EXPECT_TRUE(stage.user().Enabled(1485));
  EXPECT_EQ(stage.CheckedPages(), std::vector<std::int32_t>({1387}));
  EXPECT_EQ(stage.CheckedModes(), std::vector<std::int32_t>({1484}));
}

TEST(LayoutLeftBehind, RadioButtonsThatAPosterOfOnePageLocksAtTheStartAreFreeOnceItIsShown) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->PosterPrint = 1; }));
  const headless::User alone = stage.StartAlone();
  EXPECT_FALSE(alone.Enabled(1387));
  stage.ShowAgain();
  EXPECT_TRUE(stage.ArePageRadiosEnabled(true));
}

// Nothing of the five stays checked where the record has none of their numbers.
TEST(LayoutLeftBehind, CheckedRadioButtonIsClearedForAModeWithoutOne) {
  void (*const kModes[])(UIContext&) = {
      SetBooklet, SetPoster, [](UIContext& context) { context.privatePointer->MultipleUp = 23; }};
  for (const auto set : kModes) {
    for (const std::int32_t radio : test::kPageRadioIds) {
      LayoutStage stage;
      ASSERT_TRUE(stage.Open());
      stage.windows().CheckDlgButton(stage.page(), radio, kBstChecked);
      set(stage.context());
      stage.ShowAgain();
      EXPECT_EQ(stage.CheckedPages(), std::vector<std::int32_t>()) << radio;
    }
  }
}

TEST(LayoutLeftBehind, SizeOfThePosterIsSelectedAgainByAPosterAndByABooklet) {
  for (const auto set : {SetBooklet, SetPoster}) {
    LayoutStage stage;
    ASSERT_TRUE(stage.Open());
    stage.windows().SendMessageW(stage.Item(1044), kCbSetCurSel, static_cast<std::uintptr_t>(-1),
                                 0);
    stage.ShowAgain();
    ASSERT_EQ(stage.user().Selected(1044), -1);  // one page asks for no size
    set(stage.context());
    stage.ShowAgain();
    EXPECT_EQ(stage.user().Selected(1044), 0);
  }
}

// ---- Words that one control shows ---------------------------------------------------------------

struct WordCase {
  const char* name;
  std::int16_t PrivateDevmode::*word;
  std::int32_t control;
  std::int16_t value;
  std::int32_t row;
};
void PrintTo(const WordCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr WordCase kWordCases[] = {
    // Name,             Word,                             Control, Value, Row
    {"TonerOff",         &PrivateDevmode::TonerSavingMode, 1045,  0,  0},
    {"TonerOn",          &PrivateDevmode::TonerSavingMode, 1045,  1,  1},
    {"TonerAuto",        &PrivateDevmode::TonerSavingMode, 1045,  2,  2},
    {"TonerThree",       &PrivateDevmode::TonerSavingMode, 1045,  3, -1},
    {"TonerMinus",       &PrivateDevmode::TonerSavingMode, 1045, -1, -1},
    {"ThicknessZero",    &PrivateDevmode::Thickness,       1394,  0,  0},
    {"ThicknessTwo",     &PrivateDevmode::Thickness,       1394,  2,  2},
    {"ThicknessFour",    &PrivateDevmode::Thickness,       1394,  4,  4},
    {"ThicknessHuge",    &PrivateDevmode::Thickness,       1394, 99, -1},
    {"OrderTwo",         &PrivateDevmode::PageOrder,       1046,  2,  0},
    {"OrderFive",        &PrivateDevmode::PageOrder,       1046,  5,  3},
    {"OrderZero",        &PrivateDevmode::PageOrder,       1046,  0, -1},
    {"OrderSeven",       &PrivateDevmode::PageOrder,       1046,  7, -1},
    {"BorderOn",         &PrivateDevmode::PageBorder,      1393,  1,  1},
    {"BorderOff",        &PrivateDevmode::PageBorder,      1393,  0,  0},
    {"BorderTwo",        &PrivateDevmode::PageBorder,      1393,  2, -1},
};
// clang-format on

class LayoutWord : public testing::TestWithParam<WordCase> {};

INSTANTIATE_TEST_SUITE_P(Values, LayoutWord, testing::ValuesIn(kWordCases), test::CaseName());

TEST_P(LayoutWord, ShowsTheRowOfItsValueOrNone) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->MultipleUp = 4; }));
  stage.windows().SendMessageW(stage.Item(GetParam().control), kCbSetCurSel, 1, 0);
  stage.own().*GetParam().word = GetParam().value;
  stage.ShowAgain();
  EXPECT_EQ(stage.user().Selected(GetParam().control), GetParam().row);
  EXPECT_EQ(stage.own().*GetParam().word, GetParam().value);
}

TEST(LayoutRefresh, OnSmallModelsThicknessesWithoutARowShowNone) {
  LayoutStage stage;
  stage.SelectModel(u"Cedar 1 Series");
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->Thickness = 4; }));
  EXPECT_EQ(stage.user().Selected(1394), -1);
  stage.own().Thickness = 3;
  stage.ShowAgain();
  EXPECT_EQ(stage.user().Selected(1394), 2);
}

TEST(LayoutRefresh, ThicknessIsLiveExactlyWithoutTonerSaving) {
  for (const std::int16_t saving : std::initializer_list<std::int16_t>{0, 1, 2, 3, -1}) {
    LayoutStage stage;
    ASSERT_TRUE(stage.Open(
        [saving](UIContext& context) { context.privatePointer->TonerSavingMode = saving; }));
    EXPECT_EQ(stage.user().Enabled(1394), saving == 0) << saving;
    EXPECT_TRUE(stage.user().Enabled(1045));
  }
}

TEST(LayoutRefresh, OrientationAndRotationFollowTheRecord) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::int16_t orientation : std::initializer_list<std::int16_t>{2, 1}) {
    stage.shared().dmOrientation = orientation;
    stage.own().Rotate180 = static_cast<std::int16_t>(orientation - 1);
    stage.windows().EnableWindow(stage.Item(1048), false);
    stage.windows().EnableWindow(stage.Item(1045), false);
    stage.ShowAgain();
    EXPECT_EQ(stage.user().Selected(1048), orientation - 1);
    EXPECT_EQ(stage.user().Checked(1415), orientation == 2);
    EXPECT_TRUE(stage.AreEnabled({1048, 1045}, true));
  }
  stage.shared().dmOrientation = 0;  // no repair changes it, and no row has it
  stage.ShowAgain();
  EXPECT_EQ(stage.user().Selected(1048), -1);
  stage.shared().dmOrientation = 7;
  stage.ShowAgain();
  EXPECT_EQ(stage.user().Selected(1048), 0);
}

TEST(LayoutRefresh, OrdersFollowPagesThatAnotherPageHasChanged) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  using Values = std::vector<std::uintptr_t>;
  stage.own().MultipleUp = 2;
  stage.own().PageOrder = 1;
  stage.ShowAgain();
  EXPECT_EQ(stage.user().ItemData(1046), Values({0, 1}));
  EXPECT_EQ(stage.user().Selected(1046), 1);
  EXPECT_EQ(stage.user().Text(1046), LayoutStage::Text(155));
  stage.shared().dmOrientation = 2;
  stage.ShowAgain();
  EXPECT_EQ(stage.user().Text(1046), LayoutStage::Text(412));
  stage.own().MultipleUp = 16;
  stage.own().PageOrder = 4;
  stage.ShowAgain();
  EXPECT_EQ(stage.user().ItemData(1046), Values({2, 3, 4, 5}));
  EXPECT_EQ(stage.user().Selected(1046), 2);
  EXPECT_EQ(stage.own().PageOrder, 4);
}

// ---- The scale ----------------------------------------------------------------------------------

TEST(LayoutRefresh, ScaleOfTheRecordIsShownWhereTheBoxIsLive) {
  for (const std::int32_t scale : {25, 99, 100, 101, 400}) {
    LayoutStage stage;
    ASSERT_TRUE(
        stage.Open([scale](UIContext& context) { context.privatePointer->ScaleRadio = scale; }));
    const std::string digits = std::to_string(scale);
    EXPECT_EQ(stage.user().Text(1025), std::u16string(digits.begin(), digits.end()));
    EXPECT_TRUE(stage.AreEnabled({1486}, scale == 100));
    EXPECT_EQ(stage.user().Shown(1453), scale != 100);
  }
}

TEST(LayoutRefresh, ScaleShownByThePageNeverWritesTheRecord) {
  for (const std::int32_t scale : {0, 10, 24, 150, 401, 9999, -5, 2147483647}) {
    for (const std::int16_t pages : std::initializer_list<std::int16_t>{1, 4, 22}) {
      LayoutStage stage;
      ASSERT_TRUE(stage.Open([scale, pages](UIContext& context) {
        context.privatePointer->ScaleRadio = scale;
        context.privatePointer->MultipleUp = pages;
      }));
      stage.ShowAgain();
      EXPECT_EQ(stage.own().ScaleRadio, scale);
      EXPECT_TRUE(stage.changes.empty());
      EXPECT_NE(stage.user().Focus(), 1025);
    }
  }
}

TEST(LayoutRefresh, ControlsOfOlderTemplatesAreLockedWithTheScale) {
  LayoutStage stage;
  stage.AddControl(1024, u"static", 0);
  stage.AddControl(1027, u"static", 0);
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->MultipleUp = 2; }));
  EXPECT_TRUE(stage.AreEnabled({1024, 1027}, false));
  stage.own().MultipleUp = 1;
  stage.ShowAgain();
  EXPECT_TRUE(stage.AreEnabled({1024, 1027}, true));
}

TEST(LayoutRefresh, LockedScaleBoxIsReadOnlyToo) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  for (const bool locked : {true, false}) {
    const std::vector<LayoutStage::Sent>& sent = stage.PageStage::Watch(stage.Item(1025));
    stage.own().MultipleUp = locked ? 4 : 1;
    stage.ShowAgain();
    std::vector<std::uintptr_t> readOnly;
    for (const LayoutStage::Sent& message : sent) {
      if (message.message == kEmSetReadOnly) {
        readOnly.push_back(message.wParam);
      }
    }
    ASSERT_FALSE(readOnly.empty());
    EXPECT_EQ(readOnly.back(), locked ? 1U : 0U);
  }
}

// ---- Conflicts of a booklet ---------------------------------------------------------------------

struct ConflictCase {
  const char* name;
  void (*set)(UIContext& context);
};
void PrintTo(const ConflictCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const ConflictCase kConflictCases[] = {
    {"ReverseOrder",   [](UIContext& c) { c.privatePointer->ReversePrint = 1; }},
    {"PaperOneSided",  [](UIContext& c) { c.publicPointer->dmPaperSize = 11; }},
    {"PaperCustom",    [](UIContext& c) { c.publicPointer->dmPaperSize = 300; }},
    {"MediaThick",     [](UIContext& c) { c.publicPointer->dmMediaType = 257; }},
    {"MediaUnknown",   [](UIContext& c) { c.publicPointer->dmMediaType = 266; }},
    {"SeveralPages",   [](UIContext& c) { c.privatePointer->MultipleUp = 2; }},
    {"Scale",          [](UIContext& c) { c.privatePointer->ScaleRadio = 99; }},
    {"LongEdge",       [](UIContext& c) { c.publicPointer->dmDuplex = 2; }},
    {"DuplexFour",     [](UIContext& c) { c.publicPointer->dmDuplex = 4; }},
    {"DuplexFive",     [](UIContext& c) { c.publicPointer->dmDuplex = 5; }},
};
// clang-format on

class LayoutConflict : public testing::TestWithParam<ConflictCase> {};

INSTANTIATE_TEST_SUITE_P(Each, LayoutConflict, testing::ValuesIn(kConflictCases), test::CaseName());

TEST_P(LayoutConflict, LocksTheBookletUntilItIsGone) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  const DriverDevmode clean = stage.context().devmode;
  GetParam().set(stage.context());
  stage.ShowAgain();
  EXPECT_TRUE(stage.AreEnabled({1486, 1463}, false));
  EXPECT_TRUE(stage.user().Shown(1453));
  EXPECT_FALSE(stage.user().Click(1486));
  stage.context().devmode = clean;
  stage.ShowAgain();
  EXPECT_TRUE(stage.AreEnabled({1486, 1463}, true));
  EXPECT_FALSE(stage.user().Shown(1453));
  EXPECT_FALSE(stage.user().Enabled(1065));
}

TEST_P(LayoutConflict, UnchecksABookletThatIsOnAndKeepsItsButton) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 3;
    context.privatePointer->BookletPrint = 1;
    GetParam().set(context);
  }));
  EXPECT_FALSE(stage.user().Checked(1486));
  EXPECT_TRUE(stage.user().Enabled(1065));
  EXPECT_EQ(stage.own().BookletPrint, 1);
}

TEST(LayoutConflicts, ShortEdgeAloneIsNone) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.publicPointer->dmDuplex = 3; }));
  EXPECT_TRUE(stage.user().Enabled(1486));
  EXPECT_FALSE(stage.user().Shown(1453));
}

// ---- When it is shown ---------------------------------------------------------------------------

TEST(LayoutActivation, RefreshesOnlyWhenAnotherPageWasThere) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.context().activePage, std::uint32_t{kLayoutPage});
  stage.own().MultipleUp = 4;
  EXPECT_EQ(stage.NotifyProcedure(kPsnSetActive), 1);
  EXPECT_TRUE(stage.user().Checked(1387));
  stage.context().activePage = 2;
  EXPECT_EQ(stage.NotifyProcedure(kPsnSetActive), 1);
  EXPECT_TRUE(stage.user().Checked(1390));
  EXPECT_EQ(stage.context().activePage, std::uint32_t{kLayoutPage});
}

TEST(LayoutShow, RefreshesAtEachShowingAndHiding) {
  for (const std::uintptr_t shown : {std::uintptr_t{1}, std::uintptr_t{0}}) {
    LayoutStage stage;
    ASSERT_TRUE(stage.Open());
    stage.own().MultipleUp = 22;
    stage.Send(kWmShowWindow, shown);
    EXPECT_TRUE(stage.user().Checked(1485));
  }
}

TEST(LayoutRefreshCall, ShowsTheRecordWhenTheThreadHasThePage) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().MultipleUp = 16;
  RefreshLayoutPage(stage.context());
  EXPECT_EQ(stage.CheckedPages(), std::vector<std::int32_t>({1392}));
  EXPECT_TRUE(stage.sheet->PressCancel());
  EXPECT_EQ(PageStatePlace(PageSlot::kLayout), nullptr);
}

TEST(LayoutRefreshCall, WithoutAPageMakesNoState) {
  test::TestWorld world;
  UIContext context = {};
  RefreshLayoutPage(context);
  EXPECT_EQ(PageStatePlace(PageSlot::kLayout), nullptr);
}

// ---- A sheet that may not be changed ------------------------------------------------------------

TEST(LayoutReadOnly, DisablesFirstAndRefreshesThen) {
  LayoutStage stage;
  stage.scene.document.fMode |= kDmNoPermission;
  ASSERT_TRUE(stage.Open());
  stage.windows().stateChanges.clear();
  stage.Send(kWmShowWindow, 1);
  const auto& changes = stage.windows().stateChanges;
  constexpr std::int32_t kLocked[] = {1015, 1043, 1047, 1044, 1025, 1064, 1443, 1065};
  ASSERT_GT(changes.size(), std::size(kLocked));
  for (const std::int32_t id : kLocked) {
    const auto first =
        std::ranges::find(changes, stage.Item(id), &headless::HeadlessWindows::StateChange::window);
    ASSERT_LT(first - changes.begin(), 8) << id;
    EXPECT_FALSE(first->on) << id;
  }
  // The refresh frees what the settings allow: one page at full scale.
  EXPECT_TRUE(stage.AreEnabled({1015, 1047, 1044, 1064, 1065}, false));
  EXPECT_TRUE(stage.AreEnabled({1043, 1025, 1443, 1048, 1045, 1394, 1387, 1484, 1485}, true));
}

TEST(LayoutReadOnly, SheetThatMayBeChangedKeepsItsButton) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.AreEnabled({1015, 1064, 1043, 1025, 1443}, true));
}

}  // namespace
}  // namespace ostrel
