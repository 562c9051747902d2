#include "scenarios/sheet_scenario.h"

#include "record_fields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <exception>
#include <span>
#include <stdexcept>

namespace ostrel::scenario {

// What a word behind a verb has to be.
enum class Argument {
  kNone,
  kNumber,
  kField,
  kValue,
  kUpDown,
  kButton,
  kTitle,  // the word "title"
  kText,   // the rest of the line, which may be empty
};

// When a step may stand: before the sheet opens, while it may be there, or whenever.
enum class When { kBefore, kOpening, kAfter };

class Player;

// How often the last argument may stand.
enum class Last { kOnce, kRepeated, kOptional };

// The answer of a step: empty, or what is wrong.
using Play = std::string (Player::*)(const Step& step);

struct VerbRow {
  std::string_view words;
  std::array<Argument, 3> arguments;
  Last last;
  When when;
  Play play;
};

namespace {

constexpr std::uint32_t kReasonSeparator = 408;

// ---- Words --------------------------------------------------------------------------------------

constexpr std::string_view kBlanks = " \t\r";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Takes the first word off a text.
std::string_view TakeWord(std::string_view& text) {
  text = Trimmed(text);
  const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
  text = Trimmed(text.substr(word.size()));
  return word;
}

std::optional<int> ToNumber(std::string_view word) {
  int number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  return error == std::errc() && end == word.data() + word.size() ? std::optional(number)
                                                                  : std::nullopt;
}

int NumberOf(const std::string& word) {
  return ToNumber(word).value_or(0);
}

std::u16string Wide(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

// For messages: what isn't ASCII is of no help there.
std::string Shown(std::u16string_view text) {
  std::string shown = "\"";
  for (const char16_t unit : text) {
    shown += unit >= 0x20 && unit < 0x7F ? static_cast<char>(unit) : '?';
  }
  return shown + "\"";
}

}  // namespace

// ---- Playing ------------------------------------------------------------------------------------

class Player {
 public:
  explicit Player(SheetUnderTest& sheet) : sheet_(sheet), record_(sheet.PrintersRecord()) {}

  // Plays one step and takes the boxes that it has shown.
  std::string Take(const Step& step) {
    if (!IsAboutBox(step) && !boxes_.empty()) {
      return "a box nobody expected: " + Shown(boxes_.front().text);
    }
    std::string wrong = (this->*step.verb->play)(step);
    while (std::optional<ShownBox> box = sheet_.TakeBox()) {
      boxes_.push_back(*box);
    }
    return wrong;
  }

  std::string End() {
    if (!boxes_.empty()) {
      return "a box nobody expected: " + Shown(boxes_.front().text);
    }
    return sheet_.IsOpen() ? "the scenario ends and the sheet is still open" : "";
  }

  // ---- Before the sheet opens

  std::string Model(const Step& step) {
    sheet_.SelectModel(Wide(step.arguments[0]));
    return {};
  }

  std::string Set(const Step& step) {
    const NamedField& field = *FindField(step.arguments[0]);
    if (field.field.kind == FieldKind::kText) {
      SetFieldText(record_, field, TextAt(step, 1));
    } else {
      SetFieldNumber(record_, field, NumberOf(step.arguments[1]));
    }
    return {};
  }

  std::string Favorite(const Step& step) {
    sheet_.SaveFavorite(TextAt(step, 0), record_);
    return {};
  }

  std::string ReadOnly(const Step& /*step*/) {
    noPermission_ = true;
    return {};
  }

  // ---- The user

  std::string Open(const Step& /*step*/) {
    sheet_.Open(record_, noPermission_);
    return {};
  }

  std::string Page(const Step& step) {
    sheet_.ShowPage(TextAt(step, 0));
    return {};
  }

  std::string Click(const Step& step) {
    return Use(step, [&](int control) { sheet_.Click(control); });
  }

  std::string Type(const Step& step) {
    return Use(step, [&](int control) { sheet_.Type(control, Wide(step.arguments[1])); });
  }

  std::string Choose(const Step& step) {
    return Use(step, [&](int control) { sheet_.Choose(control, NumberOf(step.arguments[1])); });
  }

  std::string Spin(const Step& step) {
    return Use(step, [&](int control) { sheet_.Spin(control, step.arguments[1] == "up"); });
  }

  std::string Focus(const Step& step) {
    return Use(step, [&](int control) { sheet_.Focus(control); });
  }

  std::string Press(const Step& step) {
    const std::string& word = step.arguments[0];
    if (word == "apply" && !sheet_.OffersApply()) {
      return "there is nothing to apply";
    }
    sheet_.Press(word == "ok"       ? SheetButton::kOk
                 : word == "apply"  ? SheetButton::kApply
                 : word == "cancel" ? SheetButton::kCancel
                                    : SheetButton::kHelp);
    return {};
  }

  std::string Notify(const Step& step) {
    sheet_.Notify(NumberOf(step.arguments[0]));
    return {};
  }

  // ---- What must be so

  std::string Checked(const Step& step) {
    return Each(step, "is not checked", [&](int id) { return sheet_.IsChecked(id); });
  }
  std::string Unchecked(const Step& step) {
    return Each(step, "is checked", [&](int id) { return !sheet_.IsChecked(id); });
  }
  std::string Enabled(const Step& step) {
    return Each(step, "is disabled", [&](int id) { return sheet_.IsEnabled(id); });
  }
  std::string Disabled(const Step& step) {
    return Each(step, "is enabled", [&](int id) { return !sheet_.IsEnabled(id); });
  }
  std::string IsShown(const Step& step) {
    return Each(step, "is hidden", [&](int id) { return sheet_.IsShown(id); });
  }
  std::string IsHidden(const Step& step) {
    return Each(step, "is shown", [&](int id) { return !sheet_.IsShown(id); });
  }

  std::string Text(const Step& step) {
    return Same(sheet_.Text(ControlAt(step)), Wide(step.arguments[1]));
  }

  std::string Caption(const Step& step) {
    return Same(sheet_.Text(ControlAt(step)), TextAt(step, 1));
  }

  std::string Row(const Step& step) {
    const int row = sheet_.Row(ControlAt(step));
    return row == NumberOf(step.arguments[1]) ? "" : "the row is " + std::to_string(row);
  }

  std::string Rows(const Step& step) {
    const std::vector<std::u16string> rows = sheet_.Rows(ControlAt(step));
    if (rows.size() != step.arguments.size() - 1) {
      return "there are " + std::to_string(rows.size()) + " rows";
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
      if (std::string wrong = Same(rows[row], TextAt(step, row + 1)); !wrong.empty()) {
        return wrong;
      }
    }
    return {};
  }

  std::string Tip(const Step& step) {
    std::u16string text;
    for (std::size_t index = 1; index < step.arguments.size(); ++index) {
      text += (index > 1 ? sheet_.UiText(kReasonSeparator) : u"") + TextAt(step, index);
    }
    return Same(sheet_.Tooltip(ControlAt(step)), text);
  }

  std::string Box(const Step& step) {
    if (boxes_.empty()) {
      return "there is no box";
    }
    const ShownBox box = boxes_.front();
    boxes_.erase(boxes_.begin());
    std::string wrong = Same(box.text, TextAt(step, 0));
    if (wrong.empty() && step.arguments.size() > 1) {
      wrong = Same(box.title, TextAt(step, 2));
    }
    return wrong;
  }

  std::string NoBox(const Step& /*step*/) {
    return boxes_.empty() ? "" : "there is a box: " + Shown(boxes_.front().text);
  }

  std::string Changed(const Step& /*step*/) {
    return sheet_.OffersApply() ? "" : "there is nothing to apply";
  }

  std::string Unchanged(const Step& /*step*/) {
    return sheet_.OffersApply() ? "there is something to apply" : "";
  }

  std::string StillOpen(const Step& /*step*/) {
    return sheet_.IsOpen() ? "" : "the sheet is closed";
  }

  std::string Closed(const Step& /*step*/) { return sheet_.IsOpen() ? "the sheet is open" : ""; }

  std::string Setting(const Step& step) {
    const NamedField& field = *FindField(step.arguments[0]);
    const DriverDevmode output = sheet_.Output();
    if (IsPoison(output)) {
      return "the caller got nothing back";
    }
    DriverDevmode expected = output;
    if (field.field.kind == FieldKind::kText) {
      SetFieldText(expected, field, TextAt(step, 1));
    } else {
      SetFieldNumber(expected, field, NumberOf(step.arguments[1]));
    }
    return FieldsEqual(output, expected, field) ? "" : "it is " + FieldShown(output, field);
  }

  std::string SameField(const Step& step) {
    const NamedField& field = *FindField(step.arguments[0]);
    const DriverDevmode output = sheet_.Output();
    return FieldsEqual(output, record_, field)
               ? ""
               : "it is " + FieldShown(output, field) + " and was " + FieldShown(record_, field);
  }

  std::string Untouched(const Step& /*step*/) {
    const DriverDevmode input = sheet_.Input();
    if (std::memcmp(&input, &record_, sizeof(input)) != 0) {
      return "the record that was handed in has changed";
    }
    return IsPoison(sheet_.Output()) ? "" : "the caller got a record back";
  }

 private:
  static bool IsAboutBox(const Step& step) {
    return step.verb->play == &Player::Box || step.verb->play == &Player::NoBox;
  }

  static bool IsPoison(const DriverDevmode& record) {
    const auto bytes = std::as_bytes(std::span(&record, 1));
    return std::ranges::all_of(bytes,
                               [](std::byte byte) { return byte == std::byte{kOutputPoison}; });
  }

  static std::string Same(std::u16string_view actual, std::u16string_view expected) {
    return actual == expected ? "" : "it is " + Shown(actual) + ", not " + Shown(expected);
  }

  std::u16string TextAt(const Step& step, std::size_t argument) {
    return sheet_.UiText(static_cast<std::uint32_t>(NumberOf(step.arguments[argument])));
  }

  // The control that a step is about; it must be there.
  int ControlAt(const Step& step, std::size_t argument = 0) {
    const int control = NumberOf(step.arguments[argument]);
    if (!sheet_.HasControl(control)) {
      throw std::runtime_error("the page has no control " + std::to_string(control));
    }
    return control;
  }

  template <typename Does>
  std::string Use(const Step& step, Does does) {
    const int control = ControlAt(step);
    if (!sheet_.IsShown(control) || !sheet_.IsEnabled(control)) {
      return "the control is locked";
    }
    does(control);
    return {};
  }

  template <typename Is>
  std::string Each(const Step& step, const char* otherwise, Is is) {
    std::string wrong;
    for (std::size_t index = 0; index < step.arguments.size(); ++index) {
      if (!is(ControlAt(step, index))) {
        wrong += wrong.empty() ? "" : ", ";
        wrong += step.arguments[index] + " " + otherwise;
      }
    }
    return wrong;
  }

  SheetUnderTest& sheet_;
  DriverDevmode record_;
  bool noPermission_ = false;
  std::vector<ShownBox> boxes_;
};

namespace {

// ---- Verbs --------------------------------------------------------------------------------------

using enum Argument;

// clang-format off
constexpr VerbRow kVerbs[] = {
    // Words,            arguments behind them,      last one,        when,           play
    {"model",            {kText},                    Last::kOnce,     When::kBefore,  &Player::Model},
    {"set",              {kField, kValue},           Last::kOnce,     When::kBefore,  &Player::Set},
    {"favorite",         {kNumber},                  Last::kOnce,     When::kBefore,  &Player::Favorite},
    {"readonly",         {},                         Last::kOnce,     When::kBefore,  &Player::ReadOnly},
    {"open",             {},                         Last::kOnce,     When::kOpening, &Player::Open},
    {"page",             {kNumber},                  Last::kOnce,     When::kAfter,   &Player::Page},
    {"click",            {kNumber},                  Last::kOnce,     When::kAfter,   &Player::Click},
    {"type",             {kNumber, kText},           Last::kOnce,     When::kAfter,   &Player::Type},
    {"choose",           {kNumber, kNumber},         Last::kOnce,     When::kAfter,   &Player::Choose},
    {"spin",             {kNumber, kUpDown},         Last::kOnce,     When::kAfter,   &Player::Spin},
    {"focus",            {kNumber},                  Last::kOnce,     When::kAfter,   &Player::Focus},
    {"press",            {kButton},                  Last::kOnce,     When::kAfter,   &Player::Press},
    {"notify",           {kNumber},                  Last::kOnce,     When::kAfter,   &Player::Notify},
    {"expect checked",   {kNumber},                  Last::kRepeated, When::kAfter,   &Player::Checked},
    {"expect unchecked", {kNumber},                  Last::kRepeated, When::kAfter,   &Player::Unchecked},
    {"expect enabled",   {kNumber},                  Last::kRepeated, When::kAfter,   &Player::Enabled},
    {"expect disabled",  {kNumber},                  Last::kRepeated, When::kAfter,   &Player::Disabled},
    {"expect shown",     {kNumber},                  Last::kRepeated, When::kAfter,   &Player::IsShown},
    {"expect hidden",    {kNumber},                  Last::kRepeated, When::kAfter,   &Player::IsHidden},
    {"expect text",      {kNumber, kText},           Last::kOnce,     When::kAfter,   &Player::Text},
    {"expect caption",   {kNumber, kNumber},         Last::kOnce,     When::kAfter,   &Player::Caption},
    {"expect rows",      {kNumber, kNumber},         Last::kRepeated, When::kAfter,   &Player::Rows},
    {"expect row",       {kNumber, kNumber},         Last::kOnce,     When::kAfter,   &Player::Row},
    {"expect tip",       {kNumber, kNumber},         Last::kRepeated, When::kAfter,   &Player::Tip},
    {"expect box",       {kNumber, kTitle, kNumber}, Last::kOptional, When::kAfter,   &Player::Box},
    {"expect no box",    {},                         Last::kOnce,     When::kAfter,   &Player::NoBox},
    {"expect no sheet",  {},                         Last::kOnce,     When::kAfter,   &Player::Closed},
    {"expect changed",   {},                         Last::kOnce,     When::kAfter,   &Player::Changed},
    {"expect unchanged", {},                         Last::kOnce,     When::kAfter,   &Player::Unchanged},
    {"expect open",      {},                         Last::kOnce,     When::kAfter,   &Player::StillOpen},
    {"expect closed",    {},                         Last::kOnce,     When::kAfter,   &Player::Closed},
    {"expect setting",   {kField, kValue},           Last::kOnce,     When::kAfter,   &Player::Setting},
    {"expect same",      {kField},                   Last::kOnce,     When::kAfter,   &Player::SameField},
    {"expect untouched", {},                         Last::kOnce,     When::kAfter,   &Player::Untouched},
};
// clang-format on

// Takes a verb's words off a line; false leaves the line as it was.
bool TakeWords(std::string_view words, std::string_view& line) {
  std::string_view rest = line;
  while (!words.empty()) {
    if (TakeWord(words) != TakeWord(rest)) {
      return false;
    }
  }
  line = rest;
  return true;
}

const VerbRow* TakeVerb(std::string_view& line) {
  for (const VerbRow& verb : kVerbs) {
    if (TakeWords(verb.words, line)) {
      return &verb;
    }
  }
  return nullptr;
}

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::ranges::find(words, word) != words.end();
}

bool IsGood(Argument argument, std::string_view word) {
  switch (argument) {
    case Argument::kNumber:
    case Argument::kValue:
      return ToNumber(word).has_value();
    case Argument::kField:
      return FindField(word) != nullptr;
    case Argument::kUpDown:
      return IsOneOf(word, {"up", "down"});
    case Argument::kButton:
      return IsOneOf(word, {"ok", "apply", "cancel", "help"});
    case Argument::kTitle:
      return word == "title";
    case Argument::kText:
      return true;
    case Argument::kNone:
      break;
  }
  return false;
}

// The words behind a verb. Result: whether they are as many, and such, as the verb asks for.
bool TakeArguments(const VerbRow& verb, std::string_view rest, std::vector<std::string>& taken) {
  // Of an optional end, "title STRING", all words stand or none.
  constexpr std::size_t kOptionalWords = 2;
  const auto count =
      static_cast<std::size_t>(std::ranges::find(verb.arguments, kNone) - verb.arguments.begin());
  std::size_t index = 0;
  while (index < count || (verb.last == Last::kRepeated && !rest.empty())) {
    const Argument argument = verb.arguments[std::min(index, count - 1)];
    const bool mayEnd = (verb.last == Last::kOptional && index == count - kOptionalWords) ||
                        (verb.last == Last::kRepeated && index > 0 && index == count - 1);
    if (rest.empty() && mayEnd) {
      return true;
    }
    const std::string_view word = argument == Argument::kText ? rest : TakeWord(rest);
    if (argument == Argument::kText) {
      rest = {};
    }
    if (!IsGood(argument, word)) {
      return false;
    }
    taken.emplace_back(word);
    ++index;
  }
  return rest.empty();
}

}  // namespace

Scenario ParseScenario(std::string_view name, std::string_view text) {
  Scenario scenario = {.name = std::string(name), .steps = {}, .faults = {}};
  const auto fault = [&scenario](int line, const std::string& what) {
    scenario.faults += scenario.name + ", line " + std::to_string(line) + ": " + what + "\n";
  };
  bool opened = false;
  bool expects = false;
  int number = 0;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = Trimmed(text.substr(0, end));
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    ++number;
    if (line.empty() || line.front() == '#') {
      continue;
    }
    Step step = {.line = number, .text = std::string(line), .verb = nullptr, .arguments = {}};
    step.verb = TakeVerb(line);
    if (step.verb == nullptr || !TakeArguments(*step.verb, line, step.arguments)) {
      fault(number, "\"" + step.text + "\" isn't understood");
      continue;
    }
    if (opened != (step.verb->when == When::kAfter)) {
      fault(number, "\"" + step.text + "\" stands on the wrong side of \"open\"");
    }
    opened = opened || step.verb->when == When::kOpening;
    expects = expects || step.verb->words.starts_with("expect");
    scenario.steps.push_back(step);
  }
  if (!expects) {
    fault(number, "nothing is expected");
  }
  return scenario;
}

std::string PlayScenario(const Scenario& scenario, SheetUnderTest& sheet) {
  if (!scenario.faults.empty()) {
    return scenario.faults;
  }
  std::string where = scenario.name;
  std::string wrong;
  try {
    Player player(sheet);
    for (const Step& step : scenario.steps) {
      where = scenario.name + ", line " + std::to_string(step.line) + ": " + step.text;
      wrong = player.Take(step);
      if (!wrong.empty()) {
        return where + ": " + wrong;
      }
    }
    wrong = player.End();
  } catch (const std::exception& failure) {
    wrong = failure.what();
  }
  return wrong.empty() ? "" : where + ": " + wrong;
}

}  // namespace ostrel::scenario
