// Plays the common property sheet: calls a sheet entry with the reasons of its protocol, takes the
// pages that it adds, makes their dialogs when they are first shown, and does what the user asks of
// the sheet. All that happens between it, the entry and the pages is written down as data.
//
//   HeadlessSheet sheet(platform, &Entry, headerParam);
//   ASSERT_TRUE(sheet.Open());
//   User user = sheet.UserOf(111);
//   ...
//   EXPECT_TRUE(sheet.PressOk());
#pragma once

#include "platform/headless/headless_platform.h"
#include "platform/headless/user.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ostrel::headless {

// When the entry gets reason 3, set result.
enum class ResultManner {
  // After OK, when the pages are gone and before reason 2, with the result that function 9 left or
  // 1
  // when there was none.
  kAtClose,
  // Inside function 9, once for each call of it. What the entry then sets by function 9 is kept
  // without a further reason 3.
  kAtOnce,
  // Never; function 9 does nothing and answers 0, and reason 1 doesn't come either. So some
  // print systems do.
  kNever,
};

class HeadlessSheet {
 public:
  using Entry = std::int32_t (*)(SheetInfo* info, std::intptr_t lParam);

  HeadlessSheet(HeadlessPlatform& platform, Entry entry, std::intptr_t headerParam,
                ResultManner manner = ResultManner::kAtClose);
  // Takes an open sheet down without a word to its pages; the entry gets reason 2.
  ~HeadlessSheet();
  HeadlessSheet(const HeadlessSheet&) = delete;
  HeadlessSheet& operator=(const HeadlessSheet&) = delete;

  // Fails the n-th adding of a page from now on, counted from 1. 0 fails none.
  void FailAdd(std::size_t n) { addsUntilFailure_ = n; }

  // Runs reasons 0 and 1 and shows the first page that lets itself be shown. False when the entry
  // refuses, which ends the protocol, or when it added no page, in which case reason 2 follows.
  [[nodiscard]] bool Open();
  bool isOpen() const { return isOpen_; }

  // ---- What the user does. All fail when the sheet isn't open.

  // Goes to another page. The one left may keep the user, the one gone to may refuse him.
  [[nodiscard]] bool ShowPage(std::size_t index);
  [[nodiscard]] bool ShowPageOf(std::uint32_t dialogId);
  // False when a page keeps the sheet open.
  [[nodiscard]] bool PressOk();
  // False when a page refuses, or when nothing was changed and the button isn't live.
  [[nodiscard]] bool PressApply();
  [[nodiscard]] bool PressCancel();
  [[nodiscard]] bool PressHelp();

  // ---- What the user sees

  struct Page {
    SheetPage copy = {};        // what the page's procedure and callback get
    std::u16string title = {};  // as the tab shows it
    std::uint32_t dialogId = 0;
    WindowHandle window = nullptr;  // null until it was shown
    bool changed = false;
  };
  std::size_t pageCount() const { return pages_.size(); }
  const Page& page(std::size_t index) const { return *pages_.at(index); }
  std::size_t activePage() const { return active_; }
  std::optional<std::size_t> PageOf(std::uint32_t dialogId) const;
  // In front of a page that was shown.
  User UserOf(std::uint32_t dialogId);
  User ActiveUser() { return {platform_, pages_.at(active_)->window}; }
  bool CanApply() const { return isOpen_ && canApply_; }
  const std::u16string& caption() const { return caption_; }

  WindowHandle window() const { return window_; }
  const SheetInfo& info() const { return info_; }
  const SheetInfoHeader& header() const { return header_; }
  // What the entry left in the sheet's result.
  std::uintptr_t result() const { return info_.Result; }

  // What happened, in order of its beginning: "reason 0 -> 1", "add 111 -> 1", "addref 111",
  // "create 111", "init 111", "setactive 111 -> 0", "show 111", "hide 111", "killactive 111 -> 0",
  // "apply 111 -> 0", "querycancel 111 -> 0", "reset 111 -> 0", "help 111 -> 0", "changed 111",
  // "unchanged 111" (0 for a window that isn't a page's), "destroy 111", "release 111", "set result
  // 1 -> 1".
  std::vector<std::string> log;

 private:
  static std::intptr_t Function(SheetHandle sheet, std::uint32_t function, std::intptr_t param1,
                                std::intptr_t param2);
  std::intptr_t AddPage(const SheetPage* page);
  std::intptr_t AddCheckedPage(const SheetPage& page);
  std::intptr_t SetResult(std::intptr_t result);
  std::int32_t Call(SheetReason reason, std::intptr_t lParam);
  std::int32_t CallWithResult(std::intptr_t result);
  void AskForHeader();
  std::intptr_t AnswerMessage(std::uint32_t message, std::uintptr_t wParam);
  void MarkPage(std::uintptr_t window, bool changed);
  bool Make(Page& page);
  std::intptr_t Notify(Page& page, std::uint32_t code, const char* name, std::intptr_t lParam);
  std::uint32_t CallBack(Page& page, SheetPageMessage message, const char* name);
  bool Activate(std::size_t index);
  bool ApplyPages(bool closing);
  void Close(bool accepted);
  void Log(const char* what, const Page& page);
  void LogBefore(std::size_t place, const std::string& what, std::intptr_t answer);

  HeadlessPlatform& platform_;
  Entry entry_;
  std::intptr_t headerParam_;
  ResultManner manner_;
  SheetInfo info_ = {};
  SheetInfoHeader header_ = {};
  std::u16string caption_;
  std::vector<std::unique_ptr<Page>> pages_;  // their places are what pages and callbacks get
  WindowHandle window_ = nullptr;
  std::size_t active_ = 0;
  std::size_t addsUntilFailure_ = 0;
  std::intptr_t keptResult_ = 1;
  bool settingResult_ = false;
  bool isOpen_ = false;
  bool hasActive_ = false;
  bool canApply_ = false;
};

}  // namespace ostrel::headless
