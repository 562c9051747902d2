// The file system, from kernel32.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>

namespace ostrel::win32 {
namespace {

// Other processes of the same user read and write the same files, without any lock between them.
constexpr DWORD kShareWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE;

}  // namespace

FileHandle SystemFiles::CreateFileW(const char16_t* path, Access access) {
  const bool reading = access == Access::kOpenExistingForReading;
  const HANDLE file =
      ::CreateFileW(Wide(path), reading ? GENERIC_READ : GENERIC_WRITE, kShareWithAll, nullptr,
                    reading ? OPEN_EXISTING : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  return file == INVALID_HANDLE_VALUE ? nullptr : ToFile(file);
}

bool SystemFiles::ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                           std::uint32_t* readBytes) {
  DWORD done = 0;
  const BOOL good = ::ReadFile(file, buffer, sizeBytes, &done, nullptr);
  *readBytes = done;
  return good != FALSE;
}

bool SystemFiles::WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                            std::uint32_t* writtenBytes) {
  DWORD done = 0;
  const BOOL good = ::WriteFile(file, data, sizeBytes, &done, nullptr);
  *writtenBytes = done;
  return good != FALSE;
}

bool SystemFiles::CloseHandle(FileHandle file) {
  return ::CloseHandle(file) != FALSE;
}

bool SystemFiles::DeleteFileW(const char16_t* path) {
  return ::DeleteFileW(Wide(path)) != FALSE;
}

}  // namespace ostrel::win32
