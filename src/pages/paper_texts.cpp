#include "pages/paper_texts.h"

#include "pages/media_rules.h"
#include "pages/page_record.h"
#include "pages/paper_rules.h"
#include "pages/reasons.h"
#include "pages/source_list.h"

namespace ostrel {
namespace {

// The families differ in what they feed from their trays. Media 6 is in no list; its name says
// nothing here either.
bool MediaNeedsItsSource(std::int32_t media) {
  constexpr std::int32_t kMediaWithoutName = 6;
  if (media == kMediaPlain || media == kMediaThin) {
    return false;
  }
  return !FamilyHasOptionalTrays() || (media != kMediaThick && media != kMediaWithoutName);
}

}  // namespace

void TellMediaReason(const UIContext& context, std::span<char16_t> buffer) {
  Reasons(context, buffer)
      .Add(Setting(context, "BookletPrint", 0) == 1 ? kStringBookletLocksMedia
                                                    : kStringTwoSidedLocksMedia);
}

void TellSourceReasons(UIContext& context, std::span<char16_t> buffer) {
  Reasons reasons(context, buffer);
  reasons.AddIf(IsEnvelopePaper(context.publicPointer->dmPaperSize), kStringPaperLocksSource);
  reasons.AddIf(MediaNeedsItsSource(RepairedField(context, kDmMediaType)),
                kStringMediaRefusesSource);
}

void TellFeedReason(const UIContext& context, std::span<char16_t> buffer) {
  Reasons(context, buffer)
      .AddIf(context.publicPointer->dmPaperSize != kPaperWithFeedChoice,
             kStringFeedOrientationLocked);
}

}  // namespace ostrel
