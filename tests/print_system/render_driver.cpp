#include "render_driver.h"

#include <algorithm>
#include <cstring>

namespace ostrel::print_system {
namespace {

RenderDriver* current = nullptr;

template <typename Word>
int HandOut(const Word& word, int outputBytes, LPSTR output) {
  std::memcpy(output, &word, std::min(sizeof(word), static_cast<std::size_t>(outputBytes)));
  return 1;
}

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
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(input);
  current->escapes.push_back(
      {code,
       bytes == nullptr ? std::vector<std::uint8_t>() : std::vector(bytes, bytes + inputBytes),
       outputBytes, context});
  switch (code) {
    case 20481:
      return HandOut(current->watermark, outputBytes, output);
    case 20485:
      return HandOut(current->forbidden, outputBytes, output);
    case 20489:
      return HandOut(current->pageNumber, outputBytes, output);
    case 20492:
      return HandOut(current->pageState, outputBytes, output);
    default:
      return 1;
  }
}

}  // namespace ostrel::print_system
