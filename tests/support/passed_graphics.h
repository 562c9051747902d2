// A list of drawing operations that hands every call on to another one: what a test changes of it,
// it overrides.
#pragma once

#include "platform/platform.h"

#include <cstdint>

namespace ostrel::test {

class PassedGraphics : public Graphics {
 public:
  explicit PassedGraphics(Graphics& next) : next_(next) {}

  GdiObject LoadBitmapW(ModuleHandle module, std::uint32_t id) override {
    return next_.LoadBitmapW(module, id);
  }
  bool DeleteObject(GdiObject object) override { return next_.DeleteObject(object); }
  bool GetBitmapSize(GdiObject bitmap, Size* size) override {
    return next_.GetBitmapSize(bitmap, size);
  }
  DeviceContext GetDC(WindowHandle window) override { return next_.GetDC(window); }
  int ReleaseDC(WindowHandle window, DeviceContext context) override {
    return next_.ReleaseDC(window, context);
  }
  int GetDeviceCaps(DeviceContext context, std::int32_t index) override {
    return next_.GetDeviceCaps(context, index);
  }
  DeviceContext CreateCompatibleDC(DeviceContext context) override {
    return next_.CreateCompatibleDC(context);
  }
  bool DeleteDC(DeviceContext context) override { return next_.DeleteDC(context); }
  GdiObject SelectObject(DeviceContext context, GdiObject object) override {
    return next_.SelectObject(context, object);
  }
  std::uint32_t GetLayout(DeviceContext context) override { return next_.GetLayout(context); }
  std::uint32_t SetLayout(DeviceContext context, std::uint32_t layout) override {
    return next_.SetLayout(context, layout);
  }
  bool TransparentBlt(DeviceContext target, const Rect& place, DeviceContext source, Point from,
                      std::uint32_t transparentColor) override {
    return next_.TransparentBlt(target, place, source, from, transparentColor);
  }
  GdiObject CreateCompatibleBitmap(DeviceContext context, std::int32_t width,
                                   std::int32_t height) override {
    return next_.CreateCompatibleBitmap(context, width, height);
  }
  GdiObject CreatePen(std::int32_t style, std::int32_t width, std::uint32_t color) override {
    return next_.CreatePen(style, width, color);
  }
  GdiObject GetStockObject(std::int32_t index) override { return next_.GetStockObject(index); }
  int GetDIBits(DeviceContext context, GdiObject bitmap, std::uint32_t firstRow, std::uint32_t rows,
                void* pixels, BitmapInfoHeader* form) override {
    return next_.GetDIBits(context, bitmap, firstRow, rows, pixels, form);
  }
  int StretchDIBits(DeviceContext target, const Rect& place, const Rect& from, const void* pixels,
                    const BitmapInfoHeader& form, std::uint32_t rasterOperation) override {
    return next_.StretchDIBits(target, place, from, pixels, form, rasterOperation);
  }
  bool BitBlt(DeviceContext target, const Rect& place, DeviceContext source, Point from) override {
    return next_.BitBlt(target, place, source, from);
  }
  bool StretchBlt(DeviceContext target, const Rect& place, DeviceContext source,
                  const Rect& from) override {
    return next_.StretchBlt(target, place, source, from);
  }
  int SetStretchBltMode(DeviceContext context, std::int32_t mode) override {
    return next_.SetStretchBltMode(context, mode);
  }
  bool FillRect(DeviceContext target, const Rect& place, GdiObject brush) override {
    return next_.FillRect(target, place, brush);
  }
  bool Rectangle(DeviceContext target, const Rect& place) override {
    return next_.Rectangle(target, place);
  }
  bool Ellipse(DeviceContext target, const Rect& place) override {
    return next_.Ellipse(target, place);
  }
  bool Polygon(DeviceContext target, const Point* corners, int count) override {
    return next_.Polygon(target, corners, count);
  }
  GdiObject LoadImageW(const char16_t* path, std::uint32_t flags) override {
    return next_.LoadImageW(path, flags);
  }
  GdiObject CreateSolidBrush(std::uint32_t color) override { return next_.CreateSolidBrush(color); }
  GdiObject CreateBrushIndirect(const LogBrush& brush) override {
    return next_.CreateBrushIndirect(brush);
  }
  GdiObject CreateFontIndirectW(const LogFont& font) override {
    return next_.CreateFontIndirectW(font);
  }
  int EnumFontFamiliesExW(DeviceContext context, const LogFont& wanted, FontCallback callback,
                          std::intptr_t callersWord) override {
    return next_.EnumFontFamiliesExW(context, wanted, callback, callersWord);
  }
  bool SetWindowOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                      Point* before) override {
    return next_.SetWindowOrgEx(context, x, y, before);
  }
  bool SetViewportOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                        Point* before) override {
    return next_.SetViewportOrgEx(context, x, y, before);
  }
  bool SetWindowExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                      Size* before) override {
    return next_.SetWindowExtEx(context, width, height, before);
  }
  bool SetViewportExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                        Size* before) override {
    return next_.SetViewportExtEx(context, width, height, before);
  }
  bool DPtoLP(DeviceContext context, Point* points, int count) override {
    return next_.DPtoLP(context, points, count);
  }
  int SetBkMode(DeviceContext context, std::int32_t mode) override {
    return next_.SetBkMode(context, mode);
  }
  int SetROP2(DeviceContext context, std::int32_t operation) override {
    return next_.SetROP2(context, operation);
  }
  int SetPolyFillMode(DeviceContext context, std::int32_t mode) override {
    return next_.SetPolyFillMode(context, mode);
  }
  std::uint32_t SetTextAlign(DeviceContext context, std::uint32_t align) override {
    return next_.SetTextAlign(context, align);
  }
  std::uint32_t SetTextColor(DeviceContext context, std::uint32_t color) override {
    return next_.SetTextColor(context, color);
  }
  std::uint32_t SetBkColor(DeviceContext context, std::uint32_t color) override {
    return next_.SetBkColor(context, color);
  }
  bool BeginPath(DeviceContext context) override { return next_.BeginPath(context); }
  bool EndPath(DeviceContext context) override { return next_.EndPath(context); }
  bool FillPath(DeviceContext context) override { return next_.FillPath(context); }
  bool ExtTextOutW(DeviceContext context, std::int32_t x, std::int32_t y, std::uint32_t options,
                   const Rect* place, const char16_t* text, int units) override {
    return next_.ExtTextOutW(context, x, y, options, place, text, units);
  }
  int ExtEscape(DeviceContext context, std::int32_t code, std::int32_t inputBytes,
                const void* input, std::int32_t outputBytes, void* output) override {
    return next_.ExtEscape(context, code, inputBytes, input, outputBytes, output);
  }
  bool GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                           Size* size) override {
    return next_.GetTextExtentPointW(context, text, units, size);
  }

 protected:
  ~PassedGraphics() = default;

  Graphics& next_;
};

}  // namespace ostrel::test
