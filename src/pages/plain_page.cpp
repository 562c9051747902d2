#include "pages/plain_page.h"

#include "core/sheet_frame.h"
#include "pages/page_support.h"

namespace ostrel {
namespace {

constexpr std::int32_t kDefaultsButton = 1064;

std::intptr_t OnNotify(WindowHandle page, UIContext* context, const NotifyHeader& notify) {
  switch (notify.code) {
    case kPsnReset:
      ForgetApply(context);
      return 1;
    case kPsnApply:
      return ApplySettings(page, context) ? 1 : 0;
    default:
      return 0;
  }
}

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
      // NOLINTNEXTLINE(performance-no-int-to-ptr): a message carries a pointer as a number.
      return lParam == 0 ? 0 : OnNotify(page, context, *reinterpret_cast<NotifyHeader*>(lParam));
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
