// The paper page: paper size, media type, paper source and feed orientation.
//
// The page holds no settings. Each control shows and writes a word of the record in the sheet's
// context. Paper, media, source and two-sided printing tie one another; what they leave no choice
// for is locked, and an icon's tooltip says why.
#pragma once

#include "core/page_state_table.h"
#include "core/ui_context.h"
#include "pages/controls.h"
#include "pages/reasons.h"
#include "platform/window_types.h"

#include <array>
#include <cstdint>

namespace ostrel {

// Whether two-sided printing is off stands among the facts that pages tell one another: the print
// options page and others change it.
struct PaperPageState final : PageState {
  PaperPageState();

  DlgControl paperCombo;                      // 1404
  DlgControl mediaCombo;                      // 1009
  DlgControl sourceCombo;                     // 1393
  RadioGroup feedGroup;                       // 1240
  RadioButton feedShort;                      // 1240
  RadioButton feedLong;                       // 1125
  WindowHandle dialog = nullptr;              // null until the page stands, and when it is gone
  bool sourceAllowed = false;                 // the source list is live
  std::array<WindowHandle, 3> tooltips = {};  // of icons 1446, 1450, 1449

  // The text that a tooltip asked for last; it must outlive the question.
  std::array<char16_t, kTooltipReasonUnits> tooltipText = {};
};

std::intptr_t PaperPageProcedure(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                                 std::intptr_t lParam);

// Shows the record in the page's controls once more; nothing when the calling thread has no such
// page.
void RefreshPaperPage(UIContext& context);

}  // namespace ostrel
