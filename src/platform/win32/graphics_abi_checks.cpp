// Holds the plain types and numbers of drawing against the platform's own headers, as
// abi_checks.cpp does for printing. There is nothing here but assertions.
#include "platform/win32/abi_assertions.h"
#include "platform/win32/native_types.h"
#include "platform/window_types.h"

#include <windows.h>

#include <cstddef>

namespace ostrel::win32 {
namespace {

OSTREL_SAME_SIZE(BitmapInfo, BITMAPINFO);
OSTREL_SAME_PLACE(BitmapInfo, header, BITMAPINFO, bmiHeader);
OSTREL_SAME_PLACE(BitmapInfo, firstColor, BITMAPINFO, bmiColors);

OSTREL_SAME_SIZE(LogFont, LOGFONTW);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfHeight);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfWidth);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfEscapement);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfOrientation);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfWeight);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfItalic);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfUnderline);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfStrikeOut);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfCharSet);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfOutPrecision);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfClipPrecision);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfQuality);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfPitchAndFamily);
OSTREL_SAME_MEMBER(LogFont, LOGFONTW, lfFaceName);
static_assert(kFaceNameUnits == LF_FACESIZE);

OSTREL_SAME_SIZE(LogBrush, LOGBRUSH);
OSTREL_SAME_MEMBER(LogBrush, LOGBRUSH, lbStyle);
OSTREL_SAME_MEMBER(LogBrush, LOGBRUSH, lbColor);
OSTREL_SAME_MEMBER(LogBrush, LOGBRUSH, lbHatch);

OSTREL_SAME_SIZE(CopyData, COPYDATASTRUCT);
OSTREL_SAME_MEMBER(CopyData, COPYDATASTRUCT, dwData);
OSTREL_SAME_MEMBER(CopyData, COPYDATASTRUCT, cbData);
// NOLINTNEXTLINE(bugprone-sizeof-expression): the size of the pointer is what is meant.
OSTREL_SAME_MEMBER(CopyData, COPYDATASTRUCT, lpData);

OSTREL_SAME_SIZE(SystemTime, SYSTEMTIME);
OSTREL_SAME_MEMBER(SystemTime, SYSTEMTIME, wYear);
OSTREL_SAME_MEMBER(SystemTime, SYSTEMTIME, wMonth);
OSTREL_SAME_MEMBER(SystemTime, SYSTEMTIME, wDayOfWeek);
OSTREL_SAME_MEMBER(SystemTime, SYSTEMTIME, wDay);
OSTREL_SAME_MEMBER(SystemTime, SYSTEMTIME, wHour);
OSTREL_SAME_MEMBER(SystemTime, SYSTEMTIME, wMinute);
OSTREL_SAME_MEMBER(SystemTime, SYSTEMTIME, wSecond);
OSTREL_SAME_MEMBER(SystemTime, SYSTEMTIME, wMilliseconds);

OSTREL_SAME_VALUE(kDeviceCapHorzRes, HORZRES);
OSTREL_SAME_VALUE(kDeviceCapVertRes, VERTRES);
OSTREL_SAME_VALUE(kDeviceCapLogPixelsX, LOGPIXELSX);
OSTREL_SAME_VALUE(kInvalidColor, CLR_INVALID);
OSTREL_SAME_VALUE(kInvalidTextAlign, GDI_ERROR);
OSTREL_SAME_VALUE(kBackgroundTransparent, TRANSPARENT);
OSTREL_SAME_VALUE(kFillAlternate, ALTERNATE);
OSTREL_SAME_VALUE(kFillWinding, WINDING);
OSTREL_SAME_VALUE(kBrushSolid, BS_SOLID);
OSTREL_SAME_VALUE(kTextOpaque, ETO_OPAQUE);
OSTREL_SAME_VALUE(kTextClipped, ETO_CLIPPED);
OSTREL_SAME_VALUE(kTextRightToLeft, ETO_RTLREADING);
OSTREL_SAME_VALUE(kRasterCopy, SRCCOPY);
OSTREL_SAME_VALUE(kRasterAnd, SRCAND);
OSTREL_SAME_VALUE(kDefaultCharSet, DEFAULT_CHARSET);
OSTREL_SAME_VALUE(kOutTrueTypeOnly, OUT_TT_ONLY_PRECIS);
OSTREL_SAME_VALUE(kAnsiCodePage, CP_ACP);
OSTREL_SAME_VALUE(kTimeForce24Hours, TIME_FORCE24HOURFORMAT);
OSTREL_SAME_VALUE(kLoadFromFile, LR_LOADFROMFILE);
OSTREL_SAME_VALUE(kLoadInDefaultSize, LR_DEFAULTSIZE);

}  // namespace
}  // namespace ostrel::win32
