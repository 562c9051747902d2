// The list of file operations over this machine's own files. Paths may be the platform's, with
// backslashes, of plain characters. There are no ini files here.
#pragma once

#include "platform/platform.h"

namespace ostrel::peers {

class PosixFiles final : public Files {
 public:
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
};

}  // namespace ostrel::peers
