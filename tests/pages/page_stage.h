// A document sheet with one page or several, shown over the in-memory window system with the
// dialogs, the texts and the pictures that are shipped.
//
// A test changes the stage before Open (the model, the language library, the caller's record),
// hands Open what the record is to be when the page starts, and then does what a user does. The
// record at each "there is something to apply" is written down.
#pragma once

#include "core/process_state.h"
#include "driver/page_tables.h"
#include "pages/page_links.h"
#include "platform/headless/control_classes.h"
#include "platform/headless/headless_sheet.h"
#include "support/sheet_scene.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ostrel::test {

// A page, and what the stage has to know of it.
struct StagedPage {
  std::uint32_t dialogId;
  std::uint32_t number;  // as activePage counts
  DialogProcedure procedure;
};

class PageStage;
inline PageStage* currentStage = nullptr;

class PageStage {
 public:
  using Prepare = std::function<void(UIContext&)>;

  explicit PageStage(const StagedPage& own) : staged_(own) {
    currentStage = this;
    SelectModel(u"Hazel 2 Series");
  }
  ~PageStage() {
    sheet.reset();
    currentStage = nullptr;
  }
  PageStage(const PageStage&) = delete;
  PageStage& operator=(const PageStage&) = delete;

  // ---- Before the sheet opens
  void SelectModel(std::u16string_view model) {
    world().UserValues(kPrinterName)[u"printername"] = headless::StoredValue::Text(model);
  }
  // The English library, to be changed before Open.
  headless::Resources language = *LibraryResources("enus");
  headless::DialogTemplate& dialog() { return language.dialogs.at(staged_.dialogId); }
  // Whether the sheet has the other pages too. They are left out unless a test wants them.
  bool withOtherPages = false;
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
    if (!withOtherPages) {
      for (const SheetPageRow& row : kDocumentPages) {
        if (row.dialogId != staged_.dialogId) {
          language.dialogs.erase(row.dialogId);
          language.entries.erase({kResourceDialog, row.dialogId});
        }
      }
    }
    world().platform.modules.InstallResources(
        kEnglishLibraryPath, std::make_shared<const headless::Resources>(language));
    sheet.emplace(world().platform, &PageStage::Entry,
                  reinterpret_cast<std::intptr_t>(&scene.document));
    if (!sheet->Open() || !sheet->ShowPageOf(staged_.dialogId)) {
      return false;
    }
    WatchChanges();
    speaker_ = page();
    return page() != nullptr;
  }
  // The same without the reload that showing a page brings: what WM_INITDIALOG did stays visible.
  [[nodiscard]] bool OpenStartOnly(Prepare prepare = {}) {
    return Open([this, prepare = std::move(prepare)](UIContext& made) {
      if (prepare) {
        prepare(made);
      }
      made.activePage = staged_.number;
    });
  }

  // ---- The page
  TestWorld& world() { return scene.world; }
  headless::HeadlessWindows& windows() { return world().platform.windows; }
  headless::HeadlessGraphics& graphics() { return world().platform.graphics; }
  headless::User user() { return sheet->UserOf(staged_.dialogId); }
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
    return staged_.procedure(page(), message, wParam, lParam);
  }
  std::intptr_t NotifyProcedure(std::uint32_t code) {
    SheetNotify note = {};
    note.hdr = {sheet->window(), 0, code};
    return CallProcedure(kWmNotify, 0, reinterpret_cast<std::intptr_t>(&note));
  }
  // WM_HELP of a control.
  void AskHelp(std::int32_t id) {
    HelpInfo question = {};
    question.cbSize = sizeof(question);
    question.iContextType = 1;  // HELPINFO_WINDOW
    question.iCtrlId = id;
    Send(kWmHelp, 0, reinterpret_cast<std::intptr_t>(&question));
  }
  // Asks for the help of each control: it opens at the topic that stands beside it, and not at all
  // where that is 0.
  void ExpectHelpTopics(const std::map<std::int32_t, std::uint32_t>& topics) {
    auto& help = world().platform.shell.help;
    for (const auto& [control, topic] : topics) {
      help.clear();
      AskHelp(control);
      ASSERT_EQ(help.size(), topic == 0 ? 0U : 1U) << control;
      if (topic != 0) {
        EXPECT_EQ(help[0].data, topic) << control;
        EXPECT_EQ(help[0].command, 15U) << control;  // HH_HELP_CONTEXT
      }
    }
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

  StagedPage staged_;
  Prepare prepare_;
  WindowHandle speaker_ = nullptr;
  std::deque<std::vector<Sent>> watched_;
};

}  // namespace ostrel::test
