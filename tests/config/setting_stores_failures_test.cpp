// Every operation on the settings file, walked through all failures of the platform: the first call
// fails, then the second, and so on until a run comes through untouched. Nothing crashes or leaks,
// and the file is always the one from before or the one that the operation makes. Where the file is
// emptied before it is written, or deleted before it is made again, it may also be empty or gone.
#include "config/setting_stores.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::Container;
using test::ContextOf;
using test::FavoriteValue;
using test::PaperValue;
using test::Record;
using test::SettingsTree;
using test::Version;

// What an operation tells: its result and what it wrote to its output, as one text.
using Answer = std::string;

struct Walk {
  const char* name;
  std::string before;  // the file's bytes; kMissing for none
  Answer (*run)(UIContext& context);
  Answer good;                          // of a run without a failure
  std::vector<std::string> alsoOnDisk;  // states between the old and the new file
  std::vector<Answer> alsoAnswered = {"0"};
};

constexpr char kMissing[] = "(no file)";
const std::string kEmpty;
const std::string kBare = Container("cfgobj", {Version()});
const std::string kEarlier("0.0.0.0\0", 8);

std::string Favorite(std::string_view name, std::uint32_t seed) {
  const std::u16string wide(name.begin(), name.end());
  return Record(name, FavoriteValue(*ContextOf(seed, wide), wide));
}

SettingsTree Tree() {
  return {.favorites = {Favorite("A", 1), Favorite("B", 2)},
          .current = {Favorite("C", 3)},
          .papers = {Record("P", PaperValue(288, u"P", 3000, 4200)),
                     Record("Q", PaperValue(289, u"Q", 3001, 4201))},
          .watermarks = {Record("W", "mark")}};
}
std::string File() {
  return Tree().Bytes();
}
SettingsTree EarlierTree() {
  SettingsTree tree = Tree();
  tree.version = kEarlier;
  return tree;
}

Answer Told(bool result) {
  return result ? "1" : "0";
}
Answer Told(SettingsFileState state) {
  return state == SettingsFileState::kUsable ? "usable" : "corrupt";
}

const std::vector<std::byte>& Mark() {
  static const std::vector<std::byte> mark(1348, std::byte{0x5A});
  return mark;
}

// States that a migration of EarlierTree() passes through: each favourite deleted and saved again,
// then the current record.
std::vector<std::string> StatesOfMigration() {
  // A list that fails counts none, which the count contradicts: the file is taken for a corrupt
  // one.
  std::vector<std::string> states = {kEmpty, kMissing};
  const auto keep = [&](std::vector<std::string> favorites) {
    SettingsTree tree = EarlierTree();
    tree.favorites = std::move(favorites);
    states.push_back(tree.Bytes());
    tree.version = test::kVersionBytes;
    states.push_back(tree.Bytes());
  };
  // Which of the three records were rewritten depends on the calls that failed.
  const std::string a = Favorite("A", 1);
  const std::string b = Favorite("B", 2);
  const std::string c = Favorite("C", 3);
  for (const auto& list : std::vector<std::vector<std::string>>{
           {a, b}, {b}, {a}, {b, a}, {a, b, c}, {b, c}, {a, c}, {b, a, c}}) {
    keep(list);
  }
  return states;
}

const Walk kWalks[] = {
    {"InitOfAMissingFile",
     kMissing,
     [](UIContext&) { return Told(InitSettingsFile()); },
     "1",
     {kEmpty, kBare}},
    {"InitOfAForeignFile",
     "foreign",
     [](UIContext&) { return Told(InitSettingsFile()); },
     "1",
     {kMissing, kEmpty, kBare}},
    {"InitOfABareFile", kBare, [](UIContext&) { return Told(InitSettingsFile()); }, "1", {kEmpty}},
    {"InitOfAGoodFile",
     File(),
     [](UIContext&) { return Told(InitSettingsFile()); },
     "1",
     {kEmpty, SettingsTree().Bytes()}},
    {"SaveOfAFavorite",
     File(),
     [](UIContext& context) { return Told(FavoriteStore().Save(u"A", context)); },
     "1",
     {kEmpty}},
    {"SaveOfTheCurrentRecord",
     File(),
     [](UIContext& context) { return Told(FavoriteStore().SaveCurrent(u"D", context)); },
     "1",
     {kEmpty}},
    {"RenameOfAFavorite",
     File(),
     [](UIContext& context) { return Told(FavoriteStore().Rename(u"N", u"A", context)); },
     "1",
     {kEmpty}},
    {"DeleteOfAFavorite",
     File(),
     [](UIContext&) { return Told(FavoriteStore().Delete(u"A")); },
     "1",
     {kEmpty}},
    {"ReadOfAFavorite",
     File(),
     [](UIContext& context) { return Told(FavoriteStore().Read(u"B", &context)); },
     "1",
     {}},
    {"SaveOfAPaper",
     File(),
     [](UIContext&) { return Told(CustomPaperStore().Save(u"R", CustomPaperRecord{})); },
     "1",
     {kEmpty}},
    {"SaveOfAWatermark",
     File(),
     [](UIContext&) { return Told(WatermarkStore().Save(u"W", Mark())); },
     "1",
     {kEmpty}},
    {"ListOfFavorites",
     File(),
     [](UIContext&) {
       NameList names;
       return std::to_string(FavoriteStore().List(names));
     },
     "2",
     {}},
    {"CountOfPapers",
     File(),
     [](UIContext&) { return std::to_string(CustomPaperStore().Count()); },
     "2",
     {}},
    {"FindingAPaper",
     File(),
     [](UIContext&) {
       CustomPaperRecord record = {};
       return FindCustomPaper(289, &record) ? std::to_string(record.Width) : Answer("0");
     },
     "3001",
     {}},
    {"NextPaperId",
     File(),
     [](UIContext&) { return std::to_string(NextCustomPaperId()); },
     "290",
     {},
     {"288"}},
    {"ReadingAllPapers",
     File(),
     [](UIContext&) {
       std::vector<CustomPaperRecord> records(20);
       return std::to_string(ReadCustomPapers(records));
     },
     "2",
     {kEmpty, SettingsTree().Bytes()}},
    {"ReadingAllPapersOfAMissingFile",
     kMissing,
     [](UIContext&) {
       std::vector<CustomPaperRecord> records(20);
       return std::to_string(ReadCustomPapers(records));
     },
     "0",
     {kEmpty, kBare}},
    {"CheckOfAGoodFile",
     File(),
     [](UIContext& context) { return Told(CheckSettingsFile(&context)); },
     "usable",
     {},
     {}},
    {"CheckOfAForeignFile",
     "foreign",
     [](UIContext& context) { return Told(CheckSettingsFile(&context)); },
     "corrupt",
     {},
     {"usable"}},
    {"CheckOfAnEarlierFile",
     EarlierTree().Bytes(),
     [](UIContext& context) { return Told(CheckSettingsFile(&context)); },
     "usable",
     StatesOfMigration(),
     {"corrupt"}},
    {"ForgettingTheFile",
     File(),
     [](UIContext&) {
       std::array<char16_t, kMaxPathUnits> path;
       GetSettingsFilePath(path);
       DeleteRememberedSettingsFile();
       return Answer("done");
     },
     "done",
     {},
     {}},
};

void PrintTo(const Walk& walk, std::ostream* out) {
  *out << walk.name;
}

class SettingsFailures : public testing::TestWithParam<Walk> {
 protected:
  // A world with the file of the walk in it.
  static void Arrange(test::TestWorld& world) {
    if (GetParam().before != kMissing) {
      test::PutSettings(world, GetParam().before);
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Operations, SettingsFailures, testing::ValuesIn(kWalks), test::CaseName());

TEST_P(SettingsFailures, LeaveTheOldFileOrTheNewOneAndNothingBehind) {
  constexpr std::size_t kMostCalls = 1000;
  std::string after;
  {
    test::TestWorld world;
    Arrange(world);
    const auto context = ContextOf(9);
    ASSERT_EQ(GetParam().run(*context), GetParam().good);
    after = test::Settings(world);
  }
  std::size_t n = 1;
  for (; n < kMostCalls; ++n) {
    test::TestWorld world;
    Arrange(world);
    const auto context = ContextOf(9);
    world.platform.faults.FailCall(n);
    const Answer answer = GetParam().run(*context);
    const std::string left = test::Settings(world);
    // A file that a failed access test calls missing is made anew, over what it was.
    EXPECT_TRUE(left == GetParam().before || left == after || left == kBare ||
                std::ranges::count(GetParam().alsoOnDisk, left) != 0)
        << "with call " << n << " failing the file is\n"
        << test::Readable(left);
    EXPECT_TRUE(answer == GetParam().good ||
                std::ranges::count(GetParam().alsoAnswered, answer) != 0)
        << "with call " << n << " failing: " << answer;
    EXPECT_EQ(world.Leftovers(), "") << n;
    if (!world.platform.faults.fired()) {
      EXPECT_EQ(left, after);
      break;
    }
  }
  EXPECT_GT(n, 5U);
  EXPECT_LT(n, kMostCalls);
}

// Whatever a failure leaves, the next Init makes it usable, or stands aside for a file that is one.
TEST_P(SettingsFailures, AreOverComeByTheNextInit) {
  for (std::size_t n = 1; n < 1000; ++n) {
    test::TestWorld world;
    Arrange(world);
    const auto context = ContextOf(9);
    world.platform.faults.FailCall(n);
    GetParam().run(*context);
    const bool fired = world.platform.faults.fired();
    world.platform.faults.Clear();
    EXPECT_TRUE(InitSettingsFile()) << n;
    EXPECT_TRUE(CustomPaperStore().Save(u"Last", CustomPaperRecord{})) << n;
    EXPECT_TRUE(FavoriteStore().Save(u"Last", *context)) << n;
    if (!fired) {
      break;
    }
  }
}

// ---- A full disk --------------------------------------------------------------------------------

TEST(SettingsOnAFullDisk, AreCutOffAndStillReadAsFarAsTheyGo) {
  const std::string file = File();
  for (std::size_t room = 0; room < file.size() + 400; room += 97) {
    test::TestWorld world;
    test::PutSettings(world, file);
    world.platform.files.freeBytes = room;
    CustomPaperRecord record = {};
    EXPECT_TRUE(CustomPaperStore().Save(u"R", record)) << room;  // no caller could do better
    SettingsTree tree = Tree();
    tree.papers.push_back(Record("R", std::string(72, '\0')));
    const std::string whole = tree.Bytes();
    EXPECT_SETTINGS(world, whole.substr(0, std::min(room, whole.size())));
    world.platform.files.freeBytes.reset();
    InitSettingsFile();
    EXPECT_EQ(world.Leftovers(), "") << room;
  }
}

}  // namespace
}  // namespace ostrel
