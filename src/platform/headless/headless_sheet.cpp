#include "platform/headless/headless_sheet.h"

#include "platform/headless/names.h"

#include <algorithm>
#include <cstring>

namespace ostrel::headless {
namespace {

constexpr Rect kSheetPlace = {100, 80, 600, 600};  // in pixels of the screen
// What tells reason 2 that the sheet was accepted, where the platform tells nothing else.
constexpr std::intptr_t kAlwaysAccepted = 0x100;

// A small number in the place of a pointer is a resource's id.
bool IsId(const char16_t* name) {
  return NumberOf(name) <= 0xFFFF;
}

}  // namespace

HeadlessSheet::HeadlessSheet(HeadlessPlatform& platform, Entry entry, std::intptr_t headerParam,
                             ResultManner manner)
    : platform_(platform), entry_(entry), headerParam_(headerParam), manner_(manner) {
  constexpr std::uint16_t kVersion = 0x0100;  // PROPSHEETUI_INFO_VERSION
  info_.cbSize = sizeof(info_);
  info_.Version = kVersion;
  info_.hComPropSheet = reinterpret_cast<SheetHandle>(this);
  info_.pfnComPropSheet = &HeadlessSheet::Function;
  info_.lParamInit = headerParam;
}

HeadlessSheet::~HeadlessSheet() {
  if (isOpen_) {
    Close(false);
  }
}

void HeadlessSheet::Log(const char* what, const Page& page) {
  log.push_back(std::string(what) + ' ' + std::to_string(page.dialogId));
}

// ---- The entry's side ---------------------------------------------------------------------------

// What happens within a call stands behind it in the log.
void HeadlessSheet::LogBefore(std::size_t place, const std::string& what, std::intptr_t answer) {
  log.insert(log.begin() + static_cast<std::ptrdiff_t>(place),
             what + " -> " + std::to_string(answer));
}

std::int32_t HeadlessSheet::Call(SheetReason reason, std::intptr_t lParam) {
  const std::size_t place = log.size();
  info_.Reason = reason;
  const std::int32_t answer = entry_(&info_, lParam);
  LogBefore(place, "reason " + std::to_string(reason), answer);
  return answer;
}

std::int32_t HeadlessSheet::CallWithResult(std::intptr_t result) {
  SetResultInfo given = {};
  given.cbSize = sizeof(given);
  given.Result = result;
  settingResult_ = true;
  const std::int32_t answer = Call(kReasonSetResult, reinterpret_cast<std::intptr_t>(&given));
  settingResult_ = false;
  return answer;
}

std::intptr_t HeadlessSheet::Function(SheetHandle sheet, std::uint32_t function,
                                      std::intptr_t param1, std::intptr_t param2) {
  auto* self = reinterpret_cast<HeadlessSheet*>(sheet);
  switch (function) {
    case kSheetAddPage:
      return self->AddPage(PointerIn<const SheetPage>(param1));
    case kSheetSetResult:
      return self->SetResult(param2);
    default:
      self->LogBefore(self->log.size(), "function " + std::to_string(function), 0);
      return 0;
  }
}

std::intptr_t HeadlessSheet::AddPage(const SheetPage* page) {
  constexpr std::uint32_t kLeastBytes = offsetof(SheetPage, pszHeaderTitle);  // the first version
  constexpr std::uint32_t kMostBytes = sizeof(SheetPage) + sizeof(void*);     // the newest one
  const std::size_t place = log.size();
  const bool fails = addsUntilFailure_ != 0 && --addsUntilFailure_ == 0;
  const bool good = page != nullptr && page->dwSize >= kLeastBytes && page->dwSize <= kMostBytes;
  const std::intptr_t answer = fails || !good ? 0 : AddCheckedPage(*page);
  const std::uintptr_t dialogId = page == nullptr ? 0 : NumberOf(page->pszTemplate);
  LogBefore(place, "add " + std::to_string(dialogId), answer);
  return answer;
}

std::intptr_t HeadlessSheet::AddCheckedPage(const SheetPage& page) {
  auto added = std::make_unique<Page>();
  const std::uint32_t bytes = std::min<std::uint32_t>(page.dwSize, sizeof(SheetPage));
  std::memcpy(&added->copy, &page, bytes);
  added->copy.dwSize = bytes;
  added->dialogId = static_cast<std::uint32_t>(NumberOf(page.pszTemplate));
  const Resources* resources = platform_.modules.ResourcesOf(page.hInstance);
  if (resources != nullptr && resources->dialogs.contains(added->dialogId)) {
    added->title = resources->dialogs.at(added->dialogId).title;
  }
  if ((page.dwFlags & kPspUseTitle) != 0) {
    if (!IsId(page.pszTitle)) {
      added->title = page.pszTitle;
    } else if (resources != nullptr) {
      const auto text =
          resources->strings.find(static_cast<std::uint32_t>(NumberOf(page.pszTitle)));
      added->title = text == resources->strings.end() ? u"" : text->second;
    }
    added->copy.pszTitle = added->title.c_str();
  }
  CallBack(*added, kPspcbAddRef, "addref");
  pages_.push_back(std::move(added));
  return static_cast<std::intptr_t>(pages_.size());
}

std::intptr_t HeadlessSheet::SetResult(std::intptr_t result) {
  const std::size_t place = log.size();
  std::intptr_t answer = 0;
  if (manner_ != ResultManner::kNever) {
    keptResult_ = result;
    answer = 1;
  }
  if (manner_ == ResultManner::kAtOnce && !settingResult_) {
    answer = CallWithResult(result) > 0 ? 1 : 0;
  }
  LogBefore(place, "set result " + std::to_string(result), answer);
  return answer;
}

void HeadlessSheet::AskForHeader() {
  header_ = {};
  header_.cbSize = sizeof(header_);
  if (manner_ != ResultManner::kNever) {
    Call(kReasonGetHeader, reinterpret_cast<std::intptr_t>(&header_));
  }
  if (header_.pTitle != nullptr) {
    caption_ = IsId(header_.pTitle) ? u"" : header_.pTitle;
  }
}

// ---- The pages' side ----------------------------------------------------------------------------

std::uint32_t HeadlessSheet::CallBack(Page& page, SheetPageMessage message, const char* name) {
  if ((page.copy.dwFlags & kPspUseCallback) == 0 || page.copy.pfnCallback == nullptr) {
    return 1;
  }
  Log(name, page);
  return page.copy.pfnCallback(nullptr, message, &page.copy);
}

// The dialog of a page is made when the page is first shown. The page's callback may forbid it.
bool HeadlessSheet::Make(Page& page) {
  if (page.window != nullptr) {
    return true;
  }
  if (CallBack(page, kPspcbCreate, "create") == 0) {
    return false;
  }
  Log("init", page);
  page.window = platform_.windows.CreateDialogWindow(
      page.copy.hInstance, page.dialogId, window_, page.copy.pfnDlgProc,
      reinterpret_cast<std::intptr_t>(&page.copy), true);
  return page.window != nullptr;
}

std::intptr_t HeadlessSheet::Notify(Page& page, std::uint32_t code, const char* name,
                                    std::intptr_t lParam) {
  SheetNotify note = {};
  note.hdr = {window_, 0, code};
  note.lParam = lParam;
  const std::size_t place = log.size();
  const std::intptr_t answer =
      platform_.windows.Deliver(page.window, kWmNotify, 0, reinterpret_cast<std::intptr_t>(&note));
  LogBefore(place, std::string(name) + ' ' + std::to_string(page.dialogId), answer);
  return answer;
}

// Any page's word makes the Apply button live; it is dead again when no page that spoke for itself
// is changed.
void HeadlessSheet::MarkPage(std::uintptr_t window, bool changed) {
  std::uint32_t dialogId = 0;
  for (const std::unique_ptr<Page>& page : pages_) {
    if (page->window != nullptr && NumberOf(page->window) == window) {
      page->changed = changed;
      dialogId = page->dialogId;
    }
  }
  log.push_back((changed ? "changed " : "unchanged ") + std::to_string(dialogId));
  canApply_ =
      changed || std::ranges::any_of(pages_, [](const auto& page) { return page->changed; });
}

// The window of the page that means it comes in the message's word.
std::intptr_t HeadlessSheet::AnswerMessage(std::uint32_t message, std::uintptr_t wParam) {
  if (message == kPsmChanged || message == kPsmUnchanged) {
    MarkPage(wParam, message == kPsmChanged);
  }
  return 0;
}

// Shows a page in place of the one that is shown, which has agreed already.
bool HeadlessSheet::Activate(std::size_t index) {
  Page& page = *pages_[index];
  if (!Make(page) || Notify(page, kPsnSetActive, "setactive", 0) != 0) {
    return false;
  }
  if (hasActive_ && active_ != index) {
    Log("hide", *pages_[active_]);
    platform_.windows.Show(pages_[active_]->window, false);
  }
  if (!hasActive_ || active_ != index) {
    Log("show", page);
    platform_.windows.Show(page.window, true);
  }
  active_ = index;
  hasActive_ = true;
  return true;
}

// ---- The user's side ----------------------------------------------------------------------------

bool HeadlessSheet::Open() {
  if (isOpen_ || Call(kReasonInit, headerParam_) <= 0) {
    return false;
  }
  AskForHeader();
  isOpen_ = true;
  window_ = platform_.windows.CreatePlayedWindow(
      kSheetPlace, [this](std::uint32_t message, std::uintptr_t wParam, std::intptr_t /*lParam*/) {
        return AnswerMessage(message, wParam);
      });
  for (std::size_t index = 0; index < pages_.size(); ++index) {
    if (Activate(index)) {
      return true;
    }
  }
  Close(false);
  return false;
}

std::optional<std::size_t> HeadlessSheet::PageOf(std::uint32_t dialogId) const {
  const auto page =
      std::ranges::find_if(pages_, [dialogId](const std::unique_ptr<Page>& candidate) {
        return candidate->dialogId == dialogId;
      });
  return page == pages_.end() ? std::nullopt : std::optional(std::size_t(page - pages_.begin()));
}

User HeadlessSheet::UserOf(std::uint32_t dialogId) {
  const std::optional<std::size_t> index = PageOf(dialogId);
  return {platform_, index ? pages_[*index]->window : nullptr};
}

bool HeadlessSheet::ShowPage(std::size_t index) {
  if (!isOpen_ || index >= pages_.size()) {
    return false;
  }
  if (index == active_) {
    return true;
  }
  if (Notify(*pages_[active_], kPsnKillActive, "killactive", 0) != 0) {
    return false;
  }
  return Activate(index);
}

bool HeadlessSheet::ShowPageOf(std::uint32_t dialogId) {
  const std::optional<std::size_t> index = PageOf(dialogId);
  return index && ShowPage(*index);
}

// The page that refuses with PSNRET_INVALID is shown; any other refusal leaves the pages as they
// are.
bool HeadlessSheet::ApplyPages(bool closing) {
  constexpr std::intptr_t kInvalid = 1;  // PSNRET_INVALID
  if (Notify(*pages_[active_], kPsnKillActive, "killactive", 0) != 0) {
    return false;
  }
  for (std::size_t index = 0; index < pages_.size(); ++index) {
    if (pages_[index]->window == nullptr) {
      continue;  // never shown, so nothing can be wrong with it
    }
    const std::intptr_t answer = Notify(*pages_[index], kPsnApply, "apply", closing ? 1 : 0);
    if (answer == kInvalid) {
      Activate(index);
    }
    if (answer != 0) {
      return false;
    }
  }
  return true;
}

bool HeadlessSheet::PressOk() {
  if (!isOpen_ || !ApplyPages(true)) {
    return false;
  }
  Close(true);
  return true;
}

bool HeadlessSheet::PressApply() {
  if (!isOpen_ || !canApply_ || !ApplyPages(false)) {
    return false;
  }
  for (const std::unique_ptr<Page>& page : pages_) {
    page->changed = false;
  }
  canApply_ = false;
  Notify(*pages_[active_], kPsnSetActive, "setactive", 0);
  return true;
}

bool HeadlessSheet::PressCancel() {
  if (!isOpen_ || Notify(*pages_[active_], kPsnQueryCancel, "querycancel", 0) != 0) {
    return false;
  }
  for (const std::unique_ptr<Page>& page : pages_) {
    if (page->window != nullptr) {
      Notify(*page, kPsnReset, "reset", 0);
    }
  }
  Close(false);
  return true;
}

bool HeadlessSheet::PressHelp() {
  if (!isOpen_ || (pages_[active_]->copy.dwFlags & kPspHasHelp) == 0) {
    return false;
  }
  Notify(*pages_[active_], kPsnHelp, "help", 0);
  return true;
}

// Each page goes with its dialog first and its callback's release behind.
void HeadlessSheet::Close(bool accepted) {
  isOpen_ = false;
  for (const std::unique_ptr<Page>& page : pages_) {
    if (page->window != nullptr) {
      Log("destroy", *page);
      platform_.windows.Destroy(page->window);
      page->window = nullptr;
    }
    CallBack(*page, kPspcbRelease, "release");
  }
  platform_.windows.Destroy(window_);
  window_ = nullptr;
  if (accepted && manner_ == ResultManner::kAtClose) {
    CallWithResult(keptResult_);
  }
  Call(kReasonDestroy, manner_ == ResultManner::kNever ? kAlwaysAccepted : std::intptr_t{accepted});
}

}  // namespace ostrel::headless
