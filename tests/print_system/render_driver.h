// The stand-in for the render driver behind the driver library: it answers the private escapes that
// the library sends through a device context, whichever, in the place of the print system's own
// driver, and they are written down. One at a time, for as long as the object lives.
#pragma once

#include "core/settings_record.h"
#include "import_patch.h"
#include "print_system_setup.h"
#include "render_driver/render_driver.h"

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

  // What it answers from; without a watermark at first.
  PrivateDevmode job = {};

 private:
  static int WINAPI Answer(HDC context, int code, int inputBytes, LPCSTR input, int outputBytes,
                           LPSTR output);

  neighbours::RenderDriver driver_{job, nullptr};
  ImportPatch patch_;
};

}  // namespace ostrel::print_system
