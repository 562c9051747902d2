// Libraries and the strings in them, from kernel32 and user32.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>

namespace ostrel::win32 {

std::uint32_t SystemModules::GetModuleFileNameW(ModuleHandle module, char16_t* path,
                                                std::uint32_t units) {
  return ::GetModuleFileNameW(FromModule(module), Wide(path), units);
}

ModuleHandle SystemModules::LoadLibraryW(const char16_t* path) {
  return ToModule(::LoadLibraryW(Wide(path)));
}

bool SystemModules::FreeLibrary(ModuleHandle module) {
  return ::FreeLibrary(FromModule(module)) != FALSE;
}

int SystemModules::LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int units) {
  return ::LoadStringW(FromModule(module), id, Wide(buffer), units);
}

bool SystemModules::FindResourceW(ModuleHandle module, std::uint32_t id, std::uint32_t type) {
  return ::FindResourceW(FromModule(module), MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(type)) !=
         nullptr;
}

ExportedFunction SystemModules::GetProcAddress(ModuleHandle module, const char* name) {
  return reinterpret_cast<ExportedFunction>(
      reinterpret_cast<void*>(::GetProcAddress(FromModule(module), name)));
}

}  // namespace ostrel::win32
