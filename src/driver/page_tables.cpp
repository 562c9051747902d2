#include "driver/page_tables.h"

#include "core/string_ids.h"
#include "pages/guarded_procedure.h"
#include "pages/layout.h"
#include "pages/paper.h"
#include "pages/plain_page.h"
#include "pages/print_options.h"

namespace ostrel {
// clang-format off
const std::array<SheetPageRow, kDocumentPageRows> kDocumentPages = {{
    // Dialog, Title,                    Procedure
    {1072, kStringFavoritesTitle,     Guarded<PlainPageProcedure>},  // favourites and summary
    { 111, kStringPrintOptionsTitle,  Guarded<PrintOptionsPageProcedure>},
    { 693, kStringPaperTitle,         Guarded<PaperPageProcedure>},
    { 626, kStringLayoutTitle,        Guarded<LayoutPageProcedure>},
    { 645, kStringWatermarkPageTitle, Guarded<PlainPageProcedure>},
    {1511, kStringJobPin,             Guarded<PlainPageProcedure>},
}};

const std::array<SheetPageRow, kPrinterPageRows> kPrinterPages = {{
    // Dialog, Title,                     Procedure
    { 651, kStringDeviceSettingsTitle, Guarded<PlainPageProcedure>},
    {1512, kStringAbout,               Guarded<PlainPageProcedure>},
}};
// clang-format on

}  // namespace ostrel
