// A dialog of any controls that a test names, in the place of a world's windows. It keeps what the
// control wrappers change and writes down each change in order, so that an order can be compared as
// data. Each operation asks the world's fault plan. Questions aren't written down.
#pragma once

#include "support/call_recorder.h"
#include "support/test_world.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ostrel::test {

class DialogRecorder final : public Windows {
 public:
  struct Item {
    std::u16string text;
    std::intptr_t data = 0;
  };
  struct Control {
    std::u16string text;
    bool enabled = true;
    std::uint32_t check = kBstUnchecked;
    std::vector<Item> items;
    std::intptr_t selected = kCbErr;
    Rect rect = {};  // on the screen
  };

  explicit DialogRecorder(TestWorld& world)
      : world_(world), lists_{world.platform.print,    world.platform.locale,
                              world.platform.modules,  world.platform.files,
                              world.platform.registry, world.platform.security,
                              world.platform.shell,    *this,
                              world.platform.graphics, world.platform.system,
                              world.platform.memory,   world.platform.debug} {
    world_.process.platform = &lists_;
  }
  ~DialogRecorder() { world_.process.platform = &world_.platform.lists; }
  DialogRecorder(const DialogRecorder&) = delete;
  DialogRecorder& operator=(const DialogRecorder&) = delete;

  static WindowHandle Dialog() { return HandleOf(-1); }
  static WindowHandle Sheet() { return HandleOf(-2); }
  static WindowHandle Tooltip() { return HandleOf(-3); }
  static WindowHandle HandleOf(std::int32_t id) {
    return reinterpret_cast<WindowHandle>(kFirstControl + std::intptr_t{id});
  }
  static ImageHandle Image() { return reinterpret_cast<ImageHandle>(std::uintptr_t{0x777}); }

  Control& Add(std::int32_t id) { return controls[id]; }

  // The changes so far, which are then forgotten.
  Calls Take() { return std::exchange(calls, {}); }

  std::map<std::int32_t, Control> controls;
  Calls calls;
  // Called after code has set the text of a control, as an edit tells its dialog.
  std::function<void(std::int32_t id)> onChange;
  std::intptr_t userData = 0;
  Point cursor = {123, 45};
  Point origin = {1000, 500};  // of the dialog's client area, on the screen
  ToolInfo tool = {};          // as it was set last

  // ---- Windows
  int MessageBoxW(WindowHandle owner, const char16_t* text, const char16_t* caption,
                  std::uint32_t style) override {
    return Fails("MessageBoxW") ? 0
                                : world_.platform.windows.MessageBoxW(owner, text, caption, style);
  }
  WindowHandle GetDlgItem(WindowHandle dialog, std::int32_t id) override {
    return !Fails("GetDlgItem") && dialog == Dialog() && controls.contains(id) ? HandleOf(id)
                                                                               : nullptr;
  }
  WindowHandle GetParent(WindowHandle window) override {
    return !Fails("GetParent") && window == Dialog() ? Sheet() : nullptr;
  }
  bool EnableWindow(WindowHandle window, bool enable) override {
    Control* control = Find("EnableWindow", window);
    if (control == nullptr) {
      return false;
    }
    calls.push_back((enable ? "enable " : "disable ") + NameOf(window));
    return !std::exchange(control->enabled, enable);
  }
  bool IsWindowEnabled(WindowHandle window) override {
    const Control* control = Find("IsWindowEnabled", window);
    return control != nullptr && control->enabled;
  }
  bool ShowWindow(WindowHandle window, std::int32_t command) override {
    if (Find("ShowWindow", window) != nullptr) {
      calls.push_back((command == kSwHide ? "hide " : "show ") + NameOf(window));
    }
    return false;
  }
  WindowHandle SetFocus(WindowHandle window) override {
    if (!Fails("SetFocus")) {
      calls.push_back("focus " + NameOf(window));
    }
    return nullptr;
  }
  bool InvalidateRect(WindowHandle window) override {
    calls.push_back("invalidate " + NameOf(window));
    return !Fails("InvalidateRect");
  }

  bool PostMessageW(WindowHandle /*window*/, std::uint32_t /*message*/, std::uintptr_t /*wParam*/,
                    std::intptr_t /*lParam*/) override {
    return false;
  }
  WindowHandle FindWindowW(const char16_t* /*className*/) override { return nullptr; }
  std::intptr_t SendMessageW(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                             std::intptr_t lParam) override {
    if (Fails("SendMessageW")) {
      return message == kCbAddString || message == kCbGetCurSel ? kCbErr : 0;
    }
    if (window == Tooltip()) {
      return TooltipMessage(message, wParam, lParam);
    }
    if (window == Sheet()) {
      calls.push_back("sheet: message " + std::to_string(message) + " of " +
                      NameOf(reinterpret_cast<WindowHandle>(wParam)));
      return 0;
    }
    Control* control = Known(window);
    return control == nullptr ? 0
                              : ControlMessage(*control, NameOf(window), message, wParam, lParam);
  }

  int GetWindowTextW(WindowHandle window, char16_t* buffer, int units) override {
    const Control* control = Find("GetWindowTextW", window);
    const std::u16string_view text = control == nullptr ? u"" : std::u16string_view(control->text);
    const std::size_t copied = text.copy(buffer, static_cast<std::size_t>(units) - 1);
    buffer[copied] = u'\0';
    return static_cast<int>(copied);
  }
  bool SetWindowTextW(WindowHandle window, const char16_t* text) override {
    return SetText("SetWindowTextW", window, text);
  }
  bool SetWindowTextA(WindowHandle window, const char* text) override {
    const std::string narrow(text);
    return SetText("SetWindowTextA", window, std::u16string(narrow.begin(), narrow.end()));
  }
  std::uint32_t GetDlgItemTextA(WindowHandle /*dialog*/, std::int32_t /*id*/, char* /*buffer*/,
                                int /*bytes*/) override {
    return 0;
  }
  std::uint32_t GetDlgItemInt(WindowHandle /*dialog*/, std::int32_t /*id*/, bool* /*translated*/,
                              bool /*isSigned*/) override {
    return 0;
  }
  bool SetDlgItemInt(WindowHandle /*dialog*/, std::int32_t /*id*/, std::uint32_t /*value*/,
                     bool /*isSigned*/) override {
    return false;
  }
  bool CheckDlgButton(WindowHandle dialog, std::int32_t id, std::uint32_t state) override {
    if (Fails("CheckDlgButton") || dialog != Dialog() || !controls.contains(id)) {
      return false;
    }
    calls.push_back((state == kBstChecked ? "check " : "uncheck ") + std::to_string(id));
    controls[id].check = state;
    return true;
  }
  std::uint32_t IsDlgButtonChecked(WindowHandle dialog, std::int32_t id) override {
    return !Fails("IsDlgButtonChecked") && dialog == Dialog() && controls.contains(id)
               ? controls[id].check
               : kBstUnchecked;
  }

  std::intptr_t GetWindowLongPtrW(WindowHandle window, std::int32_t index) override {
    return !Fails("GetWindowLongPtrW") && window == Dialog() && index == kGwlpUserData ? userData
                                                                                       : 0;
  }
  std::intptr_t SetWindowLongPtrW(WindowHandle window, std::int32_t index,
                                  std::intptr_t value) override {
    if (Fails("SetWindowLongPtrW") || window != Dialog() || index != kGwlpUserData) {
      return 0;
    }
    return std::exchange(userData, value);
  }
  std::uintptr_t SetClassLongPtrW(WindowHandle /*window*/, std::int32_t /*index*/,
                                  std::intptr_t /*value*/) override {
    return 0;
  }

  bool GetWindowRect(WindowHandle window, Rect* rect) override {
    const Control* control = Find("GetWindowRect", window);
    if (control == nullptr) {
      return false;
    }
    *rect = control->rect;
    return true;
  }
  int MapWindowPoints(WindowHandle from, WindowHandle to, Rect* rect) override {
    if (Fails("MapWindowPoints") || from != nullptr || to != Dialog()) {
      return 0;
    }
    *rect = {rect->left - origin.x, rect->top - origin.y, rect->right - origin.x,
             rect->bottom - origin.y};
    return 1;
  }
  bool GetCursorPos(Point* point) override {
    if (Fails("GetCursorPos")) {
      return false;
    }
    *point = cursor;
    return true;
  }
  bool SetCursorPos(std::int32_t x, std::int32_t y) override {
    if (Fails("SetCursorPos")) {
      return false;
    }
    calls.push_back("cursor to " + std::to_string(x) + ", " + std::to_string(y));
    return true;
  }

  WindowHandle CreateWindowExW(std::uint32_t extendedStyle, const char16_t* className,
                               std::uint32_t style, WindowHandle owner,
                               ModuleHandle /*module*/) override {
    if (Fails("CreateWindowExW")) {
      return nullptr;
    }
    calls.push_back("create " + Ascii(className) + " of extended style " +
                    std::to_string(extendedStyle) + ", style " + std::to_string(style) +
                    ", owner " + NameOf(owner));
    return Tooltip();
  }
  bool DestroyWindow(WindowHandle /*window*/) override { return !Fails("DestroyWindow"); }
  std::intptr_t DialogBoxParamW(ModuleHandle /*module*/, std::uint32_t /*templateId*/,
                                WindowHandle /*owner*/, DialogProcedure /*procedure*/,
                                std::intptr_t /*initParam*/) override {
    return -1;
  }
  bool EndDialog(WindowHandle /*dialog*/, std::intptr_t /*result*/) override { return false; }
  ImageHandle LoadImageW(ModuleHandle module, std::uint32_t id, std::uint32_t kind,
                         std::int32_t width, std::int32_t height) override {
    if (Fails("LoadImageW")) {
      return nullptr;
    }
    imageModule = module;
    calls.push_back("load image " + std::to_string(id) + " of kind " + std::to_string(kind) + ", " +
                    std::to_string(width) + " x " + std::to_string(height));
    return Image();
  }

  ModuleHandle imageModule = nullptr;  // of the image that was loaded last

 private:
  static constexpr std::intptr_t kFirstControl = 0x100000;

  static std::string NameOf(WindowHandle window) {
    if (window == nullptr) {
      return "nothing";
    }
    return window == Dialog()    ? "the dialog"
           : window == Sheet()   ? "the sheet"
           : window == Tooltip() ? "the tooltip"
                                 : std::to_string(IdOf(window));
  }
  static std::int32_t IdOf(WindowHandle window) {
    return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(window) - kFirstControl);
  }

  bool Fails(const char* operation) { return world_.platform.faults.ShouldFail(operation); }
  Control* Known(WindowHandle window) {
    const auto control = controls.find(IdOf(window));
    return control == controls.end() ? nullptr : &control->second;
  }
  Control* Find(const char* operation, WindowHandle window) {
    return Fails(operation) ? nullptr : Known(window);
  }

  bool SetText(const char* operation, WindowHandle window, const std::u16string& text) {
    Control* control = Find(operation, window);
    if (control == nullptr) {
      return false;
    }
    control->text = text;
    calls.push_back("text " + NameOf(window) + " \"" + Ascii(text) + "\"");
    if (onChange) {
      onChange(IdOf(window));
    }
    return true;
  }

  std::intptr_t ControlMessage(Control& control, const std::string& name, std::uint32_t message,
                               std::uintptr_t wParam, std::intptr_t lParam) {
    const auto place = static_cast<std::intptr_t>(wParam);
    const bool isPlace = place >= 0 && static_cast<std::size_t>(place) < control.items.size();
    switch (message) {
      case kEmUndo:
        calls.push_back("undo " + name);
        return 1;
      case kEmSetSel:
        calls.push_back("select " + name + " " + std::to_string(wParam) + " to " +
                        std::to_string(lParam));
        return 1;
      case kUdmSetAccel: {
        const auto* row = reinterpret_cast<const SpinAcceleration*>(lParam);
        calls.push_back("acceleration " + name + ", " + std::to_string(wParam) +
                        " row: " + std::to_string(row->nSec) + " s, " + std::to_string(row->nInc));
        return 1;
      }
      case kStmSetImage:
        calls.push_back(
            "image " + name + " of kind " + std::to_string(wParam) +
            (lParam == reinterpret_cast<std::intptr_t>(Image()) ? "" : ", a wrong one"));
        return 0;
      case kCbResetContent:
        control.items.clear();
        control.selected = kCbErr;
        return 0;
      case kCbAddString:
        control.items.push_back({reinterpret_cast<const char16_t*>(lParam)});
        return static_cast<std::intptr_t>(control.items.size()) - 1;
      case kCbSetItemData:
        if (isPlace) {
          control.items[wParam].data = lParam;
        }
        return isPlace ? 0 : kCbErr;
      case kCbGetItemData:
        return isPlace ? control.items[wParam].data : kCbErr;
      case kCbGetCount:
        return static_cast<std::intptr_t>(control.items.size());
      case kCbSetCurSel:
        control.selected = isPlace ? place : kCbErr;
        return control.selected;
      case kCbGetCurSel:
        return control.selected;
      default:
        calls.push_back("message " + std::to_string(message) + " to " + name);
        return 0;
    }
  }

  std::intptr_t TooltipMessage(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message == kTtmAddTool || message == kTtmSetToolInfo) {
      tool = *reinterpret_cast<const ToolInfo*>(lParam);
    }
    calls.push_back(message == kTtmAddTool          ? "add the tool"
                    : message == kTtmSetToolInfo    ? "move the tool"
                    : message == kTtmActivate       ? (wParam != 0 ? "tooltip on" : "tooltip off")
                    : message == kTtmSetMaxTipWidth ? "tooltip width " + std::to_string(lParam)
                    : message == kTtmSetTipBackgroundColor
                        ? "tooltip color " + std::to_string(wParam)
                        : "tooltip message " + std::to_string(message));
    return 1;
  }

  TestWorld& world_;
  Platform lists_;
};

}  // namespace ostrel::test
