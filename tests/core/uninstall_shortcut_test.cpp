#include "core/uninstall_shortcut.h"

#include "support/case_name.h"
#include "support/test_world.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using Started = headless::HeadlessShell::Started;

struct Shortcut {
  const char* name;
  std::u16string program;
  std::u16string model;
};

constexpr char16_t kMulti[] =
    u"C:\\windows\\system32\\Ostrel\\\\dogwoodm\\UnSetupData\\Uninstall.exe";
constexpr char16_t kPrinter[] =
    u"C:\\windows\\system32\\Ostrel\\\\dogwoodp\\UnSetupData\\Uninstall.exe";

// clang-format off
const std::array<Shortcut, 19> kShortcuts = {{
    {"Dogwood3",  kMulti,   u"Ostrel Dogwood 3 Series"},
    {"Dogwood4",  kMulti,   u"Ostrel Dogwood 4 Series"},
    {"Dogwood5",  kMulti,   u"Ostrel Dogwood 5 Series"},
    {"Elm1",      kMulti,   u"Ostrel Elm 1 Series"},
    {"Elm2",      kMulti,   u"Ostrel Elm 2 Series"},
    {"Elm5",      kMulti,   u"Ostrel Elm 5 Series"},
    {"Elm3",      kMulti,   u"Ostrel Elm 3 Series"},
    {"Elm4",      kMulti,   u"Ostrel Elm 4 Series"},
    {"Dogwood6",  kMulti,   u"Ostrel Dogwood 6 Series"},
    {"Dogwood7",  kMulti,   u"Ostrel Dogwood 7 Series"},
    {"Elm6",      kMulti,   u"Ostrel Elm 6 Series"},
    {"Elm7",      kMulti,   u"Ostrel Elm 7 Series"},
    {"Dogwood1",  kPrinter, u"Ostrel Dogwood 1 Series"},
    {"Dogwood8",  kPrinter, u"Ostrel Dogwood 8 Series"},
    {"Dogwood9",  kPrinter, u"Ostrel Dogwood 9 Series"},
    {"Dogwood2",  kPrinter, u"Ostrel Dogwood 2 Series"},
    {"Dogwood10", kPrinter, u"Ostrel Dogwood 10 Series"},
    {"Dogwood11", kPrinter, u"Ostrel Dogwood 11 Series"},
    {"Dogwood12", kPrinter, u"Ostrel Dogwood 12 Series"},
}};
// clang-format on

Started StartOf(const Shortcut& shortcut) {
  return {u"runas", shortcut.program,
          u"\"-uninstall\" \"-CreateShortcut\" \"-Printer\" \"" + shortcut.model + u"\""};
}

std::vector<Started> StartsOf(const std::u16string& printerName) {
  test::TestWorld world;
  RunUninstallShortcut(printerName.c_str());
  return world.platform.shell.started;
}

class EachShortcut : public testing::TestWithParam<Shortcut> {};

INSTANTIATE_TEST_SUITE_P(Rows, EachShortcut, testing::ValuesIn(kShortcuts), test::CaseName());

TEST_P(EachShortcut, StartsItsProgramWithItsModel) {
  EXPECT_EQ(StartsOf(GetParam().model), std::vector<Started>{StartOf(GetParam())});
}

TEST_P(EachShortcut, IsFoundInsideALongerName) {
  EXPECT_EQ(StartsOf(u"The " + GetParam().model + u" (Copy 1)"),
            std::vector<Started>{StartOf(GetParam())});
}

TEST_P(EachShortcut, IsNotFoundWhenItsLastLetterIsMissing) {
  EXPECT_EQ(StartsOf(GetParam().model.substr(0, GetParam().model.size() - 1)),
            std::vector<Started>{});
}

TEST(UninstallShortcut, FirstRowInOrderWinsWhereverItStandsInTheName) {
  for (std::size_t first = 0; first < kShortcuts.size(); ++first) {
    for (std::size_t second = first + 1; second < kShortcuts.size(); ++second) {
      const std::vector<Started> expected = {StartOf(kShortcuts[first])};
      EXPECT_EQ(StartsOf(kShortcuts[second].model + u", " + kShortcuts[first].model), expected)
          << first << " behind " << second;
    }
  }
}

TEST(UninstallShortcut, NumbersAreMatchedWhole) {
  const std::vector<Started> one = {StartOf(kShortcuts[12])};
  const std::vector<Started> ten = {StartOf(kShortcuts[16])};
  EXPECT_EQ(StartsOf(u"Ostrel Dogwood 1 Series"), one);
  EXPECT_EQ(StartsOf(u"Ostrel Dogwood 10 Series"), ten);
  EXPECT_EQ(StartsOf(u"Ostrel Dogwood 13 Series"), std::vector<Started>{});
}

struct OtherName {
  const char* name;
  std::u16string printer;
};

class OtherPrinters : public testing::TestWithParam<OtherName> {};

INSTANTIATE_TEST_SUITE_P(Names, OtherPrinters,
                         testing::Values(OtherName{"Empty", u""},
                                         OtherName{"Foreign", u"Front office"},
                                         OtherName{"OtherLetterCase", u"OSTREL DOGWOOD 1 SERIES"},
                                         OtherName{"WithoutTheMaker", u"Dogwood 1 Series"},
                                         OtherName{"UnknownNumber", u"Ostrel Elm 8 Series"},
                                         OtherName{"OtherFamily", u"Ostrel Hazel 2 Series"}),
                         test::CaseName());

TEST_P(OtherPrinters, StartNothingAndAskForNothing) {
  test::TestWorld world;
  world.platform.faults.StartTrace();
  RunUninstallShortcut(GetParam().printer.c_str());
  EXPECT_TRUE(world.platform.shell.started.empty());
  EXPECT_TRUE(world.platform.faults.trace().empty());
}

TEST(UninstallShortcut, NullNameStartsNothing) {
  test::TestWorld world;
  RunUninstallShortcut(nullptr);
  EXPECT_TRUE(world.platform.shell.started.empty());
}

TEST(UninstallShortcut, WithoutASystemFolderNothingIsStarted) {
  test::TestWorld world;
  world.platform.faults.FailOperation("SHGetFolderPathW");
  world.platform.faults.StartTrace();
  RunUninstallShortcut(u"Ostrel Elm 1 Series");
  EXPECT_TRUE(world.platform.shell.started.empty());
  EXPECT_EQ(world.platform.faults.trace(), std::vector<std::string>{"SHGetFolderPathW"});
}

TEST(UninstallShortcut, ProgramLiesInTheSystemFolder) {
  test::TestWorld world;
  world.platform.shell.systemFolder = u"D:\\sys";
  RunUninstallShortcut(u"Ostrel Dogwood 12 Series");
  ASSERT_EQ(world.platform.shell.started.size(), 1U);
  EXPECT_EQ(world.platform.shell.started[0].file,
            u"D:\\sys\\Ostrel\\\\dogwoodp\\UnSetupData\\Uninstall.exe");
}

TEST(UninstallShortcut, ProgramWhosePathDoesNotFitIsNotStarted) {
  // Behind the system folder come 43 units.
  for (const std::size_t folder : {std::size_t{216}, std::size_t{217}}) {
    test::TestWorld world;
    world.platform.shell.systemFolder = u"D:\\" + std::u16string(folder - 3, u'f');
    RunUninstallShortcut(u"Ostrel Elm 1 Series");
    EXPECT_EQ(world.platform.shell.started.size(), folder == 216 ? 1U : 0U) << folder;
  }
}

TEST(UninstallShortcut, StartThatFailsIsNotTriedAgain) {
  test::TestWorld world;
  world.platform.faults.FailOperation("ShellExecuteW", 1);
  RunUninstallShortcut(u"Ostrel Elm 1 Series, Ostrel Elm 2 Series");
  EXPECT_TRUE(world.platform.faults.fired());
  EXPECT_TRUE(world.platform.shell.started.empty());
}

}  // namespace
}  // namespace ostrel
