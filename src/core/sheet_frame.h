// The frame of the property sheets: the print system's protocol, the pages that a sheet shows, and
// the way of the record from the sheet's opening to the caller.
//
// The print system calls an entry point once for each reason. At "init" a context is made and the
// pages are added; the print system keeps the context and passes it back at every later reason.
// Pages live in between, on the sheet's thread. The caller's output record is written when the
// settings are applied, and at no other time.
#pragma once

#include "core/process_state.h"
#include "core/ui_context.h"
#include "platform/window_types.h"

#include <cstdint>
#include <span>

namespace ostrel {

// One page of a sheet. A row whose dialog isn't in the language library is left out.
struct SheetPageRow {
  std::uint16_t dialogId;
  std::uint16_t titleStringId;
  DialogProcedure procedure;
};

// Numbers by which `activePage` of the context tells which page showed the record last.
enum PageNumber : std::uint32_t {
  kPrintOptionsPage = 1,
  kPaperPage = 2,
  kLayoutPage = 3,
  kWatermarkPage = 4,
  kJobPinPage = 5,
  kFavoritesPage = 7,
};

inline constexpr std::int32_t kSheetFailed = -1;
inline constexpr std::int32_t kSheetDone = 1;

// Printing preferences. `info` tells the reason; without one this is the form that shows nothing,
// and `lParam` is a DocumentPropertyHeader. `rows` are the pages, the job's PIN last: that one is
// shown for some model families only. Result: kSheetDone, kSheetFailed when no sheet is to appear
// or when a reason comes without a context, or what the form without a sheet answers.
std::int32_t DrvDocumentPropertySheets(SheetInfo* info, std::intptr_t lParam,
                                       std::span<const SheetPageRow, kDocumentPageRows> rows);

// Printer properties.
std::int32_t DrvDevicePropertySheets(SheetInfo* info, std::intptr_t lParam,
                                     std::span<const SheetPageRow, kPrinterPageRows> rows);

// Takes the settings over: to the caller's output record, when the caller asked for one. `window`
// is the page whose "apply" this is, null when it comes from the sheet itself. Result: false for a
// null context.
bool ApplySettings(WindowHandle window, UIContext* context);

// What a page's "reset" does: the end of the sheet then takes nothing over.
void ForgetApply(UIContext* context);

}  // namespace ostrel
