// What the defaults button of the layout page sets.
#pragma once

#include "core/ui_context.h"

namespace ostrel {

// Sets the layout, the booklet, the scale, the orientation and the toner saving back. dmDuplex is
// left as it is, so that a record at short edge stays there. Result: whether anything changed.
bool LayoutDefaults(UIContext& context);

}  // namespace ostrel
