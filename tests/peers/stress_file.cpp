#include "stress_file.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <vector>

namespace ostrel::peers {
namespace {

constexpr std::size_t kFavoriteBytes = kStampedBytes + 512;  // the record and its name
constexpr std::string_view kCloseTag = "<endobj>\n";

struct OpenTag {
  std::string_view name;
  std::uint32_t len = 0;
  std::uint32_t children = 0;
};

// Reads a file object by object.
class ShapeReader {
 public:
  explicit ShapeReader(std::string_view file) : rest_(file) {}

  FileShape Shape(std::string* why) {
    if (rest_.empty()) {
      return FileShape::kEmpty;
    }
    if (!ReadObject(0)) {
      *why = why_;
      return cut_ ? FileShape::kCut : FileShape::kBroken;
    }
    if (!rest_.empty()) {
      return FileShape::kTail;
    }
    if (mixed_) {
      return FileShape::kMixed;
    }
    return mended_ ? FileShape::kMended : FileShape::kWhole;
  }

 private:
  bool Fail(std::string why) {
    why_ = std::move(why);
    return false;
  }

  // Takes a fixed text. A file that ends within it is cut.
  bool Take(std::string_view text) {
    if (rest_.starts_with(text)) {
      rest_.remove_prefix(text.size());
      return true;
    }
    cut_ = rest_.size() < text.size() && text.starts_with(rest_);
    return Fail("no \"" + std::string(text) + "\"");
  }

  std::optional<std::string_view> TakeUntil(char end) {
    const std::size_t place = rest_.find(end);
    if (place == std::string_view::npos) {
      cut_ = rest_.size() < 128;
      Fail("a tag without end");
      return std::nullopt;
    }
    const std::string_view text = rest_.substr(0, place);
    rest_.remove_prefix(place + 1);
    return text;
  }

  bool TakeNumber(char end, std::uint32_t* number) {
    const auto text = TakeUntil(end);
    if (!text) {
      return false;
    }
    const auto result = std::from_chars(text->data(), text->data() + text->size(), *number);
    return (result.ec == std::errc() && result.ptr == text->data() + text->size()) ||
           Fail("no number");
  }

  bool ReadTag(OpenTag* tag) {
    if (!Take("<object:")) {
      return false;
    }
    const auto name = TakeUntil(',');
    if (!name) {
      return false;
    }
    tag->name = *name;
    return Take("type:") && TakeUntil(',') && Take("len:") && TakeNumber(',', &tag->len) &&
           Take("childobjs:") && TakeNumber('>', &tag->children) && (tag->len != 0 || Take("\n"));
  }

  bool ReadValue(const OpenTag& tag, bool isFavorite) {
    if (rest_.size() < tag.len) {
      cut_ = true;
      return Fail("a value without end");
    }
    const auto value = std::as_bytes(std::span(rest_.data(), tag.len));
    rest_.remove_prefix(tag.len);
    const ValueShape shape = isFavorite ? ShapeOfFavorite(value, tag.name) : ValueShape::kWhole;
    mended_ = mended_ || shape == ValueShape::kCut;
    mixed_ = mixed_ || shape == ValueShape::kTorn;
    return true;
  }

  bool ReadObject(int depth) {
    constexpr int kDepthOfRecords = 3;  // below the root, "UIParam" and a branch
    constexpr int kDeepest = 32;
    OpenTag tag;
    if (depth > kDeepest) {
      return Fail("too deep");
    }
    if (!ReadTag(&tag) || !ReadValue(tag, tag.len == kFavoriteBytes)) {
      return false;
    }
    mixed_ = mixed_ || depth > kDepthOfRecords;
    std::uint32_t children = 0;
    while (rest_.starts_with("<o")) {
      if (!ReadObject(depth + 1)) {
        return false;
      }
      ++children;
    }
    mixed_ = mixed_ || children > tag.children;
    mended_ = mended_ || children < tag.children;
    return Take(kCloseTag);
  }

  std::string_view rest_;
  std::string why_;
  bool cut_ = false;
  bool mended_ = false;
  bool mixed_ = false;
};

}  // namespace

void PutStamp(std::span<std::byte> record, std::uint32_t stamp) {
  for (std::size_t i = 0; i + sizeof(stamp) <= record.size(); i += sizeof(stamp)) {
    std::memcpy(&record[i], &stamp, sizeof(stamp));
  }
}

ValueShape ShapeOfFavorite(std::span<const std::byte> value, std::string_view name) {
  if (value.size() != kFavoriteBytes) {
    return ValueShape::kTorn;
  }
  std::vector<std::byte> expected(value.size());
  std::uint32_t stamp = 0;
  std::memcpy(&stamp, value.data(), sizeof(stamp));
  PutStamp(std::span(expected).first(kStampedBytes), stamp);
  for (std::size_t i = 0; i < name.size(); ++i) {
    expected[kStampedBytes + 2 * i] = static_cast<std::byte>(name[i]);
  }
  const auto differs = std::ranges::mismatch(value, expected).in1;
  if (differs == value.end()) {
    return ValueShape::kWhole;
  }
  const bool zeros =
      std::all_of(differs, value.end(), [](std::byte byte) { return byte == std::byte{0}; });
  return zeros ? ValueShape::kCut : ValueShape::kTorn;
}

const char* NameOf(FileShape shape) {
  switch (shape) {
    case FileShape::kWhole:
      return "whole";
    case FileShape::kEmpty:
      return "empty";
    case FileShape::kCut:
      return "cut";
    case FileShape::kMended:
      return "mended";
    case FileShape::kMixed:
      return "mixed";
    case FileShape::kTail:
      return "with a tail";
    default:
      return "broken";
  }
}

FileShape ShapeOf(std::string_view file, std::string* why) {
  return ShapeReader(file).Shape(why);
}

}  // namespace ostrel::peers
