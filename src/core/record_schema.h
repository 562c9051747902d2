// The settings schema: for each setting its place in the record, default, range, unit word and the
// way in which validation holds it to that range. These rows are the only place where such a fact
// is written; defaults and repairs are driven by them.
#pragma once

#include "core/settings_record.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ostrel {

enum class FieldKind : std::uint8_t {
  kNone,           // a setting without a place in the record
  kWord,           // signed 16-bit
  kDword,          // signed 32-bit
  kUnsignedDword,  // unsigned 32-bit
  kText,           // UTF-16 units
};

// A place in a record: its kind, its offset in bytes, and how many words or units stand there.
struct RecordField {
  FieldKind kind = FieldKind::kNone;
  std::uint16_t offset = 0;
  std::uint16_t count = 0;
};

// What validation does with a setting.
enum class Repair : std::uint8_t {
  kNone,                   // nothing: no field, or a field that is passed on with any value
  kRange,                  // each word outside minimum..maximum takes the default
  kEmptyUnlessTerminated,  // a text without terminator in its field is emptied
  kForceTerminator,        // the last unit of a text is set to NUL
};

struct SchemaRow {
  const char* key;
  RecordField field;  // within PrivateDevmode; for custom paper rows within each CustomPaperEntry
  std::int32_t defaultValue;
  std::int32_t minimum;
  std::int32_t maximum;  // for a text: the characters that it may have
  const char* unit;      // as the format's definitions have always spelled it
  Repair repair;
  const char16_t* defaultText = nullptr;
};

namespace schema_detail {

template <typename Reference>
constexpr RecordField FieldOf(std::size_t offset) {
  using Member = std::remove_reference_t<Reference>;
  using Element = std::remove_extent_t<Member>;
  static_assert(std::rank_v<Member> <= 1);
  static_assert(std::is_same_v<Element, std::int16_t> || std::is_same_v<Element, std::int32_t> ||
                std::is_same_v<Element, std::uint32_t> || std::is_same_v<Element, char16_t>);
  constexpr FieldKind kind = std::is_same_v<Element, std::int16_t>    ? FieldKind::kWord
                             : std::is_same_v<Element, std::int32_t>  ? FieldKind::kDword
                             : std::is_same_v<Element, std::uint32_t> ? FieldKind::kUnsignedDword
                                                                      : FieldKind::kText;
  return {kind, static_cast<std::uint16_t>(offset),
          static_cast<std::uint16_t>(std::is_array_v<Member> ? std::extent_v<Member> : 1)};
}

}  // namespace schema_detail

// The type and the place of a member, told by the record itself.
#define OSTREL_FIELD(member)                                                            \
  ::ostrel::schema_detail::FieldOf<decltype((std::declval<PrivateDevmode&>().member))>( \
      offsetof(PrivateDevmode, member))
#define OSTREL_PAPER_FIELD(member)                                                        \
  ::ostrel::schema_detail::FieldOf<decltype((std::declval<CustomPaperEntry&>().member))>( \
      offsetof(CustomPaperEntry, member))

inline constexpr std::size_t kSchemaRows = 86;
inline constexpr std::size_t kSchemaCustomPaperRows = 3;  // the last ones

inline constexpr std::int32_t kAnyAbove = 0x7FFFFFFF;

// clang-format off
inline constexpr std::array<SchemaRow, kSchemaRows> kRecordSchema = {{
    // Setting                            Field                                              Default  Minimum  Maximum    Unit                   Repair
    {"PageScaleOutputSize",               OSTREL_FIELD(OutputSize),                               0,       0, kAnyAbove, "PaperSizeID",         Repair::kRange},
    {"PageScaleScaleFlag",                OSTREL_FIELD(ScaleFlag),                                0,       0,         2, "Flag",                Repair::kRange},
    {"PageScaleScaleRadio",               OSTREL_FIELD(ScaleRadio),                             100,      25,       400, "Radio",               Repair::kRange},
    {"PageParaNUP",                       OSTREL_FIELD(MultipleUp),                               1,       1,        23, "Nup",                 Repair::kRange},
    {"PageParasOrder",                    OSTREL_FIELD(PageOrder),                                0,       0,         5, "Order",               Repair::kRange},
    {"PageParasOutLine",                  OSTREL_FIELD(PageBorder),                               0,       0,         1, "Border",              Repair::kRange},
    {"PageParasMixedOrient",              OSTREL_FIELD(MixedOrient),                              0,       0,         2, "Oreint",              Repair::kRange},
    {"PagePosterPosterPrint",             OSTREL_FIELD(PosterPrint),                              0,       0,         1, "Poster",              Repair::kRange},
    {"PagePosterPosterType",              OSTREL_FIELD(PosterType),                               0,       0,         2, "Poster",                Repair::kRange},
    {"PagePosterCropMarks",               OSTREL_FIELD(CropMarks),                                0,       0,         1, "CropMarks",           Repair::kRange},
    {"PageNormalPaperTray",               OSTREL_FIELD(SourceTray),                               0,       0,         4, "PaperTray",           Repair::kNone},
    {"PageNormalRotate",                  OSTREL_FIELD(Rotate),                                   0,       0,         3, "Degrees",             Repair::kRange},
    {"PageNormalFeedOrient",              OSTREL_FIELD(FeedOrient),                               1,       1,         2, "Orient",              Repair::kRange},
    {"PageNormalManual",                  OSTREL_FIELD(ManualDuplex),                             0,       0,         1, "flag",                Repair::kRange},
    {"PageNormalMismatch",                OSTREL_FIELD(Mismatch),                                 0,       0,         0, "flag",                Repair::kNone},
    {"PageBookletPrint",                  OSTREL_FIELD(BookletPrint),                             0,       0,         1, "Booklet",             Repair::kRange},
    {"PageBookletBinding",                OSTREL_FIELD(BookletBinding),                           0,       0,         1, "Binding",             Repair::kRange},
    {"PageBookletSubsets",                OSTREL_FIELD(BookletSubsets),                           0,       0,         2, "Subsets",             Repair::kRange},
    {"PageBookletSheets",                 OSTREL_FIELD(BookletSheets),                            5,       1,        50, "Sheets",              Repair::kRange},
    {"PageBookletGutter",                 OSTREL_FIELD(BookletGutter),                            0,       0,         1, "Gutter",              Repair::kRange},
    {"PageBookletAutoFit",                OSTREL_FIELD(BookletAutoFit),                           1,       0,         1, "AutoFit",             Repair::kRange},
    {"PageBookletMargins",                OSTREL_FIELD(BookletMargins),                           0,       0,      1181, "Margins",             Repair::kRange},
    {"PageBookletPrintCover",             OSTREL_FIELD(BookletPrintCover),                        0,       0,         1, "Booklet",                Repair::kRange},
    {"PageBookletPrintOnCoverOutSide",    OSTREL_FIELD(BookletPrintOnCoverOutside),               0,       0,         1, "Booklet",                Repair::kRange},
    {"PageBookletPrintOnBackCoverOutside", OSTREL_FIELD(BoookletPrintOnBackCoverOutside),         0,       0,         1, "Booklet",                Repair::kRange},
    {"PageBookletPrintOnCoverInside",     OSTREL_FIELD(BookletPrintOnCoverInside),                0,       0,         1, "Booklet",                Repair::kRange},
    {"PageBookletPrintOnBackCoverInside", OSTREL_FIELD(BoookletPrintOnBackCoverInside),           0,       0,         1, "Booklet",                Repair::kRange},
    {"PageBookletCoverType",              OSTREL_FIELD(BookletCoverType),                         1,       0,        12, "Type",                Repair::kRange},
    {"PageBookletCoverSource",            OSTREL_FIELD(BookletCoverSource),                       0,       0,        10, "Source",              Repair::kNone},
    {"PageMarginsImageShift",             OSTREL_FIELD(ImageShift),                               0,       0,         8, "ImageShift",          Repair::kRange},
    {"PageMarginsAutoFit",                OSTREL_FIELD(MarginsAutoFit),                           1,       0,         1, "AutoFit",             Repair::kRange},
    {"PageMarginsSide1",                  OSTREL_FIELD(Side),                                     0,       0,      1181, "pixel",               Repair::kRange},
    {"PageMarginsSide2",                  OSTREL_FIELD(Side2),                                    0,       0,      1181, "pixel",               Repair::kRange},
    {"PageMarginsPrintPosition",          OSTREL_FIELD(PrintPosition),                            0,       0,         4, "PrintPosition",       Repair::kRange},
    {"PageMarginsAdjustPrintPosition",    OSTREL_FIELD(AdjustPrintPosition),                      0,       0,         1, "AdjustPrintPosition", Repair::kRange},
    {"PageMarginsLeftRight",              OSTREL_FIELD(LeftRight),                                0,   -1181,      1181, "pixel",               Repair::kRange},
    {"PageMarginsUpDown",                 OSTREL_FIELD(UpDown),                                   0,   -1181,      1181, "pixel",               Repair::kRange},
    // A setting that never had a place in the record.
    {"PageMarginsEnableUserMargin",       {},                                                     0,       0,         1, "EnableUserMargins",   Repair::kNone},
    // The range is stated and must not be enforced: the format's check asks for a value below the
    // minimum and above the maximum at once, so an index of -1 or 40 is kept.
    {"FavoriteIndex",                     OSTREL_FIELD(FavoriteIndex),                           26,       0,        29, "Index",               Repair::kNone},
    {"PageNormalAdjustMode",              OSTREL_FIELD(PrintMode),                                0,       0,         2, "Mode",                Repair::kRange},
    {"PageNormalImageType",               OSTREL_FIELD(ImageType[0]),                             0,       0,         2, "Type",                Repair::kRange},
    {"PageNormalICMType",                 OSTREL_FIELD(ImageType[1]),                             0,       0,         3, "Type",                Repair::kRange},
    {"PageNormalApplyElement",            OSTREL_FIELD(ApplyElements),                            0,       0,         1, "Mode",                Repair::kRange},
    {"PageNormalDocElement",              OSTREL_FIELD(DocumentElement),                          0,       0,         2, "Mode",                Repair::kRange},
    {"PageNormalBrightness",              OSTREL_FIELD(Brightness),                               0,    -100,       100, "Bightness",           Repair::kRange},
    {"PageNormalContrast",                OSTREL_FIELD(Constrast),                                0,    -100,       100, "Contrast",            Repair::kRange},
    {"PageNormalSaturation",              OSTREL_FIELD(Saturation),                               0,    -100,       100, "Saturation",          Repair::kRange},
    {"PageNormalBalance",                 OSTREL_FIELD(AdjustBalance),                            0,       0,         1, "AdjustBalance",       Repair::kRange},
    {"PageNormalTargetColor",             OSTREL_FIELD(TargetColor),                              0,       0,         3, "TargetColor",         Repair::kRange},
    {"PageNormalHighlights",              OSTREL_FIELD(Highlights),                               0,      -3,         3, "Highlights",          Repair::kRange},
    {"PageNormalMidtones",                OSTREL_FIELD(Midtones),                                 0,      -3,         3, "Midtones",            Repair::kRange},
    {"PageNormalShadows",                 OSTREL_FIELD(Shadows),                                  0,      -3,         3, "Shadows",             Repair::kRange},
    {"PageNormalProfile",                 OSTREL_FIELD(Profile),                                  0,       0,         2, "Profile",             Repair::kRange},
    {"PageNormalTemp",                    OSTREL_FIELD(ColorTemperature),                         1,       0,         2, "Temperature",         Repair::kRange},
    {"PageNormalGamma",                   OSTREL_FIELD(GammaCorrection),                          3,       0,         4, "Gamma",               Repair::kRange},
    {"PageNormalInputIndex",              OSTREL_FIELD(ImageInputIndex),                          0,       0,         2, "InputIndex",          Repair::kRange},
    {"PageNormalMonitor",                 OSTREL_FIELD(Monitor),                                  0,       0,       256, "Characters",          Repair::kEmptyUnlessTerminated, u""},
    {"PageNormalImage",                   OSTREL_FIELD(InputImage),                               0,       0,       256, "Characters",          Repair::kEmptyUnlessTerminated, u""},
    {"PageNormalScreenType",              OSTREL_FIELD(ScreenType),                               0,       0,         3, "Type",                Repair::kRange},
    {"PageNormalTonerMode",               OSTREL_FIELD(TonerSavingMode),                          0,       0,         3, "Mode",                Repair::kRange},
    {"PageNormalRotate180",               OSTREL_FIELD(Rotate180),                                0,       0,         1, "flag",                Repair::kRange},
    {"PageNormalMirror",                  OSTREL_FIELD(Mirror),                                   0,       0,         1, "flag",                Repair::kRange},
    {"PageNormalThickness",               OSTREL_FIELD(Thickness),                                2,       0,         4, "Mode",                Repair::kRange},
    {"PageNormalNegative",                OSTREL_FIELD(Negative),                                 0,       0,         1, "flag",                Repair::kRange},
    {"PageWMPrintOn1stPage",              OSTREL_FIELD(FirstPageOnly),                            0,       0,         1, "Flag",                Repair::kRange},
    // The watermark family: a new record starts from the default watermark, not from these defaults.
    {"PageWMIndex",                       OSTREL_FIELD(WatermarkData.PageWMIndex),                0,       0,        32, "Index",               Repair::kRange},
    {"PageWMFlag",                        OSTREL_FIELD(WatermarkData.PageWMFlag),                 0,       0,         2, "Flag",                Repair::kRange},
    {"PageWMName",                        OSTREL_FIELD(WatermarkData.PageWMName),                 0,       0,        32, "Characters",          Repair::kForceTerminator, u"NoWatermark"},
    {"PageWMText",                        OSTREL_FIELD(WatermarkData.PageWMText),                 0,       0,        64, "Characters",          Repair::kForceTerminator, u"NoWatermark"},
    {"PageWMTypeface",                    OSTREL_FIELD(WatermarkData.PageWMTypeface),             0,       0,        31, "Characters",          Repair::kForceTerminator, u"Times New Roman"},
    {"PageWMFileName",                    OSTREL_FIELD(WatermarkData.PageWMFileName),             0,       0,       259, "Characters",          Repair::kForceTerminator, u""},
    {"PageWMSize",                        OSTREL_FIELD(WatermarkData.PageWMSize),                72,       6,       600, "Size",                Repair::kRange},
    {"PageWMBold",                        OSTREL_FIELD(WatermarkData.PageWMBold),                 0,       0,         1, "Bold",                Repair::kRange},
    {"PageWMItalic",                      OSTREL_FIELD(WatermarkData.PageWMItalic),               0,       0,         1, "Italic",              Repair::kRange},
    {"PageWMTransparent",                 OSTREL_FIELD(WatermarkData.PageWMTransparent),          0,       0,         1, "Flag",                Repair::kRange},
    {"PageWMBorder",                      OSTREL_FIELD(WatermarkData.PageWMBorder),               0,       0,         2, "Border",              Repair::kRange},
    {"PageWMAngle",                       OSTREL_FIELD(WatermarkData.PageWMAngle),                0,     -90,        90, "Degrees",             Repair::kRange},
    {"PageWMScale",                       OSTREL_FIELD(WatermarkData.PageWMScale),                0,       0,      1000, "Scale",               Repair::kRange},
    {"PageWMPosition",                    OSTREL_FIELD(WatermarkData.PageWMPosition),             0,       0,        10, "Position",            Repair::kRange},
    {"PageWMRepeat",                      OSTREL_FIELD(WatermarkData.PageWMRepeat),               0,       0,         1, "Flag",                Repair::kRange},
    // No value but zero is valid, and any other is replaced by 0x8F30, which is not valid either.
    // Nothing reads the word; the replacement is kept so that equal records stay equal.
    {"WMFontChosen",                      OSTREL_FIELD(WatermarkData.WMFontChosen),          0x8F30,       0,         0, "Flag",                Repair::kRange},
    {"PageWMColor",                       OSTREL_FIELD(WatermarkData.PageWMColor),            13311,       0,  0xFFFFFF, "RGB",                 Repair::kRange},
    {"WMReserved",                        OSTREL_FIELD(WatermarkData.WMReserved),                 0,       0,         7, "Flag",                Repair::kRange},
    // The custom papers: these rows hold for each of the twenty entries.
    {"PageCustom%dWidth",                 OSTREL_PAPER_FIELD(Width),    kDefaultCustomWidth_px600,    1800,      5100, "pixel",               Repair::kRange},
    {"PageCustom%dLength",                OSTREL_PAPER_FIELD(Length),  kDefaultCustomLength_px600,    3000,      8400, "pixel",               Repair::kRange},
    {"CustomPaperSizeName",               OSTREL_PAPER_FIELD(Name),                               0,       0,        24, "Characters",          Repair::kForceTerminator, u"Custom %d"},
}};

// Words of the record that validation holds to a range although the schema has no row for them. They
// are checked behind the schema's rows, and the signature behind them.
struct UnlistedRow {
  RecordField field;
  std::int32_t defaultValue;
  std::int32_t minimum;
  std::int32_t maximum;
};

inline constexpr std::array<UnlistedRow, 7> kUnlistedWords = {{
    // Field                                  Default  Minimum  Maximum
    {OSTREL_FIELD(sLaserTestAPResolution),         0,       0,       2},
    {OSTREL_FIELD(ColorMode),       kColorMonochrome, kColorMonochrome, kColorMonochrome},
    {OSTREL_FIELD(Duplex),          kDuplexSimplex, kDuplexSimplex, kDuplexPrivateMax},
    {OSTREL_FIELD(DuplexIndex),                    0,       0,       2},
    {OSTREL_FIELD(ReversePrint),                   0,       0,       1},
    {OSTREL_FIELD(UseSoftFont),                    1,       0,       1},
    {OSTREL_FIELD(SoftFontBitmap),                 0,       0,       1},
}};
// clang-format on

#undef OSTREL_FIELD
#undef OSTREL_PAPER_FIELD

// The row of a setting; null when there is none.
const SchemaRow* FindSchemaRow(std::string_view key);

// Writes the defaults of all rows, in the schema and beside it, but for the watermark record, which
// starts as a whole. Texts stay empty; custom papers are named "Custom 1" to "Custom 20".
void WriteSchemaDefaults(PrivateDevmode& record);

// Repairs what the rows state: the schema's rows, then each custom paper, then the words beside
// them.
void EnforceSchema(PrivateDevmode& record);

}  // namespace ostrel
