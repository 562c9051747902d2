// What all three stores do alike: saving, deleting, reading, listing, and the rules for names.
#include "config/setting_stores.h"

#include "core/text.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::LyingContainer;
using test::Record;
using test::SettingsTree;
using test::Version;

// The file keeps numbers of three kinds of record; these are their lengths.
static_assert(sizeof(FavoriteRecord) == 8408);
static_assert(sizeof(CustomPaperRecord) == 72);
static_assert(sizeof(WatermarkData) == 1348);

// One of the stores, with records told apart by a number.
class AnyStore {
 public:
  AnyStore(const char* storeName, const char* branchName, std::size_t recordBytes)
      : name(storeName), branch(branchName), bytes(recordBytes) {}
  virtual ~AnyStore() = default;
  AnyStore(const AnyStore&) = delete;
  AnyStore& operator=(const AnyStore&) = delete;

  virtual const SettingStore& store() const = 0;
  virtual bool Save(const char16_t* recordName, std::uint32_t record) const = 0;
  // Result: whether the store reads a record; `value` takes its bytes as the file keeps them, less
  // what isn't read back.
  virtual bool Read(const char16_t* recordName, std::string& value) const = 0;
  // The value in the file.
  virtual std::string Value(std::u16string_view recordName, std::uint32_t record) const = 0;
  // The records of this store in a tree.
  virtual std::vector<std::string>& RecordsIn(SettingsTree& tree) const = 0;

  const char* name;
  const char* branch;
  std::size_t bytes;
};

class AnyFavorites final : public AnyStore {
 public:
  AnyFavorites() : AnyStore("Favorites", "savesetting", 8408) {}
  const SettingStore& store() const override { return store_; }
  bool Save(const char16_t* recordName, std::uint32_t record) const override {
    return store_.Save(recordName, *test::ContextOf(record));
  }
  bool Read(const char16_t* recordName, std::string& value) const override {
    const auto context = test::ContextOf(0xC5C5);
    const bool read = store_.Read(recordName, context.get());
    value = test::FavoriteValue(*context, u"").substr(0, 7896);
    return read;
  }
  std::string Value(std::u16string_view recordName, std::uint32_t record) const override {
    return test::FavoriteValue(*test::ContextOf(record), recordName);
  }
  std::vector<std::string>& RecordsIn(SettingsTree& tree) const override { return tree.favorites; }

 private:
  FavoriteStore store_;
};

template <typename RecordType>
RecordType RandomRecord(std::uint32_t seed) {
  RecordType record;
  test::SetBytes(record, test::RandomBytes(sizeof(record), seed));
  return record;
}

class AnyPapers final : public AnyStore {
 public:
  AnyPapers() : AnyStore("Papers", "cuspapersetting", 72) {}
  const SettingStore& store() const override { return store_; }
  bool Save(const char16_t* recordName, std::uint32_t record) const override {
    return store_.Save(recordName, RandomRecord<CustomPaperRecord>(record));
  }
  bool Read(const char16_t* recordName, std::string& value) const override {
    auto record = RandomRecord<CustomPaperRecord>(0xC5C5);
    const bool read = store_.Read(recordName, record);
    value = test::AsString(test::BytesOf(record));
    return read;
  }
  std::string Value(std::u16string_view /*recordName*/, std::uint32_t record) const override {
    return test::AsString(test::RandomBytes(72, record));
  }
  std::vector<std::string>& RecordsIn(SettingsTree& tree) const override { return tree.papers; }

 private:
  CustomPaperStore store_;
};

class AnyWatermarks final : public AnyStore {
 public:
  AnyWatermarks() : AnyStore("Watermarks", "watermarksetting", 1348) {}
  const SettingStore& store() const override { return store_; }
  bool Save(const char16_t* recordName, std::uint32_t record) const override {
    const auto value = test::RandomBytes(1348, record);
    return store_.Save(recordName, std::as_bytes(std::span(value)));
  }
  bool Read(const char16_t* recordName, std::string& value) const override {
    auto poison = test::RandomBytes(1348, 0xC5C5);
    const bool read = store_.Read(recordName, std::as_writable_bytes(std::span(poison)));
    value = test::AsString(poison);
    return read;
  }
  std::string Value(std::u16string_view /*recordName*/, std::uint32_t record) const override {
    return test::AsString(test::RandomBytes(1348, record));
  }
  std::vector<std::string>& RecordsIn(SettingsTree& tree) const override { return tree.watermarks; }

 private:
  WatermarkStore store_;
};

const AnyFavorites kFavorites;
const AnyPapers kPapers;
const AnyWatermarks kWatermarks;

class EveryStore : public testing::TestWithParam<const AnyStore*> {
 protected:
  // A tree with something in each branch, so that a store that touches another's shows.
  SettingsTree Tree() const {
    SettingsTree tree = {.favorites = {Record("Other", "favorite")},
                         .current = {Record("Other", "current")},
                         .papers = {Record("Other", "paper")},
                         .watermarks = {Record("Other", "watermark")}};
    any_.RecordsIn(tree).clear();
    return tree;
  }
  // The bytes of a file whose branch of this store holds these records.
  std::string File(const std::vector<std::string>& records) const {
    SettingsTree tree = Tree();
    any_.RecordsIn(tree) = records;
    return tree.Bytes();
  }
  // The record as the file keeps it. `narrow` is the name in UTF-8.
  std::string Kept(std::string_view narrow, std::u16string_view name, std::uint32_t record) const {
    return Record(narrow, any_.Value(name, record));
  }
  std::string Kept(char name, std::uint32_t record) const {
    return Kept(std::string(1, name), std::u16string(1, static_cast<char16_t>(name)), record);
  }
  // What a read gives of a record: all but the trailing name of a favourite.
  std::string ReadBack(std::uint32_t record) const {
    return any_.Value(u"", record).substr(0, std::min<std::size_t>(any_.bytes, 7896));
  }
  // Poison, as a refused read leaves it.
  std::string Untouched() const {
    std::string value;
    any_.Read(std::u16string(40, u'x').c_str(), value);
    return value;
  }

  const AnyStore& any_ = *GetParam();
  test::TestWorld world_;
};

INSTANTIATE_TEST_SUITE_P(Stores, EveryStore,
                         testing::Values<const AnyStore*>(&kFavorites, &kPapers, &kWatermarks),
                         [](const auto& row) { return std::string(row.param->name); });

// ---- Saving -------------------------------------------------------------------------------------

TEST_P(EveryStore, SavesARecordIntoItsOwnBranchToTheByte) {
  test::PutSettings(world_, File({}));
  ASSERT_TRUE(any_.Save(u"A", 1));
  EXPECT_SETTINGS(world_, File({Kept('A', 1)}));
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_P(EveryStore, SavesANewRecordAtTheEnd) {
  test::PutSettings(world_, File({Record("Zero", "x"), Kept('B', 2)}));
  ASSERT_TRUE(any_.Save(u"A", 1));
  EXPECT_SETTINGS(world_, File({Record("Zero", "x"), Kept('B', 2), Kept('A', 1)}));
}

TEST_P(EveryStore, MovesARecordThatIsSavedAgainToTheEnd) {
  test::PutSettings(world_, File({Kept('A', 1), Kept('B', 2), Kept('C', 3)}));
  ASSERT_TRUE(any_.Save(u"A", 4));
  EXPECT_SETTINGS(world_, File({Kept('B', 2), Kept('C', 3), Kept('A', 4)}));
}

TEST_P(EveryStore, ReplacesTheFirstOfTwoRecordsOfOneName) {
  test::PutSettings(world_, File({Kept('A', 1), Kept('B', 2), Kept('A', 3)}));
  ASSERT_TRUE(any_.Save(u"A", 4));
  EXPECT_SETTINGS(world_, File({Kept('B', 2), Kept('A', 3), Kept('A', 4)}));
}

TEST_P(EveryStore, SavesMoreRecordsThanItSaysItHasRoomFor) {
  test::PutSettings(world_, File({}));
  std::vector<std::string> kept;
  for (char name = 'A'; name < 'A' + 18; ++name) {
    const char16_t wide[] = {static_cast<char16_t>(name), 0};
    ASSERT_TRUE(any_.Save(wide, 7));
    kept.push_back(Kept(name, 7));
  }
  EXPECT_SETTINGS(world_, File(kept));
  EXPECT_EQ(any_.store().MaxCount(), 16);
  EXPECT_EQ(any_.store().Count(), 18);
}

// ---- Deleting -----------------------------------------------------------------------------------

TEST_P(EveryStore, DeletesARecordFromItsOwnBranchOnly) {
  test::PutSettings(world_, File({Kept('A', 1), Kept('B', 2), Kept('C', 3)}));
  ASSERT_TRUE(any_.store().Delete(u"B"));
  EXPECT_SETTINGS(world_, File({Kept('A', 1), Kept('C', 3)}));
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_P(EveryStore, DeletesTheLastRecord) {
  test::PutSettings(world_, File({Kept('A', 1)}));
  ASSERT_TRUE(any_.store().Delete(u"A"));
  EXPECT_SETTINGS(world_, File({}));
}

TEST_P(EveryStore, RefusesToDeleteAnUnknownNameWithoutWritingTheFile) {
  // Blank lines between tags are lost by any writing.
  const std::string file = "\n\n" + File({Kept('A', 1)});
  test::PutSettings(world_, file);
  world_.platform.faults.StartTrace();
  EXPECT_FALSE(any_.store().Delete(u"Other"));  // a name in all the other branches
  EXPECT_FALSE(any_.store().Delete(u""));
  EXPECT_SETTINGS(world_, file);
  EXPECT_EQ(world_.platform.files.openings(), 2U);  // once for each look
  EXPECT_EQ(test::CallsOf(world_, "WriteFile"), 0U);
}

// ---- Reading ------------------------------------------------------------------------------------

TEST_P(EveryStore, ReadsARecordAndWritesNothing) {
  const std::string file = "\n" + File({Kept('A', 1), Kept('B', 2)});
  test::PutSettings(world_, file);
  std::string value;
  ASSERT_TRUE(any_.Read(u"B", value));
  EXPECT_EQ(value, ReadBack(2));
  EXPECT_SETTINGS(world_, file);
  EXPECT_EQ(world_.platform.files.openings(), 1U);
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_P(EveryStore, ReadsTheFirstOfTwoRecordsOfOneName) {
  test::PutSettings(world_, File({Kept('A', 1), Kept('A', 2)}));
  std::string value;
  ASSERT_TRUE(any_.Read(u"A", value));
  EXPECT_EQ(value, ReadBack(1));
}

TEST_P(EveryStore, ListsButCannotReadARecordOfAnotherLength) {
  const std::string whole = any_.Value(u"A", 1);
  test::PutSettings(world_, File({Record("Short", whole.substr(1)), Record("Long", whole + "x"),
                                  Record("None", ""), LyingContainer("Branch", 1, {})}));
  NameList names;
  EXPECT_EQ(any_.store().List(names), 4);
  for (const char16_t* name : {u"Short", u"Long", u"None", u"Branch", u"Missing"}) {
    std::string value;
    EXPECT_FALSE(any_.Read(name, value)) << int{name[0]};
    EXPECT_EQ(value, Untouched());
  }
}

TEST_P(EveryStore, ReadsARecordThatTheFileCutsOffWithZerosBehind) {
  const std::string file = File({Kept('A', 1)});
  const std::size_t start = file.find(any_.Value(u"A", 1));
  for (const std::size_t held : {std::size_t{0}, std::size_t{1}, any_.bytes / 2, any_.bytes - 1}) {
    test::PutSettings(world_, file.substr(0, start + held));
    std::string expected = any_.Value(u"A", 1).substr(0, held);
    expected.resize(ReadBack(1).size());
    std::string value;
    ASSERT_TRUE(any_.Read(u"A", value)) << held;
    EXPECT_EQ(value, expected) << held;
  }
}

// ---- Names --------------------------------------------------------------------------------------

TEST_P(EveryStore, TellsNamesApartByTheCaseOfLetters) {
  test::PutSettings(world_, File({Kept('a', 1)}));
  std::string value;
  EXPECT_FALSE(any_.Read(u"A", value));
  EXPECT_FALSE(any_.store().Delete(u"A"));
  ASSERT_TRUE(any_.Save(u"A", 2));
  EXPECT_SETTINGS(world_, File({Kept('a', 1), Kept('A', 2)}));
}

TEST_P(EveryStore, KeepsANameOf31UnitsWhole) {
  test::PutSettings(world_, File({}));
  const std::u16string name(31, u'n');
  ASSERT_TRUE(any_.Save(name.c_str(), 1));
  EXPECT_SETTINGS(world_, File({Kept(std::string(31, 'n'), name, 1)}));
  std::string value;
  EXPECT_TRUE(any_.Read(name.c_str(), value));
  EXPECT_TRUE(any_.store().Delete(name.c_str()));
}

TEST_P(EveryStore, CutsANameOf32UnitsTo31) {
  test::PutSettings(world_, File({Kept(std::string(31, 'n'), std::u16string(31, u'n'), 1)}));
  const std::u16string name = std::u16string(31, u'n') + u'm';
  std::string value;
  EXPECT_TRUE(any_.Read(name.c_str(), value));
  EXPECT_EQ(value, ReadBack(1));
  EXPECT_TRUE(any_.store().Delete(name.c_str()));
  EXPECT_SETTINGS(world_, File({}));
  ASSERT_TRUE(any_.Save(name.c_str(), 2));
  NameList names;
  ASSERT_EQ(any_.store().List(names), 1);
  EXPECT_EQ(FieldText(names.rows[0]), std::u16string(31, u'n'));
}

TEST_P(EveryStore, RefusesANameOf33UnitsBeforeItTouchesTheFile) {
  test::PutSettings(world_, File({Kept(std::string(31, 'n'), std::u16string(31, u'n'), 1)}));
  const std::u16string name(33, u'n');
  world_.platform.faults.StartTrace();
  std::string value;
  EXPECT_FALSE(any_.Save(name.c_str(), 2));
  EXPECT_FALSE(any_.Read(name.c_str(), value));
  EXPECT_FALSE(any_.store().Delete(name.c_str()));
  EXPECT_THAT(world_.platform.faults.trace(), testing::IsEmpty());
  EXPECT_EQ(value, Untouched());
}

struct NameCase {
  const char* name;
  std::u16string wide;
  std::string narrow;
  std::u16string listed;  // the same as `wide` when empty
};

TEST_P(EveryStore, KeepsNamesAsUtf8) {
  std::u16string threeByteUnits;
  std::string threeByteText;
  for (int i = 0; i < 31; ++i) {
    threeByteUnits += u'\u20AC';
    threeByteText += "\xE2\x82\xAC";
  }
  const std::u16string split = std::u16string(30, u'n') + u"\xD83D\xDCC4";
  const NameCase kCases[] = {
      {"Umlaut", u"Gr\u00F6\u00DFe",
       "Gr\xC3\xB6\xC3\x9F"
       "e",
       u""},
      {"SurrogatePair", u"x\xD83D\xDCC4y", "x\xF0\x9F\x93\x84y", u""},
      {"LoneSurrogate", u"x\xD83Dy", "x\xEF\xBF\xBDy", u"x\uFFFDy"},
      // The longest that a name can get: 93 bytes of the 127 that there is room for.
      {"ThreeBytesAUnit", threeByteUnits, threeByteText, u""},
      // The working copy cuts through the pair.
      {"PairCutInHalf", split, std::string(30, 'n') + "\xEF\xBF\xBD",
       std::u16string(30, u'n') + u'\uFFFD'},
      {"TagWords", u"a,b:c>d<e", "a,b:c>d<e", u""}};
  for (const NameCase& row : kCases) {
    test::PutSettings(world_, File({}));
    ASSERT_TRUE(any_.Save(row.wide.c_str(), 1)) << row.name;
    // A favourite's record holds the name of the working copy.
    EXPECT_SETTINGS(world_, File({Kept(row.narrow, row.wide.substr(0, 31), 1)})) << row.name;
    std::string value;
    EXPECT_TRUE(any_.Read(row.wide.c_str(), value)) << row.name;
    EXPECT_EQ(value, ReadBack(1)) << row.name;
    NameList names;
    ASSERT_EQ(any_.store().List(names), 1) << row.name;
    EXPECT_EQ(FieldText(names.rows[0]), row.listed.empty() ? row.wide : row.listed) << row.name;
    EXPECT_TRUE(any_.store().Delete(row.wide.c_str())) << row.name;
    EXPECT_SETTINGS(world_, File({})) << row.name;
  }
}

// ---- Listing ------------------------------------------------------------------------------------

void Poison(NameList& names) {
  for (auto& row : names.rows) {
    row.fill(u'#');
  }
}

TEST_P(EveryStore, ListsItsNamesInFileOrderAndLeavesTheOtherRows) {
  test::PutSettings(world_, File({Record("Zoe", "1"), Record("Ada", "22"), Record("Max", "")}));
  NameList names;
  Poison(names);
  ASSERT_EQ(any_.store().List(names), 3);
  EXPECT_EQ(FieldText(names.rows[0]), u"Zoe");
  EXPECT_EQ(FieldText(names.rows[1]), u"Ada");
  EXPECT_EQ(FieldText(names.rows[2]), u"Max");
  EXPECT_THAT(names.rows[3], testing::Each(u'#'));
  EXPECT_EQ(any_.store().Count(), 3);
  EXPECT_EQ(world_.platform.files.openings(), 2U);  // neither of them writes
}

TEST_P(EveryStore, ListsNoMoreThanTheCapacity) {
  test::PutSettings(world_, File({Record("A", ""), Record("B", ""), Record("C", "")}));
  NameList names;
  Poison(names);
  ASSERT_EQ(any_.store().List(names, 2), 2);
  EXPECT_EQ(FieldText(names.rows[1]), u"B");
  EXPECT_THAT(names.rows[2], testing::Each(u'#'));
  EXPECT_EQ(any_.store().List(names, 0), 0);
}

TEST_P(EveryStore, ListsThirtyTwoNamesAtMost) {
  std::vector<std::string> records;
  for (int i = 0; i < 40; ++i) {
    records.push_back(Record("N" + std::to_string(i), ""));
  }
  test::PutSettings(world_, File(records));
  NameList names;
  ASSERT_EQ(any_.store().List(names), 32);
  EXPECT_EQ(FieldText(names.rows[31]), u"N31");
  EXPECT_EQ(any_.store().List(names, 1000), 32);
  EXPECT_EQ(any_.store().Count(), 40);
}

TEST_P(EveryStore, ListsLongNamesCutTo63Units) {
  test::PutSettings(world_,
                    File({Record(std::string(63, 'x'), ""), Record(std::string(64, 'y'), ""),
                          Record(std::string(127, 'z'), "")}));
  NameList names;
  Poison(names);
  ASSERT_EQ(any_.store().List(names), 3);
  EXPECT_EQ(FieldText(names.rows[0]), std::u16string(63, u'x'));
  EXPECT_EQ(FieldText(names.rows[1]), std::u16string(63, u'y'));
  EXPECT_EQ(FieldText(names.rows[2]), std::u16string(63, u'z'));
}

struct CountCase {
  const char* name;
  std::size_t announced;
  std::size_t held;
};

TEST_P(EveryStore, CountsWhatIsAnnouncedAndListsWhatIsThere) {
  constexpr CountCase kCases[] = {{"Honest", 2, 2},
                                  {"AnnouncesMore", 9, 2},
                                  {"AnnouncesFewer", 1, 2},
                                  {"AnnouncesNone", 0, 2},
                                  {"HoldsNone", 5, 0}};
  for (const CountCase& row : kCases) {
    const std::vector<std::string> records(row.held, Record("A", "x"));
    test::PutSettings(
        world_,
        test::Container(
            "cfgobj",
            {Version(),
             test::Container("UIParam", {LyingContainer(any_.branch, row.announced, records)})}));
    NameList names;
    EXPECT_EQ(any_.store().Count(), static_cast<int>(row.announced)) << row.name;
    EXPECT_EQ(any_.store().List(names), static_cast<int>(row.held)) << row.name;
  }
}

TEST_P(EveryStore, CountsANegativeAnnouncementAsItStands) {
  std::string file = File({});
  const std::string tag = test::OpenTag(any_.branch, "null", 0, 0);
  file.replace(file.find(tag), tag.size(),
               "<object:" + std::string(any_.branch) + ",type:null,len:0,childobjs:-3>");
  test::PutSettings(world_, file);
  EXPECT_EQ(any_.store().Count(), -3);
}

// ---- Files that are no good ---------------------------------------------------------------------

TEST_P(EveryStore, FailsWithoutAUsableFileAndLeavesIt) {
  struct BadFile {
    const char* name;
    std::string bytes;
  };
  SettingsTree others = Tree();
  const std::string full = others.Bytes();
  const std::string branch = test::Container(any_.branch, {});
  std::string withoutBranch = full;
  withoutBranch.erase(withoutBranch.find(branch), branch.size());
  const BadFile kFiles[] = {
      {"WithoutBranch", withoutBranch},
      {"WithoutParameters", test::Container("cfgobj", {Version()})},
      {"Empty", ""},
      {"NoTree", full + "<object:childobjs>"},
      {"BranchAtTheRoot", test::Container("cfgobj", {Version(), branch})},
      {"HiddenBranch",
       test::Container("cfgobj", {Version(), LyingContainer("UIParam", 0, {branch})})},
  };
  for (const BadFile& row : kFiles) {
    test::PutSettings(world_, row.bytes);
    world_.platform.faults.StartTrace();
    std::string value;
    NameList names;
    Poison(names);
    EXPECT_FALSE(any_.Save(u"A", 1)) << row.name;
    EXPECT_FALSE(any_.Read(u"A", value)) << row.name;
    EXPECT_FALSE(any_.store().Delete(u"A")) << row.name;
    EXPECT_EQ(any_.store().List(names), 0) << row.name;
    EXPECT_EQ(any_.store().Count(), 0) << row.name;
    EXPECT_THAT(names.rows[0], testing::Each(u'#')) << row.name;
    EXPECT_EQ(value, Untouched()) << row.name;
    EXPECT_SETTINGS(world_, row.bytes) << row.name;
    EXPECT_EQ(test::CallsOf(world_, "WriteFile"), 0U) << row.name;
    EXPECT_EQ(world_.Leftovers(), "") << row.name;
  }
}

TEST_P(EveryStore, FailsOnAMissingFileButMakesANewOneByLooking) {
  std::string value;
  EXPECT_FALSE(any_.Read(u"A", value));
  EXPECT_SETTINGS(world_, test::Container("cfgobj", {Version()}));
  EXPECT_FALSE(any_.Save(u"A", 1));
  EXPECT_FALSE(any_.store().Delete(u"A"));
  EXPECT_SETTINGS(world_, test::Container("cfgobj", {Version()}));
}

TEST_P(EveryStore, FailsOnAFileThatMayNotBeWritten) {
  const std::string file = File({Kept('A', 1)});
  test::PutSettings(world_, file);
  world_.platform.files.MakeReadOnly(test::kSettingsFolder);
  std::string value;
  EXPECT_FALSE(any_.Save(u"B", 1));
  EXPECT_FALSE(any_.Read(u"A", value));
  EXPECT_FALSE(any_.store().Delete(u"A"));
  EXPECT_EQ(any_.store().Count(), 0);
  EXPECT_SETTINGS(world_, file);
}

}  // namespace
}  // namespace ostrel
