// The registry and security of advapi32, the shell and its help.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>

#include <htmlhelp.h>
#include <sddl.h>
#include <shellapi.h>
#include <shfolder.h>

namespace ostrel::win32 {

// ---- Registry -----------------------------------------------------------------------------------

std::uint32_t SystemRegistry::RegCreateKeyExW(const char16_t* path, RegistryKey* key) {
  HKEY opened = nullptr;
  const LSTATUS status =
      ::RegCreateKeyExW(HKEY_USERS, Wide(path), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_QUERY_VALUE | KEY_SET_VALUE, nullptr, &opened, nullptr);
  *key = ToKey(opened);
  return static_cast<std::uint32_t>(status);
}

std::uint32_t SystemRegistry::RegQueryValueExW(RegistryKey key, const char16_t* name,
                                               std::uint32_t* type, void* data,
                                               std::uint32_t* sizeBytes) {
  DWORD kind = 0;
  DWORD size = *sizeBytes;
  const LSTATUS status =
      ::RegQueryValueExW(FromKey(key), Wide(name), nullptr, &kind, static_cast<BYTE*>(data), &size);
  *type = kind;
  *sizeBytes = size;
  return static_cast<std::uint32_t>(status);
}

std::uint32_t SystemRegistry::RegSetValueExW(RegistryKey key, const char16_t* name,
                                             std::uint32_t type, const void* data,
                                             std::uint32_t sizeBytes) {
  return static_cast<std::uint32_t>(::RegSetValueExW(FromKey(key), Wide(name), 0, type,
                                                     static_cast<const BYTE*>(data), sizeBytes));
}

std::uint32_t SystemRegistry::RegCloseKey(RegistryKey key) {
  return static_cast<std::uint32_t>(::RegCloseKey(FromKey(key)));
}

// ---- Security -----------------------------------------------------------------------------------

bool SystemSecurity::OpenProcessToken(TokenHandle* token) {
  HANDLE opened = nullptr;
  const BOOL good = ::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened);
  *token = ToToken(opened);
  return good != FALSE;
}

bool SystemSecurity::GetTokenInformation(TokenHandle token, std::uint32_t informationClass,
                                         void* buffer, std::uint32_t sizeBytes,
                                         std::uint32_t* neededBytes) {
  DWORD needed = 0;
  const BOOL good = ::GetTokenInformation(
      token, static_cast<TOKEN_INFORMATION_CLASS>(informationClass), buffer, sizeBytes, &needed);
  *neededBytes = needed;
  return good != FALSE;
}

bool SystemSecurity::CloseHandle(TokenHandle token) {
  return ::CloseHandle(token) != FALSE;
}

bool SystemSecurity::ConvertSidToStringSidW(void* sid, char16_t** text) {
  LPWSTR made = nullptr;
  const BOOL good = ::ConvertSidToStringSidW(sid, &made);
  *text = Utf16(made);
  return good != FALSE;
}

void SystemSecurity::LocalFree(void* block) {
  ::LocalFree(block);
}

bool SystemSecurity::GetUserNameW(char16_t* buffer, std::uint32_t* units) {
  DWORD size = *units;
  const BOOL good = ::GetUserNameW(Wide(buffer), &size);
  *units = size;
  return good != FALSE;
}

// ---- Shell --------------------------------------------------------------------------------------

std::uint32_t SystemShell::SHGetFolderPathW(std::uint32_t folder, char16_t* path) {
  constexpr DWORD kCurrentPath = 0;  // SHGFP_TYPE_CURRENT of shlobj.h, as against the default one
  return static_cast<std::uint32_t>(
      ::SHGetFolderPathW(nullptr, static_cast<int>(folder), nullptr, kCurrentPath, Wide(path)));
}

bool SystemShell::ShellExecuteW(const char16_t* verb, const char16_t* file,
                                const char16_t* parameters, std::int32_t showCommand) {
  // The platform documents values above 32 as success.
  return reinterpret_cast<INT_PTR>(::ShellExecuteW(nullptr, Wide(verb), Wide(file),
                                                   Wide(parameters), nullptr, showCommand)) > 32;
}

WindowHandle SystemShell::HtmlHelpW(WindowHandle window, const char16_t* file,
                                    std::uint32_t command, std::uintptr_t data) {
  // The help control is loaded when help is first asked for, not with the driver: a spooler never
  // needs it. It stays loaded, as its help window does.
  using Function = decltype(&::HtmlHelpW);
  const HMODULE control = ::LoadLibraryW(L"hhctrl.ocx");
  const auto help = control == nullptr ? nullptr
                                       : reinterpret_cast<Function>(reinterpret_cast<void*>(
                                             ::GetProcAddress(control, "HtmlHelpW")));
  return help == nullptr ? nullptr : ToWindow(help(FromWindow(window), Wide(file), command, data));
}

}  // namespace ostrel::win32
