// The dialog of a booklet's binding and cover.
#pragma once

#include "core/ui_context.h"
#include "platform/window_types.h"

namespace ostrel {

// Shows the dialog over a page and returns when it is closed. Result: whether it was left by OK,
// with the settings written.
bool ShowBookletCoverDialog(WindowHandle page, UIContext& context);

}  // namespace ostrel
