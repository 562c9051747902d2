#include "core/own_place.h"

#include "support/case_name.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

struct PlaceCase {
  const char* name;
  std::u16string path;
  std::u16string directory;
  std::u16string stem;
  std::u16string prefix;
};

class OwnPlaceOf : public testing::TestWithParam<PlaceCase> {};

INSTANTIATE_TEST_SUITE_P(
    Libraries, OwnPlaceOf,
    testing::Values(
        PlaceCase{"Ours", u"C:\\d\\ostrelPCL6ui.dll", u"C:\\d\\", u"ostrelPCL6ui", u"ostrel"},
        PlaceCase{"EndingAlone", u"C:\\d\\PCL6ui.dll", u"C:\\d\\", u"PCL6ui", u"PCL6ui"},
        PlaceCase{"OneUnitBeforeTheEnding", u"C:\\d\\xPCL6ui.dll", u"C:\\d\\", u"xPCL6ui", u"x"},
        PlaceCase{"WithoutTheEnding", u"C:\\d\\other.dll", u"C:\\d\\", u"other", u"other"},
        PlaceCase{"LongWithoutTheEnding", u"C:\\d\\another.dll", u"C:\\d\\", u"another",
                  u"another"},
        PlaceCase{"EndingInOtherLetterCase", u"C:\\d\\ostrelPCL6UI.dll", u"C:\\d\\",
                  u"ostrelPCL6UI", u"ostrelPCL6UI"},
        PlaceCase{"EndingInTheMiddle", u"C:\\d\\ostrelPCL6uix.dll", u"C:\\d\\", u"ostrelPCL6uix",
                  u"ostrelPCL6uix"},
        PlaceCase{"EndingTwice", u"C:\\d\\aPCL6uiPCL6ui.dll", u"C:\\d\\", u"aPCL6uiPCL6ui",
                  u"aPCL6ui"},
        PlaceCase{"WithoutAnExtension", u"C:\\d.e\\ostrelPCL6ui", u"C:\\d.e\\", u"ostrelPCL6ui",
                  u"ostrel"},
        PlaceCase{"WithTwoExtensions", u"C:\\d\\a.b.dll", u"C:\\d\\", u"a.b", u"a.b"},
        PlaceCase{"LongestPrefix", u"C:\\" + std::u16string(123, u'p') + u"PCL6ui.dll", u"C:\\",
                  std::u16string(123, u'p') + u"PCL6ui", std::u16string(123, u'p')},
        PlaceCase{"EndingBehindTheLongestPrefix",
                  u"C:\\" + std::u16string(124, u'p') + u"PCL6ui.dll", u"C:\\",
                  std::u16string(124, u'p') + u"PCL6ui", std::u16string(124, u'p') + u"PCL6u"},
        PlaceCase{"LongWithoutEnd", u"C:\\" + std::u16string(130, u'p') + u".dll", u"C:\\",
                  std::u16string(130, u'p'), std::u16string(129, u'p')},
        PlaceCase{"WithoutADirectory", u"aPCL6ui.dll", u"", u"aPCL6ui", u"a"}),
    test::CaseName());

TEST_P(OwnPlaceOf, IsDirectoryStemAndPrefix) {
  test::TestWorld world;
  world.platform.modules.Install(GetParam().path);
  world.process.LibraryModule = world.platform.modules.LoadLibraryW(GetParam().path.c_str());
  const OwnPlace place;
  EXPECT_EQ(place.directory(), GetParam().directory);
  EXPECT_EQ(place.stem(), GetParam().stem);
  EXPECT_EQ(place.modulePrefix(), GetParam().prefix);
}

TEST(OwnPlaceUnknown, IsEmptyThroughout) {
  test::TestWorld world;
  world.platform.faults.FailOperation("GetModuleFileNameW");
  const OwnPlace place;
  EXPECT_EQ(place.directory(), u"");
  EXPECT_EQ(place.stem(), u"");
  EXPECT_EQ(place.modulePrefix(), u"");
}

TEST(OwnPlaceUnknown, IsThatOfALibraryWhosePathWasCut) {
  for (const std::size_t units : {std::size_t{259}, std::size_t{260}}) {
    test::TestWorld world;
    const std::u16string path = u"C:\\" + std::u16string(units - 7, u's') + u".dll";
    world.platform.modules.Install(path);
    world.process.LibraryModule = world.platform.modules.LoadLibraryW(path.c_str());
    const OwnPlace place;
    EXPECT_EQ(place.stem().size(), units == 259 ? 252U : 0U) << units;
    EXPECT_EQ(place.directory(), units == 259 ? u"C:\\" : u"") << units;
  }
}

}  // namespace
}  // namespace ostrel
