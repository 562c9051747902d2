// What this process holds on to. The print system's own counters of handles and objects tell
// nothing here; the system below it does.
#pragma once

#include <cstddef>

namespace ostrel::print_system {

// Files that are open in this process; 0 when that can't be known.
std::size_t OpenFiles();

std::size_t WorkingSetBytes();

}  // namespace ostrel::print_system
