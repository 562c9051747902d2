#include "config/utf8.h"

#include <cstdint>

namespace ostrel {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Takes one character off the front of a UTF-16 text.
char32_t TakeCharacter(std::u16string_view& text) {
  const char16_t unit = text.front();
  text.remove_prefix(1);
  if (IsHighSurrogate(unit) && !text.empty() && IsLowSurrogate(text.front())) {
    const char16_t low = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((char32_t{unit} - 0xD800) << 10) + (char32_t{low} - 0xDC00);
  }
  return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? kReplacement : char32_t{unit};
}

struct Encoded {
  char bytes[4];
  std::size_t count;
};

Encoded Encode(char32_t character) {
  const auto lead = [&](unsigned mark, unsigned shift) {
    return static_cast<char>(mark | (character >> shift));
  };
  const auto trail = [&](unsigned shift) {
    return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x80) {
    return {{static_cast<char>(character)}, 1};
  }
  if (character < 0x800) {
    return {{lead(0xC0, 6), trail(0)}, 2};
  }
  if (character < 0x10000) {
    return {{lead(0xE0, 12), trail(6), trail(0)}, 3};
  }
  return {{lead(0xF0, 18), trail(12), trail(6), trail(0)}, 4};
}

// Takes one character off the front of a UTF-8 text. Bytes that are none are taken one maximal
// well-formed beginning at a time (the Unicode Standard, "U+FFFD substitution of maximal
// subparts").
char32_t TakeCharacter(std::string_view& text) {
  const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t lead = byteAt(0);
  std::size_t trailing = 0;
  std::uint8_t firstLow = 0x80;
  std::uint8_t firstHigh = 0xBF;
  char32_t character = lead;
  if (lead >= 0xC2 && lead <= 0xDF) {
    trailing = 1;
    character = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    trailing = 2;
    character = lead & 0x0F;
    firstLow = lead == 0xE0 ? 0xA0 : firstLow;    // no overlong forms
    firstHigh = lead == 0xED ? 0x9F : firstHigh;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    trailing = 3;
    character = lead & 0x07;
    firstLow = lead == 0xF0 ? 0x90 : firstLow;
    firstHigh = lead == 0xF4 ? 0x8F : firstHigh;
  } else if (lead >= 0x80) {
    character = kReplacement;
  }
  std::size_t taken = 1;
  for (; taken <= trailing; ++taken) {
    if (taken >= text.size() || byteAt(taken) < firstLow || byteAt(taken) > firstHigh) {
      character = kReplacement;
      break;
    }
    character = (character << 6) | (byteAt(taken) & 0x3FU);
    firstLow = 0x80;
    firstHigh = 0xBF;
  }
  text.remove_prefix(taken);
  return character;
}

}  // namespace

Utf8Result WideToUtf8(std::u16string_view text, std::span<char> buffer) {
  std::size_t written = 0;
  while (!text.empty()) {
    const Encoded encoded = Encode(TakeCharacter(text));
    if (written + encoded.count >= buffer.size()) {
      if (!buffer.empty()) {
        buffer.front() = '\0';
      }
      return {0, false};
    }
    for (std::size_t i = 0; i < encoded.count; ++i) {
      buffer[written++] = encoded.bytes[i];
    }
  }
  if (buffer.empty()) {
    return {0, false};
  }
  buffer[written] = '\0';
  return {written, true};
}

std::size_t Utf8ToWide(std::string_view text, std::span<char16_t> buffer) {
  if (buffer.empty()) {
    return 0;
  }
  std::size_t written = 0;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    const std::size_t units = character >= 0x10000 ? 2 : 1;
    if (written + units >= buffer.size()) {
      break;
    }
    if (units == 2) {
      buffer[written++] = static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
      buffer[written++] = static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
      buffer[written++] = static_cast<char16_t>(character);
    }
  }
  buffer[written] = u'\0';
  return written;
}

}  // namespace ostrel
