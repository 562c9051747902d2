#include "platform/headless/drawing_record.h"

#include <array>

namespace ostrel::headless {
namespace {

// As the platform does it: rounded to the nearest, away from zero at a half.
std::int32_t Scaled(std::int32_t value, std::int32_t numerator, std::int32_t denominator) {
  if (denominator == 0) {
    return value;
  }
  std::int64_t product = std::int64_t{value} * numerator;
  std::int64_t divisor = denominator;
  if (divisor < 0) {
    product = -product;
    divisor = -divisor;
  }
  return static_cast<std::int32_t>((product + (product < 0 ? -divisor / 2 : divisor / 2)) /
                                   divisor);
}

// Text as UTF-8 for what a byte can't hold, within quotes.
void AddQuoted(std::string& out, std::u16string_view text) {
  constexpr char16_t kLastAscii = 0x7E;
  out += '"';
  for (const char16_t unit : text) {
    if (unit >= u' ' && unit <= kLastAscii) {
      out += static_cast<char>(unit);
    } else {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      out += "\\u";
      for (int shift = 12; shift >= 0; shift -= 4) {
        out += kDigits[(unit >> shift) & 0xF];
      }
    }
  }
  out += '"';
}

void AddNumbers(std::string& out, std::span<const std::int64_t> numbers) {
  const char* separator = "";
  for (const std::int64_t number : numbers) {
    out += separator;
    out += std::to_string(number);
    separator = ", ";
  }
}

void AddSelected(std::string& out, const DrawingOperation& operation) {
  constexpr std::array<std::string_view, 3> kKinds = {"font ", "brush ", "pen "};
  out += kKinds.at(static_cast<std::size_t>(operation.numbers.at(0)));
  AddNumbers(out, std::span(operation.numbers).subspan(1));
  if (operation.numbers[0] == kSelectedFont) {
    out += ' ';
    AddQuoted(out, operation.text);
  }
}

void AddBytes(std::string& out, std::span<const std::byte> bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  for (const std::byte byte : bytes) {
    const auto value = std::to_integer<unsigned>(byte);
    out += kDigits[value >> 4];
    out += kDigits[value & 0xF];
  }
}

}  // namespace

Point DrawingMapping::ToDevice(Point point) const {
  return {Scaled(point.x - windowOrigin.x, viewportExtent.width, windowExtent.width) +
              viewportOrigin.x + deviceOrigin.x,
          Scaled(point.y - windowOrigin.y, viewportExtent.height, windowExtent.height) +
              viewportOrigin.y + deviceOrigin.y};
}

Point DrawingMapping::ToCaller(Point point) const {
  return {
      Scaled(point.x - viewportOrigin.x, windowExtent.width, viewportExtent.width) + windowOrigin.x,
      Scaled(point.y - viewportOrigin.y, windowExtent.height, viewportExtent.height) +
          windowOrigin.y};
}

const char* NameOf(DrawingCall call) {
  constexpr std::array kNames = {
      "SelectObject",     "SetWindowOrgEx", "SetViewportOrgEx", "SetWindowExtEx",
      "SetViewportExtEx", "SetBkMode",      "SetROP2",          "SetPolyFillMode",
      "SetTextAlign",     "SetTextColor",   "SetBkColor",       "SetStretchBltMode",
      "BeginPath",        "EndPath",        "FillPath",         "ExtTextOutW",
      "Ellipse",          "Polygon",        "Rectangle",        "FillRect",
      "StretchDIBits",    "ExtEscape"};
  static_assert(kNames.size() == static_cast<std::size_t>(DrawingCall::kExtEscape) + 1);
  return kNames.at(static_cast<std::size_t>(call));
}

std::string Describe(const DrawingOperation& operation) {
  std::string out = NameOf(operation.call);
  out += '(';
  if (operation.call == DrawingCall::kSelectObject) {
    AddSelected(out, operation);
    return out + ')';
  }
  AddNumbers(out, operation.numbers);
  if (operation.call == DrawingCall::kExtTextOutW) {
    out += operation.place ? ", in " : ", ";
    if (operation.place) {
      const Rect& place = *operation.place;
      AddNumbers(out,
                 std::array<std::int64_t, 4>{place.left, place.top, place.right, place.bottom});
      out += ", ";
    }
    AddQuoted(out, operation.text);
  }
  const char* separator = "";
  for (const Point point : operation.points) {
    out += separator;
    AddNumbers(out, std::array<std::int64_t, 2>{point.x, point.y});
    separator = "; ";
  }
  if (operation.call == DrawingCall::kExtEscape && !operation.bytes.empty()) {
    out += ", ";
    AddBytes(out, operation.bytes);
  }
  return out + ')';
}

}  // namespace ostrel::headless
