// Windows that a test plays, as those of other programs are: how they are found, and messages that
// wait for them.
#include "platform/headless/headless_windows.h"
#include "platform/headless/names.h"

#include <algorithm>
#include <utility>

namespace ostrel::headless {

WindowHandle HeadlessWindows::CreatePlayedWindow(
    Rect place, std::function<std::intptr_t(std::uint32_t, std::uintptr_t, std::intptr_t)> answerer,
    const std::u16string& className) {
  Window& window = Add(kDialogClass);
  if (!className.empty()) {
    window.className = className;
  }
  window.style = kStylePopup | kStyleVisible;
  window.screenPlace = place;
  window.answerer = std::move(answerer);
  return window.handle;
}

bool HeadlessWindows::PostMessageW(WindowHandle window, std::uint32_t message,
                                   std::uintptr_t wParam, std::intptr_t lParam) {
  if (Take("PostMessageW", window) == nullptr) {
    return false;
  }
  posted_.push_back({window, message, wParam, lParam});
  return true;
}

void HeadlessWindows::DeliverPosted() {
  const std::vector<PostedMessage> messages = std::exchange(posted_, {});
  for (const PostedMessage& message : messages) {
    IfAlive(message.window, [&](Window&) {
      Deliver(message.window, message.message, message.wParam, message.lParam);
    });
  }
}

WindowHandle HeadlessWindows::FindWindowW(const char16_t* className) {
  if (faults_.ShouldFail("FindWindowW") || className == nullptr) {
    return nullptr;
  }
  const auto found = std::ranges::find_if(windows_, [&](const auto& entry) {
    const Window& window = *entry.second;
    return window.parent == nullptr && LowerCase(window.className) == LowerCase(className);
  });
  return found == windows_.end() ? nullptr : found->first;
}

}  // namespace ostrel::headless
