// The driver's own logic in a program's process: to make and to read what the driver keeps, in the
// form in which it keeps it, without a library's entry points in between.
#pragma once

#include "core/process_state.h"
#include "platform/win32/native_types.h"
#include "platform/win32/win32_platform.h"

#include <windows.h>

#include <string>

namespace ostrel::print_system {

// The words of a driver library that lies at this path, in force for the length of a scope.
class DriverWords {
 public:
  explicit DriverWords(const std::wstring& libraryPath)
      : library_(LoadLibraryW(libraryPath.c_str())) {
    process_.platform = &win32::SystemPlatform();
    process_.LibraryModule = win32::ToModule(library_);
  }
  ~DriverWords() { FreeLibrary(library_); }
  DriverWords(const DriverWords&) = delete;
  DriverWords& operator=(const DriverWords&) = delete;

  const ProcessState& words() const { return process_; }

 private:
  HMODULE library_;
  ProcessState process_;
  ScopedProcessState scope_{process_};
};

}  // namespace ostrel::print_system
