// Between the logic's plain types and the platform's own: both name the same bits, so these are
// casts and nothing else. abi_checks.cpp asserts that the layouts agree.
#pragma once

#include "platform/print_types.h"

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

inline PublicDevmode* ToDevmode(DEVMODEW* record) {
  return reinterpret_cast<PublicDevmode*>(record);
}
inline const PublicDevmode* ToDevmode(const DEVMODEW* record) {
  return reinterpret_cast<const PublicDevmode*>(record);
}

}  // namespace ostrel::win32
