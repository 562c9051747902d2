// Reads a compiled resource file (".res", the 32-bit resource format that the platform's resource
// compiler writes and its linker takes), so that native tests see the same compiled texts, dialogs,
// bitmaps and icons that the Windows libraries ship.
#pragma once

#include "platform/headless/dialog_template.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ostrel::headless {

using StringTable = std::unordered_map<std::uint32_t, std::u16string>;

// A bitmap: its size in pixels, how many bits a pixel takes, the colours that pixels of up to 8
// bits stand for, 0x00RRGGBB, and the rows as they are stored: the last one first.
struct BitmapResource {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::uint16_t bitsPerPixel = 0;
  std::vector<std::uint32_t> colors = {};
  std::vector<std::byte> pixels = {};
};

// An icon: the sizes that it comes in.
struct IconResource {
  struct Picture {
    std::int32_t width;
    std::int32_t height;
    std::uint16_t bitsPerPixel;
    bool operator==(const Picture&) const = default;
  };
  std::vector<Picture> pictures = {};
};

// Types of resources, RT_... of winuser.h.
inline constexpr std::uint32_t kResourceBitmap = 2;
inline constexpr std::uint32_t kResourceIcon = 3;
inline constexpr std::uint32_t kResourceString = 6;
inline constexpr std::uint32_t kResourceGroupIcon = 14;

// What a resource file holds under numbers.
struct Resources {
  // Whether there is a resource of this type and id.
  bool Holds(std::uint32_t type, std::uint32_t id) const;

  StringTable strings = {};
  std::map<std::uint32_t, DialogTemplate> dialogs = {};
  std::map<std::uint32_t, BitmapResource> bitmaps = {};
  std::map<std::uint32_t, IconResource> icons = {};
  // Type and id of each entry of the file, of other types too.
  std::set<std::pair<std::uint32_t, std::uint32_t>> entries = {};
};

// The strings of a resource file, by id; whatever else it holds is passed over. Throws
// std::runtime_error for a file that is not one or that is cut short. A file cut between two
// entries is a shorter file: nothing in it counts them.
StringTable ReadStringTable(std::span<const std::byte> resourceFile);

// All of a resource file. Throws as ReadStringTable does, and for a dialog, a bitmap or an icon
// that is malformed.
Resources ReadResources(std::span<const std::byte> resourceFile);

// BITMAPFILEHEADER (wingdi.h), which stands before the bitmap in a file of its own.
inline constexpr std::size_t kBitmapFileHeaderBytes = 14;

// The bitmap of such a file; rows that the file lacks are black. Throws std::runtime_error for a
// file whose header or colours are cut short, whose form isn't known, or which tells of more than
// 16 million pixels.
BitmapResource ReadBitmapFile(std::span<const std::byte> file);

}  // namespace ostrel::headless
