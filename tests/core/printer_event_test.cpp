// What the driver stores when the spooler tells it of a printer, and what it does when it is
// removed.
#include "core/printer_event.h"

#include "config/setting_stores.h"
#include "core/printer_store.h"
#include "core/settings_record.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char16_t kSpooler[] = u"spoolss.dll";
constexpr char16_t kSizeName[] = u"PrivateDevmodeDataSizeada";
constexpr char16_t kDataName[] = u"PrivateDevmodeDataada";

// The spooler's two functions, and what was done between them. They take no state of the test's
// along, so there is one set at a time.
struct Spooler {
  std::vector<std::string> calls;
  const test::TestWorld* world = nullptr;
  TokenHandle given = nullptr;
} spooler;

const auto kClient = reinterpret_cast<TokenHandle>(std::uintptr_t{0xC11E});

// What the call found: printers that are open, and whether the record was stored for the user and
// for all.
std::string Found(const char* call) {
  const headless::HeadlessPrinter& printer = *spooler.world->printer;
  return std::string(call) + " with " +
         std::to_string(spooler.world->platform.print.openPrinters()) + " open, " +
         (printer.data.contains(kDataName) && !printer.devmode.empty() ? "stored" : "not stored");
}

TokenHandle RevertToPrinterSelf() {
  spooler.calls.push_back(Found("revert"));
  return kClient;
}

std::int32_t ImpersonatePrinterClient(TokenHandle client) {
  spooler.calls.push_back(Found("impersonate"));
  spooler.given = client;
  return 1;
}

class PrinterEvent : public testing::Test {
 protected:
  PrinterEvent() {
    spooler = {};
    spooler.world = &world_;
  }

  void InstallSpooler(bool reverts = true, bool impersonates = true) {
    headless::HeadlessModules& modules = world_.platform.modules;
    modules.Install(kSpooler);
    if (reverts) {
      modules.Export(kSpooler, "RevertToPrinterSelf",
                     reinterpret_cast<ExportedFunction>(&RevertToPrinterSelf));
    }
    if (impersonates) {
      modules.Export(kSpooler, "ImpersonatePrinterClient",
                     reinterpret_cast<ExportedFunction>(&ImpersonatePrinterClient));
    }
  }
  bool StoresForUser() const { return world_.printer->data.contains(kDataName); }
  bool StoresForAll() const { return !world_.printer->devmode.empty(); }

  test::TestWorld world_;
};

TEST_F(PrinterEvent, InitializeStoresTheDefaultsForTheUser) {
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, 3));
  ASSERT_TRUE(StoresForUser());
  EXPECT_EQ(world_.printer->data.at(kSizeName), headless::StoredValue::Dword(7896));
  const headless::StoredValue& stored = world_.printer->data.at(kDataName);
  EXPECT_EQ(stored.type, kRegBinary);
  ASSERT_THAT(stored.bytes, SizeIs(7896));
  DriverDevmode record;
  std::memcpy(&record, stored.bytes.data(), sizeof(record));
  EXPECT_EQ(record.publicDevmode.dmSize, 220);
  EXPECT_EQ(record.publicDevmode.dmCopies, 1);
  EXPECT_EQ(record.privateDevmode.Signature, kPrivateSignature);
  EXPECT_EQ(record.privateDevmode.CustomPaperSize[0].Width, 0);
}

TEST_F(PrinterEvent, InitializeStoresTheSameRecordAsThePrintersOwn) {
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, 3));
  ASSERT_THAT(world_.printer->devmode, SizeIs(7896));
  EXPECT_EQ(world_.printer->devmode, world_.printer->data.at(kDataName).bytes);
}

TEST_F(PrinterEvent, InitializeKeepsWhatTheSpoolerHasStored) {
  DriverDevmode stored;
  InitDriverDevmode(&stored, test::kDriverName, nullptr);
  stored.publicDevmode.dmCopies = 31;
  const auto bytes = std::as_bytes(std::span(&stored, 1));
  world_.printer->devmode.assign(bytes.begin(), bytes.end());
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, 3));
  DriverDevmode record;
  std::memcpy(&record, world_.printer->devmode.data(), sizeof(record));
  EXPECT_EQ(record.publicDevmode.dmCopies, 31);
}

TEST_F(PrinterEvent, InitializeOpensThePrinterToAdministerIt) {
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, 3));
  EXPECT_EQ(world_.platform.print.lastDesiredAccess(), 0x000F000CU);
  EXPECT_EQ(world_.platform.print.openPrinters(), 0U);
  EXPECT_THAT(spooler.calls, IsEmpty());
}

TEST_F(PrinterEvent, InitializeOfAnUnknownPrinterFails) {
  EXPECT_FALSE(DrvPrinterEvent(u"Nobody", 3));
  EXPECT_FALSE(DrvPrinterEvent(nullptr, 3));
}

TEST_F(PrinterEvent, InitializeWithoutAContextStoresNothingAndTellsThatThePrinterOpened) {
  world_.platform.modules.Remove(test::kBitmapLibraryPath);
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, 3));
  EXPECT_FALSE(StoresForUser());
  EXPECT_FALSE(StoresForAll());
  EXPECT_EQ(world_.platform.print.openPrinters(), 0U);
}

TEST_F(PrinterEvent, InitializeWithoutAnAnswerOfLevelEightStoresForTheUserAlone) {
  // The context asks twice for level 2, for the size and for the answer.
  world_.platform.faults.FailOperation("GetPrinterW", 3);
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, 3));
  EXPECT_TRUE(world_.platform.faults.fired());
  EXPECT_TRUE(StoresForUser());
  EXPECT_FALSE(StoresForAll());
}

TEST_F(PrinterEvent, InitializeWithoutAPlaceForLevelEightStoresForTheUserAlone) {
  world_.platform.faults.FailOperation("SetPrinterW");
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, 3));
  EXPECT_TRUE(StoresForUser());
  EXPECT_FALSE(StoresForAll());
}

TEST_F(PrinterEvent, CacheRefreshStoresWithTheSpoolersRights) {
  InstallSpooler();
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, 5));
  EXPECT_TRUE(StoresForUser());
  EXPECT_TRUE(StoresForAll());
  EXPECT_EQ(world_.platform.print.lastDesiredAccess(), 0U) << "no defaults";
  EXPECT_THAT(spooler.calls,
              ElementsAre("revert with 0 open, not stored", "impersonate with 0 open, stored"));
  EXPECT_EQ(spooler.given, kClient);
  EXPECT_EQ(world_.platform.modules.loadsOf(kSpooler), 0U);
}

TEST_F(PrinterEvent, CacheRefreshOfAnUnknownPrinterGivesTheRightsBack) {
  InstallSpooler();
  EXPECT_FALSE(DrvPrinterEvent(u"Nobody", 5));
  EXPECT_THAT(spooler.calls, SizeIs(2));
  EXPECT_EQ(world_.platform.modules.loadsOf(kSpooler), 0U);
}

TEST_F(PrinterEvent, CacheRefreshWithoutTheSpoolersLibraryFails) {
  EXPECT_FALSE(DrvPrinterEvent(test::kPrinterName, 5));
  EXPECT_FALSE(StoresForUser());
}

TEST_F(PrinterEvent, CacheRefreshWithoutTheWayThereOrBackFailsAndFreesTheLibrary) {
  for (const bool reverts : {false, true}) {
    InstallSpooler(reverts, !reverts);
    EXPECT_FALSE(DrvPrinterEvent(test::kPrinterName, 5));
    EXPECT_THAT(spooler.calls, IsEmpty());
    EXPECT_FALSE(StoresForUser());
    EXPECT_EQ(world_.platform.modules.loadsOf(kSpooler), 0U);
  }
}

struct EventCase {
  const char* name;
  std::int32_t event;
};

class OtherPrinterEvent : public PrinterEvent, public testing::WithParamInterface<EventCase> {};

// PRINTER_EVENT_... of winddiui.h, and values without a name.
INSTANTIATE_TEST_SUITE_P(Events, OtherPrinterEvent,
                         testing::Values(EventCase{"Zero", 0}, EventCase{"AddConnection", 1},
                                         EventCase{"DeleteConnection", 2}, EventCase{"Delete", 4},
                                         EventCase{"CacheDelete", 6},
                                         EventCase{"ConfigurationChange", 7},
                                         EventCase{"Negative", -1}),
                         test::CaseName());

TEST_P(OtherPrinterEvent, IsAgreedToAndStoresNothing) {
  InstallSpooler();
  EXPECT_TRUE(DrvPrinterEvent(test::kPrinterName, GetParam().event));
  EXPECT_FALSE(StoresForUser());
  EXPECT_FALSE(StoresForAll());
  EXPECT_THAT(spooler.calls, IsEmpty());
}

class EveryPrinterEvent : public OtherPrinterEvent {};

INSTANTIATE_TEST_SUITE_P(Events, EveryPrinterEvent,
                         testing::Values(EventCase{"AddConnection", 1}, EventCase{"Initialize", 3},
                                         EventCase{"CacheRefresh", 5}, EventCase{"Delete", 4},
                                         EventCase{"Other", 99}),
                         test::CaseName());

TEST_P(EveryPrinterEvent, RepairsTheUninstallShortcut) {
  DrvPrinterEvent(u"Ostrel Elm 1 Series", GetParam().event);
  ASSERT_THAT(world_.platform.shell.started, SizeIs(1));
  EXPECT_EQ(world_.platform.shell.started[0].verb, u"runas");
}

// ---- The driver's own events --------------------------------------------------------------------

class DriverEvent : public testing::TestWithParam<EventCase> {};

INSTANTIATE_TEST_SUITE_P(Events, DriverEvent,
                         testing::Values(EventCase{"Zero", 0}, EventCase{"Initialize", 1},
                                         EventCase{"Delete", 2}, EventCase{"Other", 3}),
                         test::CaseName());

TEST_P(DriverEvent, DeletesTheSettingsFileWhenTheDriverGoesAndAlwaysAnswersZero) {
  test::TestWorld world;
  ASSERT_TRUE(InitSettingsFile());
  ASSERT_NE(world.platform.files.Get(test::kSettingsPath), nullptr);
  EXPECT_EQ(DrvDriverEvent(static_cast<std::uint32_t>(GetParam().event)), 0);
  EXPECT_EQ(world.platform.files.Get(test::kSettingsPath) == nullptr, GetParam().event == 2);
}

}  // namespace
}  // namespace ostrel
