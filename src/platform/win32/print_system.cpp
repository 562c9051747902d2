// Printers and drivers, from winspool.drv.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>
#include <winspool.h>

namespace ostrel::win32 {

bool SystemPrintSystem::OpenPrinterW(const char16_t* name, PrinterHandle* printer,
                                     const PrinterDefaults* defaults) {
  // The platform takes both as pointers to writable data and writes to neither.
  auto* nativeName = const_cast<wchar_t*>(Wide(name));
  PRINTER_DEFAULTSW nativeDefaults = {};
  if (defaults != nullptr) {
    nativeDefaults.pDatatype = Wide(defaults->pDatatype);
    nativeDefaults.pDevMode = reinterpret_cast<DEVMODEW*>(defaults->pDevMode);
    nativeDefaults.DesiredAccess = defaults->DesiredAccess;
  }
  HANDLE handle = nullptr;
  const bool opened =
      ::OpenPrinterW(nativeName, &handle, defaults != nullptr ? &nativeDefaults : nullptr) != FALSE;
  *printer = opened ? ToPrinter(handle) : nullptr;
  return opened;
}

bool SystemPrintSystem::ClosePrinter(PrinterHandle printer) {
  return ::ClosePrinter(printer) != FALSE;
}

bool SystemPrintSystem::GetPrinterW(PrinterHandle printer, std::uint32_t level, void* buffer,
                                    std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
  DWORD needed = 0;
  const BOOL had = ::GetPrinterW(printer, level, static_cast<BYTE*>(buffer), sizeBytes, &needed);
  *neededBytes = needed;
  return had != FALSE;
}

bool SystemPrintSystem::GetPrinterDriverW(PrinterHandle printer, const char16_t* environment,
                                          std::uint32_t level, void* buffer,
                                          std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
  DWORD needed = 0;
  const BOOL had = ::GetPrinterDriverW(printer, const_cast<wchar_t*>(Wide(environment)), level,
                                       static_cast<BYTE*>(buffer), sizeBytes, &needed);
  *neededBytes = needed;
  return had != FALSE;
}

bool SystemPrintSystem::GetPrinterDriverDirectoryW(const char16_t* server,
                                                   const char16_t* environment, std::uint32_t level,
                                                   void* buffer, std::uint32_t sizeBytes,
                                                   std::uint32_t* neededBytes) {
  DWORD needed = 0;
  const BOOL had = ::GetPrinterDriverDirectoryW(const_cast<wchar_t*>(Wide(server)),
                                                const_cast<wchar_t*>(Wide(environment)), level,
                                                static_cast<BYTE*>(buffer), sizeBytes, &needed);
  *neededBytes = needed;
  return had != FALSE;
}

bool SystemPrintSystem::GetPrinterDriverDirectoryA(const char* server, const char* environment,
                                                   std::uint32_t level, void* buffer,
                                                   std::uint32_t sizeBytes,
                                                   std::uint32_t* neededBytes) {
  DWORD needed = 0;
  const BOOL had =
      ::GetPrinterDriverDirectoryA(const_cast<char*>(server), const_cast<char*>(environment), level,
                                   static_cast<BYTE*>(buffer), sizeBytes, &needed);
  *neededBytes = needed;
  return had != FALSE;
}

std::uint32_t SystemPrintSystem::GetPrinterDataW(PrinterHandle printer, const char16_t* name,
                                                 std::uint32_t* type, void* data,
                                                 std::uint32_t sizeBytes,
                                                 std::uint32_t* neededBytes) {
  DWORD kind = 0;
  DWORD needed = 0;
  const DWORD status = ::GetPrinterDataW(printer, const_cast<wchar_t*>(Wide(name)), &kind,
                                         static_cast<BYTE*>(data), sizeBytes, &needed);
  *type = kind;
  *neededBytes = needed;
  return status;
}

std::uint32_t SystemPrintSystem::SetPrinterDataW(PrinterHandle printer, const char16_t* name,
                                                 std::uint32_t type, const void* data,
                                                 std::uint32_t sizeBytes) {
  // The platform takes the data as writable and doesn't write to it.
  return ::SetPrinterDataW(printer, const_cast<wchar_t*>(Wide(name)), type,
                           static_cast<BYTE*>(const_cast<void*>(data)), sizeBytes);
}

bool SystemPrintSystem::SetPrinterW(PrinterHandle printer, std::uint32_t level, const void* buffer,
                                    std::uint32_t command) {
  // The platform takes the structure as writable and doesn't write to it.
  return ::SetPrinterW(printer, level, static_cast<BYTE*>(const_cast<void*>(buffer)), command) !=
         FALSE;
}

}  // namespace ostrel::win32
