// The user's locale and language, from kernel32.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>

namespace ostrel::win32 {

int SystemLocale::GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                                 int units) {
  return ::GetLocaleInfoW(locale, type, Wide(buffer), units);
}

std::uint16_t SystemLocale::GetUserDefaultUILanguage() {
  return ::GetUserDefaultUILanguage();
}

int SystemLocale::GetDateFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                                 const char16_t* format, char16_t* buffer, int units) {
  return ::GetDateFormatW(locale, flags, reinterpret_cast<const SYSTEMTIME*>(&time), Wide(format),
                          Wide(buffer), units);
}

int SystemLocale::GetTimeFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                                 const char16_t* format, char16_t* buffer, int units) {
  return ::GetTimeFormatW(locale, flags, reinterpret_cast<const SYSTEMTIME*>(&time), Wide(format),
                          Wide(buffer), units);
}

int SystemLocale::MultiByteToWideChar(std::uint32_t codePage, const char* text, char16_t* buffer,
                                      int units) {
  constexpr int kToTerminator = -1;
  return ::MultiByteToWideChar(codePage, 0, text, kToTerminator, Wide(buffer), units);
}

}  // namespace ostrel::win32
