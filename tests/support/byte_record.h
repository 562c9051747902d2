// Records as plain bytes, for tests that compare a whole record and say where it differs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace ostrel::test {

using ByteRecord = std::vector<std::uint8_t>;

template <typename Record>
ByteRecord BytesOf(const Record& record) {
  static_assert(std::is_trivially_copyable_v<Record>);
  const auto* first = reinterpret_cast<const std::uint8_t*>(&record);
  return {first, first + sizeof(Record)};
}

// The bytes must be as many as the record has.
template <typename Record>
void SetBytes(Record& record, const ByteRecord& bytes) {
  static_assert(std::is_trivially_copyable_v<Record>);
  std::memcpy(&record, bytes.data(), bytes.size() == sizeof(Record) ? sizeof(Record) : 0);
}

// The same bytes for the same seed, in every run.
inline ByteRecord RandomBytes(std::size_t size, std::uint32_t seed) {
  std::mt19937 generator(seed);
  ByteRecord bytes(size);
  for (std::uint8_t& byte : bytes) {
    byte = static_cast<std::uint8_t>(generator());
  }
  return bytes;
}

// Little-endian, `width` bytes; what doesn't fit is cut off.
inline void PutNumber(ByteRecord& bytes, std::size_t offset, std::size_t width,
                      std::int64_t number) {
  for (std::size_t i = 0; i < width; ++i) {
    bytes.at(offset + i) = static_cast<std::uint8_t>(static_cast<std::uint64_t>(number) >> (8 * i));
  }
}

// The units of a text, without a terminator.
inline void PutText(ByteRecord& bytes, std::size_t offset, std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    PutNumber(bytes, offset + 2 * i, 2, text[i]);
  }
}

inline std::uint64_t GetNumber(const ByteRecord& bytes, std::size_t offset, std::size_t width) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < width; ++i) {
    number |= std::uint64_t{bytes.at(offset + i)} << (8 * i);
  }
  return number;
}

// Where two records differ, with both bytes; empty when they are the same.
inline std::string Difference(const ByteRecord& actual, const ByteRecord& expected) {
  constexpr int kShown = 8;
  std::ostringstream text;
  if (actual.size() != expected.size()) {
    text << actual.size() << " bytes instead of " << expected.size();
    return text.str();
  }
  int different = 0;
  for (std::size_t i = 0; i < actual.size(); ++i) {
    if (actual[i] != expected[i] && ++different <= kShown) {
      text << "byte " << i << " is " << int{actual[i]} << " instead of " << int{expected[i]}
           << "; ";
    }
  }
  if (different > kShown) {
    text << different << " bytes differ";
  }
  return text.str();
}

}  // namespace ostrel::test
