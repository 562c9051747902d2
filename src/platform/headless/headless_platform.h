// The in-memory platform: printers, libraries, files, memory, locale, windows, drawing and debug
// output, all settable by a test, all able to fail at any call. Stateful: what was opened must be
// closed, what was allocated must be freed, and both can be asked for.
#pragma once

#include "platform/headless/fault_plan.h"
#include "platform/headless/headless_graphics.h"
#include "platform/headless/headless_windows.h"
#include "platform/headless/resource_file.h"
#include "platform/platform.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
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
  // Of formats, the letters yyyy, MM, M, dd, d, HH, h, mm, ss and tt are known.
  int GetDateFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                     const char16_t* format, char16_t* buffer, int units) override;
  int GetTimeFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                     const char16_t* format, char16_t* buffer, int units) override;
  // Knows the letters of ASCII and of Latin 1.
  void CharUpperW(char16_t* text) override;
  // For texts of ASCII letters, whatever the code page; others count as Latin 1.
  int MultiByteToWideChar(std::uint32_t codePage, const char* text, char16_t* buffer,
                          int units) override;

  std::u16string country = u"1";            // LOCALE_ICOUNTRY
  std::uint16_t uiLanguage = 0x0409;        // LANGID: English, United States
  std::u16string dateFormat = u"M/d/yyyy";  // the locale's own
  std::u16string timeFormat = u"h:mm:ss tt";

 private:
  int HandOut(std::u16string_view text, char16_t* buffer, int units);
  int HandOutTime(const char* operation, bool isTime, std::u16string_view format,
                  const SystemTime& time, char16_t* buffer, int units);

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
};

// A typed value of the registry or of the printer data.
struct StoredValue {
  std::uint32_t type = 0;
  std::vector<std::byte> bytes = {};

  static StoredValue Dword(std::uint32_t number);
  static StoredValue Text(std::u16string_view text);  // REG_SZ, with its terminator
  static StoredValue Binary(std::vector<std::byte> bytes) { return {kRegBinary, std::move(bytes)}; }
  bool operator==(const StoredValue&) const = default;
};
using StoredValues = std::map<std::u16string, StoredValue>;

// What the spooler knows of one printer.
struct HeadlessPrinter {
  std::u16string name;
  std::u16string driverName;
  std::u16string port = u"LPT1:";
  std::u16string driverPath = u"ostrelPCL6ui.dll";
  std::vector<std::byte> devmode = {};  // the stored record; empty for none
  StoredValues data = {};               // the printer data
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
  bool GetPrinterDriverDirectoryW(const char16_t* server, const char16_t* environment,
                                  std::uint32_t level, void* buffer, std::uint32_t sizeBytes,
                                  std::uint32_t* neededBytes) override;
  bool GetPrinterDriverDirectoryA(const char* server, const char* environment, std::uint32_t level,
                                  void* buffer, std::uint32_t sizeBytes,
                                  std::uint32_t* neededBytes) override;
  std::uint32_t GetPrinterDataW(PrinterHandle printer, const char16_t* name, std::uint32_t* type,
                                void* data, std::uint32_t sizeBytes,
                                std::uint32_t* neededBytes) override;
  std::uint32_t SetPrinterDataW(PrinterHandle printer, const char16_t* name, std::uint32_t type,
                                const void* data, std::uint32_t sizeBytes) override;
  // Level 2 takes over the name and the stored record, level 8 the stored record alone.
  bool SetPrinterW(PrinterHandle printer, std::uint32_t level, const void* buffer,
                   std::uint32_t command) override;

  // Adds a printer; the reference stays good until the platform ends.
  HeadlessPrinter& AddPrinter(HeadlessPrinter printer);

  std::size_t openPrinters() const { return handles_.size(); }
  // The access that the last OpenPrinterW asked for; 0 without defaults.
  std::uint32_t lastDesiredAccess() const { return lastDesiredAccess_; }
  // Makes the printer's and the driver's description longer by this many units between each two
  // calls.
  void GrowDescriptionBy(std::size_t units) { growth_ = units; }

  std::u16string driverDirectory = u"C:\\windows\\system32\\spool\\drivers\\x64";

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
  bool FindResourceW(ModuleHandle module, std::uint32_t id, std::uint32_t type) override;
  ExportedFunction GetProcAddress(ModuleHandle module, const char* name) override;

  // Puts a library with these strings at a path, in place of one that may be there.
  void Install(std::u16string_view path, StringTable strings = {});
  // The same with all that a compiled resource file holds.
  void InstallResources(std::u16string_view path, std::shared_ptr<const Resources> resources);
  // Adds an export to the library at a path; installs one when there is none.
  void Export(std::u16string_view path, std::string_view name, ExportedFunction function);
  void Remove(std::u16string_view path);

  // What a loaded library holds; null for a handle that isn't one.
  const Resources* ResourcesOf(ModuleHandle module) const;

  // Loads that have not been freed, over all libraries and of one.
  std::size_t loads() const;
  std::size_t loadsOf(std::u16string_view path) const;
  // Ids that LoadStringW was asked for, in order.
  std::vector<std::uint32_t> requestedStrings;

 private:
  struct Library {
    std::u16string path;
    std::shared_ptr<const Resources> resources;
    std::map<std::string, ExportedFunction, std::less<>> exports;
    std::size_t loads = 0;
  };
  Library* Find(ModuleHandle module) const;
  bool Fail(std::uint32_t code);

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  // By lower-case path. Libraries that were loaded stay known by handle after their removal.
  std::map<std::u16string, std::shared_ptr<Library>> installed_;
  std::unordered_map<ModuleHandle, std::shared_ptr<Library>> known_;
};

// A folder tree in memory, whose folders exist when they were made or hold a file.
class HeadlessFiles final : public Files {
 public:
  using Content = std::vector<std::byte>;

  HeadlessFiles(FaultPlan& faults, HeadlessDebugOutput& debug) : faults_(faults), debug_(debug) {}

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

  // Puts a file at a path, and reads it back; null when there is none.
  void Put(std::u16string_view path, Content content);
  const Content* Get(std::u16string_view path) const;
  // Files below the path can be read, and neither written nor made.
  void MakeReadOnly(std::u16string_view path);
  // Bytes that may still be written before the disk is full.
  std::optional<std::size_t> freeBytes;

  std::size_t openFiles() const { return open_.size(); }
  // Files opened since the start, of whatever kind of access.
  std::size_t openings() const { return openings_; }
  bool IsDirectory(std::u16string_view path) const;

 private:
  struct OpenFile {
    std::shared_ptr<Content> content;
    std::size_t place = 0;
    Access access;
  };
  OpenFile* Find(FileHandle file);
  bool Fail(std::uint32_t code);
  bool IsReadOnly(const std::u16string& key) const;

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  // By lower-case path.
  std::map<std::u16string, std::shared_ptr<Content>> files_;
  std::set<std::u16string> directories_;
  std::set<std::u16string> readOnly_;
  std::map<std::uintptr_t, OpenFile> open_;
  std::uintptr_t nextHandle_ = 0x2000;
  std::size_t openings_ = 0;
};

// The registry below HKEY_USERS. Keys and values are found without regard to the case of letters.
class HeadlessRegistry final : public Registry {
 public:
  explicit HeadlessRegistry(FaultPlan& faults) : faults_(faults) {}

  std::uint32_t RegCreateKeyExW(const char16_t* path, RegistryKey* key) override;
  std::uint32_t RegQueryValueExW(RegistryKey key, const char16_t* name, std::uint32_t* type,
                                 void* data, std::uint32_t* sizeBytes) override;
  std::uint32_t RegSetValueExW(RegistryKey key, const char16_t* name, std::uint32_t type,
                               const void* data, std::uint32_t sizeBytes) override;
  std::uint32_t RegCloseKey(RegistryKey key) override;

  // The values of a key, by lower-case name; made when it is missing.
  StoredValues& Values(std::u16string_view path);
  bool Has(std::u16string_view path) const;
  std::size_t openKeys() const { return open_.size(); }

 private:
  StoredValues* Find(RegistryKey key);

  FaultPlan& faults_;
  std::map<std::u16string, StoredValues> keys_;  // by lower-case path
  std::map<std::uintptr_t, StoredValues*> open_;
  std::uintptr_t nextHandle_ = 0x3000;
};

class HeadlessSecurity final : public Security {
 public:
  HeadlessSecurity(FaultPlan& faults, HeadlessDebugOutput& debug)
      : faults_(faults), debug_(debug) {}

  bool OpenProcessToken(TokenHandle* token) override;
  bool GetTokenInformation(TokenHandle token, std::uint32_t informationClass, void* buffer,
                           std::uint32_t sizeBytes, std::uint32_t* neededBytes) override;
  bool CloseHandle(TokenHandle token) override;
  bool ConvertSidToStringSidW(void* sid, char16_t** text) override;
  void LocalFree(void* block) override;
  bool GetUserNameW(char16_t* buffer, std::uint32_t* units) override;

  std::u16string userName = u"ada";
  std::u16string userSid = u"S-1-5-21-1-2-3-1000";

  // The groups of the token. They must not change between a question and the use of its answer.
  struct Group {
    std::u16string sid;
    std::uint32_t attributes;
  };
  std::vector<Group> groups;

  std::size_t openTokens() const { return openTokens_; }
  std::size_t liveTexts() const { return liveTexts_; }

 private:
  const std::u16string* FindSid(const void* sid) const;
  bool AnswerToken(const void* answer, std::size_t answerBytes, void* buffer,
                   std::uint32_t sizeBytes, std::uint32_t* neededBytes);

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  std::size_t openTokens_ = 0;
  std::size_t liveTexts_ = 0;
};

class HeadlessShell final : public Shell {
 public:
  explicit HeadlessShell(FaultPlan& faults) : faults_(faults) {}

  std::uint32_t SHGetFolderPathW(std::uint32_t folder, char16_t* path) override;
  bool ShellExecuteW(const char16_t* verb, const char16_t* file, const char16_t* parameters,
                     std::int32_t showCommand) override;
  WindowHandle HtmlHelpW(WindowHandle window, const char16_t* file, std::uint32_t command,
                         std::uintptr_t data) override;

  struct Started {
    std::u16string verb;
    std::u16string file;
    std::u16string parameters;
    std::int32_t showCommand = kSwShowNormal;
    bool operator==(const Started&) const = default;
  };
  struct HelpCall {
    WindowHandle window;
    std::u16string file;
    std::uint32_t command;
    std::uintptr_t data;
  };
  std::u16string applicationData = u"C:\\users\\ada\\AppData\\Roaming";
  std::u16string systemFolder = u"C:\\windows\\system32";
  std::vector<Started> started;
  std::vector<HelpCall> help;

 private:
  FaultPlan& faults_;
};

// The calling thread, the system's version and activation contexts.
class HeadlessSystem final : public System {
 public:
  HeadlessSystem(FaultPlan& faults, HeadlessDebugOutput& debug, HeadlessModules& modules,
                 const HeadlessFiles& files)
      : faults_(faults), debug_(debug), modules_(modules), files_(files) {}

  std::uint32_t GetCurrentThreadId() override { return threadId; }
  std::uint32_t GetMajorVersion() override { return majorVersion; }
  // Any library that is loaded has the manifest.
  ActivationContext CreateActCtxW(ModuleHandle module, std::uint32_t manifestId) override;
  void ReleaseActCtx(ActivationContext context) override;
  bool CreateProcessW(const char16_t* application, char16_t* commandLine,
                      std::uint32_t creationFlags, const char16_t* windowTitle,
                      ProcessInformation* information) override;
  bool CloseHandle(ProcessHandle handle) override;
  void GetLocalTime(SystemTime* time) override { *time = localTime; }
  void Sleep(std::uint32_t duration_ms) override;
  bool GetComputerNameW(char16_t* buffer, std::uint32_t* units) override;
  std::uint32_t GetSystemDirectoryW(char16_t* path, std::uint32_t units) override;
  // To the system's directory, the root, or one of the in-memory file system.
  bool SetCurrentDirectoryW(const char16_t* path) override;

  // Programs that were started, in order.
  struct StartedProcess {
    std::u16string application;
    std::u16string commandLine;
    std::uint32_t creationFlags;
    std::u16string windowTitle;
    bool operator==(const StartedProcess&) const = default;
  };
  std::vector<StartedProcess> startedProcesses;
  std::size_t liveProcessHandles() const { return processHandles_.size(); }
  // Handles of a started program, of its process and of its first thread.
  static constexpr std::size_t kHandlesPerProcess = 2;

  std::uint32_t threadId = 0x1234;
  std::uint32_t majorVersion = 10;
  SystemTime localTime = {2026, 3, 1, 9, 14, 5, 7, 0};  // Monday, 9 March 2026, 14:05:07
  std::u16string computerName = u"DESK-7";
  std::u16string systemDirectory = u"C:\\windows\\system32";
  std::u16string currentDirectory = u"C:\\";
  // Waits that were asked for; none of them takes any time. `onSleep` plays what happens meanwhile.
  std::vector<std::uint32_t> sleeps_ms;
  std::function<void()> onSleep;

  std::size_t liveContexts() const { return contexts_.size(); }
  // The manifests that contexts were asked for, in order.
  std::vector<std::uint32_t> requestedManifests;

 private:
  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  HeadlessModules& modules_;
  const HeadlessFiles& files_;
  std::set<ActivationContext> contexts_;
  std::uintptr_t nextContext_ = 0x7000;
  std::set<ProcessHandle> processHandles_;
  std::uintptr_t nextProcess_ = 0x9000;
};

struct HeadlessPlatform {
  FaultPlan faults;
  HeadlessDebugOutput debug;
  HeadlessMemory memory{faults};
  HeadlessLocale locale{faults, debug};
  HeadlessPrintSystem print{faults, debug};
  HeadlessModules modules{faults, debug};
  HeadlessFiles files{faults, debug};
  HeadlessRegistry registry{faults};
  HeadlessSecurity security{faults, debug};
  HeadlessShell shell{faults};
  HeadlessGraphics graphics{faults, debug, modules, files};
  HeadlessWindows windows{faults, debug, modules, graphics};
  HeadlessSystem system{faults, debug, modules, files};
  Platform lists{print, locale,  modules,  files,  registry, security,
                 shell, windows, graphics, system, memory,   debug};
};

}  // namespace ostrel::headless
