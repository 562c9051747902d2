// The help file of the user's language, and how it is opened.
#pragma once

#include "platform/print_types.h"

#include <cstdint>
#include <span>

namespace ostrel {

// Looks for the help file: in the printer driver directory, then in its folder "3", there also
// under the language's two-letter stem, and at last under the English name, which isn't looked for.
// Writes the path that the last try gave, or none when it doesn't fit. Result: true only when the
// first try found the file.
bool FindHelpFile(const char16_t* driverName, std::span<char16_t> path);

// Opens the help file at a topic through the system's help control.
void ShowHelp(WindowHandle window, std::uint32_t contextId, const char16_t* driverName);

}  // namespace ostrel
