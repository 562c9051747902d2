#include "pages/info_icon.h"

#include "core/process_state.h"
#include "pages/page_support.h"

#include <algorithm>
#include <cstddef>

namespace ostrel {
namespace {

constexpr std::uint32_t kMessageIcon = 1077;
constexpr std::int32_t kMessageIconSize = 18;  // pixels, both ways

constexpr char16_t kTooltipClass[] = u"tooltips_class32";  // TOOLTIPS_CLASSW
// WS_POPUP with TTS_ALWAYSTIP and TTS_NOPREFIX: the option's window may be an inactive one, and
// a text may hold an "&".
constexpr std::uint32_t kTooltipStyle = 0x80000003;
constexpr std::uint32_t kExtendedTopmost = 0x8;  // WS_EX_TOPMOST
constexpr std::uint32_t kToolFlags = kTtfSubclass | kTtfIdIsWindow;
static_assert(kToolFlags == 17);
constexpr std::intptr_t kTextByCallback = -1;        // LPSTR_TEXTCALLBACKW
constexpr std::intptr_t kMaximumTipWidth = 300;      // pixels
constexpr std::uintptr_t kTipBackground = 14219007;  // 0x00BBGGRR, a light yellow

// The tool of a control, in the page's coordinates. Result: false when the control has no place.
bool DescribeTool(WindowHandle page, WindowHandle control, ToolInfo* tool) {
  Windows& windows = World().windows;
  *tool = {};
  // The older of the two versions of the controls takes no description with the last member, and
  // which one is there depends on the activation context.
  tool->cbSize = offsetof(ToolInfo, lpReserved);
  tool->uFlags = kToolFlags;
  tool->hwnd = page;
  tool->uId = reinterpret_cast<std::uintptr_t>(control);
  tool->lpszText = PointedAt<char16_t>(kTextByCallback);
  if (!windows.GetWindowRect(control, &tool->rect)) {
    return false;
  }
  windows.MapWindowPoints(nullptr, page, &tool->rect);
  return true;
}

}  // namespace

void ShowMessageIcon(WindowHandle page, std::int32_t control) {
  Windows& windows = World().windows;
  ProcessState& process = Process();
  const UIContext* context = PageContext(page);
  if (process.MessageIcon == nullptr && context != nullptr) {
    process.MessageIcon = windows.LoadImageW(context->languageModule, kMessageIcon, kImageIcon,
                                             kMessageIconSize, kMessageIconSize);
  }
  const WindowHandle window = windows.GetDlgItem(page, control);
  if (process.MessageIcon != nullptr) {
    windows.SendMessageW(window, kStmSetImage, kImageIcon,
                         reinterpret_cast<std::intptr_t>(process.MessageIcon));
  }
  windows.ShowWindow(window, kSwHide);
}

WindowHandle CreateTooltip(WindowHandle page, std::int32_t control) {
  Windows& windows = World().windows;
  const WindowHandle window = windows.GetDlgItem(page, control);
  if (window == nullptr) {
    return nullptr;
  }
  const WindowHandle tooltip = windows.CreateWindowExW(
      kExtendedTopmost, kTooltipClass, kTooltipStyle, page, Process().LibraryModule);
  if (tooltip == nullptr) {
    return nullptr;
  }
  ToolInfo tool;
  DescribeTool(page, window, &tool);  // its place is taken anew before each tip
  windows.SendMessageW(tooltip, kTtmAddTool, 0, reinterpret_cast<std::intptr_t>(&tool));
  windows.SendMessageW(tooltip, kTtmSetMaxTipWidth, 0, kMaximumTipWidth);
  windows.SendMessageW(tooltip, kTtmSetTipBackgroundColor, kTipBackground, 0);
  return tooltip;
}

WindowHandle CreateInfoIcon(WindowHandle page, std::int32_t control) {
  ShowMessageIcon(page, control);
  return CreateTooltip(page, control);
}

void UpdateTooltipRect(WindowHandle page, WindowHandle tooltip, std::int32_t control) {
  Windows& windows = World().windows;
  const WindowHandle window = windows.GetDlgItem(page, control);
  ToolInfo tool;
  if (tooltip == nullptr || window == nullptr || !windows.IsWindowEnabled(window) ||
      !DescribeTool(page, window, &tool)) {
    return;
  }
  windows.SendMessageW(tooltip, kTtmActivate, 0, 0);
  windows.SendMessageW(tooltip, kTtmSetToolInfo, 0, reinterpret_cast<std::intptr_t>(&tool));
  windows.SendMessageW(tooltip, kTtmActivate, 1, 0);
}

void UpdateTooltipRects(WindowHandle page, std::span<const WindowHandle> tooltips,
                        std::span<const std::int32_t> controls) {
  for (std::size_t i = 0; i < std::min(tooltips.size(), controls.size()); ++i) {
    UpdateTooltipRect(page, tooltips[i], controls[i]);
  }
}

std::int32_t ControlOfTooltip(WindowHandle page, const NotifyHeader& header,
                              std::span<const std::int32_t> controls) {
  const auto control = std::ranges::find_if(controls, [&](std::int32_t id) {
    const WindowHandle window = World().windows.GetDlgItem(page, id);
    return window != nullptr && reinterpret_cast<std::uintptr_t>(window) == header.idFrom;
  });
  return control == controls.end() ? 0 : *control;
}

}  // namespace ostrel
