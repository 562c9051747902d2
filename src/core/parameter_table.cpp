#include "core/parameter_table.h"

#include "core/text.h"
#include "core/ui_context.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace ostrel {
namespace {

struct ParameterRow {
  std::uint8_t slot;
  const char* key;
  std::uint16_t offset;
  std::uint16_t width;
};

constexpr std::size_t kFilledSlots = 69;

// A field's key is its name in the record; its place and width are the record's own.
#define OSTREL_SLOT(slot, key) \
  { slot, #key, offsetof(PrivateDevmode, key), sizeof(PrivateDevmode::key) }

// clang-format off
constexpr std::array<ParameterRow, kFilledSlots> kParameterTable = {{
    OSTREL_SLOT(0, OutputSize),
    OSTREL_SLOT(1, ScaleFlag),
    OSTREL_SLOT(2, ScaleRadio),
    OSTREL_SLOT(3, ReversePrint),
    OSTREL_SLOT(4, FeedOrient),
    OSTREL_SLOT(5, PosterPrint),
    OSTREL_SLOT(6, MultipleUp),
    OSTREL_SLOT(7, PageOrder),
    OSTREL_SLOT(8, PageBorder),
    OSTREL_SLOT(9, MixedOrient),
    OSTREL_SLOT(10, PosterType),
    OSTREL_SLOT(11, CropMarks),
    OSTREL_SLOT(12, BookletPrint),
    OSTREL_SLOT(13, BookletBinding),
    OSTREL_SLOT(14, BookletCoverType),
    OSTREL_SLOT(15, BookletCoverSource),
    OSTREL_SLOT(16, BookletPrintCover),
    OSTREL_SLOT(17, BookletPrintOnCoverOutside),       // reads "BookletPrintOnCover", like 27
    OSTREL_SLOT(18, BoookletPrintOnBackCoverOutside),  // reads "BoookletPrintOnBack", like 28
    OSTREL_SLOT(19, Rotate),
    OSTREL_SLOT(20, ImageShift),
    OSTREL_SLOT(21, MarginsAutoFit),
    OSTREL_SLOT(22, Side),
    OSTREL_SLOT(23, PrintPosition),
    OSTREL_SLOT(24, AdjustPrintPosition),
    OSTREL_SLOT(25, LeftRight),
    OSTREL_SLOT(26, UpDown),
    OSTREL_SLOT(27, BookletPrintOnCoverInside),
    OSTREL_SLOT(28, BoookletPrintOnBackCoverInside),
    OSTREL_SLOT(29, FavoriteName),
    OSTREL_SLOT(30, FavoriteIndex),
    OSTREL_SLOT(31, FirstPageOnly),
    OSTREL_SLOT(32, WatermarkData),
    OSTREL_SLOT(33, OverlayFlag),
    OSTREL_SLOT(34, OverlayFileName),
    // 35 to 39 are retired.
    OSTREL_SLOT(40, CustomPaperSize),
    OSTREL_SLOT(41, SourceTray),
    OSTREL_SLOT(42, ManualDuplex),
    // 43 and 44 are retired.
    OSTREL_SLOT(45, DuplexIndex),
    // 46 is retired.
    OSTREL_SLOT(47, FinessMode),
    OSTREL_SLOT(48, Side2),
    OSTREL_SLOT(49, TonerSavingMode),
    OSTREL_SLOT(50, ScreenType),
    OSTREL_SLOT(51, Duplex),
    OSTREL_SLOT(52, ColorMode),
    // 53 is retired.
    OSTREL_SLOT(54, PrintMode),
    OSTREL_SLOT(55, ImageType),  // spans two words, the image type and the ICM type
    OSTREL_SLOT(56, ApplyElements),
    OSTREL_SLOT(57, DocumentElement),
    OSTREL_SLOT(58, Brightness),
    OSTREL_SLOT(59, Constrast),
    OSTREL_SLOT(60, AdjustBalance),
    OSTREL_SLOT(61, TargetColor),
    OSTREL_SLOT(62, Highlights),
    OSTREL_SLOT(63, Midtones),
    OSTREL_SLOT(64, Shadows),
    OSTREL_SLOT(65, Profile),
    OSTREL_SLOT(66, ColorTemperature),
    OSTREL_SLOT(67, GammaCorrection),
    OSTREL_SLOT(68, Monitor),
    OSTREL_SLOT(69, InputImage),
    OSTREL_SLOT(70, Saturation),
    OSTREL_SLOT(71, ImageInputIndex),
    OSTREL_SLOT(72, Mismatch),
    OSTREL_SLOT(73, Rotate180),
    OSTREL_SLOT(74, Mirror),
    OSTREL_SLOT(75, Thickness),
    OSTREL_SLOT(76, Negative),
    OSTREL_SLOT(77, sLaserTestAPResolution),  // reads "sLaserTestAPResolut"
}};
// clang-format on
#undef OSTREL_SLOT

// Slots that once held a key. They stay zero: a slot's number is its key's identity.
constexpr std::array<std::uint8_t, kUIParamSlots - kFilledSlots> kRetiredSlots = {
    35, 36, 37, 38, 39, 43, 44, 46, 53};

constexpr bool EverySlotIsFilledOrRetired() {
  std::array<int, kUIParamSlots> uses = {};
  for (const ParameterRow& row : kParameterTable) {
    ++uses.at(row.slot);
  }
  for (const std::uint8_t slot : kRetiredSlots) {
    ++uses.at(slot);
  }
  return std::ranges::all_of(uses, [](int count) { return count == 1; });
}
static_assert(EverySlotIsFilledOrRetired());
static_assert(std::ranges::is_sorted(kParameterTable, {}, &ParameterRow::slot));

// The key in a slot. Table builders always terminate it, a foreign hand may not have.
std::string_view KeyOf(const UIParamSlot& slot) {
  return {slot.Key, strnlen(slot.Key, sizeof(slot.Key))};
}

// The first slot that holds the key; null when none does. An empty key finds the first empty slot.
const UIParamSlot* FindSlot(const UIContext& context, const char* key) {
  if (key == nullptr) {
    return nullptr;
  }
  const auto slot = std::ranges::find(context.uiParams, std::string_view(key), KeyOf);
  return slot == context.uiParams.end() ? nullptr : &*slot;
}

std::int16_t OneUnlessWithin(std::int16_t& word, std::int16_t minimum, std::int16_t maximum) {
  if (word < minimum || word > maximum) {
    word = 1;
  }
  return word;
}

// The 16-bit public word that a flag writes; null for any other flag.
std::int16_t* PlainWord(PublicDevmode& record, std::uint32_t flag) {
  switch (flag) {
    case kDmOrientation:
      return &record.dmOrientation;
    case kDmPaperSize:
      return &record.dmPaperSize;
    case kDmPaperLength:
      return &record.dmPaperLength;
    case kDmPaperWidth:
      return &record.dmPaperWidth;
    case kDmScale:
      return &record.dmScale;
    case kDmCopies:
      return &record.dmCopies;
    case kDmDefaultSource:
      return &record.dmDefaultSource;
    case kDmPrintQuality:
      return &record.dmPrintQuality;
    case kDmColor:
      return &record.dmColor;
    case kDmDuplex:
      return &record.dmDuplex;
    case kDmYResolution:
      return &record.dmYResolution;
    case kDmCollate:
      return &record.dmCollate;
    default:
      return nullptr;
  }
}

}  // namespace

void BuildUIParamTable(UIContext* context) {
  context->uiParams = {};
  for (const ParameterRow& row : kParameterTable) {
    UIParamSlot& slot = context->uiParams[row.slot];
    const std::string_view key = std::string_view(row.key).substr(0, kUIParamKeyBytes - 1);
    key.copy(slot.Key, key.size());
    slot.Width = row.width;
    slot.Offset = row.offset;
  }
}

Result GetUIParam(const UIContext* context, const char* key, void* buffer,
                  std::uint32_t sizeBytes) {
  if (context == nullptr || context->privatePointer == nullptr) {
    return kResultNullObject;
  }
  const UIParamSlot* slot = FindSlot(*context, key);
  if (slot == nullptr) {
    return kResultUnknownKey;
  }
  if (sizeBytes != slot->Width || (buffer == nullptr && sizeBytes != 0)) {
    return kResultWidthMismatch;
  }
  if (sizeBytes != 0) {
    std::memcpy(buffer, reinterpret_cast<const std::byte*>(context->privatePointer) + slot->Offset,
                sizeBytes);
  }
  return kResultOk;
}

Result SetUIParam(UIContext* context, const char* key, const void* data, std::uint32_t sizeBytes) {
  if (context == nullptr || context->privatePointer == nullptr) {
    return kResultFail;
  }
  const UIParamSlot* slot = FindSlot(*context, key);
  if (slot == nullptr) {
    return kResultUnknownKey;
  }
  if (sizeBytes != slot->Width || (data == nullptr && sizeBytes != 0)) {
    return kResultWidthMismatch;
  }
  if (sizeBytes != 0) {
    std::memcpy(reinterpret_cast<std::byte*>(context->privatePointer) + slot->Offset, data,
                sizeBytes);
  }
  return kResultOk;
}

Result GetDevmodeField(UIContext* context, std::uint32_t flag, std::int16_t* value) {
  if (context == nullptr || context->publicPointer == nullptr || value == nullptr) {
    return kResultNullObject;
  }
  PublicDevmode& record = *context->publicPointer;
  switch (flag) {
    case kDmOrientation:
      // 0 stands, although a merge refuses it.
      *value = OneUnlessWithin(record.dmOrientation, 0, 2);
      break;
    case kDmPaperSize:
      *value = record.dmPaperSize;
      break;
    case kDmPaperLength:
      *value = record.dmPaperLength;
      break;
    case kDmPaperWidth:
      *value = record.dmPaperWidth;
      break;
    case kDmColor:
      *value = record.dmColor;
      break;
    case kDmScale:
      // Scaling is the layout's own; the public word never takes part in it.
      *value = 100;
      break;
    case kDmCopies:
      *value = OneUnlessWithin(record.dmCopies, 1, kMaxCopies);
      break;
    case kDmDuplex:
      *value = OneUnlessWithin(record.dmDuplex, 1, kDuplexPublicMax);
      break;
    case kDmCollate:
      record.dmCollate = std::max<std::int16_t>(record.dmCollate, 0);
      *value = record.dmCollate;
      break;
    case kDmMediaType:
      if (record.dmMediaType < 1 || record.dmMediaType > 266) {
        record.dmMediaType = 1;
      }
      *value = static_cast<std::int16_t>(record.dmMediaType);
      break;
    default:
      break;
  }
  return kResultOk;
}

Result SetDevmodeField(UIContext* context, std::uint32_t flag, std::int16_t value) {
  if (context == nullptr || context->publicPointer == nullptr) {
    return kResultNullObject;
  }
  PublicDevmode& record = *context->publicPointer;
  if (flag == kAnnounceCustomSize) {
    record.dmFields |= kDmPaperLength | kDmPaperWidth | kDmFormName;
    return kResultOk;
  }
  if (flag == kDmMediaType) {
    record.dmMediaType = static_cast<std::uint32_t>(value);
    return kResultOk;
  }
  std::int16_t* word = PlainWord(record, flag);
  if (word == nullptr) {
    return kResultFail;
  }
  *word = value;
  return kResultOk;
}

Result SetDevmodeField(UIContext* context, std::uint32_t flag, const char16_t* text) {
  if (context == nullptr || context->publicPointer == nullptr) {
    return kResultNullObject;
  }
  if (flag != kDmFormName) {
    return kResultFail;
  }
  CopyText(context->publicPointer->dmFormName, CallerText(text));
  return kResultOk;
}

}  // namespace ostrel
