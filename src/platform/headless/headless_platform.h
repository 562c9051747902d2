// The in-memory platform: printers, libraries, files, memory, locale and debug output, all settable
// by a test, all able to fail at any call. Stateful: what was opened must be closed, what was
// allocated must be freed, and both can be asked for.
#pragma once

#include "platform/headless/fault_plan.h"
#include "platform/headless/resource_file.h"
#include "platform/platform.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ostrel::headless {

// Debug lines and the last error. The other lists report their failures here.
class HeadlessDebugOutput final : public DebugOutput {
 public:
  void OutputDebugStringW(const char16_t* line) override { lines.emplace_back(line); }
  std::uint32_t GetLastError() override { return lastError; }
  void SetLastError(std::uint32_t code) override { lastError = code; }

  std::vector<std::u16string> lines;
  std::uint32_t lastError = kErrorSuccess;
};

class HeadlessMemory final : public Memory {
 public:
  explicit HeadlessMemory(FaultPlan& faults) : faults_(faults) {}
  // Blocks that are still live are leaks, and left to a leak checker to find.
  ~HeadlessMemory() = default;
  HeadlessMemory(const HeadlessMemory&) = delete;
  HeadlessMemory& operator=(const HeadlessMemory&) = delete;

  void* HeapAlloc(std::size_t sizeBytes) override;
  void HeapFree(void* block) override;

  std::size_t liveBlocks() const { return live_.size(); }

 private:
  FaultPlan& faults_;
  std::unordered_set<void*> live_;
};

class HeadlessLocale final : public Locale {
 public:
  explicit HeadlessLocale(FaultPlan& faults, HeadlessDebugOutput& debug)
      : faults_(faults), debug_(debug) {}

  int GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                     int units) override;
  std::uint16_t GetUserDefaultUILanguage() override { return uiLanguage; }

  std::u16string country = u"1";      // LOCALE_ICOUNTRY
  std::uint16_t uiLanguage = 0x0409;  // LANGID: English, United States

 private:
  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
};

// What the spooler knows of one printer.
struct HeadlessPrinter {
  std::u16string name;
  std::u16string driverName;
  std::u16string port = u"LPT1:";
  std::u16string driverPath = u"ostrelPCL6ui.dll";
  std::vector<std::byte> devmode = {};  // the stored record; empty for none
  bool describes = true;                // false: the printer opens, but tells nothing of itself
};

class HeadlessPrintSystem final : public PrintSystem {
 public:
  HeadlessPrintSystem(FaultPlan& faults, HeadlessDebugOutput& debug)
      : faults_(faults), debug_(debug) {}

  bool OpenPrinterW(const char16_t* name, PrinterHandle* printer,
                    const PrinterDefaults* defaults) override;
  bool ClosePrinter(PrinterHandle printer) override;
  bool GetPrinterW(PrinterHandle printer, std::uint32_t level, void* buffer,
                   std::uint32_t sizeBytes, std::uint32_t* neededBytes) override;
  bool GetPrinterDriverW(PrinterHandle printer, const char16_t* environment, std::uint32_t level,
                         void* buffer, std::uint32_t sizeBytes,
                         std::uint32_t* neededBytes) override;

  // Adds a printer; the reference stays good until the platform ends.
  HeadlessPrinter& AddPrinter(HeadlessPrinter printer);

  std::size_t openPrinters() const { return handles_.size(); }
  // The access that the last OpenPrinterW asked for; 0 without defaults.
  std::uint32_t lastDesiredAccess() const { return lastDesiredAccess_; }
  // Makes the printer's and the driver's description longer by this many units between each two
  // calls.
  void GrowDescriptionBy(std::size_t units) { growth_ = units; }

 private:
  HeadlessPrinter* Find(PrinterHandle printer);
  bool Fail(std::uint32_t code);

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  std::vector<std::unique_ptr<HeadlessPrinter>> printers_;
  std::map<std::uintptr_t, HeadlessPrinter*> handles_;
  std::uintptr_t nextHandle_ = 0x1000;
  std::uint32_t lastDesiredAccess_ = 0;
  std::size_t growth_ = 0;
};

class HeadlessModules final : public Modules {
 public:
  HeadlessModules(FaultPlan& faults, HeadlessDebugOutput& debug) : faults_(faults), debug_(debug) {}

  std::uint32_t GetModuleFileNameW(ModuleHandle module, char16_t* path,
                                   std::uint32_t units) override;
  ModuleHandle LoadLibraryW(const char16_t* path) override;
  bool FreeLibrary(ModuleHandle module) override;
  int LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int units) override;

  // Puts a library with these strings at a path, in place of one that may be there.
  void Install(std::u16string_view path, StringTable strings = {});
  void Remove(std::u16string_view path);

  // Loads that have not been freed, over all libraries and of one.
  std::size_t loads() const;
  std::size_t loadsOf(std::u16string_view path) const;
  // Ids that LoadStringW was asked for, in order.
  std::vector<std::uint32_t> requestedStrings;

 private:
  struct Library {
    std::u16string path;
    StringTable strings;
    std::size_t loads = 0;
  };
  Library* Find(ModuleHandle module);
  bool Fail(std::uint32_t code);

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  // By lower-case path. Libraries that were loaded stay known by handle after their removal.
  std::map<std::u16string, std::shared_ptr<Library>> installed_;
  std::unordered_map<ModuleHandle, std::shared_ptr<Library>> known_;
};

class HeadlessFiles final : public Files {
 public:
  HeadlessFiles(FaultPlan& faults, HeadlessDebugOutput& debug) : faults_(faults), debug_(debug) {}

  FileHandle CreateFileW(const char16_t* path, Access access) override;
  bool ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                std::uint32_t* readBytes) override;
  bool WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                 std::uint32_t* writtenBytes) override;
  bool CloseHandle(FileHandle file) override;
  bool DeleteFileW(const char16_t* path) override;

  std::size_t openFiles() const { return open_.size(); }

 private:
  using Content = std::vector<std::byte>;
  struct OpenFile {
    std::shared_ptr<Content> content;
    std::size_t place = 0;
    Access access;
  };
  OpenFile* Find(FileHandle file);
  bool Fail(std::uint32_t code);

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  std::map<std::u16string, std::shared_ptr<Content>> files_;  // by lower-case path
  std::map<std::uintptr_t, OpenFile> open_;
  std::uintptr_t nextHandle_ = 0x2000;
};

struct HeadlessPlatform {
  FaultPlan faults;
  HeadlessDebugOutput debug;
  HeadlessMemory memory{faults};
  HeadlessLocale locale{faults, debug};
  HeadlessPrintSystem print{faults, debug};
  HeadlessModules modules{faults, debug};
  HeadlessFiles files{faults, debug};
  Platform lists{print, locale, modules, files, memory, debug};
};

}  // namespace ostrel::headless
