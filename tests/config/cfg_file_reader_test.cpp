// Reading config tree files: the scanner's and the tag parser's rules, each with a case that fails
// without it, and files that nobody honest would write.
#include "config/cfg_file.h"
#include "config/cfg_file_fixture.h"
#include "support/case_name.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {
namespace {

using namespace std::string_literals;
using test::CfgContainer;
using test::CfgLeaf;
using test::CfgObjectText;
using test::CfgTag;
using test::CfgTreeText;
using test::kCfgEnd;
using test::kCfgPath;
using test::kNewCfgFile;
using test::kWorkedCfgFile;
using test::RecordingMemory;

class CfgOpenTest : public test::CfgFileTest {};

const std::string kEnd = kCfgEnd;

// ---- Whole files --------------------------------------------------------------------------------

TEST_F(CfgOpenTest, ReadsTheWorkedExample) {
  ASSERT_EQ(kWorkedCfgFile.size(), 44U + 63 + 45 + 53 + 56 + 27);
  const ScopedCfg file = Read(kWorkedCfgFile);
  EXPECT_EQ(CfgTreeText(file.get()),
            (std::vector<std::string>{"cfgobj:null:0:2", ".version:string:8:0=0.0.0.1\0"s,
                                      ".UIParam:null:0:1", "..cuspapersetting:null:0:1",
                                      "...Card:binary:4:0=\x01>\0<"s}));
}

TEST_F(CfgOpenTest, KeepsThePathAndLinksEveryObject) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(std::u16string_view(file->path), kCfgPath);
  EXPECT_EQ(file->root->parent, nullptr);
  EXPECT_EQ(file->root->value, nullptr);
  EXPECT_EQ(test::CfgChildren(file->root), (std::vector<std::string>{"version", "UIParam"}));
  EXPECT_EQ(test::CfgChildren(file->root->lastChild), std::vector<std::string>{"cuspapersetting"});
  EXPECT_EQ(file->root->lastChild->firstChild->firstChild->storedBytes, 4U);
}

TEST_F(CfgOpenTest, TerminatesAValueThatIsReadAsAText) {
  const ScopedCfg file = Read(CfgLeaf("a", "string", "text"));
  ASSERT_NE(file, nullptr);
  for (std::size_t i = 4; i < 4 + 32; ++i) {
    EXPECT_EQ(file->root->value[i], std::byte{0}) << i;
  }
}

TEST_F(CfgOpenTest, MakesAMissingFileFirst) {
  ASSERT_EQ(Get(), "no file");
  const ScopedCfg file(CfgOpen(kCfgPath));
  EXPECT_EQ(CfgTreeText(file.get()),
            (std::vector<std::string>{"cfgobj:null:0:1", ".version:string:8:0=0.0.0.1\0"s}));
  EXPECT_EQ(Get(), kNewCfgFile);
}

TEST_F(CfgOpenTest, GivesNoRootForAFileOfNoBytes) {
  const ScopedCfg file = Read("");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->root, nullptr);
  EXPECT_EQ(CfgFindChild(file->root, u"version"), nullptr);
  EXPECT_EQ(Get(), "");
}

TEST_F(CfgOpenTest, LeavesTheFileAsItIs) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  EXPECT_EQ(Get(), kWorkedCfgFile);
}

// ---- Scanner and tags ---------------------------------------------------------------------------

const std::vector<std::string> kRefused = {"refused"};

struct Reading {
  const char* name;
  std::string bytes;
  std::vector<std::string> tree;  // or kRefused
};
std::ostream& operator<<(std::ostream& out, const Reading& row) {
  return out << testing::PrintToString(row.bytes);
}

class CfgOpenReads : public test::CfgFileTest, public testing::WithParamInterface<Reading> {};

TEST_P(CfgOpenReads, AsTheRulesSay) {
  const ScopedCfg file = Read(GetParam().bytes);
  EXPECT_EQ(file == nullptr ? kRefused : CfgTreeText(file.get()), GetParam().tree);
}

// One byte at a time is how the rules are told; a reader of blocks must not show its blocks.
TEST_P(CfgOpenReads, TheSameWhereverABlockEnds) {
  const std::string& bytes = GetParam().bytes;
  for (std::size_t before = 1024 - std::min<std::size_t>(bytes.size(), 400); before <= 1024;
       ++before) {
    const ScopedCfg file = Read(std::string(before, '.') + bytes);
    ASSERT_EQ(file == nullptr ? kRefused : CfgTreeText(file.get()), GetParam().tree) << before;
  }
}

// A whole leaf around one tag.
std::string Named(std::string_view name) {
  return CfgTag(name, "t", "0", "0") + "\n" + kCfgEnd;
}
std::string Typed(std::string_view type) {
  return CfgTag("a", type, "0", "0") + "\n" + kCfgEnd;
}
std::string Repeat(std::size_t count, char unit) {
  return std::string(count, unit);
}

INSTANTIATE_TEST_SUITE_P(
    Scanner, CfgOpenReads,
    testing::Values(
        Reading{"NoTagAtAll", "settings > of \n mine", {}},
        Reading{"BytesBetweenTags",
                "\xEF\xBB\xBF one\r\n" + CfgTag("a", "t", "0", "1") + "\n\n two > " +
                    CfgLeaf("b", "t", "v") + "\nthree" + kEnd + "four",
                {"a:t:0:1", ".b:t:1:0=v"}},
        Reading{"NoLineFeeds",
                CfgTag("a", "t", "0", "1") + CfgTag("b", "t", "0", "0") + "<endobj><endobj>",
                {"a:t:0:1", ".b:t:0:0"}},
        Reading{"OpeningBracketInATag", CfgTag("a<b", "<t", "0", "0") + kEnd, {"a<b:<t:0:0"}},
        Reading{"OpeningBracketTwice", "<" + Named("a"), kRefused},
        Reading{"ClosingBracketInAName", Named("a>b>"), {"a>b>:t:0:0"}},
        Reading{"ClosingBracketInAType", Typed("t>u"), {"a:t>u:0:0"}},
        Reading{"ClosingBracketInALength", CfgTag("a", "t", ">3", "0") + kEnd, {"a:t:0:0"}},
        Reading{"ChildobjsInAName", Named("childobjs"), {"childobjs:t:0:0"}},
        Reading{"ClosingBracketBeforeChildobjsInAName", Named(">childobjs"), {">childobjs:t:0:0"}},
        Reading{"ClosingBracketBehindChildobjsInAName", Named("childobjs>"), kRefused},
        Reading{
            "NameThatEndsTheTagAndIsMisread", Named("x,type:y,len:0,childobjs:7>z"), {"x:y:0:7"}},
        Reading{"EndobjInAName", Named("endobj"), {"endobj:t:0:0"}},
        Reading{"EndobjInsideAName", Named("an endobj here"), {"an endobj here:t:0:0"}},
        Reading{"ClosingBracketBehindEndobjInAName", Named("endobj>"), kRefused},
        Reading{"ClosingBracketBehindChildobjsInAType", Typed("childobjs>"), kRefused},
        Reading{"ValueLikeACloseTag",
                CfgContainer("r", {CfgLeaf("a", "t", "<endobj>\n"), CfgLeaf("b", "t", "x")}),
                {"r:null:0:2", ".a:t:9:0=<endobj>\n", ".b:t:1:0=x"}},
        Reading{"ValueLikeAnOpenTag",
                CfgLeaf("a", "t", CfgTag("b", "t", "0", "0")),
                {"a:t:35:0=" + CfgTag("b", "t", "0", "0")}},
        Reading{"ValueLikeTheStartOfATag",
                CfgLeaf("a", "t", "<") + CfgLeaf("b", "t", "<obj"),
                {"a:t:1:0=<", ".b:t:4:0=<obj"}},
        Reading{"ValueOfALineFeed", CfgLeaf("a", "t", "\n"), {"a:t:1:0=\n"}},
        Reading{"TagBufferIsClearedBehindAValue",
                CfgLeaf("a", "t", "childobjs") + "<endobj>" + Named("b>c"),
                {"a:t:9:0=childobjs", ".b>c:t:0:0"}}),
    test::CaseName());

INSTANTIATE_TEST_SUITE_P(
    CloseTags, CfgOpenReads,
    testing::Values(Reading{"BeforeEverything", kEnd + kEnd + Named("a"), {"a:t:0:0"}},
                    Reading{"AndNothingElse", kEnd + kEnd, {}},
                    Reading{"BehindEverything", Named("a") + kEnd + kEnd, {"a:t:0:0"}},
                    Reading{"TooManyInside",
                            CfgTag("r", "t", "0", "2") + Named("a") + kEnd + kEnd + Named("b"),
                            {"r:t:0:2", ".a:t:0:0", ".b:t:0:0"}},
                    Reading{"TooFewInside",
                            CfgTag("r", "t", "0", "2") + CfgTag("a", "t", "0", "0") + Named("b"),
                            {"r:t:0:2", ".a:t:0:0", "..b:t:0:0"}},
                    Reading{"WithMoreBehindTheWord",
                            CfgTag("r", "t", "0", "1") + CfgTag("a", "t", "0", "0") +
                                "<endobject:x,type:y,len:9,childobjs:9>" + Named("b"),
                            {"r:t:0:1", ".a:t:0:0", ".b:t:0:0"}},
                    Reading{"WithSomethingBeforeTheWord", Named("a") + "</endobj>", kRefused},
                    Reading{"InCapitals", CfgTag("a", "t", "0", "0") + "<ENDOBJ>", {"a:t:0:0"}},
                    Reading{"WithoutAnEnd", CfgTag("a", "t", "0", "0") + "<endobj", {"a:t:0:0"}}),
    test::CaseName());

INSTANTIATE_TEST_SUITE_P(
    Trees, CfgOpenReads,
    testing::Values(
        Reading{"SecondTopLevelObject",
                CfgContainer("r", {Named("a")}) + CfgLeaf("second", "t", "v") + Named("third"),
                {"r:null:0:1", ".a:t:0:0", ".second:t:1:0=v", ".third:t:0:0"}},
        Reading{
            "LeafThatHoldsObjects",
            CfgTag("r", "t", "0", "1") + CfgTag("leaf", "t", "0", "0") + Named("in") + kEnd + kEnd,
            {"r:t:0:1", ".leaf:t:0:0", "..in:t:0:0"}},
        Reading{"MoreChildrenAnnouncedThanFollow",
                CfgTag("r", "t", "0", "9") + Named("a") + kEnd,
                {"r:t:0:9", ".a:t:0:0"}},
        Reading{"FewerChildrenAnnouncedThanFollow",
                CfgTag("r", "t", "0", "1") + Named("a") + Named("b") + kEnd,
                {"r:t:0:1", ".a:t:0:0", ".b:t:0:0"}},
        Reading{"SameNameTwice",
                CfgContainer("r", {CfgLeaf("a", "t", "1"), CfgLeaf("a", "t", "2")}),
                {"r:null:0:2", ".a:t:1:0=1", ".a:t:1:0=2"}},
        Reading{"ContainerWithALength",
                CfgTag("r", "t", "4", "1") + "\n" + Named("a") + kEnd,
                // Four bytes of what follows are gone: the line feed and the start of the tag.
                {"r:t:4:1=\n<ob"}},
        Reading{
            "NegativeLength", CfgTag("a", "t", "-5", "0") + Named("b"), {"a:t:-5:0", ".b:t:0:0"}},
        Reading{
            "NegativeCount", CfgTag("a", "t", "0", "-2147483648") + kEnd, {"a:t:0:-2147483648"}}),
    test::CaseName());

INSTANTIATE_TEST_SUITE_P(
    Names, CfgOpenReads,
    testing::Values(
        Reading{"Empty", Named(""), {":t:0:0"}}, Reading{"WithAComma", Named("a,b"), {"a,b:t:0:0"}},
        Reading{"OfACommaOnly", Named(","), {",:t:0:0"}},
        Reading{"WithAColon", Named("a:b:"), {"a:b::t:0:0"}},
        Reading{"WithAllThree", Named("a,b:c>d"), {"a,b:c>d:t:0:0"}},
        Reading{"WithTheWordTypeButNoComma", Named("type:x"), {"type:x:t:0:0"}},
        Reading{"EndingInMostOfTheMark", Named("a,typ"), {"a,typ:t:0:0"}},
        Reading{"WithTheMark", Named("a,typed"), {"a:t:0:0"}},
        // The fields are counted by position: the name's own take the places of the real ones.
        Reading{"WithTheMarkAndAColon",
                CfgTag("a,type:b", "7", "5", "9") + "12345",
                {"a:b:7:5=12345\0\0"s}},
        Reading{"BeyondAscii", Named("\xC3\xA9\xD7\x90"), {"\xC3\xA9\xD7\x90:t:0:0"}},
        Reading{"OfBytesThatAreNoText", Named("\xFF\x80"), {"\xFF\x80:t:0:0"}},
        Reading{"WithALineFeed", Named("a\nb"), {"a\nb:t:0:0"}},
        Reading{"WithANul", Named("a\0b"s), {"a:t:0:0"}},
        Reading{"OfANul", Named("\0"s), {":t:0:0"}},
        Reading{"Of127Bytes", Named(Repeat(127, 'n')), {Repeat(127, 'n') + ":t:0:0"}},
        Reading{"Of128Bytes", Named(Repeat(128, 'n')), {Repeat(127, 'n') + ":t:0:0"}},
        Reading{"Of129Bytes", Named(Repeat(129, 'n')), kRefused}),
    test::CaseName());

INSTANTIATE_TEST_SUITE_P(
    Fields, CfgOpenReads,
    testing::Values(
        Reading{"EmptyType", Typed(""), {"a::0:0"}},
        Reading{"TypeOfOneComma", Typed(","), {"a:,:0:0"}},
        Reading{"TypeOfThreeCommas", Typed(",,,"), {"a:,,,:0:0"}},
        Reading{"TypeOfCommasThenText", Typed(",,t"), {"a:,:0:0"}},
        Reading{"TypeOfACommaThenText", Typed(",t"), {"a::0:0"}},
        Reading{"TypeWithACommaInside", Typed("t,u"), {"a:t:0:0"}},
        Reading{"TypeWithAColon", Typed("t:u"), {"a:t:u:0:0"}},
        Reading{"TypeWithACommaAndAColon", CfgTag("a", "t,u:3", "5", "0") + "123", {"a:t:3:5=123"}},
        Reading{"TypeWithANul", Typed("t\0u"s), {"a:t:0:0"}},
        Reading{"TypeOf127Bytes", Typed(Repeat(127, 't')), {"a:" + Repeat(127, 't') + ":0:0"}},
        Reading{"TypeOf128Bytes", Typed(Repeat(128, 't')), {"a:" + Repeat(127, 't') + ":0:0"}},
        Reading{"TypeOf129Bytes", Typed(Repeat(129, 't')), kRefused},
        Reading{"TypeOf128Commas", Typed(Repeat(128, ',')), {"a:" + Repeat(127, ',') + ":0:0"}},
        Reading{"TypeOf129Commas", Typed(Repeat(129, ',')), kRefused},
        Reading{"LengthOfCommas", CfgTag("a", "t", ",,", "3"), {"a:t:0:3"}},
        Reading{"CountOfCommas", CfgTag("a", "t", "0", ",,"), {"a:t:0:0"}},
        Reading{"EmptyLengthAndCount", CfgTag("a", "t", "", ""), {"a:t:0:0"}},
        Reading{"LengthOf128Bytes",
                CfgTag("a", "t", Repeat(127, '0') + "2", "0") + "vw",
                {"a:t:2:0=vw"}},
        Reading{"LengthOf129Bytes", CfgTag("a", "t", Repeat(128, '0') + "2", "0") + "vw", kRefused},
        Reading{"CountOf128Bytes", CfgTag("a", "t", "0", Repeat(127, '0') + "2"), {"a:t:0:2"}},
        Reading{"CountOf129Bytes", CfgTag("a", "t", "0", Repeat(128, '0') + "2"), kRefused}),
    test::CaseName());

INSTANTIATE_TEST_SUITE_P(
    Words, CfgOpenReads,
    testing::Values(
        Reading{"OtherWordsForLengthAndCount",
                "<object:a,type:t,size:2,xchildobjsx:1>vw",
                {"a:t:2:1=vw"}},
        Reading{"FieldsInAnotherOrder", "<object:a,type:t,childobjs:2,len:1>vw", {"a:t:2:1=vw"}},
        Reading{"AFieldMore", "<object:a,type:t,len:0,childobjs:1,more:9>", {"a:t:0:1"}},
        Reading{"MoreBehindTheWordType", "<object:a,typewriter:t,len:0,childobjs:0>", {"a:t:0:0"}},
        Reading{
            "MoreBehindTheWordObject", "<objects of mine:a,type:t,len:0,childobjs:0>", {"a:t:0:0"}},
        Reading{"NoName", "<object,type:t,len:0,childobjs:0>", kRefused},
        Reading{"NoColonAtAll", "<object a,type t,len 0,childobjs 0>", kRefused},
        Reading{"NoType", "<object:a,kind:t,len:0,childobjs:0>", kRefused},
        Reading{"NoCommaBeforeType", "<object:a type:t,len:0,childobjs:0>", kRefused},
        Reading{"NoColonBehindType", "<object:a,type t,len:0,childobjs:0>", kRefused},
        Reading{"NoCommaBehindType", "<object:a,type:t len:0,childobjs:0>", kRefused},
        Reading{"NoLength", "<object:a,type:t,childobjs:0>", kRefused},
        Reading{"NoColonBehindLength", "<object:a,type:t,len 0,childobjs:0>", kRefused},
        Reading{"NoCommaBehindLength", "<object:a,type:t,len:0 childobjs:0>", kRefused},
        Reading{"NoColonBehindCount", "<object:a,type:t,len:0,childobjs 0>", kRefused},
        Reading{"AnotherWordThanObject", "<subject:a,type:t,len:0,childobjs:0>", kRefused},
        Reading{"ObjectInCapitals", "<Object:a,type:t,len:0,childobjs:0>", kRefused},
        Reading{"SpaceBeforeObject", "< object:a,type:t,len:0,childobjs:0>", kRefused},
        Reading{"RefusedBehindGoodObjects", kWorkedCfgFile + "<childobjs>", kRefused},
        Reading{"RefusedInsideGoodObjects", kWorkedCfgFile.substr(0, 107) + "<x endobj>",
                kRefused}),
    test::CaseName());

// A tag with so many bytes between its brackets.
std::string TagOf(std::size_t bytes) {
  const std::size_t name = (bytes - 31) / 2;
  return CfgTag(Repeat(name, 'n'), Repeat(bytes - 31 - name, 't'), "0", "0");
}
std::vector<std::string> TreeOf(std::size_t bytes) {
  const std::size_t name = (bytes - 31) / 2;
  return {Repeat(name, 'n') + ":" + Repeat(bytes - 31 - name, 't') + ":0:0"};
}

INSTANTIATE_TEST_SUITE_P(
    TagSizes, CfgOpenReads,
    testing::Values(Reading{"Of253Bytes", TagOf(253) + kEnd, TreeOf(253)},
                    Reading{"Of254Bytes", TagOf(254) + kEnd, TreeOf(254)},
                    Reading{"Of255Bytes", TagOf(255) + kEnd, kRefused},
                    Reading{"Of256Bytes", TagOf(256) + kEnd, kRefused},
                    Reading{"OfAThousandBytes", "<" + Repeat(1000, 'x') + ">", kRefused},
                    Reading{"CutOffAt254Bytes", Named("a") + "<" + Repeat(254, 'x'), {"a:t:0:0"}},
                    Reading{"CutOffAt255Bytes", Named("a") + "<" + Repeat(255, 'x'), kRefused},
                    // The tag runs on into the next one, whose bytes belong to its last field.
                    Reading{"NulInTheWordThatEndsIt",
                            CfgTag("a", "t", "0", "0").replace(29, 0, "\0"s) + Named("b"),
                            {"a:t:0:0"}},
                    Reading{"ManyBracketsWithoutTheWord", "<" + Repeat(300, '>'), kRefused}),
    test::CaseName());

// ---- Numbers ------------------------------------------------------------------------------------

struct NumberText {
  const char* name;
  std::string text;
  std::int32_t number;
};
std::ostream& operator<<(std::ostream& out, const NumberText& row) {
  return out << testing::PrintToString(row.text);
}

class CfgOpenNumbers : public test::CfgFileTest, public testing::WithParamInterface<NumberText> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, CfgOpenNumbers,
    testing::Values(NumberText{"Zero", "0", 0}, NumberText{"Digit", "7", 7},
                    NumberText{"LeadingZeros", "0070", 70}, NumberText{"Negative", "-7", -7},
                    NumberText{"Plus", "+7", 7}, NumberText{"PlusMinus", "+-7", 0},
                    NumberText{"TwoSigns", "--7", 0}, NumberText{"TwoPluses", "++7", 0},
                    NumberText{"PlusOnly", "+", 0}, NumberText{"MinusOnly", "-", 0},
                    NumberText{"SpacesBefore", " \t\v\f\r\n7", 7},
                    NumberText{"SpaceBehindTheSign", "- 7", 0}, NumberText{"SpacesOnly", "  ", 0},
                    NumberText{"TextBehind", "7 bytes", 7}, NumberText{"TextBefore", "x7", 0},
                    NumberText{"NoText", "", 0}, NumberText{"Hexadecimal", "0x10", 0},
                    NumberText{"Fraction", "7.9", 7}, NumberText{"Exponent", "1e3", 1},
                    NumberText{"NulBehind", "7\0008"s, 7},
                    NumberText{"Greatest", "2147483647", INT32_MAX},
                    NumberText{"BeyondTheGreatest", "2147483648", INT32_MAX},
                    NumberText{"FarBeyondTheGreatest", "99999999999999999999999", INT32_MAX},
                    NumberText{"Least", "-2147483648", INT32_MIN},
                    NumberText{"BeyondTheLeast", "-2147483649", INT32_MIN}),
    test::CaseName());

TEST_P(CfgOpenNumbers, AreReadAsPlainDecimal) {
  const ScopedCfg file = Read(CfgTag("a", "t", "0", GetParam().text));
  ASSERT_NE(file, nullptr);
  ASSERT_NE(file->root, nullptr);
  EXPECT_EQ(file->root->childCount, GetParam().number);
}

TEST_P(CfgOpenNumbers, AreReadTheSameAsLengths) {
  const ScopedCfg file = Read(CfgTag("a", "t", GetParam().text, "0"));
  ASSERT_NE(file, nullptr);
  ASSERT_NE(file->root, nullptr);
  EXPECT_EQ(file->root->len, GetParam().number);
  EXPECT_EQ(file->root->value != nullptr, GetParam().number > 0);
}

// ---- Values and blocks --------------------------------------------------------------------------

class CfgOpenValueSizes : public test::CfgFileTest,
                          public testing::WithParamInterface<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Bytes, CfgOpenValueSizes,
                         testing::Values(1, 2, 72, 1000, 1023, 1024, 1025, 1348, 2047, 2048, 2049,
                                         8408, 100000));

TEST_P(CfgOpenValueSizes, AreTakenByCountAndNeverLookedAt) {
  std::string value(GetParam(), '<');
  for (std::size_t i = 0; i < value.size(); i += 3) {
    value[i] = static_cast<char>(i * 7);
  }
  const ScopedCfg file =
      Read(CfgContainer("r", {CfgLeaf("a", "t", value), CfgLeaf("b", "t", "behind")}));
  ASSERT_NE(file, nullptr);
  const CfgNode* node = CfgFindChild(file->root, u"a");
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(node->storedBytes, value.size());
  EXPECT_EQ(test::CfgValueOf(*node), value);
  const CfgNode* behind = CfgFindChild(file->root, u"b");
  ASSERT_NE(behind, nullptr);
  EXPECT_EQ(CfgObjectText(*behind), "b:t:6:0=behind");
}

// The size is asked for a hint only.
TEST_P(CfgOpenValueSizes, AreTheSameWhenTheFilesSizeCannotBeHad) {
  const std::string value(GetParam(), '<');
  Put(CfgContainer("r", {CfgLeaf("a", "t", value), CfgLeaf("b", "t", "behind")}));
  faults().FailOperation("GetFileSizeEx");
  const ScopedCfg file(CfgOpen(kCfgPath));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(CfgTreeText(file.get()),
            (std::vector<std::string>{"r:null:0:2",
                                      ".a:t:" + std::to_string(value.size()) + ":0=" + value,
                                      ".b:t:6:0=behind"}));
}

// ---- Truncations --------------------------------------------------------------------------------

TEST_F(CfgOpenTest, ReadsEveryTruncationOfTheWorkedExample) {
  struct Object {
    std::string text;
    std::string value;
    std::size_t tagEnd;  // bytes up to and with its tag
  };
  std::vector<Object> objects = {{"cfgobj:null:0:2", "", 0},
                                 {".version:string:8:0", "0.0.0.1\0"s, 0},
                                 {".UIParam:null:0:1", "", 0},
                                 {"..cuspapersetting:null:0:1", "", 0},
                                 {"...Card:binary:4:0", "\x01>\0<"s, 0}};
  std::size_t place = 0;
  for (Object& object : objects) {
    place = kWorkedCfgFile.find("childobjs:", place) + 12;
    object.tagEnd = place;
  }
  for (std::size_t size = 0; size <= kWorkedCfgFile.size(); ++size) {
    std::vector<std::string> expected;
    for (const Object& object : objects) {
      if (size < object.tagEnd) {
        break;
      }
      std::string value = object.value;
      const std::size_t came = size - object.tagEnd;
      if (came < value.size()) {
        std::fill(value.begin() + static_cast<std::ptrdiff_t>(came), value.end(), '\0');
      }
      expected.push_back(object.text + (value.empty() ? "" : "=" + value));
    }
    const ScopedCfg file = Read(kWorkedCfgFile.substr(0, size));
    ASSERT_NE(file, nullptr) << size;
    ASSERT_EQ(CfgTreeText(file.get()), expected) << size;
  }
}

TEST_F(CfgOpenTest, KeepsTheLengthOfAValueThatIsCutOff) {
  const ScopedCfg file = Read(CfgTag("a", "t", "1000", "0") + "abc");
  ASSERT_NE(file, nullptr);
  ASSERT_NE(file->root, nullptr);
  EXPECT_EQ(file->root->len, 1000);
  EXPECT_EQ(test::CfgValueOf(*file->root), "abc" + std::string(997, '\0'));
}

TEST_F(CfgOpenTest, ReadsAValueWithoutBytes) {
  const ScopedCfg file = Read(CfgTag("version", "string", "8", "0"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(CfgTreeText(file.get()),
            std::vector<std::string>{"version:string:8:0=" + std::string(8, '\0')});
}

// ---- Hostile files ------------------------------------------------------------------------------

TEST_F(CfgOpenTest, TakesNoMoreMemoryThanTheFileHasBytesToFill) {
  RecordingMemory memory(world_);
  {
    const ScopedCfg file = Read(CfgTag("a", "t", "2147483647", "0") + "few bytes");
    ASSERT_NE(file, nullptr);
    ASSERT_NE(file->root, nullptr);
    EXPECT_EQ(file->root->len, INT32_MAX);
    EXPECT_EQ(file->root->storedBytes, 9U);
    std::string start(12, '\xC5');
    CfgCopyValue(*file->root, std::as_writable_bytes(std::span(start)));
    EXPECT_EQ(start, "few bytes\0\0\0"s);
  }
  EXPECT_LE(memory.largest(), sizeof(CfgHandle));
}

TEST_F(CfgOpenTest, TakesLittleMemoryForAGreatLengthWhenTheSizeCannotBeHad) {
  RecordingMemory memory(world_);
  faults().FailOperation("GetFileSizeEx");
  {
    const ScopedCfg file = Read(CfgTag("a", "t", "2147483647", "0") + std::string(5000, 'v'));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->root->len, INT32_MAX);
    EXPECT_GE(file->root->storedBytes, 5000U);
  }
  EXPECT_LE(memory.largest(), 5000U * 2 + 32);
}

TEST_F(CfgOpenTest, ReadsAndFreesTwoHundredThousandNestedObjects) {
  constexpr std::size_t kDepth = 200000;
  const std::string tag = CfgTag("d", "t", "0", "1");
  std::string bytes;
  for (std::size_t i = 0; i < kDepth; ++i) {
    bytes += tag;
  }
  const ScopedCfg file = Read(bytes);
  ASSERT_NE(file, nullptr);
  std::size_t depth = 0;
  for (const CfgNode* node = file->root; node != nullptr; node = node->firstChild) {
    ++depth;
  }
  EXPECT_EQ(depth, kDepth);
}

constexpr std::size_t kHundredMegabytes = 100U << 20;

TEST_F(CfgOpenTest, ReadsAHundredMegabytesWithoutATagAsNoObjects) {
  const ScopedCfg file = Read(std::string(kHundredMegabytes, 'x'));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->root, nullptr);
}

TEST_F(CfgOpenTest, RefusesAHundredMegabytesOfOneTag) {
  EXPECT_EQ(Read(std::string(kHundredMegabytes, '<')), nullptr);
}

TEST_F(CfgOpenTest, ReadsAValueOfAHundredMegabytes) {
  const ScopedCfg file = Read(CfgTag("a", "t", std::to_string(kHundredMegabytes), "0") +
                              std::string(kHundredMegabytes, 'x') + kCfgEnd + Named("behind"));
  ASSERT_NE(file, nullptr);
  ASSERT_NE(file->root, nullptr);
  EXPECT_EQ(file->root->storedBytes, kHundredMegabytes);
  EXPECT_EQ(file->root->value[kHundredMegabytes - 1], std::byte{'x'});
  EXPECT_EQ(test::CfgChildren(file->root), std::vector<std::string>{"behind"});
}

TEST_F(CfgOpenTest, ReadsAHundredMegabytesOfFavourites) {
  constexpr std::size_t kCount = kHundredMegabytes / kCfgReplacedValueBytes;
  std::string bytes = CfgTag("r", "null", "0", std::to_string(kCount)) + "\n";
  const std::string favourite = CfgLeaf("f", "binary", std::string(kCfgReplacedValueBytes, '<'));
  for (std::size_t i = 0; i < kCount; ++i) {
    bytes += favourite;
  }
  const ScopedCfg file = Read(bytes);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(test::CfgChildren(file->root).size(), kCount);
}

}  // namespace
}  // namespace ostrel
