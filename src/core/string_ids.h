// The texts of the language libraries, by name. string_ids.inc holds the names and ids.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace ostrel {

enum StringId : std::uint16_t {
#define OSTREL_STRING(name, id) name = (id),
#include "core/string_ids.inc"
#undef OSTREL_STRING
};

inline constexpr StringId kAllStringIds[] = {
#define OSTREL_STRING(name, id) name,
#include "core/string_ids.inc"
#undef OSTREL_STRING
};

static_assert(
    [] {
      std::array<StringId, std::size(kAllStringIds)> ids = {};
      std::copy(std::begin(kAllStringIds), std::end(kAllStringIds), ids.begin());
      std::sort(ids.begin(), ids.end());
      return std::adjacent_find(ids.begin(), ids.end()) == ids.end();
    }(),
    "two texts have the same id");

}  // namespace ostrel
