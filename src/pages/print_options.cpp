#include "pages/print_options.h"

#include "core/language.h"
#include "core/model_table.h"
#include "core/process_state.h"
#include "core/sheet_frame.h"
#include "core/string_ids.h"
#include "core/text.h"
#include "pages/info_icon.h"
#include "pages/media_rules.h"
#include "pages/owner_draw.h"
#include "pages/page_links.h"
#include "pages/page_record.h"
#include "pages/print_options_page.h"
#include "pages/print_options_pictures.h"
#include "pages/print_options_texts.h"
#include "pages/warning_boxes.h"

#include <algorithm>
#include <iterator>

namespace ostrel {
namespace options {
namespace {

// ---- Controls -----------------------------------------------------------------------------------

// Lists that an older template of the page had, and that it still measures.
constexpr std::uint32_t kOldMediaList = 1009;
constexpr std::uint32_t kOldPaperList = 1404;

// clang-format off
constexpr CaptionRow kCaptions[] = {
    // Control, String
    {1018, kStringCopiesLabel},
    {1008, kStringCollate},
    {1242, kStringResolution600},
    {1243, kStringResolution1200},
    {1395, kStringCopiesGroup},
    {1396, kStringTwoSidedGroup},
    {1397, kStringResolutionGroup},
    {1394, kStringReverseOrder},
    {1240, kStringOneSided},
    {1125, kStringTwoSidedLongEdge},
    {1241, kStringTwoSidedShortEdge},
    {1064, kStringDefaults},
    {1414, kStringManualTwoSided},
    {1422, kStringFineMode},
    {1489, kStringMoreOptionsGroup},
    {1483, kStringJobMode},
    {1497, kStringExtraProcessingGroup},
    {1496, kStringExtraProcessing},
};

constexpr std::uint32_t kHelpTopic = 500;
constexpr HelpPair kHelpPairs[] = {
    // Control, Topic
    {1009, 3091}, {1181, 3091}, {1182, 3091},
    {1240, 1109}, {1125, 1109}, {1241, 1109}, {1414, 1109},
    {1019, 1154}, {1008, 1154}, {1394, 1154},
    {1242, 1155}, {1243, 1155}, {1422, 1155},
    {1064, 2001},
};

constexpr ComboRow kJobModes[] = {
    // String,            Value
    {kStringJobModeOff, 0},
    {kStringJobModeOn,  1},
    {kStringAuto,       2},
};

// What a sheet without permission to change locks, and what stays live on it all the same.
struct ReadOnlyRow {
  std::int32_t control;
  bool enabled;
};
constexpr ReadOnlyRow kReadOnlyRows[] = {
    {1181, false}, {1182, true},  {1018, false}, {1008, false}, {1400, false},
    {1028, false}, {1255, false}, {1404, false}, {1009, false}, {1064, false},
};
// clang-format on

// The private message of old callers, and the codes in its first word.
constexpr std::uint32_t kWmLegacyWarning = kWmUser + 256;
static_assert(kWmLegacyWarning == 0x500);

// ---- The record before it is shown --------------------------------------------------------------

// Before anything is shown: settings that can't stand together are brought into order. The list of
// papers isn't the one of the two-sided table: 245 is in it, although that table refuses it.
void Normalise(UIContext& context) {
  constexpr std::int16_t kBookletPapers[] = {9, 1, 5, 14, 243, 245};
  const std::int16_t duplex = RepairedField(context, kDmDuplex);
  if (duplex != kDuplexShortEdge) {
    SetSetting(context, "BookletPrint", 0);
  }
  if (duplex != kDuplexOneSided) {
    SetSetting(context, "ReversePrint", 0);
    SetDevmodeField(&context, kDmMediaType, kMediaPlain);
    if (Setting(context, "PosterPrint", 0) != 0) {
      SetSetting(context, "MultipleUp", 1);
      SetSetting(context, "PosterPrint", 0);
    }
  }
  if (std::ranges::find(kBookletPapers, context.publicPointer->dmPaperSize) ==
      std::end(kBookletPapers)) {
    SetSetting(context, "BookletPrint", 0);
    SetDevmodeField(&context, kDmDuplex, kDuplexOneSided);
  }
}

// ---- Pictures -----------------------------------------------------------------------------------

// Puts a picture into the control, or none, and deletes the one that was there.
void ShowPicture(const OptionsPage& page, GdiObject picture) {
  World().windows.SendMessageW(page.Item(kDuplexPicture), kStmSetImage, kImageBitmap,
                               reinterpret_cast<std::intptr_t>(picture));
  if (page.state.duplexPicture != nullptr) {
    World().graphics.DeleteObject(page.state.duplexPicture);
  }
  page.state.duplexPicture = picture;
}

}  // namespace

void DuplexPicture(const OptionsPage& page) {
  const std::uint32_t id = DuplexPictureId(page.context);
  if (id == 0 || page.Item(kDuplexPicture) == nullptr) {
    return;
  }
  if (const GdiObject picture = World().graphics.LoadBitmapW(page.context.bitmapModule, id);
      picture != nullptr) {
    ShowPicture(page, picture);
  }
}

namespace {

bool OnDrawItem(const OptionsPage& page, const DrawItem& item) {
  ItemPicture picture = {};
  if (!FindItemPicture(page.context, item.CtlID, picture)) {
    return false;
  }
  DrawCentredBitmap(item, picture.module, picture.bitmapId, picture.transparentColor);
  return true;
}

bool OnMeasureItem(MeasureItem& item) {
  if (item.CtlID != kOldMediaList && item.CtlID != kOldPaperList) {
    return false;
  }
  item.itemHeight = DrawnRowHeight();
  return true;
}

// ---- Showing the record -------------------------------------------------------------------------

void DuplexRule(const OptionsPage& page) {
  UIContext& context = page.context;
  const bool allowed = !MediaLocksDuplex(context) && !PaperLocksDuplex(context) &&
                       Setting(context, "PosterPrint", 0) == 0 && !IsBooklet(context) &&
                       !IsReverse(context);
  TellPages(&PageLinks::duplexAllowed, allowed);
  page.state.duplexGroup.Enable(allowed);
  page.Show(kDuplexIcon, !allowed);
}

bool IsFactoryFavorite(const OptionsPage& page) {
  char16_t factory[std::size(PrivateDevmode{}.FavoriteName)] = {};
  return LoadExistingString(page.texts(), kStringDefaultFavoriteName, factory) &&
         FieldText(factory) == FieldText(page.context.privatePointer->FavoriteName);
}

// The factory favourite locks nothing; what else is in force may lock again.
void UnlockAll(const OptionsPage& page) {
  page.state.duplexGroup.Enable(true);
  for (const std::int32_t icon : {kDuplexIcon, kReverseIcon, kCollateIcon, kJobModeIcon}) {
    page.Show(icon, false);
  }
  page.state.jobModeCombo.Enable(true);
  TellPages(&PageLinks::jobModeAllowed, true);
}

void ShowCopies(const OptionsPage& page) {
  std::int16_t& copies = page.context.publicPointer->dmCopies;
  copies = std::max<std::int16_t>(copies, 1);
  page.state.copiesEdit.SetValue(copies);
}

void ShowCollate(const OptionsPage& page) {
  const bool booklet = IsBooklet(page.context);
  page.state.collateCheck.SetCheck(booklet || page.context.publicPointer->dmCollate == 1);
  page.state.collateCheck.Enable(!booklet);
  page.Show(kCollateIcon, booklet);
}

void ShowJobMode(const OptionsPage& page) {
  SelectComboValue(page.window, kJobModeCombo, page.context.privatePointer->JobMode);
  const bool allowed = AllowsJobMode(page.context);
  page.state.jobModeCombo.Enable(allowed);
  page.Show(kJobModeIcon, !allowed);
}

void ShowDuplex(const OptionsPage& page) {
  const std::int16_t duplex = StoredDuplex(page.context);
  const bool longEdge = duplex == kDuplexLongEdge || duplex == 5;
  const bool shortEdge = duplex == kDuplexShortEdge || duplex == 4;
  page.state.duplexGroup.Select(longEdge ? kDuplexLong : shortEdge ? kDuplexShort : kDuplexOff);
  TellPages(&PageLinks::duplexOff, !longEdge && !shortEdge);
}

}  // namespace

void ShowReverseLock(const OptionsPage& page, bool locked) {
  page.state.reverseCheck.Enable(!locked);
  page.Show(kReverseIcon, locked);
}

void Refresh(const OptionsPage& page) {
  UIContext& context = page.context;
  ShowCopies(page);
  page.state.resolutionGroup.Select(Setting(context, "PrintMode", 0) == 1 ? kResolution1200Radio
                                                                          : kResolution600Radio);
  if (IsFactoryFavorite(page)) {
    UnlockAll(page);
  }
  page.state.jobFlagCheck.SetCheck(context.privatePointer->JobFlag == 1);
  ShowCollate(page);
  page.state.reverseCheck.SetCheck(Setting(context, "ReversePrint", 0) == 1);
  page.state.finessCheck.SetCheck(Setting(context, "FinessMode", 0) == 1);
  ShowJobMode(page);
  DuplexPicture(page);
  ShowDuplex(page);
  DuplexRule(page);
  ShowReverseLock(page, StoredDuplex(context) >= kDuplexLongEdge);
  SetSetting(context, "SourceTray", context.publicPointer->dmDefaultSource);
}

namespace {

void AttachControls(const OptionsPage& page) {
  PrintOptionsPageState& state = page.state;
  const WindowHandle dialog = page.window;
  state.dialog = dialog;
  state.editing = 0;
  state.copiesSpin.Attach(dialog, kCopiesSpin);
  state.copiesEdit.Attach(dialog, kCopiesEdit);
  state.copiesSpin.SetBuddy(&state.copiesEdit);
  state.jobModeCombo.Attach(dialog, kJobModeCombo);
  state.jobFlagCheck.Attach(dialog, kJobFlagCheck);
  state.duplexGroup.Attach(dialog, kDuplexOff);
  state.duplexOff.Attach(dialog, kDuplexOff);
  state.duplexLong.Attach(dialog, kDuplexLong);
  state.duplexShort.Attach(dialog, kDuplexShort);
  state.resolutionGroup.Attach(dialog, kResolution600Radio);
  state.res600.Attach(dialog, kResolution600Radio);
  state.res1200.Attach(dialog, kResolution1200Radio);
  state.collateCheck.Attach(dialog, kCollateCheck);
  state.reverseCheck.Attach(dialog, kReverseCheck);
  state.finessCheck.Attach(dialog, kFinessCheck);
}

// A page's window has a text too, which the sheet's tab doesn't show.
void SetOwnText(const OptionsPage& page) {
  char16_t text[kMaxPathUnits] = {};
  if (LoadExistingString(page.texts(), kStringCopiesLabel, text)) {
    World().windows.SetWindowTextW(page.window, text);
  }
}

void Start(const OptionsPage& page) {
  SetCaptions(page.window, page.texts(), kCaptions);
  SetOwnText(page);
  AttachControls(page);
  page.state.tooltips = {CreateInfoIcon(page.window, kDuplexIcon),
                         CreateInfoIcon(page.window, kReverseIcon),
                         CreateInfoIcon(page.window, kCollateIcon)};
  page.state.tooltip = nullptr;
  const std::uint64_t model = Process().ModelFlags;
  if ((model & kFamiliesWithJobMode) != 0) {
    page.state.tooltip = CreateInfoIcon(page.window, kJobModeIcon);
  } else {
    page.Show(kJobModeLabel, false);
    page.Show(kJobModeCombo, false);
  }
  if ((model & kFamiliesWithJobFlag) == 0) {
    page.Show(kJobFlagGroup, false);
    page.Show(kJobFlagCheck, false);
  }
  FillCombo(page.window, kJobModeCombo, kJobModes, 0);
  page.Show(kManualDuplexLabel, false);
  TellPages(&PageLinks::mediaChanged, false);
  World().windows.SetClassLongPtrW(page.window, kGclCursor, 0);
  Refresh(page);
}

// ---- Tooltips -----------------------------------------------------------------------------------

constexpr std::int32_t kIcons[] = {kDuplexIcon, kReverseIcon, kCollateIcon, kJobModeIcon};

void OnTooltipText(const OptionsPage& page, NotifyTooltipText& notify) {
  const std::span<char16_t> text = page.state.tooltipText;
  text.front() = u'\0';
  switch (ControlOfTooltip(page.window, notify.hdr, kIcons)) {
    case kDuplexIcon:
      TellDuplexReasons(page.context, text);
      break;
    case kReverseIcon:
      TellReverseReason(page.context, text);
      break;
    case kCollateIcon:
      TellCollateReason(page.context, text);
      break;
    case kJobModeIcon:
      TellJobModeReason(page.context, text);
      break;
    default:
      break;
  }
  notify.lpszText = text.data();
}

// The private message of old callers.
void LegacyWarning(const OptionsPage& page, std::uintptr_t code) {
  char16_t text[kMaxPathUnits] = {};
  if (TellLegacyWarning(page.context, code, text)) {
    ShowExclamation(page.window, page.texts(), text, kStringBoxTitle);
  }
}

// ---- Messages -----------------------------------------------------------------------------------

void OnButton(const OptionsPage& page, std::int32_t control) {
  switch (control) {
    case kCollateCheck:
      CollateClick(page);
      break;
    case kJobFlagCheck:
      JobFlagClick(page);
      break;
    case kFinessCheck:
      FinessClick(page);
      break;
    case kReverseCheck:
      ReverseClick(page);
      break;
    case kResolution600Radio:
    case kResolution1200Radio:
      ResolutionClick(page, control);
      break;
    case kDuplexOff:
      OneSidedClick(page);
      break;
    case kDuplexLong:
      TwoSidedClick(page, control, kDuplexLongEdge);
      break;
    case kDuplexShort:
      TwoSidedClick(page, control, kDuplexShortEdge);
      break;
    case kDefaultsButton:
      DefaultsClick(page);
      break;
    default:
      break;
  }
}

void OnCommand(const OptionsPage& page, std::uintptr_t wParam) {
  const std::int32_t control = LowWord(wParam);
  const std::uint16_t code = HighWord(wParam);
  if (control == kCopiesEdit && code == kEnChange) {
    page.state.copiesEdit.ChangeCheck();
  } else if (control == kCopiesEdit && code == kEnKillFocus) {
    CopiesEntered(page);
  } else if (control == kJobModeCombo && code == kCbnSelChange) {
    JobModeChange(page);
  } else if (code == kBnClicked) {
    OnButton(page, control);
  }
}

void OnSetActive(const OptionsPage& page) {
  if (page.context.activePage != kPrintOptionsPage) {
    page.context.activePage = kPrintOptionsPage;
    Refresh(page);
  }
}

// NOLINTBEGIN(performance-no-int-to-ptr): messages carry pointers as numbers.

std::intptr_t OnNotify(const OptionsPage& page, std::intptr_t lParam) {
  auto& notify = *reinterpret_cast<NotifyHeader*>(lParam);
  switch (notify.code) {
    case kUdnDeltaPos:
      if (notify.idFrom == kCopiesSpin) {
        CopiesStep(page, reinterpret_cast<const NotifyUpDown&>(notify));
      }
      return 0;
    case kTtnGetDispInfo:
      OnTooltipText(page, reinterpret_cast<NotifyTooltipText&>(notify));
      return 1;
    case kPsnKillActive:
      return CopiesLeave(page);
    case kPsnSetActive:
      OnSetActive(page);
      return 1;
    default:
      return AnswerSheetNotify(page.window, page.context, notify.code, kHelpTopic);
  }
}

std::intptr_t OnMessage(const OptionsPage& page, std::uint32_t message, std::uintptr_t wParam,
                        std::intptr_t lParam) {
  switch (message) {
    case kWmInitDialog:
      Normalise(page.context);
      Start(page);
      return 1;
    case kWmCommand:
      OnCommand(page, wParam);
      return 0;
    case kWmNotify:
      return lParam == 0 ? 0 : OnNotify(page, lParam);
    case kWmDrawItem:
      return lParam != 0 && OnDrawItem(page, *reinterpret_cast<const DrawItem*>(lParam)) ? 1 : 0;
    case kWmHelp:
      return ShowControlHelp(page.window, lParam, kHelpPairs) ? 1 : 0;
    case kWmMouseMove:
      // The icon of the job mode is left out: its tool keeps the place that it was made with.
      UpdateTooltipRects(page.window, page.state.tooltips, kIcons);
      return 0;
    case kWmShowWindow:
      if (page.context.noPermission != 0) {
        for (const ReadOnlyRow& row : kReadOnlyRows) {
          EnableControl(page.window, row.control, row.enabled);
        }
      }
      return 0;
    case kWmLegacyWarning:
      LegacyWarning(page, wParam);
      return 1;
    case kWmDestroy:
      ShowPicture(page, nullptr);
      page.state.dialog = nullptr;
      page.state.tooltips = {};
      page.state.tooltip = nullptr;
      return 0;
    default:
      return 0;
  }
}

// NOLINTEND(performance-no-int-to-ptr)

}  // namespace
}  // namespace options

PrintOptionsPageState::PrintOptionsPageState() {
  copiesEdit.range = {
      .maximum = 999.0001F, .minimum = 0.9999F, .precision = 0, .maximumTextLength = 3};
  duplexGroup.AddChild(&duplexOff);
  duplexGroup.AddChild(&duplexLong);
  duplexGroup.AddChild(&duplexShort);
  resolutionGroup.AddChild(&res600);
  resolutionGroup.AddChild(&res1200);
}

// The dialog's end has taken the picture, unless that found no page.
PrintOptionsPageState::~PrintOptionsPageState() {
  if (duplexPicture != nullptr) {
    World().graphics.DeleteObject(duplexPicture);
  }
}

std::intptr_t PrintOptionsPageProcedure(WindowHandle page, std::uint32_t message,
                                        std::uintptr_t wParam, std::intptr_t lParam) {
  if (message == kWmMeasureItem) {
    // Asked while the dialog's controls are being made, before the page has its context.
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a message carries a pointer as a number.
    return lParam != 0 && options::OnMeasureItem(*reinterpret_cast<MeasureItem*>(lParam)) ? 1 : 0;
  }
  return AnswerMessage<PrintOptionsPageState>(
      PageSlot::kPrintOptions, page, message, lParam,
      [&](UIContext& context, PrintOptionsPageState& state) {
        return options::OnMessage({page, context, state}, message, wParam, lParam);
      });
}

void RefreshPrintOptionsPage(UIContext& context) {
  auto* state = LivePageState<PrintOptionsPageState>(PageSlot::kPrintOptions);
  if (state != nullptr) {
    options::Refresh({state->dialog, context, *state});
  }
}

}  // namespace ostrel
