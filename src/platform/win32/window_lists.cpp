// Windows, dialogs and controls of user32, and what kernel32 tells of threads, versions, the clock
// and the computer.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>

#include <string>

namespace ostrel::win32 {
namespace {

// A resource's id, and a length that a caller counts in another type.
const wchar_t* ResourceId(std::uint32_t id) {
  return MAKEINTRESOURCEW(id);
}

}  // namespace

// ---- Windows ------------------------------------------------------------------------------------

int SystemWindows::MessageBoxW(WindowHandle owner, const char16_t* text, const char16_t* caption,
                               std::uint32_t style) {
  return ::MessageBoxW(FromWindow(owner), Wide(text), Wide(caption), style);
}

WindowHandle SystemWindows::GetDlgItem(WindowHandle dialog, std::int32_t id) {
  return ToWindow(::GetDlgItem(FromWindow(dialog), id));
}

WindowHandle SystemWindows::GetParent(WindowHandle window) {
  return ToWindow(::GetParent(FromWindow(window)));
}

bool SystemWindows::EnableWindow(WindowHandle window, bool enable) {
  return ::EnableWindow(FromWindow(window), enable ? TRUE : FALSE) != FALSE;
}

bool SystemWindows::IsWindowEnabled(WindowHandle window) {
  return ::IsWindowEnabled(FromWindow(window)) != FALSE;
}

bool SystemWindows::ShowWindow(WindowHandle window, std::int32_t command) {
  return ::ShowWindow(FromWindow(window), command) != FALSE;
}

WindowHandle SystemWindows::SetFocus(WindowHandle window) {
  // The platform takes null for "no window has the focus".
  return window == nullptr ? nullptr : ToWindow(::SetFocus(FromWindow(window)));
}

bool SystemWindows::InvalidateRect(WindowHandle window) {
  // The platform takes null for "every window of the system".
  return window != nullptr && ::InvalidateRect(FromWindow(window), nullptr, TRUE) != FALSE;
}

std::intptr_t SystemWindows::SendMessageW(WindowHandle window, std::uint32_t message,
                                          std::uintptr_t wParam, std::intptr_t lParam) {
  return ::SendMessageW(FromWindow(window), message, wParam, lParam);
}

bool SystemWindows::PostMessageW(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                 std::intptr_t lParam) {
  // The platform takes null for "the calling thread".
  return window != nullptr && ::PostMessageW(FromWindow(window), message, wParam, lParam) != FALSE;
}

WindowHandle SystemWindows::FindWindowW(const char16_t* className) {
  return ToWindow(::FindWindowW(Wide(className), nullptr));
}

int SystemWindows::GetWindowTextW(WindowHandle window, char16_t* buffer, int units) {
  return ::GetWindowTextW(FromWindow(window), Wide(buffer), units);
}

bool SystemWindows::SetWindowTextW(WindowHandle window, const char16_t* text) {
  return ::SetWindowTextW(FromWindow(window), Wide(text)) != FALSE;
}

bool SystemWindows::SetWindowTextA(WindowHandle window, const char* text) {
  return ::SetWindowTextA(FromWindow(window), text) != FALSE;
}

std::uint32_t SystemWindows::GetDlgItemTextA(WindowHandle dialog, std::int32_t id, char* buffer,
                                             int bytes) {
  return ::GetDlgItemTextA(FromWindow(dialog), id, buffer, bytes);
}

std::uint32_t SystemWindows::GetDlgItemInt(WindowHandle dialog, std::int32_t id, bool* translated,
                                           bool isSigned) {
  BOOL good = FALSE;
  const UINT value = ::GetDlgItemInt(FromWindow(dialog), id, &good, isSigned ? TRUE : FALSE);
  *translated = good != FALSE;
  return value;
}

bool SystemWindows::SetDlgItemInt(WindowHandle dialog, std::int32_t id, std::uint32_t value,
                                  bool isSigned) {
  return ::SetDlgItemInt(FromWindow(dialog), id, value, isSigned ? TRUE : FALSE) != FALSE;
}

bool SystemWindows::CheckDlgButton(WindowHandle dialog, std::int32_t id, std::uint32_t state) {
  return ::CheckDlgButton(FromWindow(dialog), id, state) != FALSE;
}

std::uint32_t SystemWindows::IsDlgButtonChecked(WindowHandle dialog, std::int32_t id) {
  return ::IsDlgButtonChecked(FromWindow(dialog), id);
}

std::intptr_t SystemWindows::GetWindowLongPtrW(WindowHandle window, std::int32_t index) {
  return ::GetWindowLongPtrW(FromWindow(window), index);
}

std::intptr_t SystemWindows::SetWindowLongPtrW(WindowHandle window, std::int32_t index,
                                               std::intptr_t value) {
  return ::SetWindowLongPtrW(FromWindow(window), index, value);
}

std::uintptr_t SystemWindows::SetClassLongPtrW(WindowHandle window, std::int32_t index,
                                               std::intptr_t value) {
  return ::SetClassLongPtrW(FromWindow(window), index, value);
}

bool SystemWindows::GetWindowRect(WindowHandle window, Rect* rect) {
  return ::GetWindowRect(FromWindow(window), reinterpret_cast<RECT*>(rect)) != FALSE;
}

int SystemWindows::MapWindowPoints(WindowHandle from, WindowHandle to, Rect* rect) {
  return ::MapWindowPoints(FromWindow(from), FromWindow(to), reinterpret_cast<POINT*>(rect), 2);
}

bool SystemWindows::GetCursorPos(Point* point) {
  return ::GetCursorPos(reinterpret_cast<POINT*>(point)) != FALSE;
}

bool SystemWindows::SetCursorPos(std::int32_t x, std::int32_t y) {
  return ::SetCursorPos(x, y) != FALSE;
}

WindowHandle SystemWindows::CreateWindowExW(std::uint32_t extendedStyle, const char16_t* className,
                                            std::uint32_t style, WindowHandle owner,
                                            ModuleHandle module) {
  return ToWindow(::CreateWindowExW(extendedStyle, Wide(className), nullptr, style, CW_USEDEFAULT,
                                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, FromWindow(owner),
                                    nullptr, FromModule(module), nullptr));
}

bool SystemWindows::DestroyWindow(WindowHandle window) {
  return ::DestroyWindow(FromWindow(window)) != FALSE;
}

std::intptr_t SystemWindows::DialogBoxParamW(ModuleHandle module, std::uint32_t templateId,
                                             WindowHandle owner, DialogProcedure procedure,
                                             std::intptr_t initParam) {
  return ::DialogBoxParamW(FromModule(module), ResourceId(templateId), FromWindow(owner),
                           reinterpret_cast<DLGPROC>(procedure), initParam);
}

bool SystemWindows::EndDialog(WindowHandle dialog, std::intptr_t result) {
  return ::EndDialog(FromWindow(dialog), result) != FALSE;
}

ImageHandle SystemWindows::LoadImageW(ModuleHandle module, std::uint32_t id, std::uint32_t kind,
                                      std::int32_t width, std::int32_t height) {
  return static_cast<ImageHandle>(
      ::LoadImageW(FromModule(module), ResourceId(id), kind, width, height, LR_DEFAULTCOLOR));
}

// ---- System -------------------------------------------------------------------------------------

std::uint32_t SystemSystem::GetCurrentThreadId() {
  return ::GetCurrentThreadId();
}

std::uint32_t SystemSystem::GetMajorVersion() {
  return LOBYTE(LOWORD(::GetVersion()));
}

ActivationContext SystemSystem::CreateActCtxW(ModuleHandle module, std::uint32_t manifestId) {
  ACTCTXW description = {};
  description.cbSize = sizeof(description);
  description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  description.hModule = FromModule(module);
  description.lpResourceName = ResourceId(manifestId);
  return ActivationContext{reinterpret_cast<std::uintptr_t>(::CreateActCtxW(&description))};
}

void SystemSystem::ReleaseActCtx(ActivationContext context) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the handle travels as a number.
  ::ReleaseActCtx(reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(context)));
}

bool SystemSystem::CreateProcessW(const char16_t* application, char16_t* commandLine,
                                  std::uint32_t creationFlags, const char16_t* windowTitle,
                                  ProcessInformation* information) {
  std::wstring title(windowTitle == nullptr ? L"" : Wide(windowTitle));
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.lpTitle = windowTitle == nullptr ? nullptr : title.data();
  return ::CreateProcessW(Wide(application), Wide(commandLine), nullptr, nullptr, FALSE,
                          creationFlags, nullptr, nullptr, &startup,
                          reinterpret_cast<PROCESS_INFORMATION*>(information)) != FALSE;
}

bool SystemSystem::CloseHandle(ProcessHandle handle) {
  return ::CloseHandle(static_cast<HANDLE>(handle)) != FALSE;
}

void SystemSystem::GetLocalTime(SystemTime* time) {
  ::GetLocalTime(reinterpret_cast<SYSTEMTIME*>(time));
}

void SystemSystem::Sleep(std::uint32_t duration_ms) {
  ::Sleep(duration_ms);
}

bool SystemSystem::GetComputerNameW(char16_t* buffer, std::uint32_t* units) {
  DWORD size = *units;
  const BOOL good = ::GetComputerNameW(Wide(buffer), &size);
  *units = size;
  return good != FALSE;
}

std::uint32_t SystemSystem::GetSystemDirectoryW(char16_t* path, std::uint32_t units) {
  return ::GetSystemDirectoryW(Wide(path), units);
}

bool SystemSystem::SetCurrentDirectoryW(const char16_t* path) {
  return ::SetCurrentDirectoryW(Wide(path)) != FALSE;
}

}  // namespace ostrel::win32
