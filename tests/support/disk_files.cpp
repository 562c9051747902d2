#include "support/disk_files.h"

#include "config/utf8.h"
#include "core/text.h"
#include "platform/headless/headless_platform.h"
#include "platform/headless/names.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ostrel::test {
namespace {

// Handles are descriptors plus one, so that none is null.
FileHandle HandleOf(int descriptor) {
  return headless::HandleOf<FileHandle>(static_cast<std::uintptr_t>(descriptor) + 1);
}
int DescriptorOf(FileHandle file) {
  return static_cast<int>(headless::NumberOf(file)) - 1;
}

int FlagsOf(Files::Access access) {
  switch (access) {
    case Files::Access::kOpenExistingForReading:
      return O_RDONLY;
    case Files::Access::kOpenExistingForUpdate:
      return O_RDWR;
    case Files::Access::kCreateAlwaysForWriting:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case Files::Access::kOpenAlwaysForAppending:
      break;
  }
  return O_WRONLY | O_CREAT | O_APPEND;
}

}  // namespace

DiskFiles::DiskFiles(std::filesystem::path root, DebugOutput& debug)
    : root_(std::move(root)), debug_(debug) {}

std::string DiskFiles::PlaceOf(const char16_t* path) const {
  const std::u16string_view wide = CallerText(path);
  std::vector<char> narrow(wide.size() * 3 + 1);  // no unit takes more bytes
  WideToUtf8(wide, narrow);
  std::string place = narrow.data();
  std::ranges::replace(place, '\\', '/');
  return root_.string() + '/' + place;
}

bool DiskFiles::Fail(const std::string& place) {
  std::uint32_t code = kErrorAccessDenied;
  switch (errno) {
    case ENOENT: {
      const bool folder = access(place.substr(0, place.rfind('/')).c_str(), F_OK) == 0;
      code = folder ? kErrorFileNotFound : kErrorPathNotFound;
      break;
    }
    case ENOTDIR:
      code = kErrorPathNotFound;
      break;
    case EEXIST:
      code = kErrorAlreadyExists;
      break;
    case ENOSPC:
      code = kErrorDiskFull;
      break;
    default:
      break;
  }
  debug_.SetLastError(code);
  return false;
}

std::uint32_t DiskFiles::GetFileAttributesW(const char16_t* path) {
  constexpr std::uint32_t kNormal = 0x80;     // FILE_ATTRIBUTE_NORMAL
  constexpr std::uint32_t kDirectory = 0x10;  // FILE_ATTRIBUTE_DIRECTORY
  const std::string place = PlaceOf(path);
  struct stat status = {};
  if (stat(place.c_str(), &status) != 0) {
    Fail(place);
    return kInvalidFileAttributes;
  }
  return S_ISDIR(status.st_mode) ? kDirectory : kNormal;
}

bool DiskFiles::FindFirstFileW(const char16_t* path) {
  return GetFileAttributesW(path) != kInvalidFileAttributes;
}

FileHandle DiskFiles::CreateFileW(const char16_t* path, Access access) {
  constexpr mode_t kMode = 0666;
  const std::string place = PlaceOf(path);
  const int descriptor = open(place.c_str(), FlagsOf(access) | O_CLOEXEC, kMode);
  struct stat status = {};
  if (descriptor < 0 || fstat(descriptor, &status) != 0) {
    Fail(place);
    return nullptr;
  }
  if (S_ISDIR(status.st_mode)) {
    close(descriptor);
    debug_.SetLastError(kErrorAccessDenied);
    return nullptr;
  }
  ++openFiles_;
  return HandleOf(descriptor);
}

bool DiskFiles::GetFileSizeEx(FileHandle file, std::uint64_t* sizeBytes) {
  *sizeBytes = 0;
  struct stat status = {};
  if (fstat(DescriptorOf(file), &status) != 0) {
    return FailFor(file);
  }
  *sizeBytes = static_cast<std::uint64_t>(status.st_size);
  return true;
}

bool DiskFiles::ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                         std::uint32_t* readBytes) {
  *readBytes = 0;
  while (*readBytes < sizeBytes) {
    const ssize_t count =
        read(DescriptorOf(file), static_cast<char*>(buffer) + *readBytes, sizeBytes - *readBytes);
    if (count < 0) {
      return FailFor(file);
    }
    if (count == 0) {
      break;
    }
    *readBytes += static_cast<std::uint32_t>(count);
  }
  return true;
}

// A failed reading or writing: an open file refuses an access that wasn't asked for.
bool DiskFiles::FailFor(FileHandle file) {
  if (fcntl(DescriptorOf(file), F_GETFD) < 0) {
    debug_.SetLastError(kErrorInvalidHandle);
    return false;
  }
  return Fail({});
}

bool DiskFiles::WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                          std::uint32_t* writtenBytes) {
  *writtenBytes = 0;
  while (*writtenBytes < sizeBytes) {
    const ssize_t count = write(DescriptorOf(file), static_cast<const char*>(data) + *writtenBytes,
                                sizeBytes - *writtenBytes);
    if (count < 0) {
      return FailFor(file);
    }
    *writtenBytes += static_cast<std::uint32_t>(count);
  }
  return true;
}

bool DiskFiles::SetEndOfFile(FileHandle file) {
  const off_t place = lseek(DescriptorOf(file), 0, SEEK_CUR);
  return (place >= 0 && ftruncate(DescriptorOf(file), place) == 0) || FailFor(file);
}

bool DiskFiles::CloseHandle(FileHandle file) {
  if (close(DescriptorOf(file)) != 0) {
    return FailFor(file);
  }
  --openFiles_;
  return true;
}

bool DiskFiles::DeleteFileW(const char16_t* path) {
  const std::string place = PlaceOf(path);
  return unlink(place.c_str()) == 0 || Fail(place);
}

bool DiskFiles::CreateDirectoryW(const char16_t* path) {
  constexpr mode_t kMode = 0777;
  const std::string place = PlaceOf(path);
  return mkdir(place.c_str(), kMode) == 0 || Fail(place);
}

// Read as the in-memory files read theirs.
std::uint32_t DiskFiles::GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                                  const char16_t* fallback, char16_t* buffer,
                                                  std::uint32_t units, const char16_t* path) {
  constexpr char16_t kName[] = u"C:\\a.ini";
  headless::FaultPlan faults;
  headless::HeadlessDebugOutput debug;
  headless::HeadlessFiles files(faults, debug);
  if (std::ifstream file(PlaceOf(path), std::ios::binary); file) {
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const auto bytes = std::as_bytes(std::span(text));
    files.Put(kName, {bytes.begin(), bytes.end()});
  }
  return files.GetPrivateProfileStringW(section, key, fallback, buffer, units, kName);
}

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "ostrel-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no folder for temporary files");
  }
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace ostrel::test
