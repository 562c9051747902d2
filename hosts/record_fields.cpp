#include "record_fields.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <type_traits>
#include <utility>

namespace ostrel {
namespace {

// The kind of a member by its type; the numbers of the public part are partly unsigned.
template <typename Element>
constexpr FieldKind KindOf() {
  static_assert(std::is_integral_v<Element> && (sizeof(Element) == 2 || sizeof(Element) == 4));
  if (std::is_same_v<Element, char16_t>) {
    return FieldKind::kText;
  }
  if (sizeof(Element) == 2) {
    return FieldKind::kWord;
  }
  return std::is_signed_v<Element> ? FieldKind::kDword : FieldKind::kUnsignedDword;
}

template <typename Reference>
constexpr NamedField FieldAt(std::string_view name, std::size_t offset) {
  using Member = std::remove_reference_t<Reference>;
  return {name,
          {KindOf<std::remove_extent_t<Member>>(), static_cast<std::uint16_t>(offset),
           static_cast<std::uint16_t>(std::is_array_v<Member> ? std::extent_v<Member> : 1)}};
}

#define OSTREL_NAMED(part, member)                                 \
  FieldAt<decltype((std::declval<DriverDevmode&>().part.member))>( \
      #member, offsetof(DriverDevmode, part.member))
#define OSTREL_PUBLIC(member) OSTREL_NAMED(publicDevmode, member)
#define OSTREL_PRIVATE(member) OSTREL_NAMED(privateDevmode, member)
#define OSTREL_WATERMARK(member) OSTREL_NAMED(privateDevmode.WatermarkData, member)

constexpr NamedField kNamedFields[] = {
    OSTREL_PUBLIC(dmDeviceName),
    OSTREL_PUBLIC(dmSpecVersion),
    OSTREL_PUBLIC(dmDriverVersion),
    OSTREL_PUBLIC(dmSize),
    OSTREL_PUBLIC(dmDriverExtra),
    OSTREL_PUBLIC(dmFields),
    OSTREL_PUBLIC(dmOrientation),
    OSTREL_PUBLIC(dmPaperSize),
    OSTREL_PUBLIC(dmPaperLength),
    OSTREL_PUBLIC(dmPaperWidth),
    OSTREL_PUBLIC(dmScale),
    OSTREL_PUBLIC(dmCopies),
    OSTREL_PUBLIC(dmDefaultSource),
    OSTREL_PUBLIC(dmPrintQuality),
    OSTREL_PUBLIC(dmColor),
    OSTREL_PUBLIC(dmDuplex),
    OSTREL_PUBLIC(dmYResolution),
    OSTREL_PUBLIC(dmTTOption),
    OSTREL_PUBLIC(dmCollate),
    OSTREL_PUBLIC(dmFormName),
    OSTREL_PUBLIC(dmMediaType),
    OSTREL_PRIVATE(ColorMode),
    OSTREL_PRIVATE(Duplex),
    OSTREL_PRIVATE(DuplexIndex),
    OSTREL_PRIVATE(ReversePrint),
    OSTREL_PRIVATE(FinessMode),
    OSTREL_PRIVATE(OutputSize),
    OSTREL_PRIVATE(ScaleFlag),
    OSTREL_PRIVATE(ScaleRadio),
    OSTREL_PRIVATE(MultipleUp),
    OSTREL_PRIVATE(PageOrder),
    OSTREL_PRIVATE(PageBorder),
    OSTREL_PRIVATE(MixedOrient),
    OSTREL_PRIVATE(PosterPrint),
    OSTREL_PRIVATE(PosterType),
    OSTREL_PRIVATE(CropMarks),
    OSTREL_PRIVATE(SourceTray),
    OSTREL_PRIVATE(Rotate),
    OSTREL_PRIVATE(FeedOrient),
    OSTREL_PRIVATE(ManualDuplex),
    OSTREL_PRIVATE(Mismatch),
    OSTREL_PRIVATE(BookletPrint),
    OSTREL_PRIVATE(BookletBinding),
    OSTREL_PRIVATE(BookletSubsets),
    OSTREL_PRIVATE(BookletSheets),
    OSTREL_PRIVATE(BookletGutter),
    OSTREL_PRIVATE(BookletAutoFit),
    OSTREL_PRIVATE(BookletMargins),
    OSTREL_PRIVATE(BookletPrintCover),
    OSTREL_PRIVATE(BookletPrintOnCoverOutside),
    OSTREL_PRIVATE(BoookletPrintOnBackCoverOutside),
    OSTREL_PRIVATE(BookletPrintOnCoverInside),
    OSTREL_PRIVATE(BoookletPrintOnBackCoverInside),
    OSTREL_PRIVATE(BookletCoverType),
    OSTREL_PRIVATE(BookletCoverSource),
    OSTREL_PRIVATE(ImageShift),
    OSTREL_PRIVATE(MarginsAutoFit),
    OSTREL_PRIVATE(Side),
    OSTREL_PRIVATE(Side2),
    OSTREL_PRIVATE(PrintPosition),
    OSTREL_PRIVATE(AdjustPrintPosition),
    OSTREL_PRIVATE(LeftRight),
    OSTREL_PRIVATE(UpDown),
    OSTREL_PRIVATE(FavoriteName),
    OSTREL_PRIVATE(FavoriteIndex),
    OSTREL_PRIVATE(JobMode),
    OSTREL_PRIVATE(JobFlag),
    OSTREL_PRIVATE(PrintMode),
    OSTREL_PRIVATE(sLaserTestAPResolution),
    OSTREL_PRIVATE(ImageType),
    OSTREL_PRIVATE(ApplyElements),
    OSTREL_PRIVATE(DocumentElement),
    OSTREL_PRIVATE(Brightness),
    OSTREL_PRIVATE(Constrast),
    OSTREL_PRIVATE(Saturation),
    OSTREL_PRIVATE(AdjustBalance),
    OSTREL_PRIVATE(TargetColor),
    OSTREL_PRIVATE(Highlights),
    OSTREL_PRIVATE(Midtones),
    OSTREL_PRIVATE(Shadows),
    OSTREL_PRIVATE(Profile),
    OSTREL_PRIVATE(ColorTemperature),
    OSTREL_PRIVATE(GammaCorrection),
    OSTREL_PRIVATE(ImageInputIndex),
    OSTREL_PRIVATE(Monitor),
    OSTREL_PRIVATE(InputImage),
    OSTREL_PRIVATE(ScreenType),
    OSTREL_PRIVATE(TonerSavingMode),
    OSTREL_PRIVATE(Rotate180),
    OSTREL_PRIVATE(Mirror),
    OSTREL_PRIVATE(Thickness),
    OSTREL_PRIVATE(Negative),
    OSTREL_PRIVATE(JobPinEnabled),
    OSTREL_PRIVATE(JobPin),
    OSTREL_PRIVATE(JobUserName),
    OSTREL_PRIVATE(JobName),
    OSTREL_PRIVATE(JobNamesEnabled),
    OSTREL_PRIVATE(FirstPageOnly),
    OSTREL_WATERMARK(PageWMIndex),
    OSTREL_WATERMARK(PageWMFlag),
    OSTREL_WATERMARK(PageWMName),
    OSTREL_WATERMARK(PageWMText),
    OSTREL_WATERMARK(PageWMTypeface),
    OSTREL_WATERMARK(PageWMFileName),
    OSTREL_WATERMARK(PageWMSize),
    OSTREL_WATERMARK(PageWMBold),
    OSTREL_WATERMARK(PageWMItalic),
    OSTREL_WATERMARK(PageWMTransparent),
    OSTREL_WATERMARK(PageWMBorder),
    OSTREL_WATERMARK(PageWMAngle),
    OSTREL_WATERMARK(PageWMScale),
    OSTREL_WATERMARK(PageWMPosition),
    OSTREL_WATERMARK(PageWMRepeat),
    OSTREL_WATERMARK(WMFontChosen),
    OSTREL_WATERMARK(PageWMColor),
    OSTREL_WATERMARK(WMReserved),
    OSTREL_WATERMARK(WMOffsetX),
    OSTREL_WATERMARK(WMOffsetY),
    OSTREL_WATERMARK(WMGrayLevel),
    OSTREL_WATERMARK(WMStampOn),
    OSTREL_WATERMARK(WMStampDate),
    OSTREL_WATERMARK(WMStampTime),
    OSTREL_WATERMARK(WMStampPage),
    OSTREL_WATERMARK(WMStampFormat),
    OSTREL_WATERMARK(WMStampComputer),
    OSTREL_WATERMARK(WMStampUser),
    OSTREL_PRIVATE(WatermarkEditorWord),
    OSTREL_PRIVATE(OverlayFlag),
    OSTREL_PRIVATE(OverlayFileName),
    OSTREL_PRIVATE(UseSoftFont),
    OSTREL_PRIVATE(SoftFontBitmap),
    OSTREL_PRIVATE(WatermarkPageCode),
    OSTREL_PRIVATE(WatermarkPageTenths),
};
#undef OSTREL_NAMED
#undef OSTREL_PUBLIC
#undef OSTREL_PRIVATE
#undef OSTREL_WATERMARK

static_assert(std::ranges::is_sorted(kNamedFields, {},
                                     [](const NamedField& row) { return row.field.offset; }),
              "a field stands out of its order, or twice");

std::size_t ElementBytes(FieldKind kind) {
  return kind == FieldKind::kWord || kind == FieldKind::kText ? 2 : 4;
}

const std::byte* BytesOf(const DriverDevmode& record, const NamedField& field) {
  return reinterpret_cast<const std::byte*>(&record) + field.field.offset;
}

std::byte* BytesOf(DriverDevmode& record, const NamedField& field) {
  return reinterpret_cast<std::byte*>(&record) + field.field.offset;
}

template <typename Number>
std::int64_t NumberAt(const std::byte* bytes) {
  Number number = 0;
  std::memcpy(&number, bytes, sizeof(number));
  return number;
}

std::int64_t Element(const DriverDevmode& record, const NamedField& field, std::size_t index) {
  const std::byte* bytes = BytesOf(record, field) + index * ElementBytes(field.field.kind);
  switch (field.field.kind) {
    case FieldKind::kWord:
      return NumberAt<std::int16_t>(bytes);
    case FieldKind::kDword:
      return NumberAt<std::int32_t>(bytes);
    case FieldKind::kUnsignedDword:
      return NumberAt<std::uint32_t>(bytes);
    case FieldKind::kText:
    case FieldKind::kNone:
      break;
  }
  return 0;
}

// One character in the form of UTF-8; the driver's texts hold no surrogates.
void AppendUtf8(std::string& out, char16_t unit) {
  const auto put = [&out](unsigned value) { out += static_cast<char>(value); };
  if (unit < 0x80) {
    put(unit);
  } else if (unit < 0x800) {
    put(0xC0U | (unit >> 6U));
    put(0x80U | (unit & 0x3FU));
  } else {
    put(0xE0U | (unit >> 12U));
    put(0x80U | ((unit >> 6U) & 0x3FU));
    put(0x80U | (unit & 0x3FU));
  }
}

}  // namespace

std::span<const NamedField> NamedFields() {
  return kNamedFields;
}

const NamedField* FindField(std::string_view name) {
  const auto* row = std::ranges::find(kNamedFields, name, &NamedField::name);
  return row == std::end(kNamedFields) ? nullptr : row;
}

std::int64_t FieldNumber(const DriverDevmode& record, const NamedField& field) {
  return Element(record, field, 0);
}

void SetFieldNumber(DriverDevmode& record, const NamedField& field, std::int64_t number) {
  if (field.field.kind != FieldKind::kText) {
    std::memcpy(BytesOf(record, field), &number, ElementBytes(field.field.kind));
  }
}

std::u16string FieldTextOf(const DriverDevmode& record, const NamedField& field) {
  if (field.field.kind != FieldKind::kText) {
    return {};
  }
  std::u16string whole(field.field.count, u'\0');
  std::memcpy(whole.data(), BytesOf(record, field), whole.size() * sizeof(char16_t));
  return std::u16string(FieldText(whole));
}

void SetFieldText(DriverDevmode& record, const NamedField& field, std::u16string_view text) {
  if (field.field.kind == FieldKind::kText) {
    std::u16string whole(field.field.count, u'\0');
    CopyText(whole, text);
    std::memcpy(BytesOf(record, field), whole.data(), whole.size() * sizeof(char16_t));
  }
}

bool FieldsEqual(const DriverDevmode& left, const DriverDevmode& right, const NamedField& field) {
  if (field.field.kind == FieldKind::kText) {
    return FieldTextOf(left, field) == FieldTextOf(right, field);
  }
  const std::size_t bytes = field.field.count * ElementBytes(field.field.kind);
  return std::memcmp(BytesOf(left, field), BytesOf(right, field), bytes) == 0;
}

std::string FieldShown(const DriverDevmode& record, const NamedField& field) {
  std::string shown;
  if (field.field.kind == FieldKind::kText) {
    for (const char16_t unit : FieldTextOf(record, field)) {
      AppendUtf8(shown, unit);
    }
    return shown;
  }
  for (std::size_t index = 0; index < field.field.count; ++index) {
    shown += index == 0 ? "" : " ";
    shown += std::to_string(Element(record, field, index));
  }
  return shown;
}

}  // namespace ostrel
