// The three modes of the layout page: what a click on each does.
#include "core/process_state.h"
#include "pages/layout_page.h"
#include "pages/layout_rules.h"
#include "pages/media_rules.h"
#include "pages/warning_boxes.h"

#include <algorithm>
#include <iterator>

namespace ostrel::layout {
namespace {

void ClearPageRadios(const LayoutPage& page) {
  for (const PageRadioRow& row : kPageRadios) {
    page.Check(row.control, false);
  }
}

// The page's hands for the rules.
class RuleControls final : public LayoutRuleControls {
 public:
  explicit RuleControls(const LayoutPage& page) : page_(page) {}

  void Warn(Refusal refusal) override {
    const ModuleHandle texts = page_.context.languageModule;
    // While the box is open the focus comes and goes, and brings clicks that nobody made.
    page_.state.refusing = true;
    switch (refusal) {
      case Refusal::kNone:
        break;
      case Refusal::kPosterDuplexWatermark:
        WarnPosterDuplexWatermark(page_.window, texts);
        break;
      case Refusal::kPosterDuplex:
        WarnPosterDuplex(page_.window, texts);
        break;
      case Refusal::kWatermarkPoster:
        WarnWatermarkPoster(page_.window, texts, WatermarkPoster::kPosterRefused);
        break;
      case Refusal::kBookletConflicts: {
        char16_t text[kConflictTextUnits] = {};
        MediaRules(&page_.context).ConflictText(text);
        WarnText(page_.window, texts, text);
        break;
      }
    }
    page_.state.refusing = false;
  }
  void EnablePageRadios(bool enable) override { layout::EnablePageRadios(page_, enable); }
  void ClearPageRadios() override { layout::ClearPageRadios(page_); }
  void EnableBookletButton(bool enable) override { page_.Enable(kBookletButton, enable); }

 private:
  const LayoutPage& page_;
};

// The focus goes to the mode that is in force: the window system clicks a radio button that gets
// the focus while it isn't checked, and would ask for a refused mode again whenever the user comes
// back to the sheet.
void FocusMode(const LayoutPage& page) {
  Windows& windows = World().windows;
  std::int32_t target = kOrientationCombo;  // where no mode is checked
  for (const std::int32_t mode : {kPagesMode, kPosterMode, kBookletMode}) {
    if (windows.IsDlgButtonChecked(page.window, mode) == kBstChecked &&
        windows.IsWindowEnabled(page.Item(mode))) {
      target = mode;
    }
  }
  windows.SetFocus(page.Item(target));
}

std::int16_t PagesOfRadio(std::int32_t control) {
  const auto* row = std::ranges::find(kPageRadios, control, &PageRadioRow::control);
  return row == std::end(kPageRadios) ? std::int16_t{1} : row->pages;
}

void PosterRefused(const LayoutPage& page) {
  ModeEnable(page, 1, false, IsBooklet(page.context));
  page.Redraw(kPreview);
  LayoutRefresh(page);
  page.Changed();
  FocusMode(page);
}

}  // namespace

bool Ask(const LayoutPage& page, LayoutOption option, std::int16_t asked) {
  RuleControls controls(page);
  return AskFor(option, page.context, controls, asked);
}

void NupClick(const LayoutPage& page, std::int32_t control) {
  const std::int16_t pages = PagesOfRadio(control);
  EnablePageRadios(page, true);
  page.state.posterRadio.Enable(true);
  page.state.modeGroup.Select(kPagesMode);
  // A radio button that was clicked itself is checked already.
  for (const PageRadioRow& row : kPageRadios) {
    if (control == kPagesMode || (row.control != control && row.control != kOnePage)) {
      page.Check(row.control, control == kPagesMode && row.control == kOnePage);
    }
  }
  const bool known = ReadLayoutFacts(page.context).pagesKnown;
  const bool changed = Ask(page, LayoutOption::kPagesPerSheet, pages);
  if (!known) {
    return;
  }
  if (changed) {
    if (pages == 1) {
      SelectRow(page.window, kBorderCombo, 0);
    }
    OrderList(page, pages);
    BookletLock(page);
    ModeEnable(page, pages, false, false);
    SelectRow(page.window, kOrderCombo, 0);
    page.Untitled();
    page.Redraw(kOrderCombo);
  }
  // Also where only a booklet has ended.
  page.Enable(kBookletButton, false);
  ModeEnable(page, pages, false, false);
  page.Redraw(kPreview);
  page.ShowIcon(kPosterIcon, false);
  page.Changed();
}

void PosterClick(const LayoutPage& page) {
  if (page.state.refusing) {
    return;
  }
  ClearPageRadios(page);
  if (!ReadLayoutFacts(page.context).pagesKnown) {
    return;
  }
  if (!Ask(page, LayoutOption::kPoster)) {
    PosterRefused(page);
    return;
  }
  page.state.modeGroup.Select(kPosterMode);
  OrderList(page, kMultipleUpPoster);
  SelectRow(page.window, kOrderCombo, 0);
  BookletLock(page);
  ModeEnable(page, kMultipleUpPoster, false, true);
  page.Untitled();
  page.Redraw(kOrderCombo);
  page.Redraw(kPreview);
  page.ShowIcon(kPosterIcon, false);
  page.Changed();
}

void BookletClick(const LayoutPage& page) {
  if (page.state.refusing) {
    return;
  }
  EnablePageRadios(page, false);
  page.state.posterRadio.Enable(false);
  const bool accepted = Ask(page, LayoutOption::kBooklet);
  const std::int16_t pages = page.PagesPerSheet();
  const bool poster = pages == kMultipleUpPoster;
  if (!accepted) {
    // The record keeps the booklet until the next mode, or until the print options page repairs it.
    page.state.modeGroup.Select(poster ? kPosterMode : kPagesMode);
    ModeEnable(page, pages, false, poster);
    // The click has set the scale back too: a live box must not bring the old one back.
    if (!page.state.scaleLocked) {
      ShowScale(page, ScalePercent(page.context));
    }
    FocusMode(page);
    return;
  }
  page.state.modeGroup.Select(kBookletMode);
  ModeEnable(page, pages, true, poster);
  page.Enable(kBookletButton, true);
  PosterLock(page);
  page.Redraw(kPreview);
  page.Changed();
}

}  // namespace ostrel::layout
