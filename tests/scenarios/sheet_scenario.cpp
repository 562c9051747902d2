#include "scenarios/sheet_scenario.h"

#include "record_fields.h"
#include "scenarios/scenario_player.h"

#include <algorithm>
#include <array>

namespace ostrel::scenario {
namespace {

// ---- Words --------------------------------------------------------------------------------------

constexpr std::string_view kBlanks = " \t\r";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Takes the first word off a text. A text in double quotes counts as one, and comes without its
// end; without an end there is no word.
std::string_view TakeWord(std::string_view& text) {
  text = Trimmed(text);
  const bool quoted = text.starts_with(kQuote);
  const std::size_t end = quoted ? text.find(kQuote, 1) : text.find_first_of(kBlanks);
  if (quoted && end == std::string_view::npos) {
    return {};
  }
  const std::string_view word = text.substr(0, end);
  text = Trimmed(text.substr(word.size() + (quoted ? 1 : 0)));
  return word;
}

// ---- Verbs --------------------------------------------------------------------------------------

using enum Argument;

// clang-format off
constexpr VerbRow kVerbs[] = {
    // Words,            arguments behind them,      last one,        when,           play
    {"user",             {kName, kNumber},           Last::kOnce,     When::kBefore,  &Player::User},
    {"model",            {kText},                    Last::kOnce,     When::kBefore,  &Player::Model},
    {"trays",            {kNumber},                  Last::kOnce,     When::kBefore,  &Player::Trays},
    {"paper",            {kName, kNumber, kNumber, kNumber, kNumber}, Last::kOnce, When::kBefore, &Player::Paper},
    {"set",              {kField, kValue},           Last::kOnce,     When::kBefore,  &Player::Set},
    {"favorite",         {kString},                  Last::kOnce,     When::kBefore,  &Player::Favorite},
    {"readonly",         {},                         Last::kOnce,     When::kBefore,  &Player::ReadOnly},
    {"open",             {},                         Last::kOnce,     When::kOpening, &Player::Open},
    {"page",             {kString},                  Last::kOnce,     When::kAfter,   &Player::Page},
    {"click",            {kNumber},                  Last::kOnce,     When::kAfter,   &Player::Click},
    {"type",             {kNumber, kText},           Last::kOnce,     When::kAfter,   &Player::Type},
    {"choose",           {kNumber, kNumber},         Last::kOnce,     When::kAfter,   &Player::Choose},
    {"spin",             {kNumber, kUpDown},         Last::kOnce,     When::kAfter,   &Player::Spin},
    {"focus",            {kNumber},                  Last::kOnce,     When::kAfter,   &Player::Focus},
    {"press",            {kButton},                  Last::kOnce,     When::kAfter,   &Player::Press},
    {"answer",           {kYesNo},                   Last::kOnce,     When::kAfter,   &Player::Answer},
    {"notify",           {kNumber},                  Last::kOnce,     When::kAfter,   &Player::Notify},
    {"expect checked",   {kNumber},                  Last::kRepeated, When::kAfter,   &Player::Checked},
    {"expect unchecked", {kNumber},                  Last::kRepeated, When::kAfter,   &Player::Unchecked},
    {"expect enabled",   {kNumber},                  Last::kRepeated, When::kAfter,   &Player::Enabled},
    {"expect disabled",  {kNumber},                  Last::kRepeated, When::kAfter,   &Player::Disabled},
    {"expect shown",     {kNumber},                  Last::kRepeated, When::kAfter,   &Player::IsShown},
    {"expect hidden",    {kNumber},                  Last::kRepeated, When::kAfter,   &Player::IsHidden},
    {"expect text",      {kNumber, kText},           Last::kOnce,     When::kAfter,   &Player::Text},
    {"expect caption",   {kNumber, kString},         Last::kOnce,     When::kAfter,   &Player::Caption},
    {"expect rows",      {kNumber, kString},         Last::kRepeated, When::kAfter,   &Player::Rows},
    {"expect row",       {kNumber, kNumber},         Last::kOnce,     When::kAfter,   &Player::Row},
    {"expect tip",       {kNumber, kString},         Last::kRepeated, When::kAfter,   &Player::Tip},
    {"expect focus",     {kNumber},                  Last::kOnce,     When::kAfter,   &Player::HasFocus},
    {"expect box",       {kString, kTitle, kString}, Last::kOptional, When::kAfter,   &Player::Box},
    {"expect no box",    {},                         Last::kOnce,     When::kAfter,   &Player::NoBox},
    {"expect dialog",    {kString},                  Last::kOnce,     When::kAfter,   &Player::Dialog},
    {"expect no dialog", {},                         Last::kOnce,     When::kAfter,   &Player::NoDialog},
    {"expect no sheet",  {},                         Last::kOnce,     When::kAfter,   &Player::Closed},
    {"expect changed",   {},                         Last::kOnce,     When::kAfter,   &Player::Changed},
    {"expect unchanged", {},                         Last::kOnce,     When::kAfter,   &Player::Unchanged},
    {"expect open",      {},                         Last::kOnce,     When::kAfter,   &Player::StillOpen},
    {"expect closed",    {},                         Last::kOnce,     When::kAfter,   &Player::Closed},
    {"expect setting",   {kField, kValue},           Last::kOnce,     When::kAfter,   &Player::Setting},
    {"expect same",      {kField},                   Last::kOnce,     When::kAfter,   &Player::SameField},
    {"expect untouched", {},                         Last::kOnce,     When::kAfter,   &Player::Untouched},
    {"expect paper",     {kName, kNumber, kNumber, kNumber, kNumber}, Last::kOnce, When::kAfter, &Player::KeptPaper},
    {"expect no paper",  {kName},                    Last::kOnce,     When::kAfter,   &Player::NoKeptPaper},
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

bool IsJoined(std::string_view word) {
  bool good = !word.empty() && !word.ends_with('+');
  while (good && !word.empty()) {
    const std::string_view piece = TakePiece(word);
    good = piece == kLineEnd || ToNumber(piece).has_value();
  }
  return good;
}

bool IsGood(Argument argument, std::string_view word) {
  switch (argument) {
    case Argument::kNumber:
      return ToNumber(word).has_value();
    case Argument::kString:
      return word.starts_with(kQuote) || IsJoined(word);
    case Argument::kValue:
      return word == kHome || ToNumber(word).has_value();
    case Argument::kName:
      return !word.empty();
    case Argument::kField:
      return FindField(word) != nullptr;
    case Argument::kUpDown:
      return IsOneOf(word, {"up", "down"});
    case Argument::kYesNo:
      return IsOneOf(word, {"yes", "no"});
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
  Scenario scenario = {.name = std::string(name), .user = {}, .steps = {}, .faults = {}};
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
    if (step.verb->play == &Player::User) {
      if (!scenario.steps.empty()) {
        fault(number, "\"" + step.text + "\" doesn't come first");
      }
      scenario.user = {step.arguments[0], ToNumber(step.arguments[1]).value_or(0)};
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
  return Player(scenario, sheet).Run();
}

}  // namespace ostrel::scenario
