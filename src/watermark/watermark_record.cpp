#include "watermark/watermark_record.h"

#include "core/language.h"
#include "core/text.h"
#include "core/ui_context.h"

#include <algorithm>
#include <numeric>

namespace ostrel {
namespace {

constexpr int kMostNumberedNames = 31;

std::span<const std::byte> BytesOf(const WatermarkData& record) {
  return std::as_bytes(std::span(&record, 1));
}

// A terminated copy; a field that is full to its end gives a name that the store refuses.
using RecordName = std::array<char16_t, std::size(WatermarkData{}.PageWMName) + 1>;

RecordName NameOf(const WatermarkData& record) {
  RecordName name;
  CopyText(name, FieldText(record.PageWMName));
  return name;
}

bool IsStored(const char16_t* name) {
  WatermarkData stored;
  return WatermarkStore().Read(name, std::as_writable_bytes(std::span(&stored, 1)));
}

void StoreFactoryRecords() {
  for (const WatermarkData& record :
       std::span(Process().DefaultWatermarks).first(kStoredFactoryWatermarks)) {
    AddWatermark(record);
  }
}

// Whether a watermark, or a value that is no record, has a name already. Under which it is stored
// counts too: saving under that name would replace it.
bool IsTaken(const WatermarkList& list, std::u16string_view name) {
  for (std::size_t place = 0; place < list.count; ++place) {
    if (CallerText(list.storedName(place)) == name ||
        (list.isPresent[place] && FieldText(list.records()[place].PageWMName) == name)) {
      return true;
    }
  }
  return false;
}

// The first record that `matches`; `count` when none does.
template <typename Matches>
std::size_t FindRecord(const WatermarkList& list, Matches matches) {
  std::size_t place = 0;
  while (place < list.count && !(list.isPresent[place] && matches(list.records()[place]))) {
    ++place;
  }
  return place;
}

// Saves those records of a list that are stored no more. Result: whether all were there.
bool PutBackMissing(const WatermarkList& list, std::span<const std::size_t> places) {
  bool wereThere = true;
  for (const std::size_t place : places) {
    if (list.isPresent[place] && !IsStored(list.storedName(place))) {
      wereThere = false;
      InitSettingsFile();
      WatermarkStore().Save(list.storedName(place), BytesOf(list.records()[place]));
    }
  }
  return wereThere;
}

// After records were deleted: what is missing in the file is held nowhere but in the list. It may
// be the whole file that went, also while it is looked through, so it is looked through again.
void EnsureStored(const WatermarkList& list, std::span<const std::size_t> places) {
  constexpr int kPasses = 3;
  for (int pass = 0; pass < kPasses && !PutBackMissing(list, places); ++pass) {
  }
}

WatermarkName FirstFreeName(const WatermarkList& list, std::u16string_view wanted) {
  WatermarkName name;
  CopyText(name, wanted);
  for (int number = 1; number <= kMostNumberedNames && IsTaken(list, FieldText(name)); ++number) {
    TextBuilder(name).Add(wanted).Add(u'~').AddNumber(number);
  }
  return name;
}

}  // namespace

// ---- The record in force and the factory records ------------------------------------------------

WatermarkData WatermarkInForce(const UIContext& context) {
  WatermarkData record = {};
  return GetUIParam(&context, "WatermarkData", &record, sizeof(record)) == kResultOk
             ? record
             : Process().DefaultWatermarks[kNoWatermark];
}

void LocaliseDefaults(const UIContext& context) {
  const auto translate = [&context](std::span<char16_t> field, std::u16string_view untranslated,
                                    StringId stringId) {
    TranslateFactoryText(field, untranslated, context.languageModule, stringId,
                         kMostWatermarkNameCharacters);
  };
  for (WatermarkData& record :
       std::span(Process().DefaultWatermarks).first(kTranslatedFactoryWatermarks)) {
    translate(record.PageWMName, kUntranslatedNone, kStringNoWatermark);
    translate(record.PageWMName, kUntranslatedNew, kStringNewWatermark);
    translate(record.PageWMText, kUntranslatedNew, kStringNewWatermark);
  }
}

// ---- The collection -----------------------------------------------------------------------------

WatermarkList ReadWatermarkList() {
  const WatermarkStore store;
  WatermarkList list;
  InitSettingsFile();
  // The names that are there count: a damaged file may announce any number. A file that can't be
  // read just now has none either, so "none" is believed when it is told twice.
  int count = store.List(list.names);
  if (count <= 0) {
    count = store.List(list.names);
  }
  if (count <= 0) {
    StoreFactoryRecords();
    count = store.List(list.names);
  }
  if (count <= 0) {
    return list;
  }
  const auto found = static_cast<std::size_t>(count);
  list.block = HeapBlock<WatermarkData>(found * sizeof(WatermarkData));
  if (!list.block) {
    return list;
  }
  list.count = found;
  const std::span records(list.block.get(), found);
  for (std::size_t place = 0; place < found; ++place) {
    list.isPresent[place] =
        store.Read(list.storedName(place), std::as_writable_bytes(records.subspan(place, 1)));
  }
  return list;
}

bool AddWatermark(const WatermarkData& record) {
  return WatermarkStore().Save(NameOf(record).data(), BytesOf(record));
}

bool ReplaceWatermark(const WatermarkData& record) {
  const WatermarkList list = ReadWatermarkList();
  const std::size_t place = FindRecord(list, [&record](const WatermarkData& stored) {
    return stored.PageWMIndex == record.PageWMIndex;
  });
  if (place == list.count) {
    return AddWatermark(record);
  }
  WatermarkStore().Delete(list.storedName(place));
  if (AddWatermark(record) && IsStored(NameOf(record).data())) {
    return true;
  }
  EnsureStored(list, SortByIndex(list).all());
  return false;
}

// ---- Order --------------------------------------------------------------------------------------

WatermarkOrder SortByIndex(const WatermarkList& list) {
  WatermarkOrder order;
  order.count = list.count;
  const auto places = std::span(order.places).first(order.count);
  std::iota(places.begin(), places.end(), std::size_t{0});
  const auto isSmaller = [records = list.records()](std::size_t left, std::size_t right) {
    return records[left].PageWMIndex < records[right].PageWMIndex;
  };
  for (auto sorted = places.begin(); sorted != places.end(); ++sorted) {
    // The first of the smallest comes forward, and the others keep their order.
    const auto smallest = std::min_element(sorted, places.end(), isSmaller);
    std::rotate(sorted, smallest, smallest + 1);
  }
  return order;
}

void KeepInOrder(const WatermarkList& list, const WatermarkOrder& order) {
  if (std::ranges::is_sorted(order.all())) {
    return;
  }
  const WatermarkStore store;
  for (std::size_t place = 0; place < list.count; ++place) {
    if (list.isPresent[place]) {
      store.Delete(list.storedName(place));
    }
  }
  for (const std::size_t place : order.all()) {
    if (list.isPresent[place]) {
      store.Save(list.storedName(place), BytesOf(list.records()[place]));
    }
  }
  EnsureStored(list, order.all());
}

// ---- Names --------------------------------------------------------------------------------------

WatermarkName UniqueName(const WatermarkEdit& edit, std::u16string_view wanted) {
  const WatermarkList list = ReadWatermarkList();
  if (edit.isNew) {
    return FirstFreeName(list, wanted);
  }
  const std::size_t place = FindRecord(list, [&](const WatermarkData& stored) {
    return stored.PageWMIndex == edit.index && FieldText(stored.PageWMText) == wanted;
  });
  WatermarkName name;
  CopyText(name, place == list.count ? wanted : FieldText(list.records()[place].PageWMName));
  return name;
}

}  // namespace ostrel
