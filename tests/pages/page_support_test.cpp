#include "pages/page_support.h"

#include "core/text.h"
#include "pages/page_scene.h"
#include "pages/paper_stage.h"
#include "support/case_name.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace ostrel {
namespace {

using test::Calls;
using test::DialogRecorder;
using test::PageScene;

WindowHandle Page() {
  return DialogRecorder::Dialog();
}

std::u16string FavoriteOf(const PageScene& scene) {
  return std::u16string(FieldText(scene.context.devmode.privateDevmode.FavoriteName));
}

// A scene whose window remembers nothing.
struct PageWithoutContext : PageScene {
  PageWithoutContext() { dialog.userData = 0; }
};

// ---- Context ------------------------------------------------------------------------------------

TEST(PageContext, IsWhatTheWindowRemembers) {
  PageScene scene;
  EXPECT_EQ(PageContext(Page()), &scene.context);
  EXPECT_EQ(PageContext(nullptr), nullptr);
  scene.dialog.userData = 0;
  EXPECT_EQ(PageContext(Page()), nullptr);
}

TEST(PageContext, IsRememberedFromThePagesDescription) {
  PageWithoutContext scene;
  SheetPage description = {};
  description.lParam = reinterpret_cast<std::intptr_t>(&scene.context);
  const auto lParam = reinterpret_cast<std::intptr_t>(&description);
  EXPECT_EQ(RememberContext(Page(), lParam), &scene.context);
  EXPECT_EQ(PageContext(Page()), &scene.context);
}

TEST(PageContext, OfNoDescriptionIsNull) {
  PageScene scene;
  EXPECT_EQ(RememberContext(Page(), 0), nullptr);
  EXPECT_EQ(PageContext(Page()), nullptr);
}

// ---- Captions and controls ----------------------------------------------------------------------

TEST(SetCaptions, GivesEachControlItsText) {
  PageScene scene;
  scene.dialog.Add(1008);
  scene.dialog.Add(1064).text = u"old";
  constexpr CaptionRow kRows[] = {{1008, 1010}, {1064, 1011}};
  SetCaptions(Page(), scene.context.languageModule, kRows);
  EXPECT_EQ(scene.dialog.controls[1008].text, scene.English(1010));
  EXPECT_EQ(scene.dialog.controls[1064].text, scene.English(1011));
}

TEST(SetCaptions, PassesOverMissingControlsAndTexts) {
  PageScene scene;
  scene.dialog.Add(1008).text = u"old";
  scene.dialog.Add(1064).text = u"old";
  constexpr CaptionRow kRows[] = {{1008, 65000}, {4711, 1010}, {1064, 1011}};
  SetCaptions(Page(), scene.context.languageModule, kRows);
  EXPECT_EQ(scene.dialog.controls[1008].text, u"old");
  EXPECT_EQ(scene.dialog.controls[1064].text, scene.English(1011));
}

TEST(SetCaptions, WithoutALanguageChangesNothing) {
  PageScene scene;
  scene.dialog.Add(1008).text = u"old";
  constexpr CaptionRow kRows[] = {{1008, 1010}};
  SetCaptions(Page(), nullptr, kRows);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

TEST(SetCaptions, CutsALongTextAt259Characters) {
  PageScene scene;
  scene.UseTexts({{1010, std::u16string(300, u'a')}});
  scene.dialog.Add(1008);
  constexpr CaptionRow kRows[] = {{1008, 1010}};
  SetCaptions(Page(), scene.context.languageModule, kRows);
  EXPECT_EQ(scene.dialog.controls[1008].text, std::u16string(259, u'a'));
}

TEST(PageControls, AreShownAndEnabledById) {
  PageScene scene;
  scene.dialog.Add(1447);
  ShowControl(Page(), 1447, true);
  ShowControl(Page(), 1447, false);
  EnableControl(Page(), 1447, false);
  EnableControl(Page(), 1447, true);
  ShowControl(Page(), 4711, true);
  EnableControl(Page(), 4711, true);
  EXPECT_EQ(scene.dialog.calls, (Calls{"show 1447", "hide 1447", "disable 1447", "enable 1447"}));
}

// ---- Lists --------------------------------------------------------------------------------------

constexpr ComboRow kJobModes[] = {{201, 0}, {203, 1}, {204, -2}};

struct ListScene : PageScene {
  ListScene() { dialog.Add(1393); }
  DialogRecorder::Control& list() { return dialog.controls[1393]; }
};

TEST(FillCombo, ReplacesTheRowsAndSelectsOne) {
  ListScene scene;
  scene.list().items = {{u"old", 9}, {u"older", 8}};
  FillCombo(Page(), 1393, kJobModes, 1);
  ASSERT_EQ(scene.list().items.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(scene.list().items[i].text, scene.English(kJobModes[i].stringId));
    EXPECT_EQ(scene.list().items[i].data, kJobModes[i].value);
  }
  EXPECT_EQ(scene.list().selected, 1);
}

TEST(FillCombo, ByAPlaceThatIsntThereSelectsNothing) {
  for (const std::int32_t place : {-1, 3}) {
    ListScene scene;
    FillCombo(Page(), 1393, kJobModes, place);
    EXPECT_EQ(scene.list().items.size(), 3U);
    EXPECT_EQ(scene.list().selected, kCbErr);
  }
}

TEST(FillCombo, WithoutRowsEmptiesTheList) {
  ListScene scene;
  scene.list().items = {{u"old", 9}};
  FillCombo(Page(), 1393, {}, 0);
  EXPECT_TRUE(scene.list().items.empty());
}

TEST(FillCombo, TellsMissingTexts) {
  PageWithoutContext scene;
  scene.dialog.Add(1393);
  FillCombo(Page(), 1393, std::span(kJobModes).first(1), 0);
  ASSERT_EQ(scene.dialog.controls[1393].items.size(), 1U);
  EXPECT_EQ(scene.dialog.controls[1393].items[0].text, u"id:201 missing!");
}

TEST(FillCombo, RowThatCantBeAddedLeavesTheOthersTheirValues) {
  ListScene scene;
  // Emptying, then the first row's text.
  scene.world.platform.faults.FailOperation("SendMessageW", 2);
  FillCombo(Page(), 1393, kJobModes, 0);
  ASSERT_EQ(scene.list().items.size(), 2U);
  EXPECT_EQ(scene.list().items[0].data, 1);
  EXPECT_EQ(scene.list().items[1].data, -2);
}

TEST(ComboValue, SelectsTheRowOfAValue) {
  ListScene scene;
  FillCombo(Page(), 1393, kJobModes, 0);
  for (const auto& [value, place] :
       {std::pair<std::int16_t, std::intptr_t>{1, 1}, {-2, 2}, {0, 0}}) {
    SelectComboValue(Page(), 1393, value);
    EXPECT_EQ(scene.list().selected, place);
    std::int16_t read = 4711;
    EXPECT_TRUE(SelectedComboValue(Page(), 1393, &read));
    EXPECT_EQ(read, value);
  }
}

TEST(ComboValue, WithoutARowClearsTheSelection) {
  ListScene scene;
  FillCombo(Page(), 1393, kJobModes, 0);
  SelectComboValue(Page(), 1393, 7);
  EXPECT_EQ(scene.list().selected, kCbErr);
  std::int16_t read = 4711;
  EXPECT_FALSE(SelectedComboValue(Page(), 1393, &read));
  EXPECT_EQ(read, 4711);
}

TEST(ComboValue, OfAnEmptyOrMissingListIsNone) {
  ListScene scene;
  for (const std::int32_t control : {1393, 4711}) {
    SelectComboValue(Page(), control, 0);
    std::int16_t read = 4711;
    EXPECT_FALSE(SelectedComboValue(Page(), control, &read));
    EXPECT_EQ(read, 4711);
  }
  EXPECT_EQ(scene.list().selected, kCbErr);
}

// ---- Texts --------------------------------------------------------------------------------------

TEST(PaperName, HasNoCommaWhenTheLetterPapersHasNone) {
  PageScene scene;
  scene.UseTexts({{108, u"Letter (8.5 x 11\")"}});
  EXPECT_TRUE(PaperNameHasNoComma(Page()));
  scene.UseTexts({{108, u"Letter (8,5 x 11\")"}});
  EXPECT_FALSE(PaperNameHasNoComma(Page()));
}

TEST(PaperName, ThatIsMissingHasNoComma) {
  PageScene scene;
  scene.UseTexts({});
  EXPECT_TRUE(PaperNameHasNoComma(Page()));
  scene.dialog.userData = 0;
  EXPECT_TRUE(PaperNameHasNoComma(Page()));
}

TEST(LoadUntitledName, GivesTheNameAndItsLength) {
  PageScene scene;
  std::array<char16_t, 260> name;
  name.fill(u'#');
  EXPECT_EQ(LoadUntitledName(Page(), name), static_cast<int>(scene.English(5005).size()));
  EXPECT_EQ(std::u16string(name.data()), scene.English(5005));
}

TEST(LoadUntitledName, IsEmptyWhenTheLanguageLacksIt) {
  PageScene scene;
  scene.UseTexts({});
  std::array<char16_t, 260> name;
  name.fill(u'#');
  EXPECT_EQ(LoadUntitledName(Page(), name), 0);
  EXPECT_EQ(name[0], u'\0');
  scene.dialog.userData = 0;
  name.fill(u'#');
  EXPECT_EQ(LoadUntitledName(Page(), name), 0);
  EXPECT_EQ(name[0], u'\0');
}

TEST(LoadUntitledName, IsCutAtTheBuffersEnd) {
  PageScene scene;
  scene.UseTexts({{5005, u"Untitled"}});
  std::array<char16_t, 5> name;
  name.fill(u'#');
  EXPECT_EQ(LoadUntitledName(Page(), std::span(name).first(4)), 3);
  EXPECT_EQ(std::u16string(name.data()), u"Unt");
  EXPECT_EQ(name[4], u'#');
  EXPECT_EQ(LoadUntitledName(Page(), {}), 0);
}

TEST(NameUntitled, TakesTheLanguagesNameAsFarAsTheFieldHasRoom) {
  PageScene scene;
  scene.UseTexts({{5005, std::u16string(258, u'u')}});
  EXPECT_TRUE(NameUntitled(Page()));
  auto& field = scene.own().FavoriteName;
  EXPECT_EQ(std::u16string(field), std::u16string(std::size(field) - 1, u'u'));
}

TEST(NameUntitled, LeavesTheNameWhenTheLanguageHasNoneOrThereIsNoContext) {
  PageScene scene;
  std::u16string(u"Mine\0", 5).copy(scene.own().FavoriteName, 5);
  scene.UseTexts({});
  EXPECT_FALSE(NameUntitled(Page()));
  EXPECT_EQ(std::u16string(scene.own().FavoriteName), u"Mine");
  scene.UseTexts({{5005, u"Untitled"}});
  scene.dialog.userData = 0;
  EXPECT_FALSE(NameUntitled(Page()));
  EXPECT_EQ(std::u16string(scene.own().FavoriteName), u"Mine");
}

struct UntitledCase {
  const char* name;
  UntitledRule rule;
  headless::StringTable texts;
  std::u16string before;
  std::u16string after;
};

class MarkUntitledTest : public testing::TestWithParam<UntitledCase> {};

constexpr auto kDiffers = UntitledRule::kWhenDifferent;
constexpr auto kShort = UntitledRule::kAlwaysShort;
const std::u16string kTwentyFour(24, u'u');

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Names, MarkUntitledTest,
    testing::Values(
        UntitledCase{"OptionsTakeTheName",        kDiffers, {{5005, u"Ohne Namen"}}, u"Default", u"Ohne Namen"},
        UntitledCase{"LayoutTakesTheName",        kShort,   {{5005, u"Ohne Namen"}}, u"Default", u"Ohne Namen"},
        UntitledCase{"OptionsWithoutAText",       kDiffers, {}, u"Default", u"Untitled"},
        UntitledCase{"LayoutWithoutAText",        kShort,   {}, u"Default", u"Untitled"},
        UntitledCase{"OptionsKeepTheName",        kDiffers, {{5005, u"Untitled"}}, u"Untitled", u"Untitled"},
        UntitledCase{"OptionsTakeOneOfOtherCase", kDiffers, {{5005, u"Untitled"}}, u"untitled", u"Untitled"},
        UntitledCase{"OptionsTakeALongerOne",     kDiffers, {{5005, kTwentyFour + u"xyz"}}, u"Default", kTwentyFour + u"xyz"},
        UntitledCase{"LayoutCutsALongerOne",      kShort,   {{5005, kTwentyFour + u"xyz"}}, u"Default", kTwentyFour},
        UntitledCase{"LayoutTakesTheLongest",     kShort,   {{5005, kTwentyFour}}, u"Default", kTwentyFour},
        UntitledCase{"OptionsCutAtTheField",      kDiffers, {{5005, std::u16string(300, u'w')}}, u"Default", std::u16string(255, u'w')},
        UntitledCase{"OptionsReplaceALongOne",    kDiffers, {{5005, u"U"}}, std::u16string(255, u'w'), u"U"}),
    test::CaseName());
// clang-format on

TEST_P(MarkUntitledTest, Name) {
  PageScene scene;
  scene.UseTexts(GetParam().texts);
  CopyText(scene.own().FavoriteName, GetParam().before);
  MarkUntitled(Page(), GetParam().rule);
  EXPECT_EQ(FavoriteOf(scene), GetParam().after);
}

// Behind the terminator of a name that is stored there is nothing of the one before; one that isn't
// stored leaves its field alone.
TEST(MarkUntitled, StoresOnlyADifferentNameOnThePrintOptionsPage) {
  for (const UntitledRule rule : {kDiffers, kShort}) {
    PageScene scene;
    scene.UseTexts({{5005, u"Untitled"}});
    CopyText(scene.own().FavoriteName, u"Untitled");
    scene.own().FavoriteName[200] = u'!';
    MarkUntitled(Page(), rule);
    EXPECT_EQ(scene.own().FavoriteName[200], rule == kDiffers ? u'!' : u'\0');
  }
}

TEST(MarkUntitled, ChangesNothingElse) {
  PageScene scene;
  DriverDevmode expected = scene.context.devmode;
  MarkUntitled(Page(), kDiffers);
  CopyText(expected.privateDevmode.FavoriteName, FavoriteOf(scene));
  EXPECT_EQ(std::memcmp(&scene.context.devmode, &expected, sizeof(expected)), 0);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

TEST(MarkUntitled, WithoutAContextDoesNothing) {
  PageWithoutContext scene;
  const std::u16string before = FavoriteOf(scene);
  MarkUntitled(Page(), kDiffers);
  MarkUntitled(Page(), kShort);
  EXPECT_EQ(FavoriteOf(scene), before);
}

TEST(SetSheetChanged, TellsThePagesParent) {
  PageScene scene;
  SetSheetChanged(Page());
  EXPECT_EQ(scene.dialog.calls, (Calls{"sheet: message 1128 of the dialog"}));
}

// ---- Help ---------------------------------------------------------------------------------------

constexpr HelpPair kPairs[] = {{1009, 3091}, {1240, 1109}, {1064, 2001}};

HelpInfo AskedFor(std::int32_t control) {
  HelpInfo info = {};
  info.cbSize = sizeof(info);
  info.iCtrlId = control;
  return info;
}

bool AskHelp(std::int32_t control) {
  const HelpInfo asked = AskedFor(control);
  return ShowControlHelp(Page(), reinterpret_cast<std::intptr_t>(&asked), kPairs);
}

TEST(PageHelp, OpensThePagesTopic) {
  PageScene scene;
  ShowPageHelp(Page(), 500);
  ASSERT_EQ(scene.world.platform.shell.help.size(), 1U);
  const auto& help = scene.world.platform.shell.help[0];
  EXPECT_EQ(help.window, Page());
  EXPECT_EQ(help.command, 15U);
  EXPECT_EQ(help.data, 500U);
  EXPECT_TRUE(help.file.ends_with(u"enus.chm"));
}

TEST(PageHelp, OpensTheTopicOfAControl) {
  for (const HelpPair& pair : kPairs) {
    PageScene scene;
    EXPECT_TRUE(AskHelp(pair.control));
    ASSERT_EQ(scene.world.platform.shell.help.size(), 1U);
    EXPECT_EQ(scene.world.platform.shell.help[0].data, pair.context);
  }
}

TEST(PageHelp, OfAControlWithoutATopicStaysClosed) {
  PageScene scene;
  for (const std::int32_t control : {0, -1, 1010}) {
    EXPECT_FALSE(AskHelp(control));
  }
  EXPECT_FALSE(ShowControlHelp(Page(), 0, kPairs));
  EXPECT_TRUE(scene.world.platform.shell.help.empty());
}

TEST(PageHelp, WithoutAContextStaysClosed) {
  PageWithoutContext scene;
  ShowPageHelp(Page(), 500);
  EXPECT_TRUE(AskHelp(1009));
  EXPECT_TRUE(scene.world.platform.shell.help.empty());
}

// ---- Failures -----------------------------------------------------------------------------------

TEST(PageSupport, SurvivesTheFailureOfEachCall) {
  std::size_t n = 0;
  bool fired = true;
  while (fired) {
    ListScene scene;
    scene.dialog.Add(1008);
    scene.world.platform.faults.FailCall(++n);
    SheetPage description = {};
    description.lParam = scene.dialog.userData;
    RememberContext(Page(), reinterpret_cast<std::intptr_t>(&description));
    constexpr CaptionRow kRows[] = {{1008, 1010}};
    SetCaptions(Page(), scene.context.languageModule, kRows);
    ShowControl(Page(), 1008, false);
    EnableControl(Page(), 1008, false);
    FillCombo(Page(), 1393, kJobModes, 0);
    SelectComboValue(Page(), 1393, 1);
    std::int16_t value = 0;
    SelectedComboValue(Page(), 1393, &value);
    PaperNameHasNoComma(Page());
    MarkUntitled(Page(), kDiffers);
    MarkUntitled(Page(), kShort);
    NameUntitled(Page());
    SetSheetChanged(Page());
    AskHelp(1009);
    fired = scene.world.platform.faults.fired();
  }
  EXPECT_GT(n, 40U);
}

// ---- Measuring ----------------------------------------------------------------------------------

// What the measuring asked of the control's context, in order; the context is given back.
Calls MeasuringCalls(test::PaperStage& stage, std::int32_t width_px) {
  headless::FaultPlan& faults = stage.world().platform.faults;
  const std::size_t before = faults.trace().size();
  EXPECT_EQ(TextWidth(stage.Item(1404), u"four"), width_px);
  EXPECT_EQ(stage.graphics().liveContexts(), 0U);
  Calls calls;
  for (std::size_t i = before; i < faults.trace().size(); ++i) {
    if (faults.trace()[i] != "SendMessageW") {
      calls.push_back(faults.trace()[i]);
    }
  }
  return calls;
}

TEST(TextWidth, IsMeasuredInTheControlsFontWhichIsPutBack) {
  test::PaperStage stage;
  ASSERT_TRUE(stage.Open());
  stage.world().platform.faults.StartTrace();
  EXPECT_EQ(MeasuringCalls(stage, 24),
            (Calls{"GetDC", "SelectObject", "GetTextExtentPointW", "SelectObject"}));
}

// It is the control's answer that is selected: none, or one that can't be, leaves nothing to put
// back.
TEST(TextWidth, WithoutTheControlsFontIsMeasuredInTheContexts) {
  test::PaperStage stage;
  ASSERT_TRUE(stage.Open());
  std::intptr_t font = 0;
  stage.windows().Find(stage.Item(1404))->answerer = [&](std::uint32_t message, std::uintptr_t,
                                                         std::intptr_t) {
    return message == kWmGetFont ? font : std::intptr_t{0};
  };
  stage.world().platform.faults.StartTrace();
  EXPECT_EQ(MeasuringCalls(stage, 24), (Calls{"GetDC", "GetTextExtentPointW"}));
  font = 0x4711;
  EXPECT_EQ(MeasuringCalls(stage, 24), (Calls{"GetDC", "SelectObject", "GetTextExtentPointW"}));
  stage.windows().Find(stage.Item(1404))->answerer = {};
}

// ---- What all pages answer alike ----------------------------------------------------------------

TEST(AnswerSheetNotify, TakesOverForgetsAndHelps) {
  PageScene scene;
  EXPECT_EQ(AnswerSheetNotify(Page(), scene.context, kPsnApply, 512), 1);
  EXPECT_EQ(scene.context.applied, 1U);
  EXPECT_EQ(AnswerSheetNotify(Page(), scene.context, kPsnReset, 512), 1);
  EXPECT_EQ(scene.context.applied, 0U);
  const auto& help = scene.world.platform.shell.help;
  EXPECT_EQ(AnswerSheetNotify(Page(), scene.context, kPsnHelp, 512), 1);
  ASSERT_EQ(help.size(), 1U);
  EXPECT_EQ(help[0].data, 512U);
  EXPECT_EQ(AnswerSheetNotify(Page(), scene.context, kPsnHelp, kNoHelpTopic), 0);
  EXPECT_EQ(AnswerSheetNotify(Page(), scene.context, kPsnSetActive, 512), 0);
  EXPECT_EQ(help.size(), 1U);
}

TEST(LivePageState, IsThatOfADialogThatStands) {
  PageScene scene;
  EXPECT_EQ(LivePageState<PaperPageState>(PageSlot::kPaper), nullptr);
  EXPECT_EQ(PageStatePlace(PageSlot::kPaper), nullptr);  // none is made
  auto* state = GetPageState<PaperPageState>(PageSlot::kPaper);
  ASSERT_NE(state, nullptr);
  EXPECT_EQ(LivePageState<PaperPageState>(PageSlot::kPaper), nullptr);
  state->dialog = Page();
  EXPECT_EQ(LivePageState<PaperPageState>(PageSlot::kPaper), state);
}

}  // namespace
}  // namespace ostrel
