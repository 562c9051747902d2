#include "platform/headless/pixel_surface.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <span>

namespace ostrel::headless {
namespace {

using Pixel = std::array<std::uint8_t, kPixelBytes>;

Pixel PixelOf(std::uint32_t color) {
  return {static_cast<std::uint8_t>(color >> 16), static_cast<std::uint8_t>(color >> 8),
          static_cast<std::uint8_t>(color)};
}

std::size_t OffsetOf(std::int32_t x) {
  return static_cast<std::size_t>(x) * kPixelBytes;
}

// ---- Pictures of resources ----------------------------------------------------------------------

// The stored bytes, of which there may be fewer than the size tells.
class StoredRows {
 public:
  explicit StoredRows(const BitmapResource& bitmap)
      : bitmap_(bitmap),
        strideBytes_((static_cast<std::size_t>(bitmap.width) * bitmap.bitsPerPixel + 31) / 32 * 4) {
  }

  Pixel At(std::int32_t x, std::int32_t y) const {
    const std::size_t row = static_cast<std::size_t>(bitmap_.height - 1 - y) * strideBytes_;
    const std::size_t bit = static_cast<std::size_t>(x) * bitmap_.bitsPerPixel;
    if (bitmap_.bitsPerPixel > 8) {
      return {Byte(row + bit / 8), Byte(row + bit / 8 + 1), Byte(row + bit / 8 + 2)};
    }
    const std::size_t shift = 8 - bitmap_.bitsPerPixel - bit % 8;
    const std::size_t index = (std::size_t{Byte(row + bit / 8)} >> shift) &
                              ((std::size_t{1} << bitmap_.bitsPerPixel) - 1);
    const std::uint32_t color = index < bitmap_.colors.size() ? bitmap_.colors[index] : 0;
    return {static_cast<std::uint8_t>(color), static_cast<std::uint8_t>(color >> 8),
            static_cast<std::uint8_t>(color >> 16)};
  }

 private:
  std::uint8_t Byte(std::size_t place) const {
    return place < bitmap_.pixels.size() ? static_cast<std::uint8_t>(bitmap_.pixels[place]) : 0;
  }

  const BitmapResource& bitmap_;
  std::size_t strideBytes_;
};

// ---- Copies -------------------------------------------------------------------------------------

// The pixels that the i-th of `count` takes of `available` ones.
struct Taken {
  std::int32_t first;
  std::int32_t last;
};

std::int64_t LastTaken(std::int64_t i, std::int64_t count, std::int64_t available) {
  return (2 * (i + 1) * available - count) / (2 * count);
}

Taken TakenAt(std::int64_t i, std::int64_t count, std::int64_t available, Sampling sampling) {
  if (count < available && sampling != Sampling::kFloor) {
    return {static_cast<std::int32_t>(i == 0 ? 0 : LastTaken(i - 1, count, available) + 1),
            static_cast<std::int32_t>(LastTaken(i, count, available))};
  }
  const bool isFloor = count == available || sampling == Sampling::kFloor;
  const auto taken = static_cast<std::int32_t>(
      isFloor ? i * available / count : ((2 * i + 1) * available - 1) / (2 * count));
  return {taken, taken};
}

// What one side of a copy comes to: the target's pixels from `first` on, and the source's pixels
// for each of them.
struct Side {
  std::int32_t first = 0;
  std::vector<std::int32_t> from = {};  // the first of them
  std::vector<std::int32_t> last = {};  // the last of them

  bool Combines() const { return from != last; }
  // Whether each pixel comes from behind the one before it.
  bool RunsOn() const {
    return !Combines() &&
           (from.back() - from.front() == static_cast<std::int32_t>(from.size()) - 1 &&
            std::ranges::adjacent_find(from, std::ranges::greater_equal()) == from.end());
  }
};

// What lies beyond the source is cut off from the pixels that come together.
Side PlanSide(Extent to, std::int32_t targetSize, Extent from, std::int32_t sourceSize,
              Sampling sampling) {
  const std::int32_t count = to.Count();
  const std::int32_t available = from.Count();
  const bool turns = (to.length < 0) != (from.length < 0);
  Side side;
  const std::int32_t begin = std::max(0, -to.First());
  const std::int32_t end = available == 0 ? 0 : std::min(count, targetSize - to.First());
  const auto room = static_cast<std::size_t>(std::max(0, end - begin));
  side.from.reserve(room);
  side.last.reserve(room);
  for (std::int32_t i = begin; i < end; ++i) {
    const auto [first, last] = TakenAt(turns ? count - 1 - i : i, count, available, sampling);
    const std::int32_t inside = std::max(from.First() + first, 0);
    const std::int32_t lastInside = std::min(from.First() + last, sourceSize - 1);
    if (inside > lastInside) {
      continue;
    }
    if (side.from.empty()) {
      side.first = to.First() + i;
    }
    side.from.push_back(inside);
    side.last.push_back(lastInside);
  }
  return side;
}

// The bits that rows have in common, for each of their bytes.
void CombineRows(std::vector<std::uint8_t>& combined, const PixelRows& source, std::int32_t first,
                 std::int32_t last) {
  const std::uint8_t* row = source.top + first * source.strideBytes;
  std::copy_n(row, combined.size(), combined.begin());
  for (std::int32_t y = first + 1; y <= last; ++y) {
    const std::uint8_t* next = source.top + y * source.strideBytes;
    std::ranges::transform(combined, std::span(next, combined.size()), combined.begin(),
                           std::bit_and<>());
  }
}

// The bits that a row's pixels have in common, for each of those that come together.
void CombineColumns(std::uint8_t* target, const std::uint8_t* source, const Side& columns) {
  for (std::size_t i = 0; i < columns.from.size(); ++i) {
    const std::uint8_t* pixel = source + OffsetOf(columns.from[i]);
    Pixel bits = {pixel[0], pixel[1], pixel[2]};
    for (std::int32_t x = columns.from[i] + 1; x <= columns.last[i]; ++x) {
      pixel += kPixelBytes;
      bits = {static_cast<std::uint8_t>(bits[0] & pixel[0]),
              static_cast<std::uint8_t>(bits[1] & pixel[1]),
              static_cast<std::uint8_t>(bits[2] & pixel[2])};
    }
    std::memcpy(target, bits.data(), kPixelBytes);
    target += kPixelBytes;
  }
}

void CopyRow(std::uint8_t* target, const std::uint8_t* source, const Side& columns) {
  // Four bytes at once wherever a pixel follows, in the source as in the target: what is one too
  // many is the next pixel's, which is written next.
  const std::int32_t last = std::max(columns.from.front(), columns.from.back());
  for (const std::int32_t x : std::span(columns.from).first(columns.from.size() - 1)) {
    if (x != last) {
      std::memcpy(target, source + OffsetOf(x), kPixelBytes + 1);
    } else {
      std::memcpy(target, source + OffsetOf(x), kPixelBytes);
    }
    target += kPixelBytes;
  }
  std::memcpy(target, source + OffsetOf(columns.from.back()), kPixelBytes);
}

void CopyRowWithout(std::uint8_t* target, const std::uint8_t* source, const Side& columns,
                    const Pixel& leftOut) {
  for (const std::int32_t x : columns.from) {
    if (std::memcmp(source + OffsetOf(x), leftOut.data(), kPixelBytes) != 0) {
      std::memcpy(target, source + OffsetOf(x), kPixelBytes);
    }
    target += kPixelBytes;
  }
}

// What an extent has in common with a picture's side.
struct Range {
  std::int32_t begin;
  std::int32_t end;
};
Range Within(std::int32_t begin, std::int32_t end, std::int32_t size) {
  return {std::clamp(begin, 0, size), std::clamp(end, 0, size)};
}

void FillRange(Surface& target, Range x, Range y, std::uint32_t color) {
  if (x.begin >= x.end || y.begin >= y.end) {
    return;
  }
  const Pixel pixel = PixelOf(color);
  std::uint8_t* first = target.Row(y.begin) + OffsetOf(x.begin);
  const std::size_t bytes = OffsetOf(x.end - x.begin);
  for (std::size_t place = 0; place < bytes; place += kPixelBytes) {
    std::memcpy(first + place, pixel.data(), kPixelBytes);
  }
  for (std::int32_t row = y.begin + 1; row < y.end; ++row) {
    std::memcpy(target.Row(row) + OffsetOf(x.begin), first, bytes);
  }
}

}  // namespace

// ---- Surfaces -----------------------------------------------------------------------------------

Surface::Surface(std::int32_t width, std::int32_t height, std::uint32_t color)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      strideBytes_(RowBytes(width_)),
      bytes_(strideBytes_ * static_cast<std::size_t>(height_)) {
  if (color != 0) {
    FillPixels(*this, {0, width_}, {0, height_}, color);
  }
}

Surface::Surface(const BitmapResource& bitmap) : Surface(bitmap.width, bitmap.height) {
  const StoredRows rows(bitmap);
  for (std::int32_t y = 0; y < height_; ++y) {
    for (std::int32_t x = 0; x < width_; ++x) {
      const Pixel pixel = rows.At(x, y);
      std::memcpy(Row(y) + OffsetOf(x), pixel.data(), kPixelBytes);
    }
  }
}

std::uint32_t Surface::ColorAt(std::int32_t x, std::int32_t y) const {
  const std::uint8_t* pixel = Row(y) + OffsetOf(x);
  return std::uint32_t{pixel[2]} | std::uint32_t{pixel[1]} << 8 | std::uint32_t{pixel[0]} << 16;
}

void Surface::SetColor(std::int32_t x, std::int32_t y, std::uint32_t color) {
  const Pixel pixel = PixelOf(color);
  std::memcpy(Row(y) + OffsetOf(x), pixel.data(), kPixelBytes);
}

PixelRows RowsOf(const Surface& surface) {
  return {surface.Row(0), static_cast<std::ptrdiff_t>(surface.strideBytes()), surface.width(),
          surface.height()};
}

// ---- Rows in memory -----------------------------------------------------------------------------

bool IsKnownForm(const BitmapInfoHeader& form) {
  return form.biSize >= sizeof(form) && form.biWidth > 0 && form.biHeight != 0 &&
         form.biPlanes == 1 && form.biBitCount == 8 * kPixelBytes && form.biCompression == 0;
}

PixelRows RowsOf(const void* pixels, const BitmapInfoHeader& form) {
  const auto* first = static_cast<const std::uint8_t*>(pixels);
  const auto stride = static_cast<std::ptrdiff_t>(RowBytes(form.biWidth));
  const std::int32_t height = std::abs(form.biHeight);
  if (form.biHeight < 0) {
    return {first, stride, form.biWidth, height};
  }
  return {first + stride * (height - 1), -stride, form.biWidth, height};
}

void DescribeScreenForm(const Surface& surface, BitmapInfoHeader* form) {
  constexpr std::uint16_t kScreenBits = 32;
  constexpr std::uint32_t kBitFields = 3;  // BI_BITFIELDS
  const std::uint32_t size = form->biSize;
  *form = {};
  form->biSize = size;
  form->biWidth = surface.width();
  form->biHeight = surface.height();
  form->biPlanes = 1;
  form->biBitCount = kScreenBits;
  form->biCompression = kBitFields;
  form->biSizeImage = static_cast<std::uint32_t>(surface.width()) *
                      static_cast<std::uint32_t>(surface.height()) * (kScreenBits / 8);
}

std::int32_t ReadRows(const Surface& surface, std::uint32_t firstRow, std::uint32_t rows,
                      const BitmapInfoHeader& form, void* pixels) {
  const auto height = static_cast<std::uint32_t>(surface.height());
  const std::uint32_t first = std::min(firstRow, height);
  const std::uint32_t count = std::min(rows, height - first);
  auto* target = static_cast<std::uint8_t*>(pixels);
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t fromLast = first + (form.biHeight < 0 ? count - 1 - i : i);
    std::memcpy(target, surface.Row(static_cast<std::int32_t>(height - 1 - fromLast)),
                surface.strideBytes());
    target += surface.strideBytes();
  }
  return static_cast<std::int32_t>(count);
}

// ---- Copies and shapes --------------------------------------------------------------------------

void CopyPixels(Surface& target, const PixelRows& source, const CopyJob& job) {
  Side columns = PlanSide(job.toX, target.width(), job.fromX, source.width, job.sampling);
  Side rows = PlanSide(job.toY, target.height(), job.fromY, source.height, job.sampling);
  if (columns.from.empty() || rows.from.empty()) {
    return;
  }
  if (job.sampling == Sampling::kOneOf) {
    columns.from = columns.last;
    rows.last = rows.from;
  }
  const bool runsOn = columns.RunsOn();
  const bool combines = columns.Combines();
  const std::size_t bytes = OffsetOf(static_cast<std::int32_t>(columns.from.size()));
  std::vector<std::uint8_t> combined(rows.Combines() ? OffsetOf(source.width) : 0);
  const std::uint8_t* before = nullptr;
  for (std::size_t i = 0; i < rows.from.size(); ++i) {
    std::uint8_t* to =
        target.Row(rows.first + static_cast<std::int32_t>(i)) + OffsetOf(columns.first);
    const std::uint8_t* from = source.top + rows.from[i] * source.strideBytes;
    if (rows.from[i] != rows.last[i]) {
      CombineRows(combined, source, rows.from[i], rows.last[i]);
      from = combined.data();
    }
    if (job.leftOut) {
      CopyRowWithout(to, from, columns, PixelOf(*job.leftOut));
    } else if (runsOn) {
      std::memcpy(to, from + OffsetOf(columns.from.front()), bytes);
    } else if (i != 0 && rows.from[i] == rows.from[i - 1]) {
      std::memcpy(to, before, bytes);
    } else if (combines) {
      CombineColumns(to, from, columns);
    } else {
      CopyRow(to, from, columns);
    }
    before = to;
  }
}

void FillPixels(Surface& target, Extent x, Extent y, std::uint32_t color) {
  FillRange(target, Within(x.First(), x.First() + x.Count(), target.width()),
            Within(y.First(), y.First() + y.Count(), target.height()), color);
}

void FramePixels(Surface& target, Extent x, Extent y, std::uint32_t color, std::int32_t penWidth) {
  const std::int32_t deepX = std::min(penWidth, x.Count());
  const std::int32_t deepY = std::min(penWidth, y.Count());
  const std::int32_t right = x.First() + x.Count();
  const std::int32_t bottom = y.First() + y.Count();
  FillPixels(target, x, {y.First(), deepY}, color);
  FillPixels(target, x, {bottom - deepY, deepY}, color);
  FillPixels(target, {x.First(), deepX}, y, color);
  FillPixels(target, {right - deepX, deepX}, y, color);
}

void KeepCommonBits(Surface& surface, const Surface& before) {
  for (std::int32_t y = 0; y < surface.height(); ++y) {
    std::uint8_t* row = surface.Row(y);
    const std::uint8_t* old = before.Row(y);
    for (std::size_t i = 0; i < surface.strideBytes(); ++i) {
      row[i] &= old[i];
    }
  }
}

void MakeBlackAndWhite(Surface& surface) {
  constexpr std::uint32_t kWhite = 0x00FFFFFF;
  for (std::int32_t y = 0; y < surface.height(); ++y) {
    for (std::int32_t x = 0; x < surface.width(); ++x) {
      surface.SetColor(x, y, surface.ColorAt(x, y) == kWhite ? kWhite : 0);
    }
  }
}

}  // namespace ostrel::headless
