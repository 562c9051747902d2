#include "copied_library.h"

#include "print_system_setup.h"

#include <string_view>

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

void WriteText(const std::wstring& path, std::string_view text) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  if (file == INVALID_HANDLE_VALUE ||
      WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) == FALSE) {
    ThrowLastError("writing an ini file");
  }
  CloseHandle(file);
}

}  // namespace

CopiedLibrary::CopiedLibrary(const std::vector<std::wstring>& files, const char* ini,
                             const std::wstring& libraryName)
    : folder_(NewFolder()) {
  for (const std::wstring& file : files) {
    const std::wstring& name = file == kDriverLibraryFile ? libraryName : file;
    if (CopyFileW((ProgramFolder() + L"\\" + file).c_str(), PathOf(name).c_str(), TRUE) == FALSE) {
      ThrowLastError("CopyFileW");
    }
    files_.push_back(name);
  }
  if (ini != nullptr) {
    WriteText(PathOf(kConfigFile), ini);
    files_.push_back(kConfigFile);
  }
  driver_ = std::make_unique<DriverExports>(PathOf(libraryName));
}

void CopiedLibrary::Add(const std::wstring& from, const std::wstring& name) {
  if (CopyFileW(from.c_str(), PathOf(name).c_str(), TRUE) == FALSE) {
    ThrowLastError("CopyFileW");
  }
  files_.push_back(name);
}

CopiedLibrary::~CopiedLibrary() {
  driver_.reset();
  for (const std::wstring& file : files_) {
    DeleteFileW(PathOf(file).c_str());
  }
  RemoveDirectoryW(folder_.c_str());
}

}  // namespace ostrel::print_system
