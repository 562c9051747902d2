// The print system's own dialogs for applications: what of ours they list, and that settings which
// a user makes in our preferences arrive in the application's record.
#include "import_patch.h"
#include "paper_lists.h"
#include "print_system_fixture.h"
#include "settings_folder.h"
#include "sheet_driver.h"
#include "stored_values.h"

#include <algorithm>
#include <commdlg.h>
#include <dlgs.h>
#include <gtest/gtest.h>

namespace ostrel::print_system {
namespace {

constexpr UINT kPrintOptionsTitle = 106;
constexpr UINT kPaperTitle = 216;
constexpr std::size_t kPaperNameUnits = 64;
constexpr std::size_t kBinNameUnits = 24;
constexpr int kPropertiesButton = psh2;  // of the printing dialogs
constexpr int kPrinterButton = psh3;     // of the page dialog

std::wstring Text(UINT id) {
  return ShippedText(LibraryOfUsersLanguage(), id);
}

// The common dialogs list names in an order of their own.
std::vector<std::wstring> Sorted(std::vector<std::wstring> names) {
  std::ranges::sort(names);
  return names;
}

// The print system's common dialogs ask for a printer's record without a handle of the printer,
// look at no answer and go on with what was in their memory. The platform wants a handle there, and
// so does the driver, so they are given one.
LONG WINAPI AskWithAHandle(HWND owner, HANDLE printer, LPWSTR name, PDEVMODEW out, PDEVMODEW in,
                           DWORD mode) {
  HANDLE opened = nullptr;
  if (printer == nullptr && OpenPrinterW(name, &opened, nullptr) == FALSE) {
    return -1;
  }
  const LONG answer =
      DocumentPropertiesW(owner, printer == nullptr ? opened : printer, name, out, in, mode);
  if (opened != nullptr) {
    ClosePrinter(opened);
  }
  return answer;
}

// What an application hands to a common dialog and gets back; its memory goes with the object.
class PrintCall {
 public:
  explicit PrintCall(DWORD flags) {
    dialog_.lStructSize = sizeof(dialog_);
    dialog_.Flags = flags;
    dialog_.nCopies = 1;
  }
  ~PrintCall() {
    GlobalFree(dialog_.hDevMode);
    GlobalFree(dialog_.hDevNames);
  }
  PrintCall(const PrintCall&) = delete;
  PrintCall& operator=(const PrintCall&) = delete;

  LONG Show() { return PrintDlgW(&dialog_); }

  // The record that came back, whole.
  Record Returned() const {
    Record record;
    const auto* bytes = static_cast<const BYTE*>(GlobalLock(dialog_.hDevMode));
    EXPECT_GE(GlobalSize(dialog_.hDevMode), record.bytes().size());
    std::memcpy(record.bytes().data(), bytes, record.bytes().size());
    GlobalUnlock(dialog_.hDevMode);
    return record;
  }

 private:
  PRINTDLGW dialog_ = {};
};

class PageCall {
 public:
  PageCall() { dialog_.lStructSize = sizeof(dialog_); }
  ~PageCall() {
    GlobalFree(dialog_.hDevMode);
    GlobalFree(dialog_.hDevNames);
  }
  PageCall(const PageCall&) = delete;
  PageCall& operator=(const PageCall&) = delete;

  LONG Show() { return PageSetupDlgW(&dialog_); }

  std::int16_t ReturnedPaper() const {
    const auto* record = static_cast<const DEVMODEW*>(GlobalLock(dialog_.hDevMode));
    const std::int16_t paper = record == nullptr ? -1 : record->dmPaperSize;
    GlobalUnlock(dialog_.hDevMode);
    return paper;
  }

 private:
  PAGESETUPDLGW dialog_ = {};
};

class CommonDialogs : public testing::Test {
 protected:
  CommonDialogs() {
    settings_.Clear();
    printersValues_.Set(L"PrinterName", TextValue(L"Hazel 2 Series"));
    SetDefaultPrinterW(kTestPrinter);
  }

  // Waits for our sheet, changes settings on two of its pages and accepts.
  static void ChangeInPreferences(SheetDriver& driver) {
    driver.AwaitSheet();
    driver.ShowPage(Text(kPrintOptionsTitle));
    driver.Click(1422);
    driver.ShowPage(Text(kPaperTitle));
    driver.Choose(1404, 8);
    driver.Click(1125);
    driver.Press(SheetButton::kOk);
  }

  static void ExpectChanges(Record record) {
    EXPECT_EQ(record.devmode()->dmPaperSize, 11);
    EXPECT_EQ(record.privatePart().FinessMode, 1);
    EXPECT_EQ(record.privatePart().FeedOrient, 2);
  }

  ImportPatch patch_{L"comdlg32.dll", "winspool.drv", "DocumentPropertiesW",
                     reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(AskWithAHandle))};
  UserValues printersValues_{kTestPrinter};
  SettingsPlace settings_;
};

TEST_F(CommonDialogs, ListOurPapersAndBins) {
  settings_.Write(
      SettingsTree{.customPapers = {CustomPaperLeaf("Card", {1181, 2362, L"Card", 288})}}.Bytes());
  PrintCall call(PD_PRINTSETUP);
  SheetDriver driver([&call] { return call.Show(); });
  EXPECT_EQ(Sorted(driver.Rows(cmb2)), Sorted(NamesListed(DC_PAPERNAMES, kPaperNameUnits)));
  EXPECT_EQ(driver.Rows(cmb2).size(), kTablePapers + 1);
  EXPECT_EQ(Sorted(driver.Rows(cmb3)), Sorted(NamesListed(DC_BINNAMES, kBinNameUnits)));
  driver.LeaveDialog(IDCANCEL);
  EXPECT_EQ(driver.Result(), FALSE);
}

TEST_F(CommonDialogs, OfThePageListOurPapersAndBins) {
  PageCall call;
  SheetDriver driver([&call] { return call.Show(); });
  EXPECT_EQ(Sorted(driver.Rows(cmb2)), Sorted(NamesListed(DC_PAPERNAMES, kPaperNameUnits)));
  EXPECT_EQ(Sorted(driver.Rows(cmb3)), Sorted(NamesListed(DC_BINNAMES, kBinNameUnits)));
  driver.LeaveDialog(IDCANCEL);
  EXPECT_EQ(driver.Result(), FALSE);
}

TEST_F(CommonDialogs, OfTheSetupBringOurSettingsToTheApplication) {
  PrintCall call(PD_PRINTSETUP);
  SheetDriver driver([&call] { return call.Show(); });
  driver.Click(kPropertiesButton);
  ChangeInPreferences(driver);
  driver.LeaveDialog(IDOK);
  ASSERT_EQ(driver.Result(), TRUE);
  ExpectChanges(call.Returned());
}

TEST_F(CommonDialogs, OfPrintingBringOurSettingsToTheApplication) {
  PrintCall call(0);
  SheetDriver driver([&call] { return call.Show(); });
  driver.Click(kPropertiesButton);
  ChangeInPreferences(driver);
  driver.LeaveDialog(IDOK);
  ASSERT_EQ(driver.Result(), TRUE);
  ExpectChanges(call.Returned());
}

TEST_F(CommonDialogs, KeepTheApplicationsSettingsWhenOursAreCancelled) {
  PrintCall call(PD_PRINTSETUP);
  SheetDriver driver([&call] { return call.Show(); });
  driver.Click(kPropertiesButton);
  driver.AwaitSheet();
  driver.ShowPage(Text(kPrintOptionsTitle));
  driver.Click(1422);
  driver.Press(SheetButton::kCancel);
  driver.LeaveDialog(IDOK);
  ASSERT_EQ(driver.Result(), TRUE);
  EXPECT_EQ(call.Returned().privatePart().FinessMode, 0);
}

// A paper that the application's user picks in the print system's own list.
TEST_F(CommonDialogs, OfThePageReturnAPaperOfOurs) {
  PageCall call;
  SheetDriver driver([&call] { return call.Show(); });
  const std::vector<std::wstring> papers = driver.Rows(cmb2);
  const auto a5 = std::ranges::find(papers, Text(119));
  ASSERT_NE(a5, papers.end());
  driver.Choose(cmb2, static_cast<int>(a5 - papers.begin()));
  driver.LeaveDialog(IDOK);
  ASSERT_EQ(driver.Result(), TRUE);
  EXPECT_EQ(call.ReturnedPaper(), 11);
}

TEST_F(CommonDialogs, OfThePageOpenOurPreferences) {
  PageCall call;
  SheetDriver driver([&call] { return call.Show(); });
  driver.Click(kPrinterButton);  // to the dialog that chooses the printer
  driver.Click(kPropertiesButton);
  ChangeInPreferences(driver);
  driver.LeaveDialog(IDOK);
  driver.LeaveDialog(IDOK);
  ASSERT_EQ(driver.Result(), TRUE);
  EXPECT_EQ(call.ReturnedPaper(), 11);
}

}  // namespace
}  // namespace ostrel::print_system
