// The two forms in which a report is written.
#pragma once

#include "report_data.h"

#include <string>

namespace ostrel::report {

// For a person: headed sections with aligned columns, UTF-8.
std::string TextReport(const PrinterReport& report);

// For a program: one JSON object with the members of PrinterReport, UTF-8.
std::string JsonReport(const PrinterReport& report);

}  // namespace ostrel::report
