// A printer's page with a watermark record to stamp it with, and what came of it as lines.
#pragma once

#include "core/factory_watermarks.h"
#include "core/text.h"
#include "job/page_stamp.h"
#include "job/render_driver_escapes.h"
#include "platform/headless/drawing_record.h"
#include "support/test_world.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrel::test {

inline constexpr char16_t kBitmapPath[] = u"C:\\logo.bmp";

template <std::size_t kUnits>
void SetText(char16_t (&field)[kUnits], std::u16string_view text) {
  CopyText(field, text);
}

inline void AddLittleEndian(std::vector<std::byte>& file, std::uint32_t number, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    file.push_back(static_cast<std::byte>(number >> (8 * i)));
  }
}

// A bitmap file of 24 bits a pixel, each byte of which is another one than its neighbours.
inline std::vector<std::byte> BitmapFile(std::int32_t width, std::int32_t height) {
  constexpr std::uint32_t kHeaders = 14 + 40;
  const auto bytes = static_cast<std::uint32_t>(headless::RowBytes(width)) *
                     static_cast<std::uint32_t>(height < 0 ? -height : height);
  std::vector<std::byte> file;
  AddLittleEndian(file, 0x4D42, 2);
  AddLittleEndian(file, kHeaders + bytes, 4);
  AddLittleEndian(file, 0, 4);
  AddLittleEndian(file, kHeaders, 4);
  AddLittleEndian(file, 40, 4);
  AddLittleEndian(file, static_cast<std::uint32_t>(width), 4);
  AddLittleEndian(file, static_cast<std::uint32_t>(height), 4);
  AddLittleEndian(file, 1, 2);
  AddLittleEndian(file, 24, 2);
  for (int word = 0; word < 6; ++word) {
    AddLittleEndian(file, 0, 4);
  }
  for (std::uint32_t i = 0; i < bytes; ++i) {
    file.push_back(static_cast<std::byte>(i * 7 + 1));
  }
  return file;
}

struct StampScene {
  StampScene() {
    record.PageWMIndex = 1;
    record.PageWMFlag = 1;
    record.PageWMSize = 72;
    SetText(record.PageWMText, u"Draft");
    world.platform.locale.dateFormat = u"MM/dd/yyyy";
    device.onEscape = [this](std::int32_t code, std::span<const std::byte> /*input*/,
                             std::span<std::byte> output) {
      if (code != kEscapePageNumber || output.size() != sizeof(pageNumber)) {
        return 0;
      }
      std::memcpy(output.data(), &pageNumber, sizeof(pageNumber));
      return 1;
    };
    hdc = world.platform.graphics.OpenPrinter(device);
  }
  ~StampScene() { World().graphics.DeleteDC(hdc); }
  StampScene(const StampScene&) = delete;
  StampScene& operator=(const StampScene&) = delete;

  void SetUser(const char16_t* name) { world.platform.security.userName = name; }
  void PutBitmap(std::int32_t width, std::int32_t height) { PutFile(BitmapFile(width, height)); }
  void PutFile(std::vector<std::byte> file) {
    SetText(record.PageWMFileName, kBitmapPath);
    world.platform.files.Put(kBitmapPath, std::move(file));
  }

  void Stamp() {
    world.process.RightToLeftLanguage = rightToLeft;
    DrawPrintStamp(hdc, page, record, pageState, scale, pageSize);
  }
  std::string Lines() {
    device.operations.clear();
    Stamp();
    std::string lines;
    for (const headless::DrawingOperation& operation : device.operations) {
      lines += headless::Describe(operation) + '\n';
    }
    return lines;
  }
  std::size_t Count(headless::DrawingCall call) const {
    std::size_t count = 0;
    for (const headless::DrawingOperation& operation : device.operations) {
      count += operation.call == call ? 1U : 0U;
    }
    return count;
  }
  // What the context goes by: the state that one more operation would be written down with.
  headless::DrawingState State() {
    const bool recordsElse = std::exchange(device.records, true);
    World().graphics.ExtEscape(hdc, 0, 0, nullptr, 0, nullptr);
    const headless::DrawingState state = device.operations.back().state;
    device.operations.pop_back();
    device.records = recordsElse;
    return state;
  }
  // Objects that are left of a stamp.
  std::size_t LiveObjects() const {
    const headless::HeadlessGraphics& graphics = world.platform.graphics;
    return graphics.liveBitmaps() + graphics.liveBrushes() + graphics.liveFonts() +
           graphics.liveContexts() - 1 + world.platform.memory.liveBlocks();
  }

  TestWorld world;
  headless::PrinterDevice device = {.page = {4960, 7015}};
  WatermarkData record = kFactoryWatermarkRecords[kNoWatermark];
  Rect page = {0, 0, 4960, 7015};
  Size pageSize = {4960, 7015};
  std::int32_t pageState = 0;
  std::int32_t pageNumber = 7;
  double scale = 1.0;
  bool rightToLeft = false;
  DeviceContext hdc = nullptr;
};

}  // namespace ostrel::test
