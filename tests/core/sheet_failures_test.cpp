// The entries of the sheets and of printer events, walked through all failures of the platform: the
// first call fails, then the second, and so on until a run comes through untouched. A sheet opens
// whole or not at all, and nothing is left behind.
#include "core/printer_event.h"
#include "support/case_name.h"
#include "support/sheet_scene.h"

#include <gtest/gtest.h>
#include <vector>

namespace ostrel {
namespace {

constexpr std::size_t kMostCalls = 1000;

// What may stay loaded: the bitmaps of each context that was made, and the language library that
// the process holds.
std::size_t LoadsThatStay(test::TestWorld& world) {
  return world.platform.modules.loadsOf(test::kBitmapLibraryPath) +
         (world.process.CurrentLanguageModule == nullptr ? 0U : 1U);
}

void ExpectNothingLeft(test::SheetScene& scene, std::size_t failing) {
  scene.world.platform.faults.Clear();
  scene.world.platform.print.ClosePrinter(scene.document.hPrinter);
  EXPECT_EQ(scene.world.platform.modules.loadsOf(test::kCompanionPath), 0U) << failing;
  EXPECT_EQ(scene.world.Leftovers(LoadsThatStay(scene.world)), "") << failing;
}

struct SheetKind {
  const char* name;
  bool isDevice;
};

class SheetFailures : public testing::TestWithParam<SheetKind> {};

INSTANTIATE_TEST_SUITE_P(Sheets, SheetFailures,
                         testing::Values(SheetKind{"Document", false}, SheetKind{"Printer", true}),
                         test::CaseName());

TEST_P(SheetFailures, SheetOpensWholeOrLeavesNothing) {
  std::size_t opened = 0;
  std::size_t refused = 0;
  for (std::size_t n = 1; n < kMostCalls; ++n) {
    test::SheetScene scene(std::vector<std::uint32_t>{111, 693, 651, 1512});
    scene.companion.userData = 0xBAD0;
    scene.world.platform.faults.FailCall(n);
    const std::int32_t answer = GetParam().isDevice ? scene.OpenDevice() : scene.OpenDocument();
    const bool fired = scene.world.platform.faults.fired();
    if (answer == 1) {
      ++opened;
      ASSERT_NE(scene.context(), nullptr) << n;
      EXPECT_FALSE(scene.Pages().empty()) << n;
      EXPECT_EQ(GetParam().isDevice ? scene.CallDevice(kReasonDestroy, 0)
                                    : scene.CallDocument(kReasonDestroy, 0),
                1)
          << n;
    } else {
      ++refused;
      EXPECT_EQ(answer, -1) << n;
    }
    EXPECT_EQ(scene.info.UserData, 0U) << n;
    ExpectNothingLeft(scene, n);
    if (!fired) {
      EXPECT_GT(opened, 5U);
      EXPECT_GT(refused, 3U);
      return;
    }
  }
  FAIL() << "no end of calls";
}

struct EventKind {
  const char* name;
  std::int32_t event;
};

TokenHandle RevertToPrinterSelf() {
  return nullptr;
}
std::int32_t ImpersonatePrinterClient(TokenHandle /*client*/) {
  return 1;
}

class PrinterEventFailures : public testing::TestWithParam<EventKind> {};

INSTANTIATE_TEST_SUITE_P(Events, PrinterEventFailures,
                         testing::Values(EventKind{"Initialize", 3}, EventKind{"CacheRefresh", 5}),
                         test::CaseName());

TEST_P(PrinterEventFailures, RecordIsStoredWholeOrNotAtAll) {
  constexpr char16_t kSpooler[] = u"spoolss.dll";
  for (std::size_t n = 1; n < kMostCalls; ++n) {
    test::TestWorld world;
    headless::HeadlessModules& modules = world.platform.modules;
    modules.Install(kSpooler);
    modules.Export(kSpooler, "RevertToPrinterSelf",
                   reinterpret_cast<ExportedFunction>(&RevertToPrinterSelf));
    modules.Export(kSpooler, "ImpersonatePrinterClient",
                   reinterpret_cast<ExportedFunction>(&ImpersonatePrinterClient));
    world.platform.faults.FailCall(n);
    DrvPrinterEvent(test::kPrinterName, GetParam().event);
    const bool fired = world.platform.faults.fired();
    const auto stored = world.printer->data.find(u"PrivateDevmodeDataada");
    if (stored != world.printer->data.end()) {
      EXPECT_EQ(stored->second.bytes.size(), 7896U) << n;
    }
    EXPECT_TRUE(world.printer->devmode.empty() || world.printer->devmode.size() == 7896) << n;
    EXPECT_EQ(modules.loadsOf(kSpooler), 0U) << n;
    world.platform.faults.Clear();
    EXPECT_EQ(world.Leftovers(LoadsThatStay(world)), "") << n;
    if (!fired) {
      EXPECT_EQ(world.printer->devmode.size(), 7896U);
      return;
    }
  }
  FAIL() << "no end of calls";
}

}  // namespace
}  // namespace ostrel
