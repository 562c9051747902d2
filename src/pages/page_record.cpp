#include "pages/page_record.h"

#include "pages/media_rules.h"
#include "watermark/watermark_record.h"

namespace ostrel {

std::int16_t Setting(const UIContext& context, const char* key, std::int16_t fallback) {
  std::int16_t value = fallback;
  return GetUIParam(&context, key, &value, sizeof(value)) == kResultOk ? value : fallback;
}

void SetSetting(UIContext& context, const char* key, std::int16_t value) {
  SetUIParam(&context, key, &value, sizeof(value));
}

std::int32_t ScalePercent(const UIContext& context) {
  std::int32_t percent = kFullScale;
  return GetUIParam(&context, "ScaleRadio", &percent, sizeof(percent)) == kResultOk ? percent
                                                                                    : kFullScale;
}

void SetScalePercent(UIContext& context, std::int32_t percent) {
  SetUIParam(&context, "ScaleRadio", &percent, sizeof(percent));
}

bool IsBooklet(const UIContext& context) {
  return Setting(context, "BookletPrint", 0) != 0;
}

bool IsReverse(const UIContext& context) {
  return Setting(context, "ReversePrint", 0) != 0;
}

bool IsPosterPages(const UIContext& context) {
  return Setting(context, "MultipleUp", 1) == kMultipleUpPoster;
}

std::int16_t RepairedField(UIContext& context, DevmodeField field) {
  std::int16_t value = 1;
  return GetDevmodeField(&context, field, &value) == kResultOk ? value : std::int16_t{1};
}

std::int16_t& StoredDuplex(UIContext& context) {
  return context.publicPointer->dmDuplex;
}

std::int16_t WatermarkKind(const UIContext& context) {
  return WatermarkInForce(context).PageWMFlag;
}

bool AllowsJobMode(const UIContext& context) {
  return !IsPosterPages(context) && !IsBooklet(context) && WatermarkKind(context) < 1;
}

bool MediaLocksDuplex(UIContext& context) {
  return MediaRefusesDuplex(RepairedField(context, kDmMediaType));
}

bool PaperLocksDuplex(const UIContext& context) {
  return MediaRules(&context).PaperDuplexConflict(context.publicPointer->dmPaperSize,
                                                  kDuplexLongEdge) != MediaRules::kNoConflict;
}

bool PaperRowRefuses(const UIContext& context, std::int16_t duplex) {
  const FeedRow* row = FindPaperRules(context.publicPointer->dmPaperSize);
  return row != nullptr && row->duplex[duplex - kDuplexSimplex] == 0;
}

}  // namespace ostrel
