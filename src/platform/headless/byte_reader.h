// A reader of little-endian numbers that never leaves its bytes: what is cut short is refused with
// std::runtime_error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>

namespace ostrel::headless {

class ByteReader {
 public:
  explicit ByteReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

  template <typename T>
  T Take() {
    T value;
    std::memcpy(&value, TakeBytes(sizeof(T)).data(), sizeof(T));
    return value;
  }

  std::span<const std::byte> TakeBytes(std::size_t count) {
    if (count > left()) {
      throw std::runtime_error("resource is cut short");
    }
    place_ += count;
    return bytes_.subspan(place_ - count, count);
  }

  // The units up to a terminator, which is taken too.
  std::u16string TakeText() {
    std::u16string text;
    for (auto unit = Take<char16_t>(); unit != 0; unit = Take<char16_t>()) {
      text += unit;
    }
    return text;
  }

  void AlignTo4() { TakeBytes((4 - place_ % 4) % 4); }
  std::size_t left() const { return bytes_.size() - place_; }
  bool AtEnd() const { return left() == 0; }

 private:
  std::span<const std::byte> bytes_;
  std::size_t place_ = 0;
};

// A type, a name, a class or a title: a number behind a mark, or a text.
struct ResourceName {
  std::uint16_t number = 0;  // 0 when it is a text
  std::u16string text = {};
};

inline constexpr std::uint16_t kOrdinalMark = 0xFFFF;

inline ResourceName TakeName(ByteReader& reader) {
  ResourceName name;
  auto unit = reader.Take<std::uint16_t>();
  if (unit == kOrdinalMark) {
    name.number = reader.Take<std::uint16_t>();
    return name;
  }
  for (; unit != 0; unit = reader.Take<std::uint16_t>()) {
    name.text += static_cast<char16_t>(unit);
  }
  return name;
}

}  // namespace ostrel::headless
