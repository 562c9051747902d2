#include "pages/preview_pixels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ostrel {
namespace {

constexpr std::uint8_t kWhiteByte = 0xFF;

// The picture's edges, in rows and in bytes of a row.
constexpr std::int32_t kEdgeRowsBefore = 3;
constexpr std::int32_t kEdgeRowsBehind = 2;
constexpr std::size_t kEdgeBytes = 7;

// What each level adds to a byte.
constexpr std::array<std::int32_t, kLevelVeryDark + 1> kLevelAmounts = {30, 15, 0, -25, -50};

// Whether a pixel is as bright as white. Its brightness in hundredths of a byte's step, rounded to
// whole steps, reaches 255 from here on.
bool IsWhite(const std::uint8_t* pixel) {
  constexpr std::uint32_t kHundredths = 100;
  constexpr std::uint32_t kRounding = 50;
  constexpr std::uint32_t kFirstWhite = kWhiteByte * kHundredths - kRounding;
  return 30U * pixel[0] + 59U * pixel[1] + 11U * pixel[2] >= kFirstWhite;
}

using ByteTable = std::array<std::uint8_t, 256>;

// What becomes of each byte at a level.
ByteTable MakeByteTable(std::int32_t amount) {
  ByteTable table = {};
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    table[byte] = static_cast<std::uint8_t>(
        std::clamp(static_cast<std::int32_t>(byte) + amount, 0, std::int32_t{kWhiteByte}));
  }
  return table;
}

void ShowLevelOfPixels(std::uint8_t* pixel, const std::uint8_t* end, const ByteTable& table) {
  for (; pixel != end; pixel += kPixelBytes) {
    if (!IsWhite(pixel)) {
      pixel[0] = table[pixel[0]];
      pixel[1] = table[pixel[1]];
      pixel[2] = table[pixel[2]];
    }
  }
}

// Most of a page is white paper, which is passed over in steps of eight pixels.
constexpr std::size_t kStepBytes = 8 * kPixelBytes;

bool IsAllWhite(const std::uint8_t* bytes) {
  std::array<std::uint64_t, kStepBytes / sizeof(std::uint64_t)> words;
  std::memcpy(words.data(), bytes, kStepBytes);
  return (words[0] & words[1] & words[2]) == ~std::uint64_t{0};
}

}  // namespace

void MirrorRows(const PixelRows& rows) {
  for (std::int32_t index = 0; index < rows.height; ++index) {
    std::uint8_t* first = rows.Row(index);
    std::uint8_t* last = first + static_cast<std::size_t>(rows.width - 1) * kPixelBytes;
    for (; first < last; first += kPixelBytes, last -= kPixelBytes) {
      std::swap_ranges(first, first + kPixelBytes, last);
    }
  }
}

void ShowLevel(const PixelRows& rows, std::int16_t level) {
  if (level < kLevelVeryLight || level > kLevelVeryDark || level == kLevelNormal) {
    return;
  }
  // Whole pixels between the two bytes, both counted in.
  constexpr std::size_t kFirstPixel = (kEdgeBytes + kPixelBytes - 1) / kPixelBytes;
  if (rows.stride() < 2 * kEdgeBytes) {
    return;
  }
  const std::size_t pixelsEnd = (rows.stride() - kEdgeBytes + 1) / kPixelBytes;
  if (pixelsEnd <= kFirstPixel) {
    return;
  }
  const ByteTable table = MakeByteTable(kLevelAmounts[static_cast<std::size_t>(level)]);
  for (std::int32_t index = kEdgeRowsBefore; index < rows.height - kEdgeRowsBehind; ++index) {
    std::uint8_t* pixel = rows.Row(index) + kFirstPixel * kPixelBytes;
    std::uint8_t* const end = rows.Row(index) + pixelsEnd * kPixelBytes;
    for (; static_cast<std::size_t>(end - pixel) >= kStepBytes; pixel += kStepBytes) {
      if (!IsAllWhite(pixel)) {
        ShowLevelOfPixels(pixel, pixel + kStepBytes, table);
      }
    }
    ShowLevelOfPixels(pixel, end, table);
  }
}

void WhitenEdges(const PixelRows& rows) {
  const std::size_t lastPixel = static_cast<std::size_t>(rows.width - 1) * kPixelBytes;
  for (std::int32_t index = 0; index < rows.height; ++index) {
    std::uint8_t* row = rows.Row(index);
    if (index < kEdgeRowsBefore || index >= rows.height - kEdgeRowsBehind) {
      std::memset(row, kWhiteByte, rows.stride());
    } else {
      std::memset(row, kWhiteByte, kPixelBytes);
      std::memset(row + lastPixel, kWhiteByte, kPixelBytes);
    }
  }
}

}  // namespace ostrel
