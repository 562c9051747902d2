#include "copied_library.h"

#include "print_system_setup.h"

namespace ostrel::print_system {
namespace {

// A folder that no earlier test of this process used: a library that was loaded once may stay.
std::wstring NewFolder() {
  wchar_t temporary[MAX_PATH] = {};
  wchar_t unique[MAX_PATH] = {};
  if (GetTempPathW(MAX_PATH, temporary) == 0 ||
      GetTempFileNameW(temporary, L"drv", 0, unique) == 0) {
    ThrowLastError("GetTempFileNameW");
  }
  DeleteFileW(unique);  // the file that holds the name's place
  if (CreateDirectoryW(unique, nullptr) == FALSE) {
    ThrowLastError("CreateDirectoryW");
  }
  return unique;
}

}  // namespace

CopiedLibrary::CopiedLibrary(const std::vector<std::wstring>& files)
    : folder_(NewFolder()), files_(files) {
  for (const std::wstring& file : files_) {
    if (CopyFileW((ProgramFolder() + L"\\" + file).c_str(), PathOf(file).c_str(), TRUE) == FALSE) {
      ThrowLastError("CopyFileW");
    }
  }
  driver_ = std::make_unique<DriverExports>(PathOf(kDriverLibraryFile));
}

CopiedLibrary::~CopiedLibrary() {
  driver_.reset();
  for (const std::wstring& file : files_) {
    DeleteFileW(PathOf(file).c_str());
  }
  RemoveDirectoryW(folder_.c_str());
}

}  // namespace ostrel::print_system
