// Drives a property sheet by its windows, as its user does: the sheet runs on a thread of its own,
// and this program's thread clicks, types and looks.
//
// Messages are posted, as the system posts a user's, and each action returns when the sheet has
// dealt with all of them: it waits for the next message then, or for an answer to a box. Nothing
// here waits without a limit: a sheet that doesn't answer throws std::runtime_error. What is still
// open is closed when the object goes.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::print_system {

enum class SheetButton { kOk, kApply, kCancel, kHelp };

class SheetDriver {
 public:
  // Runs `show` on a new thread: a call that returns when its sheet is closed. Returns when a page
  // of the sheet is there, or another dialog or box before it, or when the call is over.
  explicit SheetDriver(std::function<LONG()> show);
  ~SheetDriver();
  SheetDriver(const SheetDriver&) = delete;
  SheetDriver& operator=(const SheetDriver&) = delete;

  // ---- The sheet
  bool IsOpen();  // whether the call still runs
  // What the call answered. Waits for its end.
  LONG Result();
  HWND sheet() const { return sheet_; }  // null until there is one
  HWND page();                           // the page that is shown
  std::wstring Title() { return TextOf(sheet_); }
  std::vector<std::wstring> PageTitles();
  void ShowPage(std::wstring_view title);
  void Press(SheetButton button);  // as a key does it: the focus stays where it is
  bool OffersApply();

  // ---- Boxes and dialogs above the sheet, or in its place
  // A box asks or tells something; a dialog has controls of its own. Boxes stand above dialogs.
  struct Box {
    std::wstring title;
    std::wstring text;
  };
  // The dialog or box that waits for an answer now, the topmost one; null when none does.
  HWND Dialog();
  // Reads the box that waits and presses one of its buttons. Empty when none waits.
  std::optional<Box> AnswerBox(int command = IDOK);
  // Presses a button of the dialog or box, and waits for the sheet, the next dialog or the call's
  // end.
  void LeaveDialog(int command);
  // Waits for a sheet that a dialog opens: from then on it is the sheet that is driven. When it is
  // closed, the controls are those of the dialog again.
  void AwaitSheet();
  // The dialogs that are open, boxes not counted.
  int OpenDialogs();

  // ---- Controls of the topmost dialog, or else of the page, by their ids. One that isn't there
  // throws. A list with an edit counts as that edit where it is typed into or read.
  bool HasControl(int id);
  bool IsChecked(int id);
  bool IsEnabled(int id);
  bool IsShown(int id);
  std::wstring Text(int id);
  int Row(int id);
  std::vector<std::wstring> Rows(int id);
  // The text of the tooltip over a control, as its page gives it when the tooltip asks.
  std::wstring Tooltip(int id);
  int Focus();  // the control that has the focus; 0 when none has it
  void Click(int id);
  void Type(int id, std::wstring_view text);  // in the place of what is there
  void Choose(int id, int row);
  void Spin(int id, bool up);
  void Focus(int id);
  void Notify(int id);  // the message of a click without the click

  std::wstring TextOf(HWND window);

  // A message to one of the sheet's windows, with a limit on the wait for its answer.
  LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

 private:
  // What both threads share; it outlives the object when the sheet's thread hangs.
  struct Call;

  // The window whose controls are meant.
  HWND Front();
  HWND Control(int id);
  HWND EditOf(HWND control) const;
  static bool IsBox(HWND window);
  std::vector<HWND> OpenWindows() const;
  bool TakeSheet();
  void AwaitOpening();
  void Settle();
  void PassBarrier();
  bool IsOver(DWORD wait_ms = 0) const;
  void Close() noexcept;
  std::vector<HWND> TopWindows(const wchar_t* className) const;

  std::shared_ptr<Call> call_;
  HANDLE thread_ = nullptr;
  DWORD threadId_ = 0;
  HHOOK hook_ = nullptr;
  HWND sheet_ = nullptr;
};

}  // namespace ostrel::print_system
