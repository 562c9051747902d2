// Plays every scenario over the in-memory window system: what the print system's own sheets show,
// this one has to show too.
#include "platform/headless/headless_sheet.h"

#include "config/setting_stores.h"
#include "core/devmode_queries.h"
#include "core/paper_tables.h"
#include "core/printer_store.h"
#include "driver/page_tables.h"
#include "scenarios/scenario_files.h"
#include "support/sheet_scene.h"

#include <algorithm>
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

struct LanguageRow {
  std::string_view suffix;
  std::uint16_t uiLanguage;
};
constexpr int kIdYes = 6;  // IDYES
constexpr int kIdNo = 7;   // IDNO

constexpr LanguageRow kLanguages[] = {{"enus", 0x0409}, {"de", 0x0407}, {"he", 0x040D}};

class HeadlessSheetUnderTest final : public SheetUnderTest {
 public:
  HeadlessSheetUnderTest() {
    world().platform.modules.InstallResources(test::kEnglishLibraryPath,
                                              test::LibraryResources("enus"));
    world().platform.windows.onDialog = [this](WindowHandle dialog) {
      dialogs_.push_back(dialog);
      playDialog_();
      dialogs_.pop_back();
    };
  }

  void BeUser(const UserKind& user) override {
    const auto* row = std::ranges::find(kLanguages, user.language, &LanguageRow::suffix);
    Must(row != std::end(kLanguages), "there is no such language");
    language_ = user.language;
    const std::u16string library = test::kLibraryPath;
    const std::u16string suffix(language_.begin(), language_.end());
    world().platform.modules.InstallResources(
        library.substr(0, library.rfind(u'.')) + suffix + u".dll",
        test::LibraryResources(language_));
    world().platform.locale.uiLanguage = row->uiLanguage;
    const std::string country = std::to_string(user.country);
    world().platform.locale.country.assign(country.begin(), country.end());
  }

  int HomePaper() override { return PaperOfLocale().id; }

  std::u16string UiText(std::uint32_t id) override {
    const headless::StringTable& texts = test::Strings(language_);
    const auto text = texts.find(id);
    return text == texts.end() ? u"" : text->second;
  }

  void SelectModel(std::u16string_view model) override {
    world().UserValues(test::kPrinterName)[u"printername"] = headless::StoredValue::Text(model);
  }

  void FitTrays(int count) override {
    Must(WriteTrayBlock(scene_.document.hPrinter,
                        {{count > 0 ? kTrayFitted : 0U, count > 1 ? kTrayFitted : 0U}}),
         "trays can't be fitted");
  }

  void StorePaper(const CustomPaperRecord& paper) override {
    const CustomPaperStore store;
    Must(InitSettingsFile() && store.Save(paper.Name, paper), "a paper can't be kept");
  }

  std::optional<CustomPaperRecord> StoredPaper(std::u16string_view name) override {
    const CustomPaperStore store;
    CustomPaperRecord paper = {};
    return store.Read(std::u16string(name).c_str(), paper) ? std::optional(paper) : std::nullopt;
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
        static_cast<void>(sheet().ShowPage(index));
        return;
      }
    }
    throw std::runtime_error("the sheet has no such page");
  }

  void Press(SheetButton button) override {
    if (OpenDialogs() > 0) {
      world().platform.windows.Deliver(
          user().dialog(), kWmCommand,
          static_cast<std::uintptr_t>(button == SheetButton::kOk ? kIdOk : kIdCancel), 0);
      return;
    }
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

  void AnswerNext(BoxAnswer answer) override {
    world().platform.windows.answers.push_back(answer == BoxAnswer::kYes  ? kIdYes
                                               : answer == BoxAnswer::kNo ? kIdNo
                                                                          : kIdOk);
  }

  void OnDialog(std::function<void()> play) override { playDialog_ = std::move(play); }

  int OpenDialogs() override {
    return static_cast<int>(std::ranges::count_if(dialogs_, [this](WindowHandle dialog) {
      return world().platform.windows.IsOpenDialog(dialog);
    }));
  }

  std::u16string DialogTitle() override {
    return world().platform.windows.TextOf(*world().platform.windows.Find(user().dialog()));
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
  int FocusedControl() override { return user().Focus(); }
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
    if (OpenDialogs() > 0) {
      return {world().platform, dialogs_.back()};
    }
    return sheet_->ActiveUser();
  }

  test::SheetScene scene_{std::vector<std::uint32_t>{}};
  std::optional<headless::HeadlessSheet> sheet_;  // goes first
  std::string language_ = "enus";
  std::function<void()> playDialog_ = [] {};
  std::vector<WindowHandle> dialogs_;  // those that are open, the topmost one last
  bool opened_ = false;
  std::size_t boxesTaken_ = 0;
};

class HeadlessScenario : public testing::TestWithParam<Scenario> {};

TEST_P(HeadlessScenario, GoesAsItIsTold) {
  HeadlessSheetUnderTest sheet;
  EXPECT_EQ(PlayScenario(GetParam(), sheet), "");
}

auto ScenariosOf(const char* folder) {
  return testing::ValuesIn(ReadScenarios(std::filesystem::path(OSTREL_SCENARIOS) / folder));
}

const auto kNameOfScenario = [](const auto& row) { return row.param.name; };

INSTANTIATE_TEST_SUITE_P(PrintOptions, HeadlessScenario, ScenariosOf("print_options"),
                         kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(Paper, HeadlessScenario, ScenariosOf("paper"), kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(Layout, HeadlessScenario, ScenariosOf("layout"), kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(CustomPapers, HeadlessScenario, ScenariosOf("custom_papers"),
                         kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(BookletCover, HeadlessScenario, ScenariosOf("booklet_cover"),
                         kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(AcrossPages, HeadlessScenario, ScenariosOf("across_pages"),
                         kNameOfScenario);

}  // namespace
}  // namespace ostrel::scenario
