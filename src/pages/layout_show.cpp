// How the layout page shows the record: its start, its refresh, and the locks.
#include "core/model_table.h"
#include "core/process_state.h"
#include "pages/info_icon.h"
#include "pages/layout_page.h"
#include "pages/layout_rules.h"

#include <algorithm>
#include <iterator>

namespace ostrel::layout {
namespace {

constexpr std::int32_t kScaleControls[] = {kScaleEdit,    kScaleLabel,    kScaleRange,
                                           kScaleUnitOld, kScaleRangeOld, kScaleSpin};
constexpr std::int32_t kOrderControls[] = {kOrderLabel, kOrderCombo, kBorderCombo, kBorderLabel};

// Checks the radio button of one number of pages, and unchecks the others; 0 leaves none.
void CheckPageRadio(const LayoutPage& page, std::int16_t pages) {
  for (const PageRadioRow& row : kPageRadios) {
    (page.state.*row.radio).SetCheck(row.pages == pages);
  }
}

bool HasPageRadio(std::int16_t pages) {
  return std::ranges::find(kPageRadios, pages, &PageRadioRow::pages) != std::end(kPageRadios);
}

void FillOrders(const LayoutPage& page, OrderRows kind) {
  page.state.orderRows = kind;
  FillCombo(page.window, kOrderCombo, OrderListRows(kind), 0);
}

void ShowMode(const LayoutPage& page, std::int16_t pages, bool booklet) {
  if (HasPageRadio(pages) && !booklet) {
    page.state.modeGroup.Select(kPagesMode);
    EnablePageRadios(page, true);
    CheckPageRadio(page, pages);
    return;
  }
  CheckPageRadio(page, 0);
  if (pages == kMultipleUpPoster) {
    page.state.modeGroup.Select(kPosterMode);
    EnablePageRadios(page, false);
  }
  if (booklet) {
    page.state.modeGroup.Select(kBookletMode);
    EnablePageRadios(page, false);
  }
}

// The rows of the list follow where another page or a favourite has changed what they depend on.
void ShowOrder(const LayoutPage& page, std::int16_t pages) {
  const OrderRows kind = OrderRowsFor(pages, page.Orientation());
  if (page.state.orderRows != kind) {
    FillOrders(page, kind);
  }
  SelectComboValue(page.window, kOrderCombo, page.Word("PageOrder"));
  SelectComboValue(page.window, kBorderCombo, page.Word("PageBorder"));
  page.state.orderCombo.Enable(false);
  page.state.borderCombo.Enable(false);
}

void ShowToner(const LayoutPage& page) {
  const LayoutFacts facts = ReadLayoutFacts(page.context);
  SelectComboValue(page.window, kTonerCombo, facts.tonerSaving);
  page.state.tonerCombo.Enable(true);
  SelectComboValue(page.window, kThicknessCombo, page.Word("Thickness"));
  page.state.thicknessCombo.Enable(!IsLocked(LayoutOption::kThickness, facts));
}

void AttachModes(const LayoutPage& page) {
  LayoutPageState& state = page.state;
  state.modeGroup.Attach(page.window, kPagesMode);
  state.nupRadio.Attach(page.window, kPagesMode);
  state.posterRadio.Attach(page.window, kPosterMode);
  state.bookletRadio.Attach(page.window, kBookletMode);
  for (const PageRadioRow& row : kPageRadios) {
    (state.*row.radio).Attach(page.window, row.control);
  }
  if (!OffersBooklet()) {
    ShowControl(page.window, kBookletMode, false);
    ShowControl(page.window, kBookletButton, false);
  }
  state.modeGroup.Select(kPagesMode);
}

void StartModes(const LayoutPage& page) {
  LayoutPageState& state = page.state;
  state.posterCombo.Attach(page.window, kPosterCombo);
  FillCombo(page.window, kPosterCombo, PosterSizeRows(), 0);
  const bool poster = page.Word("PosterPrint") != 0;
  state.posterCombo.Enable(poster);
  if (poster) {
    EnablePageRadios(page, false);
    state.modeGroup.Select(kPosterMode);
  }
  const bool booklet = IsBooklet(page.context);
  page.Enable(kBookletButton, booklet);
  if (booklet) {
    EnablePageRadios(page, false);
    state.modeGroup.Select(kBookletMode);
  }
}

// The order's row is taken by its place, even for four pages, whose orders are 2 to 5: the refresh
// that follows puts that right by the value. The code of nine pages has no list of its own.
void StartOrders(const LayoutPage& page) {
  const std::int16_t pages = page.PagesPerSheet();
  FillOrders(page, OrderRowsFor(pages, page.Orientation()));
  if (pages == 2 || pages == 4 || pages == 9) {
    SelectRow(page.window, kOrderCombo, page.Word("PageOrder"));
  }
}

void StartLists(const LayoutPage& page) {
  LayoutPageState& state = page.state;
  state.borderCombo.Attach(page.window, kBorderCombo);
  FillCombo(page.window, kBorderCombo, BorderRows(), 0);
  state.orientCombo.Attach(page.window, kOrientationCombo);
  FillCombo(page.window, kOrientationCombo, OrientationRows(), 0);
  state.tonerCombo.Attach(page.window, kTonerCombo);
  FillCombo(page.window, kTonerCombo, TonerSavingRows(), 0);
  state.thicknessCombo.Attach(page.window, kThicknessCombo);
  FillCombo(page.window, kThicknessCombo, ThicknessRows(), 0);
  state.orderCombo.Attach(page.window, kOrderCombo);
  StartOrders(page);
  state.rotateCheck.Attach(page.window, kRotateCheck);
}

void StartScale(const LayoutPage& page) {
  LayoutPageState& state = page.state;
  state.scaleLocked = false;
  state.scaleEdit.Attach(page.window, kScaleEdit);
  state.scaleSpin.Attach(page.window, kScaleSpin);
  state.scaleSpin.SetBuddy(&state.scaleEdit);
  ShowScale(page, ScalePercent(page.context));
  if (page.PagesPerSheet() > 1 || page.Word("Negative") != 0) {
    state.scaleEdit.Enable(false);
  }
}

}  // namespace

// ---- The page -----------------------------------------------------------------------------------

WindowHandle LayoutPage::Item(std::int32_t control) const {
  return World().windows.GetDlgItem(window, control);
}

void LayoutPage::Check(std::int32_t radio, bool on) const {
  World().windows.SendMessageW(Item(radio), kBmSetCheck, on ? kBstChecked : kBstUnchecked, 0);
}

void LayoutPage::Redraw(std::int32_t control) const {
  World().windows.InvalidateRect(Item(control));
}

bool OffersBooklet() {
  return (Process().ModelFlags & kFamiliesWithoutBooklet) == 0;
}

void EnablePageRadios(const LayoutPage& page, bool enable) {
  for (const PageRadioRow& row : kPageRadios) {
    (page.state.*row.radio).Enable(enable);
  }
}

// ---- The scale ----------------------------------------------------------------------------------

void ShowScale(const LayoutPage& page, std::int32_t percent) {
  page.state.showingScale = true;
  page.state.scaleEdit.SetValue(percent);
  page.state.showingScale = false;
  // It is kept as a text that stands, for one that doesn't to fall back to.
  if (percent >= kLeastScale && percent <= kMostScale) {
    page.state.scaleEdit.ChangeCheck();
  }
}

void ScaleEnable(const LayoutPage& page, bool on) {
  const bool wasLocked = page.state.scaleLocked;
  page.state.scaleLocked = !on;
  for (const std::int32_t control : kScaleControls) {
    page.Enable(control, on);
  }
  page.ShowIcon(kScaleIcon, !on);
  Windows& windows = World().windows;
  if (!on) {
    windows.SetDlgItemInt(page.window, kScaleEdit, kFullScale, false);
  } else if (wasLocked) {
    ShowScale(page, ScalePercent(page.context));
  }
  windows.SendMessageW(page.Item(kScaleEdit), kEmSetReadOnly, on ? 0 : 1, 0);
}

std::int32_t ShownScale(const LayoutPage& page) {
  std::int32_t percent = ScalePercent(page.context);
  page.state.scaleEdit.GetValue(&percent);
  return std::clamp(percent, kLeastScale, kMostScale);
}

// ---- Locks --------------------------------------------------------------------------------------

void PosterLock(const LayoutPage& page) {
  const bool locked = IsLocked(LayoutOption::kPosterRadio, ReadLayoutFacts(page.context));
  page.state.posterFree = locked ? 0 : 1;
  page.ShowIcon(kPosterIcon, locked);
  if (!locked) {
    page.state.posterRadio.Enable(true);
  }
}

void BookletLock(const LayoutPage& page) {
  const bool locked = IsLocked(LayoutOption::kBookletRadio, ReadLayoutFacts(page.context));
  page.state.bookletRadio.Enable(!locked);
  page.Enable(kBookletLine, !locked);
  if (locked) {
    page.state.bookletRadio.SetCheck(false);
  }
  page.ShowIcon(kBookletIcon, locked && OffersBooklet());
  if (!IsBooklet(page.context)) {
    page.Enable(kBookletButton, false);
  }
}

void ModeEnable(const LayoutPage& page, std::int16_t pages, bool booklet, bool poster) {
  LayoutFacts mode;
  mode.pages = pages;
  mode.booklet = booklet;
  mode.poster = poster;
  page.Enable(kPosterCombo, poster && !booklet);
  page.Enable(kPosterLine, !booklet);
  if (booklet || poster) {
    SelectRow(page.window, kPosterCombo, 0);
  }
  const bool ordered = !IsLocked(LayoutOption::kOrderAndBorder, mode);
  for (const std::int32_t control : kOrderControls) {
    page.Enable(control, ordered);
  }
  if (!ordered) {
    SelectRow(page.window, kBorderCombo, 0);
  }
  ScaleEnable(page, !IsLocked(LayoutOption::kScale, mode));
}

// ---- Lists --------------------------------------------------------------------------------------

void OrderList(const LayoutPage& page, std::int16_t pages) {
  constexpr std::int16_t kFirstOfSeveral = 2;
  FillOrders(page, OrderRowsFor(pages, page.Orientation()));
  if (pages == 4 || pages == 8 || pages == 16) {
    SetSetting(page.context, "PageOrder", kFirstOfSeveral);
  }
}

// ---- The whole page -----------------------------------------------------------------------------

void LayoutRefresh(const LayoutPage& page) {
  const std::int16_t pages = page.PagesPerSheet();
  const bool booklet = IsBooklet(page.context);
  ShowMode(page, pages, booklet);
  ShowOrder(page, pages);
  ShowScale(page, ScalePercent(page.context));
  SelectComboValue(page.window, kOrientationCombo, page.Orientation());
  page.state.orientCombo.Enable(true);
  page.state.rotateCheck.SetCheck(page.Word("Rotate180") != 0);
  ShowToner(page);
  PosterLock(page);
  BookletLock(page);
  ScaleEnable(page, pages <= 1 && page.Word("Negative") == 0);
  // A negative print's lock of the scale doesn't outlast this.
  ModeEnable(page, pages, booklet, pages == kMultipleUpPoster);
}

void Start(const LayoutPage& page) {
  page.state.dialog = page.window;
  page.state.refusing = false;
  AttachModes(page);
  StartModes(page);
  StartLists(page);
  StartScale(page);
  page.state.tooltips = {CreateInfoIcon(page.window, kScaleIcon),
                         CreateInfoIcon(page.window, kPosterIcon),
                         OffersBooklet() ? CreateInfoIcon(page.window, kBookletIcon) : nullptr};
}

}  // namespace ostrel::layout
