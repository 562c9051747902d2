#include "core/message_box.h"

#include "core/process_state.h"

namespace ostrel {

int ShowMessageBox(WindowHandle owner, const char16_t* text, const char16_t* title,
                   std::uint32_t style) {
  const std::uint32_t direction =
      Process().RightToLeftLanguage ? std::uint32_t{kMbRightToLeft} : std::uint32_t{0};
  return World().windows.MessageBoxW(owner, text, title, style | direction);
}

}  // namespace ostrel
