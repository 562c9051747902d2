// Favourites: how a record is packed and unpacked, the current record, and renaming in place.
#include "config/setting_stores.h"
#include "core/text.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <algorithm>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace ostrel {
namespace {

using test::Container;
using test::ContextOf;
using test::FavoriteValue;
using test::Record;
using test::SettingsTree;
using test::Version;

std::string Kept(std::string_view narrow, std::u16string_view name, std::uint32_t seed) {
  return Record(narrow, FavoriteValue(*ContextOf(seed), name));
}

std::string FavoritesFile(const std::vector<std::string>& records) {
  return SettingsTree{.favorites = records, .papers = {Record("Card", "x")}}.Bytes();
}

class Favorites : public testing::Test {
 protected:
  test::TestWorld world_;
  FavoriteStore store_;
};

// ---- Packing ------------------------------------------------------------------------------------

TEST_F(Favorites, ArePackedPrivatePartFirstThenPublicPartThenName) {
  test::PutSettings(world_, FavoritesFile({}));
  UIContext context = {};
  std::memset(&context.devmode.privateDevmode, 'p', sizeof(PrivateDevmode));
  std::memset(&context.devmode.publicDevmode, 'q', sizeof(PublicDevmode));
  ASSERT_TRUE(store_.Save(u"Ab", context));
  const std::string value = std::string(7676, 'p') + std::string(220, 'q') +
                            std::string("A\0b\0", 4) + std::string(508, '\0');
  ASSERT_EQ(value.size(), 8408U);
  EXPECT_SETTINGS(world_, FavoritesFile({Record("Ab", value)}));
}

TEST_F(Favorites, AreSavedFromTheEmbeddedRecordAndLeaveTheContextAlone) {
  test::PutSettings(world_, FavoritesFile({}));
  const auto context = ContextOf(3, u"Name inside");
  const test::ByteRecord before = test::BytesOf(*context);
  ASSERT_TRUE(store_.Save(u"Other name", *context));
  EXPECT_EQ(test::Difference(test::BytesOf(*context), before), "");
  EXPECT_SETTINGS(
      world_, FavoritesFile({Record("Other name",
                                    FavoriteValue(*ContextOf(3, u"Name inside"), u"Other name"))}));
}

TEST_F(Favorites, AreUnpackedExactlyAsStoredAndPointTheContextAtItsOwnRecord) {
  test::PutSettings(world_, FavoritesFile({Kept("A", u"A", 1)}));
  const auto context = ContextOf(2);
  PrivateDevmode elsewherePrivate = {};
  PublicDevmode elsewherePublic = {};
  context->privatePointer = &elsewherePrivate;
  context->publicPointer = &elsewherePublic;
  context->activePage = 5;
  context->driverName[0] = u'D';
  auto expected = *context;
  expected.devmode = ContextOf(1)->devmode;
  expected.privatePointer = &context->devmode.privateDevmode;
  expected.publicPointer = &context->devmode.publicDevmode;
  ASSERT_TRUE(store_.Read(u"A", context.get()));
  EXPECT_EQ(test::Difference(test::BytesOf(*context), test::BytesOf(expected)), "");
  EXPECT_EQ(elsewherePrivate.Duplex, 0);
}

TEST_F(Favorites, KeepTheNameInsideWhateverTheRecordIsCalled) {
  test::PutSettings(world_, FavoritesFile({Kept("Renamed by hand", u"A", 1)}));
  const auto context = ContextOf(2, u"before");
  ASSERT_TRUE(store_.Read(u"Renamed by hand", context.get()));
  EXPECT_EQ(FieldText(context->privatePointer->FavoriteName), u"inside");
}

TEST_F(Favorites, WithoutAContextAreOnlyLookedFor) {
  const std::string file = "\n" + FavoritesFile({Kept("A", u"A", 1), Record("Short", "x")});
  test::PutSettings(world_, file);
  EXPECT_TRUE(store_.Read(u"A", nullptr));
  EXPECT_FALSE(store_.Read(u"B", nullptr));
  EXPECT_FALSE(store_.Read(u"Short", nullptr));
  EXPECT_SETTINGS(world_, file);
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(Favorites, ThatCannotBeReadLeaveTheContextAlone) {
  test::PutSettings(world_, FavoritesFile({Record("Short", "x")}));
  const auto context = ContextOf(2);
  context->privatePointer = nullptr;
  const test::ByteRecord before = test::BytesOf(*context);
  EXPECT_FALSE(store_.Read(u"Short", context.get()));
  EXPECT_FALSE(store_.Read(u"Missing", context.get()));
  EXPECT_EQ(test::Difference(test::BytesOf(*context), before), "");
}

TEST_F(Favorites, SurviveSavingAndReading) {
  ASSERT_TRUE(InitSettingsFile());
  for (std::uint32_t seed = 1; seed <= 16; ++seed) {
    const char16_t name[] = {static_cast<char16_t>(u'a' + seed), 0};
    ASSERT_TRUE(store_.Save(name, *ContextOf(seed)));
  }
  for (std::uint32_t seed = 1; seed <= 16; ++seed) {
    const char16_t name[] = {static_cast<char16_t>(u'a' + seed), 0};
    const auto context = ContextOf(99);
    ASSERT_TRUE(store_.Read(name, context.get()));
    EXPECT_EQ(
        test::Difference(test::BytesOf(context->devmode), test::BytesOf(ContextOf(seed)->devmode)),
        "");
  }
}

// ---- The current record -------------------------------------------------------------------------

struct CurrentCase {
  const char* name;
  std::vector<std::string> before;
  std::vector<std::string> after;
};

class CurrentRecord : public testing::TestWithParam<CurrentCase> {};

INSTANTIATE_TEST_SUITE_P(
    Branches, CurrentRecord,
    testing::Values(
        CurrentCase{"Empty", {}, {Kept("Now", u"Now", 1)}},
        CurrentCase{"OfAnotherName", {Kept("Old", u"Old", 2)}, {Kept("Now", u"Now", 1)}},
        CurrentCase{"OfTheSameName", {Kept("Now", u"Now", 2)}, {Kept("Now", u"Now", 1)}},
        CurrentCase{"Unreadable", {Record("Odd", "x")}, {Kept("Now", u"Now", 1)}},
        // Never written by the driver; only the last gives way.
        CurrentCase{"OfTwoRecords",
                    {Record("First", "x"), Record("Last", "y")},
                    {Record("First", "x"), Kept("Now", u"Now", 1)}}),
    test::CaseName());

TEST_P(CurrentRecord, TakesThePlaceOfTheLast) {
  test::TestWorld world;
  SettingsTree tree = {.favorites = {Record("Now", "a favorite")}, .current = GetParam().before};
  test::PutSettings(world, tree.Bytes());
  ASSERT_TRUE(FavoriteStore().SaveCurrent(u"Now", *ContextOf(1)));
  tree.current = GetParam().after;
  EXPECT_SETTINGS(world, tree.Bytes());
  EXPECT_EQ(world.Leftovers(), "");
}

TEST_F(Favorites, CurrentRecordFollowsTheRulesForNames) {
  test::PutSettings(world_, FavoritesFile({}));
  const std::string before = test::Settings(world_);
  world_.platform.faults.StartTrace();
  EXPECT_FALSE(store_.SaveCurrent(std::u16string(33, u'n').c_str(), *ContextOf(1)));
  EXPECT_THAT(world_.platform.faults.trace(), testing::IsEmpty());
  EXPECT_SETTINGS(world_, before);
  ASSERT_TRUE(store_.SaveCurrent(std::u16string(32, u'n').c_str(), *ContextOf(1)));
  EXPECT_NE(
      test::Settings(world_).find("<object:" + std::string(31, 'n') + ",type:binary,len:8408"),
      std::string::npos);
}

TEST_F(Favorites, CurrentRecordIsNotSavedWithoutItsBranch) {
  const std::string file =
      Container("cfgobj", {Version(), Container("UIParam", {Container("savesetting", {})})});
  test::PutSettings(world_, file);
  EXPECT_FALSE(store_.SaveCurrent(u"Now", *ContextOf(1)));
  EXPECT_SETTINGS(world_, file);
  EXPECT_EQ(world_.platform.files.openings(), 1U);
}

// ---- Renaming -----------------------------------------------------------------------------------

// The record that a rename leaves: the first 255 bytes of FavoriteName cleared, half of its unit
// 127 among them, and the new name put there.
std::unique_ptr<UIContext> Renamed(const UIContext& context, std::u16string_view name) {
  auto renamed = std::make_unique<UIContext>(context);
  test::ByteRecord bytes = test::BytesOf(renamed->devmode);
  test::ClearBytes(bytes, 220 + 352, 255);
  test::PutText(bytes, 220 + 352, name);
  test::SetBytes(renamed->devmode, bytes);
  return renamed;
}

// A context whose FavoriteName has no zero in it.
std::unique_ptr<UIContext> FullContext(std::uint32_t seed) {
  return ContextOf(seed, std::u16string(256, u'\u4E4E'));
}

TEST_F(Favorites, AreRenamedInTheirPlaceWithTheContextsRecord) {
  test::PutSettings(world_,
                    FavoritesFile({Record("A", "x"), Kept("B", u"B", 1), Record("C", "y")}));
  const auto context = FullContext(2);
  const auto expected = Renamed(*context, u"New");
  ASSERT_TRUE(store_.Rename(u"New", u"B", *context));
  EXPECT_SETTINGS(world_,
                  FavoritesFile({Record("A", "x"), Record("New", FavoriteValue(*expected, u"New")),
                                 Record("C", "y")}));
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(Favorites, AreUnpackedBackIntoTheContextByARename) {
  test::PutSettings(world_, FavoritesFile({Kept("B", u"B", 1)}));
  const auto context = FullContext(2);
  auto expected = Renamed(*context, u"New");
  expected->privatePointer = &context->devmode.privateDevmode;
  expected->publicPointer = &context->devmode.publicDevmode;
  context->privatePointer = nullptr;
  context->publicPointer = nullptr;
  ASSERT_TRUE(store_.Rename(u"New", u"B", *context));
  EXPECT_EQ(test::Difference(test::BytesOf(*context), test::BytesOf(*expected)), "");
  // 255 bytes are 127 units and the low half of the next.
  EXPECT_EQ(context->privatePointer->FavoriteName[126], 0);
  EXPECT_EQ(context->privatePointer->FavoriteName[127], 0x4E00);
  EXPECT_EQ(context->privatePointer->FavoriteName[128], u'\u4E4E');
}

TEST_F(Favorites, OfAnotherLengthAreRenamedIntoWholeOnes) {
  test::PutSettings(world_, FavoritesFile({Record("Odd", "short")}));
  const auto context = ContextOf(2);
  ASSERT_TRUE(store_.Rename(u"Whole", u"Odd", *context));
  EXPECT_SETTINGS(world_, FavoritesFile({Record("Whole", FavoriteValue(*context, u"Whole"))}));
}

TEST_F(Favorites, RenamedToTheSameNameAreRewritten) {
  test::PutSettings(world_, FavoritesFile({Kept("A", u"A", 1), Record("B", "x")}));
  const auto context = ContextOf(2);
  ASSERT_TRUE(store_.Rename(u"A", u"A", *context));
  EXPECT_SETTINGS(world_,
                  FavoritesFile({Record("A", FavoriteValue(*context, u"A")), Record("B", "x")}));
}

TEST_F(Favorites, OfOneNameAreRenamedTheFirstOnly) {
  test::PutSettings(world_, FavoritesFile({Record("A", "x"), Record("A", "y")}));
  const auto context = ContextOf(2);
  ASSERT_TRUE(store_.Rename(u"N", u"A", *context));
  EXPECT_SETTINGS(world_,
                  FavoritesFile({Record("N", FavoriteValue(*context, u"N")), Record("A", "y")}));
}

// The search begins at the branch itself.
TEST_F(Favorites, BranchIsRenamedWhenItIsAskedForByName) {
  test::PutSettings(world_, FavoritesFile({Record("A", "x")}));
  const auto context = ContextOf(2);
  ASSERT_TRUE(store_.Rename(u"N", u"savesetting", *context));
  EXPECT_SETTINGS(
      world_, Container("cfgobj",
                        {Version(),
                         Container("UIParam", {Record("N", FavoriteValue(*context, u"N")),
                                               Container("cursetting", {}),
                                               Container("cuspapersetting", {Record("Card", "x")}),
                                               Container("watermarksetting", {})})}));
}

TEST_F(Favorites, AreFoundByARenameAtAnyDepth) {
  const auto file = [](const std::string& inner) {
    return FavoritesFile({Container("Group", {inner}), Record("A", "top")});
  };
  test::PutSettings(world_, file(Record("A", "deep")));
  const auto context = ContextOf(2);
  ASSERT_TRUE(store_.Rename(u"N", u"A", *context));
  EXPECT_SETTINGS(world_, file(Record("N", FavoriteValue(*context, u"N"))));
}

struct RenameCase {
  const char* name;
  std::u16string newName;
  std::u16string oldName;
  bool looks;  // whether the file is opened at all
};

class RefusedRename : public testing::TestWithParam<RenameCase> {};

INSTANTIATE_TEST_SUITE_P(
    Names, RefusedRename,
    testing::Values(RenameCase{"UnknownOldName", u"New", u"Missing", true},
                    RenameCase{"OldNameOfOtherCase", u"New", u"a", true},
                    RenameCase{"OldNameInAnotherBranch", u"New", u"Card", true},
                    RenameCase{"OldNameIsTheParent", u"New", u"UIParam", true},
                    RenameCase{"NewNameOf33Units", std::u16string(33, u'n'), u"A", false},
                    // More than 127 bytes of UTF-8 are no name of anything.
                    RenameCase{"OldNameOf128Bytes", u"New", std::u16string(64, u'\u00E4'), true}),
    test::CaseName());

TEST_P(RefusedRename, LeavesFileAndContextAlone) {
  test::TestWorld world;
  const std::string file =
      "\n" + FavoritesFile({Kept("A", u"A", 1), Record(std::string(127, 'x'), "y")});
  test::PutSettings(world, file);
  const auto context = FullContext(2);
  context->privatePointer = nullptr;
  const test::ByteRecord before = test::BytesOf(*context);
  EXPECT_FALSE(
      FavoriteStore().Rename(GetParam().newName.c_str(), GetParam().oldName.c_str(), *context));
  EXPECT_EQ(test::Difference(test::BytesOf(*context), before), "");
  EXPECT_SETTINGS(world, file);
  EXPECT_EQ(world.platform.files.openings(), GetParam().looks ? 1U : 0U);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST_F(Favorites, OldNameOfARenameIsNotMeasured) {
  test::PutSettings(world_, FavoritesFile({Record(std::string(127, 'x'), "y")}));
  const auto context = ContextOf(2);
  ASSERT_TRUE(store_.Rename(u"Short", std::u16string(127, u'x').c_str(), *context));
  EXPECT_SETTINGS(world_, FavoritesFile({Record("Short", FavoriteValue(*context, u"Short"))}));
}

TEST_F(Favorites, NewNameOf32UnitsIsCutTo31EverywhereInTheRecord) {
  test::PutSettings(world_, FavoritesFile({Record("A", "y")}));
  const auto context = FullContext(2);
  const std::u16string cut(31, u'n');
  const auto expected = Renamed(*context, cut);
  ASSERT_TRUE(store_.Rename(std::u16string(32, u'n').c_str(), u"A", *context));
  EXPECT_SETTINGS(world_,
                  FavoritesFile({Record(std::string(31, 'n'), FavoriteValue(*expected, cut))}));
  EXPECT_EQ(FieldText(context->privatePointer->FavoriteName), cut);
}

TEST_F(Favorites, AreNotRenamedWithoutTheirBranch) {
  const std::string file = Container("cfgobj", {Version()});
  test::PutSettings(world_, file);
  const auto context = FullContext(2);
  const test::ByteRecord before = test::BytesOf(*context);
  EXPECT_FALSE(store_.Rename(u"New", u"A", *context));
  EXPECT_EQ(test::Difference(test::BytesOf(*context), before), "");
  EXPECT_SETTINGS(world_, file);
}

}  // namespace
}  // namespace ostrel
