// The page of a printer in memory as a picture: which elements stand in it, and where.
#include "platform/headless/svg_page.h"

#include "platform/headless/png_picture.h"
#include "platform/headless/printer_stage.h"
#include "support/xml_check.h"

#include <array>
#include <gmock/gmock.h>

namespace ostrel::headless {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class PageAsSvg : public PrinterStage {
 protected:
  // The elements on the page, behind its white ground.
  std::string Elements(const TextMeasure& measure = {}) {
    const std::string svg = DrawSvg(device_, measure);
    EXPECT_EQ(test::XmlCheck(svg).Fault(), "");
    const std::string ground = "<rect width=\"4960\" height=\"7016\" fill=\"#ffffff\"/>\n";
    const std::size_t start = svg.find(ground) + ground.size();
    return svg.substr(start, svg.find("</g>\n</svg>\n") - start);
  }
  void Select(GdiObject object) { EXPECT_NE(graphics_.SelectObject(page_, object), nullptr); }
  void SelectFont(const LogFont& font) { Select(graphics_.CreateFontIndirectW(font)); }
  void SelectBrush(std::uint32_t color) { Select(graphics_.CreateSolidBrush(color)); }
  void Write(std::int32_t x, std::int32_t y, std::u16string_view text, std::uint32_t options = 0) {
    EXPECT_TRUE(graphics_.ExtTextOutW(page_, x, y, options, nullptr, text.data(),
                                      static_cast<int>(text.size())));
  }
  // Fills a path of what is drawn in the meantime.
  template <typename Draw>
  void FillPathOf(std::int32_t mode, Draw draw) {
    EXPECT_TRUE(graphics_.BeginPath(page_));
    draw();
    EXPECT_TRUE(graphics_.EndPath(page_));
    EXPECT_NE(graphics_.SetPolyFillMode(page_, mode), 0);
    EXPECT_TRUE(graphics_.FillPath(page_));
  }
  void Picture(const Rect& place, const Rect& from, std::int32_t height,
               std::uint32_t operation = kRasterCopy) {
    // Two pixels a row, red and blue; the second row in memory is green and white.
    constexpr std::array<std::uint8_t, 16> kRows = {0, 0,   255, 255, 0,   0,   0, 0,
                                                    0, 255, 0,   255, 255, 255, 0, 0};
    EXPECT_NE(graphics_.StretchDIBits(page_, place, from, kRows.data(), InfoOf(2, height).header,
                                      operation),
              0);
  }
  static std::string PngOf(std::int32_t width, const std::vector<std::uint32_t>& colors) {
    Surface surface(width, static_cast<std::int32_t>(colors.size()) / width);
    for (std::size_t i = 0; i < colors.size(); ++i) {
      surface.SetColor(static_cast<std::int32_t>(i) % width, static_cast<std::int32_t>(i) / width,
                       colors[i]);
    }
    return "href=\"data:image/png;base64," + Base64(WritePng(surface)) + '"';
  }
};

TEST_F(PageAsSvg, APageIsWhiteInItsSizeAndCutsWhatReachesBeyondIt) {
  EXPECT_EQ(DrawSvg(device_),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 4960 7016\" "
            "width=\"209.97mm\" height=\"297.01mm\">\n"
            "<clipPath id=\"page\"><rect width=\"4960\" height=\"7016\"/></clipPath>\n"
            "<g clip-path=\"url(#page)\">\n"
            "<rect width=\"4960\" height=\"7016\" fill=\"#ffffff\"/>\n</g>\n</svg>\n");
  device_.dotsPerInch = 0;
  EXPECT_EQ(test::XmlCheck(DrawSvg(device_)).Fault(), "");
}

// ---- Texts --------------------------------------------------------------------------------------

TEST_F(PageAsSvg, ATextHasItsFontItsAngleAndItsColour) {
  LogFont font = FontOf(u"Arial", -200);
  font.lfEscapement = 455;
  font.lfWeight = 700;
  font.lfItalic = 1;
  SelectFont(font);
  graphics_.SetTextColor(page_, 0x030201);
  Write(300, 400, u"Draft");
  EXPECT_EQ(Elements(),
            "<text transform=\"translate(300 400) rotate(-45.5)\" y=\"181\" "
            "font-family=\"'Arial', sans-serif\" font-size=\"200\" font-weight=\"700\" "
            "font-style=\"italic\" xml:space=\"preserve\" fill=\"#010203\">Draft</text>\n");
}

TEST_F(PageAsSvg, ATextOutOfAPathHasTheBrushesColour) {
  SelectFont(FontOf(u"Arial", -200));
  graphics_.SetTextColor(page_, 0xFF);
  SelectBrush(0xB4B4B4);
  FillPathOf(kFillWinding, [this] { Write(1, 2, u"Draft", kTextOpaque); });
  SelectBrush(0);
  FillPathOf(kFillWinding, [this] { Write(1, 2, u"Draft", kTextOpaque); });
  const std::string text =
      "<text transform=\"translate(1 2)\" y=\"181\" font-family=\"'Arial', sans-serif\" "
      "font-size=\"200\" xml:space=\"preserve\" fill=";
  EXPECT_EQ(Elements(), text + "\"#b4b4b4\">Draft</text>\n" + text + "\"#000000\">Draft</text>\n");
}

TEST_F(PageAsSvg, AFontsFurtherWishesAreAttributes) {
  struct Wish {
    LogFont font;
    const char* attribute;
  };
  LogFont lines = FontOf(u"Arial", -10);
  lines.lfUnderline = 1;
  LogFont both = lines;
  both.lfStrikeOut = 1;
  LogFont through = FontOf(u"Arial", -10);
  through.lfStrikeOut = 1;
  LogFont heavy = FontOf(u"Arial", -10);
  heavy.lfWeight = 5000;
  const std::vector<Wish> wishes = {
      {lines, "text-decoration=\"underline\""},
      {both, "text-decoration=\"underline line-through\""},
      {through, "text-decoration=\"line-through\""},
      {heavy, "font-weight=\"1000\""},
      {FontOf(u"", -10), "font-family=\"sans-serif\""},
      {FontOf(u"A'<\"b", -10), "font-family=\"'A&lt;&quot;b', sans-serif\""},
      {FontOf(u"Arial", 0), "font-size=\"16\""},
      {FontOf(u"Arial", 1117), "y=\"905\" font-family=\"'Arial', sans-serif\" font-size=\"1000\""},
  };
  for (const Wish& wish : wishes) {
    device_.operations.clear();
    SelectFont(wish.font);
    Write(0, 0, u"a");
    EXPECT_THAT(Elements(), HasSubstr(wish.attribute));
  }
}

TEST_F(PageAsSvg, ATextsOwnPointLiesWhereItsAlignmentPutsIt) {
  struct Alignment {
    std::uint32_t align;
    std::uint32_t options;
    const char* line;
    const char* anchor;  // null for none
  };
  const Alignment alignments[] = {
      {0, 0, "y=\"905\"", nullptr},
      {8, 0, "y=\"-212\"", nullptr},
      {24, 0, "y=\"0\"", nullptr},
      {2, 0, "y=\"905\"", "text-anchor=\"end\""},
      {6, 0, "y=\"905\"", "text-anchor=\"middle\""},
      {30, 0, "y=\"0\"", "text-anchor=\"middle\""},
      {0, kTextRightToLeft, "y=\"905\"", "text-anchor=\"end\" direction=\"rtl\""},
      {2, kTextRightToLeft, "y=\"905\"", nullptr},
  };
  SelectFont(FontOf(u"Arial", -1000));
  for (const Alignment& row : alignments) {
    device_.operations.clear();
    graphics_.SetTextAlign(page_, row.align);
    Write(0, 0, u"a", row.options);
    const std::string elements = Elements();
    EXPECT_THAT(elements, HasSubstr(row.line)) << row.align;
    if (row.anchor == nullptr) {
      EXPECT_THAT(elements, Not(HasSubstr("text-anchor"))) << row.align;
    } else {
      EXPECT_THAT(elements, HasSubstr(row.anchor)) << row.align;
    }
  }
}

TEST_F(PageAsSvg, LettersAreWrittenAsXmlHasThem) {
  Write(0, 0, u"<a> & \"b\" \u00E9\u05D0\U0001F5A8\x01\xD800.\xDC00\xFFFF");
  EXPECT_THAT(Elements(),
              HasSubstr(">&lt;a&gt; &amp; &quot;b&quot; \xC3\xA9\xD7\x90\xF0\x9F\x96\xA8"
                        "\xEF\xBF\xBD\xEF\xBF\xBD.\xEF\xBF\xBD\xEF\xBF\xBD<"));
}

TEST_F(PageAsSvg, ATextWithoutLettersIsNone) {
  Write(0, 0, u"");
  EXPECT_THAT(Elements(), IsEmpty());
}

TEST_F(PageAsSvg, AnOpaqueTextWithAPlaceHasAGround) {
  const Rect place = {10, 20, 40, 60};
  graphics_.SetBkColor(page_, 0x00FF00);
  EXPECT_TRUE(graphics_.ExtTextOutW(page_, 0, 0, kTextOpaque, &place, u"", 0));
  EXPECT_TRUE(graphics_.ExtTextOutW(page_, 0, 0, kTextClipped, &place, u"", 0));
  EXPECT_EQ(Elements(), "<rect x=\"10\" y=\"20\" width=\"30\" height=\"40\" fill=\"#00ff00\"/>\n");
}

TEST_F(PageAsSvg, ATextIsAsWideAsItWasMeasured) {
  SelectFont(FontOf(u"Arial", -200));
  Write(0, 0, u"Draft");
  const auto measure = [](const LogFont& font, std::u16string_view text) {
    return Size{static_cast<std::int32_t>(text.size()) * -font.lfHeight, 1};
  };
  EXPECT_THAT(Elements(measure),
              HasSubstr("textLength=\"1000\" lengthAdjust=\"spacingAndGlyphs\""));
  EXPECT_THAT(Elements([](auto...) { return Size{0, 0}; }), Not(HasSubstr("textLength")));
}

// ---- Shapes -------------------------------------------------------------------------------------

TEST_F(PageAsSvg, APathsShapesAreOneOutlineUnderItsRule) {
  SelectBrush(0x0000FF);
  FillPathOf(kFillAlternate, [this] {
    graphics_.Ellipse(page_, {10, 20, 110, 220});
    graphics_.Ellipse(page_, {100, 200, 20, 40});  // corners in any order
  });
  FillPathOf(kFillWinding, [this] {
    const std::array<Point, 3> corners = {{{1, 2}, {3, 4}, {-5, 6}}};
    graphics_.Polygon(page_, corners.data(), 3);
    graphics_.Rectangle(page_, {7, 8, 9, 10});
  });
  EXPECT_EQ(Elements(),
            "<path d=\"M10 120A50 100 0 1 0 110 120A50 100 0 1 0 10 120Z"
            "M20 120A40 80 0 1 0 100 120A40 80 0 1 0 20 120Z\" fill=\"#ff0000\" "
            "fill-rule=\"evenodd\"/>\n"
            "<path d=\"M1 2L3 4L-5 6ZM7 8H9V10H7Z\" fill=\"#ff0000\" fill-rule=\"nonzero\"/>\n");
}

TEST_F(PageAsSvg, APathThatIsNotFilledLeavesNothing) {
  EXPECT_TRUE(graphics_.BeginPath(page_));
  graphics_.Ellipse(page_, {10, 20, 110, 220});
  EXPECT_TRUE(graphics_.EndPath(page_));
  Select(graphics_.GetStockObject(kNullBrush));
  FillPathOf(kFillWinding, [this] { Write(1, 2, u"Draft"); });
  EXPECT_THAT(Elements(), IsEmpty());
}

TEST_F(PageAsSvg, AShapeOnThePageIsFilledAndFramed) {
  SelectBrush(0xFF0000);
  Select(graphics_.CreatePen(kPenSolid, 4, 0x00FF00));
  graphics_.Rectangle(page_, {1, 2, 3, 4});
  Select(graphics_.GetStockObject(kNullBrush));
  Select(graphics_.GetStockObject(8));  // NULL_PEN
  graphics_.SetPolyFillMode(page_, kFillWinding);
  graphics_.Rectangle(page_, {1, 2, 3, 4});
  EXPECT_EQ(Elements(),
            "<path d=\"M1 2H3V4H1Z\" fill=\"#0000ff\" fill-rule=\"evenodd\" stroke=\"#00ff00\" "
            "stroke-width=\"4\"/>\n<path d=\"M1 2H3V4H1Z\" fill=\"none\"/>\n");
}

TEST_F(PageAsSvg, ARectangleIsFilledWithItsBrush) {
  const GdiObject hollow = graphics_.CreateBrushIndirect({1, 0, 0});
  graphics_.FillRect(page_, {1, 2, 31, 42}, graphics_.CreateSolidBrush(0x123456));
  graphics_.FillRect(page_, {1, 2, 31, 42}, hollow);
  EXPECT_EQ(Elements(), "<rect x=\"1\" y=\"2\" width=\"30\" height=\"40\" fill=\"#563412\"/>\n");
}

TEST_F(PageAsSvg, EverythingMovesWithTheOrigins) {
  graphics_.SetWindowOrgEx(page_, 10, 10, nullptr);
  graphics_.SetViewportOrgEx(page_, 100, 200, nullptr);
  graphics_.MoveDeviceOrigin(page_, {1000, 2000});
  SelectFont(FontOf(u"Arial", -100));
  graphics_.FillRect(page_, {10, 10, 11, 11}, graphics_.GetStockObject(kWhiteBrush));
  graphics_.Rectangle(page_, {20, 20, 30, 30});
  Write(10, 10, u"a");
  Picture({10, 10, 12, 12}, {0, 0, 2, 2}, -2);
  const std::string elements = Elements();
  EXPECT_THAT(elements, HasSubstr("<rect x=\"1100\" y=\"2200\" width=\"1\" height=\"1\""));
  EXPECT_THAT(elements, HasSubstr("d=\"M1110 2210H1120V2220H1110Z\""));
  EXPECT_THAT(elements, HasSubstr("translate(1100 2200)\" y=\"90.5\""));
  EXPECT_THAT(elements, HasSubstr("<image transform=\"translate(1100 2200) scale(1 1)\""));
}

// ---- Pictures -----------------------------------------------------------------------------------

TEST_F(PageAsSvg, APictureLiesInTheFile) {
  Picture({10, 20, 110, 220}, {0, 0, 2, 2}, 2);
  EXPECT_EQ(Elements(),
            "<image transform=\"translate(10 20) scale(1 1)\" width=\"100\" height=\"200\" "
            "preserveAspectRatio=\"none\" style=\"image-rendering:pixelated\" " +
                PngOf(2, {0x00FF00, 0xFFFFFF, 0x0000FF, 0xFF0000}) + "/>\n");
  device_.operations.clear();
  Picture({10, 20, 110, 220}, {0, 0, 2, 2}, -2, kRasterAnd);
  EXPECT_THAT(Elements(), HasSubstr(PngOf(2, {0x0000FF, 0xFF0000, 0x00FF00, 0xFFFFFF})));
  EXPECT_THAT(Elements(), HasSubstr("mix-blend-mode:multiply"));
}

TEST_F(PageAsSvg, APartOfAPictureIsCountedInRowsOfMemory) {
  struct Part {
    Rect place;
    Rect from;
    const char* transform;
    const char* size;
    std::vector<std::uint32_t> colors;
    std::int32_t width;
  };
  const Part parts[] = {
      // The first row of memory is the last of the picture.
      {{0, 0, 20, 10},
       {0, 0, 2, 1},
       "(0 0) scale(1 1)",
       "width=\"20\" height=\"10\"",
       {0x0000FF, 0xFF0000},
       2},
      {{0, 0, 10, 20},
       {1, 0, 2, 2},
       "(0 0) scale(1 1)",
       "width=\"10\" height=\"20\"",
       {0xFFFFFF, 0xFF0000},
       1},
      // What lies beyond the picture is left out, where it would have been.
      {{0, 0, 40, 40},
       {-1, -1, 3, 3},
       "(10 10) scale(1 1)",
       "width=\"20\" height=\"20\"",
       {0x00FF00, 0xFFFFFF, 0x0000FF, 0xFF0000},
       2},
      // Turned by the place, by what is taken of the picture, and by both.
      {{50, 60, 30, 40},
       {0, 0, 2, 2},
       "(50 60) scale(-1 -1)",
       "width=\"20\" height=\"20\"",
       {0x00FF00, 0xFFFFFF, 0x0000FF, 0xFF0000},
       2},
      {{50, 60, 70, 80},
       {2, 0, 0, 2},
       "(70 60) scale(-1 1)",
       "width=\"20\" height=\"20\"",
       {0x00FF00, 0xFFFFFF, 0x0000FF, 0xFF0000},
       2},
      {{50, 60, 30, 80},
       {2, 0, 0, 2},
       "(30 60) scale(1 1)",
       "width=\"20\" height=\"20\"",
       {0x00FF00, 0xFFFFFF, 0x0000FF, 0xFF0000},
       2},
  };
  for (const Part& part : parts) {
    SCOPED_TRACE(part.transform);
    device_.operations.clear();
    Picture(part.place, part.from, 2);
    const std::string elements = Elements();
    EXPECT_THAT(elements, HasSubstr(part.transform));
    EXPECT_THAT(elements, HasSubstr(part.size));
    EXPECT_THAT(elements, HasSubstr(PngOf(part.width, part.colors)));
  }
}

TEST_F(PageAsSvg, AnEmptyPartOrPlaceOfAPictureLeavesNothing) {
  Picture({0, 0, 10, 10}, {2, 0, 4, 2}, 2);
  Picture({0, 0, 10, 10}, {0, 0, 0, 2}, 2);
  Picture({0, 0, 10, 10}, {0, -5, 2, 0}, 2);
  Picture({0, 0, 0, 10}, {0, 0, 2, 2}, 2);
  EXPECT_THAT(Elements(), IsEmpty());
}

// Worked out with another program's zlib and PNG routines.
TEST(PngPicture, APixelIsAWholeFile) {
  Surface surface(1, 1, 0x030201);
  EXPECT_EQ(Base64(WritePng(surface)),
            "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAAD0lEQVR4AQEEAPv/"
            "AAECAwAOAActojPsAAAAAElFTkSuQmCC");
}

TEST(PngPicture, RowsOfMoreThanABlockAreSeveralBlocks) {
  // 3 * 30000 + 1 bytes: 65535 and 24466 of them.
  const std::vector<std::uint8_t> png = WritePng(Surface(30000, 1, 0x7F7F7F));
  EXPECT_EQ(png[43], 0);  // the first block isn't the last
  EXPECT_EQ(png[43 + 5 + 65535], 1);
  EXPECT_EQ(png[43 + 5 + 65535 + 1] | png[43 + 5 + 65535 + 2] << 8, 24466);
}

TEST(PngPicture, BytesAreWrittenInGroupsOfThree) {
  EXPECT_EQ(Base64({}), "");
  EXPECT_EQ(Base64({'f'}), "Zg==");
  EXPECT_EQ(Base64({'f', 'o'}), "Zm8=");
  EXPECT_EQ(Base64({'f', 'o', 'o'}), "Zm9v");
  EXPECT_EQ(Base64({'f', 'o', 'o', 0xFF, 0xFB}), "Zm9v//s=");
}

// ---- The check that stands behind all of these --------------------------------------------------

TEST(XmlCheck, AFaultIsFound) {
  EXPECT_EQ(test::XmlCheck("<a b=\"1\"><c/>x &amp; y</a>\n").Fault(), "");
  for (const char* text :
       {"", "a", "<a>", "<a></b>", "<a b=1/>", "<a b=\"1\" b=\"2\"/>", "<a b=\"<\"/>", "<a>&x;</a>",
        "<a>\x01</a>", "<a/><b/>", "<a/>x", "<a><b></a></b>", "<a", "<a b=\"", "</a>"}) {
    EXPECT_NE(test::XmlCheck(text).Fault(), "") << text;
  }
}

}  // namespace
}  // namespace ostrel::headless
