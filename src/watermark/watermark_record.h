// Watermark records: the one in force in a settings record, and the user's collection of them in
// the settings file.
//
// The collection is found by name. A record's name lies inside it too; where a file from elsewhere
// has the two differ, a record is deleted and put back under the name that it is stored under. A
// stored value of another size than a record's, or under a name that the store can't ask for, is no
// record: its place in a list stays zero, and what is stored there is left alone. Of two values of
// the same name only the first can be reached, and only that one has a place.
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
  bool isWhole = true;                       // the file holds no more names than a list
  NameList names = {};                       // under which they are stored
  std::bitset<NameList::kRows> isPresent{};  // those that are no record have a place of zeros

  std::span<const WatermarkData> records() const { return {block.get(), count}; }
  const char16_t* storedName(std::size_t place) const { return names.rows[place].data(); }
};

// The place of the first record that `matches`; the list's count when none does.
template <typename Matches>
std::size_t FindRecord(const WatermarkList& list, Matches matches) {
  std::size_t place = 0;
  while (place < list.count && !(list.isPresent[place] && matches(list.records()[place]))) {
    ++place;
  }
  return place;
}

// A record's name as a terminated text, with all units of a field that is full to its end.
using TerminatedName = std::array<char16_t, std::size(WatermarkData{}.PageWMName) + 1>;
TerminatedName NameOf(const WatermarkData& record);

// Reads the collection, and writes only where it finds none: then the file is made, and gets the
// four factory records, from "no watermark" to the date and time. Without memory the list is empty.
WatermarkList ReadWatermarkList();

// Saves a record under its name. Result: false when the name is too long or can't be saved.
bool AddWatermark(const WatermarkData& record);

// Saves a record in the place of the first one with the same id, or as a new one when there is
// none. Result: false when the collection can't be read, when the one before can't be deleted, or
// when the new one couldn't be saved; the one before is then put back.
bool ReplaceWatermark(const WatermarkData& record);

// ---- Order --------------------------------------------------------------------------------------

// Places of a list, as many as it has: those that are no record, then the records by rising id. A
// rewrite leaves the former where they are, which is in front of all that it writes. Of equal ids
// the earlier one comes first. A list that isn't whole keeps its order: what is stored behind it
// would come in front.
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
//
// Names of 32 characters that differ in the last one alone are different names, but are stored in
// the same place: no other form of a text that long would have a place of its own.
WatermarkName UniqueName(const WatermarkEdit& edit, std::u16string_view wanted);

}  // namespace ostrel
