// The lists of this platform, one class each, without any state of their own.
#pragma once

#include "platform/platform.h"

namespace ostrel::win32 {

class SystemPrintSystem final : public PrintSystem {
 public:
  bool OpenPrinterW(const char16_t* name, PrinterHandle* printer,
                    const PrinterDefaults* defaults) override;
  bool ClosePrinter(PrinterHandle printer) override;
  bool GetPrinterW(PrinterHandle printer, std::uint32_t level, void* buffer,
                   std::uint32_t sizeBytes, std::uint32_t* neededBytes) override;
  bool GetPrinterDriverW(PrinterHandle printer, const char16_t* environment, std::uint32_t level,
                         void* buffer, std::uint32_t sizeBytes,
                         std::uint32_t* neededBytes) override;
};

class SystemLocale final : public Locale {
 public:
  int GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                     int units) override;
  std::uint16_t GetUserDefaultUILanguage() override;
};

class SystemModules final : public Modules {
 public:
  std::uint32_t GetModuleFileNameW(ModuleHandle module, char16_t* path,
                                   std::uint32_t units) override;
  ModuleHandle LoadLibraryW(const char16_t* path) override;
  bool FreeLibrary(ModuleHandle module) override;
  int LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int units) override;
};

class SystemFiles final : public Files {
 public:
  FileHandle CreateFileW(const char16_t* path, Access access) override;
  bool ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                std::uint32_t* readBytes) override;
  bool WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                 std::uint32_t* writtenBytes) override;
  bool CloseHandle(FileHandle file) override;
  bool DeleteFileW(const char16_t* path) override;
};

class SystemMemory final : public Memory {
 public:
  void* HeapAlloc(std::size_t sizeBytes) override;
  void HeapFree(void* block) override;
};

class SystemDebugOutput final : public DebugOutput {
 public:
  void OutputDebugStringW(const char16_t* line) override;
  std::uint32_t GetLastError() override;
  void SetLastError(std::uint32_t code) override;
};

}  // namespace ostrel::win32
