// The pictures of the print options page: the one of two-sided printing, and those that the page
// draws itself, for its own template and for older ones.
#include "pages/options_stage.h"

#include <tuple>

namespace ostrel {
namespace {

using test::OptionsStage;

// ---- Two-sided printing -------------------------------------------------------------------------

struct PictureCase {
  const char* name;
  std::int16_t orientation, duplex, booklet;
  std::uint32_t picture;
};
void PrintTo(const PictureCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const PictureCase kPictureCases[] = {
    {"PortraitOneSided",        1, 1, 0,  631},
    {"PortraitLongEdge",        1, 2, 0,  902},
    {"PortraitShortEdge",       1, 3, 0,  905},
    {"PortraitBooklet",         1, 3, 1, 1072},
    {"LandscapeOneSided",       2, 1, 0, 1068},
    {"LandscapeLongEdge",       2, 2, 0, 1065},
    {"LandscapeShortEdge",      2, 3, 0, 1066},
    {"LandscapeBooklet",        2, 3, 1, 1071},
    {"PortraitOneSidedBooklet", 1, 1, 1,  631},
    {"PortraitLongEdgeBooklet", 1, 2, 1,  902},
    {"LandscapeOneSidedBooklet",2, 1, 1, 1068},
    {"LandscapeLongEdgeBooklet",2, 2, 1, 1065},
};
// clang-format on

class DuplexPicture : public testing::TestWithParam<PictureCase> {};

INSTANTIATE_TEST_SUITE_P(Cells, DuplexPicture, testing::ValuesIn(kPictureCases), test::CaseName());

TEST_P(DuplexPicture, FollowsDuplexOrientationAndBooklet) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmOrientation = GetParam().orientation == 1 ? 2 : 1;
  stage.shared().dmDuplex = GetParam().duplex == 1 ? 2 : 1;
  stage.ShowAgain();
  stage.shared().dmOrientation = GetParam().orientation;
  stage.shared().dmDuplex = GetParam().duplex;
  stage.own().BookletPrint = GetParam().booklet;
  stage.ShowAgain();
  EXPECT_EQ(stage.DuplexPicture(), GetParam().picture);
  EXPECT_EQ(stage.graphics().liveBitmaps(), 1U);
}

class DuplexPictureKept : public testing::TestWithParam<std::tuple<std::int16_t, std::int16_t>> {};

INSTANTIATE_TEST_SUITE_P(Values, DuplexPictureKept,
                         testing::Values(std::tuple<std::int16_t, std::int16_t>{0, 1},
                                         std::tuple<std::int16_t, std::int16_t>{3, 1},
                                         std::tuple<std::int16_t, std::int16_t>{-1, 2},
                                         std::tuple<std::int16_t, std::int16_t>{1, 0},
                                         std::tuple<std::int16_t, std::int16_t>{1, 4},
                                         std::tuple<std::int16_t, std::int16_t>{2, 5},
                                         std::tuple<std::int16_t, std::int16_t>{2, -3}),
                         [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST_P(DuplexPictureKept, StaysForValuesWithoutACell) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  ASSERT_EQ(stage.DuplexPicture(), 631U);
  std::tie(stage.shared().dmOrientation, stage.shared().dmDuplex) = GetParam();
  stage.ShowAgain();
  EXPECT_EQ(stage.DuplexPicture(), 631U);
  EXPECT_EQ(stage.graphics().liveBitmaps(), 1U);
}

TEST(DuplexPictureResource, MissingBitmapLeavesThePictureBefore) {
  OptionsStage stage;
  headless::Resources bitmaps = *test::LibraryResources("ResBmp");
  bitmaps.bitmaps.erase(902);
  bitmaps.entries.erase({2, 902});
  stage.world().platform.modules.InstallResources(
      test::kBitmapLibraryPath, std::make_shared<const headless::Resources>(std::move(bitmaps)));
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_EQ(stage.DuplexPicture(), 631U);
  EXPECT_EQ(stage.shared().dmDuplex, 2);
}

TEST(DuplexPictureResource, NoneIsLoadedForAControlThatIsNotThere) {
  OptionsStage stage;
  stage.RemoveControl(1453);
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_EQ(stage.graphics().liveBitmaps(), 0U);
}

TEST(DuplexPictureResource, NoneOutlivesThePage) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.graphics().liveBitmaps(), 1U);
  EXPECT_TRUE(stage.sheet->PressCancel());
  EXPECT_EQ(stage.graphics().liveBitmaps(), 0U);
  EXPECT_EQ(stage.graphics().liveContexts(), 0U);
}

// ---- Pictures that the page draws ---------------------------------------------------------------

struct DrawCase {
  const char* name;
  std::uint32_t control;
  std::function<void(PublicDevmode&, PrivateDevmode&)> set;
  std::uint32_t bitmap;
  std::uint32_t transparent;
  bool fromLanguage = false;
};
void PrintTo(const DrawCase& row, std::ostream* out) {
  *out << row.name;
}
constexpr std::uint32_t kMagenta = 0xFF00FF;
constexpr std::uint32_t kGray = 15660020;

auto Collation(std::int16_t collate, std::int16_t reverse) {
  return [=](PublicDevmode& shared, PrivateDevmode& own) {
    shared.dmCollate = collate;
    own.ReversePrint = reverse;
  };
}
auto Feed(std::int16_t feed) {
  return [feed](PublicDevmode&, PrivateDevmode& own) { own.FeedOrient = feed; };
}
void Nothing(PublicDevmode& /*shared*/, PrivateDevmode& /*own*/) {}

// clang-format off
const DrawCase kDrawCases[] = {
    {"LanguagesPicture",        1022, Nothing,          115, 0xFFFFFF, true},
    {"FeedZero",                1032, Feed(0),          902, kMagenta},
    {"FeedOne",                 1032, Feed(1),          902, kMagenta},
    {"FeedTwo",                 1032, Feed(2),          903, kMagenta},
    {"FeedMinusOne",            1032, Feed(-1),         903, kMagenta},
    {"ShortEdge",               1033, Nothing,          905, kMagenta},
    {"Poster",                  1066, Nothing,          901, kGray},
    {"OneSided",                1174, Nothing,          631, kMagenta},
    {"LongEdge",                1387, Nothing,          902, kMagenta},
    {"Uncollated",              1176, Collation(0, 0),  425, kGray},
    {"UncollatedReverse",       1176, Collation(0, 1), 5021, kGray},
    {"CollatedReverse",         1176, Collation(1, 1), 5008, kGray},
    {"Collated",                1176, Collation(1, 0),  426, kGray},
    {"UncollatedReverseTwo",    1176, Collation(0, 2),  426, kGray},
    {"CollatedReverseTwo",      1176, Collation(1, 2),  426, kGray},
    {"CollatedReverseMinusOne", 1176, Collation(1, -1), 426, kGray},
    {"CollateTwo",              1176, Collation(2, 0),  426, kGray},
    {"CollateTwoReverse",       1176, Collation(2, 1),  426, kGray},
    {"CollateMinusOne",         1176, Collation(-1, 0), 426, kGray},
};
// clang-format on

// Both libraries hold every bitmap here, of its own size, so that a picture tells where it is from.
headless::Resources WithBitmaps(headless::Resources resources, std::int32_t firstSize) {
  for (const std::uint32_t id : {115U, 425U, 426U, 631U, 901U, 902U, 903U, 905U, 5008U, 5021U}) {
    resources.bitmaps[id] = {.width = firstSize, .height = firstSize + 10};
    resources.entries.emplace(2, id);
    firstSize += 2;
  }
  return resources;
}

class OptionsDraw : public testing::TestWithParam<DrawCase> {
 protected:
  void SetUp() override {
    stage.language = WithBitmaps(stage.language, 100);
    stage.world().platform.modules.InstallResources(
        test::kBitmapLibraryPath, std::make_shared<const headless::Resources>(
                                      WithBitmaps(*test::LibraryResources("ResBmp"), 10)));
    ASSERT_TRUE(stage.Open());
    GetParam().set(stage.shared(), stage.own());
  }

  // Sends the request; `place` is the item's.
  std::intptr_t Draw(DeviceContext context, const Rect& place) {
    DrawItem order = {};
    order.CtlType = 5;
    order.CtlID = GetParam().control;
    order.hDC = context;
    order.rcItem = place;
    return stage.CallProcedure(kWmDrawItem, order.CtlID, reinterpret_cast<std::intptr_t>(&order));
  }

  const headless::BitmapResource& Bitmap() {
    const auto& modules = stage.world().platform.modules;
    const ModuleHandle module =
        GetParam().fromLanguage ? stage.context().languageModule : stage.context().bitmapModule;
    return modules.ResourcesOf(module)->bitmaps.at(GetParam().bitmap);
  }

  OptionsStage stage;
};

INSTANTIATE_TEST_SUITE_P(Controls, OptionsDraw, testing::ValuesIn(kDrawCases), test::CaseName());

TEST_P(OptionsDraw, ShowsItsBitmapInTheMiddleWithoutItsBackground) {
  headless::HeadlessGraphics& graphics = stage.graphics();
  const DeviceContext context = graphics.BeginPaint(stage.Item(1176));
  EXPECT_EQ(Draw(context, {3, 5, 3 + 201, 5 + 303}), 1);
  graphics.EndPaint(context);
  ASSERT_EQ(graphics.copies.size(), 1U);
  const auto& copy = graphics.copies[0];
  const std::int32_t width = Bitmap().width;
  const std::int32_t height = Bitmap().height;
  const std::int32_t left = 3 + (201 - width) / 2;
  const std::int32_t top = 5 + (303 - height) / 2;
  EXPECT_EQ(copy.bitmap, GetParam().bitmap);
  EXPECT_EQ(copy.place, (Rect{left, top, left + width, top + height}));
  EXPECT_EQ(copy.from.x, 0);
  EXPECT_EQ(copy.from.y, 0);
  EXPECT_EQ(copy.transparentColor, GetParam().transparent);
  EXPECT_EQ(copy.layout, 0U);
  EXPECT_EQ(graphics.liveBitmaps(), 1U);  // the page's own picture
  EXPECT_EQ(graphics.liveContexts(), 0U);
}

// What it says about left and right stays true, and the context goes back as it came.
TEST_P(OptionsDraw, IsNotTurnedRoundInAMirroredWindow) {
  headless::HeadlessGraphics& graphics = stage.graphics();
  const DeviceContext context = graphics.BeginPaint(stage.Item(1176));
  graphics.SetLayout(context, kLayoutRightToLeft);
  EXPECT_EQ(Draw(context, {0, 0, 200, 300}), 1);
  EXPECT_EQ(graphics.GetLayout(context), kLayoutRightToLeft);
  graphics.EndPaint(context);
  ASSERT_EQ(graphics.copies.size(), 1U);
  EXPECT_EQ(graphics.copies[0].layout, 0U);
}

class OptionsDrawOther : public testing::TestWithParam<std::uint32_t> {};

INSTANTIATE_TEST_SUITE_P(Controls, OptionsDrawOther,
                         testing::Values(0U, 1019U, 1021U, 1034U, 1453U, 1175U, 1177U, 0xFFFFU),
                         testing::PrintToStringParamName());

TEST_P(OptionsDrawOther, IsNotThePages) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  DrawItem order = {};
  order.CtlID = GetParam();
  order.hDC = stage.graphics().BeginPaint(stage.page());
  order.rcItem = {0, 0, 200, 300};
  EXPECT_EQ(stage.CallProcedure(kWmDrawItem, order.CtlID, reinterpret_cast<std::intptr_t>(&order)),
            0);
  stage.graphics().EndPaint(order.hDC);
  EXPECT_TRUE(stage.graphics().copies.empty());
}

TEST(OptionsDrawShipped, TemplateAsksForTheCollationPictureAlone) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  for (const auto& control : stage.dialog().controls) {
    const auto drawn = stage.user().Draw(control.id);
    EXPECT_EQ(drawn.has_value(), control.id == 1176) << control.id;
  }
  ASSERT_EQ(stage.graphics().copies.size(), 1U);
  EXPECT_EQ(stage.graphics().copies[0].bitmap, 425U);
}

TEST(OptionsDrawShipped, BitmapThatIsMissingDrawsNothing) {
  OptionsStage stage;
  stage.world().platform.modules.InstallResources(test::kBitmapLibraryPath,
                                                  std::make_shared<const headless::Resources>());
  ASSERT_TRUE(stage.Open());
  const auto drawn = stage.user().Draw(1176);
  ASSERT_TRUE(drawn.has_value());
  EXPECT_TRUE(drawn->empty());
}

// The Hebrew dialog is mirrored; its pictures aren't.
TEST(OptionsDrawShipped, HebrewPageDrawsUpright) {
  constexpr std::uint16_t kHebrew = 0x040D;
  OptionsStage stage;
  std::u16string path = test::kEnglishLibraryPath;
  path.replace(path.find(u"enus"), 4, u"he");
  stage.world().platform.modules.InstallResources(path, test::LibraryResources("he"));
  stage.world().platform.locale.uiLanguage = kHebrew;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.world().process.RightToLeftLanguage);
  EXPECT_EQ(stage.user().Text(1008), test::Strings("he").at(1010));
  const auto drawn = stage.user().Draw(1176);
  ASSERT_TRUE(drawn.has_value());
  ASSERT_EQ(drawn->size(), 1U);
  EXPECT_EQ(drawn->at(0).layout, 0U);
}

// ---- Heights of an older template's lists -------------------------------------------------------

struct MeasureCase {
  const char* name;
  std::int32_t dotsPerInch;
};

class OptionsMeasure : public testing::TestWithParam<std::tuple<std::uint32_t, MeasureCase>> {};

INSTANTIATE_TEST_SUITE_P(
    Lists, OptionsMeasure,
    testing::Combine(testing::Values(1009U, 1404U),
                     testing::Values(MeasureCase{"None", 0}, MeasureCase{"Low", 72},
                                     MeasureCase{"Usual", 96}, MeasureCase{"Scaled", 144},
                                     MeasureCase{"High", 288})),
    [](const auto& row) {
      return std::get<1>(row.param).name + std::to_string(std::get<0>(row.param));
    });

// How the dots become a height is this page's own; it grows with them and is never below 16.
TEST_P(OptionsMeasure, HeightComesFromTheScreensDots) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const auto& [control, screen] = GetParam();
  const auto measured = [&](std::int32_t dots) {
    stage.graphics().logPixelsY = dots;
    MeasureItem question = {};
    question.CtlType = 3;
    question.CtlID = control;
    question.itemHeight = 5;
    EXPECT_EQ(
        stage.CallProcedure(kWmMeasureItem, control, reinterpret_cast<std::intptr_t>(&question)),
        1);
    return question.itemHeight;
  };
  const std::uint32_t height = measured(screen.dotsPerInch);
  EXPECT_GE(height, 16U);
  EXPECT_LE(height, measured(screen.dotsPerInch * 2 + 200));
  EXPECT_GT(measured(960), 16U);
  EXPECT_EQ(stage.graphics().liveContexts(), 0U);
}

TEST(OptionsMeasureOther, IsNotThePages) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  for (const std::uint32_t control : {1008U, 1393U, 1010U}) {
    MeasureItem question = {};
    question.CtlID = control;
    question.itemHeight = 5;
    EXPECT_EQ(
        stage.CallProcedure(kWmMeasureItem, control, reinterpret_cast<std::intptr_t>(&question)),
        0);
    EXPECT_EQ(question.itemHeight, 5U);
  }
}

// Such lists ask before WM_INITDIALOG, when the page's window doesn't know its context yet.
TEST(OptionsMeasureOther, OlderTemplatesListsOpen) {
  constexpr std::uint32_t kOwnerDrawn = 0x10 | 0x200 | headless::kComboDropDownList;
  OptionsStage stage;
  stage.AddControl(1009, u"combobox", kOwnerDrawn);
  stage.AddControl(1404, u"combobox", kOwnerDrawn);
  ASSERT_TRUE(stage.Open());
  EXPECT_GE(stage.user().Measure(1009), 16U);
  EXPECT_GE(stage.windows().Find(stage.Item(1009))->list.itemHeight, 16U);
}

}  // namespace
}  // namespace ostrel
