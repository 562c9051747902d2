// What the printer interface DLL's header winddiui.h of the platform's driver kit declares and the
// compiler's own set of headers leaves out: structures that the print system hands to a driver, and
// the modes of DrvConvertDevMode. Names and layout are those that the platform documents.
#pragma once

#include <windows.h>
#include <winspool.h>
#include <compstui.h>
#include <winddiui.h>
#include <winsplp.h>

// The last argument of DrvDocumentPropertySheets.
struct DOCUMENTPROPERTYHEADER {
  WORD cbSize;
  WORD Reserved;
  HANDLE hPrinter;
  LPWSTR pszPrinterName;
  PDEVMODEW pdmIn;
  PDEVMODEW pdmOut;
  DWORD cbOut;
  DWORD fMode;
};

// The last argument of DrvDevicePropertySheets.
struct DEVICEPROPERTYHEADER {
  WORD cbSize;
  WORD Flags;
  HANDLE hPrinter;
  LPWSTR pszPrinterName;
};

// The argument of DevQueryPrintEx.
struct DEVQUERYPRINT_INFO {
  WORD cbSize;
  WORD Level;
  HANDLE hPrinter;
  PDEVMODEW pDevMode;
  LPWSTR pszErrorStr;
  DWORD cchErrorStr;
  DWORD cchNeeded;
};

// Level 1 of DrvUpgradePrinter.
struct DRIVER_UPGRADE_INFO_1W {
  LPWSTR pPrinterName;
  LPWSTR pOldDriverDirectory;
};

// Modes of DrvConvertDevMode.
inline constexpr DWORD CDM_CONVERT = 1;
inline constexpr DWORD CDM_CONVERT351 = 2;
inline constexpr DWORD CDM_DRIVER_DEFAULT = 4;
