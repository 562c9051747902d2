// Drawing of gdi32, and what user32 and msimg32 add to it.
#include "platform/win32/native_types.h"
#include "platform/win32/system_lists.h"

#include <windows.h>

namespace ostrel::win32 {
namespace {

HDC FromContext(DeviceContext context) {
  return reinterpret_cast<HDC>(context);
}
DeviceContext ToContext(HDC context) {
  return reinterpret_cast<DeviceContext>(context);
}
HGDIOBJ FromObject(GdiObject object) {
  return static_cast<HGDIOBJ>(object);
}
GdiObject ToObject(HGDIOBJ object) {
  return static_cast<GdiObject>(object);
}

}  // namespace

// ---- Bitmaps, contexts and copies ---------------------------------------------------------------

GdiObject SystemGraphics::LoadBitmapW(ModuleHandle module, std::uint32_t id) {
  return ToObject(::LoadBitmapW(FromModule(module), MAKEINTRESOURCEW(id)));
}

bool SystemGraphics::DeleteObject(GdiObject object) {
  return ::DeleteObject(FromObject(object)) != FALSE;
}

bool SystemGraphics::GetBitmapSize(GdiObject bitmap, Size* size) {
  BITMAP description = {};
  if (::GetObjectW(FromObject(bitmap), sizeof(description), &description) == 0) {
    return false;
  }
  *size = {description.bmWidth, description.bmHeight};
  return true;
}

DeviceContext SystemGraphics::GetDC(WindowHandle window) {
  return ToContext(::GetDC(FromWindow(window)));
}

int SystemGraphics::ReleaseDC(WindowHandle window, DeviceContext context) {
  return ::ReleaseDC(FromWindow(window), FromContext(context));
}

int SystemGraphics::GetDeviceCaps(DeviceContext context, std::int32_t index) {
  return ::GetDeviceCaps(FromContext(context), index);
}

DeviceContext SystemGraphics::CreateCompatibleDC(DeviceContext context) {
  return ToContext(::CreateCompatibleDC(FromContext(context)));
}

bool SystemGraphics::DeleteDC(DeviceContext context) {
  return ::DeleteDC(FromContext(context)) != FALSE;
}

GdiObject SystemGraphics::SelectObject(DeviceContext context, GdiObject object) {
  return ToObject(::SelectObject(FromContext(context), FromObject(object)));
}

std::uint32_t SystemGraphics::GetLayout(DeviceContext context) {
  return ::GetLayout(FromContext(context));
}

std::uint32_t SystemGraphics::SetLayout(DeviceContext context, std::uint32_t layout) {
  return ::SetLayout(FromContext(context), layout);
}

bool SystemGraphics::TransparentBlt(DeviceContext target, const Rect& place, DeviceContext source,
                                    Point from, std::uint32_t transparentColor) {
  return ::GdiTransparentBlt(FromContext(target), place.left, place.top, place.Width(),
                             place.Height(), FromContext(source), from.x, from.y, place.Width(),
                             place.Height(), transparentColor) != FALSE;
}

GdiObject SystemGraphics::CreateCompatibleBitmap(DeviceContext context, std::int32_t width,
                                                 std::int32_t height) {
  return ToObject(::CreateCompatibleBitmap(FromContext(context), width, height));
}

GdiObject SystemGraphics::CreatePen(std::int32_t style, std::int32_t width, std::uint32_t color) {
  return ToObject(::CreatePen(style, width, color));
}

GdiObject SystemGraphics::GetStockObject(std::int32_t index) {
  return ToObject(::GetStockObject(index));
}

int SystemGraphics::GetDIBits(DeviceContext context, GdiObject bitmap, std::uint32_t firstRow,
                              std::uint32_t rows, void* pixels, BitmapInfoHeader* form) {
  return ::GetDIBits(FromContext(context), static_cast<HBITMAP>(FromObject(bitmap)), firstRow, rows,
                     pixels, reinterpret_cast<BITMAPINFO*>(form), DIB_RGB_COLORS);
}

int SystemGraphics::StretchDIBits(DeviceContext target, const Rect& place, const Rect& from,
                                  const void* pixels, const BitmapInfoHeader& form,
                                  std::uint32_t rasterOperation) {
  return ::StretchDIBits(FromContext(target), place.left, place.top, place.Width(), place.Height(),
                         from.left, from.top, from.Width(), from.Height(), pixels,
                         reinterpret_cast<const BITMAPINFO*>(&form), DIB_RGB_COLORS,
                         rasterOperation);
}

bool SystemGraphics::BitBlt(DeviceContext target, const Rect& place, DeviceContext source,
                            Point from) {
  return ::BitBlt(FromContext(target), place.left, place.top, place.Width(), place.Height(),
                  FromContext(source), from.x, from.y, SRCCOPY) != FALSE;
}

bool SystemGraphics::StretchBlt(DeviceContext target, const Rect& place, DeviceContext source,
                                const Rect& from) {
  return ::StretchBlt(FromContext(target), place.left, place.top, place.Width(), place.Height(),
                      FromContext(source), from.left, from.top, from.Width(), from.Height(),
                      SRCCOPY) != FALSE;
}

int SystemGraphics::SetStretchBltMode(DeviceContext context, std::int32_t mode) {
  return ::SetStretchBltMode(FromContext(context), mode);
}

bool SystemGraphics::FillRect(DeviceContext target, const Rect& place, GdiObject brush) {
  return ::FillRect(FromContext(target), reinterpret_cast<const RECT*>(&place),
                    static_cast<HBRUSH>(FromObject(brush))) != 0;
}

bool SystemGraphics::Rectangle(DeviceContext target, const Rect& place) {
  return ::Rectangle(FromContext(target), place.left, place.top, place.right, place.bottom) !=
         FALSE;
}

bool SystemGraphics::Ellipse(DeviceContext target, const Rect& place) {
  return ::Ellipse(FromContext(target), place.left, place.top, place.right, place.bottom) != FALSE;
}

bool SystemGraphics::Polygon(DeviceContext target, const Point* corners, int count) {
  return ::Polygon(FromContext(target), reinterpret_cast<const POINT*>(corners), count) != FALSE;
}

// ---- Objects ------------------------------------------------------------------------------------

GdiObject SystemGraphics::LoadImageW(const char16_t* path, std::uint32_t flags) {
  return ToObject(
      static_cast<HBITMAP>(::LoadImageW(nullptr, Wide(path), IMAGE_BITMAP, 0, 0, flags)));
}

GdiObject SystemGraphics::CreateSolidBrush(std::uint32_t color) {
  return ToObject(::CreateSolidBrush(color));
}

GdiObject SystemGraphics::CreateBrushIndirect(const LogBrush& brush) {
  return ToObject(::CreateBrushIndirect(reinterpret_cast<const LOGBRUSH*>(&brush)));
}

GdiObject SystemGraphics::CreateFontIndirectW(const LogFont& font) {
  return ToObject(::CreateFontIndirectW(reinterpret_cast<const LOGFONTW*>(&font)));
}

int SystemGraphics::EnumFontFamiliesExW(DeviceContext context, const LogFont& wanted,
                                        FontCallback callback, std::intptr_t callersWord) {
  LogFont asked = wanted;  // the platform takes it as writable
  return ::EnumFontFamiliesExW(FromContext(context), reinterpret_cast<LOGFONTW*>(&asked),
                               reinterpret_cast<FONTENUMPROCW>(callback), callersWord, 0);
}

// ---- Mapping and modes --------------------------------------------------------------------------

bool SystemGraphics::SetWindowOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                                    Point* before) {
  return ::SetWindowOrgEx(FromContext(context), x, y, reinterpret_cast<POINT*>(before)) != FALSE;
}

bool SystemGraphics::SetViewportOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                                      Point* before) {
  return ::SetViewportOrgEx(FromContext(context), x, y, reinterpret_cast<POINT*>(before)) != FALSE;
}

bool SystemGraphics::SetWindowExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                                    Size* before) {
  return ::SetWindowExtEx(FromContext(context), width, height, reinterpret_cast<SIZE*>(before)) !=
         FALSE;
}

bool SystemGraphics::SetViewportExtEx(DeviceContext context, std::int32_t width,
                                      std::int32_t height, Size* before) {
  return ::SetViewportExtEx(FromContext(context), width, height, reinterpret_cast<SIZE*>(before)) !=
         FALSE;
}

bool SystemGraphics::DPtoLP(DeviceContext context, Point* points, int count) {
  return ::DPtoLP(FromContext(context), reinterpret_cast<POINT*>(points), count) != FALSE;
}

int SystemGraphics::SetBkMode(DeviceContext context, std::int32_t mode) {
  return ::SetBkMode(FromContext(context), mode);
}

int SystemGraphics::SetROP2(DeviceContext context, std::int32_t operation) {
  return ::SetROP2(FromContext(context), operation);
}

int SystemGraphics::SetPolyFillMode(DeviceContext context, std::int32_t mode) {
  return ::SetPolyFillMode(FromContext(context), mode);
}

std::uint32_t SystemGraphics::SetTextAlign(DeviceContext context, std::uint32_t align) {
  return ::SetTextAlign(FromContext(context), align);
}

std::uint32_t SystemGraphics::SetTextColor(DeviceContext context, std::uint32_t color) {
  return ::SetTextColor(FromContext(context), color);
}

std::uint32_t SystemGraphics::SetBkColor(DeviceContext context, std::uint32_t color) {
  return ::SetBkColor(FromContext(context), color);
}

// ---- Paths, texts and words to the driver -------------------------------------------------------

bool SystemGraphics::BeginPath(DeviceContext context) {
  return ::BeginPath(FromContext(context)) != FALSE;
}

bool SystemGraphics::EndPath(DeviceContext context) {
  return ::EndPath(FromContext(context)) != FALSE;
}

bool SystemGraphics::FillPath(DeviceContext context) {
  return ::FillPath(FromContext(context)) != FALSE;
}

bool SystemGraphics::ExtTextOutW(DeviceContext context, std::int32_t x, std::int32_t y,
                                 std::uint32_t options, const Rect* place, const char16_t* text,
                                 int units) {
  return ::ExtTextOutW(FromContext(context), x, y, options, reinterpret_cast<const RECT*>(place),
                       Wide(text), static_cast<UINT>(units), nullptr) != FALSE;
}

int SystemGraphics::ExtEscape(DeviceContext context, std::int32_t code, std::int32_t inputBytes,
                              const void* input, std::int32_t outputBytes, void* output) {
  return ::ExtEscape(FromContext(context), code, inputBytes, static_cast<LPCSTR>(input),
                     outputBytes, static_cast<LPSTR>(output));
}

bool SystemGraphics::GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                                         Size* size) {
  return ::GetTextExtentPointW(FromContext(context), Wide(text), units,
                               reinterpret_cast<SIZE*>(size)) != FALSE;
}

}  // namespace ostrel::win32
