#include "core/page_state_table.h"

#include "support/case_name.h"
#include "support/test_world.h"

#include <array>
#include <gtest/gtest.h>
#include <ostream>
#include <set>

namespace ostrel {
namespace {

struct Counted final : PageState {
  Counted() { ++alive; }
  ~Counted() override { --alive; }
  int number = 7;

  inline static int alive = 0;
};

// Another state, of another size.
struct Wide final : PageState {
  std::array<int, 300> numbers = {};
};

struct RowCase {
  const char* name;
  std::uint32_t threadId;
  std::size_t row;
};

void PrintTo(const RowCase& row, std::ostream* out) {
  *out << row.name;
}

class PageStateRowOf : public testing::TestWithParam<RowCase> {};

// Thread ids are signed numbers here. A remainder keeps the sign of the id, and a negative one
// counts from the table's end.
INSTANTIATE_TEST_SUITE_P(Threads, PageStateRowOf,
                         testing::Values(RowCase{"Zero", 0, 0}, RowCase{"One", 1, 1},
                                         RowCase{"Last", 511, 511}, RowCase{"FirstAgain", 512, 0},
                                         RowCase{"SecondAgain", 513, 1},
                                         RowCase{"LargestPositive", 0x7FFFFFFF, 511},
                                         RowCase{"SmallestNegative", 0x80000000, 0},
                                         RowCase{"NextNegative", 0x80000001, 1},
                                         RowCase{"MinusOne", 0xFFFFFFFF, 511},
                                         RowCase{"Minus512", 0xFFFFFE00, 0}),
                         test::CaseName());

TEST_P(PageStateRowOf, Thread) {
  EXPECT_EQ(PageStateRow(GetParam().threadId), GetParam().row);
}

TEST_P(PageStateRowOf, ThreadFindsItsStateThere) {
  test::TestWorld world;
  world.platform.system.threadId = GetParam().threadId;
  const auto* state = GetPageState<Counted>(PageSlot::kPaper);
  EXPECT_EQ(world.pageStates->rows[GetParam().row][1], state);
}

TEST(PageStateTable, MakesAStateOnFirstUse) {
  test::TestWorld world;
  EXPECT_EQ(PageStatePlace(PageSlot::kLayout), nullptr);
  auto* state = GetPageState<Counted>(PageSlot::kLayout);
  ASSERT_NE(state, nullptr);
  EXPECT_EQ(state->number, 7);
  state->number = 8;
  EXPECT_EQ(GetPageState<Counted>(PageSlot::kLayout), state);
  EXPECT_EQ(GetPageState<Counted>(PageSlot::kLayout)->number, 8);
  EXPECT_EQ(Counted::alive, 1);
}

struct SlotCase {
  const char* name;
  PageSlot slot;
  std::size_t column;
  bool endsWithTheSheet;
};

constexpr std::array<SlotCase, 10> kSlots = {{
    {"PrintOptions", PageSlot::kPrintOptions, 0, true},
    {"Paper", PageSlot::kPaper, 1, true},
    {"Layout", PageSlot::kLayout, 2, true},
    {"Watermark", PageSlot::kWatermark, 3, true},
    {"CustomPaper", PageSlot::kCustomPaper, 4, true},
    {"WatermarkEditor", PageSlot::kWatermarkEditor, 6, false},
    {"BookletCover", PageSlot::kBookletCover, 10, false},
    {"DocumentSheet", PageSlot::kDocumentSheet, 11, true},
    {"DateTimeStamp", PageSlot::kDateTimeStamp, 17, false},
    {"PageLinks", PageSlot::kPageLinks, 20, true},
}};

void PrintTo(const SlotCase& row, std::ostream* out) {
  *out << row.name;
}

class PageStateSlot : public testing::TestWithParam<SlotCase> {};

INSTANTIATE_TEST_SUITE_P(Slots, PageStateSlot, testing::ValuesIn(kSlots), test::CaseName());

TEST_P(PageStateSlot, HasItsColumn) {
  test::TestWorld world;
  EXPECT_EQ(&PageStatePlace(GetParam().slot),
            &world.pageStates->rows[PageStateRow(0x1234)][GetParam().column]);
}

TEST_P(PageStateSlot, IsReleasedWithTheSheetOrKept) {
  test::TestWorld world;
  GetPageState<Counted>(GetParam().slot);
  ReleasePageStates();
  EXPECT_EQ(Counted::alive, GetParam().endsWithTheSheet ? 0 : 1);
  EXPECT_EQ(PageStatePlace(GetParam().slot) == nullptr, GetParam().endsWithTheSheet);
  EXPECT_EQ(world.platform.memory.liveBlocks(), GetParam().endsWithTheSheet ? 0U : 1U);
  ReleaseAllPageStates();
  EXPECT_EQ(Counted::alive, 0);
  EXPECT_EQ(PageStatePlace(GetParam().slot), nullptr);
}

TEST_P(PageStateSlot, ReleasedStateIsMadeAnew) {
  test::TestWorld world;
  GetPageState<Counted>(GetParam().slot)->number = 9;
  ReleaseAllPageStates();
  EXPECT_EQ(GetPageState<Counted>(GetParam().slot)->number, 7);
}

TEST(PageStateTable, StatesOfAllPagesLiveSideBySide) {
  test::TestWorld world;
  std::set<const PageState*> states;
  for (const SlotCase& row : kSlots) {
    states.insert(row.column % 2 == 0 ? static_cast<PageState*>(GetPageState<Counted>(row.slot))
                                      : GetPageState<Wide>(row.slot));
  }
  EXPECT_EQ(states.size(), kSlots.size());
  ReleasePageStates();
  EXPECT_EQ(world.platform.memory.liveBlocks(), 3U);
}

TEST(PageStateTable, FailedAllocationIsTriedAgain) {
  test::TestWorld world;
  world.platform.faults.FailOperation("HeapAlloc", 1);
  EXPECT_EQ(GetPageState<Counted>(PageSlot::kPaper), nullptr);
  EXPECT_EQ(PageStatePlace(PageSlot::kPaper), nullptr);
  EXPECT_EQ(Counted::alive, 0);
  EXPECT_NE(GetPageState<Counted>(PageSlot::kPaper), nullptr);
}

TEST(PageStateTable, ThreadsOfOneRowShareTheirStates) {
  test::TestWorld world;
  world.platform.system.threadId = 100;
  auto* state = GetPageState<Counted>(PageSlot::kPaper);
  world.platform.system.threadId = 100 + 512;
  EXPECT_EQ(GetPageState<Counted>(PageSlot::kPaper), state);
  world.platform.system.threadId = 101;
  EXPECT_NE(GetPageState<Counted>(PageSlot::kPaper), state);
}

TEST(PageStateTable, ReleaseLeavesOtherThreadsAlone) {
  test::TestWorld world;
  for (const std::uint32_t thread : {100U, 101U}) {
    world.platform.system.threadId = thread;
    GetPageState<Counted>(PageSlot::kPaper);
  }
  ReleasePageStates();
  EXPECT_EQ(Counted::alive, 1);
  world.platform.system.threadId = 100;
  EXPECT_NE(PageStatePlace(PageSlot::kPaper), nullptr);
}

TEST(PageStateTable, EndOfTheProcessReleasesEveryThread) {
  test::TestWorld world;
  for (const std::uint32_t thread : {0U, 511U, 0x80000001U}) {
    world.platform.system.threadId = thread;
    for (const SlotCase& row : kSlots) {
      GetPageState<Counted>(row.slot);
    }
  }
  EXPECT_EQ(Counted::alive, 30);
  ReleaseAllPageStates();
  EXPECT_EQ(Counted::alive, 0);
  EXPECT_EQ(world.platform.memory.liveBlocks(), 0U);
}

}  // namespace
}  // namespace ostrel
