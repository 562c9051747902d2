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
  bool GetPrinterDriverDirectoryW(const char16_t* server, const char16_t* environment,
                                  std::uint32_t level, void* buffer, std::uint32_t sizeBytes,
                                  std::uint32_t* neededBytes) override;
  std::uint32_t GetPrinterDataW(PrinterHandle printer, const char16_t* name, std::uint32_t* type,
                                void* data, std::uint32_t sizeBytes,
                                std::uint32_t* neededBytes) override;
  std::uint32_t SetPrinterDataW(PrinterHandle printer, const char16_t* name, std::uint32_t type,
                                const void* data, std::uint32_t sizeBytes) override;
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
  std::uint32_t GetFileAttributesW(const char16_t* path) override;
  bool FindFirstFileW(const char16_t* path) override;
  FileHandle CreateFileW(const char16_t* path, Access access) override;
  bool GetFileSizeEx(FileHandle file, std::uint64_t* sizeBytes) override;
  bool ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                std::uint32_t* readBytes) override;
  bool WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                 std::uint32_t* writtenBytes) override;
  bool SetEndOfFile(FileHandle file) override;
  bool CloseHandle(FileHandle file) override;
  bool DeleteFileW(const char16_t* path) override;
  bool CreateDirectoryW(const char16_t* path) override;
  std::uint32_t GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                         const char16_t* fallback, char16_t* buffer,
                                         std::uint32_t units, const char16_t* path) override;
};

class SystemRegistry final : public Registry {
 public:
  std::uint32_t RegCreateKeyExW(const char16_t* path, RegistryKey* key) override;
  std::uint32_t RegQueryValueExW(RegistryKey key, const char16_t* name, std::uint32_t* type,
                                 void* data, std::uint32_t* sizeBytes) override;
  std::uint32_t RegSetValueExW(RegistryKey key, const char16_t* name, std::uint32_t type,
                               const void* data, std::uint32_t sizeBytes) override;
  std::uint32_t RegCloseKey(RegistryKey key) override;
};

class SystemSecurity final : public Security {
 public:
  bool OpenProcessToken(TokenHandle* token) override;
  bool GetTokenInformation(TokenHandle token, std::uint32_t informationClass, void* buffer,
                           std::uint32_t sizeBytes, std::uint32_t* neededBytes) override;
  bool CloseHandle(TokenHandle token) override;
  bool ConvertSidToStringSidW(void* sid, char16_t** text) override;
  void LocalFree(void* block) override;
  bool GetUserNameW(char16_t* buffer, std::uint32_t* units) override;
};

class SystemShell final : public Shell {
 public:
  std::uint32_t SHGetFolderPathW(std::uint32_t folder, char16_t* path) override;
  bool ShellExecuteW(const char16_t* verb, const char16_t* file,
                     const char16_t* parameters) override;
  WindowHandle HtmlHelpW(WindowHandle window, const char16_t* file, std::uint32_t command,
                         std::uintptr_t data) override;
};

class SystemWindows final : public Windows {
 public:
  int MessageBoxW(WindowHandle owner, const char16_t* text, const char16_t* caption,
                  std::uint32_t style) override;
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
