// The printer's own sheet. This print system has no call that opens it, so the test opens the
// common property sheet itself, as a spooler does.
#include "common_sheet.h"
#include "copied_library.h"
#include "neighbour_values.h"
#include "print_system_fixture.h"
#include "sheet_driver.h"
#include "stored_values.h"

#include <gtest/gtest.h>

namespace ostrel::print_system {
namespace {

class DeviceSheet : public testing::Test {
 protected:
  DeviceSheet() {
    header_.cbSize = sizeof(header_);
    header_.hPrinter = printer_.get();
    header_.pszPrinterName = name_.data();
  }

  // Shows the sheet of a driver library and presses a button. Without a sheet it returns at once.
  LONG Show(const DriverExports& driver, SheetButton button = SheetButton::kCancel) {
    call_ = {.function = driver.DrvDevicePropertySheets,
             .header = reinterpret_cast<LPARAM>(&header_)};
    SheetDriver sheet([this] { return call_.Run(); });
    shown_ = sheet.sheet() != nullptr;
    if (shown_) {
      title_ = sheet.Title();
      pages_ = sheet.PageTitles();
      for (const std::wstring& page : pages_) {
        sheet.ShowPage(page);
      }
      sheet.Press(button);
    }
    return sheet.Result();
  }

  // The driver with a language library that holds pages.
  static std::unique_ptr<CopiedLibrary> WithPages(const std::wstring& library) {
    auto driver = std::make_unique<CopiedLibrary>(
        std::vector<std::wstring>{kDriverLibraryFile, kPictureLibraryFile});
    driver->Add(ProgramFolder() + L"\\test_libraries\\" + library, kLanguageLibraryFile);
    return driver;
  }

  // What the driver hears when it opens nothing: the print system's own common sheet goes on to its
  // end all the same.
  static std::vector<SheetReasonCall> NothingOpened(LONG answer) {
    if (answer < 0) {
      return HasStandInSheet() ? std::vector<SheetReasonCall>{{0, answer}}
                               : std::vector<SheetReasonCall>{{0, answer}, {2, -1}};
    }
    return HasStandInSheet() ? std::vector<SheetReasonCall>{{0, answer}, {2, -1}}
                             : std::vector<SheetReasonCall>{{0, answer}, {1, -1}, {2, -1}};
  }

  std::wstring name_ = kTestPrinter;
  Printer printer_{name_};
  DEVICEPROPERTYHEADER header_ = {};
  NeighbourValues tester_{L"Companion"};
  CommonSheetCall call_ = {};
  bool shown_ = false;
  std::wstring title_;
  std::vector<std::wstring> pages_;
};

TEST_F(DeviceSheet, IsNotShownWhileNoLanguageHasItsPages) {
  EXPECT_LT(Show(*LoadInstalledDriver()), 0);
  EXPECT_FALSE(shown_);
  EXPECT_EQ(call_.seen, NothingOpened(-1));
  EXPECT_EQ(tester_.Number(L"DeviceCalls"), 1U);
  EXPECT_EQ(tester_.Number(L"DocumentCalls"), 0U);
}

TEST_F(DeviceSheet, ShowsBothPagesUnderThePrintersName) {
  const auto driver = WithPages(L"test_pages.dll");
  EXPECT_GE(Show(*driver->operator->()), 0);
  EXPECT_EQ(pages_, (std::vector<std::wstring>{L"Device", L"About"}));
  EXPECT_NE(title_.find(kTestPrinter), std::wstring::npos) << Utf8(title_);
  EXPECT_EQ(call_.seen, (std::vector<SheetReasonCall>{{0, 1}, {1, 1}, {2, 1}}));
  EXPECT_EQ(GetModuleHandleW(kCompanionFile), nullptr);
}

// Without an output record there is no result to set.
TEST_F(DeviceSheet, SetsNoResultOnOk) {
  const auto driver = WithPages(L"test_pages.dll");
  EXPECT_GE(Show(*driver->operator->(), SheetButton::kOk), 0);
  EXPECT_EQ(call_.seen, (std::vector<SheetReasonCall>{{0, 1}, {1, 1}, {2, 1}}));
}

// The second page's description then is all zero; the common sheet refuses it.
TEST_F(DeviceSheet, ShowsTheOnePageThatIsThere) {
  const auto driver = WithPages(L"test_device_page.dll");
  EXPECT_GE(Show(*driver->operator->()), 0);
  EXPECT_EQ(pages_, std::vector<std::wstring>{L"Device"});
}

TEST_F(DeviceSheet, IsLeftToTheCompanionThatDeclines) {
  tester_.SetNumber(L"DeviceAnswer", 0);
  const auto driver = WithPages(L"test_pages.dll");
  Show(*driver->operator->());
  EXPECT_FALSE(shown_);
  EXPECT_EQ(call_.seen, NothingOpened(1));
}

TEST_F(DeviceSheet, DoesNotRememberWhatTheCompanionAnswered) {
  UserValues user(kOstrelDriverName);
  user.Delete(L"Cancel");
  tester_.SetNumber(L"DeviceAnswer", 0);
  Show(*LoadInstalledDriver());
  EXPECT_EQ(user.Get(L"Cancel"), std::nullopt);
}

TEST_F(DeviceSheet, IsNotShownWithoutTheCompanion) {
  const auto driver = WithPages(L"test_pages.dll");
  RemoveCompanion();
  const LONG answer = Show(*driver->operator->());
  InstallCompanion();
  EXPECT_LT(answer, 0);
  EXPECT_FALSE(shown_);
  EXPECT_EQ(call_.seen, NothingOpened(-1));
}

TEST_F(DeviceSheet, AnswersMinusOneToReasonsWithoutASheet) {
  const auto driver = LoadInstalledDriver();
  EXPECT_EQ(driver->DrvDevicePropertySheets(nullptr, 0), -1);
  for (WORD reason = 0; reason <= 5; ++reason) {
    PROPSHEETUI_INFO info = {};
    info.cbSize = sizeof(info);
    info.Reason = reason;
    EXPECT_EQ(driver->DrvDevicePropertySheets(&info, 0), -1) << "reason " << reason;
  }
}

// ---- A program's way to it ----------------------------------------------------------------------

TEST_F(DeviceSheet, IsNothingThatAProgramCanAskThisPrintSystemFor) {
  EXPECT_EQ(PrinterProperties(nullptr, printer_.get()), FALSE);
  EXPECT_EQ(tester_.Number(L"DeviceCalls"), 0U);
}

}  // namespace
}  // namespace ostrel::print_system
