// What the driver keeps: printer data, the user's values and the settings file.
#include "report_kept.h"

#include "config/setting_stores.h"
#include "core/language.h"
#include "core/model_table.h"
#include "core/paper_tables.h"
#include "core/printer_store.h"
#include "core/text.h"
#include "driver_words.h"
#include "print_system_setup.h"

#include <windows.h>
#include <winspool.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace ostrel::report {
namespace {

using print_system::DriverWords;
using print_system::Printer;
using win32::Utf16;
using win32::Wide;

struct FamilyName {
  std::uint64_t flag;
  const char* name;
};
constexpr FamilyName kFamilyNames[] = {
    {Alder, "Alder"}, {Birch, "Birch"},       {Cedar, "Cedar"},     {Dogwood, "Dogwood"},
    {Elm, "Elm"},     {Fir, "Fir"},           {Ginkgo, "Ginkgo"},   {Hazel, "Hazel"},
    {Kauri, "Kauri"}, {Ironwood, "Ironwood"}, {Juniper, "Juniper"},
};

std::wstring TextOf(std::span<const char16_t> field) {
  const std::u16string_view text = FieldText(field);
  return {text.begin(), text.end()};
}

CustomPaperRecord SamplePaper(std::uint32_t id, std::u16string_view name, std::uint16_t width_px600,
                              std::uint16_t length_px600) {
  constexpr std::uint32_t kMillimetres = 1;
  CustomPaperRecord record = {};
  record.Width = width_px600;
  record.Length = length_px600;
  CopyText(record.Name, name);
  record.PaperId = id;
  record.Unit = kMillimetres;
  record.ExactWidth = width_px600;
  record.ExactLength = length_px600;
  return record;
}

void Require(bool done, const char* what) {
  if (!done) {
    throw std::runtime_error(std::string("can't store ") + what);
  }
}

void GatherModel(KeptState& kept, const DriverWords& driver, const std::wstring& printerName) {
  char16_t model[kUserTextUnits] = {};
  ReadUserValue(u"PrinterName", model, Utf16(printerName.c_str()));
  SelectModelFlags(Utf16(printerName.c_str()));
  kept.model = TextOf(model);
  kept.familyFlags = driver.words().ModelFlags;
  for (const FamilyName& row : kFamilyNames) {
    if (row.flag == kept.familyFlags) {
      kept.family = row.name;
    }
  }
}

void GatherLanguage(KeptState& kept, const DriverWords& driver, const std::wstring& printerName) {
  char16_t suffix[kLanguageSuffixUnits] = {};
  char16_t library[kMaxPathUnits + kLanguageSuffixUnits] = {};
  GetLanguageSuffix(Utf16(printerName.c_str()), suffix);
  BuildLanguageLibraryName(Utf16(printerName.c_str()), library);
  kept.languageId = GetUserDefaultUILanguage();
  kept.languageSuffix = TextOf(suffix);
  kept.languageLibrary = TextOf(library);
  kept.decimalComma = driver.words().DecimalCommaLanguage;
  kept.rightToLeft = driver.words().RightToLeftLanguage;
}

void GatherTrays(KeptState& kept, HANDLE printer) {
  std::uint32_t size = 0;
  const HeapBlock<TrayBlock> block = ReadTrayBlock(win32::ToPrinter(printer), &size);
  for (int tray = 0; tray < kOptionalTrays; ++tray) {
    kept.optionalTrays.push_back(block &&
                                 block->Trays[static_cast<std::size_t>(tray)] == kTrayFitted);
  }
}

void GatherCustomPapers(KeptState& kept) {
  char16_t path[kMaxPathUnits] = {};
  GetSettingsFilePath(path);
  kept.settingsFile = TextOf(path);
  std::array<CustomPaperRecord, kMaxCustomPapers> records = {};
  const std::size_t count = ReadCustomPapers(records);
  for (const CustomPaperRecord& record : std::span(records).first(count)) {
    kept.customPapers.push_back(
        {.id = static_cast<std::uint16_t>(record.PaperId),
         .width_tenths_mm = static_cast<std::int32_t>(TenthsOfMillimetre(record.Width)),
         .length_tenths_mm = static_cast<std::int32_t>(TenthsOfMillimetre(record.Length)),
         .name = TextOf(record.Name)});
  }
}

}  // namespace

void StoreSamples(const std::wstring& printerName) {
  const Printer printer(printerName);
  const DriverWords driver(print_system::ConfigLibraryPath(printer.get()));
  Require(WriteUserString(u"PrinterName", u"Hazel 2 Series", Utf16(printerName.c_str())),
          "the user's model");
  Require(WriteTrayBlock(win32::ToPrinter(printer.get()), {{kTrayFitted, 0}}), "the trays");
  const CustomPaperStore papers;
  Require(InitSettingsFile() &&
              papers.Save(u"Index card", SamplePaper(288, u"Index card", 1800, 3000)) &&
              papers.Save(u"Window label", SamplePaper(289, u"Window label", 2362, 3543)),
          "custom papers");
}

KeptState GatherKeptState(HANDLE printer, const std::wstring& printerName,
                          const std::wstring& libraryPath) {
  const DriverWords driver(libraryPath);
  KeptState kept = {};
  GatherModel(kept, driver, printerName);
  GatherLanguage(kept, driver, printerName);
  GatherTrays(kept, printer);
  GatherCustomPapers(kept);
  return kept;
}

}  // namespace ostrel::report
