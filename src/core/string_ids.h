// The texts of the language libraries, by name. string_ids.inc holds the names and ids.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace ostrel {

enum StringId : std::uint16_t {
#define OSTREL_STRING(name, id) name = (id),
#include "core/string_ids.inc"
#undef OSTREL_STRING
};

inline constexpr std::array kAllStringIds = {
#define OSTREL_STRING(name, id) name,
#include "core/string_ids.inc"
#undef OSTREL_STRING
};

static_assert(
    [] {
      auto ids = kAllStringIds;
      std::ranges::sort(ids);
      return std::ranges::adjacent_find(ids) == ids.end();
    }(),
    "two texts have the same id");

}  // namespace ostrel
