// Why options of the paper page are locked. Texts are those of the context's language library, cut
// to the buffer.
#pragma once

#include "core/ui_context.h"

#include <span>

namespace ostrel {

// Why the media type is locked: a booklet, or two-sided printing.
void TellMediaReason(const UIContext& context, std::span<char16_t> buffer);

// Why the source is locked: the paper, the media type, or both, one below the other.
void TellSourceReasons(UIContext& context, std::span<char16_t> buffer);

// Why the feed orientation is locked; empty for the one paper that may choose it.
void TellFeedReason(const UIContext& context, std::span<char16_t> buffer);

}  // namespace ostrel
