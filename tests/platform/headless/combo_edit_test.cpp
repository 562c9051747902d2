// Combo boxes with an edit: what a user and what code do to the text and to the rows, and what is
// told of it.
#include "platform/headless/test_dialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kCombo = 40;
constexpr std::int32_t kSimple = 41;
constexpr std::int32_t kNoEdit = 42;
constexpr std::int32_t kEdit = 11;

constexpr std::uint32_t kCbGetEditSel = 0x0140;
constexpr std::uint32_t kCbSelectString = 0x014D;

class ComboEdit : public testing::Test {
 protected:
  ComboEdit() {
    platform_.modules.InstallResources(kTestLibraryPath, TestDialogs());
    module_ = platform_.modules.LoadLibraryW(kTestLibraryPath);
    dialog_ = windows_.CreateDialogWindow(module_, kCombosDialog, nullptr, &MessageLog::Procedure,
                                          0, false);
    for (const std::int32_t id : {kCombo, kSimple, kNoEdit}) {
      for (const char16_t* text : {u"Banana", u"Apple", u"Cherry"}) {
        SendText(id, kCbAddString, text);
      }
    }
    log_.Take();
  }
  ~ComboEdit() override { windows_.Destroy(dialog_); }

  std::intptr_t Send(std::int32_t id, std::uint32_t message, std::uintptr_t wParam = 0,
                     std::intptr_t lParam = 0) {
    return windows_.SendMessageW(windows_.ControlOf(dialog_, id), message, wParam, lParam);
  }
  std::intptr_t SendText(std::int32_t id, std::uint32_t message, const char16_t* text) {
    return Send(id, message, ~std::uintptr_t{0}, reinterpret_cast<std::intptr_t>(text));
  }
  bool SetText(std::int32_t id, const char16_t* text) {
    return windows_.SetWindowTextW(windows_.ControlOf(dialog_, id), text);
  }
  User user() { return {platform_, dialog_}; }

  HeadlessPlatform platform_;
  HeadlessWindows& windows_ = platform_.windows;
  MessageLog log_;
  ModuleHandle module_ = nullptr;
  WindowHandle dialog_ = nullptr;
};

using Selection = std::pair<std::size_t, std::size_t>;

TEST_F(ComboEdit, RowSelectedByCodeIsShownInSilence) {
  for (const std::int32_t id : {kCombo, kSimple}) {
    EXPECT_EQ(Send(id, kCbSetCurSel, 1), 1);
    EXPECT_EQ(user().Text(id), u"Apple");
    EXPECT_EQ(SendText(id, kCbSelectString, u"ch"), 2);
    EXPECT_EQ(user().Text(id), u"Cherry");
    EXPECT_EQ(Send(id, kCbSetCurSel, ~std::uintptr_t{0}), kCbErr);
    EXPECT_EQ(user().Text(id), u"");
  }
  EXPECT_THAT(log_.Take(), IsEmpty());
}

TEST_F(ComboEdit, TextSetByCodeIsKeptInSilenceAndSelectsNoRow) {
  Send(kCombo, kCbSetCurSel, 1);
  EXPECT_TRUE(SetText(kCombo, u"Cherry"));
  EXPECT_EQ(user().Text(kCombo), u"Cherry");
  EXPECT_EQ(Send(kCombo, kCbGetCurSel), 1);  // as it was
  EXPECT_TRUE(SetText(kCombo, nullptr));
  EXPECT_EQ(user().Text(kCombo), u"");
  EXPECT_FALSE(SetText(kNoEdit, u"Banana"));
  EXPECT_THAT(log_.Take(), IsEmpty());
}

TEST_F(ComboEdit, TypingIsToldByEachCharacterAndLeavesNoRowSelected) {
  for (const std::int32_t id : {kCombo, kSimple}) {
    Send(id, kCbSetCurSel, 1);
    windows_.MoveFocus(windows_.ControlOf(dialog_, id));
    log_.Take();
    EXPECT_TRUE(user().Type(id, u"Ch"));
    EXPECT_EQ(user().Text(id), u"Ch");
    EXPECT_EQ(user().Selected(id), -1);
    const std::string name = "command " + std::to_string(id);
    EXPECT_THAT(log_.Take(), ElementsAre(name + " 6", name + " 5", name + " 6", name + " 5"));
    EXPECT_TRUE(user().AppendTyping(id, u"erry"));
    EXPECT_EQ(user().Text(id), u"Cherry");
    EXPECT_EQ(user().Selected(id), -1);  // though there is such a row
  }
}

TEST_F(ComboEdit, PastingIsOneChangeAndTypingNothingDeletes) {
  EXPECT_TRUE(user().Paste(kCombo, u"Free words"));
  EXPECT_EQ(user().Text(kCombo), u"Free words");
  EXPECT_THAT(log_.Take(), ElementsAre("command 40 3", "command 40 6", "command 40 5"));
  EXPECT_TRUE(user().Type(kCombo, u""));
  EXPECT_EQ(user().Text(kCombo), u"");
  EXPECT_THAT(log_.Take(), ElementsAre("command 40 6", "command 40 5"));
}

TEST_F(ComboEdit, TextMayBeChangedByCodeWhileTypingIsTold) {
  log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t wParam, std::intptr_t) {
    if (message == kWmCommand && HighWord(wParam) == kCbnEditChange) {
      const std::u16string shown = user().Text(kCombo);
      if (shown.ends_with(u'?')) {
        SetText(kCombo, shown.substr(0, shown.size() - 1).c_str());
        Send(kCombo, kCbSetEditSel, 0, static_cast<std::intptr_t>(MakeWords(0x7FFF, 0x7FFF)));
      }
    }
    return 0;
  };
  EXPECT_TRUE(user().Type(kCombo, u"a?b"));
  EXPECT_EQ(user().Text(kCombo), u"ab");
}

TEST_F(ComboEdit, LimitHoldsForTheUserAlone) {
  EXPECT_EQ(Send(kCombo, kCbLimitText, 4), 1);
  EXPECT_EQ(Send(kNoEdit, kCbLimitText, 4), 1);
  EXPECT_TRUE(user().Type(kCombo, u"12345"));
  EXPECT_EQ(user().Text(kCombo), u"1234");
  SetText(kCombo, u"more than four");
  EXPECT_EQ(user().Text(kCombo), u"more than four");
  EXPECT_TRUE(user().Paste(kCombo, u"abcdef"));
  EXPECT_EQ(user().Text(kCombo), u"abcd");
  Send(kCombo, kCbLimitText, 0);
  EXPECT_TRUE(user().Paste(kCombo, u"abcdef"));
  EXPECT_EQ(user().Text(kCombo), u"abcdef");
}

// The row is shown when all has been told: who asks for the text meanwhile gets the old one.
TEST_F(ComboEdit, ChosenRowIsShownAfterItWasTold) {
  struct Case {
    std::int32_t id;
    std::vector<std::string> told;
  };
  const std::vector<Case> cases = {
      {kCombo, {"command 40 3", "command 40 7", "command 40 9", "command 40 8", "command 40 1"}},
      {kSimple, {"command 41 3", "command 41 9", "command 41 1"}},
  };
  for (const Case& row : cases) {
    windows_.MoveFocus(nullptr);
    SetText(row.id, u"old");
    log_.Take();
    std::u16string meanwhile;
    std::int32_t selected = -1;
    log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t wParam, std::intptr_t) {
      if (message == kWmCommand && HighWord(wParam) == kCbnSelChange) {
        meanwhile = user().Text(row.id);
        selected = user().Selected(row.id);
      }
      return 0;
    };
    EXPECT_TRUE(user().Choose(row.id, 2));
    EXPECT_EQ(log_.Take(), row.told);
    EXPECT_EQ(meanwhile, u"old");
    EXPECT_EQ(selected, 2);
    EXPECT_EQ(user().Text(row.id), u"Cherry");
    EXPECT_EQ(user().Selection(row.id), (Selection{0, 6}));
  }
}

TEST_F(ComboEdit, RowChosenFromAListThatIsFilledAnewMeanwhileIsTheNewOne) {
  log_.handle = [&](WindowHandle, std::uint32_t message, std::uintptr_t wParam, std::intptr_t) {
    if (message == kWmCommand && HighWord(wParam) == kCbnSelChange) {
      Send(kCombo, kCbResetContent);
      SendText(kCombo, kCbAddString, u"Damson");
      Send(kCombo, kCbSetCurSel, 0);
    }
    return 0;
  };
  EXPECT_TRUE(user().Choose(kCombo, 2));
  EXPECT_EQ(user().Text(kCombo), u"Damson");
}

TEST_F(ComboEdit, DeletedRowStaysInTheEditAndEmptyingClearsIt) {
  Send(kCombo, kCbSetCurSel, 1);
  EXPECT_EQ(Send(kCombo, kCbDeleteString, 0), 2);
  EXPECT_EQ(Send(kCombo, kCbGetCurSel), 0);
  EXPECT_EQ(Send(kCombo, kCbDeleteString, 0), 1);
  EXPECT_EQ(Send(kCombo, kCbGetCurSel), -1);
  EXPECT_EQ(user().Text(kCombo), u"Apple");
  EXPECT_EQ(Send(kCombo, kCbDeleteString, 1), kCbErr);
  Send(kCombo, kCbResetContent);
  EXPECT_EQ(user().Text(kCombo), u"");
  EXPECT_EQ(Send(kCombo, kCbGetCount), 0);
  EXPECT_THAT(log_.Take(), IsEmpty());
}

TEST_F(ComboEdit, RowsAreFoundWholeWithoutRegardToCase) {
  EXPECT_EQ(SendText(kCombo, kCbFindStringExact, u"aPPLE"), 1);
  EXPECT_EQ(SendText(kCombo, kCbFindStringExact, u"Appl"), kCbErr);
  EXPECT_EQ(SendText(kCombo, kCbFindStringExact, u""), kCbErr);
  EXPECT_EQ(Send(kCombo, kCbGetLbTextLen, 1), 5);
  EXPECT_EQ(Send(kCombo, kCbGetLbTextLen, 3), kCbErr);
  char16_t text[8] = {};
  EXPECT_EQ(Send(kCombo, kCbGetLbText, 1, reinterpret_cast<std::intptr_t>(text)), 5);
  EXPECT_EQ(std::u16string(text), u"Apple");
}

TEST_F(ComboEdit, SelectionOfTheEditIsSetInWords) {
  struct Case {
    std::int16_t from;
    std::int16_t to;
    Selection selection;
  };
  SetText(kCombo, u"Cherry");
  for (const Case& row : {Case{1, 3, {1, 3}}, Case{0, -1, {0, 6}}, Case{-1, 0, {6, 6}},
                          Case{5, 2, {2, 5}}, Case{5, 50, {5, 6}}}) {
    const auto words =
        MakeWords(static_cast<std::uint16_t>(row.from), static_cast<std::uint16_t>(row.to));
    EXPECT_EQ(Send(kCombo, kCbSetEditSel, 0, static_cast<std::intptr_t>(words)), 1);
    EXPECT_EQ(user().Selection(kCombo), row.selection) << row.from << " to " << row.to;
    EXPECT_EQ(Send(kCombo, kCbGetEditSel), static_cast<std::intptr_t>(MakeWords(
                                               static_cast<std::uint16_t>(row.selection.first),
                                               static_cast<std::uint16_t>(row.selection.second))));
  }
  EXPECT_EQ(Send(kNoEdit, kCbSetEditSel, 0, 0), kCbErr);
  EXPECT_EQ(Send(kNoEdit, kCbGetEditSel), kCbErr);
}

TEST_F(ComboEdit, FocusSelectsTheTextAndItsLossCancels) {
  SetText(kCombo, u"Free");
  windows_.SetFocus(windows_.ControlOf(dialog_, kCombo));
  EXPECT_EQ(user().Selection(kCombo), (Selection{0, 4}));
  Send(kCombo, kCbSetCurSel, 0);
  EXPECT_EQ(user().Selection(kCombo), (Selection{0, 6}));
  windows_.SetFocus(windows_.ControlOf(dialog_, kEdit));
  EXPECT_THAT(log_.Take(),
              ElementsAre("command 40 3", "command 40 a", "command 40 4", "command 11 100"));
  Send(kCombo, kCbSetCurSel, 1);
  EXPECT_EQ(user().Selection(kCombo), (Selection{0, 0}));
}

TEST_F(ComboEdit, ListIsNeverNarrowerThanItsBox) {
  constexpr std::int32_t kWidth = 60 * kBaseUnitX / 4;
  EXPECT_EQ(Send(kCombo, kCbGetDroppedWidth), kWidth);
  EXPECT_EQ(Send(kCombo, kCbSetDroppedWidth, 300), 300);
  EXPECT_EQ(Send(kCombo, kCbGetDroppedWidth), 300);
  EXPECT_EQ(Send(kCombo, kCbSetDroppedWidth, 3), kWidth);
  EXPECT_EQ(Send(kCombo, kCbGetDroppedWidth), kWidth);
  EXPECT_EQ(Send(kSimple, kCbSetDroppedWidth, 300), kCbErr);
  EXPECT_EQ(Send(kSimple, kCbGetDroppedWidth), kWidth);
}

TEST_F(ComboEdit, CannotBeTypedIntoWhenLockedOrWithoutAnEdit) {
  EXPECT_FALSE(user().Type(kNoEdit, u"x"));
  EXPECT_FALSE(user().Paste(kNoEdit, u"x"));
  windows_.EnableWindow(windows_.ControlOf(dialog_, kCombo), false);
  EXPECT_FALSE(user().Type(kCombo, u"x"));
  EXPECT_FALSE(user().AppendTyping(kCombo, u"x"));
  EXPECT_FALSE(user().Choose(kCombo, 0));
  EXPECT_EQ(user().Text(kCombo), u"");
}

// An edit that turns into one to be read only.
TEST_F(ComboEdit, EditThatIsOnlyToBeReadTakesTextsOfCodeAlone) {
  EXPECT_EQ(Send(kEdit, kEmSetReadOnly, 1), 1);
  EXPECT_FALSE(user().Type(kEdit, u"x"));
  EXPECT_FALSE(user().AppendTyping(kEdit, u"x"));
  EXPECT_FALSE(user().Paste(kEdit, u"x"));
  EXPECT_TRUE(SetText(kEdit, u"by code"));
  EXPECT_EQ(user().Text(kEdit), u"by code");
  EXPECT_EQ(Send(kEdit, kEmSetReadOnly, 0), 1);
  EXPECT_TRUE(user().AppendTyping(kEdit, u"!"));
  EXPECT_EQ(user().Text(kEdit), u"by code!");
}

TEST_F(ComboEdit, EveryControlTellsTheDialogsFont) {
  for (const std::int32_t id : {kCombo, kSimple, kNoEdit, kEdit}) {
    EXPECT_EQ(Send(id, kWmGetFont), reinterpret_cast<std::intptr_t>(DialogFont()));
  }
}

}  // namespace
}  // namespace ostrel::headless
