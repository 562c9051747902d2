#include "core/factory_watermarks.h"

#include "core/language.h"
#include "core/text.h"

namespace ostrel {

void TranslateFactoryText(std::span<char16_t> field, std::u16string_view untranslated,
                          ModuleHandle module, std::uint32_t stringId, std::size_t mostCharacters) {
  if (FieldText(field) != untranslated) {
    return;
  }
  // Only a real text: the words that stand in for a missing one would stay for good.
  std::array<char16_t, kMostWatermarkNameCharacters + 1> text = {};
  const std::size_t units = std::min(mostCharacters, kMostWatermarkNameCharacters) + 1;
  if (LoadExistingString(module, stringId, std::span(text).first(units))) {
    CopyText(field, FieldText(text));
  }
}

}  // namespace ostrel
