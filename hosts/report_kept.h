// The section of the report that tells what is kept for the printer and its user.
#pragma once

#include "report_data.h"

#include <windows.h>

#include <string>

namespace ostrel::report {

// All but the sources, which are asked of the driver's library itself.
KeptState GatherKeptState(HANDLE printer, const std::wstring& printerName,
                          const std::wstring& libraryPath);

}  // namespace ostrel::report
