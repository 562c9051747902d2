#include "pages/booklet_cover_rules.h"

#include "core/string_ids.h"
#include "pages/media_rules.h"
#include "pages/reasons.h"
#include "pages/source_list.h"

#include <algorithm>
#include <iterator>

namespace ostrel {
namespace {

constexpr std::int16_t kMediaThin = 264;

// A card that has a tray of its own beside the manual feed, and so is no envelope.
constexpr std::int16_t kPaperTwoSources = 241;

// clang-format off
struct SourceRow {
  std::int16_t source;
  std::int32_t row;
};
constexpr SourceRow kSourceRows[] = {
    // Source,       Row
    {kBinManual,    1},
    {kBinAutomatic, 0},
    {kBinTray1,     2},
    {kBinTray2,     3},
    {kBinTray3,     4},
};
// clang-format on

}  // namespace

bool CoverTakesAnySource(std::int16_t coverType) {
  return coverType == kMediaPlain || coverType == kMediaThin;
}

std::int32_t CoverSourceRow(std::int16_t source) {
  const auto* found = std::ranges::find(kSourceRows, source, &SourceRow::source);
  return found == std::end(kSourceRows) ? 0 : found->row;
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
  reasons.AddIf(IsEnvelopePaper(paper) || (plain && paper == kPaperTwoSources),
                kStringPaperLocksSource);
}

}  // namespace ostrel
