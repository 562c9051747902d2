// The layout page: several pages on a sheet, poster or booklet; their order and border; the print
// scale, the orientation, toner saving with its thickness, and turning by half a circle.
//
// The page holds no settings. Three modes exclude one another: several pages, poster and booklet.
// The mode isn't stored as such: it follows from MultipleUp, PosterPrint and BookletPrint. How the
// modes and the options of this page and of others exclude one another stands in layout_rules.
#pragma once

#include "core/page_state_table.h"
#include "core/ui_context.h"
#include "pages/controls.h"
#include "pages/layout_lists.h"
#include "pages/reasons.h"
#include "platform/window_types.h"

#include <array>
#include <cstdint>

namespace ostrel {

struct LayoutPageState final : PageState {
  LayoutPageState();

  RadioGroup modeGroup;       // 1484
  RadioButton nupRadio;       // 1484
  DlgControl orderCombo;      // 1046
  DlgControl borderCombo;     // 1393
  RadioButton up1;            // 1387
  RadioButton up2;            // 1389
  RadioButton up4;            // 1390
  RadioButton up8;            // 1391
  RadioButton up16;           // 1392
  RadioButton posterRadio;    // 1485
  DlgControl posterCombo;     // 1044
  RadioButton bookletRadio;   // 1486
  DlgControl orientCombo;     // 1048
  RadioButton rotateCheck;    // 1415
  DlgControl thicknessCombo;  // 1394
  DlgControl tonerCombo;      // 1045
  IntSpin scaleSpin;          // 1107
  IntEdit scaleEdit;          // 1025
  WindowHandle dialog = nullptr;
  // 1 when no booklet held the poster back as its lock was shown last. A click on another mode
  // hides the lock's icon and leaves this as it is until the next refresh.
  std::uint8_t posterFree = 0;
  std::array<WindowHandle, 3> tooltips = {};  // of icons 1452, 1454, 1453

  OrderRows orderRows = OrderRows::kNone;  // what the list of orders was filled with
  bool scaleLocked = false;                // the scale box shows 100, whatever the record holds
  bool showingScale = false;               // the page itself writes into the scale box
  bool refusing = false;                   // a box tells that a mode can't be had
  // The text that a tooltip asked for last; it must outlive the question.
  std::array<char16_t, kTooltipReasonUnits> tooltipText = {};
};

std::intptr_t LayoutPageProcedure(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                                  std::intptr_t lParam);

// Shows the record in the page's controls once more; nothing when the calling thread has no such
// page.
void RefreshLayoutPage(UIContext& context);

}  // namespace ostrel
