#include "pages/source_list.h"

#include "core/printer_store.h"
#include "pages/page_scene.h"
#include "support/case_name.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::PageScene;

constexpr std::int32_t kList = 1393;
constexpr std::uint64_t kFixedTray = Alder | Birch | Cedar | Ironwood | Juniper | Kauri;
constexpr std::uint64_t kOptionalTrays = Dogwood | Elm | Fir | Ginkgo | Hazel;

struct ListCase {
  const char* name;
  std::uint64_t model;
  int missingTrays;
  std::vector<std::uint32_t> texts;
  std::vector<std::intptr_t> bins;
};

class SourceListTest : public testing::TestWithParam<ListCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Lists, SourceListTest,
    testing::Values(
        ListCase{"FixedTrayWithAll",     kFixedTray,     0, {4017, 4018, 190},                {7, 4, 257}},
        ListCase{"FixedTrayWithoutOne",  kFixedTray,     1, {4017, 4018, 190},                {7, 4, 257}},
        ListCase{"FixedTrayWithoutTwo",  kFixedTray,     2, {4017, 4018, 190},                {7, 4, 257}},
        ListCase{"TraysWithAll",         kOptionalTrays, 0, {4017, 4031, 190, 193, 194},      {7, 4, 257, 258, 259}},
        ListCase{"TraysWithoutOne",      kOptionalTrays, 1, {4017, 4031, 190, 193},           {7, 4, 257, 258}},
        ListCase{"TraysWithoutTwo",      kOptionalTrays, 2, {4017, 4031, 190},                {7, 4, 257}},
        ListCase{"NoFamily",             0,              0, {4017, 190},                      {7, 257}}),
    test::CaseName());
// clang-format on

TEST_P(SourceListTest, HasTheFamilysSourcesUpToTheTraysThatAreThere) {
  const ListCase& row = GetParam();
  PageScene scene;
  // Each family of the mask alone.
  std::uint64_t families = row.model;
  do {
    const std::uint64_t family = families & (~families + 1);
    families &= ~family;
    Process().ModelFlags = family;
    scene.context.printerHandle = scene.world.OpenPrinter();
    const std::uint32_t tray2 = row.missingTrays < 2 ? kTrayFitted : 0;
    const std::uint32_t tray3 = row.missingTrays < 1 ? kTrayFitted : 0;
    ASSERT_TRUE(WriteTrayBlock(scene.context.printerHandle, {{tray2, tray3}}));
    ASSERT_EQ(CountMissingTrays(scene.context.printerHandle), row.missingTrays);
    auto& list = scene.dialog.Add(kList);
    list.items = {{u"what was there before", 1}};
    FillSourceList(scene.dialog.Dialog(), kList, scene.context);
    ASSERT_EQ(list.items.size(), row.bins.size()) << "family " << family;
    for (std::size_t place = 0; place < row.bins.size(); ++place) {
      EXPECT_EQ(list.items[place].text, scene.English(row.texts[place])) << "family " << family;
      EXPECT_EQ(list.items[place].data, row.bins[place]) << "family " << family;
    }
    EXPECT_EQ(list.selected, kCbErr);
    scene.world.platform.print.ClosePrinter(scene.context.printerHandle);
  } while (families != 0);
}

// Every number that a word can hold: the five bins at their places, 260 with tray 1, and the first
// place for any other.
TEST(FamilyHasOptionalTrays, IsToldForEachFamily) {
  const PageScene scene;
  for (std::uint64_t family = 1; family <= Kauri; family <<= 1U) {
    Process().ModelFlags = family;
    EXPECT_EQ(FamilyHasOptionalTrays(), (family & kOptionalTrays) != 0) << family;
  }
  Process().ModelFlags = 0;
  EXPECT_FALSE(FamilyHasOptionalTrays());
}

TEST(PositionOfBin, IsToldForEveryWord) {
  for (std::int32_t bin = std::numeric_limits<std::int16_t>::min();
       bin <= std::numeric_limits<std::int16_t>::max(); ++bin) {
    const std::int32_t expected = bin == 4                   ? 1
                                  : bin == 257 || bin == 260 ? 2
                                  : bin == 258               ? 3
                                  : bin == 259               ? 4
                                                             : 0;
    ASSERT_EQ(PositionOfBin(static_cast<std::int16_t>(bin)), expected) << bin;
  }
}

TEST(BinOfPosition, IsTheAutomaticSourceBesideTheFive) {
  const std::vector<std::pair<std::int32_t, std::int16_t>> expected = {
      {0, 7},
      {1, 4},
      {2, 257},
      {3, 258},
      {4, 259},
      {5, 7},
      {-1, 7},
      {std::numeric_limits<std::int32_t>::max(), 7},
      {std::numeric_limits<std::int32_t>::min(), 7}};
  for (const auto& [position, bin] : expected) {
    EXPECT_EQ(BinOfPosition(position), bin) << position;
  }
}

}  // namespace
}  // namespace ostrel
