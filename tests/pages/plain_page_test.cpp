// A page without anything of its own: its context, Apply, Reset and the locked Defaults button.
#include "pages/plain_page.h"

#include "pages/page_support.h"
#include "platform/headless/user.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <memory>

namespace ostrel {
namespace {

constexpr char16_t kPath[] = u"C:\\plain.dll";
constexpr std::uint16_t kDialogId = 693;
constexpr std::int32_t kDefaults = 1064;

class PlainPage : public testing::Test {
 protected:
  PlainPage() {
    auto library = std::make_shared<headless::Resources>();
    headless::DialogTemplate& dialog = library->dialogs[kDialogId];
    dialog.style = headless::kStyleChild;
    headless::DialogControl button;
    button.id = kDefaults;
    button.style = headless::kStyleChild | headless::kStyleVisible;
    button.className = u"button";
    dialog.controls = {button};
    library->entries.insert({kResourceDialog, kDialogId});
    world_.platform.modules.InstallResources(kPath, library);
    module_ = world_.platform.modules.LoadLibraryW(kPath);
    context_.publicPointer = &context_.devmode.publicDevmode;
    context_.privatePointer = &context_.devmode.privateDevmode;
    description_.lParam = reinterpret_cast<std::intptr_t>(&context_);
  }

  void Make(const SheetPage* description) {
    page_ = world_.platform.windows.CreateDialogWindow(
        module_, kDialogId, nullptr, PlainPageProcedure,
        reinterpret_cast<std::intptr_t>(description), false);
  }
  std::intptr_t Notify(std::uint32_t code) {
    SheetNotify notify = {};
    notify.hdr.code = code;
    return PlainPageProcedure(page_, kWmNotify, 0, reinterpret_cast<std::intptr_t>(&notify));
  }
  bool DefaultsIsLive() { return headless::User(world_.platform, page_).Enabled(kDefaults); }

  test::TestWorld world_;
  ModuleHandle module_ = nullptr;
  UIContext context_ = {};
  SheetPage description_ = {};
  WindowHandle page_ = nullptr;
};

TEST_F(PlainPage, RemembersItsContext) {
  Make(&description_);
  EXPECT_EQ(PageContext(page_), &context_);
}

TEST_F(PlainPage, ApplyTakesTheSettingsOver) {
  Make(&description_);
  EXPECT_EQ(Notify(kPsnApply), 1);
  EXPECT_EQ(context_.applied, 1U);
}

TEST_F(PlainPage, ResetForgetsAnApply) {
  Make(&description_);
  context_.applied = 1;
  EXPECT_EQ(Notify(kPsnReset), 1);
  EXPECT_EQ(context_.applied, 0U);
}

TEST_F(PlainPage, WithoutPermissionLocksDefaultsEachTimeItIsShown) {
  Make(&description_);
  context_.noPermission = 1;
  for (int times = 0; times < 2; ++times) {
    EnableControl(page_, kDefaults, true);
    PlainPageProcedure(page_, kWmShowWindow, 1, 0);
    EXPECT_FALSE(DefaultsIsLive()) << times;
  }
}

TEST_F(PlainPage, WithPermissionLeavesDefaultsLive) {
  Make(&description_);
  PlainPageProcedure(page_, kWmShowWindow, 1, 0);
  EXPECT_TRUE(DefaultsIsLive());
}

TEST_F(PlainPage, WithoutAContextOrADescriptionAnswersNothing) {
  Make(nullptr);
  EXPECT_EQ(PageContext(page_), nullptr);
  EXPECT_EQ(Notify(kPsnApply), 0);
  EXPECT_EQ(PlainPageProcedure(page_, kWmShowWindow, 1, 0), 0);
}

TEST_F(PlainPage, NotificationWithoutAMessageIsHarmless) {
  Make(&description_);
  EXPECT_EQ(PlainPageProcedure(page_, kWmNotify, 0, 0), 0);
  EXPECT_EQ(Notify(kPsnSetActive), 0);
  EXPECT_EQ(PlainPageProcedure(page_, kWmMouseMove, 0, 0), 0);
}

}  // namespace
}  // namespace ostrel
