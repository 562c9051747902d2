// A dialog procedure as the window system calls it, whose frames know nothing of C++: nothing that
// might be thrown below it leaves it.
#pragma once

#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

template <DialogProcedure procedure>
std::intptr_t Guarded(WindowHandle dialog, std::uint32_t message, std::uintptr_t wParam,
                      std::intptr_t lParam) noexcept {
  try {
    return procedure(dialog, message, wParam, lParam);
  } catch (...) {
    return 0;
  }
}

}  // namespace ostrel
