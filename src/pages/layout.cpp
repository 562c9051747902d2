#include "pages/layout.h"

#include "pages/plain_page.h"

namespace ostrel {

std::intptr_t LayoutPageProcedure(WindowHandle page, std::uint32_t message, std::uintptr_t wParam,
                                  std::intptr_t lParam) {
  return PlainPageProcedure(page, message, wParam, lParam);
}

void RefreshLayoutPage(UIContext& /*context*/) {}

}  // namespace ostrel
