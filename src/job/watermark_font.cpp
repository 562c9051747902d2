#include "job/watermark_font.h"

#include "core/process_state.h"
#include "core/text.h"
#include "job/watermark_geometry.h"

namespace ostrel {
namespace {

int TakeCharSet(const LogFont* font, const void* /*metrics*/, std::uint32_t /*fontType*/,
                std::intptr_t callersWord) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): as the enumeration carries it.
  *reinterpret_cast<std::uint8_t*>(callersWord) = font->lfCharSet;
  return 0;  // the first one counts
}

std::uint8_t CharSetOf(DeviceContext hdc, std::u16string_view face) {
  std::uint8_t charSet = kDefaultCharSet;
  LogFont wanted = {};
  wanted.lfCharSet = kDefaultCharSet;
  CopyText(wanted.lfFaceName, face);
  World().graphics.EnumFontFamiliesExW(hdc, wanted, TakeCharSet,
                                       reinterpret_cast<std::intptr_t>(&charSet));
  return charSet;
}

// From tenths of a point to the units that callers of this context count in.
std::int32_t CallersHeight(DeviceContext hdc, std::int32_t height) {
  constexpr double kPointsPerInch = 72;
  constexpr double kTenths = 10;
  Graphics& graphics = World().graphics;
  const std::int64_t dotsPerInch = graphics.GetDeviceCaps(hdc, kDeviceCapLogPixelsY);
  const std::int64_t pixels =
      CutRounded(static_cast<double>(height * dotsPerInch) / kPointsPerInch);
  Point point = {0, Coordinate(pixels)};
  graphics.DPtoLP(hdc, &point, 1);
  const std::int64_t distance = point.y < 0 ? -std::int64_t{point.y} : point.y;
  return Coordinate(CutRounded(static_cast<double>(distance) / kTenths));
}

}  // namespace

GdiObject MakeWatermarkFont(DeviceContext hdc, const char16_t* face, std::int32_t height,
                            std::uint32_t flags, std::int32_t escapement) {
  constexpr std::int32_t kBoldWeight = 700;
  const auto flag = [flags](std::uint32_t bit) -> std::uint8_t {
    return (flags & bit) != 0 ? 1 : 0;
  };
  LogFont font = {};
  font.lfCharSet = CharSetOf(hdc, CallerText(face));
  font.lfHeight = -CallersHeight(hdc, height);
  font.lfEscapement = escapement;
  font.lfOrientation = escapement;
  font.lfWeight = flag(kFontBold) * kBoldWeight;
  font.lfItalic = flag(kFontItalic);
  font.lfUnderline = flag(kFontUnderline);
  font.lfStrikeOut = flag(kFontStrikeOut);
  font.lfOutPrecision = kOutTrueTypeOnly;
  CopyText(font.lfFaceName, CallerText(face));
  return World().graphics.CreateFontIndirectW(font);
}

}  // namespace ostrel
