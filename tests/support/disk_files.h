// Real files behind the file list, for native tools and tests that need a disk: a path's drive and
// folders lie below a root folder of the system, names are UTF-8 there, and letters keep their case
// (a name must be spelled alike each time).
#pragma once

#include "platform/platform.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace ostrel::test {

class DiskFiles final : public Files {
 public:
  // The root folder must exist. Errors are reported as the calling thread's last error of `debug`.
  DiskFiles(std::filesystem::path root, DebugOutput& debug);
  DiskFiles(const DiskFiles&) = delete;
  DiskFiles& operator=(const DiskFiles&) = delete;

  std::uint32_t GetFileAttributesW(const char16_t* path) override;
  bool FindFirstFileW(const char16_t* path) override;
  FileHandle CreateFileW(const char16_t* path, Access access) override;
  bool GetFileSizeEx(FileHandle file, std::uint64_t* sizeBytes) override;
  bool ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                std::uint32_t* readBytes) override;
  bool WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                 std::uint32_t* writtenBytes) override;
  bool SetEndOfFile(FileHandle file) override;
  bool CloseHandle(FileHandle file) override;
  bool DeleteFileW(const char16_t* path) override;
  bool CreateDirectoryW(const char16_t* path) override;
  std::uint32_t GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                         const char16_t* fallback, char16_t* buffer,
                                         std::uint32_t units, const char16_t* path) override;

  // Where a path lies on the disk.
  std::string PlaceOf(const char16_t* path) const;

  std::size_t openFiles() const { return openFiles_; }

 private:
  // Sets the last error from errno. Result: false.
  bool Fail(const std::string& place);
  // The same for an operation on an opened file.
  bool FailFor(FileHandle file);

  std::filesystem::path root_;
  DebugOutput& debug_;
  std::size_t openFiles_ = 0;
};

// A folder of its own below the system's folder for temporary files, removed at the end of the
// scope with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace ostrel::test
