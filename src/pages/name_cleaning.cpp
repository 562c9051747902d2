#include "pages/name_cleaning.h"

#include "core/text.h"

#include <algorithm>

namespace ostrel {
namespace {

bool IsRefused(char16_t unit) {
  return kRefusedInNames.find(unit) != std::u16string_view::npos;
}

}  // namespace

bool IsCleanName(std::u16string_view text) {
  return std::ranges::none_of(text, IsRefused);
}

void CleanName(std::span<char16_t> field) {
  const auto end = field.begin() + static_cast<std::ptrdiff_t>(FieldText(field).size());
  const auto kept = std::remove_if(field.begin(), end, IsRefused);
  std::fill(kept, field.end(), u'\0');
}

}  // namespace ostrel
