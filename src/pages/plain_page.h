// A page that takes part in Apply, Reset and the lock of the Defaults button, and has nothing of
// its own. It stands in the sheets' tables for pages whose dialogs aren't in the language libraries
// yet: their rows are left out of the sheet, unless a library brings such a dialog along.
#pragma once

#include "platform/window_types.h"

namespace ostrel {

std::intptr_t PlainPageProcedure(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                                 std::intptr_t lParam);

}  // namespace ostrel
