// The driver without one of the libraries that belong to it.
#include "copied_library.h"
#include "print_system_fixture.h"

#include <algorithm>
#include <array>

namespace ostrel::print_system {
namespace {

LONG AskRecord(const CopiedLibrary& driver, HANDLE printer, Record& out) {
  DOCUMENTPROPERTYHEADER header = {};
  header.cbSize = sizeof(header);
  header.hPrinter = printer;
  header.pdmOut = out.devmode();
  header.fMode = DM_OUT_BUFFER;
  return driver->DrvDocumentPropertySheets(nullptr, reinterpret_cast<LPARAM>(&header));
}

// ---- Without the pictures -----------------------------------------------------------------------

class WithoutPictures : public testing::Test {
 protected:
  CopiedLibrary driver_{{kDriverLibraryFile, kLanguageLibraryFile}};
  Printer printer_{kTestPrinter};
};

TEST_F(WithoutPictures, NoContextCanBeMade) {
  Record out;
  EXPECT_EQ(AskRecord(driver_, printer_.get(), out), -1);
  EXPECT_TRUE(std::ranges::all_of(out.bytes(), [](BYTE byte) { return byte == 0xCC; }));
}

TEST_F(WithoutPictures, NamesAreStillTold) {
  std::vector<wchar_t> names(28 * 64);
  wchar_t printerName[] = L"Hazel 2 Series";
  EXPECT_EQ(
      driver_->DrvDeviceCapabilities(nullptr, printerName, DC_PAPERNAMES, names.data(), nullptr),
      28U);
  EXPECT_EQ(std::wstring_view(names.data()), L"Letter");
}

// ---- Without the texts --------------------------------------------------------------------------

class WithoutTexts : public testing::Test {
 protected:
  DWORD Ask(WORD code, void* output) {
    wchar_t printerName[] = L"Hazel 2 Series";
    return driver_->DrvDeviceCapabilities(nullptr, printerName, code, output, nullptr);
  }

  CopiedLibrary driver_{{kDriverLibraryFile, kPictureLibraryFile}};
  Printer printer_{kTestPrinter};
};

TEST_F(WithoutTexts, PaperNamesAreTheirIds) {
  std::vector<wchar_t> names(28 * 64, L'#');
  ASSERT_EQ(Ask(DC_PAPERNAMES, names.data()), 28U);
  EXPECT_EQ(std::wstring_view(&names[0]), L"id:108 missing!");
  EXPECT_EQ(std::wstring_view(&names[64]), L"id:116 missing!");
  EXPECT_EQ(std::wstring_view(&names[27 * 64]), L"id:6005 missing!");
}

TEST_F(WithoutTexts, MediaReadyAreTheirIdsToo) {
  std::vector<wchar_t> names(28 * 64, L'#');
  ASSERT_EQ(Ask(DC_MEDIAREADY, names.data()), 28U);
  EXPECT_EQ(std::wstring_view(&names[64 * 2]), L"id:110 missing!");
}

TEST_F(WithoutTexts, BinNamesAreCountedAndNotWritten) {
  std::array<wchar_t, 3 * 24> names;
  names.fill(L'#');
  EXPECT_EQ(Ask(DC_BINNAMES, names.data()), 3U);
  EXPECT_TRUE(std::ranges::all_of(names, [](wchar_t unit) { return unit == L'#'; }));
}

TEST_F(WithoutTexts, ARecordIsMadeWithTheFallbackNameOfItsFavourite) {
  Record out;
  ASSERT_EQ(AskRecord(driver_, printer_.get(), out), 1);
  EXPECT_EQ(TextOf(out.privatePart().FavoriteName), L"id:202 missing!");
  EXPECT_EQ(TextOf(out.privatePart().WatermarkData.PageWMName), L"[No Watermark]");
}

}  // namespace
}  // namespace ostrel::print_system
