// What a settings file may look like while several processes save favourites to it: a reading of
// its bytes that has nothing in common with the driver's own.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ostrel::peers {

// A favourite in the stress bears one stamp all over its settings record: who wrote it, and the
// how-many-eth of its saves it was.
inline constexpr std::size_t kStampedBytes = 7896;
constexpr std::uint32_t Stamp(std::uint32_t writer, std::uint32_t save) {
  return (writer << 24) | (save & 0xFFFFFF);  // the last byte of each stamp is the writer, not 0
}
void PutStamp(std::span<std::byte> record, std::uint32_t stamp);

// A favourite's value as the file has it: the stamped record, then its name in a field of 512
// bytes.
enum class ValueShape {
  kWhole,
  kCut,   // the beginning of one, and zeros
  kTorn,  // anything else
};
ValueShape ShapeOfFavorite(std::span<const std::byte> value, std::string_view name);

enum class FileShape {
  kWhole,   // a tree from the first byte to the last, each favourite with one stamp
  kEmpty,   // no byte yet
  kCut,     // the beginning of a whole one
  kMended,  // a tree to the last byte, but with a favourite that ends in zeros or a count that is
            // too high: someone read a cut file and saved it
  kMixed,   // a tree to the last byte, but with a favourite of more than one save's bytes or with
            // objects where none belong: someone read it while it was being replaced, and saved it
  kTail,    // a tree, and behind it the rest of a longer one: not cut off yet
  kBroken,  // anything else
};
inline constexpr int kFileShapes = 7;
const char* NameOf(FileShape shape);

// `why` takes the reason for kBroken.
FileShape ShapeOf(std::string_view file, std::string* why);

}  // namespace ostrel::peers
