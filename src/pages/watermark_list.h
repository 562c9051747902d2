// The list of the user's watermarks on the watermark page: a list box whose rows are the names in
// the order of their ids, each with its id as item data.
#pragma once

#include "core/page_state_table.h"
#include "pages/controls.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// What the watermark page keeps between messages.
struct WatermarkPageState final : PageState {
  WindowHandle dialog = nullptr;
  DlgControl list;                 // 1145
  WindowHandle tooltip = nullptr;  // of icon 1465
};

// Fills the list box from the store, making the settings file first if need be. The store is
// brought into the same order when it has another. A row that can't be added is left out.
void FillWatermarkList(const WatermarkPageState& state);

// Selects the row of the first stored watermark that has this id and bears the name of the one in
// force in the page's record. Result: whether it is selected; else the selection stays.
bool SelectWatermark(const WatermarkPageState& state, std::int16_t index);

}  // namespace ostrel
