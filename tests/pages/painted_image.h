// Pictures as tests compare them, and a canvas that the platform paints on: a context in memory,
// whose pixels are set and read through the platform's own operations.
#pragma once

#include "core/process_state.h"
#include "platform/window_types.h"
#include "support/bitmap_rows.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <utility>
#include <vector>

namespace ostrel::test {

// A picture as an eye sees it: the top row first, 0x00RRGGBB.
struct Image {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::vector<std::uint32_t> pixels;

  static Image Of(std::int32_t width, std::int32_t height, std::uint32_t color) {
    return {width, height,
            std::vector<std::uint32_t>(static_cast<std::size_t>(width * height), color)};
  }
  // No two pixels alike, and every third of them white.
  static Image Distinct(std::int32_t width, std::int32_t height) {
    Image image = Of(width, height, 0xFFFFFF);
    for (std::size_t index = 0; index < image.pixels.size(); ++index) {
      if (index % 3 != 0) {
        image.pixels[index] = static_cast<std::uint32_t>(0x203040 + index * 0x000305);
      }
    }
    return image;
  }
  std::uint32_t& At(std::int32_t x, std::int32_t y) {
    return pixels[static_cast<std::size_t>(y * width + x)];
  }
  std::uint32_t At(std::int32_t x, std::int32_t y) const {
    return pixels[static_cast<std::size_t>(y * width + x)];
  }
  bool Holds(std::int32_t x, std::int32_t y) const {
    return x >= 0 && y >= 0 && x < width && y < height;
  }
  bool operator==(const Image&) const = default;
};
inline void PrintTo(const Image& image, std::ostream* out) {
  *out << image.width << " x " << image.height << ": " << std::hex;
  for (const std::uint32_t pixel : image.pixels) {
    *out << pixel << ' ';
  }
}

// A bitmap that a context in memory holds; its pixels are set and read through the platform.
class Canvas {
 public:
  explicit Canvas(const Image& image) : size_{image.width, image.height} {
    Graphics& graphics = World().graphics;
    context_ = graphics.CreateCompatibleDC(nullptr);
    // Compatible with the screen: a new context in memory has two colours.
    const DeviceContext screen = graphics.GetDC(nullptr);
    bitmap_ = graphics.CreateCompatibleBitmap(screen, image.width, image.height);
    graphics.ReleaseDC(nullptr, screen);
    Hold();
    const std::vector<std::uint8_t> rows = RowsOf(image);
    const Rect all = {0, 0, image.width, image.height};
    graphics.StretchDIBits(context_, all, all, rows.data(), Form(), kRasterCopy);
  }
  ~Canvas() {
    Release();
    World().graphics.DeleteObject(bitmap_);
    World().graphics.DeleteDC(context_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  DeviceContext context() const { return context_; }
  // The bitmap, free for others until it is held again.
  GdiObject Release() {
    if (before_ != nullptr) {
      World().graphics.SelectObject(context_, std::exchange(before_, nullptr));
    }
    return bitmap_;
  }
  void Hold() { before_ = World().graphics.SelectObject(context_, bitmap_); }
  // What lies in memory, from left to right whatever the layout is.
  Image Read() {
    Release();
    std::vector<std::uint8_t> rows(Stride() * static_cast<std::size_t>(size_.height));
    BitmapInfoHeader form = Form();
    EXPECT_EQ(
        World().graphics.GetDIBits(context_, bitmap_, 0, static_cast<std::uint32_t>(size_.height),
                                   rows.data(), &form),
        size_.height);
    Hold();
    Image image = Image::Of(size_.width, size_.height, 0);
    for (std::int32_t y = 0; y < size_.height; ++y) {
      for (std::int32_t x = 0; x < size_.width; ++x) {
        const std::uint8_t* pixel = &rows[Place(x, y)];
        image.At(x, y) = static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8 | pixel[2] << 16);
      }
    }
    return image;
  }

 private:
  std::size_t Stride() const { return RowBytes(size_.width); }
  BitmapInfoHeader Form() const { return test::Form(size_.width, size_.height); }
  std::size_t Place(std::int32_t x, std::int32_t y) const {
    return static_cast<std::size_t>(size_.height - 1 - y) * Stride() +
           static_cast<std::size_t>(x) * 3;
  }
  std::vector<std::uint8_t> RowsOf(const Image& image) const {
    std::vector<std::uint8_t> rows(Stride() * static_cast<std::size_t>(size_.height));
    for (std::int32_t y = 0; y < size_.height; ++y) {
      for (std::int32_t x = 0; x < size_.width; ++x) {
        for (std::size_t byte = 0; byte < 3; ++byte) {
          rows[Place(x, y) + byte] = static_cast<std::uint8_t>(image.At(x, y) >> (8 * byte));
        }
      }
    }
    return rows;
  }

  Size size_;
  DeviceContext context_ = nullptr;
  GdiObject bitmap_ = nullptr;
  GdiObject before_ = nullptr;
};

}  // namespace ostrel::test
