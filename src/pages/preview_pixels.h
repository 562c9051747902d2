// The pixel work of the layout page's picture: plain functions over the rows of a picture in
// memory. Nothing of the platform is asked, and any size is allowed.
//
// Rows and bytes count as they lie in memory: the form that the platform gives has the bottom row
// first, and a pixel's blue byte before its green and its red one.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ostrel {

inline constexpr std::size_t kPixelBytes = 3;

// What a row of so many pixels takes: rows begin at multiples of 4 bytes.
constexpr std::size_t RowStride(std::int32_t widthPixels) {
  return (static_cast<std::size_t>(widthPixels) * kPixelBytes + 3) & ~std::size_t{3};
}

// Rows of pixels; not their owner.
struct PixelRows {
  std::uint8_t* bytes;
  std::int32_t width;   // pixels, at least 1
  std::int32_t height;  // rows, at least 1

  std::size_t stride() const { return RowStride(width); }
  std::uint8_t* Row(std::int32_t index) const {
    return bytes + static_cast<std::size_t>(index) * stride();
  }
};

// Levels of darkness, from very light to very dark. In the middle one a picture stays as it is, and
// so it does for a number that is no level.
inline constexpr std::int16_t kLevelVeryLight = 0;
inline constexpr std::int16_t kLevelNormal = 2;
inline constexpr std::int16_t kLevelVeryDark = 4;

// Turns each row round, so that its first pixel becomes its last.
void MirrorRows(const PixelRows& rows);

// Turns the picture by half a circle, so that its first pixel becomes its last.
void TurnRows(const PixelRows& rows);

// Makes all that isn't white lighter or darker by the level's amount, each byte of a pixel for
// itself. The picture's edges stay as they are: the first three rows and the last two, and of each
// row what lies before byte 7 or behind byte stride - 7.
void ShowLevel(const PixelRows& rows, std::int16_t level);

// Makes the edges white, so that a picture that is stretched begins and ends with the paper: the
// first three rows, the last two, and the first and the last pixel of those between.
void WhitenEdges(const PixelRows& rows);

}  // namespace ostrel
