// What the stamps of a job's pages cost on a real device context.
#pragma once

#include <string>

namespace ostrel::bench {

// Stamps pages of a document on the printer, by the driver's own logic and by the same calls of the
// platform made directly, with the numbers worked out before; prints the medians and their ratio.
void MeasureStamps(const std::wstring& printer, const std::wstring& libraryPath);

}  // namespace ostrel::bench
