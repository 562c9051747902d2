// The lists of the layout page: which rows each has, by the model, the pages per sheet and the
// orientation.
#pragma once

#include "pages/page_support.h"
#include "platform/window_types.h"

#include <cstdint>
#include <span>

namespace ostrel {

// Which rows the list of page orders has.
enum class OrderRows : std::uint8_t {
  kNone,          // not filled yet
  kTwoPortrait,   // two pages: the row's place is its value
  kTwoLandscape,  // the same
  kSeveralPages,  // the item data is the value
};
OrderRows OrderRowsFor(std::int16_t pages, std::int16_t orientation);

std::span<const ComboRow> PosterSizeRows();
std::span<const ComboRow> OrderListRows(OrderRows kind);
std::span<const ComboRow> BorderRows();
std::span<const ComboRow> OrientationRows();

// The models' families differ in the rows of these two.
std::span<const ComboRow> TonerSavingRows();
std::span<const ComboRow> ThicknessRows();

// The thickness of a row's place, and what thickness is shown and set with toner saving off and on.
std::int16_t ThicknessOfRow(std::int32_t row);
struct ThicknessChoice {
  std::int16_t thickness;
  std::int32_t row;
};
ThicknessChoice ThicknessWithoutSaving();
ThicknessChoice ThicknessWithSaving();

// The place of the row that is selected; -1 when none is, or when there is no such list.
std::int32_t SelectedRow(WindowHandle page, std::int32_t control);

// Selects the row at a place. A place without a row clears the selection.
void SelectRow(WindowHandle page, std::int32_t control, std::int32_t row);

}  // namespace ostrel
