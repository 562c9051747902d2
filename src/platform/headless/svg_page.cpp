#include "platform/headless/svg_page.h"

#include "platform/headless/pixel_surface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace ostrel::headless {
namespace {

// ---- Texts --------------------------------------------------------------------------------------

// A letter in UTF-8; what has a meaning in the format is written as its name.
void AddLetter(std::string& out, char32_t letter) {
  const auto add = [&out](char32_t bits) { out += static_cast<char>(bits); };
  if (letter == U'<') {
    out += "&lt;";
  } else if (letter == U'&') {
    out += "&amp;";
  } else if (letter == U'"') {
    out += "&quot;";
  } else if (letter < 0x20) {
    out += ' ';  // the format has no letters there
  } else if (letter < 0x80) {
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

std::string Escaped(std::u16string_view text) {
  constexpr char32_t kReplacement = 0xFFFD;
  const auto isIn = [](char16_t unit, char16_t first) { return (unit & 0xFC00) == first; };
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (isIn(unit, 0xD800) && i + 1 < text.size() && isIn(text[i + 1], 0xDC00)) {
      AddLetter(out, 0x10000 + ((unit & 0x3FFU) << 10) + (text[++i] & 0x3FFU));
    } else {
      const bool isHalf = (unit & 0xF800) == 0xD800;
      AddLetter(out, isHalf || unit >= 0xFFFE ? kReplacement : unit);
    }
  }
  return out;
}

std::string ColorText(std::uint32_t color) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string out = "#";
  for (int part = 0; part < 3; ++part, color >>= 8) {
    out += kDigits[color >> 4 & 0xF];
    out += kDigits[color & 0xF];
  }
  return out;
}

std::string Base64(std::span<const std::byte> bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = group << 8 | (k < count ? std::to_integer<std::uint32_t>(bytes[i + k]) : 0);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      out += k > count ? '=' : kDigits[group >> (18 - 6 * k) & 0x3F];
    }
  }
  return out;
}

// `name="value"` pairs of an element.
class Element {
 public:
  explicit Element(std::string_view name) : text_("<" + std::string(name)) {}
  Element& With(std::string_view name, std::string_view value) {
    text_.append(" ").append(name).append("=\"").append(value).append("\"");
    return *this;
  }
  Element& With(std::string_view name, std::int64_t value) {
    return With(name, std::to_string(value));
  }
  std::string Closed() const { return text_ + "/>\n"; }
  std::string Around(std::string_view content) const {
    return text_ + ">" + std::string(content) + "</" + Name() + ">\n";
  }

 private:
  std::string Name() const { return text_.substr(1, text_.find(' ') - 1); }
  std::string text_;
};

// ---- Shapes -------------------------------------------------------------------------------------

struct Box {
  std::int64_t left;
  std::int64_t top;
  std::int64_t width;
  std::int64_t height;
};

Box OnDevice(const DrawingMapping& mapping, Point a, Point b) {
  const Point first = mapping.ToDevice(a);
  const Point second = mapping.ToDevice(b);
  return {std::min(first.x, second.x), std::min(first.y, second.y),
          std::abs(std::int64_t{second.x} - first.x), std::abs(std::int64_t{second.y} - first.y)};
}

Box PlaceOf(const DrawingOperation& operation) {
  const auto number = [&](std::size_t i) {
    return static_cast<std::int32_t>(operation.numbers[i]);
  };
  return OnDevice(operation.state.mapping, {number(0), number(1)}, {number(2), number(3)});
}

// The same as a path, whose letters are the format's: M is a start, L a line, A an arc, z an end.
std::string PolygonPath(const DrawingOperation& operation) {
  std::string path;
  const char* step = "M";
  for (const Point corner : operation.points) {
    const Point point = operation.state.mapping.ToDevice(corner);
    path.append(step).append(std::to_string(point.x)).append(" ").append(std::to_string(point.y));
    step = "L";
  }
  return path + "z";
}

std::string EllipsePath(const DrawingOperation& operation) {
  const Box place = PlaceOf(operation);
  const std::string radii =
      "a" + std::to_string(place.width / 2) + " " + std::to_string(place.height / 2) + " 0 1 0 ";
  const std::string width = std::to_string(place.width / 2 * 2);
  return "M" + std::to_string(place.left) + " " + std::to_string(place.top + place.height / 2) +
         radii + width + " 0" + radii + "-" + width + " 0z";
}

// Fills as the brush says, and draws the outline as the pen does.
void Paint(Element& element, const DrawingState& state, bool hasOutline) {
  element.With("fill", state.brush ? ColorText(*state.brush) : "none");
  if (hasOutline && state.pen) {
    element.With("stroke", ColorText(state.pen->color)).With("stroke-width", state.pen->width);
  }
}

// ---- Text and pictures --------------------------------------------------------------------------

// A text hangs from its upper left corner, and turns round it. The format counts from the letters'
// ground, which lies nine tenths of their height below.
std::string TextElement(const DrawingOperation& text, std::uint32_t color) {
  const LogFont& font = text.state.font;
  const Point place = text.state.mapping.ToDevice(
      {static_cast<std::int32_t>(text.numbers[0]), static_cast<std::int32_t>(text.numbers[1])});
  Element element("text");
  element.With("x", place.x).With("y", place.y).With("dy", "0.9em");
  element.With("font-family", Escaped(font.lfFaceName)).With("font-size", std::abs(font.lfHeight));
  if (font.lfWeight > 400) {
    element.With("font-weight", "bold");
  }
  if (font.lfItalic != 0) {
    element.With("font-style", "italic");
  }
  if (font.lfEscapement != 0) {
    const std::int32_t tenths = (3600 - font.lfEscapement % 3600) % 3600;
    element.With("transform", "rotate(" + std::to_string(tenths / 10) + "." +
                                  std::to_string(tenths % 10) + " " + std::to_string(place.x) +
                                  " " + std::to_string(place.y) + ")");
  }
  if ((text.numbers[2] & kTextRightToLeft) != 0) {
    element.With("direction", "rtl").With("text-anchor", "end");
  }
  element.With("fill", ColorText(color)).With("xml:space", "preserve");
  return element.Around(Escaped(text.text));
}

template <typename Number>
void AppendNumber(std::vector<std::byte>& out, Number number) {
  const auto bytes = std::as_bytes(std::span(&number, 1));
  out.insert(out.end(), bytes.begin(), bytes.end());
}

// The rows of a picture as a bitmap's file, BITMAPFILEHEADER and BITMAPINFOHEADER of wingdi.h.
std::vector<std::byte> BitmapFile(const DrawingOperation& picture) {
  constexpr std::uint16_t kMark = 0x4D42;  // "BM"
  constexpr std::uint32_t kRows = 14 + sizeof(BitmapInfoHeader);
  const auto size = static_cast<std::uint32_t>(picture.bytes.size());
  BitmapInfoHeader header = {};
  header.biSize = sizeof(header);
  header.biWidth = picture.picture.width;
  header.biHeight = picture.picture.height;
  header.biPlanes = 1;
  header.biBitCount = 8 * kPixelBytes;
  header.biSizeImage = size;
  std::vector<std::byte> file;
  AppendNumber(file, kMark);
  AppendNumber(file, kRows + size);
  AppendNumber(file, std::uint32_t{0});
  AppendNumber(file, kRows);
  AppendNumber(file, header);
  file.insert(file.end(), picture.bytes.begin(), picture.bytes.end());
  return file;
}

// A picture is placed whole within a window of its own, which shows the part that was asked for.
std::string PictureElement(const DrawingOperation& picture) {
  const auto number = [&](std::size_t i) { return static_cast<std::int32_t>(picture.numbers[i]); };
  const Box place = OnDevice(picture.state.mapping, {number(0), number(1)},
                             {number(0) + number(2), number(1) + number(3)});
  const std::int64_t height = std::abs(std::int64_t{picture.picture.height});
  // Rows that lie last row first are counted from there.
  const std::int64_t top =
      picture.picture.height > 0 ? height - number(5) - number(7) : std::int64_t{number(5)};
  Element window("svg");
  window.With("x", place.left).With("y", place.top);
  window.With("width", place.width).With("height", place.height);
  window.With("viewBox", std::to_string(number(4)) + " " + std::to_string(top) + " " +
                             std::to_string(number(6)) + " " + std::to_string(number(7)));
  window.With("preserveAspectRatio", "none");
  if (static_cast<std::uint32_t>(picture.numbers[8]) == kRasterAnd) {
    window.With("style", "mix-blend-mode:multiply");
  }
  Element image("image");
  image.With("width", picture.picture.width).With("height", height);
  image.With("href", "data:image/bmp;base64," + Base64(BitmapFile(picture)));
  return window.Around(image.Closed());
}

// ---- Pages --------------------------------------------------------------------------------------

// Goes through a page's operations. What stands between the ends of a path waits for its filling.
class Page {
 public:
  void Add(const DrawingOperation& operation) {
    switch (operation.call) {
      case DrawingCall::kBeginPath:
        ClearPath();
        isInPath_ = true;
        break;
      case DrawingCall::kEndPath:
        isInPath_ = false;
        break;
      case DrawingCall::kFillPath:
        FillPath(operation.state);
        break;
      case DrawingCall::kExtTextOutW:
        AddText(operation);
        break;
      case DrawingCall::kEllipse:
        AddShape(operation, EllipsePath(operation));
        break;
      case DrawingCall::kPolygon:
        AddShape(operation, PolygonPath(operation));
        break;
      case DrawingCall::kRectangle:
        AddRectangle(operation, true);
        break;
      case DrawingCall::kFillRect:
        AddRectangle(operation, false);
        break;
      case DrawingCall::kStretchDIBits:
        text_ += PictureElement(operation);
        break;
      default:
        break;
    }
  }
  const std::string& text() const { return text_; }

 private:
  void ClearPath() {
    path_.clear();
    pathTexts_.clear();
  }

  void FillPath(const DrawingState& state) {
    if (state.brush && !path_.empty()) {
      const bool isAlternate = state.polyFillMode == kFillAlternate;
      text_ += Element("path")
                   .With("d", path_)
                   .With("fill", ColorText(*state.brush))
                   .With("fill-rule", isAlternate ? "evenodd" : "nonzero")
                   .Closed();
    }
    for (const DrawingOperation& text : pathTexts_) {
      text_ += state.brush ? TextElement(text, *state.brush) : std::string();
    }
    ClearPath();
  }

  void AddText(const DrawingOperation& operation) {
    if (isInPath_) {
      pathTexts_.push_back(operation);
    } else {
      text_ += TextElement(operation, operation.state.textColor);
    }
  }

  void AddShape(const DrawingOperation& operation, const std::string& path) {
    if (isInPath_) {
      path_ += path;
      return;
    }
    Element element("path");
    element.With("d", path);
    Paint(element, operation.state, true);
    text_ += element.Closed();
  }

  void AddRectangle(const DrawingOperation& operation, bool hasOutline) {
    const Box place = PlaceOf(operation);
    Element element("rect");
    element.With("x", place.left).With("y", place.top);
    element.With("width", place.width).With("height", place.height);
    DrawingState state = operation.state;
    if (!hasOutline) {  // the brush came with the call
      const std::int64_t color = operation.numbers[4];
      state.brush = color < 0 ? std::nullopt : std::optional(static_cast<std::uint32_t>(color));
    }
    Paint(element, state, hasOutline);
    text_ += element.Closed();
  }

  std::string text_;
  std::string path_;
  std::vector<DrawingOperation> pathTexts_;
  bool isInPath_ = false;
};

std::string Inches(std::int32_t pixels, std::int32_t dotsPerInch) {
  const std::int32_t thousandths =
      static_cast<std::int32_t>(std::int64_t{pixels} * 1000 / std::max(dotsPerInch, 1));
  std::string fraction = std::to_string(thousandths % 1000);
  fraction.insert(0, 3 - fraction.size(), '0');
  return std::to_string(thousandths / 1000) + "." + fraction + "in";
}

}  // namespace

std::string SvgPage(const PrinterDevice& device, std::span<const DrawingOperation> operations) {
  Page page;
  for (const DrawingOperation& operation : operations) {
    page.Add(operation);
  }
  const auto [width, height] = device.page;
  Element document("svg");
  document.With("xmlns", "http://www.w3.org/2000/svg");
  document.With("width", Inches(width, device.dotsPerInch));
  document.With("height", Inches(height, device.dotsPerInch));
  document.With("viewBox", "0 0 " + std::to_string(width) + " " + std::to_string(height));
  const std::string ground =
      Element("rect").With("width", width).With("height", height).With("fill", "#ffffff").Closed();
  return document.Around("\n" + ground + page.text());
}

}  // namespace ostrel::headless
