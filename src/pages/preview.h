// The picture of the layout page: which picture shows the settings, and the work on its pixels that
// shows thickness, rotation and scale.
#pragma once

#include "core/ui_context.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// The bitmap that shows the record's layout; 0 for settings that have none.
std::uint32_t LayoutPictureId(UIContext& context);

// What of the record the picture's pixels show.
struct PreviewLook {
  std::int16_t level;  // of darkness
  bool rotate;         // by half a circle; a booklet isn't turned: its own picture shows it
  std::int32_t scale;  // percent
  bool booklet;
};
PreviewLook PreviewLookOf(const UIContext& context);

// Draws a bitmap into a rectangle of a control: from its top left corner, on white, and within a
// frame when the picture is scaled. Drawn aside and copied in one piece, so nothing flickers.
//
// In a language that is read from the right the rows are turned round before they are drawn: its
// windows are mirrored and turn them once more, so that the picture stands upright and begins in
// the corner where reading begins. A bitmap of any depth is read as 24-bit pixels. When it can't be
// read, or when memory or a call of the platform fails, nothing is drawn.
void DrawLayoutPreview(DeviceContext control, GdiObject bitmap, const Rect& rectangle,
                       const PreviewLook& look);

// Draws the record's picture into an owner-drawn control.
void DrawLayoutPicture(UIContext& context, const DrawItem& item);

}  // namespace ostrel
