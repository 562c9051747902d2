// The windows of the in-memory platform.
#pragma once

#include "platform/headless/fault_plan.h"
#include "platform/platform.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace ostrel::headless {

class HeadlessDebugOutput;
class HeadlessGraphics;
class HeadlessModules;

class HeadlessWindows final : public Windows {
 public:
  HeadlessWindows(FaultPlan& faults, HeadlessDebugOutput& debug, HeadlessModules& modules,
                  HeadlessGraphics& graphics);

  int MessageBoxW(WindowHandle owner, const char16_t* text, const char16_t* caption,
                  std::uint32_t style) override;
  WindowHandle GetDlgItem(WindowHandle dialog, std::int32_t id) override;
  WindowHandle GetParent(WindowHandle window) override;
  bool EnableWindow(WindowHandle window, bool enable) override;
  bool IsWindowEnabled(WindowHandle window) override;
  bool ShowWindow(WindowHandle window, std::int32_t command) override;
  WindowHandle SetFocus(WindowHandle window) override;
  bool InvalidateRect(WindowHandle window) override;
  std::intptr_t SendMessageW(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                             std::intptr_t lParam) override;
  int GetWindowTextW(WindowHandle window, char16_t* buffer, int units) override;
  bool SetWindowTextW(WindowHandle window, const char16_t* text) override;
  bool SetWindowTextA(WindowHandle window, const char* text) override;
  std::uint32_t GetDlgItemTextA(WindowHandle dialog, std::int32_t id, char* buffer,
                                int bytes) override;
  std::uint32_t GetDlgItemInt(WindowHandle dialog, std::int32_t id, bool* translated,
                              bool isSigned) override;
  bool CheckDlgButton(WindowHandle dialog, std::int32_t id, std::uint32_t state) override;
  std::uint32_t IsDlgButtonChecked(WindowHandle dialog, std::int32_t id) override;
  std::intptr_t GetWindowLongPtrW(WindowHandle window, std::int32_t index) override;
  std::intptr_t SetWindowLongPtrW(WindowHandle window, std::int32_t index,
                                  std::intptr_t value) override;
  std::uintptr_t SetClassLongPtrW(WindowHandle window, std::int32_t index,
                                  std::intptr_t value) override;
  bool GetWindowRect(WindowHandle window, Rect* rect) override;
  int MapWindowPoints(WindowHandle from, WindowHandle to, Rect* rect) override;
  bool GetCursorPos(Point* point) override;
  bool SetCursorPos(std::int32_t x, std::int32_t y) override;
  WindowHandle CreateWindowExW(std::uint32_t extendedStyle, const char16_t* className,
                               std::uint32_t style, WindowHandle owner,
                               ModuleHandle module) override;
  bool DestroyWindow(WindowHandle window) override;
  ImageHandle LoadImageW(ModuleHandle module, std::uint32_t id, std::uint32_t kind,
                         std::int32_t width, std::int32_t height) override;

  struct Box {
    WindowHandle owner;
    std::u16string text;
    std::u16string caption;
    std::uint32_t style;
  };
  // The boxes shown, in order, and what the user will answer to the next ones. A box that finds no
  // answer is answered with IDOK.
  std::vector<Box> boxes;
  std::deque<int> answers;

  bool IsWindow(WindowHandle /*window*/) const { return false; }
  bool IsMirrored(WindowHandle /*window*/) const { return false; }

 private:
  FaultPlan& faults_;
};

}  // namespace ostrel::headless
