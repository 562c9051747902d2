#include "pages/booklet_cover_rules.h"

#include "core/string_ids.h"
#include "pages/media_rules.h"
#include "pages/reasons.h"
#include "pages/source_list.h"

namespace ostrel {
namespace {

// The card that locks the source of a plain cover alone; it counts as no envelope.
constexpr std::int16_t kPaperLockedWhenPlain = 241;

}  // namespace

bool CoverTakesAnySource(std::int16_t coverType) {
  return coverType == kMediaPlain || coverType == kMediaThin;
}

std::int32_t CoverSourceRow(std::int16_t source) {
  return source == kBinLikeTray1 ? kAutomaticPosition : PositionOfBin(source);
}

bool PaperRowRefusesSource(std::int32_t paper, std::int32_t source) {
  return FindPaperRules(paper) != nullptr && !PaperTakesSource(paper, source);
}

bool MediaRowRefusesSource(std::int32_t media, std::int32_t source) {
  return FindMediaRules(media) != nullptr && !MediaTakesSource(media, source);
}

void TellCoverMediaReason(const UIContext& context, std::span<char16_t> buffer) {
  Reasons(context, buffer).Add(kStringTwoSidedLocksMedia);
}

void TellCoverSourceReasons(const UIContext& context, const DriverDevmode& snapshot,
                            std::span<char16_t> buffer) {
  const bool plain = snapshot.privateDevmode.BookletCoverType == kMediaPlain;
  const std::int16_t paper = snapshot.publicDevmode.dmPaperSize;
  Reasons reasons(context, buffer);
  reasons.AddIf(!plain, kStringMediaRefusesSource);
  reasons.AddIf(IsEnvelopePaper(paper) || (plain && paper == kPaperLockedWhenPlain),
                kStringPaperLocksSource);
}

}  // namespace ostrel
