#include "posix_files.h"

#include "core/text.h"

#include <algorithm>
#include <fcntl.h>
#include <span>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrel::peers {
namespace {

std::string NativePath(const char16_t* path) {
  std::string text;
  for (const char16_t unit : CallerText(path)) {
    text += unit == u'\\' ? '/' : static_cast<char>(unit);
  }
  return text;
}

// A handle is a descriptor and one more, so that none is null.
FileHandle ToHandle(int descriptor) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr)
  return reinterpret_cast<FileHandle>(static_cast<std::intptr_t>(descriptor) + 1);
}
int ToDescriptor(FileHandle file) {
  return static_cast<int>(reinterpret_cast<std::intptr_t>(file) - 1);
}

}  // namespace

std::uint32_t PosixFiles::GetFileAttributesW(const char16_t* path) {
  constexpr std::uint32_t kDirectory = 0x10;
  constexpr std::uint32_t kNormal = 0x80;
  struct stat found = {};
  if (stat(NativePath(path).c_str(), &found) != 0) {
    return kInvalidFileAttributes;
  }
  return S_ISDIR(found.st_mode) ? kDirectory : kNormal;
}

bool PosixFiles::FindFirstFileW(const char16_t* path) {
  return GetFileAttributesW(path) != kInvalidFileAttributes;
}

FileHandle PosixFiles::CreateFileW(const char16_t* path, Access access) {
  constexpr mode_t kMode = 0644;
  int flags = O_RDONLY;
  switch (access) {
    case Access::kOpenExistingForReading:
      break;
    case Access::kOpenExistingForUpdate:
      flags = O_RDWR;
      break;
    case Access::kCreateAlwaysForWriting:
      flags = O_WRONLY | O_CREAT | O_TRUNC;
      break;
    case Access::kOpenAlwaysForAppending:
      flags = O_WRONLY | O_CREAT | O_APPEND;
      break;
  }
  const int descriptor = open(NativePath(path).c_str(), flags | O_CLOEXEC, kMode);
  return descriptor < 0 ? nullptr : ToHandle(descriptor);
}

bool PosixFiles::GetFileSizeEx(FileHandle file, std::uint64_t* sizeBytes) {
  struct stat found = {};
  const bool good = fstat(ToDescriptor(file), &found) == 0;
  *sizeBytes = good ? static_cast<std::uint64_t>(found.st_size) : 0;
  return good;
}

bool PosixFiles::ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                          std::uint32_t* readBytes) {
  const ssize_t count = read(ToDescriptor(file), buffer, sizeBytes);
  *readBytes = count < 0 ? 0 : static_cast<std::uint32_t>(count);
  return count >= 0;
}

bool PosixFiles::WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                           std::uint32_t* writtenBytes) {
  const ssize_t count = write(ToDescriptor(file), data, sizeBytes);
  *writtenBytes = count < 0 ? 0 : static_cast<std::uint32_t>(count);
  return count >= 0;
}

bool PosixFiles::SetEndOfFile(FileHandle file) {
  const off_t place = lseek(ToDescriptor(file), 0, SEEK_CUR);
  return place >= 0 && ftruncate(ToDescriptor(file), place) == 0;
}

bool PosixFiles::CloseHandle(FileHandle file) {
  return close(ToDescriptor(file)) == 0;
}

bool PosixFiles::DeleteFileW(const char16_t* path) {
  return unlink(NativePath(path).c_str()) == 0;
}

bool PosixFiles::CreateDirectoryW(const char16_t* path) {
  constexpr mode_t kMode = 0755;
  return mkdir(NativePath(path).c_str(), kMode) == 0;
}

std::uint32_t PosixFiles::GetPrivateProfileStringW(const char16_t* /*section*/,
                                                   const char16_t* /*key*/,
                                                   const char16_t* fallback, char16_t* buffer,
                                                   std::uint32_t units, const char16_t* /*path*/) {
  return static_cast<std::uint32_t>(CopyText(std::span(buffer, units), CallerText(fallback)));
}

}  // namespace ostrel::peers
