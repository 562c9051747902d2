#include "core/device_capabilities.h"

#include "core/paper_tables.h"
#include "core/text.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr std::uint16_t kPoison = 0xCCCC;
constexpr std::uint16_t kAllPaperIds[] = {1,   9,   5,   13,  37,  27,  28,  20, 11,  43,
                                          250, 245, 252, 246, 70,  34,  7,   14, 243, 6,
                                          31,  242, 241, 276, 277, 278, 279, 280};
static_assert(std::size(kAllPaperIds) == 28);

CustomPaperRecord Custom(std::uint32_t id, std::u16string_view name, std::uint16_t width_px600,
                         std::uint16_t length_px600) {
  CustomPaperRecord record = {};
  record.PaperId = id;
  record.Width = width_px600;
  record.Length = length_px600;
  CopyText(record.Name, name);
  return record;
}

const std::vector<CustomPaperRecord>& TwoCustoms() {
  static const std::vector<CustomPaperRecord> customs = {Custom(288, u"Ticket", 3000, 4200),
                                                         Custom(291, u"Karte, groß", 1800, 8400)};
  return customs;
}

// A poisoned list of names, its rows as texts, and what stands behind the last one.
template <std::size_t RowUnits>
struct NameRows {
  explicit NameRows(std::size_t rows) : units((rows + 1) * RowUnits, kPoison) {}
  std::u16string operator[](std::size_t row) const {
    return std::u16string(FieldText(std::span(units).subspan(row * RowUnits, RowUnits)));
  }
  bool IsPoisonedFrom(std::size_t row) const {
    return std::all_of(units.begin() + static_cast<std::ptrdiff_t>(row * RowUnits), units.end(),
                       [](char16_t unit) { return unit == kPoison; });
  }
  std::vector<char16_t> units;
};
using PaperNameRows = NameRows<kPaperNameUnits>;
using BinNameRows = NameRows<kBinNameUnits>;

std::u16string Text(std::uint32_t id) {
  return test::EnglishStrings().at(id);
}

std::uint32_t Ask(test::TestWorld& world, std::uint16_t code, void* output = nullptr) {
  const PrinterHandle printer = world.OpenPrinter();
  const std::uint32_t answer =
      DrvDeviceCapabilities(printer, test::kPrinterName, code, output, nullptr);
  world.platform.print.ClosePrinter(printer);
  return answer;
}

// ---- Answers that are one number ----------------------------------------------------------------

struct NumberCase {
  const char* name;
  std::uint16_t code;
  std::uint32_t answer;
};

class CapabilityNumber : public testing::TestWithParam<NumberCase> {};

INSTANTIATE_TEST_SUITE_P(
    Codes, CapabilityNumber,
    testing::Values(NumberCase{"Fields", 1, 0x0200BF0F}, NumberCase{"Papers", 2, 28},
                    NumberCase{"PaperSize", 3, 28},
                    NumberCase{"MinExtent", 4, 762U | (1270U << 16)},
                    NumberCase{"MaxExtent", 5, 2159U | (3556U << 16)}, NumberCase{"Bins", 6, 3},
                    NumberCase{"Duplex", 7, 1}, NumberCase{"Size", 8, 220},
                    NumberCase{"Extra", 9, 7676}, NumberCase{"Version", 10, 1025},
                    NumberCase{"Driver", 11, 1536}, NumberCase{"BinNames", 12, 3},
                    NumberCase{"EnumResolutions", 13, 2}, NumberCase{"FileDependencies", 14, 0},
                    NumberCase{"TrueType", 15, 0}, NumberCase{"PaperNames", 16, 28},
                    NumberCase{"Orientation", 17, 90}, NumberCase{"Copies", 18, 999},
                    NumberCase{"BinAdjust", 19, 0}, NumberCase{"Collate", 22, 1},
                    NumberCase{"MediaReady", 29, 28}, NumberCase{"Staple", 30, 0},
                    NumberCase{"PrintRatePpm", 31, 0}, NumberCase{"ColorDevice", 32, 0}),
    test::CaseName());

TEST_P(CapabilityNumber, IsAnsweredWithoutABuffer) {
  test::TestWorld world;
  EXPECT_EQ(Ask(world, GetParam().code), GetParam().answer);
}

TEST_P(CapabilityNumber, IsTheSameForANullPrinterAndANullName) {
  test::TestWorld world;
  EXPECT_EQ(DrvDeviceCapabilities(nullptr, nullptr, GetParam().code, nullptr, nullptr),
            GetParam().answer);
}

TEST_P(CapabilityNumber, DoesNotDependOnTheCallersRecord) {
  test::TestWorld world;
  DriverDevmode record;
  std::memset(&record, 0xA5, sizeof(record));
  EXPECT_EQ(DrvDeviceCapabilities(nullptr, test::kPrinterName, GetParam().code, nullptr,
                                  &record.publicDevmode),
            GetParam().answer);
}

TEST_P(CapabilityNumber, WritesTheSameListWhateverTheCallersRecordHolds) {
  test::TestWorld world;
  DriverDevmode record;
  std::memset(&record, 0xA5, sizeof(record));
  std::vector<char16_t> without(48 * kPaperNameUnits, kPoison);
  std::vector<char16_t> with = without;
  DrvDeviceCapabilities(nullptr, test::kPrinterName, GetParam().code, without.data(), nullptr);
  DrvDeviceCapabilities(nullptr, test::kPrinterName, GetParam().code, with.data(),
                        &record.publicDevmode);
  EXPECT_EQ(without, with);
}

TEST_P(CapabilityNumber, LeavesNothingBehind) {
  test::TestWorld world;
  std::vector<char16_t> buffer(48 * kPaperNameUnits);
  Ask(world, GetParam().code, buffer.data());
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(CapabilityCode, ThatIsUnknownIsAnsweredWithMinusOne) {
  test::TestWorld world;
  std::vector<char16_t> buffer(64, kPoison);
  std::vector<std::uint16_t> unknown = {0, 20, 21, 23, 24, 25, 26, 27, 28};
  for (std::uint16_t code = 33; code < 300; ++code) {
    unknown.push_back(code);
  }
  unknown.push_back(0xFFFF);
  for (const std::uint16_t code : unknown) {
    EXPECT_EQ(Ask(world, code, buffer.data()), 0xFFFFFFFF) << code;
  }
  EXPECT_THAT(buffer, testing::Each(kPoison));
}

TEST(CapabilityFields, AreThoseOfAFreshRecord) {
  test::TestWorld world;
  PublicDevmode fresh;
  ASSERT_EQ(InitPublicDevmode(&fresh, nullptr), kResultOk);
  EXPECT_EQ(Ask(world, kDcFields), fresh.dmFields);
}

// ---- Papers -------------------------------------------------------------------------------------

TEST(CapabilityPapers, AreTheTableIdsInTableOrder) {
  test::TestWorld world;
  std::vector<std::uint16_t> ids(29, kPoison);
  ASSERT_EQ(Ask(world, kDcPapers, ids.data()), 28U);
  EXPECT_EQ(ids.back(), kPoison);
  ids.pop_back();
  EXPECT_THAT(ids, ElementsAreArray(kAllPaperIds));
}

TEST(CapabilityPapers, AreFollowedByTheStoredCustomsInStoreOrder) {
  std::vector<std::uint16_t> ids(31, kPoison);
  ASSERT_EQ(AnswerPapers(TwoCustoms(), ids.data()), 30U);
  EXPECT_TRUE(std::equal(std::begin(kAllPaperIds), std::end(kAllPaperIds), ids.begin()));
  EXPECT_EQ(ids[28], 288);
  EXPECT_EQ(ids[29], 291);
  EXPECT_EQ(ids[30], kPoison);
  EXPECT_EQ(AnswerPapers(TwoCustoms(), nullptr), 30U);
}

TEST(CapabilityPapers, TakeTwentyCustomsAtMost) {
  const std::vector<CustomPaperRecord> customs(20, Custom(300, u"Many", 3000, 4200));
  std::vector<std::uint16_t> ids(49, kPoison);
  ASSERT_EQ(AnswerPapers(customs, ids.data()), 48U);
  EXPECT_EQ(ids[47], 300);
  EXPECT_EQ(ids[48], kPoison);
}

TEST(CapabilityPaperSizes, AreWidthThenLengthInTenthsOfMillimetres) {
  test::TestWorld world;
  std::vector<Point> sizes(29, Point{-7, -7});
  ASSERT_EQ(Ask(world, kDcPaperSize, sizes.data()), 28U);
  constexpr Point kExpected[] = {
      {2159, 2794}, {2100, 2970}, {2159, 3556}, {1820, 2570}, {984, 1905},  {1100, 2200},
      {1620, 2290}, {1048, 2413}, {1480, 2100}, {1000, 1480}, {1950, 2700}, {1850, 2600},
      {1350, 1950}, {1300, 1850}, {1050, 1480}, {1760, 2500}, {1842, 2667}, {2159, 3302},
      {2160, 3430}, {1397, 2159}, {1140, 1620}, {1200, 2300}, {1250, 1760}, {1050, 2350},
      {1480, 2000}, {1200, 2350}, {1200, 2350}, {1140, 1620}};
  for (std::size_t i = 0; i < kPaperRows; ++i) {
    EXPECT_EQ(sizes[i].x, kExpected[i].x) << "row " << i;
    EXPECT_EQ(sizes[i].y, kExpected[i].y) << "row " << i;
  }
  EXPECT_EQ(sizes[28].x, -7);
}

TEST(CapabilityPaperSizes, AreFollowedByTheStoredCustoms) {
  std::vector<Point> sizes(31, Point{-7, -7});
  ASSERT_EQ(AnswerPaperSizes(TwoCustoms(), sizes.data()), 30U);
  EXPECT_EQ(sizes[28].x, 1270);
  EXPECT_EQ(sizes[28].y, 1778);
  EXPECT_EQ(sizes[29].x, 762);
  EXPECT_EQ(sizes[29].y, 3556);
  EXPECT_EQ(sizes[30].x, -7);
  EXPECT_EQ(AnswerPaperSizes(TwoCustoms(), nullptr), 30U);
}

TEST(CapabilityPaperNames, AreTheLanguageLibrarysTexts) {
  test::TestWorld world;
  PaperNameRows names(28);
  ASSERT_EQ(Ask(world, kDcPaperNames, names.units.data()), 28U);
  for (std::size_t i = 0; i < kPaperRows; ++i) {
    EXPECT_EQ(names[i], Text(kPaperTable[i].nameStringId)) << "row " << i;
  }
  EXPECT_TRUE(names.IsPoisonedFrom(28));
}

TEST(CapabilityPaperNames, AreAllDifferentInTheShippedTexts) {
  test::TestWorld world;
  PaperNameRows names(28);
  Ask(world, kDcPaperNames, names.units.data());
  for (std::size_t i = 0; i < kPaperRows; ++i) {
    for (std::size_t j = i + 1; j < kPaperRows; ++j) {
      EXPECT_NE(names[i], names[j]) << i << " and " << j;
    }
  }
}

TEST(CapabilityPaperNames, OfSixtyFourCharactersAndMoreAreCutToSixtyThree) {
  test::TestWorld world;
  headless::StringTable strings = test::EnglishStrings();
  strings[108] = std::u16string(63, u'x');
  strings[116] = std::u16string(64, u'y');
  strings[110] = std::u16string(200, u'z');
  world.platform.modules.Install(test::kEnglishLibraryPath, strings);
  PaperNameRows names(28);
  ASSERT_EQ(Ask(world, kDcPaperNames, names.units.data()), 28U);
  EXPECT_EQ(names[0], std::u16string(63, u'x'));
  EXPECT_EQ(names[1], std::u16string(63, u'y'));
  EXPECT_EQ(names[2], std::u16string(63, u'z'));
  EXPECT_EQ(names[3], Text(118));
}

TEST(CapabilityPaperNames, AreFollowedByCustomsWithTheirSizes) {
  test::TestWorld world;
  const ModuleHandle module = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  PaperNameRows names(30);
  ASSERT_EQ(AnswerPaperNames(TwoCustoms(), module, names.units.data()), 30U);
  EXPECT_EQ(names[28], u"Ticket (127 x 177mm)");
  EXPECT_EQ(names[29], u"Karte, groß (76 x 355mm)");
  EXPECT_TRUE(names.IsPoisonedFrom(30));
  EXPECT_EQ(AnswerPaperNames(TwoCustoms(), nullptr, nullptr), 30U);
}

TEST(CapabilityPaperNames, OfARecordWithoutTerminatorEndWithTheField) {
  test::TestWorld world;
  CustomPaperRecord custom = Custom(288, u"", 3000, 4200);
  std::fill(std::begin(custom.Name), std::end(custom.Name), u'w');
  PaperNameRows names(29);
  AnswerPaperNames({&custom, 1}, nullptr, names.units.data());
  EXPECT_EQ(names[28], std::u16string(26, u'w') + u" (127 x 177mm)");
}

TEST(CapabilityPaperNames, WithoutALanguageLibraryAreFallbackTexts) {
  test::TestWorld world;
  world.platform.modules.Remove(test::kEnglishLibraryPath);
  PaperNameRows names(28);
  ASSERT_EQ(Ask(world, kDcPaperNames, names.units.data()), 28U);
  EXPECT_EQ(names[0], u"id:108 missing!");
  EXPECT_EQ(names[27], u"id:6005 missing!");
}

TEST(CapabilityPaperNames, OpenTheLibraryForABufferOnlyAndCloseIt) {
  test::TestWorld world;
  world.platform.faults.StartTrace();
  Ask(world, kDcPaperNames);
  EXPECT_THAT(world.platform.faults.trace(), testing::Not(testing::Contains("LoadLibraryW")));
  PaperNameRows names(28);
  Ask(world, kDcPaperNames, names.units.data());
  EXPECT_THAT(world.platform.faults.trace(), testing::Contains("LoadLibraryW").Times(1));
  EXPECT_EQ(world.platform.modules.loadsOf(test::kEnglishLibraryPath), 0U);
}

// ---- Stored custom papers -----------------------------------------------------------------------

struct StoredCase {
  const char* name;
  std::string file;  // the settings file before the question; empty for none
  std::vector<std::uint16_t> ids;
  std::vector<Point> sizes;
  std::vector<std::u16string> names;
};

std::string PaperObject(const char* key, std::uint32_t id, std::u16string_view name,
                        std::uint16_t width_px600, std::uint16_t length_px600) {
  return test::Record(key, test::PaperValue(id, name, width_px600, length_px600));
}

std::string StoreOf(const std::vector<std::string>& papers) {
  return test::SettingsTree{.favorites = {test::Record("A", "x")},
                            .papers = papers,
                            .watermarks = {test::Record("W", "x")}}
      .Bytes();
}

std::vector<std::string> ManyPaperObjects(std::size_t count) {
  std::vector<std::string> papers;
  for (std::size_t i = 0; i < count; ++i) {
    papers.push_back(PaperObject(("P" + std::to_string(i)).c_str(),
                                 static_cast<std::uint32_t>(288 + i), u"P", 3000, 4200));
  }
  return papers;
}

std::vector<std::uint16_t> IdsFrom(std::uint16_t first, std::size_t count) {
  std::vector<std::uint16_t> ids;
  for (std::size_t i = 0; i < count; ++i) {
    ids.push_back(static_cast<std::uint16_t>(first + i));
  }
  return ids;
}

class StoredCustoms : public testing::TestWithParam<StoredCase> {
 protected:
  StoredCustoms() {
    if (!GetParam().file.empty()) {
      test::PutSettings(world_, GetParam().file);
    }
  }
  std::size_t count() const { return GetParam().ids.size(); }

  test::TestWorld world_;
};

INSTANTIATE_TEST_SUITE_P(
    Stores, StoredCustoms,
    testing::Values(
        StoredCase{"WithoutAFile", "", {}, {}, {}}, StoredCase{"Empty", StoreOf({}), {}, {}, {}},
        StoredCase{"InStoreOrder",
                   StoreOf({PaperObject("Z", 291, u"Ticket", 3000, 4200),
                            PaperObject("A", 288, u"Karte, groß", 1800, 8400)}),
                   {291, 288},
                   {{1270, 1778}, {762, 3556}},
                   {u"Ticket (127 x 177mm)", u"Karte, groß (76 x 355mm)"}},
        StoredCase{"NameInsideTheRecordCounts",
                   StoreOf({PaperObject("In the store", 290, u"Inside", 3000, 4200)}),
                   {290},
                   {{1270, 1778}},
                   {u"Inside (127 x 177mm)"}},
        StoredCase{"EqualIdsAreAllListed",
                   StoreOf({PaperObject("A", 290, u"A", 3000, 4200),
                            PaperObject("B", 290, u"B", 3000, 4200)}),
                   {290, 290},
                   {{1270, 1778}, {1270, 1778}},
                   {u"A (127 x 177mm)", u"B (127 x 177mm)"}},
        // Their place in the list is that among the readable ones.
        StoredCase{"UnreadableOnesAreLeftOut",
                   StoreOf({test::Record("Short", "x"), PaperObject("A", 288, u"A", 3000, 4200),
                            test::Record("Long", std::string(73, 'x')),
                            PaperObject("B", 289, std::u16string(26, u'w'), 3000, 4200)}),
                   {288, 289},
                   {{1270, 1778}, {1270, 1778}},
                   {u"A (127 x 177mm)", std::u16string(26, u'w') + u" (127 x 177mm)"}},
        StoredCase{"TwentyAtMost", StoreOf(ManyPaperObjects(25)), IdsFrom(288, 20),
                   std::vector<Point>(20, Point{1270, 1778}),
                   std::vector<std::u16string>(20, u"P (127 x 177mm)")},
        StoredCase{"CorruptFile", "<object:childobjs>", {}, {}, {}},
        StoredCase{"ForeignFile", "foreign", {}, {}, {}},
        StoredCase{"WithoutItsBranch", test::Container("cfgobj", {test::Version()}), {}, {}, {}}),
    test::CaseName());

TEST_P(StoredCustoms, FollowTheTableIds) {
  std::vector<std::uint16_t> ids(28 + count() + 1, kPoison);
  ASSERT_EQ(Ask(world_, kDcPapers, ids.data()), 28 + count());
  std::vector<std::uint16_t> expected(std::begin(kAllPaperIds), std::end(kAllPaperIds));
  expected.insert(expected.end(), GetParam().ids.begin(), GetParam().ids.end());
  expected.push_back(kPoison);
  EXPECT_EQ(ids, expected);
}

TEST_P(StoredCustoms, FollowTheTableSizes) {
  std::vector<Point> sizes(28 + count() + 1, Point{-7, -7});
  ASSERT_EQ(Ask(world_, kDcPaperSize, sizes.data()), 28 + count());
  EXPECT_EQ(sizes[27].x, 1140);
  for (std::size_t i = 0; i < count(); ++i) {
    EXPECT_EQ(sizes[28 + i].x, GetParam().sizes[i].x) << i;
    EXPECT_EQ(sizes[28 + i].y, GetParam().sizes[i].y) << i;
  }
  EXPECT_EQ(sizes.back().x, -7);
}

TEST_P(StoredCustoms, FollowTheTableNames) {
  PaperNameRows names(28 + count());
  ASSERT_EQ(Ask(world_, kDcPaperNames, names.units.data()), 28 + count());
  EXPECT_EQ(names[27], Text(6005));
  for (std::size_t i = 0; i < count(); ++i) {
    EXPECT_EQ(names[28 + i], GetParam().names[i]) << i;
  }
  EXPECT_TRUE(names.IsPoisonedFrom(28 + count()));
}

TEST_P(StoredCustoms, AreAsManyInEveryListWithoutABuffer) {
  for (const std::uint16_t code : {kDcPapers, kDcPaperSize, kDcPaperNames}) {
    EXPECT_EQ(Ask(world_, code), 28 + count()) << code;
  }
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_P(StoredCustoms, ChangeNoOtherAnswer) {
  EXPECT_EQ(Ask(world_, kDcMediaReady), 28U);
  PaperNameRows names(28);
  EXPECT_EQ(Ask(world_, kDcMediaReady, names.units.data()), 28U);
  EXPECT_TRUE(names.IsPoisonedFrom(28));
  std::vector<std::uint16_t> bins(6, kPoison);
  EXPECT_EQ(Ask(world_, kDcBins, bins.data()), 3U);
  EXPECT_THAT(bins, ElementsAre(7, 4, 257, kPoison, kPoison, kPoison));
  EXPECT_EQ(Ask(world_, kDcBinNames), 3U);
  EXPECT_EQ(Ask(world_, kDcMinExtent), 762U | (1270U << 16));
  EXPECT_EQ(Ask(world_, kDcMaxExtent), 2159U | (3556U << 16));
  EXPECT_EQ(world_.platform.files.openings(), 0U);  // and none of them looks at the store
}

struct InitCase {
  const char* name;
  std::uint16_t code;
};

class CustomsQuestion : public testing::TestWithParam<InitCase> {};

INSTANTIATE_TEST_SUITE_P(Codes, CustomsQuestion,
                         testing::Values(InitCase{"Papers", 2}, InitCase{"PaperSize", 3},
                                         InitCase{"PaperNames", 16}),
                         test::CaseName());

TEST_P(CustomsQuestion, MakesTheSettingsFileFirst) {
  test::TestWorld world;
  Ask(world, GetParam().code);
  EXPECT_SETTINGS(world, test::SettingsTree().Bytes());
}

// ---- Names of custom papers ---------------------------------------------------------------------

struct CustomNameCase {
  const char* name;
  std::u16string paper;
  std::size_t place;
  std::uint32_t width_mm;
  std::uint32_t length_mm;
  std::u16string expected;
};

class CustomPaperName : public testing::TestWithParam<CustomNameCase> {};

INSTANTIATE_TEST_SUITE_P(
    Names, CustomPaperName,
    testing::Values(CustomNameCase{"Plain", u"Ticket", 3, 127, 177, u"Ticket (127 x 177mm)"},
                    CustomNameCase{"Empty", u"", 0, 76, 355, u" (76 x 355mm)"},
                    // " (127 x 177mm)" has 14 characters: 49 more just fit, 50 don't.
                    CustomNameCase{"LongestThatFits", std::u16string(49, u'n'), 0, 127, 177,
                                   std::u16string(49, u'n') + u" (127 x 177mm)"},
                    CustomNameCase{"OneTooLong", std::u16string(50, u'n'), 0, 127, 177,
                                   u"Custom 0 (127 x 177mm)"},
                    CustomNameCase{"SixtyCharacters", std::u16string(60, u'n'), 19, 127, 177,
                                   u"Custom 19 (127 x 177mm)"}),
    test::CaseName());

TEST_P(CustomPaperName, TakesItsSizeOrGivesWayToItsPlace) {
  const CustomNameCase& row = GetParam();
  std::array<char16_t, kPaperNameUnits + 1> buffer;
  buffer.fill(kPoison);
  WriteCustomPaperName(row.paper, row.place, row.width_mm, row.length_mm,
                       std::span<char16_t, kPaperNameUnits>(buffer.data(), kPaperNameUnits));
  std::u16string expected = row.expected;
  expected.resize(kPaperNameUnits, u'\0');
  EXPECT_EQ(std::u16string(buffer.data(), kPaperNameUnits), expected);
  EXPECT_EQ(buffer.back(), kPoison);
}

// ---- Media ready --------------------------------------------------------------------------------

TEST(CapabilityMediaReady, ListsTheTableNamesAndNothingMore) {
  test::TestWorld world;
  PaperNameRows names(48);
  ASSERT_EQ(Ask(world, kDcMediaReady, names.units.data()), 28U);
  for (std::size_t i = 0; i < kPaperRows; ++i) {
    EXPECT_EQ(names[i], Text(kPaperTable[i].nameStringId)) << "row " << i;
  }
  EXPECT_TRUE(names.IsPoisonedFrom(28));
}

std::u16string MediaReadyName(ModuleHandle module, std::size_t row) {
  return std::u16string(FieldText(BuildMediaReadyNames(module)[row]));
}

TEST(MediaReadyNames, NumberTheCustomsFromOneInTheLibrarysWords) {
  test::TestWorld world;
  world.platform.modules.Install(test::kEnglishLibraryPath,
                                 {{108, u"Letter"}, {281, u"Eigen %d!"}});
  const ModuleHandle module = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  EXPECT_EQ(BuildMediaReadyNames(module).size(), 48U);
  EXPECT_EQ(MediaReadyName(module, 0), u"Letter");
  EXPECT_EQ(MediaReadyName(module, 28), u"Eigen 1!");
  EXPECT_EQ(MediaReadyName(module, 47), u"Eigen 20!");
}

TEST(MediaReadyNames, FallBackToCustomWithoutALibraryOrItsFormat) {
  test::TestWorld world;
  world.platform.modules.Install(test::kEnglishLibraryPath, {{108, u"Letter"}});
  const ModuleHandle module = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  for (const ModuleHandle source : {module, ModuleHandle{nullptr}}) {
    EXPECT_EQ(MediaReadyName(source, 28), u"Custom 1");
    EXPECT_EQ(MediaReadyName(source, 47), u"Custom 20");
  }
}

TEST(MediaReadyNames, FallBackToCustomWhenTheTextIsTooLong) {
  test::TestWorld world;
  // With one digit the first fits its row of 64 units, with two digits it doesn't.
  world.platform.modules.Install(test::kEnglishLibraryPath,
                                 {{281, std::u16string(62, u'x') + u"%d"}});
  const ModuleHandle module = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  EXPECT_EQ(MediaReadyName(module, 28), std::u16string(62, u'x') + u"1");
  EXPECT_EQ(MediaReadyName(module, 37), u"Custom 10");
  const auto names = BuildMediaReadyNames(module);
  EXPECT_TRUE(std::all_of(names[37].begin() + 9, names[37].end(),
                          [](char16_t unit) { return unit == u'\0'; }));
}

TEST(CapabilityMediaReady, WithoutALanguageLibraryHasFallbackTexts) {
  test::TestWorld world;
  world.platform.modules.Remove(test::kEnglishLibraryPath);
  PaperNameRows names(28);
  ASSERT_EQ(Ask(world, kDcMediaReady, names.units.data()), 28U);
  EXPECT_EQ(names[1], u"id:116 missing!");
  EXPECT_TRUE(names.IsPoisonedFrom(28));
}

// ---- Bins ---------------------------------------------------------------------------------------

struct BinCase {
  const char* name;
  int missing;
  std::uint32_t count;
  std::vector<std::uint16_t> written;
  std::vector<std::uint32_t> names;
};

class CapabilityBins : public testing::TestWithParam<BinCase> {};

INSTANTIATE_TEST_SUITE_P(
    Trays, CapabilityBins,
    testing::Values(
        BinCase{"BothPresent", 0, 5, {7, 4, 257, 258, 259}, {4017, 4031, 190, 193, 194}},
        // The answer says four and five words are written: kept as callers have always found it.
        BinCase{"OneMissing", 1, 4, {7, 4, 257, 258, 259}, {4017, 4031, 190, 193}},
        BinCase{"BothMissing", 2, 3, {7, 4, 257}, {4017, 4031, 190}}),
    test::CaseName());

TEST_P(CapabilityBins, AreCountedAndWrittenByTheMissingTrays) {
  std::vector<std::uint16_t> bins(6, kPoison);
  EXPECT_EQ(AnswerBins(GetParam().missing, bins.data()), GetParam().count);
  std::vector<std::uint16_t> expected = GetParam().written;
  expected.resize(6, kPoison);
  EXPECT_EQ(bins, expected);
  EXPECT_EQ(AnswerBins(GetParam().missing, nullptr), GetParam().count);
}

TEST_P(CapabilityBins, HaveAsManyNamesAsAreCounted) {
  test::TestWorld world;
  const ModuleHandle module = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  BinNameRows names(5);
  ASSERT_EQ(AnswerBinNames(GetParam().missing, module, names.units.data()), GetParam().count);
  for (std::size_t i = 0; i < GetParam().names.size(); ++i) {
    EXPECT_EQ(names[i], Text(GetParam().names[i])) << "row " << i;
  }
  EXPECT_TRUE(names.IsPoisonedFrom(GetParam().names.size()));
}

TEST(CapabilityBinList, OfAPrinterThatTellsNothingHoldsTheThreeFixedSources) {
  test::TestWorld world;
  std::vector<std::uint16_t> bins(4, kPoison);
  ASSERT_EQ(DrvDeviceCapabilities(nullptr, test::kPrinterName, kDcBins, bins.data(), nullptr), 3U);
  EXPECT_THAT(bins, ElementsAre(7, 4, 257, kPoison));
}

TEST(CapabilityBinNames, OfTwentyFourCharactersAndMoreAreCutToTwentyThree) {
  test::TestWorld world;
  headless::StringTable strings = test::EnglishStrings();
  strings[4017] = std::u16string(23, u'x');
  strings[4031] = std::u16string(24, u'y');
  strings[190] = std::u16string(90, u'z');
  world.platform.modules.Install(test::kEnglishLibraryPath, strings);
  BinNameRows names(3);
  ASSERT_EQ(Ask(world, kDcBinNames, names.units.data()), 3U);
  EXPECT_EQ(names[0], std::u16string(23, u'x'));
  EXPECT_EQ(names[1], std::u16string(23, u'y'));
  EXPECT_EQ(names[2], std::u16string(23, u'z'));
  EXPECT_TRUE(names.IsPoisonedFrom(3));
}

TEST(CapabilityBinNames, WithoutALanguageLibraryAreCountedOnly) {
  test::TestWorld world;
  world.platform.modules.Remove(test::kEnglishLibraryPath);
  BinNameRows names(3);
  EXPECT_EQ(Ask(world, kDcBinNames, names.units.data()), 3U);
  EXPECT_TRUE(names.IsPoisonedFrom(0));
}

TEST(CapabilityBinNames, AreShippedShortEnoughForTheirRows) {
  for (const SourceRow& source : kSourceTable) {
    EXPECT_LT(Text(source.nameStringId).size(), kBinNameUnits) << source.nameStringId;
  }
}

// ---- Other lists --------------------------------------------------------------------------------

TEST(CapabilityResolutions, AreTheTwoPairs) {
  test::TestWorld world;
  std::vector<std::int32_t> pairs(5, -7);
  ASSERT_EQ(Ask(world, kDcEnumResolutions, pairs.data()), 2U);
  EXPECT_THAT(pairs, ElementsAre(600, 600, 1200, 1200, -7));
}

TEST(CapabilityFileDependencies, AreAnEmptyText) {
  test::TestWorld world;
  std::vector<char16_t> buffer(2, kPoison);
  ASSERT_EQ(Ask(world, kDcFileDependencies, buffer.data()), 0U);
  EXPECT_EQ(buffer[0], u'\0');
  EXPECT_EQ(buffer[1], kPoison);
}

}  // namespace
}  // namespace ostrel
