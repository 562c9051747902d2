// Which pages the two property sheets have, in their order. The one place that knows all pages.
#pragma once

#include "core/sheet_frame.h"

#include <array>

namespace ostrel {

extern const std::array<SheetPageRow, kDocumentPageRows> kDocumentPages;
extern const std::array<SheetPageRow, kPrinterPageRows> kPrinterPages;

}  // namespace ostrel
