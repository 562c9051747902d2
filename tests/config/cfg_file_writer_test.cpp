// Writing config tree files: exact bytes, what is left out, the order of calls and the block that a
// tree is written through.
#include "config/cfg_file.h"
#include "config/cfg_file_fixture.h"
#include "support/case_name.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using namespace std::string_literals;
using test::CfgContainer;
using test::CfgLeaf;
using test::CfgTag;
using test::CfgTreeText;
using test::kCfgPath;
using test::kNewCfgFile;
using test::kWorkedCfgFile;
using test::RecordingMemory;

class CfgSaveTest : public test::CfgFileTest {};
class CfgCreateTest : public test::CfgFileTest {};

const std::string kEnd = test::kCfgEnd;

// ---- Exact bytes --------------------------------------------------------------------------------

TEST_F(CfgSaveTest, WritesTheWorkedExampleBackAsItWas) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  Put("something else");
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(Get(), kWorkedCfgFile);
  EXPECT_TRUE(debugLines().empty());
}

TEST_F(CfgCreateTest, WritesTheTreeOfANewFile) {
  EXPECT_TRUE(CfgCreate(kCfgPath));
  EXPECT_EQ(Get(), kNewCfgFile);
}

TEST_F(CfgCreateTest, TakesThePlaceOfAnExistingFile) {
  Put(kWorkedCfgFile);
  EXPECT_TRUE(CfgCreate(kCfgPath));
  EXPECT_EQ(Get(), kNewCfgFile);
}

TEST_F(CfgCreateTest, OpensTheFileForAppendingBeforeItIsWritten) {
  faults().StartTrace();
  EXPECT_TRUE(CfgCreate(kCfgPath));
  EXPECT_EQ(faults().trace(),
            (std::vector<std::string>{"HeapAlloc", "HeapAlloc", "HeapAlloc", "CreateFileW",
                                      "HeapAlloc", "CreateFileW", "WriteFile", "GetFileSizeEx"}));
}

TEST_F(CfgSaveTest, WritesTheWholeFileInOneWrite) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  faults().StartTrace();
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(faults().trace(),
            (std::vector<std::string>{"HeapAlloc", "CreateFileW", "WriteFile", "GetFileSizeEx"}));
}

struct Writing {
  const char* name;
  std::string read;
  std::string written;
};
std::ostream& operator<<(std::ostream& out, const Writing& row) {
  return out << testing::PrintToString(row.read);
}

class CfgSaveWrites : public test::CfgFileTest, public testing::WithParamInterface<Writing> {};

std::string Repeat(std::size_t count, char unit) {
  return std::string(count, unit);
}

INSTANTIATE_TEST_SUITE_P(
    Trees, CfgSaveWrites,
    testing::Values(
        Writing{"ALeafWithoutAValue", CfgTag("a", "t", "0", "0"),
                CfgTag("a", "t", "0", "0") + "\n" + kEnd},
        Writing{"ALeafWithAValue", CfgTag("a", "t", "2", "0") + "\n\n",
                CfgTag("a", "t", "2", "0") + "\n\n" + kEnd},
        Writing{"ANegativeLength", CfgTag("a", "t", "-5", "0"),
                CfgTag("a", "t", "-5", "0") + "\n" + kEnd},
        Writing{"ANegativeCount", CfgTag("a", "t", "1", "-3") + "v",
                CfgTag("a", "t", "1", "-3") + "v" + kEnd},
        Writing{"NumbersInPlainDecimal", CfgTag("a", "t", " +003x", "x") + "abc",
                CfgTag("a", "t", "3", "0") + "abc" + kEnd},
        Writing{"TheWordsOfTheFormat", "<objects:a,typed:t,size:0,childobjs!:0>",
                CfgTag("a", "t", "0", "0") + "\n" + kEnd},
        Writing{"NamesAndTypesUnchanged", CfgLeaf("a,b:c>d<", ",,,", "v"),
                CfgLeaf("a,b:c>d<", ",,,", "v")},
        Writing{"ACutNameOf127Bytes", CfgLeaf(Repeat(128, 'n'), "t", ""),
                CfgLeaf(Repeat(127, 'n'), "t", "")},
        Writing{"NoBytesBetweenTags",
                " one " + CfgTag("r", "null", "0", "1") + "\r\n two" + CfgLeaf("a", "t", "v") +
                    "three\n" + kEnd + "four",
                CfgContainer("r", {CfgLeaf("a", "t", "v")})},
        Writing{"MissingCloseTags", CfgTag("r", "null", "0", "1") + CfgTag("a", "t", "0", "0"),
                CfgContainer("r", {CfgLeaf("a", "t", "")})},
        Writing{"TheAnnouncedCountAndNotTheReal",
                CfgTag("r", "null", "0", "9") + CfgLeaf("a", "t", "v") + kEnd,
                CfgTag("r", "null", "0", "9") + "\n" + CfgLeaf("a", "t", "v") + kEnd},
        Writing{"AnEmptyContainer", CfgTag("r", "null", "0", "3") + "\n" + kEnd,
                CfgTag("r", "null", "0", "3") + "\n" + kEnd},
        Writing{"ALeafWithoutTheObjectsInIt",
                CfgTag("r", "null", "0", "1") + CfgTag("a", "t", "1", "0") + "v" +
                    CfgLeaf("in", "t", "w") + kEnd + kEnd,
                CfgContainer("r", {CfgLeaf("a", "t", "v")})},
        Writing{"ASecondTopLevelObjectInsideTheRoot",
                CfgContainer("r", {CfgLeaf("a", "t", "")}) + CfgLeaf("b", "t", "v"),
                CfgTag("r", "null", "0", "1") + "\n" + CfgLeaf("a", "t", "") +
                    CfgLeaf("b", "t", "v") + kEnd},
        // The tag still announces the value that is left out. A reader takes what follows for it.
        Writing{"AContainerWithoutItsValue",
                CfgTag("r", "t", "4", "1") + "abcd" + CfgLeaf("a", "t", "v") + kEnd,
                CfgTag("r", "t", "4", "1") + CfgLeaf("a", "t", "v") + kEnd},
        Writing{"ACutValueFilledWithZeros", CfgTag("a", "t", "9", "0") + "abc",
                CfgTag("a", "t", "9", "0") + "abc\0\0\0\0\0\0"s + kEnd}),
    test::CaseName());

TEST_P(CfgSaveWrites, Exactly) {
  const ScopedCfg file = Read(GetParam().read);
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(Get(), GetParam().written);
}

TEST_F(CfgSaveTest, LeavesAContainerWithALengthToBeMisread) {
  const ScopedCfg first = Read(CfgTag("r", "t", "4", "1") + "abcd" + CfgLeaf("a", "t", "v") + kEnd);
  EXPECT_TRUE(CfgSave(first.get()));
  const ScopedCfg second(CfgOpen(kCfgPath));
  EXPECT_EQ(CfgTreeText(second.get()), std::vector<std::string>{"r:t:4:1=<obj"});
}

// ---- Tags that don't fit ------------------------------------------------------------------------

// A container with one leaf whose written tag, line feed included, is so long.
CfgNode* AddChildOfTagBytes(CfgNode* parent, std::size_t bytes, bool withValue) {
  const std::size_t fixed = withValue ? 33 : 34;  // with a value there is no line feed
  const std::size_t name = std::min<std::size_t>(bytes - fixed, 127);
  const std::u16string text(name, u'n');
  const std::string type(bytes - fixed - name, 't');
  return CfgAddChild(parent, text.c_str(), type.c_str(), "v", withValue ? 1 : 0);
}

TEST_F(CfgSaveTest, WritesTheLongestTagThatFits) {
  const ScopedCfg file = Read(CfgTag("r", "null", "0", "0"));
  ASSERT_NE(file, nullptr);
  EXPECT_NE(AddChildOfTagBytes(file->root, 255, false), nullptr);
  EXPECT_NE(AddChildOfTagBytes(file->root, 255, true), nullptr);
  EXPECT_EQ(AddChildOfTagBytes(file->root, 256, false), nullptr);
  EXPECT_EQ(AddChildOfTagBytes(file->root, 256, true), nullptr);
  const std::vector<std::string> tree = CfgTreeText(file.get());
  EXPECT_EQ(tree.size(), 3U);
  EXPECT_TRUE(CfgSave(file.get()));
  const ScopedCfg again(CfgOpen(kCfgPath));
  EXPECT_EQ(CfgTreeText(again.get()), tree);
}

TEST_F(CfgSaveTest, LeavesOutAnObjectWhoseTagDoesNotFitWithAllThatIsInIt) {
  // Read with short words, the tag is longer when it is written.
  const std::string great = "<object:" + Repeat(127, 'n') + ",type:" + Repeat(96, 't') +
                            ",:0,childobjs:1>" + CfgLeaf("in", "t", "v") + kEnd;
  const ScopedCfg file = Read(CfgTag("r", "null", "0", "3") + "\n" + CfgLeaf("a", "t", "1") +
                              great + CfgLeaf("b", "t", "2") + kEnd);
  ASSERT_NE(file, nullptr);
  ASSERT_EQ(test::CfgChildren(file->root).size(), 3U);
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(Get(), CfgTag("r", "null", "0", "3") + "\n" + CfgLeaf("a", "t", "1") +
                       CfgLeaf("b", "t", "2") + kEnd);
}

TEST_F(CfgSaveTest, WritesAnEmptyFileWhenTheRootsTagDoesNotFit) {
  const ScopedCfg file = Read("<object:" + Repeat(127, 'n') + ",type:" + Repeat(96, 't') +
                              ",:0,childobjs:1>" + CfgLeaf("in", "t", "v") + kEnd);
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(Get(), "");
}

// ---- The block ----------------------------------------------------------------------------------

struct BlockRow {
  const char* name;
  std::string file;
  std::size_t blockBytes;
};
std::ostream& operator<<(std::ostream& out, const BlockRow& row) {
  return out << testing::PrintToString(row.file);
}

class CfgSaveBlock : public test::CfgFileTest, public testing::WithParamInterface<BlockRow> {};

INSTANTIATE_TEST_SUITE_P(
    Sizes, CfgSaveBlock,
    testing::Values(BlockRow{"OneObject", CfgLeaf("a", "t", ""), 1024},
                    BlockRow{"OneObjectWith511Bytes", CfgLeaf("a", "t", Repeat(511, 'v')), 1024},
                    BlockRow{"OneObjectWith512Bytes", CfgLeaf("a", "t", Repeat(512, 'v')), 2048},
                    BlockRow{"TwoObjects", CfgContainer("r", {CfgLeaf("a", "t", "")}), 2048},
                    BlockRow{"NegativeLength", CfgTag("a", "t", "-1000", "0"), 1024},
                    BlockRow{"AValueThatIsNotWritten",
                             CfgTag("r", "t", "600", "1") + Repeat(600, 'v'), 2048},
                    BlockRow{"TheWorkedExample", kWorkedCfgFile, 3072}),
    test::CaseName());

TEST_P(CfgSaveBlock, HasHalfAKilobyteForEachObjectAndItsValueInWholeKilobytes) {
  const ScopedCfg file = Read(GetParam().file);
  RecordingMemory memory(world_);
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(memory.sizes, std::vector<std::size_t>{GetParam().blockBytes});
}

// ---- Great trees --------------------------------------------------------------------------------

TEST_F(CfgSaveTest, RefusesATreeThatAnnouncesFarMoreThanItHolds) {
  const std::string bytes = CfgTag("a", "t", "2147483647", "0") + "few bytes";
  const ScopedCfg file = Read(bytes);
  ASSERT_NE(file, nullptr);
  RecordingMemory memory(world_);
  EXPECT_FALSE(CfgSave(file.get()));
  EXPECT_EQ(memory.sizes, std::vector<std::size_t>{});
  EXPECT_EQ(Get(), bytes);
}

TEST_F(CfgSaveTest, RefusesManyObjectsThatTogetherAnnounceFarMoreThanTheyHold) {
  const ScopedCfg file = Read(CfgTag("r", "t", "40000000", "1"));
  ASSERT_NE(file, nullptr);
  CfgNode* child = CfgAddChild(file->root, u"a", "t", nullptr, 0);
  ASSERT_NE(child, nullptr);
  child->len = 40000000;
  EXPECT_TRUE(CfgSave(file.get()));
  file->root->len = 40000000;
  EXPECT_FALSE(CfgSave(file.get()));
}

TEST_F(CfgSaveTest, WritesTwoHundredThousandNestedObjects) {
  constexpr std::size_t kDepth = 200000;
  std::string bytes;
  for (std::size_t i = 0; i < kDepth; ++i) {
    bytes += CfgTag("d", "t", "0", "1") + "\n";
  }
  for (std::size_t i = 0; i < kDepth; ++i) {
    bytes += kEnd;
  }
  const ScopedCfg file = Read(bytes);
  ASSERT_NE(file, nullptr);
  Put("");
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(Get(), bytes);
}

TEST_F(CfgSaveTest, WritesAValueOfAHundredMegabytes) {
  constexpr std::size_t kBytes = 100U << 20;
  const std::string bytes = CfgLeaf("a", "t", std::string(kBytes, '<'));
  const ScopedCfg file = Read(bytes);
  ASSERT_NE(file, nullptr);
  Put("");
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(Get() == bytes, true);
}

}  // namespace
}  // namespace ostrel
