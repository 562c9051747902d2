#include "core/device_capabilities.h"

#include "core/language.h"
#include "core/paper_tables.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/settings_record.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace ostrel {
namespace {

constexpr std::uint32_t kMinExtentWidth_tenths_mm = 762;
constexpr std::uint32_t kMinExtentLength_tenths_mm = 1270;
constexpr std::uint32_t kMaxExtentWidth_tenths_mm = 2159;
constexpr std::uint32_t kMaxExtentLength_tenths_mm = 3556;
constexpr std::uint32_t kLandscapeAngle = 90;
constexpr std::uint32_t kTrueTypeAnswer = 6;  // DCTT_DOWNLOAD | DCTT_SUBDEV

constexpr std::uint32_t Words(std::uint32_t low, std::uint32_t high) {
  return low | (high << 16);
}

constexpr std::array<Point, 2> kResolutions = {
    {{kResolution600, kResolution600}, {kResolution1200, kResolution1200}}};

// The custom papers of the moment, at most as many as a list has room for.
struct CustomPapers {
  CustomPapers() : count(std::min(ReadCustomPapers(records), records.size())) {}
  std::span<const CustomPaperRecord> list() const { return {records.data(), count}; }

  std::array<CustomPaperRecord, kMaxCustomPapers> records = {};
  std::size_t count;
};

std::uint32_t CountWith(std::span<const CustomPaperRecord> customs) {
  return static_cast<std::uint32_t>(kPaperRows + customs.size());
}

// A name of the language library as a row of a list, cut to fit and filled with NUL.
void WriteNameRow(ModuleHandle module, std::uint32_t id, std::span<char16_t> row) {
  char16_t name[kPaperNameUnits] = {};
  LoadUiString(module, id, name);
  CopyText(row, FieldText(name));
}

void WriteTableNames(ModuleHandle module, char16_t* rows) {
  for (const PaperRow& paper : kPaperTable) {
    WriteNameRow(module, paper.nameStringId, {rows, kPaperNameUnits});
    rows += kPaperNameUnits;
  }
}

// All names that the driver could have ready. The custom rows are not handed out: the answer lists
// table sizes only, and callers' buffers are as large as that answer.
std::uint32_t AnswerMediaReady(ModuleHandle module, char16_t* output) {
  if (output != nullptr) {
    const MediaReadyNames names = BuildMediaReadyNames(module);
    std::copy_n(names.front().data(), kPaperRows * kPaperNameUnits, output);
  }
  return static_cast<std::uint32_t>(kPaperRows);
}

std::uint32_t CountSources(int missingTrays) {
  return static_cast<std::uint32_t>(static_cast<int>(kSourceRows) - missingTrays);
}

std::uint32_t AnswerResolutions(Point* output) {
  if (output != nullptr) {
    std::ranges::copy(kResolutions, output);
  }
  return static_cast<std::uint32_t>(kResolutions.size());
}

std::uint32_t AnswerFileDependencies(char16_t* output) {
  if (output != nullptr) {
    *output = u'\0';
  }
  return 0;
}

// The language library for a list of names: opened for a buffer only, and closed with the call.
class NamesModule {
 public:
  NamesModule(const char16_t* deviceName, const char16_t* output)
      : module_(output == nullptr ? nullptr : LoadLanguageModule(deviceName)) {}
  ModuleHandle get() const { return module_.get(); }

 private:
  ScopedModule module_;
};

}  // namespace

MediaReadyNames BuildMediaReadyNames(ModuleHandle module) {
  MediaReadyNames names = {};
  WriteTableNames(module, names.front().data());
  char16_t format[2 * kPaperNameUnits] = {};
  const bool hasFormat = LoadExistingString(module, kStringCustomPaperFormat, format);
  std::int64_t number = 0;
  for (PaperNameRow& row : std::span(names).subspan(kPaperRows)) {
    ++number;
    TextBuilder text(row);
    AddWithNumber(text, FieldText(format), number);
    if (!hasFormat || !text.fits()) {
      row.fill(u'\0');
      TextBuilder fallback(row);
      AddWithNumber(fallback, u"Custom %d", number);
    }
  }
  return names;
}

void WriteCustomPaperName(std::u16string_view name, std::size_t place, std::uint32_t width_mm,
                          std::uint32_t length_mm, std::span<char16_t, kPaperNameUnits> row) {
  const auto write = [&](auto&& addName) {
    std::ranges::fill(row, u'\0');
    TextBuilder text(row);
    addName(text);
    text.Add(u" (").AddNumber(width_mm).Add(u" x ").AddNumber(length_mm).Add(u"mm)");
    return text.fits();
  };
  if (!write([&](TextBuilder& text) { text.Add(name); })) {
    write([&](TextBuilder& text) {
      text.Add(u"Custom ").AddNumber(static_cast<std::int64_t>(place));
    });
  }
}

std::uint32_t AnswerPapers(std::span<const CustomPaperRecord> customs, std::uint16_t* output) {
  if (output != nullptr) {
    output = std::ranges::transform(kPaperTable, output, &PaperRow::id).out;
    std::ranges::transform(customs, output, [](const CustomPaperRecord& custom) {
      return static_cast<std::uint16_t>(custom.PaperId);
    });
  }
  return CountWith(customs);
}

std::uint32_t AnswerPaperSizes(std::span<const CustomPaperRecord> customs, Point* output) {
  const auto size = [](std::uint16_t width_px600, std::uint16_t length_px600) {
    return Point{static_cast<std::int32_t>(TenthsOfMillimetre(width_px600)),
                 static_cast<std::int32_t>(TenthsOfMillimetre(length_px600))};
  };
  if (output != nullptr) {
    for (const PaperRow& paper : kPaperTable) {
      *output++ = size(paper.width_px600, paper.length_px600);
    }
    for (const CustomPaperRecord& custom : customs) {
      *output++ = size(custom.Width, custom.Length);
    }
  }
  return CountWith(customs);
}

std::uint32_t AnswerPaperNames(std::span<const CustomPaperRecord> customs, ModuleHandle module,
                               char16_t* output) {
  if (output != nullptr) {
    WriteTableNames(module, output);
    char16_t* row = output + kPaperRows * kPaperNameUnits;
    for (std::size_t i = 0; i < customs.size(); ++i, row += kPaperNameUnits) {
      const CustomPaperRecord& custom = customs[i];
      WriteCustomPaperName(FieldText(custom.Name), i, WholeMillimetres(custom.Width),
                           WholeMillimetres(custom.Length),
                           std::span<char16_t, kPaperNameUnits>(row, kPaperNameUnits));
    }
  }
  return CountWith(customs);
}

std::uint32_t AnswerBins(int missingTrays, std::uint16_t* output) {
  constexpr std::size_t kFixedSources = 3;
  const std::uint32_t count = CountSources(missingTrays);
  if (output != nullptr) {
    // With one optional tray the answer is four, and both optional trays are written all the same.
    // That is kept.
    const std::size_t written = count > kFixedSources ? kSourceRows : kFixedSources;
    std::ranges::transform(std::span(kSourceTable).first(written), output, &SourceRow::binId);
  }
  return count;
}

std::uint32_t AnswerBinNames(int missingTrays, ModuleHandle module, char16_t* output) {
  const std::uint32_t count = CountSources(missingTrays);
  if (output != nullptr && module != nullptr) {
    for (const SourceRow& source : std::span(kSourceTable).first(count)) {
      WriteNameRow(module, source.nameStringId, {output, kBinNameUnits});
      output += kBinNameUnits;
    }
  }
  return count;
}

std::uint32_t DrvDeviceCapabilities(PrinterHandle printer, const char16_t* deviceName,
                                    std::uint16_t capability, void* output,
                                    const PublicDevmode* /*devmode*/) {
  auto* names = static_cast<char16_t*>(output);
  switch (capability) {
    case kDcFields:
      return kDriverDevmodeFields;
    case kDcPapers:
      return AnswerPapers(CustomPapers().list(), static_cast<std::uint16_t*>(output));
    case kDcPaperSize:
      return AnswerPaperSizes(CustomPapers().list(), static_cast<Point*>(output));
    case kDcMinExtent:
      return Words(kMinExtentWidth_tenths_mm, kMinExtentLength_tenths_mm);
    case kDcMaxExtent:
      return Words(kMaxExtentWidth_tenths_mm, kMaxExtentLength_tenths_mm);
    case kDcBins:
      return AnswerBins(CountMissingTrays(printer), static_cast<std::uint16_t*>(output));
    case kDcDuplex:
      return 1;
    case kDcSize:
      return kPublicDevmodeBytes;
    case kDcExtra:
      return kPrivateDevmodeBytes;
    case kDcVersion:
      return kDevmodeSpecVersion;
    case kDcDriver:
      return kDevmodeDriverVersion;
    case kDcBinNames:
      return AnswerBinNames(CountMissingTrays(printer), NamesModule(deviceName, names).get(),
                            names);
    case kDcPaperNames:
      return AnswerPaperNames(CustomPapers().list(), NamesModule(deviceName, names).get(), names);
    case kDcMediaReady:
      return AnswerMediaReady(NamesModule(deviceName, names).get(), names);
    case kDcEnumResolutions:
      return AnswerResolutions(static_cast<Point*>(output));
    case kDcFileDependencies:
      return AnswerFileDependencies(names);
    case kDcTrueType:
      return (kDriverDevmodeFields & kDmTTOption) != 0 ? kTrueTypeAnswer : 0;
    case kDcOrientation:
      return kLandscapeAngle;
    case kDcCopies:
      return kMaxCopies;
    case kDcCollate:
      return 1;
    case kDcBinAdjust:
    case kDcStaple:
    case kDcPrintRatePpm:
    case kDcColorDevice:
      return 0;
    default:
      return kCapabilityUnknown;
  }
}

}  // namespace ostrel
