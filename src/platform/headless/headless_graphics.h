// The drawing of the in-memory platform: bitmaps of installed libraries and in memory, device
// contexts of windows, in memory and of printers, pens, brushes and fonts, and the pixels of all of
// them but the printers, whose contexts write down what is done on them. A test looks at the pixels
// of a window, at a printer's operations, or at the transparent copies, which are kept as data too:
// which bitmap, where, and under which layout.
//
// A mirrored context counts from its right edge. A copy between a mirrored context and one that
// isn't turns the picture, unless the mirrored one keeps bitmaps upright; a copy out of memory onto
// a mirrored context turns it always. The screen has no pixels: what is drawn there is lost, and
// nothing can be copied from it.
#pragma once

#include "platform/headless/drawing_record.h"
#include "platform/headless/fault_plan.h"
#include "platform/headless/pixel_surface.h"
#include "platform/platform.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::headless {

class HeadlessDebugOutput;
class HeadlessFiles;
class HeadlessModules;
class HeadlessWindows;

// The font that every dialog and every control writes in, as WM_GETFONT tells it.
GdiObject DialogFont();

class HeadlessGraphics final : public Graphics {
 public:
  HeadlessGraphics(FaultPlan& faults, HeadlessDebugOutput& debug, HeadlessModules& modules,
                   const HeadlessFiles& files)
      : faults_(faults), debug_(debug), modules_(modules), files_(files) {}

  GdiObject LoadBitmapW(ModuleHandle module, std::uint32_t id) override;
  // A bitmap or a pen that a context still holds is not deleted; the system's own objects never
  // are, which is no failure.
  bool DeleteObject(GdiObject object) override;
  bool GetBitmapSize(GdiObject bitmap, Size* size) override;
  DeviceContext GetDC(WindowHandle window) override;
  int ReleaseDC(WindowHandle window, DeviceContext context) override;
  int GetDeviceCaps(DeviceContext context, std::int32_t index) override;
  // The new context holds a bitmap of one pixel and takes over the layout.
  DeviceContext CreateCompatibleDC(DeviceContext context) override;
  bool DeleteDC(DeviceContext context) override;
  // Only contexts in memory take a bitmap, and one context at a time. Pens, brushes and fonts go
  // into any context.
  GdiObject SelectObject(DeviceContext context, GdiObject object) override;
  std::uint32_t GetLayout(DeviceContext context) override;
  std::uint32_t SetLayout(DeviceContext context, std::uint32_t layout) override;
  // Refuses an empty rectangle and a source that reaches beyond its bitmap.
  bool TransparentBlt(DeviceContext target, const Rect& place, DeviceContext source, Point from,
                      std::uint32_t transparentColor) override;
  // A context in memory that holds no bitmap yet has two colours, and so has the new bitmap then. A
  // side of 0 gives a bitmap of one such pixel.
  GdiObject CreateCompatibleBitmap(DeviceContext context, std::int32_t width,
                                   std::int32_t height) override;
  GdiObject CreatePen(std::int32_t style, std::int32_t width, std::uint32_t color) override;
  GdiObject GetStockObject(std::int32_t index) override;
  // For rows of 24 bits a pixel, in the bitmap's own size. Without a place for them it fills the
  // header in.
  int GetDIBits(DeviceContext context, GdiObject bitmap, std::uint32_t firstRow, std::uint32_t rows,
                void* pixels, BitmapInfoHeader* form) override;
  int StretchDIBits(DeviceContext target, const Rect& place, const Rect& from, const void* pixels,
                    const BitmapInfoHeader& form, std::uint32_t rasterOperation) override;
  bool BitBlt(DeviceContext target, const Rect& place, DeviceContext source, Point from) override;
  bool StretchBlt(DeviceContext target, const Rect& place, DeviceContext source,
                  const Rect& from) override;
  // The mode that keeps the bits of any of the pixels (2) keeps those of all of them here.
  int SetStretchBltMode(DeviceContext context, std::int32_t mode) override;
  bool FillRect(DeviceContext target, const Rect& place, GdiObject brush) override;
  bool Rectangle(DeviceContext target, const Rect& place) override;
  // Shapes, paths and texts leave no pixels; a printer's context writes them down.
  bool Ellipse(DeviceContext target, const Rect& place) override;
  bool Polygon(DeviceContext target, const Point* corners, int count) override;
  // A file of the in-memory file system, in a form that is known here.
  GdiObject LoadImageW(const char16_t* path, std::uint32_t flags) override;
  GdiObject CreateSolidBrush(std::uint32_t color) override;
  GdiObject CreateBrushIndirect(const LogBrush& brush) override;
  GdiObject CreateFontIndirectW(const LogFont& font) override;
  // Reports the character sets of `fonts` under the face, without regard to case, or of all of them
  // for none. Result: 1 when there is none to tell of.
  int EnumFontFamiliesExW(DeviceContext context, const LogFont& wanted, FontCallback callback,
                          std::intptr_t callersWord) override;
  bool SetWindowOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                      Point* before) override;
  bool SetViewportOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                        Point* before) override;
  // A context counts in pixels until it is told otherwise: extents change nothing then.
  bool SetWindowExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                      Size* before) override;
  bool SetViewportExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                        Size* before) override;
  bool DPtoLP(DeviceContext context, Point* points, int count) override;
  int SetBkMode(DeviceContext context, std::int32_t mode) override;
  int SetROP2(DeviceContext context, std::int32_t operation) override;
  int SetPolyFillMode(DeviceContext context, std::int32_t mode) override;
  std::uint32_t SetTextAlign(DeviceContext context, std::uint32_t align) override;
  std::uint32_t SetTextColor(DeviceContext context, std::uint32_t color) override;
  std::uint32_t SetBkColor(DeviceContext context, std::uint32_t color) override;
  bool BeginPath(DeviceContext context) override;
  bool EndPath(DeviceContext context) override;
  bool FillPath(DeviceContext context) override;
  bool ExtTextOutW(DeviceContext context, std::int32_t x, std::int32_t y, std::uint32_t options,
                   const Rect* place, const char16_t* text, int units) override;
  int ExtEscape(DeviceContext context, std::int32_t code, std::int32_t inputBytes,
                const void* input, std::int32_t outputBytes, void* output) override;
  // What `measureText` says. Without it a character is half as wide as it is high, in the height of
  // the font that the context was given, or of every other one.
  bool GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                           Size* size) override;

  // A context on a printer's device, which must outlive it. Freed with DeleteDC.
  DeviceContext OpenPrinter(PrinterDevice& device);
  // Moves the origin of the device behind a context, as its driver does.
  void MoveDeviceOrigin(DeviceContext context, Point origin);

  // Where a bitmap came from, and its pixels.
  struct Bitmap {
    ModuleHandle module = nullptr;  // null for one that was made in memory
    std::uint32_t id = 0;
    Size size = {};
    bool isTwoColored = false;
    Surface pixels = {};
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
  // Whether a new context in memory has the layout of its model: systems differ.
  bool memoryTakesLayout = true;
  std::uint32_t mostRowsRead = 0xFFFFFFFF;  // by one GetDIBits
  // The header as the last GetDIBits was given it, and the flags of the last LoadImageW.
  std::optional<BitmapInfoHeader> lastForm;
  std::uint32_t lastLoadFlags = 0;
  // Whether SetROP2 takes any number, also one that is no raster operation.
  bool takesAnyRasterMode = false;
  // The size of a text in a font that was made.
  std::function<Size(const LogFont& font, std::u16string_view text)> measureText = {};
  // The computer's fonts: the character sets of each face.
  std::map<std::u16string, std::vector<std::uint8_t>> fonts = {{u"Arial", {0, 177, 204}}};

  // Bitmaps, pens, brushes, fonts and contexts that were not given back.
  std::size_t liveBitmaps() const { return bitmaps_.size(); }
  std::size_t livePens() const { return pens_.size(); }
  std::size_t liveBrushes() const { return brushes_.size(); }
  std::size_t liveFonts() const { return fonts_.size(); }
  std::size_t liveContexts() const { return contexts_.size(); }
  // Null for what is no bitmap (any more).
  const Bitmap* BitmapOf(GdiObject bitmap) const;
  // What a window shows. Null for one that nobody has had a context of.
  const Surface* SurfaceOf(WindowHandle window) const;

  // What a window's contexts ask the windows; set by them.
  void Attach(const HeadlessWindows& windows) { windows_ = &windows; }
  // A context to paint a window with, as it comes with a request to draw an item. The window is
  // cleared to the colour of dialogs.
  DeviceContext BeginPaint(WindowHandle window);
  void EndPaint(DeviceContext context) { contexts_.erase(context); }

 private:
  using Pen = DrawingPen;
  // What becomes of shapes and texts: they are drawn, or they go into a path that is begun, or is
  // there to be filled.
  enum class PathState { kNone, kBegun, kEnded };
  struct Context {
    WindowHandle window = nullptr;
    bool isInMemory = false;
    Surface* pixels = nullptr;   // null for the screen
    GdiObject bitmap = nullptr;  // of a context in memory
    bool isTwoColored = false;   // its bitmap
    GdiObject pen = nullptr;
    GdiObject brush = nullptr;
    GdiObject font = nullptr;
    std::uint32_t layout = 0;
    PrinterDevice* printer = nullptr;
    DrawingState state = {};  // but for the objects, which stand above
    PathState path = PathState::kNone;

    bool IsMirrored() const { return (layout & kLayoutRightToLeft) != 0; }
  };
  Context* Find(DeviceContext context);
  // Asks the fault plan and finds the context; null with the last error set when either says no.
  Context* Take(const char* operation, DeviceContext context);
  DeviceContext Add(Context context);
  DeviceContext OpenWindow(WindowHandle window);
  GdiObject AddBitmap(Bitmap bitmap);
  GdiObject* PlaceFor(Context& context, GdiObject object);
  bool IsSelected(GdiObject object) const;
  std::optional<std::uint32_t> BrushColorOf(GdiObject brush) const;
  const LogFont* FontOf(GdiObject font) const;
  // Writes an operation down where the context is a printer's.
  void Record(Context& context, DrawingOperation operation);
  void RecordSelection(Context& context, GdiObject object);
  void RecordPicture(Context& context, const Rect& place, const Rect& from, const void* pixels,
                     const BitmapInfoHeader& form, std::uint32_t rasterOperation);
  bool Shape(const char* name, DeviceContext context, DrawingOperation operation);
  bool SetPoint(const char* name, DeviceContext context, DrawingCall call,
                Point DrawingMapping::*member, Point value, Point* before);
  bool SetExtent(const char* name, DeviceContext context, DrawingCall call,
                 Size DrawingMapping::*member, Size value, Size* before);
  template <typename Value>
  Value SetWord(const char* name, DeviceContext context, DrawingCall call,
                Value DrawingState::*member, Value value, bool isValid, Value onFailure);
  template <typename Object>
  GdiObject AddObject(std::map<GdiObject, Object>& objects, Object object);
  std::optional<Pen> PenOf(GdiObject pen) const;
  // Draws a copy of what another context shows.
  bool DrawCopy(Context& target, const Rect& place, Context& source, const Rect& from,
                std::optional<std::uint32_t> leftOut);
  bool Fail(std::uint32_t code);

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  HeadlessModules& modules_;
  const HeadlessFiles& files_;
  const HeadlessWindows* windows_ = nullptr;
  std::map<GdiObject, Bitmap> bitmaps_;
  std::map<GdiObject, Pen> pens_;
  std::map<GdiObject, std::optional<std::uint32_t>> brushes_;
  std::map<GdiObject, LogFont> fonts_;
  std::map<DeviceContext, Context> contexts_;
  std::map<WindowHandle, Surface> windowPixels_;
  Surface firstBitmap_{1, 1};  // that new contexts in memory hold
  std::uintptr_t nextHandle_ = 0x600010;
};

}  // namespace ostrel::headless
