// What the print options page tells beside its captions: why options are locked, and an old
// warning. Texts are those of the context's language library, cut to the buffer.
#pragma once

#include "core/ui_context.h"

#include <cstdint>
#include <span>

namespace ostrel {

// Why two-sided printing is locked: all the reasons that hold, one below the other.
void TellDuplexReasons(UIContext& context, std::span<char16_t> buffer);

// Why reverse order is locked; empty while printing is one-sided.
void TellReverseReason(UIContext& context, std::span<char16_t> buffer);

// Why collation is locked.
void TellCollateReason(const UIContext& context, std::span<char16_t> buffer);

// Why the job mode is locked: one text, the last that applies.
void TellJobModeReason(const UIContext& context, std::span<char16_t> buffer);

// The warning that old callers ask for by a code. Result: false for a code without one.
bool TellLegacyWarning(UIContext& context, std::uintptr_t code, std::span<char16_t> buffer);

}  // namespace ostrel
