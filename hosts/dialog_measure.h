// Finds what doesn't fit in a dialog as it stands on the screen: texts that are cut, controls that
// cover one another or stick out of the dialog or of the frame around them, and access keys that
// two controls share.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace ostrel {

// Faults of the dialog's visible controls, a line each; empty when all is well. `dpi` is the
// display's scale, on which the platform sizes a box's mark and a button's edge.
std::vector<std::string> DialogFaults(HWND dialog, int dpi);

}  // namespace ostrel
