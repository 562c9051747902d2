#include "pages/custom_paper_list.h"

#include "core/text.h"
#include "pages/chosen_paper.h"
#include "pages/custom_paper_names.h"
#include "pages/page_support.h"
#include "pages/paper_list.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace ostrel {
namespace {

// The item data of a record that can't be read or chosen: no id is as wide.
constexpr std::intptr_t kNoPaperId = -1;

using Row = std::array<char16_t, NameList::kRowUnits>;

// Calls `visit` for each stored name in order, until it answers true. Result: whether it did.
template <typename Visit>
bool AnyStoredName(Visit visit) {
  NameList names;
  const int count = std::max(CustomPaperStore().List(names), 0);
  return std::any_of(names.rows.begin(), names.rows.begin() + count, visit);
}

std::uintptr_t Place(std::intptr_t row) {
  return static_cast<std::uintptr_t>(row);
}

// The first row that `matches`.
template <typename Matches>
std::intptr_t FindRow(std::intptr_t count, Matches matches) {
  for (std::intptr_t row = 0; row < count; ++row) {
    if (matches(row)) {
      return row;
    }
  }
  return PaperNameBox::kNoRow;
}

}  // namespace

bool ReadPaper(const char16_t* name, CustomPaperRecord& record) {
  return CustomPaperStore().Read(name, record) && CanBeChosen(record);
}

bool ReadFirstPaper(CustomPaperRecord& record, PaperName& name) {
  return AnyStoredName([&](const Row& stored) {
    CopyText(name, FieldText(stored));
    return ReadPaper(name, record);
  });
}

bool IsPaperStored(std::u16string_view name) {
  return AnyStoredName([&](const Row& stored) { return FieldText(stored) == name; });
}

void PaperNameBox::Attach(WindowHandle dialog, std::int32_t id) {
  TextEdit::Attach(dialog, id);
  Send(kCbLimitText, kTypedPaperNameUnits, 0);
}

void PaperNameBox::AddRow(const char16_t* name) {
  const std::intptr_t row = Send(kCbAddString, 0, reinterpret_cast<std::intptr_t>(name));
  if (row < 0) {
    return;
  }
  CustomPaperRecord record = {};
  const bool readable = ReadPaper(name, record);
  Send(kCbSetItemData, Place(row), readable ? std::intptr_t{record.PaperId} : kNoPaperId);
}

void PaperNameBox::Fill() {
  std::int32_t widest = 0;
  Send(kCbResetContent, 0, 0);
  AnyStoredName([&](const Row& name) {
    AddRow(name.data());
    widest = std::max(widest, TextWidth(window(), name.data()));
    return false;
  });
  SetDropWidth(window(), widest - kDropWidthLess_px);
}

// Names differ by case too, which the list's own search doesn't see.
std::intptr_t PaperNameBox::RowOfName(std::u16string_view name) const {
  return FindRow(Send(kCbGetCount, 0, 0), [&](std::intptr_t row) {
    PaperName text;
    ReadRow(row, text);
    return !name.empty() && FieldText(text) == name;
  });
}

std::intptr_t PaperNameBox::RowOfPaper(std::uint16_t paperId) const {
  return FindRow(Send(kCbGetCount, 0, 0), [&](std::intptr_t row) {
    return Send(kCbGetItemData, Place(row), 0) == std::intptr_t{paperId};
  });
}

std::intptr_t PaperNameBox::SelectedRow() const {
  return Send(kCbGetCurSel, 0, 0);
}

void PaperNameBox::ReadRow(std::intptr_t row, PaperName& name) const {
  std::fill(std::begin(name), std::end(name), u'\0');
  const std::intptr_t length = row < 0 ? 0 : Send(kCbGetLbTextLen, Place(row), 0);
  if (length > 0 && length < std::ssize(name)) {
    Send(kCbGetLbText, Place(row), reinterpret_cast<std::intptr_t>(name));
  }
}

void PaperNameBox::RemoveRow(std::intptr_t row) {
  if (row >= 0) {
    Send(kCbDeleteString, Place(row), 0);
  }
}

void PaperNameBox::SelectRow(std::intptr_t row) {
  Send(kCbSetCurSel, Place(row), 0);
}

void PaperNameBox::ShowText(std::u16string_view text) {
  char16_t shown[kEditTextUnits];
  CopyText(shown, text);
  SelectRow(kNoRow);
  SetText(shown);
}

void PaperNameBox::PutBack(std::u16string_view text) {
  char16_t shown[kEditTextUnits];
  CopyText(shown, text);
  SetText(shown);
  const auto end = static_cast<std::uint16_t>(FieldText(shown).size());
  Send(kCbSetEditSel, 0, static_cast<std::intptr_t>(MakeWords(end, end)));
}

}  // namespace ostrel
