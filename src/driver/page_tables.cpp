#include "driver/page_tables.h"

#include "core/string_ids.h"
#include "pages/plain_page.h"
#include "pages/print_options.h"

namespace ostrel {
namespace {

// A page as the window system calls it, whose frames know nothing of C++: nothing that might be
// thrown below it leaves it.
template <DialogProcedure procedure>
std::intptr_t Page(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                   std::intptr_t lParam) noexcept {
  try {
    return procedure(page, message, wParam, lParam);
  } catch (...) {
    return 0;
  }
}

}  // namespace

// clang-format off
const std::array<SheetPageRow, kDocumentPageRows> kDocumentPages = {{
    // Dialog, Title,                    Procedure
    {1072, kStringFavoritesTitle,     Page<PlainPageProcedure>},  // favourites and summary
    { 111, kStringPrintOptionsTitle,  Page<PrintOptionsPageProcedure>},
    { 693, kStringPaperTitle,         Page<PlainPageProcedure>},
    { 626, kStringLayoutTitle,        Page<PlainPageProcedure>},
    { 645, kStringWatermarkPageTitle, Page<PlainPageProcedure>},
    {1511, kStringJobPin,             Page<PlainPageProcedure>},
}};

const std::array<SheetPageRow, kPrinterPageRows> kPrinterPages = {{
    // Dialog, Title,                     Procedure
    { 651, kStringDeviceSettingsTitle, Page<PlainPageProcedure>},
    {1512, kStringAbout,               Page<PlainPageProcedure>},
}};
// clang-format on

}  // namespace ostrel
