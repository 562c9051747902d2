// What a settings file may look like while several processes save favourites to it: a reading of its
// bytes that has nothing in common with the driver's own.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ostrel::peers {

// A favourite in the stress is one writer's stamp all over its record: who wrote it, and the
// how-many-eth of its saves it was.
struct Stamp {
  std::uint32_t writer;
  std::uint32_t save;
  bool operator==(const Stamp&) const = default;
};
void PutStamp(std::span<std::byte> record, const Stamp& stamp);
// Whether a record that was read bears one stamp all over, up to a point from which it is zero: a
// file that was read while it was being written ends there.
bool IsStampedOrCut(std::span<const std::byte> record);

enum class FileShape {
  kWhole,   // a tree from the first byte to the last, each record with one stamp
  kEmpty,   // no byte yet
  kCut,     // the beginning of a whole one
  kMended,  // a tree to the last byte, but with a record that ends in zeros or a count that is too
            // high: someone read a cut file and saved it
  kTail,    // a tree, and behind it the rest of a longer one
  kBroken,  // anything else
};
inline constexpr int kFileShapes = 6;
const char* NameOf(FileShape shape);

// `why` takes the reason for kBroken.
FileShape ShapeOf(std::string_view file, std::string* why);

}  // namespace ostrel::peers
