// How the settings file and its branches come into being.
#include "config/setting_stores.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

using test::Container;
using test::LyingContainer;
using test::Record;
using test::SettingsTree;
using test::Version;

// A text with the NULs in it.
template <std::size_t N>
std::string Bytes(const char (&text)[N]) {
  return {text, N - 1};
}

// The tree of a new file, written out.
const std::string kNewFile = Bytes(
    "<object:cfgobj,type:null,len:0,childobjs:1>\n"
    "<object:version,type:string,len:8,childobjs:0>0.0.0.1\0<endobj>\n"
    "<endobj>\n");

// The tree after Init, written out: the order of the branches is part of the format.
const std::string kFullFile = Bytes(
    "<object:cfgobj,type:null,len:0,childobjs:2>\n"
    "<object:version,type:string,len:8,childobjs:0>0.0.0.1\0<endobj>\n"
    "<object:UIParam,type:null,len:0,childobjs:4>\n"
    "<object:savesetting,type:null,len:0,childobjs:0>\n<endobj>\n"
    "<object:cursetting,type:null,len:0,childobjs:0>\n<endobj>\n"
    "<object:cuspapersetting,type:null,len:0,childobjs:0>\n<endobj>\n"
    "<object:watermarksetting,type:null,len:0,childobjs:0>\n<endobj>\n"
    "<endobj>\n"
    "<endobj>\n");

const std::string kFavoritesFile = Bytes(
    "<object:cfgobj,type:null,len:0,childobjs:2>\n"
    "<object:version,type:string,len:8,childobjs:0>0.0.0.1\0<endobj>\n"
    "<object:UIParam,type:null,len:0,childobjs:3>\n"
    "<object:savesetting,type:null,len:0,childobjs:0>\n<endobj>\n"
    "<object:cursetting,type:null,len:0,childobjs:0>\n<endobj>\n"
    "<object:cuspapersetting,type:null,len:0,childobjs:0>\n<endobj>\n"
    "<endobj>\n"
    "<endobj>\n");

struct InitForm {
  const char* name;
  bool (*init)();
  const std::string* bytes;
};

class SettingsInitForm : public testing::TestWithParam<InitForm> {};

INSTANTIATE_TEST_SUITE_P(
    Forms, SettingsInitForm,
    testing::Values(InitForm{"Plain", [] { return InitSettingsFile(); }, &kFullFile},
                    InitForm{"OfFavorites", [] { return FavoriteStore().Init(); }, &kFavoritesFile},
                    InitForm{"OfPapers", [] { return CustomPaperStore().Init(); }, &kFullFile},
                    InitForm{"OfWatermarks", [] { return WatermarkStore().Init(); }, &kFullFile}),
    test::CaseName());

TEST_P(SettingsInitForm, MakesTheFileWithItsBranches) {
  test::TestWorld world;
  ASSERT_TRUE(GetParam().init());
  EXPECT_SETTINGS(world, *GetParam().bytes);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST_P(SettingsInitForm, WritesTheFileAgainWhenNothingIsMissing) {
  test::TestWorld world;
  test::PutSettings(world, *GetParam().bytes);
  world.platform.faults.StartTrace();
  ASSERT_TRUE(GetParam().init());
  EXPECT_SETTINGS(world, *GetParam().bytes);
  EXPECT_EQ(test::CallsOf(world, "WriteFile"), 1U);
}

TEST_P(SettingsInitForm, KeepsWhatTheOtherFormMade) {
  test::TestWorld world;
  ASSERT_TRUE(InitSettingsFile());
  ASSERT_TRUE(GetParam().init());
  EXPECT_SETTINGS(world, kFullFile);
}

TEST(SettingsInit, HandBuiltTreeOfTheTestsIsTheWrittenOutOne) {
  EXPECT_EQ(test::FileDifference(SettingsTree().Bytes(), kFullFile), "");
  EXPECT_EQ(test::FileDifference(Container("cfgobj", {Version()}), kNewFile), "");
}

// ---- What Init finds ----------------------------------------------------------------------------

SettingsTree FilledTree() {
  return {.favorites = {Record("Draft", "odd")},
          .current = {Record("Now", "odd too")},
          .papers = {Record("Card", test::PaperValue(288, u"Card", 3000, 4200)),
                     Record("Note", "\n<endobj>\n")},
          .watermarks = {Record("Secret", std::string("\0\xFF<", 3))}};
}

struct FoundCase {
  const char* name;
  std::string found;
  std::string after;
};

void PrintTo(const FoundCase& row, std::ostream* out) {
  *out << row.name;
}

class SettingsInitOnAFile : public testing::TestWithParam<FoundCase> {};

const std::string kSave = Container("savesetting", {});
const std::string kCurrent = Container("cursetting", {});
const std::string kPapers = Container("cuspapersetting", {});
const std::string kWatermarks = Container("watermarksetting", {});

std::string File(const std::vector<std::string>& branches) {
  return Container("cfgobj", {Version(), Container("UIParam", branches)});
}

INSTANTIATE_TEST_SUITE_P(
    Files, SettingsInitOnAFile,
    testing::Values(
        FoundCase{"Empty", "", kFullFile}, FoundCase{"WithoutAnyTag", "hello\n", kFullFile},
        FoundCase{"OfAnotherTree", Container("other", {Record("a", "b")}), kFullFile},
        FoundCase{"WithRecordsButWithoutVersion",
                  Container("cfgobj", {Container("UIParam", {kSave, kCurrent, kPapers})}),
                  kFullFile},
        FoundCase{"WithTheVersionElsewhere",
                  Container("cfgobj", {Container("UIParam", {Version()})}), kFullFile},
        FoundCase{"WhoseRootAnnouncesNothing", LyingContainer("cfgobj", 0, {Version()}), kFullFile},
        FoundCase{"CutOffInTheVersionsTag", kFullFile.substr(0, 80), kFullFile},
        FoundCase{"New", kNewFile, kFullFile}, FoundCase{"WithoutBranches", File({}), kFullFile},
        FoundCase{"WithoutTheFirstBranch", File({kCurrent, kPapers, kWatermarks}),
                  File({kCurrent, kPapers, kWatermarks, kSave})},
        FoundCase{"WithoutTheSecondBranch", File({kSave, kPapers, kWatermarks}),
                  File({kSave, kPapers, kWatermarks, kCurrent})},
        FoundCase{"WithoutTheThirdBranch", File({kSave, kCurrent, kWatermarks}),
                  File({kSave, kCurrent, kWatermarks, kPapers})},
        FoundCase{"WithoutTheLastBranch", kFavoritesFile, kFullFile},
        FoundCase{"WithBranchesOfOtherCase", File({Container("SaveSetting", {})}),
                  File({Container("SaveSetting", {}), kSave, kCurrent, kPapers, kWatermarks})},
        FoundCase{"Whole", FilledTree().Bytes(), FilledTree().Bytes()},
        FoundCase{"OfALaterVersion", SettingsTree{.version = "9.9.9.9"}.Bytes(),
                  SettingsTree{.version = "9.9.9.9"}.Bytes()},
        FoundCase{"OfAnEarlierVersion", SettingsTree{.version = "0.0.0.0"}.Bytes(),
                  SettingsTree{.version = "0.0.0.0"}.Bytes()},
        FoundCase{"WithAVersionWithoutValue", SettingsTree{.version = ""}.Bytes(),
                  SettingsTree{.version = ""}.Bytes()},
        FoundCase{
            "WithOtherObjects", Container("cfgobj", {Version(), Record("x", "y")}),
            Container("cfgobj", {Version(), Record("x", "y"),
                                 Container("UIParam", {kSave, kCurrent, kPapers, kWatermarks})})},
        // What it holds isn't found, so it is made again; the count starts from what was announced.
        FoundCase{"WhoseParametersAnnounceNothing",
                  Container("cfgobj", {Version(), LyingContainer("UIParam", 0, {kSave})}),
                  Container("cfgobj", {Version(), LyingContainer("UIParam", 4,
                                                                 {kSave, kSave, kCurrent, kPapers,
                                                                  kWatermarks})})},
        FoundCase{"WithBlankLinesBetweenTags", "\n\n" + kNewFile + "\n", kFullFile}),
    test::CaseName());

TEST_P(SettingsInitOnAFile, KeepsAGoodOneAndReplacesAForeignOne) {
  test::TestWorld world;
  test::PutSettings(world, GetParam().found);
  EXPECT_TRUE(InitSettingsFile());
  EXPECT_SETTINGS(world, GetParam().after);
  EXPECT_TRUE(world.platform.windows.boxes.empty());  // in silence
  EXPECT_EQ(world.Leftovers(), "");
}

// ---- What stops Init ----------------------------------------------------------------------------

TEST(SettingsInit, FailsOnAFileThatIsNoTreeAndLeavesIt) {
  test::TestWorld world;
  const std::string broken = kFullFile + "<nonsense:childobjs>";
  test::PutSettings(world, broken);
  EXPECT_FALSE(InitSettingsFile());
  EXPECT_FALSE(FavoriteStore().Init());
  EXPECT_SETTINGS(world, broken);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(SettingsInit, FailsOnAFileThatMayNotBeWritten) {
  test::TestWorld world;
  test::PutSettings(world, kNewFile);
  world.platform.files.MakeReadOnly(test::kSettingsPath);
  EXPECT_FALSE(InitSettingsFile());
  EXPECT_SETTINGS(world, kNewFile);
}

TEST(SettingsInit, FailsOnADirectoryInTheFilesPlace) {
  test::TestWorld world;
  world.platform.files.Put(std::u16string(test::kSettingsPath) + u"\\inside", {});
  EXPECT_FALSE(InitSettingsFile());
  EXPECT_SETTINGS(world, "(no file)");
}

TEST(SettingsInit, FailsWhenAForeignFileIsDeletedAndNoNewOneCanBeMade) {
  test::TestWorld world;
  test::PutSettings(world, "foreign");
  // The opening for the look is the first, the one that makes the new file the second.
  world.platform.faults.FailOperation("CreateFileW", 2);
  EXPECT_FALSE(InitSettingsFile());
  EXPECT_SETTINGS(world, "(no file)");
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(SettingsInit, FailsOnAnEmptyFileThatCannotBeDeleted) {
  test::TestWorld world;
  test::PutSettings(world, "");
  world.platform.faults.FailOperation("DeleteFileW");
  EXPECT_FALSE(InitSettingsFile());
  EXPECT_SETTINGS(world, "");
}

TEST(SettingsInit, FailsAtEachCreationWithoutMemoryAndLeavesTheFile) {
  std::size_t creations = 0;
  test::TestWorld counting;
  test::PutSettings(counting, kNewFile);
  counting.platform.faults.StartTrace();
  ASSERT_TRUE(InitSettingsFile());
  const std::size_t withCreations = test::CallsOf(counting, "HeapAlloc");
  counting.platform.faults.StartTrace();
  ASSERT_TRUE(InitSettingsFile());
  ASSERT_GT(withCreations, 5U);
  for (std::size_t n = 1; n < withCreations; ++n) {  // the last is the image's block
    test::TestWorld world;
    test::PutSettings(world, kNewFile);
    world.platform.faults.FailOperation("HeapAlloc", n);
    EXPECT_FALSE(InitSettingsFile()) << n;
    EXPECT_TRUE(world.platform.faults.fired()) << n;
    EXPECT_SETTINGS(world, kNewFile);
    EXPECT_EQ(world.Leftovers(), "") << n;
    ++creations;
  }
  EXPECT_GE(creations, 5U);
}

TEST(SettingsInit, SucceedsWithoutMemoryForTheImageAndLeavesTheFile) {
  test::TestWorld counting;
  test::PutSettings(counting, kNewFile);
  counting.platform.faults.StartTrace();
  ASSERT_TRUE(InitSettingsFile());
  const std::size_t allocations = test::CallsOf(counting, "HeapAlloc");
  test::TestWorld world;
  test::PutSettings(world, kNewFile);
  world.platform.faults.FailOperation("HeapAlloc", allocations);
  EXPECT_TRUE(InitSettingsFile());
  EXPECT_TRUE(world.platform.faults.fired());
  EXPECT_SETTINGS(world, kNewFile);
}

TEST(SettingsInit, CountsASaveThatCannotOpenTheFileAsDone) {
  test::TestWorld world;
  test::PutSettings(world, kNewFile);
  world.platform.faults.FailOperation("CreateFileW", 2);
  EXPECT_TRUE(InitSettingsFile());
  EXPECT_SETTINGS(world, kNewFile);
  EXPECT_EQ(world.platform.debug.lines.size(), 1U);
}

TEST(SettingsInit, OnAFullDiskLeavesWhatFitted) {
  test::TestWorld world;
  test::PutSettings(world, kNewFile);
  world.platform.files.freeBytes = 200;
  EXPECT_TRUE(InitSettingsFile());
  EXPECT_SETTINGS(world, kFullFile.substr(0, 200));
  world.platform.files.freeBytes.reset();
  EXPECT_TRUE(InitSettingsFile());  // and the next one brings a usable file
  FavoriteStore store;
  EXPECT_EQ(store.Count(), 0);
  EXPECT_TRUE(CustomPaperStore().Save(u"Card", CustomPaperRecord{}));
}

// A container that announces a value would swallow what follows it, at every reading anew.
TEST(SettingsInitOnADamagedFile, MakesContainersOfLeavesThatStandInTheirPlace) {
  test::TestWorld world;
  test::PutSettings(world, Bytes("<object:cfgobj,type:null,len:0,childobjs:2>\n"
                                 "<object:version,type:string,len:8,childobjs:0>0.0.0.1\0<endobj>\n"
                                 "<object:UIParam,type:null,len:4,childobjs:0>abcd<endobj>\n"
                                 "<endobj>\n"));
  ASSERT_TRUE(InitSettingsFile());
  const std::string made = test::Settings(world);
  ASSERT_TRUE(InitSettingsFile());
  EXPECT_EQ(test::Settings(world), made);
  EXPECT_EQ(made.find("abcd"), std::string::npos);
  EXPECT_NE(made.find("<object:UIParam,type:null,len:0,childobjs:4>"), std::string::npos);
}

}  // namespace
}  // namespace ostrel
