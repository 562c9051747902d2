// Every entry point, walked through all failures of the platform: the first call fails, then the
// second, and so on until a run comes through untouched. Nothing may crash or leak, and a caller's
// output is either untouched or whole.
#include "core/device_capabilities.h"
#include "core/devmode_lifecycle.h"
#include "core/devmode_queries.h"
#include "core/language.h"
#include "core/settings_record.h"
#include "core/ui_context.h"
#include "support/caller_block.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::BytesOf;
using test::CallerBlock;
using test::DefaultRecord;
using test::kPoison;

// More calls than any entry point makes: a walk that doesn't end by then never ends.
constexpr std::size_t kMostCalls = 1000;

// Runs `body(world, n)` in worlds whose n-th call fails, until one goes through without a failure.
// Result: how many failures were walked through.
template <typename Body>
std::size_t WalkFailures(Body&& body) {
  for (std::size_t n = 1; n < kMostCalls; ++n) {
    test::TestWorld world;
    body(world, n);
    if (testing::Test::HasFatalFailure()) {
      ADD_FAILURE() << "with call " << n << " failing";
      return n;
    }
    if (!world.platform.faults.fired()) {
      return n - 1;
    }
  }
  ADD_FAILURE() << "no end of calls";
  return kMostCalls;
}

// A whole record of this driver: its own header, and nothing in it that a repair would change.
bool IsWholeRecord(const DriverDevmode& record) {
  DriverDevmode repaired = record;
  ValidatePrivateDevmode(&repaired.privateDevmode);
  const DevmodeHeader header = ReadHeader(&record.publicDevmode);
  const std::int16_t paper = record.publicDevmode.dmPaperSize;
  return header.specVersion == 1025 && header.driverVersion == 1536 && header.size == 220 &&
         header.driverExtra == 7676 && record.publicDevmode.dmFields == kDriverDevmodeFields &&
         std::u16string(record.publicDevmode.dmDeviceName) == test::kDriverName &&
         (paper == 9 || paper == 1) &&
         record.publicDevmode.dmPaperLength == (paper == 9 ? 2970 : 2794) &&
         BytesOf(repaired) == BytesOf(record);
}

// The custom papers are cleared in a live record, while a repair would give them back.
void RestoreCustomPapers(PrivateDevmode& live, const DriverDevmode& defaults) {
  std::memcpy(live.CustomPaperSize, defaults.privateDevmode.CustomPaperSize,
              sizeof(live.CustomPaperSize));
}

// What a context asks most of the platform for: both records name an unknown paper and neither
// carries a favourite's name.
DriverDevmode DemandingRecord() {
  DriverDevmode record = DefaultRecord();
  record.publicDevmode.dmPaperSize = 8;
  record.publicDevmode.dmCopies = 9;
  return record;
}

TEST(PlatformFailures, ContextIsMadeWholeOrNotAtAll) {
  std::size_t made = 0;
  const std::size_t walked = WalkFailures([&made](test::TestWorld& world, std::size_t n) {
    const DriverDevmode record = DemandingRecord();
    world.printer->devmode = BytesOf(record);
    const PrinterHandle printer = world.OpenPrinter();
    world.platform.faults.FailCall(n);
    UIContext* context = CreateUIContext(printer, &record.publicDevmode);
    std::size_t loads = world.process.CurrentLanguageModule == nullptr ? 0 : 1;
    if (context != nullptr) {
      ++made;
      ++loads;
      EXPECT_NE(context->bitmapModule, nullptr) << n;
      EXPECT_EQ(context->publicPointer->dmCopies, 9) << n;
      EXPECT_NE(context->privatePointer->FavoriteName[0], u'\0') << n;
      EXPECT_EQ(context->privatePointer->CustomPaperSize[19].Width, 0) << n;
      DriverDevmode live = context->devmode;
      RestoreCustomPapers(live.privateDevmode, record);
      EXPECT_TRUE(IsWholeRecord(live)) << n;
      FreeUIContext(context);
    }
    world.platform.print.ClosePrinter(printer);
    EXPECT_EQ(world.Leftovers(loads), "") << n;
  });
  EXPECT_GE(walked, 15U);
  EXPECT_GT(made, 1U);      // some failures are survived
  EXPECT_LT(made, walked);  // and some are not
}

TEST(PlatformFailures, SheetWithoutADialogHandsOutAWholeRecordOrNothing) {
  std::size_t failed = 0;
  const std::size_t walked = WalkFailures([&failed](test::TestWorld& world, std::size_t n) {
    const DriverDevmode record = DemandingRecord();
    world.printer->devmode = BytesOf(record);
    CallerBlock in(record, kDriverDevmodeBytes);
    CallerBlock out(kDriverDevmodeBytes);
    DocumentPropertyHeader header = {};
    header.hPrinter = world.OpenPrinter();
    header.pdmIn = in.get();
    header.pdmOut = out.get();
    header.fMode = 2;
    world.platform.faults.FailCall(n);
    const std::int32_t result = DocumentPropertiesWithoutDialog(&header);
    EXPECT_EQ(header.cbOut, 7896U) << n;
    EXPECT_EQ(in.copy(), BytesOf(record)) << n;
    if (result == 1) {
      DriverDevmode live;
      std::memcpy(&live, out.bytes(), sizeof(live));
      EXPECT_EQ(live.privateDevmode.CustomPaperSize[19].Width, 0) << n;
      RestoreCustomPapers(live.privateDevmode, record);
      EXPECT_TRUE(IsWholeRecord(live)) << n;
      EXPECT_EQ(out->dmCopies, 9) << n;
    } else {
      ++failed;
      EXPECT_EQ(result, -1) << n;
      EXPECT_TRUE(out.IsPoison()) << n;
    }
    world.platform.print.ClosePrinter(header.hPrinter);
    EXPECT_EQ(world.Leftovers((world.process.CurrentLanguageModule == nullptr ? 0U : 1U) +
                              (result == 1 ? 1U : 0U)),
              "")
        << n;
  });
  EXPECT_GE(walked, 15U);
  EXPECT_GT(failed, 0U);
}

TEST(PlatformFailures, SizeQuestionAsksThePlatformForNothing) {
  EXPECT_EQ(WalkFailures([](test::TestWorld& world, std::size_t n) {
              DocumentPropertyHeader header = {};
              world.platform.faults.FailCall(n);
              EXPECT_EQ(DocumentPropertiesWithoutDialog(&header), 7896);
              EXPECT_EQ(world.Leftovers(), "");
            }),
            0U);
}

struct QueryCase {
  const char* name;
  std::uint32_t fields;  // 0 is refused
};

class QueryPrintFailures : public testing::TestWithParam<QueryCase> {};

INSTANTIATE_TEST_SUITE_P(Records, QueryPrintFailures,
                         testing::Values(QueryCase{"Mergeable", kDriverDevmodeFields},
                                         QueryCase{"Refused", 0}),
                         test::CaseName());

TEST_P(QueryPrintFailures, AnswerIsTheRecordsOrTrueForLackOfMemory) {
  const std::size_t walked = WalkFailures([](test::TestWorld& world, std::size_t n) {
    DriverDevmode record = DemandingRecord();
    record.publicDevmode.dmFields = GetParam().fields;
    world.process.CurrentLanguageModule = LoadLanguageModule(test::kDriverName);
    char16_t text[100];
    std::ranges::fill(text, u'#');
    DevQueryPrintInfo info = {};
    info.Level = 1;
    info.pDevMode = &record.publicDevmode;
    info.pszErrorStr = text;
    info.cchErrorStr = 100;
    world.platform.faults.FailCall(n);
    const bool answer = DevQueryPrintEx(&info);
    if (GetParam().fields != 0 || n == 1) {
      EXPECT_TRUE(answer) << n;
      EXPECT_EQ(text[0], u'#') << n;
    } else {
      EXPECT_FALSE(answer) << n;
      EXPECT_EQ(std::u16string_view(text).size() + 1, info.cchNeeded) << n;
    }
    EXPECT_EQ(world.Leftovers(1), "") << n;
  });
  EXPECT_GE(walked, 6U);
}

struct ConvertCase {
  const char* name;
  std::uint32_t mode;
  std::size_t leastCalls;
};

class ConvertFailures : public testing::TestWithParam<ConvertCase> {};

INSTANTIATE_TEST_SUITE_P(Modes, ConvertFailures,
                         testing::Values(ConvertCase{"Convert", 1, 0},
                                         ConvertCase{"OldFormat", 2, 0},
                                         ConvertCase{"DriverDefault", 4, 8},
                                         ConvertCase{"Unknown", 3, 0}),
                         test::CaseName());

TEST_P(ConvertFailures, OutputIsWholeOrUntouched) {
  const std::size_t walked = WalkFailures([](test::TestWorld& world, std::size_t n) {
    const DriverDevmode record = DefaultRecord();
    CallerBlock out(kDriverDevmodeBytes);
    WriteHeader(out.get(), ReadHeader(&record.publicDevmode));
    const std::vector<std::byte> before = out.copy();
    std::int32_t size = 7896;
    world.platform.faults.FailCall(n);
    const bool result = DrvConvertDevMode(test::kPrinterName, &record.publicDevmode, out.get(),
                                          &size, GetParam().mode);
    if (!result) {
      EXPECT_EQ(out.copy(), before) << n;
    } else if (GetParam().mode == 2) {
      EXPECT_EQ(size, 304) << n;
    } else {
      EXPECT_EQ(size, 7896) << n;
      DriverDevmode handed;
      std::memcpy(&handed, out.bytes(), sizeof(handed));
      EXPECT_TRUE(IsWholeRecord(handed)) << n;
    }
    EXPECT_EQ(world.Leftovers(), "") << n;
  });
  EXPECT_GE(walked, GetParam().leastCalls);
  EXPECT_EQ(walked == 0, GetParam().leastCalls == 0);
}

struct UpgradeCase {
  const char* name;
  headless::StoredValues data;                    // the printer data before
  std::vector<std::string> callsThatMustSucceed;  // any other may fail and the result is true
  std::size_t calls;
};

class UpgradeFailures : public testing::TestWithParam<UpgradeCase> {};

const headless::StoredValues kOldPrinterData = {
    {u"PrinterDataSize", headless::StoredValue::Dword(4)},
    {u"PrinterData",
     headless::StoredValue::Binary({std::byte{0xFF}, std::byte{0x05}, std::byte{4}, std::byte{0}})},
};

INSTANTIATE_TEST_SUITE_P(
    Blocks, UpgradeFailures,
    testing::Values(UpgradeCase{"None", {}, {"OpenPrinterW", "HeapAlloc"}, 5},
                    // Without memory for the stored block nothing takes its place.
                    UpgradeCase{"Old", kOldPrinterData, {"OpenPrinterW", "HeapAlloc"}, 6}),
    test::CaseName());

TEST_P(UpgradeFailures, CloseWhatWasOpenedAndLeaveValuesWhole) {
  const headless::StoredValue size = headless::StoredValue::Dword(8);
  const headless::StoredValue block =
      headless::StoredValue::Binary({std::byte{0x00}, std::byte{0x06}, std::byte{8}, std::byte{0},
                                     std::byte{0}, std::byte{0}, std::byte{0}, std::byte{0}});
  const std::size_t walked = WalkFailures([&](test::TestWorld& world, std::size_t n) {
    world.printer->data = GetParam().data;
    std::u16string name = test::kPrinterName;
    const DriverUpgradeInfo1 info = {name.data(), nullptr};
    world.platform.faults.StartTrace();
    world.platform.faults.FailCall(n);
    const bool result = DrvUpgradePrinter(1, &info);
    const std::vector<std::string>& trace = world.platform.faults.trace();
    const std::string failed = n <= trace.size() ? trace[n - 1] : "";
    EXPECT_EQ(result, std::ranges::count(GetParam().callsThatMustSucceed, failed) == 0)
        << n << " " << failed;
    // Either value is the old one or the new one, and the data are never newer than the size.
    headless::StoredValues before = GetParam().data;
    const headless::StoredValues& after = world.printer->data;
    const auto valueOf = [&after](const char16_t* valueName) {
      const auto found = after.find(valueName);
      return found == after.end() ? headless::StoredValue{} : found->second;
    };
    const bool sizeIsNew = valueOf(u"PrinterDataSize") == size;
    const bool dataAreNew = valueOf(u"PrinterData") == block;
    EXPECT_TRUE(sizeIsNew || valueOf(u"PrinterDataSize") == before[u"PrinterDataSize"]) << n;
    EXPECT_TRUE(dataAreNew || valueOf(u"PrinterData") == before[u"PrinterData"]) << n;
    EXPECT_LE(dataAreNew, sizeIsNew) << n;
    EXPECT_EQ(sizeIsNew && dataAreNew, result && failed != "SetPrinterDataW") << n;
    EXPECT_EQ(world.Leftovers(), "") << n;
  });
  EXPECT_EQ(walked, GetParam().calls);
}

// ---- Capabilities -------------------------------------------------------------------------------

class CapabilityFailures : public testing::TestWithParam<std::uint16_t> {};

// The codes of wingdi.h, the gaps between them and one beyond.
INSTANTIATE_TEST_SUITE_P(Codes, CapabilityFailures, testing::Range<std::uint16_t>(0, 36),
                         testing::PrintToStringParamName());

TEST_P(CapabilityFailures, CountStaysTheSameAndNothingIsWrittenBehindTheList) {
  constexpr std::size_t kLargestListBytes = (28 + 20) * kPaperNameUnits * sizeof(char16_t);
  std::size_t writtenBytes = 0;
  std::uint32_t count = 0;
  {
    test::TestWorld world;
    CallerBlock output(kLargestListBytes);
    const PrinterHandle printer = world.OpenPrinter();
    count = DrvDeviceCapabilities(printer, test::kDriverName, GetParam(), output.bytes(), nullptr);
    const std::vector<std::byte> bytes = output.copy();
    writtenBytes = static_cast<std::size_t>(
        bytes.rend() -
        std::find_if(bytes.rbegin(), bytes.rend(), [](std::byte each) { return each != kPoison; }));
    world.platform.print.ClosePrinter(printer);
    EXPECT_EQ(world.Leftovers(), "");
  }
  for (const bool withBuffer : {true, false}) {
    WalkFailures([&](test::TestWorld& world, std::size_t n) {
      CallerBlock output(kLargestListBytes);
      const PrinterHandle printer = world.OpenPrinter();
      world.platform.faults.FailCall(n);
      EXPECT_EQ(DrvDeviceCapabilities(printer, test::kDriverName, GetParam(),
                                      withBuffer ? output.bytes() : nullptr, nullptr),
                count)
          << n;
      const std::size_t limit = withBuffer ? writtenBytes : 0;
      EXPECT_TRUE(std::all_of(output.bytes() + limit, output.bytes() + output.size(),
                              [](std::byte each) { return each == kPoison; }))
          << n;
      world.platform.print.ClosePrinter(printer);
      EXPECT_EQ(world.Leftovers(), "") << n;
    });
  }
}

struct NameListCase {
  const char* name;
  std::uint16_t code;
  std::size_t rows;
  std::size_t rowUnits;
};

class NameListFailures : public testing::TestWithParam<NameListCase> {};

INSTANTIATE_TEST_SUITE_P(Lists, NameListFailures,
                         testing::Values(NameListCase{"BinNames", 12, 3, 24},
                                         NameListCase{"PaperNames", 16, 28, 64},
                                         NameListCase{"MediaReady", 29, 28, 64}),
                         test::CaseName());

TEST_P(NameListFailures, EveryRowIsATerminatedNameOrTheListIsUntouched) {
  const auto [name, code, rows, rowUnits] = GetParam();
  std::size_t untouched = 0;
  const std::size_t walked = WalkFailures(
      [&, code = code, rows = rows, rowUnits = rowUnits](test::TestWorld& world, std::size_t n) {
        CallerBlock output(rows * rowUnits * sizeof(char16_t));
        world.platform.faults.FailCall(n);
        EXPECT_EQ(DrvDeviceCapabilities(nullptr, test::kDriverName, code, output.bytes(), nullptr),
                  rows);
        if (output.IsPoison()) {
          ++untouched;
          return;
        }
        const auto* row = reinterpret_cast<const char16_t*>(output.bytes());
        for (std::size_t i = 0; i < rows; ++i, row += rowUnits) {
          EXPECT_NE(row[0], u'\0') << n << " row " << i;
          EXPECT_NE(std::find(row, row + rowUnits, u'\0'), row + rowUnits) << n << " row " << i;
        }
      });
  EXPECT_GT(walked, rows);
  EXPECT_EQ(untouched != 0, code == kDcBinNames);  // which needs a language library for any row
}

}  // namespace
}  // namespace ostrel
