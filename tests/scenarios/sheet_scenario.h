// Scenarios of a property sheet: what a user does to its pages and sees there, one step a line of
// plain text. The same files are played on every property sheet that stands behind SheetUnderTest:
// on the in-memory window system, and in a real print system.
//
// Empty lines and lines that begin with # say nothing. ID is a control's number, STRING the number
// of a text of the language library. FIELD is a field of the settings record by its name
// (record_fields.h), VALUE its number; for a field that holds a text, the text's STRING.
//
// What is there before the sheet opens:
//   model NAME              the model that the user has picked
//   set FIELD VALUE         in the record that the caller hands in; it starts as the printer's own
//   favorite STRING         keeps the record, as it is set so far, as a favourite of that name
//   readonly                the caller may not change the printer's settings
//
// What the user does. Only what is shown and not locked can be used:
//   open                    has the sheet shown
//   page STRING             shows the page of that title
//   click ID                clicks a button, a check box or a radio button
//   type ID TEXT            replaces the text of an edit, key by key; without TEXT, empties it
//   choose ID ROW           chooses a row of a combo box; the first one is 0
//   spin ID up|down         clicks an arrow beside an edit
//   focus ID                leaves the control that has the focus, for this one
//   press ok|apply|cancel|help   as a key does it: the focus stays where it is
//   notify ID               not the user but another program: the message of a click, past any lock
//
// What must then be so. Several ID stand for each of them:
//   expect checked|unchecked|enabled|disabled|shown|hidden ID...
//   expect text ID TEXT     an edit's text
//   expect caption ID STRING
//   expect row ID ROW       the chosen row of a combo box
//   expect rows ID STRING...     all of them
//   expect tip ID STRING... the tooltip: the texts one behind another, with the separator between
//   expect box STRING [title STRING]    the message box that the step before has shown
//   expect no box           said for the reader: a box that no line expects is always a failure
//   expect changed|unchanged     whether there is something to apply
//   expect open|closed|no sheet
//   expect setting FIELD VALUE   in the record that the caller got back
//   expect same FIELD       it is as it was handed in
//   expect untouched        the caller got nothing back, and its record is as it was, byte for byte
//
// Every box is answered OK. A scenario ends with the sheet closed.
#pragma once

#include "core/settings_record.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::scenario {

enum class SheetButton { kOk, kApply, kCancel, kHelp };

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
  virtual std::u16string UiText(std::uint32_t id) = 0;  // as LoadString gives it; empty for none
  virtual void SelectModel(std::u16string_view model) = 0;
  virtual DriverDevmode PrintersRecord() = 0;  // what a caller starts with
  virtual void SaveFavorite(std::u16string_view name, const DriverDevmode& record) = 0;

  // ---- The sheet as a whole
  // Hands a copy of the record in, with an output of the same size, filled with poison.
  virtual void Open(const DriverDevmode& callers, bool noPermission) = 0;
  virtual bool IsOpen() = 0;
  virtual void ShowPage(std::u16string_view title) = 0;
  virtual void Press(SheetButton button) = 0;
  virtual bool OffersApply() = 0;
  // The next of the boxes that were shown, answered with OK; none when all have been taken.
  virtual std::optional<ShownBox> TakeBox() = 0;
  // The caller's two records as they are now.
  virtual DriverDevmode Input() = 0;
  virtual DriverDevmode Output() = 0;

  // ---- Controls of the page that is shown
  virtual bool HasControl(int control) = 0;
  virtual bool IsChecked(int control) = 0;
  virtual bool IsEnabled(int control) = 0;
  virtual bool IsShown(
      int control) = 0;  // not hidden itself; whether the page is shown doesn't matter
  virtual std::u16string Text(int control) = 0;
  virtual int Row(int control) = 0;  // -1 when none is chosen
  virtual std::vector<std::u16string> Rows(int control) = 0;
  virtual std::u16string Tooltip(int control) = 0;
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
  std::string name;  // the file's, without folder and extension
  std::vector<Step> steps;
  std::string faults;  // what is wrong with its lines, a line each; empty for a good scenario
};

// Reads a scenario. Every fault is told; a scenario with faults can't be played.
Scenario ParseScenario(std::string_view name, std::string_view text);

// Plays it to its end or to the first step that fails. Result: empty, or that step and what was
// wrong.
std::string PlayScenario(const Scenario& scenario, SheetUnderTest& sheet);

}  // namespace ostrel::scenario
