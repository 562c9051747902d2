// The watermark page's list box, over the in-memory window system: what it is filled with, in which
// order the store is left, and which row is selected.
#include "pages/watermark_list.h"

#include "pages/page_record.h"
#include "pages/page_support.h"
#include "platform/headless/control_classes.h"
#include "platform/headless/user.h"
#include "support/case_name.h"
#include "support/forget_key.h"
#include "support/test_world.h"
#include "support/watermark_bytes.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::Mark;
using test::Record;
using test::Stored;
using test::StoreOf;
using test::WatermarkFacts;

constexpr char16_t kPath[] = u"C:\\dialog.dll";
constexpr std::uint16_t kDialogId = 645;
constexpr std::int32_t kList = 1145;

// A dialog with a list box alone, in front of a context.
struct ListStage {
  ListStage() {
    context->publicPointer = &context->devmode.publicDevmode;
    context->privatePointer = &context->devmode.privateDevmode;
    BuildUIParamTable(context.get());
    auto library = std::make_shared<headless::Resources>();
    headless::DialogTemplate& dialog = library->dialogs[kDialogId];
    dialog.style = headless::kStyleChild;
    headless::DialogControl list;
    list.id = kList;
    list.style = headless::kStyleChild | headless::kStyleVisible;
    list.className = u"listbox";
    dialog.controls = {list};
    library->entries.insert({kResourceDialog, kDialogId});
    world.platform.modules.InstallResources(kPath, library);
    module = world.platform.modules.LoadLibraryW(kPath);
    SheetPage description = {};
    description.lParam = reinterpret_cast<std::intptr_t>(context.get());
    page = world.platform.windows.CreateDialogWindow(
        module, kDialogId, nullptr, Remember, reinterpret_cast<std::intptr_t>(&description), false);
    WatermarkPageState& made = *GetPageState<WatermarkPageState>(PageSlot::kWatermark);
    made.dialog = page;
    made.list.Attach(page, kList);
  }
  ~ListStage() {
    ReleasePageStates();
    world.platform.windows.Destroy(page);
  }
  ListStage(const ListStage&) = delete;
  ListStage& operator=(const ListStage&) = delete;

  static std::intptr_t Remember(WindowHandle dialog, std::uint32_t message, std::uintptr_t,
                                std::intptr_t lParam) {
    if (message == kWmInitDialog) {
      RememberContext(dialog, lParam);
    }
    return 0;
  }

  void Put(const std::vector<WatermarkFacts>& marks) { test::PutSettings(world, StoreOf(marks)); }
  void PutInForce(const WatermarkFacts& facts) {
    test::SetBytes(context->privatePointer->WatermarkData, test::WatermarkBytes(facts));
  }
  WatermarkPageState& state() { return *GetPageState<WatermarkPageState>(PageSlot::kWatermark); }
  void Fill() { FillWatermarkList(state()); }
  std::vector<std::u16string> Rows() { return user().ItemTexts(kList); }
  std::vector<std::uintptr_t> Ids() { return user().ItemData(kList); }
  std::int32_t Selected() { return user().Selected(kList); }
  headless::User user() { return {world.platform, page}; }

  test::TestWorld world;
  std::unique_ptr<UIContext> context = std::make_unique<UIContext>();
  ModuleHandle module = nullptr;
  WindowHandle page = nullptr;
};

using Texts = std::vector<std::u16string>;
using Ids = std::vector<std::uintptr_t>;

// ---- Filling ------------------------------------------------------------------------------------

TEST(WatermarkListBox, OfAFirstRunShowsTheFourFactoryRecords) {
  ListStage stage;
  stage.Fill();
  EXPECT_EQ(stage.Rows(),
            (Texts{u"[No Watermark]", u"Confidential", u"Watermark", u"DateAndTime"}));
  EXPECT_EQ(stage.Ids(), (Ids{0, 1, 2, 3}));
  EXPECT_SETTINGS(stage.world, StoreOf(test::FirstFour()));
}

TEST(WatermarkListBox, IsEmptiedBeforeItIsFilled) {
  ListStage stage;
  stage.Fill();
  stage.Put({Mark(4, u"Draft")});
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"Draft"}));
  EXPECT_EQ(stage.Ids(), (Ids{4}));
}

TEST(WatermarkListBox, ShowsAStoreOfOneThreeTwoInOrderAndLeavesItSo) {
  ListStage stage;
  stage.Put({Mark(1, u"A"), Mark(3, u"C"), Mark(2, u"B")});
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"A", u"B", u"C"}));
  EXPECT_EQ(stage.Ids(), (Ids{1, 2, 3}));
  EXPECT_SETTINGS(stage.world, StoreOf({Mark(1, u"A"), Mark(2, u"B"), Mark(3, u"C")}));
}

TEST(WatermarkListBox, ShowsTheEarlierOfTwoWithTheSameIdFirst) {
  ListStage stage;
  stage.Put({Mark(2, u"Z"), Mark(2, u"A"), Mark(1, u"M")});
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"M", u"Z", u"A"}));
}

// A list box with the sort style keeps the order of the ids all the same.
TEST(WatermarkListBox, KeepsTheOrderOfTheIdsInASortedBox) {
  ListStage stage;
  stage.world.platform.windows.Find(stage.state().list.window())->style |= headless::kListSort;
  stage.Put({Mark(1, u"Z"), Mark(2, u"A")});
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"Z", u"A"}));
}

TEST(WatermarkListBox, ShowsNamesThatDifferFromTheStores) {
  ListStage stage;
  const std::string file = StoreOf({test::StoredAs(u"Key", Mark(4, u"Inside"))});
  test::PutSettings(stage.world, file);
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"Inside"}));
  EXPECT_SETTINGS(stage.world, file);
}

TEST(WatermarkListBox, ShowsANameWithoutAnEndUpToTheEndOfItsField) {
  ListStage stage;
  WatermarkFacts facts = Mark(4, std::u16string(33, u'n'));
  facts.text = u"t";
  test::PutSettings(stage.world, StoreOf({test::StoredAs(u"Key", facts)}));
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{std::u16string(33, u'n')}));
}

TEST(WatermarkListBox, ShowsAnEmptyRowForWhatIsNoRecord) {
  ListStage stage;
  test::PutSettings(stage.world, StoreOf({Stored(Mark(1, u"A")), Record("Short", "x")}));
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"", u"A"}));
  EXPECT_EQ(stage.Ids(), (Ids{0, 1}));
  // It stands in front in the store too, and the next time nothing is written.
  const std::string sorted = StoreOf({Record("Short", "x"), Stored(Mark(1, u"A"))});
  EXPECT_SETTINGS(stage.world, sorted);
  stage.Fill();
  EXPECT_SETTINGS(stage.world, sorted);
  EXPECT_EQ(stage.Rows(), (Texts{u"", u"A"}));
}

// The second filling finds the store in order: the file is made sure of, and nothing else written.
TEST(WatermarkListBox, LeavesAStoreOfOddValuesInOrder) {
  for (const std::vector<std::string>& records :
       {std::vector{Stored(Mark(0, u"None")), Stored(Mark(1, u"A")), Record("Short", "x")},
        std::vector{Record("Short", "x"), Stored(Mark(-1, u"X"))}}) {
    ListStage stage;
    test::PutSettings(stage.world, StoreOf(records));
    stage.Fill();
    const Texts rows = stage.Rows();
    const std::string file = test::Settings(stage.world);
    EXPECT_EQ(rows.front(), u"");
    stage.world.platform.faults.StartTrace();
    stage.Fill();
    EXPECT_EQ(stage.Rows(), rows);
    EXPECT_SETTINGS(stage.world, file);
    EXPECT_EQ(test::CallsOf(stage.world, "WriteFile"), 1U);
  }
}

TEST(WatermarkListBox, MakesTheSettingsFileWhole) {
  ListStage stage;
  const std::string marks = test::Container("watermarksetting", {Stored(Mark(4, u"A"))});
  test::PutSettings(stage.world, test::Container("cfgobj", {test::Version(),
                                                            test::Container("UIParam", {marks})}));
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"A"}));
  EXPECT_NE(test::Settings(stage.world).find("cuspapersetting"), std::string::npos);
}

TEST(WatermarkListBox, ShowsTheFirstOfTwoOfTheSameName) {
  ListStage stage;
  test::PutSettings(stage.world,
                    StoreOf({test::StoredAs(u"Same", Mark(5, u"First")),
                             test::StoredAs(u"Same", Mark(7, u"Second")), Stored(Mark(8, u"B"))}));
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"First", u"B"}));
  stage.PutInForce(Mark(8, u"B"));
  EXPECT_TRUE(SelectWatermark(stage.state(), 8));
  EXPECT_EQ(stage.Selected(), 1);
}

// Marks named A, B and so on, whose ids go down from their number to 1.
std::vector<WatermarkFacts> MarksCountingDown(std::int16_t count) {
  std::vector<WatermarkFacts> marks;
  for (std::int16_t i = 0; i < count; ++i) {
    const char16_t letter[] = {static_cast<char16_t>(u'A' + i), u'\0'};
    marks.push_back(Mark(static_cast<std::int16_t>(count - i), letter));
  }
  return marks;
}

// A rewrite would bring what a list doesn't hold to the front, and the next one the rest.
TEST(WatermarkListBox, ShowsAStoreOfMoreThanItReadsAsItIs) {
  ListStage stage;
  const std::vector<WatermarkFacts> marks = MarksCountingDown(40);
  stage.Put(marks);
  for (int pass = 0; pass < 2; ++pass) {
    stage.Fill();
    ASSERT_EQ(stage.Rows().size(), 32U);
    EXPECT_EQ(stage.Rows().front(), u"A");
    EXPECT_EQ(stage.Ids().front(), 40U);
    EXPECT_SETTINGS(stage.world, StoreOf(marks));
  }
  stage.PutInForce(marks[2]);
  EXPECT_TRUE(SelectWatermark(stage.state(), 38));
  EXPECT_EQ(stage.Selected(), 2);
}

// As many as a list holds can be sorted.
TEST(WatermarkListBox, PutsAStoreOfAsManyAsItReadsInOrder) {
  ListStage stage;
  std::vector<WatermarkFacts> marks = MarksCountingDown(32);
  stage.Put(marks);
  stage.Fill();
  EXPECT_EQ(stage.Ids().front(), 1U);
  std::ranges::reverse(marks);
  EXPECT_SETTINGS(stage.world, StoreOf(marks));
}

TEST(WatermarkListBox, HoldsSixteen) {
  ListStage stage;
  std::vector<WatermarkFacts> marks;
  for (std::int16_t i = 15; i >= 0; --i) {
    marks.push_back(Mark(i, std::u16string(u"Mark ") + static_cast<char16_t>(u'a' + i)));
  }
  stage.Put(marks);
  stage.Fill();
  std::ranges::reverse(marks);
  ASSERT_EQ(stage.Rows().size(), 16U);
  EXPECT_EQ(stage.Rows().front(), u"Mark a");
  EXPECT_EQ(stage.Ids().back(), 15U);
  EXPECT_SETTINGS(stage.world, StoreOf(marks));
}

TEST(WatermarkListBox, WithoutAFileIsEmpty) {
  ListStage stage;
  stage.Fill();
  stage.world.platform.faults.FailOperation("CreateFileW");
  stage.Fill();
  EXPECT_TRUE(stage.Rows().empty());
}

TEST(WatermarkListBox, ThatTheDialogLacksLeavesTheStoreInOrder) {
  ListStage stage;
  stage.state().list.Attach(stage.page, 1);
  stage.Put({Mark(2, u"B"), Mark(1, u"A")});
  stage.Fill();
  EXPECT_TRUE(stage.Rows().empty());
  EXPECT_SETTINGS(stage.world, StoreOf({Mark(1, u"A"), Mark(2, u"B")}));
}

// A box that has no room for a row has the rows behind it.
TEST(WatermarkListBox, LeavesOutARowThatCannotBeAdded) {
  ListStage stage;
  stage.Put({Mark(1, u"A"), Mark(2, u"B"), Mark(3, u"C")});
  const WindowHandle list = stage.state().list.window();
  bool refused = false;
  stage.world.platform.windows.Find(list)->answerer =
      [&](std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) -> std::intptr_t {
    if (message == kLbInsertString && wParam == 1 && !refused) {
      refused = true;
      return -2;  // LB_ERRSPACE
    }
    return headless::AnswerControlMessage(stage.world.platform.windows, list, message, wParam,
                                          lParam);
  };
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"A", u"C"}));
  EXPECT_EQ(stage.Ids(), (Ids{1, 3}));
}

// ---- Selecting ----------------------------------------------------------------------------------

struct SelectCase {
  const char* name;
  std::int16_t index;
  std::u16string nameInForce;
  bool found;
  std::int32_t row;
};
void PrintTo(const SelectCase& row, std::ostream* out) {
  *out << row.name;
}

const SelectCase kSelections[] = {
    {"BehindWhatIsNoRecord", 0, u"None", true, 1}, {"BothAgree", 4, u"Draft", true, 2},
    {"SecondOfTheId", 4, u"Copy", true, 3},        {"OtherId", 5, u"Draft", false, -1},
    {"OtherName", 4, u"Secret", false, -1},        {"OtherCase", 4, u"draft", false, -1},
    {"NameOfAnotherId", 0, u"Draft", false, -1},   {"EmptyNameIsNoRecord", 0, u"", false, -1},
};

class WatermarkSelection : public testing::TestWithParam<SelectCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, WatermarkSelection, testing::ValuesIn(kSelections),
                         test::CaseName());

TEST_P(WatermarkSelection, GoesByIdAndByTheNameInForce) {
  ListStage stage;
  test::PutSettings(stage.world, StoreOf({Stored(Mark(0, u"None")), Record("Short", "x"),
                                          Stored(Mark(4, u"Draft")), Stored(Mark(4, u"Copy"))}));
  stage.Fill();
  stage.PutInForce(Mark(9, GetParam().nameInForce));
  EXPECT_EQ(SelectWatermark(stage.state(), GetParam().index), GetParam().found);
  EXPECT_EQ(stage.Selected(), GetParam().row);
}

TEST(WatermarkSelectionOfOddStores, IsTheRowOfTheRecord) {
  ListStage stage;
  test::PutSettings(stage.world, StoreOf({Stored(Mark(0, u"None")), Stored(Mark(1, u"A")),
                                          Record("Short", "x")}));
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"", u"None", u"A"}));
  EXPECT_EQ(stage.Ids(), (Ids{0, 0, 1}));
  stage.PutInForce(Mark(0, u"None"));
  EXPECT_TRUE(SelectWatermark(stage.state(), 0));
  EXPECT_EQ(stage.Selected(), 1);
  test::PutSettings(stage.world, StoreOf({Record("Short", "x"), Stored(Mark(-1, u"X"))}));
  stage.Fill();
  EXPECT_EQ(stage.Rows(), (Texts{u"", u"X"}));
  stage.PutInForce(Mark(-1, u"X"));
  EXPECT_TRUE(SelectWatermark(stage.state(), -1));
  EXPECT_EQ(stage.Selected(), 1);
}

TEST(WatermarkSelectionThatIsMissed, LeavesTheOneBefore) {
  ListStage stage;
  stage.Put({Mark(1, u"A"), Mark(2, u"B"), Mark(3, u"C")});
  stage.Fill();
  stage.PutInForce(Mark(2, u"B"));
  EXPECT_TRUE(SelectWatermark(stage.state(), 2));
  EXPECT_FALSE(SelectWatermark(stage.state(), 3));
  EXPECT_EQ(stage.Selected(), 1);
}

TEST(WatermarkSelectionThatIsMissed, IsARowThatTheBoxLacks) {
  ListStage stage;
  stage.Put({Mark(1, u"A")});
  stage.Fill();
  stage.Put({Mark(1, u"A"), Mark(2, u"B")});
  stage.PutInForce(Mark(2, u"B"));
  EXPECT_FALSE(SelectWatermark(stage.state(), 2));
}

TEST(WatermarkSelectionThatIsMissed, IsAnyOfADialogWithoutTheBox) {
  ListStage stage;
  stage.Put({Mark(1, u"A")});
  stage.state().list.Attach(stage.page, 1);
  stage.PutInForce(Mark(1, u"A"));
  EXPECT_FALSE(SelectWatermark(stage.state(), 1));
}

// The row is the place in the store, which a full list box has too.
TEST(WatermarkSelectionOfAnUnsortedStore, IsThePlaceInTheStore) {
  ListStage stage;
  stage.Put({Mark(1, u"A"), Mark(2, u"B"), Mark(3, u"C")});
  stage.Fill();
  stage.Put({Mark(3, u"C"), Mark(1, u"A"), Mark(2, u"B")});
  stage.PutInForce(Mark(1, u"A"));
  EXPECT_TRUE(SelectWatermark(stage.state(), 1));
  EXPECT_EQ(stage.Selected(), 1);
}

TEST(WatermarkSelectionWithoutAReadableRecord, GoesByTheNameOfNoWatermark) {
  ListStage stage;
  stage.Fill();
  stage.PutInForce(Mark(1, u"Confidential"));
  test::ForgetKey(*stage.context, "WatermarkData");
  EXPECT_FALSE(SelectWatermark(stage.state(), 1));
  EXPECT_TRUE(SelectWatermark(stage.state(), 0));
  EXPECT_EQ(stage.Selected(), 0);
}

TEST(WatermarkSelectionWithoutAContext, FindsNothing) {
  ListStage stage;
  stage.Fill();
  stage.PutInForce(Mark(1, u"Confidential"));
  stage.world.platform.windows.SetWindowLongPtrW(stage.page, kGwlpUserData, 0);
  EXPECT_FALSE(SelectWatermark(stage.state(), 1));
}

TEST(WatermarkSelectionWithoutAContext, IsNoneInAStateWithoutADialog) {
  const test::TestWorld world;
  const WatermarkPageState state;
  FillWatermarkList(state);
  EXPECT_FALSE(SelectWatermark(state, 0));
  EXPECT_SETTINGS(world, StoreOf(test::FirstFour()));
}

// ---- What other pages ask -----------------------------------------------------------------------

TEST(WatermarkKindOfARecord, IsNoneWhereTheKeyCannotBeRead) {
  ListStage stage;
  stage.PutInForce(Mark(1, u"Confidential"));
  EXPECT_EQ(WatermarkKind(*stage.context), 1);
  test::ForgetKey(*stage.context, "WatermarkData");
  EXPECT_EQ(WatermarkKind(*stage.context), 0);
}

// ---- Any call of the platform fails -------------------------------------------------------------

TEST(WatermarkListFailures, LoseNoRecordBehindTheReading) {
  const std::vector<WatermarkFacts> marks = {Mark(2, u"B"), Mark(3, u"C"), Mark(1, u"A")};
  constexpr std::size_t kMostCalls = 2000;
  std::size_t n = 1;
  for (; n < kMostCalls; ++n) {
    ListStage stage;
    stage.Put(marks);
    stage.PutInForce(marks[0]);
    stage.world.platform.faults.StartTrace();
    stage.world.platform.faults.FailCall(n);
    stage.Fill();
    const std::string left = test::Settings(stage.world);
    const bool firedInFill = stage.world.platform.faults.fired();
    SelectWatermark(stage.state(), 2);
    const bool fired = stage.world.platform.faults.fired();
    const std::vector<std::string>& trace = stage.world.platform.faults.trace();
    const auto filling = std::ranges::find(trace, "SendMessageW") - trace.begin();
    const std::string failed = firedInFill ? trace.at(n - 1) : "";
    // What a failed write empties, or a check takes for missing, before the list was read is gone.
    const bool isGone = (failed == "WriteFile" || failed == "GetFileAttributesW") &&
                        static_cast<std::ptrdiff_t>(n) <= filling;
    for (const WatermarkFacts& facts : marks) {
      EXPECT_TRUE(isGone || left.find(Stored(facts)) != std::string::npos)
          << n << " " << failed << test::Readable(left);
    }
    if (!fired) {
      EXPECT_EQ(stage.Selected(), 1);
      break;
    }
  }
  EXPECT_GT(n, 100U);
  EXPECT_LT(n, kMostCalls);
}

}  // namespace
}  // namespace ostrel
