#include "pages/counted_pointers.h"

#include <algorithm>
#include <functional>
#include <span>

namespace ostrel {

// A map: its head, and behind it `capacity` entries, of which the first `used` are in the order of
// their pointers. It lives as long as it has an entry.
struct HolderCounts {
  struct Entry {
    const void* target;
    std::int32_t holders;
  };

  std::size_t used;
  std::size_t capacity;

  Entry* entries() { return reinterpret_cast<Entry*>(this + 1); }
  Entry* end() { return entries() + used; }
  // The entry of a target, or the place where it belongs.
  Entry* Find(const void* target) {
    return std::ranges::lower_bound(entries(), end(), target, std::less<const void*>(),
                                    &Entry::target);
  }
  bool Holds(const Entry* entry, const void* target) {
    return entry != end() && entry->target == target;
  }
};
static_assert(sizeof(HolderCounts) % alignof(HolderCounts::Entry) == 0);

namespace {

using Entry = HolderCounts::Entry;

// Makes room for one entry more. Result: false, with the map as it was, when there is no memory.
bool MakeRoom(HolderCounts*& map) {
  constexpr std::size_t kFirstRoom = 8;
  if (map != nullptr && map->used < map->capacity) {
    return true;
  }
  const std::size_t capacity = map == nullptr ? kFirstRoom : map->capacity * 2;
  auto* larger = static_cast<HolderCounts*>(
      World().memory.HeapAlloc(sizeof(HolderCounts) + capacity * sizeof(Entry)));
  if (larger == nullptr) {
    return false;
  }
  larger->capacity = capacity;
  if (map != nullptr) {
    larger->used = map->used;
    std::copy(map->entries(), map->end(), larger->entries());
    World().memory.HeapFree(map);
  }
  map = larger;
  return true;
}

bool Add(HolderCounts*& map, const void* target) {
  if (map != nullptr) {
    if (Entry* entry = map->Find(target); map->Holds(entry, target)) {
      ++entry->holders;
      return true;
    }
  }
  if (!MakeRoom(map)) {
    return false;
  }
  Entry* place = map->Find(target);
  std::move_backward(place, map->end(), map->end() + 1);
  *place = {.target = target, .holders = 1};
  ++map->used;
  return true;
}

// Result: whether that was the last holder.
bool Remove(HolderCounts*& map, const void* target) {
  Entry* entry = map == nullptr ? nullptr : map->Find(target);
  if (entry == nullptr || !map->Holds(entry, target) || --entry->holders > 0) {
    return false;
  }
  std::move(entry + 1, map->end(), entry);
  if (--map->used == 0) {
    World().memory.HeapFree(std::exchange(map, nullptr));
  }
  return true;
}

std::int32_t Count(HolderCounts* map, const void* target) {
  if (map == nullptr) {
    return 0;
  }
  const Entry* entry = map->Find(target);
  return map->Holds(entry, target) ? entry->holders : 0;
}

}  // namespace

bool AddHolder(char16_t* text) {
  return Add(Process().CountedTexts, text);
}

bool AddHolder(CountedObject* object) {
  return Add(Process().CountedObjects, object);
}

void RemoveHolder(char16_t* text) {
  if (Remove(Process().CountedTexts, text)) {
    FreeTarget(text);
  }
}

void RemoveHolder(CountedObject* object) {
  if (Remove(Process().CountedObjects, object)) {
    FreeTarget(object);
  }
}

std::int32_t HoldersOf(const char16_t* text) {
  return Count(Process().CountedTexts, text);
}

std::int32_t HoldersOf(const CountedObject* object) {
  return Count(Process().CountedObjects, object);
}

void FreeTarget(char16_t* text) {
  World().memory.HeapFree(text);
}

void FreeTarget(CountedObject* object) {
  object->~CountedObject();
  World().memory.HeapFree(object);
}

CountedPointer<char16_t> MakeCountedText(std::size_t units) {
  return CountedPointer<char16_t>(
      static_cast<char16_t*>(World().memory.HeapAlloc(units * sizeof(char16_t))));
}

}  // namespace ostrel
