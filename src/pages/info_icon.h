// The icon beside an option that can be locked, and the tooltip that says why it is.
//
// The icon is a static control, shown while the option is locked, but where a page's rule says
// otherwise. The tooltip asks its page for the text each time (TTN_GETDISPINFOW).
#pragma once

#include "platform/window_types.h"

#include <cstdint>
#include <span>

namespace ostrel {

// Puts the shared icon into a static control, and hides it. The icon comes from the page's language
// library, is loaded once and kept to the end of the process; one that couldn't be loaded is tried
// again the next time.
void ShowMessageIcon(WindowHandle page, std::int32_t control);

// Makes a tooltip for a control. Result: its window, destroyed with the sheet; null when it can't
// be made.
WindowHandle CreateTooltip(WindowHandle page, std::int32_t control);

// Both of the above.
WindowHandle CreateInfoIcon(WindowHandle page, std::int32_t control);

// For each movement of the mouse over the page: when the control is enabled, the tool takes the
// control's place, in the page's coordinates.
void UpdateTooltipRect(WindowHandle page, WindowHandle tooltip, std::int32_t control);

// The same for several, each tooltip with the control at its place.
void UpdateTooltipRects(WindowHandle page, std::span<const WindowHandle> tooltips,
                        std::span<const std::int32_t> controls);

// The control for which a tooltip asks, one of `controls`; 0 when it is none of them.
std::int32_t ControlOfTooltip(WindowHandle page, const NotifyHeader& header,
                              std::span<const std::int32_t> controls);

}  // namespace ostrel
