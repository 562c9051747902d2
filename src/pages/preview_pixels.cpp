#include "pages/preview_pixels.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

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

// What becomes of pixels at a level. Pictures have few colours, in strokes of one each: the last
// pixel's answer serves most of the next ones.
class LevelOfPixels {
 public:
  explicit LevelOfPixels(std::int32_t amount) {
    for (std::size_t byte = 0; byte < bytes_.size(); ++byte) {
      bytes_[byte] = static_cast<std::uint8_t>(
          std::clamp(static_cast<std::int32_t>(byte) + amount, 0, std::int32_t{kWhiteByte}));
    }
  }

  void Show(std::uint8_t* pixel, const std::uint8_t* end) {
    for (; pixel != end; pixel += kPixelBytes) {
      if (std::memcmp(pixel, before_.data(), kPixelBytes) != 0) {
        std::memcpy(before_.data(), pixel, kPixelBytes);
        after_ =
            IsWhite(pixel) ? before_ : Pixel{bytes_[pixel[0]], bytes_[pixel[1]], bytes_[pixel[2]]};
      }
      std::memcpy(pixel, after_.data(), kPixelBytes);
    }
  }

 private:
  using Pixel = std::array<std::uint8_t, kPixelBytes>;

  std::array<std::uint8_t, 256> bytes_;  // by the byte before
  Pixel before_ = {kWhiteByte, kWhiteByte, kWhiteByte};
  Pixel after_ = before_;
};

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
      // Each by its name: a pixel is too short for a loop.
      std::swap(first[0], last[0]);
      std::swap(first[1], last[1]);
      std::swap(first[2], last[2]);
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
  LevelOfPixels shown(kLevelAmounts[static_cast<std::size_t>(level)]);
  for (std::int32_t index = kEdgeRowsBefore; index < rows.height - kEdgeRowsBehind; ++index) {
    std::uint8_t* pixel = rows.Row(index) + kFirstPixel * kPixelBytes;
    std::uint8_t* const end = rows.Row(index) + pixelsEnd * kPixelBytes;
    for (; static_cast<std::size_t>(end - pixel) >= kStepBytes; pixel += kStepBytes) {
      if (!IsAllWhite(pixel)) {
        shown.Show(pixel, pixel + kStepBytes);
      }
    }
    shown.Show(pixel, end);
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
