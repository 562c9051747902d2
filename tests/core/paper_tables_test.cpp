#include "core/paper_tables.h"

#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

// The paper table once more, from the sizes that its customers were promised, in millimetres.
struct ExpectedPaper {
  std::uint16_t id;
  std::uint16_t nameStringId;
  std::uint16_t width_px600;
  std::uint16_t length_px600;
  double width_mm;
  double length_mm;
};

constexpr ExpectedPaper kExpected[] = {
    {1, 108, 5100, 6600, 215.9, 279.4},    {9, 116, 4960, 7015, 210.0, 297.0},
    {5, 110, 5100, 8400, 215.9, 355.6},    {13, 118, 4299, 6071, 182.0, 257.0},
    {37, 123, 2325, 4500, 98.4, 190.5},    {27, 120, 2598, 5197, 110.0, 220.0},
    {28, 121, 3827, 5409, 162.0, 229.0},   {20, 122, 2475, 5700, 104.8, 241.3},
    {11, 119, 3496, 4960, 148.0, 210.0},   {43, 4063, 2362, 3496, 100.0, 148.0},
    {250, 4064, 4606, 6378, 195.0, 270.0}, {245, 4065, 4370, 6141, 185.0, 260.0},
    {252, 4067, 3189, 4606, 135.0, 195.0}, {246, 4068, 3071, 4370, 130.0, 185.0},
    {70, 340, 2480, 3496, 105.0, 148.0},   {34, 4069, 4157, 5906, 176.0, 250.0},
    {7, 111, 4350, 6300, 184.2, 266.7},    {14, 109, 5100, 7800, 215.9, 330.2},
    {243, 4070, 5102, 8102, 216.0, 343.0}, {6, 411, 3300, 5100, 139.7, 215.9},
    {31, 4072, 2693, 3827, 114.0, 162.0},  {242, 4073, 2834, 5433, 120.0, 230.0},
    {241, 4074, 2953, 4157, 125.0, 176.0}, {276, 6001, 2480, 5551, 105.0, 235.0},
    {277, 6002, 3496, 4724, 148.0, 200.0}, {278, 6003, 2834, 5551, 120.0, 235.0},
    {279, 6004, 2834, 5551, 120.0, 235.0}, {280, 6005, 2692, 3826, 114.0, 162.0},
};
static_assert(std::size(kExpected) == kPaperRows);

class PaperTable : public testing::TestWithParam<std::size_t> {
 protected:
  test::TestWorld world_;
  const ExpectedPaper& expected_ = kExpected[GetParam()];
};

INSTANTIATE_TEST_SUITE_P(Rows, PaperTable, testing::Range<std::size_t>(0, kPaperRows),
                         [](const auto& row) {
                           return "Row" + std::to_string(row.param) + "Id" +
                                  std::to_string(kExpected[row.param].id);
                         });

TEST_P(PaperTable, RowHoldsIdNameAndSize) {
  const PaperRow& row = kPaperTable[GetParam()];
  EXPECT_EQ(row.id, expected_.id);
  EXPECT_EQ(row.nameStringId, expected_.nameStringId);
  EXPECT_EQ(row.width_px600, expected_.width_px600);
  EXPECT_EQ(row.length_px600, expected_.length_px600);
  EXPECT_EQ(FindPaperRow(expected_.id), &row);
}

TEST_P(PaperTable, SizeInTenthsOfMillimetresIsThePromisedOne) {
  EXPECT_EQ(TenthsOfMillimetre(expected_.width_px600), std::lround(expected_.width_mm * 10));
  EXPECT_EQ(TenthsOfMillimetre(expected_.length_px600), std::lround(expected_.length_mm * 10));
}

TEST_P(PaperTable, ExtentIsPortraitWithEqualMarginsInBothOrientations) {
  for (const std::int16_t orientation : {std::int16_t{1}, std::int16_t{2}}) {
    PaperExtent extent = {};
    EXPECT_EQ(GetPaperExtent(nullptr, expected_.id, orientation, &extent), 0);
    EXPECT_EQ(extent.width_px600, expected_.width_px600);
    EXPECT_EQ(extent.length_px600, expected_.length_px600);
    for (const std::uint16_t margin : extent.margins_px600) {
      EXPECT_EQ(margin, 95);
    }
  }
}

TEST_P(PaperTable, NameIsShippedAndFitsItsRow) {
  const auto text = test::EnglishStrings().find(expected_.nameStringId);
  ASSERT_NE(text, test::EnglishStrings().end());
  EXPECT_LT(text->second.size(), kPaperNameUnits);
}

TEST(PaperExtent, UnknownFixedIdLeavesTheOutputAsItWas) {
  test::TestWorld world;
  constexpr std::uint16_t kUnknownIds[] = {0, 2, 8, 244, 247, 275, 281, 287};
  for (const std::uint16_t id : kUnknownIds) {
    PaperExtent extent = {1, 2, {3, 4, 5, 6}};
    EXPECT_EQ(GetPaperExtent(nullptr, id, 1, &extent), 0) << id;
    EXPECT_EQ(extent.width_px600, 1) << id;
    EXPECT_EQ(extent.length_px600, 2) << id;
    EXPECT_EQ(extent.margins_px600[0], 3) << id;
    EXPECT_EQ(extent.margins_px600[3], 6) << id;
  }
}

TEST(PaperExtent, IdFrom288OnWithoutAStoredSizeIsA4InPixels) {
  test::TestWorld world;
  const PrivateDevmode record = {};
  for (const PrivateDevmode* privatePart : {static_cast<const PrivateDevmode*>(nullptr), &record}) {
    constexpr std::uint16_t kIds[] = {288, 319, 320, 65535};
    for (const std::uint16_t id : kIds) {
      PaperExtent extent = {1, 2, {3, 4, 5, 6}};
      EXPECT_EQ(GetPaperExtent(privatePart, id, 1, &extent), 0) << id;
      EXPECT_EQ(extent.width_px600, 4960) << id;
      EXPECT_EQ(extent.length_px600, 7015) << id;
      for (const std::uint16_t margin : extent.margins_px600) {
        EXPECT_EQ(margin, 95) << id;
      }
    }
  }
}

struct StoredExtentCase {
  const char* name;
  std::uint16_t id;
  bool withPrivatePart;
  std::uint16_t width_px600;
  std::uint16_t length_px600;
};

class StoredExtent : public testing::TestWithParam<StoredExtentCase> {};

INSTANTIATE_TEST_SUITE_P(
    Ids, StoredExtent,
    testing::Values(StoredExtentCase{"FirstId", 288, true, 3000, 4200},
                    StoredExtentCase{"FirstOfEqualIds", 300, true, 3001, 4201},
                    StoredExtentCase{"LastId", 319, true, 5100, 8400},
                    StoredExtentCase{"BeyondTheRange", 400, true, 1800, 3000},
                    StoredExtentCase{"NotFound", 289, true, 4960, 7015},
                    StoredExtentCase{"UnreadableRecord", 290, true, 4960, 7015},
                    StoredExtentCase{"WithoutAPrivatePart", 288, false, 4960, 7015},
                    StoredExtentCase{"NotFoundWithoutAPrivatePart", 289, false, 4960, 7015},
                    // A fixed size, whatever the store holds under its id.
                    StoredExtentCase{"FixedId", 9, true, 4960, 7015},
                    StoredExtentCase{"UnknownIdBelow288", 287, true, 1, 2}),
    test::CaseName());

TEST_P(StoredExtent, IsPortraitWithTheOrdinaryMargins) {
  test::TestWorld world;
  using test::PaperValue;
  using test::Record;
  test::PutSettings(world,
                    test::SettingsTree{.papers = {Record("A", PaperValue(288, u"A", 3000, 4200)),
                                                  Record("Odd", PaperValue(290, u"O", 9, 9) + "x"),
                                                  Record("B", PaperValue(300, u"B", 3001, 4201)),
                                                  Record("C", PaperValue(300, u"C", 3002, 4202)),
                                                  Record("D", PaperValue(319, u"D", 5100, 8400)),
                                                  Record("E", PaperValue(400, u"E", 1800, 3000)),
                                                  Record("F", PaperValue(9, u"F", 7, 7)),
                                                  Record("G", PaperValue(287, u"G", 8, 8))}}
                        .Bytes());
  // The array inside a record plays no part: the record serves as yes or no.
  PrivateDevmode record = {};
  record.CustomPaperSize[0].Width = 1234;
  for (const std::int16_t orientation : {std::int16_t{1}, std::int16_t{2}}) {
    PaperExtent extent = {1, 2, {3, 4, 5, 6}};
    EXPECT_EQ(GetPaperExtent(GetParam().withPrivatePart ? &record : nullptr, GetParam().id,
                             orientation, &extent),
              0);
    EXPECT_EQ(extent.width_px600, GetParam().width_px600);
    EXPECT_EQ(extent.length_px600, GetParam().length_px600);
    const bool known = GetParam().id != 287;
    EXPECT_EQ(extent.margins_px600[0], known ? 95 : 3);
    EXPECT_EQ(extent.margins_px600[3], known ? 95 : 6);
  }
  const bool looks = GetParam().withPrivatePart && GetParam().id >= 288;
  EXPECT_EQ(world.platform.files.openings(), looks ? 2U : 0U);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(CustomPaperIds, RunFrom288To319) {
  EXPECT_FALSE(IsCustomPaperId(287));
  EXPECT_TRUE(IsCustomPaperId(288));
  EXPECT_TRUE(IsCustomPaperId(319));
  EXPECT_FALSE(IsCustomPaperId(320));
}

TEST(PixelConversion, RoundsToTenthsAndCutsToMillimetres) {
  EXPECT_EQ(TenthsOfMillimetre(0), 0U);
  EXPECT_EQ(TenthsOfMillimetre(1), 0U);  // 0.42 + 0.5
  EXPECT_EQ(TenthsOfMillimetre(2), 1U);  // 0.85 + 0.5
  EXPECT_EQ(TenthsOfMillimetre(3000), 1270U);
  EXPECT_EQ(WholeMillimetres(3000), 127U);
  EXPECT_EQ(WholeMillimetres(4299), 182U);
  EXPECT_EQ(WholeMillimetres(4350), 184U);  // 184.2
}

TEST(PixelConversion, AgreesWithTheFloatingRuleForEverySize) {
  for (std::uint32_t pixels = 0; pixels <= 0xFFFF; ++pixels) {
    ASSERT_EQ(TenthsOfMillimetre(pixels), static_cast<std::uint32_t>(pixels * 254.0 / 600.0 + 0.5))
        << pixels;
  }
}

struct SourceExpectation {
  std::uint16_t bin;
  std::uint16_t name;
};

TEST(SourceTable, HoldsTheFiveSourcesInOrder) {
  constexpr SourceExpectation kSources[] = {
      {7, 4017}, {4, 4031}, {257, 190}, {258, 193}, {259, 194}};
  ASSERT_EQ(std::size(kSources), kSourceRows);
  for (std::size_t i = 0; i < kSourceRows; ++i) {
    EXPECT_EQ(kSourceTable[i].binId, kSources[i].bin);
    EXPECT_EQ(kSourceTable[i].nameStringId, kSources[i].name);
  }
}

struct CountryCase {
  const char* name;
  const char16_t* text;
  bool a4;
};

class LocaleRule : public testing::TestWithParam<CountryCase> {};

INSTANTIATE_TEST_SUITE_P(
    Countries, LocaleRule,
    testing::Values(CountryCase{"Zero", u"0", true}, CountryCase{"UnitedStates", u"1", false},
                    CountryCase{"Canada", u"2", false}, CountryCase{"Three", u"3", true},
                    CountryCase{"FortyNine", u"49", true}, CountryCase{"Fifty", u"50", false},
                    CountryCase{"Mexico", u"52", false}, CountryCase{"FiftyNine", u"59", false},
                    CountryCase{"Sixty", u"60", true}, CountryCase{"FourNineNine", u"499", true},
                    CountryCase{"FiveHundred", u"500", false},
                    CountryCase{"FiveNineNine", u"599", false},
                    CountryCase{"SixHundred", u"600", true}, CountryCase{"NoNumber", u"abc", true},
                    CountryCase{"NumberThenText", u"1x", false},
                    CountryCase{"LeadingBlank", u" 1", false}, CountryCase{"Negative", u"-1", true},
                    CountryCase{"Empty", u"", true}, CountryCase{"Huge", u"99999999999999", true}),
    test::CaseName());

TEST_P(LocaleRule, PicksThePaperOfTheCountry) {
  test::TestWorld world;
  world.platform.locale.country = GetParam().text;
  EXPECT_EQ(IsA4Locale(), GetParam().a4);
  const LocalePaper& paper = PaperOfLocale();
  EXPECT_EQ(paper.id, GetParam().a4 ? 9 : 1);
  EXPECT_EQ(paper.width_tenths_mm, GetParam().a4 ? 2100 : 2159);
  EXPECT_EQ(paper.length_tenths_mm, GetParam().a4 ? 2970 : 2794);
  EXPECT_EQ(std::u16string_view(paper.formName), GetParam().a4 ? u"A4" : u"Letter");
}

TEST(LocaleRuleFailure, UnreadableLocaleMeansLetter) {
  test::TestWorld world;
  world.platform.faults.FailOperation("GetLocaleInfoW");
  EXPECT_FALSE(IsA4Locale());
}

TEST(LocaleRuleFailure, CountryTextTooLongToReadMeansLetter) {
  test::TestWorld world;
  world.platform.locale.country = std::u16string(40, u'4');
  EXPECT_FALSE(IsA4Locale());
}

}  // namespace
}  // namespace ostrel
