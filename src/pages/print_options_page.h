// What the files of the print options page share of one another. The page itself stands in
// print_options.h.
#pragma once

#include "core/ui_context.h"
#include "pages/page_support.h"
#include "pages/print_options.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel::options {

// ---- Controls -----------------------------------------------------------------------------------

enum Control : std::int32_t {
  kCollateCheck = 1008,
  kCopiesLabel = 1018,
  kCopiesEdit = 1019,
  kCopiesSpin = 1020,
  kDefaultsButton = 1064,
  kDuplexLong = 1125,
  kCollationPicture = 1176,
  kDuplexOff = 1240,
  kDuplexShort = 1241,
  kResolution600Radio = 1242,
  kResolution1200Radio = 1243,
  kJobModeCombo = 1393,
  kReverseCheck = 1394,
  kManualDuplexLabel = 1414,
  kFinessCheck = 1422,
  kDuplexIcon = 1447,
  kReverseIcon = 1448,
  kCollateIcon = 1449,
  kJobModeIcon = 1450,
  kDuplexPicture = 1453,
  kJobModeLabel = 1483,
  kJobFlagCheck = 1496,
  kJobFlagGroup = 1497,
};

// ---- The page -----------------------------------------------------------------------------------

// One message's view of the page.
struct OptionsPage {
  WindowHandle window;
  UIContext& context;
  PrintOptionsPageState& state;

  ModuleHandle texts() const { return context.languageModule; }
  WindowHandle Item(std::int32_t control) const {
    return World().windows.GetDlgItem(window, control);
  }
  void Show(std::int32_t control, bool shown) const { ShowControl(window, control, shown); }
  bool IsChecked(std::int32_t control) const {
    return World().windows.IsDlgButtonChecked(window, control) != kBstUnchecked;
  }
  void Redraw(std::int32_t control) const { World().windows.InvalidateRect(Item(control)); }
  // The settings no longer are those of a favourite, and the sheet has something to apply.
  void Changed() const {
    Untitled();
    SetSheetChanged(window);
  }
  void Untitled() const { MarkUntitled(window, UntitledRule::kWhenDifferent); }
};

// ---- Showing the record -------------------------------------------------------------------------

// Shows the record in all controls.
void Refresh(const OptionsPage& page);
// The picture of two-sided printing; a record without one keeps what is shown.
void DuplexPicture(const OptionsPage& page);
// Reverse order is live or locked, with its icon.
void ShowReverseLock(const OptionsPage& page, bool locked);

// ---- The number of copies -----------------------------------------------------------------------

// The box is left: what it shows becomes the number of copies.
void CopiesEntered(const OptionsPage& page);
void CopiesStep(const OptionsPage& page, const NotifyUpDown& notify);
// The page is left. Result: the dialog procedure's answer.
std::intptr_t CopiesLeave(const OptionsPage& page);

// ---- What the user chooses ----------------------------------------------------------------------

void CollateClick(const OptionsPage& page);
void JobFlagClick(const OptionsPage& page);
void FinessClick(const OptionsPage& page);
void ReverseClick(const OptionsPage& page);
void ResolutionClick(const OptionsPage& page, std::int32_t control);
void OneSidedClick(const OptionsPage& page);
// A click on one of the two radios of two-sided printing, with its value of dmDuplex.
void TwoSidedClick(const OptionsPage& page, std::int32_t control, std::int16_t target);
void JobModeChange(const OptionsPage& page);
void DefaultsClick(const OptionsPage& page);

}  // namespace ostrel::options
