#include "platform/headless/headless_platform.h"

#include "support/case_name.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::headless {
namespace {

constexpr std::uint32_t kUnsetError = 4711;
constexpr std::uint32_t kUnsetSize = 0xCDCDCDCD;

class Headless : public testing::Test {
 protected:
  Headless() { platform_.debug.lastError = kUnsetError; }
  std::uint32_t LastError() const { return platform_.debug.lastError; }

  HeadlessPlatform platform_;
};

// ---- Debug lines --------------------------------------------------------------------------------

TEST_F(Headless, DebugLinesAreKeptInOrder) {
  platform_.lists.debug.OutputDebugStringW(u"first\n");
  platform_.lists.debug.OutputDebugStringW(u"second");
  EXPECT_EQ(platform_.debug.lines, (std::vector<std::u16string>{u"first\n", u"second"}));
}

TEST_F(Headless, LastErrorStaysUntilItIsSetAgain) {
  platform_.lists.debug.SetLastError(87);
  EXPECT_EQ(platform_.lists.debug.GetLastError(), 87U);
  EXPECT_EQ(platform_.lists.debug.GetLastError(), 87U);
  platform_.lists.debug.SetLastError(0);
  EXPECT_EQ(platform_.lists.debug.GetLastError(), 0U);
}

// ---- Memory -------------------------------------------------------------------------------------

TEST_F(Headless, BlocksAreZeroAndCounted) {
  Memory& memory = platform_.lists.memory;
  auto* block = static_cast<unsigned char*>(memory.HeapAlloc(100));
  ASSERT_NE(block, nullptr);
  EXPECT_TRUE(std::all_of(block, block + 100, [](unsigned char each) { return each == 0; }));
  void* other = memory.HeapAlloc(0);
  EXPECT_NE(other, nullptr);
  EXPECT_NE(other, block);
  EXPECT_EQ(platform_.memory.liveBlocks(), 2U);
  memory.HeapFree(block);
  EXPECT_EQ(platform_.memory.liveBlocks(), 1U);
  memory.HeapFree(other);
  memory.HeapFree(nullptr);
  EXPECT_EQ(platform_.memory.liveBlocks(), 0U);
}

TEST_F(Headless, FreeingWhatIsNotAllocatedIsADefectOfTheCaller) {
  int local = 0;
  EXPECT_DEATH(platform_.memory.HeapFree(&local), "isn't allocated");
  void* block = platform_.memory.HeapAlloc(1);
  platform_.memory.HeapFree(block);
  EXPECT_DEATH(platform_.memory.HeapFree(block), "isn't allocated");
}

TEST_F(Headless, MemoryCanRunOut) {
  platform_.faults.FailOperation("HeapAlloc", 2);
  void* const first = platform_.memory.HeapAlloc(1);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(platform_.memory.HeapAlloc(1), nullptr);
  void* const third = platform_.memory.HeapAlloc(1);
  EXPECT_NE(third, nullptr);
  EXPECT_EQ(platform_.memory.liveBlocks(), 2U);
  platform_.memory.HeapFree(first);
  platform_.memory.HeapFree(third);
}

// ---- Locale -------------------------------------------------------------------------------------

TEST_F(Headless, CountryIsWrittenWithItsTerminator) {
  platform_.locale.country = u"49";
  char16_t text[4] = {u'#', u'#', u'#', u'#'};
  EXPECT_EQ(platform_.locale.GetLocaleInfoW(0x400, 5, text, 4), 3);
  EXPECT_EQ(std::u16string_view(text, 4), std::u16string_view(u"49\0#", 4));
  EXPECT_EQ(LastError(), kUnsetError);
}

TEST_F(Headless, CountryWithoutABufferIsMeasured) {
  platform_.locale.country = u"49";
  EXPECT_EQ(platform_.locale.GetLocaleInfoW(0x400, 5, nullptr, 0), 3);
}

TEST_F(Headless, CountryThatDoesNotFitIsNotWritten) {
  platform_.locale.country = u"49";
  char16_t text[2] = {u'#', u'#'};
  EXPECT_EQ(platform_.locale.GetLocaleInfoW(0x400, 5, text, 2), 0);
  EXPECT_EQ(text[0], u'#');
  EXPECT_EQ(LastError(), 122U);
}

TEST_F(Headless, OtherLocalesAndTypesAreNotKnown) {
  char16_t text[4] = {};
  EXPECT_EQ(platform_.locale.GetLocaleInfoW(0x409, 5, text, 4), 0);
  EXPECT_EQ(LastError(), 87U);
  platform_.debug.lastError = kUnsetError;
  EXPECT_EQ(platform_.locale.GetLocaleInfoW(0x400, 6, text, 4), 0);
  EXPECT_EQ(LastError(), 87U);
  platform_.faults.FailOperation("GetLocaleInfoW", 1);
  EXPECT_EQ(platform_.locale.GetLocaleInfoW(0x400, 5, text, 4), 0);
}

TEST_F(Headless, LanguageIsTheOneSet) {
  EXPECT_EQ(platform_.locale.GetUserDefaultUILanguage(), 1033);
  platform_.locale.uiLanguage = 1031;
  EXPECT_EQ(platform_.locale.GetUserDefaultUILanguage(), 1031);
}

// ---- Print system -------------------------------------------------------------------------------

class HeadlessPrinting : public Headless {
 protected:
  PrinterHandle Open(const char16_t* name = u"Desk") {
    PrinterHandle handle = nullptr;
    EXPECT_TRUE(platform_.print.OpenPrinterW(name, &handle, nullptr));
    return handle;
  }

  HeadlessPrinter& printer_ =
      platform_.print.AddPrinter({.name = u"Desk", .driverName = u"Some driver"});
};

TEST_F(HeadlessPrinting, EachOpeningHasAHandleOfItsOwn) {
  const PrinterHandle first = Open();
  const PrinterHandle second = Open();
  EXPECT_NE(first, nullptr);
  EXPECT_NE(first, second);
  EXPECT_EQ(platform_.print.openPrinters(), 2U);
  EXPECT_TRUE(platform_.print.ClosePrinter(first));
  EXPECT_EQ(platform_.print.openPrinters(), 1U);
  EXPECT_FALSE(platform_.print.ClosePrinter(first));
  EXPECT_EQ(LastError(), 6U);
  EXPECT_TRUE(platform_.print.ClosePrinter(second));
  EXPECT_FALSE(platform_.print.ClosePrinter(nullptr));
}

TEST_F(HeadlessPrinting, UnknownPrintersDoNotOpen) {
  for (const char16_t* name : {u"desk", u"Desk ", u"", static_cast<const char16_t*>(nullptr)}) {
    platform_.debug.lastError = kUnsetError;
    PrinterHandle handle = reinterpret_cast<PrinterHandle>(&platform_);
    EXPECT_FALSE(platform_.print.OpenPrinterW(name, &handle, nullptr));
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(LastError(), 1801U);
  }
  platform_.faults.FailOperation("OpenPrinterW", 1);
  PrinterHandle handle = nullptr;
  EXPECT_FALSE(platform_.print.OpenPrinterW(u"Desk", &handle, nullptr));
  EXPECT_EQ(platform_.print.openPrinters(), 0U);
}

TEST_F(HeadlessPrinting, AskedAccessIsTheLastOnes) {
  PrinterHandle handle = nullptr;
  const PrinterDefaults administer = {nullptr, nullptr, kPrinterAllAccess};
  EXPECT_TRUE(platform_.print.OpenPrinterW(u"Desk", &handle, &administer));
  EXPECT_EQ(platform_.print.lastDesiredAccess(), 0x000F000CU);
  Open();
  EXPECT_EQ(platform_.print.lastDesiredAccess(), 0U);
}

// The two questions for a block, which keep one protocol.
enum class Question { kPrinter, kDriver };

class HeadlessDescription : public HeadlessPrinting, public testing::WithParamInterface<Question> {
 protected:
  const char* Operation() const {
    return GetParam() == Question::kPrinter ? "GetPrinterW" : "GetPrinterDriverW";
  }
  bool Ask(PrinterHandle printer, void* buffer, std::uint32_t sizeBytes, std::uint32_t level = 2) {
    needed_ = kUnsetSize;
    return GetParam() == Question::kPrinter
               ? platform_.print.GetPrinterW(printer, level, buffer, sizeBytes, &needed_)
               : platform_.print.GetPrinterDriverW(printer, nullptr, level, buffer, sizeBytes,
                                                   &needed_);
  }
  std::uint32_t needed_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Questions, HeadlessDescription,
                         testing::Values(Question::kPrinter, Question::kDriver),
                         [](const testing::TestParamInfo<Question>& row) {
                           return row.param == Question::kPrinter ? "OfThePrinter" : "OfTheDriver";
                         });

TEST_P(HeadlessDescription, IsMeasuredFirstAndWrittenToABlockOfThatSize) {
  const PrinterHandle printer = Open();
  EXPECT_FALSE(Ask(printer, nullptr, 0));
  EXPECT_EQ(LastError(), 122U);
  const std::uint32_t size = needed_;
  ASSERT_GT(size, 48U);

  std::vector<std::byte> block(size, std::byte{0xC5});
  EXPECT_FALSE(Ask(printer, block.data(), size - 1));
  EXPECT_EQ(LastError(), 122U);
  EXPECT_EQ(needed_, size);
  EXPECT_EQ(block, std::vector<std::byte>(size, std::byte{0xC5}));

  platform_.debug.lastError = kUnsetError;
  EXPECT_TRUE(Ask(printer, block.data(), size));
  EXPECT_EQ(needed_, size);
  EXPECT_EQ(LastError(), kUnsetError);
}

TEST_P(HeadlessDescription, OfOtherLevelsIsNotKnown) {
  const PrinterHandle printer = Open();
  for (const std::uint32_t level : {0U, 1U, 3U, 9U}) {
    platform_.debug.lastError = kUnsetError;
    EXPECT_FALSE(Ask(printer, nullptr, 0, level));
    EXPECT_EQ(LastError(), 124U);
    EXPECT_EQ(needed_, 0U);
  }
}

TEST_P(HeadlessDescription, NeedsAnOpenPrinter) {
  const PrinterHandle closed = Open();
  platform_.print.ClosePrinter(closed);
  for (const PrinterHandle printer : {closed, PrinterHandle{nullptr}}) {
    platform_.debug.lastError = kUnsetError;
    EXPECT_FALSE(Ask(printer, nullptr, 0));
    EXPECT_EQ(LastError(), 6U);
    EXPECT_EQ(needed_, 0U);
  }
}

TEST_P(HeadlessDescription, CanFailByName) {
  const PrinterHandle printer = Open();
  platform_.faults.FailOperation(Operation(), 2);
  EXPECT_FALSE(Ask(printer, nullptr, 0));
  EXPECT_NE(needed_, 0U);
  EXPECT_FALSE(Ask(printer, nullptr, 0));
  EXPECT_EQ(needed_, 0U);
  EXPECT_EQ(LastError(), 6U);
}

TEST_P(HeadlessDescription, CanGrowBetweenTwoCalls) {
  const PrinterHandle printer = Open();
  platform_.print.GrowDescriptionBy(8);
  Ask(printer, nullptr, 0);
  const std::uint32_t before = needed_;
  Ask(printer, nullptr, 0);
  EXPECT_EQ(needed_, before + 16);
}

TEST_F(HeadlessPrinting, PrinterIsDescribedAsItWasAdded) {
  printer_.port = u"USB001";
  printer_.devmode = {std::byte{1}, std::byte{2}, std::byte{3}};
  const PrinterHandle printer = Open();
  std::uint32_t needed = 0;
  platform_.print.GetPrinterW(printer, 2, nullptr, 0, &needed);
  std::vector<std::byte> block(needed);
  ASSERT_TRUE(platform_.print.GetPrinterW(printer, 2, block.data(), needed, &needed));
  PrinterInfo2 info;
  std::memcpy(&info, block.data(), sizeof(info));
  EXPECT_EQ(std::u16string(info.pPrinterName), u"Desk");
  EXPECT_EQ(std::u16string(info.pDriverName), u"Some driver");
  EXPECT_EQ(std::u16string(info.pPortName), u"USB001");
  EXPECT_EQ(std::u16string(info.pDatatype), u"RAW");
  ASSERT_NE(info.pDevMode, nullptr);
  EXPECT_EQ(std::memcmp(info.pDevMode, "\1\2\3", 3), 0);
  EXPECT_EQ(info.pServerName, nullptr);
}

TEST_F(HeadlessPrinting, PrinterWithoutARecordHasANullOne) {
  const PrinterHandle printer = Open();
  std::uint32_t needed = 0;
  platform_.print.GetPrinterW(printer, 2, nullptr, 0, &needed);
  std::vector<std::byte> block(needed, std::byte{0xC5});
  ASSERT_TRUE(platform_.print.GetPrinterW(printer, 2, block.data(), needed, &needed));
  PrinterInfo2 info;
  std::memcpy(&info, block.data(), sizeof(info));
  EXPECT_EQ(info.pDevMode, nullptr);
}

TEST_F(HeadlessPrinting, SilentPrinterOpensButTellsNothing) {
  printer_.describes = false;
  const PrinterHandle printer = Open();
  std::uint32_t needed = kUnsetSize;
  EXPECT_FALSE(platform_.print.GetPrinterW(printer, 2, nullptr, 0, &needed));
  EXPECT_EQ(needed, 0U);
  EXPECT_EQ(LastError(), 6U);
}

TEST_F(HeadlessPrinting, DriverIsDescribedByItsName) {
  const PrinterHandle printer = Open();
  std::uint32_t needed = 0;
  platform_.print.GetPrinterDriverW(printer, nullptr, 2, nullptr, 0, &needed);
  std::vector<std::byte> block(needed);
  ASSERT_TRUE(
      platform_.print.GetPrinterDriverW(printer, nullptr, 2, block.data(), needed, &needed));
  DriverInfo2 info;
  std::memcpy(&info, block.data(), sizeof(info));
  EXPECT_EQ(info.cVersion, 3U);
  EXPECT_EQ(std::u16string(info.pName), u"Some driver");
  EXPECT_EQ(std::u16string(info.pEnvironment), u"Windows x64");
  EXPECT_EQ(std::u16string(info.pDriverPath), u"ostrelPCL6ui.dll");
}

// ---- Modules ------------------------------------------------------------------------------------

class HeadlessLibraries : public Headless {
 protected:
  HeadlessLibraries() { modules_.Install(u"C:\\lib\\Texts.dll", {{1, u"one"}, {2, u"second"}}); }
  HeadlessModules& modules_ = platform_.modules;
};

TEST_F(HeadlessLibraries, LoadsAreCountedUntilTheyAreFreed) {
  const ModuleHandle first = modules_.LoadLibraryW(u"C:\\lib\\Texts.dll");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(modules_.LoadLibraryW(u"c:\\LIB\\texts.DLL"), first);  // paths have no letter case
  modules_.Install(u"C:\\lib\\other.dll");
  const ModuleHandle other = modules_.LoadLibraryW(u"C:\\lib\\other.dll");
  EXPECT_NE(other, first);
  EXPECT_EQ(modules_.loads(), 3U);
  EXPECT_EQ(modules_.loadsOf(u"C:\\lib\\Texts.dll"), 2U);
  EXPECT_TRUE(modules_.FreeLibrary(first));
  EXPECT_TRUE(modules_.FreeLibrary(first));
  EXPECT_EQ(modules_.loadsOf(u"C:\\lib\\Texts.dll"), 0U);
  EXPECT_FALSE(modules_.FreeLibrary(first));
  EXPECT_EQ(LastError(), 6U);
  EXPECT_FALSE(modules_.FreeLibrary(nullptr));
  EXPECT_EQ(modules_.loads(), 1U);
  EXPECT_EQ(modules_.loadsOf(u"C:\\lib\\nowhere.dll"), 0U);
}

TEST_F(HeadlessLibraries, MissingLibrariesDoNotLoad) {
  EXPECT_EQ(modules_.LoadLibraryW(u"C:\\lib\\nowhere.dll"), nullptr);
  EXPECT_EQ(LastError(), 126U);
  modules_.Remove(u"C:\\LIB\\texts.dll");
  EXPECT_EQ(modules_.LoadLibraryW(u"C:\\lib\\Texts.dll"), nullptr);
  modules_.Install(u"C:\\lib\\Texts.dll");
  platform_.faults.FailOperation("LoadLibraryW", 1);
  EXPECT_EQ(modules_.LoadLibraryW(u"C:\\lib\\Texts.dll"), nullptr);
  EXPECT_EQ(modules_.loads(), 0U);
}

TEST_F(HeadlessLibraries, RemovedLibraryServesWhoHasLoadedIt) {
  const ModuleHandle module = modules_.LoadLibraryW(u"C:\\lib\\Texts.dll");
  modules_.Remove(u"C:\\lib\\Texts.dll");
  char16_t text[8] = {};
  EXPECT_EQ(modules_.LoadStringW(module, 1, text, 8), 3);
  EXPECT_TRUE(modules_.FreeLibrary(module));
  EXPECT_EQ(modules_.LoadStringW(module, 1, text, 8), 0);
}

TEST_F(HeadlessLibraries, StringsAreCutToFitAndTerminated) {
  const ModuleHandle module = modules_.LoadLibraryW(u"C:\\lib\\Texts.dll");
  char16_t text[8];
  std::fill(std::begin(text), std::end(text), u'#');
  EXPECT_EQ(modules_.LoadStringW(module, 2, text, 8), 6);
  EXPECT_EQ(std::u16string(text), u"second");
  EXPECT_EQ(text[7], u'#');
  EXPECT_EQ(modules_.LoadStringW(module, 2, text, 7), 6);
  EXPECT_EQ(modules_.LoadStringW(module, 2, text, 6), 5);
  EXPECT_EQ(std::u16string(text), u"secon");
  EXPECT_EQ(modules_.LoadStringW(module, 2, text, 1), 0);
  EXPECT_EQ(std::u16string(text), u"");
}

TEST_F(HeadlessLibraries, MissingStringsAreEmpty) {
  const ModuleHandle module = modules_.LoadLibraryW(u"C:\\lib\\Texts.dll");
  char16_t text[8] = u"poison";
  EXPECT_EQ(modules_.LoadStringW(module, 3, text, 8), 0);
  EXPECT_EQ(std::u16string(text), u"");
  EXPECT_EQ(LastError(), 1814U);
  EXPECT_EQ(modules_.LoadStringW(nullptr, 1, text, 8), 0);
  EXPECT_EQ(modules_.LoadStringW(module, 1, text, 0), 0);
  platform_.faults.FailOperation("LoadStringW", 1);
  EXPECT_EQ(modules_.LoadStringW(module, 1, text, 8), 0);
  EXPECT_EQ(modules_.requestedStrings, (std::vector<std::uint32_t>{3, 1, 1, 1}));
}

TEST_F(HeadlessLibraries, PathIsTheOneInstalledAndIsCutLikeTheSystemsOwn) {
  const ModuleHandle module = modules_.LoadLibraryW(u"c:\\lib\\texts.dll");
  char16_t path[32];
  std::fill(std::begin(path), std::end(path), u'#');
  EXPECT_EQ(modules_.GetModuleFileNameW(module, path, 32), 16U);
  EXPECT_EQ(std::u16string(path), u"C:\\lib\\Texts.dll");
  EXPECT_EQ(modules_.GetModuleFileNameW(module, path, 17), 16U);
  EXPECT_EQ(LastError(), kUnsetError);
  EXPECT_EQ(modules_.GetModuleFileNameW(module, path, 16), 16U);
  EXPECT_EQ(std::u16string(path), u"C:\\lib\\Texts.dl");
  EXPECT_EQ(LastError(), 122U);
}

TEST_F(HeadlessLibraries, PathNeedsALoadedLibraryAndRoom) {
  const ModuleHandle module = modules_.LoadLibraryW(u"C:\\lib\\Texts.dll");
  char16_t path[32] = u"poison";
  EXPECT_EQ(modules_.GetModuleFileNameW(nullptr, path, 32), 0U);
  EXPECT_EQ(LastError(), 126U);
  EXPECT_EQ(modules_.GetModuleFileNameW(module, path, 0), 0U);
  platform_.faults.FailOperation("GetModuleFileNameW", 1);
  EXPECT_EQ(modules_.GetModuleFileNameW(module, path, 32), 0U);
  modules_.FreeLibrary(module);
  EXPECT_EQ(modules_.GetModuleFileNameW(module, path, 32), 0U);
  EXPECT_EQ(std::u16string(path), u"poison");
}

// ---- Files --------------------------------------------------------------------------------------

class HeadlessFolder : public Headless {
 protected:
  static constexpr auto kRead = Files::Access::kOpenExistingForReading;
  static constexpr auto kWrite = Files::Access::kCreateAlwaysForWriting;
  static constexpr auto kUpdate = Files::Access::kOpenExistingForUpdate;
  static constexpr auto kAppend = Files::Access::kOpenAlwaysForAppending;

  void Put(const char16_t* path, std::string_view content) {
    const FileHandle file = files_.CreateFileW(path, kWrite);
    ASSERT_NE(file, nullptr);
    std::uint32_t written = kUnsetSize;
    ASSERT_TRUE(files_.WriteFile(file, content.data(), static_cast<std::uint32_t>(content.size()),
                                 &written));
    EXPECT_EQ(written, content.size());
    EXPECT_TRUE(files_.CloseHandle(file));
  }

  std::string Get(const char16_t* path) {
    const FileHandle file = files_.CreateFileW(path, kRead);
    EXPECT_NE(file, nullptr);
    std::string content(64, '#');
    std::uint32_t read = kUnsetSize;
    EXPECT_TRUE(files_.ReadFile(file, content.data(), 64, &read));
    content.resize(read);
    EXPECT_TRUE(files_.CloseHandle(file));
    return content;
  }

  HeadlessFiles& files_ = platform_.files;
};

TEST_F(HeadlessFolder, WhatWasWrittenIsReadWithoutRegardToLetterCase) {
  ASSERT_TRUE(files_.CreateDirectoryW(u"C:\\data"));
  Put(u"C:\\Data\\a.dat", "content");
  EXPECT_EQ(Get(u"c:\\data\\A.DAT"), "content");
  EXPECT_EQ(files_.openFiles(), 0U);
}

TEST_F(HeadlessFolder, CreatingMakesTheFileAnew) {
  Put(u"C:\\a.dat", "long content");
  Put(u"C:\\a.dat", "short");
  EXPECT_EQ(Get(u"C:\\a.dat"), "short");
}

TEST_F(HeadlessFolder, ReadingGoesOnWhereItEnded) {
  Put(u"C:\\a.dat", "abcde");
  const FileHandle file = files_.CreateFileW(u"C:\\a.dat", kRead);
  char bytes[4] = {'#', '#', '#', '#'};
  std::uint32_t read = 0;
  EXPECT_TRUE(files_.ReadFile(file, bytes, 3, &read));
  EXPECT_EQ(std::string_view(bytes, 4), "abc#");
  EXPECT_TRUE(files_.ReadFile(file, bytes, 3, &read));
  EXPECT_EQ(read, 2U);
  EXPECT_EQ(std::string_view(bytes, 4), "dec#");
  EXPECT_TRUE(files_.ReadFile(file, bytes, 3, &read));
  EXPECT_EQ(read, 0U);
  EXPECT_TRUE(files_.CloseHandle(file));
}

TEST_F(HeadlessFolder, WritingGoesOnWhereItEnded) {
  const FileHandle file = files_.CreateFileW(u"C:\\a.dat", kWrite);
  std::uint32_t written = 0;
  EXPECT_TRUE(files_.WriteFile(file, "ab", 2, &written));
  EXPECT_TRUE(files_.WriteFile(file, "cd", 2, &written));
  EXPECT_TRUE(files_.CloseHandle(file));
  EXPECT_EQ(Get(u"C:\\a.dat"), "abcd");
}

TEST_F(HeadlessFolder, MissingFilesDoNotOpenForReading) {
  EXPECT_EQ(files_.CreateFileW(u"C:\\a.dat", kRead), nullptr);
  EXPECT_EQ(LastError(), 2U);
  EXPECT_EQ(files_.openFiles(), 0U);
}

TEST_F(HeadlessFolder, DeletedFilesAreGone) {
  Put(u"C:\\a.dat", "abc");
  EXPECT_TRUE(files_.DeleteFileW(u"C:\\A.dat"));
  EXPECT_EQ(files_.CreateFileW(u"C:\\a.dat", kRead), nullptr);
  platform_.debug.lastError = kUnsetError;
  EXPECT_FALSE(files_.DeleteFileW(u"C:\\a.dat"));
  EXPECT_EQ(LastError(), 2U);
}

TEST_F(HeadlessFolder, AccessAndHandlesAreChecked) {
  Put(u"C:\\a.dat", "abc");
  const FileHandle reader = files_.CreateFileW(u"C:\\a.dat", kRead);
  const FileHandle writer = files_.CreateFileW(u"C:\\b.dat", kWrite);
  char byte = '#';
  std::uint32_t count = kUnsetSize;
  EXPECT_FALSE(files_.WriteFile(reader, &byte, 1, &count));
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(LastError(), 5U);
  platform_.debug.lastError = kUnsetError;
  EXPECT_FALSE(files_.ReadFile(writer, &byte, 1, &count));
  EXPECT_EQ(LastError(), 5U);
  EXPECT_TRUE(files_.CloseHandle(reader));
  EXPECT_FALSE(files_.ReadFile(reader, &byte, 1, &count));
  EXPECT_EQ(LastError(), 6U);
  EXPECT_FALSE(files_.CloseHandle(reader));
  EXPECT_TRUE(files_.CloseHandle(writer));
  EXPECT_FALSE(files_.CloseHandle(nullptr));
  EXPECT_EQ(byte, '#');
}

TEST_F(HeadlessFolder, EachOperationCanFailByName) {
  Put(u"C:\\a.dat", "abc");
  for (const char* operation : {"CreateFileW", "ReadFile", "WriteFile", "DeleteFileW"}) {
    platform_.faults.FailOperation(operation, 1);
  }
  EXPECT_EQ(files_.CreateFileW(u"C:\\a.dat", kRead), nullptr);
  const FileHandle reader = files_.CreateFileW(u"C:\\a.dat", kRead);
  const FileHandle writer = files_.CreateFileW(u"C:\\b.dat", kWrite);
  char byte = '#';
  std::uint32_t count = kUnsetSize;
  EXPECT_FALSE(files_.ReadFile(reader, &byte, 1, &count));
  EXPECT_EQ(count, 0U);
  EXPECT_TRUE(files_.ReadFile(reader, &byte, 1, &count));
  EXPECT_EQ(byte, 'a');
  EXPECT_FALSE(files_.WriteFile(writer, &byte, 1, &count));
  EXPECT_EQ(count, 0U);
  EXPECT_FALSE(files_.DeleteFileW(u"C:\\a.dat"));
  EXPECT_TRUE(files_.CloseHandle(reader));
  EXPECT_TRUE(files_.CloseHandle(writer));
  EXPECT_EQ(Get(u"C:\\a.dat"), "abc");
  EXPECT_EQ(Get(u"C:\\b.dat"), "");
}

TEST_F(HeadlessFolder, FailedCreationKeepsWhatWasThere) {
  Put(u"C:\\a.dat", "abc");
  platform_.faults.FailOperation("CreateFileW", 1);
  EXPECT_EQ(files_.CreateFileW(u"C:\\a.dat", kWrite), nullptr);
  EXPECT_EQ(Get(u"C:\\a.dat"), "abc");
}

TEST_F(HeadlessFolder, MissingFoldersAreToldApartFromMissingFiles) {
  for (const Files::Access access : {kRead, kUpdate, kWrite, kAppend}) {
    platform_.debug.lastError = kUnsetError;
    EXPECT_EQ(files_.CreateFileW(u"C:\\none\\a.dat", access), nullptr);
    EXPECT_EQ(LastError(), 3U);
  }
  EXPECT_EQ(files_.CreateFileW(u"C:\\a.dat", kUpdate), nullptr);
  EXPECT_EQ(LastError(), 2U);
  EXPECT_EQ(files_.openings(), 0U);
}

TEST_F(HeadlessFolder, FoldersAreMadeOnceAndHoldFiles) {
  EXPECT_TRUE(files_.CreateDirectoryW(u"C:\\Data"));
  EXPECT_TRUE(files_.IsDirectory(u"c:\\data"));
  EXPECT_FALSE(files_.CreateDirectoryW(u"C:\\DATA"));
  EXPECT_EQ(LastError(), 183U);
  Put(u"C:\\Data\\a.dat", "abc");
  EXPECT_FALSE(files_.CreateDirectoryW(u"C:\\Data\\a.dat"));
  EXPECT_EQ(LastError(), 183U);
}

TEST_F(HeadlessFolder, FolderDoesNotOpenAsAFile) {
  EXPECT_TRUE(files_.CreateDirectoryW(u"C:\\Data"));
  for (const Files::Access access : {kRead, kUpdate, kWrite, kAppend}) {
    platform_.debug.lastError = kUnsetError;
    EXPECT_EQ(files_.CreateFileW(u"C:\\data", access), nullptr);
    EXPECT_EQ(LastError(), 5U);
  }
  EXPECT_FALSE(files_.DeleteFileW(u"C:\\data"));
}

TEST_F(HeadlessFolder, FilePutAtAPathBringsItsFolders) {
  files_.Put(u"C:\\One\\Two\\a.dat", {std::byte{'x'}});
  EXPECT_TRUE(files_.IsDirectory(u"C:\\one"));
  EXPECT_TRUE(files_.IsDirectory(u"C:\\one\\two"));
  EXPECT_FALSE(files_.IsDirectory(u"C:\\one\\two\\a.dat"));
  EXPECT_FALSE(files_.IsDirectory(u"C:\\on"));
  ASSERT_NE(files_.Get(u"c:\\one\\two\\A.DAT"), nullptr);
  EXPECT_EQ(*files_.Get(u"c:\\one\\two\\A.DAT"), HeadlessFiles::Content{std::byte{'x'}});
  EXPECT_EQ(files_.Get(u"C:\\one\\a.dat"), nullptr);
}

TEST_F(HeadlessFolder, AttributesAndSearchesFindFilesAndFolders) {
  files_.Put(u"C:\\Data\\a.dat", {});
  EXPECT_EQ(files_.GetFileAttributesW(u"C:\\data\\A.dat"), 0x80U);
  EXPECT_EQ(files_.GetFileAttributesW(u"C:\\DATA"), 0x10U);
  EXPECT_TRUE(files_.FindFirstFileW(u"C:\\data\\A.dat"));
  EXPECT_TRUE(files_.FindFirstFileW(u"C:\\DATA"));
  EXPECT_EQ(LastError(), kUnsetError);
  EXPECT_EQ(files_.GetFileAttributesW(u"C:\\data\\b.dat"), 0xFFFFFFFFU);
  EXPECT_EQ(LastError(), 2U);
  platform_.debug.lastError = kUnsetError;
  EXPECT_FALSE(files_.FindFirstFileW(u"C:\\data\\b.dat"));
  EXPECT_EQ(LastError(), 2U);
}

TEST_F(HeadlessFolder, SizeIsThatOfTheWholeFile) {
  Put(u"C:\\a.dat", "abcde");
  const FileHandle file = files_.CreateFileW(u"C:\\a.dat", kRead);
  char bytes[2];
  std::uint32_t count = 0;
  EXPECT_TRUE(files_.ReadFile(file, bytes, 2, &count));
  std::uint64_t size = kUnsetSize;
  EXPECT_TRUE(files_.GetFileSizeEx(file, &size));
  EXPECT_EQ(size, 5U);
  platform_.faults.FailOperation("GetFileSizeEx", 1);
  EXPECT_FALSE(files_.GetFileSizeEx(file, &size));
  EXPECT_EQ(size, 0U);
  EXPECT_TRUE(files_.CloseHandle(file));
  EXPECT_FALSE(files_.GetFileSizeEx(file, &size));
  EXPECT_EQ(LastError(), 6U);
}

TEST_F(HeadlessFolder, UpdatingReadsAndWritesInPlace) {
  Put(u"C:\\a.dat", "abcde");
  const FileHandle file = files_.CreateFileW(u"C:\\a.dat", kUpdate);
  char bytes[3] = {'#', '#', '#'};
  std::uint32_t count = 0;
  EXPECT_TRUE(files_.WriteFile(file, "XY", 2, &count));
  EXPECT_TRUE(files_.ReadFile(file, bytes, 2, &count));
  EXPECT_EQ(std::string_view(bytes, 3), "cd#");
  EXPECT_TRUE(files_.CloseHandle(file));
  EXPECT_EQ(Get(u"C:\\a.dat"), "XYcde");
}

TEST_F(HeadlessFolder, AppendingGoesToTheEndThatOthersHaveMoved) {
  const FileHandle first = files_.CreateFileW(u"C:\\a.dat", kAppend);
  const FileHandle second = files_.CreateFileW(u"C:\\a.dat", kAppend);
  char byte = '#';
  std::uint32_t count = 0;
  EXPECT_TRUE(files_.WriteFile(first, "ab", 2, &count));
  EXPECT_TRUE(files_.WriteFile(second, "cd", 2, &count));
  EXPECT_TRUE(files_.WriteFile(first, "e", 1, &count));
  EXPECT_FALSE(files_.ReadFile(first, &byte, 1, &count));
  EXPECT_EQ(LastError(), 5U);
  EXPECT_TRUE(files_.CloseHandle(first));
  EXPECT_TRUE(files_.CloseHandle(second));
  EXPECT_EQ(Get(u"C:\\a.dat"), "abcde");
}

TEST_F(HeadlessFolder, FileOpenTwiceIsOneFile) {
  const FileHandle writer = files_.CreateFileW(u"C:\\a.dat", kWrite);
  const FileHandle reader = files_.CreateFileW(u"C:\\A.DAT", kRead);
  char bytes[3] = {'#', '#', '#'};
  std::uint32_t count = 0;
  EXPECT_TRUE(files_.WriteFile(writer, "ab", 2, &count));
  EXPECT_TRUE(files_.ReadFile(reader, bytes, 3, &count));
  EXPECT_EQ(std::string_view(bytes, 3), "ab#");
  const FileHandle again = files_.CreateFileW(u"C:\\a.dat", kWrite);  // cuts it for all
  EXPECT_TRUE(files_.ReadFile(reader, bytes, 3, &count));
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(files_.openFiles(), 3U);
  for (const FileHandle file : {writer, reader, again}) {
    EXPECT_TRUE(files_.CloseHandle(file));
  }
}

TEST_F(HeadlessFolder, ReadOnlyFolderIsReadAndNeitherWrittenNorMade) {
  files_.Put(u"C:\\Data\\a.dat", {std::byte{'x'}});
  files_.MakeReadOnly(u"C:\\data");
  for (const Files::Access access : {kUpdate, kWrite, kAppend}) {
    platform_.debug.lastError = kUnsetError;
    EXPECT_EQ(files_.CreateFileW(u"C:\\Data\\a.dat", access), nullptr);
    EXPECT_EQ(LastError(), 5U);
  }
  EXPECT_EQ(files_.CreateFileW(u"C:\\Data\\b.dat", kWrite), nullptr);
  EXPECT_FALSE(files_.DeleteFileW(u"C:\\Data\\a.dat"));
  EXPECT_EQ(LastError(), 5U);
  EXPECT_FALSE(files_.CreateDirectoryW(u"C:\\Data\\sub"));
  EXPECT_EQ(LastError(), 5U);
  EXPECT_EQ(Get(u"C:\\Data\\a.dat"), "x");
  Put(u"C:\\Database", "a neighbour whose name begins alike");
}

TEST_F(HeadlessFolder, FullDiskTakesWhatFitsAndFails) {
  files_.freeBytes = 5;
  const FileHandle file = files_.CreateFileW(u"C:\\a.dat", kWrite);
  std::uint32_t written = kUnsetSize;
  EXPECT_TRUE(files_.WriteFile(file, "abc", 3, &written));
  EXPECT_EQ(written, 3U);
  EXPECT_FALSE(files_.WriteFile(file, "def", 3, &written));
  EXPECT_EQ(written, 2U);
  EXPECT_EQ(LastError(), 112U);
  EXPECT_FALSE(files_.WriteFile(file, "g", 1, &written));
  EXPECT_EQ(written, 0U);
  EXPECT_TRUE(files_.CloseHandle(file));
  EXPECT_EQ(Get(u"C:\\a.dat"), "abcde");
}

struct IniCase {
  const char* name;
  const char* text;
  std::u16string value;
};

class HeadlessIni : public Headless, public testing::WithParamInterface<IniCase> {};

INSTANTIATE_TEST_SUITE_P(
    Files, HeadlessIni,
    testing::Values(IniCase{"Value", "[S]\r\nKey=value\r\n", u"value"},
                    IniCase{"WithoutALastLineEnd", "[S]\nKey=value", u"value"},
                    IniCase{"OtherLetterCase", "[s]\r\nKEY=Value\r\n", u"Value"},
                    IniCase{"EmptyValue", "[S]\r\nKey=\r\n", u""},
                    IniCase{"ValueWithEquals", "[S]\r\nKey=a=b\r\n", u"a=b"},
                    IniCase{"FirstOfTwo", "[S]\r\nKey=a\r\nKey=b\r\n", u"a"},
                    IniCase{"OtherSection", "[T]\r\nKey=value\r\n", u"fallback"},
                    IniCase{"SectionEnded", "[S]\r\n[T]\r\nKey=value\r\n", u"fallback"},
                    IniCase{"OtherKey", "[S]\r\nKeys=value\r\n", u"fallback"},
                    IniCase{"EmptyFile", "", u"fallback"}),
    test::CaseName());

TEST_P(HeadlessIni, GivesTheValueOrTheFallback) {
  const auto bytes = std::as_bytes(std::span(std::string_view(GetParam().text)));
  platform_.files.Put(u"C:\\d\\a.ini", {bytes.begin(), bytes.end()});
  char16_t text[16];
  std::ranges::fill(text, u'#');
  EXPECT_EQ(platform_.files.GetPrivateProfileStringW(u"S", u"Key", u"fallback", text, 16,
                                                     u"C:\\d\\\\A.ini"),
            GetParam().value.size());
  EXPECT_EQ(std::u16string(text), GetParam().value);
}

TEST_F(Headless, IniValueIsCutToItsBuffer) {
  constexpr std::string_view kText = "[S]\r\nKey=value\r\n";
  const auto bytes = std::as_bytes(std::span(kText));
  platform_.files.Put(u"C:\\a.ini", {bytes.begin(), bytes.end()});
  char16_t text[4] = {u'#', u'#', u'#', u'#'};
  const auto read = [&](std::uint32_t units) {
    return platform_.files.GetPrivateProfileStringW(u"S", u"Key", u"", text, units, u"C:\\a.ini");
  };
  EXPECT_EQ(read(0), 0U);
  EXPECT_EQ(text[0], u'#');
  EXPECT_EQ(read(3), 2U);
  EXPECT_EQ(std::u16string(text), u"va");
  EXPECT_EQ(text[3], u'#');
}

TEST_F(Headless, IniFileThatIsMissingOrFailsGivesTheFallback) {
  char16_t text[16];
  const auto read = [&] {
    return platform_.files.GetPrivateProfileStringW(u"S", u"Key", u"none", text, 16, u"C:\\a.ini");
  };
  EXPECT_EQ(read(), 4U);
  EXPECT_EQ(std::u16string(text), u"none");
  constexpr std::string_view kText = "[S]\r\nKey=value\r\n";
  const auto bytes = std::as_bytes(std::span(kText));
  platform_.files.Put(u"C:\\a.ini", {bytes.begin(), bytes.end()});
  platform_.faults.FailOperation("GetPrivateProfileStringW", 1);
  EXPECT_EQ(read(), 4U);
  EXPECT_EQ(read(), 5U);
}

// ---- Printer data and the driver directory ------------------------------------------------------

class HeadlessPrinterData : public Headless {
 protected:
  HeadlessPrinterData() {
    platform_.print.AddPrinter({.name = u"Desk", .driverName = u"Some driver"});
    platform_.print.OpenPrinterW(u"Desk", &printer_, nullptr);
  }
  ~HeadlessPrinterData() override { platform_.print.ClosePrinter(printer_); }

  PrinterHandle printer_ = nullptr;
  std::uint32_t type_ = kUnsetSize;
  std::uint32_t needed_ = kUnsetSize;
};

TEST_F(HeadlessPrinterData, IsReadAsItWasSet) {
  EXPECT_EQ(platform_.print.SetPrinterDataW(printer_, u"Value", 3, "abc", 3), 0U);
  char bytes[5] = "####";
  EXPECT_EQ(platform_.print.GetPrinterDataW(printer_, u"Value", &type_, bytes, 4, &needed_), 0U);
  EXPECT_EQ(std::string(bytes), "abc#");
  EXPECT_EQ(type_, 3U);
  EXPECT_EQ(needed_, 3U);
}

TEST_F(HeadlessPrinterData, ThatIsMissingIsError2) {
  char byte = '#';
  EXPECT_EQ(platform_.print.GetPrinterDataW(printer_, u"Value", &type_, &byte, 1, &needed_), 2U);
  EXPECT_EQ(byte, '#');
}

TEST_F(HeadlessPrinterData, ThatDoesNotFitIsError234AndTellsItsSize) {
  EXPECT_EQ(platform_.print.SetPrinterDataW(printer_, u"Value", 3, "abc", 3), 0U);
  char bytes[3] = {'#', '#', '#'};
  EXPECT_EQ(platform_.print.GetPrinterDataW(printer_, u"Value", &type_, bytes, 2, &needed_), 234U);
  EXPECT_EQ(needed_, 3U);
  EXPECT_EQ(bytes[0], '#');
}

TEST_F(HeadlessPrinterData, FailsByNameAndForAnUnknownPrinter) {
  std::uint32_t word = 1;
  platform_.faults.FailOperation("SetPrinterDataW", 1);
  platform_.faults.FailOperation("GetPrinterDataW", 1);
  EXPECT_EQ(platform_.print.SetPrinterDataW(printer_, u"Value", 4, &word, 4), 6U);
  EXPECT_EQ(platform_.print.SetPrinterDataW(printer_, u"Value", 4, &word, 4), 0U);
  EXPECT_EQ(platform_.print.GetPrinterDataW(printer_, u"Value", &type_, &word, 4, &needed_), 6U);
  EXPECT_EQ(platform_.print.GetPrinterDataW(printer_, u"Value", &type_, &word, 4, &needed_), 0U);
  EXPECT_EQ(platform_.print.SetPrinterDataW(nullptr, u"Value", 4, &word, 4), 6U);
  EXPECT_EQ(platform_.print.GetPrinterDataW(nullptr, u"Value", &type_, &word, 4, &needed_), 6U);
}

TEST_F(Headless, DriverDirectoryTellsItsSizeFirst) {
  platform_.print.driverDirectory = u"C:\\d";
  std::uint32_t needed = kUnsetSize;
  char16_t path[6];
  std::ranges::fill(path, u'#');
  HeadlessPrintSystem& print = platform_.print;
  EXPECT_FALSE(print.GetPrinterDriverDirectoryW(nullptr, nullptr, 1, nullptr, 0, &needed));
  EXPECT_EQ(LastError(), 122U);
  EXPECT_EQ(needed, 10U);
  EXPECT_FALSE(print.GetPrinterDriverDirectoryW(nullptr, nullptr, 1, path, 9, &needed));
  EXPECT_EQ(path[0], u'#');
  EXPECT_TRUE(print.GetPrinterDriverDirectoryW(nullptr, nullptr, 1, path, 10, &needed));
  EXPECT_EQ(std::u16string(path), u"C:\\d");
  EXPECT_EQ(path[5], u'#');
  EXPECT_FALSE(print.GetPrinterDriverDirectoryW(nullptr, nullptr, 2, path, 10, &needed));
  EXPECT_EQ(LastError(), 124U);
  platform_.faults.FailOperation("GetPrinterDriverDirectoryW", 1);
  EXPECT_FALSE(print.GetPrinterDriverDirectoryW(nullptr, nullptr, 1, path, 10, &needed));
}

// ---- The registry -------------------------------------------------------------------------------

class HeadlessKeys : public Headless {
 protected:
  HeadlessRegistry& registry_ = platform_.registry;
  RegistryKey key_ = nullptr;
  std::uint32_t type_ = kUnsetSize;
};

TEST_F(HeadlessKeys, AreMadeAndHoldValuesWithoutRegardToLetterCase) {
  EXPECT_FALSE(registry_.Has(u"S-1\\SOFTWARE\\A"));
  EXPECT_EQ(registry_.RegCreateKeyExW(u"S-1\\SOFTWARE\\A", &key_), 0U);
  EXPECT_EQ(registry_.RegSetValueExW(key_, u"Name", 3, "abc", 3), 0U);
  EXPECT_EQ(registry_.RegCloseKey(key_), 0U);
  EXPECT_TRUE(registry_.Has(u"s-1\\software\\a"));
  EXPECT_EQ(registry_.RegCreateKeyExW(u"s-1\\software\\a", &key_), 0U);
  char bytes[5] = "####";
  std::uint32_t size = 4;
  EXPECT_EQ(registry_.RegQueryValueExW(key_, u"NAME", &type_, bytes, &size), 0U);
  EXPECT_EQ(std::string(bytes), "abc#");
  EXPECT_EQ(type_, 3U);
  EXPECT_EQ(size, 3U);
  EXPECT_EQ(registry_.openKeys(), 1U);
  EXPECT_EQ(registry_.RegCloseKey(key_), 0U);
  EXPECT_EQ(registry_.openKeys(), 0U);
}

TEST_F(HeadlessKeys, TellMissingValuesAndValuesThatDoNotFit) {
  registry_.Values(u"A")[u"name"] = StoredValue::Text(u"abc");
  EXPECT_EQ(registry_.RegCreateKeyExW(u"A", &key_), 0U);
  char16_t text[4] = {u'#', u'#', u'#', u'#'};
  std::uint32_t size = 7;
  EXPECT_EQ(registry_.RegQueryValueExW(key_, u"Name", &type_, text, &size), 234U);
  EXPECT_EQ(size, 8U);
  EXPECT_EQ(text[0], u'#');
  size = 0;
  EXPECT_EQ(registry_.RegQueryValueExW(key_, u"Name", &type_, nullptr, &size), 0U);
  EXPECT_EQ(size, 8U);
  size = 8;
  EXPECT_EQ(registry_.RegQueryValueExW(key_, u"Other", &type_, text, &size), 2U);
  EXPECT_EQ(registry_.RegQueryValueExW(key_, u"Name", &type_, text, &size), 0U);
  EXPECT_EQ(std::u16string(text), u"abc");
  EXPECT_EQ(type_, 1U);
  EXPECT_EQ(registry_.RegCloseKey(key_), 0U);
}

TEST_F(HeadlessKeys, ClosedOrNullKeysAreRefused) {
  EXPECT_EQ(registry_.RegCreateKeyExW(u"A", &key_), 0U);
  EXPECT_EQ(registry_.RegCloseKey(key_), 0U);
  std::uint32_t word = 1;
  std::uint32_t size = 4;
  for (const RegistryKey key : {key_, RegistryKey{}}) {
    EXPECT_EQ(registry_.RegSetValueExW(key, u"Name", 4, &word, 4), 6U);
    EXPECT_EQ(registry_.RegQueryValueExW(key, u"Name", &type_, &word, &size), 6U);
    EXPECT_EQ(registry_.RegCloseKey(key), 6U);
  }
  EXPECT_TRUE(registry_.Values(u"A").empty());
}

TEST_F(HeadlessKeys, FailByName) {
  for (const char* operation : {"RegCreateKeyExW", "RegSetValueExW", "RegQueryValueExW"}) {
    platform_.faults.FailOperation(operation, 1);
  }
  int place = 0;
  key_ = reinterpret_cast<RegistryKey>(&place);
  EXPECT_EQ(registry_.RegCreateKeyExW(u"A", &key_), 5U);
  EXPECT_EQ(key_, nullptr);
  EXPECT_FALSE(registry_.Has(u"A"));
  EXPECT_EQ(registry_.RegCreateKeyExW(u"A", &key_), 0U);
  std::uint32_t word = 1;
  std::uint32_t size = 4;
  EXPECT_NE(registry_.RegSetValueExW(key_, u"Name", 4, &word, 4), 0U);
  EXPECT_TRUE(registry_.Values(u"A").empty());
  EXPECT_EQ(registry_.RegSetValueExW(key_, u"Name", 4, &word, 4), 0U);
  EXPECT_NE(registry_.RegQueryValueExW(key_, u"Name", &type_, &word, &size), 0U);
  EXPECT_EQ(registry_.RegCloseKey(key_), 0U);
}

TEST(HeadlessValue, HasTheBytesOfItsType) {
  EXPECT_EQ(StoredValue::Dword(0x01020304).type, 4U);
  EXPECT_EQ(StoredValue::Dword(0x01020304).bytes,
            (std::vector<std::byte>{std::byte{4}, std::byte{3}, std::byte{2}, std::byte{1}}));
  EXPECT_EQ(StoredValue::Text(u"a").type, 1U);
  EXPECT_EQ(StoredValue::Text(u"a").bytes,
            (std::vector<std::byte>{std::byte{'a'}, std::byte{0}, std::byte{0}, std::byte{0}}));
  EXPECT_EQ(StoredValue::Binary({std::byte{9}}).type, 3U);
}

// ---- Security -----------------------------------------------------------------------------------

class HeadlessUser : public Headless {
 protected:
  HeadlessSecurity& security_ = platform_.security;
  TokenHandle token_ = nullptr;
};

TEST_F(HeadlessUser, IsToldByTheToken) {
  ASSERT_TRUE(security_.OpenProcessToken(&token_));
  EXPECT_EQ(security_.openTokens(), 1U);
  std::uint32_t needed = kUnsetSize;
  EXPECT_FALSE(security_.GetTokenInformation(token_, 1, nullptr, 0, &needed));
  EXPECT_EQ(LastError(), 122U);
  EXPECT_EQ(needed, sizeof(TokenUser));
  TokenUser user = {};
  EXPECT_TRUE(security_.GetTokenInformation(token_, 1, &user, sizeof(user), &needed));
  char16_t* text = nullptr;
  ASSERT_TRUE(security_.ConvertSidToStringSidW(user.Sid, &text));
  EXPECT_EQ(std::u16string(text), u"S-1-5-21-1-2-3-1000");
  EXPECT_EQ(security_.liveTexts(), 1U);
  security_.LocalFree(text);
  security_.LocalFree(nullptr);
  EXPECT_EQ(security_.liveTexts(), 0U);
  EXPECT_TRUE(security_.CloseHandle(token_));
  EXPECT_EQ(security_.openTokens(), 0U);
}

TEST_F(HeadlessUser, WrongQuestionsAreRefused) {
  TokenUser user = {};
  std::uint32_t needed = 0;
  EXPECT_FALSE(security_.GetTokenInformation(nullptr, 1, &user, sizeof(user), &needed));
  EXPECT_EQ(LastError(), 6U);
  ASSERT_TRUE(security_.OpenProcessToken(&token_));
  EXPECT_FALSE(security_.GetTokenInformation(token_, 3, &user, sizeof(user), &needed));
  EXPECT_TRUE(security_.CloseHandle(token_));
  EXPECT_FALSE(security_.CloseHandle(token_));
  EXPECT_FALSE(security_.CloseHandle(nullptr));
  char16_t* text = nullptr;
  EXPECT_FALSE(security_.ConvertSidToStringSidW(&user, &text));
  EXPECT_EQ(LastError(), 87U);
  EXPECT_EQ(text, nullptr);
}

TEST_F(HeadlessUser, NameFitsWithItsTerminator) {
  security_.userName = u"ada";
  char16_t name[5];
  std::ranges::fill(name, u'#');
  std::uint32_t units = 3;
  EXPECT_FALSE(security_.GetUserNameW(name, &units));
  EXPECT_EQ(LastError(), 122U);
  EXPECT_EQ(units, 4U);
  EXPECT_EQ(name[0], u'#');
  EXPECT_TRUE(security_.GetUserNameW(name, &units));
  EXPECT_EQ(units, 4U);
  EXPECT_EQ(std::u16string(name), u"ada");
  EXPECT_EQ(name[4], u'#');
}

TEST_F(HeadlessUser, QuestionsFailByName) {
  for (const char* operation :
       {"OpenProcessToken", "GetTokenInformation", "ConvertSidToStringSidW", "GetUserNameW"}) {
    platform_.faults.FailOperation(operation);
  }
  TokenUser user = {};
  std::uint32_t needed = 0;
  char16_t* text = nullptr;
  char16_t name[8];
  std::uint32_t units = 8;
  EXPECT_FALSE(security_.OpenProcessToken(&token_));
  EXPECT_EQ(token_, nullptr);
  EXPECT_FALSE(security_.GetTokenInformation(token_, 1, &user, sizeof(user), &needed));
  EXPECT_FALSE(security_.ConvertSidToStringSidW(security_.userSid.data(), &text));
  EXPECT_FALSE(security_.GetUserNameW(name, &units));
  EXPECT_EQ(security_.openTokens(), 0U);
}

// ---- Shell and boxes ----------------------------------------------------------------------------

TEST_F(Headless, ShellTellsTheTwoFoldersItKnows) {
  HeadlessShell& shell = platform_.shell;
  char16_t path[kMaxPathUnits] = u"poison";
  EXPECT_EQ(shell.SHGetFolderPathW(0x1A, path), 0U);
  EXPECT_EQ(std::u16string(path), u"C:\\users\\ada\\AppData\\Roaming");
  EXPECT_EQ(shell.SHGetFolderPathW(0x801A, path), 0U);
  EXPECT_EQ(std::u16string(path), u"C:\\users\\ada\\AppData\\Roaming");
  EXPECT_EQ(shell.SHGetFolderPathW(37, path), 0U);
  EXPECT_EQ(std::u16string(path), u"C:\\windows\\system32");
  EXPECT_EQ(shell.SHGetFolderPathW(5, path), 0x80004005U);
  EXPECT_EQ(std::u16string(path), u"");
  platform_.faults.FailOperation("SHGetFolderPathW", 1);
  EXPECT_EQ(shell.SHGetFolderPathW(37, path), 0x80004005U);
}

TEST_F(Headless, ShellKeepsWhatItStartedAndShowed) {
  HeadlessShell& shell = platform_.shell;
  int place = 0;
  const auto window = reinterpret_cast<WindowHandle>(&place);
  EXPECT_TRUE(shell.ShellExecuteW(u"runas", u"C:\\a.exe", u"-x", kSwShowNormal));
  EXPECT_NE(shell.HtmlHelpW(window, u"C:\\a.chm", 15, 7), nullptr);
  platform_.faults.FailOperation("ShellExecuteW", 1);
  platform_.faults.FailOperation("HtmlHelpW", 1);
  EXPECT_FALSE(shell.ShellExecuteW(u"open", u"C:\\b.exe", u"", kSwHide));
  EXPECT_EQ(shell.HtmlHelpW(window, u"C:\\b.chm", 15, 8), nullptr);
  EXPECT_TRUE(shell.ShellExecuteW(nullptr, u"C:\\c.exe", u"", kSwHide));
  EXPECT_TRUE(shell.ShellExecuteW(u"", u"C:\\c.exe", u"", kSwHide));
  EXPECT_EQ(shell.started,
            (std::vector<HeadlessShell::Started>{{u"runas", u"C:\\a.exe", u"-x"},
                                                 {std::nullopt, u"C:\\c.exe", u"", kSwHide},
                                                 {u"", u"C:\\c.exe", u"", kSwHide}}));
  ASSERT_EQ(shell.help.size(), 1U);
  EXPECT_EQ(shell.help[0].window, window);
  EXPECT_EQ(shell.help[0].file, u"C:\\a.chm");
  EXPECT_EQ(shell.help[0].command, 15U);
  EXPECT_EQ(shell.help[0].data, 7U);
}

TEST_F(Headless, BoxesAreKeptAndAnsweredWithOk) {
  int place = 0;
  const auto window = reinterpret_cast<WindowHandle>(&place);
  EXPECT_EQ(platform_.windows.MessageBoxW(window, u"text", u"caption", 0x30), 1);
  ASSERT_EQ(platform_.windows.boxes.size(), 1U);
  EXPECT_EQ(platform_.windows.boxes[0].owner, window);
  EXPECT_EQ(platform_.windows.boxes[0].text, u"text");
  EXPECT_EQ(platform_.windows.boxes[0].caption, u"caption");
  EXPECT_EQ(platform_.windows.boxes[0].style, 0x30U);
}

// ---- What a driver sets, finds and asks for -----------------------------------------------------

std::vector<std::byte> SomeRecord(std::uint16_t extra) {
  PublicDevmode record = {};
  record.dmSize = sizeof(record);
  record.dmDriverExtra = extra;
  std::vector<std::byte> bytes(sizeof(record) + extra, std::byte{7});
  std::memcpy(bytes.data(), &record, sizeof(record));
  return bytes;
}

TEST_F(Headless, PrinterTakesItsNameAndRecordFromLevelTwo) {
  HeadlessPrinter& desk = platform_.print.AddPrinter({.name = u"Desk", .driverName = u"Driver"});
  PrinterHandle printer = nullptr;
  ASSERT_TRUE(platform_.print.OpenPrinterW(u"Desk", &printer, nullptr));
  std::vector<std::byte> record = SomeRecord(30);
  char16_t name[] = u"Renamed";
  PrinterInfo2 info = {};
  info.pPrinterName = name;
  info.pDevMode = reinterpret_cast<PublicDevmode*>(record.data());
  EXPECT_TRUE(platform_.print.SetPrinterW(printer, 2, &info, 0));
  EXPECT_EQ(desk.name, u"Renamed");
  EXPECT_EQ(desk.devmode, record);
  info = {};  // what isn't given stays
  EXPECT_TRUE(platform_.print.SetPrinterW(printer, 2, &info, 0));
  EXPECT_EQ(desk.name, u"Renamed");
  EXPECT_EQ(desk.devmode, record);
  platform_.print.ClosePrinter(printer);
}

TEST_F(Headless, PrinterGivesAndTakesItsRecordAtLevelEight) {
  HeadlessPrinter& desk = platform_.print.AddPrinter({.name = u"Desk", .driverName = u"Driver"});
  desk.devmode = SomeRecord(10);
  PrinterHandle printer = nullptr;
  ASSERT_TRUE(platform_.print.OpenPrinterW(u"Desk", &printer, nullptr));
  std::uint32_t needed = 0;
  EXPECT_FALSE(platform_.print.GetPrinterW(printer, 8, nullptr, 0, &needed));
  EXPECT_EQ(LastError(), 122U);
  EXPECT_EQ(needed, 8 + 230U);
  std::vector<std::uint64_t> block((needed + 7) / 8);
  ASSERT_TRUE(platform_.print.GetPrinterW(printer, 8, block.data(), needed, &needed));
  auto* info = reinterpret_cast<PrinterInfo8*>(block.data());
  EXPECT_EQ(std::memcmp(info->pDevMode, desk.devmode.data(), 230), 0);
  std::vector<std::byte> record = SomeRecord(0);
  info->pDevMode = reinterpret_cast<PublicDevmode*>(record.data());
  EXPECT_TRUE(platform_.print.SetPrinterW(printer, 8, info, 0));
  EXPECT_EQ(desk.devmode, record);
  EXPECT_EQ(desk.name, u"Desk");
  platform_.print.ClosePrinter(printer);
}

TEST_F(Headless, PrinterIsNotSetInOtherWays) {
  platform_.print.AddPrinter({.name = u"Desk", .driverName = u"Driver"});
  PrinterHandle printer = nullptr;
  ASSERT_TRUE(platform_.print.OpenPrinterW(u"Desk", &printer, nullptr));
  PrinterInfo2 info = {};
  for (const std::uint32_t level : {0U, 3U, 9U}) {
    EXPECT_FALSE(platform_.print.SetPrinterW(printer, level, &info, 0));
    EXPECT_EQ(LastError(), 124U);
  }
  EXPECT_FALSE(platform_.print.SetPrinterW(printer, 2, nullptr, 0));
  EXPECT_EQ(LastError(), 87U);
  EXPECT_FALSE(platform_.print.SetPrinterW(nullptr, 2, &info, 0));
  EXPECT_EQ(LastError(), 6U);
  platform_.faults.FailOperation("SetPrinterW", 1);
  EXPECT_FALSE(platform_.print.SetPrinterW(printer, 2, &info, 0));
  EXPECT_TRUE(platform_.print.SetPrinterW(printer, 2, &info, 0));
  platform_.print.ClosePrinter(printer);
}

void SomeFunction() {}

TEST_F(Headless, LibraryExportsAndHoldsWhatItWasGiven) {
  auto resources = std::make_shared<Resources>();
  resources->dialogs[111] = {};
  resources->entries.insert({24, 2});
  platform_.modules.InstallResources(u"C:\\lib.dll", resources);
  platform_.modules.Export(u"C:\\LIB.dll", "Known", &SomeFunction);
  platform_.modules.Export(u"C:\\bare.dll", "Known", &SomeFunction);
  const ModuleHandle module = platform_.modules.LoadLibraryW(u"C:\\lib.dll");
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(platform_.modules.GetProcAddress(module, "Known"), &SomeFunction);
  EXPECT_EQ(platform_.modules.GetProcAddress(module, "known"), nullptr);
  EXPECT_EQ(LastError(), 127U);
  EXPECT_EQ(platform_.modules.GetProcAddress(nullptr, "Known"), nullptr);
  EXPECT_TRUE(platform_.modules.FindResourceW(module, 111, kResourceDialog));
  EXPECT_TRUE(platform_.modules.FindResourceW(module, 2, 24));
  EXPECT_FALSE(platform_.modules.FindResourceW(module, 112, kResourceDialog));
  EXPECT_EQ(LastError(), 1814U);
  EXPECT_FALSE(platform_.modules.FindResourceW(nullptr, 111, kResourceDialog));
  EXPECT_NE(platform_.modules.LoadLibraryW(u"C:\\bare.dll"), nullptr);
  platform_.faults.FailOperation("FindResourceW", 1);
  platform_.faults.FailOperation("GetProcAddress", 1);
  EXPECT_FALSE(platform_.modules.FindResourceW(module, 111, kResourceDialog));
  EXPECT_EQ(platform_.modules.GetProcAddress(module, "Known"), nullptr);
}

TEST_F(HeadlessUser, GroupsAreToldByTheToken) {
  security_.groups = {{u"S-1-1-0", 7}, {u"S-1-5-32-544", 16}};
  ASSERT_TRUE(security_.OpenProcessToken(&token_));
  std::uint32_t needed = 0;
  EXPECT_FALSE(security_.GetTokenInformation(token_, kTokenGroups, nullptr, 0, &needed));
  EXPECT_EQ(LastError(), 122U);
  ASSERT_EQ(needed, 40U);
  alignas(TokenGroups) std::byte block[40];
  ASSERT_TRUE(security_.GetTokenInformation(token_, kTokenGroups, block, 40, &needed));
  const auto* groups = reinterpret_cast<const TokenGroups*>(block);
  ASSERT_EQ(groups->GroupCount, 2U);
  const auto* rows = static_cast<const TokenUser*>(groups->Groups);
  EXPECT_EQ(rows[1].Attributes, 16U);
  char16_t* text = nullptr;
  ASSERT_TRUE(security_.ConvertSidToStringSidW(rows[1].Sid, &text));
  EXPECT_EQ(std::u16string(text), u"S-1-5-32-544");
  security_.LocalFree(text);
  EXPECT_TRUE(security_.CloseHandle(token_));
}

TEST_F(Headless, ThreadAndVersionAreSettable) {
  platform_.system.threadId = 513;
  EXPECT_EQ(platform_.lists.system.GetCurrentThreadId(), 513U);
  EXPECT_EQ(platform_.lists.system.GetMajorVersion(), 10U);
  platform_.system.majorVersion = 6;
  EXPECT_EQ(platform_.lists.system.GetMajorVersion(), 6U);
}

TEST_F(Headless, ActivationContextsAreMadeOfLoadedLibrariesAndCounted) {
  platform_.modules.Install(u"C:\\lib.dll");
  const ModuleHandle module = platform_.modules.LoadLibraryW(u"C:\\lib.dll");
  const ActivationContext context = platform_.system.CreateActCtxW(module, 2);
  EXPECT_NE(context, ActivationContext::kNone);
  EXPECT_EQ(platform_.system.liveContexts(), 1U);
  EXPECT_EQ(platform_.system.CreateActCtxW(nullptr, 3), ActivationContext::kNone);
  platform_.faults.FailOperation("CreateActCtxW", 1);
  EXPECT_EQ(platform_.system.CreateActCtxW(module, 2), ActivationContext::kNone);
  platform_.system.ReleaseActCtx(context);
  EXPECT_EQ(platform_.system.liveContexts(), 0U);
  EXPECT_EQ(platform_.system.requestedManifests, (std::vector<std::uint32_t>{2, 3, 2}));
}

// ---- The trace ----------------------------------------------------------------------------------

TEST_F(Headless, OperationsThatCanFailAreTracedByTheirOwnNames) {
  platform_.print.AddPrinter({.name = u"Desk", .driverName = u"Some driver"});
  platform_.modules.Install(u"C:\\lib.dll");
  platform_.faults.StartTrace();
  PrinterHandle printer = nullptr;
  std::uint32_t count = 0;
  char16_t text[8];
  char byte = 0;
  void* block = platform_.memory.HeapAlloc(1);
  platform_.memory.HeapFree(block);
  platform_.locale.GetLocaleInfoW(0x400, 5, text, 8);
  platform_.print.OpenPrinterW(u"Desk", &printer, nullptr);
  platform_.print.GetPrinterW(printer, 2, nullptr, 0, &count);
  platform_.print.GetPrinterDriverW(printer, nullptr, 2, nullptr, 0, &count);
  platform_.print.ClosePrinter(printer);
  const ModuleHandle module = platform_.modules.LoadLibraryW(u"C:\\lib.dll");
  platform_.modules.GetModuleFileNameW(module, text, 8);
  platform_.modules.LoadStringW(module, 1, text, 8);
  platform_.modules.FreeLibrary(module);
  const FileHandle file =
      platform_.files.CreateFileW(u"C:\\a", Files::Access::kCreateAlwaysForWriting);
  platform_.files.WriteFile(file, &byte, 1, &count);
  platform_.files.ReadFile(file, &byte, 1, &count);
  platform_.files.CloseHandle(file);
  platform_.files.DeleteFileW(u"C:\\a");
  const std::vector<std::string> expected = {
      "HeapAlloc",         "GetLocaleInfoW", "OpenPrinterW",       "GetPrinterW",
      "GetPrinterDriverW", "LoadLibraryW",   "GetModuleFileNameW", "LoadStringW",
      "CreateFileW",       "WriteFile",      "ReadFile",           "DeleteFileW",
  };
  EXPECT_EQ(platform_.faults.trace(), expected);
}

}  // namespace
}  // namespace ostrel::headless
