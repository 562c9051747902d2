#include "pages/reasons.h"

#include "core/language.h"

namespace ostrel {

Reasons::Reasons(const UIContext& context, std::span<char16_t> buffer)
    : texts_(context.languageModule), text_(buffer) {}

void Reasons::AddIf(bool holds, StringId id) {
  if (holds) {
    Add(id);
  }
}

void Reasons::Add(StringId id) {
  if (text_.length() != 0) {
    AddText(kStringReasonSeparator);
  }
  AddText(id);
}

void Reasons::AddText(StringId id) {
  char16_t piece[kMaxPathUnits] = {};
  LoadUiString(texts_, id, piece);
  text_.Add(FieldText(piece));
}

}  // namespace ostrel
