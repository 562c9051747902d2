// The driver's companion library: the neighbour that shows the choice of a universal printer's
// model and that hears of a job's events. It is loaded while it is needed, from the folder of
// drivers and from nowhere else.
#pragma once

#include "platform/print_types.h"

namespace ostrel {

// Loads the library. Null when there is none, when the system tells no folder, or when the path
// doesn't fit: cut, it would name another file. The caller frees it.
ModuleHandle LoadCompanion();

// The same for a job. The path goes through 8-bit text of the system's code page, so a folder with
// other letters in its name has no companion.
ModuleHandle LoadCompanionByCodePage();

}  // namespace ostrel
