// The picture of the layout page: which picture shows the settings, and the work on its pixels that
// shows thickness, rotation and scale.
#pragma once

#include "core/ui_context.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// The bitmap that shows the record's layout; 0 for an order that has none.
std::uint32_t LayoutPictureId(UIContext& context);

// Draws that picture into an owner-drawn control.
void DrawLayoutPicture(UIContext& context, const DrawItem& item);

}  // namespace ostrel
