// The driver's logic over the real platform, in a process of our own, with the application data in
// a folder of the caller's choice.
#pragma once

#include "config/setting_stores.h"
#include "core/process_state.h"
#include "folder_shell.h"
#include "platform/win32/native_types.h"
#include "platform/win32/win32_platform.h"

#include <windows.h>

#include <string>

namespace ostrel::peers {

class WindowsWorld {
 public:
  explicit WindowsWorld(const std::wstring& folder)
      : shell_(std::u16string(folder.begin(), folder.end())) {
    process_.platform = &lists_;
    // The place and the stem of the library are what the logic takes its own names from.
    process_.LibraryModule = win32::ToModule(LoadLibraryW(L"ostrelPCL6ui.dll"));
  }
  WindowsWorld(const WindowsWorld&) = delete;
  WindowsWorld& operator=(const WindowsWorld&) = delete;

  std::wstring settingsPath() {
    char16_t path[kMaxPathUnits];
    GetSettingsFilePath(path);
    return win32::Wide(path);
  }

 private:
  FolderShell shell_;
  Platform& system_ = win32::SystemPlatform();
  Platform lists_ = {.print = system_.print,
                     .locale = system_.locale,
                     .modules = system_.modules,
                     .files = system_.files,
                     .registry = system_.registry,
                     .security = system_.security,
                     .shell = shell_,
                     .windows = system_.windows,
                     .graphics = system_.graphics,
                     .system = system_.system,
                     .memory = system_.memory,
                     .debug = system_.debug};
  ProcessState process_;
  ScopedProcessState scope_{process_};
};

}  // namespace ostrel::peers
