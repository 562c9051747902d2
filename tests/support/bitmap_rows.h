// Rows of pixels in memory as the platform's drawing takes and gives them: 24 bits a pixel, the
// picture's last row first, each row filled up to four bytes.
#pragma once

#include "platform/window_types.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ostrel::test {

// The description of such rows. A height below 0 says that the first row comes first.
inline BitmapInfoHeader Form(std::int32_t width, std::int32_t height) {
  BitmapInfoHeader form = {};
  form.biSize = sizeof(form);
  form.biWidth = width;
  form.biHeight = height;
  form.biPlanes = 1;
  form.biBitCount = 24;
  return form;
}

constexpr std::size_t RowBytes(std::int32_t width) {
  return (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
}

// Rows whose columns are numbered in the red byte: from 1 on in the picture's first row, from 2 in
// the second, and so on.
inline std::vector<std::uint8_t> NumberedRows(std::int32_t width, std::int32_t height) {
  std::vector<std::uint8_t> rows(RowBytes(width) * static_cast<std::size_t>(height));
  for (std::int32_t y = 0; y < height; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      const std::size_t row = RowBytes(width) * static_cast<std::size_t>(height - 1 - y);
      rows[row + static_cast<std::size_t>(x) * 3 + 2] = static_cast<std::uint8_t>(x + y + 1);
    }
  }
  return rows;
}

}  // namespace ostrel::test
