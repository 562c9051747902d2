// The font of watermarks: its height, its styles, its direction and its character set.
#include "job/watermark_font.h"

#include "job/stamp_stage.h"

#include <gtest/gtest.h>

namespace ostrel::test {
namespace {

class WatermarkFont : public testing::Test {
 protected:
  LogFont Made(const char16_t* face, std::int32_t height, std::uint32_t flags = 0,
               std::int32_t escapement = 0) {
    const GdiObject font = MakeWatermarkFont(scene_.hdc, face, height, flags, escapement);
    EXPECT_NE(font, nullptr);
    const GdiObject before = World().graphics.SelectObject(scene_.hdc, font);
    const LogFont made = scene_.State().font;
    World().graphics.SelectObject(scene_.hdc, before);
    World().graphics.DeleteObject(font);
    return made;
  }

  StampScene scene_;
};

// A table of heights at 600 dots an inch, where a tenth of a point is 0.833 dots.
TEST_F(WatermarkFont, Height_IsRoundedTwice) {
  struct Row {
    std::int32_t height;
    std::int32_t letters;
  };
  for (const Row& row : {Row{655, -546},         // 5458.3, 545.8
                         Row{0, 0}, Row{1, -1},  // 8.3, 0.8
                         Row{6, -5},             // 50, 5
                         Row{7, -6},             // 58.3, 5.8
                         Row{-655, -546},        // -5457.8 and without its sign 545.7
                         Row{5820, -4850}}) {
    EXPECT_EQ(Made(u"Arial", row.height).lfHeight, row.letters) << row.height;
  }
}

// 655 * 203 / 72 = 1846.7; at 96 dots an inch 873.3.
TEST_F(WatermarkFont, Height_GoesByTheDevicesDots) {
  scene_.device.dotsPerInch = 203;
  EXPECT_EQ(Made(u"Arial", 655).lfHeight, -185);
  scene_.device.dotsPerInch = 96;
  EXPECT_EQ(Made(u"Arial", 655).lfHeight, -87);
}

// The origin of the window counts: 5458 becomes 6458 callers' units.
TEST_F(WatermarkFont, Height_IsTurnedIntoCallersUnits) {
  World().graphics.SetWindowOrgEx(scene_.hdc, 0, 1000, nullptr);
  EXPECT_EQ(Made(u"Arial", 655).lfHeight, -646);
}

TEST_F(WatermarkFont, Flags_AreTheFourStyles) {
  const LogFont plain = Made(u"Arial", 100);
  EXPECT_EQ(plain.lfWeight, 0);
  EXPECT_EQ(plain.lfItalic + plain.lfUnderline + plain.lfStrikeOut, 0);
  EXPECT_EQ(Made(u"Arial", 100, kFontBold).lfWeight, 700);
  EXPECT_EQ(Made(u"Arial", 100, kFontItalic).lfItalic, 1);
  EXPECT_EQ(Made(u"Arial", 100, kFontUnderline).lfUnderline, 1);
  EXPECT_EQ(Made(u"Arial", 100, kFontStrikeOut).lfStrikeOut, 1);
  const LogFont others = Made(u"Arial", 100, ~0xFU);
  EXPECT_EQ(others, plain);
}

TEST_F(WatermarkFont, TheRest_IsFixed) {
  const LogFont font = Made(u"Arial", 100, 0xF, 3150);
  EXPECT_EQ(font.lfWidth, 0);
  EXPECT_EQ(font.lfEscapement, 3150);
  EXPECT_EQ(font.lfOrientation, 3150);
  EXPECT_EQ(font.lfOutPrecision, 7);
  EXPECT_EQ(font.lfClipPrecision, 0);
  EXPECT_EQ(font.lfQuality, 0);
  EXPECT_EQ(font.lfPitchAndFamily, 0);
  EXPECT_EQ(FieldText(font.lfFaceName), u"Arial");
}

TEST_F(WatermarkFont, CharacterSet_IsTheFirstOfTheFaceOrTheDefaultOne) {
  auto& fonts = scene_.world.platform.graphics.fonts;
  fonts = {{u"Greek", {161, 0, 204}}, {u"Signs", {2}}};
  EXPECT_EQ(Made(u"Greek", 100).lfCharSet, 161);
  EXPECT_EQ(Made(u"Signs", 100).lfCharSet, 2);
  EXPECT_EQ(Made(u"Nowhere", 100).lfCharSet, kDefaultCharSet);
  // Under no face the system tells of all of them.
  EXPECT_EQ(Made(u"", 100).lfCharSet, 161);
  EXPECT_EQ(Made(nullptr, 100).lfCharSet, 161);
  scene_.world.platform.faults.FailOperation("EnumFontFamiliesExW");
  EXPECT_EQ(Made(u"Greek", 100).lfCharSet, kDefaultCharSet);
  scene_.world.platform.faults.Clear();
  fonts.clear();
  EXPECT_EQ(Made(u"", 100).lfCharSet, kDefaultCharSet);
}

TEST_F(WatermarkFont, AFaceThatIsTooLong_IsCutAndTerminated) {
  EXPECT_EQ(FieldText(Made(u"0123456789012345678901234567890123456789", 100).lfFaceName),
            u"0123456789012345678901234567890");
}

TEST_F(WatermarkFont, HeightsBeyondAllReason_GiveAFont) {
  for (const std::int32_t height : {2147483647, -2147483647 - 1}) {
    EXPECT_LT(Made(u"Arial", height).lfHeight, 0) << height;
  }
}

TEST_F(WatermarkFont, WithoutTheSystemsHelp_IsNull) {
  scene_.world.platform.faults.FailOperation("CreateFontIndirectW");
  EXPECT_EQ(MakeWatermarkFont(scene_.hdc, u"Arial", 100, 0, 0), nullptr);
}

}  // namespace
}  // namespace ostrel::test
