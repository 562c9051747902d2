// What the in-memory lists share: names without regard to case, handles that are mere numbers,
// and numbers that are pointers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ostrel::headless {

// Paths are compared as the platform's file systems do, without regard to the case of letters.
inline std::u16string LowerCase(std::u16string_view path) {
  std::u16string lower(path);
  for (char16_t& unit : lower) {
    if (unit >= u'A' && unit <= u'Z') {
      unit = static_cast<char16_t>(unit - u'A' + u'a');
    }
  }
  return lower;
}

template <typename Handle>
Handle HandleOf(std::uintptr_t number) {
  return reinterpret_cast<Handle>(number);  // NOLINT(performance-no-int-to-ptr): never followed
}

// What a message's word points at.
template <typename T>
T* PointerIn(std::intptr_t word) {
  return reinterpret_cast<T*>(word);  // NOLINT(performance-no-int-to-ptr): as messages carry it
}

template <typename Handle>
std::uintptr_t NumberOf(Handle handle) {
  return reinterpret_cast<std::uintptr_t>(handle);
}

}  // namespace ostrel::headless
