// The text that a user can edit: that of an edit, and that of a combo box which has one. Both keep
// it in the same state, and tell of its changes in their own codes.
#pragma once

#include "platform/headless/headless_windows.h"

#include <cstdint>
#include <string_view>

namespace ostrel::headless {

// A message to an edit, as its class answers it.
std::intptr_t AnswerEdit(HeadlessWindows& windows, Window& window, std::uint32_t message,
                         std::uintptr_t wParam, std::intptr_t lParam);

// A text set by code isn't held to the limit, can't be undone, and is told of like a typed one.
// Only an edit of several lines keeps silent, and so does a combo box.
void SetEditText(HeadlessWindows& windows, Window& window, std::u16string_view text);

// Puts a text in as a user does, in place of what is selected, within the limit.
void ReplaceSelection(HeadlessWindows& windows, WindowHandle control, std::u16string_view text);

// One character of the keyboard. An edit that is only to be read, or is for digits, may refuse it.
void TypeCharacter(HeadlessWindows& windows, Window& window, char16_t unit);

// Selects from one place to another, in whichever order; an end below 0 is that of the text, a
// start below 0 selects nothing.
void SelectText(Window& window, std::int32_t start, std::int32_t end);

// Where the selection starts and ends, as messages tell it.
std::intptr_t SelectionWords(const Window& window);

// How many units a user can put in; 0 for as many as there are.
void LimitText(Window& window, std::uintptr_t units);

}  // namespace ostrel::headless
