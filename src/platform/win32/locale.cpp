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

}  // namespace ostrel::win32
