// A scene for the frame of the sheets: the companion library, a common sheet that takes pages and
// results down, and the headers that the print system hands over.
#pragma once

#include "core/sheet_frame.h"
#include "pages/page_support.h"
#include "support/test_world.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ostrel::test {

inline constexpr char16_t kCompanionPath[] =
    u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\olunidrvui.dll";

// What the common sheet was asked for, in order.
struct SheetRequest {
  std::uint32_t function;
  SheetPage page;        // of function 1
  std::u16string title;  // of function 1, read when the page was added
  std::intptr_t first;   // of other functions
  std::intptr_t second;
  std::uintptr_t result;  // of the call, when the request came
  std::int16_t copies;    // of the caller's output, when the request came
};

// How often the companion was asked, and what it answers. The print system's functions take no
// state of the test's along, so there is one of them at a time.
struct Companion {
  std::int32_t documentAnswer = 1;
  std::int32_t deviceAnswer = 1;
  std::uintptr_t userData = 0;  // what it leaves in the call, when that isn't 0
  std::u16string model;         // what it lets the user pick, when that isn't empty
  std::vector<std::pair<SheetInfo*, std::intptr_t>> documentCalls;
  std::vector<std::pair<SheetInfo*, std::intptr_t>> deviceCalls;
};

class SheetScene {
 public:
  // A companion that exports both entries is installed, and the English library as it is shipped.
  SheetScene();
  // The English library has the shipped texts, and for each of `dialogs` a resource of that id.
  explicit SheetScene(const std::vector<std::uint32_t>& dialogs);
  ~SheetScene();
  SheetScene(const SheetScene&) = delete;
  SheetScene& operator=(const SheetScene&) = delete;

  // Calls the entry point for a reason.
  std::int32_t CallDocument(std::uint16_t reason, std::intptr_t lParam);
  std::int32_t CallDevice(std::uint16_t reason, std::intptr_t lParam);
  std::int32_t OpenDocument() {
    return CallDocument(kReasonInit, reinterpret_cast<std::intptr_t>(&document));
  }
  std::int32_t OpenDevice() {
    return CallDevice(kReasonInit, reinterpret_cast<std::intptr_t>(&device));
  }
  UIContext* context() const {
    return PointedAt<UIContext>(static_cast<std::intptr_t>(info.UserData));
  }

  // The pages that were added, and how often a result was set.
  std::vector<SheetRequest> Pages() const;
  std::size_t ResultsSet() const;

  TestWorld world;
  SheetInfo info = {};
  std::u16string printerName = kPrinterName;
  DocumentPropertyHeader document = {};
  DevicePropertyHeader device = {};
  DriverDevmode in;
  DriverDevmode out;
  Companion companion;
  std::vector<SheetRequest> requests;
  // Pages that the common sheet takes before it refuses one, and how.
  std::size_t pagesTaken = 100;
  std::intptr_t refusal = -1;
};

}  // namespace ostrel::test
