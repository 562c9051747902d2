// Bounded texts: every copy into a fixed UTF-16 buffer goes through here. Copies are cut to fit and
// always terminated; nothing is read behind a terminator or behind the stated length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ostrel {

// The text in a fixed field: up to its terminator, or the whole field when it has none.
std::u16string_view FieldText(std::span<const char16_t> field);

// A terminated text from a caller; null counts as empty.
std::u16string_view CallerText(const char16_t* text);

// Whether two texts are the same but for the case of the letters A to Z.
bool EqualIgnoringAsciiCase(std::u16string_view left, std::u16string_view right);

// Copies `text` to the field, cut to fit, and fills the rest of the field with NUL. An empty field
// is left alone. Result: units copied, without the terminator.
std::size_t CopyText(std::span<char16_t> field, std::u16string_view text);

// Appends texts and numbers to a fixed buffer. What doesn't fit is dropped, but counted; the buffer
// is terminated at every moment. Works without a buffer too, to count only.
class TextBuilder {
 public:
  explicit TextBuilder(std::span<char16_t> buffer);

  TextBuilder& Add(std::u16string_view text);
  TextBuilder& Add(char16_t unit);
  // A signed number in decimal.
  TextBuilder& AddNumber(std::int64_t number);
  // An unsigned number in hexadecimal.
  TextBuilder& AddHex(std::uint64_t number, bool upperCase);

  // Units of the whole text, without a terminator, whether they fitted or not.
  std::size_t length() const { return length_; }
  // Whether the whole text and its terminator stand in the buffer.
  bool fits() const { return length_ < buffer_.size(); }

 private:
  std::span<char16_t> buffer_;
  std::size_t length_ = 0;
};

// Appends a format in which the first "%d" is replaced by `number`; the rest stands as it is.
void AddWithNumber(TextBuilder& out, std::u16string_view format, std::int64_t number);

// The number at the start of a text, as atoi reads it: white space, a sign, decimal digits. A text
// without digits gives 0; a number beyond 32 bits gives the nearest one.
std::int32_t LeadingNumber(std::u16string_view text);

}  // namespace ostrel
