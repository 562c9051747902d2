#include "pages/paper.h"

#include "config/setting_stores.h"
#include "core/paper_tables.h"
#include "core/process_state.h"
#include "core/sheet_frame.h"
#include "core/string_ids.h"
#include "pages/chosen_paper.h"
#include "pages/custom_paper.h"
#include "pages/envelope_program.h"
#include "pages/info_icon.h"
#include "pages/media_rules.h"
#include "pages/owner_draw.h"
#include "pages/page_links.h"
#include "pages/page_record.h"
#include "pages/page_support.h"
#include "pages/paper_list.h"
#include "pages/paper_rules.h"
#include "pages/paper_texts.h"
#include "pages/source_list.h"
#include "pages/warning_boxes.h"

#include <iterator>
#include <tuple>

namespace ostrel {
namespace {

// ---- Controls -----------------------------------------------------------------------------------

enum Control : std::int32_t {
  kMediaCombo = 1009,
  kDefaultsButton = 1064,
  kFeedLong = 1125,
  kFeedShort = 1240,
  kFeedLongPicture = 1315,
  kFeedShortPicture = 1318,
  kPaperPicture = 1387,
  kSourceCombo = 1393,
  kPaperCombo = 1404,
  kCustomButton = 1407,
  kMediaIcon = 1446,
  kFeedIcon = 1449,
  kSourceIcon = 1450,
};

constexpr std::int32_t kIcons[] = {kMediaIcon, kSourceIcon, kFeedIcon};
static_assert(std::size(kIcons) == std::tuple_size_v<decltype(PaperPageState::tooltips)>);

// clang-format off
constexpr CaptionRow kCaptions[] = {
    // Control, String
    {1401, kStringPaperGroup},
    {1400, kStringPaperSizeLabel},
    {1028, kStringMediaTypeLabel},
    {1407, kStringCustomSizes},
    {1402, kStringFeedGroup},
    {1403, kStringPaperSourceLabel},
    {1030, kStringFeedOrientation},
    {1240, kStringFeedShortEdge},
    {1125, kStringFeedLongEdge},
    {1064, kStringDefaults},
};

constexpr std::uint32_t kHelpTopic = 512;
constexpr HelpPair kHelpPairs[] = {
    // Control, Topic
    {1404, 1157}, {1009, 1157}, {1407, 1157},
    {1393, 1158}, {1240, 1158}, {1125, 1158},
    {1064, 2002},
};

struct PictureRow {
  std::int32_t control;
  std::uint32_t bitmapId;
};
constexpr PictureRow kPictures[] = {
    // Control,          Bitmap
    {kFeedShortPicture, 1079},
    {kFeedLongPicture,  1080},
    {kPaperPicture,      901},
};
// clang-format on

constexpr std::uint32_t kPictureGround = 15660020;  // 0x00BBGGRR; counts as transparent

constexpr std::int16_t kFeedOrientShort = 1;
constexpr std::int16_t kFeedOrientLong = 2;

// ---- The page -----------------------------------------------------------------------------------

// One message's view of the page.
struct Page {
  WindowHandle window;
  UIContext& context;
  PaperPageState& state;

  ModuleHandle texts() const { return context.languageModule; }
  PublicDevmode& record() const { return *context.publicPointer; }
  std::int32_t media() const { return RepairedField(context, kDmMediaType); }
  MediaRules rules() const { return MediaRules(&context); }
  void Show(std::int32_t control, bool shown) const { ShowControl(window, control, shown); }
  // The sheet has something to apply.
  void Changed() const { SetSheetChanged(window); }
  std::intptr_t Ask(std::int32_t control, std::uint32_t message) const {
    return World().windows.SendMessageW(World().windows.GetDlgItem(window, control), message, 0, 0);
  }
  void Select(std::int32_t control, std::int32_t position) const {
    World().windows.SendMessageW(World().windows.GetDlgItem(window, control), kCbSetCurSel,
                                 static_cast<std::uintptr_t>(std::intptr_t{position}), 0);
  }
  void ShowPaper() const { SelectComboValue(window, kPaperCombo, record().dmPaperSize); }
  void ShowMedia() const {
    SelectComboValue(window, kMediaCombo, static_cast<std::int16_t>(media()));
  }
};

bool HasFamilyWithTrays() {
  return (Process().ModelFlags & kFamiliesWithOptionalTrays) != 0;
}

// ---- The source ---------------------------------------------------------------------------------

std::int32_t ListedSourceCount(const Page& page) {
  return static_cast<std::int32_t>(page.Ask(kSourceCombo, kCbGetCount));
}

// A place behind the list's end selects nothing. Some window systems would keep what was selected.
void SelectSource(const Page& page, std::int32_t position) {
  page.Select(kSourceCombo, position < ListedSourceCount(page) ? position : kCbErr);
}

void StoreBin(const Page& page, std::int16_t bin) {
  SetSetting(page.context, "SourceTray", bin);
  SetDevmodeField(&page.context, kDmDefaultSource, bin);
}

std::int16_t ShownBin(const Page& page) {
  return BinOfPosition(static_cast<std::int32_t>(page.Ask(kSourceCombo, kCbGetCurSel)));
}

void LockSource(const Page& page, SourceLock lock) {
  if (lock == SourceLock::kKeep) {
    return;
  }
  page.state.sourceAllowed = lock != SourceLock::kLocked;
  page.state.sourceCombo.Enable(page.state.sourceAllowed);
  page.Show(kSourceIcon, lock != SourceLock::kLive);
}

bool PaperTakesRecordsSource(const Page& page, std::int32_t paper) {
  return page.rules().PaperSourceConflict(paper) == MediaRules::kNoConflict;
}

bool HasSourceChoice(const Page& page, std::int32_t paper) {
  return page.rules().PaperSourceCount(paper) >= 2;
}

void FollowMedia(const Page& page, const SourceRules& rules, std::int32_t paper, std::int32_t media,
                 std::int16_t source) {
  const SourceOutcome outcome =
      ApplySourceRules(rules, {.media = media,
                               .family = Process().ModelFlags,
                               .source = source,
                               .sourceAllowed = page.state.sourceAllowed,
                               .paperTakesSource = PaperTakesRecordsSource(page, paper),
                               .paperSources = page.rules().PaperSourceCount(paper),
                               .listedSources = ListedSourceCount(page)});
  if (outcome.position) {
    SelectSource(page, *outcome.position);
    if (outcome.storeNow) {
      StoreBin(page, BinOfPosition(*outcome.position));
    }
  }
  LockSource(page, outcome.lock);
}

// ---- Showing the record -------------------------------------------------------------------------

// A paper that can't be printed as two-sided as the record asks for gives way to the one that was
// chosen last.
void RefreshPaper(const Page& page) {
  PublicDevmode& record = page.record();
  const bool refused = page.rules().PaperDuplexConflict(record.dmPaperSize, record.dmDuplex) !=
                       MediaRules::kNoConflict;
  if (refused) {
    const std::int16_t last = Process().LastPaperId;
    record.dmPaperSize = last > 0 ? last : PaperOfLocale().id;
  }
  page.ShowPaper();
  if (refused) {
    WarnPaperNoDuplex(page.window, page.texts());
  }
  // A list that couldn't be filled tells nothing about the paper.
  if (page.Ask(kPaperCombo, kCbGetCurSel) < 0 && page.Ask(kPaperCombo, kCbGetCount) > 0) {
    record.dmPaperSize = PaperOfLocale().id;
    page.ShowPaper();
  }
}

void RefreshSource(const Page& page) {
  PublicDevmode& record = page.record();
  const std::int16_t paper = record.dmPaperSize;
  if (!PaperTakesRecordsSource(page, paper)) {
    SelectSource(page, kManualPosition);
    StoreBin(page, BinOfPosition(kManualPosition));
    LockSource(page, SourceLock::kLocked);
  } else if (HasSourceChoice(page, paper)) {
    SelectSource(page, PositionOfBin(record.dmDefaultSource));
    LockSource(page, SourceLock::kLive);
  } else {
    SelectSource(page, kManualPosition);
    LockSource(page, SourceLock::kLocked);
  }
  FollowMedia(page, kRefreshSourceRules, paper, page.media(), record.dmDefaultSource);
  if (page.Ask(kSourceCombo, kCbGetCurSel) < 0) {
    SelectSource(page, kAutomaticPosition);
    StoreBin(page, kBinAutomatic);
  }
}

void RefreshMedia(const Page& page) {
  page.ShowMedia();
  const bool locked =
      !AskPages(&PageLinks::duplexOff) || StoredDuplex(page.context) != kDuplexOneSided;
  page.state.mediaCombo.Enable(!locked);
  page.Show(kMediaIcon, locked);
}

// One paper alone may choose which edge goes first.
void FeedRule(const Page& page) {
  const bool choice = page.record().dmPaperSize == kPaperWithFeedChoice;
  const bool shortEdge =
      !choice || Setting(page.context, "FeedOrient", kFeedOrientShort) == kFeedOrientShort;
  SetSetting(page.context, "FeedOrient", shortEdge ? kFeedOrientShort : kFeedOrientLong);
  page.state.feedGroup.Select(shortEdge ? kFeedShort : kFeedLong);
  page.state.feedGroup.Enable(choice);
  page.Show(kFeedIcon, !choice);
}

void Refresh(const Page& page) {
  RefreshPaper(page);
  RefreshSource(page);
  RefreshMedia(page);
  FeedRule(page);
}

void AttachControls(const Page& page) {
  PaperPageState& state = page.state;
  const WindowHandle dialog = page.window;
  state.dialog = dialog;
  state.paperCombo.Attach(dialog, kPaperCombo);
  state.mediaCombo.Attach(dialog, kMediaCombo);
  state.sourceCombo.Attach(dialog, kSourceCombo);
  state.feedGroup.Attach(dialog, kFeedShort);
  state.feedShort.Attach(dialog, kFeedShort);
  state.feedLong.Attach(dialog, kFeedLong);
}

// Without the store of the user's papers the page stays empty and takes nothing.
void Start(const Page& page) {
  page.state.dialog = nullptr;
  SetCaptions(page.window, page.texts(), kCaptions);
  if (!CustomPaperStore().Init()) {
    WarnPaperStore(page.window);
    return;
  }
  page.context.activePage = kPaperPage;
  AttachControls(page);
  FillPaperList(page.window, kPaperCombo, page.context);
  FillMediaList(page.window, kMediaCombo);
  FillSourceList(page.window, kSourceCombo, page.context);
  page.state.tooltips = {CreateInfoIcon(page.window, kMediaIcon),
                         CreateInfoIcon(page.window, kSourceIcon),
                         CreateInfoIcon(page.window, kFeedIcon)};
  Refresh(page);
}

// ---- Another paper ------------------------------------------------------------------------------

// The source that goes with the new paper, before the media type has its say.
void FollowPaper(const Page& page, std::int16_t paper) {
  if (!PaperTakesRecordsSource(page, paper)) {
    const std::int32_t media = page.media();
    if (media == kMediaTransparency || media == kMediaLetterhead) {
      SetDevmodeField(&page.context, kDmMediaType, kMediaPlain);
      page.Select(kMediaCombo, 0);
    }
    SelectSource(page, kManualPosition);
  }
  LockSource(page, HasSourceChoice(page, paper) ? SourceLock::kLive : SourceLock::kLocked);
}

void PaperChange(const Page& page) {
  std::int16_t paper = 0;
  if (!SelectedComboValue(page.window, kPaperCombo, &paper) || paper == page.record().dmPaperSize ||
      !NameUntitled(page.window)) {
    return;
  }
  const MediaRules rules = page.rules();
  if (rules.PaperDuplexConflict(paper, StoredDuplex(page.context)) != MediaRules::kNoConflict) {
    WarnPaperNoDuplex(page.window, page.texts());
    page.ShowPaper();
    return;
  }
  const bool oneSided = rules.PaperDuplexConflict(paper, kDuplexLongEdge) > 0;
  if (oneSided) {
    StoredDuplex(page.context) = kDuplexOneSided;
  }
  TellPages(&PageLinks::mediaChanged, !oneSided);
  FollowPaper(page, paper);
  FollowMedia(page, kPaperSourceRules, paper, page.media(), page.record().dmDefaultSource);
  StoreBin(page, ShownBin(page));
  ChoosePaper(page.context, paper);
  Process().LastPaperId = paper;
  FeedRule(page);
  page.Changed();
}

// ---- Another media type -------------------------------------------------------------------------

bool RefusesWhileTwoSided(const Page& page, std::int32_t media) {
  const std::int16_t duplex = StoredDuplex(page.context);
  return (duplex == kDuplexLongEdge || duplex == kDuplexShortEdge) && MediaNeedsOneSide(media);
}

// What another media type leaves of two-sided printing.
void FollowMediaDuplex(const Page& page, std::int32_t media) {
  if (media != kMediaPlain) {
    StoredDuplex(page.context) = kDuplexOneSided;
    TellPages(&PageLinks::mediaChanged, false);
  } else if (!PaperLocksDuplex(page.context)) {
    TellPages(&PageLinks::mediaChanged, true);
  }
}

bool PaperRefusesMedia(const Page& page, std::int32_t media) {
  return HasFamilyWithTrays() && (media == kMediaLetterhead || media == kMediaTransparency) &&
         IsEnvelopePaper(page.record().dmPaperSize);
}

void MediaChange(const Page& page) {
  std::int16_t media = 0;
  if (!SelectedComboValue(page.window, kMediaCombo, &media) || media == page.media() ||
      !NameUntitled(page.window)) {
    return;
  }
  page.Changed();
  if (RefusesWhileTwoSided(page, media)) {
    WarnMediaUnsupported(page.window, page.texts(), media);
    page.ShowMedia();
    page.state.mediaCombo.Enable(false);
    page.Show(kMediaIcon, true);
    return;
  }
  FollowMediaDuplex(page, media);
  if (PaperRefusesMedia(page, media)) {
    WarnMedia(page.window, page.texts());
    page.ShowMedia();
    return;
  }
  FollowMedia(page, kMediaSourceRules, page.record().dmPaperSize, media,
              Setting(page.context, "SourceTray", 0));
  StoreBin(page, ShownBin(page));
  SetDevmodeField(&page.context, kDmMediaType, media);
  page.Changed();
}

// ---- Source and feed ----------------------------------------------------------------------------

void SourceChange(const Page& page) {
  const std::int16_t bin = ShownBin(page);
  const std::int16_t before = Setting(page.context, "SourceTray", 0);
  if (bin == before) {
    return;
  }
  NameUntitled(page.window);
  const bool paperRefuses = !PaperTakesSource(page.record().dmPaperSize, bin);
  const bool mediaRefuses = !MediaTakesSource(page.media(), bin);
  if (!paperRefuses && !mediaRefuses) {
    StoreBin(page, bin);
  } else {
    WarnSourceConflict(page.window, page.texts(), paperRefuses, mediaRefuses);
    SelectSource(page, PositionOfBin(before));
  }
  page.Changed();
}

void FeedChange(const Page& page, std::int16_t value) {
  if (Setting(page.context, "FeedOrient", kFeedOrientShort) == value) {
    return;
  }
  NameUntitled(page.window);
  SetSetting(page.context, "FeedOrient", value);
  page.state.feedGroup.Select(value == kFeedOrientShort ? kFeedShort : kFeedLong);
  page.Changed();
}

// ---- Buttons ------------------------------------------------------------------------------------

// Result: whether anything was another than by default.
bool ResetRecord(const Page& page) {
  UIContext& context = page.context;
  const std::int16_t paper = PaperOfLocale().id;
  if (Setting(context, "SourceTray", 0) == 0 && page.media() == kMediaPlain &&
      Setting(context, "FeedOrient", kFeedOrientShort) == kFeedOrientShort &&
      page.record().dmPaperSize == paper) {
    return false;
  }
  SetSetting(context, "SourceTray", 0);
  SetDevmodeField(&context, kDmMediaType, kMediaPlain);
  SetSetting(context, "FeedOrient", kFeedOrientShort);
  SetDevmodeField(&context, kDmPaperSize, paper);
  return true;
}

// The sheet is told with each list.
void ShowDefaults(const Page& page) {
  page.Select(kMediaCombo, 0);
  page.Changed();
  page.Select(kPaperCombo, IsA4Locale() ? 1 : 0);
  SetSetting(page.context, "PageSize", PaperOfLocale().id);  // for records that have such a word
  page.Changed();
  SelectSource(page, kAutomaticPosition);
  LockSource(page, SourceLock::kLive);
  page.Show(kMediaIcon, false);
  StoreBin(page, kBinAutomatic);
  page.Changed();
  FeedRule(page);
  TellPages(&PageLinks::mediaChanged, true);
}

// The favourite's name stays: the settings of other pages are still its own.
void DefaultsClick(const Page& page) {
  if (ResetRecord(page)) {
    ShowDefaults(page);
  }
  World().windows.SetFocus(World().windows.GetDlgItem(page.window, kDefaultsButton));
}

// What is saved or deleted there stays so, however the dialog is left.
void CustomClick(const Page& page) {
  ShowCustomPaperDialog(page.window, page.context);
  FillPaperList(page.window, kPaperCombo, page.context);
  Refresh(page);
  page.Changed();
}

// ---- Messages -----------------------------------------------------------------------------------

void OnButton(const Page& page, std::int32_t control) {
  switch (control) {
    case kFeedShort:
      FeedChange(page, kFeedOrientShort);
      break;
    case kFeedLong:
      FeedChange(page, kFeedOrientLong);
      break;
    case kCustomButton:
      CustomClick(page);
      break;
    case kDefaultsButton:
      DefaultsClick(page);
      break;
    default:
      break;
  }
}

void OnSelection(const Page& page, std::int32_t control) {
  switch (control) {
    case kPaperCombo:
      PaperChange(page);
      break;
    case kMediaCombo:
      MediaChange(page);
      break;
    case kSourceCombo:
      SourceChange(page);
      break;
    default:
      break;
  }
}

// A page without its store takes no commands.
void OnCommand(const Page& page, std::uintptr_t wParam) {
  if (page.state.dialog == nullptr) {
    return;
  }
  if (HighWord(wParam) == kCbnSelChange) {
    OnSelection(page, LowWord(wParam));
  } else if (HighWord(wParam) == kBnClicked) {
    OnButton(page, LowWord(wParam));
  }
}

void OnTooltipText(const Page& page, NotifyTooltipText& notify) {
  const std::span<char16_t> text = page.state.tooltipText;
  text.front() = u'\0';
  switch (ControlOfTooltip(page.window, notify.hdr, kIcons)) {
    case kMediaIcon:
      // The short edge's radio decides, as odd as that is: the tip stays away while A5 is fed by
      // its long edge.
      if (page.state.feedShort.IsChecked()) {
        TellMediaReason(page.context, text);
      }
      break;
    case kSourceIcon:
      TellSourceReasons(page.context, text);
      break;
    case kFeedIcon:
      TellFeedReason(page.context, text);
      break;
    default:
      break;
  }
  notify.lpszText = text.data();
}

void RefreshTools(const Page& page) {
  const auto* tooltip = page.state.tooltips.begin();
  for (const std::int32_t icon : kIcons) {
    UpdateTooltipRect(page.window, *tooltip++, icon);
  }
}

bool OnDrawItem(const Page& page, const DrawItem& item) {
  for (const PictureRow& picture : kPictures) {
    if (item.CtlID == static_cast<std::uint32_t>(picture.control)) {
      DrawCentredBitmap(item, page.context.bitmapModule, picture.bitmapId, kPictureGround);
      return true;
    }
  }
  return false;
}

bool OnApply(const Page& page) {
  const bool applied = ApplySettings(page.window, &page.context);
  StartEnvelopeProgram(page.context);
  return applied;
}

void OnSetActive(const Page& page) {
  if (page.context.activePage == kPaperPage) {
    return;
  }
  if (page.state.dialog != nullptr) {
    Refresh(page);
  }
  page.context.activePage = kPaperPage;
}

// NOLINTBEGIN(performance-no-int-to-ptr): messages carry pointers as numbers.

std::intptr_t OnNotify(const Page& page, std::intptr_t lParam) {
  auto& notify = *reinterpret_cast<NotifyHeader*>(lParam);
  switch (notify.code) {
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
      return OnApply(page) ? 1 : 0;
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
        EnableControl(page.window, kDefaultsButton, false);
      }
      return 0;
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

PaperPageState::PaperPageState() {
  feedGroup.AddChild(&feedShort);
  feedGroup.AddChild(&feedLong);
}

std::intptr_t PaperPageProcedure(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                                 std::intptr_t lParam) {
  if (message == kWmInitDialog) {
    RememberContext(page, lParam);
  }
  UIContext* context = PageContext(page);
  if (context == nullptr) {
    return 0;
  }
  auto* state = GetPageState<PaperPageState>(PageSlot::kPaper);
  return state == nullptr ? 0 : OnMessage({page, *context, *state}, message, wParam, lParam);
}

void RefreshPaperPage(UIContext& context) {
  if (PageStatePlace(PageSlot::kPaper) == nullptr) {
    return;
  }
  auto& state = *GetPageState<PaperPageState>(PageSlot::kPaper);
  if (state.dialog != nullptr) {
    Refresh({state.dialog, context, state});
  }
}

}  // namespace ostrel
