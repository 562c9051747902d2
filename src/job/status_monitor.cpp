#include "job/status_monitor.h"

#include "core/driver_directory.h"
#include "core/own_place.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/text.h"

#include <array>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::u16string_view kClassEnding = u"StatusMonitor";
constexpr std::u16string_view kMonitorEnding = u"sm.exe";
constexpr std::u16string_view kEnvelopeEnding = u"PCL6EnvDlg.exe";
constexpr char16_t kEnvelopeTitle[] = u"ENV";

// The monitor prepares itself between the message and the name.
constexpr std::uint32_t kPreparation_ms = 100;
constexpr std::uint32_t kStart_ms = 500;

static_assert(kStartMonitorMessage == kWmUser + 20);
static_assert(kMonitorNameBytes == sizeof(ProcessState::MonitorPrinterName));

using Path = std::array<char16_t, kMaxPathUnits>;

// A file name behind this library's prefix. Result: false when the prefix isn't known, or the name
// doesn't fit.
bool WriteOwnName(std::span<char16_t> name, std::u16string_view ending) {
  const OwnPlace place;
  TextBuilder text(name);
  text.Add(place.modulePrefix()).Add(ending);
  return !place.modulePrefix().empty() && text.fits();
}

CopyData& FillMonitorCopyData(std::u16string_view printerName) {
  ProcessState& process = Process();
  CopyText(process.MonitorPrinterName, printerName);
  process.MonitorCopyData = {
      .dwData = 0, .cbData = kMonitorNameBytes, .lpData = process.MonitorPrinterName};
  return process.MonitorCopyData;
}

void TellMonitor(WindowHandle window, std::u16string_view printerName) {
  CopyData& record = FillMonitorCopyData(printerName);
  World().windows.PostMessageW(window, kStartMonitorMessage, 0, 0);
  World().debug.OutputDebugStringW(u"UI send START_MUN message to SM");
  World().system.Sleep(kPreparation_ms);
  World().windows.SendMessageW(window, kWmCopyData, 0, reinterpret_cast<std::intptr_t>(&record));
}

// The system directory, without a separator at the end; empty when the system doesn't tell.
Path SystemDirectory() {
  Path directory = {};
  const std::uint32_t length =
      World().system.GetSystemDirectoryW(directory.data(), std::uint32_t{kMaxPathUnits});
  if (length >= directory.size()) {
    directory.front() = u'\0';
  }
  return directory;
}

}  // namespace

bool WriteMonitorClassName(MonitorClassName className) {
  if (!WriteOwnName(className, {})) {
    return false;
  }
  World().locale.CharUpperW(className.data());
  const std::size_t prefixUnits = FieldText(className).size();
  return CopyText(className.subspan(prefixUnits), kClassEnding) == kClassEnding.size();
}

void NotifyStatusMonitor(PrinterHandle printer) {
  if (printer == nullptr) {
    return;
  }
  Path printerName = {};
  Path className = {};
  if (!ReadPrinterName(printer, printerName) || !WriteMonitorClassName(className)) {
    return;
  }
  if (const WindowHandle window = World().windows.FindWindowW(className.data());
      window != nullptr) {
    TellMonitor(window, FieldText(printerName));
    return;
  }
  World().debug.OutputDebugStringW(u"UI not find SM window, need launch sm process");
  LaunchStatusMonitor(printerName.data());
  // Whether its window is there by now changes nothing: it knows the name.
  World().windows.FindWindowW(className.data());
}

void LaunchStatusMonitor(const char16_t* printerName) {
  const Path directory = SystemDirectory();
  Path name = {};
  Path program = {};
  TextBuilder text(program);
  if (directory.front() == u'\0' || !WriteOwnName(name, kMonitorEnding) ||
      !text.Add(FieldText(directory)).Add(u'\\').Add(FieldText(name)).fits()) {
    return;
  }
  World().system.SetCurrentDirectoryW(directory.data());
  World().shell.ShellExecuteW(nullptr, program.data(), printerName, kSwHide);
  World().system.Sleep(kStart_ms);
}

bool WriteEnvelopeHelperName(std::span<char16_t, kMaxPathUnits> programName) {
  return WriteOwnName(programName, kEnvelopeEnding);
}

void LaunchEnvelopeHelper(const char16_t* programName) {
  // A fixed text of the driver package, not the queue's name.
  Path printer = {};
  ReadConfigValue(printer, u"Print", u"PrinterName");
  Path directory = {};
  ReadDriverDirectory(directory);
  Path program = {};
  TextBuilder text(program);
  text.Add(FieldText(directory)).Add(kDriverVersionFolder).Add(u'\\');
  text.Add(CallerText(programName));
  if (directory.front() == u'\0' || CallerText(programName).empty() || !text.fits()) {
    return;
  }
  ProcessInformation started = {};
  World().system.CreateProcessW(program.data(), printer.data(), kNormalPriority, kEnvelopeTitle,
                                &started);
}

}  // namespace ostrel
