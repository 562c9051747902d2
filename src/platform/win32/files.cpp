// The file system, from kernel32.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>

namespace ostrel::win32 {
namespace {

// Other processes of the same user read and write the same files, without any lock between them.
constexpr DWORD kShareWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct Opening {
  DWORD access;
  DWORD disposition;
};

const Opening& OpeningOf(Files::Access access) {
  static constexpr Opening kReading = {GENERIC_READ, OPEN_EXISTING};
  static constexpr Opening kUpdate = {GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING};
  static constexpr Opening kWriting = {GENERIC_WRITE, CREATE_ALWAYS};
  static constexpr Opening kAppending = {FILE_APPEND_DATA, OPEN_ALWAYS};
  switch (access) {
    case Files::Access::kOpenExistingForUpdate:
      return kUpdate;
    case Files::Access::kCreateAlwaysForWriting:
      return kWriting;
    case Files::Access::kOpenAlwaysForAppending:
      return kAppending;
    default:
      return kReading;
  }
}

}  // namespace

std::uint32_t SystemFiles::GetFileAttributesW(const char16_t* path) {
  return ::GetFileAttributesW(Wide(path));
}

bool SystemFiles::FindFirstFileW(const char16_t* path) {
  WIN32_FIND_DATAW found;
  const HANDLE search = ::FindFirstFileW(Wide(path), &found);
  return search != INVALID_HANDLE_VALUE && ::FindClose(search) != FALSE;
}

FileHandle SystemFiles::CreateFileW(const char16_t* path, Access access) {
  const Opening& opening = OpeningOf(access);
  const HANDLE file = ::CreateFileW(Wide(path), opening.access, kShareWithAll, nullptr,
                                    opening.disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  return file == INVALID_HANDLE_VALUE ? nullptr : ToFile(file);
}

bool SystemFiles::GetFileSizeEx(FileHandle file, std::uint64_t* sizeBytes) {
  LARGE_INTEGER size = {};
  const BOOL good = ::GetFileSizeEx(file, &size);
  *sizeBytes = static_cast<std::uint64_t>(size.QuadPart);
  return good != FALSE;
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

bool SystemFiles::SetEndOfFile(FileHandle file) {
  return ::SetEndOfFile(file) != FALSE;
}

bool SystemFiles::CloseHandle(FileHandle file) {
  return ::CloseHandle(file) != FALSE;
}

bool SystemFiles::DeleteFileW(const char16_t* path) {
  return ::DeleteFileW(Wide(path)) != FALSE;
}

bool SystemFiles::CreateDirectoryW(const char16_t* path) {
  return ::CreateDirectoryW(Wide(path), nullptr) != FALSE;
}

std::uint32_t SystemFiles::GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                                    const char16_t* fallback, char16_t* buffer,
                                                    std::uint32_t units, const char16_t* path) {
  return ::GetPrivateProfileStringW(Wide(section), Wide(key), Wide(fallback), Wide(buffer), units,
                                    Wide(path));
}

}  // namespace ostrel::win32
