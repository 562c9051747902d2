// Which picture the print options page shows where, by the record.
#pragma once

#include "core/ui_context.h"
#include "platform/window_types.h"

#include <cstdint>

namespace ostrel {

// The bitmap for the record's duplex and orientation; 0 for values without a picture.
std::uint32_t DuplexPictureId(UIContext& context);

struct ItemPicture {
  ModuleHandle module;
  std::uint32_t bitmapId;
  std::uint32_t transparentColor;  // 0x00BBGGRR
};

// Which picture stands in an owner-drawn control. Most of these controls are of older templates;
// the pictures that they share with the two-sided options don't show what their own setting did.
// Result: false for a control without one.
bool FindItemPicture(const UIContext& context, std::uint32_t control, ItemPicture& picture);

}  // namespace ostrel
