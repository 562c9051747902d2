// The real windows and drawing under the suite that every platform must pass.
#include "conformance/window_conformance.h"

#include "platform/win32/native_types.h"
#include "platform/win32/win32_platform.h"

#include <string_view>

namespace ostrel {
namespace {

HWND ControlOf(WindowHandle dialog, std::int32_t id) {
  return GetDlgItem(win32::FromWindow(dialog), id);
}

COMBOBOXINFO PartsOf(HWND combo) {
  COMBOBOXINFO parts = {};
  parts.cbSize = sizeof(parts);
  GetComboBoxInfo(combo, &parts);
  return parts;
}

// A user's hand, as far as messages can be one.
class SystemWindowHost {
 public:
  Platform& platform() { return win32::SystemPlatform(); }
  ModuleHandle dialogs() { return reinterpret_cast<ModuleHandle>(GetModuleHandleW(nullptr)); }
  void WhenOpen(WindowHandle dialog) {
    PostMessageW(win32::FromWindow(dialog), kDialogIsOpen, 0, 0);
  }
  void Type(WindowHandle dialog, std::int32_t id, std::u16string_view text) {
    const HWND control = ControlOf(dialog, id);
    const HWND inner = PartsOf(control).hwndItem;
    const HWND edit = inner == nullptr ? control : inner;
    SendMessageW(edit, EM_SETSEL, 0, -1);
    for (const char16_t unit : text) {
      SendMessageW(edit, WM_CHAR, unit, 1);
    }
  }
  void Choose(WindowHandle dialog, std::int32_t id, std::int32_t row) {
    const HWND combo = ControlOf(dialog, id);
    const HWND list = PartsOf(combo).hwndList;
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    RECT place = {};
    SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    const LPARAM point = MAKELPARAM(place.left + 2, place.top + 2);
    SendMessageW(list, WM_MOUSEMOVE, 0, point);
    SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(list, WM_LBUTTONUP, 0, point);
  }
  void Click(WindowHandle dialog, std::int32_t id) {
    SendMessageW(ControlOf(dialog, id), BM_CLICK, 0, 0);
  }
  WindowHandle focus() { return win32::ToWindow(GetFocus()); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, WindowConformance, SystemWindowHost);

}  // namespace
}  // namespace ostrel
