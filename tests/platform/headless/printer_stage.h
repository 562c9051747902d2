// A page of a printer in memory, for tests of what is written down on it and what is made of that.
#pragma once

#include "platform/headless/headless_platform.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::headless {

inline LogFont FontOf(std::u16string_view face, std::int32_t height) {
  LogFont font = {};
  font.lfHeight = height;
  face.copy(font.lfFaceName, kFaceNameUnits - 1);
  return font;
}

// Rows of 24 bits a pixel, in a header as a caller with room for one colour makes it.
inline BitmapInfo InfoOf(std::int32_t width, std::int32_t height) {
  BitmapInfo info = {};
  info.header.biSize = sizeof(info);
  info.header.biWidth = width;
  info.header.biHeight = height;
  info.header.biPlanes = 1;
  info.header.biBitCount = 24;
  return info;
}

class PrinterStage : public testing::Test {
 protected:
  PrinterStage() : page_(graphics_.OpenPrinter(device_)) {}

  // What was written down since the last call, one line each.
  std::vector<std::string> TakeLines() {
    std::vector<std::string> lines;
    for (const DrawingOperation& operation : device_.operations) {
      lines.push_back(Describe(operation));
    }
    device_.operations.clear();
    return lines;
  }

  HeadlessPlatform platform_;
  HeadlessGraphics& graphics_ = platform_.graphics;
  PrinterDevice device_ = {.page = {4960, 7016}};
  DeviceContext page_;
};

}  // namespace ostrel::headless
