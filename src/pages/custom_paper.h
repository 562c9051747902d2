// The dialog of the user's own paper sizes.
#pragma once

#include "core/ui_context.h"
#include "platform/window_types.h"

namespace ostrel {

// Shows the dialog over a page and returns when it is closed. Result: whether it was left by OK.
bool ShowCustomPaperDialog(WindowHandle page, UIContext& context);

}  // namespace ostrel
