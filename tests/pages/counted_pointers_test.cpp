#include "pages/counted_pointers.h"

#include "support/test_world.h"

#include <algorithm>
#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace ostrel {
namespace {

struct Noted final : CountedObject {
  Noted() { ++alive; }
  ~Noted() override { --alive; }
  int number = 7;

  inline static int alive = 0;
};

std::size_t LiveBlocks(const test::TestWorld& world) {
  return world.platform.memory.liveBlocks();
}

TEST(CountedPointer, HoldsNothingAtFirst) {
  test::TestWorld world;
  const CountedPointer<char16_t> text;
  const CountedPointer<Noted> object(nullptr);
  EXPECT_FALSE(text);
  EXPECT_EQ(object.get(), nullptr);
  EXPECT_EQ(LiveBlocks(world), 0U);
}

TEST(CountedPointer, CountsItsHoldersByThePointer) {
  test::TestWorld world;
  CountedPointer<char16_t> first = MakeCountedText(20);
  ASSERT_TRUE(first);
  const char16_t* target = first.get();
  EXPECT_EQ(HoldersOf(target), 1);
  {
    const CountedPointer<char16_t> copy = first;
    const CountedPointer<char16_t> joined(first.get());
    EXPECT_EQ(copy.get(), target);
    EXPECT_EQ(HoldersOf(target), 3);
  }
  EXPECT_EQ(HoldersOf(target), 1);
  first = {};
  EXPECT_EQ(HoldersOf(target), 0);
  EXPECT_EQ(LiveBlocks(world), 0U);
  EXPECT_EQ(world.process.CountedTexts, nullptr);
}

TEST(CountedPointer, NewTextIsEmpty) {
  test::TestWorld world;
  const CountedPointer<char16_t> text = MakeCountedText(4);
  EXPECT_EQ(std::u16string(text.get(), 4), std::u16string(4, u'\0'));
  *text = u'x';
  EXPECT_EQ(text.get()[0], u'x');
}

TEST(CountedPointer, ObjectLivesAsLongAsItsLastHolder) {
  test::TestWorld world;
  {
    CountedPointer<Noted> first = MakeCountedObject<Noted>();
    const CountedPointer<Noted> second = first;
    EXPECT_EQ(HoldersOf(first.get()), 2);
    first = {};
    EXPECT_EQ(Noted::alive, 1);
    EXPECT_EQ(second->number, 7);
  }
  EXPECT_EQ(Noted::alive, 0);
  EXPECT_EQ(LiveBlocks(world), 0U);
  EXPECT_EQ(world.process.CountedObjects, nullptr);
}

TEST(CountedPointer, MovesWithoutCounting) {
  test::TestWorld world;
  CountedPointer<Noted> first = MakeCountedObject<Noted>();
  const CountedPointer<Noted> second = std::move(first);
  EXPECT_EQ(HoldersOf(second.get()), 1);
  EXPECT_EQ(second->number, 7);
}

TEST(CountedPointer, AssignmentLetsTheOldTargetGo) {
  test::TestWorld world;
  CountedPointer<Noted> first = MakeCountedObject<Noted>();
  const CountedPointer<Noted> second = MakeCountedObject<Noted>();
  EXPECT_EQ(Noted::alive, 2);
  first = second;
  EXPECT_EQ(Noted::alive, 1);
  EXPECT_EQ(HoldersOf(second.get()), 2);
  const CountedPointer<Noted>& itself = first;
  first = itself;
  EXPECT_EQ(HoldersOf(second.get()), 2);
}

TEST(CountedPointer, TextsAndObjectsAreCountedApart) {
  test::TestWorld world;
  const CountedPointer<Noted> object = MakeCountedObject<Noted>();
  EXPECT_NE(world.process.CountedObjects, nullptr);
  EXPECT_EQ(world.process.CountedTexts, nullptr);
  EXPECT_EQ(HoldersOf(reinterpret_cast<const char16_t*>(object.get())), 0);
}

TEST(CountedPointer, ManyTargetsKeepTheirCounts) {
  test::TestWorld world;
  std::vector<CountedPointer<char16_t>> texts;
  for (int i = 0; i < 100; ++i) {
    texts.push_back(MakeCountedText(1));
    texts.push_back(texts.back());
  }
  // Let go in an order that takes from the middle.
  for (std::size_t i = 0; i < texts.size(); i += 4) {
    texts[i] = {};
  }
  for (std::size_t i = 0; i < texts.size(); i += 2) {
    EXPECT_EQ(HoldersOf(texts[i + 1].get()), i % 4 == 0 ? 1 : 2);
  }
  EXPECT_EQ(LiveBlocks(world), 101U);
  texts.clear();
  EXPECT_EQ(LiveBlocks(world), 0U);
}

// Each new target comes before all others in the order of addresses.
TEST(CountedPointer, TargetsHeldInFallingOrderKeepTheirCounts) {
  test::TestWorld world;
  std::vector<char16_t*> blocks;
  for (int i = 0; i < 20; ++i) {
    blocks.push_back(static_cast<char16_t*>(World().memory.HeapAlloc(sizeof(char16_t))));
  }
  std::sort(blocks.begin(), blocks.end(), std::greater<>());
  std::vector<CountedPointer<char16_t>> holders;
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    holders.emplace_back(blocks[i]);
    if (i % 3 == 0) {
      holders.push_back(holders.back());
    }
  }
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    EXPECT_EQ(HoldersOf(blocks[i]), i % 3 == 0 ? 2 : 1) << i;
  }
  holders.erase(holders.begin() + 10, holders.begin() + 15);
  holders.clear();
  EXPECT_EQ(LiveBlocks(world), 0U);
}

// Letting go of the one lets go of the other, within the same removal.
TEST(CountedPointer, ObjectThatHoldsAnotherLetsItGo) {
  struct Holder final : CountedObject {
    CountedPointer<Noted> held;
  };
  test::TestWorld world;
  {
    const CountedPointer<Holder> outer = MakeCountedObject<Holder>();
    ASSERT_TRUE(outer);
    outer->held = MakeCountedObject<Noted>();
    EXPECT_EQ(Noted::alive, 1);
  }
  EXPECT_EQ(Noted::alive, 0);
  EXPECT_EQ(LiveBlocks(world), 0U);
}

TEST(CountedPointer, WithoutMemoryForTheTargetIsEmpty) {
  test::TestWorld world;
  world.platform.faults.FailOperation("HeapAlloc");
  EXPECT_FALSE(MakeCountedText(9));
  EXPECT_FALSE(MakeCountedObject<Noted>());
  EXPECT_EQ(Noted::alive, 0);
}

TEST(CountedPointer, WithoutMemoryForTheCountFreesTheTarget) {
  test::TestWorld world;
  world.platform.faults.FailOperation("HeapAlloc", 2);
  EXPECT_FALSE(MakeCountedText(9));
  EXPECT_EQ(LiveBlocks(world), 0U);
  world.platform.faults.FailOperation("HeapAlloc", 2);
  EXPECT_FALSE(MakeCountedObject<Noted>());
  EXPECT_EQ(Noted::alive, 0);
  EXPECT_EQ(LiveBlocks(world), 0U);
}

TEST(CountedPointer, WithoutMemoryToGrowKeepsTheOthers) {
  test::TestWorld world;
  std::vector<CountedPointer<char16_t>> texts;
  for (int i = 0; i < 8; ++i) {
    texts.push_back(MakeCountedText(1));
  }
  world.platform.faults.FailOperation("HeapAlloc", 2);
  EXPECT_FALSE(MakeCountedText(1));
  EXPECT_TRUE(world.platform.faults.fired());
  const CountedPointer<char16_t> another = texts[3];  // its entry is there
  EXPECT_EQ(HoldersOf(texts[3].get()), 2);
  EXPECT_EQ(HoldersOf(texts[7].get()), 1);
  EXPECT_TRUE(MakeCountedText(1));
}

TEST(CountedPointer, UnheldTargetIsntFreed) {
  test::TestWorld world;
  const CountedPointer<char16_t> held = MakeCountedText(1);
  char16_t foreign = u'x';
  RemoveHolder(&foreign);
  EXPECT_EQ(HoldersOf(&foreign), 0);
  EXPECT_EQ(HoldersOf(held.get()), 1);
}

}  // namespace
}  // namespace ostrel
