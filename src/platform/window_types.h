// Plain types and numbers of the window system and of the common property sheet: handles, messages,
// notifications and the structures that travel with them. Names lose only the platform's prefixes;
// values and layouts are those of winuser.h, commctrl.h, prsht.h, compstui.h and wingdi.h, and the
// Windows build asserts that they are.
#pragma once

#include "platform/print_types.h"

#include <cstddef>
#include <cstdint>

namespace ostrel {

// A device context to draw on.
using DeviceContext = struct DeviceContextRep*;
// A bitmap or another object that a device context selects.
using GdiObject = struct GdiObjectRep*;
// An icon or a bitmap that a static control shows.
using ImageHandle = struct ImageHandleRep*;
// An activation context: the versions of the common controls that a page binds to. A failure to
// make one gives kNone (handleapi.h, INVALID_HANDLE_VALUE).
enum class ActivationContext : std::uintptr_t { kNone = ~std::uintptr_t{0} };
// A started process, or its first thread.
using ProcessHandle = struct ProcessHandleRep*;
// An exported function of a library, to be cast to its real type.
using ExportedFunction = void (*)();

// ---- Geometry -----------------------------------------------------------------------------------

// RECT, in pixels.
struct Rect {
  std::int32_t left;
  std::int32_t top;
  std::int32_t right;
  std::int32_t bottom;

  std::int32_t Width() const { return right - left; }
  std::int32_t Height() const { return bottom - top; }
  bool operator==(const Rect&) const = default;
};
static_assert(sizeof(Rect) == 16);

// SIZE, in pixels.
struct Size {
  std::int32_t width;
  std::int32_t height;
  bool operator==(const Size&) const = default;
};
static_assert(sizeof(Size) == 8);

// ---- Messages (winuser.h, commctrl.h) -----------------------------------------------------------

enum WindowMessage : std::uint32_t {
  kWmDestroy = 0x0002,
  kWmClose = 0x0010,
  kWmShowWindow = 0x0018,
  kWmDrawItem = 0x002B,
  kWmMeasureItem = 0x002C,
  kWmGetFont = 0x0031,
  kWmNotify = 0x004E,
  kWmCopyData = 0x004A,
  kWmHelp = 0x0053,
  kWmInitDialog = 0x0110,
  kWmCommand = 0x0111,
  kWmMouseMove = 0x0200,
  kWmUser = 0x0400,
};

// Messages to controls.
enum ControlMessage : std::uint32_t {
  kEmSetSel = 0x00B1,
  kEmUndo = 0x00C7,
  kEmLimitText = 0x00C5,
  kEmSetReadOnly = 0x00CF,
  kBmGetCheck = 0x00F0,
  kBmSetCheck = 0x00F1,
  kBmClick = 0x00F5,
  kCbLimitText = 0x0141,
  kCbSetEditSel = 0x0142,
  kCbAddString = 0x0143,
  kCbDeleteString = 0x0144,
  kCbGetCount = 0x0146,
  kCbGetCurSel = 0x0147,
  kCbGetLbText = 0x0148,
  kCbGetLbTextLen = 0x0149,
  kCbResetContent = 0x014B,
  kCbSetCurSel = 0x014E,
  kCbGetItemData = 0x0150,
  kCbSetItemData = 0x0151,
  kCbFindStringExact = 0x0158,
  kCbGetDroppedWidth = 0x015F,
  kCbSetDroppedWidth = 0x0160,
  kStmSetIcon = 0x0170,
  kStmSetImage = 0x0172,
  kStmGetImage = 0x0173,
  kUdmSetRange = kWmUser + 101,
  kUdmGetRange = kWmUser + 102,
  kUdmSetPos = kWmUser + 103,
  kUdmGetPos = kWmUser + 104,
  kUdmSetAccel = kWmUser + 107,
  kTtmActivate = kWmUser + 1,
  kTtmSetTipBackgroundColor = kWmUser + 19,  // TTM_SETTIPBKCOLOR
  kTtmSetMaxTipWidth = kWmUser + 24,
  kTtmAddTool = kWmUser + 50,      // TTM_ADDTOOLW
  kTtmSetToolInfo = kWmUser + 54,  // TTM_SETTOOLINFOW
  kPsmChanged = kWmUser + 104,
  kPsmUnchanged = kWmUser + 109,
};
static_assert(kPsmChanged == 1128);
static_assert(kPsmUnchanged == 1133);

// Codes in the high word of WM_COMMAND.
enum CommandCode : std::uint16_t {
  kBnClicked = 0,
  kCbnSelChange = 1,
  kCbnEditChange = 5,
  kEnKillFocus = 0x0200,
  kEnChange = 0x0300,
};

// Codes of WM_NOTIFY.
enum NotifyCode : std::uint32_t {
  kPsnSetActive = 0xFFFFFF38,    // PSN_FIRST
  kPsnKillActive = 0xFFFFFF37,   // PSN_FIRST - 1
  kPsnApply = 0xFFFFFF36,        // PSN_FIRST - 2
  kPsnReset = 0xFFFFFF35,        // PSN_FIRST - 3
  kPsnHelp = 0xFFFFFF33,         // PSN_FIRST - 5
  kPsnQueryCancel = 0xFFFFFF2F,  // PSN_FIRST - 9
  kTtnGetDispInfo = 0xFFFFFDEE,  // TTN_GETDISPINFOW, TTN_FIRST - 10
  kUdnDeltaPos = 0xFFFFFD2E,     // UDN_FIRST - 1
};

// The halves of a message's word.
constexpr std::uint16_t LowWord(std::uintptr_t value) {
  return static_cast<std::uint16_t>(value & 0xFFFF);
}
constexpr std::uint16_t HighWord(std::uintptr_t value) {
  return static_cast<std::uint16_t>((value >> 16) & 0xFFFF);
}
constexpr std::uintptr_t MakeWords(std::uint16_t low, std::uint16_t high) {
  return std::uintptr_t{low} | (std::uintptr_t{high} << 16);
}

// ---- What travels with messages -----------------------------------------------------------------

// NMHDR.
struct NotifyHeader {
  WindowHandle hwndFrom;
  std::uintptr_t idFrom;
  std::uint32_t code;
};
static_assert(sizeof(NotifyHeader) == 24);

// NMUPDOWN.
struct NotifyUpDown {
  NotifyHeader hdr;
  std::int32_t iPos;
  std::int32_t iDelta;
};
static_assert(sizeof(NotifyUpDown) == 32);
static_assert(offsetof(NotifyUpDown, iDelta) == 28);

inline constexpr std::size_t kTooltipTextUnits = 80;

// NMTTDISPINFOW. The answer is lpszText; the text must outlive the message.
struct NotifyTooltipText {
  NotifyHeader hdr;
  char16_t* lpszText;
  char16_t szText[kTooltipTextUnits];
  ModuleHandle hinst;
  std::uint32_t uFlags;
  std::intptr_t lParam;
};
static_assert(sizeof(NotifyTooltipText) == 216);
static_assert(offsetof(NotifyTooltipText, lpszText) == 24);
static_assert(offsetof(NotifyTooltipText, szText) == 32);
static_assert(offsetof(NotifyTooltipText, hinst) == 192);
static_assert(offsetof(NotifyTooltipText, uFlags) == 200);

// PSHNOTIFY.
struct SheetNotify {
  NotifyHeader hdr;
  std::intptr_t lParam;
};
static_assert(sizeof(SheetNotify) == 32);

// TTTOOLINFOW.
struct ToolInfo {
  std::uint32_t cbSize;
  std::uint32_t uFlags;
  WindowHandle hwnd;
  std::uintptr_t uId;
  Rect rect;
  ModuleHandle hinst;
  char16_t* lpszText;
  std::intptr_t lParam;
  void* lpReserved;
};
static_assert(sizeof(ToolInfo) == 72);
static_assert(offsetof(ToolInfo, uId) == 16);
static_assert(offsetof(ToolInfo, rect) == 24);
static_assert(offsetof(ToolInfo, lpszText) == 48);

// UDACCEL.
struct SpinAcceleration {
  std::uint32_t nSec;
  std::uint32_t nInc;
};
static_assert(sizeof(SpinAcceleration) == 8);

// DRAWITEMSTRUCT.
struct DrawItem {
  std::uint32_t CtlType;
  std::uint32_t CtlID;
  std::uint32_t itemID;
  std::uint32_t itemAction;
  std::uint32_t itemState;
  WindowHandle hwndItem;
  DeviceContext hDC;
  Rect rcItem;
  std::uintptr_t itemData;
};
static_assert(sizeof(DrawItem) == 64);
static_assert(offsetof(DrawItem, hwndItem) == 24);
static_assert(offsetof(DrawItem, hDC) == 32);
static_assert(offsetof(DrawItem, rcItem) == 40);
static_assert(offsetof(DrawItem, itemData) == 56);

// MEASUREITEMSTRUCT.
struct MeasureItem {
  std::uint32_t CtlType;
  std::uint32_t CtlID;
  std::uint32_t itemID;
  std::uint32_t itemWidth;
  std::uint32_t itemHeight;
  std::uintptr_t itemData;
};
static_assert(sizeof(MeasureItem) == 32);
static_assert(offsetof(MeasureItem, itemHeight) == 16);

// HELPINFO.
struct HelpInfo {
  std::uint32_t cbSize;
  std::int32_t iContextType;
  std::int32_t iCtrlId;
  void* hItemHandle;
  std::uintptr_t dwContextId;
  Point MousePos;
};
static_assert(sizeof(HelpInfo) == 40);
static_assert(offsetof(HelpInfo, iCtrlId) == 8);
static_assert(offsetof(HelpInfo, dwContextId) == 24);

// BITMAPINFOHEADER (wingdi.h): the form of pixels in memory. With biBitCount 24 and biCompression 0
// a pixel is its blue, green and red byte, and a row takes a multiple of 4 bytes; a positive
// biHeight has the last row first.
struct BitmapInfoHeader {
  std::uint32_t biSize;
  std::int32_t biWidth;
  std::int32_t biHeight;
  std::uint16_t biPlanes;
  std::uint16_t biBitCount;
  std::uint32_t biCompression;
  std::uint32_t biSizeImage;
  std::int32_t biXPelsPerMeter;
  std::int32_t biYPelsPerMeter;
  std::uint32_t biClrUsed;
  std::uint32_t biClrImportant;
};
static_assert(sizeof(BitmapInfoHeader) == 40);
static_assert(offsetof(BitmapInfoHeader, biBitCount) == 14);
static_assert(offsetof(BitmapInfoHeader, biSizeImage) == 20);

// BITMAPINFO (wingdi.h): a header with the first entry of a colour table, which rows of 24 bits a
// pixel don't look at.
struct BitmapInfo {
  BitmapInfoHeader header;
  std::uint32_t firstColor;
};
static_assert(sizeof(BitmapInfo) == 44);

inline constexpr std::size_t kFaceNameUnits = 32;  // LF_FACESIZE, with the terminator

// LOGFONTW (wingdi.h): the font that is wished for.
struct LogFont {
  std::int32_t lfHeight;  // callers' units; below 0 without the room above the letters
  std::int32_t lfWidth;
  std::int32_t lfEscapement;   // tenths of a degree, against the clock
  std::int32_t lfOrientation;  // the same, of each letter
  std::int32_t lfWeight;       // 400 is normal, 700 bold, 0 don't care
  std::uint8_t lfItalic;
  std::uint8_t lfUnderline;
  std::uint8_t lfStrikeOut;
  std::uint8_t lfCharSet;
  std::uint8_t lfOutPrecision;
  std::uint8_t lfClipPrecision;
  std::uint8_t lfQuality;
  std::uint8_t lfPitchAndFamily;
  char16_t lfFaceName[kFaceNameUnits];
  bool operator==(const LogFont&) const = default;
};
static_assert(sizeof(LogFont) == 92);
static_assert(offsetof(LogFont, lfItalic) == 20);
static_assert(offsetof(LogFont, lfCharSet) == 23);
static_assert(offsetof(LogFont, lfFaceName) == 28);

// FONTENUMPROCW: a font that was found, and its metrics, which nobody here looks at. 0 ends the
// enumeration.
using FontCallback = int (*)(const LogFont* font, const void* metrics, std::uint32_t fontType,
                             std::intptr_t callersWord);

// LOGBRUSH (wingdi.h).
struct LogBrush {
  std::uint32_t lbStyle;
  std::uint32_t lbColor;
  std::uintptr_t lbHatch;
};
static_assert(sizeof(LogBrush) == 16);
static_assert(offsetof(LogBrush, lbColor) == 4);

// COPYDATASTRUCT (winuser.h), what WM_COPYDATA carries into another process.
struct CopyData {
  std::uintptr_t dwData;
  std::uint32_t cbData;  // bytes of lpData
  void* lpData;
};
static_assert(sizeof(CopyData) == 24);
static_assert(offsetof(CopyData, cbData) == 8);
static_assert(offsetof(CopyData, lpData) == 16);

// PROCESS_INFORMATION (processthreadsapi.h).
struct ProcessInformation {
  ProcessHandle hProcess;
  ProcessHandle hThread;
  std::uint32_t dwProcessId;
  std::uint32_t dwThreadId;
};
static_assert(sizeof(ProcessInformation) == 24);
static_assert(offsetof(ProcessInformation, dwProcessId) == 16);

// ---- The property sheet (prsht.h, compstui.h) ---------------------------------------------------

using DialogProcedure = std::intptr_t (*)(WindowHandle window, std::uint32_t message,
                                          std::uintptr_t wParam, std::intptr_t lParam);

struct SheetPage;
// LPFNPSPCALLBACKW.
using SheetPageCallback = std::uint32_t (*)(WindowHandle window, std::uint32_t message,
                                            SheetPage* page);

// Messages of the page callback, PSPCB_....
enum SheetPageMessage : std::uint32_t {
  kPspcbAddRef = 0,
  kPspcbRelease = 1,
  kPspcbCreate = 2,
};

// Flags of a page, PSP_....
enum SheetPageFlag : std::uint32_t {
  kPspUseIconId = 0x4,
  kPspUseTitle = 0x8,
  kPspHasHelp = 0x20,
  kPspUseCallback = 0x80,
  kPspUseFusionContext = 0x4000,
};

// PROPSHEETPAGEW up to its activation context, PROPSHEETPAGEW_V3.
struct SheetPage {
  std::uint32_t dwSize;
  std::uint32_t dwFlags;
  ModuleHandle hInstance;
  const char16_t* pszTemplate;  // a dialog id in the place of a pointer
  const char16_t* pszIcon;
  const char16_t* pszTitle;
  DialogProcedure pfnDlgProc;
  std::intptr_t lParam;
  SheetPageCallback pfnCallback;
  std::uint32_t* pcRefParent;
  const char16_t* pszHeaderTitle;
  const char16_t* pszHeaderSubTitle;
  ActivationContext hActCtx;
};
static_assert(sizeof(SheetPage) == 96);
static_assert(offsetof(SheetPage, hInstance) == 8);
static_assert(offsetof(SheetPage, pszTemplate) == 16);
static_assert(offsetof(SheetPage, pszTitle) == 32);
static_assert(offsetof(SheetPage, pfnDlgProc) == 40);
static_assert(offsetof(SheetPage, lParam) == 48);
static_assert(offsetof(SheetPage, pfnCallback) == 56);
static_assert(offsetof(SheetPage, hActCtx) == 88);

// Reasons of the property sheet's protocol, PROPSHEETUI_REASON_....
enum SheetReason : std::uint16_t {
  kReasonInit = 0,
  kReasonGetHeader = 1,
  kReasonDestroy = 2,
  kReasonSetResult = 3,
};

// Functions of the common property sheet, CPSFUNC_....
enum SheetFunction : std::uint32_t {
  kSheetAddPage = 1,    // CPSFUNC_ADD_PROPSHEETPAGEW
  kSheetSetResult = 9,  // CPSFUNC_SET_RESULT
};

// The common property sheet's function, PFNCOMPROPSHEET.
using SheetCallback = std::intptr_t (*)(SheetHandle sheet, std::uint32_t function,
                                        std::intptr_t param1, std::intptr_t param2);

// PROPSHEETUI_INFO.
struct SheetInfo {
  std::uint16_t cbSize;
  std::uint16_t Version;
  std::uint16_t Flags;
  std::uint16_t Reason;
  SheetHandle hComPropSheet;
  SheetCallback pfnComPropSheet;
  std::intptr_t lParamInit;
  std::uintptr_t UserData;
  std::uintptr_t Result;
};
static_assert(sizeof(SheetInfo) == 48);
static_assert(offsetof(SheetInfo, Reason) == 6);
static_assert(offsetof(SheetInfo, hComPropSheet) == 8);
static_assert(offsetof(SheetInfo, pfnComPropSheet) == 16);
static_assert(offsetof(SheetInfo, UserData) == 32);
static_assert(offsetof(SheetInfo, Result) == 40);

// PROPSHEETUI_INFO_HEADER.
struct SheetInfoHeader {
  std::uint16_t cbSize;
  std::uint16_t Flags;
  char16_t* pTitle;
  WindowHandle hWndParent;
  ModuleHandle hInst;
  std::uintptr_t IconID;
};
static_assert(sizeof(SheetInfoHeader) == 40);
static_assert(offsetof(SheetInfoHeader, pTitle) == 8);
static_assert(offsetof(SheetInfoHeader, hInst) == 24);
static_assert(offsetof(SheetInfoHeader, IconID) == 32);

inline constexpr std::uint16_t kSheetHeaderTitle = 4;  // PSUIHDRF_PROPTITLE

// SETRESULT_INFO.
struct SetResultInfo {
  std::uint16_t cbSize;
  std::uint16_t wReserved;
  void* hSetResult;
  std::intptr_t Result;
};
static_assert(sizeof(SetResultInfo) == 24);
static_assert(offsetof(SetResultInfo, Result) == 16);

// ---- Numbers ------------------------------------------------------------------------------------

inline constexpr std::int32_t kDwlpMessageResult = 0;  // DWLP_MSGRESULT
inline constexpr std::int32_t kDwlpUser = 16;          // DWLP_USER
inline constexpr std::int32_t kGwlpUserData = -21;     // GWLP_USERDATA
inline constexpr std::int32_t kGclCursor = -12;        // GCL_HCURSOR

// ShowWindow commands.
inline constexpr std::int32_t kSwHide = 0;
inline constexpr std::int32_t kSwShowNormal = 1;
inline constexpr std::int32_t kSwShow = 5;

// Button states of CheckDlgButton.
inline constexpr std::uint32_t kBstUnchecked = 0;
inline constexpr std::uint32_t kBstChecked = 1;

inline constexpr std::int32_t kCbErr = -1;

// Kinds of images, IMAGE_....
inline constexpr std::uint32_t kImageBitmap = 0;
inline constexpr std::uint32_t kImageIcon = 1;

inline constexpr std::uint32_t kResourceDialog = 5;  // RT_DIALOG

// Flags of a tool, TTF_....
inline constexpr std::uint32_t kTtfIdIsWindow = 0x01;
inline constexpr std::uint32_t kTtfSubclass = 0x10;

// What GetDeviceCaps is asked for.
inline constexpr std::int32_t kDeviceCapHorzRes = 8;      // HORZRES, pixels
inline constexpr std::int32_t kDeviceCapVertRes = 10;     // VERTRES, pixels
inline constexpr std::int32_t kDeviceCapLogPixelsX = 88;  // LOGPIXELSX, dots an inch
inline constexpr std::int32_t kDeviceCapLogPixelsY = 90;  // LOGPIXELSY

inline constexpr std::uint32_t kInvalidColor = 0xFFFFFFFF;      // CLR_INVALID
inline constexpr std::uint32_t kInvalidTextAlign = 0xFFFFFFFF;  // GDI_ERROR

inline constexpr std::int32_t kBackgroundTransparent = 1;  // TRANSPARENT
inline constexpr std::int32_t kFillAlternate = 1;          // ALTERNATE
inline constexpr std::int32_t kFillWinding = 2;            // WINDING
inline constexpr std::uint32_t kBrushSolid = 0;            // BS_SOLID

// Options of ExtTextOut, ETO_....
inline constexpr std::uint32_t kTextOpaque = 0x0002;
inline constexpr std::uint32_t kTextClipped = 0x0004;
inline constexpr std::uint32_t kTextRightToLeft = 0x0080;  // ETO_RTLREADING

inline constexpr std::uint32_t kRasterCopy = 0x00CC0020;  // SRCCOPY
inline constexpr std::uint32_t kRasterAnd = 0x008800C6;   // SRCAND

inline constexpr std::uint8_t kDefaultCharSet = 1;         // DEFAULT_CHARSET
inline constexpr std::uint8_t kOutTrueTypeOnly = 7;        // OUT_TT_ONLY_PRECIS
inline constexpr std::uint32_t kLoadFromFile = 0x10;       // LR_LOADFROMFILE
inline constexpr std::uint32_t kLoadInDefaultSize = 0x40;  // LR_DEFAULTSIZE; a bitmap has its own

// Objects that the system keeps at hand, for GetStockObject.
inline constexpr std::int32_t kWhiteBrush = 0;  // WHITE_BRUSH
inline constexpr std::int32_t kNullBrush = 5;   // NULL_BRUSH

// How a copy that makes a picture smaller treats the pixels that it leaves out.
inline constexpr std::int32_t kStretchDeleteScans = 3;  // COLORONCOLOR
inline constexpr std::int32_t kStretchHalftone = 4;     // HALFTONE

inline constexpr std::int32_t kPenSolid = 0;  // PS_SOLID

inline constexpr std::uint32_t kNormalPriority = 0x20;  // NORMAL_PRIORITY_CLASS

// Layouts of a device context, LAYOUT_... of wingdi.h.
inline constexpr std::uint32_t kLayoutRightToLeft = 0x1;
inline constexpr std::uint32_t kLayoutBitmapsUpright = 0x8;  // LAYOUT_BITMAPORIENTATIONPRESERVED

inline constexpr std::int32_t kIdOk = 1;      // IDOK
inline constexpr std::int32_t kIdCancel = 2;  // IDCANCEL
inline constexpr std::int32_t kIdYes = 6;     // IDYES

}  // namespace ostrel
