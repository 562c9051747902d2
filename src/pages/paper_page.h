// What the files of the paper page share of one another. The page itself stands in paper.h.
#pragma once

#include "core/ui_context.h"
#include "pages/controls.h"
#include "pages/media_rules.h"
#include "pages/page_record.h"
#include "pages/page_support.h"
#include "pages/paper.h"
#include "pages/paper_rules.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel::paper {

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

inline constexpr std::int16_t kFeedOrientShort = 1;
inline constexpr std::int16_t kFeedOrientLong = 2;

// ---- The page -----------------------------------------------------------------------------------

inline std::intptr_t AskList(const DlgControl& list, std::uint32_t message) {
  return World().windows.SendMessageW(list.window(), message, 0, 0);
}
inline void SelectPlace(const DlgControl& list, std::int32_t position) {
  World().windows.SendMessageW(list.window(), kCbSetCurSel,
                               static_cast<std::uintptr_t>(std::intptr_t{position}), 0);
}

// One message's view of the page.
struct PaperPage {
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
  // The value of the row that is selected. Result: false when none is.
  bool Selected(const DlgControl& list, std::int16_t* value) const {
    return SelectedComboValue(window, list.id(), value);
  }
  void ShowPaper() const { SelectComboValue(window, state.paperCombo.id(), record().dmPaperSize); }
  void ShowMedia() const {
    SelectComboValue(window, state.mediaCombo.id(), static_cast<std::int16_t>(media()));
  }
};

// ---- The source ---------------------------------------------------------------------------------

// A place behind the list's end selects nothing. Some window systems would keep what was selected.
void SelectSource(const PaperPage& page, std::int32_t position);
// Makes the list live or locks it, and shows or hides its icon.
void LockSource(const PaperPage& page, SourceLock lock);
// Writes both of the record's words.
void StoreBin(const PaperPage& page, std::int16_t bin);

bool PaperTakesRecordsSource(const PaperPage& page, std::int32_t paper);
bool HasSourceChoice(const PaperPage& page, std::int32_t paper);

// What a table of rules makes of the source, with a paper and a media type and the source that it
// starts from.
void FollowMedia(const PaperPage& page, const SourceRules& rules, std::int32_t paper,
                 std::int32_t media, std::int16_t source);

// ---- The feed -----------------------------------------------------------------------------------

// One paper alone may choose which edge goes first.
void FeedRule(const PaperPage& page);

// ---- What the user chooses ----------------------------------------------------------------------

void PaperChange(const PaperPage& page);
void MediaChange(const PaperPage& page);
void SourceChange(const PaperPage& page);
// A click on the radio of a feed.
void FeedChange(const PaperPage& page, std::int16_t value);

}  // namespace ostrel::paper
