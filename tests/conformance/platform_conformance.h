// What every platform behind the lists must do alike, as one suite for all of them: the in-memory
// one can't drift from the real one without a case failing on one side.
//
// A side writes a host and instantiates the suite with it:
//
//   struct Host {
//     Platform& platform();
//     std::u16string printerName();      // of a printer that exists
//     std::u16string driverName();       // of its driver
//     std::u16string languageLibrary();  // path of a library whose string 108 is "Letter"
//     std::u16string newFile();          // path of a file that doesn't exist and may be made
//   };
//   INSTANTIATE_TYPED_TEST_SUITE_P(Name, PlatformConformance, Host);
#pragma once

#include "platform/platform.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

inline constexpr std::uint32_t kConformanceUnsetError = 0x2BAD;
inline constexpr std::uint32_t kConformanceString = 108;
inline constexpr std::u16string_view kConformanceText = u"Letter";
inline constexpr std::uint32_t kConformanceMissingString = 60000;

template <typename Host>
class PlatformConformance : public testing::Test {
 protected:
  PlatformConformance() { platform().debug.SetLastError(kConformanceUnsetError); }

  Platform& platform() { return host_.platform(); }
  std::uint32_t lastError() { return platform().debug.GetLastError(); }

  PrinterHandle OpenKnownPrinter() {
    PrinterHandle printer = nullptr;
    EXPECT_TRUE(platform().print.OpenPrinterW(host_.printerName().c_str(), &printer, nullptr));
    return printer;
  }

  ModuleHandle LoadLanguageLibrary() {
    const ModuleHandle module = platform().modules.LoadLibraryW(host_.languageLibrary().c_str());
    EXPECT_NE(module, nullptr);
    return module;
  }

  // Makes a file anew with these bytes.
  void WriteWholeFile(const std::u16string& path, std::string_view bytes) {
    const FileHandle file =
        platform().files.CreateFileW(path.c_str(), Files::Access::kCreateAlwaysForWriting);
    ASSERT_NE(file, nullptr);
    std::uint32_t written = 0;
    EXPECT_TRUE(platform().files.WriteFile(file, bytes.data(),
                                           static_cast<std::uint32_t>(bytes.size()), &written));
    EXPECT_EQ(written, bytes.size());
    EXPECT_TRUE(platform().files.CloseHandle(file));
  }

  // Reads a file in pieces until there is no more.
  std::string ReadWholeFile(const std::u16string& path) {
    const FileHandle file =
        platform().files.CreateFileW(path.c_str(), Files::Access::kOpenExistingForReading);
    EXPECT_NE(file, nullptr);
    std::string bytes;
    std::array<char, 4> piece = {};
    std::uint32_t count = 0;
    while (file != nullptr && platform().files.ReadFile(file, piece.data(), piece.size(), &count) &&
           count != 0) {
      bytes.append(piece.data(), count);
    }
    platform().files.CloseHandle(file);
    return bytes;
  }

  Host host_;
};

TYPED_TEST_SUITE_P(PlatformConformance);

// ---- Printers -----------------------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, AnUnknownPrinterCannotBeOpened) {
  PrinterHandle printer = nullptr;
  EXPECT_FALSE(this->platform().print.OpenPrinterW(u"No such printer", &printer, nullptr));
  EXPECT_EQ(this->lastError(), kErrorInvalidPrinterName);
  EXPECT_EQ(printer, nullptr);
}

TYPED_TEST_P(PlatformConformance, AKnownPrinterIsOpenedAndClosed) {
  const PrinterHandle printer = this->OpenKnownPrinter();
  EXPECT_NE(printer, nullptr);
  EXPECT_TRUE(this->platform().print.ClosePrinter(printer));
}

TYPED_TEST_P(PlatformConformance, APrinterIsOpenedWithTheAccessOfAnAdministrator) {
  const PrinterDefaults access = {nullptr, nullptr, kPrinterAllAccess};
  PrinterHandle printer = nullptr;
  EXPECT_TRUE(
      this->platform().print.OpenPrinterW(this->host_.printerName().c_str(), &printer, &access));
  EXPECT_TRUE(this->platform().print.ClosePrinter(printer));
}

TYPED_TEST_P(PlatformConformance, ANullPrinterCannotBeClosed) {
  EXPECT_FALSE(this->platform().print.ClosePrinter(nullptr));
  EXPECT_EQ(this->lastError(), kErrorInvalidHandle);
}

TYPED_TEST_P(PlatformConformance, APrintersDescriptionTellsItsSizeFirst) {
  const PrinterHandle printer = this->OpenKnownPrinter();
  std::uint32_t needed = 0;
  EXPECT_FALSE(this->platform().print.GetPrinterW(printer, 2, nullptr, 0, &needed));
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  EXPECT_GT(needed, sizeof(PrinterInfo2));
  this->platform().print.ClosePrinter(printer);
}

TYPED_TEST_P(PlatformConformance, APrintersDescriptionDoesNotFitOneByteLess) {
  const PrinterHandle printer = this->OpenKnownPrinter();
  std::uint32_t needed = 0;
  this->platform().print.GetPrinterW(printer, 2, nullptr, 0, &needed);
  std::vector<std::byte> buffer(needed);
  std::uint32_t neededAgain = 0;
  EXPECT_FALSE(
      this->platform().print.GetPrinterW(printer, 2, buffer.data(), needed - 1, &neededAgain));
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  EXPECT_EQ(neededAgain, needed);
  this->platform().print.ClosePrinter(printer);
}

TYPED_TEST_P(PlatformConformance, APrintersDescriptionNamesPrinterAndDriver) {
  const PrinterHandle printer = this->OpenKnownPrinter();
  std::uint32_t needed = 0;
  this->platform().print.GetPrinterW(printer, 2, nullptr, 0, &needed);
  std::vector<std::byte> buffer(needed);
  ASSERT_TRUE(this->platform().print.GetPrinterW(printer, 2, buffer.data(), needed, &needed));
  PrinterInfo2 info;
  std::memcpy(&info, buffer.data(), sizeof(info));
  EXPECT_EQ(std::u16string_view(info.pPrinterName), this->host_.printerName());
  EXPECT_EQ(std::u16string_view(info.pDriverName), this->host_.driverName());
  this->platform().print.ClosePrinter(printer);
}

TYPED_TEST_P(PlatformConformance, AnUnknownLevelOfAPrintersDescriptionIsRefused) {
  const PrinterHandle printer = this->OpenKnownPrinter();
  std::uint32_t needed = 0;
  EXPECT_FALSE(this->platform().print.GetPrinterW(printer, 99, nullptr, 0, &needed));
  EXPECT_EQ(this->lastError(), kErrorInvalidLevel);
  this->platform().print.ClosePrinter(printer);
}

TYPED_TEST_P(PlatformConformance, ANullPrinterTellsNothing) {
  std::uint32_t needed = 0;
  EXPECT_FALSE(this->platform().print.GetPrinterW(nullptr, 2, nullptr, 0, &needed));
  EXPECT_EQ(this->lastError(), kErrorInvalidHandle);
  EXPECT_EQ(needed, 0U);
}

TYPED_TEST_P(PlatformConformance, ADriversDescriptionTellsItsSizeFirstAndThenItsName) {
  const PrinterHandle printer = this->OpenKnownPrinter();
  std::uint32_t needed = 0;
  EXPECT_FALSE(this->platform().print.GetPrinterDriverW(printer, nullptr, 2, nullptr, 0, &needed));
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  std::vector<std::byte> buffer(needed);
  ASSERT_TRUE(this->platform().print.GetPrinterDriverW(printer, nullptr, 2, buffer.data(), needed,
                                                       &needed));
  DriverInfo2 info;
  ASSERT_GE(buffer.size(), sizeof(info));
  std::memcpy(&info, buffer.data(), sizeof(info));
  EXPECT_EQ(std::u16string_view(info.pName), this->host_.driverName());
  this->platform().print.ClosePrinter(printer);
}

// ---- Locale -------------------------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, TheCountryIsADecimalNumber) {
  std::array<char16_t, 16> text = {};
  const int units = this->platform().locale.GetLocaleInfoW(kLocaleUserDefault, kLocaleICountry,
                                                           text.data(), text.size());
  ASSERT_GT(units, 1);
  EXPECT_EQ(std::u16string_view(text.data()).size(), static_cast<std::size_t>(units - 1));
  EXPECT_EQ(std::u16string_view(text.data()).find_first_not_of(u"0123456789"),
            std::u16string_view::npos);
}

TYPED_TEST_P(PlatformConformance, ACountryThatDoesNotFitIsAFailure) {
  std::array<char16_t, 1> text = {};
  EXPECT_EQ(this->platform().locale.GetLocaleInfoW(kLocaleUserDefault, kLocaleICountry, text.data(),
                                                   text.size()),
            0);
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
}

TYPED_TEST_P(PlatformConformance, TheUserHasALanguage) {
  EXPECT_NE(this->platform().locale.GetUserDefaultUILanguage(), 0);
}

// ---- Libraries and strings ----------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, AMissingLibraryIsAFailure) {
  EXPECT_EQ(this->platform().modules.LoadLibraryW(u"C:\\no such folder\\no such library.dll"),
            nullptr);
  EXPECT_EQ(this->lastError(), kErrorModuleNotFound);
}

TYPED_TEST_P(PlatformConformance, ALibraryLoadedTwiceIsOneAndIsFreedTwice) {
  const ModuleHandle first = this->LoadLanguageLibrary();
  const ModuleHandle second = this->LoadLanguageLibrary();
  EXPECT_EQ(first, second);
  EXPECT_TRUE(this->platform().modules.FreeLibrary(second));
  EXPECT_TRUE(this->platform().modules.FreeLibrary(first));
}

TYPED_TEST_P(PlatformConformance, AStringIsLoadedWithItsLength) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  std::array<char16_t, 32> text;
  text.fill(u'#');
  EXPECT_EQ(
      this->platform().modules.LoadStringW(module, kConformanceString, text.data(), text.size()),
      static_cast<int>(kConformanceText.size()));
  EXPECT_EQ(std::u16string_view(text.data()), kConformanceText);
  EXPECT_EQ(text[kConformanceText.size() + 1], u'#');
  this->platform().modules.FreeLibrary(module);
}

TYPED_TEST_P(PlatformConformance, AStringThatDoesNotFitIsCutAndTerminated) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  std::array<char16_t, 8> text;
  text.fill(u'#');
  EXPECT_EQ(this->platform().modules.LoadStringW(module, kConformanceString, text.data(), 4), 3);
  EXPECT_EQ(std::u16string_view(text.data()), u"Let");
  EXPECT_EQ(text[4], u'#');
  this->platform().modules.FreeLibrary(module);
}

// Systems differ in whether they terminate a buffer of one unit; none writes beyond it.
TYPED_TEST_P(PlatformConformance, AStringIntoOneUnitHasNoLength) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  std::array<char16_t, 2> text = {u'#', u'#'};
  EXPECT_EQ(this->platform().modules.LoadStringW(module, kConformanceString, text.data(), 1), 0);
  EXPECT_EQ(text[1], u'#');
  this->platform().modules.FreeLibrary(module);
}

TYPED_TEST_P(PlatformConformance, AMissingStringHasNoLength) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  std::array<char16_t, 8> text = {};
  EXPECT_EQ(this->platform().modules.LoadStringW(module, kConformanceMissingString, text.data(),
                                                 text.size()),
            0);
  EXPECT_EQ(this->lastError(), kErrorResourceNameNotFound);
  this->platform().modules.FreeLibrary(module);
}

TYPED_TEST_P(PlatformConformance, ALibraryTellsItsPath) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  std::array<char16_t, kMaxPathUnits> path = {};
  const std::u16string expected = this->host_.languageLibrary();
  EXPECT_EQ(this->platform().modules.GetModuleFileNameW(module, path.data(), path.size()),
            expected.size());
  EXPECT_EQ(std::u16string_view(path.data()), expected);
  this->platform().modules.FreeLibrary(module);
}

// Systems differ in whether the last unit of a cut path is a terminator, so a caller must go by the
// result alone.
TYPED_TEST_P(PlatformConformance, APathThatDoesNotFitIsCutAndTold) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  std::array<char16_t, 9> path;
  path.fill(u'#');
  EXPECT_EQ(this->platform().modules.GetModuleFileNameW(module, path.data(), 8), 8U);
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  EXPECT_EQ(std::u16string_view(path.data(), 7), this->host_.languageLibrary().substr(0, 7));
  EXPECT_EQ(path[8], u'#');
  this->platform().modules.FreeLibrary(module);
}

// ---- Files --------------------------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, AMissingFileCannotBeRead) {
  EXPECT_EQ(this->platform().files.CreateFileW(this->host_.newFile().c_str(),
                                               Files::Access::kOpenExistingForReading),
            nullptr);
  EXPECT_EQ(this->lastError(), kErrorFileNotFound);
}

TYPED_TEST_P(PlatformConformance, WhatIsWrittenIsReadBack) {
  using namespace std::string_view_literals;
  const std::u16string path = this->host_.newFile();
  this->WriteWholeFile(path, "one\0two\r\nthree"sv);
  EXPECT_EQ(this->ReadWholeFile(path), "one\0two\r\nthree"sv);
  EXPECT_TRUE(this->platform().files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AFileMadeAnewForgetsWhatItHeld) {
  const std::u16string path = this->host_.newFile();
  this->WriteWholeFile(path, "a long text");
  this->WriteWholeFile(path, "short");
  EXPECT_EQ(this->ReadWholeFile(path), "short");
  EXPECT_TRUE(this->platform().files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AnEmptyFileReadsAsNothingAndSucceeds) {
  const std::u16string path = this->host_.newFile();
  this->WriteWholeFile(path, "");
  EXPECT_EQ(this->ReadWholeFile(path), "");
  EXPECT_TRUE(this->platform().files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AFileIsEndedWhereItsWriterStands) {
  const std::u16string path = this->host_.newFile();
  this->WriteWholeFile(path, "a long text");
  Files& files = this->platform().files;
  const FileHandle file = files.CreateFileW(path.c_str(), Files::Access::kOpenExistingForUpdate);
  ASSERT_NE(file, nullptr);
  std::uint32_t written = 0;
  EXPECT_TRUE(files.WriteFile(file, "short", 5, &written));
  EXPECT_TRUE(files.SetEndOfFile(file));
  EXPECT_TRUE(files.CloseHandle(file));
  EXPECT_EQ(this->ReadWholeFile(path), "short");
  files.DeleteFileW(path.c_str());
}

TYPED_TEST_P(PlatformConformance, AFileOpenedForReadingCannotBeEnded) {
  const std::u16string path = this->host_.newFile();
  this->WriteWholeFile(path, "text");
  Files& files = this->platform().files;
  const FileHandle file = files.CreateFileW(path.c_str(), Files::Access::kOpenExistingForReading);
  EXPECT_FALSE(files.SetEndOfFile(file));
  EXPECT_TRUE(files.CloseHandle(file));
  EXPECT_EQ(this->ReadWholeFile(path), "text");
  files.DeleteFileW(path.c_str());
}

TYPED_TEST_P(PlatformConformance, AMissingFileCannotBeDeleted) {
  EXPECT_FALSE(this->platform().files.DeleteFileW(this->host_.newFile().c_str()));
  EXPECT_EQ(this->lastError(), kErrorFileNotFound);
}

// ---- Memory and errors --------------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, ABlockIsZeroAndAlignedForAnyType) {
  constexpr std::size_t kBytes = 7896;
  auto* block = static_cast<std::byte*>(this->platform().memory.HeapAlloc(kBytes));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0U);
  for (std::size_t index = 0; index < kBytes; ++index) {
    ASSERT_EQ(block[index], std::byte{0}) << "byte " << index;
  }
  this->platform().memory.HeapFree(block);
}

TYPED_TEST_P(PlatformConformance, ANullBlockMayBeFreed) {
  this->platform().memory.HeapFree(nullptr);
  EXPECT_EQ(this->lastError(), kConformanceUnsetError);
}

TYPED_TEST_P(PlatformConformance, TheLastErrorIsTheOneThatWasSet) {
  this->platform().debug.SetLastError(1234);
  EXPECT_EQ(this->lastError(), 1234U);
}

TYPED_TEST_P(PlatformConformance, ADebugLineIsTaken) {
  this->platform().debug.OutputDebugStringW(u"a line of a conformance test\n");
}

REGISTER_TYPED_TEST_SUITE_P(
    PlatformConformance, AnUnknownPrinterCannotBeOpened, AKnownPrinterIsOpenedAndClosed,
    APrinterIsOpenedWithTheAccessOfAnAdministrator, ANullPrinterCannotBeClosed,
    APrintersDescriptionTellsItsSizeFirst, APrintersDescriptionDoesNotFitOneByteLess,
    APrintersDescriptionNamesPrinterAndDriver, AnUnknownLevelOfAPrintersDescriptionIsRefused,
    ANullPrinterTellsNothing, ADriversDescriptionTellsItsSizeFirstAndThenItsName,
    TheCountryIsADecimalNumber, ACountryThatDoesNotFitIsAFailure, TheUserHasALanguage,
    AMissingLibraryIsAFailure, ALibraryLoadedTwiceIsOneAndIsFreedTwice,
    AStringIsLoadedWithItsLength, AStringThatDoesNotFitIsCutAndTerminated,
    AStringIntoOneUnitHasNoLength, AMissingStringHasNoLength, ALibraryTellsItsPath,
    APathThatDoesNotFitIsCutAndTold, AMissingFileCannotBeRead, WhatIsWrittenIsReadBack,
    AFileMadeAnewForgetsWhatItHeld, AnEmptyFileReadsAsNothingAndSucceeds,
    AFileIsEndedWhereItsWriterStands, AFileOpenedForReadingCannotBeEnded,
    AMissingFileCannotBeDeleted, ABlockIsZeroAndAlignedForAnyType, ANullBlockMayBeFreed,
    TheLastErrorIsTheOneThatWasSet, ADebugLineIsTaken);

}  // namespace ostrel
