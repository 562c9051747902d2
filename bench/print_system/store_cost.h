// What the opening of a property sheet pays for the user's settings file.
#pragma once

#include <string>

namespace ostrel::bench {

// Fills the user's settings file with as many records as its branches are meant for, measures each
// kind of operation that a sheet does with it beside plain readings of the same bytes, and prints a
// table. `libraryPath` is the driver's library.
void MeasureStores(const std::wstring& libraryPath);

}  // namespace ostrel::bench
