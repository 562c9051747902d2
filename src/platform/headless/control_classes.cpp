#include "platform/headless/control_classes.h"

#include "platform/headless/names.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

namespace ostrel::headless {
namespace {

// Messages and notifications that the lists don't name, winuser.h and commctrl.h.
constexpr std::uint32_t kEmGetSel = 0x00B0;
constexpr std::uint32_t kEmCanUndo = 0x00C6;
constexpr std::uint32_t kEmEmptyUndoBuffer = 0x00CD;
constexpr std::uint32_t kEmGetLimitText = 0x00D5;
constexpr std::uint32_t kWmChar = 0x0102;
constexpr std::uint32_t kBmGetCheck = 0x00F0;
constexpr std::uint32_t kBmSetCheck = 0x00F1;
constexpr std::uint32_t kBmGetImage = 0x00F6;
constexpr std::uint32_t kBmSetImage = 0x00F7;
constexpr std::uint32_t kStmGetIcon = 0x0171;
constexpr std::uint32_t kCbDeleteString = 0x0144;
constexpr std::uint32_t kCbGetText = 0x0148;
constexpr std::uint32_t kCbGetTextLength = 0x0149;
constexpr std::uint32_t kCbInsertString = 0x014A;
constexpr std::uint32_t kCbFindString = 0x014C;
constexpr std::uint32_t kCbSelectString = 0x014D;
constexpr std::uint32_t kCbFindStringExact = 0x0158;
constexpr std::uint32_t kLbAddString = 0x0180;
constexpr std::uint32_t kLbInsertString = 0x0181;
constexpr std::uint32_t kLbDeleteString = 0x0182;
constexpr std::uint32_t kLbResetContent = 0x0184;
constexpr std::uint32_t kLbSetCurSel = 0x0186;
constexpr std::uint32_t kLbGetCurSel = 0x0188;
constexpr std::uint32_t kLbGetText = 0x0189;
constexpr std::uint32_t kLbGetTextLength = 0x018A;
constexpr std::uint32_t kLbGetCount = 0x018B;
constexpr std::uint32_t kLbFindString = 0x018F;
constexpr std::uint32_t kLbGetItemData = 0x0199;
constexpr std::uint32_t kLbSetItemData = 0x019A;
constexpr std::uint32_t kLbFindStringExact = 0x01A2;
constexpr std::uint32_t kUdmSetBuddy = kWmUser + 105;
constexpr std::uint32_t kUdmGetBuddy = kWmUser + 106;
constexpr std::uint32_t kUdmGetAccel = kWmUser + 108;
constexpr std::uint32_t kUdmSetRange32 = kWmUser + 111;
constexpr std::uint32_t kUdmSetPos32 = kWmUser + 113;
constexpr std::uint32_t kUdmGetPos32 = kWmUser + 114;
constexpr std::uint32_t kTtmGetToolCount = kWmUser + 13;
constexpr std::uint32_t kTtmGetTipBackgroundColor = kWmUser + 22;
constexpr std::uint32_t kTtmGetMaxTipWidth = kWmUser + 25;
constexpr std::uint32_t kTtmDelTool = kWmUser + 51;
constexpr std::uint16_t kEnUpdate = 0x0400;
constexpr std::uint16_t kEnMaxText = 0x0501;

// Works on with a control after a notification, if that has left it alive.
template <typename Work>
void IfAlive(HeadlessWindows& windows, WindowHandle control, Work work) {
  if (Window* window = windows.Find(control); window != nullptr) {
    work(*window);
  }
}

// ---- Edits --------------------------------------------------------------------------------------

void TellOfChange(HeadlessWindows& windows, WindowHandle edit) {
  for (const std::uint16_t code : {kEnUpdate, std::uint16_t{kEnChange}}) {
    IfAlive(windows, edit, [&](Window& window) { windows.NotifyParent(window, code); });
  }
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

void Select(Window& window, std::uintptr_t from, std::intptr_t to) {
  const std::size_t length = window.text.size();
  const auto start = static_cast<std::int32_t>(from);
  const auto end = static_cast<std::int32_t>(to);
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

// A text set by code isn't held to the limit, can't be undone, and is told of like a typed one.
// Only an edit of several lines keeps silent.
void SetEditText(HeadlessWindows& windows, Window& window, const char16_t* text) {
  window.text = text == nullptr ? u"" : text;
  window.edit.selectionStart = window.edit.selectionEnd = 0;
  ForgetUndo(window.edit);
  if ((window.style & kEditMultiline) == 0) {
    TellOfChange(windows, window.handle);
  }
}

void TypeCharacter(HeadlessWindows& windows, Window& window, char16_t unit) {
  const bool isDigit = unit >= u'0' && unit <= u'9';
  if ((window.style & kEditReadOnly) != 0 || ((window.style & kEditNumber) != 0 && !isDigit)) {
    return;
  }
  ReplaceSelection(windows, window.handle, {&unit, 1});
}

std::intptr_t AnswerEdit(HeadlessWindows& windows, Window& window, std::uint32_t message,
                         std::uintptr_t wParam, std::intptr_t lParam) {
  constexpr std::size_t kMostUnits = 0x7FFFFFFE;
  EditState& edit = window.edit;
  switch (message) {
    case kEmSetSel:
      Select(window, wParam, lParam);
      return 1;
    case kEmGetSel:
      return static_cast<std::intptr_t>(MakeWords(static_cast<std::uint16_t>(edit.selectionStart),
                                                  static_cast<std::uint16_t>(edit.selectionEnd)));
    case kEmLimitText:
      edit.limit = wParam == 0 ? kMostUnits : wParam;
      return 0;
    case kEmGetLimitText:
      return static_cast<std::intptr_t>(edit.limit);
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

// ---- Buttons ------------------------------------------------------------------------------------

bool HasCheck(const Window& button) {
  const std::uint32_t type = button.ButtonTypeOf();
  return (type >= kCheckBox && type <= kAutoThreeState) || type == kAutoRadio;
}

std::uint32_t MostCheck(const Window& button) {
  const std::uint32_t type = button.ButtonTypeOf();
  return type == kThreeState || type == kAutoThreeState ? 2 : 1;
}

// A radio button is a stop of the Tab key while it is checked, and only then.
void MakeStop(Window& window) {
  if (window.ButtonTypeOf() == kRadio || window.ButtonTypeOf() == kAutoRadio) {
    window.style =
        window.checkState != 0 ? window.style | kStyleTabStop : window.style & ~kStyleTabStop;
  }
}

// The radio buttons between two group marks are one another's rivals.
void CheckAlone(HeadlessWindows& windows, const Window& radio) {
  const Window* dialog = windows.Find(radio.parent);
  std::vector<Window*> rivals;
  bool found = false;
  for (const WindowHandle handle : dialog->children) {
    Window* window = windows.Find(handle);
    if ((window->style & kStyleGroup) != 0) {
      if (found) {
        break;
      }
      rivals.clear();
    }
    found = found || handle == radio.handle;
    rivals.push_back(window);
  }
  for (Window* rival : rivals) {
    if (rival->kind == WindowKind::kButton && rival->ButtonTypeOf() == kAutoRadio) {
      rival->checkState = rival->handle == radio.handle ? 1 : 0;
      MakeStop(*rival);
    }
  }
}

std::intptr_t AnswerButton(HeadlessWindows& windows, Window& window, std::uint32_t message,
                           std::uintptr_t wParam, std::intptr_t lParam) {
  switch (message) {
    case kBmGetCheck:
      return window.checkState;
    case kBmSetCheck:
      if (HasCheck(window)) {
        window.checkState = std::min(static_cast<std::uint32_t>(wParam), MostCheck(window));
        MakeStop(window);
      }
      return 0;
    case kBmClick: {  // as the mouse would, though even a disabled button obeys
      const WindowHandle button = window.handle;
      windows.MoveFocusByMouse(button);
      PressButton(windows, button);
      return 0;
    }
    case kBmSetImage:
      return std::exchange(window.image, lParam);
    case kBmGetImage:
      return window.image;
    default:
      return 0;
  }
}

// ---- Static controls ----------------------------------------------------------------------------

// An image of another kind than the control's style is refused.
std::intptr_t SetStaticImage(Window& window, std::uintptr_t kind, std::intptr_t image) {
  const std::uint32_t type = window.StaticTypeOf();
  const bool fits = (type == kStaticIcon && kind == kImageIcon) ||
                    (type == kStaticBitmap && kind == kImageBitmap);
  if (!fits) {
    return 0;
  }
  return std::exchange(window.image, image);
}

std::intptr_t AnswerStatic(Window& window, std::uint32_t message, std::uintptr_t wParam,
                           std::intptr_t lParam) {
  const bool isIcon = window.StaticTypeOf() == kStaticIcon;
  switch (message) {
    case kStmSetImage:
      return SetStaticImage(window, wParam, lParam);
    case kStmSetIcon:
      return SetStaticImage(window, kImageIcon, static_cast<std::intptr_t>(wParam));
    case kStmGetImage:
      return (wParam == kImageIcon) == isIcon ? window.image : 0;
    case kStmGetIcon:
      return isIcon ? window.image : 0;
    default:
      return 0;
  }
}

// ---- Combo and list boxes -----------------------------------------------------------------------

// What a list does, by whichever class's message it was asked.
enum class ListOrder {
  kAdd,
  kInsert,
  kDelete,
  kReset,
  kCount,
  kSelect,
  kSelection,
  kText,
  kTextLength,
  kData,
  kSetData,
  kFindPrefix,
  kFindExact,
  kSelectPrefix,
};
struct ListMessage {
  std::uint32_t combo;
  std::uint32_t list;
  ListOrder order;
};
constexpr std::array<ListMessage, 14> kListMessages = {{
    {kCbAddString, kLbAddString, ListOrder::kAdd},
    {kCbInsertString, kLbInsertString, ListOrder::kInsert},
    {kCbDeleteString, kLbDeleteString, ListOrder::kDelete},
    {kCbResetContent, kLbResetContent, ListOrder::kReset},
    {kCbGetCount, kLbGetCount, ListOrder::kCount},
    {kCbSetCurSel, kLbSetCurSel, ListOrder::kSelect},
    {kCbGetCurSel, kLbGetCurSel, ListOrder::kSelection},
    {kCbGetText, kLbGetText, ListOrder::kText},
    {kCbGetTextLength, kLbGetTextLength, ListOrder::kTextLength},
    {kCbGetItemData, kLbGetItemData, ListOrder::kData},
    {kCbSetItemData, kLbSetItemData, ListOrder::kSetData},
    {kCbFindString, kLbFindString, ListOrder::kFindPrefix},
    {kCbFindStringExact, kLbFindStringExact, ListOrder::kFindExact},
    {kCbSelectString, 0, ListOrder::kSelectPrefix},
}};

bool KeepsStrings(const Window& window) {
  if (window.IsCombo()) {
    return (window.style & kComboOwnerDraw) == 0 || (window.style & kComboHasStrings) != 0;
  }
  return (window.style & kListOwnerDraw) == 0 || (window.style & kListHasStrings) != 0;
}

bool IsSorted(const Window& window) {
  return (window.style & (window.IsCombo() ? kComboSort : kListSort)) != 0;
}

std::intptr_t AddItem(Window& window, std::intptr_t place, std::intptr_t lParam) {
  std::vector<ListItem>& items = window.list.items;
  ListItem item;
  if (KeepsStrings(window)) {
    item.text = PointerIn<const char16_t>(lParam);
  } else {
    item.data = static_cast<std::uintptr_t>(lParam);
  }
  auto where = items.end();
  if (place >= 0) {
    if (static_cast<std::size_t>(place) > items.size()) {
      return kCbErr;
    }
    where = items.begin() + place;
  } else if (place == kCbErr && IsSorted(window)) {
    where = std::ranges::upper_bound(items, LowerCase(item.text), {},
                                     [](const ListItem& other) { return LowerCase(other.text); });
  }
  const auto added = items.insert(where, std::move(item));
  return added - items.begin();
}

std::intptr_t SelectRow(Window& window, std::intptr_t row) {
  if (row < 0 || static_cast<std::size_t>(row) >= window.list.items.size()) {
    window.list.selection = -1;
    return kCbErr;
  }
  window.list.selection = static_cast<std::int32_t>(row);
  return row;
}

// From the row behind `after` on, and round.
std::intptr_t FindRow(const Window& window, std::intptr_t after, const char16_t* text, bool exact) {
  const std::vector<ListItem>& items = window.list.items;
  const std::u16string sought = LowerCase(text);
  for (std::size_t step = 0; step < items.size(); ++step) {
    const std::size_t row = (static_cast<std::size_t>(after + 1) + step) % items.size();
    const std::u16string candidate = LowerCase(items[row].text);
    if (exact ? candidate == sought : candidate.starts_with(sought)) {
      return static_cast<std::intptr_t>(row);
    }
  }
  return kCbErr;
}

std::intptr_t CopyText(const std::u16string& text, std::intptr_t buffer) {
  std::copy_n(text.c_str(), text.size() + 1, PointerIn<char16_t>(buffer));
  return static_cast<std::intptr_t>(text.size());
}

std::intptr_t DeleteRow(Window& window, std::size_t row) {
  ListState& list = window.list;
  list.items.erase(list.items.begin() + static_cast<std::ptrdiff_t>(row));
  if (list.selection == static_cast<std::int32_t>(row)) {
    list.selection = -1;
  } else if (list.selection > static_cast<std::int32_t>(row)) {
    --list.selection;
  }
  return static_cast<std::intptr_t>(list.items.size());
}

// Orders that name a row, which there must be.
std::intptr_t AnswerRow(Window& window, ListOrder order, std::uintptr_t row, std::intptr_t lParam) {
  if (row >= window.list.items.size()) {
    return kCbErr;
  }
  ListItem& item = window.list.items[row];
  switch (order) {
    case ListOrder::kDelete:
      return DeleteRow(window, row);
    case ListOrder::kText:
      return CopyText(item.text, lParam);
    case ListOrder::kTextLength:
      return static_cast<std::intptr_t>(item.text.size());
    case ListOrder::kData:
      return static_cast<std::intptr_t>(item.data);
    default:
      item.data = static_cast<std::uintptr_t>(lParam);
      return 0;
  }
}

std::intptr_t AnswerList(Window& window, std::uint32_t message, std::uintptr_t wParam,
                         std::intptr_t lParam) {
  const bool isCombo = window.IsCombo();
  const auto found = std::ranges::find_if(kListMessages, [&](const ListMessage& row) {
    return message != 0 && message == (isCombo ? row.combo : row.list);
  });
  if (found == kListMessages.end()) {
    return 0;
  }
  ListState& list = window.list;
  const auto row = static_cast<std::int32_t>(wParam);
  const auto* text = PointerIn<const char16_t>(lParam);
  switch (found->order) {
    case ListOrder::kAdd:
      return AddItem(window, kCbErr, lParam);
    case ListOrder::kInsert:
      return AddItem(window, row == -1 ? static_cast<std::intptr_t>(list.items.size()) : row,
                     lParam);
    case ListOrder::kReset:
      list.items.clear();
      list.selection = -1;
      return 0;
    case ListOrder::kCount:
      return static_cast<std::intptr_t>(list.items.size());
    case ListOrder::kSelect:
      return SelectRow(window, row);
    case ListOrder::kSelection:
      return list.selection;
    case ListOrder::kFindPrefix:
    case ListOrder::kFindExact:
      return FindRow(window, row, text, found->order == ListOrder::kFindExact);
    case ListOrder::kSelectPrefix: {
      const std::intptr_t match = FindRow(window, row, text, false);
      return match < 0 ? kCbErr : SelectRow(window, match);
    }
    default:
      return AnswerRow(window, found->order, wParam, lParam);
  }
}

// ---- Spin controls ------------------------------------------------------------------------------

std::int32_t Clamp(const SpinState& spin, std::int32_t position) {
  return std::clamp(position, std::min(spin.minimum, spin.maximum),
                    std::max(spin.minimum, spin.maximum));
}

std::u16string Widen(const std::string& text) {
  return {text.begin(), text.end()};
}

// The buddy's text follows the position; a text that is already there is not set again.
void ShowPosition(HeadlessWindows& windows, const Window& window) {
  constexpr std::size_t kGroup = 3;
  Window* buddy = windows.Find(window.spin.buddy);
  if (buddy == nullptr || (window.style & kSpinSetBuddyInt) == 0) {
    return;
  }
  std::string digits = std::to_string(std::abs(window.spin.position));
  if ((window.style & kSpinNoThousands) == 0) {
    for (std::size_t place = digits.size(); place > kGroup; place -= kGroup) {
      digits.insert(place - kGroup, 1, ',');
    }
  }
  const std::u16string text = Widen((window.spin.position < 0 ? "-" : "") + digits);
  if (buddy->text == text) {
    return;
  }
  if (buddy->kind == WindowKind::kEdit) {
    SetEditText(windows, *buddy, text.c_str());
  } else {
    buddy->text = text;
  }
}

// Reads a position that the user has typed into the buddy. Result: false when it isn't one.
bool ReadPosition(HeadlessWindows& windows, Window& window) {
  const Window* buddy = windows.Find(window.spin.buddy);
  if (buddy == nullptr || (window.style & kSpinSetBuddyInt) == 0) {
    return true;
  }
  std::string digits;
  for (const char16_t unit : buddy->text) {
    if (unit != u',') {
      digits += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
  }
  char* end = nullptr;
  const long value = std::strtol(digits.c_str(), &end, 10);
  const auto position = static_cast<std::int32_t>(std::clamp(value, -0x7FFFFFFFL, 0x7FFFFFFFL));
  if (digits.empty() || *end != '\0' || Clamp(window.spin, position) != position) {
    return false;
  }
  window.spin.position = position;
  return true;
}

std::intptr_t SetPosition(HeadlessWindows& windows, Window& window, std::int32_t position) {
  const std::int32_t previous = std::exchange(window.spin.position, Clamp(window.spin, position));
  ShowPosition(windows, window);
  return previous;
}

std::int16_t LowShort(std::intptr_t words) {
  return static_cast<std::int16_t>(LowWord(static_cast<std::uintptr_t>(words)));
}
std::int16_t HighShort(std::intptr_t words) {
  return static_cast<std::int16_t>(HighWord(static_cast<std::uintptr_t>(words)));
}

std::intptr_t AnswerPosition(HeadlessWindows& windows, Window& window) {
  const bool good = ReadPosition(windows, window);
  return static_cast<std::intptr_t>(
      MakeWords(static_cast<std::uint16_t>(window.spin.position), good ? 0 : 1));
}

std::intptr_t AnswerPosition32(HeadlessWindows& windows, Window& window, std::intptr_t failed) {
  const bool good = ReadPosition(windows, window);
  if (failed != 0) {
    *PointerIn<std::int32_t>(failed) = good ? 0 : 1;  // BOOL
  }
  return window.spin.position;
}

std::intptr_t AnswerSpin(HeadlessWindows& windows, Window& window, std::uint32_t message,
                         std::uintptr_t wParam, std::intptr_t lParam) {
  SpinState& spin = window.spin;
  switch (message) {
    case kUdmSetRange:
      spin.maximum = LowShort(lParam);
      spin.minimum = HighShort(lParam);
      return 0;
    case kUdmGetRange:
      return static_cast<std::intptr_t>(MakeWords(static_cast<std::uint16_t>(spin.maximum),
                                                  static_cast<std::uint16_t>(spin.minimum)));
    case kUdmSetRange32:
      spin.minimum = static_cast<std::int32_t>(wParam);
      spin.maximum = static_cast<std::int32_t>(lParam);
      return 0;
    case kUdmSetPos:
      return SetPosition(windows, window, LowShort(lParam));
    case kUdmSetPos32:
      return SetPosition(windows, window, static_cast<std::int32_t>(lParam));
    case kUdmGetPos:
      return AnswerPosition(windows, window);
    case kUdmGetPos32:
      return AnswerPosition32(windows, window, lParam);
    case kUdmSetBuddy:
      return static_cast<std::intptr_t>(NumberOf(
          std::exchange(spin.buddy, HandleOf<WindowHandle>(static_cast<std::uintptr_t>(wParam)))));
    case kUdmGetBuddy:
      return static_cast<std::intptr_t>(NumberOf(spin.buddy));
    case kUdmSetAccel: {
      const auto* rows = PointerIn<const SpinAcceleration>(lParam);
      if (wParam == 0 || rows == nullptr) {
        return 0;
      }
      spin.accelerations.assign(rows, rows + wParam);
      return 1;
    }
    case kUdmGetAccel: {
      const std::size_t count = std::min<std::size_t>(wParam, spin.accelerations.size());
      std::copy_n(spin.accelerations.begin(), count, PointerIn<SpinAcceleration>(lParam));
      return static_cast<std::intptr_t>(spin.accelerations.size());
    }
    default:
      return 0;
  }
}

// Where the position goes from here: round at the ends or no further than to them.
std::int32_t Moved(const Window& window, std::int32_t delta) {
  const SpinState& spin = window.spin;
  const std::int32_t wanted = spin.position + delta;
  const std::int32_t clamped = Clamp(spin, wanted);
  if (clamped == wanted || (window.style & kSpinWrap) == 0) {
    return clamped;
  }
  return clamped == spin.minimum ? spin.maximum : spin.minimum;
}

// ---- Tooltips -----------------------------------------------------------------------------------

// Each version of the structure is a longer one; the shortest ends with the text.
constexpr std::uint32_t kLeastToolBytes = offsetof(ToolInfo, lpszText) + sizeof(char16_t*);

const ToolInfo* ToolFrom(std::intptr_t lParam) {
  const auto* tool = PointerIn<const ToolInfo>(lParam);
  const bool good =
      tool != nullptr && tool->cbSize >= kLeastToolBytes && tool->cbSize <= sizeof(ToolInfo);
  return good ? tool : nullptr;
}

Tool* FindTool(TooltipState& tooltip, const ToolInfo* asked) {
  if (asked == nullptr) {
    return nullptr;
  }
  const auto found = std::ranges::find_if(tooltip.tools, [asked](const Tool& tool) {
    return tool.window == asked->hwnd && tool.id == asked->uId;
  });
  return found == tooltip.tools.end() ? nullptr : &*found;
}

Tool ToTool(const ToolInfo& info) {
  constexpr std::uintptr_t kTextCallback = ~std::uintptr_t{0};  // LPSTR_TEXTCALLBACK
  Tool tool = {info.uFlags, info.hwnd, info.uId, info.rect};
  tool.asksForText = reinterpret_cast<std::uintptr_t>(info.lpszText) == kTextCallback;
  if (info.lpszText != nullptr && !tool.asksForText && info.hinst == nullptr) {
    tool.text = info.lpszText;
  }
  return tool;
}

std::intptr_t AnswerTooltip(TooltipState& tooltip, std::uint32_t message, std::uintptr_t wParam,
                            std::intptr_t lParam) {
  switch (message) {
    case kTtmActivate:
      tooltip.active = wParam != 0;
      return 0;
    case kTtmAddTool:
      if (const ToolInfo* info = ToolFrom(lParam); info != nullptr) {
        tooltip.tools.push_back(ToTool(*info));
        return 1;
      }
      return 0;
    case kTtmSetToolInfo:
      if (Tool* tool = FindTool(tooltip, ToolFrom(lParam)); tool != nullptr) {
        *tool = ToTool(*ToolFrom(lParam));
      }
      return 0;
    case kTtmDelTool:
      if (const Tool* tool = FindTool(tooltip, ToolFrom(lParam)); tool != nullptr) {
        tooltip.tools.erase(tooltip.tools.begin() + (tool - tooltip.tools.data()));
      }
      return 0;
    case kTtmGetToolCount:
      return static_cast<std::intptr_t>(tooltip.tools.size());
    case kTtmSetMaxTipWidth:
      return std::exchange(tooltip.maxWidth, static_cast<std::int32_t>(lParam));
    case kTtmGetMaxTipWidth:
      return tooltip.maxWidth;
    case kTtmSetTipBackgroundColor:
      tooltip.backgroundColor = static_cast<std::uint32_t>(wParam);
      return 0;
    case kTtmGetTipBackgroundColor:
      return tooltip.backgroundColor;
    default:
      return 0;
  }
}

// ---- Texts of all classes -----------------------------------------------------------------------

std::intptr_t SetText(HeadlessWindows& windows, Window& window, const char16_t* text) {
  if (window.kind == WindowKind::kEdit) {
    SetEditText(windows, window, text);
    return 1;
  }
  if (window.kind == WindowKind::kList) {
    return kCbErr;  // its text is the row that is selected
  }
  window.text = text == nullptr ? u"" : text;
  return 1;
}

std::intptr_t GetText(const std::u16string& text, std::uintptr_t units, std::intptr_t buffer) {
  if (units == 0) {
    return 0;
  }
  const std::size_t copied = std::min<std::size_t>(text.size(), units - 1);
  auto* target = PointerIn<char16_t>(buffer);
  std::copy_n(text.data(), copied, target);
  target[copied] = u'\0';
  return static_cast<std::intptr_t>(copied);
}

}  // namespace

bool Window::IsOwnerDrawn() const {
  switch (kind) {
    case WindowKind::kStatic:
      return StaticTypeOf() == kStaticOwnerDraw;
    case WindowKind::kButton:
      return ButtonTypeOf() == kOwnerDrawButton;
    case WindowKind::kList:
      return (style & (IsCombo() ? kComboOwnerDraw : kListOwnerDraw)) != 0;
    default:
      return false;
  }
}

WindowKind KindOfClass(std::u16string_view className) {
  struct Row {
    std::u16string_view name;
    WindowKind kind;
  };
  constexpr std::array<Row, 7> kRows = {{
      {u"static", WindowKind::kStatic},
      {u"button", WindowKind::kButton},
      {u"edit", WindowKind::kEdit},
      {u"combobox", WindowKind::kList},
      {u"listbox", WindowKind::kList},
      {u"msctls_updown32", WindowKind::kSpin},
      {u"tooltips_class32", WindowKind::kTooltip},
  }};
  const auto row = std::ranges::find(kRows, className, &Row::name);
  return row == kRows.end() ? WindowKind::kPlain : row->kind;
}

std::intptr_t AnswerControlMessage(HeadlessWindows& windows, WindowHandle control,
                                   std::uint32_t message, std::uintptr_t wParam,
                                   std::intptr_t lParam) {
  constexpr std::uint32_t kWmSetText = 0x000C;
  constexpr std::uint32_t kWmGetText = 0x000D;
  constexpr std::uint32_t kWmGetTextLength = 0x000E;
  Window* window = windows.Find(control);
  switch (message) {
    case kWmSetText:
      return SetText(windows, *window, PointerIn<const char16_t>(lParam));
    case kWmGetText:
      return GetText(windows.TextOf(*window), wParam, lParam);
    case kWmGetTextLength:
      return static_cast<std::intptr_t>(windows.TextOf(*window).size());
    case kWmHelp:  // goes up until someone knows help
      return windows.Deliver(window->parent, message, wParam, lParam);
    default:
      break;
  }
  switch (window->kind) {
    case WindowKind::kStatic:
      return AnswerStatic(*window, message, wParam, lParam);
    case WindowKind::kButton:
      return AnswerButton(windows, *window, message, wParam, lParam);
    case WindowKind::kEdit:
      return AnswerEdit(windows, *window, message, wParam, lParam);
    case WindowKind::kList:
      return AnswerList(*window, message, wParam, lParam);
    case WindowKind::kSpin:
      return AnswerSpin(windows, *window, message, wParam, lParam);
    case WindowKind::kTooltip:
      return AnswerTooltip(window->tooltip, message, wParam, lParam);
    default:
      return 0;
  }
}

void ReplaceSelection(HeadlessWindows& windows, WindowHandle edit, std::u16string_view text) {
  Window& window = *windows.Find(edit);
  const EditState& state = window.edit;
  const std::size_t kept = window.text.size() - (state.selectionEnd - state.selectionStart);
  const std::size_t room = state.limit > kept ? state.limit - kept : 0;
  const bool cut = text.size() > room;
  const std::u16string_view fitting = text.substr(0, room);
  if (cut) {
    windows.NotifyParent(window, kEnMaxText);
  }
  if (!windows.IsWindow(edit) || (fitting.empty() && !text.empty())) {
    return;  // nothing of it fits
  }
  Replace(window, fitting);
  TellOfChange(windows, edit);
}

void PressButton(HeadlessWindows& windows, WindowHandle button) {
  Window* alive = windows.Find(button);
  if (alive == nullptr) {
    return;  // it went with the focus
  }
  Window& window = *alive;
  switch (window.ButtonTypeOf()) {
    case kAutoCheckBox:
    case kAutoThreeState:
      window.checkState = (window.checkState + 1) % (MostCheck(window) + 1);
      break;
    case kAutoRadio:
      CheckAlone(windows, window);
      break;
    case kGroupBox:
      return;
    default:
      break;
  }
  windows.NotifyParent(window, kBnClicked);
}

void PressArrow(HeadlessWindows& windows, WindowHandle spin, bool upper) {
  constexpr std::uint32_t kWmHorizontalScroll = 0x0114;
  constexpr std::uint32_t kWmVerticalScroll = 0x0115;
  constexpr std::uint16_t kThumbPosition = 4;  // SB_THUMBPOSITION
  constexpr std::uint16_t kEndScroll = 8;      // SB_ENDSCROLL
  Window& window = *windows.Find(spin);
  ReadPosition(windows, window);
  const bool inverted = window.spin.maximum < window.spin.minimum;
  NotifyUpDown question = {};
  question.hdr = {spin, static_cast<std::uintptr_t>(window.id), kUdnDeltaPos};
  question.iPos = window.spin.position;
  question.iDelta = upper == inverted ? -1 : 1;
  const std::intptr_t refused = windows.Deliver(window.parent, kWmNotify, question.hdr.idFrom,
                                                reinterpret_cast<std::intptr_t>(&question));
  if (refused == 0) {
    IfAlive(windows, spin, [&](Window& alive) {
      alive.spin.position = Moved(alive, question.iDelta);
      ShowPosition(windows, alive);
    });
  }
  for (const std::uint16_t code : {kThumbPosition, kEndScroll}) {
    IfAlive(windows, spin, [&](const Window& alive) {
      const bool horizontal = (alive.style & kSpinHorizontal) != 0;
      windows.Deliver(alive.parent, horizontal ? kWmHorizontalScroll : kWmVerticalScroll,
                      MakeWords(code, static_cast<std::uint16_t>(alive.spin.position)),
                      static_cast<std::intptr_t>(NumberOf(spin)));
    });
  }
}

}  // namespace ostrel::headless
