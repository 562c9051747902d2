// Boxes that the user has to answer.
#pragma once

#include "platform/print_types.h"

#include <cstdint>

namespace ostrel {

// Shows a box, which reads from right to left where the language in force does. `owner` may be
// null. Result: the button's id, 0 when the box can't be shown.
int ShowMessageBox(WindowHandle owner, const char16_t* text, const char16_t* title,
                   std::uint32_t style);

}  // namespace ostrel
