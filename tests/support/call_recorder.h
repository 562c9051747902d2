// Stands before the in-memory platform of a test world and writes down every call with what makes
// it tell apart, frees and closes included, so that an order of calls can be compared as data.
#pragma once

#include "core/ui_context.h"
#include "support/test_world.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

// The units of a text as characters; anything beyond ASCII shows as "?".
inline std::string Ascii(std::u16string_view text) {
  std::string narrow;
  for (const char16_t unit : text) {
    narrow.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
  }
  return narrow;
}

// The last component of a path.
inline std::string FileNameOf(std::u16string_view path) {
  const std::size_t separator = path.rfind(u'\\');
  return Ascii(separator == std::u16string_view::npos ? path : path.substr(separator + 1));
}

using Calls = std::vector<std::string>;

// Several orders of calls, one after the other.
inline Calls InOrder(std::initializer_list<Calls> parts) {
  Calls whole;
  for (const Calls& part : parts) {
    whole.insert(whole.end(), part.begin(), part.end());
  }
  return whole;
}

// The calls of one touch of the per-user store: who the user is, then the key below his own.
// `operation` and `value` are what is done with the open key.
inline Calls UserStoreCalls(const std::string& operation, const std::string& value,
                            std::u16string_view subkey) {
  return {
      "OpenProcessToken",
      "GetTokenInformation, size",
      "HeapAlloc block",
      "GetTokenInformation, block",
      "ConvertSidToStringSidW",
      "LocalFree",
      "CloseHandle token",
      "HeapFree",
      "RegCreateKeyExW S-1-5-21-1-2-3-1000\\SOFTWARE\\OstrelUPD\\" + Ascii(subkey),
      operation + " " + value,
      "RegCloseKey",
  };
}
inline Calls UserRead(const std::string& value, std::u16string_view subkey) {
  return UserStoreCalls("RegQueryValueExW", value, subkey);
}
inline Calls UserWrite(const std::string& value, std::u16string_view subkey) {
  return UserStoreCalls("RegSetValueExW", value, subkey);
}

class CallRecorder final : public PrintSystem,
                           public Locale,
                           public Modules,
                           public Registry,
                           public Security,
                           public Memory,
                           public DebugOutput {
 public:
  explicit CallRecorder(TestWorld& world)
      : world_(world),
        lists_{*this,
               *this,
               *this,
               world.platform.files,
               *this,
               *this,
               world.platform.shell,
               world.platform.windows,
               world.platform.graphics,
               world.platform.system,
               *this,
               *this} {
    world_.process.platform = &lists_;
  }
  ~CallRecorder() { world_.process.platform = &world_.platform.lists; }
  CallRecorder(const CallRecorder&) = delete;
  CallRecorder& operator=(const CallRecorder&) = delete;

  std::vector<std::string> calls;

  // The calls without those of some operations.
  std::vector<std::string> CallsExcept(std::span<const std::string_view> operations) const {
    std::vector<std::string> kept;
    std::ranges::copy_if(calls, std::back_inserter(kept), [&](const std::string& call) {
      return std::ranges::none_of(
          operations, [&](std::string_view operation) { return call.starts_with(operation); });
    });
    return kept;
  }

  // ---- Print system
  bool OpenPrinterW(const char16_t* name, PrinterHandle* printer,
                    const PrinterDefaults* defaults) override {
    calls.push_back("OpenPrinterW " + Ascii(name));
    return world_.platform.print.OpenPrinterW(name, printer, defaults);
  }
  bool ClosePrinter(PrinterHandle printer) override {
    calls.emplace_back("ClosePrinter");
    return world_.platform.print.ClosePrinter(printer);
  }
  bool GetPrinterW(PrinterHandle printer, std::uint32_t level, void* buffer,
                   std::uint32_t sizeBytes, std::uint32_t* neededBytes) override {
    calls.push_back("GetPrinterW level " + std::to_string(level) + AskedForWhat(buffer));
    return world_.platform.print.GetPrinterW(printer, level, buffer, sizeBytes, neededBytes);
  }
  bool GetPrinterDriverW(PrinterHandle printer, const char16_t* environment, std::uint32_t level,
                         void* buffer, std::uint32_t sizeBytes,
                         std::uint32_t* neededBytes) override {
    calls.push_back("GetPrinterDriverW level " + std::to_string(level) + AskedForWhat(buffer));
    return world_.platform.print.GetPrinterDriverW(printer, environment, level, buffer, sizeBytes,
                                                   neededBytes);
  }

  bool GetPrinterDriverDirectoryW(const char16_t* server, const char16_t* environment,
                                  std::uint32_t level, void* buffer, std::uint32_t sizeBytes,
                                  std::uint32_t* neededBytes) override {
    calls.push_back("GetPrinterDriverDirectoryW level " + std::to_string(level));
    return world_.platform.print.GetPrinterDriverDirectoryW(server, environment, level, buffer,
                                                            sizeBytes, neededBytes);
  }
  bool GetPrinterDriverDirectoryA(const char* server, const char* environment, std::uint32_t level,
                                  void* buffer, std::uint32_t sizeBytes,
                                  std::uint32_t* neededBytes) override {
    calls.push_back("GetPrinterDriverDirectoryA level " + std::to_string(level));
    return world_.platform.print.GetPrinterDriverDirectoryA(server, environment, level, buffer,
                                                            sizeBytes, neededBytes);
  }
  std::uint32_t GetPrinterDataW(PrinterHandle printer, const char16_t* name, std::uint32_t* type,
                                void* data, std::uint32_t sizeBytes,
                                std::uint32_t* neededBytes) override {
    calls.push_back("GetPrinterDataW " + Ascii(name));
    return world_.platform.print.GetPrinterDataW(printer, name, type, data, sizeBytes, neededBytes);
  }
  std::uint32_t SetPrinterDataW(PrinterHandle printer, const char16_t* name, std::uint32_t type,
                                const void* data, std::uint32_t sizeBytes) override {
    calls.push_back("SetPrinterDataW " + Ascii(name));
    return world_.platform.print.SetPrinterDataW(printer, name, type, data, sizeBytes);
  }
  bool SetPrinterW(PrinterHandle printer, std::uint32_t level, const void* buffer,
                   std::uint32_t command) override {
    calls.push_back("SetPrinterW level " + std::to_string(level));
    return world_.platform.print.SetPrinterW(printer, level, buffer, command);
  }

  // ---- Locale
  int GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                     int units) override {
    calls.push_back("GetLocaleInfoW type " + std::to_string(type));
    return world_.platform.locale.GetLocaleInfoW(locale, type, buffer, units);
  }
  std::uint16_t GetUserDefaultUILanguage() override {
    calls.emplace_back("GetUserDefaultUILanguage");
    return world_.platform.locale.GetUserDefaultUILanguage();
  }
  int GetDateFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                     const char16_t* format, char16_t* buffer, int units) override {
    calls.push_back(TimeCall("GetDateFormatW", locale, flags, format));
    return world_.platform.locale.GetDateFormatW(locale, flags, time, format, buffer, units);
  }
  int GetTimeFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                     const char16_t* format, char16_t* buffer, int units) override {
    calls.push_back(TimeCall("GetTimeFormatW", locale, flags, format));
    return world_.platform.locale.GetTimeFormatW(locale, flags, time, format, buffer, units);
  }
  void CharUpperW(char16_t* text) override {
    calls.push_back("CharUpperW " + Ascii(text));
    world_.platform.locale.CharUpperW(text);
  }
  int MultiByteToWideChar(std::uint32_t codePage, const char* text, char16_t* buffer,
                          int units) override {
    calls.push_back("MultiByteToWideChar code page " + std::to_string(codePage));
    return world_.platform.locale.MultiByteToWideChar(codePage, text, buffer, units);
  }

  // ---- Modules
  std::uint32_t GetModuleFileNameW(ModuleHandle module, char16_t* path,
                                   std::uint32_t units) override {
    calls.emplace_back("GetModuleFileNameW");
    return world_.platform.modules.GetModuleFileNameW(module, path, units);
  }
  ModuleHandle LoadLibraryW(const char16_t* path) override {
    calls.push_back("LoadLibraryW " + FileNameOf(path));
    paths.emplace_back(path);
    return world_.platform.modules.LoadLibraryW(path);
  }
  bool FreeLibrary(ModuleHandle module) override {
    calls.emplace_back("FreeLibrary");
    return world_.platform.modules.FreeLibrary(module);
  }
  int LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int units) override {
    calls.push_back("LoadStringW " + std::to_string(id));
    return world_.platform.modules.LoadStringW(module, id, buffer, units);
  }
  bool FindResourceW(ModuleHandle module, std::uint32_t id, std::uint32_t type) override {
    calls.push_back("FindResourceW " + std::to_string(type) + ' ' + std::to_string(id));
    return world_.platform.modules.FindResourceW(module, id, type);
  }
  ExportedFunction GetProcAddress(ModuleHandle module, const char* name) override {
    calls.push_back("GetProcAddress " + std::string(name));
    return world_.platform.modules.GetProcAddress(module, name);
  }

  // ---- Registry
  std::uint32_t RegCreateKeyExW(const char16_t* path, RegistryKey* key) override {
    calls.push_back("RegCreateKeyExW " + Ascii(path));
    return world_.platform.registry.RegCreateKeyExW(path, key);
  }
  std::uint32_t RegQueryValueExW(RegistryKey key, const char16_t* name, std::uint32_t* type,
                                 void* data, std::uint32_t* sizeBytes) override {
    calls.push_back("RegQueryValueExW " + Ascii(name));
    return world_.platform.registry.RegQueryValueExW(key, name, type, data, sizeBytes);
  }
  std::uint32_t RegSetValueExW(RegistryKey key, const char16_t* name, std::uint32_t type,
                               const void* data, std::uint32_t sizeBytes) override {
    calls.push_back("RegSetValueExW " + Ascii(name));
    return world_.platform.registry.RegSetValueExW(key, name, type, data, sizeBytes);
  }
  std::uint32_t RegCloseKey(RegistryKey key) override {
    calls.emplace_back("RegCloseKey");
    return world_.platform.registry.RegCloseKey(key);
  }

  // ---- Security
  bool OpenProcessToken(TokenHandle* token) override {
    calls.emplace_back("OpenProcessToken");
    return world_.platform.security.OpenProcessToken(token);
  }
  bool GetTokenInformation(TokenHandle token, std::uint32_t informationClass, void* buffer,
                           std::uint32_t sizeBytes, std::uint32_t* neededBytes) override {
    calls.push_back(std::string("GetTokenInformation") + AskedForWhat(buffer));
    return world_.platform.security.GetTokenInformation(token, informationClass, buffer, sizeBytes,
                                                        neededBytes);
  }
  bool CloseHandle(TokenHandle token) override {
    calls.emplace_back("CloseHandle token");
    return world_.platform.security.CloseHandle(token);
  }
  bool ConvertSidToStringSidW(void* sid, char16_t** text) override {
    calls.emplace_back("ConvertSidToStringSidW");
    return world_.platform.security.ConvertSidToStringSidW(sid, text);
  }
  void LocalFree(void* block) override {
    calls.emplace_back("LocalFree");
    world_.platform.security.LocalFree(block);
  }
  bool GetUserNameW(char16_t* buffer, std::uint32_t* units) override {
    calls.emplace_back("GetUserNameW");
    return world_.platform.security.GetUserNameW(buffer, units);
  }

  // ---- Memory
  void* HeapAlloc(std::size_t sizeBytes) override {
    calls.push_back(std::string("HeapAlloc ") +
                    (sizeBytes == sizeof(UIContext) ? "context" : "block"));
    return world_.platform.memory.HeapAlloc(sizeBytes);
  }
  void HeapFree(void* block) override {
    calls.emplace_back("HeapFree");
    world_.platform.memory.HeapFree(block);
  }

  // ---- Debug lines
  void OutputDebugStringW(const char16_t* line) override {
    calls.push_back("OutputDebugStringW " + Ascii(line));
    world_.platform.debug.OutputDebugStringW(line);
  }
  std::uint32_t GetLastError() override { return world_.platform.debug.GetLastError(); }
  void SetLastError(std::uint32_t code) override { world_.platform.debug.SetLastError(code); }

  // The whole paths of LoadLibraryW.
  std::vector<std::u16string> paths;

 private:
  static const char* AskedForWhat(const void* buffer) {
    return buffer == nullptr ? ", size" : ", block";
  }
  static std::string TimeCall(const char* name, std::uint32_t locale, std::uint32_t flags,
                              const char16_t* format) {
    return std::string(name) + " locale " + std::to_string(locale) + ", flags " +
           std::to_string(flags) + ", " + (format == nullptr ? "no format" : Ascii(format));
  }

  TestWorld& world_;
  Platform lists_;
};

}  // namespace ostrel::test
