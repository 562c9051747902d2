// What the user chooses from the lists of the layout page, and types into its scale box.
#include "core/process_state.h"
#include "pages/layout_page.h"
#include "pages/layout_rules.h"

#include <algorithm>
#include <cstdlib>

namespace ostrel::layout {
namespace {

// Stores a word that differs. Result: whether it did.
bool StoreWord(const LayoutPage& page, const char* key, std::int16_t value) {
  std::int16_t before = 0;
  if (GetUIParam(&page.context, key, &before, sizeof(before)) == kResultOk && before == value) {
    return false;
  }
  SetSetting(page.context, key, value);
  return true;
}

void ShowChoice(const LayoutPage& page) {
  page.Untitled();
  page.Redraw(kPreview);
  page.Changed();
}

// The last steps of what isn't compared with the record before.
void ShowDensity(const LayoutPage& page) {
  page.Redraw(kPreview);
  page.Changed();
  NameUntitled(page.window);
}

void StoreScale(const LayoutPage& page, std::int32_t percent) {
  SetScalePercent(page.context, percent);
  page.Changed();
}

// The number in the box as it stands. Result: false for an empty box.
bool ReadScaleText(const LayoutPage& page, std::int32_t* percent) {
  char text[256] = {};
  if (World().windows.GetDlgItemTextA(page.window, kScaleEdit, text, sizeof(text)) == 0) {
    return false;
  }
  bool translated = false;
  *percent = static_cast<std::int32_t>(
      World().windows.GetDlgItemInt(page.window, kScaleEdit, &translated, true));
  if (!translated) {
    *percent = static_cast<std::int32_t>(std::clamp(std::strtol(text, nullptr, 10), 0L, 1000L));
  }
  return true;
}

}  // namespace

// ---- Lists --------------------------------------------------------------------------------------

void OrderChosen(const LayoutPage& page) {
  const std::int32_t row = SelectedRow(page.window, kOrderCombo);
  auto order = static_cast<std::int16_t>(row);
  if (page.PagesPerSheet() != 2) {
    SelectedComboValue(page.window, kOrderCombo, &order);
  }
  if (row >= 0 && StoreWord(page, "PageOrder", order)) {
    ShowChoice(page);
  }
}

void BorderChosen(const LayoutPage& page) {
  const std::int32_t row = SelectedRow(page.window, kBorderCombo);
  if (row >= 0 && StoreWord(page, "PageBorder", static_cast<std::int16_t>(row))) {
    ShowChoice(page);
  }
}

void OrientationChosen(const LayoutPage& page) {
  const std::int32_t row = SelectedRow(page.window, kOrientationCombo);
  const std::int16_t orientation = row == 0 ? kPortrait : kLandscape;
  if (row < 0 || orientation == page.Orientation()) {
    return;
  }
  SetDevmodeField(&page.context, kDmOrientation, orientation);
  for (const std::int32_t control : {kOrderCombo, kPreview, kPosterCombo}) {
    page.Redraw(control);
  }
  page.Changed();
  page.Untitled();
  if (Ask(page, LayoutOption::kOrientation)) {
    OrderList(page, page.PagesPerSheet());
    SelectRow(page.window, kOrderCombo, 0);
    page.Redraw(kPreview);
  }
}

void TonerChosen(const LayoutPage& page) {
  const std::int32_t row = SelectedRow(page.window, kTonerCombo);
  if (row < 0) {
    return;
  }
  SetSetting(page.context, "TonerSavingMode", static_cast<std::int16_t>(row));
  page.state.thicknessCombo.Enable(row == 0);
  if (row <= 1) {
    const ThicknessChoice choice = row == 0 ? ThicknessWithoutSaving() : ThicknessWithSaving();
    SetSetting(page.context, "Thickness", choice.thickness);
    SelectRow(page.window, kThicknessCombo, choice.row);
  }
  ShowDensity(page);
}

void ThicknessChosen(const LayoutPage& page) {
  if (const std::int32_t row = SelectedRow(page.window, kThicknessCombo); row >= 0) {
    SetSetting(page.context, "Thickness", ThicknessOfRow(row));
    ShowDensity(page);
  }
}

void RotateClick(const LayoutPage& page) {
  SetSetting(page.context, "Rotate180", page.Word("Rotate180") == 0 ? 1 : 0);
  ShowDensity(page);
}

// ---- The scale box ------------------------------------------------------------------------------

void ScaleTyped(const LayoutPage& page) {
  if (page.state.showingScale || page.state.scaleLocked ||
      page.state.scaleEdit.ChangeCheck() != kTextStands) {
    return;
  }
  const std::int32_t percent = ShownScale(page);
  if (percent == ScalePercent(page.context)) {
    return;
  }
  SetScalePercent(page.context, percent);
  page.Redraw(kPreview);
  page.Changed();
  page.Untitled();
}

void ScaleEntered(const LayoutPage& page) {
  if (!page.state.scaleLocked) {
    const std::int32_t percent = ShownScale(page);
    if (percent != ScalePercent(page.context)) {
      World().windows.SendMessageW(
          page.Item(kScaleSpin), kUdmSetPos, 0,
          static_cast<std::intptr_t>(MakeWords(static_cast<std::uint16_t>(percent), 0)));
      StoreScale(page, percent);
      page.Untitled();
      page.Redraw(kPreview);
    }
    ShowScale(page, percent);
  }
  BookletLock(page);
}

void ScaleStep(const LayoutPage& page, const NotifyUpDown& notify) {
  // A locked box has nothing to step: its 100 is the page's.
  if (!page.state.scaleLocked && page.state.scaleSpin.Step(notify.iDelta < 0)) {
    StoreScale(page, ShownScale(page));
  }
}

std::intptr_t ScaleLeave(const LayoutPage& page) {
  constexpr std::int32_t kScalingByPercent = 2;
  constexpr std::intptr_t kStay = 1;
  std::int32_t mode = 0;
  GetUIParam(&page.context, "ScaleFlag", &mode, sizeof(mode));
  if (page.PagesPerSheet() >= 2 || mode != kScalingByPercent || page.state.scaleLocked) {
    return 0;
  }
  std::int32_t percent = 0;
  if (!ReadScaleText(page, &percent) || percent < kLeastScale || percent > kMostScale) {
    World().windows.SetWindowLongPtrW(page.window, kDwlpMessageResult, kStay);
    return kStay;
  }
  // The record's own number lets the page go too, on purpose: there is nothing to store, and a user
  // who changed nothing must not be kept.
  if (percent != ScalePercent(page.context)) {
    StoreScale(page, percent);
    ShowScale(page, percent);
  }
  return 0;
}

}  // namespace ostrel::layout
