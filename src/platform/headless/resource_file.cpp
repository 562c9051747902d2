#include "platform/headless/resource_file.h"

#include <cstring>
#include <stdexcept>

namespace ostrel::headless {
namespace {

constexpr std::uint32_t kTypeString = 6;        // RT_STRING
constexpr std::uint32_t kStringsInBlock = 16;   // a string resource holds the ids 16n .. 16n+15
constexpr std::uint16_t kOrdinalMark = 0xFFFF;  // a type or name given by number

// A reader of little-endian numbers that never leaves its bytes.
class Reader {
 public:
  explicit Reader(std::span<const std::byte> bytes) : bytes_(bytes) {}

  template <typename T>
  T Take() {
    T value;
    std::memcpy(&value, TakeBytes(sizeof(T)).data(), sizeof(T));
    return value;
  }

  std::span<const std::byte> TakeBytes(std::size_t count) {
    if (count > bytes_.size() - place_) {
      throw std::runtime_error("resource file is cut short");
    }
    place_ += count;
    return bytes_.subspan(place_ - count, count);
  }

  // Entries start at multiples of 4, and the last one is filled up as well.
  void AlignTo4() { TakeBytes((4 - place_ % 4) % 4); }
  bool AtEnd() const { return place_ == bytes_.size(); }

 private:
  std::span<const std::byte> bytes_;
  std::size_t place_ = 0;
};

// A type or a name: a number behind a mark, or a text, for which the result is 0.
std::uint32_t TakeOrdinal(Reader& header) {
  auto unit = header.Take<std::uint16_t>();
  if (unit == kOrdinalMark) {
    return header.Take<std::uint16_t>();
  }
  while (unit != 0) {
    unit = header.Take<std::uint16_t>();
  }
  return 0;
}

// A resource file opens with an empty entry of 32 bytes, which tells it from the 16-bit format.
void CheckOpeningEntry(Reader& reader) {
  constexpr std::uint32_t kHeaderBytes = 32;
  constexpr std::uint32_t kOrdinalZero = kOrdinalMark;
  for (const std::uint32_t expected : {0U, kHeaderBytes, kOrdinalZero, kOrdinalZero}) {
    if (reader.Take<std::uint32_t>() != expected) {
      throw std::runtime_error("not a resource file");
    }
  }
  reader.TakeBytes(kHeaderBytes - 4 * sizeof(std::uint32_t));
}

void AddBlock(StringTable& table, std::uint32_t block, std::span<const std::byte> data) {
  Reader reader(data);
  for (std::uint32_t i = 0; i < kStringsInBlock; ++i) {
    const auto length = reader.Take<std::uint16_t>();
    const std::span<const std::byte> units = reader.TakeBytes(std::size_t{length} * 2);
    if (length != 0) {
      std::u16string text(length, u'\0');
      std::memcpy(text.data(), units.data(), units.size());
      table[(block - 1) * kStringsInBlock + i] = std::move(text);
    }
  }
}

}  // namespace

StringTable ReadStringTable(std::span<const std::byte> resourceFile) {
  StringTable table;
  Reader reader(resourceFile);
  CheckOpeningEntry(reader);
  while (!reader.AtEnd()) {
    const auto dataSize = reader.Take<std::uint32_t>();
    const auto headerSize = reader.Take<std::uint32_t>();
    if (headerSize < 2 * sizeof(std::uint32_t)) {
      throw std::runtime_error("not a resource file");
    }
    Reader header(reader.TakeBytes(headerSize - 2 * sizeof(std::uint32_t)));
    const std::uint32_t type = TakeOrdinal(header);
    const std::uint32_t name = TakeOrdinal(header);
    const std::span<const std::byte> data = reader.TakeBytes(dataSize);
    if (type == kTypeString && name != 0) {
      AddBlock(table, name, data);
    }
    reader.AlignTo4();
  }
  return table;
}

}  // namespace ostrel::headless
