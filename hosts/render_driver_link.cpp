#include "render_driver_link.h"

#include <span>

namespace ostrel::print_system {

RenderDriverLink* RenderDriverLink::current_ = nullptr;

RenderDriverLink::RenderDriverLink(const wchar_t* library, HDC context, const PrivateDevmode& job)
    : context_(context),
      driver_(job,
              [context](Point origin) { SetViewportOrgEx(context, origin.x, origin.y, nullptr); }),
      patch_(library, "GDI32.dll", "ExtEscape",
             reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Escape))) {
  current_ = this;
}

RenderDriverLink::~RenderDriverLink() {
  current_ = nullptr;
}

int WINAPI RenderDriverLink::Escape(HDC context, int code, int inputBytes, LPCSTR input,
                                    int outputBytes, LPSTR output) {
  if (current_ == nullptr || context != current_->context_ || inputBytes < 0 || outputBytes < 0) {
    return ExtEscape(context, code, inputBytes, input, outputBytes, output);
  }
  const std::span in(reinterpret_cast<const std::byte*>(input),
                     input == nullptr ? 0 : static_cast<std::size_t>(inputBytes));
  const std::span out(reinterpret_cast<std::byte*>(output),
                      output == nullptr ? 0 : static_cast<std::size_t>(outputBytes));
  return current_->driver_.Escape(code, in, out);
}

}  // namespace ostrel::print_system
