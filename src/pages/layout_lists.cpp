#include "pages/layout_lists.h"

#include "core/model_table.h"
#include "core/process_state.h"
#include "core/string_ids.h"
#include "pages/page_record.h"

namespace ostrel {
namespace {

// clang-format off
constexpr ComboRow kPosterSizes[] = {
    // String,           Value
    {kStringPosterSize, 22},
};

constexpr ComboRow kBorders[] = {
    // String,           Value
    {kStringBorderNone, 0},
    {kStringBorderLine, 1},
};

constexpr ComboRow kOrientations[] = {
    // String,          Value
    {kStringPortrait,  1},
    {kStringLandscape, 2},
};

// The last row is for some families alone.
constexpr ComboRow kTonerSaving[] = {
    // String,   Value
    {kStringOff,  0},
    {kStringOn,   1},
    {kStringAuto, 2},
};

// The first and the last row are for some families alone.
constexpr ComboRow kThicknesses[] = {
    // String,                   Value
    {kStringDarknessLight,       0},
    {kStringDarknessMediumLight, 1},
    {kStringDarknessMedium,      2},
    {kStringDarknessMediumDark,  3},
    {kStringDarknessDark,        4},
};

constexpr ComboRow kOrdersOfTwoPortrait[] = {
    // String,                Value
    {kStringOrderLeftToRight, 0},
    {kStringOrderRightToLeft, 1},
};

constexpr ComboRow kOrdersOfTwoLandscape[] = {
    // String,                Value
    {kStringOrderTopToBottom, 0},
    {kStringOrderBottomToTop, 1},
};

constexpr ComboRow kOrdersOfSeveral[] = {
    // String,                 Value
    {kStringOrderRightThenDown, 2},
    {kStringOrderDownThenRight, 3},
    {kStringOrderLeftThenDown,  4},
    {kStringOrderDownThenLeft,  5},
};
// clang-format on

bool HasAllRows() {
  return (Process().ModelFlags & kFamiliesFirToKauri) != 0;
}

}  // namespace

OrderRows OrderRowsFor(std::int16_t pages, std::int16_t orientation) {
  if (pages != 2) {
    return OrderRows::kSeveralPages;
  }
  return orientation == kLandscape ? OrderRows::kTwoLandscape : OrderRows::kTwoPortrait;
}

std::span<const ComboRow> PosterSizeRows() {
  return kPosterSizes;
}

std::span<const ComboRow> OrderListRows(OrderRows kind) {
  switch (kind) {
    case OrderRows::kTwoPortrait:
      return kOrdersOfTwoPortrait;
    case OrderRows::kTwoLandscape:
      return kOrdersOfTwoLandscape;
    default:
      return kOrdersOfSeveral;
  }
}

std::span<const ComboRow> BorderRows() {
  return kBorders;
}

std::span<const ComboRow> OrientationRows() {
  return kOrientations;
}

std::span<const ComboRow> TonerSavingRows() {
  const std::span<const ComboRow> rows(kTonerSaving);
  return HasAllRows() ? rows : rows.first(rows.size() - 1);
}

std::span<const ComboRow> ThicknessRows() {
  const std::span<const ComboRow> rows(kThicknesses);
  return HasAllRows() ? rows : rows.subspan(1, rows.size() - 2);
}

std::int16_t ThicknessOfRow(std::int32_t row) {
  return static_cast<std::int16_t>(HasAllRows() ? row : row + 1);
}

ThicknessChoice ThicknessWithoutSaving() {
  return HasAllRows() ? ThicknessChoice{.thickness = 2, .row = 2}
                      : ThicknessChoice{.thickness = 2, .row = 1};
}

ThicknessChoice ThicknessWithSaving() {
  return HasAllRows() ? ThicknessChoice{.thickness = 0, .row = 0}
                      : ThicknessChoice{.thickness = 1, .row = 0};
}

std::int32_t SelectedRow(WindowHandle page, std::int32_t control) {
  Windows& windows = World().windows;
  const WindowHandle list = windows.GetDlgItem(page, control);
  // A control that isn't there has no rows either, though it answers with a place.
  const std::intptr_t count = windows.SendMessageW(list, kCbGetCount, 0, 0);
  const std::intptr_t row = windows.SendMessageW(list, kCbGetCurSel, 0, 0);
  return row >= 0 && row < count ? static_cast<std::int32_t>(row) : kCbErr;
}

void SelectRow(WindowHandle page, std::int32_t control, std::int32_t row) {
  Windows& windows = World().windows;
  const WindowHandle list = windows.GetDlgItem(page, control);
  const std::intptr_t count = windows.SendMessageW(list, kCbGetCount, 0, 0);
  const std::intptr_t place = row >= 0 && row < count ? row : kCbErr;
  windows.SendMessageW(list, kCbSetCurSel, static_cast<std::uintptr_t>(place), 0);
}

}  // namespace ostrel
