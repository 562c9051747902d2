#include "platform/headless/headless_platform.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
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
  EXPECT_NE(platform_.memory.HeapAlloc(1), nullptr);
  EXPECT_EQ(platform_.memory.HeapAlloc(1), nullptr);
  EXPECT_NE(platform_.memory.HeapAlloc(1), nullptr);
  EXPECT_EQ(platform_.memory.liveBlocks(), 2U);  // freed with the platform
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
  EXPECT_EQ(LastError(), 6U);
  EXPECT_FALSE(files_.ReadFile(writer, &byte, 1, &count));
  EXPECT_TRUE(files_.CloseHandle(reader));
  EXPECT_FALSE(files_.ReadFile(reader, &byte, 1, &count));
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
