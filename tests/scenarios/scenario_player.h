// Plays the steps of a scenario on a sheet, one function a verb. What the verbs mean stands in
// sheet_scenario.h.
#pragma once

#include "scenarios/sheet_scenario.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::scenario {

// What a word behind a verb has to be. A text in double quotes is kept with the first of them,
// which no other word begins with.
enum class Argument {
  kNone,
  kNumber,
  kString,  // numbers and "crlf" joined by "+", or a text in double quotes
  kName,    // a word, or a text in double quotes
  kField,
  kValue,  // a number, or "home"
  kUpDown,
  kYesNo,
  kButton,
  kTitle,  // the word "title"
  kText,   // the rest of the line, which may be empty
};

// When a step may stand: before the sheet opens, while it may be there, or whenever.
enum class When { kBefore, kOpening, kAfter };

// How often the last argument may stand.
enum class Last { kOnce, kRepeated, kOptional };

class Player;

// The answer of a step: empty, or what is wrong.
using Play = std::string (Player::*)(const Step& step);

struct VerbRow {
  std::string_view words;
  std::array<Argument, 5> arguments;
  Last last;
  When when;
  Play play;
};

inline constexpr char kQuote = '"';
inline constexpr std::string_view kHome = "home";

inline constexpr std::string_view kLineEnd = "crlf";

// Takes the first of the pieces that "+" joins off a word.
std::string_view TakePiece(std::string_view& word);

// A whole word that is a number.
std::optional<int> ToNumber(std::string_view word);

class Player {
 public:
  Player(const Scenario& scenario, SheetUnderTest& sheet);

  // To the end, or to the first step that fails. Result: empty, or that step and what was wrong.
  std::string Run();

  // ---- Before the sheet opens
  std::string User(const Step& step);
  std::string Model(const Step& step);
  std::string Trays(const Step& step);
  std::string Paper(const Step& step);
  std::string Set(const Step& step);
  std::string Favorite(const Step& step);
  std::string ReadOnly(const Step& step);

  // ---- The user
  std::string Open(const Step& step);
  std::string Page(const Step& step);
  std::string Click(const Step& step);
  std::string Type(const Step& step);
  std::string Choose(const Step& step);
  std::string Spin(const Step& step);
  std::string Focus(const Step& step);
  std::string Press(const Step& step);
  std::string Answer(const Step& step);
  std::string Notify(const Step& step);

  // ---- What must be so
  std::string Checked(const Step& step);
  std::string Unchecked(const Step& step);
  std::string Enabled(const Step& step);
  std::string Disabled(const Step& step);
  std::string IsShown(const Step& step);
  std::string IsHidden(const Step& step);
  std::string Text(const Step& step);
  std::string Caption(const Step& step);
  std::string Row(const Step& step);
  std::string Rows(const Step& step);
  std::string Tip(const Step& step);
  std::string HasFocus(const Step& step);
  std::string Box(const Step& step);
  std::string NoBox(const Step& step);
  std::string Dialog(const Step& step);
  std::string NoDialog(const Step& step);
  std::string Changed(const Step& step);
  std::string Unchanged(const Step& step);
  std::string StillOpen(const Step& step);
  std::string Closed(const Step& step);
  std::string Setting(const Step& step);
  std::string SameField(const Step& step);
  std::string Untouched(const Step& step);
  std::string KeptPaper(const Step& step);
  std::string NoKeptPaper(const Step& step);

 private:
  // Plays the steps that follow, until fewer dialogs are open.
  void PlaySteps(int dialogs);
  void PlayInDialog();
  // Plays one step and takes the boxes that it has shown.
  std::string Take(const Step& step);
  void TakeBoxes();
  void Fail(const Step& step, const std::string& wrong);
  std::string End();

  std::u16string StringAt(const Step& step, std::size_t argument);
  void SetField(DriverDevmode& record, const Step& step);
  // The control that a step is about; it must be there.
  int ControlAt(const Step& step, std::size_t argument = 0);
  template <typename Does>
  std::string Use(const Step& step, Does does);
  template <typename Is>
  std::string Each(const Step& step, const char* otherwise, Is is);

  const Scenario& scenario_;
  SheetUnderTest& sheet_;
  std::size_t next_ = 0;
  std::string failure_;
  DriverDevmode record_ = {};
  bool noPermission_ = false;
  std::vector<ShownBox> boxes_;
  std::size_t answersLeft_ = 0;
};

}  // namespace ostrel::scenario
