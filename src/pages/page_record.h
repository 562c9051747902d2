// What pages ask of the record behind them, and how they write single words of it.
#pragma once

#include "core/ui_context.h"

#include <cstdint>

namespace ostrel {

// MultipleUp by the code that stands for a poster in the place of a number of pages.
inline constexpr std::int16_t kMultipleUpPoster = 22;

inline constexpr std::int32_t kFullScale = 100;  // ScaleRadio, percent

// dmOrientation.
inline constexpr std::int16_t kPortrait = 1;
inline constexpr std::int16_t kLandscape = 2;

// A word of the private part by its key; `fallback` stands for a key that can't be read.
std::int16_t Setting(const UIContext& context, const char* key, std::int16_t fallback);
void SetSetting(UIContext& context, const char* key, std::int16_t value);

// The print scale in percent, which takes two words; kFullScale when it can't be read.
std::int32_t ScalePercent(const UIContext& context);
void SetScalePercent(UIContext& context, std::int32_t percent);

// A public word through its repairing getter; 1 when it can't be read.
std::int16_t RepairedField(UIContext& context, DevmodeField field);

// dmDuplex as it is stored: other pages leave values in it that the getter would repair.
std::int16_t& StoredDuplex(UIContext& context);

bool IsBooklet(const UIContext& context);
bool IsReverse(const UIContext& context);
// Whether the pages of a sheet are a poster's.
bool IsPosterPages(const UIContext& context);

// What kind of watermark the record has, 0 for none. Without a readable record there is none.
std::int16_t WatermarkKind(const UIContext& context);

// Whether the rest of the record leaves the job mode free.
bool AllowsJobMode(const UIContext& context);

// Whether the media, or the paper, in force can't be printed two-sided at all.
bool MediaLocksDuplex(UIContext& context);
bool PaperLocksDuplex(const UIContext& context);

// Whether the paper has a row that refuses this kind of two-sided printing, 2 or 3. A paper without
// a row, the user's own sizes among them, refuses none.
bool PaperRowRefuses(const UIContext& context, std::int16_t duplex);

}  // namespace ostrel
