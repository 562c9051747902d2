// A render driver behind the driver library: it answers the private escapes that the library sends
// through a device context, whichever, in the place of the print system's own driver, and writes
// them down. One at a time, for as long as the object lives.
#pragma once

#include "core/factory_watermarks.h"
#include "core/settings_record.h"
#include "import_patch.h"
#include "print_system_setup.h"

#include <windows.h>

#include <cstdint>
#include <vector>

namespace ostrel::print_system {

class RenderDriver {
 public:
  RenderDriver();
  ~RenderDriver();
  RenderDriver(const RenderDriver&) = delete;
  RenderDriver& operator=(const RenderDriver&) = delete;

  struct Escape {
    int code;
    std::vector<std::uint8_t> input;
    int outputBytes;
    HDC context;
  };
  std::vector<Escape> escapes;
  std::vector<int> Codes() const;

  // What it answers.
  WatermarkData watermark = kFactoryWatermarkRecords[kNoWatermark];
  std::int32_t pageState = 0;
  std::int32_t forbidden = 0;
  std::int32_t pageNumber = 1;

 private:
  static int WINAPI Answer(HDC context, int code, int inputBytes, LPCSTR input, int outputBytes,
                           LPSTR output);

  ImportPatch patch_;
};

}  // namespace ostrel::print_system
