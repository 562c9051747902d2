// The driver's small formatter, for texts that go into a caller's bounded buffer.
#pragma once

#include "platform/print_types.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

namespace ostrel {

// A text of the language library, by its id.
struct StringArgument {
  std::uint32_t id;
};

using FormatArgument =
    std::variant<StringArgument, std::u16string_view, char16_t, std::int32_t, std::uint32_t>;

// Copies `format` to `buffer`, cut to fit and terminated, replacing in the order of `arguments`
//   %!           a text of `module`, by a StringArgument; 1023 characters at most
//   %s           a text
//   %c           one unit
//   %ld          a signed number in decimal
//   %lu %lx %lX  an unsigned number in decimal or hexadecimal
// Anything else behind a "%", and a form whose argument is missing or of another kind, stands in
// the text as it is. With an empty buffer nothing is written. Result: units that the whole text
// needs, with its terminator.
std::size_t FormatMessageText(std::span<char16_t> buffer, std::u16string_view format,
                              std::span<const FormatArgument> arguments, ModuleHandle module);

}  // namespace ostrel
