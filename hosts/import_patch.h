// A function that one library of this process takes from another, exchanged for a test's own.
#pragma once

#include <windows.h>

namespace ostrel::print_system {

// Exchanges it for the length of the object's life. Throws std::runtime_error when the library
// doesn't take such a function by its name.
class ImportPatch {
 public:
  ImportPatch(const wchar_t* user, const char* library, const char* function, FARPROC replacement);
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

 private:
  void Put(FARPROC function);

  FARPROC* place_;
  FARPROC before_;
};

}  // namespace ostrel::print_system
