// Prints a document in the print system, as an application and the graphics engine do it together,
// with the settings of a file or of the printing preferences, and shows what the driver did.
//
//   print_document FOLDER FILE...       a job for each file of settings; the pages are left in the
//                                       folder as FILE.ps
//   print_document --preferences FOLDER opens the preferences first, for a user at the display, and
//                                       prints with what was chosen there
//
// The pages go through the print system's own drawing into PostScript. Behind the job's context a
// stand-in for the render driver answers what the driver asks it (neighbours/render_driver).
// Result: 0, or 1 with a line on the standard error when something failed.
#include "core/settings_record.h"
#include "driver_exports.h"
#include "job_settings.h"
#include "platform/win32/win32_platform.h"
#include "print_job.h"
#include "print_system_setup.h"
#include "render_driver_link.h"
#include "sample_document.h"
#include "testers_values.h"
#include "text_table.h"

#include <windows.h>
#include <winspool.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace ostrel;
using namespace ostrel::print_system;

constexpr wchar_t kPrinterName[] = L"Hazel 2 Series";

DeviceContext ToContext(HDC context) {
  return reinterpret_cast<DeviceContext>(context);
}
HDC FromContext(DeviceContext context) {
  return reinterpret_cast<HDC>(context);
}

std::wstring FullPath(const std::wstring& path) {
  wchar_t full[MAX_PATH] = {};
  const DWORD units = GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr);
  if (units == 0 || units >= MAX_PATH) {
    throw std::runtime_error("no path " + Utf8(path));
  }
  return full;
}

// ---- The record ---------------------------------------------------------------------------------

DriverDevmode AskRecord(const Printer& printer, const DriverDevmode* in, DWORD mode) {
  DriverDevmode out = {};
  DriverDevmode given = in == nullptr ? DriverDevmode{} : *in;
  std::wstring name = kPrinterName;
  const LONG answer =
      DocumentPropertiesW(nullptr, printer.get(), name.data(), reinterpret_cast<DEVMODEW*>(&out),
                          in == nullptr ? nullptr : reinterpret_cast<DEVMODEW*>(&given), mode);
  if (answer < 0) {
    throw std::runtime_error("DocumentPropertiesW failed");
  }
  return out;
}

DriverDevmode RecordOfFile(const Printer& printer, const std::wstring& path) {
  std::ifstream file(path.c_str(), std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file.is_open()) {
    throw std::runtime_error("no file " + Utf8(path));
  }
  const std::wstring folder = path.substr(0, path.find_last_of(L'\\') + 1);
  DriverDevmode record = AskRecord(printer, nullptr, DM_OUT_BUFFER);
  // The default paper is the country's; the pages are to be looked at side by side.
  record.publicDevmode.dmPaperSize = DMPAPER_A4;
  ApplyJobSettings(record, text, std::u16string(folder.begin(), folder.end()));
  return AskRecord(printer, &record, DM_IN_BUFFER | DM_OUT_BUFFER);
}

// ---- The job ------------------------------------------------------------------------------------

class PrinterJob final : public JobSystem {
 public:
  PrinterJob(const Printer& printer, const DriverExports& driver, const DriverDevmode& record,
             std::wstring output)
      : printer_(printer), driver_(driver), record_(record), output_(std::move(output)) {}

  std::int32_t Raise(JobEvent event, DeviceContext context) override {
    return driver_.DrvDocumentEvent(printer_.get(), FromContext(context), static_cast<INT>(event),
                                    0, nullptr, 0, nullptr);
  }
  DeviceContext CreateContext() override {
    const HDC context =
        CreateDCW(L"WINSPOOL", kPrinterName, nullptr, reinterpret_cast<const DEVMODEW*>(&record_));
    if (context != nullptr) {
      link_.emplace(kDriverLibraryFile, context, record_.privateDevmode);
    }
    return ToContext(context);
  }
  bool BeginDocument(DeviceContext context) override {
    DOCINFOW document = {};
    document.cbSize = sizeof(document);
    document.lpszDocName = L"Sample document";
    document.lpszOutput = output_.c_str();
    return StartDocW(FromContext(context), &document) > 0;
  }
  bool BeginPage(DeviceContext context) override { return ::StartPage(FromContext(context)) > 0; }
  bool FinishPage(DeviceContext context) override { return ::EndPage(FromContext(context)) > 0; }
  bool FinishDocument(DeviceContext context) override { return ::EndDoc(FromContext(context)) > 0; }
  void DeleteContext(DeviceContext context) override {
    stamps_ = link_->driver().stamps();
    tiles_ = link_->driver().tiles();
    link_.reset();
    DeleteDC(FromContext(context));
  }

  int stamps() const { return stamps_; }
  int tiles() const { return tiles_; }

 private:
  const Printer& printer_;
  const DriverExports& driver_;
  const DriverDevmode& record_;
  std::wstring output_;
  std::optional<RenderDriverLink> link_;
  int stamps_ = 0;
  int tiles_ = 0;
};

std::string ResultText(JobResult result) {
  switch (result) {
    case JobResult::kPrinted:
      return "printed";
    case JobResult::kRefused:
      return "refused by the driver";
    default:
      return "failed";
  }
}

class Press {
 public:
  // Prints the document and adds a line to the table.
  void Print(const DriverDevmode& record, const std::wstring& name, const std::wstring& folder) {
    PrinterJob job(printer_, driver_, record, folder + L"\\" + name + L".ps");
    Graphics& graphics = win32::SystemPlatform().graphics;
    const JobResult result = PrintJob(
        job, kSamplePages,
        [&graphics](DeviceContext context, int page) { DrawSamplePage(graphics, context, page); });
    table_.Row({Utf8(name), ResultText(result), std::to_string(job.stamps()),
                std::to_string(job.tiles())});
    allPrinted_ = allPrinted_ && result == JobResult::kPrinted;
  }

  const Printer& printer() const { return printer_; }
  bool allPrinted() const { return allPrinted_; }
  std::string Table() { return table_.Text(); }

 private:
  static report::Table Headings() {
    report::Table table({report::kLeft, report::kLeft, report::kRight, report::kRight});
    table.Row({"job", "", "stamps", "tiles"});
    return table;
  }

  Printer printer_{kPrinterName};
  DriverExports driver_{ConfigLibraryPath(printer_.get())};
  report::Table table_ = Headings();
  bool allPrinted_ = true;
};

// What the status monitor's stand-in was told: the first document starts it, the others send it
// the printer's name. It is closed then.
std::string MonitorText() {
  const TestersValues monitor(L"StatusMonitor");
  const HWND window = FindWindowW(L"OSTRELStatusMonitor", nullptr);
  if (window != nullptr) {
    SendMessageTimeoutW(window, WM_CLOSE, 0, 0, SMTO_ABORTIFHUNG, 5000, nullptr);
  }
  return report::Heading("Status monitor: started " + std::to_string(monitor.Number(L"Starts")) +
                         " time(s) with \"" + Utf8(monitor.Text(L"Arguments")) + "\", told " +
                         std::to_string(monitor.Number(L"Records")) + " time(s) of \"" +
                         Utf8(monitor.Text(L"LastName")) + "\"");
}

std::wstring StemOf(const std::wstring& path) {
  const std::wstring file = path.substr(path.find_last_of(L'\\') + 1);
  return file.substr(0, file.find_last_of(L'.'));
}

int Run(int count, wchar_t** arguments) {
  const bool asksUser = count == 3 && std::wstring_view(arguments[1]) == L"--preferences";
  if (!asksUser && count < 3) {
    std::fputs("print_document FOLDER FILE... | --preferences FOLDER\n", stderr);
    return 2;
  }
  // All of them before the first job: the driver may leave the process in another folder.
  const std::wstring folder = FullPath(arguments[asksUser ? 2 : 1]);
  std::vector<std::wstring> files;
  for (int i = 2; i < count && !asksUser; ++i) {
    files.push_back(FullPath(arguments[i]));
  }
  InstallDriver(OstrelPackage(), ProgramFolder());
  InstallCompanion();
  InstallStatusMonitor();
  AddPrinterWithDriver(kPrinterName, kOstrelDriverName);
  Press press;
  if (asksUser) {
    const DriverDevmode before = AskRecord(press.printer(), nullptr, DM_OUT_BUFFER);
    press.Print(AskRecord(press.printer(), &before, DM_IN_PROMPT | DM_IN_BUFFER | DM_OUT_BUFFER),
                L"preferences", folder);
  }
  for (const std::wstring& path : files) {
    press.Print(RecordOfFile(press.printer(), path), StemOf(path), folder);
  }
  std::fputs(press.Table().c_str(), stdout);
  std::fputs(MonitorText().c_str(), stdout);
  return press.allPrinted() ? 0 : 1;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  try {
    return Run(count, arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "print_document: %s\n", error.what());
    return 1;
  }
}
