#include "watermark/watermark_record.h"

#include "core/language.h"
#include "core/text.h"
#include "core/ui_context.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace ostrel {
namespace {

constexpr int kMostNumberedNames = 31;

std::span<const std::byte> BytesOf(const WatermarkData& record) {
  return std::as_bytes(std::span(&record, 1));
}

// Reads what is stored under a name: twice, since a file that can't be read just now has no record
// either.
bool ReadStored(const char16_t* name, WatermarkData& stored) {
  const WatermarkStore store;
  const std::span bytes = std::as_writable_bytes(std::span(&stored, 1));
  return store.Read(name, bytes) || store.Read(name, bytes);
}

bool IsStored(const char16_t* name) {
  WatermarkData stored;
  return ReadStored(name, stored);
}

// Deletes until no record of the name is left: a file that can't be written counts as written, and
// one from elsewhere may have a second record of the name. Result: whether none is left.
bool DeleteStored(const char16_t* name) {
  constexpr int kTries = 3;
  for (int tries = 0; tries < kTries; ++tries) {
    WatermarkStore().Delete(name);
    if (!IsStored(name)) {
      return true;
    }
  }
  return false;
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

// Drops each name that has come before. Result: how many are left.
std::size_t DropRepeatedNames(NameList& names, std::size_t count) {
  const auto textOf = [](const auto& row) { return FieldText(row); };
  const auto rows = names.rows.begin();
  auto kept = rows;
  for (auto row = rows; row != rows + static_cast<std::ptrdiff_t>(count); ++row) {
    if (std::ranges::find(rows, kept, FieldText(*row), textOf) == kept) {
      *kept++ = *row;
    }
  }
  return static_cast<std::size_t>(kept - rows);
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

TerminatedName NameOf(const WatermarkData& record) {
  TerminatedName name;
  CopyText(name, FieldText(record.PageWMName));
  return name;
}

WatermarkList ReadWatermarkList() {
  const WatermarkStore store;
  WatermarkList list;
  // The names that are there count: a damaged file may announce any number. A file that can't be
  // read just now has none either, so "none" is believed when it is told twice.
  int count = store.List(list.names);
  if (count <= 0) {
    InitSettingsFile();
    count = store.List(list.names);
  }
  if (count <= 0) {
    StoreFactoryRecords();
    count = store.List(list.names);
  }
  if (count <= 0) {
    return list;
  }
  list.isWhole = count < static_cast<int>(NameList::kRows) ||
                 store.Count() <= static_cast<int>(NameList::kRows);
  const std::size_t found = DropRepeatedNames(list.names, static_cast<std::size_t>(count));
  list.block = HeapBlock<WatermarkData>(found * sizeof(WatermarkData));
  if (!list.block) {
    return list;
  }
  list.count = found;
  const std::span records(list.block.get(), found);
  for (std::size_t place = 0; place < found; ++place) {
    // The store would cut a longer name, and find the record of another one.
    list.isPresent[place] = FieldText(list.names.rows[place]).size() < kStoreNameUnits &&
                            ReadStored(list.storedName(place), records[place]);
  }
  return list;
}

bool AddWatermark(const WatermarkData& record) {
  return WatermarkStore().Save(NameOf(record).data(), BytesOf(record));
}

bool ReplaceWatermark(const WatermarkData& record) {
  const WatermarkList list = ReadWatermarkList();
  if (list.count == 0) {
    return false;  // added to what can't be read, it might stand beside the one before
  }
  const std::size_t place = FindRecord(list, [&record](const WatermarkData& stored) {
    return stored.PageWMIndex == record.PageWMIndex;
  });
  if (place == list.count) {
    return AddWatermark(record);
  }
  if (!DeleteStored(list.storedName(place))) {
    return false;
  }
  if (AddWatermark(record)) {
    if (IsStored(NameOf(record).data())) {
      return true;
    }
    DeleteStored(NameOf(record).data());  // should it be there all the same
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
  if (!list.isWhole) {
    return order;
  }
  const auto key = [&list](std::size_t place) {
    return std::pair(list.isPresent[place], list.records()[place].PageWMIndex);
  };
  const auto isSmaller = [&key](std::size_t left, std::size_t right) {
    return key(left) < key(right);
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
