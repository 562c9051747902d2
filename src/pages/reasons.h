// Why an option is locked, as its tooltip tells it: the texts of all the reasons that hold, one
// below the other.
#pragma once

#include "core/string_ids.h"
#include "core/text.h"
#include "core/ui_context.h"

#include <cstddef>
#include <span>

namespace ostrel {

// Room for the reasons behind one icon.
inline constexpr std::size_t kTooltipReasonUnits = 2048;

// Appends texts of the context's language library to a buffer that is empty, with the separator
// between two of them, cut to fit.
class Reasons {
 public:
  Reasons(const UIContext& context, std::span<char16_t> buffer);

  void Add(StringId id);
  void AddIf(bool holds, StringId id);

 private:
  void AddText(StringId id);

  ModuleHandle texts_;
  TextBuilder text_;
};

}  // namespace ostrel
