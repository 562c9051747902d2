// Memory, from the process heap of kernel32.
#include "platform/win32/system_lists.h"

#include <windows.h>

namespace ostrel::win32 {

void* SystemMemory::HeapAlloc(std::size_t sizeBytes) {
  return ::HeapAlloc(::GetProcessHeap(), HEAP_ZERO_MEMORY, sizeBytes);
}

void SystemMemory::HeapFree(void* block) {
  // Older systems don't promise that a null block is allowed.
  if (block != nullptr) {
    ::HeapFree(::GetProcessHeap(), 0, block);
  }
}

}  // namespace ostrel::win32
