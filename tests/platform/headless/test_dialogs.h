// The dialogs of test_dialogs.rc in an in-memory platform, and a dialog procedure that writes down
// what it gets.
#pragma once

#include "platform/headless/headless_platform.h"
#include "platform/headless/user.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ostrel::headless {

inline constexpr char16_t kTestLibraryPath[] = u"C:\\test\\dialogs.dll";
inline constexpr std::uint32_t kControlsDialog = 1;
inline constexpr std::uint32_t kPlainDialog = 2;
inline constexpr std::uint32_t kMirroredDialog = 3;
inline constexpr std::uint32_t kCombosDialog = 4;
inline constexpr std::uint32_t kModalDialog = 5;

// The compiled dialogs, with an icon 77 of two sizes and a bitmap 78 of 7 by 5 pixels added.
std::shared_ptr<const Resources> TestDialogs();

// What a dialog procedure gets is written down while one of these lives: "command 11 300" (id, code
// in hexadecimal), "notify -722 from 13 at 5 by 1", "init 17", "show 1", "destroy". `handle` may
// answer first.
class MessageLog {
 public:
  MessageLog();
  ~MessageLog();
  MessageLog(const MessageLog&) = delete;
  MessageLog& operator=(const MessageLog&) = delete;

  static std::intptr_t Procedure(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                 std::intptr_t lParam);

  // What came since the last call.
  std::vector<std::string> Take() { return std::exchange(lines_, {}); }
  // Asked after a message was written down; its answer is the procedure's.
  std::function<std::intptr_t(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                              std::intptr_t lParam)>
      handle;

 private:
  void Write(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam);

  std::vector<std::string> lines_;
};

}  // namespace ostrel::headless
