// Custom papers by their ids, and watermarks of whatever length.
#include "config/setting_stores.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <array>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::Container;
using test::LyingContainer;
using test::PaperValue;
using test::Record;
using test::SettingsTree;
using test::Version;

void PutPapers(test::TestWorld& world, const std::vector<std::string>& papers) {
  test::PutSettings(world, SettingsTree{.papers = papers}.Bytes());
}

// A paper whose width tells it apart.
std::string Paper(std::string_view name, std::uint32_t id, std::uint16_t width = 3000) {
  return Record(name, PaperValue(id, u"Inside", width, 4200));
}

CustomPaperRecord Poisoned() {
  CustomPaperRecord record;
  std::memset(&record, 0xC5, sizeof(record));
  return record;
}

// ---- The record ---------------------------------------------------------------------------------

TEST(CustomPapers, AreSavedFieldByField) {
  test::TestWorld world;
  PutPapers(world, {});
  CustomPaperRecord record = {};
  record.Width = 0x1234;
  record.Length = 0x5678;
  record.Name[0] = u'N';
  record.PaperId = 0x9ABCDEF0;
  record.Unit = 2;
  record.ExactWidth = 1.0F;    // 0x3F800000
  record.ExactLength = -2.0F;  // 0xC0000000
  ASSERT_TRUE(CustomPaperStore().Save(u"Card", record));
  std::string value = std::string("\x34\x12\x78\x56N\0", 6) + std::string(50, '\0');
  value += std::string("\xF0\xDE\xBC\x9A\x02\0\0\0\0\0\x80\x3F\0\0\0\xC0", 16);
  ASSERT_EQ(value.size(), 72U);
  EXPECT_SETTINGS(world, SettingsTree{.papers = {Record("Card", value)}}.Bytes());
}

// ---- Finding by id ------------------------------------------------------------------------------

struct FindCase {
  const char* name;
  std::vector<std::string> papers;
  std::uint32_t id;
  bool found;
  std::uint16_t width;
};

class FindingPapers : public testing::TestWithParam<FindCase> {};

INSTANTIATE_TEST_SUITE_P(
    Stores, FindingPapers,
    testing::Values(
        FindCase{"Only", {Paper("A", 288, 3001)}, 288, true, 3001},
        FindCase{"Last", {Paper("A", 288, 3001), Paper("B", 289, 3002)}, 289, true, 3002},
        FindCase{"FirstOfEqualIds",
                 {Paper("Z", 290, 3001), Paper("B", 300, 3002), Paper("A", 300, 3003)},
                 300,
                 true,
                 3002},
        FindCase{"BehindAnUnreadableOne",
                 {Record("Short", "x"), Record("Long", std::string(73, 'x')), Record("None", ""),
                  Paper("A", 288, 3001)},
                 288,
                 true,
                 3001},
        FindCase{"BehindABranch",
                 {LyingContainer("B", 1, {Paper("A", 288)}), Paper("C", 288, 3001)},
                 288,
                 true,
                 3001},
        FindCase{"IdBelowTheFirst", {Paper("A", 9, 3001)}, 9, true, 3001},
        FindCase{"IdBeyond16Bits", {Paper("A", 0x10120, 3001)}, 288, false, 0},
        // A name that a read refuses, or that is cut on the way to another record's.
        FindCase{"NameOf33Units", {Paper(std::string(33, 'n'), 288)}, 288, false, 0},
        FindCase{"NameOf32Units", {Paper(std::string(32, 'n'), 288)}, 288, false, 0},
        FindCase{"NameOf31Units", {Paper(std::string(31, 'n'), 288, 3001)}, 288, true, 3001},
        FindCase{"NameOf32UnitsHidesBehindTheCutOne",
                 {Paper(std::string(32, 'n'), 288, 3001), Paper(std::string(31, 'n'), 289, 3002)},
                 289,
                 true,
                 3002},
        FindCase{"SecondOfOneNameIsTheFirstAgain",
                 {Paper("A", 288, 3001), Paper("A", 289, 3002)},
                 289,
                 false,
                 0},
        FindCase{"Missing", {Paper("A", 288), Paper("B", 290)}, 289, false, 0},
        FindCase{"InAnEmptyStore", {}, 288, false, 0},
        FindCase{"InAStoreOfUnreadableOnes", {Record("A", "x")}, 288, false, 0}),
    test::CaseName());

TEST_P(FindingPapers, GivesTheFirstOfTheIdInListOrder) {
  test::TestWorld world;
  PutPapers(world, GetParam().papers);
  const std::string before = test::Settings(world);
  CustomPaperRecord record = Poisoned();
  ASSERT_EQ(FindCustomPaper(GetParam().id, &record), GetParam().found);
  if (GetParam().found) {
    EXPECT_EQ(record.PaperId, GetParam().id);
    EXPECT_EQ(record.Width, GetParam().width);
  }
  EXPECT_SETTINGS(world, before);
  EXPECT_EQ(test::CallsOf(world, "WriteFile"), 0U);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(FindingAPaper, ThatIsNotThereLeavesTheLastOneRead) {
  test::TestWorld world;
  PutPapers(world, {Paper("A", 288, 3001), Paper("B", 289, 3002), Record("Odd", "x")});
  CustomPaperRecord record = Poisoned();
  EXPECT_FALSE(FindCustomPaper(300, &record));
  EXPECT_EQ(test::AsString(test::BytesOf(record)), PaperValue(289, u"Inside", 3002, 4200));
}

TEST(FindingAPaper, InAnEmptyStoreLeavesTheRecordAlone) {
  test::TestWorld world;
  PutPapers(world, {});
  CustomPaperRecord record = Poisoned();
  EXPECT_FALSE(FindCustomPaper(300, &record));
  EXPECT_EQ(test::Difference(test::BytesOf(record), test::BytesOf(Poisoned())), "");
}

TEST(FindingAPaper, TakesTheFileAsItIsAndSoMakesABareOne) {
  test::TestWorld world;
  CustomPaperRecord record = {};
  EXPECT_FALSE(FindCustomPaper(288, &record));
  EXPECT_SETTINGS(world, Container("cfgobj", {Version()}));
}

TEST(FindingAPaper, LooksAtTheFirst32Names) {
  test::TestWorld world;
  std::vector<std::string> papers;
  for (std::uint32_t i = 0; i < 33; ++i) {
    papers.push_back(Paper("N" + std::to_string(i), 288 + i));
  }
  PutPapers(world, papers);
  CustomPaperRecord record = {};
  EXPECT_TRUE(FindCustomPaper(288 + 31, &record));
  EXPECT_FALSE(FindCustomPaper(288 + 32, &record));
}

// ---- The next id --------------------------------------------------------------------------------

struct NextIdCase {
  const char* name;
  std::vector<std::string> papers;
  std::int32_t next;
};

std::vector<std::string> PapersOf(const std::vector<std::uint32_t>& ids) {
  std::vector<std::string> papers;
  for (const std::uint32_t id : ids) {
    papers.push_back(Paper("P" + std::to_string(papers.size()), id));
  }
  return papers;
}

std::vector<std::string> ManyPapers(std::uint32_t count, std::uint32_t firstId) {
  std::vector<std::uint32_t> ids;
  for (std::uint32_t i = 0; i < count; ++i) {
    ids.push_back(firstId + i);
  }
  return PapersOf(ids);
}

class NextPaperId : public testing::TestWithParam<NextIdCase> {};

INSTANTIATE_TEST_SUITE_P(
    Stores, NextPaperId,
    testing::Values(NextIdCase{"Empty", {}, 288}, NextIdCase{"One", PapersOf({288}), 289},
                    NextIdCase{"GapAtTheStart", PapersOf({289, 290}), 288},
                    NextIdCase{"GapInside", PapersOf({288, 289, 291}), 290},
                    NextIdCase{"OutOfOrder", PapersOf({290, 288, 289}), 291},
                    NextIdCase{"EqualIds", PapersOf({288, 288}), 289},
                    NextIdCase{"IdsOutsideTheRangeDontCount",
                               PapersOf({0, 287, 352, 0xFFFFFFFF, 0x80000120}), 288},
                    NextIdCase{"LastOfTheRangeCounts", PapersOf({288, 351}), 289},
                    NextIdCase{"Fifteen", ManyPapers(15, 288), 303},
                    NextIdCase{"Sixteen", ManyPapers(16, 288), -1},
                    NextIdCase{"SixteenOfOtherIds", ManyPapers(16, 400), -1},
                    NextIdCase{"Seventeen", ManyPapers(17, 288), -1},
                    NextIdCase{"UnreadableOnesUseNoId", {Record("A", "x"), Paper("B", 289)}, 288}),
    test::CaseName());

TEST_P(NextPaperId, IsTheLowestThatNoRecordUses) {
  test::TestWorld world;
  PutPapers(world, GetParam().papers);
  const std::string before = test::Settings(world);
  EXPECT_EQ(NextCustomPaperId(), GetParam().next);
  EXPECT_SETTINGS(world, before);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(NextPaperIdOfNothing, IsTheFirst) {
  test::TestWorld world;
  EXPECT_EQ(NextCustomPaperId(), 288);
  test::TestWorld unreadable;
  test::PutSettings(unreadable, "<object:childobjs>");
  EXPECT_EQ(NextCustomPaperId(), 288);
}

// ---- Reading all --------------------------------------------------------------------------------

std::vector<std::uint32_t> ReadIds(std::size_t room) {
  std::vector<CustomPaperRecord> records(room + 1, Poisoned());
  const std::size_t count = ReadCustomPapers(std::span(records).first(room));
  std::vector<std::uint32_t> ids;
  for (std::size_t i = 0; i < count; ++i) {
    ids.push_back(records[i].PaperId);
  }
  for (std::size_t i = count; i < records.size(); ++i) {
    EXPECT_EQ(test::Difference(test::BytesOf(records[i]), test::BytesOf(Poisoned())), "") << i;
  }
  return ids;
}

TEST(ReadingAllPapers, GivesThemInStoreOrderWithoutTheUnreadableOnes) {
  test::TestWorld world;
  PutPapers(world, {Paper("Z", 291), Record("Odd", "x"), Paper("A", 288),
                    Paper(std::string(33, 'n'), 290), Paper("M", 291)});
  EXPECT_THAT(ReadIds(20), testing::ElementsAre(291, 288, 291));
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(ReadingAllPapers, StopsWhenThereIsNoMoreRoom) {
  test::TestWorld world;
  PutPapers(world, ManyPapers(25, 288));
  EXPECT_EQ(ReadIds(20).size(), 20U);
  EXPECT_EQ(ReadIds(20).back(), 307U);
  EXPECT_THAT(ReadIds(1), testing::ElementsAre(288));
  EXPECT_THAT(ReadIds(0), testing::IsEmpty());
}

TEST(ReadingAllPapers, MakesTheFileAndItsBranchesFirst) {
  test::TestWorld world;
  EXPECT_THAT(ReadIds(20), testing::IsEmpty());
  EXPECT_SETTINGS(world, SettingsTree().Bytes());
}

TEST(ReadingAllPapers, ReplacesAForeignFileFirst) {
  test::TestWorld world;
  test::PutSettings(
      world, Container("cfgobj",
                       {Container("UIParam", {Container("cuspapersetting", {Paper("A", 288)})})}));
  EXPECT_THAT(ReadIds(20), testing::IsEmpty());
  EXPECT_SETTINGS(world, SettingsTree().Bytes());
}

TEST(ReadingAllPapers, OfAFileThatIsNoTreeGivesNone) {
  test::TestWorld world;
  test::PutSettings(world, "<object:childobjs>");
  EXPECT_THAT(ReadIds(20), testing::IsEmpty());
  EXPECT_SETTINGS(world, "<object:childobjs>");
}

// ---- Watermarks ---------------------------------------------------------------------------------

class WatermarkLength : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Bytes, WatermarkLength, testing::Values(1, 72, 1347, 1348, 1349, 9000),
                         testing::PrintToStringParamName());

TEST_P(WatermarkLength, IsTheCallersAndMustBeTheStoredOneToRead) {
  test::TestWorld world;
  test::PutSettings(world, SettingsTree().Bytes());
  const WatermarkStore store;
  const test::ByteRecord value = test::RandomBytes(GetParam(), 5);
  ASSERT_TRUE(store.Save(u"Mark", std::as_bytes(std::span(value))));
  EXPECT_SETTINGS(world,
                  SettingsTree{.watermarks = {Record("Mark", test::AsString(value))}}.Bytes());
  test::ByteRecord read(GetParam(), 0xC5);
  EXPECT_TRUE(store.Read(u"Mark", std::as_writable_bytes(std::span(read))));
  EXPECT_EQ(test::Difference(read, value), "");
  for (const std::size_t other : {GetParam() - 1, GetParam() + 1}) {
    test::ByteRecord refused(other, 0xC5);
    EXPECT_FALSE(store.Read(u"Mark", std::as_writable_bytes(std::span(refused)))) << other;
    EXPECT_THAT(refused, testing::Each(0xC5)) << other;
  }
}

}  // namespace
}  // namespace ostrel
