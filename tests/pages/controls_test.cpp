#include "pages/controls.h"

#include "support/case_name.h"
#include "support/dialog_recorder.h"
#include "support/test_world.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace ostrel {
namespace {

using test::Calls;
using test::DialogRecorder;

constexpr std::int32_t kEditId = 1019;
constexpr std::int32_t kSpinId = 1020;

struct Scene {
  test::TestWorld world;
  DialogRecorder dialog{world};
};

// An edit attached to a dialog, with a text in its box.
template <typename Edit>
struct EditScene : Scene {
  explicit EditScene(const std::u16string& text) {
    dialog.Add(kEditId).text = text;
    edit.Attach(DialogRecorder::Dialog(), kEditId);
  }

  std::u16string shown() { return dialog.controls[kEditId].text; }
  std::u16string lastGood() const { return edit.range.lastGoodText; }

  Edit edit;
};

NumberRange RangeOf(float minimum, float maximum, std::int32_t maximumTextLength,
                    bool allowsSign = false, std::int32_t precision = 0,
                    const std::u16string& lastGood = u"") {
  NumberRange range;
  range.minimum = minimum;
  range.maximum = maximum;
  range.maximumTextLength = maximumTextLength;
  range.allowsSign = allowsSign ? 1 : 0;
  range.precision = precision;
  lastGood.copy(range.lastGoodText, kEditTextUnits - 1);
  return range;
}

const Calls kFocused = {"focus 1019"};

Calls ShowsText(const std::string& text) {
  return {"text 1019 \"" + text + "\""};
}

// ---- DlgControl ---------------------------------------------------------------------------------

TEST(DlgControl, IsUnattachedWhenMade) {
  const DlgControl control;
  EXPECT_EQ(control.id(), -1);
  EXPECT_EQ(control.window(), nullptr);
  EXPECT_EQ(control.dialog(), nullptr);
}

TEST(DlgControl, AttachFindsTheWindow) {
  Scene scene;
  scene.dialog.Add(1393);
  DlgControl control;
  control.Attach(DialogRecorder::Dialog(), 1393);
  EXPECT_EQ(control.id(), 1393);
  EXPECT_EQ(control.window(), DialogRecorder::HandleOf(1393));
  EXPECT_EQ(control.dialog(), DialogRecorder::Dialog());
}

TEST(DlgControl, AttachedAgainForgetsTheWindowBefore) {
  Scene scene;
  scene.dialog.Add(1393);
  DlgControl control;
  control.Attach(DialogRecorder::Dialog(), 1393);
  control.Attach(DialogRecorder::Sheet(), 1394);
  EXPECT_EQ(control.id(), 1394);
  EXPECT_EQ(control.window(), nullptr);
  EXPECT_EQ(control.dialog(), DialogRecorder::Sheet());
}

TEST(DlgControl, EnablesItsOwnWindow) {
  Scene scene;
  scene.dialog.Add(1393);
  DlgControl control;
  control.Attach(DialogRecorder::Dialog(), 1393);
  control.Enable(false);
  control.Enable(true);
  EXPECT_EQ(scene.dialog.calls, (Calls{"disable 1393", "enable 1393"}));
}

TEST(DlgControl, MissingControlTakesEveryCallWithoutEffect) {
  Scene scene;
  TextEdit text;
  IntEdit whole;
  DecimalEdit decimal;
  RadioButton button;
  for (DlgControl* control : std::initializer_list<DlgControl*>{&text, &whole, &decimal, &button}) {
    control->Attach(DialogRecorder::Dialog(), 4711);
    control->Enable(true);
  }
  std::int32_t number = 77;
  float fraction = 77;
  EXPECT_EQ(text.Validate(), -1);
  EXPECT_EQ(whole.Validate(), -1);
  EXPECT_EQ(whole.ChangeCheck(), -1);
  EXPECT_EQ(whole.GetValue(&number), -1);
  EXPECT_EQ(decimal.Validate(), 1);
  EXPECT_EQ(decimal.ChangeCheck(), -1);
  EXPECT_EQ(decimal.GetValue(&fraction), -1);
  whole.SetValue(3);
  decimal.SetValue(3);
  text.SetText(u"x");
  button.SetCheck(true);
  button.Select(4711);
  EXPECT_EQ(number, 77);
  EXPECT_EQ(fraction, 77);
  EXPECT_FALSE(button.IsChecked());
  EXPECT_EQ(scene.dialog.calls, Calls());  // and no other control lost the focus
}

// ---- EditBase and TextEdit ----------------------------------------------------------------------

TEST(TextEdit, GivesNoMoreThanTheBufferHolds) {
  EditScene<TextEdit> scene(u"  abcdef ");
  char16_t buffer[5] = {u'x', u'x', u'x', u'x', u'x'};
  EXPECT_EQ(scene.edit.GetText(std::span(buffer).first(4)), 3);
  EXPECT_EQ(std::u16string(buffer), u"abc");
  EXPECT_EQ(buffer[4], u'x');
  EXPECT_EQ(scene.edit.GetText({}), 0);
}

TEST(EditBase, LetsAnyTextStand) {
  EditScene<TextEdit> scene(u"anything");
  EXPECT_EQ(scene.edit.EditBase::Validate(), 0);
}

TEST(EditBase, GivesTheWholeTextWithItsBlanks) {
  EditScene<TextEdit> scene(u"  two words ");
  std::array<char16_t, kEditTextUnits> buffer;
  buffer.fill(u'#');
  EXPECT_EQ(scene.edit.EditBase::GetText(buffer), 12);
  EXPECT_EQ(std::u16string(buffer.data()), u"  two words ");
}

TEST(EditBase, GivesNoMoreThanTheBufferHolds) {
  EditScene<TextEdit> scene(u"abcdef");
  std::array<char16_t, 5> buffer;
  buffer.fill(u'#');
  EXPECT_EQ(scene.edit.EditBase::GetText(std::span(buffer).first(4)), 3);
  EXPECT_EQ(std::u16string(buffer.data()), u"abc");
  EXPECT_EQ(buffer[4], u'#');
  EXPECT_EQ(scene.edit.EditBase::GetText({}), 0);
}

TEST(EditBase, ReadsAtMost259Characters) {
  EditScene<TextEdit> scene(std::u16string(300, u'a'));
  std::array<char16_t, 400> buffer;
  buffer.fill(u'#');
  EXPECT_EQ(scene.edit.EditBase::GetText(buffer), 259);
  EXPECT_EQ(std::u16string(buffer.data()), std::u16string(259, u'a'));
}

TEST(EditBase, SetsTheTextUnlessItIsNull) {
  EditScene<TextEdit> scene(u"old");
  scene.edit.SetText(nullptr);
  EXPECT_EQ(scene.shown(), u"old");
  scene.edit.SetText(u"");
  EXPECT_EQ(scene.shown(), u"");
  scene.edit.SetText(u"new");
  EXPECT_EQ(scene.shown(), u"new");
}

TEST(TextEdit, GivesTheTextWithoutTheBlanksAtBothEnds) {
  EditScene<TextEdit> scene(u"  two words ");
  std::array<char16_t, kEditTextUnits> buffer;
  buffer.fill(u'#');
  EXPECT_EQ(scene.edit.GetText(buffer), 9);
  EXPECT_EQ(std::u16string(buffer.data()), u"two words");
}

struct TextCase {
  const char* name;
  std::u16string text;
  std::int32_t maximum;
  int result;
};

class TextEditValidate : public testing::TestWithParam<TextCase> {};

INSTANTIATE_TEST_SUITE_P(Texts, TextEditValidate,
                         testing::Values(TextCase{"OfTheMaximumStands", u"abcde", 5, 1},
                                         TextCase{"BeyondTheMaximumIsRefused", u"abcdef", 5, -1},
                                         TextCase{"OfOneCharacterStands", u"a", 5, 1},
                                         TextCase{"EmptyIsRefused", u"", 5, -1},
                                         TextCase{"OfBlanksIsRefused", u"   ", 5, -1},
                                         TextCase{"CountsWithoutOuterBlanks", u"  abcde  ", 5, 1},
                                         TextCase{"CountsInnerBlanks", u"ab cde", 5, -1},
                                         TextCase{"BesideATabStands", u"\t", 5, 1},
                                         TextCase{"WithoutAMaximumIsRefused", u"a", 0, -1},
                                         TextCase{"BelowNoMaximumIsRefused", u"a", -1, -1},
                                         TextCase{"IsCutBeforeItIsCounted",
                                                  std::u16string(300, u'a'), 259, 1}),
                         test::CaseName());

TEST_P(TextEditValidate, Text) {
  EditScene<TextEdit> scene(GetParam().text);
  scene.edit.maximumLength = GetParam().maximum;
  EXPECT_EQ(scene.edit.Validate(), GetParam().result);
  EXPECT_EQ(scene.dialog.calls, GetParam().result == 1 ? Calls() : kFocused);
  EXPECT_EQ(scene.shown(), GetParam().text);
}

// ---- NumberEdit ---------------------------------------------------------------------------------

TEST(NumberEdit, LetsAllStandOfItself) {
  EditScene<IntEdit> scene(u"x");
  EXPECT_EQ(scene.edit.NumberEdit::Validate(), 1);
  EXPECT_EQ(scene.edit.Spare(), 1);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

// ---- IntEdit ------------------------------------------------------------------------------------

struct NumberCase {
  const char* name;
  std::u16string text;
  NumberRange range;
  int result;
  Calls calls = {};
};

void PrintTo(const NumberCase& row, std::ostream* out) {
  *out << row.name;
}

const NumberRange kCopies = RangeOf(0.9999F, 999.0001F, 3);
const NumberRange kScale = RangeOf(25, 400, 3);
const NumberRange kAngle = RangeOf(-90.0001F, 90.0001F, 3, true);

NumberRange WithLastGood(NumberRange range, const std::u16string& text) {
  text.copy(range.lastGoodText, kEditTextUnits - 1);
  return range;
}

class IntEditValidate : public testing::TestWithParam<NumberCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Steps, IntEditValidate,
    testing::Values(
        // 1: the length, with its blanks
        NumberCase{"EmptyIsUndone",          u"",      kScale, -1, {"focus 1019", "undo 1019"}},
        NumberCase{"TooLongIsUndone",        u"1234",  kScale, -1, {"focus 1019", "undo 1019"}},
        NumberCase{"TooLongByBlanksIsUndone", u" 123", kScale, -1, {"focus 1019", "undo 1019"}},
        NumberCase{"OfTheMaximumStands",     u"123",   kScale, 1},
        // 2: blanks only
        NumberCase{"BlanksGiveWayToTheLastGood", u"  ", WithLastGood(kScale, u"77"), 1, {"text 1019 \"77\""}},
        NumberCase{"BlanksGiveWayToNothing",  u"  ",   kScale, 1, {"text 1019 \"\""}},
        // 3: the characters
        NumberCase{"LettersAreRefused",      u"1a",    kScale, -1, {"focus 1019"}},
        NumberCase{"InnerBlankIsRefused",    u"1 2",   kScale, -1, {"focus 1019"}},
        NumberCase{"PointIsRefused",         u"30.",   kScale, -1, {"focus 1019"}},
        NumberCase{"PlusIsRefused",          u"+30",   kScale, -1, {"focus 1019"}},
        NumberCase{"WideDigitIsRefused",     u"\uFF13", kScale, -1, {"focus 1019"}},
        NumberCase{"LoneSignIsRefused",      u"-",     kAngle, -1, {"focus 1019"}},
        NumberCase{"LoneSignWithBlanksIsRefused", u" - ", kAngle, -1, {"focus 1019"}},
        NumberCase{"SignedStands",           u"-45",   kAngle, 1},
        NumberCase{"LaterSignsStand",        u"4-5",   kAngle, 1},
        NumberCase{"SignsOnlyAreNoLoneOne",  u"--",    kAngle, 1},
        NumberCase{"LoneSignWithoutSignsCountsAsZero", u"-", kScale, 1, {"text 1019 \"25\""}},
        NumberCase{"SignWithoutSignsIsTooLow", u"-99", kScale, 1, {"text 1019 \"25\""}},
        // 4: both ends belong to the range
        NumberCase{"MinimumStands",          u"25",    kScale, 1},
        NumberCase{"MaximumStands",          u"400",   kScale, 1},
        NumberCase{"OuterBlanksStand",       u" 30",   kScale, 1},
        // 5: beyond the ends
        NumberCase{"BelowGoesToTheMinimum",  u"24",    kScale, 1, {"text 1019 \"25\""}},
        NumberCase{"AboveGoesToTheMaximum",  u"401",   kScale, 1, {"text 1019 \"400\""}},
        NumberCase{"MaximumHasNoMargin",     u"401",   RangeOf(25, 399.99995F, 3), 1, {"text 1019 \"399\""}},
        NumberCase{"ZeroGoesToTheMinimum",   u"0",     kScale, 1, {"text 1019 \"25\""}},
        NumberCase{"NoCopyIsOne",            u"0",     kCopies, 1, {"text 1019 \"1\""}},
        NumberCase{"AllCopiesStand",         u"999",   kCopies, 1},
        NumberCase{"OneCopyStands",          u"1",     kCopies, 1},
        NumberCase{"BelowASignedMinimum",    u"-91",   kAngle, 1, {"text 1019 \"-90\""}},
        NumberCase{"AtASignedMinimumStands", u"-90",   kAngle, 1},
        NumberCase{"NumberBeyondAnInteger",  u"99999999999", RangeOf(1, 400, 20), 1, {"text 1019 \"400\""}},
        NumberCase{"MaximumBeyondAnInteger", u"5",     RangeOf(-8e9F, -4e9F, 20), 1, {"text 1019 \"-2147483648\""}},
        NumberCase{"MinimumBeyondAnInteger", u"5",     RangeOf(4e9F, 8e9F, 20), 1, {"text 1019 \"2147483647\""}}),
    test::CaseName());
// clang-format on

TEST_P(IntEditValidate, Text) {
  EditScene<IntEdit> scene(GetParam().text);
  scene.edit.range = GetParam().range;
  EXPECT_EQ(scene.edit.Validate(), GetParam().result);
  EXPECT_EQ(scene.dialog.calls, GetParam().calls);
  EXPECT_EQ(scene.lastGood(), std::u16string(GetParam().range.lastGoodText));
}

struct ChangeCase {
  const char* name;
  std::u16string text;
  NumberRange range;
  int result;
  std::u16string lastGood;  // afterwards
  Calls calls = {};
};

void PrintTo(const ChangeCase& row, std::ostream* out) {
  *out << row.name;
}

class IntEditChange : public testing::TestWithParam<ChangeCase> {};

const NumberRange kScaleAfter77 = WithLastGood(kScale, u"77");
const NumberRange kAngleAfter7 = WithLastGood(kAngle, u"7");
const Calls kRefused77 = {"text 1019 \"77\"", "focus 1019", "select 1019 0 to -1",
                          "cursor to 123, 45"};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Steps, IntEditChange,
    testing::Values(
        // 1
        ChangeCase{"EmptyHasNoEffect",       u"",     kScaleAfter77, -1, u"77"},
        // 2
        ChangeCase{"TooLongIsUndone",        u"1234", kScale, -1, u"", {"focus 1019", "undo 1019"}},
        ChangeCase{"TooLongGivesWayToTheLastGood", u"1234", kScaleAfter77, -1, u"77",
                   {"focus 1019", "text 1019 \"77\"", "cursor to 123, 45"}},
        ChangeCase{"TooLongByBlanks",        u" 123", kScaleAfter77, -1, u"77",
                   {"focus 1019", "text 1019 \"77\"", "cursor to 123, 45"}},
        // 3
        ChangeCase{"BlanksHaveNoEffect",     u"  ",   kScaleAfter77, -1, u"77"},
        // 4
        ChangeCase{"LoneSignStands",         u"-",    kAngleAfter7, 1, u"7"},
        ChangeCase{"LoneSignWithBlankStands", u"- ",  kAngleAfter7, 1, u"7"},
        // 5
        ChangeCase{"LetterIsRefused",        u"1a",   kScaleAfter77, -1, u"77", kRefused77},
        ChangeCase{"InnerBlankIsRefused",    u"1 2",  kScaleAfter77, -1, u"77", kRefused77},
        ChangeCase{"PointIsRefused",         u"30.",  kScaleAfter77, -1, u"77", kRefused77},
        ChangeCase{"CommaIsRefused",         u"30,",  kScaleAfter77, -1, u"77", kRefused77},
        ChangeCase{"LetterBeforeAnyGoodText", u"a",   kScale, -1, u"",
                   {"text 1019 \"\"", "focus 1019", "select 1019 0 to -1", "cursor to 123, 45"}},
        // 6
        ChangeCase{"ShortOneStandsWithoutATrace", u"3", kScaleAfter77, 1, u"77"},
        ChangeCase{"ShortOneBehindBlanksStands", u" 3 ", kScaleAfter77, 1, u"77"},
        ChangeCase{"AboveBecomesTheMaximum", u"500",  kScale, 1, u"500", {"text 1019 \"400\""}},
        ChangeCase{"FullLengthBelowBecomesTheMinimum", u"012", kScale, 1, u"012", {"text 1019 \"25\""}},
        ChangeCase{"ZeroIsLeftAlone",        u"0",    kScale, 1, u"0"},
        ChangeCase{"ManyZerosAreLeftAlone",  u"000",  kScale, 1, u"000"},
        ChangeCase{"ZeroAndAFollowerStand",  u"05",   kScaleAfter77, 1, u"77"},
        ChangeCase{"NegativeZeroIsLeftAlone", u"-0",  kAngle, 1, u"-0"},
        ChangeCase{"NegativeOfFullLength",   u"-12",  kScale, 1, u"-12", {"text 1019 \"25\""}},
        ChangeCase{"CopiesOfFullLengthBelow", u"-12", kCopies, 1, u"-12", {"text 1019 \"0\""}},
        ChangeCase{"ShortNegativeStands",    u"-1",   kScaleAfter77, 1, u"77"},
        ChangeCase{"LoneSignWithoutSignsIsZero", u"-", kScale, 1, u"-"},
        ChangeCase{"AboveASignedMaximum",    u"91",   kAngle, 1, u"91", {"text 1019 \"90\""}},
        ChangeCase{"BelowASignedMinimum",    u"-91",  kAngle, 1, u"-91", {"text 1019 \"-90\""}},
        ChangeCase{"BelowAWholeSignedMinimum", u"-99", RangeOf(-90, 90, 3, true), 1, u"-99", {"text 1019 \"-90\""}},
        ChangeCase{"BelowAMinimumOfZero",    u"-5",   RangeOf(0, 90, 3), 1, u"-5", {"text 1019 \"0\""}},
        ChangeCase{"ShortBelowAMinimumOfZero", u"-5",  RangeOf(0, 400, 3), 1, u"-5", {"text 1019 \"0\""}},
        ChangeCase{"ShortBelowASignedMinimum", u"-5",  RangeOf(-2, 400, 3, true), 1, u"-5", {"text 1019 \"-2\""}},
        ChangeCase{"MaximumsMarginAddsADigit", u"12",  RangeOf(25, 99.99995F, 3), 1, u""},
        ChangeCase{"MaximumHasNoMargin",     u"401",  RangeOf(25, 399.99995F, 3), 1, u"401", {"text 1019 \"399\""}},
        ChangeCase{"MarginMakesASignedMinimumWhole", u"-99", RangeOf(-89.99999F, 90, 3, true), 1, u"-99", {"text 1019 \"-90\""}},
        ChangeCase{"MarginMakesTheMinimumWhole", u"5", RangeOf(24.99999F, 9, 3), 1, u"5", {"text 1019 \"25\""}},
        // 7
        ChangeCase{"GoodOneIsKept",          u"120",  kScaleAfter77, 1, u"120"},
        ChangeCase{"GoodOneIsKeptTrimmed",   u" 99",  kScaleAfter77, 1, u"99"},
        ChangeCase{"MinimumStands",          u"25",   kScale, 1, u"25"},
        ChangeCase{"MaximumStands",          u"400",  kScale, 1, u"400"},
        ChangeCase{"CopiesUpToTheMaximum",   u"999",  kCopies, 1, u"999"},
        ChangeCase{"FirstCopyStands",        u"1",    kCopies, 1, u"1"},
        ChangeCase{"LaterSignsEndTheNumber", u"4-5",  kAngle, 1, u"4-5"}),
    test::CaseName());
// clang-format on

TEST_P(IntEditChange, Text) {
  EditScene<IntEdit> scene(GetParam().text);
  scene.edit.range = GetParam().range;
  EXPECT_EQ(scene.edit.ChangeCheck(), GetParam().result);
  EXPECT_EQ(scene.dialog.calls, GetParam().calls);
  EXPECT_EQ(scene.lastGood(), GetParam().lastGood);
}

// The text that the check itself writes is checked in its turn, as the edit tells of it.
TEST(IntEditTyping, WrittenTextIsCheckedInItsTurn) {
  EditScene<IntEdit> scene(u"");
  scene.edit.range = kScale;
  scene.dialog.onChange = [&](std::int32_t) { scene.edit.ChangeCheck(); };
  struct Key {
    std::u16string typed;
    std::u16string shown;
    std::u16string lastGood;  // what was typed, also where something else is shown
  };
  for (const auto& [typed, shown, lastGood] :
       {Key{u"3", u"3", u""}, Key{u"35", u"35", u"35"}, Key{u"350", u"350", u"350"},
        Key{u"3500", u"350", u"350"}, Key{u"35x", u"350", u"350"}, Key{u"500", u"400", u"500"},
        Key{u"012", u"25", u"012"}}) {
    scene.dialog.controls[kEditId].text = typed;
    scene.edit.ChangeCheck();
    EXPECT_EQ(scene.shown(), shown);
    EXPECT_EQ(scene.lastGood(), lastGood) << shown.size();
  }
}

// An end that is itself outside of the range is written, and not once more for being outside.
TEST(IntEditTyping, EndOutsideTheRangeIsWrittenOnce) {
  EditScene<IntEdit> scene(u"-12");
  scene.edit.range = RangeOf(1.5F, 9, 3);
  scene.dialog.onChange = [&](std::int32_t) { scene.edit.ChangeCheck(); };
  EXPECT_EQ(scene.edit.ChangeCheck(), 1);
  EXPECT_EQ(scene.dialog.calls, (Calls{"text 1019 \"1\""}));
}

TEST(IntEditTyping, LastGoodTextIsCutAtItsField) {
  EditScene<IntEdit> scene(std::u16string(300, u'0'));
  scene.edit.range = RangeOf(0, 9, 400);
  EXPECT_EQ(scene.edit.ChangeCheck(), 1);
  EXPECT_EQ(scene.lastGood(), std::u16string(259, u'0'));
}

struct ValueCase {
  const char* name;
  std::u16string text;
  bool allowsSign;
  int result;
  std::int32_t value = 4711;
  Calls calls = {};
};

class IntEditValue : public testing::TestWithParam<ValueCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Texts, IntEditValue,
    testing::Values(
        ValueCase{"Number",               u"42",    false, 1, 42},
        ValueCase{"OuterBlanks",          u"  42 ", false, 1, 42},
        ValueCase{"BeyondTheRange",       u"9999",  false, 1, 9999},
        ValueCase{"LeadingZeros",         u"007",   false, 1, 7},
        ValueCase{"Signed",               u"-42",   true,  1, -42},
        ValueCase{"SignedWithoutSigns",   u"-42",   false, 1, -42},
        ValueCase{"LaterSign",            u"4-2",   false, 1, 4},
        ValueCase{"LoneSignWithoutSigns", u"-",     false, 1, 0},
        ValueCase{"LoneSign",             u"-",     true,  -1, 4711, {"focus 1019"}},
        ValueCase{"InnerBlank",           u"4 2",   false, -1},
        ValueCase{"Empty",                u"",      false, -1},
        ValueCase{"Blanks",               u"  ",    false, -1},
        ValueCase{"Letter",               u"4x",    false, -1, 4711, {"focus 1019"}},
        ValueCase{"Fraction",             u"4.2",   false, -1, 4711, {"focus 1019"}},
        ValueCase{"BeyondAnInteger",      u"99999999999", false, 1, 2147483647}),
    test::CaseName());
// clang-format on

TEST_P(IntEditValue, Text) {
  EditScene<IntEdit> scene(GetParam().text);
  scene.edit.range = RangeOf(25, 400, 3, GetParam().allowsSign);
  std::int32_t value = 4711;
  EXPECT_EQ(scene.edit.GetValue(&value), GetParam().result);
  EXPECT_EQ(value, GetParam().value);
  EXPECT_EQ(scene.dialog.calls, GetParam().calls);
}

TEST(IntEdit, ShowsNumbersInBaseTen) {
  EditScene<IntEdit> scene(u"");
  for (const auto& [value, text] : {std::pair<std::int32_t, std::u16string>{0, u"0"},
                                    {999, u"999"},
                                    {-45, u"-45"},
                                    {std::numeric_limits<std::int32_t>::max(), u"2147483647"},
                                    {std::numeric_limits<std::int32_t>::min(), u"-2147483648"}}) {
    scene.edit.SetValue(value);
    EXPECT_EQ(scene.shown(), text);
  }
}

// ---- DecimalEdit --------------------------------------------------------------------------------

// A text with a point; the same case runs with a comma in its place, in a language with the comma.
struct DecimalCase {
  const char* name;
  std::u16string text;
  NumberRange range;
  int result;
  std::u16string after;  // what is shown, or the last good text
  Calls calls = {};
};

void PrintTo(const DecimalCase& row, std::ostream* out) {
  *out << row.name;
}

template <typename Text>
Text InComma(Text text) {
  std::replace(text.begin(), text.end(), static_cast<typename Text::value_type>('.'),
               static_cast<typename Text::value_type>(','));
  return text;
}

NumberRange Decimals(std::int32_t precision, const std::u16string& lastGood = u"") {
  return RangeOf(0.5F, 8.25F, 5, false, precision, lastGood);
}

class DecimalEditValidate : public testing::TestWithParam<DecimalCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Texts, DecimalEditValidate,
    testing::Values(
        DecimalCase{"EmptyIsUndone",       u"",      Decimals(2), 1,  u"",     {"undo 1019"}},
        DecimalCase{"BlanksAreUndone",     u"  ",    Decimals(2), 1,  u"  ",   {"undo 1019"}},
        DecimalCase{"Within",              u"1.25",  Decimals(2), 1,  u"1.25"},
        DecimalCase{"OuterBlanks",         u" 1.2 ", Decimals(2), 1,  u" 1.2 "},
        DecimalCase{"AtTheMinimum",        u"0.5",   Decimals(2), 1,  u"0.5"},
        DecimalCase{"AtTheMaximum",        u"8.25",  Decimals(2), 1,  u"8.25"},
        DecimalCase{"AboveTheMaximum",     u"8.26",  Decimals(2), 1,  u"8.25", {"text 1019 \"8.25\""}},
        DecimalCase{"BelowTheMinimum",     u"0.49",  Decimals(2), 1,  u"0.50", {"text 1019 \"0.50\""}},
        DecimalCase{"Zero",                u"0",     Decimals(1), 1,  u"0.5",  {"text 1019 \"0.5\""}},
        DecimalCase{"Negative",            u"-1",    Decimals(1), 1,  u"0.5",  {"text 1019 \"0.5\""}},
        DecimalCase{"SignsOnlyAreZero",    u"--1",   Decimals(1), 1,  u"0.5",  {"text 1019 \"0.5\""}},
        DecimalCase{"NoDigitBehind",       u"3.",    Decimals(1), 1,  u"3."},
        DecimalCase{"TooManyDigits",       u"1.255", Decimals(2), -1, u"1.255", {"focus 1019"}},
        DecimalCase{"DigitsWithoutRoom",   u"1.2",   Decimals(0), -1, u"1.2",  {"focus 1019"}},
        DecimalCase{"InnerBlank",          u"1 2",   Decimals(2), -1, u"1 2",  {"focus 1019", "undo 1019"}},
        DecimalCase{"Letter",              u"1a",    Decimals(2), -1, u"1a",   {"focus 1019", "undo 1019"}},
        DecimalCase{"LeadingSeparator",    u".5",    Decimals(2), -1, u".5",   {"focus 1019", "undo 1019"}},
        DecimalCase{"TwoSeparators",       u"1.2.3", Decimals(2), -1, u"1.2.3", {"focus 1019", "undo 1019"}}),
    test::CaseName());
// clang-format on

TEST_P(DecimalEditValidate, WithAPoint) {
  EditScene<DecimalEdit> scene(GetParam().text);
  scene.edit.range = GetParam().range;
  EXPECT_EQ(scene.edit.Validate(), GetParam().result);
  EXPECT_EQ(scene.dialog.calls, GetParam().calls);
  EXPECT_EQ(scene.shown(), GetParam().after);
}

TEST_P(DecimalEditValidate, WithAComma) {
  EditScene<DecimalEdit> scene(InComma(GetParam().text));
  scene.world.process.DecimalCommaLanguage = true;
  scene.edit.range = GetParam().range;
  EXPECT_EQ(scene.edit.Validate(), GetParam().result);
  Calls calls;
  for (const std::string& call : GetParam().calls) {
    calls.push_back(InComma(call));
  }
  EXPECT_EQ(scene.dialog.calls, calls);
  EXPECT_EQ(scene.shown(), InComma(GetParam().after));
}

class DecimalEditChange : public testing::TestWithParam<DecimalCase> {};

const Calls kRefused12 = {"text 1019 \"1.2\"", "focus 1019", "select 1019 0 to -1",
                          "cursor to 123, 45"};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Texts, DecimalEditChange,
    testing::Values(
        DecimalCase{"EmptyHasNoEffect",   u"",       Decimals(2, u"1.2"), -1, u"1.2"},
        DecimalCase{"TooLongIsUndone",    u"1.2345", Decimals(2),         -1, u"", {"focus 1019", "undo 1019"}},
        DecimalCase{"TooLongGivesWay",    u"1.2345", Decimals(2, u"1.2"), -1, u"1.2",
                    {"focus 1019", "text 1019 \"1.2\"", "cursor to 123, 45"}},
        DecimalCase{"BlanksHaveNoEffect", u"  ",     Decimals(2, u"1.2"), -1, u"1.2"},
        DecimalCase{"LoneSignStands",     u"-", RangeOf(-1, 1, 5, true, 2, u"1.2"), 1, u"1.2"},
        DecimalCase{"LoneSignWithoutSigns", u"-",    Decimals(2, u"1.2"), 1,  u"-"},
        DecimalCase{"GoodOneIsKept",      u" 3.4 ",  Decimals(2, u"1.2"), 1,  u"3.4"},
        DecimalCase{"SeparatorAtTheEnd",  u"3.",     Decimals(2, u"1.2"), 1,  u"3."},
        DecimalCase{"BeyondTheRange",     u"99.9",   Decimals(2, u"1.2"), 1,  u"99.9"},
        DecimalCase{"DigitsAreNotCounted", u"3.456", Decimals(2, u"1.2"), 1,  u"3.456"},
        DecimalCase{"InnerBlank",         u"1 2",    Decimals(2, u"1.2"), -1, u"1.2", kRefused12},
        DecimalCase{"Letter",             u"1a",     Decimals(2, u"1.2"), -1, u"1.2", kRefused12},
        DecimalCase{"TwoSeparators",      u"1.2.",   Decimals(2, u"1.2"), -1, u"1.2", kRefused12}),
    test::CaseName());
// clang-format on

TEST_P(DecimalEditChange, WithAPoint) {
  EditScene<DecimalEdit> scene(GetParam().text);
  scene.edit.range = GetParam().range;
  EXPECT_EQ(scene.edit.ChangeCheck(), GetParam().result);
  EXPECT_EQ(scene.dialog.calls, GetParam().calls);
  EXPECT_EQ(scene.lastGood(), GetParam().after);
}

TEST_P(DecimalEditChange, WithAComma) {
  EditScene<DecimalEdit> scene(InComma(GetParam().text));
  scene.world.process.DecimalCommaLanguage = true;
  scene.edit.range =
      WithLastGood(GetParam().range, InComma(std::u16string(GetParam().range.lastGoodText)));
  EXPECT_EQ(scene.edit.ChangeCheck(), GetParam().result);
  Calls calls;
  for (const std::string& call : GetParam().calls) {
    // All but the cursor's place, which has a comma of its own.
    calls.push_back(InComma(call));
  }
  EXPECT_EQ(scene.dialog.calls, calls);
  EXPECT_EQ(scene.lastGood(), InComma(GetParam().after));
}

struct SeparatorCase {
  const char* name;
  bool commaLanguage;
  std::u16string typed;
  int result;
};

class DecimalEditSeparator : public testing::TestWithParam<SeparatorCase> {};

// Only a language with the comma refuses a leading separator while the user types.
INSTANTIATE_TEST_SUITE_P(Languages, DecimalEditSeparator,
                         testing::Values(SeparatorCase{"LeadingPointWithPoint", false, u".5", 1},
                                         SeparatorCase{"LeadingPointWithComma", true, u".5", -1},
                                         SeparatorCase{"LeadingCommaWithComma", true, u",5", -1},
                                         SeparatorCase{"LeadingCommaWithPoint", false, u",5", -1},
                                         SeparatorCase{"PointWithComma", true, u"1.5", -1},
                                         SeparatorCase{"CommaWithPoint", false, u"1,5", -1},
                                         SeparatorCase{"BothWithComma", true, u"1.5,", -1}),
                         test::CaseName());

TEST_P(DecimalEditSeparator, WhileTyping) {
  EditScene<DecimalEdit> scene(GetParam().typed);
  scene.world.process.DecimalCommaLanguage = GetParam().commaLanguage;
  scene.edit.range = Decimals(2, u"7");
  EXPECT_EQ(scene.edit.ChangeCheck(), GetParam().result);
  EXPECT_EQ(scene.shown(), GetParam().result == 1 ? GetParam().typed : u"7");
  EXPECT_EQ(scene.lastGood(), GetParam().result == 1 ? GetParam().typed : u"7");
}

struct FractionCase {
  const char* name;
  std::u16string text;
  std::int32_t precision;
  int result;
  float value = 4711;
  Calls calls = {};
};

class DecimalEditValue : public testing::TestWithParam<FractionCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Texts, DecimalEditValue,
    testing::Values(
        FractionCase{"WholeNumber",      u"3",     2, 1, 3.0F + 0.00001F},
        FractionCase{"Fraction",         u"8.25",  2, 1, 8.25F + 0.00001F},
        FractionCase{"OuterBlanks",      u" 8.5 ", 1, 1, 8.5F + 0.00001F},
        FractionCase{"Negative",         u"-8.5",  1, 1, -8.5F + 0.00001F},
        FractionCase{"SignAndSeparator", u"-.5",   1, 1, -0.5F + 0.00001F},
        FractionCase{"BeyondTheRange",   u"9999",  2, 1, 9999.0F + 0.00001F},
        FractionCase{"LaterSign",        u"4-2",   2, 1, 4.0F + 0.00001F},
        FractionCase{"LoneSign",         u"-",     2, 1, 0.00001F},
        FractionCase{"NoDigitBehind",    u"4.",    0, 1, 4.0F + 0.00001F},
        FractionCase{"BeyondAFloat", std::u16string(50, u'9'), 0, 1, std::numeric_limits<float>::max()},
        FractionCase{"InnerBlank",       u"4 2",   2, -1},
        FractionCase{"Empty",            u"",      2, -1, 4711, {"focus 1019"}},
        FractionCase{"Letter",           u"4x",    2, -1, 4711, {"focus 1019"}},
        FractionCase{"LeadingSeparator", u".5",    2, -1, 4711, {"focus 1019"}},
        FractionCase{"TwoSeparators",    u"1.2.3", 5, -1, 4711, {"focus 1019"}},
        FractionCase{"TooManyDigits",    u"1.234", 2, -1, 4711, {"focus 1019"}},
        FractionCase{"NotANumber",       u"nan",   2, -1, 4711, {"focus 1019"}},
        FractionCase{"Exponent",         u"1e5",   2, -1, 4711, {"focus 1019"}}),
    test::CaseName());
// clang-format on

TEST_P(DecimalEditValue, WithAPoint) {
  EditScene<DecimalEdit> scene(GetParam().text);
  scene.edit.range = Decimals(GetParam().precision);
  float value = 4711;
  EXPECT_EQ(scene.edit.GetValue(&value), GetParam().result);
  EXPECT_EQ(value, GetParam().value);
  EXPECT_EQ(scene.dialog.calls, GetParam().calls);
}

TEST_P(DecimalEditValue, WithAComma) {
  EditScene<DecimalEdit> scene(InComma(GetParam().text));
  scene.world.process.DecimalCommaLanguage = true;
  scene.edit.range = Decimals(GetParam().precision);
  float value = 4711;
  EXPECT_EQ(scene.edit.GetValue(&value), GetParam().result);
  EXPECT_EQ(value, GetParam().value);
  EXPECT_EQ(scene.dialog.calls, GetParam().calls);
}

TEST(DecimalEdit, ReadsAPointInALanguageWithTheComma) {
  EditScene<DecimalEdit> scene(u"1.5");
  scene.world.process.DecimalCommaLanguage = true;
  scene.edit.range = Decimals(1);
  float value = 0;
  EXPECT_EQ(scene.edit.GetValue(&value), 1);
  EXPECT_EQ(value, 1.5F + 0.00001F);
}

TEST(DecimalEdit, ValidatesAPointInALanguageWithTheComma) {
  EditScene<DecimalEdit> scene(u"1.5");
  scene.world.process.DecimalCommaLanguage = true;
  scene.edit.range = Decimals(2);
  EXPECT_EQ(scene.edit.Validate(), 1);
  EXPECT_EQ(scene.dialog.calls, Calls());
  scene.dialog.controls[kEditId].text = u"9.5";
  EXPECT_EQ(scene.edit.Validate(), 1);
  EXPECT_EQ(scene.shown(), u"8,25");
}

TEST(DecimalEdit, ValueSurvivesATruncation) {
  EditScene<DecimalEdit> scene(u"8.27");
  scene.edit.range = Decimals(2);
  float value = 0;
  scene.edit.GetValue(&value);
  EXPECT_EQ(static_cast<int>(value * 100), 827);
}

struct ShownCase {
  const char* name;
  float value;
  std::int32_t precision;
  std::string text;
};

class DecimalEditShown : public testing::TestWithParam<ShownCase> {};

INSTANTIATE_TEST_SUITE_P(Values, DecimalEditShown,
                         testing::Values(ShownCase{"WithoutDigits", 3, 0, "3"},
                                         ShownCase{"OneDigit", 3, 1, "3.0"},
                                         ShownCase{"Rounded", 8.256F, 2, "8.26"},
                                         ShownCase{"Negative", -0.5F, 2, "-0.50"},
                                         ShownCase{"Large", 16777216.0F, 1, "16777216.0"},
                                         ShownCase{"PrecisionBelowNone", 3.7F, -2, "4"}),
                         test::CaseName());

TEST_P(DecimalEditShown, InBothLanguages) {
  for (const bool comma : {false, true}) {
    EditScene<DecimalEdit> scene(u"");
    scene.world.process.DecimalCommaLanguage = comma;
    scene.edit.range.precision = GetParam().precision;
    scene.edit.SetValue(GetParam().value);
    EXPECT_EQ(scene.dialog.calls, ShowsText(comma ? InComma(GetParam().text) : GetParam().text));
  }
}

TEST(DecimalEdit, TooManyDigitsForTheBoxShowNothing) {
  EditScene<DecimalEdit> scene(u"old");
  scene.edit.range.precision = 1000;
  scene.edit.SetValue(1);
  EXPECT_EQ(scene.shown(), u"old");
}

// ---- Spins --------------------------------------------------------------------------------------

TEST(IntSpin, HeldButtonNeverAccelerates) {
  Scene scene;
  scene.dialog.Add(kSpinId);
  IntSpin spin;
  spin.Attach(DialogRecorder::Dialog(), kSpinId);
  EXPECT_EQ(spin.id(), kSpinId);
  EXPECT_EQ(spin.window(), DialogRecorder::HandleOf(kSpinId));
  EXPECT_EQ(scene.dialog.calls, (Calls{"acceleration 1020, 1 row: 200 s, 1"}));
}

TEST(FloatSpin, HeldButtonNeverAccelerates) {
  Scene scene;
  scene.dialog.Add(kSpinId);
  FloatSpin spin;
  spin.Attach(DialogRecorder::Dialog(), kSpinId);
  EXPECT_EQ(scene.dialog.calls, (Calls{"acceleration 1020, 1 row: 200 s, 1"}));
}

struct StepCase {
  const char* name;
  std::u16string text;
  bool up;
  bool stepped;
  std::u16string shown;
};

// A spin of the scene's edit does what the case says.
template <typename Spin, typename Edit, typename Case>
void ExpectStep(EditScene<Edit>& scene, const Case& row) {
  Spin spin;
  spin.SetBuddy(&scene.edit);
  EXPECT_EQ(spin.Step(row.up), row.stepped);
  EXPECT_EQ(scene.shown(), row.shown);
}

class IntSpinStep : public testing::TestWithParam<StepCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Copies, IntSpinStep,
    testing::Values(StepCase{"Up",                 u"5",    true,  true,  u"6"},
                    StepCase{"Down",               u"5",    false, true,  u"4"},
                    StepCase{"UpToTheMaximum",     u"998",  true,  true,  u"999"},
                    StepCase{"AboveTheMaximum",    u"999",  true,  false, u"999"},
                    StepCase{"DownToTheMinimum",   u"2",    false, true,  u"1"},
                    StepCase{"BelowTheMinimum",    u"1",    false, false, u"1"},
                    StepCase{"UpFromNoNumber",     u"x",    true,  true,  u"1"},
                    StepCase{"DownFromNoNumber",   u"x",    false, false, u"x"},
                    StepCase{"UpFromNothing",      u"",     true,  true,  u"1"},
                    StepCase{"BackIntoTheRange",   u"1000", false, true,  u"999"},
                    StepCase{"LastInteger",        u"2147483647", true, false, u"2147483647"}),
    test::CaseName());
// clang-format on

TEST_P(IntSpinStep, MovesTheBuddy) {
  EditScene<IntEdit> scene(GetParam().text);
  scene.edit.range = kCopies;
  ExpectStep<IntSpin>(scene, GetParam());
  const bool selected =
      !scene.dialog.calls.empty() && scene.dialog.calls.back() == "select 1019 999 to -1";
  EXPECT_EQ(selected, GetParam().stepped);
}

TEST(IntSpin, WithoutABuddyStaysWhereItIs) {
  Scene scene;
  IntSpin spin;
  EXPECT_FALSE(spin.Step(true));
  spin.SetBuddy(nullptr);
  EXPECT_FALSE(spin.Step(true));
}

class FloatSpinStep : public testing::TestWithParam<StepCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Tenths, FloatSpinStep,
    testing::Values(StepCase{"Up",               u"5.0", true,  true,  u"5.1"},
                    StepCase{"Down",             u"5.0", false, true,  u"4.9"},
                    StepCase{"OverAWholeNumber", u"4.9", true,  true,  u"5.0"},
                    StepCase{"AboveTheMaximum",  u"8.2", true,  false, u"8.2"},
                    StepCase{"DownToTheMinimum", u"0.6", false, true,  u"0.5"},
                    StepCase{"BelowTheMinimum",  u"0.5", false, false, u"0.5"},
                    StepCase{"FromNoNumber",     u"x",   true,  false, u"x"},
                    StepCase{"TooManyDigits",    u"1.23", true, false, u"1.23"}),
    test::CaseName());
// clang-format on

TEST_P(FloatSpinStep, MovesTheBuddy) {
  EditScene<DecimalEdit> scene(GetParam().text);
  scene.edit.range = Decimals(1);
  ExpectStep<FloatSpin>(scene, GetParam());
  if (!GetParam().stepped) {
    for (const std::string& call : scene.dialog.calls) {
      EXPECT_EQ(call, "focus 1019");  // the reading of a text that is no number, and no more
    }
  }
}

// The user's paper sizes, whose ranges have a margin that lets the last step reach the end.
struct PaperStepCase {
  const char* name;
  float minimum;
  float maximum;
  std::int32_t precision;
  std::u16string text;
  bool up;
  bool stepped;
  std::u16string shown;
};

class PaperSizeStep : public testing::TestWithParam<PaperStepCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Ends, PaperSizeStep,
    testing::Values(
        PaperStepCase{"MillimetresToTheMaximum", 74.9999F, 216.0001F, 1, u"215.9", true,  true,  u"216.0"},
        PaperStepCase{"MillimetresToTheMinimum", 74.9999F, 216.0001F, 1, u"75.1",  false, true,  u"75.0"},
        PaperStepCase{"MillimetresAbove",        74.9999F, 216.0001F, 1, u"216.0", true,  false, u"216.0"},
        PaperStepCase{"MillimetresBelow",        74.9999F, 216.0001F, 1, u"75.0",  false, false, u"75.0"},
        PaperStepCase{"InchesToTheMaximum",      2.9499F,  8.5001F,   2, u"8.49",  true,  true,  u"8.50"},
        PaperStepCase{"InchesToTheMinimum",      2.9499F,  8.5001F,   2, u"2.96",  false, true,  u"2.95"},
        PaperStepCase{"InchesAbove",             2.9499F,  8.5001F,   2, u"8.50",  true,  false, u"8.50"},
        PaperStepCase{"InchesBelow",             2.9499F,  8.5001F,   2, u"2.95",  false, false, u"2.95"}),
    test::CaseName());
// clang-format on

TEST_P(PaperSizeStep, ReachesTheEndAndGoesNoFurther) {
  EditScene<DecimalEdit> scene(GetParam().text);
  scene.edit.range = RangeOf(GetParam().minimum, GetParam().maximum, 6);
  scene.edit.range.precision = GetParam().precision;
  ExpectStep<FloatSpin>(scene, GetParam());
}

TEST(FloatSpin, ShowsTheStepInALanguageWithTheComma) {
  EditScene<DecimalEdit> scene(u"5,0");
  scene.world.process.DecimalCommaLanguage = true;
  scene.edit.range = Decimals(1);
  FloatSpin spin;
  spin.SetBuddy(&scene.edit);
  EXPECT_TRUE(spin.Step(true));
  EXPECT_EQ(scene.dialog.calls, (Calls{"text 1019 \"5,1\"", "select 1019 999 to -1"}));
}

TEST(FloatSpin, StepsByTheLastDigitShown) {
  for (const auto& [precision, text] : {std::pair<std::int32_t, std::u16string>{0, u"3"},
                                        {1, u"2.1"},
                                        {2, u"2.01"},
                                        {3, u"2.001"}}) {
    EditScene<DecimalEdit> scene(u"2");
    scene.edit.range = Decimals(precision);
    FloatSpin spin;
    spin.SetBuddy(&scene.edit);
    EXPECT_TRUE(spin.Step(true));
    EXPECT_EQ(scene.shown(), text);
  }
}

TEST(FloatSpin, StepsFromAThousandthWhenThereIsNoNumber) {
  EditScene<DecimalEdit> scene(u"");
  scene.edit.range = RangeOf(0, 9, 9, false, 3);
  FloatSpin spin;
  spin.SetBuddy(&scene.edit);
  EXPECT_TRUE(spin.Step(true));
  EXPECT_EQ(scene.shown(), u"0.002");
}

TEST(FloatSpin, WithoutABuddyStaysWhereItIs) {
  Scene scene;
  FloatSpin spin;
  EXPECT_FALSE(spin.Step(true));
  spin.SetBuddy(nullptr);
  EXPECT_FALSE(spin.Step(true));
}

// ---- Groups -------------------------------------------------------------------------------------

// Three radio buttons, the first with a dependent control.
struct GroupScene : Scene {
  GroupScene() {
    for (const std::int32_t id : {1, 2, 3, 10, 99}) {
      dialog.Add(id);
    }
    group.Attach(DialogRecorder::Dialog(), 99);
    dependent.Attach(DialogRecorder::Dialog(), 10);
    first.AddChild(&dependent);
    std::int32_t id = 1;
    for (RadioButton* button : {&first, &second, &third}) {
      button->Attach(DialogRecorder::Dialog(), id++);
      group.AddChild(button);
    }
  }

  DlgControl dependent;
  RadioButton first;
  RadioButton second;
  RadioButton third;
  RadioGroup group;
};

TEST(ControlGroup, EnablesItsChildrenAndNotItself) {
  GroupScene scene;
  ControlGroup group;
  group.Attach(DialogRecorder::Dialog(), 99);
  group.AddChild(&scene.second);
  group.AddChild(&scene.third);
  group.Enable(false);
  group.Enable(true);
  EXPECT_EQ(scene.dialog.calls, (Calls{"disable 2", "disable 3", "enable 2", "enable 3"}));
}

TEST(ControlGroup, PassesOverANullChild) {
  Scene scene;
  ControlGroup group;
  group.AddChild(nullptr);
  group.Enable(true);
  EXPECT_EQ(scene.world.platform.memory.liveBlocks(), 0U);
}

TEST(ControlGroup, GrowsWithItsChildren) {
  Scene scene;
  std::array<DlgControl, 33> controls;
  ControlGroup group;
  Calls expected;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const auto id = static_cast<std::int32_t>(i) + 1;
    scene.dialog.Add(id);
    controls[i].Attach(DialogRecorder::Dialog(), id);
    group.AddChild(&controls[i]);
    expected.push_back("enable " + std::to_string(id));
  }
  group.Enable(true);
  EXPECT_EQ(scene.dialog.calls, expected);
  EXPECT_EQ(scene.world.platform.memory.liveBlocks(), 1U);
}

TEST(ControlGroup, WithoutRoomReportsAndLeavesTheChildOut) {
  Scene scene;
  std::array<DlgControl, 6> controls;
  ControlGroup group;
  scene.world.platform.faults.FailOperation("HeapAlloc", 2);
  Calls expected;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const auto id = static_cast<std::int32_t>(i) + 1;
    scene.dialog.Add(id);
    controls[i].Attach(DialogRecorder::Dialog(), id);
    group.AddChild(&controls[i]);
    if (id != 5) {
      expected.push_back("disable " + std::to_string(id));
    }
  }
  group.Enable(false);
  EXPECT_EQ(scene.dialog.calls, expected);
  EXPECT_EQ(scene.world.platform.debug.lines, (std::vector<std::u16string>{u"vector<T> too long"}));
}

TEST(RadioGroup, SelectsOneChildAndUnchecksTheOthers) {
  GroupScene scene;
  scene.dialog.controls[2].check = kBstChecked;
  scene.group.Select(3);
  EXPECT_EQ(scene.dialog.calls, (Calls{"uncheck 2", "check 3"}));
}

TEST(RadioGroup, SelectsNoChildByAForeignId) {
  GroupScene scene;
  scene.dialog.controls[1].check = kBstChecked;
  scene.group.Select(99);
  EXPECT_EQ(scene.dialog.calls, (Calls{"uncheck 1", "disable 10"}));
}

TEST(RadioGroup, SelectedChildEnablesItsDependents) {
  GroupScene scene;
  scene.group.Select(1);
  EXPECT_EQ(scene.dialog.calls, (Calls{"check 1", "enable 10"}));
}

TEST(RadioGroup, PassesOverANullChild) {
  GroupScene scene;
  scene.group.AddChild(nullptr);
  scene.group.Select(2);
  EXPECT_EQ(scene.dialog.calls, (Calls{"check 2"}));
}

TEST(RadioButton, EnablesItsDependentsThenItself) {
  GroupScene scene;
  scene.first.Enable(false);
  EXPECT_EQ(scene.dialog.calls, (Calls{"disable 10", "disable 1"}));
}

TEST(RadioButton, InTheStateAlreadyLeavesItsDependentsOutOfStep) {
  GroupScene scene;
  scene.dialog.controls[10].enabled = true;
  scene.first.SetCheck(false);
  EXPECT_EQ(scene.dialog.calls, Calls());
  EXPECT_TRUE(scene.dialog.controls[10].enabled);
  scene.dialog.controls[1].check = kBstChecked;
  scene.dialog.controls[10].enabled = false;
  scene.first.SetCheck(true);
  EXPECT_EQ(scene.dialog.calls, Calls());
  EXPECT_FALSE(scene.dialog.controls[10].enabled);
}

// A third state, which a foreign hand can set, agrees with neither of the two.
TEST(RadioButton, ThirdStateIsUncheckedWithItsDependents) {
  GroupScene scene;
  scene.dialog.controls[1].check = 2;
  scene.first.SetCheck(false);
  EXPECT_EQ(scene.dialog.Take(), (Calls{"uncheck 1", "disable 10"}));
}

TEST(RadioButton, TellsItsState) {
  GroupScene scene;
  EXPECT_FALSE(scene.first.IsChecked());
  scene.first.SetCheck(true);
  EXPECT_TRUE(scene.first.IsChecked());
  EXPECT_EQ(scene.dialog.Take(), (Calls{"check 1", "enable 10"}));
  scene.first.SetCheck(false);
  EXPECT_EQ(scene.dialog.Take(), (Calls{"uncheck 1", "disable 10"}));
}

TEST(RadioButton, EnabledWhileUnselectedEnablesItsDependentsAsWell) {
  GroupScene scene;
  scene.dialog.controls[2].check = kBstChecked;
  scene.dialog.controls[10].enabled = false;
  scene.group.Enable(true);
  EXPECT_TRUE(scene.dialog.controls[10].enabled);
  scene.group.Select(2);  // changes no state, and so corrects nothing
  EXPECT_TRUE(scene.dialog.controls[10].enabled);
  scene.group.Select(1);
  scene.group.Select(2);
  EXPECT_FALSE(scene.dialog.controls[10].enabled);
}

TEST(RadioButton, SelectedByItsIdChecksItself) {
  GroupScene scene;
  scene.first.Select(1);
  EXPECT_EQ(scene.dialog.Take(), (Calls{"check 1", "enable 10"}));
  scene.first.Select(2);
  EXPECT_EQ(scene.dialog.Take(), (Calls{"disable 10"}));
  EXPECT_TRUE(scene.first.IsChecked());
}

TEST(RadioButton, NeverAttachedHasNoEffect) {
  Scene scene;
  RadioButton spare;
  spare.Enable(true);
  spare.Enable(false);
  spare.SetCheck(true);
  EXPECT_EQ(scene.dialog.calls, Calls());
}

// ---- Failures -----------------------------------------------------------------------------------

template <typename Edit>
void UseEdit(Edit& edit) {
  edit.Attach(DialogRecorder::Dialog(), kEditId);
  edit.Validate();
  edit.ChangeCheck();
  edit.SetValue(7);
}

// What every wrapper does with the window system, with a text that takes the longest way.
void UseAll(DialogRecorder& dialog, const std::u16string& text) {
  for (const std::int32_t id : {kEditId, kSpinId, 1, 2}) {
    dialog.Add(id);
  }
  const auto type = [&] { dialog.controls[kEditId].text = text; };
  IntEdit whole;
  whole.range = WithLastGood(kScale, u"77");
  type();
  UseEdit(whole);
  std::int32_t number = 0;
  type();
  whole.GetValue(&number);
  IntSpin intSpin;
  intSpin.Attach(DialogRecorder::Dialog(), kSpinId);
  intSpin.SetBuddy(&whole);
  intSpin.Step(true);
  DecimalEdit decimal;
  decimal.range = Decimals(1, u"7");
  type();
  UseEdit(decimal);
  float fraction = 0;
  type();
  decimal.GetValue(&fraction);
  FloatSpin floatSpin;
  floatSpin.SetBuddy(&decimal);
  floatSpin.Step(false);
  TextEdit edit;
  edit.Attach(DialogRecorder::Dialog(), kEditId);
  edit.Validate();
  edit.SetText(u"x");
  RadioButton first;
  RadioButton second;
  RadioGroup group;
  first.Attach(DialogRecorder::Dialog(), 1);
  second.Attach(DialogRecorder::Dialog(), 2);
  group.AddChild(&first);
  group.AddChild(&second);
  group.Select(1);
  group.Select(2);
  group.Enable(false);
}

TEST(Controls, SurviveTheFailureOfEachCall) {
  for (const char16_t* text : {u"", u"  ", u"12345678", u"x", u"500", u"012", u"33"}) {
    std::size_t n = 0;
    bool fired = true;
    while (fired) {
      Scene scene;
      scene.world.platform.faults.FailCall(++n);
      UseAll(scene.dialog, text);
      fired = scene.world.platform.faults.fired();
    }
    EXPECT_GT(n, 30U);
  }
}

}  // namespace
}  // namespace ostrel
