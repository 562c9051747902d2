// What the buttons and the list of the print options page do: check boxes, reverse order, the
// resolution, the job mode and the defaults.
#include "config/setting_stores.h"
#include "pages/options_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::OptionsStage;

void ExpectUntitledThen(OptionsStage& stage, std::size_t changes) {
  ASSERT_EQ(stage.changes.size(), changes);
  for (const DriverDevmode& record : stage.changes) {
    EXPECT_EQ(std::u16string(record.privateDevmode.FavoriteName), OptionsStage::Text(5005));
  }
}

// ---- Check boxes that follow their word only when both agree ------------------------------------

struct CheckCase {
  const char* name;
  std::int32_t control;
  std::int16_t& (*word)(OptionsStage&);
  bool feedsPicture;
};
void PrintTo(const CheckCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const CheckCase kCheckCases[] = {
    {"Collate", 1008, [](OptionsStage& s) -> std::int16_t& { return s.shared().dmCollate; }, true},
    {"JobFlag", 1496, [](OptionsStage& s) -> std::int16_t& { return s.own().JobFlag; }, false},
    {"Fineness", 1422, [](OptionsStage& s) -> std::int16_t& { return s.own().FinessMode; }, false},
};
// clang-format on

class OptionsCheck : public testing::TestWithParam<CheckCase> {};

INSTANTIATE_TEST_SUITE_P(Boxes, OptionsCheck, testing::ValuesIn(kCheckCases), test::CaseName());

TEST_P(OptionsCheck, ClickTurnsTheWordOnAndOff) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  GetParam().word(stage) = 0;
  stage.ShowAgain();
  for (const bool on : {true, false}) {
    stage.SetFavorite(u"mine");
    stage.changes.clear();
    const std::size_t invalidated = stage.user().Invalidations(1176);
    stage.onChange = [&] {
      EXPECT_EQ(stage.user().Checked(GetParam().control), on);
      EXPECT_EQ(stage.user().Invalidations(1176), invalidated);  // which comes behind
    };
    EXPECT_TRUE(stage.user().Click(GetParam().control));
    EXPECT_EQ(GetParam().word(stage), on ? 1 : 0);
    EXPECT_EQ(stage.user().Checked(GetParam().control), on);
    ExpectUntitledThen(stage, 1);
    EXPECT_EQ(stage.user().Invalidations(1176), invalidated + (GetParam().feedsPicture ? 1U : 0U));
  }
}

struct WordCase {
  std::int16_t word;
  bool checked;
  bool turns;
};

class OptionsCheckState : public testing::TestWithParam<std::tuple<CheckCase, WordCase>> {};

INSTANTIATE_TEST_SUITE_P(
    States, OptionsCheckState,
    testing::Combine(testing::ValuesIn(kCheckCases),
                     testing::Values(WordCase{0, false, true}, WordCase{0, true, false},
                                     WordCase{1, true, true}, WordCase{1, false, false},
                                     WordCase{2, false, true}, WordCase{2, true, false},
                                     WordCase{-1, false, true})),
    [](const auto& row) {
      const WordCase& state = std::get<1>(row.param);
      const std::string number =
          state.word < 0 ? "Minus" + std::to_string(-state.word) : std::to_string(state.word);
      return std::string(std::get<0>(row.param).name) + number +
             (state.checked ? "Checked" : "Unchecked");
    });

TEST_P(OptionsCheckState, TurnsOnlyWhenBoxAndWordAgree) {
  const auto& [check, state] = GetParam();
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  check.word(stage) = state.word;
  stage.windows().CheckDlgButton(stage.page(), check.control, state.checked ? 1 : 0);
  stage.SetFavorite(u"mine");
  const DriverDevmode before = stage.context().devmode;
  const std::size_t invalidated = stage.user().Invalidations(1176);
  stage.Command(check.control);
  if (state.turns) {
    EXPECT_EQ(check.word(stage), state.word == 1 ? 0 : 1);
    EXPECT_EQ(stage.user().Checked(check.control), state.word != 1);
    ExpectUntitledThen(stage, 1);
  } else {
    EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
    EXPECT_EQ(stage.user().Checked(check.control), state.checked);
    EXPECT_TRUE(stage.changes.empty());
    EXPECT_EQ(stage.user().Invalidations(1176), invalidated);
  }
}

TEST(OptionsCheckLocked, CollationCannotBeClickedUnderABooklet) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.publicPointer->dmDuplex = 3;
    context.privatePointer->BookletPrint = 1;
  }));
  EXPECT_FALSE(stage.user().Click(1008));
  EXPECT_TRUE(stage.changes.empty());
}

TEST(OptionsPage, OtherCommandsOfTheseControlsAreNotClicks) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const DriverDevmode before = stage.context().devmode;
  for (const std::int32_t id : {1008, 1496, 1422, 1394, 1242, 1243, 1240, 1125, 1241, 1064}) {
    for (const std::uint16_t code : {kCbnSelChange, kEnChange, kEnKillFocus}) {
      stage.Command(id, code);
    }
  }
  stage.Command(1176);
  stage.Command(1447);
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
}

// ---- A name that is untitled already ------------------------------------------------------------

struct UntitledCase {
  const char* name;
  const char16_t* text;  // of string 5005; null when it is missing
  const char16_t* expected;
};

class OptionsUntitled : public testing::TestWithParam<UntitledCase> {};

INSTANTIATE_TEST_SUITE_P(Texts, OptionsUntitled,
                         testing::Values(UntitledCase{"Loaded", u"Ohne Titel", u"Ohne Titel"},
                                         UntitledCase{"Missing", nullptr, u"Untitled"}),
                         test::CaseName());

TEST_P(OptionsUntitled, NameTakesTheFavouritesPlace) {
  OptionsStage stage;
  if (GetParam().text == nullptr) {
    stage.language.strings.erase(5005);
  } else {
    stage.language.strings[5005] = GetParam().text;
  }
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(u"mine");
  EXPECT_TRUE(stage.user().Click(1422));
  EXPECT_EQ(stage.favorite(), GetParam().expected);
}

TEST(OptionsUntitledName, NameThatIsThereIsNotWrittenAgain) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const std::u16string untitled = OptionsStage::Text(5005);
  stage.SetFavorite(untitled);
  stage.own().FavoriteName[untitled.size() + 1] = u'#';  // behind the terminator
  EXPECT_TRUE(stage.user().Click(1422));
  EXPECT_EQ(stage.own().FavoriteName[untitled.size() + 1], u'#');
}

// The field holds 255 units and a terminator: the longest name is cut to it.
TEST(OptionsUntitledName, LongNameIsCutToTheField) {
  OptionsStage stage;
  stage.language.strings[5005] = std::u16string(300, u'x');
  ASSERT_TRUE(stage.Open());
  stage.own().FavoriteIndex = 0x1234;
  EXPECT_TRUE(stage.user().Click(1422));
  EXPECT_EQ(stage.favorite(), std::u16string(255, u'x'));
  EXPECT_EQ(stage.own().FavoriteIndex, 0x1234);
}

// ---- Reverse order ------------------------------------------------------------------------------

TEST(ReverseClick, TurnedOnLocksTwoSidedPrinting) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(u"mine");
  stage.shared().dmCopies = 33;  // a reload would show it
  const std::size_t invalidated = stage.user().Invalidations(1176);
  stage.onChange = [&] {
    EXPECT_FALSE(stage.user().Enabled(1240));
    EXPECT_TRUE(stage.user().Shown(1447));
    EXPECT_EQ(stage.user().Invalidations(1176), invalidated);
  };
  EXPECT_TRUE(stage.user().Click(1394));
  EXPECT_EQ(stage.own().ReversePrint, 1);
  EXPECT_TRUE(stage.user().Checked(1394));
  for (const std::int32_t id : {1240, 1125, 1241}) {
    EXPECT_FALSE(stage.user().Enabled(id)) << id;
  }
  EXPECT_TRUE(stage.user().Shown(1447));
  ExpectUntitledThen(stage, 1);
  EXPECT_EQ(stage.user().Invalidations(1176), invalidated + 1);
  EXPECT_EQ(stage.user().Text(1019), u"1");
  EXPECT_TRUE(AskPages(&PageLinks::duplexAllowed));  // only the rule takes that back
}

TEST(ReverseClick, TurnedOffShowsTheRecordAgain) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->ReversePrint = 1; }));
  ASSERT_FALSE(stage.user().Enabled(1240));
  stage.SetFavorite(u"mine");
  stage.shared().dmCopies = 33;
  EXPECT_TRUE(stage.user().Click(1394));
  EXPECT_EQ(stage.own().ReversePrint, 0);
  EXPECT_FALSE(stage.user().Checked(1394));
  for (const std::int32_t id : {1240, 1125, 1241}) {
    EXPECT_TRUE(stage.user().Enabled(id)) << id;
  }
  EXPECT_FALSE(stage.user().Shown(1447));
  EXPECT_EQ(stage.user().Text(1019), u"33");
  ExpectUntitledThen(stage, 1);
}

// The reload comes before the name goes: the factory favourite still unlocks.
TEST(ReverseClick, TurnedOffReloadsUnderTheOldName) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->ReversePrint = 1; }));
  stage.SetFavorite(OptionsStage::Text(4011));
  TellPages(&PageLinks::jobModeAllowed, false);
  EXPECT_TRUE(stage.user().Click(1394));
  EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
}

class ReverseClickState : public testing::TestWithParam<WordCase> {};

INSTANTIATE_TEST_SUITE_P(States, ReverseClickState,
                         testing::Values(WordCase{0, false, true}, WordCase{0, true, false},
                                         WordCase{1, true, true}, WordCase{1, false, false},
                                         WordCase{2, false, true}, WordCase{2, true, true}),
                         [](const auto& row) {
                           return std::to_string(row.param.word) +
                                  (row.param.checked ? "Checked" : "Unchecked");
                         });

TEST_P(ReverseClickState, DoesNothingWhenTheWordIsThereAlready) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().ReversePrint = GetParam().word;
  stage.windows().CheckDlgButton(stage.page(), 1394, GetParam().checked ? 1 : 0);
  stage.SetFavorite(u"mine");
  const DriverDevmode before = stage.context().devmode;
  stage.Command(1394);
  if (GetParam().turns) {
    EXPECT_EQ(stage.own().ReversePrint, GetParam().checked ? 0 : 1);
    EXPECT_EQ(stage.user().Checked(1394), !GetParam().checked);
    ExpectUntitledThen(stage, 1);
  } else {
    EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
    EXPECT_EQ(stage.user().Checked(1394), GetParam().checked);
    EXPECT_TRUE(stage.changes.empty());
  }
}

TEST(ReverseClick, KeepsItsValueUnderTwoSidedPrintingUntilThePageStartsAnew) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().ReversePrint = 1;
  stage.shared().dmDuplex = 2;
  stage.ShowAgain();
  EXPECT_FALSE(stage.user().Click(1394));
  EXPECT_EQ(stage.own().ReversePrint, 1);
  EXPECT_TRUE(stage.user().Checked(1394));
  EXPECT_TRUE(stage.sheet->PressOk());
  EXPECT_EQ(stage.scene.out.privateDevmode.ReversePrint, 1);
  stage.scene.in = stage.scene.out;
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.own().ReversePrint, 0);
}

// ---- The resolution -----------------------------------------------------------------------------

struct ResolutionCase {
  const char* name;
  std::int32_t control;
  std::int16_t dotsPerInch;
  std::int16_t mode;
};
const ResolutionCase kResolutionCases[] = {{"Dpi600", 1242, 600, 0}, {"Dpi1200", 1243, 1200, 1}};

class ResolutionClick : public testing::TestWithParam<ResolutionCase> {};

INSTANTIATE_TEST_SUITE_P(Radios, ResolutionClick, testing::ValuesIn(kResolutionCases),
                         test::CaseName());

TEST_P(ResolutionClick, SetsBothWordsAndTheMode) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const std::int32_t other = GetParam().control == 1242 ? 1243 : 1242;
  EXPECT_TRUE(stage.user().Click(other));
  stage.shared().dmPrintQuality = 17;
  stage.shared().dmYResolution = 18;
  stage.changes.clear();
  stage.SetFavorite(u"mine");
  stage.onChange = [&] { EXPECT_TRUE(stage.user().Checked(GetParam().control)); };
  EXPECT_TRUE(stage.user().Click(GetParam().control));
  EXPECT_EQ(stage.shared().dmPrintQuality, GetParam().dotsPerInch);
  EXPECT_EQ(stage.shared().dmYResolution, GetParam().dotsPerInch);
  EXPECT_EQ(stage.own().PrintMode, GetParam().mode);
  EXPECT_TRUE(stage.user().Checked(GetParam().control));
  EXPECT_FALSE(stage.user().Checked(other));
  ExpectUntitledThen(stage, 1);
}

// The words are written, and nobody is told.
TEST_P(ResolutionClick, OnTheCheckedRadioWritesInSilence) {
  OptionsStage stage;
  ASSERT_TRUE(
      stage.Open([](UIContext& context) { context.privatePointer->PrintMode = GetParam().mode; }));
  stage.SetFavorite(u"mine");
  stage.shared().dmPrintQuality = 17;
  stage.shared().dmYResolution = 18;
  stage.own().PrintMode = 2;
  EXPECT_TRUE(stage.user().Click(GetParam().control));
  EXPECT_EQ(stage.shared().dmPrintQuality, GetParam().dotsPerInch);
  EXPECT_EQ(stage.shared().dmYResolution, GetParam().dotsPerInch);
  EXPECT_EQ(stage.own().PrintMode, GetParam().mode);
  EXPECT_EQ(stage.favorite(), u"mine");
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_FALSE(stage.sheet->CanApply());
}

// ---- The job mode -------------------------------------------------------------------------------

TEST(JobModeChange, StoresTheRowsValueAndTakesTheNameAway) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::int16_t mode : {std::int16_t{2}, std::int16_t{1}, std::int16_t{0}}) {
    stage.SetFavorite(u"mine");
    TellPages(&PageLinks::jobModeAllowed, false);
    stage.TakeChanges();
    EXPECT_TRUE(stage.user().Choose(1393, mode));
    ASSERT_EQ(stage.changes.size(), 1U);
    EXPECT_EQ(stage.changes[0].privateDevmode.JobMode, mode);
    EXPECT_EQ(std::u16string(stage.changes[0].privateDevmode.FavoriteName),
              OptionsStage::Text(5005));
    EXPECT_EQ(stage.own().JobMode, mode);
    EXPECT_EQ(stage.user().Selected(1393), mode);
    EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
    EXPECT_TRUE(AskPages(&PageLinks::jobModeAllowed));
  }
  EXPECT_TRUE(stage.sheet->CanApply());
}

TEST(JobModeChange, RowInForceLeavesTheName) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->JobMode = 1; }));
  stage.SetFavorite(u"mine");
  EXPECT_TRUE(stage.user().Choose(1393, 1));
  EXPECT_EQ(stage.favorite(), u"mine");
  EXPECT_EQ(stage.own().JobMode, 1);
  EXPECT_FALSE(stage.sheet->CanApply());
}

TEST(JobModeChange, KeepsTheNameWhenTheUntitledOneIsMissing) {
  OptionsStage stage;
  stage.language.strings.erase(5005);
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(u"mine");
  EXPECT_TRUE(stage.user().Choose(1393, 1));
  EXPECT_EQ(stage.own().JobMode, 1);
  EXPECT_EQ(stage.favorite(), u"mine");
}

// By its place first, whatever is there, and by its value with the reload.
TEST(JobModeChange, SelectsTheResultingModeByItsPlaceAndThenReloads) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->JobMode = 7; }));
  const std::vector<OptionsStage::Sent>& sent = stage.Watch(stage.Item(1393));
  stage.Command(1393, kCbnSelChange);
  std::vector<std::uintptr_t> places;
  for (const OptionsStage::Sent& message : sent) {
    if (message.message == kCbSetCurSel) {
      places.push_back(message.wParam);
    }
  }
  EXPECT_EQ(places, (std::vector<std::uintptr_t>{7, ~std::uintptr_t{0}}));
}

TEST(JobModeChange, ShowsTheRecordAgain) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmCopies = 33;
  EXPECT_TRUE(stage.user().Choose(1393, 1));
  EXPECT_EQ(stage.user().Text(1019), u"33");
}

struct ModeLockCase {
  const char* name;
  std::function<void(PrivateDevmode&)> set;
  bool allowed;
};
void PrintTo(const ModeLockCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const ModeLockCase kModeLockCases[] = {
    {"Nothing", [](PrivateDevmode&) {}, true},
    {"PosterPages", [](PrivateDevmode& own) { own.MultipleUp = 22; }, false},
    {"PosterFlagAlone", [](PrivateDevmode& own) { own.PosterPrint = 1; }, true},
    {"Booklet", [](PrivateDevmode& own) { own.BookletPrint = 1; }, false},
    {"TextWatermark", [](PrivateDevmode& own) { own.WatermarkData.PageWMFlag = 1; }, false},
    {"ImageWatermark", [](PrivateDevmode& own) { own.WatermarkData.PageWMFlag = 2; }, false},
    {"NegativeWatermark", [](PrivateDevmode& own) { own.WatermarkData.PageWMFlag = -1; }, true},
};
// clang-format on

class JobModeLock : public testing::TestWithParam<ModeLockCase> {};

INSTANTIATE_TEST_SUITE_P(Reasons, JobModeLock, testing::ValuesIn(kModeLockCases), test::CaseName());

TEST_P(JobModeLock, TakesAChosenModeBackToZero) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  GetParam().set(stage.own());
  stage.SetFavorite(u"mine");
  TellPages(&PageLinks::jobModeAllowed, !GetParam().allowed);
  EXPECT_TRUE(stage.user().Choose(1393, 2));
  EXPECT_EQ(AskPages(&PageLinks::jobModeAllowed), GetParam().allowed);
  ASSERT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.changes[0].privateDevmode.JobMode, GetParam().allowed ? 2 : 0);
  EXPECT_EQ(stage.own().JobMode, GetParam().allowed ? 2 : 0);
  EXPECT_EQ(stage.user().Selected(1393), GetParam().allowed ? 2 : 0);
  EXPECT_EQ(stage.user().Enabled(1393), GetParam().allowed);
  EXPECT_EQ(stage.user().Shown(1450), !GetParam().allowed);
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
}

// The row in force is chosen once more while a lock has come up: the mode goes, and that is told.
TEST_P(JobModeLock, TakesTheModeInForceBackAndTellsIt) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->JobMode = 2; }));
  GetParam().set(stage.own());
  EXPECT_TRUE(stage.user().Choose(1393, 2));
  EXPECT_EQ(stage.own().JobMode, GetParam().allowed ? 2 : 0);
  EXPECT_EQ(stage.changes.size(), GetParam().allowed ? 0U : 1U);
}

TEST(JobModeChange, WithoutASelectedRowKeepsTheMode) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->JobMode = 7; }));
  stage.SetFavorite(u"mine");
  ASSERT_EQ(stage.user().Selected(1393), -1);
  stage.Command(1393, kCbnSelChange);
  EXPECT_EQ(stage.own().JobMode, 7);
  EXPECT_EQ(stage.user().Selected(1393), -1);
  EXPECT_EQ(stage.favorite(), u"mine");
}

// ---- The defaults -------------------------------------------------------------------------------

// A record that differs from any default in each word that the button is about.
void SetFarFromDefaults(OptionsStage& stage) {
  PublicDevmode& shared = stage.shared();
  PrivateDevmode& own = stage.own();
  shared.dmCopies = 9;
  shared.dmDuplex = 2;
  own.Duplex = 5;
  shared.dmCollate = 1;
  shared.dmPrintQuality = 1200;
  shared.dmYResolution = 1200;
  own.FinessMode = 3;
  own.ReversePrint = 1;
  own.JobMode = 2;
  own.JobFlag = 1;
  own.PrintMode = 1;
  own.sLaserTestAPResolution = 2;
  shared.dmMediaType = 266;
  own.PosterPrint = 1;
}

bool StoreFactoryFavorite(const std::u16string& name, std::function<void(DriverDevmode&)> set) {
  auto context = std::make_unique<UIContext>();
  InitDriverDevmode(&context->devmode, test::kDriverName, nullptr);
  set(context->devmode);
  context->publicPointer = &context->devmode.publicDevmode;
  context->privatePointer = &context->devmode.privateDevmode;
  const FavoriteStore store;
  return store.Init() && store.Save(name.c_str(), *context);
}

TEST(DefaultsClick, TakesItsWordsFromTheStoredFavourite) {
  OptionsStage stage;
  ASSERT_TRUE(StoreFactoryFavorite(OptionsStage::Text(202), [](DriverDevmode& record) {
    record.publicDevmode.dmCopies = 5;
    record.publicDevmode.dmDuplex = 3;
    record.publicDevmode.dmCollate = 0;
    record.publicDevmode.dmPrintQuality = 300;
    record.publicDevmode.dmYResolution = 301;
    record.publicDevmode.dmPaperSize = 13;
    record.privateDevmode.FinessMode = 1;
    record.privateDevmode.ReversePrint = 0;
    record.privateDevmode.JobMode = 1;
    record.privateDevmode.JobFlag = 1;
    record.privateDevmode.PrintMode = 1;
    record.privateDevmode.sLaserTestAPResolution = 1;
    record.privateDevmode.MultipleUp = 4;
  }));
  ASSERT_TRUE(stage.Open());
  SetFarFromDefaults(stage);
  stage.SetFavorite(u"mine");
  const DriverDevmode before = stage.context().devmode;
  const std::size_t invalidated = stage.user().Invalidations(1176);
  stage.onChange = [&] {
    // Shown and asked to be drawn before the sheet is told; the focus returns behind that.
    EXPECT_EQ(stage.user().Text(1019), u"5");
    EXPECT_EQ(stage.user().Invalidations(1176), invalidated + 1);
  };
  EXPECT_TRUE(stage.user().Click(1064));
  DriverDevmode expected = before;
  expected.publicDevmode.dmCopies = 5;
  expected.publicDevmode.dmDuplex = 3;
  expected.privateDevmode.Duplex = 3;
  expected.publicDevmode.dmCollate = 0;
  expected.publicDevmode.dmPrintQuality = 300;
  expected.privateDevmode.FinessMode = 1;
  expected.privateDevmode.ReversePrint = 0;
  expected.privateDevmode.JobMode = 0;
  expected.privateDevmode.JobFlag = 0;
  expected.privateDevmode.PrintMode = 0;
  expected.privateDevmode.sLaserTestAPResolution = 0;
  expected.privateDevmode.SourceTray = before.publicDevmode.dmDefaultSource;  // by the reload
  std::memcpy(expected.privateDevmode.FavoriteName, stage.own().FavoriteName,
              sizeof(expected.privateDevmode.FavoriteName));
  EXPECT_EQ(std::memcmp(&expected, &stage.context().devmode, sizeof(expected)), 0);
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(202));
  EXPECT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(std::u16string(stage.changes.at(0).privateDevmode.FavoriteName),
            OptionsStage::Text(202));
  EXPECT_EQ(stage.user().Focus(), 1064);
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_TRUE(stage.user().Checked(1241));
  EXPECT_TRUE(stage.user().Checked(1242));
  EXPECT_TRUE(stage.user().Checked(1422));
  EXPECT_EQ(stage.user().Selected(1393), 0);
}

TEST(DefaultsClick, LeavesTheStoredFavouriteAsItIs) {
  OptionsStage stage;
  ASSERT_TRUE(StoreFactoryFavorite(OptionsStage::Text(202), [](DriverDevmode&) {}));
  ASSERT_TRUE(stage.Open());
  NameList before;
  const FavoriteStore store;
  const int count = store.List(before);
  EXPECT_TRUE(stage.user().Click(1064));
  NameList after;
  EXPECT_EQ(store.List(after), count);
  EXPECT_EQ(before.rows, after.rows);
}

TEST(DefaultsClick, GoesByTheNameOfString202) {
  OptionsStage stage;
  stage.language.strings[4011] = u"Other";
  stage.language.strings[202] = u"Mine";
  ASSERT_TRUE(StoreFactoryFavorite(
      u"Mine", [](DriverDevmode& record) { record.publicDevmode.dmCopies = 6; }));
  ASSERT_TRUE(StoreFactoryFavorite(
      u"Other", [](DriverDevmode& record) { record.publicDevmode.dmCopies = 7; }));
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_EQ(stage.shared().dmCopies, 6);
  EXPECT_EQ(stage.favorite(), u"Mine");
}

// Where nothing was ever stored, the driver's own defaults stand for that favourite.
TEST(DefaultsClick, WithoutAStoredFavouriteTakesTheDriversDefaults) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  SetFarFromDefaults(stage);
  EXPECT_TRUE(stage.user().Click(1064));
  DriverDevmode plain;
  InitDriverDevmode(&plain, test::kDriverName, nullptr);
  EXPECT_EQ(stage.shared().dmCopies, plain.publicDevmode.dmCopies);
  EXPECT_EQ(stage.shared().dmDuplex, plain.publicDevmode.dmDuplex);
  EXPECT_EQ(stage.own().Duplex, plain.publicDevmode.dmDuplex);
  EXPECT_EQ(stage.shared().dmCollate, plain.publicDevmode.dmCollate);
  EXPECT_EQ(stage.shared().dmPrintQuality, plain.publicDevmode.dmPrintQuality);
  EXPECT_EQ(stage.own().FinessMode, plain.privateDevmode.FinessMode);
  EXPECT_EQ(stage.own().ReversePrint, plain.privateDevmode.ReversePrint);
  EXPECT_EQ(stage.own().JobMode, 0);
  EXPECT_EQ(stage.own().JobFlag, 0);
  EXPECT_EQ(stage.own().PrintMode, 0);
  EXPECT_EQ(stage.own().sLaserTestAPResolution, 0);
  EXPECT_EQ(stage.shared().dmYResolution, 1200);
  EXPECT_EQ(stage.shared().dmMediaType, 266U);
  EXPECT_EQ(stage.own().PosterPrint, 1);
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(202));
  EXPECT_EQ(stage.changes.size(), 1U);
  EXPECT_EQ(stage.user().Focus(), 1064);
}

// Other pages change the copy of the defaults, and another printer's context replaces it.
TEST(DefaultsClick, ChangedCopyOfTheDefaultsIsNotTaken) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  ASSERT_NE(Process().DefaultContextCopy, nullptr);
  Process().DefaultContextCopy->publicPointer->dmCopies = 7;
  Process().DefaultContextCopy->privatePointer->FinessMode = 1;
  SetFarFromDefaults(stage);
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_EQ(stage.shared().dmCopies, 1);
  EXPECT_EQ(stage.own().FinessMode, 0);
}

TEST(DefaultsClick, WithoutTheFavouritesNameLeavesNoMarkerInTheRecord) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(u"mine");
  auto library = std::make_shared<headless::Resources>(stage.language);
  library->strings.erase(202);
  stage.world().platform.modules.InstallResources(u"C:\\without.dll", library);
  stage.context().languageModule = stage.world().platform.modules.LoadLibraryW(u"C:\\without.dll");
  SetFarFromDefaults(stage);
  EXPECT_TRUE(stage.user().Click(1064));
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
  EXPECT_EQ(stage.shared().dmCopies, 1);
}

TEST(DefaultsClick, WithoutMemoryClaimsNoFavourite) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.SetFavorite(u"mine");
  SetFarFromDefaults(stage);
  stage.world().platform.faults.FailOperation("HeapAlloc");
  EXPECT_TRUE(stage.user().Click(1064));
  stage.world().platform.faults.Clear();
  EXPECT_EQ(stage.favorite(), OptionsStage::Text(5005));
  EXPECT_EQ(stage.shared().dmCopies, 9);
  EXPECT_EQ(stage.own().JobMode, 0);
  EXPECT_EQ(stage.changes.size(), 1U);
}

TEST(DefaultsClick, UnderABookletWarnsAndDoesNothingElse) {
  OptionsStage stage;
  ASSERT_TRUE(StoreFactoryFavorite(OptionsStage::Text(202), [](DriverDevmode&) {}));
  ASSERT_TRUE(stage.Open());
  SetFarFromDefaults(stage);
  stage.own().BookletPrint = 1;
  stage.SetFavorite(u"mine");
  stage.ShowAgain();
  const DriverDevmode before = stage.context().devmode;
  const std::size_t invalidated = stage.user().Invalidations(1176);
  EXPECT_TRUE(stage.user().Click(1064));
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, OptionsStage::Text(5088));
  EXPECT_EQ(stage.boxes()[0].caption, OptionsStage::Text(5004));
  EXPECT_EQ(stage.boxes()[0].style, 48U);
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
  EXPECT_EQ(stage.user().Invalidations(1176), invalidated);
  EXPECT_EQ(stage.user().Focus(), 1064);
}

class DefaultsClickFocus : public testing::TestWithParam<bool> {};

INSTANTIATE_TEST_SUITE_P(Booklet, DefaultsClickFocus, testing::Bool(),
                         testing::PrintToStringParamName());

TEST_P(DefaultsClickFocus, ReturnsToTheButtonInEitherCase) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.own().BookletPrint = GetParam() ? 1 : 0;
  EXPECT_TRUE(stage.user().MoveFocus(1422));
  stage.Command(1064);
  EXPECT_EQ(stage.user().Focus(), 1064);
}

}  // namespace
}  // namespace ostrel
