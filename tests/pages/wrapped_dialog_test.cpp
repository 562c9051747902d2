// The wrappers and services in a dialog of the in-memory window system, whose controls tell their
// dialog of changes as the platform's do, with a user in front of it.
#include "pages/controls.h"
#include "pages/info_icon.h"
#include "pages/page_support.h"
#include "platform/headless/user.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace ostrel {
namespace {

using headless::DialogControl;
using headless::kStyleChild;
using headless::kStyleVisible;

constexpr std::int32_t kEdit = 1025;
constexpr std::int32_t kSpin = 1026;
constexpr std::int32_t kCombo = 1393;
constexpr std::int32_t kRadioA = 1240;
constexpr std::int32_t kRadioB = 1241;
constexpr std::int32_t kIcon = 1447;
constexpr std::uint16_t kDialogId = 7000;
constexpr std::uint32_t kRadioStyle = 0x4;       // BS_RADIOBUTTON: it doesn't toggle by itself
constexpr std::uint32_t kDropDownListStyle = 3;  // CBS_DROPDOWNLIST
constexpr std::uint32_t kIconStyle = 3;          // SS_ICON
constexpr char16_t kPath[] = u"C:\\wrapped.dll";

DialogControl Control(std::int32_t id, const char16_t* className, std::uint32_t style,
                      std::int16_t y) {
  DialogControl control;
  control.id = id;
  control.style = kStyleChild | kStyleVisible | style;
  control.className = className;
  control.place = {4, y, 40, 10};
  return control;
}

std::shared_ptr<headless::Resources> DialogOfAllKinds() {
  auto resources = std::make_shared<headless::Resources>();
  headless::DialogTemplate& dialog = resources->dialogs[kDialogId];
  dialog.style = headless::kStylePopup | kStyleVisible;
  dialog.place = {10, 10, 200, 150};
  dialog.controls = {Control(kEdit, u"edit", 0, 4),
                     Control(kSpin, u"msctls_updown32", 0, 20),
                     Control(kCombo, u"combobox", kDropDownListStyle, 36),
                     Control(kRadioA, u"button", kRadioStyle, 52),
                     Control(kRadioB, u"button", kRadioStyle, 68),
                     Control(kIcon, u"static", kIconStyle, 84)};
  resources->entries.insert({kResourceDialog, kDialogId});
  resources->strings = {{201, u"Off"}, {203, u"On"}};
  return resources;
}

// The scale's box as the layout page has it, two radio buttons, a list and an icon.
struct Wrapped {
  IntEdit edit;
  IntSpin spin;
  RadioButton first;
  RadioButton second;
  RadioGroup group;
  WindowHandle tooltip = nullptr;
  DecimalEdit* decimal = nullptr;  // in the place of the scale's box, when there is one

  Wrapped() {
    edit.range.minimum = 25;
    edit.range.maximum = 400;
    edit.range.maximumTextLength = 3;
    group.AddChild(&first);
    group.AddChild(&second);
  }

  void Start(WindowHandle dialog) {
    edit.Attach(dialog, kEdit);
    spin.Attach(dialog, kSpin);
    spin.SetBuddy(&edit);
    first.Attach(dialog, kRadioA);
    second.Attach(dialog, kRadioB);
    tooltip = CreateInfoIcon(dialog, kIcon);
  }

  void Notify(WindowHandle dialog, std::intptr_t lParam) {
    const auto* header = PointedAt<const NotifyHeader>(lParam);
    constexpr std::int32_t kIcons[] = {kIcon};
    if (header->code == kUdnDeltaPos) {
      spin.Step(PointedAt<const NotifyUpDown>(lParam)->iDelta < 0);
    } else if (header->code == kTtnGetDispInfo &&
               ControlOfTooltip(dialog, *header, kIcons) == kIcon) {
      PointedAt<NotifyTooltipText>(lParam)->lpszText = reason;
    }
  }

  char16_t reason[8] = u"Locked";
};

Wrapped* WrappedOf(WindowHandle dialog) {
  return PointedAt<Wrapped>(World().windows.GetWindowLongPtrW(dialog, kDwlpUser));
}

std::intptr_t Procedure(WindowHandle dialog, std::uint32_t message, std::uintptr_t wParam,
                        std::intptr_t lParam) {
  if (message == kWmInitDialog) {
    World().windows.SetWindowLongPtrW(dialog, kDwlpUser, lParam);
    WrappedOf(dialog)->Start(dialog);
    return 1;
  }
  Wrapped* wrapped = WrappedOf(dialog);
  if (wrapped == nullptr) {
    return 0;
  }
  if (message == kWmCommand && HighWord(wParam) == kEnChange) {
    if (wrapped->decimal != nullptr) {
      wrapped->decimal->ChangeCheck();
    } else {
      wrapped->edit.ChangeCheck();
    }
  } else if (message == kWmCommand && HighWord(wParam) == kBnClicked) {
    wrapped->group.Select(LowWord(wParam));
  } else if (message == kWmNotify) {
    wrapped->Notify(dialog, lParam);
  } else if (message == kWmMouseMove) {
    UpdateTooltipRect(dialog, wrapped->tooltip, kIcon);
  }
  return 0;
}

class WrappedDialog : public testing::Test {
 protected:
  WrappedDialog() {
    world_.platform.modules.InstallResources(kPath, DialogOfAllKinds());
    context_.languageModule = world_.platform.modules.LoadLibraryW(kPath);
    dialog_ = world_.platform.windows.CreateDialogWindow(
        context_.languageModule, kDialogId, nullptr, Procedure,
        reinterpret_cast<std::intptr_t>(&wrapped_), false);
    world_.platform.windows.SetWindowLongPtrW(dialog_, kGwlpUserData,
                                              reinterpret_cast<std::intptr_t>(&context_));
  }

  headless::User user() { return {world_.platform, dialog_}; }

  test::TestWorld world_;
  UIContext context_ = {};
  Wrapped wrapped_;
  WindowHandle dialog_ = nullptr;
};

TEST_F(WrappedDialog, NumberIsCheckedWhileTheUserTypes) {
  struct Typed {
    std::u16string keys;
    std::u16string shown;
  };
  for (const auto& [keys, shown] :
       {Typed{u"3", u"3"}, Typed{u"350", u"350"}, Typed{u"500", u"400"}, Typed{u"012", u"25"},
        Typed{u"0", u"0"}, Typed{u"30x", u"30"}}) {
    ASSERT_TRUE(user().Type(kEdit, keys));
    EXPECT_EQ(user().Text(kEdit), shown);
  }
}

TEST_F(WrappedDialog, TooLongNumberGivesWayToTheOneBefore) {
  ASSERT_TRUE(user().Type(kEdit, u"350"));
  ASSERT_TRUE(user().AppendTyping(kEdit, u"1"));
  EXPECT_EQ(user().Text(kEdit), u"350");
  EXPECT_FALSE(world_.platform.windows.cursorMoves.empty());
}

// Taking back the one brings the other, and that one's undoing the first again.
TEST_F(WrappedDialog, TwoNumbersThatAreBothTooLongEndTheUndoing) {
  World().windows.SetWindowTextW(user().Control(kEdit), u"12345");
  ASSERT_TRUE(user().Paste(kEdit, u"99999"));
  EXPECT_EQ(user().Text(kEdit), u"12345");
}

// What comes back when a text is refused may be refused too by now.
TEST_F(WrappedDialog, LastGoodNumberThatBecameTooLongEndsTheRefusing) {
  ASSERT_TRUE(user().Type(kEdit, u"350"));
  wrapped_.edit.range.maximumTextLength = 2;
  static_cast<void>(user().AppendTyping(kEdit, u"1"));
  EXPECT_EQ(user().Text(kEdit), u"350");
}

TEST_F(WrappedDialog, LastGoodDecimalOfAnotherLanguageEndsTheRefusing) {
  DecimalEdit edit;
  edit.range.minimum = 0.5F;
  edit.range.maximum = 99;
  edit.range.precision = 1;
  edit.range.maximumTextLength = 5;
  edit.Attach(dialog_, kEdit);
  wrapped_.decimal = &edit;
  ASSERT_TRUE(user().Type(kEdit, u"1.5"));
  world_.process.DecimalCommaLanguage = true;
  static_cast<void>(user().AppendTyping(kEdit, u"2"));
  EXPECT_EQ(user().Text(kEdit), u"1.5");
  wrapped_.decimal = nullptr;
}

TEST_F(WrappedDialog, RefusedTextLeavesAllSelected) {
  ASSERT_TRUE(user().Type(kEdit, u"30"));
  ASSERT_TRUE(user().Paste(kEdit, u"a"));
  EXPECT_EQ(user().Text(kEdit), u"30");
  EXPECT_EQ(user().Focus(), kEdit);
  EXPECT_EQ(user().Selection(kEdit), (std::pair<std::size_t, std::size_t>{0, 2}));
}

TEST_F(WrappedDialog, SpinMovesTheNumber) {
  ASSERT_TRUE(user().Type(kEdit, u"399"));
  wrapped_.spin.Step(true);
  EXPECT_EQ(user().Text(kEdit), u"400");
  EXPECT_FALSE(wrapped_.spin.Step(true));
  EXPECT_EQ(user().Text(kEdit), u"400");
}

TEST_F(WrappedDialog, ClickSelectsOneOfTheRadioButtons) {
  ASSERT_TRUE(user().Click(kRadioA));
  EXPECT_TRUE(user().Checked(kRadioA));
  ASSERT_TRUE(user().Click(kRadioB));
  EXPECT_FALSE(user().Checked(kRadioA));
  EXPECT_TRUE(user().Checked(kRadioB));
}

TEST_F(WrappedDialog, ListTakesRowsAndValues) {
  constexpr ComboRow kRows[] = {{201, 0}, {203, -1}};
  FillCombo(dialog_, kCombo, kRows, 0);
  EXPECT_EQ(user().ItemTexts(kCombo), (std::vector<std::u16string>{u"Off", u"On"}));
  SelectComboValue(dialog_, kCombo, -1);
  EXPECT_EQ(user().Selected(kCombo), 1);
  ASSERT_TRUE(user().Choose(kCombo, 0));
  std::int16_t value = 7;
  EXPECT_TRUE(SelectedComboValue(dialog_, kCombo, &value));
  EXPECT_EQ(value, 0);
  SelectComboValue(dialog_, kCombo, 5);
  EXPECT_EQ(user().Selected(kCombo), -1);
}

TEST_F(WrappedDialog, IconIsHiddenUntilTheOptionIsLockedAndThenSaysWhy) {
  EXPECT_FALSE(user().Shown(kIcon));
  ShowControl(dialog_, kIcon, true);
  EXPECT_TRUE(user().Shown(kIcon));
  EXPECT_EQ(user().HoverTip(kIcon), u"Locked");
}

}  // namespace
}  // namespace ostrel
