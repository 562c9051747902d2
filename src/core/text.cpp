#include "core/text.h"

#include <algorithm>
#include <array>
#include <limits>

namespace ostrel {

std::u16string_view FieldText(std::span<const char16_t> field) {
  const auto end = std::find(field.begin(), field.end(), u'\0');
  return {field.data(), static_cast<std::size_t>(end - field.begin())};
}

std::u16string_view CallerText(const char16_t* text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

bool EqualIgnoringAsciiCase(std::u16string_view left, std::u16string_view right) {
  const auto lower = [](char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
  };
  return std::ranges::equal(left, right, {}, lower, lower);
}

std::size_t CopyText(std::span<char16_t> field, std::u16string_view text) {
  if (field.empty()) {
    return 0;
  }
  const std::size_t copied = std::min(text.size(), field.size() - 1);
  // The source may lie in the field itself; moving keeps that right.
  std::char_traits<char16_t>::move(field.data(), text.data(), copied);
  std::fill(field.begin() + static_cast<std::ptrdiff_t>(copied), field.end(), u'\0');
  return copied;
}

TextBuilder::TextBuilder(std::span<char16_t> buffer) : buffer_(buffer) {
  if (!buffer_.empty()) {
    buffer_.front() = u'\0';
  }
}

TextBuilder& TextBuilder::Add(std::u16string_view text) {
  if (length_ + 1 < buffer_.size()) {
    const std::size_t copied = std::min(text.size(), buffer_.size() - length_ - 1);
    std::char_traits<char16_t>::copy(buffer_.data() + length_, text.data(), copied);
    buffer_[length_ + copied] = u'\0';
  }
  length_ += text.size();
  return *this;
}

TextBuilder& TextBuilder::Add(char16_t unit) {
  return Add(std::u16string_view(&unit, 1));
}

TextBuilder& TextBuilder::AddNumber(std::int64_t number) {
  std::array<char16_t, 20> digits;
  std::size_t first = digits.size();
  // Negated as unsigned, since the lowest number has no positive twin.
  std::uint64_t rest = static_cast<std::uint64_t>(number);
  if (number < 0) {
    rest = 0 - rest;
  }
  do {
    digits[--first] = static_cast<char16_t>(u'0' + rest % 10);
    rest /= 10;
  } while (rest != 0);
  if (number < 0) {
    digits[--first] = u'-';
  }
  return Add(std::u16string_view(&digits[first], digits.size() - first));
}

TextBuilder& TextBuilder::AddHex(std::uint64_t number, bool upperCase) {
  constexpr std::u16string_view kLower = u"0123456789abcdef";
  constexpr std::u16string_view kUpper = u"0123456789ABCDEF";
  const std::u16string_view alphabet = upperCase ? kUpper : kLower;
  std::array<char16_t, 16> digits;
  std::size_t first = digits.size();
  do {
    digits[--first] = alphabet[number % 16];
    number /= 16;
  } while (number != 0);
  return Add(std::u16string_view(&digits[first], digits.size() - first));
}

void AddWithNumber(TextBuilder& out, std::u16string_view format, std::int64_t number) {
  constexpr std::u16string_view kPlace = u"%d";
  const std::size_t place = format.find(kPlace);
  if (place == std::u16string_view::npos) {
    out.Add(format);
    return;
  }
  out.Add(format.substr(0, place)).AddNumber(number).Add(format.substr(place + kPlace.size()));
}

std::int32_t LeadingNumber(std::u16string_view text) {
  constexpr std::u16string_view kWhiteSpace = u" \t\n\v\f\r";
  constexpr std::int64_t kLimit = std::numeric_limits<std::int32_t>::max();
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  const bool negative = text.starts_with(u'-');
  if (negative || text.starts_with(u'+')) {
    text.remove_prefix(1);
  }
  std::int64_t number = 0;
  for (const char16_t unit : text) {
    if (unit < u'0' || unit > u'9') {
      break;
    }
    number = std::min(number * 10 + (unit - u'0'), kLimit + (negative ? 1 : 0));
  }
  return static_cast<std::int32_t>(negative ? -number : number);
}

}  // namespace ostrel
