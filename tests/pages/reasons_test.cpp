#include "pages/reasons.h"

#include "pages/page_scene.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

using test::PageScene;

class ReasonsTest : public testing::Test {
 protected:
  std::u16string text() const { return text_.data(); }

  PageScene scene_;
  std::array<char16_t, kTooltipReasonUnits> text_ = {};
  Reasons reasons_{scene_.context, text_};
};

TEST_F(ReasonsTest, OneReasonStandsAlone) {
  reasons_.Add(kStringPosterOnReason);
  EXPECT_EQ(text(), scene_.English(5049));
}

TEST_F(ReasonsTest, TwoReasonsHaveTheSeparatorBetweenThem) {
  reasons_.Add(kStringPosterOnReason);
  reasons_.Add(kStringBookletOnReason);
  EXPECT_EQ(text(), scene_.English(5049) + scene_.English(408) + scene_.English(6012));
}

TEST_F(ReasonsTest, ReasonThatDoesNotHoldLeavesNoTrace) {
  reasons_.AddIf(false, kStringPosterOnReason);
  EXPECT_EQ(text(), u"");
  reasons_.AddIf(true, kStringBookletOnReason);
  reasons_.AddIf(false, kStringPosterOnReason);
  EXPECT_EQ(text(), scene_.English(6012));
}

TEST_F(ReasonsTest, TextThatTheLanguageLacksIsToldByItsNumber) {
  scene_.UseTexts({});
  std::array<char16_t, 64> buffer = {};
  Reasons reasons(scene_.context, buffer);
  reasons.Add(kStringPosterOnReason);
  EXPECT_EQ(std::u16string(buffer.data()), u"id:5049 missing!");
}

TEST_F(ReasonsTest, TextsAreCutAtTheBuffersEnd) {
  std::array<char16_t, 12> buffer;
  buffer.fill(u'#');
  buffer[0] = u'\0';
  Reasons reasons(scene_.context, std::span(buffer).first(10));
  reasons.Add(kStringPosterOnReason);
  reasons.Add(kStringBookletOnReason);
  EXPECT_EQ(std::u16string(buffer.data()), scene_.English(5049).substr(0, 9));
  EXPECT_EQ(buffer[10], u'#');
}

}  // namespace
}  // namespace ostrel
