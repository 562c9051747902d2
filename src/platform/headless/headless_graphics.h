// The drawing of the in-memory platform: bitmaps of installed libraries, device contexts of windows
// and in memory, and every copy onto them kept as data. Nothing is painted: a test compares what
// was drawn, with which bitmap, where, and under which layout.
#pragma once

#include "platform/headless/fault_plan.h"
#include "platform/platform.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace ostrel::headless {

class HeadlessDebugOutput;
class HeadlessModules;
class HeadlessWindows;

// The font that every dialog and every control writes in, as WM_GETFONT tells it.
GdiObject DialogFont();

class HeadlessGraphics final : public Graphics {
 public:
  HeadlessGraphics(FaultPlan& faults, HeadlessDebugOutput& debug, HeadlessModules& modules)
      : faults_(faults), debug_(debug), modules_(modules) {}

  GdiObject LoadBitmapW(ModuleHandle module, std::uint32_t id) override;
  // A bitmap that a context still holds is not deleted.
  bool DeleteObject(GdiObject object) override;
  bool GetBitmapSize(GdiObject bitmap, Size* size) override;
  DeviceContext GetDC(WindowHandle window) override;
  int ReleaseDC(WindowHandle window, DeviceContext context) override;
  int GetDeviceCaps(DeviceContext context, std::int32_t index) override;
  // The new context holds a bitmap of one pixel and takes over the layout.
  DeviceContext CreateCompatibleDC(DeviceContext context) override;
  bool DeleteDC(DeviceContext context) override;
  // Only contexts in memory take a bitmap, and one context at a time.
  GdiObject SelectObject(DeviceContext context, GdiObject object) override;
  std::uint32_t GetLayout(DeviceContext context) override;
  std::uint32_t SetLayout(DeviceContext context, std::uint32_t layout) override;
  // Refuses an empty rectangle and a source that reaches beyond its bitmap.
  bool TransparentBlt(DeviceContext target, const Rect& place, DeviceContext source, Point from,
                      std::uint32_t transparentColor) override;
  GdiObject CreateCompatibleBitmap(DeviceContext context, std::int32_t width,
                                   std::int32_t height) override;
  GdiObject CreatePen(std::int32_t style, std::int32_t width, std::uint32_t color) override;
  GdiObject GetStockObject(std::int32_t index) override;
  int GetDIBits(DeviceContext context, GdiObject bitmap, std::uint32_t firstRow, std::uint32_t rows,
                void* pixels, BitmapInfoHeader* form) override;
  int StretchDIBits(DeviceContext target, const Rect& place, const Rect& from, const void* pixels,
                    const BitmapInfoHeader& form) override;
  bool BitBlt(DeviceContext target, const Rect& place, DeviceContext source, Point from) override;
  bool StretchBlt(DeviceContext target, const Rect& place, DeviceContext source,
                  const Rect& from) override;
  int SetStretchBltMode(DeviceContext context, std::int32_t mode) override;
  bool FillRect(DeviceContext target, const Rect& place, GdiObject brush) override;
  bool Rectangle(DeviceContext target, const Rect& place) override;
  // A character is half as wide as it is high, in the font of every context.
  bool GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                           Size* size) override;

  // Where a bitmap came from.
  struct Bitmap {
    ModuleHandle module;
    std::uint32_t id;
    Size size;
  };
  // One copy, with what was in force when it was made.
  struct Copy {
    WindowHandle window;   // that the target belongs to; null for the screen and for memory
    std::uint32_t bitmap;  // its resource id; 0 for what no LoadBitmapW gave
    Rect place;
    Point from;
    std::uint32_t transparentColor;
    std::uint32_t layout;  // of the target
  };
  std::vector<Copy> copies;

  std::int32_t logPixelsY = 96;  // dots per inch of every context

  // Bitmaps and contexts that were not given back.
  std::size_t liveBitmaps() const { return bitmaps_.size(); }
  std::size_t liveContexts() const { return contexts_.size(); }
  // Null for what no LoadBitmapW gave.
  const Bitmap* BitmapOf(GdiObject bitmap) const;

  // What a window's contexts ask the windows; set by them.
  void Attach(const HeadlessWindows& windows) { windows_ = &windows; }
  // A context to paint a window with, as it comes with a request to draw an item.
  DeviceContext BeginPaint(WindowHandle window);
  void EndPaint(DeviceContext context) { contexts_.erase(context); }

 private:
  struct Context {
    WindowHandle window = nullptr;
    GdiObject selected = nullptr;  // null when the context isn't one in memory
    std::uint32_t layout = 0;
  };
  Context* Find(DeviceContext context);
  bool IsSelected(GdiObject object) const;
  bool Fail(std::uint32_t code);

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  HeadlessModules& modules_;
  const HeadlessWindows* windows_ = nullptr;
  std::map<GdiObject, Bitmap> bitmaps_;
  std::map<DeviceContext, Context> contexts_;
  std::uintptr_t nextHandle_ = 0x600010;
};

}  // namespace ostrel::headless
