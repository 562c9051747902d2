#include "pages/info_icon.h"

#include "pages/page_scene.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

using test::Calls;
using test::DialogRecorder;
using test::PageScene;

constexpr std::int32_t kIcon = 1447;
const Calls kLoaded = {"load image 1077 of kind 1, 18 x 18"};
const Calls kShownAndHidden = {"image 1447 of kind 1", "hide 1447"};

WindowHandle Page() {
  return DialogRecorder::Dialog();
}

struct IconScene : PageScene {
  IconScene() { dialog.Add(kIcon).rect = {1030, 540, 1048, 558}; }
};

TEST(MessageIcon, IsLoadedFromTheLanguageAndHidden) {
  IconScene scene;
  ShowMessageIcon(Page(), kIcon);
  EXPECT_EQ(scene.dialog.calls, test::InOrder({kLoaded, kShownAndHidden}));
  EXPECT_EQ(scene.dialog.imageModule, scene.context.languageModule);
  EXPECT_EQ(scene.world.process.MessageIcon, DialogRecorder::Image());
}

TEST(MessageIcon, IsLoadedOnceInAProcess) {
  IconScene scene;
  ShowMessageIcon(Page(), kIcon);
  ShowMessageIcon(Page(), kIcon);
  EXPECT_EQ(scene.dialog.calls, test::InOrder({kLoaded, kShownAndHidden, kShownAndHidden}));
}

TEST(MessageIcon, ThatFailedToLoadIsTriedAgain) {
  IconScene scene;
  scene.world.platform.faults.FailOperation("LoadImageW", 1);
  ShowMessageIcon(Page(), kIcon);
  EXPECT_EQ(scene.dialog.Take(), (Calls{"hide 1447"}));
  ShowMessageIcon(Page(), kIcon);
  EXPECT_EQ(scene.dialog.calls, test::InOrder({kLoaded, kShownAndHidden}));
}

TEST(MessageIcon, OfAMissingControlIsNoError) {
  IconScene scene;
  ShowMessageIcon(Page(), 4711);
  EXPECT_EQ(scene.dialog.calls, kLoaded);
}

TEST(MessageIcon, WithoutAContextIsOnlyHidden) {
  IconScene scene;
  scene.dialog.userData = 0;
  ShowMessageIcon(Page(), kIcon);
  EXPECT_EQ(scene.dialog.calls, (Calls{"hide 1447"}));
}

const Calls kTooltipMade = {
    "create tooltips_class32 of extended style 8, style 2147483651, owner the dialog",
    "add the tool", "tooltip width 300", "tooltip color 14219007"};

// The control's place in the coordinates of the dialog, whose origin is at 1000, 500.
constexpr Rect kPlace = {30, 40, 48, 58};

void ExpectToolOfIcon(const ToolInfo& tool) {
  EXPECT_EQ(tool.cbSize, 64U);
  EXPECT_EQ(tool.uFlags, 17U);
  EXPECT_EQ(tool.hwnd, Page());
  EXPECT_EQ(tool.uId, reinterpret_cast<std::uintptr_t>(DialogRecorder::HandleOf(kIcon)));
  EXPECT_EQ(reinterpret_cast<std::intptr_t>(tool.lpszText), -1);
  EXPECT_EQ(tool.rect, kPlace);
}

TEST(Tooltip, IsMadeForAControl) {
  IconScene scene;
  EXPECT_EQ(CreateTooltip(Page(), kIcon), DialogRecorder::Tooltip());
  EXPECT_EQ(scene.dialog.calls, kTooltipMade);
  ExpectToolOfIcon(scene.dialog.tool);
}

TEST(Tooltip, OfAMissingControlIsntMade) {
  IconScene scene;
  EXPECT_EQ(CreateTooltip(Page(), 4711), nullptr);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

TEST(Tooltip, ThatCantBeMadeIsNull) {
  IconScene scene;
  scene.world.platform.faults.FailOperation("CreateWindowExW");
  EXPECT_EQ(CreateTooltip(Page(), kIcon), nullptr);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

TEST(InfoIcon, HasAnIconAndATooltip) {
  IconScene scene;
  EXPECT_EQ(CreateInfoIcon(Page(), kIcon), DialogRecorder::Tooltip());
  EXPECT_EQ(scene.dialog.calls, test::InOrder({kLoaded, kShownAndHidden, kTooltipMade}));
}

TEST(TooltipRect, FollowsAnEnabledControl) {
  IconScene scene;
  UpdateTooltipRect(Page(), DialogRecorder::Tooltip(), kIcon);
  EXPECT_EQ(scene.dialog.calls, (Calls{"tooltip off", "move the tool", "tooltip on"}));
  ExpectToolOfIcon(scene.dialog.tool);
}

TEST(TooltipRect, StaysWhenTheControlIsDisabledOrMissing) {
  IconScene scene;
  UpdateTooltipRect(Page(), DialogRecorder::Tooltip(), 4711);
  scene.dialog.controls[kIcon].enabled = false;
  UpdateTooltipRect(Page(), DialogRecorder::Tooltip(), kIcon);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

TEST(TooltipRect, StaysWhenTheControlHasNoPlace) {
  IconScene scene;
  scene.world.platform.faults.FailOperation("GetWindowRect");
  UpdateTooltipRect(Page(), DialogRecorder::Tooltip(), kIcon);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

TEST(TooltipRect, WithoutATooltipDoesNothing) {
  IconScene scene;
  UpdateTooltipRect(Page(), nullptr, kIcon);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

TEST(TooltipQuestion, TellsWhichControlIsMeant) {
  IconScene scene;
  scene.dialog.Add(1448);
  constexpr std::array<std::int32_t, 3> kIcons = {4711, 1448, kIcon};
  const auto asked = [&](std::uintptr_t id) {
    const NotifyHeader header = {DialogRecorder::Tooltip(), id, kTtnGetDispInfo};
    return ControlOfTooltip(Page(), header, kIcons);
  };
  const auto handle = [](std::int32_t id) {
    return reinterpret_cast<std::uintptr_t>(DialogRecorder::HandleOf(id));
  };
  EXPECT_EQ(asked(handle(kIcon)), kIcon);
  EXPECT_EQ(asked(handle(1448)), 1448);
  EXPECT_EQ(asked(handle(1449)), 0);
  EXPECT_EQ(asked(0), 0);  // and not the control that isn't there
}

TEST(InfoIcon, SurvivesTheFailureOfEachCall) {
  std::size_t n = 0;
  bool fired = true;
  while (fired) {
    IconScene scene;
    scene.world.platform.faults.FailCall(++n);
    const WindowHandle tooltip = CreateInfoIcon(Page(), kIcon);
    UpdateTooltipRect(Page(), tooltip, kIcon);
    fired = scene.world.platform.faults.fired();
  }
  EXPECT_GT(n, 15U);
}

}  // namespace
}  // namespace ostrel
