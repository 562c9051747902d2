// Holds the plain types and numbers of the window system and of the property sheet against the
// platform's own headers, as abi_checks.cpp does for printing. There is nothing here but
// assertions.
#include "platform/win32/driver_interface.h"
#include "platform/win32/native_types.h"
#include "platform/window_types.h"

#include <windows.h>
#include <commctrl.h>
#include <compstui.h>
#include <prsht.h>

#include <cstddef>

namespace ostrel::win32 {
namespace {

#define OSTREL_SAME_SIZE(ours, theirs)           \
  static_assert(sizeof(ours) == sizeof(theirs)); \
  static_assert(alignof(ours) == alignof(theirs))
#define OSTREL_SAME_MEMBER(ours, theirs, member)                     \
  static_assert(offsetof(ours, member) == offsetof(theirs, member)); \
  static_assert(sizeof(ours::member) == sizeof(theirs::member))
#define OSTREL_SAME_PLACE(ours, member, theirs, theirMember)              \
  static_assert(offsetof(ours, member) == offsetof(theirs, theirMember)); \
  static_assert(sizeof(ours::member) == sizeof(theirs::theirMember))
#define OSTREL_SAME_VALUE(ours, theirs) \
  static_assert(static_cast<unsigned long long>(ours) == static_cast<unsigned long long>(theirs))
// For numbers that the headers give a sign.
#define OSTREL_SAME_CODE(ours, theirs) \
  static_assert(static_cast<unsigned>(ours) == static_cast<unsigned>(theirs))

// The size of a pointer member is what is meant.
// NOLINTBEGIN(bugprone-sizeof-expression)

OSTREL_SAME_SIZE(Rect, RECT);
OSTREL_SAME_MEMBER(Rect, RECT, left);
OSTREL_SAME_MEMBER(Rect, RECT, top);
OSTREL_SAME_MEMBER(Rect, RECT, right);
OSTREL_SAME_MEMBER(Rect, RECT, bottom);
OSTREL_SAME_SIZE(Size, SIZE);
OSTREL_SAME_PLACE(Size, width, SIZE, cx);
OSTREL_SAME_PLACE(Size, height, SIZE, cy);

OSTREL_SAME_SIZE(NotifyHeader, NMHDR);
OSTREL_SAME_MEMBER(NotifyHeader, NMHDR, hwndFrom);
OSTREL_SAME_MEMBER(NotifyHeader, NMHDR, idFrom);
OSTREL_SAME_MEMBER(NotifyHeader, NMHDR, code);
OSTREL_SAME_SIZE(NotifyUpDown, NMUPDOWN);
OSTREL_SAME_MEMBER(NotifyUpDown, NMUPDOWN, iPos);
OSTREL_SAME_MEMBER(NotifyUpDown, NMUPDOWN, iDelta);
OSTREL_SAME_SIZE(NotifyTooltipText, NMTTDISPINFOW);
OSTREL_SAME_MEMBER(NotifyTooltipText, NMTTDISPINFOW, lpszText);
OSTREL_SAME_MEMBER(NotifyTooltipText, NMTTDISPINFOW, szText);
OSTREL_SAME_MEMBER(NotifyTooltipText, NMTTDISPINFOW, hinst);
OSTREL_SAME_MEMBER(NotifyTooltipText, NMTTDISPINFOW, uFlags);
OSTREL_SAME_MEMBER(NotifyTooltipText, NMTTDISPINFOW, lParam);
OSTREL_SAME_SIZE(SheetNotify, PSHNOTIFY);
OSTREL_SAME_MEMBER(SheetNotify, PSHNOTIFY, lParam);
OSTREL_SAME_SIZE(ToolInfo, TTTOOLINFOW);
OSTREL_SAME_MEMBER(ToolInfo, TTTOOLINFOW, uFlags);
OSTREL_SAME_MEMBER(ToolInfo, TTTOOLINFOW, hwnd);
OSTREL_SAME_MEMBER(ToolInfo, TTTOOLINFOW, uId);
OSTREL_SAME_MEMBER(ToolInfo, TTTOOLINFOW, rect);
OSTREL_SAME_MEMBER(ToolInfo, TTTOOLINFOW, hinst);
OSTREL_SAME_MEMBER(ToolInfo, TTTOOLINFOW, lpszText);
OSTREL_SAME_MEMBER(ToolInfo, TTTOOLINFOW, lParam);
OSTREL_SAME_MEMBER(ToolInfo, TTTOOLINFOW, lpReserved);
// TTTOOLINFOW_V2_SIZE, which the header tells by a cast that no assertion takes.
static_assert(offsetof(ToolInfo, lpReserved) ==
              offsetof(TTTOOLINFOW, lParam) + sizeof(TTTOOLINFOW::lParam));
OSTREL_SAME_SIZE(SpinAcceleration, UDACCEL);
OSTREL_SAME_MEMBER(SpinAcceleration, UDACCEL, nInc);
OSTREL_SAME_SIZE(DrawItem, DRAWITEMSTRUCT);
OSTREL_SAME_MEMBER(DrawItem, DRAWITEMSTRUCT, CtlID);
OSTREL_SAME_MEMBER(DrawItem, DRAWITEMSTRUCT, itemState);
OSTREL_SAME_MEMBER(DrawItem, DRAWITEMSTRUCT, hwndItem);
OSTREL_SAME_MEMBER(DrawItem, DRAWITEMSTRUCT, hDC);
OSTREL_SAME_MEMBER(DrawItem, DRAWITEMSTRUCT, rcItem);
OSTREL_SAME_MEMBER(DrawItem, DRAWITEMSTRUCT, itemData);
OSTREL_SAME_SIZE(MeasureItem, MEASUREITEMSTRUCT);
OSTREL_SAME_MEMBER(MeasureItem, MEASUREITEMSTRUCT, CtlID);
OSTREL_SAME_MEMBER(MeasureItem, MEASUREITEMSTRUCT, itemHeight);
OSTREL_SAME_SIZE(HelpInfo, HELPINFO);
OSTREL_SAME_MEMBER(HelpInfo, HELPINFO, iContextType);
OSTREL_SAME_MEMBER(HelpInfo, HELPINFO, iCtrlId);
OSTREL_SAME_MEMBER(HelpInfo, HELPINFO, dwContextId);
OSTREL_SAME_MEMBER(HelpInfo, HELPINFO, MousePos);

static_assert(sizeof(SheetPage) == sizeof(PROPSHEETPAGEW_V3));
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, dwSize);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, dwFlags);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, hInstance);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, pszTemplate);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, pszIcon);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, pszTitle);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, pfnDlgProc);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, lParam);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, pfnCallback);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, pcRefParent);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, pszHeaderTitle);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, pszHeaderSubTitle);
OSTREL_SAME_MEMBER(SheetPage, PROPSHEETPAGEW_V3, hActCtx);
OSTREL_SAME_SIZE(SheetInfo, PROPSHEETUI_INFO);
OSTREL_SAME_MEMBER(SheetInfo, PROPSHEETUI_INFO, Reason);
OSTREL_SAME_MEMBER(SheetInfo, PROPSHEETUI_INFO, hComPropSheet);
OSTREL_SAME_MEMBER(SheetInfo, PROPSHEETUI_INFO, pfnComPropSheet);
OSTREL_SAME_MEMBER(SheetInfo, PROPSHEETUI_INFO, lParamInit);
OSTREL_SAME_MEMBER(SheetInfo, PROPSHEETUI_INFO, UserData);
OSTREL_SAME_MEMBER(SheetInfo, PROPSHEETUI_INFO, Result);
OSTREL_SAME_SIZE(SheetInfoHeader, PROPSHEETUI_INFO_HEADER);
OSTREL_SAME_MEMBER(SheetInfoHeader, PROPSHEETUI_INFO_HEADER, Flags);
OSTREL_SAME_MEMBER(SheetInfoHeader, PROPSHEETUI_INFO_HEADER, pTitle);
OSTREL_SAME_MEMBER(SheetInfoHeader, PROPSHEETUI_INFO_HEADER, hWndParent);
OSTREL_SAME_MEMBER(SheetInfoHeader, PROPSHEETUI_INFO_HEADER, hInst);
OSTREL_SAME_MEMBER(SheetInfoHeader, PROPSHEETUI_INFO_HEADER, IconID);
OSTREL_SAME_SIZE(SetResultInfo, SETRESULT_INFO);
OSTREL_SAME_MEMBER(SetResultInfo, SETRESULT_INFO, hSetResult);
OSTREL_SAME_MEMBER(SetResultInfo, SETRESULT_INFO, Result);

// NOLINTEND(bugprone-sizeof-expression)

OSTREL_SAME_VALUE(kWmDestroy, WM_DESTROY);
OSTREL_SAME_VALUE(kWmShowWindow, WM_SHOWWINDOW);
OSTREL_SAME_VALUE(kWmDrawItem, WM_DRAWITEM);
OSTREL_SAME_VALUE(kWmMeasureItem, WM_MEASUREITEM);
OSTREL_SAME_VALUE(kWmNotify, WM_NOTIFY);
OSTREL_SAME_VALUE(kWmHelp, WM_HELP);
OSTREL_SAME_VALUE(kWmInitDialog, WM_INITDIALOG);
OSTREL_SAME_VALUE(kWmCommand, WM_COMMAND);
OSTREL_SAME_VALUE(kWmMouseMove, WM_MOUSEMOVE);
OSTREL_SAME_VALUE(kWmUser, WM_USER);
OSTREL_SAME_VALUE(kEmSetSel, EM_SETSEL);
OSTREL_SAME_VALUE(kEmUndo, EM_UNDO);
OSTREL_SAME_VALUE(kEmLimitText, EM_LIMITTEXT);
OSTREL_SAME_VALUE(kBmClick, BM_CLICK);
OSTREL_SAME_VALUE(kCbAddString, CB_ADDSTRING);
OSTREL_SAME_VALUE(kCbGetCount, CB_GETCOUNT);
OSTREL_SAME_VALUE(kCbGetCurSel, CB_GETCURSEL);
OSTREL_SAME_VALUE(kCbResetContent, CB_RESETCONTENT);
OSTREL_SAME_VALUE(kCbSetCurSel, CB_SETCURSEL);
OSTREL_SAME_VALUE(kCbGetItemData, CB_GETITEMDATA);
OSTREL_SAME_VALUE(kCbSetItemData, CB_SETITEMDATA);
OSTREL_SAME_VALUE(kStmSetIcon, STM_SETICON);
OSTREL_SAME_VALUE(kStmSetImage, STM_SETIMAGE);
OSTREL_SAME_VALUE(kStmGetImage, STM_GETIMAGE);
OSTREL_SAME_VALUE(kUdmSetRange, UDM_SETRANGE);
OSTREL_SAME_VALUE(kUdmGetRange, UDM_GETRANGE);
OSTREL_SAME_VALUE(kUdmSetPos, UDM_SETPOS);
OSTREL_SAME_VALUE(kUdmGetPos, UDM_GETPOS);
OSTREL_SAME_VALUE(kUdmSetAccel, UDM_SETACCEL);
OSTREL_SAME_VALUE(kTtmActivate, TTM_ACTIVATE);
OSTREL_SAME_VALUE(kTtmSetTipBackgroundColor, TTM_SETTIPBKCOLOR);
OSTREL_SAME_VALUE(kTtmSetMaxTipWidth, TTM_SETMAXTIPWIDTH);
OSTREL_SAME_VALUE(kTtmAddTool, TTM_ADDTOOLW);
OSTREL_SAME_VALUE(kTtmSetToolInfo, TTM_SETTOOLINFOW);
OSTREL_SAME_VALUE(kPsmChanged, PSM_CHANGED);
OSTREL_SAME_VALUE(kPsmUnchanged, PSM_UNCHANGED);
OSTREL_SAME_VALUE(kBnClicked, BN_CLICKED);
OSTREL_SAME_VALUE(kCbnSelChange, CBN_SELCHANGE);
OSTREL_SAME_VALUE(kEnKillFocus, EN_KILLFOCUS);
OSTREL_SAME_VALUE(kEnChange, EN_CHANGE);
OSTREL_SAME_CODE(kPsnSetActive, PSN_SETACTIVE);
OSTREL_SAME_CODE(kPsnKillActive, PSN_KILLACTIVE);
OSTREL_SAME_CODE(kPsnApply, PSN_APPLY);
OSTREL_SAME_CODE(kPsnReset, PSN_RESET);
OSTREL_SAME_CODE(kPsnHelp, PSN_HELP);
OSTREL_SAME_CODE(kPsnQueryCancel, PSN_QUERYCANCEL);
OSTREL_SAME_CODE(kTtnGetDispInfo, TTN_GETDISPINFOW);
OSTREL_SAME_CODE(kUdnDeltaPos, UDN_DELTAPOS);
OSTREL_SAME_VALUE(kPspcbAddRef, PSPCB_ADDREF);
OSTREL_SAME_VALUE(kPspcbRelease, PSPCB_RELEASE);
OSTREL_SAME_VALUE(kPspcbCreate, PSPCB_CREATE);
OSTREL_SAME_VALUE(kPspUseIconId, PSP_USEICONID);
OSTREL_SAME_VALUE(kPspUseTitle, PSP_USETITLE);
OSTREL_SAME_VALUE(kPspHasHelp, PSP_HASHELP);
OSTREL_SAME_VALUE(kPspUseCallback, PSP_USECALLBACK);
OSTREL_SAME_VALUE(kPspUseFusionContext, 0x4000);  // behind a version check in the header
OSTREL_SAME_VALUE(kReasonInit, PROPSHEETUI_REASON_INIT);
OSTREL_SAME_VALUE(kReasonGetHeader, PROPSHEETUI_REASON_GET_INFO_HEADER);
OSTREL_SAME_VALUE(kReasonDestroy, PROPSHEETUI_REASON_DESTROY);
OSTREL_SAME_VALUE(kReasonSetResult, PROPSHEETUI_REASON_SET_RESULT);
OSTREL_SAME_VALUE(kSheetAddPage, CPSFUNC_ADD_PROPSHEETPAGEW);
OSTREL_SAME_VALUE(kSheetSetResult, CPSFUNC_SET_RESULT);
OSTREL_SAME_VALUE(kSheetHeaderTitle, PSUIHDRF_PROPTITLE);
OSTREL_SAME_VALUE(kDwlpMessageResult, DWLP_MSGRESULT);
OSTREL_SAME_VALUE(kDwlpUser, DWLP_USER);
OSTREL_SAME_CODE(kGwlpUserData, GWLP_USERDATA);
OSTREL_SAME_CODE(kGclCursor, GCLP_HCURSOR);
OSTREL_SAME_VALUE(kSwHide, SW_HIDE);
OSTREL_SAME_VALUE(kSwShow, SW_SHOW);
OSTREL_SAME_VALUE(kBstUnchecked, BST_UNCHECKED);
OSTREL_SAME_VALUE(kBstChecked, BST_CHECKED);
OSTREL_SAME_CODE(kCbErr, CB_ERR);
OSTREL_SAME_VALUE(kImageBitmap, IMAGE_BITMAP);
OSTREL_SAME_VALUE(kImageIcon, IMAGE_ICON);
OSTREL_SAME_VALUE(kResourceDialog, 5);  // RT_DIALOG is a pointer
OSTREL_SAME_VALUE(kTtfIdIsWindow, TTF_IDISHWND);
OSTREL_SAME_VALUE(kTtfSubclass, TTF_SUBCLASS);
OSTREL_SAME_VALUE(kDeviceCapLogPixelsY, LOGPIXELSY);
OSTREL_SAME_VALUE(kLayoutRightToLeft, LAYOUT_RTL);
OSTREL_SAME_VALUE(kLayoutBitmapsUpright, LAYOUT_BITMAPORIENTATIONPRESERVED);
OSTREL_SAME_VALUE(kIdOk, IDOK);
OSTREL_SAME_VALUE(kIdCancel, IDCANCEL);

#undef OSTREL_SAME_SIZE
#undef OSTREL_SAME_MEMBER
#undef OSTREL_SAME_PLACE
#undef OSTREL_SAME_VALUE
#undef OSTREL_SAME_CODE

}  // namespace
}  // namespace ostrel::win32
