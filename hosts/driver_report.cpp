// Installs the driver into the print system, makes a printer with it, stores a few samples of what
// its users would store, and shows what an application then hears about that printer.
//
//   driver_report [--json]
//
// Result: 0, or 1 with a line on the standard error when the print system refused something.
#include "print_system_setup.h"
#include "report_data.h"
#include "report_output.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <io.h>
#include <string_view>

namespace {

constexpr wchar_t kPrinterName[] = L"Hazel 2 Series";

void Show(bool json) {
  using namespace ostrel;
  const print_system::DriverPackage package = print_system::OstrelPackage();
  print_system::InstallDriver(package, print_system::ProgramFolder());
  print_system::AddPrinterWithDriver(kPrinterName, package.driverName);

  report::StoreSamples(kPrinterName);
  const report::PrinterReport report = report::GatherReport(kPrinterName);
  const std::string text = json ? report::JsonReport(report) : report::TextReport(report);
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  const bool json = count == 2 && std::wstring_view(arguments[1]) == L"--json";
  if (count > 1 && !json) {
    std::fputs("usage: driver_report [--json]\n", stderr);
    return 2;
  }
  // UTF-8 as it is, and line ends that the reader's own system has no trouble with.
  _setmode(_fileno(stdout), _O_BINARY);
  try {
    Show(json);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "driver_report: %s\n", failure.what());
    return 1;
  }
  return 0;
}
