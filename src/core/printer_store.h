// What is kept on the printer object and per user.
//
// Built so far: the printer's own description. Tray equipment, the upgrade of the printer data and
// the per-user values are asked through the functions below and answered with "none".
#pragma once

#include "core/heap_block.h"
#include "platform/print_types.h"

#include <cstdint>
#include <span>

namespace ostrel {

inline constexpr std::uint32_t kRegSz = 1;  // REG_SZ, winnt.h

// Optional trays that can be missing.
inline constexpr int kOptionalTrays = 2;

// The printer's PRINTER_INFO_2. Null, after a debug line, when the printer tells nothing.
HeapBlock<PrinterInfo2> GetPrinterInfo2(PrinterHandle printer);

// How many of the two optional trays are missing: 0, 1 or 2. No information counts as 2.
int CountMissingTrays(PrinterHandle printer);

// Brings the printer data block up to this version. Result: true when the block was written.
bool UpgradePrinterData(PrinterHandle printer);

// Reads a per-user text value. Result: true when the user's store could be opened, whatever became
// of the value; a missing value leaves `text` as it was.
bool ReadUserString(const char16_t* valueName, const char16_t* subkey, std::span<char16_t> text);

// Writes a per-user text value. Result: true when it was stored.
bool WriteUserString(const char16_t* valueName, const char16_t* text, const char16_t* subkey);

}  // namespace ostrel
