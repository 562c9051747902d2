// Stands before the in-memory platform of a test world and writes down every call with what makes
// it tell apart, frees and closes included, so that an order of calls can be compared as data.
#pragma once

#include "core/ui_context.h"
#include "support/test_world.h"

#include <algorithm>
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

class CallRecorder final : public PrintSystem,
                           public Locale,
                           public Modules,
                           public Memory,
                           public DebugOutput {
 public:
  explicit CallRecorder(TestWorld& world)
      : world_(world), lists_{*this, *this, *this, world.platform.files, *this, *this} {
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

  TestWorld& world_;
  Platform lists_;
};

}  // namespace ostrel::test
