// What the files of the layout page share of one another. The page itself stands in layout.h.
#pragma once

#include "core/ui_context.h"
#include "pages/layout.h"
#include "pages/layout_rules.h"
#include "pages/page_record.h"
#include "pages/page_support.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel::layout {

// ---- Controls -----------------------------------------------------------------------------------

enum Control : std::int32_t {
  kModeFrame = 1015,
  kScaleRangeOld = 1024,
  kScaleEdit = 1025,
  kScaleUnitOld = 1027,
  kPosterLine = 1043,
  kPosterCombo = 1044,
  kTonerCombo = 1045,
  kOrderCombo = 1046,
  kOrderLabel = 1047,
  kOrientationCombo = 1048,
  kDefaultsButton = 1064,
  kBookletButton = 1065,
  kPreview = 1067,
  kScaleSpin = 1107,
  kOnePage = 1387,
  kSheetPicture = 1388,
  kTwoPages = 1389,
  kFourPages = 1390,
  kEightPages = 1391,
  kSixteenPages = 1392,
  kBorderCombo = 1393,
  kThicknessCombo = 1394,
  kBorderLabel = 1409,
  kScaleLabel = 1410,
  kRotateCheck = 1415,
  kScaleRange = 1443,
  kScaleIcon = 1452,
  kBookletIcon = 1453,
  kPosterIcon = 1454,
  kBookletLine = 1463,
  kPagesMode = 1484,
  kPosterMode = 1485,
  kBookletMode = 1486,
};

// The radio buttons of one mode, and the pages per sheet that each stands for.
struct PageRadioRow {
  std::int32_t control;
  std::int16_t pages;
  RadioButton LayoutPageState::*radio;
};
// clang-format off
inline constexpr PageRadioRow kPageRadios[] = {
    // Control,     Pages, Radio
    {kOnePage,        1,   &LayoutPageState::up1},
    {kTwoPages,       2,   &LayoutPageState::up2},
    {kFourPages,      4,   &LayoutPageState::up4},
    {kEightPages,     8,   &LayoutPageState::up8},
    {kSixteenPages,  16,   &LayoutPageState::up16},
};
// clang-format on

inline constexpr std::int32_t kLeastScale = 25;  // percent
inline constexpr std::int32_t kMostScale = 400;  // percent

// ---- The page -----------------------------------------------------------------------------------

// One message's view of the page.
struct LayoutPage {
  WindowHandle window;
  UIContext& context;
  LayoutPageState& state;

  WindowHandle Item(std::int32_t control) const;
  void Enable(std::int32_t control, bool enable) const { EnableControl(window, control, enable); }
  void ShowIcon(std::int32_t icon, bool shown) const { ShowControl(window, icon, shown); }
  void Check(std::int32_t radio, bool on) const;
  void Redraw(std::int32_t control) const;
  void Untitled() const { MarkUntitled(window, UntitledRule::kAlwaysShort); }
  void Changed() const { SetSheetChanged(window); }
  std::int16_t Word(const char* key, std::int16_t fallback = 0) const {
    return Setting(context, key, fallback);
  }
  std::int16_t PagesPerSheet() const { return Word("MultipleUp", 1); }
  std::int16_t Orientation() const { return RepairedField(context, kDmOrientation); }
};

// Whether the model can print booklets.
bool OffersBooklet();

void EnablePageRadios(const LayoutPage& page, bool enable);

// ---- Showing the record -------------------------------------------------------------------------

// Once for each dialog.
void Start(const LayoutPage& page);
// Shows the record in all controls.
void LayoutRefresh(const LayoutPage& page);

// What the page writes into the scale box is no change by the user.
void ShowScale(const LayoutPage& page, std::int32_t percent);
// The scale in the box, brought into its range; the record's where the box holds none.
std::int32_t ShownScale(const LayoutPage& page);
// A locked box shows 100 and the record keeps its scale, which comes back with the lock's end.
void ScaleEnable(const LayoutPage& page, bool on);

// Whether the poster, and whether the booklet, may be chosen.
void PosterLock(const LayoutPage& page);
void BookletLock(const LayoutPage& page);
// What goes with a mode. It is told the mode, which isn't always the record's.
void ModeEnable(const LayoutPage& page, std::int16_t pages, bool booklet, bool poster);
// Fills the list of orders for a number of pages. Four, eight and sixteen pages start with the
// first of theirs.
void OrderList(const LayoutPage& page, std::int16_t pages);

// ---- What the user does -------------------------------------------------------------------------

// Asks the rules for an option, with `asked` pages per sheet for that option; a refusal shows its
// box. Result: whether it was accepted.
bool Ask(const LayoutPage& page, LayoutOption option, std::int16_t asked = 1);

// A click on the mode of several pages, or on one of its radio buttons.
void NupClick(const LayoutPage& page, std::int32_t control);
void PosterClick(const LayoutPage& page);
void BookletClick(const LayoutPage& page);

void OrderChosen(const LayoutPage& page);
void BorderChosen(const LayoutPage& page);
void OrientationChosen(const LayoutPage& page);
void TonerChosen(const LayoutPage& page);
void ThicknessChosen(const LayoutPage& page);
void RotateClick(const LayoutPage& page);

// For each change in the scale box, and for the moment when it is left.
void ScaleTyped(const LayoutPage& page);
void ScaleEntered(const LayoutPage& page);
void ScaleStep(const LayoutPage& page, const NotifyUpDown& notify);
// The page is left. Only a record from elsewhere has the scaling mode that this looks at. Result:
// the dialog procedure's answer.
std::intptr_t ScaleLeave(const LayoutPage& page);

}  // namespace ostrel::layout
