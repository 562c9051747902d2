#include "pages/booklet_cover.h"

#include "core/language.h"
#include "core/process_state.h"
#include "core/string_ids.h"
#include "core/text.h"
#include "pages/booklet_cover_rules.h"
#include "pages/guarded_procedure.h"
#include "pages/info_icon.h"
#include "pages/media_rules.h"
#include "pages/page_support.h"
#include "pages/source_list.h"
#include "pages/warning_boxes.h"

namespace ostrel {
namespace {

constexpr std::uint32_t kBookletCoverDialog = 1071;

// ---- Controls -----------------------------------------------------------------------------------

enum Control : std::int32_t {
  kMediaCombo = 1009,
  kMediaLabel = 1028,
  kDefaultsButton = 1064,
  kHelpButton = 1112,
  kSourceCombo = 1393,
  kPrintCoverCheck = 1394,
  kFrontOutsideCheck = 1395,
  kFrontInsideCheck = 1396,
  kBackOutsideCheck = 1397,
  kBackInsideCheck = 1398,
  kSourceLabel = 1403,
  kMediaIcon = 1446,
  kSourceIcon = 1450,
  kBindingCombo = 1479,
};

// clang-format off
constexpr CaptionRow kCaptions[] = {
    // Control, String
    {   1, kStringOk},
    {   2, kStringCancel},
    {1478, kStringBinding},
    {1480, kStringCoverGroup},
    {1394, kStringPrintCover},
    {1395, kStringFrontCoverOutside},
    {1396, kStringFrontCoverInside},
    {1397, kStringBackCoverOutside},
    {1398, kStringBackCoverInside},
    {1028, kStringMediaTypeLabel},
    {1403, kStringPaperSourceLabel},
    {1064, kStringDefaults},
    {1112, kStringHelp},
};

constexpr std::uint32_t kHelpTopic = 1908;
constexpr HelpPair kHelpPairs[] = {
    // Control, Topic
    {   1,  105},
    {   2,  101},
    {1478, 1175}, {1479, 1175},
    {1480, 1900},
    {1394, 1901},
    {1395, 1902},
    {1396, 1903},
    {1397, 1904},
    {1398, 1905},
    {1028, 1906}, {1009, 1906},
    {1393, 1907}, {1403, 1907},
    {1112, 1908},
};

constexpr ComboRow kBindings[] = {
    // String,             Value
    {kStringBindingLeft,  0},
    {kStringBindingRight, 1},
};
constexpr ComboRow kCoverMedia[] = {
    // String,           Value
    {kStringMediaPlain, kMediaPlain},
};

// The boxes, each with its word of the record.
struct BoxRow {
  Control control;
  RadioButton BookletDialogState::*box;
  std::int16_t PrivateDevmode::*field;
};
constexpr BoxRow kBoxes[] = {
    // Control,           Box,                               Field
    {kPrintCoverCheck,   &BookletDialogState::printCover,   &PrivateDevmode::BookletPrintCover},
    {kFrontOutsideCheck, &BookletDialogState::frontOutside, &PrivateDevmode::BookletPrintOnCoverOutside},
    {kFrontInsideCheck,  &BookletDialogState::frontInside,  &PrivateDevmode::BookletPrintOnCoverInside},
    {kBackOutsideCheck,  &BookletDialogState::backOutside,  &PrivateDevmode::BoookletPrintOnBackCoverOutside},
    {kBackInsideCheck,   &BookletDialogState::backInside,   &PrivateDevmode::BoookletPrintOnBackCoverInside},
};

// What the dialog writes beside the boxes' words.
constexpr std::int16_t PrivateDevmode::*kChosenFields[] = {
    &PrivateDevmode::BookletBinding,
    &PrivateDevmode::BookletCoverType,
    &PrivateDevmode::BookletCoverSource,
};

// What needs a cover to be printed.
constexpr std::int32_t kCoverControls[] = {
    kMediaCombo, kSourceCombo, kFrontOutsideCheck, kFrontInsideCheck, kBackOutsideCheck,
    kBackInsideCheck, kMediaLabel, kSourceLabel,
};

constexpr std::int32_t kIcons[] = {kMediaIcon, kSourceIcon};
// clang-format on

// ---- The dialog ---------------------------------------------------------------------------------

// What the one who opens the dialog hands over, and gets back.
struct Call {
  std::uint32_t result;  // 1 when the settings were written
  UIContext* context;
};

// One message's view of the dialog.
struct Dialog {
  WindowHandle window;
  Call& call;
  BookletDialogState& state;

  UIContext& context() const { return *call.context; }
  ModuleHandle texts() const { return call.context->languageModule; }
  PrivateDevmode& own() const { return state.snapshot.privateDevmode; }
  const PublicDevmode& shared() const { return state.snapshot.publicDevmode; }
  bool HasCover() const { return own().BookletPrintCover != 0; }
  void Show(std::int32_t control, bool shown) const { ShowControl(window, control, shown); }
};

// ---- Showing the snapshot -----------------------------------------------------------------------

// A place that the list doesn't have selects nothing: not every window system sees to that.
void SelectSourceRow(const Dialog& dialog, std::int32_t place) {
  const DlgControl& combo = dialog.state.sourceCombo;
  const bool listed = place < combo.Send(kCbGetCount, 0, 0);
  combo.Send(kCbSetCurSel, static_cast<std::uintptr_t>(listed ? place : kCbErr), 0);
}

bool IsSourceSelected(const Dialog& dialog) {
  std::int16_t source = 0;
  return SelectedComboValue(dialog.window, kSourceCombo, &source);
}

void CoverEnable(const Dialog& dialog) {
  for (const std::int32_t control : kCoverControls) {
    EnableControl(dialog.window, control, dialog.HasCover());
  }
}

// The cover takes the manual source, and the user no other.
void LockSource(const Dialog& dialog) {
  dialog.own().BookletCoverSource = kBinManual;
  SelectSourceRow(dialog, CoverSourceRow(kBinManual));
  dialog.Show(kSourceIcon, true);
  dialog.state.sourceCombo.Enable(false);
}

void FreeSource(const Dialog& dialog) {
  if (dialog.HasCover()) {
    dialog.state.sourceCombo.Enable(true);
  }
  SelectSourceRow(dialog, CoverSourceRow(dialog.own().BookletCoverSource));
  dialog.Show(kSourceIcon, false);
}

void ShowSource(const Dialog& dialog) {
  const bool paperFits =
      MediaRules(&dialog.context()).PaperSourceConflict(dialog.shared().dmPaperSize) ==
      MediaRules::kNoConflict;
  if (!paperFits || !CoverTakesAnySource(dialog.own().BookletCoverType)) {
    LockSource(dialog);
  } else if (dialog.state.coverSourceFree) {
    FreeSource(dialog);
  } else {
    dialog.state.sourceCombo.Enable(false);
    dialog.Show(kSourceIcon, true);
  }
  // Without the list there is nothing that could be selected, and the source stands.
  const bool hasList = dialog.state.sourceCombo.window() != nullptr;
  if (hasList && !IsSourceSelected(dialog)) {
    SelectSourceRow(dialog, 0);
    dialog.own().BookletCoverSource = kBinAutomatic;
  }
}

void ShowMedia(const Dialog& dialog) {
  if (dialog.state.coverMediaFree) {
    SelectComboValue(dialog.window, kMediaCombo, dialog.own().BookletCoverType);
    if (dialog.HasCover()) {
      dialog.state.mediaCombo.Enable(true);
    }
  } else {
    dialog.state.mediaCombo.Enable(false);
    dialog.state.mediaCombo.Send(kCbSetCurSel, 0, 0);
  }
  dialog.Show(kMediaIcon, !dialog.state.coverMediaFree);
}

void CoverShow(const Dialog& dialog) {
  SelectComboValue(dialog.window, kBindingCombo, dialog.own().BookletBinding);
  for (const BoxRow& row : kBoxes) {
    (dialog.state.*row.box).SetCheck(dialog.own().*row.field != 0);
  }
  CoverEnable(dialog);
  ShowSource(dialog);
  ShowMedia(dialog);
}

void SetTitle(const Dialog& dialog) {
  char16_t title[kMaxPathUnits] = {};
  if (LoadExistingString(dialog.texts(), kStringBookletSettingsTitle, title)) {
    World().windows.SetWindowTextW(dialog.window, title);
  }
}

void Start(const Dialog& dialog) {
  BookletDialogState& state = dialog.state;
  state.dialog = dialog.window;
  state.snapshot.publicDevmode = *dialog.context().publicPointer;
  state.snapshot.privateDevmode = *dialog.context().privatePointer;
  SetCaptions(dialog.window, dialog.texts(), kCaptions);
  // Nothing is known to be set back here: a booklet's defaults are those of the layout page.
  dialog.Show(kDefaultsButton, false);
  SetTitle(dialog);
  state.bindingCombo.Attach(dialog.window, kBindingCombo);
  state.mediaCombo.Attach(dialog.window, kMediaCombo);
  state.sourceCombo.Attach(dialog.window, kSourceCombo);
  for (const BoxRow& row : kBoxes) {
    (state.*row.box).Attach(dialog.window, row.control);
  }
  state.tooltips = {CreateInfoIcon(dialog.window, kMediaIcon),
                    CreateInfoIcon(dialog.window, kSourceIcon)};
  FillCombo(dialog.window, kBindingCombo, kBindings, kCbErr);
  FillCombo(dialog.window, kMediaCombo, kCoverMedia, kCbErr);
  FillSourceList(dialog.window, kSourceCombo, dialog.context());
  CoverShow(dialog);
}

// ---- Choices ------------------------------------------------------------------------------------

void BindingChange(const Dialog& dialog) {
  SelectedComboValue(dialog.window, kBindingCombo, &dialog.own().BookletBinding);
}

void MediaChange(const Dialog& dialog) {
  std::int16_t media = 0;
  std::int16_t& cover = dialog.own().BookletCoverType;
  if (!SelectedComboValue(dialog.window, kMediaCombo, &media) || media == cover) {
    return;
  }
  if (IsTwoSidedIndex(dialog.own().DuplexIndex) && MediaNeedsOneSide(media)) {
    WarnMediaUnsupported(dialog.window, dialog.texts(), media);
    SelectComboValue(dialog.window, kMediaCombo, cover);
    dialog.state.mediaCombo.Enable(false);
    return;
  }
  cover = media;
  CoverShow(dialog);
}

void SourceChange(const Dialog& dialog) {
  std::int16_t source = 0;
  std::int16_t& cover = dialog.own().BookletCoverSource;
  if (!SelectedComboValue(dialog.window, kSourceCombo, &source) || source == cover) {
    return;
  }
  const bool paperRefuses = PaperRowRefusesSource(dialog.shared().dmPaperSize, source);
  const bool mediaRefuses =
      !paperRefuses &&
      MediaRowRefusesSource(static_cast<std::int32_t>(dialog.shared().dmMediaType), source);
  if (paperRefuses || mediaRefuses) {
    WarnSourceConflict(dialog.window, dialog.texts(), paperRefuses, mediaRefuses);
    SelectSourceRow(dialog, CoverSourceRow(cover));
    return;
  }
  cover = source;
}

// The boxes are automatic: the click has turned this one already.
void BoxClick(const Dialog& dialog, const BoxRow& row) {
  dialog.own().*row.field = (dialog.state.*row.box).IsChecked() ? 1 : 0;
  if (row.control == kPrintCoverCheck) {
    CoverEnable(dialog);
  }
}

// ---- The end ------------------------------------------------------------------------------------

void WriteField(const Dialog& dialog, std::int16_t PrivateDevmode::*field) {
  std::int16_t& record = dialog.context().privatePointer->*field;
  if (record != dialog.own().*field) {
    record = dialog.own().*field;
  }
}

// A dialog that can't be ended may still be cancelled, and then nothing must be written.
void Accept(const Dialog& dialog) {
  if (!World().windows.EndDialog(dialog.window, 1)) {
    return;
  }
  for (const auto field : kChosenFields) {
    WriteField(dialog, field);
  }
  for (const BoxRow& row : kBoxes) {
    WriteField(dialog, row.field);
  }
  dialog.call.result = 1;
}

// ---- Messages -----------------------------------------------------------------------------------

void OnTooltipText(const Dialog& dialog, NotifyTooltipText& notify) {
  auto& text = dialog.state.tooltipText;
  CopyText(text, {});
  switch (ControlOfTooltip(dialog.window, notify.hdr, kIcons)) {
    case kMediaIcon:
      TellCoverMediaReason(dialog.context(), text);
      break;
    case kSourceIcon:
      TellCoverSourceReasons(dialog.context(), dialog.state.snapshot, text);
      break;
    default:
      break;
  }
  notify.lpszText = text.data();
}

void OnButton(const Dialog& dialog, std::int32_t control) {
  for (const BoxRow& row : kBoxes) {
    if (row.control == control) {
      BoxClick(dialog, row);
    }
  }
  switch (control) {
    case kIdOk:
      Accept(dialog);
      break;
    case kIdCancel:
      World().windows.EndDialog(dialog.window, 0);
      break;
    case kHelpButton:
      ShowPageHelp(dialog.window, kHelpTopic);
      break;
    default:
      break;
  }
}

void OnListChange(const Dialog& dialog, std::int32_t control) {
  switch (control) {
    case kBindingCombo:
      BindingChange(dialog);
      break;
    case kMediaCombo:
      MediaChange(dialog);
      break;
    case kSourceCombo:
      SourceChange(dialog);
      break;
    default:
      break;
  }
}

void OnCommand(const Dialog& dialog, std::uintptr_t wParam) {
  const std::int32_t control = LowWord(wParam);
  if (HighWord(wParam) == kBnClicked) {
    OnButton(dialog, control);
  } else if (HighWord(wParam) == kCbnSelChange) {
    OnListChange(dialog, control);
  }
}

std::intptr_t OnNotify(const Dialog& dialog, std::intptr_t lParam) {
  auto* notify = PointedAt<NotifyHeader>(lParam);
  if (notify == nullptr || notify->code != kTtnGetDispInfo) {
    return 0;
  }
  OnTooltipText(dialog, reinterpret_cast<NotifyTooltipText&>(*notify));
  return 1;
}

std::intptr_t OnMessage(const Dialog& dialog, std::uint32_t message, std::uintptr_t wParam,
                        std::intptr_t lParam) {
  switch (message) {
    case kWmInitDialog:
      Start(dialog);
      return 1;
    case kWmCommand:
      OnCommand(dialog, wParam);
      return 0;
    case kWmNotify:
      return OnNotify(dialog, lParam);
    case kWmHelp:
      return ShowControlHelp(dialog.window, lParam, kHelpPairs) ? 1 : 0;
    case kWmMouseMove:
      UpdateTooltipRects(dialog.window, dialog.state.tooltips, kIcons);
      return 0;
    case kWmDestroy:
      dialog.state.dialog = nullptr;
      dialog.state.tooltips = {};
      return 0;
    default:
      return 0;
  }
}

// The window remembers the call, and beside it the context, which services of all pages ask for.
void RememberCall(WindowHandle window, std::intptr_t lParam) {
  const auto* call = PointedAt<const Call>(lParam);
  World().windows.SetWindowLongPtrW(window, kDwlpUser, lParam);
  World().windows.SetWindowLongPtrW(window, kGwlpUserData,
                                    reinterpret_cast<std::intptr_t>(call->context));
}

std::intptr_t BookletCoverProcedure(WindowHandle window, std::uint32_t message,
                                    std::uintptr_t wParam, std::intptr_t lParam) {
  if (message == kWmInitDialog) {
    RememberCall(window, lParam);
  }
  auto* call = PointedAt<Call>(World().windows.GetWindowLongPtrW(window, kDwlpUser));
  auto* state =
      call == nullptr ? nullptr : GetPageState<BookletDialogState>(PageSlot::kBookletCover);
  if (state != nullptr) {
    return OnMessage({window, *call, *state}, message, wParam, lParam);
  }
  if (message == kWmInitDialog) {
    // A dialog that knows nothing could never be left.
    World().windows.EndDialog(window, 0);
  }
  return 0;
}

}  // namespace

bool ShowBookletCoverDialog(WindowHandle page, UIContext& context) {
  Call call = {.result = 0, .context = &context};
  const std::intptr_t ended = World().windows.DialogBoxParamW(
      context.languageModule, kBookletCoverDialog, page, &Guarded<BookletCoverProcedure>,
      reinterpret_cast<std::intptr_t>(&call));
  return ended == 1 && call.result == 1;
}

}  // namespace ostrel
