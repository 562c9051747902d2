// The driver's libraries in a folder of a test's own: some left out, or just to start as a process
// that has never used them does.
#pragma once

#include "driver_exports.h"
#include "print_system_setup.h"

#include <memory>
#include <string>
#include <vector>

namespace ostrel::print_system {

// Copies files of the package into a new folder and loads the driver library from there. With `ini`
// its text becomes the driver's ini file; the library may take another name. The folder goes with
// the object.
class CopiedLibrary {
 public:
  explicit CopiedLibrary(const std::vector<std::wstring>& files, const char* ini = nullptr,
                         const std::wstring& libraryName = kDriverLibraryFile);
  ~CopiedLibrary();
  CopiedLibrary(const CopiedLibrary&) = delete;
  CopiedLibrary& operator=(const CopiedLibrary&) = delete;

  const DriverExports* operator->() const { return driver_.get(); }

  // The full path of one of the files.
  std::wstring PathOf(const std::wstring& file) const { return folder_ + L"\\" + file; }

  // Adds a file of any folder under a name of the package.
  void Add(const std::wstring& from, const std::wstring& name);

  // Lets the driver library go, as a process does that has no more use for it.
  void Unload() { driver_.reset(); }

 private:
  std::wstring folder_;
  std::vector<std::wstring> files_;
  std::unique_ptr<DriverExports> driver_;
};

}  // namespace ostrel::print_system
