#include "scenarios/scenario_player.h"

#include "config/utf8.h"
#include "core/text.h"
#include "record_fields.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <exception>
#include <span>
#include <stdexcept>

namespace ostrel::scenario {
namespace {

constexpr std::uint32_t kReasonSeparator = 408;

// A number that the reader of the scenario has passed.
int NumberOf(const std::string& word) {
  return ToNumber(word).value_or(0);
}

bool IsQuoted(std::string_view word) {
  return word.starts_with(kQuote);
}

std::u16string Wide(std::string_view utf8) {
  std::u16string text(utf8.size() + 1, u'\0');
  text.resize(Utf8ToWide(utf8, text));
  return text;
}

// A word or a text in double quotes.
std::u16string NameOf(std::string_view word) {
  return Wide(IsQuoted(word) ? word.substr(1) : word);
}

// The rest of a line. Where it ends with the double quote that it begins with, both go.
std::u16string RestOf(std::string_view text) {
  const bool quoted = text.size() > 1 && IsQuoted(text) && text.ends_with(kQuote);
  return Wide(quoted ? text.substr(1, text.size() - 2) : text);
}

// For messages: what isn't ASCII is of no help there.
std::string Shown(std::u16string_view text) {
  std::string shown = "\"";
  for (const char16_t unit : text) {
    shown += unit >= 0x20 && unit < 0x7F ? static_cast<char>(unit) : '?';
  }
  return shown + "\"";
}

std::string Same(std::u16string_view actual, std::u16string_view expected) {
  return actual == expected ? "" : "it is " + Shown(actual) + ", not " + Shown(expected);
}

bool IsPoison(const DriverDevmode& record) {
  const auto bytes = std::as_bytes(std::span(&record, 1));
  return std::ranges::all_of(bytes,
                             [](std::byte byte) { return byte == std::byte{kOutputPoison}; });
}

bool IsAboutBox(const Step& step) {
  return step.verb->play == &Player::Box || step.verb->play == &Player::NoBox;
}

// The record of a paper as a step names it.
CustomPaperRecord PaperOf(const Step& step) {
  CustomPaperRecord paper = {};
  CopyText(paper.Name, NameOf(step.arguments[0]));
  paper.PaperId = static_cast<std::uint32_t>(NumberOf(step.arguments[1]));
  paper.Width = static_cast<std::uint16_t>(NumberOf(step.arguments[2]));
  paper.Length = static_cast<std::uint16_t>(NumberOf(step.arguments[3]));
  paper.Unit = static_cast<std::uint32_t>(NumberOf(step.arguments[4]));
  paper.ExactWidth = static_cast<float>(paper.Width);
  paper.ExactLength = static_cast<float>(paper.Length);
  return paper;
}

std::string PaperShown(const CustomPaperRecord& paper) {
  return Shown(FieldText(paper.Name)) + " " + std::to_string(paper.PaperId) + " " +
         std::to_string(paper.Width) + " " + std::to_string(paper.Length) + " " +
         std::to_string(paper.Unit);
}

}  // namespace

std::optional<int> ToNumber(std::string_view word) {
  int number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  return error == std::errc() && end == word.data() + word.size() ? std::optional(number)
                                                                  : std::nullopt;
}

std::string_view TakePiece(std::string_view& word) {
  const std::size_t end = word.find('+');
  const std::string_view piece = word.substr(0, end);
  word = end == std::string_view::npos ? std::string_view() : word.substr(end + 1);
  return piece;
}

// ---- From step to step --------------------------------------------------------------------------

Player::Player(const Scenario& scenario, SheetUnderTest& sheet)
    : scenario_(scenario), sheet_(sheet) {}

std::string Player::Run() {
  try {
    if (scenario_.user) {
      sheet_.BeUser(*scenario_.user);
    }
    record_ = sheet_.PrintersRecord();
  } catch (const std::exception& failure) {
    return scenario_.name + ": " + failure.what();
  }
  sheet_.OnDialog([this] { PlayInDialog(); });
  PlaySteps(0);
  if (failure_.empty()) {
    const std::string wrong = End();
    if (!wrong.empty()) {
      Fail(scenario_.steps.back(), wrong);
    }
  }
  return failure_;
}

void Player::PlaySteps(int dialogs) {
  while (failure_.empty() && next_ < scenario_.steps.size() && sheet_.OpenDialogs() >= dialogs) {
    const Step& step = scenario_.steps[next_++];
    std::string wrong;
    try {
      wrong = Take(step);
    } catch (const std::exception& failure) {
      wrong = failure.what();
    }
    if (!wrong.empty() && failure_.empty()) {
      Fail(step, wrong);
    }
  }
}

// The step that has opened the dialog waits for this to end.
void Player::PlayInDialog() {
  TakeBoxes();
  const int dialogs = sheet_.OpenDialogs();
  PlaySteps(dialogs);
  if (failure_.empty() && sheet_.OpenDialogs() >= dialogs) {
    Fail(scenario_.steps.back(), "the scenario ends and a dialog is still open");
  }
}

std::string Player::Take(const Step& step) {
  if (!IsAboutBox(step) && !boxes_.empty()) {
    return "a box nobody expected: " + Shown(boxes_.front().text);
  }
  std::string wrong = (this->*step.verb->play)(step);
  TakeBoxes();
  return wrong;
}

void Player::TakeBoxes() {
  while (std::optional<ShownBox> box = sheet_.TakeBox()) {
    boxes_.push_back(*box);
    answersLeft_ -= answersLeft_ > 0 ? 1 : 0;
  }
}

void Player::Fail(const Step& step, const std::string& wrong) {
  failure_ =
      scenario_.name + ", line " + std::to_string(step.line) + ": " + step.text + ": " + wrong;
}

std::string Player::End() {
  if (!boxes_.empty()) {
    return "a box nobody expected: " + Shown(boxes_.front().text);
  }
  if (answersLeft_ > 0) {
    return "no box has taken the answer";
  }
  return sheet_.IsOpen() ? "the scenario ends and the sheet is still open" : "";
}

// ---- Before the sheet opens ---------------------------------------------------------------------

// Who the user is was settled before the first step.
std::string Player::User(const Step& /*step*/) {
  return {};
}

std::string Player::Model(const Step& step) {
  sheet_.SelectModel(Wide(step.arguments[0]));
  return {};
}

std::string Player::Trays(const Step& step) {
  sheet_.FitTrays(NumberOf(step.arguments[0]));
  return {};
}

std::string Player::Paper(const Step& step) {
  sheet_.StorePaper(PaperOf(step));
  return {};
}

void Player::SetField(DriverDevmode& record, const Step& step) {
  const NamedField& field = *FindField(step.arguments[0]);
  const std::string& value = step.arguments[1];
  if (field.field.kind == FieldKind::kText) {
    SetFieldText(record, field, StringAt(step, 1));
  } else {
    SetFieldNumber(record, field, value == kHome ? sheet_.HomePaper() : NumberOf(value));
  }
}

std::string Player::Set(const Step& step) {
  SetField(record_, step);
  return {};
}

std::string Player::Favorite(const Step& step) {
  sheet_.SaveFavorite(StringAt(step, 0), record_);
  return {};
}

std::string Player::ReadOnly(const Step& /*step*/) {
  noPermission_ = true;
  return {};
}

// ---- The user -----------------------------------------------------------------------------------

std::string Player::Open(const Step& /*step*/) {
  sheet_.Open(record_, noPermission_);
  return {};
}

std::string Player::Page(const Step& step) {
  if (sheet_.OpenDialogs() > 0) {
    return "a dialog is open";
  }
  sheet_.ShowPage(StringAt(step, 0));
  return {};
}

std::string Player::Click(const Step& step) {
  return Use(step, [&](int control) { sheet_.Click(control); });
}

std::string Player::Type(const Step& step) {
  return Use(step, [&](int control) { sheet_.Type(control, RestOf(step.arguments[1])); });
}

std::string Player::Choose(const Step& step) {
  return Use(step, [&](int control) { sheet_.Choose(control, NumberOf(step.arguments[1])); });
}

std::string Player::Spin(const Step& step) {
  return Use(step, [&](int control) { sheet_.Spin(control, step.arguments[1] == "up"); });
}

std::string Player::Focus(const Step& step) {
  return Use(step, [&](int control) { sheet_.Focus(control); });
}

std::string Player::Press(const Step& step) {
  const std::string& word = step.arguments[0];
  if (sheet_.OpenDialogs() > 0 && (word == "apply" || word == "help")) {
    return "a dialog is open";
  }
  if (word == "apply" && !sheet_.OffersApply()) {
    return "there is nothing to apply";
  }
  sheet_.Press(word == "ok"       ? SheetButton::kOk
               : word == "apply"  ? SheetButton::kApply
               : word == "cancel" ? SheetButton::kCancel
                                  : SheetButton::kHelp);
  return {};
}

std::string Player::Answer(const Step& step) {
  sheet_.AnswerNext(step.arguments[0] == "yes" ? BoxAnswer::kYes : BoxAnswer::kNo);
  ++answersLeft_;
  return {};
}

std::string Player::Notify(const Step& step) {
  sheet_.Notify(NumberOf(step.arguments[0]));
  return {};
}

// ---- What must be so ----------------------------------------------------------------------------

std::string Player::Checked(const Step& step) {
  return Each(step, "is not checked", [&](int id) { return sheet_.IsChecked(id); });
}
std::string Player::Unchecked(const Step& step) {
  return Each(step, "is checked", [&](int id) { return !sheet_.IsChecked(id); });
}
std::string Player::Enabled(const Step& step) {
  return Each(step, "is disabled", [&](int id) { return sheet_.IsEnabled(id); });
}
std::string Player::Disabled(const Step& step) {
  return Each(step, "is enabled", [&](int id) { return !sheet_.IsEnabled(id); });
}
std::string Player::IsShown(const Step& step) {
  return Each(step, "is hidden", [&](int id) { return sheet_.IsShown(id); });
}
std::string Player::IsHidden(const Step& step) {
  return Each(step, "is shown", [&](int id) { return !sheet_.IsShown(id); });
}

std::string Player::Text(const Step& step) {
  return Same(sheet_.Text(ControlAt(step)), RestOf(step.arguments[1]));
}

std::string Player::Caption(const Step& step) {
  return Same(sheet_.Text(ControlAt(step)), StringAt(step, 1));
}

std::string Player::Row(const Step& step) {
  const int row = sheet_.Row(ControlAt(step));
  return row == NumberOf(step.arguments[1]) ? "" : "the row is " + std::to_string(row);
}

std::string Player::Rows(const Step& step) {
  const std::vector<std::u16string> rows = sheet_.Rows(ControlAt(step));
  if (rows.size() != step.arguments.size() - 1) {
    return "there are " + std::to_string(rows.size()) + " rows";
  }
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (std::string wrong = Same(rows[row], StringAt(step, row + 1)); !wrong.empty()) {
      return wrong;
    }
  }
  return {};
}

std::string Player::Tip(const Step& step) {
  std::u16string text;
  for (std::size_t index = 1; index < step.arguments.size(); ++index) {
    text += (index > 1 ? sheet_.UiText(kReasonSeparator) : u"") + StringAt(step, index);
  }
  return Same(sheet_.Tooltip(ControlAt(step)), text);
}

std::string Player::HasFocus(const Step& step) {
  const int focused = sheet_.FocusedControl();
  return focused == ControlAt(step) ? "" : "control " + std::to_string(focused) + " has it";
}

std::string Player::Box(const Step& step) {
  if (boxes_.empty()) {
    return "there is no box";
  }
  const ShownBox box = boxes_.front();
  boxes_.erase(boxes_.begin());
  std::string wrong = Same(box.text, StringAt(step, 0));
  if (wrong.empty() && step.arguments.size() > 1) {
    wrong = Same(box.title, StringAt(step, 2));
  }
  return wrong;
}

std::string Player::NoBox(const Step& /*step*/) {
  return boxes_.empty() ? "" : "there is a box: " + Shown(boxes_.front().text);
}

std::string Player::Dialog(const Step& step) {
  return sheet_.OpenDialogs() == 0 ? "there is no dialog"
                                   : Same(sheet_.DialogTitle(), StringAt(step, 0));
}

std::string Player::NoDialog(const Step& /*step*/) {
  return sheet_.OpenDialogs() == 0 ? "" : "there is a dialog: " + Shown(sheet_.DialogTitle());
}

std::string Player::Changed(const Step& /*step*/) {
  return sheet_.OffersApply() ? "" : "there is nothing to apply";
}

std::string Player::Unchanged(const Step& /*step*/) {
  return sheet_.OffersApply() ? "there is something to apply" : "";
}

std::string Player::StillOpen(const Step& /*step*/) {
  return sheet_.IsOpen() ? "" : "the sheet is closed";
}

std::string Player::Closed(const Step& /*step*/) {
  return sheet_.IsOpen() ? "the sheet is open" : "";
}

std::string Player::Setting(const Step& step) {
  const NamedField& field = *FindField(step.arguments[0]);
  const DriverDevmode output = sheet_.Output();
  if (IsPoison(output)) {
    return "the caller got nothing back";
  }
  DriverDevmode expected = output;
  SetField(expected, step);
  return FieldsEqual(output, expected, field) ? "" : "it is " + FieldShown(output, field);
}

std::string Player::SameField(const Step& step) {
  const NamedField& field = *FindField(step.arguments[0]);
  const DriverDevmode output = sheet_.Output();
  return FieldsEqual(output, record_, field)
             ? ""
             : "it is " + FieldShown(output, field) + " and was " + FieldShown(record_, field);
}

std::string Player::Untouched(const Step& /*step*/) {
  const DriverDevmode input = sheet_.Input();
  if (std::memcmp(&input, &record_, sizeof(input)) != 0) {
    return "the record that was handed in has changed";
  }
  return IsPoison(sheet_.Output()) ? "" : "the caller got a record back";
}

std::string Player::KeptPaper(const Step& step) {
  const auto kept = sheet_.StoredPaper(NameOf(step.arguments[0]));
  if (!kept) {
    return "there is no such paper";
  }
  const std::string shown = PaperShown(*kept);
  return shown == PaperShown(PaperOf(step)) ? "" : "it is " + shown;
}

std::string Player::NoKeptPaper(const Step& step) {
  const auto kept = sheet_.StoredPaper(NameOf(step.arguments[0]));
  return kept ? "there is one: " + PaperShown(*kept) : "";
}

// ---- Arguments ----------------------------------------------------------------------------------

std::u16string Player::StringAt(const Step& step, std::size_t argument) {
  std::string_view word = step.arguments[argument];
  if (IsQuoted(word)) {
    return NameOf(word);
  }
  std::u16string text;
  while (!word.empty()) {
    const std::string_view piece = TakePiece(word);
    text += piece == kLineEnd
                ? u"\r\n"
                : sheet_.UiText(static_cast<std::uint32_t>(NumberOf(std::string(piece))));
  }
  return text;
}

int Player::ControlAt(const Step& step, std::size_t argument) {
  const int control = NumberOf(step.arguments[argument]);
  if (!sheet_.HasControl(control)) {
    throw std::runtime_error("the page has no control " + std::to_string(control));
  }
  return control;
}

template <typename Does>
std::string Player::Use(const Step& step, Does does) {
  const int control = ControlAt(step);
  if (!sheet_.IsShown(control) || !sheet_.IsEnabled(control)) {
    return "the control is locked";
  }
  does(control);
  return {};
}

template <typename Is>
std::string Player::Each(const Step& step, const char* otherwise, Is is) {
  std::string wrong;
  for (std::size_t index = 0; index < step.arguments.size(); ++index) {
    if (!is(ControlAt(step, index))) {
      wrong += wrong.empty() ? "" : ", ";
      wrong += step.arguments[index] + " " + otherwise;
    }
  }
  return wrong;
}

}  // namespace ostrel::scenario
