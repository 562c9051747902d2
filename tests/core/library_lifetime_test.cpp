// The library's own life: threads and processes that come and go, and the temporary-file slot.
#include "core/library_lifetime.h"

#include "core/sheet_frame.h"
#include "core/text.h"
#include "core/ui_context.h"
#include "driver/page_tables.h"
#include "pages/page_links.h"
#include "support/case_name.h"
#include "support/sheet_scene.h"

#include <functional>
#include <gtest/gtest.h>

namespace ostrel {
namespace {

constexpr char16_t kTemporaryPath[] = u"C:\\temp\\page.tmp";

void HandOverTemporaryFile(test::TestWorld& world) {
  world.platform.files.Put(kTemporaryPath, {});
  CopyText(world.process.TemporaryFileSlot.path, kTemporaryPath);
  world.process.TemporaryFileSlot.set = true;
}

bool TemporaryFileIsGone(test::TestWorld& world) {
  return world.platform.files.Get(kTemporaryPath) == nullptr &&
         !world.process.TemporaryFileSlot.set;
}

TEST(LibraryLifetime, CanBeUnloadedWhileNobodyCountsAsUser) {
  test::TestWorld world;
  EXPECT_TRUE(CanUnloadNow());
  world.process.ObjectsInUse = 1;
  EXPECT_FALSE(CanUnloadNow());
  world.process.ObjectsInUse = 0;
  world.process.LocksInUse = 1;
  EXPECT_FALSE(CanUnloadNow());
}

TEST(LibraryLifetime, ProcessThatLeavesFreesLanguageAndActivationContext) {
  test::TestWorld world;
  world.process.CurrentLanguageModule =
      world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  world.process.PageActivationContext =
      world.platform.system.CreateActCtxW(world.process.LibraryModule, 2);
  DetachProcess(false);
  EXPECT_EQ(world.process.CurrentLanguageModule, nullptr);
  EXPECT_EQ(world.platform.modules.loadsOf(test::kEnglishLibraryPath), 0U);
  EXPECT_EQ(world.process.PageActivationContext, ActivationContext::kNone);
  EXPECT_EQ(world.platform.system.liveContexts(), 0U);
}

TEST(LibraryLifetime, ProcessThatLeavesWithNothingMadeFreesNothing) {
  test::TestWorld world;
  const std::size_t loads = world.platform.modules.loads();
  DetachProcess(false);
  EXPECT_EQ(world.platform.modules.loads(), loads);
}

TEST(LibraryLifetime, UnloadedLibraryFreesWhatItKeptToTheEnd) {
  for (const bool unloading : {false, true}) {
    test::TestWorld world;

    const PrinterHandle printer = world.OpenPrinter();
    FreeUIContext(CreateUIContext(printer, nullptr));
    world.platform.print.ClosePrinter(printer);
    ASSERT_NE(GetPageState<PageLinks>(PageSlot::kWatermarkEditor), nullptr);
    ASSERT_EQ(world.platform.memory.liveBlocks(), 2U);
    DetachProcess(unloading);
    EXPECT_EQ(world.platform.memory.liveBlocks(), unloading ? 0U : 2U);
    EXPECT_EQ(world.process.DefaultContextCopy == nullptr, unloading);
  }
}

TEST(TemporaryFileSlot, IsEmptiedWhenAThreadBegins) {
  test::TestWorld world;
  HandOverTemporaryFile(world);
  AttachThread();
  EXPECT_FALSE(world.process.TemporaryFileSlot.set);
  EXPECT_EQ(world.process.TemporaryFileSlot.path[0], u'\0');
  EXPECT_NE(world.platform.files.Get(kTemporaryPath), nullptr);
}

TEST(TemporaryFileSlot, LosesItsFileWhenAThreadEnds) {
  test::TestWorld world;
  HandOverTemporaryFile(world);
  DetachThread();
  EXPECT_TRUE(TemporaryFileIsGone(world));
}

TEST(TemporaryFileSlot, WithoutTheFlagKeepsTheFile) {
  test::TestWorld world;
  HandOverTemporaryFile(world);
  world.process.TemporaryFileSlot.set = false;
  DetachThread();
  EXPECT_NE(world.platform.files.Get(kTemporaryPath), nullptr);
}

TEST(TemporaryFileSlot, IsClearedWhenTheFileCanNotBeDeleted) {
  test::TestWorld world;
  HandOverTemporaryFile(world);
  world.platform.faults.FailOperation("DeleteFileW");
  DetachThread();
  EXPECT_FALSE(world.process.TemporaryFileSlot.set);
}

struct SheetCall {
  const char* name;
  std::function<void(test::SheetScene&)> call;
  bool deletes;
};

class TemporaryFileAtSheet : public testing::TestWithParam<SheetCall> {};

INSTANTIATE_TEST_SUITE_P(
    Calls, TemporaryFileAtSheet,
    testing::Values(
        SheetCall{"DocumentInit", [](test::SheetScene& scene) { scene.OpenDocument(); }, true},
        SheetCall{"DocumentOther", [](test::SheetScene& scene) { scene.CallDocument(9, 0); }, true},
        SheetCall{"DocumentDestroyWithoutContext",
                  [](test::SheetScene& scene) { scene.CallDocument(kReasonDestroy, 0); }, true},
        SheetCall{"DocumentWithoutASheet",
                  [](test::SheetScene& scene) {
                    DrvDocumentPropertySheets(
                        nullptr, reinterpret_cast<std::intptr_t>(&scene.document), kDocumentPages);
                  },
                  true},
        SheetCall{"DeviceDestroyWithoutContext",
                  [](test::SheetScene& scene) { scene.CallDevice(kReasonDestroy, 0); }, true},
        SheetCall{"DeviceInit", [](test::SheetScene& scene) { scene.OpenDevice(); }, false},
        SheetCall{"DeviceOther", [](test::SheetScene& scene) { scene.CallDevice(9, 0); }, false}),
    test::CaseName());

TEST_P(TemporaryFileAtSheet, IsDeletedAtTheEndOfTheseCallsAlone) {
  test::SheetScene scene(std::vector<std::uint32_t>{});
  HandOverTemporaryFile(scene.world);
  GetParam().call(scene);
  EXPECT_EQ(TemporaryFileIsGone(scene.world), GetParam().deletes);
}

TEST(TemporaryFileSlot, LosesItsFileWhenASheetIsDestroyed) {
  for (const bool deviceSheet : {false, true}) {
    test::SheetScene scene({111, 651});
    ASSERT_EQ(deviceSheet ? scene.OpenDevice() : scene.OpenDocument(), 1);
    HandOverTemporaryFile(scene.world);
    if (deviceSheet) {
      scene.CallDevice(kReasonDestroy, 0);
    } else {
      scene.CallDocument(kReasonDestroy, 0);
    }
    EXPECT_TRUE(TemporaryFileIsGone(scene.world)) << deviceSheet;
  }
}

}  // namespace
}  // namespace ostrel
