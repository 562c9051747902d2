// The names of new watermarks, and of those whose text is changed.
#include "support/case_name.h"
#include "support/test_world.h"
#include "support/watermark_bytes.h"
#include "watermark/watermark_record.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::Mark;
using test::Record;
using test::Stored;
using test::StoreOf;
using test::WatermarkFacts;

std::u16string Unique(const WatermarkEdit& edit, std::u16string_view wanted) {
  return UniqueName(edit, wanted).data();
}

constexpr WatermarkEdit kNew = {true, 1};

// Records of the wanted text and of its numbered forms up to a number, -1 for none at all.
std::vector<WatermarkFacts> Numbered(const std::u16string& wanted, int upTo) {
  std::vector<WatermarkFacts> marks = {Mark(4, u"Other")};
  for (int number = 0; number <= upTo; ++number) {
    const std::string digits = std::to_string(number);
    std::u16string name = wanted;
    if (number > 0) {
      name += u"~" + std::u16string(digits.begin(), digits.end());
    }
    marks.push_back(Mark(static_cast<std::int16_t>(5 + number), name));
  }
  return marks;
}

struct NameCase {
  const char* name;
  int takenUpTo;
  std::u16string given;
};
class NewName : public testing::TestWithParam<NameCase> {};
INSTANTIATE_TEST_SUITE_P(Taken, NewName,
                         testing::Values(NameCase{"None", -1, u"Draft"},
                                         NameCase{"ItselfOnly", 0, u"Draft~1"},
                                         NameCase{"UpTo1", 1, u"Draft~2"},
                                         NameCase{"UpTo9", 9, u"Draft~10"},
                                         NameCase{"UpTo29", 29, u"Draft~30"}),
                         test::CaseName());

TEST_P(NewName, IsTheFirstFreeForm) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf(Numbered(u"Draft", GetParam().takenUpTo)));
  EXPECT_EQ(Unique(kNew, u"Draft"), GetParam().given);
}

// Thirty-two names are all that a list holds: "Draft" and the forms with 1 to 31.
TEST(NewNameAtTheEnd, IsTheFormWith31WhenAllBeforeItAreTaken) {
  test::TestWorld world;
  std::vector<WatermarkFacts> marks = Numbered(u"Draft", 30);
  marks.erase(marks.begin());
  test::PutSettings(world, StoreOf(marks));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~31");
}

TEST(NewNameAtTheEnd, IsTheLastFormWhenAllAreTaken) {
  test::TestWorld world;
  std::vector<WatermarkFacts> marks = Numbered(u"Draft", 31);
  marks.erase(marks.begin());
  test::PutSettings(world, StoreOf(marks));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~31");
}

TEST(NewNameWithAGap, IsTheFormThatFillsIt) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"Draft"), Mark(5, u"Draft~2")}));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~1");
}

TEST(NewNameOfAnyLength, IsCutTo32Characters) {
  test::TestWorld world;
  const std::u16string thirty(30, u'x');
  EXPECT_EQ(Unique(kNew, std::u16string(32, u'x')), std::u16string(32, u'x'));
  EXPECT_EQ(Unique(kNew, std::u16string(64, u'x')), std::u16string(32, u'x'));
  test::PutSettings(world, StoreOf({Mark(4, thirty)}));
  EXPECT_EQ(Unique(kNew, thirty), thirty + u"~1");
  EXPECT_EQ(Unique(kNew, thirty + u"x"), thirty + u"x");
  test::PutSettings(world, StoreOf({Mark(4, thirty + u"x")}));
  EXPECT_EQ(Unique(kNew, thirty + u"x"), thirty + u"x~");
}

TEST(NewNameOfAnyLength, OfAFullNameStaysTheNameWhenItIsTaken) {
  test::TestWorld world;
  const std::u16string full(32, u'x');
  test::PutSettings(world, StoreOf({test::StoredAs(full.substr(1), Mark(4, full))}));
  EXPECT_EQ(Unique(kNew, full), full);
  EXPECT_EQ(Unique(kNew, full + u"y"), full);
}

// A name of 32 characters has the place of its first 31 in the store: all forms of a text that long
// share one, and the later record takes the earlier one's place.
TEST(NewNameOfAnyLength, OfA32ndCharacterHasThePlaceOfThe31Before) {
  test::TestWorld world;
  const std::u16string longest(31, u'x');
  test::PutSettings(world, StoreOf({Mark(4, longest)}));
  EXPECT_EQ(Unique(kNew, longest), longest + u"~");
  EXPECT_EQ(Unique(kNew, longest + u"y"), longest + u"y");
  const WatermarkFacts later = Mark(5, longest + u"~");
  EXPECT_TRUE(AddWatermark(test::RecordOf(later)));
  EXPECT_SETTINGS(world, StoreOf({test::StoredAs(longest, later)}));
}

TEST(NameThatIsAskedFor, WritesNothing) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"Draft")}));
  world.platform.faults.StartTrace();
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~1");
  EXPECT_EQ(Unique({false, 4}, u"Other"), u"Other");
  EXPECT_EQ(test::CallsOf(world, "WriteFile"), 0U);
  EXPECT_GT(test::CallsOf(world, "CreateFileW"), 0U);
}

TEST(NewNameCase, Counts) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"draft")}));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft");
}

TEST(NewNameThatIsEmpty, IsNumberedWhenItIsTaken) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Stored(Mark(4, u"A")), test::StoredAs(u"B", Mark(5, u""))}));
  EXPECT_EQ(Unique(kNew, u""), u"~1");
}

// What is stored under a name would be replaced by a record of that name.
TEST(NewNameOfTheStore, IsTakenByWhateverIsStoredUnderIt) {
  test::TestWorld world;
  test::PutSettings(world,
                    StoreOf({Record("Draft", "x"), test::StoredAs(u"Key", Mark(4, u"Inside"))}));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~1");
  EXPECT_EQ(Unique(kNew, u"Key"), u"Key~1");
  EXPECT_EQ(Unique(kNew, u"Inside"), u"Inside~1");
  EXPECT_EQ(Unique(kNew, u""), u"");  // the place of zeros has no name
}

struct ExistingCase {
  const char* name;
  std::int16_t index;
  std::u16string wanted;
  std::u16string given;
};
class ExistingName : public testing::TestWithParam<ExistingCase> {};
INSTANTIATE_TEST_SUITE_P(
    Edits, ExistingName,
    testing::Values(ExistingCase{"TextUnchanged", 5, u"Text", u"Name"},
                    ExistingCase{"TextChanged", 5, u"Other text", u"Other text"},
                    ExistingCase{"TextOfAnotherId", 5, u"Draft", u"Draft"},
                    ExistingCase{"AnotherCase", 5, u"text", u"text"},
                    ExistingCase{"NameAsText", 5, u"Name", u"Name"},
                    ExistingCase{"IdThatIsNotStored", 9, u"Text", u"Text"},
                    ExistingCase{"ZeroIsNoRecord", 0, u"", u""},
                    ExistingCase{"TooLong", 5, std::u16string(40, u'x'), std::u16string(32, u'x')}),
    test::CaseName());

TEST_P(ExistingName, ChangesWithTheText) {
  test::TestWorld world;
  WatermarkFacts renamed = Mark(5, u"Name");
  renamed.text = u"Text";
  test::PutSettings(world,
                    StoreOf({Record("Short", "x"), Stored(Mark(4, u"Draft")), Stored(renamed)}));
  EXPECT_EQ(Unique({false, GetParam().index}, GetParam().wanted), GetParam().given);
}

TEST(ExistingNameOfALongText, IsKeptAsStored) {
  test::TestWorld world;
  WatermarkFacts named = Mark(5, u"Name");
  named.text = std::u16string(64, u't');
  test::PutSettings(world, StoreOf({named}));
  EXPECT_EQ(Unique({false, 5}, named.text), u"Name");
  EXPECT_EQ(Unique({false, 5}, named.text.substr(1)), std::u16string(32, u't'));
}

}  // namespace
}  // namespace ostrel
