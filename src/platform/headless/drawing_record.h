// What was done on a printer's device context, as data: each operation with its arguments as they
// were given, and what was in force when it was done. A test compares operations, or their texts,
// and a page can be drawn from them.
#pragma once

#include "platform/window_types.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ostrel::headless {

// From what callers count in to the device's pixels.
struct DrawingMapping {
  Point windowOrigin = {0, 0};
  Size windowExtent = {1, 1};
  Point viewportOrigin = {0, 0};
  Size viewportExtent = {1, 1};
  // Where the driver behind the context has moved its own origin to: callers don't see it.
  Point deviceOrigin = {0, 0};
  bool operator==(const DrawingMapping&) const = default;

  Point ToDevice(Point point) const;
  Point ToCaller(Point point) const;
};

struct DrawingPen {
  std::uint32_t color = 0;
  std::int32_t width = 1;
  bool operator==(const DrawingPen&) const = default;
};

// What drawing goes by, under the names of the operations that set it.
struct DrawingState {
  DrawingMapping mapping = {};
  LogFont font = {};
  std::optional<std::uint32_t> brush = 0xFFFFFF;  // colour; nothing for the hollow one
  std::optional<DrawingPen> pen = DrawingPen{};
  std::uint32_t textColor = 0;
  std::uint32_t backgroundColor = 0xFFFFFF;
  std::int32_t backgroundMode = 2;  // OPAQUE
  std::int32_t rasterMode = 13;     // R2_COPYPEN
  std::int32_t polyFillMode = kFillAlternate;
  std::int32_t stretchMode = 1;  // BLACKONWHITE
  std::uint32_t textAlign = 0;
  bool operator==(const DrawingState&) const = default;
};

// What an operation does; each is named after the platform's own function.
enum class DrawingCall {
  kSelectObject,
  kSetWindowOrgEx,
  kSetViewportOrgEx,
  kSetWindowExtEx,
  kSetViewportExtEx,
  kSetBkMode,
  kSetROP2,
  kSetPolyFillMode,
  kSetTextAlign,
  kSetTextColor,
  kSetBkColor,
  kSetStretchBltMode,
  kBeginPath,
  kEndPath,
  kFillPath,
  kExtTextOutW,
  kEllipse,
  kPolygon,
  kRectangle,
  kFillRect,
  kStretchDIBits,
  kExtEscape,
};
const char* NameOf(DrawingCall call);

struct DrawingOperation {
  DrawingCall call;
  // Arguments in their order, without the context. Of an object that is selected: what it is,
  // below.
  std::vector<std::int64_t> numbers = {};
  std::u16string text = {};           // of ExtTextOutW; the face of a selected font
  std::vector<Point> points = {};     // of Polygon
  std::optional<Rect> place = {};     // that ExtTextOutW was given
  std::vector<std::byte> bytes = {};  // input of ExtEscape; the picture's rows of StretchDIBits
  Size picture = {};                  // of StretchDIBits: of the whole picture
  DrawingState state = {};            // when it was done, its own change included
};

// First number of a selected object: its kind.
enum SelectedObject : std::int64_t {
  kSelectedFont,   // then height, width, escapement, orientation, weight, italic, underline, strike
                   // out, character set, precision of output
  kSelectedBrush,  // then the colour, -1 for the hollow one
  kSelectedPen,    // then colour and width, -1 for the empty one
};

// One line: the name and the arguments in brackets, as in `Ellipse(10, 20, 110, 120)` or
// `SelectObject(font -545, 0, 450, 450, 700, 0, 0, 0, 0, 7 "Arial")`.
std::string Describe(const DrawingOperation& operation);

// A printer's device as its context tells it, and the driver behind it.
struct PrinterDevice {
  Size page = {};  // pixels
  std::int32_t dotsPerInch = 600;
  // Answers an escape; 0 for a code that it doesn't know. Without it no escape is answered.
  std::function<int(std::int32_t code, std::span<const std::byte> input,
                    std::span<std::byte> output)>
      onEscape = {};
  std::vector<DrawingOperation> operations = {};
  bool records = true;  // false: operations are done and not written down
};

}  // namespace ostrel::headless
