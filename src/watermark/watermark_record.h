// Watermark records: the one in force in a settings record, and the user's collection of them in
// the settings file.
//
// The collection is found by name. A record's name lies inside it too; where a file from elsewhere
// has the two differ, a record is deleted and put back under the name that it is stored under. A
// stored value of another size than a record's is no record: its place in a list stays zero, and
// what is stored there is left alone.
//
// Each operation reads the file anew, and those that write rewrite it whole. One that fails leaves
// the collection as it was wherever the file can still be written.
#pragma once

#include "config/setting_stores.h"
#include "core/factory_watermarks.h"
#include "core/heap_block.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ostrel {

struct UIContext;

// The record in force; the process's record of no watermark stands for one that can't be read.
WatermarkData WatermarkInForce(const UIContext& context);

// Gives the process's factory records their words in the context's language, unless an earlier
// language has done so. Stored records keep their names.
void LocaliseDefaults(const UIContext& context);

// ---- The collection -----------------------------------------------------------------------------

// The collection as it was read, in the order of the file.
struct WatermarkList {
  HeapBlock<WatermarkData> block;  // `count` records; null when there are none
  std::size_t count = 0;
  NameList names = {};                       // under which they are stored
  std::bitset<NameList::kRows> isPresent{};  // those that are no record have a place of zeros

  std::span<const WatermarkData> records() const { return {block.get(), count}; }
  const char16_t* storedName(std::size_t place) const { return names.rows[place].data(); }
};

// Reads the collection, making the file first if need be. One without any name gets the four
// factory records, from "no watermark" to the date and time. Without memory the list is empty.
WatermarkList ReadWatermarkList();

// Saves a record under its name. Result: false when the name is too long or can't be saved.
bool AddWatermark(const WatermarkData& record);

// Saves a record in the place of the first one with the same id, or as a new one when there is
// none. Result: false when it couldn't be saved; the one before is then put back.
bool ReplaceWatermark(const WatermarkData& record);

// ---- Order --------------------------------------------------------------------------------------

// Places of a list, as many as it has, by rising id. Of equal ids the earlier one comes first.
struct WatermarkOrder {
  std::array<std::size_t, NameList::kRows> places = {};
  std::size_t count = 0;

  std::span<const std::size_t> all() const { return std::span(places).first(count); }
};
WatermarkOrder SortByIndex(const WatermarkList& list);

// Writes the collection in this order, if it isn't stored so.
void KeepInOrder(const WatermarkList& list, const WatermarkOrder& order);

// ---- Names --------------------------------------------------------------------------------------

using WatermarkName = std::array<char16_t, kMostWatermarkNameCharacters + 1>;

// The record that an editor works on.
struct WatermarkEdit {
  bool isNew;
  std::int16_t index;
};

// The name for a watermark of the wanted text, cut to 32 characters. A new one gets the first of
// "text", "text~1" to "text~31" that no stored one bears; the last if all are taken. An existing
// one keeps the name of the stored one with the same id and text. Case counts.
WatermarkName UniqueName(const WatermarkEdit& edit, std::u16string_view wanted);

}  // namespace ostrel
