// The exported entry points of the library, and the one place where its pieces are put together:
// the system's platform goes behind the logic when the library is attached. Each entry point
// translates the print system's types and calls the logic; there are no decisions here.
//
// Promise to the print system: nothing thrown inside the library leaves an entry point.
// docs/entry_points.md tells what each of them answers.
#include "core/device_capabilities.h"
#include "core/devmode_queries.h"
#include "core/library_lifetime.h"
#include "core/page_state_table.h"
#include "core/printer_event.h"
#include "core/process_state.h"
#include "core/sheet_frame.h"
#include "driver/page_tables.h"
#include "job/document_events.h"
#include "job/xps_adjustment.h"
#include "platform/win32/driver_interface.h"
#include "platform/win32/native_types.h"
#include "platform/win32/win32_platform.h"

#include <windows.h>
#include <winspool.h>

using ostrel::win32::ToContext;
using ostrel::win32::ToDevmode;
using ostrel::win32::ToPrinter;
using ostrel::win32::Utf16;

namespace {

static_assert(ostrel::kPrinterEventInitialize == PRINTER_EVENT_INITIALIZE);
static_assert(ostrel::kPrinterEventCacheRefresh == PRINTER_EVENT_CACHE_REFRESH);
static_assert(ostrel::kDriverEventDelete == DRIVER_EVENT_DELETE);
static_assert(ostrel::kDocumentCreateDcPre == DOCUMENTEVENT_CREATEDCPRE);
static_assert(ostrel::kDocumentStartDoc == DOCUMENTEVENT_STARTDOC);
static_assert(ostrel::kDocumentStartPage == DOCUMENTEVENT_STARTPAGE);
static_assert(ostrel::kDocumentEndPage == DOCUMENTEVENT_ENDPAGE);
static_assert(ostrel::kDocumentStartDocPost == DOCUMENTEVENT_STARTDOCPOST);
static_assert(ostrel::kDocumentEventHandled == DOCUMENTEVENT_SUCCESS);
static_assert(ostrel::kDocumentEventUnsupported == DOCUMENTEVENT_UNSUPPORTED);
static_assert(ostrel::kDocumentEventRefused == DOCUMENTEVENT_FAILURE);
static_assert(static_cast<HRESULT>(ostrel::kXpsAdjusted) == S_OK);
static_assert(static_cast<HRESULT>(ostrel::kXpsNotAdjusted) == E_NOTIMPL);

constinit ostrel::ProcessState processState;
constinit ostrel::PageStateTable pageStates = {};

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
  processState.PageStates = &pageStates;
  ostrel::SetProcessState(&processState);
}

// The print system's structures under the logic's names for them.
ostrel::SheetInfo* ToSheet(PROPSHEETUI_INFO* info) {
  return reinterpret_cast<ostrel::SheetInfo*>(info);
}

}  // namespace

extern "C" {

// ---- Loading and unloading ----------------------------------------------------------------------

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* reserved) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      Attach(module);
      break;
    case DLL_PROCESS_DETACH:
      // The platform documents null for a library that is unloaded before the process ends.
      ostrel::DetachProcess(reserved == nullptr);
      break;
    case DLL_THREAD_ATTACH:
      ostrel::AttachThread();
      break;
    case DLL_THREAD_DETACH:
      ostrel::DetachThread();
      break;
    default:
      break;
  }
  return TRUE;
}

HRESULT WINAPI DllCanUnloadNow() {
  return ostrel::CanUnloadNow() ? S_OK : S_FALSE;
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

LONG WINAPI DrvDocumentPropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam) {
  return Contained<LONG>(ostrel::kSheetFailed, [&] {
    return ostrel::DrvDocumentPropertySheets(ToSheet(info), lParam, ostrel::kDocumentPages);
  });
}

LONG WINAPI DrvDevicePropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam) {
  return Contained<LONG>(ostrel::kSheetFailed, [&] {
    return ostrel::DrvDevicePropertySheets(ToSheet(info), lParam, ostrel::kPrinterPages);
  });
}

// ---- Events -------------------------------------------------------------------------------------

BOOL WINAPI DrvDriverEvent(DWORD event, DWORD /*level*/, LPBYTE /*driverInfo*/, LPARAM /*lParam*/) {
  return Contained<BOOL>(FALSE, [&] { return ostrel::DrvDriverEvent(event); });
}

BOOL WINAPI DrvPrinterEvent(LPWSTR printerName, INT event, DWORD /*flags*/, LPARAM /*lParam*/) {
  return Contained<BOOL>(
      FALSE, [&] { return ostrel::DrvPrinterEvent(Utf16(printerName), event) ? TRUE : FALSE; });
}

INT WINAPI DrvDocumentEvent(HANDLE printer, HDC deviceContext, INT event, ULONG inputBytes,
                            PVOID input, ULONG outputBytes, PVOID output) {
  // What goes wrong in here stops no job.
  return Contained<INT>(ostrel::kDocumentEventUnsupported, [&] {
    return ostrel::DrvDocumentEvent({ToPrinter(printer), ToContext(deviceContext), event,
                                     inputBytes, input, outputBytes, output});
  });
}

HRESULT WINAPI MxdcGetPDEVAdjustment(HANDLE /*printer*/, ULONG devmodeBytes,
                                     const DEVMODEW* devmode, ULONG propertiesBytes,
                                     void* properties) {
  return Contained<HRESULT>(E_NOTIMPL, [&] {
    return static_cast<HRESULT>(
        ostrel::MxdcGetPDEVAdjustment(devmodeBytes, ToDevmode(devmode), propertiesBytes,
                                      static_cast<ostrel::PrintPropertiesCollection*>(properties)));
  });
}

}  // extern "C"
