// Names that the user gives: which characters they may not have.
#pragma once

#include <span>
#include <string_view>

namespace ostrel {

// Characters that a name may not have.
inline constexpr std::u16string_view kRefusedInNames = u"<>(),;?:|\\/'.\"*";
static_assert(kRefusedInNames.size() == 15);

// Whether a text holds none of them. An empty text is clean.
bool IsCleanName(std::u16string_view text);

// Removes each of them from the text in a field; what becomes free is filled with NUL.
void CleanName(std::span<char16_t> field);

}  // namespace ostrel
