#include "core/printer_store.h"

#include "support/test_world.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

class PrinterStore : public testing::Test {
 protected:
  ~PrinterStore() override { world_.platform.print.ClosePrinter(printer_); }

  test::TestWorld world_;
  PrinterHandle printer_ = world_.OpenPrinter();
};

TEST_F(PrinterStore, DescriptionHoldsDriverNameAndRecord) {
  world_.printer->devmode.assign(300, std::byte{0x5A});
  const HeapBlock<PrinterInfo2> info = GetPrinterInfo2(printer_);
  ASSERT_TRUE(info);
  EXPECT_EQ(std::u16string(info->pPrinterName), test::kPrinterName);
  EXPECT_EQ(std::u16string(info->pDriverName), test::kDriverName);
  const auto* record = reinterpret_cast<const std::byte*>(info->pDevMode);
  EXPECT_TRUE(
      std::all_of(record, record + 300, [](std::byte each) { return each == std::byte{0x5A}; }));
  EXPECT_TRUE(world_.platform.debug.lines.empty());
}

TEST_F(PrinterStore, PrinterWithoutARecordHasNone) {
  const HeapBlock<PrinterInfo2> info = GetPrinterInfo2(printer_);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->pDevMode, nullptr);
}

TEST_F(PrinterStore, DescriptionIsFreedAtTheEndOfItsScope) {
  {
    const HeapBlock<PrinterInfo2> info = GetPrinterInfo2(printer_);
    EXPECT_EQ(world_.platform.memory.liveBlocks(), 1U);
  }
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U);
}

TEST_F(PrinterStore, FailureNamesLevelAndErrorInADebugLine) {
  world_.platform.faults.FailOperation("GetPrinterW");
  EXPECT_FALSE(GetPrinterInfo2(printer_));
  EXPECT_EQ(world_.platform.debug.lines,
            std::vector<std::u16string>{u"Registry_GetHL fail, level:2, error code is 6\n"});
}

TEST_F(PrinterStore, LackOfMemoryIsAFailureLikeAnyOther) {
  world_.platform.faults.FailOperation("HeapAlloc");
  EXPECT_FALSE(GetPrinterInfo2(printer_));
  EXPECT_EQ(world_.platform.debug.lines,
            std::vector<std::u16string>{u"Registry_GetHL fail, level:2, error code is 8\n"});
}

TEST_F(PrinterStore, DescriptionThatGrowsEachTimeIsGivenUpAfterFourCalls) {
  world_.platform.print.GrowDescriptionBy(8);
  world_.platform.faults.StartTrace();
  EXPECT_FALSE(GetPrinterInfo2(printer_));
  EXPECT_EQ(std::ranges::count(world_.platform.faults.trace(), "GetPrinterW"), 4);
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U);
}

// ---- What isn't kept yet ------------------------------------------------------------------------

TEST_F(PrinterStore, WithoutInformationBothOptionalTraysAreMissing) {
  EXPECT_EQ(CountMissingTrays(nullptr), 2);
  EXPECT_EQ(CountMissingTrays(printer_), 2);
}

TEST_F(PrinterStore, UnkeptUserTextLeavesTheBufferAsItWas) {
  char16_t text[8] = u"poison";
  EXPECT_FALSE(WriteUserString(u"Suffix", u"fr", test::kDriverName));
  EXPECT_FALSE(ReadUserString(u"Suffix", test::kDriverName, text));
  EXPECT_EQ(std::u16string(text), u"poison");
}

TEST_F(PrinterStore, PrinterDataAreNotClaimedToBeWritten) {
  EXPECT_FALSE(UpgradePrinterData(printer_));
}

}  // namespace
}  // namespace ostrel
