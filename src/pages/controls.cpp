#include "pages/controls.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

namespace ostrel {
namespace {

constexpr char16_t kBlank = u' ';
constexpr char16_t kMinus = u'-';
constexpr char16_t kPoint = u'.';
constexpr char16_t kComma = u',';

// Seconds after which a held button of a spin would move in larger steps: never, for a user.
constexpr SpinAcceleration kNoAcceleration = {.nSec = 200, .nInc = 1};

using EditText = std::array<char16_t, kEditTextUnits>;

std::u16string_view WithoutOuterBlanks(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlank), text.size()));
  text.remove_suffix(text.size() - (text.find_last_not_of(kBlank) + 1));
  return text;
}

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

bool IsLonger(std::u16string_view text, std::int32_t maximum) {
  return std::cmp_greater(text.size(), maximum);
}

std::u16string_view ReadWindowText(WindowHandle window, std::span<char16_t> buffer) {
  if (buffer.empty()) {
    return {};
  }
  buffer.front() = u'\0';
  World().windows.GetWindowTextW(window, buffer.data(),
                                 static_cast<int>(std::min(buffer.size(), kEditTextUnits)));
  return FieldText(buffer);
}

// Ranges are kept as 32-bit floats with a margin (0.9999 for 1), and so is all arithmetic on them:
// in wider numbers some margins would fall short of the whole number that is meant.
int IntegerPart(float number) {
  constexpr float kBeyond = 2147483648.0F;
  if (number >= kBeyond) {
    return std::numeric_limits<int>::max();
  }
  return number > -kBeyond ? static_cast<int>(number) : std::numeric_limits<int>::min();
}

bool IsWithin(const NumberRange& range, float number) {
  return number >= range.minimum && number <= range.maximum;
}

// The cursor is set to where it is: only then the caret shows at once.
void NudgeCursor() {
  Point place = {};
  if (World().windows.GetCursorPos(&place)) {
    World().windows.SetCursorPos(place.x, place.y);
  }
}

// ---- Whole numbers

// A "-" may stand anywhere, whether the edit has signs or not; the conversion ends there. Only a
// lone one is told apart, and only where signs are allowed.
bool IsWholeNumber(std::u16string_view text, bool allowsSign) {
  return !(allowsSign && text == u"-") &&
         std::ranges::all_of(text, [](char16_t unit) { return IsDigit(unit) || unit == kMinus; });
}

std::size_t DecimalLength(int number) {
  return TextBuilder({}).AddNumber(number).length();
}

// The end of a range to which a number typed too low goes.
int LowerEnd(float minimum) {
  constexpr float kMargin = 0.00001F;
  if (minimum == 0) {
    return 0;
  }
  return IntegerPart(minimum > 0 ? minimum + kMargin : minimum - kMargin);
}

// ---- Decimal numbers

enum class DecimalForm {
  kGood,
  kInnerBlank,
  kLeadingPoint,
  kNoNumber,  // nothing, a second point, or some other character
  kTooPrecise,
};

// A decimal number's text with a point, whatever the language writes.
class DecimalText {
 public:
  explicit DecimalText(std::u16string_view typed) : length_(std::min(typed.size(), units_.size())) {
    const bool comma = Process().DecimalCommaLanguage;
    std::transform(typed.begin(), typed.begin() + static_cast<std::ptrdiff_t>(length_),
                   units_.begin(),
                   [comma](char16_t unit) { return comma && unit == kComma ? kPoint : unit; });
  }

  DecimalForm Form(std::int32_t precision) const {
    const std::u16string_view text = view();
    if (text.find(kBlank) != std::u16string_view::npos) {
      return DecimalForm::kInnerBlank;
    }
    if (text.empty() || std::ranges::count(text, kPoint) > 1 ||
        !std::ranges::all_of(text, [](char16_t unit) {
          return IsDigit(unit) || unit == kMinus || unit == kPoint;
        })) {
      return DecimalForm::kNoNumber;
    }
    if (text.front() == kPoint) {
      return DecimalForm::kLeadingPoint;
    }
    return std::cmp_greater(FractionDigits(), precision) ? DecimalForm::kTooPrecise
                                                         : DecimalForm::kGood;
  }

  // The number at the text's start; 0 when there is none.
  float Number() const {
    std::array<char, kEditTextUnits> narrow = {};
    std::transform(units_.begin(), units_.begin() + static_cast<std::ptrdiff_t>(length_),
                   narrow.begin(), [](char16_t unit) { return static_cast<char>(unit); });
    double number = 0;
    std::from_chars(narrow.data(), narrow.data() + length_, number, std::chars_format::fixed);
    constexpr double kMost = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(number, -kMost, kMost));
  }

 private:
  std::u16string_view view() const { return {units_.data(), length_}; }

  std::ptrdiff_t FractionDigits() const {
    const std::u16string_view text = view();
    const std::size_t point = text.find(kPoint);
    return point == std::u16string_view::npos
               ? 0
               : std::ranges::count_if(text.substr(point + 1), IsDigit);
  }

  std::array<char16_t, kEditTextUnits> units_ = {};
  std::size_t length_;
};

}  // namespace

// ---- DlgControl ---------------------------------------------------------------------------------

void DlgControl::Attach(WindowHandle dialog, std::int32_t id) {
  id_ = id;
  dialog_ = dialog;
  window_ = World().windows.GetDlgItem(dialog, id);
}

void DlgControl::Enable(bool enable) {
  EnableOwnWindow(enable);
}

void DlgControl::EnableOwnWindow(bool enable) const {
  World().windows.EnableWindow(window_, enable);
}

void DlgControl::Focus() const {
  if (window_ != nullptr) {
    World().windows.SetFocus(window_);
  }
}

std::intptr_t DlgControl::Send(std::uint32_t message, std::uintptr_t wParam,
                               std::intptr_t lParam) const {
  return World().windows.SendMessageW(window_, message, wParam, lParam);
}

// ---- Edits --------------------------------------------------------------------------------------

int EditBase::Validate() {
  return 0;
}

int EditBase::GetText(std::span<char16_t> buffer) {
  return static_cast<int>(ReadWindowText(window(), buffer).size());
}

void EditBase::SetText(const char16_t* text) {
  if (text != nullptr) {
    World().windows.SetWindowTextW(window(), text);
  }
}

int TextEdit::Validate() {
  EditText buffer;
  const std::u16string_view text = WithoutOuterBlanks(ReadWindowText(window(), buffer));
  if (text.empty() || IsLonger(text, maximumLength)) {
    Focus();
    return kTextRefused;
  }
  return kTextStands;
}

int TextEdit::GetText(std::span<char16_t> buffer) {
  EditText whole;
  const std::u16string_view text = WithoutOuterBlanks(ReadWindowText(window(), whole));
  return static_cast<int>(CopyText(buffer, text));
}

int NumberEdit::Validate() {
  return kTextStands;
}

int NumberEdit::Spare() {
  return kTextStands;
}

std::u16string_view NumberEdit::ReadText(std::span<char16_t, kEditTextUnits> buffer) const {
  return ReadWindowText(window(), buffer);
}

void NumberEdit::ShowLastGoodText() {
  if (writing_) {
    return;
  }
  // A copy: the check of what comes back may keep another text meanwhile.
  EditText text = {};
  CopyText(text, FieldText(range.lastGoodText));
  writing_ = true;
  World().windows.SetWindowTextW(window(), text.data());
  writing_ = false;
}

void NumberEdit::Undo() {
  if (!undoing_) {
    undoing_ = true;
    Send(kEmUndo, 0, 0);
    undoing_ = false;
  }
}

int NumberEdit::CheckLengthTyped(std::u16string_view text) {
  if (text.empty()) {
    return kTextRefused;
  }
  if (IsLonger(text, range.maximumTextLength)) {
    Focus();
    if (range.lastGoodText[0] == u'\0') {
      Undo();
      return kTextRefused;
    }
    ShowLastGoodText();
    NudgeCursor();
    return kTextRefused;
  }
  const std::u16string_view trimmed = WithoutOuterBlanks(text);
  if (trimmed.empty()) {
    return kTextRefused;
  }
  // The user is still typing.
  return range.allowsSign != 0 && trimmed == u"-" ? kTextStands : 0;
}

int NumberEdit::RefuseTyped() {
  ShowLastGoodText();
  Focus();
  Send(kEmSetSel, 0, -1);
  NudgeCursor();
  return kTextRefused;
}

int IntEdit::Validate() {
  EditText buffer;
  const std::u16string_view text = ReadText(buffer);
  if (text.empty() || IsLonger(text, range.maximumTextLength)) {
    Focus();
    Undo();
    return kTextRefused;
  }
  const std::u16string_view trimmed = WithoutOuterBlanks(text);
  if (trimmed.empty()) {
    ShowLastGoodText();
    return kTextStands;
  }
  if (!IsWholeNumber(trimmed, range.allowsSign != 0)) {
    Focus();
    return kTextRefused;
  }
  const auto number = static_cast<float>(LeadingNumber(trimmed));
  if (number < range.minimum) {
    constexpr float kMargin = 0.0001F;
    SetValue(IntegerPart(range.minimum + kMargin));
  } else if (number > range.maximum) {
    SetValue(IntegerPart(range.maximum));
  }
  return kTextStands;
}

int IntEdit::ChangeCheck() {
  EditText buffer;
  const std::u16string_view typed = ReadText(buffer);
  if (const int decided = CheckLengthTyped(typed); decided != 0) {
    return decided;
  }
  const std::u16string_view text = WithoutOuterBlanks(typed);
  if (!IsWholeNumber(text, range.allowsSign != 0)) {
    return RefuseTyped();
  }
  const int number = LeadingNumber(text);
  // 0 is let stand wherever the range lies: it may be the start of "05".
  if (number != 0 && !IsWithin(range, static_cast<float>(number))) {
    constexpr float kMargin = 0.0001F;
    if (range.minimum > 0 && text.size() < DecimalLength(IntegerPart(range.maximum + kMargin))) {
      return kTextStands;  // more digits may follow
    }
    const int end = static_cast<float>(number) >= range.maximum ? IntegerPart(range.maximum)
                                                                : LowerEnd(range.minimum);
    if (!writing_) {
      writing_ = true;
      SetValue(end);
      writing_ = false;
    }
  }
  // What was typed, even where something else is shown now.
  CopyText(range.lastGoodText, text);
  return kTextStands;
}

int IntEdit::GetValue(std::int32_t* value) {
  EditText buffer;
  const std::u16string_view text = WithoutOuterBlanks(ReadText(buffer));
  if (text.empty() || text.find(kBlank) != std::u16string_view::npos) {
    return kTextRefused;
  }
  // No separator passes, so that there are never digits behind one for the precision to count.
  if (!IsWholeNumber(text, range.allowsSign != 0)) {
    Focus();
    return kTextRefused;
  }
  *value = LeadingNumber(text);
  return kTextStands;
}

void IntEdit::SetValue(std::int32_t value) {
  std::array<char, 12> text = {};  // a sign, ten digits and the terminator
  std::to_chars(text.data(), text.data() + text.size() - 1, value);
  World().windows.SetWindowTextA(window(), text.data());
}

int DecimalEdit::Validate() {
  EditText buffer;
  const std::u16string_view text = WithoutOuterBlanks(ReadText(buffer));
  if (text.empty()) {
    Undo();
    return kTextStands;
  }
  const DecimalText decimal(text);
  const DecimalForm form = decimal.Form(range.precision);
  if (form != DecimalForm::kGood) {
    Focus();
    if (form != DecimalForm::kTooPrecise) {
      Undo();
    }
    return kTextRefused;
  }
  const float number = decimal.Number();
  if (!IsWithin(range, number)) {
    SetValue(number >= range.maximum ? range.maximum : range.minimum);
  }
  return kTextStands;
}

int DecimalEdit::ChangeCheck() {
  EditText buffer;
  const std::u16string_view typed = ReadText(buffer);
  if (const int decided = CheckLengthTyped(typed); decided != 0) {
    return decided;
  }
  const std::u16string_view text = WithoutOuterBlanks(typed);
  // Digits behind the separator aren't counted while the user types.
  const DecimalForm form = DecimalText(text).Form(std::numeric_limits<std::int32_t>::max());
  const bool comma = Process().DecimalCommaLanguage;
  // Only a language with the comma refuses a number that starts with its separator.
  const bool stands = form == DecimalForm::kGood || (form == DecimalForm::kLeadingPoint && !comma);
  if (!stands || (comma && text.find(kPoint) != std::u16string_view::npos)) {
    return RefuseTyped();
  }
  CopyText(range.lastGoodText, text);
  return kTextStands;
}

int DecimalEdit::GetValue(float* value) {
  EditText buffer;
  const DecimalText decimal(WithoutOuterBlanks(ReadText(buffer)));
  const DecimalForm form = decimal.Form(range.precision);
  if (form != DecimalForm::kGood) {
    if (form != DecimalForm::kInnerBlank) {
      Focus();
    }
    return kTextRefused;
  }
  constexpr float kMargin = 0.00001F;
  *value = decimal.Number() + kMargin;
  return kTextStands;
}

void DecimalEdit::SetValue(float value) {
  std::array<char, kEditTextUnits> narrow = {};
  const auto written =
      std::to_chars(narrow.data(), narrow.data() + narrow.size() - 1, static_cast<double>(value),
                    std::chars_format::fixed, std::max(range.precision, 0));
  if (written.ec != std::errc()) {
    return;
  }
  const bool comma = Process().DecimalCommaLanguage;
  EditText text = {};
  std::transform(narrow.begin(), narrow.end(), text.begin(), [comma](char unit) {
    return comma && unit == '.' ? kComma : static_cast<char16_t>(unit);
  });
  World().windows.SetWindowTextW(window(), text.data());
}

// ---- Spins --------------------------------------------------------------------------------------

template <typename Edit>
void SpinBase<Edit>::Attach(WindowHandle dialog, std::int32_t id) {
  DlgControl::Attach(dialog, id);
  SpinAcceleration acceleration = kNoAcceleration;
  this->Send(kUdmSetAccel, 1, reinterpret_cast<std::intptr_t>(&acceleration));
}

template class SpinBase<IntEdit>;
template class SpinBase<DecimalEdit>;

namespace {

// Shows a number in the buddy if its range allows, with the caret behind it.
template <typename Edit, typename Number>
bool ShowStep(Edit& buddy, Number number) {
  constexpr std::uintptr_t kBehindAnyText = 999;
  if (!IsWithin(buddy.range, static_cast<float>(number))) {
    return false;
  }
  buddy.SetValue(number);
  World().windows.SendMessageW(buddy.window(), kEmSetSel, kBehindAnyText, -1);
  return true;
}

}  // namespace

void IntSpin::SetBuddy(IntEdit* edit) {
  buddy_ = edit;
  step_ = 1;
}

bool IntSpin::Step(bool up) {
  if (buddy_ == nullptr) {
    return false;
  }
  std::int32_t number = 0;
  buddy_->GetValue(&number);
  // A number at the end of what an integer holds has nowhere to go.
  const std::int64_t next = std::int64_t{number} + (up ? step_ : -step_);
  return std::in_range<std::int32_t>(next) && ShowStep(*buddy_, static_cast<std::int32_t>(next));
}

void FloatSpin::SetBuddy(DecimalEdit* edit) {
  buddy_ = edit;
  step_ = 1.0F;
  for (std::int32_t digit = 0; edit != nullptr && digit < edit->range.precision; ++digit) {
    step_ *= 0.1F;
  }
}

bool FloatSpin::Step(bool up) {
  if (buddy_ == nullptr) {
    return false;
  }
  float number = 0.001F;
  buddy_->GetValue(&number);
  return ShowStep(*buddy_, up ? number + step_ : number - step_);
}

// ---- Groups -------------------------------------------------------------------------------------

void ControlGroup::Enable(bool enable) {
  EnableChildren(enable);
}

void ControlGroup::EnableChildren(bool enable) {
  for (DlgControl* child : children()) {
    child->Enable(enable);
  }
}

void ControlGroup::AddChild(DlgControl* control) {
  if (control == nullptr) {
    return;
  }
  if (count_ == capacity_ && !Grow()) {
    World().debug.OutputDebugStringW(u"vector<T> too long");
    return;
  }
  children_.get()[count_] = control;
  ++count_;
}

bool ControlGroup::Grow() {
  constexpr std::size_t kFirstRoom = 4;
  const std::size_t capacity = capacity_ == 0 ? kFirstRoom : capacity_ * 2;
  HeapBlock<DlgControl*> larger(capacity * sizeof(void*));
  if (!larger) {
    return false;
  }
  std::copy_n(children_.get(), count_, larger.get());
  children_ = std::move(larger);
  capacity_ = capacity;
  return true;
}

void RadioButton::Enable(bool enable) {
  EnableChildren(enable);
  EnableOwnWindow(enable);
}

void RadioButton::Select(std::int32_t id) {
  const bool matched = this->id() == id;
  if (matched) {
    World().windows.CheckDlgButton(dialog(), id, kBstChecked);
  }
  EnableChildren(matched);
}

void RadioButton::SetCheck(bool on) {
  const std::uint32_t wanted = on ? kBstChecked : kBstUnchecked;
  if (World().windows.IsDlgButtonChecked(dialog(), id()) == wanted) {
    return;
  }
  World().windows.CheckDlgButton(dialog(), id(), wanted);
  EnableChildren(on);
}

bool RadioButton::IsChecked() const {
  return World().windows.IsDlgButtonChecked(dialog(), id()) == kBstChecked;
}

void RadioGroup::Select(std::int32_t id) {
  for (DlgControl* child : children()) {
    auto* button = static_cast<RadioButton*>(child);  // AddChild takes nothing else
    button->SetCheck(button->id() == id);
  }
}

}  // namespace ostrel
