// What code does to windows: the operations of the list and the messages of the controls' classes,
// and which notifications they cause.
#include "platform/headless/headless_windows.h"

#include "platform/headless/test_dialogs.h"
#include "support/case_name.h"

#include <array>
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
constexpr std::int32_t kLines = 14;
constexpr std::int32_t kPush = 20;
constexpr std::int32_t kPlainBox = 21;
constexpr std::int32_t kOwnBox = 22;
constexpr std::int32_t kThree = 23;
constexpr std::int32_t kTelling = 24;
constexpr std::int32_t kGroup = 30;
constexpr std::int32_t kOne = 31;
constexpr std::int32_t kTwo = 32;
constexpr std::int32_t kCombo = 40;
constexpr std::int32_t kSorted = 42;
constexpr std::int32_t kList = 43;
constexpr std::int32_t kIcon = 50;
constexpr std::int32_t kPicture = 51;
constexpr std::int32_t kOff = 55;
constexpr std::int32_t kTrack = 57;
constexpr std::int32_t kRound = 58;
constexpr std::int32_t kNobody = 999;

constexpr std::uint32_t kUnsetError = 0x2BAD;

class Dialog : public testing::Test {
 protected:
  Dialog() {
    platform_.modules.InstallResources(kTestLibraryPath, TestDialogs());
    module_ = platform_.modules.LoadLibraryW(kTestLibraryPath);
    dialog_ = windows_.CreateDialogWindow(module_, kControlsDialog, nullptr, &MessageLog::Procedure,
                                          17, false);
    made_ = log_.Take();
  }
  ~Dialog() override { windows_.Destroy(dialog_); }

  WindowHandle Control(std::int32_t id) { return windows_.GetDlgItem(dialog_, id); }
  std::intptr_t Send(std::int32_t id, std::uint32_t message, std::uintptr_t wParam = 0,
                     std::intptr_t lParam = 0) {
    return windows_.SendMessageW(Control(id), message, wParam, lParam);
  }
  std::intptr_t SendText(std::int32_t id, std::uint32_t message, const char16_t* text,
                         std::uintptr_t wParam = 0) {
    return Send(id, message, wParam, reinterpret_cast<std::intptr_t>(text));
  }
  std::u16string Text(std::int32_t id) {
    std::array<char16_t, 64> text;
    text.fill(u'#');
    windows_.GetWindowTextW(Control(id), text.data(), text.size());
    return text.data();
  }
  bool SetText(std::int32_t id, const char16_t* text) {
    return windows_.SetWindowTextW(Control(id), text);
  }

  HeadlessPlatform platform_;
  HeadlessWindows& windows_ = platform_.windows;
  MessageLog log_;
  ModuleHandle module_ = nullptr;
  WindowHandle dialog_ = nullptr;
  std::vector<std::string> made_;
};

// ---- Making -------------------------------------------------------------------------------------

TEST_F(Dialog, IsAskedForRowHeightsAndThenTold) {
  EXPECT_THAT(made_, ElementsAre("message 2c 29", "init 17"));
}

TEST_F(Dialog, HasTheTemplatesTextsAndStates) {
  EXPECT_EQ(Text(kLabel), u"Name");
  EXPECT_EQ(Text(kPush), u"Push");
  EXPECT_EQ(Text(kName), u"");
  EXPECT_FALSE(windows_.IsWindowEnabled(Control(kOff)));
  EXPECT_TRUE(windows_.IsWindowEnabled(Control(kPush)));
  EXPECT_EQ(windows_.Find(dialog_)->text, u"Controls");
  EXPECT_EQ(windows_.GetParent(Control(kPush)), dialog_);
  EXPECT_EQ(windows_.GetParent(dialog_), nullptr);
}

TEST_F(Dialog, StandsInPixelsOfTheBaseUnits) {
  Rect rect = {};
  ASSERT_TRUE(windows_.GetWindowRect(dialog_, &rect));
  EXPECT_EQ(rect, (Rect{12, 26, 312, 286}));
  ASSERT_TRUE(windows_.GetWindowRect(Control(kPush), &rect));  // at 120, 8 of 40 by 14 units
  EXPECT_EQ(rect, (Rect{192, 39, 252, 62}));
  EXPECT_NE(windows_.MapWindowPoints(nullptr, dialog_, &rect), 0);
  EXPECT_EQ(rect, (Rect{180, 13, 240, 36}));
  windows_.MapWindowPoints(dialog_, nullptr, &rect);
  EXPECT_EQ(rect, (Rect{192, 39, 252, 62}));
}

TEST_F(Dialog, UnknownClassesAreKeptAsPlainWindows) {
  ASSERT_NE(Control(kTrack), nullptr);
  EXPECT_EQ(windows_.Find(Control(kTrack))->kind, WindowKind::kPlain);
  EXPECT_TRUE(SetText(kTrack, u"text"));
  EXPECT_EQ(Text(kTrack), u"text");
  EXPECT_EQ(Send(kTrack, kWmUser + 7), 0);
}

TEST_F(Dialog, WithoutATemplateIsNotMade) {
  const std::size_t windows = windows_.liveWindows();
  EXPECT_EQ(windows_.CreateDialogWindow(module_, 9, nullptr, &MessageLog::Procedure, 0, false),
            nullptr);
  EXPECT_EQ(windows_.CreateDialogWindow(nullptr, 1, nullptr, &MessageLog::Procedure, 0, false),
            nullptr);
  EXPECT_EQ(windows_.liveWindows(), windows);
}

TEST_F(Dialog, GoesWithAllThatItHolds) {
  const WindowHandle tip =
      windows_.CreateWindowExW(8, u"tooltips_class32", 0x80000003, dialog_, nullptr);
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(windows_.Find(tip)->kind, WindowKind::kTooltip);
  windows_.SetFocus(Control(kName));
  log_.Take();
  EXPECT_TRUE(windows_.DestroyWindow(dialog_));
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 200", "destroy"));
  EXPECT_EQ(windows_.liveWindows(), 0U);
  EXPECT_EQ(windows_.focus(), nullptr);
  EXPECT_FALSE(windows_.DestroyWindow(dialog_));
}

TEST_F(Dialog, AnswersWithItsMessageResult) {
  log_.handle = [this](WindowHandle window, std::uint32_t, std::uintptr_t, std::intptr_t lParam) {
    windows_.SetWindowLongPtrW(window, kDwlpMessageResult, 5);
    return lParam;
  };
  EXPECT_EQ(windows_.SendMessageW(dialog_, kWmUser, 0, 1), 5);
  EXPECT_EQ(windows_.SendMessageW(dialog_, kWmUser, 0, 0), 0);  // not answered, whatever it set
  EXPECT_EQ(windows_.SendMessageW(dialog_, kWmInitDialog, 0, 3), 3);
}

TEST_F(Dialog, BeginsEachMessageWithoutAnAnswer) {
  log_.handle = [this](WindowHandle window, std::uint32_t message, std::uintptr_t, std::intptr_t) {
    if (message == kWmUser) {
      windows_.SetWindowLongPtrW(window, kDwlpMessageResult, 5);
      SetText(kName, u"a");  // whose commands come to the same dialog
    }
    return std::intptr_t{message == kWmUser};
  };
  EXPECT_EQ(windows_.SendMessageW(dialog_, kWmUser, 0, 0), 0);
}

TEST_F(Dialog, MirroredCountsFromTheRight) {
  const WindowHandle mirrored = windows_.CreateDialogWindow(module_, kMirroredDialog, nullptr,
                                                            &MessageLog::Procedure, 0, false);
  EXPECT_TRUE(windows_.IsMirrored(mirrored));
  const WindowHandle edit = windows_.GetDlgItem(mirrored, kName);
  EXPECT_TRUE(windows_.IsMirrored(edit));
  Rect rect = {};
  windows_.GetWindowRect(edit, &rect);  // at 4, 8 of 40 by 16 units in 100 by 48
  EXPECT_EQ(rect, (Rect{84, 13, 144, 39}));
  windows_.MapWindowPoints(nullptr, mirrored, &rect);
  EXPECT_EQ(rect, (Rect{6, 13, 66, 39}));
  Rect own = {0, 0, 60, 26};
  windows_.MapWindowPoints(edit, mirrored, &own);  // both count from the right
  EXPECT_EQ(own, (Rect{6, 13, 66, 39}));
  windows_.Destroy(mirrored);
}

// ---- Handles ------------------------------------------------------------------------------------

TEST_F(Dialog, CallsWithNoWindowFail) {
  for (const WindowHandle window : {WindowHandle{}, reinterpret_cast<WindowHandle>(&platform_)}) {
    char16_t wide[4] = u"###";
    char narrow[4] = "###";
    bool translated = true;
    Rect rect = {1, 2, 3, 4};
    platform_.debug.SetLastError(kUnsetError);
    EXPECT_EQ(windows_.GetDlgItem(window, kName), nullptr);
    EXPECT_EQ(platform_.debug.GetLastError(), 1400U);
    EXPECT_EQ(windows_.GetParent(window), nullptr);
    EXPECT_FALSE(windows_.EnableWindow(window, true));
    EXPECT_FALSE(windows_.IsWindowEnabled(window));
    EXPECT_FALSE(windows_.ShowWindow(window, kSwShow));
    EXPECT_EQ(windows_.SetFocus(window), nullptr);
    EXPECT_FALSE(windows_.InvalidateRect(window));
    EXPECT_EQ(windows_.SendMessageW(window, kWmUser, 0, 0), 0);
    EXPECT_EQ(windows_.GetWindowTextW(window, wide, 4), 0);
    EXPECT_EQ(std::u16string(wide), u"");
    EXPECT_FALSE(windows_.SetWindowTextW(window, u"a"));
    EXPECT_FALSE(windows_.SetWindowTextA(window, "a"));
    EXPECT_EQ(windows_.GetDlgItemTextA(window, kName, narrow, 4), 0U);
    EXPECT_EQ(std::string(narrow), "");
    EXPECT_EQ(windows_.GetDlgItemInt(window, kName, &translated, false), 0U);
    EXPECT_FALSE(translated);
    EXPECT_FALSE(windows_.CheckDlgButton(window, kPlainBox, 1));
    EXPECT_EQ(windows_.IsDlgButtonChecked(window, kPlainBox), 0U);
    EXPECT_EQ(windows_.GetWindowLongPtrW(window, kGwlpUserData), 0);
    EXPECT_EQ(windows_.SetWindowLongPtrW(window, kGwlpUserData, 1), 0);
    EXPECT_EQ(windows_.SetClassLongPtrW(window, kGclCursor, 1), 0U);
    EXPECT_FALSE(windows_.GetWindowRect(window, &rect));
    EXPECT_FALSE(windows_.DestroyWindow(window));
    EXPECT_EQ(rect, (Rect{1, 2, 3, 4}));
  }
  Rect rect = {1, 2, 3, 4};
  EXPECT_EQ(windows_.MapWindowPoints(reinterpret_cast<WindowHandle>(&rect), dialog_, &rect), 0);
  EXPECT_EQ(windows_.CreateWindowExW(0, u"static", 0, reinterpret_cast<WindowHandle>(&rect), {}),
            nullptr);
  EXPECT_EQ(windows_.CreateWindowExW(0, nullptr, 0, dialog_, nullptr), nullptr);
  EXPECT_THAT(log_.Take(), IsEmpty());
}

TEST_F(Dialog, MissingControlIsToldByTheLastError) {
  EXPECT_EQ(Control(kNobody), nullptr);
  EXPECT_EQ(platform_.debug.GetLastError(), 1421U);
  EXPECT_FALSE(windows_.CheckDlgButton(dialog_, kNobody, 1));
}

TEST_F(Dialog, EveryOperationFailsByItsName) {
  const WindowHandle edit = Control(kName);
  char16_t wide[4] = u"###";
  char narrow[4] = "###";
  bool translated = true;
  Rect rect = {};
  Point point = {};
  for (const char* operation :
       {"GetDlgItem",        "GetParent",        "EnableWindow",       "IsWindowEnabled",
        "ShowWindow",        "SetFocus",         "InvalidateRect",     "SendMessageW",
        "GetWindowTextW",    "SetWindowTextW",   "SetWindowTextA",     "GetDlgItemTextA",
        "GetDlgItemInt",     "CheckDlgButton",   "IsDlgButtonChecked", "GetWindowLongPtrW",
        "SetWindowLongPtrW", "SetClassLongPtrW", "GetWindowRect",      "MapWindowPoints",
        "GetCursorPos",      "SetCursorPos",     "CreateWindowExW",    "DestroyWindow",
        "LoadImageW",        "MessageBoxW"}) {
    platform_.faults.FailOperation(operation);
  }
  EXPECT_EQ(windows_.GetDlgItem(dialog_, kName), nullptr);
  EXPECT_EQ(windows_.GetParent(edit), nullptr);
  EXPECT_FALSE(windows_.EnableWindow(edit, false));
  EXPECT_FALSE(windows_.IsWindowEnabled(edit));
  EXPECT_FALSE(windows_.ShowWindow(edit, kSwHide));
  EXPECT_EQ(windows_.SetFocus(edit), nullptr);
  EXPECT_FALSE(windows_.InvalidateRect(edit));
  EXPECT_EQ(windows_.SendMessageW(edit, kEmSetSel, 0, 0), 0);
  EXPECT_EQ(windows_.GetWindowTextW(edit, wide, 4), 0);
  EXPECT_FALSE(windows_.SetWindowTextW(edit, u"a"));
  EXPECT_FALSE(windows_.SetWindowTextA(edit, "a"));
  EXPECT_EQ(windows_.GetDlgItemTextA(dialog_, kLabel, narrow, 4), 0U);
  EXPECT_EQ(windows_.GetDlgItemInt(dialog_, kName, &translated, false), 0U);
  EXPECT_FALSE(translated);
  EXPECT_FALSE(windows_.CheckDlgButton(dialog_, kPlainBox, 1));
  EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kPlainBox), 0U);
  EXPECT_EQ(windows_.SetWindowLongPtrW(dialog_, kDwlpUser, 5), 0);
  EXPECT_EQ(windows_.GetWindowLongPtrW(dialog_, kDwlpUser), 0);
  EXPECT_EQ(windows_.SetClassLongPtrW(dialog_, kGclCursor, 5), 0U);
  EXPECT_FALSE(windows_.GetWindowRect(edit, &rect));
  EXPECT_EQ(windows_.MapWindowPoints(edit, dialog_, &rect), 0);
  EXPECT_FALSE(windows_.GetCursorPos(&point));
  EXPECT_FALSE(windows_.SetCursorPos(1, 1));
  EXPECT_EQ(windows_.CreateWindowExW(0, u"static", 0, dialog_, nullptr), nullptr);
  EXPECT_FALSE(windows_.DestroyWindow(edit));
  EXPECT_EQ(windows_.LoadImageW(module_, 77, kImageIcon, 18, 18), nullptr);
  EXPECT_EQ(windows_.MessageBoxW(dialog_, u"a", u"b", 0), 0);
  platform_.faults.Clear();
  EXPECT_TRUE(windows_.boxes.empty());
  EXPECT_EQ(Text(kName), u"");
  EXPECT_TRUE(windows_.IsWindowEnabled(edit));
  EXPECT_TRUE(windows_.Find(edit)->IsShown());
  EXPECT_EQ(windows_.focus(), nullptr);
  EXPECT_EQ(windows_.ClassLong(u"#32770", kGclCursor), 0);
  EXPECT_EQ(windows_.Find(Control(kPlainBox))->checkState, 0U);
  EXPECT_THAT(log_.Take(), IsEmpty());
}

// ---- State --------------------------------------------------------------------------------------

TEST_F(Dialog, EnablingAndShowingTellWhatWasBefore) {
  EXPECT_FALSE(windows_.EnableWindow(Control(kPush), false));
  EXPECT_TRUE(windows_.EnableWindow(Control(kPush), false));
  EXPECT_TRUE(windows_.EnableWindow(Control(kPush), true));
  EXPECT_TRUE(windows_.ShowWindow(Control(kPush), kSwHide));
  EXPECT_FALSE(windows_.ShowWindow(Control(kPush), kSwShow));
  EXPECT_THAT(log_.Take(), IsEmpty());
  windows_.ShowWindow(dialog_, kSwHide);
  windows_.ShowWindow(dialog_, kSwHide);
  windows_.ShowWindow(dialog_, kSwShow);
  EXPECT_THAT(log_.Take(), ElementsAre("show 0", "show 1"));
}

TEST_F(Dialog, FocusIsToldByEditsListsAndButtonsThatAskedForIt) {
  EXPECT_EQ(windows_.SetFocus(Control(kName)), nullptr);
  EXPECT_EQ(windows_.SetFocus(Control(kName)), Control(kName));
  EXPECT_EQ(windows_.SetFocus(Control(kPush)), Control(kName));
  EXPECT_EQ(windows_.SetFocus(Control(kTelling)), Control(kPush));
  windows_.SetFocus(Control(kCombo));
  windows_.SetFocus(Control(kList));
  windows_.SetFocus(Control(kCount));
  EXPECT_THAT(log_.Take(),
              ElementsAre("command 11 100", "command 11 200", "command 24 6", "command 24 7",
                          "command 40 3", "command 40 a", "command 40 4", "command 43 4",
                          "command 43 5", "command 12 100"));
}

TEST_F(Dialog, DisabledOrHiddenControlLosesTheFocus) {
  windows_.SetFocus(Control(kName));
  windows_.EnableWindow(Control(kName), false);
  EXPECT_EQ(windows_.focus(), nullptr);
  EXPECT_EQ(windows_.SetFocus(Control(kName)), nullptr);
  EXPECT_EQ(windows_.focus(), nullptr);
  windows_.SetFocus(Control(kCount));
  windows_.ShowWindow(Control(kCount), kSwHide);
  EXPECT_EQ(windows_.focus(), dialog_);
  EXPECT_THAT(log_.Take(),
              ElementsAre("command 11 100", "command 11 200", "command 12 100", "command 12 200"));
}

TEST_F(Dialog, FocusTakenAwayWhileItIsToldStaysWhereItWent) {
  log_.handle = [this](WindowHandle, std::uint32_t message, std::uintptr_t wParam, std::intptr_t) {
    if (message == kWmCommand && HighWord(wParam) == kEnKillFocus) {
      windows_.SetFocus(Control(kPush));
    }
    return 0;
  };
  windows_.SetFocus(Control(kName));
  windows_.SetFocus(Control(kCount));
  EXPECT_EQ(windows_.focus(), Control(kPush));
  // The one in between loses a focus that it was never told it had.
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 100", "command 11 200", "command 12 200"));
}

TEST_F(Dialog, LongsAreKeptByIndex) {
  EXPECT_EQ(windows_.SetWindowLongPtrW(dialog_, kGwlpUserData, 7), 0);
  EXPECT_EQ(windows_.SetWindowLongPtrW(dialog_, kGwlpUserData, 8), 7);
  EXPECT_EQ(windows_.GetWindowLongPtrW(dialog_, kGwlpUserData), 8);
  EXPECT_EQ(windows_.SetWindowLongPtrW(dialog_, kDwlpUser, 9), 0);
  EXPECT_EQ(windows_.GetWindowLongPtrW(dialog_, kDwlpUser), 9);
  EXPECT_EQ(windows_.GetWindowLongPtrW(Control(kName), -12), kName);
  EXPECT_EQ(windows_.SetWindowLongPtrW(Control(kName), kDwlpUser, 9), 0);
  EXPECT_EQ(platform_.debug.GetLastError(), 1413U);
  EXPECT_EQ(windows_.SetClassLongPtrW(dialog_, kGclCursor, 3), 0U);
  EXPECT_EQ(windows_.SetClassLongPtrW(dialog_, kGclCursor, 0), 3U);
  EXPECT_EQ(windows_.ClassLong(u"#32770", kGclCursor), 0);
}

TEST_F(Dialog, CursorStandsWhereItWasPut) {
  windows_.cursor = {3, 4};
  Point point = {};
  EXPECT_TRUE(windows_.GetCursorPos(&point));
  EXPECT_EQ(point.x, 3);
  EXPECT_EQ(point.y, 4);
  EXPECT_TRUE(windows_.SetCursorPos(5, 6));
  EXPECT_EQ(windows_.cursor.x, 5);
  EXPECT_EQ(windows_.cursorMoves.size(), 1U);
}

TEST_F(Dialog, InvalidationsAreCounted) {
  EXPECT_TRUE(windows_.InvalidateRect(Control(kPicture)));
  EXPECT_TRUE(windows_.InvalidateRect(Control(kPicture)));
  EXPECT_EQ(windows_.Find(Control(kPicture))->invalidations, 2U);
}

// ---- Boxes --------------------------------------------------------------------------------------

TEST_F(Dialog, BoxIsAnsweredFromTheQueueAndThenWithOk) {
  windows_.answers = {7, 2};
  EXPECT_EQ(windows_.MessageBoxW(dialog_, u"a", u"A", 0x30), 7);
  EXPECT_EQ(windows_.MessageBoxW(dialog_, u"b", u"B", 0x30), 2);
  EXPECT_EQ(windows_.MessageBoxW(nullptr, u"c", nullptr, 0x30), 1);
  ASSERT_EQ(windows_.boxes.size(), 3U);
  EXPECT_EQ(windows_.boxes[1].text, u"b");
  EXPECT_EQ(windows_.boxes[1].owner, dialog_);
  EXPECT_EQ(windows_.boxes[2].caption, u"");
}

TEST_F(Dialog, BoxTakesTheFocusAndGivesItBack) {
  windows_.SetFocus(Control(kName));
  log_.Take();
  windows_.MessageBoxW(dialog_, u"a", u"A", 0);
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 200", "command 11 100"));
  EXPECT_EQ(windows_.focus(), Control(kName));
}

// ---- Texts --------------------------------------------------------------------------------------

TEST_F(Dialog, EditTellsOfATextSetByCodeAndOthersDoNot) {
  EXPECT_TRUE(SetText(kName, u"new"));
  EXPECT_EQ(Text(kName), u"new");
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 400", "command 11 300"));
  EXPECT_TRUE(SetText(kName, u"new"));  // even when it is the same
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 400", "command 11 300"));
  EXPECT_TRUE(SetText(kLines, u"of several lines"));
  EXPECT_TRUE(SetText(kLabel, u"label"));
  EXPECT_TRUE(SetText(kPush, u"button"));
  EXPECT_TRUE(windows_.SetWindowTextW(dialog_, u"dialog"));
  EXPECT_EQ(Text(kLabel), u"label");
  EXPECT_EQ(windows_.Find(dialog_)->text, u"dialog");
  EXPECT_THAT(log_.Take(), ElementsAre("message c 0"));  // which the dialog's own gets to see
}

TEST_F(Dialog, NarrowTextIsLatin) {
  EXPECT_TRUE(windows_.SetWindowTextA(Control(kName), "\xE9t\xE9"));
  EXPECT_EQ(Text(kName), u"\u00E9t\u00E9");
  char text[8] = "#######";
  EXPECT_EQ(windows_.GetDlgItemTextA(dialog_, kName, text, 8), 3U);
  EXPECT_EQ(std::string(text), "\xE9t\xE9");
  EXPECT_EQ(windows_.GetDlgItemTextA(dialog_, kName, text, 3), 2U);
  EXPECT_EQ(std::string(text), "\xE9t");
  SetText(kName, u"\u4E2D");
  EXPECT_EQ(windows_.GetDlgItemTextA(dialog_, kName, text, 8), 1U);
  EXPECT_EQ(std::string(text), "?");
  EXPECT_EQ(windows_.GetDlgItemTextA(dialog_, kNobody, text, 8), 0U);
}

TEST_F(Dialog, LongTextIsCutToTheBuffer) {
  SetText(kName, u"abcdef");
  char16_t text[5] = u"####";
  EXPECT_EQ(windows_.GetWindowTextW(Control(kName), text, 4), 3);
  EXPECT_EQ(std::u16string(text), u"abc");
  EXPECT_EQ(windows_.GetWindowTextW(Control(kName), text, 0), 0);
}

struct NumberRow {
  const char* name;
  const char16_t* text;
  bool isSigned;
  bool translated;
  std::uint32_t value;
};
class DialogNumber : public Dialog, public testing::WithParamInterface<NumberRow> {};

TEST_P(DialogNumber, IsReadOrRefused) {
  SetText(kName, GetParam().text);
  bool translated = !GetParam().translated;
  EXPECT_EQ(windows_.GetDlgItemInt(dialog_, kName, &translated, GetParam().isSigned),
            GetParam().value);
  EXPECT_EQ(translated, GetParam().translated);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Texts, DialogNumber, testing::Values(
    NumberRow{"Digits",            u"012",         false, true,  12},
    NumberRow{"BlanksBefore",      u"  7",         false, true,  7},
    NumberRow{"BlanksBehind",      u"7 ",          false, false, 0},
    NumberRow{"Empty",             u"",            false, false, 0},
    NumberRow{"Blank",             u" ",           false, false, 0},
    NumberRow{"Letters",           u"7a",          false, false, 0},
    NumberRow{"Negative",          u"-7",          true,  true,  0xFFFFFFF9},
    NumberRow{"NegativeUnsigned",  u"-7",          false, false, 0},
    NumberRow{"SignAlone",         u"-",           true,  false, 0},
    NumberRow{"MostUnsigned",      u"4294967295",  false, true,  0xFFFFFFFF},
    NumberRow{"TooMuchUnsigned",   u"4294967296",  false, false, 0},
    NumberRow{"LeastSigned",       u"-2147483648", true,  true,  0x80000000},
    NumberRow{"TooMuchSigned",     u"2147483648",  true,  false, 0},
    NumberRow{"MuchTooMuch",       u"99999999999999999999999", false, false, 0}),
    test::CaseName());
// clang-format on

TEST_F(Dialog, UndoTakesBackWhatWasReplacedAndAgain) {
  SetText(kName, u"old");
  log_.Take();
  EXPECT_EQ(Send(kName, kEmUndo), 0);  // a text set by code can't be undone
  EXPECT_EQ(Text(kName), u"old");
  EXPECT_THAT(log_.Take(), IsEmpty());
  Send(kName, kEmSetSel, 0, -1);
  for (const char16_t unit : std::u16string(u"new!")) {
    Send(kName, 0x102, unit);
  }
  EXPECT_EQ(Text(kName), u"new!");
  log_.Take();
  EXPECT_EQ(Send(kName, kEmUndo), 1);
  EXPECT_EQ(Text(kName), u"old");
  EXPECT_THAT(log_.Take(), ElementsAre("command 11 400", "command 11 300"));
  EXPECT_EQ(Send(kName, kEmUndo), 1);
  EXPECT_EQ(Text(kName), u"new!");
}

TEST_F(Dialog, SelectionIsClampedToTheText) {
  SetText(kName, u"four");
  Send(kName, kEmSetSel, 999, -1);
  EXPECT_EQ(Send(kName, 0xB0), 0x40004);
  Send(kName, kEmSetSel, 0, -1);
  EXPECT_EQ(Send(kName, 0xB0), 0x40000);
  Send(kName, kEmSetSel, 3, 1);
  EXPECT_EQ(Send(kName, 0xB0), 0x30001);
  Send(kName, kEmSetSel, ~std::uintptr_t{0}, 0);
  EXPECT_EQ(Send(kName, 0xB0), 0x30003);
}

// ---- Checks -------------------------------------------------------------------------------------

TEST_F(Dialog, CheckingByCodeTellsNothing) {
  for (const std::int32_t id : {kPlainBox, kOwnBox, kOne, kTwo}) {
    EXPECT_TRUE(windows_.CheckDlgButton(dialog_, id, kBstChecked));
    EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, id), 1U) << id;
  }
  EXPECT_TRUE(windows_.CheckDlgButton(dialog_, kPlainBox, kBstUnchecked));
  EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kPlainBox), 0U);
  windows_.CheckDlgButton(dialog_, kPlainBox, 2);  // there is no third state to it
  EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kPlainBox), 1U);
  windows_.CheckDlgButton(dialog_, kThree, 2);
  EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kThree), 2U);
  for (const std::int32_t id : {kPush, kGroup, kName}) {
    windows_.CheckDlgButton(dialog_, id, kBstChecked);
    EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, id), 0U) << id;
  }
  EXPECT_THAT(log_.Take(), IsEmpty());
}

TEST_F(Dialog, ClickByMessageIsAClick) {
  Send(kPlainBox, kBmClick);
  EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kPlainBox), 0U);
  Send(kOwnBox, kBmClick);
  EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kOwnBox), 1U);
  EXPECT_THAT(log_.Take(), ElementsAre("command 21 0", "command 22 0"));
}

// Not by a press of the mouse, which brings a click of its own, and not when it is checked.
TEST_F(Dialog, UncheckedRadioButtonIsClickedByTheFocus) {
  constexpr std::int32_t kByHand = 34;
  const WindowHandle radio = windows_.ControlOf(dialog_, kByHand);
  log_.Take();
  windows_.MoveFocus(radio);
  EXPECT_THAT(log_.Take(), ElementsAre("command 34 0"));
  EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kByHand), 0U);
  windows_.MoveFocus(nullptr);
  windows_.MoveFocusByMouse(radio);
  EXPECT_THAT(log_.Take(), ElementsAre());
  windows_.MoveFocus(nullptr);
  windows_.CheckDlgButton(dialog_, kByHand, kBstChecked);
  windows_.MoveFocus(radio);
  EXPECT_THAT(log_.Take(), ElementsAre());
  windows_.MoveFocus(windows_.ControlOf(dialog_, kTwo));  // of the automatic kind
  EXPECT_THAT(log_.Take(), ElementsAre("command 32 0"));
  EXPECT_EQ(windows_.IsDlgButtonChecked(dialog_, kTwo), 1U);
}

TEST_F(Dialog, CheckedRadioButtonIsTheStopOfTheTabKey) {
  const auto isStop = [this](std::int32_t id) {
    return (windows_.Find(windows_.ControlOf(dialog_, id))->style & kStyleTabStop) != 0;
  };
  windows_.CheckDlgButton(dialog_, kOne, kBstChecked);
  EXPECT_TRUE(isStop(kOne));
  windows_.CheckDlgButton(dialog_, kOne, kBstUnchecked);
  EXPECT_FALSE(isStop(kOne));
  Send(kTwo, kBmClick);
  EXPECT_TRUE(isStop(kTwo));
  EXPECT_FALSE(isStop(kOne));
}

// ---- Lists --------------------------------------------------------------------------------------

TEST_F(Dialog, ComboKeepsRowsAndTheirDataInSilence) {
  EXPECT_EQ(SendText(kCombo, kCbAddString, u"zwei"), 0);
  EXPECT_EQ(SendText(kCombo, kCbAddString, u"eins"), 1);
  EXPECT_EQ(Send(kCombo, kCbGetCount), 2);
  EXPECT_EQ(Send(kCombo, kCbGetCurSel), kCbErr);
  EXPECT_EQ(Text(kCombo), u"");
  EXPECT_EQ(Send(kCombo, kCbSetItemData, 1, 77), 0);
  EXPECT_EQ(Send(kCombo, kCbGetItemData, 1), 77);
  EXPECT_EQ(Send(kCombo, kCbGetItemData, 0), 0);
  EXPECT_EQ(Send(kCombo, kCbGetItemData, 2), kCbErr);
  EXPECT_EQ(Send(kCombo, kCbSetItemData, 2, 1), kCbErr);
  EXPECT_EQ(Send(kCombo, kCbSetCurSel, 1), 1);
  EXPECT_EQ(Text(kCombo), u"eins");
  EXPECT_EQ(Send(kCombo, kCbSetCurSel, 2), kCbErr);
  EXPECT_EQ(Send(kCombo, kCbGetCurSel), kCbErr);
  Send(kCombo, kCbSetCurSel, 0);
  EXPECT_EQ(Send(kCombo, kCbResetContent), 0);
  EXPECT_EQ(Send(kCombo, kCbGetCount), 0);
  EXPECT_EQ(Send(kCombo, kCbGetCurSel), kCbErr);
  EXPECT_FALSE(SetText(kCombo, u"text"));
  EXPECT_THAT(log_.Take(), IsEmpty());
}

TEST_F(Dialog, SortedComboPutsRowsInOrder) {
  EXPECT_EQ(SendText(kSorted, kCbAddString, u"b"), 0);
  EXPECT_EQ(SendText(kSorted, kCbAddString, u"A"), 0);
  EXPECT_EQ(SendText(kSorted, kCbAddString, u"c"), 2);
  EXPECT_EQ(SendText(kSorted, 0x158, u"B", ~std::uintptr_t{0}), 1);  // found exactly, in any case
}

TEST_F(Dialog, DeletingRowsKeepsTheSelectionOnItsRow) {
  for (const char16_t* text : {u"a", u"b", u"c"}) {
    SendText(kCombo, kCbAddString, text);
  }
  Send(kCombo, kCbSetCurSel, 2);
  EXPECT_EQ(Send(kCombo, 0x144, 0), 2);
  EXPECT_EQ(Send(kCombo, kCbGetCurSel), 1);
  EXPECT_EQ(Send(kCombo, 0x144, 1), 1);
  EXPECT_EQ(Send(kCombo, kCbGetCurSel), kCbErr);
  EXPECT_EQ(Send(kCombo, 0x144, 1), kCbErr);
}

TEST_F(Dialog, ListBoxHasTheSameInItsOwnNumbers) {
  EXPECT_EQ(SendText(kList, 0x180, u"a"), 0);
  EXPECT_EQ(SendText(kList, 0x180, u"b"), 1);
  EXPECT_EQ(Send(kList, 0x18B), 2);
  EXPECT_EQ(Send(kList, 0x186, 1), 1);
  EXPECT_EQ(Send(kList, 0x188), 1);
  char16_t text[4] = u"###";
  EXPECT_EQ(Send(kList, 0x189, 1, reinterpret_cast<std::intptr_t>(text)), 1);
  EXPECT_EQ(std::u16string(text), u"b");
  EXPECT_EQ(Send(kList, kCbGetCount), 0);  // a combo's message means nothing here
}

// ---- Spin controls ------------------------------------------------------------------------------

TEST_F(Dialog, SpinSetByCodeWritesIntoItsBuddy) {
  EXPECT_EQ(Send(kSpin, kUdmSetRange, 0, 0x0001'03E7), 0);  // 1 to 999
  EXPECT_EQ(Send(kSpin, kUdmGetRange), 0x0001'03E7);
  EXPECT_EQ(Send(kSpin, kUdmSetPos, 0, 5), 0);
  EXPECT_EQ(Text(kCount), u"5");
  EXPECT_THAT(log_.Take(), ElementsAre("command 12 400", "command 12 300"));
  EXPECT_EQ(Send(kSpin, kUdmSetPos, 0, 5), 5);  // the text is there already
  EXPECT_THAT(log_.Take(), IsEmpty());
  EXPECT_EQ(Send(kSpin, kUdmSetPos, 0, 2000), 5);
  EXPECT_EQ(Text(kCount), u"999");
  SetText(kCount, u"44");
  EXPECT_EQ(Send(kSpin, kUdmGetPos), 44);
  SetText(kCount, u"");
  EXPECT_EQ(HighWord(static_cast<std::uintptr_t>(Send(kSpin, kUdmGetPos))), 1);
}

TEST_F(Dialog, SpinGroupsThousands) {
  Send(kSpin, kWmUser + 111, 0, 2000000);  // UDM_SETRANGE32
  Send(kSpin, kWmUser + 113, 0, 1234567);  // UDM_SETPOS32
  EXPECT_EQ(Text(kCount), u"1,234,567");
  EXPECT_EQ(Send(kSpin, kWmUser + 114), 1234567);
}

TEST_F(Dialog, SpinKeepsItsAcceleration) {
  const SpinAcceleration rows[] = {{200, 1}};
  EXPECT_EQ(Send(kSpin, kUdmSetAccel, 1, reinterpret_cast<std::intptr_t>(rows)), 1);
  EXPECT_EQ(Send(kSpin, kUdmSetAccel, 0, 0), 0);
  const SpinState& spin = windows_.Find(Control(kSpin))->spin;
  ASSERT_EQ(spin.accelerations.size(), 1U);
  EXPECT_EQ(spin.accelerations[0].nSec, 200U);
  EXPECT_EQ(spin.buddy, Control(kCount));
  EXPECT_EQ(windows_.Find(Control(kRound))->spin.buddy, nullptr);
}

// ---- Images -------------------------------------------------------------------------------------

TEST_F(Dialog, StaticsShowTheImagesOfTheirTitles) {
  const auto image = reinterpret_cast<ImageHandle>(Send(kIcon, kStmGetImage, kImageIcon));
  ASSERT_NE(windows_.ImageOf(image), nullptr);
  EXPECT_EQ(windows_.ImageOf(image)->id, 77U);
  EXPECT_EQ(Send(kIcon, kStmGetImage, kImageBitmap), 0);
  const auto picture = reinterpret_cast<ImageHandle>(Send(kPicture, kStmGetImage, kImageBitmap));
  ASSERT_NE(windows_.ImageOf(picture), nullptr);
  EXPECT_EQ(windows_.ImageOf(picture)->size.width, 7);
}

TEST_F(Dialog, StaticTakesImagesOfItsOwnKindOnly) {
  const ImageHandle icon = windows_.LoadImageW(module_, 77, kImageIcon, 18, 18);
  ASSERT_NE(icon, nullptr);
  const auto number = reinterpret_cast<std::intptr_t>(icon);
  const std::intptr_t before = Send(kIcon, kStmGetImage, kImageIcon);
  EXPECT_EQ(Send(kIcon, kStmSetImage, kImageBitmap, number), 0);
  EXPECT_EQ(Send(kIcon, kStmGetImage, kImageIcon), before);
  EXPECT_EQ(Send(kIcon, kStmSetImage, kImageIcon, number), before);
  EXPECT_EQ(Send(kIcon, kStmSetIcon, 0), number);
  EXPECT_EQ(Send(kLabel, kStmSetImage, kImageIcon, number), 0);
  EXPECT_EQ(windows_.LoadImageW(module_, 78, kImageIcon, 18, 18), nullptr);
  EXPECT_EQ(windows_.LoadImageW(module_, 77, kImageBitmap, 0, 0), nullptr);
  EXPECT_EQ(windows_.LoadImageW(nullptr, 77, kImageIcon, 18, 18), nullptr);
}

// ---- Tooltips -----------------------------------------------------------------------------------

TEST_F(Dialog, TooltipKeepsItsToolsAndLooks) {
  const WindowHandle tip =
      windows_.CreateWindowExW(8, u"Tooltips_Class32", 0x80000003, dialog_, nullptr);
  char16_t text[] = u"tip";
  ToolInfo tool = {};
  tool.cbSize = sizeof(tool);
  tool.hwnd = dialog_;
  tool.uId = 5;
  tool.lpszText = text;
  const auto toolParam = reinterpret_cast<std::intptr_t>(&tool);
  EXPECT_EQ(windows_.SendMessageW(tip, kTtmAddTool, 0, toolParam), 1);
  tool.rect = {1, 2, 3, 4};
  windows_.SendMessageW(tip, kTtmSetToolInfo, 0, toolParam);
  tool.uId = 6;
  windows_.SendMessageW(tip, kTtmSetToolInfo, 0, toolParam);  // of a tool that isn't there
  tool.cbSize = 8;
  EXPECT_EQ(windows_.SendMessageW(tip, kTtmAddTool, 0, toolParam), 0);
  EXPECT_EQ(windows_.SendMessageW(tip, kTtmAddTool, 0, 0), 0);
  EXPECT_EQ(windows_.SendMessageW(tip, kTtmSetMaxTipWidth, 0, 300), -1);
  windows_.SendMessageW(tip, kTtmSetTipBackgroundColor, 14219007, 0);
  windows_.SendMessageW(tip, kTtmActivate, 0, 0);
  const TooltipState& state = windows_.Find(tip)->tooltip;
  ASSERT_EQ(state.tools.size(), 1U);
  EXPECT_EQ(state.tools[0].rect, (Rect{1, 2, 3, 4}));
  EXPECT_EQ(state.tools[0].text, u"tip");
  EXPECT_FALSE(state.active);
  EXPECT_EQ(state.maxWidth, 300);
  EXPECT_EQ(state.backgroundColor, 14219007U);
}

}  // namespace
}  // namespace ostrel::headless
