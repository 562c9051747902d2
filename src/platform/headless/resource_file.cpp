#include "platform/headless/resource_file.h"

#include "platform/headless/byte_reader.h"
#include "platform/window_types.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace ostrel::headless {
namespace {

constexpr std::uint32_t kStringsInBlock = 16;  // a string resource holds the ids 16n .. 16n+15

[[noreturn]] void Refuse(const char* why) {
  throw std::runtime_error(why);
}

// A resource file opens with an empty entry of 32 bytes, which tells it from the 16-bit format.
void CheckOpeningEntry(ByteReader& reader) {
  constexpr std::uint32_t kHeaderBytes = 32;
  constexpr std::uint32_t kOrdinalZero = kOrdinalMark;
  for (const std::uint32_t expected : {0U, kHeaderBytes, kOrdinalZero, kOrdinalZero}) {
    if (reader.Take<std::uint32_t>() != expected) {
      Refuse("not a resource file");
    }
  }
  reader.TakeBytes(kHeaderBytes - 4 * sizeof(std::uint32_t));
}

// Visits each entry whose type and id are numbers: visit(type, id, data).
template <typename Visit>
void ForEachEntry(std::span<const std::byte> resourceFile, Visit visit) {
  ByteReader reader(resourceFile);
  CheckOpeningEntry(reader);
  while (!reader.AtEnd()) {
    const auto dataSize = reader.Take<std::uint32_t>();
    const auto headerSize = reader.Take<std::uint32_t>();
    if (headerSize < 2 * sizeof(std::uint32_t)) {
      Refuse("not a resource file");
    }
    ByteReader header(reader.TakeBytes(headerSize - 2 * sizeof(std::uint32_t)));
    const std::uint32_t type = TakeName(header).number;
    const std::uint32_t id = TakeName(header).number;
    const std::span<const std::byte> data = reader.TakeBytes(dataSize);
    if (type != 0 && id != 0) {
      visit(type, id, data);
    }
    reader.AlignTo4();
  }
}

void AddStrings(StringTable& table, std::uint32_t block, std::span<const std::byte> data) {
  ByteReader reader(data);
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

// BITMAPINFOHEADER and the colours behind it. A height below 0 says that the first row comes first,
// which only files may.
BitmapResource ReadBitmapHeader(ByteReader& reader) {
  constexpr std::uint32_t kHeaderBytes = 40;
  constexpr std::int32_t kMostPixels = 0x7FFF;  // a side
  constexpr std::uint32_t kUncompressed = 0;    // BI_RGB
  BitmapResource bitmap;
  const auto headerSize = reader.Take<std::uint32_t>();
  bitmap.width = reader.Take<std::int32_t>();
  bitmap.height = reader.Take<std::int32_t>();
  const auto planes = reader.Take<std::uint16_t>();
  bitmap.bitsPerPixel = reader.Take<std::uint16_t>();
  const auto compression = reader.Take<std::uint32_t>();
  reader.TakeBytes(3 * sizeof(std::uint32_t));  // bytes of the rows, dots per metre
  auto colors = reader.Take<std::uint32_t>();
  reader.Take<std::uint32_t>();  // colours that matter
  const std::uint16_t bits = bitmap.bitsPerPixel;
  const bool knownBits = bits == 1 || bits == 4 || bits == 8 || bits == 24 || bits == 32;
  if (headerSize != kHeaderBytes || planes != 1 || compression != kUncompressed || !knownBits ||
      bitmap.width <= 0 || bitmap.width > kMostPixels || bitmap.height == 0 ||
      bitmap.height < -kMostPixels || bitmap.height > kMostPixels || colors > 256) {
    Refuse("a bitmap of an unknown kind");
  }
  if (colors == 0 && bits <= 8) {
    colors = 1U << bits;
  }
  for (std::uint32_t i = 0; i < colors; ++i) {
    bitmap.colors.push_back(reader.Take<std::uint32_t>() & 0x00FFFFFF);
  }
  return bitmap;
}

std::size_t StoredRowBytes(const BitmapResource& bitmap) {
  return (static_cast<std::size_t>(bitmap.width) * bitmap.bitsPerPixel + 31) / 32 * 4;
}

// A header with its colours, and the rows.
BitmapResource ReadBitmap(std::span<const std::byte> data) {
  ByteReader reader(data);
  BitmapResource bitmap = ReadBitmapHeader(reader);
  if (bitmap.height < 0) {
    Refuse("a bitmap whose first row comes first");
  }
  const std::span<const std::byte> rows =
      reader.TakeBytes(StoredRowBytes(bitmap) * static_cast<std::size_t>(bitmap.height));
  bitmap.pixels.assign(rows.begin(), rows.end());
  return bitmap;
}

// GRPICONDIR: which icon entries belong together. `iconBytes` tells the size of each entry.
IconResource ReadIconGroup(std::span<const std::byte> data,
                           const std::map<std::uint32_t, std::size_t>& iconBytes) {
  constexpr std::uint16_t kIcons = 1;  // 2 would be cursors
  constexpr std::int32_t kSideOfZero = 256;
  ByteReader reader(data);
  if (reader.Take<std::uint16_t>() != 0 || reader.Take<std::uint16_t>() != kIcons) {
    Refuse("not a group of icons");
  }
  IconResource icon;
  const auto count = reader.Take<std::uint16_t>();
  for (std::uint16_t i = 0; i < count; ++i) {
    const auto width = reader.Take<std::uint8_t>();
    const auto height = reader.Take<std::uint8_t>();
    reader.Take<std::uint16_t>();  // colours
    reader.Take<std::uint16_t>();  // planes
    const auto bits = reader.Take<std::uint16_t>();
    const auto size = reader.Take<std::uint32_t>();
    const auto id = reader.Take<std::uint16_t>();
    const auto entry = iconBytes.find(id);
    if (entry == iconBytes.end() || entry->second != size) {
      Refuse("an icon without its picture");
    }
    icon.pictures.push_back(
        {width == 0 ? kSideOfZero : width, height == 0 ? kSideOfZero : height, bits});
  }
  return icon;
}

}  // namespace

bool Resources::Holds(std::uint32_t type, std::uint32_t id) const {
  return entries.contains({type, id}) || (type == kResourceDialog && dialogs.contains(id)) ||
         (type == kResourceBitmap && bitmaps.contains(id)) ||
         (type == kResourceGroupIcon && icons.contains(id));
}

StringTable ReadStringTable(std::span<const std::byte> resourceFile) {
  StringTable table;
  ForEachEntry(resourceFile, [&table](std::uint32_t type, std::uint32_t id, auto data) {
    if (type == kResourceString) {
      AddStrings(table, id, data);
    }
  });
  return table;
}

Resources ReadResources(std::span<const std::byte> resourceFile) {
  Resources resources;
  std::map<std::uint32_t, std::size_t> iconBytes;
  std::map<std::uint32_t, std::span<const std::byte>> groups;
  ForEachEntry(resourceFile, [&](std::uint32_t type, std::uint32_t id, auto data) {
    resources.entries.insert({type, id});
    if (type == kResourceString) {
      AddStrings(resources.strings, id, data);
    } else if (type == kResourceDialog) {
      resources.dialogs[id] = ReadDialogTemplate(data);
    } else if (type == kResourceBitmap) {
      resources.bitmaps[id] = ReadBitmap(data);
    } else if (type == kResourceIcon) {
      iconBytes[id] = data.size();
    } else if (type == kResourceGroupIcon) {
      groups[id] = data;
    }
  });
  for (const auto& [id, data] : groups) {  // behind the icons, whatever the order of the entries
    resources.icons[id] = ReadIconGroup(data, iconBytes);
  }
  return resources;
}

BitmapResource ReadBitmapFile(std::span<const std::byte> file) {
  constexpr std::uint16_t kMark = 0x4D42;  // "BM"
  constexpr std::int64_t kMostPixels = 0x1000000;
  ByteReader reader(file);
  if (reader.Take<std::uint16_t>() != kMark) {
    Refuse("not a bitmap");
  }
  reader.TakeBytes(2 * sizeof(std::uint32_t));  // the file's size, nothing
  const auto announcedStart = reader.Take<std::uint32_t>();
  BitmapResource bitmap = ReadBitmapHeader(reader);
  const bool firstRowFirst = bitmap.height < 0;
  bitmap.height = std::abs(bitmap.height);
  if (std::int64_t{bitmap.width} * bitmap.height > kMostPixels) {
    Refuse("a bitmap that takes too much memory");
  }
  const std::size_t start = announcedStart == 0 ? file.size() - reader.left() : announcedStart;
  const std::size_t stride = StoredRowBytes(bitmap);
  const auto rowCount = static_cast<std::size_t>(bitmap.height);
  const std::span<const std::byte> stored = file.subspan(std::min(start, file.size()));
  bitmap.pixels.resize(stride * rowCount);
  for (std::size_t row = 0; row * stride < stored.size() && row < rowCount; ++row) {
    const std::size_t place = firstRowFirst ? rowCount - 1 - row : row;
    const std::size_t bytes = std::min(stride, stored.size() - row * stride);
    std::ranges::copy(stored.subspan(row * stride, bytes),
                      bitmap.pixels.begin() + static_cast<std::ptrdiff_t>(place * stride));
  }
  return bitmap;
}

}  // namespace ostrel::headless
