// Measures what applications wait for: each capability code and the three forms of
// DocumentPropertiesW, asked through the print system, of our driver and of the print system's own
// PostScript driver over the same printer description.
//
// Both are asked in turn within one run, so that the ratio means something on a busy machine too;
// each number is the median over many rounds. "direct" is the driver's own part: the same question
// put to the exported function. "spooler" is what the spooler takes out of "ours" for describing
// the printer, which the driver must ask for before it can make a record.
//
// Aims: no more than 1.5 times the other driver's time wherever it answers the same question, and
// less than a microsecond inside our own code for every code that needs no text. The lists of
// papers stand outside of both: they hold the user's own sizes, and bring the file of these in
// order first, which the other driver has nothing like. The second table tells what opening a sheet
// takes, the third what such a file costs, the last what the stamps of a job's pages cost.
#include "driver_exports.h"
#include "print_system_setup.h"
#include "sheet_cost.h"
#include "stamp_cost.h"
#include "store_cost.h"
#include "timing.h"

#include <windows.h>
#include <winspool.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace ostrel::print_system;
using ostrel::bench::Median;

constexpr wchar_t kOurPrinter[] = L"Ours";
constexpr wchar_t kTheirPrinter[] = L"Theirs";
constexpr std::int32_t kNotAnswered = -1;
constexpr double kRatioAim = 1.5;
constexpr double kOwnCodeAim_ns = 1000;

constexpr int kRounds = 41;
constexpr int kCallsThroughPrintSystem = 20;  // a round's calls for one number
constexpr int kDirectCalls = 500;
constexpr std::size_t kBufferBytes = 256 * 1024;  // enough for any list and any record

// ---- Time ---------------------------------------------------------------------------------------

using Call = std::function<std::int32_t()>;

double Nanoseconds(const Call& call, int calls) {
  const double all_us = ostrel::bench::Microseconds([&] {
    for (int index = 0; index < calls; ++index) {
      call();
    }
  });
  return all_us * 1e3 / calls;
}

// ---- Questions ----------------------------------------------------------------------------------

// One row of the table: a question to both drivers through the print system, and to ours directly.
struct Question {
  std::string name;
  bool needsText;
  bool needsFile;
  Call ours;
  Call theirs;
  std::optional<Call> direct;
  std::optional<Call> spooler;  // the spooler's share, where the driver can't do without it
};

struct CodeRow {
  WORD code;
  const char* name;
  bool isList;
  bool needsText;  // when there is a buffer
  bool needsFile;  // the user's settings file, which is read and written whole
};

// clang-format off
constexpr CodeRow kCodes[] = {
    {DC_FIELDS,           "DC_FIELDS",           false, false, false},
    {DC_PAPERS,           "DC_PAPERS",           true,  false, true},
    {DC_PAPERSIZE,        "DC_PAPERSIZE",        true,  false, true},
    {DC_MINEXTENT,        "DC_MINEXTENT",        false, false, false},
    {DC_MAXEXTENT,        "DC_MAXEXTENT",        false, false, false},
    {DC_BINS,             "DC_BINS",             true,  false, false},
    {DC_DUPLEX,           "DC_DUPLEX",           false, false, false},
    {DC_SIZE,             "DC_SIZE",             false, false, false},
    {DC_EXTRA,            "DC_EXTRA",            false, false, false},
    {DC_VERSION,          "DC_VERSION",          false, false, false},
    {DC_DRIVER,           "DC_DRIVER",           false, false, false},
    {DC_BINNAMES,         "DC_BINNAMES",         true,  true, false},
    {DC_ENUMRESOLUTIONS,  "DC_ENUMRESOLUTIONS",  true,  false, false},
    {DC_FILEDEPENDENCIES, "DC_FILEDEPENDENCIES", true,  false, false},
    {DC_TRUETYPE,         "DC_TRUETYPE",         false, false, false},
    {DC_PAPERNAMES,       "DC_PAPERNAMES",       true,  true, true},
    {DC_ORIENTATION,      "DC_ORIENTATION",      false, false, false},
    {DC_COPIES,           "DC_COPIES",           false, false, false},
    {DC_BINADJUST,        "DC_BINADJUST",        false, false, false},
    {DC_COLLATE,          "DC_COLLATE",          false, false, false},
    {DC_MEDIAREADY,       "DC_MEDIAREADY",       true,  true, false},
    {DC_STAPLE,           "DC_STAPLE",           false, false, false},
    {DC_PRINTRATEPPM,     "DC_PRINTRATEPPM",     false, false, false},
    {DC_COLORDEVICE,      "DC_COLORDEVICE",      false, false, false},
};
// clang-format on

Question CapabilityQuestion(const CodeRow& row, bool withBuffer, const DriverExports& driver,
                            std::vector<BYTE>& buffer) {
  auto* output = withBuffer ? reinterpret_cast<LPWSTR>(buffer.data()) : nullptr;
  const auto through = [code = row.code, output](const wchar_t* printer) -> Call {
    return [=] { return DeviceCapabilitiesW(printer, L"LPT1:", code, output, nullptr); };
  };
  const Call direct = [code = row.code, output, &driver] {
    return static_cast<std::int32_t>(driver.DrvDeviceCapabilities(
        nullptr, const_cast<PWSTR>(kOurPrinter), code, output, nullptr));
  };
  return {.name = row.name + std::string(row.isList && !withBuffer ? ", count" : ""),
          .needsText = row.needsText && withBuffer,
          .needsFile = row.needsFile,
          .ours = through(kOurPrinter),
          .theirs = through(kTheirPrinter),
          .direct = direct,
          .spooler = std::nullopt};
}

// A printer and the record that goes to and fro; each driver has its own.
struct RecordExchange {
  explicit RecordExchange(const std::wstring& name)
      : printer(name), name_(name), in(kBufferBytes), out(kBufferBytes) {
    Ask(AsRecord(in), nullptr, DM_OUT_BUFFER);
  }
  static PDEVMODEW AsRecord(std::vector<BYTE>& bytes) {
    return reinterpret_cast<PDEVMODEW>(bytes.data());
  }
  std::int32_t Ask(PDEVMODEW output, PDEVMODEW input, DWORD mode) {
    return DocumentPropertiesW(nullptr, printer.get(), Writable(name_), output, input, mode);
  }
  std::int32_t Size() { return Ask(nullptr, nullptr, 0); }
  std::int32_t Out() { return Ask(AsRecord(out), nullptr, DM_OUT_BUFFER); }
  std::int32_t InAndOut() { return Ask(AsRecord(out), AsRecord(in), DM_IN_BUFFER | DM_OUT_BUFFER); }

  Printer printer;
  std::wstring name_;
  std::vector<BYTE> in;
  std::vector<BYTE> out;
};

// What any driver pays that reads a printer's stored description: the two calls of level 2, for the
// size and for the block. The PostScript driver keeps what it needs in memory and doesn't ask.
std::int32_t AskDescription(RecordExchange& exchange) {
  DWORD needed = 0;
  GetPrinterW(exchange.printer.get(), 2, nullptr, 0, &needed);
  return GetPrinterW(exchange.printer.get(), 2, exchange.out.data(), kBufferBytes, &needed);
}

Question RecordQuestion(const char* name, std::int32_t (RecordExchange::*form)(),
                        RecordExchange& ours, RecordExchange& theirs, bool asksSpooler) {
  const Call spooler = [&ours] { return AskDescription(ours); };
  return {.name = std::string("DocumentProperties, ") + name,
          .needsText = true,
          .needsFile = false,
          .ours = [&ours, form] { return (ours.*form)(); },
          .theirs = [&theirs, form] { return (theirs.*form)(); },
          .direct = std::nullopt,
          .spooler = asksSpooler ? std::optional(spooler) : std::nullopt};
}

// ---- Results ------------------------------------------------------------------------------------

struct Result {
  std::string name;
  bool needsText;
  bool needsFile;
  double ours_ns;
  std::optional<double> theirs_ns;  // without a value where that driver doesn't answer
  std::optional<double> direct_ns;
  std::optional<double> spooler_ns;

  std::optional<double> ratio() const {
    return theirs_ns ? std::optional(ours_ns / *theirs_ns) : std::nullopt;
  }
};

Result Measure(const Question& question) {
  const bool bothAnswer = question.theirs() != kNotAnswered;
  std::vector<double> ours;
  std::vector<double> theirs;
  std::vector<double> direct;
  std::vector<double> spooler;
  // A question that reads and writes a file is asked less often: it takes milliseconds.
  const int calls = question.needsFile ? 1 : kCallsThroughPrintSystem;
  const int directCalls = question.needsFile || question.needsText ? calls : kDirectCalls;
  question.ours();
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(Nanoseconds(question.ours, calls));
    if (bothAnswer) {
      theirs.push_back(Nanoseconds(question.theirs, kCallsThroughPrintSystem));
    }
    if (question.spooler) {
      spooler.push_back(Nanoseconds(*question.spooler, kCallsThroughPrintSystem));
    }
    if (question.direct) {
      direct.push_back(Nanoseconds(*question.direct, directCalls));
    }
  }
  const auto medianOf = [](const std::vector<double>& samples) {
    return samples.empty() ? std::nullopt : std::optional(Median(samples));
  };
  return {.name = question.name,
          .needsText = question.needsText,
          .needsFile = question.needsFile,
          .ours_ns = Median(ours),
          .theirs_ns = medianOf(theirs),
          .direct_ns = medianOf(direct),
          .spooler_ns = medianOf(spooler)};
}

std::string Cell(const std::optional<double>& value, int decimals) {
  if (!value) {
    return "n/a";
  }
  char text[32] = {};
  std::snprintf(text, sizeof(text), "%.*f", decimals, *value);
  return text;
}

void PrintTable(const std::vector<Result>& results) {
  std::printf("%-28s %12s %12s %8s %12s %12s\n", "question", "ours, ns", "theirs, ns", "ratio",
              "direct, ns", "spooler, ns");
  for (const Result& row : results) {
    std::printf("%-28s %12.0f %12s %8s %12s %12s\n", row.name.c_str(), row.ours_ns,
                Cell(row.theirs_ns, 0).c_str(), Cell(row.ratio(), 2).c_str(),
                Cell(row.direct_ns, 0).c_str(), Cell(row.spooler_ns, 0).c_str());
  }
}

// How the rows stand to an aim; each that misses it is named.
void PrintAim(const char* aim, const std::vector<Result>& results, double limit,
              const std::function<std::optional<double>(const Result&)>& value) {
  int asked = 0;
  std::string missed;
  for (const Result& row : results) {
    const std::optional<double> reached = value(row);
    asked += reached ? 1 : 0;
    if (reached > limit) {
      missed += "  missed: " + row.name + ", " + Cell(reached, 2) + "\n";
    }
  }
  const auto misses = std::ranges::count(missed, '\n');
  std::printf("%s: met by %d of %d rows\n%s", aim, asked - static_cast<int>(misses), asked,
              missed.c_str());
}

void Install() {
  InstallDriver(OstrelPackage(), ProgramFolder());
  InstallCompanion();
  AddPrinterWithDriver(kOurPrinter, kOstrelDriverName);
  InstallDriver(PostScriptPackage(), ProgramFolder());
  AddPrinterWithDriver(kTheirPrinter, kPostScriptDriverName);
}

std::vector<Question> CapabilityQuestions(const DriverExports& driver, std::vector<BYTE>& buffer) {
  std::vector<Question> questions;
  for (const CodeRow& row : kCodes) {
    questions.push_back(CapabilityQuestion(row, false, driver, buffer));
    if (row.isList) {
      questions.push_back(CapabilityQuestion(row, true, driver, buffer));
    }
  }
  return questions;
}

// The codes that need a text, in a process that has made no settings context yet: nothing holds the
// language library then, and each call loads it anew.
std::vector<Question> FirstUseQuestions(const DriverExports& driver, std::vector<BYTE>& buffer) {
  std::vector<Question> questions = CapabilityQuestions(driver, buffer);
  std::erase_if(questions, [](const Question& question) { return !question.needsText; });
  for (Question& question : questions) {
    question.name += ", no context";
  }
  return questions;
}

void MeasureInto(std::vector<Result>& results, const std::vector<Question>& questions) {
  for (const Question& question : questions) {
    results.push_back(Measure(question));
  }
}

void Run() {
  Install();
  const DriverExports driver(ConfigLibraryPath(Printer(kOurPrinter).get()));
  std::vector<BYTE> buffer(kBufferBytes);
  std::vector<Result> results;
  MeasureInto(results, FirstUseQuestions(driver, buffer));

  RecordExchange ours(kOurPrinter);
  RecordExchange theirs(kTheirPrinter);
  MeasureInto(results, CapabilityQuestions(driver, buffer));
  MeasureInto(results,
              {RecordQuestion("size", &RecordExchange::Size, ours, theirs, false),
               RecordQuestion("out", &RecordExchange::Out, ours, theirs, true),
               RecordQuestion("in and out", &RecordExchange::InAndOut, ours, theirs, true)});
  PrintTable(results);
  std::printf("\n");
  PrintAim("aim: at most 1.5 times their time", results, kRatioAim,
           [](const Result& row) { return row.ratio(); });
  PrintAim("aim: less than 1000 ns of own code where no text is needed", results, kOwnCodeAim_ns,
           [](const Result& row) { return row.needsText ? std::nullopt : row.direct_ns; });
  ostrel::bench::MeasureSheets(kOurPrinter, kTheirPrinter);
  ostrel::bench::MeasureStores(ConfigLibraryPath(ours.printer.get()));
  ostrel::bench::MeasureStamps(kOurPrinter, ConfigLibraryPath(ours.printer.get()));
}

}  // namespace

int wmain() {
  try {
    Run();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "print_system_bench: %s\n", failure.what());
    return 1;
  }
  return 0;
}
