// The record in force, the factory records' words, and the user's collection: as it is read,
// changed and sorted.
#include "watermark/watermark_record.h"

#include "core/ui_context.h"
#include "support/case_name.h"
#include "support/forget_key.h"
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
using test::RecordOf;
using test::Stored;
using test::StoreOf;
using test::WatermarkBytes;
using test::WatermarkFacts;

std::u16string NameIn(const WatermarkData& record) {
  return record.PageWMName;
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

// A collection that is there is read without writing.
TEST(WatermarkCollection, IsNotWrittenByReading) {
  test::TestWorld world;
  for (const std::string& file : {StoreOf({Mark(4, u"A")}), StoreOf({Record("Short", "x")})}) {
    test::PutSettings(world, file);
    world.platform.faults.StartTrace();
    ReadWatermarkList();
    EXPECT_EQ(test::CallsOf(world, "WriteFile"), 0U);
    EXPECT_GT(test::CallsOf(world, "CreateFileW"), 0U);
  }
}

TEST(WatermarkCollection, HasTheFirstOfTwoOfTheSameName) {
  test::TestWorld world;
  const std::string file =
      StoreOf({test::StoredAs(u"Same", Mark(5, u"First")), Stored(Mark(6, u"B")),
               test::StoredAs(u"Same", Mark(7, u"Second"))});
  test::PutSettings(world, file);
  ExpectRecords(ReadWatermarkList(),
                {WatermarkBytes(Mark(5, u"First")), WatermarkBytes(Mark(6, u"B"))});
  EXPECT_SETTINGS(world, file);
}

// The store would cut the first name to the second.
TEST(WatermarkCollection, HasNoRecordUnderANameThatTheStoreCannotAskFor) {
  test::TestWorld world;
  const std::u16string longest(31, u'x');
  test::PutSettings(world, StoreOf({test::StoredAs(longest + u"y", Mark(5, u"A")),
                                    test::StoredAs(longest, Mark(6, u"B"))}));
  const WatermarkList list = ReadWatermarkList();
  ExpectRecords(list, {ByteRecord(1348), WatermarkBytes(Mark(6, u"B"))});
  EXPECT_EQ(list.isPresent.to_ullong(), 0b10U);
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
  world.platform.faults.StartTrace();
  EXPECT_FALSE(AddWatermark(record));
  // Neither a box for the user nor an opening of the file.
  EXPECT_TRUE(world.platform.faults.trace().empty());
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

TEST(ReplaceWatermark, ByANameOfAnotherTakesThatPlaceToo) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A"), Mark(5, u"B")}));
  WatermarkFacts renamed = Mark(4, u"B");
  renamed.text = u"A";
  EXPECT_TRUE(ReplaceWatermark(RecordOf(renamed)));
  EXPECT_SETTINGS(world, StoreOf({renamed}));
}

TEST(ReplaceWatermark, ByANameThatTheStoreCutsSucceeds) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A"), Mark(5, u"B")}));
  const WatermarkFacts renamed = Mark(4, std::u16string(32, u'n'));
  EXPECT_TRUE(ReplaceWatermark(RecordOf(renamed)));
  EXPECT_SETTINGS(
      world, StoreOf({Stored(Mark(5, u"B")), test::StoredAs(std::u16string(31, u'n'), renamed)}));
}

WatermarkFacts WithText(std::u16string_view text) {
  WatermarkFacts facts = Mark(4, u"A");
  facts.text = text;
  return facts;
}

TEST(ReplaceWatermark, WithoutANewNameStoresTheNewBytes) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A"), Mark(5, u"B")}));
  EXPECT_TRUE(ReplaceWatermark(RecordOf(WithText(u"Other text"))));
  EXPECT_SETTINGS(world, StoreOf({Mark(5, u"B"), WithText(u"Other text")}));
}

// The last opening is the look at what was stored.
TEST(ReplaceWatermark, WithoutANewNameStoresTheNewBytesWhenALookAtThemFails) {
  std::size_t openings = 0;
  for (const bool fails : {false, true}) {
    test::TestWorld world;
    test::PutSettings(world, StoreOf({Mark(4, u"A"), Mark(5, u"B")}));
    world.platform.faults.StartTrace();
    if (fails) {
      world.platform.faults.FailOperation("CreateFileW", openings);
    }
    EXPECT_TRUE(ReplaceWatermark(RecordOf(WithText(u"Other text"))));
    EXPECT_EQ(world.platform.faults.fired(), fails);
    EXPECT_SETTINGS(world, StoreOf({Mark(5, u"B"), WithText(u"Other text")}));
    openings = test::CallsOf(world, "CreateFileW");
  }
}

TEST(ReplaceWatermark, WithoutAListAddsNothing) {
  test::TestWorld world;
  test::PutSettings(world, StoreOf({Mark(4, u"A")}));
  world.platform.faults.StartTrace();
  ReadWatermarkList();
  // The list's own block is taken behind those of the file's names.
  std::vector<std::string> left;
  const std::size_t blocks = test::CallsOf(world, "HeapAlloc");
  for (std::size_t n = 1; n <= blocks; ++n) {
    test::PutSettings(world, StoreOf({Mark(4, u"A")}));
    world.platform.faults.FailOperation("HeapAlloc", n);
    const bool replaced = ReplaceWatermark(RecordOf(Mark(4, u"B")));
    EXPECT_TRUE(world.platform.faults.fired()) << n;
    EXPECT_SETTINGS(world, StoreOf({Mark(4, replaced ? u"B" : u"A")})) << n;
    if (!replaced) {
      left.push_back(test::Settings(world));
    }
  }
  EXPECT_EQ(left.size(), 1U);  // everything else is asked for again
}

TEST(ReplaceWatermark, TakesAllOfTheOldName) {
  test::TestWorld world;
  test::PutSettings(world,
                    StoreOf({test::StoredAs(u"Same", Mark(4, u"First")),
                             test::StoredAs(u"Same", Mark(5, u"Second")), Stored(Mark(6, u"B"))}));
  EXPECT_TRUE(ReplaceWatermark(RecordOf(Mark(4, u"C"))));
  EXPECT_SETTINGS(world, StoreOf({Mark(6, u"B"), Mark(4, u"C")}));
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

// What is no record stands in front, where a rewrite puts it, and is in order there.
class WatermarkOrderOfOddStores : public testing::TestWithParam<std::size_t> {};
INSTANTIATE_TEST_SUITE_P(Stores, WatermarkOrderOfOddStores, testing::Range<std::size_t>(0, 3),
                         testing::PrintToStringParamName());

TEST_P(WatermarkOrderOfOddStores, IsKeptByTheFirstRewrite) {
  const std::string odd = Record("Short", "x");
  const auto none = Stored(Mark(0, u"None"));
  const auto first = Stored(Mark(1, u"A"));
  const auto below = Stored(Mark(-1, u"X"));
  const std::vector<std::string> before[] = {{none, first, odd}, {odd, below}, {below, odd, none}};
  const std::vector<std::string> after[] = {{odd, none, first}, {odd, below}, {odd, below, none}};
  test::TestWorld world;
  test::PutSettings(world, StoreOf(before[GetParam()]));
  for (int pass = 0; pass < 2; ++pass) {
    const WatermarkList list = ReadWatermarkList();
    const WatermarkOrder order = SortByIndex(list);
    world.platform.faults.StartTrace();
    KeepInOrder(list, order);
    EXPECT_SETTINGS(world, StoreOf(after[GetParam()])) << pass;
  }
  EXPECT_TRUE(world.platform.faults.trace().empty());
}

TEST(WatermarkOrder, OfTwoOfTheSameNameKeepsTheFirst) {
  test::TestWorld world;
  test::PutSettings(world,
                    StoreOf({test::StoredAs(u"Same", Mark(5, u"First")),
                             test::StoredAs(u"Same", Mark(7, u"Second")), Stored(Mark(4, u"B"))}));
  const WatermarkList list = ReadWatermarkList();
  KeepInOrder(list, SortByIndex(list));
  EXPECT_SETTINGS(world,
                  StoreOf({Stored(Mark(4, u"B")), test::StoredAs(u"Same", Mark(5, u"First"))}));
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

}  // namespace
}  // namespace ostrel
