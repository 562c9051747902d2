#include "sheet_cost.h"

#include "driver_exports.h"
#include "print_system_setup.h"
#include "timing.h"

#include <windows.h>
#include <winspool.h>
#include <commctrl.h>
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

// ---- Page switches ------------------------------------------------------------------------------

constexpr std::size_t kMaxPages = 8;

// What a switch to each page of a sheet has taken, painting included, in ticks of each visit.
struct PageVisits {
  std::size_t pages;
  std::vector<LONGLONG> ticks[kMaxPages];
};
PageVisits visits;
bool walking = false;

// Goes through the tabs a few times, once the sheet stands; a hook has no other way to its caller.
void WalkPages(HWND sheet) {
  constexpr int kRoundsOfTabs = 5;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a message answers with a handle this way.
  const auto tabs = reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETTABCONTROL, 0, 0));
  visits.pages =
      std::min(kMaxPages, static_cast<std::size_t>(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0)));
  for (int round = 0; round < kRoundsOfTabs; ++round) {
    for (std::size_t step = 1; step <= visits.pages; ++step) {
      const std::size_t page = step % visits.pages;
      const LONGLONG start = Now();
      SendMessageW(sheet, PSM_SETCURSEL, page, 0);
      RedrawWindow(sheet, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
      if (round > 0) {  // the first visit makes the page
        visits.ticks[page].push_back(Now() - start);
      }
    }
  }
}

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
      if (walking) {
        WalkPages(sheet);
      }
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

void PrintRow(const char* name, const std::vector<double>& ours,
              const std::vector<double>& theirs) {
  std::printf("%-28s %12.1f %12.1f %8.2f\n", name, Median(ours), Median(theirs),
              Median(ours) / Median(theirs));
}

// Each page of a printer's sheet, by its place: the median of a switch to it.
std::vector<double> SwitchCosts_ms(Sheets& sheets) {
  constexpr int kSheets = 5;
  LARGE_INTEGER perSecond = {};
  QueryPerformanceFrequency(&perSecond);
  visits = {};
  walking = true;
  for (int sheet = 0; sheet < kSheets; ++sheet) {
    sheets.Open();
  }
  walking = false;
  std::vector<double> costs;
  for (std::size_t page = 0; page < visits.pages; ++page) {
    std::vector<double> samples;
    for (const LONGLONG ticks : visits.ticks[page]) {
      samples.push_back(static_cast<double>(ticks) * 1e3 / static_cast<double>(perSecond.QuadPart));
    }
    costs.push_back(Median(samples));
  }
  return costs;
}

// Ours page by page against a switch of theirs.
void PrintSwitches(const std::vector<double>& ours, const std::vector<double>& theirs) {
  const double plain = Median(theirs);
  std::printf("\n%-28s %12s %12s %8s\n", "switch to a page", "ours, ms", "theirs, ms", "ratio");
  for (std::size_t page = 0; page < ours.size(); ++page) {
    std::printf("page %-23zu %12.2f %12.2f %8.2f\n", page + 1, ours[page], plain,
                ours[page] / plain);
  }
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
  const std::vector<double> ourSwitches = SwitchCosts_ms(our);
  const std::vector<double> theirSwitches = SwitchCosts_ms(their);
  UnhookWindowsHookEx(hook);
  std::printf("\n%-28s %12s %12s %8s\n", "printing preferences", "ours, ms", "theirs, ms", "ratio");
  PrintRow("to the painted sheet", our.painted_ms, their.painted_ms);
  PrintRow("to the end, after Cancel", our.closed_ms, their.closed_ms);
  std::printf("%-28s %12.1f\n", "the driver's own part", Median(own_ms));
  PrintSwitches(ourSwitches, theirSwitches);
}

}  // namespace ostrel::bench
