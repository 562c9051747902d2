// Every operation on the user's watermarks, walked through all failures of the platform: the first
// call fails, then the second, and so on until a run comes through untouched. Nothing crashes or
// leaks, and no record is lost, not even where the whole file was: all of them were in memory.
#include "core/ui_context.h"
#include "support/case_name.h"
#include "support/test_world.h"
#include "support/watermark_bytes.h"
#include "watermark/watermark_record.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::Mark;
using test::RecordOf;
using test::Stored;
using test::StoreOf;
using test::WatermarkFacts;

struct Walk {
  const char* name;
  std::vector<WatermarkFacts> before;
  void (*run)();
  std::vector<WatermarkFacts> after;
  bool holdsAll;  // it reads all records before it writes any
  std::size_t leastCalls;
};
void PrintTo(const Walk& walk, std::ostream* out) {
  *out << walk.name;
}

std::vector<Walk> Walks() {
  const std::vector<WatermarkFacts> three = {Mark(6, u"C"), Mark(4, u"A"), Mark(5, u"B")};
  return {
      {"Reading", three, [] { ReadWatermarkList(); }, three, false, 20},
      {"ReadingAFirstTime", {}, [] { ReadWatermarkList(); }, test::FirstFour(), false, 50},
      {"Adding",
       three,
       [] { AddWatermark(RecordOf(Mark(7, u"D"))); },
       {three[0], three[1], three[2], Mark(7, u"D")},
       false,
       10},
      {"Replacing",
       three,
       [] { ReplaceWatermark(RecordOf(Mark(4, u"D"))); },
       {three[0], three[2], Mark(4, u"D")},
       true,
       40},
      {"Sorting",
       three,
       [] {
         const WatermarkList list = ReadWatermarkList();
         KeepInOrder(list, SortByIndex(list));
       },
       {three[1], three[2], three[0]},
       true,
       100},
      {"Naming", three,
       [] {
         UniqueName({true, 1}, u"A");
       },
       three, false, 20},
  };
}

class WatermarkFailures : public testing::TestWithParam<Walk> {};
INSTANTIATE_TEST_SUITE_P(Operations, WatermarkFailures, testing::ValuesIn(Walks()),
                         test::CaseName());

bool Holds(const std::string& file, const WatermarkFacts& facts) {
  return file.find(Stored(facts)) != std::string::npos;
}

// Calls that reading takes before all records are in memory.
std::size_t CallsOfReading() {
  test::TestWorld world;
  test::PutSettings(world, StoreOf(WatermarkFailures::GetParam().before));
  world.platform.faults.StartTrace();
  ReadWatermarkList();
  return world.platform.faults.trace().size();
}

TEST_P(WatermarkFailures, LoseNoRecordAndLeaveNothingBehind) {
  constexpr std::size_t kMostCalls = 2000;
  const std::size_t callsOfReading = CallsOfReading();
  std::size_t n = 1;
  for (; n < kMostCalls; ++n) {
    test::TestWorld world;
    test::PutSettings(world, StoreOf(GetParam().before));
    world.platform.faults.StartTrace();
    world.platform.faults.FailCall(n);
    GetParam().run();
    const bool fired = world.platform.faults.fired();
    const std::string left = test::Settings(world);
    const std::string failed =
        fired ? world.platform.faults.trace().at(n - 1) : std::string("nothing");
    // A failed write empties the file, and one that a check takes for missing is made anew. What
    // the operation hadn't read by then is gone.
    const bool wholeFileWent = failed == "WriteFile" || failed == "GetFileAttributesW";
    const bool isHeld = GetParam().holdsAll && n > callsOfReading;
    for (const WatermarkFacts& facts : GetParam().before) {
      const bool isReplaced = std::ranges::none_of(
          GetParam().after, [&](const WatermarkFacts& kept) { return kept.name == facts.name; });
      if (isHeld || !wholeFileWent) {
        EXPECT_TRUE(Holds(left, facts) || (isReplaced && Holds(left, GetParam().after.back())))
            << "call " << n << ", " << failed << ":\n"
            << test::Readable(left);
      }
    }
    EXPECT_EQ(world.Leftovers(), "") << n;
    if (!fired) {
      EXPECT_SETTINGS(world, StoreOf(GetParam().after));
      break;
    }
  }
  EXPECT_GT(n, GetParam().leastCalls);
  EXPECT_LT(n, kMostCalls);
}

// ---- Replacing ----------------------------------------------------------------------------------

// Two records of one id, the old one and the new one, are never left, and what is told is so.
void ExpectOneOfThem(const test::TestWorld& world, bool replaced, const WatermarkFacts& before,
                     const WatermarkFacts& after) {
  const std::string left = test::Settings(world);
  EXPECT_FALSE(Holds(left, before) && Holds(left, after)) << test::Readable(left);
  if (replaced) {
    EXPECT_TRUE(Holds(left, after)) << test::Readable(left);
  } else {
    EXPECT_FALSE(Holds(left, after)) << test::Readable(left);
  }
}

class ReplacedUnderFailures : public testing::TestWithParam<std::u16string> {};
INSTANTIATE_TEST_SUITE_P(Names, ReplacedUnderFailures, testing::Values(u"A", u"D"),
                         [](const testing::TestParamInfo<std::u16string>& row) {
                           return std::string(row.param == u"A" ? "TheSame" : "Another");
                         });

TEST_P(ReplacedUnderFailures, LeavesTheOldOrTheNew) {
  const WatermarkFacts before = Mark(4, u"A");
  WatermarkFacts after = Mark(4, GetParam());
  after.text = u"New text";
  constexpr std::size_t kMostCalls = 2000;
  std::size_t n = 1;
  for (bool fired = true; fired && n < kMostCalls; ++n) {
    SCOPED_TRACE(n);
    test::TestWorld world;
    test::PutSettings(world, StoreOf({before, Mark(5, u"B")}));
    world.platform.faults.FailCall(n);
    const bool replaced = ReplaceWatermark(RecordOf(after));
    ExpectOneOfThem(world, replaced, before, after);
    fired = world.platform.faults.fired();
  }
  EXPECT_GT(n, 40U);
  EXPECT_LT(n, kMostCalls);
}

// Any two openings behind the reading of the list fail, for reading or for writing.
TEST_P(ReplacedUnderFailures, LeavesTheOldOrTheNewWhenTwoOpeningsFail) {
  const WatermarkFacts before = Mark(4, u"A");
  WatermarkFacts after = Mark(4, GetParam());
  after.text = u"New text";
  constexpr std::size_t kFirstOpening = 4;  // the names and two records are read before
  constexpr std::size_t kOpenings = 24;
  std::size_t refused = 0;
  for (std::size_t first = kFirstOpening; first < kOpenings; ++first) {
    for (std::size_t second = first + 1; second <= kOpenings; ++second) {
      SCOPED_TRACE(std::to_string(first) + " and " + std::to_string(second));
      test::TestWorld world;
      test::PutSettings(world, StoreOf({before, Mark(5, u"B")}));
      world.platform.faults.FailOperation("CreateFileW", first);
      world.platform.faults.FailOperation("CreateFileW", second);
      const bool replaced = ReplaceWatermark(RecordOf(after));
      ExpectOneOfThem(world, replaced, before, after);
      refused += replaced ? 0U : 1U;
    }
  }
  EXPECT_GT(refused, 0U);
}

// A file that is read but can't be written any more keeps the old one, and it is told.
TEST(ReplacedInAFileThatCannotBeWritten, IsRefused) {
  test::TestWorld world;
  const std::string file = StoreOf({Mark(4, u"A"), Mark(5, u"B")});
  test::PutSettings(world, file);
  headless::FaultPlan& faults = world.platform.faults;
  // The file is looked for before it is opened for reading, and not before it is written.
  std::string last;
  faults.onAsked = [&](std::string_view operation) {
    if (operation == "CreateFileW" && last != "GetFileAttributesW") {
      faults.FailCall(1);
    }
    last = operation;
  };
  EXPECT_FALSE(ReplaceWatermark(RecordOf(Mark(4, u"D"))));
  EXPECT_TRUE(faults.fired());
  faults.onAsked = nullptr;
  EXPECT_SETTINGS(world, file);
}

}  // namespace
}  // namespace ostrel
