// Entry points that answer questions about a record and that this print system never calls itself:
// they are called as another one would, by name out of the installed library.
#include "copied_library.h"
#include "print_system_fixture.h"

#include <algorithm>
#include <array>

namespace ostrel::print_system {
namespace {

constexpr std::wstring_view kRefusal =
    L"This setting can't be used with the other settings of the job.";
constexpr DWORD kUnsetError = 0x2BAD;

// A loaded driver that has made a context, and the printer's own record.
class DriverQuestion : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(AskDefaultRecord(printer_.get(), record_), 1);
    SetLastError(kUnsetError);
  }

  Printer printer_{kTestPrinter};
  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
  Record record_;
};

// ---- DevQueryPrintEx ----------------------------------------------------------------------------

class CanBePrinted : public DriverQuestion {
 protected:
  CanBePrinted() {
    info_.cbSize = sizeof(info_);
    info_.Level = 1;
    info_.hPrinter = printer_.get();
    info_.pDevMode = record_.devmode();
    info_.pszErrorStr = reason_.data();
    info_.cchErrorStr = static_cast<DWORD>(reason_.size());
    reason_.fill(L'#');
  }

  void MakeRefused() { record_.devmode()->dmSize = 192; }

  std::array<wchar_t, 128> reason_;
  DEVQUERYPRINT_INFO info_ = {};
};

TEST_F(CanBePrinted, AGoodRecordCan) {
  EXPECT_NE(driver_->DevQueryPrintEx(&info_), FALSE);
  EXPECT_EQ(reason_[0], L'#');
}

TEST_F(CanBePrinted, NoRecordCan) {
  info_.pDevMode = nullptr;
  EXPECT_NE(driver_->DevQueryPrintEx(&info_), FALSE);
}

TEST_F(CanBePrinted, NoQuestionIsRefused) {
  EXPECT_EQ(driver_->DevQueryPrintEx(nullptr), FALSE);
}

TEST_F(CanBePrinted, LevelZeroIsRefused) {
  info_.Level = 0;
  EXPECT_EQ(driver_->DevQueryPrintEx(&info_), FALSE);
}

TEST_F(CanBePrinted, ARecordOfForeignSizeIsRefusedWithTheReason) {
  MakeRefused();
  EXPECT_EQ(driver_->DevQueryPrintEx(&info_), FALSE);
  EXPECT_EQ(std::wstring_view(reason_.data()), kRefusal);
  EXPECT_EQ(info_.cchNeeded, kRefusal.size() + 1);
}

TEST_F(CanBePrinted, AReasonThatJustFitsIsWhole) {
  MakeRefused();
  info_.cchErrorStr = static_cast<DWORD>(kRefusal.size() + 1);
  EXPECT_EQ(driver_->DevQueryPrintEx(&info_), FALSE);
  EXPECT_EQ(std::wstring_view(reason_.data()), kRefusal);
  EXPECT_EQ(reason_[kRefusal.size() + 1], L'#');
}

TEST_F(CanBePrinted, AReasonOneTooLongIsCutAndTerminated) {
  MakeRefused();
  info_.cchErrorStr = static_cast<DWORD>(kRefusal.size());
  EXPECT_EQ(driver_->DevQueryPrintEx(&info_), FALSE);
  EXPECT_EQ(std::wstring_view(reason_.data()), kRefusal.substr(0, kRefusal.size() - 1));
  EXPECT_EQ(reason_[kRefusal.size()], L'#');
  EXPECT_EQ(info_.cchNeeded, kRefusal.size() + 1);
}

TEST_F(CanBePrinted, WithoutABufferOnlyTheCountIsTold) {
  MakeRefused();
  info_.pszErrorStr = nullptr;
  EXPECT_EQ(driver_->DevQueryPrintEx(&info_), FALSE);
  EXPECT_EQ(info_.cchNeeded, kRefusal.size() + 1);
}

TEST_F(CanBePrinted, ABufferOfNoLengthIsLeftAlone) {
  MakeRefused();
  info_.cchErrorStr = 0;
  EXPECT_EQ(driver_->DevQueryPrintEx(&info_), FALSE);
  EXPECT_EQ(reason_[0], L'#');
  EXPECT_EQ(info_.cchNeeded, kRefusal.size() + 1);
}

TEST_F(CanBePrinted, BeforeAnyContextTheReasonIsTheFallbackText) {
  MakeRefused();
  const CopiedLibrary fresh({kDriverLibraryFile, kLanguageLibraryFile, kPictureLibraryFile});
  EXPECT_EQ(fresh->DevQueryPrintEx(&info_), FALSE);
  EXPECT_EQ(std::wstring_view(reason_.data()), L"id:207 missing!");
}

// ---- DrvQueryJobAttributes ----------------------------------------------------------------------

using JobAttributes = DriverQuestion;

TEST_F(JobAttributes, LevelThreeTellsPagesAndCopies) {
  record_.devmode()->dmCopies = 12;
  record_.privatePart().MultipleUp = 4;
  ATTRIBUTE_INFO_3 info = {};
  std::memset(&info, 0xCC, sizeof(info));
  ASSERT_EQ(driver_->DrvQueryJobAttributes(printer_.get(), record_.devmode(), 3,
                                           reinterpret_cast<LPBYTE>(&info)),
            1U);
  EXPECT_EQ(info.dwJobNumberOfPagesPerSide, 4U);
  EXPECT_EQ(info.dwDrvNumberOfPagesPerSide, 4U);
  EXPECT_EQ(info.dwNupBorderFlags, 1U);
  EXPECT_EQ(info.dwJobPageOrderFlags, 0U);
  EXPECT_EQ(info.dwDrvPageOrderFlags, 0U);
  EXPECT_EQ(info.dwJobNumberOfCopies, 12U);
  EXPECT_EQ(info.dwDrvNumberOfCopies, 12U);
  EXPECT_EQ(info.dwColorOptimization, 0U);
}

TEST_F(JobAttributes, TheResolutionIs600WhateverTheRecordSays) {
  record_.devmode()->dmPrintQuality = 1200;
  record_.devmode()->dmYResolution = 1200;
  ATTRIBUTE_INFO_3 info = {};
  ASSERT_EQ(driver_->DrvQueryJobAttributes(printer_.get(), record_.devmode(), 3,
                                           reinterpret_cast<LPBYTE>(&info)),
            1U);
  EXPECT_EQ(info.dmPrintQuality, 600);
  EXPECT_EQ(info.dmYResolution, 600);
}

TEST_F(JobAttributes, OtherLevelsAreNotAnswered) {
  for (const DWORD level : {0UL, 1UL, 2UL, 4UL}) {
    std::array<BYTE, sizeof(ATTRIBUTE_INFO_3)> info;
    info.fill(0xCC);
    EXPECT_EQ(driver_->DrvQueryJobAttributes(printer_.get(), record_.devmode(), level, info.data()),
              0U);
    EXPECT_TRUE(std::ranges::all_of(info, [](BYTE byte) { return byte == 0xCC; }))
        << "level " << level;
  }
}

// ---- DrvConvertDevMode --------------------------------------------------------------------------

class Conversion : public DriverQuestion {
 protected:
  bool Convert(DWORD mode, PDEVMODEW out, LONG* size) {
    return driver_->DrvConvertDevMode(Writable(kTestPrinter), record_.devmode(), out, size, mode) !=
           FALSE;
  }
};

TEST_F(Conversion, WithoutASizeFails) {
  Record out;
  EXPECT_FALSE(Convert(CDM_CONVERT, out.devmode(), nullptr));
  EXPECT_EQ(GetLastError(), 87U);
}

TEST_F(Conversion, BetweenRecordsOfOneShapeCopiesEverything) {
  record_.devmode()->dmCopies = 7;
  Record out;
  std::memcpy(out.bytes().data(), record_.bytes().data(), 72);
  LONG size = 7896;
  EXPECT_TRUE(Convert(CDM_CONVERT, out.devmode(), &size));
  EXPECT_EQ(size, 7896);
  EXPECT_EQ(out.bytes(), record_.bytes());
}

TEST_F(Conversion, IntoARecordWithoutItsPrivatePartZeroesThat) {
  Record out;
  std::memcpy(out.bytes().data(), record_.bytes().data(), 72);
  out.devmode()->dmDriverExtra = 100;
  LONG size = 7896;
  EXPECT_TRUE(Convert(CDM_CONVERT, out.devmode(), &size));
  EXPECT_EQ(size, 320);
  EXPECT_EQ(out.devmode()->dmDriverExtra, 100);
  const auto extra = out.bytes().begin() + 220;
  EXPECT_TRUE(std::all_of(extra, extra + 100, [](BYTE byte) { return byte == 0; }));
  EXPECT_EQ(extra[100], 0xCC);
}

TEST_F(Conversion, WithoutAnOutputFails) {
  LONG size = 7896;
  EXPECT_FALSE(Convert(CDM_CONVERT, nullptr, &size));
  EXPECT_EQ(GetLastError(), 87U);
}

TEST_F(Conversion, IntoASmallerSizeThanTheRecordTellsFails) {
  Record out;
  std::memcpy(out.bytes().data(), record_.bytes().data(), 72);
  LONG size = 7895;
  EXPECT_FALSE(Convert(CDM_CONVERT, out.devmode(), &size));
  EXPECT_EQ(GetLastError(), 87U);
  EXPECT_EQ(size, 7895);
}

TEST_F(Conversion, ToTheOldFormatAsksForItsSize) {
  LONG size = 0;
  EXPECT_FALSE(Convert(CDM_CONVERT351, nullptr, &size));
  EXPECT_EQ(GetLastError(), 122U);
  EXPECT_EQ(size, 304);
}

TEST_F(Conversion, ToTheOldFormatRefusesOneByteTooFew) {
  Record out(304);
  LONG size = 303;
  EXPECT_FALSE(Convert(CDM_CONVERT351, out.devmode(), &size));
  EXPECT_EQ(GetLastError(), 122U);
  EXPECT_EQ(size, 304);
  EXPECT_TRUE(std::ranges::all_of(out.bytes(), [](BYTE byte) { return byte == 0xCC; }));
}

TEST_F(Conversion, ToTheOldFormatGivesItsHeaderAndThePublicFields) {
  record_.devmode()->dmCopies = 7;
  Record out(304);
  LONG size = 304;
  EXPECT_TRUE(Convert(CDM_CONVERT351, out.devmode(), &size));
  EXPECT_EQ(size, 304);
  EXPECT_EQ(out.devmode()->dmSpecVersion, 800);
  EXPECT_EQ(out.devmode()->dmDriverVersion, 848);
  EXPECT_EQ(out.devmode()->dmSize, 192);
  EXPECT_EQ(out.devmode()->dmDriverExtra, 112);
  EXPECT_EQ(out.devmode()->dmCopies, 7);
  EXPECT_TRUE(std::all_of(out.bytes().begin() + 192, out.bytes().end(),
                          [](BYTE byte) { return byte == 0; }));
}

TEST_F(Conversion, ToTheDriversDefaultAsksForItsSize) {
  LONG size = 0;
  EXPECT_FALSE(Convert(CDM_DRIVER_DEFAULT, nullptr, &size));
  EXPECT_EQ(GetLastError(), 122U);
  EXPECT_EQ(size, 7896);
}

TEST_F(Conversion, ToTheDriversDefaultGivesTheWholeRecord) {
  Record out;
  LONG size = 8000;
  EXPECT_TRUE(Convert(CDM_DRIVER_DEFAULT, out.devmode(), &size));
  EXPECT_EQ(size, 7896);
  EXPECT_EQ(TextOf(out.devmode()->dmDeviceName), kOstrelDriverName);
  EXPECT_EQ(out.devmode()->dmDriverExtra, 7676);
  EXPECT_EQ(out.devmode()->dmPaperSize, PaperOfUsersCountry().id);
  EXPECT_EQ(TextOf(out.privatePart().CustomPaperSize[0].Name), L"Custom 1");
  EXPECT_EQ(TextOf(out.privatePart().CustomPaperSize[19].Name), L"Custom 20");
}

TEST_F(Conversion, ToTheDriversDefaultOfAnUnknownPrinterFails) {
  Record out;
  LONG size = 7896;
  EXPECT_EQ(driver_->DrvConvertDevMode(Writable(L"No such printer"), nullptr, out.devmode(), &size,
                                       CDM_DRIVER_DEFAULT),
            FALSE);
}

TEST_F(Conversion, InAnUnknownModeFailsAndSetsNoError) {
  for (const DWORD mode : {0UL, 3UL, 5UL, 8UL}) {
    Record out;
    LONG size = 7896;
    EXPECT_FALSE(Convert(mode, out.devmode(), &size)) << "mode " << mode;
    EXPECT_EQ(GetLastError(), kUnsetError) << "mode " << mode;
    EXPECT_EQ(size, 7896) << "mode " << mode;
  }
}

// ---- DrvUpgradePrinter --------------------------------------------------------------------------

using PrinterUpgrade = DriverQuestion;

TEST_F(PrinterUpgrade, OtherLevelsFail) {
  std::wstring name = kTestPrinter;
  DRIVER_UPGRADE_INFO_1W info = {name.data(), nullptr};
  for (const DWORD level : {0UL, 2UL, 3UL}) {
    SetLastError(kUnsetError);
    EXPECT_EQ(driver_->DrvUpgradePrinter(level, reinterpret_cast<LPBYTE>(&info)), FALSE);
    EXPECT_EQ(GetLastError(), 87U) << "level " << level;
  }
}

TEST_F(PrinterUpgrade, WithoutDataFails) {
  EXPECT_EQ(driver_->DrvUpgradePrinter(1, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), 87U);
}

TEST_F(PrinterUpgrade, WithoutAPrinterNameFails) {
  DRIVER_UPGRADE_INFO_1W info = {};
  EXPECT_EQ(driver_->DrvUpgradePrinter(1, reinterpret_cast<LPBYTE>(&info)), FALSE);
  EXPECT_EQ(GetLastError(), 87U);
}

// What it writes is a matter of printer_data_test.
TEST_F(PrinterUpgrade, OfAKnownPrinterSucceeds) {
  std::wstring name = kTestPrinter;
  DRIVER_UPGRADE_INFO_1W info = {name.data(), nullptr};
  EXPECT_NE(driver_->DrvUpgradePrinter(1, reinterpret_cast<LPBYTE>(&info)), FALSE);
}

TEST_F(PrinterUpgrade, OfAnUnknownPrinterFails) {
  std::wstring name = L"No such printer";
  DRIVER_UPGRADE_INFO_1W info = {name.data(), nullptr};
  EXPECT_EQ(driver_->DrvUpgradePrinter(1, reinterpret_cast<LPBYTE>(&info)), FALSE);
}

}  // namespace
}  // namespace ostrel::print_system
