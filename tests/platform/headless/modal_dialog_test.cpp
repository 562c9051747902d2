// Dialogs and boxes that lock their owner until they are ended.
#include "platform/headless/test_dialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kName = 11;
constexpr std::int32_t kPush = 20;

class ModalDialog : public testing::Test {
 protected:
  ModalDialog() {
    platform_.modules.InstallResources(kTestLibraryPath, TestDialogs());
    module_ = platform_.modules.LoadLibraryW(kTestLibraryPath);
    owner_ =
        windows_.CreateDialogWindow(module_, kControlsDialog, nullptr, &OwnerProcedure, 0, false);
    windows_.SetFocus(windows_.ControlOf(owner_, kName));
    log_.handle = [this](WindowHandle dialog, std::uint32_t message, std::uintptr_t wParam,
                         std::intptr_t) {
      const bool isClick = message == kWmCommand && HighWord(wParam) == kBnClicked;
      if (isClick && (LowWord(wParam) == kIdOk || LowWord(wParam) == kIdCancel)) {
        EXPECT_TRUE(windows_.EndDialog(dialog, 100 + LowWord(wParam)));
      }
      return std::intptr_t{message == kWmInitDialog ? 1 : 0};
    };
  }
  ~ModalDialog() override { windows_.Destroy(owner_); }

  // The owner keeps silent, so that the log is the modal dialog's alone.
  static std::intptr_t OwnerProcedure(WindowHandle, std::uint32_t, std::uintptr_t, std::intptr_t) {
    return 0;
  }
  std::intptr_t Run(WindowHandle owner, std::intptr_t parameter = 17) {
    return windows_.DialogBoxParamW(module_, kModalDialog, owner, &MessageLog::Procedure,
                                    parameter);
  }

  HeadlessPlatform platform_;
  HeadlessWindows& windows_ = platform_.windows;
  MessageLog log_;
  ModuleHandle module_ = nullptr;
  WindowHandle owner_ = nullptr;
};

TEST_F(ModalDialog, TellsWhatItWasEndedWith) {
  windows_.onDialog = [&](WindowHandle dialog) {
    EXPECT_TRUE(windows_.IsOpenDialog(dialog));
    EXPECT_TRUE(User(platform_, dialog).Click(kIdOk));
    EXPECT_FALSE(windows_.IsOpenDialog(dialog));
  };
  EXPECT_EQ(Run(owner_), 101);
  EXPECT_THAT(log_.Take(), ElementsAre("init 17", "show 1", "command 11 100", "command 11 200",
                                       "command 1 0", "show 0", "destroy"));
}

TEST_F(ModalDialog, LocksItsOwnerAndHasTheFocusUntilItEnds) {
  User owner(platform_, owner_);
  windows_.onDialog = [&](WindowHandle dialog) {
    EXPECT_FALSE(windows_.IsWindowEnabled(owner_));
    EXPECT_FALSE(owner.Click(kPush));
    EXPECT_EQ(owner.Focus(), 0);
    EXPECT_EQ(User(platform_, dialog).Focus(), kName);  // the first that can have it
    windows_.EndDialog(dialog, 1);
    EXPECT_TRUE(windows_.IsWindowEnabled(owner_));
    EXPECT_EQ(owner.Focus(), kName);
    EXPECT_TRUE(windows_.IsWindow(dialog));
  };
  EXPECT_EQ(Run(owner_), 1);
  EXPECT_TRUE(owner.Click(kPush));
}

TEST_F(ModalDialog, LocksItsOwnerBeforeItHearsOfItself) {
  bool wasEnabled = true;
  log_.handle = [&](WindowHandle dialog, std::uint32_t message, std::uintptr_t, std::intptr_t) {
    if (message == kWmInitDialog) {
      wasEnabled = windows_.IsWindowEnabled(owner_);
      EXPECT_TRUE(windows_.IsOpenDialog(dialog));
    }
    return 0;
  };
  Run(owner_);
  EXPECT_FALSE(wasEnabled);
}

TEST_F(ModalDialog, OfAControlIsOwnedByTheWindowThatItStandsIn) {
  windows_.onDialog = [&](WindowHandle dialog) {
    EXPECT_EQ(windows_.GetParent(dialog), owner_);
    EXPECT_FALSE(windows_.IsWindowEnabled(owner_));
  };
  Run(windows_.ControlOf(owner_, kPush));
  EXPECT_TRUE(windows_.IsWindowEnabled(owner_));
}

TEST_F(ModalDialog, OwnerThatWasDisabledStaysSo) {
  windows_.EnableWindow(owner_, false);
  Run(owner_);
  EXPECT_FALSE(windows_.IsWindowEnabled(owner_));
}

TEST_F(ModalDialog, EndedByItsFirstMessageIsNeverShown) {
  log_.handle = [&](WindowHandle dialog, std::uint32_t message, std::uintptr_t, std::intptr_t) {
    if (message == kWmInitDialog) {
      windows_.EndDialog(dialog, 77);
    }
    return 1;
  };
  bool shown = false;
  windows_.onDialog = [&](WindowHandle) { shown = true; };
  EXPECT_EQ(Run(owner_), 77);
  EXPECT_FALSE(shown);
  EXPECT_THAT(log_.Take(), ElementsAre("init 17", "destroy"));
  EXPECT_TRUE(windows_.IsWindowEnabled(owner_));
}

TEST_F(ModalDialog, LastEndingCounts) {
  windows_.onDialog = [&](WindowHandle dialog) {
    EXPECT_TRUE(windows_.EndDialog(dialog, 1));
    EXPECT_TRUE(windows_.EndDialog(dialog, 2));
  };
  EXPECT_EQ(Run(owner_), 2);
}

TEST_F(ModalDialog, LeftOpenIsCancelled) {
  EXPECT_EQ(Run(owner_), 102);
  EXPECT_EQ(Run(nullptr), 102);
}

TEST_F(ModalDialog, ThatResistsIsEndedAtLast) {
  log_.handle = {};
  EXPECT_EQ(Run(owner_), -1);
  EXPECT_TRUE(windows_.IsWindowEnabled(owner_));
}

TEST_F(ModalDialog, ClosingIsItsCancelButtonUnlessThatIsLocked) {
  windows_.onDialog = [&](WindowHandle dialog) {
    windows_.EnableWindow(windows_.ControlOf(dialog, kIdCancel), false);
    windows_.SendMessageW(dialog, kWmClose, 0, 0);
    EXPECT_TRUE(windows_.IsOpenDialog(dialog));
    windows_.EnableWindow(windows_.ControlOf(dialog, kIdCancel), true);
    windows_.SendMessageW(dialog, kWmClose, 0, 0);
    EXPECT_FALSE(windows_.IsOpenDialog(dialog));
  };
  EXPECT_EQ(Run(owner_), 102);
}

TEST_F(ModalDialog, NothingOfItIsReachableOnceItHasEnded) {
  windows_.onDialog = [&](WindowHandle dialog) {
    User user(platform_, dialog);
    EXPECT_TRUE(user.Type(kName, u"x"));
    windows_.EndDialog(dialog, 1);
    EXPECT_FALSE(user.Click(kIdOk));
    EXPECT_FALSE(user.Type(kName, u"y"));
  };
  EXPECT_EQ(Run(owner_), 1);
}

TEST_F(ModalDialog, SecondOneLocksTheFirst) {
  std::vector<WindowHandle> open;
  windows_.onDialog = [&](WindowHandle dialog) {
    open.push_back(dialog);
    User user(platform_, dialog);
    if (open.size() == 1) {
      EXPECT_TRUE(user.MoveFocus(kIdOk));
      EXPECT_EQ(Run(dialog), 102);
      EXPECT_FALSE(windows_.IsWindow(open[1]));
      EXPECT_EQ(user.Focus(), kIdOk);
      EXPECT_TRUE(user.Click(kIdOk));
    } else {
      EXPECT_FALSE(User(platform_, open[0]).Click(kIdOk));
      EXPECT_FALSE(windows_.IsWindowEnabled(owner_));
      EXPECT_TRUE(user.Click(kIdCancel));
    }
  };
  EXPECT_EQ(Run(owner_), 101);
  EXPECT_EQ(open.size(), 2U);
}

TEST_F(ModalDialog, BoxLocksItsOwnerAndGivesTheFocusBack) {
  windows_.onDialog = [&](WindowHandle dialog) {
    User user(platform_, dialog);
    EXPECT_TRUE(user.MoveFocus(kIdCancel));
    windows_.onBox = [&](const HeadlessWindows::Box& box) {
      EXPECT_EQ(box.owner, dialog);
      EXPECT_FALSE(user.Click(kIdOk));
      EXPECT_EQ(user.Focus(), 0);
    };
    windows_.answers = {6};
    EXPECT_EQ(windows_.MessageBoxW(dialog, u"text", u"caption", 4), 6);
    EXPECT_EQ(user.Focus(), kIdCancel);
    EXPECT_TRUE(user.Click(kIdOk));
  };
  EXPECT_EQ(Run(owner_), 101);
  EXPECT_EQ(windows_.boxes.size(), 1U);
}

TEST_F(ModalDialog, DialogThatLeavesNoFocusToTheSystemSetsItItself) {
  log_.handle = [&](WindowHandle dialog, std::uint32_t message, std::uintptr_t, std::intptr_t) {
    if (message == kWmInitDialog) {
      windows_.SetFocus(windows_.ControlOf(dialog, kIdCancel));
    }
    return 0;
  };
  windows_.onDialog = [&](WindowHandle dialog) {
    EXPECT_EQ(User(platform_, dialog).Focus(), kIdCancel);
  };
  Run(owner_);
}

TEST_F(ModalDialog, ThatGoesWithItsOwnerHasNoResult) {
  windows_.onDialog = [&](WindowHandle) { windows_.DestroyWindow(owner_); };
  EXPECT_EQ(Run(owner_), -1);
}

TEST_F(ModalDialog, IsNotMadeWithoutItsTemplateOrOwner) {
  const std::size_t before = windows_.liveWindows();
  EXPECT_EQ(windows_.DialogBoxParamW(module_, 99, owner_, &MessageLog::Procedure, 0), -1);
  EXPECT_EQ(Run(reinterpret_cast<WindowHandle>(&platform_)), 0);
  platform_.faults.FailOperation("DialogBoxParamW");
  EXPECT_EQ(Run(owner_), -1);
  EXPECT_EQ(windows_.liveWindows(), before);
  EXPECT_TRUE(windows_.IsWindowEnabled(owner_));
  EXPECT_THAT(log_.Take(), IsEmpty());
}

TEST_F(ModalDialog, OnlyADialogIsEnded) {
  EXPECT_FALSE(windows_.EndDialog(nullptr, 1));
  EXPECT_FALSE(windows_.EndDialog(windows_.ControlOf(owner_, kPush), 1));
  windows_.onDialog = [&](WindowHandle dialog) {
    platform_.faults.FailOperation("EndDialog");
    EXPECT_FALSE(windows_.EndDialog(dialog, 1));
    EXPECT_TRUE(windows_.IsOpenDialog(dialog));
    platform_.faults.Clear();
  };
  EXPECT_EQ(Run(owner_), 102);
}

}  // namespace
}  // namespace ostrel::headless
