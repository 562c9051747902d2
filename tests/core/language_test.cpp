#include "core/language.h"

#include "support/call_recorder.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::CallRecorder;

constexpr std::u16string_view kDirectory = u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\";

std::u16string PathOf(std::u16string_view fileName) {
  return std::u16string(kDirectory).append(fileName);
}

// ---- Strings ------------------------------------------------------------------------------------

class UiString : public testing::Test {
 protected:
  UiString() {
    world_.platform.modules.Install(u"C:\\texts.dll", {{5, u"twelve units"}, {6, u""}});
    module_ = world_.platform.modules.LoadLibraryW(u"C:\\texts.dll");
  }

  // Loads into a poisoned buffer of exactly `units`.
  int Load(ModuleHandle module, std::uint32_t id, std::size_t units) {
    buffer_ = std::make_unique<char16_t[]>(units);
    std::fill_n(buffer_.get(), units, u'#');
    return LoadUiString(module, id, {buffer_.get(), units});
  }
  std::u16string Text() const { return buffer_.get(); }

  test::TestWorld world_;
  ModuleHandle module_ = nullptr;
  std::unique_ptr<char16_t[]> buffer_;
};

TEST_F(UiString, TextOfTheModuleIsLoaded) {
  EXPECT_EQ(Load(module_, 5, 64), 12);
  EXPECT_EQ(Text(), u"twelve units");
}

TEST_F(UiString, TextThatJustFitsIsWhole) {
  EXPECT_EQ(Load(module_, 5, 13), 12);
  EXPECT_EQ(Text(), u"twelve units");
}

TEST_F(UiString, LongerTextIsCutAndTerminated) {
  EXPECT_EQ(Load(module_, 5, 12), 11);
  EXPECT_EQ(Text(), u"twelve unit");
  EXPECT_EQ(Load(module_, 5, 2), 1);
  EXPECT_EQ(Text(), u"t");
}

TEST_F(UiString, MissingTextGivesWayToItsId) {
  EXPECT_EQ(Load(module_, 7, 64), 13);
  EXPECT_EQ(Text(), u"id:7 missing!");
}

TEST_F(UiString, EmptyTextCountsAsMissing) {
  EXPECT_EQ(Load(module_, 6, 64), 13);
  EXPECT_EQ(Text(), u"id:6 missing!");
}

TEST_F(UiString, NullModuleGivesWayToTheId) {
  EXPECT_EQ(Load(nullptr, 65535, 64), 17);
  EXPECT_EQ(Text(), u"id:65535 missing!");
  EXPECT_TRUE(world_.platform.modules.requestedStrings.empty());
}

TEST_F(UiString, FallbackThatJustFitsIsWhole) {
  EXPECT_EQ(Load(nullptr, 202, 16), 15);
  EXPECT_EQ(Text(), u"id:202 missing!");
}

TEST_F(UiString, FallbackThatDoesNotFitLeavesTheBufferEmpty) {
  for (const std::size_t units : {std::size_t{15}, std::size_t{2}, std::size_t{1}}) {
    EXPECT_EQ(Load(nullptr, 202, units), 0) << units;
    EXPECT_EQ(Text(), u"") << units;
    EXPECT_EQ(Load(module_, 202, units), 0) << units;
    EXPECT_EQ(Text(), u"") << units;
  }
}

TEST_F(UiString, BufferOfNoUnitsIsLeftAlone) {
  EXPECT_EQ(Load(module_, 5, 0), 0);
  EXPECT_EQ(Load(nullptr, 5, 0), 0);
}

TEST_F(UiString, FailedLoadGivesWayToTheId) {
  world_.platform.faults.FailOperation("LoadStringW");
  EXPECT_EQ(Load(module_, 5, 64), 13);
  EXPECT_EQ(Text(), u"id:5 missing!");
}

TEST_F(UiString, StringsThatTheCoreNamesAreShipped) {
  for (const std::uint32_t id : {146U, 202U, 207U, 281U}) {
    EXPECT_TRUE(test::EnglishStrings().contains(id)) << id;
  }
}

// ---- The language table -------------------------------------------------------------------------

struct LanguageIds {
  const char* name;
  const char16_t* suffix;
  std::vector<std::uint16_t> ids;
};

// The languages and their ids once more, by what their users are given.
// clang-format off
const LanguageIds kLanguages[] = {
    {"Arabic", u"ar",
     {1025, 2049, 3073, 4097, 5121, 6145, 7169, 8193, 9217, 10241, 11265, 12289, 13313, 14337, 15361, 16385}},
    {"SimplifiedChinese", u"zhcn", {2052}},
    {"TraditionalChinese", u"zhtw", {1028, 3076, 4100, 5124}},
    {"English", u"enus",
     {1033, 2057, 3081, 4105, 5129, 6153, 7177, 8201, 9225, 10249, 11273, 12297, 13321, 16393, 17417, 18441}},
    {"GivenEnglish", u"enus", {6, 11, 15, 19, 20, 29, 1030, 1035, 1039, 1043, 1061, 1062, 1063, 2067}},
    {"French", u"fr", {1036, 2060, 3084, 4108, 5132, 6156}},
    {"Italian", u"it", {1040, 2064}},
    {"Japanese", u"enus", {17, 1041}},
    {"Russian", u"ru", {25, 1049}},
    {"Spanish", u"esmx",
     {2058, 3082, 4106, 5130, 6154, 7178, 8202, 9226, 10250, 11274, 12298, 13322, 14346, 15370, 16394, 17418, 18442, 19466, 20490}},
    {"Norwegian", u"enus", {1044, 2068}},
    {"Swedish", u"enus", {1053, 2077}},
    {"Hebrew", u"he", {13, 1037}},
    {"German", u"de", {1031, 2055, 3079, 4103, 5127}},
    {"Turkish", u"tr", {31, 1055}},
    {"Polish", u"pl", {21, 1045}},
    {"Portuguese", u"pt", {22, 1046, 2070}},
    {"Korean", u"enus", {18, 1042}},
    {"Romanian", u"ro", {24, 1048}},
    {"Bulgarian", u"bg", {2, 1026}},
    {"Czech", u"cs", {5, 1029}},
    {"Greek", u"el", {8, 1032}},
    {"Hungarian", u"hu", {14, 1038}},
    {"Thai", u"th", {30, 1054}},
    {"Vietnamese", u"vi", {42, 1066}},
    {"Azerbaijan", u"enus", {44, 1068, 2092}},
    {"Kazakh", u"kz", {63, 1087}},
    {"Ukrainian", u"uk", {34, 1058}},
};
// clang-format on

class LanguageTable : public testing::TestWithParam<LanguageIds> {};

INSTANTIATE_TEST_SUITE_P(Languages, LanguageTable, testing::ValuesIn(kLanguages), test::CaseName());

TEST_P(LanguageTable, EachIdHasTheSuffixOfItsLanguage) {
  test::TestWorld world;
  for (const std::uint16_t id : GetParam().ids) {
    EXPECT_EQ(std::u16string(LanguageSuffixOf(id)), GetParam().suffix) << id;
    world.UserValues(test::kDriverName).clear();
    world.platform.locale.uiLanguage = id;
    char16_t suffix[kLanguageSuffixUnits];
    std::ranges::fill(suffix, u'#');
    GetLanguageSuffix(test::kDriverName, suffix);
    EXPECT_EQ(std::u16string(suffix), GetParam().suffix) << id;
  }
}

TEST(LanguageTableAsAWhole, EveryOtherIdIsEnglish) {
  std::vector<std::uint16_t> known;
  for (const LanguageIds& language : kLanguages) {
    known.insert(known.end(), language.ids.begin(), language.ids.end());
  }
  for (std::uint32_t id = 0; id <= 0xFFFF; ++id) {
    const auto languageId = static_cast<std::uint16_t>(id);
    if (std::ranges::find(known, languageId) == known.end()) {
      ASSERT_EQ(std::u16string(LanguageSuffixOf(languageId)), u"enus") << id;
    }
  }
}

TEST(LanguageSuffix, IsCutToItsBuffer) {
  test::TestWorld world;
  char16_t suffix[3] = {u'#', u'#', u'#'};
  GetLanguageSuffix(test::kDriverName, suffix);
  EXPECT_EQ(std::u16string(suffix), u"en");
}

// ---- The library's name and the two flags -------------------------------------------------------

struct FlagCase {
  const char* name;
  std::uint16_t language;
  const char16_t* library;
  bool decimalComma;
  bool rightToLeft;
};

class LanguageFlags : public testing::TestWithParam<FlagCase> {};

INSTANTIATE_TEST_SUITE_P(
    Languages, LanguageFlags,
    testing::Values(FlagCase{"Russian", 1049, u"ostrelPCL6uiru.dll", true, false},
                    FlagCase{"French", 1036, u"ostrelPCL6uifr.dll", true, false},
                    FlagCase{"Italian", 1040, u"ostrelPCL6uiit.dll", true, false},
                    FlagCase{"Spanish", 3082, u"ostrelPCL6uiesmx.dll", true, false},
                    FlagCase{"German", 1031, u"ostrelPCL6uide.dll", true, false},
                    FlagCase{"Turkish", 1055, u"ostrelPCL6uitr.dll", true, false},
                    FlagCase{"Polish", 1045, u"ostrelPCL6uipl.dll", true, false},
                    FlagCase{"Portuguese", 1046, u"ostrelPCL6uipt.dll", true, false},
                    FlagCase{"Romanian", 1048, u"ostrelPCL6uiro.dll", true, false},
                    FlagCase{"Czech", 1029, u"ostrelPCL6uics.dll", true, false},
                    FlagCase{"Greek", 1032, u"ostrelPCL6uiel.dll", true, false},
                    FlagCase{"Hungarian", 1038, u"ostrelPCL6uihu.dll", true, false},
                    FlagCase{"Thai", 1054, u"ostrelPCL6uith.dll", true, false},
                    FlagCase{"Kazakh", 1087, u"ostrelPCL6uikz.dll", true, false},
                    FlagCase{"Bulgarian", 1026, u"ostrelPCL6uibg.dll", false, false},
                    FlagCase{"Ukrainian", 1058, u"ostrelPCL6uiuk.dll", false, false},
                    FlagCase{"Vietnamese", 1066, u"ostrelPCL6uivi.dll", false, false},
                    FlagCase{"English", 1033, u"ostrelPCL6uienus.dll", false, false},
                    FlagCase{"Japanese", 1041, u"ostrelPCL6uienus.dll", false, false},
                    FlagCase{"Norwegian", 1044, u"ostrelPCL6uienus.dll", false, false},
                    FlagCase{"Swedish", 1053, u"ostrelPCL6uienus.dll", false, false},
                    FlagCase{"Azerbaijan", 1068, u"ostrelPCL6uienus.dll", false, false},
                    FlagCase{"SimplifiedChinese", 2052, u"ostrelPCL6uizhcn.dll", false, false},
                    FlagCase{"TraditionalChinese", 1028, u"ostrelPCL6uizhtw.dll", false, false},
                    FlagCase{"Arabic", 1025, u"ostrelPCL6uiar.dll", false, true},
                    FlagCase{"Hebrew", 1037, u"ostrelPCL6uihe.dll", false, true}),
    test::CaseName());

TEST_P(LanguageFlags, FollowFromTheSuffixInTheLibrarysName) {
  test::TestWorld world;
  world.platform.locale.uiLanguage = GetParam().language;
  char16_t fileName[kMaxPathUnits];
  std::ranges::fill(fileName, u'#');
  BuildLanguageLibraryName(test::kDriverName, fileName);
  EXPECT_EQ(std::u16string(fileName), GetParam().library);
  EXPECT_EQ(world.process.DecimalCommaLanguage, GetParam().decimalComma);
  EXPECT_EQ(world.process.RightToLeftLanguage, GetParam().rightToLeft);
}

TEST(LanguageFlagsOfTwoLanguages, AddUpAndAreNeverCleared) {
  test::TestWorld world;
  char16_t fileName[kMaxPathUnits];
  constexpr std::uint16_t kArabicFrenchEnglish[] = {1025, 1036, 1033};
  for (const std::uint16_t language : kArabicFrenchEnglish) {
    // Each language for a driver of its own, since a driver's language once stored stays.
    const std::u16string driver = u"Driver " + std::u16string(1, static_cast<char16_t>(language));
    world.platform.locale.uiLanguage = language;
    BuildLanguageLibraryName(driver.c_str(), fileName);
  }
  EXPECT_TRUE(world.process.DecimalCommaLanguage);
  EXPECT_TRUE(world.process.RightToLeftLanguage);
}

struct MarkCase {
  const char* name;
  std::u16string suffix;
  bool decimalComma;
  bool rightToLeft;
};

class StoredSuffix : public testing::TestWithParam<MarkCase> {
 protected:
  void Store() {
    world_.UserValues(test::kDriverName)[u"suffix"] =
        headless::StoredValue::Text(GetParam().suffix);
  }

  test::TestWorld world_;
};

INSTANTIATE_TEST_SUITE_P(
    Suffixes, StoredSuffix,
    testing::Values(MarkCase{"ru", u"ru", true, false}, MarkCase{"fr", u"fr", true, false},
                    MarkCase{"it", u"it", true, false}, MarkCase{"es", u"es", true, false},
                    MarkCase{"esmx", u"esmx", true, false}, MarkCase{"no", u"no", true, false},
                    MarkCase{"sv", u"sv", true, false}, MarkCase{"de", u"de", true, false},
                    MarkCase{"tr", u"tr", true, false}, MarkCase{"pl", u"pl", true, false},
                    MarkCase{"pt", u"pt", true, false}, MarkCase{"ro", u"ro", true, false},
                    MarkCase{"cs", u"cs", true, false}, MarkCase{"el", u"el", true, false},
                    MarkCase{"hu", u"hu", true, false}, MarkCase{"th", u"th", true, false},
                    MarkCase{"bu", u"bu", true, false}, MarkCase{"az", u"az", true, false},
                    MarkCase{"kz", u"kz", true, false}, MarkCase{"ar", u"ar", false, true},
                    MarkCase{"he", u"he", false, true}, MarkCase{"bg", u"bg", false, false},
                    MarkCase{"uk", u"uk", false, false}, MarkCase{"vi", u"vi", false, false},
                    MarkCase{"enus", u"enus", false, false},
                    MarkCase{"zhcn", u"zhcn", false, false},
                    MarkCase{"zhtw", u"zhtw", false, false},
                    MarkCase{"MarkInTheMiddle", u"xdey", true, false},
                    MarkCase{"TwoMarks", u"arde", true, true},
                    MarkCase{"MarkInOtherLetterCase", u"DE", false, false},
                    MarkCase{"OneLetter", u"d", false, false}),
    test::CaseName());

TEST_P(StoredSuffix, SetsTheFlagsOfItsMarksAndNamesTheLibrary) {
  Store();
  char16_t fileName[kMaxPathUnits];
  std::ranges::fill(fileName, u'#');
  BuildLanguageLibraryName(test::kDriverName, fileName);
  EXPECT_EQ(std::u16string(fileName), u"ostrelPCL6ui" + GetParam().suffix + u".dll");
  EXPECT_EQ(world_.process.DecimalCommaLanguage, GetParam().decimalComma);
  EXPECT_EQ(world_.process.RightToLeftLanguage, GetParam().rightToLeft);
}

TEST_P(StoredSuffix, OutlivesTheSystemsLanguageAndIsNotWrittenAgain) {
  Store();
  const headless::StoredValues before = world_.UserValues(test::kDriverName);
  CallRecorder recorder(world_);
  for (const std::uint16_t language : {std::uint16_t{1036}, std::uint16_t{1041}}) {
    world_.platform.locale.uiLanguage = language;
    char16_t suffix[kLanguageSuffixUnits];
    std::ranges::fill(suffix, u'#');
    GetLanguageSuffix(test::kDriverName, suffix);
    EXPECT_EQ(std::u16string(suffix), GetParam().suffix);
  }
  EXPECT_EQ(recorder.calls, test::InOrder({test::UserRead("Suffix", test::kDriverName),
                                           test::UserRead("Suffix", test::kDriverName)}));
  EXPECT_EQ(world_.UserValues(test::kDriverName), before);
}

TEST_P(StoredSuffix, ClearsNoFlag) {
  Store();
  world_.process.DecimalCommaLanguage = true;
  world_.process.RightToLeftLanguage = true;
  char16_t fileName[kMaxPathUnits];
  BuildLanguageLibraryName(test::kDriverName, fileName);
  EXPECT_TRUE(world_.process.DecimalCommaLanguage);
  EXPECT_TRUE(world_.process.RightToLeftLanguage);
}

struct MissingSuffixCase {
  const char* name;
  headless::StoredValues values;
};

class MissingSuffix : public testing::TestWithParam<MissingSuffixCase> {};

INSTANTIATE_TEST_SUITE_P(
    Values, MissingSuffix,
    testing::Values(MissingSuffixCase{"None", {}},
                    MissingSuffixCase{"Empty", {{u"suffix", headless::StoredValue::Text(u"")}}},
                    MissingSuffixCase{"Word", {{u"suffix", headless::StoredValue::Dword(0x6465)}}}),
    test::CaseName());

TEST_P(MissingSuffix, IsTakenFromTheSystemsLanguageAndStored) {
  test::TestWorld world;
  world.UserValues(test::kDriverName) = GetParam().values;
  world.platform.locale.uiLanguage = 1031;
  char16_t suffix[kLanguageSuffixUnits];
  std::ranges::fill(suffix, u'#');
  GetLanguageSuffix(test::kDriverName, suffix);
  EXPECT_EQ(std::u16string(suffix), u"de");
  headless::StoredValue expected = headless::StoredValue::Text(u"de");
  expected.bytes.resize(260);
  EXPECT_EQ(world.UserValues(test::kDriverName)[u"suffix"], expected);
  world.platform.locale.uiLanguage = 1041;
  GetLanguageSuffix(test::kDriverName, suffix);
  EXPECT_EQ(std::u16string(suffix), u"de");
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(LanguageSuffix, HasAtMost127Characters) {
  test::TestWorld world;
  world.UserValues(test::kDriverName)[u"suffix"] =
      headless::StoredValue::Text(std::u16string(200, u's'));
  std::array<char16_t, kLanguageSuffixUnits + 1> suffix;
  suffix.fill(u'#');
  GetLanguageSuffix(test::kDriverName, std::span(suffix).first<kLanguageSuffixUnits>());
  EXPECT_EQ(std::u16string(suffix.data()), std::u16string(127, u's'));
  EXPECT_EQ(suffix.back(), u'#');
}

TEST(LanguageSuffix, FollowsTheSystemsLanguageWhileTheStoreCannotBeOpened) {
  test::TestWorld world;
  world.platform.faults.FailOperation("OpenProcessToken");
  char16_t suffix[kLanguageSuffixUnits];
  world.platform.locale.uiLanguage = 1031;
  GetLanguageSuffix(test::kDriverName, suffix);
  EXPECT_EQ(std::u16string(suffix), u"de");
  world.platform.locale.uiLanguage = 1040;
  GetLanguageSuffix(test::kDriverName, suffix);
  EXPECT_EQ(std::u16string(suffix), u"it");
}

TEST(LanguageSuffix, StandsUnderTheDriversName) {
  test::TestWorld world;
  world.UserValues(test::kPrinterName)[u"suffix"] = headless::StoredValue::Text(u"de");
  char16_t suffix[kLanguageSuffixUnits];
  GetLanguageSuffix(test::kDriverName, suffix);
  EXPECT_EQ(std::u16string(suffix), u"enus");
}

TEST(LanguageLibraryName, StemLosesItsDirectoryAndItsLastExtensionOnly) {
  test::TestWorld world;
  world.platform.modules.Install(u"D:\\a.b\\some.driver.dll");
  world.process.LibraryModule = world.platform.modules.LoadLibraryW(u"D:\\a.b\\some.driver.dll");
  char16_t fileName[kMaxPathUnits];
  BuildLanguageLibraryName(test::kDriverName, fileName);
  EXPECT_EQ(std::u16string(fileName), u"some.driverenus.dll");
}

// ---- Loading ------------------------------------------------------------------------------------

struct TryCase {
  const char* name;
  std::uint16_t language;
  std::vector<std::u16string> tries;
};

class LanguageLibraryTries : public testing::TestWithParam<TryCase> {};

INSTANTIATE_TEST_SUITE_P(
    Suffixes, LanguageLibraryTries,
    testing::Values(
        TryCase{"FourLettersChinese",
                2052,
                {u"ostrelPCL6uizhcn.dll", u"ostrelPCL6uizh.dll", u"ostrelPCL6uienus.dll"}},
        TryCase{"FourLettersSpanish",
                3082,
                {u"ostrelPCL6uiesmx.dll", u"ostrelPCL6uies.dll", u"ostrelPCL6uienus.dll"}},
        TryCase{"FourLettersEnglish",
                1033,
                {u"ostrelPCL6uienus.dll", u"ostrelPCL6uien.dll", u"ostrelPCL6uienus.dll"}},
        TryCase{"TwoLetters",
                1036,
                {u"ostrelPCL6uifr.dll", u"ostrelPCL6ui.dll", u"ostrelPCL6enus.dll"}}),
    test::CaseName());

TEST_P(LanguageLibraryTries, FailOneAfterTheOtherAndGiveNull) {
  test::TestWorld world;
  world.platform.locale.uiLanguage = GetParam().language;
  world.platform.faults.FailOperation("LoadLibraryW");
  CallRecorder recorder(world);
  EXPECT_EQ(LoadLanguageModule(test::kDriverName), nullptr);
  std::vector<std::u16string> expected;
  std::ranges::transform(GetParam().tries, std::back_inserter(expected), PathOf);
  EXPECT_EQ(recorder.paths, expected);
}

TEST_P(LanguageLibraryTries, EndWithTheFirstThatLoads) {
  for (std::size_t success = 0; success < GetParam().tries.size(); ++success) {
    test::TestWorld world;
    world.platform.modules.Remove(test::kEnglishLibraryPath);
    world.platform.locale.uiLanguage = GetParam().language;
    const std::u16string path = PathOf(GetParam().tries[success]);
    world.platform.modules.Install(path, {{202, u"here"}});
    for (std::size_t failed = 1; failed <= success; ++failed) {
      world.platform.faults.FailOperation("LoadLibraryW", failed);
    }
    CallRecorder recorder(world);
    const ModuleHandle module = LoadLanguageModule(test::kDriverName);
    ASSERT_NE(module, nullptr) << success;
    EXPECT_EQ(recorder.paths.size(), success + 1);
    EXPECT_EQ(world.platform.modules.loadsOf(path), 1U) << success;
  }
}

TEST(LanguageLibrary, TwoLetterLanguageWithoutALibraryGetsThisLibraryItself) {
  test::TestWorld world;
  world.platform.locale.uiLanguage = 1036;
  const ModuleHandle module = LoadLanguageModule(test::kDriverName);
  EXPECT_EQ(module, world.process.LibraryModule);
  EXPECT_EQ(world.platform.modules.loadsOf(test::kLibraryPath), 2U);
  char16_t text[64];
  EXPECT_EQ(LoadUiString(module, 202, text), 15);
  EXPECT_EQ(std::u16string(text), u"id:202 missing!");
}

TEST(LanguageLibrary, FourLetterLanguageWithoutALibraryGetsEnglish) {
  test::TestWorld world;
  world.platform.locale.uiLanguage = 2052;
  const ModuleHandle module = LoadLanguageModule(test::kDriverName);
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(world.platform.modules.loadsOf(test::kEnglishLibraryPath), 1U);
}

TEST(LanguageLibrary, ScopeFreesTheLibraryAndAcceptsNull) {
  test::TestWorld world;
  {
    const ScopedModule module(LoadLanguageModule(test::kDriverName));
    const ScopedModule none(nullptr);
    EXPECT_EQ(world.platform.modules.loadsOf(test::kEnglishLibraryPath), 1U);
    EXPECT_EQ(none.get(), nullptr);
  }
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(BitmapLibrary, IsNamedByStemWithoutALanguage) {
  test::TestWorld world;
  world.platform.locale.uiLanguage = 1036;
  CallRecorder recorder(world);
  EXPECT_NE(LoadBitmapModule(), nullptr);
  EXPECT_EQ(recorder.paths, std::vector<std::u16string>{PathOf(u"ostrelPCL6uiResBmp.dll")});
}

TEST(BitmapLibrary, IsNullWhenItIsMissing) {
  test::TestWorld world;
  world.platform.modules.Remove(test::kBitmapLibraryPath);
  CallRecorder recorder(world);
  EXPECT_EQ(LoadBitmapModule(), nullptr);
  EXPECT_EQ(recorder.paths.size(), 1U);
}

// ---- This library's own place -------------------------------------------------------------------

TEST(OwnPath, UnreadableGivesNoLibrary) {
  test::TestWorld world;
  world.platform.faults.FailOperation("GetModuleFileNameW");
  EXPECT_EQ(LoadLanguageModule(test::kDriverName), nullptr);
  EXPECT_EQ(LoadBitmapModule(), nullptr);
  EXPECT_EQ(world.Leftovers(), "");
}

struct PathCase {
  const char* name;
  std::size_t pathUnits;  // of this library's whole path
  bool loads;
};

class OwnPathLength : public testing::TestWithParam<PathCase> {};

// "ResBmp" makes the bitmap library's path six units longer than this library's; a path holds 259
// units and the terminator.
INSTANTIATE_TEST_SUITE_P(Lengths, OwnPathLength,
                         testing::Values(PathCase{"LongestWithRoomForTheSister", 253, true},
                                         PathCase{"SisterOneUnitTooLong", 254, false},
                                         PathCase{"LongestPath", 259, false},
                                         PathCase{"CutPath", 260, false},
                                         PathCase{"PathFarTooLong", 400, false}),
                         test::CaseName());

TEST_P(OwnPathLength, LoadsASisterWhosePathFits) {
  test::TestWorld world;
  const std::u16string base =
      u"C:\\" + std::u16string(GetParam().pathUnits - 3 - 9, u'd') + u"\\driv";
  const std::u16string own = base + u".dll";
  ASSERT_EQ(own.size(), GetParam().pathUnits);
  world.platform.modules.Install(own);
  world.platform.modules.Install(base + u"ResBmp.dll");
  world.process.LibraryModule = world.platform.modules.LoadLibraryW(own.c_str());
  EXPECT_EQ(LoadBitmapModule() != nullptr, GetParam().loads);
}

// ---- Strings that must really be there ----------------------------------------------------------

TEST(LoadExistingString, WithoutRoomAsksForNothing) {
  test::TestWorld world;
  const ModuleHandle module = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  char16_t poisoned[4] = {u'x', u'x', u'x', u'x'};
  EXPECT_FALSE(LoadExistingString(module, 106, std::span(poisoned).first(0)));
  EXPECT_EQ(std::u16string(poisoned, 4), u"xxxx");
  EXPECT_TRUE(world.platform.modules.requestedStrings.empty());
}

TEST(LoadExistingString, MissingStringOrLibraryIsNone) {
  test::TestWorld world;
  const ModuleHandle module = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  char16_t text[32] = {};
  EXPECT_TRUE(LoadExistingString(module, 106, text));
  EXPECT_EQ(std::u16string(text), test::EnglishStrings().at(106));
  EXPECT_FALSE(LoadExistingString(module, 65000, text));
  EXPECT_FALSE(LoadExistingString(nullptr, 106, text));
}

}  // namespace
}  // namespace ostrel
