// The exported entry points of the library, and the one place where its pieces are put together:
// the system's platform goes behind the logic when the library is attached. Each entry point
// translates the print system's types and calls the logic; there are no decisions here.
//
// Promises to the print system: nothing thrown inside the library leaves it, and an entry point
// whose work isn't built yet answers as a driver does that has nothing to add. docs/entry_points.md
// lists these.
#include "config/setting_stores.h"
#include "core/device_capabilities.h"
#include "core/devmode_queries.h"
#include "core/process_state.h"
#include "platform/win32/driver_interface.h"
#include "platform/win32/native_types.h"
#include "platform/win32/win32_platform.h"

#include <windows.h>
#include <winspool.h>

using ostrel::win32::ToDevmode;
using ostrel::win32::ToPrinter;
using ostrel::win32::Utf16;

namespace {

// What a property sheet's entry point answers when no sheet is to appear.
constexpr LONG kNoSheet = -1;

constinit ostrel::ProcessState processState;

// Runs an entry point's work. The logic throws nothing; but the callers' frames know nothing of
// C++, so whatever a library below it might throw ends here, and the entry point fails.
template <typename Answer, typename Work>
Answer Contained(Answer onException, Work work) noexcept {
  try {
    return work();
  } catch (...) {
    return onException;
  }
}

void Attach(HINSTANCE module) {
  processState.platform = &ostrel::win32::SystemPlatform();
  processState.LibraryModule = ostrel::win32::ToModule(module);
  ostrel::SetProcessState(&processState);
}

void Detach() {
  if (processState.CurrentLanguageModule != nullptr) {
    processState.platform->modules.FreeLibrary(processState.CurrentLanguageModule);
    processState.CurrentLanguageModule = nullptr;
  }
}

}  // namespace

extern "C" {

// ---- Loading and unloading ----------------------------------------------------------------------

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    Attach(module);
  } else if (reason == DLL_PROCESS_DETACH) {
    Detach();
  }
  return TRUE;
}

// Nothing counts users of the library, so it may always be unloaded.
HRESULT WINAPI DllCanUnloadNow() {
  return S_OK;
}

// ---- Capabilities and device modes --------------------------------------------------------------

DWORD WINAPI DrvDeviceCapabilities(HANDLE printer, PWSTR deviceName, WORD capability, PVOID output,
                                   PDEVMODEW devmode) {
  return Contained<DWORD>(ostrel::kCapabilityUnknown, [&] {
    return ostrel::DrvDeviceCapabilities(ToPrinter(printer), Utf16(deviceName), capability, output,
                                         ToDevmode(devmode));
  });
}

BOOL WINAPI DevQueryPrintEx(DEVQUERYPRINT_INFO* info) {
  return Contained<BOOL>(FALSE, [&] {
    return ostrel::DevQueryPrintEx(reinterpret_cast<ostrel::DevQueryPrintInfo*>(info)) ? TRUE
                                                                                       : FALSE;
  });
}

DWORD WINAPI DrvQueryJobAttributes(HANDLE /*printer*/, PDEVMODEW devmode, DWORD level,
                                   LPBYTE attributes) {
  return Contained<DWORD>(
      0, [&] { return ostrel::DrvQueryJobAttributes(ToDevmode(devmode), level, attributes); });
}

BOOL WINAPI DrvConvertDevMode(LPWSTR printerName, PDEVMODEW in, PDEVMODEW out, PLONG sizeBytes,
                              DWORD mode) {
  static_assert(sizeof(LONG) == sizeof(std::int32_t));
  return Contained<BOOL>(FALSE, [&] {
    return ostrel::DrvConvertDevMode(Utf16(printerName), ToDevmode(in), ToDevmode(out),
                                     reinterpret_cast<std::int32_t*>(sizeBytes), mode)
               ? TRUE
               : FALSE;
  });
}

BOOL WINAPI DrvUpgradePrinter(DWORD level, LPBYTE upgradeInfo) {
  return Contained<BOOL>(
      FALSE, [&] { return ostrel::DrvUpgradePrinter(level, upgradeInfo) ? TRUE : FALSE; });
}

// ---- Property sheets ----------------------------------------------------------------------------

// Without a sheet's description this is the form that shows nothing. The sheet itself isn't built.
LONG WINAPI DrvDocumentPropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam) {
  if (info != nullptr) {
    return kNoSheet;
  }
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the print system passes a pointer this way.
  auto* header = reinterpret_cast<ostrel::DocumentPropertyHeader*>(lParam);
  return Contained<LONG>(kNoSheet, [&] { return ostrel::DocumentPropertiesWithoutDialog(header); });
}

// The printer's sheet isn't built.
LONG WINAPI DrvDevicePropertySheets(PPROPSHEETUI_INFO /*info*/, LPARAM /*lParam*/) {
  return kNoSheet;
}

// ---- Events -------------------------------------------------------------------------------------

// A driver that is removed takes the settings file with it that this process has used. The spooler
// reads no meaning into the answer; this driver gives 0 for every event.
BOOL WINAPI DrvDriverEvent(DWORD event, DWORD /*level*/, LPBYTE /*driverInfo*/, LPARAM /*lParam*/) {
  return Contained<BOOL>(FALSE, [&] {
    if (event == DRIVER_EVENT_DELETE) {
      ostrel::DeleteRememberedSettingsFile();
    }
    return FALSE;
  });
}

// Work at printer events isn't built. TRUE stands for "no objection": a spooler that hears FALSE
// when a printer is made reports that the printer's configuration failed.
BOOL WINAPI DrvPrinterEvent(LPWSTR /*printerName*/, INT /*event*/, DWORD /*flags*/,
                            LPARAM /*lParam*/) {
  return TRUE;
}

// Work at document events isn't built. This is what the platform documents for an event that a
// driver doesn't support; printing goes on.
INT WINAPI DrvDocumentEvent(HANDLE /*printer*/, HDC /*deviceContext*/, INT /*event*/,
                            ULONG /*inputBytes*/, PVOID /*input*/, ULONG /*outputBytes*/,
                            PVOID /*output*/) {
  return DOCUMENTEVENT_UNSUPPORTED;
}

// Adjustments for printing to an XPS document aren't built; the platform then keeps its own values.
HRESULT WINAPI MxdcGetPDEVAdjustment(HANDLE /*printer*/, ULONG /*devmodeBytes*/,
                                     const DEVMODEW* /*devmode*/, ULONG /*propertiesBytes*/,
                                     void* /*properties*/) {
  return E_NOTIMPL;
}

}  // extern "C"
