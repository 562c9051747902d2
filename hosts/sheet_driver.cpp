#include "sheet_driver.h"

#include "print_system_setup.h"

#include <windows.h>
#include <commctrl.h>
#include <prsht.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace ostrel::print_system {
namespace {

constexpr DWORD kAnswerLimit_ms = 10000;
constexpr DWORD kOpeningLimit_ms = 30000;
constexpr DWORD kClosingLimit_ms = 5000;
constexpr DWORD kPoll_ms = 2;

constexpr wchar_t kDialogClass[] = L"#32770";
constexpr int kApplyButton = 0x3021;
constexpr int kBoxText = 0xFFFF;
constexpr int kBoxIcon = 1088;

// Behind all messages that were posted before: whoever takes it off the queue has dealt with these.
constexpr UINT kBarrier = WM_APP + 0x3A1;

LRESULT CALLBACK WatchQueue(int code, WPARAM wParam, LPARAM lParam) {
  if (code == HC_ACTION && wParam == PM_REMOVE) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a hook gets its message this way.
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    if (message->hwnd == nullptr && message->message == kBarrier) {
      // NOLINTNEXTLINE(performance-no-int-to-ptr): the event that Settle waits for.
      SetEvent(reinterpret_cast<HANDLE>(message->wParam));
    }
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

struct WindowSearch {
  const wchar_t* className;
  std::vector<HWND> found;
};

BOOL CALLBACK CollectWindow(HWND window, LPARAM lParam) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): an enumeration passes its data this way.
  auto* search = reinterpret_cast<WindowSearch*>(lParam);
  if (ClassOf(window) == search->className) {
    search->found.push_back(window);
  }
  return TRUE;
}

LPARAM PointAt(int x, int y) {
  return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

}  // namespace

struct SheetDriver::Call {
  std::function<LONG()> show;
  LONG result = 0;
  std::string failure;

  static DWORD WINAPI Run(void* own) {
    const std::unique_ptr<std::shared_ptr<Call>> call(static_cast<std::shared_ptr<Call>*>(own));
    try {
      (*call)->result = (*call)->show();
    } catch (const std::exception& failure) {
      (*call)->failure = failure.what();
    }
    return 0;
  }
};

// ---- From the opening to the end ----------------------------------------------------------------

SheetDriver::SheetDriver(std::function<LONG()> show) : call_(std::make_shared<Call>()) {
  call_->show = std::move(show);
  auto own = std::make_unique<std::shared_ptr<Call>>(call_);
  thread_ = CreateThread(nullptr, 0, Call::Run, own.get(), CREATE_SUSPENDED, &threadId_);
  if (thread_ == nullptr) {
    ThrowLastError("CreateThread");
  }
  static_cast<void>(own.release());
  hook_ = SetWindowsHookExW(WH_GETMESSAGE, WatchQueue, nullptr, threadId_);
  ResumeThread(thread_);
  try {
    AwaitOpening();
  } catch (...) {
    Close();
    throw;
  }
}

SheetDriver::~SheetDriver() {
  Close();
}

bool SheetDriver::IsOver(DWORD wait_ms) const {
  return WaitForSingleObject(thread_, wait_ms) == WAIT_OBJECT_0;
}

bool SheetDriver::IsOpen() {
  return !IsOver();
}

LONG SheetDriver::Result() {
  if (!IsOver(kAnswerLimit_ms)) {
    throw std::runtime_error("the sheet isn't closed");
  }
  if (!call_->failure.empty()) {
    throw std::runtime_error(call_->failure);
  }
  return call_->result;
}

// Presses Cancel wherever it can, until the call is over. A thread that never ends can't be taken
// away without harm, so then the whole program ends.
void SheetDriver::Close() noexcept {
  for (DWORD waited = 0; !IsOver(kPoll_ms * 10); waited += kPoll_ms * 10) {
    if (waited > kClosingLimit_ms) {
      std::fputs("a property sheet can't be closed\n", stderr);
      std::fflush(stderr);
      TerminateProcess(GetCurrentProcess(), 3);
    }
    for (const HWND window : TopWindows(kDialogClass)) {
      PostMessageW(window, window == sheet_ ? UINT{PSM_PRESSBUTTON} : UINT{WM_COMMAND},
                   window == sheet_ ? WPARAM{PSBTN_CANCEL} : WPARAM{IDCANCEL}, 0);
      PostMessageW(window, WM_CLOSE, 0, 0);
    }
  }
  if (hook_ != nullptr) {
    UnhookWindowsHookEx(hook_);
  }
  CloseHandle(thread_);
}

std::vector<HWND> SheetDriver::TopWindows(const wchar_t* className) const {
  WindowSearch search = {.className = className, .found = {}};
  EnumThreadWindows(threadId_, CollectWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// Takes the sheet, when there is one whose page is there.
bool SheetDriver::TakeSheet() {
  for (const HWND window : TopWindows(kDialogClass)) {
    if (IsWindowVisible(window) != FALSE && Ask(window, PSM_GETTABCONTROL, 0, 0) != 0 &&
        Ask(window, PSM_GETCURRENTPAGEHWND, 0, 0) != 0) {
      sheet_ = window;
      Settle();
      return true;
    }
  }
  return false;
}

void SheetDriver::AwaitOpening() {
  for (DWORD waited = 0; waited < kOpeningLimit_ms; waited += kPoll_ms) {
    if (IsOver(kPoll_ms) || TakeSheet()) {
      return;
    }
    for (const HWND window : TopWindows(kDialogClass)) {
      if (IsWindowVisible(window) != FALSE && Ask(window, PSM_GETTABCONTROL, 0, 0) == 0) {
        Settle();
        return;
      }
    }
  }
  throw std::runtime_error("no sheet appears");
}

void SheetDriver::AwaitSheet() {
  sheet_ = nullptr;
  for (DWORD waited = 0; waited < kOpeningLimit_ms && !IsOver(kPoll_ms); waited += kPoll_ms) {
    if (TakeSheet()) {
      return;
    }
  }
  throw std::runtime_error("no sheet appears");
}

// Waits until everything that was posted is dealt with, and a dialog that it has opened is shown:
// that comes when there is nothing left to deal with.
void SheetDriver::Settle() {
  PassBarrier();
  for (DWORD waited = 0; waited < kAnswerLimit_ms; waited += kPoll_ms) {
    const std::vector<HWND> windows = OpenWindows();
    if (std::ranges::all_of(windows,
                            [](HWND window) { return IsWindowVisible(window) != FALSE; }) ||
        IsOver(kPoll_ms)) {
      return;
    }
  }
  throw std::runtime_error("a dialog doesn't appear");
}

void SheetDriver::PassBarrier() {
  const HANDLE passed = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const BOOL posted = PostThreadMessageW(threadId_, kBarrier, reinterpret_cast<WPARAM>(passed), 0);
  const HANDLE either[] = {passed, thread_};
  const DWORD reached = posted == FALSE ? WaitForSingleObject(thread_, kAnswerLimit_ms)
                                        : WaitForMultipleObjects(2, either, FALSE, kAnswerLimit_ms);
  if (reached == WAIT_TIMEOUT) {
    throw std::runtime_error("the sheet doesn't answer");  // its event stays: it may still be set
  }
  CloseHandle(passed);
}

LRESULT SheetDriver::Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR answer = 0;
  if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerLimit_ms, &answer) ==
          0 &&
      !IsOver()) {
    throw std::runtime_error("the sheet doesn't answer");
  }
  return static_cast<LRESULT>(answer);
}

// ---- The sheet ----------------------------------------------------------------------------------

HWND SheetDriver::page() {
  if (sheet_ == nullptr || IsOver()) {
    throw std::runtime_error("no sheet is open");
  }
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a message answers with a handle this way.
  return reinterpret_cast<HWND>(Ask(sheet_, PSM_GETCURRENTPAGEHWND, 0, 0));
}

std::vector<std::wstring> SheetDriver::PageTitles() {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a message answers with a handle this way.
  const auto tabs = reinterpret_cast<HWND>(Ask(sheet_, PSM_GETTABCONTROL, 0, 0));
  const LRESULT count = Ask(tabs, TCM_GETITEMCOUNT, 0, 0);
  std::vector<std::wstring> titles;
  for (WPARAM tab = 0; tab < static_cast<WPARAM>(count); ++tab) {
    wchar_t text[256] = {};
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 256;
    Ask(tabs, TCM_GETITEMW, tab, reinterpret_cast<LPARAM>(&item));
    titles.emplace_back(item.pszText);
  }
  return titles;
}

void SheetDriver::ShowPage(std::wstring_view title) {
  if (sheet_ == nullptr || IsOver()) {
    throw std::runtime_error("no sheet is open");
  }
  const std::vector<std::wstring> titles = PageTitles();
  for (std::size_t index = 0; index < titles.size(); ++index) {
    if (titles[index] == title) {
      PostMessageW(sheet_, PSM_SETCURSEL, index, 0);
      Settle();
      return;
    }
  }
  throw std::runtime_error("the sheet has no page " + Utf8(title));
}

void SheetDriver::Press(SheetButton button) {
  const WPARAM pressed = button == SheetButton::kOk       ? PSBTN_OK
                         : button == SheetButton::kApply  ? PSBTN_APPLYNOW
                         : button == SheetButton::kCancel ? PSBTN_CANCEL
                                                          : PSBTN_HELP;
  PostMessageW(sheet_, PSM_PRESSBUTTON, pressed, 0);
  Settle();
}

bool SheetDriver::OffersApply() {
  return IsWindowEnabled(GetDlgItem(sheet_, kApplyButton)) != FALSE;
}

// ---- Boxes --------------------------------------------------------------------------------------

// A box has a text and an icon beside it, whose number no dialog here uses.
bool SheetDriver::IsBox(HWND window) {
  return GetDlgItem(window, kBoxText) != nullptr && GetDlgItem(window, kBoxIcon) != nullptr;
}

// Dialogs and boxes, the topmost one first.
std::vector<HWND> SheetDriver::OpenWindows() const {
  std::vector<HWND> windows = TopWindows(kDialogClass);
  std::erase(windows, sheet_);
  return windows;
}

// A window is locked while another one of its own is open. Of two that aren't, a box is the later
// one: nobody opens a dialog while a box waits.
HWND SheetDriver::Dialog() {
  HWND dialog = nullptr;
  for (const HWND window : OpenWindows()) {
    if (IsBox(window)) {
      return window;
    }
    if (dialog == nullptr && IsWindowEnabled(window) != FALSE) {
      dialog = window;
    }
  }
  return dialog;
}

int SheetDriver::OpenDialogs() {
  return IsOver() ? 0 : static_cast<int>(std::ranges::count_if(OpenWindows(), [](HWND window) {
    return !IsBox(window);
  }));
}

std::optional<SheetDriver::Box> SheetDriver::AnswerBox(int command) {
  const HWND box = IsOver() ? nullptr : Dialog();
  if (box == nullptr || !IsBox(box)) {
    return std::nullopt;
  }
  Box content = {.title = TextOf(box), .text = TextOf(GetDlgItem(box, kBoxText))};
  LeaveDialog(command);
  return content;
}

void SheetDriver::LeaveDialog(int command) {
  PostMessageW(Dialog(), WM_COMMAND, static_cast<WPARAM>(command), 0);
  if (sheet_ == nullptr) {
    Settle();
    AwaitOpening();
  } else {
    Settle();
  }
}

// ---- Controls: looking --------------------------------------------------------------------------

HWND SheetDriver::Front() {
  const HWND dialog = IsOver() ? nullptr : Dialog();
  return dialog == nullptr ? page() : dialog;
}

bool SheetDriver::HasControl(int id) {
  return GetDlgItem(Front(), id) != nullptr;
}

HWND SheetDriver::Control(int id) {
  const HWND control = GetDlgItem(Front(), id);
  if (control == nullptr) {
    throw std::runtime_error("the page has no control " + std::to_string(id));
  }
  return control;
}

// The edit within a list that has one; otherwise the control itself.
HWND SheetDriver::EditOf(HWND control) const {
  const HWND edit = FindWindowExW(control, nullptr, L"Edit", nullptr);
  return edit == nullptr ? control : edit;
}

std::wstring SheetDriver::TextOf(HWND window) {
  std::wstring text(1024, L'\0');
  text.resize(static_cast<std::size_t>(
      Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

bool SheetDriver::IsChecked(int id) {
  return Ask(Control(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool SheetDriver::IsEnabled(int id) {
  return IsWindowEnabled(Control(id)) != FALSE;
}

bool SheetDriver::IsShown(int id) {
  return (GetWindowLongW(Control(id), GWL_STYLE) & static_cast<LONG>(WS_VISIBLE)) != 0;
}

std::wstring SheetDriver::Text(int id) {
  return TextOf(Control(id));
}

int SheetDriver::Focus() {
  GUITHREADINFO info = {};
  info.cbSize = sizeof(info);
  if (GetGUIThreadInfo(threadId_, &info) == FALSE || info.hwndFocus == nullptr) {
    return 0;
  }
  const HWND parent = GetParent(info.hwndFocus);
  return GetDlgCtrlID(parent == Front() ? info.hwndFocus : parent);
}

int SheetDriver::Row(int id) {
  return static_cast<int>(Ask(Control(id), CB_GETCURSEL, 0, 0));
}

std::vector<std::wstring> SheetDriver::Rows(int id) {
  const HWND combo = Control(id);
  const LRESULT count = Ask(combo, CB_GETCOUNT, 0, 0);
  std::vector<std::wstring> rows;
  for (WPARAM row = 0; row < static_cast<WPARAM>(count); ++row) {
    wchar_t text[256] = {};
    if (Ask(combo, CB_GETLBTEXTLEN, row, 0) < 256) {
      Ask(combo, CB_GETLBTEXT, row, reinterpret_cast<LPARAM>(text));
    }
    rows.emplace_back(text);
  }
  return rows;
}

std::wstring SheetDriver::Tooltip(int id) {
  const auto control = reinterpret_cast<UINT_PTR>(Control(id));
  for (const HWND tooltip : TopWindows(TOOLTIPS_CLASSW)) {
    const LRESULT count = Ask(tooltip, TTM_GETTOOLCOUNT, 0, 0);
    for (WPARAM index = 0; index < static_cast<WPARAM>(count); ++index) {
      TTTOOLINFOW tool = {};
      tool.cbSize = sizeof(tool);
      if (Ask(tooltip, TTM_ENUMTOOLSW, index, reinterpret_cast<LPARAM>(&tool)) == 0 ||
          tool.uId != control) {
        continue;
      }
      NMTTDISPINFOW question = {};
      question.hdr.hwndFrom = tooltip;
      question.hdr.idFrom = tool.uId;
      question.hdr.code = static_cast<UINT>(TTN_GETDISPINFOW);
      question.lpszText = question.szText;
      question.uFlags = tool.uFlags;
      Ask(tool.hwnd, WM_NOTIFY, control, reinterpret_cast<LPARAM>(&question));
      return question.lpszText == nullptr ? L"" : question.lpszText;
    }
  }
  throw std::runtime_error("no tooltip over control " + std::to_string(id));
}

// ---- Controls: using ----------------------------------------------------------------------------

void SheetDriver::Click(int id) {
  PostMessageW(Control(id), BM_CLICK, 0, 0);
  Settle();
}

void SheetDriver::Type(int id, std::wstring_view text) {
  const HWND edit = EditOf(Control(id));
  PostMessageW(Front(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(edit), TRUE);
  PostMessageW(edit, EM_SETSEL, 0, -1);
  PostMessageW(edit, WM_CHAR, L'\b', 0);
  for (const wchar_t unit : text) {
    PostMessageW(edit, WM_CHAR, unit, 0);
  }
  Settle();
}

void SheetDriver::Choose(int id, int row) {
  const HWND combo = Control(id);
  PostMessageW(Front(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(combo), TRUE);
  PostMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
  PostMessageW(Front(), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(combo));
  Settle();
}

void SheetDriver::Spin(int id, bool up) {
  const HWND spin = Control(id);
  RECT area = {};
  GetClientRect(spin, &area);
  const LPARAM arrow = PointAt(area.right / 2, up ? area.bottom / 4 : area.bottom * 3 / 4);
  PostMessageW(spin, WM_LBUTTONDOWN, MK_LBUTTON, arrow);
  PostMessageW(spin, WM_LBUTTONUP, 0, arrow);
  Settle();
}

void SheetDriver::Focus(int id) {
  PostMessageW(Front(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(id)), TRUE);
  Settle();
}

void SheetDriver::Notify(int id) {
  PostMessageW(Front(), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), BN_CLICKED),
               reinterpret_cast<LPARAM>(Control(id)));
  Settle();
}

}  // namespace ostrel::print_system
