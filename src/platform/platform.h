// The lists of operations through which the logic reaches the world.
//
// Every operation bears the platform's own name and keeps its contract: arguments, results and the
// last error are those that the platform documents for the function of that name. Two sets stand
// behind the lists: win32/ passes each call on to the system, headless/ answers from memory and can
// be made to fail at any call. The logic holds no other door to the outside.
#pragma once

#include "platform/print_types.h"

#include <cstddef>
#include <cstdint>

namespace ostrel {

// Printers, drivers and what the spooler keeps for them (winspool.drv).
class PrintSystem {
 public:
  virtual bool OpenPrinterW(const char16_t* name, PrinterHandle* printer,
                            const PrinterDefaults* defaults) = 0;
  virtual bool ClosePrinter(PrinterHandle printer) = 0;
  virtual bool GetPrinterW(PrinterHandle printer, std::uint32_t level, void* buffer,
                           std::uint32_t sizeBytes, std::uint32_t* neededBytes) = 0;
  virtual bool GetPrinterDriverW(PrinterHandle printer, const char16_t* environment,
                                 std::uint32_t level, void* buffer, std::uint32_t sizeBytes,
                                 std::uint32_t* neededBytes) = 0;

 protected:
  ~PrintSystem() = default;
};

// The user's locale and language (kernel32).
class Locale {
 public:
  // Result: units written with the terminator, 0 when the text can't be had.
  virtual int GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                             int units) = 0;
  virtual std::uint16_t GetUserDefaultUILanguage() = 0;

 protected:
  ~Locale() = default;
};

// Libraries and the strings in them (kernel32, user32).
class Modules {
 public:
  // Result: units written without the terminator, `units` when the path was cut, 0 on failure.
  virtual std::uint32_t GetModuleFileNameW(ModuleHandle module, char16_t* path,
                                           std::uint32_t units) = 0;
  virtual ModuleHandle LoadLibraryW(const char16_t* path) = 0;
  virtual bool FreeLibrary(ModuleHandle module) = 0;
  // Result: units written without the terminator; a longer text is cut to fit; 0 when there is
  // none.
  virtual int LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int units) = 0;

 protected:
  ~Modules() = default;
};

// The file system (kernel32). What the platform takes as flags stands here as one choice a caller
// has: open what exists for reading, or make the file anew for writing.
class Files {
 public:
  enum class Access { kOpenExistingForReading, kCreateAlwaysForWriting };

  // Result: null when the file can't be opened.
  virtual FileHandle CreateFileW(const char16_t* path, Access access) = 0;
  virtual bool ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                        std::uint32_t* readBytes) = 0;
  virtual bool WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                         std::uint32_t* writtenBytes) = 0;
  virtual bool CloseHandle(FileHandle file) = 0;
  virtual bool DeleteFileW(const char16_t* path) = 0;

 protected:
  ~Files() = default;
};

// Memory whose lack an operation must survive (kernel32).
class Memory {
 public:
  // A block of `sizeBytes` zero bytes, aligned for any type; null when there is none to be had.
  virtual void* HeapAlloc(std::size_t sizeBytes) = 0;
  // Frees a block of HeapAlloc; null is allowed.
  virtual void HeapFree(void* block) = 0;

 protected:
  ~Memory() = default;
};

// Debug lines and the calling thread's last error (kernel32).
class DebugOutput {
 public:
  virtual void OutputDebugStringW(const char16_t* line) = 0;
  virtual std::uint32_t GetLastError() = 0;
  virtual void SetLastError(std::uint32_t code) = 0;

 protected:
  ~DebugOutput() = default;
};

// One platform: a list of each kind. It owns none of them.
struct Platform {
  PrintSystem& print;
  Locale& locale;
  Modules& modules;
  Files& files;
  Memory& memory;
  DebugOutput& debug;
};

}  // namespace ostrel
