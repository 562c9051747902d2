// A pristine world for one test, bench or fuzz run: the in-memory platform with this driver
// installed in it, fresh process-wide words, and both in force for the length of the scope.
#pragma once

#include "core/page_state_table.h"
#include "core/process_state.h"
#include "platform/headless/headless_platform.h"

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

inline constexpr char16_t kLibraryPath[] =
    u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6ui.dll";
inline constexpr char16_t kEnglishLibraryPath[] =
    u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uienus.dll";
inline constexpr char16_t kBitmapLibraryPath[] =
    u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6uiResBmp.dll";
// The user's own store; a printer's or a driver's name follows.
inline constexpr char16_t kUserStore[] = u"S-1-5-21-1-2-3-1000\\SOFTWARE\\OstrelUPD\\";
inline constexpr char16_t kPrinterName[] = u"Front office";
inline constexpr char16_t kDriverName[] = u"Ostrel Hazel 2 Series";

// The suffixes of the languages that are shipped.
const std::vector<std::string>& Languages();

// The texts that a language's shipped library holds, read from its compiled form.
const headless::StringTable& Strings(std::string_view language);
inline const headless::StringTable& EnglishStrings() {
  return Strings("enus");
}

// All that a shipped library of resources holds, read from its compiled form: a language's, by its
// suffix, or the bitmaps', "ResBmp".
std::shared_ptr<const headless::Resources> LibraryResources(std::string_view suffix);

// The bytes of the English library in its compiled form.
const std::vector<std::byte>& EnglishResourceFile();

class TestWorld {
 public:
  // The driver's own library, the English library and the bitmaps are installed, and one printer,
  // kPrinterName of driver kDriverName, without a stored record. The country is Germany, so that
  // the locale's paper is A4; the user's language is English.
  TestWorld();
  // Frees what lives until the end of a process, and writes down for the test's end what the driver
  // left behind besides: see TakeUnfreed.
  ~TestWorld();
  TestWorld(const TestWorld&) = delete;
  TestWorld& operator=(const TestWorld&) = delete;

  // The values of a printer's or a driver's subkey in the user's own store, by lower-case name.
  headless::StoredValues& UserValues(std::u16string_view subkey);

  // An open handle to the printer.
  PrinterHandle OpenPrinter();

  // Frees what lives until the end of a process and says what is left beyond that: blocks, loaded
  // libraries beyond `expectedLoads`, open printers and files, bitmaps, windows and what they are
  // drawn on. Empty when all is gone.
  // Contexts keep their libraries loaded on purpose, so a test that made some tells how many loads
  // it expects.
  std::string Leftovers(std::size_t expectedLoads = 0);

  headless::HeadlessPlatform platform;
  ProcessState process;
  // The table of page states: from calloc, so that its megabyte costs nothing until it is used.
  std::unique_ptr<PageStateTable, decltype(&std::free)> pageStates;
  headless::HeadlessPrinter* printer;

 private:
  void FreeWhatLivesToTheEnd();

  ScopedProcessState scope_{process};
};

// What worlds have found unfreed at their ends since the last call; empty when all was clean.
std::string TakeUnfreed();

}  // namespace ostrel::test
