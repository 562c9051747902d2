// The scenarios' language: what it understands, what it refuses, and that no expectation can pass
// by mistake. The sheet here is a row of prepared answers.
#include "scenarios/sheet_scenario.h"

#include "core/text.h"
#include "record_fields.h"
#include "scenarios/scenario_files.h"
#include "support/case_name.h"

#include <cstring>
#include <deque>
#include <gtest/gtest.h>
#include <stdexcept>

namespace ostrel::scenario {
namespace {

constexpr int kKnown = 10;    // a control that is there, shown, enabled and checked
constexpr int kLocked = 20;   // disabled, hidden and unchecked
constexpr int kMissing = 99;  // not there

// A sheet that answers as it was told and writes down what is done to it.
class PreparedSheet : public SheetUnderTest {
 public:
  PreparedSheet() { std::memset(&output, kOutputPoison, sizeof(output)); }

  void BeUser(const UserKind& user) override {
    Did("user " + user.language + " of " + std::to_string(user.country));
  }
  int HomePaper() override { return 9; }
  std::u16string UiText(std::uint32_t id) override {
    const std::string digits = std::to_string(id);
    return u"text " + std::u16string(digits.begin(), digits.end());
  }
  void SelectModel(std::u16string_view model) override { Did("model " + Narrow(model)); }
  void FitTrays(int count) override { Did("trays " + std::to_string(count)); }
  void StorePaper(const CustomPaperRecord& paper) override { papers.push_back(paper); }
  std::optional<CustomPaperRecord> StoredPaper(std::u16string_view name) override {
    for (const CustomPaperRecord& paper : papers) {
      if (FieldText(paper.Name) == name) {
        return paper;
      }
    }
    return std::nullopt;
  }
  DriverDevmode PrintersRecord() override {
    DriverDevmode record = {};
    record.publicDevmode.dmCopies = 1;
    return record;
  }
  void SaveFavorite(std::u16string_view name, const DriverDevmode& record) override {
    Did("favorite " + Narrow(name) + " of " + std::to_string(record.publicDevmode.dmCopies));
  }
  void Open(const DriverDevmode& callers, bool noPermission) override {
    input = callers;
    open = true;
    Did(noPermission ? "open readonly" : "open");
  }
  bool IsOpen() override { return open; }
  void ShowPage(std::u16string_view title) override { Did("page " + Narrow(title)); }
  void Press(SheetButton button) override {
    Did("press " + std::to_string(static_cast<int>(button)));
    boxes = boxesOfPress;
    if (dialogs > 0) {
      --dialogs;
      return;
    }
    open = button == SheetButton::kHelp || button == SheetButton::kApply;
  }
  bool OffersApply() override { return offersApply; }
  std::optional<ShownBox> TakeBox() override {
    if (boxes.empty()) {
      return std::nullopt;
    }
    ShownBox box = boxes.front();
    boxes.pop_front();
    return box;
  }
  void AnswerNext(BoxAnswer answer) override {
    Did("answer " + std::to_string(static_cast<int>(answer)));
  }
  void OnDialog(std::function<void()> play) override { play_ = std::move(play); }
  int OpenDialogs() override { return dialogs; }
  std::u16string DialogTitle() override { return u"text 6"; }
  DriverDevmode Input() override { return input; }
  DriverDevmode Output() override { return output; }

  bool HasControl(int control) override { return control != kMissing; }
  bool IsChecked(int control) override { return control == kKnown; }
  bool IsEnabled(int control) override { return control == kKnown; }
  bool IsShown(int control) override { return control == kKnown; }
  std::u16string Text(int /*control*/) override { return u"12"; }
  int Row(int /*control*/) override { return 2; }
  std::vector<std::u16string> Rows(int /*control*/) override { return {u"text 1", u"text 2"}; }
  std::u16string Tooltip(int /*control*/) override { return u"text 3text 408text 4"; }
  int FocusedControl() override { return kKnown; }
  void Click(int control) override {
    Did("click " + std::to_string(control));
    if (control == opener) {
      ++dialogs;
      if (playsInside) {
        play_();
        Did("dialog over");
      }
    }
  }
  void Type(int control, std::u16string_view text) override {
    Did("type " + std::to_string(control) + " '" + Narrow(text) + "'");
  }
  void Choose(int control, int row) override {
    Did("choose " + std::to_string(control) + " " + std::to_string(row));
  }
  void Spin(int control, bool up) override {
    Did("spin " + std::to_string(control) + (up ? " up" : " down"));
  }
  void Focus(int control) override { Did("focus " + std::to_string(control)); }
  void Notify(int control) override { Did("notify " + std::to_string(control)); }

  static std::string Narrow(std::u16string_view text) { return {text.begin(), text.end()}; }
  void Did(const std::string& what) { done += what + "\n"; }

  DriverDevmode input = {};
  DriverDevmode output = {};
  bool open = false;
  bool offersApply = false;
  std::deque<ShownBox> boxes;
  std::deque<ShownBox> boxesOfPress;
  std::vector<CustomPaperRecord> papers;
  int opener = 0;            // a click on it opens a dialog
  bool playsInside = false;  // and ends when the dialog does
  int dialogs = 0;
  std::string done;

 private:
  std::function<void()> play_;
};

std::string Played(PreparedSheet& sheet, std::string_view text) {
  return PlayScenario(ParseScenario("case", text), sheet);
}

// ---- What a user does ---------------------------------------------------------------------------

TEST(SheetScenario, DoesWhatItsLinesSay) {
  PreparedSheet sheet;
  sheet.offersApply = true;
  EXPECT_EQ(
      Played(sheet,
             "# a remark\n\n  model  Hazel 2 Series \r\nset dmCopies 5\nfavorite 202\nreadonly\n"
             "open\npage 106\nclick 10\ntype 10 12 a\ntype 10\nchoose 10 2\nspin 10 up\n"
             "spin 10 down\nfocus 10\nnotify 20\npress help\npress apply\nexpect open\n"
             "press ok\nexpect closed"),
      "");
  EXPECT_EQ(sheet.done,
            "model Hazel 2 Series\nfavorite text 202 of 5\nopen readonly\npage text 106\nclick 10\n"
            "type 10 '12 a'\ntype 10 ''\nchoose 10 2\nspin 10 up\nspin 10 down\nfocus 10\n"
            "notify 20\npress 3\npress 1\npress 0\n");
  EXPECT_EQ(sheet.input.publicDevmode.dmCopies, 5);
}

TEST(SheetScenario, SetsTextsByTheirStrings) {
  PreparedSheet sheet;
  EXPECT_EQ(Played(sheet, "set FavoriteName 4011\nopen\npress ok\nexpect closed"), "");
  EXPECT_EQ(FieldTextOf(sheet.input, *FindField("FavoriteName")), u"text 4011");
}

TEST(SheetScenario, KnowsFieldsOfTheWatermarkInForce) {
  PreparedSheet sheet;
  EXPECT_EQ(Played(sheet, "set PageWMFlag 1\nopen\npress ok\nexpect closed"), "");
  EXPECT_EQ(sheet.input.privateDevmode.WatermarkData.PageWMFlag, 1);
}

TEST(SheetScenario, SaysWhoTheUserIsBeforeAllElse) {
  PreparedSheet sheet;
  EXPECT_EQ(
      Played(sheet, "user de 49\ntrays 2\nset dmPaperSize home\nopen\npress ok\nexpect closed"),
      "");
  EXPECT_EQ(sheet.done, "user de of 49\ntrays 2\nopen\npress 0\n");
  EXPECT_EQ(sheet.input.publicDevmode.dmPaperSize, 9);
  EXPECT_EQ(ParseScenario("case", "user de 49\nopen\nexpect open").user, (UserKind{"de", 49}));
  EXPECT_EQ(ParseScenario("case", "open\nexpect open").user, std::nullopt);
}

TEST(SheetScenario, TakesTextsInDoubleQuotesForWhatTheyAre) {
  PreparedSheet sheet;
  EXPECT_EQ(Played(sheet,
                   "favorite \"My own\"\nopen\npage \"Other page\"\ntype 10 \"  a \\ \"\n"
                   "type 10 \"\ntype 10 \"\"\npress ok\nexpect closed"),
            "");
  EXPECT_EQ(sheet.done,
            "favorite My own of 1\nopen\npage Other page\ntype 10 '  a \\ '\ntype 10 '\"'\n"
            "type 10 ''\npress 0\n");
}

TEST(SheetScenario, TypesLettersBeyondAscii) {
  class Typist : public PreparedSheet {
    void Type(int /*control*/, std::u16string_view text) override { typed = text; }

   public:
    std::u16string typed;
  } sheet;
  EXPECT_EQ(Played(sheet, "open\ntype 10 \u00e9\u05d0\npress ok\nexpect closed"), "");
  EXPECT_EQ(sheet.typed, u"\u00e9\u05d0");
}

TEST(SheetScenario, KeepsAndReadsPapers) {
  PreparedSheet sheet;
  EXPECT_EQ(Played(sheet,
                   "paper Card 288 1181 2362 1\npaper \"My card\" 289 1 2 2\nopen\n"
                   "expect paper Card 288 1181 2362 1\nexpect paper \"My card\" 289 1 2 2\n"
                   "expect no paper card\npress ok"),
            "");
  EXPECT_EQ(sheet.papers.at(1).ExactLength, 2.0F);
  EXPECT_EQ(Played(sheet, "open\nexpect paper Card 288 1181 2363 1\npress ok"),
            "case, line 2: expect paper Card 288 1181 2363 1: it is \"Card\" 288 1181 2362 1");
  EXPECT_EQ(Played(sheet, "open\nexpect no paper Card\npress ok"),
            "case, line 2: expect no paper Card: there is one: \"Card\" 288 1181 2362 1");
  EXPECT_EQ(Played(sheet, "open\nexpect paper Cart 288 1181 2362 1\npress ok"),
            "case, line 2: expect paper Cart 288 1181 2362 1: there is no such paper");
}

// ---- Expectations -------------------------------------------------------------------------------

struct Expectation {
  const char* name;
  const char* line;
  bool holds;
};

void PrintTo(const Expectation& row, std::ostream* out) {
  *out << row.line;
}

class SheetScenarioExpects : public testing::TestWithParam<Expectation> {};

TEST_P(SheetScenarioExpects, TheSheetToBeSo) {
  PreparedSheet sheet;
  const std::string wrong =
      Played(sheet, std::string("open\n") + GetParam().line + "\npress cancel");
  EXPECT_EQ(wrong.empty(), GetParam().holds) << wrong;
}

// clang-format off
constexpr Expectation kExpectations[] = {
    {"Checked",            "expect checked 10",          true},
    {"CheckedNot",         "expect checked 20",          false},
    {"CheckedAll",         "expect checked 10 10",       true},
    {"CheckedNotAll",      "expect checked 10 20",       false},
    {"Unchecked",          "expect unchecked 20",        true},
    {"UncheckedNot",       "expect unchecked 20 10",     false},
    {"Enabled",            "expect enabled 10",          true},
    {"EnabledNot",         "expect enabled 20",          false},
    {"Disabled",           "expect disabled 20",         true},
    {"DisabledNot",        "expect disabled 10",         false},
    {"Shown",              "expect shown 10",            true},
    {"ShownNot",           "expect shown 20",            false},
    {"Hidden",             "expect hidden 20",           true},
    {"HiddenNot",          "expect hidden 10",           false},
    {"Text",               "expect text 10 12",          true},
    {"TextOther",          "expect text 10 1",           false},
    {"TextNone",           "expect text 10",             false},
    {"Caption",            "expect caption 10 12",       false},
    {"Row",                "expect row 10 2",            true},
    {"RowOther",           "expect row 10 1",            false},
    {"Rows",               "expect rows 10 1 2",         true},
    {"RowsFewer",          "expect rows 10 1",           false},
    {"RowsMore",           "expect rows 10 1 2 3",       false},
    {"RowsOther",          "expect rows 10 2 1",         false},
    {"Tip",                "expect tip 10 3 4",          true},
    {"TipInPart",          "expect tip 10 3",            false},
    {"TipNone",            "expect tip 10",              false},
    {"RowsLiteral",        "expect rows 10 1 \"text 2\"", true},
    {"RowsLiteralOther",   "expect rows 10 1 \"text 3\"", false},
    {"RowsJoined",         "expect rows 10 1 1+2",       false},
    {"CaptionLiteral",     "expect caption 10 \"12\"",   true},
    {"TextLiteral",        "expect text 10 \"12\"",      true},
    {"Focus",              "expect focus 10",            true},
    {"FocusElsewhere",     "expect focus 20",            false},
    {"Dialog",             "expect dialog 6",            false},
    {"NoDialog",           "expect no dialog",           true},
    {"PaperMissing",       "expect paper A 288 1 1 1",   false},
    {"Box",                "expect box 1",               false},
    {"NoBox",              "expect no box",              true},
    {"NoSheet",            "expect no sheet",            false},
    {"Changed",            "expect changed",             false},
    {"Unchanged",          "expect unchanged",           true},
    {"Open",               "expect open",                true},
    {"Closed",             "expect closed",              false},
    {"SettingOfNothing",   "expect setting dmCopies 1",  false},
    {"Untouched",          "expect untouched",           true},
    {"MissingControl",     "expect hidden 99",           false},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Each, SheetScenarioExpects, testing::ValuesIn(kExpectations),
                         test::CaseName());

TEST(SheetScenario, ReadsTheCallersRecord) {
  PreparedSheet sheet;
  sheet.output = sheet.PrintersRecord();
  sheet.output.publicDevmode.dmDuplex = 2;
  sheet.output.privateDevmode.JobMode = -1;
  SetFieldText(sheet.output, *FindField("FavoriteName"), u"text 202");
  EXPECT_EQ(Played(sheet,
                   "open\npress ok\nexpect setting dmDuplex 2\nexpect setting JobMode -1\n"
                   "expect setting FavoriteName 202\nexpect same dmCopies"),
            "");
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect setting dmDuplex 1"),
            "case, line 3: expect setting dmDuplex 1: it is 2");
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect setting FavoriteName 203"),
            "case, line 3: expect setting FavoriteName 203: it is text 202");
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect same dmDuplex"),
            "case, line 3: expect same dmDuplex: it is 2 and was 0");
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect untouched"),
            "case, line 3: expect untouched: the caller got a record back");
}

TEST(SheetScenario, SeesAChangeInTheRecordThatWasHandedIn) {
  class Scribbler : public PreparedSheet {
    void Press(SheetButton button) override {
      PreparedSheet::Press(button);
      input.privateDevmode.Reserved5416[7] ^= 1U;
    }
  } sheet;
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect untouched"),
            "case, line 3: expect untouched: the record that was handed in has changed");
}

// ---- Boxes --------------------------------------------------------------------------------------

TEST(SheetScenarioBox, IsExpectedByTextAndTitle) {
  PreparedSheet sheet;
  sheet.boxesOfPress = {{u"text 5", u"text 7"}, {u"text 5", u"text 8"}};
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect box 7\nexpect box 8 title 5\nexpect no box"), "");
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect box 8"),
            "case, line 3: expect box 8: it is \"text 7\", not \"text 8\"");
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect box 7 title 6"),
            "case, line 3: expect box 7 title 6: it is \"text 5\", not \"text 6\"");
}

TEST(SheetScenarioBox, ThatNobodyExpectsFailsTheNextStepOrTheEnd) {
  PreparedSheet sheet;
  sheet.boxesOfPress = {{u"text 5", u"text 7"}};
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect closed"),
            "case, line 3: expect closed: a box nobody expected: \"text 7\"");
  EXPECT_EQ(Played(sheet, "open\nexpect open\npress ok"),
            "case, line 3: press ok: a box nobody expected: \"text 7\"");
}

TEST(SheetScenarioBox, IsExpectedByALiteralTextToo) {
  PreparedSheet sheet;
  sheet.boxesOfPress = {{u"Paper", u"Initialize paper error."}, {u"Paper", u""}};
  EXPECT_EQ(Played(sheet,
                   "open\npress ok\nexpect box \"Initialize paper error.\" title \"Paper\"\n"
                   "expect box \"\""),
            "");
}

TEST(SheetScenarioBox, IsExpectedByTextsJoinedToOne) {
  PreparedSheet sheet;
  sheet.boxesOfPress = {{u"", u"text 1text 2\r\n"}};
  EXPECT_EQ(Played(sheet, "open\npress ok\nexpect box 1+2+crlf"), "");
}

TEST(SheetScenarioBox, GetsItsAnswerBeforehand) {
  PreparedSheet sheet;
  sheet.boxesOfPress = {{u"text 5", u"text 7"}, {u"text 5", u"text 8"}};
  EXPECT_EQ(Played(sheet, "open\nanswer yes\nanswer no\npress ok\nexpect box 7\nexpect box 8"), "");
  EXPECT_EQ(sheet.done, "open\nanswer 1\nanswer 2\npress 0\n");
}

TEST(SheetScenarioBox, ThatNeverAppearsLeavesItsAnswerAndFailsTheEnd) {
  PreparedSheet sheet;
  EXPECT_EQ(Played(sheet, "open\nanswer no\nexpect open\npress ok"),
            "case, line 4: press ok: no box has taken the answer");
}

// ---- Dialogs ------------------------------------------------------------------------------------

// On one kind of sheet the click that opens a dialog is over at once, on the other one it lasts.
class SheetScenarioDialog : public testing::TestWithParam<bool> {
 protected:
  SheetScenarioDialog() {
    sheet_.opener = kKnown;
    sheet_.playsInside = GetParam();
  }

  std::string Over() const { return GetParam() ? "dialog over\n" : ""; }

  PreparedSheet sheet_;
};

TEST_P(SheetScenarioDialog, GetsTheStepsThatFollowUntilItIsClosed) {
  EXPECT_EQ(Played(sheet_,
                   "open\nclick 10\nexpect dialog 6\nspin 10 up\npress cancel\n"
                   "expect no dialog\nspin 10 down\npress ok\nexpect closed"),
            "");
  EXPECT_EQ(sheet_.done,
            "open\nclick 10\nspin 10 up\npress 2\n" + Over() + "spin 10 down\npress 0\n");
}

TEST_P(SheetScenarioDialog, MayOpenAnother) {
  EXPECT_EQ(Played(sheet_,
                   "open\nclick 10\nclick 10\npress ok\nexpect dialog 6\npress ok\n"
                   "expect no dialog\npress ok\nexpect closed"),
            "");
  EXPECT_EQ(sheet_.done,
            "open\nclick 10\nclick 10\npress 0\n" + Over() + "press 0\n" + Over() + "press 0\n");
}

TEST_P(SheetScenarioDialog, ThatStaysOpenFailsTheEnd) {
  EXPECT_NE(Played(sheet_, "open\nclick 10\nexpect dialog 6"), "");
}

TEST_P(SheetScenarioDialog, TellsTheStepThatFailsWithinIt) {
  EXPECT_EQ(Played(sheet_, "open\nclick 10\nexpect unchecked 10\npress ok\npress ok"),
            "case, line 3: expect unchecked 10: 10 is checked");
}

TEST_P(SheetScenarioDialog, HoldsTheSheetsPagesAndItsOtherButtons) {
  sheet_.offersApply = true;
  for (const char* line : {"page 106", "press apply", "press help"}) {
    sheet_.dialogs = 0;
    EXPECT_EQ(Played(sheet_, std::string("open\nclick 10\n") + line + "\nexpect open"),
              std::string("case, line 3: ") + line + ": a dialog is open");
  }
}

TEST_P(SheetScenarioDialog, KeepsTheBoxesOfItsOpeningAndOfItsEnd) {
  sheet_.boxes = {{u"text 5", u"text 7"}};
  sheet_.boxesOfPress = {{u"text 5", u"text 8"}};
  EXPECT_EQ(Played(sheet_,
                   "open\nexpect box 7\nclick 10\npress ok\nexpect box 8\npress ok\n"
                   "expect box 8"),
            "");
}

INSTANTIATE_TEST_SUITE_P(Each, SheetScenarioDialog, testing::Bool(), [](const auto& row) {
  return row.param ? "PlayedInside" : "PlayedAfter";
});

// ---- Failures -----------------------------------------------------------------------------------

TEST(SheetScenario, DoesNotUseWhatIsLocked) {
  for (const char* line : {"click 20", "type 20 1", "choose 20 1", "spin 20 up", "focus 20"}) {
    PreparedSheet sheet;
    EXPECT_EQ(Played(sheet, std::string("open\n") + line + "\nexpect open"),
              std::string("case, line 2: ") + line + ": the control is locked");
    EXPECT_EQ(sheet.done, "open\n");
  }
}

TEST(SheetScenario, DoesNotApplyWhereThereIsNothingToApply) {
  PreparedSheet sheet;
  EXPECT_EQ(Played(sheet, "open\npress apply\nexpect open"),
            "case, line 2: press apply: there is nothing to apply");
}

TEST(SheetScenario, DoesNotEndWithAnOpenSheet) {
  PreparedSheet sheet;
  EXPECT_NE(Played(sheet, "open\nexpect open"), "");
}

TEST(SheetScenario, FailsWhereTheSheetThrows) {
  class Deaf : public PreparedSheet {
    void Click(int /*control*/) override { throw std::runtime_error("no answer"); }
  } sheet;
  EXPECT_EQ(Played(sheet, "open\nclick 10\nexpect open"), "case, line 2: click 10: no answer");
}

struct Misspelling {
  const char* name;
  const char* text;
};

void PrintTo(const Misspelling& row, std::ostream* out) {
  *out << row.text;
}

class SheetScenarioFault : public testing::TestWithParam<Misspelling> {};

TEST_P(SheetScenarioFault, IsToldAndTheScenarioIsNotPlayed) {
  PreparedSheet sheet;
  const Scenario scenario = ParseScenario("case", GetParam().text);
  EXPECT_NE(scenario.faults, "");
  EXPECT_EQ(PlayScenario(scenario, sheet), scenario.faults);
  EXPECT_EQ(sheet.done, "");
}

// clang-format off
constexpr Misspelling kMisspellings[] = {
    {"Empty",              ""},
    {"NothingExpected",    "open\npress ok"},
    {"UnknownVerb",        "open\nhit 10\nexpect open"},
    {"UnknownExpectation", "open\nexpect happiness"},
    {"ExpectAlone",        "open\nexpect"},
    {"UnknownField",       "set dmCopiez 1\nopen\nexpect open"},
    {"UnknownFieldAsked",  "open\nexpect setting dmCopiez 1"},
    {"MissingValue",       "set dmCopies\nopen\nexpect open"},
    {"ValueIsNoNumber",    "set dmCopies one\nopen\nexpect open"},
    {"NumberWithMore",     "open\nclick 10x\nexpect open"},
    {"ArgumentTooMany",    "open\nclick 10 11\nexpect open"},
    {"ArgumentMissing",    "open\nexpect checked"},
    {"NeitherUpNorDown",   "open\nspin 10 left\nexpect open"},
    {"UnknownButton",      "open\npress yes\nexpect open"},
    {"BoxWithoutTitle",    "open\nexpect box 1 title"},
    {"BoxWithOtherWord",   "open\nexpect box 1 named 2"},
    {"QuoteWithoutEnd",    "open\nexpect rows 10 \"a"},
    {"QuoteForAControl",   "open\nclick \"10\"\nexpect open"},
    {"StringIsNoNumber",   "open\npage one\nexpect open"},
    {"JoinedToNothing",    "open\npage 1+\nexpect open"},
    {"JoinedToAWord",      "open\npage 1+two\nexpect open"},
    {"NeitherYesNorNo",    "open\nanswer ok\nexpect open"},
    {"PaperTooShort",      "paper A 288 1 1\nopen\nexpect open"},
    {"PaperTooLong",       "paper A 288 1 1 1 1\nopen\nexpect open"},
    {"UserWithoutCountry", "user de\nopen\nexpect open"},
    {"UserNotFirst",       "set dmCopies 1\nuser de 49\nopen\nexpect open"},
    {"SetAfterOpen",       "open\nset dmCopies 1\nexpect open"},
    {"ClickBeforeOpen",    "click 10\nopen\nexpect open"},
    {"OpenTwice",          "open\nopen\nexpect open"},
    {"NeverOpened",        "expect open"},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Each, SheetScenarioFault, testing::ValuesIn(kMisspellings),
                         test::CaseName());

// ---- The files ----------------------------------------------------------------------------------

struct Folder {
  const char* name;
  std::size_t atLeast;
};

void PrintTo(const Folder& row, std::ostream* out) {
  *out << row.name;
}

class SheetScenarioFiles : public testing::TestWithParam<Folder> {};

TEST_P(SheetScenarioFiles, AreAllUnderstood) {
  const auto scenarios = ReadScenarios(std::filesystem::path(OSTREL_SCENARIOS) / GetParam().name);
  EXPECT_GE(scenarios.size(), GetParam().atLeast);
  for (const Scenario& scenario : scenarios) {
    EXPECT_EQ(scenario.faults, "");
  }
}

constexpr Folder kFolders[] = {{"print_options", 30}, {"paper", 30},         {"layout", 30},
                               {"custom_papers", 10}, {"booklet_cover", 10}, {"across_pages", 15}};
INSTANTIATE_TEST_SUITE_P(Each, SheetScenarioFiles, testing::ValuesIn(kFolders), test::CaseName());

// ---- The fields by name -------------------------------------------------------------------------

TEST(RecordFields, KeepNumbersOfEachWidth) {
  DriverDevmode record = {};
  for (const NamedField& field : NamedFields()) {
    if (field.field.kind == FieldKind::kText) {
      continue;
    }
    SetFieldNumber(record, field, 0x1234);
    EXPECT_EQ(FieldNumber(record, field), 0x1234) << field.name;
    SetFieldNumber(record, field, -1);
    EXPECT_EQ(FieldNumber(record, field),
              field.field.kind == FieldKind::kUnsignedDword ? std::int64_t{0xFFFFFFFF} : -1)
        << field.name;
  }
}

TEST(RecordFields, KeepTextsCutToFit) {
  DriverDevmode record = {};
  const NamedField& pin = *FindField("JobPin");
  SetFieldText(record, pin, u"123456");
  EXPECT_EQ(FieldTextOf(record, pin), u"1234");
  SetFieldText(record, pin, u"7");
  EXPECT_EQ(FieldTextOf(record, pin), u"7");
  EXPECT_EQ(record.privateDevmode.JobPin[1], u'\0');
}

TEST(RecordFields, AreShownWithAllTheirWordsAndAsUtf8) {
  DriverDevmode record = {};
  record.privateDevmode.Brightness[2] = -7;
  EXPECT_EQ(FieldShown(record, *FindField("Brightness")), "0 0 -7 0");
  SetFieldText(record, *FindField("FavoriteName"), u"A\u00FC\u05D0\u20AC");
  EXPECT_EQ(FieldShown(record, *FindField("FavoriteName")), "A\xC3\xBC\xD7\x90\xE2\x82\xAC");
}

TEST(RecordFields, DifferInAnyOfTheirWords) {
  DriverDevmode left = {};
  DriverDevmode right = {};
  right.privateDevmode.Brightness[3] = 1;
  EXPECT_FALSE(FieldsEqual(left, right, *FindField("Brightness")));
  EXPECT_TRUE(FieldsEqual(left, right, *FindField("Constrast")));
  right.privateDevmode.JobPin[4] = u'x';  // behind the terminator
  EXPECT_TRUE(FieldsEqual(left, right, *FindField("JobPin")));
}

TEST(RecordFields, WithoutAFieldOfThatNameAreNull) {
  EXPECT_EQ(FindField("dmcopies"), nullptr);
  EXPECT_EQ(FindField(""), nullptr);
}

}  // namespace
}  // namespace ostrel::scenario
