#include "platform/headless/edit_class.h"

#include <algorithm>
#include <array>
#include <string>

namespace ostrel::headless {
namespace {

// Messages and notifications that the lists don't name, winuser.h.
constexpr std::uint32_t kEmGetSel = 0x00B0;
constexpr std::uint32_t kEmCanUndo = 0x00C6;
constexpr std::uint32_t kEmEmptyUndoBuffer = 0x00CD;
constexpr std::uint32_t kEmGetLimitText = 0x00D5;
constexpr std::uint32_t kWmChar = 0x0102;
constexpr std::uint16_t kEnUpdate = 0x0400;
constexpr std::uint16_t kEnMaxText = 0x0501;
constexpr std::uint16_t kCbnEditUpdate = 6;

// A combo box whose text changes has no row selected any more when it tells of the change.
void TellOfChange(HeadlessWindows& windows, WindowHandle control) {
  const bool isCombo = windows.Find(control)->IsCombo();
  windows.IfAlive(control, [&](const Window& window) {
    windows.NotifyParent(window, isCombo ? kCbnEditUpdate : kEnUpdate);
  });
  windows.IfAlive(control, [&](Window& window) {
    window.list.selection = -1;
    windows.NotifyParent(window, isCombo ? kCbnEditChange : kEnChange);
  });
}

void ForgetUndo(EditState& edit) {
  edit.undoText.clear();
  edit.undoPlace = 0;
  edit.undoInserted = 0;
}

// What EM_UNDO takes back grows as long as deletions, and insertions behind them, are contiguous.
void RememberDeletion(EditState& edit, std::size_t start, std::size_t end,
                      const std::u16string& deleted) {
  const bool extends = edit.undoInserted == 0 && !edit.undoText.empty();
  if (extends && start == edit.undoPlace) {
    edit.undoText += deleted;
  } else if (extends && end == edit.undoPlace) {
    edit.undoText.insert(0, deleted);
    edit.undoPlace = start;
  } else {
    edit.undoText = deleted;
    edit.undoPlace = start;
  }
  edit.undoInserted = 0;
}

void RememberInsertion(EditState& edit, std::size_t start, std::size_t count) {
  const bool extends = edit.undoInserted != 0 && start == edit.undoPlace + edit.undoInserted;
  if (start == edit.undoPlace || extends) {
    edit.undoInserted += count;
    return;
  }
  edit.undoPlace = start;
  edit.undoInserted = count;
  edit.undoText.clear();
}

void Replace(Window& window, std::u16string_view text) {
  EditState& edit = window.edit;
  const std::size_t start = edit.selectionStart;
  if (const std::size_t end = edit.selectionEnd; end > start) {
    RememberDeletion(edit, start, end, window.text.substr(start, end - start));
    window.text.erase(start, end - start);
  }
  if (!text.empty()) {
    RememberInsertion(edit, start, text.size());
    window.text.insert(start, text);
  }
  edit.selectionStart = edit.selectionEnd = start + text.size();
}

// Takes back the last change, which a second undo makes again.
bool Undo(HeadlessWindows& windows, Window& window) {
  EditState& edit = window.edit;
  if (edit.undoInserted == 0 && edit.undoText.empty()) {
    return false;
  }
  const std::u16string text = edit.undoText;
  edit.selectionStart = edit.undoPlace;
  edit.selectionEnd = std::min(edit.undoPlace + edit.undoInserted, window.text.size());
  ForgetUndo(edit);
  Replace(window, text);
  edit.selectionStart = edit.undoPlace;
  edit.selectionEnd = edit.undoPlace + edit.undoInserted;
  TellOfChange(windows, window.handle);
  return true;
}

}  // namespace

void SelectText(Window& window, std::int32_t start, std::int32_t end) {
  const std::size_t length = window.text.size();
  EditState& edit = window.edit;
  if (start < 0) {  // nothing stays selected
    edit.selectionStart = edit.selectionEnd;
    return;
  }
  const auto clamp = [length](std::int32_t place) {
    return place < 0 ? length : std::min(static_cast<std::size_t>(place), length);
  };
  edit.selectionStart = std::min(clamp(start), clamp(end));
  edit.selectionEnd = std::max(clamp(start), clamp(end));
}

std::intptr_t SelectionWords(const Window& window) {
  return static_cast<std::intptr_t>(
      MakeWords(static_cast<std::uint16_t>(window.edit.selectionStart),
                static_cast<std::uint16_t>(window.edit.selectionEnd)));
}

void LimitText(Window& window, std::uintptr_t units) {
  constexpr std::size_t kMostUnits = 0x7FFFFFFE;
  window.edit.limit = units == 0 ? kMostUnits : units;
}

void SetEditText(HeadlessWindows& windows, Window& window, std::u16string_view text) {
  window.text = text;
  window.edit.selectionStart = window.edit.selectionEnd = 0;
  ForgetUndo(window.edit);
  if (window.kind == WindowKind::kEdit && (window.style & kEditMultiline) == 0) {
    TellOfChange(windows, window.handle);
  }
}

void TypeCharacter(HeadlessWindows& windows, Window& window, char16_t unit) {
  const bool isDigit = unit >= u'0' && unit <= u'9';
  const bool forDigits = window.kind == WindowKind::kEdit && (window.style & kEditNumber) != 0;
  if (window.TakesTyping() && (isDigit || !forDigits)) {
    ReplaceSelection(windows, window.handle, {&unit, 1});
  }
}

void ReplaceSelection(HeadlessWindows& windows, WindowHandle control, std::u16string_view text) {
  Window& window = *windows.Find(control);
  const EditState& state = window.edit;
  const std::size_t kept = window.text.size() - (state.selectionEnd - state.selectionStart);
  const std::size_t room = state.limit > kept ? state.limit - kept : 0;
  const bool cut = text.size() > room;
  const std::u16string_view fitting = text.substr(0, room);
  if (cut && window.kind == WindowKind::kEdit) {  // a combo box passes no such word on
    windows.NotifyParent(window, kEnMaxText);
  }
  if (!windows.IsWindow(control) || (fitting.empty() && !text.empty())) {
    return;  // nothing of it fits
  }
  Replace(window, fitting);
  TellOfChange(windows, control);
}

std::intptr_t AnswerEdit(HeadlessWindows& windows, Window& window, std::uint32_t message,
                         std::uintptr_t wParam, std::intptr_t lParam) {
  EditState& edit = window.edit;
  switch (message) {
    case kEmSetSel:
      SelectText(window, static_cast<std::int32_t>(wParam), static_cast<std::int32_t>(lParam));
      return 1;
    case kEmGetSel:
      return SelectionWords(window);
    case kEmLimitText:
      LimitText(window, wParam);
      return 0;
    case kEmGetLimitText:
      return static_cast<std::intptr_t>(edit.limit);
    case kEmSetReadOnly:
      window.style = wParam != 0 ? window.style | kEditReadOnly : window.style & ~kEditReadOnly;
      return 1;
    case kEmUndo:
      return Undo(windows, window) ? 1 : 0;
    case kEmCanUndo:
      return edit.undoInserted != 0 || !edit.undoText.empty() ? 1 : 0;
    case kEmEmptyUndoBuffer:
      ForgetUndo(edit);
      return 0;
    case kWmChar:
      TypeCharacter(windows, window, static_cast<char16_t>(wParam));
      return 0;
    default:
      return 0;
  }
}

}  // namespace ostrel::headless
