// What a user waits for when an application opens printing preferences.
#pragma once

#include <string>

namespace ostrel::bench {

// Opens both printers' sheets in turn, many times, and prints the time to the painted sheet and to
// the end of the call, and the time of each switch between pages, as ratios of the medians. Both
// printers are there.
void MeasureSheets(const std::wstring& ours, const std::wstring& theirs);

}  // namespace ostrel::bench
