#include "job/document_events.h"

#include "core/companion.h"
#include "core/language.h"
#include "core/message_box.h"
#include "core/model_table.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/settings_record.h"
#include "core/text.h"
#include "job/page_stamp.h"
#include "job/render_driver_escapes.h"
#include "job/status_monitor.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace ostrel {
namespace {

// ---- The render driver --------------------------------------------------------------------------

// Escapes of the two kinds. What they answer isn't looked at: a render driver that doesn't know one
// leaves the caller's words as they are.
void Command(DeviceContext hdc, RenderDriverEscape escape) {
  World().graphics.ExtEscape(hdc, escape, 0, nullptr, 0, nullptr);
}

template <typename Word>
void Read(DeviceContext hdc, RenderDriverEscape escape, Word* word) {
  World().graphics.ExtEscape(hdc, escape, 0, nullptr, static_cast<std::int32_t>(sizeof(Word)),
                             word);
}

// What is drawn between its two ends is the page's stamp.
class StampBrackets {
 public:
  explicit StampBrackets(DeviceContext hdc) : hdc_(hdc) { Command(hdc_, kEscapeStampBegins); }
  ~StampBrackets() { Command(hdc_, kEscapeStampEnds); }
  StampBrackets(const StampBrackets&) = delete;
  StampBrackets& operator=(const StampBrackets&) = delete;

 private:
  DeviceContext hdc_;
};

void TellComputerName(DeviceContext hdc) {
  // The size that is asked with counts units; only its first bytes go out.
  std::array<char16_t, kComputerNameBytes> name = {};
  auto units = static_cast<std::uint32_t>(name.size());
  if (World().system.GetComputerNameW(name.data(), &units)) {
    World().graphics.ExtEscape(hdc, kEscapeComputerName, static_cast<int>(kComputerNameBytes),
                               name.data(), 0, nullptr);
  }
}

// ---- The start of a document --------------------------------------------------------------------

using CompanionEvent = std::int32_t (*)(PrinterHandle hPrinter, DeviceContext hdc,
                                        std::int32_t iEsc, std::uint32_t cbIn, void* pvIn,
                                        std::uint32_t cbOut, void* pvOut);

void TellCompanion(ModuleHandle companion, const DocumentEvent& event) {
  const auto entry = reinterpret_cast<CompanionEvent>(
      World().modules.GetProcAddress(companion, "OlDocumentEvent"));
  if (entry != nullptr) {
    entry(event.hPrinter, event.hdc, event.iEsc, event.cbIn, event.pvIn, event.cbOut, event.pvOut);
  }
}

// The printer's name; empty when the printer doesn't tell it.
UserText PrinterNameOf(PrinterHandle printer) {
  UserText name = {};
  ReadPrinterName(printer, name);
  return name;
}

// Tells the user that the settings were made for another model. All its words come from the user's
// store.
void WarnModelChanged(const UserText& printerName, const UserText& model) {
  const UserText advice = ReadUserText(u"RegTips", printerName.data());
  const UserText changed = ReadUserText(u"RegTips2", printerName.data());
  const UserText settings = ReadUserText(u"ConfigPrintInfo", printerName.data());
  std::array<char16_t, kUserTextUnits> text;
  TextBuilder(text)
      .Add(FieldText(settings))
      .Add(FieldText(changed))
      .Add(FieldText(model))
      .Add(FieldText(advice));
  ShowMessageBox(nullptr, text.data(), model.data(), kMbIconExclamation);
}

// Whether a universal printer's model has changed since the sheet wrote down for which one its
// settings are. A sheet that wrote nothing down refuses no job.
bool RefusesJob(const UserText& printerName) {
  if (!IsUniversalPrinter(printerName.data())) {
    return false;
  }
  SelectModelFlags(printerName.data());
  const UserText configured = ReadUserText(u"ConfigPrinterName", printerName.data());
  const UserText model = ReadUserText(u"PrinterName", printerName.data());
  if (FieldText(configured).empty() || FieldText(configured) == FieldText(model)) {
    return false;
  }
  WarnModelChanged(printerName, model);
  return true;
}

// ---- The events ---------------------------------------------------------------------------------

std::int32_t DoNothing(const DocumentEvent& /*event*/) {
  return kDocumentEventHandled;
}

std::int32_t OnStartPage(const DocumentEvent& event) {
  Command(event.hdc, kEscapePageStarts);
  return kDocumentEventHandled;
}

std::int32_t OnEndPage(const DocumentEvent& event) {
  PrinterNameOf(event.hPrinter);  // is asked at each page, although nothing needs it
  StampPage(event.hdc);
  return kDocumentEventHandled;
}

struct DocumentEventRow {
  DocumentEventCode code;
  std::int32_t (*work)(const DocumentEvent& event);
};

// clang-format off
constexpr DocumentEventRow kDocumentEvents[] = {
    // Event                Work
    {kDocumentCreateDcPre,  DoNothing},
    {kDocumentStartDoc,     OnStartDoc},
    {kDocumentStartPage,    OnStartPage},
    {kDocumentEndPage,      OnEndPage},
    {kDocumentStartDocPost, DoNothing},
};
// clang-format on

}  // namespace

std::int32_t DrvDocumentEvent(const DocumentEvent& event) {
  const auto* row = std::ranges::find(kDocumentEvents, static_cast<std::uint16_t>(event.iEsc),
                                      &DocumentEventRow::code);
  return row == std::end(kDocumentEvents) ? kDocumentEventUnsupported : row->work(event);
}

std::int32_t OnStartDoc(const DocumentEvent& event) {
  const ScopedModule companion(LoadCompanionByCodePage());
  if (companion.get() == nullptr) {
    return kDocumentEventHandled;
  }
  TellCompanion(companion.get(), event);
  if (RefusesJob(PrinterNameOf(event.hPrinter))) {
    return kDocumentEventRefused;
  }
  TellComputerName(event.hdc);
  NotifyStatusMonitor(event.hPrinter);
  return kDocumentEventHandled;
}

void StampPage(DeviceContext hdc) {
  const Size page = {World().graphics.GetDeviceCaps(hdc, kDeviceCapHorzRes),
                     World().graphics.GetDeviceCaps(hdc, kDeviceCapVertRes)};
  WatermarkData record = {};
  std::int32_t PageState = 0;
  std::int32_t StampForbidden = 0;
  Read(hdc, kEscapeReadWatermark, &record);
  Read(hdc, kEscapePageState, &PageState);
  Read(hdc, kEscapeStampForbidden, &StampForbidden);
  if (record.PageWMIndex != 0 && StampForbidden == 0) {
    constexpr double kScale = 1.0;
    const StampBrackets brackets(hdc);
    DrawPrintStamp(hdc, {0, 0, page.width, page.height}, record, PageState, kScale, page);
  }
}

}  // namespace ostrel
