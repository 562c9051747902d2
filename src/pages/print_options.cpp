#include "pages/print_options.h"

#include "config/setting_stores.h"
#include "core/heap_block.h"
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
#include "pages/page_support.h"
#include "pages/print_options_pictures.h"
#include "pages/print_options_texts.h"
#include "pages/warning_boxes.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace ostrel {
namespace {

// ---- Controls -----------------------------------------------------------------------------------

enum Control : std::int32_t {
  kCollateCheck = 1008,
  kCopiesLabel = 1018,
  kCopiesEdit = 1019,
  kCopiesSpin = 1020,
  kDefaultsButton = 1064,
  kDuplexLong = 1125,
  kCollationPicture = 1176,
  kDuplexOff = 1240,
  kDuplexShort = 1241,
  kResolution600Radio = 1242,
  kResolution1200Radio = 1243,
  kJobModeCombo = 1393,
  kReverseCheck = 1394,
  kManualDuplexLabel = 1414,
  kFinessCheck = 1422,
  kDuplexIcon = 1447,
  kReverseIcon = 1448,
  kCollateIcon = 1449,
  kJobModeIcon = 1450,
  kDuplexPicture = 1453,
  kJobModeLabel = 1483,
  kJobFlagCheck = 1496,
  kJobFlagGroup = 1497,
};

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

// ---- The page -----------------------------------------------------------------------------------

// One message's view of the page.
struct Page {
  WindowHandle window;
  UIContext& context;
  PrintOptionsPageState& state;

  ModuleHandle texts() const { return context.languageModule; }
  WindowHandle Item(std::int32_t control) const {
    return World().windows.GetDlgItem(window, control);
  }
  void Show(std::int32_t control, bool shown) const { ShowControl(window, control, shown); }
  bool IsChecked(std::int32_t control) const {
    return World().windows.IsDlgButtonChecked(window, control) != kBstUnchecked;
  }
  void Redraw(std::int32_t control) const { World().windows.InvalidateRect(Item(control)); }
  // The settings no longer are those of a favourite, and the sheet has something to apply.
  void Changed() const {
    Untitled();
    SetSheetChanged(window);
  }
  void Untitled() const { MarkUntitled(window, UntitledRule::kWhenDifferent); }
};

// Before anything is shown: settings that can't stand together are brought into order. The list of
// papers isn't the one of the two-sided table: 245 is in it, although that table refuses it.
void Normalise(UIContext& context) {
  constexpr std::int16_t kBookletPapers[] = {9, 1, 5, 14, 243, 245};
  const std::int16_t duplex = RepairedField(context, kDmDuplex);
  if (duplex != kDuplexShortEdge) {
    SetSetting(context, "BookletPrint", 0);
  }
  if (duplex != kDuplexSimplex) {
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
    SetDevmodeField(&context, kDmDuplex, kDuplexSimplex);
  }
}

// ---- Pictures -----------------------------------------------------------------------------------

// Puts a picture into the control, or none, and deletes the one that was there.
void ShowPicture(const Page& page, GdiObject picture) {
  World().windows.SendMessageW(page.Item(kDuplexPicture), kStmSetImage, kImageBitmap,
                               reinterpret_cast<std::intptr_t>(picture));
  if (page.state.duplexPicture != nullptr) {
    World().graphics.DeleteObject(page.state.duplexPicture);
  }
  page.state.duplexPicture = picture;
}

void DuplexPicture(const Page& page) {
  const std::uint32_t id = DuplexPictureId(page.context);
  if (id == 0 || page.Item(kDuplexPicture) == nullptr) {
    return;
  }
  if (const GdiObject picture = World().graphics.LoadBitmapW(page.context.bitmapModule, id);
      picture != nullptr) {
    ShowPicture(page, picture);
  }
}

bool OnDrawItem(const Page& page, const DrawItem& item) {
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

void DuplexRule(const Page& page) {
  UIContext& context = page.context;
  const bool allowed = !MediaLocksDuplex(context) && !PaperLocksDuplex(context) &&
                       Setting(context, "PosterPrint", 0) == 0 && !IsBooklet(context) &&
                       !IsReverse(context);
  TellPages(&PageLinks::duplexAllowed, allowed);
  page.state.duplexGroup.Enable(allowed);
  page.Show(kDuplexIcon, !allowed);
}

bool IsFactoryFavorite(const Page& page) {
  char16_t factory[std::size(PrivateDevmode{}.FavoriteName)] = {};
  return LoadExistingString(page.texts(), kStringDefaultFavoriteName, factory) &&
         FieldText(factory) == FieldText(page.context.privatePointer->FavoriteName);
}

// The factory favourite locks nothing; what else is in force may lock again.
void UnlockAll(const Page& page) {
  page.state.duplexGroup.Enable(true);
  for (const std::int32_t icon : {kDuplexIcon, kReverseIcon, kCollateIcon, kJobModeIcon}) {
    page.Show(icon, false);
  }
  page.state.jobModeCombo.Enable(true);
  TellPages(&PageLinks::jobModeAllowed, true);
}

void ShowCopies(const Page& page) {
  std::int16_t& copies = page.context.publicPointer->dmCopies;
  copies = std::max<std::int16_t>(copies, 1);
  page.state.copiesEdit.SetValue(copies);
}

void ShowCollate(const Page& page) {
  const bool booklet = IsBooklet(page.context);
  page.state.collateCheck.SetCheck(booklet || page.context.publicPointer->dmCollate == 1);
  page.state.collateCheck.Enable(!booklet);
  page.Show(kCollateIcon, booklet);
}

void ShowJobMode(const Page& page) {
  SelectComboValue(page.window, kJobModeCombo, page.context.privatePointer->JobMode);
  const bool allowed = AllowsJobMode(page.context);
  page.state.jobModeCombo.Enable(allowed);
  page.Show(kJobModeIcon, !allowed);
}

void ShowDuplex(const Page& page) {
  const std::int16_t duplex = StoredDuplex(page.context);
  const bool longEdge = duplex == kDuplexLongEdge || duplex == 5;
  const bool shortEdge = duplex == kDuplexShortEdge || duplex == 4;
  page.state.duplexGroup.Select(longEdge ? kDuplexLong : shortEdge ? kDuplexShort : kDuplexOff);
  TellPages(&PageLinks::duplexOff, !longEdge && !shortEdge);
}

void ShowReverseLock(const Page& page, bool locked) {
  page.state.reverseCheck.Enable(!locked);
  page.Show(kReverseIcon, locked);
}

void Refresh(const Page& page) {
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

void AttachControls(const Page& page) {
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
void SetOwnText(const Page& page) {
  char16_t text[kMaxPathUnits] = {};
  if (LoadExistingString(page.texts(), kStringCopiesLabel, text)) {
    World().windows.SetWindowTextW(page.window, text);
  }
}

void Start(const Page& page) {
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

// ---- Copies -------------------------------------------------------------------------------------

void StoreCopies(const Page& page, std::int32_t copies) {
  page.context.publicPointer->dmCopies = static_cast<std::int16_t>(copies);
}

std::int32_t ShownCopies(const Page& page) {
  std::int32_t copies = 0;
  return page.state.copiesEdit.GetValue(&copies) == kTextStands ? copies : 0;
}

// The box is left: what it shows becomes the number of copies.
void CopiesEntered(const Page& page) {
  const std::int32_t copies = std::clamp<std::int32_t>(ShownCopies(page), 1, kMaxCopies);
  page.state.copiesEdit.SetValue(copies);
  if (copies == page.context.publicPointer->dmCopies) {
    return;
  }
  World().windows.SendMessageW(
      page.Item(kCopiesSpin), kUdmSetPos, 0,
      static_cast<std::intptr_t>(MakeWords(static_cast<std::uint16_t>(copies), 0)));
  StoreCopies(page, copies);
  SetSheetChanged(page.window);
  // Also while a booklet is printed, which the next refresh locks again.
  page.state.collateCheck.Enable(true);
  page.Changed();
}

void CopiesStep(const Page& page, const NotifyUpDown& notify) {
  if (page.state.copiesSpin.Step(notify.iDelta < 0)) {
    page.Untitled();
    StoreCopies(page, ShownCopies(page));
    SetSheetChanged(page.window);
  }
}

void ShowCopiesEmpty(const Page& page) {
  char16_t text[kMaxPathUnits] = {};
  LoadUiString(page.texts(), kStringCopiesEmpty, text);
  ShowExclamation(page.window, page.texts(), text, kStringBoxTitle);
}

// The page is left. Result: the dialog procedure's answer.
std::intptr_t CopiesLeave(const Page& page) {
  constexpr std::intptr_t kStay = -1;
  char text[256] = {};
  const std::int16_t stored = page.context.publicPointer->dmCopies;
  if (World().windows.GetDlgItemTextA(page.window, kCopiesEdit, text, sizeof(text)) == 0) {
    page.state.copiesEdit.SetValue(stored);
    ShowCopiesEmpty(page);
    World().windows.SetWindowLongPtrW(page.window, kDwlpMessageResult, kStay);
    return kStay;
  }
  bool translated = false;
  auto copies = static_cast<std::int32_t>(
      World().windows.GetDlgItemInt(page.window, kCopiesEdit, &translated, true));
  if (!translated) {
    copies = static_cast<std::int32_t>(std::clamp(std::strtol(text, nullptr, 10), -1L, 1000L));
  }
  if (copies < 1 || copies > kMaxCopies) {
    // The page may be left all the same: the dialog's result stays 0.
    page.state.copiesEdit.SetValue(stored);
    return kStay;
  }
  if (copies != stored) {
    StoreCopies(page, copies);
    page.state.copiesEdit.SetValue(copies);
    page.Changed();
  }
  return 0;
}

// ---- Clicks -------------------------------------------------------------------------------------

// The box follows the word only when both agree before the click. Result: whether anything changed.
bool ToggleCheck(const Page& page, RadioButton& check, std::int32_t control, std::int16_t& word) {
  const bool checked = page.IsChecked(control);
  if ((word == 1) != checked) {
    return false;
  }
  check.SetCheck(!checked);
  word = checked ? 0 : 1;
  page.Changed();
  return true;
}

void CollateClick(const Page& page) {
  if (ToggleCheck(page, page.state.collateCheck, kCollateCheck,
                  page.context.publicPointer->dmCollate)) {
    page.Redraw(kCollationPicture);
  }
}

void ReverseClick(const Page& page) {
  const bool checked = page.IsChecked(kReverseCheck);
  const std::int16_t turned = checked ? 0 : 1;
  if (Setting(page.context, "ReversePrint", 0) == turned) {
    return;
  }
  if (!checked) {
    page.state.reverseCheck.Select(kReverseCheck);
  }
  SetSetting(page.context, "ReversePrint", turned);
  if (checked) {
    Refresh(page);
  } else {
    page.state.duplexGroup.Enable(false);
    page.Show(kDuplexIcon, true);
  }
  page.Changed();
  page.Redraw(kCollationPicture);
}

void ResolutionClick(const Page& page, std::int32_t control) {
  const bool fine = control == kResolution1200Radio;
  const std::int16_t dotsPerInch = fine ? kResolution1200 : kResolution600;
  page.context.publicPointer->dmPrintQuality = dotsPerInch;
  page.context.publicPointer->dmYResolution = dotsPerInch;
  SetSetting(page.context, "PrintMode", fine ? 1 : 0);
  if (!page.IsChecked(control)) {
    page.state.resolutionGroup.Select(control);
    page.Changed();
  }
}

void OneSidedClick(const Page& page) {
  if (StoredDuplex(page.context) == kDuplexSimplex) {
    return;
  }
  page.state.duplexGroup.Select(kDuplexOff);
  StoredDuplex(page.context) = kDuplexSimplex;
  page.Changed();
  TellPages(&PageLinks::duplexOff, true);
  ShowReverseLock(page, false);
  DuplexPicture(page);
}

// Two-sided printing was asked for and can't be had.
void BackToOneSided(const Page& page) {
  page.state.duplexGroup.Select(kDuplexOff);
  StoredDuplex(page.context) = kDuplexSimplex;
  page.Changed();
  // The focus goes along: the window system clicks a radio button that gets the focus while it
  // isn't checked, and would ask for the same again whenever the user comes back to the sheet.
  if (const WindowHandle radio = page.Item(kDuplexOff); World().windows.IsWindowEnabled(radio)) {
    World().windows.SetFocus(radio);
  }
}

void TwoSidedClick(const Page& page, std::int32_t control, std::int16_t target) {
  UIContext& context = page.context;
  // While a box is open the focus comes and goes, and brings clicks that nobody made.
  if (StoredDuplex(context) == target || page.state.refusing) {
    return;
  }
  if (PaperRowRefuses(context, target)) {
    page.state.refusing = true;
    WarnPaperNoDuplex(page.window, page.texts());
    BackToOneSided(page);
    page.state.refusing = false;
    return;
  }
  SetDevmodeField(&context, kDmMediaType, kMediaPlain);
  TellPages(&PageLinks::duplexOff, false);
  page.Untitled();
  if (IsPosterPages(context)) {
    page.state.refusing = true;
    WarnPosterDuplex(page.window, page.texts());
    BackToOneSided(page);  // the media stays plain
    page.state.refusing = false;
    return;
  }
  ShowReverseLock(page, true);
  page.state.duplexGroup.Select(control);
  StoredDuplex(context) = target;
  page.Untitled();
  DuplexPicture(page);
  SetSheetChanged(page.window);
}

// ---- The job mode -------------------------------------------------------------------------------

void JobModeChange(const Page& page) {
  std::int16_t& mode = page.context.privatePointer->JobMode;
  const std::int16_t before = mode;
  std::int16_t chosen = 0;
  if (SelectedComboValue(page.window, kJobModeCombo, &chosen) && chosen != mode) {
    mode = chosen;
    NameUntitled(page.window);
  }
  const bool isOther = mode != before;
  const bool allowed = AllowsJobMode(page.context);
  TellPages(&PageLinks::jobModeAllowed, allowed);
  if (!allowed) {
    mode = 0;
  }
  if (isOther || mode != before) {
    SetSheetChanged(page.window);
  }
  // By its place in the list, which is its value.
  World().windows.SendMessageW(page.Item(kJobModeCombo), kCbSetCurSel,
                               static_cast<std::uintptr_t>(mode), 0);
  Refresh(page);
}

// ---- Defaults -----------------------------------------------------------------------------------

// Reads the factory favourite into `scratch`. Where it was never stored, the driver's own defaults
// stand for it: it is they that are stored under that name. Result: whether there is a record.
bool ReadFactoryFavorite(const char16_t* name, UIContext& scratch) {
  const FavoriteStore store;
  return (store.Init() && store.Read(name, &scratch)) ||
         InitDriverDevmode(&scratch.devmode, scratch.driverName, nullptr);
}

void TakeOverDefaults(UIContext& context, const DriverDevmode& defaults) {
  PublicDevmode& record = *context.publicPointer;
  const PublicDevmode& from = defaults.publicDevmode;
  record.dmCopies = from.dmCopies;
  record.dmDuplex = from.dmDuplex;
  context.privatePointer->Duplex = from.dmDuplex;
  record.dmCollate = from.dmCollate;
  record.dmPrintQuality = from.dmPrintQuality;
  context.privatePointer->FinessMode = defaults.privateDevmode.FinessMode;
  context.privatePointer->ReversePrint = defaults.privateDevmode.ReversePrint;
}

// Result: whether there was a record to take over.
bool TakeOverFactoryFavorite(UIContext& context, const char16_t* name) {
  const HeapBlock<UIContext> scratch(sizeof(UIContext));
  if (!scratch) {
    return false;
  }
  *scratch = context;
  scratch->publicPointer = &scratch->devmode.publicDevmode;
  scratch->privatePointer = &scratch->devmode.privateDevmode;
  if (!ReadFactoryFavorite(name, *scratch)) {
    return false;
  }
  TakeOverDefaults(context, scratch->devmode);
  return true;
}

void BackToDefaults(const Page& page) {
  PrivateDevmode& settings = *page.context.privatePointer;
  char16_t name[std::size(PrivateDevmode{}.FavoriteName)] = {};
  const bool named = LoadExistingString(page.texts(), kStringDefaultFavorite, name);
  // Only settings that are the favourite's take its name, and only a name that there is.
  if (TakeOverFactoryFavorite(page.context, name) && named) {
    CopyText(settings.FavoriteName, FieldText(name));
  } else {
    page.Untitled();
  }
  settings.JobMode = 0;
  settings.JobFlag = 0;
  settings.PrintMode = 0;
  settings.sLaserTestAPResolution = 0;
  Refresh(page);
  page.Redraw(kCollationPicture);
  SetSheetChanged(page.window);
}

void DefaultsClick(const Page& page) {
  if (IsBooklet(page.context)) {
    WarnBookletCollate(page.window, page.texts());
  } else {
    BackToDefaults(page);
  }
  World().windows.SetFocus(page.Item(kDefaultsButton));
}

// ---- Tooltips -----------------------------------------------------------------------------------

constexpr std::int32_t kIcons[] = {kDuplexIcon, kReverseIcon, kCollateIcon, kJobModeIcon};

void OnTooltipText(const Page& page, NotifyTooltipText& notify) {
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

// The icon of the job mode is left out: its tool keeps the place that it was made with.
void RefreshTools(const Page& page) {
  for (std::size_t icon = 0; icon < page.state.tooltips.size(); ++icon) {
    UpdateTooltipRect(page.window, page.state.tooltips[icon], kIcons[icon]);
  }
}

// The private message of old callers.
void LegacyWarning(const Page& page, std::uintptr_t code) {
  char16_t text[kMaxPathUnits] = {};
  if (TellLegacyWarning(page.context, code, text)) {
    ShowExclamation(page.window, page.texts(), text, kStringBoxTitle);
  }
}

// ---- Messages -----------------------------------------------------------------------------------

void OnButton(const Page& page, std::int32_t control) {
  switch (control) {
    case kCollateCheck:
      CollateClick(page);
      break;
    case kJobFlagCheck:
      ToggleCheck(page, page.state.jobFlagCheck, control, page.context.privatePointer->JobFlag);
      break;
    case kFinessCheck:
      ToggleCheck(page, page.state.finessCheck, control, page.context.privatePointer->FinessMode);
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

void OnCommand(const Page& page, std::uintptr_t wParam) {
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

void OnSetActive(const Page& page) {
  if (page.context.activePage != kPrintOptionsPage) {
    page.context.activePage = kPrintOptionsPage;
    Refresh(page);
  }
}

// NOLINTBEGIN(performance-no-int-to-ptr): messages carry pointers as numbers.

std::intptr_t OnNotify(const Page& page, std::intptr_t lParam) {
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
    case kPsnHelp:
      ShowPageHelp(page.window, kHelpTopic);
      return 1;
    case kPsnReset:
      ForgetApply(&page.context);
      return 1;
    case kPsnApply:
      return ApplySettings(page.window, &page.context) ? 1 : 0;
    case kPsnKillActive:
      return CopiesLeave(page);
    case kPsnSetActive:
      OnSetActive(page);
      return 1;
    default:
      return 0;
  }
}

std::intptr_t OnMessage(const Page& page, std::uint32_t message, std::uintptr_t wParam,
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
      RefreshTools(page);
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
    return lParam != 0 && OnMeasureItem(*reinterpret_cast<MeasureItem*>(lParam)) ? 1 : 0;
  }
  if (message == kWmInitDialog) {
    RememberContext(page, lParam);
  }
  UIContext* context = PageContext(page);
  if (context == nullptr) {
    return 0;
  }
  auto* state = GetPageState<PrintOptionsPageState>(PageSlot::kPrintOptions);
  return state == nullptr ? 0 : OnMessage({page, *context, *state}, message, wParam, lParam);
}

void RefreshPrintOptionsPage(UIContext& context) {
  const PageState* known = PageStatePlace(PageSlot::kPrintOptions);
  if (known == nullptr) {
    return;
  }
  auto& state = *GetPageState<PrintOptionsPageState>(PageSlot::kPrintOptions);
  if (state.dialog != nullptr) {
    Refresh({state.dialog, context, state});
  }
}

}  // namespace ostrel
