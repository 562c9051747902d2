// The settings file as the driver finds it, makes it and leaves it: where it lies, what becomes of
// a file that isn't good, and what a removed driver takes along.
#include "copied_library.h"
#include "print_system_fixture.h"
#include "settings_folder.h"

#include <memory>

namespace ostrel::print_system {
namespace {

constexpr wchar_t kMaker[] = L"Settings test";
constexpr char kMakersIni[] = "[Print]\r\nOEM_NAME=Settings test\r\n";

const CustomPaper kCard = {1181, 2362, L"Card", 288};

const std::vector<std::wstring> kPackage = {kDriverLibraryFile, kLanguageLibraryFile,
                                            kPictureLibraryFile};

int CountPapers(const CopiedLibrary& driver) {
  return static_cast<int>(
      driver->DrvDeviceCapabilities(nullptr, Writable(kTestPrinter), DC_PAPERS, nullptr, nullptr));
}

// A driver with an ini file of its own, and so with a settings file that nobody else uses.
class SettingsFile : public testing::Test {
 protected:
  CopiedLibrary driver_{kPackage, kMakersIni};
  SettingsPlace place_{kMaker};
};

// ---- Where it lies ------------------------------------------------------------------------------

struct IniCase {
  const char* name;
  const char* ini;  // null for none
  const wchar_t* maker;
};

void PrintTo(const IniCase& row, std::ostream* out) {
  *out << row.name;
}

class SettingsFileByIni : public testing::TestWithParam<IniCase> {};

TEST_P(SettingsFileByIni, LiesInTheMakersFolder) {
  CopiedLibrary driver(kPackage, GetParam().ini);
  SettingsPlace place(GetParam().maker);
  place.Clear();
  EXPECT_EQ(CountPapers(driver), 28);
  EXPECT_EQ(place.Read(), SettingsTree{}.Bytes());
}

// clang-format off
constexpr IniCase kInis[] = {
    {"MissingIni",       nullptr,                                 L"Ostrel"},
    {"IniOfNoBytes",     "",                                      L"Ostrel"},
    {"MakersName",       kMakersIni,                              kMaker},
    {"EmptyName",        "[Print]\r\nOEM_NAME=\r\n",              L"Ostrel"},
    {"OtherSection",     "[Printer]\r\nOEM_NAME=Elsewhere\r\n",   L"Ostrel"},
    {"OtherKey",         "[Print]\r\nPrinterName=Elsewhere\r\n",  L"Ostrel"},
    {"LettersOfAnyCase", "[PRINT]\noem_name=Settings test\n",     kMaker},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Row, SettingsFileByIni, testing::ValuesIn(kInis),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(SettingsFileOfTheInstalledDriver, LiesInTheFolderThatTheShippedIniLeavesInForce) {
  SettingsPlace place;
  place.Clear();
  EXPECT_EQ(DeviceCapabilitiesW(kTestPrinter, L"LPT1:", DC_PAPERS, nullptr, nullptr), 28);
  EXPECT_EQ(place.Read(), SettingsTree{}.Bytes());
}

TEST(SettingsFileOfARenamedDriver, BearsTheStemOfTheLibraryTwice) {
  CopiedLibrary driver(kPackage, nullptr, L"acmePCL6ui.dll");
  const std::wstring folder = ApplicationData() + L"\\Ostrel\\acme";
  const std::wstring path = folder + L"\\acmesettings.dat";
  EXPECT_EQ(CountPapers(driver), 28);
  EXPECT_NE(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
  DeleteFileW(path.c_str());
  RemoveDirectoryW(folder.c_str());
}

// ---- What becomes of it -------------------------------------------------------------------------

struct FileCase {
  const char* name;
  std::string before;
  int papers;
  std::string after;
};

void PrintTo(const FileCase& row, std::ostream* out) {
  *out << row.name;
}

class FoundSettingsFile : public SettingsFile, public testing::WithParamInterface<FileCase> {};

TEST_P(FoundSettingsFile, IsUsedRepairedOrReplaced) {
  place_.Write(GetParam().before);
  EXPECT_EQ(CountPapers(driver_), GetParam().papers);
  EXPECT_EQ(place_.Read(), GetParam().after);
}

std::vector<FileCase> FileCases() {
  const std::string card = CustomPaperLeaf("Card", kCard);
  const std::string fresh = SettingsTree{}.Bytes();
  const std::string version = Leaf("version", "string", std::string_view("0.0.0.1\0", 8));
  const SettingsTree good = {.customPapers = {card}};
  const SettingsTree later = {.version = std::string("0.0.0.2\0", 8), .customPapers = {card}};
  const SettingsTree earlier = {.version = std::string("0.0.0.0\0", 8), .customPapers = {card}};
  const std::string noVersion =
      Container("cfgobj", {Container("UIParam", {Container("cuspapersetting", {card})})});
  const std::string someBranches =
      Container("cfgobj", {version, Container("UIParam", {Container("cuspapersetting", {card})})});
  const std::string repaired = Container(
      "cfgobj",
      {version,
       Container("UIParam", {Container("cuspapersetting", {card}), Container("savesetting", {}),
                             Container("cursetting", {}), Container("watermarksetting", {})})});
  const std::string page = "<html>" + std::string(300, 'x') + "</html>\n";
  const std::string whole = good.Bytes();
  const std::size_t valueStart = whole.find(kCard.Value());
  // The branch behind the cut is made anew, on top of the four that the cut file still announces.
  std::string mended =
      SettingsTree{.customPapers = {Leaf("Card", "binary", std::string(72, '\0'))}}.Bytes();
  constexpr std::string_view kAnnounced = "UIParam,type:null,len:0,childobjs:";
  mended[mended.find(kAnnounced) + kAnnounced.size()] = '5';
  return {
      {"AGoodFileStays", whole, 29, whole},
      {"AFileOfNoBytesIsReplaced", "", 28, fresh},
      {"AForeignTextIsReplaced", "Dear diary,\n", 28, fresh},
      {"AShortPageIsReplaced", "<html></html>\n", 28, fresh},
      {"ALongPageIsNoTreeAndStays", page, 28, page},
      {"AFileWithoutAVersionIsReplaced", noVersion, 28, fresh},
      {"ALaterVersionIsUsed", later.Bytes(), 29, later.Bytes()},
      {"AnEarlierVersionIsUsed", earlier.Bytes(), 29, earlier.Bytes()},
      {"MissingBranchesAreAdded", someBranches, 29, repaired},
      {"ANewFileGetsItsBranches", Container("cfgobj", {version}), 28, fresh},
      {"BlankLinesGo", "\n\n" + whole + "\n\n", 29, whole},
      {"AFileCutInAValueIsFilledWithZeros", whole.substr(0, valueStart), 29, mended},
  };
}

INSTANTIATE_TEST_SUITE_P(Row, FoundSettingsFile, testing::ValuesIn(FileCases()),
                         [](const auto& row) { return std::string(row.param.name); });

// ---- What stands in its way ---------------------------------------------------------------------

TEST_F(SettingsFile, ThatIsMissingIsMadeWithItsFolders) {
  ASSERT_EQ(GetFileAttributesW(place_.folder().c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(CountPapers(driver_), 28);
  EXPECT_EQ(place_.Read(), SettingsTree{}.Bytes());
}

TEST_F(SettingsFile, WhosePlaceIsTakenByAFolderIsDoneWithout) {
  place_.MakeFolders();
  ASSERT_NE(CreateDirectoryW(place_.path().c_str(), nullptr), FALSE);
  EXPECT_EQ(CountPapers(driver_), 28);
  EXPECT_NE(GetFileAttributesW(place_.path().c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0U);
}

TEST_F(SettingsFile, WhoseFolderIsAFileIsDoneWithout) {
  place_.MakeFolders();
  RemoveDirectoryW(place_.folder().c_str());
  const HANDLE file = CreateFileW(place_.folder().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  CloseHandle(file);
  EXPECT_EQ(CountPapers(driver_), 28);
  DeleteFileW(place_.folder().c_str());
}

TEST(SettingsFolder, ThatCannotBeMadeIsDoneWithout) {
  CopiedLibrary driver(kPackage, "[Print]\r\nOEM_NAME=no such\\folder\r\n");
  EXPECT_EQ(CountPapers(driver), 28);
  const std::wstring folder = ApplicationData() + L"\\no such";
  EXPECT_EQ(GetFileAttributesW(folder.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(SettingsFile, ThatAnotherProgramHasToItselfIsDoneWithoutUntilItIsFree) {
  const std::string bytes = SettingsTree{.customPapers = {CustomPaperLeaf("Card", kCard)}}.Bytes();
  place_.Write(bytes);
  const HANDLE owner = CreateFileW(place_.path().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(owner, INVALID_HANDLE_VALUE);
  EXPECT_EQ(CountPapers(driver_), 28);
  CloseHandle(owner);
  EXPECT_EQ(place_.Read(), bytes);
  EXPECT_EQ(CountPapers(driver_), 29);
}

TEST_F(SettingsFile, ThatOthersHaveOpenIsUsedAllTheSame) {
  place_.Write(SettingsTree{.customPapers = {CustomPaperLeaf("Card", kCard)}}.Bytes());
  const HANDLE reader = CreateFileW(place_.path().c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  EXPECT_EQ(CountPapers(driver_), 29);
  CloseHandle(reader);
}

// Whether a read-only file keeps anyone from writing depends on the system and on who asks; the
// driver must see it as any program of the same user does.
TEST_F(SettingsFile, ThatMayOnlyBeReadIsDoneWithoutAndLeftAlone) {
  const std::string bytes = SettingsTree{.customPapers = {CustomPaperLeaf("Card", kCard)}}.Bytes();
  place_.Write(bytes);
  SetFileAttributesW(place_.path().c_str(), FILE_ATTRIBUTE_READONLY);
  const HANDLE update = CreateFileW(place_.path().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  const bool mayWrite = update != INVALID_HANDLE_VALUE;
  CloseHandle(update);
  EXPECT_EQ(CountPapers(driver_), mayWrite ? 29 : 28);
  EXPECT_EQ(place_.Read(), bytes);
}

// ---- When the driver goes -----------------------------------------------------------------------

TEST_F(SettingsFile, GoesWithADriverThatHasUsedIt) {
  ASSERT_EQ(CountPapers(driver_), 28);
  EXPECT_EQ(driver_->DrvDriverEvent(DRIVER_EVENT_DELETE, 3, nullptr, 0), FALSE);
  EXPECT_EQ(place_.Read(), std::nullopt);
  EXPECT_NE(GetFileAttributesW(place_.folder().c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(SettingsFile, StaysWithADriverThatHasNotUsedIt) {
  place_.Write("anything");
  EXPECT_EQ(driver_->DrvDriverEvent(DRIVER_EVENT_DELETE, 3, nullptr, 0), FALSE);
  EXPECT_EQ(place_.Read(), "anything");
}

TEST_F(SettingsFile, StaysAtAnyOtherEvent) {
  ASSERT_EQ(CountPapers(driver_), 28);
  for (const DWORD event : {0UL, 1UL, 3UL}) {
    EXPECT_EQ(driver_->DrvDriverEvent(event, 3, nullptr, 0), FALSE);
  }
  EXPECT_EQ(place_.Read(), SettingsTree{}.Bytes());
}

TEST_F(SettingsFile, IsMadeAgainAfterTheDriverWasRemoved) {
  ASSERT_EQ(CountPapers(driver_), 28);
  driver_->DrvDriverEvent(DRIVER_EVENT_DELETE, 3, nullptr, 0);
  EXPECT_EQ(CountPapers(driver_), 28);
  EXPECT_EQ(place_.Read(), SettingsTree{}.Bytes());
}

}  // namespace
}  // namespace ostrel::print_system
