// Printer data, as the spooler keeps them: what an upgrade of the driver makes of the version
// block, and what the blocks of the optional trays do to the lists of sources.
#include "print_system_fixture.h"
#include "stored_values.h"

#include <algorithm>
#include <array>
#include <optional>

namespace ostrel::print_system {
namespace {

// ---- The version block --------------------------------------------------------------------------

class VersionBlockUpgrade : public testing::Test {
 protected:
  BOOL Upgrade() {
    DRIVER_UPGRADE_INFO_1W info = {Writable(printer_.name()), nullptr};
    return driver_->DrvUpgradePrinter(1, reinterpret_cast<LPBYTE>(&info));
  }

  TemporaryPrinter printer_{L"Printer of the upgrade"};
  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
};

const Value kFreshBlock = BinaryValue({0x00, 0x06, 8, 0, 0, 0, 0, 0});

TEST_F(VersionBlockUpgrade, OfAPrinterWithoutOneWritesAFreshOne) {
  ASSERT_EQ(printer_.GetData(L"PrinterDataSize"), std::nullopt);
  EXPECT_NE(Upgrade(), FALSE);
  EXPECT_EQ(printer_.GetData(L"PrinterDataSize"), DwordValue(8));
  EXPECT_EQ(printer_.GetData(L"PrinterData"), kFreshBlock);
}

TEST_F(VersionBlockUpgrade, DoneTwiceChangesNothing) {
  EXPECT_NE(Upgrade(), FALSE);
  EXPECT_NE(Upgrade(), FALSE);
  EXPECT_EQ(printer_.GetData(L"PrinterDataSize"), DwordValue(8));
  EXPECT_EQ(printer_.GetData(L"PrinterData"), kFreshBlock);
}

TEST_F(VersionBlockUpgrade, WritesNoOtherBlock) {
  EXPECT_NE(Upgrade(), FALSE);
  for (const wchar_t* name :
       {L"DeviceDataSize", L"DeviceData", L"PrivateDevmodeDataSize", L"CustomPaperSize",
        L"CustomPaperData", L"FontDataSize", L"FontData", L"TrayInstallSize", L"TrayInstall"}) {
    EXPECT_EQ(printer_.GetData(name), std::nullopt) << Utf8(name);
  }
}

struct StoredBlock {
  const char* name;
  std::optional<DWORD> size;
  std::vector<BYTE> data;  // none is stored when empty
  DWORD sizeAfter;
  std::vector<BYTE> dataAfter;
};

void PrintTo(const StoredBlock& row, std::ostream* out) {
  *out << row.name;
}

class StoredVersionBlock : public VersionBlockUpgrade,
                           public testing::WithParamInterface<StoredBlock> {};

TEST_P(StoredVersionBlock, BecomesTheOneExpected) {
  if (GetParam().size) {
    printer_.SetData(L"PrinterDataSize", DwordValue(*GetParam().size));
  }
  if (!GetParam().data.empty()) {
    printer_.SetData(L"PrinterData", BinaryValue(GetParam().data));
  }
  EXPECT_NE(Upgrade(), FALSE);
  EXPECT_EQ(printer_.GetData(L"PrinterDataSize"), DwordValue(GetParam().sizeAfter));
  EXPECT_EQ(printer_.GetData(L"PrinterData"), BinaryValue(GetParam().dataAfter));
}

// clang-format off
const StoredBlock kStoredBlocks[] = {
    // Name, size, data; size and data afterwards
    {"Version1535Of4BytesGrows",     4,  {0xFF, 0x05, 4, 0},
                                     8,  {0x00, 0x06, 8, 0, 0, 0, 0, 0}},
    {"Version1535Of8BytesKeepsItsEnd", 8, {0xFF, 0x05, 8, 0, 1, 2, 3, 4},
                                     8,  {0x00, 0x06, 8, 0, 1, 2, 3, 4}},
    {"Version1535Of12BytesShrinks",  12, {0xFF, 0x05, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8},
                                     8,  {0x00, 0x06, 8, 0, 1, 2, 3, 4}},
    {"Version0Of2BytesGrows",        2,  {0, 0},
                                     8,  {0x00, 0x06, 8, 0, 0, 0, 0, 0}},
    {"ThisVersionStays",             8,  {0x00, 0x06, 8, 0, 9, 9, 9, 9},
                                     8,  {0x00, 0x06, 8, 0, 9, 9, 9, 9}},
    {"ALaterVersionStaysWhatever",   12, {0x01, 0x06, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8},
                                     12, {0x01, 0x06, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {"ASizeOfZeroCountsAsNone",      0,  {0xFF, 0x07, 8, 0, 9, 9, 9, 9},
                                     8,  {0x00, 0x06, 8, 0, 0, 0, 0, 0}},
    {"ASizeWithoutDataCountsAsNone", 8,  {},
                                     8,  {0x00, 0x06, 8, 0, 0, 0, 0, 0}},
    {"DataWithoutASizeCountAsNone",  std::nullopt, {0xFF, 0x07, 8, 0, 9, 9, 9, 9},
                                     8,  {0x00, 0x06, 8, 0, 0, 0, 0, 0}},
    {"MoreDataThanTheSizeSaysCountAsNone", 4, {0xFF, 0x05, 8, 0, 9, 9, 9, 9},
                                     8,  {0x00, 0x06, 8, 0, 0, 0, 0, 0}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Row, StoredVersionBlock, testing::ValuesIn(kStoredBlocks),
                         [](const auto& row) { return std::string(row.param.name); });

// ---- Optional trays -----------------------------------------------------------------------------

class OptionalTrays : public testing::Test {
 protected:
  static constexpr WORD kPoison = 0xCCCC;

  DWORD Ask(HANDLE printer, WORD code, void* output) {
    return driver_->DrvDeviceCapabilities(printer, Writable(printer_.name()), code, output,
                                          nullptr);
  }

  void ExpectSources(DWORD count) {
    // With one optional tray four are counted and five written: callers have room for them.
    const std::array<WORD, 5> all = {7, 4, 257, 258, 259};
    const std::size_t written = count > 3 ? 5 : 3;
    std::array<WORD, 8> bins;
    bins.fill(kPoison);
    EXPECT_EQ(Ask(printer_.get(), DC_BINS, nullptr), count);
    EXPECT_EQ(Ask(printer_.get(), DC_BINS, bins.data()), count);
    EXPECT_TRUE(
        std::equal(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(written), bins.begin()));
    EXPECT_TRUE(std::all_of(bins.begin() + static_cast<std::ptrdiff_t>(written), bins.end(),
                            [](WORD bin) { return bin == kPoison; }));

    constexpr std::size_t kRowUnits = 24;
    const std::array<const wchar_t*, 5> names = {L"Automatic", L"Manual feed", L"Tray 1",
                                                 L"Optional tray 2", L"Optional tray 3"};
    std::vector<wchar_t> rows(6 * kRowUnits, kPoison);
    EXPECT_EQ(Ask(printer_.get(), DC_BINNAMES, nullptr), count);
    EXPECT_EQ(Ask(printer_.get(), DC_BINNAMES, rows.data()), count);
    for (std::size_t row = 0; row < count; ++row) {
      EXPECT_EQ(std::wstring_view(&rows[row * kRowUnits]), names[row]) << "row " << row;
    }
    EXPECT_TRUE(std::all_of(rows.begin() + static_cast<std::ptrdiff_t>(count * kRowUnits),
                            rows.end(), [](wchar_t unit) { return unit == kPoison; }));
  }

  void StoreTrays(DWORD tray2, DWORD tray3) {
    Value block = DwordValue(tray2);
    const Value second = DwordValue(tray3);
    block.type = REG_BINARY;
    block.bytes.insert(block.bytes.end(), second.bytes.begin(), second.bytes.end());
    printer_.SetData(L"TrayInstallSize", DwordValue(8));
    printer_.SetData(L"TrayInstall", block);
  }

  TemporaryPrinter printer_{L"Printer of the trays"};
  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
};

TEST_F(OptionalTrays, AreMissingWithoutABlock) {
  ExpectSources(3);
}

TEST_F(OptionalTrays, AreMissingWithASizeButNoBlock) {
  printer_.SetData(L"TrayInstallSize", DwordValue(8));
  ExpectSources(3);
}

TEST_F(OptionalTrays, AreMissingWithASizeOfZero) {
  StoreTrays(1, 1);
  printer_.SetData(L"TrayInstallSize", DwordValue(0));
  ExpectSources(3);
}

TEST_F(OptionalTrays, BeyondTheEndOfAShortBlockAreMissing) {
  printer_.SetData(L"TrayInstallSize", DwordValue(4));
  printer_.SetData(L"TrayInstall", BinaryValue({1, 0, 0, 0}));
  ExpectSources(4);
}

// This print system passes a null printer when an application asks; such a printer tells nothing.
TEST_F(OptionalTrays, DoNotShowThroughAPrintSystemThatPassesNoPrinter) {
  StoreTrays(1, 1);
  EXPECT_EQ(DeviceCapabilitiesW(printer_.name().c_str(), L"LPT1:", DC_BINS, nullptr, nullptr), 3);
  EXPECT_EQ(Ask(nullptr, DC_BINS, nullptr), 3U);
}

struct TrayWords {
  DWORD tray2;
  DWORD tray3;
  DWORD sources;
};

class TrayBlock : public OptionalTrays, public testing::WithParamInterface<TrayWords> {};

TEST_P(TrayBlock, DecidesTheSources) {
  StoreTrays(GetParam().tray2, GetParam().tray3);
  ExpectSources(GetParam().sources);
}

// clang-format off
constexpr TrayWords kTrayWords[] = {
    // Tray 2, tray 3, sources: 1 is fitted, anything else is not
    {0, 0, 3}, {0, 1, 4}, {0, 2, 3}, {0, 0xFFFFFFFF, 3},
    {1, 0, 4}, {1, 1, 5}, {1, 2, 4}, {1, 0xFFFFFFFF, 4},
    {2, 0, 3}, {2, 1, 4}, {2, 2, 3}, {2, 0x101, 3},
    {0x10001, 1, 4},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(EachPair, TrayBlock, testing::ValuesIn(kTrayWords), [](const auto& row) {
  return "Tray2Is" + std::to_string(row.param.tray2) + "Tray3Is" + std::to_string(row.param.tray3);
});

// ---- Trays of a universal printer ---------------------------------------------------------------

struct UniversalTrays {
  const char* name;
  std::optional<DWORD> installMode;
  std::optional<DWORD> upd;
  std::optional<DWORD> tray2;
  std::optional<DWORD> tray3;
  DWORD sources;  // the printer's own block has both trays
};

void PrintTo(const UniversalTrays& row, std::ostream* out) {
  *out << row.name;
}

class UniversalPrinter : public OptionalTrays,
                         public testing::WithParamInterface<UniversalTrays> {};

TEST_P(UniversalPrinter, TakesItsTraysFromTheUsersValues) {
  UserValues user(printer_.name());
  StoreTrays(1, 1);
  const auto set = [&user](const wchar_t* name, const std::optional<DWORD>& word) {
    if (word) {
      user.Set(name, DwordValue(*word));
    }
  };
  set(L"InstallMode", GetParam().installMode);
  set(L"UPD", GetParam().upd);
  set(L"TrayInstall1", GetParam().tray2);
  set(L"TrayInstall2", GetParam().tray3);
  ExpectSources(GetParam().sources);
}

constexpr std::optional<DWORD> kNone;

// clang-format off
constexpr UniversalTrays kUniversalTrays[] = {
    // Name,                             InstallMode, UPD, tray 2, tray 3, sources
    {"NeitherWordLeavesThePrinters",         kNone, kNone,     0,     0, 5},
    {"OtherWordsLeaveThePrinters",               0,     0,     0,     0, 5},
    {"AnInstallModeOf2LeavesThePrinters",        2, kNone,     0,     0, 5},
    {"AnInstallModeOf1TakesTheUsers",            1, kNone,     0,     1, 4},
    {"UpdAloneTakesTheUsers",                kNone,     1,     1,     1, 5},
    {"UpdBesideAnotherInstallMode",              0,     1,     1,     0, 4},
    {"BothWords",                                1,     1,     2,     2, 3},
    {"MissingTrayWordsAreMissingTrays",          1, kNone, kNone, kNone, 3},
    {"OneMissingTrayWord",                       1, kNone, kNone,     1, 4},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Row, UniversalPrinter, testing::ValuesIn(kUniversalTrays),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(OptionalTrays, OfAUniversalPrinterIgnoreWordsOfAnotherType) {
  UserValues user(printer_.name());
  user.Set(L"InstallMode", DwordValue(1));
  user.Set(L"TrayInstall1", TextValue(L"1"));
  user.Set(L"TrayInstall2", BinaryValue({1, 0, 0, 0}));
  ExpectSources(3);
}

TEST_F(OptionalTrays, AreNotCountedFromTheDriversSubkey) {
  UserValues user(printer_.name());
  UserValues driver(kOstrelDriverName);
  user.Set(L"InstallMode", DwordValue(1));
  driver.Set(L"TrayInstall1", DwordValue(1));
  driver.Set(L"TrayInstall2", DwordValue(1));
  ExpectSources(3);
}

}  // namespace
}  // namespace ostrel::print_system
