// The list of the user's own paper sizes, as the dialog shows it: a combo box with an edit, whose
// rows are the store's names in their order, each with its paper id.
#pragma once

#include "config/setting_stores.h"
#include "pages/controls.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace ostrel {

// Room for any stored name.
using PaperName = char16_t[NameList::kRowUnits];

// The size that is stored under a name. Result: false for one that can't be read, and for one that
// can't be chosen because of its id: it is listed all the same, so that it can be deleted.
bool ReadPaper(const char16_t* name, CustomPaperRecord& record);

// The first stored size that can be read so, with its name. Result: whether there is one.
bool ReadFirstPaper(CustomPaperRecord& record, PaperName& name);

// Whether the store has a record of exactly this name, be it one that can't be read.
bool IsPaperStored(std::u16string_view name);

class PaperNameBox final : public TextEdit {
 public:
  static constexpr std::intptr_t kNoRow = -1;

  // Limits what a user can type.
  void Attach(WindowHandle dialog, std::int32_t id) override;

  // Fills the list from the store, and makes it wide enough for its names when it is dropped down.
  void Fill();
  // The first row of a name or of a paper id.
  std::intptr_t RowOfName(std::u16string_view name) const;
  std::intptr_t RowOfPaper(std::uint16_t paperId) const;
  // The row that is selected, and its text. Its text may not have reached the box yet.
  std::intptr_t SelectedRow() const;
  void ReadRow(std::intptr_t row, PaperName& name) const;
  void RemoveRow(std::intptr_t row);

  // Selects a row, whose text the box shows then.
  void SelectRow(std::intptr_t row);
  // Shows a text that is no row's.
  void ShowText(std::u16string_view text);
  // Puts another text in the place of what the user has typed, with the caret at its end.
  void PutBack(std::u16string_view text);
  // The text just as it is, with the blanks that TextEdit leaves out.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call): that override is what is passed over.
  void ReadText(std::span<char16_t> text) { EditBase::GetText(text); }

 private:
  void AddRow(const char16_t* name);
};

}  // namespace ostrel
