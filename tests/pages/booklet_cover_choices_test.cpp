// What a user does in the booklet's cover dialog: choices that are taken and choices that are
// refused, the two ways out, help and tooltips.
#include "pages/booklet_stage.h"
#include "support/case_name.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <ostream>

namespace ostrel {
namespace {

using headless::User;
using test::BookletStage;

constexpr std::uint32_t kExclamation = 48;

// Whether an open dialog's snapshot is the record beside what a test allows for.
bool IsUntouched(const DriverDevmode& before, const UIContext& context) {
  return std::memcmp(&before, &context.devmode, sizeof(before)) == 0;
}

// ---- Media --------------------------------------------------------------------------------------

struct MediaCase {
  std::int16_t duplexIndex, media;
  bool refused;
};
void PrintTo(const MediaCase& row, std::ostream* out) {
  *out << row.media << " with " << row.duplexIndex;
}
// Each media type with each index of two-sided printing.
std::vector<MediaCase> MediaCases() {
  constexpr std::int16_t kMedia[] = {257, 258, 259, 263, 2, 264, 265, 261, 6, 0, 300};
  constexpr std::int16_t kRefused[] = {263, 259, 258, 257, 2, 265, 261};
  std::vector<MediaCase> cases;
  for (const std::int16_t index : std::initializer_list<std::int16_t>{-1, 0, 1, 2, 3, 4}) {
    for (const std::int16_t media : kMedia) {
      const bool listed = std::ranges::find(kRefused, media) != std::end(kRefused);
      cases.push_back({index, media, listed && (index == 2 || index == 3)});
    }
  }
  return cases;
}

class BookletMedia : public testing::TestWithParam<MediaCase> {};

INSTANTIATE_TEST_SUITE_P(Types, BookletMedia, testing::ValuesIn(MediaCases()));

TEST_P(BookletMedia, IsTakenUnlessItNeedsOneSide) {
  const auto& [duplexIndex, media, refused] = GetParam();
  BookletStage stage;
  stage.own().DuplexIndex = duplexIndex;
  EXPECT_FALSE(stage.Open([&, media = media, refused = refused](User& user) {
    stage.AddRow(user, 1009, media);
    ASSERT_TRUE(user.Choose(1009, 1));
    const PrivateDevmode& snapshot = stage.state().snapshot.privateDevmode;
    EXPECT_EQ(snapshot.BookletCoverType, refused ? 1 : media);
    EXPECT_EQ(user.Selected(1009), refused ? 0 : 1);
    EXPECT_EQ(user.Enabled(1009), !refused);
    // A media type other than plain and thin forces the manual source.
    const bool forced = !refused && media != 264;
    EXPECT_EQ(snapshot.BookletCoverSource, forced ? 4 : 7);
    EXPECT_EQ(user.Selected(1393), forced ? 1 : 0);
    EXPECT_EQ(user.Enabled(1393), !forced);
    EXPECT_EQ(user.Shown(1450), forced);
    ASSERT_EQ(stage.boxes().size(), refused ? 1U : 0U);
    if (refused) {
      EXPECT_EQ(stage.boxes()[0].owner, user.dialog());
      EXPECT_EQ(stage.boxes()[0].style, kExclamation);
      EXPECT_EQ(stage.boxes()[0].caption, BookletStage::Text(5004));
    }
  }));
}

TEST(BookletMediaBox, NamesTheMedia) {
  BookletStage stage;
  stage.own().DuplexIndex = 2;
  EXPECT_FALSE(stage.Open([&](User& user) {
    stage.AddRow(user, 1009, 263);
    EXPECT_TRUE(user.Choose(1009, 1));
  }));
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, BookletStage::Text(334) + BookletStage::Text(5001) +
                                       BookletStage::Text(5003) + BookletStage::Text(5002));
}

TEST(BookletMedia, TheOneInForceChosenAgain_ChangesNothing) {
  BookletStage stage;
  stage.own().DuplexIndex = 2;
  EXPECT_FALSE(stage.Open([&](User& user) {
    stage.windows().stateChanges.clear();
    EXPECT_TRUE(user.Choose(1009, 0));
    EXPECT_TRUE(stage.windows().stateChanges.empty());
  }));
}

TEST(BookletMedia, ARefusedOne_PutsBackNoRowForATypeWithoutOne) {
  BookletStage stage;
  stage.own().DuplexIndex = 3;
  stage.own().BookletCoverType = 264;
  EXPECT_FALSE(stage.Open([&](User& user) {
    stage.AddRow(user, 1009, 258);
    EXPECT_TRUE(user.Choose(1009, 1));
    EXPECT_EQ(user.Selected(1009), -1);
  }));
  EXPECT_EQ(stage.boxes().size(), 1U);
}

TEST(BookletMedia, PlainAgain_FreesTheSource) {
  BookletStage stage;
  stage.own().BookletCoverType = 257;
  EXPECT_TRUE(stage.Open([&](User& user) {
    EXPECT_FALSE(user.Enabled(1393));
    EXPECT_TRUE(user.Choose(1009, 0));
    EXPECT_TRUE(user.Enabled(1393));
    EXPECT_FALSE(user.Shown(1450));
    EXPECT_EQ(user.Selected(1393), 1);  // the source stays the manual one that was forced
    EXPECT_TRUE(user.Click(1));
  }));
  EXPECT_EQ(stage.own().BookletCoverType, 1);
  EXPECT_EQ(stage.own().BookletCoverSource, 4);
}

// ---- Source -------------------------------------------------------------------------------------

// Which sources a paper and a media type take, in the order 7, 4, 257, 258, 259.
struct Takes {
  std::int16_t id;
  const char* sources;
};
// clang-format off
const Takes kPapers[] = {
    {1, "11111"}, {9, "11111"}, {5, "11111"}, {13, "11111"}, {37, "01000"}, {27, "01000"},
    {28, "01000"}, {20, "01000"}, {11, "11111"}, {43, "01000"}, {250, "11111"}, {245, "11111"},
    {252, "01100"}, {246, "01100"}, {70, "11111"}, {34, "11111"}, {7, "11111"}, {14, "11111"},
    {243, "11111"}, {6, "11111"}, {31, "01000"}, {242, "01000"}, {241, "01100"}, {276, "01000"},
    {277, "01000"}, {278, "01000"}, {279, "01000"}, {280, "01000"},
    // Without a row: nothing is refused.
    {288, "11111"}, {308, "11111"}, {309, "11111"}, {0, "11111"}, {-1, "11111"}, {511, "11111"},
};
const Takes kMedia[] = {
    {1, "11111"}, {257, "11111"}, {258, "01000"}, {2, "00100"}, {259, "01000"}, {263, "01000"},
    {264, "11111"}, {265, "01000"}, {261, "00111"},
    // Without a row.
    {3, "11111"}, {0, "11111"}, {300, "11111"},
};
// clang-format on
constexpr std::int16_t kSources[] = {7, 4, 257, 258, 259};

// Chooses each source after the other, beginning from another one each time.
void ChooseEachSource(std::int16_t paper, std::int16_t media, const char* paperTakes,
                      const char* mediaTakes) {
  for (std::size_t to = 0; to < std::size(kSources); ++to) {
    const std::size_t from = (to + 1) % std::size(kSources);
    BookletStage stage;
    stage.shared().dmPaperSize = paper;
    stage.shared().dmMediaType = static_cast<std::uint32_t>(media);
    const bool paperRefuses = paperTakes[to] == '0';
    const bool refused = paperRefuses || mediaTakes[to] == '0';
    EXPECT_FALSE(stage.Open([&](User& user) {
      stage.state().snapshot.privateDevmode.BookletCoverSource = kSources[from];
      stage.state().sourceCombo.Enable(true);
      ASSERT_TRUE(user.Choose(1393, static_cast<std::int32_t>(to)));
      EXPECT_EQ(stage.state().snapshot.privateDevmode.BookletCoverSource,
                kSources[refused ? from : to]);
      EXPECT_EQ(user.Selected(1393), static_cast<std::int32_t>(refused ? from : to));
      ASSERT_EQ(stage.boxes().size(), refused ? 1U : 0U);
      if (refused) {
        EXPECT_EQ(stage.boxes()[0].text, BookletStage::Text(paperRefuses ? 180 : 5033));
        EXPECT_EQ(stage.boxes()[0].caption, BookletStage::Text(5004));
        EXPECT_EQ(stage.boxes()[0].owner, user.dialog());
      }
    }));
    ASSERT_FALSE(testing::Test::HasFailure())
        << "paper " << paper << ", media " << media << ", source " << kSources[to];
  }
}

TEST(BookletSource, EachPapersRow_DecidesFirst) {
  for (const Takes& paper : kPapers) {
    ChooseEachSource(paper.id, 1, paper.sources, "11111");
  }
}

TEST(BookletSource, EachMediasRow_DecidesThen) {
  for (const Takes& media : kMedia) {
    ChooseEachSource(9, media.id, "11111", media.sources);
  }
}

TEST(BookletSource, WhatBothRefuse_IsToldOfThePaperAlone) {
  ChooseEachSource(20, 258, "01000", "01000");
  ChooseEachSource(252, 261, "01100", "00111");
}

TEST(BookletSource, TheOneInForceChosenAgain_ChangesNothing) {
  BookletStage stage;
  stage.shared().dmPaperSize = 20;
  stage.shared().dmDefaultSource = 4;
  EXPECT_FALSE(stage.Open([&](User& user) {
    EXPECT_TRUE(user.Choose(1393, 0));  // refused by the paper, were it another one
  }));
  EXPECT_TRUE(stage.boxes().empty());
}

TEST(BookletSource, ARowOfNoKnownSource_IsRefusedByAPaperWithARow) {
  BookletStage stage;
  EXPECT_FALSE(stage.Open([&](User& user) {
    stage.AddRow(user, 1393, 15);
    EXPECT_TRUE(user.Choose(1393, 5));
    EXPECT_EQ(user.Selected(1393), 0);
  }));
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, BookletStage::Text(180));
}

TEST(BookletSource, InALanguageReadFromTheRight_TheBoxIsTo) {
  BookletStage stage;
  stage.world.process.RightToLeftLanguage = true;
  stage.shared().dmMediaType = 258;
  EXPECT_FALSE(stage.Open([](User& user) { EXPECT_TRUE(user.Choose(1393, 2)); }));
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].style, kExclamation | 0x180000U);
}

// ---- Binding and boxes --------------------------------------------------------------------------

TEST(BookletBinding, TakesTheValueOfItsRow) {
  BookletStage stage;
  EXPECT_TRUE(stage.Open([&](User& user) {
    PrivateDevmode& snapshot = stage.state().snapshot.privateDevmode;
    EXPECT_TRUE(user.Choose(1479, 1));
    EXPECT_EQ(snapshot.BookletBinding, 1);
    EXPECT_TRUE(user.Choose(1479, 0));
    EXPECT_EQ(snapshot.BookletBinding, 0);
    stage.AddRow(user, 1479, 33);
    EXPECT_TRUE(user.Choose(1479, 2));
    EXPECT_EQ(snapshot.BookletBinding, 33);
    EXPECT_EQ(stage.own().BookletBinding, 0);
    EXPECT_TRUE(user.Click(1));
  }));
  EXPECT_EQ(stage.own().BookletBinding, 33);
}

class BookletBox : public testing::TestWithParam<test::BookletBoxRow> {};

INSTANTIATE_TEST_SUITE_P(Boxes, BookletBox, testing::ValuesIn(test::kBookletBoxes),
                         test::CaseName());

TEST_P(BookletBox, ChangesItsFieldOfTheSnapshotAlone) {
  BookletStage stage;
  const std::int16_t first = stage.own().*GetParam().field;
  EXPECT_TRUE(stage.Open([&](User& user) {
    for (const std::int16_t flips : std::initializer_list<std::int16_t>{1, 0, 1}) {
      const auto wanted = static_cast<std::int16_t>(flips == 1 ? 1 - first : first);
      PrivateDevmode expected = stage.state().snapshot.privateDevmode;
      expected.*GetParam().field = wanted;
      ASSERT_TRUE(user.Click(GetParam().control));
      EXPECT_EQ(user.Checked(GetParam().control), wanted == 1);
      EXPECT_EQ(std::memcmp(&expected, &stage.state().snapshot.privateDevmode, sizeof(expected)),
                0);
    }
    EXPECT_EQ(stage.own().*GetParam().field, first);
    EXPECT_TRUE(user.Click(1));
  }));
  EXPECT_EQ(stage.own().*GetParam().field, 1 - first);
}

TEST(BookletBox, TheCovers_EnablesAndDisablesAllOfTheCover) {
  BookletStage stage;
  stage.own().BookletPrintCover = 0;
  EXPECT_FALSE(stage.Open([&](User& user) {
    for (const bool on : {true, false, true}) {
      EXPECT_TRUE(user.Click(1394));
      for (const std::int32_t control : {1009, 1393, 1395, 1396, 1397, 1398, 1028, 1403}) {
        EXPECT_EQ(user.Enabled(control), on) << control;
      }
    }
  }));
}

// The box looks at nothing but itself: a source that the paper had locked is live afterwards.
TEST(BookletBox, TheCoversTurnedOffAndOn_MakesALockedSourceLive) {
  BookletStage stage;
  stage.shared().dmPaperSize = 20;
  EXPECT_FALSE(stage.Open([&](User& user) {
    EXPECT_FALSE(user.Enabled(1393));
    EXPECT_TRUE(user.Click(1394));
    EXPECT_TRUE(user.Click(1394));
    EXPECT_TRUE(user.Enabled(1393));
    EXPECT_TRUE(user.Shown(1450));
  }));
}

// ---- The two ways out ---------------------------------------------------------------------------

// A snapshot in which each of the dialog's words differs from the record's.
void ChangeAll(BookletStage& stage, User& user) {
  EXPECT_TRUE(user.Choose(1479, 1));
  EXPECT_TRUE(user.Choose(1393, 3));
  stage.AddRow(user, 1009, 264);
  EXPECT_TRUE(user.Choose(1009, 1));
  for (const std::int32_t box : {1395, 1396, 1397, 1398, 1394}) {
    EXPECT_TRUE(user.Click(box));
  }
}

TEST(BookletOk, WritesEveryWordOfTheDialogAndNoOther) {
  BookletStage stage;
  DriverDevmode expected = stage.context.devmode;
  PrivateDevmode& own = expected.privateDevmode;
  own.BookletBinding = 1;
  own.BookletCoverType = 264;
  own.BookletCoverSource = 258;
  own.BookletPrintCover = 0;
  own.BookletPrintOnCoverOutside = 1;
  own.BookletPrintOnCoverInside = 1;
  own.BoookletPrintOnBackCoverOutside = 1;
  own.BoookletPrintOnBackCoverInside = 1;
  EXPECT_TRUE(stage.Open([&](User& user) {
    ChangeAll(stage, user);
    EXPECT_TRUE(user.Click(1));
    EXPECT_FALSE(stage.windows().IsOpenDialog(user.dialog()));
  }));
  EXPECT_TRUE(IsUntouched(expected, stage.context));
}

TEST(BookletOk, LeavesWordsAloneThatAnybodyChangedBeside) {
  BookletStage stage;
  EXPECT_TRUE(stage.Open([&](User& user) {
    stage.own().Thickness = 4;
    stage.shared().dmCopies = 17;
    stage.state().snapshot.privateDevmode.PageOrder = 5;
    EXPECT_TRUE(user.Click(1));
  }));
  EXPECT_EQ(stage.own().Thickness, 4);
  EXPECT_EQ(stage.shared().dmCopies, 17);
  EXPECT_EQ(stage.own().PageOrder, 0);
}

TEST(BookletOk, WithTheCoverOff_TheFacesAreWrittenAllTheSame) {
  BookletStage stage;
  EXPECT_TRUE(stage.Open([](User& user) {
    EXPECT_TRUE(user.Click(1395));
    EXPECT_TRUE(user.Click(1398));
    EXPECT_TRUE(user.Click(1394));
    EXPECT_TRUE(user.Click(1));
  }));
  EXPECT_EQ(stage.own().BookletPrintCover, 0);
  EXPECT_EQ(stage.own().BookletPrintOnCoverOutside, 1);
  EXPECT_EQ(stage.own().BoookletPrintOnBackCoverInside, 1);
}

TEST(BookletOk, AForcedSource_IsWritten) {
  BookletStage stage;
  stage.own().BookletCoverType = 257;
  EXPECT_TRUE(stage.Open([](User& user) { EXPECT_TRUE(user.Click(1)); }));
  EXPECT_EQ(stage.own().BookletCoverSource, 4);
}

TEST(BookletCancel, LeavesTheRecordWhateverWasChosen) {
  BookletStage stage;
  const DriverDevmode before = stage.context.devmode;
  EXPECT_FALSE(stage.Open([&](User& user) {
    ChangeAll(stage, user);
    EXPECT_TRUE(user.Click(2));
    EXPECT_FALSE(stage.windows().IsOpenDialog(user.dialog()));
  }));
  EXPECT_TRUE(IsUntouched(before, stage.context));
}

TEST(BookletCancel, AForcedSource_IsNotWritten) {
  BookletStage stage;
  stage.own().BookletCoverType = 257;
  stage.own().BookletCoverSource = 257;
  EXPECT_FALSE(stage.Open([](User& user) {
    EXPECT_EQ(user.Selected(1393), 1);
    EXPECT_TRUE(user.Click(2));
  }));
  EXPECT_EQ(stage.own().BookletCoverSource, 257);
}

// ---- Other messages -----------------------------------------------------------------------------

TEST(BookletMessages, OtherButtonsAndCodes_DoNothing) {
  BookletStage stage;
  const DriverDevmode before = stage.context.devmode;
  EXPECT_FALSE(stage.Open([&](User& user) {
    const DriverDevmode snapshot = stage.state().snapshot;
    EXPECT_FALSE(user.Click(1064));  // hidden
    stage.windows().Deliver(user.dialog(), kWmCommand, MakeWords(1064, kBnClicked), 0);
    for (const std::uint16_t control :
         std::initializer_list<std::uint16_t>{1, 2, 1479, 1393, 1009, 1394, 1112}) {
      for (const std::uint16_t code :
           std::initializer_list<std::uint16_t>{2, 5, kEnChange, kEnKillFocus}) {
        stage.windows().Deliver(user.dialog(), kWmCommand, MakeWords(control, code), 0);
      }
    }
    stage.windows().Deliver(user.dialog(), kWmCommand, MakeWords(9999, kBnClicked), 0);
    stage.windows().Deliver(user.dialog(), kWmCommand, MakeWords(9999, kCbnSelChange), 0);
    stage.windows().Deliver(user.dialog(), kWmNotify, 0, 0);
    EXPECT_TRUE(stage.windows().IsOpenDialog(user.dialog()));
    EXPECT_EQ(std::memcmp(&snapshot, &stage.state().snapshot, sizeof(snapshot)), 0);
  }));
  EXPECT_TRUE(IsUntouched(before, stage.context));
  EXPECT_TRUE(stage.world.platform.shell.help.empty());
}

TEST(BookletHelp, TheButton_OpensTheDialogsTopic) {
  BookletStage stage;
  EXPECT_FALSE(stage.Open([](User& user) { EXPECT_TRUE(user.Click(1112)); }));
  ASSERT_EQ(stage.world.platform.shell.help.size(), 1U);
  EXPECT_EQ(stage.world.platform.shell.help[0].command, 15U);
  EXPECT_EQ(stage.world.platform.shell.help[0].data, 1908U);
}

TEST(BookletHelp, EachControl_OpensItsTopic) {
  const std::pair<std::int32_t, std::uintptr_t> kTopics[] = {
      {1, 105},     {2, 101},     {1478, 1175}, {1479, 1175}, {1480, 1900}, {1394, 1901},
      {1395, 1902}, {1396, 1903}, {1397, 1904}, {1398, 1905}, {1028, 1906}, {1009, 1906},
      {1393, 1907}, {1403, 1907}, {1112, 1908}, {1064, 0},    {1446, 0},    {9999, 0}};
  for (const auto& [control, topic] : kTopics) {
    BookletStage stage;
    EXPECT_FALSE(stage.Open([&, asked = control](User& user) {
      HelpInfo help = {.cbSize = sizeof(HelpInfo),
                       .iContextType = 1,
                       .iCtrlId = asked,
                       .hItemHandle = nullptr,
                       .dwContextId = 0,
                       .MousePos = {}};
      stage.windows().Deliver(user.dialog(), kWmHelp, 0, reinterpret_cast<std::intptr_t>(&help));
    }));
    const auto& opened = stage.world.platform.shell.help;
    ASSERT_EQ(opened.size(), topic == 0 ? 0U : 1U) << control;
    if (topic != 0) {
      EXPECT_EQ(opened[0].data, topic) << control;
    }
  }
}

// ---- Tooltips -----------------------------------------------------------------------------------

struct TipCase {
  const char* name;
  std::int16_t type;
  std::vector<std::int16_t> papers;
  std::vector<std::uint32_t> texts;
};
void PrintTo(const TipCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const std::vector<std::int16_t> kEnvelopes = {27, 28, 20, 31, 37, 242, 43, 276, 277, 278, 279, 280};
const std::vector<std::int16_t> kOthers = {9, 1, 5, 11, 13, 245, 246, 250, 252, 281, 288, 309, 0, -1};
const TipCase kTipCases[] = {
    {"PlainOnOthers",    1,   kOthers,    {}},
    {"PlainOnEnvelopes", 1,   kEnvelopes, {5050}},
    {"PlainOnTheCard",   1,   {241},      {5050}},
    {"ThickOnOthers",    257, kOthers,    {5033}},
    {"ThickOnEnvelopes", 257, kEnvelopes, {5033, 408, 5050}},
    {"ThickOnTheCard",   257, {241},      {5033}},
    {"ThinOnOthers",     264, kOthers,    {5033}},
    {"ThinOnEnvelopes",  264, kEnvelopes, {5033, 408, 5050}},
    {"NoneOnEnvelopes",  0,   kEnvelopes, {5033, 408, 5050}},
};
// clang-format on

class BookletTip : public testing::TestWithParam<TipCase> {};

INSTANTIATE_TEST_SUITE_P(Reasons, BookletTip, testing::ValuesIn(kTipCases), test::CaseName());

TEST_P(BookletTip, OfTheSource_NamesTheReasons) {
  std::u16string expected;
  for (const std::uint32_t id : GetParam().texts) {
    expected += BookletStage::Text(id);
  }
  for (const std::int16_t paper : GetParam().papers) {
    BookletStage stage;
    stage.shared().dmPaperSize = paper;
    stage.own().BookletCoverType = GetParam().type;
    EXPECT_FALSE(
        stage.Open([&](User& user) { EXPECT_EQ(stage.AskTip(user, 1450), expected) << paper; }));
  }
}

TEST(BookletTips, OfTheMediaAndOfOthers) {
  BookletStage stage;
  stage.state().coverMediaFree = false;
  EXPECT_FALSE(stage.Open([&](User& user) {
    EXPECT_EQ(stage.AskTip(user, 1446), BookletStage::Text(5030));
    EXPECT_EQ(stage.AskTip(user, 1393), u"");
    EXPECT_EQ(user.HoverTip(1446), BookletStage::Text(5030));
    EXPECT_EQ(user.HoverTip(1450), u"");  // hidden
  }));
}

TEST(BookletTips, FollowTheChoicesInTheDialog) {
  BookletStage stage;
  EXPECT_FALSE(stage.Open([&](User& user) {
    EXPECT_EQ(stage.AskTip(user, 1450), u"");
    stage.AddRow(user, 1009, 261);
    EXPECT_TRUE(user.Choose(1009, 1));
    EXPECT_EQ(user.HoverTip(1450), BookletStage::Text(5033));
  }));
}

TEST(BookletTips, AMovementOfTheMouse_GivesEachTipTheNewPlaceOfItsIcon) {
  BookletStage stage;
  EXPECT_FALSE(stage.Open([&](User& user) {
    headless::HeadlessWindows& windows = stage.windows();
    const auto& tooltips = stage.state().tooltips;
    windows.Find(user.Control(1446))->screenPlace = {130, 107, 150, 125};
    windows.Find(user.Control(1450))->screenPlace = {190, 235, 214, 259};
    user.MoveMouse({3, 3});
    std::size_t tip = 0;
    for (const std::int32_t icon : {1446, 1450}) {
      ASSERT_NE(tooltips[tip], nullptr);
      const auto& tools = windows.Find(tooltips[tip++])->tooltip.tools;
      ASSERT_EQ(tools.size(), 1U);
      EXPECT_EQ(tools[0].id, reinterpret_cast<std::uintptr_t>(user.Control(icon)));
      Rect place = {};
      ASSERT_TRUE(windows.GetWindowRect(user.Control(icon), &place));
      windows.MapWindowPoints(nullptr, user.dialog(), &place);
      EXPECT_EQ(tools[0].rect, place) << icon;
    }
    EXPECT_NE(windows.Find(tooltips[0])->tooltip.tools[0].rect,
              windows.Find(tooltips[1])->tooltip.tools[0].rect);
  }));
}

// ---- When the world fails -----------------------------------------------------------------------

TEST(BookletFailures, ADialogThatCannotBeMade_IsACancelledOne) {
  BookletStage stage;
  stage.world.platform.faults.FailOperation("DialogBoxParamW");
  EXPECT_FALSE(stage.Open([](User&) {}));
  stage.world.platform.faults.Clear();
  EXPECT_EQ(stage.openings, 0);
}

TEST(BookletFailures, WithoutMemoryForItsState_NoDialogStaysOpen) {
  BookletStage stage;
  stage.world.platform.faults.FailOperation("HeapAlloc");
  const DriverDevmode before = stage.context.devmode;
  EXPECT_FALSE(stage.Open([](User&) {}));
  stage.world.platform.faults.Clear();
  EXPECT_EQ(stage.windows().liveWindows(), 0U);
  EXPECT_TRUE(IsUntouched(before, stage.context));
}

TEST(BookletFailures, ACallThatCannotBeRemembered_LeavesNoDialogOpen) {
  BookletStage stage;
  stage.world.platform.faults.FailOperation("SetWindowLongPtrW", 1);
  EXPECT_FALSE(stage.Open([&](User& user) { EXPECT_FALSE(user.Click(1)); }));
  EXPECT_EQ(stage.windows().liveWindows(), 0U);
}

TEST(BookletFailures, AnyCallThatFails_LeavesAWholeRecordOrAnUntouchedOne) {
  constexpr std::size_t kMostCalls = 3000;
  std::size_t accepted = 0;
  std::size_t n = 1;
  for (bool fired = true; fired && n < kMostCalls && !HasFailure(); ++n) {
    BookletStage stage;
    stage.own().DuplexIndex = 2;
    stage.shared().dmMediaType = 258;
    const DriverDevmode before = stage.context.devmode;
    stage.context.languageModule =
        stage.world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
    headless::FaultPlan& faults = stage.world.platform.faults;
    faults.StartTrace();
    faults.FailCall(n);
    const bool ok = stage.Open([&](User& user) {
      for (const std::int32_t box : {1394, 1394, 1395, 1112}) {
        static_cast<void>(user.Click(box));
      }
      stage.AddRow(user, 1009, 263);
      static_cast<void>(user.Choose(1009, 1));
      static_cast<void>(user.Choose(1393, 2));
      static_cast<void>(user.Choose(1393, 1));
      static_cast<void>(user.Choose(1479, 1));
      static_cast<void>(user.HoverTip(1450));
      static_cast<void>(user.PressHelp(1394));
      static_cast<void>(user.Click(1));
    });
    fired = faults.fired();
    faults.Clear();
    accepted += ok ? 1U : 0U;
    if (ok) {
      DriverDevmode expected = before;
      PrivateDevmode& own = expected.privateDevmode;
      const PrivateDevmode& left = stage.own();
      EXPECT_TRUE(left.BookletBinding == 0 || left.BookletBinding == 1);
      EXPECT_TRUE(left.BookletPrintCover == 0 || left.BookletPrintCover == 1);
      EXPECT_TRUE(left.BookletCoverSource == 4 || left.BookletCoverSource == 7 ||
                  left.BookletCoverSource == 257);
      // A list that can't be asked for the chosen row's value answers 0.
      EXPECT_TRUE(left.BookletCoverType == 0 || left.BookletCoverType == 1);
      own.BookletCoverType = left.BookletCoverType;
      own.BookletBinding = left.BookletBinding;
      own.BookletPrintCover = left.BookletPrintCover;
      own.BookletPrintOnCoverOutside = left.BookletPrintOnCoverOutside;
      own.BookletCoverSource = left.BookletCoverSource;
      EXPECT_TRUE(IsUntouched(expected, stage.context));
    } else {
      EXPECT_TRUE(IsUntouched(before, stage.context));
    }
    EXPECT_EQ(stage.windows().liveWindows(), 0U);
    if (HasFailure()) {
      ADD_FAILURE() << "with call " << n << " failing: " << faults.trace().at(n - 1);
    }
  }
  EXPECT_LT(n, kMostCalls);
  EXPECT_GT(n, 200U);
  EXPECT_GT(accepted, n / 2);
}

}  // namespace
}  // namespace ostrel
