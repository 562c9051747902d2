#include "pages/paper.h"

#include "config/setting_stores.h"
#include "core/paper_tables.h"
#include "core/process_state.h"
#include "core/sheet_frame.h"
#include "core/string_ids.h"
#include "pages/custom_paper.h"
#include "pages/envelope_program.h"
#include "pages/info_icon.h"
#include "pages/owner_draw.h"
#include "pages/page_links.h"
#include "pages/paper_list.h"
#include "pages/paper_page.h"
#include "pages/paper_texts.h"
#include "pages/source_list.h"
#include "pages/warning_boxes.h"

#include <iterator>
#include <tuple>

namespace ostrel {
namespace paper {
namespace {

// ---- Controls -----------------------------------------------------------------------------------

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

// ---- Showing the record -------------------------------------------------------------------------

// A paper that can't be printed as two-sided as the record asks for gives way to the one that was
// chosen last.
void RefreshPaper(const PaperPage& page) {
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
  const DlgControl& list = page.state.paperCombo;
  if (AskList(list, kCbGetCurSel) < 0 && AskList(list, kCbGetCount) > 0) {
    record.dmPaperSize = PaperOfLocale().id;
    page.ShowPaper();
  }
}

void RefreshSource(const PaperPage& page) {
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
  if (AskList(page.state.sourceCombo, kCbGetCurSel) < 0) {
    SelectSource(page, kAutomaticPosition);
    StoreBin(page, kBinAutomatic);
  }
}

void RefreshMedia(const PaperPage& page) {
  page.ShowMedia();
  const bool locked =
      !AskPages(&PageLinks::duplexOff) || StoredDuplex(page.context) != kDuplexOneSided;
  page.state.mediaCombo.Enable(!locked);
  page.Show(kMediaIcon, locked);
}

void Refresh(const PaperPage& page) {
  RefreshPaper(page);
  RefreshSource(page);
  RefreshMedia(page);
  FeedRule(page);
}

void AttachControls(const PaperPage& page) {
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
void Start(const PaperPage& page) {
  page.state.dialog = nullptr;
  SetCaptions(page.window, page.texts(), kCaptions);
  if (!CustomPaperStore().Init()) {
    WarnPaperStore(page.window);
    return;
  }
  page.context.activePage = kPaperPage;
  AttachControls(page);
  FillPaperList(page.window, page.state.paperCombo.id(), page.context);
  FillMediaList(page.window, page.state.mediaCombo.id());
  FillSourceList(page.window, page.state.sourceCombo.id(), page.context);
  page.state.tooltips = {CreateInfoIcon(page.window, kMediaIcon),
                         CreateInfoIcon(page.window, kSourceIcon),
                         CreateInfoIcon(page.window, kFeedIcon)};
  Refresh(page);
}

// ---- Buttons ------------------------------------------------------------------------------------

// Result: whether anything was another than by default.
bool ResetRecord(const PaperPage& page) {
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
void ShowDefaults(const PaperPage& page) {
  SelectPlace(page.state.mediaCombo, 0);
  page.Changed();
  SelectPlace(page.state.paperCombo, IsA4Locale() ? 1 : 0);
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
void DefaultsClick(const PaperPage& page) {
  if (ResetRecord(page)) {
    ShowDefaults(page);
  }
  World().windows.SetFocus(World().windows.GetDlgItem(page.window, kDefaultsButton));
}

// What is saved or deleted there stays so, however the dialog is left.
void CustomClick(const PaperPage& page) {
  ShowCustomPaperDialog(page.window, page.context);
  FillPaperList(page.window, page.state.paperCombo.id(), page.context);
  Refresh(page);
  page.Changed();
}

// ---- Messages -----------------------------------------------------------------------------------

void OnButton(const PaperPage& page, std::int32_t control) {
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

void OnSelection(const PaperPage& page, std::int32_t control) {
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
void OnCommand(const PaperPage& page, std::uintptr_t wParam) {
  if (page.state.dialog == nullptr) {
    return;
  }
  if (HighWord(wParam) == kCbnSelChange) {
    OnSelection(page, LowWord(wParam));
  } else if (HighWord(wParam) == kBnClicked) {
    OnButton(page, LowWord(wParam));
  }
}

void OnTooltipText(const PaperPage& page, NotifyTooltipText& notify) {
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

bool OnDrawItem(const PaperPage& page, const DrawItem& item) {
  for (const PictureRow& picture : kPictures) {
    if (item.CtlID == static_cast<std::uint32_t>(picture.control)) {
      DrawCentredBitmap(item, page.context.bitmapModule, picture.bitmapId, kSheetGround);
      return true;
    }
  }
  return false;
}

bool OnApply(const PaperPage& page) {
  const bool applied = ApplySettings(page.window, &page.context);
  StartEnvelopeProgram(page.context);
  return applied;
}

void OnSetActive(const PaperPage& page) {
  if (page.context.activePage == kPaperPage) {
    return;
  }
  if (page.state.dialog != nullptr) {
    Refresh(page);
  }
  page.context.activePage = kPaperPage;
}

// NOLINTBEGIN(performance-no-int-to-ptr): messages carry pointers as numbers.

std::intptr_t OnNotify(const PaperPage& page, std::intptr_t lParam) {
  auto& notify = *reinterpret_cast<NotifyHeader*>(lParam);
  switch (notify.code) {
    case kTtnGetDispInfo:
      OnTooltipText(page, reinterpret_cast<NotifyTooltipText&>(notify));
      return 1;
    case kPsnApply:
      return OnApply(page) ? 1 : 0;
    case kPsnSetActive:
      OnSetActive(page);
      return 1;
    default:
      return AnswerSheetNotify(page.window, page.context, notify.code, kHelpTopic);
  }
}

std::intptr_t OnMessage(const PaperPage& page, std::uint32_t message, std::uintptr_t wParam,
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
      UpdateTooltipRects(page.window, page.state.tooltips, kIcons);
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
}  // namespace paper

PaperPageState::PaperPageState() {
  feedGroup.AddChild(&feedShort);
  feedGroup.AddChild(&feedLong);
}

std::intptr_t PaperPageProcedure(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                                 std::intptr_t lParam) {
  return AnswerMessage<PaperPageState>(
      PageSlot::kPaper, page, message, lParam, [&](UIContext& context, PaperPageState& state) {
        return paper::OnMessage({page, context, state}, message, wParam, lParam);
      });
}

void RefreshPaperPage(UIContext& context) {
  if (auto* state = LivePageState<PaperPageState>(PageSlot::kPaper); state != nullptr) {
    paper::Refresh({state->dialog, context, *state});
  }
}

}  // namespace ostrel
