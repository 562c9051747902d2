// The layout page: several pages on a sheet, poster or booklet, scale, orientation, toner saving.
#pragma once

#include "core/ui_context.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

std::intptr_t LayoutPageProcedure(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                                  std::intptr_t lParam);

// Shows the record in the page's controls once more; nothing when the calling thread has no such
// page.
void RefreshLayoutPage(UIContext& context);

}  // namespace ostrel
