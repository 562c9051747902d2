// The stage of a job: a printer with its device context and a render driver behind it, the
// companion library, and a status monitor's window when there is one. What happens between the
// driver and all of these is written down in one order.
#pragma once

#include "core/factory_watermarks.h"
#include "core/text.h"
#include "job/document_events.h"
#include "job/render_driver_escapes.h"
#include "platform/headless/drawing_record.h"
#include "support/call_recorder.h"
#include "support/sheet_scene.h"
#include "support/test_world.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

// Texts of the debug lines.
inline constexpr char kMonitorTold[] = "OutputDebugStringW UI send START_MUN message to SM";
inline constexpr char kMonitorMissing[] =
    "OutputDebugStringW UI not find SM window, need launch sm process";

// The question for a printer's name, once.
inline const Calls kPrinterAsked = {"GetPrinterW level 2, size", "GetPrinterW level 2, block"};

// What a status monitor gets to see.
struct MonitorMessage {
  std::uint32_t message;
  std::uintptr_t wParam;
  std::intptr_t lParam;
  CopyData record = {};                  // of WM_COPYDATA
  std::vector<std::uint8_t> bytes = {};  // what it points to
};

// A repeated text of different letters.
inline WatermarkData RepeatedText() {
  WatermarkData record = kFactoryWatermarkRecords[kNoWatermark];
  record.PageWMIndex = 1;
  record.PageWMFlag = 1;
  CopyText(record.PageWMText, u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789");
  CopyText(record.PageWMTypeface, u"Arial");
  record.PageWMSize = 72;
  record.PageWMPosition = 5;
  record.PageWMRepeat = 1;
  return record;
}

class JobStage {
 public:
  JobStage() {
    current_ = this;
    world.platform.modules.Install(kCompanionPath);
    world.platform.modules.Export(kCompanionPath, "OlDocumentEvent",
                                  reinterpret_cast<ExportedFunction>(&OlDocumentEvent));
    device.onEscape = [this](std::int32_t code, std::span<const std::byte> input,
                             std::span<std::byte> output) {
      return AnswerEscape(code, input, output);
    };
    hdc = world.platform.graphics.OpenPrinter(device);
    printer = world.OpenPrinter();
    world.platform.faults.onAsked = [this](std::string_view operation) { WriteDown(operation); };
    world.platform.system.onSleep = [this] {
      recorder.calls.push_back("Sleep " + std::to_string(world.platform.system.sleeps_ms.back()));
      if (whileAsleep) {
        whileAsleep();
      }
      world.platform.windows.DeliverPosted();
    };
  }
  ~JobStage() {
    world.platform.faults.onAsked = nullptr;
    world.platform.graphics.DeleteDC(hdc);
    world.platform.print.ClosePrinter(printer);
    current_ = nullptr;
  }
  JobStage(const JobStage&) = delete;
  JobStage& operator=(const JobStage&) = delete;

  // ---- The job

  DocumentEvent Event(std::int32_t iEsc) { return {printer, hdc, iEsc, 0, nullptr, 0, nullptr}; }
  std::int32_t Raise(std::int32_t iEsc) { return DrvDocumentEvent(Event(iEsc)); }
  std::int32_t StartDoc() { return Raise(5); }
  std::int32_t EndPage() { return Raise(7); }

  // A window of the monitor's class appears.
  WindowHandle OpenMonitor(const std::u16string& className = u"ostrelstatusmonitor") {
    return world.platform.windows.CreatePlayedWindow(
        {0, 0, 10, 10},
        [this](std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
          return AnswerAsMonitor(message, wParam, lParam);
        },
        className);
  }

  // Makes letters so wide that a repeated text is shortened: only then the page's state matters.
  void MakeLettersWide() {
    world.platform.graphics.measureText = [](const LogFont& /*font*/, std::u16string_view text) {
      return Size{static_cast<std::int32_t>(text.size()) * 500, 700};
    };
  }

  // ---- The user's store

  void Store(std::u16string_view name, std::u16string_view text,
             std::u16string_view subkey = kPrinterName) {
    world.UserValues(subkey)[std::u16string(name)] = headless::StoredValue::Text(text);
  }
  void Store(std::u16string_view name, std::uint32_t number,
             std::u16string_view subkey = kPrinterName) {
    world.UserValues(subkey)[std::u16string(name)] = headless::StoredValue::Dword(number);
  }
  // A universal printer whose settings were made for another model.
  void MakeModelChanged(std::u16string_view subkey = kPrinterName) {
    Store(u"installmode", std::uint32_t{1}, subkey);
    Store(u"configprintername", u"Cedar 1 Series", subkey);
    Store(u"printername", u"Hazel 2 Series", subkey);
    Store(u"configprintinfo", u"Info.", subkey);
    Store(u"regtips2", u"Second.", subkey);
    Store(u"regtips", u"First.", subkey);
  }

  // ---- What happened

  // The calls but for those by which every other operation finds its memory and the user's store.
  Calls Story() const {
    static constexpr std::string_view kNoise[] = {
        "HeapAlloc",   "HeapFree",          "OpenProcessToken", "GetTokenInformation",
        "ConvertSid",  "LocalFree",         "CloseHandle",      "RegCreateKeyExW",
        "RegCloseKey", "GetModuleFileNameW"};
    return recorder.CallsExcept(kNoise);
  }
  std::vector<std::int32_t> Escapes() const {
    std::vector<std::int32_t> codes;
    for (const headless::DrawingOperation& operation : device.operations) {
      if (operation.call == headless::DrawingCall::kExtEscape) {
        codes.push_back(static_cast<std::int32_t>(operation.numbers.at(0)));
      }
    }
    return codes;
  }
  // What was drawn, escapes included.
  std::vector<std::string> Operations() const {
    std::vector<std::string> lines;
    for (const headless::DrawingOperation& operation : device.operations) {
      lines.push_back(headless::Describe(operation));
    }
    return lines;
  }
  // What stands between the two ends of the page's stamp; nothing, and a failure, where there are
  // no ends.
  std::vector<std::string> Stamp() const {
    const std::vector<std::string> lines = Operations();
    const auto begin = std::ranges::find_if(
        lines, [](const std::string& line) { return line.starts_with("ExtEscape(20482"); });
    if (begin == lines.end() || !lines.back().starts_with("ExtEscape(20484")) {
      ADD_FAILURE() << "no stamp between its ends";
      return {};
    }
    return {begin + 1, lines.end() - 1};
  }
  const std::vector<headless::HeadlessWindows::Box>& boxes() const {
    return world.platform.windows.boxes;
  }

  TestWorld world;
  headless::PrinterDevice device = {.page = {4960, 7015}};
  CallRecorder recorder{world};
  DeviceContext hdc = nullptr;
  PrinterHandle printer = nullptr;

  // What the render driver answers, and which escapes it doesn't know. An escape may have a result
  // of its own, whatever it has filled, and may fill the first bytes of its answer alone.
  WatermarkData watermark = kFactoryWatermarkRecords[kNoWatermark];
  std::int32_t pageState = 0;
  std::int32_t forbidden = 0;
  std::set<std::int32_t> unknownEscapes;
  std::map<std::int32_t, int> escapeResult;
  std::map<std::int32_t, std::size_t> answerBytes;
  // The first bytes of what it was given to fill, in the order of the escapes.
  std::vector<std::vector<std::byte>> outputsBefore;

  std::int32_t companionAnswer = 1;
  std::vector<DocumentEvent> companionCalls;
  std::function<void()> whileAsleep;
  std::vector<MonitorMessage> monitorMessages;

 private:
  static std::int32_t OlDocumentEvent(PrinterHandle hPrinter, DeviceContext context,
                                      std::int32_t iEsc, std::uint32_t cbIn, void* pvIn,
                                      std::uint32_t cbOut, void* pvOut) {
    current_->companionCalls.push_back({hPrinter, context, iEsc, cbIn, pvIn, cbOut, pvOut});
    current_->recorder.calls.emplace_back("OlDocumentEvent");
    return current_->companionAnswer;
  }

  int AnswerEscape(std::int32_t code, std::span<const std::byte> input,
                   std::span<std::byte> output) {
    recorder.calls.push_back("escape " + std::to_string(code) + ", " +
                             std::to_string(input.size()) + " in, " +
                             std::to_string(output.size()) + " out");
    if (!output.empty()) {
      outputsBefore.emplace_back(output.begin(), output.end());
    }
    if (unknownEscapes.contains(code)) {
      return 0;
    }
    const auto ownResult = escapeResult.find(code);
    const int result = ownResult == escapeResult.end() ? 1 : ownResult->second;
    const auto ownBytes = answerBytes.find(code);
    const std::size_t mostBytes =
        std::min(output.size(), ownBytes == answerBytes.end() ? output.size() : ownBytes->second);
    const auto answer = [&](const void* bytes, std::size_t size) {
      std::memcpy(output.data(), bytes, std::min(size, mostBytes));
      return result;
    };
    switch (code) {
      case 20481:
        return answer(&watermark, sizeof(watermark));
      case 20485:
        return answer(&forbidden, sizeof(forbidden));
      case 20492:
        return answer(&pageState, sizeof(pageState));
      default:
        return result;
    }
  }

  std::intptr_t AnswerAsMonitor(std::uint32_t message, std::uintptr_t wParam,
                                std::intptr_t lParam) {
    if (message == kWmDestroy) {
      return 0;
    }
    MonitorMessage seen = {message, wParam, lParam};
    if (message == 74) {
      seen.record = *reinterpret_cast<const CopyData*>(lParam);
      const auto* bytes = static_cast<const std::uint8_t*>(seen.record.lpData);
      seen.bytes.assign(bytes, bytes + seen.record.cbData);
    }
    monitorMessages.push_back(seen);
    recorder.calls.push_back("monitor gets " + std::to_string(message));
    return 1;
  }

  // Operations of the lists that the recorder doesn't stand before; those with a line of their own
  // are left out.
  void WriteDown(std::string_view operation) {
    static constexpr std::string_view kTold[] = {
        "MessageBoxW",      "FindWindowW",         "PostMessageW",
        "GetComputerNameW", "GetSystemDirectoryW", "SetCurrentDirectoryW",
        "ShellExecuteW",    "GetDeviceCaps",       "GetPrivateProfileStringW",
        "CreateProcessW"};
    if (std::ranges::find(kTold, operation) != std::end(kTold)) {
      recorder.calls.emplace_back(operation);
    }
  }

  static inline JobStage* current_ = nullptr;
};

// The units of a text in memory, low byte first.
inline std::u16string UnitsOf(std::span<const std::uint8_t> bytes) {
  std::u16string units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    units.push_back(static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8)));
  }
  return units;
}

}  // namespace ostrel::test
