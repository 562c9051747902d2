// What the layout page tells beside its captions: why its options are locked. Texts are those of
// the context's language library, cut to the buffer; empty where no reason holds.
#pragma once

#include "core/ui_context.h"

#include <span>

namespace ostrel {

// Why the scale is locked.
void TellScaleReasons(UIContext& context, std::span<char16_t> buffer);

// Why a booklet can't be chosen.
void TellBookletReasons(UIContext& context, std::span<char16_t> buffer);

// Why a poster isn't free.
void TellPosterReason(UIContext& context, std::span<char16_t> buffer);

}  // namespace ostrel
