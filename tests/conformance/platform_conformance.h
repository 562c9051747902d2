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
//     std::u16string newFolder();        // path of a folder that doesn't exist and may be made
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

// ---- Printer data -------------------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, PrinterDataAreReadAsTheyWereSet) {
  const PrinterDefaults access = {nullptr, nullptr, kPrinterAllAccess};
  PrinterHandle printer = nullptr;
  PrintSystem& print = this->platform().print;
  ASSERT_TRUE(print.OpenPrinterW(this->host_.printerName().c_str(), &printer, &access));
  const std::array<unsigned char, 5> bytes = {1, 0, 0xFF, 0, 5};
  EXPECT_EQ(print.SetPrinterDataW(printer, u"ConformanceData", kRegBinary, bytes.data(), 5),
            kErrorSuccess);
  std::array<unsigned char, 6> read;
  read.fill(0xC5);
  std::uint32_t type = 0;
  std::uint32_t needed = 0;
  EXPECT_EQ(print.GetPrinterDataW(printer, u"ConformanceData", &type, read.data(), 5, &needed),
            kErrorSuccess);
  EXPECT_EQ(type, kRegBinary);
  EXPECT_EQ(needed, 5U);
  EXPECT_EQ(read, (std::array<unsigned char, 6>{1, 0, 0xFF, 0, 5, 0xC5}));
  EXPECT_EQ(print.GetPrinterDataW(printer, u"ConformanceData", &type, read.data(), 4, &needed),
            kErrorMoreData);
  EXPECT_EQ(needed, 5U);
  const std::uint32_t word = 0x01020304;
  std::uint32_t wordRead = 0;
  EXPECT_EQ(print.SetPrinterDataW(printer, u"ConformanceData", kRegDword, &word, sizeof(word)),
            kErrorSuccess);
  EXPECT_EQ(print.GetPrinterDataW(printer, u"ConformanceData", &type, &wordRead, sizeof(wordRead),
                                  &needed),
            kErrorSuccess);
  EXPECT_EQ(type, kRegDword);
  EXPECT_EQ(needed, 4U);
  EXPECT_EQ(wordRead, word);
  print.ClosePrinter(printer);
}

TYPED_TEST_P(PlatformConformance, MissingPrinterDataAreError2) {
  const PrinterHandle printer = this->OpenKnownPrinter();
  std::uint32_t type = 0;
  std::uint32_t word = 0xCDCDCDCD;
  std::uint32_t needed = 0;
  EXPECT_EQ(this->platform().print.GetPrinterDataW(printer, u"NoSuchConformanceData", &type, &word,
                                                   sizeof(word), &needed),
            kErrorFileNotFound);
  EXPECT_EQ(word, 0xCDCDCDCD);
  this->platform().print.ClosePrinter(printer);
}

TYPED_TEST_P(PlatformConformance, TheDriverDirectoryTellsItsSizeFirst) {
  PrintSystem& print = this->platform().print;
  std::uint32_t needed = 0;
  EXPECT_FALSE(print.GetPrinterDriverDirectoryW(nullptr, nullptr, 1, nullptr, 0, &needed));
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  ASSERT_GT(needed, sizeof(char16_t));
  std::vector<char16_t> path((needed + 1) / sizeof(char16_t), u'#');
  EXPECT_TRUE(print.GetPrinterDriverDirectoryW(nullptr, nullptr, 1, path.data(), needed, &needed));
  const std::u16string_view text(path.data());
  EXPECT_FALSE(text.empty());
  EXPECT_FALSE(text.ends_with(u'\\'));
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

TYPED_TEST_P(PlatformConformance, AMissingFileHasNoAttributesAndIsNotFound) {
  const std::u16string path = this->host_.newFile();
  EXPECT_EQ(this->platform().files.GetFileAttributesW(path.c_str()), kInvalidFileAttributes);
  EXPECT_EQ(this->lastError(), kErrorFileNotFound);
  this->platform().debug.SetLastError(kConformanceUnsetError);
  EXPECT_FALSE(this->platform().files.FindFirstFileW(path.c_str()));
  EXPECT_EQ(this->lastError(), kErrorFileNotFound);
}

TYPED_TEST_P(PlatformConformance, AFileHasAttributesAndIsFound) {
  constexpr std::uint32_t kDirectory = 0x10;  // FILE_ATTRIBUTE_DIRECTORY
  const std::u16string path = this->host_.newFile();
  this->WriteWholeFile(path, "text");
  const std::uint32_t attributes = this->platform().files.GetFileAttributesW(path.c_str());
  EXPECT_NE(attributes, kInvalidFileAttributes);
  EXPECT_EQ(attributes & kDirectory, 0U);
  EXPECT_TRUE(this->platform().files.FindFirstFileW(path.c_str()));
  EXPECT_TRUE(this->platform().files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AFolderIsMadeOnce) {
  constexpr std::uint32_t kDirectory = 0x10;  // FILE_ATTRIBUTE_DIRECTORY
  const std::u16string path = this->host_.newFolder();
  EXPECT_TRUE(this->platform().files.CreateDirectoryW(path.c_str()));
  EXPECT_FALSE(this->platform().files.CreateDirectoryW(path.c_str()));
  EXPECT_EQ(this->lastError(), kErrorAlreadyExists);
  EXPECT_EQ(this->platform().files.GetFileAttributesW(path.c_str()) & kDirectory, kDirectory);
  EXPECT_TRUE(this->platform().files.FindFirstFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AFolderIsNoFile) {
  const std::u16string path = this->host_.newFolder();
  ASSERT_TRUE(this->platform().files.CreateDirectoryW(path.c_str()));
  for (const Files::Access access :
       {Files::Access::kOpenExistingForReading, Files::Access::kOpenExistingForUpdate,
        Files::Access::kOpenAlwaysForAppending}) {
    this->platform().debug.SetLastError(kConformanceUnsetError);
    EXPECT_EQ(this->platform().files.CreateFileW(path.c_str(), access), nullptr);
    EXPECT_EQ(this->lastError(), kErrorAccessDenied);
  }
}

TYPED_TEST_P(PlatformConformance, AFileInAMissingFolderIsToldApart) {
  const std::u16string path = this->host_.newFolder() + u"\\file.dat";
  for (const Files::Access access :
       {Files::Access::kOpenExistingForReading, Files::Access::kCreateAlwaysForWriting}) {
    this->platform().debug.SetLastError(kConformanceUnsetError);
    EXPECT_EQ(this->platform().files.CreateFileW(path.c_str(), access), nullptr);
    EXPECT_EQ(this->lastError(), kErrorPathNotFound);
  }
}

TYPED_TEST_P(PlatformConformance, AFileInANewFolderIsWrittenAndRead) {
  const std::u16string folder = this->host_.newFolder();
  ASSERT_TRUE(this->platform().files.CreateDirectoryW(folder.c_str()));
  const std::u16string path = folder + u"\\file.dat";
  this->WriteWholeFile(path, "text");
  EXPECT_EQ(this->ReadWholeFile(path), "text");
  EXPECT_TRUE(this->platform().files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AFileTellsItsWholeSize) {
  const std::u16string path = this->host_.newFile();
  this->WriteWholeFile(path, "twelve bytes");
  Files& files = this->platform().files;
  const FileHandle file = files.CreateFileW(path.c_str(), Files::Access::kOpenExistingForReading);
  ASSERT_NE(file, nullptr);
  std::uint64_t size = 0;
  EXPECT_TRUE(files.GetFileSizeEx(file, &size));
  EXPECT_EQ(size, 12U);
  EXPECT_TRUE(files.CloseHandle(file));
  EXPECT_TRUE(files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AFileOpenForUpdateIsReadAndWrittenInPlace) {
  const std::u16string path = this->host_.newFile();
  Files& files = this->platform().files;
  EXPECT_EQ(files.CreateFileW(path.c_str(), Files::Access::kOpenExistingForUpdate), nullptr);
  EXPECT_EQ(this->lastError(), kErrorFileNotFound);
  this->WriteWholeFile(path, "abcde");
  const FileHandle file = files.CreateFileW(path.c_str(), Files::Access::kOpenExistingForUpdate);
  ASSERT_NE(file, nullptr);
  std::uint32_t count = 0;
  EXPECT_TRUE(files.WriteFile(file, "XY", 2, &count));
  std::array<char, 2> bytes = {};
  EXPECT_TRUE(files.ReadFile(file, bytes.data(), 2, &count));
  EXPECT_EQ(std::string_view(bytes.data(), count), "cd");
  EXPECT_TRUE(files.CloseHandle(file));
  EXPECT_EQ(this->ReadWholeFile(path), "XYcde");
  EXPECT_TRUE(files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AppendingMakesAFileAndThenAddsToItsEnd) {
  const std::u16string path = this->host_.newFile();
  Files& files = this->platform().files;
  for (const std::string_view piece : {"ab", "cde"}) {
    const FileHandle file = files.CreateFileW(path.c_str(), Files::Access::kOpenAlwaysForAppending);
    ASSERT_NE(file, nullptr);
    std::uint32_t count = 0;
    EXPECT_TRUE(
        files.WriteFile(file, piece.data(), static_cast<std::uint32_t>(piece.size()), &count));
    EXPECT_EQ(count, piece.size());
    EXPECT_TRUE(files.CloseHandle(file));
  }
  EXPECT_EQ(this->ReadWholeFile(path), "abcde");
  EXPECT_TRUE(files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AccessThatWasNotAskedForIsDenied) {
  const std::u16string path = this->host_.newFile();
  Files& files = this->platform().files;
  char byte = '#';
  std::uint32_t count = 0;
  const FileHandle writer = files.CreateFileW(path.c_str(), Files::Access::kCreateAlwaysForWriting);
  ASSERT_NE(writer, nullptr);
  EXPECT_FALSE(files.ReadFile(writer, &byte, 1, &count));
  EXPECT_EQ(this->lastError(), kErrorAccessDenied);
  EXPECT_TRUE(files.CloseHandle(writer));
  const FileHandle reader = files.CreateFileW(path.c_str(), Files::Access::kOpenExistingForReading);
  ASSERT_NE(reader, nullptr);
  this->platform().debug.SetLastError(kConformanceUnsetError);
  EXPECT_FALSE(files.WriteFile(reader, &byte, 1, &count));
  EXPECT_EQ(this->lastError(), kErrorAccessDenied);
  EXPECT_TRUE(files.CloseHandle(reader));
  EXPECT_TRUE(files.DeleteFileW(path.c_str()));
}

TYPED_TEST_P(PlatformConformance, AMissingIniFileGivesTheFallback) {
  // Without a folder the platform would look among its own files.
  const std::u16string path = this->host_.newFolder() + u"\\none.ini";
  constexpr std::uint32_t kUnits = 8;
  std::array<char16_t, kUnits> text;
  text.fill(u'#');
  EXPECT_EQ(this->platform().files.GetPrivateProfileStringW(u"Print", u"OEM_NAME", u"none",
                                                            text.data(), kUnits, path.c_str()),
            4U);
  EXPECT_EQ(std::u16string_view(text.data()), u"none");
}

TYPED_TEST_P(PlatformConformance, AnIniValueIsReadThroughADoubledSeparator) {
  const std::u16string folder = this->host_.newFolder();
  Files& files = this->platform().files;
  ASSERT_TRUE(files.CreateDirectoryW(folder.c_str()));
  const std::u16string path = folder + u"\\a.ini";
  this->WriteWholeFile(path, "[Other]\r\nOEM_NAME=wrong\r\n[Print]\r\nOEM_NAME=Acme\r\n");
  const std::u16string doubled = folder + u"\\\\a.ini";
  constexpr std::uint32_t kUnits = 8;
  std::array<char16_t, kUnits> text;
  text.fill(u'#');
  EXPECT_EQ(files.GetPrivateProfileStringW(u"PRINT", u"oem_name", u"", text.data(), kUnits,
                                           doubled.c_str()),
            4U);
  EXPECT_EQ(std::u16string_view(text.data()), u"Acme");
  EXPECT_EQ(
      files.GetPrivateProfileStringW(u"Print", u"OEM_NAME", u"", text.data(), 3, doubled.c_str()),
      2U);
  EXPECT_EQ(std::u16string_view(text.data()), u"Ac");
  EXPECT_EQ(
      files.GetPrivateProfileStringW(u"Print", u"Other", u"", text.data(), kUnits, doubled.c_str()),
      0U);
  EXPECT_TRUE(files.DeleteFileW(path.c_str()));
}

// ---- The user and his registry ------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, TheUserHasAName) {
  Security& security = this->platform().security;
  std::array<char16_t, kUserNameUnits> name = {};
  std::uint32_t units = kUserNameUnits;
  ASSERT_TRUE(security.GetUserNameW(name.data(), &units));
  const std::u16string_view text(name.data());
  EXPECT_FALSE(text.empty());
  EXPECT_EQ(units, text.size() + 1);
  std::uint32_t room = units - 1;
  EXPECT_FALSE(security.GetUserNameW(name.data(), &room));
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  EXPECT_EQ(room, units);
}

TYPED_TEST_P(PlatformConformance, ValuesAreReadAsTheyWereSetBelowTheUsersKey) {
  // Who the user is: the token's SID as text.
  Security& security = this->platform().security;
  TokenHandle token = nullptr;
  ASSERT_TRUE(security.OpenProcessToken(&token));
  std::uint32_t needed = 0;
  EXPECT_FALSE(security.GetTokenInformation(token, kTokenUser, nullptr, 0, &needed));
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  std::vector<std::uint64_t> buffer(needed / sizeof(std::uint64_t) + 1);
  ASSERT_TRUE(security.GetTokenInformation(token, kTokenUser, buffer.data(), needed, &needed));
  TokenUser user;
  std::memcpy(&user, buffer.data(), sizeof(user));
  char16_t* sid = nullptr;
  ASSERT_TRUE(security.ConvertSidToStringSidW(user.Sid, &sid));
  const std::u16string path = std::u16string(sid) + u"\\SOFTWARE\\OstrelUPD\\Conformance";
  EXPECT_TRUE(path.starts_with(u"S-1-"));
  security.LocalFree(sid);
  EXPECT_TRUE(security.CloseHandle(token));

  Registry& registry = this->platform().registry;
  RegistryKey key = nullptr;
  ASSERT_EQ(registry.RegCreateKeyExW(path.c_str(), &key), kErrorSuccess);
  const std::array<unsigned char, 3> bytes = {1, 0, 0xFF};
  EXPECT_EQ(registry.RegSetValueExW(key, u"Bytes", kRegBinary, bytes.data(), 3), kErrorSuccess);
  const std::uint32_t word = 7;
  EXPECT_EQ(registry.RegSetValueExW(key, u"Word", kRegDword, &word, sizeof(word)), kErrorSuccess);
  EXPECT_EQ(registry.RegCloseKey(key), kErrorSuccess);

  ASSERT_EQ(registry.RegCreateKeyExW(path.c_str(), &key), kErrorSuccess);
  std::array<unsigned char, 4> read;
  read.fill(0xC5);
  std::uint32_t type = 0;
  std::uint32_t size = sizeof(read);
  EXPECT_EQ(registry.RegQueryValueExW(key, u"BYTES", &type, read.data(), &size), kErrorSuccess);
  EXPECT_EQ(type, kRegBinary);
  EXPECT_EQ(size, 3U);
  EXPECT_EQ(read, (std::array<unsigned char, 4>{1, 0, 0xFF, 0xC5}));
  size = 2;
  EXPECT_EQ(registry.RegQueryValueExW(key, u"Bytes", &type, read.data(), &size), kErrorMoreData);
  EXPECT_EQ(size, 3U);
  std::uint32_t wordRead = 0;
  size = sizeof(wordRead);
  EXPECT_EQ(registry.RegQueryValueExW(key, u"Word", &type, &wordRead, &size), kErrorSuccess);
  EXPECT_EQ(type, kRegDword);
  EXPECT_EQ(wordRead, word);
  size = sizeof(wordRead);
  EXPECT_EQ(registry.RegQueryValueExW(key, u"None", &type, &wordRead, &size), kErrorFileNotFound);
  EXPECT_EQ(registry.RegCloseKey(key), kErrorSuccess);
}

// ---- The shell ----------------------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, TheShellTellsTheFolderOfApplicationData) {
  for (const std::uint32_t folder :
       {kCsidlAppData, kCsidlAppData | kCsidlFlagCreate, kCsidlSystem}) {
    std::array<char16_t, kMaxPathUnits> path = {};
    EXPECT_EQ(this->platform().shell.SHGetFolderPathW(folder, path.data()), 0U);
    const std::u16string_view text(path.data());
    EXPECT_EQ(text.substr(1, 2), u":\\");
    EXPECT_FALSE(text.ends_with(u'\\'));
  }
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

// ---- Dialogs, exports and images of a library ---------------------------------------------------

TYPED_TEST_P(PlatformConformance, ALibraryHoldsItsOwnDialogsAlone) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  EXPECT_TRUE(this->platform().modules.FindResourceW(module, 111, kResourceDialog));
  EXPECT_FALSE(this->platform().modules.FindResourceW(module, 60000, kResourceDialog));
  EXPECT_TRUE(this->platform().modules.FreeLibrary(module));
}

TYPED_TEST_P(PlatformConformance, AFunctionThatALibraryDoesNotExportIsNull) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  EXPECT_EQ(this->platform().modules.GetProcAddress(module, "NoSuchFunction"), nullptr);
  EXPECT_TRUE(this->platform().modules.FreeLibrary(module));
}

TYPED_TEST_P(PlatformConformance, AnIconIsLoadedAndAMissingOneIsNull) {
  const ModuleHandle module = this->LoadLanguageLibrary();
  EXPECT_NE(this->platform().windows.LoadImageW(module, 1077, kImageIcon, 18, 18), nullptr);
  EXPECT_EQ(this->platform().windows.LoadImageW(module, 60000, kImageIcon, 18, 18), nullptr);
  EXPECT_TRUE(this->platform().modules.FreeLibrary(module));
}

TYPED_TEST_P(PlatformConformance, ABitmapTellsItsSizeAndIsDeletedOnce) {
  Graphics& graphics = this->platform().graphics;
  const ModuleHandle module = this->LoadLanguageLibrary();
  const GdiObject bitmap = graphics.LoadBitmapW(module, 115);
  ASSERT_NE(bitmap, nullptr);
  Size size = {-1, -1};
  EXPECT_TRUE(graphics.GetBitmapSize(bitmap, &size));
  EXPECT_EQ(size.width, 32);
  EXPECT_EQ(size.height, 32);
  EXPECT_TRUE(graphics.DeleteObject(bitmap));
  EXPECT_FALSE(graphics.GetBitmapSize(bitmap, &size));
  EXPECT_EQ(graphics.LoadBitmapW(module, 60000), nullptr);
  EXPECT_TRUE(this->platform().modules.FreeLibrary(module));
}

// ---- Drawing ------------------------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, ABitmapIsSelectedIntoAContextInMemory) {
  Graphics& graphics = this->platform().graphics;
  const ModuleHandle module = this->LoadLanguageLibrary();
  const DeviceContext screen = graphics.GetDC(nullptr);
  ASSERT_NE(screen, nullptr);
  EXPECT_GE(graphics.GetDeviceCaps(screen, kDeviceCapLogPixelsY), 72);
  const DeviceContext memory = graphics.CreateCompatibleDC(screen);
  ASSERT_NE(memory, nullptr);
  const GdiObject bitmap = graphics.LoadBitmapW(module, 115);
  const GdiObject before = graphics.SelectObject(memory, bitmap);
  EXPECT_NE(before, nullptr);
  EXPECT_EQ(graphics.SelectObject(memory, before), bitmap);
  EXPECT_TRUE(graphics.DeleteObject(bitmap));
  EXPECT_TRUE(graphics.DeleteDC(memory));
  EXPECT_EQ(graphics.ReleaseDC(nullptr, screen), 1);
  EXPECT_TRUE(this->platform().modules.FreeLibrary(module));
}

TYPED_TEST_P(PlatformConformance, AContextsLayoutIsSetAndTold) {
  Graphics& graphics = this->platform().graphics;
  const DeviceContext screen = graphics.GetDC(nullptr);
  const DeviceContext memory = graphics.CreateCompatibleDC(screen);
  EXPECT_EQ(graphics.GetLayout(memory), 0U);
  EXPECT_EQ(graphics.SetLayout(memory, kLayoutRightToLeft), 0U);
  EXPECT_EQ(graphics.GetLayout(memory), kLayoutRightToLeft);
  EXPECT_EQ(graphics.SetLayout(memory, 0), kLayoutRightToLeft);
  EXPECT_TRUE(graphics.DeleteDC(memory));
  EXPECT_EQ(graphics.ReleaseDC(nullptr, screen), 1);
}

// ---- Windows ------------------------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, AWindowThatIsNotThereTakesNothing) {
  Windows& windows = this->platform().windows;
  char16_t text[4] = {u'x', u'x', u'x', u'x'};
  char narrow[4] = {'x', 'x', 'x', 'x'};
  bool translated = true;
  Rect rect = {};
  EXPECT_EQ(windows.GetDlgItem(nullptr, 1), nullptr);
  EXPECT_EQ(windows.GetParent(nullptr), nullptr);
  EXPECT_FALSE(windows.EnableWindow(nullptr, true));
  EXPECT_FALSE(windows.IsWindowEnabled(nullptr));
  EXPECT_FALSE(windows.ShowWindow(nullptr, kSwShow));
  EXPECT_EQ(windows.SetFocus(nullptr), nullptr);
  EXPECT_FALSE(windows.InvalidateRect(nullptr));
  EXPECT_EQ(windows.SendMessageW(nullptr, kCbGetCount, 0, 0), 0);
  EXPECT_EQ(windows.GetWindowTextW(nullptr, text, 4), 0);
  EXPECT_FALSE(windows.SetWindowTextW(nullptr, u"text"));
  EXPECT_FALSE(windows.SetWindowTextA(nullptr, "text"));
  EXPECT_EQ(windows.GetDlgItemTextA(nullptr, 1, narrow, 4), 0U);
  EXPECT_EQ(windows.GetDlgItemInt(nullptr, 1, &translated, true), 0U);
  EXPECT_FALSE(translated);
  EXPECT_EQ(windows.IsDlgButtonChecked(nullptr, 1), 0U);
  EXPECT_EQ(windows.GetWindowLongPtrW(nullptr, kGwlpUserData), 0);
  EXPECT_EQ(windows.SetWindowLongPtrW(nullptr, kGwlpUserData, 1), 0);
  EXPECT_FALSE(windows.GetWindowRect(nullptr, &rect));
  EXPECT_FALSE(windows.DestroyWindow(nullptr));
}

TYPED_TEST_P(PlatformConformance, ATooltipIsMadeTakesAToolAndIsDestroyedOnce) {
  constexpr std::uint32_t kTopmost = 8;
  constexpr std::uint32_t kStyle = 0x80000003;
  Windows& windows = this->platform().windows;
  const WindowHandle tooltip =
      windows.CreateWindowExW(kTopmost, u"tooltips_class32", kStyle, nullptr, nullptr);
  ASSERT_NE(tooltip, nullptr);
  char16_t text[] = u"Locked";
  ToolInfo tool = {};
  tool.cbSize = offsetof(ToolInfo, lpReserved);
  tool.hwnd = tooltip;
  tool.lpszText = text;
  EXPECT_EQ(windows.SendMessageW(tooltip, kTtmAddTool, 0, reinterpret_cast<std::intptr_t>(&tool)),
            1);
  EXPECT_TRUE(windows.DestroyWindow(tooltip));
  EXPECT_FALSE(windows.DestroyWindow(tooltip));
}

TYPED_TEST_P(PlatformConformance, AWindowKeepsTheWordThatWasSet) {
  Windows& windows = this->platform().windows;
  const WindowHandle window =
      windows.CreateWindowExW(0, u"tooltips_class32", 0x80000000, nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(windows.SetWindowLongPtrW(window, kGwlpUserData, 0x1234), 0);
  EXPECT_EQ(windows.SetWindowLongPtrW(window, kGwlpUserData, 0x5678), 0x1234);
  EXPECT_EQ(windows.GetWindowLongPtrW(window, kGwlpUserData), 0x5678);
  EXPECT_FALSE(windows.EnableWindow(window, false));  // it wasn't disabled before
  EXPECT_FALSE(windows.IsWindowEnabled(window));
  EXPECT_TRUE(windows.EnableWindow(window, true));
  EXPECT_TRUE(windows.IsWindowEnabled(window));
  EXPECT_TRUE(windows.DestroyWindow(window));
}

TYPED_TEST_P(PlatformConformance, AnUnknownClassOfWindowsIsNotMade) {
  EXPECT_EQ(
      this->platform().windows.CreateWindowExW(0, u"no such class", 0x80000000, nullptr, nullptr),
      nullptr);
}

// ---- Threads and versions -----------------------------------------------------------------------

TYPED_TEST_P(PlatformConformance, AThreadHasOneId) {
  const std::uint32_t id = this->platform().system.GetCurrentThreadId();
  EXPECT_NE(id, 0U);
  EXPECT_EQ(this->platform().system.GetCurrentThreadId(), id);
}

TYPED_TEST_P(PlatformConformance, TheSystemIsAVersionThatHasActivationContexts) {
  EXPECT_GE(this->platform().system.GetMajorVersion(), 5U);
}

REGISTER_TYPED_TEST_SUITE_P(
    PlatformConformance, AnUnknownPrinterCannotBeOpened, AKnownPrinterIsOpenedAndClosed,
    APrinterIsOpenedWithTheAccessOfAnAdministrator, ANullPrinterCannotBeClosed,
    APrintersDescriptionTellsItsSizeFirst, APrintersDescriptionDoesNotFitOneByteLess,
    APrintersDescriptionNamesPrinterAndDriver, AnUnknownLevelOfAPrintersDescriptionIsRefused,
    ANullPrinterTellsNothing, ADriversDescriptionTellsItsSizeFirstAndThenItsName,
    PrinterDataAreReadAsTheyWereSet, MissingPrinterDataAreError2,
    TheDriverDirectoryTellsItsSizeFirst, TheCountryIsADecimalNumber,
    ACountryThatDoesNotFitIsAFailure, TheUserHasALanguage, AMissingLibraryIsAFailure,
    ALibraryLoadedTwiceIsOneAndIsFreedTwice, AStringIsLoadedWithItsLength,
    AStringThatDoesNotFitIsCutAndTerminated, AStringIntoOneUnitHasNoLength,
    AMissingStringHasNoLength, ALibraryTellsItsPath, APathThatDoesNotFitIsCutAndTold,
    AMissingFileCannotBeRead, WhatIsWrittenIsReadBack, AFileMadeAnewForgetsWhatItHeld,
    AnEmptyFileReadsAsNothingAndSucceeds, AFileIsEndedWhereItsWriterStands,
    AFileOpenedForReadingCannotBeEnded, AMissingFileCannotBeDeleted,
    AMissingFileHasNoAttributesAndIsNotFound, AFileHasAttributesAndIsFound, AFolderIsMadeOnce,
    AFolderIsNoFile, AFileInAMissingFolderIsToldApart, AFileInANewFolderIsWrittenAndRead,
    AFileTellsItsWholeSize, AFileOpenForUpdateIsReadAndWrittenInPlace,
    AppendingMakesAFileAndThenAddsToItsEnd, AccessThatWasNotAskedForIsDenied,
    AMissingIniFileGivesTheFallback, AnIniValueIsReadThroughADoubledSeparator, TheUserHasAName,
    ValuesAreReadAsTheyWereSetBelowTheUsersKey, TheShellTellsTheFolderOfApplicationData,
    ABlockIsZeroAndAlignedForAnyType, ANullBlockMayBeFreed, TheLastErrorIsTheOneThatWasSet,
    ADebugLineIsTaken, ALibraryHoldsItsOwnDialogsAlone, AFunctionThatALibraryDoesNotExportIsNull,
    AnIconIsLoadedAndAMissingOneIsNull, ABitmapTellsItsSizeAndIsDeletedOnce,
    ABitmapIsSelectedIntoAContextInMemory, AContextsLayoutIsSetAndTold,
    AWindowThatIsNotThereTakesNothing, ATooltipIsMadeTakesAToolAndIsDestroyedOnce,
    AWindowKeepsTheWordThatWasSet, AnUnknownClassOfWindowsIsNotMade, AThreadHasOneId,
    TheSystemIsAVersionThatHasActivationContexts);

}  // namespace ostrel
