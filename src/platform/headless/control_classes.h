// What the window classes answer to messages, and what a user's hand does to them.
#pragma once

#include "platform/headless/headless_windows.h"

#include <cstdint>
#include <string_view>

namespace ostrel::headless {

// The kind of a class, by its name in lower case.
WindowKind KindOfClass(std::u16string_view className);

// A message to a control, as its class answers it; 0 for messages that it doesn't know.
std::intptr_t AnswerControlMessage(HeadlessWindows& windows, WindowHandle control,
                                   std::uint32_t message, std::uintptr_t wParam,
                                   std::intptr_t lParam);

// What a button does when it is pressed and let go: the automatic ones change their state, all tell
// their parent.
void PressButton(HeadlessWindows& windows, WindowHandle button);

// One press of an arrow of a spin control. The parent is asked first by UDN_DELTAPOS: +1 for the
// upper arrow where the maximum lies above the minimum and -1 where it lies below, as it does
// before any range was set; the other way round for the lower arrow. It moves only when the answer
// is 0.
void PressArrow(HeadlessWindows& windows, WindowHandle spin, bool upper);

}  // namespace ostrel::headless
