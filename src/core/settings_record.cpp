#include "core/settings_record.h"

#include "core/factory_watermarks.h"
#include "core/language.h"
#include "core/paper_tables.h"
#include "core/process_state.h"
#include "core/record_schema.h"
#include "core/text.h"

#include <cstddef>

namespace ostrel {
namespace {

constexpr std::int16_t kSourceAutomatic = 7;
constexpr std::int16_t kTrueTypeBitmap = 1;  // DMTT_BITMAP
constexpr std::uint32_t kMediaStandard = 1;  // DMMEDIA_STANDARD

// Of the name that the first language library gives to the record of no watermark.
constexpr std::size_t kTranslatedNameCharacters = 31;

}  // namespace

Result InitPublicDevmode(PublicDevmode* record, const char16_t* deviceName) {
  if (record == nullptr) {
    return kResultFail;
  }
  *record = {};
  CopyText(record->dmDeviceName, CallerText(deviceName));
  record->dmSpecVersion = kDevmodeSpecVersion;
  record->dmDriverVersion = kDevmodeDriverVersion;
  record->dmSize = kPublicDevmodeBytes;
  record->dmDriverExtra = kPrivateDevmodeBytes;
  record->dmFields = kDriverDevmodeFields;
  record->dmOrientation = 1;
  const LocalePaper& paper = PaperOfLocale();
  record->dmPaperSize = paper.id;
  record->dmPaperWidth = paper.width_tenths_mm;
  record->dmPaperLength = paper.length_tenths_mm;
  CopyText(record->dmFormName, paper.formName);
  // Not announced in dmFields; set all the same, since a scale of 0 would scale pages to nothing.
  record->dmScale = 100;
  record->dmCopies = 1;
  record->dmDefaultSource = kSourceAutomatic;
  record->dmPrintQuality = kResolution600;
  record->dmYResolution = kResolution600;
  record->dmColor = kColorMonochrome;
  record->dmDuplex = kDuplexSimplex;
  record->dmTTOption = kTrueTypeBitmap;
  record->dmCollate = 0;
  record->dmMediaType = kMediaStandard;
  return kResultOk;
}

Result InitPrivateDevmode(PrivateDevmode* record, const char16_t* driverName) {
  if (record == nullptr) {
    return kResultNullObject;
  }
  *record = {};
  record->Signature = kPrivateSignature;
  WriteSchemaDefaults(*record);

  Result result = kResultOk;
  if (driverName != nullptr) {
    const ScopedModule module(LoadLanguageModule(driverName));
    if (module.get() == nullptr) {
      result = kResultNoLanguage;
    } else {
      LoadUiString(module.get(), kStringDefaultFavorite, record->FavoriteName);
      TranslateFactoryText(Process().DefaultWatermarks[kNoWatermark].PageWMName, kUntranslatedNone,
                           module.get(), kStringNoWatermark, kTranslatedNameCharacters);
    }
  }
  record->WatermarkData = Process().DefaultWatermarks[kNoWatermark];
  return result;
}

bool InitDriverDevmode(DriverDevmode* record, const char16_t* deviceName,
                       const char16_t* driverName) {
  if (record == nullptr || Failed(InitPublicDevmode(&record->publicDevmode, deviceName)) ||
      Failed(InitPrivateDevmode(&record->privateDevmode, driverName))) {
    return false;
  }
  return record->publicDevmode.dmDriverExtra == kPrivateDevmodeBytes;
}

Result ValidatePrivateDevmode(PrivateDevmode* record) {
  if (record == nullptr) {
    return kResultNullObject;
  }
  EnforceSchema(*record);
  // A wrong signature is repaired like any other field. Whether a private part is this driver's own
  // is asked before, by the merge.
  record->Signature = kPrivateSignature;
  return kResultOk;
}

}  // namespace ostrel
