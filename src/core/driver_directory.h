// Where the print system keeps the files of its drivers.
#pragma once

#include "platform/print_types.h"

#include <span>
#include <string_view>

namespace ostrel {

// The folder for drivers of this kind below the directory.
inline constexpr std::u16string_view kDriverVersionFolder = u"\\3";

// The printer driver directory, without a separator at the end; empty when the system doesn't tell.
void ReadDriverDirectory(std::span<char16_t, kMaxPathUnits> directory);

}  // namespace ostrel
