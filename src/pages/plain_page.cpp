#include "pages/plain_page.h"

#include "pages/page_support.h"

namespace ostrel {
namespace {

constexpr std::int32_t kDefaultsButton = 1064;

}  // namespace

std::intptr_t PlainPageProcedure(WindowHandle page, std::uint32_t message,
                                 std::uintptr_t /*wParam*/, std::intptr_t lParam) {
  UIContext* context = message == kWmInitDialog ? RememberContext(page, lParam) : PageContext(page);
  if (context == nullptr) {
    return 0;
  }
  switch (message) {
    case kWmInitDialog:
      return 1;
    case kWmNotify:
      return lParam == 0
                 ? 0
                 : AnswerSheetNotify(page, *context, PointedAt<const NotifyHeader>(lParam)->code,
                                     kNoHelpTopic);
    case kWmShowWindow:
      if (context->noPermission != 0) {
        EnableControl(page, kDefaultsButton, false);
      }
      return 0;
    default:
      return 0;
  }
}

}  // namespace ostrel
