#include "sheet_cost.h"

#include "driver_exports.h"
#include "print_system_setup.h"

#include <windows.h>
#include <winspool.h>
#include <prsht.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace ostrel::bench {
namespace {

using print_system::Printer;
using print_system::Writable;

constexpr int kRounds = 31;
constexpr std::size_t kRecordBytes = 64 * 1024;  // enough for either driver

LONGLONG Now() {
  LARGE_INTEGER now = {};
  QueryPerformanceCounter(&now);
  return now.QuadPart;
}

// When the sheet that this thread has opened stood painted; 0 while it doesn't. The hook that sets
// it has no other way to its caller.
LONGLONG paintedAt = 0;

// The first message to paint a part of the sheet has the whole of it painted at once, and then
// closes it as a user's Cancel does.
LRESULT CALLBACK WatchPainting(int code, WPARAM wParam, LPARAM lParam) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a hook gets its message this way.
  const auto* message = reinterpret_cast<const MSG*>(lParam);
  if (code == HC_ACTION && wParam == PM_REMOVE && paintedAt == 0 && message->message == WM_PAINT) {
    const HWND sheet = GetAncestor(message->hwnd, GA_ROOT);
    if (SendMessageW(sheet, PSM_GETTABCONTROL, 0, 0) != 0) {
      RedrawWindow(sheet, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
      paintedAt = Now();
      PostMessageW(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    }
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

struct Waits {
  double painted_ms;
  double closed_ms;
};

// One printer with a record to hand to and fro.
class Sheets {
 public:
  explicit Sheets(const std::wstring& name)
      : name_(name), printer_(name), in_(kRecordBytes), out_(kRecordBytes) {
    Ask(in_, nullptr, DM_OUT_BUFFER);
  }

  Waits Open() {
    LARGE_INTEGER perSecond = {};
    QueryPerformanceFrequency(&perSecond);
    const auto milliseconds = [&perSecond](LONGLONG ticks) {
      return static_cast<double>(ticks) * 1e3 / static_cast<double>(perSecond.QuadPart);
    };
    paintedAt = 0;
    const LONGLONG start = Now();
    Ask(out_, in_.data(), DM_IN_PROMPT | DM_IN_BUFFER | DM_OUT_BUFFER);
    const LONGLONG end = Now();
    if (paintedAt == 0) {
      throw std::runtime_error("no sheet was painted");
    }
    return {.painted_ms = milliseconds(paintedAt - start), .closed_ms = milliseconds(end - start)};
  }

  std::vector<double> painted_ms;
  std::vector<double> closed_ms;

  void Measure() {
    const Waits waits = Open();
    painted_ms.push_back(waits.painted_ms);
    closed_ms.push_back(waits.closed_ms);
  }

 private:
  void Ask(std::vector<BYTE>& out, BYTE* in, DWORD mode) {
    if (DocumentPropertiesW(nullptr, printer_.get(), Writable(name_),
                            reinterpret_cast<DEVMODEW*>(out.data()),
                            reinterpret_cast<DEVMODEW*>(in), mode) < 0) {
      throw std::runtime_error("DocumentPropertiesW failed");
    }
  }

  std::wstring name_;
  Printer printer_;
  std::vector<BYTE> in_;
  std::vector<BYTE> out_;
};

// A common sheet that shows nothing.
LONG_PTR TakePage(HANDLE /*sheet*/, UINT /*function*/, LPARAM /*lParam1*/, LPARAM /*lParam2*/) {
  return 1;
}

// What the driver itself needs, from "init" to "destroy", without any window.
class OwnPart {
 public:
  explicit OwnPart(const std::wstring& printerName)
      : name_(printerName),
        printer_(printerName),
        driver_(print_system::ConfigLibraryPath(printer_.get())) {}

  double Measure_ms() {
    DOCUMENTPROPERTYHEADER header = {};
    header.cbSize = sizeof(header);
    header.hPrinter = printer_.get();
    header.pszPrinterName = name_.data();
    PROPSHEETUI_INFO info = {};
    info.cbSize = sizeof(info);
    info.pfnComPropSheet = TakePage;
    LARGE_INTEGER perSecond = {};
    QueryPerformanceFrequency(&perSecond);
    const LONGLONG start = Now();
    info.Reason = PROPSHEETUI_REASON_INIT;
    if (driver_.DrvDocumentPropertySheets(&info, reinterpret_cast<LPARAM>(&header)) <= 0) {
      throw std::runtime_error("the driver opens no sheet");
    }
    info.Reason = PROPSHEETUI_REASON_DESTROY;
    driver_.DrvDocumentPropertySheets(&info, 0);
    return static_cast<double>(Now() - start) * 1e3 / static_cast<double>(perSecond.QuadPart);
  }

 private:
  std::wstring name_;
  Printer printer_;
  print_system::DriverExports driver_;
};

double Median(std::vector<double> samples) {
  const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
  std::nth_element(samples.begin(), middle, samples.end());
  return *middle;
}

void PrintRow(const char* name, const std::vector<double>& ours,
              const std::vector<double>& theirs) {
  std::printf("%-28s %12.1f %12.1f %8.2f\n", name, Median(ours), Median(theirs),
              Median(ours) / Median(theirs));
}

}  // namespace

void MeasureSheets(const std::wstring& ours, const std::wstring& theirs) {
  Sheets our(ours);
  Sheets their(theirs);
  const HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, WatchPainting, nullptr, GetCurrentThreadId());
  OwnPart own(ours);
  std::vector<double> own_ms;
  our.Open();
  their.Open();
  for (int round = 0; round < kRounds; ++round) {
    our.Measure();
    their.Measure();
    own_ms.push_back(own.Measure_ms());
  }
  UnhookWindowsHookEx(hook);
  std::printf("\n%-28s %12s %12s %8s\n", "printing preferences", "ours, ms", "theirs, ms", "ratio");
  PrintRow("to the painted sheet", our.painted_ms, their.painted_ms);
  PrintRow("to the end, after Cancel", our.closed_ms, their.closed_ms);
  std::printf("%-28s %12.1f\n", "the driver's own part", Median(own_ms));
}

}  // namespace ostrel::bench
