#include "platform/headless/svg_page.h"

#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

using testing::HasSubstr;
using testing::Not;

class SvgPageTest : public testing::Test {
 protected:
  SvgPageTest() { device_.page = {1200, 2400}; }

  Graphics& graphics() { return world_.platform.graphics; }
  std::string Svg() const { return SvgPage(device_, device_.operations); }
  // A brush or a font in force until the test's end.
  void Select(GdiObject object) {
    objects_.push_back(object);
    before_.push_back(graphics().SelectObject(context_, object));
  }
  void SelectFont(const char16_t* face, std::int32_t height, std::int32_t escapement,
                  std::int32_t weight = 0, std::uint8_t italic = 0) {
    LogFont font = {};
    font.lfHeight = height;
    font.lfEscapement = escapement;
    font.lfWeight = weight;
    font.lfItalic = italic;
    std::u16string_view(face).copy(font.lfFaceName, kFaceNameUnits - 1);
    Select(graphics().CreateFontIndirectW(font));
  }
  void Write(std::int32_t x, std::int32_t y, std::u16string_view text, std::uint32_t options = 0) {
    graphics().ExtTextOutW(context_, x, y, options, nullptr, text.data(),
                           static_cast<int>(text.size()));
  }
  void TearDown() override {
    for (const GdiObject object : before_) {
      graphics().SelectObject(context_, object);
    }
    for (const GdiObject object : objects_) {
      graphics().DeleteObject(object);
    }
    graphics().DeleteDC(context_);
  }

  test::TestWorld world_;
  PrinterDevice device_;
  DeviceContext context_ = world_.platform.graphics.OpenPrinter(device_);
  std::vector<GdiObject> objects_;
  std::vector<GdiObject> before_;
};

TEST_F(SvgPageTest, EmptyPageIsWhiteAndAsLargeAsThePaper) {
  EXPECT_EQ(Svg(),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"2.000in\" height=\"4.000in\" "
            "viewBox=\"0 0 1200 2400\">\n"
            "<rect width=\"1200\" height=\"2400\" fill=\"#ffffff\"/>\n"
            "</svg>\n");
}

TEST_F(SvgPageTest, TextInAPathIsFilledByTheBrush) {
  Select(graphics().CreateSolidBrush(0x123456));  // blue, green and red from the left
  SelectFont(u"Arial", -100, 0);
  graphics().BeginPath(context_);
  Write(30, 40, u"A<B");
  graphics().EndPath(context_);
  EXPECT_THAT(Svg(), Not(HasSubstr("<text")));
  graphics().FillPath(context_);
  EXPECT_THAT(Svg(), HasSubstr("<text x=\"30\" y=\"40\" dy=\"0.9em\" font-family=\"Arial\" "
                               "font-size=\"100\" fill=\"#563412\" xml:space=\"preserve\">"
                               "A&lt;B</text>"));
}

TEST_F(SvgPageTest, TextIsTurnedAgainstTheClock) {
  SelectFont(u"Arial", -100, 450, 700, 1);
  Write(30, 40, u"x");
  EXPECT_THAT(Svg(), HasSubstr("font-weight=\"bold\" font-style=\"italic\" "
                               "transform=\"rotate(315.0 30 40)\""));
}

TEST_F(SvgPageTest, TextFromTheRightStillBeginsOnTheLeft) {
  Write(30, 40, u"\u05E1", kTextRightToLeft);
  EXPECT_THAT(Svg(), HasSubstr("direction=\"rtl\" text-anchor=\"end\""));
  EXPECT_THAT(Svg(), HasSubstr(">\xD7\xA1</text>"));
}

TEST_F(SvgPageTest, LettersThatTheFormatLacksAreReplaced) {
  Write(0, 0, std::u16string{u'a', 0x01, 0xD800, u'b', 0xD83D, 0xDE00, 0xFFFF, u'"', u'&'});
  EXPECT_THAT(Svg(), HasSubstr(">a \xEF\xBF\xBD"
                               "b\xF0\x9F\x98\x80\xEF\xBF\xBD&quot;&amp;<"));
}

TEST_F(SvgPageTest, TwoPolygonsFilledAlternatelyAreOnePath) {
  constexpr Point kOuter[] = {{0, 0}, {9, 0}, {9, 9}};
  constexpr Point kInner[] = {{2, 2}, {5, 2}, {5, 5}};
  Select(graphics().CreateSolidBrush(0));
  graphics().BeginPath(context_);
  graphics().Polygon(context_, kOuter, 3);
  graphics().Polygon(context_, kInner, 3);
  graphics().EndPath(context_);
  graphics().FillPath(context_);
  EXPECT_THAT(Svg(), HasSubstr("<path d=\"M0 0L9 0L9 9zM2 2L5 2L5 5z\" fill=\"#000000\" "
                               "fill-rule=\"evenodd\"/>"));
}

TEST_F(SvgPageTest, WindingFillIsNonzero) {
  constexpr Point kCorners[] = {{0, 0}, {9, 0}, {9, 9}};
  graphics().SetPolyFillMode(context_, kFillWinding);
  graphics().BeginPath(context_);
  graphics().Polygon(context_, kCorners, 3);
  graphics().EndPath(context_);
  graphics().FillPath(context_);
  EXPECT_THAT(Svg(), HasSubstr("fill-rule=\"nonzero\""));
}

TEST_F(SvgPageTest, EllipseIsTwoArcsWithItsOutline) {
  graphics().Ellipse(context_, {10, 20, 110, 60});
  EXPECT_THAT(Svg(), HasSubstr("<path d=\"M10 40a50 20 0 1 0 100 0a50 20 0 1 0 -100 0z\" "
                               "fill=\"#ffffff\" stroke=\"#000000\" stroke-width=\"1\"/>"));
}

TEST_F(SvgPageTest, HollowBrushFillsNothing) {
  Select(graphics().CreateBrushIndirect({.lbStyle = 1, .lbColor = 0, .lbHatch = 0}));
  graphics().Ellipse(context_, {10, 20, 110, 60});
  EXPECT_THAT(Svg(), HasSubstr("fill=\"none\""));
}

TEST_F(SvgPageTest, RectanglesHaveOutlinesAndFillingsHaveNone) {
  graphics().Rectangle(context_, {1, 2, 11, 22});
  EXPECT_THAT(Svg(), HasSubstr("<rect x=\"1\" y=\"2\" width=\"10\" height=\"20\" "
                               "fill=\"#ffffff\" stroke=\"#000000\" stroke-width=\"1\"/>"));
  const GdiObject brush = graphics().CreateSolidBrush(0x0000FF);
  graphics().FillRect(context_, {5, 5, 7, 9}, brush);
  graphics().DeleteObject(brush);
  EXPECT_THAT(Svg(), HasSubstr("<rect x=\"5\" y=\"5\" width=\"2\" height=\"4\" "
                               "fill=\"#ff0000\"/>"));
}

TEST_F(SvgPageTest, PlacesFollowTheOriginsAndTheDriversOwn) {
  graphics().SetViewportOrgEx(context_, 100, 200, nullptr);
  graphics().SetWindowOrgEx(context_, 1, 2, nullptr);
  graphics().MoveDeviceOrigin(context_, {1000, 2000});
  Write(11, 22, u"x");
  EXPECT_THAT(Svg(), HasSubstr("<text x=\"1110\" y=\"2220\""));
}

TEST_F(SvgPageTest, PictureShowsThePartThatWasAskedFor) {
  // Two pixels by two, 8 bytes a row, the last row first; the lower left one of them, stretched.
  const std::vector<std::uint8_t> rows(16, 0x40);
  BitmapInfoHeader form = {};
  form.biSize = sizeof(form);
  form.biWidth = 2;
  form.biHeight = 2;
  form.biPlanes = 1;
  form.biBitCount = 24;
  graphics().StretchDIBits(context_, {10, 20, 110, 220}, {0, 0, 1, 1}, rows.data(), form,
                           kRasterAnd);
  EXPECT_THAT(Svg(), HasSubstr("<svg x=\"10\" y=\"20\" width=\"100\" height=\"200\" "
                               "viewBox=\"0 1 1 1\" preserveAspectRatio=\"none\" "
                               "style=\"mix-blend-mode:multiply\"><image width=\"2\" "
                               "height=\"2\" href=\"data:image/bmp;base64,Qk1GAAAA"));
  EXPECT_THAT(Svg(), HasSubstr("QEBAQEBAQEBAQEBAQEBAQA==\"/>"));
}

TEST_F(SvgPageTest, CopiedPictureHidesWhatLiesBelow) {
  const std::vector<std::uint8_t> row(4, 0);
  BitmapInfoHeader form = {};
  form.biSize = sizeof(form);
  form.biWidth = 1;
  form.biHeight = 1;
  form.biPlanes = 1;
  form.biBitCount = 24;
  graphics().StretchDIBits(context_, {0, 0, 1, 1}, {0, 0, 1, 1}, row.data(), form, kRasterCopy);
  EXPECT_THAT(Svg(), Not(HasSubstr("multiply")));
}

}  // namespace
}  // namespace ostrel::headless
