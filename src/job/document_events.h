// What the driver does around a document's calls: DrvDocumentEvent, which the graphics engine calls
// in the application's process while the render driver works behind the job's device context. The
// two talk through the private escapes of job/render_driver_escapes.h.
//
// Which page is stamped, and with what, is the render driver's to say at the end of each page: no
// state of a job is kept here between pages.
#pragma once

#include "platform/print_types.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// Events, DOCUMENTEVENT_... of winddiui.h.
enum DocumentEventCode : std::uint16_t {
  kDocumentCreateDcPre = 1,
  kDocumentStartDoc = 5,
  kDocumentStartPage = 6,
  kDocumentEndPage = 7,
  kDocumentStartDocPost = 13,
};

// Answers of DrvDocumentEvent.
inline constexpr std::int32_t kDocumentEventHandled = 1;      // DOCUMENTEVENT_SUCCESS
inline constexpr std::int32_t kDocumentEventUnsupported = 0;  // DOCUMENTEVENT_UNSUPPORTED
inline constexpr std::int32_t kDocumentEventRefused = -1;     // DOCUMENTEVENT_FAILURE

// The arguments of DrvDocumentEvent, as the graphics engine gives them. Any of the pointers may be
// null.
struct DocumentEvent {
  PrinterHandle hPrinter;
  DeviceContext hdc;
  std::int32_t iEsc;  // the event in the low 16 bits
  std::uint32_t cbIn;
  void* pvIn;
  std::uint32_t cbOut;
  void* pvOut;
  bool operator==(const DocumentEvent&) const = default;
};

// Handles one event. Refusing the start of a document refuses the job.
std::int32_t DrvDocumentEvent(const DocumentEvent& event);

// The start of a document: the companion library hears of it; a universal printer whose model has
// changed since its settings were made refuses the job, after a box; the render driver learns the
// computer's name, and the status monitor the printer's. Without the companion library none of this
// happens, and the job goes on.
std::int32_t OnStartDoc(const DocumentEvent& event);

// Draws the stamp of the page that ends, if the render driver has one for it and doesn't forbid it.
void StampPage(DeviceContext hdc);

}  // namespace ostrel
