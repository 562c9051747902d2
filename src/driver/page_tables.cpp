#include "driver/page_tables.h"

#include "core/string_ids.h"
#include "pages/plain_page.h"
#include "pages/print_options.h"

namespace ostrel {

// clang-format off
const std::array<SheetPageRow, kDocumentPageRows> kDocumentPages = {{
    // Dialog, Title,                    Procedure
    {1072, kStringFavoritesTitle,     PlainPageProcedure},  // favourites and summary
    { 111, kStringPrintOptionsTitle,  PrintOptionsPageProcedure},
    { 693, kStringPaperTitle,         PlainPageProcedure},
    { 626, kStringLayoutTitle,        PlainPageProcedure},
    { 645, kStringWatermarkPageTitle, PlainPageProcedure},
    {1511, kStringJobPin,             PlainPageProcedure},
}};

const std::array<SheetPageRow, kPrinterPageRows> kPrinterPages = {{
    // Dialog, Title,                     Procedure
    { 651, kStringDeviceSettingsTitle, PlainPageProcedure},
    {1512, kStringAbout,               PlainPageProcedure},
}};
// clang-format on

}  // namespace ostrel
