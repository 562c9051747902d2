#include "core/help_file.h"

#include "support/call_recorder.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using headless::StoredValue;

struct HelpCase {
  const char* name;
  const char16_t* suffix;
  std::array<std::u16string, 4> tries;
};

class HelpFile : public testing::TestWithParam<HelpCase> {};

// The third try cuts two letters and the fourth four, whether the suffix has as many or not.
INSTANTIATE_TEST_SUITE_P(
    Suffixes, HelpFile,
    testing::Values(
        HelpCase{"FourLetters",
                 u"zhcn",
                 {u"C:\\windows\\system32\\spool\\drivers\\x64\\ostrelPCL6uizhcn.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uizhcn.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uizh.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uienus.chm"}},
        HelpCase{"TwoLetters",
                 u"de",
                 {u"C:\\windows\\system32\\spool\\drivers\\x64\\ostrelPCL6uide.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uide.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6ui.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6enus.chm"}},
        HelpCase{"English",
                 u"enus",
                 {u"C:\\windows\\system32\\spool\\drivers\\x64\\ostrelPCL6uienus.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uienus.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uien.chm",
                  u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uienus.chm"}}),
    test::CaseName());

void SetSuffix(test::TestWorld& world, std::u16string_view suffix) {
  world.UserValues(test::kDriverName)[u"suffix"] = StoredValue::Text(suffix);
}

struct Found {
  bool first;
  std::u16string path;
  bool operator==(const Found&) const = default;
};

void PrintTo(const Found& found, std::ostream* out) {
  *out << (found.first ? "first try, " : "later try, ") << test::Ascii(found.path);
}

Found Find(std::size_t units = kMaxPathUnits) {
  std::vector<char16_t> path(units + 1, u'#');
  const bool first = FindHelpFile(test::kDriverName, std::span(path).first(units));
  EXPECT_EQ(path.back(), u'#');
  return {first, path.data()};
}

TEST_P(HelpFile, IsThatOfTheFirstTryThatFindsOne) {
  for (std::size_t hit = 0; hit < 4; ++hit) {
    test::TestWorld world;
    SetSuffix(world, GetParam().suffix);
    // Later tries would find theirs, too, as far as they aren't an earlier one's.
    const auto& tries = GetParam().tries;
    const auto* const firstHit = tries.begin() + hit;
    for (std::size_t present = hit; present < 4; ++present) {
      if (present == hit || std::find(tries.begin(), firstHit, tries[present]) == firstHit) {
        world.platform.files.Put(tries[present], {});
      }
    }
    EXPECT_EQ(Find(), (Found{hit == 0, GetParam().tries[hit]})) << hit;
  }
}

TEST_P(HelpFile, IsTheLastTrysWithoutALook) {
  test::TestWorld world;
  SetSuffix(world, GetParam().suffix);
  world.platform.faults.StartTrace();
  EXPECT_EQ(Find(), (Found{false, GetParam().tries[3]}));
  EXPECT_EQ(std::ranges::count(world.platform.faults.trace(), "FindFirstFileW"), 3);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST_P(HelpFile, IsShownByItsPathAndTopic) {
  for (std::size_t hit = 0; hit < 4; ++hit) {
    test::TestWorld world;
    SetSuffix(world, GetParam().suffix);
    world.platform.files.Put(GetParam().tries[hit], {});
    int place = 0;
    const auto window = reinterpret_cast<WindowHandle>(&place);
    ShowHelp(window, 0x01020304, test::kDriverName);
    ASSERT_EQ(world.platform.shell.help.size(), 1U);
    const headless::HeadlessShell::HelpCall& call = world.platform.shell.help[0];
    EXPECT_EQ(call.window, window);
    EXPECT_EQ(call.file, GetParam().tries[hit]) << hit;
    EXPECT_EQ(call.command, 15U);
    EXPECT_EQ(call.data, 0x01020304U);
  }
}

TEST(HelpFileSearch, FollowsTheSystemsLanguageAndStoresItAsTheLibraryDoes) {
  test::TestWorld world;
  world.platform.locale.uiLanguage = 1037;
  const Found found = Find();
  EXPECT_EQ(found.path, u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6enus.chm");
  EXPECT_TRUE(world.UserValues(test::kDriverName).contains(u"suffix"));
  EXPECT_TRUE(world.process.RightToLeftLanguage);
}

TEST(HelpFileSearch, LooksAtTheRootWhenTheDriverDirectoryIsNotTold) {
  test::TestWorld world;
  world.platform.faults.FailOperation("GetPrinterDriverDirectoryW");
  EXPECT_EQ(Find(), (Found{false, u"\\3\\ostrelPCL6uienus.chm"}));
  ShowHelp(nullptr, 1, test::kDriverName);
  ASSERT_EQ(world.platform.shell.help.size(), 1U);
  EXPECT_EQ(world.platform.shell.help[0].file, u"\\3\\ostrelPCL6uienus.chm");
}

TEST(HelpFileSearch, TakesADirectoryTooLongForAPathAsNotTold) {
  test::TestWorld world;
  world.platform.print.driverDirectory = u"C:\\" + std::u16string(257, u'd');
  EXPECT_EQ(Find(), (Found{false, u"\\3\\ostrelPCL6uienus.chm"}));
}

// A path that was cut would name another file.
TEST(HelpFileSearch, GivesNoPathThatDoesNotFitItsBuffer) {
  test::TestWorld world;
  EXPECT_EQ(Find(11), (Found{false, u""}));
  EXPECT_EQ(Find(1), (Found{false, u""}));
}

TEST(HelpFileSearch, AsksForTheDriverDirectoryOnce) {
  test::TestWorld world;
  world.platform.faults.StartTrace();
  Find();
  EXPECT_EQ(std::ranges::count(world.platform.faults.trace(), "GetPrinterDriverDirectoryW"), 1);
}

TEST(HelpFileShown, LeavesNothingBehindWhenTheControlFails) {
  test::TestWorld world;
  world.platform.faults.FailOperation("HtmlHelpW");
  ShowHelp(nullptr, 1, test::kDriverName);
  EXPECT_TRUE(world.platform.faults.fired());
  EXPECT_TRUE(world.platform.shell.help.empty());
  EXPECT_EQ(world.Leftovers(), "");
}

}  // namespace
}  // namespace ostrel
