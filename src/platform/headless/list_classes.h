// The classes of combo and list boxes: their rows, which of them is selected, and what a combo box
// with an edit shows of them there.
#pragma once

#include "platform/headless/headless_windows.h"

#include <cstdint>

namespace ostrel::headless {

// A message to a combo or list box, as its class answers it.
std::intptr_t AnswerList(HeadlessWindows& windows, Window& window, std::uint32_t message,
                         std::uintptr_t wParam, std::intptr_t lParam);

// Puts the selected row's text into a combo box's edit, and selects it there while the box has the
// focus. Without a selected row, or without an edit, nothing changes.
void ShowSelectedRow(HeadlessWindows& windows, Window& window);

}  // namespace ostrel::headless
