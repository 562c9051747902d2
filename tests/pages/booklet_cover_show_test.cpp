// What the booklet's cover dialog shows of a record: captions, lists, and which of media and source
// is locked.
#include "pages/booklet_stage.h"
#include "support/case_name.h"

#include <cstring>
#include <initializer_list>
#include <ostream>

namespace ostrel {
namespace {

using headless::User;
using test::BookletStage;

// ---- Captions and lists -------------------------------------------------------------------------

TEST(BookletControls, TheDefaultsButton_IsNotShown) {
  BookletStage stage;
  EXPECT_FALSE(stage.Open([](User& user) {
    EXPECT_TRUE(user.Has(1064));
    EXPECT_FALSE(user.Shown(1064));
    for (const std::int32_t button : {1, 2, 1112}) {
      EXPECT_TRUE(user.Shown(button)) << button;
    }
  }));
  EXPECT_EQ(stage.openings, 1);
}

TEST(BookletCaptions, EachControl_HasItsOwn) {
  struct {
    std::int32_t control;
    std::uint32_t text;
  } const kCaptions[] = {{1, 175},     {2, 176},     {1478, 182}, {1480, 183}, {1394, 184},
                         {1395, 185},  {1396, 186},  {1397, 187}, {1398, 188}, {1028, 1008},
                         {1403, 4012}, {1064, 1011}, {1112, 1041}};
  BookletStage stage;
  // The template's own captions don't count.
  for (auto& control : stage.language.dialogs.at(1071).controls) {
    control.title = u"?";
  }
  EXPECT_FALSE(stage.Open([&](User& user) {
    for (const auto& row : kCaptions) {
      EXPECT_TRUE(user.Has(row.control)) << row.control;
      EXPECT_EQ(user.Text(row.control), BookletStage::Text(row.text)) << row.control;
    }
    EXPECT_EQ(stage.windows().Find(user.dialog())->text, BookletStage::Text(5081));
  }));
  EXPECT_EQ(stage.openings, 1);
}

TEST(BookletCaptions, TextsThatTheLanguageLacks_LeaveTheTemplatesOwn) {
  BookletStage stage;
  for (auto& control : stage.language.dialogs.at(1071).controls) {
    control.title = u"?";
  }
  for (const std::uint32_t id : {184U, 5081U}) {
    stage.language.strings.erase(id);
  }
  const std::u16string title = stage.language.dialogs.at(1071).title;
  EXPECT_FALSE(stage.Open([&](User& user) {
    EXPECT_EQ(user.Text(1394), u"?");
    EXPECT_EQ(user.Text(1395), BookletStage::Text(185));
    EXPECT_EQ(stage.windows().Find(user.dialog())->text, title);
  }));
}

TEST(BookletLists, BindingAndMedia_HaveTheirRows) {
  BookletStage stage;
  EXPECT_FALSE(stage.Open([](User& user) {
    EXPECT_EQ(user.ItemTexts(1479),
              (std::vector{BookletStage::Text(174), BookletStage::Text(177)}));
    EXPECT_EQ(user.ItemData(1479), (std::vector<std::uintptr_t>{0, 1}));
    EXPECT_EQ(user.ItemTexts(1009), std::vector{BookletStage::Text(127)});
    EXPECT_EQ(user.ItemData(1009), std::vector<std::uintptr_t>{1});
  }));
}

struct SourceListCase {
  const char* name;
  std::uint64_t model;
  std::uint8_t first, second;  // 1 when the tray is fitted
  std::vector<std::uint32_t> texts;
  std::vector<std::uintptr_t> values;
};
void PrintTo(const SourceListCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const SourceListCase kSourceLists[] = {
    {"OptionalTraysFitted",   0x80,  1, 1, {4017, 4031, 190, 193, 194}, {7, 4, 257, 258, 259}},
    {"OneTrayFitted",         0x80,  1, 0, {4017, 4031, 190, 193},      {7, 4, 257, 258}},
    {"TheOtherTrayFitted",    0x80,  0, 1, {4017, 4031, 190, 193},      {7, 4, 257, 258}},
    {"NoTrayFitted",          0x80,  0, 0, {4017, 4031, 190},           {7, 4, 257}},
    {"FirstOfThoseFamilies",  0x08,  1, 1, {4017, 4031, 190, 193, 194}, {7, 4, 257, 258, 259}},
    {"FixedTray",             0x400, 1, 1, {4017, 4018, 190},           {7, 4, 257}},
    {"FixedTrayNoneFitted",   0x01,  0, 0, {4017, 4018, 190},           {7, 4, 257}},
    {"NoFamily",              0x00,  1, 1, {4017, 190},                 {7, 257}},
};
// clang-format on

class BookletSourceList : public testing::TestWithParam<SourceListCase> {};

INSTANTIATE_TEST_SUITE_P(Models, BookletSourceList, testing::ValuesIn(kSourceLists),
                         test::CaseName());

TEST_P(BookletSourceList, HasTheRowsOfTheModelAndItsTrays) {
  BookletStage stage;
  stage.world.process.ModelFlags = GetParam().model;
  stage.FitTrays(GetParam().first, GetParam().second);
  EXPECT_FALSE(stage.Open([](User& user) {
    std::vector<std::u16string> texts;
    for (const std::uint32_t id : GetParam().texts) {
      texts.push_back(BookletStage::Text(id));
    }
    EXPECT_EQ(user.ItemTexts(1393), texts);
    EXPECT_EQ(user.ItemData(1393), GetParam().values);
  }));
}

// ---- The cover's source and media ---------------------------------------------------------------

struct ShowCase {
  const char* name;
  std::int16_t paper, defaultSource, type, source, print;
  std::int32_t row;    // of the source list
  std::int16_t after;  // the source, once it is shown
  bool live, icon;     // of the source
  std::int32_t mediaRow;
};
void PrintTo(const ShowCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const ShowCase kShowCases[] = {
    // Name,                  Paper, Default, Type, Source, Print, Row, After, Live, Icon, Media row
    {"Automatic",                 9,   7,   1,   7, 1, 0,   7, true,  false,  0},
    {"Manual",                    9,   7,   1,   4, 1, 1,   4, true,  false,  0},
    {"Tray1",                     9,   7,   1, 257, 1, 2, 257, true,  false,  0},
    {"Tray2",                     9,   7,   1, 258, 1, 3, 258, true,  false,  0},
    {"Tray3",                     9,   7,   1, 259, 1, 4, 259, true,  false,  0},
    {"LikeTray1ShowsTheFirst",    9,   7,   1, 260, 1, 0, 260, true,  false,  0},
    {"NoSource",                  9,   7,   1,   0, 1, 0,   0, true,  false,  0},
    {"NonsenseSource",            9,   7,   1,  -1, 1, 0,  -1, true,  false,  0},
    {"Thin",                      9,   7, 264, 257, 1, 2, 257, true,  false, -1},
    {"Thick",                     9,   7, 257, 257, 1, 1,   4, false, true,  -1},
    {"Letterhead",                9,   7, 261,   7, 1, 1,   4, false, true,  -1},
    {"NoMedia",                   9,   7,   0,   7, 1, 1,   4, false, true,  -1},
    {"NonsenseMedia",             9,   7,  -9, 259, 1, 1,   4, false, true,  -1},
    {"NoCover",                   9,   7,   1, 257, 0, 2, 257, false, false,  0},
    {"NoCoverThick",              9,   7, 257, 257, 0, 1,   4, false, true,  -1},
    {"EnvelopeFromACassette",    20,   7,   1, 257, 1, 1,   4, false, true,   0},
    {"EnvelopeThick",            20,   7, 257, 257, 1, 1,   4, false, true,  -1},
    {"EnvelopeFedByHand",        20,   4,   1, 257, 1, 2, 257, true,  false,  0},
    {"EnvelopeNoCover",          20,   7,   1,   7, 0, 1,   4, false, true,   0},
    {"CardFromTray1",           241, 257,   1, 259, 1, 4, 259, true,  false,  0},
    {"CardFromTray2",           241, 258,   1, 259, 1, 1,   4, false, true,   0},
    {"CustomPaper",             288,   7,   1, 258, 1, 3, 258, true,  false,  0},
    {"LastCustomPaper",         308,   7,   1, 258, 1, 3, 258, true,  false,  0},
    {"BeyondTheCustomPapers",   309,   7,   1, 258, 1, 1,   4, false, true,   0},
    {"PaperWithoutARow",          0,   7,   1, 258, 1, 1,   4, false, true,   0},
    {"SourceWithoutAColumn",      9, 261,   1, 258, 1, 1,   4, false, true,   0},
};
// clang-format on

class BookletShow : public testing::TestWithParam<ShowCase> {};

INSTANTIATE_TEST_SUITE_P(Records, BookletShow, testing::ValuesIn(kShowCases), test::CaseName());

TEST_P(BookletShow, LocksWhatTheRecordLocks) {
  const ShowCase& row = GetParam();
  BookletStage stage;
  stage.shared().dmPaperSize = row.paper;
  stage.shared().dmDefaultSource = row.defaultSource;
  stage.own().BookletCoverType = row.type;
  stage.own().BookletCoverSource = row.source;
  stage.own().BookletPrintCover = row.print;
  const DriverDevmode before = stage.context.devmode;
  const BookletStage::Look expected = {.sourceRow = row.row,
                                       .mediaRow = row.mediaRow,
                                       .bindingRow = 0,
                                       .source = row.after,
                                       .sourceLive = row.live,
                                       .mediaLive = row.print != 0,
                                       .sourceIcon = row.icon,
                                       .mediaIcon = false};
  EXPECT_TRUE(stage.LookOnce() == expected);
  // Cancelled: what was forced in the dialog isn't in the record.
  EXPECT_EQ(std::memcmp(&before, &stage.context.devmode, sizeof(before)), 0);
}

struct ShortListCase {
  const char* name;
  std::uint64_t model;
  std::uint8_t first, second;
  std::int16_t source;
  std::int32_t row;
  std::int16_t after;
};
void PrintTo(const ShortListCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const ShortListCase kShortLists[] = {
    {"Tray2WithoutTrays",         0x80,  0, 0, 258, 0,   7},
    {"Tray3WithoutTrays",         0x80,  0, 0, 259, 0,   7},
    {"Tray1WithoutTrays",         0x80,  0, 0, 257, 2, 257},
    {"Tray3WithOneTray",          0x80,  1, 0, 259, 0,   7},
    {"Tray2WithOneTray",          0x80,  1, 0, 258, 3, 258},
    {"Tray2OfAFixedTray",         0x100, 1, 1, 258, 0,   7},
    {"Tray3OfAFixedTray",         0x200, 1, 1, 259, 0,   7},
    {"Tray1OfNoFamily",           0x00,  1, 1, 257, 0,   7},
};
// clang-format on

class BookletShortList : public testing::TestWithParam<ShortListCase> {};

INSTANTIATE_TEST_SUITE_P(Models, BookletShortList, testing::ValuesIn(kShortLists),
                         test::CaseName());

TEST_P(BookletShortList, ARowPastTheEnd_BecomesTheFirstWithTheAutomaticSource) {
  BookletStage stage;
  stage.world.process.ModelFlags = GetParam().model;
  stage.FitTrays(GetParam().first, GetParam().second);
  stage.own().BookletCoverSource = GetParam().source;
  const BookletStage::Look look = stage.LookOnce();
  EXPECT_EQ(look.sourceRow, GetParam().row);
  EXPECT_EQ(look.source, GetParam().after);
}

// ---- Media and source that aren't free ----------------------------------------------------------

TEST(BookletFlags, BothAreSetFromTheStateOnAndStay) {
  BookletStage stage;
  EXPECT_TRUE(stage.state().coverMediaFree);
  EXPECT_TRUE(stage.state().coverSourceFree);
  EXPECT_TRUE(stage.Open([](User& user) { EXPECT_TRUE(user.Click(1)); }));
  EXPECT_TRUE(stage.state().coverMediaFree);
  EXPECT_TRUE(stage.state().coverSourceFree);
}

TEST(BookletFlags, ASourceThatIsNotFree_IsTheAutomaticOneLocked) {
  BookletStage stage;
  stage.state().coverSourceFree = false;
  stage.own().BookletCoverSource = 257;
  const BookletStage::Look look = stage.LookOnce();
  EXPECT_EQ(look.sourceRow, 0);
  EXPECT_EQ(look.source, 7);
  EXPECT_FALSE(look.sourceLive);
  EXPECT_TRUE(look.sourceIcon);
  EXPECT_TRUE(look.mediaLive);
}

TEST(BookletFlags, ASourceThatIsNotFree_StillYieldsToTheMedia) {
  BookletStage stage;
  stage.state().coverSourceFree = false;
  stage.own().BookletCoverType = 257;
  const BookletStage::Look look = stage.LookOnce();
  EXPECT_EQ(look.sourceRow, 1);
  EXPECT_EQ(look.source, 4);
}

TEST(BookletFlags, AMediaThatIsNotFree_ShowsTheFirstLocked) {
  BookletStage stage;
  stage.state().coverMediaFree = false;
  stage.own().BookletCoverType = 264;  // which has no row
  const BookletStage::Look look = stage.LookOnce();
  EXPECT_EQ(look.mediaRow, 0);
  EXPECT_FALSE(look.mediaLive);
  EXPECT_TRUE(look.mediaIcon);
  EXPECT_TRUE(look.sourceLive);
}

// ---- Binding and boxes --------------------------------------------------------------------------

TEST(BookletShown, TheBinding_HasItsRowOrNone) {
  for (const auto& [binding, row] :
       {std::pair{0, 0}, std::pair{1, 1}, std::pair{2, -1}, std::pair{-1, -1}}) {
    BookletStage stage;
    stage.own().BookletBinding = static_cast<std::int16_t>(binding);
    EXPECT_EQ(stage.LookOnce().bindingRow, row) << binding;
  }
}

TEST(BookletShown, EachBox_IsCheckedByItsFieldAlone) {
  for (const test::BookletBoxRow& set : test::kBookletBoxes) {
    BookletStage stage;
    for (const test::BookletBoxRow& box : test::kBookletBoxes) {
      stage.own().*box.field = 0;
    }
    stage.own().*set.field = 1;
    EXPECT_FALSE(stage.Open([&](User& user) {
      for (const test::BookletBoxRow& box : test::kBookletBoxes) {
        EXPECT_EQ(user.Checked(box.control), box.control == set.control)
            << set.control << ", " << box.control;
      }
    }));
  }
}

TEST(BookletShown, WithoutACover_EveryControlOfTheCoverIsDisabled) {
  for (const std::int16_t print : std::initializer_list<std::int16_t>{0, 1}) {
    BookletStage stage;
    stage.own().BookletPrintCover = print;
    EXPECT_FALSE(stage.Open([&](User& user) {
      for (const std::int32_t control : {1009, 1393, 1395, 1396, 1397, 1398, 1028, 1403}) {
        EXPECT_EQ(user.Enabled(control), print != 0) << control;
      }
      for (const std::int32_t control : {1, 2, 1112, 1394, 1478, 1479, 1480}) {
        EXPECT_TRUE(user.Enabled(control)) << control;
      }
    }));
  }
}

// ---- Opening again ------------------------------------------------------------------------------

TEST(BookletState, OutlivesTheDialogAndIsFilledAnew) {
  BookletStage stage;
  EXPECT_FALSE(stage.Open([](User& user) { EXPECT_TRUE(user.Choose(1479, 1)); }));
  const PageState* state = PageStatePlace(PageSlot::kBookletCover);
  ASSERT_NE(state, nullptr);
  EXPECT_EQ(state, stage.world.pageStates->rows[0x1234 % 512][10]);
  EXPECT_EQ(stage.state().snapshot.privateDevmode.BookletBinding, 1);
  EXPECT_EQ(stage.state().dialog, nullptr);
  EXPECT_EQ(stage.state().tooltips, (std::array<WindowHandle, 2>{}));
  ReleasePageStates();  // a sheet's end
  EXPECT_EQ(PageStatePlace(PageSlot::kBookletCover), state);
  EXPECT_TRUE(stage.Open([&](User& user) {
    EXPECT_EQ(stage.state().dialog, user.dialog());
    EXPECT_EQ(stage.state().sourceCombo.window(), user.Control(1393));
    EXPECT_EQ(stage.state().snapshot.privateDevmode.BookletBinding, 0);
    EXPECT_EQ(user.Selected(1479), 0);
    EXPECT_TRUE(user.Click(1));
  }));
  EXPECT_EQ(stage.own().BookletBinding, 0);
}

TEST(BookletState, TheSnapshot_HoldsTheWholeRecord) {
  BookletStage stage;
  stage.own().DuplexIndex = 2;
  stage.shared().dmMediaType = 261;
  stage.shared().dmPaperSize = 11;
  EXPECT_FALSE(stage.Open([&](User&) {
    const DriverDevmode& snapshot = stage.state().snapshot;
    EXPECT_EQ(snapshot.privateDevmode.DuplexIndex, 2);
    EXPECT_EQ(snapshot.publicDevmode.dmMediaType, 261U);
    EXPECT_EQ(snapshot.publicDevmode.dmPaperSize, 11);
  }));
}

TEST(BookletControls, ThoseThatTheTemplateLacks_ArePassedOver) {
  for (const std::int32_t lacking : {1, 1009, 1028, 1064, 1112, 1393, 1394, 1395, 1396, 1397, 1398,
                                     1403, 1446, 1450, 1478, 1479, 1480}) {
    BookletStage stage;
    stage.RemoveControl(lacking);
    const DriverDevmode before = stage.context.devmode;
    EXPECT_FALSE(stage.Open([](User& user) {
      EXPECT_FALSE(user.Text(2).empty());
      EXPECT_TRUE(user.Click(2));
    })) << lacking;
    EXPECT_EQ(stage.openings, 1) << lacking;
    EXPECT_EQ(std::memcmp(&before, &stage.context.devmode, sizeof(before)), 0) << lacking;
  }
}

TEST(BookletControls, WithoutTheSourceList_TheSourceStands) {
  for (const std::int16_t source : std::initializer_list<std::int16_t>{257, 4, 0}) {
    BookletStage stage;
    stage.own().BookletCoverSource = source;
    stage.RemoveControl(1393);
    EXPECT_TRUE(stage.Open([](User& user) { EXPECT_TRUE(user.Click(1)); }));
    EXPECT_EQ(stage.own().BookletCoverSource, source);
  }
}

TEST(BookletModal, TheSheetBehind_IsLockedWhileTheDialogIsOpen) {
  BookletStage stage;
  EXPECT_FALSE(stage.Open([&](User& user) {
    EXPECT_EQ(stage.windows().GetParent(user.dialog()), stage.sheet);
    EXPECT_FALSE(stage.windows().Find(stage.sheet)->IsEnabled());
  }));
  EXPECT_EQ(stage.openings, 1);
}

}  // namespace
}  // namespace ostrel
