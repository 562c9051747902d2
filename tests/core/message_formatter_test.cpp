#include "core/message_formatter.h"

#include "support/case_name.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace ostrel {
namespace {

constexpr char16_t kPoison = u'\xCDCD';

constexpr std::uint32_t kGreeting = 7;
constexpr std::uint32_t kTextWithForms = 8;
constexpr std::uint32_t kMissing = 9;

// A language library with a few texts, loaded for the length of the test.
class MessageTest : public testing::Test {
 protected:
  MessageTest() {
    world_.platform.modules.Install(test::kEnglishLibraryPath,
                                    {{kGreeting, u"Hello"}, {kTextWithForms, u"100 %s %!"}});
    module_ = world_.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  }
  ~MessageTest() override { world_.platform.modules.FreeLibrary(module_); }

  // The text in a buffer of `units`, in which nothing may be written behind its end.
  std::u16string Format(std::size_t units, std::u16string_view format,
                        const std::vector<FormatArgument>& arguments) {
    std::u16string buffer(units + 1, kPoison);
    needed_ = FormatMessageText(std::span(buffer.data(), units), format, arguments, module_);
    EXPECT_EQ(buffer.back(), kPoison) << "written behind the buffer";
    const std::size_t end = buffer.find(u'\0');
    EXPECT_LT(end, units) << "no terminator";
    return buffer.substr(0, end);
  }

  test::TestWorld world_;
  ModuleHandle module_ = nullptr;
  std::size_t needed_ = 0;
};

struct Message {
  const char* name;
  std::u16string_view format;
  std::vector<FormatArgument> arguments;
  std::u16string_view text;
};

void PrintTo(const Message& message, std::ostream* out) {
  *out << message.name;
}

class FormattedMessage : public MessageTest, public testing::WithParamInterface<Message> {};

constexpr std::u16string_view kText = u"text";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Forms, FormattedMessage, testing::Values(
    Message{"Empty", u"", {}, u""},
    Message{"NoForm", u"plain text", {}, u"plain text"},
    Message{"String", u"<%!>", {StringArgument{kGreeting}}, u"<Hello>"},
    Message{"Text", u"<%s>", {kText}, u"<text>"},
    Message{"EmptyText", u"<%s>", {std::u16string_view()}, u"<>"},
    Message{"Unit", u"<%c>", {u'x'}, u"<x>"},
    Message{"SignedZero", u"<%ld>", {std::int32_t{0}}, u"<0>"},
    Message{"SignedLowest", u"<%ld>", {std::int32_t{INT32_MIN}}, u"<-2147483648>"},
    Message{"SignedHighest", u"<%ld>", {std::int32_t{INT32_MAX}}, u"<2147483647>"},
    Message{"UnsignedHighest", u"<%lu>", {std::uint32_t{UINT32_MAX}}, u"<4294967295>"},
    Message{"LowerHexadecimal", u"<%lx>", {std::uint32_t{0xABCDEF01}}, u"<abcdef01>"},
    Message{"UpperHexadecimal", u"<%lX>", {std::uint32_t{0xABCDEF01}}, u"<ABCDEF01>"},
    Message{"HexadecimalZero", u"<%lx>", {std::uint32_t{0}}, u"<0>"},
    Message{"AllInTheirOrder", u"%!,%s,%c,%ld,%lu,%lx,%lX",
            {StringArgument{kGreeting}, kText, u'x', std::int32_t{-1}, std::uint32_t{2}, std::uint32_t{10}, std::uint32_t{11}},
            u"Hello,text,x,-1,2,a,B"},
    Message{"SideBySide", u"%s%c%s", {kText, u'/', kText}, u"text/text"},
    Message{"MoreArgumentsThanForms", u"%c", {u'a', u'b'}, u"a"},
    Message{"MissingString", u"<%!>", {StringArgument{kMissing}}, u"<id:9 missing!>"},
    Message{"FormsInAStringStandAsTheyAre", u"%!|%s", {StringArgument{kTextWithForms}, kText}, u"100 %s %!|text"},
    Message{"FormsInATextStandAsTheyAre", u"%s|%c", {std::u16string_view(u"%c%s"), u'x'}, u"%c%s|x"},
    Message{"PercentAtTheEnd", u"100 %", {kText}, u"100 %"},
    Message{"TwoPercents", u"100 %%", {kText}, u"100 %%"},
    Message{"PercentBeforeAForm", u"%%s", {kText}, u"%text"},
    Message{"UnknownFormTakesNoArgument", u"%d %u %x %S %5s %s", {kText}, u"%d %u %x %S %5s text"},
    Message{"HalfANumberForm", u"%l", {std::int32_t{1}}, u"%l"},
    Message{"UnknownNumberForm", u"%li %ls %lc", {std::int32_t{1}}, u"%li %ls %lc"},
    Message{"NoArgumentAtAll", u"%! %s %c %ld %lu %lx %lX", {}, u"%! %s %c %ld %lu %lx %lX"},
    Message{"LastArgumentMissing", u"%s %s", {kText}, u"text %s"},
    Message{"TextForAString", u"%!", {kText}, u"%!"},
    Message{"StringForAText", u"%s", {StringArgument{kGreeting}}, u"%s"},
    Message{"TextForAUnit", u"%c", {kText}, u"%c"},
    Message{"UnitForAText", u"%s", {u'x'}, u"%s"},
    Message{"UnsignedForASigned", u"%ld", {std::uint32_t{1}}, u"%ld"},
    Message{"SignedForAnUnsigned", u"%lu", {std::int32_t{1}}, u"%lu"},
    Message{"SignedForALowerHexadecimal", u"%lx", {std::int32_t{1}}, u"%lx"},
    Message{"SignedForAnUpperHexadecimal", u"%lX", {std::int32_t{1}}, u"%lX"},
    Message{"MismatchUsesItsArgumentUp", u"%ld %s", {kText, std::u16string_view(u"next")}, u"%ld next"}),
    test::CaseName());
// clang-format on

TEST_P(FormattedMessage, StandsInALargeBuffer) {
  EXPECT_EQ(Format(200, GetParam().format, GetParam().arguments), GetParam().text);
  EXPECT_EQ(needed_, GetParam().text.size() + 1);
}

TEST_P(FormattedMessage, StandsWholeInABufferOfTheNeededSize) {
  const std::size_t units = GetParam().text.size() + 1;
  EXPECT_EQ(Format(units, GetParam().format, GetParam().arguments), GetParam().text);
  EXPECT_EQ(needed_, units);
}

TEST_P(FormattedMessage, IsCutInEverySmallerBufferAndTellsTheSameNeed) {
  for (std::size_t units = 1; units <= GetParam().text.size(); ++units) {
    EXPECT_EQ(Format(units, GetParam().format, GetParam().arguments),
              GetParam().text.substr(0, units - 1));
    EXPECT_EQ(needed_, GetParam().text.size() + 1) << units;
  }
}

TEST_P(FormattedMessage, TellsItsNeedWithoutABuffer) {
  EXPECT_EQ(FormatMessageText({}, GetParam().format, GetParam().arguments, module_),
            GetParam().text.size() + 1);
}

TEST_F(MessageTest, StringWithoutAModuleIsItsFallback) {
  std::u16string buffer(32, kPoison);
  const FormatArgument argument = StringArgument{207};
  EXPECT_EQ(FormatMessageText(buffer, u"%!", {&argument, 1}, nullptr), 16U);
  EXPECT_EQ(buffer.substr(0, buffer.find(u'\0')), u"id:207 missing!");
}

TEST_F(MessageTest, EmptyBufferIsNotWrittenTo) {
  char16_t unit = kPoison;
  EXPECT_EQ(FormatMessageText({&unit, 0}, u"abc", {}, module_), 4U);
  EXPECT_EQ(unit, kPoison);
}

}  // namespace
}  // namespace ostrel
