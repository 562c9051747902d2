// Looking up and changing config trees in memory, and what a save then leaves in the file.
#include "config/cfg_file.h"
#include "config/cfg_file_fixture.h"
#include "support/case_name.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using namespace std::string_literals;
using test::CfgChildren;
using test::CfgContainer;
using test::CfgLeaf;
using test::CfgObjectText;
using test::CfgTag;
using test::CfgTreeText;
using test::kCfgPath;
using test::kWorkedCfgFile;

using Names = std::vector<std::string>;

const std::string kEnd = test::kCfgEnd;

// A root "r" with the children a, b and c, of which b holds b1 and b2, and b2 holds deep.
const std::string kFamily = CfgContainer(
    "r",
    {CfgLeaf("a", "t", "1"),
     CfgContainer("b", {CfgLeaf("b1", "t", "2"), CfgContainer("b2", {CfgLeaf("deep", "t", "3")})}),
     CfgLeaf("c", "t", "4")});

class CfgOperationTest : public test::CfgFileTest {
 protected:
  // What is in the file after a save, read anew.
  Names SavedTree(const ScopedCfg& file) {
    EXPECT_TRUE(CfgSave(file.get()));
    const ScopedCfg again(CfgOpen(kCfgPath));
    return CfgTreeText(again.get());
  }
};
class CfgCloseTest : public CfgOperationTest {};
class CfgFindChildTest : public CfgOperationTest {};
class CfgAddChildTest : public CfgOperationTest {};
class CfgDeleteChildTest : public CfgOperationTest {};
class CfgListChildrenTest : public CfgOperationTest {};
class CfgReplaceNodeTest : public CfgOperationTest {};
class CfgSetValueTest : public CfgOperationTest {};
class CfgCopyValueTest : public CfgOperationTest {};

// ---- Closing ------------------------------------------------------------------------------------

TEST_F(CfgCloseTest, LeavesNullAlone) {
  CfgClose(nullptr);
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U);
}

TEST_F(CfgCloseTest, FreesTheTreeAndTheHandle) {
  Put(kFamily);
  CfgHandle* file = CfgOpen(kCfgPath);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 7U + 4 + 1);
  CfgClose(file);
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U);
}

TEST_F(CfgCloseTest, FreesAHandleWithoutARoot) {
  Put("");
  CfgHandle* file = CfgOpen(kCfgPath);
  ASSERT_NE(file, nullptr);
  CfgClose(file);
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U);
}

// ---- Finding ------------------------------------------------------------------------------------

TEST_F(CfgFindChildTest, FindsTheFirstDirectChildOfTheName) {
  const ScopedCfg file =
      Read(CfgContainer("r", {CfgLeaf("x", "t", "0"), CfgContainer("b", {CfgLeaf("a", "t", "1")}),
                              CfgLeaf("a", "t", "2"), CfgLeaf("a", "t", "3")}));
  ASSERT_NE(file, nullptr);
  const CfgNode* found = CfgFindChild(file->root, u"a");
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(CfgObjectText(*found), "a:t:1:0=2");
}

TEST_F(CfgFindChildTest, FindsNothingBelowNull) {
  EXPECT_EQ(CfgFindChild(nullptr, u"a"), nullptr);
}

TEST_F(CfgFindChildTest, FindsNoNullName) {
  const ScopedCfg file = Read(kFamily);
  EXPECT_EQ(CfgFindChild(file->root, nullptr), nullptr);
}

struct Lookup {
  const char* name;
  std::string child;
  std::u16string wanted;
  bool found;
};
std::ostream& operator<<(std::ostream& out, const Lookup& row) {
  return out << testing::PrintToString(row.child);
}

class CfgFindChildNames : public test::CfgFileTest, public testing::WithParamInterface<Lookup> {};

INSTANTIATE_TEST_SUITE_P(
    Names, CfgFindChildNames,
    testing::Values(
        Lookup{"Same", "Draft", u"Draft", true}, Lookup{"OtherCase", "Draft", u"draft", false},
        Lookup{"Longer", "Draft", u"Draft2", false}, Lookup{"Shorter", "Draft", u"Draf", false},
        Lookup{"Empty", "", u"", true}, Lookup{"Space", "Draft", u"Draft ", false},
        Lookup{"BeyondAscii", "\xC3\xA9", u"\x00E9", true},
        Lookup{"Decomposed", "\xC3\xA9", u"e\x0301", false},
        Lookup{"BeyondThePlane", "\xF0\x9F\x96\xA8", u"\xD83D\xDDA8", true},
        Lookup{"LoneSurrogate", "\xEF\xBF\xBD", u"\xD800", true},
        Lookup{"Of126Bytes", std::string(126, 'n'), std::u16string(126, u'n'), true},
        Lookup{"Of127Bytes", std::string(127, 'n'), std::u16string(127, u'n'), true},
        Lookup{"Of128Bytes", std::string(128, 'n'), std::u16string(128, u'n'), false},
        Lookup{"Of128BytesIn64Units", std::string(127, 'n'), std::u16string(64, u'\x00E9'), false},
        Lookup{"Of126BytesIn63Units",
               [] {
                 std::string name;
                 for (int i = 0; i < 63; ++i) {
                   name += "\xC3\xA9";
                 }
                 return name;
               }(),
               std::u16string(63, u'\x00E9'), true},
        Lookup{"CutTo127Bytes", std::string(128, 'n'), std::u16string(127, u'n'), true}),
    test::CaseName());

TEST_P(CfgFindChildNames, AreComparedAsBytes) {
  const ScopedCfg file = Read(CfgContainer("r", {CfgLeaf(GetParam().child, "t", "v")}));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(CfgFindChild(file->root, GetParam().wanted.c_str()) != nullptr, GetParam().found);
}

struct Announced {
  const char* name;
  const char* count;
  bool found;
};
class CfgFindChildCounts : public test::CfgFileTest,
                           public testing::WithParamInterface<Announced> {};
INSTANTIATE_TEST_SUITE_P(Counts, CfgFindChildCounts,
                         testing::Values(Announced{"Zero", "0", false},
                                         Announced{"Negative", "-1", false},
                                         Announced{"One", "1", true},
                                         Announced{"Many", "99", true}),
                         test::CaseName());

TEST_P(CfgFindChildCounts, BelowOneHideTheChildrenThatAreThere) {
  const ScopedCfg file =
      Read(CfgTag("r", "t", "0", GetParam().count) + CfgLeaf("a", "t", "") + kEnd);
  ASSERT_NE(file, nullptr);
  ASSERT_EQ(CfgChildren(file->root), Names{"a"});
  EXPECT_EQ(CfgFindChild(file->root, u"a") != nullptr, GetParam().found);
  EXPECT_EQ(CfgDeleteChild(file->root, u"a"), GetParam().found);
}

// ---- Adding -------------------------------------------------------------------------------------

TEST_F(CfgAddChildTest, AppendsACopyAndCounts) {
  const ScopedCfg file = Read(kFamily);
  ASSERT_NE(file, nullptr);
  std::string value = "v\0<"s;
  std::string type = "binary";
  const CfgNode* child = CfgAddChild(file->root, u"new", type.c_str(), value.data(), 3);
  ASSERT_NE(child, nullptr);
  value.assign(3, 'X');
  type.assign(6, 'X');
  EXPECT_EQ(CfgObjectText(*child), "new:binary:3:0=v\0<"s);
  EXPECT_EQ(child->parent, file->root);
  EXPECT_EQ(file->root->childCount, 4);
  EXPECT_EQ(CfgChildren(file->root), (Names{"a", "b", "c", "new"}));
  for (std::size_t i = 3; i < 3 + 32; ++i) {
    EXPECT_EQ(child->value[i], std::byte{0}) << i;
  }
  EXPECT_EQ(SavedTree(file), CfgTreeText(file.get()));
}

TEST_F(CfgAddChildTest, MakesAContainerOfALeafWithoutAValue) {
  const ScopedCfg file = Read(CfgLeaf("r", "null", ""));
  ASSERT_NE(file, nullptr);
  EXPECT_NE(CfgAddChild(file->root, u"a", "t", nullptr, 0), nullptr);
  EXPECT_EQ(SavedTree(file), (Names{"r:null:0:1", ".a:t:0:0"}));
}

TEST_F(CfgAddChildTest, AddsToNothing) {
  EXPECT_EQ(CfgAddChild(nullptr, u"a", "t", "v", 1), nullptr);
}

TEST_F(CfgAddChildTest, NeedsAName) {
  const ScopedCfg file = Read(kFamily);
  EXPECT_EQ(CfgAddChild(file->root, nullptr, "t", "v", 1), nullptr);
  EXPECT_EQ(file->root->childCount, 3);
}

TEST_F(CfgAddChildTest, AddsASecondOfTheSameNameBehindTheFirst) {
  const ScopedCfg file = Read(kFamily);
  const CfgNode* second = CfgAddChild(file->root, u"a", "t", "5", 1);
  EXPECT_NE(second, nullptr);
  EXPECT_EQ(CfgChildren(file->root), (Names{"a", "b", "c", "a"}));
  EXPECT_NE(CfgFindChild(file->root, u"a"), second);
}

struct Added {
  const char* name;
  std::u16string wide;
  std::string type;
  std::int32_t len;
  std::string text;  // of the new object; empty when it is refused
};
std::ostream& operator<<(std::ostream& out, const Added& row) {
  return out << testing::PrintToString(row.text);
}
class CfgAddChildArguments : public CfgOperationTest, public testing::WithParamInterface<Added> {};

INSTANTIATE_TEST_SUITE_P(
    Arguments, CfgAddChildArguments,
    testing::Values(Added{"EmptyName", u"", "t", 0, ":t:0:0"},
                    Added{"EmptyType", u"a", "", 0, "a::0:0"},
                    Added{"NameOf126Bytes", std::u16string(126, u'n'), "t", 0,
                          std::string(126, 'n') + ":t:0:0"},
                    Added{"NameOf127Bytes", std::u16string(127, u'n'), "t", 0,
                          std::string(127, 'n') + ":t:0:0"},
                    Added{"NameOf128Bytes", std::u16string(128, u'n'), "t", 0, ""},
                    Added{"NameOf43UnitsIn129Bytes", std::u16string(43, u'\x20AC'), "t", 0, ""},
                    Added{"TypeOf127Bytes", u"a", std::string(127, 't'), 0,
                          "a:" + std::string(127, 't') + ":0:0"},
                    Added{"TypeOf128BytesIsCut", u"a", std::string(128, 't'), 0,
                          "a:" + std::string(127, 't') + ":0:0"},
                    Added{"NameAndTypeThatDoNotFitOneTag", std::u16string(127, u'n'),
                          std::string(127, 't'), 0, ""},
                    Added{"OneByte", u"a", "t", 1, "a:t:1:0=v"},
                    Added{"NegativeLength", u"a", "t", -1, "a:t:-1:0"}),
    test::CaseName());

TEST_P(CfgAddChildArguments, AreCutRefusedOrTaken) {
  const Added& row = GetParam();
  const ScopedCfg file = Read(CfgLeaf("r", "null", ""));
  ASSERT_NE(file, nullptr);
  const std::string value(10, 'v');
  const CfgNode* child =
      CfgAddChild(file->root, row.wide.c_str(), row.type.c_str(), value.data(), row.len);
  EXPECT_EQ(child == nullptr ? "" : CfgObjectText(*child), row.text);
  EXPECT_EQ(file->root->childCount, row.text.empty() ? 0 : 1);
  EXPECT_EQ(child != nullptr && child->value != nullptr, row.len > 0);
  EXPECT_EQ(SavedTree(file), CfgTreeText(file.get()));
}

TEST_F(CfgAddChildTest, TakesZerosForANullValue) {
  const ScopedCfg file = Read(CfgLeaf("r", "null", ""));
  const CfgNode* child = CfgAddChild(file->root, u"a", "t", nullptr, 3);
  ASSERT_NE(child, nullptr);
  EXPECT_EQ(CfgObjectText(*child), "a:t:3:0=\0\0\0"s);
}

TEST_F(CfgAddChildTest, CountsFromWhatTheFileAnnounced) {
  const ScopedCfg file = Read(CfgTag("r", "null", "0", "5") + kEnd);
  EXPECT_NE(CfgAddChild(file->root, u"a", "t", nullptr, 0), nullptr);
  EXPECT_EQ(file->root->childCount, 6);
}

TEST_F(CfgAddChildTest, StaysAtTheGreatestCount) {
  const ScopedCfg file = Read(CfgTag("r", "null", "0", "2147483647") + kEnd);
  EXPECT_NE(CfgAddChild(file->root, u"a", "t", nullptr, 0), nullptr);
  EXPECT_EQ(file->root->childCount, INT32_MAX);
  EXPECT_NE(CfgFindChild(file->root, u"a"), nullptr);
}

// ---- Deleting -----------------------------------------------------------------------------------

struct Deletion {
  const char* name;
  std::u16string wide;
  std::string narrow;
  bool deleted;
  Names left;
};
std::ostream& operator<<(std::ostream& out, const Deletion& row) {
  return out << row.narrow;
}
class CfgDeleteChildNames : public CfgOperationTest,
                            public testing::WithParamInterface<Deletion> {};

INSTANTIATE_TEST_SUITE_P(
    Children, CfgDeleteChildNames,
    testing::Values(Deletion{"First", u"a", "a", true, {"b", "c"}},
                    Deletion{"MiddleWithItsSubtree", u"b", "b", true, {"a", "c"}},
                    Deletion{"Last", u"c", "c", true, {"a", "b"}},
                    Deletion{"Grandchild", u"b1", "b1", false, {"a", "b", "c"}},
                    Deletion{"Unknown", u"d", "d", false, {"a", "b", "c"}},
                    Deletion{"OtherCase", u"A", "A", false, {"a", "b", "c"}},
                    Deletion{"Of128Bytes",
                             std::u16string(128, u'a'),
                             std::string(128, 'a'),
                             false,
                             {"a", "b", "c"}}),
    test::CaseName());

TEST_P(CfgDeleteChildNames, AreTakenOutWideAndNarrowAlike) {
  const Deletion& row = GetParam();
  for (const bool wide : {true, false}) {
    const ScopedCfg file = Read(kFamily);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(wide ? CfgDeleteChild(file->root, row.wide.c_str())
                   : CfgDeleteChild(file->root, row.narrow.c_str()),
              row.deleted);
    EXPECT_EQ(CfgChildren(file->root), row.left);
    EXPECT_EQ(file->root->childCount, static_cast<std::int32_t>(row.left.size()));
    // New children still go to the end.
    EXPECT_NE(CfgAddChild(file->root, u"new", "t", nullptr, 0), nullptr);
    EXPECT_EQ(CfgChildren(file->root).back(), "new");
    EXPECT_EQ(SavedTree(file), CfgTreeText(file.get()));
  }
}

TEST_F(CfgDeleteChildTest, FreesTheWholeSubtree) {
  const ScopedCfg file = Read(kFamily);
  const std::size_t before = world_.platform.memory.liveBlocks();
  EXPECT_TRUE(CfgDeleteChild(file->root, u"b"));
  EXPECT_EQ(before - world_.platform.memory.liveBlocks(), 4U + 2);
}

TEST_F(CfgDeleteChildTest, TakesTheFirstOfSeveralAndOneOffTheCount) {
  const ScopedCfg file = Read(CfgContainer("r", {CfgLeaf("a", "t", "1"), CfgLeaf("b", "t", ""),
                                                 CfgLeaf("a", "t", "2"), CfgLeaf("a", "t", "3")}));
  EXPECT_TRUE(CfgDeleteChild(file->root, u"a"));
  EXPECT_EQ(CfgTreeText(file.get()), (Names{"r:null:0:3", ".b:t:0:0", ".a:t:1:0=2", ".a:t:1:0=3"}));
}

TEST_F(CfgDeleteChildTest, EmptiesAContainer) {
  const ScopedCfg file = Read(CfgContainer("r", {CfgLeaf("a", "t", "1")}));
  EXPECT_TRUE(CfgDeleteChild(file->root, "a"));
  EXPECT_EQ(CfgChildren(file->root), Names{});
  EXPECT_FALSE(CfgDeleteChild(file->root, "a"));
  EXPECT_EQ(SavedTree(file), Names{"r:null:0:0"});
}

TEST_F(CfgDeleteChildTest, DeletesNothingOfNull) {
  EXPECT_FALSE(CfgDeleteChild(nullptr, u"a"));
  EXPECT_FALSE(CfgDeleteChild(nullptr, "a"));
  const ScopedCfg file = Read(kFamily);
  EXPECT_FALSE(CfgDeleteChild(file->root, static_cast<const char16_t*>(nullptr)));
  EXPECT_FALSE(CfgDeleteChild(file->root, static_cast<const char*>(nullptr)));
  EXPECT_EQ(CfgChildren(file->root), (Names{"a", "b", "c"}));
}

TEST_F(CfgDeleteChildTest, ComparesTheNarrowNamesFirst127Bytes) {
  const ScopedCfg file = Read(CfgContainer("r", {CfgLeaf(std::string(127, 'n'), "t", "")}));
  EXPECT_FALSE(CfgDeleteChild(file->root, std::u16string(200, u'n').c_str()));
  EXPECT_TRUE(CfgDeleteChild(file->root, std::string(200, 'n').c_str()));
}

TEST_F(CfgDeleteChildTest, FreesTwoHundredThousandNestedObjects) {
  std::string bytes = CfgTag("r", "t", "0", "1");
  for (int i = 0; i < 200000; ++i) {
    bytes += CfgTag("d", "t", "0", "1");
  }
  const ScopedCfg file = Read(bytes);
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(CfgDeleteChild(file->root, u"d"));
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 2U);
}

// ---- Listing ------------------------------------------------------------------------------------

constexpr char16_t kPoison = u'\xCDCD';

struct Listing {
  const char* name;
  std::size_t rowUnits;
  std::size_t capacity;
  std::vector<std::u16string> rows;
};
std::ostream& operator<<(std::ostream& out, const Listing& row) {
  return out << row.rowUnits << " units, " << row.capacity << " rows";
}
class CfgListChildrenRows : public CfgOperationTest, public testing::WithParamInterface<Listing> {};

// Names of 5, 127 and 126 bytes, the last in 63 units.
const std::string kListed =
    CfgContainer("r", {CfgLeaf("Draft", "t", ""), CfgLeaf(std::string(127, 'n'), "t", "v"),
                       CfgLeaf(
                           [] {
                             std::string name;
                             for (int i = 0; i < 63; ++i) {
                               name += "\xD7\x90";
                             }
                             return name;
                           }(),
                           "t", "")});
const std::u16string kAlefs(63, u'\x05D0');

INSTANTIATE_TEST_SUITE_P(
    Rows, CfgListChildrenRows,
    testing::Values(
        Listing{"NoRows", 64, 0, {}}, Listing{"OneRow", 64, 1, {u"Draft"}},
        Listing{"ThreeRowsOf64Units", 64, 3, {u"Draft", std::u16string(63, u'n'), kAlefs}},
        Listing{"FiveRowsOf64Units", 64, 5, {u"Draft", std::u16string(63, u'n'), kAlefs}},
        Listing{"RowsOf128Units", 128, 3, {u"Draft", std::u16string(127, u'n'), kAlefs}},
        Listing{"RowsOf200Units", 200, 3, {u"Draft", std::u16string(127, u'n'), kAlefs}},
        Listing{"RowsOf6Units", 6, 3, {u"Draft", u"nnnnn", std::u16string(5, u'\x05D0')}},
        Listing{"RowsOf1Unit", 1, 2, {u"", u""}}),
    test::CaseName());

TEST_P(CfgListChildrenRows, AreFilledInOrderCutAndTerminated) {
  const Listing& row = GetParam();
  const ScopedCfg file = Read(kListed);
  ASSERT_NE(file, nullptr);
  std::vector<char16_t> rows(row.rowUnits * row.capacity, kPoison);
  EXPECT_EQ(CfgListChildren(file->root, rows, row.rowUnits), row.rows.size());
  for (std::size_t i = 0; i < row.capacity; ++i) {
    const std::span<const char16_t> units = std::span(rows).subspan(i * row.rowUnits, row.rowUnits);
    if (i < row.rows.size()) {
      EXPECT_EQ(std::u16string_view(units.data()), row.rows[i]) << i;
    } else {
      EXPECT_EQ(std::u16string(units.begin(), units.end()), std::u16string(row.rowUnits, kPoison));
    }
  }
}

TEST_F(CfgListChildrenTest, ListsNothingOfNullOrIntoNothing) {
  std::array<char16_t, 128> rows;
  rows.fill(kPoison);
  EXPECT_EQ(CfgListChildren(nullptr, rows, 64), 0U);
  const ScopedCfg file = Read(kListed);
  EXPECT_EQ(CfgListChildren(file->root, {}, 64), 0U);
  EXPECT_EQ(CfgListChildren(file->root, rows, 0), 0U);
  EXPECT_EQ(CfgListChildren(file->root, std::span(rows).first(63), 64), 0U);
  EXPECT_EQ(std::u16string(rows.begin(), rows.end()), std::u16string(128, kPoison));
}

TEST_F(CfgListChildrenTest, ListsWhatIsThereWhateverIsAnnounced) {
  for (const char* announced : {"0", "-1", "1", "9"}) {
    const ScopedCfg file =
        Read(CfgTag("r", "t", "0", announced) + CfgLeaf("a", "t", "") + CfgLeaf("b", "t", ""));
    ASSERT_NE(file, nullptr);
    std::vector<char16_t> rows(9 * 64, kPoison);
    EXPECT_EQ(CfgListChildren(file->root, rows, 64), 2U) << announced;
    EXPECT_EQ(std::u16string_view(rows.data() + 64), u"b");
  }
}

TEST_F(CfgListChildrenTest, ShowsBytesThatAreNoTextAsReplacements) {
  const ScopedCfg file = Read(CfgContainer("r", {CfgLeaf("a\xFF\xC3", "t", "")}));
  std::vector<char16_t> rows(64, kPoison);
  EXPECT_EQ(CfgListChildren(file->root, rows, 64), 1U);
  EXPECT_EQ(std::u16string_view(rows.data()), u"a\xFFFD\xFFFD");
}

// ---- Replacing ----------------------------------------------------------------------------------

const std::string kFavourite = [] {
  std::string bytes(kCfgReplacedValueBytes, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<char>(i * 5 + 1);
  }
  return bytes;
}();

std::string Replaced(const char* name) {
  return std::string(name) + ":binary:8408:0=" + kFavourite;
}

struct Replacement {
  const char* name;
  std::u16string old;
  Names saved;
};
std::ostream& operator<<(std::ostream& out, const Replacement& row) {
  return out << row.name;
}
class CfgReplaceNodePlaces : public CfgOperationTest,
                             public testing::WithParamInterface<Replacement> {};

INSTANTIATE_TEST_SUITE_P(
    Places, CfgReplaceNodePlaces,
    testing::Values(Replacement{"Root", u"r", {Replaced("new")}},
                    Replacement{"FirstChild",
                                u"a",
                                {"r:null:0:3", "." + Replaced("new"), ".b:null:0:2", "..b1:t:1:0=2",
                                 "..b2:null:0:1", "...deep:t:1:0=3", ".c:t:1:0=4"}},
                    Replacement{"ContainerWhoseChildrenGo",
                                u"b",
                                {"r:null:0:3", ".a:t:1:0=1", "." + Replaced("new"), ".c:t:1:0=4"}},
                    Replacement{"Grandchild",
                                u"b1",
                                {"r:null:0:3", ".a:t:1:0=1", ".b:null:0:2", ".." + Replaced("new"),
                                 "..b2:null:0:1", "...deep:t:1:0=3", ".c:t:1:0=4"}},
                    Replacement{"DeepChild",
                                u"deep",
                                {"r:null:0:3", ".a:t:1:0=1", ".b:null:0:2", "..b1:t:1:0=2",
                                 "..b2:null:0:1", "..." + Replaced("new"), ".c:t:1:0=4"}},
                    Replacement{"LastChild",
                                u"c",
                                {"r:null:0:3", ".a:t:1:0=1", ".b:null:0:2", "..b1:t:1:0=2",
                                 "..b2:null:0:1", "...deep:t:1:0=3", "." + Replaced("new")}}),
    test::CaseName());

TEST_P(CfgReplaceNodePlaces, BecomeAFavouriteWhereTheyStand) {
  const ScopedCfg file = Read(kFamily);
  ASSERT_NE(file, nullptr);
  const CfgNode* node =
      CfgReplaceNode(file->root, u"new", GetParam().old.c_str(), kFavourite.data());
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(CfgObjectText(*node), Replaced("new"));
  EXPECT_EQ(node->value[kCfgReplacedValueBytes], std::byte{0});
  EXPECT_EQ(SavedTree(file), GetParam().saved);
}

TEST_F(CfgReplaceNodeTest, TakesTheFirstDepthFirst) {
  const ScopedCfg file = Read(CfgContainer(
      "r", {CfgContainer("b", {CfgLeaf("x", "t", "deep")}), CfgLeaf("x", "t", "shallow")}));
  const CfgNode* node = CfgReplaceNode(file->root, u"new", u"x", kFavourite.data());
  ASSERT_NE(node, nullptr);
  EXPECT_STREQ(node->parent->name, "b");
}

TEST_F(CfgReplaceNodeTest, StaysInsideTheSubtree) {
  const ScopedCfg file = Read(kFamily);
  CfgNode* b = CfgFindChild(file->root, u"b");
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(CfgReplaceNode(b, u"new", u"c", kFavourite.data()), nullptr);
  EXPECT_EQ(CfgReplaceNode(b->firstChild, u"new", u"deep", kFavourite.data()), nullptr);
  EXPECT_EQ(CfgReplaceNode(b, u"new", u"r", kFavourite.data()), nullptr);
  EXPECT_EQ(CfgReplaceNode(b, u"new", u"b2", kFavourite.data()), b->lastChild);
}

TEST_F(CfgReplaceNodeTest, KeepsTheNameWhenBothAreTheSame) {
  const ScopedCfg file = Read(kFamily);
  const CfgNode* node = CfgReplaceNode(file->root, u"a", u"a", kFavourite.data());
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(CfgObjectText(*node), Replaced("a"));
}

TEST_F(CfgReplaceNodeTest, HasNoValueForNullAndWritesZeros) {
  const ScopedCfg file = Read(kFamily);
  const CfgNode* node = CfgReplaceNode(file->root, u"new", u"a", nullptr);
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(node->value, nullptr);
  EXPECT_EQ(node->len, kCfgReplacedValueBytes);
  EXPECT_EQ(SavedTree(file)[1], ".new:binary:8408:0=" + std::string(8408, '\0'));
}

TEST_F(CfgReplaceNodeTest, ChangesNothingWhenItCannot) {
  const ScopedCfg file = Read(kFamily);
  const Names before = CfgTreeText(file.get());
  const std::u16string tooLong(128, u'n');
  EXPECT_EQ(CfgReplaceNode(nullptr, u"new", u"a", kFavourite.data()), nullptr);
  EXPECT_EQ(CfgReplaceNode(file->root, u"new", u"missing", kFavourite.data()), nullptr);
  EXPECT_EQ(CfgReplaceNode(file->root, u"new", nullptr, kFavourite.data()), nullptr);
  EXPECT_EQ(CfgReplaceNode(file->root, nullptr, u"a", kFavourite.data()), nullptr);
  EXPECT_EQ(CfgReplaceNode(file->root, tooLong.c_str(), u"a", kFavourite.data()), nullptr);
  EXPECT_EQ(CfgReplaceNode(file->root, u"new", tooLong.c_str(), kFavourite.data()), nullptr);
  EXPECT_EQ(CfgTreeText(file.get()), before);
}

TEST_F(CfgReplaceNodeTest, TakesANameOf127Bytes) {
  const ScopedCfg file = Read(kFamily);
  const std::u16string name(127, u'n');
  EXPECT_NE(CfgReplaceNode(file->root, name.c_str(), u"a", kFavourite.data()), nullptr);
  EXPECT_NE(CfgFindChild(file->root, name.c_str()), nullptr);
  EXPECT_EQ(SavedTree(file), CfgTreeText(file.get()));
}

TEST_F(CfgReplaceNodeTest, FreesThePreviousValue) {
  const ScopedCfg file = Read(kFamily);
  const std::size_t before = world_.platform.memory.liveBlocks();
  EXPECT_NE(CfgReplaceNode(file->root, u"new", u"a", kFavourite.data()), nullptr);
  EXPECT_EQ(world_.platform.memory.liveBlocks(), before);
}

TEST_F(CfgReplaceNodeTest, SearchesTwoHundredThousandNestedObjects) {
  std::string bytes;
  for (int i = 0; i < 200000; ++i) {
    bytes += CfgTag("d", "t", "0", "1");
  }
  const ScopedCfg file = Read(bytes + CfgLeaf("last", "t", ""));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(CfgReplaceNode(file->root, u"new", u"missing", nullptr), nullptr);
  EXPECT_NE(CfgReplaceNode(file->root, u"new", u"last", nullptr), nullptr);
}

// ---- Values -------------------------------------------------------------------------------------

TEST_F(CfgSetValueTest, TakesThePlaceOfTheValue) {
  for (const std::size_t size : {std::size_t{1}, std::size_t{8}, std::size_t{9000}}) {
    const ScopedCfg file = Read(kFamily);
    CfgNode* node = CfgFindChild(file->root, u"a");
    ASSERT_NE(node, nullptr);
    const std::string value(size, '>');
    EXPECT_TRUE(CfgSetValue(*node, std::as_bytes(std::span(value))));
    EXPECT_EQ(CfgObjectText(*node), "a:t:" + std::to_string(size) + ":0=" + value);
    EXPECT_EQ(SavedTree(file), CfgTreeText(file.get()));
  }
}

TEST_F(CfgSetValueTest, TakesNoBytesAtAll) {
  const ScopedCfg file = Read(kFamily);
  CfgNode* node = CfgFindChild(file->root, u"a");
  ASSERT_NE(node, nullptr);
  EXPECT_TRUE(CfgSetValue(*node, {}));
  EXPECT_EQ(CfgObjectText(*node), "a:t:0:0");
  EXPECT_EQ(SavedTree(file), CfgTreeText(file.get()));
}

struct Copied {
  const char* name;
  const char* tag;  // of the file, cut behind "abc"
  std::size_t room;
  std::string out;
};
std::ostream& operator<<(std::ostream& out, const Copied& row) {
  return out << row.tag;
}
class CfgCopyValueSizes : public CfgOperationTest, public testing::WithParamInterface<Copied> {};
INSTANTIATE_TEST_SUITE_P(
    Sizes, CfgCopyValueSizes,
    testing::Values(Copied{"NoRoom", "3", 0, ""}, Copied{"LessRoom", "3", 2, "ab"},
                    Copied{"SameRoom", "3", 3, "abc"}, Copied{"MoreRoom", "3", 5, "abc\0\0"s},
                    Copied{"CutValue", "9", 5, "abc\0\0"s}, Copied{"NoValue", "0", 2, "\0\0"s},
                    Copied{"NegativeLength", "-3", 2, "\0\0"s}),
    test::CaseName());

TEST_P(CfgCopyValueSizes, AreFilledWithZeros) {
  const ScopedCfg file = Read(CfgTag("a", "t", GetParam().tag, "0") + "abc");
  ASSERT_NE(file, nullptr);
  std::string out(GetParam().room, '\xC5');
  CfgCopyValue(*file->root, std::as_writable_bytes(std::span(out)));
  EXPECT_EQ(out, GetParam().out);
}

TEST(CfgKinds, ALeafThatTakesAChildGivesItsValueUp) {
  test::TestWorld world;
  const ScopedCfg file(CfgOpen(u"kinds.dat"));
  ASSERT_NE(file, nullptr);
  CfgNode* version = CfgFindChild(file->root, u"version");
  ASSERT_NE(CfgAddChild(version, u"child", "t", nullptr, 0), nullptr);
  EXPECT_EQ(version->len, 0);
  EXPECT_EQ(version->value, nullptr);
}

TEST(CfgKinds, AContainerThatTakesAValueBecomesALeaf) {
  test::TestWorld world;
  const ScopedCfg file(CfgOpen(u"kinds.dat"));
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(CfgSetValue(*file->root, std::as_bytes(std::span(kCfgVersion))));
  EXPECT_EQ(file->root->childCount, 0);
  EXPECT_EQ(file->root->len, 8);
}

TEST(CfgDeleteLastChildTest, TakesTheLastOfTwoOfOneNameAndNothingFromALeaf) {
  test::TestWorld world;
  const ScopedCfg file(CfgOpen(u"kinds.dat"));
  ASSERT_NE(file, nullptr);
  CfgNode* first = CfgAddChild(file->root, u"twin", "t", "1", 1);
  ASSERT_NE(CfgAddChild(file->root, u"twin", "t", "2", 1), nullptr);
  EXPECT_TRUE(CfgDeleteLastChild(file->root));
  EXPECT_EQ(file->root->lastChild, first);
  EXPECT_EQ(file->root->childCount, 2);
  EXPECT_FALSE(CfgDeleteLastChild(first));
  EXPECT_FALSE(CfgDeleteLastChild(nullptr));
}

}  // namespace
}  // namespace ostrel
