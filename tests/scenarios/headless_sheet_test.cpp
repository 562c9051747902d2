// Plays every scenario over the in-memory window system: what the print system's own sheets show,
// this one has to show too.
#include "platform/headless/headless_sheet.h"

#include "config/setting_stores.h"
#include "core/devmode_queries.h"
#include "driver/page_tables.h"
#include "scenarios/scenario_files.h"
#include "support/sheet_scene.h"

#include <cstring>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>

namespace ostrel::scenario {
namespace {

std::int32_t DocumentEntry(SheetInfo* info, std::intptr_t lParam) {
  return DrvDocumentPropertySheets(info, lParam, kDocumentPages);
}

// What a user can't do fails the step.
void Must(bool done, const char* what) {
  if (!done) {
    throw std::runtime_error(what);
  }
}

class HeadlessSheetUnderTest final : public SheetUnderTest {
 public:
  HeadlessSheetUnderTest() {
    world().platform.modules.InstallResources(test::kEnglishLibraryPath,
                                              test::LibraryResources("enus"));
  }

  std::u16string UiText(std::uint32_t id) override {
    const headless::StringTable& texts = test::EnglishStrings();
    const auto text = texts.find(id);
    return text == texts.end() ? u"" : text->second;
  }

  void SelectModel(std::u16string_view model) override {
    world().UserValues(test::kPrinterName)[u"printername"] = headless::StoredValue::Text(model);
  }

  DriverDevmode PrintersRecord() override {
    DriverDevmode record;
    DocumentPropertyHeader header = {};
    header.cbSize = sizeof(header);
    header.hPrinter = scene_.document.hPrinter;
    header.pszPrinterName = scene_.printerName.data();
    header.pdmOut = &record.publicDevmode;
    header.fMode = kDmCopy;
    Must(DocumentPropertiesWithoutDialog(&header) == 1, "the printer has no record");
    return record;
  }

  void SaveFavorite(std::u16string_view name, const DriverDevmode& record) override {
    UIContext context = {};
    context.devmode = record;
    context.publicPointer = &context.devmode.publicDevmode;
    context.privatePointer = &context.devmode.privateDevmode;
    const FavoriteStore store;
    Must(store.Init() && store.Save(std::u16string(name).c_str(), context),
         "a favourite can't be kept");
  }

  void Open(const DriverDevmode& callers, bool noPermission) override {
    scene_.in = callers;
    std::memset(static_cast<void*>(&scene_.out), kOutputPoison, sizeof(scene_.out));
    constexpr std::uint32_t kPromptAndInput = 0x4 | 0x8;  // DM_IN_PROMPT, DM_IN_BUFFER
    scene_.document.fMode = kPromptAndInput | kDmCopy;
    if (noPermission) {
      scene_.document.fMode |= kDmNoPermission;
    }
    sheet_.emplace(world().platform, &DocumentEntry,
                   reinterpret_cast<std::intptr_t>(&scene_.document));
    opened_ = sheet_->Open();
  }

  bool IsOpen() override { return sheet_ && sheet_->isOpen(); }

  void ShowPage(std::u16string_view title) override {
    for (std::size_t index = 0; index < sheet().pageCount(); ++index) {
      if (sheet().page(index).title == title) {
        Must(sheet().ShowPage(index), "the page isn't shown");
        return;
      }
    }
    throw std::runtime_error("the sheet has no such page");
  }

  void Press(SheetButton button) override {
    switch (button) {
      case SheetButton::kOk:
        static_cast<void>(sheet().PressOk());
        break;
      case SheetButton::kApply:
        static_cast<void>(sheet().PressApply());
        break;
      case SheetButton::kCancel:
        static_cast<void>(sheet().PressCancel());
        break;
      case SheetButton::kHelp:
        static_cast<void>(sheet().PressHelp());
        break;
    }
  }

  bool OffersApply() override { return sheet().CanApply(); }

  std::optional<ShownBox> TakeBox() override {
    const auto& boxes = world().platform.windows.boxes;
    if (boxesTaken_ == boxes.size()) {
      return std::nullopt;
    }
    const auto& box = boxes[boxesTaken_++];
    return ShownBox{.title = box.caption, .text = box.text};
  }

  DriverDevmode Input() override { return scene_.in; }
  DriverDevmode Output() override { return scene_.out; }

  bool HasControl(int control) override { return user().Has(control); }
  bool IsChecked(int control) override { return user().Checked(control); }
  bool IsEnabled(int control) override { return user().Enabled(control); }
  bool IsShown(int control) override { return user().Shown(control); }
  std::u16string Text(int control) override { return user().Text(control); }
  int Row(int control) override { return user().Selected(control); }
  std::vector<std::u16string> Rows(int control) override { return user().ItemTexts(control); }
  std::u16string Tooltip(int control) override { return user().HoverTip(control); }
  void Click(int control) override { Must(user().Click(control), "it can't be clicked"); }
  void Type(int control, std::u16string_view text) override {
    Must(user().Type(control, text), "it can't be typed into");
  }
  void Choose(int control, int row) override {
    Must(user().Choose(control, row), "it can't be chosen");
  }
  void Spin(int control, bool up) override {
    Must(up ? user().SpinUp(control) : user().SpinDown(control), "it can't be pressed");
  }
  void Focus(int control) override { Must(user().MoveFocus(control), "it doesn't take the focus"); }
  void Notify(int control) override {
    const headless::User page = user();
    world().platform.windows.Deliver(page.dialog(), kWmCommand,
                                     MakeWords(static_cast<std::uint16_t>(control), kBnClicked),
                                     reinterpret_cast<std::intptr_t>(page.Control(control)));
  }

 private:
  test::TestWorld& world() { return scene_.world; }
  headless::HeadlessSheet& sheet() {
    Must(sheet_ && opened_, "no sheet was opened");
    return *sheet_;
  }
  headless::User user() {
    Must(IsOpen(), "the sheet is closed");
    return sheet_->ActiveUser();
  }

  test::SheetScene scene_{std::vector<std::uint32_t>{}};
  std::optional<headless::HeadlessSheet> sheet_;  // goes first
  bool opened_ = false;
  std::size_t boxesTaken_ = 0;
};

class HeadlessScenario : public testing::TestWithParam<Scenario> {};

TEST_P(HeadlessScenario, GoesAsItIsTold) {
  HeadlessSheetUnderTest sheet;
  EXPECT_EQ(PlayScenario(GetParam(), sheet), "");
}

INSTANTIATE_TEST_SUITE_P(PrintOptions, HeadlessScenario,
                         testing::ValuesIn(ReadScenarios(std::filesystem::path(OSTREL_SCENARIOS) /
                                                         "print_options")),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace ostrel::scenario
