#include "pages/paper_rules.h"

#include <algorithm>

namespace ostrel {
namespace {

// The last row is for whatever no other row is for.
constexpr bool EndsWithTheRest(const SourceRules& rules) {
  const SourceRule& last = rules.back();
  return last.media == kAnyMedia && last.families == kAllFamilies &&
         last.when == SourceWhen::kAlways;
}
static_assert(EndsWithTheRest(kRefreshSourceRules) && EndsWithTheRest(kPaperSourceRules) &&
              EndsWithTheRest(kMediaSourceRules));

bool Concerns(const SourceRule& rule, const SourceFacts& facts) {
  return (rule.media == kAnyMedia || rule.media == facts.media) &&
         (rule.families == kAllFamilies || (rule.families & facts.family) != 0);
}

bool Holds(SourceWhen when, const SourceFacts& facts) {
  constexpr std::int32_t kChoice = 2;
  switch (when) {
    case SourceWhen::kSourceAllowed:
      return facts.sourceAllowed;
    case SourceWhen::kPaperFeeds:
      return facts.paperTakesSource && facts.paperSources >= kChoice;
    default:
      return true;
  }
}

std::optional<std::int32_t> PositionOf(SourcePlace place, std::int16_t source) {
  const bool ontoTray1 = source == kBinManual || source == kBinAutomatic;
  switch (place) {
    case SourcePlace::kRecord:
      return PositionOfBin(source);
    case SourcePlace::kManual:
      return kManualPosition;
    case SourcePlace::kTray1:
      return kTray1Position;
    case SourcePlace::kOntoTray1:
      return ontoTray1 ? std::optional(kTray1Position) : std::nullopt;
    case SourcePlace::kOntoTray1Or0:
      return ontoTray1 || source == 0 ? std::optional(kTray1Position) : std::nullopt;
    default:
      return std::nullopt;
  }
}

SourceLock LockOf(SourceLock lock, const SourceFacts& facts) {
  if (lock == SourceLock::kByTraysIfFed && !facts.paperTakesSource) {
    return SourceLock::kKeep;
  }
  if (lock == SourceLock::kByTrays || lock == SourceLock::kByTraysIfFed) {
    return facts.listedSources < kSourcesForLetterhead ? SourceLock::kLocked : SourceLock::kLive;
  }
  return lock;
}

}  // namespace

SourceOutcome ApplySourceRules(const SourceRules& rules, const SourceFacts& facts) {
  const SourceRule& rule = *std::ranges::find_if(
      rules, [&facts](const SourceRule& candidate) { return Concerns(candidate, facts); });
  if (!Holds(rule.when, facts)) {
    return {};
  }
  const std::optional<std::int32_t> position = PositionOf(rule.place, facts.source);
  return {.position = position,
          .storeNow = rule.store == SourceStore::kNow && position.has_value(),
          .lock = LockOf(rule.lock, facts)};
}

}  // namespace ostrel
