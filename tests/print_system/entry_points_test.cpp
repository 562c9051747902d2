// Property-sheet entry points, called as the spooler would: the form without a dialog, null
// arguments; and what loads and unloads the library.
#include "copied_library.h"
#include "print_system_fixture.h"

#include <algorithm>

namespace ostrel::print_system {
namespace {

// ---- DrvDocumentPropertySheets without a dialog -------------------------------------------------

class SheetWithoutDialog : public testing::Test {
 protected:
  SheetWithoutDialog() {
    header_.cbSize = sizeof(header_);
    header_.hPrinter = printer_.get();
    header_.pdmOut = out_.devmode();
    header_.fMode = DM_OUT_BUFFER;
  }

  LONG Ask() {
    return driver_->DrvDocumentPropertySheets(nullptr, reinterpret_cast<LPARAM>(&header_));
  }
  bool OutputUntouched() const {
    return std::ranges::all_of(out_.bytes(), [](BYTE byte) { return byte == 0xCC; });
  }

  Printer printer_{kTestPrinter};
  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
  Record out_;
  DOCUMENTPROPERTYHEADER header_ = {};
};

TEST_F(SheetWithoutDialog, WithoutAHeaderFails) {
  EXPECT_EQ(driver_->DrvDocumentPropertySheets(nullptr, 0), -1);
}

TEST_F(SheetWithoutDialog, WithoutAModeTellsTheSize) {
  header_.fMode = 0;
  EXPECT_EQ(Ask(), 7896);
  EXPECT_EQ(header_.cbOut, 7896U);
  EXPECT_TRUE(OutputUntouched());
}

TEST_F(SheetWithoutDialog, WithoutAnOutputTellsTheSize) {
  header_.pdmOut = nullptr;
  EXPECT_EQ(Ask(), 7896);
  EXPECT_EQ(header_.cbOut, 7896U);
}

TEST_F(SheetWithoutDialog, GivesThePrintersRecord) {
  EXPECT_EQ(Ask(), 1);
  EXPECT_EQ(header_.cbOut, 7896U);
  EXPECT_EQ(TextOf(out_.devmode()->dmDeviceName), kOstrelDriverName);
}

TEST_F(SheetWithoutDialog, GivesNoRecordUnlessTheModeAsksForOne) {
  header_.fMode = DM_IN_BUFFER;
  EXPECT_EQ(Ask(), 1);
  EXPECT_TRUE(OutputUntouched());
}

TEST_F(SheetWithoutDialog, OfANullPrinterFailsAndWritesNothing) {
  header_.hPrinter = nullptr;
  EXPECT_EQ(Ask(), -1);
  EXPECT_TRUE(OutputUntouched());
}

TEST_F(SheetWithoutDialog, OfANullPrinterStillTellsTheSize) {
  header_.hPrinter = nullptr;
  header_.fMode = 0;
  EXPECT_EQ(Ask(), 7896);
}

// ---- Loading and unloading ----------------------------------------------------------------------

TEST(DllCanUnloadNow, IsAlwaysAnsweredWithYes) {
  EXPECT_EQ(LoadInstalledDriver()->DllCanUnloadNow(), S_OK);
}

TEST(DllMain, AnswersOneForThreadsAndLeavesTheLibraryUsable) {
  const auto driver = LoadInstalledDriver();
  auto* entry = EntryPoint<BOOL WINAPI(HINSTANCE, DWORD, void*)>(driver->library, "DllMain");
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry(driver->library, DLL_THREAD_ATTACH, nullptr), 1);
  EXPECT_EQ(entry(driver->library, DLL_THREAD_DETACH, nullptr), 1);
  EXPECT_EQ(driver->DrvDeviceCapabilities(nullptr, nullptr, DC_COPIES, nullptr, nullptr), 999U);
}

TEST(DllMain, FreesTheLanguageLibraryOfTheLastContextAtDetach) {
  CopiedLibrary driver({kDriverLibraryFile, kLanguageLibraryFile, kPictureLibraryFile});
  const Printer printer(kTestPrinter);
  Record out;
  DOCUMENTPROPERTYHEADER header = {};
  header.cbSize = sizeof(header);
  header.hPrinter = printer.get();
  header.pdmOut = out.devmode();
  header.fMode = DM_OUT_BUFFER;
  ASSERT_EQ(driver->DrvDocumentPropertySheets(nullptr, reinterpret_cast<LPARAM>(&header)), 1);
  const std::wstring language = driver.PathOf(kLanguageLibraryFile);
  ASSERT_NE(GetModuleHandleW(language.c_str()), nullptr);
  driver.Unload();
  EXPECT_EQ(GetModuleHandleW(language.c_str()), nullptr);
}

}  // namespace
}  // namespace ostrel::print_system
