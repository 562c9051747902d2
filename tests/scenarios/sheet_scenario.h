// Scenarios of a property sheet: what a user does to its pages and sees there, one step a line of
// plain text. The same files are played on every property sheet that stands behind SheetUnderTest:
// on the in-memory window system, and in a real print system.
//
// Empty lines and lines that begin with # say nothing. ID is a control's number. STRING is the
// number of a text of the language library, or several of them and "crlf", the end of a line,
// joined by "+", or a text itself in double quotes. FIELD is a field of the settings record by its
// name (record_fields.h), VALUE its number, or "home" for the paper of the user's country; for a
// field that holds a text, the text's STRING. NAME is a word, or a text in double quotes. TEXT is
// the rest of the line; in double quotes it may begin or end with blanks.
//
// What is there before the sheet opens:
//   user LANGUAGE COUNTRY   who it is, by the suffix of the language's library and the country's
//                           number; the first line, if at all: without it a scenario is anybody's
//   model NAME              the model that the user has picked
//   trays COUNT             the optional trays that are fitted, 0 to 2; none without this line
//   paper NAME ID WIDTH LENGTH UNIT    a paper of the user's own in the settings file: its paper
//   id,
//                           its size in pixels at 600 dots an inch, and 1 for millimetres, 2 for
//                           inches
//   set FIELD VALUE         in the record that the caller hands in; it starts as the printer's own
//   favorite STRING         keeps the record, as it is set so far, as a favourite of that name
//   readonly                the caller may not change the printer's settings
//
// What the user does. Only what is shown and not locked can be used. While a dialog is open above
// the sheet, all of it goes there, and the controls are the dialog's:
//   open                    has the sheet shown
//   page STRING             clicks the tab of that title; the page that is shown may not let go
//   click ID                clicks a button, a check box or a radio button
//   type ID TEXT            replaces the text of an edit, or of a list that has one, key by key;
//                           without TEXT, empties it
//   choose ID ROW           chooses a row of a combo box; the first one is 0
//   spin ID up|down         clicks an arrow beside an edit
//   focus ID                leaves the control that has the focus, for this one
//   press ok|apply|cancel|help   as a key does it: the focus stays where it is
//   answer yes|no           what the next box will be answered, in the place of OK
//   notify ID               not the user but another program: the message of a click, past any lock
//
// What must then be so. Several ID stand for each of them:
//   expect checked|unchecked|enabled|disabled|shown|hidden ID...
//   expect text ID TEXT     an edit's text
//   expect caption ID STRING     a control's text, the chosen row's for a combo box
//   expect row ID ROW       the chosen row of a combo box, -1 for none
//   expect rows ID STRING...     all of them
//   expect tip ID STRING... the tooltip: the texts one behind another, with the separator between
//   expect focus ID         the control that has the focus
//   expect box STRING [title STRING]    the message box that the step before has shown
//   expect no box           said for the reader: a box that no line expects is always a failure
//   expect dialog STRING    the title of the dialog that is open above the sheet
//   expect no dialog
//   expect changed|unchanged     whether there is something to apply
//   expect open|closed|no sheet
//   expect setting FIELD VALUE   in the record that the caller got back
//   expect same FIELD       it is as it was handed in
//   expect untouched        the caller got nothing back, and its record is as it was, byte for byte
//   expect paper NAME ID WIDTH LENGTH UNIT    what the settings file keeps under that name
//   expect no paper NAME
//
// A box that no line answers is answered OK. A scenario ends with the sheet closed.
#pragma once

#include "config/setting_stores.h"
#include "core/settings_record.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::scenario {

enum class SheetButton { kOk, kApply, kCancel, kHelp };
enum class BoxAnswer { kOk, kYes, kNo };

// Who a user is: the suffix of the language's library and the number of the country.
struct UserKind {
  std::string language;
  int country;
  bool operator==(const UserKind&) const = default;
};

struct ShownBox {
  std::u16string title;
  std::u16string text;
};

// What a caller's output holds before a sheet opens.
inline constexpr unsigned char kOutputPoison = 0xCC;

// A property sheet with all that surrounds it. One object is one visit: it starts with a user who
// has kept nothing, and closes what is still open when it goes. Whatever can't be done or isn't
// there throws std::exception, which fails the step. A step is done when its function returns: all
// that it causes has happened, or waits for a box to be answered.
class SheetUnderTest {
 public:
  SheetUnderTest() = default;
  virtual ~SheetUnderTest() = default;
  SheetUnderTest(const SheetUnderTest&) = delete;
  SheetUnderTest& operator=(const SheetUnderTest&) = delete;

  // ---- Around the sheet
  // Makes the user another one, before anything else; throws where that can't be.
  virtual void BeUser(const UserKind& user) = 0;
  // The paper of the user's country.
  virtual int HomePaper() = 0;
  virtual std::u16string UiText(std::uint32_t id) = 0;  // as LoadString gives it; empty for none
  virtual void SelectModel(std::u16string_view model) = 0;
  virtual void FitTrays(int count) = 0;
  virtual void StorePaper(const CustomPaperRecord& paper) = 0;
  virtual std::optional<CustomPaperRecord> StoredPaper(std::u16string_view name) = 0;
  virtual DriverDevmode PrintersRecord() = 0;  // what a caller starts with
  virtual void SaveFavorite(std::u16string_view name, const DriverDevmode& record) = 0;

  // ---- The sheet as a whole
  // Hands a copy of the record in, with an output of the same size, filled with poison.
  virtual void Open(const DriverDevmode& callers, bool noPermission) = 0;
  virtual bool IsOpen() = 0;
  virtual void ShowPage(std::u16string_view title) = 0;
  // A button of the sheet, or OK or Cancel of the dialog above it.
  virtual void Press(SheetButton button) = 0;
  virtual bool OffersApply() = 0;
  // The next of the boxes that were shown, answered by now; none when all have been taken.
  virtual std::optional<ShownBox> TakeBox() = 0;
  // What the next box that appears is answered; one behind the other. OK when there is none.
  virtual void AnswerNext(BoxAnswer answer) = 0;
  // The caller's two records as they are now.
  virtual DriverDevmode Input() = 0;
  virtual DriverDevmode Output() = 0;

  // ---- Dialogs above the sheet
  // On some sheets the step that opens a dialog ends when the dialog does. These call `play` once
  // while it is open; it goes on with the scenario until the dialog is closed.
  virtual void OnDialog(std::function<void()> play) = 0;
  virtual int OpenDialogs() = 0;
  virtual std::u16string DialogTitle() = 0;  // of the topmost one

  // ---- Controls of the page that is shown, or of the topmost dialog
  virtual bool HasControl(int control) = 0;
  virtual bool IsChecked(int control) = 0;
  virtual bool IsEnabled(int control) = 0;
  // Not hidden itself; whether the page is shown doesn't matter.
  virtual bool IsShown(int control) = 0;
  virtual std::u16string Text(int control) = 0;
  virtual int Row(int control) = 0;  // -1 when none is chosen
  virtual std::vector<std::u16string> Rows(int control) = 0;
  virtual std::u16string Tooltip(int control) = 0;
  virtual int FocusedControl() = 0;  // 0 when none has the focus
  virtual void Click(int control) = 0;
  virtual void Type(int control, std::u16string_view text) = 0;
  virtual void Choose(int control, int row) = 0;
  virtual void Spin(int control, bool up) = 0;
  virtual void Focus(int control) = 0;
  virtual void Notify(int control) = 0;
};

struct VerbRow;

// One line that says something: what it asks for, and the words behind that.
struct Step {
  int line;
  std::string text;
  const VerbRow* verb;
  std::vector<std::string> arguments;
};

struct Scenario {
  std::string name;              // the file's, without folder and extension
  std::optional<UserKind> user;  // without one it is anybody's
  std::vector<Step> steps;
  std::string faults;  // what is wrong with its lines, a line each; empty for a good scenario
};

// Reads a scenario. Every fault is told; a scenario with faults can't be played.
Scenario ParseScenario(std::string_view name, std::string_view text);

// Plays it to its end or to the first step that fails. Result: empty, or that step and what was
// wrong.
std::string PlayScenario(const Scenario& scenario, SheetUnderTest& sheet);

}  // namespace ostrel::scenario
