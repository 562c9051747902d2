// The print options page: copies, collation, reverse order, two-sided printing, resolution,
// fineness and two options of some model families.
//
// The page holds no settings. Each control shows and writes a word of the record in the sheet's
// context. Two-sided printing, reverse order, poster, booklet, paper, media and watermark lock one
// another; each lock shows an icon whose tooltip lists the reasons.
#pragma once

#include "core/page_state_table.h"
#include "core/ui_context.h"
#include "pages/controls.h"
#include "pages/reasons.h"
#include "platform/window_types.h"

#include <array>

namespace ostrel {

// Whether the duplex group is live and whether the job mode may differ from 0 stands among the
// facts that pages tell one another: other pages change both.
struct PrintOptionsPageState final : PageState {
  PrintOptionsPageState();
  ~PrintOptionsPageState() override;
  PrintOptionsPageState(const PrintOptionsPageState&) = delete;
  PrintOptionsPageState& operator=(const PrintOptionsPageState&) = delete;

  IntSpin copiesSpin;          // 1020
  IntEdit copiesEdit;          // 1019
  DlgControl jobModeCombo;     // 1393
  RadioButton jobFlagCheck;    // 1496
  RadioGroup duplexGroup;      // 1240
  RadioButton duplexOff;       // 1240
  RadioButton duplexLong;      // 1125
  RadioButton duplexShort;     // 1241
  RadioButton spare;           // never attached
  RadioGroup resolutionGroup;  // 1242
  RadioButton res1200;         // 1243
  RadioButton res600;          // 1242
  RadioButton collateCheck;    // 1008
  RadioButton reverseCheck;    // 1394
  RadioButton finessCheck;     // 1422
  WindowHandle dialog = nullptr;
  std::uint32_t editing = 0;
  bool refusing = false;                      // a box tells that two-sided printing can't be had
  std::array<WindowHandle, 3> tooltips = {};  // of icons 1447, 1448, 1449
  WindowHandle tooltip = nullptr;             // of icon 1450, only when the model has the job mode

  // What the page's picture shows; deleted when another takes its place, and with the state.
  GdiObject duplexPicture = nullptr;
  // The text that a tooltip asked for last; it must outlive the question.
  std::array<char16_t, kTooltipReasonUnits> tooltipText = {};
};

std::intptr_t PrintOptionsPageProcedure(WindowHandle page, std::uint32_t message,
                                        std::uintptr_t wParam, std::intptr_t lParam);

// Shows the record in the page's controls once more; nothing when the calling thread has no such
// page.
void RefreshPrintOptionsPage(UIContext& context);

}  // namespace ostrel
