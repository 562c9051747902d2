// A shell whose application data lie in a folder of the caller's choice.
#pragma once

#include "core/text.h"
#include "platform/platform.h"

#include <span>
#include <string>

namespace ostrel::peers {

class FolderShell final : public Shell {
 public:
  explicit FolderShell(std::u16string folder) : folder_(std::move(folder)) {}

  std::uint32_t SHGetFolderPathW(std::uint32_t /*folder*/, char16_t* path) override {
    CopyText(std::span(path, kMaxPathUnits), folder_);
    return 0;
  }
  bool ShellExecuteW(const char16_t* /*verb*/, const char16_t* /*file*/,
                     const char16_t* /*parameters*/, std::int32_t /*showCommand*/) override {
    return false;
  }
  WindowHandle HtmlHelpW(WindowHandle /*window*/, const char16_t* /*file*/,
                         std::uint32_t /*command*/, std::uintptr_t /*data*/) override {
    return nullptr;
  }

 private:
  std::u16string folder_;
};

}  // namespace ostrel::peers
