// Between the logic's plain types and the platform's own: both name the same bits, so these are
// casts and nothing else. abi_checks.cpp asserts that the layouts agree.
#pragma once

#include "platform/window_types.h"

#include <windows.h>

namespace ostrel::win32 {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline wchar_t* Wide(char16_t* text) {
  return reinterpret_cast<wchar_t*>(text);
}
inline const wchar_t* Wide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}
inline char16_t* Utf16(wchar_t* text) {
  return reinterpret_cast<char16_t*>(text);
}
inline const char16_t* Utf16(const wchar_t* text) {
  return reinterpret_cast<const char16_t*>(text);
}

inline PrinterHandle ToPrinter(HANDLE handle) {
  return static_cast<PrinterHandle>(handle);
}
inline ModuleHandle ToModule(HMODULE module) {
  return reinterpret_cast<ModuleHandle>(module);
}
inline HMODULE FromModule(ModuleHandle module) {
  return reinterpret_cast<HMODULE>(module);
}
inline FileHandle ToFile(HANDLE handle) {
  return static_cast<FileHandle>(handle);
}

inline TokenHandle ToToken(HANDLE handle) {
  return static_cast<TokenHandle>(handle);
}
inline HKEY FromKey(RegistryKey key) {
  return reinterpret_cast<HKEY>(key);
}
inline RegistryKey ToKey(HKEY key) {
  return reinterpret_cast<RegistryKey>(key);
}
inline HWND FromWindow(WindowHandle window) {
  return reinterpret_cast<HWND>(window);
}
inline WindowHandle ToWindow(HWND window) {
  return reinterpret_cast<WindowHandle>(window);
}

inline HDC FromContext(DeviceContext context) {
  return reinterpret_cast<HDC>(context);
}
inline DeviceContext ToContext(HDC context) {
  return reinterpret_cast<DeviceContext>(context);
}

inline PublicDevmode* ToDevmode(DEVMODEW* record) {
  return reinterpret_cast<PublicDevmode*>(record);
}
inline const PublicDevmode* ToDevmode(const DEVMODEW* record) {
  return reinterpret_cast<const PublicDevmode*>(record);
}

}  // namespace ostrel::win32
