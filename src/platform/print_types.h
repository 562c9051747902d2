// Plain types of the print system's binary interface.
//
// The structures below have the layout that the 64-bit print system gives them; the Windows
// platform asserts that, member by member. Names are those of the platform's own headers
// (wingdi.h, winspool.h, winddiui.h), with strings as UTF-16 units and handles as opaque pointers,
// so that the logic compiles without those headers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ostrel {

// A printer opened through the print system.
using PrinterHandle = struct PrinterHandleRep*;
// A loaded library.
using ModuleHandle = struct ModuleHandleRep*;
// A file opened through the file list.
using FileHandle = struct FileHandleRep*;
// A common property sheet.
using SheetHandle = struct SheetHandleRep*;
// A window.
using WindowHandle = struct WindowHandleRep*;
// An access token of a process.
using TokenHandle = struct TokenHandleRep*;
// An opened key of the registry.
using RegistryKey = struct RegistryKeyRep*;

// ---- Device mode (wingdi.h, DEVMODEW) -----------------------------------------------------------

inline constexpr std::size_t kDeviceNameUnits = 32;  // CCHDEVICENAME
inline constexpr std::size_t kFormNameUnits = 32;    // CCHFORMNAME

// Bits of dmFields, DM_... of wingdi.h.
enum DevmodeField : std::uint32_t {
  kDmOrientation = 0x00000001,
  kDmPaperSize = 0x00000002,
  kDmPaperLength = 0x00000004,
  kDmPaperWidth = 0x00000008,
  kDmScale = 0x00000010,
  kDmCopies = 0x00000100,
  kDmDefaultSource = 0x00000200,
  kDmPrintQuality = 0x00000400,
  kDmColor = 0x00000800,
  kDmDuplex = 0x00001000,
  kDmYResolution = 0x00002000,
  kDmTTOption = 0x00004000,
  kDmCollate = 0x00008000,
  kDmFormName = 0x00010000,
  kDmMediaType = 0x02000000,
};

// The public part of every settings record: DEVMODEW as printers use it, 220 bytes.
struct PublicDevmode {
  char16_t dmDeviceName[kDeviceNameUnits];  // offset 0; may lack its terminator in a foreign record
  std::uint16_t dmSpecVersion;              // 64
  std::uint16_t dmDriverVersion;            // 66
  std::uint16_t dmSize;                     // 68; bytes of the public part
  std::uint16_t dmDriverExtra;              // 70; bytes of the private part behind it
  std::uint32_t dmFields;                   // 72; DevmodeField bits
  std::int16_t dmOrientation;               // 76; 1 portrait, 2 landscape
  std::int16_t dmPaperSize;                 // 78; DMPAPER_... or an id of this driver
  std::int16_t dmPaperLength;               // 80; tenths of a millimetre
  std::int16_t dmPaperWidth;                // 82; tenths of a millimetre
  std::int16_t dmScale;                     // 84; percent
  std::int16_t dmCopies;                    // 86
  std::int16_t dmDefaultSource;             // 88; bin id
  std::int16_t dmPrintQuality;              // 90; dots per inch
  std::int16_t dmColor;                     // 92; 1 monochrome
  std::int16_t dmDuplex;                    // 94; 1 simplex, 2 long edge, 3 short edge
  std::int16_t dmYResolution;               // 96; dots per inch
  std::int16_t dmTTOption;                  // 98
  std::int16_t dmCollate;                   // 100
  char16_t dmFormName[kFormNameUnits];      // 102
  std::uint16_t dmLogPixels;                // 166
  std::uint32_t dmBitsPerPel;               // 168
  std::uint32_t dmPelsWidth;                // 172
  std::uint32_t dmPelsHeight;               // 176
  std::uint32_t dmDisplayFlags;             // 180
  std::uint32_t dmDisplayFrequency;         // 184
  std::uint32_t dmICMMethod;                // 188
  std::uint32_t dmICMIntent;                // 192
  std::uint32_t dmMediaType;                // 196
  std::uint32_t dmDitherType;               // 200
  std::uint32_t dmReserved1;                // 204
  std::uint32_t dmReserved2;                // 208
  std::uint32_t dmPanningWidth;             // 212
  std::uint32_t dmPanningHeight;            // 216
};
static_assert(sizeof(PublicDevmode) == 220);
static_assert(alignof(PublicDevmode) == 4);
static_assert(offsetof(PublicDevmode, dmDeviceName) == 0);
static_assert(offsetof(PublicDevmode, dmSpecVersion) == 64);
static_assert(offsetof(PublicDevmode, dmDriverVersion) == 66);
static_assert(offsetof(PublicDevmode, dmSize) == 68);
static_assert(offsetof(PublicDevmode, dmDriverExtra) == 70);
static_assert(offsetof(PublicDevmode, dmFields) == 72);
static_assert(offsetof(PublicDevmode, dmOrientation) == 76);
static_assert(offsetof(PublicDevmode, dmPaperSize) == 78);
static_assert(offsetof(PublicDevmode, dmPaperLength) == 80);
static_assert(offsetof(PublicDevmode, dmPaperWidth) == 82);
static_assert(offsetof(PublicDevmode, dmScale) == 84);
static_assert(offsetof(PublicDevmode, dmCopies) == 86);
static_assert(offsetof(PublicDevmode, dmDefaultSource) == 88);
static_assert(offsetof(PublicDevmode, dmPrintQuality) == 90);
static_assert(offsetof(PublicDevmode, dmColor) == 92);
static_assert(offsetof(PublicDevmode, dmDuplex) == 94);
static_assert(offsetof(PublicDevmode, dmYResolution) == 96);
static_assert(offsetof(PublicDevmode, dmTTOption) == 98);
static_assert(offsetof(PublicDevmode, dmCollate) == 100);
static_assert(offsetof(PublicDevmode, dmFormName) == 102);
static_assert(offsetof(PublicDevmode, dmLogPixels) == 166);
static_assert(offsetof(PublicDevmode, dmBitsPerPel) == 168);
static_assert(offsetof(PublicDevmode, dmPelsWidth) == 172);
static_assert(offsetof(PublicDevmode, dmPelsHeight) == 176);
static_assert(offsetof(PublicDevmode, dmDisplayFlags) == 180);
static_assert(offsetof(PublicDevmode, dmDisplayFrequency) == 184);
static_assert(offsetof(PublicDevmode, dmICMMethod) == 188);
static_assert(offsetof(PublicDevmode, dmICMIntent) == 192);
static_assert(offsetof(PublicDevmode, dmMediaType) == 196);
static_assert(offsetof(PublicDevmode, dmDitherType) == 200);
static_assert(offsetof(PublicDevmode, dmReserved1) == 204);
static_assert(offsetof(PublicDevmode, dmReserved2) == 208);
static_assert(offsetof(PublicDevmode, dmPanningWidth) == 212);
static_assert(offsetof(PublicDevmode, dmPanningHeight) == 216);

// Bytes up to the end of the header words: the least that a caller's record must hold before its
// own size words can be read.
inline constexpr std::size_t kDevmodeHeaderBytes = 72;
static_assert(kDevmodeHeaderBytes ==
              offsetof(PublicDevmode, dmDriverExtra) + sizeof(PublicDevmode::dmDriverExtra));

// Mode bits of DocumentPropertiesW and of the document property header, DM_... of wingdi.h.
enum DocumentMode : std::uint32_t {
  kDmUpdate = 1,
  kDmCopy = 2,
  kDmNoPermission = 0x20,  // of the document property header alone
};

// ---- Printers and drivers (winspool.h) ----------------------------------------------------------

// PRINTER_DEFAULTSW.
struct PrinterDefaults {
  char16_t* pDatatype;
  PublicDevmode* pDevMode;
  std::uint32_t DesiredAccess;
};
static_assert(sizeof(PrinterDefaults) == 24);
static_assert(offsetof(PrinterDefaults, pDatatype) == 0);
static_assert(offsetof(PrinterDefaults, pDevMode) == 8);
static_assert(offsetof(PrinterDefaults, DesiredAccess) == 16);

inline constexpr std::uint32_t kPrinterAllAccess = 0x000F000C;  // PRINTER_ALL_ACCESS

// PRINTER_INFO_2W.
struct PrinterInfo2 {
  char16_t* pServerName;
  char16_t* pPrinterName;
  char16_t* pShareName;
  char16_t* pPortName;
  char16_t* pDriverName;
  char16_t* pComment;
  char16_t* pLocation;
  PublicDevmode* pDevMode;
  char16_t* pSepFile;
  char16_t* pPrintProcessor;
  char16_t* pDatatype;
  char16_t* pParameters;
  void* pSecurityDescriptor;
  std::uint32_t Attributes;
  std::uint32_t Priority;
  std::uint32_t DefaultPriority;
  std::uint32_t StartTime;
  std::uint32_t UntilTime;
  std::uint32_t Status;
  std::uint32_t cJobs;
  std::uint32_t AveragePPM;
};
static_assert(sizeof(PrinterInfo2) == 136);
static_assert(offsetof(PrinterInfo2, pServerName) == 0);
static_assert(offsetof(PrinterInfo2, pPrinterName) == 8);
static_assert(offsetof(PrinterInfo2, pShareName) == 16);
static_assert(offsetof(PrinterInfo2, pPortName) == 24);
static_assert(offsetof(PrinterInfo2, pDriverName) == 32);
static_assert(offsetof(PrinterInfo2, pComment) == 40);
static_assert(offsetof(PrinterInfo2, pLocation) == 48);
static_assert(offsetof(PrinterInfo2, pDevMode) == 56);
static_assert(offsetof(PrinterInfo2, pSepFile) == 64);
static_assert(offsetof(PrinterInfo2, pPrintProcessor) == 72);
static_assert(offsetof(PrinterInfo2, pDatatype) == 80);
static_assert(offsetof(PrinterInfo2, pParameters) == 88);
static_assert(offsetof(PrinterInfo2, pSecurityDescriptor) == 96);
static_assert(offsetof(PrinterInfo2, Attributes) == 104);
static_assert(offsetof(PrinterInfo2, Priority) == 108);
static_assert(offsetof(PrinterInfo2, DefaultPriority) == 112);
static_assert(offsetof(PrinterInfo2, StartTime) == 116);
static_assert(offsetof(PrinterInfo2, UntilTime) == 120);
static_assert(offsetof(PrinterInfo2, Status) == 124);
static_assert(offsetof(PrinterInfo2, cJobs) == 128);
static_assert(offsetof(PrinterInfo2, AveragePPM) == 132);

// PRINTER_INFO_8W, the printer's own default record.
struct PrinterInfo8 {
  PublicDevmode* pDevMode;
};
static_assert(sizeof(PrinterInfo8) == 8);

// DRIVER_INFO_2W.
struct DriverInfo2 {
  std::uint32_t cVersion;
  char16_t* pName;
  char16_t* pEnvironment;
  char16_t* pDriverPath;
  char16_t* pDataFile;
  char16_t* pConfigFile;
};
static_assert(sizeof(DriverInfo2) == 48);
static_assert(offsetof(DriverInfo2, cVersion) == 0);
static_assert(offsetof(DriverInfo2, pName) == 8);
static_assert(offsetof(DriverInfo2, pEnvironment) == 16);
static_assert(offsetof(DriverInfo2, pDriverPath) == 24);
static_assert(offsetof(DriverInfo2, pDataFile) == 32);
static_assert(offsetof(DriverInfo2, pConfigFile) == 40);

// ---- Driver entry points (winddiui.h, winddi.h) -------------------------------------------------

// DOCUMENTPROPERTYHEADER.
struct DocumentPropertyHeader {
  std::uint16_t cbSize;
  std::uint16_t Reserved;
  PrinterHandle hPrinter;
  char16_t* pszPrinterName;
  PublicDevmode* pdmIn;
  PublicDevmode* pdmOut;
  std::uint32_t cbOut;
  std::uint32_t fMode;
};
static_assert(sizeof(DocumentPropertyHeader) == 48);
static_assert(offsetof(DocumentPropertyHeader, cbSize) == 0);
static_assert(offsetof(DocumentPropertyHeader, Reserved) == 2);
static_assert(offsetof(DocumentPropertyHeader, hPrinter) == 8);
static_assert(offsetof(DocumentPropertyHeader, pszPrinterName) == 16);
static_assert(offsetof(DocumentPropertyHeader, pdmIn) == 24);
static_assert(offsetof(DocumentPropertyHeader, pdmOut) == 32);
static_assert(offsetof(DocumentPropertyHeader, cbOut) == 40);
static_assert(offsetof(DocumentPropertyHeader, fMode) == 44);

// DEVICEPROPERTYHEADER. It begins as DOCUMENTPROPERTYHEADER does.
struct DevicePropertyHeader {
  std::uint16_t cbSize;
  std::uint16_t Flags;
  PrinterHandle hPrinter;
  char16_t* pszPrinterName;
};
static_assert(sizeof(DevicePropertyHeader) == 24);
static_assert(offsetof(DevicePropertyHeader, hPrinter) ==
              offsetof(DocumentPropertyHeader, hPrinter));
static_assert(offsetof(DevicePropertyHeader, pszPrinterName) ==
              offsetof(DocumentPropertyHeader, pszPrinterName));

// DEVQUERYPRINT_INFO.
struct DevQueryPrintInfo {
  std::uint16_t cbSize;
  std::uint16_t Level;
  PrinterHandle hPrinter;
  PublicDevmode* pDevMode;
  char16_t* pszErrorStr;
  std::uint32_t cchErrorStr;  // units that pszErrorStr holds
  std::uint32_t cchNeeded;    // units needed, with the terminator
};
static_assert(sizeof(DevQueryPrintInfo) == 40);
static_assert(offsetof(DevQueryPrintInfo, cbSize) == 0);
static_assert(offsetof(DevQueryPrintInfo, Level) == 2);
static_assert(offsetof(DevQueryPrintInfo, hPrinter) == 8);
static_assert(offsetof(DevQueryPrintInfo, pDevMode) == 16);
static_assert(offsetof(DevQueryPrintInfo, pszErrorStr) == 24);
static_assert(offsetof(DevQueryPrintInfo, cchErrorStr) == 32);
static_assert(offsetof(DevQueryPrintInfo, cchNeeded) == 36);

// ATTRIBUTE_INFO_3.
struct AttributeInfo3 {
  std::uint32_t dwJobNumberOfPagesPerSide;
  std::uint32_t dwDrvNumberOfPagesPerSide;
  std::uint32_t dwNupBorderFlags;
  std::uint32_t dwJobPageOrderFlags;
  std::uint32_t dwDrvPageOrderFlags;
  std::uint32_t dwJobNumberOfCopies;
  std::uint32_t dwDrvNumberOfCopies;
  std::uint32_t dwColorOptimization;
  std::int16_t dmPrintQuality;
  std::int16_t dmYResolution;
};
static_assert(sizeof(AttributeInfo3) == 36);
static_assert(offsetof(AttributeInfo3, dwJobNumberOfPagesPerSide) == 0);
static_assert(offsetof(AttributeInfo3, dwDrvNumberOfPagesPerSide) == 4);
static_assert(offsetof(AttributeInfo3, dwNupBorderFlags) == 8);
static_assert(offsetof(AttributeInfo3, dwJobPageOrderFlags) == 12);
static_assert(offsetof(AttributeInfo3, dwDrvPageOrderFlags) == 16);
static_assert(offsetof(AttributeInfo3, dwJobNumberOfCopies) == 20);
static_assert(offsetof(AttributeInfo3, dwDrvNumberOfCopies) == 24);
static_assert(offsetof(AttributeInfo3, dwColorOptimization) == 28);
static_assert(offsetof(AttributeInfo3, dmPrintQuality) == 32);
static_assert(offsetof(AttributeInfo3, dmYResolution) == 34);

// DRIVER_UPGRADE_INFO_1W.
struct DriverUpgradeInfo1 {
  char16_t* pPrinterName;
  char16_t* pOldDriverDirectory;
};
static_assert(sizeof(DriverUpgradeInfo1) == 16);
static_assert(offsetof(DriverUpgradeInfo1, pPrinterName) == 0);
static_assert(offsetof(DriverUpgradeInfo1, pOldDriverDirectory) == 8);

// Modes of DrvConvertDevMode, CDM_... of winddiui.h.
enum ConvertMode : std::uint32_t {
  kCdmConvert = 1,
  kCdmConvert351 = 2,
  kCdmDriverDefault = 4,
};

// Capability codes, DC_... of wingdi.h.
enum DeviceCapability : std::uint16_t {
  kDcFields = 1,
  kDcPapers = 2,
  kDcPaperSize = 3,
  kDcMinExtent = 4,
  kDcMaxExtent = 5,
  kDcBins = 6,
  kDcDuplex = 7,
  kDcSize = 8,
  kDcExtra = 9,
  kDcVersion = 10,
  kDcDriver = 11,
  kDcBinNames = 12,
  kDcEnumResolutions = 13,
  kDcFileDependencies = 14,
  kDcTrueType = 15,
  kDcPaperNames = 16,
  kDcOrientation = 17,
  kDcCopies = 18,
  kDcBinAdjust = 19,
  kDcCollate = 22,
  kDcMediaReady = 29,
  kDcStaple = 30,
  kDcPrintRatePpm = 31,
  kDcColorDevice = 32,
};

// Units of one row of the name lists, as DeviceCapabilitiesW documents them.
inline constexpr std::size_t kBinNameUnits = 24;
inline constexpr std::size_t kPaperNameUnits = 64;

// POINT.
struct Point {
  std::int32_t x;
  std::int32_t y;
  bool operator==(const Point&) const = default;
};
static_assert(sizeof(Point) == 8);

// SYSTEMTIME (minwinbase.h): a day and a time of day.
struct SystemTime {
  std::uint16_t wYear;
  std::uint16_t wMonth;      // 1..12
  std::uint16_t wDayOfWeek;  // 0 is Sunday
  std::uint16_t wDay;
  std::uint16_t wHour;
  std::uint16_t wMinute;
  std::uint16_t wSecond;
  std::uint16_t wMilliseconds;
  bool operator==(const SystemTime&) const = default;
};
static_assert(sizeof(SystemTime) == 16);

// ---- Errors and locale --------------------------------------------------------------------------

// Last-error codes, winerror.h.
enum ErrorCode : std::uint32_t {
  kErrorSuccess = 0,
  kErrorFileNotFound = 2,
  kErrorPathNotFound = 3,
  kErrorAccessDenied = 5,
  kErrorInvalidHandle = 6,
  kErrorNotEnoughMemory = 8,
  kErrorInvalidParameter = 87,
  kErrorBufferOverflow = 111,
  kErrorDiskFull = 112,
  kErrorInsufficientBuffer = 122,
  kErrorInvalidLevel = 124,
  kErrorModuleNotFound = 126,
  kErrorAlreadyExists = 183,
  kErrorMoreData = 234,
  kErrorCanNotComplete = 1003,
  kErrorInvalidPrinterName = 1801,
  kErrorResourceNameNotFound = 1814,
};

inline constexpr std::uint32_t kLocaleUserDefault = 0x400;  // LOCALE_USER_DEFAULT, winnt.h
inline constexpr std::uint32_t kLocaleICountry = 5;         // LOCALE_ICOUNTRY, winnls.h
inline constexpr std::uint32_t kAnsiCodePage = 0;           // CP_ACP, winnls.h
inline constexpr std::uint32_t kTimeForce24Hours = 0x8;     // TIME_FORCE24HOURFORMAT, winnls.h

inline constexpr std::size_t kMaxPathUnits = 260;  // MAX_PATH

// ---- Registry, security, shell ------------------------------------------------------------------

// Types of registry values and of printer data, winnt.h.
enum ValueType : std::uint32_t {
  kRegSz = 1,
  kRegBinary = 3,
  kRegDword = 4,
};

// TOKEN_INFORMATION_CLASS, winnt.h.
inline constexpr std::uint32_t kTokenUser = 1;
inline constexpr std::uint32_t kTokenGroups = 2;
inline constexpr std::uint32_t kGroupEnabled = 0x4;  // SE_GROUP_ENABLED

// TOKEN_USER, its SID_AND_ATTRIBUTES told apart.
struct TokenUser {
  void* Sid;
  std::uint32_t Attributes;
};
static_assert(sizeof(TokenUser) == 16);

// TOKEN_GROUPS, as many rows as it tells. A row is a SID_AND_ATTRIBUTES.
struct TokenGroups {
  std::uint32_t GroupCount;
  TokenUser Groups[1];
};
static_assert(offsetof(TokenGroups, Groups) == 8);

inline constexpr std::size_t kUserNameUnits = 257;  // UNLEN + 1, lmcons.h

inline constexpr std::uint32_t kInvalidFileAttributes = 0xFFFFFFFF;  // fileapi.h
inline constexpr std::uint32_t kCsidlSystem = 37;                    // CSIDL_SYSTEM, shlobj.h
inline constexpr std::uint32_t kCsidlAppData = 0x1A;                 // CSIDL_APPDATA
inline constexpr std::uint32_t kCsidlFlagCreate = 0x8000;            // CSIDL_FLAG_CREATE
inline constexpr std::uint32_t kHelpContext = 15;                    // HH_HELP_CONTEXT, htmlhelp.h

// Styles of message boxes, winuser.h.
enum MessageBoxStyle : std::uint32_t {
  kMbYesNo = 0x04,
  kMbIconError = 0x10,
  kMbIconExclamation = 0x30,
  kMbRightToLeft = 0x180000,  // MB_RIGHT | MB_RTLREADING
};

}  // namespace ostrel
