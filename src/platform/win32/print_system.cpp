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

}  // namespace ostrel::win32
