// The common property sheet, called by a test itself as the spooler calls it, with a driver's sheet
// function in it; and which of the two common sheets this run has.
#pragma once

#include "platform/win32/driver_interface.h"

#include <windows.h>
#include <compstui.h>

#include <ostream>
#include <vector>

namespace ostrel::print_system {

// Whether this run has the stand-in, which does what the platform documents: it asks for the title,
// tells the result (reason 3) and tells Cancel from OK. The print system's own one doesn't.
bool HasStandInSheet();

// One call that the driver's function got, and what it answered.
struct SheetReasonCall {
  WORD reason;
  LONG answer;
  bool operator==(const SheetReasonCall&) const = default;
};
void PrintTo(const SheetReasonCall& call, std::ostream* out);

// What a call of the common sheet came to.
struct CommonSheetCall {
  LONG (*function)(PPROPSHEETUI_INFO, LPARAM);
  LPARAM header;  // the driver's own argument of "init"
  std::vector<SheetReasonCall> seen = {};
  DWORD result = 0xCCCCCCCC;

  // Shows the sheet, and returns when it is closed.
  LONG Run();
};

}  // namespace ostrel::print_system
