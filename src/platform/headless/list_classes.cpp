#include "platform/headless/list_classes.h"

#include "platform/headless/edit_class.h"
#include "platform/headless/names.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

// Messages that the lists don't name, winuser.h.
constexpr std::uint32_t kWmChar = 0x0102;
constexpr std::uint32_t kCbGetEditSel = 0x0140;
constexpr std::uint32_t kCbInsertString = 0x014A;
constexpr std::uint32_t kCbFindString = 0x014C;
constexpr std::uint32_t kCbSelectString = 0x014D;
constexpr std::uint32_t kLbAddString = 0x0180;
constexpr std::uint32_t kLbDeleteString = 0x0182;
constexpr std::uint32_t kLbGetCurSel = 0x0188;
constexpr std::uint32_t kLbGetText = 0x0189;
constexpr std::uint32_t kLbGetTextLength = 0x018A;
constexpr std::uint32_t kLbGetCount = 0x018B;
constexpr std::uint32_t kLbFindString = 0x018F;
constexpr std::uint32_t kLbGetItemData = 0x0199;
constexpr std::uint32_t kLbFindStringExact = 0x01A2;

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
    {kCbGetLbText, kLbGetText, ListOrder::kText},
    {kCbGetLbTextLen, kLbGetTextLength, ListOrder::kTextLength},
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

// Without a row the box shows nothing.
void ClearSelection(HeadlessWindows& windows, Window& window) {
  window.list.selection = -1;
  if (window.HasComboEdit()) {
    SetEditText(windows, window, {});
  }
}

std::intptr_t SelectRow(HeadlessWindows& windows, Window& window, std::intptr_t row) {
  if (row < 0 || static_cast<std::size_t>(row) >= window.list.items.size()) {
    ClearSelection(windows, window);
    return kCbErr;
  }
  window.list.selection = static_cast<std::int32_t>(row);
  ShowSelectedRow(windows, window);
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

// What the edit shows stays, whichever row goes.
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

// What a combo box knows besides its rows: how wide the list drops down, and its edit.
std::intptr_t AnswerComboOnly(HeadlessWindows& windows, Window& window, std::uint32_t message,
                              std::uintptr_t wParam, std::intptr_t lParam) {
  const bool hasEdit = window.HasComboEdit();
  const bool dropsDown = (window.style & kComboTypeMask) != kComboSimple;
  const std::int32_t ownWidth = window.screenPlace.Width();
  switch (message) {
    case kCbSetDroppedWidth:
      if (!dropsDown) {
        return kCbErr;
      }
      window.list.droppedWidth = static_cast<std::int32_t>(wParam);
      return std::max(window.list.droppedWidth, ownWidth);
    case kCbGetDroppedWidth:
      return std::max(window.list.droppedWidth, ownWidth);
    case kCbLimitText:
      LimitText(window, wParam);
      return 1;
    case kCbSetEditSel:
      if (hasEdit) {
        const auto words = static_cast<std::uintptr_t>(lParam);
        SelectText(window, static_cast<std::int16_t>(LowWord(words)),
                   static_cast<std::int16_t>(HighWord(words)));
      }
      return hasEdit ? 1 : kCbErr;
    case kCbGetEditSel:
      return hasEdit ? SelectionWords(window) : kCbErr;
    case kWmChar:
      TypeCharacter(windows, window, static_cast<char16_t>(wParam));
      return 0;
    default:
      return 0;
  }
}

}  // namespace

void ShowSelectedRow(HeadlessWindows& windows, Window& window) {
  const ListState& list = window.list;
  if (!window.HasComboEdit() || list.selection < 0) {
    return;
  }
  SetEditText(windows, window, list.items[static_cast<std::size_t>(list.selection)].text);
  if (windows.focus() == window.handle) {
    SelectText(window, 0, -1);
  }
}

std::intptr_t AnswerList(HeadlessWindows& windows, Window& window, std::uint32_t message,
                         std::uintptr_t wParam, std::intptr_t lParam) {
  const bool isCombo = window.IsCombo();
  const auto found = std::ranges::find_if(kListMessages, [&](const ListMessage& row) {
    return message != 0 && message == (isCombo ? row.combo : row.list);
  });
  if (found == kListMessages.end()) {
    return isCombo ? AnswerComboOnly(windows, window, message, wParam, lParam) : 0;
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
      ClearSelection(windows, window);
      return 0;
    case ListOrder::kCount:
      return static_cast<std::intptr_t>(list.items.size());
    case ListOrder::kSelect:
      return SelectRow(windows, window, row);
    case ListOrder::kSelection:
      return list.selection;
    case ListOrder::kFindPrefix:
    case ListOrder::kFindExact:
      return FindRow(window, row, text, found->order == ListOrder::kFindExact);
    case ListOrder::kSelectPrefix: {
      const std::intptr_t match = FindRow(window, row, text, false);
      return match < 0 ? kCbErr : SelectRow(windows, window, match);
    }
    default:
      return AnswerRow(window, found->order, wParam, lParam);
  }
}

}  // namespace ostrel::headless
