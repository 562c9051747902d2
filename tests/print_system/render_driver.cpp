#include "render_driver.h"

#include <cstddef>
#include <span>

namespace ostrel::print_system {
namespace {

RenderDriver* current = nullptr;

}  // namespace

RenderDriver::RenderDriver()
    : patch_(kDriverLibraryFile, "GDI32.dll", "ExtEscape",
             reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(&Answer))) {
  current = this;
}

RenderDriver::~RenderDriver() {
  current = nullptr;
}

std::vector<int> RenderDriver::Codes() const {
  std::vector<int> codes;
  for (const Escape& escape : escapes) {
    codes.push_back(escape.code);
  }
  return codes;
}

int WINAPI RenderDriver::Answer(HDC context, int code, int inputBytes, LPCSTR input,
                                int outputBytes, LPSTR output) {
  const std::span in(reinterpret_cast<const std::uint8_t*>(input),
                     input == nullptr ? 0 : static_cast<std::size_t>(inputBytes));
  const std::span out(reinterpret_cast<std::byte*>(output),
                      output == nullptr ? 0 : static_cast<std::size_t>(outputBytes));
  current->escapes.push_back({code, {in.begin(), in.end()}, outputBytes, context});
  return current->driver_.Escape(code, std::as_bytes(in), out);
}

}  // namespace ostrel::print_system
