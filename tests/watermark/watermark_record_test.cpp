// The records that come with the driver, the one in force, and the user's collection: as it is
// read, changed and named.
#include "watermark/watermark_record.h"

#include "core/ui_context.h"
#include "support/case_name.h"
#include "support/forget_key.h"
#include "support/record_layout.h"
#include "support/test_world.h"
#include "support/watermark_bytes.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::ByteRecord;
using test::BytesOf;
using test::Difference;
using test::FactoryFacts;
using test::Mark;
using test::Record;
using test::Stored;
using test::StoreOf;
using test::WatermarkBytes;
using test::WatermarkFacts;

WatermarkData RecordOf(const WatermarkFacts& facts) {
  WatermarkData record;
  test::SetBytes(record, WatermarkBytes(facts));
  return record;
}

std::u16string NameIn(const WatermarkData& record) {
  return record.PageWMName;
}

std::u16string Unique(const WatermarkEdit& edit, std::u16string_view wanted) {
  return UniqueName(edit, wanted).data();
}

constexpr WatermarkEdit kNew = {true, 1};

// ---- The records that come with the driver ------------------------------------------------------

class FactoryRecord : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Places, FactoryRecord, testing::Range<std::size_t>(0, 6),
                         testing::PrintToStringParamName());

TEST_P(FactoryRecord, IsExactInAllItsBytes) {
  const test::TestWorld world;
  const ByteRecord expected = WatermarkBytes(FactoryFacts().at(GetParam()));
  EXPECT_EQ(Difference(BytesOf(kFactoryWatermarkRecords.at(GetParam())), expected), "");
  EXPECT_EQ(Difference(BytesOf(world.process.DefaultWatermarks.at(GetParam())), expected), "");
}

TEST(FactoryRecords, AreSix) {
  EXPECT_EQ(FactoryFacts().size(), kFactoryWatermarkRecords.size());
}

// What a repair of a settings record leaves of one that has it in force.
WatermarkData Repaired(const WatermarkData& watermark) {
  auto record = std::make_unique<PrivateDevmode>();
  InitPrivateDevmode(record.get(), nullptr);
  record->WatermarkData = watermark;
  ValidatePrivateDevmode(record.get());
  return record->WatermarkData;
}

TEST_P(FactoryRecord, PassesARepairButForTheChosenFont) {
  const test::TestWorld world;
  const WatermarkFacts facts = FactoryFacts().at(GetParam());
  ByteRecord expected = WatermarkBytes(facts);
  test::PutNumber(expected, 802, 2, facts.fontChosen == 0 ? 0 : 0x8F30);
  EXPECT_EQ(Difference(BytesOf(Repaired(RecordOf(facts))), expected), "");
}

struct RepairCase {
  const char* name;
  std::size_t offset;
  std::size_t width;
  std::int64_t given;
  std::int64_t kept;
};
void PrintTo(const RepairCase& row, std::ostream* out) {
  *out << row.name;
}

// clang-format off
constexpr RepairCase kRepairs[] = {
    // Name, offset, width, given, kept
    {"TypeAndIdOfZero",         0,   4, 0,         0},
    {"Id32",                    0,   2, 32,        32},
    {"Id33",                    0,   2, 33,        0},
    {"TypeImage",               2,   2, 2,         2},
    {"Type3",                   2,   2, 3,         0},
    {"Size6",                   784, 2, 6,         6},
    {"Size5",                   784, 2, 5,         72},
    {"Size600",                 784, 2, 600,       600},
    {"Size601",                 784, 2, 601,       72},
    {"Bold2",                   786, 2, 2,         0},
    {"Italic2",                 788, 2, 2,         0},
    {"Transparent2",            790, 2, 2,         0},
    {"Border2",                 792, 2, 2,         2},
    {"Border3",                 792, 2, 3,         0},
    {"Angle90",                 794, 2, 90,        90},
    {"Angle91",                 794, 2, 91,        0},
    {"AngleMinus90",            794, 2, 0xFFA6,    0xFFA6},
    {"AngleMinus91",            794, 2, 0xFFA5,    0},
    {"Scale1000",               796, 2, 1000,      1000},
    {"Scale1001",               796, 2, 1001,      0},
    {"Position10",              798, 2, 10,        10},
    {"Position11",              798, 2, 11,        0},
    {"Repeat2",                 800, 2, 2,         0},
    {"FontChosen",              802, 2, 1,         0x8F30},
    {"White",                   804, 4, 0xFFFFFF,  0xFFFFFF},
    {"ColourBeyondWhite",       804, 4, 0x1000000, 13311},
    {"Reserved7",               808, 2, 7,         7},
    {"Reserved8",               808, 2, 8,         0},
};
// clang-format on

class WatermarkRepair : public testing::TestWithParam<RepairCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, WatermarkRepair, testing::ValuesIn(kRepairs), test::CaseName());

TEST_P(WatermarkRepair, KeepsWhatIsInRange) {
  const test::TestWorld world;
  WatermarkFacts plain = Mark(7, u"Draft");
  plain.fontChosen = 0;
  ByteRecord bytes = WatermarkBytes(plain);
  test::PutNumber(bytes, GetParam().offset, GetParam().width, GetParam().given);
  WatermarkData given;
  test::SetBytes(given, bytes);
  test::PutNumber(bytes, GetParam().offset, GetParam().width, GetParam().kept);
  EXPECT_EQ(Difference(BytesOf(Repaired(given)), bytes), "");
}

// Each text is cut by a terminator in its last unit; the words that would stand in for a text that
// is too long never do.
TEST(WatermarkRepairOfTexts, CutsThemAndNothingStandsIn) {
  const test::TestWorld world;
  WatermarkData given = RecordOf(Mark(7, u"Draft"));
  std::ranges::fill(given.PageWMName, u'n');
  std::ranges::fill(given.PageWMText, u't');
  std::ranges::fill(given.PageWMTypeface, u'f');
  std::ranges::fill(given.PageWMFileName, u'b');
  const WatermarkData kept = Repaired(given);
  EXPECT_EQ(std::u16string(kept.PageWMName), std::u16string(32, u'n'));
  EXPECT_EQ(std::u16string(kept.PageWMText), std::u16string(64, u't'));
  EXPECT_EQ(std::u16string(kept.PageWMTypeface), std::u16string(31, u'f'));
  EXPECT_EQ(std::u16string(kept.PageWMFileName), std::u16string(259, u'b'));
}

// ---- The record in force ------------------------------------------------------------------------

class InForce : public testing::Test {
 protected:
  InForce() {
    context_->publicPointer = &context_->devmode.publicDevmode;
    context_->privatePointer = &context_->devmode.privateDevmode;
    BuildUIParamTable(context_.get());
    context_->privatePointer->WatermarkData = RecordOf(Mark(9, u"Draft"));
    context_->languageModule = world_.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  }
  void UseTexts(headless::StringTable texts) {
    world_.platform.modules.Install(u"C:\\texts.dll", std::move(texts));
    context_->languageModule = world_.platform.modules.LoadLibraryW(u"C:\\texts.dll");
  }
  // The names and texts of the process's records, and that nothing else of them has changed.
  void ExpectWords(std::u16string_view none, std::u16string_view fresh) const {
    std::vector<WatermarkFacts> facts = FactoryFacts();
    facts[0].name = none;
    facts[4].name = fresh;
    facts[4].text = fresh;
    for (std::size_t place = 0; place < facts.size(); ++place) {
      EXPECT_EQ(Difference(BytesOf(world_.process.DefaultWatermarks.at(place)),
                           WatermarkBytes(facts[place])),
                "")
          << place;
    }
  }

  test::TestWorld world_;
  std::unique_ptr<UIContext> context_ = std::make_unique<UIContext>();
};

TEST_F(InForce, IsTheRecordsOwn) {
  EXPECT_EQ(Difference(BytesOf(WatermarkInForce(*context_)), WatermarkBytes(Mark(9, u"Draft"))),
            "");
}

TEST_F(InForce, IsNoneWhereTheKeyCannotBeRead) {
  LocaliseDefaults(*context_);
  test::ForgetKey(*context_, "WatermarkData");
  WatermarkFacts expected = FactoryFacts()[0];
  expected.name = test::EnglishStrings().at(146);
  EXPECT_EQ(Difference(BytesOf(WatermarkInForce(*context_)), WatermarkBytes(expected)), "");
}

TEST_F(InForce, IsNoneWhereTheWidthIsAnotherOne) {
  for (UIParamSlot& slot : context_->uiParams) {
    slot.Width += std::string_view(slot.Key) == "WatermarkData" ? 4U : 0U;
  }
  EXPECT_EQ(Difference(BytesOf(WatermarkInForce(*context_)), WatermarkBytes(FactoryFacts()[0])),
            "");
}

// ---- Words in the user's language ---------------------------------------------------------------

using LocalisedDefaults = InForce;

TEST_F(LocalisedDefaults, TakeNameAndTextFromTheLanguage) {
  UseTexts({{146, u"[Kein Wasserzeichen]"}, {5025, u"<Neu>"}});
  LocaliseDefaults(*context_);
  ExpectWords(u"[Kein Wasserzeichen]", u"<Neu>");
}

TEST_F(LocalisedDefaults, KeepTheFirstLanguagesWords) {
  UseTexts({{146, u"[Kein Wasserzeichen]"}, {5025, u"<Neu>"}});
  LocaliseDefaults(*context_);
  UseTexts({{146, u"[Sans filigrane]"}, {5025, u"<Nouveau>"}});
  LocaliseDefaults(*context_);
  ExpectWords(u"[Kein Wasserzeichen]", u"<Neu>");
}

TEST_F(LocalisedDefaults, AreCutTo32Characters) {
  UseTexts({{146, std::u16string(40, u'k')}, {5025, std::u16string(33, u'n')}});
  LocaliseDefaults(*context_);
  ExpectWords(std::u16string(32, u'k'), std::u16string(32, u'n'));
}

TEST_F(LocalisedDefaults, KeepTheirWordsUntilALibraryHasTheTexts) {
  UseTexts({{146, u"[Kein]"}});
  LocaliseDefaults(*context_);
  ExpectWords(u"[Kein]", u"<New>");
  context_->languageModule = nullptr;
  LocaliseDefaults(*context_);
  ExpectWords(u"[Kein]", u"<New>");
  UseTexts({{5025, u"<Neu>"}});
  LocaliseDefaults(*context_);
  ExpectWords(u"[Kein]", u"<Neu>");
}

// A name that isn't the untranslated word any more is somebody's own.
TEST_F(LocalisedDefaults, ChangeOnlyTheUntranslatedWords) {
  test::SetBytes(world_.process.DefaultWatermarks[4], WatermarkBytes(Mark(4, u"<new>")));
  UseTexts({{146, u"[Kein]"}, {5025, u"<Neu>"}});
  LocaliseDefaults(*context_);
  EXPECT_EQ(NameIn(world_.process.DefaultWatermarks[4]), u"<new>");
  EXPECT_EQ(std::u16string(world_.process.DefaultWatermarks[4].PageWMText), u"<new>");
}

TEST_F(LocalisedDefaults, LeaveTheStoreAlone) {
  test::PutSettings(world_, StoreOf(test::FirstFour()));
  UseTexts({{146, u"[Kein]"}, {5025, u"<Neu>"}});
  LocaliseDefaults(*context_);
  ReadWatermarkList();
  EXPECT_SETTINGS(world_, StoreOf(test::FirstFour()));
}

// ---- Reading the collection ---------------------------------------------------------------------

void ExpectRecords(const WatermarkList& list, const std::vector<ByteRecord>& expected) {
  ASSERT_EQ(list.count, expected.size());
  ASSERT_EQ(list.records().size(), expected.size());
  for (std::size_t place = 0; place < expected.size(); ++place) {
    EXPECT_EQ(Difference(BytesOf(list.records()[place]), expected[place]), "") << place;
  }
}

TEST(WatermarkCollection, OfAFirstRunHasTheFourFactoryRecordsAndNotTheNewOne) {
  const test::TestWorld world;
  const WatermarkList list = ReadWatermarkList();
  std::vector<ByteRecord> expected;
  for (const WatermarkFacts& facts : test::FirstFour()) {
    expected.push_back(WatermarkBytes(facts));
  }
  ExpectRecords(list, expected);
  EXPECT_SETTINGS(world, StoreOf(test::FirstFour()));
}

TEST(WatermarkCollection, OfAFirstRunBearsTheWordsOfTheLanguage) {
  test::TestWorld world;
  std::u16string(u"[Kein]").copy(world.process.DefaultWatermarks[0].PageWMName, 33);
  world.process.DefaultWatermarks[0].PageWMName[6] = u'\0';
  EXPECT_EQ(NameIn(ReadWatermarkList().records()[0]), u"[Kein]");
}

TEST(WatermarkCollection, WithAnyNameGetsNoFactoryRecord) {
  test::TestWorld world;
  for (const std::string& file :
       {StoreOf({Stored(Mark(4, u"Draft"))}), StoreOf({Record("Short", "x")})}) {
    test::PutSettings(world, file);
    EXPECT_EQ(ReadWatermarkList().count, 1U);
    EXPECT_SETTINGS(world, file);
  }
}

TEST(WatermarkCollection, IsReadInTheOrderOfTheFile) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(5, u"C"), Mark(4, u"A"), Mark(4, u"B")}));
  ExpectRecords(ReadWatermarkList(), {WatermarkBytes(Mark(5, u"C")), WatermarkBytes(Mark(4, u"A")),
                                      WatermarkBytes(Mark(4, u"B"))});
}

struct SizeCase {
  const char* name;
  std::size_t bytes;
};
class WatermarkOfSize : public testing::TestWithParam<SizeCase> {};
INSTANTIATE_TEST_SUITE_P(Sizes, WatermarkOfSize,
                         testing::Values(SizeCase{"None", 0}, SizeCase{"Short", 1347},
                                         SizeCase{"Long", 1349}, SizeCase{"Huge", 9000}),
                         test::CaseName());

TEST_P(WatermarkOfSize, LeavesItsPlaceZero) {
  test::TestWorld world;
  const std::string file =
      StoreOf({Stored(Mark(4, u"A")), Record("B", std::string(GetParam().bytes, 'x')),
               Stored(Mark(5, u"C"))});
  test::PutSettings(world, file);
  const WatermarkList list = ReadWatermarkList();
  ExpectRecords(list,
                {WatermarkBytes(Mark(4, u"A")), ByteRecord(1348), WatermarkBytes(Mark(5, u"C"))});
  EXPECT_EQ(list.isPresent.to_ullong(), 0b101U);
  EXPECT_SETTINGS(world, file);
}

// A damaged file announces any number of children.
class AnnouncedWatermarks : public testing::TestWithParam<std::size_t> {};
INSTANTIATE_TEST_SUITE_P(Counts, AnnouncedWatermarks,
                         testing::Values(1, 3, 17, 33, 2147483647, 4294967295),
                         testing::PrintToStringParamName());

std::string LyingStore(std::size_t announced, const std::vector<std::string>& records) {
  return test::Container(
      "cfgobj",
      {test::Version(),
       test::Container("UIParam",
                       {test::Container("savesetting", {}), test::Container("cursetting", {}),
                        test::Container("cuspapersetting", {}),
                        test::LyingContainer("watermarksetting", announced, records)})});
}

TEST_P(AnnouncedWatermarks, AreAsManyAsAreThere) {
  test::TestWorld world;
  test::PutSettings(world, LyingStore(GetParam(), {Stored(Mark(4, u"A")), Stored(Mark(5, u"B"))}));
  const WatermarkList list = ReadWatermarkList();
  ASSERT_EQ(list.count, 2U);
  EXPECT_EQ(NameIn(list.records()[0]), u"A");
  EXPECT_EQ(NameIn(list.records()[1]), u"B");
}

TEST(AnnouncedWatermark, OfWhichNoneIsThereIsAFirstRun) {
  test::TestWorld world;
  test::PutSettings(world, LyingStore(3, {}));
  EXPECT_EQ(ReadWatermarkList().count, 4U);
  EXPECT_EQ(NameIn(ReadWatermarkList().records()[3]), u"DateAndTime");
}

TEST(WatermarkCollection, OfSixteenIsReadWhole) {
  test::TestWorld world;
  std::vector<WatermarkFacts> marks;
  for (std::int16_t i = 0; i < 16; ++i) {
    marks.push_back(Mark(i, std::u16string(u"Mark ") + static_cast<char16_t>(u'a' + i)));
  }
  test::PutSettings(world, StoreOf(marks));
  const WatermarkList list = ReadWatermarkList();
  ASSERT_EQ(list.count, 16U);
  EXPECT_EQ(NameIn(list.records()[15]), u"Mark p");
}

TEST(WatermarkCollection, OfMoreThanAListHoldsIsReadUpToThat) {
  test::TestWorld world;
  std::vector<std::string> records;
  for (std::int16_t i = 0; i < 40; ++i) {
    records.push_back(test::StoredAs(i < 20
                                         ? std::u16string(1, static_cast<char16_t>(u'a' + i))
                                         : std::u16string(2, static_cast<char16_t>(u'a' + i - 20)),
                                     Mark(i, u"x")));
  }
  test::PutSettings(world, StoreOf(records));
  EXPECT_EQ(ReadWatermarkList().count, 32U);
  EXPECT_SETTINGS(world, StoreOf(records));
}

TEST(WatermarkCollection, WithoutAFileThatCanBeMadeIsEmpty) {
  test::TestWorld world;
  world.platform.faults.FailOperation("CreateFileW");
  const WatermarkList list = ReadWatermarkList();
  EXPECT_EQ(list.count, 0U);
  EXPECT_TRUE(list.records().empty());
}

TEST(WatermarkCollection, WithoutMemoryIsEmptyAndTheFileStays) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A")}));
  world.platform.faults.FailOperation("HeapAlloc");
  EXPECT_EQ(ReadWatermarkList().count, 0U);
  EXPECT_SETTINGS(world, StoreOf({Mark(4, u"A")}));
}

// ---- Adding and replacing -----------------------------------------------------------------------

TEST(AddWatermark, StoresTheRecordUnderItsName) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf(test::FirstFour()));
  EXPECT_TRUE(AddWatermark(RecordOf(Mark(4, u"Draft"))));
  std::vector<WatermarkFacts> expected = test::FirstFour();
  expected.push_back(Mark(4, u"Draft"));
  EXPECT_SETTINGS(world, StoreOf(expected));
}

TEST(AddWatermark, OfANameThatIsThereTakesItsPlaceAtTheEnd) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A"), Mark(5, u"B")}));
  EXPECT_TRUE(AddWatermark(RecordOf(Mark(6, u"A"))));
  EXPECT_SETTINGS(world, StoreOf({Mark(5, u"B"), Mark(6, u"A")}));
}

TEST(AddWatermark, RefusesANameWithoutAnEnd) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A")}));
  WatermarkData record = RecordOf(Mark(5, u"B"));
  std::ranges::fill(record.PageWMName, u'n');  // 33 characters
  record.PageWMText[0] = u'\0';
  EXPECT_FALSE(AddWatermark(record));
  EXPECT_SETTINGS(world, StoreOf({Mark(4, u"A")}));
}

TEST(AddWatermark, CutsANameOf32CharactersForTheStoreAlone) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A")}));
  const WatermarkFacts facts = Mark(5, std::u16string(32, u'n'));
  EXPECT_TRUE(AddWatermark(RecordOf(facts)));
  EXPECT_SETTINGS(
      world, StoreOf({Stored(Mark(4, u"A")), test::StoredAs(std::u16string(31, u'n'), facts)}));
}

TEST(AddWatermark, WithoutTheBranchFails) {
  test::TestWorld world;
  EXPECT_FALSE(AddWatermark(RecordOf(Mark(5, u"B"))));
}

TEST(ReplaceWatermark, DeletesTheOneOfTheSameIdAndAddsTheNewOne) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A"), Mark(5, u"B"), Mark(6, u"C")}));
  EXPECT_TRUE(ReplaceWatermark(RecordOf(Mark(5, u"Draft"))));
  EXPECT_SETTINGS(world, StoreOf({Mark(4, u"A"), Mark(6, u"C"), Mark(5, u"Draft")}));
}

TEST(ReplaceWatermark, TakesTheFirstOfTwoWithTheId) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(5, u"A"), Mark(5, u"B")}));
  EXPECT_TRUE(ReplaceWatermark(RecordOf(Mark(5, u"C"))));
  EXPECT_SETTINGS(world, StoreOf({Mark(5, u"B"), Mark(5, u"C")}));
}

TEST(ReplaceWatermark, DeletesByTheNameThatTheRecordIsStoredUnder) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({test::StoredAs(u"Key", Mark(5, u"A")), Stored(Mark(4, u"A"))}));
  EXPECT_TRUE(ReplaceWatermark(RecordOf(Mark(5, u"C"))));
  EXPECT_SETTINGS(world, StoreOf({Mark(4, u"A"), Mark(5, u"C")}));
}

TEST(ReplaceWatermark, OfAnIdThatIsNotStoredAddsIt) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A")}));
  EXPECT_TRUE(ReplaceWatermark(RecordOf(Mark(5, u"B"))));
  EXPECT_SETTINGS(world, StoreOf({Mark(4, u"A"), Mark(5, u"B")}));
}

TEST(ReplaceWatermark, PassesOverWhatIsNoRecord) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Record("Short", "x"), Stored(Mark(0, u"A"))}));
  EXPECT_TRUE(ReplaceWatermark(RecordOf(Mark(0, u"B"))));
  EXPECT_SETTINGS(world, StoreOf({Record("Short", "x"), Stored(Mark(0, u"B"))}));
}

TEST(ReplaceWatermark, ThatIsRefusedPutsTheOldOneBack) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A"), Mark(5, u"B")}));
  WatermarkData record = RecordOf(Mark(4, u"C"));
  std::ranges::fill(record.PageWMName, u'n');
  EXPECT_FALSE(ReplaceWatermark(record));
  EXPECT_SETTINGS(world, StoreOf({Mark(5, u"B"), Mark(4, u"A")}));
}

// ---- Order --------------------------------------------------------------------------------------

struct OrderCase {
  const char* name;
  std::vector<WatermarkFacts> before;
  std::vector<WatermarkFacts> after;
};
void PrintTo(const OrderCase& row, std::ostream* out) {
  *out << row.name;
}

std::vector<OrderCase> OrderCases() {
  const auto a = [](std::int16_t index) { return Mark(index, u"A"); };
  const auto b = [](std::int16_t index) { return Mark(index, u"B"); };
  const auto c = [](std::int16_t index) { return Mark(index, u"C"); };
  return {
      {"One", {a(9)}, {a(9)}},
      {"Sorted", {a(1), b(2), c(3)}, {a(1), b(2), c(3)}},
      {"LastTwo", {a(1), b(3), c(2)}, {a(1), c(2), b(3)}},
      {"Reversed", {a(3), b(2), c(1)}, {c(1), b(2), a(3)}},
      {"SameId", {b(1), a(1)}, {b(1), a(1)}},
      {"SameIdBehindASmaller", {c(2), b(2), a(1)}, {a(1), c(2), b(2)}},
      {"SameSmallerIds", {c(2), b(1), a(1)}, {b(1), a(1), c(2)}},
      {"Negative", {a(0), b(-32768), c(32767)}, {b(-32768), a(0), c(32767)}},
  };
}

class WatermarkOrderOf : public testing::TestWithParam<OrderCase> {};
INSTANTIATE_TEST_SUITE_P(Lists, WatermarkOrderOf, testing::ValuesIn(OrderCases()),
                         test::CaseName());

TEST_P(WatermarkOrderOf, IsByIdAndTheStoreFollows) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf(GetParam().before));
  const WatermarkList list = ReadWatermarkList();
  const WatermarkOrder order = SortByIndex(list);
  ASSERT_EQ(order.all().size(), GetParam().after.size());
  for (std::size_t i = 0; i < order.count; ++i) {
    EXPECT_EQ(NameIn(list.records()[order.all()[i]]), GetParam().after[i].name) << i;
  }
  KeepInOrder(list, order);
  EXPECT_SETTINGS(world, StoreOf(GetParam().after));
}

TEST(WatermarkOrder, OfAStoreThatHasItWritesNothing) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(1, u"B"), Mark(2, u"A")}));
  const WatermarkList list = ReadWatermarkList();
  world.platform.faults.StartTrace();
  KeepInOrder(list, SortByIndex(list));
  EXPECT_TRUE(world.platform.faults.trace().empty());
}

// The file as it is left when it can't be opened any more, from one opening after the other on.
TEST(WatermarkOrder, DeletesInTheOrderReadAndWritesInTheOrderSorted) {
  constexpr std::size_t kMostOpenings = 60;
  const std::string before = StoreOf({Mark(3, u"C"), Mark(1, u"A"), Mark(2, u"B")});
  std::vector<std::string> states;
  for (std::size_t first = 1; first < kMostOpenings; ++first) {
    test::TestWorld world;
    test::PutSettings(world, before);
    const WatermarkList list = ReadWatermarkList();
    for (std::size_t n = first; n < kMostOpenings; ++n) {
      world.platform.faults.FailOperation("CreateFileW", n);
    }
    KeepInOrder(list, SortByIndex(list));
    if (states.empty() || states.back() != test::Settings(world)) {
      states.push_back(test::Settings(world));
    }
  }
  const std::vector<std::string> expected = {
      before,
      StoreOf({Mark(1, u"A"), Mark(2, u"B")}),
      StoreOf({Mark(2, u"B")}),
      StoreOf(std::vector<std::string>{}),
      StoreOf({Mark(1, u"A")}),
      StoreOf({Mark(1, u"A"), Mark(2, u"B")}),
      StoreOf({Mark(1, u"A"), Mark(2, u"B"), Mark(3, u"C")}),
  };
  ASSERT_EQ(states.size(), expected.size());
  for (std::size_t step = 0; step < states.size(); ++step) {
    EXPECT_EQ(test::FileDifference(states[step], expected[step]), "") << step;
  }
}

TEST(WatermarkOrder, LeavesWhatIsNoRecordAlone) {
  test::TestWorld world;
  const std::string odd = Record("Odd", std::string(5, 'x'));
  test::PutSettings(world, StoreOf({Stored(Mark(3, u"C")), odd, Stored(Mark(1, u"A"))}));
  const WatermarkList list = ReadWatermarkList();
  KeepInOrder(list, SortByIndex(list));
  EXPECT_SETTINGS(world, StoreOf({odd, Stored(Mark(1, u"A")), Stored(Mark(3, u"C"))}));
}

TEST(WatermarkOrder, KeepsRecordsUnderTheNamesThatTheyAreStoredUnder) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({test::StoredAs(u"Two", Mark(2, u"Same")),
                                    test::StoredAs(u"One", Mark(1, u"Same"))}));
  const WatermarkList list = ReadWatermarkList();
  KeepInOrder(list, SortByIndex(list));
  EXPECT_SETTINGS(world, StoreOf({test::StoredAs(u"One", Mark(1, u"Same")),
                                  test::StoredAs(u"Two", Mark(2, u"Same"))}));
}

// ---- Names --------------------------------------------------------------------------------------

// Records of the wanted text and of its numbered forms up to a number, -1 for none at all.
std::vector<WatermarkFacts> Numbered(const std::u16string& wanted, int upTo) {
  std::vector<WatermarkFacts> marks = {Mark(4, u"Other")};
  for (int number = 0; number <= upTo; ++number) {
    const std::string digits = std::to_string(number);
    std::u16string name = wanted;
    if (number > 0) {
      name += u"~" + std::u16string(digits.begin(), digits.end());
    }
    marks.push_back(Mark(static_cast<std::int16_t>(5 + number), name));
  }
  return marks;
}

struct NameCase {
  const char* name;
  int takenUpTo;
  std::u16string given;
};
class NewName : public testing::TestWithParam<NameCase> {};
INSTANTIATE_TEST_SUITE_P(Taken, NewName,
                         testing::Values(NameCase{"None", -1, u"Draft"},
                                         NameCase{"ItselfOnly", 0, u"Draft~1"},
                                         NameCase{"UpTo1", 1, u"Draft~2"},
                                         NameCase{"UpTo9", 9, u"Draft~10"},
                                         NameCase{"UpTo29", 29, u"Draft~30"}),
                         test::CaseName());

TEST_P(NewName, IsTheFirstFreeForm) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf(Numbered(u"Draft", GetParam().takenUpTo)));
  EXPECT_EQ(Unique(kNew, u"Draft"), GetParam().given);
}

// Thirty-two names are all that a list holds: "Draft" and the forms with 1 to 31.
TEST(NewNameAtTheEnd, IsTheFormWith31WhenAllBeforeItAreTaken) {
  test::TestWorld world;
  std::vector<WatermarkFacts> marks = Numbered(u"Draft", 30);
  marks.erase(marks.begin());
  test::PutSettings(world, StoreOf(marks));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~31");
}

TEST(NewNameAtTheEnd, IsTheLastFormWhenAllAreTaken) {
  test::TestWorld world;
  std::vector<WatermarkFacts> marks = Numbered(u"Draft", 31);
  marks.erase(marks.begin());
  test::PutSettings(world, StoreOf(marks));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~31");
}

TEST(NewNameWithAGap, IsTheFormThatFillsIt) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"Draft"), Mark(5, u"Draft~2")}));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~1");
}

TEST(NewNameOfAnyLength, IsCutTo32Characters) {
  test::TestWorld world;
  const std::u16string thirty(30, u'x');
  EXPECT_EQ(Unique(kNew, std::u16string(32, u'x')), std::u16string(32, u'x'));
  EXPECT_EQ(Unique(kNew, std::u16string(64, u'x')), std::u16string(32, u'x'));
  test::PutSettings(world, StoreOf({Mark(4, thirty)}));
  EXPECT_EQ(Unique(kNew, thirty), thirty + u"~1");
  EXPECT_EQ(Unique(kNew, thirty + u"x"), thirty + u"x");
  test::PutSettings(world, StoreOf({Mark(4, thirty + u"x")}));
  EXPECT_EQ(Unique(kNew, thirty + u"x"), thirty + u"x~");
}

TEST(NewNameOfAnyLength, OfAFullNameStaysTheNameWhenItIsTaken) {
  test::TestWorld world;
  const std::u16string full(32, u'x');
  test::PutSettings(world, StoreOf({test::StoredAs(full.substr(1), Mark(4, full))}));
  EXPECT_EQ(Unique(kNew, full), full);
  EXPECT_EQ(Unique(kNew, full + u"y"), full);
}

TEST(NewNameCase, Counts) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"draft")}));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft");
}

TEST(NewNameThatIsEmpty, IsNumberedWhenItIsTaken) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Stored(Mark(4, u"A")), test::StoredAs(u"B", Mark(5, u""))}));
  EXPECT_EQ(Unique(kNew, u""), u"~1");
}

// What is stored under a name would be replaced by a record of that name.
TEST(NewNameOfTheStore, IsTakenByWhateverIsStoredUnderIt) {
  test::TestWorld world;
  test::PutSettings(world,
                    StoreOf({Record("Draft", "x"), test::StoredAs(u"Key", Mark(4, u"Inside"))}));
  EXPECT_EQ(Unique(kNew, u"Draft"), u"Draft~1");
  EXPECT_EQ(Unique(kNew, u"Key"), u"Key~1");
  EXPECT_EQ(Unique(kNew, u"Inside"), u"Inside~1");
  EXPECT_EQ(Unique(kNew, u""), u"");  // the place of zeros has no name
}

struct ExistingCase {
  const char* name;
  std::int16_t index;
  std::u16string wanted;
  std::u16string given;
};
class ExistingName : public testing::TestWithParam<ExistingCase> {};
INSTANTIATE_TEST_SUITE_P(
    Edits, ExistingName,
    testing::Values(ExistingCase{"TextUnchanged", 5, u"Text", u"Name"},
                    ExistingCase{"TextChanged", 5, u"Other text", u"Other text"},
                    ExistingCase{"TextOfAnotherId", 5, u"Draft", u"Draft"},
                    ExistingCase{"AnotherCase", 5, u"text", u"text"},
                    ExistingCase{"NameAsText", 5, u"Name", u"Name"},
                    ExistingCase{"IdThatIsNotStored", 9, u"Text", u"Text"},
                    ExistingCase{"ZeroIsNoRecord", 0, u"", u""},
                    ExistingCase{"TooLong", 5, std::u16string(40, u'x'), std::u16string(32, u'x')}),
    test::CaseName());

TEST_P(ExistingName, ChangesWithTheText) {
  test::TestWorld world;
  WatermarkFacts renamed = Mark(5, u"Name");
  renamed.text = u"Text";
  test::PutSettings(world,
                    StoreOf({Record("Short", "x"), Stored(Mark(4, u"Draft")), Stored(renamed)}));
  EXPECT_EQ(Unique({false, GetParam().index}, GetParam().wanted), GetParam().given);
}

TEST(ExistingNameOfALongText, IsKeptAsStored) {
  test::TestWorld world;
  WatermarkFacts named = Mark(5, u"Name");
  named.text = std::u16string(64, u't');
  test::PutSettings(world, StoreOf({named}));
  EXPECT_EQ(Unique({false, 5}, named.text), u"Name");
  EXPECT_EQ(Unique({false, 5}, named.text.substr(1)), std::u16string(32, u't'));
}

}  // namespace
}  // namespace ostrel
