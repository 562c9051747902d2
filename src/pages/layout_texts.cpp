#include "pages/layout_texts.h"

#include "core/string_ids.h"
#include "pages/media_rules.h"
#include "pages/page_record.h"
#include "pages/reasons.h"

namespace ostrel {
namespace {

constexpr std::int16_t kOldLongEdge = 5;  // long edge as old records have it

bool MediaRefusesShortEdge(UIContext& context) {
  const FeedRow* row = FindMediaRules(RepairedField(context, kDmMediaType));
  return row != nullptr && row->duplex[kDuplexShortEdge - kDuplexOneSided] == 0;
}

bool PaperRefusesShortEdge(const UIContext& context) {
  return MediaRules(&context).PaperDuplexConflict(context.publicPointer->dmPaperSize,
                                                  kDuplexShortEdge) != MediaRules::kNoConflict;
}

// By the bare number: a poster's code counts, and so does the one above it.
bool IsMoreThanOnePage(const UIContext& context) {
  return Setting(context, "MultipleUp", 1) > 1;
}

}  // namespace

void TellScaleReasons(UIContext& context, std::span<char16_t> buffer) {
  Reasons reasons(context, buffer);
  reasons.AddIf(IsMoreThanOnePage(context) || Setting(context, "PosterPrint", 0) != 0,
                kStringScaleLockedByPages);
  reasons.AddIf(IsBooklet(context), kStringScaleLockedByBooklet);
}

void TellBookletReasons(UIContext& context, std::span<char16_t> buffer) {
  const std::int16_t duplex = StoredDuplex(context);
  Reasons reasons(context, buffer);
  reasons.AddIf(duplex == kDuplexLongEdge || duplex == kOldLongEdge, kStringBookletNeedsShortEdge);
  reasons.AddIf(MediaRefusesShortEdge(context), kStringBookletNeedsPlainPaper);
  reasons.AddIf(PaperRefusesShortEdge(context), kStringBookletNeedsTwoSidedPaper);
  reasons.AddIf(IsReverse(context), kStringBookletNeedsNormalOrder);
  reasons.AddIf(ScalePercent(context) != kFullScale, kStringBookletNeedsFullScale);
  reasons.AddIf(IsMoreThanOnePage(context), kStringBookletNeedsOnePage);
}

void TellPosterReason(UIContext& context, std::span<char16_t> buffer) {
  Reasons(context, buffer).AddIf(IsBooklet(context), kStringBookletExcludesPoster);
}

}  // namespace ostrel
