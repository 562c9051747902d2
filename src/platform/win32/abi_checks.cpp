// Holds the logic's plain types against the platform's own: every structure of print_types.h has
// the size, and every member the place and the width, that the platform's headers give it, and
// every constant has its value. There is nothing here but assertions.
#include "platform/print_types.h"
#include "platform/win32/driver_interface.h"
#include "platform/win32/native_types.h"

#include <windows.h>
#include <winspool.h>
#include <winsplp.h>

#include <cstddef>
#include <htmlhelp.h>
#include <lmcons.h>
#include <shfolder.h>

namespace ostrel::win32 {
namespace {

#define OSTREL_SAME_SIZE(ours, theirs)           \
  static_assert(sizeof(ours) == sizeof(theirs)); \
  static_assert(alignof(ours) == alignof(theirs))
#define OSTREL_SAME_MEMBER(ours, theirs, member)                     \
  static_assert(offsetof(ours, member) == offsetof(theirs, member)); \
  static_assert(sizeof(ours::member) == sizeof(theirs::member))
#define OSTREL_SAME_VALUE(ours, theirs) \
  static_assert(static_cast<unsigned long long>(ours) == static_cast<unsigned long long>(theirs))

// The size of a pointer member is what is meant.
// NOLINTBEGIN(bugprone-sizeof-expression)

OSTREL_SAME_SIZE(PublicDevmode, DEVMODEW);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmDeviceName);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmSpecVersion);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmDriverVersion);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmSize);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmDriverExtra);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmFields);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmOrientation);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmPaperSize);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmPaperLength);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmPaperWidth);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmScale);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmCopies);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmDefaultSource);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmPrintQuality);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmColor);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmDuplex);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmYResolution);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmTTOption);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmCollate);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmFormName);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmLogPixels);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmBitsPerPel);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmPelsWidth);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmPelsHeight);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmDisplayFlags);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmDisplayFrequency);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmICMMethod);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmICMIntent);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmMediaType);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmDitherType);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmReserved1);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmReserved2);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmPanningWidth);
OSTREL_SAME_MEMBER(PublicDevmode, DEVMODEW, dmPanningHeight);

OSTREL_SAME_SIZE(PrinterDefaults, PRINTER_DEFAULTSW);
OSTREL_SAME_MEMBER(PrinterDefaults, PRINTER_DEFAULTSW, pDatatype);
OSTREL_SAME_MEMBER(PrinterDefaults, PRINTER_DEFAULTSW, pDevMode);
OSTREL_SAME_MEMBER(PrinterDefaults, PRINTER_DEFAULTSW, DesiredAccess);

OSTREL_SAME_SIZE(PrinterInfo2, PRINTER_INFO_2W);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pServerName);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pPrinterName);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pShareName);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pPortName);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pDriverName);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pComment);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pLocation);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pDevMode);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pSepFile);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pPrintProcessor);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pDatatype);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pParameters);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, pSecurityDescriptor);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, Attributes);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, Priority);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, DefaultPriority);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, StartTime);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, UntilTime);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, Status);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, cJobs);
OSTREL_SAME_MEMBER(PrinterInfo2, PRINTER_INFO_2W, AveragePPM);

OSTREL_SAME_SIZE(PrinterInfo8, PRINTER_INFO_8W);
OSTREL_SAME_MEMBER(PrinterInfo8, PRINTER_INFO_8W, pDevMode);

OSTREL_SAME_SIZE(DriverInfo2, DRIVER_INFO_2W);
OSTREL_SAME_MEMBER(DriverInfo2, DRIVER_INFO_2W, cVersion);
OSTREL_SAME_MEMBER(DriverInfo2, DRIVER_INFO_2W, pName);
OSTREL_SAME_MEMBER(DriverInfo2, DRIVER_INFO_2W, pEnvironment);
OSTREL_SAME_MEMBER(DriverInfo2, DRIVER_INFO_2W, pDriverPath);
OSTREL_SAME_MEMBER(DriverInfo2, DRIVER_INFO_2W, pDataFile);
OSTREL_SAME_MEMBER(DriverInfo2, DRIVER_INFO_2W, pConfigFile);

OSTREL_SAME_SIZE(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER);
OSTREL_SAME_MEMBER(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER, cbSize);
OSTREL_SAME_MEMBER(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER, Reserved);
OSTREL_SAME_MEMBER(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER, hPrinter);
OSTREL_SAME_MEMBER(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER, pszPrinterName);
OSTREL_SAME_MEMBER(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER, pdmIn);
OSTREL_SAME_MEMBER(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER, pdmOut);
OSTREL_SAME_MEMBER(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER, cbOut);
OSTREL_SAME_MEMBER(DocumentPropertyHeader, DOCUMENTPROPERTYHEADER, fMode);

OSTREL_SAME_SIZE(DevicePropertyHeader, DEVICEPROPERTYHEADER);
OSTREL_SAME_MEMBER(DevicePropertyHeader, DEVICEPROPERTYHEADER, cbSize);
OSTREL_SAME_MEMBER(DevicePropertyHeader, DEVICEPROPERTYHEADER, Flags);
OSTREL_SAME_MEMBER(DevicePropertyHeader, DEVICEPROPERTYHEADER, hPrinter);
OSTREL_SAME_MEMBER(DevicePropertyHeader, DEVICEPROPERTYHEADER, pszPrinterName);

OSTREL_SAME_SIZE(DevQueryPrintInfo, DEVQUERYPRINT_INFO);
OSTREL_SAME_MEMBER(DevQueryPrintInfo, DEVQUERYPRINT_INFO, cbSize);
OSTREL_SAME_MEMBER(DevQueryPrintInfo, DEVQUERYPRINT_INFO, Level);
OSTREL_SAME_MEMBER(DevQueryPrintInfo, DEVQUERYPRINT_INFO, hPrinter);
OSTREL_SAME_MEMBER(DevQueryPrintInfo, DEVQUERYPRINT_INFO, pDevMode);
OSTREL_SAME_MEMBER(DevQueryPrintInfo, DEVQUERYPRINT_INFO, pszErrorStr);
OSTREL_SAME_MEMBER(DevQueryPrintInfo, DEVQUERYPRINT_INFO, cchErrorStr);
OSTREL_SAME_MEMBER(DevQueryPrintInfo, DEVQUERYPRINT_INFO, cchNeeded);

OSTREL_SAME_SIZE(AttributeInfo3, ATTRIBUTE_INFO_3);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dwJobNumberOfPagesPerSide);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dwDrvNumberOfPagesPerSide);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dwNupBorderFlags);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dwJobPageOrderFlags);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dwDrvPageOrderFlags);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dwJobNumberOfCopies);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dwDrvNumberOfCopies);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dwColorOptimization);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dmPrintQuality);
OSTREL_SAME_MEMBER(AttributeInfo3, ATTRIBUTE_INFO_3, dmYResolution);

OSTREL_SAME_SIZE(DriverUpgradeInfo1, DRIVER_UPGRADE_INFO_1W);
OSTREL_SAME_MEMBER(DriverUpgradeInfo1, DRIVER_UPGRADE_INFO_1W, pPrinterName);
OSTREL_SAME_MEMBER(DriverUpgradeInfo1, DRIVER_UPGRADE_INFO_1W, pOldDriverDirectory);

OSTREL_SAME_SIZE(Point, POINT);
OSTREL_SAME_MEMBER(Point, POINT, x);
OSTREL_SAME_MEMBER(Point, POINT, y);

OSTREL_SAME_VALUE(kDeviceNameUnits, CCHDEVICENAME);
OSTREL_SAME_VALUE(kFormNameUnits, CCHFORMNAME);
OSTREL_SAME_VALUE(kDmOrientation, DM_ORIENTATION);
OSTREL_SAME_VALUE(kDmPaperSize, DM_PAPERSIZE);
OSTREL_SAME_VALUE(kDmPaperLength, DM_PAPERLENGTH);
OSTREL_SAME_VALUE(kDmPaperWidth, DM_PAPERWIDTH);
OSTREL_SAME_VALUE(kDmScale, DM_SCALE);
OSTREL_SAME_VALUE(kDmCopies, DM_COPIES);
OSTREL_SAME_VALUE(kDmDefaultSource, DM_DEFAULTSOURCE);
OSTREL_SAME_VALUE(kDmPrintQuality, DM_PRINTQUALITY);
OSTREL_SAME_VALUE(kDmColor, DM_COLOR);
OSTREL_SAME_VALUE(kDmDuplex, DM_DUPLEX);
OSTREL_SAME_VALUE(kDmYResolution, DM_YRESOLUTION);
OSTREL_SAME_VALUE(kDmTTOption, DM_TTOPTION);
OSTREL_SAME_VALUE(kDmCollate, DM_COLLATE);
OSTREL_SAME_VALUE(kDmFormName, DM_FORMNAME);
OSTREL_SAME_VALUE(kDmMediaType, DM_MEDIATYPE);
OSTREL_SAME_VALUE(kDmUpdate, DM_UPDATE);
OSTREL_SAME_VALUE(kDmCopy, DM_COPY);
OSTREL_SAME_VALUE(kPrinterAllAccess, PRINTER_ALL_ACCESS);
OSTREL_SAME_VALUE(kCdmConvert, CDM_CONVERT);
OSTREL_SAME_VALUE(kCdmConvert351, CDM_CONVERT351);
OSTREL_SAME_VALUE(kCdmDriverDefault, CDM_DRIVER_DEFAULT);
OSTREL_SAME_VALUE(kDcFields, DC_FIELDS);
OSTREL_SAME_VALUE(kDcPapers, DC_PAPERS);
OSTREL_SAME_VALUE(kDcPaperSize, DC_PAPERSIZE);
OSTREL_SAME_VALUE(kDcMinExtent, DC_MINEXTENT);
OSTREL_SAME_VALUE(kDcMaxExtent, DC_MAXEXTENT);
OSTREL_SAME_VALUE(kDcBins, DC_BINS);
OSTREL_SAME_VALUE(kDcDuplex, DC_DUPLEX);
OSTREL_SAME_VALUE(kDcSize, DC_SIZE);
OSTREL_SAME_VALUE(kDcExtra, DC_EXTRA);
OSTREL_SAME_VALUE(kDcVersion, DC_VERSION);
OSTREL_SAME_VALUE(kDcDriver, DC_DRIVER);
OSTREL_SAME_VALUE(kDcBinNames, DC_BINNAMES);
OSTREL_SAME_VALUE(kDcEnumResolutions, DC_ENUMRESOLUTIONS);
OSTREL_SAME_VALUE(kDcFileDependencies, DC_FILEDEPENDENCIES);
OSTREL_SAME_VALUE(kDcTrueType, DC_TRUETYPE);
OSTREL_SAME_VALUE(kDcPaperNames, DC_PAPERNAMES);
OSTREL_SAME_VALUE(kDcOrientation, DC_ORIENTATION);
OSTREL_SAME_VALUE(kDcCopies, DC_COPIES);
OSTREL_SAME_VALUE(kDcBinAdjust, DC_BINADJUST);
OSTREL_SAME_VALUE(kDcCollate, DC_COLLATE);
OSTREL_SAME_VALUE(kDcMediaReady, DC_MEDIAREADY);
OSTREL_SAME_VALUE(kDcStaple, DC_STAPLE);
OSTREL_SAME_VALUE(kDcPrintRatePpm, DC_PRINTRATEPPM);
OSTREL_SAME_VALUE(kDcColorDevice, DC_COLORDEVICE);
OSTREL_SAME_VALUE(kErrorSuccess, ERROR_SUCCESS);
OSTREL_SAME_VALUE(kErrorFileNotFound, ERROR_FILE_NOT_FOUND);
OSTREL_SAME_VALUE(kErrorInvalidHandle, ERROR_INVALID_HANDLE);
OSTREL_SAME_VALUE(kErrorNotEnoughMemory, ERROR_NOT_ENOUGH_MEMORY);
OSTREL_SAME_VALUE(kErrorInvalidParameter, ERROR_INVALID_PARAMETER);
OSTREL_SAME_VALUE(kErrorInsufficientBuffer, ERROR_INSUFFICIENT_BUFFER);
OSTREL_SAME_VALUE(kErrorInvalidLevel, ERROR_INVALID_LEVEL);
OSTREL_SAME_VALUE(kErrorModuleNotFound, ERROR_MOD_NOT_FOUND);
OSTREL_SAME_VALUE(kErrorMoreData, ERROR_MORE_DATA);
OSTREL_SAME_VALUE(kErrorInvalidPrinterName, ERROR_INVALID_PRINTER_NAME);
OSTREL_SAME_VALUE(kErrorResourceNameNotFound, ERROR_RESOURCE_NAME_NOT_FOUND);
OSTREL_SAME_VALUE(kLocaleUserDefault, LOCALE_USER_DEFAULT);
OSTREL_SAME_VALUE(kLocaleICountry, LOCALE_ICOUNTRY);
OSTREL_SAME_VALUE(kMaxPathUnits, MAX_PATH);
OSTREL_SAME_VALUE(kErrorPathNotFound, ERROR_PATH_NOT_FOUND);
OSTREL_SAME_VALUE(kErrorAccessDenied, ERROR_ACCESS_DENIED);
OSTREL_SAME_VALUE(kErrorDiskFull, ERROR_DISK_FULL);
OSTREL_SAME_VALUE(kErrorAlreadyExists, ERROR_ALREADY_EXISTS);
OSTREL_SAME_VALUE(kRegSz, REG_SZ);
OSTREL_SAME_VALUE(kRegBinary, REG_BINARY);
OSTREL_SAME_VALUE(kRegDword, REG_DWORD);
OSTREL_SAME_VALUE(kTokenUser, ::TokenUser);
OSTREL_SAME_VALUE(kTokenGroups, ::TokenGroups);
OSTREL_SAME_VALUE(kGroupEnabled, SE_GROUP_ENABLED);
OSTREL_SAME_VALUE(kDmNoPermission, 0x20);  // DM_NOPERMISSION of winddiui.h
OSTREL_SAME_VALUE(kUserNameUnits, UNLEN + 1);
OSTREL_SAME_VALUE(kInvalidFileAttributes, INVALID_FILE_ATTRIBUTES);
OSTREL_SAME_VALUE(kCsidlSystem, CSIDL_SYSTEM);
OSTREL_SAME_VALUE(kCsidlAppData, CSIDL_APPDATA);
OSTREL_SAME_VALUE(kCsidlFlagCreate, CSIDL_FLAG_CREATE);
OSTREL_SAME_VALUE(kHelpContext, HH_HELP_CONTEXT);
OSTREL_SAME_VALUE(kMbIconError, MB_ICONERROR);
OSTREL_SAME_VALUE(kMbIconExclamation, MB_ICONEXCLAMATION);
OSTREL_SAME_VALUE(kMbRightToLeft, MB_RIGHT | MB_RTLREADING);
static_assert(sizeof(TokenUser) == sizeof(TOKEN_USER));
static_assert(offsetof(TokenUser, Sid) == offsetof(TOKEN_USER, User.Sid));
static_assert(offsetof(TokenUser, Attributes) == offsetof(TOKEN_USER, User.Attributes));

static_assert(offsetof(TokenGroups, Groups) == offsetof(TOKEN_GROUPS, Groups));
static_assert(sizeof(TokenUser) == sizeof(SID_AND_ATTRIBUTES));

// NOLINTEND(bugprone-sizeof-expression)

#undef OSTREL_SAME_SIZE
#undef OSTREL_SAME_MEMBER
#undef OSTREL_SAME_VALUE

}  // namespace
}  // namespace ostrel::win32
