// Pictures in owner-drawn controls.
#pragma once

#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// The ground of the pictures that show a sheet of paper: a light grey that counts as transparent.
inline constexpr std::uint32_t kSheetGround = 15660020;  // 0x00BBGGRR

// Draws a module's bitmap in the middle of an item, leaving out the pixels of a colour
// (0x00BBGGRR). In a mirrored window the picture isn't turned round: what it says about left and
// right stays true. Does nothing when the module has no such bitmap.
void DrawCentredBitmap(const DrawItem& item, ModuleHandle module, std::uint32_t bitmapId,
                       std::uint32_t transparentColor);

// The height of a row in a list that its page draws, pixels: a sixth of an inch, as high as a line
// of the dialog's font with some air, and 16 at least.
std::uint32_t DrawnRowHeight();

}  // namespace ostrel
