// The dialog of the user's own paper sizes: a list of named sizes in the settings file, each with a
// unit of its own.
//
// What is saved or deleted here stays so, however the dialog is left. The record behind the sheet
// only learns which paper is chosen: its id and its size.
#pragma once

#include "core/page_state_table.h"
#include "core/ui_context.h"
#include "pages/custom_paper_list.h"
#include "pages/custom_paper_sizes.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

struct CustomPaperDialogState final : PageState {
  PaperSizeBoxes sizes;  // 1358, 1270, 1442, 1273; their unit is the one in force
  PaperNameBox nameBox;  // 1009

  CustomPaperRecord paper = {};        // the size that is shown
  char16_t name[kEditTextUnits] = {};  // as it was read last

  // The paper in force when the dialog opened.
  std::int16_t savedWidth = 0;
  std::int16_t savedLength = 0;
  std::int16_t savedSize = 0;
  std::uint32_t savedFields = 0;  // what the record announced then
  bool selectionDeleted = false;  // no record has its id any more

  bool open = false;  // the controls are attached, and the store could be opened
};

// Shows the dialog over a page and returns when it is closed. Result: whether it was left by OK.
bool ShowCustomPaperDialog(WindowHandle page, UIContext& context);

}  // namespace ostrel
