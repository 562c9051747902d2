#include "platform/headless/headless_windows.h"

#include "platform/headless/headless_platform.h"

namespace ostrel::headless {

HeadlessWindows::HeadlessWindows(FaultPlan& faults, HeadlessDebugOutput& /*debug*/,
                                 HeadlessModules& /*modules*/, HeadlessGraphics& graphics)
    : faults_(faults) {
  graphics.Attach(*this);
}

int HeadlessWindows::MessageBoxW(WindowHandle owner, const char16_t* text, const char16_t* caption,
                                 std::uint32_t style) {
  if (faults_.ShouldFail("MessageBoxW")) {
    return 0;
  }
  boxes.push_back({owner, text, caption, style});
  int answer = kIdOk;
  if (!answers.empty()) {
    answer = answers.front();
    answers.pop_front();
  }
  return answer;
}

WindowHandle HeadlessWindows::GetDlgItem(WindowHandle /*dialog*/, std::int32_t /*id*/) {
  return nullptr;
}
WindowHandle HeadlessWindows::GetParent(WindowHandle /*window*/) {
  return nullptr;
}
bool HeadlessWindows::EnableWindow(WindowHandle /*window*/, bool /*enable*/) {
  return false;
}
bool HeadlessWindows::IsWindowEnabled(WindowHandle /*window*/) {
  return false;
}
bool HeadlessWindows::ShowWindow(WindowHandle /*window*/, std::int32_t /*command*/) {
  return false;
}
WindowHandle HeadlessWindows::SetFocus(WindowHandle /*window*/) {
  return nullptr;
}
bool HeadlessWindows::InvalidateRect(WindowHandle /*window*/) {
  return false;
}
std::intptr_t HeadlessWindows::SendMessageW(WindowHandle /*window*/, std::uint32_t /*message*/,
                                            std::uintptr_t /*wParam*/, std::intptr_t /*lParam*/) {
  return 0;
}
int HeadlessWindows::GetWindowTextW(WindowHandle /*window*/, char16_t* /*buffer*/, int /*units*/) {
  return 0;
}
bool HeadlessWindows::SetWindowTextW(WindowHandle /*window*/, const char16_t* /*text*/) {
  return false;
}
bool HeadlessWindows::SetWindowTextA(WindowHandle /*window*/, const char* /*text*/) {
  return false;
}
std::uint32_t HeadlessWindows::GetDlgItemTextA(WindowHandle /*dialog*/, std::int32_t /*id*/,
                                               char* /*buffer*/, int /*bytes*/) {
  return 0;
}
std::uint32_t HeadlessWindows::GetDlgItemInt(WindowHandle /*dialog*/, std::int32_t /*id*/,
                                             bool* translated, bool /*isSigned*/) {
  *translated = false;
  return 0;
}
bool HeadlessWindows::CheckDlgButton(WindowHandle /*dialog*/, std::int32_t /*id*/,
                                     std::uint32_t /*state*/) {
  return false;
}
std::uint32_t HeadlessWindows::IsDlgButtonChecked(WindowHandle /*dialog*/, std::int32_t /*id*/) {
  return 0;
}
std::intptr_t HeadlessWindows::GetWindowLongPtrW(WindowHandle /*window*/, std::int32_t /*index*/) {
  return 0;
}
std::intptr_t HeadlessWindows::SetWindowLongPtrW(WindowHandle /*window*/, std::int32_t /*index*/,
                                                 std::intptr_t /*value*/) {
  return 0;
}
std::uintptr_t HeadlessWindows::SetClassLongPtrW(WindowHandle /*window*/, std::int32_t /*index*/,
                                                 std::intptr_t /*value*/) {
  return 0;
}
bool HeadlessWindows::GetWindowRect(WindowHandle /*window*/, Rect* /*rect*/) {
  return false;
}
int HeadlessWindows::MapWindowPoints(WindowHandle /*from*/, WindowHandle /*to*/, Rect* /*rect*/) {
  return 0;
}
bool HeadlessWindows::GetCursorPos(Point* /*point*/) {
  return false;
}
bool HeadlessWindows::SetCursorPos(std::int32_t /*x*/, std::int32_t /*y*/) {
  return false;
}
WindowHandle HeadlessWindows::CreateWindowExW(std::uint32_t /*extendedStyle*/,
                                              const char16_t* /*className*/,
                                              std::uint32_t /*style*/, WindowHandle /*owner*/,
                                              ModuleHandle /*module*/) {
  return nullptr;
}
bool HeadlessWindows::DestroyWindow(WindowHandle /*window*/) {
  return false;
}
ImageHandle HeadlessWindows::LoadImageW(ModuleHandle /*module*/, std::uint32_t /*id*/,
                                        std::uint32_t /*kind*/, std::int32_t /*width*/,
                                        std::int32_t /*height*/) {
  return nullptr;
}

}  // namespace ostrel::headless
