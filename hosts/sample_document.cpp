#include "sample_document.h"

#include "core/text.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::int32_t kPointsPerInch = 72;
constexpr std::int32_t kMargin_pt = 72;
constexpr std::int32_t kBold = 700;
constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kGray = 0xB0B0B0;

// A page in points, whatever the device's dots.
class Sheet {
 public:
  Sheet(Graphics& graphics, DeviceContext context)
      : graphics_(graphics),
        context_(context),
        dots_(graphics.GetDeviceCaps(context, kDeviceCapLogPixelsY)) {}

  std::int32_t Dots(std::int32_t points) const { return points * dots_ / kPointsPerInch; }
  std::int32_t width() const {
    return graphics_.GetDeviceCaps(context_, kDeviceCapHorzRes) * kPointsPerInch / dots_;
  }

  void Write(std::int32_t x, std::int32_t y, std::int32_t size, std::u16string_view text,
             std::int32_t weight = 0) {
    LogFont wanted = {};
    wanted.lfHeight = -Dots(size);
    wanted.lfWeight = weight;
    CopyText(wanted.lfFaceName, u"Arial");
    const GdiObject font = graphics_.CreateFontIndirectW(wanted);
    const GdiObject before = graphics_.SelectObject(context_, font);
    graphics_.ExtTextOutW(context_, Dots(x), Dots(y), 0, nullptr, text.data(),
                          static_cast<int>(text.size()));
    graphics_.SelectObject(context_, before);
    graphics_.DeleteObject(font);
  }

  void Fill(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
            std::uint32_t color) {
    const GdiObject brush = graphics_.CreateSolidBrush(color);
    graphics_.FillRect(context_, Place(x, y, width, height), brush);
    graphics_.DeleteObject(brush);
  }

  void Circle(std::int32_t x, std::int32_t y, std::int32_t size, std::uint32_t color) {
    WithBrush(color, [&] { graphics_.Ellipse(context_, Place(x, y, size, size)); });
  }

  void Triangle(Point a, Point b, Point c, std::uint32_t color) {
    const std::array corners = {Point{Dots(a.x), Dots(a.y)}, Point{Dots(b.x), Dots(b.y)},
                                Point{Dots(c.x), Dots(c.y)}};
    WithBrush(color, [&] {
      graphics_.Polygon(context_, corners.data(), static_cast<int>(corners.size()));
    });
  }

 private:
  Rect Place(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) const {
    return {Dots(x), Dots(y), Dots(x + width), Dots(y + height)};
  }
  template <typename Draw>
  void WithBrush(std::uint32_t color, Draw draw) {
    const GdiObject brush = graphics_.CreateSolidBrush(color);
    const GdiObject before = graphics_.SelectObject(context_, brush);
    draw();
    graphics_.SelectObject(context_, before);
    graphics_.DeleteObject(brush);
  }

  Graphics& graphics_;
  DeviceContext context_;
  std::int32_t dots_;
};

constexpr std::u16string_view kLetter[] = {
    u"Dear reader,",
    u"",
    u"this page is here to be printed. It has enough words on it for",
    u"a stamp to lie over some of them and beside others, so that a",
    u"look tells whether the letters below can still be read.",
    u"",
    u"The stamp is drawn last, when the page is done. It is made of",
    u"filled shapes, never of letters, so that the printer needs no",
    u"font for it. A transparent one is drawn twice.",
    u"",
    u"With kind regards",
};

void DrawLetter(Sheet& sheet) {
  constexpr std::int32_t kLine_pt = 18;
  sheet.Write(kMargin_pt, 60, 22, u"A letter", kBold);
  sheet.Fill(kMargin_pt, 90, sheet.width() - 2 * kMargin_pt, 1, kBlack);
  std::int32_t y = 120;
  for (const std::u16string_view line : kLetter) {
    sheet.Write(kMargin_pt, y, 12, line);
    y += kLine_pt;
  }
}

void DrawChart(Sheet& sheet) {
  constexpr std::int32_t kFloor_pt = 420;
  constexpr std::int32_t kBars_pt[] = {120, 190, 90, 250, 210};
  sheet.Write(kMargin_pt, 60, 22, u"A chart", kBold);
  std::int32_t x = kMargin_pt + 20;
  std::uint32_t color = 0x303030;
  for (const std::int32_t height : kBars_pt) {
    sheet.Fill(x, kFloor_pt - height, 50, height, color);
    x += 80;
    color += 0x282828;
  }
  sheet.Fill(kMargin_pt, kFloor_pt, sheet.width() - 2 * kMargin_pt, 2, kBlack);
  sheet.Write(kMargin_pt, kFloor_pt + 12, 12, u"Pages printed, by quarter");
}

void DrawShapes(Sheet& sheet) {
  sheet.Write(kMargin_pt, 60, 22, u"Shapes", kBold);
  sheet.Circle(100, 140, 140, kGray);
  sheet.Triangle({300, 280}, {370, 140}, {440, 280}, kGray);
  sheet.Fill(100, 360, 340, 60, kGray);
  sheet.Write(kMargin_pt, 460, 12, u"The end of the document.");
}

}  // namespace

void DrawSamplePage(Graphics& graphics, DeviceContext context, int page) {
  Sheet sheet(graphics, context);
  switch (page) {
    case 0:
      return DrawLetter(sheet);
    case 1:
      return DrawChart(sheet);
    default:
      return DrawShapes(sheet);
  }
}

}  // namespace ostrel
