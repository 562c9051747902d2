// Puts the stand-in for the render driver behind a device context of this process: the driver
// library's words to the context come to the stand-in, and where a tile goes is set in the context.
// Everything else that is drawn there goes its usual way.
#pragma once

#include "import_patch.h"
#include "render_driver/render_driver.h"

#include <windows.h>

namespace ostrel::print_system {

// One at a time in a process.
class RenderDriverLink {
 public:
  // `library` is the driver's, which must be loaded. The record must outlive the link.
  RenderDriverLink(const wchar_t* library, HDC context, const PrivateDevmode& job);
  ~RenderDriverLink();
  RenderDriverLink(const RenderDriverLink&) = delete;
  RenderDriverLink& operator=(const RenderDriverLink&) = delete;

  neighbours::RenderDriver& driver() { return driver_; }

 private:
  static int WINAPI Escape(HDC context, int code, int inputBytes, LPCSTR input, int outputBytes,
                           LPSTR output);

  static RenderDriverLink* current_;

  HDC context_;
  neighbours::RenderDriver driver_;
  ImportPatch patch_;
};

}  // namespace ostrel::print_system
