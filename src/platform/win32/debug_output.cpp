// Debug lines and the last error, from kernel32.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>

namespace ostrel::win32 {

void SystemDebugOutput::OutputDebugStringW(const char16_t* line) {
  ::OutputDebugStringW(Wide(line));
}

std::uint32_t SystemDebugOutput::GetLastError() {
  return ::GetLastError();
}

void SystemDebugOutput::SetLastError(std::uint32_t code) {
  ::SetLastError(code);
}

}  // namespace ostrel::win32
