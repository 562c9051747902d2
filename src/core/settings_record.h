// The settings record: everything that the driver knows about one job or one printer's defaults.
//
// DriverDevmode is the operating system's public record followed at once by PrivateDevmode. It
// crosses process boundaries (the spooler stores it, applications hand it back, the render driver
// reads it), so its layout is a format: little-endian, fixed width, every offset asserted below.
// Never renumber, never reuse a retired place, grow only into the reserved end.
//
// Functions here make a record with its defaults and repair one whose values are out of range. A
// bad value is replaced in silence, never refused. Ranges and defaults stand in core/record_schema.
#pragma once

#include "core/result.h"
#include "platform/print_types.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace ostrel {

inline constexpr std::uint16_t kDevmodeSpecVersion = 1025;    // DM_SPECVERSION
inline constexpr std::uint16_t kDevmodeDriverVersion = 1536;  // this driver's record version
inline constexpr std::uint16_t kPublicDevmodeBytes = 220;
inline constexpr std::uint16_t kPrivateDevmodeBytes = 7676;
inline constexpr std::uint16_t kDriverDevmodeBytes = kPublicDevmodeBytes + kPrivateDevmodeBytes;

// What every record of this driver announces: orientation, paper size, length and width, copies,
// default source, print quality, colour, duplex, Y resolution, collate and media type; not scale,
// not form name, not the TrueType option.
inline constexpr std::uint32_t kDriverDevmodeFields =
    kDmOrientation | kDmPaperSize | kDmPaperLength | kDmPaperWidth | kDmCopies | kDmDefaultSource |
    kDmPrintQuality | kDmColor | kDmDuplex | kDmYResolution | kDmCollate | kDmMediaType;
static_assert(kDriverDevmodeFields == 0x0200BF0F);

// Values of the public words that more than one rule asks for.
inline constexpr std::int16_t kMaxCopies = 999;
inline constexpr std::int16_t kResolution600 = 600;
inline constexpr std::int16_t kResolution1200 = 1200;
inline constexpr std::int16_t kColorMonochrome = 1;  // DMCOLOR_MONOCHROME

// A user's paper size that isn't known: A4, pixels at 600 dpi.
inline constexpr std::uint16_t kDefaultCustomWidth_px600 = 4960;
inline constexpr std::uint16_t kDefaultCustomLength_px600 = 7015;

// dmDuplex and the private Duplex word: values above 3 are this driver's own.
inline constexpr std::int16_t kDuplexSimplex = 1;
inline constexpr std::int16_t kDuplexPublicMax = 3;
inline constexpr std::int16_t kDuplexPrivateMax = 5;

// ---- Watermark record, 1348 bytes ---------------------------------------------------------------

// One watermark. The record in force for a job lies inside PrivateDevmode; the user's collection
// keeps the same bytes.
struct WatermarkData {
  std::int16_t PageWMIndex;        // offset 0; id in the list, 0..32, 0 is no watermark
  std::int16_t PageWMFlag;         // 2; 0 none, 1 text, 2 image
  char16_t PageWMName[33];         // 4; list name, at most 32 characters
  char16_t PageWMText[65];         // 70; the text printed, at most 64 characters
  char16_t PageWMTypeface[32];     // 200; font family, at most 31 characters
  char16_t PageWMFileName[260];    // 264; image file, for the image type only
  std::int16_t PageWMSize;         // 784; points, 6..600, else 72
  std::int16_t PageWMBold;         // 786; 0, 1
  std::int16_t PageWMItalic;       // 788; 0, 1
  std::int16_t PageWMTransparent;  // 790; 0, 1; 1 draws through, 0 is opaque
  std::int16_t PageWMBorder;       // 792; frame around the text, 0..2
  std::int16_t PageWMAngle;        // 794; degrees, -90..90
  std::int16_t PageWMScale;        // 796; percent, image type, 0..1000
  std::int16_t PageWMPosition;     // 798; 0..10, 5 centre, 10 by the offsets below
  std::int16_t PageWMRepeat;       // 800; 0, 1; 1 repeats over the page
  std::int16_t WMFontChosen;       // 802; 0; 1 when the user picked a typeface; read by nothing
  std::uint32_t PageWMColor;       // 804; bytes red, green, blue, 0..0xFFFFFF, else 13311
  std::int16_t WMReserved;         // 808; 0..7
  std::int16_t WMOffsetX;          // 810; percent of the page, 0..100
  std::int16_t WMOffsetY;          // 812; percent of the page, 0..100
  std::int16_t WMGrayLevel;        // 814; 0..4
  std::int16_t WMStampOn;          // 816; 0, 1; 1 adds the items below to the text
  std::int16_t WMStampDate;        // 818; 0, 1; current date
  std::int16_t WMStampTime;        // 820; 0, 1; current time, "HH:mm:ss"
  std::int16_t WMStampPage;        // 822; 0, 1; page number
  char16_t WMStampFormat[260];     // 824; text of the page number item
  std::int16_t WMStampComputer;    // 1344; 0, 1; computer name
  std::int16_t WMStampUser;        // 1346; 0, 1; user name, at most 20 characters
};
static_assert(sizeof(WatermarkData) == 1348);
static_assert(offsetof(WatermarkData, PageWMIndex) == 0);
static_assert(offsetof(WatermarkData, PageWMFlag) == 2);
static_assert(offsetof(WatermarkData, PageWMName) == 4);
static_assert(offsetof(WatermarkData, PageWMText) == 70);
static_assert(offsetof(WatermarkData, PageWMTypeface) == 200);
static_assert(offsetof(WatermarkData, PageWMFileName) == 264);
static_assert(offsetof(WatermarkData, PageWMSize) == 784);
static_assert(offsetof(WatermarkData, PageWMBold) == 786);
static_assert(offsetof(WatermarkData, PageWMItalic) == 788);
static_assert(offsetof(WatermarkData, PageWMTransparent) == 790);
static_assert(offsetof(WatermarkData, PageWMBorder) == 792);
static_assert(offsetof(WatermarkData, PageWMAngle) == 794);
static_assert(offsetof(WatermarkData, PageWMScale) == 796);
static_assert(offsetof(WatermarkData, PageWMPosition) == 798);
static_assert(offsetof(WatermarkData, PageWMRepeat) == 800);
static_assert(offsetof(WatermarkData, WMFontChosen) == 802);
static_assert(offsetof(WatermarkData, PageWMColor) == 804);
static_assert(offsetof(WatermarkData, WMReserved) == 808);
static_assert(offsetof(WatermarkData, WMOffsetX) == 810);
static_assert(offsetof(WatermarkData, WMOffsetY) == 812);
static_assert(offsetof(WatermarkData, WMGrayLevel) == 814);
static_assert(offsetof(WatermarkData, WMStampOn) == 816);
static_assert(offsetof(WatermarkData, WMStampDate) == 818);
static_assert(offsetof(WatermarkData, WMStampTime) == 820);
static_assert(offsetof(WatermarkData, WMStampPage) == 822);
static_assert(offsetof(WatermarkData, WMStampFormat) == 824);
static_assert(offsetof(WatermarkData, WMStampComputer) == 1344);
static_assert(offsetof(WatermarkData, WMStampUser) == 1346);

// The most characters that a name has; the store of the user's collection refuses longer ones.
inline constexpr std::size_t kMostWatermarkNameCharacters = 32;
static_assert(sizeof(WatermarkData{}.PageWMName) ==
              (kMostWatermarkNameCharacters + 1) * sizeof(char16_t));

// ---- Custom paper entry, 72 bytes ---------------------------------------------------------------

inline constexpr std::size_t kCustomPaperEntries = 20;

// One place of the array CustomPaperSize. The sizes that the user edits live in the settings file;
// this array is cleared when a context is made, so it stays zero in a live one.
struct CustomPaperEntry {
  std::int16_t Width;     // offset 0; pixels at 600 dpi, 1800..5100
  std::int16_t Length;    // 2; pixels at 600 dpi, 3000..8400
  char16_t Name[25];      // 4; 24 characters and the terminator
  std::uint8_t Rest[18];  // 54
};
static_assert(sizeof(CustomPaperEntry) == 72);
static_assert(offsetof(CustomPaperEntry, Width) == 0);
static_assert(offsetof(CustomPaperEntry, Length) == 2);
static_assert(offsetof(CustomPaperEntry, Name) == 4);
static_assert(offsetof(CustomPaperEntry, Rest) == 54);

// ---- Private part, 7676 bytes -------------------------------------------------------------------

// Members bear the names of their keys in the parameter table, with their spelling ("Boooklet",
// "Constrast" and "FinessMode" among them). Words are signed. "0, 1" and "a..b" are the values that
// validation accepts; a member without a range isn't checked. A member without a meaning is stored
// and passed on for the render driver, who alone knows what it stands for.
//
// The colour words from PrintMode to InputImage are carried, defaulted and validated although the
// device is monochrome: the record is a format, and they keep everything behind them in its place.
struct PrivateDevmode {
  using SignatureBytes = std::array<char, 4>;

  SignatureBytes Signature;                      // offset 0; "PRIV", no terminator
  std::int16_t ColorMode;                        // 4; 1 only: always monochrome
  std::int16_t Duplex;                           // 6; 1..5; takes dmDuplex when that is above 3
  std::int16_t DuplexIndex;                      // 8; 0..2
  std::int16_t ReversePrint;                     // 10; 0, 1; last page first
  std::uint8_t Reserved12[256];                  // 12
  std::int16_t FinessMode;                       // 268; print fineness choice
  std::int16_t Reserved270;                      // 270
  std::int32_t OutputSize;                       // 272; paper id to fit to, 0 and above
  std::int32_t ScaleFlag;                        // 276; scaling mode, 0..2
  std::int32_t ScaleRadio;                       // 280; scale percent, 25..400
  std::int16_t MultipleUp;                       // 284; code for pages on a sheet, 1..23
  std::int16_t PageOrder;                        // 286; order of these pages, 0..5
  std::int16_t PageBorder;                       // 288; 0, 1; border round each page
  std::int16_t MixedOrient;                      // 290; 0..2
  std::int16_t PosterPrint;                      // 292; 0, 1
  std::int16_t PosterType;                       // 294; 0..2
  std::int16_t CropMarks;                        // 296; 0, 1
  std::int16_t SourceTray;                       // 298; tray choice of the paper page
  std::int16_t Rotate;                           // 300; quarter turns, 0..3
  std::int16_t FeedOrient;                       // 302; 1, 2; paper feed orientation
  std::int16_t ManualDuplex;                     // 304; 0, 1
  std::int16_t Mismatch;                         // 306
  std::int16_t BookletPrint;                     // 308; 0, 1
  std::int16_t BookletBinding;                   // 310; 0, 1
  std::int16_t BookletSubsets;                   // 312; 0..2
  std::int16_t BookletSheets;                    // 314; 1..50
  std::int16_t BookletGutter;                    // 316; 0, 1
  std::int16_t BookletAutoFit;                   // 318; 0, 1
  std::int16_t BookletMargins;                   // 320; pixels at 600 dpi, 0..1181
  std::int16_t BookletPrintCover;                // 322; 0, 1
  std::int16_t BookletPrintOnCoverOutside;       // 324; 0, 1
  std::int16_t BoookletPrintOnBackCoverOutside;  // 326; 0, 1
  std::int16_t BookletPrintOnCoverInside;        // 328; 0, 1
  std::int16_t BoookletPrintOnBackCoverInside;   // 330; 0, 1
  std::int16_t BookletCoverType;                 // 332; 0..12
  std::int16_t BookletCoverSource;               // 334; source of the cover sheet, a bin id
  std::int16_t ImageShift;                       // 336; 0..8
  std::int16_t MarginsAutoFit;                   // 338; 0, 1
  std::int16_t Side;                             // 340; pixels, 0..1181
  std::int16_t Side2;                            // 342; pixels, 0..1181
  std::int16_t PrintPosition;                    // 344; 0..4
  std::int16_t AdjustPrintPosition;              // 346; 0, 1
  std::int16_t LeftRight;                        // 348; pixels, -1181..1181
  std::int16_t UpDown;                           // 350; pixels, -1181..1181
  char16_t FavoriteName[256];                    // 352; name of the favourite in force
  std::int16_t FavoriteIndex;           // 864; kept with any value; place of the favourite in force
  std::int16_t JobMode;                 // 866; extra print-options word of some families
  std::int16_t JobFlag;                 // 868; extra print-options flag of one family
  std::int16_t PrintMode;               // 870; 0..2
  std::int16_t sLaserTestAPResolution;  // 872; 0..2
  std::int16_t ImageType[2];            // 874; image type 0..2, ICM type 0..3: one key
  std::int16_t ApplyElements;           // 878; 0, 1
  std::int16_t DocumentElement;         // 880; 0..2
  std::int16_t Brightness[4];           // 882; each -100..100
  std::int16_t Constrast[4];            // 890; each -100..100
  std::int16_t Saturation[4];           // 898; each -100..100
  std::int16_t AdjustBalance;           // 906; 0, 1
  std::int16_t TargetColor;             // 908; 0..3
  std::int16_t Highlights[4];           // 910; each -3..3
  std::int16_t Midtones[4];             // 918; each -3..3
  std::int16_t Shadows[4];              // 926; each -3..3
  std::int16_t Profile;                 // 934; 0..2
  std::int16_t ColorTemperature;        // 936; 0..2
  std::int16_t GammaCorrection;         // 938; 0..4
  std::int16_t ImageInputIndex;         // 940; 0..2
  char16_t Monitor[256];                // 942; emptied when not terminated
  char16_t InputImage[256];             // 1454; emptied when not terminated
  std::int16_t ScreenType;              // 1966; 0..3
  std::int16_t TonerSavingMode;         // 1968; 0..3
  std::int16_t Rotate180;               // 1970; 0, 1
  std::int16_t Mirror;                  // 1972; 0, 1
  std::int16_t Thickness;               // 1974; 0..4
  std::int16_t Negative;                // 1976; 0, 1
  std::int16_t Reserved1978;            // 1978
  std::uint32_t JobPinEnabled;          // 1980; 1 when a job PIN is in force
  char16_t JobPin[5];                   // 1984; with terminator
  char16_t JobUserName[17];             // 1994; with terminator
  char16_t JobName[25];                 // 2028; with terminator
  std::int16_t Reserved2078;            // 2078
  std::uint32_t JobNamesEnabled;        // 2080; 1 when user and job names go with the PIN
  std::int16_t FirstPageOnly;           // 2084; 0, 1; watermark on the first page only
  std::int16_t Reserved2086;            // 2086
  struct WatermarkData WatermarkData;   // 2088
  std::uint32_t WatermarkEditorWord;    // 3436; kept for the watermark editor
  std::int16_t OverlayFlag;             // 3440; an overlay file is used
  char16_t OverlayFileName[260];        // 3442; its path, 259 characters
  std::int16_t Reserved3962;            // 3962
  CustomPaperEntry CustomPaperSize[kCustomPaperEntries];  // 3964
  std::uint32_t UseSoftFont;                              // 5404; 0, 1
  std::uint32_t SoftFontBitmap;                           // 5408; 0, 1
  std::int16_t WatermarkPageCode;    // 5412; shown on the watermark page, low byte
  std::int16_t WatermarkPageTenths;  // 5414; shown on the watermark page, tenths
  std::uint8_t Reserved5416[2260];   // 5416; to the end
};
static_assert(sizeof(PrivateDevmode) == kPrivateDevmodeBytes);
static_assert(alignof(PrivateDevmode) == 4);

#define OSTREL_AT(member, offset) static_assert(offsetof(PrivateDevmode, member) == (offset))
OSTREL_AT(Signature, 0);
OSTREL_AT(ColorMode, 4);
OSTREL_AT(Duplex, 6);
OSTREL_AT(DuplexIndex, 8);
OSTREL_AT(ReversePrint, 10);
OSTREL_AT(Reserved12, 12);
OSTREL_AT(FinessMode, 268);
OSTREL_AT(Reserved270, 270);
OSTREL_AT(OutputSize, 272);
OSTREL_AT(ScaleFlag, 276);
OSTREL_AT(ScaleRadio, 280);
OSTREL_AT(MultipleUp, 284);
OSTREL_AT(PageOrder, 286);
OSTREL_AT(PageBorder, 288);
OSTREL_AT(MixedOrient, 290);
OSTREL_AT(PosterPrint, 292);
OSTREL_AT(PosterType, 294);
OSTREL_AT(CropMarks, 296);
OSTREL_AT(SourceTray, 298);
OSTREL_AT(Rotate, 300);
OSTREL_AT(FeedOrient, 302);
OSTREL_AT(ManualDuplex, 304);
OSTREL_AT(Mismatch, 306);
OSTREL_AT(BookletPrint, 308);
OSTREL_AT(BookletBinding, 310);
OSTREL_AT(BookletSubsets, 312);
OSTREL_AT(BookletSheets, 314);
OSTREL_AT(BookletGutter, 316);
OSTREL_AT(BookletAutoFit, 318);
OSTREL_AT(BookletMargins, 320);
OSTREL_AT(BookletPrintCover, 322);
OSTREL_AT(BookletPrintOnCoverOutside, 324);
OSTREL_AT(BoookletPrintOnBackCoverOutside, 326);
OSTREL_AT(BookletPrintOnCoverInside, 328);
OSTREL_AT(BoookletPrintOnBackCoverInside, 330);
OSTREL_AT(BookletCoverType, 332);
OSTREL_AT(BookletCoverSource, 334);
OSTREL_AT(ImageShift, 336);
OSTREL_AT(MarginsAutoFit, 338);
OSTREL_AT(Side, 340);
OSTREL_AT(Side2, 342);
OSTREL_AT(PrintPosition, 344);
OSTREL_AT(AdjustPrintPosition, 346);
OSTREL_AT(LeftRight, 348);
OSTREL_AT(UpDown, 350);
OSTREL_AT(FavoriteName, 352);
OSTREL_AT(FavoriteIndex, 864);
OSTREL_AT(JobMode, 866);
OSTREL_AT(JobFlag, 868);
OSTREL_AT(PrintMode, 870);
OSTREL_AT(sLaserTestAPResolution, 872);
OSTREL_AT(ImageType, 874);
OSTREL_AT(ImageType[1], 876);
OSTREL_AT(ApplyElements, 878);
OSTREL_AT(DocumentElement, 880);
OSTREL_AT(Brightness, 882);
OSTREL_AT(Constrast, 890);
OSTREL_AT(Saturation, 898);
OSTREL_AT(AdjustBalance, 906);
OSTREL_AT(TargetColor, 908);
OSTREL_AT(Highlights, 910);
OSTREL_AT(Midtones, 918);
OSTREL_AT(Shadows, 926);
OSTREL_AT(Profile, 934);
OSTREL_AT(ColorTemperature, 936);
OSTREL_AT(GammaCorrection, 938);
OSTREL_AT(ImageInputIndex, 940);
OSTREL_AT(Monitor, 942);
OSTREL_AT(InputImage, 1454);
OSTREL_AT(ScreenType, 1966);
OSTREL_AT(TonerSavingMode, 1968);
OSTREL_AT(Rotate180, 1970);
OSTREL_AT(Mirror, 1972);
OSTREL_AT(Thickness, 1974);
OSTREL_AT(Negative, 1976);
OSTREL_AT(Reserved1978, 1978);
OSTREL_AT(JobPinEnabled, 1980);
OSTREL_AT(JobPin, 1984);
OSTREL_AT(JobUserName, 1994);
OSTREL_AT(JobName, 2028);
OSTREL_AT(Reserved2078, 2078);
OSTREL_AT(JobNamesEnabled, 2080);
OSTREL_AT(FirstPageOnly, 2084);
OSTREL_AT(Reserved2086, 2086);
OSTREL_AT(WatermarkData, 2088);
OSTREL_AT(WatermarkEditorWord, 3436);
OSTREL_AT(OverlayFlag, 3440);
OSTREL_AT(OverlayFileName, 3442);
OSTREL_AT(Reserved3962, 3962);
OSTREL_AT(CustomPaperSize, 3964);
OSTREL_AT(UseSoftFont, 5404);
OSTREL_AT(SoftFontBitmap, 5408);
OSTREL_AT(WatermarkPageCode, 5412);
OSTREL_AT(WatermarkPageTenths, 5414);
OSTREL_AT(Reserved5416, 5416);
#undef OSTREL_AT

// What marks a private part as one of this driver.
inline constexpr PrivateDevmode::SignatureBytes kPrivateSignature = {'P', 'R', 'I', 'V'};

// ---- The whole record, 7896 bytes ---------------------------------------------------------------

struct DriverDevmode {
  PublicDevmode publicDevmode;
  PrivateDevmode privateDevmode;
};
static_assert(sizeof(DriverDevmode) == kDriverDevmodeBytes);
static_assert(offsetof(DriverDevmode, privateDevmode) == kPublicDevmodeBytes);

// Sets a public record to this driver's defaults. `deviceName` is the printer's driver name; what
// doesn't fit the field is cut to 31 characters, and null leaves the field empty.
// Result: kResultOk, or kResultFail for a null record.
Result InitPublicDevmode(PublicDevmode* record, const char16_t* deviceName);

// Sets a private record to its defaults. With a driver name, the language library of that printer
// is opened for the two strings that a record takes from it, and closed again. Result: kResultOk;
// kResultNoLanguage when that library could not be opened (the record is good, but FavoriteName is
// empty); kResultNullObject for a null record.
Result InitPrivateDevmode(PrivateDevmode* record, const char16_t* driverName);

// Both of the above for a whole record. Result: false when either fails, or when the record doesn't
// announce the private part's size afterwards. A missing language library is no failure.
bool InitDriverDevmode(DriverDevmode* record, const char16_t* deviceName,
                       const char16_t* driverName);

// Repairs every value that is out of range. The order is the schema's, then the custom papers, then
// the words that the schema has no row for; no repair depends on another.
// Result: kResultOk, or kResultNullObject for a null record.
Result ValidatePrivateDevmode(PrivateDevmode* record);

}  // namespace ostrel
