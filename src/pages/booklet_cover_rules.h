// The rules of a booklet's cover, apart from its dialog: what goes with what, and why something is
// locked.
#pragma once

#include "core/settings_record.h"
#include "core/ui_context.h"

#include <cstdint>
#include <span>

namespace ostrel {

// Whether a cover of this media type may come from any source. All the others are fed by hand.
bool CoverTakesAnySource(std::int16_t coverType);

// The row that the source list has for a cover's source; the first for one that the list doesn't
// know. Bin 260 is such a one here, unlike on the paper page.
std::int32_t CoverSourceRow(std::int16_t source);

// Whether a record's index of two-sided printing tells that it is on.
constexpr bool IsTwoSidedIndex(std::int16_t duplexIndex) {
  return duplexIndex == 2 || duplexIndex == 3;
}

// Whether a paper or a media type has a row that refuses a source. One without a row refuses none,
// the user's own papers among them.
bool PaperRowRefusesSource(std::int32_t paper, std::int32_t source);
bool MediaRowRefusesSource(std::int32_t media, std::int32_t source);

// Why the cover's media type is locked, and why its source is; both for an empty buffer.
void TellCoverMediaReason(const UIContext& context, std::span<char16_t> buffer);
void TellCoverSourceReasons(const UIContext& context, const DriverDevmode& snapshot,
                            std::span<char16_t> buffer);

}  // namespace ostrel
