// The layout page as it starts, before it is shown: captions, what a model has, and what each
// control holds then.
#include "pages/layout_stage.h"

#include <cstring>

namespace ostrel {
namespace {

using test::LayoutStage;

constexpr const char16_t* kModels[] = {u"Alder 1 Series",   u"Birch 1 Series", u"Cedar 1 Series",
                                       u"Dogwood 1 Series", u"Elm 1 Series",   u"Fir 1 Series",
                                       u"Ginkgo 1 Series",  u"Hazel 2 Series", u"Ironwood 1 Series",
                                       u"Juniper 1 Series", u"Kauri 1 Series"};
struct ModelName {
  std::string operator()(const testing::TestParamInfo<int>& row) const {
    const std::u16string name = kModels[row.param];
    return {name.begin(), name.begin() + static_cast<std::ptrdiff_t>(name.find(u' '))};
  }
};

// ---- Captions -----------------------------------------------------------------------------------

struct CaptionCase {
  std::int32_t control;
  std::uint32_t text;
};
// clang-format off
constexpr CaptionCase kCaptions[] = {
    {1408, 4020}, {1409, 4021}, {1410, 4022}, {1488, 1057}, {1411, 4022}, {1047, 1015},
    {1064, 1011}, {1415, 4059}, {1437, 4061}, {1487, 4057}, {1458, 4057}, {1065,  189},
    {1443,  407}, {1484, 4020}, {1485,  210}, {1486, 6006}, {1387,  195}, {1389,  143},
    {1390,  144}, {1391,  167}, {1392,  168},
};
// clang-format on

TEST(LayoutCaptions, ComeFromTheLanguageLibrary) {
  LayoutStage stage;
  for (auto& control : stage.dialog().controls) {
    control.title = u"#";
  }
  for (const CaptionCase& row : kCaptions) {
    stage.language.strings[row.text] = u"mark " + LayoutStage::Text(row.text);
  }
  ASSERT_TRUE(stage.Open());
  for (const CaptionCase& row : kCaptions) {
    EXPECT_EQ(stage.user().Text(row.control), u"mark " + LayoutStage::Text(row.text))
        << row.control;
  }
}

TEST(LayoutCaptions, StayWhereATextOrAControlIsMissing) {
  for (const CaptionCase& row : kCaptions) {
    LayoutStage stage;
    stage.language.strings.erase(row.text);
    for (auto& control : stage.dialog().controls) {
      control.title = u"#";
    }
    const std::int32_t removed = row.control == 1408 ? 1409 : 1408;
    stage.RemoveControl(removed);
    ASSERT_TRUE(stage.Open());
    EXPECT_EQ(stage.user().Text(row.control), u"#") << row.control;
    EXPECT_FALSE(stage.user().Has(removed));
    EXPECT_EQ(stage.user().Text(row.text == 4059 ? 1437 : 1415),
              LayoutStage::Text(row.text == 4059 ? 4061 : 4059));
  }
}

TEST(LayoutCaptions, PageHasItsTitleAsItsOwnText) {
  LayoutStage stage;
  stage.dialog().title = u"#";
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.windows().Find(stage.page())->text, LayoutStage::Text(126));
}

// ---- Models -------------------------------------------------------------------------------------

class LayoutModel : public testing::TestWithParam<int> {
 protected:
  static bool OffersBooklet() { return GetParam() >= 2; }  // neither Alder nor Birch
  static bool HasAllRows() { return GetParam() >= 5; }     // Fir to Kauri
};

INSTANTIATE_TEST_SUITE_P(Families, LayoutModel, testing::Range(0, 11), ModelName());

TEST_P(LayoutModel, OffersBookletsOrHidesThem) {
  LayoutStage stage;
  stage.SelectModel(kModels[GetParam()]);
  ASSERT_TRUE(stage.Open([](UIContext& context) { context.privatePointer->ReversePrint = 1; }));
  EXPECT_EQ(stage.user().Shown(1486), OffersBooklet());
  EXPECT_EQ(stage.user().Shown(1065), OffersBooklet());
  // The icon is no model's that has no booklets, even while they would be locked.
  EXPECT_EQ(stage.user().Shown(1453), OffersBooklet());
  EXPECT_EQ(stage.user().Image(1453), OffersBooklet() ? 1077U : 0U);
  EXPECT_EQ(stage.state().tooltips[2] != nullptr, OffersBooklet());
  EXPECT_NE(stage.state().tooltips[0], nullptr);
  EXPECT_NE(stage.state().tooltips[1], nullptr);
  EXPECT_EQ(stage.user().Image(1452), 1077U);
  EXPECT_EQ(stage.user().Image(1454), 1077U);
}

TEST_P(LayoutModel, HasItsRowsOfTonerSavingAndThickness) {
  LayoutStage stage;
  stage.SelectModel(kModels[GetParam()]);
  ASSERT_TRUE(stage.Open());
  const auto text = [](std::uint32_t id) { return LayoutStage::Text(id); };
  std::vector<std::u16string> toner = {text(213), text(212)};
  std::vector<std::u16string> thickness = {text(165), text(415), text(166)};
  std::vector<std::uintptr_t> thicknessValues = {1, 2, 3};
  if (HasAllRows()) {
    toner.push_back(text(204));
    thickness.insert(thickness.begin(), text(414));
    thickness.push_back(text(416));
    thicknessValues = {0, 1, 2, 3, 4};
  }
  EXPECT_EQ(stage.user().ItemTexts(1045), toner);
  EXPECT_EQ(stage.user().ItemTexts(1394), thickness);
  EXPECT_EQ(stage.user().ItemData(1394), thicknessValues);
  for (std::size_t row = 0; row < toner.size(); ++row) {
    EXPECT_EQ(stage.user().ItemData(1045)[row], row);
  }
}

// ---- Lists --------------------------------------------------------------------------------------

TEST(LayoutLists, PosterBorderAndOrientationHaveTheirRows) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  using Texts = std::vector<std::u16string>;
  using Values = std::vector<std::uintptr_t>;
  EXPECT_EQ(stage.user().ItemTexts(1044), Texts({LayoutStage::Text(147)}));
  EXPECT_EQ(stage.user().ItemData(1044), Values({22}));
  EXPECT_EQ(stage.user().Selected(1044), 0);
  EXPECT_EQ(stage.user().ItemTexts(1393),
            Texts({LayoutStage::Text(4028), LayoutStage::Text(4029)}));
  EXPECT_EQ(stage.user().ItemData(1393), Values({0, 1}));
  EXPECT_EQ(stage.user().ItemTexts(1048),
            Texts({LayoutStage::Text(4023), LayoutStage::Text(4024)}));
  EXPECT_EQ(stage.user().ItemData(1048), Values({1, 2}));
}

struct OrderCase {
  const char* name;
  std::int16_t pages;
  std::int16_t orientation;
  std::int16_t order;
  std::int32_t row;  // that the start selects; -1 for none
};
void PrintTo(const OrderCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr OrderCase kOrderCases[] = {
    // Name,               Pages, Orientation, Order, Row
    {"TwoFirst",              2,  1,  0,  0},
    {"TwoSecond",             2,  1,  1,  1},
    {"TwoBeyond",             2,  1,  2, -1},
    {"TwoLandscapeFirst",     2,  2,  0,  0},
    {"TwoLandscapeSecond",    2,  2,  1,  1},
    {"FourByPlaceNotValue",   4,  1,  2,  2},
    {"FourThird",             4,  1,  3,  3},
    {"FourBeyond",            4,  1,  4, -1},
    {"FourFarBeyond",         4,  1,  5, -1},
    {"FourZero",              4,  2,  0,  0},
    {"NineByPlace",           9,  1,  3,  3},
    {"NineBeyond",            9,  1,  7, -1},
    {"NineNegative",          9,  1, -1, -1},
    {"One",                   1,  1,  3,  0},
    {"Eight",                 8,  1,  3,  0},
    {"Sixteen",              16,  2,  5,  0},
    {"Poster",               22,  1,  1,  0},
    {"TwentyThree",          23,  1,  1,  0},
    {"Zero",                  0,  1,  1,  0},
    {"MinusOne",             -1,  1,  1,  0},
};
// clang-format on

class LayoutOrders : public testing::TestWithParam<OrderCase> {};

INSTANTIATE_TEST_SUITE_P(Records, LayoutOrders, testing::ValuesIn(kOrderCases), test::CaseName());

TEST_P(LayoutOrders, StartWithTheRowsOfThePagesAndARowByItsPlace) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  const OrderCase& row = GetParam();
  stage.own().MultipleUp = row.pages;
  stage.own().PageOrder = row.order;
  stage.shared().dmOrientation = row.orientation;
  const headless::User user = stage.StartAlone();
  std::vector<std::u16string> texts;
  std::vector<std::uintptr_t> values = {2, 3, 4, 5};
  std::vector<std::uint32_t> ids = {150, 151, 152, 153};
  if (row.pages == 2) {
    ids = row.orientation == 1 ? std::vector<std::uint32_t>{154, 155}
                               : std::vector<std::uint32_t>{410, 412};
    values = {0, 1};
  }
  std::ranges::transform(ids, std::back_inserter(texts), LayoutStage::Text);
  EXPECT_EQ(user.ItemTexts(1046), texts);
  EXPECT_EQ(user.ItemData(1046), values);
  EXPECT_EQ(user.Selected(1046), row.row);
  EXPECT_EQ(stage.own().PageOrder, row.order);
}

// ---- Modes and scale ----------------------------------------------------------------------------

struct StartCase {
  const char* name;
  std::int16_t pages;
  std::int16_t posterPrint;
  std::int16_t booklet;
  std::int16_t negative;
  std::int32_t mode;
  bool pageRadios;
  bool posterList;
  bool bookletButton;
  bool scale;
};
void PrintTo(const StartCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr StartCase kStartCases[] = {
    // Name,            Pages, Poster, Booklet, Negative, Mode, Radios, List, Button, Scale
    {"OnePage",            1, 0, 0, 0, 1484, true,  false, false, true},
    {"TwoPages",           2, 0, 0, 0, 1484, true,  false, false, false},
    {"Poster",            22, 1, 0, 0, 1485, false, true,  false, false},
    {"PosterFlagAlone",    1, 1, 0, 0, 1485, false, true,  false, true},
    {"PosterPagesAlone",  22, 0, 0, 0, 1484, true,  false, false, false},
    {"Booklet",            1, 0, 1, 0, 1486, false, false, true,  true},
    {"BookletAndPoster",  22, 1, 1, 0, 1486, false, true,  true,  false},
    {"Negative",           1, 0, 0, 1, 1484, true,  false, false, false},
    {"ZeroPages",          0, 0, 0, 0, 1484, true,  false, false, true},
};
// clang-format on

class LayoutStart : public testing::TestWithParam<StartCase> {};

INSTANTIATE_TEST_SUITE_P(Records, LayoutStart, testing::ValuesIn(kStartCases), test::CaseName());

TEST_P(LayoutStart, SelectsTheModeAndLocksWhatIsNotItsOwn) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  const StartCase& row = GetParam();
  stage.own().MultipleUp = row.pages;
  stage.own().PosterPrint = row.posterPrint;
  stage.own().BookletPrint = row.booklet;
  stage.own().Negative = row.negative;
  stage.own().ScaleRadio = 150;
  const DriverDevmode before = stage.context().devmode;
  const headless::User user = stage.StartAlone();
  const std::initializer_list<std::int32_t> kModes = {1484, 1485, 1486};
  EXPECT_EQ(LayoutStage::CheckedOf(user, kModes), std::vector<std::int32_t>({row.mode}));
  for (const std::int32_t radio : test::kPageRadioIds) {
    EXPECT_EQ(user.Enabled(radio), row.pageRadios) << radio;
  }
  EXPECT_EQ(user.Enabled(1044), row.posterList);
  EXPECT_EQ(user.Enabled(1065), row.bookletButton);
  EXPECT_EQ(user.Enabled(1025), row.scale);
  EXPECT_EQ(user.Text(1025), u"150");  // the refresh locks it at 100
  for (const std::int32_t icon : {1452, 1453, 1454}) {
    EXPECT_FALSE(user.Shown(icon)) << icon;
  }
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
}

TEST(LayoutNegative, LocksTheScaleFromTheStartToTheFirstRefresh) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open([](UIContext& context) {
    context.privatePointer->Negative = 1;
    context.privatePointer->ScaleRadio = 150;
  }));
  EXPECT_TRUE(stage.IsScaleLive(true));
  EXPECT_EQ(stage.user().Text(1025), u"150");
  EXPECT_FALSE(stage.StartAlone().Enabled(1025));
}

// ---- The state ----------------------------------------------------------------------------------

TEST(LayoutState, WrapsTheControlsOfItsTable) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  const LayoutPageState& state = stage.state();
  const std::pair<const DlgControl*, std::int32_t> kMembers[] = {
      {&state.modeGroup, 1484},   {&state.nupRadio, 1484},    {&state.orderCombo, 1046},
      {&state.borderCombo, 1393}, {&state.up1, 1387},         {&state.up2, 1389},
      {&state.up4, 1390},         {&state.up8, 1391},         {&state.up16, 1392},
      {&state.posterRadio, 1485}, {&state.posterCombo, 1044}, {&state.bookletRadio, 1486},
      {&state.orientCombo, 1048}, {&state.rotateCheck, 1415}, {&state.thicknessCombo, 1394},
      {&state.tonerCombo, 1045},  {&state.scaleSpin, 1107},   {&state.scaleEdit, 1025},
  };
  for (const auto& [member, control] : kMembers) {
    EXPECT_EQ(member->id(), control);
    EXPECT_EQ(member->window(), stage.Item(control)) << control;
  }
  EXPECT_EQ(state.dialog, stage.page());
  EXPECT_EQ(state.scaleEdit.range.minimum, 24.99999F);
  EXPECT_EQ(state.scaleEdit.range.maximum, 400.0F);
  EXPECT_EQ(state.scaleEdit.range.precision, 0);
  EXPECT_EQ(state.scaleEdit.range.maximumTextLength, 3);
  EXPECT_EQ(PageStatePlace(PageSlot::kLayout), &state);
  EXPECT_EQ(stage.world().pageStates->rows[0x1234 % 512][2], &state);
  EXPECT_EQ(stage.windows().Find(stage.Item(1107))->spin.accelerations.size(), 1U);
  EXPECT_TRUE(stage.sheet->PressCancel());
  EXPECT_EQ(PageStatePlace(PageSlot::kLayout), nullptr);
}

TEST(LayoutState, IsRefilledWhenThePageOpensAgainOnTheSameThread) {
  LayoutStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1390));
  LayoutPageState& state = stage.state();
  ASSERT_TRUE(state.scaleLocked);
  stage.windows().Destroy(stage.page());
  EXPECT_EQ(state.dialog, nullptr);
  EXPECT_EQ(state.tooltips[0], nullptr);
  RefreshLayoutPage(stage.context());  // there is no page to refresh
  stage.own().MultipleUp = 1;
  const headless::User user = stage.StartAlone();
  EXPECT_EQ(&stage.state(), &state);
  EXPECT_EQ(state.dialog, user.dialog());
  EXPECT_FALSE(state.scaleLocked);
  EXPECT_EQ(state.up16.window(), user.Control(1392));
  // The group has each child once: a second attachment adds none.
  stage.own().MultipleUp = 22;
  RefreshLayoutPage(stage.context());
  EXPECT_TRUE(user.Checked(1485));
  EXPECT_FALSE(user.Checked(1484));
  stage.windows().Destroy(user.dialog());
}

}  // namespace
}  // namespace ostrel
