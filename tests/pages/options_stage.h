// A document sheet with the print options page, shown over the in-memory window system with the
// dialog, the texts and the pictures that are shipped.
//
// A test changes the stage before Open (the model, the language library, the caller's record),
// hands Open what the record is to be when the page starts, and then does what a user does. The
// record at each "there is something to apply" is written down.
#pragma once

#include "core/process_state.h"
#include "driver/page_tables.h"
#include "pages/page_links.h"
#include "pages/print_options.h"
#include "platform/headless/control_classes.h"
#include "platform/headless/headless_sheet.h"
#include "support/case_name.h"
#include "support/sheet_scene.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ostrel::test {

inline constexpr std::uint32_t kOptionsDialog = 111;

class OptionsStage;
inline OptionsStage* currentStage = nullptr;

class OptionsStage {
 public:
  using Prepare = std::function<void(UIContext&)>;

  OptionsStage() {
    currentStage = this;
    SelectModel(u"Hazel 2 Series");
  }
  ~OptionsStage() {
    sheet.reset();
    currentStage = nullptr;
  }
  OptionsStage(const OptionsStage&) = delete;
  OptionsStage& operator=(const OptionsStage&) = delete;

  // ---- Before the sheet opens
  void SelectModel(std::u16string_view model) {
    world().UserValues(kPrinterName)[u"printername"] = headless::StoredValue::Text(model);
  }
  // The English library, to be changed before Open.
  headless::Resources language = *LibraryResources("enus");
  headless::DialogTemplate& dialog() { return language.dialogs.at(kOptionsDialog); }
  void RemoveControl(std::int32_t id) {
    std::erase_if(dialog().controls, [id](const auto& control) { return control.id == id; });
  }
  // Adds a control as an older template had it.
  void AddControl(std::int32_t id, const char16_t* className, std::uint32_t style) {
    headless::DialogControl control = dialog().controls.front();
    control.id = id;
    control.className = className;
    control.style = style | headless::kStyleVisible;
    control.title.clear();
    control.titleId = 0;
    dialog().controls.push_back(control);
  }

  // Opens the sheet and shows the page. `prepare` changes the record behind the sheet's opening and
  // before the page starts, so that no repair of a merge comes between.
  [[nodiscard]] bool Open(Prepare prepare = {}) {
    prepare_ = std::move(prepare);
    world().platform.modules.InstallResources(
        kEnglishLibraryPath, std::make_shared<const headless::Resources>(language));
    sheet.emplace(world().platform, &OptionsStage::Entry,
                  reinterpret_cast<std::intptr_t>(&scene.document));
    if (!sheet->Open()) {
      return false;
    }
    WatchChanges();
    speaker_ = page();
    return page() != nullptr;
  }
  // The same without the reload that showing a page brings: what WM_INITDIALOG did stays visible.
  [[nodiscard]] bool OpenStartOnly(Prepare prepare = {}) {
    return Open([prepare = std::move(prepare)](UIContext& made) {
      if (prepare) {
        prepare(made);
      }
      made.activePage = kPrintOptionsPage;
    });
  }

  // ---- The page
  TestWorld& world() { return scene.world; }
  headless::HeadlessWindows& windows() { return world().platform.windows; }
  headless::HeadlessGraphics& graphics() { return world().platform.graphics; }
  headless::User user() { return sheet->UserOf(kOptionsDialog); }
  WindowHandle page() { return user().dialog(); }
  WindowHandle Item(std::int32_t id) { return user().Control(id); }
  UIContext& context() { return *reinterpret_cast<UIContext*>(sheet->info().UserData); }
  PublicDevmode& shared() { return *context().publicPointer; }
  PrivateDevmode& own() { return *context().privatePointer; }
  std::u16string favorite() { return own().FavoriteName; }
  void SetFavorite(std::u16string_view name) { NameRecord(context(), name); }
  static void NameRecord(UIContext& context, std::u16string_view name) {
    auto& field = context.privatePointer->FavoriteName;
    std::ranges::fill(field, u'\0');
    std::ranges::copy(name, field);
  }

  std::intptr_t Send(std::uint32_t message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0) {
    return windows().Deliver(page(), message, wParam, lParam);
  }
  // WM_COMMAND, whatever the control's state is.
  void Command(std::int32_t id, std::uint16_t code = kBnClicked) {
    Send(kWmCommand, MakeWords(static_cast<std::uint16_t>(id), code),
         reinterpret_cast<std::intptr_t>(Item(id)));
  }
  std::intptr_t Notify(std::uint32_t code) {
    SheetNotify note = {};
    note.hdr = {sheet->window(), 0, code};
    return Send(kWmNotify, 0, reinterpret_cast<std::intptr_t>(&note));
  }
  // What the procedure itself answers.
  std::intptr_t CallProcedure(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
    return PrintOptionsPageProcedure(page(), message, wParam, lParam);
  }
  std::intptr_t NotifyProcedure(std::uint32_t code) {
    SheetNotify note = {};
    note.hdr = {sheet->window(), 0, code};
    return CallProcedure(kWmNotify, 0, reinterpret_cast<std::intptr_t>(&note));
  }
  // Another page has changed the record: this one shows it once more.
  void ShowAgain() {
    context().activePage = kJobPinPage;
    Notify(kPsnSetActive);
  }
  // What a tooltip gets when it asks for a control's text, whether the control is shown or not.
  std::u16string AskTip(std::int32_t id) {
    NotifyTooltipText question = {};
    question.hdr = {nullptr, reinterpret_cast<std::uintptr_t>(Item(id)), kTtnGetDispInfo};
    question.lpszText = question.szText;
    question.szText[0] = u'#';
    Send(kWmNotify, 0, reinterpret_cast<std::intptr_t>(&question));
    return question.lpszText == nullptr ? u"(null)" : question.lpszText;
  }

  // ---- What was seen
  // The record at each change told to the sheet.
  std::vector<DriverDevmode> changes;
  std::function<void()> onChange;  // called then, too
  // Whose changes they are to be; the page's own unless told otherwise.
  void ExpectChangesFrom(WindowHandle page) { speaker_ = page; }
  // What the sheet was told since the last call, of the page's own messages.
  std::size_t TakeChanges() { return std::exchange(changes, {}).size(); }
  const std::vector<headless::HeadlessWindows::Box>& boxes() { return windows().boxes; }

  // A message to a control of the page.
  struct Sent {
    std::uint32_t message;
    std::uintptr_t wParam;
    std::intptr_t lParam;
    bool operator==(const Sent&) const = default;
  };
  // Writes down the messages to a window from now on; they are answered all the same. The list
  // lives as long as the stage.
  std::vector<Sent>& Watch(WindowHandle window) {
    std::vector<Sent>& into = watched_.emplace_back();
    windows().Find(window)->answerer =
        [this, window, &into](std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
          into.push_back({message, wParam, lParam});
          return headless::AnswerControlMessage(windows(), window, message, wParam, lParam);
        };
    return into;
  }

  // The bitmap that the duplex picture shows.
  std::uint32_t DuplexPicture() { return user().Image(1453); }

  static std::u16string Text(std::uint32_t id) { return EnglishStrings().at(id); }

  SheetScene scene{std::vector<std::uint32_t>{}};
  std::optional<headless::HeadlessSheet> sheet;

 private:
  static std::int32_t Entry(SheetInfo* info, std::intptr_t lParam) {
    const std::int32_t answer = DrvDocumentPropertySheets(info, lParam, kDocumentPages);
    if (info->Reason == kReasonInit && answer > 0 && currentStage->prepare_) {
      currentStage->prepare_(*reinterpret_cast<UIContext*>(info->UserData));
    }
    return answer;
  }
  void WatchChanges() {
    headless::Window* window = windows().Find(sheet->window());
    window->answerer = [this, before = window->answerer](
                           std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
      if (message == kPsmChanged) {
        EXPECT_EQ(wParam, reinterpret_cast<std::uintptr_t>(speaker_));
        changes.push_back(context().devmode);
        if (onChange) {
          onChange();
        }
      }
      return before(message, wParam, lParam);
    };
  }

  Prepare prepare_;
  WindowHandle speaker_ = nullptr;
  std::deque<std::vector<Sent>> watched_;
};

// Papers with and without rows, for the tables of two-sided printing.
struct PaperCase {
  std::int16_t paper;
  bool twoSided;  // whether its row allows it; true for a paper without a row
  bool hasRow;
};
inline constexpr PaperCase kPaperCases[] = {
    {1, true, true},
    {9, true, true},
    {5, true, true},
    {13, false, true},
    {37, false, true},
    {27, false, true},
    {28, false, true},
    {20, false, true},
    {11, false, true},
    {43, false, true},
    {250, false, true},
    {245, false, true},
    {252, false, true},
    {246, false, true},
    {70, false, true},
    {34, false, true},
    {7, false, true},
    {14, true, true},
    {243, true, true},
    {6, false, true},
    {31, false, true},
    {242, false, true},
    {241, false, true},
    {276, false, true},
    {277, false, true},
    {278, false, true},
    {279, false, true},
    {280, false, true},
    // The user's own, at both ends of the two ranges, and ids that nobody has.
    {288, true, false},
    {308, true, false},
    {309, true, false},
    {319, true, false},
    {287, true, false},
    {320, true, false},
    {0, true, false},
    {-1, true, false},
    {511, true, false},
    {512, true, false},
    {32767, true, false},
};
inline bool IsRuleCustomPaper(std::int16_t paper) {
  return paper >= 288 && paper <= 308;
}
struct PaperCaseName {
  std::string operator()(const testing::TestParamInfo<PaperCase>& row) const {
    const int paper = row.param.paper;
    return paper < 0 ? "Minus" + std::to_string(-paper) : "Paper" + std::to_string(paper);
  }
};
inline void PrintTo(const PaperCase& row, std::ostream* out) {
  *out << row.paper;
}

}  // namespace ostrel::test
