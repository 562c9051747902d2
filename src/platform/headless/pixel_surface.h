// Pixels in memory, and how one picture of them is copied, stretched and drawn onto another. All of
// it works on whole rows: a test draws as much as it likes, and a bench measures its own work.
#pragma once

#include "platform/headless/resource_file.h"
#include "platform/window_types.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace ostrel::headless {

inline constexpr std::size_t kPixelBytes = 3;

// The bytes of a row of pixels, which take a multiple of 4.
constexpr std::size_t RowBytes(std::int32_t width) {
  return (static_cast<std::size_t>(width) * kPixelBytes + 3) / 4 * 4;
}

// A picture: rows from the top, a pixel being its blue, green and red byte.
class Surface {
 public:
  Surface() = default;
  Surface(std::int32_t width, std::int32_t height, std::uint32_t color = 0);
  // The picture of a resource, whatever its depth. Rows that it lacks are black.
  explicit Surface(const BitmapResource& bitmap);

  std::int32_t width() const { return width_; }
  std::int32_t height() const { return height_; }
  const std::uint8_t* Row(std::int32_t y) const {
    return bytes_.data() + static_cast<std::size_t>(y) * strideBytes_;
  }
  std::uint8_t* Row(std::int32_t y) {
    return bytes_.data() + static_cast<std::size_t>(y) * strideBytes_;
  }
  std::size_t strideBytes() const { return strideBytes_; }
  // 0x00BBGGRR.
  std::uint32_t ColorAt(std::int32_t x, std::int32_t y) const;
  void SetColor(std::int32_t x, std::int32_t y, std::uint32_t color);
  bool operator==(const Surface&) const = default;

 private:
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
  std::size_t strideBytes_ = 0;
  std::vector<std::uint8_t> bytes_ = {};
};

// Rows of pixels that may lie in any order: the way from one to the next is as many bytes.
struct PixelRows {
  const std::uint8_t* top;
  std::ptrdiff_t strideBytes;
  std::int32_t width;
  std::int32_t height;
};
PixelRows RowsOf(const Surface& surface);

// Whether a header tells of rows in the one form that is known here: 24 bits a pixel.
bool IsKnownForm(const BitmapInfoHeader& form);
// The rows that such a header tells of.
PixelRows RowsOf(const void* pixels, const BitmapInfoHeader& form);
// Fills a header in as the screen has the picture: 32 bits a pixel.
void DescribeScreenForm(const Surface& surface, BitmapInfoHeader* form);
// Copies rows into memory, in a form that is known and has the picture's size. Rows are counted
// from the last one, whichever comes first in memory. Result: the rows copied.
std::int32_t ReadRows(const Surface& surface, std::uint32_t firstRow, std::uint32_t rows,
                      const BitmapInfoHeader& form, void* pixels);

// A stretch of pixels along one side. One of a length below 0 goes from its start towards 0; the
// start belongs to it either way.
struct Extent {
  std::int32_t start;
  std::int32_t length;

  std::int32_t Count() const { return length < 0 ? -length : length; }
  std::int32_t First() const { return length < 0 ? start + length + 1 : start; }
  // The same pixels the other way round.
  Extent Turned() const { return {start + length - (length < 0 ? -1 : 1), -length}; }
};

// What a copy makes of the pixels that come together when it makes a picture smaller. A bigger
// picture repeats its pixels, and repeats the same ones for the first two.
enum class Sampling {
  kCombine,  // the bits that all of them have: dark strokes stay
  kOneOf,    // one of them: the last one of a row's, the first one of a column's
  kFloor,    // the one in which the place lies that the copy looks at
};

// Copies a rectangle onto another, stretching it to fit, and turning it where the two run in
// different ways. What lies beyond either picture is left out, and so is a colour, if one is given.
struct CopyJob {
  Extent toX;
  Extent toY;
  Extent fromX;
  Extent fromY;
  Sampling sampling = Sampling::kCombine;
  std::optional<std::uint32_t> leftOut = std::nullopt;
};
void CopyPixels(Surface& target, const PixelRows& source, const CopyJob& job);

// Fills what the two extents have in common with the picture.
void FillPixels(Surface& target, Extent x, Extent y, std::uint32_t color);
// Draws the outermost pixels of a rectangle, as many deep as the pen is wide.
void FramePixels(Surface& target, Extent x, Extent y, std::uint32_t color, std::int32_t penWidth);
// Leaves the bits that the picture has had before, in a picture of the same size.
void KeepCommonBits(Surface& surface, const Surface& before);
// Leaves two colours: what isn't white becomes black.
void MakeBlackAndWhite(Surface& surface);

}  // namespace ostrel::headless
