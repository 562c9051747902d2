// What lies in the shipped files: exported names, version blocks, manifest and texts.
#include "print_system_fixture.h"

#include <array>
#include <set>

namespace ostrel::print_system {
namespace {

std::wstring Beside(const wchar_t* file) {
  return ProgramFolder() + L"\\" + file;
}

// A library opened for its resources alone.
class ResourceLibrary {
 public:
  explicit ResourceLibrary(const std::wstring& path)
      : module_(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
  ~ResourceLibrary() { FreeLibrary(module_); }
  ResourceLibrary(const ResourceLibrary&) = delete;
  ResourceLibrary& operator=(const ResourceLibrary&) = delete;
  HMODULE get() const { return module_; }

 private:
  HMODULE module_;
};

// ---- Exported names -----------------------------------------------------------------------------

// A place in a loaded library, by its address relative to the start.
template <typename T>
const T* At(HMODULE library, DWORD relativeAddress) {
  return reinterpret_cast<const T*>(reinterpret_cast<const BYTE*>(library) + relativeAddress);
}

const IMAGE_EXPORT_DIRECTORY* ExportsOf(HMODULE library) {
  const auto* dos = At<IMAGE_DOS_HEADER>(library, 0);
  const auto* headers = At<IMAGE_NT_HEADERS64>(library, static_cast<DWORD>(dos->e_lfanew));
  const DWORD place =
      headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
  return At<IMAGE_EXPORT_DIRECTORY>(library, place);
}

TEST(DriverLibrary, ExportsTheThirteenNamesAndNoOther) {
  const auto driver = LoadInstalledDriver();
  const IMAGE_EXPORT_DIRECTORY* exports = ExportsOf(driver->library);
  const auto* names = At<DWORD>(driver->library, exports->AddressOfNames);
  std::set<std::string> found;
  for (DWORD index = 0; index < exports->NumberOfNames; ++index) {
    found.insert(At<char>(driver->library, names[index]));
  }
  EXPECT_EQ(found, (std::set<std::string>{
                       "DevQueryPrintEx", "DllCanUnloadNow", "DllMain", "DrvConvertDevMode",
                       "DrvDeviceCapabilities", "DrvDevicePropertySheets", "DrvDocumentEvent",
                       "DrvDocumentPropertySheets", "DrvDriverEvent", "DrvPrinterEvent",
                       "DrvQueryJobAttributes", "DrvUpgradePrinter", "MxdcGetPDEVAdjustment"}));
  EXPECT_EQ(exports->NumberOfFunctions, 13U);
}

// ---- Version blocks -----------------------------------------------------------------------------

class VersionBlock : public testing::TestWithParam<const wchar_t*> {};

TEST_P(VersionBlock, NamesItsFileAndItsVersion) {
  const std::wstring path = Beside(GetParam());
  DWORD ignored = 0;
  std::vector<BYTE> block(GetFileVersionInfoSizeW(path.c_str(), &ignored));
  ASSERT_FALSE(block.empty());
  ASSERT_NE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()),
            FALSE);

  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT length = 0;
  ASSERT_NE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &length), FALSE);
  EXPECT_EQ(fixed->dwFileVersionMS, 0x00010000U);
  EXPECT_EQ(fixed->dwFileVersionLS, 0U);

  wchar_t* name = nullptr;
  ASSERT_NE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\OriginalFilename",
                           reinterpret_cast<void**>(&name), &length),
            FALSE);
  EXPECT_EQ(std::wstring_view(name), GetParam());
}

INSTANTIATE_TEST_SUITE_P(EachLibrary, VersionBlock,
                         testing::Values(kDriverLibraryFile, kLanguageLibraryFile,
                                         kGermanLibraryFile, kHebrewLibraryFile,
                                         kPictureLibraryFile),
                         [](const auto& row) {
                           return Utf8(row.param).substr(0, Utf8(row.param).find('.'));
                         });

// ---- Manifest -----------------------------------------------------------------------------------

TEST(DriverLibrary, HoldsItsManifestAsResourceTwo) {
  const ResourceLibrary library(Beside(kDriverLibraryFile));
  constexpr WORD kManifestType = 24;  // RT_MANIFEST
  const HRSRC found =
      FindResourceW(library.get(), MAKEINTRESOURCEW(2), MAKEINTRESOURCEW(kManifestType));
  ASSERT_NE(found, nullptr);
  const HGLOBAL loaded = LoadResource(library.get(), found);
  const std::string_view text(static_cast<const char*>(LockResource(loaded)),
                              SizeofResource(library.get(), found));
  EXPECT_NE(text.find("Microsoft.Windows.Common-Controls"), std::string_view::npos);
  EXPECT_NE(text.find("version=\"6.0.0.0\""), std::string_view::npos);
}

TEST(DriverLibrary, ManifestMakesAnActivationContext) {
  const std::wstring path = Beside(kDriverLibraryFile);
  ACTCTXW request = {};
  request.cbSize = sizeof(request);
  request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
  request.lpSource = path.c_str();
  request.lpResourceName = MAKEINTRESOURCEW(2);
  const HANDLE context = CreateActCtxW(&request);
  ASSERT_NE(context, INVALID_HANDLE_VALUE);
  ReleaseActCtx(context);
}

// ---- Texts --------------------------------------------------------------------------------------

constexpr std::array<UINT, 28> kPaperNameIds = {
    108, 116,  110, 118, 123,  120, 121,  122,  119,  4063, 4064, 4065, 4067, 4068,
    340, 4069, 111, 109, 4070, 411, 4072, 4073, 4074, 6001, 6002, 6003, 6004, 6005};

class LanguageLibrary : public testing::Test {
 protected:
  std::wstring Text(UINT id) const {
    wchar_t text[512] = {};
    const int length = LoadStringW(library_.get(), id, text, 512);
    return std::wstring(text, static_cast<std::size_t>(length));
  }

  ResourceLibrary library_{Beside(kLanguageLibraryFile)};
};

TEST_F(LanguageLibrary, GivesEachPaperANameOfItsOwnThatFitsItsRow) {
  std::set<std::wstring> names;
  for (const UINT id : kPaperNameIds) {
    const std::wstring name = Text(id);
    EXPECT_FALSE(name.empty()) << "id " << id;
    EXPECT_LT(name.size(), 64U) << "id " << id;
    EXPECT_TRUE(names.insert(name).second) << "id " << id << ": " << Utf8(name);
  }
}

TEST_F(LanguageLibrary, GivesEachSourceANameThatFitsItsRow) {
  for (const UINT id : {4017U, 4031U, 190U, 193U, 194U}) {
    EXPECT_FALSE(Text(id).empty()) << "id " << id;
    EXPECT_LT(Text(id).size(), 24U) << "id " << id;
  }
}

TEST_F(LanguageLibrary, LetterHasNoComma) {
  EXPECT_EQ(Text(108).find(L','), std::wstring::npos);
}

TEST_F(LanguageLibrary, HoldsTheTextsThatARecordTakes) {
  EXPECT_EQ(Text(146), L"[No Watermark]");
  EXPECT_EQ(Text(202), L"Default");
  EXPECT_EQ(Text(207), L"This setting can't be used with the other settings of the job.");
  EXPECT_EQ(Text(281), L"Custom %d");
}

TEST_F(LanguageLibrary, HasNoTextForAnUnknownId) {
  EXPECT_EQ(Text(60000), L"");
}

}  // namespace
}  // namespace ostrel::print_system
