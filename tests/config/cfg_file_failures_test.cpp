// Config tree files when the world fails: each allocation, each operation on a file, a full disk, a
// folder that can't be written, a folder that isn't there, a folder in the file's place.
#include "config/cfg_file.h"
#include "config/cfg_file_fixture.h"
#include "support/case_name.h"

#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::CfgLeaf;
using test::CfgTreeText;
using test::kCfgPath;
using test::kNewCfgFile;
using test::kWorkedCfgFile;

class CfgFileFailures : public test::CfgFileTest {
 protected:
  void ExpectOneDebugLine() {
    ASSERT_EQ(debugLines().size(), 1U);
    EXPECT_NE(debugLines().front().find(kCfgPath), std::u16string::npos);
    EXPECT_TRUE(debugLines().front().ends_with(u'\n'));
  }
};

// ---- Opening ------------------------------------------------------------------------------------

TEST_F(CfgFileFailures, AMissingFileInAMissingFolderIsNotOpened) {
  EXPECT_EQ(CfgOpen(u"C:\\nowhere\\settings.dat"), nullptr);
  EXPECT_FALSE(CfgCreate(u"C:\\nowhere\\settings.dat"));
  EXPECT_EQ(Get(u"C:\\nowhere\\settings.dat"), "no file");
}

TEST_F(CfgFileFailures, AMissingFileInAReadOnlyFolderIsNotOpened) {
  world_.platform.files.MakeReadOnly(test::kCfgFolder);
  EXPECT_EQ(CfgOpen(kCfgPath), nullptr);
  EXPECT_FALSE(CfgCreate(kCfgPath));
  EXPECT_EQ(Get(), "no file");
}

TEST_F(CfgFileFailures, AFileThatMayNotBeWrittenIsNotOpened) {
  Put(kWorkedCfgFile);
  world_.platform.files.MakeReadOnly(kCfgPath);
  EXPECT_EQ(CfgOpen(kCfgPath), nullptr);
  EXPECT_FALSE(CfgCreate(kCfgPath));
  EXPECT_EQ(Get(), kWorkedCfgFile);
}

TEST_F(CfgFileFailures, AFolderInTheFilesPlaceIsNotOpened) {
  world_.platform.files.CreateDirectoryW(kCfgPath);
  EXPECT_EQ(CfgOpen(kCfgPath), nullptr);
  EXPECT_FALSE(CfgCreate(kCfgPath));
}

TEST_F(CfgFileFailures, AFileThatIsMadeOnAFullDiskIsEmpty) {
  world_.platform.files.freeBytes = 0;
  const ScopedCfg file(CfgOpen(kCfgPath));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->root, nullptr);
  EXPECT_EQ(Get(), "");
  ExpectOneDebugLine();
}

TEST_F(CfgFileFailures, APathThatAHandleCannotKeepIsRefused) {
  EXPECT_EQ(CfgOpen(nullptr), nullptr);
  EXPECT_EQ(CfgOpen(std::u16string(260, u'p').c_str()), nullptr);
  const ScopedCfg longest(CfgOpen(std::u16string(259, u'p').c_str()));
  EXPECT_NE(longest, nullptr);
}

TEST_F(CfgFileFailures, AChildWithoutATypeIsRefused) {
  const ScopedCfg file(CfgOpen(kCfgPath));
  EXPECT_EQ(CfgAddChild(file->root, u"name", nullptr, nullptr, 0), nullptr);
}

// Saving half a tree would lose what could not be read, so a reading that fails is no end of file.
TEST_F(CfgFileFailures, AFileThatCannotBeReadIsRefused) {
  Put(kWorkedCfgFile);
  faults().FailOperation("ReadFile");
  EXPECT_EQ(CfgOpen(kCfgPath), nullptr);
}

// Half a tree must not be saved over the whole one.
TEST_F(CfgFileFailures, AFileWhoseReadingBreaksOffAtAnyBlockIsRefusedAndLeft) {
  const std::string bytes = CfgLeaf("a", "t", std::string(3000, 'v')) + kWorkedCfgFile;
  const std::size_t reads = bytes.size() / 1024 + 2;  // the last one finds the end
  for (std::size_t n = 1; n <= reads; ++n) {
    Put(bytes);
    faults().FailOperation("ReadFile", n);
    EXPECT_EQ(CfgOpen(kCfgPath), nullptr) << n;
    EXPECT_TRUE(faults().fired()) << n;
    EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U) << n;
    EXPECT_EQ(Get(), bytes) << n;
    faults().Clear();
  }
}

TEST_F(CfgFileFailures, AFileWhoseSizeCannotBeHadIsReadAllTheSame) {
  Put(kWorkedCfgFile);
  faults().FailOperation("GetFileSizeEx");
  const ScopedCfg file(CfgOpen(kCfgPath));
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(Get(), kWorkedCfgFile);
}

TEST_F(CfgFileFailures, ATagThatCannotBeReadFreesAllThatWasRead) {
  Put(kWorkedCfgFile + "<childobjs>");
  EXPECT_EQ(CfgOpen(kCfgPath), nullptr);
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U);
  EXPECT_EQ(world_.platform.files.openFiles(), 0U);
}

TEST_F(CfgFileFailures, EachAllocationOfAnOpeningThatFailsRefusesTheFileAndLeavesIt) {
  std::size_t n = 1;
  for (;; ++n) {
    Put(kWorkedCfgFile);
    faults().FailOperation("HeapAlloc", n);
    CfgHandle* file = CfgOpen(kCfgPath);
    EXPECT_EQ(Get(), kWorkedCfgFile);
    EXPECT_EQ(world_.platform.files.openFiles(), 0U);
    if (!faults().fired()) {
      CfgClose(file);
      break;
    }
    EXPECT_EQ(file, nullptr) << n;
    EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U) << n;
    faults().Clear();
  }
  EXPECT_EQ(n, 1U + 5 + 2 + 1);  // objects, values, handle
}

TEST_F(CfgFileFailures, EachAllocationOfACreationThatFailsMakesNoFileOrAnEmptyOne) {
  std::size_t n = 1;
  for (;; ++n) {
    faults().FailOperation("HeapAlloc", n);
    const bool created = CfgCreate(kCfgPath);
    EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U) << n;
    EXPECT_EQ(created, !faults().fired()) << n;
    if (created) {
      break;
    }
    // The block for the image is the last to be asked for; by then the file has been made.
    EXPECT_EQ(Get(), n < 4 ? "no file" : "") << n;
    faults().Clear();
    world_.platform.files.DeleteFileW(kCfgPath);
  }
  EXPECT_EQ(n, 1U + 4);
  EXPECT_EQ(Get(), kNewCfgFile);
}

TEST_F(CfgFileFailures, EachCallOfAnOpeningThatFailsLeaksNothing) {
  for (const bool exists : {true, false}) {
    for (std::size_t n = 1;; ++n) {
      ASSERT_LT(n, 100U);
      world_.platform.files.DeleteFileW(kCfgPath);
      if (exists) {
        Put(kWorkedCfgFile);
      }
      faults().FailCall(n);
      CfgClose(CfgOpen(kCfgPath));
      const bool fired = faults().fired();
      faults().Clear();
      EXPECT_EQ(world_.Leftovers(), "") << n;
      if (!fired) {
        EXPECT_EQ(Get(), exists ? kWorkedCfgFile : kNewCfgFile);
        break;
      }
    }
  }
}

// ---- Saving -------------------------------------------------------------------------------------

TEST_F(CfgFileFailures, SavingNothingFails) {
  EXPECT_FALSE(CfgSave(nullptr));
}

TEST_F(CfgFileFailures, SavingAFileOfNoObjectsFailsAndLeavesIt) {
  const ScopedCfg file = Read("no tag");
  ASSERT_NE(file, nullptr);
  EXPECT_FALSE(CfgSave(file.get()));
  EXPECT_EQ(Get(), "no tag");
}

TEST_F(CfgFileFailures, SavingWithoutMemoryFailsAndLeavesTheFile) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  faults().FailOperation("HeapAlloc");
  EXPECT_FALSE(CfgSave(file.get()));
  EXPECT_EQ(Get(), kWorkedCfgFile);
}

struct UnwritableFile {
  const char* name;
  std::function<void(test::TestWorld&)> spoil;
  std::string left;
};
std::ostream& operator<<(std::ostream& out, const UnwritableFile& row) {
  return out << row.name;
}
class CfgSaveFailures : public CfgFileFailures,
                        public testing::WithParamInterface<UnwritableFile> {};

INSTANTIATE_TEST_SUITE_P(
    Files, CfgSaveFailures,
    testing::Values(
        UnwritableFile{
            "CannotBeOpened",
            [](test::TestWorld& world) { world.platform.faults.FailOperation("CreateFileW"); },
            kWorkedCfgFile},
        UnwritableFile{
            "HasBecomeReadOnly",
            [](test::TestWorld& world) { world.platform.files.MakeReadOnly(test::kCfgFolder); },
            kWorkedCfgFile},
        UnwritableFile{"HasBecomeAFolder",
                       [](test::TestWorld& world) {
                         world.platform.files.DeleteFileW(kCfgPath);
                         world.platform.files.CreateDirectoryW(kCfgPath);
                       },
                       "no file"},
        // What was in the file is gone the moment it is opened.
        UnwritableFile{
            "CannotBeWritten",
            [](test::TestWorld& world) { world.platform.faults.FailOperation("WriteFile"); }, ""},
        UnwritableFile{"IsOnAFullDisk",
                       [](test::TestWorld& world) { world.platform.files.freeBytes = 0; }, ""},
        UnwritableFile{"IsOnAnAlmostFullDisk",
                       [](test::TestWorld& world) { world.platform.files.freeBytes = 100; },
                       kWorkedCfgFile.substr(0, 100)}),
    test::CaseName());

TEST_P(CfgSaveFailures, CountAsSavedBehindADebugLine) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  ASSERT_NE(file, nullptr);
  GetParam().spoil(world_);
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(Get(), GetParam().left);
  ExpectOneDebugLine();
}

TEST_P(CfgSaveFailures, LeaveTheTreeToBeSavedAgain) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  ASSERT_NE(file, nullptr);
  const std::vector<std::string> before = CfgTreeText(file.get());
  GetParam().spoil(world_);
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(CfgTreeText(file.get()), before);
}

TEST_F(CfgFileFailures, WhatACutSaveLeavesBehindCanBeOpened) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  for (std::size_t room = 0; room <= kWorkedCfgFile.size(); ++room) {
    world_.platform.files.freeBytes = room;
    EXPECT_TRUE(CfgSave(file.get()));
    const ScopedCfg again(CfgOpen(kCfgPath));
    EXPECT_NE(again, nullptr) << room;
  }
  EXPECT_EQ(Get(), kWorkedCfgFile);
}

// ---- Changing -----------------------------------------------------------------------------------

struct Change {
  const char* name;
  std::function<bool(CfgNode*)> change;
  std::size_t allocations;
};
std::ostream& operator<<(std::ostream& out, const Change& row) {
  return out << row.name;
}
class CfgChangeFailures : public CfgFileFailures, public testing::WithParamInterface<Change> {};

const std::vector<std::byte> kBytes(kCfgReplacedValueBytes, std::byte{'v'});

INSTANTIATE_TEST_SUITE_P(
    Changes, CfgChangeFailures,
    testing::Values(
        Change{"AddWithAValue",
               [](CfgNode* root) {
                 return CfgAddChild(root, u"new", "t", kBytes.data(), 10) != nullptr;
               },
               2},
        Change{"AddWithoutAValue",
               [](CfgNode* root) { return CfgAddChild(root, u"new", "t", nullptr, 0) != nullptr; },
               1},
        Change{"Replace",
               [](CfgNode* root) {
                 return CfgReplaceNode(root, u"new", u"Card", kBytes.data()) != nullptr;
               },
               1},
        Change{
            "ReplaceWithoutAValue",
            [](CfgNode* root) { return CfgReplaceNode(root, u"new", u"Card", nullptr) != nullptr; },
            0},
        Change{"SetValue", [](CfgNode* root) { return CfgSetValue(*root->firstChild, kBytes); }, 1},
        Change{"Delete", [](CfgNode* root) { return CfgDeleteChild(root, u"UIParam"); }, 0}),
    test::CaseName());

TEST_P(CfgChangeFailures, ChangeNothingWithoutMemoryAndLeakNothing) {
  const ScopedCfg file = Read(kWorkedCfgFile);
  ASSERT_NE(file, nullptr);
  const std::vector<std::string> before = CfgTreeText(file.get());
  const std::size_t blocks = world_.platform.memory.liveBlocks();
  for (std::size_t n = 1; n <= GetParam().allocations; ++n) {
    faults().FailOperation("HeapAlloc", n);
    EXPECT_FALSE(GetParam().change(file->root)) << n;
    EXPECT_TRUE(faults().fired()) << n;
    EXPECT_EQ(CfgTreeText(file.get()), before) << n;
    EXPECT_EQ(world_.platform.memory.liveBlocks(), blocks) << n;
    faults().Clear();
  }
  faults().FailOperation("HeapAlloc", GetParam().allocations + 1);
  EXPECT_TRUE(GetParam().change(file->root));
  EXPECT_FALSE(faults().fired());
  EXPECT_NE(CfgTreeText(file.get()), before);
}

}  // namespace
}  // namespace ostrel
