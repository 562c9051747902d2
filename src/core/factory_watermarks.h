// The watermarks that come with the driver, as full records. A process copies them and gives the
// copies their names in the user's language, once: records made later start from these copies.
#pragma once

#include "core/settings_record.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ostrel {

// Places in the array. The last record stands for a new image watermark; nothing uses it.
inline constexpr std::size_t kNoWatermark = 0;   // what every settings record starts with
inline constexpr std::size_t kNewWatermark = 4;  // what a new text watermark starts with
inline constexpr std::size_t kFactoryWatermarks = 6;

// How many of them a new collection starts with, and how many are translated.
inline constexpr std::size_t kStoredFactoryWatermarks = 4;
inline constexpr std::size_t kTranslatedFactoryWatermarks = 5;

// The words that a language library replaces by its own.
inline constexpr std::u16string_view kUntranslatedNone = u"[No Watermark]";
inline constexpr std::u16string_view kUntranslatedNew = u"<New>";

using FactoryWatermarks = std::array<WatermarkData, kFactoryWatermarks>;

inline constexpr std::int16_t kWatermarkCentre = 5;   // PageWMPosition
inline constexpr std::int16_t kWatermarkMidway = 50;  // WMOffsetX, WMOffsetY; percent

namespace factory {

// What differs from record to record.
struct Row {
  std::int16_t index;
  std::int16_t flag;
  std::u16string_view name;
  std::u16string_view text;
  std::u16string_view typeface;
  std::int16_t size;
  std::int16_t transparent;
  std::int16_t angle;
  std::int16_t scale;
  std::int16_t stamp;  // the date and the time are added to the text
  std::int16_t fontChosen;
  std::int16_t offset;  // both ways
};

// clang-format off
inline constexpr std::array<Row, kFactoryWatermarks> kRows = {{
    // Index, flag, name,           text,             typeface, size, transparent, angle, scale, stamp, font chosen, offset
    {0, 0, kUntranslatedNone, u"",              u"Arial",  54, 0,  0, 100, 0, 0, kWatermarkMidway},
    {1, 1, u"Confidential",   u"Confidential",  u"Arial", 114, 1, 45,   0, 0, 1, kWatermarkMidway},
    {2, 1, u"Watermark",      u"Watermark",     u"Arial", 114, 1, 45,   0, 0, 1, kWatermarkMidway},
    {3, 1, u"DateAndTime",    u"",              u"Arial",  54, 1,  0,   0, 1, 1, kWatermarkMidway},
    {4, 1, kUntranslatedNew,  kUntranslatedNew, u"Arial",  72, 1,  0,   0, 0, 1, kWatermarkMidway},
    {3, 2, kUntranslatedNew,  u"",              u"",       72, 0,  0, 100, 0, 0, 0},
}};
// clang-format on

constexpr WatermarkData Make(const Row& row) {
  WatermarkData record = {};
  record.PageWMIndex = row.index;
  record.PageWMFlag = row.flag;
  std::ranges::copy(row.name, record.PageWMName);
  std::ranges::copy(row.text, record.PageWMText);
  std::ranges::copy(row.typeface, record.PageWMTypeface);
  record.PageWMSize = row.size;
  record.PageWMTransparent = row.transparent;
  record.PageWMAngle = row.angle;
  record.PageWMScale = row.scale;
  record.PageWMPosition = kWatermarkCentre;
  record.WMFontChosen = row.fontChosen;
  record.WMOffsetX = row.offset;
  record.WMOffsetY = row.offset;
  record.WMGrayLevel = 1;
  record.WMStampOn = row.stamp;
  record.WMStampDate = row.stamp;
  record.WMStampTime = row.stamp;
  return record;
}

}  // namespace factory

inline constexpr FactoryWatermarks kFactoryWatermarkRecords = [] {
  FactoryWatermarks records = {};
  std::ranges::transform(factory::kRows, records.begin(), factory::Make);
  return records;
}();

// Gives a field of such a record its text in the user's language, cut at `mostCharacters` (32 at
// most), while it still holds the untranslated word: a later language in the same process keeps the
// first one's text. Without a text in the library the word stays, until a library has it.
void TranslateFactoryText(std::span<char16_t> field, std::u16string_view untranslated,
                          ModuleHandle module, std::uint32_t stringId, std::size_t mostCharacters);

}  // namespace ostrel
