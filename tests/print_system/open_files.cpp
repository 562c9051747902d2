#include "open_files.h"

#include <windows.h>

#include <psapi.h>

namespace ostrel::print_system {

std::size_t OpenFiles() {
  WIN32_FIND_DATAW entry = {};
  const HANDLE search = FindFirstFileW(L"Z:\\proc\\self\\fd\\*", &entry);
  if (search == INVALID_HANDLE_VALUE) {
    return 0;
  }
  std::size_t count = 1;
  while (FindNextFileW(search, &entry) != FALSE) {
    ++count;
  }
  FindClose(search);
  return count;
}

std::size_t WorkingSetBytes() {
  PROCESS_MEMORY_COUNTERS counters = {};
  counters.cb = sizeof(counters);
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
  return counters.WorkingSetSize;
}

}  // namespace ostrel::print_system
