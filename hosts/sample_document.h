// A document to print: three pages of text and shapes, drawn as an application draws them. It looks
// the same on any page and at any resolution.
#pragma once

#include "platform/platform.h"

namespace ostrel {

inline constexpr int kSamplePages = 3;

// Draws one of the pages, counted from 0, onto the context of a printer.
void DrawSamplePage(Graphics& graphics, DeviceContext context, int page);

}  // namespace ostrel
