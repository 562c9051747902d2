// What a user does to a dialog, and what the dialog hears of it.
#include "platform/headless/user.h"

#include "platform/headless/test_dialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kLabel = 10;
constexpr std::int32_t kName = 11;
constexpr std::int32_t kCount = 12;
constexpr std::int32_t kSpin = 13;
constexpr std::int32_t kReadOnly = 15;
constexpr std::int32_t kPush = 20;
constexpr std::int32_t kPlainBox = 21;
constexpr std::int32_t kOwnBox = 22;
constexpr std::int32_t kThree = 23;
constexpr std::int32_t kGroup = 30;
constexpr std::int32_t kOne = 31;
constexpr std::int32_t kTwo = 32;
constexpr std::int32_t kOther = 33;
constexpr std::int32_t kByHand = 34;
constexpr std::int32_t kCombo = 40;
constexpr std::int32_t kDrawnCombo = 41;
constexpr std::int32_t kList = 43;
constexpr std::int32_t kIcon = 50;
constexpr std::int32_t kPicture = 51;
constexpr std::int32_t kDrawn = 52;
constexpr std::int32_t kDrawnButton = 53;
constexpr std::int32_t kHot = 54;
constexpr std::int32_t kOff = 55;
constexpr std::int32_t kGone = 56;
constexpr std::int32_t kRound = 58;
constexpr std::int32_t kNobody = 999;

ModuleHandle LoadTestLibrary(HeadlessPlatform& platform) {
  platform.modules.InstallResources(kTestLibraryPath, TestDialogs());
  return platform.modules.LoadLibraryW(kTestLibraryPath);
}

class UserOfDialog : public testing::Test {
 protected:
  UserOfDialog() { log_.Take(); }
  ~UserOfDialog() override { windows_.Destroy(dialog_); }

  std::intptr_t Send(std::int32_t id, std::uint32_t message, std::uintptr_t wParam = 0,
                     std::intptr_t lParam = 0) {
    return windows_.SendMessageW(user_.Control(id), message, wParam, lParam);
  }
  void Fill(std::int32_t id, const std::vector<const char16_t*>& texts) {
    constexpr std::uint32_t kLbAddString = 0x0180;
    const std::uint32_t message = id == kList ? kLbAddString : std::uint32_t{kCbAddString};
    for (const char16_t* text : texts) {
      Send(id, message, 0, reinterpret_cast<std::intptr_t>(text));
    }
  }
  // A tooltip over a control, as pages make them: found by the control's window, text by callback.
  WindowHandle AddTip(std::int32_t id) {
    const WindowHandle tip =
        windows_.CreateWindowExW(8, u"tooltips_class32", 0x80000003, dialog_, nullptr);
    ToolInfo tool = ToolOf(id);
    windows_.SendMessageW(tip, kTtmAddTool, 0, reinterpret_cast<std::intptr_t>(&tool));
    return tip;
  }
  ToolInfo ToolOf(std::int32_t id) {
    ToolInfo tool = {};
    tool.cbSize = sizeof(tool);
    tool.uFlags = kTtfIdIsWindow | kTtfSubclass;
    tool.hwnd = dialog_;
    tool.uId = reinterpret_cast<std::uintptr_t>(user_.Control(id));
    tool.lpszText = reinterpret_cast<char16_t*>(~std::uintptr_t{0});
    return tool;
  }

  HeadlessPlatform platform_;
  HeadlessWindows& windows_ = platform_.windows;
  MessageLog log_;
  ModuleHandle module_ = LoadTestLibrary(platform_);
  WindowHandle dialog_ = windows_.CreateDialogWindow(module_, kControlsDialog, nullptr,
                                                     &MessageLog::Procedure, 0, false);
  User user_{platform_, dialog_};
};

// ---- Clicking -----------------------------------------------------------------------------------

TEST_F(UserOfDialog, ClicksAPlainBoxWhichDoesNotToggleByItself) {
  EXPECT_TRUE(user_.Click(kPlainBox));
  EXPECT_FALSE(user_.Checked(kPlainBox));
  EXPECT_THAT(log_.Take(), ElementsAre("command 21 0"));
}

TEST_F(UserOfDialog, ClicksBoxesThatToggleBeforeTheyTell) {
  bool checked = false;
  log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t, std::intptr_t) {
    if (message == kWmCommand) {
      checked = user_.Checked(kOwnBox);
    }
    return 0;
  };
  EXPECT_TRUE(user_.Click(kOwnBox));
  EXPECT_TRUE(checked);
  EXPECT_TRUE(user_.Click(kOwnBox));
  EXPECT_FALSE(user_.Checked(kOwnBox));
  for (const std::uint32_t state : {1U, 2U, 0U}) {
    EXPECT_TRUE(user_.Click(kThree));
    EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kThree), state);
  }
}

TEST_F(UserOfDialog, ClicksARadioButtonAloneInItsGroup) {
  EXPECT_TRUE(user_.Click(kOne));
  EXPECT_TRUE(user_.Click(kOther));
  EXPECT_TRUE(user_.Click(kTwo));
  EXPECT_FALSE(user_.Checked(kOne));
  EXPECT_TRUE(user_.Checked(kTwo));
  EXPECT_TRUE(user_.Checked(kOther));  // of the next group
  EXPECT_TRUE(user_.Click(kByHand));
  EXPECT_FALSE(user_.Checked(kByHand));
  EXPECT_TRUE(user_.Checked(kOther));
  EXPECT_THAT(log_.Take(),
              ElementsAre("command 31 0", "command 33 0", "command 32 0", "command 34 0"));
}

TEST_F(UserOfDialog, CannotClickWhatIsLockedHiddenOrNoButton) {
  for (const std::int32_t id : {kOff, kGone, kGroup, kLabel, kName, kNobody}) {
    EXPECT_FALSE(user_.Click(id)) << id;
  }
  EXPECT_TRUE(user_.Click(kHot));
  EXPECT_THAT(log_.Take(), ElementsAre("command 54 0"));
  windows_.ShowWindow(dialog_, kSwHide);
  EXPECT_FALSE(user_.Click(kPush));
  windows_.ShowWindow(dialog_, kSwShow);
  windows_.EnableWindow(dialog_, false);
  EXPECT_FALSE(user_.Click(kPush));
  windows_.EnableWindow(dialog_, true);
  EXPECT_TRUE(user_.Click(kPush));
}

TEST_F(UserOfDialog, LeavesAnEditBeforeTheClickCounts) {
  EXPECT_TRUE(user_.MoveFocus(kName));
  log_.Take();
  EXPECT_TRUE(user_.Click(kPush));
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 200", "command 20 0"));
  EXPECT_EQ(user_.Focus(), kPush);
}

TEST_F(UserOfDialog, ClickIsLostWhenLeavingTheEditLocksTheButton) {
  EXPECT_TRUE(user_.MoveFocus(kName));
  log_.handle = [this](WindowHandle, std::uint32_t message, std::uintptr_t wParam, std::intptr_t) {
    if (message == kWmCommand && HighWord(wParam) == kEnKillFocus) {
      windows_.EnableWindow(user_.Control(kPush), false);
    }
    return 0;
  };
  log_.Take();
  EXPECT_FALSE(user_.Click(kPush));
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 200"));
}

// ---- Typing -------------------------------------------------------------------------------------

TEST_F(UserOfDialog, TypesEachCharacterAsAChange) {
  windows_.SetWindowTextW(user_.Control(kName), u"before");
  log_.Take();
  std::vector<std::u16string> seen;
  log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t wParam, std::intptr_t) {
    if (message == kWmCommand && HighWord(wParam) == kEnChange) {
      seen.push_back(user_.Text(kName));
    }
    return 0;
  };
  EXPECT_TRUE(user_.Type(kName, u"abc"));
  EXPECT_THAT(seen, ElementsAre(u"a", u"ab", u"abc"));
  EXPECT_TRUE(user_.AppendTyping(kName, u"d"));
  EXPECT_EQ(user_.Text(kName), u"abcd");
  EXPECT_TRUE(user_.Type(kName, u""));
  EXPECT_EQ(seen.back(), u"");
  seen.clear();
  EXPECT_TRUE(user_.Type(kName, u""));  // there is nothing to delete
  EXPECT_THAT(seen, IsEmpty());
  EXPECT_EQ(user_.Focus(), kName);
}

TEST_F(UserOfDialog, TypesDigitsOnlyWhereOnlyDigitsGo) {
  EXPECT_TRUE(user_.Type(kCount, u"1-2a3"));
  EXPECT_EQ(user_.Text(kCount), u"123");
  EXPECT_TRUE(user_.Paste(kCount, u"-x"));  // pasting isn't held to digits
  EXPECT_EQ(user_.Text(kCount), u"-x");
}

TEST_F(UserOfDialog, TypesNoMoreThanTheLimit) {
  Send(kName, kEmLimitText, 3);
  EXPECT_TRUE(user_.Type(kName, u"abcd"));
  EXPECT_EQ(user_.Text(kName), u"abc");
  EXPECT_EQ(log_.Take().back(), "command 11 501");
  EXPECT_TRUE(user_.Paste(kName, u"12345"));
  EXPECT_EQ(user_.Text(kName), u"123");
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 501", "command 11 400", "command 11 300"));
  windows_.SetWindowTextW(user_.Control(kName), u"code may go beyond");
  EXPECT_EQ(user_.Text(kName), u"code may go beyond");
}

TEST_F(UserOfDialog, CannotTypeIntoWhatIsLockedOrNoEdit) {
  windows_.EnableWindow(user_.Control(kName), false);
  for (const std::int32_t id : {kName, kReadOnly, kPush, kLabel, kNobody}) {
    EXPECT_FALSE(user_.Type(id, u"a")) << id;
    EXPECT_FALSE(user_.AppendTyping(id, u"a")) << id;
    EXPECT_FALSE(user_.Paste(id, u"a")) << id;
  }
  EXPECT_EQ(user_.Text(kName), u"");
  EXPECT_THAT(log_.Take(), IsEmpty());
}

TEST_F(UserOfDialog, StopsTypingWhenTheEditIsLockedInBetween) {
  log_.handle = [this](WindowHandle, std::uint32_t message, std::uintptr_t wParam, std::intptr_t) {
    if (message == kWmCommand && HighWord(wParam) == kEnChange) {
      windows_.EnableWindow(user_.Control(kName), false);
    }
    return 0;
  };
  EXPECT_FALSE(user_.Type(kName, u"ab"));
  EXPECT_EQ(user_.Text(kName), u"a");
}

TEST_F(UserOfDialog, SelectsAllWhenGoingToAnEdit) {
  windows_.SetWindowTextW(user_.Control(kName), u"abc");
  EXPECT_TRUE(user_.MoveFocus(kName));
  EXPECT_EQ(user_.Selection(kName), (std::pair<std::size_t, std::size_t>{0, 3}));
  EXPECT_FALSE(user_.MoveFocus(kOff));
  EXPECT_FALSE(user_.MoveFocus(kLabel));
  EXPECT_FALSE(user_.MoveFocus(kNobody));
  EXPECT_EQ(user_.Focus(), kName);
}

// ---- Choosing and spinning ----------------------------------------------------------------------

TEST_F(UserOfDialog, ChoosesARow) {
  Fill(kCombo, {u"a", u"b"});
  Send(kCombo, kCbSetItemData, 1, 9);
  EXPECT_TRUE(user_.Choose(kCombo, 1));
  EXPECT_EQ(user_.Selected(kCombo), 1);
  EXPECT_EQ(user_.Text(kCombo), u"b");
  EXPECT_THAT(user_.ItemTexts(kCombo), ElementsAre(u"a", u"b"));
  EXPECT_THAT(user_.ItemData(kCombo), ElementsAre(0U, 9U));
  EXPECT_THAT(log_.Take(), ElementsAre("command 40 3", "command 40 7", "command 40 9",
                                       "command 40 8", "command 40 1"));
  EXPECT_TRUE(user_.Choose(kCombo, 1));  // again
  EXPECT_EQ(log_.Take().back(), "command 40 1");
  Fill(kList, {u"a"});
  EXPECT_TRUE(user_.Choose(kList, 0));
  EXPECT_EQ(log_.Take().back(), "command 43 1");
}

TEST_F(UserOfDialog, CannotChooseWhatIsNotThere) {
  Fill(kCombo, {u"a"});
  EXPECT_FALSE(user_.Choose(kCombo, 1));
  EXPECT_FALSE(user_.Choose(kCombo, -1));
  EXPECT_FALSE(user_.Choose(kPush, 0));
  EXPECT_FALSE(user_.Choose(kNobody, 0));
  windows_.EnableWindow(user_.Control(kCombo), false);
  EXPECT_FALSE(user_.Choose(kCombo, 0));
  EXPECT_EQ(user_.Selected(kCombo), -1);
}

TEST_F(UserOfDialog, SpinsUpwardsToTheMaximumOnceThereIsARange) {
  Send(kSpin, kUdmSetRange, 0, 0x0001'0003);
  Send(kSpin, kUdmSetPos, 0, 1);
  log_.Take();
  EXPECT_TRUE(user_.SpinUp(kSpin));
  EXPECT_EQ(user_.Text(kCount), u"2");
  EXPECT_THAT(log_.Take(),
              ElementsAre("command 12 100", "notify -722 from 13 at 1 by 1", "command 12 400",
                          "command 12 300", "message 115 20004", "message 115 20008"));
  EXPECT_TRUE(user_.SpinDown(kSpin));
  EXPECT_TRUE(user_.SpinDown(kSpin));
  EXPECT_EQ(user_.Position(kSpin), 1);  // and no further
  EXPECT_EQ(user_.Focus(), kCount);
}

TEST_F(UserOfDialog, SpinsDownByTheUpperArrowWithoutARange) {
  EXPECT_TRUE(user_.SpinUp(kSpin));
  EXPECT_EQ(log_.Take().at(1), "notify -722 from 13 at 0 by -1");
  EXPECT_EQ(user_.Position(kSpin), 0);
  EXPECT_TRUE(user_.SpinDown(kSpin));
  EXPECT_EQ(user_.Position(kSpin), 1);
}

TEST_F(UserOfDialog, SpinStandsStillWhenTheDialogSaysSo) {
  Send(kSpin, kUdmSetRange, 0, 0x0000'0009);
  log_.handle = [this](WindowHandle window, std::uint32_t message, std::uintptr_t, std::intptr_t) {
    windows_.SetWindowLongPtrW(window, kDwlpMessageResult, message == kWmNotify ? 1 : 0);
    return std::intptr_t{1};
  };
  EXPECT_TRUE(user_.SpinUp(kSpin));
  EXPECT_EQ(user_.Position(kSpin), 0);
  EXPECT_EQ(user_.Text(kCount), u"");
}

TEST_F(UserOfDialog, SpinGoesOnFromWhatWasTyped) {
  Send(kSpin, kUdmSetRange, 0, 0x0001'03E7);
  EXPECT_TRUE(user_.Type(kCount, u"41"));
  EXPECT_TRUE(user_.SpinUp(kSpin));
  EXPECT_EQ(user_.Text(kCount), u"42");
}

TEST_F(UserOfDialog, SpinGoesRoundWhereItMay) {
  Send(kRound, kUdmSetRange, 0, 0x0000'0001);
  EXPECT_TRUE(user_.SpinUp(kRound));
  EXPECT_TRUE(user_.SpinUp(kRound));
  EXPECT_EQ(user_.Position(kRound), 0);
  EXPECT_EQ(log_.Take().back(), "message 114 8");
  windows_.EnableWindow(user_.Control(kRound), false);
  EXPECT_FALSE(user_.SpinUp(kRound));
  EXPECT_FALSE(user_.SpinDown(kPush));
}

// ---- Looking, hovering, asking for help ---------------------------------------------------------

TEST_F(UserOfDialog, ReadsTheTipThatTheDialogGives) {
  const WindowHandle tip = AddTip(kIcon);
  std::u16string answer = u"why it is locked";
  log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t wParam,
                    std::intptr_t lParam) {
    auto* question = reinterpret_cast<NotifyTooltipText*>(lParam);
    if (message == kWmNotify && question->hdr.code == kTtnGetDispInfo) {
      EXPECT_EQ(question->hdr.hwndFrom, tip);
      EXPECT_EQ(question->hdr.idFrom, reinterpret_cast<std::uintptr_t>(user_.Control(kIcon)));
      EXPECT_EQ(wParam, question->hdr.idFrom);
      EXPECT_EQ(question->uFlags, kTtfIdIsWindow | kTtfSubclass);
      question->lpszText = answer.data();
    }
    return 0;
  };
  EXPECT_EQ(user_.HoverTip(kIcon), answer);
  EXPECT_THAT(log_.Take(), ElementsAre("mouse", "notify -530"));
  windows_.SendMessageW(tip, kTtmActivate, 0, 0);
  EXPECT_EQ(user_.HoverTip(kIcon), u"");
  windows_.SendMessageW(tip, kTtmActivate, 1, 0);
  windows_.ShowWindow(user_.Control(kIcon), kSwHide);
  EXPECT_EQ(user_.HoverTip(kIcon), u"");
  EXPECT_EQ(user_.HoverTip(kPicture), u"");
  EXPECT_EQ(user_.HoverTip(kNobody), u"");
}

TEST_F(UserOfDialog, ReadsATipFromTheBufferOrFromAString) {
  AddTip(kIcon);
  bool byString = false;
  log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t, std::intptr_t lParam) {
    auto* question = reinterpret_cast<NotifyTooltipText*>(lParam);
    if (message == kWmNotify && byString) {
      question->hinst = module_;
      question->lpszText = reinterpret_cast<char16_t*>(std::uintptr_t{6});
    } else if (message == kWmNotify) {
      question->szText[0] = u'b';
    }
    return 0;
  };
  EXPECT_EQ(user_.HoverTip(kIcon), u"b");
  byString = true;
  EXPECT_EQ(user_.HoverTip(kIcon), u"Tip of a string");
}

TEST_F(UserOfDialog, FindsATipByItsRectangleToo) {
  const WindowHandle tip =
      windows_.CreateWindowExW(8, u"tooltips_class32", 0x80000003, dialog_, nullptr);
  char16_t text[] = u"own text";
  ToolInfo tool = {};
  tool.cbSize = sizeof(tool);
  tool.hwnd = dialog_;
  tool.uId = 1;
  tool.lpszText = text;
  windows_.GetWindowRect(user_.Control(kOff), &tool.rect);
  windows_.MapWindowPoints(nullptr, dialog_, &tool.rect);
  windows_.SendMessageW(tip, kTtmAddTool, 0, reinterpret_cast<std::intptr_t>(&tool));
  EXPECT_EQ(user_.HoverTip(kOff), u"own text");  // the mouse is the dialog's over a locked control
  EXPECT_EQ(user_.HoverTip(kPush), u"");
}

TEST_F(UserOfDialog, AsksForHelpWithTheControlsNumber) {
  std::int32_t asked = 0;
  void* window = nullptr;
  log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t, std::intptr_t lParam) {
    if (message == kWmHelp) {
      const auto& help = *reinterpret_cast<const HelpInfo*>(lParam);
      asked = help.iCtrlId;
      window = help.hItemHandle;
    }
    return 0;
  };
  EXPECT_TRUE(user_.PressHelp(kName));
  EXPECT_EQ(asked, kName);
  EXPECT_EQ(window, user_.Control(kName));
  EXPECT_FALSE(user_.PressHelp(kNobody));
  EXPECT_FALSE(user_.PressHelp(kOff));
}

TEST_F(UserOfDialog, SeesWhatControlsShow) {
  EXPECT_EQ(user_.Image(kIcon), 77U);
  EXPECT_EQ(user_.Image(kPicture), 78U);
  EXPECT_EQ(user_.Image(kLabel), 0U);
  const GdiObject bitmap = platform_.graphics.LoadBitmapW(module_, 78);
  Send(kPicture, kStmSetImage, kImageBitmap, reinterpret_cast<std::intptr_t>(bitmap));
  EXPECT_EQ(user_.Image(kPicture), 78U);
  Send(kPicture, kStmSetImage, kImageBitmap, 0);
  EXPECT_EQ(user_.Image(kPicture), 0U);
  windows_.InvalidateRect(user_.Control(kPicture));
  EXPECT_EQ(user_.Invalidations(kPicture), 1U);
  EXPECT_FALSE(user_.Enabled(kOff));
  EXPECT_TRUE(user_.Enabled(kPush));
  EXPECT_FALSE(user_.Shown(kGone));
  EXPECT_TRUE(user_.Shown(kPush));
  EXPECT_TRUE(user_.Has(kPush));
  EXPECT_FALSE(user_.Has(kNobody));
  EXPECT_FALSE(user_.Shown(kNobody) || user_.Enabled(kNobody) || user_.Checked(kNobody));
  EXPECT_EQ(user_.Selected(kNobody), -1);
  EXPECT_EQ(user_.Text(kNobody), u"");
}

TEST_F(UserOfDialog, SeesWhatTheDialogDraws) {
  DrawItem order = {};
  log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t wParam,
                    std::intptr_t lParam) {
    if (message == kWmDrawItem) {
      order = *reinterpret_cast<const DrawItem*>(lParam);
      EXPECT_EQ(wParam, order.CtlID);
      HeadlessGraphics& graphics = platform_.graphics;
      const DeviceContext memory = graphics.CreateCompatibleDC(order.hDC);
      const GdiObject bitmap = graphics.LoadBitmapW(module_, 78);
      const GdiObject before = graphics.SelectObject(memory, bitmap);
      EXPECT_TRUE(graphics.TransparentBlt(order.hDC, {1, 2, 8, 7}, memory, {0, 0}, 0xFF00FF));
      graphics.SelectObject(memory, before);
      graphics.DeleteDC(memory);
      graphics.DeleteObject(bitmap);
    }
    return 0;
  };
  const auto drawn = user_.Draw(kDrawn);
  ASSERT_TRUE(drawn);
  ASSERT_EQ(drawn->size(), 1U);
  EXPECT_EQ(drawn->front().window, user_.Control(kDrawn));
  EXPECT_EQ(drawn->front().bitmap, 78U);
  EXPECT_EQ(drawn->front().place, (Rect{1, 2, 8, 7}));
  EXPECT_EQ(drawn->front().transparentColor, 0xFF00FFU);
  EXPECT_EQ(order.CtlType, 5U);
  EXPECT_EQ(order.rcItem, (Rect{0, 0, 30, 33}));  // 20 by 20 units
  EXPECT_EQ(order.itemState, 0U);
  windows_.EnableWindow(user_.Control(kDrawnButton), false);
  ASSERT_TRUE(user_.Draw(kDrawnButton));
  EXPECT_EQ(order.CtlType, 4U);
  EXPECT_EQ(order.itemState, 4U);
  Fill(kDrawnCombo, {u"a"});
  Send(kDrawnCombo, kCbSetItemData, 0, 6);
  Send(kDrawnCombo, kCbSetCurSel, 0);
  ASSERT_TRUE(user_.Draw(kDrawnCombo));
  EXPECT_EQ(order.itemData, 6U);
  EXPECT_FALSE(user_.Draw(kPush));
  EXPECT_FALSE(user_.Draw(kNobody));
  EXPECT_EQ(platform_.graphics.liveContexts(), 0U);
  EXPECT_EQ(platform_.graphics.liveBitmaps(), 0U);
}

TEST_F(UserOfDialog, MeasuresTheRowsThatTheDialogDraws) {
  log_.handle = [](WindowHandle, std::uint32_t message, std::uintptr_t, std::intptr_t lParam) {
    if (message == kWmMeasureItem) {
      reinterpret_cast<MeasureItem*>(lParam)->itemHeight = 21;
    }
    return std::intptr_t{1};
  };
  EXPECT_EQ(user_.Measure(kDrawnCombo), 21U);
  EXPECT_EQ(user_.Measure(kCombo), 0U);
}

}  // namespace
}  // namespace ostrel::headless
