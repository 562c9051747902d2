#include "pages/name_cleaning.h"

#include "support/case_name.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <string>

namespace ostrel {
namespace {

const std::set<char16_t> kRefused = {u'<', u'>',  u'(', u')',  u',', u';', u'?', u':',
                                     u'|', u'\\', u'/', u'\'', u'.', u'"', u'*'};

// Result: the name afterwards; what stands behind its terminator must be NUL.
std::u16string Cleaned(std::u16string_view text) {
  std::array<char16_t, 32> field;
  field.fill(u'#');
  text.copy(field.data(), field.size());
  field[text.size()] = u'\0';
  CleanName(std::span(field).first(31));
  EXPECT_EQ(field[31], u'#');
  const std::u16string cleaned(field.data());
  EXPECT_TRUE(std::all_of(field.begin() + static_cast<std::ptrdiff_t>(cleaned.size()),
                          field.end() - 1, [](char16_t unit) { return unit == u'\0'; }));
  return cleaned;
}

TEST(NameCleaning, RefusesFifteenCharactersAndNoOther) {
  ASSERT_EQ(kRefused.size(), 15U);
  for (std::uint32_t code = 1; code <= std::numeric_limits<char16_t>::max(); ++code) {
    const auto unit = static_cast<char16_t>(code);
    const std::u16string name = {u'a', unit, u'b'};
    const bool refused = kRefused.contains(unit);
    EXPECT_EQ(IsCleanName(name), !refused) << code;
    EXPECT_EQ(Cleaned(name), refused ? u"ab" : name) << code;
  }
}

struct NameCase {
  const char* name;
  std::u16string text;
  std::u16string cleaned;
};

class NameCleaningOf : public testing::TestWithParam<NameCase> {};

INSTANTIATE_TEST_SUITE_P(Texts, NameCleaningOf,
                         testing::Values(NameCase{"Empty", u"", u""},
                                         NameCase{"Clean", u"My mark 1", u"My mark 1"},
                                         NameCase{"First", u"<mark", u"mark"},
                                         NameCase{"Last", u"mark*", u"mark"},
                                         NameCase{"Each", u"a.b,c:d;e", u"abcde"},
                                         NameCase{"Neighbours", u"a...b", u"ab"},
                                         NameCase{"Nothing", u"<>(),;?:|\\/'.\"*", u""}),
                         test::CaseName());

TEST_P(NameCleaningOf, Text) {
  EXPECT_EQ(IsCleanName(GetParam().text), GetParam().text == GetParam().cleaned);
  EXPECT_EQ(Cleaned(GetParam().text), GetParam().cleaned);
}

TEST(NameCleaning, OfAFieldWithoutATerminatorStaysWithinIt) {
  std::array<char16_t, 4> field = {u'a', u'.', u'b', u'.'};
  CleanName(std::span(field).first(3));
  EXPECT_EQ(field, (std::array<char16_t, 4>{u'a', u'b', u'\0', u'.'}));
  CleanName({});
}

}  // namespace
}  // namespace ostrel
