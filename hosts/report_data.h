// What the print system tells about one printer, gathered through the functions that an application
// calls, as plain data. report_text and report_json show it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ostrel::report {

struct Paper {
  std::uint16_t id;
  std::int32_t width_tenths_mm;
  std::int32_t length_tenths_mm;
  std::wstring name;
};

struct Bin {
  std::uint16_t id;
  std::wstring name;
};

struct Resolution {
  std::int32_t x_dpi;
  std::int32_t y_dpi;
};

struct Extent {
  std::uint16_t width_tenths_mm;
  std::uint16_t length_tenths_mm;
};

// A capability code whose answer is one number.
struct NumberAnswer {
  std::string name;
  std::uint16_t code;
  std::int32_t answer;
};

struct Capabilities {
  std::uint32_t fields;
  std::vector<std::string> fieldNames;
  std::vector<Paper> papers;
  std::vector<std::wstring> mediaReady;
  std::vector<Bin> bins;
  std::vector<Resolution> resolutions;
  Extent minExtent;
  Extent maxExtent;
  std::vector<NumberAnswer> numbers;
  std::vector<NumberAnswer> unknown;  // codes of the platform that this driver doesn't answer
};

// One member of the settings record, as it was sent and as it came back.
struct FieldChange {
  std::string record;  // "public", "private"
  std::string field;
  std::wstring sent;
  std::wstring received;
  bool repaired;
};

struct DocumentAnswers {
  std::int32_t size_bytes;
  std::int32_t defaultResult;  // of the call that asks for the printer's record
  std::int32_t repairResult;   // of the call that sends the wrong values
  std::vector<FieldChange> changes;
};

// A question that this print system doesn't ask by itself, put to the driver's exported function.
struct DirectAnswer {
  std::string entryPoint;
  std::string question;
  std::string answer;
};

// What is kept for the printer and its user, and what the driver makes of it.
struct KeptState {
  std::wstring model;  // the one that the user chose; empty for none
  std::uint64_t familyFlags;
  std::string family;
  std::uint16_t languageId;
  std::wstring languageSuffix;
  std::wstring languageLibrary;  // the file's name
  bool decimalComma;
  bool rightToLeft;
  std::vector<bool> optionalTrays;  // tray 2 and on, whether it is fitted
  std::vector<Bin> sources;         // asked with a printer's handle, which shows the trays
  std::wstring settingsFile;
  std::vector<Paper> customPapers;  // in the order of the file
};

struct PrinterReport {
  std::wstring printerName;
  std::wstring driverName;
  std::wstring configLibrary;
  KeptState kept;
  Capabilities capabilities;
  DocumentAnswers documentAnswers;
  std::vector<DirectAnswer> directAnswers;
};

// Stores what an installer, the user's choice of a model and a few pages would have stored: a
// model, a fitted tray and two paper sizes of the user's own.
void StoreSamples(const std::wstring& printerName);

// Throws std::runtime_error when the print system fails.
PrinterReport GatherReport(const std::wstring& printerName);

}  // namespace ostrel::report
