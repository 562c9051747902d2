#include "core/printer_store.h"

#include "core/process_state.h"
#include "core/text.h"

namespace ostrel {
namespace {

// The answer may grow between two calls; a printer whose description grows every time is given up.
constexpr int kSizeTries = 4;

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
  HeapBlock<PrinterInfo2> block;
  std::uint32_t size = 0;
  for (int tries = 0; tries < kSizeTries; ++tries) {
    std::uint32_t needed = 0;
    if (World().print.GetPrinterW(printer, kLevel, block.get(), size, &needed) && block) {
      return block;
    }
    if (needed <= size || World().debug.GetLastError() != kErrorInsufficientBuffer) {
      break;
    }
    size = needed;
    block = HeapBlock<PrinterInfo2>(size);
    if (!block) {
      World().debug.SetLastError(kErrorNotEnoughMemory);
      break;
    }
  }
  ReportGetPrinterFailure(kLevel);
  return {};
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
