#include "config/utf8.h"

#include "support/case_name.h"

#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {
namespace {

using namespace std::string_literals;

constexpr char kPoison = '\xCD';
constexpr char16_t kWidePoison = u'\xCDCD';

struct Encoding {
  const char* name;
  std::u16string wide;
  std::string utf8;
};
std::ostream& operator<<(std::ostream& out, const Encoding& row) {
  return out << testing::PrintToString(row.utf8);
}

// ---- Both ways ----------------------------------------------------------------------------------

class Utf8BothWays : public testing::TestWithParam<Encoding> {};

// The first and last character of each length, and those around the surrogates (RFC 3629).
INSTANTIATE_TEST_SUITE_P(
    Characters, Utf8BothWays,
    testing::Values(Encoding{"Empty", u"", ""}, Encoding{"Ascii", u"Draft 2", "Draft 2"},
                    Encoding{"LastOfOneByte", u"\x007F", "\x7F"},
                    Encoding{"FirstOfTwoBytes", u"\x0080", "\xC2\x80"},
                    Encoding{"LastOfTwoBytes", u"\x07FF", "\xDF\xBF"},
                    Encoding{"FirstOfThreeBytes", u"\x0800", "\xE0\xA0\x80"},
                    Encoding{"BeforeTheSurrogates", u"\xD7FF", "\xED\x9F\xBF"},
                    Encoding{"BehindTheSurrogates", u"\xE000", "\xEE\x80\x80"},
                    Encoding{"Replacement", u"\xFFFD", "\xEF\xBF\xBD"},
                    Encoding{"LastOfThreeBytes", u"\xFFFF", "\xEF\xBF\xBF"},
                    Encoding{"FirstOfFourBytes", u"\xD800\xDC00", "\xF0\x90\x80\x80"},
                    Encoding{"LastOfAll", u"\xDBFF\xDFFF", "\xF4\x8F\xBF\xBF"},
                    Encoding{"Mixed", u"a\x00E9\x05D0\xD83D\xDDA8z",
                             "a\xC3\xA9\xD7\x90\xF0\x9F\x96\xA8z"}),
    test::CaseName());

TEST_P(Utf8BothWays, AreConvertedAndTerminated) {
  std::vector<char> narrow(64, kPoison);
  const Utf8Result result = WideToUtf8(GetParam().wide, narrow);
  EXPECT_TRUE(result.fits);
  EXPECT_EQ(result.bytes, GetParam().utf8.size());
  EXPECT_EQ(std::string(narrow.data()), GetParam().utf8);
  EXPECT_EQ(narrow[result.bytes + 1], kPoison);

  std::vector<char16_t> wide(64, kWidePoison);
  EXPECT_EQ(Utf8ToWide(GetParam().utf8, wide), GetParam().wide.size());
  EXPECT_EQ(std::u16string(wide.data()), GetParam().wide);
  EXPECT_EQ(wide[GetParam().wide.size() + 1], kWidePoison);
}

// ---- What is no text ----------------------------------------------------------------------------

class WideToUtf8Surrogates : public testing::TestWithParam<Encoding> {};
INSTANTIATE_TEST_SUITE_P(Lone, WideToUtf8Surrogates,
                         testing::Values(Encoding{"HighAtTheEnd", u"a\xD800", "a\xEF\xBF\xBD"},
                                         Encoding{"HighBeforeText", u"\xDBFFz", "\xEF\xBF\xBDz"},
                                         Encoding{"Low", u"\xDC00z", "\xEF\xBF\xBDz"},
                                         Encoding{"LowAtTheEnd", u"a\xDFFF", "a\xEF\xBF\xBD"},
                                         Encoding{"WrongOrder", u"\xDC00\xD800",
                                                  "\xEF\xBF\xBD\xEF\xBF\xBD"},
                                         Encoding{"HighBeforeAPair", u"\xD800\xD800\xDC00",
                                                  "\xEF\xBF\xBD\xF0\x90\x80\x80"}),
                         test::CaseName());

TEST_P(WideToUtf8Surrogates, BecomeReplacements) {
  std::vector<char> narrow(64, kPoison);
  EXPECT_TRUE(WideToUtf8(GetParam().wide, narrow).fits);
  EXPECT_EQ(std::string(narrow.data()), GetParam().utf8);
}

class Utf8ToWideFaults : public testing::TestWithParam<Encoding> {};
// One replacement for each maximal well-formed beginning (the Unicode Standard, table 3-8).
INSTANTIATE_TEST_SUITE_P(
    Bytes, Utf8ToWideFaults,
    testing::Values(Encoding{"LoneTrail", u"\xFFFDz", "\x80z"},
                    Encoding{"TwoLoneTrails", u"\xFFFD\xFFFD", "\x80\xBF"},
                    Encoding{"LeadAtTheEnd", u"a\xFFFD", "a\xC3"},
                    Encoding{"LeadBeforeText", u"\xFFFDz", "\xC3z"},
                    Encoding{"LeadBeforeLead", u"\xFFFD\x00E9", "\xC3\xC3\xA9"},
                    Encoding{"TwoOfThreeBytes", u"\xFFFDz", "\xE2\x82z"},
                    Encoding{"ThreeOfFourBytes", u"\xFFFDz", "\xF0\x9F\x96z"},
                    Encoding{"ThreeOfFourBytesAtTheEnd", u"\xFFFD", "\xF0\x9F\x96"},
                    Encoding{"OverlongOfTwo", u"\xFFFD\xFFFD", "\xC0\x80"},
                    Encoding{"OverlongOfTwoHigh", u"\xFFFD\xFFFD", "\xC1\xBF"},
                    Encoding{"OverlongOfThree", u"\xFFFD\xFFFD\xFFFD", "\xE0\x9F\xBF"},
                    Encoding{"OverlongOfFour", u"\xFFFD\xFFFD\xFFFD\xFFFD", "\xF0\x8F\xBF\xBF"},
                    Encoding{"Surrogate", u"\xFFFD\xFFFD\xFFFD", "\xED\xA0\x80"},
                    Encoding{"BeyondTheLast", u"\xFFFD\xFFFD\xFFFD\xFFFD", "\xF4\x90\x80\x80"},
                    Encoding{"LeadOfFive", u"\xFFFD\xFFFD", "\xF8\x88"},
                    Encoding{"NeverAByte", u"\xFFFD\xFFFD", "\xFE\xFF"},
                    Encoding{"TableOfTheStandard",
                             u"a\xFFFD\xFFFD\xFFFD"
                             u"b\xFFFD"
                             u"c\xFFFD\xFFFD"
                             u"d",
                             "a\xF1\x80\x80\xE1\x80\xC2"
                             "b\x80"
                             "c\x80\xBF"
                             "d"}),
    test::CaseName());

TEST_P(Utf8ToWideFaults, BecomeReplacements) {
  std::vector<char16_t> wide(64, kWidePoison);
  EXPECT_EQ(Utf8ToWide(GetParam().utf8, wide), GetParam().wide.size());
  EXPECT_EQ(std::u16string(wide.data()), GetParam().wide);
}

// ---- Room ---------------------------------------------------------------------------------------

TEST(WideToUtf8, WritesNothingUnlessTheWholeAndItsTerminatorFit) {
  const std::u16string text = u"a\x00E9\x20AC\xD83D\xDDA8";  // 1 + 2 + 3 + 4 bytes
  for (std::size_t room = 1; room <= 12; ++room) {
    std::vector<char> narrow(room + 1, kPoison);
    const Utf8Result result = WideToUtf8(text, std::span(narrow).first(room));
    EXPECT_EQ(result.fits, room >= 11) << room;
    EXPECT_EQ(result.bytes, room >= 11 ? 10U : 0U) << room;
    EXPECT_EQ(std::string(narrow.data()).size(), result.bytes) << room;
    EXPECT_EQ(narrow.back(), kPoison) << room;
  }
}

TEST(WideToUtf8, FitsNothingIntoNoRoom) {
  EXPECT_FALSE(WideToUtf8(u"a", {}).fits);
  EXPECT_FALSE(WideToUtf8(u"", {}).fits);
}

TEST(Utf8ToWide, IsCutAtACharacterAndTerminated) {
  const std::string text = "a\xC3\xA9\xF0\x9F\x96\xA8z";
  const std::vector<std::u16string> expected = {
      u"", u"a", u"a\x00E9", u"a\x00E9", u"a\x00E9\xD83D\xDDA8", u"a\x00E9\xD83D\xDDA8z"};
  for (std::size_t room = 1; room <= expected.size(); ++room) {
    std::vector<char16_t> wide(room + 1, kWidePoison);
    EXPECT_EQ(Utf8ToWide(text, std::span(wide).first(room)), expected[room - 1].size()) << room;
    EXPECT_EQ(std::u16string(wide.data()), expected[room - 1]) << room;
    EXPECT_EQ(wide.back(), kWidePoison) << room;
  }
}

TEST(Utf8ToWide, WritesNothingIntoNoRoom) {
  EXPECT_EQ(Utf8ToWide("a", {}), 0U);
}

// Every character there is goes there and back.
TEST(Utf8, KeepsEveryCharacter) {
  std::array<char, 5> narrow;
  std::array<char16_t, 3> wide;
  for (char32_t character = 1; character <= 0x10FFFF; ++character) {
    if (character >= 0xD800 && character <= 0xDFFF) {
      continue;
    }
    std::u16string text;
    if (character < 0x10000) {
      text = {static_cast<char16_t>(character)};
    } else {
      text = {static_cast<char16_t>(0xD7C0 + (character >> 10)),
              static_cast<char16_t>(0xDC00 | (character & 0x3FF))};
    }
    const Utf8Result result = WideToUtf8(text, narrow);
    ASSERT_TRUE(result.fits) << static_cast<std::uint32_t>(character);
    ASSERT_EQ(Utf8ToWide({narrow.data(), result.bytes}, wide), text.size());
    ASSERT_EQ(std::u16string_view(wide.data()), text) << static_cast<std::uint32_t>(character);
  }
}

}  // namespace
}  // namespace ostrel
