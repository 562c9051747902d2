#include "pages/layout.h"

#include "core/language.h"
#include "core/process_state.h"
#include "core/sheet_frame.h"
#include "core/string_ids.h"
#include "core/text.h"
#include "pages/booklet_cover.h"
#include "pages/info_icon.h"
#include "pages/layout_defaults.h"
#include "pages/layout_page.h"
#include "pages/layout_texts.h"
#include "pages/owner_draw.h"
#include "pages/preview.h"

#include <iterator>
#include <tuple>

namespace ostrel {
namespace layout {
namespace {

// clang-format off
constexpr CaptionRow kCaptions[] = {
    // Control, String
    {1408, kStringPagesPerSheet},
    {1409, kStringPageBorder},
    {1410, kStringScale},
    {1488, kStringOrientation},
    {1411, kStringScale},
    {1047, kStringPageOrder},
    {1064, kStringDefaults},
    {1415, kStringRotate180},
    {1437, kStringDarkness},
    {1487, kStringTonerSaving},
    {1458, kStringTonerSaving},
    {1065, kStringBookletSettings},
    {1443, kStringScaleRange},
    {1484, kStringPagesPerSheet},
    {1485, kStringPoster},
    {1486, kStringBooklet},
    {1387, kStringPagesPerSheet1},
    {1389, kStringPagesPerSheet2},
    {1390, kStringPagesPerSheet4},
    {1391, kStringPagesPerSheet8},
    {1392, kStringPagesPerSheet16},
};

constexpr std::uint32_t kHelpTopic = 506;
constexpr HelpPair kHelpPairs[] = {
    // Control, Topic
    {1484, 1172}, {1485, 1172}, {1486, 1172}, {1393, 1172}, {1046, 1172}, {1025, 1172},
    {1411, 1165},
    {1045, 1736},
    {1415, 1702},
    {1394, 1456}, {1437, 1456},
    {1064, 2004},
};
// clang-format on

// What a sheet without permission to change locks, as far as the refresh behind it doesn't unlock
// it again.
constexpr std::int32_t kReadOnlyControls[] = {kModeFrame,   kPosterLine,   kOrderLabel,
                                              kPosterCombo, kScaleEdit,    kDefaultsButton,
                                              kScaleRange,  kBookletButton};

// ---- Buttons ------------------------------------------------------------------------------------

void BookletSettings(const LayoutPage& page) {
  if (ShowBookletCoverDialog(page.window, page.context)) {
    NameUntitled(page.window);
    page.Changed();
  }
  page.Redraw(kPreview);
  page.Changed();
}

void DefaultsClick(const LayoutPage& page) {
  for (const PageRadioRow& row : kPageRadios) {
    page.Check(row.control, row.control == kOnePage);
  }
  if (LayoutDefaults(page.context)) {
    LayoutRefresh(page);
  }
  page.Redraw(kPreview);
  page.Changed();
  World().windows.SetFocus(page.Item(kDefaultsButton));
}

// ---- Pictures and tooltips ----------------------------------------------------------------------

// That painting alone makes the sheet's Apply button live is to stay.
bool OnDrawItem(const LayoutPage& page, const DrawItem& item) {
  constexpr std::uint32_t kSheetBitmap = 901;
  const bool ours = item.CtlID == kPreview || item.CtlID == kSheetPicture;
  if (item.CtlID == kPreview) {
    DrawLayoutPicture(page.context, item);
  } else if (ours) {
    DrawCentredBitmap(item, page.context.bitmapModule, kSheetBitmap, kSheetGround);
  }
  const std::int16_t pages = page.PagesPerSheet();
  for (const PageRadioRow& row : kPageRadios) {
    if (row.pages == pages) {
      page.Check(row.control, pages != 1 || !IsBooklet(page.context));
    }
  }
  page.Changed();
  return ours;
}

bool OnMeasureItem(MeasureItem& item) {
  const bool ours = item.CtlID == kPosterCombo || item.CtlID == kOrderCombo;
  if (ours) {
    item.itemHeight = DrawnRowHeight();
  }
  return ours;
}

constexpr std::int32_t kIcons[] = {kScaleIcon, kPosterIcon, kBookletIcon};
static_assert(std::size(kIcons) == std::tuple_size_v<decltype(LayoutPageState::tooltips)>);

void OnTooltipText(const LayoutPage& page, NotifyTooltipText& notify) {
  const std::span<char16_t> text = page.state.tooltipText;
  text.front() = u'\0';
  const std::int32_t icon = ControlOfTooltip(page.window, notify.hdr, kIcons);
  if (icon == kScaleIcon) {
    TellScaleReasons(page.context, text);
  } else if (icon == kPosterIcon) {
    TellPosterReason(page.context, text);
  } else if (icon == kBookletIcon) {
    TellBookletReasons(page.context, text);
  }
  notify.lpszText = text.data();
}

// ---- Messages -----------------------------------------------------------------------------------

void OnButton(const LayoutPage& page, std::int32_t control) {
  switch (control) {
    case kPagesMode:
    case kOnePage:
    case kTwoPages:
    case kFourPages:
    case kEightPages:
    case kSixteenPages:
      NupClick(page, control);
      break;
    case kPosterMode:
      PosterClick(page);
      break;
    case kBookletMode:
      BookletClick(page);
      break;
    case kRotateCheck:
      RotateClick(page);
      break;
    case kBookletButton:
      BookletSettings(page);
      break;
    case kDefaultsButton:
      DefaultsClick(page);
      break;
    default:
      break;
  }
}

// What the user chose from a list, or did to the scale box.
struct CommandRow {
  std::int32_t control;
  std::uint16_t code;
  void (*answer)(const LayoutPage& page);
};
// clang-format off
constexpr CommandRow kCommands[] = {
    // Control,         Code,           Answer
    {kOrderCombo,       kCbnSelChange, OrderChosen},
    {kBorderCombo,      kCbnSelChange, BorderChosen},
    {kOrientationCombo, kCbnSelChange, OrientationChosen},
    {kTonerCombo,       kCbnSelChange, TonerChosen},
    {kThicknessCombo,   kCbnSelChange, ThicknessChosen},
    {kScaleEdit,        kEnChange,     ScaleTyped},
    {kScaleEdit,        kEnKillFocus,  ScaleEntered},
};
// clang-format on

void OnCommand(const LayoutPage& page, std::uintptr_t wParam) {
  const std::int32_t control = LowWord(wParam);
  const std::uint16_t code = HighWord(wParam);
  for (const CommandRow& row : kCommands) {
    if (row.control == control && row.code == code) {
      row.answer(page);
      return;
    }
  }
  if (code == kBnClicked) {
    OnButton(page, control);
  }
}

void OnInit(const LayoutPage& page) {
  const ModuleHandle texts = page.context.languageModule;
  SetCaptions(page.window, texts, kCaptions);
  char16_t text[kMaxPathUnits] = {};
  if (LoadExistingString(texts, kStringLayoutTitle, text)) {
    World().windows.SetWindowTextW(page.window, text);
  }
  Start(page);
}

void OnShow(const LayoutPage& page) {
  if (page.context.noPermission != 0) {
    for (const std::int32_t control : kReadOnlyControls) {
      page.Enable(control, false);
    }
  }
  LayoutRefresh(page);
}

void OnSetActive(const LayoutPage& page) {
  if (page.context.activePage != kLayoutPage) {
    LayoutRefresh(page);
    page.context.activePage = kLayoutPage;
  }
}

// NOLINTBEGIN(performance-no-int-to-ptr): messages carry pointers as numbers.

std::intptr_t OnNotify(const LayoutPage& page, std::intptr_t lParam) {
  auto& notify = *reinterpret_cast<NotifyHeader*>(lParam);
  switch (notify.code) {
    case kPsnSetActive:
      OnSetActive(page);
      return 1;
    case kPsnKillActive:
      return ScaleLeave(page);
    case kUdnDeltaPos:
      if (notify.idFrom == kScaleSpin) {
        ScaleStep(page, reinterpret_cast<const NotifyUpDown&>(notify));
      }
      return 0;
    case kTtnGetDispInfo:
      OnTooltipText(page, reinterpret_cast<NotifyTooltipText&>(notify));
      return 1;
    default:
      return AnswerSheetNotify(page.window, page.context, notify.code, kHelpTopic);
  }
}

std::intptr_t OnMessage(const LayoutPage& page, std::uint32_t message, std::uintptr_t wParam,
                        std::intptr_t lParam) {
  switch (message) {
    case kWmInitDialog:
      OnInit(page);
      return 1;
    case kWmShowWindow:
      OnShow(page);
      return 0;
    case kWmCommand:
      OnCommand(page, wParam);
      return 0;
    case kWmNotify:
      return lParam == 0 ? 0 : OnNotify(page, lParam);
    case kWmDrawItem:
      return lParam != 0 && OnDrawItem(page, *reinterpret_cast<const DrawItem*>(lParam)) ? 1 : 0;
    case kWmMouseMove:
      UpdateTooltipRects(page.window, page.state.tooltips, kIcons);
      return 0;
    case kWmHelp:
      return ShowControlHelp(page.window, lParam, kHelpPairs) ? 1 : 0;
    case kWmDestroy:
      page.state.dialog = nullptr;
      page.state.tooltips = {};
      return 0;
    default:
      return 0;
  }
}

// NOLINTEND(performance-no-int-to-ptr)

}  // namespace
}  // namespace layout

LayoutPageState::LayoutPageState() {
  scaleEdit.range = {
      .maximum = 400.0F, .minimum = 24.99999F, .precision = 0, .maximumTextLength = 3};
  for (RadioButton* mode : {&nupRadio, &posterRadio, &bookletRadio}) {
    modeGroup.AddChild(mode);
  }
}

std::intptr_t LayoutPageProcedure(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                                  std::intptr_t lParam) {
  if (message == kWmMeasureItem) {
    // Asked while the dialog's controls are being made, before the page has its context.
    auto* item = PointedAt<MeasureItem>(lParam);
    return item != nullptr && layout::OnMeasureItem(*item) ? 1 : 0;
  }
  return AnswerMessage<LayoutPageState>(
      PageSlot::kLayout, page, message, lParam, [&](UIContext& context, LayoutPageState& state) {
        return layout::OnMessage({page, context, state}, message, wParam, lParam);
      });
}

void RefreshLayoutPage(UIContext& context) {
  if (auto* state = LivePageState<LayoutPageState>(PageSlot::kLayout); state != nullptr) {
    layout::LayoutRefresh({state->dialog, context, *state});
  }
}

}  // namespace ostrel
