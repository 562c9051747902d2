#include "core/printer_store.h"

#include "core/process_state.h"
#include "core/text.h"

namespace ostrel {
namespace {

void ReportGetPrinterFailure(std::uint32_t level) {
  char16_t buffer[80];
  TextBuilder line(buffer);
  line.Add(u"Registry_GetHL fail, level:")
      .AddNumber(level)
      .Add(u", error code is ")
      .AddNumber(World().debug.GetLastError())
      .Add(u"\n");
  World().debug.OutputDebugStringW(buffer);
}

}  // namespace

HeapBlock<PrinterInfo2> GetPrinterInfo2(PrinterHandle printer) {
  constexpr std::uint32_t kLevel = 2;
  HeapBlock<PrinterInfo2> info = AskForBlock<PrinterInfo2>(
      [printer](PrinterInfo2* buffer, std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
        return World().print.GetPrinterW(printer, kLevel, buffer, sizeBytes, neededBytes);
      });
  if (!info) {
    ReportGetPrinterFailure(kLevel);
  }
  return info;
}

int CountMissingTrays(PrinterHandle /*printer*/) {
  return kOptionalTrays;
}

bool UpgradePrinterData(PrinterHandle /*printer*/) {
  return false;
}

bool ReadUserString(const char16_t* /*valueName*/, const char16_t* /*subkey*/,
                    std::span<char16_t> /*text*/) {
  return false;
}

bool WriteUserString(const char16_t* /*valueName*/, const char16_t* /*text*/,
                     const char16_t* /*subkey*/) {
  return false;
}

}  // namespace ostrel
