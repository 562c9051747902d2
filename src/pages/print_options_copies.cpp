// The print options page: the number of copies, typed, stepped and left behind.
#include "core/language.h"
#include "core/string_ids.h"
#include "pages/print_options_page.h"
#include "pages/warning_boxes.h"

#include <algorithm>
#include <cstdlib>

namespace ostrel::options {
namespace {

void StoreCopies(const OptionsPage& page, std::int32_t copies) {
  page.context.publicPointer->dmCopies = static_cast<std::int16_t>(copies);
}

std::int32_t ShownCopies(const OptionsPage& page) {
  std::int32_t copies = 0;
  return page.state.copiesEdit.GetValue(&copies) == kTextStands ? copies : 0;
}

void ShowCopiesEmpty(const OptionsPage& page) {
  char16_t text[kMaxPathUnits] = {};
  LoadUiString(page.texts(), kStringCopiesEmpty, text);
  ShowExclamation(page.window, page.texts(), text, kStringBoxTitle);
}

}  // namespace

void CopiesEntered(const OptionsPage& page) {
  const std::int32_t copies = std::clamp<std::int32_t>(ShownCopies(page), 1, kMaxCopies);
  page.state.copiesEdit.SetValue(copies);
  if (copies == page.context.publicPointer->dmCopies) {
    return;
  }
  World().windows.SendMessageW(
      page.Item(kCopiesSpin), kUdmSetPos, 0,
      static_cast<std::intptr_t>(MakeWords(static_cast<std::uint16_t>(copies), 0)));
  StoreCopies(page, copies);
  SetSheetChanged(page.window);
  // Also while a booklet is printed, which the next refresh locks again.
  page.state.collateCheck.Enable(true);
  page.Changed();
}

void CopiesStep(const OptionsPage& page, const NotifyUpDown& notify) {
  if (page.state.copiesSpin.Step(notify.iDelta < 0)) {
    page.Untitled();
    StoreCopies(page, ShownCopies(page));
    SetSheetChanged(page.window);
  }
}

std::intptr_t CopiesLeave(const OptionsPage& page) {
  constexpr std::intptr_t kStay = -1;
  char text[256] = {};
  const std::int16_t stored = page.context.publicPointer->dmCopies;
  if (World().windows.GetDlgItemTextA(page.window, kCopiesEdit, text, sizeof(text)) == 0) {
    page.state.copiesEdit.SetValue(stored);
    ShowCopiesEmpty(page);
    World().windows.SetWindowLongPtrW(page.window, kDwlpMessageResult, kStay);
    return kStay;
  }
  bool translated = false;
  auto copies = static_cast<std::int32_t>(
      World().windows.GetDlgItemInt(page.window, kCopiesEdit, &translated, true));
  if (!translated) {
    copies = static_cast<std::int32_t>(std::clamp(std::strtol(text, nullptr, 10), -1L, 1000L));
  }
  if (copies < 1 || copies > kMaxCopies) {
    // The page may be left all the same: the dialog's result stays 0.
    page.state.copiesEdit.SetValue(stored);
    return kStay;
  }
  if (copies != stored) {
    StoreCopies(page, copies);
    page.state.copiesEdit.SetValue(copies);
    page.Changed();
  }
  return 0;
}

}  // namespace ostrel::options
