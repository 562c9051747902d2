// Between UTF-16 and UTF-8, as the platform's conversions of code page 65001 do it without flags:
// what can't be converted (a lone surrogate, bytes that are no UTF-8) becomes U+FFFD.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace ostrel {

// Writes `text` as UTF-8 with a terminator. Result: bytes written, without the terminator; nothing
// counts as written, and the buffer is empty, when the whole doesn't fit: see `fits`.
struct Utf8Result {
  std::size_t bytes;
  bool fits;
};
Utf8Result WideToUtf8(std::u16string_view text, std::span<char> buffer);

// Writes `text` as UTF-16, cut to fit at a character and terminated. Result: units written.
std::size_t Utf8ToWide(std::string_view text, std::span<char16_t> buffer);

}  // namespace ostrel
