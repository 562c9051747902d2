// A driver's entry points as the print system calls them: by name, out of the loaded library. For
// the questions that a print system on another machine, or a later one, would ask by itself.
#pragma once

#include "platform/win32/driver_interface.h"

#include <windows.h>
#include <winspool.h>

#include <string>

namespace ostrel::print_system {

// One entry point with the type of the function that it is.
template <typename Function>
Function* EntryPoint(HMODULE library, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

// The entry points of one library; null for a name that it doesn't export. The library stays loaded
// for as long as this lives.
class DriverExports {
 public:
  explicit DriverExports(const std::wstring& path)
      : library(LoadLibraryW(path.c_str())),
        DrvDeviceCapabilities(EntryPoint<DWORD WINAPI(HANDLE, PWSTR, WORD, PVOID, PDEVMODEW)>(
            library, "DrvDeviceCapabilities")),
        DevQueryPrintEx(EntryPoint<BOOL WINAPI(DEVQUERYPRINT_INFO*)>(library, "DevQueryPrintEx")),
        DrvQueryJobAttributes(EntryPoint<DWORD WINAPI(HANDLE, PDEVMODEW, DWORD, LPBYTE)>(
            library, "DrvQueryJobAttributes")),
        DrvConvertDevMode(EntryPoint<BOOL WINAPI(LPWSTR, PDEVMODEW, PDEVMODEW, PLONG, DWORD)>(
            library, "DrvConvertDevMode")),
        DrvUpgradePrinter(EntryPoint<BOOL WINAPI(DWORD, LPBYTE)>(library, "DrvUpgradePrinter")),
        DrvDocumentPropertySheets(EntryPoint<LONG WINAPI(PPROPSHEETUI_INFO, LPARAM)>(
            library, "DrvDocumentPropertySheets")),
        DrvDevicePropertySheets(
            EntryPoint<LONG WINAPI(PPROPSHEETUI_INFO, LPARAM)>(library, "DrvDevicePropertySheets")),
        DrvPrinterEvent(
            EntryPoint<BOOL WINAPI(LPWSTR, INT, DWORD, LPARAM)>(library, "DrvPrinterEvent")),
        DrvDriverEvent(
            EntryPoint<BOOL WINAPI(DWORD, DWORD, LPBYTE, LPARAM)>(library, "DrvDriverEvent")),
        DrvDocumentEvent(EntryPoint<INT WINAPI(HANDLE, HDC, INT, ULONG, PVOID, ULONG, PVOID)>(
            library, "DrvDocumentEvent")),
        MxdcGetPDEVAdjustment(
            EntryPoint<HRESULT WINAPI(HANDLE, ULONG, const DEVMODEW*, ULONG, void*)>(
                library, "MxdcGetPDEVAdjustment")),
        DllCanUnloadNow(EntryPoint<HRESULT WINAPI()>(library, "DllCanUnloadNow")) {}
  ~DriverExports() { FreeLibrary(library); }
  DriverExports(const DriverExports&) = delete;
  DriverExports& operator=(const DriverExports&) = delete;

  const HMODULE library;
  DWORD(WINAPI* const DrvDeviceCapabilities)(HANDLE, PWSTR, WORD, PVOID, PDEVMODEW);
  BOOL(WINAPI* const DevQueryPrintEx)(DEVQUERYPRINT_INFO*);
  DWORD(WINAPI* const DrvQueryJobAttributes)(HANDLE, PDEVMODEW, DWORD, LPBYTE);
  BOOL(WINAPI* const DrvConvertDevMode)(LPWSTR, PDEVMODEW, PDEVMODEW, PLONG, DWORD);
  BOOL(WINAPI* const DrvUpgradePrinter)(DWORD, LPBYTE);
  LONG(WINAPI* const DrvDocumentPropertySheets)(PPROPSHEETUI_INFO, LPARAM);
  LONG(WINAPI* const DrvDevicePropertySheets)(PPROPSHEETUI_INFO, LPARAM);
  BOOL(WINAPI* const DrvPrinterEvent)(LPWSTR, INT, DWORD, LPARAM);
  BOOL(WINAPI* const DrvDriverEvent)(DWORD, DWORD, LPBYTE, LPARAM);
  INT(WINAPI* const DrvDocumentEvent)(HANDLE, HDC, INT, ULONG, PVOID, ULONG, PVOID);
  HRESULT(WINAPI* const MxdcGetPDEVAdjustment)(HANDLE, ULONG, const DEVMODEW*, ULONG, void*);
  HRESULT(WINAPI* const DllCanUnloadNow)();
};

}  // namespace ostrel::print_system
