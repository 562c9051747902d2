// The context: the object behind one property sheet, one document-properties call or one printer
// event. It owns a working settings record and the parameter table, and it holds the caller's
// printer handle without owning it.
#pragma once

#include "core/parameter_table.h"
#include "core/settings_record.h"
#include "platform/print_types.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

inline constexpr std::size_t kDriverNameUnits = 260;

// Zero-filled when made.
struct UIContext {
  SheetHandle sheetHandle;                 // set when pages are added
  DocumentPropertyHeader* documentHeader;  // of a document sheet; the caller's
  DriverDevmode devmode;                   // the working record: public part, then private part
  SheetCallback sheetCallback;             // for the set-result call
  PrivateDevmode* privatePointer;          // at devmode.privateDevmode; all code goes through it
  PublicDevmode* publicPointer;            // at devmode.publicDevmode
  PrinterHandle printerHandle;             // the caller's
  UIParamTable uiParams;
  std::uint32_t activePage;  // number of the page that last took the record; 0 at start
  std::uint32_t reserved;    // 0
  char16_t driverName[kDriverNameUnits];  // also a subkey of the per-user store
  std::uint32_t applied;                  // 1 after Apply took the record, 0 after a page's reset
  std::uint32_t deviceSheet;              // 1 for printer properties, 0 for document properties
  std::uint32_t noPermission;             // 1 locks the pages' Defaults button
  ModuleHandle languageModule;
  ModuleHandle bitmapModule;
  std::uint32_t silentPrint;    // written by the device page
  std::uint32_t settingResult;  // 1 while the common sheet is being told of a result
};

// Makes a context for `printer`: the driver's defaults, then the spooler's stored record, then
// `callerDevmode` if there is one, each merged and repaired, so that the caller's record wins.
// Records that can't be merged are passed over. Afterwards the custom paper array is zero and
// FavoriteName isn't empty.
// Result: the context, to be freed with FreeUIContext; null when there is no memory, when the
// printer tells nothing, when its driver name is too long, or when the bitmap library is missing.
UIContext* CreateUIContext(PrinterHandle printer, const PublicDevmode* callerDevmode);

// Frees the block of a context. Its language and bitmap libraries stay loaded. Null is allowed.
void FreeUIContext(UIContext* context);

}  // namespace ostrel
