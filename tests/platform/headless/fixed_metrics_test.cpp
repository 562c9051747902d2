// Drawing with the measures of a test's own, in memory.
#include "support/fixed_metrics.h"

#include "platform/headless/printer_stage.h"

#include <array>
#include <gmock/gmock.h>

namespace ostrel::headless {
namespace {

using testing::ElementsAre;

class FixedMetrics : public PrinterStage {
 protected:
  Size Measured(std::u16string_view text) {
    Size size = {-7, -7};
    EXPECT_TRUE(
        fixed_.GetTextExtentPointW(page_, text.data(), static_cast<int>(text.size()), &size));
    return size;
  }

  test::FixedMetrics fixed_{graphics_, [](const LogFont& font, std::u16string_view text) {
                              return Size{static_cast<std::int32_t>(text.size()), font.lfHeight};
                            }};
};

TEST_F(FixedMetrics, ATextMeasuresWhatTheTestSaysOfTheSelectedFont) {
  const GdiObject first = fixed_.CreateFontIndirectW(FontOf(u"Arial", -40));
  const GdiObject second = fixed_.CreateFontIndirectW(FontOf(u"Arial", 50));
  EXPECT_EQ(Measured(u"abc"), (Size{0, 0}));
  const GdiObject before = fixed_.SelectObject(page_, first);
  EXPECT_EQ(Measured(u"abc"), (Size{3, -40}));
  EXPECT_EQ(fixed_.SelectObject(page_, second), first);
  EXPECT_EQ(Measured(u""), (Size{0, 50}));
  EXPECT_NE(fixed_.SelectObject(page_, fixed_.CreateSolidBrush(0)), nullptr);
  EXPECT_EQ(Measured(u"a"), (Size{1, 50}));  // a brush leaves the font as it is
  EXPECT_EQ(fixed_.SelectObject(page_, before), second);
  EXPECT_EQ(Measured(u"a"), (Size{0, 0}));
  EXPECT_TRUE(fixed_.DeleteObject(first));
  EXPECT_TRUE(fixed_.DeleteObject(second));
}

TEST_F(FixedMetrics, AFontThatIsNotMadeOrNotSelectedIsNotMeasured) {
  platform_.faults.FailOperation("CreateFontIndirectW", 1);
  EXPECT_EQ(fixed_.CreateFontIndirectW(FontOf(u"Arial", -40)), nullptr);
  const GdiObject font = fixed_.CreateFontIndirectW(FontOf(u"Arial", -40));
  platform_.faults.FailOperation("SelectObject", 1);
  EXPECT_EQ(fixed_.SelectObject(page_, font), nullptr);
  EXPECT_EQ(Measured(u"abc"), (Size{0, 0}));
}

TEST_F(FixedMetrics, EscapesAreWrittenDownAndHandedOnOrAnswered) {
  device_.onEscape = [](auto...) { return 5; };
  std::vector<std::string> heard;
  fixed_.onRecord = [&heard](DeviceContext, const DrawingOperation& escape) {
    heard.push_back(Describe(escape));
  };
  const std::array<std::uint8_t, 2> input = {1, 2};
  EXPECT_EQ(fixed_.ExtEscape(page_, 20483, 2, input.data(), 0, nullptr), 5);
  fixed_.onEscape = [](std::int32_t code, std::span<const std::byte> in, std::span<std::byte> out) {
    return code + static_cast<int>(in.size() + out.size());
  };
  std::array<std::uint8_t, 4> output = {};
  EXPECT_EQ(fixed_.ExtEscape(page_, 20000, 2, input.data(), 4, output.data()), 20006);
  EXPECT_EQ(fixed_.ExtEscape(page_, 20000, 2, nullptr, -1, output.data()), 20000);
  EXPECT_THAT(heard, ElementsAre("ExtEscape(20483, 0, 0102)", "ExtEscape(20000, 4, 0102)",
                                 "ExtEscape(20000, -1)"));
  EXPECT_EQ(fixed_.escapes.size(), 3U);
  EXPECT_THAT(TakeLines(), ElementsAre("ExtEscape(20483, 0, 0102)"));
}

}  // namespace
}  // namespace ostrel::headless
