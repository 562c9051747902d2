// The paper page: what the user chooses from its lists, and what source and feed make of it.
#include "core/process_state.h"
#include "pages/chosen_paper.h"
#include "pages/page_links.h"
#include "pages/paper_page.h"
#include "pages/source_list.h"
#include "pages/warning_boxes.h"

namespace ostrel::paper {

// ---- The source ---------------------------------------------------------------------------------

namespace {

std::int32_t ListedSourceCount(const PaperPage& page) {
  return static_cast<std::int32_t>(AskList(page.state.sourceCombo, kCbGetCount));
}

std::int16_t ShownBin(const PaperPage& page) {
  return BinOfPosition(static_cast<std::int32_t>(AskList(page.state.sourceCombo, kCbGetCurSel)));
}

}  // namespace

void SelectSource(const PaperPage& page, std::int32_t position) {
  SelectPlace(page.state.sourceCombo, position < ListedSourceCount(page) ? position : kCbErr);
}

void StoreBin(const PaperPage& page, std::int16_t bin) {
  SetSetting(page.context, "SourceTray", bin);
  SetDevmodeField(&page.context, kDmDefaultSource, bin);
}

void LockSource(const PaperPage& page, SourceLock lock) {
  if (lock == SourceLock::kKeep) {
    return;
  }
  page.state.sourceAllowed = lock != SourceLock::kLocked;
  page.state.sourceCombo.Enable(page.state.sourceAllowed);
  page.Show(kSourceIcon, lock != SourceLock::kLive);
}

bool PaperTakesRecordsSource(const PaperPage& page, std::int32_t paper) {
  return page.rules().PaperSourceConflict(paper) == MediaRules::kNoConflict;
}

bool HasSourceChoice(const PaperPage& page, std::int32_t paper) {
  return page.rules().PaperSourceCount(paper) >= 2;
}

void FollowMedia(const PaperPage& page, const SourceRules& rules, std::int32_t paper,
                 std::int32_t media, std::int16_t source) {
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

// ---- The feed -----------------------------------------------------------------------------------

void FeedRule(const PaperPage& page) {
  const bool choice = page.record().dmPaperSize == kPaperWithFeedChoice;
  const bool shortEdge =
      !choice || Setting(page.context, "FeedOrient", kFeedOrientShort) == kFeedOrientShort;
  SetSetting(page.context, "FeedOrient", shortEdge ? kFeedOrientShort : kFeedOrientLong);
  page.state.feedGroup.Select(shortEdge ? kFeedShort : kFeedLong);
  page.state.feedGroup.Enable(choice);
  page.Show(kFeedIcon, !choice);
}

// ---- Another paper ------------------------------------------------------------------------------

namespace {

// The source that goes with the new paper, before the media type has its say.
void FollowPaper(const PaperPage& page, std::int16_t paper) {
  if (!PaperTakesRecordsSource(page, paper)) {
    const std::int32_t media = page.media();
    if (media == kMediaTransparency || media == kMediaLetterhead) {
      SetDevmodeField(&page.context, kDmMediaType, kMediaPlain);
      SelectPlace(page.state.mediaCombo, 0);
    }
    SelectSource(page, kManualPosition);
  }
  LockSource(page, HasSourceChoice(page, paper) ? SourceLock::kLive : SourceLock::kLocked);
}

}  // namespace

void PaperChange(const PaperPage& page) {
  std::int16_t paper = 0;
  if (!page.Selected(page.state.paperCombo, &paper) || paper == page.record().dmPaperSize ||
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

namespace {

bool RefusesWhileTwoSided(const PaperPage& page, std::int32_t media) {
  const std::int16_t duplex = StoredDuplex(page.context);
  return (duplex == kDuplexLongEdge || duplex == kDuplexShortEdge) && MediaNeedsOneSide(media);
}

// What another media type leaves of two-sided printing.
void FollowMediaDuplex(const PaperPage& page, std::int32_t media) {
  if (media != kMediaPlain) {
    StoredDuplex(page.context) = kDuplexOneSided;
    TellPages(&PageLinks::mediaChanged, false);
  } else if (!PaperLocksDuplex(page.context)) {
    TellPages(&PageLinks::mediaChanged, true);
  }
}

bool PaperRefusesMedia(const PaperPage& page, std::int32_t media) {
  return FamilyHasOptionalTrays() && (media == kMediaLetterhead || media == kMediaTransparency) &&
         IsEnvelopePaper(page.record().dmPaperSize);
}

}  // namespace

void MediaChange(const PaperPage& page) {
  std::int16_t media = 0;
  if (!page.Selected(page.state.mediaCombo, &media) || media == page.media() ||
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

// The list shows dmDefaultSource, which a refusal selects again; a choice is one when it differs
// from SourceTray. The two may differ.
void SourceChange(const PaperPage& page) {
  const std::int16_t bin = ShownBin(page);
  if (bin == Setting(page.context, "SourceTray", 0)) {
    return;
  }
  NameUntitled(page.window);
  const bool paperRefuses = !PaperTakesSource(page.record().dmPaperSize, bin);
  const bool mediaRefuses = !MediaTakesSource(page.media(), bin);
  if (!paperRefuses && !mediaRefuses) {
    StoreBin(page, bin);
  } else {
    WarnSourceConflict(page.window, page.texts(), paperRefuses, mediaRefuses);
    SelectSource(page, PositionOfBin(page.record().dmDefaultSource));
  }
  page.Changed();
}

void FeedChange(const PaperPage& page, std::int16_t value) {
  if (Setting(page.context, "FeedOrient", kFeedOrientShort) == value) {
    return;
  }
  NameUntitled(page.window);
  SetSetting(page.context, "FeedOrient", value);
  page.state.feedGroup.Select(value == kFeedOrientShort ? kFeedShort : kFeedLong);
  page.Changed();
}

}  // namespace ostrel::paper
