// The private record once more, as the other halves of the driver know it: every place with its
// key, setting, starting value and the values that a repair accepts. Typed apart from the driver's
// own structures and schema, so that neither can move unseen.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

inline constexpr std::size_t kPrivateBytes = 7676;
inline constexpr std::size_t kWatermarkOffset = 2088;
inline constexpr std::size_t kWatermarkBytes = 1348;
inline constexpr std::size_t kCustomPapersOffset = 3964;
inline constexpr std::size_t kCustomPaperBytes = 72;
inline constexpr std::size_t kCustomPapers = 20;

enum class Kind {
  kWord,             // signed 16-bit, one or more
  kDword,            // signed 32-bit
  kUnsigned,         // unsigned 32-bit
  kText,             // UTF-16 units
  kBytes,            // no numbers: signature and reserved areas
  kWatermarkRecord,  // the rows of kWatermarkLayout
  kPaperArray,       // the rows of kCustomPaperLayout, twenty times
};

enum class Check {
  kNone,       // any value is passed on
  kRange,      // outside minimum..maximum each word becomes `otherwise`
  kEmptied,    // without terminator the text is emptied
  kForced,     // the unit behind `maximum` characters becomes NUL
  kSignature,  // rewritten
};

// Members stand in the order of the columns, not of their sizes.
struct LayoutRow {  // NOLINT(clang-analyzer-optin.performance.Padding)
  std::uint16_t offset;
  std::uint16_t width;  // bytes
  const char* key;      // of the parameter table, uncut; empty for none
  const char* setting;  // of the schema; empty for none
  Kind kind;
  std::int64_t initial;
  Check check;
  std::int64_t minimum = 0;
  std::int64_t maximum = 0;
  std::int64_t otherwise = 0;
  const char16_t* initialText = u"";
};

// clang-format off
inline constexpr LayoutRow kRecordLayout[] = {
    // Offset, width, key, setting, kind, default, check, minimum, maximum, else
    {0,    4,    "",                                "",                                   Kind::kBytes,    0,    Check::kSignature},
    {4,    2,    "ColorMode",                       "",                                   Kind::kWord,     1,    Check::kRange, 1, 1, 1},
    {6,    2,    "Duplex",                          "",                                   Kind::kWord,     1,    Check::kRange, 1, 5, 1},
    {8,    2,    "DuplexIndex",                     "",                                   Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {10,   2,    "ReversePrint",                    "",                                   Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {12,   256,  "",                                "",                                   Kind::kBytes,    0,    Check::kNone},
    {268,  2,    "FinessMode",                      "",                                   Kind::kWord,     0,    Check::kNone},
    {270,  2,    "",                                "",                                   Kind::kBytes,    0,    Check::kNone},
    {272,  4,    "OutputSize",                      "PageScaleOutputSize",                Kind::kDword,    0,    Check::kRange, 0, 0x7FFFFFFF, 0},
    {276,  4,    "ScaleFlag",                       "PageScaleScaleFlag",                 Kind::kDword,    0,    Check::kRange, 0, 2, 0},
    {280,  4,    "ScaleRadio",                      "PageScaleScaleRadio",                Kind::kDword,    100,  Check::kRange, 25, 400, 100},
    {284,  2,    "MultipleUp",                      "PageParaNUP",                        Kind::kWord,     1,    Check::kRange, 1, 23, 1},
    {286,  2,    "PageOrder",                       "PageParasOrder",                     Kind::kWord,     0,    Check::kRange, 0, 5, 0},
    {288,  2,    "PageBorder",                      "PageParasOutLine",                   Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {290,  2,    "MixedOrient",                     "PageParasMixedOrient",               Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {292,  2,    "PosterPrint",                     "PagePosterPosterPrint",              Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {294,  2,    "PosterType",                      "PagePosterPosterType",               Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {296,  2,    "CropMarks",                       "PagePosterCropMarks",                Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {298,  2,    "SourceTray",                      "PageNormalPaperTray",                Kind::kWord,     0,    Check::kNone,  0, 4, 0},
    {300,  2,    "Rotate",                          "PageNormalRotate",                   Kind::kWord,     0,    Check::kRange, 0, 3, 0},
    {302,  2,    "FeedOrient",                      "PageNormalFeedOrient",               Kind::kWord,     1,    Check::kRange, 1, 2, 1},
    {304,  2,    "ManualDuplex",                    "PageNormalManual",                   Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {306,  2,    "Mismatch",                        "PageNormalMismatch",                 Kind::kWord,     0,    Check::kNone,  0, 0, 0},
    {308,  2,    "BookletPrint",                    "PageBookletPrint",                   Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {310,  2,    "BookletBinding",                  "PageBookletBinding",                 Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {312,  2,    "",                                "PageBookletSubsets",                 Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {314,  2,    "",                                "PageBookletSheets",                  Kind::kWord,     5,    Check::kRange, 1, 50, 5},
    {316,  2,    "",                                "PageBookletGutter",                  Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {318,  2,    "",                                "PageBookletAutoFit",                 Kind::kWord,     1,    Check::kRange, 0, 1, 1},
    {320,  2,    "",                                "PageBookletMargins",                 Kind::kWord,     0,    Check::kRange, 0, 1181, 0},
    {322,  2,    "BookletPrintCover",               "PageBookletPrintCover",              Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {324,  2,    "BookletPrintOnCoverOutside",      "PageBookletPrintOnCoverOutSide",     Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {326,  2,    "BoookletPrintOnBackCoverOutside", "PageBookletPrintOnBackCoverOutside", Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {328,  2,    "BookletPrintOnCoverInside",       "PageBookletPrintOnCoverInside",      Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {330,  2,    "BoookletPrintOnBackCoverInside",  "PageBookletPrintOnBackCoverInside",  Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {332,  2,    "BookletCoverType",                "PageBookletCoverType",               Kind::kWord,     1,    Check::kRange, 0, 12, 1},
    {334,  2,    "BookletCoverSource",              "PageBookletCoverSource",             Kind::kWord,     0,    Check::kNone,  0, 10, 0},
    {336,  2,    "ImageShift",                      "PageMarginsImageShift",              Kind::kWord,     0,    Check::kRange, 0, 8, 0},
    {338,  2,    "MarginsAutoFit",                  "PageMarginsAutoFit",                 Kind::kWord,     1,    Check::kRange, 0, 1, 1},
    {340,  2,    "Side",                            "PageMarginsSide1",                   Kind::kWord,     0,    Check::kRange, 0, 1181, 0},
    {342,  2,    "Side2",                           "PageMarginsSide2",                   Kind::kWord,     0,    Check::kRange, 0, 1181, 0},
    {344,  2,    "PrintPosition",                   "PageMarginsPrintPosition",           Kind::kWord,     0,    Check::kRange, 0, 4, 0},
    {346,  2,    "AdjustPrintPosition",             "PageMarginsAdjustPrintPosition",     Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {348,  2,    "LeftRight",                       "PageMarginsLeftRight",               Kind::kWord,     0,    Check::kRange, -1181, 1181, 0},
    {350,  2,    "UpDown",                          "PageMarginsUpDown",                  Kind::kWord,     0,    Check::kRange, -1181, 1181, 0},
    {352,  512,  "FavoriteName",                    "",                                   Kind::kText,     0,    Check::kNone},
    {864,  2,    "FavoriteIndex",                   "FavoriteIndex",                      Kind::kWord,     26,   Check::kNone,  0, 29, 26},
    {866,  2,    "",                                "",                                   Kind::kWord,     0,    Check::kNone},
    {868,  2,    "",                                "",                                   Kind::kWord,     0,    Check::kNone},
    {870,  2,    "PrintMode",                       "PageNormalAdjustMode",               Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {872,  2,    "sLaserTestAPResolution",          "",                                   Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {874,  2,    "ImageType",                       "PageNormalImageType",                Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {876,  2,    "ImageType",                       "PageNormalICMType",                  Kind::kWord,     0,    Check::kRange, 0, 3, 0},
    {878,  2,    "ApplyElements",                   "PageNormalApplyElement",             Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {880,  2,    "DocumentElement",                 "PageNormalDocElement",               Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {882,  8,    "Brightness",                      "PageNormalBrightness",               Kind::kWord,     0,    Check::kRange, -100, 100, 0},
    {890,  8,    "Constrast",                       "PageNormalContrast",                 Kind::kWord,     0,    Check::kRange, -100, 100, 0},
    {898,  8,    "Saturation",                      "PageNormalSaturation",               Kind::kWord,     0,    Check::kRange, -100, 100, 0},
    {906,  2,    "AdjustBalance",                   "PageNormalBalance",                  Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {908,  2,    "TargetColor",                     "PageNormalTargetColor",              Kind::kWord,     0,    Check::kRange, 0, 3, 0},
    {910,  8,    "Highlights",                      "PageNormalHighlights",               Kind::kWord,     0,    Check::kRange, -3, 3, 0},
    {918,  8,    "Midtones",                        "PageNormalMidtones",                 Kind::kWord,     0,    Check::kRange, -3, 3, 0},
    {926,  8,    "Shadows",                         "PageNormalShadows",                  Kind::kWord,     0,    Check::kRange, -3, 3, 0},
    {934,  2,    "Profile",                         "PageNormalProfile",                  Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {936,  2,    "ColorTemperature",                "PageNormalTemp",                     Kind::kWord,     1,    Check::kRange, 0, 2, 1},
    {938,  2,    "GammaCorrection",                 "PageNormalGamma",                    Kind::kWord,     3,    Check::kRange, 0, 4, 3},
    {940,  2,    "ImageInputIndex",                 "PageNormalInputIndex",               Kind::kWord,     0,    Check::kRange, 0, 2, 0},
    {942,  512,  "Monitor",                         "PageNormalMonitor",                  Kind::kText,     0,    Check::kEmptied, 0, 256},
    {1454, 512,  "InputImage",                      "PageNormalImage",                    Kind::kText,     0,    Check::kEmptied, 0, 256},
    {1966, 2,    "ScreenType",                      "PageNormalScreenType",               Kind::kWord,     0,    Check::kRange, 0, 3, 0},
    {1968, 2,    "TonerSavingMode",                 "PageNormalTonerMode",                Kind::kWord,     0,    Check::kRange, 0, 3, 0},
    {1970, 2,    "Rotate180",                       "PageNormalRotate180",                Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {1972, 2,    "Mirror",                          "PageNormalMirror",                   Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {1974, 2,    "Thickness",                       "PageNormalThickness",                Kind::kWord,     2,    Check::kRange, 0, 4, 2},
    {1976, 2,    "Negative",                        "PageNormalNegative",                 Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {1978, 2,    "",                                "",                                   Kind::kBytes,    0,    Check::kNone},
    {1980, 4,    "",                                "",                                   Kind::kUnsigned, 0,    Check::kNone},
    {1984, 10,   "",                                "",                                   Kind::kText,     0,    Check::kNone},
    {1994, 34,   "",                                "",                                   Kind::kText,     0,    Check::kNone},
    {2028, 50,   "",                                "",                                   Kind::kText,     0,    Check::kNone},
    {2078, 2,    "",                                "",                                   Kind::kBytes,    0,    Check::kNone},
    {2080, 4,    "",                                "",                                   Kind::kUnsigned, 0,    Check::kNone},
    {2084, 2,    "FirstPageOnly",                   "PageWMPrintOn1stPage",               Kind::kWord,     0,    Check::kRange, 0, 1, 0},
    {2086, 2,    "",                                "",                                   Kind::kBytes,    0,    Check::kNone},
    {2088, 1348, "WatermarkData",                   "",                                   Kind::kWatermarkRecord, 0,   Check::kNone},
    {3436, 4,    "",                                "",                                   Kind::kUnsigned, 0,    Check::kNone},
    {3440, 2,    "OverlayFlag",                     "",                                   Kind::kWord,     0,    Check::kNone},
    {3442, 520,  "OverlayFileName",                 "",                                   Kind::kText,     0,    Check::kNone},
    {3962, 2,    "",                                "",                                   Kind::kBytes,    0,    Check::kNone},
    {3964, 1440, "CustomPaperSize",                 "",                                   Kind::kPaperArray, 0, Check::kNone},
    {5404, 4,    "",                                "",                                   Kind::kUnsigned, 1,    Check::kRange, 0, 1, 1},
    {5408, 4,    "",                                "",                                   Kind::kUnsigned, 0,    Check::kRange, 0, 1, 0},
    {5412, 2,    "",                                "",                                   Kind::kWord,     0,    Check::kNone},
    {5414, 2,    "",                                "",                                   Kind::kWord,     0,    Check::kNone},
    {5416, 2260, "",                                "",                                   Kind::kBytes,    0,    Check::kNone},
};

// Offsets from the start of the watermark record.
inline constexpr LayoutRow kWatermarkLayout[] = {
    // Offset, width, key, setting, kind, default, check, minimum, maximum, else, default text
    {0,    2,   "", "PageWMIndex",       Kind::kWord,     0,   Check::kRange,  0, 32, 0},
    {2,    2,   "", "PageWMFlag",        Kind::kWord,     0,   Check::kRange,  0, 2, 0},
    {4,    66,  "", "PageWMName",        Kind::kText,     0,   Check::kForced, 0, 32, 0, u"[No Watermark]"},
    {70,   130, "", "PageWMText",        Kind::kText,     0,   Check::kForced, 0, 64, 0},
    {200,  64,  "", "PageWMTypeface",    Kind::kText,     0,   Check::kForced, 0, 31, 0, u"Arial"},
    {264,  520, "", "PageWMFileName",    Kind::kText,     0,   Check::kForced, 0, 259, 0},
    {784,  2,   "", "PageWMSize",        Kind::kWord,     54,  Check::kRange,  6, 600, 72},
    {786,  2,   "", "PageWMBold",        Kind::kWord,     0,   Check::kRange,  0, 1, 0},
    {788,  2,   "", "PageWMItalic",      Kind::kWord,     0,   Check::kRange,  0, 1, 0},
    {790,  2,   "", "PageWMTransparent", Kind::kWord,     0,   Check::kRange,  0, 1, 0},
    {792,  2,   "", "PageWMBorder",      Kind::kWord,     0,   Check::kRange,  0, 2, 0},
    {794,  2,   "", "PageWMAngle",       Kind::kWord,     0,   Check::kRange,  -90, 90, 0},
    {796,  2,   "", "PageWMScale",       Kind::kWord,     100, Check::kRange,  0, 1000, 0},
    {798,  2,   "", "PageWMPosition",    Kind::kWord,     5,   Check::kRange,  0, 10, 0},
    {800,  2,   "", "PageWMRepeat",      Kind::kWord,     0,   Check::kRange,  0, 1, 0},
    {802,  2,   "", "WMFontChosen",      Kind::kWord,     0,   Check::kRange,  0, 0, 36656},
    {804,  4,   "", "PageWMColor",       Kind::kUnsigned, 0,   Check::kRange,  0, 0xFFFFFF, 13311},
    {808,  2,   "", "WMReserved",        Kind::kWord,     0,   Check::kRange,  0, 7, 0},
    {810,  2,   "", "",                  Kind::kWord,     50,  Check::kNone},
    {812,  2,   "", "",                  Kind::kWord,     50,  Check::kNone},
    {814,  2,   "", "",                  Kind::kWord,     1,   Check::kNone},
    {816,  2,   "", "",                  Kind::kWord,     0,   Check::kNone},
    {818,  2,   "", "",                  Kind::kWord,     0,   Check::kNone},
    {820,  2,   "", "",                  Kind::kWord,     0,   Check::kNone},
    {822,  2,   "", "",                  Kind::kWord,     0,   Check::kNone},
    {824,  520, "", "",                  Kind::kText,     0,   Check::kNone},
    {1344, 2,   "", "",                  Kind::kWord,     0,   Check::kNone},
    {1346, 2,   "", "",                  Kind::kWord,     0,   Check::kNone},
};

// Offsets from the start of an entry.
inline constexpr LayoutRow kCustomPaperLayout[] = {
    // Offset, width, key, setting, kind, default, check, minimum, maximum, else
    {0,    2,   "", "PageCustom%dWidth",   Kind::kWord,  4960, Check::kRange,  1800, 5100, 4960},
    {2,    2,   "", "PageCustom%dLength",  Kind::kWord,  7015, Check::kRange,  3000, 8400, 7015},
    {4,    50,  "", "CustomPaperSizeName", Kind::kText,  0,    Check::kForced, 0, 24, 0},
    {54,   18,  "", "",                    Kind::kBytes, 0,    Check::kNone},
};
// clang-format on

// No byte is missing, none is told twice.
template <std::size_t count>
constexpr bool CoversWithoutGap(const LayoutRow (&rows)[count], std::size_t bytes) {
  std::size_t end = 0;
  for (const LayoutRow& row : rows) {
    if (row.offset != end) {
      return false;
    }
    end += row.width;
  }
  return end == bytes;
}
static_assert(CoversWithoutGap(kRecordLayout, kPrivateBytes));
static_assert(CoversWithoutGap(kWatermarkLayout, kWatermarkBytes));
static_assert(CoversWithoutGap(kCustomPaperLayout, kCustomPaperBytes));

// One place of the record, with the watermark and the custom papers taken apart.
struct RecordPlace {
  std::string name;    // of its cases
  std::size_t offset;  // from the start of the private record
  LayoutRow row;       // its offset may be that within a watermark or an entry
  std::u16string initialText;

  std::size_t elementBytes() const {
    const bool wide = row.kind == Kind::kDword || row.kind == Kind::kUnsigned;
    return row.kind == Kind::kBytes ? 1 : wide ? 4 : 2;
  }
  std::size_t elements() const { return row.width / elementBytes(); }
  std::int64_t lowestOfType() const {
    return row.kind == Kind::kWord ? INT16_MIN : row.kind == Kind::kDword ? INT32_MIN : 0;
  }
  std::int64_t highestOfType() const {
    return row.kind == Kind::kWord    ? INT16_MAX
           : row.kind == Kind::kDword ? INT32_MAX
                                      : std::int64_t{UINT32_MAX};
  }
};

inline void PrintTo(const RecordPlace& place, std::ostream* out) {
  *out << place.name;
}

inline RecordPlace MakePlace(std::size_t base, const LayoutRow& row, std::u16string_view text) {
  const std::size_t offset = base + row.offset;
  std::string name = "At" + std::to_string(offset);
  for (const char letter : std::string_view(*row.key != '\0' ? row.key : row.setting)) {
    if (letter != '%') {
      name += letter;
    }
  }
  return {name, offset, row, std::u16string(text)};
}

// All places of the record in their order.
inline std::vector<RecordPlace> RecordPlaces() {
  std::vector<RecordPlace> places;
  for (const LayoutRow& row : kRecordLayout) {
    if (row.kind == Kind::kWatermarkRecord) {
      for (const LayoutRow& part : kWatermarkLayout) {
        places.push_back(MakePlace(row.offset, part, part.initialText));
      }
    } else if (row.kind == Kind::kPaperArray) {
      for (std::size_t entry = 0; entry < kCustomPapers; ++entry) {
        std::u16string number;
        for (const char digit : std::to_string(entry + 1)) {
          number += static_cast<char16_t>(digit);
        }
        for (const LayoutRow& part : kCustomPaperLayout) {
          const bool named = part.kind == Kind::kText;
          places.push_back(MakePlace(row.offset + entry * kCustomPaperBytes, part,
                                     named ? u"Custom " + number : std::u16string()));
        }
      }
    } else {
      places.push_back(MakePlace(0, row, row.initialText));
    }
  }
  return places;
}

// The places that one kind of check holds.
inline std::vector<RecordPlace> PlacesWith(Check check) {
  std::vector<RecordPlace> chosen;
  for (const RecordPlace& place : RecordPlaces()) {
    if (place.row.check == check) {
      chosen.push_back(place);
    }
  }
  return chosen;
}

}  // namespace ostrel::test
