#include "core/model_table.h"

#include "core/process_state.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using headless::StoredValue;

struct Model {
  const char* name;
  std::uint64_t flag;
  std::u16string model;
};

// clang-format off
const std::array<Model, 36> kModels = {{
    {"Alder1", 0x1, u"Alder 1 Series"},
    {"Alder2", 0x1, u"Alder 2 Series"},
    {"Alder3", 0x1, u"Alder 3 Series"},
    {"Alder4", 0x1, u"Alder 4 Series"},
    {"Alder5", 0x1, u"Alder 5 Series"},
    {"Birch1", 0x2, u"Birch 1 Series"},
    {"Birch2", 0x2, u"Birch 2 Series"},
    {"Birch3", 0x2, u"Birch 3 Series"},
    {"Birch4", 0x2, u"Birch 4 Series"},
    {"Birch5", 0x2, u"Birch 5 Series"},
    {"Cedar1", 0x4, u"Cedar 1 Series"},
    {"Cedar2", 0x4, u"Cedar 2 Series"},
    {"Dogwood1", 0x8, u"Dogwood 1 Series"},
    {"Dogwood2", 0x8, u"Dogwood 2 Series"},
    {"Dogwood3", 0x8, u"Dogwood 3 Series"},
    {"Dogwood4", 0x8, u"Dogwood 4 Series"},
    {"Elm1", 0x10, u"Elm 1 Series"},
    {"Elm2", 0x10, u"Elm 2 Series"},
    {"Elm3", 0x10, u"Elm 3 Series"},
    {"Elm4", 0x10, u"Elm 4 Series"},
    {"Fir1", 0x20, u"Fir 1 Series"},
    {"Fir2", 0x20, u"Fir 2 Series"},
    {"Ginkgo1", 0x40, u"Ginkgo 1 Series"},
    {"Ginkgo2", 0x40, u"Ginkgo 2 Series"},
    {"Hazel1", 0x80, u"Hazel 1 Series"},
    {"Hazel2", 0x80, u"Hazel 2 Series"},
    {"Hazel3", 0x80, u"Hazel 3 Series"},
    {"Hazel4", 0x80, u"Hazel 4 Series"},
    {"Ironwood1", 0x100, u"Ironwood 1 Series"},
    {"Ironwood2", 0x100, u"Ironwood 2 Series"},
    {"Ironwood3", 0x100, u"Ironwood 3 Series"},
    {"Juniper1", 0x200, u"Juniper 1 Series"},
    {"Juniper2", 0x200, u"Juniper 2 Series"},
    {"Juniper3", 0x200, u"Juniper 3 Series"},
    {"Kauri1", 0x400, u"Kauri 1 Series"},
    {"Empty", 0x1, u""},
}};
// clang-format on

class ModelSelection : public testing::Test {
 protected:
  void Choose(std::u16string_view model) {
    world_.UserValues(test::kPrinterName)[u"printername"] = StoredValue::Text(model);
  }
  std::uint64_t Select() {
    SelectModelFlags(test::kPrinterName);
    return world_.process.ModelFlags;
  }

  test::TestWorld world_;
};

class EachModel : public ModelSelection, public testing::WithParamInterface<Model> {};

INSTANTIATE_TEST_SUITE_P(Rows, EachModel, testing::ValuesIn(kModels), test::CaseName());

TEST_P(EachModel, SelectsItsFamily) {
  world_.process.ModelFlags = 0x8000;  // which no family has
  Choose(GetParam().model);
  EXPECT_EQ(Select(), GetParam().flag);
}

TEST_P(EachModel, IsKnownInAnyLetterCase) {
  const auto inCase = [](std::u16string text, char16_t first, char16_t replacement) {
    for (char16_t& unit : text) {
      if (unit >= first && unit < first + 26) {
        unit = static_cast<char16_t>(unit - first + replacement);
      }
    }
    return text;
  };
  for (const std::u16string& model :
       {inCase(GetParam().model, u'a', u'A'), inCase(GetParam().model, u'A', u'a')}) {
    world_.process.ModelFlags = 0x8000;
    Choose(model);
    EXPECT_EQ(Select(), GetParam().flag);
  }
}

TEST_P(EachModel, IsUnknownWithALetterMore) {
  world_.process.ModelFlags = 0x8000;
  Choose(GetParam().model + u"x");
  EXPECT_EQ(Select(), 0x8000U);
}

TEST(ModelTable, HasItsRowsInOrder) {
  ASSERT_EQ(kModelTable.size(), kModels.size());
  for (std::size_t row = 0; row < kModels.size(); ++row) {
    EXPECT_EQ(kModelTable[row].flag, kModels[row].flag) << "row " << row + 1;
    EXPECT_EQ(kModelTable[row].name, kModels[row].model) << "row " << row + 1;
  }
}

struct FamilyGroup {
  const char* name;
  std::uint64_t group;
  std::uint64_t mask;
};

class FamilyGroups : public testing::TestWithParam<FamilyGroup> {};

INSTANTIATE_TEST_SUITE_P(Masks, FamilyGroups,
                         testing::Values(FamilyGroup{"JobPin", kFamiliesWithJobPin, 0x4D4},
                                         FamilyGroup{"JobMode", kFamiliesWithJobMode, 0x780},
                                         FamilyGroup{"JobFlag", kFamiliesWithJobFlag, 0x80},
                                         FamilyGroup{"FirToKauri", kFamiliesFirToKauri, 0x7E0},
                                         FamilyGroup{"FixedTray", kFamiliesWithFixedTray, 0x707},
                                         FamilyGroup{"OptionalTrays", kFamiliesWithOptionalTrays,
                                                     0xF8},
                                         FamilyGroup{"DogwoodAndElm", kFamiliesDogwoodAndElm, 0x18},
                                         FamilyGroup{"NoBooklet", kFamiliesWithoutBooklet, 0x3}),
                         test::CaseName());

TEST_P(FamilyGroups, HaveTheirMasks) {
  EXPECT_EQ(GetParam().group, GetParam().mask);
}

TEST_F(ModelSelection, WithoutAModelIsAlder) {
  EXPECT_EQ(Select(), 0x1U);
}

TEST_F(ModelSelection, EmptyModelAfterAKnownOneIsAlder) {
  world_.process.ModelFlags = Kauri;
  Choose(u"");
  EXPECT_EQ(Select(), 0x1U);
}

TEST_F(ModelSelection, UnknownModelAfterAKnownOneKeepsItsFamily) {
  Choose(u"Juniper 3 Series");
  EXPECT_EQ(Select(), 0x200U);
  Choose(u"Juniper 4 Series");
  EXPECT_EQ(Select(), 0x200U);
}

TEST_F(ModelSelection, UnknownModelAsTheFirstIsAlder) {
  Choose(u"Oak 1 Series");
  EXPECT_EQ(Select(), 0x1U);
}

TEST_F(ModelSelection, LettersBeyondAsciiHaveOnlyOneCase) {
  // A Kelvin sign is a k to those who fold all letters; a dotless i is an i in Turkish.
  for (const char16_t* model : {u"\u212Aauri 1 Series", u"F\u0131r 1 Series"}) {
    world_.process.ModelFlags = 0;
    Choose(model);
    EXPECT_EQ(Select(), 0x1U);
  }
}

TEST_F(ModelSelection, GoesByThePrintersNameAlone) {
  world_.UserValues(test::kDriverName)[u"printername"] = StoredValue::Text(u"Kauri 1 Series");
  Choose(u"Birch 5 Series");
  EXPECT_EQ(Select(), 0x2U);
}

TEST_F(ModelSelection, ValueThatIsNoTextCountsAsEmpty) {
  world_.process.ModelFlags = Kauri;
  world_.UserValues(test::kPrinterName)[u"printername"] = StoredValue::Dword(2);
  EXPECT_EQ(Select(), 0x1U);
}

TEST_F(ModelSelection, StoreThatCannotBeOpenedCountsAsEmpty) {
  Choose(u"Kauri 1 Series");
  world_.platform.faults.FailOperation("RegCreateKeyExW");
  EXPECT_EQ(Select(), 0x1U);
  EXPECT_EQ(world_.Leftovers(), "");
}

}  // namespace
}  // namespace ostrel
