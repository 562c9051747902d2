// Where the settings file lies, and how it is forgotten.
#include "config/setting_stores.h"
#include "core/text.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

constexpr char16_t kIniPath[] = u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelConfig.ini";
constexpr char16_t kApplicationData[] = u"C:\\users\\ada\\AppData\\Roaming";
// "\Ostrel\ostrel\ostrelsettings.dat"
constexpr std::size_t kUnitsBehindTheFolder = 33;

void PutIni(test::TestWorld& world, std::string_view text) {
  const auto bytes = std::as_bytes(std::span(text.data(), text.size()));
  world.platform.files.Put(kIniPath, {bytes.begin(), bytes.end()});
}

std::u16string Path() {
  std::array<char16_t, kMaxPathUnits> path;
  path.fill(u'#');
  GetSettingsFilePath(path);
  return std::u16string(FieldText(path));
}

std::u16string Remembered(const test::TestWorld& world) {
  return std::u16string(FieldText(world.process.SettingsFilePath));
}

// ---- The maker ----------------------------------------------------------------------------------

struct MakerCase {
  const char* name;
  const char* ini;
  const char16_t* maker;
};

class SettingsPathMaker : public testing::TestWithParam<MakerCase> {};

INSTANTIATE_TEST_SUITE_P(
    IniFiles, SettingsPathMaker,
    testing::Values(MakerCase{"Named", "[Print]\r\nOEM_NAME=Acme\r\n", u"Acme"},
                    MakerCase{"NamedWithABlank", "[Print]\r\nOEM_NAME=Acme Ltd\r\n", u"Acme Ltd"},
                    MakerCase{"Empty", "[Print]\r\nOEM_NAME=\r\n", u"Ostrel"},
                    MakerCase{"NamedInAnotherSection", "[Other]\r\nOEM_NAME=Acme\r\n", u"Ostrel"},
                    MakerCase{"OfAnotherKey", "[Print]\r\nOEM=Acme\r\n", u"Ostrel"},
                    MakerCase{"NotNamedAtAll", "", u"Ostrel"}),
    test::CaseName());

TEST_P(SettingsPathMaker, NamesTheOuterFolderAndBothFoldersAreMade) {
  test::TestWorld world;
  PutIni(world, GetParam().ini);
  const std::u16string outer = std::u16string(kApplicationData) + u"\\" + GetParam().maker;
  const std::u16string inner = outer + u"\\ostrel";
  ASSERT_FALSE(world.platform.files.IsDirectory(outer));
  EXPECT_EQ(Path(), inner + u"\\ostrelsettings.dat");
  EXPECT_TRUE(world.platform.files.IsDirectory(outer));
  EXPECT_TRUE(world.platform.files.IsDirectory(inner));
  EXPECT_EQ(Remembered(world), inner + u"\\ostrelsettings.dat");
}

TEST(SettingsPath, WithoutAnIniFileBearsTheDefaultMaker) {
  test::TestWorld world;
  EXPECT_EQ(Path(), test::kSettingsPath);
}

TEST(SettingsPath, HoldsTheModulePrefixTwice) {
  test::TestWorld world;
  world.platform.modules.Install(u"D:\\x\\acmePCL6ui.dll");
  world.process.LibraryModule = world.platform.modules.LoadLibraryW(u"D:\\x\\acmePCL6ui.dll");
  EXPECT_EQ(Path(), std::u16string(kApplicationData) + u"\\Ostrel\\acme\\acmesettings.dat");
}

// ---- Folders ------------------------------------------------------------------------------------

// Notes which folder the shell is asked for.
class AskedShell final : public Shell {
 public:
  explicit AskedShell(Shell& next) : next_(next) {}
  std::uint32_t SHGetFolderPathW(std::uint32_t folder, char16_t* path) override {
    asked.push_back(folder);
    return next_.SHGetFolderPathW(folder, path);
  }
  bool ShellExecuteW(const char16_t* /*verb*/, const char16_t* /*file*/,
                     const char16_t* /*parameters*/, std::int32_t /*showCommand*/) override {
    return false;
  }
  WindowHandle HtmlHelpW(WindowHandle /*window*/, const char16_t* /*file*/,
                         std::uint32_t /*command*/, std::uintptr_t /*data*/) override {
    return nullptr;
  }
  std::vector<std::uint32_t> asked;

 private:
  Shell& next_;
};

TEST(SettingsPath, AsksForTheApplicationDataFolderAndHasItMade) {
  test::TestWorld world;
  auto& p = world.platform;
  AskedShell shell(p.shell);
  Platform lists{p.print, p.locale,  p.modules,  p.files,  p.registry, p.security,
                 shell,   p.windows, p.graphics, p.system, p.memory,   p.debug};
  world.process.platform = &lists;
  EXPECT_EQ(Path(), test::kSettingsPath);
  EXPECT_THAT(shell.asked, testing::ElementsAre(0x801AU));
  world.process.platform = &p.lists;
}

TEST(SettingsPath, WithoutApplicationDataIsTheBareNameAndNoFolderIsMade) {
  test::TestWorld world;
  world.platform.faults.FailOperation("SHGetFolderPathW");
  world.platform.faults.StartTrace();
  EXPECT_EQ(Path(), u"ostrelsettings.dat");
  EXPECT_EQ(Remembered(world), u"ostrelsettings.dat");
  EXPECT_EQ(test::CallsOf(world, "CreateDirectoryW"), 0U);
  EXPECT_TRUE(InitSettingsFile());
  EXPECT_EQ(test::Settings(world, u"ostrelsettings.dat"), test::SettingsTree().Bytes());
}

TEST(SettingsPath, StandsWhenFoldersAreThereAlready) {
  test::TestWorld world;
  EXPECT_EQ(Path(), test::kSettingsPath);
  EXPECT_EQ(Path(), test::kSettingsPath);
  EXPECT_TRUE(world.platform.files.IsDirectory(test::kSettingsFolder));
}

TEST(SettingsPath, StandsWhenFoldersCannotBeMadeAndTheFileThenCannotEither) {
  test::TestWorld world;
  world.platform.faults.FailOperation("CreateDirectoryW");
  EXPECT_EQ(Path(), test::kSettingsPath);
  EXPECT_EQ(Remembered(world), test::kSettingsPath);
  EXPECT_FALSE(world.platform.files.IsDirectory(test::kSettingsFolder));
  EXPECT_FALSE(InitSettingsFile());
  EXPECT_EQ(test::Settings(world), "(no file)");
}

TEST(SettingsPath, TriesTheInnerFolderAlsoWhenTheOuterOneFails) {
  test::TestWorld world;
  world.platform.faults.FailOperation("CreateDirectoryW", 1);
  EXPECT_EQ(Path(), test::kSettingsPath);
  EXPECT_TRUE(world.platform.files.IsDirectory(test::kSettingsFolder));
}

TEST(SettingsPath, IsRememberedAsItWasPutTogetherLast) {
  test::TestWorld world;
  EXPECT_EQ(Remembered(world), u"");
  Path();
  EXPECT_EQ(Remembered(world), test::kSettingsPath);
  PutIni(world, "[Print]\nOEM_NAME=Acme\n");
  const std::u16string second = Path();
  EXPECT_NE(second, test::kSettingsPath);
  EXPECT_EQ(Remembered(world), second);
}

// ---- Length -------------------------------------------------------------------------------------

TEST(SettingsPath, Of259UnitsIsWhole) {
  test::TestWorld world;
  world.platform.shell.applicationData = std::u16string(259 - kUnitsBehindTheFolder, u'a');
  const std::u16string path = Path();
  EXPECT_EQ(path.size(), 259U);
  EXPECT_TRUE(path.ends_with(u"\\Ostrel\\ostrel\\ostrelsettings.dat"));
  EXPECT_EQ(Remembered(world), path);
}

struct LongCase {
  const char* name;
  std::size_t folderUnits;
  bool outerMade;
  bool innerMade;
};

class SettingsPathTooLong : public testing::TestWithParam<LongCase> {};

INSTANTIATE_TEST_SUITE_P(Folders, SettingsPathTooLong,
                         testing::Values(LongCase{"ByOneUnit", 227, true, true},
                                         LongCase{"BehindTheInnerFolder", 245, true, true},
                                         LongCase{"InsideTheInnerFolder", 246, true, false},
                                         LongCase{"BehindTheOuterFolder", 252, true, false},
                                         LongCase{"InsideTheOuterFolder", 253, false, false},
                                         LongCase{"ByTheFolderAlone", 259, false, false}),
                         test::CaseName());

TEST_P(SettingsPathTooLong, IsEmptyAndNothingIsMadeUnderACutName) {
  test::TestWorld world;
  const std::u16string folder(GetParam().folderUnits, u'a');
  world.platform.shell.applicationData = folder;
  world.platform.faults.StartTrace();
  EXPECT_EQ(Path(), u"");
  EXPECT_EQ(Remembered(world), u"");
  EXPECT_EQ(world.platform.files.IsDirectory(folder + u"\\Ostrel"), GetParam().outerMade);
  EXPECT_EQ(world.platform.files.IsDirectory(folder + u"\\Ostrel\\ostrel"), GetParam().innerMade);
  EXPECT_EQ(test::CallsOf(world, "CreateDirectoryW"),
            (GetParam().outerMade ? 1U : 0U) + (GetParam().innerMade ? 1U : 0U));
}

TEST_P(SettingsPathTooLong, LeavesTheStoresWithoutAFile) {
  test::TestWorld world;
  world.platform.shell.applicationData = std::u16string(GetParam().folderUnits, u'a');
  EXPECT_FALSE(InitSettingsFile());
  EXPECT_FALSE(CustomPaperStore().Save(u"Card", CustomPaperRecord{}));
  EXPECT_EQ(CustomPaperStore().Count(), 0);
  EXPECT_EQ(world.platform.files.openings(), 0U);
  EXPECT_EQ(world.Leftovers(), "");
}

// ---- Forgetting ---------------------------------------------------------------------------------

TEST(RememberedSettingsFile, IsDeletedAtTheRememberedPath) {
  test::TestWorld world;
  ASSERT_TRUE(InitSettingsFile());
  // The path that would be put together now is another one.
  PutIni(world, "[Print]\nOEM_NAME=Acme\n");
  DeleteRememberedSettingsFile();
  EXPECT_EQ(test::Settings(world), "(no file)");
  EXPECT_EQ(Remembered(world), test::kSettingsPath);
}

TEST(RememberedSettingsFile, IsNotLookedForWhenNoneIsRemembered) {
  test::TestWorld world;
  test::PutSettings(world, "kept");
  world.platform.faults.StartTrace();
  DeleteRememberedSettingsFile();
  EXPECT_THAT(world.platform.faults.trace(), testing::IsEmpty());
  EXPECT_EQ(test::Settings(world), "kept");
}

TEST(RememberedSettingsFile, ThatCannotBeDeletedStays) {
  test::TestWorld world;
  ASSERT_TRUE(InitSettingsFile());
  const std::string before = test::Settings(world);
  world.platform.faults.FailOperation("DeleteFileW");
  DeleteRememberedSettingsFile();
  EXPECT_EQ(test::Settings(world), before);
  EXPECT_TRUE(world.platform.faults.fired());
}

}  // namespace
}  // namespace ostrel
