#include "core/text.h"

#include "support/case_name.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace ostrel {
namespace {

constexpr char16_t kPoison = u'\xCDCD';

// A field between two poisoned units.
template <std::size_t units>
class Field {
 public:
  Field() { storage_.fill(kPoison); }
  std::span<char16_t> span() { return std::span(storage_).template subspan<1, units>(); }
  std::u16string content() const { return std::u16string(storage_.data() + 1, units); }
  bool guardsStand() const { return storage_.front() == kPoison && storage_.back() == kPoison; }

 private:
  std::array<char16_t, units + 2> storage_;
};

// ---- FieldText and CallerText -------------------------------------------------------------------

TEST(FieldText, EndsAtTheFirstTerminator) {
  constexpr std::array<char16_t, 5> kField = {u'a', u'b', u'\0', u'c', u'\0'};
  EXPECT_EQ(FieldText(kField), u"ab");
}

TEST(FieldText, IsTheWholeFieldWithoutATerminator) {
  constexpr std::array<char16_t, 3> kField = {u'a', u'b', u'c'};
  EXPECT_EQ(FieldText(kField), u"abc");
}

TEST(FieldText, IsEmptyForALeadingTerminatorAndForAnEmptyField) {
  constexpr std::array<char16_t, 2> kField = {u'\0', u'x'};
  EXPECT_EQ(FieldText(kField), u"");
  EXPECT_EQ(FieldText({}), u"");
}

TEST(CallerText, IsTheTerminatedTextAndEmptyForNull) {
  EXPECT_EQ(CallerText(u"abc"), u"abc");
  EXPECT_EQ(CallerText(u""), u"");
  EXPECT_EQ(CallerText(nullptr), u"");
}

// ---- CopyText -----------------------------------------------------------------------------------

struct Copy {
  const char* name;
  std::u16string_view text;
  std::u16string_view field;  // all four units
  std::size_t copied;
};

class CopyIntoFour : public testing::TestWithParam<Copy> {};

INSTANTIATE_TEST_SUITE_P(Texts, CopyIntoFour,
                         testing::Values(Copy{"Empty", u"", {u"\0\0\0\0", 4}, 0},
                                         Copy{"Shorter", u"a", {u"a\0\0\0", 4}, 1},
                                         Copy{"ExactFit", u"abc", {u"abc\0", 4}, 3},
                                         Copy{"OneTooMany", u"abcd", {u"abc\0", 4}, 3},
                                         Copy{"Longer", u"abcdefghij", {u"abc\0", 4}, 3},
                                         Copy{"NullView", {}, {u"\0\0\0\0", 4}, 0}),
                         test::CaseName());

TEST_P(CopyIntoFour, IsCutTerminatedAndFilled) {
  Field<4> field;
  EXPECT_EQ(CopyText(field.span(), GetParam().text), GetParam().copied);
  EXPECT_EQ(field.content(), GetParam().field);
  EXPECT_TRUE(field.guardsStand());
}

TEST(CopyText, FieldOfOneUnitHoldsOnlyTheTerminator) {
  Field<1> field;
  EXPECT_EQ(CopyText(field.span(), u"abc"), 0U);
  EXPECT_EQ(field.content(), std::u16string(1, u'\0'));
  EXPECT_TRUE(field.guardsStand());
}

TEST(CopyText, EmptyFieldIsLeftAlone) {
  Field<1> field;
  EXPECT_EQ(CopyText(field.span().first(0), u"abc"), 0U);
  EXPECT_EQ(field.content(), std::u16string(1, kPoison));
}

TEST(CopyText, TextMayLieInTheFieldItself) {
  std::array<char16_t, 6> forward = {u'a', u'b', u'c', u'd', u'e', u'\0'};
  EXPECT_EQ(CopyText(forward, std::u16string_view(forward.data() + 2, 3)), 3U);
  EXPECT_EQ(std::u16string_view(forward.data(), 6), std::u16string_view(u"cde\0\0\0", 6));

  std::array<char16_t, 6> backward = {u'a', u'b', u'c', u'd', u'e', u'\0'};
  EXPECT_EQ(CopyText(std::span(backward).subspan(1), std::u16string_view(backward.data(), 5)), 4U);
  EXPECT_EQ(std::u16string_view(backward.data(), 6), std::u16string_view(u"aabcd\0", 6));
}

// ---- TextBuilder --------------------------------------------------------------------------------

TEST(TextBuilder, TerminatesAtOnce) {
  Field<4> field;
  const TextBuilder text(field.span());
  EXPECT_EQ(field.content().front(), u'\0');
  EXPECT_EQ(text.length(), 0U);
  EXPECT_TRUE(text.fits());
}

struct Appended {
  const char* name;
  std::u16string_view first;
  std::u16string_view second;
  std::u16string_view kept;
  bool fits;
};

class AppendToSix : public testing::TestWithParam<Appended> {};

INSTANTIATE_TEST_SUITE_P(Texts, AppendToSix,
                         testing::Values(Appended{"BothEmpty", u"", u"", u"", true},
                                         Appended{"SecondEmpty", u"ab", u"", u"ab", true},
                                         Appended{"FirstEmpty", u"", u"ab", u"ab", true},
                                         Appended{"ExactFit", u"abc", u"de", u"abcde", true},
                                         Appended{"OneTooMany", u"abc", u"def", u"abcde", false},
                                         Appended{"FirstFills", u"abcde", u"f", u"abcde", false},
                                         Appended{"FirstTooLong", u"abcdefgh", u"i", u"abcde",
                                                  false}),
                         test::CaseName());

TEST_P(AppendToSix, KeepsWhatFitsAndCountsAll) {
  Field<6> field;
  TextBuilder text(field.span());
  text.Add(GetParam().first).Add(GetParam().second);
  EXPECT_EQ(FieldText(field.span()), GetParam().kept);
  EXPECT_LT(FieldText(field.span()).size(), 6U) << "no terminator";
  EXPECT_EQ(text.length(), GetParam().first.size() + GetParam().second.size());
  EXPECT_EQ(text.fits(), GetParam().fits);
  EXPECT_TRUE(field.guardsStand());
}

TEST(TextBuilder, IsTerminatedAfterEachUnit) {
  Field<3> field;
  TextBuilder text(field.span());
  for (const std::u16string_view expected : {u"x", u"xx", u"xx", u"xx"}) {
    text.Add(u'x');
    EXPECT_EQ(FieldText(field.span()), expected);
  }
  EXPECT_EQ(text.length(), 4U);
  EXPECT_FALSE(text.fits());
  EXPECT_TRUE(field.guardsStand());
}

TEST(TextBuilder, BufferOfOneUnitHoldsOnlyTheTerminator) {
  Field<1> field;
  TextBuilder text(field.span());
  EXPECT_TRUE(text.fits());
  text.Add(u'x');
  EXPECT_EQ(field.content(), std::u16string(1, u'\0'));
  EXPECT_FALSE(text.fits());
  EXPECT_TRUE(field.guardsStand());
}

TEST(TextBuilder, CountsWithoutABuffer) {
  TextBuilder text({});
  EXPECT_FALSE(text.fits());
  text.Add(u"abc").Add(u'd').AddNumber(-42).AddHex(255, false);
  EXPECT_EQ(text.length(), 9U);
  EXPECT_FALSE(text.fits());
}

TEST(TextBuilder, NumberThatDoesNotFitIsCutLikeAnyText) {
  Field<4> field;
  TextBuilder text(field.span());
  text.AddNumber(-12345);
  EXPECT_EQ(FieldText(field.span()), u"-12");
  EXPECT_EQ(text.length(), 6U);
  EXPECT_TRUE(field.guardsStand());
}

struct Decimal {
  const char* name;
  std::int64_t number;
  std::u16string_view text;
};

class DecimalNumber : public testing::TestWithParam<Decimal> {};

INSTANTIATE_TEST_SUITE_P(Numbers, DecimalNumber,
                         testing::Values(Decimal{"Zero", 0, u"0"}, Decimal{"Nine", 9, u"9"},
                                         Decimal{"Ten", 10, u"10"}, Decimal{"MinusOne", -1, u"-1"},
                                         Decimal{"MinusTen", -10, u"-10"},
                                         Decimal{"Int32Lowest", INT32_MIN, u"-2147483648"},
                                         Decimal{"Uint32Highest", UINT32_MAX, u"4294967295"},
                                         Decimal{"Highest", INT64_MAX, u"9223372036854775807"},
                                         Decimal{"Lowest", INT64_MIN, u"-9223372036854775808"}),
                         test::CaseName());

TEST_P(DecimalNumber, IsWrittenWithoutPadding) {
  Field<24> field;
  TextBuilder text(field.span());
  text.AddNumber(GetParam().number);
  EXPECT_EQ(FieldText(field.span()), GetParam().text);
  EXPECT_EQ(text.length(), GetParam().text.size());
}

struct Hexadecimal {
  const char* name;
  std::uint64_t number;
  std::u16string_view lower;
  std::u16string_view upper;
};

class HexadecimalNumber : public testing::TestWithParam<Hexadecimal> {};

INSTANTIATE_TEST_SUITE_P(
    Numbers, HexadecimalNumber,
    testing::Values(Hexadecimal{"Zero", 0, u"0", u"0"}, Hexadecimal{"Fifteen", 15, u"f", u"F"},
                    Hexadecimal{"Sixteen", 16, u"10", u"10"},
                    Hexadecimal{"AllLetters", 0xABCDEF, u"abcdef", u"ABCDEF"},
                    Hexadecimal{"Highest", UINT64_MAX, u"ffffffffffffffff", u"FFFFFFFFFFFFFFFF"}),
    test::CaseName());

TEST_P(HexadecimalNumber, IsWrittenInTheCaseThatIsAskedFor) {
  Field<24> lower;
  TextBuilder(lower.span()).AddHex(GetParam().number, false);
  EXPECT_EQ(FieldText(lower.span()), GetParam().lower);
  Field<24> upper;
  TextBuilder(upper.span()).AddHex(GetParam().number, true);
  EXPECT_EQ(FieldText(upper.span()), GetParam().upper);
}

// ---- AddWithNumber ------------------------------------------------------------------------------

struct NumberedFormat {
  const char* name;
  std::u16string_view format;
  std::int64_t number;
  std::u16string_view text;
};

class TextWithNumber : public testing::TestWithParam<NumberedFormat> {};

INSTANTIATE_TEST_SUITE_P(
    Formats, TextWithNumber,
    testing::Values(NumberedFormat{"AtTheEnd", u"Custom %d", 20, u"Custom 20"},
                    NumberedFormat{"AtTheStart", u"%d. Format", 3, u"3. Format"},
                    NumberedFormat{"Alone", u"%d", -5, u"-5"},
                    NumberedFormat{"OnlyTheFirstOfTwo", u"%d of %d", 1, u"1 of %d"},
                    NumberedFormat{"None", u"Custom", 1, u"Custom"},
                    NumberedFormat{"OtherForms", u"%s %u %%", 1, u"%s %u %%"},
                    NumberedFormat{"HalfAForm", u"Custom %", 1, u"Custom %"},
                    NumberedFormat{"Empty", u"", 1, u""}),
    test::CaseName());

TEST_P(TextWithNumber, ReplacesTheFirstPlace) {
  Field<24> field;
  TextBuilder text(field.span());
  AddWithNumber(text, GetParam().format, GetParam().number);
  EXPECT_EQ(FieldText(field.span()), GetParam().text);
  EXPECT_EQ(text.length(), GetParam().text.size());
}

// ---- LeadingNumber ------------------------------------------------------------------------------

struct Leading {
  const char* name;
  std::u16string_view text;
  std::int32_t number;
};

class LeadingNumberOfText : public testing::TestWithParam<Leading> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, LeadingNumberOfText,
    testing::Values(Leading{"Empty", u"", 0}, Leading{"Zero", u"0", 0}, Leading{"Plain", u"49", 49},
                    Leading{"LeadingZeros", u"0049", 49}, Leading{"Plus", u"+7", 7},
                    Leading{"Minus", u"-7", -7}, Leading{"TextBehind", u"12 345", 12},
                    Leading{"LettersBehind", u"12ab", 12}, Leading{"Letters", u"ab12", 0},
                    Leading{"WhiteSpace", u" \t\n\v\f\r42", 42},
                    Leading{"OnlyWhiteSpace", u"  \t", 0}, Leading{"OnlyMinus", u"-", 0},
                    Leading{"OnlyPlus", u"+", 0}, Leading{"TwoSigns", u"+-1", 0},
                    Leading{"SignThenBlank", u"- 1", 0}, Leading{"Hexadecimal", u"0x10", 0},
                    Leading{"NeighbourBelowZero", u"/", 0}, Leading{"NeighbourAboveNine", u"1:", 1},
                    Leading{"WideDigits", u"\uFF11", 0},
                    Leading{"Highest", u"2147483647", INT32_MAX},
                    Leading{"AboveHighest", u"2147483648", INT32_MAX},
                    Leading{"Lowest", u"-2147483648", INT32_MIN},
                    Leading{"BelowLowest", u"-2147483649", INT32_MIN},
                    Leading{"FarAbove", u"99999999999999999999999999999999", INT32_MAX},
                    Leading{"FarBelow", u"-99999999999999999999999999999999", INT32_MIN},
                    Leading{"EmbeddedTerminator", {u"1\0002", 3}, 1}),
    test::CaseName());

TEST_P(LeadingNumberOfText, IsTheNearestOneThatTheDigitsTell) {
  EXPECT_EQ(LeadingNumber(GetParam().text), GetParam().number);
}

}  // namespace
}  // namespace ostrel
