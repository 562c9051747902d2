// The lists of the paper page: papers with the user's own behind them, media types, sources.
#include "pages/paper_list.h"

#include "pages/paper_stage.h"

#include <array>

namespace ostrel {
namespace {

std::vector<std::u16string> Texts(const std::vector<std::uint32_t>& ids) {
  std::vector<std::u16string> texts;
  for (const std::uint32_t id : ids) {
    texts.push_back(PaperStage::Text(id));
  }
  return texts;
}

// ---- Papers -------------------------------------------------------------------------------------

TEST(PaperList, HasTheTablesPapersInTheirOrder) {
  PaperStage stage;
  ASSERT_TRUE(stage.Open());
  const std::vector<std::u16string> texts = stage.user().ItemTexts(1404);
  const std::vector<std::uintptr_t> data = stage.user().ItemData(1404);
  ASSERT_EQ(texts.size(), std::size(test::kListedPapers));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(texts[i], PaperStage::Text(test::kListedPapers[i].name)) << i;
    EXPECT_EQ(static_cast<std::int16_t>(data[i]), test::kListedPapers[i].id) << i;
  }
}

struct LabelCase {
  const char* name;
  std::uint32_t unit;
  std::uint16_t width_px600, length_px600;
  std::u16string point, comma;
};
void PrintTo(const LabelCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const LabelCase kLabelCases[] = {
    {"Millimetres",    1, 4961, 7016, u"(210.0 \u00D7 297.0 mm)",  u"(210,0 \u00D7 297,0 mm)"},
    {"TenthRoundsUp",  1, 1772, 3497, u"(75.0 \u00D7 148.0 mm)",   u"(75,0 \u00D7 148,0 mm)"},
    {"TenthRoundsDown",1, 1771, 3498, u"(75.0 \u00D7 148.1 mm)",   u"(75,0 \u00D7 148,1 mm)"},
    {"Inches",         2, 5100, 6600, u"(8.50 \u00D7 11.00 inch)", u"(8,50 \u00D7 11,00 inch)"},
    {"HundredthsOfInch",2,1773, 3033, u"(2.96 \u00D7 5.06 inch)",  u"(2,96 \u00D7 5,06 inch)"},
    {"HalfRoundsUp",   2, 3,    9,    u"(0.01 \u00D7 0.02 inch)",  u"(0,01 \u00D7 0,02 inch)"},
    {"BelowHalf",      2, 2,    8,    u"(0.00 \u00D7 0.01 inch)",  u"(0,00 \u00D7 0,01 inch)"},
    {"UnknownUnit",    0, 600,  1200, u"(25.4 \u00D7 50.8 mm)",    u"(25,4 \u00D7 50,8 mm)"},
    {"UnitThree",      3, 600,  0,    u"(25.4 \u00D7 0.0 mm)",     u"(25,4 \u00D7 0,0 mm)"},
    {"LargestInch",    2, 65535,65535,u"(109.23 \u00D7 109.23 inch)", u"(109,23 \u00D7 109,23 inch)"},
    {"LargestMm",      1, 65535,65535,u"(2774.3 \u00D7 2774.3 mm)", u"(2774,3 \u00D7 2774,3 mm)"},
};
// clang-format on

class SizeLabel : public testing::TestWithParam<LabelCase> {
 protected:
  std::u16string Label(bool comma) {
    world_.process.DecimalCommaLanguage = comma;
    std::array<char16_t, 64> label;
    label.fill(u'#');
    const LabelCase& row = GetParam();
    const ModuleHandle texts = world_.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
    WriteSizeLabel(texts, PaperStage::Custom(288, u"", row.width_px600, row.length_px600, row.unit),
                   label);
    world_.platform.modules.FreeLibrary(texts);
    return label.data();
  }
  // The unit's text is the language's.
  static std::u16string WithUnit(std::u16string label) {
    const bool inch = GetParam().unit == 2;
    const std::u16string_view stand = inch ? u"inch" : u"mm";
    const std::size_t place = label.rfind(stand);
    return label.replace(place, stand.size(), PaperStage::Text(inch ? 192 : 191));
  }
  test::TestWorld world_;
};

INSTANTIATE_TEST_SUITE_P(Rows, SizeLabel, testing::ValuesIn(kLabelCases), test::CaseName());

TEST_P(SizeLabel, TellsTheSizeInThePapersUnit) {
  EXPECT_EQ(Label(false), WithUnit(GetParam().point));
}

TEST_P(SizeLabel, HasTheLanguagesDecimalMark) {
  EXPECT_EQ(Label(true), WithUnit(GetParam().comma));
}

TEST(SizeLabelText, IsCutToItsBuffer) {
  test::TestWorld world;
  std::array<char16_t, 8> label;
  label.fill(u'#');
  WriteSizeLabel(nullptr, PaperStage::Custom(288, u"", 4961, 7016), std::span(label).first(6));
  EXPECT_EQ(std::u16string(label.data()), u"(210.");
  EXPECT_EQ(label[6], u'#');
}

TEST(PaperList, StoredPapersFollowInTheStoresOrder) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(290, u"Zebra", 4961, 7016, 1),
               PaperStage::Custom(288, u"Card", 5100, 6600, 2)});
  ASSERT_TRUE(stage.Open());
  const std::vector<std::u16string> texts = stage.user().ItemTexts(1404);
  const std::vector<std::uintptr_t> data = stage.user().ItemData(1404);
  ASSERT_EQ(texts.size(), 30U);
  EXPECT_EQ(texts[28], u"Zebra(210.0 \u00D7 297.0 " + PaperStage::Text(191) + u")");
  EXPECT_EQ(texts[29], u"Card(8.50 \u00D7 11.00 " + PaperStage::Text(192) + u")");
  EXPECT_EQ(data[28], 290U);
  EXPECT_EQ(data[29], 288U);
}

TEST(PaperList, GermanListHasCommas) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"Karte", 4961, 7016, 1)});
  stage.world().process.DecimalCommaLanguage = true;
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.user().ItemTexts(1404).at(28),
            u"Karte(210,0 \u00D7 297,0 " + PaperStage::Text(191) + u")");
}

// ---- Stores that another hand has written -------------------------------------------------------

TEST(PaperListOfAForeignStore, LeavesOutRecordsOfTheWrongLength) {
  PaperStage stage;
  test::SettingsTree tree;
  const std::string good = test::PaperValue(288, u"Good", 3000, 4000);
  tree.papers = {test::Record("Short", good.substr(0, 71)), test::Record("Good", good),
                 test::Record("Long", good + "x"), test::Record("Empty", "")};
  test::PutSettings(stage.world(), tree.Bytes());
  ASSERT_TRUE(stage.Open());
  ASSERT_EQ(stage.user().ItemTexts(1404).size(), 29U);
  EXPECT_EQ(stage.user().ItemTexts(1404)[28].substr(0, 5), u"Good(");
}

// Both are shown; the first one of them counts.
TEST(PaperListOfAForeignStore, ShowsAnIdTwice) {
  PaperStage stage;
  stage.Store(
      {PaperStage::Custom(288, u"One", 3000, 4000), PaperStage::Custom(288, u"Two", 3100, 4100)});
  ASSERT_TRUE(stage.Open(PaperStage::With({.paper = 288})));
  ASSERT_EQ(stage.user().ItemTexts(1404).size(), 30U);
  EXPECT_EQ(stage.user().Selected(1404), 28);
}

TEST(PaperListOfAForeignStore, EndsAfterTwentyPapers) {
  PaperStage stage;
  test::SettingsTree tree;
  for (std::uint16_t i = 0; i < 25; ++i) {
    const std::string name = "P" + std::to_string(i);
    tree.papers.push_back(test::Record(
        name, test::PaperValue(288U + i, std::u16string(name.begin(), name.end()), 3000, 4000)));
  }
  test::PutSettings(stage.world(), tree.Bytes());
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.user().ItemTexts(1404).size(), 48U);
}

TEST(PaperListOfAForeignStore, LeavesOutIdsThatNoUsersPaperHas) {
  PaperStage stage;
  test::SettingsTree tree;
  for (const std::uint32_t id : {0U, 9U, 287U, 32768U, 65824U, 0xFFFFFFFFU}) {
    const std::string name = "P" + std::to_string(id);
    tree.papers.push_back(test::Record(name, test::PaperValue(id, u"Foreign", 3000, 4000)));
  }
  tree.papers.push_back(test::Record("last", test::PaperValue(32767, u"Last", 3000, 4000)));
  test::PutSettings(stage.world(), tree.Bytes());
  ASSERT_TRUE(stage.Open());
  ASSERT_EQ(stage.user().ItemTexts(1404).size(), 29U);
  EXPECT_EQ(stage.user().ItemData(1404)[28], 32767U);
}

TEST(PaperListOfAForeignStore, ShowsANameWithoutATerminator) {
  PaperStage stage;
  test::SettingsTree tree;
  tree.papers = {test::Record("x", test::PaperValue(288, std::u16string(26, u'n'), 3000, 4000))};
  test::PutSettings(stage.world(), tree.Bytes());
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.user().ItemTexts(1404).at(28).substr(0, 27), std::u16string(26, u'n') + u"(");
}

// ---- The width of the opened list ---------------------------------------------------------------

// The widths that the list was given while it was filled again.
std::vector<std::uintptr_t> DropWidths(PaperStage& stage) {
  const auto& sent = stage.Watch(stage.Item(1404));
  stage.Command(1407);
  std::vector<std::uintptr_t> widths;
  for (const PaperStage::Sent& each : sent) {
    if (each.message == kCbSetDroppedWidth) {
      widths.push_back(each.wParam);
    }
  }
  return widths;
}

// A character is 6 pixels wide here.
std::uintptr_t WidthOf(const std::u16string& text) {
  return text.size() * 6;
}

TEST(PaperListWidth, IsTheLeastWithoutStoredPapers) {
  PaperStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(DropWidths(stage), std::vector<std::uintptr_t>{180});
}

TEST(PaperListWidth, IsALongTextsLessThirty) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"A name of twenty-four ch")});
  ASSERT_TRUE(stage.Open());
  const std::uintptr_t width = WidthOf(stage.user().ItemTexts(1404).at(28)) - 30;
  ASSERT_GT(width, 180U);
  EXPECT_EQ(DropWidths(stage), std::vector<std::uintptr_t>{width});
}

TEST(PaperListWidth, LosesThirtyAtEachPaper) {
  PaperStage stage;
  stage.Store(
      {PaperStage::Custom(288, u"A name of twenty-four ch"), PaperStage::Custom(289, u"a")});
  ASSERT_TRUE(stage.Open());
  const std::uintptr_t width = WidthOf(stage.user().ItemTexts(1404).at(28)) - 60;
  ASSERT_GE(width, 180U);
  EXPECT_EQ(DropWidths(stage), std::vector<std::uintptr_t>{width});
}

TEST(PaperListWidth, NeverFallsBelowTheLeast) {
  PaperStage stage;
  stage.Store({PaperStage::Custom(288, u"A name of twenty-four ch"), PaperStage::Custom(289, u"a"),
               PaperStage::Custom(290, u"b"), PaperStage::Custom(291, u"c")});
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(DropWidths(stage), std::vector<std::uintptr_t>{180});
}

// ---- Media types and sources --------------------------------------------------------------------

class ListsByFamily : public testing::TestWithParam<FamilyModel> {};

INSTANTIATE_TEST_SUITE_P(Families, ListsByFamily, testing::ValuesIn(test::kFamilyModels),
                         [](const auto& row) {
                           return "Family" + std::to_string(row.param.family);
                         });

TEST_P(ListsByFamily, HaveWhatTheFamilyHas) {
  std::vector<std::uint32_t> media = {127, 388, 139, 4075, 334, 4076, 5099};
  std::vector<std::uintptr_t> mediaIds = {1, 257, 258, 259, 263, 2, 264};
  std::vector<std::uint32_t> sources = {4017, 4018, 190};
  std::vector<std::uintptr_t> bins = {7, 4, 257};
  if (GetParam().hasTrays) {
    media.insert(media.end(), {6541, 6542});
    mediaIds.insert(mediaIds.end(), {265, 261});
    sources = {4017, 4031, 190, 193, 194};
    bins = {7, 4, 257, 258, 259};
  }
  PaperStage stage(GetParam().model);
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.user().ItemTexts(1009), Texts(media));
  EXPECT_EQ(stage.user().ItemData(1009), mediaIds);
  EXPECT_EQ(stage.user().ItemTexts(1393), Texts(sources));
  EXPECT_EQ(stage.user().ItemData(1393), bins);
}

TEST(SourcesOfThePage, EndWithTheTraysThatAreThere) {
  for (int missing = 0; missing <= 2; ++missing) {
    PaperStage stage(kTrays, missing);
    ASSERT_TRUE(stage.Open());
    EXPECT_EQ(stage.user().ItemData(1393).size(), 5U - static_cast<std::size_t>(missing));
  }
}

TEST(SourcesOfThePage, EndWithTray1WithoutBothOptionalTrays) {
  PaperStage stage(kTrays, 2);
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.user().ItemTexts(1393), Texts({4017, 4031, 190}));
}

}  // namespace
}  // namespace ostrel
