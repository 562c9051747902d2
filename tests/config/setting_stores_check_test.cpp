// The check of the settings file when a document sheet opens: the version, the migration of an
// earlier file with all its oddities, and what becomes of a file that is no good.
#include "config/setting_stores.h"
#include "core/text.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::Container;
using test::ContextOf;
using test::FavoriteValue;
using test::LyingContainer;
using test::Record;
using test::SettingsTree;
using test::Version;

const std::string kEarlier("0.0.0.0\0", 8);

// A favourite whose node, whose FavoriteName and whose trailing name may all differ.
std::string Favorite(std::string_view node, std::u16string_view inside, std::uint32_t seed,
                     std::u16string_view trailing) {
  return Record(node, FavoriteValue(*ContextOf(seed, inside), trailing));
}
// One as this driver writes it.
std::string Favorite(std::string_view name, std::uint32_t seed) {
  const std::u16string wide(name.begin(), name.end());
  return Favorite(name, wide, seed, wide);
}

class SettingsCheck : public testing::Test {
 protected:
  SettingsFileState Check() { return CheckSettingsFile(context_.get()); }
  bool ContextIsUntouched() const {
    return test::BytesOf(context_->devmode) == test::BytesOf(ContextOf(99)->devmode) &&
           context_->privatePointer == &context_->devmode.privateDevmode;
  }
  bool ContextHolds(std::uint32_t seed, std::u16string_view inside) const {
    return test::BytesOf(context_->devmode) == test::BytesOf(ContextOf(seed, inside)->devmode) &&
           context_->privatePointer == &context_->devmode.privateDevmode &&
           context_->publicPointer == &context_->devmode.publicDevmode;
  }

  test::TestWorld world_;
  std::unique_ptr<UIContext> context_ = ContextOf(99);
};

// ---- The version --------------------------------------------------------------------------------

enum class Outcome {
  kKept,      // usable and not written
  kMigrated,  // usable, and of this version afterwards
  kCorrupt,   // deleted
};

struct VersionCase {
  const char* name;
  std::string value;
  Outcome outcome;
};

class SettingsVersion : public SettingsCheck, public testing::WithParamInterface<VersionCase> {};

template <std::size_t N>
std::string Text(const char (&text)[N]) {
  return {text, N - 1};
}

INSTANTIATE_TEST_SUITE_P(
    Values, SettingsVersion,
    testing::Values(
        VersionCase{"Equal", Text("0.0.0.1\0"), Outcome::kKept},
        VersionCase{"EqualInTheFirstEightBytes", Text("0.0.0.1\0more"), Outcome::kKept},
        VersionCase{"EqualWithoutItsTerminator", "0.0.0.1", Outcome::kKept},
        VersionCase{"GreaterInTheLastDigit", Text("0.0.0.2\0"), Outcome::kCorrupt},
        VersionCase{"GreaterInTheFirstByte", Text("1\0\0\0\0\0\0\0"), Outcome::kCorrupt},
        VersionCase{"GreaterThoughShorter", "1", Outcome::kCorrupt},
        VersionCase{"GreaterInTheTerminator", "0.0.0.10", Outcome::kCorrupt},
        VersionCase{"GreaterByAByteAbove127", Text("0.0.0\xFF\0\0"), Outcome::kCorrupt},
        // Bytes are compared, not numbers.
        VersionCase{"GreaterAsAByteThoughLessAsANumber", "0.0.00.0", Outcome::kCorrupt},
        VersionCase{"LessAsAByteThoughGreaterAsANumber", "0.0.0.09", Outcome::kMigrated},
        VersionCase{"LessInTheLastDigit", Text("0.0.0.0\0"), Outcome::kMigrated},
        VersionCase{"LessAndLonger", Text("0.0.0.0\0behind it"), Outcome::kMigrated},
        VersionCase{"LessAndShorter", "0.0", Outcome::kMigrated},
        VersionCase{"LessInTheFirstByte", "/9999999", Outcome::kMigrated},
        VersionCase{"WithoutValue", "", Outcome::kMigrated}),
    test::CaseName());

TEST_P(SettingsVersion, DecidesWhetherTheFileIsKeptMigratedOrDeleted) {
  SettingsTree tree = {.version = GetParam().value, .papers = {Record("Card", "x")}};
  // A blank line in front, which any writing loses.
  const std::string file = "\n" + tree.Bytes();
  test::PutSettings(world_, file);
  const SettingsFileState state = Check();
  switch (GetParam().outcome) {
    case Outcome::kKept:
      EXPECT_EQ(state, SettingsFileState::kUsable);
      EXPECT_SETTINGS(world_, file);
      EXPECT_EQ(world_.platform.files.openings(), 1U);
      break;
    case Outcome::kMigrated:
      EXPECT_EQ(state, SettingsFileState::kUsable);
      tree.version = test::kVersionBytes;
      EXPECT_SETTINGS(world_, tree.Bytes());
      break;
    case Outcome::kCorrupt:
      EXPECT_EQ(state, SettingsFileState::kCorrupt);
      EXPECT_SETTINGS(world_, "(no file)");
      break;
  }
  EXPECT_EQ(world_.platform.windows.boxes.size(),
            GetParam().outcome == Outcome::kCorrupt ? 1U : 0U);
  EXPECT_TRUE(ContextIsUntouched());
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(SettingsCheck, MakesAMissingFileAndKeepsIt) {
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_SETTINGS(world_, Container("cfgobj", {Version()}));
}

TEST_F(SettingsCheck, PassesOverAFileThatIsNoTree) {
  test::PutSettings(world_, "<object:childobjs>");
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_SETTINGS(world_, "<object:childobjs>");
  EXPECT_TRUE(world_.platform.windows.boxes.empty());
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(SettingsCheck, PassesOverAFileThatMayNotBeWritten) {
  const std::string file = SettingsTree{.version = "9.9.9.9"}.Bytes();
  test::PutSettings(world_, file);
  world_.platform.files.MakeReadOnly(test::kSettingsPath);
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_SETTINGS(world_, file);
  EXPECT_TRUE(world_.platform.windows.boxes.empty());
}

// ---- The corrupt case ---------------------------------------------------------------------------

struct CorruptCase {
  const char* name;
  std::string file;
};

class CorruptSettings : public SettingsCheck, public testing::WithParamInterface<CorruptCase> {};

INSTANTIATE_TEST_SUITE_P(
    Files, CorruptSettings,
    testing::Values(
        CorruptCase{"Empty", ""}, CorruptCase{"Foreign", "hello"},
        CorruptCase{"WithoutVersion", Container("cfgobj", {Container("UIParam", {})})},
        CorruptCase{"VersionOfOtherCase",
                    Container("cfgobj", {test::Leaf("Version", "string", "0")})},
        CorruptCase{"TooNew", SettingsTree{.version = "0.0.1.0"}.Bytes()},
        // Of an earlier version, its count and its list at odds.
        CorruptCase{"AnnouncesMoreFavorites",
                    Container("cfgobj", {Version(kEarlier),
                                         Container("UIParam", {LyingContainer("savesetting", 2,
                                                                              {Favorite("A", 1)}),
                                                               Container("cursetting", {})})})},
        CorruptCase{"AnnouncesFewerFavorites",
                    Container("cfgobj",
                              {Version(kEarlier),
                               Container("UIParam",
                                         {LyingContainer("savesetting", 1,
                                                         {Favorite("A", 1), Favorite("B", 2)})})})},
        CorruptCase{"AnnouncesNoFavorites",
                    Container("cfgobj",
                              {Version(kEarlier),
                               Container("UIParam",
                                         {LyingContainer("savesetting", 0, {Favorite("A", 1)})})})},
        // More than a list has rows for.
        CorruptCase{"ThirtyThreeFavorites",
                    SettingsTree{.version = kEarlier,
                                 .favorites = std::vector<std::string>(33, Record("A", "x"))}
                        .Bytes()}),
    test::CaseName());

TEST_P(CorruptSettings, FileIsDeletedAndTheUserToldWithoutAnOwner) {
  test::PutSettings(world_, GetParam().file);
  world_.process.CurrentLanguageModule =
      world_.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  ASSERT_EQ(Check(), SettingsFileState::kCorrupt);
  EXPECT_SETTINGS(world_, "(no file)");
  ASSERT_EQ(world_.platform.windows.boxes.size(), 1U);
  const auto& box = world_.platform.windows.boxes.front();
  EXPECT_EQ(box.owner, nullptr);
  EXPECT_EQ(box.caption, test::EnglishStrings().at(199));
  EXPECT_EQ(box.text, test::EnglishStrings().at(254));
  EXPECT_EQ(box.style, 16U);
  EXPECT_TRUE(ContextIsUntouched());
  EXPECT_EQ(world_.Leftovers(1), "");
}

TEST_P(CorruptSettings, FileThatCannotBeDeletedRefusesTheSheetAllTheSame) {
  test::PutSettings(world_, GetParam().file);
  world_.platform.faults.FailOperation("DeleteFileW");
  EXPECT_EQ(Check(), SettingsFileState::kCorrupt);
  EXPECT_SETTINGS(world_, GetParam().file);
  EXPECT_EQ(world_.platform.windows.boxes.size(), 1U);
}

TEST_P(CorruptSettings, FileIsMadeAnewByTheNextInit) {
  test::PutSettings(world_, GetParam().file);
  ASSERT_EQ(Check(), SettingsFileState::kCorrupt);
  ASSERT_TRUE(InitSettingsFile());
  EXPECT_SETTINGS(world_, SettingsTree().Bytes());
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
}

struct BoxCase {
  const char* name;
  bool withModule;
  std::vector<std::uint32_t> missing;  // string ids
  bool rightToLeft;
  bool translated;
  std::uint32_t style;
};

class CorruptBox : public SettingsCheck, public testing::WithParamInterface<BoxCase> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, CorruptBox,
    testing::Values(BoxCase{"Translated", true, {}, false, true, 0x10},
                    BoxCase{"RightToLeft", true, {}, true, true, 0x180010},
                    BoxCase{"WithoutItsCaption", true, {199}, false, false, 0x10},
                    BoxCase{"WithoutItsText", true, {254}, false, false, 0x10},
                    BoxCase{"WithoutBoth", true, {199, 254}, false, false, 0x10},
                    BoxCase{"WithoutALibrary", false, {}, false, false, 0x10},
                    BoxCase{"WithoutALibraryRightToLeft", false, {}, true, false, 0x180010}),
    test::CaseName());

TEST_P(CorruptBox, HasItsTextsOrBothFallbacks) {
  headless::StringTable strings = test::EnglishStrings();
  strings[199] = u"The caption";
  strings[254] = u"The text";
  for (const std::uint32_t id : GetParam().missing) {
    strings.erase(id);
  }
  world_.platform.modules.Install(test::kEnglishLibraryPath, strings);
  if (GetParam().withModule) {
    world_.process.CurrentLanguageModule =
        world_.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  }
  world_.process.RightToLeftLanguage = GetParam().rightToLeft;
  test::PutSettings(world_, "");
  ASSERT_EQ(Check(), SettingsFileState::kCorrupt);
  ASSERT_EQ(world_.platform.windows.boxes.size(), 1U);
  const auto& box = world_.platform.windows.boxes.front();
  EXPECT_EQ(box.caption, GetParam().translated ? u"The caption" : u"Config File");
  EXPECT_EQ(box.text, GetParam().translated ? u"The text" : u"File Corruption!");
  EXPECT_EQ(box.style, GetParam().style);
  EXPECT_EQ(box.owner, nullptr);
}

// ---- Migration ----------------------------------------------------------------------------------

struct MigrationCase {
  const char* name;
  SettingsTree before;
  SettingsTree after;
};

class Migration : public SettingsCheck, public testing::WithParamInterface<MigrationCase> {};

SettingsTree Earlier(std::vector<std::string> favorites, std::vector<std::string> current = {}) {
  return {.version = kEarlier,
          .favorites = std::move(favorites),
          .current = std::move(current),
          .papers = {Record("Card", "paper")},
          .watermarks = {Record("Mark", "watermark")}};
}
SettingsTree Now(std::vector<std::string> favorites, std::vector<std::string> current = {}) {
  SettingsTree tree = Earlier(std::move(favorites), std::move(current));
  tree.version = test::kVersionBytes;
  return tree;
}

INSTANTIATE_TEST_SUITE_P(
    Trees, Migration,
    testing::Values(
        MigrationCase{"WithoutRecords", Earlier({}), Now({})},
        MigrationCase{"FavoritesKeepTheirOrder",
                      Earlier({Favorite("C", 1), Favorite("A", 2), Favorite("B", 3)}),
                      Now({Favorite("C", 1), Favorite("A", 2), Favorite("B", 3)})},
        // The trailing name is written anew.
        MigrationCase{"TrailingNameBecomesTheOneInside", Earlier({Favorite("A", u"A", 1, u"???")}),
                      Now({Favorite("A", u"A", 1, u"A")})},
        // Deleted and saved under the name inside the record: the node's own name stays, too.
        MigrationCase{"RecordOfAnotherNameInsideIsSavedBesideItself",
                      Earlier({Favorite("Node", u"Inside", 1, u"x"), Favorite("B", 2)}),
                      Now({Favorite("Node", u"Inside", 1, u"x"),
                           Favorite("Inside", u"Inside", 1, u"Inside"), Favorite("B", 2)})},
        MigrationCase{"RecordsThatShareANameInsideLeaveTheLast",
                      Earlier({Favorite("A", u"A", 1, u"A"), Favorite("B", u"A", 2, u"B")}),
                      Now({Favorite("B", u"A", 2, u"B"), Favorite("A", u"A", 2, u"A")})},
        // Deleting takes one of them, saving the other.
        MigrationCase{"TwoRecordsOfOneNameBecomeTheFirst",
                      Earlier({Favorite("A", 1), Favorite("A", 2)}), Now({Favorite("A", 1)})},
        MigrationCase{"RecordWithANameInsideOf33UnitsStays",
                      Earlier({Favorite("A", std::u16string(33, u'n'), 1, u"x"), Favorite("B", 2)}),
                      Now({Favorite("A", std::u16string(33, u'n'), 1, u"x"), Favorite("B", 2)})},
        // A favourite now, and still the current record.
        MigrationCase{"CurrentRecordLandsInTheFavorites",
                      Earlier({Favorite("A", 1)}, {Favorite("Cur", 2)}),
                      Now({Favorite("A", 1), Favorite("Cur", 2)}, {Favorite("Cur", 2)})},
        MigrationCase{"CurrentRecordReplacesAFavoriteOfItsName",
                      Earlier({Favorite("A", 1), Favorite("B", 2)}, {Favorite("A", 3)}),
                      Now({Favorite("B", 2), Favorite("A", 3)}, {Favorite("A", 3)})},
        MigrationCase{"CurrentRecordWithoutValueIsSkipped",
                      Earlier({Favorite("A", 1)}, {Record("Cur", "")}),
                      Now({Favorite("A", 1)}, {Record("Cur", "")})},
        MigrationCase{"CurrentRecordOfAnotherLengthIsSkipped",
                      Earlier({Favorite("A", 1)}, {Record("Cur", std::string(8407, 'x'))}),
                      Now({Favorite("A", 1)}, {Record("Cur", std::string(8407, 'x'))})},
        // The first favourite was written in the current form already when the second stops the
        // work: the tree as it was opened is saved over it, and the version stays the earlier one.
        MigrationCase{"FavoriteOfAnotherLengthTakesAllBack",
                      Earlier({Favorite("A", u"A", 1, u"?"), Record("Odd", "x"), Favorite("C", 3)},
                              {Favorite("Cur", 2)}),
                      Earlier({Favorite("A", u"A", 1, u"?"), Record("Odd", "x"), Favorite("C", 3)},
                              {Favorite("Cur", 2)})},
        // Listed as 63 units, the name is looked for and not found.
        MigrationCase{"FavoriteOfALongNameTakesAllBack",
                      Earlier({Favorite("A", u"A", 1, u"?"), Favorite(std::string(64, 'n'), 2)}),
                      Earlier({Favorite("A", u"A", 1, u"?"), Favorite(std::string(64, 'n'), 2)})},
        MigrationCase{"VersionOfAnotherLengthBecomesEightBytes",
                      SettingsTree{.version = "0.0.0.0 and more"}, SettingsTree{}}),
    test::CaseName());

TEST_P(Migration, LeavesTheTreeThatItsStepsLeaveToTheByte) {
  test::PutSettings(world_, "\n" + GetParam().before.Bytes());  // a blank line, lost by any writing
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_SETTINGS(world_, GetParam().after.Bytes());
  EXPECT_TRUE(world_.platform.windows.boxes.empty());
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(SettingsCheck, UnpacksEachMigratedRecordIntoTheContext) {
  test::PutSettings(world_, Earlier({Favorite("A", 1), Favorite("B", 2)}).Bytes());
  context_->privatePointer = nullptr;
  context_->publicPointer = nullptr;
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_TRUE(ContextHolds(2, u"B"));
}

TEST_F(SettingsCheck, UnpacksTheCurrentRecordLast) {
  test::PutSettings(world_, Earlier({Favorite("A", 1)}, {Favorite("Cur", 7)}).Bytes());
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_TRUE(ContextHolds(7, u"Cur"));
}

TEST_F(SettingsCheck, LeavesInTheContextWhatItHadReachedWhenItStopped) {
  test::PutSettings(world_, Earlier({Favorite("A", 1), Record("Odd", "x")}).Bytes());
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_TRUE(ContextHolds(1, u"A"));
}

TEST_F(SettingsCheck, LeavesTheContextAloneWhenNoRecordIsMigrated) {
  test::PutSettings(world_, Earlier({}, {Record("Cur", "x")}).Bytes());
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_TRUE(ContextIsUntouched());
}

TEST_F(SettingsCheck, IsDoneOnceForAnEarlierFile) {
  test::PutSettings(world_, Earlier({Favorite("A", 1)}).Bytes());
  ASSERT_EQ(Check(), SettingsFileState::kUsable);
  const std::size_t openings = world_.platform.files.openings();
  ASSERT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_EQ(world_.platform.files.openings(), openings + 1);
}

struct PartialCase {
  const char* name;
  std::string before;
  std::string after;
};

class PartialMigration : public SettingsCheck, public testing::WithParamInterface<PartialCase> {};

std::string Root(const std::string& version, const std::vector<std::string>& branches) {
  return Container("cfgobj", {Version(version), Container("UIParam", branches)});
}

INSTANTIATE_TEST_SUITE_P(
    Trees, PartialMigration,
    testing::Values(
        PartialCase{"WithoutParametersIsOfThisVersion", Container("cfgobj", {Version(kEarlier)}),
                    Container("cfgobj", {Version()})},
        PartialCase{"WithoutFavoritesGoesOnWithTheCurrentRecord",
                    Root(kEarlier, {Container("cursetting", {Record("Cur", "x")})}),
                    Root(test::kVersionBytes, {Container("cursetting", {Record("Cur", "x")})})},
        // The record has nowhere to go.
        PartialCase{"WithoutFavoritesDropsNothing",
                    Root(kEarlier, {Container("cursetting", {Favorite("Cur", 2)})}),
                    Root(test::kVersionBytes, {Container("cursetting", {Favorite("Cur", 2)})})},
        // Ends there: the tree is saved as it was opened, of the earlier version.
        PartialCase{"WithoutTheCurrentRecordsBranchTakesAllBack",
                    Root(kEarlier, {Container("savesetting", {Favorite("A", u"A", 1, u"?")})}),
                    Root(kEarlier, {Container("savesetting", {Favorite("A", u"A", 1, u"?")})})},
        PartialCase{
            "WithParametersThatAnnounceNothingLosesThem",
            Container("cfgobj", {Version(kEarlier),
                                 LyingContainer("UIParam", 0, {Container("savesetting", {})})}),
            Container("cfgobj", {Version(kEarlier), Container("UIParam", {})})}),
    test::CaseName());

TEST_P(PartialMigration, EndsWhereAStepSaysSo) {
  test::PutSettings(world_, "\n" + GetParam().before);
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_SETTINGS(world_, GetParam().after);
  EXPECT_TRUE(world_.platform.windows.boxes.empty());
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(SettingsCheck, KeepsTheTypeOfTheVersionThatItOverwrites) {
  test::PutSettings(world_, Container("cfgobj", {test::Leaf("version", "other", "0")}));
  EXPECT_EQ(Check(), SettingsFileState::kUsable);
  EXPECT_SETTINGS(world_,
                  Container("cfgobj", {test::Leaf("version", "other", test::kVersionBytes)}));
}

}  // namespace
}  // namespace ostrel
