// Real files behind the lists, under the suite that all platforms pass, and config tree files on
// them.
#include "support/disk_files.h"

#include "config/cfg_file_fixture.h"
#include "conformance/platform_conformance.h"
#include "support/test_world.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace ostrel {
namespace {

class DiskWorld {
 public:
  DiskWorld() { world_.process.platform = &lists; }

  std::string BytesAt(const char16_t* path) const {
    std::ifstream file(files.PlaceOf(path), std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "no file";
  }

  test::TemporaryFolder folder;
  test::TestWorld world_;
  test::DiskFiles files{folder.path(), world_.platform.debug};
  Platform lists{world_.platform.print,    world_.platform.locale,
                 world_.platform.modules,  files,
                 world_.platform.registry, world_.platform.security,
                 world_.platform.shell,    world_.platform.windows,
                 world_.platform.graphics, world_.platform.system,
                 world_.platform.memory,   world_.platform.debug};
};

class DiskHost {
 public:
  Platform& platform() { return world_.lists; }
  std::u16string printerName() { return test::kPrinterName; }
  std::u16string driverName() { return test::kDriverName; }
  std::u16string languageLibrary() { return test::kEnglishLibraryPath; }
  std::u16string newFile() { return u"conformance.bin"; }
  std::u16string newFolder() { return u"conformance"; }

 private:
  DiskWorld world_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Disk, PlatformConformance, DiskHost);

class DiskFilesTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(disk_.files.openFiles(), 0U);
    EXPECT_EQ(disk_.world_.Leftovers(), "");
  }
  std::uint32_t lastError() { return disk_.world_.platform.debug.GetLastError(); }

  DiskWorld disk_;
};

TEST_F(DiskFilesTest, LieBelowTheRootWithSlashesAndInUtf8) {
  EXPECT_EQ(disk_.files.PlaceOf(u"C:\\a\\\x00E9\xD83D\xDDA8.dat"),
            disk_.folder.path().string() + "/C:/a/\xC3\xA9\xF0\x9F\x96\xA8.dat");
}

TEST_F(DiskFilesTest, TellFilesFromFoldersAndFromNothing) {
  ASSERT_TRUE(disk_.files.CreateDirectoryW(u"C:"));
  EXPECT_FALSE(disk_.files.CreateDirectoryW(u"C:"));
  EXPECT_EQ(lastError(), kErrorAlreadyExists);
  EXPECT_EQ(disk_.files.GetFileAttributesW(u"C:"), 0x10U);
  EXPECT_EQ(disk_.files.GetFileAttributesW(u"C:\\a"), kInvalidFileAttributes);
  EXPECT_EQ(lastError(), kErrorFileNotFound);
  EXPECT_EQ(disk_.files.GetFileAttributesW(u"D:\\a"), kInvalidFileAttributes);
  EXPECT_EQ(lastError(), kErrorPathNotFound);
  for (const Files::Access access :
       {Files::Access::kOpenExistingForReading, Files::Access::kOpenExistingForUpdate,
        Files::Access::kCreateAlwaysForWriting, Files::Access::kOpenAlwaysForAppending}) {
    EXPECT_EQ(disk_.files.CreateFileW(u"C:", access), nullptr);
    EXPECT_EQ(lastError(), kErrorAccessDenied);
  }
  EXPECT_TRUE(disk_.files.CloseHandle(
      disk_.files.CreateFileW(u"C:\\a", Files::Access::kOpenAlwaysForAppending)));
  EXPECT_EQ(disk_.files.GetFileAttributesW(u"C:\\a"), 0x80U);
  EXPECT_TRUE(disk_.files.FindFirstFileW(u"C:\\a"));
  EXPECT_FALSE(disk_.files.FindFirstFileW(u"C:\\b"));
}

TEST_F(DiskFilesTest, HoldTheSameBytesAsInMemory) {
  ScopedCfg file(CfgOpen(u"settings.dat"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(disk_.BytesAt(u"settings.dat"), test::kNewCfgFile);
  EXPECT_NE(CfgAddChild(file->root, u"UIParam", "null", nullptr, 0), nullptr);
  EXPECT_TRUE(CfgSave(file.get()));
  const ScopedCfg again(CfgOpen(u"settings.dat"));
  EXPECT_EQ(test::CfgTreeText(again.get()), test::CfgTreeText(file.get()));
}

TEST_F(DiskFilesTest, OfNoFolderAreNotOpened) {
  EXPECT_EQ(CfgOpen(u"missing\\settings.dat"), nullptr);
  ASSERT_TRUE(disk_.files.CreateDirectoryW(u"settings.dat"));
  EXPECT_EQ(CfgOpen(u"settings.dat"), nullptr);
}

TEST_F(DiskFilesTest, OnAFullDiskCountAsSavedBehindADebugLine) {
  const ScopedCfg file(CfgOpen(u"settings.dat"));
  ASSERT_NE(file, nullptr);
  ASSERT_TRUE(disk_.files.DeleteFileW(u"settings.dat"));
  std::filesystem::create_symlink("/dev/full", disk_.files.PlaceOf(u"settings.dat"));
  EXPECT_TRUE(CfgSave(file.get()));
  EXPECT_EQ(lastError(), kErrorDiskFull);
  EXPECT_EQ(disk_.world_.platform.debug.lines.size(), 1U);
}

TEST_F(DiskFilesTest, OfAHundredMegabytesAreRead) {
  constexpr std::size_t kBytes = 100U << 20;
  {
    std::ofstream made(disk_.files.PlaceOf(u"settings.dat"), std::ios::binary);
    made << test::CfgLeaf("great", "binary", std::string(kBytes, '<'));
  }
  const ScopedCfg file(CfgOpen(u"settings.dat"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->root->storedBytes, kBytes);
  EXPECT_EQ(file->root->value[kBytes - 1], std::byte{'<'});
}

}  // namespace
}  // namespace ostrel
