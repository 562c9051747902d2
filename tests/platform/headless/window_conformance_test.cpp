// The in-memory windows and drawing under the suite that the real ones pass too.
#include "conformance/window_conformance.h"

#include "platform/headless/test_dialogs.h"

#include <string_view>

namespace ostrel {
namespace {

class HeadlessWindowHost {
 public:
  HeadlessWindowHost() {
    platform_.modules.InstallResources(headless::kTestLibraryPath, headless::TestDialogs());
    module_ = platform_.modules.LoadLibraryW(headless::kTestLibraryPath);
    platform_.windows.onDialog = [this](WindowHandle dialog) {
      platform_.windows.Deliver(dialog, kDialogIsOpen, 0, 0);
    };
  }

  Platform& platform() { return platform_.lists; }
  ModuleHandle dialogs() { return module_; }
  void WhenOpen(WindowHandle /*dialog*/) {}
  void Type(WindowHandle dialog, std::int32_t id, std::u16string_view text) {
    static_cast<void>(headless::User(platform_, dialog).Type(id, text));  // it may be refused
  }
  void Choose(WindowHandle dialog, std::int32_t id, std::int32_t row) {
    EXPECT_TRUE(headless::User(platform_, dialog).Choose(id, row));
  }
  void Click(WindowHandle dialog, std::int32_t id) {
    EXPECT_TRUE(headless::User(platform_, dialog).Click(id));
  }
  WindowHandle focus() { return platform_.windows.focus(); }

 private:
  headless::HeadlessPlatform platform_;
  ModuleHandle module_ = nullptr;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, WindowConformance, HeadlessWindowHost);

}  // namespace
}  // namespace ostrel
