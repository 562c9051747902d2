#include "platform/headless/svg_page.h"

#include "platform/headless/context_places.h"
#include "platform/headless/pixel_surface.h"
#include "platform/headless/png_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <utility>

namespace ostrel::headless {
namespace {

// ---- Text of the file ---------------------------------------------------------------------------

std::string Join(std::initializer_list<std::string_view> parts) {
  std::string out;
  for (const std::string_view part : parts) {
    out += part;
  }
  return out;
}

std::string Number(double value) {
  std::array<char, 40> text = {};
  std::snprintf(text.data(), text.size(), "%.2f", value);
  std::string number = text.data();
  number.erase(number.find_last_not_of('0') + 1);
  if (number.back() == '.') {
    number.pop_back();
  }
  return number == "-0" ? "0" : number;
}

std::string Attribute(std::string_view name, std::string_view value) {
  return Join({" ", name, "=\"", value, "\""});
}

std::string Attribute(std::string_view name, double value) {
  return Attribute(name, Number(value));
}

// 0x00BBGGRR as #rrggbb.
std::string Color(std::uint32_t color) {
  std::array<char, 8> text = {};
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", color & 0xFF, (color >> 8) & 0xFF,
                (color >> 16) & 0xFF);
  return text.data();
}

std::string Fill(std::optional<std::uint32_t> color) {
  return Attribute("fill", color ? Color(*color) : "none");
}

void AddUtf8(std::string& out, char32_t letter) {
  const auto add = [&out](char32_t byte) { out += static_cast<char>(byte); };
  if (letter < 0x80) {
    add(letter);
  } else if (letter < 0x800) {
    add(0xC0 | letter >> 6);
    add(0x80 | (letter & 0x3F));
  } else if (letter < 0x10000) {
    add(0xE0 | letter >> 12);
    add(0x80 | (letter >> 6 & 0x3F));
    add(0x80 | (letter & 0x3F));
  } else {
    add(0xF0 | letter >> 18);
    add(0x80 | (letter >> 12 & 0x3F));
    add(0x80 | (letter >> 6 & 0x3F));
    add(0x80 | (letter & 0x3F));
  }
}

// As text of an element or an attribute. What XML has no letter for becomes U+FFFD.
std::string Escaped(std::u16string_view text) {
  constexpr char32_t kUnknown = 0xFFFD;
  const auto isHigh = [](char16_t unit) { return (unit & 0xFC00) == 0xD800; };
  const auto isLow = [](char16_t unit) { return (unit & 0xFC00) == 0xDC00; };
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (unit == u'&') {
      out += "&amp;";
    } else if (unit == u'<') {
      out += "&lt;";
    } else if (unit == u'>') {
      out += "&gt;";
    } else if (unit == u'"') {
      out += "&quot;";
    } else if (isHigh(unit) && i + 1 < text.size() && isLow(text[i + 1])) {
      const char32_t high = unit & 0x3FF;
      const char32_t low = text[++i] & 0x3FF;
      AddUtf8(out, 0x10000 + (high << 10 | low));
    } else {
      const bool isNone = unit < u' ' || unit >= 0xFFFE || isHigh(unit) || isLow(unit);
      AddUtf8(out, isNone ? kUnknown : unit);
    }
  }
  return out;
}

// ---- Places -------------------------------------------------------------------------------------

// A rectangle on the device, its corners in order.
Rect OnDevice(const DrawingMapping& mapping, const Rect& place) {
  const Point first = mapping.ToDevice({place.left, place.top});
  const Point second = mapping.ToDevice({place.right, place.bottom});
  return {std::min(first.x, second.x), std::min(first.y, second.y), std::max(first.x, second.x),
          std::max(first.y, second.y)};
}

Rect RectOf(const DrawingOperation& operation) {
  const auto side = [&](std::size_t index) {
    return static_cast<std::int32_t>(operation.numbers.at(index));
  };
  return {side(0), side(1), side(2), side(3)};
}

double Wide(const Rect& rect) {
  return static_cast<double>(rect.right) - rect.left;
}
double High(const Rect& rect) {
  return static_cast<double>(rect.bottom) - rect.top;
}

// The outline of a shape, as a path's data.
std::string Outline(const DrawingOperation& operation) {
  const DrawingMapping& mapping = operation.state.mapping;
  if (operation.call == DrawingCall::kPolygon) {
    std::string data;
    for (const Point corner : operation.points) {
      const Point place = mapping.ToDevice(corner);
      data += Join({data.empty() ? "M" : "L", Number(place.x), " ", Number(place.y)});
    }
    return data + 'Z';
  }
  const Rect rect = OnDevice(mapping, RectOf(operation));
  const std::string left = Number(rect.left);
  const std::string right = Number(rect.right);
  if (operation.call == DrawingCall::kRectangle) {
    const std::string bottom = Number(rect.bottom);
    return Join({"M", left, " ", Number(rect.top), "H", right, "V", bottom, "H", left, "Z"});
  }
  const std::string middle = Number(rect.top + High(rect) / 2);
  const std::string arc =
      Join({"A", Number(Wide(rect) / 2), " ", Number(High(rect) / 2), " 0 1 0 "});
  return Join({"M", left, " ", middle, arc, right, " ", middle, arc, left, " ", middle, "Z"});
}

std::string FilledRect(const Rect& rect, std::uint32_t color) {
  return Join({"<rect", Attribute("x", rect.left), Attribute("y", rect.top),
               Attribute("width", Wide(rect)), Attribute("height", High(rect)), Fill(color),
               "/>\n"});
}

// ---- The page -----------------------------------------------------------------------------------

class Page {
 public:
  explicit Page(const TextMeasure& measure) : measure_(measure) {}

  void Draw(const DrawingOperation& operation);
  std::string Take() { return std::move(out_); }

 private:
  void DrawShape(const DrawingOperation& operation);
  void DrawText(const DrawingOperation& operation);
  void DrawPicture(const DrawingOperation& operation);
  void FillPath(const DrawingState& state);
  std::string TextElement(const DrawingOperation& operation, std::optional<std::uint32_t> color);

  const TextMeasure& measure_;
  std::string out_;
  std::vector<DrawingOperation> path_;
  bool isPathOpen_ = false;
};

void Page::Draw(const DrawingOperation& operation) {
  switch (operation.call) {
    case DrawingCall::kBeginPath:
      path_.clear();
      isPathOpen_ = true;
      break;
    case DrawingCall::kEndPath:
      isPathOpen_ = false;
      break;
    case DrawingCall::kFillPath:
      FillPath(operation.state);
      break;
    case DrawingCall::kEllipse:
    case DrawingCall::kPolygon:
    case DrawingCall::kRectangle:
    case DrawingCall::kExtTextOutW:
      if (isPathOpen_) {
        path_.push_back(operation);
      } else if (operation.call == DrawingCall::kExtTextOutW) {
        DrawText(operation);
      } else {
        DrawShape(operation);
      }
      break;
    case DrawingCall::kFillRect:
      if (operation.numbers.at(4) >= 0) {
        out_ += FilledRect(OnDevice(operation.state.mapping, RectOf(operation)),
                           static_cast<std::uint32_t>(operation.numbers[4]));
      }
      break;
    case DrawingCall::kStretchDIBits:
      DrawPicture(operation);
      break;
    default:
      break;  // what drawing goes by comes with each operation; escapes draw nothing
  }
}

void Page::DrawShape(const DrawingOperation& operation) {
  const std::optional<DrawingPen>& pen = operation.state.pen;
  out_ += Join({"<path", Attribute("d", Outline(operation)), Fill(operation.state.brush)});
  if (operation.state.polyFillMode == kFillAlternate) {
    out_ += Attribute("fill-rule", "evenodd");
  }
  if (pen) {
    out_ += Join({Attribute("stroke", Color(pen->color)), Attribute("stroke-width", pen->width)});
  }
  out_ += "/>\n";
}

// All shapes of the path in one outline, then its texts.
void Page::FillPath(const DrawingState& state) {
  const std::vector<DrawingOperation> path = std::exchange(path_, {});
  isPathOpen_ = false;
  if (!state.brush) {
    return;
  }
  std::string outlines;
  std::string texts;
  for (const DrawingOperation& part : path) {
    if (part.call == DrawingCall::kExtTextOutW) {
      texts += TextElement(part, state.brush);
    } else {
      outlines += Outline(part);
    }
  }
  if (!outlines.empty()) {
    const bool isAlternate = state.polyFillMode == kFillAlternate;
    out_ += Join({"<path", Attribute("d", outlines), Fill(state.brush),
                  Attribute("fill-rule", isAlternate ? "evenodd" : "nonzero"), "/>\n"});
  }
  out_ += texts;
}

void Page::DrawText(const DrawingOperation& operation) {
  const auto options = static_cast<std::uint32_t>(operation.numbers.at(2));
  if (operation.place && (options & kTextOpaque) != 0) {
    out_ += FilledRect(OnDevice(operation.state.mapping, *operation.place),
                       operation.state.backgroundColor);
  }
  out_ += TextElement(operation, operation.state.textColor);
}

// Of a font's cell, as the usual faces have it: above the line, and all of it, to the size of the
// letters.
constexpr double kAscent = 0.905;
constexpr double kCell = 1.117;

// The letters' size in the device's pixels.
double LetterSize(const DrawingState& state) {
  constexpr double kUsual = 16;
  const DrawingMapping& mapping = state.mapping;
  const double height = std::abs(static_cast<double>(mapping.ToDevice({0, state.font.lfHeight}).y) -
                                 mapping.ToDevice({0, 0}).y);
  return height == 0 ? kUsual : height / (state.font.lfHeight > 0 ? kCell : 1);
}

std::string FontAttributes(const LogFont& font, double size) {
  constexpr std::int32_t kHeaviest = 1000;
  std::u16string face(font.lfFaceName,
                      std::find(font.lfFaceName, font.lfFaceName + kFaceNameUnits, u'\0'));
  std::erase(face, u'\'');
  std::string out = Attribute(
      "font-family", face.empty() ? "sans-serif" : Join({"'", Escaped(face), "', sans-serif"}));
  out += Attribute("font-size", size);
  if (font.lfWeight > 0) {
    out += Attribute("font-weight", std::min(font.lfWeight, kHeaviest));
  }
  if (font.lfItalic != 0) {
    out += Attribute("font-style", "italic");
  }
  if (font.lfUnderline != 0 || font.lfStrikeOut != 0) {
    const bool isBoth = font.lfUnderline != 0 && font.lfStrikeOut != 0;
    out += Attribute("text-decoration",
                     Join({font.lfUnderline != 0 ? "underline" : "", isBoth ? " " : "",
                           font.lfStrikeOut != 0 ? "line-through" : ""}));
  }
  return out;
}

// TA_... of wingdi.h: where a text's own point lies in it.
constexpr std::uint32_t kAlignRight = 2;
constexpr std::uint32_t kAlignCenter = 6;
constexpr std::uint32_t kAlignBottom = 8;
constexpr std::uint32_t kAlignBaseline = 24;

double DownToTheLine(std::uint32_t align, double size) {
  switch (align & kAlignBaseline) {
    case kAlignBaseline:
      return 0;
    case kAlignBottom:
      return (kAscent - kCell) * size;
    default:
      return kAscent * size;
  }
}

// A text that runs from the right begins at its right end, wherever its own point lies.
std::string Anchor(std::uint32_t align, bool fromTheRight) {
  const std::uint32_t across = align & kAlignCenter;
  if (across == kAlignCenter) {
    return Attribute("text-anchor", "middle");
  }
  return (across == kAlignRight) != fromTheRight ? Attribute("text-anchor", "end") : "";
}

std::string Page::TextElement(const DrawingOperation& operation,
                              std::optional<std::uint32_t> color) {
  if (operation.text.empty()) {
    return {};
  }
  const DrawingState& state = operation.state;
  const auto at = [&](std::size_t index) {
    return static_cast<std::int32_t>(operation.numbers.at(index));
  };
  const Point place = state.mapping.ToDevice({at(0), at(1)});
  const bool fromTheRight = (static_cast<std::uint32_t>(at(2)) & kTextRightToLeft) != 0;
  const double size = LetterSize(state);
  std::string length;
  if (measure_) {
    const Size measured = measure_(state.font, operation.text);
    if (measured.width > 0) {
      length = Join(
          {Attribute("textLength", measured.width), Attribute("lengthAdjust", "spacingAndGlyphs")});
    }
  }
  std::string turn = Join({"translate(", Number(place.x), " ", Number(place.y), ")"});
  if (state.font.lfEscapement != 0) {
    turn += Join({" rotate(", Number(-state.font.lfEscapement / 10.0), ")"});
  }
  return Join(
      {"<text", Attribute("transform", turn), Attribute("y", DownToTheLine(state.textAlign, size)),
       FontAttributes(state.font, size), Anchor(state.textAlign, fromTheRight),
       fromTheRight ? Attribute("direction", "rtl") : "", length,
       Attribute("xml:space", "preserve"), Fill(color), ">", Escaped(operation.text), "</text>\n"});
}

// ---- Pictures -----------------------------------------------------------------------------------

// One side of a copy: the pixels that are there, and where they go.
struct Side {
  std::int32_t first;
  std::int32_t count;
  double start;   // on the device
  double length;  // below 0 where the picture is turned
};

// Takes a stretch of a picture of `size` pixels to a stretch of the device.
std::optional<Side> SideOf(std::int64_t from, std::int64_t fromLength, std::int32_t size, double to,
                           double toLength) {
  const std::int64_t low = std::min(from, from + fromLength);
  const std::int64_t high = std::max(from, from + fromLength);
  const std::int64_t first = std::max<std::int64_t>(low, 0);
  const std::int64_t end = std::min<std::int64_t>(high, size);
  if (first >= end || toLength == 0) {
    return std::nullopt;
  }
  const double step = toLength / static_cast<double>(fromLength);
  return Side{static_cast<std::int32_t>(first), static_cast<std::int32_t>(end - first),
              to + static_cast<double>(first - from) * step,
              static_cast<double>(end - first) * step};
}

void Page::DrawPicture(const DrawingOperation& operation) {
  const auto& numbers = operation.numbers;
  const DrawingMapping& mapping = operation.state.mapping;
  const auto at = [&](std::size_t index) { return static_cast<std::int32_t>(numbers.at(index)); };
  const Point start = mapping.ToDevice({at(0), at(1)});
  const Point end = mapping.ToDevice({at(0) + at(2), at(1) + at(3)});
  const bool lastRowFirst = operation.picture.height > 0;
  const std::int32_t height = std::abs(operation.picture.height);
  // Rows are counted as they lie in memory: from the bottom where the last one comes first.
  const std::int64_t top =
      lastRowFirst ? std::int64_t{height} - numbers.at(5) - numbers.at(7) : numbers.at(5);
  const auto across = SideOf(numbers.at(4), numbers.at(6), operation.picture.width, start.x,
                             static_cast<double>(end.x) - start.x);
  const auto down =
      SideOf(top, numbers.at(7), height, start.y, static_cast<double>(end.y) - start.y);
  if (!across || !down) {
    return;
  }
  BitmapInfoHeader form = {};
  form.biWidth = operation.picture.width;
  form.biHeight = operation.picture.height;
  Surface pixels(across->count, down->count);
  CopyPixels(pixels, RowsOf(operation.bytes.data(), form),
             {.toX = {0, across->count},
              .toY = {0, down->count},
              .fromX = {across->first, across->count},
              .fromY = {down->first, down->count},
              .sampling = Sampling::kOneOf});
  const bool multiplies = numbers.at(8) == kRasterAnd;
  const std::string place =
      Join({"translate(", Number(across->start), " ", Number(down->start), ") scale(",
            across->length < 0 ? "-1" : "1", down->length < 0 ? " -1)" : " 1)"});
  out_ +=
      Join({"<image", Attribute("transform", place), Attribute("width", std::abs(across->length)),
            Attribute("height", std::abs(down->length)), Attribute("preserveAspectRatio", "none"),
            Attribute("style", multiplies ? "image-rendering:pixelated;mix-blend-mode:multiply"
                                          : "image-rendering:pixelated"),
            Attribute("href", Join({"data:image/png;base64,", Base64(WritePng(pixels))})), "/>\n"});
}

}  // namespace

std::string DrawSvg(const PrinterDevice& device, const TextMeasure& measure) {
  constexpr double kMillimetres = 25.4;  // in an inch
  Page page(measure);
  for (const DrawingOperation& operation : device.operations) {
    page.Draw(operation);
  }
  const auto length = [&device](std::int32_t pixels) {
    return Number(pixels * kMillimetres / std::max(device.dotsPerInch, 1)) + "mm";
  };
  const std::string width = Number(device.page.width);
  const std::string height = Number(device.page.height);
  const std::string whole = Join({"<rect", Attribute("width", width), Attribute("height", height)});
  return Join({"<svg", Attribute("xmlns", "http://www.w3.org/2000/svg"),
               Attribute("viewBox", Join({"0 0 ", width, " ", height})),
               Attribute("width", length(device.page.width)),
               Attribute("height", length(device.page.height)), ">\n<clipPath",
               Attribute("id", "page"), ">", whole, "/></clipPath>\n<g",
               Attribute("clip-path", "url(#page)"), ">\n", whole, Fill(0xFFFFFF), "/>\n",
               page.Take(), "</g>\n</svg>\n"});
}

}  // namespace ostrel::headless
