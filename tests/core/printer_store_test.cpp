#include "core/printer_store.h"

#include "core/ui_context.h"
#include "support/call_recorder.h"
#include "support/case_name.h"
#include "support/ini_file.h"
#include "support/test_world.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace ostrel {
namespace {

using headless::StoredValue;
using headless::StoredValues;
using test::CallRecorder;

constexpr char16_t kPrinterKey[] = u"S-1-5-21-1-2-3-1000\\SOFTWARE\\OstrelUPD\\Front office";
constexpr std::uint32_t kUnsetWord = 0xCDCDCDCD;

std::vector<std::byte> Bytes(std::initializer_list<int> values) {
  std::vector<std::byte> bytes;
  for (const int value : values) {
    bytes.push_back(static_cast<std::byte>(value));
  }
  return bytes;
}

StoredValue Binary(std::initializer_list<int> values) {
  return StoredValue::Binary(Bytes(values));
}

// The value of a name; of type 0 when there is none.
StoredValue ValueOf(const StoredValues& values, const std::u16string& name) {
  const auto found = values.find(name);
  return found == values.end() ? StoredValue{} : found->second;
}

class PrinterStore : public testing::Test {
 protected:
  ~PrinterStore() override { world_.platform.print.ClosePrinter(printer_); }

  test::TestWorld world_;
  PrinterHandle printer_ = world_.OpenPrinter();
};

TEST_F(PrinterStore, NameIsThatOfTheDescriptionCutToFit) {
  std::array<char16_t, 6> name = {};
  EXPECT_TRUE(ReadPrinterName(printer_, name));
  EXPECT_EQ(std::u16string(name.data()), u"Front");
  world_.printer->describes = false;
  EXPECT_FALSE(ReadPrinterName(printer_, name));
  EXPECT_EQ(std::u16string(name.data()), u"");
}

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

// ---- Blocks -------------------------------------------------------------------------------------

struct BlockCase {
  const char* name;
  PrinterBlock block;
  std::u16string sizeName;
  std::u16string dataName;
};

class PrinterBlocks : public testing::TestWithParam<BlockCase> {
 protected:
  ~PrinterBlocks() override { world_.platform.print.ClosePrinter(printer_); }

  bool Write(std::string_view bytes) {
    return WritePrinterBlock(printer_, bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                             GetParam().block);
  }

  test::TestWorld world_;
  PrinterHandle printer_ = world_.OpenPrinter();
};

INSTANTIATE_TEST_SUITE_P(
    Pairs, PrinterBlocks,
    testing::Values(
        BlockCase{"Version", PrinterBlock::kPrinterData, u"PrinterDataSize", u"PrinterData"},
        BlockCase{"Device", PrinterBlock::kDeviceData, u"DeviceDataSize", u"DeviceData"},
        BlockCase{"Record", PrinterBlock::kPrivateDevmode, u"PrivateDevmodeDataSizeada",
                  u"PrivateDevmodeDataada"},
        BlockCase{"CustomPaper", PrinterBlock::kCustomPaper, u"CustomPaperSize",
                  u"CustomPaperData"},
        BlockCase{"Font", PrinterBlock::kFontData, u"FontDataSize", u"FontData"}),
    test::CaseName());

TEST_P(PrinterBlocks, AreALengthAndBytesUnderTheirPairOfNames) {
  EXPECT_TRUE(Write("abcde"));
  const StoredValues expected = {{GetParam().sizeName, StoredValue::Dword(5)},
                                 {GetParam().dataName, Binary({'a', 'b', 'c', 'd', 'e'})}};
  EXPECT_EQ(world_.printer->data, expected);
}

TEST_P(PrinterBlocks, StoreTheLengthFirst) {
  CallRecorder recorder(world_);
  EXPECT_TRUE(Write("abcde"));
  std::erase(recorder.calls, "GetUserNameW");
  EXPECT_EQ(recorder.calls, (test::Calls{"SetPrinterDataW " + test::Ascii(GetParam().sizeName),
                                         "SetPrinterDataW " + test::Ascii(GetParam().dataName)}));
}

TEST_P(PrinterBlocks, StopAtALengthThatCannotBeStored) {
  world_.platform.faults.FailOperation("SetPrinterDataW", 1);
  world_.platform.faults.StartTrace();
  EXPECT_FALSE(Write("abcde"));
  EXPECT_TRUE(world_.printer->data.empty());
  EXPECT_EQ(std::ranges::count(world_.platform.faults.trace(), "SetPrinterDataW"), 1);
}

TEST_P(PrinterBlocks, AreNotStoredWhenTheirDataCannotBe) {
  world_.platform.faults.FailOperation("SetPrinterDataW", 2);
  EXPECT_FALSE(Write("abcde"));
  const StoredValues expected = {{GetParam().sizeName, StoredValue::Dword(5)}};
  EXPECT_EQ(world_.printer->data, expected);
}

TEST_P(PrinterBlocks, AskForTheUserOnlyForTheRecord) {
  world_.platform.faults.StartTrace();
  EXPECT_TRUE(Write("abcde"));
  EXPECT_EQ(std::ranges::count(world_.platform.faults.trace(), "GetUserNameW"),
            GetParam().block == PrinterBlock::kPrivateDevmode ? 1 : 0);
}

TEST_P(PrinterBlocks, AreReplacedAsAWhole) {
  EXPECT_TRUE(Write("abcde"));
  EXPECT_TRUE(Write("f"));
  EXPECT_EQ(ValueOf(world_.printer->data, GetParam().sizeName), StoredValue::Dword(1));
  EXPECT_EQ(ValueOf(world_.printer->data, GetParam().dataName), Binary({'f'}));
}

struct UserNameCase {
  const char* name;
  std::u16string userName;
  std::u16string appended;
};

class UserNameInValueNames : public testing::TestWithParam<UserNameCase> {};

// The system keeps names of at most 256 characters.
INSTANTIATE_TEST_SUITE_P(
    Lengths, UserNameInValueNames,
    testing::Values(UserNameCase{"None", u"", u""}, UserNameCase{"Short", u"Ada L.", u"Ada L."},
                    UserNameCase{"Of31", std::u16string(31, u'n'), std::u16string(31, u'n')},
                    UserNameCase{"Of32", std::u16string(31, u'n') + u'x', std::u16string(31, u'n')},
                    UserNameCase{"Of256", std::u16string(31, u'n') + std::u16string(225, u'x'),
                                 std::u16string(31, u'n')},
                    UserNameCase{"NotToBeHad", std::u16string(257, u'n'), u""}),
    test::CaseName());

TEST_P(UserNameInValueNames, IsCutTo31Characters) {
  test::TestWorld world;
  world.platform.security.userName = GetParam().userName;
  const PrinterHandle printer = world.OpenPrinter();
  EXPECT_TRUE(WritePrinterBlock(printer, "ab", 2, PrinterBlock::kPrivateDevmode));
  const StoredValues expected = {
      {u"PrivateDevmodeDataSize" + GetParam().appended, StoredValue::Dword(2)},
      {u"PrivateDevmodeData" + GetParam().appended, Binary({'a', 'b'})}};
  EXPECT_EQ(world.printer->data, expected);
  world.platform.print.ClosePrinter(printer);
}

TEST_F(PrinterStore, UserWhoseNameFailsSharesThePairWithoutAName) {
  world_.platform.faults.FailOperation("GetUserNameW");
  EXPECT_TRUE(WritePrinterBlock(printer_, "ab", 2, PrinterBlock::kPrivateDevmode));
  EXPECT_TRUE(world_.printer->data.contains(u"PrivateDevmodeDataSize"));
  EXPECT_TRUE(world_.printer->data.contains(u"PrivateDevmodeData"));
}

TEST_F(PrinterStore, EachUserHasARecordOfHisOwn) {
  EXPECT_TRUE(WritePrinterBlock(printer_, "a", 1, PrinterBlock::kPrivateDevmode));
  world_.platform.security.userName = u"bob";
  EXPECT_TRUE(WritePrinterBlock(printer_, "b", 1, PrinterBlock::kPrivateDevmode));
  EXPECT_EQ(world_.printer->data[u"PrivateDevmodeDataada"], Binary({'a'}));
  EXPECT_EQ(world_.printer->data[u"PrivateDevmodeDatabob"], Binary({'b'}));
}

// ---- The version block --------------------------------------------------------------------------

struct VersionCase {
  const char* name;
  StoredValues before;
  std::uint32_t size;
  std::vector<std::byte> bytes;
};

StoredValues VersionBlock(std::initializer_list<int> bytes) {
  return {{u"PrinterDataSize", StoredValue::Dword(static_cast<std::uint32_t>(bytes.size()))},
          {u"PrinterData", Binary(bytes)}};
}

const std::vector<std::byte> kFreshVersion = Bytes({0x00, 0x06, 8, 0, 0, 0, 0, 0});

class UpgradedPrinterData : public testing::TestWithParam<VersionCase> {};

// Version 1535 is FF 05, version 1536 is 00 06.
INSTANTIATE_TEST_SUITE_P(
    Blocks, UpgradedPrinterData,
    testing::Values(
        VersionCase{"Missing", {}, 8, kFreshVersion},
        VersionCase{"LengthAlone", {{u"PrinterDataSize", StoredValue::Dword(8)}}, 8, kFreshVersion},
        VersionCase{"DataAlone", {{u"PrinterData", Binary({1, 7, 8, 0})}}, 8, kFreshVersion},
        VersionCase{"LengthZero",
                    {{u"PrinterDataSize", StoredValue::Dword(0)},
                     {u"PrinterData", Binary({1, 7, 8, 0, 1, 2, 3, 4})}},
                    8,
                    kFreshVersion},
        VersionCase{"LengthBelowTheData",
                    {{u"PrinterDataSize", StoredValue::Dword(4)},
                     {u"PrinterData", Binary({1, 7, 8, 0, 1, 2, 3, 4})}},
                    8,
                    kFreshVersion},
        VersionCase{"LengthBeyondAllReason",
                    {{u"PrinterDataSize", StoredValue::Dword(0xFFFFFFFF)},
                     {u"PrinterData", Binary({1, 7, 8, 0})}},
                    8,
                    kFreshVersion},
        VersionCase{"OlderOf2", VersionBlock({0xFF, 5}), 8, kFreshVersion},
        VersionCase{"OlderOf4", VersionBlock({0xFF, 5, 4, 0}), 8, kFreshVersion},
        VersionCase{"OlderOf8", VersionBlock({0xFF, 5, 9, 9, 0xDD, 0xCC, 0xBB, 0xAA}), 8,
                    Bytes({0, 6, 8, 0, 0xDD, 0xCC, 0xBB, 0xAA})},
        VersionCase{"OlderOf12", VersionBlock({0xFF, 5, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8}), 8,
                    Bytes({0, 6, 8, 0, 1, 2, 3, 4})},
        VersionCase{"VersionZero", VersionBlock({0, 0, 8, 0, 1, 2, 3, 4}), 8,
                    Bytes({0, 6, 8, 0, 1, 2, 3, 4})},
        VersionCase{"OursOf4", VersionBlock({0, 6, 99, 0}), 4, Bytes({0, 6, 99, 0})},
        VersionCase{"OursOf8", VersionBlock({0, 6, 99, 9, 1, 2, 3, 4}), 8,
                    Bytes({0, 6, 99, 9, 1, 2, 3, 4})},
        VersionCase{"OursOf12", VersionBlock({0, 6, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8}), 12,
                    Bytes({0, 6, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8})},
        VersionCase{"NewerOf12", VersionBlock({1, 6, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8}), 12,
                    Bytes({1, 6, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8})},
        VersionCase{"NewestOf8", VersionBlock({0xFF, 0xFF, 8, 0, 1, 2, 3, 4}), 8,
                    Bytes({0xFF, 0xFF, 8, 0, 1, 2, 3, 4})}),
    test::CaseName());

TEST_P(UpgradedPrinterData, AreWrittenWithTheirLength) {
  test::TestWorld world;
  world.printer->data = GetParam().before;
  const PrinterHandle printer = world.OpenPrinter();
  world.platform.faults.StartTrace();
  EXPECT_TRUE(UpgradePrinterData(printer));
  EXPECT_EQ(world.printer->data[u"PrinterDataSize"], StoredValue::Dword(GetParam().size));
  EXPECT_EQ(world.printer->data[u"PrinterData"], StoredValue::Binary(GetParam().bytes));
  EXPECT_EQ(std::ranges::count(world.platform.faults.trace(), "SetPrinterDataW"), 2);
  world.platform.print.ClosePrinter(printer);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST_P(UpgradedPrinterData, StayAsTheyWereWithoutMemory) {
  test::TestWorld world;
  world.printer->data = GetParam().before;
  const PrinterHandle printer = world.OpenPrinter();
  world.platform.faults.FailOperation("HeapAlloc");
  EXPECT_FALSE(UpgradePrinterData(printer));
  EXPECT_EQ(world.printer->data, GetParam().before);
  world.platform.print.ClosePrinter(printer);
}

TEST_P(UpgradedPrinterData, CountAsUpgradedEvenWhenTheyCannotBeStored) {
  test::TestWorld world;
  world.printer->data = GetParam().before;
  const PrinterHandle printer = world.OpenPrinter();
  world.platform.faults.FailOperation("SetPrinterDataW");
  EXPECT_TRUE(UpgradePrinterData(printer));
  EXPECT_EQ(world.printer->data, GetParam().before);
  world.platform.print.ClosePrinter(printer);
  EXPECT_EQ(world.Leftovers(), "");
}

// ---- The tray block -----------------------------------------------------------------------------

TEST_F(PrinterStore, TrayBlockIsEightBytesUnderItsPair) {
  EXPECT_TRUE(WriteTrayBlock(printer_, {{1, 0x01020304}}));
  const StoredValues expected = {{u"TrayInstallSize", StoredValue::Dword(8)},
                                 {u"TrayInstall", Binary({1, 0, 0, 0, 4, 3, 2, 1})}};
  EXPECT_EQ(world_.printer->data, expected);
}

TEST_F(PrinterStore, TrayBlockIsReadAsItWasWritten) {
  EXPECT_TRUE(WriteTrayBlock(printer_, {{7, 0xFFFFFFFF}}));
  std::uint32_t size = kUnsetWord;
  const HeapBlock<TrayBlock> block = ReadTrayBlock(printer_, &size);
  ASSERT_TRUE(block);
  EXPECT_EQ(size, 8U);
  EXPECT_EQ(block->Trays, (std::array<std::uint32_t, 2>{7, 0xFFFFFFFF}));
}

TEST_F(PrinterStore, TrayBlockIsNotStoredWhenEitherValueIsNot) {
  world_.platform.faults.FailOperation("SetPrinterDataW", 2);
  EXPECT_FALSE(WriteTrayBlock(printer_, {{1, 1}}));
  EXPECT_FALSE(world_.printer->data.contains(u"TrayInstall"));
  world_.printer->data.clear();
  world_.platform.faults.FailOperation("SetPrinterDataW", 1);
  EXPECT_FALSE(WriteTrayBlock(printer_, {{1, 1}}));
  EXPECT_TRUE(world_.printer->data.empty());
}

StoredValues TrayPair(std::uint32_t size, std::vector<std::byte> bytes) {
  return {{u"TrayInstallSize", StoredValue::Dword(size)},
          {u"TrayInstall", StoredValue::Binary(std::move(bytes))}};
}

struct TrayReadCase {
  const char* name;
  StoredValues data;
  std::optional<std::array<std::uint32_t, 2>> words;
  std::uint32_t size;  // told for a block that is there
};

class TrayBlockRead : public testing::TestWithParam<TrayReadCase> {};

INSTANTIATE_TEST_SUITE_P(
    Pairs, TrayBlockRead,
    testing::Values(
        TrayReadCase{"Missing", {}, {}, 0},
        TrayReadCase{"LengthAlone", {{u"TrayInstallSize", StoredValue::Dword(8)}}, {}, 0},
        TrayReadCase{"DataAlone", {{u"TrayInstall", Binary({1, 0, 0, 0, 1, 0, 0, 0})}}, {}, 0},
        TrayReadCase{"LengthZero", TrayPair(0, Bytes({1, 0, 0, 0, 1, 0, 0, 0})), {}, 0},
        TrayReadCase{"LengthZeroAndNoData", TrayPair(0, {}), {}, 0},
        TrayReadCase{"LengthBelowTheData", TrayPair(7, Bytes({1, 0, 0, 0, 1, 0, 0, 0})), {}, 0},
        TrayReadCase{"LengthOfAnotherType",
                     {{u"TrayInstallSize", StoredValue::Text(u"eight")},
                      {u"TrayInstall", Binary({1, 0, 0, 0, 1, 0, 0, 0})}},
                     {},
                     0},
        TrayReadCase{"Exact", TrayPair(8, Bytes({1, 0, 0, 0, 2, 0, 0, 0})), {{1, 2}}, 8},
        TrayReadCase{"ShorterThanAWord", TrayPair(1, Bytes({1})), {{1, 0}}, 1},
        TrayReadCase{"OneWord", TrayPair(4, Bytes({1, 0, 0, 0})), {{1, 0}}, 4},
        TrayReadCase{"DataBelowTheLength", TrayPair(8, Bytes({1, 0, 0, 0})), {{1, 0}}, 8},
        TrayReadCase{
            "Longer", TrayPair(12, Bytes({1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0})), {{1, 2}}, 12},
        TrayReadCase{"Longest",
                     TrayPair(0x10000, std::vector<std::byte>(0x10000, std::byte{1})),
                     {{0x01010101, 0x01010101}},
                     0x10000},
        TrayReadCase{"OneByteTooLong",
                     TrayPair(0x10001, std::vector<std::byte>(0x10001, std::byte{1})),
                     {},
                     0},
        TrayReadCase{"LengthBeyondAllReason", TrayPair(0xFFFFFFFF, Bytes({1, 0, 0, 0})), {}, 0}),
    test::CaseName());

TEST_P(TrayBlockRead, GivesTheWordsOrNull) {
  test::TestWorld world;
  world.printer->data = GetParam().data;
  const PrinterHandle printer = world.OpenPrinter();
  std::uint32_t size = kUnsetWord;
  {
    const HeapBlock<TrayBlock> block = ReadTrayBlock(printer, &size);
    ASSERT_EQ(static_cast<bool>(block), GetParam().words.has_value());
    if (block) {
      EXPECT_EQ(block->Trays, *GetParam().words);
      EXPECT_EQ(size, GetParam().size);
      std::vector<std::byte> stored = GetParam().data.at(u"TrayInstall").bytes;
      EXPECT_EQ(std::memcmp(block.get(), stored.data(), stored.size()), 0);
    }
  }
  world.platform.print.ClosePrinter(printer);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST_F(PrinterStore, TrayBlockOfAHugeLengthAsksForNoMemory) {
  world_.printer->data = TrayPair(0x10001, Bytes({1, 0, 0, 0}));
  world_.platform.faults.StartTrace();
  std::uint32_t size = kUnsetWord;
  EXPECT_FALSE(ReadTrayBlock(printer_, &size));
  EXPECT_EQ(world_.platform.faults.trace(), std::vector<std::string>{"GetPrinterDataW"});
}

TEST_F(PrinterStore, TrayBlockIsNullWhenAnyCallFails) {
  world_.printer->data = TrayPair(8, Bytes({1, 0, 0, 0, 1, 0, 0, 0}));
  for (std::size_t n = 1; n <= 3; ++n) {
    world_.platform.faults.FailCall(n);
    std::uint32_t size = kUnsetWord;
    EXPECT_FALSE(ReadTrayBlock(printer_, &size)) << n;
    EXPECT_TRUE(world_.platform.faults.fired()) << n;
    EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U) << n;
  }
}

// ---- The user's own store -----------------------------------------------------------------------

class UserStore : public testing::Test {
 protected:
  StoredValues& Values() { return world_.platform.registry.Values(kPrinterKey); }

  test::TestWorld world_;
  std::uint32_t word_ = kUnsetWord;
  std::array<char16_t, kUserTextUnits> text_ = {u'o', u'l', u'd'};
};

TEST_F(UserStore, WordsLieBelowTheUserAndTheSubkey) {
  EXPECT_TRUE(WriteUserDword(u"Cancel", 0x01020304, u"Front office"));
  ASSERT_TRUE(world_.platform.registry.Has(kPrinterKey));
  const StoredValues expected = {{u"cancel", {kRegDword, Bytes({4, 3, 2, 1})}}};
  EXPECT_EQ(Values(), expected);
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(UserStore, CallsGoFromTheTokenToTheKeyAndCloseBoth) {
  CallRecorder recorder(world_);
  EXPECT_TRUE(WriteUserDword(u"Cancel", 1, u"Front office"));
  EXPECT_TRUE(ReadUserValue(u"Cancel", &word_, u"Front office"));
  EXPECT_EQ(recorder.calls, test::InOrder({test::UserWrite("Cancel", u"Front office"),
                                           test::UserRead("Cancel", u"Front office")}));
  EXPECT_EQ(word_, 1U);
}

TEST_F(UserStore, ReadingMakesAMissingKey) {
  EXPECT_FALSE(world_.platform.registry.Has(kPrinterKey));
  EXPECT_TRUE(ReadUserValue(u"InstallMode", &word_, u"Front office"));
  EXPECT_TRUE(world_.platform.registry.Has(kPrinterKey));
  EXPECT_EQ(word_, kUnsetWord);
}

TEST_F(UserStore, SubkeysAreApart) {
  EXPECT_TRUE(WriteUserDword(u"TrayInstall1", 1, u"A printer"));
  EXPECT_TRUE(WriteUserDword(u"TrayInstall1", 2, u"A driver"));
  EXPECT_TRUE(ReadUserValue(u"TrayInstall1", &word_, u"A printer"));
  EXPECT_EQ(word_, 1U);
  EXPECT_TRUE(ReadUserValue(u"TrayInstall1", &word_, u"A driver"));
  EXPECT_EQ(word_, 2U);
}

TEST_F(UserStore, UsersAreApart) {
  EXPECT_TRUE(WriteUserDword(u"Cancel", 1, u"Front office"));
  world_.platform.security.userSid = u"S-1-5-18";
  EXPECT_TRUE(ReadUserValue(u"Cancel", &word_, u"Front office"));
  EXPECT_EQ(word_, kUnsetWord);
  EXPECT_TRUE(world_.platform.registry.Has(u"S-1-5-18\\SOFTWARE\\OstrelUPD\\Front office"));
}

TEST_F(UserStore, SubkeyTooLongForAPathOpensNothing) {
  const std::u16string subkey(600, u's');
  CallRecorder recorder(world_);
  EXPECT_FALSE(ReadUserValue(u"Cancel", &word_, subkey.c_str()));
  EXPECT_FALSE(ReadUserValue(u"Suffix", text_, subkey.c_str()));
  EXPECT_FALSE(WriteUserDword(u"Cancel", 1, subkey.c_str()));
  EXPECT_FALSE(WriteUserString(u"Suffix", u"de", subkey.c_str()));
  EXPECT_TRUE(std::ranges::none_of(
      recorder.calls, [](const std::string& call) { return call.starts_with("Reg"); }));
  EXPECT_EQ(word_, kUnsetWord);
  EXPECT_EQ(std::u16string(text_.data()), u"old");
  EXPECT_EQ(world_.Leftovers(), "");
}

struct WordCase {
  const char* name;
  StoredValue stored;
  std::uint32_t read;
};

class UserWordRead : public testing::TestWithParam<WordCase> {};

INSTANTIATE_TEST_SUITE_P(
    Values, UserWordRead,
    testing::Values(WordCase{"Word", StoredValue::Dword(0xFFFFFFFE), 0xFFFFFFFE},
                    WordCase{"Zero", StoredValue::Dword(0), 0},
                    WordCase{"NoBytes", {kRegDword, {}}, kUnsetWord},
                    WordCase{"ThreeBytes", {kRegDword, Bytes({1, 0, 0})}, kUnsetWord},
                    WordCase{
                        "EightBytes", {kRegDword, Bytes({1, 0, 0, 0, 0, 0, 0, 0})}, kUnsetWord},
                    WordCase{"Text", StoredValue::Text(u"1"), kUnsetWord},
                    WordCase{"FourBytesOfBinary", Binary({1, 0, 0, 0}), kUnsetWord}),
    test::CaseName());

TEST_P(UserWordRead, SucceedsAndTakesNothingButAWord) {
  test::TestWorld world;
  world.UserValues(u"Front office")[u"cancel"] = GetParam().stored;
  std::uint32_t word = kUnsetWord;
  EXPECT_TRUE(ReadUserValue(u"Cancel", &word, u"Front office"));
  EXPECT_EQ(word, GetParam().read);
  EXPECT_EQ(world.Leftovers(), "");
}

// The bytes of so many units of text, without a terminator.
StoredValue Units(std::size_t count, char16_t unit = u't') {
  const std::u16string text(count, unit);
  StoredValue value = StoredValue::Text(text);
  value.bytes.resize(count * sizeof(char16_t));
  return value;
}

struct TextCase {
  const char* name;
  StoredValue stored;
  std::u16string read;
};

class UserTextRead : public testing::TestWithParam<TextCase> {};

INSTANTIATE_TEST_SUITE_P(
    Values, UserTextRead,
    testing::Values(TextCase{"Text", StoredValue::Text(u"Hazel 2 Series"), u"Hazel 2 Series"},
                    TextCase{"Empty", StoredValue::Text(u""), u""},
                    TextCase{"NoBytes", {kRegSz, {}}, u""},
                    TextCase{"WithoutATerminator", Units(130), std::u16string(130, u't')},
                    TextCase{"TextBehindATerminator",
                             StoredValue::Text(std::u16string_view(u"one\0two", 7)), u"one"},
                    TextCase{"LongestWithATerminator", StoredValue::Text(std::u16string(259, u't')),
                             std::u16string(259, u't')},
                    TextCase{"LongestWithoutATerminator", Units(260), std::u16string(259, u't')},
                    TextCase{"TooLong", Units(261), u"old"},
                    TextCase{"Word", StoredValue::Dword(0x00410041), u"old"},
                    TextCase{"Binary", Binary({'t', 0, 0, 0}), u"old"}),
    test::CaseName());

TEST_P(UserTextRead, SucceedsAndTakesNothingButAText) {
  test::TestWorld world;
  world.UserValues(u"Front office")[u"printername"] = GetParam().stored;
  std::array<char16_t, kUserTextUnits + 1> text;
  text.fill(u'#');
  std::u16string_view(u"old", 4).copy(text.data(), 4);
  EXPECT_TRUE(
      ReadUserValue(u"PrinterName", std::span(text).first<kUserTextUnits>(), u"Front office"));
  EXPECT_EQ(std::u16string(text.data()), GetParam().read);
  EXPECT_EQ(text.back(), u'#');
  EXPECT_EQ(world.Leftovers(), "");
}

TEST_F(UserStore, TextIsCutToTheCallersBuffer) {
  EXPECT_TRUE(WriteUserString(u"Suffix", u"esmx", u"A driver"));
  char16_t text[4] = {u'#', u'#', u'#', u'#'};
  EXPECT_TRUE(ReadUserValue(u"Suffix", std::span(text, 3), u"A driver"));
  EXPECT_EQ(std::u16string(text), u"es");
  EXPECT_EQ(text[3], u'#');
}

TEST_F(UserStore, MissingTextLeavesWhatTheCallerHad) {
  EXPECT_TRUE(ReadUserValue(u"PrinterName", text_, u"Front office"));
  EXPECT_EQ(std::u16string(text_.data()), u"old");
}

struct WrittenTextCase {
  const char* name;
  std::size_t characters;
  std::size_t readBack;
};

class UserTextWritten : public testing::TestWithParam<WrittenTextCase> {};

INSTANTIATE_TEST_SUITE_P(Lengths, UserTextWritten,
                         testing::Values(WrittenTextCase{"Of0", 0, 0}, WrittenTextCase{"Of1", 1, 1},
                                         WrittenTextCase{"Of129", 129, 129},
                                         WrittenTextCase{"Of130", 130, 130},
                                         WrittenTextCase{"Of131", 131, 130},
                                         WrittenTextCase{"Of259", 259, 130},
                                         WrittenTextCase{"Of300", 300, 130}),
                         test::CaseName());

TEST_P(UserTextWritten, AlwaysTakes260Bytes) {
  test::TestWorld world;
  const std::u16string text(GetParam().characters, u't');
  EXPECT_TRUE(WriteUserString(u"ConfigPrintInfo", text.c_str(), u"Front office"));
  StoredValue expected = Units(GetParam().readBack);
  expected.bytes.resize(260);  // zeros behind the text
  EXPECT_EQ(ValueOf(world.UserValues(u"Front office"), u"configprintinfo"), expected);
  std::array<char16_t, kUserTextUnits> read;
  read.fill(u'#');
  EXPECT_TRUE(ReadUserValue(u"ConfigPrintInfo", read, u"Front office"));
  EXPECT_EQ(std::u16string(read.data()), std::u16string(GetParam().readBack, u't'));
}

TEST_F(UserStore, NullTextIsWrittenAsAnEmptyOne) {
  EXPECT_TRUE(WriteUserString(u"Suffix", nullptr, u"Front office"));
  EXPECT_EQ(Values()[u"suffix"], (StoredValue{kRegSz, std::vector<std::byte>(260)}));
}

struct StoreFaultCase {
  const char* name;
  const char* operation;
  std::size_t call;
  bool reads;   // the result of a read
  bool writes;  // the result of a write
};

class UserStoreFault : public testing::TestWithParam<StoreFaultCase> {};

INSTANTIATE_TEST_SUITE_P(
    Calls, UserStoreFault,
    testing::Values(StoreFaultCase{"Token", "OpenProcessToken", 1, false, false},
                    StoreFaultCase{"SizeOfTheUser", "GetTokenInformation", 1, false, false},
                    StoreFaultCase{"MemoryForTheUser", "HeapAlloc", 1, false, false},
                    StoreFaultCase{"User", "GetTokenInformation", 2, false, false},
                    StoreFaultCase{"TextOfTheUser", "ConvertSidToStringSidW", 1, false, false},
                    StoreFaultCase{"Key", "RegCreateKeyExW", 1, false, false},
                    StoreFaultCase{"ReadingTheValue", "RegQueryValueExW", 1, true, true},
                    StoreFaultCase{"WritingTheValue", "RegSetValueExW", 1, true, false}),
    test::CaseName());

TEST_P(UserStoreFault, TellsAndLeavesTheCallersValueAndNothingOpen) {
  const auto [name, operation, call, reads, writes] = GetParam();
  test::TestWorld world;
  world.UserValues(u"Front office")[u"cancel"] = StoredValue::Dword(1);
  world.UserValues(u"Front office")[u"suffix"] = StoredValue::Text(u"de");
  const StoredValues before = world.UserValues(u"Front office");
  const bool readFails = std::string_view(operation) != "RegSetValueExW";

  std::uint32_t word = kUnsetWord;
  world.platform.faults.FailOperation(operation, call);
  EXPECT_EQ(ReadUserValue(u"Cancel", &word, u"Front office"), reads);
  EXPECT_EQ(word, readFails ? kUnsetWord : 1U);
  world.platform.faults.Clear();

  std::array<char16_t, 8> text = {u'o', u'l', u'd'};
  world.platform.faults.FailOperation(operation, call);
  EXPECT_EQ(ReadUserValue(u"Suffix", text, u"Front office"), reads);
  EXPECT_EQ(std::u16string(text.data()), readFails ? u"old" : u"de");
  world.platform.faults.Clear();

  world.platform.faults.FailOperation(operation, call);
  EXPECT_EQ(WriteUserDword(u"Cancel", 2, u"Front office"), writes);
  world.platform.faults.Clear();
  world.platform.faults.FailOperation(operation, call);
  EXPECT_EQ(WriteUserString(u"Suffix", u"fr", u"Front office"), writes);
  EXPECT_EQ(world.UserValues(u"Front office") == before, !writes);
  EXPECT_EQ(world.Leftovers(), "");
}

// ---- Missing trays ------------------------------------------------------------------------------

TEST_F(PrinterStore, WithoutInformationBothOptionalTraysAreMissing) {
  EXPECT_EQ(CountMissingTrays(nullptr), 2);
  EXPECT_EQ(CountMissingTrays(printer_), 2);
}

using TrayWords = std::array<std::uint32_t, 2>;
using ModeWord = std::optional<std::uint32_t>;

void SetUserTrays(test::TestWorld& world, const TrayWords& words) {
  world.UserValues(test::kPrinterName)[u"trayinstall1"] = StoredValue::Dword(words[0]);
  world.UserValues(test::kPrinterName)[u"trayinstall2"] = StoredValue::Dword(words[1]);
}

class MissingTrays
    : public testing::TestWithParam<std::tuple<ModeWord, ModeWord, std::uint32_t, std::uint32_t>> {
 protected:
  ~MissingTrays() override { world_.platform.print.ClosePrinter(printer_); }

  test::TestWorld world_;
  PrinterHandle printer_ = world_.OpenPrinter();
};

std::string ModeName(const ModeWord& mode) {
  return mode ? std::to_string(*mode) : "None";
}

struct CombinationName {
  template <typename Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    const auto& [installMode, upd, tray2, tray3] = row.param;
    return "InstallMode" + ModeName(installMode) + "Upd" + ModeName(upd) + "Trays" +
           std::to_string(tray2) + std::to_string(tray3);
  }
};

INSTANTIATE_TEST_SUITE_P(Combinations, MissingTrays,
                         testing::Combine(testing::Values(ModeWord{}, 0U, 1U, 2U),
                                          testing::Values(ModeWord{}, 0U, 1U, 2U),
                                          testing::Values(0U, 1U, 2U), testing::Values(0U, 1U, 2U)),
                         CombinationName());

TEST_P(MissingTrays, AreTheWordsOfTheModeThatAreNotOne) {
  const auto [installMode, upd, tray2, tray3] = GetParam();
  const TrayWords words = {tray2, tray3};
  const TrayWords others = {tray2 == 1 ? 0U : 1U, tray3 == 1 ? 0U : 1U};
  const bool universal = installMode == 1U || upd == 1U;
  StoredValues& values = world_.UserValues(test::kPrinterName);
  if (installMode) {
    values[u"installmode"] = StoredValue::Dword(*installMode);
  }
  if (upd) {
    values[u"upd"] = StoredValue::Dword(*upd);
  }
  SetUserTrays(world_, universal ? words : others);
  WriteTrayBlock(printer_, {universal ? others : words});
  EXPECT_EQ(CountMissingTrays(printer_), (tray2 != 1 ? 1 : 0) + (tray3 != 1 ? 1 : 0));
}

class MissingTraysOfOnePrinter : public PrinterStore {
 protected:
  StoredValues& values_ = world_.UserValues(test::kPrinterName);
};

TEST_F(MissingTraysOfOnePrinter, AreBothInUniversalModeWithoutWords) {
  WriteTrayBlock(printer_, {{1, 1}});
  values_[u"installmode"] = StoredValue::Dword(1);
  EXPECT_EQ(CountMissingTrays(printer_), 2);
  values_[u"trayinstall2"] = StoredValue::Dword(1);
  EXPECT_EQ(CountMissingTrays(printer_), 1);
}

TEST_F(MissingTraysOfOnePrinter, AreBothWithoutABlockWhateverTheUsersWordsSay) {
  SetUserTrays(world_, {1, 1});
  EXPECT_EQ(CountMissingTrays(printer_), 2);
}

TEST_F(MissingTraysOfOnePrinter, AreThoseOfTheBlockWithoutADescription) {
  values_[u"installmode"] = StoredValue::Dword(1);
  SetUserTrays(world_, {1, 1});
  world_.printer->describes = false;
  EXPECT_EQ(CountMissingTrays(printer_), 2);
  WriteTrayBlock(printer_, {{1, 2}});
  EXPECT_EQ(CountMissingTrays(printer_), 1);
}

TEST_F(MissingTraysOfOnePrinter, GoByWordsOnlyForTheMode) {
  WriteTrayBlock(printer_, {{1, 1}});
  values_[u"installmode"] = StoredValue::Text(u"1");
  values_[u"upd"] = Binary({1, 0, 0, 0});
  EXPECT_EQ(CountMissingTrays(printer_), 0);
}

TEST_F(MissingTraysOfOnePrinter, IgnoreWhatStandsUnderTheDriversName) {
  WriteTrayBlock(printer_, {{1, 2}});
  StoredValues& driver = world_.UserValues(test::kDriverName);
  driver[u"installmode"] = StoredValue::Dword(1);
  driver[u"trayinstall1"] = StoredValue::Dword(0);
  driver[u"trayinstall2"] = StoredValue::Dword(0);
  EXPECT_EQ(CountMissingTrays(printer_), 1);
  values_[u"upd"] = StoredValue::Dword(1);
  SetUserTrays(world_, {1, 1});
  EXPECT_EQ(CountMissingTrays(printer_), 0);
}

struct TrayOrderCase {
  const char* name;
  std::uint32_t installMode;
  std::uint32_t upd;
  std::vector<std::string> reads;
};

class MissingTraysOrder : public testing::TestWithParam<TrayOrderCase> {};

INSTANTIATE_TEST_SUITE_P(
    Modes, MissingTraysOrder,
    testing::Values(TrayOrderCase{"InstallMode",
                                  1,
                                  1,
                                  {"RegQueryValueExW InstallMode", "RegQueryValueExW TrayInstall1",
                                   "RegQueryValueExW TrayInstall2"}},
                    TrayOrderCase{
                        "Upd",
                        0,
                        1,
                        {"RegQueryValueExW InstallMode", "RegQueryValueExW UPD",
                         "RegQueryValueExW TrayInstall1", "RegQueryValueExW TrayInstall2"}},
                    TrayOrderCase{"Neither",
                                  0,
                                  0,
                                  {"RegQueryValueExW InstallMode", "RegQueryValueExW UPD",
                                   "GetPrinterDataW TrayInstallSize"}}),
    test::CaseName());

TEST_P(MissingTraysOrder, AsksForTheModeFirstAndOnlyForWhatItNeeds) {
  test::TestWorld world;
  StoredValues& values = world.UserValues(test::kPrinterName);
  values[u"installmode"] = StoredValue::Dword(GetParam().installMode);
  values[u"upd"] = StoredValue::Dword(GetParam().upd);
  const PrinterHandle printer = world.OpenPrinter();
  {
    CallRecorder recorder(world);
    CountMissingTrays(printer);
    std::vector<std::string> reads;
    std::ranges::copy_if(recorder.calls, std::back_inserter(reads), [](const std::string& call) {
      return call.starts_with("RegQueryValueExW") || call.starts_with("GetPrinterDataW");
    });
    EXPECT_EQ(reads, GetParam().reads);
  }
  world.platform.print.ClosePrinter(printer);
  EXPECT_EQ(world.Leftovers(), "");
}

// ---- The ini file -------------------------------------------------------------------------------

class ConfigValue : public testing::Test {
 protected:
  std::u16string Read(const char16_t* section, const char16_t* key, std::size_t units = 32) {
    std::vector<char16_t> output(units + 1, u'#');
    ReadConfigValue(std::span(output).first(units), section, key);
    EXPECT_EQ(output.back(), u'#');
    return units == 0 ? std::u16string() : std::u16string(output.data());
  }

  test::TestWorld world_;
};

TEST_F(ConfigValue, IsReadFromItsSectionAndKey) {
  test::PutConfig(
      world_,
      "[Other]\r\nPrinterName=wrong\r\n[Print]\r\nPrinterName=Ostrel Printer\r\nOEM_NAME=Acme\r\n");
  EXPECT_EQ(Read(u"Print", u"PrinterName"), u"Ostrel Printer");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME"), u"Acme");
}

TEST_F(ConfigValue, IsFoundWithoutRegardToLetterCase) {
  test::PutConfig(world_, "[PRINT]\r\noem_name=Acme\r\n");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME"), u"Acme");
}

TEST_F(ConfigValue, IsEmptyWithoutFileSectionOrKey) {
  EXPECT_EQ(Read(u"Print", u"OEM_NAME"), u"");
  test::PutConfig(world_, "[Print]\r\nPrinterName=Ostrel\r\n");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME"), u"");
  EXPECT_EQ(Read(u"Prints", u"PrinterName"), u"");
}

TEST_F(ConfigValue, IsCutToTheOutput) {
  test::PutConfig(world_, "[Print]\r\nOEM_NAME=Acme\r\n");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME", 5), u"Acme");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME", 4), u"Acm");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME", 1), u"");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME", 0), u"");
}

TEST_F(ConfigValue, IsEmptyWhenItCannotBeRead) {
  test::PutConfig(world_, "[Print]\r\nOEM_NAME=Acme\r\n");
  world_.platform.faults.FailOperation("GetPrivateProfileStringW");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME"), u"");
}

TEST_F(ConfigValue, LiesBesideALibraryOfAnotherNameUnderThatName) {
  world_.platform.modules.Install(u"D:\\lib\\other.dll");
  world_.process.LibraryModule = world_.platform.modules.LoadLibraryW(u"D:\\lib\\other.dll");
  test::PutConfig(world_, "[Print]\r\nOEM_NAME=Acme\r\n", u"D:\\lib\\otherConfig.ini");
  EXPECT_EQ(Read(u"Print", u"OEM_NAME"), u"Acme");
}

TEST_F(ConfigValue, IsEmptyWhenThePathDoesNotFit) {
  // Directory and "\" take 246 units, "Config.ini" and the prefix 13 more: 259 fit.
  for (const std::size_t prefix : {std::size_t{3}, std::size_t{4}}) {
    const std::u16string directory = u"C:\\" + std::u16string(241, u'd') + u"\\";
    const std::u16string stem(prefix, u's');
    const std::u16string library = directory + stem + u".dll";
    world_.platform.modules.Install(library);
    world_.process.LibraryModule = world_.platform.modules.LoadLibraryW(library.c_str());
    ASSERT_NE(world_.process.LibraryModule, nullptr);
    test::PutConfig(world_, "[Print]\r\nOEM_NAME=Acme\r\n", directory + stem + u"Config.ini");
    EXPECT_EQ(Read(u"Print", u"OEM_NAME"), prefix == 3 ? u"Acme" : u"") << prefix;
  }
}

// Takes the path of the one question, and refuses everything else.
class ProfileQuestions final : public Files {
 public:
  std::uint32_t GetFileAttributesW(const char16_t* /*path*/) override {
    return kInvalidFileAttributes;
  }
  bool FindFirstFileW(const char16_t* /*path*/) override { return false; }
  FileHandle CreateFileW(const char16_t* /*path*/, Access /*access*/) override { return nullptr; }
  bool GetFileSizeEx(FileHandle /*file*/, std::uint64_t* /*sizeBytes*/) override { return false; }
  bool ReadFile(FileHandle /*file*/, void* /*buffer*/, std::uint32_t /*sizeBytes*/,
                std::uint32_t* /*readBytes*/) override {
    return false;
  }
  bool WriteFile(FileHandle /*file*/, const void* /*data*/, std::uint32_t /*sizeBytes*/,
                 std::uint32_t* /*writtenBytes*/) override {
    return false;
  }
  bool SetEndOfFile(FileHandle /*file*/) override { return false; }
  bool CloseHandle(FileHandle /*file*/) override { return false; }
  bool DeleteFileW(const char16_t* /*path*/) override { return false; }
  bool CreateDirectoryW(const char16_t* /*path*/) override { return false; }
  std::uint32_t GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                         const char16_t* fallback, char16_t* /*buffer*/,
                                         std::uint32_t units, const char16_t* path) override {
    asked.push_back(test::Ascii(section) + " " + test::Ascii(key) + " '" + test::Ascii(fallback) +
                    "' " + std::to_string(units) + " " + test::Ascii(path));
    return 0;
  }

  std::vector<std::string> asked;
};

TEST_F(ConfigValue, IsAskedForWithADoubledSeparatorAndAnEmptyDefault) {
  ProfileQuestions files;
  headless::HeadlessPlatform& all = world_.platform;
  Platform lists{all.print, all.locale,  all.modules,  files,      all.registry, all.security,
                 all.shell, all.windows, all.graphics, all.system, all.memory,   all.debug};
  world_.process.platform = &lists;
  Read(u"Print", u"PrinterName", 40);
  world_.process.platform = &all.lists;
  EXPECT_EQ(files.asked, std::vector<std::string>{
                             "Print PrinterName '' 40 "
                             "C:\\windows\\system32\\spool\\drivers\\x64\\3\\\\ostrelConfig.ini"});
}

// ---- What a document sheet records for a universal printer --------------------------------------

constexpr char16_t kTextsPath[] = u"C:\\texts.dll";

class UniversalRecord : public testing::Test {
 protected:
  UniversalRecord() {
    Install({{200, u"Settings"}, {255, u"First tip"}, {256, u"Second tip"}});
    std::u16string_view(test::kDriverName).copy(context_.driverName, kDriverNameUnits - 1);
    context_.printerHandle = world_.OpenPrinter();
    atPrinter_[u"installmode"] = StoredValue::Dword(1);
    atPrinter_[u"printername"] = StoredValue::Text(u"Hazel 2 Series");
    atDriver_[u"printermodel"] = StoredValue::Text(u"Hazel 2");
    atDriver_[u"settingprintermodel"] = StoredValue::Text(u"Hazel 2");
    WriteTrayBlock(context_.printerHandle, {{1, 7}});
  }
  ~UniversalRecord() override { world_.platform.print.ClosePrinter(context_.printerHandle); }

  void Install(headless::StringTable strings) {
    world_.platform.modules.FreeLibrary(context_.languageModule);
    world_.platform.modules.Install(kTextsPath, std::move(strings));
    context_.languageModule = world_.platform.modules.LoadLibraryW(kTextsPath);
  }

  void Record() { RecordUniversalPrinter(context_, test::kPrinterName); }

  // A text as the store holds it.
  static StoredValue Stored(std::u16string_view text) {
    StoredValue value = StoredValue::Text(text);
    value.bytes.resize(260);
    return value;
  }

  test::TestWorld world_;
  UIContext context_ = {};
  StoredValues& atPrinter_ = world_.UserValues(test::kPrinterName);
  StoredValues& atDriver_ = world_.UserValues(test::kDriverName);
};

TEST_F(UniversalRecord, HoldsCaptionTipsModelAndTrays) {
  Record();
  const StoredValues printer = {{u"installmode", StoredValue::Dword(1)},
                                {u"printername", StoredValue::Text(u"Hazel 2 Series")},
                                {u"configprintinfo", Stored(u"Settings:Hazel 2 Series ")},
                                {u"regtips", Stored(u"First tip")},
                                {u"regtips2", Stored(u"Second tip")},
                                {u"configprintername", Stored(u"Hazel 2 Series")},
                                {u"configprintermodel", Stored(u"Hazel 2")}};
  const StoredValues driver = {{u"printermodel", StoredValue::Text(u"Hazel 2")},
                               {u"settingprintermodel", StoredValue::Text(u"Hazel 2")},
                               {u"trayinstall1", StoredValue::Dword(1)},
                               {u"trayinstall2", StoredValue::Dword(7)}};
  EXPECT_EQ(atPrinter_, printer);
  EXPECT_EQ(atDriver_, driver);
}

TEST_F(UniversalRecord, IsMadeInOrder) {
  CallRecorder recorder(world_);
  Record();
  // Each touch of a value with the subkey it is found under, and the printer's own data.
  std::vector<std::string> touches;
  std::string subkey;
  for (const std::string& call : recorder.calls) {
    if (call.starts_with("RegCreateKeyExW")) {
      subkey = call.substr(call.rfind('\\') + 1);
    } else if (call.starts_with("RegQueryValueExW") || call.starts_with("RegSetValueExW")) {
      touches.push_back(call + ", " + subkey);
    } else if (call.starts_with("LoadStringW") || call.starts_with("GetPrinterDataW")) {
      touches.push_back(call);
    }
  }
  const std::vector<std::string> expected = {
      "RegQueryValueExW InstallMode, Front office",
      "RegQueryValueExW PrinterName, Front office",
      "LoadStringW 200",
      "RegSetValueExW ConfigPrintInfo, Front office",
      "LoadStringW 255",
      "LoadStringW 256",
      "RegSetValueExW RegTips, Front office",
      "RegSetValueExW RegTips2, Front office",
      "RegQueryValueExW PrinterName, Front office",
      "RegSetValueExW ConfigPrinterName, Front office",
      "RegQueryValueExW PrinterModel, Ostrel Hazel 2 Series",
      "RegSetValueExW ConfigPrinterModel, Front office",
      "RegQueryValueExW SettingPrinterModel, Ostrel Hazel 2 Series",
      "GetPrinterDataW TrayInstallSize",
      "GetPrinterDataW TrayInstall",
      "RegSetValueExW TrayInstall1, Ostrel Hazel 2 Series",
      "RegSetValueExW TrayInstall2, Ostrel Hazel 2 Series",
  };
  EXPECT_EQ(touches, expected);
}

TEST_F(UniversalRecord, IsNotMadeForOtherPrinters) {
  for (const ModeWord mode : {ModeWord{}, ModeWord{0U}, ModeWord{2U}, ModeWord{0xFFFFFFFFU}}) {
    atPrinter_.erase(u"installmode");
    atPrinter_[u"upd"] = StoredValue::Dword(1);         // which is the tray count's alone
    atDriver_[u"installmode"] = StoredValue::Dword(1);  // which is the wrong subkey
    if (mode) {
      atPrinter_[u"installmode"] = StoredValue::Dword(*mode);
    }
    const StoredValues printer = atPrinter_;
    const StoredValues driver = atDriver_;
    EXPECT_FALSE(IsUniversalPrinter(test::kPrinterName));
    Record();
    EXPECT_EQ(atPrinter_, printer);
    EXPECT_EQ(atDriver_, driver);
  }
}

TEST_F(UniversalRecord, IsNotMadeWhenTheModeCannotBeRead) {
  const StoredValues printer = atPrinter_;
  const StoredValues driver = atDriver_;
  world_.platform.faults.FailOperation("RegCreateKeyExW", 1);
  Record();
  EXPECT_EQ(atPrinter_, printer);
  EXPECT_EQ(atDriver_, driver);
}

TEST_F(UniversalRecord, CaptionIsThePrintersNameWithoutTheWord) {
  Install({{255, u"First tip"}});
  Record();
  EXPECT_EQ(atPrinter_[u"configprintinfo"], Stored(u"Front office"));
  Install({{200, u""}});
  Record();
  EXPECT_EQ(atPrinter_[u"configprintinfo"], Stored(u"Front office"));
}

TEST_F(UniversalRecord, CaptionIsThePrintersNameWithoutALanguageLibrary) {
  context_.languageModule = nullptr;
  Record();
  EXPECT_EQ(atPrinter_[u"configprintinfo"], Stored(u"Front office"));
  EXPECT_FALSE(atPrinter_.contains(u"regtips"));
  EXPECT_EQ(atPrinter_[u"configprintermodel"], Stored(u"Hazel 2"));  // the rest goes on
}

TEST_F(UniversalRecord, CaptionIsThePrintersNameWhenTheModelsKeyFails) {
  world_.platform.faults.FailOperation("RegCreateKeyExW", 2);
  Record();
  EXPECT_EQ(atPrinter_[u"configprintinfo"], Stored(u"Front office"));
}

TEST_F(UniversalRecord, CaptionHasNoModelWhenNoneWasChosen) {
  // The key opens, and a value that isn't there reads as an empty text.
  atPrinter_.erase(u"printername");
  Record();
  EXPECT_EQ(atPrinter_[u"configprintinfo"], Stored(u"Settings: "));
  EXPECT_EQ(atPrinter_[u"configprintername"], Stored(u""));
}

TEST_F(UniversalRecord, TooLongACaptionIsStoredWithoutATerminator) {
  atPrinter_[u"printername"] = StoredValue::Text(std::u16string(200, u'm'));
  Record();
  StoredValue expected = StoredValue::Text(u"Settings:" + std::u16string(121, u'm'));
  expected.bytes.resize(260);
  EXPECT_EQ(atPrinter_[u"configprintinfo"], expected);
}

TEST_F(UniversalRecord, TipsAreWrittenOnlyWhenBothLoad) {
  for (const std::uint32_t missing : {255U, 256U}) {
    headless::StringTable strings = {{200, u"Settings"}, {255, u"new"}, {256, u"new"}};
    strings.erase(missing);
    Install(strings);
    atPrinter_[u"regtips"] = StoredValue::Text(u"old");
    atPrinter_[u"regtips2"] = StoredValue::Text(u"old");
    Record();
    EXPECT_EQ(atPrinter_[u"regtips"], StoredValue::Text(u"old")) << missing;
    EXPECT_EQ(atPrinter_[u"regtips2"], StoredValue::Text(u"old")) << missing;
    EXPECT_EQ(atPrinter_[u"configprintername"], Stored(u"Hazel 2 Series")) << missing;
  }
}

struct TrayModelCase {
  const char* name;
  std::optional<std::u16string> model;       // PrinterModel
  std::optional<std::u16string> savedModel;  // SettingPrinterModel
  StoredValues trays;
  TrayWords written;
};

class UniversalTrays : public UniversalRecord, public testing::WithParamInterface<TrayModelCase> {};

const StoredValues kBothTrays = TrayPair(8, Bytes({1, 0, 0, 0, 7, 0, 0, 0}));

INSTANTIATE_TEST_SUITE_P(
    Models, UniversalTrays,
    testing::Values(TrayModelCase{"Equal", u"Hazel 2", u"Hazel 2", kBothTrays, {1, 7}},
                    TrayModelCase{"Different", u"Hazel 2", u"Hazel 1", kBothTrays, {0, 0}},
                    TrayModelCase{"DifferentInLength", u"Hazel 2", u"Hazel 20", kBothTrays, {0, 0}},
                    TrayModelCase{"DifferentInCase", u"Hazel 2", u"HAZEL 2", kBothTrays, {0, 0}},
                    TrayModelCase{"BothMissing", {}, {}, kBothTrays, {1, 7}},
                    TrayModelCase{"BothEmpty", u"", u"", kBothTrays, {1, 7}},
                    TrayModelCase{"ModelMissing", {}, u"Hazel 2", kBothTrays, {0, 0}},
                    TrayModelCase{"SavedModelMissing", u"Hazel 2", {}, kBothTrays, {0, 0}},
                    TrayModelCase{"EqualWithoutTrays", u"Hazel 2", u"Hazel 2", {}, {0, 0}},
                    TrayModelCase{"EqualWithOneTrayWord",
                                  u"Hazel 2",
                                  u"Hazel 2",
                                  TrayPair(4, Bytes({1, 0, 0, 0})),
                                  {1, 0}},
                    TrayModelCase{"EqualWithTraysOfNoLength",
                                  u"Hazel 2",
                                  u"Hazel 2",
                                  TrayPair(0, Bytes({1, 0, 0, 0, 1, 0, 0, 0})),
                                  {0, 0}}),
    test::CaseName());

TEST_P(UniversalTrays, AreThePrintersWhenTheSettingsAreOfTheModelInForce) {
  const auto set = [this](const char16_t* name, const std::optional<std::u16string>& text) {
    atDriver_.erase(name);
    if (text) {
      atDriver_[name] = StoredValue::Text(*text);
    }
  };
  set(u"printermodel", GetParam().model);
  set(u"settingprintermodel", GetParam().savedModel);
  world_.printer->data = GetParam().trays;
  atDriver_[u"trayinstall1"] = StoredValue::Dword(kUnsetWord);
  atDriver_[u"trayinstall2"] = StoredValue::Dword(kUnsetWord);
  Record();
  EXPECT_EQ(atDriver_[u"trayinstall1"], StoredValue::Dword(GetParam().written[0]));
  EXPECT_EQ(atDriver_[u"trayinstall2"], StoredValue::Dword(GetParam().written[1]));
  EXPECT_EQ(atPrinter_[u"configprintermodel"], Stored(GetParam().model.value_or(u"")));
}

TEST_F(UniversalRecord, TraysAreZeroWhenTheSavedModelsKeyFails) {
  constexpr std::size_t kKeyOfTheSavedModel = 10;
  world_.platform.faults.FailOperation("RegCreateKeyExW", kKeyOfTheSavedModel);
  atDriver_.erase(u"printermodel");
  atDriver_.erase(u"settingprintermodel");
  Record();
  EXPECT_TRUE(world_.platform.faults.fired());
  EXPECT_EQ(atDriver_[u"trayinstall1"], StoredValue::Dword(0));
  EXPECT_EQ(atDriver_[u"trayinstall2"], StoredValue::Dword(0));
}

TEST_F(UniversalRecord, TraysAreWrittenUnderTheDriverAndCountedUnderThePrinter) {
  atPrinter_[u"trayinstall1"] = StoredValue::Dword(1);
  atPrinter_[u"trayinstall2"] = StoredValue::Dword(1);
  WriteTrayBlock(context_.printerHandle, {{0, 0}});
  Record();
  EXPECT_EQ(atDriver_[u"trayinstall1"], StoredValue::Dword(0));
  EXPECT_EQ(atPrinter_[u"trayinstall1"], StoredValue::Dword(1));
  EXPECT_EQ(CountMissingTrays(context_.printerHandle), 0);
}

TEST_F(UniversalRecord, TraysAreCountedAtOnceWhenPrinterAndDriverShareAName) {
  world_.printer->name = test::kDriverName;
  atDriver_[u"installmode"] = StoredValue::Dword(1);
  WriteTrayBlock(context_.printerHandle, {{1, 0}});
  RecordUniversalPrinter(context_, test::kDriverName);
  EXPECT_EQ(CountMissingTrays(context_.printerHandle), 1);
}

TEST_F(UniversalRecord, LeavesNothingOpenWhateverFails) {
  std::size_t walked = 0;
  for (std::size_t n = 1; n < 1000; ++n) {
    world_.platform.faults.FailCall(n);
    Record();
    EXPECT_EQ(world_.platform.registry.openKeys(), 0U) << n;
    EXPECT_EQ(world_.platform.security.openTokens(), 0U) << n;
    EXPECT_EQ(world_.platform.security.liveTexts(), 0U) << n;
    EXPECT_EQ(world_.platform.memory.liveBlocks(), 0U) << n;
    if (!world_.platform.faults.fired()) {
      walked = n - 1;
      break;
    }
  }
  EXPECT_GT(walked, 60U);
}

}  // namespace
}  // namespace ostrel
