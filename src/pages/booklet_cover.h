// The dialog of a booklet's binding and cover: whether a cover is printed, which of its four faces
// carry a page, on which media and from which source.
//
// It works on a snapshot of the settings, which goes into the record only when the dialog is left
// by OK.
#pragma once

#include "core/page_state_table.h"
#include "core/ui_context.h"
#include "pages/controls.h"
#include "pages/reasons.h"
#include "platform/window_types.h"

#include <array>

namespace ostrel {

// Outlives the dialog, and is filled anew each time that it opens.
struct BookletDialogState final : PageState {
  WindowHandle dialog = nullptr;  // null while none is open
  DlgControl bindingCombo;        // 1479
  RadioButton printCover;         // 1394
  RadioButton frontOutside;       // 1395
  RadioButton frontInside;        // 1396
  RadioButton backOutside;        // 1397
  RadioButton backInside;         // 1398
  DlgControl mediaCombo;          // 1009
  DlgControl sourceCombo;         // 1393
  DriverDevmode snapshot = {};

  // Whether the cover may have a media type and a source of its own.
  bool coverMediaFree = true;
  bool coverSourceFree = true;

  std::array<WindowHandle, 2> tooltips = {};  // of icons 1446, 1450
  // The text that a tooltip asked for last; it must outlive the question.
  std::array<char16_t, kTooltipReasonUnits> tooltipText = {};
};

// Shows the dialog over a page and returns when it is closed. Result: whether it was left by OK,
// with the settings written.
bool ShowBookletCoverDialog(WindowHandle page, UIContext& context);

}  // namespace ostrel
