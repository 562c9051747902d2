#include "report_data.h"

#include "core/settings_record.h"
#include "driver_exports.h"
#include "print_system_setup.h"
#include "report_kept.h"

#include <windows.h>
#include <winspool.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string_view>

namespace ostrel::report {
namespace {

using print_system::DriverExports;
using print_system::Printer;
using print_system::Utf8;
using print_system::Writable;

// ---- Capabilities -------------------------------------------------------------------------------

// Rows of the lists of names, in characters.
constexpr std::size_t kBinNameRow = 24;
constexpr std::size_t kPaperNameRow = 64;

struct CodeName {
  std::uint16_t code;
  const char* name;
};

constexpr CodeName kNumberCodes[] = {
    {DC_DUPLEX, "two-sided printing"},   {DC_COPIES, "most copies"},
    {DC_COLLATE, "collating"},           {DC_ORIENTATION, "landscape turned by degrees"},
    {DC_SIZE, "public record, bytes"},   {DC_EXTRA, "private record, bytes"},
    {DC_VERSION, "record version"},      {DC_DRIVER, "driver version"},
    {DC_TRUETYPE, "TrueType abilities"}, {DC_FILEDEPENDENCIES, "files depended on"},
    {DC_BINADJUST, "bin adjustments"},   {DC_STAPLE, "stapling"},
    {DC_PRINTRATEPPM, "pages a minute"}, {DC_COLORDEVICE, "colour"},
};

constexpr CodeName kCodesLeftOpen[] = {
    {DC_EMF_COMPLIANT, "DC_EMF_COMPLIANT"},
    {DC_DATATYPE_PRODUCED, "DC_DATATYPE_PRODUCED"},
    {DC_MANUFACTURER, "DC_MANUFACTURER"},
    {DC_MODEL, "DC_MODEL"},
    {DC_PERSONALITY, "DC_PERSONALITY"},
    {DC_PRINTRATE, "DC_PRINTRATE"},
    {DC_PRINTRATEUNIT, "DC_PRINTRATEUNIT"},
    {DC_PRINTERMEM, "DC_PRINTERMEM"},
    {DC_NUP, "DC_NUP"},
    {DC_MEDIATYPENAMES, "DC_MEDIATYPENAMES"},
    {DC_MEDIATYPES, "DC_MEDIATYPES"},
};

struct FieldName {
  std::uint32_t bit;
  const char* name;
};

constexpr FieldName kFieldNames[] = {
    {DM_ORIENTATION, "orientation"},
    {DM_PAPERSIZE, "paper size"},
    {DM_PAPERLENGTH, "paper length"},
    {DM_PAPERWIDTH, "paper width"},
    {DM_SCALE, "scale"},
    {DM_COPIES, "copies"},
    {DM_DEFAULTSOURCE, "source"},
    {DM_PRINTQUALITY, "print quality"},
    {DM_COLOR, "colour"},
    {DM_DUPLEX, "duplex"},
    {DM_YRESOLUTION, "y resolution"},
    {DM_TTOPTION, "TrueType option"},
    {DM_COLLATE, "collate"},
    {DM_FORMNAME, "form name"},
    {DM_MEDIATYPE, "media type"},
};

class CapabilityReader {
 public:
  explicit CapabilityReader(const std::wstring& printer) : printer_(printer) {}

  std::int32_t Number(std::uint16_t code) const { return Ask(code, nullptr); }

  // A list of `perRow` items a row; sized by a first call, as applications do it.
  template <typename Item>
  std::vector<Item> List(std::uint16_t code, std::size_t perRow = 1) const {
    // The driver writes more bins than it counts when one of its two optional trays is missing.
    constexpr std::size_t kSpareRows = 1;
    const std::int32_t count = std::max(Number(code), std::int32_t{0});
    std::vector<Item> rows((static_cast<std::size_t>(count) + kSpareRows) * perRow);
    const std::int32_t written = Ask(code, rows.data());
    rows.resize(static_cast<std::size_t>(std::clamp(written, std::int32_t{0}, count)) * perRow);
    return rows;
  }

  std::vector<std::wstring> Names(std::uint16_t code, std::size_t rowUnits) const {
    const std::vector<wchar_t> rows = List<wchar_t>(code, rowUnits);
    std::vector<std::wstring> names;
    for (std::size_t row = 0; row < rows.size(); row += rowUnits) {
      const std::wstring_view whole(&rows[row], rowUnits);
      names.emplace_back(whole.substr(0, whole.find(L'\0')));
    }
    return names;
  }

  Extent ExtentOf(std::uint16_t code) const {
    const auto packed = static_cast<DWORD>(Number(code));
    return {.width_tenths_mm = LOWORD(packed), .length_tenths_mm = HIWORD(packed)};
  }

 private:
  std::int32_t Ask(std::uint16_t code, void* output) const {
    return DeviceCapabilitiesW(printer_.c_str(), nullptr, code, static_cast<LPWSTR>(output),
                               nullptr);
  }

  const std::wstring& printer_;
};

// The n-th name, or none when the print system gave fewer names than numbers.
std::wstring NameAt(const std::vector<std::wstring>& names, std::size_t index) {
  return index < names.size() ? names[index] : std::wstring();
}

std::vector<Paper> GatherPapers(const CapabilityReader& reader) {
  const auto ids = reader.List<WORD>(DC_PAPERS);
  const auto sizes = reader.List<POINT>(DC_PAPERSIZE);
  const auto names = reader.Names(DC_PAPERNAMES, kPaperNameRow);
  if (sizes.size() != ids.size()) {
    throw std::runtime_error("the lists of papers differ in length");
  }
  std::vector<Paper> papers;
  for (std::size_t index = 0; index < ids.size(); ++index) {
    papers.push_back({.id = ids[index],
                      .width_tenths_mm = sizes[index].x,
                      .length_tenths_mm = sizes[index].y,
                      .name = NameAt(names, index)});
  }
  return papers;
}

std::vector<Bin> GatherBins(const CapabilityReader& reader) {
  const auto ids = reader.List<WORD>(DC_BINS);
  const auto names = reader.Names(DC_BINNAMES, kBinNameRow);
  std::vector<Bin> bins;
  for (std::size_t index = 0; index < ids.size(); ++index) {
    bins.push_back({.id = ids[index], .name = NameAt(names, index)});
  }
  return bins;
}

std::vector<Resolution> GatherResolutions(const CapabilityReader& reader) {
  const auto numbers = reader.List<LONG>(DC_ENUMRESOLUTIONS, 2);
  std::vector<Resolution> resolutions;
  for (std::size_t index = 0; index + 1 < numbers.size(); index += 2) {
    resolutions.push_back({.x_dpi = numbers[index], .y_dpi = numbers[index + 1]});
  }
  return resolutions;
}

Capabilities GatherCapabilities(const std::wstring& printerName) {
  const CapabilityReader reader(printerName);
  Capabilities all = {};
  all.fields = static_cast<std::uint32_t>(reader.Number(DC_FIELDS));
  for (const FieldName& field : kFieldNames) {
    if ((all.fields & field.bit) != 0) {
      all.fieldNames.emplace_back(field.name);
    }
  }
  all.papers = GatherPapers(reader);
  all.mediaReady = reader.Names(DC_MEDIAREADY, kPaperNameRow);
  all.bins = GatherBins(reader);
  all.resolutions = GatherResolutions(reader);
  all.minExtent = reader.ExtentOf(DC_MINEXTENT);
  all.maxExtent = reader.ExtentOf(DC_MAXEXTENT);
  for (const CodeName& row : kNumberCodes) {
    all.numbers.push_back({row.name, row.code, reader.Number(row.code)});
  }
  for (const CodeName& row : kCodesLeftOpen) {
    all.unknown.push_back({row.name, row.code, reader.Number(row.code)});
  }
  return all;
}

// ---- Document properties ------------------------------------------------------------------------

// One value to be sent: a member of the record, and what to put there.
struct WrongValue {
  const char* record;
  const char* field;
  std::size_t offset;
  std::size_t width_bytes;
  std::int64_t value;
};

constexpr std::size_t kWord = sizeof(std::int16_t);

// clang-format off
#define OSTREL_FIELD(record, type, start, member, value) \
  {record, #member, (start) + offsetof(type, member), sizeof(type::member), value}
#define PUBLIC_FIELD(member, value) OSTREL_FIELD("public", PublicDevmode, 0, member, value)
#define PRIVATE_FIELD(member, value) \
  OSTREL_FIELD("private", PrivateDevmode, kPublicDevmodeBytes, member, value)
// clang-format on

// Most of these are out of their range; some are odd but good, and show that these are kept.
// clang-format off
constexpr WrongValue kWrongValues[] = {
    PUBLIC_FIELD(dmOrientation, 3),
    PUBLIC_FIELD(dmPaperSize, 999),
    PUBLIC_FIELD(dmPaperLength, 1),
    PUBLIC_FIELD(dmPaperWidth, 1),
    PUBLIC_FIELD(dmCopies, 0),
    PUBLIC_FIELD(dmDefaultSource, 257),
    PUBLIC_FIELD(dmPrintQuality, 300),
    PUBLIC_FIELD(dmColor, 2),
    PUBLIC_FIELD(dmDuplex, 6),
    PUBLIC_FIELD(dmYResolution, 72),
    PUBLIC_FIELD(dmCollate, 5),
    PUBLIC_FIELD(dmMediaType, 0),
    PRIVATE_FIELD(ColorMode, 2),
    PRIVATE_FIELD(Duplex, 9),
    PRIVATE_FIELD(ReversePrint, 1),
    PRIVATE_FIELD(OutputSize, -5),
    PRIVATE_FIELD(ScaleFlag, 7),
    PRIVATE_FIELD(ScaleRadio, 1000),
    PRIVATE_FIELD(MultipleUp, 99),
    PRIVATE_FIELD(PageOrder, 2),
    PRIVATE_FIELD(SourceTray, 77),
    PRIVATE_FIELD(Rotate, 4),
    PRIVATE_FIELD(FeedOrient, 0),
    PRIVATE_FIELD(BookletSheets, 51),
    PRIVATE_FIELD(LeftRight, -1182),
    PRIVATE_FIELD(UpDown, -1181),
    PRIVATE_FIELD(FavoriteIndex, 40),
    PRIVATE_FIELD(Brightness[0], 101),
    PRIVATE_FIELD(Highlights[0], -4),
    PRIVATE_FIELD(GammaCorrection, 5),
    PRIVATE_FIELD(TonerSavingMode, 4),
    PRIVATE_FIELD(Thickness, -1),
    PRIVATE_FIELD(WatermarkData.PageWMSize, 5),
    PRIVATE_FIELD(WatermarkData.PageWMAngle, 91),
    PRIVATE_FIELD(WatermarkData.WMFontChosen, 1),
    PRIVATE_FIELD(WatermarkData.PageWMColor, 0x1000000),
    PRIVATE_FIELD(CustomPaperSize[0].Width, 100),
    PRIVATE_FIELD(UseSoftFont, 2),
};
// clang-format on
#undef PUBLIC_FIELD
#undef PRIVATE_FIELD
#undef OSTREL_FIELD

// A text member filled to its end, without a terminator.
struct EndlessText {
  const char* field;
  std::size_t offset;
  std::size_t units;
};

constexpr EndlessText kEndlessTexts[] = {
    {"Monitor", offsetof(DriverDevmode, privateDevmode.Monitor), 256},
    {"WatermarkData.PageWMName", offsetof(DriverDevmode, privateDevmode.WatermarkData.PageWMName),
     33},
};

using Record = std::vector<BYTE>;

PDEVMODEW AsDevmode(Record& record) {
  return reinterpret_cast<PDEVMODEW>(record.data());
}

std::int64_t ReadNumber(const Record& record, std::size_t offset, std::size_t width_bytes) {
  if (width_bytes == kWord) {
    std::int16_t value = 0;
    std::memcpy(&value, &record[offset], sizeof(value));
    return value;
  }
  std::int32_t value = 0;
  std::memcpy(&value, &record[offset], sizeof(value));
  return value;
}

std::wstring ReadText(const Record& record, std::size_t offset, std::size_t units) {
  std::wstring text(units, L'\0');
  std::memcpy(text.data(), &record[offset], units * sizeof(wchar_t));
  const std::size_t end = text.find(L'\0');
  return end == std::wstring::npos ? L"no terminator" : std::to_wstring(end) + L" characters";
}

void PutWrongValues(Record& record) {
  for (const WrongValue& wrong : kWrongValues) {
    std::memcpy(&record[wrong.offset], &wrong.value, wrong.width_bytes);
  }
  for (const EndlessText& text : kEndlessTexts) {
    const std::wstring filling(text.units, L'x');
    std::memcpy(&record[text.offset], filling.data(), text.units * sizeof(wchar_t));
  }
}

FieldChange Change(const char* recordName, const char* field, std::wstring sent,
                   std::wstring received) {
  const bool repaired = sent != received;
  return {recordName, field, std::move(sent), std::move(received), repaired};
}

std::vector<FieldChange> CompareRecords(const Record& sent, const Record& received) {
  std::vector<FieldChange> changes;
  for (const WrongValue& row : kWrongValues) {
    changes.push_back(Change(row.record, row.field,
                             std::to_wstring(ReadNumber(sent, row.offset, row.width_bytes)),
                             std::to_wstring(ReadNumber(received, row.offset, row.width_bytes))));
  }
  for (const EndlessText& row : kEndlessTexts) {
    changes.push_back(Change("private", row.field, ReadText(sent, row.offset, row.units),
                             ReadText(received, row.offset, row.units)));
  }
  return changes;
}

DocumentAnswers GatherDocumentAnswers(HANDLE printer, const std::wstring& printerName,
                                      Record& defaults) {
  DocumentAnswers all = {};
  LPWSTR name = Writable(printerName);
  all.size_bytes = DocumentPropertiesW(nullptr, printer, name, nullptr, nullptr, 0);
  if (all.size_bytes < static_cast<std::int32_t>(kDriverDevmodeBytes)) {
    throw std::runtime_error("DocumentPropertiesW tells no usable size");
  }
  defaults.resize(static_cast<std::size_t>(all.size_bytes));
  all.defaultResult =
      DocumentPropertiesW(nullptr, printer, name, AsDevmode(defaults), nullptr, DM_OUT_BUFFER);

  Record sent = defaults;
  PutWrongValues(sent);
  Record received(sent.size());
  all.repairResult = DocumentPropertiesW(nullptr, printer, name, AsDevmode(received),
                                         AsDevmode(sent), DM_IN_BUFFER | DM_OUT_BUFFER);
  all.changes = CompareRecords(sent, received);
  return all;
}

// ---- Questions that this print system doesn't ask -----------------------------------------------

std::string Outcome(bool success) {
  return success ? "yes" : "no, error " + std::to_string(GetLastError());
}

std::string QueryPrint(const DriverExports& driver, HANDLE printer, PDEVMODEW record) {
  wchar_t reason[256] = {};
  DEVQUERYPRINT_INFO info = {};
  info.cbSize = sizeof(info);
  info.Level = 1;
  info.hPrinter = printer;
  info.pDevMode = record;
  info.pszErrorStr = reason;
  info.cchErrorStr = static_cast<DWORD>(std::size(reason));
  return driver.DevQueryPrintEx(&info) != FALSE ? "yes" : "no: " + Utf8(reason);
}

std::string JobAttributes(const DriverExports& driver, HANDLE printer, PDEVMODEW record) {
  ATTRIBUTE_INFO_3 info = {};
  if (driver.DrvQueryJobAttributes(printer, record, 3, reinterpret_cast<LPBYTE>(&info)) == 0) {
    return "not answered";
  }
  return std::to_string(info.dwJobNumberOfPagesPerSide) + " page(s) a side, " +
         std::to_string(info.dwJobNumberOfCopies) + " copy(s), " +
         std::to_string(info.dmPrintQuality) + " x " + std::to_string(info.dmYResolution) + " dpi";
}

std::string ConvertRecord(const DriverExports& driver, const std::wstring& printerName,
                          const Record& in, DWORD mode, LONG outBytes) {
  Record source = in;
  Record out(kDriverDevmodeBytes);
  if (mode == CDM_CONVERT) {
    out = in;
  }
  LONG size = outBytes;
  SetLastError(ERROR_SUCCESS);
  const bool done = driver.DrvConvertDevMode(Writable(printerName), AsDevmode(source),
                                             AsDevmode(out), &size, mode) != FALSE;
  const std::string outcome = Outcome(done);
  return outcome + ", size " + std::to_string(size);
}

std::vector<DirectAnswer> GatherDirectAnswers(const std::wstring& libraryPath, HANDLE printer,
                                              const std::wstring& printerName,
                                              const Record& record) {
  const DriverExports driver(libraryPath);
  Record good = record;
  Record refused = record;
  AsDevmode(refused)->dmSize = 192;
  const auto convert = [&](DWORD mode, LONG bytes) {
    return ConvertRecord(driver, printerName, record, mode, bytes);
  };
  return {
      {"DevQueryPrintEx", "can the default record be printed?",
       QueryPrint(driver, printer, AsDevmode(good))},
      {"DevQueryPrintEx", "and one of a foreign size?",
       QueryPrint(driver, printer, AsDevmode(refused))},
      {"DrvQueryJobAttributes", "level 3 of the default record",
       JobAttributes(driver, printer, AsDevmode(good))},
      {"DrvConvertDevMode", "convert, 7896 bytes", convert(CDM_CONVERT, kDriverDevmodeBytes)},
      {"DrvConvertDevMode", "convert, 100 bytes", convert(CDM_CONVERT, 100)},
      {"DrvConvertDevMode", "to the old format, 304 bytes", convert(CDM_CONVERT351, 304)},
      {"DrvConvertDevMode", "to the old format, 303 bytes", convert(CDM_CONVERT351, 303)},
      {"DrvConvertDevMode", "driver default, 7896 bytes",
       convert(CDM_DRIVER_DEFAULT, kDriverDevmodeBytes)},
      {"DrvConvertDevMode", "driver default, 7895 bytes",
       convert(CDM_DRIVER_DEFAULT, kDriverDevmodeBytes - 1)},
  };
}

// Through the entry point, with a printer's handle: this print system passes none of its own.
std::vector<Bin> AskSourcesWithHandle(const DriverExports& driver, HANDLE printer,
                                      const std::wstring& printerName) {
  constexpr std::size_t kMostSources = 5;
  const auto ask = [&](WORD code, void* output) {
    return driver.DrvDeviceCapabilities(printer, Writable(printerName), code, output, nullptr);
  };
  std::array<WORD, kMostSources> ids = {};
  std::array<wchar_t, kMostSources* kBinNameRow> names = {};
  const std::size_t count = std::min<std::size_t>(ask(DC_BINS, ids.data()), kMostSources);
  ask(DC_BINNAMES, names.data());
  std::vector<Bin> sources;
  for (std::size_t index = 0; index < count; ++index) {
    sources.push_back({.id = ids[index], .name = &names[index * kBinNameRow]});
  }
  return sources;
}

std::wstring DriverNameOf(HANDLE printer) {
  DWORD needed = 0;
  GetPrinterW(printer, 2, nullptr, 0, &needed);
  std::vector<BYTE> buffer(needed);
  if (GetPrinterW(printer, 2, buffer.data(), needed, &needed) == FALSE) {
    print_system::ThrowLastError("GetPrinterW");
  }
  return reinterpret_cast<const PRINTER_INFO_2W*>(buffer.data())->pDriverName;
}

}  // namespace

PrinterReport GatherReport(const std::wstring& printerName) {
  const Printer printer(printerName);
  PrinterReport report = {};
  report.printerName = printerName;
  report.driverName = DriverNameOf(printer.get());
  report.configLibrary = print_system::ConfigLibraryPath(printer.get());
  report.kept = GatherKeptState(printer.get(), printerName, report.configLibrary);
  report.kept.sources =
      AskSourcesWithHandle(DriverExports(report.configLibrary), printer.get(), printerName);
  report.capabilities = GatherCapabilities(printerName);
  Record defaults;
  report.documentAnswers = GatherDocumentAnswers(printer.get(), printerName, defaults);
  report.directAnswers =
      GatherDirectAnswers(report.configLibrary, printer.get(), printerName, defaults);
  return report;
}

}  // namespace ostrel::report
